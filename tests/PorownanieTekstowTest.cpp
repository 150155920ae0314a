#include "ztok/platform/PorownanieTekstow.h"

#include "tests/Testy.h"

namespace ztok {
namespace {

using testy::WczytajTabele;

TEST(PorownanieTekstow, OrdinalMatchesTheTable) {
    for (const auto& w : WczytajTabele("compare_text.tsv")) {
        SCOPED_TRACE(w.numer);
        EXPECT_EQ(PorownajOrdynalnieBezWielkosci(w.Utf8(1), w.Utf8(2)), w.Calkowita(3));
        EXPECT_EQ(PorownajOrdynalnie(w.Utf8(1), w.Utf8(2)), w.Calkowita(4));
        EXPECT_EQ(PorownajOrdynalnieBezWielkosci(Win1250(w.Tekst(1)), Win1250(w.Tekst(2))), w.Calkowita(5));
        EXPECT_EQ(PorownajOrdynalnie(Win1250(w.Tekst(1)), Win1250(w.Tekst(2))), w.Calkowita(6));
        // The order of the page's bytes is the Windows-1250 order of the characters.
        EXPECT_EQ(PorownajWin1250BezWielkosci(w.Tekst(1), w.Tekst(2)), w.Calkowita(5));
        EXPECT_EQ(PorownajWin1250(w.Tekst(1), w.Tekst(2)), w.Calkowita(6));
    }
}

TEST(PorownanieTekstow, LanguageOrderMatchesTheTable) {
    for (const auto& w : WczytajTabele("compare_string.tsv")) {
        SCOPED_TRACE(w.numer);
        const std::u16string a = w.Tekst(1);
        const std::u16string b = w.Tekst(2);
        EXPECT_EQ(PorownajWgLokalizacji(a, b, LokalizacjaPolska, false), w.Calkowita(3));
        EXPECT_EQ(PorownajWgLokalizacji(a, b, LokalizacjaPolska, true), w.Calkowita(4));
        EXPECT_EQ(PorownajWgLokalizacji(a, b, LokalizacjaNiezmienna, false), w.Calkowita(5));
        EXPECT_EQ(PorownajWgLokalizacji(a, b, LokalizacjaNiezmienna, true), w.Calkowita(6));
        EXPECT_EQ(PorownajWgLokalizacji(b, a, LokalizacjaPolska, false), -w.Calkowita(3));
    }
}

TEST(PorownanieTekstow, PolishAlphabetInOrder) {
    const std::u16string_view alfabet = u"aąbcćdeęfghijklłmnńoópqrsśtuvwxyzźż";
    for (std::size_t i = 0; i < alfabet.size(); ++i)
        for (std::size_t k = 0; k < alfabet.size(); ++k) // the letter decides over all that follows
            EXPECT_EQ(PorownajWgLokalizacji(std::u16string(1, alfabet[i]) + u"x", std::u16string(1, alfabet[k]) + u"x",
                                            LokalizacjaPolska, false),
                      (i > k) - (i < k));
}

// Texts of every length that differ in case throughout and in one place truly, against a comparison unit by unit.
TEST(PorownanieTekstow, LongTextsCompareAsUnitByUnit) {
    const auto model = [](const auto& a, const auto& b, auto klucz) {
        for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i)
            if (klucz(a[i]) != klucz(b[i]))
                return klucz(a[i]) < klucz(b[i]) ? -1 : 1;
        return a.size() < b.size() ? -1 : a.size() > b.size() ? 1 : 0;
    };
    const auto kod = [](char16_t znak) { return int{znak}; };
    const auto duzy = [](char16_t znak) { return int{DuzaAscii(znak)}; };
    const auto strona = [](char16_t znak) { return KodWin1250(znak); };
    const auto duzaStrona = [](char16_t znak) { return KodWin1250(DuzaAscii(znak)); };
    const auto bajt = [](char znak) { return int{static_cast<unsigned char>(DuzaAscii(znak))}; };
    // Around the ends of the alphabets, of ASCII and of the signed range; U+00A5 and U+01A5 have one key, and U+0104
    // has the byte A5.
    const std::u16string_view znaki = u"@AZ[`az{\u007F\u00A5\u0104\u0105\u01A5\u7FFF\u8000\uFF41\uFFFF";
    std::mt19937 losowe(11);
    for (int proba = 0; proba < 40000; ++proba) {
        std::u16string a(losowe() % 40, u' ');
        for (char16_t& znak : a)
            znak = znaki[losowe() % znaki.size()];
        std::u16string b = a;
        for (char16_t& znak : b)
            if (losowe() % 2 == 0)
                znak = znak >= u'a' && znak <= u'z' ? DuzaAscii(znak) : znak == u'\u00A5' ? u'\u01A5' : znak;
        if (!b.empty() && losowe() % 2 == 0)
            b[losowe() % b.size()] = znaki[losowe() % znaki.size()];
        b.resize(b.size() - losowe() % 3 % (b.size() + 1));
        ASSERT_EQ(PorownajOrdynalnie(a, b), model(a, b, kod));
        ASSERT_EQ(PorownajOrdynalnieBezWielkosci(a, b), model(a, b, duzy));
        ASSERT_EQ(PorownajWin1250(a, b), model(a, b, strona));
        ASSERT_EQ(PorownajWin1250BezWielkosci(a, b), model(a, b, duzaStrona));
        const std::string a8 = Win1250(a);
        const std::string b8 = Win1250(b);
        ASSERT_EQ(PorownajOrdynalnieBezWielkosci(a8, b8), model(a8, b8, bajt));
    }
}

} // namespace
} // namespace ztok
