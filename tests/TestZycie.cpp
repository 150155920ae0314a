// Life and death: what may own and free an object, and hooks that do anything at any time.
#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <set>

#include "tests/Bledy.h"
#include "tests/StrumienieTestowe.h"
#include "tests/Testy.h"
#include "ztok/fields/TZTParam.h"
#include "ztok/kernel/DeklaracjaObiektu.h"
#include "ztok/kernel/TJadroKlas.h"
#include "ztok/kernel/TObiektTS.h"
#include "ztok/lists/TKolekcjaObiektow.h"
#include "ztok/lists/TListaWskObiektow.h"
#include "ztok/platform/Pula.h"
#include "ztok/platform/ZatrutaPamiec.h"
#include "ztok/repository/Repozytorium.h"

using namespace ztok;
using namespace strumienie;
using testy::TPowiadomienia;

namespace {

class THak;
class TListaHakow;

// Whichever hook of any object is called for the `kiedy`-th time does `co`.
struct TWyzwalacz {
    bool cisza = false; // nothing counts
    int kiedy = 0;
    int licznik = 0;
    std::function<void(THak&)> co;
    std::set<const void*> zyja;
};
TWyzwalacz wyzwalacz;

class THak : public TObiekt {
    ZTOK_OBIEKT(THak, TObiekt, (0, Nazwa, String), (1, Liczba, Integer), (2, Dziecko, Obiekt<THak>),
                (3, Lista, Obiekt<TListaHakow>), (4, Cel, Ref<THak>), (5, Cele, Obiekt<TListaRefObiektow>))

    struct TSlad {
        explicit TSlad(const THak* o) : hak(o) { wyzwalacz.zyja.insert(hak); }
        TSlad(const TSlad&) = delete;
        TSlad& operator=(const TSlad&) = delete;
        ~TSlad() { wyzwalacz.zyja.erase(hak); }
        const void* hak;
    } slad{this};

    void Hak() const {
        if (!wyzwalacz.cisza && ++wyzwalacz.licznik == wyzwalacz.kiedy && wyzwalacz.co)
            std::exchange(wyzwalacz.co, nullptr)(const_cast<THak&>(*this));
    }
    void UtworzonoPole(int) override { Hak(); }
    void SetBylyZmiany(int) override { Hak(); }
    [[nodiscard]] bool PoleZapisywane(int) const override {
        const TUzycie uzycie(*this);
        Hak();
        return true;
    }
    void ZerujDane() override {
        const TUzycie uzycie(*this);
        Hak();
        TObiekt::ZerujDane();
    }
    void WykonajOdczyt(TStrumien& strumien, TOdczytywaczDanych& odczytywacz) override {
        Hak();
        TObiekt::WykonajOdczyt(strumien, odczytywacz);
        Hak();
    }
    void WykonajOdczytTekstowy(TOdczytywaczTekstu& odczytywacz) override {
        Hak();
        TObiekt::WykonajOdczytTekstowy(odczytywacz);
        Hak();
    }
    void WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) override {
        Hak();
        TObiekt::WykonajKopiowanie(zrodlo, kopier);
        Hak();
    }
    void DajObiektyDoZapisu(TZapisywaczDanych& zapisywacz) const override {
        Hak();
        TObiekt::DajObiektyDoZapisu(zapisywacz);
    }
    void WykonajZapis(TStrumien& strumien, TZapisywaczDanych& zapisywacz) const override {
        Hak();
        TObiekt::WykonajZapis(strumien, zapisywacz);
        Hak();
    }
    void WykonajZapisTekstowy(TZapisywaczTekstu& zapisywacz) const override {
        Hak();
        TObiekt::WykonajZapisTekstowy(zapisywacz);
        Hak();
    }
    [[nodiscard]] bool MaCechy(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter) const override {
        const TUzycie uzycie(*this);
        Hak();
        return TObiekt::MaCechy(pola, wartosci, rozmLiter);
    }

  protected:
    void WykonajDestrukcje() override {
        Hak();
        TObiekt::WykonajDestrukcje();
        Hak();
    }
};

class TListaHakow : public TListaTypu<THak> {
    ZTOK_LISTA(TListaHakow, THak)
};

TListaHakow* ListaNad(THak& o) {
    return o.Rodzic() != nullptr && o.Rodzic()->JestKlasy(TListaHakow::KlasaStatyczna())
               ? static_cast<TListaHakow*>(o.Rodzic())
               : nullptr;
}
THak* ObiektNad(THak& o) {
    return o.Rodzic() != nullptr && o.Rodzic()->JestKlasy(THak::KlasaStatyczna()) ? static_cast<THak*>(o.Rodzic())
                                                                                  : nullptr;
}

void Wypelnij(THak& o, int poziom) {
    o.SetNazwa(poziom % 2 == 0 ? u"a" : u"b");
    o.SetLiczba(poziom);
    if (poziom == 0)
        return;
    Wypelnij(o.GetDziecko(), 0);
    for (int i = 0; i < 3; ++i)
        Wypelnij(static_cast<THak&>(*o.GetLista().DodajObiekt(nullptr, MaxInt)), i == 1 ? poziom - 1 : 0);
    o.SetCel(o.GetLista()[1]);
    o.GetLista()[0]->SetCel(&o.GetDziecko());
    o.GetCele().DodajObiekt(o.GetLista()[2], MaxInt);
    o.GetCele().DodajObiekt(&o, MaxInt);
}

// Parents, owners, counts and registrations are right all over the tree.
void Sprawdz(THak& o) {
    if (THak* obiekt = o.GetCel(); obiekt != nullptr) {
        ASSERT_TRUE(wyzwalacz.zyja.contains(obiekt) && obiekt->MaRefOd(o.Pole(THak::nrCel)));
    }
    if (o.Pole(THak::nrDziecko) != nullptr) {
        ASSERT_TRUE(o.GetDziecko().Rodzic() == &o && o.GetDziecko().JestTrzymany() && !o.GetDziecko().Ginie());
        Sprawdz(o.GetDziecko());
    }
    if (o.Pole(THak::nrLista) != nullptr) {
        ASSERT_TRUE(o.GetLista().Rodzic() == &o && o.GetLista().IleObiektow() <= o.GetLista().Pojemnosc());
        for (THak* element : o.GetLista())
            if (element != nullptr) {
                ASSERT_TRUE(element->Rodzic() == &o.GetLista() && element->JestTrzymany() && !element->Ginie());
                Sprawdz(*element);
            }
    }
    if (o.Pole(THak::nrCele) != nullptr) {
        ASSERT_LE(o.GetCele().IleObiektow(), o.GetCele().Pojemnosc());
        for (TObiektBazowy* element : o.GetCele())
            ASSERT_TRUE(element == nullptr || element->MaRefOd(&o.GetCele()));
    }
}

TWlasny<THak> NoweDrzewo() {
    wyzwalacz.cisza = true;
    auto nowe = Utworz<THak>();
    Wypelnij(*nowe, 2);
    wyzwalacz.cisza = false;
    return nowe;
}

struct TNazwane {
    const char* nazwa;
    std::function<void(THak&)> co;
};

THak* korzen = nullptr;
TWlasny<TObiektBazowy> wyjety;

const TNazwane kDzialania[] = {
    {"zeruje siebie", [](THak& o) { o.ZerujDane(); }},
    {"zeruje rodzica", [](THak& o) { o.Rodzic() != nullptr ? o.Rodzic()->ZerujDane() : void(); }},
    {"zwalnia siebie", [](THak& o) { Zwolnij(&o); }},
    {"zwalnia korzen", [](THak&) { Zwolnij(korzen); }},
    {"usuwa sie z listy", [](THak& o) { ListaNad(o) ? void(ListaNad(o)->UsunTenObiekt(&o, true)) : void(); }},
    {"wyjmuje sie z listy",
     [](THak& o) {
         if (ListaNad(o) != nullptr)
             wyjety.Ustaw(ListaNad(o)->UsunTenObiekt(&o, false));
     }},
    {"usuwa pierwszego", [](THak& o) { ListaNad(o) ? void(ListaNad(o)->UsunObiekt(0, true, false)) : void(); }},
    {"usuwa ostatniego",
     [](THak& o) {
         if (TListaHakow* l = ListaNad(o); l != nullptr)
             l->UsunObiekt(l->IleObiektow() - 1, true, false);
     }},
    {"oproznia liste", [](THak& o) { ListaNad(o) ? ListaNad(o)->SkrocListe(0, false) : void(); }},
    {"dopisuje do listy",
     [](THak& o) {
         for (int i = 0; ListaNad(o) != nullptr && i < 20; ++i)
             ListaNad(o)->DodajObiekt(nullptr, i % 2 == 0 ? 0 : MaxInt);
     }},
    {"zglasza blad", [](THak&) { throw EWyjatek(u"hak"); }},
    {"pisze do pol", [](THak& o) { o.SetLiczba(77), o.GetDziecko().SetNazwa(u"z haka"); }},
    {"odsyla do siebie", [](THak& o) { o.SetCel(&o), o.GetCele().DodajObiekt(&o, MaxInt); }},
    {"zwalnia pole", [](THak& o) { o.UstawPole(THak::nrDziecko, nullptr, true); }},
    {"zwalnia pole nad soba",
     [](THak& o) { ObiektNad(o) ? ObiektNad(o)->UstawPole(THak::nrDziecko, nullptr, true) : void(); }},
    {"zapisuje korzen", [](THak&) { Zapisz(*korzen), Tekst(*korzen); }},
    {"sortuje", [](THak& o) { ListaNad(o) ? void(ListaNad(o)->PosortujWgPol(std::vector<TArgument>{1})) : void(); }},
};

const TNazwane kOperacje[] = {
    {"odczyt", [](THak& o) { Wczytaj(o, Zapisz(o)); }},
    {"odczyt tekstu", [](THak& o) { ZTekstu(o, Tekst(o)); }},
    {"kopia",
     [](THak& o) {
         const auto inny = NoweDrzewo();
         o.GetLista()[1]->GetLista().SkrocListe(1, false);
         o.KopiujDane(*inny);
     }},
    {"klon", [](THak& o) { const auto klon = o.KlonujObiekt(false); }},
    {"porownanie",
     [](THak& o) {
         const auto inny = NoweDrzewo();
         TPorownywaczDanych p(&o, inny.get(), rpBezChwilowych, rlRozmLiterWazny, LocaleWin1250, tprRefJakoWskazn);
         static_cast<void>(o.Porownaj(*inny, &p));
     }},
    {"wyroznik", [](THak& o) { static_cast<void>(o.DajWyroznikObiektu()); }},
    {"zerowanie", [](THak& o) { o.ZerujDane(); }},
    {"skrocenie", [](THak& o) { o.GetLista().SkrocListe(1, false); }},
    {"usuniecie", [](THak& o) { o.GetLista().UsunObiekt(1, true, false); }},
    {"usuniecie wg cech",
     [](THak& o) {
         const std::vector<TArgument> pola = {1};
         const std::vector<TArgument> wartosci = {0};
         o.GetLista().UsunObiekty(pola, wartosci, rlRozmLiterWazny);
     }},
    {"wpisanie",
     [](THak& o) {
         o.WpiszDane({0, 1, u"Dziecko.Nazwa"}, {u"x", 4, u"y"});
     }},
    {"inicjacja",
     [](THak& o) {
         o.Inicjuj({0, 1}, {u"x", 4});
     }},
    {"podmiana pola", [](THak& o) { o.UstawPole(THak::nrDziecko, Utworz<THak>().Oddaj(), true); }},
    {"koniec", [](THak& o) { Zwolnij(&o); }},
};

// The operation on a fresh tree, with the action at that call of a hook; how many calls there were.
int Wykonaj(const TNazwane& operacja, const TNazwane* dzialanie, int kiedy) {
    wyzwalacz = {};
    korzen = NoweDrzewo().Oddaj();
    wyzwalacz.kiedy = kiedy;
    wyzwalacz.co = dzialanie == nullptr ? nullptr : dzialanie->co;
    try {
        operacja.co(*korzen);
    } catch (const EWyjatek&) {
    }
    const int ile = wyzwalacz.licznik;
    wyzwalacz.co = nullptr;
    wyjety.Ustaw();
    if (wyzwalacz.zyja.contains(korzen)) {
        Sprawdz(*korzen);
        const auto wczytany = Utworz<THak>();
        const std::string zapis = Zapisz(*korzen);
        EXPECT_NO_THROW(Wczytaj(*wczytany, zapis));
        EXPECT_EQ(Zapisz(*wczytany), zapis);
        wczytany->ZerujDane();
        Zwolnij(korzen);
    }
    return ile;
}

class Zycie : public testing::Test {
  protected:
    static void SetUpTestSuite() { RejestrujKlasy<THak, TListaHakow>(); }
};

} // namespace

// Every hook that an operation calls, in turn, does every one of the actions.
TEST_F(Zycie, HakiRobiaCokolwiek) {
    const TPowiadomienia powiadomienia;
    for (const TNazwane& operacja : kOperacje) {
        const int ile = Wykonaj(operacja, nullptr, 0);
        EXPECT_GT(ile, 0) << operacja.nazwa;
        for (const TNazwane& dzialanie : kDzialania)
            for (int kiedy = 1; kiedy <= ile; ++kiedy) {
                SCOPED_TRACE(testing::Message() << operacja.nazwa << ", " << dzialanie.nazwa << ", " << kiedy);
                Wykonaj(operacja, &dzialanie, kiedy);
                EXPECT_EQ(wyzwalacz.zyja.size(), 0U);
                ASSERT_FALSE(HasFailure());
            }
    }
}

namespace {

// Counts its lock and its end; on request the end raises first, or frees the object.
class TBlokowany : public TObiektTS {
    ZTOK_OBIEKT(TBlokowany, TObiektTS, (0, Nazwa, String))

    static inline int sekcje = 0;
    static inline int konce = 0;
    static inline char koniec = 0;
    static inline bool zwolnijPrzyZmianie = false;

    void TworzSekcjeKrytyczna() override { ++sekcje; }
    void UsunSekcjeKrytyczna() override { --sekcje; }
    void SetBylyZmiany(int) override {
        if (std::exchange(zwolnijPrzyZmianie, false))
            Zwolnij(this);
    }

  protected:
    void WykonajDestrukcje() override {
        ++konce;
        if (koniec == 'b')
            ZTError(u"koniec");
        if (koniec == 'z')
            Zwolnij(this);
        TObiektTS::WykonajDestrukcje();
    }
};

struct TNiewlasciwe {
    const char* nazwa;
    const char16_t* blad;
    void (*co)();
};

const TNiewlasciwe kNiewlasciwe[] = {
    {"ze stosu do listy",
     u"TListaHakow: obiekt klasy THak leży na stosie lub w innym obiekcie i nie może mieć właściciela",
     [] {
         THak o;
         Utworz<TListaHakow>()->DodajObiekt(&o, 0);
     }},
    {"ze stosu do pola", u"THak: obiekt klasy THak leży na stosie lub w innym obiekcie i nie może mieć właściciela",
     [] {
         THak o;
         Utworz<THak>()->UstawPole(THak::nrDziecko, &o, true);
     }},
    {"parametr do kolekcji",
     u"TKolekcjaObiektow: obiekt klasy TZTParam żyje według liczby odwołań i nie może mieć właściciela",
     [] { Utworz<TKolekcjaObiektow>()->DodajObiekt(ZTParam({1}).get(), 0); }},
    {"zwolnienie ze stosu", u"obiekt klasy THak leży na stosie lub w innym obiekcie i nie można go zwolnić",
     [] {
         THak o;
         Zwolnij(&o);
     }},
    {"zwolnienie elementu", u"obiekt klasy THak ma właściciela i nie można go zwolnić : Lista[0]",
     [] {
         const auto o = Utworz<THak>();
         Zwolnij(o->GetLista().DodajObiekt(nullptr, 0));
     }},
    {"zwolnienie pola", u"obiekt klasy THak ma właściciela i nie można go zwolnić : Dziecko",
     [] { Zwolnij(&Utworz<THak>()->GetDziecko()); }},
    {"jedno pole dwa razy", u"THak: obiekt klasy TPoleInteger jest już polem o numerze 1",
     [] {
         const auto o = Utworz<THak>();
         o->SetLiczba(1);
         o->UstawPole(2, o->Pole(1), true);
     }},
    {"cykl", u"THak: obiekt klasy THak nie może zawierać samego siebie",
     [] {
         auto korzenCyklu = Utworz<THak>();
         THak* o = korzenCyklu.get();
         for (int i = 0; i < 600; ++i)
             o = &o->GetDziecko();
         o->UstawPole(THak::nrDziecko, korzenCyklu.get(), true);
     }},
    {"za duzy numer", u"THak: brak pola o numerze 32768", [] { Utworz<THak>()->ZrobMiejsceDlaPola(32768); }},
    {"koniec z bledem", u"koniec",
     [] {
         TBlokowany::koniec = 'b';
         Zwolnij(Utworz<TBlokowany>().Oddaj());
     }},
    {"koniec w koncu", u"obiekt klasy TBlokowany właśnie ginie : ",
     [] {
         TBlokowany::koniec = 'z';
         Zwolnij(Utworz<TBlokowany>().Oddaj());
     }},
    {"zmiana zwalnia", u"(no error)",
     [] {
         TBlokowany::zwolnijPrzyZmianie = true;
         Utworz<TBlokowany>().Oddaj()->SetNazwa(u"x");
     }},
    {"obok listy", u"(no error)",
     [] {
         const TPowiadomienia powiadomienia;
         auto o = Utworz<THak>();
         const auto lista = Utworz<TListaHakow>();
         lista->DodajObiekt(o.get(), 0);
         o.Ustaw(); // the list's, as the notice tells
         EXPECT_EQ(TPowiadomienia::Tresci().size(), 1U);
         EXPECT_EQ(lista->IleObiektow(), 1);
     }},
    {"uchwyt po przekazaniu", u"(no error)",
     [] {
         TUchwyt pierwszy;
         TUchwyt drugi;
         auto lista = Utworz<TListaHakow>();
         for (TUchwyt* uchwyt : {&pierwszy, &drugi}) {
             uchwyt->UstawObiekt(Utworz<THak>().Oddaj());
             lista->DodajObiekt(static_cast<THak*>(uchwyt->Obiekt()), MaxInt);
         }
         pierwszy.Zeruj();
         EXPECT_EQ(lista->IleObiektow(), 2);
         EXPECT_FALSE(drugi.OddajObiekt());
         lista.Ustaw();
         EXPECT_TRUE(drugi.Pusty() && drugi.Obiekt() == nullptr);
     }},
};

} // namespace

// What must not be owned or freed is refused, or comes out right; nothing is lost and nothing freed twice.
TEST_F(Zycie, NiewlasciweUzycie) {
    RejestrujKlasy<TBlokowany>();
    wyzwalacz = {};
    for (const TNiewlasciwe& n : kNiewlasciwe) {
        SCOPED_TRACE(n.nazwa);
        TBlokowany::konce = 0;
        EXPECT_EQ(testy::Blad(n.co), n.blad);
        EXPECT_EQ(wyzwalacz.zyja.size(), 0U);
        EXPECT_LE(TBlokowany::konce, 1);
        EXPECT_EQ(TBlokowany::sekcje, 0);
        TBlokowany::koniec = 0;
    }
}

TEST_F(Zycie, ZwolnionyDrugiRaz) {
    if (kPamiecZatruta)
        GTEST_SKIP() << "the sanitizer tells it first";
    THak* o = Utworz<THak>().Oddaj();
    Zwolnij(o);
    EXPECT_EQ(testy::Blad([&] { Zwolnij(o); }), u"obiekt jest już zwolniony");
    const TPowiadomienia powiadomienia;
    { // an owner that outlives the list
        auto lista = Utworz<TListaHakow>();
        const TWlasny<TObiektBazowy> obok(lista->DodajObiekt(nullptr, 0));
        lista.Ustaw();
    }
    EXPECT_EQ(TPowiadomienia::Tresci(), (std::vector<std::u16string>{u"obiekt jest już zwolniony"}));
}

// A parent that dies first leaves its children without one, whoever holds them now.
TEST_F(Zycie, DzieckoPrzezywaRodzica) {
    for (const bool naStosie : {false, true}) {
        auto rodzic = Utworz<THak>();
        std::optional<THak> rodzicNaStosie;
        THak& r = naStosie ? rodzicNaStosie.emplace() : *rodzic;
        const auto dziecko = Utworz<THak>(&r);
        const auto klon = r.GetDziecko().KlonujObiekt(true);
        const THak dzieckoNaStosie(&r);
        auto lista = Utworz<TListaHakow>();
        THak* oddane = static_cast<THak*>(lista->DodajObiekt(Utworz<THak>(&r).Oddaj(), 0));
        auto wczesniej = Utworz<THak>(&r);
        wczesniej.Ustaw();
        EXPECT_TRUE(dziecko->Rodzic() == &r && klon->Rodzic() == &r && oddane->Rodzic() == lista.get());
        rodzic.Ustaw();
        rodzicNaStosie.reset();
        EXPECT_TRUE(dziecko->Rodzic() == nullptr && klon->Rodzic() == nullptr && dzieckoNaStosie.Rodzic() == nullptr);
        EXPECT_TRUE(oddane->Rodzic() == lista.get());
        EXPECT_EQ(dziecko->DajKorzen(), dziecko.get());
    }
    TWlasny<THak> lancuch = Utworz<THak>(); // links that hold nothing cost no walk up to the root
    THak* o = lancuch.get();
    for (int i = 0; i < 200000; ++i) {
        auto ogniwo = Utworz<THak>();
        THak* nastepne = ogniwo.get();
        o->UstawPole(THak::nrDziecko, ogniwo.Oddaj(), true);
        o = nastepne;
    }
}

// The lock of an object on the stack is made when it is locked first, and only then it is taken apart.
TEST_F(Zycie, BlokadaNaStosie) {
    for (const bool blokowany : {false, true}) {
        TBlokowany::konce = 0;
        {
            TBlokowany o;
            EXPECT_EQ(TBlokowany::sekcje, 0);
            if (blokowany)
                o.SetNazwa(u"x"), o.SetNazwa(u"y");
            EXPECT_EQ(TBlokowany::sekcje, blokowany ? 1 : 0);
        }
        EXPECT_EQ(TBlokowany::sekcje, 0);
        EXPECT_EQ(TBlokowany::konce, 1);
    }
}

namespace inna {
class THak : public TObiekt {
    ZTOK_OBIEKT(THak, TObiekt, (0, Nazwa, String))
};
} // namespace inna

// Descriptors and casts go by the name: the second class of it is refused before its first object.
TEST_F(Zycie, DwieKlasyJednejNazwy) {
    const std::u16string_view blad = u"THak: inna klasa o tej nazwie jest już w użyciu: przodek TObiekt, rozmiar ";
    EXPECT_EQ(testy::Blad([] { static_cast<void>(Utworz<inna::THak>()); }).substr(0, blad.size()), blad);
    EXPECT_THROW(RejestrujKlasy<inna::THak>(), ZTException);
    EXPECT_THROW(static_cast<void>(JadroKlas()->OpisKlasy(inna::THak::KlasaStatyczna())), ZTException);
}
