// Incoming references of one object.
#pragma once

#include <cstdint>

namespace ztok {

class TPole;

// The set of fields and lists that point at an object, in address order. Most objects have none, and most of the others
// one: neither takes memory beyond the word itself. Some stand in one sorted block; beyond a few hundred they stand in
// several, under a block that tells where each begins, so that no step moves more than one of them.
class TOdwolania {
  public:
    TOdwolania() noexcept = default;
    TOdwolania(const TOdwolania&) = delete;
    TOdwolania& operator=(const TOdwolania&) = delete;
    ~TOdwolania() {
        if (JestBlok()) [[unlikely]]
            ZwolnijBlok();
    }

    [[nodiscard]] int Ile() const noexcept { return JestBlok() ? Blok<int>() : static_cast<int>(slowo_ != 0); }
    [[nodiscard]] bool Puste() const noexcept { return Ile() == 0; }
    // Whether the field is there; its position, or the one to insert at.
    [[nodiscard]] bool Znajdz(const TPole* pole, int& gdzie) const noexcept;
    // Whether it was added: nothing happens when the field is there. std::bad_alloc: the set is as it was.
    bool Dodaj(TPole* pole);
    void Usun(const TPole* pole) noexcept;
    // Takes out the one with the highest address; the set must not be empty.
    TPole* ZdejmijOstatni() noexcept;

  private:
    // Each kind of block begins with the number of fields in it.
    struct TLisc {
        int ile;
        int pojemnosc;
        TPole* pola[1];
    };
    struct TGalaz {
        TPole* pierwsze; // of its block, found without a look at it
        TLisc* lisc;
    };
    struct TPien {
        int ile; // in all blocks
        int pojemnosc;
        int lisci;
        TGalaz galezie[1];
    };
    enum : std::uintptr_t { jestLisc = 1, jestPien = 2 }; // in the word's lowest bits, beside the address

    [[nodiscard]] bool JestBlok() const noexcept { return (slowo_ & (jestLisc | jestPien)) != 0; }
    [[nodiscard]] bool JestPien() const noexcept { return (slowo_ & jestPien) != 0; }
    template <class T> [[nodiscard]] T& Blok() const noexcept {
        return *reinterpret_cast<T*>(slowo_ & ~std::uintptr_t{jestLisc | jestPien});
    }
    [[nodiscard]] TPole* Jedyne() const noexcept { return reinterpret_cast<TPole*>(slowo_); }
    void ZwolnijBlok() noexcept;
    void Powieksz();
    // The branch whose block holds the field or is to hold it.
    static int GalazDla(const TPien& pien, const TPole* pole) noexcept;
    void DodajGalaz(int galaz, TPole* pole);
    void UsunZGalezi(int galaz, int gdzie) noexcept;
    static void UsunGalaz(TPien& pien, int galaz) noexcept;

    std::uintptr_t slowo_ = 0; // null, the only field, or a block's address and its kind
};

} // namespace ztok
