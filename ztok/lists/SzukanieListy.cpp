// Searches of a list: linear, by identity, by bisection.
#include "ztok/kernel/TObiekt.h"
#include "ztok/lists/TListaBazowa.h"

namespace ztok {

template <class F>
bool TListaBazowa::Szukaj(std::int32_t& gdzie, TRodzajWyszukiwania jakSzukac, std::int32_t zacznijOd, F pasuje) const {
    if (jakSzukac == rwOdKonca) {
        std::int32_t i = zacznijOd == MaxInt ? FIleObiektow - 1 : zacznijOd;
        while (i >= 0 && !(Obiekty(i) != nullptr && pasuje(*FObiekty[i])))
            --i;
        gdzie = i;
        return i >= 0;
    }
    if (jakSzukac == rwOdPoczatku) {
        std::int32_t i = zacznijOd == MaxInt ? 0 : zacznijOd;
        while (i < FIleObiektow && !(Obiekty(i) != nullptr && pasuje(*FObiekty[i])))
            ++i;
        gdzie = i;
        return i < FIleObiektow;
    }
    return false;
}

bool TListaBazowa::JestObiekt(TArgumenty pola, TArgumenty wartosci, std::int32_t& gdzie, TRozmiarLiter rozmLiter,
                              TRodzajWyszukiwania jakSzukac, std::int32_t zacznijOd) const {
    return Szukaj(gdzie, jakSzukac, zacznijOd,
                  [&](const TObiektBazowy& o) { return o.MaCechy(pola, wartosci, rozmLiter); });
}

bool TListaBazowa::JestObiekt(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter,
                              TRodzajWyszukiwania jakSzukac, std::int32_t zacznijOd) const {
    std::int32_t gdzie = -1;
    return JestObiekt(pola, wartosci, gdzie, rozmLiter, jakSzukac, zacznijOd);
}

bool TListaBazowa::JestInnyObiekt(TArgumenty pola, TArgumenty wartosci, std::int32_t& gdzie, TRozmiarLiter rozmLiter,
                                  TRodzajWyszukiwania jakSzukac, std::int32_t zacznijOd) const {
    return Szukaj(gdzie, jakSzukac, zacznijOd,
                  [&](const TObiektBazowy& o) { return !o.MaCechy(pola, wartosci, rozmLiter); });
}

bool TListaBazowa::JestInnyObiekt(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter,
                                  TRodzajWyszukiwania jakSzukac, std::int32_t zacznijOd) const {
    std::int32_t gdzie = -1;
    return JestInnyObiekt(pola, wartosci, gdzie, rozmLiter, jakSzukac, zacznijOd);
}

bool TListaBazowa::JestObiektTakiJak(const TObiektBazowy& obiekt, TArgumenty pola, std::int32_t& gdzie,
                                     TRozmiarLiter rozmLiter, TRodzajWyszukiwania jakSzukac,
                                     std::int32_t zacznijOd) const {
    return Szukaj(gdzie, jakSzukac, zacznijOd,
                  [&](const TObiektBazowy& o) { return o.PorownajWgPol(obiekt, pola, rozmLiter, LocaleWin1250) == 0; });
}

bool TListaBazowa::JestObiektTakiJak(const TObiektBazowy& obiekt, TArgumenty pola, TRozmiarLiter rozmLiter,
                                     TRodzajWyszukiwania jakSzukac, std::int32_t zacznijOd) const {
    std::int32_t gdzie = -1;
    return JestObiektTakiJak(obiekt, pola, gdzie, rozmLiter, jakSzukac, zacznijOd);
}

bool TListaBazowa::JestTakiObiekt(const TObiektBazowy& obiekt, std::int32_t& gdzie, TRodzajWyszukiwania jakSzukac,
                                  std::int32_t zacznijOd, TPorownywaczDanych* porownywacz) const {
    return Szukaj(gdzie, jakSzukac, zacznijOd,
                  [&](const TObiektBazowy& o) { return o.Porownaj(obiekt, porownywacz) == 0; });
}

bool TListaBazowa::JestTakiObiekt(const TObiektBazowy& obiekt, TRodzajWyszukiwania jakSzukac, std::int32_t zacznijOd,
                                  TPorownywaczDanych* porownywacz) const {
    std::int32_t gdzie = -1;
    return JestTakiObiekt(obiekt, gdzie, jakSzukac, zacznijOd, porownywacz);
}

std::int32_t TListaBazowa::ZnajdzObiekt(const TObiektBazowy* obiekt) const noexcept {
    std::int32_t i = FIleObiektow - 1;
    while (i >= 0 && FObiekty[i] != obiekt)
        --i;
    return i;
}

bool TListaBazowa::WyszukajWgPol(TArgumenty p_JakiePola, TArgumenty p_JakieWartosci, std::int32_t& p_Gdzie,
                                 TRozmiarLiter p_RozmLiter, TRodzajSortowania p_Sortowanie,
                                 std::uint32_t p_LocaleID) const {
    // Sign of the values minus element i, turned so that the list is always ascending.
    const auto c = [&](std::int32_t i) {
        const std::int32_t wynik = FObiekty[i]->PorownajCechy(p_JakiePola, p_JakieWartosci, p_RozmLiter, p_LocaleID);
        return p_Sortowanie == rsRosnaco ? wynik : -wynik;
    };
    p_Gdzie = 0;
    if (FIleObiektow == 0)
        return false;
    if (FIleObiektow == 1) {
        const std::int32_t wynik = c(0);
        p_Gdzie = wynik > 0 ? 1 : 0;
        return wynik == 0;
    }
    if (c(0) < 0)
        return false;
    if (c(FIleObiektow - 1) > 0) {
        p_Gdzie = FIleObiektow;
        return false;
    }
    std::int32_t lo = 0;
    std::int32_t hi = FIleObiektow - 1;
    while (lo < hi) {
        const std::int32_t srodek = lo + (hi - lo) / 2;
        if (c(srodek) <= 0)
            hi = srodek;
        else
            lo = srodek + 1;
    }
    p_Gdzie = hi;
    return FObiekty[hi]->MaCechy(p_JakiePola, p_JakieWartosci, p_RozmLiter);
}

bool TListaBazowa::WyszukajWgPol(TArgumenty p_JakiePola, TArgumenty p_JakieWartosci, TRozmiarLiter p_RozmLiter,
                                 TRodzajSortowania p_Sortowanie, std::uint32_t p_LocaleID) const {
    std::int32_t gdzie = 0;
    return WyszukajWgPol(p_JakiePola, p_JakieWartosci, gdzie, p_RozmLiter, p_Sortowanie, p_LocaleID);
}

} // namespace ztok
