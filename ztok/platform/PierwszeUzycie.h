// State of the process that is made on first use.
#pragma once

#include <atomic>

namespace ztok {

// What the pointer leads to, made by the first thread that asks. Whoever closes the library frees it: a static object
// would be gone, or come too late, for the static objects of other modules.
template <class T> T& PrzyPierwszymUzyciu(std::atomic<T*>& gdzie) {
    if (T* jest = gdzie.load(std::memory_order_acquire); jest != nullptr)
        return *jest;
    T* nowe = new T;
    T* zastane = nullptr;
    if (gdzie.compare_exchange_strong(zastane, nowe, std::memory_order_acq_rel))
        return *nowe;
    delete nowe; // another thread was first
    return *zastane;
}

} // namespace ztok
