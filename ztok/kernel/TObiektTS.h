// Lockable variants of the object.
#pragma once

#include "ztok/kernel/TObiekt.h"
#include "ztok/platform/TSekcjaKrytyczna.h"

namespace ztok {

// Locks a re-entrant critical section of its own.
class ZTOK_API TObiektTS : public TObiekt {
    ZTOK_KLASA_DEKL(TObiektTS)

    explicit TObiektTS(TObiektBazowy* wlasciciel = nullptr);
    ~TObiektTS() override;

    // The section lives exactly as long as the object: it is there from construction, and the last thing to go.
    void TworzSekcjeKrytyczna() override;
    void UsunSekcjeKrytyczna() override;
    void ZablokujObiekt() const override;
    void OdblokujObiekt() const override;
    // Takes the lock unless another thread holds it; whether it was taken.
    [[nodiscard]] bool SprobujZablokowac() const noexcept { return sekcja_.SprobujWejsc(); }

  private:
    mutable TSekcjaKrytyczna sekcja_;
};

// Locks its parent, so a tree shares the lock of its nearest lockable ancestor. Without a parent it locks nothing. Its
// parent must not change while it is locked.
class ZTOK_API TObiektITS : public TObiekt {
    ZTOK_KLASA_DEKL(TObiektITS)

    explicit TObiektITS(TObiektBazowy* wlasciciel = nullptr) : TObiekt(wlasciciel) {}
    ~TObiektITS() override;

    void ZablokujObiekt() const override;
    void OdblokujObiekt() const override;
};

} // namespace ztok
