// Sixteen bytes at a time, asked which of them are of some kind. For the sources that scan text only.
#pragma once

#include <cstdint>
#if defined(__SSE2__)
#include <emmintrin.h>
#else
#include <cstring>
#endif

namespace ztok {

// Bit i of every answer is about byte i. The place that a block is made from has kIle bytes that may be read.
class TBlokBajtow {
  public:
    static constexpr int kIle = 16;
    static constexpr unsigned kWszystkie = 0xFFFF;

#if defined(__SSE2__)
    explicit TBlokBajtow(const char* od) noexcept : bajty_(_mm_loadu_si128(reinterpret_cast<const __m128i*>(od))) {}
    [[nodiscard]] unsigned Rowne(char bajt) const noexcept { return Maska(_mm_cmpeq_epi8(bajty_, Kopie(bajt))); }
    // Bytes from `od` to `do_`, as unsigned numbers.
    [[nodiscard]] unsigned Miedzy(unsigned char od, unsigned char do_) const noexcept {
        return MaskaMiedzy(bajty_, od, do_);
    }
    [[nodiscard]] unsigned LiteryAscii() const noexcept {
        return MaskaMiedzy(_mm_or_si128(bajty_, Kopie(32)), 'a', 'z');
    }

  private:
    static __m128i Kopie(char bajt) noexcept { return _mm_set1_epi8(bajt); }
    static unsigned Maska(__m128i wektor) noexcept { return static_cast<unsigned>(_mm_movemask_epi8(wektor)); }
    static unsigned MaskaMiedzy(__m128i bajty, unsigned char od, unsigned char do_) noexcept {
        const __m128i odZera = _mm_sub_epi8(bajty, Kopie(static_cast<char>(od)));
        return Maska(_mm_cmpeq_epi8(_mm_min_epu8(odZera, Kopie(static_cast<char>(do_ - od))), odZera));
    }

    __m128i bajty_;
#else
    explicit TBlokBajtow(const char* od) noexcept { std::memcpy(bajty_, od, kIle); }
    [[nodiscard]] unsigned Rowne(char bajt) const noexcept {
        const auto b = static_cast<unsigned char>(bajt);
        return Miedzy(b, b);
    }
    [[nodiscard]] unsigned Miedzy(unsigned char od, unsigned char do_) const noexcept {
        unsigned maska = 0;
        for (unsigned i = 0; i < kIle; ++i)
            maska |= static_cast<unsigned>(bajty_[i] >= od && bajty_[i] <= do_) << i;
        return maska;
    }
    [[nodiscard]] unsigned LiteryAscii() const noexcept { return Miedzy('a', 'z') | Miedzy('A', 'Z'); }

  private:
    unsigned char bajty_[kIle];
#endif
};

} // namespace ztok
