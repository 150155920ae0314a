// Memory of objects: pooled blocks by size.
#pragma once

#include <cstddef>
#include <cstdint>

#include "ztok/platform/Eksport.h"

namespace ztok {

// A block of `rozmiar` bytes (1 or more), aligned to 16 bytes up to NajwiekszyBlokPuli and as malloc aligns above.
// Blocks freed last are given out first; fresh ones have ascending addresses. Raises std::bad_alloc. Any thread.
[[nodiscard]] ZTOK_API void* PulaPrzydziel(std::size_t rozmiar);
// Frees a block; `rozmiar` is what it was asked for with. Any thread, not only the one that made it.
ZTOK_API void PulaZwolnij(void* blok, std::size_t rozmiar) noexcept;

// Larger blocks come from malloc.
inline constexpr std::size_t NajwiekszyBlokPuli = 512;

// Gives memory that holds no block in use back to the system. What other threads keep for themselves stays with them.
ZTOK_API void OddajPamiecPuli() noexcept;

// Blocks in use, of every size: exact while no other thread allocates or frees.
[[nodiscard]] ZTOK_API std::int64_t PulaZajete() noexcept;

// Calls `dzialanie` with the first word of every block of more than 16 bytes that was ever given out, in use or not.
// Other threads may go on allocating: what they do meanwhile may be seen or not.
void DlaBlokowPuli(void (*dzialanie)(void* kontekst, const void* pierwszeSlowo) noexcept, void* kontekst) noexcept;

// End of the library: frees the threads' lists and the thread slot, and all memory that holds no block in use. No other
// thread may be in the library any more. The pool starts anew if it is used again.
void ZamknijPule() noexcept;

} // namespace ztok
