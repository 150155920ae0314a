// Conversions between UTF-16, UTF-8 and 8-bit code pages. Pure functions over the library's own tables: every target
// gives the same bytes, and no function depends on the system's locale. Safe to call from any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "ztok/platform/Eksport.h"

namespace ztok {

// UTF-8 here is the generalised form that carries every UTF-16 text: a surrogate without its partner is written as the
// three bytes of its code, and read back as the same surrogate. The writer joins partners into one four-byte sequence,
// so a three-byte high surrogate is never followed directly by a three-byte low one; the readers treat such a low one
// as ill-formed. Text therefore survives writing and reading unchanged, and no text has two valid byte forms.

// Writes `ile` units at `od` as UTF-8 to `cel`, which has room for 3 * ile bytes (all of it may be scratched).
// Returns the number of bytes written.
ZTOK_API std::size_t KodujUtf8(const char16_t* od, std::size_t ile, char* cel) noexcept;
// Reads `ile` bytes of UTF-8 at `od` into `cel`, which has room for `ile` units (all of it may be scratched). Every
// maximal ill-formed part gives one U+FFFD. Returns the number of units written.
ZTOK_API std::size_t DekodujUtf8(const char* od, std::size_t ile, char16_t* cel) noexcept;
// Whether the bytes are UTF-8 in the form that KodujUtf8 writes.
[[nodiscard]] ZTOK_API bool PoprawneUtf8(std::string_view bajty) noexcept;
// Bytes that KodujUtf8 writes for the text.
[[nodiscard]] ZTOK_API std::size_t DlugoscUtf8(std::u16string_view tekst) noexcept;

[[nodiscard]] ZTOK_API std::string Utf8ZUtf16(std::u16string_view tekst);
[[nodiscard]] ZTOK_API std::u16string Utf16ZUtf8(std::string_view bajtyUtf8);
// The same, appended to the target.
ZTOK_API void DopiszUtf8(std::string& celUtf8, std::u16string_view tekst);
ZTOK_API void DopiszZUtf8(std::u16string& cel, std::string_view bajtyUtf8);

// Code pages of 8-bit text by their usual numbers.
inline constexpr std::uint16_t StronaWin1250 = 1250;

// Windows-1250 byte of a character, or the character's own code when the page lacks it: the key of the page's order.
// The five bytes without a character (81 83 88 90 98) stand for the control characters of the same code.
[[nodiscard]] ZTOK_API int KodWin1250(char16_t znak) noexcept;
// Character of a Windows-1250 byte; every byte has one.
[[nodiscard]] ZTOK_API char16_t ZnakZWin1250(char bajt) noexcept;
// Windows-1250 byte of a character; `jest` tells whether the page has it, and if not the byte is '?'.
[[nodiscard]] ZTOK_API char ZnakNaWin1250(char16_t znak, bool& jest) noexcept;

// Unicode text as Windows-1250 bytes. Each unit that the page lacks becomes "?", so a character beyond the basic plane
// becomes "??"; look-alikes are never substituted.
[[nodiscard]] ZTOK_API std::string Win1250(std::u16string_view tekst);
// Windows-1250 bytes as Unicode text.
[[nodiscard]] ZTOK_API std::u16string ZWin1250(std::string_view bajty);
// Whether every character of the text has a Windows-1250 byte.
[[nodiscard]] ZTOK_API bool MiesciSieWWin1250(std::u16string_view tekst) noexcept;

// The same through a code page given by number. Raises EBladKonwersji for a page that the library does not know.
[[nodiscard]] ZTOK_API std::string NaStroneKodowa(std::u16string_view tekst, std::uint16_t strona);
[[nodiscard]] ZTOK_API std::u16string ZeStronyKodowej(std::string_view bajty, std::uint16_t strona);

} // namespace ztok
