// Walks that must hear of the objects and fields that die before they end.
#pragma once

#include <atomic>

#include "ztok/platform/Eksport.h"

namespace ztok {

class TPole;

// A reader or copier keeps addresses of objects and fields while code of the application's own runs: what dies
// meanwhile tells every walk of its thread. A walk stays on one thread; walks of a thread may nest.
class ZTOK_API TPrzejscie {
  public:
    TPrzejscie(const TPrzejscie&) = delete;
    TPrzejscie& operator=(const TPrzejscie&) = delete;
    virtual ~TPrzejscie();

    // Told by an object or a pointer field at its end, before the references to it are cleared.
    static void Zapomnij(const TPole& pole) noexcept {
        if (czynne.load(std::memory_order_relaxed) != 0)
            ZapomnijWCzynnych(pole);
    }
    // Told by an object before it clears the references to it.
    static void ZarejestrujOdlozone() noexcept {
        if (czynne.load(std::memory_order_relaxed) != 0)
            ZarejestrujWCzynnych();
    }

  protected:
    TPrzejscie() noexcept;

    virtual void ZgubPole(const TPole& pole) noexcept = 0;
    // References that the walk has put off registering are registered.
    virtual void Zarejestruj() noexcept {}

  private:
    static void ZapomnijWCzynnych(const TPole& pole) noexcept;
    static void ZarejestrujWCzynnych() noexcept;

    static std::atomic<int> czynne; // in the process
    TPrzejscie* poprzednie_;        // of this thread
};

} // namespace ztok
