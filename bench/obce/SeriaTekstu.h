// Libraries whose readable form is made from the structs and read back into them.
#pragma once

#include "pomiary/Biblioteka.h"

namespace pomiary {

// TForma(uzycie) keeps the document: Zapisz(dane) makes it and returns it, Wczytaj(dane) reads it.
template <class TForma> class TSeriaTekstu final : public ISeria<dane::TBaza> {
  public:
    TSeriaTekstu(const dane::TBaza& dane, TUzycie uzycie) : dane_(dane), forma_(uzycie) {}

    std::string_view Zapisz() override { return forma_.Zapisz(dane_); }
    void Wczytaj() override {
        forma_.Wczytaj(wczytane_);
        Rozwiaz(wczytane_);
    }
    void Zniszcz() override { wczytane_ = {}; }
    [[nodiscard]] dane::TBaza Odtworz() override {
        UstawNumeryWgCelow(wczytane_);
        return wczytane_;
    }

  private:
    const dane::TBaza& dane_;
    TForma forma_;
    dane::TBaza wczytane_;
};

} // namespace pomiary
