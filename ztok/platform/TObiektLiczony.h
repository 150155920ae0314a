// Reference-counted object: base of classes that live as long as somebody holds one of their interfaces.
#pragma once

#include <atomic>
#include <cstdint>

#include "ztok/platform/DeklaracjaKlasy.h"
#include "ztok/platform/Eksport.h"
#include "ztok/platform/Interfejsy.h"
#include "ztok/platform/Kontrolowane.h"
#include "ztok/platform/TObiektOgolny.h"

namespace ztok {

// A new object has the count 0 and belongs to its maker until the first TIntf holds it; from then on the last _Release
// frees it, through ZwolnijCicho. A constructor must not pass its own interfaces on. Counting is safe from any thread.
class ZTOK_API TObiektLiczony : public TObiektOgolny {
    ZTOK_KLASA_DEKL(TObiektLiczony)

    ~TObiektLiczony() override;

    virtual std::int32_t QueryInterface(const TGUID& iid, void** wynik) noexcept;
    // NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): as in IInterfejs
    virtual std::int32_t _AddRef() noexcept;
    virtual std::int32_t _Release() noexcept;
    // NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
    // References held now: for tests and diagnostics, outdated at once when other threads count too.
    [[nodiscard]] std::int32_t LiczbaReferencji() const noexcept { return licznik_.load(std::memory_order_relaxed); }

    // Counts one reference more if somebody holds one. False for a new object and for one that is being freed, which
    // must not be counted: for those who know the object without holding it, and know that its memory is still there.
    [[nodiscard]] bool SprobujPoliczyc() noexcept;
    // Whether the last reference has gone.
    [[nodiscard]] bool Umiera() const noexcept;

  protected:
    TObiektLiczony() noexcept = default;
    void WykonajDestrukcje() override;

  private:
    friend class TKontroler;

    std::atomic<std::int32_t> licznik_{0};
    TZnakKontroli kontrola_;
};

} // namespace ztok
