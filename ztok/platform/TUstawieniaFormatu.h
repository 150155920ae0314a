// Settings of number, currency, date and time text.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "ztok/platform/Eksport.h"

namespace ztok {

// A fresh value holds the library's own settings (UstawieniaPolskie).
struct TUstawieniaFormatu {
    std::u16string symbolWaluty = u"zł";
    std::uint8_t formatWaluty = 3;        // 0 `zł1`, 1 `1zł`, 2 `zł 1`, 3 `1 zł`
    std::uint8_t formatWalutyUjemnej = 8; // 8 `-1 zł`; 0 to 15, the usual numbering
    std::uint8_t miejscWaluty = 2;
    char16_t separatorDaty = u'-';
    char16_t separatorCzasu = u':';
    char16_t separatorListy = u';';
    char16_t separatorTysiecy = u' '; // 0 = none
    char16_t separatorDziesietny = u'.';
    // A two-digit year means one of the hundred years that begin this many years before the current one; 0 = one of
    // the current century.
    std::uint16_t oknoWieku = 50;
    std::u16string krotkiFormatDaty = u"yyyy-MM-dd";
    std::u16string dlugiFormatDaty = u"d MMMM yyyy";
    std::u16string krotkiFormatCzasu = u"hh:mm";
    std::u16string dlugiFormatCzasu = u"hh:mm:ss";
    std::u16string napisAM;
    std::u16string napisPM;
    std::array<std::u16string, 12> krotkieNazwyMiesiecy = {u"sty", u"lut", u"mar", u"kwi", u"maj", u"cze",
                                                           u"lip", u"sie", u"wrz", u"paź", u"lis", u"gru"};
    std::array<std::u16string, 12> dlugieNazwyMiesiecy = {u"styczeń",  u"luty",        u"marzec",   u"kwiecień",
                                                          u"maj",      u"czerwiec",    u"lipiec",   u"sierpień",
                                                          u"wrzesień", u"październik", u"listopad", u"grudzień"};
    // The week begins with Sunday.
    std::array<std::u16string, 7> krotkieNazwyDni = {u"Nie", u"Pon", u"Wto", u"Śro", u"Czw", u"Pt", u"Sob"};
    std::array<std::u16string, 7> dlugieNazwyDni = {u"niedziela", u"poniedziałek", u"wtorek", u"środa",
                                                    u"czwartek",  u"piątek",       u"sobota"};

    friend bool operator==(const TUstawieniaFormatu&, const TUstawieniaFormatu&) = default;
};

// The settings of stored text, the same on every machine: decimal separator ".", thousands separator a blank.
[[nodiscard]] ZTOK_API TUstawieniaFormatu UstawieniaPolskie();

// The settings of displayed text, one set a process. At first decimal separator "," and thousands separator U+00A0,
// everything else as in UstawieniaPolskie; a program may change them before it starts threads that use them.
[[nodiscard]] ZTOK_API TUstawieniaFormatu& UstawieniaProcesu();
// Frees the settings of the process; for the library's unload only. A later use starts afresh.
ZTOK_API void ZwolnijUstawieniaProcesu() noexcept;

} // namespace ztok
