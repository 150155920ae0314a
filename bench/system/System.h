// What the benchmarks ask the system for.
#pragma once

#include <cstddef>

namespace pomiary {

// Time that passes for this process; what is taken from it is a difference.
[[nodiscard]] double Sekundy();
// The allocator, and what the times are.
[[nodiscard]] const char* OpisSystemu();
// Keeps freed memory in the process for the next tree, so that no library pays for fresh pages in every iteration.
void ZatrzymujPamiec();
// Resident memory that the function leaves behind it, when nothing was freed before; negative when that failed.
[[nodiscard]] double ZajetaPamiec(void (*funkcja)(void*), void* dane);
// Objects of the largest tree: two of ours and the structs must fit.
extern const std::size_t kNajwiekszeDrzewo;

} // namespace pomiary
