#include "ztok/platform/PorownanieTekstow.h"

#include <algorithm>
#include <cstring>

#include "ztok/platform/Kodowania.h"

namespace ztok {

namespace {

template <class T> [[nodiscard]] int Znak(T a, T b) noexcept { return a < b ? -1 : a > b ? 1 : 0; }

// Length of the common beginning of two texts, each at least `ile` long, looked at word by word.
template <class Z> [[nodiscard]] std::size_t WspolnyPoczatek(const Z* a, const Z* b, std::size_t ile) noexcept {
    constexpr std::size_t WSlowie = sizeof(std::uint64_t) / sizeof(Z);
    std::size_t i = 0;
    for (; ile - i >= WSlowie; i += WSlowie) {
        std::uint64_t x = 0;
        std::uint64_t y = 0;
        std::memcpy(&x, a + i, sizeof x);
        std::memcpy(&y, b + i, sizeof y);
        if (x != y)
            break;
    }
    while (i < ile && a[i] == b[i])
        ++i;
    return i;
}

// Orders by the keys of the first characters whose folded forms and keys differ, then by length.
template <class Z, class Zwin, class Klucz>
[[nodiscard]] int PorownajWgKlucza(std::basic_string_view<Z> a, std::basic_string_view<Z> b, Zwin zwin,
                                   Klucz klucz) noexcept {
    const std::size_t wspolne = std::min(a.size(), b.size());
    for (std::size_t i = WspolnyPoczatek(a.data(), b.data(), wspolne); i < wspolne; ++i) {
        const Z zA = zwin(a[i]);
        const Z zB = zwin(b[i]);
        if (zA == zB)
            continue;
        if (const int wynik = Znak(klucz(zA), klucz(zB)); wynik != 0)
            return wynik;
    }
    return Znak(a.size(), b.size());
}

constexpr auto BezZmiany = [](auto znak) noexcept { return znak; };
constexpr auto NaDuza = [](auto znak) noexcept { return DuzaAscii(znak); };

} // namespace

int PorownajOrdynalnie(std::u16string_view a, std::u16string_view b) noexcept {
    return PorownajWgKlucza(a, b, BezZmiany, BezZmiany);
}

int PorownajOrdynalnie(std::string_view a, std::string_view b) noexcept {
    return Znak(a.compare(b), 0); // compares bytes as unsigned
}

int PorownajOrdynalnieBezWielkosci(std::u16string_view a, std::u16string_view b) noexcept {
    return PorownajWgKlucza(a, b, NaDuza, BezZmiany);
}

int PorownajOrdynalnieBezWielkosci(std::string_view a, std::string_view b) noexcept {
    return PorownajWgKlucza(a, b, NaDuza, [](char znak) noexcept { return static_cast<unsigned char>(znak); });
}

int PorownajWin1250(std::u16string_view a, std::u16string_view b) noexcept {
    return PorownajWgKlucza(a, b, BezZmiany, KodWin1250);
}

int PorownajWin1250BezWielkosci(std::u16string_view a, std::u16string_view b) noexcept {
    return PorownajWgKlucza(a, b, NaDuza, KodWin1250);
}

} // namespace ztok
