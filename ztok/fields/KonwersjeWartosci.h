// Values to text and back with the kernel's format settings, variants and tagged arguments as text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "ztok/fields/TypyPol.h"
#include "ztok/platform/TArgument.h"

namespace ztok {

class TWariant;

// With the kernel's format settings, so that the text is the same on every machine.
[[nodiscard]] ZTOK_API std::u16string ZTOKFloatToStr(double wartosc);
[[nodiscard]] ZTOK_API std::u16string ZTOKDateToStr(double wartosc);
[[nodiscard]] ZTOK_API std::u16string ZTOKTimeToStr(double wartosc);
// Date, blank, time.
[[nodiscard]] ZTOK_API std::u16string ZTOKDateTimeToStr(double wartosc);
// A date in the kernel's order of parts, or with the year last (05-03-2024), separated by "-", "." or "/".
// EBladKonwersji for a text that is no date.
[[nodiscard]] ZTOK_API double ZTOKStrToDate(std::u16string_view tekst);
[[nodiscard]] ZTOK_API double ZTOKStrToTime(std::u16string_view tekst);
// A date; or a date, a blank and a time, joined by the sign of the date.
[[nodiscard]] ZTOK_API double ZTOKStrToDateTime(std::u16string_view tekst);

// Dates in XML. A date or a time alone is written as above; both are parted by "T", and the time of a whole day is left
// out unless `zawszeCzas`. What is read may have a blank for the "T".
[[nodiscard]] ZTOK_API std::u16string ZTOKDateTimeToXML(double wartosc, bool zawszeCzas = false);
// The date, with or without a time behind it.
[[nodiscard]] ZTOK_API double ZTOKXMLToDate(std::u16string_view tekst);
// The time, with or without a date before it. Behind a "." stands a fraction of a second, and behind that a zone that
// begins with "+" is passed over. EBladKonwersji too for a zone without a fraction, or with another sign.
[[nodiscard]] ZTOK_API double ZTOKXMLToTime(std::u16string_view tekst);
// A date, or a date and a time; a zone that begins with "+", or is "Z", is passed over.
[[nodiscard]] ZTOK_API double ZTOKXMLToDateTime(std::u16string_view tekst);

[[nodiscard]] ZTOK_API bool ZTOKVarEmptyOrNull(const TWariant& wariant) noexcept;
// The variant's text shaped by a mask: a number or date pattern, names of a boolean ("yes;no"), names of a 32-bit
// integer
// ("?zero;one;two"); any other type gives its plain text.
[[nodiscard]] ZTOK_API std::u16string ZTOKFormatVar(std::u16string_view maska, const TWariant& wariant);
// Text of one tagged argument, for messages.
[[nodiscard]] ZTOK_API std::u16string ZTOKVarRecToStr(const TArgument& argument);
// Variant of one tagged argument, and the array variant of several. ZTException for a tag that has no variant.
[[nodiscard]] ZTOK_API TWariant ZTOKVarRecToVariant(const TArgument& argument);
[[nodiscard]] ZTOK_API TWariant ZTOKArrayOfConstToVariant(TArgumenty argumenty);

// One of two enumeration values.
[[nodiscard]] constexpr TRodzajSortowania Iff(bool warunek, TRodzajSortowania a, TRodzajSortowania b) noexcept {
    return warunek ? a : b;
}
[[nodiscard]] constexpr TRozmiarLiter Iff(bool warunek, TRozmiarLiter a, TRozmiarLiter b) noexcept {
    return warunek ? a : b;
}
[[nodiscard]] constexpr TRodzajPorownPol Iff(bool warunek, TRodzajPorownPol a, TRodzajPorownPol b) noexcept {
    return warunek ? a : b;
}

// The type name of a line that begins with "object " (letter case ignored): the letters, digits and "_" that follow, up
// to the line's 64th character. False for another line.
ZTOK_API bool WydzielNazweTypu(std::u16string& nazwa, std::u16string_view linia);
// The line with that type name replaced; another line comes back unchanged.
[[nodiscard]] ZTOK_API std::u16string PodmienNazweTypu(std::u16string_view linia, std::u16string_view nowaNazwa);

} // namespace ztok
