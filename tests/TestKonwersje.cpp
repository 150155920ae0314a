// Conversions and comparisons of values: tables of cases.
#include <gtest/gtest.h>

#include "tests/Bledy.h"
#include "ztok/fields/Konwersje.h"
#include "ztok/fields/KonwersjeWartosci.h"
#include "ztok/fields/WyjatkiModelu.h"
#include "ztok/kernel/TJadroKlas.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/TObiektLiczony.h"
#include "ztok/platform/TWariant.h"
#include "ztok/util/Zttypybazowe.h"

using namespace ztok;
using testy::Blad;

TEST(Konwersje, TekstNaLogiczna) {
    for (const char16_t* prawda : {u"T", u"1", u"true", u"YES", u"Tak", u"TAK", u"7", u"-1"})
        EXPECT_TRUE(ZTOKStrToBoolean(prawda)) << Utf8ZUtf16(prawda);
    for (const char16_t* falsz : {u"N", u"0", u"False", u"no", u"NIE", u"00"})
        EXPECT_FALSE(ZTOKStrToBoolean(falsz)) << Utf8ZUtf16(falsz);
    for (const char16_t* zly : {u"t", u"n", u"", u"tak ", u"1.0", u"99999999999"})
        EXPECT_THROW((void)ZTOKStrToBoolean(zly), EBladKonwersji) << Utf8ZUtf16(zly);
}

TEST(Konwersje, LiczbyZObuSeparatorami) {
    const std::pair<const char16_t*, double> dobre[] = {
        {u"1234.5", 1234.5}, {u"1 234,5", 1234.5}, {u"1234,5", 1234.5}, {u"-0,25", -0.25},
        {u"1 000", 1000},    {u"1e3", 1000},       {u" 12 ", 12},       {u"1,5e2", 150},
    };
    for (const auto& [tekst, oczekiwana] : dobre) {
        double wartosc = 0;
        ASSERT_TRUE(ZTOKTryStrToFloat(tekst, wartosc)) << Utf8ZUtf16(tekst);
        EXPECT_EQ(wartosc, oczekiwana) << Utf8ZUtf16(tekst);
    }
    for (const char16_t* zly : {u"1,234,5", u"", u"abc", u"1.2.3", u"1,2.3"}) {
        double wartosc = 17;
        EXPECT_FALSE(ZTOKTryStrToFloat(zly, wartosc)) << Utf8ZUtf16(zly);
    }
    EXPECT_EQ(Blad([] { (void)ZTOKStrToFloat(u"x,y"); }), u"'x,y' nie jest poprawną liczbą zmiennoprzecinkową");
    // The rule follows the kernel's separator, whichever it is.
    TUstawieniaFormatu& format = JadroKlas()->Format();
    format.separatorDziesietny = u',';
    EXPECT_EQ(ZTOKStrToFloat(u"1 234.5"), 1234.5);
    EXPECT_EQ(ZTOKFloatToStr(2.5), u"2,5");
    JadroKlas()->UstawDefFormatDatyICzasu();
    EXPECT_EQ(ZTOKFloatToStr(2.5), u"2.5");
}

TEST(Konwersje, ElementyMaskiIPrzycinanie) {
    EXPECT_EQ(DajElementMaski(u"?zero;jeden;dwa", 1), u"jeden");
    EXPECT_EQ(DajElementMaski(u"zero;;dwa", 1), u"");
    EXPECT_EQ(DajElementMaski(u"zero;jeden", 2), u"");
    EXPECT_EQ(DajElementMaski(u"zero", -1), u"");
    EXPECT_EQ(DajElementMaski(u"", 0), u"");
    EXPECT_EQ(DajElementMaski(u"a;b;", 2), u"");
    EXPECT_EQ(ZTOKFormatBool(u"tak;nie;x", true), u"tak");
    EXPECT_EQ(ZTOKFormatBool(u"tak;nie;x", false), u"nie;x");
    EXPECT_EQ(ZTOKFormatBool(u"tak", false), u"");

    const std::u16string tekst = u"  abc  ";
    EXPECT_EQ(ZTOKTrim(tekst, 2), u"ab");
    EXPECT_EQ(ZTOKTrim(tekst), u"abc");
    EXPECT_EQ(ZTOKTrim(u"\t\n ab cd \r", 3), u"ab"); // the cut leaves a blank, which goes too
    EXPECT_EQ(ZTOKTrim(std::string_view("\x01\x1F x\xFF ")), "x\xFF");
    EXPECT_EQ(ZTOKTrim(u"   "), u"");
}

TEST(Konwersje, NazwyTypowIPol) {
    std::u16string nazwa;
    EXPECT_TRUE(WydzielNazweTypu(nazwa, u"OBJECT TKlient: x"));
    EXPECT_EQ(nazwa, u"TKlient");
    EXPECT_TRUE(WydzielNazweTypu(nazwa, u"object " + std::u16string(100, u'a')));
    EXPECT_EQ(nazwa.size(), 57U); // the scan ends at the line's 64th character
    EXPECT_FALSE(WydzielNazweTypu(nazwa, u"objectTKlient"));
    EXPECT_EQ(PodmienNazweTypu(u"object T1: reszta", u"TInny"), u"object TInny: reszta");
    EXPECT_EQ(PodmienNazweTypu(u"nic", u"TInny"), u"nic");

    const struct {
        std::u16string_view sciezka, nazwa, reszta;
    } przypadki[] = {{u"Adres.Ulica", u"Adres", u"Ulica"},
                     {u"Pozycje[2].Kwota", u"Pozycje", u"[2].Kwota"},
                     {u"Nazwa", u"Nazwa", u""},
                     {u".x", u"", u"x"},
                     {u"", u"", u""}};
    for (const auto& p : przypadki) {
        std::u16string_view sciezka = p.sciezka;
        std::u16string_view reszta = u"?";
        WydzielNazwePola(sciezka, reszta);
        EXPECT_EQ(sciezka, p.nazwa);
        EXPECT_EQ(reszta, p.reszta);
    }
}

TEST(Konwersje, DatyZFormatemJadra) {
    EXPECT_EQ(ZTOKStrToDate(u"2015-01-02"), 42006);
    EXPECT_EQ(ZTOKStrToDate(u"02.01.2015"), 42006);
    EXPECT_EQ(ZTOKStrToDate(u"2015/1/2"), 42006);
    EXPECT_EQ(ZTOKStrToDateTime(u"2015-01-02 18:00"), 42006.75);
    EXPECT_EQ(ZTOKStrToDateTime(u"1899-12-25 06:00"), -5.25); // the time goes with the sign of the date
    EXPECT_EQ(ZTOKStrToTime(u"06:00:00"), 0.25);
    EXPECT_EQ(ZTOKDateTimeToStr(-5.25), u"1899-12-25 06:00:00");
    EXPECT_EQ(ZTOKDateToStr(42006.75), u"2015-01-02");
    EXPECT_EQ(Blad([] { (void)ZTOKStrToDate(u"2015-02-30"); }), u"'2015-02-30' nie jest poprawną datą");
    EXPECT_THROW((void)ZTOKStrToTime(u"25:00"), EBladKonwersji);
    for (double dzien = -693000; dzien < 2900000; dzien += 9973) // its own format reads back
        EXPECT_EQ(ZTOKStrToDate(ZTOKDateToStr(dzien)), dzien);
}

TEST(Konwersje, ArgumentJakoTekstIWariant) {
    TZTMemoryStream strumien;
    const int liczba = 0;
    const struct {
        TArgument argument;
        std::u16string_view tekst;
        TTypWariantu typ; // Null: no variant
    } przypadki[] = {
        {-5, u"-5", TTypWariantu::Integer},
        {std::int64_t{1} << 40, u"1099511627776", TTypWariantu::Int64},
        {true, u"True", TTypWariantu::Boolean},
        {'\xB9', u"ą", TTypWariantu::AnsiString},
        {std::string("\xB3"), u"ł", TTypWariantu::AnsiString},
        {TArgument::ShortString("\xF3"), u"ó", TTypWariantu::AnsiString},
        {TArgument::PChar("ab"), u"ab", TTypWariantu::Null},
        {u'ż', u"ż", TTypWariantu::UnicodeString},
        {TArgument::PWideChar(u"ćma"), u"ćma", TTypWariantu::UnicodeString},
        {TArgument::WideString(u"w"), u"w", TTypWariantu::WideString},
        {u"tekst", u"tekst", TTypWariantu::UnicodeString},
        {2.5, u"2,5", TTypWariantu::Double},
        {TWaluta{12345}, u"1,2345", TTypWariantu::Currency},
        {TWariant(7), u"7", TTypWariantu::Integer},
        {nullptr, u"nil", TTypWariantu::Null},
        {static_cast<const TObiektOgolny*>(&strumien), u"(TZTMemoryStream)", TTypWariantu::Null},
        {static_cast<const TObiektOgolny*>(nullptr), u"nil", TTypWariantu::Null},
        {TZTMemoryStream::KlasaStatyczna(), u"TZTMemoryStream", TTypWariantu::Null},
        {static_cast<IInterfejs*>(nullptr), u"nil", TTypWariantu::Null},
    };
    for (const auto& p : przypadki) {
        EXPECT_EQ(ZTOKVarRecToStr(p.argument), p.tekst) << Utf8ZUtf16(p.tekst);
        if (p.typ == TTypWariantu::Null) {
            EXPECT_EQ(Blad([&] { (void)ZTOKVarRecToVariant(p.argument); }),
                      u"błędny typ parametru: " + ZTOKVarRecToStr(static_cast<int>(p.argument.Tag())));
        } else {
            EXPECT_EQ(ZTOKVarRecToVariant(p.argument).Typ(), p.typ) << Utf8ZUtf16(p.tekst);
        }
    }
    const std::u16string adres = ZTOKVarRecToStr(TArgument::Pointer(&liczba));
    EXPECT_GE(adres.size(), 8U);
    EXPECT_EQ(adres.find_first_not_of(u"0123456789ABCDEF"), std::u16string::npos);
    const TArgument dwa[] = {1, u"b"};
    const TWariant tablica = ZTOKArrayOfConstToVariant(dwa);
    ASSERT_EQ(tablica.Elementy().size(), 2U);
    EXPECT_EQ(tablica.Elementy()[1].JakoTekst16(), u"b");
}

TEST(Konwersje, WariantWgMaski) {
    const struct {
        const char16_t* maska;
        TWariant wariant;
        std::u16string_view tekst;
    } przypadki[] = {
        {u"", TWariant(12), u"12"},
        {u"?a;b;c", TWariant(1), u"b"},
        {u"?a;b;c", TWariant(9), u""},
        {u"0000", TWariant(12), u"0012"},
        {u"0.00", TWariant(2.5), u"2,50"},
        {u"0.00", TWariant(TWaluta{25000}), u"2,50"},
        {u"000", TWariant(std::uint8_t{7}), u"007"},
        {u"0", TWariant(std::uint64_t{18446744073709551615U}), u"18446744073709551615"},
        {u"", TWariant(std::int64_t{9007199254740993}), u"9007199254740993"},
        {u"0.0000", TWariant(TWaluta{9223372036854775807}), u"922337203685477,5807"},
        {u"0.00", TWariant(TWaluta{-9223372036854755500}), u"-922337203685475,55"},
        {u"0.0;;zero", TWariant(TWaluta{-499}), u"zero"},
        {u"", TWariant(TWaluta{-500}), u"-0,05"},
        {u"yyyy/mm/dd", TWariant(TDataCzas{42006}), u"2015-01-02"},
        {u"tak;nie", TWariant(false), u"nie"},
        {u"cokolwiek", TWariant(u"tekst"), u"tekst"},
    };
    for (const auto& p : przypadki)
        EXPECT_EQ(ZTOKFormatVar(p.maska, p.wariant), p.tekst) << Utf8ZUtf16(p.tekst);
    EXPECT_TRUE(ZTOKVarEmptyOrNull(TWariant()) && ZTOKVarEmptyOrNull(TWariant::Null()));
    EXPECT_FALSE(ZTOKVarEmptyOrNull(TWariant(u"")));
}

TEST(Konwersje, PorzadekTekstowWgLokalizacji) {
    // Polish capitals keep their case in the Windows-1250 order, by intent.
    EXPECT_NE(ZTOKWin1250CompareText(u"łódź", u"ŁÓDŹ"), 0);
    EXPECT_EQ(ZTOKWin1250CompareText(u"abc", u"ABC"), 0);
    EXPECT_EQ(ZTOKWin1250CompareStr(u"ab", u"abc"), -1);
    EXPECT_EQ(ZTOKWin1250CompareStr(u"b", u"abc"), 1);
    for (const std::uint32_t locale : {0U, LocaleWin1250}) {
        EXPECT_EQ(PorownajTeksty(u"abc", u"ABC", rlRozmLiterNiewazny, locale), 0);
        EXPECT_EQ(PorownajTeksty(u"abc", u"ABC", rlRozmLiterWazny, locale), 1);
        EXPECT_EQ(PorownajTeksty(u"ą", u"z", rlRozmLiterWazny, locale), 1); // byte order
    }
    EXPECT_EQ(PorownajTeksty(u"Ą", u"ą", rlRozmLiterNiewazny, LocaleNiezmienny), -1);
    EXPECT_EQ(PorownajTeksty(u"ą", u"b", rlRozmLiterWazny, 0x0415), -1); // the language's order
    EXPECT_EQ(PorownajTeksty(u"Ą", u"ą", rlRozmLiterNiewazny, 0x0415), 0);
    EXPECT_EQ(PorownajTekstySzerokie(u"ą", u"z", rlRozmLiterWazny, LocaleWin1250), 1); // by code unit
    EXPECT_EQ(ZTOKWCharComp(u'a', u'b'), -1);
    EXPECT_EQ(ZTOKWStrComp(u"a", u"a"), 0);
    EXPECT_EQ(ZTOKVarCompare(TWariant(u"B"), TWariant(u"a"), rlRozmLiterNiewazny, LocaleWin1250), 1);
    EXPECT_EQ(ZTOKVarCompare(TWariant(2), TWariant(2.5), rlRozmLiterWazny, LocaleWin1250), -1);
}

TEST(Konwersje, ObcyTyp) {
    const EZTObcyTypError blad(u"Modul:TInny", u"TKlient");
    EXPECT_EQ(blad.Komunikat(), u"Obcy typ Modul:TInny, spodziewany TKlient");
    EXPECT_EQ(blad.OdczytanyTyp(false), u"Modul:TInny");
    EXPECT_EQ(blad.OdczytanyTyp(true), u"TInny");
}
