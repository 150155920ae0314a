// Owning list of elements of one item class, which the list makes itself.
#pragma once

#include "ztok/lists/TListaZObiektami.h"

namespace ztok {

// A concrete list derives from TListaTypu<Element> (below) or declares `static const TKlasa* TypObiektow()`.
class ZTOK_API TListaObiektow : public TListaZObiektami {
    ZTOK_KLASA_DEKL(TListaObiektow)
    static constexpr std::uint32_t CechyKlasy = ckPole | ckObiektBazowy | ckLista | ckListaZObiektami | ckListaObiektow;

    explicit TListaObiektow(TObiektBazowy* wlasciciel = nullptr) : TListaZObiektami(wlasciciel) { jednorodna_ = true; }
    ~TListaObiektow() override;

    // The item class of this list's class. EBladAbstrakcyjny when the class does not say.
    [[nodiscard]] const TKlasa* TypObiektowListy() const;

    // Null appends a fresh item. EBladRzutowania for an object that is not of the item class.
    TObiektBazowy* DodajObiekt(TObiektBazowy* nowyObiekt, std::int32_t gdzie) override;
    // Adds a copy; the object stays with the caller.
    TObiektBazowy* DopiszObiekt(TObiektBazowy* nowyObiekt, std::int32_t gdzie) override;
    void WyrownajDoListy(const TListaBazowa& lista, bool zachowajPojemnosc) override;
    [[nodiscard]] std::int32_t WykonajPorownanie(const TPole& inne, TPorownywaczDanych& porownywacz) const override;
    void WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) override;
    void DajObiektyDoZapisu(TZapisywaczDanych& zapisywacz) const override;
    void WykonajZapis(TStrumien& strumien, TZapisywaczDanych& zapisywacz) const override;
    void WykonajOdczyt(TStrumien& strumien, TOdczytywaczDanych& odczytywacz) override;
    void WykonajZapisTekstowy(TZapisywaczTekstu& zapisywacz) const override;
    void WykonajOdczytTekstowy(TOdczytywaczTekstu& odczytywacz) override;

    // The element that has the values, or a fresh one at the end with the values written into it.
    // One that cannot take them is removed again.
    TObiektBazowy* DopiszObiektGdyBrak(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter,
                                       TRodzajWyszukiwania jakSzukac, std::int32_t& gdzie);
    TObiektBazowy* DopiszObiektGdyBrak(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter = rlRozmLiterWazny,
                                       TRodzajWyszukiwania jakSzukac = rwOdKonca);
    using TListaBazowa::DopiszObiektGdyBrak;
    // The same in a list kept sorted on the fields: the fresh one goes where it belongs.
    TObiektBazowy* DodajObiektGdyBrak(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter,
                                      TRodzajSortowania sortowanie, std::int32_t& gdzie);
    TObiektBazowy* DodajObiektGdyBrak(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter = rlRozmLiterWazny,
                                      TRodzajSortowania sortowanie = rsRosnaco);
    // Whether one item class is the other or derives from it.
    [[nodiscard]] bool MoznaKopiowacZListy(const TKlasa* klasaListy) const;
    [[nodiscard]] bool MoznaKopiowacZListy(const TListaObiektow& lista) const;
    // Copies of lists by fields.
    void KopiujDanePol(const TListaObiektow& zrodlo, TArgumenty pola, bool zerujPozostale);
    void KopiujDaneOprocz(const TListaObiektow& zrodlo, TArgumenty pola);
    void KopiujDaneKlas(const TListaObiektow& zrodlo, TCiag<const TKlasa*> klasy);
    // Takes the other list's elements over: moved when they are of this list's item class, else copied. False when the
    // item classes do not fit, or there is nothing to take.
    bool PrzepnijLubKopiuj(TListaObiektow& lista);

  protected:
    void SprawdzElement(const TObiektBazowy& element) override;

  private:
    [[nodiscard]] const TKlasa& KlasaElementu() const;
    friend class TListaBazowa;
    TObiektBazowy* DodajZDanymi(std::int32_t gdzie, TArgumenty pola, TArgumenty wartosci);
};

// Forward enumerator typed to the item class.
template <class TElement> class TEnumListaObiektow : public TEnumListaBazowa {
  public:
    using TEnumListaBazowa::TEnumListaBazowa;
    [[nodiscard]] TElement* GetCurrent() const noexcept {
        return static_cast<TElement*>(TEnumListaBazowa::GetCurrent());
    }
};

// The list of one item class, typed: every element is a TElement, so the casts are checked by the list.
template <class TElement> class TListaTypu : public TListaObiektow {
  public:
    using TListaObiektow::TListaObiektow;
    using TypElementu = TElement;

    [[nodiscard]] static const TKlasa* TypObiektow() { return KlasaTypu<TElement>(); }
    [[nodiscard]] TElement* operator[](std::int32_t nrObiektu) const noexcept {
        return static_cast<TElement*>(Obiekty(nrObiektu));
    }
    // Appends a fresh item.
    TElement& Dopisz() { return static_cast<TElement&>(*DodajObiekt(nullptr, MaxInt)); }
    // Takes the item over.
    TElement& Dodaj(TWlasny<TElement> nowy, std::int32_t gdzie = MaxInt) {
        return static_cast<TElement&>(*DodajObiekt(nowy.Oddaj(), gdzie));
    }
    [[nodiscard]] TWlasny<TElement> Wyjmij(std::int32_t nrObiektu) {
        return TWlasny<TElement>(static_cast<TElement*>(UsunObiekt(nrObiektu, false, false)));
    }
    [[nodiscard]] TEnumListaObiektow<TElement> GetEnumerator() const noexcept {
        return TEnumListaObiektow<TElement>(*this);
    }
    [[nodiscard]] auto begin() const noexcept { return TIteratorListy<TEnumListaObiektow<TElement>>(GetEnumerator()); }
    [[nodiscard]] auto end() const noexcept { return typename TIteratorListy<TEnumListaObiektow<TElement>>::TKoniec{}; }
};

} // namespace ztok
