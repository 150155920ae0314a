// Class numbers: one 32-bit number a class name, by which data refer to a class whatever module holds it.
#pragma once

#include <cstdint>

#include "ztok/platform/TKlasa.h"

namespace ztok {

struct TMigawkaOpisu;

// The number of the class's name; 0 for null. The library remembers the class until its module is unloaded.
// Thread-safe.
ZTOK_API std::uint32_t NumerKlasy(const TKlasa* klasa);
// The loaded class of that number; null when no module holds one. Thread-safe.
[[nodiscard]] ZTOK_API const TKlasa* KlasaONumerze(std::uint32_t numer) noexcept;

// Keeps a snapshot for as long as the library is loaded and makes it the class's current one.
void ZachowajMigawke(const TKlasa* klasa, const TMigawkaOpisu* migawka);
// Forgets every snapshot and frees them; no other thread may use the model then.
void ZwolnijMigawki() noexcept;
// Frees the whole registry, snapshots included: for the unloading of the library.
void ZwolnijRejestrKlas() noexcept;

} // namespace ztok
