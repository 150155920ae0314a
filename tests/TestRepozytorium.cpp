// Repository, controller, and the walk along owners.
#include "tests/Testy.h"

#include <atomic>
#include <optional>

#include "BrakPamieci.h"
#include "Watki.h"
#include "modul/KlasyModulu.h"
#include "platforma/SystemTestowy.h"
#include "ztok/platform/TKomponent.h"
#include "ztok/platform/TListaNapisow.h"
#include "ztok/repository/Kontroler.h"
#include "ztok/repository/Repozytorium.h"
#include "ztok/util/Blowfish.h"

using namespace ztok;
using probki::IUsluga;
using systemTestowy::TZaladowany;
using testy::Blad;

namespace {

using TRepozytorium = TIntf<IRepozytoriumKlas>;
using TDzialanie = std::function<void()>;

constexpr TGUID A = Guid("{0000000A-0000-0000-0000-000000000000}");
constexpr TGUID B = Guid("{0000000B-0000-0000-0000-000000000000}");

int zyje = 0; // services alive

class TUsluga : public TImplementacja<TObiektLiczony, IUsluga> {
    ZTOK_KLASA_DEKL(TUsluga)
    explicit TUsluga(std::u16string_view nazwa = u"klasa") : nazwa_(nazwa) { ++zyje; }
    ~TUsluga() override {
        --zyje;
        koniec();
    }
    std::u16string Nazwij() override { return nazwa_; }
    TDzialanie koniec = [] {};

  private:
    std::u16string nazwa_;
};
ZTOK_KLASA_DEF(TUsluga, TObiektLiczony)

// A component that answers with the interfaces of others and has none of its own.
class TOkno : public TKomponent {
    ZTOK_KLASA_DEKL(TOkno)
    using TKomponent::TKomponent;
    std::int32_t QueryInterface(const TGUID& iid, void** wynik) noexcept override {
        if (repozytorium && iid == IRepozytoriumKlas::IID)
            return repozytorium->QueryInterface(iid, wynik);
        return usluga ? usluga->QueryInterface(iid, wynik) : TKomponent::QueryInterface(iid, wynik);
    }
    TRepozytorium repozytorium;
    TIntf<IUsluga> usluga;
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

TRepozytorium NoweRepozytorium() { return TRepozytorium(UtworzSurowy<TRepozytoriumKlas>()); }

TIntf<IUsluga> Usluga(std::u16string_view nazwa) { return TIntf<IUsluga>(UtworzSurowy<TUsluga>(nazwa)); }

std::u16string Nazwa(const TRepozytorium& r, std::u16string_view id, TObiektOgolny* wlasciciel = nullptr) {
    const TIntf<IUsluga> usluga = r->DajInterfejs<IUsluga>(id, wlasciciel);
    return usluga ? usluga->Nazwij() : u"-";
}

// Writes down that it is called, and does what the test asks; notices a call after the end of its life has begun.
std::atomic<int> poSmierci{0};

template <class TBaza> class TSluchacz : public TImplementacja<TBaza, IKontrolowany> {
  public:
    static constexpr std::u16string_view kNazwa = std::is_same_v<TBaza, TKomponent> ? u"TSluchaczKomponent"
                                                  : std::is_same_v<TBaza, TObiekt>  ? u"TSluchaczObiekt"
                                                                                    : u"TSluchaczLiczony";
    static const TKlasa* KlasaStatyczna() noexcept { ZTOK_DANE_KLASY(TSluchacz, TBaza, kNazwa); }
    [[nodiscard]] const TKlasa* Klasa() const noexcept override { return KlasaStatyczna(); }
    using TImplementacja<TBaza, IKontrolowany>::TImplementacja;
    ~TSluchacz() override {
        znak_ = 0;
        if constexpr (std::is_base_of_v<TObiektBazowy, TBaza>)
            this->DokonczZycie();
    }
    void WykonajOperacje(std::u16string_view) override {
        if (znak_ != 0x600D)
            ++poSmierci;
        ++wywolan;
        const TDzialanie d = dzialanie; // this one may die in it
        d();
    }
    std::atomic<int> wywolan{0};
    TDzialanie dzialanie = [] {};
    TDzialanie gdyUmiera = [] {};

  protected:
    void WykonajDestrukcje() override {
        gdyUmiera();
        TBaza::WykonajDestrukcje();
    }

  private:
    int znak_ = 0x600D;
};

class Repozytorium : public testing::Test {
  protected:
    // What belongs to the process is made before the first test: it stays.
    static void SetUpTestSuite() { static_cast<void>(RepozytoriumKlas()); }
    void TearDown() override {
        EXPECT_EQ(zyje, 0);
        EXPECT_EQ(poSmierci, 0);
    }
};
class RepozytoriumWatki : public Repozytorium {};

// Against a map of the keys, whatever the order in which they come and go. The outer repository has one more.
TEST_F(Repozytorium, KluczeJakWSlowniku) {
    const TIntf<TRepozytoriumKlas> r(UtworzSurowy<TRepozytoriumKlas>());
    const TRepozytorium zewnetrzne = NoweRepozytorium();
    zewnetrzne->RejestrujObiekt(A, TOkno::KlasaStatyczna(), nullptr, u"zewn");
    r->UstawParent(zewnetrzne);
    const TGUID guidy[] = {A, B, Guid("{ABCDEF01-2345-6789-ABCD-EF0123456789}"), TGUID{}};
    const std::u16string id[] = {u"", u"a", u"A", u"ab", u"ż", u"1"};
    std::map<std::pair<std::u16string, std::u16string>, const TKlasa*> model; // its order is that of the list
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
        const bool jest = model.contains(klucz);
        ASSERT_EQ(r->JestZarejestrowany(guid, i), jest);
        TKonstruktorKlasy konstruktor = nullptr;
        ASSERT_TRUE(r->DajKonstruktor(konstruktor, guid, i) == jest && (konstruktor != nullptr) == jest);
        TUchwyt uchwyt;
        ASSERT_EQ(r->DajUchwyt(uchwyt, guid, i), jest);
        ASSERT_TRUE(!jest || uchwyt.Obiekt()->Klasa() == model.at(klucz));
        std::u16string oczekiwane;
        for (const auto& [k, kl] : model)
            oczekiwane += k.first == klucz.first ? u'[' + k.second : u"";
        TListaNapisow lista;
        lista.Dodaj(u"dawny");
        r->DajListeIdentyfikatorow(guid, lista);
        lista.Wstaw(0, u""); // so that an empty name differs from none
        ASSERT_EQ(lista.JakoTekst(u"["), oczekiwane.empty() && guid == A ? u"[zewn" : oczekiwane);
        TGUID znaleziony = B;
        const auto pierwszy = std::find_if(model.begin(), model.end(),
                                           [&](const auto& p) { return p.second == klasa && p.first.second == i; });
        ASSERT_EQ(r->DajIIDWgKlasy(klasa, znaleziony, i), pierwszy != model.end());
        ASSERT_EQ(GUIDToString(znaleziony), pierwszy != model.end() ? pierwszy->first.first : GUIDToString(B));
    }
    TLista& lista = r->LockList();
    ASSERT_EQ(lista.IleObiektow(), static_cast<std::int32_t>(model.size()));
    const TWlasny<TDaneObiektu> kopia = Utworz<TDaneObiektu>();
    EXPECT_EQ(kopia->GetGUID(), TGUID{});
    std::int32_t nr = 0;
    for (const auto& [klucz, klasa] : model) {
        const TDaneObiektu& zrodlo = *lista.Element(nr++);
        kopia->KopiujDane(zrodlo);
        EXPECT_EQ(kopia->FKlasa, klasa);
        EXPECT_EQ(kopia->FModul, &klasa->modul());
        EXPECT_EQ(kopia->FTKonstruktorKlasy, zrodlo.FTKonstruktorKlasy);
        EXPECT_EQ(kopia->OpisTekstowy(), u"DaneObiektu: GuidTekstowo=" + klucz.first +
                                             (klucz.second.empty() ? u"" : u", Identyfikator=" + klucz.second));
        EXPECT_EQ(GUIDToString(kopia->GetGUID()), klucz.first);
    }
    r->UnlockList();
}

TEST_F(Repozytorium, KazdySposobDajeCoTrzeba) {
    const TRepozytorium r = NoweRepozytorium();
    const TRepozytorium zewnetrzne = NoweRepozytorium();
    r->UstawParent(zewnetrzne);
    r->RejestrujObiekt(IUsluga::IID, Usluga(u"gotowa").get(), u"gotowa");
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
    r->RejestrujObiekt(IUsluga::IID, Usluga(u"inna").get(), u"klasa"); // changes nothing
    TOkno okno;
    std::u16string nazwy;
    for (const char16_t* id :
         {u"gotowa", u"klasa", u"fabryka", u"interfejs", u"odmowna", u"tylko tam", u"nic", u"", u"Klasa"})
        nazwy += Nazwa(r, id, &okno) + u' ';
    EXPECT_EQ(nazwy, u"gotowa klasa fabryka interfejs fabryka klasa - - - ");
    EXPECT_EQ(zyje, 1);
    EXPECT_FALSE(r->JestZarejestrowany(IUsluga::IID, u"tylko tam"));
    TKonstruktorKlasy konstruktor = nullptr;
    EXPECT_TRUE(r->DajKonstruktor(konstruktor, IUsluga::IID, u"tylko tam"));
    EXPECT_FALSE(r->DajKonstruktor(konstruktor, IUsluga::IID, u"fabryka"));

    const std::u16string juzJest =
        u"próba dodania elementu istniejącego już na liście ({C3715265-1F99-4861-9838-6EF4E3BC6E8A}, fabryka)";
    const std::u16string rejestracja = u"niedozwolone użycie RejestrujObiekt w TRepozytoriumKlas";
    const std::u16string parent = u"niedozwolone użycie UstawParent w TRepozytoriumKlas";
    const std::u16string brak = u"brak interfejsu {0000000A-0000-0000-0000-000000000000}";
    const auto rej = [&r](auto... co) { return [=, &r] { r->RejestrujObiekt(co...); }; };
    const std::pair<std::u16string, TDzialanie> bledy[] = {
        {juzJest, rej(IUsluga::IID, &Fabryka, u"fabryka")},
        {juzJest, rej(IUsluga::IID, &FabrykaOdmowna, u"fabryka")},
        {brak, rej(A, static_cast<IInterfejs*>(r.get()), u"")},
        {brak, rej(A, static_cast<IInterfejs*>(nullptr), u"")},
        {rejestracja, rej(A, TKonstruktor{}, u"")},
        {rejestracja, rej(A, TKonstruktorInt{}, u"")},
        {rejestracja, rej(A, static_cast<const TKlasa*>(nullptr), nullptr, u"")},
        {parent, [&] { zewnetrzne->UstawParent(r); }},
        {parent, [&] { r->UstawParent(r); }},
    };
    for (const auto& [blad, dzialanie] : bledy) {
        EXPECT_EQ(Blad(dzialanie), blad);
        EXPECT_EQ(testy::Zglasza<ZTException>(dzialanie), blad != juzJest); // a plain exception
    }
    EXPECT_EQ(r->DajParent(), zewnetrzne);
    r->UstawParent(nullptr);
    EXPECT_EQ(Nazwa(r, u"odmowna"), u"-");
}

TEST_F(Repozytorium, UchwytZnaWlasciciela) {
    const TRepozytorium r = NoweRepozytorium();
    r->RejestrujObiekt(
        A,
        [](TObiektOgolny* wlasciciel, TObiektOgolny* rodzic, TArgumenty argumenty) -> TObiektOgolny* {
            if (!argumenty.empty())
                return nullptr;
            if (rodzic != nullptr)
                return static_cast<TKolekcjaObiektow*>(rodzic)->Dodaj(Utworz<TDokument>());
            auto* okno = UtworzSurowy<TOkno>(static_cast<TKomponent*>(wlasciciel));
            okno->usluga = Usluga(u"okna");
            return okno;
        },
        u"okno");
    r->RejestrujObiekt(A, TDokument::KlasaStatyczna(), nullptr, u"dokument");
    TOkno okno;
    TKolekcjaObiektow rodzic;
    TUchwyt uchwyt;
    // What has an owner stays its owner's.
    for (TObiektOgolny* lista : {static_cast<TObiektOgolny*>(nullptr), static_cast<TObiektOgolny*>(&rodzic)}) {
        ASSERT_TRUE(r->DajUchwyt(uchwyt, A, true, u"okno", &okno, lista, {}));
        TObiektOgolny* const oczekiwany =
            lista == nullptr ? static_cast<TObiektOgolny*>(okno.Skladnik(0)) : rodzic.Obiekty(0);
        EXPECT_EQ(uchwyt.Obiekt(), oczekiwany);
        EXPECT_FALSE(uchwyt.OddajObiekt());
        const TIntf<IUsluga> usluga = uchwyt.Interfejs<IUsluga>();
        EXPECT_EQ(usluga ? usluga->Nazwij() : u"-", lista == nullptr ? u"okna" : u"-");
        uchwyt.Zeruj();
        EXPECT_TRUE(uchwyt.Pusty());
    }
    EXPECT_EQ(okno.IleSkladnikow() + static_cast<std::size_t>(rodzic.IleObiektow()), 2U);
    const TArgument argument[] = {1};
    EXPECT_FALSE(r->DajUchwyt(uchwyt, A, true, u"okno", &okno, nullptr, argument));
    EXPECT_TRUE(uchwyt.Pusty());
    // What has none is the handle's, until somebody takes it.
    ASSERT_TRUE(r->DajUchwyt(uchwyt, A, u"okno"));
    EXPECT_EQ(zyje, 2);
    uchwyt.UstawObiekt(uchwyt.Obiekt());
    uchwyt = TUchwyt();
    EXPECT_EQ(zyje, 1);
    uchwyt.UstawObiekt(UtworzSurowy<TUsluga>());
    uchwyt.UstawObiekt(uchwyt.Obiekt()); // the only reference is its own
    EXPECT_EQ(uchwyt.Interfejs<IUsluga>()->Nazwij(), u"klasa");
    for (TObiektOgolny* wlasciciel : {static_cast<TObiektOgolny*>(&okno), static_cast<TObiektOgolny*>(&rodzic)}) {
        TObiektOgolny* lista = wlasciciel == &okno ? &rodzic : nullptr;
        ASSERT_TRUE(r->DajUchwyt(uchwyt, A, true, u"dokument", wlasciciel, lista, {}));
        const TWlasny<TObiektOgolny> dokument = uchwyt.OddajObiekt();
        EXPECT_TRUE(uchwyt.Pusty());
        EXPECT_EQ(static_cast<TDokument&>(*dokument).Rodzic(), &rodzic);
    }
    r->RejestrujObiekt(A, TStrumien::KlasaStatyczna(), nullptr, u"abstrakcyjna");
    EXPECT_THROW(r->DajUchwyt(uchwyt, A, u"abstrakcyjna"), ZTException);
}

// A factory may look up, register and take its own registration out; so may what ends with the repository.
TEST_F(Repozytorium, ZarejestrowaneUzywaRepozytorium) {
    const TRepozytorium r = RepozytoriumKlas();
    r->RejestrujObiekt(
        IUsluga::IID,
        [](TUchwyt& uchwyt, const TGUID& guid, bool, TObiektOgolny*, TObiektOgolny*, std::u16string_view id,
           TObiektOgolny* owner) {
            EXPECT_EQ(owner, ObiektZaInterfejsem(Kontroler().get()));
            const TRepozytorium w = RepozytoriumKlas();
            w->WyrejestrujObiekt(guid, id);
            w->RejestrujObiekt(guid, TUsluga::KlasaStatyczna(), nullptr, u"z fabryki");
            testy::WWatkach(1, [&](int) { EXPECT_FALSE(w->JestZarejestrowany(guid, id)); }); // no lock is held
            return w->DajUchwyt(uchwyt, guid, u"z fabryki");
        },
        u"raz");
    EXPECT_EQ(Nazwa(r, u"raz"), u"klasa");
    EXPECT_EQ(Nazwa(r, u"raz"), u"-");
    EXPECT_EQ(RepozytoriumKlas(), r);
    EXPECT_TRUE(TIntf<IRepozytoriumBazowe>(r).As<IRepozytoriumKlas>() == r);
    r->WyrejestrujObiekt(IUsluga::IID, u"z fabryki");

    TRepozytorium wlasne = NoweRepozytorium();
    int zapytan = 0;
    for (const char16_t* id : {u"a", u"b"}) {
        auto* usluga = UtworzSurowy<TUsluga>();
        usluga->koniec = [w = wlasne.get(), id, &zapytan] {
            EXPECT_FALSE(w->JestZarejestrowany(IUsluga::IID, id));
            w->WyrejestrujObiekt(IUsluga::IID, u"a");
            ++zapytan;
        };
        wlasne->RejestrujObiekt(IUsluga::IID, static_cast<IUsluga*>(usluga), id);
    }
    wlasne = nullptr;
    EXPECT_EQ(zapytan, 2);
}

// A parameter object lives until the creation is over, and a handle counts one that it gets.
TEST_F(Repozytorium, ObiektParametrowZyjePrzezWywolanie) {
    const TRepozytorium r = NoweRepozytorium();
    r->RejestrujObiekt(
        A, TUsluga::KlasaStatyczna(),
        [](const TKlasa*, TObiektOgolny* wlasciciel, TObiektOgolny*, TArgumenty argumenty) {
            EXPECT_EQ(static_cast<TZTParam*>(wlasciciel)->LiczbaReferencji(), 3); // also as owner and argument
            EXPECT_EQ(argumenty[0].Obiekt(), wlasciciel);
            return wlasciciel;
        },
        u"");
    const TIntf<TZTParam> parametry = ZTParam({1, 2});
    const TArgument argumenty[] = {parametry.get()};
    TUchwyt uchwyt;
    EXPECT_TRUE(r->DajUchwyt(uchwyt, A, false, u"", parametry.get(), nullptr, argumenty));
    EXPECT_EQ(uchwyt.Obiekt(), parametry.get());
    EXPECT_EQ(parametry->LiczbaReferencji(), 2);
    EXPECT_FALSE(uchwyt.OddajObiekt());
    uchwyt.Zeruj();
    EXPECT_EQ(parametry->LiczbaReferencji(), 1);
}

TEST_F(Repozytorium, DrogaPrzezWlascicieli) {
    const TRepozytorium wlasne = NoweRepozytorium();
    wlasne->RejestrujObiekt(IUsluga::IID, &Fabryka, u"tu");
    TOkno okno;
    auto& panel = okno.UtworzSkladnik<TKomponent>();
    auto& przycisk = panel.UtworzSkladnik<TKomponent>();
    TDokument dokument, kopia;
    dokument.wlasciciel = &przycisk;
    kopia.wlasciciel = &dokument;
    TRepozytorium znalezione;
    TIntf<IUsluga> usluga;
    TObiektOgolny* const obiekty[] = {&okno, &przycisk, &dokument, &kopia};
    for (TObiektOgolny* obiekt : obiekty) {
        okno.repozytorium = nullptr;
        okno.usluga = nullptr;
        EXPECT_FALSE(RepozytoriumKlas(obiekt, znalezione));
        EXPECT_EQ(RepozytoriumKlas(obiekt, false), RepozytoriumKlas());
        EXPECT_EQ(Blad<ZTException>([&] { static_cast<void>(RepozytoriumKlas(obiekt, true)); }),
                  u"brak dostępu do repozytorium");
        okno.repozytorium = wlasne;
        okno.usluga = Usluga(u"okna");
        EXPECT_TRUE(RepozytoriumKlas(obiekt, znalezione));
        EXPECT_EQ(znalezione, wlasne);
        TUchwyt uchwyt;
        EXPECT_TRUE(RKDajUchwyt(obiekt, uchwyt, IUsluga::IID, false, u"tu"));
        EXPECT_TRUE(DajInterfejsWlasciciela(obiekt, usluga));
        EXPECT_EQ(usluga->Nazwij(), u"okna");
    }
    const TIntf<IInterfejs> liczony(TRepozytorium(wlasne).As<IInterfejs>());
    EXPECT_TRUE(RepozytoriumKlas(ObiektZaInterfejsem(liczony.get()), znalezione));
    TZTMemoryStream obcy;
    for (TObiektOgolny* zaden : {static_cast<TObiektOgolny*>(nullptr), static_cast<TObiektOgolny*>(&obcy)}) {
        EXPECT_FALSE(RepozytoriumKlas(zaden, znalezione));
        EXPECT_FALSE(znalezione);
    }
    void* nikt = &okno; // the object behind an interface is no interface to give away
    EXPECT_FALSE(DajInterfejsWlasciciela(&okno, &nikt, IID_ObiektImplementujacy));
    EXPECT_EQ(nikt, nullptr);
    TKomponent* dno = &okno; // as far up as owners are followed
    for (int i = 0; i < 4096; ++i) {
        EXPECT_TRUE(i < 4095 || RepozytoriumKlas(dno, znalezione));
        dno = &dno->UtworzSkladnik<TKomponent>();
    }
    EXPECT_FALSE(RepozytoriumKlas(dno, znalezione));
    dokument.wlasciciel = &kopia; // a circle
    EXPECT_FALSE(RepozytoriumKlas(&kopia, znalezione));
    usluga = nullptr;
    okno.usluga = nullptr;
}

TEST_F(Repozytorium, SkladnikiGinaZWlascicielem) {
    std::u16string kolejnosc;
    const auto nowe = [&kolejnosc](TKomponent& wlasciciel, const char16_t* nazwa) {
        auto* okno = &wlasciciel.UtworzSkladnik<TOkno>();
        auto* usluga = UtworzSurowy<TUsluga>();
        usluga->koniec = [&kolejnosc, nazwa] { kolejnosc += nazwa; };
        okno->usluga = TIntf<IUsluga>(usluga);
        return okno;
    };
    TWlasny<TKomponent> korzen = Utworz<TKomponent>();
    TKomponent* pierwszy = nowe(*korzen, u"1");
    TKomponent* drugi = nowe(*korzen, u"2");
    nowe(*pierwszy, u"3");
    nowe(*pierwszy, u"4");
    EXPECT_EQ(korzen->Skladnik(1), drugi);
    Zwolnij(drugi);
    EXPECT_EQ(korzen->IleSkladnikow(), 1U);
    EXPECT_EQ(korzen->Skladnik(1), nullptr);
    korzen.Ustaw();
    EXPECT_EQ(kolejnosc, u"2431");
    // A chain that no recursion could free.
    korzen = Utworz<TKomponent>();
    TKomponent* dno = korzen.get();
    for (int i = 0; i < 200000; ++i)
        dno = &dno->UtworzSkladnik<TKomponent>();
    korzen.Ustaw();
}

// Half of the time the module says nothing when it goes: it is unloaded in the middle of a broadcast that was to call
// its listeners next.
TEST_F(Repozytorium, ModulOferujeIOdchodzi) {
    const std::string sciezka = ZTOK_SCIEZKA_MODULU;
    const TRepozytorium wlasne = NoweRepozytorium();
    std::int64_t zajete = 0;
    for (int razy = 0; razy < 20; ++razy) {
        const TRepozytorium r = razy % 2 == 0 ? RepozytoriumKlas() : wlasne;
        const auto nazwy = [&r] {
            return Nazwa(r, u"klasa") + u"," + Nazwa(r, u"gotowa") + u"," + Nazwa(r, u"fabryka");
        };
        std::optional<TZaladowany> modul(std::in_place, sciezka);
        ASSERT_TRUE(modul->Jest());
        TSluchacz<TKomponent> pierwszy;
        Kontroler()->Rejestruj(&pierwszy);
        modul->Funkcja<void (*)(IRepozytoriumKlas*)>("ModulWRepozytorium")(r.get());
        EXPECT_EQ(nazwy(), u"z modułu,z modułu,z modułu");
        Kontroler()->Operacja(u"test");
        Kontroler()->Operacja(u"inna");
        EXPECT_EQ(modul->Funkcja<int (*)()>("ModulIleOperacji")(), 2);
        if (razy % 4 < 2)
            modul->Funkcja<void (*)(IRepozytoriumKlas*)>("ModulZRepozytorium")(r.get());
        pierwszy.dzialanie = [&modul] { modul.reset(); };
        Kontroler()->Operacja(u"test");
        ASSERT_FALSE(TZaladowany::WPamieci(sciezka)) << razy;
        EXPECT_EQ(pierwszy.wywolan, 3);
        EXPECT_EQ(nazwy(), u"-,-,-");
        zajete = razy == 3 ? PulaZajete() : zajete;
        ASSERT_TRUE(razy < 3 || PulaZajete() == zajete) << razy;
    }
}

// What is registered with the process's repository ends before the kernel; who held the controller still has it.
TEST_F(Repozytorium, KoniecBibliotekiZwalniaZarejestrowane) {
    const TIntf<IKontroler> kontroler = Kontroler();
    RepozytoriumKlas()->RejestrujObiekt(IUsluga::IID, Usluga(u"").get(), u"x");
    EXPECT_EQ(zyje, 1);
    ZamknijBiblioteke();
    EXPECT_EQ(zyje, 0);
    kontroler->Operacja(u"x");
    EXPECT_NE(Kontroler(), kontroler);
    EXPECT_EQ(Nazwa(RepozytoriumKlas(), u"x"), u"-");
}

// --- controller

using TKolejnosc = std::vector<int>;

class Kontrola : public Repozytorium {
  protected:
    template <class TBaza>
    TSluchacz<TBaza>* Nowy(
        int nr, const TDzialanie& dzialanie = [] {}) {
        auto* s = UtworzSurowy<TSluchacz<TBaza>>();
        s->dzialanie = [this, nr, dzialanie] {
            log.push_back(nr);
            dzialanie();
        };
        kontroler->Rejestruj(s);
        return s;
    }
    TKolejnosc Operacja() {
        log.clear();
        kontroler->Operacja(u"x");
        return log;
    }
    // Each of three listeners in turn is freed by the second, whoever it is.
    template <class TBaza> void Smierci() {
        for (int kto = 0; kto < 3; ++kto) {
            TObiektOgolny* s[3];
            for (int i = 0; i < 3; ++i)
                s[i] = Nowy<TBaza>(i, [&s, i, kto] {
                    if (i == 1)
                        Zwolnij(std::exchange(s[kto], nullptr));
                });
            TKolejnosc zywi{0, 1, 2};
            EXPECT_EQ(Operacja(), kto == 2 ? (TKolejnosc{0, 1}) : zywi) << kto;
            EXPECT_EQ(kontroler->IleZarejestrowanych(), 2U);
            std::erase(zywi, kto);
            EXPECT_EQ(Operacja(), zywi);
            for (TObiektOgolny* zywy : s)
                Zwolnij(zywy);
            EXPECT_EQ(kontroler->IleZarejestrowanych(), 0U);
        }
    }

    const TIntf<TKontroler> kontroler{UtworzSurowy<TKontroler>()};
    TKolejnosc log;
};

TEST_F(Kontrola, KolejnoscIZmianyWTrakcie) {
    EXPECT_EQ(Kontroler(), Kontroler());
    TDokument bezInterfejsu;
    kontroler->Rejestruj(&bezInterfejsu);
    kontroler->Rejestruj(nullptr);
    TWlasny<TObiektOgolny> pierwszy, trzeci, piaty;
    pierwszy.Ustaw(Nowy<TKomponent>(1, [&] {
        kontroler->Wyrejestruj(pierwszy.get()); // called this once
        kontroler->Wyrejestruj(trzeci.get());   // so is this one
    }));
    const TWlasny<TObiektOgolny> drugi(Nowy<TObiekt>(2, [&] {
        if (!piaty)
            piaty.Ustaw(Nowy<TKomponent>(5)); // from the next time on
        else if (log.size() == 1)
            kontroler->Operacja(u"w środku"); // a whole one inside the other
    }));
    trzeci.Ustaw(Nowy<TKomponent>(3));
    TWlasny<TObiektOgolny> czwarty(Nowy<TKomponent>(4));
    kontroler->Rejestruj(czwarty.get()); // twice is once
    EXPECT_EQ(Operacja(), (TKolejnosc{1, 2, 3, 4}));
    EXPECT_EQ(Operacja(), (TKolejnosc{2, 2, 4, 5, 4, 5}));
    EXPECT_EQ(kontroler->IleZarejestrowanych(), 4U);
    czwarty.Ustaw();
    piaty.Ustaw();
    EXPECT_EQ(kontroler->IleZarejestrowanych(), 2U);
    TZTMemoryStream obcy;
    EXPECT_EQ(Blad<ZTException>([&] { kontroler->Rejestruj(&obcy); }),
              u"niedozwolone użycie Rejestruj w TZTMemoryStream");
}

TEST_F(Kontrola, MartwyJestZapomniany) {
    Smierci<TKomponent>();
    Smierci<TObiekt>();
    Smierci<TObiektLiczony>(); // held by nobody, so freed like the others
    {
        TSluchacz<TKomponent> naStosie;
        kontroler->Rejestruj(&naStosie);
        const TIntf<IKontrolowany> nieliczony(&naStosie);
    }
    EXPECT_EQ(kontroler->IleZarejestrowanych(), 0U);
    // A counted object whose last reference goes while others are called is still called, then it dies; what is
    // broadcast while it dies passes it over.
    TIntf<IInterfejs> trzymany;
    const TIntf<IKontrolowany> pierwszy(Nowy<TObiektLiczony>(1, [&] { trzymany = nullptr; }));
    auto* drugi = Nowy<TObiektLiczony>(2);
    drugi->gdyUmiera = [this] { kontroler->Operacja(u"koniec"); };
    trzymany = TIntf<IInterfejs>(static_cast<IKontrolowany*>(drugi));
    EXPECT_EQ(Operacja(), (TKolejnosc{1, 2, 1}));
    EXPECT_EQ(kontroler->IleZarejestrowanych(), 1U);
}

TEST_F(Kontrola, BladNieZatrzymujePozostalych) {
    TWlasny<TObiektOgolny> sluchacze[4];
    for (int i = 0; i < 4; ++i)
        sluchacze[i].Ustaw(Nowy<TKomponent>(i, [i] {
            if (i % 2 == 1)
                throw EBladOdczytu(i == 1 ? u"pierwszy" : u"drugi");
        }));
    for (int razy = 0; razy < 2; ++razy) {
        EXPECT_EQ(Blad<EBladOdczytu>([this] { Operacja(); }), u"pierwszy");
        EXPECT_EQ(log, (TKolejnosc{0, 1, 2, 3}));
    }
}

TEST_F(Kontrola, KazdyPrzydzialMozeZawiesc) {
    const przydzialy::TWynik przydzialow = testy::PsujKazdyPrzydzial([&] {
        const TRepozytorium r = NoweRepozytorium();
        const TIntf<IUsluga> gotowa(UtworzSurowy<TUsluga>());
        r->RejestrujObiekt(IUsluga::IID, gotowa.get(), u"a");
        r->RejestrujObiekt(IUsluga::IID, TUsluga::KlasaStatyczna(), nullptr, u"b");
        r->RejestrujObiekt(IUsluga::IID, &Fabryka, u"c");
        const std::u16string nazwy = Nazwa(r, u"a") + Nazwa(r, u"b") + Nazwa(r, u"c");
        EXPECT_EQ(kontroler->IleZarejestrowanych(), 0U);
        const TWlasny<TKomponent> okno = Utworz<TKomponent>();
        auto& sluchacz = okno->UtworzSkladnik<TSluchacz<TKomponent>>();
        for (int i = 0; i < 3; ++i)
            kontroler->Rejestruj(i == 0 ? &sluchacz : &okno->UtworzSkladnik<TSluchacz<TKomponent>>());
        kontroler->Operacja(u"x");
        return nazwy + DeszyfrujTekst(SzyfrujTekst(u"tajne", "k"), "k") + (sluchacz.wywolan == 1 ? u"" : u"?");
    });
    EXPECT_GT(przydzialow.ile, 10);
}

// --- threads

TEST_F(RepozytoriumWatki, WszystkoNaraz) {
    const TIntf<IKontroler> kontroler = Kontroler();
    const TRepozytorium r = RepozytoriumKlas();
    r->RejestrujObiekt(IUsluga::IID, TUsluga::KlasaStatyczna(), nullptr, u"stala");
    std::atomic<int> bledy{0};
    testy::WWatkach(8, [&](int w) {
        const std::u16string id(1, static_cast<char16_t>(u'a' + w));
        for (int i = 0; i < 150; ++i) {
            const TWlasny<TSluchacz<TKomponent>> komponent = Utworz<TSluchacz<TKomponent>>();
            const TWlasny<TSluchacz<TObiekt>> obiekt = Utworz<TSluchacz<TObiekt>>();
            auto* liczony = UtworzSurowy<TSluchacz<TObiektLiczony>>();
            const TIntf<IKontrolowany> trzymany(liczony);
            for (TObiektOgolny* sluchacz :
                 std::initializer_list<TObiektOgolny*>{komponent.get(), obiekt.get(), liczony})
                kontroler->Rejestruj(sluchacz);
            kontroler->Operacja(u"x");
            bledy += komponent->wywolan == 0 || obiekt->wywolan == 0 || liczony->wywolan == 0;
            if (i % 2 == 0)
                kontroler->Wyrejestruj(komponent.get()); // the rest leave by dying
            const TGUID guid = i % 3 == 0 ? A : B;
            r->RejestrujObiekt(guid, TOkno::KlasaStatyczna(), nullptr, id);
            TUchwyt uchwyt;
            TListaNapisow lista;
            r->DajListeIdentyfikatorow(guid, lista);
            bledy += !r->DajUchwyt(uchwyt, guid, id) || lista.IndeksNapisu(id) < 0 ||
                     !r->JestZarejestrowany(IUsluga::IID, u"stala");
            r->WyrejestrujObiekt(guid, id);
            TIntf<IRepozytoriumKlas> inne;
            bledy += DajInterfejsWlasciciela(obiekt.get(), inne) || r->JestZarejestrowany(guid, id);
        }
    });
    EXPECT_EQ(bledy, 0);
    r->WyrejestrujObiekt(IUsluga::IID, u"stala");
    EXPECT_EQ(static_cast<TKontroler*>(ObiektZaInterfejsem(kontroler.get()))->IleZarejestrowanych(), 0U);
}

} // namespace
