// Comparer: the context of one comparison of two trees.
#pragma once

#include <cstddef>
#include <vector>

#include "ztok/fields/TypyPol.h"
#include "ztok/lists/TIndeksWskaznikow.h"
#include "ztok/lists/TPozycjeWListach.h"
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
    // The walk behind WykonajPorownanie of objects with fields and of lists, over their fields or elements in order;
    // `zCzym` must be of the same kind. Parts whose classes compare themselves are asked and nest as calls do; the
    // others are walked without recursion, so that pointers lead on for ever. Owned parts nest as deep as Zagniezdzenie
    // allows.
    [[nodiscard]] std::int32_t PorownajCzesci(const TObiektBazowy& co, const TObiektBazowy& zCzym);
    // Two objects that need not be of one class: different then, in the order of the class names.
    [[nodiscard]] static std::int32_t PorownajKlasy(const TObiektBazowy& co, const TObiektBazowy& zCzym) noexcept;
    [[nodiscard]] static std::int32_t PorownajDowolne(const TObiektBazowy& co, const TObiektBazowy& zCzym,
                                                      TPorownywaczDanych* porownywacz = nullptr);
    // The signs of pointers where one of them is null, or paths are compared; false where the targets decide.
    [[nodiscard]] bool PorownajWskazania(const TObiektBazowy* co, const TObiektBazowy* zCzym, std::int32_t& wynik);

    const TObiektBazowy* ObiektCo;
    const TObiektBazowy* ObiektZCzym;
    bool PominChwilowe;
    bool RefJakoSciezki;
    TRozmiarLiter RozmLiter;
    std::uint32_t LocaleID;
    TLicznikZagniezdzenia Zagniezdzenie{true};

  private:
    // Two objects in the middle of being compared.
    struct TRamka {
        const TObiektBazowy* co;
        const TObiektBazowy* zCzym;
        std::int32_t ostatni; // the field or element compared last
        int poziom;           // of owned nesting
    };

    // One step of a walk: true when it goes on with the parts of `dalej`, else `wynik` tells about the rest of `ramka`.
    bool Krok(TRamka& ramka, TRamka& dalej, std::int32_t& wynik);
    bool PorownajWgKodu(unsigned kod, const TPole& co, const TPole& zCzym, std::int32_t& wynik) const;
    bool KrokPol(TRamka& ramka, TRamka& dalej, std::int32_t& wynik);
    bool KrokWskaznikow(TRamka& ramka, TRamka& dalej, std::int32_t& wynik);
    bool WejdzDoCzesci(const TRamka& ramka, const TObiektBazowy& co, const TObiektBazowy& zCzym, TRamka& dalej,
                       std::int32_t& wynik);
    bool WejdzDoCelu(const TObiektBazowy* co, const TObiektBazowy* zCzym, TRamka& dalej, std::int32_t& wynik);
    template <class F> std::int32_t Zapytaj(int poziom, const F& porownaj);

    std::vector<TRamka> ramki_; // those that wait for their parts
    int poziomPrzebiegu_ = 0;   // of the innermost walk's root
    TPozycjeWListach pozycje_;
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
