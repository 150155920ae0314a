#include "ztok/lists/TKopierDanych.h"

#include <algorithm>
#include <new>

#include "ztok/fields/TPoleWskObiektu.h"
#include "ztok/lists/TListaWskObiektow.h"

namespace ztok {

namespace {

TPole* JakoPole(const void* wpis) noexcept { return static_cast<TPole*>(const_cast<void*>(wpis)); }

// Fields whose targets are looked up together, so that their misses of the cache overlap.
constexpr std::size_t kPartia = 32;

} // namespace

TKopierDanych::~TKopierDanych() { TKopierDanych::Zarejestruj(); }

void TKopierDanych::KopiowanoDane(const TPole& skad, TPole& dokad) {
    const std::uint32_t cechy = dokad.Klasa()->cechy;
    if ((cechy & ckObiektBazowy) != 0) {
        FSkad.Dopisz(&skad);
        try {
            FDokad.Dopisz(&dokad);
        } catch (...) {
            FSkad.Cofnij();
            throw;
        }
    }
    if ((cechy & (ckListaWsk | ckPoleWsk)) != 0)
        FRef.Dopisz(&dokad);
}

bool TKopierDanych::JestKopia(const TPole* skad, TPole*& dokad) const {
    const std::size_t gdzie = FSkad.Znajdz(skad);
    if (gdzie == FSkad.Ile() || FDokad[gdzie] == nullptr)
        return false;
    dokad = JakoPole(FDokad[gdzie]);
    return true;
}

TObiektBazowy* TKopierDanych::KopiaObiektu(const TObiektBazowy* obiekt) const noexcept {
    TPole* kopia = nullptr;
    return obiekt != nullptr && JestKopia(obiekt, kopia) ? static_cast<TObiektBazowy*>(kopia) : nullptr;
}

// Calls przepnij(i, copy) for each target cel(i) that has a copy, and przepnij(i, null) for the others.
template <class TCel, class TPrzepnij>
void TKopierDanych::PrzepnijCele(std::size_t ile, const TCel& cel, const TPrzepnij& przepnij) {
    TObiektBazowy* kopie[kPartia];
    for (std::size_t od = 0; od < ile; od += kPartia) {
        const std::size_t razem = std::min(kPartia, ile - od);
        for (std::size_t i = 0; i < razem; ++i) {
            const TObiektBazowy* obiekt = cel(od + i);
            FSkad.Zapowiedz(obiekt);
            __builtin_prefetch(obiekt);
        }
        const std::size_t zgubione = zgubione_;
        for (std::size_t i = 0; i < razem; ++i) {
            kopie[i] = KopiaObiektu(cel(od + i));
            __builtin_prefetch(kopie[i]);
        }
        for (std::size_t i = 0; i < razem; ++i)
            // An override that hears of the change may free a copy.
            przepnij(od + i, zgubione == zgubione_ ? kopie[i] : KopiaObiektu(cel(od + i)));
    }
}

void TKopierDanych::PrzepnijReferencje() {
    const auto pole = [this](std::size_t i) -> TPoleWskObiektu* {
        TPole* wpis = JakoPole(FRef[i]);
        return wpis != nullptr && wpis->Klasa()->Ma(ckPoleWsk) ? static_cast<TPoleWskObiektu*>(wpis) : nullptr;
    };
    PrzepnijCele(
        FRef.Ile(),
        [&pole](std::size_t i) {
            const TPoleWskObiektu* wskaznik = pole(i);
            return wskaznik == nullptr ? nullptr : wskaznik->obiekt_;
        },
        [&pole](std::size_t i, TObiektBazowy* kopia) {
            TPoleWskObiektu* wskaznik = pole(i);
            if (wskaznik == nullptr)
                return;
            if (kopia != nullptr && kopia != wskaznik->obiekt_)
                wskaznik->UstawObiekt(kopia);
            else if (wskaznik->obiekt_ != nullptr && wskaznik->Klasa()->Ma(ckPoleRef))
                wskaznik->obiekt_->DodajRefOd(wskaznik);
        });
    for (std::size_t i = 0; i < FRef.Ile(); ++i)
        if (TPole* wpis = JakoPole(FRef[i]); wpis != nullptr && wpis->Klasa()->Ma(ckListaWsk))
            PrzepnijListe(static_cast<TListaWskObiektow&>(*wpis));
    zarejestrowane_ = FRef.Ile();
    if (brakPamieci_)
        throw std::bad_alloc();
}

void TKopierDanych::PrzepnijListe(TListaWskObiektow& lista) {
    const bool zRef = lista.Klasa()->Ma(ckListaRef);
    // A target that gives way to its copy loses its last occurrence here; one that is itself a copy of another is
    // registered again below.
    PrzepnijCele(
        static_cast<std::size_t>(lista.IleObiektow()),
        [&lista](std::size_t i) { return lista.Obiekty(static_cast<std::int32_t>(i)); },
        [&lista, zRef](std::size_t i, TObiektBazowy* kopia) {
            TObiektBazowy* cel = lista.Obiekty(static_cast<std::int32_t>(i));
            if (cel == nullptr || kopia == nullptr)
                return;
            if (zRef)
                cel->ZwolnijRefOd(&lista);
            lista.FObiekty[i] = kopia;
        });
    if (zRef)
        ZarejestrujListe(lista);
}

void TKopierDanych::ZarejestrujListe(TListaWskObiektow& lista) {
    auto& ref = static_cast<TListaRefObiektow&>(lista);
    bool powtorki = false;
    for (std::int32_t i = 0; i < lista.IleObiektow(); ++i)
        if (TObiektBazowy* cel = lista.Obiekty(i); cel != nullptr && !cel->DodajRefOd(&lista))
            powtorki = true;
    ref.powtorki_ = powtorki;
}

void TKopierDanych::Zarejestruj() noexcept {
    for (; zarejestrowane_ < FRef.Ile(); ++zarejestrowane_) {
        TPole* wpis = JakoPole(FRef[zarejestrowane_]);
        if (wpis == nullptr)
            continue;
        // What cannot be registered is let go; dropping a reference cannot fail.
        if (wpis->Klasa()->Ma(ckPoleRef)) {
            auto& pole = static_cast<TPoleWskObiektu&>(*wpis);
            try {
                if (pole.obiekt_ != nullptr)
                    pole.obiekt_->DodajRefOd(&pole);
            } catch (...) {
                brakPamieci_ = true;
                pole.obiekt_ = nullptr;
            }
        } else if (wpis->Klasa()->Ma(ckListaRef)) {
            auto& lista = static_cast<TListaWskObiektow&>(*wpis);
            try {
                ZarejestrujListe(lista);
            } catch (...) {
                brakPamieci_ = true;
                lista.SkrocListe(0, true);
            }
        }
    }
}

void TKopierDanych::ZgubPole(const TPole& pole) noexcept {
    const std::uint32_t cechy = pole.Klasa()->cechy;
    if ((cechy & ckObiektBazowy) != 0) {
        Zarejestruj();
        FSkad.Usun(&pole);
        FDokad.Usun(&pole);
    }
    if ((cechy & (ckListaWsk | ckPoleWsk)) != 0)
        FRef.Usun(&pole);
    ++zgubione_;
}

void TKopierDanych::ZerujListyRef() {
    Zarejestruj();
    FSkad.Zeruj();
    FDokad.Zeruj();
    FRef.Zeruj();
    zarejestrowane_ = 0;
}

} // namespace ztok
