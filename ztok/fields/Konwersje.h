// Value conversions and comparisons that fields and lists share.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "ztok/fields/TypyPol.h"
#include "ztok/platform/Eksport.h"
#include "ztok/platform/TArgument.h"
#include "ztok/util/Ztfunutf8.h"

namespace ztok {

class TWariant;

// Text comparisons: sign of the first minus the second. Ordinal ...
[[nodiscard]] ZTOK_API int CompareTxtSgn(std::u16string_view a, std::u16string_view b) noexcept; // folds ASCII letters
[[nodiscard]] ZTOK_API int CompareTxtSgn(std::string_view a, std::string_view b) noexcept;
[[nodiscard]] ZTOK_API int CompareStrSgn(std::u16string_view a, std::u16string_view b) noexcept;
[[nodiscard]] ZTOK_API int CompareStrSgn(std::string_view a, std::string_view b) noexcept;
// ... in the byte order of Windows-1250; the case-blind one folds ASCII letters only, by intent ...
[[nodiscard]] ZTOK_API std::int16_t ZTOKWin1250CompareStr(std::u16string_view a, std::u16string_view b) noexcept;
[[nodiscard]] ZTOK_API std::int16_t ZTOKWin1250CompareText(std::u16string_view a, std::u16string_view b) noexcept;
// ... and as the locale orders text. EBladSystemu when the platform refuses.
[[nodiscard]] ZTOK_API int ZTOKWideCompareStr(std::u16string_view a, std::u16string_view b, std::uint32_t localeID);
[[nodiscard]] ZTOK_API int ZTOKWideCompareText(std::u16string_view a, std::u16string_view b, std::uint32_t localeID);

// As the invariant locale orders text: two texts, two characters.
[[nodiscard]] ZTOK_API int ZTOKWStrComp(const char16_t* a, const char16_t* b);
[[nodiscard]] ZTOK_API int ZTOKWCharComp(char16_t a, char16_t b);

// The comparison that a locale and a letter case select: 127 ordinal, 0 and 4096 Windows-1250, any other that locale.
[[nodiscard]] ZTOK_API int PorownajTeksty(std::u16string_view a, std::u16string_view b, TRozmiarLiter rozmLiter,
                                          std::uint32_t localeID);
// The same for wide text fields, for which 0 and 4096 are ordinal too.
[[nodiscard]] ZTOK_API int PorownajTekstySzerokie(std::u16string_view a, std::u16string_view b, TRozmiarLiter rozmLiter,
                                                  std::uint32_t localeID);

// Compares two variants: as texts when a side holds text, else by value.
[[nodiscard]] ZTOK_API int ZTOKVarCompare(const TWariant& a, const TWariant& b, TRozmiarLiter rozmLiter,
                                          std::uint32_t localeID);

// Text to boolean: T, N (exact case), 1, 0; true, yes, tak, false, no, nie in any case; else an integer, true when it
// is not 0. EBladKonwersji for anything else.
[[nodiscard]] ZTOK_API bool ZTOKStrToBoolean(std::u16string_view tekst);
// "yes;no" by the value; a mask without ";" is the text for true.
[[nodiscard]] ZTOK_API std::u16string ZTOKFormatBool(std::u16string_view maska, bool wartosc);
// Text to real number with the kernel's format settings; also with the other decimal separator, and with blanks inside.
[[nodiscard]] ZTOK_API bool ZTOKTryStrToFloat(std::u16string_view tekst, double& wartosc);
[[nodiscard]] ZTOK_API double ZTOKStrToFloat(std::u16string_view tekst);
// Element of a ";"-separated list, counted from 0; a leading "?" is skipped. Empty when there is none.
[[nodiscard]] ZTOK_API std::u16string_view DajElementMaski(std::u16string_view maska, std::int64_t indeks) noexcept;
// Without leading and trailing characters below 33, and at most `maks` characters from the first kept one (0: any).
[[nodiscard]] ZTOK_API std::u16string_view ZTOKTrim(std::u16string_view tekst, std::size_t maks = 0) noexcept;
[[nodiscard]] ZTOK_API std::string_view ZTOKTrim(std::string_view tekst, std::size_t maks = 0) noexcept;
[[nodiscard]] inline std::u16string_view ZTOKTrimWide(std::u16string_view tekst, std::size_t maks = 0) noexcept {
    return ZTOKTrim(tekst, maks);
}

// The words for false and true, wide and in Windows-1250; the boolean's short form is the first letter. And the names
// of the two values.
extern ZTOK_API const std::u16string_view NieTakWide[2];
extern ZTOK_API const std::string_view NieTak[2];
extern ZTOK_API const std::u16string_view FalseTrue[2];

// Splits a field path at its first "." or "[": the path keeps the part before it, the rest is what follows, without the
// "." but with the "[".
ZTOK_API void WydzielNazwePola(std::u16string_view& sciezka, std::u16string_view& reszta) noexcept;

} // namespace ztok
