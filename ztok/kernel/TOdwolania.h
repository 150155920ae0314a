// Incoming references of one object.
#pragma once

#include <cstdint>

namespace ztok {

class TPole;

// The set of fields and lists that point at an object, in address order. Most objects have none, and most of the others
// one: neither takes memory beyond the word itself.
class TOdwolania {
  public:
    TOdwolania() noexcept = default;
    TOdwolania(const TOdwolania&) = delete;
    TOdwolania& operator=(const TOdwolania&) = delete;
    ~TOdwolania() {
        if (JestBlok()) [[unlikely]]
            ZwolnijBlok();
    }

    [[nodiscard]] int Ile() const noexcept { return JestBlok() ? Blok()->ile : static_cast<int>(slowo_ != 0); }
    [[nodiscard]] bool Puste() const noexcept { return Ile() == 0; }
    // Whether the field is there; its position, or the one to insert at.
    [[nodiscard]] bool Znajdz(const TPole* pole, int& gdzie) const noexcept;
    // Nothing happens when the field is there. std::bad_alloc: the set is as it was.
    void Dodaj(TPole* pole);
    void Usun(const TPole* pole) noexcept;
    // Takes out the one with the highest address; the set must not be empty.
    TPole* ZdejmijOstatni() noexcept;

  private:
    struct TBlok {
        int ile;
        int pojemnosc;
        TPole* pola[1];
    };

    [[nodiscard]] bool JestBlok() const noexcept { return (slowo_ & 1U) != 0; }
    [[nodiscard]] TBlok* Blok() const noexcept { return reinterpret_cast<TBlok*>(slowo_ - 1); }
    [[nodiscard]] TPole* Jedyne() const noexcept { return reinterpret_cast<TPole*>(slowo_); }
    void ZwolnijBlok() noexcept;
    void Powieksz();

    std::uintptr_t slowo_ = 0; // null, the only field, or a block's address plus 1
};

} // namespace ztok
