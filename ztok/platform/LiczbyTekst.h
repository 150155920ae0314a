// Numbers as text and back. Pure functions of their arguments, safe to call from any thread; nothing depends on the
// system's locale.
#pragma once

#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>

#include "ztok/platform/Eksport.h"
#include "ztok/platform/TUstawieniaFormatu.h"

namespace ztok {

// ---- integers

[[nodiscard]] ZTOK_API std::u16string IntNaTekst(std::int64_t liczba);
[[nodiscard]] ZTOK_API std::u16string UIntNaTekst(std::uint64_t liczba);

// Text of an integer: blanks, a sign, then decimal digits, or hexadecimal ones after `$`, `0x` or `x`; nothing may
// follow. A decimal number must fit the type. A hexadecimal one gives the type's bits: $FFFFFFFF is -1 in 32 bits.
// Returns false and leaves the number alone when the text is none.
[[nodiscard]] ZTOK_API bool SprobujTekstNaInt(std::u16string_view tekst, std::int32_t& liczba) noexcept;
[[nodiscard]] ZTOK_API bool SprobujTekstNaInt64(std::u16string_view tekst, std::int64_t& liczba) noexcept;
// The same; raises EBladKonwersji when the text is no number.
[[nodiscard]] ZTOK_API std::int32_t TekstNaInt(std::u16string_view tekst);
[[nodiscard]] ZTOK_API std::int64_t TekstNaInt64(std::u16string_view tekst);

// ---- real numbers

// General form with 15 significant digits: 0.1, 1234.5, 1E15, 9.5E-7; with an exponent from 16 integer digits up and
// below 0.00001. NAN, INF and -INF; negative zero shows no sign.
[[nodiscard]] ZTOK_API std::u16string FloatNaTekst(double liczba, const TUstawieniaFormatu& ustawienia);
// The form for storing: as FloatNaTekst where that reads back to the same bits, else with the fewest digits that do.
// Every number but NaN, whose bits are not kept, comes back through SprobujTekstNaFloat.
[[nodiscard]] ZTOK_API std::u16string FloatNaTekstDokladny(double liczba, const TUstawieniaFormatu& ustawienia);

// Number through a mask of up to three sections parted by ";" (positive; negative; zero): `0` digit, `#` digit when
// there is one, `.` decimal point, `,` thousands separators wanted, `E+00` `E-00` exponent, 'text' or "text" as it
// stands. An empty mask gives the general form, and so do 1E18 and beyond, infinities and NaN. A missing or empty
// second or third section leaves its numbers to the first, which shows the sign of negative ones. A number that rounds
// to zero is a zero: it takes the third section and no sign. Rounding is half away from zero, from 18 digits; places
// after the point beyond the 15th significant digit show zeros.
[[nodiscard]] ZTOK_API std::u16string FormatujLiczbe(std::u16string_view maska, double liczba,
                                                     const TUstawieniaFormatu& ustawienia);

// A decimal number that no double need hold: `modul` divided by 10 to the power of `miejsc` (0 to 4).
struct TLiczbaDziesietna {
    constexpr TLiczbaDziesietna(std::uint64_t jakiModul, int ileMiejsc, bool czyUjemna) noexcept
        : modul(jakiModul), miejsc(ileMiejsc), ujemna(czyUjemna) {}
    constexpr explicit TLiczbaDziesietna(std::int64_t liczba, int ileMiejsc = 0) noexcept
        : modul(liczba < 0 ? 0 - static_cast<std::uint64_t>(liczba) : static_cast<std::uint64_t>(liczba)),
          miejsc(ileMiejsc), ujemna(liczba < 0) {}

    std::uint64_t modul;
    int miejsc;
    bool ujemna;
};

// The same for an exact number: every digit is shown as it is, from 1E18 on too, and the general form has no exponent.
[[nodiscard]] ZTOK_API std::u16string FormatujLiczbe(std::u16string_view maska, TLiczbaDziesietna liczba,
                                                     const TUstawieniaFormatu& ustawienia);

// Text of a real number with the settings' decimal separator: blanks around it are skipped, `,5` and `5,` are numbers,
// thousands separators are not allowed; NAN, INF, +INF, -INF in any letter case. What is too small gives 0, what is
// too large is no number. Returns false and leaves the number alone when the text is none.
[[nodiscard]] ZTOK_API bool SprobujTekstNaFloat(std::u16string_view tekst, double& liczba,
                                                const TUstawieniaFormatu& ustawienia);
// The same; raises EBladKonwersji when the text is no number.
[[nodiscard]] ZTOK_API double TekstNaFloat(std::u16string_view tekst, const TUstawieniaFormatu& ustawienia);

// As std::from_chars for a real number, and right to the last bit on every target: where the C++ runtime was built with
// x87 arithmetic, its short way for numbers of few digits rounds twice. That way is taken here instead.
[[nodiscard]] std::from_chars_result FloatZCyfr(const char* od, const char* koniec, double& liczba) noexcept;

// ---- decimal digits of a real number, from which all text forms are made

// The number 0.d1 d2 d3 ... times 10 to the power of `wykladnik`, so `wykladnik` is the count of its integer digits.
// No digits = zero, which has no sign.
struct TCyfry {
    static constexpr int Najwiecej = 18; // of a double
    static constexpr int Pojemnosc = 20; // of an exact number
    char cyfry[Pojemnosc] = {};          // '0' to '9', the last one never '0'
    int ile = 0;
    int wykladnik = 0;
    bool ujemna = false;

    // The digit at a place: 0 units, 1 tens, -1 tenths; '0' where there is none.
    [[nodiscard]] char Cyfra(int miejsce) const noexcept {
        const int i = wykladnik - 1 - miejsce;
        return i >= 0 && i < ile ? cyfry[i] : '0';
    }
};

// Digits of a finite number, rounded to 18 significant ones (half to even) and from there to at most `znaczacych`
// (1 to 18) significant ones and `poPrzecinku` places after the point (half away from zero).
[[nodiscard]] ZTOK_API TCyfry RozlozNaCyfry(double liczba, int znaczacych, int poPrzecinku) noexcept;
// All digits of an exact number, rounded once (half away from zero) to at most `znaczacych` (1 to 20) and
// `poPrzecinku`.
[[nodiscard]] ZTOK_API TCyfry RozlozNaCyfry(TLiczbaDziesietna liczba, int znaczacych, int poPrzecinku) noexcept;

} // namespace ztok
