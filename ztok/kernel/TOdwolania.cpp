#include "ztok/kernel/TOdwolania.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <functional>

#include "ztok/platform/PulaWnetrze.h"

namespace ztok {

namespace {

constexpr std::size_t kPierwszyBlok = 32; // bytes; each further block is twice as large
constexpr std::size_t kNaglowek = 2 * sizeof(int);

constexpr std::size_t RozmiarBloku(int pojemnosc) noexcept {
    return kNaglowek + static_cast<std::size_t>(pojemnosc) * sizeof(TPole*);
}

} // namespace

void TOdwolania::ZwolnijBlok() noexcept { pula::Zwolnij(Blok(), RozmiarBloku(Blok()->pojemnosc)); }

bool TOdwolania::Znajdz(const TPole* pole, int& gdzie) const noexcept {
    if (!JestBlok()) {
        gdzie = slowo_ != 0 && std::less<>()(static_cast<const TPole*>(Jedyne()), pole) ? 1 : 0;
        return pole != nullptr && Jedyne() == pole;
    }
    TBlok& blok = *Blok();
    TPole** const koniec = blok.pola + blok.ile;
    TPole** const miejsce = std::lower_bound(blok.pola, koniec, pole, std::less<>());
    gdzie = static_cast<int>(miejsce - blok.pola);
    return miejsce != koniec && *miejsce == pole;
}

// Brings one field into a block, or a full block into a larger one.
void TOdwolania::Powieksz() {
    static_assert(offsetof(TBlok, pola) == kNaglowek);
    TBlok* const stary = JestBlok() ? Blok() : nullptr;
    const std::size_t bajty = stary == nullptr ? kPierwszyBlok : 2 * RozmiarBloku(stary->pojemnosc);
    auto* const nowy = static_cast<TBlok*>(pula::Przydziel(bajty));
    nowy->pojemnosc = static_cast<int>((bajty - kNaglowek) / sizeof(TPole*));
    if (stary == nullptr) {
        nowy->ile = 1;
        nowy->pola[0] = Jedyne();
    } else {
        nowy->ile = stary->ile;
        std::memcpy(nowy->pola, stary->pola, static_cast<std::size_t>(stary->ile) * sizeof(TPole*));
        ZwolnijBlok();
    }
    slowo_ = reinterpret_cast<std::uintptr_t>(nowy) + 1;
}

void TOdwolania::Dodaj(TPole* pole) {
    if (slowo_ == 0) {
        slowo_ = reinterpret_cast<std::uintptr_t>(pole);
        return;
    }
    int gdzie = 0;
    if (Znajdz(pole, gdzie))
        return;
    if (!JestBlok() || Blok()->ile == Blok()->pojemnosc)
        Powieksz();
    TBlok& blok = *Blok();
    std::memmove(blok.pola + gdzie + 1, blok.pola + gdzie, static_cast<std::size_t>(blok.ile - gdzie) * sizeof(TPole*));
    blok.pola[gdzie] = pole;
    ++blok.ile;
}

void TOdwolania::Usun(const TPole* pole) noexcept {
    int gdzie = 0;
    if (!Znajdz(pole, gdzie))
        return;
    if (!JestBlok()) {
        slowo_ = 0;
        return;
    }
    TBlok& blok = *Blok();
    --blok.ile;
    std::memmove(blok.pola + gdzie, blok.pola + gdzie + 1, static_cast<std::size_t>(blok.ile - gdzie) * sizeof(TPole*));
    if (blok.ile == 1) {
        TPole* const jedyne = blok.pola[0];
        ZwolnijBlok();
        slowo_ = reinterpret_cast<std::uintptr_t>(jedyne);
    }
}

TPole* TOdwolania::ZdejmijOstatni() noexcept {
    if (JestBlok())
        return Blok()->pola[--Blok()->ile];
    TPole* const pole = Jedyne();
    slowo_ = 0;
    return pole;
}

} // namespace ztok
