#include "ztok/util/CRCWektory.h"

#if ZTOK_WEKTORY_CRC

#include <immintrin.h>

// Sixteen bytes of the message are a polynomial; moved ahead by a distance of D bits it is the same modulo the CRC's
// polynomial as its two halves, each multiplied by the rest of a power of x ("Fast CRC Computation for Generic
// Polynomials Using PCLMULQDQ Instruction", Intel, 2009). So a register is folded into the bytes D bits further on.

#define ZTOK_CLMUL [[gnu::target("pclmul,sse4.1")]]

namespace ztok::wektory {

namespace {

// x^n modulo the polynomial, bits reversed, one place to the left: the product of reversed operands is one place short.
constexpr std::int64_t ResztaPotegi(unsigned n) noexcept {
    std::uint32_t reszta = 0x80000000U; // x^0
    for (; n > 0; --n)
        reszta = (reszta & 1U) != 0 ? (reszta >> 1U) ^ 0xEDB88320U : reszta >> 1U;
    return static_cast<std::int64_t>(reszta) << 1U;
}

// Factors of the two halves for a distance in bits: the low half is 64 bits further from the end.
template <unsigned D> struct TPrzesuniecie {
    static constexpr std::int64_t dolny = ResztaPotegi(D + 32);
    static constexpr std::int64_t gorny = ResztaPotegi(D - 32);
};

ZTOK_CLMUL inline __m128i Zloz(__m128i x, __m128i czynniki, __m128i dalsze) noexcept {
    const __m128i dolna = _mm_clmulepi64_si128(x, czynniki, 0x00);
    const __m128i gorna = _mm_clmulepi64_si128(x, czynniki, 0x11);
    return _mm_xor_si128(_mm_xor_si128(dolna, gorna), dalsze);
}

template <unsigned D> ZTOK_CLMUL inline __m128i Czynniki() noexcept {
    return _mm_set_epi64x(TPrzesuniecie<D>::gorny, TPrzesuniecie<D>::dolny);
}

ZTOK_CLMUL inline __m128i Wczytaj(const std::uint8_t* bajty) noexcept {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bajty));
}

} // namespace

// Four registers, since one multiplication waits several steps for the one before.
ZTOK_CLMUL TResztaCRC SkladajCRC(std::uint32_t crc, const std::uint8_t* bajty, std::size_t ile) noexcept {
    __m128i x0 = _mm_xor_si128(Wczytaj(bajty), _mm_cvtsi32_si128(static_cast<int>(crc)));
    __m128i x1 = Wczytaj(bajty + 16);
    __m128i x2 = Wczytaj(bajty + 32);
    __m128i x3 = Wczytaj(bajty + 48);
    std::size_t wzieto = 64;
    const __m128i czynniki = Czynniki<512>();
    for (; ile - wzieto >= 64; wzieto += 64) {
        x0 = Zloz(x0, czynniki, Wczytaj(bajty + wzieto));
        x1 = Zloz(x1, czynniki, Wczytaj(bajty + wzieto + 16));
        x2 = Zloz(x2, czynniki, Wczytaj(bajty + wzieto + 32));
        x3 = Zloz(x3, czynniki, Wczytaj(bajty + wzieto + 48));
    }
    const __m128i sasiednie = Czynniki<128>();
    x1 = Zloz(x0, sasiednie, x1);
    x2 = Zloz(x1, sasiednie, x2);
    x3 = Zloz(x2, sasiednie, x3);
    for (; ile - wzieto >= 16; wzieto += 16)
        x3 = Zloz(x3, sasiednie, Wczytaj(bajty + wzieto));
    TResztaCRC reszta;
    _mm_storeu_si128(reinterpret_cast<__m128i*>(reszta.bajty), x3);
    reszta.ileWzieto = wzieto;
    return reszta;
}

} // namespace ztok::wektory

#endif
