#include "ztok/repository/Repozytorium.h"

#include <atomic>
#include <vector>

#include "ztok/kernel/DeklaracjaObiektu.h"
#include "ztok/kernel/TJadroKlas.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/PierwszeUzycie.h"
#include "ztok/platform/TKomponent.h"
#include "ztok/platform/TListaNapisow.h"
#include "ztok/repository/Kontroler.h"
#include "ztok/repository/Wlasciciele.h"
#include "ztok/repository/Zamykanie.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {

ZTOK_KLASA_DEF(TDaneObiektu, TObiekt)
ZTOK_KLASA_DEF(TLista, TListaTypu<TDaneObiektu>)
ZTOK_KLASA_DEF(TRepozytoriumKlas, TObiektLiczony)

namespace {

// Objects that live by their count.
bool Liczony(const TObiektOgolny& obiekt) noexcept {
    return obiekt.Klasa()->Ma(ckParametr) || obiekt.JestKlasy(TObiektLiczony::KlasaStatyczna());
}

void Policz(TObiektOgolny& obiekt, bool trzymaj) noexcept {
    if (obiekt.Klasa()->Ma(ckParametr)) {
        auto& parametr = static_cast<TObiektBazowy&>(obiekt);
        static_cast<void>(trzymaj ? parametr._AddRef() : parametr._Release());
    } else {
        auto& liczony = static_cast<TObiektLiczony&>(obiekt);
        static_cast<void>(trzymaj ? liczony._AddRef() : liczony._Release());
    }
}

// Whether another object frees it: the component that owns it, or the list or field that holds it.
bool MaWlasciciela(const TObiektOgolny& obiekt) noexcept {
    if (obiekt.Klasa()->Ma(ckObiektBazowy))
        return static_cast<const TObiektBazowy&>(obiekt).JestTrzymany();
    return obiekt.JestKlasy(TKomponent::KlasaStatyczna()) &&
           static_cast<const TKomponent&>(obiekt).Wlasciciel() != nullptr;
}

// Holds the parameter objects among the arguments of a creation while it runs.
class TPrzytrzymane {
  public:
    TPrzytrzymane(TObiektOgolny* wlasciciel, TObiektOgolny* rodzic, TArgumenty argumenty) {
        Dodaj(wlasciciel);
        Dodaj(rodzic);
        for (const TArgument& argument : argumenty)
            if (argument.Tag() == TTag::Object)
                Dodaj(argument.Obiekt());
    }

  private:
    void Dodaj(TObiektOgolny* obiekt) {
        if (obiekt != nullptr && obiekt->Klasa()->Ma(ckParametr))
            parametry_.emplace_back(static_cast<TObiektBazowy*>(obiekt));
    }

    std::vector<TIntf<TObiektBazowy>> parametry_;
};

} // namespace

// --- TUchwyt

TUchwyt::TUchwyt(TUchwyt&& inny) noexcept
    : obiekt_(std::exchange(inny.obiekt_, nullptr)), odwolanie_(std::move(inny.odwolanie_)),
      wlasny_(std::exchange(inny.wlasny_, false)), interfejs_(std::move(inny.interfejs_)) {}

TUchwyt& TUchwyt::operator=(TUchwyt&& inny) noexcept {
    if (this != &inny) {
        Zeruj();
        obiekt_ = std::exchange(inny.obiekt_, nullptr);
        odwolanie_ = std::move(inny.odwolanie_);
        wlasny_ = std::exchange(inny.wlasny_, false);
        interfejs_ = std::move(inny.interfejs_);
    }
    return *this;
}

TObiektOgolny* TUchwyt::Trzymany() const noexcept {
    return odwolanie_ ? static_cast<TObiektOgolny*>(odwolanie_->Obiekt()) : obiekt_;
}

void TUchwyt::Zeruj() noexcept {
    interfejs_ = nullptr;
    TObiektOgolny* obiekt = Trzymany();
    obiekt_ = nullptr;
    odwolanie_.Ustaw();
    if (!std::exchange(wlasny_, false) || obiekt == nullptr)
        return;
    if (Liczony(*obiekt))
        Policz(*obiekt, false);
    else if (!MaWlasciciela(*obiekt))
        ZwolnijCicho(obiekt);
}

void TUchwyt::UstawObiekt(TObiektOgolny* obiekt) {
    if (obiekt != nullptr && obiekt == Trzymany())
        return;
    Zeruj();
    if (obiekt == nullptr)
        return;
    const bool liczony = Liczony(*obiekt);
    if (!liczony && obiekt->Klasa()->Ma(ckObiektBazowy)) {
        auto& modelu = static_cast<TObiektBazowy&>(*obiekt);
        TWlasny<TObiektBazowy> straznik(MaWlasciciela(modelu) ? nullptr : &modelu);
        odwolanie_ = Utworz<TPoleRefObiektu>();
        odwolanie_->UstawObiekt(&modelu);
        static_cast<void>(straznik.Oddaj());
    }
    obiekt_ = obiekt;
    if (liczony)
        Policz(*obiekt, true);
    wlasny_ = liczony || !MaWlasciciela(*obiekt);
}

void TUchwyt::UstawInterfejs(TIntf<IInterfejs> interfejs) noexcept {
    Zeruj();
    interfejs_ = std::move(interfejs);
}

TObiektOgolny* TUchwyt::Obiekt() const noexcept {
    TObiektOgolny* obiekt = Trzymany();
    return obiekt != nullptr ? obiekt : ObiektZaInterfejsem(interfejs_.get());
}

TWlasny<TObiektOgolny> TUchwyt::OddajObiekt() noexcept {
    TObiektOgolny* obiekt = Trzymany();
    if (!wlasny_ || obiekt == nullptr || Liczony(*obiekt) || MaWlasciciela(*obiekt))
        return nullptr;
    wlasny_ = false;
    obiekt_ = nullptr;
    odwolanie_.Ustaw();
    return TWlasny<TObiektOgolny>(obiekt);
}

void* TUchwyt::DajInterfejs(const TGUID& iid) const noexcept {
    void* wynik = nullptr;
    if (TObiektOgolny* obiekt = Trzymany(); obiekt != nullptr)
        DajInterfejsObiektu(obiekt, iid, &wynik);
    else if (interfejs_ && iid != IID_ObiektImplementujacy && interfejs_->QueryInterface(iid, &wynik) != kIntfOk)
        wynik = nullptr;
    return wynik;
}

TObiektOgolny* KonstruktorDomyslny(const TKlasa* Klasa, TObiektOgolny* Wlasciciel, TObiektOgolny* Rodzic,
                                   TArgumenty /*Argumenty*/) {
    if (Klasa->utworz == nullptr)
        ZTErrorFmt(kmKlasaAbstrakcyjna, {Klasa});
    for (TObiektOgolny* obiekt : {Rodzic, Wlasciciel})
        if (obiekt != nullptr && obiekt->Klasa()->Ma(ckObiektBazowy))
            return Klasa->utworz(static_cast<TObiektBazowy*>(obiekt));
    return Klasa->utworz(nullptr);
}

// --- TDaneObiektu and TLista

std::span<const TWierszPola> TDaneObiektu::PolaKlasy(std::type_identity<TDaneObiektu> /*klasa*/) noexcept {
    static constexpr TWierszPola wiersze[] = {rodzaj::String::Wiersz(0, u"GuidTekstowo"),
                                              rodzaj::String::Wiersz(1, u"Identyfikator")};
    return wiersze;
}

TDaneObiektu::~TDaneObiektu() { DokonczZycie(); }

TGUID TDaneObiektu::GetGUID() const {
    const std::u16string tekst = GetGuidTekstowo();
    return tekst.empty() ? TGUID{} : GuidZTekstu(tekst);
}

void TDaneObiektu::KopiujSposob(const TDaneObiektu& zrodlo) {
    FKonstruktor = zrodlo.FKonstruktor;
    FInt = zrodlo.FInt;
    FKlasa = zrodlo.FKlasa;
    FTKonstruktorKlasy = zrodlo.FTKonstruktorKlasy;
    FKonstruktorInt = zrodlo.FKonstruktorInt;
    FModul = zrodlo.FModul;
}

bool TDaneObiektu::ZModulu(const TModul& modul) const noexcept {
    return FModul == &modul || (FKlasa != nullptr && &FKlasa->modul() == &modul);
}

void TDaneObiektu::WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) {
    TObiekt::WykonajKopiowanie(zrodlo, kopier);
    if (zrodlo.JestKlasy(KlasaStatyczna()))
        KopiujSposob(static_cast<const TDaneObiektu&>(zrodlo));
}

TLista::~TLista() { DokonczZycie(); }

// --- TRepozytoriumKlas

namespace {

// All repositories, for a module that leaves.
struct TSpisRepozytoriow {
    TSekcjaKrytyczna sekcja; // comes before the lock of a repository
    std::vector<TRepozytoriumKlas*> repozytoria;
};
constinit std::atomic<TSpisRepozytoriow*> spisRepozytoriow{nullptr};

bool TaSamaKlasa(const TKlasa* a, const TKlasa* b) noexcept {
    return a == b || (a != nullptr && b != nullptr && a->nazwa == b->nazwa);
}

} // namespace

std::span<const TWierszInterfejsu> TRepozytoriumKlas::InterfejsyKlasy() noexcept {
    static constexpr TWierszInterfejsu wiersze[] = {WierszInterfejsu<TRepozytoriumKlas, IRepozytoriumKlas>(),
                                                    WierszInterfejsu<TRepozytoriumKlas, IRepozytoriumBazowe>()};
    return wiersze;
}

TRepozytoriumKlas::TRepozytoriumKlas(TObiektOgolny* Owner) : FOwner(Owner), FLista(Utworz<TLista>()) {
    TSpisRepozytoriow& spis = PrzyPierwszymUzyciu(spisRepozytoriow);
    const TBlokada blokada(spis.sekcja);
    spis.repozytoria.push_back(this);
}

TRepozytoriumKlas::~TRepozytoriumKlas() {
    {
        TSpisRepozytoriow& spis = *spisRepozytoriow.load(std::memory_order_acquire);
        const TBlokada blokada(spis.sekcja);
        std::erase(spis.repozytoria, this);
    }
    // One by one, each out of the list before it goes: what ends with it may still ask this repository.
    while (!FLista->ListaPusta())
        static_cast<void>(FLista->Wyjmij(FLista->IleObiektow() - 1));
}

TLista& TRepozytoriumKlas::LockList() noexcept {
    FLock.Wejdz();
    return *FLista;
}

void TRepozytoriumKlas::UnlockList() noexcept { FLock.Wyjdz(); }

TDaneObiektu* TRepozytoriumKlas::Znajdz(std::u16string_view guid, std::u16string_view identyfikator,
                                        std::int32_t& gdzie) {
    const TArgument pola[] = {0, 1};
    const TArgument wartosci[] = {guid, identyfikator};
    return FLista->WyszukajWgPol(pola, wartosci, gdzie, rlRozmLiterWazny, rsRosnaco, LocaleWin1250)
               ? FLista->Element(gdzie)
               : nullptr;
}

void TRepozytoriumKlas::Wpisz(TWlasny<TDaneObiektu> dane, const TGUID& guid, std::u16string_view identyfikator,
                              bool jedyne) {
    const std::u16string tekst = GUIDToString(guid);
    dane->SetGuidTekstowo(tekst);
    dane->SetIdentyfikator(identyfikator);
    {
        const TBlokada blokada(FLock);
        std::int32_t gdzie = 0;
        if (Znajdz(tekst, identyfikator, gdzie) == nullptr) {
            FLista->Dodaj(std::move(dane), gdzie);
            return;
        }
    }
    if (jedyne)
        throw EWyjatek(Formatuj(Komunikat(kmElementJuzIstnieje), {tekst, identyfikator}));
}

void TRepozytoriumKlas::RejestrujObiekt(const TGUID& GUID, const TKlasa* Klasa, TKonstruktorKlasy Konstruktor,
                                        std::u16string_view Identyfikator, TModul& Modul) {
    if (Klasa == nullptr)
        NiedozwoloneUzycie(u"RejestrujObiekt", *this);
    TWlasny<TDaneObiektu> dane = Utworz<TDaneObiektu>();
    dane->FKlasa = Klasa;
    dane->FTKonstruktorKlasy = Konstruktor != nullptr ? Konstruktor : &KonstruktorDomyslny;
    dane->FModul = Konstruktor != nullptr ? &Modul : &Klasa->modul();
    Wpisz(std::move(dane), GUID, Identyfikator, false);
}

void TRepozytoriumKlas::RejestrujObiekt(const TGUID& GUID, IInterfejs* Int, std::u16string_view Identyfikator,
                                        TModul& Modul) {
    void* wynik = nullptr;
    if (Int == nullptr || GUID == IID_ObiektImplementujacy || Int->QueryInterface(GUID, &wynik) != kIntfOk)
        BrakInterfejsu(GUID, {});
    TIntf<IInterfejs> interfejs = TIntf<IInterfejs>::Przejmij(static_cast<IInterfejs*>(wynik));
    TWlasny<TDaneObiektu> dane = Utworz<TDaneObiektu>();
    const TObiektOgolny* obiekt = ObiektZaInterfejsem(interfejs.get());
    dane->FModul = obiekt != nullptr ? &obiekt->Klasa()->modul() : &Modul;
    dane->FInt = std::move(interfejs);
    Wpisz(std::move(dane), GUID, Identyfikator, false);
}

void TRepozytoriumKlas::RejestrujObiekt(const TGUID& GUID, TKonstruktorInt KonstruktorInt,
                                        std::u16string_view Identyfikator, TModul& Modul) {
    if (KonstruktorInt == nullptr)
        NiedozwoloneUzycie(u"RejestrujObiekt", *this);
    TWlasny<TDaneObiektu> dane = Utworz<TDaneObiektu>();
    dane->FKonstruktorInt = KonstruktorInt;
    dane->FModul = &Modul;
    Wpisz(std::move(dane), GUID, Identyfikator, true);
}

void TRepozytoriumKlas::RejestrujObiekt(const TGUID& GUID, TKonstruktor Konstruktor, std::u16string_view Identyfikator,
                                        TModul& Modul) {
    if (Konstruktor == nullptr)
        NiedozwoloneUzycie(u"RejestrujObiekt", *this);
    TWlasny<TDaneObiektu> dane = Utworz<TDaneObiektu>();
    dane->FKonstruktor = Konstruktor;
    dane->FModul = &Modul;
    Wpisz(std::move(dane), GUID, Identyfikator, true);
}

void TRepozytoriumKlas::WyrejestrujObiekt(const TGUID& GUID, std::u16string_view Identyfikator) {
    TWlasny<TDaneObiektu> usuniete; // freed outside the lock: with it may go the last reference to an object
    const std::u16string tekst = GUIDToString(GUID);
    const TBlokada blokada(FLock);
    std::int32_t gdzie = 0;
    if (Znajdz(tekst, Identyfikator, gdzie) == nullptr)
        return;
    usuniete = Wyjmij(gdzie);
}

TWlasny<TDaneObiektu> TRepozytoriumKlas::Wyjmij(std::int32_t nr) {
    TWlasny<TDaneObiektu> wyjete = FLista->Wyjmij(nr);
    if (FLista->ListaPusta())
        FLista->UstawPojemnosc(0); // an idle repository holds no memory
    return wyjete;
}

TWlasny<TDaneObiektu> TRepozytoriumKlas::WyjmijZModulu(const TModul& modul) {
    const TBlokada blokada(FLock);
    for (std::int32_t nr = FLista->IleObiektow(); nr-- > 0;)
        if (FLista->Element(nr)->ZModulu(modul))
            return Wyjmij(nr);
    return nullptr;
}

bool TRepozytoriumKlas::JestZarejestrowany(const TGUID& GUID, std::u16string_view Identyfikator) {
    const std::u16string tekst = GUIDToString(GUID);
    const TBlokada blokada(FLock);
    std::int32_t gdzie = 0;
    return Znajdz(tekst, Identyfikator, gdzie) != nullptr;
}

bool TRepozytoriumKlas::DajKonstruktor(TKonstruktorKlasy& Konstruktor, const TGUID& GUID,
                                       std::u16string_view Identyfikator) {
    TIntf<IRepozytoriumKlas> zewnetrzne;
    {
        const std::u16string tekst = GUIDToString(GUID);
        const TBlokada blokada(FLock);
        std::int32_t gdzie = 0;
        const TDaneObiektu* dane = Znajdz(tekst, Identyfikator, gdzie);
        if (dane != nullptr && dane->FTKonstruktorKlasy != nullptr) {
            Konstruktor = dane->FTKonstruktorKlasy;
            return true;
        }
        zewnetrzne = Parent;
    }
    return zewnetrzne && zewnetrzne->DajKonstruktor(Konstruktor, GUID, Identyfikator);
}

bool TRepozytoriumKlas::DajUchwyt(TUchwyt& Uchwyt, const TGUID& GUID, bool Wymagany, std::u16string_view Identyfikator,
                                  TObiektOgolny* Wlasciciel, TObiektOgolny* Rodzic, TArgumenty Argumenty) {
    const TPrzytrzymane przytrzymane(Wlasciciel, Rodzic, Argumenty);
    Uchwyt.Zeruj();
    TDaneObiektu kopia;
    TIntf<IRepozytoriumKlas> zewnetrzne;
    TObiektOgolny* owner = nullptr;
    {
        const std::u16string tekst = GUIDToString(GUID);
        const TBlokada blokada(FLock);
        std::int32_t gdzie = 0;
        if (const TDaneObiektu* dane = Znajdz(tekst, Identyfikator, gdzie); dane != nullptr)
            kopia.KopiujSposob(*dane);
        zewnetrzne = Parent;
        owner = FOwner;
    }
    bool jest = false;
    if (kopia.FKonstruktor != nullptr) {
        Uchwyt.UstawObiekt(kopia.FKonstruktor(Wlasciciel, Rodzic, Argumenty));
        jest = !Uchwyt.Pusty();
    } else if (kopia.FInt) {
        void* wynik = nullptr;
        jest = kopia.FInt->QueryInterface(GUID, &wynik) == kIntfOk;
        if (jest)
            Uchwyt.UstawInterfejs(TIntf<IInterfejs>::Przejmij(static_cast<IInterfejs*>(wynik)));
    } else if (kopia.FTKonstruktorKlasy != nullptr) {
        Uchwyt.UstawObiekt(kopia.FTKonstruktorKlasy(kopia.FKlasa, Wlasciciel, Rodzic, Argumenty));
        jest = !Uchwyt.Pusty();
    } else if (kopia.FKonstruktorInt != nullptr) {
        jest = kopia.FKonstruktorInt(Uchwyt, GUID, Wymagany, Wlasciciel, Rodzic, Identyfikator, owner);
    }
    if (jest)
        return true;
    Uchwyt.Zeruj();
    return zewnetrzne && zewnetrzne->DajUchwyt(Uchwyt, GUID, Wymagany, Identyfikator, Wlasciciel, Rodzic, Argumenty);
}

bool TRepozytoriumKlas::DajIIDWgKlasy(const TKlasa* Klasa, TGUID& Iid, std::u16string_view Identyfikator) {
    TIntf<IRepozytoriumKlas> zewnetrzne;
    {
        const TBlokada blokada(FLock);
        for (const TDaneObiektu* dane : *FLista)
            if (dane->FKlasa != nullptr && TaSamaKlasa(dane->FKlasa, Klasa) &&
                dane->GetIdentyfikator() == Identyfikator) {
                Iid = dane->GetGUID();
                return true;
            }
        zewnetrzne = Parent;
    }
    return zewnetrzne && zewnetrzne->DajIIDWgKlasy(Klasa, Iid, Identyfikator);
}

void TRepozytoriumKlas::DajListeIdentyfikatorow(const TGUID& GUID, TListaNapisow& Lista) {
    const TArgument pola[] = {0};
    const TArgument wartosci[] = {GUIDToString(GUID)};
    Lista.Zeruj();
    TIntf<IRepozytoriumKlas> zewnetrzne;
    {
        const TBlokada blokada(FLock);
        std::int32_t od = 0;
        std::int32_t doKtorego = -1;
        if (FLista->WyszukajZakres(pola, wartosci, od, doKtorego)) {
            for (; od <= doKtorego; ++od)
                Lista.Dodaj(FLista->Element(od)->GetIdentyfikator());
            return;
        }
        zewnetrzne = Parent;
    }
    if (zewnetrzne)
        zewnetrzne->DajListeIdentyfikatorow(GUID, Lista);
}

TIntf<IRepozytoriumKlas> TRepozytoriumKlas::DajParent() {
    const TBlokada blokada(FLock);
    return Parent;
}

void TRepozytoriumKlas::UstawParent(TIntf<IRepozytoriumKlas> Zewnetrzne) {
    for (TIntf<IRepozytoriumKlas> r = Zewnetrzne; r; r = r->DajParent())
        if (r.get() == this)
            NiedozwoloneUzycie(u"UstawParent", *this);
    const TBlokada blokada(FLock);
    std::swap(Parent, Zewnetrzne); // the former one goes with the argument, outside the lock
}

// --- the repository of the process

namespace {

// One reference is held.
constinit std::atomic<TRepozytoriumKlas*> repozytoriumProcesu{nullptr};

} // namespace

TIntf<IRepozytoriumKlas> RepozytoriumKlas() {
    if (TRepozytoriumKlas* jest = repozytoriumProcesu.load(std::memory_order_acquire); jest != nullptr)
        return TIntf<IRepozytoriumKlas>(jest);
    const TIntf<IKontroler> kontroler = Kontroler();
    TIntf<IRepozytoriumKlas> nowe(UtworzSurowy<TRepozytoriumKlas>(ObiektZaInterfejsem(kontroler.get())));
    TRepozytoriumKlas* zastane = nullptr;
    if (!repozytoriumProcesu.compare_exchange_strong(zastane, static_cast<TRepozytoriumKlas*>(nowe.get()),
                                                     std::memory_order_acq_rel))
        return TIntf<IRepozytoriumKlas>(zastane); // another thread was first
    nowe->_AddRef();
    return nowe;
}

bool RepozytoriumKlas(TObiektOgolny* Obiekt, TIntf<IRepozytoriumKlas>& Repozytorium) {
    return DajInterfejsWlasciciela(Obiekt, Repozytorium);
}

TIntf<IRepozytoriumKlas> RepozytoriumKlas(TObiektOgolny* Obiekt, bool Wymagany) {
    TIntf<IRepozytoriumKlas> repozytorium;
    if (!RepozytoriumKlas(Obiekt, repozytorium)) {
        if (Wymagany)
            ZTError(kmBrakRepozytorium);
        repozytorium = RepozytoriumKlas();
    }
    return repozytorium;
}

bool RKDajUchwyt(TObiektOgolny* Komponent, TUchwyt& Uchwyt, const TGUID& GUID, bool Wymagany,
                 std::u16string_view Identyfikator, TObiektOgolny* Obiekt) {
    return RepozytoriumKlas(Komponent, false)->DajUchwyt(Uchwyt, GUID, Wymagany, Identyfikator, Komponent, Obiekt, {});
}

void ZamknijRepozytorium(bool czekaj) noexcept {
    TRepozytoriumKlas* repozytorium = repozytoriumProcesu.load(std::memory_order_acquire);
    if (repozytorium == nullptr)
        return;
    if (czekaj)
        repozytorium->FLock.Wejdz();
    else if (!repozytorium->FLock.SprobujWejsc())
        return; // a thread that was ended holds it for ever: the repository stays
    repozytoriumProcesu.store(nullptr, std::memory_order_release);
    repozytorium->FOwner = nullptr; // who still holds the repository may outlive the controller
    repozytorium->FLock.Wyjdz();
    repozytorium->_Release();
}

void WyrejestrujModul(const TModul& modul) noexcept {
    TSpisRepozytoriow* spis = spisRepozytoriow.load(std::memory_order_acquire);
    for (bool wszystko = spis == nullptr; !wszystko;) {
        TWlasny<TDaneObiektu> usuniete; // freed outside the locks
        const TBlokada blokada(spis->sekcja);
        for (TRepozytoriumKlas* repozytorium : spis->repozytoria)
            if (usuniete = repozytorium->WyjmijZModulu(modul); usuniete)
                break;
        wszystko = !usuniete;
    }
}

void ZwolnijSpisRepozytoriow() noexcept {
    // A repository that somebody still holds needs it.
    if (const TSpisRepozytoriow* spis = spisRepozytoriow.load(std::memory_order_acquire);
        spis != nullptr && spis->repozytoria.empty())
        delete spisRepozytoriow.exchange(nullptr, std::memory_order_acq_rel);
}

} // namespace ztok
