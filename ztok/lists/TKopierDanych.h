// Copier: the context of one copy of a tree.
#pragma once

#include <cstddef>

#include "ztok/fields/TypyPol.h"
#include "ztok/kernel/TPrzejscie.h"
#include "ztok/lists/TIndeksWskaznikow.h"
#include "ztok/util/Zagniezdzenie.h"

namespace ztok {

class TListaWskObiektow;
class TObiektBazowy;
class TPole;
class TPoleWskObiektu;

// Records which source object became which copy and, when the copy is complete, re-points every pointer inside the copy
// that points at a copied source object. References of the copy are registered only then, each with its final target;
// what they point at stays safe to free, since it tells the copier first. Serves one top-level copy, on one thread;
// owns nothing that it records. An object or field that dies meanwhile takes its record along.
class ZTOK_API TKopierDanych : private TPrzejscie {
  public:
    TKopierDanych() = default;
    TKopierDanych(const TKopierDanych&) = delete;
    TKopierDanych& operator=(const TKopierDanych&) = delete;
    // References that were not re-pointed are registered with what they point at.
    ~TKopierDanych() override;

    // Told by every field before it is copied.
    void KopiowanoDane(const TPole& skad, TPole& dokad);
    // The copy of a source object (of its first occurrence).
    [[nodiscard]] bool JestKopia(const TPole* skad, TPole*& dokad) const;
    // Whether the field or list, told of by the last KopiowanoDane, may leave its registering to this copier.
    [[nodiscard]] bool Odklada(const TPole& dokad) const noexcept {
        return FRef.Ile() != 0 && FRef[FRef.Ile() - 1] == &dokad;
    }
    // Re-points and registers at the end of a copy. Targets outside the copied tree stay. std::bad_alloc: what could
    // not be registered points at nothing.
    void PrzepnijReferencje();
    void ZerujListyRef();

    TTrybKopiowaniaDanych TrybKopiowania = tkdDomyslny;
    TLicznikZagniezdzenia Zagniezdzenie{true};

  private:
    void ZgubPole(const TPole& pole) noexcept override;
    void Zarejestruj() noexcept override;
    [[nodiscard]] TObiektBazowy* KopiaObiektu(const TObiektBazowy* obiekt) const noexcept;
    template <class TCel, class TPrzepnij>
    void PrzepnijCele(std::size_t ile, const TCel& cel, const TPrzepnij& przepnij);
    void PrzepnijListe(TListaWskObiektow& lista);
    static void ZarejestrujListe(TListaWskObiektow& lista);

    TIndeksWskaznikow FSkad;
    TIndeksWskaznikow FDokad;
    TIndeksWskaznikow FRef;
    std::size_t zarejestrowane_ = 0; // how many of FRef need no registering any more
    std::size_t zgubione_ = 0;       // how often a field or object of this copy died
    bool brakPamieci_ = false;       // a reference was given up
};

} // namespace ztok
