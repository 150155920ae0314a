// Sorting, searching of sorted lists, and filling of lists from one another, against straightforward models.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/Bledy.h"
#include "tests/Probki.h"
#include "ztok/platform/TListaNapisow.h"

namespace {

using namespace ztok;
using probki::TAdres;
using probki::TListaAdresow;
using probki::TListaWszystkich;
using probki::TWszystko;
using testy::Blad;

using TElementy = std::vector<TObiektBazowy*>;
using TArg = std::vector<TArgument>;
constexpr TRozmiarLiter kWazny = rlRozmLiterWazny;

TElementy Elementy(const TListaBazowa& lista) {
    TElementy wynik;
    for (TObiektBazowy* o : lista)
        wynik.push_back(o);
    return wynik;
}

using V = std::vector<int>;
V Numery(const TListaBazowa& lista) {
    V wynik;
    for (TObiektBazowy* o : lista)
        wynik.push_back(static_cast<TAdres*>(o)->GetNumer());
    return wynik;
}

// The rules of the sort, word by word: the pivot is an object, equal elements are exchanged, left part first.
template <class F> bool SortModelu(TElementy& e, std::ptrdiff_t l, std::ptrdiff_t r, const F& porownaj) {
    bool zmiana = false;
    while (l < r) {
        const auto at = [&e](std::ptrdiff_t i) { return e.begin() + i; };
        const TObiektBazowy* os = *at((l + r) / 2);
        std::ptrdiff_t i = l;
        std::ptrdiff_t j = r;
        do {
            for (; porownaj(*at(i), os) < 0; ++i) {
            }
            for (; porownaj(*at(j), os) > 0; --j) {
            }
            if (i <= j) {
                zmiana = zmiana || i != j;
                std::iter_swap(at(i++), at(j--));
            }
        } while (i <= j);
        if (j > l)
            zmiana = SortModelu(e, l, j, porownaj) || zmiana;
        l = i;
    }
    return zmiana;
}

int Znak(std::int64_t a, std::int64_t b) { return a < b ? -1 : static_cast<int>(a > b); }

std::int16_t WgNumeru(const TObiektBazowy& a, const TObiektBazowy& b) {
    return static_cast<std::int16_t>(
        Znak(static_cast<const TAdres&>(a).GetNumer(), static_cast<const TAdres&>(b).GetNumer()));
}

std::mt19937 losPorownan(17);
std::int16_t JakPopadnie(const TObiektBazowy& /*a*/, const TObiektBazowy& /*b*/) {
    return static_cast<std::int16_t>(static_cast<int>(losPorownan() % 3) - 1);
}
template <int Zawsze> std::int16_t Stale(const TObiektBazowy& /*a*/, const TObiektBazowy& /*b*/) { return Zawsze; }

class Sortowanie : public ::testing::Test {
  protected:
    void SetUp() override { probki::Rejestruj(); }
};

TEST_F(Sortowanie, KolejnoscZamianJakWModelu) {
    std::mt19937 los(7);
    for (int proba = 0; proba < 4000; ++proba) {
        TListaAdresow lista;
        const int ile = static_cast<int>(los() % 24);
        const auto rozne = static_cast<std::int32_t>(1 + los() % 12);
        for (int i = 0; i < ile; ++i) {
            TAdres& a = lista.Dopisz();
            if (los() % 4 != 0) // a missing number is the number zero
                a.SetNumer(static_cast<std::int32_t>(los() % 12) % rozne - (proba % 5 == 0 ? 2 : 0));
            if (los() % 2 == 0)
                a.SetUlica(los() % 2 == 0 ? u"a" : u"B");
        }
        TElementy model = Elementy(lista);
        bool zmiana = false;
        const auto numer = [](const TObiektBazowy* o) { return static_cast<const TAdres*>(o)->GetNumer(); };
        const auto ulica = [](const TObiektBazowy* o) { return static_cast<const TAdres*>(o)->GetUlica(); };
        const TArg pola = {1, u"uLICA"};
        switch (proba % 5) {
        case 0:
            zmiana = SortModelu(model, 0, ile - 1, [](auto* a, auto* b) { return WgNumeru(*a, *b); });
            ASSERT_EQ(lista.PosortujWgFun(&WgNumeru), zmiana);
            break;
        case 1: // no function: the whole content, street first
            zmiana = SortModelu(model, 0, ile - 1, [&](auto* a, auto* b) { return a->Porownaj(*b); });
            ASSERT_EQ(lista.PosortujWgFun(), zmiana);
            break;
        case 2:   // descending by number, ascending by the path; the lone path counts when it is there at all
        case 3: { // the last direction goes on
            const bool obie = proba % 5 == 3;
            const TRodzajSortowania trzy[] = {rsMalejaco, rsRosnaco, rsMalejaco};
            const std::span<const TRodzajSortowania> kierunki(trzy, obie ? 1 : 3);
            const auto ranga = [&](auto* o) { return ulica(o) == u"a" ? 2 : static_cast<int>(!ulica(o).empty()); };
            zmiana = SortModelu(model, 0, ile - 1, [&](auto* a, auto* b) {
                const int wynik = Znak(numer(b), numer(a));
                return wynik != 0 ? wynik : obie ? Znak(ranga(b), ranga(a)) : Znak(ranga(a), ranga(b));
            });
            ASSERT_EQ(obie && proba % 2 == 0 ? lista.PosortujWgPol(pola, kWazny, rsMalejaco)
                                             : lista.PosortujWgPol(pola, kierunki),
                      zmiana);
            ASSERT_TRUE(lista.ListaMaPosortowanie(pola, kierunki));
            ASSERT_EQ(lista.ListaMaPosortowanie(TArg{1}, {}),
                      std::all_of(model.begin(), model.end(), [&](auto* o) { return numer(o) == numer(model[0]); }));
            break;
        }
        default: // answers that contradict each other: it ends, and every element is still there once
            lista.PosortujWgFun(proba % 3 == 0 ? &JakPopadnie : proba % 3 == 1 ? &Stale<-1> : &Stale<1>);
            TElementy potem = Elementy(lista);
            std::sort(potem.begin(), potem.end());
            std::sort(model.begin(), model.end());
            ASSERT_EQ(potem, model);
            continue;
        }
        ASSERT_EQ(Elementy(lista), model) << proba;
    }
}

TEST_F(Sortowanie, KluczeZeSciezekIBrakujacePola) {
    TListaWszystkich lista;
    for (int i = 0; i < 6; ++i) {
        TWszystko& o = lista.Dopisz();
        o.SetI(i);
        if (i % 2 == 0)
            o.GetAdres().SetNumer(10 - i);
        else if (i == 3)
            o.GetAdres(); // made, without a number
    }
    const auto kolejnosc = [&] {
        V wynik;
        for (TObiektBazowy* o : lista)
            wynik.push_back(static_cast<TWszystko*>(o)->GetI());
        return wynik;
    };
    const TArg sciezka = {u"Adres.Numer", u"I"};
    EXPECT_TRUE(lista.PosortujWgPol(sciezka));
    EXPECT_EQ(kolejnosc(), (V{1, 3, 5, 4, 2, 0}));
    EXPECT_FALSE(lista.PosortujWgPol(sciezka));
    EXPECT_TRUE(lista.PosortujWgPol(sciezka, rsMalejaco));
    EXPECT_EQ(kolejnosc(), (V{0, 2, 4, 5, 3, 1}));
    // A field at its default equals a missing one; a kind that names no field is refused before anything moves.
    static_cast<TWszystko*>(lista.Obiekty(0))->SetS(0);
    EXPECT_TRUE(lista.ListaMaPosortowanie(TArg{1}, {}));
    static_cast<TWszystko*>(lista.Obiekty(5))->SetS(-1); // a missing one comes before any other value
    EXPECT_TRUE(lista.ListaMaPosortowanie(TArg{1}, {}));
    for (const TArgument& zly :
         {TArgument(2.5), TArgument(true), TArgument(u'c'), TArgument(nullptr), TArgument(std::int64_t{3})})
        EXPECT_EQ(Blad([&] { lista.PosortujWgPol(TArg{3, zly}); }), u"PWP: Błędny typ indeksu");
    EXPECT_EQ(kolejnosc(), (V{0, 2, 4, 5, 3, 1}));
    EXPECT_TRUE(lista.PosortujWgPol(TArg{std::string("i")})); // 8-bit names too

    // Letter case as asked; slots without an object come first and are no reason to fall.
    TListaAdresow adresy;
    for (const char16_t* ulica : {u"b", u"B", u"a", u"A"})
        adresy.Dopisz().SetUlica(ulica);
    EXPECT_TRUE(adresy.PosortujWgPol(TArg{0}, rlRozmLiterNiewazny, rsRosnaco));
    EXPECT_TRUE(adresy.ListaMaPosortowanie(TArg{0}, {}, rlRozmLiterNiewazny));
    TListaWskObiektow wsk;
    wsk.DodajObiekt(adresy.Obiekty(3), MaxInt);
    wsk.DodajObiekt(adresy.Obiekty(0), MaxInt);
    wsk.WyrownajDoListy(adresy, false);
    EXPECT_TRUE(wsk.PosortujWgPol(TArg{0}));
    EXPECT_EQ(Elementy(wsk), (TElementy{nullptr, nullptr, adresy.Obiekty(3), adresy.Obiekty(0)}));
    EXPECT_FALSE(wsk.PosortujWgFun(&Stale<0>) && wsk.Obiekty(0) != nullptr);
}

TEST_F(Sortowanie, BisekcjaIZakresyJakPrzeglad) {
    std::mt19937 los(3);
    for (int proba = 0; proba < 3000; ++proba) {
        TListaAdresow lista;
        V numery(los() % 12);
        for (int& n : numery)
            n = static_cast<int>(los() % 8) * 2;
        std::sort(numery.begin(), numery.end());
        const bool malejaco = proba % 2 != 0;
        if (malejaco)
            std::reverse(numery.begin(), numery.end());
        for (const int n : numery)
            if (TAdres& adres = lista.Dopisz(); n != 0 || proba % 3 != 0) // by number, a missing one is zero
                adres.SetNumer(n);
        const TRodzajSortowania kierunek = malejaco ? rsMalejaco : rsRosnaco;
        const TArg pola = proba % 3 == 0 ? TArg{1} : TArg{u"Numer"};
        for (int szukany = 0; szukany <= 15; ++szukany) {
            const auto przed = [&](int n) { return malejaco ? n > szukany : n < szukany; };
            const auto od = static_cast<std::int32_t>(std::count_if(numery.begin(), numery.end(), przed));
            const auto ile = static_cast<std::int32_t>(std::count(numery.begin(), numery.end(), szukany));
            TAdres wzor;
            wzor.SetNumer(szukany);
            TListaWskObiektow zPustymi; // empty slots come first, as after a sort
            for (int pustych = proba % 4; pustych > 0; --pustych)
                zPustymi.DodajObiekt(nullptr, 0);
            zPustymi.DopiszDane(&lista);
            for (const TListaBazowa* l : std::initializer_list<const TListaBazowa*>{&lista, &zPustymi}) {
                const std::int32_t przesuniecie = l->IleObiektow() - lista.IleObiektow();
                ASSERT_TRUE(l->ListaMaPosortowanie(TArg{1}, {&kierunek, 1}));
                std::int32_t gdzie = -7;
                std::int32_t ostatni = -7;
                ASSERT_EQ(l->WyszukajWgPol(wzor, pola, gdzie, kWazny, kierunek), ile != 0);
                ASSERT_EQ(gdzie, przesuniecie + od);
                ASSERT_EQ(l->WyszukajWgPol(wzor, TArg{1}, kWazny, kierunek), ile != 0);
                ASSERT_EQ(l->WyszukajWgPol(TArg{1}, TArg{szukany}, kWazny, kierunek), ile != 0);
                ASSERT_EQ(l->WyszukajZakres(TArg{1}, TArg{szukany}, gdzie, ostatni, kWazny, kierunek), ile != 0);
                ASSERT_EQ(gdzie, przesuniecie + od);
                ASSERT_EQ(ostatni, przesuniecie + (ile == 0 ? od : od + ile - 1));
            }
        }
    }
    TListaAdresow lista; // a value between the elements
    for (const int n : {1, 2, 2, 2, 3})
        lista.Dopisz().SetNumer(n);
    std::int32_t od = -1;
    std::int32_t doKtorego = -1;
    EXPECT_FALSE(lista.WyszukajZakres(TArg{1}, TArg{2.5}, od, doKtorego));
    EXPECT_EQ(od, 4);
    EXPECT_EQ(doKtorego, 4);
}

// An owning list's elements have it as parent; a reference list's are registered, and only they.
void Niezmienniki(const std::vector<TListaBazowa*>& listy, const TElementy& obiekty) {
    for (TObiektBazowy* o : obiekty)
        for (TListaBazowa* lista : listy) {
            const bool jest = lista->ZnajdzObiekt(o) >= 0;
            if (lista->Klasa()->Ma(ckListaZObiektami)) {
                ASSERT_EQ(o->Rodzic() == lista, jest);
            }
            ASSERT_EQ(o->MaRefOd(lista), jest && lista->Klasa()->Ma(ckListaRef));
        }
}

TEST_F(Sortowanie, PrzenoszenieMiedzyListami) {
    std::mt19937 los(5);
    for (int proba = 0; proba < 300; ++proba) {
        TListaAdresow a;
        TListaAdresow b;
        TKolekcjaObiektow kolekcja;
        TListaWskObiektow wsk;
        TListaRefObiektow ref1;
        TListaRefObiektow ref2;
        const std::vector<TListaBazowa*> wlasne = {&a, &b, &kolekcja};
        const std::vector<TListaBazowa*> obce = {&wsk, &ref1, &ref2};
        const std::vector<TListaBazowa*> wszystkie = {&a, &b, &kolekcja, &wsk, &ref1, &ref2};
        TElementy obiekty;
        for (int i = 0; i < 8; ++i) {
            TAdres& o = a.Dopisz();
            o.SetNumer(i % 3);
            obiekty.push_back(&o);
            for (TListaBazowa* lista : obce)
                for (auto n = los() % 3; n > 0; --n)
                    lista->DodajObiekt(&o, static_cast<std::int32_t>(los() % 9));
        }
        for (int krok = 0; krok < 40; ++krok) {
            const auto& grupa = los() % 2 == 0 ? wlasne : obce;
            TListaBazowa& cel = *grupa[los() % 3];
            TListaBazowa& skad = *grupa[los() % 3];
            const TElementy celPrzed = Elementy(cel);
            const TElementy skadPrzed = Elementy(skad);
            const int wartosc = static_cast<int>(los() % 3);
            const auto operacja = los() % 5;
            TElementy celModel = celPrzed;
            TElementy skadModel;
            for (TObiektBazowy* o : skadPrzed) {
                const auto jak = [o](const TObiektBazowy* x) { return WgNumeru(*x, *o) == 0; };
                const bool ma = static_cast<TAdres*>(o)->GetNumer() == wartosc;
                const bool idzie = operacja == 0 || (operacja == 1 && ma) || (operacja == 2 && !ma) ||
                                   (operacja >= 3 && std::none_of(celModel.begin(), celModel.end(), jak));
                (idzie ? celModel : skadModel).push_back(o);
            }
            const TArg pola = operacja == 3 ? TArg{} : TArg{u"Numer"}; // none: the whole content, which is the number
            const bool wynik = operacja == 0   ? cel.PrzeniesDane(skad)
                               : operacja == 1 ? cel.PrzeniesObiektyOCechach(skad, pola, TArg{wartosc}, kWazny)
                               : operacja == 2 ? cel.PrzeniesObiektyOprocz(skad, pola, TArg{wartosc}, kWazny)
                                               : cel.PrzeniesObiektyGdyBrak(skad, pola, kWazny);
            const bool taSama = &cel == &skad;
            ASSERT_EQ(wynik, !taSama && celModel.size() != celPrzed.size());
            ASSERT_EQ(Elementy(cel), taSama ? celPrzed : celModel);
            ASSERT_EQ(Elementy(skad), taSama ? skadPrzed : skadModel);
            Niezmienniki(wszystkie, obiekty);
        }
        // Pointers moved to no list: an object's death clears them wherever they went.
        TListaBazowa& wlasciciel = static_cast<TListaBazowa&>(*obiekty[0]->Rodzic());
        wlasciciel.UsunTenObiekt(obiekty[0], true);
        EXPECT_LT(ref1.ZnajdzObiekt(obiekty[0]) + ref2.ZnajdzObiekt(obiekty[0]), -1);
    }
}

TEST_F(Sortowanie, OdmowaPrzeniesieniaZostawiaListy) {
    TListaWszystkich drzewo;
    TWszystko& o = drzewo.Dopisz();
    o.GetPodrzedne().Dopisz().SetI(1);
    // Into its own part, and of a foreign class.
    EXPECT_EQ(Blad([&] { o.GetPodrzedne().PrzeniesDane(drzewo); }).find(u"(no error)"), std::u16string::npos);
    EXPECT_EQ(Blad([&] { o.GetPodrzedne().PrzeniesObiektyGdyBrak(drzewo, TArg{3}, kWazny); }).find(u"(no error)"),
              std::u16string::npos);
    EXPECT_NE(Blad([&] { o.GetAdresy().PrzeniesDane(drzewo); }), u"(no error)");
    EXPECT_EQ(Elementy(drzewo), (TElementy{&o}));
    EXPECT_EQ(o.Rodzic(), &drzewo);
    // An element that cannot be compared ends the move; those moved before it are registered.
    TKolekcjaObiektow rozne;
    auto* adres = static_cast<TAdres*>(rozne.Dodaj(Utworz<TAdres>()));
    adres->SetNumer(4);
    TListaBazowa* lista = static_cast<TListaBazowa*>(rozne.Dodaj(Utworz<TListaAdresow>()));
    TListaRefObiektow cel;
    TListaRefObiektow skad;
    skad.DodajObiekt(adres, MaxInt);
    skad.DodajObiekt(lista, MaxInt);
    EXPECT_NE(Blad([&] { cel.PrzeniesObiektyGdyBrak(skad, TArg{1}, kWazny); }), u"(no error)");
    Niezmienniki({&cel, &skad}, {adres, lista});
    // An object without an owner may move from a reference list into an owning one.
    TListaAdresow wlasna;
    TAdres* sierota = Utworz<TAdres>().Oddaj();
    cel.DodajObiekt(sierota, MaxInt);
    cel.UsunTenObiekt(adres, false);
    EXPECT_TRUE(wlasna.PrzeniesDane(cel));
    Niezmienniki({&cel, &wlasna}, {sierota});
    // One that has an owner may not, nor one that comes twice; within the owner's lists it may.
    const std::u16string odmowa = u"TListaAdresow: obiekt klasy TAdres ma już właściciela : ";
    cel.DodajObiekt(adres, MaxInt);
    EXPECT_EQ(Blad([&] { wlasna.PrzeniesDane(cel); }), odmowa + u"[0]");
    EXPECT_EQ(Blad([&] { wlasna.PrzeniesObiektyOCechach(cel, TArg{1}, TArg{4}, kWazny); }), odmowa + u"[0]");
    EXPECT_EQ(Blad([&] { wlasna.PrzeniesObiektyGdyBrak(cel, {}, kWazny); }), odmowa + u"[0]");
    EXPECT_EQ(Blad([&] { wlasna.PrzeniesZListy(cel, 0, 0); }), odmowa + u"[0]");
    Niezmienniki({&cel, &wlasna, &rozne}, {sierota, adres});
    rozne.UsunTenObiekt(adres, false);
    cel.DodajObiekt(adres, MaxInt);
    EXPECT_EQ(Blad([&] { wlasna.PrzeniesDane(cel); }), odmowa + u"TListaRefObiektow");
    EXPECT_TRUE(wlasna.PrzeniesObiektyGdyBrak(cel, {}, kWazny)); // the second equals the first, which is here by then
    Niezmienniki({&cel, &wlasna}, {sierota, adres});
    EXPECT_EQ(Elementy(cel), (TElementy{adres}));
    rozne.PrzeniesZListy(wlasna, 1, 0);
    Niezmienniki({&cel, &wlasna, &rozne}, {sierota, adres});
}

TEST_F(Sortowanie, DopisywanieJakLista) {
    TListaAdresow dane;
    for (const int n : {1, 2, 1, 3})
        dane.Dopisz().SetNumer(n);
    TListaAdresow kopie; // an owning list copies, a reference list points
    TListaRefObiektow ref;
    for (TListaBazowa* cel : std::initializer_list<TListaBazowa*>{&kopie, &ref}) {
        EXPECT_TRUE(cel->DopiszObiektyOCechach(&dane, TArg{1}, TArg{1}, kWazny));
        EXPECT_EQ(Numery(*cel), (V{1, 1}));
        EXPECT_TRUE(cel->DopiszObiektyOprocz(&dane, TArg{1}, TArg{3}, kWazny));
        EXPECT_EQ(Numery(*cel), (V{1, 1, 1, 2, 1}));
        EXPECT_TRUE(cel->KopiujObiektyOCechach(&dane, TArg{1}, TArg{2}, kWazny));
        EXPECT_EQ(Numery(*cel), V{2});
        EXPECT_TRUE(cel->DopiszObiektyGdyBrak(&dane, TArg{u"Numer"}, kWazny));
        EXPECT_EQ(Numery(*cel), (V{2, 1, 3})); // the second 1 is there already
        EXPECT_FALSE(cel->DopiszObiektyGdyBrak(&dane, {}, kWazny));
        EXPECT_TRUE(cel->KopiujObiektyOCechach(cel, TArg{1}, TArg{1}, kWazny)); // of itself: what has the values stays
        EXPECT_EQ(Numery(*cel), V{1});
        EXPECT_TRUE(cel->KopiujObiektyOCechach(cel, TArg{1}, TArg{1}, kWazny));
        EXPECT_TRUE(cel->DopiszDane(cel));
        EXPECT_EQ(Numery(*cel), (V{1, 1}));
        EXPECT_FALSE(cel->DopiszDane(nullptr) || cel->DopiszObiektyGdyBrak(nullptr, {}, kWazny) ||
                     cel->KopiujObiektyOCechach(nullptr, {}, {}, kWazny));
        EXPECT_EQ(cel->IleObiektow(), 0);
        EXPECT_TRUE(cel->DopiszDane(&dane));
        EXPECT_GE(cel->Pojemnosc(), 4);
        EXPECT_EQ(cel->Obiekty(0) == dane.Obiekty(0), cel == &ref);
    }
    for (TObiektBazowy* o : dane)
        EXPECT_TRUE(o->MaRefOd(&ref));
    TListaNapisow napisy;
    dane.DajListeWartPola(u"Numer", napisy);
    EXPECT_EQ(napisy.JakoTekst(u","), u"1,2,3");
    dane.WpiszDoStrings(u"numer", napisy);
    EXPECT_EQ(napisy.JakoTekst(u","), u"1,2,1,3");
    EXPECT_EQ(napisy.Wartosc(3), reinterpret_cast<std::uintptr_t>(dane.Obiekty(3)));
    dane.WpiszDoStrings(u"Nie.Ma", napisy);
    EXPECT_EQ(napisy.JakoTekst(u","), u",,,");
}

TListaWskObiektow* zmieniana = nullptr;
std::int16_t ZmieniaListe(const TObiektBazowy& a, const TObiektBazowy& b) {
    if (zmieniana->IleObiektow() > 4)
        zmieniana->SkrocListe(1, false);
    else
        zmieniana->DodajObiekt(const_cast<TObiektBazowy*>(&a), MaxInt);
    return WgNumeru(a, b);
}

TEST_F(Sortowanie, ListaZmienianaIElementyBezPol) {
    TListaAdresow adresy;
    for (int i = 0; i < 6; ++i)
        adresy.Dopisz().SetNumer(i);
    for (const int ile : {4, 6}) { // grows, shrinks
        TListaWskObiektow lista;
        for (int i = 0; i < ile; ++i)
            lista.DodajObiekt(adresy.Obiekty(i), 0);
        zmieniana = &lista;
        EXPECT_EQ(Blad([&] { lista.PosortujWgFun(&ZmieniaListe); }),
                  u"TListaWskObiektow: lista zmieniona w trakcie sortowania");
    }
    // Lists as elements compare as a whole, down and up; by fields, element by element.
    TKolekcjaObiektow listy;
    for (const int ile : {2, 0, 1}) {
        auto lista = Utworz<TListaAdresow>();
        for (int i = 0; i < ile; ++i)
            lista->Dopisz().SetNumer(i);
        listy.Dodaj(std::move(lista));
    }
    for (const TRodzajSortowania kierunek : {rsMalejaco, rsRosnaco}) {
        listy.PosortujWgPol(TArg{1}, kierunek);
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(static_cast<TListaBazowa*>(listy.Obiekty(i))->IleObiektow(), kierunek == rsMalejaco ? 2 - i : i);
    }
    TListaAdresow wzor;
    wzor.Dopisz().SetUlica(u"x");
    wzor.Dopisz().SetNumer(1);
    std::int32_t gdzie = -1;
    EXPECT_TRUE(listy.JestObiektTakiJak(wzor, TArg{1}, gdzie));
    EXPECT_EQ(gdzie, 2);
    EXPECT_FALSE(listy.JestObiektTakiJak(wzor, TArg{0}));
    EXPECT_EQ(wzor.PorownajOproczPol(*static_cast<TListaAdresow*>(listy.Obiekty(2)), TArg{0}, kWazny), 0);
    EXPECT_EQ(wzor.PorownajOproczPol(*static_cast<TListaAdresow*>(listy.Obiekty(2)), TArg{1}, kWazny), 1);
    TListaWskObiektow a;
    TListaWskObiektow b;
    a.DodajObiekt(&a, 0);
    b.DodajObiekt(&b, 0);
    EXPECT_NE(Blad([&] { static_cast<void>(a.PorownajWgPol(b, TArg{1}, kWazny)); }), u"(no error)");
}

// A class that calls a field full which was never made.
class TObliczane : public TObiekt {
    ZTOK_OBIEKT(TObliczane, TObiekt, (0, A, Integer))
    [[nodiscard]] bool PoleNiepuste(int nr) const override { return nr == 0 || TObiekt::PoleNiepuste(nr); }
};

TEST_F(Sortowanie, PrzypadkiSzczegolne) {
    TObliczane bezPola;
    TObliczane zPolem;
    zPolem.SetA(5);
    EXPECT_EQ(bezPola.PorownajWgPol(zPolem, TArg{0}, kWazny), -1);
    EXPECT_EQ(bezPola.OpisTekstowy() + bezPola.DrzewoObiektu(), u"Obliczane(TObliczane)\r\n");
    // One comparer for a whole search: what differed in one element says nothing about the next.
    TAdres cele[3];
    for (int i = 0; i < 3; ++i)
        cele[i].SetNumer(i);
    TListaWszystkich lista;
    for (int i = 0; i < 3; ++i) {
        lista.Dopisz().SetWskaznik(nullptr);
        static_cast<TWszystko*>(lista.Obiekty(i))->SetReferencja(&cele[i / 2]);
        static_cast<TWszystko*>(lista.Obiekty(i))->GetPowiazane().DodajObiekt(&cele[i / 2], 0);
    }
    TWszystko wzor;
    wzor.SetReferencja(&cele[2]);
    wzor.GetPowiazane().DodajObiekt(&cele[2], 0);
    TPorownywaczDanych porownywacz(nullptr, nullptr, rpWszystkiePola, kWazny, LocaleWin1250, tprRefJakoWskazn);
    EXPECT_FALSE(lista.JestTakiObiekt(wzor, rwOdKonca, MaxInt, &porownywacz));
    // The order given without a letter case; an example's fields; null.
    TListaAdresow malejaca;
    for (const int n : {3, 2, 2})
        malejaca.Dopisz().SetNumer(n);
    std::int32_t gdzie = -1;
    EXPECT_TRUE(malejaca.WyszukajWgPol(TArg{1}, TArg{2}, gdzie, rsMalejaco));
    EXPECT_EQ(gdzie, 1);
    EXPECT_TRUE(malejaca.WyszukajWgPol(cele[2], TArg{1}, gdzie, rsMalejaco));
    const TObiektBazowy* pusty = malejaca.DopiszObiektGdyBrak(nullptr, TArg{1}, kWazny);
    EXPECT_EQ(malejaca.ZnajdzObiekt(pusty), 3);
    // An element that cannot take the values is not left in the list, which stays sorted.
    const auto zle = [&](auto dodaj) { EXPECT_NE(Blad(dodaj), u"(no error)"); };
    zle([&] { malejaca.DodajObiektGdyBrak(TArg{1, u"Adres"}, TArg{2, 1}); });
    zle([&] { malejaca.DopiszObiektGdyBrak(TArg{u"Ulica", u"Nie"}, TArg{u"x", 1}); });
    EXPECT_EQ(Numery(malejaca), (V{3, 2, 2, 0}));
    // Filled from its own elements, and from a list inside one of them.
    TListaWskObiektow wsk;
    wsk.DopiszDane(&malejaca);
    EXPECT_TRUE(malejaca.KopiujObiektyOCechach(&wsk, TArg{1}, TArg{2}, kWazny));
    EXPECT_EQ(Numery(malejaca), (V{2, 2}));
    wsk.ZerujDane();
    TListaWszystkich drzewo;
    TListaWszystkich& wnetrze = drzewo.Dopisz().GetPodrzedne();
    wnetrze.Dopisz().SetI(4);
    EXPECT_FALSE(drzewo.PrzepnijLubKopiuj(wnetrze));
    EXPECT_FALSE(wnetrze.PrzepnijLubKopiuj(drzewo)); // nothing is lost
    EXPECT_EQ(wnetrze.IleObiektow(), 1);
    EXPECT_TRUE(drzewo.KopiujObiektyOCechach(&wnetrze, TArg{3}, TArg{4}, kWazny));
    EXPECT_EQ(drzewo.GetTekstowoWgSciezki(u"[0].I"), u"4");
}

} // namespace
