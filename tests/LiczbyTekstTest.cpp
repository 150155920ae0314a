#include "tests/Testy.h"

namespace ztok {
namespace {

using testy::Blad;
using testy::TWierszTabeli;
using testy::WczytajTabele;

TUstawieniaFormatu Separatory(const TWierszTabeli& w, std::size_t dziesietny) {
    TUstawieniaFormatu u = UstawieniaProcesu();
    u.separatorDziesietny = w.Tekst(dziesietny).at(0);
    const std::u16string tysiace = w.Tekst(dziesietny + 1);
    u.separatorTysiecy = tysiace.empty() ? char16_t(0) : tysiace[0];
    return u;
}

TEST(LiczbyTekst, IntegersMatchTheTable) {
    for (const auto& w : WczytajTabele("int_parse.tsv")) {
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
    for (const std::int64_t liczba : {std::numeric_limits<std::int64_t>::min(), std::int64_t{-10}, std::int64_t{0},
                                      std::numeric_limits<std::int64_t>::max()})
        EXPECT_EQ(TekstNaInt64(IntNaTekst(liczba)), liczba);
    EXPECT_EQ(UIntNaTekst(18446744073709551615U), u"18446744073709551615");
    EXPECT_EQ(TekstNaInt(u"-42"), -42);
}

TEST(LiczbyTekst, ConversionErrorsQuoteTheText) {
    EXPECT_EQ(Blad<EBladKonwersji>([] { (void)TekstNaInt(u"1ą"); }), u"'1ą' nie jest poprawną liczbą całkowitą");
    EXPECT_EQ(Blad<EBladKonwersji>([] { (void)TekstNaInt64(u""); }), u"'' nie jest poprawną liczbą całkowitą");
    EXPECT_EQ(Blad<EBladKonwersji>([] { (void)TekstNaFloat(u" x", UstawieniaPolskie()); }),
              u"' x' nie jest poprawną liczbą zmiennoprzecinkową");
}

TEST(LiczbyTekst, GeneralFormMatchesTheTable) {
    for (const auto& w : WczytajTabele("float_to_str.tsv")) {
        SCOPED_TRACE(w.numer);
        TUstawieniaFormatu u;
        u.separatorDziesietny = w.Tekst(3).at(0);
        EXPECT_EQ(Utf8ZUtf16(FloatNaTekst(w.Rzeczywista(2), u)), w.Utf8(6));
    }
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
    for (const auto& w : WczytajTabele("str_to_float.tsv")) {
        if (w.Utf8(6) == "?")
            continue;
        SCOPED_TRACE(w.numer);
        double liczba = 77;
        const bool dobra = w.Utf8(6) == "ok";
        EXPECT_EQ(SprobujTekstNaFloat(w.Tekst(1), liczba, Separatory(w, 2)), dobra);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(liczba), dobra ? w.Bity(7) : std::bit_cast<std::uint64_t>(77.0));
    }
    double liczba = 0;
    EXPECT_TRUE(SprobujTekstNaFloat(u"NaN", liczba, UstawieniaPolskie()) && std::isnan(liczba));
}

TEST(LiczbyTekst, MasksMatchTheTable) {
    int sprawdzonych = 0;
    for (const auto& w : WczytajTabele("format_float.tsv")) {
        if (w.Utf8(7) == "?")
            continue;
        SCOPED_TRACE(std::to_string(w.numer) + ' ' + w.Utf8(0));
        EXPECT_EQ(Utf8ZUtf16(FormatujLiczbe(w.Tekst(1), w.Rzeczywista(3), Separatory(w, 4))), w.Utf8(7));
        ++sprawdzonych;
    }
    EXPECT_GT(sprawdzonych, 180);
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
