// Base list: an ordered array of objects, itself an object of the model.
#pragma once

#include <atomic>
#include <concepts>
#include <cstdint>
#include <span>
#include <vector>

#include "ztok/kernel/TObiektBazowy.h"

namespace ztok {

class TListaBazowa;
class TListaNapisow;
class TListaWskObiektow;

using TListaObiektowBazowych = TObiektBazowy*;          // element slot
using PListaObiektowBazowych = TListaObiektowBazowych*; // growable array of slots

// Comparison of two elements: negative, zero or positive.
using TFunPorownania = std::int16_t (*)(const TObiektBazowy& ObiektA, const TObiektBazowy& ObiektB);

// Walks a list forwards. Does not own or lock the list.
class TEnumListaBazowa {
  public:
    explicit TEnumListaBazowa(const TListaBazowa& lista) noexcept : FLista(&lista) {}
    bool MoveNext() noexcept;
    [[nodiscard]] TObiektBazowy* GetCurrent() const noexcept;

  protected:
    const TListaBazowa* FLista;
    std::int32_t FKtory = -1;
};

// Walks a list backwards. The current element, or any at the end, may be removed meanwhile: no element is met twice and
// none is read past the end.
class TEnumListaBazowaOdKonca {
  public:
    explicit TEnumListaBazowaOdKonca(const TListaBazowa& lista) noexcept;
    ZTOK_API bool MoveNext() noexcept;
    [[nodiscard]] TObiektBazowy* GetCurrent() const noexcept;

  private:
    const TListaBazowa* FLista;
    std::int32_t FKtory;
};

// Makes an enumerator usable in a range loop.
template <class TEnum> class TIteratorListy {
  public:
    struct TKoniec {};
    explicit TIteratorListy(TEnum enumerator) noexcept : enum_(enumerator) { ++*this; }
    TIteratorListy& operator++() noexcept {
        jest_ = enum_.MoveNext();
        return *this;
    }
    [[nodiscard]] auto* operator*() const noexcept { return enum_.GetCurrent(); }
    friend bool operator!=(const TIteratorListy& it, TKoniec /*koniec*/) noexcept { return it.jest_; }

  private:
    TEnum enum_;
    bool jest_ = false;
};

// NOLINTBEGIN(cppcoreguidelines-virtual-class-destructor): nobody owns through this interface
// The list seen from its end: `for (TObiektBazowy* o : lista.ListaOdKonca())`.
class IListaBazowaOdKonca {
  public:
    [[nodiscard]] virtual TEnumListaBazowaOdKonca GetEnumerator() const noexcept = 0;

  protected:
    ~IListaBazowaOdKonca() = default;
};
class TListaBazowaOdKonca final : public IListaBazowaOdKonca {
  public:
    explicit TListaBazowaOdKonca(const TListaBazowa& lista) noexcept : FLista(&lista) {}
    [[nodiscard]] TEnumListaBazowaOdKonca GetEnumerator() const noexcept override {
        return TEnumListaBazowaOdKonca(*FLista);
    }
    [[nodiscard]] auto begin() const noexcept { return TIteratorListy<TEnumListaBazowaOdKonca>(GetEnumerator()); }
    [[nodiscard]] auto end() const noexcept { return TIteratorListy<TEnumListaBazowaOdKonca>::TKoniec{}; }

  private:
    const TListaBazowa* FLista;
};
// NOLINTEND(cppcoreguidelines-virtual-class-destructor)

// The list does not own its elements unless a derived one says so. Indices count from 0; an index out of range gives
// null or false. As a field of its owner, its field number N is the element N and -1 the whole list. Not locked by its
// own operations. The order of the virtual operations is part of the interface.
class ZTOK_API TListaBazowa : public TObiektBazowy {
    ZTOK_KLASA_DEKL(TListaBazowa)
    static constexpr std::uint32_t CechyKlasy = ckPole | ckObiektBazowy | ckLista;

    explicit TListaBazowa(TObiektBazowy* wlasciciel = nullptr) : TObiektBazowy(wlasciciel) {}
    ~TListaBazowa() override;

    // As a field of its owner.
    void ZerujDane() override; // empties the list and gives its array back; frees no element
    [[nodiscard]] std::u16string WartWgMaski(std::u16string_view maska,
                                             const TUstawieniaFormatu* ustawienia = nullptr) const override;
    // An index without an element has no feature: -1 sorts before it. A path that begins with "[?]" means any element:
    // equal when one is; clearing clears all.
    [[nodiscard]] bool PoleMaCeche(std::u16string_view sciezka, const TArgument& cecha,
                                   TRozmiarLiter rozmLiter) const override;
    [[nodiscard]] std::int32_t PorPoleNrZCecha(int nrPola, const TArgument& cecha, TRozmiarLiter rozmLiter,
                                               std::uint32_t localeID) const override;
    [[nodiscard]] std::int32_t PorPoleONazwieZCecha(std::u16string_view sciezka, const TArgument& cecha,
                                                    TRozmiarLiter rozmLiter, std::uint32_t localeID) const override;
    void ZerujPole(std::u16string_view sciezka) override;
    using TObiektBazowy::KlasaIPole;
    bool KlasaIPole(std::u16string_view sciezka, const TKlasa*& klasa, int& nrPola) const override;
    [[nodiscard]] bool PoleNiepuste(int nrPola) const override;
    [[nodiscard]] bool PoleDoZapisu(int nrPola) const override;
    // False removes and frees element N; for -1 it empties the list. True does nothing.
    void UstawNiepuste(int nrPola, bool niepuste) override;
    // Counts first, then element by element on the listed fields (or all but them).
    [[nodiscard]] std::int32_t WykonajPorownWgPol(const TObiektBazowy& inny, TArgumenty pola,
                                                  TPorownywaczDanych& porownywacz) const override;
    [[nodiscard]] std::int32_t WykonajPorownOproczPol(const TObiektBazowy& inny, TArgumenty pola,
                                                      TPorownywaczDanych& porownywacz) const override;
    void ZerujDanePol(TArgumenty pola) override;
    void ZerujDaneOprocz(TArgumenty pola) override;
    bool ObiektIPole(std::u16string_view sciezka, bool tworz, TObiektBazowy*& obiekt, int& nrPola) override;
    void PrzytnijPolaWgRozm(bool trymuj) override;
    void TrymujPolaTekstowe(bool podobiektyTez) override;
    [[nodiscard]] std::u16string OpisTekstowy() const override;
    [[nodiscard]] bool SaDaneUnicode(int nrPola) const override;

    // Appends the object; an owning list takes it over.
    virtual void PrzypnijObiekt(TObiektBazowy* obiekt);
    // Called after `ile` elements were moved here from another list, to index `od`.
    virtual void PoPrzeniesieniu(TListaBazowa& lista, std::int32_t od, std::int32_t ile);
    virtual bool PrzeniesObiektyWgCech(TListaBazowa& dane, TArgumenty pola, TArgumenty wartosci,
                                       TRozmiarLiter rozmLiter, bool majace);
    // Inserts the object at the index, which is clamped into the list (MaxInt appends); returns it.
    virtual TObiektBazowy* DodajObiekt(TObiektBazowy* nowyObiekt, std::int32_t gdzie);
    // Adds the object as the kind of list does: itself, or a copy of it.
    virtual TObiektBazowy* DopiszObiekt(TObiektBazowy* nowyObiekt, std::int32_t gdzie);
    // Takes an element out of the other list and inserts it here; one that this list refuses stays there. A bad index
    // inserts null, as this list does that.
    virtual TObiektBazowy* PrzeniesZListy(TListaBazowa& lista, std::int32_t nrObiektu, std::int32_t gdzie);
    virtual bool PrzeniesObiektyGdyBrak(TListaBazowa& dane, TArgumenty pola, TRozmiarLiter rozmLiter);
    virtual bool PrzeniesDane(TListaBazowa& dane);
    // Removes the element; freed, or returned (null when it was freed or the index is out of range). The array shrinks
    // by fixed steps unless its capacity is to be kept.
    virtual TObiektBazowy* UsunObiekt(std::int32_t nrObiektu, bool zwolnij, bool zachowajPojemnosc);
    // Removes the elements that have the values (or that do not); true when any was removed.
    virtual bool UsunObiekty(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter);
    virtual bool UsunObiektyOprocz(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter);
    // Removes the elements that the pointer list holds.
    virtual bool UsunTeObiekty(const TListaWskObiektow& obiekty, bool zachowajPojemnosc);
    // Of each group of elements equal on the fields (on everything when there are none) keeps the first.
    virtual bool UsunDuplikaty(TArgumenty pola, TRozmiarLiter rozmLiter);
    // Cuts the list to the size; then, unless the capacity is to be kept, sets the capacity to that size, also upwards.
    virtual void SkrocListe(std::int32_t nowyRozm, bool zachowajPojemnosc);
    // Makes the elements correspond one to one to those of the other list.
    virtual void WyrownajDoListy(const TListaBazowa& lista, bool zachowajPojemnosc);
    [[nodiscard]] virtual std::int16_t PorownajObiekty(const TObiektBazowy& obiektA,
                                                       const TObiektBazowy& obiektB) const;

    [[nodiscard]] std::int32_t IleObiektow() const noexcept {
        ZamknijDziury();
        return FIleObiektow;
    }
    [[nodiscard]] bool ListaPusta() const noexcept { return IleObiektow() == 0; }
    // The element, or null for an index out of range.
    [[nodiscard]] TObiektBazowy* Obiekty(std::int32_t nrObiektu) const noexcept {
        ZamknijDziury();
        return nrObiektu >= 0 && nrObiektu < FIleObiektow ? FObiekty[nrObiektu] : nullptr;
    }
    [[nodiscard]] std::int32_t Pojemnosc() const noexcept {
        ZamknijDziury();
        return FPojemnosc;
    }
    // Reallocates the array to exactly that many slots; the caller must not go below the count.
    void UstawPojemnosc(std::int32_t pojemnosc);
    [[nodiscard]] TEnumListaBazowa GetEnumerator() const noexcept { return TEnumListaBazowa(*this); }
    [[nodiscard]] auto begin() const noexcept { return TIteratorListy<TEnumListaBazowa>(GetEnumerator()); }
    [[nodiscard]] auto end() const noexcept { return TIteratorListy<TEnumListaBazowa>::TKoniec{}; }
    [[nodiscard]] TListaBazowaOdKonca ListaOdKonca() const noexcept { return TListaBazowaOdKonca(*this); }

    // Whether every element is known to be exactly of the item class.
    [[nodiscard]] bool Jednorodna() const noexcept { return jednorodna_; }

    // Adds the object unless an element equals it on the fields; returns the element. The caller keeps an object that
    // was not added.
    template <std::derived_from<TObiektBazowy> O>
    TObiektBazowy* DopiszObiektGdyBrak(O* nowyObiekt, TArgumenty pola, TRozmiarLiter rozmLiter) {
        return DopiszTenGdyBrak(nowyObiekt, pola, rozmLiter);
    }
    TObiektBazowy* UsunTenObiekt(const TObiektBazowy* obiekt, bool zwolnij);
    TObiektBazowy* UsunTakiObiekt(const TObiektBazowy& obiekt, bool zwolnij);
    // Removes every null slot, keeping the order.
    void UsunObiektyNil(bool zachowajPojemnosc);
    bool PrzeniesObiekt(std::int32_t nrObiektu, std::int32_t gdzie);
    // Swaps two elements; the caller passes valid indices.
    void ZamienObiekty(std::int32_t p_Poz1, std::int32_t p_Poz2) noexcept {
        ZamknijDziury();
        TObiektBazowy* obiekt = FObiekty[p_Poz1];
        FObiekty[p_Poz1] = FObiekty[p_Poz2];
        FObiekty[p_Poz2] = obiekt;
    }
    // Writes the values into every element. EBladRzutowania for an element that has no numbered fields.
    void WpiszDaneDoPol(TArgumenty p_KtorePola, TArgumenty p_JakieWartosci);

    // Splits "[number]" off a path, and a "." after it; false, and nothing done, when the path does not begin so.
    static bool WydzielNumerElem(std::u16string_view& sciezka, std::u16string_view& numer) noexcept;
    // The element that the text names: "Max", an index, or conditions name=value joined by ";".
    TObiektBazowy* DajElemListy(std::u16string_view opis, bool tworz);
    TObiektBazowy* DajElemListyWCech(std::u16string_view opis, bool tworz);

    // Linear searches from an index (MaxInt: from the natural end). A comparer's records are cleared before each
    // element. On a miss `gdzie` is -1 from the end and the count
    // from the start.
    bool JestObiekt(TArgumenty pola, TArgumenty wartosci, std::int32_t& gdzie,
                    TRozmiarLiter rozmLiter = rlRozmLiterWazny, TRodzajWyszukiwania jakSzukac = rwOdKonca,
                    std::int32_t zacznijOd = MaxInt) const;
    [[nodiscard]] bool JestObiekt(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter = rlRozmLiterWazny,
                                  TRodzajWyszukiwania jakSzukac = rwOdKonca, std::int32_t zacznijOd = MaxInt) const;
    bool JestInnyObiekt(TArgumenty pola, TArgumenty wartosci, std::int32_t& gdzie,
                        TRozmiarLiter rozmLiter = rlRozmLiterWazny, TRodzajWyszukiwania jakSzukac = rwOdKonca,
                        std::int32_t zacznijOd = MaxInt) const;
    [[nodiscard]] bool JestInnyObiekt(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter = rlRozmLiterWazny,
                                      TRodzajWyszukiwania jakSzukac = rwOdKonca, std::int32_t zacznijOd = MaxInt) const;
    bool JestObiektTakiJak(const TObiektBazowy& obiekt, TArgumenty pola, std::int32_t& gdzie,
                           TRozmiarLiter rozmLiter = rlRozmLiterWazny, TRodzajWyszukiwania jakSzukac = rwOdKonca,
                           std::int32_t zacznijOd = MaxInt) const;
    [[nodiscard]] bool JestObiektTakiJak(const TObiektBazowy& obiekt, TArgumenty pola,
                                         TRozmiarLiter rozmLiter = rlRozmLiterWazny,
                                         TRodzajWyszukiwania jakSzukac = rwOdKonca,
                                         std::int32_t zacznijOd = MaxInt) const;
    bool JestTakiObiekt(const TObiektBazowy& obiekt, std::int32_t& gdzie, TRodzajWyszukiwania jakSzukac = rwOdKonca,
                        std::int32_t zacznijOd = MaxInt, TPorownywaczDanych* porownywacz = nullptr) const;
    [[nodiscard]] bool JestTakiObiekt(const TObiektBazowy& obiekt, TRodzajWyszukiwania jakSzukac = rwOdKonca,
                                      std::int32_t zacznijOd = MaxInt, TPorownywaczDanych* porownywacz = nullptr) const;
    // By identity, from the last element to the first; -1 when absent.
    [[nodiscard]] std::int32_t ZnajdzObiekt(const TObiektBazowy* obiekt) const noexcept;
    // Bisection of a list sorted on the fields: the first element that has the values, or where they belong.
    bool WyszukajWgPol(TArgumenty p_JakiePola, TArgumenty p_JakieWartosci, std::int32_t& p_Gdzie,
                       TRozmiarLiter p_RozmLiter = rlRozmLiterWazny, TRodzajSortowania p_Sortowanie = rsRosnaco,
                       std::uint32_t p_LocaleID = LocaleWin1250) const;
    [[nodiscard]] bool WyszukajWgPol(TArgumenty p_JakiePola, TArgumenty p_JakieWartosci,
                                     TRozmiarLiter p_RozmLiter = rlRozmLiterWazny,
                                     TRodzajSortowania p_Sortowanie = rsRosnaco,
                                     std::uint32_t p_LocaleID = LocaleWin1250) const;
    bool WyszukajWgPol(TArgumenty p_JakiePola, TArgumenty p_JakieWartosci, std::int32_t& p_Gdzie,
                       TRodzajSortowania p_Sortowanie, std::uint32_t p_LocaleID = LocaleWin1250) const {
        return WyszukajWgPol(p_JakiePola, p_JakieWartosci, p_Gdzie, rlRozmLiterWazny, p_Sortowanie, p_LocaleID);
    }
    // The same with the values of an example object. As templates they leave what stands in braces to the list of
    // fields: a {0} could be a null owner of an object too.
    template <std::derived_from<TObiektBazowy> O>
    bool WyszukajWgPol(const O& p_Obiekt, TArgumenty p_JakiePola, std::int32_t& p_Gdzie,
                       TRozmiarLiter p_RozmLiter = rlRozmLiterWazny, TRodzajSortowania p_Sortowanie = rsRosnaco,
                       std::uint32_t p_LocaleID = LocaleWin1250) const {
        return WyszukajJak(p_Obiekt, p_JakiePola, p_Gdzie, p_RozmLiter, p_Sortowanie, p_LocaleID);
    }
    template <std::derived_from<TObiektBazowy> O>
    [[nodiscard]] bool
    WyszukajWgPol(const O& p_Obiekt, TArgumenty p_JakiePola, TRozmiarLiter p_RozmLiter = rlRozmLiterWazny,
                  TRodzajSortowania p_Sortowanie = rsRosnaco, std::uint32_t p_LocaleID = LocaleWin1250) const {
        std::int32_t gdzie = 0;
        return WyszukajJak(p_Obiekt, p_JakiePola, gdzie, p_RozmLiter, p_Sortowanie, p_LocaleID);
    }
    template <std::derived_from<TObiektBazowy> O>
    bool WyszukajWgPol(const O& p_Obiekt, TArgumenty p_JakiePola, std::int32_t& p_Gdzie, TRodzajSortowania p_Sortowanie,
                       std::uint32_t p_LocaleID = LocaleWin1250) const {
        return WyszukajJak(p_Obiekt, p_JakiePola, p_Gdzie, rlRozmLiterWazny, p_Sortowanie, p_LocaleID);
    }
    // The first and last index of the run of elements that have the values; on a miss both are the insertion index.
    bool WyszukajZakres(TArgumenty pola, TArgumenty wartosci, std::int32_t& od, std::int32_t& doKtorego,
                        TRozmiarLiter rozmLiter = rlRozmLiterWazny, TRodzajSortowania sortowanie = rsRosnaco,
                        std::uint32_t localeID = LocaleWin1250) const;

    // Sorts in place by a quicksort with a fixed order of exchanges; not stable. True when any two elements were
    // exchanged. No function: by full comparison of the elements. A field counts from its own rule: missing equals
    // default. A direction array shorter than the field list goes on with its last direction; elements without numbered
    // fields compare as a whole, in the first direction. ZTException for a selector that is neither a number nor a
    // name, and when a comparison changes the list.
    bool PosortujWgFun(TFunPorownania fun = nullptr);
    bool PosortujWgPol(TArgumenty pola, TCiag<TRodzajSortowania> sortowanie, TRozmiarLiter rozmLiter = rlRozmLiterWazny,
                       std::uint32_t localeID = LocaleWin1250);
    bool PosortujWgPol(TArgumenty pola, TRozmiarLiter rozmLiter, TRodzajSortowania sortowanie,
                       std::uint32_t localeID = LocaleWin1250);
    bool PosortujWgPol(TArgumenty pola, TRodzajSortowania sortowanie = rsRosnaco,
                       std::uint32_t localeID = LocaleWin1250);
    // Whether the list is in the order that PosortujWgPol would give.
    [[nodiscard]] bool ListaMaPosortowanie(TArgumenty pola, TCiag<TRodzajSortowania> sortowanie,
                                           TRozmiarLiter rozmLiter = rlRozmLiterWazny,
                                           std::uint32_t localeID = LocaleWin1250) const;

    // Adds elements of another list (null: none), in its order, as DopiszObiekt does: those that have the values, that
    // do not, that have no equal here, or all. KopiujObiektyOCechach empties this list first. True when any was added.
    bool DopiszObiektyOCechach(const TListaBazowa* dane, TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter);
    bool DopiszObiektyOprocz(const TListaBazowa* dane, TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter);
    bool DopiszObiektyGdyBrak(const TListaBazowa* dane, TArgumenty pola, TRozmiarLiter rozmLiter);
    bool KopiujObiektyOCechach(const TListaBazowa* dane, TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter);
    bool DopiszDane(const TListaBazowa* dane);
    // The same, taking the elements out of the other list.
    bool PrzeniesObiektyOCechach(TListaBazowa& dane, TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter);
    bool PrzeniesObiektyOprocz(TListaBazowa& dane, TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter);
    // The different texts of the field at the path, in order of first occurrence; elements without it are left out.
    void DajListeWartPola(std::u16string_view sciezka, TListaNapisow& wartosci) const;
    // The text of the field at the path for every element (empty where it is missing), with the element's address as
    // the value.
    void WpiszDoStrings(std::u16string_view sciezka, TListaNapisow& napisy) const;

  protected:
    bool PosortowanieListy(TArgumenty pola, TCiag<TRodzajSortowania> kierunki, TRozmiarLiter rozmLiter,
                           std::uint32_t localeID, bool sortuj);
    // Refuses an element that the list cannot hold: EBladRzutowania.
    virtual void SprawdzElement(const TObiektBazowy& element);
    enum ERodzajWyboru : std::uint8_t { rwyWszystkie, rwyMajace, rwyNieMajace, rwyBrakujace };
    bool PrzeniesWybrane(TListaBazowa& dane, TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter,
                         ERodzajWyboru wybor);
    // The slot of an element that was there: callbacks may have moved it; -1 when it has left. The second nulls the
    // slot of one that has just been freed; whether there was one.
    [[nodiscard]] std::int32_t MiejsceElementu(std::int32_t gdzie, const TObiektBazowy* obiekt) const noexcept;
    bool NilujPoZwolnieniu(std::int32_t gdzie, const TObiektBazowy* obiekt) noexcept;
    void ZwiekszPojemnosc();
    // The capacity that a list of so many elements is left with after one was removed.
    [[nodiscard]] static std::int32_t PojemnoscPoUsunieciu(std::int32_t pojemnosc, std::int32_t ile) noexcept {
        return pojemnosc >= 33 && pojemnosc - ile > pojemnosc / 4 ? ile + ile / 8 : pojemnosc;
    }
    bool WykonajUsunDuplikaty(TArgumenty pola, TRozmiarLiter rozmLiter, bool zwolnijRef, bool zwolnij);

    // Elements that died may have left holes: a reference list whose targets die one after another takes them all out
    // at once, before it is next looked at. Only a TListaRefObiektow itself, no class derived from it, has holes; what
    // reads its members directly closes them first. Several threads may look at a list at once.
    void ZamknijDziury() const noexcept {
        if (dziury_.load(std::memory_order_acquire) != bezDziur) [[unlikely]]
            WykonajZamkniecie();
    }
    [[nodiscard]] bool MaDziury() const noexcept { return dziury_.load(std::memory_order_relaxed) != bezDziur; }

    PListaObiektowBazowych FObiekty = nullptr; // slots at and beyond the count hold nothing
    std::int32_t FIleObiektow = 0;
    std::int32_t FPojemnosc = 0;
    bool jednorodna_ = false; // kept by lists of one item class
    enum EDziury : std::uint8_t { bezDziur, saDziury, zamykane };
    mutable std::atomic<EDziury> dziury_{bezDziur};

  private:
    friend class TJadroKlas;
    bool WyszukajJak(const TObiektBazowy& obiekt, TArgumenty pola, std::int32_t& gdzie, TRozmiarLiter rozmLiter,
                     TRodzajSortowania sortowanie, std::uint32_t localeID) const;
    TObiektBazowy* DopiszTenGdyBrak(TObiektBazowy* nowyObiekt, TArgumenty pola, TRozmiarLiter rozmLiter);
    void WykonajZamkniecie() const noexcept;
    void ZmienPojemnosc(std::int32_t pojemnosc);
    // Whether the path begins with any element; what follows it.
    static bool KazdyElement(std::u16string_view sciezka, std::u16string_view& reszta) noexcept;
    // Refuses an element that a move must not bring here.
    void SprawdzPrzenoszony(const TListaBazowa& dane, const TObiektBazowy& element);
    // Appends an element of the other list, in room that is there; its slot there is the caller's business.
    void PrzejmijSlot(TListaBazowa& dane, std::int32_t ktory) noexcept;
    template <class F>
    std::int32_t PorownajElementy(const TObiektBazowy& inny, TPorownywaczDanych& porownywacz, const F& porownaj) const;
    template <class F> bool DopiszWybrane(const TListaBazowa* dane, const F& wybrany);
    std::int32_t PrzeniesBrakujace(TListaBazowa& dane, TArgumenty pola, TRozmiarLiter rozmLiter);
    template <class F> std::int32_t PrzeniesSloty(TListaBazowa& dane, const F& wybrany);
    template <class F> bool PosortujWMiejscu(const F& porownaj);
    template <class F> bool SzukajBisekcja(std::int32_t& gdzie, TRodzajSortowania sortowanie, const F& porownaj) const;
    [[nodiscard]] bool MaTakiJak(const TObiektBazowy& obiekt, TArgumenty pola, TRozmiarLiter rozmLiter) const;
    template <class F>
    bool Szukaj(std::int32_t& gdzie, TRodzajWyszukiwania jakSzukac, std::int32_t zacznijOd, F pasuje) const;
};

inline bool TEnumListaBazowa::MoveNext() noexcept {
    const bool jest = FKtory < FLista->IleObiektow() - 1;
    if (jest)
        ++FKtory;
    return jest;
}
inline TObiektBazowy* TEnumListaBazowa::GetCurrent() const noexcept { return FLista->Obiekty(FKtory); }
inline TEnumListaBazowaOdKonca::TEnumListaBazowaOdKonca(const TListaBazowa& lista) noexcept
    : FLista(&lista), FKtory(lista.IleObiektow()) {}
inline TObiektBazowy* TEnumListaBazowaOdKonca::GetCurrent() const noexcept { return FLista->Obiekty(FKtory); }

} // namespace ztok
