// Parameter objects, and edit functions that get them.
#include "tests/Testy.h"

#include "Probki.h"
#include "ztok/repository/Kontroler.h"

using namespace ztok;
using namespace probki;
using testy::Blad;

namespace {

int zywych = 0;

// Tells when it dies.
class TParamSledzony : public TZTParam {
    ZTOK_OBIEKT(TParamSledzony, TZTParam)
    void ZerujDane() override {
        --zywych;
        TZTParam::ZerujDane();
    }
};

// What the edit function was called with.
struct TWywolanie {
    const TPole* pole = nullptr;
    TObiektBazowy* wlasciciel = nullptr;
    bool flaga = false;
    std::int32_t referencje = 0;
};
TWywolanie wywolanie;
TIntf<TZTParam> zachowane;
TWlasny<TAdres> edytowany;

bool Zapisujaca(TPole& pole, TObiektBazowy* wlasciciel, bool flaga) {
    wywolanie = {&pole, wlasciciel, flaga, 0};
    if (TZTParam* parametry = JakoParametry(wlasciciel); parametry != nullptr) {
        wywolanie.referencje = parametry->LiczbaReferencji();
        parametry->Ustaw(u"Wynik", pole.NazwaKlasy());
        if (flaga)
            zachowane = TIntf<TZTParam>(parametry);
    }
    return true;
}
bool Rzucajaca(TPole& /*pole*/, TObiektBazowy* /*wlasciciel*/, bool /*flaga*/) { throw EBladKonwersji(u"edycja"); }
// Frees the field that is edited, or its whole object, and takes the registrations back.
bool Usuwajaca(TPole& pole, TObiektBazowy* wlasciciel, bool flaga) {
    JadroKlas()->RejestrujFunEdycji(pole.Klasa(), nullptr);
    DefFunEdycji = nullptr;
    if (TZTParam* parametry = JakoParametry(wlasciciel); parametry != nullptr)
        parametry->ZerujDane();
    if (!flaga) {
        edytowany->UstawPole(TAdres::nrNumer, nullptr, true);
        return true;
    }
    edytowany.Ustaw();
    throw EBladKonwersji(u"edycja");
}

// An owner that is counted like an interface's object, and is no parameter object.
class TLiczacy : public TAdres {
    ZTOK_OBIEKT(TLiczacy, TAdres)
    std::int32_t _AddRef() noexcept override { return ++licznik; }
    std::int32_t _Release() noexcept override { return --licznik; }
    int licznik = 0;
};

class Parametry : public testing::Test {
  protected:
    void TearDown() override {
        JadroKlas()->RejestrujFunEdycji(TAdres::KlasaStatyczna(), nullptr);
        JadroKlas()->RejestrujFunEdycji(TPoleInteger::KlasaStatyczna(), nullptr);
        DefFunEdycji = nullptr;
        zachowane = nullptr;
        edytowany.Ustaw();
    }
};

TEST_F(Parametry, WartosciPoNumerzeINazwie) {
    const auto adres = Utworz<TAdres>();
    const TIntf<TZTParam> p = ZTParam({u"Tytul", std::string("ile"), u"Adres"}, {u"Nowy", 3, adres.get()});
    EXPECT_EQ(p->Wartosc(u"TYTUL").Tekst(), u"Nowy");
    EXPECT_EQ(p->Wartosc(2).Obiekt(), adres.get()); // the caller's object itself, not a copy
    p->Dodaj(true);
    p->Ustaw(u"ILE", 4);
    p->Ustaw(3, false);
    p->Ustaw(u"Nowa", 5);
    EXPECT_EQ(p->OpisTekstowy(), u"5 elem.");
    EXPECT_EQ(p->Wartosc(1).Calkowita(), 4);
    EXPECT_EQ(p->Wartosc(4).Calkowita(), 5);
    EXPECT_FALSE(p->Wartosc(3).Logiczna());
    std::u16string nazwy;
    for (std::int32_t nr = -1; nr <= 5; ++nr) {
        nazwy += std::u16string(p->NazwaWartosci(nr)) + u';';
        EXPECT_EQ(p->NrWartosci(p->NazwaWartosci(nr)), nr == 3 || nr == 5 ? -1 : nr);
        if (nr < 0 || nr == 5) {
            const std::u16string blad = u"TZTParam: indeks " + ZTOKVarRecToStr(nr) + u" poza zakresem";
            EXPECT_EQ(Blad<ZTException>([&] { static_cast<void>(p->Wartosc(nr)); }), blad);
            EXPECT_EQ(Blad<ZTException>([&] { p->Ustaw(nr, 1); }), blad);
        }
    }
    EXPECT_EQ(nazwy, u";Tytul;ile;Adres;;Nowa;;");
    const std::pair<std::u16string, std::function<void()>> bledy[] = {
        {u"TZTParam: Błędne podpole = \"Brak\"", [&] { static_cast<void>(p->Wartosc(u"Brak")); }},
        {u"ZTParam: niedozwolona liczba elementów 1",
         [] {
             static_cast<void>(ZTParam({u"A", u"B"}, {1}));
         }},
        {u"ZTParam: Błędny typ indeksu", [] { static_cast<void>(ZTParam({1}, {1})); }},
        {u"nie można utworzyć obiektu klasy TZTParam", [&] { static_cast<void>(p->KlonujObiekt(false)); }}};
    for (const auto& [komunikat, dzialanie] : bledy)
        EXPECT_EQ(Blad<ZTException>(dzialanie), komunikat);
    EXPECT_EQ(JakoParametry(adres.get()), nullptr);
    EXPECT_EQ(JakoParametry(nullptr), nullptr);
}

TEST_F(Parametry, ObiektyKtoreGinaStajaSieNull) {
    auto adres = Utworz<TAdres>();
    auto wlasciciel = Utworz<TAdres>();
    const TIntf<IKontroler> liczony(UtworzSurowy<TKontroler>()); // any counted object
    const auto* licznik = static_cast<TObiektLiczony*>(ObiektZaInterfejsem(liczony.get()));
    {
        const TIntf<TZTParam> p = ZTParam({adres.get(), adres.get(), liczony.get()}, wlasciciel.get(), true);
        EXPECT_EQ(licznik->LiczbaReferencji(), 2);
        EXPECT_TRUE(p->Flaga());
        EXPECT_EQ(p->Wlasciciel(), wlasciciel.get());
        p->Ustaw(0, wlasciciel.get());
        EXPECT_TRUE(adres->MaRefOd(p.get())); // by the second value
        p->Ustaw(1, 1);
        EXPECT_FALSE(adres->MaRefOd(p.get()));
        p->Ustaw(1, adres.get());
        adres.Ustaw();
        EXPECT_EQ(p->Wartosc(1).Tag(), TTag::Object);
        EXPECT_EQ(p->Wartosc(1).Obiekt(), nullptr);
        p->UstawWlasciciela(nullptr);
        EXPECT_TRUE(wlasciciel->MaRefOd(p.get())); // by the first value
        p->UstawWlasciciela(wlasciciel.get());
        p->Ustaw(0, 1);
        EXPECT_TRUE(wlasciciel->MaRefOd(p.get())); // as the owner
        p->Ustaw(0, wlasciciel.get());
        p->ZerujDane();
        EXPECT_EQ(p->Ile(), 0);
        EXPECT_FALSE(p->Flaga() || p->Wlasciciel() != nullptr || wlasciciel->MaJakiesRef());
        EXPECT_EQ(licznik->LiczbaReferencji(), 1);
        p->Dodaj(wlasciciel.get());
    }
    EXPECT_FALSE(wlasciciel->MaJakiesRef());
    const TIntf<TZTParam> p = ZTParam({1}, wlasciciel.get());
    wlasciciel.Ustaw();
    EXPECT_EQ(p->Wlasciciel(), nullptr);
}

TEST_F(Parametry, ZyjaDoOstatniejReferencji) {
    const auto adres = Utworz<TAdres>();
    const auto nowy = [] {
        ++zywych;
        return UtworzSurowy<TParamSledzony>();
    };
    TParamSledzony* param = nowy(); // the count is 0: belongs to its maker
    EXPECT_EQ(param->LiczbaReferencji(), 0);
    param->_AddRef();
    param->_AddRef();
    EXPECT_EQ(param->_Release(), 1);
    EXPECT_EQ(zywych, 1);
    EXPECT_EQ(param->_Release(), 0);
    EXPECT_EQ(zywych, 0);

    // Without another holder, the call is the last one, on every path.
    JadroKlas()->RejestrujFunEdycji(TAdres::KlasaStatyczna(), &Zapisujaca);
    EXPECT_TRUE(adres->EdytujDaneWgKlasy(nowy(), false));
    EXPECT_EQ(wywolanie.referencje, 1);
    EXPECT_EQ(zywych, 0);
    EXPECT_TRUE(adres->EdytujDaneWgKlasy(nowy(), true)); // the function keeps it
    EXPECT_EQ(zywych, 1);
    zachowane = nullptr;
    EXPECT_EQ(zywych, 0);
    JadroKlas()->RejestrujFunEdycji(TAdres::KlasaStatyczna(), &Rzucajaca);
    EXPECT_EQ(Blad<EBladKonwersji>([&] { adres->EdytujDaneWgKlasy(nowy(), false); }), u"edycja");
    EXPECT_EQ(zywych, 0);
    JadroKlas()->RejestrujFunEdycji(TAdres::KlasaStatyczna(), nullptr);
    EXPECT_FALSE(adres->EdytujDaneWgKlasy(nowy(), false));
    EXPECT_EQ(zywych, 0);

    TLiczacy liczacy;
    DefFunEdycji = &Zapisujaca;
    EXPECT_TRUE(adres->EdytujDane(&liczacy, true));
    EXPECT_EQ(wywolanie.wlasciciel, &liczacy);
    EXPECT_EQ(liczacy.licznik, 0);
}

TEST_F(Parametry, EdycjaZArgumentami) {
    TAdres adres;
    adres.SetNumer(1);
    TPole& numer = *adres.Pole(TAdres::nrNumer);
    EXPECT_FALSE(numer.EdytujDane({1, u"x"}, false));
    JadroKlas()->RejestrujFunEdycji(TPoleInteger::KlasaStatyczna(), &Zapisujaca);
    EXPECT_TRUE(numer.EdytujDane({1, u"x"}, true));
    EXPECT_EQ(wywolanie.pole, &numer);
    ASSERT_EQ(wywolanie.wlasciciel, zachowane.get());
    EXPECT_EQ(wywolanie.referencje, 2); // of the two callers
    EXPECT_EQ(zachowane->LiczbaReferencji(), 1);
    EXPECT_TRUE(zachowane->Flaga());
    EXPECT_EQ(zachowane->Wartosc(1).Tekst(), u"x");
    EXPECT_EQ(zachowane->Wartosc(u"wynik").Tekst(), u"TPoleInteger");
    EXPECT_TRUE(numer.EdytujDane({}, false));
    EXPECT_EQ(wywolanie.referencje, 2);
    EXPECT_TRUE(numer.EdytujDane(true));
    EXPECT_EQ(wywolanie.wlasciciel, nullptr);
    EXPECT_TRUE(wywolanie.flaga);
    DefFunEdycji = &Rzucajaca;
    EXPECT_EQ(Blad<EBladKonwersji>([&] { adres.EdytujDane({1, 2}, false); }), u"edycja");
}

// Nothing is touched behind an edit function that frees its field, the field's object or the parameters' targets.
TEST_F(Parametry, FunkcjaEdycjiMozeWszystko) {
    const auto pole = []() -> TPole& { return *edytowany->DajPole(TAdres::nrNumer); };
    for (const bool domyslna : {false, true})
        for (const bool flaga : {false, true}) {
            edytowany = Utworz<TAdres>();
            if (domyslna)
                DefFunEdycji = &Usuwajaca;
            else
                JadroKlas()->RejestrujFunEdycji(TPoleInteger::KlasaStatyczna(), &Usuwajaca);
            EXPECT_EQ(Blad([&] {
                          EXPECT_TRUE(pole().EdytujDane({edytowany.get(), 1}, flaga));
                      }),
                      flaga ? u"edycja" : u"(no error)");
            EXPECT_EQ(!edytowany, flaga);
            TAdres inny;
            EXPECT_FALSE(inny.DajPole(TAdres::nrNumer)->EdytujDane(flaga)); // nothing is registered any more
        }
}

} // namespace
