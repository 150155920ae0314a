// Mechanism of the pool: what its common part and the systems' parts share, and the short way to a block for the
// library's inner loops. For sources of the library only.
//
// A thread keeps its free blocks in one list a size, to which it alone has access. A list that has grown to a magazine
// (TRozmiar::magazynek blocks) is set aside as the spare one, and the former spare goes to the common store, where any
// thread gets it. So a thread that only frees feeds one that only allocates, and the lock is taken once a magazine.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "ztok/platform/Pula.h"

// Under these sanitizers every block comes from malloc, so that they see every object.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define ZTOK_BEZ_PULI 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
#define ZTOK_BEZ_PULI 1
#endif
#endif
#ifndef ZTOK_BEZ_PULI
#define ZTOK_BEZ_PULI 0
#endif

// A variable of the thread at a fixed distance from the thread's own data: reaching it takes no call. A few words in
// all fit the room that the loader keeps for libraries loaded later.
#if defined(__ELF__)
#define ZTOK_TLS_BLISKI [[gnu::tls_model("initial-exec")]]
#else
#define ZTOK_TLS_BLISKI
#endif

namespace ztok::pula {

inline constexpr std::size_t Ziarno = 16;
inline constexpr std::size_t IleRozmiarow = NajwiekszyBlokPuli / Ziarno;
// Blocks are cut from slabs of this size, aligned to it: a block's address tells its slab.
inline constexpr std::size_t RozmiarPlyty = 0x10000;

struct TWolny {
    TWolny* nastepny;
    // In the first block of a magazine in the common store: the next magazine. In its second block: the number of
    // blocks (a magazine of one block has no second).
    TWolny* paczka;
};
static_assert(sizeof(TWolny) <= Ziarno);

struct TPlyta;

// Only the owning thread writes; the atomics let PulaZajete read. Relaxed loads and stores cost nothing.
struct TRozmiar {
    TWolny* wolne;
    std::atomic<std::uint32_t> ile;  // blocks in `wolne`
    std::uint32_t magazynek;         // blocks of a full magazine
    std::atomic<std::uint8_t*> gora; // first block of the current slab that was never given out
    std::uint8_t* koniec;
    std::atomic<TWolny*> zapas; // a full magazine or null
    TPlyta* plyta;              // the current slab, may be null
};

struct TPulaWatku {
    TRozmiar rozmiary[IleRozmiarow];
    TPulaWatku* nastepna;
    TPulaWatku* poprzednia;
};

// The common part, for what the lists at hand cannot do. `pula` is the calling thread's, null if it has none.
[[nodiscard]] void* PrzydzielInaczej(TPulaWatku* pula, std::size_t rozmiar);
void ZwolnijInaczej(TPulaWatku* pula, void* blok, std::size_t rozmiar) noexcept;
// The end of a thread: its blocks go to the common store.
void ZakonczWatek(TPulaWatku* pula) noexcept;

// The systems' part.
// The calling thread's pool; null before its first block, and after its end.
#if defined(__ELF__)
ZTOK_TLS_BLISKI extern constinit thread_local TPulaWatku* pulaWatku;
[[nodiscard]] inline TPulaWatku* PulaTegoWatku() noexcept { return pulaWatku; }
#else
[[nodiscard]] TPulaWatku* PulaTegoWatku() noexcept;
#endif
// Keeps the pool for this thread, whose end will call ZakonczWatek with it. Called under the pool's lock.
[[nodiscard]] bool UstawPuleWatku(TPulaWatku* pula) noexcept;
// Forgets the pools of all threads, without ZakonczWatek.
void ZwolnijMiejscaWatkow() noexcept;
// The pool's lock; it needs no initialisation and has no end.
void Zablokuj() noexcept;
[[nodiscard]] bool SprobujZablokowac() noexcept;
void Odblokuj() noexcept;
// Memory of one slab, aligned to its size; null when there is none.
[[nodiscard]] void* PrzydzielPlyte() noexcept;
void ZwolnijPlyte(void* plyta) noexcept;

inline void* Przydziel(TPulaWatku* pula, std::size_t rozmiar) {
    const std::size_t nr = (rozmiar - 1) / Ziarno;
    if (!ZTOK_BEZ_PULI && nr < IleRozmiarow && pula != nullptr) [[likely]] {
        TRozmiar& r = pula->rozmiary[nr];
        if (TWolny* blok = r.wolne; blok != nullptr) [[likely]] {
            r.wolne = blok->nastepny;
            r.ile.store(r.ile.load(std::memory_order_relaxed) - 1, std::memory_order_relaxed);
            return blok;
        }
        if (std::uint8_t* gora = r.gora.load(std::memory_order_relaxed); gora != r.koniec) {
            r.gora.store(gora + (nr + 1) * Ziarno, std::memory_order_relaxed);
            return gora;
        }
    }
    return PrzydzielInaczej(pula, rozmiar);
}

inline void Zwolnij(TPulaWatku* pula, void* blok, std::size_t rozmiar) noexcept {
    const std::size_t nr = (rozmiar - 1) / Ziarno;
    if (!ZTOK_BEZ_PULI && nr < IleRozmiarow && pula != nullptr) [[likely]] {
        TRozmiar& r = pula->rozmiary[nr];
        if (const std::uint32_t ile = r.ile.load(std::memory_order_relaxed); ile < r.magazynek) [[likely]] {
            auto* wolny = static_cast<TWolny*>(blok);
            wolny->nastepny = r.wolne;
            r.wolne = wolny;
            r.ile.store(ile + 1, std::memory_order_relaxed);
            return;
        }
    }
    ZwolnijInaczej(pula, blok, rozmiar);
}

// PulaPrzydziel and PulaZwolnij, inline.
[[nodiscard]] inline void* Przydziel(std::size_t rozmiar) { return Przydziel(PulaTegoWatku(), rozmiar); }
inline void Zwolnij(void* blok, std::size_t rozmiar) noexcept { Zwolnij(PulaTegoWatku(), blok, rozmiar); }

} // namespace ztok::pula
