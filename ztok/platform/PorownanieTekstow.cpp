#include "ztok/platform/PorownanieTekstow.h"

#include <algorithm>
#include <bit>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "ztok/platform/Kodowania.h"

namespace ztok {

namespace {

template <class T> [[nodiscard]] int Znak(T a, T b) noexcept { return a < b ? -1 : a > b ? 1 : 0; }

// The functions below give the first place from `od` on where two texts differ, each at least `ile` long; `ile` when
// there is none.

// As they stand, looked at word by word.
struct TDokladnie {
    template <class Z>
    [[nodiscard]] std::size_t operator()(const Z* a, const Z* b, std::size_t od, std::size_t ile) const noexcept {
        constexpr std::size_t WSlowie = sizeof(std::uint64_t) / sizeof(Z);
        for (; ile - od >= WSlowie; od += WSlowie) {
            std::uint64_t x = 0;
            std::uint64_t y = 0;
            std::memcpy(&x, a + od, sizeof x);
            std::memcpy(&y, b + od, sizeof y);
            if (x != y)
                break;
        }
        while (od < ile && a[od] == b[od])
            ++od;
        return od;
    }
};

// With a to z taken as A to Z, a vector at a time: texts that differ in case differ everywhere.
struct TBezWielkosci {
    template <class Z>
    [[nodiscard]] std::size_t operator()(const Z* a, const Z* b, std::size_t od, std::size_t ile) const noexcept {
        std::size_t i = od;
#if defined(__SSE2__)
        constexpr std::size_t WWektorze = sizeof(__m128i) / sizeof(Z);
        for (; ile - i >= WWektorze; i += WWektorze)
            if (const unsigned rowne = Rowne(a + i, b + i); rowne != kWszystkie)
                return i + static_cast<unsigned>(std::countr_one(rowne)) / sizeof(Z);
        if (i < ile && ile - od >= WWektorze) { // the rest together with what was found equal before it
            i = ile - WWektorze;
            const unsigned rowne = Rowne(a + i, b + i);
            return i + static_cast<unsigned>(std::countr_one(rowne & kWszystkie)) / sizeof(Z);
        }
#endif
        while (i < ile && DuzaAscii(a[i]) == DuzaAscii(b[i]))
            ++i;
        return i;
    }

#if defined(__SSE2__)
  private:
    static constexpr unsigned kWszystkie = 0xFFFF;

    // A bit for every byte of the equal characters of a vector. Comparisons are signed: codes from the middle of the
    // range on are below 'a' then, and stay as they are.
    template <class Z> [[nodiscard]] static unsigned Rowne(const Z* a, const Z* b) noexcept {
        const __m128i x = Duze<Z>(_mm_loadu_si128(reinterpret_cast<const __m128i*>(a)));
        const __m128i y = Duze<Z>(_mm_loadu_si128(reinterpret_cast<const __m128i*>(b)));
        return static_cast<unsigned>(_mm_movemask_epi8(sizeof(Z) == 1 ? _mm_cmpeq_epi8(x, y) : _mm_cmpeq_epi16(x, y)));
    }

    template <class Z> [[nodiscard]] static __m128i Duze(__m128i znaki) noexcept {
        __m128i male;
        if constexpr (sizeof(Z) == 1)
            male = _mm_and_si128(_mm_cmpgt_epi8(znaki, _mm_set1_epi8('a' - 1)),
                                 _mm_cmplt_epi8(znaki, _mm_set1_epi8('z' + 1)));
        else
            male = _mm_and_si128(_mm_cmpgt_epi16(znaki, _mm_set1_epi16(u'a' - 1)),
                                 _mm_cmplt_epi16(znaki, _mm_set1_epi16(u'z' + 1)));
        const __m128i roznica = sizeof(Z) == 1 ? _mm_set1_epi8('a' - 'A') : _mm_set1_epi16(u'a' - u'A');
        return _mm_sub_epi8(znaki, _mm_and_si128(male, roznica));
    }
#endif
};

// Orders by the keys of the first characters that differ in their keys too, then by length.
template <class Z, class Roznica, class Klucz>
[[nodiscard]] int PorownajWgKlucza(std::basic_string_view<Z> a, std::basic_string_view<Z> b, Roznica roznica,
                                   Klucz klucz) noexcept {
    const std::size_t wspolne = std::min(a.size(), b.size());
    std::size_t i = roznica(a.data(), b.data(), 0, wspolne);
    for (; i < wspolne; i = roznica(a.data(), b.data(), i + 1, wspolne))
        if (const int wynik = Znak(klucz(a[i]), klucz(b[i])); wynik != 0)
            return wynik;
    return Znak(a.size(), b.size());
}

} // namespace

int PorownajOrdynalnie(std::u16string_view a, std::u16string_view b) noexcept {
    return PorownajWgKlucza(a, b, TDokladnie(), [](char16_t znak) noexcept { return znak; });
}

int PorownajOrdynalnie(std::string_view a, std::string_view b) noexcept {
    return Znak(a.compare(b), 0); // compares bytes as unsigned
}

int PorownajOrdynalnieBezWielkosci(std::u16string_view a, std::u16string_view b) noexcept {
    return PorownajWgKlucza(a, b, TBezWielkosci(), DuzaAscii<char16_t>);
}

int PorownajOrdynalnieBezWielkosci(std::string_view a, std::string_view b) noexcept {
    return PorownajWgKlucza(a, b, TBezWielkosci(),
                            [](char znak) noexcept { return static_cast<unsigned char>(DuzaAscii(znak)); });
}

int PorownajWin1250(std::u16string_view a, std::u16string_view b) noexcept {
    return PorownajWgKlucza(a, b, TDokladnie(), KodWin1250);
}

int PorownajWin1250BezWielkosci(std::u16string_view a, std::u16string_view b) noexcept {
    return PorownajWgKlucza(a, b, TBezWielkosci(), [](char16_t znak) noexcept { return KodWin1250(DuzaAscii(znak)); });
}

} // namespace ztok
