#include "ztok/platform/KodowaniaWektory.h"

#if ZTOK_WEKTORY_UTF8

#include <algorithm>
#include <bit>
#include <cstdint>

#include <immintrin.h>

#define ZTOK_AVX512 [[gnu::target("avx512f,avx512bw,avx512vl,avx512vbmi2,bmi2,popcnt")]]

namespace ztok::wektory {

namespace {

// The lowest n bits, n at most 32.
ZTOK_AVX512 [[nodiscard]] inline std::uint32_t Najnizsze(std::size_t n) noexcept {
    return _bzhi_u32(0xFFFFFFFFU, static_cast<unsigned>(n));
}

ZTOK_AVX512 [[nodiscard]] inline std::uint64_t Najnizsze64(std::size_t n) noexcept {
    return _bzhi_u64(~std::uint64_t{0}, static_cast<std::uint64_t>(n));
}

} // namespace

// Every unit becomes the two bytes of its sequence in one lane (an ASCII unit the one byte), and the bytes that count
// are pushed together.
ZTOK_AVX512 TPostep Koduj(const char16_t* od, std::size_t ile, char* cel) noexcept {
    TPostep postep{0, 0};
    while (postep.przeczytano < ile) {
        std::size_t n = std::min<std::size_t>(ile - postep.przeczytano, 32);
        const std::uint32_t maska = Najnizsze(n);
        const __m512i znaki = _mm512_maskz_loadu_epi16(maska, od + postep.przeczytano);
        const std::uint32_t nieAscii = _mm512_cmpge_epu16_mask(znaki, _mm512_set1_epi16(0x80));
        if (nieAscii == 0) {
            _mm256_mask_storeu_epi8(cel + postep.zapisano, maska, _mm512_maskz_cvtepi16_epi8(maska, znaki));
            postep.przeczytano += n;
            postep.zapisano += n;
            continue;
        }
        const std::uint32_t dluzsze = _mm512_cmpge_epu16_mask(znaki, _mm512_set1_epi16(0x800));
        if (dluzsze != 0) {
            n = static_cast<std::size_t>(std::countr_zero(dluzsze));
        }
        const __m512i pierwsze = _mm512_srli_epi16(znaki, 6);
        const __m512i drugie = _mm512_slli_epi16(_mm512_and_si512(znaki, _mm512_set1_epi16(0x3F)), 8);
        const __m512i pary = _mm512_or_si512(_mm512_or_si512(pierwsze, drugie), _mm512_set1_epi16(-0x7F40)); // 80C0
        const __m512i bajty = _mm512_mask_blend_epi16(nieAscii, znaki, pary);
        // The high byte of a lane counts when it is not 0: the second byte of a sequence never is.
        const std::uint64_t licza = (_mm512_test_epi8_mask(bajty, bajty) | 0x5555555555555555U) & Najnizsze64(2 * n);
        const auto zapisano = static_cast<std::size_t>(_mm_popcnt_u64(licza));
        _mm512_mask_storeu_epi8(cel + postep.zapisano, Najnizsze64(zapisano), _mm512_maskz_compress_epi8(licza, bajty));
        postep.przeczytano += n;
        postep.zapisano += zapisano;
        if (dluzsze != 0)
            break;
    }
    return postep;
}

// Every byte becomes the unit that a sequence at this place would give, and the places where one starts are pushed
// together.
ZTOK_AVX512 TPostep Dekoduj(const char* od, std::size_t ile, char16_t* cel) noexcept {
    TPostep postep{0, 0};
    while (postep.przeczytano < ile) {
        const char* skad = od + postep.przeczytano;
        std::size_t n = std::min<std::size_t>(ile - postep.przeczytano, 32);
        std::uint32_t maska = Najnizsze(n);
        const __m256i bajty = _mm256_maskz_loadu_epi8(maska, skad);
        const __m512i pierwsze = _mm512_cvtepu8_epi16(bajty);
        const std::uint32_t nieAscii = _mm256_movepi8_mask(bajty);
        if (nieAscii == 0) {
            _mm512_mask_storeu_epi16(cel + postep.zapisano, maska, pierwsze);
            postep.przeczytano += n;
            postep.zapisano += n;
            continue;
        }
        const __m256i odC2 = _mm256_sub_epi8(bajty, _mm256_set1_epi8(-0x3E));
        const std::uint32_t dwubajtowe = _mm256_cmple_epu8_mask(odC2, _mm256_set1_epi8(0xDF - 0xC2));
        const std::uint32_t dalsze = _mm256_mask_cmplt_epu8_mask(nieAscii, bajty, _mm256_set1_epi8(-0x40)); // C0
        const std::uint32_t obce = ((nieAscii & ~dwubajtowe & ~dalsze) | (dalsze ^ dwubajtowe << 1U)) & maska;
        if (obce != 0)
            n = static_cast<std::size_t>(std::countr_zero(obce));
        // A sequence that the block cuts is left for the next one.
        if (n != 0 && (dwubajtowe >> (n - 1) & 1U) != 0)
            --n;
        if (n == 0)
            break;
        maska = Najnizsze(n);
        const __m512i drugie = _mm512_cvtepu8_epi16(_mm256_maskz_loadu_epi8(maska >> 1U, skad + 1));
        const __m512i pary = _mm512_or_si512(_mm512_slli_epi16(_mm512_and_si512(pierwsze, _mm512_set1_epi16(0x1F)), 6),
                                             _mm512_and_si512(drugie, _mm512_set1_epi16(0x3F)));
        const std::uint32_t poczatki = maska & ~dalsze;
        const auto zapisano = static_cast<std::size_t>(_mm_popcnt_u32(poczatki));
        _mm512_mask_storeu_epi16(
            cel + postep.zapisano, Najnizsze(zapisano),
            _mm512_maskz_compress_epi16(poczatki, _mm512_mask_blend_epi16(dwubajtowe, pierwsze, pary)));
        postep.przeczytano += n;
        postep.zapisano += zapisano;
        if (obce != 0)
            break;
    }
    return postep;
}

} // namespace ztok::wektory

#endif
