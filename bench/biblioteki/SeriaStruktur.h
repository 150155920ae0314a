// Libraries that write and read the structs themselves through an archive over a stream buffer.
#pragma once

#include <optional>
#include <vector>

#include "biblioteki/Biblioteka.h"
#include "biblioteki/BuforPamieci.h"

namespace pomiary {

// TArchiwum::Zapisz(bufor, dane) and TArchiwum::Wczytaj(bufor, dane) are the library.
template <class TArchiwum, class TDane> class TSeriaStruktur final : public ISeria<TDane> {
  public:
    explicit TSeriaStruktur(const TDane& dane) : dane_(dane), bajty_(4 * dane::BajtyWartosci(dane) + 4096) {}

    std::size_t Zapisz() override {
        TBuforPamieci bufor(bajty_.data(), bajty_.size());
        TArchiwum::Zapisz(bufor, dane_);
        return zapisano_ = bufor.Zapisano();
    }
    void Wczytaj() override {
        TBuforPamieci bufor(bajty_.data(), zapisano_);
        TArchiwum::Wczytaj(bufor, wczytane_.emplace());
    }
    void Zniszcz() override { wczytane_.reset(); }
    [[nodiscard]] TDane Odtworz() const override { return *wczytane_; }

  private:
    const TDane& dane_;
    std::vector<char> bajty_;
    std::size_t zapisano_ = 0;
    std::optional<TDane> wczytane_;
};

} // namespace pomiary
