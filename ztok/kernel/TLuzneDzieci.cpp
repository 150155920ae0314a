#include "ztok/kernel/TLuzneDzieci.h"

#include <atomic>
#include <functional>
#include <set>
#include <utility>

#include "ztok/kernel/TObiektBazowy.h"
#include "ztok/platform/PierwszeUzycie.h"
#include "ztok/platform/TSekcjaKrytyczna.h"

namespace ztok {

namespace {

struct TSpis {
    // A parent's children stand together.
    struct TPorzadek {
        using TPara = std::pair<const TObiektBazowy*, TObiektBazowy*>;
        bool operator()(const TPara& a, const TPara& b) const noexcept {
            return a.first == b.first ? std::less<>()(a.second, b.second) : std::less<>()(a.first, b.first);
        }
    };
    TSekcjaKrytyczna sekcja;
    std::set<TPorzadek::TPara, TPorzadek> pary; // parent, child
};
constinit std::atomic<TSpis*> spis{nullptr};

} // namespace

void TLuzneDzieci::Dopisz(TObiektBazowy& dziecko, TObiektBazowy& rodzic) {
    TSpis& s = PrzyPierwszymUzyciu(spis);
    const TBlokada blokada(s.sekcja);
    s.pary.emplace(&rodzic, &dziecko);
    dziecko.luzny_ = true;
    rodzic.maLuzne_.store(true, std::memory_order_relaxed);
}

void TLuzneDzieci::Wypisz(TObiektBazowy& dziecko, const TObiektBazowy& rodzic) noexcept {
    dziecko.luzny_ = false;
    if (TSpis* s = spis.load(std::memory_order_acquire); s != nullptr) {
        const TBlokada blokada(s->sekcja);
        s->pary.erase({&rodzic, &dziecko});
    }
}

void TLuzneDzieci::Osieroc(TObiektBazowy& rodzic) noexcept {
    TSpis* s = spis.load(std::memory_order_acquire);
    if (s == nullptr)
        return;
    const TBlokada blokada(s->sekcja);
    auto para = s->pary.lower_bound({&rodzic, nullptr});
    while (para != s->pary.end() && para->first == &rodzic) {
        para->second->luzny_ = false;
        para->second->FRodzic = nullptr;
        para = s->pary.erase(para);
    }
    rodzic.maLuzne_.store(false, std::memory_order_relaxed);
}

void TLuzneDzieci::Zwolnij() noexcept { delete spis.exchange(nullptr, std::memory_order_acq_rel); }

} // namespace ztok
