#include "tests/Testy.h"

#include <cstdlib>
#include <set>

#include "ztok/platform/Komunikaty.h"
#include "ztok/util/Procesor.h"
#include "ztok/util/Ztfunbazowe.h"

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

// By the processor's extensions and without them: the results are those of the rule, wherever the bytes lie.
TEST(Haszowanie, KazdaDlugoscMiejsceIPodzialZgodneZRegulaBitowa) {
    if (const char* oczekiwane = std::getenv("ZTOK_ROZSZERZENIA")) { // what the emulated processor has
        EXPECT_EQ(UzywajRozszerzen(rzWszystkie), static_cast<unsigned>(std::atoi(oczekiwane)));
    }
    alignas(64) char bajty[720];
    std::u16string szeroki;
    for (char& bajt : bajty) {
        bajt = static_cast<char>((szeroki.size() * szeroki.size() + 3) % 127);
        szeroki += static_cast<char16_t>(bajt);
    }
    for (const unsigned dozwolone : {0U, unsigned{rzWszystkie}}) {
        EXPECT_EQ(UzywajRozszerzen(dozwolone) & ~dozwolone, 0U);
        TZTCRCStream strumien;
        for (std::size_t od = 0; od < 17; ++od) {
            std::uint32_t kod = PoczatekCRC;
            std::uint32_t kod16 = 0xFFFF;
            for (std::size_t ile = 0; ile < 700; ++ile) {
                const std::string_view tekst(bajty + od, ile);
                const std::u16string_view tekst16(szeroki.data() + od, ile);
                ASSERT_EQ(DajKodTekstuAnsi(tekst), kod) << od << ' ' << ile;
                ASSERT_EQ(DajKodTekstu(tekst16), kod);
                ASSERT_EQ(DajKodTekstuWide(tekst16), kod);
                ASSERT_EQ(DajKod16TekstuAnsi(tekst), kod16);
                ASSERT_EQ(DajKod16Tekstu(tekst16), kod16);
                ASSERT_EQ(DajKod16TekstuWide(tekst16), kod16);
                const std::size_t podzial = ile % (37 + 100 * od) % (ile + 1);
                strumien.Reset();
                ASSERT_EQ(strumien.Write(tekst.data(), static_cast<std::int64_t>(podzial)), podzial);
                strumien.WriteBuffer(tekst.data() + podzial, ile - podzial);
                ASSERT_EQ(strumien.CRC(), kod);
                const auto bajt = static_cast<std::uint32_t>(bajty[od + ile]);
                kod = CRCBitowo(kod, 0xEDB88320U, {bajt});
                kod16 = CRCBitowo(kod16, 0xA001U, {bajt});
            }
        }
        EXPECT_EQ(TZTCRCStream().CRC(), 0xFFFFFFFFU);
        EXPECT_EQ(strumien.Write(nullptr, -1), 0);
        EXPECT_EQ(::testy::Blad<ZTException>([&] { strumien.Read(nullptr, 1); }), u"TZTCRCStream.Read");
    }
}

TEST(FunkcjeTekstowe, Tablice) {
    const std::vector<std::u16string> linie = {u"", u"a", u" \t ", u"  b c \r\n", u"\u00A0"};
    EXPECT_EQ(ListaDoLinii(linie, u", "), u"a, b c, \u00A0");
    EXPECT_EQ(ListaDoLinii(std::vector<std::u16string>{u" ", u""}, u","), u"");
    EXPECT_EQ(TrescPrzedZnakiem("\xB3=", '='), "\xB3");
    EXPECT_EQ(TrescPoZnaku("x;\xB3 ", ';', true), "\xB3");
}

} // namespace
} // namespace ztok
