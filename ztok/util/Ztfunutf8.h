// Conversions of text between Unicode and bytes, for applications: UTF-8, Windows-1250, Windows-1251, ISO 8859-1 and
// ISO 8859-2. The same bytes on every target; no conversion raises because of its text. Safe to call from any thread.
//
// What bytes cannot say is replaced, and Miesci.../Poprawne... of Kodowania.h tell beforehand whether anything would
// be:
//
//                        lone surrogate in the text     ill-formed or free bytes
//   Utf8ZUtf16, ...      kept (its three bytes)         U+FFFD for each maximal part; a lone surrogate is read back
//   page 65001           U+FFFD                         U+FFFD for each maximal part, surrogates included
//   8-bit pages          "?", as all the page lacks     the control character of the same code
#pragma once

#include <string>
#include <string_view>

#include "ztok/platform/Eksport.h"
#include "ztok/platform/Kodowania.h"

namespace ztok {

// Between Unicode text and Windows-1250, the Polish 8-bit code page.
[[nodiscard]] ZTOK_API std::u16string PolskiWide(std::string_view bajty);
[[nodiscard]] ZTOK_API std::string PolskiAnsi(std::u16string_view tekst);
[[nodiscard]] ZTOK_API std::string PoPolsku(std::u16string_view tekst); // wide text

// Text of UTF-8 bytes, which may hold lone surrogates, or nothing: returns false and leaves the text alone when the
// bytes are not well-formed.
[[nodiscard]] ZTOK_API bool SprobujZUtf8(std::string_view bajtyUtf8, std::u16string& tekst);
// Bytes of unknown origin: read as UTF-8 if they are well-formed, else as Windows-1250.
[[nodiscard]] ZTOK_API std::u16string ZUtf8LubPolskiego(std::string_view bajty);

} // namespace ztok
