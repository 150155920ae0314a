// Lists: a random walk against a model, searches, enumerators, elements by text, comparison and copy.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <set>

#include "tests/Bledy.h"
#include "tests/Probki.h"

namespace {

using namespace ztok;
using probki::TAdres;
using probki::TListaAdresow;
using TArg = std::vector<TArgument>;
constexpr TRozmiarLiter kWazny = rlRozmLiterWazny;
using testy::Blad;
using testy::Zglasza;

std::set<const TObiektBazowy*> zywe;

class TKlucz : public TObiekt {
    ZTOK_OBIEKT(TKlucz, TObiekt, (0, Klucz, Integer), (1, Nazwa, String))
    void TworzSekcjeKrytyczna() override { zywe.insert(this); }
    void UsunSekcjeKrytyczna() override { zywe.erase(this); }
};
class TKluczPlus : public TKlucz {
    ZTOK_OBIEKT(TKluczPlus, TKlucz, (2, Dodatek, Integer))
};
class TListaKluczy : public TListaTypu<TKlucz> {
    ZTOK_LISTA(TListaKluczy, TKlucz)
};

// What a list is expected to hold, with the rules of capacity.
struct TModel {
    std::vector<TKlucz*> elementy;
    std::int32_t pojemnosc = 0;

    [[nodiscard]] std::int32_t Ile() const { return static_cast<std::int32_t>(elementy.size()); }
    [[nodiscard]] int Klucz(std::int32_t i) const { return elementy[static_cast<std::size_t>(i)]->GetKlucz(); }
    template <class F> [[nodiscard]] std::set<std::int32_t> Ktore(const F& wybrany) const {
        std::set<std::int32_t> ktore;
        for (std::int32_t i = 0; i < Ile(); ++i)
            if (wybrany(*this, i))
                ktore.insert(i);
        return ktore;
    }
    void Dodaj(TKlucz* o, std::int32_t gdzie) {
        if (Ile() == pojemnosc)
            pojemnosc += pojemnosc > 128 ? pojemnosc / 8 : pojemnosc >= 9 ? 16 : 4;
        elementy.insert(elementy.begin() + std::clamp(gdzie, 0, Ile()), o);
    }
    TKlucz* Usun(std::int32_t i, bool zachowaj) {
        if (i < 0 || i >= Ile())
            return nullptr;
        TKlucz* o = elementy[static_cast<std::size_t>(i)];
        elementy.erase(elementy.begin() + i);
        if (!zachowaj && pojemnosc >= 33 && pojemnosc - Ile() > pojemnosc / 4)
            pojemnosc = Ile() + Ile() / 8;
        return o;
    }
    // Removes many at once: a compaction that trims.
    bool UsunNiektore(const std::set<std::int32_t>& ktore, bool zachowaj) {
        std::vector<TKlucz*> reszta;
        for (std::int32_t i = 0; i < Ile(); ++i)
            if (ktore.count(i) == 0)
                reszta.push_back(elementy[static_cast<std::size_t>(i)]);
        elementy = reszta;
        if (!ktore.empty() && !zachowaj)
            pojemnosc = Ile();
        return !ktore.empty();
    }
    void Skroc(std::int32_t n, bool zachowaj) {
        n = std::max(n, 0);
        if (n < Ile())
            elementy.resize(static_cast<std::size_t>(n));
        if (!zachowaj)
            pojemnosc = n;
    }
};

enum class TRodzajListy { Wlasna, Kolekcja, Wsk, Ref };

class TChod {
  public:
    TChod(TRodzajListy rodzaj, std::uint32_t ziarno) : rodzaj_(rodzaj), los_(ziarno) {
        for (std::size_t i = 0; i < 2; ++i) {
            if (rodzaj == TRodzajListy::Wlasna)
                listy_[i] = Utworz<TListaKluczy>();
            else if (rodzaj == TRodzajListy::Kolekcja)
                listy_[i] = Utworz<TKolekcjaObiektow>();
            else if (rodzaj == TRodzajListy::Wsk)
                listy_[i] = Utworz<TListaWskObiektow>();
            else
                listy_[i] = Utworz<TListaRefObiektow>();
        }
        if (!Wlasciciel())
            for (int i = 0; i < 40; ++i)
                wolne_.push_back(Nowy());
    }

    void Krok() {
        const std::size_t ktora = Z(2);
        TListaBazowa& l = *listy_[ktora];
        TModel& m = modele_[ktora];
        const std::int32_t n = m.Ile();
        const auto indeks = [&] { return static_cast<std::int32_t>(Z(static_cast<std::uint32_t>(n) + 4)) - 2; };
        const bool zachowaj = Z(2) == 0;
        // Phases of 300 steps: the list grows long with few other operations, then shrinks among many.
        rosnie_ = faza_++ / 300 % 2 == 0;
        switch (Z(rosnie_ ? 400 : 34)) {
        case 0: {
            const std::int32_t dlugosc = Z(8) == 0 ? 0 : n - static_cast<std::int32_t>(Z(10)) + 2;
            l.SkrocListe(dlugosc, zachowaj);
            m.Skroc(dlugosc, zachowaj);
            break;
        }
        case 1: {
            const std::int32_t od = indeks();
            const std::int32_t gdzie = indeks();
            const bool dobre = od != gdzie && od >= 0 && od < n && gdzie >= 0 && gdzie < n;
            EXPECT_EQ(l.PrzeniesObiekt(od, gdzie), dobre);
            if (dobre) {
                TKlucz* o = m.elementy[static_cast<std::size_t>(od)];
                m.elementy.erase(m.elementy.begin() + od);
                m.elementy.insert(m.elementy.begin() + gdzie, o);
            }
            break;
        }
        case 2:
            if (n > 0) {
                const auto a = Z(static_cast<std::uint32_t>(n));
                const auto b = Z(static_cast<std::uint32_t>(n));
                l.ZamienObiekty(static_cast<std::int32_t>(a), static_cast<std::int32_t>(b));
                std::swap(m.elementy[a], m.elementy[b]);
            }
            break;
        case 3: { // of equal elements the first stays
            const auto ktore = m.Ktore([](const TModel& x, std::int32_t i) {
                return std::any_of(x.elementy.begin(), x.elementy.begin() + i,
                                   [&](const TKlucz* o) { return o->GetKlucz() == x.Klucz(i); });
            });
            EXPECT_EQ(l.UsunDuplikaty(Z(2) == 0 ? TArg{0} : TArg{}, kWazny), m.UsunNiektore(ktore, false));
            break;
        }
        case 4:
        case 5: {
            const auto klucz = static_cast<int>(Z(12));
            const bool oprocz = Z(6) == 0;
            const auto ktore =
                m.Ktore([&](const TModel& x, std::int32_t i) { return (x.Klucz(i) == klucz) != oprocz; });
            EXPECT_EQ(oprocz ? l.UsunObiektyOprocz(TArg{0}, TArg{klucz}, kWazny)
                             : l.UsunObiekty(TArg{0}, TArg{klucz}, kWazny),
                      m.UsunNiektore(ktore, false));
            break;
        }
        case 6: { // every occurrence from a pointer list, one from an owning list
            const auto te = Utworz<TListaWskObiektow>();
            for (int i = 0; n > 0 && i < 3; ++i)
                te->DodajObiekt(l.Obiekty(static_cast<std::int32_t>(Z(static_cast<std::uint32_t>(n)))), MaxInt);
            const auto ktore = m.Ktore([&](const TModel& x, std::int32_t i) {
                return te->ZnajdzObiekt(x.elementy[static_cast<std::size_t>(i)]) >= 0;
            });
            EXPECT_EQ(l.UsunTeObiekty(*te, zachowaj), m.UsunNiektore(ktore, zachowaj));
            break;
        }
        case 7:
            if (Z(8) == 0) {
                l.ZerujDane();
                m.Skroc(0, false);
            } else {
                const std::int32_t pojemnosc = n + static_cast<std::int32_t>(Z(50));
                l.UstawPojemnosc(pojemnosc);
                m.pojemnosc = pojemnosc;
            }
            break;
        case 8: { // between the lists
            TListaBazowa& z = *listy_[1 - ktora];
            TModel& mz = modele_[1 - ktora];
            if (mz.Ile() == 0)
                break;
            const auto skad = static_cast<std::int32_t>(Z(static_cast<std::uint32_t>(mz.Ile())));
            const std::int32_t dokad = indeks();
            TKlucz* o = mz.Usun(skad, false);
            EXPECT_EQ(l.PrzeniesZListy(z, skad, dokad), o);
            m.Dodaj(o, dokad);
            break;
        }
        case 9: {
            if (n == 0)
                break;
            // By identity from the end; by content from the end.
            const TKlucz* wzor = m.elementy[Z(static_cast<std::uint32_t>(n))];
            const bool tresc = Z(2) == 0;
            std::int32_t i = n - 1;
            while (tresc ? m.Klucz(i) != wzor->GetKlucz() : m.elementy[static_cast<std::size_t>(i)] != wzor)
                --i;
            TKlucz* o = m.Usun(i, false);
            EXPECT_EQ(tresc ? l.UsunTakiObiekt(*wzor, false) : l.UsunTenObiekt(wzor, false), o);
            Oddany(o);
            break;
        }
        case 10:
            if (!Wlasciciel()) { // a target dies
                const auto ktory = Z(static_cast<std::uint32_t>(wolne_.size()));
                TKlucz* o = wolne_[ktory].get();
                for (std::size_t j = 0; j < 2; ++j)
                    for (std::int32_t i = modele_[j].Ile() - 1; i >= 0; --i)
                        if (modele_[j].elementy[static_cast<std::size_t>(i)] == o) {
                            if (rodzaj_ == TRodzajListy::Wsk) // nobody tells a plain pointer list
                                listy_[j]->UsunObiekt(i, false, false);
                            modele_[j].Usun(i, false);
                        }
                wolne_[ktory] = Nowy();
            }
            break;
        default:
            if (Z(24) < (rosnie_ ? 20U : 6U)) {
                const std::int32_t gdzie = Z(3) == 0 ? MaxInt : indeks();
                TKlucz* o = nullptr;
                if (!Wlasciciel()) {
                    o = wolne_[Z(static_cast<std::uint32_t>(wolne_.size()))].get();
                    l.DodajObiekt(o, gdzie);
                } else if (rodzaj_ == TRodzajListy::Wlasna && Z(2) == 0) {
                    o = static_cast<TKlucz*>(l.DodajObiekt(nullptr, gdzie)); // makes the item itself
                    o->SetKlucz(static_cast<int>(Z(12)));
                } else {
                    o = static_cast<TKlucz*>(l.DodajObiekt(Nowy().Oddaj(), gdzie));
                }
                m.Dodaj(o, gdzie);
            } else {
                const std::int32_t i = indeks();
                const bool zwolnij = Z(2) == 0;
                if (Z(4) == 0 && (zwolnij || !Wlasciciel())) {
                    l.UstawNiepuste(i == -1 ? 0 : i, false); // as a field of its owner: element N goes
                    m.Usun(i == -1 ? 0 : i, false);
                    break;
                }
                TKlucz* o = m.Usun(i, zachowaj);
                EXPECT_EQ(l.UsunObiekt(i, zwolnij, zachowaj), zwolnij && Wlasciciel() ? nullptr : o);
                if (!zwolnij)
                    Oddany(o);
            }
        }
        Sprawdz();
    }

  private:
    [[nodiscard]] bool Wlasciciel() const {
        return rodzaj_ == TRodzajListy::Wlasna || rodzaj_ == TRodzajListy::Kolekcja;
    }
    std::uint32_t Z(std::uint32_t ile) { return static_cast<std::uint32_t>(los_() % ile); }
    TWlasny<TKlucz> Nowy() {
        TWlasny<TKlucz> o = Utworz<TKlucz>();
        o->SetKlucz(static_cast<int>(Z(12)));
        return o;
    }
    // An owning list gave the element back: without a parent, and the caller's to free.
    void Oddany(TKlucz* o) {
        if (o == nullptr || !Wlasciciel())
            return;
        EXPECT_EQ(o->Rodzic(), nullptr);
        Zwolnij(o);
    }
    void Sprawdz() {
        std::set<const TObiektBazowy*> oczekiwane;
        for (const auto& o : wolne_)
            oczekiwane.insert(o.get());
        for (std::size_t j = 0; j < 2; ++j) {
            const TListaBazowa& l = *listy_[j];
            const TModel& m = modele_[j];
            ASSERT_EQ(l.IleObiektow(), m.Ile());
            ASSERT_EQ(l.Pojemnosc(), m.pojemnosc);
            for (std::int32_t i = 0; i < m.Ile(); ++i) {
                ASSERT_EQ(l.Obiekty(i), m.elementy[static_cast<std::size_t>(i)]);
                if (Wlasciciel()) {
                    ASSERT_EQ(l.Obiekty(i)->Rodzic(), &l);
                    oczekiwane.insert(l.Obiekty(i));
                }
            }
            EXPECT_EQ(l.Obiekty(-1), nullptr);
            EXPECT_EQ(l.Obiekty(m.Ile()), nullptr);
            for (const auto& o : wolne_) {
                const bool jest = std::count(m.elementy.begin(), m.elementy.end(), o.get()) != 0;
                ASSERT_EQ(o->MaRefOd(&l), rodzaj_ == TRodzajListy::Ref && jest);
            }
        }
        ASSERT_EQ(zywe, oczekiwane); // nothing leaked, nothing freed too early
    }

    TRodzajListy rodzaj_;
    std::mt19937 los_;
    std::uint32_t faza_ = 0;
    bool rosnie_ = true;
    std::vector<TWlasny<TKlucz>> wolne_; // elements of pointer lists
    TWlasny<TListaBazowa> listy_[2];
    TModel modele_[2];
};

class ChodPoLiscie : public testing::TestWithParam<TRodzajListy> {};

TEST_P(ChodPoLiscie, ZgadzaSieZModelem) {
    for (std::uint32_t ziarno = 1; ziarno <= 6; ++ziarno) {
        SCOPED_TRACE(ziarno);
        {
            TChod chod(GetParam(), ziarno);
            for (int krok = 0; krok < 1500 && !testing::Test::HasFailure(); ++krok)
                chod.Krok();
        }
        EXPECT_TRUE(zywe.empty());
    }
}

INSTANTIATE_TEST_SUITE_P(Listy, ChodPoLiscie,
                         testing::Values(TRodzajListy::Wlasna, TRodzajListy::Kolekcja, TRodzajListy::Wsk,
                                         TRodzajListy::Ref));

class Listy : public testing::Test {
  protected:
    void SetUp() override { lista_ = Utworz<TListaKluczy>(); }
    TKlucz& Dodaj(int klucz, std::u16string_view nazwa = u"") {
        TKlucz& o = lista_->Dopisz();
        o.SetKlucz(klucz);
        o.SetNazwa(nazwa);
        return o;
    }
    void Wypelnij(std::initializer_list<int> klucze) {
        lista_->ZerujDane();
        for (const int klucz : klucze)
            Dodaj(klucz);
    }
    static std::vector<int> Klucze(const TListaBazowa& lista) {
        std::vector<int> wynik;
        for (const TObiektBazowy* o : lista)
            wynik.push_back(static_cast<const TKlucz*>(o)->GetKlucz());
        return wynik;
    }
    using V = std::vector<int>;
    TWlasny<TListaKluczy> lista_;
};

TEST_F(Listy, EnumeratoryIKrokiPojemnosci) {
    std::vector<std::int32_t> pojemnosci = {0};
    TListaWskObiektow wsk;
    for (int i = 0; i < 200; ++i) {
        wsk.DodajObiekt(lista_.get(), MaxInt);
        if (pojemnosci.back() != wsk.Pojemnosc())
            pojemnosci.push_back(wsk.Pojemnosc());
    }
    EXPECT_EQ(pojemnosci, (V{0, 4, 8, 12, 28, 44, 60, 76, 92, 108, 124, 140, 157, 176, 198, 222}));
    Wypelnij({1, 2, 3, 4, 5});
    EXPECT_EQ(Klucze(*lista_), (V{1, 2, 3, 4, 5}));
    V kolejnosc;
    for (TObiektBazowy* o : lista_->ListaOdKonca()) { // each is met once while the loop removes it
        kolejnosc.push_back(static_cast<TKlucz*>(o)->GetKlucz());
        lista_->UsunTenObiekt(o, true);
    }
    EXPECT_EQ(kolejnosc, (V{5, 4, 3, 2, 1}));
    Wypelnij({1, 2, 3, 4, 5, 6, 7, 8});
    TEnumListaBazowaOdKonca e = lista_->ListaOdKonca().GetEnumerator();
    ASSERT_TRUE(e.MoveNext());
    lista_->SkrocListe(3, false); // the list shrinks under the enumerator
    for (const int klucz : {3, 2, 1}) {
        ASSERT_TRUE(e.MoveNext());
        EXPECT_EQ(static_cast<TKlucz*>(e.GetCurrent())->GetKlucz(), klucz);
    }
    EXPECT_FALSE(e.MoveNext());
    TEnumListaObiektow<TKlucz> naprzod = lista_->GetEnumerator();
    EXPECT_EQ(naprzod.GetCurrent(), nullptr);
    while (naprzod.MoveNext())
        EXPECT_NE(naprzod.GetCurrent(), nullptr);
    EXPECT_EQ(naprzod.GetCurrent(), (*lista_)[2]);
}

TEST_F(Listy, WyszukiwanieLiniowe) {
    Wypelnij({7, 1, 7, 2, 7});
    struct {
        bool inny;
        int klucz;
        TRodzajWyszukiwania jak;
        std::int32_t od;
        bool jest;
        std::int32_t gdzie;
    } const tabela[] = {
        {false, 7, rwOdKonca, MaxInt, true, 4},   {false, 7, rwOdPoczatku, MaxInt, true, 0},
        {false, 7, rwOdKonca, 3, true, 2},        {false, 7, rwOdPoczatku, 1, true, 2},
        {false, 9, rwOdKonca, MaxInt, false, -1}, {false, 9, rwOdPoczatku, MaxInt, false, 5},
        {true, 7, rwOdKonca, MaxInt, true, 3},    {true, 7, rwOdPoczatku, MaxInt, true, 1},
        {false, 2, rwOdKonca, 2, false, -1},      {true, 7, static_cast<TRodzajWyszukiwania>(2), MaxInt, false, 77},
    };
    for (const auto& t : tabela) {
        const TArg klucz = {t.klucz};
        std::int32_t gdzie = 77;
        EXPECT_EQ(t.inny ? lista_->JestInnyObiekt(TArg{0}, klucz, gdzie, kWazny, t.jak, t.od)
                         : lista_->JestObiekt(TArg{0}, klucz, gdzie, kWazny, t.jak, t.od),
                  t.jest);
        EXPECT_EQ(gdzie, t.gdzie) << t.klucz << " " << t.od;
    }
    EXPECT_TRUE(lista_->JestInnyObiekt(TArg{0}, TArg{7}));
    const auto wzor = Utworz<TKlucz>();
    wzor->SetKlucz(7);
    wzor->SetNazwa(u"inna");
    std::int32_t gdzie = 0;
    EXPECT_TRUE(lista_->JestObiektTakiJak(*wzor, TArg{0}, gdzie));
    EXPECT_EQ(gdzie, 4);
    EXPECT_FALSE(lista_->JestTakiObiekt(*wzor, gdzie, rwOdPoczatku));
    EXPECT_EQ(gdzie, 5);
    EXPECT_EQ(lista_->DopiszObiektGdyBrak(wzor.get(), TArg{0}, kWazny), (*lista_)[4]);
    // A value of 0 and a field that was never written are the same; so are letters, when case does not count.
    lista_->Dopisz().SetNazwa(u"ABC");
    EXPECT_FALSE(lista_->JestObiekt(TArg{0, u"Nazwa"}, TArg{0, u"abc"}));
    EXPECT_TRUE(lista_->JestObiekt(TArg{0, u"Nazwa"}, TArg{0, u"abc"}, gdzie, rlRozmLiterNiewazny));
    // Adding what is missing keeps the order; what is there comes back.
    lista_->ZerujDane();
    std::mt19937 los(3);
    std::set<int> model;
    for (int i = 0; i < 200; ++i) {
        const int klucz = static_cast<int>(los() % 60);
        model.insert(klucz);
        TObiektBazowy* o = lista_->DodajObiektGdyBrak(TArg{0}, TArg{klucz}, kWazny, rsRosnaco, gdzie);
        EXPECT_EQ(lista_->Obiekty(gdzie), o);
        EXPECT_EQ(gdzie, std::distance(model.begin(), model.find(klucz)));
    }
    EXPECT_EQ(Klucze(*lista_), V(model.begin(), model.end()));
    TObiektBazowy* nowy = lista_->DopiszObiektGdyBrak(TArg{1}, TArg{u"dopisana"}, kWazny, rwOdPoczatku, gdzie);
    EXPECT_EQ(lista_->DopiszObiektGdyBrak(TArg{1}, TArg{u"dopisana"}), nowy);
    EXPECT_EQ(lista_->ZnajdzObiekt(nowy), gdzie);
}

TEST_F(Listy, ElementWedlugTekstu) {
    Dodaj(1, u"Ala");
    Dodaj(2, u"Jan; Kowalski");
    Dodaj(1, u"Ola");
    Dodaj(3, u"a=b");
    const std::pair<std::u16string_view, std::int32_t> tabela[] = {// index; -1: none
                                                                   {u"Max", 3},
                                                                   {u"mAX", 3},
                                                                   {u"0", 0},
                                                                   {u"3", 3},
                                                                   {u"4", -1},
                                                                   {u"-1", -1},
                                                                   {u"Klucz=1", 2},
                                                                   {u"KLUCZ=1;", 2},
                                                                   {u"Klucz=1;nazwa=Ala", 0},
                                                                   {u"Klucz=2;Nazwa='Jan; Kowalski'", 1},
                                                                   {u"Nazwa='Jan; Kowalski';Klucz=2", 1},
                                                                   {u"Nazwa=a=b", 3},
                                                                   {u"Nazwa='a=b';", 3},
                                                                   {u"Nazwa=ala", -1},
                                                                   {u"Klucz=1;tekst bez znaku", 2},
                                                                   {u"Klucz=", -1},
                                                                   {u"=5", -1},
                                                                   {u"Klucz=1;=2", -1},
                                                                   {u"Klucz=1;Nazwa=", -1},
                                                                   {u"Nazwa='Ala", -1},
                                                                   {u"Nazwa='Ala'x", -1},
                                                                   {u"Nazwa='Ala'x;Klucz=1", -1},
                                                                   {u"", -1},
                                                                   {u"Klucz", -1},
                                                                   {u";", -1},
                                                                   {u"Nieznane=1", -1},
                                                                   {u"Klucz=9", -1}};
    for (const auto& [opis, indeks] : tabela)
        EXPECT_EQ(lista_->DajElemListy(opis, false), lista_->Obiekty(indeks)) << testing::PrintToString(opis);
    EXPECT_EQ(Utworz<TListaKluczy>()->DajElemListy(u"Max", true), nullptr);
    const auto* nowy = static_cast<TKlucz*>(lista_->DajElemListy(u"Nazwa='Nowa';Klucz=8", true));
    ASSERT_EQ(nowy, (*lista_)[4]);
    EXPECT_EQ(nowy->GetKlucz(), 8);
    EXPECT_EQ(nowy->GetNazwa(), u"Nowa");
    EXPECT_EQ(TListaWskObiektow().DajElemListy(u"Klucz=1", true), nullptr); // only a list that makes items creates one

    struct {
        std::u16string_view sciezka;
        bool wynik;
        std::u16string_view numer;
        std::u16string_view reszta;
    } const sciezki[] = {{u"[3].Nazwa", true, u"3", u"Nazwa"},
                         {u"[3]Nazwa", true, u"3", u"Nazwa"},
                         {u"[3]..Nazwa", true, u"3", u".Nazwa"},
                         {u"Nazwa", false, u"?", u"Nazwa"},
                         {u"[3", false, u"?", u"[3"},
                         {u"[]", true, u"", u""},
                         {u"[a=b]", true, u"a=b", u""},
                         {u"", false, u"?", u""},
                         {u"x[3]", false, u"?", u"x[3]"}};
    for (const auto& s : sciezki) {
        std::u16string_view sciezka = s.sciezka;
        std::u16string_view numer = u"?";
        EXPECT_EQ(TListaBazowa::WydzielNumerElem(sciezka, numer), s.wynik);
        EXPECT_EQ(numer, s.numer);
        EXPECT_EQ(sciezka, s.reszta);
    }
}

TEST_F(Listy, JakoPoleWlasciciela) {
    Wypelnij({1, 2, 3});
    lista_->Dopisz(); // an element without values
    const bool niepuste[] = {true, true, true, true, false, false};
    for (int nr = -1; nr <= 4; ++nr) {
        EXPECT_EQ(lista_->PoleNiepuste(nr), niepuste[nr + 1]) << nr;
        EXPECT_EQ(lista_->PoleDoZapisu(nr), niepuste[nr + 1]) << nr;
    }
    lista_->UstawNiepuste(1, true);
    EXPECT_EQ(lista_->WartWgMaski(u"*") + lista_->OpisTekstowy(), u"44 elem.");
    lista_->WpiszDaneDoPol(TArg{1}, TArg{u"w"}); // into every element; one without fields is an error
    EXPECT_EQ((*lista_)[3]->GetNazwa(), u"w");
    lista_->UstawNiepuste(-1, false);
    EXPECT_FALSE(lista_->PoleNiepuste(-1));
    EXPECT_TRUE(zywe.empty());
    TKolekcjaObiektow kolekcja;
    kolekcja.Dodaj(Utworz<TListaAdresow>());
    EXPECT_TRUE(Zglasza<EBladRzutowania>([&] { kolekcja.WpiszDaneDoPol(TArg{1}, TArg{u"w"}); }));
    TListaBazowa baza;
    EXPECT_EQ(Blad<ZTException>([&] { baza.WyrownajDoListy(*lista_, false); }),
              u"Brak wyrównania do listy w TListaBazowa");
    EXPECT_TRUE(Zglasza<EBladAbstrakcyjny>([&] { baza.UsunDuplikaty({}, kWazny); }));
}

TEST_F(Listy, WlasnoscElementow) {
    TKlucz obcy;
    obcy.SetKlucz(5);
    auto* kopia = static_cast<TKlucz*>(lista_->DopiszObiekt(&obcy, MaxInt));
    EXPECT_NE(kopia, &obcy);
    EXPECT_EQ(kopia->GetKlucz(), 5);
    EXPECT_EQ(obcy.Rodzic(), nullptr);
    lista_->PrzypnijObiekt(Utworz<TKluczPlus>().Oddaj()); // a derived class fits
    EXPECT_EQ((*lista_)[1]->Rodzic(), lista_.get());
    const auto zywych = zywe.size();
    EXPECT_TRUE(Zglasza<EBladRzutowania>([&] { lista_->DodajObiekt(Utworz<TAdres>().Oddaj(), 0); }));
    EXPECT_EQ(zywe.size(), zywych);
    TKolekcjaObiektow kolekcja;
    EXPECT_EQ(kolekcja.DopiszObiekt((*lista_)[1], 0)->Klasa(), TKluczPlus::KlasaStatyczna());
    EXPECT_EQ(kolekcja.DodajObiekt(nullptr, 0), nullptr);       // no item class: null is null
    EXPECT_EQ(kolekcja.PrzeniesZListy(*lista_, 7, 0), nullptr); // a bad index gives null too
    EXPECT_EQ(kolekcja.IleObiektow(), 3);
    kolekcja.UsunObiektyNil(false);
    EXPECT_EQ(kolekcja.Pojemnosc(), 1);
    class TListaPlusow : public TListaTypu<TKluczPlus> {
        ZTOK_LISTA(TListaPlusow, TKluczPlus)
    };
    EXPECT_TRUE(lista_->MoznaKopiowacZListy(*lista_));
    EXPECT_TRUE(lista_->MoznaKopiowacZListy(TListaPlusow::KlasaStatyczna()));
    EXPECT_TRUE(TListaPlusow().MoznaKopiowacZListy(*lista_));
    EXPECT_FALSE(lista_->MoznaKopiowacZListy(TListaAdresow::KlasaStatyczna()));
    EXPECT_FALSE(lista_->MoznaKopiowacZListy(TKolekcjaObiektow::KlasaStatyczna()));
    // Aligning makes fresh items, or frees the surplus; in a pointer list the new places are empty.
    TListaWskObiektow wzor;
    wzor.DodajObiekt(&obcy, 0);
    TListaWskObiektow puste;
    puste.WyrownajDoListy(wzor, false);
    EXPECT_EQ(puste.IleObiektow(), 1);
    EXPECT_EQ(puste.Obiekty(0), nullptr);
    for (const std::int32_t ile : {6, 1}) {
        wzor.SkrocListe(1, false);
        while (wzor.IleObiektow() < ile)
            wzor.DodajObiekt(&obcy, 0);
        lista_->WyrownajDoListy(wzor, ile == 1);
        EXPECT_EQ(lista_->IleObiektow(), ile);
        EXPECT_EQ(lista_->Pojemnosc(), 6);
        EXPECT_EQ((*lista_)[0], kopia);
        EXPECT_EQ((*lista_)[ile - 1]->Rodzic(), lista_.get());
    }
}

TEST_F(Listy, BladPorownaniaNieZostawiaDziur) {
    // The text "x" is no number: asking for Nazwa = 5 fails on that element, which the walk from the end meets in the
    // middle.
    const auto usun = [](TListaBazowa& lista) {
        return Zglasza<EBladWariantu>([&] { lista.UsunObiekty(TArg{1}, TArg{5}, kWazny); });
    };
    std::vector<TWlasny<TKlucz>> obiekty;
    for (const std::u16string_view nazwa : {u"5", u"x", u"7", u"5"}) {
        obiekty.push_back(Utworz<TKlucz>());
        obiekty.back()->SetNazwa(nazwa);
        Dodaj(0, nazwa);
    }
    {
        TListaWskObiektow wsk;
        TListaRefObiektow ref;
        for (TListaBazowa* l : {static_cast<TListaBazowa*>(&wsk), static_cast<TListaBazowa*>(&ref)}) {
            for (const auto& o : obiekty)
                l->DodajObiekt(o.get(), MaxInt);
            EXPECT_TRUE(usun(*l));
            for (std::int32_t i = 0; i < 4; ++i) { // as they were
                EXPECT_EQ(l->Obiekty(i), obiekty[static_cast<std::size_t>(i)].get());
                EXPECT_EQ(l->Obiekty(i)->MaRefOd(l), l == &ref);
            }
        }
    }
    EXPECT_TRUE(usun(*lista_));
    ASSERT_EQ(lista_->IleObiektow(), 3); // freed elements are gone, without a hole
    EXPECT_EQ((*lista_)[2]->GetNazwa(), u"7");
    // Objects of classes that do not compare.
    const auto kolekcja = Utworz<TKolekcjaObiektow>();
    kolekcja->Dodaj(Utworz<TAdres>());
    kolekcja->Dodaj(Utworz<TListaAdresow>());
    kolekcja->Dodaj(Utworz<TKlucz>());
    kolekcja->Dodaj(Utworz<TAdres>());
    EXPECT_TRUE(Zglasza<EBladRzutowania>([&] { kolekcja->UsunDuplikaty({}, rlRozmLiterWazny); }));
    for (std::int32_t i = 0; i < kolekcja->IleObiektow(); ++i)
        EXPECT_NE(kolekcja->Obiekty(i), nullptr);
}

TEST_F(Listy, ZbiorWPorzadkuAdresow) {
    std::vector<TWlasny<TKlucz>> obiekty;
    for (int i = 0; i < 30; ++i)
        obiekty.push_back(Utworz<TKlucz>());
    const auto zbior = Utworz<TListaRefObiektow>();
    std::set<TKlucz*> model;
    std::mt19937 los(5);
    EXPECT_FALSE(zbior->DolaczObiektGdyBrak(nullptr));
    for (int i = 0; i < 100; ++i) {
        TKlucz* o = obiekty[los() % obiekty.size()].get();
        EXPECT_EQ(zbior->DolaczObiektGdyBrak(o), model.insert(o).second);
        const auto* pytany = obiekty[los() % obiekty.size()].get();
        std::int32_t gdzie = -1;
        EXPECT_EQ(zbior->WyszukajTenObiekt(pytany, gdzie), model.count(const_cast<TKlucz*>(pytany)) == 1);
        EXPECT_EQ(gdzie, std::distance(model.begin(), model.lower_bound(const_cast<TKlucz*>(pytany))));
    }
    std::int32_t i = 0;
    for (TKlucz* o : model)
        EXPECT_EQ(zbior->Obiekty(i++), o);
}

TEST_F(Listy, PorownanieIKopia) {
    const auto druga = Utworz<TListaKluczy>();
    const std::vector<std::vector<int>> listy = {{}, {1}, {1, 2}, {1, 3}, {1, 2, 3}, {2}};
    for (const auto& a : listy)
        for (const auto& b : listy) {
            lista_->ZerujDane();
            druga->ZerujDane();
            for (const int klucz : a)
                Dodaj(klucz);
            for (const int klucz : b)
                druga->Dopisz().SetKlucz(klucz);
            // The shorter list comes first, whatever it holds.
            const int wynik = a.size() != b.size() ? (a.size() < b.size() ? -1 : 1) : a < b ? -1 : a == b ? 0 : 1;
            EXPECT_EQ(lista_->Porownaj(*druga), wynik);
            druga->KopiujDane(*lista_);
            EXPECT_EQ(Klucze(*druga), a);
            EXPECT_EQ(druga->Porownaj(*lista_), 0);
            for (TKlucz* o : *druga)
                EXPECT_EQ(o->Rodzic(), druga.get());
        }
    // A collection compares classes too, and a copy keeps the elements whose class fits.
    TKolekcjaObiektow ka;
    TKolekcjaObiektow kb;
    ka.Dodaj(Utworz<TAdres>());
    ka.Dodaj(Utworz<TKlucz>());
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(ka.Porownaj(kb), 1); // shorter, or with elements of other classes
        kb.Dodaj(Utworz<TKlucz>());
    }
    const TObiektBazowy* zostaje = kb.Obiekty(1);
    EXPECT_EQ(ka.Porownaj(kb), -1);
    kb.KopiujDane(ka);
    EXPECT_EQ(kb.IleObiektow(), 2);
    EXPECT_EQ(kb.Obiekty(0)->Klasa(), TAdres::KlasaStatyczna());
    EXPECT_EQ(kb.Obiekty(0)->Rodzic(), &kb);
    EXPECT_EQ(kb.Obiekty(1), zostaje);
    EXPECT_EQ(ka.Porownaj(kb), 0);
}

// Lists may hook how elements come in; reading goes through the hook.
class TListaZHakiem : public TListaTypu<TKlucz> {
    ZTOK_LISTA(TListaZHakiem, TKlucz)
    TObiektBazowy* DodajObiekt(TObiektBazowy* nowy, std::int32_t gdzie) override {
        ++dodanych;
        return TListaTypu::DodajObiekt(nowy, gdzie);
    }
    int dodanych = 0;
};

TEST_F(Listy, OdczytDodajeJakLista) {
    Wypelnij({3, 1, 2});
    TZTMemoryStream strumien;
    lista_->ZapiszWStrumieniu(strumien);
    strumien.Seek(0, ESeek::Poczatek);
    TListaZHakiem odczytana;
    odczytana.Dopisz();
    odczytana.dodanych = 0;
    odczytana.WczytajZeStrumienia(strumien);
    EXPECT_EQ(odczytana.dodanych, 3);
    EXPECT_EQ(Klucze(odczytana), (V{3, 1, 2})); // the old elements are gone
}

TEST_F(Listy, OproznienieDuzejListyReferencji) {
    // Quadratic work would take a minute here.
    std::vector<TWlasny<TKlucz>> obiekty;
    TListaRefObiektow a;
    TListaRefObiektow b;
    for (int i = 0; i < 200000; ++i) {
        obiekty.push_back(Utworz<TKlucz>());
        a.DodajObiekt(obiekty.back().get(), MaxInt);
    }
    for (int raz = 0; raz < 2; ++raz)
        b.KopiujDane(a);
    a.SkrocListe(100000, false);
    EXPECT_TRUE(obiekty[99999]->MaRefOd(&a) && obiekty[7]->MaRefOd(&b));
    EXPECT_FALSE(obiekty[100000]->MaRefOd(&a));
    b.ZerujDane();
    EXPECT_FALSE(obiekty[100000]->MaJakiesRef());
}

} // namespace
