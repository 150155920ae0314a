// Base of everything that can be assigned to another object: the platform layer's persistent base class.
#pragma once

#include "ztok/platform/DeklaracjaKlasy.h"

namespace ztok {

class ZTOK_API TTrwaly : public TObiektOgolny {
    ZTOK_KLASA_DEKL(TTrwaly)

    ~TTrwaly() override;

    // Copies this object's state into another one. A class that does not replace it cannot be assigned: EBladKonwersji.
    virtual void PrzypiszDo(TTrwaly& cel) const;
    // Hook for properties beyond the declared ones; nothing here.
    virtual void DefiniujWlasciwosci();
    // Takes over the state of the source, which decides how (PrzypiszDo).
    virtual void Przypisz(const TTrwaly& zrodlo);

  protected:
    TTrwaly() noexcept = default;
};

} // namespace ztok
