// What a processor may have beyond the least that the library asks for. For the sources that choose a way by it, for
// tests and for measurements.
#pragma once

#include "ztok/platform/Eksport.h"

namespace ztok {

// Bits of a set.
enum ERozszerzenie : unsigned {
    rzClmul = 1, // PCLMULQDQ and SSE4.1
    rzBmi = 2,   // BMI1, on 64 bits
    rzWszystkie = rzClmul | rzBmi,
};

// Lets the library use these of the processor's extensions and no other; it begins with all. Returns those it uses now.
// The results are the same either way.
ZTOK_API unsigned UzywajRozszerzen(unsigned dozwolone) noexcept;

[[nodiscard]] bool UzywaRozszerzenia(ERozszerzenie rozszerzenie) noexcept;

} // namespace ztok
