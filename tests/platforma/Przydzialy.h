// Allocations of the whole process, counted and made to fail: those of malloc, through which everything but the pool
// goes, and each block of the pool, which hears of it through its supervision. On every target, under sanitizers too.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "ztok/platform/ZatrutaPamiec.h"

namespace przydzialy {

// Counts from here on what this thread allocates.
void Zacznij();
// Of the counting that ends: allocations, the most bytes held at one time beyond the start, and the largest allocation.
struct TWynik {
    std::int64_t ile;
    std::int64_t zPuli; // how many of them were blocks of the pool
    std::int64_t szczyt;
    std::int64_t najwiekszy;
    std::int64_t zostalo; // bytes still held
    bool znaleziony;      // a block that was freed still held the text looked for
};
TWynik Zakoncz();
// The allocation of that number (from 0), or every one from it on, fails until Zakoncz.
void Psuj(std::int64_t ktory, bool wszystkieOdTad);
// Looks for the text in every block of malloc that is freed until Zakoncz.
void Szukaj(std::string_view tekst);

// For the systems' allocation functions of the tests: whether anything is counted now; whether this allocation is to
// fail; what a block that was taken, given back (negative) or is about to be freed means. They run before the address
// sanitizer is ready.
[[nodiscard]] ZTOK_BEZ_ASAN bool Liczy() noexcept;
[[nodiscard]] ZTOK_BEZ_ASAN bool Padnie(std::size_t rozmiar) noexcept;
ZTOK_BEZ_ASAN void Przybylo(std::int64_t bajty) noexcept;
ZTOK_BEZ_ASAN void Zwalniany(const void* blok, std::size_t rozmiar) noexcept;
// The systems' part: puts those functions in front of the system's, if they are not there yet.
void PrzejmijMalloc();

} // namespace przydzialy
