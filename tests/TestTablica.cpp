#include "ztok/fields/TArrayOfConst.h"

#include <cmath>
#include <functional>

#include <gtest/gtest.h>

#include "Bledy.h"
#include "LosoweDrzewo.h"
#include "StrumienieTestowe.h"
#include "platforma/SystemTestowy.h"
#include "ztok/kernel/Typypolbazowe.h"
#include "ztok/platform/Pula.h"
#include "ztok/platform/TObiektLiczony.h"
#include "ztok/util/Zttypybazowe.h"

using namespace ztok;
using namespace probki;
using strumienie::Bajty;
using strumienie::Szesnastkowo;
using strumienie::Tekst;
using strumienie::Wczytaj;
using strumienie::Zapisz;
using strumienie::ZTekstu;
using testy::Blad;

namespace {

struct ILiczony : IInterfejs {
    static constexpr TGUID IID = Guid("{5A1C2D3E-4F50-4162-8394-A5B6C7D8E9F1}");
};
class TLiczony : public TImplementacja<TObiektLiczony, ILiczony> {
  public:
    using Bazowa = TImplementacja<TObiektLiczony, ILiczony>;
    static const TKlasa* KlasaStatyczna() noexcept { ZTOK_DANE_KLASY(TLiczony, Bazowa, u"TLiczony"); }
    [[nodiscard]] const TKlasa* Klasa() const noexcept override { return KlasaStatyczna(); }
};

// An object with an array among its fields.
class TZTablica : public TObiekt {
    ZTOK_OBIEKT(TZTablica, TObiekt, (0, Nazwa, String), (1, Dane, Obiekt<TArrayOfConst>))
};

// The document of an array whose lines these are.
std::string Dokument(const std::string& wiersz) { return "object TArrayOfConst\r\n" + wiersz + "\r\nend"; }

class TablicaWartosci : public testing::Test {
  protected:
    void SetUp() override {
        Rejestruj();
        RejestrujKlasy<TZTablica, TArrayOfConst>();
    }
};

TEST_F(TablicaWartosci, KazdyZnacznikWKazdejFormie) {
    TAdres adres, dalszy;
    adres.SetNumer(5);
    dalszy.SetNumer(6);
    const TZTMemoryStream obcy;
    const TIntf<ILiczony> liczony(UtworzSurowy<TLiczony>());
    const TKlasa* bezKlasy = nullptr;
    static const int miejsca[2] = {};
    const long double dziesiata = 0.1L;
    struct TPrzypadek {
        TArgument wartosc;
        const char* bajty;      // behind the count
        std::string tekst;      // the line, or the frame
        TArgument wiekszy;      // a greater one of the kind; the value itself when there is none
        bool wraca = true;      // reads back as it was; else as null of the kind
        const char* d2007 = ""; // bytes and line for a reader without Unicode, where they differ
        const char* d2007Tekst = "";
    };
    const TPrzypadek przypadki[] = {
        {-2, "00 FE FF FF FF", "Integer=-2", -1},
        {true, "01 01", "Boolean=T", true},
        {false, "01 00", "Boolean=N", true},
        {'\'', "02 27", "Char=#39", 'a'},
        {'\xB3', "02 B3", "Char='\xB3'", '\xBF'},
        {1.5, "03 00 00 00 00 00 00 00 C0 FF 3F", "Extended=1.5", dziesiata * 100},
        {-0.0, "03 00 00 00 00 00 00 00 00 00 80", "Extended=-0", dziesiata},
        {dziesiata, "03 CD CC CC CC CC CC CC CC FB 3F", "Extended='CDCCCCCCCCCCCCCCFB3F'", 0.2},
        {TArgument::ShortString("a'\x01"), "04 03 61 27 01", "ShortString='a'#39#1", TArgument::ShortString("b")},
        {TArgument::Pointer(&miejsca[0]), "05 00 00 00 00", "Pointer=0", TArgument::Pointer(&miejsca[1]), false},
        {TArgument::PChar("\xBF"), "06 01 BF", "PChar='\xBF'", TArgument::PChar("\xBF\xBF")},
        {TArgument(&obcy), "07 0F 'TZTMemoryStream' 00 00 00 00", "Object=0", TArgument(&adres), false},
        {TArgument(&adres), "07 06 'TAdres' 01 02 05 00 00 00", "object TAdres\r\nNumer=5\r\nend", &dalszy},
        {adres.Klasa(), "08 06 'TAdres'", "Class=TAdres", TZTablica::KlasaStatyczna()},
        {bezKlasy, "08 00", "Class=0", adres.Klasa()},
        {u'ł', "09 42 01", "WideChar=\"\xC5\x82\"", u'ń'},
        {u'\xD800', "09 00 D8", "WideChar=\"\xED\xA0\x80\"", u'\xD801'},
        {TArgument::PWideChar(u"ż"), "0A 02 C5 BC", "PWideChar=\"\xC5\xBC\"", TArgument::PWideChar(u"żż")},
        {std::string("\0\xFF", 2), "0B 02 00 FF", "AnsiString=#0'\xFF'", std::string("x")},
        {TWaluta{-12345}, "0C C7 CF FF FF FF FF FF FF", "Currency=-12345", TWaluta{0}},
        {liczony.get(), "0E 00 00 00 00", "Interface=0", liczony.get(), false},
        {TArgument::WideString(u"\"ą"), "0F 03 22 C4 85", "WideString=#34\"\xC4\x85\"", TArgument::WideString(u"b")},
        {INT64_MIN, "10 00 00 00 00 00 00 00 80", "Int64=-9223372036854775808", INT64_MAX},
        {u"Łódź", "11 07 C5 81 C3 B3 64 C5 BA", "UnicodeString=\"\xC5\x81\xC3\xB3\x64\xC5\xBA\"", u"łódźX", true,
         "0B 04 A3 F3 64 9F", "AnsiString='\xA3\xF3\x64\x9F'"},
        {u"", "11 00", "UnicodeString=\"\"", u"a", true, "0B 00", "AnsiString=''"},
    };
    TArrayOfConst wszystkie;
    std::string bajtyWszystkich;
    for (const TPrzypadek& p : przypadki) {
        SCOPED_TRACE(p.tekst);
        TArrayOfConst tablica, wieksza, czytana;
        tablica.Dodaj(p.wartosc);
        wieksza.Dodaj(p.wiekszy);
        wszystkie.Dodaj(p.wartosc);
        bajtyWszystkich += Bajty(p.bajty);
        const std::string bajty = Zapisz(tablica);
        EXPECT_EQ(Szesnastkowo(bajty), Szesnastkowo(Bajty("01") + Bajty(p.bajty)));
        EXPECT_EQ(Tekst(tablica), Dokument(p.tekst));
        TZapisywaczDanych d2007;
        d2007.DaneDlaD2007 = true;
        EXPECT_EQ(Szesnastkowo(Zapisz(tablica, &d2007)),
                  Szesnastkowo(Bajty("01") + Bajty(*p.d2007 != 0 ? p.d2007 : p.bajty)));
        EXPECT_EQ(Tekst(tablica, [](TZapisywaczTekstu& z) { z.DaneDlaD2007 = true; }),
                  Dokument(*p.d2007Tekst != 0 ? p.d2007Tekst : p.tekst));
        for (const bool tekstem : {false, true}) {
            if (tekstem)
                ZTekstu(czytana, Dokument(p.tekst));
            else
                EXPECT_EQ(Wczytaj(czytana, bajty), static_cast<std::int64_t>(bajty.size()));
            ASSERT_EQ(czytana.Ile(), 1);
            EXPECT_EQ(czytana.Element(0).Tag(), p.wartosc.Tag());
            EXPECT_EQ(czytana.Znajdz(p.wartosc) == 0, p.wraca);
            EXPECT_EQ(czytana.Porownaj(tablica), p.wraca ? 0 : -1);
            // To the bit: a real number that equals may still be another one. A class of a raw object is not kept.
            if (p.wraca)
                EXPECT_EQ(Szesnastkowo(Zapisz(czytana)), Szesnastkowo(bajty));
            else
                EXPECT_EQ(czytana.Znajdz(czytana.Element(0)), 0);
        }
        TArrayOfConst kopia;
        kopia.Dodaj(u"before"); // gives way
        kopia.Dodaj(1);
        kopia.KopiujDane(tablica);
        EXPECT_EQ(kopia.PorownajZObiektem(tablica, rlRozmLiterWazny), 0);
        EXPECT_EQ(kopia.Ile(), 1);
        const bool rosnie = wieksza.Znajdz(p.wartosc) < 0;
        EXPECT_EQ(tablica.Porownaj(wieksza), rosnie ? -1 : 0);
        EXPECT_EQ(wieksza.Porownaj(tablica), rosnie ? 1 : 0);
        wieksza.Dodaj(0);
        EXPECT_EQ(tablica.Porownaj(wieksza), -1); // the count first
    }
    EXPECT_EQ(Szesnastkowo(Zapisz(wszystkie)),
              Szesnastkowo(std::string(1, static_cast<char>(std::size(przypadki))) + bajtyWszystkich));
    EXPECT_EQ(wszystkie.IleKlas(), 2);

    // A byte that is neither 0 nor 1 is true, and stays what it was.
    TArrayOfConst tablica;
    Wczytaj(tablica, Bajty("01 01 05"));
    EXPECT_EQ(tablica.Znajdz(true), 0);
    EXPECT_EQ(Szesnastkowo(Zapisz(tablica)), "01 01 05");
}

TEST_F(TablicaWartosci, WariantyMajaTylkoPostacTekstowa) {
    // In ascending order: by type, then by value.
    const struct {
        TWariant wariant;
        std::string tekst;
    } przypadki[] = {
        {{}, "Empty"},
        {TWariant::Null(), "Null"},
        {std::int16_t{-300}, "Smallint -300"},
        {7, "Integer 7"},
        {0.1F, "Single 0.10000000149011612"},
        {-0.25, "Double -0.25"},
        {std::numeric_limits<double>::infinity(), "Double 'INF'"},
        {TWaluta{-12345}, "Currency -12345"},
        {TDataCzas{42006.75}, "Date 42006.75"},
        {TWariant::WideString(u"ż"), "WideString \"\xC5\xBC\""},
        {false, "Boolean N"},
        {true, "Boolean T"},
        {std::int8_t{-128}, "Shortint -128"},
        {std::uint8_t{255}, "Byte 255"},
        {std::uint16_t{65535}, "Word 65535"},
        {4294967295U, "Cardinal 4294967295"},
        {INT64_MIN, "Int64 -9223372036854775808"},
        {UINT64_MAX, "UInt64 18446744073709551615"},
        {TWariant::AnsiString("a'\xBF"), "AnsiString 'a'#39'\xBF'"},
        {u"żółw", "UnicodeString \"\xC5\xBC\xC3\xB3\xC5\x82w\""},
        {TWariant::Tablica({}), "()"},
        {TWariant::Tablica({5, TWariant::Tablica({u"x", TWariant::Null()})}),
         "(Integer 5;\r\n(UnicodeString \"x\";\r\nNull))"},
        {TWariant::Tablica({6, 0}), "(Integer 6;\r\nInteger 0)"},
    };
    TArrayOfConst poprzednia;
    for (const auto& p : przypadki) {
        SCOPED_TRACE(p.tekst);
        TArrayOfConst tablica, czytana;
        tablica.Dodaj(p.wariant);
        EXPECT_EQ(Tekst(tablica), Dokument("Variant=" + p.tekst));
        ZTekstu(czytana, Dokument("Variant=" + p.tekst));
        EXPECT_EQ(czytana.Element(0).Wariant(), p.wariant);
        EXPECT_EQ(czytana.Porownaj(tablica), 0);
        EXPECT_EQ(tablica.Znajdz(p.wariant), 0);
        EXPECT_EQ(poprzednia.Porownaj(tablica), -1);
        EXPECT_EQ(tablica.Porownaj(poprzednia), 1);
        EXPECT_EQ(Blad<ZTException>([&] { Zapisz(tablica); }), u"Brak implementacji ZapiszVariantWStrumieniu");
        poprzednia.UstawWszystkie(tablica.Elementy());
    }
    EXPECT_EQ(Blad<ZTException>([&] { Wczytaj(poprzednia, Bajty("01 0D 00")); }),
              u"Brak implementacji WczytajVariantZeStrumienia");
    // What has no order equals itself alone, to the search.
    TArrayOfConst tablica;
    tablica.DodajWszystkie({std::nan(""), 1.5, TWariant(std::nan("")), TWariant::Tablica({1}), TWariant(u"x")});
    EXPECT_EQ(tablica.Znajdz(1.5), 1);
    EXPECT_EQ(tablica.Znajdz(std::nan("")), -1);
    EXPECT_EQ(tablica.Znajdz(TWariant(2.5)), -1);
    EXPECT_EQ(tablica.Znajdz(TWariant(u"x")), 4);
}

// Scalars, references, lists of objects and of values, collections and arrays in one tree, through everything.
TEST_F(TablicaWartosci, MieszaneDrzewaPrzezWszystko) {
    for (std::uint32_t ziarno = 0; ziarno < 120; ++ziarno) {
        SCOPED_TRACE(ziarno);
        TLosoweDrzewo losowe(ziarno);
        losowe.warianty = ziarno % 3 == 0; // then without the binary form
        const auto wzor = Utworz<TWszystko>();
        losowe.Wypelnij(*wzor, 3);
        wzor->GetTablica().Dodaj(losowe.warianty ? TArgument(TWariant(1)) : TArgument(1));
        const auto opcje = [ziarno](TZapisywaczTekstu& z) {
            z.PominAkapity = ziarno % 2 == 0;
            z.PominKonceLinii = ziarno % 3 == 1;
            z.ZnakAkapitu = ziarno % 5 == 0 ? '\t' : ' ';
            z.RozmAkapitu = static_cast<std::uint8_t>(ziarno % 4);
        };
        const std::string tekst = Tekst(*wzor, opcje);
        const auto zTekstu = Utworz<TWszystko>();
        ASSERT_EQ(ZTekstu(*zTekstu, tekst), static_cast<std::int64_t>(tekst.size()));
        const auto kopia = Utworz<TWszystko>();
        losowe.Wypelnij(*kopia, 2); // gives way
        kopia->KopiujDane(*zTekstu);
        std::vector<const TWszystko*> takie = {zTekstu.get(), kopia.get()};
        const auto zBajtow = Utworz<TWszystko>();
        if (!losowe.warianty) {
            Wczytaj(*zBajtow, Zapisz(*wzor));
            takie.push_back(zBajtow.get());
        }
        for (const TWszystko* inny : takie) {
            TPorownywaczDanych porownywacz(wzor.get(), inny, rpWszystkiePola, rlRozmLiterWazny, LocaleNiezmienny,
                                           tprRefJakoSciezki);
            ASSERT_EQ(wzor->Porownaj(*inny, &porownywacz), 0);
            ASSERT_EQ(Tekst(*inny, opcje), tekst);
            if (!losowe.warianty) {
                ASSERT_EQ(Zapisz(*inny), Zapisz(*wzor));
                ASSERT_EQ(inny->DajWyroznikObiektu(), wzor->DajWyroznikObiektu());
            }
        }
        EXPECT_NE(wzor->DrzewoObiektu(), u""); // whatever it holds
    }
}

TEST_F(TablicaWartosci, ObiektyIInterfejsyMajaJednegoWlasciciela) {
    TZTablica wlasciciel;
    TArrayOfConst& tablica = wlasciciel.GetDane();
    EXPECT_FALSE(wlasciciel.PoleNiepuste(TZTablica::nrDane));
    TAdres adres;
    adres.SetUlica(u"Prosta");
    TWlasny<TZTMemoryStream> obcy = Utworz<TZTMemoryStream>();
    const TIntf<ILiczony> liczony(UtworzSurowy<TLiczony>());
    const auto* licznik = static_cast<TObiektLiczony*>(ObiektZaInterfejsem(liczony.get()));
    tablica.DodajWszystkie({1, &adres, TArgument(obcy.get()), liczony.get()});
    EXPECT_NE(tablica.Obiekt(1), &adres);
    EXPECT_EQ(tablica.Znajdz(&adres), 1);
    EXPECT_EQ(tablica.Znajdz(&adres, 2), -1);
    EXPECT_EQ(tablica.Obiekt(1)->Rodzic(), &tablica);
    EXPECT_EQ(tablica.Obiekt(1)->DajSciezkeDoSiebie(), u"Dane[1]");
    EXPECT_EQ(wlasciciel.GetTekstowoWgSciezki(u"Dane[1].Ulica"), u"Prosta");
    EXPECT_FALSE(wlasciciel.SciezkaIstnieje(u"Dane[0].Ulica"));
    EXPECT_EQ(licznik->LiczbaReferencji(), 2);
    const TWlasny<TObiektBazowy> kopia = wlasciciel.KlonujObiekt(false);
    EXPECT_EQ(licznik->LiczbaReferencji(), 3);

    obcy.Ustaw(); // never looked at again
    EXPECT_EQ(tablica.GetJakoString(), u"1; Adres: Ulica=Prosta; TZTMemoryStream; ");
    EXPECT_EQ(kopia->Porownaj(wlasciciel), 0);
    EXPECT_EQ(Zapisz(*kopia), Zapisz(wlasciciel));

    TObiektBazowy* oddany = tablica.DodajObiekt(Utworz<TAdres>(), 0);
    EXPECT_EQ(tablica.Obiekt(0), oddany);
    tablica.DodajWszystkie(tablica.Elementy()); // of its own, while it grows
    EXPECT_EQ(tablica.Ile(), 10);
    EXPECT_EQ(licznik->LiczbaReferencji(), 4);
    tablica.Ustaw(4, tablica.Element(0));
    EXPECT_EQ(licznik->LiczbaReferencji(), 3);
    EXPECT_NE(tablica.Obiekt(4), oddany);
    {
        TWlasny<TObiektBazowy> wyjety = tablica.WyjmijObiekt(0);
        EXPECT_EQ(wyjety.get(), oddany);
        EXPECT_EQ(wyjety->Rodzic(), nullptr);
        EXPECT_FALSE(tablica.WyjmijObiekt(0));
        EXPECT_EQ(tablica.Ile(), 9);
    }
    tablica.UstawWszystkie(tablica.Elementy().subspan(1, 2)); // the copied address, and what it stood beside
    EXPECT_EQ(tablica.Ile(), 2);
    EXPECT_EQ(tablica.Obiekt(0)->Rodzic(), &tablica);
    EXPECT_EQ(licznik->LiczbaReferencji(), 2);
    EXPECT_FALSE(tablica.Usun(2));
    EXPECT_TRUE(tablica.Usun(0) && tablica.Usun(0));
    EXPECT_TRUE(wlasciciel.PoleNiepuste(TZTablica::nrDane)); // set to nothing is not unset
    EXPECT_EQ(Szesnastkowo(Zapisz(wlasciciel)), "01 02 00");
    EXPECT_TRUE(Tekst(wlasciciel).find("object Dane\r\nend") != std::string::npos);
    wlasciciel.UstawNiepuste(TZTablica::nrDane, false);
    EXPECT_EQ(Szesnastkowo(Zapisz(wlasciciel)), "00");

    // A part of the array's own tree is copied, but cannot be handed over.
    tablica.Dodaj(&wlasciciel);
    TObiektBazowy* wnuk = static_cast<TZTablica*>(tablica.Obiekt(0))->GetDane().DodajObiekt(Utworz<TArrayOfConst>());
    EXPECT_NE(Blad<ZTException>(
                  [&] { static_cast<TArrayOfConst*>(wnuk)->DodajObiekt(TWlasny<TObiektBazowy>(tablica.Obiekt(0))); }),
              u"(no error)");
    EXPECT_EQ(wnuk->DajSciezkeDoSiebie(), u"Dane[0].Dane[0]");
    // Nor can what another owner holds: two would free it.
    TKolekcjaObiektow kolekcja;
    TObiektBazowy* zKolekcji = kolekcja.Dodaj(Utworz<TAdres>());
    const auto dajTablicy = [&] { tablica.DodajObiekt(TWlasny<TObiektBazowy>(zKolekcji)); };
    const auto dajKolekcji = [&] { kolekcja.DodajObiekt(tablica.Obiekt(0), MaxInt); };
    EXPECT_NE(Blad<ZTException>(dajTablicy), u"(no error)");
    EXPECT_NE(Blad<ZTException>(dajKolekcji), u"(no error)");
    kolekcja.Dodaj(tablica.WyjmijObiekt(0));
    EXPECT_EQ(kolekcja.IleObiektow(), 2);
    tablica.Dodaj(0);
    for (const std::int32_t nr : {-1, 1, MaxInt, std::numeric_limits<std::int32_t>::min()}) {
        const std::u16string blad = u"TArrayOfConst: indeks " + TWariant(nr).JakoTekst16() + u" poza zakresem";
        EXPECT_EQ(Blad<ZTException>([&] { tablica.Ustaw(nr, 1); }), blad);
        EXPECT_EQ(Blad<ZTException>([&] { static_cast<void>(tablica.Element(nr)); }), blad);
        EXPECT_FALSE(tablica.Usun(nr) || tablica.Obiekt(nr) != nullptr || tablica.WyjmijObiekt(nr));
    }
    TArrayOfConst pelna;
    for (int i = 0; i < TArrayOfConst::MaksElementow; ++i)
        pelna.Dodaj(i);
    EXPECT_NE(Blad<ZTException>([&] { pelna.DodajObiekt(Utworz<TAdres>()); }), u"(no error)");
    EXPECT_EQ(Zapisz(pelna).substr(0, 2), "\xFF\xFF");
}

TEST_F(TablicaWartosci, WariantyITekst) {
    TArrayOfConst tablica;
    tablica.DodajWszystkie({1, true, 'x', 2.5, std::string("\xB3"), u"ż", TWaluta{15000}, INT64_MAX, u'W',
                            TArgument::WideString(u"w"), nullptr, TWariant::Tablica({TWariant(1)})});
    EXPECT_EQ(tablica.GetJakoString(), u"1; Tak; x; 2,5; ł; ż; 1,5; 9223372036854775807; W; w; ; 1 elem.");
    const TWariant wariant = tablica.GetJakoVariant();
    TArrayOfConst druga;
    druga.SetJakoVariant(wariant);
    EXPECT_TRUE(druga.GetJakoVariant() == wariant);
    druga.Dodaj(TWariant(TDataCzas{1e300}));
    EXPECT_TRUE(druga.GetJakoString().ends_with(u"; ?"));
    druga.Usun(12);
    EXPECT_EQ(druga.Element(2).Tag(), TTag::AnsiString); // a variant has no characters
    EXPECT_EQ(druga.PorownajZCecha(tablica.GetJakoString(), rlRozmLiterWazny, LocaleNiezmienny), 0);
    EXPECT_EQ(druga.PorownajZCecha(&druga, rlRozmLiterWazny, LocaleNiezmienny), 0);
    EXPECT_EQ(druga.PorownajZCecha(&tablica, rlRozmLiterWazny, LocaleNiezmienny), -1); // Char before AnsiString
    EXPECT_TRUE(tablica.SaDaneUnicode(CalyObiekt) == false);
    tablica.Dodaj(u"\u4E00");
    EXPECT_TRUE(tablica.SaDaneUnicode(CalyObiekt) && !tablica.SaDaneUnicode(5));
    EXPECT_NE(Blad<EBladAbstrakcyjny>([&] { tablica.SetJakoString(u"1; 2"); }), u"(no error)");
    tablica.SetJakoString(u"");
    EXPECT_FALSE(tablica.PoleNiepuste(CalyObiekt));
    tablica.SetJakoVariant(7);
    EXPECT_EQ(tablica.Znajdz(7), 0);
    tablica.SetJakoVariant(TWariant::Null());
    EXPECT_FALSE(tablica.PoleNiepuste(CalyObiekt));
}

TEST_F(TablicaWartosci, ZleDane) {
    TArrayOfConst tablica;
    const struct {
        const char* bajty;
        const char16_t* blad;
    } zle[] = {
        {"01 12 00", u"nieznany znacznik elementu 18"},
        {"01 FF 00", u"nieznany znacznik elementu 255"},
        {"01 07 04 'TNic' 00 00 00 00", u"TArrayOfConst: nieznana klasa TNic"},
        {"01 08 04 'TNic'", u"TArrayOfConst: nieznana klasa TNic"},
        {"01 07 0D 'TObiektBazowy' 00 00 00 00", u"TArrayOfConst: nieznana klasa TObiektBazowy"},
        {"FF FF 05 00 00 00 00", u"licznik 32767 większy niż pozostałe dane"},
        {"01 11 FF FF FF FF 41", u"licznik 1073741823 większy niż pozostałe dane"},
    };
    for (const auto& p : zle)
        EXPECT_EQ(Blad<ZTException>([&] { Wczytaj(tablica, Bajty(p.bajty)); }), p.blad) << p.bajty;

    std::string duzo = "\xFF\xFF";
    for (int i = 0; i < TArrayOfConst::MaksElementow; ++i)
        duzo += Bajty("01 01");
    TOpcjeOdczytu opcje;
    opcje.limity.pamiec = 1'000'000;
    EXPECT_EQ(Blad<ZTException>([&] {
                  TZTReadOnlyRawByteStream strumien(duzo);
                  tablica.WczytajZeStrumienia(strumien, opcje);
              }),
              u"przekroczono limit odczytu: pamięć w bajtach (1000000)");

    const struct {
        const char* wiersz;
        const char16_t* blad;
    } zlyTekst[] = {
        {"Nic=1", u"Spodziewany identyfikator w linii 2 na pozycji 1"},
        {"Integer 1", u"Spodziewany znak 3D w linii 2 na pozycji 9"},
        {"Integer=2147483648", u"za duża wartość: 2147483648 w linii 2 na pozycji 9"},
        {"Integer=x", u"Spodziewana liczba całkowita w linii 2 na pozycji 9"},
        {"Pointer=1", u"za duża wartość: 1 w linii 2 na pozycji 9"},
        {"Object=5", u"za duża wartość: 5 w linii 2 na pozycji 8"},
        {"Char='ab'", u"Nieprawidłowa stała tekstowa w linii 2 na pozycji 6"},
        {"WideChar=\"\"", u"Nieprawidłowa stała tekstowa w linii 2 na pozycji 10"},
        {"AnsiString=7", u"Spodziewany tekst w linii 2 na pozycji 12"},
        {"Extended='12x'", u"Spodziewana liczba ułamkowa w linii 2 na pozycji 10"},
        {"Class=TNic", u"TArrayOfConst: nieznana klasa TNic w linii 2 na pozycji 7"},
        {"object TNic end", u"TArrayOfConst: nieznana klasa TNic w linii 2 na pozycji 8"},
        {"object TAdres Numer=1", u"Spodziewany identyfikator w linii 3 na pozycji 4"},
        {"Variant=7", u"Spodziewany identyfikator w linii 2 na pozycji 9"},
        {"Variant=Nic 7", u"Spodziewany identyfikator w linii 2 na pozycji 9"},
        {"Variant=Byte 256", u"za duża wartość: 256 w linii 2 na pozycji 14"},
        {"Variant=UInt64 -1", u"Spodziewana liczba całkowita w linii 2 na pozycji 16"},
        {"Variant=Single 1e300 x", u"Spodziewana liczba ułamkowa w linii 2 na pozycji 22"},
        {"Variant=(Null,Null)", u"Spodziewany znak 29 w linii 2 na pozycji 14"},
    };
    for (const auto& p : zlyTekst)
        EXPECT_EQ(Blad<EZTParserError>([&] { ZTekstu(tablica, Dokument(p.wiersz)); }), p.blad) << p.wiersz;
    ZTekstu(tablica, Dokument("extended=12,5 EXTENDED='0.5' Extended=7 boolean=1 unicodestring='a'#66+'c'"));
    EXPECT_EQ(tablica.GetJakoString(), u"12,5; 0,5; 7; Tak; aBc");
}

// Arrays in arrays are levels like lists in lists, and 256 of them fit a small stack.
TEST_F(TablicaWartosci, ZagniezdzenieMaGranice) {
    const auto zagniezdzona = [](int poziomow) {
        TWlasny<TArrayOfConst> tablica = Utworz<TArrayOfConst>();
        for (int i = 1; i < poziomow; ++i) {
            TWlasny<TArrayOfConst> nadrzedna = Utworz<TArrayOfConst>();
            nadrzedna->DodajObiekt(std::move(tablica));
            tablica = std::move(nadrzedna);
        }
        return tablica;
    };
    const auto zaGleboko = [](const std::function<void()>& dzialanie) {
        return Blad<ZTException>(dzialanie).find(u"zagnieżdżenie obiektów głębsze niż 256") != std::u16string::npos;
    };
    systemTestowy::WMalymWatku([&] {
        const auto dobra = zagniezdzona(256);
        const auto druga = Utworz<TArrayOfConst>();
        Wczytaj(*druga, Zapisz(*dobra));
        ZTekstu(*druga, Tekst(*dobra));
        EXPECT_EQ(druga->Porownaj(*dobra), 0);
        EXPECT_EQ(Zapisz(*dobra->KlonujObiekt(false)), Zapisz(*dobra));
        const auto zla = zagniezdzona(257);
        EXPECT_TRUE(zaGleboko([&] { Zapisz(*zla); }));
        EXPECT_TRUE(zaGleboko([&] { Tekst(*zla); }));
        EXPECT_TRUE(zaGleboko([&] { druga->KopiujDane(*zla); }));
        std::string bajty;
        for (int i = 0; i < 300; ++i)
            bajty += Bajty("01 07 0D 'TArrayOfConst'");
        EXPECT_TRUE(zaGleboko([&] { Wczytaj(*druga, bajty + '\0'); }));
        EXPECT_TRUE(zaGleboko([&] { ZTekstu(*druga, Dokument("Variant=" + std::string(100000, '('))); }));
        TWariant wariant;
        for (int i = 0; i < 256; ++i)
            wariant = TWariant::Tablica({wariant});
        druga->UstawWszystkie({wariant});
        EXPECT_TRUE(zaGleboko([&] { Tekst(*druga); }));
        for (std::size_t i = 254; i < 257; ++i) { // what is read can be written
            const std::string dokument = Dokument("Variant=" + std::string(i, '(') + std::string(i, ')'));
            EXPECT_EQ(zaGleboko([&] { ZTekstu(*druga, dokument); }), i == 256);
            EXPECT_EQ(Tekst(*druga), i == 256 ? Dokument("").erase(20, 2) : dokument);
        }
    });
}

// An element whose end runs a hook of the test's.
class TZHakiem : public TAdres {
    ZTOK_OBIEKT(TZHakiem, TAdres)
    void ZerujDane() override {
        TAdres::ZerujDane();
        if (const auto teraz = std::exchange(hak, nullptr))
            teraz();
    }
    inline static std::function<void()> hak;
};

TEST_F(TablicaWartosci, ElementKtoryGinieMozeWszystko) {
    struct TScena {
        TArrayOfConst tablica, zrodlo;
    };
    void (*const skutki[])(TScena&) = {[](TScena& s) { s.tablica.ZerujDane(); },
                                       [](TScena& s) { s.tablica.Usun(0); },
                                       [](TScena& s) { s.zrodlo.ZerujDane(); },
                                       [](TScena& s) { s.zrodlo.Usun(0); },
                                       [](TScena& s) {
                                           for (int i = 0; i < 20; ++i)
                                               s.tablica.DodajObiekt(Utworz<TAdres>(), 0);
                                       },
                                       [](TScena&) { ZTErrorFmt(u"hak", {}); }};
    void (*const dzialania[])(TScena&) = {[](TScena& s) { s.tablica.Usun(4); },
                                          [](TScena& s) { s.tablica.Ustaw(4, 1); },
                                          [](TScena& s) { s.tablica.UstawWszystkie(s.zrodlo.Elementy()); },
                                          [](TScena& s) { s.tablica.KopiujDane(s.zrodlo); },
                                          [](TScena& s) { Wczytaj(s.tablica, Bajty("01 01 01")); },
                                          [](TScena& s) { s.tablica.ZerujDane(); }};
    const std::int64_t zajete = PulaZajete();
    for (std::size_t i = 0; i < std::size(skutki); ++i)
        for (const auto dzialanie : dzialania) {
            SCOPED_TRACE(testing::Message() << i);
            TScena scena;
            TArrayOfConst& tablica = scena.tablica;
            for (int nr = 0; nr < 6; ++nr) {
                tablica.DodajObiekt(Utworz<TZHakiem>());
                tablica.Dodaj(nr);
                scena.zrodlo.DodajObiekt(Utworz<TAdres>());
            }
            TZHakiem::hak = [&] { skutki[i](scena); };
            const std::u16string blad = Blad([&] { dzialanie(scena); });
            EXPECT_EQ(blad.find(u"hak") != blad.npos, i == 5);
            EXPECT_EQ(TZHakiem::hak, nullptr); // it ran
            for (std::int32_t nr = 0; nr < tablica.Ile(); ++nr)
                EXPECT_TRUE(tablica.Obiekt(nr) == nullptr || tablica.Obiekt(nr)->Rodzic() == &tablica);
            EXPECT_NE(Zapisz(tablica), "");
        }
    EXPECT_EQ(PulaZajete(), zajete);
}

} // namespace
