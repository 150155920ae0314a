// Conversions between UTF-16, UTF-8 and 8-bit code pages. Every target gives the same bytes, and no function depends on
// the system's locale. Input is never read past its end, and what is ill-formed never costs what follows it. Safe to
// call from any thread.
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
// Reads `ile` bytes of UTF-8 at `od` into `cel`, which has room for `ile` units (all of it may be scratched). Returns
// the number of units written.
//
// Every maximal ill-formed part gives one U+FFFD: the longest beginning of a well-formed sequence, or else one byte
// (the rule of the Unicode standard's "substitution of maximal subparts"). So an over-long form, a five- or six-byte
// form and a code above U+10FFFF give one for each byte, a sequence that is cut short gives one.
ZTOK_API std::size_t DekodujUtf8(const char* od, std::size_t ile, char16_t* cel) noexcept;
// The same for the UTF-8 of the standard: the three bytes of a surrogate are ill-formed and give three U+FFFD.
ZTOK_API std::size_t DekodujUtf8Scisle(const char* od, std::size_t ile, char16_t* cel) noexcept;
// Length of a beginning of a piece of UTF-8, the longest one of well-formed bytes, that decodes to the same by itself
// as with what follows it: at most 6 bytes less than the piece. For a text that is decoded piece by piece; its last
// piece is decoded whole.
[[nodiscard]] ZTOK_API std::size_t PelneUtf8(std::string_view kawalek) noexcept;
// Whether the bytes are UTF-8 in the form that KodujUtf8 writes.
[[nodiscard]] ZTOK_API bool PoprawneUtf8(std::string_view bajty) noexcept;
// Bytes that KodujUtf8 writes for the text.
[[nodiscard]] ZTOK_API std::size_t DlugoscUtf8(std::u16string_view tekst) noexcept;

[[nodiscard]] ZTOK_API std::string Utf8ZUtf16(std::u16string_view tekst);
[[nodiscard]] ZTOK_API std::u16string Utf16ZUtf8(std::string_view bajtyUtf8);
// The same, appended to the target.
ZTOK_API void DopiszUtf8(std::string& celUtf8, std::u16string_view tekst);
ZTOK_API void DopiszZUtf8(std::u16string& cel, std::string_view bajtyUtf8);

// Whether the text has a surrogate without its partner; the same of bytes that PoprawneUtf8 accepts.
[[nodiscard]] ZTOK_API bool MaSamotnySurogat(std::u16string_view tekst) noexcept;
[[nodiscard]] ZTOK_API bool MaSurogatUtf8(std::string_view bajty) noexcept;
// Puts U+FFFD in the place of every surrogate; the length stays. For bytes that PoprawneUtf8 accepts.
ZTOK_API void ZastapSurogaty(std::string& tekstUtf8) noexcept;

// Code pages by their usual numbers.
inline constexpr std::uint16_t StronaWin1250 = 1250;
inline constexpr std::uint16_t StronaWin1251 = 1251;
inline constexpr std::uint16_t StronaIso8859_1 = 28591;
inline constexpr std::uint16_t StronaIso8859_2 = 28592;
inline constexpr std::uint16_t StronaUtf8 = 65001;

// The key of the page's order: the Windows-1250 byte of a character, or the character's own code when the page lacks
// it, and 256 more where that code is below 256 and would be the byte of another character. So what the page lacks
// sorts behind all of it. The five bytes without a character (81 83 88 90 98) stand for the control characters of the
// same code.
[[nodiscard]] ZTOK_API int KodWin1250(char16_t znak) noexcept;
// Character of a Windows-1250 byte; every byte has one.
[[nodiscard]] ZTOK_API char16_t ZnakZWin1250(char bajt) noexcept;
// Windows-1250 byte of a character; `jest` tells whether the page has it, and if not the byte is '?'.
[[nodiscard]] ZTOK_API char ZnakNaWin1250(char16_t znak, bool& jest) noexcept;

// Between Unicode text and Windows-1250 bytes, as the functions below.
[[nodiscard]] ZTOK_API std::string Win1250(std::u16string_view tekst);
[[nodiscard]] ZTOK_API std::u16string ZWin1250(std::string_view bajty);
// Whether every character of the text has a Windows-1250 byte.
[[nodiscard]] ZTOK_API bool MiesciSieWWin1250(std::u16string_view tekst) noexcept;

// Conversions by the number of a page, one of those above; EBladKonwersji for another number. The system does them
// where it can, the library's tables elsewhere.
//
// Text as bytes of the page. Each unit that an 8-bit page lacks becomes "?", so a character beyond the basic plane
// becomes "??"; look-alikes are never substituted. A lone surrogate becomes U+FFFD in UTF-8.
[[nodiscard]] ZTOK_API std::string NaStroneKodowa(std::u16string_view tekst, std::uint16_t strona);
// Bytes of the page as text. Every byte of an 8-bit page has a character: one that the page leaves free stands for the
// control character of its code. UTF-8 is read as DekodujUtf8Scisle does.
[[nodiscard]] ZTOK_API std::u16string ZeStronyKodowej(std::string_view bajty, std::uint16_t strona);
// Whether the two would replace nothing, so that what they give converts back into what they were given.
[[nodiscard]] ZTOK_API bool MiesciSieNaStronie(std::u16string_view tekst, std::uint16_t strona);
[[nodiscard]] ZTOK_API bool PoprawneNaStronie(std::string_view bajty, std::uint16_t strona);

} // namespace ztok
