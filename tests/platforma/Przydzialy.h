// Allocations of the whole process, counted and made to fail. On Linux the program's own allocation functions stand in
// front of the system's and of the library's pool; elsewhere, and under sanitizers, nothing is counted (Liczone is
// false).
#pragma once

#include <cstdint>
#include <string_view>

namespace przydzialy {

[[nodiscard]] bool Liczone();

// Counts from here on what this thread allocates.
void Zacznij();
// Of the counting that ends: allocations, the most bytes held at one time beyond the start, and the largest allocation.
struct TWynik {
    std::int64_t ile;
    std::int64_t szczyt;
    std::int64_t najwiekszy;
    std::int64_t zostalo; // bytes still held
    bool znaleziony;      // a block that was freed still held the text looked for
};
TWynik Zakoncz();
// The allocation of that number (from 0), or every one from it on, fails until Zakoncz.
void Psuj(std::int64_t ktory, bool wszystkieOdTad);
// Looks for the text in every block of the system that is freed until Zakoncz.
void Szukaj(std::string_view tekst);

} // namespace przydzialy
