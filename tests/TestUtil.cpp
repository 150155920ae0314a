#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "ztok/platform/Kodowania.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/Powiadomienie.h"
#include "ztok/util/Prostehaszowanie.h"
#include "ztok/util/ZTBledy.h"
#include "ztok/util/Ztfunbazowe.h"
#include "ztok/util/Zttypybazowe.h"

namespace ztok {
namespace {

TEST(Komunikaty, KazdyNumerJedenITekstTenSam) {
    std::set<int> numery;
    int ile = 0;
#define ZTOK_KOMUNIKAT(numer, nazwa, tekst)                                                                            \
    ++ile;                                                                                                             \
    EXPECT_TRUE(numery.insert(numer).second) << numer;                                                                 \
    EXPECT_EQ(Utf8ZUtf16(Komunikat(nazwa)), tekst);                                                                    \
    EXPECT_EQ(Komunikat(nazwa).data()[Komunikat(nazwa).size()], u'\0');
#include "ztok/platform/Komunikaty.def"
#undef ZTOK_KOMUNIKAT
    EXPECT_GT(ile, 50);
    EXPECT_EQ(Komunikat(static_cast<EKomunikat>(65520)), u"Nie");
    EXPECT_EQ(Komunikat(static_cast<EKomunikat>(65521)), u"Tak");
    EXPECT_EQ(Komunikat(kmZeroWPozId), u"Zero w polu \"PozId\"");
    EXPECT_EQ(Komunikat(kmWyjatekZwalnianiaJadra), u"UWAGA!\rWyjątek przy zwalnianiu jądra:\r%s");
    EXPECT_TRUE(Komunikat(static_cast<EKomunikat>(1)).empty());
}

TEST(Wyjatki, KopieDzielaTrescAZmianaDotyczyJednej) {
    EBladOdczytu pierwszy(u"zażółć");
    EBladOdczytu drugi(pierwszy);
    drugi.ZmienKomunikat(drugi.Komunikat().substr(2)); // a part of the content that goes
    EXPECT_EQ(drugi.Komunikat(), u"żółć");
    EXPECT_STREQ(drugi.what(), "żółć");
    EXPECT_EQ(pierwszy.Komunikat(), u"zażółć");
    drugi.DodajKontekst(u"");
    pierwszy = drugi;
    EXPECT_TRUE(pierwszy.MaKontekst());
    EXPECT_TRUE(EBladOdczytu(drugi).MaKontekst());
    EXPECT_STREQ(pierwszy.what(), "");
    try {
        throw EBladOdczytu(u"𝄞");
    } catch (const EWyjatek& e) {
        EXPECT_STREQ(e.what(), "𝄞");
    }
}

TEST(ZTBledy, FormatIKlasa) {
    try {
        ZTErrorFmt(kmBlednyTypWartosci, {u"WD", 8});
    } catch (const ZTException& e) {
        EXPECT_EQ(e.Komunikat(), u"WD: Błędny typ wartości 8");
    }
    EXPECT_THROW(ZTError(kmBrakRepozytorium), ZTException);
    EXPECT_THROW(ZTError(u"x"), EWyjatek);
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
    EXPECT_EQ(TablicaCRC[1], 0x77073096U);
    EXPECT_EQ(TablicaCRC[255], 0x2D02EF8DU);
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
    try {
        strumien.Read(nullptr, 1);
        ADD_FAILURE();
    } catch (const ZTException& e) {
        EXPECT_EQ(e.Komunikat(), u"TZTCRCStream.Read");
    }
}

TEST(FunkcjeTekstowe, ListaDoLinii) {
    const std::vector<std::u16string> linie = {u"", u"a", u" \t ", u"  b c \r\n", u"\u00A0"};
    EXPECT_EQ(ListaDoLinii(linie, u", "), u"a, b c, \u00A0");
    EXPECT_EQ(ListaDoLinii(std::vector<std::u16string>{u" ", u""}, u","), u"");
}

TEST(FunkcjeTekstowe, TekstPustyLiczyOdPoczatkuTekstu) {
    struct {
        const char16_t* tekst;
        std::ptrdiff_t od, ile;
        bool wynik;
    } const przypadki[] = {
        {u"", 1, 10, true},     {u" \t\n", 1, 10, true}, {u"a  ", 2, 3, true},     {u"a  ", 1, 3, false},
        {u"a  ", -5, 3, false}, {u"  a", 1, 2, true},    {u"  a", 2, 2, true},     {u"  a", 2, 3, false},
        {u"aaa", 3, 2, true},   {u"aaa", 9, 99, true},   {u"\u00A0", 1, 1, false}, {u"aaa", 1, 0, true},
    };
    for (const auto& p : przypadki)
        EXPECT_EQ(TekstPusty(p.tekst, p.od, p.ile), p.wynik) << Utf8ZUtf16(p.tekst) << p.od << ',' << p.ile;
}

TEST(FunkcjeTekstowe, TrescPrzedIPoZnaku) {
    EXPECT_EQ(TrescPrzedZnakiem(u"a=b=c", u'='), u"a");
    EXPECT_EQ(TrescPrzedZnakiem(u"abc", u'='), u"");
    EXPECT_EQ(TrescPoZnaku(u"a= b=c ", u'='), u" b=c ");
    EXPECT_EQ(TrescPoZnaku(u"a= b=c ", u'=', true), u"b=c");
    EXPECT_EQ(TrescPoZnaku(u" abc ", u'='), u" abc ");
    EXPECT_EQ(TrescPoZnaku(u" abc ", u'=', true), u"abc");
    EXPECT_EQ(TrescPrzedZnakiem("\xB3=", '='), "\xB3");
    EXPECT_EQ(TrescPoZnaku("x;\xB3 ", ';', true), "\xB3");
}

} // namespace
} // namespace ztok
