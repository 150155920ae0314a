// UTF-8 by vector registers, where the processor has what that takes. For the sources of the conversions only.
#pragma once

#include <cstddef>

#if defined(__x86_64__) && defined(__GNUC__)
#define ZTOK_WEKTORY_UTF8 1
#else
#define ZTOK_WEKTORY_UTF8 0
#endif

namespace ztok::wektory {

#if ZTOK_WEKTORY_UTF8

// How far a conversion came.
struct TPostep {
    std::size_t przeczytano;
    std::size_t zapisano;
};

// Whether this processor can run the functions below.
[[nodiscard]] inline bool Sa() noexcept {
    // NOLINTNEXTLINE(readability-implicit-bool-conversion): an int with some compilers, a bool with others
    return __builtin_cpu_supports("avx512vbmi2") != 0 && __builtin_cpu_supports("avx512bw") != 0 &&
           // NOLINTNEXTLINE(readability-implicit-bool-conversion)
           __builtin_cpu_supports("avx512vl") != 0 && __builtin_cpu_supports("bmi2") != 0;
}

// Convert up to the first character from U+0800 on, or the first ill-formed byte. Room as for KodujUtf8 and
// DekodujUtf8.
[[nodiscard]] TPostep Koduj(const char16_t* od, std::size_t ile, char* cel) noexcept;
[[nodiscard]] TPostep Dekoduj(const char* od, std::size_t ile, char16_t* cel) noexcept;

#endif

} // namespace ztok::wektory
