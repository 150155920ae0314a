#include "ztok/platform/PorownanieTekstow.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "ztok/platform/Kodowania.h"

namespace ztok {

namespace {

template <class T> [[nodiscard]] int Znak(T a, T b) noexcept { return a < b ? -1 : a > b ? 1 : 0; }

// Position from `i` on of the first difference of two texts that are both at least `ile` long, or `ile`.
template <class Z>
[[nodiscard]] std::size_t PierwszaRoznica(const Z* a, const Z* b, std::size_t i, std::size_t ile) noexcept {
    constexpr std::size_t WSlowie = sizeof(std::uint64_t) / sizeof(Z);
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

// Orders by the keys of the first characters whose keys differ, then by length.
template <class Z, class Klucz>
[[nodiscard]] int PorownajWgKlucza(std::basic_string_view<Z> a, std::basic_string_view<Z> b, Klucz klucz) noexcept {
    const std::size_t wspolne = std::min(a.size(), b.size());
    for (std::size_t i = 0; (i = PierwszaRoznica(a.data(), b.data(), i, wspolne)) < wspolne; ++i) {
        const int wynik = Znak(klucz(a[i]), klucz(b[i]));
        if (wynik != 0)
            return wynik;
    }
    return Znak(a.size(), b.size());
}

} // namespace

int PorownajOrdynalnie(std::u16string_view a, std::u16string_view b) noexcept {
    return PorownajWgKlucza(a, b, [](char16_t znak) { return znak; });
}

int PorownajOrdynalnie(std::string_view a, std::string_view b) noexcept {
    return Znak(a.compare(b), 0); // compares bytes as unsigned
}

int PorownajOrdynalnieBezWielkosci(std::u16string_view a, std::u16string_view b) noexcept {
    return PorownajWgKlucza(a, b, [](char16_t znak) { return DuzaAscii(znak); });
}

int PorownajOrdynalnieBezWielkosci(std::string_view a, std::string_view b) noexcept {
    return PorownajWgKlucza(a, b, [](char znak) { return static_cast<unsigned char>(DuzaAscii(znak)); });
}

int PorownajWin1250(std::u16string_view a, std::u16string_view b) noexcept {
    return PorownajWgKlucza(a, b, [](char16_t znak) { return KodWin1250(znak); });
}

int PorownajWin1250BezWielkosci(std::u16string_view a, std::u16string_view b) noexcept {
    return PorownajWgKlucza(a, b, [](char16_t znak) { return KodWin1250(DuzaAscii(znak)); });
}

} // namespace ztok
