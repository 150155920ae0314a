#include "tests/Testy.h"

namespace ztok {
namespace {

using testy::Wariant;

std::string Bity(char rodzaj, double liczba) {
    char bufor[32];
    std::snprintf(bufor, sizeof bufor, "%c:%016llX", rodzaj,
                  static_cast<unsigned long long>(std::bit_cast<std::uint64_t>(liczba)));
    return bufor;
}

// The targets of the table. A string is the variant of that type, text the plain text, which null has too.
using W = const TWariant&;
const std::map<std::string, std::string (*)(W)> kCele = {
    {"integer", [](W w) { return "i:" + std::to_string(w.JakoInt32()); }},
    {"int64", [](W w) { return "l:" + std::to_string(w.JakoInt64()); }},
    {"double", [](W w) { return Bity('f', w.JakoDouble()); }},
    {"boolean", [](W w) { return std::string(w.JakoBool() ? "b:True" : "b:False"); }},
    {"datetime", [](W w) { return Bity('d', w.JakoData().dni); }},
    {"string", [](W w) { return "s:" + Utf8ZUtf16(w.Przeksztalc(TTypWariantu::UnicodeString).JakoTekst16()); }},
    {"text", [](W w) { return "s:" + Utf8ZUtf16(w.JakoTekst16()); }},
    {"uint64", [](W w) { return std::to_string(w.JakoUInt64()); }},
    {"currency", [](W w) { return std::to_string(w.JakoWaluta().dziesieciotysieczne); }},
};

// What the table has for a conversion: "ok value" or "error ".
std::string Zamien(const TWariant& w, const std::string& cel, std::string& blad) {
    try {
        if (const auto funkcja = kCele.find(cel); funkcja != kCele.end())
            return "ok " + funkcja->second(w);
        // Any other type by its number in the table: its name, and its text and bytes.
        const TWariant wynik = w.Przeksztalc(static_cast<TTypWariantu>(std::stoi(cel, nullptr, 16)));
        return "ok " + Utf8ZUtf16(wynik.NazwaTypu()) + ' ' + Utf8ZUtf16(wynik.JakoTekst16()) + ' ' +
               strumienie::Szesnastkowo(wynik.JakoTekst8());
    } catch (const EBladWariantu& e) {
        blad = Utf8ZUtf16(e.Komunikat());
        return "error ";
    }
}

TEST(Wariant, TablicaKonwersji) {
    for (const testy::TWierszTabeli& w : testy::WczytajTabele("variant_conv.tsv", 8)) {
        std::string blad;
        const std::string wynik = Zamien(Wariant(w[1]), w[2], blad);
        EXPECT_EQ(w[9].empty() ? wynik : wynik + blad, w[8] + ' ' + w[9]) << w.numer << ' ' << w[1] << " to " << w[2];
    }
}

std::string Porzadek(const TWariant& a, const TWariant& b) {
    try {
        return std::to_string(PorownajWarianty(a, b));
    } catch (const EBladWariantu&) {
        return "error";
    }
}

TEST(Wariant, TablicaPorownan) {
    testy::SprawdzTabele("variant_compare.tsv", 7, [](const testy::TWierszTabeli& w) {
        EXPECT_EQ(Porzadek(Wariant(w[2]), Wariant(w[1])), w[7] == "error" ? w[7] : std::to_string(-std::stoi(w[7])));
        return Porzadek(Wariant(w[1]), Wariant(w[2]));
    });
}

// Numbers in ascending order: every pair must compare by its places.
TEST(Wariant, PorzadekLiczb) {
    const std::vector<testy::TWierszTabeli> liczby = testy::WczytajTabele("variant_order.tsv");
    for (const auto& a : liczby)
        for (const auto& b : liczby)
            EXPECT_EQ(PorownajWarianty(Wariant(a[0]), Wariant(b[0])), (a.numer > b.numer) - (a.numer < b.numer))
                << a[0] << " with " << b[0];
    EXPECT_EQ(PorownajWarianty(std::nan(""), 1), 0);
    EXPECT_EQ(PorownajWarianty(TWariant::AnsiString("\xB9"), u"ą"), 0);
    EXPECT_EQ(Porzadek(TWariant::Tablica({}), 1), "error");
    EXPECT_EQ(NazwaTypuWariantu(static_cast<TTypWariantu>(0x2003)), u"?2003");
}

TEST(Wariant, WartosciITablice) {
    const std::vector<TWariant> wzory = {{},
                                         TWariant::Null(),
                                         5,
                                         2.5,
                                         u"tekst dłuższy niż bufor w miejscu",
                                         TWariant::AnsiString("a"),
                                         TWariant::Tablica({1, u"dwa", TWariant::Tablica({3})})};
    testy::SprawdzKopie(wzory, [](const TWariant& w) { return w; });
    TWariant pusty(wzory[4]);
    EXPECT_EQ(TWariant(std::move(pusty)), wzory[4]);
    EXPECT_TRUE(pusty.JestPusty());
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
