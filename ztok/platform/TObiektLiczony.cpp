#include "ztok/platform/TObiektLiczony.h"

namespace ztok {
namespace {

// Count of an object that is being freed: references taken and dropped by its last steps never lead to 0 again.
constexpr std::int32_t kUmierajacy = 0x40000000;

} // namespace

ZTOK_KLASA_DEF(TObiektLiczony, TObiektOgolny)

// For an object that Zwolnij does not end, such as one on the stack.
TObiektLiczony::~TObiektLiczony() { kontrola_.Zakoncz(*this); }

std::int32_t TObiektLiczony::QueryInterface(const TGUID& iid, void** wynik) noexcept {
    return OdpowiedzInterfejsem(this, iid, wynik);
}

std::int32_t TObiektLiczony::_AddRef() noexcept { return licznik_.fetch_add(1, std::memory_order_relaxed) + 1; }

// The last reference and the mark of a dying object are one step, so that SprobujPoliczyc either comes before it or
// fails.
std::int32_t TObiektLiczony::_Release() noexcept {
    std::int32_t bylo = licznik_.load(std::memory_order_relaxed);
    // What every holder did to the object is seen by the one that frees it.
    while (!licznik_.compare_exchange_weak(bylo, bylo == 1 ? kUmierajacy : bylo - 1, std::memory_order_acq_rel,
                                           std::memory_order_relaxed)) {
    }
    if (bylo == 1)
        ZwolnijCicho(this);
    return bylo - 1;
}

bool TObiektLiczony::SprobujPoliczyc() noexcept {
    std::int32_t bylo = licznik_.load(std::memory_order_relaxed);
    while (bylo > 0 && bylo < kUmierajacy / 2)
        if (licznik_.compare_exchange_weak(bylo, bylo + 1, std::memory_order_relaxed))
            return true;
    return false;
}

bool TObiektLiczony::Umiera() const noexcept { return licznik_.load(std::memory_order_relaxed) >= kUmierajacy / 2; }

void TObiektLiczony::WykonajDestrukcje() { kontrola_.Zakoncz(*this); }

} // namespace ztok
