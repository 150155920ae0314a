// Every comparison is an order: total, antisymmetric and transitive over random triples. ZTOK_TROJKI in the environment
// sets how many triples each order gets (100000000 takes some minutes in a Release build).
#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <random>

#include "ztok/fields/Konwersje.h"
#include "ztok/kernel/Typypolbazowe.h"
#include "ztok/platform/PorownanieTekstow.h"
#include "ztok/platform/TWariant.h"

namespace {

using namespace ztok;

std::mt19937_64 los(7);

std::uint64_t IleTrojek() {
    const char* ile = std::getenv("ZTOK_TROJKI");
    return ile == nullptr ? 10000 : std::strtoull(ile, nullptr, 10);
}

template <class L, class P> void SprawdzPorzadek(const char* nazwa, const L& losuj, const P& porownaj) {
    SCOPED_TRACE(nazwa);
    for (std::uint64_t ile = IleTrojek(); ile > 0; --ile) {
        const auto a = losuj();
        const auto b = losuj();
        const auto c = losuj();
        const int ab = porownaj(a, b);
        const int bc = porownaj(b, c);
        const int ac = porownaj(a, c);
        ASSERT_TRUE(ab >= -1 && ab <= 1 && porownaj(a, a) == 0);
        ASSERT_EQ(porownaj(b, a), -ab);
        ASSERT_TRUE((ab != bc && bc != 0) || ac == ab)
            << testing::PrintToString(a) << testing::PrintToString(b) << testing::PrintToString(c);
    }
}

// Few values, so that triples meet at the edges; now and then any value.
template <class W> W Liczba() {
    static const W brzegi[] = {std::numeric_limits<W>::lowest(),
                               std::numeric_limits<W>::max(),
                               static_cast<W>(-1),
                               W{},
                               static_cast<W>(1),
                               static_cast<W>(std::numeric_limits<W>::max() / 2)};
    const std::uint64_t n = los();
    if (n % 4 != 0)
        return brzegi[n / 4 % std::size(brzegi)];
    return static_cast<W>(static_cast<std::int64_t>(n) >> (n / 4 % 60));
}

// The field's own order, and the place of the value as a feature: the same, turned round.
template <class P> void SprawdzPole() {
    using W = std::remove_cvref_t<decltype(std::declval<P>().Wartosc())>;
    static P a;
    static P b;
    SprawdzPorzadek(
        "field", [] { return Liczba<W>(); },
        [](W x, W y) {
            a.UstawWartosc(x);
            b.UstawWartosc(y);
            return a.Porownaj(b);
        });
    for (int i = 0; i < 2000; ++i) {
        a.UstawWartosc(Liczba<W>());
        b.UstawWartosc(Liczba<W>());
        ASSERT_EQ(b.PorownajZCecha(TArgument(a.GetJakoVariant()), rlRozmLiterWazny, LocaleWin1250), a.Porownaj(b));
    }
}

TEST(Porzadki, Pola) {
    SprawdzPole<TPoleByte>();
    SprawdzPole<TPoleSmallint>();
    SprawdzPole<TPoleWord>();
    SprawdzPole<TPoleInteger>();
    SprawdzPole<TPoleCardinal>();
    SprawdzPole<TPoleInt64>();
    SprawdzPole<TPoleDouble>();
    SprawdzPole<TPoleDateTime>();
}

TEST(Porzadki, Warianty) {
    const auto porownaj = [](const TWariant& a, const TWariant& b) {
        return ZTOKVarCompare(a, b, rlRozmLiterWazny, LocaleWin1250);
    };
    SprawdzPorzadek(
        "integers", [] { return TWariant(Liczba<std::int64_t>()); }, porownaj);
    SprawdzPorzadek(
        "reals", [] { return TWariant(Liczba<double>()); }, porownaj);
    SprawdzPorzadek(
        "mixed integers",
        [] { return los() % 2 == 0 ? TWariant(Liczba<std::int32_t>()) : TWariant(Liczba<std::int64_t>()); }, porownaj);
}

// Texts made of few, awkward characters.
TEST(Porzadki, Teksty) {
    const auto tekst = [] {
        static constexpr std::u16string_view znaki = u"aAąĄzŹż_-'1 bßsłŁ";
        std::u16string t;
        for (std::uint64_t n = los(), ile = n % 6; ile > 0; --ile)
            t += znaki[static_cast<std::size_t>((n /= 7, n) % znaki.size())];
        return t;
    };
    for (const bool bez : {false, true}) {
        const TRozmiarLiter litery = bez ? rlRozmLiterNiewazny : rlRozmLiterWazny;
        for (const std::uint32_t locale : {std::uint32_t{127}, std::uint32_t{LocaleWin1250}, std::uint32_t{1045}})
            SprawdzPorzadek("texts", tekst, [=](const std::u16string& a, const std::u16string& b) {
                return PorownajTeksty(a, b, litery, locale);
            });
        SprawdzPorzadek("invariant language", tekst, [=](const std::u16string& a, const std::u16string& b) {
            return PorownajWgLokalizacji(a, b, LokalizacjaNiezmienna, bez);
        });
    }
}

} // namespace
