// Limits of a reader: what a hostile stream may cost.
#pragma once

#include <cstdint>

#include "ztok/util/Zagniezdzenie.h"

namespace ztok {

// Every limit can be raised by the caller, before reading.
struct TLimityOdczytu {
    int zaglebienie = kZaglebienieDomyslne;         // nesting of objects and lists: stack overflow
    std::int64_t bajtyTekstu = 256LL * 1024 * 1024; // bytes of one text: one length that takes all memory
    std::int64_t bajtyNazwy = 64LL * 1024;          // bytes of one name or number of the text form: they are read whole
    std::int64_t pamiec = sizeof(void*) == 4 ? 512LL * 1024 * 1024 // memory in all, counted roughly: many small objects
                                             : 4096LL * 1024 * 1024; // made of few bytes each
};

// What the caller of a root read may choose.
struct TOpcjeOdczytu {
    bool odczytANSI = false;         // strings were written in Windows-1250
    bool bladNieznanejKlasy = false; // an unknown class name in a collection is an error; else the entry is passed over
    TLimityOdczytu limity;
};

} // namespace ztok
