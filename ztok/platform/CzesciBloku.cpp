#include "ztok/platform/CzesciBloku.h"

#include <cstdint>
#include <map>
#include <utility>

#include "ztok/platform/PulaWnetrze.h"

namespace ztok::pula {

constinit std::atomic<std::size_t> czesciWyniesione{0};

namespace {

struct TBlokCzesci {
    void* blok; // null: still in use
    std::size_t rozmiar;
};
using TCzesci = std::map<std::uintptr_t, TBlokCzesci>; // by the part's address

// Under the pool's lock. On the heap while there is a part: a static one would have an end.
constinit TCzesci* czesci = nullptr;

struct TBlokadaCzesci {
    TBlokadaCzesci() noexcept { Zablokuj(); }
    TBlokadaCzesci(const TBlokadaCzesci&) = delete;
    TBlokadaCzesci& operator=(const TBlokadaCzesci&) = delete;
    ~TBlokadaCzesci() { Odblokuj(); }
};

std::uintptr_t Adres(const void* wskaznik) noexcept { return reinterpret_cast<std::uintptr_t>(wskaznik); }

bool MaCzesci(const void* blok, std::size_t rozmiar) noexcept {
    const auto pierwsza = czesci->lower_bound(Adres(blok));
    return pierwsza != czesci->end() && pierwsza->first < Adres(blok) + rozmiar;
}

} // namespace

void WyniesCzesc(void* czesc) {
    const TBlokadaCzesci blokada;
    if (czesci == nullptr)
        czesci = new TCzesci;
    czesci->try_emplace(Adres(czesc), TBlokCzesci{nullptr, 0});
    czesciWyniesione.store(czesci->size(), std::memory_order_relaxed);
}

bool OddajCzesc(void* czesc) noexcept {
    TBlokCzesci caly{nullptr, 0};
    {
        const TBlokadaCzesci blokada;
        if (czesci == nullptr)
            return false;
        const auto gdzie = czesci->find(Adres(czesc));
        if (gdzie == czesci->end())
            return false;
        caly = gdzie->second;
        czesci->erase(gdzie);
        if (caly.blok != nullptr && MaCzesci(caly.blok, caly.rozmiar))
            caly.blok = nullptr;
        czesciWyniesione.store(czesci->size(), std::memory_order_relaxed);
        if (czesci->empty())
            delete std::exchange(czesci, nullptr);
    }
    if (caly.blok != nullptr)
        Zwolnij(caly.blok, caly.rozmiar);
    return true;
}

void OddajBlokZCzesciami(void* blok, std::size_t rozmiar) noexcept {
    {
        const TBlokadaCzesci blokada;
        if (czesci != nullptr && MaCzesci(blok, rozmiar)) {
            for (auto gdzie = czesci->lower_bound(Adres(blok));
                 gdzie != czesci->end() && gdzie->first < Adres(blok) + rozmiar; ++gdzie)
                gdzie->second = {blok, rozmiar};
            return;
        }
    }
    Zwolnij(blok, rozmiar);
}

} // namespace ztok::pula
