// First positions of pointers in a record that only grows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "ztok/platform/Eksport.h"

namespace ztok {

// Spreads an address over a hash table: Fibonacci hashing, since addresses differ in their middle bits.
[[nodiscard]] inline std::size_t MieszajWskaznik(const void* wskaznik) noexcept {
    const auto adres = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(wskaznik));
    return static_cast<std::size_t>((adres * 0x9E3779B97F4A7C15ULL) >> 29U);
}

// Finds the first position of a pointer, which is not null, in a list of pointers. Short lists are scanned; a longer
// one gets a hash table when it is asked, so that a walk over n objects stays near linear and one that asks nothing
// pays nothing. The answers are those of a scan from the start.
class ZTOK_API TIndeksWskaznikow {
  public:
    [[nodiscard]] std::size_t Ile() const noexcept { return lista_.size(); }
    [[nodiscard]] const void* operator[](std::size_t i) const noexcept { return lista_[i]; }
    void Dopisz(const void* wskaznik) { lista_.push_back(wskaznik); }
    // Takes the last one back, before anything was asked of it.
    void Cofnij() noexcept { lista_.pop_back(); }
    // The first position of the pointer, or Ile() when it is not there.
    [[nodiscard]] std::size_t Znajdz(const void* wskaznik) const noexcept;
    // Empties every position of the pointer.
    void Usun(const void* wskaznik) noexcept;
    void Zeruj() noexcept;
    // A look-up of the pointer follows soon.
    void Zapowiedz(const void* wskaznik) const noexcept {
        if (!tablica_.empty())
            __builtin_prefetch(&tablica_[MieszajWskaznik(wskaznik) & (tablica_.size() - 1)]);
    }

  private:
    void Wstaw(std::size_t pozycja) const noexcept;
    // Brings the table up to the list; false when there is no memory for it.
    bool Zindeksuj() const noexcept;

    std::vector<const void*> lista_;
    mutable std::vector<std::uint32_t> tablica_; // position + 1, open addressing
    mutable std::size_t zindeksowane_ = 0;       // how many positions it knows
    mutable bool powtorki_ = false;              // it met a pointer twice
};

} // namespace ztok
