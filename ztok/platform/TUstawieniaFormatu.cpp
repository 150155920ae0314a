#include "ztok/platform/TUstawieniaFormatu.h"

#include <atomic>
#include <memory>

namespace ztok {

namespace {

// No destructor of its own: code that runs late in the unload may still format text.
constinit std::atomic<TUstawieniaFormatu*> BiezaceUstawienia{nullptr};

} // namespace

TUstawieniaFormatu UstawieniaPolskie() { return {}; }

TUstawieniaFormatu& UstawieniaProcesu() {
    if (TUstawieniaFormatu* sa = BiezaceUstawienia.load(std::memory_order_acquire); sa != nullptr)
        return *sa;
    auto nowe = std::make_unique<TUstawieniaFormatu>();
    nowe->separatorDziesietny = u',';
    nowe->separatorTysiecy = u'\u00A0';
    TUstawieniaFormatu* zastane = nullptr;
    if (BiezaceUstawienia.compare_exchange_strong(zastane, nowe.get(), std::memory_order_acq_rel))
        return *nowe.release();
    return *zastane; // another thread was first
}

void ZwolnijUstawieniaProcesu() noexcept { delete BiezaceUstawienia.exchange(nullptr, std::memory_order_acq_rel); }

} // namespace ztok
