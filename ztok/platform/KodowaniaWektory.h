// Conversions of text by vector registers, where the processor has what that takes. For the sources of the conversions
// only; the switch is for tests and measurements too.
#pragma once

#include <atomic>
#include <cstddef>

#include "ztok/platform/Eksport.h"

#if defined(__x86_64__) && defined(__GNUC__)
#define ZTOK_WEKTORY 1
#else
#define ZTOK_WEKTORY 0
#endif

namespace ztok {

struct TTabelaStrony;

namespace wektory {

// Lets the conversions use the vector functions (the default where they can run) or keeps them from it. Returns whether
// they use them now. The results are the same either way.
ZTOK_API bool Wlacz(bool wektory) noexcept;

#if ZTOK_WEKTORY

// False while static objects of other modules are still made: the plain functions then do the work.
extern std::atomic<bool> wlaczone;

[[nodiscard]] inline bool Sa() noexcept { return wlaczone.load(std::memory_order_relaxed); }

// How far a conversion came.
struct TPostep {
    std::size_t przeczytano;
    std::size_t zapisano;
};

// Converts everything; returns the bytes written. Room as for KodujUtf8.
[[nodiscard]] std::size_t Koduj(const char16_t* od, std::size_t ile, char* cel) noexcept;
// Converts up to the first sequence that is ill-formed, cut by the end, or a surrogate's. Room as for DekodujUtf8.
[[nodiscard]] TPostep Dekoduj(const char* od, std::size_t ile, char16_t* cel) noexcept;

// As the functions of TabeleStron.h.
void NaBajty(const TTabelaStrony& tabela, const char16_t* od, std::size_t ile, char* cel) noexcept;
void ZBajtow(const TTabelaStrony& tabela, const char* od, std::size_t ile, char16_t* cel) noexcept;

#endif

} // namespace wektory

} // namespace ztok
