// Libraries that write and read the structs themselves through an archive over a stream.
#pragma once

#include <sstream>
#include <string>

#include "obce/BuforPamieci.h"
#include "pomiary/Biblioteka.h"

namespace pomiary {

// TArchiwum::Zapisz(stream, structs) and TArchiwum::Wczytaj(stream, structs) are the library.
template <class TArchiwum, class TDane> class TSeriaStruktur final : public ISeria<TDane> {
  public:
    TSeriaStruktur(const TDane& dane, TUzycie uzycie) : dane_(dane), uzycie_(uzycie) {
        if (uzycie == TUzycie::Dostrojone)
            bajty_.resize(4 * dane::BajtyWartosci(dane) + 4096);
    }

    std::string_view Zapisz() override {
        if (uzycie_ == TUzycie::Zwykle) {
            std::ostringstream strumien;
            TArchiwum::Zapisz(strumien, dane_);
            bajty_ = std::move(strumien).str();
            return zapisane_ = bajty_;
        }
        TBuforPamieci bufor(bajty_.data(), bajty_.size());
        std::ostream strumien(&bufor);
        TArchiwum::Zapisz(strumien, dane_);
        return zapisane_ = std::string_view(bajty_.data(), bufor.Zapisano());
    }
    void Wczytaj() override {
        if (uzycie_ == TUzycie::Zwykle) {
            std::istringstream strumien(bajty_);
            TArchiwum::Wczytaj(strumien, wczytane_);
        } else {
            TBuforPamieci bufor(bajty_.data(), zapisane_.size());
            std::istream strumien(&bufor);
            TArchiwum::Wczytaj(strumien, wczytane_);
        }
        Rozwiaz(wczytane_);
    }
    void Zniszcz() override { wczytane_ = {}; }
    [[nodiscard]] TDane Odtworz() override {
        UstawNumeryWgCelow(wczytane_);
        return wczytane_;
    }

  private:
    const TDane& dane_;
    TUzycie uzycie_;
    std::string bajty_;
    std::string_view zapisane_;
    TDane wczytane_;
};

} // namespace pomiary
