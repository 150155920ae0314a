// Component: an object that another component owns.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "ztok/platform/Kontrolowane.h"
#include "ztok/platform/TTrwaly.h"

namespace ztok {

// The owner frees the components that it owns, the one made last first, before its own memory goes. A component that is
// freed earlier leaves its owner. Components that own each other belong to one thread at a time. Interfaces of
// a component are never counted.
class ZTOK_API TKomponent : public TTrwaly {
    ZTOK_KLASA_DEKL(TKomponent)

    // With an owner: made by UtworzSkladnik, or by UtworzSurowy; whoever frees such a component itself takes it from
    // its owner.
    explicit TKomponent(TKomponent* wlasciciel = nullptr);
    ~TKomponent() override;

    [[nodiscard]] TKomponent* Wlasciciel() const noexcept { return wlasciciel_; }
    // The components owned, in the order in which they were made.
    [[nodiscard]] std::size_t IleSkladnikow() const noexcept { return skladniki_.size(); }
    // Null for an index out of range.
    [[nodiscard]] TKomponent* Skladnik(std::size_t indeks) const noexcept {
        return indeks < skladniki_.size() ? skladniki_[indeks] : nullptr;
    }
    // Makes a component that this one owns. Its constructor takes the owner first.
    template <class T, class... A> T& UtworzSkladnik(A&&... argumenty) {
        return *UtworzSurowy<T>(this, std::forward<A>(argumenty)...);
    }

    virtual std::int32_t QueryInterface(const TGUID& iid, void** wynik) noexcept;
    // NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the names are the interface contract's
    virtual std::int32_t _AddRef() noexcept;
    virtual std::int32_t _Release() noexcept;
    // NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

  protected:
    void WykonajDestrukcje() override;
    void Odlacz() noexcept override;

  private:
    friend class TKontroler;

    TKomponent* wlasciciel_;
    std::vector<TKomponent*> skladniki_;
    TZnakKontroli kontrola_;
};

} // namespace ztok
