// Fields whose value is a list of plain values.
#pragma once

#include <string>
#include <vector>

#include "ztok/kernel/TObiektBazowy.h"

namespace ztok {

// A list of values of the type W: 32-bit integers, real numbers, texts. An object of the model of its own, so it takes
// an object number where it is stored, and knows itself whether it holds a value: any change but ZerujDane makes it
// hold one, even an empty list. Indexes are 0-based; an operation on an index out of range does nothing and tells so.
//
// As text for display (GetJakoString) the values of numbers stand with ";" between them, texts one a line; a text that
// is empty, begins with a quotation mark or has a line end in it stands in double quotes, doubled inside. SetJakoString
// takes that back. As a variant the list is an array; it also takes a single value, text as GetJakoString gives it, and
// empty and null, which clear it.
template <class W> class TPoleListyWartosci : public TObiektBazowy {
  public:
    [[nodiscard]] std::int32_t Ile() const noexcept { return static_cast<std::int32_t>(wartosci_.size()); }
    [[nodiscard]] const std::vector<W>& Wartosci() const noexcept { return wartosci_; }
    void UstawWartosci(std::vector<W> wartosci) noexcept;
    // The value at the index; the type's zero out of range.
    [[nodiscard]] W Wartosc(std::int32_t indeks) const;
    [[nodiscard]] W operator[](std::int32_t indeks) const { return Wartosc(indeks); }
    bool UstawWartosc(std::int32_t indeks, W wartosc);
    // Adds at the end; returns the index.
    std::int32_t Dodaj(W wartosc);
    // Puts before the value at the index, 0 to Ile().
    bool Wstaw(std::int32_t indeks, W wartosc);
    bool Usun(std::int32_t indeks);
    // The index of the first value equal to the given one, from `od` on; -1 when there is none. Texts are equal when
    // their characters are; a NaN equals nothing.
    [[nodiscard]] std::int32_t Znajdz(const W& wartosc, std::int32_t od = 0) const noexcept;
    // Stable. Texts in the order in which the field compares them without a comparer, so letter case does not matter;
    // NaN after everything.
    void Sortuj(TRodzajSortowania kierunek = rsRosnaco);
    [[nodiscard]] auto begin() const noexcept { return wartosci_.begin(); }
    [[nodiscard]] auto end() const noexcept { return wartosci_.end(); }

    // -1: whether the field holds a value; otherwise whether there is a value at the index.
    [[nodiscard]] bool PoleNiepuste(int nrPola) const override;
    void UstawNiepuste(int nrPola, bool niepuste) override;
    void ZerujDane() override;
    [[nodiscard]] TWariant GetJakoVariant() const override;
    void SetJakoVariant(const TWariant& wartosc) override;
    [[nodiscard]] std::u16string GetJakoString() const override;
    void SetJakoString(std::u16string_view tekst) override;
    // The mask shapes each value, as in a field of one value.
    [[nodiscard]] std::u16string WartWgMaski(std::u16string_view maska,
                                             const TUstawieniaFormatu* ustawienia = nullptr) const override;
    // A text is compared with GetJakoString, any other feature with the variant.
    [[nodiscard]] std::int32_t PorownajZCecha(const TArgument& cecha, TRozmiarLiter rozmLiter,
                                              std::uint32_t localeID) const override;
    // Texts without blanks at their ends. No size is declared for them, so nothing is cut.
    void TrymujPolaTekstowe(bool podobiektyTez) override;
    void PrzytnijPolaWgRozm(bool trymuj) override;
    [[nodiscard]] bool SaDaneUnicode(int nrPola) const override;
    // The values with "; " between them.
    [[nodiscard]] std::u16string OpisTekstowy() const override;
    // First the counts, then value by value as fields of one value compare.
    [[nodiscard]] std::int32_t WykonajPorownanie(const TPole& inne, TPorownywaczDanych& porownywacz) const override;
    void WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) override;
    void WykonajZapis(TStrumien& strumien, TZapisywaczDanych& zapisywacz) const override;
    void WykonajOdczyt(TStrumien& strumien, TOdczytywaczDanych& odczytywacz) override;
    // "(", the values with ";" between them, ")".
    void WykonajZapisTekstowy(TZapisywaczTekstu& zapisywacz) const override;
    void WykonajOdczytTekstowy(TOdczytywaczTekstu& odczytywacz) override;

  protected:
    explicit TPoleListyWartosci(TObiektBazowy* wlasciciel) : TObiektBazowy(wlasciciel) {}
    // The class of the library that this field is of.
    [[nodiscard]] virtual const TKlasa* KlasaListy() const noexcept = 0;

  private:
    [[nodiscard]] bool WZakresie(std::int32_t indeks) const noexcept {
        return indeks >= 0 && static_cast<std::size_t>(indeks) < wartosci_.size();
    }
    // Wide texts are stored as UTF-8 whatever the writer's options say, and ordered by code units.
    [[nodiscard]] bool Szerokie() const noexcept;
    [[nodiscard]] int PorownajWartosci(const W& a, const W& b, const TPorownywaczDanych* porownywacz) const;

    std::vector<W> wartosci_;
    bool maWartosc_ = false;
};

extern template class ZTOK_API TPoleListyWartosci<std::int32_t>;
extern template class ZTOK_API TPoleListyWartosci<double>;
extern template class ZTOK_API TPoleListyWartosci<std::u16string>;

class ZTOK_API TPoleIntList : public TPoleListyWartosci<std::int32_t> {
    ZTOK_KLASA_DEKL(TPoleIntList)
    explicit TPoleIntList(TObiektBazowy* wlasciciel = nullptr) : TPoleListyWartosci(wlasciciel) {}
    ~TPoleIntList() override;

  protected:
    [[nodiscard]] const TKlasa* KlasaListy() const noexcept override { return KlasaStatyczna(); }
};

class ZTOK_API TPoleDoubleList : public TPoleListyWartosci<double> {
    ZTOK_KLASA_DEKL(TPoleDoubleList)
    explicit TPoleDoubleList(TObiektBazowy* wlasciciel = nullptr) : TPoleListyWartosci(wlasciciel) {}
    ~TPoleDoubleList() override;

  protected:
    [[nodiscard]] const TKlasa* KlasaListy() const noexcept override { return KlasaStatyczna(); }
};

class ZTOK_API TPoleStrList : public TPoleListyWartosci<std::u16string> {
    ZTOK_KLASA_DEKL(TPoleStrList)
    explicit TPoleStrList(TObiektBazowy* wlasciciel = nullptr) : TPoleListyWartosci(wlasciciel) {}
    ~TPoleStrList() override;

  protected:
    [[nodiscard]] const TKlasa* KlasaListy() const noexcept override { return KlasaStatyczna(); }
};

class ZTOK_API TPoleWideStrList : public TPoleListyWartosci<std::u16string> {
    ZTOK_KLASA_DEKL(TPoleWideStrList)
    explicit TPoleWideStrList(TObiektBazowy* wlasciciel = nullptr) : TPoleListyWartosci(wlasciciel) {}
    ~TPoleWideStrList() override;

  protected:
    [[nodiscard]] const TKlasa* KlasaListy() const noexcept override { return KlasaStatyczna(); }
};

} // namespace ztok
