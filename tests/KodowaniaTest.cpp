#include "tests/Testy.h"

#include <numeric>
#include <span>
#include <sstream>

#include "ztok/platform/TabeleStron.h"
#include "ztok/util/Ztfunutf8.h"

namespace ztok {
namespace {

using testy::WczytajTabele;

// Well-formed sequences by their bytes' ranges; of the two rows of surrogates (ED) the strict form has neither.
constexpr std::uint8_t kCiag[][8] = {
    {0x00, 0x7F},
    {0xC2, 0xDF, 0x80, 0xBF},
    {0xE0, 0xE0, 0xA0, 0xBF, 0x80, 0xBF},
    {0xE1, 0xEC, 0x80, 0xBF, 0x80, 0xBF},
    {0xED, 0xED, 0x80, 0x9F, 0x80, 0xBF},
    {0xEE, 0xEF, 0x80, 0xBF, 0x80, 0xBF},
    {0xF0, 0xF0, 0x90, 0xBF, 0x80, 0xBF, 0x80, 0xBF},
    {0xF1, 0xF3, 0x80, 0xBF, 0x80, 0xBF, 0x80, 0xBF},
    {0xF4, 0xF4, 0x80, 0x8F, 0x80, 0xBF, 0x80, 0xBF},
    {0xED, 0xED, 0xA0, 0xAF, 0x80, 0xBF},
    {0xED, 0xED, 0xB0, 0xBF, 0x80, 0xBF},
};

// Decoder by that table: the longest beginning of a row that is no whole one gives U+FFFD.
std::u16string ModelDekodera(std::string_view s, bool scisly) {
    std::u16string wynik;
    while (!s.empty()) {
        const bool poWysokim = !wynik.empty() && wynik.back() >= 0xD800 && wynik.back() < 0xDC00;
        std::size_t bajtow = 1;
        char32_t znak = 0xFFFD;
        for (const auto& ciag : std::span(kCiag, scisly ? 9U : poWysokim ? 10U : 11U)) {
            std::size_t n = 0;
            char32_t kod = 0;
            for (; n < 4 && ciag[2 * n + 1] != 0 && n < s.size(); ++n) {
                const auto bajt = static_cast<unsigned char>(s[n]);
                if (bajt < ciag[2 * n] || bajt > ciag[2 * n + 1])
                    break;
                kod = kod << 6U | (n == 0 ? bajt & (bajt < 0x80 ? 0x7FU : bajt < 0xE0 ? 0x1FU : 0xFU) : bajt & 0x3FU);
            }
            if (n > 0 && (n == 4 || ciag[2 * n + 1] == 0))
                znak = kod;
            bajtow = std::max(bajtow, n);
        }
        wynik += strumienie::Znak(znak);
        s.remove_prefix(bajtow);
    }
    return wynik;
}

std::u16string Jednostki(const std::string& szesnastkowo) {
    std::u16string wynik;
    std::istringstream strumien(szesnastkowo);
    for (unsigned kod = 0; strumien >> std::hex >> kod;)
        wynik += static_cast<char16_t>(kod);
    return wynik;
}

TEST(Kodowania, Utf8KnownForms) {
    for (const auto& w : WczytajTabele("utf8.tsv")) {
        SCOPED_TRACE(w.Utf8(0));
        const std::string bajty = strumienie::Bajty(w.Utf8(1));
        const std::u16string tekst = Jednostki(w.Utf8(2));
        const std::u16string scisle = w.Utf8(4).empty() ? tekst : Jednostki(w.Utf8(4));
        const bool poprawne = w.Utf8(3) == "1";
        for (std::size_t przed = 0; przed < 18; ++przed) { // behind ASCII of every length that a block may have
            const std::string ascii(przed, 'x');
            const std::u16string ascii16(przed, u'x');
            EXPECT_EQ(Utf16ZUtf8(ascii + bajty), ascii16 + tekst);
            EXPECT_EQ(PoprawneUtf8(ascii + bajty), poprawne);
            std::u16string zNieznanych = u"stary";
            EXPECT_EQ(SprobujZUtf8(ascii + bajty, zNieznanych), poprawne);
            EXPECT_EQ(zNieznanych, poprawne ? ascii16 + tekst : u"stary");
            EXPECT_EQ(ZUtf8LubPolskiego(ascii + bajty), poprawne ? ascii16 + tekst : ZWin1250(ascii + bajty));
            EXPECT_EQ(ZeStronyKodowej(ascii + bajty, StronaUtf8), ascii16 + scisle);
            EXPECT_EQ(PelneUtf8(ascii + bajty), przed + static_cast<std::size_t>(w.Calkowita(5)));
            if (poprawne) {
                EXPECT_EQ(Utf8ZUtf16(ascii16 + tekst), ascii + bajty);
                EXPECT_EQ(DlugoscUtf8(ascii16 + tekst), przed + bajty.size());
                EXPECT_EQ(MaSurogatUtf8(ascii + bajty), scisle != tekst);
                EXPECT_EQ(MaSamotnySurogat(ascii16 + tekst), scisle != tekst);
            }
        }
    }
    EXPECT_EQ(NaStroneKodowa({u"\xD800x\xDC00ą\xDBFF", 5}, StronaUtf8), "\xEF\xBF\xBDx\xEF\xBF\xBDą\xEF\xBF\xBD");
}

// A block of exactly that size, so that a sanitizer sees an element too many.
template <class Znak> std::unique_ptr<Znak[]> DokladnyBlok(std::basic_string_view<Znak> tekst) {
    std::unique_ptr<Znak[]> blok(new Znak[tekst.size()]);
    std::copy(tekst.begin(), tekst.end(), blok.get());
    return blok;
}

TEST(Kodowania, Utf8EveryTextSurvivesAndEveryInputIsReadAsTheModelReads) {
    std::mt19937 losowe(20261121);
    for (int proba = 0; proba < 20000; ++proba) {
        const std::u16string tekst =
            strumienie::LosowyTekst(losowe, losowe() % 100 + (proba % 100 == 0 ? 700 : 0), 1 + losowe() % 5);
        std::string utf8 = Utf8ZUtf16(tekst);
        ASSERT_EQ(utf8.size(), DlugoscUtf8(tekst));
        ASSERT_TRUE(PoprawneUtf8(utf8));
        ASSERT_EQ(ModelDekodera(utf8, false), tekst);
        ASSERT_EQ(MaSurogatUtf8(utf8), MaSamotnySurogat(tekst));
        ASSERT_EQ(PoprawneNaStronie(utf8, StronaUtf8), ModelDekodera(utf8, true) == tekst);
        ASSERT_EQ(NaStroneKodowa(tekst, StronaUtf8) == utf8, MiesciSieNaStronie(tekst, StronaUtf8));
        std::string dopisane8 = "ą";
        DopiszUtf8(dopisane8, tekst);
        ASSERT_EQ(dopisane8, "ą" + utf8);
        std::u16string dopisane16 = u"ą";
        DopiszZUtf8(dopisane16, utf8);
        ASSERT_EQ(dopisane16, u"ą" + tekst);
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
}

// The upper half of a page as the tables of the tests have it.
std::u16string GornaPolowa(std::uint16_t strona) {
    std::u16string gorna(128, u'\0');
    for (const auto& w : WczytajTabele("strony.tsv"))
        if (w.Utf8(0) == std::to_string(strona))
            gorna[static_cast<std::size_t>(w.Bity(1)) - 128] = static_cast<char16_t>(w.Bity(2));
    return gorna;
}

TEST(Kodowania, PagesAnswerAsTheirTables) {
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
        EXPECT_EQ(NaStroneKodowa(tekst, strona), bajty);
        EXPECT_EQ(ZeStronyKodowej(bajty, strona), tekst);
        EXPECT_TRUE(MiesciSieNaStronie(tekst, strona));
        EXPECT_TRUE(PoprawneNaStronie(bajty, strona));
        EXPECT_FALSE(MiesciSieNaStronie(u"a\u0416\u0104", strona));
        EXPECT_EQ(NaStroneKodowa(u"\U0001F600", strona), "??");
        EXPECT_EQ(NaStroneKodowa(wszystkie, strona), oczekiwane);
        if (strona == StronaWin1250) { // that page has functions of its own
            EXPECT_EQ(Win1250(wszystkie + u"\U0001F600"), oczekiwane + "??");
            for (unsigned i = 0; i < 0x10000; ++i) {
                const char16_t znak = wszystkie[i];
                bool jest = false;
                ASSERT_EQ(ZnakNaWin1250(znak, jest), oczekiwane[i]);
                ASSERT_EQ(jest, znaki.find(znak) != znaki.npos);
                ASSERT_EQ(MiesciSieWWin1250({&znak, 1}), jest);
                ASSERT_EQ(KodWin1250(znak), jest         ? static_cast<unsigned char>(oczekiwane[i])
                                            : znak < 256 ? znak + 256
                                                         : znak);
                ASSERT_EQ(ZnakZWin1250(static_cast<char>(i)), znaki[i % 256]);
            }
        }
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
    }
}

TEST(Kodowania, UnknownCodePageRaises) {
    EXPECT_THROW((void)NaStroneKodowa(u"a", 437), EBladKonwersji);
    EXPECT_EQ(testy::Blad<EBladKonwersji>([] { (void)ZeStronyKodowej("a", 65535); }), u"nieznana strona kodowa: 65535");
}

} // namespace
} // namespace ztok
