// Sorting of a list, and the questions that a sorted list answers.
#include "ztok/kernel/TObiekt.h"
#include "ztok/lists/TListaBazowa.h"
#include "ztok/lists/TPorownywaczDanych.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {

namespace {

// A slot without an object stands before every object.
template <class F> auto ZPustymi(const F& porownaj) {
    return [&porownaj](const TObiektBazowy* a, const TObiektBazowy* b) -> std::int32_t {
        return a != nullptr && b != nullptr ? porownaj(*a, *b)
                                            : static_cast<int>(a != nullptr) - static_cast<int>(b != nullptr);
    };
}

// In-place quicksort with a fixed order of exchanges, so that equal elements always end where they do: the pivot is the
// middle element, both ends move towards it, and elements equal to it are exchanged too. `porownaj` gives the sign of
// its first argument minus the second. Whatever it answers, I and J stay within [L, R].
template <class F>
void Szybkie(PListaObiektowBazowych e, std::int32_t l, std::int32_t r, bool& zamieniono, const F& porownaj) {
    while (l < r) {
        const TObiektBazowy* os = e[l + (r - l) / 2];
        std::int32_t i = l;
        std::int32_t j = r;
        do {
            while (i < r && porownaj(e[i], os) < 0)
                ++i;
            while (j > l && porownaj(e[j], os) > 0)
                --j;
            if (i <= j) {
                if (i != j) {
                    TObiektBazowy* obiekt = e[i];
                    e[i] = e[j];
                    e[j] = obiekt;
                    zamieniono = true;
                }
                ++i;
                --j;
            }
        } while (i <= j);
        // The parts are disjoint: the longer one is taken in the loop, so that the recursion stays shallow.
        if (j - l < r - i) {
            if (j > l)
                Szybkie(e, l, j, zamieniono, porownaj);
            l = i;
        } else {
            if (i < r)
                Szybkie(e, i, r, zamieniono, porownaj);
            r = j;
        }
    }
}

// One field of a sort, taken from its selector once.
struct TKluczSortowania {
    bool wgSciezki;
    int nrPola;
    std::u16string sciezka;
    bool malejaco;
};

std::vector<TKluczSortowania> KluczeSortowania(TArgumenty pola, std::span<const TRodzajSortowania> kierunki) {
    std::vector<TKluczSortowania> klucze;
    klucze.reserve(pola.size());
    for (std::size_t i = 0; i < pola.size(); ++i) {
        // A direction array shorter than the field list goes on with its last direction.
        const TRodzajSortowania kierunek =
            kierunki.empty() ? rsRosnaco : kierunki[i < kierunki.size() ? i : kierunki.size() - 1];
        if (pola[i].JestCalkowity())
            klucze.push_back({false, static_cast<std::int16_t>(pola[i].Calkowita()), {}, kierunek == rsMalejaco});
        else if (pola[i].JestNazwa())
            klucze.push_back({true, CalyObiekt, pola[i].JakoTekst(), kierunek == rsMalejaco});
        else
            ZTErrorFmt(Komunikat(kmBlednyTypIndeksu), {u"PWP"});
    }
    return klucze;
}

std::int32_t PorownajWgKluczy(const TObiektBazowy& a, const TObiektBazowy& b,
                              const std::vector<TKluczSortowania>& klucze, TPorownywaczDanych& porownywacz) {
    porownywacz.ZerujListy();
    if (&a == &b)
        return 0;
    if (!a.Klasa()->Ma(ckObiekt) || !b.Klasa()->Ma(ckObiekt))
        return a.Porownaj(b, &porownywacz);
    for (const TKluczSortowania& klucz : klucze) {
        std::int32_t wynik = 0;
        if (!klucz.wgSciezki) {
            wynik = klucz.nrPola == CalyObiekt ? a.Porownaj(b, &porownywacz)
                                               : static_cast<const TObiekt&>(a).PorownajPole(
                                                     klucz.nrPola, static_cast<const TObiekt&>(b), porownywacz);
        } else {
            const TPole* tu = const_cast<TObiektBazowy&>(a).PoleONazwie(klucz.sciezka);
            const TPole* tam = const_cast<TObiektBazowy&>(b).PoleONazwie(klucz.sciezka);
            wynik = tu != nullptr && tam != nullptr
                        ? tu->Porownaj(*tam, &porownywacz)
                        : static_cast<int>(tu != nullptr) - static_cast<int>(tam != nullptr);
        }
        if (wynik != 0)
            return klucz.malejaco ? -wynik : wynik;
        porownywacz.ZerujListy();
    }
    return 0;
}

} // namespace

bool TListaBazowa::PosortujWgFun(TFunPorownania fun) {
    bool zamieniono = false;
    const auto porownaj = [&](const TObiektBazowy& a, const TObiektBazowy& b) {
        return fun != nullptr ? fun(a, b) : PorownajObiekty(a, b);
    };
    if (FIleObiektow >= 2)
        Szybkie(FObiekty, 0, FIleObiektow - 1, zamieniono, ZPustymi(porownaj));
    return zamieniono;
}

bool TListaBazowa::PosortowanieListy(TArgumenty pola, std::span<const TRodzajSortowania> kierunki,
                                     TRozmiarLiter rozmLiter, std::uint32_t localeID, bool sortuj) {
    const std::vector<TKluczSortowania> klucze = KluczeSortowania(pola, kierunki);
    TPorownywaczDanych porownywacz(nullptr, nullptr, rpWszystkiePola, rozmLiter, localeID, tprRefJakoWskazn);
    const auto porownaj = [&](const TObiektBazowy& a, const TObiektBazowy& b) {
        return PorownajWgKluczy(a, b, klucze, porownywacz);
    };
    if (sortuj) {
        bool zamieniono = false;
        if (FIleObiektow >= 2)
            Szybkie(FObiekty, 0, FIleObiektow - 1, zamieniono, ZPustymi(porownaj));
        return zamieniono;
    }
    for (std::int32_t i = 1; i < FIleObiektow; ++i)
        if (ZPustymi(porownaj)(FObiekty[i - 1], FObiekty[i]) > 0)
            return false;
    return true;
}

bool TListaBazowa::PosortujWgPol(TArgumenty pola, std::span<const TRodzajSortowania> sortowanie,
                                 TRozmiarLiter rozmLiter, std::uint32_t localeID) {
    return PosortowanieListy(pola, sortowanie, rozmLiter, localeID, true);
}

bool TListaBazowa::PosortujWgPol(TArgumenty pola, TRozmiarLiter rozmLiter, TRodzajSortowania sortowanie,
                                 std::uint32_t localeID) {
    return PosortowanieListy(pola, std::span<const TRodzajSortowania>(&sortowanie, 1), rozmLiter, localeID, true);
}

bool TListaBazowa::PosortujWgPol(TArgumenty pola, TRodzajSortowania sortowanie, std::uint32_t localeID) {
    return PosortujWgPol(pola, rlRozmLiterWazny, sortowanie, localeID);
}

bool TListaBazowa::ListaMaPosortowanie(TArgumenty pola, std::span<const TRodzajSortowania> sortowanie,
                                       TRozmiarLiter rozmLiter, std::uint32_t localeID) const {
    // Looking changes nothing; the worker is shared with the sort.
    return const_cast<TListaBazowa*>(this)->PosortowanieListy(pola, sortowanie, rozmLiter, localeID, false);
}

} // namespace ztok
