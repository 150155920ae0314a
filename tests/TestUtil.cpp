#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/Bledy.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/util/Prostehaszowanie.h"
#include "ztok/util/ZTBledy.h"
#include "ztok/util/Ztfunbazowe.h"
#include "ztok/util/Zttypybazowe.h"

namespace ztok {
namespace {

TEST(Komunikaty, KazdyNumerJeden) {
    std::set<int> numery;
#define ZTOK_KOMUNIKAT(numer, nazwa, tekst)                                                                            \
    EXPECT_TRUE(numery.insert(numer).second) << numer;                                                                 \
    EXPECT_EQ(Komunikat(nazwa).data()[Komunikat(nazwa).size()], u'\0');
#include "ztok/platform/Komunikaty.def"
#undef ZTOK_KOMUNIKAT
    EXPECT_GT(numery.size(), 50U);
    const std::pair<int, const char16_t*> teksty[] = {
        {65520, u"Nie"}, {65521, u"Tak"}, {kmZeroWPozId, u"Zero w polu \"PozId\""}, {1, u""}};
    for (const auto& [numer, tekst] : teksty)
        EXPECT_EQ(Komunikat(static_cast<EKomunikat>(numer)), tekst);
}

TEST(Wyjatki, KopieDzielaTrescAZmianaDotyczyJednej) {
    EBladOdczytu pierwszy(u"za𝄞ółć");
    EBladOdczytu drugi(pierwszy);
    drugi.ZmienKomunikat(drugi.Komunikat().substr(4)); // a part of the content that goes
    EXPECT_EQ(drugi.Komunikat(), u"ółć");
    EXPECT_STREQ(drugi.what(), "ółć");
    EXPECT_EQ(pierwszy.Komunikat(), u"za𝄞ółć");
    EXPECT_STREQ(pierwszy.what(), "za𝄞ółć");
    drugi.DodajKontekst(u"");
    pierwszy = drugi;
    EXPECT_TRUE(pierwszy.MaKontekst());
    EXPECT_TRUE(EBladOdczytu(drugi).MaKontekst());
    EXPECT_STREQ(pierwszy.what(), "");
    EXPECT_EQ(::testy::Blad<ZTException>([] {
                  ZTErrorFmt(kmBlednyTypWartosci, {u"WD", 8});
              }),
              u"WD: Błędny typ wartości 8");
    EXPECT_EQ(::testy::Blad<ZTException>([] { ZTError(kmBrakRepozytorium); }), u"brak dostępu do repozytorium");
    EXPECT_EQ(::testy::Blad<ZTException>([] { ZTError(u"%x"); }), u"%x");
}

// One bit at a time, as the rule is stated.
std::uint32_t CRCBitowo(std::uint32_t c, std::uint32_t wielomian, const std::vector<std::uint32_t>& jednostki) {
    for (const std::uint32_t u : jednostki) {
        c ^= u;
        for (int i = 0; i < 8; ++i)
            c = (c & 1U) != 0 ? (c >> 1U) ^ wielomian : c >> 1U;
    }
    return c;
}

TEST(Haszowanie, ZnaneWartosci) {
    EXPECT_EQ(DajKodTekstuAnsi("123456789"), 0x340BC6D9U);
    EXPECT_EQ(DajKod16TekstuAnsi("123456789"), 0x4B37U);
    for (std::uint32_t i = 0; i < 256; ++i)
        EXPECT_EQ(TablicaCRC[i], CRCBitowo(0, 0xEDB88320U, {i}));
    // ż is BF in Windows-1250 and U+017C; € is 80 and U+20AC; the page lacks U+4E2D.
    EXPECT_EQ(DajKodTekstu(u"aż€\u4E2D"), DajKodTekstuAnsi("a\xBF\x80?"));
    EXPECT_EQ(DajKod16Tekstu(u"aż€\u4E2D"), DajKod16TekstuAnsi("a\xBF\x80?"));
    EXPECT_EQ(DajKodTekstuWide(u"aż€"), DajKodTekstuAnsi("a\x7C\xAC"));
    EXPECT_EQ(DajKod16TekstuWide(u"aż€"), CRCBitowo(0xFFFF, 0xA001, {'a', 0x17C, 0x20AC}));
}

TEST(Haszowanie, KazdaDlugoscIPodzialZgodneZRegulaBitowa) {
    std::string tekst;
    std::u16string szeroki;
    std::vector<std::uint32_t> jednostki;
    TZTCRCStream strumien;
    for (unsigned i = 0; i < 1100; ++i) {
        const std::uint32_t kod = CRCBitowo(0xFFFFFFFFU, 0xEDB88320U, jednostki);
        ASSERT_EQ(DajKodTekstuAnsi(tekst), kod) << i;
        ASSERT_EQ(DajKodTekstu(szeroki), kod) << i;
        ASSERT_EQ(DajKodTekstuWide(szeroki), kod) << i;
        const std::uint32_t kod16 = CRCBitowo(0xFFFFU, 0xA001U, jednostki);
        ASSERT_EQ(DajKod16TekstuAnsi(tekst), kod16);
        ASSERT_EQ(DajKod16Tekstu(szeroki), kod16);
        ASSERT_EQ(DajKod16TekstuWide(szeroki), kod16);
        strumien.Reset();
        const std::size_t podzial = i % 37 % (tekst.size() + 1);
        strumien.WriteBuffer(tekst.data(), podzial);
        strumien.WriteBuffer(tekst.data() + podzial, tekst.size() - podzial);
        ASSERT_EQ(strumien.CRC(), kod);
        const unsigned znak = i * i % 127;
        tekst += static_cast<char>(znak);
        szeroki += static_cast<char16_t>(znak);
        jednostki.push_back(znak);
    }
    EXPECT_EQ(strumien.Write(nullptr, -1), 0);
    EXPECT_EQ(::testy::Blad<ZTException>([&] { strumien.Read(nullptr, 1); }), u"TZTCRCStream.Read");
}

TEST(FunkcjeTekstowe, Tablice) {
    const std::vector<std::u16string> linie = {u"", u"a", u" \t ", u"  b c \r\n", u"\u00A0"};
    EXPECT_EQ(ListaDoLinii(linie, u", "), u"a, b c, \u00A0");
    EXPECT_EQ(ListaDoLinii(std::vector<std::u16string>{u" ", u""}, u","), u"");
    // The place counts from the beginning of the text, wherever it lies.
    const struct {
        const char16_t* tekst;
        std::ptrdiff_t od, ile;
        bool wynik;
    } puste[] = {
        {u"", 1, 10, true},     {u" \t\n", 1, 10, true}, {u"a  ", 2, 3, true},     {u"a  ", 1, 3, false},
        {u"a  ", -5, 3, false}, {u"  a", 1, 2, true},    {u"  a", 2, 2, true},     {u"  a", 2, 3, false},
        {u"aaa", 3, 2, true},   {u"aaa", 9, 99, true},   {u"\u00A0", 1, 1, false}, {u"aaa", 1, 0, true},
    };
    for (const auto& p : puste)
        EXPECT_EQ(TekstPusty(p.tekst, p.od, p.ile), p.wynik) << Utf8ZUtf16(p.tekst) << p.od << ',' << p.ile;
    const struct {
        const char16_t *tekst, *przed, *po, *poPrzyciete;
    } dzielone[] = {{u"a= b=c ", u"a", u" b=c ", u"b=c"}, {u" abc ", u"", u" abc ", u"abc"}, {u"=", u"", u"", u""}};
    for (const auto& d : dzielone) {
        EXPECT_EQ(TrescPrzedZnakiem(d.tekst, u'='), d.przed);
        EXPECT_EQ(TrescPoZnaku(d.tekst, u'='), d.po);
        EXPECT_EQ(TrescPoZnaku(d.tekst, u'=', true), d.poPrzyciete);
    }
    EXPECT_EQ(TrescPrzedZnakiem("\xB3=", '='), "\xB3");
    EXPECT_EQ(TrescPoZnaku("x;\xB3 ", ';', true), "\xB3");
}

} // namespace
} // namespace ztok
