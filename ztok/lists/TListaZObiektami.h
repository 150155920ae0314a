// Owning lists: elements have the list as parent and die with it.
#pragma once

#include "ztok/lists/TListaBazowa.h"

namespace ztok {

class ZTOK_API TListaZObiektami : public TListaBazowa {
    ZTOK_KLASA_DEKL(TListaZObiektami)
    static constexpr std::uint32_t CechyKlasy = ckPole | ckObiektBazowy | ckLista | ckListaZObiektami;

    explicit TListaZObiektami(TObiektBazowy* wlasciciel = nullptr) : TListaBazowa(wlasciciel) {}
    ~TListaZObiektami() override;

    void ZerujDane() override;
    void DajObiektyDoZapisu(TZapisywaczDanych& zapisywacz) const override;
    void PrzypnijObiekt(TObiektBazowy* obiekt) override;
    void PoPrzeniesieniu(TListaBazowa& lista, std::int32_t od, std::int32_t ile) override;
    // Takes the object over also when the call raises. Only an object that the list is a part of, or that another owner
    // holds, is refused (ZTException) and left alone.
    TObiektBazowy* DodajObiekt(TObiektBazowy* nowyObiekt, std::int32_t gdzie) override;
    // An element that is not freed goes back to the caller, without a parent.
    TObiektBazowy* UsunObiekt(std::int32_t nrObiektu, bool zwolnij, bool zachowajPojemnosc) override;
    bool UsunObiekty(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter) override;
    bool UsunObiektyOprocz(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter) override;
    bool UsunTeObiekty(const TListaWskObiektow& obiekty, bool zachowajPojemnosc) override;
    bool UsunDuplikaty(TArgumenty pola, TRozmiarLiter rozmLiter) override;
    void SkrocListe(std::int32_t nowyRozm, bool zachowajPojemnosc) override;

    // Frees the elements from the last down to the index. Each one, even when one fails; the first error is raised
    // then.
    void ZwolnijObiekty(std::int32_t od);
    // The element becomes the list's, or nobody's; its place in the array is the caller's business.
    void Przejmij(TObiektBazowy& obiekt);
    static void Oddaj(TObiektBazowy& obiekt);
    // Ownership in the type: the list takes the object, or gives the element.
    TObiektBazowy* Dodaj(TWlasny<TObiektBazowy> nowyObiekt, std::int32_t gdzie = MaxInt) {
        return DodajObiekt(nowyObiekt.Oddaj(), gdzie);
    }
    [[nodiscard]] TWlasny<TObiektBazowy> Wyjmij(std::int32_t nrObiektu) {
        return TWlasny<TObiektBazowy>(UsunObiekt(nrObiektu, false, false));
    }

  protected:
    friend class TListaBazowa;
    // The object that `utworz` makes with this list as its owner.
    template <class F> [[nodiscard]] TWlasny<TObiektBazowy> Tworz(const F& utworz) {
        const TTworzenieCzesci tworzenie(*this);
        return TWlasny<TObiektBazowy>(static_cast<TObiektBazowy*>(utworz()));
    }
    // Whether the list is one of pointers, some of them at elements of this list or their parts: what a copy of it, or
    // a clearing of this list, would take from under it.
    [[nodiscard]] bool MaMojeElementy(const TListaBazowa& lista) const noexcept;
    // Frees the elements that the condition picks, from the last to the first; true when any was.
    template <class F> bool ZwolnijWgWarunku(F warunek, bool zachowajPojemnosc);
    // How many elements are not null: those that a stream gets. A null one has no class and no record.
    [[nodiscard]] std::uint32_t IleNiepustych() const noexcept;
    // Whether the list still is what its count and its elements so far have told a writer, now that element i is
    // written: an element may edit its list. ZTException when it is not.
    void SprawdzPoZapisie(std::int32_t ile, std::int32_t i, const TObiektBazowy* element) const {
        if (FIleObiektow != ile || FObiekty[i] != element) [[unlikely]]
            BladZmianyPrzyZapisie();
    }
    [[noreturn]] void BladZmianyPrzyZapisie() const;
    [[nodiscard]] const TListaBazowa& JakoLista(const TPole& inne) const;
    // Makes room for one more element of those that a stream announces, at most that many. The room doubles with what
    // was read: nested lists that each announce all the bytes left get no memory for it.
    void MiejsceNaOdczytany(std::uint32_t zapowiedziane);
    // Appends an object made by the class's virtual constructor.
    TObiektBazowy* DodajNowy(const TKlasa& klasa, std::int32_t gdzie);
};

} // namespace ztok
