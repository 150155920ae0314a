#include <atomic>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include "ztok/platform/PulaWnetrze.h"

namespace ztok {

namespace pula {

namespace {

// A fibre slot is a thread slot with a callback at the end of the thread.
constinit std::atomic<DWORD> miejsce{FLS_OUT_OF_INDEXES};

SRWLOCK blokada = SRWLOCK_INIT;

// Freeing the slot calls back for every thread that has a pool; ZamknijPule frees those itself, and has the slot
// forgotten before.
void WINAPI KoniecWatku(void* pula) {
    if (pula != nullptr && miejsce.load(std::memory_order_acquire) != FLS_OUT_OF_INDEXES)
        ZakonczWatek(static_cast<TPulaWatku*>(pula));
}

// The slot's value, without the side effect that reading it has on the thread's last error.
TPulaWatku* Pula() noexcept {
    const DWORD numer = miejsce.load(std::memory_order_relaxed);
    if (numer == FLS_OUT_OF_INDEXES)
        return nullptr;
    const DWORD blad = GetLastError();
    auto* pula = static_cast<TPulaWatku*>(FlsGetValue(numer));
    SetLastError(blad);
    return pula;
}

} // namespace

TPulaWatku* PulaTegoWatku() noexcept { return Pula(); }

bool UstawPuleWatku(TPulaWatku* pula) noexcept {
    DWORD numer = miejsce.load(std::memory_order_relaxed);
    if (numer == FLS_OUT_OF_INDEXES) {
        numer = FlsAlloc(&KoniecWatku);
        if (numer == FLS_OUT_OF_INDEXES)
            return false;
        miejsce.store(numer, std::memory_order_release);
    }
    return FlsSetValue(numer, pula) != 0;
}

void ZwolnijMiejscaWatkow() noexcept {
    const DWORD numer = miejsce.exchange(FLS_OUT_OF_INDEXES, std::memory_order_acq_rel);
    if (numer != FLS_OUT_OF_INDEXES)
        FlsFree(numer);
}

void Zablokuj() noexcept { AcquireSRWLockExclusive(&blokada); }

bool SprobujZablokowac() noexcept { return TryAcquireSRWLockExclusive(&blokada) != 0; }

void Odblokuj() noexcept { ReleaseSRWLockExclusive(&blokada); }

// Reservations are aligned to 64 KiB.
void* PrzydzielPlyte() noexcept {
    return VirtualAlloc(nullptr, RozmiarPlyty, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
}

void ZwolnijPlyte(void* plyta) noexcept { VirtualFree(plyta, 0, MEM_RELEASE); }

} // namespace pula

} // namespace ztok
