// The kernel in use, without a call: for the inner loops of the library itself.
#pragma once

#include "ztok/kernel/TJadroKlas.h"

namespace ztok {

// The library's own kernel; null before its first use and after ZamknijBiblioteke.
extern TJadroKlas* wlasneJadro;

// The kernel in use, or null when there is none yet.
[[nodiscard]] inline TJadroKlas* JadroIstniejace() noexcept { return UserKernel != nullptr ? UserKernel : wlasneJadro; }

// The kernel in use, as JadroKlas gives it.
[[nodiscard]] inline TJadroKlas& JadroBiezace() {
    TJadroKlas* jadro = JadroIstniejace();
    return jadro != nullptr ? *jadro : *JadroKlas();
}

// The end of the library: frees the lock under which objects on the stack make theirs.
void ZwolnijSekcjePrzygotowan() noexcept;

} // namespace ztok
