// Date-time numbers: their parts, their text and back. The whole part counts days from 30 December 1899, the fraction
// is the part of the day that has passed; before that day the fraction still counts forward, so -5.25 is 06:00 of day
// -5, and numbers between -1 and 0 lie on day 0. Dates run from 0001-01-01 to 9999-12-31. Pure functions, safe to call
// from any thread; only text without a century or a year looks at the clock.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "ztok/platform/Eksport.h"
#include "ztok/platform/TUstawieniaFormatu.h"

namespace ztok {

inline constexpr std::int64_t MilisekundDoby = 86'400'000;

struct TData {
    int rok = 0;
    int miesiac = 0; // from 1
    int dzien = 0;   // from 1
    friend bool operator==(const TData&, const TData&) = default;
};

struct TCzas {
    int godzina = 0;
    int minuta = 0;
    int sekunda = 0;
    int milisekunda = 0;
    friend bool operator==(const TCzas&, const TCzas&) = default;
};

// ---- numbers and their parts

// Day number of a date; false when there is no such date.
[[nodiscard]] ZTOK_API bool SprobujZlozycDate(const TData& data, double& wynik) noexcept;
// Fraction of a time from 00:00:00.000 to 23:59:59.999; false when there is no such time.
[[nodiscard]] ZTOK_API bool SprobujZlozycCzas(const TCzas& czas, double& wynik) noexcept;
// One number of a whole day number and a fraction from 0 to below 1.
[[nodiscard]] constexpr double ZlaczDateICzas(double data, double czas) noexcept {
    return data < 0 ? data - czas : data + czas;
}
// Parts of a number, rounded to the nearest millisecond, which can carry it into the next day. False when the date is
// out of range or the number is none; the parts are left alone then.
[[nodiscard]] ZTOK_API bool SprobujRozlozycDateICzas(double wartosc, TData& data, TCzas& czas) noexcept;
// 0 Sunday to 6 Saturday.
[[nodiscard]] ZTOK_API int DzienTygodnia(const TData& data) noexcept;

// ---- text; each raises EBladKonwersji when the date is out of range

// The short date format.
[[nodiscard]] ZTOK_API std::u16string DataNaTekst(double wartosc, const TUstawieniaFormatu& ustawienia);
// The long time format.
[[nodiscard]] ZTOK_API std::u16string CzasNaTekst(double wartosc, const TUstawieniaFormatu& ustawienia);
// Date, blank and time; the date alone within the first second of a day.
[[nodiscard]] ZTOK_API std::u16string DataICzasNaTekst(double wartosc, const TUstawieniaFormatu& ustawienia);
// The parts that say something: a whole day gives the date alone, day 0 the time alone, all else both.
[[nodiscard]] ZTOK_API std::u16string DataLubCzasNaTekst(double wartosc, const TUstawieniaFormatu& ustawienia);
// Through a mask, letter case free: `d` `dd` day, `ddd` `dddd` its name, `ddddd` `dddddd` short and long date; `m` `mm`
// month (minutes when `h` was the last letter before), `mmm` `mmmm` its name; `y` `yy` `yyyy`; `h` `hh`; `n` `nn`
// minutes; `s` `ss`; `z` `zzz` milliseconds; `t` `tt` short and long time; `c` as DataICzasNaTekst; `am/pm` `a/p` as
// written and `ampm` from the settings, each giving the hours before it from 1 to 12; `/` `:` separators; 'text' and
// "text" and everything else as it stands. Longer runs count as the longest form. An empty mask is `c`.
[[nodiscard]] ZTOK_API std::u16string FormatujDateCzas(std::u16string_view maska, double wartosc,
                                                       const TUstawieniaFormatu& ustawienia);

// ---- from text; blanks around numbers and separators are skipped; false when the text is none, the number left alone

// Two or three numbers in the order of year, month and day in the short date format. A missing year is the current one;
// a year of one or two digits falls into the century window.
[[nodiscard]] ZTOK_API bool SprobujTekstNaDate(std::u16string_view tekst, double& wartosc,
                                               const TUstawieniaFormatu& ustawienia);
// A date exactly as FormatujDateCzas writes it through the mask: of day, month (also their names) and year, which must
// all be there. False for a mask of anything else, and for one whose numbers run together.
[[nodiscard]] ZTOK_API bool SprobujTekstNaDateWgMaski(std::u16string_view tekst, std::u16string_view maska,
                                                      double& wartosc, const TUstawieniaFormatu& ustawienia);
// `h`, `h:m`, `h:m:s` or `h:m:s,z` with the settings' separators; z counts milliseconds, so `,5` is 5 of them. After it
// AM or PM (or the settings' words), letter case free, with hours from 1 to 12.
[[nodiscard]] ZTOK_API bool SprobujTekstNaCzas(std::u16string_view tekst, double& wartosc,
                                               const TUstawieniaFormatu& ustawienia);
// Date, time, or date, blank and time.
[[nodiscard]] ZTOK_API bool SprobujTekstNaDateICzas(std::u16string_view tekst, double& wartosc,
                                                    const TUstawieniaFormatu& ustawienia);
// The same; raise EBladKonwersji when the text is none.
[[nodiscard]] ZTOK_API double TekstNaDate(std::u16string_view tekst, const TUstawieniaFormatu& ustawienia);
[[nodiscard]] ZTOK_API double TekstNaCzas(std::u16string_view tekst, const TUstawieniaFormatu& ustawienia);
[[nodiscard]] ZTOK_API double TekstNaDateICzas(std::u16string_view tekst, const TUstawieniaFormatu& ustawienia);

// ---- the clock

using TFunkcjaDzisiaj = TData (*)() noexcept;
// The local date of the system.
[[nodiscard]] ZTOK_API TData DzisiajWgSystemu() noexcept;
// Sets the function that tells today's date to the functions above, and returns the one before; null = the system's.
ZTOK_API TFunkcjaDzisiaj UstawFunkcjeDzisiaj(TFunkcjaDzisiaj funkcja) noexcept;

} // namespace ztok
