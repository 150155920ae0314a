// Small text functions. A blank is a character of code 32 or below.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "ztok/platform/Eksport.h"

namespace ztok {

class TListaNapisow;

// Whether only blanks stand from position `Od` (1-based; below 2: from the start) up to position `Ile`, which counts
// from the start of S whatever `Od` is, or the end of S. True for an empty range.
[[nodiscard]] ZTOK_API bool TekstPusty(std::u16string_view S, std::ptrdiff_t Od, std::ptrdiff_t Ile) noexcept;

// The lines without the blanks at their ends, those that are empty then left out, with the separator between the
// others. Allocates the result once.
[[nodiscard]] ZTOK_API std::u16string ListaDoLinii(std::span<const std::u16string> Lista,
                                                   std::u16string_view Separator);
[[nodiscard]] ZTOK_API std::u16string ListaDoLinii(const TListaNapisow& Lista, std::u16string_view Separator);

// The text before the first `Znak`; the empty text when there is none.
[[nodiscard]] ZTOK_API std::u16string TrescPrzedZnakiem(std::u16string_view S, char16_t Znak);
[[nodiscard]] ZTOK_API std::string TrescPrzedZnakiem(std::string_view S, char Znak);

// The text behind the first `Znak`; the whole text when there is none. `Trymuj`: without blanks at its ends.
[[nodiscard]] ZTOK_API std::u16string TrescPoZnaku(std::u16string_view S, char16_t Znak, bool Trymuj = false);
[[nodiscard]] ZTOK_API std::string TrescPoZnaku(std::string_view S, char Znak, bool Trymuj = false);

// The text with a blank in place of every control character: one line, whatever it was.
[[nodiscard]] ZTOK_API std::u16string WJednejLinii(std::u16string S) noexcept;

} // namespace ztok
