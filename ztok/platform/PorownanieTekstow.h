// The three orders of text: by code, by Windows-1250 byte, by the rules of a language. Results are -1, 0 or 1: the sign
// of the first text minus the second. Safe to call from any thread.
#pragma once

#include <cstdint>
#include <string_view>

#include "ztok/platform/Eksport.h"

namespace ztok {

// Locale numbers that the library gives a meaning of its own.
inline constexpr std::uint32_t LokalizacjaNiezmienna = 0x7F; // no language: accents are variants of their letters
inline constexpr std::uint32_t LokalizacjaPolska = 0x0415;

// Order by code: UTF-16 units, or bytes of 8-bit text.
[[nodiscard]] ZTOK_API int PorownajOrdynalnie(std::u16string_view a, std::u16string_view b) noexcept;
[[nodiscard]] ZTOK_API int PorownajOrdynalnie(std::string_view a, std::string_view b) noexcept;
// The same with a to z taken as A to Z, so that '_' sorts after the letters; no other letter is folded.
[[nodiscard]] ZTOK_API int PorownajOrdynalnieBezWielkosci(std::u16string_view a, std::u16string_view b) noexcept;
[[nodiscard]] ZTOK_API int PorownajOrdynalnieBezWielkosci(std::string_view a, std::string_view b) noexcept;

// Order by Windows-1250 byte; a character that the page lacks sorts behind those of the page (KodWin1250).
[[nodiscard]] ZTOK_API int PorownajWin1250(std::u16string_view a, std::u16string_view b) noexcept;
// The same with a to z taken as A to Z; Polish letters keep their case, on purpose.
[[nodiscard]] ZTOK_API int PorownajWin1250BezWielkosci(std::u16string_view a, std::u16string_view b) noexcept;

// Order by the rules of a language: letters first, then accents, then case (small before capital), then hyphens and
// apostrophes. `lcid` is a locale number of Windows. On Windows the system compares, and EBladSystemu is raised when it
// refuses. Elsewhere an alphabet of the library's own takes its place, which needs no installed locale and never
// raises: Polish and the defaults (0, 0x0400, 0x0800) take a-ogonek and its kin as letters of their own, every other
// number gives the order of LokalizacjaNiezmienna.
[[nodiscard]] ZTOK_API int PorownajWgLokalizacji(std::u16string_view a, std::u16string_view b, std::uint32_t lcid,
                                                 bool bezWielkosci);

// a to z as A to Z, everything else as it is.
template <class Znak> [[nodiscard]] constexpr Znak DuzaAscii(Znak znak) noexcept {
    return znak >= Znak('a') && znak <= Znak('z') ? static_cast<Znak>(znak - ('a' - 'A')) : znak;
}

} // namespace ztok
