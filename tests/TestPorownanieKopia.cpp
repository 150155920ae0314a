// Comparer and copier: records, cycles, re-pointing, failures in the middle, copies between classes.
#include <gtest/gtest.h>

#include <random>

#include "tests/Bledy.h"
#include "tests/LosoweDrzewo.h"
#include "tests/Probki.h"
#include "tests/platforma/Przydzialy.h"

namespace {

using namespace ztok;
using probki::TAdres;
using probki::TWszystko;
using testy::Blad;
using testy::Zglasza;

// Pointers and a list of objects in every order: the list is copied after what points into it, and before.
class TSplot : public TObiekt {
    ZTOK_OBIEKT(TSplot, TObiekt, (0, Przed, Obiekt<TListaRefObiektow>), (1, Ref, Ref<TAdres>),
                (2, Adresy, Obiekt<probki::TListaAdresow>), (3, Po, Obiekt<TListaRefObiektow>),
                (4, Wsk, Obiekt<TListaWskObiektow>), (5, Tresc, Integer))
};
class TSplotTekstowy : public TObiekt { // the same but for field 5
    ZTOK_OBIEKT(TSplotTekstowy, TObiekt, (0, Przed, Obiekt<TListaRefObiektow>), (1, Ref, Ref<TAdres>),
                (2, Adresy, Obiekt<probki::TListaAdresow>), (3, Po, Obiekt<TListaRefObiektow>),
                (4, Wsk, Obiekt<TListaWskObiektow>), (5, Tresc, String))
};
class TPien : public TObiekt {
    ZTOK_OBIEKT(TPien, TObiekt, (0, A, Integer), (1, B, String), (4, Gniazdo, Obiekt<TAdres>))
};
class TGalaz : public TPien {
    ZTOK_OBIEKT(TGalaz, TPien, (5, C, Integer), (6, D, String))
};
class TKonar : public TPien {
    ZTOK_OBIEKT(TKonar, TPien, (5, C, String), (7, E, Integer))
};
class TChwilowa : public TObiekt {
  public:
    [[nodiscard]] bool Nigdy() const { return false; }
    ZTOK_OBIEKT(TChwilowa, TObiekt, (0, A, Integer), (1, B, ZapisGdy<ztok::rodzaj::Integer, &TChwilowa::Nigdy>))
};

TPorownywaczDanych Porownywacz(TRodzajPorownPol rodzaj = rpWszystkiePola, TTrybPorownRef tryb = tprRefJakoWskazn,
                               const TObiektBazowy* a = nullptr, const TObiektBazowy* b = nullptr) {
    return {a, b, rodzaj, rlRozmLiterWazny, LocaleWin1250, tryb};
}

TEST(Porownanie, ZapisParJakPrzegladOdPoczatku) {
    std::vector<TWlasny<TPoleByte>> pola;
    for (int i = 0; i < 200; ++i)
        pola.push_back(Utworz<TPoleByte>());
    std::mt19937 los(11);
    for (const std::size_t zakres : {6U, 60U, 200U}) {
        TPorownywaczDanych p = Porownywacz();
        std::vector<std::pair<const TPole*, const TPole*>> model;
        for (int krok = 0; krok < 600; ++krok) {
            const TPole& a = *pola[los() % zakres];
            const TPole& b = *pola[los() % zakres];
            std::size_t gdzie = 0; // either side suffices
            while (gdzie < model.size() && model[gdzie].first != &a && model[gdzie].second != &b)
                ++gdzie;
            std::size_t znalezione = 999;
            EXPECT_EQ(p.JestPara(a, b, znalezione), gdzie < model.size());
            EXPECT_EQ(znalezione, gdzie);
            EXPECT_EQ(p.SaPorownywane(a, b), gdzie < model.size());
            if (los() % 3 == 0) {
                p.Porownuje(a, b);
                if (gdzie == model.size())
                    model.emplace_back(&a, &b);
            }
            if (los() % 200 == 0) {
                p.ZerujListy();
                model.clear();
            }
        }
    }
    TKopierDanych kopier; // the copy of the first occurrence; fields are no objects and have none
    std::vector<TWlasny<TAdres>> adresy;
    for (int i = 0; i < 100; ++i)
        adresy.push_back(Utworz<TAdres>());
    for (std::size_t i = 0; i < 99; ++i)
        kopier.KopiowanoDane(*adresy[i / 2], *adresy[i + 1]);
    kopier.KopiowanoDane(*pola[0], *pola[1]);
    TPole* kopia = nullptr;
    for (std::size_t i = 0; i < 49; ++i) {
        EXPECT_TRUE(kopier.JestKopia(adresy[i].get(), kopia));
        EXPECT_EQ(kopia, adresy[2 * i + 1].get());
    }
    EXPECT_FALSE(kopier.JestKopia(adresy[90].get(), kopia));
    EXPECT_FALSE(kopier.JestKopia(pola[0].get(), kopia));
    kopier.ZerujListyRef();
    EXPECT_FALSE(kopier.JestKopia(adresy[0].get(), kopia));
}

TEST(Porownanie, CykleKonczaSieRownoscia) {
    const auto a = Utworz<TWszystko>();
    const auto b = Utworz<TWszystko>();
    for (TWszystko* o : {a.get(), b.get()}) {
        o->GetWskazywane().DodajObiekt(o == a.get() ? b.get() : a.get(), 0);
        o->SetWskaznik(o == a.get() ? b.get() : a.get());
        o->GetPodrzedne().Dopisz().SetWskaznik(o);
    }
    EXPECT_EQ(a->Porownaj(*b), 0);
    b->SetI(1);
    EXPECT_EQ(a->Porownaj(*b), -1);
    EXPECT_EQ(b->Porownaj(*a), 1);
    // Many ways to the same objects cost no more than the objects.
    std::vector<TWlasny<TWszystko>> warstwy[2];
    for (auto& warstwa : warstwy)
        for (int i = 0; i < 60; ++i) {
            warstwa.push_back(Utworz<TWszystko>());
            if (i > 0) {
                warstwa.back()->SetWskaznik(warstwa[warstwa.size() - 2].get());
                warstwa.back()->GetPodrzedne().Dopisz().SetWskaznik(warstwa[warstwa.size() - 2].get());
            }
        }
    EXPECT_EQ(warstwy[0].back()->Porownaj(*warstwy[1].back()), 0);
}

TEST(Porownanie, BrakRownySieWartosciDomyslnej) {
    const auto a = Utworz<TWszystko>();
    const auto b = Utworz<TWszystko>();
    const auto adres = Utworz<TAdres>();
    struct {
        void (*ustaw)(TWszystko&, TAdres*);
        int wynik;
    } const tabela[] = {
        {[](TWszystko&, TAdres*) {}, 0},
        {[](TWszystko& o, TAdres*) { o.SetB(0); }, 0},
        {[](TWszystko& o, TAdres*) { o.SetTak(false); }, 0},
        {[](TWszystko& o, TAdres*) { o.SetD(-0.0); }, 0},
        {[](TWszystko& o, TAdres*) { o.SetSzeroki(u""); }, 0},
        {[](TWszystko& o, TAdres*) { o.SetReferencja(nullptr); }, 0}, // a stream would not hold it either
        {[](TWszystko& o, TAdres*) { static_cast<void>(o.GetAdresy()); }, 0},
        {[](TWszystko& o, TAdres*) { static_cast<void>(o.GetAdres()); }, 0},
        {[](TWszystko& o, TAdres*) { o.SetI(-5); }, 1}, // whatever the value: the side that has it is greater
        {[](TWszystko& o, TAdres*) { o.SetNazwa(u"x"); }, 1},
        {[](TWszystko& o, TAdres* adr) { o.SetReferencja(adr); }, 1},
        {[](TWszystko& o, TAdres*) { o.GetAdresy().Dopisz(); }, 1},
        {[](TWszystko& o, TAdres*) { o.GetAdres().SetNumer(0); }, 1}, // a nested object that holds something
        {[](TWszystko& o, TAdres* adr) { o.GetPowiazane().DodajObiekt(adr, 0); }, 1},
    };
    int nr = 0;
    for (const auto& t : tabela) {
        a->ZerujDane();
        b->ZerujDane();
        t.ustaw(*a, adres.get());
        EXPECT_EQ(a->Porownaj(*b), t.wynik) << nr;
        EXPECT_EQ(b->Porownaj(*a), -t.wynik) << nr;
        b->SetI(-9); // field 3, before or after the one written
        const int zTrojka = nr == 8 ? 1 : t.wynik == 1 || t.wynik == 0 ? -1 : 0;
        EXPECT_EQ(a->Porownaj(*b), zTrojka) << nr;
        ++nr;
    }
    a->ZerujDane();
    b->ZerujDane();
    a->SetNazwa(u"Ala");
    b->SetNazwa(u"ALA");
    EXPECT_EQ(a->Porownaj(*b), 0); // letter case does not matter without a comparer
    TPorownywaczDanych wazny = Porownywacz();
    EXPECT_EQ(a->Porownaj(*b, &wazny), 1);
    EXPECT_TRUE(Zglasza<EBladRzutowania>([&] { static_cast<void>(a->Porownaj(a->GetAdresy())); }));
    EXPECT_TRUE(Zglasza<EBladRzutowania>([&] { static_cast<void>(a->GetAdresy().Porownaj(*a)); }));
    EXPECT_TRUE(Zglasza<EBladRzutowania>([&] { static_cast<void>(a->GetPowiazane().Porownaj(*a)); }));

    // Listed fields, and all but the listed.
    a->SetI(1);
    b->SetI(2);
    const TArgument pola[] = {u"nazwa", 3};
    EXPECT_EQ(a->PorownajWgPol(*b, {pola, 1}, rlRozmLiterNiewazny), 0);
    EXPECT_EQ(a->PorownajWgPol(*b, {pola, 1}, rlRozmLiterWazny), 1);
    EXPECT_EQ(a->PorownajWgPol(*b, pola, rlRozmLiterNiewazny), -1);
    EXPECT_EQ(a->PorownajWgPol(*b, {}, rlRozmLiterWazny), 0);
    EXPECT_EQ(a->PorownajOproczPol(*b, pola, rlRozmLiterWazny), 0);
    EXPECT_EQ(a->PorownajOproczPol(*b, {pola, 1}, rlRozmLiterWazny), -1);
    const TArgument zle = 1.5;
    EXPECT_EQ(Blad<ZTException>([&] {
                  static_cast<void>(a->PorownajWgPol(*b, {&zle, 1}, rlRozmLiterWazny));
              }),
              u"PWP: Błędny typ indeksu");
}

TEST(Porownanie, OpcjePorownywacza) {
    const auto a = Utworz<TChwilowa>();
    const auto b = Utworz<TChwilowa>();
    a->SetB(5);
    TPorownywaczDanych wszystkie = Porownywacz();
    TPorownywaczDanych bezChwilowych = Porownywacz(rpBezChwilowych);
    EXPECT_EQ(a->Porownaj(*b, &wszystkie), 1);
    EXPECT_EQ(a->Porownaj(*b, &bezChwilowych), 0);
    EXPECT_EQ(a->PorownajOproczPol(*b, {}, rlRozmLiterWazny, LocaleWin1250, &bezChwilowych), 0);
    // Targets by their place, or by what they hold.
    TWszystko ta;
    TWszystko tb;
    for (TWszystko* o : {&ta, &tb}) {
        for (int i = 0; i < 3; ++i)
            o->GetAdresy().Dopisz();
        o->GetAdresy()[1]->SetNumer(o == &ta ? 1 : 0);
    }
    const int tabela[][4] = {{0, 0, 0, 0}, {0, 2, -1, 0}, {2, 0, 1, 0}, {1, 1, 0, 1}, {1, 2, -1, 1}};
    for (const auto& [naCo, naCoDrugi, jakoSciezki, jakoWskazniki] : tabela) {
        ta.SetReferencja(ta.GetAdresy()[naCo]);
        tb.SetReferencja(tb.GetAdresy()[naCoDrugi]);
        for (TWszystko* o : {&ta, &tb}) {
            o->GetPowiazane().SkrocListe(0, true);
            o->GetPowiazane().DodajObiekt(o->GetReferencja(), 0);
        }
        for (const int nr : {TWszystko::nrPowiazane, TWszystko::nrReferencja}) {
            TPorownywaczDanych sciezki = Porownywacz(rpWszystkiePola, tprRefJakoSciezki, &ta, &tb);
            TPorownywaczDanych wskazniki = Porownywacz();
            EXPECT_EQ(ta.PorownajPole(nr, tb, sciezki), jakoSciezki) << naCo << naCoDrugi << nr;
            EXPECT_EQ(ta.PorownajPole(nr, tb, wskazniki), jakoWskazniki) << naCo << naCoDrugi << nr;
        }
    }
}

// Every registered pointer in the tree and its target know of each other, and nobody else is recorded.
void SprawdzRejestracje(TSplot& o, const std::vector<TAdres*>& adresy) {
    for (TAdres* adres : adresy) {
        EXPECT_EQ(adres->MaRefOd(&o.GetPrzed()), o.GetPrzed().ZnajdzObiekt(adres) >= 0);
        EXPECT_EQ(adres->MaRefOd(&o.GetPo()), o.GetPo().ZnajdzObiekt(adres) >= 0);
        EXPECT_EQ(adres->MaRefOd(o.Pole(TSplot::nrRef)), o.GetRef() == adres && adres != nullptr);
        EXPECT_FALSE(adres->MaRefOd(&o.GetWsk()));
    }
}

std::vector<TAdres*> Adresy(TSplot& o) {
    std::vector<TAdres*> wynik;
    for (TAdres* adres : o.GetAdresy())
        wynik.push_back(adres);
    return wynik;
}

// Own addresses in every pointer, some twice, and an outside one.
void Splec(TSplot& o, int ile, TAdres* obcy) {
    for (int i = 0; i < ile; ++i)
        o.GetAdresy().Dopisz().SetNumer(i);
    for (TListaWskObiektow* lista :
         {static_cast<TListaWskObiektow*>(&o.GetPrzed()), static_cast<TListaWskObiektow*>(&o.GetPo()), &o.GetWsk()}) {
        lista->DodajObiekt(obcy, MaxInt);
        for (int i = 0; i < 2 * ile; ++i)
            lista->DodajObiekt(o.GetAdresy()[i % ile], MaxInt);
    }
    o.SetRef(o.GetAdresy()[ile - 1]);
}

TEST(Kopia, WskaznikiPrzechodzaNaKopie) {
    const auto obcy = Utworz<TAdres>();
    const auto zrodlo = Utworz<TSplot>();
    Splec(*zrodlo, 3, obcy.get());
    for (const int ileByloWCelu : {0, 1, 5}) {
        const auto cel = Utworz<TSplot>();
        if (ileByloWCelu > 0)
            Splec(*cel, ileByloWCelu, obcy.get());
        for (int raz = 0; raz < 2; ++raz) {
            cel->KopiujDane(*zrodlo);
            for (TListaWskObiektow* lista : {static_cast<TListaWskObiektow*>(&cel->GetPrzed()),
                                             static_cast<TListaWskObiektow*>(&cel->GetPo()), &cel->GetWsk()}) {
                ASSERT_EQ(lista->IleObiektow(), 7);
                EXPECT_EQ(lista->Obiekty(0), obcy.get()); // outside the tree: shared
                for (int i = 1; i < 7; ++i)
                    EXPECT_EQ(lista->Obiekty(i), cel->GetAdresy()[(i - 1) % 3]);
            }
            EXPECT_EQ(cel->GetRef(), cel->GetAdresy()[2]);
            for (TSplot* o : {cel.get(), zrodlo.get()}) {
                SprawdzRejestracje(*o, Adresy(*cel));
                SprawdzRejestracje(*o, Adresy(*zrodlo));
                SprawdzRejestracje(*o, {obcy.get()});
            }
            EXPECT_EQ(cel->Porownaj(*zrodlo), 0);
        }
    }
}

TEST(Kopia, CelKtoryGinieWTrakcieKopiiWypisujeSie) {
    // The source points at elements of the target's list, and the copy shortens that list after the pointers are there.
    const auto zrodlo = Utworz<TSplot>();
    const auto cel = Utworz<TSplot>();
    for (int i = 0; i < 3; ++i)
        zrodlo->GetPrzed().DodajObiekt(&cel->GetAdresy().Dopisz(), MaxInt);
    zrodlo->GetAdresy().Dopisz();
    TAdres* zostaje = cel->GetAdresy()[0];
    cel->KopiujDane(*zrodlo);
    EXPECT_EQ(cel->GetAdresy().IleObiektow(), 1);
    for (TSplot* o : {cel.get(), zrodlo.get()}) {
        ASSERT_EQ(o->GetPrzed().IleObiektow(), 1);
        EXPECT_EQ(o->GetPrzed().Obiekty(0), zostaje);
        SprawdzRejestracje(*o, {zostaje});
    }
}

TEST(Kopia, ZdarzenieWTrakcieKopii) {
    // While the target's list shrinks, after the pointers before it were copied, an event frees what they point at,
    // lets go of it, frees a copied field, or changes one.
    for (const char coRobi : {'g', 'p', 'u', 'z'}) {
        auto obcy = Utworz<TAdres>();
        const auto inny = Utworz<TAdres>();
        auto zrodlo = Utworz<TSplot>();
        Splec(*zrodlo, 1, obcy.get());
        const auto cel = Utworz<TSplot>();
        Splec(*cel, 3, inny.get());
        struct TKontekst {
            char coRobi;
            TWlasny<TAdres>& obcy;
            TSplot& zrodlo;
            TSplot& cel;
            TAdres* inny;
        } kontekst{coRobi, obcy, *zrodlo, *cel, inny.get()};
        TPoleRefZeZdarz czujka;
        czujka.OnZerujRefDo = {[](void* dane, TPole& /*nadawca*/) {
                                   auto& k = *static_cast<TKontekst*>(dane);
                                   switch (k.coRobi) {
                                   case 'g': // nobody else is recorded with it any more
                                       k.zrodlo.GetPrzed().SkrocListe(0, true);
                                       k.zrodlo.GetPo().SkrocListe(0, true);
                                       Zwolnij(k.obcy.Oddaj());
                                       break;
                                   case 'p':
                                       k.obcy->ZwolnijReferencje();
                                       break;
                                   case 'u':
                                       k.cel.UstawPole(TSplot::nrPrzed, nullptr, true);
                                       break;
                                   default:
                                       k.cel.GetPrzed().SkrocListe(1, true);
                                       k.cel.GetPrzed().DodajObiekt(k.inny, MaxInt);
                                   }
                               },
                               &kontekst};
        czujka.UstawObiekt(cel->GetAdresy()[2]);
        cel->KopiujDane(*zrodlo);
        EXPECT_EQ(czujka.Obiekt(), nullptr);
        std::vector<TObiektBazowy*> przed;
        if (cel->Pole(TSplot::nrPrzed) != nullptr)
            for (TObiektBazowy* element : cel->GetPrzed())
                przed.push_back(element);
        TAdres* kopia = cel->GetAdresy()[0];
        const std::vector<TObiektBazowy*> oczekiwane = coRobi == 'u' ? std::vector<TObiektBazowy*>{}
                                                       : coRobi == 'z'
                                                           ? std::vector<TObiektBazowy*>{obcy.get(), inny.get()}
                                                           : std::vector<TObiektBazowy*>{kopia, kopia};
        EXPECT_EQ(przed, oczekiwane) << coRobi;
        for (TAdres* adres : {kopia, zrodlo->GetAdresy()[0], inny.get(), obcy.get()})
            if (adres != nullptr)
                SprawdzRejestracje(*cel, {adres});
        Zwolnij(zrodlo.Oddaj());
    }
}

TEST(Kopia, BladWSrodkuNieZostawiaNiezarejestrowanych) {
    const auto obcy = Utworz<TAdres>();
    auto zrodlo = Utworz<TSplot>();
    Splec(*zrodlo, 3, obcy.get());
    const auto cel = Utworz<TSplotTekstowy>();
    zrodlo->SetTresc(5);
    EXPECT_EQ(Blad<EBladRzutowania>([&] { cel->KopiujDane(*zrodlo); }),
              u"TSplotTekstowy: pole Tresc jest typu TPoleInteger, spodziewany TPoleString");
    EXPECT_TRUE(obcy->MaRefOd(&cel->GetPrzed()));
    EXPECT_EQ(cel->GetPo().IleObiektow(), 7);
    Zwolnij(zrodlo.Oddaj()); // what still pointed at the source is told
    for (const TListaRefObiektow* lista : {&cel->GetPrzed(), &cel->GetPo()})
        for (std::int32_t i = 0; i < lista->IleObiektow(); ++i)
            EXPECT_TRUE(lista->Obiekty(i) == obcy.get() || lista->Obiekty(i)->DajKorzen() == cel.get());
    // The same when memory ends at any point.
    if (!przydzialy::Liczone())
        GTEST_SKIP() << "allocations cannot be made to fail here";
    probki::TLosoweDrzewo losowe(4);
    const auto drzewo = Utworz<TWszystko>();
    losowe.Wypelnij(*drzewo, 2);
    bool udane = false;
    for (int ktory = 0; !udane; ++ktory) {
        const auto splot = Utworz<TSplot>();
        Splec(*splot, 2, obcy.get());
        const auto nowy = Utworz<TSplot>();
        const auto kopia = Utworz<TWszystko>();
        przydzialy::Psuj(ktory, true);
        try {
            nowy->KopiujDane(*splot);
            kopia->KopiujDane(*drzewo);
            udane = true;
        } catch (const std::bad_alloc&) {
            udane = false;
        }
        static_cast<void>(przydzialy::Zakoncz());
        SprawdzRejestracje(*nowy, Adresy(*splot));
        SprawdzRejestracje(*nowy, Adresy(*nowy));
        if (udane) {
            EXPECT_EQ(kopia->Porownaj(*drzewo), 0);
        }
    }
}

TEST(Kopia, ZnikajaPolaKtorychZrodloNieMa) {
    TWszystko a;
    TWszystko b;
    b.WpiszDane({u"Nazwa", u"Adres.Numer", u"I"}, {u"stara", 5, 7});
    b.GetAdresy().Dopisz();
    const TPole* pole = b.Pole(TWszystko::nrI);
    a.SetI(8);
    b.KopiujDane(a);
    EXPECT_EQ(b.Pole(TWszystko::nrI), pole); // a field object of the class stays
    EXPECT_FALSE(b.PoleNiepuste(TWszystko::nrNazwa));
    EXPECT_TRUE(b.GetAdresy().ListaPusta());
    EXPECT_EQ(b.Porownaj(a), 0);
    b.UstawPole(TWszystko::nrNazwa, Utworz<TPoleFileName>().Oddaj(), true);
    static_cast<TPoleString&>(*b.Pole(TWszystko::nrNazwa)).UstawWartosc(u"plik");
    a.KopiujDane(b); // a field of a class derived from the declared one keeps its class
    EXPECT_EQ(a.Pole(TWszystko::nrNazwa)->Klasa(), TPoleFileName::KlasaStatyczna());
    a.KopiujDane(a);
    EXPECT_EQ(a.GetNazwa(), u"plik");
}

TEST(Kopia, PolaWspolnegoPrzodka) {
    TGalaz galaz;
    TKonar konar;
    galaz.WpiszDane({u"A", u"B", u"C", u"D", u"Gniazdo.Ulica"}, {1, u"b", 3, u"d", u"u"});
    EXPECT_TRUE(Zglasza<EBladRzutowania>([&] { konar.KopiujDane(galaz); })); // field 5 does not fit
    konar.Inicjuj({u"E"}, {55});
    konar.KopiujDanePrzodkow(galaz);
    EXPECT_EQ(konar.OpisTekstowy(), u"Konar: A=1, B=b, E=55"); // beyond the ancestor's last field: untouched
    TPien pien;
    pien.KopiujDanePrzodkow(konar);
    EXPECT_EQ(pien.GetGniazdo().GetUlica(), u"u");
    EXPECT_EQ(pien.OstUzywanePole(), 4);
    TAdres obcy;
    obcy.SetNumer(9);
    pien.KopiujDanePrzodkow(obcy); // TObiekt is all they share
    EXPECT_EQ(pien.GetA(), 1);
}

TEST(Kopia, LosoweDrzewa) {
    for (std::uint32_t ziarno = 1; ziarno <= 25; ++ziarno) {
        probki::TLosoweDrzewo losowe(ziarno);
        auto drzewo = Utworz<TWszystko>();
        losowe.Wypelnij(*drzewo, 3);
        const auto kopia = Utworz<TWszystko>();
        losowe.Wypelnij(*kopia, 2); // what was there does not show through
        kopia->KopiujDane(*drzewo);
        TPorownywaczDanych sciezki = Porownywacz(rpWszystkiePola, tprRefJakoSciezki, kopia.get(), drzewo.get());
        EXPECT_EQ(kopia->Porownaj(*drzewo, &sciezki), 0);
        EXPECT_EQ(kopia->Porownaj(*drzewo), 0);
        EXPECT_EQ(kopia->DajWyroznikObiektu(), drzewo->DajWyroznikObiektu());
        const std::uint32_t wyroznik = kopia->DajWyroznikObiektu();
        Zwolnij(drzewo.Oddaj()); // the copy needs nothing of the source
        EXPECT_EQ(kopia->DajWyroznikObiektu(), wyroznik);
    }
}

// A copy between an object and a part of itself reads a copy first: neither frees nor grows what it reads.
TEST(Kopia, ZWlasnejCzesci) {
    TWszystko o;
    TWszystko& czesc = o.GetPodrzedne().Dopisz();
    czesc.SetI(2);
    czesc.GetPodrzedne().Dopisz().SetI(3);
    const TWlasny<TObiektBazowy> wzor = czesc.KlonujObiekt(false);
    o.KopiujDane(czesc); // frees the part while it is the source
    EXPECT_EQ(o.Porownaj(*wzor), 0);
    TWszystko* srodek = o.GetPodrzedne()[0];
    const TWlasny<TObiektBazowy> caly = o.KlonujObiekt(false);
    srodek->KopiujDane(o); // the source holds the target
    EXPECT_EQ(srodek->Porownaj(*caly), 0);
}

} // namespace
