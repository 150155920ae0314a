// Conversions and comparisons of values: the functions by name, over a table of cases.
#include "tests/Testy.h"

#include "ztok/platform/DatyTekst.h"
#include "ztok/util/Ztfunbazowe.h"

using namespace ztok;

namespace {

using S = const std::u16string&;

std::u16string Liczba(double liczba) { return FloatNaTekstDokladny(liczba, UstawieniaPolskie()); }
// Whole milliseconds, since the parts of a day are no exact numbers.
std::u16string Milisekundy(double dni) { return IntNaTekst(std::llround(dni * 86400000)); }
std::u16string Logiczna(bool wartosc) { return wartosc ? u"T" : u"N"; }
int Int(S tekst) { return TekstNaInt(tekst); }
double Double(S tekst) { return testy::Rzeczywista(Utf8ZUtf16(tekst)); }
// 8-bit text stands in the table as the characters of its bytes.
std::string Opis(S opis) {
    const std::u16string rodzaj = TrescPrzedZnakiem(opis, u':');
    const bool bajty = rodzaj == u"c" || rodzaj == u"ansi" || rodzaj == u"short" || rodzaj == u"pchar";
    return bajty ? Win1250(opis) : Utf8ZUtf16(opis);
}
TWariant Wariant(S opis) { return testy::Wariant(Opis(opis)); }
TArgument Argument(S opis) { return testy::Argument(Opis(opis)); }

std::u16string ZPrzecinkiemJadra(S tekst) {
    JadroKlas()->Format().separatorDziesietny = u',';
    double liczba = 0;
    const bool jest = ZTOKTryStrToFloat(tekst, liczba);
    const std::u16string wynik = ZTOKFloatToStr(2.5) + (jest ? u' ' + Liczba(liczba) : u"");
    JadroKlas()->UstawDefFormatDatyICzasu();
    return wynik;
}

std::u16string Podzielona(S tekst) {
    std::u16string_view sciezka = tekst;
    std::u16string_view reszta = u"?";
    WydzielNazwePola(sciezka, reszta);
    return std::u16string(sciezka).append(u"|").append(reszta);
}

std::u16string NazwaTypu(S linia) {
    std::u16string nazwa = u"before";
    return Logiczna(WydzielNazweTypu(nazwa, linia)) + u' ' + nazwa;
}

std::u16string JakoWariant(S opis) {
    const TWariant wariant = ZTOKVarRecToVariant(Argument(opis));
    return std::u16string(wariant.NazwaTypu()) + u' ' + wariant.JakoTekst16();
}

const std::map<std::string, std::u16string (*)(S, S)> kFunkcje = {
    {"bool", [](S a, S) { return Logiczna(ZTOKStrToBoolean(a)); }},
    {"float", [](S a, S) { return Liczba(ZTOKStrToFloat(a)); }},
    {"int32", [](S a, S) { return IntNaTekst(TekstNaInt(a)); }},
    {"int64", [](S a, S) { return IntNaTekst(TekstNaInt64(a)); }},
    {"float.", [](S a, S) { return Liczba(TekstNaFloat(a, UstawieniaPolskie())); }},
    {"date-", [](S a, S) { return Liczba(TekstNaDate(a, UstawieniaPolskie())); }},
    {"time-", [](S a, S) { return Liczba(TekstNaCzas(a, UstawieniaPolskie())); }},
    {"datetime-", [](S a, S) { return Liczba(TekstNaDateICzas(a, UstawieniaPolskie())); }},
    {"float8", [](S a, S) { return Liczba(TZTParser::StringToFloat(Win1250(a))); }},
    {"float,", [](S a, S) { return ZPrzecinkiemJadra(a); }},
    {"mask", [](S a, S b) { return std::u16string(DajElementMaski(a, Int(b))); }},
    {"formatbool", [](S a, S b) { return ZTOKFormatBool(a, b == u"T"); }},
    {"trim", [](S a, S b) { return std::u16string(ZTOKTrim(a, static_cast<std::size_t>(Int(b)))); }},
    {"trim8", [](S a, S b) { return ZWin1250(ZTOKTrim(Win1250(a), static_cast<std::size_t>(Int(b)))); }},
    {"type", [](S a, S) { return NazwaTypu(a); }},
    {"retype", [](S a, S b) { return PodmienNazweTypu(a, b); }},
    {"field", [](S a, S) { return Podzielona(a); }},
    {"date", [](S a, S) { return Liczba(ZTOKStrToDate(a)); }},
    {"time", [](S a, S) { return Liczba(ZTOKStrToTime(a)); }},
    {"datetime", [](S a, S) { return Liczba(ZTOKStrToDateTime(a)); }},
    {"todate", [](S a, S) { return ZTOKDateToStr(Double(a)); }},
    {"totime", [](S a, S) { return ZTOKTimeToStr(Double(a)); }},
    {"todatetime", [](S a, S) { return ZTOKDateTimeToStr(Double(a)); }},
    {"tofloat", [](S a, S) { return ZTOKFloatToStr(Double(a)); }},
    {"toxml", [](S a, S b) { return ZTOKDateTimeToXML(Double(a), !b.empty()); }},
    {"xmldate", [](S a, S) { return Milisekundy(ZTOKXMLToDate(a)); }},
    {"xmltime", [](S a, S) { return Milisekundy(ZTOKXMLToTime(a)); }},
    {"xmldatetime", [](S a, S) { return Milisekundy(ZTOKXMLToDateTime(a)); }},
    {"argument", [](S a, S) { return ZTOKVarRecToStr(Argument(a)); }},
    {"variant", [](S a, S) { return JakoWariant(a); }},
    {"exact", [](S a, S) { return Liczba(Double(a)); }},
    {"blank",
     [](S a, S b) { return Logiczna(TekstPusty(a, Int(TrescPrzedZnakiem(b, u';')), Int(TrescPoZnaku(b, u';')))); }},
    {"before", [](S a, S b) { return TrescPrzedZnakiem(a, b[0]); }},
    {"after", [](S a, S b) { return TrescPoZnaku(a, b[0]); }},
    {"aftertrim", [](S a, S b) { return TrescPoZnaku(a, b[0], true); }},
    {"oneline", [](S a, S) { return WJednejLinii(a); }},
    {"formatvar", [](S a, S b) { return ZTOKFormatVar(a, Wariant(b)); }},
};

// "compare [wide] LOCALE [any]", "comparevar [any]"
std::u16string Porownane(const std::string& funkcja, S a, S b) {
    const TRozmiarLiter rozm = funkcja.ends_with("any") ? rlRozmLiterNiewazny : rlRozmLiterWazny;
    if (funkcja.starts_with("comparevar"))
        return IntNaTekst(ZTOKVarCompare(Wariant(a), Wariant(b), rozm, LocaleWin1250));
    const auto locale = static_cast<std::uint32_t>(std::stoul(funkcja.substr(funkcja.find_first_of("014"))));
    const bool szeroko = funkcja.find("wide") != std::string::npos;
    return IntNaTekst((szeroko ? PorownajTekstySzerokie : PorownajTeksty)(a, b, rozm, locale));
}

} // namespace

TEST(Konwersje, Tabela) {
    testy::SprawdzTabele("konwersje.tsv", 3, [](const testy::TWierszTabeli& w) {
        return Utf8ZUtf16(w[0].starts_with("compare") ? Porownane(w[0], w.Tekst(1), w.Tekst(2))
                                                      : kFunkcje.at(w[0])(w.Tekst(1), w.Tekst(2)));
    });
}

TEST(Konwersje, CzegoTabelaNieWyrazi) {
    TZTMemoryStream strumien;
    EXPECT_EQ(ZTOKVarRecToStr(static_cast<const TObiektOgolny*>(&strumien)), u"(TZTMemoryStream)");
    EXPECT_TRUE(ZTOKVarEmptyOrNull(TWariant()) && ZTOKVarEmptyOrNull(TWariant::Null()));
    EXPECT_FALSE(ZTOKVarEmptyOrNull(TWariant(u"")));
    EXPECT_EQ(ZTOKWCharComp(u'a', u'b'), -1);
    EXPECT_EQ(ZTOKWStrComp(u"a", u"a"), 0);
    const TArgument dwa[] = {1, u"b"};
    EXPECT_EQ(ZTOKArrayOfConstToVariant(dwa), TWariant::Tablica({1, u"b"}));
    for (double dzien = -693000; dzien < 2900000; dzien += 9973) // its own format reads back
        EXPECT_EQ(ZTOKStrToDate(ZTOKDateToStr(dzien)), dzien);
    const EZTObcyTypError blad(u"Modul:TInny", u"TKlient");
    EXPECT_EQ(blad.Komunikat(), u"Obcy typ Modul:TInny, spodziewany TKlient");
    EXPECT_EQ(blad.OdczytanyTyp(false), u"Modul:TInny");
    EXPECT_EQ(blad.OdczytanyTyp(true), u"TInny");
    EXPECT_EQ(EZTObcyTypError(u"TInny", u"").OdczytanyTyp(true), u"TInny");
}

// The kernel's own formats read back, also when a format's separator is not the one that the settings name.
TEST(Konwersje, FormatJadraWraca) {
    TUstawieniaFormatu& format = JadroKlas()->Format();
    for (const char16_t* data : {u"yyyy-MM-dd", u"yyyy/MM/dd", u"dd.MM.yyyy", u"M/d/yyyy", u"d/M/yy"})
        for (const char16_t separator : {u'-', u'.', u'/'}) {
            format.krotkiFormatDaty = data;
            format.separatorDaty = separator;
            const std::u16string tekst = ZTOKDateTimeToStr(42006.75);
            EXPECT_EQ(ZTOKStrToDateTime(tekst), 42006.75) << Utf8ZUtf16(tekst);
            EXPECT_EQ(ZTOKXMLToDateTime(ZTOKDateTimeToXML(42006.75)), 42006.75) << Utf8ZUtf16(tekst);
        }
    JadroKlas()->UstawDefFormatDatyICzasu();
}
