// The usual forms of values in the text form, written and read without detours. What is rare is refused here and left
// to the general functions (LiczbyTekst.h, DatyTekst.h), whose answers these give.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace ztok {

struct TUstawieniaFormatu;

// Bytes that any of the writing functions may need.
inline constexpr std::size_t kMiejsceWartosci = 32;

// Copies up to some tens of bytes without a call.
inline char* KopiujKrotki(char* cel, std::string_view bajty) noexcept {
    const char* od = bajty.data();
    std::size_t ile = bajty.size();
    for (; ile >= 8; ile -= 8, od += 8, cel += 8)
        std::memcpy(cel, od, 8);
    if (ile >= 4) {
        std::memcpy(cel, od, 4);
        od += 4;
        cel += 4;
        ile -= 4;
    }
    for (; ile != 0; --ile)
        *cel++ = *od++;
    return cel;
}

// Each writes the value as it stands in the text form and returns the place behind it; null for a value or a format
// that is not the usual one. Reals: up to 15 digits, of which up to six behind the point.
[[nodiscard]] char* PiszCalkowita(std::int64_t liczba, char* cel) noexcept; // never refuses
[[nodiscard]] char* PiszRzeczywista(double liczba, const TUstawieniaFormatu& format, char* cel) noexcept;
[[nodiscard]] char* PiszDate(double wartosc, const TUstawieniaFormatu& format, char* cel) noexcept;
[[nodiscard]] char* PiszCzas(double wartosc, const TUstawieniaFormatu& format, char* cel) noexcept;

// Each reads a value that the whole text is, as the general functions would; false for any text that is not the usual
// form of one. Reals: up to 15 digits, with or without a point between them.
[[nodiscard]] bool CzytajRzeczywista(std::string_view tekst, double& liczba) noexcept;
[[nodiscard]] bool CzytajDate(std::string_view tekst, const TUstawieniaFormatu& format, double& wartosc) noexcept;
[[nodiscard]] bool CzytajCzas(std::string_view tekst, const TUstawieniaFormatu& format, double& wartosc) noexcept;

} // namespace ztok
