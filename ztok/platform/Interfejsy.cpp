#include "ztok/platform/Interfejsy.h"

namespace ztok {

void* ZnajdzInterfejs(TObiektOgolny* obiekt, const TGUID& iid) noexcept {
    if (obiekt == nullptr)
        return nullptr;
    const bool dowolny = iid == IInterfejs::IID;
    for (const TKlasa* klasa = obiekt->Klasa(); klasa != nullptr; klasa = klasa->Przodek()) {
        if (klasa->interfejsy == nullptr)
            continue;
        for (const TWierszInterfejsu& wiersz : klasa->interfejsy())
            // IInterfejs is at the start of every interface, so the first one found stands for it.
            if (dowolny || *wiersz.iid == iid)
                return wiersz.rzutuj(obiekt);
    }
    return nullptr;
}

TObiektOgolny* ObiektZaInterfejsem(IInterfejs* interfejs) noexcept {
    void* obiekt = nullptr;
    if (interfejs == nullptr || interfejs->QueryInterface(IID_ObiektImplementujacy, &obiekt) != kIntfOk)
        return nullptr;
    return static_cast<TObiektOgolny*>(obiekt);
}

} // namespace ztok
