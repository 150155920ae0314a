#include "ztok/platform/Kodowania.h"

#include <gtest/gtest.h>

#include <memory>
#include <numeric>
#include <random>

#include "tests/Bledy.h"
#include "tests/StrumienieTestowe.h"
#include "tests/TabeleTestow.h"
#include "ztok/platform/KodowaniaWektory.h"
#include "ztok/platform/TabeleStron.h"
#include "ztok/util/Ztfunutf8.h"

namespace ztok {
namespace {

using testy::WczytajTabele;

// Runs the check with the vector functions and without them, where the processor has them.
template <class TSprawdzenie> void KazdaSciezka(TSprawdzenie sprawdzenie) {
    for (const bool wektory : {false, true}) {
        if (wektory::Wlacz(wektory) != wektory)
            break;
        SCOPED_TRACE(wektory ? "vectors" : "plain");
        sprawdzenie();
    }
    wektory::Wlacz(true);
}

// Decoder by the letter of the rules, one byte at a time: the model for the fast one.
std::u16string ModelDekodera(std::string_view s, bool scisly) {
    std::u16string wynik;
    bool poWysokim = false;
    for (std::size_t i = 0; i < s.size();) {
        const auto b = [&](std::size_t k) { return i + k < s.size() ? static_cast<unsigned char>(s[i + k]) : 0U; };
        unsigned n = b(0) < 0x80                    ? 1
                     : b(0) >= 0xC2 && b(0) < 0xE0  ? 2
                     : (b(0) & 0xF0U) == 0xE0       ? 3
                     : b(0) >= 0xF0 && b(0) <= 0xF4 ? 4
                                                    : 0;
        unsigned dobre = n == 0 ? 0 : 1;
        unsigned znak = n == 1 ? b(0) : n == 2 ? b(0) & 0x1FU : n == 3 ? b(0) & 0xFU : b(0) & 7U;
        for (unsigned k = 1; k < n && dobre == k; ++k) {
            const unsigned c = b(k);
            bool dobry = c >= 0x80 && c <= 0xBF;
            if (k == 1)
                dobry = dobry && !(b(0) == 0xE0 && c < 0xA0) && !(b(0) == 0xF0 && c < 0x90) &&
                        !(b(0) == 0xF4 && c > 0x8F) &&
                        !(b(0) == 0xED && c > (scisly      ? 0x9FU
                                               : poWysokim ? 0xAFU
                                                           : 0xBFU));
            if (dobry) {
                znak = znak << 6U | (c & 0x3FU);
                ++dobre;
            }
        }
        poWysokim = false;
        if (n == 0 || dobre < n) {
            wynik += u'\xFFFD';
        } else if (znak > 0xFFFF) {
            wynik += static_cast<char16_t>(0xD800U + ((znak - 0x10000U) >> 10U));
            wynik += static_cast<char16_t>(0xDC00U + (znak & 0x3FFU));
        } else {
            wynik += static_cast<char16_t>(znak);
            poWysokim = znak >= 0xD800 && znak < 0xDC00;
        }
        i += dobre == 0 ? 1 : dobre;
    }
    return wynik;
}

TEST(Kodowania, Utf8KnownForms) {
    const struct {
        std::string utf8;
        std::u16string tekst;
    } przypadki[] = {
        {"", u""},
        {"Za\xC5\xBC\xC3\xB3\xC5\x82\xC4\x87", u"Za\u017C\u00F3\u0142\u0107"},
        {"\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF", u"\u0080\u07FF\u0800\uFFFF"},
        {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", u"\U00010000\U0010FFFF"},
        {"\xED\xA0\x80", std::u16string(1, char16_t(0xD800))},
        {"\xED\xB0\x80\xED\xA0\x80", std::u16string{char16_t(0xDC00), char16_t(0xD800)}},
        {std::string("a\0b", 3), std::u16string(u"a\0b", 3)},
    };
    for (const auto& p : przypadki) {
        EXPECT_EQ(Utf8ZUtf16(p.tekst), p.utf8);
        EXPECT_EQ(Utf16ZUtf8(p.utf8), p.tekst);
        EXPECT_EQ(DlugoscUtf8(p.tekst), p.utf8.size());
        EXPECT_TRUE(PoprawneUtf8(p.utf8));
    }
}

TEST(Kodowania, Utf8IllFormedPartsGiveOneReplacementEach) {
    const struct {
        std::string bajty;
        std::u16string tekst;
    } przypadki[] = {
        {"\xC0\xAF", u"\uFFFD\uFFFD"},
        {"\xE2\x82", u"\uFFFD"},
        {"\xE2\x82z", u"\uFFFDz"},
        {"\xF0\x9F\x98", u"\uFFFD"},
        {"\xF0\x80\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xF4\x90", u"\uFFFD\uFFFD"},
        {"\xF8\x88\x80\x80\x80z", u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDz"},
        {"\xFC\x84\x80\x80\x80\x80z", u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDz"},
        {"a\xC5", u"a\uFFFD"},
        {"\xE1\x80\xE2\xF0\x91\x92\xF1\xBFz", u"\uFFFD\uFFFD\uFFFD\uFFFDz"},
        // The pair of three-byte surrogates would be a second form of U+10000.
        {"\xED\xA0\x80\xED\xB0\x80", std::u16string{char16_t(0xD800), 0xFFFD, 0xFFFD, 0xFFFD}},
    };
    for (const auto& p : przypadki) {
        KazdaSciezka([&] {
            EXPECT_EQ(Utf16ZUtf8(p.bajty), p.tekst);
            EXPECT_FALSE(PoprawneUtf8(p.bajty));
        });
    }
    EXPECT_EQ(ZeStronyKodowej("\xED\xA0\x80x", StronaUtf8), u"\uFFFD\uFFFD\uFFFDx");
    EXPECT_EQ(NaStroneKodowa({u"\xD800x\xDC00", 3}, StronaUtf8), "\xEF\xBF\xBDx\xEF\xBF\xBD");
}

// A block of exactly that size, so that a sanitizer sees an element too many.
template <class Znak> std::unique_ptr<Znak[]> DokladnyBlok(std::basic_string_view<Znak> tekst) {
    std::unique_ptr<Znak[]> blok(new Znak[tekst.size()]);
    std::copy(tekst.begin(), tekst.end(), blok.get());
    return blok;
}

// Random text of kinds 0 to `rodzajow` - 1, each the larger part ASCII.
std::u16string LosowyTekst(std::mt19937& losowe, std::size_t ile, std::size_t rodzajow) {
    std::u16string tekst;
    while (tekst.size() < ile) {
        switch (losowe() % (2 * rodzajow)) {
        case 1:
            tekst += static_cast<char16_t>(losowe() % 0x800);
            break;
        case 2:
            tekst += static_cast<char16_t>(losowe());
            break;
        case 3:
            tekst += static_cast<char16_t>(0xD800 + losowe() % 0x400);
            tekst += static_cast<char16_t>(0xDC00 + losowe() % 0x400);
            break;
        case 4:
            tekst += static_cast<char16_t>(0xD800 + losowe() % 0x800);
            break;
        default:
            tekst += static_cast<char16_t>(losowe() % 0x80);
        }
    }
    return tekst;
}

TEST(Kodowania, Utf8EveryTextSurvivesAndEveryInputIsReadAsTheModelReads) {
    KazdaSciezka([] {
        std::mt19937 losowe(20261121);
        for (int proba = 0; proba < 20000; ++proba) {
            // Up to characters below U+0800, of the basic plane, with pairs, with lone surrogates.
            const std::u16string tekst =
                LosowyTekst(losowe, losowe() % 100 + (proba % 100 == 0 ? 700 : 0), 1 + losowe() % 5);
            std::string utf8 = Utf8ZUtf16(tekst);
            ASSERT_EQ(utf8.size(), DlugoscUtf8(tekst));
            ASSERT_TRUE(PoprawneUtf8(utf8));
            ASSERT_EQ(Utf16ZUtf8(utf8), tekst);
            ASSERT_EQ(ModelDekodera(utf8, false), tekst);
            ASSERT_EQ(MaSurogatUtf8(utf8), MaSamotnySurogat(tekst));
            ASSERT_EQ(PoprawneNaStronie(utf8, StronaUtf8), ModelDekodera(utf8, true) == tekst);
            ASSERT_EQ(NaStroneKodowa(tekst, StronaUtf8) == utf8, MiesciSieNaStronie(tekst, StronaUtf8));
            // The same with damage: bytes changed, one put in, the end cut off.
            for (std::size_t k = losowe() % 4; k > 0 && !utf8.empty(); --k)
                utf8[losowe() % utf8.size()] = static_cast<char>(losowe() % 2 == 0 ? losowe() : 0xED);
            utf8.insert(losowe() % (utf8.size() + 1), losowe() % 2, static_cast<char>(0x80 + losowe() % 0x80));
            utf8.resize(utf8.size() - losowe() % 3 % (utf8.size() + 1));
            const auto od = DokladnyBlok<char>(utf8);
            const std::unique_ptr<char16_t[]> cel(new char16_t[utf8.size()]);
            const std::u16string odczytane(cel.get(), DekodujUtf8(od.get(), utf8.size(), cel.get()));
            ASSERT_EQ(odczytane, ModelDekodera(utf8, false));
            ASSERT_EQ(PoprawneUtf8({od.get(), utf8.size()}), Utf8ZUtf16(odczytane) == utf8);
            const std::size_t pelne = PelneUtf8({od.get(), utf8.size() * 2 / 3});
            ASSERT_LE(utf8.size() * 2 / 3 - pelne, 6U);
            ASSERT_EQ(Utf16ZUtf8({od.get(), pelne}) + Utf16ZUtf8(std::string_view(utf8).substr(pelne)), odczytane);
            const std::size_t scisle = DekodujUtf8Scisle(od.get(), utf8.size(), cel.get());
            ASSERT_EQ(std::u16string(cel.get(), scisle), ModelDekodera(utf8, true));
            ASSERT_EQ(ZeStronyKodowej(utf8, StronaUtf8), ModelDekodera(utf8, true));
        }
    });
}

TEST(Kodowania, Utf8OfUnknownOrigin) {
    std::u16string tekst = u"stary";
    EXPECT_FALSE(SprobujZUtf8("\xB9\xEA", tekst));
    EXPECT_EQ(tekst, u"stary");
    EXPECT_TRUE(SprobujZUtf8("\xC4\x85", tekst));
    EXPECT_EQ(tekst, u"\u0105");
    EXPECT_EQ(ZUtf8LubPolskiego("\xC4\x85\xB9"), u"\u00C4\u2026\u0105");
    EXPECT_EQ(ZUtf8LubPolskiego("\xC4\x85"), u"\u0105");
}

TEST(Kodowania, Win1250MatchesItsTable) {
    int wierszy = 0;
    for (const auto& w : WczytajTabele("cp1250.tsv")) {
        SCOPED_TRACE(w.numer);
        const std::string bajt = strumienie::Bajty(w.Utf8(1));
        const auto znak = static_cast<char16_t>(w.Bity(3));
        bool jest = false;
        EXPECT_EQ(ZnakZWin1250(bajt[0]), znak);
        EXPECT_EQ(ZnakNaWin1250(znak, jest), bajt[0]);
        EXPECT_TRUE(jest);
        EXPECT_EQ(KodWin1250(znak), static_cast<unsigned char>(bajt[0]));
        ++wierszy;
    }
    EXPECT_GT(wierszy, 150);
    for (const auto& w : WczytajTabele("cp1250_reverse.tsv")) {
        SCOPED_TRACE(w.numer);
        const auto punkt = static_cast<char32_t>(w.Bity(1));
        std::u16string tekst;
        if (punkt > 0xFFFF) {
            tekst += static_cast<char16_t>(0xD7C0U + (punkt >> 10U));
            tekst += static_cast<char16_t>(0xDC00U + (punkt & 0x3FFU));
        } else {
            tekst += static_cast<char16_t>(punkt);
        }
        EXPECT_EQ(Win1250(tekst), strumienie::Bajty(w.Utf8(5)));
        EXPECT_EQ(MiesciSieWWin1250(tekst), w.Utf8(6) == "0");
        if (w.Utf8(6) == "1") {
            EXPECT_EQ(KodWin1250(tekst[0]), tekst[0]);
        }
    }
}

// The upper half of a page as the tables of the tests have it.
std::u16string GornaPolowa(std::uint16_t strona) {
    std::u16string gorna(128, u'\0');
    for (const auto& w : WczytajTabele("strony.tsv"))
        if (w.Utf8(0) == std::to_string(strona))
            gorna[static_cast<std::size_t>(w.Bity(1)) - 128] = static_cast<char16_t>(w.Bity(2));
    return gorna;
}

TEST(Kodowania, PagesAnswerAsTheirTablesOnEveryPath) {
    for (const std::uint16_t strona : {StronaWin1250, StronaWin1251, StronaIso8859_1, StronaIso8859_2}) {
        SCOPED_TRACE(strona);
        std::u16string znaki(128, u'\0');
        std::iota(znaki.begin(), znaki.end(), char16_t(0));
        znaki += GornaPolowa(strona);
        std::u16string tekst; // three rounds, at shifted positions: long enough for the block paths
        std::string bajty;
        for (unsigned kolo = 0; kolo < 3; ++kolo)
            for (unsigned kod = kolo; kod < 256; ++kod) {
                tekst += znaki[kod];
                bajty += static_cast<char>(kod);
            }
        std::u16string wszystkie(0x10000, u'\0'); // every unit, in an order that mixes the windows of a block
        std::string oczekiwane;
        for (unsigned i = 0; i < 0x10000; ++i) {
            wszystkie[i] = static_cast<char16_t>(i * 0x2F0Bu);
            const std::size_t kod = znaki.find(wszystkie[i]);
            oczekiwane += kod == std::u16string::npos ? '?' : static_cast<char>(kod);
        }
        KazdaSciezka([&] {
            EXPECT_EQ(NaStroneKodowa(tekst, strona), bajty);
            EXPECT_EQ(ZeStronyKodowej(bajty, strona), tekst);
            EXPECT_TRUE(MiesciSieNaStronie(tekst, strona));
            EXPECT_TRUE(PoprawneNaStronie(bajty, strona));
            EXPECT_FALSE(MiesciSieNaStronie(u"a\u0416\u0104", strona));
            EXPECT_EQ(NaStroneKodowa(wszystkie, strona), oczekiwane);
            // Where the system converts, the library's tables must say the same; in blocks of every size.
            const TTabelaStrony& tabela = *TabelaStrony(strona);
            for (std::size_t ile = 0; ile < 200; ++ile) {
                const auto od = DokladnyBlok<char16_t>({wszystkie.data() + 37 * ile, ile});
                const std::unique_ptr<char[]> cel(new char[ile]);
                NaBajty(tabela, od.get(), ile, cel.get());
                ASSERT_EQ(std::string_view(cel.get(), ile), oczekiwane.substr(37 * ile, ile));
                const auto od8 = DokladnyBlok<char>({bajty.data() + ile, ile});
                const std::unique_ptr<char16_t[]> cel16(new char16_t[ile]);
                ZBajtow(tabela, od8.get(), ile, cel16.get());
                ASSERT_EQ(std::u16string_view(cel16.get(), ile), tekst.substr(ile, ile));
            }
            std::string szybkie(wszystkie.size(), '\0');
            NaBajty(tabela, wszystkie.data(), wszystkie.size(), szybkie.data());
            EXPECT_EQ(szybkie, oczekiwane);
        });
    }
}

TEST(Kodowania, UnknownCodePageRaises) {
    EXPECT_THROW((void)NaStroneKodowa(u"a", 437), EBladKonwersji);
    EXPECT_EQ(testy::Blad<EBladKonwersji>([] { (void)ZeStronyKodowej("a", 65535); }), u"nieznana strona kodowa: 65535");
}

} // namespace
} // namespace ztok
