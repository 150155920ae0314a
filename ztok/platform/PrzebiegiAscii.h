// Runs of ASCII, a vector or a word at a time. For the sources of the conversions only.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace ztok {

// Copies the leading ASCII of 8-unit blocks as bytes. Stops at the first block with anything else, whose leading ASCII
// it copies too. Both ends need room for whole blocks only as far as `ile` reaches.
[[nodiscard]] inline std::size_t ZwezAscii(const char16_t* od, std::size_t ile, char* cel) noexcept {
    std::size_t i = 0;
#if defined(__SSE2__)
    const __m128i poza = _mm_set1_epi16(static_cast<short>(0xFF80));
    for (; ile - i >= 8; i += 8) {
        const __m128i blok = _mm_loadu_si128(reinterpret_cast<const __m128i*>(od + i));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(cel + i), _mm_packus_epi16(blok, blok));
        const __m128i ascii = _mm_cmpeq_epi16(_mm_and_si128(blok, poza), _mm_setzero_si128());
        const auto maska = static_cast<unsigned>(_mm_movemask_epi8(ascii));
        if (maska != 0xFFFFU)
            return i + static_cast<unsigned>(std::countr_one(maska)) / 2;
    }
#else
    for (; ile - i >= 4; i += 4) {
        std::uint64_t blok = 0;
        std::memcpy(&blok, od + i, sizeof blok);
        if ((blok & 0xFF80FF80FF80FF80U) != 0)
            return i;
        for (std::size_t k = 0; k < 4; ++k)
            cel[i + k] = static_cast<char>(od[i + k]);
    }
#endif
    return i;
}

// The reverse: copies the leading ASCII of 16- and 8-byte blocks as units, in the same way.
[[nodiscard]] inline std::size_t PoszerzAscii(const char* od, std::size_t ile, char16_t* cel) noexcept {
    std::size_t i = 0;
#if defined(__SSE2__)
    const __m128i zero = _mm_setzero_si128();
    for (; ile - i >= 16; i += 16) {
        const __m128i blok = _mm_loadu_si128(reinterpret_cast<const __m128i*>(od + i));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(cel + i), _mm_unpacklo_epi8(blok, zero));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(cel + i + 8), _mm_unpackhi_epi8(blok, zero));
        const auto maska = static_cast<unsigned>(_mm_movemask_epi8(blok));
        if (maska != 0)
            return i + static_cast<unsigned>(std::countr_zero(maska));
    }
    if (ile - i >= 8) {
        const __m128i blok = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(od + i));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(cel + i), _mm_unpacklo_epi8(blok, zero));
        const auto maska = static_cast<unsigned>(_mm_movemask_epi8(blok)) & 0xFFU;
        i += maska != 0 ? static_cast<unsigned>(std::countr_zero(maska)) : 8U;
    }
#else
    for (; ile - i >= 8; i += 8) {
        std::uint64_t blok = 0;
        std::memcpy(&blok, od + i, sizeof blok);
        if ((blok & 0x8080808080808080U) != 0)
            return i;
        for (std::size_t k = 0; k < 8; ++k)
            cel[i + k] = static_cast<char16_t>(od[i + k]);
    }
#endif
    return i;
}

// Length of the leading ASCII, rounded down to whole blocks where it does not end the text.
[[nodiscard]] inline std::size_t PominAscii(const char* od, std::size_t ile) noexcept {
    std::size_t i = 0;
#if defined(__SSE2__)
    for (; ile - i >= 16; i += 16) {
        const __m128i blok = _mm_loadu_si128(reinterpret_cast<const __m128i*>(od + i));
        const auto maska = static_cast<unsigned>(_mm_movemask_epi8(blok));
        if (maska != 0)
            return i + static_cast<unsigned>(std::countr_zero(maska));
    }
#endif
    for (; ile - i >= 8; i += 8) {
        std::uint64_t blok = 0;
        std::memcpy(&blok, od + i, sizeof blok);
        if ((blok & 0x8080808080808080U) != 0)
            break;
    }
    return i;
}

} // namespace ztok
