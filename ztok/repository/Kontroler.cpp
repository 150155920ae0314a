#include "ztok/repository/Kontroler.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "ztok/kernel/TObiektBazowy.h"
#include "ztok/platform/PierwszeUzycie.h"
#include "ztok/platform/TKomponent.h"
#include "ztok/platform/TPierwszyBlad.h"
#include "ztok/repository/Wlasciciele.h"
#include "ztok/repository/Zamykanie.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {

ZTOK_KLASA_DEF(TKontroler, TObiektLiczony)

// One broadcast that runs: whom it has still to call, and whom it calls. The lock of all broadcasts guards it.
struct TRozgloszenie {
    struct TPozycja {
        TObiektOgolny* obiekt; // null: it died
        IKontrolowany* interfejs;
        bool policzony;
    };
    std::vector<TPozycja> pozycje;
    TObiektOgolny* wolany = nullptr;
    std::thread::id watek = std::this_thread::get_id();
    TRozgloszenie* nastepne = nullptr;
};

namespace {

// What all controllers share. The lock comes before the lock of a controller's list.
struct TStanKontroli {
    TSekcjaKrytyczna sekcja;
    std::vector<TKontroler*> kontrolery;
    TRozgloszenie* rozgloszenia = nullptr;
    // How many calls are over, under a lock of their own: an atomic's wait has lost wake-ups on 32-bit Windows.
    std::mutex muteks;
    std::condition_variable koniecWywolania;
    std::uint64_t zakonczone = 0;

    [[nodiscard]] std::uint64_t Zakonczone() {
        const std::lock_guard blokada(muteks);
        return zakonczone;
    }
    void Zakonczono() {
        {
            const std::lock_guard blokada(muteks);
            ++zakonczone;
        }
        koniecWywolania.notify_all();
    }
    void CzekajNaKolejne(std::uint64_t znane) {
        std::unique_lock blokada(muteks);
        koniecWywolania.wait(blokada, [&] { return zakonczone != znane; });
    }
};

constinit std::atomic<TStanKontroli*> stanKontroli{nullptr};

// The controller of the process; one reference is held.
constinit std::atomic<TKontroler*> kontrolerProcesu{nullptr};

} // namespace

// --- death of a controlled object

void ZapomnijKontrolowany(TObiektOgolny& obiekt) noexcept {
    TStanKontroli* stan = stanKontroli.load(std::memory_order_acquire);
    if (stan == nullptr)
        return;
    for (bool pierwszyRaz = true;; pierwszyRaz = false) {
        // Taken before the look, so that a call that ends right after it is not waited for.
        const std::uint64_t zakonczone = stan->Zakonczone();
        bool trwa = false;
        {
            const TBlokada blokada(stan->sekcja);
            if (pierwszyRaz)
                for (TKontroler* kontroler : stan->kontrolery)
                    kontroler->FLista.Remove(&obiekt);
            for (TRozgloszenie* r = stan->rozgloszenia; r != nullptr; r = r->nastepne) {
                for (TRozgloszenie::TPozycja& pozycja : r->pozycje)
                    if (pozycja.obiekt == &obiekt)
                        pozycja.obiekt = nullptr;
                trwa = trwa || (r->wolany == &obiekt && r->watek != std::this_thread::get_id());
            }
        }
        if (!trwa)
            return;
        stan->CzekajNaKolejne(zakonczone);
    }
}

void WyrejestrujKontrolowaneModulu(const TModul& modul) noexcept {
    TStanKontroli* stan = stanKontroli.load(std::memory_order_acquire);
    if (stan == nullptr)
        return;
    const auto zModulu = [&modul](const TObiektOgolny* obiekt) {
        return obiekt != nullptr && &obiekt->Klasa()->modul() == &modul;
    };
    for (IKontrolowany* policzony = nullptr;;) {
        {
            const TBlokada blokada(stan->sekcja);
            for (TKontroler* kontroler : stan->kontrolery)
                std::erase_if(*kontroler->FLista.LockList(), zModulu);
            for (TRozgloszenie* r = stan->rozgloszenia; r != nullptr && policzony == nullptr; r = r->nastepne)
                for (TRozgloszenie::TPozycja& pozycja : r->pozycje)
                    if (zModulu(pozycja.obiekt)) {
                        pozycja.obiekt = nullptr;
                        if (pozycja.policzony) {
                            policzony = pozycja.interfejs;
                            break;
                        }
                    }
        }
        if (policzony == nullptr)
            return;
        std::exchange(policzony, nullptr)->_Release(); // outside the lock: it may be the last
    }
}

// --- TKontroler

TKontroler::TKontroler() {
    TStanKontroli& stan = PrzyPierwszymUzyciu(stanKontroli);
    const TBlokada blokada(stan.sekcja);
    stan.kontrolery.push_back(this);
}

TKontroler::~TKontroler() {
    TStanKontroli& stan = *stanKontroli.load(std::memory_order_acquire);
    const TBlokada blokada(stan.sekcja);
    std::erase(stan.kontrolery, this);
}

TZnakKontroli* TKontroler::ZnakKontroli(TObiektOgolny& obiekt) noexcept {
    if (obiekt.Klasa()->Ma(ckObiektBazowy))
        return &static_cast<TObiektBazowy&>(obiekt).kontrola_;
    if (obiekt.JestKlasy(TObiektLiczony::KlasaStatyczna()))
        return &static_cast<TObiektLiczony&>(obiekt).kontrola_;
    if (obiekt.JestKlasy(TKomponent::KlasaStatyczna()))
        return &static_cast<TKomponent&>(obiekt).kontrola_;
    return nullptr;
}

void TKontroler::Rejestruj(TObiektOgolny* p_Kontrolowany) {
    if (p_Kontrolowany == nullptr)
        return;
    TZnakKontroli* znak = ZnakKontroli(*p_Kontrolowany);
    if (znak == nullptr)
        NiedozwoloneUzycie(u"Rejestruj", *p_Kontrolowany);
    p_Kontrolowany->Klasa()->modul(); // from now on the module takes its objects out when it goes
    const auto lista = FLista.LockList();
    if (std::find(lista->begin(), lista->end(), p_Kontrolowany) != lista->end())
        return;
    lista->push_back(p_Kontrolowany);
    znak->Ustaw();
}

void TKontroler::Wyrejestruj(TObiektOgolny* p_Kontrolowany) noexcept { FLista.Remove(p_Kontrolowany); }

std::size_t TKontroler::IleZarejestrowanych() { return FLista.LockList()->size(); }

// While the shared lock is held nobody that is registered dies: dying begins with taking it.
void TKontroler::ZrobMigawke(TRozgloszenie& rozgloszenie) {
    const auto lista = FLista.LockList();
    rozgloszenie.pozycje.reserve(lista->size());
    for (TObiektOgolny* obiekt : *lista) {
        auto* interfejs = static_cast<IKontrolowany*>(ZnajdzInterfejs(obiekt, IKontrolowany::IID));
        if (interfejs == nullptr)
            continue;
        bool policzony = false;
        if (obiekt->JestKlasy(TObiektLiczony::KlasaStatyczna())) {
            auto& liczony = static_cast<TObiektLiczony&>(*obiekt);
            policzony = liczony.SprobujPoliczyc();
            if (!policzony && liczony.Umiera())
                continue;
        }
        rozgloszenie.pozycje.push_back({obiekt, interfejs, policzony});
    }
}

void TKontroler::Operacja(std::u16string_view p_Identyfikator) {
    const TIntf<IKontroler> ja(LiczbaReferencji() > 0 ? this : nullptr); // a call may give the last reference back
    TStanKontroli& stan = PrzyPierwszymUzyciu(stanKontroli);
    TRozgloszenie rozgloszenie;
    {
        const TBlokada blokada(stan.sekcja);
        ZrobMigawke(rozgloszenie);
        rozgloszenie.nastepne = stan.rozgloszenia;
        stan.rozgloszenia = &rozgloszenie;
    }
    TPierwszyBlad blad;
    for (TRozgloszenie::TPozycja& pozycja : rozgloszenie.pozycje) {
        {
            const TBlokada blokada(stan.sekcja);
            rozgloszenie.wolany = std::exchange(pozycja.obiekt, nullptr);
        }
        if (rozgloszenie.wolany == nullptr)
            continue;
        IKontrolowany* const interfejs = pozycja.interfejs;
        blad.Wykonaj([&] { interfejs->WykonajOperacje(p_Identyfikator); });
        if (pozycja.policzony)
            interfejs->_Release();
        {
            const TBlokada blokada(stan.sekcja);
            rozgloszenie.wolany = nullptr;
        }
        stan.Zakonczono();
    }
    {
        const TBlokada blokada(stan.sekcja);
        TRozgloszenie** r = &stan.rozgloszenia;
        while (*r != &rozgloszenie)
            r = &(*r)->nastepne;
        *r = rozgloszenie.nastepne;
    }
    blad.Rzuc();
}

TIntf<IKontroler> Kontroler() {
    if (TKontroler* jest = kontrolerProcesu.load(std::memory_order_acquire); jest != nullptr)
        return TIntf<IKontroler>(jest);
    TIntf<IKontroler> nowy(UtworzSurowy<TKontroler>());
    TKontroler* zastany = nullptr;
    if (!kontrolerProcesu.compare_exchange_strong(zastany, static_cast<TKontroler*>(nowy.get()),
                                                  std::memory_order_acq_rel))
        return TIntf<IKontroler>(zastany); // another thread was first
    nowy->_AddRef();
    return nowy;
}

void ZamknijKontroler() noexcept {
    if (TKontroler* kontroler = kontrolerProcesu.exchange(nullptr, std::memory_order_acq_rel); kontroler != nullptr)
        kontroler->_Release();
}

void ZwolnijStanKontroli() noexcept {
    // A controller that somebody still holds needs it.
    if (TStanKontroli* stan = stanKontroli.load(std::memory_order_acquire); stan != nullptr && stan->kontrolery.empty())
        delete stanKontroli.exchange(nullptr, std::memory_order_acq_rel);
}

// --- owners

bool DajInterfejsObiektu(TObiektOgolny* obiekt, const TGUID& iid, void** wynik) noexcept {
    *wynik = nullptr;
    if (obiekt == nullptr || iid == IID_ObiektImplementujacy)
        return false;
    const auto zapytaj = [&](auto* ktory) { return ktory->QueryInterface(iid, wynik) == kIntfOk; };
    // Asked as what they are: a class may answer with the interface of another object and have none of its own.
    if (obiekt->Klasa()->Ma(ckPole))
        return zapytaj(static_cast<TPole*>(obiekt));
    if (obiekt->JestKlasy(TKomponent::KlasaStatyczna()))
        return zapytaj(static_cast<TKomponent*>(obiekt));
    if (obiekt->JestKlasy(TObiektLiczony::KlasaStatyczna()))
        return zapytaj(static_cast<TObiektLiczony*>(obiekt));
    auto* interfejs = static_cast<IInterfejs*>(ZnajdzInterfejs(obiekt, IInterfejs::IID));
    return interfejs != nullptr && zapytaj(interfejs);
}

bool DajInterfejsWlasciciela(TObiektOgolny* Obiekt, void** Interfejs, const TGUID& IID) {
    *Interfejs = nullptr;
    constexpr int kNajwyzej = 4096; // as far up as owners are followed
    for (int krok = 0; Obiekt != nullptr && krok < kNajwyzej; ++krok) {
        if (DajInterfejsObiektu(Obiekt, IID, Interfejs))
            return true;
        if (Obiekt->JestKlasy(TKomponent::KlasaStatyczna())) {
            Obiekt = static_cast<TKomponent*>(Obiekt)->Wlasciciel();
        } else {
            auto* dostep = static_cast<IDostep*>(ZnajdzInterfejs(Obiekt, IDostep::IID));
            Obiekt = dostep != nullptr ? dostep->DajWlasciciela() : nullptr;
        }
    }
    return false;
}

} // namespace ztok
