// Searches of a list: linear, by identity, by bisection.
#include "ztok/kernel/Selektory.h"
#include "ztok/kernel/TObiekt.h"
#include "ztok/lists/TListaBazowa.h"
#include "ztok/lists/TPorownywaczDanych.h"

namespace ztok {

template <class F>
bool TListaBazowa::Szukaj(std::int32_t& gdzie, TRodzajWyszukiwania jakSzukac, std::int32_t zacznijOd, F pasuje) const {
    ZamknijDziury();
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
    SprawdzDlugosci(u"JO", pola, wartosci);
    SprawdzSelektoryElementow(u"JO", this, pola);
    const TOcenione ocenione;
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
    SprawdzDlugosci(u"JIO", pola, wartosci);
    SprawdzSelektoryElementow(u"JIO", this, pola);
    const TOcenione ocenione;
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
    SprawdzSelektoryElementow(u"JOTJ", this, pola, &obiekt);
    const TOcenione ocenione;
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
    return Szukaj(gdzie, jakSzukac, zacznijOd, [&](const TObiektBazowy& o) {
        if (porownywacz != nullptr)
            porownywacz->ZerujListy(); // what was met in another element says nothing about this one
        return TPorownywaczDanych::PorownajDowolne(o, obiekt, porownywacz) == 0;
    });
}

bool TListaBazowa::JestTakiObiekt(const TObiektBazowy& obiekt, TRodzajWyszukiwania jakSzukac, std::int32_t zacznijOd,
                                  TPorownywaczDanych* porownywacz) const {
    std::int32_t gdzie = -1;
    return JestTakiObiekt(obiekt, gdzie, jakSzukac, zacznijOd, porownywacz);
}

std::int32_t TListaBazowa::ZnajdzObiekt(const TObiektBazowy* obiekt) const noexcept {
    ZamknijDziury();
    std::int32_t i = FIleObiektow - 1;
    while (i >= 0 && FObiekty[i] != obiekt)
        --i;
    return i;
}

// Bisection with the sign of the values minus element i, turned so that the list is always ascending: the lowest index
// of a run of equal elements, or the index to insert at. An empty slot stands before everything, as a sort leaves it.
// True when an element may be there.
template <class F>
bool TListaBazowa::SzukajBisekcja(std::int32_t& gdzie, TRodzajSortowania sortowanie, const F& porownaj) const {
    ZamknijDziury();
    const auto c = [&](std::int32_t i) -> std::int32_t {
        if (FObiekty[i] == nullptr)
            return 1;
        const std::int32_t wynik = porownaj(*FObiekty[i]);
        return sortowanie == rsRosnaco ? wynik : -wynik;
    };
    gdzie = 0;
    if (FIleObiektow == 0)
        return false;
    if (FIleObiektow == 1) {
        const std::int32_t wynik = c(0);
        gdzie = wynik > 0 ? 1 : 0;
        return wynik == 0;
    }
    if (c(0) < 0)
        return false;
    if (c(FIleObiektow - 1) > 0) {
        gdzie = FIleObiektow;
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
    gdzie = hi;
    return FObiekty[hi] != nullptr;
}

bool TListaBazowa::WyszukajWgPol(TArgumenty p_JakiePola, TArgumenty p_JakieWartosci, std::int32_t& p_Gdzie,
                                 TRozmiarLiter p_RozmLiter, TRodzajSortowania p_Sortowanie,
                                 std::uint32_t p_LocaleID) const {
    SprawdzDlugosci(u"WWP", p_JakiePola, p_JakieWartosci);
    SprawdzSelektoryElementow(u"WWP", this, p_JakiePola);
    const TOcenione ocenione;
    const bool mozliwe = SzukajBisekcja(p_Gdzie, p_Sortowanie, [&](const TObiektBazowy& o) {
        return o.PorownajCechy(p_JakiePola, p_JakieWartosci, p_RozmLiter, p_LocaleID);
    });
    return mozliwe && (FIleObiektow == 1 || FObiekty[p_Gdzie]->MaCechy(p_JakiePola, p_JakieWartosci, p_RozmLiter));
}

bool TListaBazowa::WyszukajWgPol(TArgumenty p_JakiePola, TArgumenty p_JakieWartosci, TRozmiarLiter p_RozmLiter,
                                 TRodzajSortowania p_Sortowanie, std::uint32_t p_LocaleID) const {
    std::int32_t gdzie = 0;
    return WyszukajWgPol(p_JakiePola, p_JakieWartosci, gdzie, p_RozmLiter, p_Sortowanie, p_LocaleID);
}

bool TListaBazowa::WyszukajJak(const TObiektBazowy& obiekt, TArgumenty pola, std::int32_t& gdzie,
                               TRozmiarLiter rozmLiter, TRodzajSortowania sortowanie, std::uint32_t localeID) const {
    SprawdzSelektoryElementow(u"WWP", this, pola, &obiekt);
    const TOcenione ocenione;
    const auto porownaj = [&](const TObiektBazowy& o) { return obiekt.PorownajWgPol(o, pola, rozmLiter, localeID); };
    return SzukajBisekcja(gdzie, sortowanie, porownaj) && porownaj(*FObiekty[gdzie]) == 0;
}

bool TListaBazowa::WyszukajZakres(TArgumenty pola, TArgumenty wartosci, std::int32_t& od, std::int32_t& doKtorego,
                                  TRozmiarLiter rozmLiter, TRodzajSortowania sortowanie, std::uint32_t localeID) const {
    const bool jest = WyszukajWgPol(pola, wartosci, od, rozmLiter, sortowanie, localeID);
    doKtorego = od;
    while (jest && doKtorego + 1 < FIleObiektow && FObiekty[doKtorego + 1] != nullptr &&
           MaOcenioneCechy(*FObiekty[doKtorego + 1], pola, wartosci, rozmLiter))
        ++doKtorego;
    return jest;
}

} // namespace ztok
