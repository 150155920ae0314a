// Blocks that hold several objects, of which some outlive the rest. For sources of the library only.
#pragma once

#include <atomic>
#include <cstddef>

namespace ztok::pula {

// Such parts alive now. A thread that got one of them from another sees it counted.
extern constinit std::atomic<std::size_t> czesciWyniesione;

// From here on the part of a block is a block of its own for whoever frees it. Again is nothing. Raises std::bad_alloc.
void WyniesCzesc(void* czesc);
// Frees the part; false when the address is none. The whole block goes with its last part if it was given back before.
bool OddajCzesc(void* czesc) noexcept;
// Gives a block back: at once, or with the last of its parts.
void OddajBlokZCzesciami(void* blok, std::size_t rozmiar) noexcept;

} // namespace ztok::pula
