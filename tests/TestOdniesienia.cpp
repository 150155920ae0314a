// References in trees that change: random steps against a model of plain structs, owners by code.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <random>

#include "tests/Bledy.h"
#include "tests/StrumienieTestowe.h"
#include "ztok/kernel/Typypolbazowe.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/Pula.h"
#include "ztok/util/ZTBledy.h"

namespace {

using namespace ztok;

class TListaWezlow;
class TWezel : public TObiekt {
    ZTOK_OBIEKT(TWezel, TObiekt, (0, Id, Integer), (1, Ref, Ref<TWezel>), (2, Refy, Obiekt<TListaRefObiektow>),
                (3, Dzieci, Obiekt<TListaWezlow>), (4, Rozne, Obiekt<TKolekcjaObiektow>), (5, Jeden, Obiekt<TWezel>))
};
class TListaWezlow : public TListaTypu<TWezel> {
    ZTOK_LISTA(TListaWezlow, TWezel)
};

// What a node is expected to be. Children stand in three places: 0 the list, 1 the collection, 2 the field, at most
// one.
struct TModel {
    int id = 0;
    TModel* ref = nullptr;
    std::vector<TModel*> refy;
    std::vector<std::unique_ptr<TModel>> dzieci[3];
    TModel* rodzic = nullptr;
    TWezel* jest = nullptr; // the object, known after every check
};
using TMapa = std::map<const TModel*, TModel*>;

template <class F> void Obejdz(TModel& m, const F& f) {
    f(m);
    for (auto& miejsce : m.dzieci)
        for (auto& d : miejsce)
            Obejdz(*d, f);
}

int Glebokosc(const TModel& m) { return m.rodzic == nullptr ? 0 : 1 + Glebokosc(*m.rodzic); }

bool JestNad(const TModel& przodek, const TModel* m) {
    while (m != nullptr && m != &przodek)
        m = m->rodzic;
    return m != nullptr;
}

class TSwiat {
  public:
    explicit TSwiat(std::uint32_t ziarno) : los_(ziarno) {
        for (int i = 0; i < 2; ++i)
            NowyKorzen(i);
    }

    void Krok() {
        std::vector<TModel*> wszystkie = Wszystkie();
        const auto losowy = [&]() -> TModel& { return *wszystkie[Z(wszystkie.size())]; };
        TModel& m = losowy();
        TModel& drugi = losowy();
        switch (Z(24)) {
        default:
            if (wszystkie.size() < 40 && Glebokosc(m) < 6)
                Dodaj(m);
            break;
        case 6:
        case 7:
        case 8:
            m.ref = Z(4) == 0 ? nullptr : &drugi;
            m.jest->SetRef(m.ref == nullptr ? nullptr : drugi.jest);
            break;
        case 9:
        case 10:
        case 11: {
            const std::size_t gdzie = Z(m.refy.size() + 1);
            m.refy.insert(m.refy.begin() + static_cast<std::ptrdiff_t>(gdzie), &drugi);
            m.jest->GetRefy().DodajObiekt(drugi.jest, static_cast<std::int32_t>(gdzie));
            break;
        }
        case 12:
            ZmniejszRefy(m);
            break;
        case 13:
        case 14:
            if (m.rodzic != nullptr)
                Usun(m);
            break;
        case 15:
        case 16:
            if (m.rodzic != nullptr)
                Przenies(m, drugi);
            break;
        case 17:
        case 18:
            if (wszystkie.size() < 40 && Glebokosc(m) < 4)
                Kopiuj(m, drugi);
            break;
        case 19: { // one tree is saved and read into the other, or into itself
            const std::size_t skad = Z(2);
            const std::size_t dokad = Z(2);
            const std::string bajty = strumienie::Zapisz(*korzenie_[skad]);
            TModel kopia;
            TMapa mapa;
            Powiel(*modele_[skad], kopia, mapa);
            // What was outside the tree saved has no number in it.
            Obejdz(kopia, [&](TModel& k) {
                const auto poza = [&](const TModel* cel) { return cel != nullptr && !JestNad(kopia, cel); };
                if (poza(k.ref))
                    k.ref = nullptr;
                std::erase_if(k.refy, poza);
            });
            strumienie::Wczytaj(*korzenie_[dokad], bajty);
            Oczysc(*modele_[dokad]);
            Wchlon(*modele_[dokad], kopia);
            break;
        }
        case 20: // a whole tree dies, the other may refer to it
            if (Z(4) == 0)
                NowyKorzen(static_cast<int>(Z(2)));
            break;
        }
        Sprawdz();
    }

  private:
    std::size_t Z(std::size_t ile) { return los_() % ile; }

    std::vector<TModel*> Wszystkie() {
        std::vector<TModel*> wynik;
        for (auto& korzen : modele_)
            Obejdz(*korzen, [&](TModel& m) { wynik.push_back(&m); });
        return wynik;
    }

    void NowyKorzen(int ktory) {
        if (modele_[ktory] != nullptr) {
            korzenie_[ktory] = TWlasny<TWezel>();
            Zapomnij(*modele_[ktory]);
        }
        korzenie_[ktory] = Utworz<TWezel>();
        modele_[ktory] = std::make_unique<TModel>();
        NadajId(*modele_[ktory], *korzenie_[ktory]);
    }

    void NadajId(TModel& m, TWezel& o) {
        m.id = ++ostatnieId_;
        m.jest = &o;
        o.SetId(m.id);
    }

    static TListaBazowa& Lista(TWezel& o, std::size_t miejsce) {
        return miejsce == 0 ? static_cast<TListaBazowa&>(o.GetDzieci()) : static_cast<TListaBazowa&>(o.GetRozne());
    }

    void Dodaj(TModel& m) {
        const std::size_t miejsce = Z(3);
        auto& dzieci = m.dzieci[miejsce];
        if (miejsce == 2 && !dzieci.empty())
            return;
        const std::size_t gdzie = Z(dzieci.size() + 1);
        auto& nowy = *dzieci.insert(dzieci.begin() + static_cast<std::ptrdiff_t>(gdzie), std::make_unique<TModel>());
        nowy->rodzic = &m;
        if (miejsce == 2)
            NadajId(*nowy, m.jest->GetJeden());
        else
            NadajId(*nowy, static_cast<TWezel&>(
                               *Lista(*m.jest, miejsce)
                                    .DodajObiekt(miejsce == 0 && Z(2) == 0 ? nullptr : Utworz<TWezel>().Oddaj(),
                                                 static_cast<std::int32_t>(gdzie))));
    }

    void ZmniejszRefy(TModel& m) {
        TListaRefObiektow& refy = m.jest->GetRefy();
        const TArgument pola[] = {TWezel::nrId};
        const std::size_t ile = Z(m.refy.size() + 1);
        const auto gdzie = m.refy.begin() + static_cast<std::ptrdiff_t>(ile);
        const auto indeks = static_cast<std::int32_t>(ile);
        switch (Z(4)) {
        case 0:
            EXPECT_EQ(refy.UsunObiekt(indeks, true, false), gdzie == m.refy.end() ? nullptr : (*gdzie)->jest);
            if (gdzie != m.refy.end())
                m.refy.erase(gdzie);
            break;
        case 1: {
            std::vector<int> widziane;
            EXPECT_EQ(refy.UsunDuplikaty(pola, rlRozmLiterWazny), std::erase_if(m.refy, [&](const TModel* cel) {
                                                                      widziane.push_back(cel->id);
                                                                      return std::count(widziane.begin(),
                                                                                        widziane.end(), cel->id) > 1;
                                                                  }) != 0);
            break;
        }
        case 2:
            refy.SkrocListe(indeks, false);
            m.refy.erase(gdzie, m.refy.end());
            break;
        default:
            if (!m.refy.empty()) {
                const TArgument wartosci[] = {m.refy.front()->id};
                EXPECT_TRUE(refy.UsunObiekty(pola, wartosci, rlRozmLiterWazny));
                std::erase_if(m.refy, [id = m.refy.front()->id](const TModel* cel) { return cel->id == id; });
            }
        }
    }

    // Where a node stands in its parent.
    static std::pair<std::size_t, std::size_t> Miejsce(const TModel& m) {
        for (std::size_t miejsce = 0;; ++miejsce)
            for (std::size_t i = 0; i < m.rodzic->dzieci[miejsce].size(); ++i)
                if (m.rodzic->dzieci[miejsce][i].get() == &m)
                    return {miejsce, i};
    }

    // Nobody refers to the nodes of a subtree any more: they die.
    void Zapomnij(TModel& gine) {
        const auto zapomnij = [&](TModel& m) {
            if (m.ref != nullptr && JestNad(gine, m.ref))
                m.ref = nullptr;
            std::erase_if(m.refy, [&](const TModel* cel) { return JestNad(gine, cel); });
        };
        for (auto& korzen : modele_)
            if (korzen != nullptr)
                Obejdz(*korzen, zapomnij);
        if (poboczny_ != nullptr)
            Obejdz(*poboczny_, zapomnij);
    }

    void Usun(TModel& m) {
        const auto [miejsce, i] = Miejsce(m);
        TModel& rodzic = *m.rodzic;
        if (miejsce == 2)
            rodzic.jest->UstawPole(TWezel::nrJeden, nullptr, true);
        else
            Lista(*rodzic.jest, miejsce).UsunObiekt(static_cast<std::int32_t>(i), true, false);
        Zapomnij(m);
        rodzic.dzieci[miejsce].erase(rodzic.dzieci[miejsce].begin() + static_cast<std::ptrdiff_t>(i));
    }

    void Przenies(TModel& m, TModel& dokad) {
        const auto [skad, i] = Miejsce(m);
        const std::size_t cel = Z(2);
        if (skad == 2 || Glebokosc(dokad) > 5)
            return;
        TListaBazowa& zLista = Lista(*m.rodzic->jest, skad);
        TListaBazowa& doListy = Lista(*dokad.jest, cel);
        if (JestNad(m, &dokad)) { // into itself
            EXPECT_TRUE(testy::Zglasza<ZTException>(
                [&, ktory = i] { doListy.PrzeniesZListy(zLista, static_cast<std::int32_t>(ktory), 0); }));
            return;
        }
        auto& dzieci = m.rodzic->dzieci[skad];
        std::unique_ptr<TModel> wezel = std::move(dzieci[i]);
        dzieci.erase(dzieci.begin() + static_cast<std::ptrdiff_t>(i));
        doListy.PrzeniesZListy(zLista, static_cast<std::int32_t>(i), MaxInt);
        wezel->rodzic = &dokad;
        dokad.dzieci[cel].push_back(std::move(wezel));
    }

    // A free copy of a subtree: what pointed inside points inside the copy.
    void Powiel(const TModel& skad, TModel& dokad, TMapa& mapa) {
        PowielWezly(skad, dokad, mapa);
        Obejdz(dokad, [&](TModel& m) { Przepnij(m, mapa); });
    }
    void PowielWezly(const TModel& skad, TModel& dokad, TMapa& mapa) {
        mapa[&skad] = &dokad;
        dokad.id = skad.id;
        dokad.ref = skad.ref;
        dokad.refy = skad.refy;
        for (std::size_t miejsce = 0; miejsce < 3; ++miejsce)
            for (const auto& d : skad.dzieci[miejsce]) {
                auto& nowy = dokad.dzieci[miejsce].emplace_back(std::make_unique<TModel>());
                nowy->rodzic = &dokad;
                PowielWezly(*d, *nowy, mapa);
            }
    }
    static void Przepnij(TModel& m, const TMapa& mapa) {
        const auto kopia = [&](TModel*& cel) {
            if (const auto jest = mapa.find(cel); jest != mapa.end())
                cel = jest->second;
        };
        kopia(m.ref);
        for (TModel*& cel : m.refy)
            kopia(cel);
    }

    void Kopiuj(TModel& dokad, TModel& skad) {
        if (&dokad == &skad)
            return;
        std::size_t ile = 0;
        Obejdz(skad, [&](TModel& /*m*/) { ++ile; });
        if (ile > 15)
            return;
        dokad.jest->KopiujDane(*skad.jest);
        TModel wolna; // as from a copy of the source: the source itself may be a part of the target
        TMapa mapa;
        Powiel(skad, wolna, mapa);
        poboczny_ = &wolna;
        mapa.clear();
        std::vector<TModel*> bezId;
        Wyrownaj(dokad, wolna, mapa, bezId);
        poboczny_ = nullptr;
        for (const auto& [z, na] : mapa) {
            na->id = z->id;
            na->ref = z->ref;
            na->refy = z->refy;
        }
        for (const auto& [z, na] : mapa)
            Przepnij(*na, mapa);
        for (TModel* m : bezId) // the object in the field stays, empty; a fresh number keeps it worth writing
            NadajId(*m, *m->jest);
    }

    // Objects are kept as far as both sides have them; the rest dies or is made.
    void Wyrownaj(TModel& dokad, TModel& skad, TMapa& mapa, std::vector<TModel*>& bezId) {
        mapa[&skad] = &dokad;
        for (std::size_t miejsce = 0; miejsce < 3; ++miejsce) {
            auto& cel = dokad.dzieci[miejsce];
            auto& zrodlo = skad.dzieci[miejsce];
            if (miejsce == 2 && zrodlo.empty() && !cel.empty()) {
                Oczysc(*cel[0]);
                bezId.push_back(cel[0].get());
                continue;
            }
            while (cel.size() > zrodlo.size()) {
                Zapomnij(*cel.back());
                cel.pop_back();
            }
            while (cel.size() < zrodlo.size())
                cel.emplace_back(std::make_unique<TModel>())->rodzic = &dokad;
            for (std::size_t i = 0; i < cel.size(); ++i)
                Wyrownaj(*cel[i], *zrodlo[i], mapa, bezId);
        }
    }

    // The content goes, the object stays, and what refers to it.
    void Oczysc(TModel& m) {
        for (auto& miejsce : m.dzieci) {
            for (auto& d : miejsce)
                Zapomnij(*d);
            miejsce.clear();
        }
        m.ref = nullptr;
        m.refy.clear();
    }

    // Takes over the content of a free tree.
    static void Wchlon(TModel& dokad, TModel& skad) {
        const TMapa mapa = {{&skad, &dokad}};
        Obejdz(skad, [&](TModel& m) { Przepnij(m, mapa); });
        dokad.id = skad.id;
        dokad.ref = skad.ref;
        dokad.refy = skad.refy;
        for (std::size_t miejsce = 0; miejsce < 3; ++miejsce) {
            dokad.dzieci[miejsce] = std::move(skad.dzieci[miejsce]);
            for (auto& d : dokad.dzieci[miejsce])
                d->rodzic = &dokad;
        }
    }

    // Finds the object of every node: the trees have the same shape.
    void Zwiaz(TModel& m, TWezel& o) {
        m.jest = &o;
        ASSERT_EQ(o.GetId(), m.id);
        for (std::size_t miejsce = 0; miejsce < 2; ++miejsce) {
            const TListaBazowa& lista = Lista(o, miejsce);
            ASSERT_EQ(static_cast<std::size_t>(lista.IleObiektow()), m.dzieci[miejsce].size());
            for (std::int32_t i = 0; i < lista.IleObiektow(); ++i) {
                ASSERT_EQ(lista.Obiekty(i)->Rodzic(), &lista);
                Zwiaz(*m.dzieci[miejsce][static_cast<std::size_t>(i)], static_cast<TWezel&>(*lista.Obiekty(i)));
            }
        }
        auto* jeden = static_cast<TWezel*>(o.Pole(TWezel::nrJeden));
        ASSERT_EQ(jeden != nullptr, !m.dzieci[2].empty());
        if (jeden != nullptr)
            Zwiaz(*m.dzieci[2][0], *jeden);
    }

    // Every reference is where the model has it, and the record of each object holds exactly what refers to it.
    void Sprawdz() {
        for (int i = 0; i < 2; ++i)
            Zwiaz(*modele_[i], *korzenie_[i]);
        if (testing::Test::HasFatalFailure())
            return;
        const std::vector<TModel*> wszystkie = Wszystkie();
        for (const TModel* m : wszystkie) {
            ASSERT_EQ(m->jest->GetRef(), m->ref == nullptr ? nullptr : m->ref->jest);
            TListaRefObiektow& refy = m->jest->GetRefy();
            ASSERT_EQ(static_cast<std::size_t>(refy.IleObiektow()), m->refy.size());
            for (std::size_t i = 0; i < m->refy.size(); ++i)
                ASSERT_EQ(refy.Obiekty(static_cast<std::int32_t>(i)), m->refy[i]->jest);
            const TPole* ref = m->jest->Pole(TWezel::nrRef);
            for (const TModel* cel : wszystkie) {
                if (ref != nullptr) {
                    ASSERT_EQ(cel->jest->MaRefOd(ref), m->ref == cel);
                }
                ASSERT_EQ(cel->jest->MaRefOd(&refy), std::count(m->refy.begin(), m->refy.end(), cel) != 0);
            }
        }
        for (const TModel* cel : wszystkie)
            ASSERT_EQ(cel->jest->MaJakiesRef(), std::any_of(wszystkie.begin(), wszystkie.end(), [cel](const TModel* m) {
                          return m->ref == cel || std::count(m->refy.begin(), m->refy.end(), cel) != 0;
                      }));
    }

    std::mt19937 los_;
    int ostatnieId_ = 0;
    TWlasny<TWezel> korzenie_[2];
    std::unique_ptr<TModel> modele_[2];
    TModel* poboczny_ = nullptr; // a copy that the library keeps during a step
};

TEST(Odniesienia, LosoweKrokiJakWModelu) {
    RejestrujKlasy<TWezel, TListaWezlow>();
    for (std::uint32_t ziarno = 1; ziarno <= 8; ++ziarno) {
        SCOPED_TRACE(ziarno);
        TSwiat swiat(ziarno);
        for (int krok = 0; krok < 1000 && !testing::Test::HasFailure(); ++krok) {
            SCOPED_TRACE(krok);
            swiat.Krok();
        }
    }
}

// Every way to hand over an object that another owner holds is refused, and nothing changes. A parent that only made
// the object does not hold it; what an owner gave back is free.
TEST(Odniesienia, JedenWlasciciel) {
    const std::int64_t zajete = PulaZajete();
    {
        const TWlasny<TWezel> korzen = Utworz<TWezel>();
        const TWlasny<TWezel> drugi = Utworz<TWezel>();
        TWezel& wPolu = korzen->GetJeden();
        TWezel& wLiscie = korzen->GetDzieci().Dopisz();
        auto& wKolekcji = static_cast<TWezel&>(*korzen->GetRozne().Dodaj(Utworz<TWezel>()));
        const std::string przed = strumienie::Zapisz(*korzen);
        for (TWezel* o : {&wPolu, &wLiscie, &wKolekcji})
            for (TWezel* dokad : {drugi.get(), korzen.get()})
                for (int jak = 0; jak < 5; ++jak) {
                    const std::u16string blad = testy::Blad<ZTException>([&] {
                        TListaZObiektami& lista = jak < 2 ? static_cast<TListaZObiektami&>(dokad->GetDzieci())
                                                          : static_cast<TListaZObiektami&>(dokad->GetRozne());
                        if (jak == 4)
                            dokad->UstawPole(TWezel::nrId, o, false);
                        else if (jak % 2 == 0)
                            lista.DodajObiekt(o, MaxInt);
                        else
                            lista.PrzypnijObiekt(o);
                    });
                    EXPECT_NE(blad.find(u": obiekt klasy TWezel ma już właściciela : " + o->DajSciezkeDoSiebie()),
                              std::u16string::npos)
                        << Utf8ZUtf16(blad);
                }
        EXPECT_EQ(strumienie::Zapisz(*korzen), przed);
        korzen->UstawPole(TWezel::nrJeden, &wPolu, true); // where it is
        korzen->UstawPole(TWezel::nrJeden, nullptr, false);
        drugi->GetDzieci().DodajObiekt(&wPolu, 0);
        drugi->GetRozne().Dodaj(korzen->GetDzieci().Wyjmij(0));
        drugi->UstawPole(TWezel::nrJeden, korzen->GetRozne().UsunObiekt(0, false, false), true);
        drugi->GetDzieci().DodajObiekt(Utworz<TWezel>(&drugi->GetDzieci()).Oddaj(), 0);
        korzen->GetDzieci().Dodaj(Utworz<TWezel>(drugi.get()));
        korzen->GetDzieci().PrzeniesDane(drugi->GetDzieci());
        EXPECT_EQ(wPolu.DajSciezkeDoSiebie(), u"Dzieci[2]");
    }
    EXPECT_EQ(PulaZajete(), zajete);
}

// An event tells that a target dies; what it does then reaches the field itself, its neighbours, and the list that is
// being walked.
struct TZdarzenia {
    TListaWezlow lista;
    std::vector<TWlasny<TPoleRefZeZdarz>> pola;
    int byloZdarzen = 0;
    void (*skutek)(TZdarzenia&, TPole&) = nullptr;

    explicit TZdarzenia(void (*coRobic)(TZdarzenia&, TPole&)) : skutek(coRobic) {
        for (int i = 0; i < 40; ++i)
            lista.Dopisz().SetId(i % 4);
        for (int i = 0; i < 12; ++i) {
            pola.push_back(Utworz<TPoleRefZeZdarz>());
            pola.back()->OnZerujRefDo = {[](void* dane, TPole& nadawca) {
                                             auto& z = *static_cast<TZdarzenia*>(dane);
                                             ++z.byloZdarzen;
                                             z.skutek(z, nadawca);
                                         },
                                         this};
            pola.back()->UstawObiekt(lista[30 + i / 6]);
        }
    }
    void Zwolnij(const TPole& pole) {
        std::erase_if(pola, [&pole](const auto& p) { return p.get() == &pole; });
    }
};

TEST(Odniesienia, ZdarzenieMozeWszystko) {
    using TSkutek = void (*)(TZdarzenia&, TPole&);
    const TSkutek nic = [](TZdarzenia&, TPole&) {};
    const TSkutek skutki[] = {
        nic,
        [](TZdarzenia& z, TPole& nadawca) { z.Zwolnij(nadawca); },
        [](TZdarzenia& z, TPole& nadawca) { std::erase_if(z.pola, [&](auto& p) { return p.get() != &nadawca; }); },
        [](TZdarzenia& z, TPole&) { z.pola.clear(); },
        [](TZdarzenia& z, TPole& nadawca) { static_cast<TPoleRefZeZdarz&>(nadawca).UstawObiekt(z.lista.Obiekty(0)); },
        [](TZdarzenia& z, TPole&) { z.lista.ZerujDane(); },
        [](TZdarzenia& z, TPole&) { z.lista.SkrocListe(3, false); },
        [](TZdarzenia& z, TPole&) {
            for (int i = 0; i < 50; ++i)
                z.lista.Dopisz().SetId(9);
        },
        [](TZdarzenia&, TPole&) { ZTErrorFmt(u"zdarzenie", {}); }, // from here on they raise
        [](TZdarzenia& z, TPole& nadawca) {
            z.Zwolnij(nadawca);
            ZTErrorFmt(u"zdarzenie", {});
        }};
    const TArgument pole[] = {TWezel::nrId};
    const TArgument dwa[] = {2};
    const std::function<void(TListaWezlow&)> usuwania[] = {
        [](TListaWezlow& l) { l.UsunObiekt(30, true, false); },
        [&](TListaWezlow& l) { l.UsunObiekty(pole, dwa, rlRozmLiterWazny); },
        [&](TListaWezlow& l) { l.UsunObiektyOprocz(pole, dwa, rlRozmLiterWazny); },
        [&](TListaWezlow& l) { l.UsunDuplikaty(pole, rlRozmLiterWazny); },
        [](TListaWezlow& l) {
            TListaWskObiektow te;
            te.DopiszDane(&l);
            te.SkrocListe(33, false);
            l.UsunTeObiekty(te, false);
        },
        [](TListaWezlow& l) { l.SkrocListe(2, false); },
        [](TListaWezlow& l) { l.ZerujDane(); }};
    const std::int64_t zajete = PulaZajete();
    for (std::size_t i = 0; i < std::size(skutki); ++i)
        for (const auto& usuwanie : usuwania) {
            SCOPED_TRACE(testing::Message() << i << ' ' << &usuwanie - usuwania);
            TZdarzenia z(skutki[i]);
            const std::u16string blad = testy::Blad([&] { usuwanie(z.lista); });
            EXPECT_EQ(blad.find(u"zdarzenie") != std::u16string::npos, i >= 8) << Utf8ZUtf16(blad);
            EXPECT_GT(z.byloZdarzen, 0);
            for (const auto& p : z.pola) {
                const TObiektBazowy* cel = p->Obiekt(); // alive, and it knows
                EXPECT_TRUE(cel == nullptr || (z.lista.ZnajdzObiekt(cel) >= 0 && cel->MaRefOd(p.get())));
            }
            z.skutek = nic;
        }
    EXPECT_EQ(PulaZajete(), zajete);
}

// What points at an object that is already dying is cleared when it is gone; what nobody ends leaves no trace.
TEST(Odniesienia, NicNieZostajePoObiekcie) {
    struct TUklad {
        TWezel* ginacy = nullptr;
        TPoleRefObiektu pozne;
        TListaRefObiektow poznaLista;
    } u;
    const TZdarzeniePola naGinacy = {[](void* dane, TPole& /*nadawca*/) {
                                         auto& uklad = *static_cast<TUklad*>(dane);
                                         uklad.pozne.UstawObiekt(uklad.ginacy);
                                         uklad.poznaLista.DodajObiekt(uklad.ginacy, 0);
                                     },
                                     &u};
    class TWezelSlad : public TWezel { // not of the plain end of life
        ZTOK_OBIEKT(TWezelSlad, TWezel)
        void ZerujDane() override { TWezel::ZerujDane(); }
    };
    for (const bool zwykly : {true, false}) {
        auto rodzic = zwykly ? Utworz<TWezel>() : TWlasny<TWezel>(Utworz<TWezelSlad>());
        u.ginacy = rodzic.get();
        TPoleRefZeZdarz naDziecko; // of the part, which dies within its owner's end
        naDziecko.OnZerujRefDo = naGinacy;
        naDziecko.UstawObiekt(&rodzic->GetDzieci().Dopisz());
        Zwolnij(rodzic.Oddaj());
        EXPECT_EQ(u.pozne.Obiekt(), nullptr);
        EXPECT_TRUE(u.poznaLista.ListaPusta());
    }
    { // two events that point each other's field at it again and again
        auto ginacy = Utworz<TWezel>();
        TPoleRefZeZdarz pola[2];
        for (int i = 0; i < 2; ++i) {
            pola[i].OnZerujRefDo = {[](void* drugie, TPole& nadawca) {
                                        static_cast<TPoleRefZeZdarz*>(drugie)->UstawObiekt(
                                            static_cast<TPoleRefZeZdarz&>(nadawca).Obiekt());
                                    },
                                    &pola[1 - i]};
            pola[i].UstawObiekt(ginacy.get());
        }
        Zwolnij(ginacy.Oddaj());
        EXPECT_EQ(pola[0].Obiekt(), nullptr);
        EXPECT_EQ(pola[1].Obiekt(), nullptr);
    }
    TWezel cel;
    {
        TPoleRefObiektu naStosie;
        naStosie.UstawObiekt(&cel);
        EXPECT_TRUE(cel.MaJakiesRef());
    }
    EXPECT_FALSE(cel.MaJakiesRef());
    TWezel inny;
    TPoleRefObiektu surowe;
    surowe.UstawObiekt(&cel);
    surowe.SetJakoVariant(surowe.GetJakoVariant()); // the same address changes nothing
    EXPECT_TRUE(cel.MaRefOd(&surowe));
    TPoleRefObiektu wzor;
    wzor.UstawObiekt(&inny);
    surowe.SetJakoString(wzor.GetJakoString()); // points, unregistered, and leaves no registration behind
    EXPECT_EQ(surowe.Obiekt(), &inny);
    EXPECT_FALSE(cel.MaJakiesRef() || inny.MaRefOd(&surowe));
}

} // namespace
