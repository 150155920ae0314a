// The notice by which an object that dies leaves the controllers that know it.
#pragma once

#include <atomic>

namespace ztok {

class TObiektOgolny;

// Takes the object out of every controller and of every broadcast that runs. A call of the object that another thread
// makes just now has ended when this returns. Does nothing when no controller knows the object.
void ZapomnijKontrolowany(TObiektOgolny& obiekt) noexcept;

// Member of the classes whose objects can be registered with a controller: whether the object was.
class TZnakKontroli {
  public:
    void Ustaw() noexcept { znany_.store(true, std::memory_order_relaxed); }
    // The first step of the end of life.
    void Zakoncz(TObiektOgolny& obiekt) noexcept {
        if (znany_.load(std::memory_order_relaxed)) [[unlikely]] {
            znany_.store(false, std::memory_order_relaxed);
            ZapomnijKontrolowany(obiekt);
        }
    }

  private:
    std::atomic<bool> znany_{false};
};

} // namespace ztok
