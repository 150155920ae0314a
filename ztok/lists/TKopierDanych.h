// Copier: the context of one copy of a tree.
#pragma once

#include <vector>

#include "ztok/fields/TypyPol.h"
#include "ztok/lists/TIndeksWskaznikow.h"
#include "ztok/util/Zagniezdzenie.h"

namespace ztok {

class TObiektBazowy;
class TPole;

// Records which source object became which copy and, when the copy is complete, re-points every pointer inside the copy
// that points at a copied source object. Serves one top-level copy, on one thread; owns nothing that it records.
class ZTOK_API TKopierDanych {
  public:
    TKopierDanych() = default;
    TKopierDanych(const TKopierDanych&) = delete;
    TKopierDanych& operator=(const TKopierDanych&) = delete;
    ~TKopierDanych() = default;

    // Told by every field before it is copied.
    void KopiowanoDane(const TPole& skad, TPole& dokad);
    // The copy of a source object (of its first occurrence).
    [[nodiscard]] bool JestKopia(const TPole* skad, TPole*& dokad) const;
    // Re-points at the end of a copy. Targets outside the copied tree stay.
    void PrzepnijReferencje();
    // After a copy that failed: every reference list of the copy is registered with what it points at, so that no
    // unregistered pointer survives.
    void ZarejestrujPoBledzie() noexcept;
    void ZerujListyRef();

    TTrybKopiowaniaDanych TrybKopiowania = tkdDomyslny;
    TLicznikZagniezdzenia Zagniezdzenie;

  private:
    [[nodiscard]] TObiektBazowy* KopiaObiektu(const TObiektBazowy* obiekt) const;

    TIndeksWskaznikow FSkad;
    std::vector<TPole*> FDokad;
    std::vector<TPole*> FRef;
};

} // namespace ztok
