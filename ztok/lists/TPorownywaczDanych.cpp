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
    pary_.clear();
    ilePar_ = 0;
}

bool TPorownywaczDanych::NowaParaCelow(const TObiektBazowy* co, const TObiektBazowy* zCzym) {
    const auto miejsce = [](std::vector<TPara>& tablica, const TPara& para) -> TPara& {
        const std::size_t maska = tablica.size() - 1;
        std::size_t i = (MieszajWskaznik(para.co) ^ (MieszajWskaznik(para.zCzym) * 3)) & maska;
        while (tablica[i].co != nullptr && tablica[i] != para)
            i = (i + 1) & maska;
        return tablica[i];
    };
    const TPara para{co, zCzym};
    if (2 * (ilePar_ + 1) > pary_.size()) {
        std::vector<TPara> wieksza(pary_.empty() ? 16 : 2 * pary_.size());
        for (const TPara& stara : pary_)
            if (stara.co != nullptr)
                miejsce(wieksza, stara) = stara;
        pary_.swap(wieksza);
    }
    TPara& cel = miejsce(pary_, para);
    if (cel.co != nullptr)
        return false;
    cel = para;
    ++ilePar_;
    return true;
}

} // namespace ztok
