#include "ztok/platform/KodowaniaWektory.h"

#if ZTOK_WEKTORY

#include <algorithm>
#include <bit>
#include <cstdint>

#if defined(__clang__)
#include <immintrin.h>
#else
// This compiler's own header starts from undefined values by intent, and it warns of them.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#include <immintrin.h>
#pragma GCC diagnostic pop
#endif

#include "ztok/platform/TabeleStron.h"

#define ZTOK_AVX512 [[gnu::target("avx512f,avx512bw,avx512vl,avx512vbmi,avx512vbmi2,bmi2,popcnt")]]

namespace ztok::wektory {

namespace {

[[nodiscard]] bool ProcesorMa() noexcept {
    __builtin_cpu_init();
    // NOLINTBEGIN(readability-implicit-bool-conversion): an int with some compilers, a bool with others
    return __builtin_cpu_supports("avx512vbmi2") != 0 && __builtin_cpu_supports("avx512vbmi") != 0 &&
           __builtin_cpu_supports("avx512bw") != 0 && __builtin_cpu_supports("avx512vl") != 0 &&
           __builtin_cpu_supports("bmi2") != 0;
    // NOLINTEND(readability-implicit-bool-conversion)
}

// The lowest n bits, n at most 32.
ZTOK_AVX512 [[nodiscard]] inline std::uint32_t Najnizsze(std::size_t n) noexcept {
    return _bzhi_u32(0xFFFFFFFFU, static_cast<unsigned>(n));
}

// The same, n at most 64.
ZTOK_AVX512 [[nodiscard]] inline std::uint64_t Najnizsze64(std::size_t n) noexcept {
    return _bzhi_u64(~std::uint64_t{0}, static_cast<std::uint64_t>(n));
}

// What is left of a block of at most `blok` that begins `dalej` further on.
[[nodiscard]] inline std::size_t Zostaje(std::size_t zostalo, std::size_t dalej, std::size_t blok) noexcept {
    return zostalo > dalej ? std::min(zostalo - dalej, blok) : 0;
}

// Up to 16 units of any kind: every unit becomes the four bytes of its code point's sequence in one lane, less those
// that a shorter one lacks; the second half of a pair becomes none.
ZTOK_AVX512 [[nodiscard]] TPostep Koduj16(const char16_t* od, std::size_t zostalo, char* cel) noexcept {
    std::size_t n = std::min<std::size_t>(zostalo, 16);
    const auto zywe = static_cast<__mmask16>(Najnizsze(n));
    const __m512i z = _mm512_cvtepu16_epi32(_mm256_maskz_loadu_epi16(zywe, od));
    const __m512i nastepny = _mm512_cvtepu16_epi32(
        _mm256_maskz_loadu_epi16(static_cast<__mmask16>(Najnizsze(Zostaje(zostalo, 1, 16))), od + 1));
    const __m512i rodzaj = _mm512_set1_epi32(0xFC00);
    const __mmask16 wysokie = _mm512_cmpeq_epi32_mask(_mm512_and_si512(z, rodzaj), _mm512_set1_epi32(0xD800));
    const __mmask16 pary =
        _mm512_mask_cmpeq_epi32_mask(wysokie, _mm512_and_si512(nastepny, rodzaj), _mm512_set1_epi32(0xDC00));
    const __m512i szesc = _mm512_set1_epi32(0x3F);
    const __m512i dalszy = _mm512_set1_epi32(0x80);
    const __m512i ostatni = _mm512_or_si512(_mm512_and_si512(z, szesc), dalszy);
    const __m512i przedostatni = _mm512_or_si512(_mm512_and_si512(_mm512_srli_epi32(z, 6), szesc), dalszy);
    const __m512i dwa = _mm512_or_si512(_mm512_or_si512(_mm512_srli_epi32(z, 6), _mm512_set1_epi32(0xC0)),
                                        _mm512_slli_epi32(ostatni, 8));
    const __m512i trzy =
        _mm512_or_si512(_mm512_or_si512(_mm512_srli_epi32(z, 12), _mm512_set1_epi32(0xE0)),
                        _mm512_or_si512(_mm512_slli_epi32(przedostatni, 8), _mm512_slli_epi32(ostatni, 16)));
    __m512i bajty = _mm512_mask_blend_epi32(_mm512_cmpge_epu32_mask(z, _mm512_set1_epi32(0x80)), z, dwa);
    bajty = _mm512_mask_blend_epi32(_mm512_cmpge_epu32_mask(z, _mm512_set1_epi32(0x800)), bajty, trzy);
    std::uint64_t zera = 0x1111111111111111U & Najnizsze64(4 * n); // a unit of 0 is a byte all the same
    if (pary != 0) {
        const __m512i punkt = _mm512_sub_epi32(_mm512_add_epi32(_mm512_slli_epi32(z, 10), nastepny),
                                               _mm512_set1_epi32((0xD800 << 10) + 0xDC00 - 0x10000));
        const __m512i koniec =
            _mm512_or_si512(_mm512_slli_epi32(_mm512_and_si512(punkt, szesc), 24),
                            _mm512_slli_epi32(_mm512_and_si512(_mm512_srli_epi32(punkt, 6), szesc), 16));
        const __m512i poczatek = _mm512_or_si512(
            _mm512_slli_epi32(_mm512_and_si512(_mm512_srli_epi32(punkt, 12), szesc), 8), _mm512_srli_epi32(punkt, 18));
        const auto drugie = static_cast<__mmask16>(static_cast<unsigned>(pary) << 1U);
        bajty = _mm512_mask_or_epi32(bajty, pary, _mm512_or_si512(koniec, poczatek),
                                     _mm512_set1_epi32(static_cast<int>(0x808080F0U)));
        bajty = _mm512_mask_set1_epi32(bajty, drugie, 0);
        zera &= ~_pdep_u64(drugie, 0x1111111111111111U);
        n += static_cast<unsigned>(pary) >> (n - 1); // the half behind the block goes with the last one in it
    }
    const std::uint64_t licza = _mm512_test_epi8_mask(bajty, bajty) | zera;
    const auto zapisano = static_cast<std::size_t>(_mm_popcnt_u64(licza));
    _mm512_mask_storeu_epi8(cel, Najnizsze64(zapisano), _mm512_maskz_compress_epi8(licza, bajty));
    return {n, zapisano};
}

} // namespace

std::atomic<bool> wlaczone{ProcesorMa()};

bool Wlacz(bool wektory) noexcept {
    wlaczone = wektory && ProcesorMa();
    return wlaczone;
}

ZTOK_AVX512 std::size_t Koduj(const char16_t* od, std::size_t ile, char* cel) noexcept {
    std::size_t i = 0;
    char* p = cel;
    while (i < ile) {
        const std::size_t n = std::min<std::size_t>(ile - i, 32);
        const std::uint32_t maska = Najnizsze(n);
        const __m512i znaki = _mm512_maskz_loadu_epi16(maska, od + i);
        const std::uint32_t nieAscii = _mm512_cmpge_epu16_mask(znaki, _mm512_set1_epi16(0x80));
        if (nieAscii == 0) {
            _mm256_mask_storeu_epi8(p, maska, _mm512_cvtepi16_epi8(znaki));
            i += n;
            p += n;
            continue;
        }
        if (_mm512_cmpge_epu16_mask(znaki, _mm512_set1_epi16(0x800)) != 0) {
            const TPostep postep = Koduj16(od + i, ile - i, p);
            i += postep.przeczytano;
            p += postep.zapisano;
            continue;
        }
        // Every unit becomes the two bytes of its sequence in one lane (an ASCII unit the one byte), and the bytes that
        // count are pushed together.
        const __m512i pierwsze = _mm512_srli_epi16(znaki, 6);
        const __m512i drugie = _mm512_slli_epi16(_mm512_and_si512(znaki, _mm512_set1_epi16(0x3F)), 8);
        const __m512i pary = _mm512_or_si512(_mm512_or_si512(pierwsze, drugie), _mm512_set1_epi16(-0x7F40)); // 80C0
        const __m512i bajty = _mm512_mask_blend_epi16(nieAscii, znaki, pary);
        // The high byte of a lane counts when it is not 0: the second byte of a sequence never is.
        const std::uint64_t licza = (_mm512_test_epi8_mask(bajty, bajty) | 0x5555555555555555U) & Najnizsze64(2 * n);
        const auto zapisano = static_cast<std::size_t>(_mm_popcnt_u64(licza));
        _mm512_mask_storeu_epi8(p, Najnizsze64(zapisano), _mm512_maskz_compress_epi8(licza, bajty));
        i += n;
        p += zapisano;
    }
    return static_cast<std::size_t>(p - cel);
}

// Every byte becomes the unit that a sequence at this place would give, and the places where one starts are pushed
// together. A four-byte sequence gives the second half of its pair at its second byte.
ZTOK_AVX512 TPostep Dekoduj(const char* od, std::size_t ile, char16_t* cel) noexcept {
    TPostep postep{0, 0};
    while (postep.przeczytano < ile) {
        const char* skad = od + postep.przeczytano;
        const std::size_t zostalo = ile - postep.przeczytano;
        std::size_t n = std::min<std::size_t>(zostalo, 32);
        std::uint32_t maska = Najnizsze(n);
        const __m256i bajty = _mm256_maskz_loadu_epi8(maska, skad);
        const __m512i b0 = _mm512_cvtepu8_epi16(bajty);
        const std::uint32_t nieAscii = _mm256_movepi8_mask(bajty);
        if (nieAscii == 0) {
            _mm512_mask_storeu_epi16(cel + postep.zapisano, maska, b0);
            postep.przeczytano += n;
            postep.zapisano += n;
            continue;
        }
        const __m256i odC2 = _mm256_sub_epi8(bajty, _mm256_set1_epi8(-0x3E));
        const std::uint32_t dwa = _mm256_cmple_epu8_mask(odC2, _mm256_set1_epi8(0xDF - 0xC2));
        const std::uint32_t dalsze = _mm256_mask_cmplt_epu8_mask(nieAscii, bajty, _mm256_set1_epi8(-0x40)); // C0
        const std::uint32_t trzyLubCztery = _mm256_cmpge_epu8_mask(bajty, _mm256_set1_epi8(-0x20));         // E0
        const __m512i szesc = _mm512_set1_epi16(0x3F);
        const __m512i b1 = _mm512_and_si512(
            _mm512_cvtepu8_epi16(_mm256_maskz_loadu_epi8(Najnizsze(Zostaje(zostalo, 1, 32)), skad + 1)), szesc);
        __m512i znaki = _mm512_mask_mov_epi16(
            b0, dwa, _mm512_or_si512(_mm512_slli_epi16(_mm512_and_si512(b0, _mm512_set1_epi16(0x1F)), 6), b1));
        std::uint32_t poczatki = ~dalsze;
        std::uint32_t oczekiwane = dwa << 1U;
        std::uint32_t zle = nieAscii & ~dalsze & ~dwa & ~trzyLubCztery;
        std::uint32_t trzy = 0;
        std::uint32_t cztery = 0;
        if (trzyLubCztery != 0) {
            trzy = _mm256_mask_cmplt_epu8_mask(trzyLubCztery, bajty, _mm256_set1_epi8(-0x10)); // F0
            cztery = trzyLubCztery & ~trzy;
            oczekiwane |= trzyLubCztery << 1U | trzyLubCztery << 2U | cztery << 3U;
            const __m512i b2 = _mm512_and_si512(
                _mm512_cvtepu8_epi16(_mm256_maskz_loadu_epi8(Najnizsze(Zostaje(zostalo, 2, 32)), skad + 2)), szesc);
            const __m512i znaki3 =
                _mm512_or_si512(_mm512_or_si512(_mm512_slli_epi16(b0, 12), _mm512_slli_epi16(b1, 6)), b2);
            znaki = _mm512_mask_mov_epi16(znaki, trzy, znaki3);
            zle |= _mm512_mask_cmplt_epu16_mask(trzy, znaki3, _mm512_set1_epi16(0x800));
            zle |= _mm512_mask_cmpeq_epi16_mask(trzy, _mm512_and_si512(znaki3, _mm512_set1_epi16(-0x800)), // F800
                                                _mm512_set1_epi16(-0x2800));                               // D800
            if (cztery != 0) {
                const __m512i wysokie = _mm512_add_epi16(
                    _mm512_or_si512(_mm512_or_si512(_mm512_slli_epi16(_mm512_and_si512(b0, _mm512_set1_epi16(0x0F)), 8),
                                                    _mm512_slli_epi16(b1, 2)),
                                    _mm512_srli_epi16(b2, 4)),
                    _mm512_set1_epi16(-0x2840)); // D7C0
                zle |=
                    _mm512_mask_cmpneq_epi16_mask(cztery, _mm512_and_si512(wysokie, _mm512_set1_epi16(-0x400)), // FC00
                                                  _mm512_set1_epi16(-0x2800));                                  // D800
                const __m512i niskie = _mm512_or_si512(
                    _mm512_or_si512(_mm512_slli_epi16(_mm512_and_si512(b1, _mm512_set1_epi16(0x0F)), 6), b2),
                    _mm512_set1_epi16(-0x2400)); // DC00
                znaki = _mm512_mask_mov_epi16(znaki, cztery, wysokie);
                znaki = _mm512_mask_mov_epi16(znaki, cztery << 1U, niskie);
                poczatki |= cztery << 1U;
            }
        }
        zle = (zle | (dalsze ^ oczekiwane)) & maska;
        if (zle != 0)
            n = static_cast<std::size_t>(std::countr_zero(zle));
        // A sequence that reaches beyond what is taken is left, to the next block or to the caller.
        if (n >= 1 && ((dwa | trzyLubCztery) >> (n - 1) & 1U) != 0)
            n -= 1;
        else if (n >= 2 && (trzyLubCztery >> (n - 2) & 1U) != 0)
            n -= 2;
        else if (n >= 3 && (cztery >> (n - 3) & 1U) != 0)
            n -= 3;
        if (n == 0)
            break;
        maska = Najnizsze(n);
        poczatki &= maska;
        const auto zapisano = static_cast<std::size_t>(_mm_popcnt_u32(poczatki));
        _mm512_mask_storeu_epi16(cel + postep.zapisano, Najnizsze(zapisano),
                                 _mm512_maskz_compress_epi16(poczatki, znaki));
        postep.przeczytano += n;
        postep.zapisano += zapisano;
        if (zle != 0)
            break;
    }
    return postep;
}

// The characters of a block lie in few windows of the table: one look-up of 64 characters for each.
ZTOK_AVX512 void NaBajty(const TTabelaStrony& tabela, const char16_t* od, std::size_t ile, char* cel) noexcept {
    for (std::size_t i = 0; i < ile; i += 64) {
        const std::uint64_t zywe = Najnizsze64(std::min<std::size_t>(ile - i, 64));
        const auto zyweA = static_cast<std::uint32_t>(zywe);
        const auto zyweB = static_cast<std::uint32_t>(zywe >> 32U);
        const __m512i a = _mm512_maskz_loadu_epi16(zyweA, od + i);
        const __m512i b = _mm512_maskz_loadu_epi16(zyweB, od + i + 32);
        __m512i bajty = _mm512_inserti64x4(_mm512_castsi256_si512(_mm512_cvtepi16_epi8(a)), _mm512_cvtepi16_epi8(b), 1);
        const __m512i oknaA = _mm512_srli_epi16(a, 7);
        const __m512i oknaB = _mm512_srli_epi16(b, 7);
        const std::uint64_t nieAscii = std::uint64_t{_mm512_test_epi16_mask(oknaA, oknaA)} |
                                       std::uint64_t{_mm512_test_epi16_mask(oknaB, oknaB)} << 32U;
        const __m512i kody = bajty;
        for (std::uint64_t zostalo = nieAscii; zostalo != 0;) {
            const unsigned numer =
                static_cast<unsigned>(od[i + static_cast<unsigned>(std::countr_zero(zostalo))]) >> 7U;
            const auto& okno = tabela.bajty[tabela.okna[numer]];
            const __m512i szukane = _mm512_set1_epi16(static_cast<short>(numer));
            const std::uint64_t tu = zostalo & (std::uint64_t{_mm512_cmpeq_epi16_mask(oknaA, szukane)} |
                                                std::uint64_t{_mm512_cmpeq_epi16_mask(oknaB, szukane)} << 32U);
            bajty = _mm512_mask_mov_epi8(
                bajty, tu,
                _mm512_permutex2var_epi8(_mm512_loadu_si512(okno.data()), kody, _mm512_loadu_si512(okno.data() + 64)));
            zostalo &= ~tu;
        }
        _mm512_mask_storeu_epi8(cel + i, zywe, bajty);
    }
}

ZTOK_AVX512 void ZBajtow(const TTabelaStrony& tabela, const char* od, std::size_t ile, char16_t* cel) noexcept {
    const __m512i mlodsze0 = _mm512_loadu_si512(tabela.mlodsze.data());
    const __m512i mlodsze1 = _mm512_loadu_si512(tabela.mlodsze.data() + 64);
    const __m512i starsze0 = _mm512_loadu_si512(tabela.starsze.data());
    const __m512i starsze1 = _mm512_loadu_si512(tabela.starsze.data() + 64);
    for (std::size_t i = 0; i < ile; i += 64) {
        const std::uint64_t zywe = Najnizsze64(std::min<std::size_t>(ile - i, 64));
        const __m512i bajty = _mm512_maskz_loadu_epi8(zywe, od + i);
        const std::uint64_t nieAscii = _mm512_movepi8_mask(bajty);
        __m512i a = _mm512_cvtepu8_epi16(_mm512_castsi512_si256(bajty));
        __m512i b = _mm512_cvtepu8_epi16(_mm512_extracti64x4_epi64(bajty, 1));
        if (nieAscii != 0) {
            const __m512i mlodsze =
                _mm512_mask_mov_epi8(bajty, nieAscii, _mm512_permutex2var_epi8(mlodsze0, bajty, mlodsze1));
            const __m512i starsze = _mm512_maskz_permutex2var_epi8(nieAscii, starsze0, bajty, starsze1);
            a = _mm512_or_si512(_mm512_cvtepu8_epi16(_mm512_castsi512_si256(mlodsze)),
                                _mm512_slli_epi16(_mm512_cvtepu8_epi16(_mm512_castsi512_si256(starsze)), 8));
            b = _mm512_or_si512(_mm512_cvtepu8_epi16(_mm512_extracti64x4_epi64(mlodsze, 1)),
                                _mm512_slli_epi16(_mm512_cvtepu8_epi16(_mm512_extracti64x4_epi64(starsze, 1)), 8));
        }
        _mm512_mask_storeu_epi16(cel + i, static_cast<std::uint32_t>(zywe), a);
        _mm512_mask_storeu_epi16(cel + i + 32, static_cast<std::uint32_t>(zywe >> 32U), b);
    }
}

} // namespace ztok::wektory

#else

namespace ztok::wektory {

bool Wlacz(bool /*wektory*/) noexcept { return false; }

} // namespace ztok::wektory

#endif
