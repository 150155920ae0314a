#include "tests/Testy.h"

#include "LosoweDrzewo.h"
#include "platforma/SystemTestowy.h"
#include "ztok/platform/Pula.h"

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

std::vector<testy::TWierszTabeli> Wiersze(const std::string& rodzaj) {
    std::vector<testy::TWierszTabeli> wiersze = testy::WczytajTabele("tablica.tsv");
    std::erase_if(wiersze, [&](const auto& w) { return w[0] != rodzaj; });
    return wiersze;
}

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
    static const int miejsca[2] = {};
    const std::map<std::string, TArgument> swoje = {
        {"tenth:", 0.1L},
        {"tenth100:", 0.1L * 100},
        {"place0:", TArgument::Pointer(&miejsca[0])},
        {"place1:", TArgument::Pointer(&miejsca[1])},
        {"stranger:", TArgument(&obcy)},
        {"address5:", TArgument(&adres)},
        {"address6:", TArgument(&dalszy)},
        {"addressClass:", TAdres::KlasaStatyczna()},
        {"arrayClass:", TZTablica::KlasaStatyczna()},
        {"counted:", liczony.get()},
    };
    const auto argument = [&](const std::string& opis) {
        const auto swoj = swoje.find(opis);
        return swoj != swoje.end() ? swoj->second : testy::Argument(opis);
    };
    TArrayOfConst wszystkie;
    std::string bajtyWszystkich;
    for (const auto& w : Wiersze("value")) {
        SCOPED_TRACE(w.numer);
        const TArgument wartosc = argument(w[1]);
        const std::string& tekst = w[3];
        const bool wraca = w[5] == "1"; // else as null of the kind, or as what equals nothing
        TArrayOfConst tablica, wieksza, czytana;
        tablica.Dodaj(wartosc);
        wieksza.Dodaj(argument(w[4]));
        wszystkie.Dodaj(wartosc);
        bajtyWszystkich += Bajty(w[2]);
        const std::string bajty = Zapisz(tablica);
        EXPECT_EQ(Szesnastkowo(bajty), "01 " + Szesnastkowo(Bajty(w[2])));
        EXPECT_EQ(Tekst(tablica), Dokument(tekst));
        const bool bezUnicode = w.polaUtf8.size() > 6; // a reader without Unicode gets another form
        TZapisywaczDanych d2007;
        d2007.DaneDlaD2007 = true;
        EXPECT_EQ(Szesnastkowo(Zapisz(tablica, &d2007)), "01 " + Szesnastkowo(Bajty(w[bezUnicode ? 6 : 2])));
        EXPECT_EQ(Tekst(tablica, [](TZapisywaczTekstu& z) { z.DaneDlaD2007 = true; }), Dokument(w[bezUnicode ? 7 : 3]));
        for (const bool tekstem : {false, true}) {
            if (tekstem)
                ZTekstu(czytana, Dokument(tekst));
            else
                EXPECT_EQ(Wczytaj(czytana, bajty), static_cast<std::int64_t>(bajty.size()));
            ASSERT_EQ(czytana.Ile(), 1);
            EXPECT_EQ(czytana.Element(0).Tag(), wartosc.Tag());
            EXPECT_EQ(czytana.Znajdz(wartosc) == 0, wraca);
            EXPECT_EQ(czytana.Porownaj(tablica), w[5] == "0" ? -1 : 0);
            // To the bit: a real number that equals may still be another one. A class of a raw object is not kept.
            if (w[5] != "0")
                EXPECT_EQ(Szesnastkowo(Zapisz(czytana)), Szesnastkowo(bajty));
            else
                EXPECT_EQ(czytana.Znajdz(czytana.Element(0)), 0);
        }
        TArrayOfConst kopia;
        kopia.Dodaj(u"before"); // gives way
        kopia.Dodaj(1);
        kopia.KopiujDane(tablica);
        EXPECT_EQ(kopia.PorownajZObiektem(tablica, rlRozmLiterWazny), 0);
        EXPECT_EQ(Zapisz(kopia), bajty);
        const bool rosnie = w[1] != w[4];
        EXPECT_EQ(tablica.Porownaj(wieksza), rosnie ? -1 : 0);
        EXPECT_EQ(wieksza.Porownaj(tablica), rosnie ? 1 : 0);
        wieksza.Dodaj(0);
        EXPECT_EQ(tablica.Porownaj(wieksza), -1); // the count first
    }
    EXPECT_EQ(Szesnastkowo(Zapisz(wszystkie)),
              Szesnastkowo(std::string(1, static_cast<char>(wszystkie.Ile())) + bajtyWszystkich));
    EXPECT_EQ(wszystkie.IleKlas(), 2);

    // A byte that is neither 0 nor 1 is true, and stays what it was.
    TArrayOfConst tablica;
    Wczytaj(tablica, Bajty("01 01 05"));
    EXPECT_EQ(tablica.Znajdz(true), 0);
    EXPECT_EQ(Szesnastkowo(Zapisz(tablica)), "01 01 05");
}

TEST_F(TablicaWartosci, WariantyMajaTylkoPostacTekstowa) {
    TArrayOfConst poprzednia;
    for (const auto& w : Wiersze("variant")) { // in ascending order: by type, then by value
        SCOPED_TRACE(w.numer);
        TArrayOfConst czytana, tablica;
        ZTekstu(czytana, Dokument("Variant=" + w[3]));
        EXPECT_EQ(Tekst(czytana), Dokument("Variant=" + w[3]));
        const TWariant wariant = w[1].empty() ? czytana.Element(0).Wariant() : testy::Wariant(w[1]);
        EXPECT_EQ(czytana.Element(0).Wariant(), wariant);
        tablica.Dodaj(wariant);
        EXPECT_EQ(czytana.Porownaj(tablica), 0);
        EXPECT_EQ(tablica.Znajdz(wariant), 0);
        EXPECT_EQ(poprzednia.Porownaj(tablica), -1);
        EXPECT_EQ(tablica.Porownaj(poprzednia), 1);
        EXPECT_EQ(Blad<ZTException>([&] { Zapisz(tablica); }), u"Brak implementacji ZapiszVariantWStrumieniu");
        poprzednia.UstawWszystkie(tablica.Elementy());
    }
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
    // Elements, references to the counted object; every object's parent is the array.
    const auto stan = [&] {
        for (std::int32_t nr = 0; nr < tablica.Ile(); ++nr)
            EXPECT_TRUE(tablica.Obiekt(nr) == nullptr || tablica.Obiekt(nr)->Rodzic() == &tablica) << nr;
        return std::pair(tablica.Ile(), licznik->LiczbaReferencji());
    };
    tablica.DodajWszystkie({1, &adres, TArgument(obcy.get()), liczony.get()});
    EXPECT_EQ(stan(), std::pair(4, 2));
    EXPECT_NE(tablica.Obiekt(1), &adres);
    EXPECT_EQ(tablica.Znajdz(&adres), 1);
    EXPECT_EQ(tablica.Znajdz(&adres, 2), -1);
    EXPECT_EQ(tablica.Obiekt(1)->DajSciezkeDoSiebie(), u"Dane[1]");
    EXPECT_EQ(wlasciciel.GetTekstowoWgSciezki(u"Dane[1].Ulica"), u"Prosta");
    EXPECT_FALSE(wlasciciel.SciezkaIstnieje(u"Dane[0].Ulica"));
    const TWlasny<TObiektBazowy> kopia = wlasciciel.KlonujObiekt(false);
    EXPECT_EQ(stan(), std::pair(4, 3));
    obcy.Ustaw(); // never looked at again
    EXPECT_EQ(tablica.GetJakoString(), u"1; Adres: Ulica=Prosta; TZTMemoryStream; ");
    EXPECT_EQ(tablica.OpisTekstowy(), u"4 elem.");
    EXPECT_EQ(kopia->Porownaj(wlasciciel), 0);
    EXPECT_EQ(Zapisz(*kopia), Zapisz(wlasciciel));

    TObiektBazowy* oddany = tablica.DodajObiekt(Utworz<TAdres>(), 0);
    EXPECT_EQ(tablica.Obiekt(0), oddany);
    tablica.DodajWszystkie(tablica.Elementy()); // of its own, while it grows
    EXPECT_EQ(stan(), std::pair(10, 4));
    tablica.Ustaw(4, tablica.Element(0));
    EXPECT_EQ(stan(), std::pair(10, 3));
    EXPECT_NE(tablica.Obiekt(4), oddany);
    {
        TWlasny<TObiektBazowy> wyjety = tablica.WyjmijObiekt(0);
        EXPECT_TRUE(wyjety.get() == oddany && wyjety->Rodzic() == nullptr && !tablica.WyjmijObiekt(0));
        EXPECT_EQ(stan(), std::pair(9, 3));
    }
    tablica.UstawWszystkie(tablica.Elementy().subspan(1, 2)); // the copied address, and what it stood beside
    EXPECT_EQ(stan(), std::pair(2, 2));
    EXPECT_FALSE(tablica.Usun(2));
    EXPECT_TRUE(tablica.Usun(0) && tablica.Usun(0));
    EXPECT_EQ(Szesnastkowo(Zapisz(wlasciciel)), "01 02 00"); // set to nothing is not unset
    EXPECT_EQ(Tekst(wlasciciel), "object TZTablica\r\nobject Dane\r\nend\r\nend");
    wlasciciel.UstawNiepuste(TZTablica::nrDane, false);
    EXPECT_EQ(Szesnastkowo(Zapisz(wlasciciel)), "00");
    EXPECT_EQ(tablica.DodajObiekt(nullptr), nullptr);
    tablica.DodajWszystkie({});
    EXPECT_EQ(Szesnastkowo(Zapisz(wlasciciel)), "01 02 01 07 00 00 00 00 00");
    tablica.Wstaw(-5, 1); // before the first
    tablica.Wstaw(1, 2);
    tablica.Wstaw(99, 3);
    EXPECT_EQ(tablica.GetJakoString(), u"1; 2; ; 3");
    tablica.UstawNiepuste(2, false);
    tablica.UstawNiepuste(CalyObiekt, true);
    EXPECT_EQ(tablica.GetJakoString(), u"1; 2; 3");
    tablica.UstawWszystkie({});
    EXPECT_TRUE(wlasciciel.PoleNiepuste(TZTablica::nrDane));

    // A part of the array's own tree is copied, but cannot be handed over.
    tablica.Dodaj(&wlasciciel);
    TObiektBazowy* wnuk = static_cast<TZTablica*>(tablica.Obiekt(0))->GetDane().DodajObiekt(Utworz<TArrayOfConst>());
    EXPECT_EQ(Blad<ZTException>(
                  [&] { static_cast<TArrayOfConst*>(wnuk)->DodajObiekt(TWlasny<TObiektBazowy>(tablica.Obiekt(0))); }),
              u"TArrayOfConst: obiekt klasy TZTablica nie może zawierać samego siebie");
    EXPECT_EQ(wnuk->DajSciezkeDoSiebie(), u"Dane[0].Dane[0]");
    // Nor can what another owner holds: two would free it.
    TKolekcjaObiektow kolekcja;
    TObiektBazowy* zKolekcji = kolekcja.Dodaj(Utworz<TAdres>());
    const auto dajTablicy = [&] { tablica.DodajObiekt(TWlasny<TObiektBazowy>(zKolekcji)); };
    const auto dajKolekcji = [&] { kolekcja.DodajObiekt(tablica.Obiekt(0), MaxInt); };
    EXPECT_EQ(Blad<ZTException>(dajTablicy), u"TArrayOfConst: obiekt klasy TAdres ma już właściciela : [0]");
    EXPECT_EQ(Blad<ZTException>(dajKolekcji),
              u"TKolekcjaObiektow: obiekt klasy TZTablica ma już właściciela : Dane[0]");
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
    EXPECT_EQ(Blad<ZTException>([&] { pelna.DodajObiekt(Utworz<TAdres>()); }),
              u"TArrayOfConst: niedozwolona liczba elementów 32768");
    EXPECT_EQ(Zapisz(pelna).substr(0, 2), "\xFF\xFF");
}

TEST_F(TablicaWartosci, WariantyITekst) {
    TArrayOfConst tablica;
    tablica.DodajWszystkie({1, true, 'x', 2.5, std::string("\xB3"), u"ż", TWaluta{15000}, INT64_MAX, u'W',
                            TArgument::WideString(u"w"), nullptr, TWariant::Tablica({TWariant(1)})});
    EXPECT_EQ(tablica.GetJakoString(), u"1; Tak; x; 2,5; ł; ż; 1,5; 9223372036854775807; W; w; ; 1 elem.");
    EXPECT_TRUE(tablica.PoleNiepuste(CalyObiekt));
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
    EXPECT_EQ(Blad<EBladAbstrakcyjny>([&] { tablica.SetJakoString(u"1; 2"); }),
              u"klasa TArrayOfConst nie ma operacji SetJakoString");
    tablica.SetJakoString(u"");
    EXPECT_FALSE(tablica.PoleNiepuste(CalyObiekt));
    tablica.SetJakoVariant(7);
    EXPECT_EQ(tablica.Znajdz(7), 0);
    tablica.SetJakoVariant(TWariant::Null());
    EXPECT_FALSE(tablica.PoleNiepuste(CalyObiekt));
}

TEST_F(TablicaWartosci, OdczytWgTabeli) {
    TArrayOfConst tablica;
    for (const char* rodzaj : {"bytes", "text"})
        for (const auto& w : Wiersze(rodzaj)) {
            SCOPED_TRACE(std::to_string(w.numer) + ' ' + w[1]);
            std::u16string wynik = u"!" + Blad([&] {
                                       if (w[0] == "bytes")
                                           Wczytaj(tablica, Bajty(w[1]));
                                       else
                                           ZTekstu(tablica, Dokument(w[1]));
                                   });
            wynik = wynik == u"!(no error)" ? tablica.GetJakoString() : wynik;
            EXPECT_EQ(Utf8ZUtf16(wynik), w[2]);
        }
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
        std::string bajty;
        for (int i = 0; i < 300; ++i)
            bajty += Bajty("01 07 0D 'TArrayOfConst'");
        TWariant wariant;
        for (int i = 0; i < 256; ++i)
            wariant = TWariant::Tablica({wariant});
        const std::function<void()> zaGlebokie[] = {
            [&] { Zapisz(*zla); },
            [&] { Tekst(*zla); },
            [&] { druga->KopiujDane(*zla); },
            [&] { Wczytaj(*druga, bajty + '\0'); },
            [&] { ZTekstu(*druga, Dokument("Variant=" + std::string(100000, '('))); },
            [&] {
                druga->UstawWszystkie({wariant});
                Tekst(*druga);
            }};
        for (const auto& dzialanie : zaGlebokie)
            EXPECT_TRUE(zaGleboko(dzialanie)) << &dzialanie - zaGlebokie;
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
