#include "ztok/kernel/TOdwolania.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <functional>

#include "ztok/platform/PulaWnetrze.h"

namespace ztok {

namespace {

constexpr std::size_t kPierwszyBlok = 32;     // bytes; each further block is twice as large
constexpr std::size_t kNajwiekszyBlok = 4096; // beyond it there are several, and a step moves no more than one of them
constexpr std::size_t kNaglowek = 2 * sizeof(int);
constexpr int kPierwszeGalezie = 8;

template <class T> void Wstaw(T* tablica, int& ile, int gdzie, const T& nowy) noexcept {
    std::memmove(tablica + gdzie + 1, tablica + gdzie, static_cast<std::size_t>(ile - gdzie) * sizeof(T));
    tablica[gdzie] = nowy;
    ++ile;
}

template <class T> void Wyjmij(T* tablica, int& ile, int gdzie) noexcept {
    --ile;
    std::memmove(tablica + gdzie, tablica + gdzie + 1, static_cast<std::size_t>(ile - gdzie) * sizeof(T));
}

template <class TLisc> TLisc* NowyLisc(std::size_t bajty) {
    auto* const lisc = static_cast<TLisc*>(pula::Przydziel(bajty));
    lisc->ile = 0;
    lisc->pojemnosc = static_cast<int>((bajty - kNaglowek) / sizeof(TPole*));
    return lisc;
}

template <class TLisc> void ZwolnijLisc(TLisc* lisc) noexcept {
    pula::Zwolnij(lisc, kNaglowek + static_cast<std::size_t>(lisc->pojemnosc) * sizeof(TPole*));
}

// Whether the field is in the block; where, or where it belongs.
template <class TLisc> bool ZnajdzWLisciu(const TLisc& lisc, const TPole* pole, int& gdzie) noexcept {
    TPole* const* const koniec = lisc.pola + lisc.ile;
    TPole* const* const miejsce = std::lower_bound(lisc.pola, koniec, pole, std::less<>());
    gdzie = static_cast<int>(miejsce - lisc.pola);
    return miejsce != koniec && *miejsce == pole;
}

template <class TPien, class TGalaz> std::size_t BajtyPnia(int pojemnosc) noexcept {
    return offsetof(TPien, galezie) + static_cast<std::size_t>(pojemnosc) * sizeof(TGalaz);
}

} // namespace

void TOdwolania::ZwolnijBlok() noexcept {
    if (!JestPien()) {
        ZwolnijLisc(&Blok<TLisc>());
        return;
    }
    auto& pien = Blok<TPien>();
    for (int i = 0; i < pien.lisci; ++i)
        ZwolnijLisc(pien.galezie[i].lisc);
    pula::Zwolnij(&pien, BajtyPnia<TPien, TGalaz>(pien.pojemnosc));
}

int TOdwolania::GalazDla(const TPien& pien, const TPole* pole) noexcept {
    const TGalaz* const za =
        std::upper_bound(pien.galezie, pien.galezie + pien.lisci, pole,
                         [](const TPole* p, const TGalaz& g) { return std::less<>()(p, g.pierwsze); });
    return std::max(static_cast<int>(za - pien.galezie) - 1, 0);
}

bool TOdwolania::Znajdz(const TPole* pole, int& gdzie) const noexcept {
    if (!JestBlok()) {
        gdzie = slowo_ != 0 && std::less<>()(static_cast<const TPole*>(Jedyne()), pole) ? 1 : 0;
        return pole != nullptr && Jedyne() == pole;
    }
    if (!JestPien())
        return ZnajdzWLisciu(Blok<TLisc>(), pole, gdzie);
    const auto& pien = Blok<TPien>();
    const int galaz = GalazDla(pien, pole);
    const bool jest = ZnajdzWLisciu(*pien.galezie[galaz].lisc, pole, gdzie);
    for (int i = 0; i < galaz; ++i)
        gdzie += pien.galezie[i].lisc->ile;
    return jest;
}

// Brings one field into a block, a full block into a larger one, and one of the largest under a trunk; a full trunk
// gets room for more branches.
void TOdwolania::Powieksz() {
    static_assert(offsetof(TLisc, pola) == kNaglowek);
    if (!JestBlok()) {
        auto* const nowy = NowyLisc<TLisc>(kPierwszyBlok);
        nowy->ile = 1;
        nowy->pola[0] = Jedyne();
        slowo_ = reinterpret_cast<std::uintptr_t>(nowy) + jestLisc;
        return;
    }
    if (!JestPien()) {
        auto& stary = Blok<TLisc>();
        const std::size_t bajty = 2 * (kNaglowek + static_cast<std::size_t>(stary.pojemnosc) * sizeof(TPole*));
        if (bajty <= kNajwiekszyBlok) {
            auto* const nowy = NowyLisc<TLisc>(bajty);
            nowy->ile = stary.ile;
            std::memcpy(nowy->pola, stary.pola, static_cast<std::size_t>(stary.ile) * sizeof(TPole*));
            ZwolnijLisc(&stary);
            slowo_ = reinterpret_cast<std::uintptr_t>(nowy) + jestLisc;
            return;
        }
    }
    const TPien* const stary = JestPien() ? &Blok<TPien>() : nullptr;
    const int pojemnosc = stary == nullptr ? kPierwszeGalezie : 2 * stary->pojemnosc;
    auto* const nowy = static_cast<TPien*>(pula::Przydziel(BajtyPnia<TPien, TGalaz>(pojemnosc)));
    nowy->pojemnosc = pojemnosc;
    if (stary == nullptr) {
        auto& lisc = Blok<TLisc>();
        nowy->ile = lisc.ile;
        nowy->lisci = 1;
        nowy->galezie[0] = {lisc.pola[0], &lisc};
    } else {
        nowy->ile = stary->ile;
        nowy->lisci = stary->lisci;
        std::memcpy(nowy->galezie, stary->galezie, static_cast<std::size_t>(stary->lisci) * sizeof(TGalaz));
        pula::Zwolnij(&Blok<TPien>(), BajtyPnia<TPien, TGalaz>(stary->pojemnosc));
    }
    slowo_ = reinterpret_cast<std::uintptr_t>(nowy) + jestPien;
}

// Makes room for the field in the full block of the branch: halves it, or starts a new block at the end of all, where
// fields that were made one after another keep coming.
void TOdwolania::DodajGalaz(int galaz, TPole* pole) {
    if (Blok<TPien>().lisci == Blok<TPien>().pojemnosc)
        Powieksz();
    auto* const nowy = NowyLisc<TLisc>(kNajwiekszyBlok);
    auto& pien = Blok<TPien>();
    TLisc& pelny = *pien.galezie[galaz].lisc;
    const bool naKoncu = galaz + 1 == pien.lisci && std::less<>()(pelny.pola[pelny.ile - 1], pole);
    const int zostaje = naKoncu ? pelny.ile : pelny.ile / 2;
    nowy->ile = pelny.ile - zostaje;
    std::memcpy(nowy->pola, pelny.pola + zostaje, static_cast<std::size_t>(nowy->ile) * sizeof(TPole*));
    pelny.ile = zostaje;
    Wstaw(pien.galezie, pien.lisci, galaz + 1, {naKoncu ? pole : nowy->pola[0], nowy});
}

bool TOdwolania::Dodaj(TPole* pole) {
    if (slowo_ == 0) {
        slowo_ = reinterpret_cast<std::uintptr_t>(pole);
        return true;
    }
    if (!JestPien()) {
        int gdzie = 0;
        if (Znajdz(pole, gdzie))
            return false;
        if (!JestBlok() || Blok<TLisc>().ile == Blok<TLisc>().pojemnosc)
            Powieksz();
        if (!JestPien()) {
            auto& lisc = Blok<TLisc>();
            Wstaw(lisc.pola, lisc.ile, gdzie, pole);
            return true;
        }
    }
    int galaz = GalazDla(Blok<TPien>(), pole);
    TLisc* lisc = Blok<TPien>().galezie[galaz].lisc;
    int gdzie = 0;
    if (ZnajdzWLisciu(*lisc, pole, gdzie))
        return false;
    if (lisc->ile == lisc->pojemnosc) {
        DodajGalaz(galaz, pole);
        galaz = GalazDla(Blok<TPien>(), pole);
        lisc = Blok<TPien>().galezie[galaz].lisc;
        ZnajdzWLisciu(*lisc, pole, gdzie);
    }
    Wstaw(lisc->pola, lisc->ile, gdzie, pole);
    auto& pien = Blok<TPien>();
    pien.galezie[galaz].pierwsze = lisc->pola[0];
    ++pien.ile;
    return true;
}

void TOdwolania::UsunGalaz(TPien& pien, int galaz) noexcept {
    ZwolnijLisc(pien.galezie[galaz].lisc);
    Wyjmij(pien.galezie, pien.lisci, galaz);
}

void TOdwolania::UsunZGalezi(int galaz, int gdzie) noexcept {
    auto& pien = Blok<TPien>();
    TLisc& lisc = *pien.galezie[galaz].lisc;
    Wyjmij(lisc.pola, lisc.ile, gdzie);
    --pien.ile;
    if (lisc.ile != 0)
        pien.galezie[galaz].pierwsze = lisc.pola[0];
    // Two neighbours that leave much room become one, so that what few fields remain keep few blocks.
    const int lewa = galaz + 1 < pien.lisci ? galaz : galaz - 1;
    if (lisc.ile == 0) {
        UsunGalaz(pien, galaz);
    } else if (lewa >= 0) {
        TLisc& a = *pien.galezie[lewa].lisc;
        const TLisc& b = *pien.galezie[lewa + 1].lisc;
        if (a.ile + b.ile <= a.pojemnosc / 2) {
            std::memcpy(a.pola + a.ile, b.pola, static_cast<std::size_t>(b.ile) * sizeof(TPole*));
            a.ile += b.ile;
            UsunGalaz(pien, lewa + 1);
        }
    }
    if (pien.lisci == 1) {
        TLisc* const jedyny = pien.galezie[0].lisc;
        pula::Zwolnij(&pien, BajtyPnia<TPien, TGalaz>(pien.pojemnosc));
        slowo_ = reinterpret_cast<std::uintptr_t>(jedyny) + jestLisc;
    }
}

void TOdwolania::Usun(const TPole* pole) noexcept {
    int gdzie = 0;
    if (JestPien()) {
        const int galaz = GalazDla(Blok<TPien>(), pole);
        if (ZnajdzWLisciu(*Blok<TPien>().galezie[galaz].lisc, pole, gdzie))
            UsunZGalezi(galaz, gdzie);
        return;
    }
    if (!Znajdz(pole, gdzie))
        return;
    if (!JestBlok()) {
        slowo_ = 0;
        return;
    }
    auto& lisc = Blok<TLisc>();
    Wyjmij(lisc.pola, lisc.ile, gdzie);
    if (lisc.ile == 1) {
        TPole* const jedyne = lisc.pola[0];
        ZwolnijLisc(&lisc);
        slowo_ = reinterpret_cast<std::uintptr_t>(jedyne);
    }
}

TPole* TOdwolania::ZdejmijOstatni() noexcept {
    if (JestPien()) {
        const auto& pien = Blok<TPien>();
        const TLisc& ostatni = *pien.galezie[pien.lisci - 1].lisc;
        TPole* const pole = ostatni.pola[ostatni.ile - 1];
        UsunZGalezi(pien.lisci - 1, ostatni.ile - 1);
        return pole;
    }
    if (JestBlok())
        return Blok<TLisc>().pola[--Blok<TLisc>().ile];
    TPole* const pole = Jedyne();
    slowo_ = 0;
    return pole;
}

} // namespace ztok
