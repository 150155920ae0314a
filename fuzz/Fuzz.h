// What the fuzz targets share. A target is a sub-folder with a source that defines LLVMFuzzerTestOneInput, and its
// seeds in `ziarna`. Under libFuzzer it searches; with Odtwarzanie.cpp it replays files as a test.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dane, std::size_t ile);

namespace fuzz {

// A property that must hold for every input.
inline void Wymagaj(bool warunek, const char* co) {
    if (!warunek) {
        std::fprintf(stderr, "does not hold: %s\n", co);
        std::abort();
    }
}

} // namespace fuzz
