// Libraries whose readable form is made from the structs and read back into them.
#pragma once

#include <optional>

#include "biblioteki/Biblioteka.h"

namespace pomiary {

// TForma(uzycie) keeps the document: Zapisz(dane) makes it and returns its bytes, Wczytaj(dane) reads it.
template <class TForma> class TSeriaTekstu final : public ISeria<dane::TBaza> {
  public:
    TSeriaTekstu(const dane::TBaza& dane, TUzycie uzycie) : dane_(dane), forma_(uzycie) {}

    std::size_t Zapisz() override { return forma_.Zapisz(dane_); }
    void Wczytaj() override { forma_.Wczytaj(wczytane_.emplace()); }
    void Zniszcz() override { wczytane_.reset(); }
    [[nodiscard]] dane::TBaza Odtworz() const override { return *wczytane_; }

  private:
    const dane::TBaza& dane_;
    TForma forma_;
    std::optional<dane::TBaza> wczytane_;
};

} // namespace pomiary
