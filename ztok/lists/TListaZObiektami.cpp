#include "ztok/lists/TListaZObiektami.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "ztok/kernel/JadroBiezace.h"
#include "ztok/lists/TListaWskObiektow.h"
#include "ztok/persist/TZapisywaczDanych.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/TPierwszyBlad.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {

ZTOK_KLASA_DEF(TListaZObiektami, TListaBazowa)

TListaZObiektami::~TListaZObiektami() { DokonczZycie(); }

TObiektBazowy* TListaZObiektami::DodajObiekt(TObiektBazowy* nowyObiekt, std::int32_t gdzie) {
    if (nowyObiekt != nullptr)
        SprawdzPrzyjecie(*this, *nowyObiekt);
    TWlasny<TObiektBazowy> straznik(nowyObiekt);
    if (FIleObiektow == FPojemnosc)
        ZwiekszPojemnosc();
    if (nowyObiekt != nullptr)
        Przejmij(*nowyObiekt);
    return TListaBazowa::DodajObiekt(straznik.Oddaj(), gdzie);
}

void TListaZObiektami::Przejmij(TObiektBazowy& obiekt) {
    JadroBiezace().UstawRodzica(obiekt, this);
    Trzymaj(obiekt, true);
}

void TListaZObiektami::Oddaj(TObiektBazowy& obiekt) {
    JadroBiezace().UstawRodzica(obiekt, nullptr);
    Trzymaj(obiekt, false);
}

void TListaZObiektami::MiejsceNaOdczytany(std::uint32_t zapowiedziane) {
    constexpr std::uint32_t kPoczatkowe = 512;
    if (FIleObiektow == FPojemnosc)
        UstawPojemnosc(static_cast<std::int32_t>(
            std::min(zapowiedziane, std::max(kPoczatkowe, 2 * static_cast<std::uint32_t>(FPojemnosc)))));
}

TObiektBazowy* TListaZObiektami::DodajNowy(const TKlasa& klasa, std::int32_t gdzie) {
    if (klasa.utworz == nullptr || !klasa.Ma(ckObiektBazowy))
        ZTErrorFmt(Komunikat(kmKlasaAbstrakcyjna), {klasa.nazwa});
    // A fresh object has no parts that this list could be one of.
    TWlasny<TObiektBazowy> nowy(static_cast<TObiektBazowy*>(klasa.utworz(this)));
    if (FIleObiektow == FPojemnosc)
        ZwiekszPojemnosc();
    Przejmij(*nowy);
    return TListaBazowa::DodajObiekt(nowy.Oddaj(), gdzie);
}

void TListaZObiektami::PrzypnijObiekt(TObiektBazowy* obiekt) {
    if (obiekt != nullptr) {
        SprawdzPrzyjecie(*this, *obiekt);
        JadroBiezace().UstawRodzica(*obiekt, nullptr);
    }
    DodajObiekt(obiekt, MaxInt);
}

void TListaZObiektami::PoPrzeniesieniu(TListaBazowa& lista, std::int32_t od, std::int32_t ile) {
    for (std::int32_t i = od; i < od + ile; ++i)
        if (TObiektBazowy* element = Obiekty(i); element != nullptr)
            Przejmij(*element);
    if (lista.Klasa()->Ma(ckListaRef))
        static_cast<TListaRefObiektow&>(lista).ZwolnijPrzeniesione(*this, od, od + ile);
}

TObiektBazowy* TListaZObiektami::UsunObiekt(std::int32_t nrObiektu, bool zwolnij, bool zachowajPojemnosc) {
    TObiektBazowy* obiekt = TListaBazowa::UsunObiekt(nrObiektu, zwolnij, zachowajPojemnosc);
    if (obiekt != nullptr)
        Oddaj(*obiekt);
    return obiekt;
}

void TListaZObiektami::ZwolnijObiekty(std::int32_t od) {
    TPierwszyBlad blad;
    if (od < 0)
        od = 0;
    while (FIleObiektow > od) {
        TObiektBazowy* element = FObiekty[--FIleObiektow];
        blad.Wykonaj([element] { Zwolnij(element); });
    }
    blad.Rzuc();
}

void TListaZObiektami::ZerujDane() {
    TPierwszyBlad blad;
    blad.Wykonaj([this] { ZwolnijObiekty(0); });
    TListaBazowa::ZerujDane();
    blad.Rzuc();
}

void TListaZObiektami::SkrocListe(std::int32_t nowyRozm, bool zachowajPojemnosc) {
    TPierwszyBlad blad;
    blad.Wykonaj([&] { ZwolnijObiekty(nowyRozm); });
    TListaBazowa::SkrocListe(nowyRozm, zachowajPojemnosc);
    blad.Rzuc();
}

template <class F> bool TListaZObiektami::ZwolnijWgWarunku(F warunek, bool zachowajPojemnosc) {
    TPierwszyBlad blad;
    bool usunieto = false;
    try {
        // An element that dies may tell somebody who edits the list: every look at it asks anew.
        for (std::int32_t i = FIleObiektow - 1; i >= 0; --i) {
            TObiektBazowy* element = Obiekty(i);
            if (element == nullptr || !warunek(*element) || Obiekty(i) != element)
                continue;
            FObiekty[i] = nullptr;
            usunieto = true;
            blad.Wykonaj([element] { Zwolnij(element); });
        }
    } catch (...) {
        UsunObiektyNil(zachowajPojemnosc); // the elements freed so far leave no holes
        throw;
    }
    if (usunieto)
        UsunObiektyNil(zachowajPojemnosc);
    blad.Rzuc();
    return usunieto;
}

bool TListaZObiektami::UsunObiekty(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter) {
    return ZwolnijWgWarunku([&](const TObiektBazowy& o) { return o.MaCechy(pola, wartosci, rozmLiter); }, false);
}

bool TListaZObiektami::UsunObiektyOprocz(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter) {
    return ZwolnijWgWarunku([&](const TObiektBazowy& o) { return !o.MaCechy(pola, wartosci, rozmLiter); }, false);
}

bool TListaZObiektami::UsunTeObiekty(const TListaWskObiektow& obiekty, bool zachowajPojemnosc) {
    // All are found before any dies: the pointer list may lose them, or be a part of one.
    std::vector<std::pair<TObiektBazowy*, std::int32_t>> miejsca;
    miejsca.reserve(static_cast<std::size_t>(FIleObiektow));
    for (std::int32_t i = 0; i < FIleObiektow; ++i)
        miejsca.emplace_back(FObiekty[i], i);
    std::sort(miejsca.begin(), miejsca.end(), [](const auto& a, const auto& b) {
        return a.first != b.first ? std::less<>()(a.first, b.first) : a.second < b.second;
    });
    std::vector<TObiektBazowy*> ginace;
    ginace.reserve(static_cast<std::size_t>(obiekty.IleObiektow()));
    for (TObiektBazowy* szukany : obiekty.ListaOdKonca()) {
        const auto gdzie = std::lower_bound(miejsca.begin(), miejsca.end(), szukany, [](const auto& m, const auto* o) {
            return std::less<>()(static_cast<const TObiektBazowy*>(m.first), o);
        });
        if (szukany == nullptr || gdzie == miejsca.end() || gdzie->first != szukany ||
            FObiekty[gdzie->second] == nullptr)
            continue;
        FObiekty[gdzie->second] = nullptr;
        ginace.push_back(szukany);
    }
    TPierwszyBlad blad;
    for (TObiektBazowy* obiekt : ginace)
        blad.Wykonaj([obiekt] { Zwolnij(obiekt); });
    if (!ginace.empty())
        UsunObiektyNil(zachowajPojemnosc);
    blad.Rzuc();
    return !ginace.empty();
}

bool TListaZObiektami::UsunDuplikaty(TArgumenty pola, TRozmiarLiter rozmLiter) {
    return WykonajUsunDuplikaty(pola, rozmLiter, false, true);
}

void TListaZObiektami::DajObiektyDoZapisu(TZapisywaczDanych& zapisywacz) const {
    TListaBazowa::DajObiektyDoZapisu(zapisywacz);
    if (FIleObiektow == 0)
        return;
    const TPoziom poziom(zapisywacz.Zagniezdzenie, *this);
    for (std::int32_t i = 0; i < FIleObiektow; ++i)
        if (FObiekty[i] != nullptr)
            FObiekty[i]->DajObiektyDoZapisu(zapisywacz);
}

std::uint32_t TListaZObiektami::IleNiepustych() const noexcept {
    return static_cast<std::uint32_t>(FIleObiektow - std::count(FObiekty, FObiekty + FIleObiektow, nullptr));
}

const TListaBazowa& TListaZObiektami::JakoLista(const TPole& inne) const {
    SprawdzKlase(inne, TListaBazowa::KlasaStatyczna());
    return static_cast<const TListaBazowa&>(inne);
}

} // namespace ztok
