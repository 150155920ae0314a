// Repository, controller, and the walk along owners.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <map>
#include <random>
#include <thread>

#include "Bledy.h"
#include "modul/KlasyModulu.h"
#include "platforma/Przydzialy.h"
#include "platforma/SystemTestowy.h"
#include "ztok/platform/Pula.h"
#include "ztok/platform/TKomponent.h"
#include "ztok/platform/TListaNapisow.h"
#include "ztok/repository/Kontroler.h"
#include "ztok/repository/Repozytorium.h"
#include "ztok/util/Blowfish.h"

using namespace ztok;
using probki::IUsluga;
using testy::Blad;

namespace {

using TRepozytorium = TIntf<IRepozytoriumKlas>;

constexpr TGUID A = Guid("{0000000A-0000-0000-0000-000000000000}");
constexpr TGUID B = Guid("{0000000B-0000-0000-0000-000000000000}");

int zyje = 0; // services alive

class TUsluga : public TImplementacja<TObiektLiczony, IUsluga> {
    ZTOK_KLASA_DEKL(TUsluga)
    explicit TUsluga(std::u16string_view nazwa = u"klasa") : nazwa_(nazwa) { ++zyje; }
    ~TUsluga() override { --zyje; }
    std::u16string Nazwij() override { return nazwa_; }

  private:
    std::u16string nazwa_;
};
ZTOK_KLASA_DEF(TUsluga, TObiektLiczony)

// A component that has a repository of its own, when it is given one.
class TOkno : public TImplementacja<TKomponent, IUsluga> {
    ZTOK_KLASA_DEKL(TOkno)
    using TImplementacja::TImplementacja;
    std::int32_t QueryInterface(const TGUID& iid, void** wynik) noexcept override {
        return repozytorium && iid == IRepozytoriumKlas::IID ? repozytorium->QueryInterface(iid, wynik)
                                                             : TImplementacja::QueryInterface(iid, wynik);
    }
    std::u16string Nazwij() override { return u"okno"; }
    TRepozytorium repozytorium;
};
ZTOK_KLASA_DEF(TOkno, TKomponent)

// An object of the model that names its owner.
using TObiektZDostepem = TImplementacja<TObiekt, IDostep>;
class TDokument : public TObiektZDostepem {
    ZTOK_OBIEKT(TDokument, TObiektZDostepem)
    TObiektOgolny* DajWlasciciela() override { return wlasciciel; }
    TObiektOgolny* wlasciciel = nullptr;
};

TObiektOgolny* Fabryka(TObiektOgolny*, TObiektOgolny*, TArgumenty) { return UtworzSurowy<TUsluga>(u"fabryka"); }
TObiektOgolny* FabrykaNiczego(TObiektOgolny*, TObiektOgolny*, TArgumenty) { return nullptr; }
bool FabrykaOdmowna(TUchwyt& uchwyt, const TGUID&, bool, TObiektOgolny*, TObiektOgolny*, std::u16string_view,
                    TObiektOgolny*) {
    uchwyt.UstawObiekt(UtworzSurowy<TUsluga>()); // what it leaves there goes
    return false;
}

TRepozytorium NoweRepozytorium(TObiektOgolny* owner = nullptr) {
    return TRepozytorium(UtworzSurowy<TRepozytoriumKlas>(owner));
}

std::u16string Nazwa(const TRepozytorium& r, std::u16string_view id, TObiektOgolny* wlasciciel = nullptr) {
    const TIntf<IUsluga> usluga = r->DajInterfejs<IUsluga>(id, wlasciciel);
    return usluga ? usluga->Nazwij() : u"-";
}

class Repozytorium : public testing::Test {
  protected:
    // What belongs to the process is made before the first test: it stays.
    static void SetUpTestSuite() { static_cast<void>(RepozytoriumKlas()); }
    void TearDown() override { EXPECT_EQ(zyje, 0); }
};

// Against a map of the keys, whatever the order in which they come and go.
TEST_F(Repozytorium, KluczeJakWSlowniku) {
    const TIntf<TRepozytoriumKlas> r(UtworzSurowy<TRepozytoriumKlas>());
    const TGUID guidy[] = {A, B, Guid("{ABCDEF01-2345-6789-ABCD-EF0123456789}"), TGUID{}};
    const std::u16string id[] = {u"", u"a", u"A", u"ab", u"ż", u"1"};
    std::map<std::pair<std::u16string, std::u16string>, const TKlasa*> model;
    std::mt19937 los(6);
    for (int krok = 0; krok < 600; ++krok) {
        const TGUID& guid = guidy[los() % 4];
        const std::u16string& i = id[los() % 6];
        const std::pair klucz(GUIDToString(guid), i);
        const TKlasa* klasa = los() % 2 == 0 ? TUsluga::KlasaStatyczna() : TOkno::KlasaStatyczna();
        if (los() % 3 != 0) {
            r->RejestrujObiekt(guid, klasa, nullptr, i);
            model.emplace(klucz, klasa); // the first one stays
        } else {
            r->WyrejestrujObiekt(guid, i);
            model.erase(klucz);
        }
        ASSERT_EQ(r->JestZarejestrowany(guid, i), model.contains(klucz));
        TKonstruktorKlasy konstruktor = nullptr;
        ASSERT_EQ(r->DajKonstruktor(konstruktor, guid, i), model.contains(klucz));
        ASSERT_EQ(konstruktor != nullptr, model.contains(klucz));
        TUchwyt uchwyt;
        ASSERT_EQ(r->DajUchwyt(uchwyt, guid, i), model.contains(klucz));
        if (model.contains(klucz)) {
            ASSERT_EQ(uchwyt.Obiekt()->Klasa(), model.at(klucz));
        }
        TListaNapisow lista;
        lista.Dodaj(u"dawny");
        r->DajListeIdentyfikatorow(guid, lista);
        std::size_t ile = 0;
        for (const auto& [k, kl] : model)
            if (k.first == klucz.first) {
                ASSERT_NE(lista.IndeksNapisu(k.second), -1);
                ++ile;
            }
        ASSERT_EQ(lista.Ile(), ile);
        TGUID znaleziony = B;
        const auto pierwszy = std::find_if(model.begin(), model.end(),
                                           [&](const auto& p) { return p.second == klasa && p.first.second == i; });
        ASSERT_EQ(r->DajIIDWgKlasy(klasa, znaleziony, i), pierwszy != model.end());
        ASSERT_EQ(GUIDToString(znaleziony), pierwszy != model.end() ? pierwszy->first.first : GUIDToString(B));
    }
    TLista& lista = r->LockList();
    EXPECT_EQ(lista.IleObiektow(), static_cast<std::int32_t>(model.size()));
    EXPECT_TRUE(lista.ListaMaPosortowanie(std::vector<TArgument>{0, 1}, std::vector{rsRosnaco}));
    const TWlasny<TDaneObiektu> kopia = Utworz<TDaneObiektu>();
    kopia->KopiujDane(*lista.Element(0));
    EXPECT_EQ(kopia->FKlasa, lista.Element(0)->FKlasa);
    EXPECT_EQ(kopia->GetGUID(), lista.Element(0)->GetGUID());
    EXPECT_EQ(kopia->NazwaPolaNr(0), u"GuidTekstowo");
    EXPECT_EQ(kopia->NazwaPolaNr(1), u"Identyfikator");
    r->UnlockList();
}

TEST_F(Repozytorium, KazdySposobDajeCoTrzeba) {
    const TRepozytorium r = NoweRepozytorium();
    const TRepozytorium zewnetrzne = NoweRepozytorium();
    r->UstawParent(zewnetrzne);
    {
        const TIntf<IUsluga> gotowa(UtworzSurowy<TUsluga>(u"gotowa"));
        r->RejestrujObiekt(IUsluga::IID, gotowa.get(), u"gotowa");
    }
    EXPECT_EQ(zyje, 1); // held
    r->RejestrujObiekt(IUsluga::IID, TUsluga::KlasaStatyczna(), nullptr, u"klasa");
    r->RejestrujObiekt(IUsluga::IID, &Fabryka, u"fabryka");
    r->RejestrujObiekt(IUsluga::IID, &FabrykaOdmowna, u"odmowna");
    r->RejestrujObiekt(IUsluga::IID, &FabrykaNiczego, u"nic");
    r->RejestrujObiekt(
        IUsluga::IID,
        [](TUchwyt& uchwyt, const TGUID& guid, bool wymagany, TObiektOgolny* wlasciciel, TObiektOgolny* rodzic,
           std::u16string_view id, TObiektOgolny* owner) {
            if (wymagany || guid != IUsluga::IID || wlasciciel == nullptr || rodzic != nullptr || owner != nullptr)
                return false;
            uchwyt.UstawInterfejs(TIntf<IInterfejs>(UtworzSurowy<TUsluga>(id)));
            return true;
        },
        u"interfejs");
    zewnetrzne->RejestrujObiekt(IUsluga::IID, &Fabryka, u"odmowna");
    zewnetrzne->RejestrujObiekt(IUsluga::IID, TUsluga::KlasaStatyczna(), nullptr, u"tylko tam");
    const struct {
        const char16_t *id, *nazwa;
    } przypadki[] = {
        {u"gotowa", u"gotowa"},   {u"klasa", u"klasa"},     {u"fabryka", u"fabryka"}, {u"interfejs", u"interfejs"},
        {u"odmowna", u"fabryka"}, {u"tylko tam", u"klasa"}, {u"nic", u"-"},           {u"", u"-"},
        {u"Klasa", u"-"}};
    TOkno okno;
    for (const auto& p : przypadki)
        EXPECT_EQ(Nazwa(r, p.id, &okno), p.nazwa);
    EXPECT_EQ(zyje, 1);
    EXPECT_FALSE(r->JestZarejestrowany(IUsluga::IID, u"tylko tam"));
    TKonstruktorKlasy konstruktor = nullptr;
    EXPECT_TRUE(r->DajKonstruktor(konstruktor, IUsluga::IID, u"tylko tam"));
    EXPECT_FALSE(r->DajKonstruktor(konstruktor, IUsluga::IID, u"fabryka"));
    r->WyrejestrujObiekt(IUsluga::IID, u"gotowa");
    r->WyrejestrujObiekt(IUsluga::IID, u"gotowa");
    EXPECT_EQ(zyje, 0);

    // Errors.
    const std::u16string klucz = u"({C3715265-1F99-4861-9838-6EF4E3BC6E8A}, fabryka)";
    const std::u16string juzJest = u"próba dodania elementu istniejącego już na liście " + klucz;
    EXPECT_EQ(Blad([&] { r->RejestrujObiekt(IUsluga::IID, &Fabryka, u"fabryka"); }), juzJest);
    EXPECT_EQ(Blad([&] { r->RejestrujObiekt(IUsluga::IID, &FabrykaOdmowna, u"fabryka"); }), juzJest);
    EXPECT_FALSE(testy::Zglasza<ZTException>([&] { r->RejestrujObiekt(IUsluga::IID, &Fabryka, u"fabryka"); }));
    EXPECT_EQ(Blad<ZTException>([&] { r->RejestrujObiekt(A, TIntf<IUsluga>(UtworzSurowy<TUsluga>()).get(), u""); }),
              u"brak interfejsu {0000000A-0000-0000-0000-000000000000}");
    EXPECT_EQ(Blad<ZTException>([&] { zewnetrzne->UstawParent(r); }),
              u"niedozwolone użycie UstawParent w TRepozytoriumKlas");
    EXPECT_THROW(r->UstawParent(r), ZTException);
    EXPECT_THROW(r->RejestrujObiekt(A, TKonstruktor{}, u""), ZTException);
    EXPECT_THROW(r->RejestrujObiekt(A, static_cast<const TKlasa*>(nullptr), nullptr, u""), ZTException);
    EXPECT_EQ(r->DajParent(), zewnetrzne);
    r->UstawParent(nullptr);
    EXPECT_EQ(Nazwa(r, u"odmowna"), u"-");
}

TEST_F(Repozytorium, UchwytZnaWlasciciela) {
    const TRepozytorium r = NoweRepozytorium();
    r->RejestrujObiekt(
        A,
        [](TObiektOgolny* wlasciciel, TObiektOgolny*, TArgumenty argumenty) -> TObiektOgolny* {
            return argumenty.empty() ? UtworzSurowy<TOkno>(static_cast<TKomponent*>(wlasciciel)) : nullptr;
        },
        u"okno");
    r->RejestrujObiekt(A, TDokument::KlasaStatyczna(), nullptr, u"dokument");
    const TWlasny<TOkno> okno = Utworz<TOkno>();
    TDokument rodzic;
    TUchwyt uchwyt;
    ASSERT_TRUE(r->DajUchwyt(uchwyt, A, true, u"okno", okno.get(), nullptr, {}));
    EXPECT_EQ(okno->Skladnik(0), uchwyt.Obiekt());
    EXPECT_FALSE(uchwyt.OddajObiekt());
    EXPECT_EQ(uchwyt.Interfejs<IUsluga>()->Nazwij(), u"okno");
    EXPECT_FALSE(uchwyt.Interfejs<IDostep>());
    uchwyt.Zeruj();
    EXPECT_EQ(okno->IleSkladnikow(), 1U); // its owner's
    const TArgument argument[] = {1};
    EXPECT_FALSE(r->DajUchwyt(uchwyt, A, true, u"okno", okno.get(), nullptr, argument));
    EXPECT_TRUE(uchwyt.Pusty());
    ASSERT_TRUE(r->DajUchwyt(uchwyt, A, u"okno"));
    uchwyt = TUchwyt(); // nobody's: it goes
    ASSERT_TRUE(r->DajUchwyt(uchwyt, A, true, u"dokument", okno.get(), &rodzic, {}));
    const TWlasny<TObiektOgolny> dokument = uchwyt.OddajObiekt();
    EXPECT_TRUE(uchwyt.Pusty());
    EXPECT_EQ(static_cast<TDokument&>(*dokument).Rodzic(), &rodzic);
}

// A factory may look up, register and take its own registration out.
TEST_F(Repozytorium, FabrykaUzywaRepozytorium) {
    const TRepozytorium r = RepozytoriumKlas();
    r->RejestrujObiekt(
        IUsluga::IID,
        [](TUchwyt& uchwyt, const TGUID& guid, bool, TObiektOgolny*, TObiektOgolny*, std::u16string_view id,
           TObiektOgolny* owner) {
            EXPECT_EQ(owner, ObiektZaInterfejsem(Kontroler().get()));
            const TRepozytorium w = RepozytoriumKlas();
            w->WyrejestrujObiekt(guid, id);
            w->RejestrujObiekt(guid, TUsluga::KlasaStatyczna(), nullptr, u"z fabryki");
            std::thread([&] { EXPECT_FALSE(w->JestZarejestrowany(guid, id)); }).join(); // no lock is held
            return w->DajUchwyt(uchwyt, guid, u"z fabryki");
        },
        u"raz");
    EXPECT_EQ(Nazwa(r, u"raz"), u"klasa");
    EXPECT_EQ(Nazwa(r, u"raz"), u"-");
    EXPECT_EQ(RepozytoriumKlas(), r);
    EXPECT_TRUE(TIntf<IRepozytoriumBazowe>(r).As<IRepozytoriumKlas>() == r);
    r->WyrejestrujObiekt(IUsluga::IID, u"z fabryki");
}

// A parameter object that nobody else holds lives until the creation is over, and a handle counts one that it gets.
TEST_F(Repozytorium, ObiektParametrowZyjePrzezWywolanie) {
    const TRepozytorium r = NoweRepozytorium();
    r->RejestrujObiekt(
        IUsluga::IID, TUsluga::KlasaStatyczna(),
        [](const TKlasa*, TObiektOgolny* wlasciciel, TObiektOgolny*, TArgumenty argumenty) -> TObiektOgolny* {
            auto* parametr = static_cast<TZTParam*>(wlasciciel);
            EXPECT_EQ(parametr->LiczbaReferencji(), 3); // the test's, and as owner and argument
            EXPECT_EQ(argumenty[0].Obiekt(), parametr);
            return parametr;
        },
        u"");
    const TIntf<TZTParam> parametry = ZTParam({1, 2});
    {
        TUchwyt uchwyt;
        const TArgument argumenty[] = {parametry.get()};
        EXPECT_TRUE(r->DajUchwyt(uchwyt, IUsluga::IID, false, u"", parametry.get(), nullptr, argumenty));
        EXPECT_EQ(uchwyt.Obiekt(), parametry.get());
        EXPECT_EQ(parametry->LiczbaReferencji(), 2);
        EXPECT_FALSE(uchwyt.OddajObiekt());
    }
    EXPECT_EQ(parametry->LiczbaReferencji(), 1);
}

TEST_F(Repozytorium, DrogaPrzezWlascicieli) {
    const TRepozytorium wlasne = NoweRepozytorium();
    wlasne->RejestrujObiekt(IUsluga::IID, &Fabryka, u"tu");
    TOkno okno;
    auto& panel = okno.UtworzSkladnik<TKomponent>();
    auto& przycisk = panel.UtworzSkladnik<TKomponent>();
    TDokument dokument;
    TDokument kopia;
    dokument.wlasciciel = &przycisk;
    kopia.wlasciciel = &dokument;
    TIntf<IRepozytoriumKlas> znalezione;
    TObiektOgolny* const obiekty[] = {&okno, &przycisk, &dokument, &kopia};
    for (TObiektOgolny* obiekt : obiekty) {
        okno.repozytorium = nullptr;
        EXPECT_FALSE(RepozytoriumKlas(obiekt, znalezione));
        EXPECT_EQ(RepozytoriumKlas(obiekt, false), RepozytoriumKlas());
        EXPECT_EQ(Blad<ZTException>([&] { static_cast<void>(RepozytoriumKlas(obiekt, true)); }),
                  u"brak dostępu do repozytorium");
        okno.repozytorium = wlasne;
        EXPECT_TRUE(RepozytoriumKlas(obiekt, znalezione));
        EXPECT_EQ(znalezione, wlasne);
        TUchwyt uchwyt;
        EXPECT_TRUE(RKDajUchwyt(obiekt, uchwyt, IUsluga::IID, false, u"tu"));
        TIntf<IUsluga> usluga;
        EXPECT_TRUE(DajInterfejsWlasciciela(obiekt, usluga));
        EXPECT_EQ(usluga->Nazwij(), u"okno");
    }
    EXPECT_FALSE(RepozytoriumKlas(nullptr, znalezione));
    EXPECT_FALSE(znalezione);
    dokument.wlasciciel = &kopia; // a circle
    EXPECT_FALSE(RepozytoriumKlas(&kopia, znalezione));
    okno.repozytorium = nullptr;
}

TEST_F(Repozytorium, SkladnikiGinaZWlascicielem) {
    std::vector<std::size_t> kolejnosc;
    class TSkladnik : public TKomponent {
      public:
        TSkladnik(TKomponent* wlasciciel, std::vector<std::size_t>& log, std::size_t nr)
            : TKomponent(wlasciciel), log_(log), nr_(nr) {}
        ~TSkladnik() override { log_.push_back(nr_); }

      private:
        std::vector<std::size_t>& log_;
        std::size_t nr_;
    };
    TWlasny<TKomponent> korzen = Utworz<TKomponent>();
    TKomponent* pierwszy = &korzen->UtworzSkladnik<TSkladnik>(kolejnosc, 0U);
    korzen->UtworzSkladnik<TSkladnik>(kolejnosc, 1U);
    pierwszy->UtworzSkladnik<TSkladnik>(kolejnosc, 2U);
    EXPECT_EQ(korzen->IleSkladnikow(), 2U);
    Zwolnij(korzen->Skladnik(1));
    EXPECT_EQ(korzen->IleSkladnikow(), 1U);
    EXPECT_EQ(korzen->Skladnik(1), nullptr);
    korzen.Ustaw();
    EXPECT_EQ(kolejnosc, (std::vector<std::size_t>{1, 2, 0}));
    // A chain that no recursion could free.
    korzen = Utworz<TKomponent>();
    TKomponent* dno = korzen.get();
    for (int i = 0; i < 200000; ++i)
        dno = &dno->UtworzSkladnik<TKomponent>();
    korzen.Ustaw();
}

TEST_F(Repozytorium, ModulOferujeIOdchodzi) {
    const std::string sciezka = ZTOK_SCIEZKA_MODULU;
    std::int64_t zajete = 0;
    for (int razy = 0; razy < 20; ++razy) {
        {
            const systemTestowy::TZaladowany modul(sciezka);
            ASSERT_TRUE(modul.Jest());
            modul.Funkcja<void (*)()>("ModulWRepozytorium")();
            for (const char16_t* id : {u"klasa", u"gotowa", u"fabryka"})
                EXPECT_EQ(Nazwa(RepozytoriumKlas(), id), u"z modułu");
            Kontroler()->Operacja(u"test");
            Kontroler()->Operacja(u"inna");
            EXPECT_EQ(modul.Funkcja<int (*)()>("ModulIleOperacji")(), 1);
            modul.Funkcja<void (*)()>("ModulZRepozytorium")();
        }
        ASSERT_FALSE(systemTestowy::TZaladowany::WPamieci(sciezka)) << razy;
        Kontroler()->Operacja(u"test"); // nobody is left to call
        EXPECT_EQ(Nazwa(RepozytoriumKlas(), u"klasa"), u"-");
        if (razy == 1)
            zajete = PulaZajete();
        ASSERT_TRUE(razy < 2 || PulaZajete() == zajete) << razy;
    }
}

// What is registered with the process's repository ends before the kernel; who held the controller still has it.
TEST_F(Repozytorium, KoniecBibliotekiZwalniaZarejestrowane) {
    const TIntf<IKontroler> kontroler = Kontroler();
    RepozytoriumKlas()->RejestrujObiekt(IUsluga::IID, TIntf<IUsluga>(UtworzSurowy<TUsluga>()).get(), u"x");
    EXPECT_EQ(zyje, 1);
    ZamknijBiblioteke();
    EXPECT_EQ(zyje, 0);
    kontroler->Operacja(u"x");
    EXPECT_NE(Kontroler(), kontroler);
    EXPECT_EQ(Nazwa(RepozytoriumKlas(), u"x"), u"-");
}

// --- controller

// Writes down that it was called, and does what the test asks.
struct TSkutek {
    std::vector<int>* log = nullptr;
    int nr = 0;
    std::function<void()> dzialanie;
    void Wykonaj() {
        log->push_back(nr);
        if (const auto d = dzialanie; d)
            d();
    }
};

template <class TBaza> class TSluchacz : public TImplementacja<TBaza, IKontrolowany> {
  public:
    static const TKlasa* KlasaStatyczna() noexcept { ZTOK_DANE_KLASY(TSluchacz, TBaza, u"TSluchacz"); }
    [[nodiscard]] const TKlasa* Klasa() const noexcept override { return KlasaStatyczna(); }
    ~TSluchacz() override {
        if constexpr (std::is_base_of_v<TObiektBazowy, TBaza>)
            this->DokonczZycie();
    }
    void WykonajOperacje(std::u16string_view) override { TSkutek(skutek).Wykonaj(); }
    TSkutek skutek;
};

class Kontrola : public testing::Test {
  protected:
    static void SetUpTestSuite() { static_cast<void>(RepozytoriumKlas()); }

    template <class TBaza> TSluchacz<TBaza>* Nowy(int nr, std::function<void()> dzialanie = {}) {
        auto* s = UtworzSurowy<TSluchacz<TBaza>>();
        s->skutek = {&log, nr, std::move(dzialanie)};
        kontroler->Rejestruj(s);
        return s;
    }
    std::vector<int> Operacja() {
        log.clear();
        kontroler->Operacja(u"x");
        return log;
    }

    const TIntf<TKontroler> kontroler{UtworzSurowy<TKontroler>()};
    std::vector<int> log;
};

using TKolejnosc = std::vector<int>;

TEST_F(Kontrola, KolejnoscIZmianyWTrakcie) {
    EXPECT_EQ(Kontroler(), Kontroler());
    TDokument bezInterfejsu;
    kontroler->Rejestruj(&bezInterfejsu);
    kontroler->Rejestruj(nullptr);
    TSluchacz<TKomponent>* piaty = nullptr;
    TSluchacz<TKomponent>* pierwszy = nullptr;
    TSluchacz<TKomponent>* trzeci = nullptr;
    pierwszy = Nowy<TKomponent>(1, [&] {
        kontroler->Wyrejestruj(pierwszy); // called this once
        kontroler->Wyrejestruj(trzeci);   // so is this one
    });
    const TWlasny<TObiektOgolny> drugi(Nowy<TObiekt>(2, [&] {
        if (piaty == nullptr)
            piaty = Nowy<TKomponent>(5); // from the next time on
        else if (log.size() == 1)
            kontroler->Operacja(u"w środku"); // a whole one inside the other
    }));
    trzeci = Nowy<TKomponent>(3);
    TWlasny<TObiektOgolny> czwarty(Nowy<TKomponent>(4));
    kontroler->Rejestruj(czwarty.get()); // twice is once
    EXPECT_EQ(Operacja(), (TKolejnosc{1, 2, 3, 4}));
    EXPECT_EQ(Operacja(), (TKolejnosc{2, 2, 4, 5, 4, 5}));
    EXPECT_EQ(kontroler->IleZarejestrowanych(), 4U);
    czwarty.Ustaw();
    Zwolnij(piaty);
    EXPECT_EQ(kontroler->IleZarejestrowanych(), 2U);
    Zwolnij(pierwszy);
    Zwolnij(trzeci);
    TZTMemoryStream obcy;
    EXPECT_EQ(Blad<ZTException>([&] { kontroler->Rejestruj(&obcy); }),
              u"niedozwolone użycie Rejestruj w TZTMemoryStream");
}

// The second of three frees one of them: whoever it is, in whatever way it lives.
template <class TBaza> void Smierci(TKontroler& kontroler, std::vector<int>& log) {
    for (int kto = 0; kto < 3; ++kto) {
        TObiektOgolny* sluchacze[3];
        for (int i = 0; i < 3; ++i) {
            auto* s = UtworzSurowy<TSluchacz<TBaza>>();
            sluchacze[i] = s;
            s->skutek = {&log, i, {}};
            if (i == 1)
                s->skutek.dzialanie = [&sluchacze, kto] { Zwolnij(std::exchange(sluchacze[kto], nullptr)); };
            kontroler.Rejestruj(s);
        }
        log.clear();
        kontroler.Operacja(u"x");
        EXPECT_EQ(log, kto == 2 ? (TKolejnosc{0, 1}) : (TKolejnosc{0, 1, 2})) << kto;
        EXPECT_EQ(kontroler.IleZarejestrowanych(), 2U);
        log.clear();
        if (kto == 1)
            kontroler.Operacja(u"x");
        EXPECT_EQ(log, kto == 1 ? (TKolejnosc{0, 2}) : TKolejnosc{});
        for (TObiektOgolny* s : sluchacze)
            Zwolnij(s);
        EXPECT_EQ(kontroler.IleZarejestrowanych(), 0U);
    }
}

TEST_F(Kontrola, MartwyJestZapomniany) {
    Smierci<TKomponent>(*kontroler, log);
    Smierci<TObiekt>(*kontroler, log);
    Smierci<TObiektLiczony>(*kontroler, log); // held by nobody, so freed like the others
    {
        TSluchacz<TKomponent> naStosie;
        naStosie.skutek = {&log, 1, {}};
        kontroler->Rejestruj(&naStosie);
    }
    EXPECT_EQ(kontroler->IleZarejestrowanych(), 0U);
    // A counted object whose last reference goes while others are called is still called, then it dies.
    TIntf<IInterfejs> trzymany;
    const TIntf<IKontrolowany> pierwszy(Nowy<TObiektLiczony>(1, [&] { trzymany = nullptr; }));
    auto* drugi = Nowy<TObiektLiczony>(2);
    trzymany = TIntf<IInterfejs>(static_cast<IKontrolowany*>(drugi));
    EXPECT_EQ(Operacja(), (TKolejnosc{1, 2}));
    EXPECT_EQ(kontroler->IleZarejestrowanych(), 1U);
    TObiektOgolny* ostatni = nullptr;
    ostatni = Nowy<TObiekt>(3, [&] { Zwolnij(std::exchange(ostatni, nullptr)); });
    EXPECT_EQ(Operacja(), (TKolejnosc{1, 3}));
    EXPECT_EQ(kontroler->IleZarejestrowanych(), 1U);
}

TEST_F(Kontrola, BladNieZatrzymujePozostalych) {
    TWlasny<TObiektOgolny> sluchacze[4];
    for (int i = 0; i < 4; ++i)
        sluchacze[i].Ustaw(Nowy<TKomponent>(i, [i] {
            if (i % 2 == 1)
                throw EBladOdczytu(i == 1 ? u"pierwszy" : u"drugi");
        }));
    EXPECT_EQ(Blad<EBladOdczytu>([this] { Operacja(); }), u"pierwszy");
    EXPECT_EQ(log, (TKolejnosc{0, 1, 2, 3}));
    EXPECT_EQ(Blad<EBladOdczytu>([this] { Operacja(); }), u"pierwszy");
}

// Everything at once, with each allocation failing in turn: an error, nothing lost, and all works as before.
TEST_F(Kontrola, KazdyPrzydzialMozeZawiesc) {
    if (!przydzialy::Liczone())
        GTEST_SKIP() << "allocations are counted on Linux without sanitizers";
    static std::atomic<int> wywolan;
    class TLicznik : public TImplementacja<TKomponent, IKontrolowany> {
      public:
        static const TKlasa* KlasaStatyczna() noexcept { ZTOK_DANE_KLASY(TLicznik, TKomponent, u"TLicznik"); }
        [[nodiscard]] const TKlasa* Klasa() const noexcept override { return KlasaStatyczna(); }
        using TImplementacja::TImplementacja;
        void WykonajOperacje(std::u16string_view) override { ++wywolan; }
    };
    const auto dzialanie = [&] {
        const TRepozytorium r = NoweRepozytorium();
        const TIntf<IUsluga> gotowa(UtworzSurowy<TUsluga>());
        r->RejestrujObiekt(IUsluga::IID, gotowa.get(), u"a");
        r->RejestrujObiekt(IUsluga::IID, TUsluga::KlasaStatyczna(), nullptr, u"b");
        r->RejestrujObiekt(IUsluga::IID, &Fabryka, u"c");
        for (const char16_t* id : {u"a", u"b", u"c"})
            if (Nazwa(r, id) == u"-")
                throw std::logic_error("lost");
        const TWlasny<TKomponent> okno = Utworz<TKomponent>();
        wywolan = 0;
        for (int i = 0; i < 3; ++i)
            kontroler->Rejestruj(&okno->UtworzSkladnik<TLicznik>());
        kontroler->Operacja(u"x");
        return DeszyfrujTekst(SzyfrujTekst(u"tajne", "k"), "k") == u"tajne" && wywolan == 3;
    };
    EXPECT_TRUE(dzialanie());
    przydzialy::Zacznij();
    EXPECT_TRUE(dzialanie());
    const std::int64_t przydzialow = przydzialy::Zakoncz().ile;
    ASSERT_GT(przydzialow, 10);
    for (const bool naZawsze : {false, true})
        for (std::int64_t i = 0; i < przydzialow; ++i) {
            bool blad = false;
            const std::int64_t zajete = PulaZajete();
            przydzialy::Zacznij();
            przydzialy::Psuj(i, naZawsze);
            try {
                dzialanie();
            } catch (const std::bad_alloc&) {
                blad = true;
            }
            EXPECT_EQ(przydzialy::Zakoncz().zostalo, 0) << i;
            EXPECT_EQ(PulaZajete(), zajete) << i;
            EXPECT_TRUE(blad) << i;
            EXPECT_EQ(kontroler->IleZarejestrowanych(), 0U);
            EXPECT_TRUE(dzialanie());
        }
}

// --- threads

std::atomic<int> poSmierci{0};

// Notices a call after the end of its life has begun.
template <class TBaza> class TCzujny : public TSluchacz<TBaza> {
  public:
    static const TKlasa* KlasaStatyczna() noexcept { ZTOK_DANE_KLASY(TCzujny, TSluchacz<TBaza>, u"TCzujny"); }
    [[nodiscard]] const TKlasa* Klasa() const noexcept override { return KlasaStatyczna(); }
    ~TCzujny() override {
        znak_ = 0;
        if constexpr (std::is_base_of_v<TObiektBazowy, TBaza>)
            this->DokonczZycie();
    }
    void WykonajOperacje(std::u16string_view) override {
        if (znak_ != 0x600D)
            ++poSmierci;
        licznik.fetch_add(1, std::memory_order_relaxed);
    }
    std::atomic<int> licznik{0};

  private:
    int znak_ = 0x600D;
};

class RepozytoriumWatki : public testing::Test {
  protected:
    static void SetUpTestSuite() { static_cast<void>(RepozytoriumKlas()); }
};

TEST_F(RepozytoriumWatki, WszystkoNaraz) {
    constexpr int Watki = 8;
    const TIntf<IKontroler> kontroler = Kontroler();
    const TRepozytorium r = RepozytoriumKlas();
    r->RejestrujObiekt(IUsluga::IID, TUsluga::KlasaStatyczna(), nullptr, u"stala");
    std::atomic<int> bledy{0};
    std::vector<std::thread> watki;
    for (int w = 0; w < Watki; ++w)
        watki.emplace_back([&, w] {
            const std::u16string id(1, static_cast<char16_t>(u'a' + w));
            for (int i = 0; i < 150; ++i) {
                const TWlasny<TCzujny<TKomponent>> komponent = Utworz<TCzujny<TKomponent>>();
                const TWlasny<TCzujny<TObiekt>> obiekt = Utworz<TCzujny<TObiekt>>();
                auto* liczony = UtworzSurowy<TCzujny<TObiektLiczony>>();
                TIntf<IKontrolowany> trzymany(liczony);
                kontroler->Rejestruj(komponent.get());
                kontroler->Rejestruj(obiekt.get());
                kontroler->Rejestruj(liczony);
                kontroler->Operacja(u"x");
                if (komponent->licznik < 1 || obiekt->licznik < 1 || liczony->licznik < 1)
                    ++bledy;
                if (i % 2 == 0)
                    kontroler->Wyrejestruj(komponent.get()); // the rest leave by dying
                const TGUID guid = i % 3 == 0 ? A : B;
                r->RejestrujObiekt(guid, TOkno::KlasaStatyczna(), nullptr, id);
                TUchwyt uchwyt;
                if (!r->DajUchwyt(uchwyt, guid, id) || !r->JestZarejestrowany(guid, id))
                    ++bledy;
                TListaNapisow lista;
                r->DajListeIdentyfikatorow(guid, lista);
                if (lista.IndeksNapisu(id) < 0 || !r->JestZarejestrowany(IUsluga::IID, u"stala"))
                    ++bledy;
                r->WyrejestrujObiekt(guid, id);
                TIntf<IRepozytoriumKlas> inne;
                if (DajInterfejsWlasciciela(obiekt.get(), inne) || r->JestZarejestrowany(guid, id))
                    ++bledy;
            }
        });
    for (std::thread& watek : watki)
        watek.join();
    EXPECT_EQ(bledy, 0);
    EXPECT_EQ(poSmierci, 0);
    r->WyrejestrujObiekt(IUsluga::IID, u"stala");
    auto* wspolny = static_cast<TKontroler*>(ObiektZaInterfejsem(kontroler.get()));
    EXPECT_EQ(wspolny->IleZarejestrowanych(), 0U);
}

} // namespace
