#include "ztok/lists/TPorownywaczDanych.h"

#include <algorithm>

namespace ztok {

TPorownywaczDanych::TPorownywaczDanych(const TObiektBazowy* obiektCo, const TObiektBazowy* obiektZCzym,
                                       TRodzajPorownPol rodzaj, TRozmiarLiter rozmLiter, std::uint32_t localeID,
                                       TTrybPorownRef trybRef)
    : ObiektCo(obiektCo), ObiektZCzym(obiektZCzym), PominChwilowe(rodzaj == rpBezChwilowych),
      RefJakoSciezki(trybRef == tprRefJakoSciezki), RozmLiter(rozmLiter), LocaleID(localeID) {}

void TPorownywaczDanych::Porownuje(const TPole& co, const TPole& zCzym) {
    if (SaPorownywane(co, zCzym))
        return;
    FCo.Dopisz(&co);
    FZCzym.Dopisz(&zCzym);
}

bool TPorownywaczDanych::SaPorownywane(const TPole& co, const TPole& zCzym) const {
    std::size_t gdzie = 0;
    return JestPara(co, zCzym, gdzie);
}

bool TPorownywaczDanych::JestPara(const TPole& co, const TPole& zCzym, std::size_t& gdzie) const {
    gdzie = std::min(FCo.Znajdz(&co), FZCzym.Znajdz(&zCzym));
    return gdzie < FCo.Ile();
}

void TPorownywaczDanych::ZerujListy() {
    FCo.Zeruj();
    FZCzym.Zeruj();
}

} // namespace ztok
