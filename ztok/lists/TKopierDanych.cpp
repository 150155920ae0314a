#include "ztok/lists/TKopierDanych.h"

#include "ztok/fields/TPoleWskObiektu.h"
#include "ztok/lists/TListaWskObiektow.h"

namespace ztok {

void TKopierDanych::KopiowanoDane(const TPole& skad, TPole& dokad) {
    const std::uint32_t cechy = dokad.Klasa()->cechy;
    if ((cechy & ckObiektBazowy) != 0) {
        FDokad.push_back(&dokad);
        try {
            FSkad.Dopisz(&skad);
        } catch (...) {
            FDokad.pop_back();
            throw;
        }
    }
    if ((cechy & (ckListaWsk | ckPoleWsk)) != 0)
        FRef.push_back(&dokad);
}

bool TKopierDanych::JestKopia(const TPole* skad, TPole*& dokad) const {
    const std::size_t gdzie = FSkad.Znajdz(skad);
    if (gdzie == FSkad.Ile())
        return false;
    dokad = FDokad[gdzie];
    return true;
}

TObiektBazowy* TKopierDanych::KopiaObiektu(const TObiektBazowy* obiekt) const {
    TPole* kopia = nullptr;
    return obiekt != nullptr && JestKopia(obiekt, kopia) ? static_cast<TObiektBazowy*>(kopia) : nullptr;
}

void TKopierDanych::PrzepnijReferencje() {
    for (TPole* pole : FRef) {
        const std::uint32_t cechy = pole->Klasa()->cechy;
        if ((cechy & ckPoleWsk) != 0) {
            auto& wskaznik = static_cast<TPoleWskObiektu&>(*pole);
            if (TObiektBazowy* kopia = KopiaObiektu(wskaznik.obiekt_); kopia != nullptr)
                wskaznik.UstawObiekt(kopia);
        } else {
            auto& lista = static_cast<TListaWskObiektow&>(*pole);
            // A target that gives way to its copy loses its last occurrence here; one that is itself a copy of another
            // is registered again below.
            for (std::int32_t i = 0; i < lista.IleObiektow(); ++i) {
                TObiektBazowy*& element = lista.FObiekty[i];
                TObiektBazowy* kopia = KopiaObiektu(element);
                if (kopia == nullptr)
                    continue;
                if ((cechy & ckListaRef) != 0)
                    element->ZwolnijRefOd(&lista);
                element = kopia;
            }
            if ((cechy & ckListaRef) != 0)
                for (std::int32_t i = 0; i < lista.IleObiektow(); ++i)
                    if (lista.FObiekty[i] != nullptr)
                        lista.FObiekty[i]->DodajRefOd(&lista);
        }
    }
}

void TKopierDanych::ZarejestrujPoBledzie() noexcept {
    for (TPole* pole : FRef)
        if (pole->Klasa()->Ma(ckListaRef)) {
            auto& lista = static_cast<TListaRefObiektow&>(*pole);
            try {
                for (std::int32_t i = 0; i < lista.IleObiektow(); ++i)
                    if (lista.FObiekty[i] != nullptr)
                        lista.FObiekty[i]->DodajRefOd(&lista);
            } catch (...) {
                lista.SkrocListe(0, true); // what could not be registered is let go; dropping a reference cannot fail
            }
        }
}

void TKopierDanych::ZerujListyRef() {
    FSkad.Zeruj();
    FDokad.clear();
    FRef.clear();
}

} // namespace ztok
