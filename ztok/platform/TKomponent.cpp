#include "ztok/platform/TKomponent.h"

#include <algorithm>

#include "ztok/platform/Interfejsy.h"
#include "ztok/platform/TPierwszyBlad.h"

namespace ztok {

ZTOK_KLASA_DEF(TKomponent, TTrwaly)

TKomponent::TKomponent(TKomponent* wlasciciel) : wlasciciel_(wlasciciel) {
    if (wlasciciel_ != nullptr)
        wlasciciel_->skladniki_.push_back(this);
}

// For a component on the stack, whose end nobody announces: the steps of the classes derived from it are over.
TKomponent::~TKomponent() {
    kontrola_.Zakoncz(*this);
    while (!skladniki_.empty())
        ZwolnijCicho(skladniki_.back()); // leaves the list
    TKomponent::Odlacz();
}

void TKomponent::WykonajDestrukcje() {
    kontrola_.Zakoncz(*this);
    TPierwszyBlad blad;
    while (!skladniki_.empty())
        blad.Wykonaj([this] { Zwolnij(skladniki_.back()); });
    Odlacz();
    blad.Rzuc();
}

// Also what a free does that is put off: the component must have left the owner, which goes on to the next.
void TKomponent::Odlacz() noexcept {
    if (wlasciciel_ == nullptr)
        return;
    std::vector<TKomponent*>& obok = std::exchange(wlasciciel_, nullptr)->skladniki_;
    // The last one is freed first, as a rule.
    const auto ja = std::find(obok.rbegin(), obok.rend(), this);
    obok.erase(std::next(ja).base());
}

std::int32_t TKomponent::QueryInterface(const TGUID& iid, void** wynik) noexcept {
    return OdpowiedzInterfejsem(this, iid, wynik);
}

std::int32_t TKomponent::_AddRef() noexcept { return -1; }

std::int32_t TKomponent::_Release() noexcept { return -1; }

} // namespace ztok
