// Data of any shape cost what as many plain data cost: many pointers at one object, chains and rings of pointers, lists
// whose targets die in any order, duplicates. What is found by a short way is what the plain walk finds.
#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <functional>
#include <numeric>
#include <random>
#include <set>

#include "StrumienieTestowe.h"
#include "platforma/Przydzialy.h"
#include "platforma/SystemTestowy.h"
#include "tests/Bledy.h"
#include "ztok/platform/TWariant.h"

using namespace ztok;
using strumienie::Wczytaj;
using strumienie::Zapisz;
using systemTestowy::WMalymWatku;
using testy::Blad;

namespace {

class TListaWezlow;

class TWezel : public TObiekt {
    ZTOK_OBIEKT(TWezel, TObiekt, (0, Ref, Ref<TWezel>), (1, Wsk, Wsk<TWezel>),
                (2, Wskazywane, Obiekt<TListaWskObiektow>), (3, Numer, Integer), (4, Nazwa, String),
                (5, Dalej, Obiekt<TWezel>), (6, Lista, Obiekt<TListaWezlow>), (7, Dowolny, Wsk<TObiektBazowy>),
                (8, Kolekcja, Obiekt<TKolekcjaObiektow>))
};
class TListaWezlow : public TListaTypu<TWezel> {
    ZTOK_LISTA(TListaWezlow, TWezel)
};
// Compares as its base, and yet has a comparison of its own: walked plainly.
class TWezelWlasny : public TWezel {
    ZTOK_OBIEKT(TWezelWlasny, TWezel)
    [[nodiscard]] std::int32_t WykonajPorownanie(const TPole& inne, TPorownywaczDanych& p) const override {
        return TWezel::WykonajPorownanie(inne, p);
    }
};
class TListaWlasnych : public TListaTypu<TWezelWlasny> {
    ZTOK_LISTA(TListaWlasnych, TWezelWlasny)
};
// A class of its own closes up at once when an element dies.
class TListaRefPochodna : public TListaRefObiektow {
    ZTOK_KLASA_DEKL(TListaRefPochodna)
};
ZTOK_KLASA_DEF(TListaRefPochodna, TListaRefObiektow)

class TGraf : public TObiekt {
    ZTOK_OBIEKT(TGraf, TObiekt, (0, Wezly, Obiekt<TListaWezlow>), (1, Powiazane, Obiekt<TListaRefObiektow>),
                (2, Wskazywane, Obiekt<TListaWskObiektow>))
};

class Ksztalty : public testing::Test {
  protected:
    void SetUp() override { RejestrujKlasy<TWezel, TListaWezlow, TWezelWlasny, TListaWlasnych, TGraf>(); }
};

double Sekundy(const std::function<void()>& dzialanie) {
    const std::clock_t start = std::clock(); // of the processor, where the system tells it
    dzialanie();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

// Whether twice as much takes at most two and a half times as long; a machine that does other things gets more tries.
void SprawdzWzrost(const char* nazwa, const std::function<double(int)>& mierz) {
    constexpr int N = ZTOK_SANITIZER ? 4000 : 20000;
    double stosunek = 1e9;
    for (int proba = 0; proba < 8 && stosunek > 2.5; ++proba) {
        const double krotki = mierz(N);
        stosunek = std::min(stosunek, (mierz(2 * N) - 0.005) / std::max(krotki, 0.001));
    }
    EXPECT_LE(stosunek, 2.5) << nazwa;
}

std::vector<TWezel*> Wezly(TGraf& graf, int ile) {
    std::vector<TWezel*> wezly;
    for (int i = 0; i < ile; ++i) {
        wezly.push_back(&graf.GetWezly().Dopisz());
        wezly.back()->SetNumer(i);
    }
    return wezly;
}

TEST_F(Ksztalty, CzasWMiareDanych) {
    const struct {
        const char* nazwa;
        void (*buduj)(TGraf& graf, std::vector<TWezel*> wezly);
    } ksztalty[] = {
        {"one target",
         [](TGraf& /*g*/, std::vector<TWezel*> w) {
             for (TWezel* o : w)
                 o->SetRef(w[0]);
         }},
        {"chain of references",
         [](TGraf& /*g*/, std::vector<TWezel*> w) {
             for (std::size_t i = 1; i < w.size(); ++i)
                 w[i - 1]->SetRef(w[i]);
         }},
        {"ring of pointers",
         [](TGraf& /*g*/, std::vector<TWezel*> w) {
             for (std::size_t i = 0; i < w.size(); ++i)
                 w[i]->SetWsk(w[(i + 1) % w.size()]);
         }},
        {"ring of pointer lists",
         [](TGraf& /*g*/, std::vector<TWezel*> w) {
             for (std::size_t i = 0; i < w.size(); ++i)
                 w[i]->GetWskazywane().DodajObiekt(w[(i + 1) % w.size()], MaxInt);
         }},
        {"lists in another order",
         [](TGraf& g, std::vector<TWezel*> w) {
             std::shuffle(w.begin(), w.end(), std::mt19937(5));
             for (TWezel* o : w) {
                 g.GetPowiazane().DodajObiekt(o, MaxInt);
                 g.GetWskazywane().DodajObiekt(o, MaxInt);
             }
         }},
    };
    for (const auto& ksztalt : ksztalty)
        for (const bool tekstem : {false, true})
            SprawdzWzrost(ksztalt.nazwa, [&](int ile) {
                TWlasny<TGraf> a = Utworz<TGraf>();
                TWlasny<TGraf> b = Utworz<TGraf>();
                TWlasny<TGraf> c = Utworz<TGraf>();
                return Sekundy([&] {
                    ksztalt.buduj(*a, Wezly(*a, ile));
                    if (tekstem)
                        strumienie::ZTekstu(*b, strumienie::Tekst(*a));
                    else
                        Wczytaj(*b, Zapisz(*a));
                    c->KopiujDane(*b);
                    for (const TTrybPorownRef tryb : {tprRefJakoWskazn, tprRefJakoSciezki}) {
                        TPorownywaczDanych p(a.get(), c.get(), rpWszystkiePola, rlRozmLiterWazny, LocaleWin1250, tryb);
                        EXPECT_EQ(a->Porownaj(*c, &p), 0) << ksztalt.nazwa;
                    }
                    // The last field of the last node differs, behind every pointer.
                    c->GetWezly()[ile - 1]->SetNazwa(u"x");
                    EXPECT_EQ(a->Porownaj(*c), -1) << ksztalt.nazwa;
                    EXPECT_EQ(c->Porownaj(*a), 1) << ksztalt.nazwa;
                    a.Ustaw();
                    for (int i = 0; i < ile / 2; ++i)
                        b->GetWezly().UsunObiekt(b->GetWezly().IleObiektow() - 1, true, false);
                    EXPECT_EQ(b->GetPowiazane().IleObiektow(), ksztalt.nazwa[0] == 'l' ? ile - ile / 2 : 0);
                    b.Ustaw();
                    c.Ustaw();
                });
            });
}

// One list operation over many elements, from objects without an owner that die in the order given.
TEST_F(Ksztalty, OperacjeListWMiareDanych) {
    static const TArgument numer[] = {TWezel::nrNumer};
    const struct {
        const char* nazwa;
        void (*dzialanie)(TListaWezlow& lista, TListaRefObiektow& ref, TListaWskObiektow& wsk);
    } operacje[] = {
        {"shortened step by step",
         [](TListaWezlow& /*l*/, TListaRefObiektow& r, TListaWskObiektow& /*w*/) {
             while (r.IleObiektow() > 0)
                 r.SkrocListe(r.IleObiektow() - 1, true);
         }},
        {"these removed",
         [](TListaWezlow& l, TListaRefObiektow& r, TListaWskObiektow& w) {
             TListaWskObiektow druga;
             druga.DopiszDane(&w);
             EXPECT_TRUE(druga.UsunTeObiekty(w, false));
             r.DopiszDane(&w); // each twice
             EXPECT_TRUE(r.UsunDuplikaty(numer, rlRozmLiterWazny));
             EXPECT_TRUE(r.UsunTeObiekty(w, false));
             EXPECT_TRUE(l.UsunTeObiekty(w, false));
         }},
        {"duplicates",
         [](TListaWezlow& l, TListaRefObiektow& /*r*/, TListaWskObiektow& /*w*/) {
             const int ile = l.IleObiektow();
             EXPECT_FALSE(l.UsunDuplikaty(numer, rlRozmLiterWazny));
             EXPECT_FALSE(l.DopiszObiektyGdyBrak(&l, {}, rlRozmLiterWazny));
             TListaWezlow druga;
             EXPECT_TRUE(druga.DopiszObiektyGdyBrak(&l, {}, rlRozmLiterWazny));
             EXPECT_TRUE(druga.DopiszDane(&l));
             EXPECT_TRUE(druga.UsunDuplikaty({}, rlRozmLiterWazny));
             EXPECT_FALSE(druga.PrzeniesObiektyGdyBrak(l, numer, rlRozmLiterWazny));
             druga.SkrocListe(0, false);
             EXPECT_TRUE(druga.PrzeniesObiektyGdyBrak(l, numer, rlRozmLiterWazny));
             EXPECT_EQ(druga.IleObiektow(), ile);
         }},
        {"values",
         [](TListaWezlow& l, TListaRefObiektow& /*r*/, TListaWskObiektow& /*w*/) {
             TListaNapisow wartosci;
             l.DajListeWartPola(u"Numer", wartosci);
             EXPECT_EQ(wartosci.Ile(), static_cast<std::size_t>(l.IleObiektow()));
         }},
    };
    for (const auto& operacja : operacje)
        SprawdzWzrost(operacja.nazwa, [&](int ile) {
            TGraf graf;
            std::vector<TWezel*> wezly = Wezly(graf, ile);
            std::shuffle(wezly.begin(), wezly.end(), std::mt19937(6));
            for (TWezel* o : wezly) {
                graf.GetPowiazane().DodajObiekt(o, MaxInt);
                graf.GetWskazywane().DodajObiekt(o, MaxInt);
            }
            return Sekundy([&] { operacja.dzialanie(graf.GetWezly(), graf.GetPowiazane(), graf.GetWskazywane()); });
        });
    for (const int porzadek : {0, 1, 2})
        SprawdzWzrost("targets die", [porzadek](int ile) {
            std::vector<TWlasny<TWezel>> wezly(static_cast<std::size_t>(ile));
            TListaRefObiektow lista;
            TWezel cel;
            for (TWlasny<TWezel>& o : wezly) {
                o = Utworz<TWezel>();
                lista.DodajObiekt(o.get(), MaxInt);
                o->SetRef(&cel);
            }
            std::vector<std::size_t> kolej(wezly.size());
            std::iota(kolej.begin(), kolej.end(), std::size_t{0});
            if (porzadek == 1)
                std::reverse(kolej.begin(), kolej.end());
            else if (porzadek == 2)
                std::shuffle(kolej.begin(), kolej.end(), std::mt19937(7));
            const double czas = Sekundy([&] {
                for (const std::size_t i : kolej)
                    wezly[i].Ustaw();
            });
            EXPECT_TRUE(lista.ListaPusta());
            EXPECT_FALSE(cel.MaJakiesRef());
            return czas;
        });
}

// The set of incoming references against a plain one: positions while it grows and shrinks, and the order of release.
TEST_F(Ksztalty, OdwolaniaJakZbiorAdresow) {
    static std::vector<const TPole*> zwolnione;
    std::mt19937 los(3);
    for (const std::size_t ile : {3U, 700U, 6000U}) {
        TWlasny<TWezel> cel = Utworz<TWezel>();
        std::vector<TWlasny<TPoleRefZeZdarz>> pola;
        std::set<const TPole*, std::less<>> model;
        for (std::size_t i = 0; i < ile; ++i) {
            pola.push_back(Utworz<TPoleRefZeZdarz>());
            pola.back()->OnZerujRefDo = {[](void* /*dane*/, TPole& pole) { zwolnione.push_back(&pole); }, nullptr};
        }
        for (const unsigned ubywa : {1U, 3U, 1U}) // of four steps: grows, shrinks, grows
            for (std::size_t krok = 0; krok < 2 * ile; ++krok) {
                TPoleRefZeZdarz& pole = *pola[los() % ile];
                const bool bierze = los() % 4 >= ubywa;
                pole.UstawObiekt(bierze ? cel.get() : nullptr);
                if (bierze)
                    model.insert(&pole);
                else
                    model.erase(&pole);
                if (krok % (ile / 3) != 0)
                    continue;
                int gdzie = -1;
                for (const TWlasny<TPoleRefZeZdarz>& p : pola) {
                    EXPECT_EQ(cel->JestRefOd(p.get(), gdzie), model.count(p.get()) == 1);
                    if (ile < 1000) {
                        EXPECT_EQ(gdzie, std::distance(model.begin(), model.lower_bound(p.get())));
                    }
                }
                if (!model.empty()) {
                    EXPECT_TRUE(cel->JestRefOd(*model.rbegin(), gdzie));
                    EXPECT_EQ(static_cast<std::size_t>(gdzie) + 1, model.size());
                }
            }
        zwolnione.clear();
        cel.Ustaw();
        EXPECT_EQ(zwolnione, std::vector<const TPole*>(model.rbegin(), model.rend()));
    }
}

// Elements die in any order between looks of any kind: the list is as one that closes up at once.
TEST_F(Ksztalty, DziuryZamykajaSieNaCzas) {
    std::mt19937 los(4);
    for (const bool powtorki : {false, true}) {
        std::vector<TWlasny<TWezel>> wezly;
        TListaRefObiektow a;
        TListaRefPochodna b;
        TWezel obcy;
        const auto dodaj = [&](TObiektBazowy* o, std::int32_t gdzie) {
            a.DodajObiekt(o, gdzie);
            b.DodajObiekt(o, gdzie);
        };
        for (int i = 0; i < 1500; ++i) {
            wezly.push_back(Utworz<TWezel>());
            dodaj(wezly.back().get(), MaxInt);
            if (powtorki && i % 3 == 0)
                dodaj(wezly[los() % wezly.size()].get(), static_cast<std::int32_t>(los() % 100));
            if (i % 100 == 0)
                dodaj(nullptr, MaxInt);
        }
        while (!wezly.empty()) {
            for (std::size_t ile = 1 + los() % 60; ile > 0 && !wezly.empty(); --ile) {
                std::swap(wezly[los() % wezly.size()], wezly.back());
                wezly.pop_back();
            }
            for (int i = 0; i < 12; ++i) // one that the lists do not hold
                for (TListaRefObiektow* lista : {&a, static_cast<TListaRefObiektow*>(&b)})
                    lista->ZerujRefDo(&obcy);
            switch (los() % 5) {
            case 0:
                dodaj(wezly.empty() ? nullptr : wezly[0].get(), 3);
                break;
            case 1:
                EXPECT_EQ(a.UsunObiekt(5, true, false), b.UsunObiekt(5, true, false));
                break;
            case 2:
                a.SkrocListe(a.IleObiektow() - 1, true);
                b.SkrocListe(b.IleObiektow() - 1, true);
                break;
            case 3:
                EXPECT_EQ(a.OpisTekstowy(), b.OpisTekstowy());
                break;
            default:
                break;
            }
            EXPECT_EQ(a.Pojemnosc(), b.Pojemnosc());
            ASSERT_EQ(a.IleObiektow(), b.IleObiektow());
            for (int i = 0; i < a.IleObiektow(); ++i)
                ASSERT_EQ(a.Obiekty(i), b.Obiekty(i));
            for (std::size_t i = 0; i < wezly.size(); i += 9)
                ASSERT_EQ(wezly[i]->MaRefOd(&a), a.ZnajdzObiekt(wezly[i].get()) >= 0);
        }
    }
}

// A list whose class orders its elements and one that is walked plainly keep the same ones.
TEST_F(Ksztalty, DuplikatyJakWPrzegladzie) {
    std::mt19937 los(8);
    for (int raz = 0; raz < 60; ++raz) {
        TListaWezlow szybka;
        TListaWlasnych zwykla;
        for (TListaObiektow* lista : {static_cast<TListaObiektow*>(&szybka), static_cast<TListaObiektow*>(&zwykla)}) {
            std::mt19937 tresc(static_cast<unsigned>(raz));
            for (unsigned i = 0; i < 80; ++i) {
                auto& o = static_cast<TWezel&>(*lista->DodajObiekt(nullptr, MaxInt));
                // Sometimes fields are missing beside default ones and negative ones, and pointers go round.
                if (tresc() % 8 != 0 || raz % 4 == 0)
                    o.SetNumer(static_cast<std::int32_t>(tresc() % 5) - 2);
                o.SetNazwa(std::u16string(tresc() % 3, tresc() % 2 == 0 ? u'a' : u'A'));
                if (raz % 3 == 0)
                    o.GetDalej().SetNumer(static_cast<std::int32_t>(tresc() % 2) + 1);
                if (i > 0 && raz % 5 == 0)
                    o.SetRef(static_cast<TWezel*>(lista->Obiekty(static_cast<std::int32_t>(tresc() % i))));
            }
        }
        static const TArgument numer[] = {TWezel::nrNumer};
        static const TArgument nazwy[] = {u"Nazwa", u"Dalej.Numer"};
        const TArgumenty pola = raz % 3 == 0 ? TArgumenty(numer) : raz % 3 == 1 ? TArgumenty() : TArgumenty(nazwy);
        const auto rozmLiter = raz % 2 == 0 ? rlRozmLiterWazny : rlRozmLiterNiewazny;
        TListaWezlow druga;
        TListaWlasnych drugaZwykla;
        EXPECT_EQ(druga.DopiszObiektyGdyBrak(&szybka, pola, rozmLiter),
                  drugaZwykla.DopiszObiektyGdyBrak(&zwykla, pola, rozmLiter));
        EXPECT_EQ(strumienie::Zapisz(druga), strumienie::Zapisz(drugaZwykla));
        EXPECT_EQ(szybka.UsunDuplikaty(pola, rozmLiter), zwykla.UsunDuplikaty(pola, rozmLiter));
        EXPECT_EQ(strumienie::Zapisz(szybka), strumienie::Zapisz(zwykla)) << raz;
        EXPECT_EQ(szybka.PrzeniesObiektyGdyBrak(druga, {}, rozmLiter),
                  zwykla.PrzeniesObiektyGdyBrak(drugaZwykla, {}, rozmLiter));
        EXPECT_EQ(strumienie::Zapisz(szybka), strumienie::Zapisz(zwykla)) << raz;
        EXPECT_EQ(strumienie::Zapisz(druga), strumienie::Zapisz(drugaZwykla)) << raz;
    }
}

// Objects of different classes are different, in the order of their names; in a collection, whichever side asks.
TEST_F(Ksztalty, RozneKlasy) {
    TGraf graf;
    TWezel wezel;
    TWezelWlasny wlasny;
    TListaWezlow lista;
    const std::vector<TObiektBazowy*> obiekty = {&graf, &lista, &wezel, &wlasny}; // by name
    for (std::size_t i = 0; i < obiekty.size(); ++i)
        for (std::size_t j = 0; j < obiekty.size(); ++j) {
            const int znak = static_cast<int>(i > j) - static_cast<int>(i < j);
            TWezel a;
            TWezel b;
            a.SetPoleWskObiektu(TWezel::nrDowolny, obiekty[i]);
            b.SetPoleWskObiektu(TWezel::nrDowolny, obiekty[j]);
            EXPECT_EQ(a.Porownaj(b), znak) << i << ' ' << j;
            TListaWskObiektow la;
            TListaWskObiektow lb;
            la.DodajObiekt(obiekty[i], 0);
            lb.DodajObiekt(obiekty[j], 0);
            EXPECT_EQ(la.Porownaj(lb), znak);
            EXPECT_EQ(la.JestTakiObiekt(*obiekty[j]), i == j);
            TKolekcjaObiektow ka;
            TKolekcjaObiektow kb;
            ka.DopiszObiekt(obiekty[i], 0);
            kb.DopiszObiekt(obiekty[j], 0);
            EXPECT_EQ(ka.Porownaj(kb), i == j ? 0 : 1);
            EXPECT_EQ(kb.UsunTakiObiekt(*obiekty[i], true), nullptr);
            EXPECT_EQ(kb.IleObiektow(), i == j ? 0 : 1);
        }
    TListaWskObiektow wszystkie;
    for (std::size_t i = 0; i < 2 * obiekty.size(); ++i)
        wszystkie.DodajObiekt(obiekty[i % obiekty.size()], 0);
    EXPECT_TRUE(wszystkie.UsunDuplikaty({}, rlRozmLiterWazny));
    EXPECT_TRUE(wszystkie.PosortujWgFun());
    for (std::size_t i = 0; i < obiekty.size(); ++i)
        EXPECT_EQ(wszystkie.Obiekty(static_cast<std::int32_t>(i)), obiekty[i]);
}

// What goes down a tree is bounded or needs no stack, whatever its depth; classes that compare themselves nest as
// calls.
TEST_F(Ksztalty, GlebokieDrzewaWMalymWatku) {
    constexpr int ile = 100000;
    WMalymWatku([] {
        const std::u16string_view zaGleboko = u"zagnieżdżenie obiektów głębsze niż 256";
        const auto odmawia = [&](auto dzialanie) {
            EXPECT_NE(Blad<ZTException>(dzialanie).find(zaGleboko), std::u16string::npos);
        };
        for (const bool listami : {false, true}) {
            const TWlasny<TWezel> korzen = Utworz<TWezel>();
            TWezel* o = korzen.get();
            for (int i = 0; i < ile; ++i)
                o = listami ? &o->GetLista().Dopisz() : &o->GetDalej();
            o->SetNazwa(u" 漢 ");
            odmawia([&] { korzen->TrymujPolaTekstowe(true); });
            odmawia([&] { korzen->PrzytnijPolaWgRozm(true); });
            odmawia([&] { static_cast<void>(korzen->SaDaneUnicode(CalyObiekt)); });
            odmawia([&] { static_cast<void>(korzen->DrzewoObiektu()); });
        }
        TListaWskObiektow wSobie;
        wSobie.DodajObiekt(&wSobie, 0);
        odmawia([&] { wSobie.ZerujDanePol({}); });
        odmawia([&] { wSobie.ZerujDaneOprocz({}); });

        TListaWlasnych a;
        TListaWlasnych b;
        for (TListaWlasnych* lista : {&a, &b})
            for (int i = 0; i < ile; ++i) {
                TWezelWlasny& nowy = lista->Dopisz();
                if (i > 0)
                    (*lista)[i - 1]->SetWsk(&nowy);
            }
        odmawia([&] { static_cast<void>(a.Porownaj(b)); });

        TWariant wariant = 5;
        for (int i = 0; i < ile; ++i) {
            std::vector<TWariant> elementy;
            elementy.push_back(i % 3 == 0 ? TWariant(i) : TWariant::Tablica({TWariant(1), TWariant(2)}));
            elementy.push_back(std::move(wariant));
            if (i % 2 == 0)
                std::swap(elementy[0], elementy[1]);
            wariant = TWariant::Tablica(std::move(elementy));
        }
        EXPECT_TRUE(wariant == wariant);
        EXPECT_NE(Blad<EBladWariantu>([&] { const TWariant kopia = wariant; }).find(zaGleboko), std::u16string::npos);
    });
}

// A name as long as the document costs no more than its limit, and its message shows the beginning.
TEST_F(Ksztalty, DlugieNazwyIKomunikaty) {
    constexpr std::size_t N = 4 << 20;
    const std::string dlugie(N, 'x');
    const struct {
        std::string dokument;
        const char16_t* komunikat;
    } dokumenty[] = {
        {dlugie, u"przekroczono limit odczytu: rozmiar nazwy w bajtach (65536)"},
        {"object " + dlugie, u"przekroczono limit odczytu: rozmiar nazwy w bajtach (65536)"},
        {"object \"" + dlugie + "\"", u"przekroczono limit odczytu: rozmiar nazwy w bajtach (65536)"},
        {"object TWezel Numer=" + std::string(N, '1'), u"przekroczono limit odczytu: rozmiar nazwy w bajtach (65536)"},
        {"object " + std::string(60000, 'x'), u"xxx…"},
        {"object TWezel Numer=1 Numer=" + std::string(60000, '1') + " end", u"przekroczono"},
    };
    for (const auto& d : dokumenty) {
        TWezel wezel;
        std::u16string komunikat;
        const std::int64_t przed = static_cast<std::int64_t>(d.dokument.size());
        przydzialy::Zacznij();
        komunikat = Blad([&] { strumienie::ZTekstu(wezel, d.dokument); });
        const std::int64_t szczyt = przydzialy::Zakoncz().szczyt;
        EXPECT_LT(komunikat.size(), 2500U);
        EXPECT_LT(szczyt, 2 * przed + 1024 * 1024);
    }
    EXPECT_LT(Blad([&] { TWezel().SetTekstowoWgSciezki(u"Numer", std::u16string(N, u'1')); }).size(), 2500U);
}

} // namespace
