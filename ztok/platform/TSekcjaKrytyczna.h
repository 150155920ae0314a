// Re-entrant lock.
#pragma once

#include <cstddef>

#include "ztok/platform/Eksport.h"

namespace ztok {

// The thread that holds the lock may enter again and leaves as often as it entered.
class ZTOK_API TSekcjaKrytyczna {
  public:
    // Raises EBladSystemu when the system has no lock left.
    TSekcjaKrytyczna();
    TSekcjaKrytyczna(const TSekcjaKrytyczna&) = delete;
    TSekcjaKrytyczna& operator=(const TSekcjaKrytyczna&) = delete;
    ~TSekcjaKrytyczna();

    // Waits until no other thread holds the lock and takes it.
    void Wejdz() noexcept;
    // Takes the lock unless another thread holds it; whether it was taken.
    [[nodiscard]] bool SprobujWejsc() noexcept;
    // Called by the thread that entered.
    void Wyjdz() noexcept;

  private:
    // Room for the system's own lock; the source checks that it suffices.
    alignas(void*) unsigned char systemowa_[sizeof(void*) == 8 ? 48 : 24];
};

// Holds a lock for its own lifetime.
class TBlokada {
  public:
    explicit TBlokada(TSekcjaKrytyczna& sekcja) noexcept : sekcja_(sekcja) { sekcja_.Wejdz(); }
    TBlokada(const TBlokada&) = delete;
    TBlokada& operator=(const TBlokada&) = delete;
    ~TBlokada() { sekcja_.Wyjdz(); }

  private:
    TSekcjaKrytyczna& sekcja_;
};

} // namespace ztok
