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

// Copies and compares up to some tens of bytes without a call.
inline char* KopiujKrotki(char* cel, std::string_view bajty) noexcept {
    const char* const od = bajty.data();
    const std::size_t ile = bajty.size();
    if (ile >= 8) {
        for (std::size_t i = 0; i + 8 <= ile; i += 8)
            std::memcpy(cel + i, od + i, 8);
        std::memcpy(cel + ile - 8, od + ile - 8, 8);
    } else if (ile >= 4) {
        std::memcpy(cel, od, 4);
        std::memcpy(cel + ile - 4, od + ile - 4, 4);
    } else {
        for (std::size_t i = 0; i < ile; ++i)
            cel[i] = od[i];
    }
    return cel + ile;
}

inline bool RowneKrotkie(const char* a, const char* b, std::size_t ile) noexcept {
    const auto rozne = [&](auto czesc, std::size_t i) {
        auto druga = czesc;
        std::memcpy(&czesc, a + i, sizeof czesc);
        std::memcpy(&druga, b + i, sizeof druga);
        return czesc != druga;
    };
    if (ile >= 8) {
        for (std::size_t i = 0; i + 8 <= ile; i += 8)
            if (rozne(std::uint64_t{0}, i))
                return false;
        return !rozne(std::uint64_t{0}, ile - 8);
    }
    if (ile >= 4)
        return !rozne(std::uint32_t{0}, 0) && !rozne(std::uint32_t{0}, ile - 4);
    for (std::size_t i = 0; i < ile; ++i)
        if (a[i] != b[i])
            return false;
    return true;
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

// The value that a field of that EKodPola, of dates, times or both, takes from its text in UTF-8, whatever its form.
// EBladKonwersji when it is none.
[[nodiscard]] double ChwilaZTekstu(unsigned kod, std::string_view bajty);

} // namespace ztok
