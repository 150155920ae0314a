// Objects: incoming references, end of life, typed access, initialisation, locks.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <new>
#include <optional>
#include <random>
#include <set>
#include <stdexcept>

#include "tests/Bledy.h"
#include "tests/Probki.h"
#include "tests/StrumienieTestowe.h"
#include "ztok/platform/Kodowania.h"

namespace {

using namespace ztok;
using probki::TAdres;
using probki::TWszystko;
using testy::Blad;
using testy::TPowiadomienia;
using testy::Zglasza;

std::vector<std::u16string> slady; // what happened, in order

// A field that tells when it is cleared, and can refuse.
class TPoleSlad : public TPole {
    ZTOK_KLASA_DEKL(TPoleSlad)
    void ZerujRefDo(TObiektBazowy* cel) override {
        kolejnosc.push_back(this);
        EXPECT_FALSE(cel->MaRefOd(this)); // taken out before it is told
        cel->ZwolnijRefOd(this);
        if (odmawia)
            ZTError(u"odmowa");
    }
    void ZerujDane() override {}
    bool odmawia = false;
    static inline std::vector<TPoleSlad*> kolejnosc;
};
ZTOK_KLASA_DEF(TPoleSlad, TPole)

// An object whose every step leaves a trace and can fail.
class TSladowy : public TObiekt {
    ZTOK_OBIEKT(TSladowy, TObiekt, (0, Nazwa, String), (1, Dziecko, Obiekt<TSladowy>), (2, Adres, Obiekt<TAdres>))

    void ZerujDane() override {
        slady.push_back(u"ZerujDane");
        TObiekt::ZerujDane();
        if (bladZeruj != nullptr)
            bladZeruj();
    }
    void UsunSekcjeKrytyczna() override { slady.push_back(u"UsunSekcje"); }
    void TworzSekcjeKrytyczna() override { slady.push_back(u"TworzSekcje"); }
    void ZerujRefDo(TObiektBazowy* /*cel*/) override {
        slady.push_back(u"ZerujRefDo");
        if (bladRef)
            ZTError(u"ref");
    }
    void (*bladZeruj)() = nullptr;
    bool bladRef = false;
};

// Counts its locks: the depth must come back to zero.
class TBlokowany : public TObiekt {
    ZTOK_OBIEKT(TBlokowany, TObiekt)
    void ZablokujObiekt() const override { ++zablokowan; }
    void OdblokujObiekt() const override { ++odblokowan; }
    mutable int zablokowan = 0;
    mutable int odblokowan = 0;
};
class TPodBlokada : public TObiektITS {
    ZTOK_OBIEKT(TPodBlokada, TObiektITS, (0, Liczba, Integer))
};

class Obiekt : public testing::Test {
  protected:
    void SetUp() override {
        slady.clear();
        TPoleSlad::kolejnosc.clear();
    }
};

TEST_F(Obiekt, ReferencjeSaZbioremWPorzadkuAdresow) {
    std::vector<TWlasny<TPoleSlad>> pola;
    for (int i = 0; i < 40; ++i)
        pola.push_back(Utworz<TPoleSlad>());
    auto obiekt = Utworz<TAdres>();
    std::set<TPoleSlad*> model;
    std::mt19937 los(7);
    for (int krok = 0; krok < 4000; ++krok) {
        TPoleSlad* pole = pola[los() % pola.size()].get();
        if (los() % 2 == 0) {
            obiekt->DodajRefOd(pole);
            model.insert(pole);
        } else {
            obiekt->ZwolnijRefOd(pole);
            model.erase(pole);
        }
        const TPoleSlad* pytane = pola[los() % pola.size()].get();
        int gdzie = -1;
        const auto oczekiwane = model.lower_bound(const_cast<TPoleSlad*>(pytane));
        EXPECT_EQ(obiekt->JestRefOd(pytane, gdzie), model.count(const_cast<TPoleSlad*>(pytane)) == 1);
        EXPECT_EQ(gdzie, std::distance(model.begin(), oczekiwane));
        EXPECT_EQ(obiekt->MaJakiesRef(), !model.empty());
    }
    for (const auto& pole : pola)
        obiekt->DodajRefOd(pole.get());
    pola[3]->odmawia = true; // all are told all the same, and the first error comes at the end
    EXPECT_EQ(Blad([&] { Zwolnij(obiekt.Oddaj()); }), u"Wyjątek w ZwolnijReferencje w TAdres.Destroy (): odmowa");
    EXPECT_EQ(TPoleSlad::kolejnosc.size(), pola.size());
    EXPECT_TRUE(std::is_sorted(TPoleSlad::kolejnosc.begin(), TPoleSlad::kolejnosc.end(), std::greater<>()));
}

TEST_F(Obiekt, KoniecZyciaWKolejnosciIDoKonca) {
    const auto wskazujacy = Utworz<TSladowy>();
    const struct {
        bool ref;
        void (*zeruj)();
        std::u16string_view komunikat;
    } przypadki[] = {
        {false, nullptr, u"(no error)"},
        {true, nullptr, u"Wyjątek w ZwolnijReferencje w TSladowy.Destroy (): ref"},
        {false, [] { ZTError(u"dane"); }, u"Wyjątek w ZerujDane w TSladowy.Destroy (): dane"},
        {true, [] { ZTError(u"dane"); }, u"Wyjątek w ZwolnijReferencje w TSladowy.Destroy (): ref"},
        {false, [] { throw std::runtime_error("obcy"); }, u"Wyjątek w ZerujDane w TSladowy.Destroy (): obcy"},
    };
    for (const auto& p : przypadki)
        for (const char jak : {'z', 'u', 's'}) { // only the first raises; the others tell the user
            SCOPED_TRACE(testing::Message() << Utf8ZUtf16(p.komunikat) << jak);
            const TPowiadomienia powiadomienia;
            wskazujacy->bladRef = p.ref;
            std::optional<TSladowy> naStosie;
            TWlasny<TSladowy> naStercie = Utworz<TSladowy>();
            TSladowy& o = jak == 's' ? naStosie.emplace() : *naStercie;
            o.SetNazwa(u"x");
            o.DodajRefOd(wskazujacy.get());
            o.bladZeruj = p.zeruj;
            slady.clear();
            const std::u16string blad = Blad<ZTException>([&] {
                if (jak == 'z')
                    Zwolnij(naStercie.Oddaj());
                else
                    jak == 'u' ? naStercie.Ustaw() : naStosie.reset();
            });
            EXPECT_EQ(slady, (std::vector<std::u16string>{u"ZerujRefDo", u"ZerujDane", u"UsunSekcje"}));
            EXPECT_EQ(jak == 'z' || TPowiadomienia::Tresci().empty() ? blad : TPowiadomienia::Tresci()[0], p.komunikat);
            EXPECT_EQ(TPowiadomienia::Tresci().size(), jak != 'z' && p.komunikat[0] != u'(' ? 1U : 0U);
        }
    wskazujacy->bladRef = false;
    auto o = Utworz<TSladowy>(); // out of memory passes as it is
    o->bladZeruj = [] { throw std::bad_alloc(); };
    EXPECT_THROW(Zwolnij(o.Oddaj()), std::bad_alloc);
}

TEST_F(Obiekt, BladWPoddrzewieMaJedenKontekst) {
    auto korzen = Utworz<TSladowy>();
    korzen->GetDziecko().GetDziecko().bladZeruj = [] { ZTError(u"głęboko"); };
    TSladowy odwolanie;
    odwolanie.bladRef = true;
    korzen->GetDziecko().DodajRefOd(&odwolanie);
    // The child's own error comes before the grandchild's; both are deeper than the root, which adds nothing.
    EXPECT_EQ(Blad([&] { Zwolnij(korzen.Oddaj()); }), u"Wyjątek w ZwolnijReferencje w TSladowy.Destroy (Dziecko): ref");
    EXPECT_EQ(std::count(slady.begin(), slady.end(), u"UsunSekcje"), 3);

    TKolekcjaObiektow lista; // frees all its elements and is valid after an error
    for (int i = 0; i < 5; ++i) {
        auto element = Utworz<TSladowy>();
        if (i == 1 || i == 3)
            element->bladZeruj = i == 3 ? [] { ZTError(u"trzy"); } : [] { ZTError(u"jeden"); };
        lista.Dodaj(std::move(element));
    }
    slady.clear();
    EXPECT_EQ(Blad([&] { lista.SkrocListe(1, false); }), u"Wyjątek w ZerujDane w TSladowy.Destroy ([3]): trzy");
    EXPECT_EQ(std::count(slady.begin(), slady.end(), u"UsunSekcje"), 4);
    EXPECT_EQ(lista.IleObiektow(), 1);
    EXPECT_EQ(lista.Pojemnosc(), 1);
}

TEST_F(Obiekt, RodziceIKlony) {
    TWszystko korzen;
    TWszystko& element = korzen.GetPodrzedne().Dopisz();
    TAdres& adres = element.GetAdres();
    EXPECT_EQ(adres.DajKorzen(), &korzen);
    EXPECT_EQ(korzen.DajKorzen(), &korzen);
    const struct {
        const TObiektBazowy* obiekt;
        const TKlasa* klasa;
        const TObiektBazowy* rodzic;
    } rodzice[] = {{&adres, TWszystko::KlasaStatyczna(), &element},
                   {&element, TWszystko::KlasaStatyczna(), &korzen}, // never the object itself
                   {&element, TListaBazowa::KlasaStatyczna(), &korzen.GetPodrzedne()},
                   {&korzen, TObiektBazowy::KlasaStatyczna(), nullptr},
                   {&adres, TAdres::KlasaStatyczna(), nullptr}};
    for (const auto& r : rodzice)
        EXPECT_EQ(r.obiekt->DajRodzica(r.klasa), r.rodzic);
    EXPECT_EQ(adres.DajSciezkeDoSiebie(), u"Podrzedne[0].Adres");
    EXPECT_EQ(adres.DajSciezkeDoSiebie(&korzen.GetPodrzedne()), u"[0].Adres");
    EXPECT_EQ(adres.DajSciezkeDoSiebie(&adres), u"");
    korzen.GetTablica().Dodaj(1);
    EXPECT_EQ(korzen.GetTablica().DodajObiekt(Utworz<TAdres>())->DajSciezkeDoSiebie(), u"Tablica[1]");
    TAdres* bezNazwy = Utworz<TAdres>().Oddaj();
    element.UstawPole(40, bezNazwy, true); // a number that the class does not declare
    EXPECT_EQ(bezNazwy->DajSciezkeDoSiebie(), u"Podrzedne[0].#40");
    element.UstawPole(40, nullptr, true);
    adres.SetUlica(u"Długa");
    for (const bool zachowaj : {false, true}) {
        const TWlasny<TObiektBazowy> klon = adres.KlonujObiekt(zachowaj);
        EXPECT_EQ(klon->Klasa(), TAdres::KlasaStatyczna());
        EXPECT_EQ(klon->Rodzic(), zachowaj ? &element : nullptr);
        EXPECT_EQ(klon->Porownaj(adres), 0);
        EXPECT_EQ(klon->DajWyroznikObiektu(), adres.DajWyroznikObiektu());
        EXPECT_EQ(klon->DajSciezkeDoSiebie(), u""); // the parent does not hold it
        static_cast<TAdres&>(*klon).SetUlica(u"Krótka");
        EXPECT_EQ(adres.GetUlica(), u"Długa");
        EXPECT_NE(klon->DajWyroznikObiektu(), adres.DajWyroznikObiektu());
    }
}

// Each kind: how to write a value, whether the reader gives it, whether the reader gives the empty value.
struct TRodzajDostepu {
    int nr;
    void (*pisz)(TWszystko&, int);
    bool (*jest)(const TWszystko&, int);
    bool (*puste)(const TWszystko&, int);
};
#define DOSTEP(nr, Nazwa, wartosc, zero)                                                                               \
    {                                                                                                                  \
        nr, [](TWszystko& o, int n) { o.SetPole##Nazwa(n, wartosc); },                                                 \
            [](const TWszystko& o, int n) { return o.GetPole##Nazwa(n) == (wartosc); },                                \
            [](const TWszystko& o, int n) { return o.GetPole##Nazwa(n) == (zero); }                                    \
    }
TAdres* celTestu = nullptr;
const TRodzajDostepu dostepy[] = {
    DOSTEP(0, Byte, std::uint8_t{255}, 0),
    DOSTEP(1, Smallint, std::int16_t{-32768}, 0),
    DOSTEP(2, Word, std::uint16_t{65535}, 0),
    DOSTEP(3, Integer, -2147483647 - 1, 0),
    DOSTEP(4, Cardinal, 4294967295U, 0U),
    DOSTEP(5, Int64, std::int64_t{-9223372036854775807LL}, 0),
    DOSTEP(6, Double, -0.1, 0.0),
    DOSTEP(7, Boolean, true, false),
    DOSTEP(8, String, std::u16string_view(u"Łódź"), u""),
    DOSTEP(10, RawByteString, std::string_view("\xB3\0x", 3), ""),
    DOSTEP(11, WideString, std::u16string_view(u"\xD83D\xDE00"), u""),
    DOSTEP(12, CDATA, std::u16string_view(u"<a>"), u""),
    DOSTEP(18, RefObiektu, celTestu, nullptr),
    DOSTEP(17, WskObiektu, celTestu, nullptr),
};

TEST_F(Obiekt, DostepDoPolKazdegoRodzaju) {
    const auto cel = Utworz<TAdres>();
    celTestu = cel.get();
    for (const TRodzajDostepu& d : dostepy) {
        const auto o = Utworz<TWszystko>();
        for (const int nr : {d.nr, -1, -32768, 9, 32767}) // reading creates nothing
            EXPECT_TRUE(d.puste(*o, nr)) << nr;
        EXPECT_EQ(o->OstUzywanePole(), -1);
        EXPECT_FALSE(o->PoleNiepuste(d.nr));
        d.pisz(*o, d.nr);
        EXPECT_TRUE(d.jest(*o, d.nr)) << d.nr;
        EXPECT_TRUE(o->GetMaWartosc(d.nr));
        EXPECT_EQ(o->OstUzywanePole(), d.nr);
        for (int nr = 0; nr < d.nr; ++nr)
            EXPECT_EQ(o->Pole(nr), nullptr);
        const TPole* pole = o->Pole(d.nr);
        o->SetMaWartosc(d.nr, false); // cleared, the field object stays
        EXPECT_EQ(o->Pole(d.nr), pole);
        EXPECT_TRUE(d.puste(*o, d.nr));
        EXPECT_FALSE(o->PoleNiepuste(-1));
        for (const int nr : {-1, 9, 26, 32767})
            EXPECT_TRUE(Zglasza<ZTException>([&] { d.pisz(*o, nr); })) << d.nr << " in " << nr;
    }
    EXPECT_FALSE(cel->MaJakiesRef());
}

TEST_F(Obiekt, DostepDoPolaInnejKlasyZglaszaBlad) {
    const auto cel = Utworz<TAdres>();
    celTestu = cel.get();
    const auto o = Utworz<TWszystko>();
    for (const TRodzajDostepu& d : dostepy)
        d.pisz(*o, d.nr);
    o->GetAdres().SetUlica(u"x");
    static_cast<void>(o->GetAdresy());
    for (const TRodzajDostepu& d : dostepy)
        for (int nr = 0; nr <= 14; ++nr) {
            if (nr == 9)
                continue;
            // String and CDATA go to the same field class; a registered pointer is a pointer too.
            const bool pasuje = d.nr == nr || (d.nr == 8 && nr == 12) || (d.nr == 12 && nr == 8);
            EXPECT_EQ(Zglasza<EBladRzutowania>([&] { static_cast<void>(d.puste(*o, nr)); }), !pasuje)
                << d.nr << " reads " << nr;
            EXPECT_EQ(Zglasza<EBladRzutowania>([&] { d.pisz(*o, nr); }), !pasuje) << d.nr << " writes " << nr;
        }
    EXPECT_EQ(Blad([&] { static_cast<void>(o->GetPoleInteger(8)); }),
              u"TWszystko: pole Nazwa jest typu TPoleString, spodziewany TPoleInteger");
    EXPECT_EQ(o->GetPoleWskObiektu(18), cel.get());
    EXPECT_TRUE(Zglasza<EBladRzutowania>([&] { static_cast<void>(o->GetPoleRefObiektu(17)); }));
    for (const TRodzajDostepu& d : dostepy)
        EXPECT_TRUE(d.jest(*o, d.nr) || d.nr == 8 || d.nr == 12) << d.nr; // nothing was overwritten
}

// Writes to its parent while the parent is being read.
class TNiecierpliwy : public TObiekt {
    ZTOK_OBIEKT(TNiecierpliwy, TObiekt, (0, N, Integer))
    void WykonajOdczyt(TStrumien& strumien, TOdczytywaczDanych& odczytywacz) override {
        Bazowa::WykonajOdczyt(strumien, odczytywacz);
        if (Rodzic()->Klasa()->Ma(ckObiekt)) // a stream of another test may put it into a list
            static_cast<TObiekt*>(Rodzic())->SetPoleString(2, u"za wczesnie");
    }
};
class TCierpliwy : public TObiekt {
    ZTOK_OBIEKT(TCierpliwy, TObiekt, (0, Dziecko, Obiekt<TNiecierpliwy>), (1, A, Integer), (2, B, String))
};

TEST_F(Obiekt, DzieckoPiszeDoRodzicaWTrakcieOdczytu) {
    const auto o = Utworz<TCierpliwy>();
    o->GetDziecko().SetN(1);
    o->SetA(2);
    o->SetB(u"ze strumienia");
    strumienie::Wczytaj(*o, strumienie::Zapisz(*o));
    EXPECT_EQ(o->GetA(), 2);
    EXPECT_EQ(o->GetB(), u"ze strumienia");
}

TEST_F(Obiekt, UstawPoleIFlagi) {
    TWszystko o;
    o.UstawPole(8, Utworz<TPoleString>().Oddaj(), true);
    EXPECT_TRUE(o.PoleNiepuste(8)); // a field put in counts as written
    const TWlasny<TAdres> adres = Utworz<TAdres>();
    o.UstawPole(13, adres.get(), false);
    EXPECT_EQ(adres->Rodzic(), &o);
    o.SetMaWartosc(13, true);
    EXPECT_FALSE(o.PoleNiepuste(13)); // its state is its own
    adres->SetNumer(0);
    EXPECT_TRUE(o.PoleNiepuste(13));
    o.UstawPole(8, nullptr, true);
    EXPECT_FALSE(o.PoleNiepuste(8));
    EXPECT_TRUE(o.PoleNiepuste(-1)); // through the nested object
    o.UstawPole(13, nullptr, false); // not freed: back to the test
    EXPECT_EQ(o.OstUzywanePole(), 13);
    for (const int nr : {-1, 32768})
        EXPECT_TRUE(Zglasza<ZTException>([&] { o.UstawPole(nr, Utworz<TPoleByte>().Oddaj(), true); }));
    o.SetMaWartosc(30, true); // a flag without a field object counts as unset
    EXPECT_FALSE(o.PoleNiepuste(30) || o.PoleNiepuste(-1));
}

TEST_F(Obiekt, BlokadaRodzica) {
    TPodBlokada wolny;
    wolny.SetLiczba(5); // nothing to lock
    EXPECT_EQ(wolny.GetLiczba(), 5);
    TBlokowany rodzic;
    auto dziecko = Utworz<TPodBlokada>(&rodzic);
    const auto wnuk = Utworz<TPodBlokada>(dziecko.get());
    wnuk->SetLiczba(1);
    EXPECT_GT(rodzic.zablokowan, 0);
    EXPECT_EQ(rodzic.zablokowan, rodzic.odblokowan);
    const auto plain = Utworz<TAdres>(&rodzic);
    rodzic.zablokowan = 0;
    plain->SetNumer(1);
    EXPECT_EQ(rodzic.zablokowan, 0);
    TObiektTS wielokrotny; // re-entrant
    const TBlokadaObiektu pierwsza(wielokrotny);
    const TBlokadaObiektu druga(wielokrotny);
}

TEST_F(Obiekt, OperacjeKtorychKlasaNieMa) {
    class TGoly : public TObiektBazowy {
        ZTOK_KLASA_MODELU(TGoly, TObiektBazowy)
        void ZerujDane() override {}
    };
    TGoly goly;
    TGoly inny;
    const std::pair<std::u16string_view, std::function<void()>> operacje[] = {
        {u"PoleNiepuste", [&] { static_cast<void>(goly.PoleNiepuste(-1)); }},
        {u"WykonajPorownanie", [&] { static_cast<void>(goly.Porownaj(inny)); }},
        {u"WykonajKopiowanie", [&] { static_cast<void>(goly.KlonujObiekt(false)); }}};
    for (const auto& [nazwa, operacja] : operacje)
        EXPECT_EQ(Blad<EBladAbstrakcyjny>(operacja), u"klasa TObiektBazowy nie ma operacji " + std::u16string(nazwa));
    // The others have a meaning for any object.
    EXPECT_EQ(goly.Porownaj(goly), 0);
    EXPECT_EQ(goly.OpisTekstowy(), u"?");
    EXPECT_FALSE(goly.SaDaneUnicode(-1));
    goly.PrzytnijPolaWgRozm(true);
    goly.TrymujPolaTekstowe(true);
    goly.ZerujDaneOprocz({});
    const TArgument calosc[] = {-1};
    goly.ZerujDaneOprocz(calosc);
    EXPECT_EQ(goly.PorownajOproczPol(inny, calosc, rlRozmLiterWazny), 0);
    const TArgument zly[] = {2.5};
    EXPECT_EQ(Blad([&] { goly.ZerujDaneOprocz(zly); }), u"ZDO: Błędny typ indeksu");
    EXPECT_TRUE(Zglasza<ZTException>([&] { static_cast<void>(goly.PoleNrMaCeche(0, 1, rlRozmLiterWazny)); }));
}

} // namespace
