// Lists: what the table of operations and the walk against a model (fuzz/wywolania) do not reach.
#include <gtest/gtest.h>

#include <functional>
#include <set>

#include "fuzz/wywolania/StanDrzewa.h"
#include "tests/Bledy.h"
#include "tests/Probki.h"
#include "tests/StrumienieTestowe.h"

namespace {

using namespace ztok;
using probki::TAdres;
using probki::TListaAdresow;
using probki::TWszystko;
using testy::Blad;
using testy::Zglasza;
using TElementy = std::vector<TObiektBazowy*>;
using V = std::vector<int>;
constexpr TRozmiarLiter kWazny = rlRozmLiterWazny;

TElementy Elementy(const TListaBazowa& lista) {
    TElementy wynik;
    for (TObiektBazowy* o : lista)
        wynik.push_back(o);
    return wynik;
}

V Numery(const TListaBazowa& lista) {
    V wynik;
    for (TObiektBazowy* o : lista)
        wynik.push_back(static_cast<TAdres*>(o)->GetNumer());
    return wynik;
}

class Listy : public testing::Test {
  protected:
    void SetUp() override { probki::Rejestruj(); }
    void TearDown() override { EXPECT_STREQ(drzewa::Blad({&lista_}), nullptr); }
    void Wypelnij(std::initializer_list<int> numery) {
        lista_.ZerujDane();
        for (const int numer : numery)
            lista_.Dopisz().SetNumer(numer);
    }
    TListaAdresow lista_;
};

TEST_F(Listy, EnumeratoryIKrokiPojemnosci) {
    V pojemnosci = {0};
    TListaWskObiektow wsk;
    for (int i = 0; i < 200; ++i) {
        wsk.DodajObiekt(&lista_, MaxInt);
        if (pojemnosci.back() != wsk.Pojemnosc())
            pojemnosci.push_back(wsk.Pojemnosc());
    }
    EXPECT_EQ(pojemnosci, (V{0, 4, 8, 12, 28, 44, 60, 76, 92, 108, 124, 140, 157, 176, 198, 222}));
    Wypelnij({1, 2, 3, 4, 5});
    V kolejnosc;
    for (TObiektBazowy* o : lista_.ListaOdKonca()) { // each is met once while the loop removes it
        kolejnosc.push_back(static_cast<TAdres*>(o)->GetNumer());
        lista_.UsunTenObiekt(o, true);
    }
    EXPECT_EQ(kolejnosc, (V{5, 4, 3, 2, 1}));
    EXPECT_FALSE(lista_.ListaOdKonca().GetEnumerator().MoveNext());
    Wypelnij({1, 2, 3, 4, 5, 6, 7, 8});
    TEnumListaBazowaOdKonca e = lista_.ListaOdKonca().GetEnumerator();
    ASSERT_TRUE(e.MoveNext());
    lista_.SkrocListe(3, false); // the list shrinks under the enumerator
    for (const int numer : {3, 2, 1}) {
        ASSERT_TRUE(e.MoveNext());
        EXPECT_EQ(static_cast<TAdres*>(e.GetCurrent())->GetNumer(), numer);
    }
    EXPECT_FALSE(e.MoveNext());
    TEnumListaObiektow<TAdres> naprzod = lista_.GetEnumerator();
    EXPECT_EQ(naprzod.GetCurrent(), nullptr);
    for (const int numer : {1, 2, 3}) {
        ASSERT_TRUE(naprzod.MoveNext());
        EXPECT_EQ(naprzod.GetCurrent()->GetNumer(), numer);
    }
    EXPECT_FALSE(naprzod.MoveNext());
    EXPECT_EQ(naprzod.GetCurrent(), lista_[2]);
}

TEST_F(Listy, OperacjeKtorychKlasaNieMa) {
    Wypelnij({1});
    TListaBazowa baza;
    EXPECT_EQ(Blad<ZTException>([&] { baza.WyrownajDoListy(lista_, false); }),
              u"Brak wyrównania do listy w TListaBazowa");
    const TListaWskObiektow te;
    const std::pair<const char16_t*, std::function<void()>> operacje[] = {
        {u"UsunDuplikaty", [&] { baza.UsunDuplikaty({}, kWazny); }},
        {u"UsunObiekty", [&] { baza.UsunObiekty({}, {}, kWazny); }},
        {u"UsunObiektyOprocz", [&] { baza.UsunObiektyOprocz({}, {}, kWazny); }},
        {u"UsunTeObiekty", [&] { baza.UsunTeObiekty(te, false); }},
        {u"PoPrzeniesieniu", [&] { baza.PoPrzeniesieniu(lista_, 0, 0); }},
        {u"TypObiektow", [] { static_cast<void>(TListaObiektow().TypObiektowListy()); }}};
    for (const auto& [nazwa, operacja] : operacje)
        EXPECT_TRUE(Blad<EBladAbstrakcyjny>(operacja).ends_with(u" nie ma operacji " + std::u16string(nazwa)));
    TKolekcjaObiektow kolekcja;
    kolekcja.Dodaj(Utworz<TListaAdresow>());
    EXPECT_TRUE(Zglasza<EBladRzutowania>([&] { kolekcja.WpiszDaneDoPol({1}, {u"w"}); }));
    EXPECT_FALSE(baza.DopiszDane(nullptr) || baza.DopiszObiektyOCechach(nullptr, {}, {}, kWazny));
}

// Fields, values and directions are written in braces wherever a list of them is asked for; a field by a number of any
// type. A single 0 in braces is a field, and no null object.
TEST_F(Listy, ListyWKlamrach) {
    constexpr unsigned numer = TAdres::nrNumer;
    constexpr std::size_t miasto = TAdres::nrMiasto;
    const TAdres wzor({TAdres::nrUlica, u"Numer", miasto}, {u"b", 2, u"x"});
    EXPECT_EQ(wzor.OpisTekstowy(), Utworz<TAdres>({0, 1, 2}, {u"b", 2, u"x"})->OpisTekstowy());
    EXPECT_EQ(Utworz<TAdres>({numer}, {3}, &lista_)->Rodzic(), &lista_);
    EXPECT_TRUE(Zglasza<ZTException>([] { TAdres({0, u"Brak"}, {u"b", 1}); }));
    EXPECT_TRUE(Zglasza<ZTException>([] { static_cast<void>(Utworz<TAdres>({0, u"Brak"}, {u"b", 1})); }));

    TListaAdresow inna;
    std::int32_t od = -7;
    std::int32_t dokad = -7;
    TListaAdresow& l = lista_;
    const auto po = [&](const auto& operacja) {
        Wypelnij({3, 1, 2, 1});
        inna.ZerujDane();
        inna.Dopisz().SetNumer(5);
        inna.Dopisz().SetNumer(2);
        operacja();
        return Numery(l);
    };
    EXPECT_EQ(po([&] { l.PosortujWgPol({miasto, numer}, {rsRosnaco, rsMalejaco}); }), (V{3, 2, 1, 1}));
    EXPECT_EQ(po([&] { l.PosortujWgPol({numer}, kWazny, rsMalejaco); }), (V{3, 2, 1, 1}));
    EXPECT_EQ(po([&] { l.DopiszObiektGdyBrak({0}, {u"z"}, kWazny); }), (V{3, 1, 2, 1, 0}));
    EXPECT_EQ(po([&] { l.DopiszObiektGdyBrak({numer}, {1}, kWazny, rwOdKonca, od); }), (V{3, 1, 2, 1}));
    EXPECT_EQ(po([&] { od = l.ZnajdzObiekt(l.DopiszObiektGdyBrak(inna[1], {numer}, kWazny)); }), (V{3, 1, 2, 1}));
    EXPECT_EQ(od, 2);
    EXPECT_EQ(po([&] { l.UsunObiekty({numer}, {1}, kWazny); }), (V{3, 2}));
    EXPECT_EQ(po([&] { l.UsunObiektyOprocz({numer}, {1}, kWazny); }), (V{1, 1}));
    EXPECT_EQ(po([&] { l.UsunDuplikaty({numer}, kWazny); }), (V{3, 1, 2}));
    EXPECT_EQ(po([&] { l.DopiszObiektyOCechach(&inna, {numer}, {5}, kWazny); }), (V{3, 1, 2, 1, 5}));
    EXPECT_EQ(po([&] { l.DopiszObiektyOprocz(&inna, {numer}, {5}, kWazny); }), (V{3, 1, 2, 1, 2}));
    EXPECT_EQ(po([&] { l.DopiszObiektyGdyBrak(&inna, {numer}, kWazny); }), (V{3, 1, 2, 1, 5}));
    EXPECT_EQ(po([&] { l.PrzeniesObiektyOCechach(inna, {numer}, {5}, kWazny); }), (V{3, 1, 2, 1, 5}));
    EXPECT_EQ(po([&] { l.PrzeniesObiektyOprocz(inna, {numer}, {5}, kWazny); }), (V{3, 1, 2, 1, 2}));
    EXPECT_EQ(po([&] { l.PrzeniesObiektyGdyBrak(inna, {numer}, kWazny); }), (V{3, 1, 2, 1, 5}));
    EXPECT_EQ(po([&] { l.KopiujDanePol(inna, {numer}, true); }), (V{5, 2}));
    EXPECT_EQ(po([&] { l.KopiujDaneOprocz(inna, {0}); }), (V{5, 2}));
    EXPECT_EQ(po([&] { l.KopiujDaneKlas(inna, {TPoleInteger::KlasaStatyczna()}); }), (V{5, 2}));
    EXPECT_EQ(po([&] { l.WpiszDaneDoPol({numer}, {4}); }), (V{4, 4, 4, 4}));
    EXPECT_EQ(po([&] { l[0]->Inicjuj({0}, {u"b"}); }), (V{0, 1, 2, 1}));
    EXPECT_EQ(po([&] { l[0]->ZerujDanePol({numer}); }), (V{0, 1, 2, 1}));
    EXPECT_EQ(po([&] { l[0]->ZerujDaneOprocz({0}); }), (V{0, 1, 2, 1}));
    EXPECT_EQ(po([&] { l[0]->KopiujDanePol(wzor, {u"Numer"}); }), (V{2, 1, 2, 1}));
    EXPECT_EQ(po([&] { l[0]->KopiujDaneOprocz(wzor, {0}); }), (V{2, 1, 2, 1}));
    EXPECT_EQ(po([&] { l[0]->KopiujDaneKlas(wzor, {TPoleInteger::KlasaStatyczna()}); }), (V{2, 1, 2, 1}));
    EXPECT_EQ(po([&] { l.PosortujWgPol({0, numer}); }), (V{1, 1, 2, 3}));
    EXPECT_TRUE(l.ListaMaPosortowanie({0, numer}, {rsMalejaco, rsRosnaco}));
    EXPECT_TRUE(l.WyszukajWgPol({0}, {u""}, od) && od == 0);
    EXPECT_TRUE(l.WyszukajWgPol({numer}, {2}, od, rsRosnaco) && od == 2 && !l.WyszukajWgPol({numer}, {4}));
    EXPECT_TRUE(l.WyszukajWgPol(wzor, {numer}, od) && od == 2 && !l.WyszukajWgPol(wzor, {0}));
    EXPECT_TRUE(l.WyszukajZakres({numer}, {1}, od, dokad) && od == 0 && dokad == 1);
    EXPECT_TRUE(l.JestObiekt({numer}, {3}, od) && od == 3 && !l.JestObiekt({numer}, {4}));
    EXPECT_TRUE(l.JestInnyObiekt({numer}, {3}, od) && od == 2 && l.JestInnyObiekt({0}, {u"b"}));
    EXPECT_TRUE(l.JestObiektTakiJak(wzor, {numer}, od) && od == 2 && !l.JestObiektTakiJak(wzor, {0}));
    EXPECT_TRUE(l.DodajObiektGdyBrak({numer}, {2}) == l[2] && l[2]->MaCechy({0, numer}, {u"", 2}, kWazny));
    EXPECT_EQ(l[2]->PorownajCechy({numer}, {3}, kWazny, LocaleWin1250), 1);
    EXPECT_EQ(l[2]->PorownajWgPol(wzor, {0}, kWazny), -1);
    EXPECT_EQ(l[2]->PorownajOproczPol(wzor, {0, miasto}, kWazny), 0);
}

// Empty places, which pointer lists and collections may have: before everything in order, passed over by searches.
TEST_F(Listy, PusteMiejsca) {
    Wypelnij({3, 1});
    TListaWskObiektow wsk;
    wsk.DodajObiekt(lista_[0], 0);
    wsk.DodajObiekt(nullptr, 0);
    wsk.DodajObiekt(lista_[1], MaxInt);
    wsk.DodajObiekt(nullptr, MaxInt);
    EXPECT_FALSE(wsk.ListaMaPosortowanie({1}, {}));
    EXPECT_TRUE(wsk.PosortujWgPol({1}));
    EXPECT_EQ(Elementy(wsk), (TElementy{nullptr, nullptr, lista_[1], lista_[0]}));
    EXPECT_TRUE(wsk.ListaMaPosortowanie({1}, {}));
    std::int32_t gdzie = -7;
    for (const int numer : {0, 1, 2, 3, 4}) {
        TAdres wzor;
        wzor.SetNumer(numer);
        EXPECT_EQ(wsk.WyszukajWgPol({1}, {numer}, gdzie), numer == 1 || numer == 3);
        EXPECT_EQ(gdzie, numer < 2 ? 2 : numer < 4 ? 3 : 4) << numer;
        EXPECT_EQ(wsk.WyszukajWgPol(wzor, {1}, gdzie), numer == 1 || numer == 3);
        EXPECT_EQ(wsk.JestObiekt({1}, {numer}, gdzie, kWazny, rwOdPoczatku), numer == 1 || numer == 3);
        EXPECT_EQ(gdzie, numer == 1 ? 2 : numer == 3 ? 3 : 4);
    }
    EXPECT_FALSE(wsk.PoleNiepuste(0) || wsk.PoleDoZapisu(1) || wsk.SaDaneUnicode(0));
    EXPECT_TRUE(wsk.PoleNiepuste(2) && wsk.PoleDoZapisu(3));
    wsk.WpiszDaneDoPol({0}, {u"u"});
    wsk.ZerujDanePol({0});
    TListaWskObiektow inna;
    inna.WyrownajDoListy(wsk, false); // its new places are empty
    EXPECT_EQ(Elementy(inna), TElementy(4));
    EXPECT_EQ(wsk.Porownaj(inna), 1);
    EXPECT_EQ(inna.Porownaj(wsk), -1);
    EXPECT_EQ(wsk.PorownajWgPol(inna, {1}, kWazny), 1);
    EXPECT_EQ(inna.PorownajWgPol(wsk, {1}, kWazny), -1);
    EXPECT_FALSE(inna.DopiszObiektyOCechach(&inna, {}, {}, kWazny)); // there is nothing to add
    EXPECT_TRUE(inna.DopiszDane(&wsk));                              // an empty place too
    EXPECT_EQ(inna.IleObiektow(), 8);
    EXPECT_FALSE(inna.UsunDuplikaty({1}, kWazny));
    inna.UsunObiektyNil(true);
    EXPECT_EQ(Elementy(inna), (TElementy{lista_[1], lista_[0]}));
    EXPECT_EQ(inna.Pojemnosc(), 8);
    inna.UsunObiektyNil(false);
    EXPECT_EQ(inna.Pojemnosc(), 2);
    TKolekcjaObiektow a;
    TKolekcjaObiektow b;
    a.DodajObiekt(nullptr, 0);
    b.Dodaj(Utworz<TAdres>());
    EXPECT_EQ(a.Porownaj(b), -1);
    EXPECT_EQ(b.Porownaj(a), 1);
    a.KopiujDane(b);
    EXPECT_EQ(a.Porownaj(b), 0);
    EXPECT_STREQ(drzewa::Blad({&a, &b}), nullptr);
    b.UsunObiekt(0, true, false);
    b.DodajObiekt(nullptr, 0);
    EXPECT_EQ(strumienie::Zapisz(b), strumienie::Bajty("00 00")); // and is not written
    a.KopiujDane(b);
    EXPECT_EQ(Elementy(a), TElementy{nullptr});
    EXPECT_EQ(a.Porownaj(b), 0);
}

TEST_F(Listy, BladPorownaniaNieZostawiaDziur) {
    // The text "x" is no number: asking for Ulica = 5 fails on that element, which the walk from the end meets in the
    // middle.
    const auto usun = [](TListaBazowa& lista) {
        return Zglasza<EBladWariantu>([&] { lista.UsunObiekty({0}, {5}, kWazny); });
    };
    Wypelnij({0, 1, 2, 3});
    for (int i = 0; i < 4; ++i)
        lista_[i]->SetUlica(std::u16string_view(u"5x75").substr(static_cast<std::size_t>(i), 1));
    {
        TListaWskObiektow wsk;
        TListaRefObiektow ref;
        for (TListaBazowa* l : {static_cast<TListaBazowa*>(&wsk), static_cast<TListaBazowa*>(&ref)}) {
            l->DopiszDane(&lista_);
            EXPECT_TRUE(usun(*l));
            EXPECT_EQ(Elementy(*l), Elementy(lista_)); // as they were
        }
        EXPECT_STREQ(drzewa::Blad({&lista_, &wsk, &ref}), nullptr);
    }
    EXPECT_TRUE(usun(lista_));
    EXPECT_EQ(Numery(lista_), (V{0, 1, 2})); // freed elements are gone, without a hole
    // An element without numbered fields has no field 0.
    TKolekcjaObiektow kolekcja;
    kolekcja.Dodaj(Utworz<TAdres>());
    kolekcja.Dodaj(Utworz<TListaAdresow>());
    kolekcja.Dodaj(Utworz<TWszystko>());
    kolekcja.Dodaj(Utworz<TWszystko>());
    EXPECT_TRUE(Zglasza<EBladRzutowania>([&] { kolekcja.UsunDuplikaty({0}, kWazny); }));
    EXPECT_EQ(kolekcja.IleObiektow(), 3);
    EXPECT_STREQ(drzewa::Blad({&kolekcja}), nullptr);
}

TEST_F(Listy, ZbiorWPorzadkuAdresow) {
    for (int i = 0; i < 30; ++i)
        lista_.Dopisz();
    TListaRefObiektow zbior;
    std::set<TObiektBazowy*> model;
    EXPECT_FALSE(zbior.DolaczObiektGdyBrak(nullptr));
    for (int i = 0; i < 100; ++i) {
        TObiektBazowy* o = lista_[i * i % 29];
        EXPECT_EQ(zbior.DolaczObiektGdyBrak(o), model.insert(o).second);
        TObiektBazowy* pytany = lista_[i % 30];
        std::int32_t gdzie = -1;
        EXPECT_EQ(zbior.WyszukajTenObiekt(pytany, gdzie), model.count(pytany) == 1);
        EXPECT_EQ(zbior.WyszukajTenObiekt(pytany), model.count(pytany) == 1);
        EXPECT_EQ(gdzie, std::distance(model.begin(), model.lower_bound(pytany)));
    }
    EXPECT_EQ(Elementy(zbior), TElementy(model.begin(), model.end()));
}

// Lists may hook how elements come in; reading goes through the hook.
class TListaZHakiem : public TListaTypu<TAdres> {
    ZTOK_LISTA(TListaZHakiem, TAdres)
    TObiektBazowy* DodajObiekt(TObiektBazowy* nowy, std::int32_t gdzie) override {
        ++dodanych;
        return TListaTypu::DodajObiekt(nowy, gdzie);
    }
    int dodanych = 0;
};

TEST_F(Listy, OdczytDodajeJakLista) {
    Wypelnij({3, 1, 2});
    TListaZHakiem odczytana;
    odczytana.Dopisz();
    odczytana.dodanych = 0;
    strumienie::Wczytaj(odczytana, strumienie::Zapisz(lista_));
    EXPECT_EQ(odczytana.dodanych, 3);
    EXPECT_EQ(Numery(odczytana), (V{3, 1, 2})); // the old elements are gone
    EXPECT_EQ(odczytana.Pojemnosc(), 3);
}

// An object without an owner may move from a reference list into an owning one; one that has an owner may not, nor one
// that comes twice.
TEST_F(Listy, PrzenoszenieDoWlasciciela) {
    TKolekcjaObiektow rozne;
    TListaRefObiektow ref;
    TAdres* adres = Utworz<TAdres>().Oddaj();
    ref.DodajObiekt(adres, MaxInt);
    EXPECT_TRUE(lista_.PrzeniesDane(ref));
    EXPECT_EQ(Elementy(lista_), TElementy{adres});
    EXPECT_FALSE(adres->MaJakiesRef());
    rozne.PrzeniesZListy(lista_, 0, 0);
    ref.DodajObiekt(adres, MaxInt);
    const std::u16string odmowa = u"TListaAdresow: obiekt klasy TAdres ma już właściciela : ";
    EXPECT_EQ(Blad([&] { lista_.PrzeniesDane(ref); }), odmowa + u"[0]");
    EXPECT_EQ(Blad([&] { lista_.PrzeniesObiektyOCechach(ref, {}, {}, kWazny); }), odmowa + u"[0]");
    EXPECT_EQ(Blad([&] { lista_.PrzeniesObiektyGdyBrak(ref, {}, kWazny); }), odmowa + u"[0]");
    EXPECT_EQ(Blad([&] { lista_.PrzeniesZListy(ref, 0, 0); }), odmowa + u"[0]");
    EXPECT_STREQ(drzewa::Blad({&lista_, &rozne, &ref}), nullptr);
    rozne.UsunTenObiekt(adres, false);
    ref.DodajObiekt(adres, MaxInt);
    EXPECT_EQ(Blad([&] { lista_.PrzeniesDane(ref); }), odmowa + u"TListaRefObiektow");
    EXPECT_TRUE(lista_.PrzeniesObiektyGdyBrak(ref, {}, kWazny)); // the second equals the first, which is here by then
    EXPECT_EQ(Elementy(lista_), TElementy{adres});
    EXPECT_EQ(Elementy(ref), TElementy{adres});
    rozne.PrzypnijObiekt(Utworz<TWszystko>(&lista_).Oddaj()); // a parent that only made it does not own it
    EXPECT_STREQ(drzewa::Blad({&lista_, &rozne, &ref}), nullptr);
}

TListaWskObiektow* zmieniana = nullptr;
std::int16_t ZmieniaListe(const TObiektBazowy& a, const TObiektBazowy& b) {
    if (zmieniana->IleObiektow() > 4)
        zmieniana->SkrocListe(1, false);
    else
        zmieniana->DodajObiekt(const_cast<TObiektBazowy*>(&a), MaxInt);
    return static_cast<std::int16_t>(a.Porownaj(b));
}

TEST_F(Listy, ListaZmienianaIElementyBezPol) {
    Wypelnij({0, 1, 2, 3, 4, 5});
    for (const int ile : {4, 6}) { // grows, shrinks
        TListaWskObiektow lista;
        for (int i = 0; i < ile; ++i)
            lista.DodajObiekt(lista_[i], 0);
        zmieniana = &lista;
        EXPECT_EQ(Blad([&] { lista.PosortujWgFun(&ZmieniaListe); }),
                  u"TListaWskObiektow: lista zmieniona w trakcie sortowania");
    }
    TListaWskObiektow a;
    TListaWskObiektow b;
    a.DodajObiekt(&a, 0);
    b.DodajObiekt(&b, 0);
    EXPECT_NE(Blad([&] { static_cast<void>(a.PorownajWgPol(b, {1}, kWazny)); }), u"(no error)");
}

// One comparer for a whole search: what differed in one element says nothing about the next.
TEST_F(Listy, JedenPorownywaczNaSzukanie) {
    Wypelnij({0, 1, 2});
    probki::TListaWszystkich lista;
    TWszystko wzor;
    for (int i = 0; i < 4; ++i) {
        TWszystko& o = i == 3 ? wzor : lista.Dopisz();
        o.SetReferencja(lista_[i == 3 ? 2 : i / 2]);
        o.GetPowiazane().DodajObiekt(o.GetReferencja(), 0);
    }
    TPorownywaczDanych porownywacz(nullptr, nullptr, rpWszystkiePola, kWazny, LocaleWin1250, tprRefJakoWskazn);
    EXPECT_FALSE(lista.JestTakiObiekt(wzor, rwOdKonca, MaxInt, &porownywacz));
    static_cast<TWszystko*>(lista.Obiekty(1))->KopiujDane(wzor);
    EXPECT_TRUE(lista.JestTakiObiekt(wzor, rwOdKonca, MaxInt, &porownywacz));
}

// Filled from its own elements, which the pointers at them do not outlive.
TEST_F(Listy, ZSiebie) {
    Wypelnij({3, 2, 2, 0});
    TListaWskObiektow wsk;
    wsk.DopiszDane(&lista_);
    EXPECT_TRUE(lista_.KopiujObiektyOCechach(&wsk, {1}, {2}, kWazny));
    EXPECT_EQ(Numery(lista_), (V{2, 2}));
}

} // namespace
