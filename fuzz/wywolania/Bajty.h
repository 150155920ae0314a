// Choices made by the bytes of an input. A short one that begins with LOS stands for many bytes, of a generator that
// begins with it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace wywolania {

class TBajty {
  public:
    TBajty(const std::uint8_t* dane, std::size_t ile) : bajty_(dane, dane + ile) {
        constexpr std::size_t kKrotkie = 8;
        constexpr std::size_t kDlugie = 30000;
        if (ile < 3 || ile > kKrotkie || dane[0] != 'L' || dane[1] != 'O' || dane[2] != 'S')
            return;
        std::uint64_t stan = 0x9E3779B97F4A7C15U;
        for (const std::uint8_t bajt : bajty_)
            stan = (stan ^ bajt) * 0x100000001B3U;
        for (bajty_.resize(1); bajty_.size() < kDlugie;) {
            stan = stan * 6364136223846793005U + 1442695040888963407U;
            bajty_.push_back(static_cast<std::uint8_t>(stan >> 56U));
        }
    }
    [[nodiscard]] bool Koniec() const noexcept { return nastepny_ >= bajty_.size(); }
    std::size_t Z(std::size_t ile) { return Koniec() || ile == 0 ? 0 : bajty_[nastepny_++] % ile; }
    // Does one of the things.
    template <class... F> void Wybierz(const F&... co) {
        std::size_t nr = Z(sizeof...(co));
        ((nr-- == 0 ? static_cast<void>(co()) : void()), ...);
    }

  private:
    std::vector<std::uint8_t> bajty_;
    std::size_t nastepny_ = 0;
};

// Lists of every kind against plain vectors.
void GrajListami(TBajty& bajty);

} // namespace wywolania
