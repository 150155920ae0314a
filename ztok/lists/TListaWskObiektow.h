// Lists that point at objects which live elsewhere.
#pragma once

#include "ztok/lists/TListaBazowa.h"

namespace ztok {

// Never frees an element. In a stream it holds the numbers of its elements.
class ZTOK_API TListaWskObiektow : public TListaBazowa {
    ZTOK_KLASA_DEKL(TListaWskObiektow)
    static constexpr std::uint32_t CechyKlasy = ckPole | ckObiektBazowy | ckLista | ckListaWsk;

    explicit TListaWskObiektow(TObiektBazowy* wlasciciel = nullptr) : TListaBazowa(wlasciciel) {}
    ~TListaWskObiektow() override;

    TObiektBazowy* UsunObiekt(std::int32_t nrObiektu, bool zwolnij, bool zachowajPojemnosc) override;
    bool UsunObiekty(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter) override;
    bool UsunObiektyOprocz(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter) override;
    // Removes every occurrence of each.
    bool UsunTeObiekty(const TListaWskObiektow& obiekty, bool zachowajPojemnosc) override;
    bool UsunDuplikaty(TArgumenty pola, TRozmiarLiter rozmLiter) override;
    // The object is about to die: removes every occurrence of it.
    void ZerujRefDo(TObiektBazowy* cel) override;
    // New slots are null.
    void WyrownajDoListy(const TListaBazowa& lista, bool zachowajPojemnosc) override;
    void PoPrzeniesieniu(TListaBazowa& lista, std::int32_t od, std::int32_t ile) override;
    // Called after elements were moved here from another list, to index `od` and beyond: an element that the other list
    // no longer holds drops it from its references.
    void PoPrzeniesObiekty(TListaBazowa& lista, std::int32_t od);
    // Cycles end: a list that is being compared already counts as equal.
    [[nodiscard]] std::int32_t WykonajPorownanie(const TPole& inne, TPorownywaczDanych& porownywacz) const override;
    void WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) override;
    void WykonajZapis(TStrumien& strumien, TZapisywaczDanych& zapisywacz) const override;
    void WykonajOdczyt(TStrumien& strumien, TOdczytywaczDanych& odczytywacz) override;
    void WykonajZapisTekstowy(TZapisywaczTekstu& zapisywacz) const override;
    void WykonajOdczytTekstowy(TOdczytywaczTekstu& odczytywacz) override;

    // For a list kept in address order: inserts the object unless it is there; whether it was added. Null never is.
    virtual bool DolaczObiektGdyBrak(TObiektBazowy* obiekt);

    // Bisection by address: the lowest position whose pointer is not below the object.
    bool WyszukajTenObiekt(const TObiektBazowy* obiekt, std::int32_t& gdzie) const noexcept;
    [[nodiscard]] bool WyszukajTenObiekt(const TObiektBazowy* obiekt) const noexcept;

  private:
    friend class TKopierDanych;
};

// A pointer list that every element knows of: an object that dies takes itself out. Registered once an object, however
// often the list holds it.
class ZTOK_API TListaRefObiektow : public TListaWskObiektow {
    ZTOK_KLASA_DEKL(TListaRefObiektow)
    static constexpr std::uint32_t CechyKlasy = ckPole | ckObiektBazowy | ckLista | ckListaWsk | ckListaRef;

    explicit TListaRefObiektow(TObiektBazowy* wlasciciel = nullptr) : TListaWskObiektow(wlasciciel) {}
    ~TListaRefObiektow() override;

    // The object is about to die. A long list may take it out only when it is next looked at, with all others that died
    // meanwhile.
    void ZerujRefDo(TObiektBazowy* cel) override;
    TObiektBazowy* DodajObiekt(TObiektBazowy* nowyObiekt, std::int32_t gdzie) override;
    TObiektBazowy* UsunObiekt(std::int32_t nrObiektu, bool zwolnij, bool zachowajPojemnosc) override;
    bool UsunObiekty(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter) override;
    bool UsunObiektyOprocz(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter) override;
    bool UsunTeObiekty(const TListaWskObiektow& obiekty, bool zachowajPojemnosc) override;
    bool UsunDuplikaty(TArgumenty pola, TRozmiarLiter rozmLiter) override;
    void SkrocListe(std::int32_t nowyRozm, bool zachowajPojemnosc) override;
    void ZerujDane() override;
    void WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) override;
    void PoPrzeniesieniu(TListaBazowa& lista, std::int32_t od, std::int32_t ile) override;

  private:
    friend class TKopierDanych;
    friend class TListaBazowa;
    friend class TListaWskObiektow;
    friend class TListaZObiektami;
    struct TDziury;

    // Registers the list with an element that it holds or will.
    void Zarejestruj(TObiektBazowy& obiekt) {
        if (!obiekt.DodajRefOd(this))
            powtorki_ = true;
    }
    // The elements from one index to another of the list that they were moved to drop this one, unless it holds them
    // yet.
    void ZwolnijPrzeniesione(const TListaBazowa& dokad, std::int32_t od, std::int32_t doKtorego);
    // Drops the registration with every object that the list no longer holds.
    void Wyrejestruj(std::vector<TObiektBazowy*>& usuniete);
    // Makes holes of the element's places; false, and nothing changed, when it must be removed at once.
    bool ZostawDziury(const TObiektBazowy* cel) noexcept;
    // Closes the holes; returns the capacity that removing one element after another would have left.
    [[nodiscard]] std::int32_t UsunDziury() noexcept;

    TDziury* slady_ = nullptr; // while there are holes: where they are
    bool powtorki_ = false;    // it may hold an object more than once
};

} // namespace ztok
