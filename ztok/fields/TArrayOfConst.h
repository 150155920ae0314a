// Tagged-value array: a field that holds any number of values of mixed kinds.
#pragma once

#include <cstdint>
#include <vector>

#include "ztok/kernel/TObiektBazowy.h"

namespace ztok {

// The elements are tagged arguments (TArgument). What an element refers to:
//   - an object of the model belongs to the array, whose part it is: a copy of the one given, or the one handed over;
//   - an interface is held counted;
//   - a raw pointer, a class and an object that is not of the model are only named. The array never looks at such an
//     object or class again, so it may go; a stream keeps the name of the class, and reads a raw object back as null.
// Indices count from 0; as a field of its owner, its field number N is the element N and -1 the whole array. Whether
// it holds a value is a flag of its own: set by every change and every read, cleared by ZerujDane, so that an array
// that was set to nothing is told from one that was never set. At most 32767 elements, as many as a stream can count.
// Not locked by its own operations.
class ZTOK_API TArrayOfConst : public TObiektBazowy {
    ZTOK_KLASA_DEKL(TArrayOfConst)
    static constexpr std::uint32_t CechyKlasy = ckPole | ckObiektBazowy | ckTablica;
    static constexpr std::int32_t MaksElementow = 0x7FFF;

    explicit TArrayOfConst(TObiektBazowy* wlasciciel = nullptr);
    ~TArrayOfConst() override;

    [[nodiscard]] std::int32_t Ile() const noexcept { return static_cast<std::int32_t>(elementy_.size()); }
    [[nodiscard]] bool Pusta() const noexcept { return elementy_.empty(); }
    // The element; valid until the array changes. ZTException for an index out of range.
    [[nodiscard]] const TArgument& Element(std::int32_t nr) const;
    // All of them, to be passed on where arguments are taken; valid until the array changes.
    [[nodiscard]] TArgumenty Elementy() const noexcept { return elementy_; }
    // The object of the model that the array holds at the index; null when the element is none.
    [[nodiscard]] TObiektBazowy* Obiekt(std::int32_t nr) const noexcept {
        return nr >= 0 && nr < Ile() ? opieka_[static_cast<std::size_t>(nr)].obiekt : nullptr;
    }
    // Add a value at the end, or at the index, which is clamped into the array. An object of the model is copied.
    // ZTException when the array is full. A call that raises changes nothing.
    void Dodaj(const TArgument& wartosc) { Wstaw(MaxInt, wartosc); }
    void Wstaw(std::int32_t gdzie, const TArgument& wartosc);
    // Adds the values in order, those before one that raises included.
    void DodajWszystkie(TArgumenty wartosci);
    // Takes the object over, also when the call raises; only an object that the array is a part of, or that another
    // owner holds, is refused and left alone. Null adds a null object.
    TObiektBazowy* DodajObiekt(TWlasny<TObiektBazowy> obiekt, std::int32_t gdzie = MaxInt);
    // Replaces the element. ZTException for an index out of range.
    void Ustaw(std::int32_t nr, const TArgument& wartosc);
    // Replaces all the elements.
    void UstawWszystkie(TArgumenty wartosci);
    // Removes the element; false for an index out of range.
    bool Usun(std::int32_t nr);
    // Removes the element and gives the object that the array held there; null, and nothing done, when it held none.
    [[nodiscard]] TWlasny<TObiektBazowy> WyjmijObiekt(std::int32_t nr);
    // The first element, from the index on, of the same kind and value (texts to the letter, objects of the model by
    // content, variants of one type); -1 when there is none. A NaN equals nothing.
    [[nodiscard]] std::int32_t Znajdz(const TArgument& wartosc, std::int32_t od = 0) const;

    // The classes met: those of elements, of what was read, and those named here, which the kernel then knows by name.
    // ZerujDane keeps them. A class whose module is gone is null.
    void RejestrujKlase(const TKlasa* klasa);
    [[nodiscard]] std::int32_t IleKlas() const noexcept { return static_cast<std::int32_t>(klasy_.size()); }
    [[nodiscard]] const TKlasa* ZnanaKlasa(std::int32_t nr) const noexcept;

    // An array of variants. Objects, pointers, classes and interfaces are null there; the variant of an element is
    // itself. Setting takes any variant, one that is no array as the only element; empty and null clear the array.
    [[nodiscard]] TWariant GetJakoVariant() const override;
    void SetJakoVariant(const TWariant& wartosc) override;
    // The values parted by "; ", for display: no text gives the kinds back. So only an empty text can be set.
    [[nodiscard]] std::u16string GetJakoString() const override;
    void SetJakoString(std::u16string_view tekst) override;
    void ZerujDane() override;
    // A text is compared with the text for display, an object with the array when it is one.
    [[nodiscard]] std::int32_t PorownajZCecha(const TArgument& cecha, TRozmiarLiter rozmLiter,
                                              std::uint32_t localeID) const override;
    [[nodiscard]] bool PoleNiepuste(int nrPola) const override;
    // False removes element N; for -1 it clears the array, and true says that it holds a value.
    void UstawNiepuste(int nrPola, bool niepuste) override;
    // "[N]" leads to the object that element N is.
    bool ObiektIPole(std::u16string_view sciezka, bool tworz, TObiektBazowy*& obiekt, int& nrPola) override;
    // The objects of the array; its values are no text fields.
    void PrzytnijPolaWgRozm(bool trymuj) override;
    void TrymujPolaTekstowe(bool podobiektyTez) override;
    [[nodiscard]] bool SaDaneUnicode(int nrPola) const override;
    // The array with fewer elements is less; then the first elements that differ decide: by kind, by value. NaN equals
    // every real number. Variants compare by type, then by value, arrays in them as this one does.
    [[nodiscard]] std::int32_t WykonajPorownanie(const TPole& inne, TPorownywaczDanych& porownywacz) const override;
    void WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) override;
    void DajObiektyDoZapisu(TZapisywaczDanych& zapisywacz) const override;
    // ZTException for a variant, which the binary form has no place for; the text form has. Reading raises it for an
    // unknown kind, for a class that the kernel does not know, and for a count that the data cannot hold.
    void WykonajZapis(TStrumien& strumien, TZapisywaczDanych& zapisywacz) const override;
    void WykonajOdczyt(TStrumien& strumien, TOdczytywaczDanych& odczytywacz) override;
    void WykonajZapisTekstowy(TZapisywaczTekstu& zapisywacz) const override;
    void WykonajOdczytTekstowy(TOdczytywaczTekstu& odczytywacz) override;
    [[nodiscard]] std::u16string OpisTekstowy() const override;

  private:
    // What the array knows of an element besides its value. Kept apart, so that the elements can be passed on as
    // arguments, and so that an object that is not of the model need not be alive.
    struct TOpieka {
        TObiektBazowy* obiekt = nullptr; // of the model, owned
        std::uint32_t klasa = 0;         // number of an object's class, or of the class that the element is
    };
    struct TElement {
        TArgument wartosc{0};
        TOpieka opieka{};
    };

    // The element of a value: what it refers to is copied, counted or named.
    TElement Przyjmij(const TArgument& wartosc);
    // What a value that is no element yet refers to.
    [[nodiscard]] static TOpieka OpiekaWartosci(const TArgument& wartosc);
    // The index of an element that the reference is; the count when it is none.
    [[nodiscard]] std::size_t NrWlasnego(const TArgument& wartosc) const noexcept;
    static void Porzuc(TElement& element);
    void SprawdzMiejsce();
    void SprawdzIndeks(std::int32_t nr) const;
    // The object becomes a part of this array.
    void Przejmij(TObiektBazowy* obiekt);
    // The element is the array's, also when the call raises.
    void Wloz(std::int32_t gdzie, TElement element);
    void Podmien(std::int32_t nr, TElement element);
    [[nodiscard]] TElement WyjmijElement(std::int32_t nr) noexcept;
    TObiektBazowy& DodajNowy(const TKlasa& klasa);
    [[nodiscard]] static std::u16string_view NazwaKlasyElementu(const TOpieka& opieka) noexcept;
    [[nodiscard]] static std::int32_t PorownajElement(const TArgument& a, const TOpieka& opiekaA, const TArgument& b,
                                                      const TOpieka& opiekaB, TPorownywaczDanych& porownywacz);
    // The element, but not the record of an object. Reading gives the object, made and added, whose record follows.
    void ZapiszElement(std::size_t nr, TStrumien& strumien, TZapisywaczDanych& zapisywacz) const;
    TObiektBazowy* WczytajElement(TStrumien& strumien, TOdczytywaczDanych& odczytywacz);
    void ZapiszElementTekstowo(std::size_t nr, TZapisywaczTekstu& zapisywacz) const;
    TObiektBazowy* WczytajElementTekstowo(TOdczytywaczTekstu& odczytywacz);

    std::vector<TArgument> elementy_;
    std::vector<TOpieka> opieka_; // one an element
    std::vector<std::uint32_t> klasy_;
    bool niepuste_ = false;
};

} // namespace ztok
