// Comparer: the context of one comparison of two trees.
#pragma once

#include <cstddef>
#include <vector>

#include "ztok/fields/TypyPol.h"
#include "ztok/lists/TIndeksWskaznikow.h"
#include "ztok/util/Zagniezdzenie.h"

namespace ztok {

class TObiektBazowy;
class TPole;

// Carries the options of one comparison and remembers which pairs of pointer lists are being compared, so that cycles
// end. Serves one top-level comparison, on one thread.
class ZTOK_API TPorownywaczDanych {
  public:
    // The roots may be null; paths of pointers are taken relative to them.
    TPorownywaczDanych(const TObiektBazowy* obiektCo, const TObiektBazowy* obiektZCzym, TRodzajPorownPol rodzaj,
                       TRozmiarLiter rozmLiter, std::uint32_t localeID, TTrybPorownRef trybRef);
    TPorownywaczDanych(const TPorownywaczDanych&) = delete;
    TPorownywaczDanych& operator=(const TPorownywaczDanych&) = delete;
    ~TPorownywaczDanych() = default;

    // Records the pair, unless JestPara knows one of its sides.
    void Porownuje(const TPole& co, const TPole& zCzym);
    [[nodiscard]] bool SaPorownywane(const TPole& co, const TPole& zCzym) const;
    // The first recorded pair whose left side is `co` or whose right side is `zCzym`: either side suffices, by intent.
    // On a miss `gdzie` is the number of pairs.
    [[nodiscard]] bool JestPara(const TPole& co, const TPole& zCzym, std::size_t& gdzie) const;
    void ZerujListy();
    // For pointer fields: whether exactly this pair of targets is met for the first time. A pair met before is being
    // compared higher up or was found equal, since a difference ends the whole walk; so cycles end, and targets that
    // many fields share are compared once.
    bool NowaParaCelow(const TObiektBazowy* co, const TObiektBazowy* zCzym);

    const TObiektBazowy* ObiektCo;
    const TObiektBazowy* ObiektZCzym;
    bool PominChwilowe;
    bool RefJakoSciezki;
    TRozmiarLiter RozmLiter;
    std::uint32_t LocaleID;
    TLicznikZagniezdzenia Zagniezdzenie{true};

  private:
    TIndeksWskaznikow FCo;
    TIndeksWskaznikow FZCzym;
    struct TPara {
        const TObiektBazowy* co = nullptr;
        const TObiektBazowy* zCzym = nullptr;
        friend bool operator==(const TPara&, const TPara&) = default;
    };
    std::vector<TPara> pary_; // pairs of targets, open addressing
    std::size_t ilePar_ = 0;
};

} // namespace ztok
