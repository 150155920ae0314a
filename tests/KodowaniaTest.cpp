#include "ztok/platform/Kodowania.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>

#include "TabeleTestow.h"
#include "ztok/platform/Wyjatki.h"

namespace ztok {
namespace {

using testy::WczytajTabele;

std::string Bajty(const std::string& szesnastkowo) {
    std::string wynik;
    for (std::size_t i = 0; i < szesnastkowo.size(); i += 2)
        wynik += static_cast<char>(std::stoi(szesnastkowo.substr(i, 2), nullptr, 16));
    return wynik;
}

// Decoder by the letter of the rules, one byte at a time: the model for the fast one.
std::u16string ModelDekodera(std::string_view s) {
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
                        !(b(0) == 0xF4 && c > 0x8F) && !(b(0) == 0xED && c > 0xAF && poWysokim);
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
        {"\xF8\x88", u"\uFFFD\uFFFD"},
        {"a\xC5", u"a\uFFFD"},
        {"\xE1\x80\xE2\xF0\x91\x92\xF1\xBFz", u"\uFFFD\uFFFD\uFFFD\uFFFDz"},
        // The pair of three-byte surrogates would be a second form of U+10000.
        {"\xED\xA0\x80\xED\xB0\x80", std::u16string{char16_t(0xD800), 0xFFFD, 0xFFFD, 0xFFFD}},
    };
    for (const auto& p : przypadki) {
        EXPECT_EQ(Utf16ZUtf8(p.bajty), p.tekst);
        EXPECT_FALSE(PoprawneUtf8(p.bajty));
    }
}

TEST(Kodowania, Utf8EveryTextSurvivesAndEveryInputIsReadAsTheModelReads) {
    std::mt19937 losowe(20261121);
    // Every other text is of one- and two-byte characters only.
    unsigned rodzajow = 6;
    const auto znak = [&] {
        switch (losowe() % rodzajow) {
        case 1:
            return static_cast<char16_t>(losowe() % 0x800);
        case 2:
            return static_cast<char16_t>(0xD800 + losowe() % 0x800);
        case 3:
            return static_cast<char16_t>(losowe());
        default:
            return static_cast<char16_t>(losowe() % 0x80);
        }
    };
    for (int proba = 0; proba < 20000; ++proba) {
        std::u16string tekst(losowe() % 48 + (proba % 100 == 0 ? 700 : 0), u' ');
        rodzajow = proba % 2 == 0 ? 6 : 2;
        for (char16_t& z : tekst)
            z = znak();
        std::string utf8 = Utf8ZUtf16(tekst);
        ASSERT_EQ(utf8.size(), DlugoscUtf8(tekst));
        ASSERT_TRUE(PoprawneUtf8(utf8));
        ASSERT_EQ(Utf16ZUtf8(utf8), tekst);
        for (std::size_t k = 0; k < 3 && !utf8.empty(); ++k)
            utf8[losowe() % utf8.size()] = static_cast<char>(losowe());
        utf8.resize(utf8.size() - (utf8.empty() ? 0 : losowe() % 3 % utf8.size()));
        // Exactly sized blocks, so that a sanitizer sees a byte too many.
        const std::unique_ptr<char[]> od(new char[utf8.size()]);
        std::copy(utf8.begin(), utf8.end(), od.get());
        const std::unique_ptr<char16_t[]> cel(new char16_t[utf8.size()]);
        const std::u16string odczytane(cel.get(), DekodujUtf8(od.get(), utf8.size(), cel.get()));
        ASSERT_EQ(odczytane, ModelDekodera(utf8));
        ASSERT_EQ(PoprawneUtf8({od.get(), utf8.size()}), Utf8ZUtf16(odczytane) == utf8);
    }
}

TEST(Kodowania, Win1250MatchesItsTable) {
    int wierszy = 0;
    for (const auto& w : WczytajTabele("cp1250.tsv")) {
        SCOPED_TRACE(w.numer);
        const std::string bajt = Bajty(w.Utf8(1));
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
        EXPECT_EQ(Win1250(tekst), Bajty(w.Utf8(5)));
        EXPECT_EQ(MiesciSieWWin1250(tekst), w.Utf8(6) == "0");
        if (w.Utf8(6) == "1") {
            EXPECT_EQ(KodWin1250(tekst[0]), tekst[0]);
        }
    }
}

TEST(Kodowania, Win1250EveryByteComesBack) {
    std::string wszystkie;
    for (int kolo = 0; kolo < 3; ++kolo) // long enough for the block paths, at shifted positions
        for (int bajt = kolo; bajt < 256; ++bajt)
            wszystkie += static_cast<char>(bajt);
    const std::u16string tekst = ZWin1250(wszystkie);
    EXPECT_EQ(Win1250(tekst), wszystkie);
    EXPECT_EQ(NaStroneKodowa(tekst, 1250), wszystkie);
    EXPECT_EQ(ZeStronyKodowej(wszystkie, 1250), tekst);
    int znakow = 0;
    for (unsigned znak = 0; znak < 0x10000; ++znak)
        znakow += MiesciSieWWin1250(std::u16string(1, static_cast<char16_t>(znak))) ? 1 : 0;
    EXPECT_EQ(znakow, 256);
}

TEST(Kodowania, UnknownCodePageRaises) {
    EXPECT_THROW((void)NaStroneKodowa(u"a", 437), EBladKonwersji);
    try {
        (void)ZeStronyKodowej("a", 65535);
        ADD_FAILURE();
    } catch (const EBladKonwersji& blad) {
        EXPECT_EQ(blad.Komunikat(), u"nieznana strona kodowa: 65535");
    }
}

} // namespace
} // namespace ztok
