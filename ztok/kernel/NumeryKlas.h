// Class numbers: one 32-bit number a class name, by which data refer to a class whatever module holds it.
#pragma once

#include <cstdint>

#include "ztok/platform/TKlasa.h"

namespace ztok {

struct TMigawkaOpisu;

// The number of the class's name; 0 for null. The library remembers the class until its module is unloaded. ZTException
// when another class of that name is in use: one whose base, size, rows or items differ, since descriptors and casts go
// by the name. Thread-safe.
ZTOK_API std::uint32_t NumerKlasy(const TKlasa* klasa);
// The loaded class of that number; null when no module holds one. Thread-safe.
[[nodiscard]] ZTOK_API const TKlasa* KlasaONumerze(std::uint32_t numer) noexcept;

// Makes a snapshot the class's current one, and keeps it until its kernel ends.
void ZachowajMigawke(const TKlasa* klasa, const TMigawkaOpisu* migawka);
// The class's snapshot of that kernel, which becomes its current one; null when there is none.
[[nodiscard]] const TMigawkaOpisu* PrzywrocMigawke(const TKlasa* klasa, std::uint64_t numerJadra) noexcept;
// A descriptor has changed: snapshots are made anew. Those there are stay, for walks that use them just now.
void UniewaznijMigawki() noexcept;
// Frees the snapshots of a kernel, or all; no other thread may use them then.
void ZwolnijMigawki(std::uint64_t numerJadra) noexcept;
void ZwolnijMigawki() noexcept;
// Frees the whole registry, snapshots included: for the unloading of the library.
void ZwolnijRejestrKlas() noexcept;

} // namespace ztok
