#include "tests/Testy.h"

#include <set>

namespace ztok {
namespace {

using testy::Wariant;

std::string Bity(char rodzaj, double liczba) {
    char bufor[32];
    std::snprintf(bufor, sizeof bufor, "%c:%016llX", rodzaj,
                  static_cast<unsigned long long>(std::bit_cast<std::uint64_t>(liczba)));
    return bufor;
}

// What the table has for a conversion: "ok value" or "error ".
std::string Zamien(const TWariant& w, const std::string& cel, std::string& blad) {
    try {
        if (cel == "integer")
            return "ok i:" + std::to_string(w.JakoInt32());
        if (cel == "int64")
            return "ok l:" + std::to_string(w.JakoInt64());
        if (cel == "double")
            return "ok " + Bity('f', w.JakoDouble());
        if (cel == "boolean")
            return w.JakoBool() ? "ok b:True" : "ok b:False";
        if (cel == "datetime")
            return "ok " + Bity('d', w.JakoData().dni);
        // A string is the variant of that type, text the plain text, which null has too.
        if (cel == "string")
            return "ok s:" + Utf8ZUtf16(w.Przeksztalc(TTypWariantu::UnicodeString).JakoTekst16());
        if (cel == "text")
            return "ok s:" + Utf8ZUtf16(w.JakoTekst16());
        if (cel == "uint64")
            return "ok " + std::to_string(w.JakoUInt64());
        if (cel == "currency")
            return "ok " + std::to_string(w.JakoWaluta().dziesieciotysieczne);
        // Any other type by its number in the table: its name, and its text and bytes.
        const TWariant wynik = w.Przeksztalc(static_cast<TTypWariantu>(std::stoi(cel, nullptr, 16)));
        return "ok " + Utf8ZUtf16(wynik.NazwaTypu()) + ' ' + Utf8ZUtf16(wynik.JakoTekst16()) + ' ' +
               strumienie::Szesnastkowo(wynik.JakoTekst8());
    } catch (const EBladWariantu& e) {
        blad = Utf8ZUtf16(e.Komunikat());
        return "error ";
    }
}

// Polish settings of the process for the time of a test.
class TWariantTest : public testing::Test {
  protected:
    TWariantTest() : poprzednie_(UstawieniaProcesu()) {
        TUstawieniaFormatu u = UstawieniaPolskie();
        u.separatorDziesietny = u',';
        UstawieniaProcesu() = u;
    }
    ~TWariantTest() override { UstawieniaProcesu() = poprzednie_; }

  private:
    TUstawieniaFormatu poprzednie_;
};

TEST_F(TWariantTest, TablicaKonwersji) {
    int porownano = 0;
    for (const testy::TWierszTabeli& w : testy::WczytajTabele("variant_conv.tsv")) {
        if (w[8] == "?")
            continue;
        SCOPED_TRACE(std::to_string(w.numer) + ' ' + w[1] + " to " + w[2]);
        std::string blad;
        std::string wynik = Zamien(Wariant(w[1]), w[2], blad);
        if (!w[9].empty())
            wynik += blad;
        EXPECT_EQ(wynik, w[8] + ' ' + w[9]);
        ++porownano;
    }
    EXPECT_GT(porownano, 200);
}

constexpr int kBlad = 99;
int Porzadek(const TWariant& a, const TWariant& b) {
    try {
        return PorownajWarianty(a, b);
    } catch (const EBladWariantu&) {
        return kBlad;
    }
}

// Open rows that are decided otherwise; docs/wartosci-oczekiwane-warianty.md has the reasons.
const std::set<std::pair<std::string, std::string>> kInaczej = {{"int:1", "bool:True"}, {"int:2", "bool:True"}};

TEST_F(TWariantTest, TablicaPorownan) {
    int porownano = 0;
    for (const testy::TWierszTabeli& w : testy::WczytajTabele("variant_compare.tsv")) {
        const TWariant a = Wariant(w[1]);
        const TWariant b = Wariant(w[2]);
        // Missing values have an order only among the operators.
        const std::string oczekiwany = w[3] != "ne" ? w[3] : w[4] == "L" ? "-1" : "1";
        const int znak = oczekiwany == "error" ? kBlad : kInaczej.contains({w[1], w[2]}) ? 1 : std::stoi(oczekiwany);
        EXPECT_EQ(Porzadek(a, b), znak) << w[1] << " with " << w[2];
        EXPECT_EQ(Porzadek(b, a), znak == kBlad ? kBlad : -znak) << w[2] << " with " << w[1];
        ++porownano;
    }
    EXPECT_GT(porownano, 90);
}

// Numbers in ascending order: every pair must compare by its places.
TEST_F(TWariantTest, PorzadekLiczb) {
    const std::vector<testy::TWierszTabeli> liczby = testy::WczytajTabele("variant_order.tsv");
    for (const auto& a : liczby)
        for (const auto& b : liczby)
            EXPECT_EQ(PorownajWarianty(Wariant(a[0]), Wariant(b[0])), (a.numer > b.numer) - (a.numer < b.numer))
                << a[0] << " with " << b[0];
    EXPECT_EQ(PorownajWarianty(std::nan(""), 1), 0);
    EXPECT_EQ(PorownajWarianty(TWariant::AnsiString("\xB9"), u"ą"), 0);
    EXPECT_EQ(Porzadek(TWariant::Tablica({}), 1), kBlad);
    EXPECT_EQ(NazwaTypuWariantu(static_cast<TTypWariantu>(0x2003)), u"?2003");
}

TEST_F(TWariantTest, WartosciITablice) {
    const TWariant wzory[] = {{},
                              TWariant::Null(),
                              5,
                              2.5,
                              u"tekst dłuższy niż bufor w miejscu",
                              TWariant::AnsiString("a"),
                              TWariant::Tablica({1, u"dwa", TWariant::Tablica({3})})};
    for (const TWariant& wzor : wzory) {
        for (const TWariant& poprzedni : wzory) {
            TWariant kopia(wzor);
            TWariant cel(poprzedni);
            cel = kopia;
            EXPECT_EQ(cel, wzor);
            TWariant& sam = cel;
            cel = sam;
            cel = std::move(sam);
            EXPECT_EQ(cel, wzor);
            TWariant zrodlo(std::move(cel));
            EXPECT_TRUE(cel.JestPusty());
            cel = poprzedni;
            cel = std::move(zrodlo);
            EXPECT_EQ(cel, wzor);
        }
    }
    // An array may be replaced by its own element.
    TWariant tablica = wzory[6];
    tablica.Elementy()[2].Elementy().push_back(4);
    EXPECT_EQ(wzory[6].Elementy()[2].Elementy().size(), 1U);
    tablica = tablica.Elementy()[2];
    EXPECT_EQ(tablica, TWariant::Tablica({3, 4}));
    tablica = std::move(tablica.Elementy()[1]);
    EXPECT_EQ(tablica, TWariant(4));
    EXPECT_THROW(static_cast<void>(tablica.Elementy()), EBladWariantu);
    // Type and value, not value alone.
    EXPECT_NE(TWariant(4), TWariant(4.0));
    static_assert(std::is_nothrow_move_constructible_v<TWariant> && std::is_nothrow_move_assignable_v<TWariant>);
    static_assert(!std::is_constructible_v<TWariant, const char*> && !std::is_constructible_v<TWariant, int*>);
}

} // namespace
} // namespace ztok
