#include "ztok/platform/DatyTekst.h"

#include "tests/Testy.h"

namespace ztok {
namespace {

using testy::SprawdzOdczyt;
using testy::SprawdzTabele;
using testy::TWierszTabeli;

// The tables were made on this day.
TData DzienTabel() noexcept { return {2026, 11, 21}; }

class DatyTekst : public testing::Test {
  protected:
    void SetUp() override { UstawFunkcjeDzisiaj(DzienTabel); }
    void TearDown() override { UstawFunkcjeDzisiaj(nullptr); }

    TUstawieniaFormatu u = UstawieniaProcesu();
};

TEST_F(DatyTekst, TextIsReadAsTheTablesSay) {
    const auto tabela = [this](const char* nazwa, auto funkcja) {
        SprawdzOdczyt(nazwa, 5, [&](const auto& w, double& wartosc) { return funkcja(w.Tekst(1), wartosc, u); });
    };
    tabela("str_to_date.tsv", SprobujTekstNaDate);
    tabela("str_to_time.tsv", SprobujTekstNaCzas);
    tabela("str_to_datetime.tsv", SprobujTekstNaDateICzas);
}

TEST_F(DatyTekst, MasksMatchTheTable) {
    SprawdzTabele("format_datetime.tsv", 5, [this](const TWierszTabeli& w) {
        return Utf8ZUtf16(FormatujDateCzas(w.Tekst(1), w.Rzeczywista(3), u));
    });
}

TEST_F(DatyTekst, TextFormsMatchTheTable) {
    SprawdzTabele("date_to_str.tsv", 7, [this](const TWierszTabeli& w) {
        const std::string data = Utf8ZUtf16(DataNaTekst(w.Rzeczywista(2), u));
        EXPECT_EQ(Utf8ZUtf16(CzasNaTekst(w.Rzeczywista(2), u)), w[4]);
        EXPECT_EQ(Utf8ZUtf16(DataICzasNaTekst(w.Rzeczywista(2), u)), w[5]);
        return data;
    });
}

TEST_F(DatyTekst, EveryDayAndEveryTimeComesBack) {
    double poprzednia = -693594;
    for (TData d{1, 1, 1}; d.rok <= 9999;) {
        double wartosc = 0;
        if (!SprobujZlozycDate(d, wartosc)) { // past the end of the month
            d = d.miesiac == 12 ? TData{d.rok + 1, 1, 1} : TData{d.rok, d.miesiac + 1, 1};
            continue;
        }
        ASSERT_EQ(wartosc, poprzednia + 1);
        poprzednia = wartosc;
        TData odczytana;
        TCzas czas;
        ASSERT_TRUE(SprobujRozlozycDateICzas(ZlaczDateICzas(wartosc, 0.75), odczytana, czas));
        ASSERT_EQ(odczytana, d);
        ASSERT_EQ(czas, (TCzas{18, 0, 0, 0}));
        ++d.dzien;
    }
    EXPECT_EQ(poprzednia, 2958465);
    std::mt19937 losowe(3);
    for (int i = 0; i < 20000; ++i) {
        const double dzien = static_cast<double>(losowe() % 3652058) - 693593.0;
        const TCzas czas{static_cast<int>(losowe() % 24), static_cast<int>(losowe() % 60),
                         static_cast<int>(losowe() % 60), static_cast<int>(losowe() % 1000)};
        double ulamek = 0;
        ASSERT_TRUE(SprobujZlozycCzas(czas, ulamek));
        TData data;
        TCzas odczytany;
        ASSERT_TRUE(SprobujRozlozycDateICzas(ZlaczDateICzas(dzien, ulamek), data, odczytany));
        ASSERT_EQ(odczytany, czas);
        const std::u16string tekst = FormatujDateCzas(u"c,zzz", ZlaczDateICzas(dzien, ulamek), u);
        double odczytana = 0;
        if (czas.godzina + czas.minuta + czas.sekunda > 0) {
            ASSERT_TRUE(SprobujTekstNaDateICzas(tekst, odczytana, u)) << Utf8ZUtf16(tekst);
            ASSERT_EQ(odczytana, ZlaczDateICzas(dzien, ulamek));
        }
    }
}

TEST_F(DatyTekst, OutOfRangeIsRefused) {
    for (const double wartosc : {2958466.0, -693594.0, 1e300, -1e300, std::numeric_limits<double>::infinity(),
                                 std::numeric_limits<double>::quiet_NaN(), 2958465.9999999999}) {
        EXPECT_THROW((void)FormatujDateCzas(u"yyyy", wartosc, u), EBladKonwersji);
        TData data;
        TCzas czas;
        EXPECT_FALSE(SprobujRozlozycDateICzas(wartosc, data, czas));
        EXPECT_EQ(data, TData{});
    }
}

TEST_F(DatyTekst, OtherSettings) {
    u.krotkiFormatDaty = u"dd/mm/yyyy";
    u.separatorDaty = u'.';
    u.separatorCzasu = u'.';
    u.dlugiFormatCzasu = u"h:mm:ss ampm";
    u.napisAM = u"rano";
    u.napisPM = u"po poł.";
    u.oknoWieku = 0;
    const double chwila = 45356.75;
    EXPECT_EQ(DataICzasNaTekst(chwila, u), u"05.03.2024 6.00.00 po poł.");
    EXPECT_EQ(TekstNaDateICzas(u"5.3.2024 6.00.00 PO poł.", u), chwila);
    EXPECT_EQ(TekstNaDateICzas(u"5 . 3 . 24 6.0 pm", u), chwila);
    EXPECT_EQ(TekstNaDate(u"1.2.99", u), TekstNaDate(u"1.2.2099", u)); // no window: the current century
    EXPECT_EQ(TekstNaDate(u"5.3", u), TekstNaDate(u"5.3.2026", u));
    u.krotkiFormatDaty = u"m d y";
    u.separatorDaty = u' ';
    EXPECT_EQ(TekstNaDateICzas(u"3 5 2024 18.0", u), chwila);
    // Formats that name each other end.
    u.krotkiFormatDaty = u"ddddd c";
    EXPECT_LT(DataICzasNaTekst(chwila, u).size(), 100U);
}

TEST(Zegar, SystemTellsADate) {
    double wartosc = 0;
    EXPECT_TRUE(SprobujZlozycDate(DzisiajWgSystemu(), wartosc));
    EXPECT_GT(wartosc, 45000);
}

} // namespace
} // namespace ztok
