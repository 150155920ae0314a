#include "ztok/util/CRCWektory.h"

#if ZTOK_WEKTORY_CRC

#include <immintrin.h>

// Sixteen bytes of the message are a polynomial; moved ahead by a distance of D bits it is the same modulo the CRC's
// polynomial as its two halves, each multiplied by the rest of a power of x ("Fast CRC Computation for Generic
// Polynomials Using PCLMULQDQ Instruction", Intel, 2009). So a register is folded into the bytes D bits further on.

#define ZTOK_CLMUL [[gnu::target("pclmul,sse4.1")]]
#define ZTOK_CLMUL512 [[gnu::target("avx512f,avx512vl,vpclmulqdq,pclmul")]]

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

// Folds the 16-byte pieces left behind the register.
ZTOK_CLMUL inline TResztaCRC Dokoncz(__m128i x, const std::uint8_t* bajty, std::size_t wzieto,
                                     std::size_t ile) noexcept {
    const __m128i czynniki = Czynniki<128>();
    for (; ile - wzieto >= 16; wzieto += 16)
        x = Zloz(x, czynniki, Wczytaj(bajty + wzieto));
    TResztaCRC reszta;
    _mm_storeu_si128(reinterpret_cast<__m128i*>(reszta.bajty), x);
    reszta.ileWzieto = wzieto;
    return reszta;
}

ZTOK_CLMUL512 inline __m512i Zloz512(__m512i x, __m512i czynniki, __m512i dalsze) noexcept {
    const __m512i dolna = _mm512_clmulepi64_epi128(x, czynniki, 0x00);
    const __m512i gorna = _mm512_clmulepi64_epi128(x, czynniki, 0x11);
    constexpr int xorTrzech = 0x96;
    return _mm512_ternarylogic_epi64(dolna, gorna, dalsze, xorTrzech);
}

template <unsigned D> ZTOK_CLMUL512 inline __m512i Czynniki512() noexcept {
    using TD = TPrzesuniecie<D>;
    return _mm512_set_epi64(TD::gorny, TD::dolny, TD::gorny, TD::dolny, TD::gorny, TD::dolny, TD::gorny, TD::dolny);
}

} // namespace

// NOLINTBEGIN(readability-implicit-bool-conversion): an int with some compilers, a bool with others
bool MaCRC() noexcept { return __builtin_cpu_supports("pclmul") != 0 && __builtin_cpu_supports("sse4.1") != 0; }

bool MaCRC512() noexcept {
    return __builtin_cpu_supports("avx512f") != 0 && __builtin_cpu_supports("avx512vl") != 0 &&
           __builtin_cpu_supports("vpclmulqdq") != 0 && __builtin_cpu_supports("pclmul") != 0;
}
// NOLINTEND(readability-implicit-bool-conversion)

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
    return Dokoncz(x3, bajty, wzieto, ile);
}

// The same with registers of 64 bytes.
ZTOK_CLMUL512 TResztaCRC SkladajCRC512(std::uint32_t crc, const std::uint8_t* bajty, std::size_t ile) noexcept {
    __m512i x0 =
        _mm512_xor_si512(_mm512_loadu_si512(bajty), _mm512_zextsi128_si512(_mm_cvtsi32_si128(static_cast<int>(crc))));
    __m512i x1 = _mm512_loadu_si512(bajty + 64);
    __m512i x2 = _mm512_loadu_si512(bajty + 128);
    __m512i x3 = _mm512_loadu_si512(bajty + 192);
    std::size_t wzieto = 256;
    const __m512i czynniki = Czynniki512<2048>();
    for (; ile - wzieto >= 256; wzieto += 256) {
        x0 = Zloz512(x0, czynniki, _mm512_loadu_si512(bajty + wzieto));
        x1 = Zloz512(x1, czynniki, _mm512_loadu_si512(bajty + wzieto + 64));
        x2 = Zloz512(x2, czynniki, _mm512_loadu_si512(bajty + wzieto + 128));
        x3 = Zloz512(x3, czynniki, _mm512_loadu_si512(bajty + wzieto + 192));
    }
    const __m512i sasiednie = Czynniki512<512>();
    x1 = Zloz512(x0, sasiednie, x1);
    x2 = Zloz512(x1, sasiednie, x2);
    x3 = Zloz512(x2, sasiednie, x3);
    for (; ile - wzieto >= 64; wzieto += 64)
        x3 = Zloz512(x3, sasiednie, _mm512_loadu_si512(bajty + wzieto));
    std::uint8_t rejestr[64];
    _mm512_storeu_si512(rejestr, x3);
    const __m128i wRejestrze = Czynniki<128>();
    __m128i x = Wczytaj(rejestr);
    for (std::size_t i = 16; i < sizeof rejestr; i += 16)
        x = Zloz(x, wRejestrze, Wczytaj(rejestr + i));
    return Dokoncz(x, bajty, wzieto, ile);
}

} // namespace ztok::wektory

#endif
