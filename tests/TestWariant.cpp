#include "ztok/platform/TWariant.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <set>
#include <utility>

#include "tests/TabeleTestow.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/TUstawieniaFormatu.h"
#include "ztok/platform/Wyjatki.h"

namespace ztok {
namespace {

double ZBitow(const std::string& szesnastkowo) {
    return std::bit_cast<double>(static_cast<std::uint64_t>(std::stoull(szesnastkowo, nullptr, 16)));
}

// "int:5", "double:2.5@bits", "null:"
TWariant WariantZOpisu(const std::string& opis) {
    const std::size_t dwukropek = opis.find(':');
    const std::string rodzaj = opis.substr(0, dwukropek);
    const std::string tekst = opis.substr(dwukropek + 1);
    const auto rzeczywista = [&tekst] { return ZBitow(tekst.substr(tekst.find('@') + 1)); };
    if (rodzaj == "empty")
        return {};
    if (rodzaj == "null")
        return TWariant::Null();
    if (rodzaj == "int")
        return std::stoi(tekst);
    if (rodzaj == "int64")
        return static_cast<std::int64_t>(std::stoll(tekst));
    if (rodzaj == "double")
        return rzeczywista();
    if (rodzaj == "date")
        return TDataCzas{rzeczywista()};
    if (rodzaj == "bool")
        return tekst == "True";
    if (rodzaj == "str")
        return Utf16ZUtf8(tekst);
    throw std::invalid_argument(opis);
}

std::string Bity(char rodzaj, double liczba) {
    char bufor[32];
    std::snprintf(bufor, sizeof bufor, "%c:%016llX", rodzaj,
                  static_cast<unsigned long long>(std::bit_cast<std::uint64_t>(liczba)));
    return bufor;
}

// What the table has for a conversion: "ok value" or "error ".
std::string Zamien(const TWariant& w, const std::string& cel) {
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
    } catch (const EBladWariantu&) {
        return "error ";
    }
    throw std::invalid_argument(cel);
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
        EXPECT_EQ(Zamien(WariantZOpisu(w[1]), w[2]), w[8] + ' ' + w[9]) << w[1] << " to " << w[2];
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
        const TWariant a = WariantZOpisu(w[1]);
        const TWariant b = WariantZOpisu(w[2]);
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
    using TGranice64 = std::numeric_limits<std::int64_t>;
    const TWariant liczby[] = {TWariant(),
                               TWariant::Null(),
                               -1e300,
                               TGranice64::min(),
                               TWaluta{TGranice64::min()},
                               TWaluta{-10001},
                               std::int8_t{-1},
                               TWaluta{-9999},
                               TWaluta{-1},
                               std::uint8_t{0},
                               TWaluta{1},
                               0.5F,
                               std::uint16_t{1},
                               TWaluta{10001},
                               std::uint32_t{4294967295U},
                               TDataCzas{1e10},
                               TWaluta{TGranice64::max()},
                               TGranice64::max() - 1,
                               TGranice64::max(),
                               static_cast<std::uint64_t>(TGranice64::max()) + 1,
                               std::numeric_limits<std::uint64_t>::max(),
                               1e20};
    const auto ile = static_cast<int>(std::size(liczby));
    for (int i = 0; i < ile; ++i)
        for (int j = 0; j < ile; ++j)
            EXPECT_EQ(PorownajWarianty(liczby[i], liczby[j]), (i > j) - (i < j)) << i << " with " << j;
    EXPECT_EQ(PorownajWarianty(std::nan(""), 1), 0);
    EXPECT_EQ(PorownajWarianty(TWariant::AnsiString("\xB9"), u"ą"), 0);
    EXPECT_EQ(Porzadek(TWariant::Tablica({}), 1), kBlad);
}

TEST_F(TWariantTest, TypyIGranice) {
    // Every integer type: its ends fit, one more on either side does not.
    struct TGranica {
        TTypWariantu typ;
        std::int64_t min;
        std::int64_t max;
        std::u16string_view nazwa;
    };
    const TGranica granice[] = {
        {TTypWariantu::Shortint, -128, 127, u"Shortint"},
        {TTypWariantu::Byte, 0, 255, u"Byte"},
        {TTypWariantu::Smallint, -32768, 32767, u"Smallint"},
        {TTypWariantu::Word, 0, 65535, u"Word"},
        {TTypWariantu::Integer, -2147483648LL, 2147483647, u"Integer"},
        {TTypWariantu::Cardinal, 0, 4294967295LL, u"Cardinal"},
    };
    for (const TGranica& g : granice) {
        for (std::int64_t wartosc : {g.min, g.max}) {
            const TWariant wynik = TWariant(wartosc).Przeksztalc(g.typ);
            EXPECT_EQ(wynik.Typ(), g.typ);
            EXPECT_EQ(wynik.NazwaTypu(), g.nazwa);
            EXPECT_EQ(wynik.JakoInt64(), wartosc);
            EXPECT_EQ(wynik.JakoDouble(), static_cast<double>(wartosc));
            EXPECT_EQ(TWariant(wynik.JakoTekst16()).Przeksztalc(g.typ), wynik);
        }
        EXPECT_THROW(static_cast<void>(TWariant(g.min - 1).Przeksztalc(g.typ)), EBladWariantu) << g.min;
        EXPECT_THROW(static_cast<void>(TWariant(g.max + 1).Przeksztalc(g.typ)), EBladWariantu) << g.max;
        EXPECT_THROW(static_cast<void>(TWariant(std::nan("")).Przeksztalc(g.typ)), EBladWariantu);
        EXPECT_THROW(static_cast<void>(TWariant::Null().Przeksztalc(g.typ)), EBladWariantu);
        EXPECT_THROW(static_cast<void>(TWariant::Tablica({1}).Przeksztalc(g.typ)), EBladWariantu);
    }
    constexpr auto najwiekszy = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ(TWariant(najwiekszy).JakoTekst16(), u"18446744073709551615");
    EXPECT_EQ(TWariant(u"18446744073709551615").JakoUInt64(), najwiekszy);
    EXPECT_EQ(TWariant(u"-9223372036854775808").JakoInt64(), std::numeric_limits<std::int64_t>::min());
    for (const TWariant& w : {TWariant(najwiekszy), TWariant(u"18446744073709551616"), TWariant(9223372036854775808.0)})
        EXPECT_THROW(static_cast<void>(w.JakoInt64()), EBladWariantu);
    EXPECT_THROW(static_cast<void>(TWariant(-1).JakoUInt64()), EBladWariantu);
    EXPECT_THROW(static_cast<void>(TWariant(18446744073709551615.0).JakoUInt64()), EBladWariantu); // 2^64
    EXPECT_THROW(static_cast<void>(TWariant(1e300).Przeksztalc(TTypWariantu::Single)), EBladWariantu);
    EXPECT_EQ(TWariant(true).JakoTekst8(), "True");
    EXPECT_EQ(TWariant(u"żółw").Przeksztalc(TTypWariantu::AnsiString).JakoTekst8(), "\xBF\xF3\xB3w");
    EXPECT_EQ(TWariant::WideString(u"w").Typ(), TTypWariantu::WideString);
    EXPECT_EQ(NazwaTypuWariantu(static_cast<TTypWariantu>(0x2003)), u"?2003");
    EXPECT_THROW(static_cast<void>(TWariant(TDataCzas{4e6}).JakoTekst16()), EBladWariantu);
}

TEST_F(TWariantTest, Kwoty) {
    struct TPrzypadek {
        TWariant wariant;
        std::int64_t kwota;
    };
    const TPrzypadek przypadki[] = {
        {5, 50000},
        {true, -10000},
        {0.03125, 312}, // halves go to the even neighbour
        {0.09375, 938},
        {0.00015, 1}, // as a double it is below the half
        {-0.1, -1000},
        {u"12,34565", 123456},
        {u"12,34575", 123458},
        {u"12,345650001", 123457},
        {u"-0,00005", 0},
        {u"1 234,5", 12345000},
        {u",5", 5000},
        {u"1e2", 1000000},
        {u"922337203685477,5807", std::numeric_limits<std::int64_t>::max()},
        {u"-922337203685477,5808", std::numeric_limits<std::int64_t>::min()},
    };
    for (const TPrzypadek& p : przypadki) {
        const TWariant kwota = p.wariant.Przeksztalc(TTypWariantu::Currency);
        EXPECT_EQ(kwota.JakoWaluta().dziesieciotysieczne, p.kwota) << Utf8ZUtf16(p.wariant.JakoTekst16());
        EXPECT_EQ(TWariant(kwota.JakoTekst16()).JakoWaluta(), kwota.JakoWaluta()); // text keeps every digit
    }
    for (const TWariant& w : {TWariant(u"922337203685477,5808"), TWariant(1e15), TWariant(u"1e30"), TWariant(u"x"),
                              TWariant(std::numeric_limits<std::int64_t>::max()), TWariant::Null()})
        EXPECT_THROW(static_cast<void>(w.JakoWaluta()), EBladWariantu);
    EXPECT_EQ(TWariant(TWaluta{25000}).JakoInt32(), 2);
    EXPECT_EQ(TWariant(TWaluta{-35000}).JakoInt32(), -4);
    EXPECT_EQ(TWariant(TWaluta{-15001}).JakoInt32(), -2);
    EXPECT_EQ(TWariant(TWaluta{-500}).JakoTekst16(), u"-0,05");
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
