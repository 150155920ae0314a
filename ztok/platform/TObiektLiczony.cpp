#include "ztok/platform/TObiektLiczony.h"

namespace ztok {
namespace {

// Count of an object that is being freed: references taken and dropped by its last steps never lead to 0 again.
constexpr std::int32_t kUmierajacy = 0x40000000;

} // namespace

ZTOK_KLASA_DEF(TObiektLiczony, TObiektOgolny)

TObiektLiczony::~TObiektLiczony() = default;

std::int32_t TObiektLiczony::QueryInterface(const TGUID& iid, void** wynik) noexcept {
    return OdpowiedzInterfejsem(this, iid, wynik);
}

std::int32_t TObiektLiczony::_AddRef() noexcept { return licznik_.fetch_add(1, std::memory_order_relaxed) + 1; }

std::int32_t TObiektLiczony::_Release() noexcept {
    // What every holder did to the object is seen by the one that frees it.
    const std::int32_t zostalo = licznik_.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (zostalo == 0) {
        licznik_.store(kUmierajacy, std::memory_order_relaxed);
        ZwolnijCicho(this);
    }
    return zostalo;
}

} // namespace ztok
