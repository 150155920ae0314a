#include "ztok/util/Zagniezdzenie.h"

#include <initializer_list>

#include "ztok/platform/PulaWnetrze.h"

namespace ztok {

namespace {

ZTOK_TLS_BLISKI constinit thread_local TLicznikZagniezdzenia* ostatniPilnowany = nullptr; // of this thread

} // namespace

constinit std::atomic<int> TLicznikZagniezdzenia::czynne{0};

void TLicznikZagniezdzenia::Wlacz() noexcept {
    poprzedni_ = ostatniPilnowany;
    ostatniPilnowany = this;
    czynne.fetch_add(1, std::memory_order_relaxed);
}

void TLicznikZagniezdzenia::Wylacz() noexcept {
    TLicznikZagniezdzenia** wskaznik = &ostatniPilnowany;
    while (*wskaznik != this && *wskaznik != nullptr)
        wskaznik = &(*wskaznik)->poprzedni_;
    if (*wskaznik == this)
        *wskaznik = poprzedni_;
    czynne.fetch_sub(1, std::memory_order_relaxed);
}

bool TLicznikZagniezdzenia::JestWUzyciu(const TObiektOgolny& obiekt, TPytanie pytanie) noexcept {
    for (const TLicznikZagniezdzenia* licznik = ostatniPilnowany; licznik != nullptr; licznik = licznik->poprzedni_)
        for (const TPoziom* poziom = licznik->ostatni_; poziom != nullptr; poziom = poziom->poprzedni_)
            for (const TObiektOgolny* wUzyciu : {poziom->obiekt_, poziom->drugi_})
                if (wUzyciu != nullptr && pytanie(*wUzyciu, poziom == licznik->ostatni_, obiekt))
                    return true;
    return false;
}

} // namespace ztok
