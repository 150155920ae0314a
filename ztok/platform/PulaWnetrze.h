// Mechanism of the pool: what its common part and the systems' parts share, and the short way to a block for the
// library's inner loops. For sources of the library only.
//
// A thread keeps its free blocks in one list a size, to which it alone has access. A list that has grown to a magazine
// (TRozmiar::magazynek blocks) is set aside as the spare one, and the former spare goes to the common store, where any
// thread gets it. So a thread that only frees feeds one that only allocates, and the lock is taken once a magazine.
//
// Under the address sanitizer a block is poisoned while nobody has it, and so is what a block has beyond the bytes that
// were asked for.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "ztok/platform/Pula.h"
#include "ztok/platform/ZatrutaPamiec.h"

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

// A free block. Its first word stays as whoever freed it left it: what an object leaves there tells that it is dead.
class TWolny {
  public:
    [[nodiscard]] ZTOK_BEZ_ASAN TWolny* Nastepny() const noexcept { return nastepny_; }
    ZTOK_BEZ_ASAN void UstawNastepny(TWolny* nastepny) noexcept { nastepny_ = nastepny; }
    // In the first block of a magazine in the common store: the next magazine. In its second block: the number of
    // blocks (a magazine of one block has no second). The third word, which only the smallest blocks do not have.
    [[nodiscard]] ZTOK_BEZ_ASAN TWolny* Paczka(std::size_t nrRozmiaru) noexcept { return *MiejscePaczki(nrRozmiaru); }
    ZTOK_BEZ_ASAN void UstawPaczke(std::size_t nrRozmiaru, TWolny* paczka) noexcept {
        *MiejscePaczki(nrRozmiaru) = paczka;
    }

  private:
    [[nodiscard]] TWolny** MiejscePaczki(std::size_t nrRozmiaru) noexcept {
        const bool miesciSie = (nrRozmiaru + 1) * Ziarno >= sizeof(TWolny) + sizeof(TWolny*);
        return miesciSie ? reinterpret_cast<TWolny**>(this + 1) : &pierwsze_;
    }

    TWolny* pierwsze_;
    TWolny* nastepny_;
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

// Hears of every pooled block that a thread takes and frees, so that measured and failing memory is the memory of the
// pool as it is. Larger blocks are malloc's.
struct TNadzorPuli {
    bool (*przydziel)(std::size_t rozmiar) noexcept; // false: std::bad_alloc
    void (*zwolnij)(std::size_t rozmiar) noexcept;
};
// The calling thread's blocks, until it is called with null; the thread does not end before. Raises std::bad_alloc.
ZTOK_API void NadzorujPule(const TNadzorPuli* nadzor);

// Whether every block comes from malloc, with a sanitizer's red zones and quarantine: under the address sanitizer, when
// the environment says ZTOK_PULA=malloc.
[[nodiscard]] ZTOK_API bool BezPuli() noexcept;

struct TPulaWatku {
    TRozmiar rozmiary[IleRozmiarow];
    TPulaWatku* nastepna;
    TPulaWatku* poprzednia;
    // Set in a front that has no blocks, so that every call goes the long way: who hears of it, and whose blocks it
    // gives.
    const TNadzorPuli* nadzor;
    TPulaWatku* zaplecze;
};

// The common part, for what the lists at hand cannot do. `pula` is the calling thread's, null if it has none.
[[nodiscard]] void* PrzydzielInaczej(TPulaWatku* pula, std::size_t rozmiar);
void ZwolnijInaczej(TPulaWatku* pula, void* blok, std::size_t rozmiar) noexcept;
// A block above NajwiekszyBlokPuli made longer or shorter, but not as short as that; raises std::bad_alloc, and the
// block is as it was.
[[nodiscard]] void* ZmienRozmiarDuzego(void* blok, std::size_t rozmiar);
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
    if (nr < IleRozmiarow && pula != nullptr) [[likely]] {
        TRozmiar& r = pula->rozmiary[nr];
        if (TWolny* blok = r.wolne; blok != nullptr) [[likely]] {
            r.wolne = blok->Nastepny();
            r.ile.store(r.ile.load(std::memory_order_relaxed) - 1, std::memory_order_relaxed);
            Odtruj(blok, rozmiar);
            return blok;
        }
        if (std::uint8_t* gora = r.gora.load(std::memory_order_relaxed); gora != r.koniec) {
            r.gora.store(gora + (nr + 1) * Ziarno, std::memory_order_relaxed);
            Odtruj(gora, rozmiar);
            return gora;
        }
    }
    return PrzydzielInaczej(pula, rozmiar);
}

inline void Zwolnij(TPulaWatku* pula, void* blok, std::size_t rozmiar) noexcept {
    const std::size_t nr = (rozmiar - 1) / Ziarno;
    if (nr < IleRozmiarow && pula != nullptr) [[likely]] {
        TRozmiar& r = pula->rozmiary[nr];
        if (const std::uint32_t ile = r.ile.load(std::memory_order_relaxed); ile < r.magazynek) [[likely]] {
            auto* wolny = static_cast<TWolny*>(blok);
            Zatruj(blok, (nr + 1) * Ziarno);
            wolny->UstawNastepny(r.wolne);
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
