#include "ztok/kernel/NumeryKlas.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <string>
#include <vector>

#include "ztok/kernel/JadroBiezace.h"
#include "ztok/kernel/TOpisKlasy.h"
#include "ztok/platform/TSekcjaKrytyczna.h"
#include "ztok/repository/Zamykanie.h"

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
    std::vector<const TMigawkaOpisu*> migawki;
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

} // namespace

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
    if (std::find(klasy.begin(), klasy.end(), klasa) == klasy.end())
        klasy.push_back(klasa);
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
    r.migawki.push_back(migawka);
    klasa->stan->migawka.store(migawka, std::memory_order_release);
}

namespace {

void ZapomnijMigawkiKlas(TRejestr& r) noexcept {
    for (const auto& [nazwa, wpis] : r.nazwy)
        for (const TKlasa* klasa : wpis.zaladowane)
            klasa->stan->migawka.store(nullptr, std::memory_order_release);
}

} // namespace

void ZwolnijMigawki() noexcept {
    TRejestr& r = Rejestr();
    const TBlokada blokada(r.sekcja);
    ZapomnijMigawkiKlas(r);
    for (const TMigawkaOpisu* migawka : r.migawki) {
        delete[] migawka->pola;
        delete[] migawka->nazwy;
        delete migawka;
    }
    r.migawki.clear();
    r.migawki.shrink_to_fit();
}

void ZwolnijRejestrKlas() noexcept {
    if (rejestr == nullptr)
        return;
    ZwolnijMigawki();
    delete rejestr;
    rejestr = nullptr;
}

TModul::~TModul() {
    if (this == &ModulBiezacy()) // the library itself goes, and everything with it
        return;
    // First, while the objects that end here still have their classes.
    WyrejestrujModul(*this);
    WyrejestrujKontrolowaneModulu(*this);
    if (rejestr == nullptr)
        return;
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
