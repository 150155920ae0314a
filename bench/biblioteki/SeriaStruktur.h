// Libraries that write and read the structs themselves through an archive over a stream.
#pragma once

#include <optional>
#include <sstream>
#include <string>

#include "biblioteki/Biblioteka.h"
#include "biblioteki/BuforPamieci.h"

namespace pomiary {

// TArchiwum::Zapisz(bufor, dane) and TArchiwum::Wczytaj(bufor, dane) are the library.
template <class TArchiwum, class TDane> class TSeriaStruktur final : public ISeria<TDane> {
  public:
    TSeriaStruktur(const TDane& dane, TUzycie uzycie) : dane_(dane), uzycie_(uzycie) {
        if (uzycie == TUzycie::Dostrojone)
            bajty_.resize(4 * dane::BajtyWartosci(dane) + 4096);
    }

    std::size_t Zapisz() override {
        if (uzycie_ == TUzycie::Zwykle) {
            std::ostringstream strumien;
            TArchiwum::Zapisz(strumien, dane_);
            bajty_ = std::move(strumien).str();
            return bajty_.size();
        }
        TBuforPamieci bufor(bajty_.data(), bajty_.size());
        std::ostream strumien(&bufor);
        TArchiwum::Zapisz(strumien, dane_);
        return zapisano_ = bufor.Zapisano();
    }
    void Wczytaj() override {
        if (uzycie_ == TUzycie::Zwykle) {
            std::istringstream strumien(bajty_);
            TArchiwum::Wczytaj(strumien, wczytane_.emplace());
            return;
        }
        TBuforPamieci bufor(bajty_.data(), zapisano_);
        std::istream strumien(&bufor);
        TArchiwum::Wczytaj(strumien, wczytane_.emplace());
    }
    void Zniszcz() override { wczytane_.reset(); }
    [[nodiscard]] TDane Odtworz() const override { return *wczytane_; }

  private:
    const TDane& dane_;
    TUzycie uzycie_;
    std::string bajty_;
    std::size_t zapisano_ = 0;
    std::optional<TDane> wczytane_;
};

} // namespace pomiary
