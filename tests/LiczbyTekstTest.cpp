#include "tests/Testy.h"

namespace ztok {
namespace {

using testy::TWierszTabeli;

TUstawieniaFormatu Separatory(const TWierszTabeli& w, std::size_t dziesietny) {
    TUstawieniaFormatu u = UstawieniaProcesu();
    u.separatorDziesietny = w.Tekst(dziesietny).at(0);
    const std::u16string tysiace = w.Tekst(dziesietny + 1);
    u.separatorTysiecy = tysiace.empty() ? char16_t(0) : tysiace[0];
    return u;
}

TEST(LiczbyTekst, IntegersMatchTheTable) {
    for (const auto& w : testy::WczytajTabele("int_parse.tsv")) {
        SCOPED_TRACE(w.numer);
        std::int32_t krotka = 77;
        const bool dobra = w.Utf8(4) != "error";
        EXPECT_EQ(SprobujTekstNaInt(w.Tekst(1), krotka), dobra);
        EXPECT_EQ(krotka, dobra ? w.Calkowita(4) : 77);
        std::int64_t dluga = 77;
        const bool dobra64 = w.Utf8(5) != "error";
        EXPECT_EQ(SprobujTekstNaInt64(w.Tekst(1), dluga), dobra64);
        EXPECT_EQ(dluga, dobra64 ? w.Calkowita(5) : 77);
    }
    EXPECT_EQ(UIntNaTekst(18446744073709551615U), u"18446744073709551615");
}

TEST(LiczbyTekst, GeneralFormMatchesTheTable) {
    testy::SprawdzTabele("float_to_str.tsv", 6, [](const TWierszTabeli& w) {
        TUstawieniaFormatu u;
        u.separatorDziesietny = w.Tekst(3).at(0);
        return Utf8ZUtf16(FloatNaTekst(w.Rzeczywista(2), u));
    });
    EXPECT_EQ(FloatNaTekst(-0.0, UstawieniaPolskie()), u"0");
}

TEST(LiczbyTekst, StoredFormReadsBackToTheSameBits) {
    const TUstawieniaFormatu u = UstawieniaPolskie();
    std::mt19937_64 losowe(5);
    for (int i = 0; i < 120000; ++i) {
        const std::uint64_t bity = i % 3 == 0 ? losowe() & 0x800FFFFFFFFFFFFFU >> losowe() % 50 : losowe();
        // Any bits; amounts; digits and powers of ten that are read the short way.
        const double liczba = i % 6 == 1   ? std::round(std::ldexp(double(bity), -44)) / 100
                              : i % 6 == 4 ? double(bity >> 11U) * std::pow(10, double(losowe() % 40) - 20)
                                           : std::bit_cast<double>(bity);
        if (std::isnan(liczba))
            continue;
        const std::u16string tekst = FloatNaTekstDokladny(liczba, u);
        double odczytana = 0;
        ASSERT_TRUE(SprobujTekstNaFloat(tekst, odczytana, u)) << Utf8ZUtf16(tekst);
        ASSERT_EQ(std::bit_cast<std::uint64_t>(odczytana), std::bit_cast<std::uint64_t>(liczba)) << Utf8ZUtf16(tekst);
        const std::u16string ogolny = FloatNaTekst(liczba, u);
        if (liczba != 0 && SprobujTekstNaFloat(ogolny, odczytana, u) && odczytana == liczba) {
            ASSERT_EQ(tekst, ogolny);
        }
    }
}

TEST(LiczbyTekst, RealNumbersAreReadAsTheTableSays) {
    testy::SprawdzOdczyt("str_to_float.tsv", 6, [](const TWierszTabeli& w, double& liczba) {
        return SprobujTekstNaFloat(w.Tekst(1), liczba, Separatory(w, 2));
    });
}

TEST(LiczbyTekst, MasksMatchTheTable) {
    testy::SprawdzTabele("format_float.tsv", 7, [](const TWierszTabeli& w) {
        return Utf8ZUtf16(FormatujLiczbe(w.Tekst(1), w.Rzeczywista(3), Separatory(w, 4)));
    });
}

TEST(UstawieniaFormatu, ProcessAndStoredSettingsDifferInSeparatorsOnly) {
    TUstawieniaFormatu u = UstawieniaProcesu();
    EXPECT_EQ(FloatNaTekst(0.5, u), u"0,5");
    EXPECT_EQ(u.separatorTysiecy, u'\u00A0');
    u.separatorDziesietny = u'.';
    u.separatorTysiecy = u' ';
    EXPECT_EQ(u, UstawieniaPolskie());
    UstawieniaProcesu().separatorDziesietny = u'!';
    EXPECT_EQ(UstawieniaProcesu().separatorDziesietny, u'!');
    ZwolnijUstawieniaProcesu();
    EXPECT_EQ(UstawieniaProcesu().separatorDziesietny, u',');
    ZwolnijUstawieniaProcesu();
}

} // namespace
} // namespace ztok
