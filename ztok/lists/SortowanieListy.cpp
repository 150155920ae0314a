// Sorting of a list, and the questions that a sorted list answers.
#include <new>
#include <type_traits>
#include <utility>

#include "ztok/fields/Konwersje.h"
#include "ztok/fields/TPolaDaty.h"
#include "ztok/fields/TPolaLiczbowe.h"
#include "ztok/fields/TPolaTekstowe.h"
#include "ztok/kernel/Selektory.h"
#include "ztok/kernel/TObiekt.h"
#include "ztok/lists/TListaBazowa.h"
#include "ztok/lists/TPorownywaczDanych.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {

namespace {

// A slot without an object stands before every object.
template <class F> std::int32_t ZPustymi(const TObiektBazowy* a, const TObiektBazowy* b, const F& porownaj) {
    return a != nullptr && b != nullptr ? porownaj(*a, *b)
                                        : static_cast<int>(a != nullptr) - static_cast<int>(b != nullptr);
}

// In-place quicksort with a fixed order of exchanges, so that equal elements always end where they do: the pivot is the
// middle element, both ends move towards it, and elements equal to it are exchanged too. `porownaj` gives the sign of
// its first argument minus the second. Whatever it answers, I and J stay within [L, R].
template <class E, class F> void Szybkie(E* e, std::int32_t l, std::int32_t r, bool& zamieniono, const F& porownaj) {
    while (l < r) {
        const E os = e[l + (r - l) / 2];
        std::int32_t i = l;
        std::int32_t j = r;
        do {
            while (i < r && porownaj(e[i], os) < 0)
                ++i;
            while (j > l && porownaj(e[j], os) > 0)
                --j;
            if (i <= j) {
                if (i != j) {
                    std::swap(e[i], e[j]);
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

std::vector<TKluczSortowania> KluczeSortowania(TArgumenty pola, TCiag<TRodzajSortowania> kierunki) {
    std::vector<TKluczSortowania> klucze;
    klucze.reserve(pola.size());
    for (std::size_t i = 0; i < pola.size(); ++i) {
        // A direction array shorter than the field list goes on with its last direction.
        const TRodzajSortowania kierunek =
            kierunki.empty() ? rsRosnaco : kierunki[i < kierunki.size() ? i : kierunki.size() - 1];
        if (pola[i].Tag() == TTag::Integer)
            klucze.push_back({false, static_cast<std::int16_t>(pola[i].Calkowita()), {}, kierunek == rsMalejaco});
        else if (pola[i].JestNazwa())
            klucze.push_back({true, CalyObiekt, pola[i].JakoTekst(), kierunek == rsMalejaco});
        else
            ZTErrorFmt(Komunikat(kmBlednyTypIndeksu), {u"PWP"});
    }
    return klucze;
}

std::int32_t PorownajWgKluczy(const TObiektBazowy& a, const TObiektBazowy& b,
                              const std::vector<TKluczSortowania>& klucze, bool malejaco,
                              TPorownywaczDanych& porownywacz) {
    porownywacz.ZerujListy();
    if (&a == &b)
        return 0;
    if (!a.Klasa()->Ma(ckObiekt) || !b.Klasa()->Ma(ckObiekt)) {
        const std::int32_t wynik = TPorownywaczDanych::PorownajDowolne(a, b, &porownywacz);
        return malejaco ? -wynik : wynik;
    }
    for (const TKluczSortowania& klucz : klucze) {
        std::int32_t wynik = 0;
        if (!klucz.wgSciezki) {
            wynik = klucz.nrPola == CalyObiekt ? TPorownywaczDanych::PorownajDowolne(a, b, &porownywacz)
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

// --- a sort by plain values: they are taken out of the objects once, and the same quicksort runs over rows of them

// The value of one field of one element.
struct TWartoscKlucza {
    enum : std::uint8_t { bez, jest, domyslna }; // a missing value equals the default one and stands before any other
    union {
        const char16_t* znaki;
        double rzeczywista;
        std::int64_t calkowita = 0;
    };
    std::uint32_t dlugosc = 0;
    std::uint8_t stan = bez;
};

template <class T> int Znak(T a, T b) { return static_cast<int>(a > b) - static_cast<int>(a < b); }

class TSortWgWartosci {
  public:
    TSortWgWartosci(const std::vector<TKluczSortowania>& klucze, const TPorownywaczDanych& porownywacz)
        : klucze_(klucze), kody_(klucze.size(), kpInne), rozmLiter_(porownywacz.RozmLiter),
          localeID_(porownywacz.LocaleID) {}

    // Takes the values out; false when some element or field must be asked itself.
    bool Przygotuj(PListaObiektowBazowych elementy, std::int32_t ile) {
        for (const TKluczSortowania& klucz : klucze_)
            if (klucz.wgSciezki)
                return false;
        wiersze_.resize(static_cast<std::size_t>(ile));
        dalsze_.resize(wiersze_.size() * (klucze_.size() - 1));
        for (std::size_t i = 0; i < wiersze_.size(); ++i) {
            TObiektBazowy* element = elementy[i];
            if (element == nullptr || !element->Klasa()->Ma(ckObiekt))
                return false;
            wiersze_[i].element = element;
            wiersze_[i].dalej = i * (klucze_.size() - 1);
            for (std::size_t k = 0; k < klucze_.size(); ++k) {
                const TPole* pole = nullptr;
                unsigned kod = kpInne;
                if (!static_cast<const TObiekt*>(element)->DajPoleWprost(klucze_[k].nrPola, pole, kod))
                    return false;
                if (pole == nullptr)
                    continue;
                if (kody_[k] == kpInne)
                    kody_[k] = kod;
                if (kody_[k] != kod || !Pobierz(*pole, kod, k == 0 ? wiersze_[i].pierwsza : Dalsza(wiersze_[i], k)))
                    return false;
            }
        }
        return true;
    }

    bool Sortuj(PListaObiektowBazowych elementy) {
        bool zamieniono = false;
        Szybkie(wiersze_.data(), 0, static_cast<std::int32_t>(wiersze_.size()) - 1, zamieniono,
                [this](const TWiersz& a, const TWiersz& b) { return Porownaj(a, b); });
        for (std::size_t i = 0; i < wiersze_.size(); ++i)
            elementy[i] = wiersze_[i].element;
        return zamieniono;
    }

  private:
    struct TWiersz {
        TObiektBazowy* element = nullptr;
        TWartoscKlucza pierwsza;
        std::size_t dalej = 0; // where the values of the other fields begin
    };

    TWartoscKlucza& Dalsza(const TWiersz& wiersz, std::size_t k) { return dalsze_[wiersz.dalej + k - 1]; }

    template <class P> static bool Tekst(const TPole& pole, TWartoscKlucza& wartosc) {
        const std::u16string_view tekst = static_cast<const P&>(pole).Wartosc();
        wartosc.znaki = tekst.data();
        wartosc.dlugosc = static_cast<std::uint32_t>(tekst.size());
        wartosc.stan = tekst.empty() ? TWartoscKlucza::domyslna : TWartoscKlucza::jest;
        return tekst.size() < 0xFFFFFFFF;
    }
    template <class P> static bool Liczba(const TPole& pole, TWartoscKlucza& wartosc) {
        const auto liczba = static_cast<const P&>(pole).Wartosc();
        if constexpr (std::is_floating_point_v<decltype(liczba)>) {
            if (liczba != liczba)
                return false; // NaN has rules of its own
            wartosc.rzeczywista = liczba;
        } else {
            wartosc.calkowita = liczba;
        }
        wartosc.stan = liczba == 0 ? TWartoscKlucza::domyslna : TWartoscKlucza::jest;
        return true;
    }
    static bool Pobierz(const TPole& pole, unsigned kod, TWartoscKlucza& wartosc) {
        switch (kod) {
        case kpString:
            return Tekst<TPoleString>(pole, wartosc);
        case kpByte:
            return Liczba<TPoleByte>(pole, wartosc);
        case kpSmallint:
            return Liczba<TPoleSmallint>(pole, wartosc);
        case kpWord:
            return Liczba<TPoleWord>(pole, wartosc);
        case kpInteger:
            return Liczba<TPoleInteger>(pole, wartosc);
        case kpCardinal:
            return Liczba<TPoleCardinal>(pole, wartosc);
        case kpInt64:
            return Liczba<TPoleInt64>(pole, wartosc);
        case kpDouble:
            return Liczba<TPoleDouble>(pole, wartosc);
        case kpDate:
            return Liczba<TPoleDate>(pole, wartosc);
        case kpTime:
            return Liczba<TPoleTime>(pole, wartosc);
        case kpDateTime:
            return Liczba<TPoleDateTime>(pole, wartosc);
        default:
            return false;
        }
    }

    [[nodiscard]] int Porownaj(unsigned kod, const TWartoscKlucza& a, const TWartoscKlucza& b) const {
        if (a.stan == TWartoscKlucza::bez || b.stan == TWartoscKlucza::bez)
            return static_cast<int>(a.stan == TWartoscKlucza::jest) - static_cast<int>(b.stan == TWartoscKlucza::jest);
        switch (kod) {
        case kpString:
            return PorownajTeksty({a.znaki, a.dlugosc}, {b.znaki, b.dlugosc}, rozmLiter_, localeID_);
        case kpDouble:
        case kpDate:
        case kpTime:
        case kpDateTime:
            return Znak(a.rzeczywista, b.rzeczywista);
        default:
            return Znak(a.calkowita, b.calkowita);
        }
    }
    int Porownaj(const TWiersz& a, const TWiersz& b) {
        int wynik = Porownaj(kody_[0], a.pierwsza, b.pierwsza);
        std::size_t k = 0;
        while (wynik == 0 && ++k < klucze_.size())
            wynik = Porownaj(kody_[k], Dalsza(a, k), Dalsza(b, k));
        return wynik != 0 && klucze_[k].malejaco ? -wynik : wynik;
    }

    const std::vector<TKluczSortowania>& klucze_;
    std::vector<unsigned> kody_; // what the fields are, kpInne while none has a value
    TRozmiarLiter rozmLiter_;
    std::uint32_t localeID_;
    std::vector<TWiersz> wiersze_;
    std::vector<TWartoscKlucza> dalsze_;
};

// True when the sort was made over values, with its answer.
bool PosortujWgWartosci(PListaObiektowBazowych elementy, std::int32_t ile, const std::vector<TKluczSortowania>& klucze,
                        const TPorownywaczDanych& porownywacz, bool& zamieniono) {
    constexpr std::int32_t kWarto = 8; // fewer are sorted before the values are out
    if (ile < kWarto || klucze.empty())
        return false;
    try {
        TSortWgWartosci sort(klucze, porownywacz);
        if (!sort.Przygotuj(elementy, ile))
            return false;
        zamieniono = sort.Sortuj(elementy);
        return true;
    } catch (const std::bad_alloc&) {
        return false; // the sort in place takes no memory
    }
}

} // namespace

template <class F> bool TListaBazowa::PosortujWMiejscu(const F& porownaj) {
    ZamknijDziury();
    bool zamieniono = false;
    TObiektBazowy** const tablica = FObiekty;
    const std::int32_t ile = FIleObiektow;
    if (ile >= 2)
        Szybkie(tablica, 0, ile - 1, zamieniono, [&](const TObiektBazowy* a, const TObiektBazowy* b) {
            const std::int32_t wynik = ZPustymi(a, b, porownaj);
            if (FObiekty != tablica || FIleObiektow != ile || MaDziury())
                [[unlikely]] // the slots are others now, or gone
                ZTErrorFmt(Komunikat(kmListaZmieniona), {NazwaKlasy()});
            return wynik;
        });
    return zamieniono;
}

bool TListaBazowa::PosortujWgFun(TFunPorownania fun) {
    return PosortujWMiejscu([&](const TObiektBazowy& a, const TObiektBazowy& b) {
        return fun != nullptr ? fun(a, b) : PorownajObiekty(a, b);
    });
}

bool TListaBazowa::PosortowanieListy(TArgumenty pola, TCiag<TRodzajSortowania> kierunki, TRozmiarLiter rozmLiter,
                                     std::uint32_t localeID, bool sortuj) {
    SprawdzSelektoryElementow(u"PWP", this, pola);
    const std::vector<TKluczSortowania> klucze = KluczeSortowania(pola, kierunki);
    TPorownywaczDanych porownywacz(nullptr, nullptr, rpWszystkiePola, rozmLiter, localeID, tprRefJakoWskazn);
    const bool malejaco = !kierunki.empty() && kierunki.front() == rsMalejaco;
    const auto porownaj = [&](const TObiektBazowy& a, const TObiektBazowy& b) {
        return PorownajWgKluczy(a, b, klucze, malejaco, porownywacz);
    };
    ZamknijDziury();
    if (sortuj) {
        bool zamieniono = false;
        return PosortujWgWartosci(FObiekty, FIleObiektow, klucze, porownywacz, zamieniono) ? zamieniono
                                                                                           : PosortujWMiejscu(porownaj);
    }
    for (std::int32_t i = 1; i < FIleObiektow; ++i)
        if (ZPustymi(Obiekty(i - 1), Obiekty(i), porownaj) > 0)
            return false;
    return true;
}

bool TListaBazowa::PosortujWgPol(TArgumenty pola, TCiag<TRodzajSortowania> sortowanie, TRozmiarLiter rozmLiter,
                                 std::uint32_t localeID) {
    return PosortowanieListy(pola, sortowanie, rozmLiter, localeID, true);
}

bool TListaBazowa::PosortujWgPol(TArgumenty pola, TRozmiarLiter rozmLiter, TRodzajSortowania sortowanie,
                                 std::uint32_t localeID) {
    return PosortowanieListy(pola, {&sortowanie, 1}, rozmLiter, localeID, true);
}

bool TListaBazowa::PosortujWgPol(TArgumenty pola, TRodzajSortowania sortowanie, std::uint32_t localeID) {
    return PosortujWgPol(pola, rlRozmLiterWazny, sortowanie, localeID);
}

bool TListaBazowa::ListaMaPosortowanie(TArgumenty pola, TCiag<TRodzajSortowania> sortowanie, TRozmiarLiter rozmLiter,
                                       std::uint32_t localeID) const {
    // Looking changes nothing; the worker is shared with the sort.
    return const_cast<TListaBazowa*>(this)->PosortowanieListy(pola, sortowanie, rozmLiter, localeID, false);
}

} // namespace ztok
