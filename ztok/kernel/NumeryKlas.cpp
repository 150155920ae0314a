#include "ztok/kernel/NumeryKlas.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <string>
#include <vector>

#include "ztok/kernel/JadroBiezace.h"
#include "ztok/kernel/TOpisKlasy.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/Powiadomienie.h"
#include "ztok/platform/Pula.h"
#include "ztok/platform/TSekcjaKrytyczna.h"
#include "ztok/repository/Zamykanie.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {

namespace {

struct TNazwa {
    std::uint32_t numer;
    std::vector<const TKlasa*> zaladowane; // the class in each module that holds it
};

struct TRejestr {
    TSekcjaKrytyczna sekcja;
    std::map<std::u16string, TNazwa, std::less<>> nazwy;
    std::vector<const std::u16string*> numery; // name of number N at N - 1
    std::vector<const TMigawkaOpisu*> migawki; // all
    // Those that hold, by class and kernel: a host that goes from one kernel to another and back makes none anew.
    std::map<std::pair<const TKlasa*, std::uint64_t>, const TMigawkaOpisu*> aktualne;
};

// Made on first use and freed by ZwolnijRejestrKlas: it must outlive the static objects of this module.
TRejestr* rejestr = nullptr;

TRejestr& Rejestr() {
    static std::atomic_flag tworzony = ATOMIC_FLAG_INIT;
    if (TRejestr* gotowy = std::atomic_ref(rejestr).load(std::memory_order_acquire); gotowy != nullptr)
        return *gotowy;
    while (tworzony.test_and_set(std::memory_order_acquire)) {
    }
    if (rejestr == nullptr)
        std::atomic_ref(rejestr).store(new TRejestr, std::memory_order_release);
    tworzony.clear(std::memory_order_release);
    return *rejestr;
}

std::u16string_view Nazwa(const TKlasa* klasa) noexcept {
    return klasa == nullptr ? std::u16string_view() : klasa->nazwa;
}

std::span<const TWierszPola> Wiersze(const TKlasa& klasa) noexcept {
    return klasa.pola == nullptr ? std::span<const TWierszPola>() : klasa.pola();
}

bool TaSamaDeklaracja(const TKlasa& a, const TKlasa& b) {
    const auto elementy = [](const TKlasa& k) {
        return k.Ma(ckListaObiektow) && k.typObiektow != nullptr ? Nazwa(k.typObiektow()) : std::u16string_view();
    };
    const auto tenSam = [](const TWierszPola& x, const TWierszPola& y) {
        const auto klasa = [](const TWierszPola& w) { return w.klasa == nullptr ? nullptr : w.klasa(); };
        return x.nr == y.nr && x.nazwa == y.nazwa && x.rodzaj == y.rodzaj && x.czytnik == y.czytnik &&
               x.pisarz == y.pisarz && x.typ == y.typ && Nazwa(klasa(x)) == Nazwa(klasa(y));
    };
    const auto wierszeA = Wiersze(a);
    const auto wierszeB = Wiersze(b);
    return a.rozmiar == b.rozmiar && a.cechy == b.cechy && Nazwa(a.Przodek()) == Nazwa(b.Przodek()) &&
           elementy(a) == elementy(b) &&
           std::equal(wierszeA.begin(), wierszeA.end(), wierszeB.begin(), wierszeB.end(), tenSam);
}

std::u16string OpisDeklaracji(const TKlasa& klasa) {
    return Formatuj(Komunikat(kmOpisDeklaracji), {Nazwa(klasa.Przodek()), static_cast<std::int64_t>(klasa.rozmiar),
                                                  static_cast<std::int64_t>(Wiersze(klasa).size())});
}

} // namespace

void PoznajKlase(const TKlasa* klasa) { NumerKlasy(klasa); }

std::uint32_t NumerKlasy(const TKlasa* klasa) {
    if (klasa == nullptr)
        return 0;
    const std::uint32_t znany = klasa->stan->numer.load(std::memory_order_acquire);
    if (znany != 0)
        return znany;
    klasa->modul(); // from now on the module takes its classes out when it goes
    TRejestr& r = Rejestr();
    const TBlokada blokada(r.sekcja);
    auto [wpis, nowy] = r.nazwy.try_emplace(std::u16string(klasa->nazwa));
    if (nowy) {
        r.numery.push_back(&wpis->first);
        wpis->second.numer = static_cast<std::uint32_t>(r.numery.size());
    }
    std::vector<const TKlasa*>& klasy = wpis->second.zaladowane;
    if (std::find(klasy.begin(), klasy.end(), klasa) == klasy.end()) {
        if (!klasy.empty() && !TaSamaDeklaracja(*klasy.front(), *klasa))
            ZTErrorFmt(Komunikat(kmInnaKlasaTejNazwy),
                       {klasa->nazwa, OpisDeklaracji(*klasy.front()), OpisDeklaracji(*klasa)});
        klasy.push_back(klasa);
    }
    klasa->stan->numer.store(wpis->second.numer, std::memory_order_release);
    return wpis->second.numer;
}

const TKlasa* KlasaONumerze(std::uint32_t numer) noexcept {
    TRejestr& r = Rejestr();
    const TBlokada blokada(r.sekcja);
    if (numer == 0 || numer > r.numery.size())
        return nullptr;
    const std::vector<const TKlasa*>& klasy = r.nazwy.find(*r.numery[numer - 1])->second.zaladowane;
    return klasy.empty() ? nullptr : klasy.front();
}

void ZachowajMigawke(const TKlasa* klasa, const TMigawkaOpisu* migawka) {
    TRejestr& r = Rejestr();
    const TBlokada blokada(r.sekcja);
    r.migawki.reserve(r.migawki.size() + 1);
    r.aktualne[{klasa, migawka->numerJadra}] = migawka;
    r.migawki.push_back(migawka);
    klasa->stan->migawka.store(migawka, std::memory_order_release);
}

const TMigawkaOpisu* PrzywrocMigawke(const TKlasa* klasa, std::uint64_t numerJadra) noexcept {
    TRejestr& r = Rejestr();
    const TBlokada blokada(r.sekcja);
    const auto wpis = r.aktualne.find({klasa, numerJadra});
    if (wpis == r.aktualne.end())
        return nullptr;
    klasa->stan->migawka.store(wpis->second, std::memory_order_release);
    return wpis->second;
}

namespace {

void ZapomnijMigawkiKlas(TRejestr& r) noexcept {
    for (const auto& [nazwa, wpis] : r.nazwy)
        for (const TKlasa* klasa : wpis.zaladowane)
            klasa->stan->migawka.store(nullptr, std::memory_order_release);
    r.aktualne.clear();
}

template <class F> void UsunMigawki(TRejestr& r, const F& ktore) noexcept {
    std::erase_if(r.migawki, [&ktore](const TMigawkaOpisu* migawka) {
        if (!ktore(*migawka))
            return false;
        delete[] migawka->pola;
        delete[] migawka->nazwy;
        delete migawka;
        return true;
    });
}

} // namespace

void UniewaznijMigawki() noexcept {
    TRejestr& r = Rejestr();
    const TBlokada blokada(r.sekcja);
    ZapomnijMigawkiKlas(r);
}

void ZwolnijMigawki(std::uint64_t numerJadra) noexcept {
    TRejestr& r = Rejestr();
    const TBlokada blokada(r.sekcja);
    ZapomnijMigawkiKlas(r);
    UsunMigawki(r, [numerJadra](const TMigawkaOpisu& m) { return m.numerJadra == numerJadra; });
}

void ZwolnijMigawki() noexcept {
    TRejestr& r = Rejestr();
    const TBlokada blokada(r.sekcja);
    ZapomnijMigawkiKlas(r);
    UsunMigawki(r, [](const TMigawkaOpisu&) { return true; });
    r.migawki.shrink_to_fit();
}

void ZwolnijRejestrKlas() noexcept {
    if (rejestr == nullptr)
        return;
    ZwolnijMigawki();
    delete rejestr;
    rejestr = nullptr;
}

namespace {

// Tells the host which objects of the module's classes outlive its code, as far as they are in the pool.
void ZglosZyjaceObiekty(const TModul& modul) noexcept {
    if (g_ZTOKQuiet || !PowiadomieniePodmienione())
        return;
    struct TLiczba {
        const TKlasa* klasa;
        std::int64_t ile;
    };
    try {
        std::map<const void*, TLiczba> wgWzorca;
        {
            TRejestr& r = Rejestr();
            const TBlokada blokada(r.sekcja);
            for (const auto& [nazwa, wpis] : r.nazwy)
                for (const TKlasa* klasa : wpis.zaladowane)
                    if (const void* wzorzec = klasa->stan->wzorzec.load(std::memory_order_relaxed);
                        wzorzec != nullptr && &klasa->modul() == &modul)
                        wgWzorca[wzorzec] = {klasa, 0};
        }
        if (wgWzorca.empty())
            return;
        DlaBlokowPuli(
            [](void* kontekst, const void* pierwszeSlowo) noexcept {
                auto& liczby = *static_cast<std::map<const void*, TLiczba>*>(kontekst);
                if (const auto liczba = liczby.find(pierwszeSlowo); liczba != liczby.end())
                    ++liczba->second.ile;
            },
            &wgWzorca);
        std::u16string linie;
        for (const auto& [wzorzec, liczba] : wgWzorca)
            if (liczba.ile != 0)
                linie += Formatuj(u"%s: %d\r\n", {liczba.klasa->nazwa, liczba.ile});
        if (!linie.empty())
            Powiadom(Formatuj(Komunikat(kmZyjaObiektyModulu), {linie}));
    } catch (...) { // NOLINT(bugprone-empty-catch): a notice for want of memory is none
    }
}

} // namespace

TModul::~TModul() {
    if (this == &ModulBiezacy()) // the library itself goes, and everything with it
        return;
    // First, while the objects that end here still have their classes.
    WyrejestrujModul(*this);
    WyrejestrujKontrolowaneModulu(*this);
    if (rejestr == nullptr)
        return;
    ZglosZyjaceObiekty(*this);
    // The classes of this module, with the same class of another module where there is one.
    std::vector<std::pair<const TKlasa*, const TKlasa*>> odchodzace;
    {
        TRejestr& r = Rejestr();
        const TBlokada blokada(r.sekcja);
        for (auto& [nazwa, wpis] : r.nazwy) {
            std::vector<const TKlasa*>& klasy = wpis.zaladowane;
            for (std::size_t i = klasy.size(); i-- > 0;)
                if (&klasy[i]->modul() == this) {
                    odchodzace.emplace_back(klasy[i], nullptr);
                    klasy[i]->stan->numer.store(0, std::memory_order_release);
                    klasy.erase(klasy.begin() + static_cast<std::ptrdiff_t>(i));
                }
            if (!odchodzace.empty() && odchodzace.back().first->nazwa == nazwa && !klasy.empty())
                odchodzace.back().second = klasy.front();
        }
        // Snapshots of other classes may name classes of this module as field classes.
        ZapomnijMigawkiKlas(r);
        for (const auto& [klasa, zastepcza] : odchodzace)
            klasa->stan->migawka.store(nullptr, std::memory_order_release);
    }
    if (odchodzace.empty())
        return;
    try {
        for (TJadroKlas* jadro : {UserKernel, wlasneJadro})
            if (jadro != nullptr)
                for (const auto& [klasa, zastepcza] : odchodzace)
                    jadro->ZapomnijKlase(klasa, zastepcza);
    } catch (...) { // NOLINT(bugprone-empty-catch): a destructor; the names that are left resolve to no loaded class
    }
}

} // namespace ztok
