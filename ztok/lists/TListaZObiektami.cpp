#include "ztok/lists/TListaZObiektami.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "ztok/kernel/JadroBiezace.h"
#include "ztok/kernel/Selektory.h"
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

void TListaZObiektami::Przejmij(TObiektBazowy& obiekt) { PoPrzyjeciu(obiekt, *this); }

void TListaZObiektami::Oddaj(TObiektBazowy& obiekt) { PoOddaniu(obiekt); }

void TListaZObiektami::MiejsceNaOdczytany(std::uint32_t zapowiedziane) {
    constexpr std::uint32_t kPoczatkowe = 512;
    if (FIleObiektow == FPojemnosc)
        UstawPojemnosc(static_cast<std::int32_t>(
            std::min(zapowiedziane, std::max(kPoczatkowe, 2 * static_cast<std::uint32_t>(FPojemnosc)))));
}

TObiektBazowy* TListaZObiektami::DodajNowy(const TKlasa& klasa, std::int32_t gdzie) {
    if (klasa.utworz == nullptr || !klasa.Ma(ckObiektBazowy))
        ZTErrorFmt(Komunikat(kmKlasaAbstrakcyjna), {klasa.nazwa});
    SprawdzZycie();
    // A fresh object has no parts that this list could be one of.
    TWlasny<TObiektBazowy> nowy = Tworz([&] { return klasa.utworz(this); });
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
    TObiektBazowy* obiekt = Obiekty(nrObiektu);
    if (obiekt == nullptr)
        return TListaBazowa::UsunObiekt(nrObiektu, false, zachowajPojemnosc);
    SprawdzOddanie(*obiekt);
    TPierwszyBlad blad;
    if (zwolnij) {
        if (ZwolnijTrzymany(obiekt, blad))
            TListaBazowa::UsunObiekt(MiejsceElementu(nrObiektu, obiekt), false, zachowajPojemnosc);
        obiekt = nullptr;
    } else {
        TListaBazowa::UsunObiekt(nrObiektu, false, zachowajPojemnosc);
        Oddaj(*obiekt);
    }
    blad.Rzuc();
    return obiekt;
}

void TListaZObiektami::ZwolnijObiekty(std::int32_t od) {
    TPierwszyBlad blad;
    od = std::max(od, 0);
    // What an element's end adds goes too; but there is an end to it.
    for (std::int64_t zostalo = 4 * std::int64_t{FIleObiektow} + 1000; FIleObiektow > od && zostalo > 0; --zostalo) {
        const std::int32_t ostatni = FIleObiektow - 1;
        TObiektBazowy* element = FObiekty[ostatni];
        if (element != nullptr && !ZwolnijTrzymany(element, blad))
            break; // it is dying, and its end has come here
        if (const std::int32_t gdzie = MiejsceElementu(ostatni, element); gdzie == FIleObiektow - 1)
            --FIleObiektow;
        else
            TListaBazowa::UsunObiekt(gdzie, false, true);
    }
    blad.Rzuc();
}

void TListaZObiektami::ZerujDane() {
    TPierwszyBlad blad;
    blad.Wykonaj([this] { ZwolnijObiekty(0); });
    if (ListaPusta())
        TListaBazowa::ZerujDane();
    blad.Rzuc();
}

void TListaZObiektami::SkrocListe(std::int32_t nowyRozm, bool zachowajPojemnosc) {
    TPierwszyBlad blad;
    blad.Wykonaj([&] { ZwolnijObiekty(nowyRozm); });
    TListaBazowa::SkrocListe(std::max(nowyRozm, FIleObiektow), zachowajPojemnosc);
    blad.Rzuc();
}

template <class F> bool TListaZObiektami::ZwolnijWgWarunku(F warunek, bool zachowajPojemnosc) {
    TPierwszyBlad blad;
    bool usunieto = false;
    try {
        // An element that dies may tell somebody who edits the list: every look at it asks anew.
        for (std::int32_t i = FIleObiektow - 1; i >= 0; --i) {
            TObiektBazowy* element = Obiekty(i);
            if (element == nullptr || !warunek(*element) || Obiekty(i) != element || !ZwolnijTrzymany(element, blad))
                continue;
            usunieto = NilujPoZwolnieniu(i, element) || usunieto;
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
    SprawdzDlugosci(u"UO", pola, wartosci);
    SprawdzSelektoryElementow(u"UO", this, pola);
    return ZwolnijWgWarunku([&](const TObiektBazowy& o) { return MaOcenioneCechy(o, pola, wartosci, rozmLiter); },
                            false);
}

bool TListaZObiektami::UsunObiektyOprocz(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter) {
    SprawdzDlugosci(u"UOO", pola, wartosci);
    SprawdzSelektoryElementow(u"UOO", this, pola);
    return ZwolnijWgWarunku([&](const TObiektBazowy& o) { return !MaOcenioneCechy(o, pola, wartosci, rozmLiter); },
                            false);
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
    std::vector<std::pair<TObiektBazowy*, std::int32_t>> ginace;
    ginace.reserve(static_cast<std::size_t>(obiekty.IleObiektow()));
    std::vector<bool> wziete(miejsca.size());
    for (TObiektBazowy* szukany : obiekty.ListaOdKonca()) {
        const auto gdzie = std::lower_bound(miejsca.begin(), miejsca.end(), szukany, [](const auto& m, const auto* o) {
            return std::less<>()(static_cast<const TObiektBazowy*>(m.first), o);
        });
        if (szukany == nullptr || gdzie == miejsca.end() || gdzie->first != szukany ||
            wziete[static_cast<std::size_t>(gdzie->second)])
            continue;
        wziete[static_cast<std::size_t>(gdzie->second)] = true;
        ginace.push_back(*gdzie);
    }
    TPierwszyBlad blad;
    bool usunieto = false;
    for (const auto& [obiekt, nr] : ginace) {
        // One that died before may have told somebody who edits the list.
        const std::int32_t gdzie = MiejsceElementu(nr, obiekt);
        if (gdzie >= 0 && ZwolnijTrzymany(obiekt, blad))
            usunieto = NilujPoZwolnieniu(gdzie, obiekt) || usunieto;
    }
    if (usunieto)
        UsunObiektyNil(zachowajPojemnosc);
    blad.Rzuc();
    return usunieto;
}

bool TListaZObiektami::UsunDuplikaty(TArgumenty pola, TRozmiarLiter rozmLiter) {
    return WykonajUsunDuplikaty(pola, rozmLiter, false, true);
}

void TListaZObiektami::DajObiektyDoZapisu(TZapisywaczDanych& zapisywacz) const {
    TListaBazowa::DajObiektyDoZapisu(zapisywacz);
    for (std::int32_t i = 0; i < FIleObiektow; ++i)
        if (FObiekty[i] != nullptr) {
            const TPoziom poziom(zapisywacz.Zagniezdzenie, *this, FObiekty[i]);
            FObiekty[i]->DajObiektyDoZapisu(zapisywacz);
        }
}

bool TListaZObiektami::MaMojeElementy(const TListaBazowa& lista) const noexcept {
    if (!lista.Klasa()->Ma(ckListaWsk))
        return false;
    for (const TObiektBazowy* element : lista)
        if (element != nullptr && JednoWDrugim(*this, *element))
            return true;
    return false;
}

std::uint32_t TListaZObiektami::IleNiepustych() const noexcept {
    return static_cast<std::uint32_t>(FIleObiektow - std::count(FObiekty, FObiekty + FIleObiektow, nullptr));
}

void TListaZObiektami::BladZmianyPrzyZapisie() const {
    ZTErrorFmt(kmZmianaPrzyZapisie, {NazwaKlasy(), DajSciezkeDoSiebie()});
}

const TListaBazowa& TListaZObiektami::JakoLista(const TPole& inne) const {
    SprawdzKlase(inne, TListaBazowa::KlasaStatyczna());
    return static_cast<const TListaBazowa&>(inne);
}

} // namespace ztok
