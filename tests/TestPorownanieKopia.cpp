// Comparer and copier: records, cycles, re-pointing, failures in the middle, copies between classes.
#include <gtest/gtest.h>

#include <random>

#include "fuzz/wywolania/StanDrzewa.h"
#include "tests/Bledy.h"
#include "tests/LosoweDrzewo.h"
#include "tests/Probki.h"
#include "tests/platforma/Przydzialy.h"

namespace {

using namespace ztok;
using probki::TAdres;
using probki::TWszystko;
using testy::Blad;

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

TEST(Porownanie, ZapisParJakPrzegladOdPoczatku) {
    std::vector<TWlasny<TPoleByte>> pola;
    for (int i = 0; i < 200; ++i)
        pola.push_back(Utworz<TPoleByte>());
    std::mt19937 los(11);
    for (const std::size_t zakres : {6U, 60U, 200U}) {
        TPorownywaczDanych p(nullptr, nullptr, rpWszystkiePola, rlRozmLiterWazny, LocaleWin1250, tprRefJakoWskazn);
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
            EXPECT_STREQ(drzewa::Blad({cel.get(), zrodlo.get(), obcy.get()}), nullptr);
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
    }
    EXPECT_STREQ(drzewa::Blad({cel.get(), zrodlo.get()}), nullptr);
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
                                       k.zrodlo.GetWsk().SkrocListe(0, true);
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
        const TWlasny<TAdres> zastepczy = obcy ? nullptr : Utworz<TAdres>();
        EXPECT_STREQ(drzewa::Blad({cel.get(), zrodlo.get(), inny.get(), obcy ? obcy.get() : zastepczy.get()}), nullptr);
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
    probki::TLosoweDrzewo losowe(4);
    const auto drzewo = Utworz<TWszystko>();
    losowe.Wypelnij(*drzewo, 2);
    bool udane = false;
    int ktory = 0;
    for (; !udane; ++ktory) {
        const auto splot = Utworz<TSplot>();
        Splec(*splot, 2, obcy.get());
        const auto nowy = Utworz<TSplot>();
        const auto kopia = Utworz<TWszystko>();
        przydzialy::Zacznij();
        przydzialy::Psuj(ktory, true);
        try {
            nowy->KopiujDane(*splot);
            kopia->KopiujDane(*drzewo);
            udane = true;
        } catch (const std::bad_alloc&) {
            udane = false;
        }
        static_cast<void>(przydzialy::Zakoncz());
        EXPECT_STREQ(drzewa::Blad({nowy.get(), splot.get(), obcy.get(), kopia.get(), drzewo.get()}), nullptr) << ktory;
        if (udane) {
            EXPECT_EQ(kopia->Porownaj(*drzewo), 0);
        }
    }
    EXPECT_GT(ktory, 20);
}

TEST(Kopia, ObiektyPolIIchKlasyZostaja) {
    TWszystko a;
    TWszystko b;
    b.SetI(7);
    const TPole* pole = b.Pole(TWszystko::nrI);
    a.SetI(8);
    b.KopiujDane(a);
    EXPECT_EQ(b.Pole(TWszystko::nrI), pole);
    b.UstawPole(TWszystko::nrNazwa, Utworz<TPoleFileName>().Oddaj(), true);
    static_cast<TPoleString&>(*b.Pole(TWszystko::nrNazwa)).UstawWartosc(u"plik");
    a.KopiujDane(b); // a field of a class derived from the declared one keeps its class
    EXPECT_EQ(a.Pole(TWszystko::nrNazwa)->Klasa(), TPoleFileName::KlasaStatyczna());
    a.KopiujDane(a);
    EXPECT_EQ(a.GetNazwa(), u"plik");
}

} // namespace
