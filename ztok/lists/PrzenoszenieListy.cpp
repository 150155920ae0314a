// Filling a list from another one: by adding elements as the kind of list does, or by moving them out of the other.
#include <algorithm>
#include <functional>
#include <set>

#include "ztok/kernel/Selektory.h"
#include "ztok/kernel/TObiekt.h"
#include "ztok/lists/TListaBazowa.h"
#include "ztok/lists/TListaObiektow.h"
#include "ztok/lists/TListaWskObiektow.h"
#include "ztok/lists/TRozneElementy.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/TListaNapisow.h"
#include "ztok/platform/TPierwszyBlad.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {

// --- adding

template <class F> bool TListaBazowa::DopiszWybrane(const TListaBazowa* dane, const F& wybrany) {
    bool dopisano = false;
    // A list added to itself takes the elements that it has now.
    const std::int32_t ile = dane == nullptr ? 0 : dane->IleObiektow();
    for (std::int32_t i = 0; i < ile; ++i)
        if (TObiektBazowy* element = dane->Obiekty(i); element != nullptr && wybrany(*element)) {
            DopiszObiekt(element, MaxInt);
            dopisano = true;
        }
    return dopisano;
}

bool TListaBazowa::DopiszObiektyOCechach(const TListaBazowa* dane, TArgumenty pola, TArgumenty wartosci,
                                         TRozmiarLiter rozmLiter) {
    SprawdzDlugosci(u"DOOC", pola, wartosci);
    SprawdzSelektoryElementow(u"DOOC", dane, pola);
    return DopiszWybrane(dane, [&](const TObiektBazowy& o) { return MaOcenioneCechy(o, pola, wartosci, rozmLiter); });
}

bool TListaBazowa::DopiszObiektyOprocz(const TListaBazowa* dane, TArgumenty pola, TArgumenty wartosci,
                                       TRozmiarLiter rozmLiter) {
    SprawdzDlugosci(u"DOO", pola, wartosci);
    SprawdzSelektoryElementow(u"DOO", dane, pola);
    return DopiszWybrane(dane, [&](const TObiektBazowy& o) { return !MaOcenioneCechy(o, pola, wartosci, rozmLiter); });
}

bool TListaBazowa::MaTakiJak(const TObiektBazowy& obiekt, TArgumenty pola, TRozmiarLiter rozmLiter) const {
    if (pola.empty())
        return JestTakiObiekt(obiekt);
    const TOcenione ocenione;
    return JestObiektTakiJak(obiekt, pola, rozmLiter);
}

bool TListaBazowa::DopiszObiektyGdyBrak(const TListaBazowa* dane, TArgumenty pola, TRozmiarLiter rozmLiter) {
    SprawdzSelektoryElementow(u"DOGB", dane, pola, this);
    if (dane != nullptr && TRozneElementy::MoznaUporzadkowac(*dane, this, pola)) {
        TRozneElementy rozne(pola, rozmLiter);
        for (const TObiektBazowy* element : *this)
            if (element != nullptr)
                rozne.Dodaj(*element, 0);
        // A list that adds something else than the element or its copy is asked itself from then on.
        bool znane = true;
        bool dopisano = false;
        const std::int32_t ile = dane->IleObiektow();
        for (std::int32_t i = 0; i < ile; ++i) {
            TObiektBazowy* element = dane->Obiekty(i);
            znane = znane && !rozne.Zginal();
            if (element == nullptr || (znane ? rozne.Ma(*element) : MaTakiJak(*element, pola, rozmLiter)))
                continue;
            const std::int32_t przed = IleObiektow();
            const TObiektBazowy* dodany = DopiszObiekt(element, MaxInt);
            dopisano = true;
            znane = znane && !rozne.Zginal() && dodany != nullptr && IleObiektow() == przed + 1 &&
                    Obiekty(przed) == dodany && dane->Obiekty(i) == element && rozne.SaRowne(*dodany, *element);
            if (znane)
                rozne.Dodaj(*dodany, 0);
        }
        return dopisano;
    }
    return DopiszWybrane(dane, [&](const TObiektBazowy& o) { return !MaTakiJak(o, pola, rozmLiter); });
}

bool TListaBazowa::KopiujObiektyOCechach(const TListaBazowa* dane, TArgumenty pola, TArgumenty wartosci,
                                         TRozmiarLiter rozmLiter) {
    SprawdzDlugosci(u"KOOC", pola, wartosci);
    SprawdzSelektoryElementow(u"KOOC", dane, pola);
    if (dane == this) {
        UsunObiektyOprocz(pola, wartosci, rozmLiter);
        return !ListaPusta();
    }
    if (dane != nullptr)
        dane->ZamknijDziury();
    if (dane != nullptr && Klasa()->Ma(ckListaZObiektami) &&
        (JednoWDrugim(*this, *dane) || static_cast<TListaZObiektami*>(this)->MaMojeElementy(*dane))) {
        // What is copied dies with this list's elements, or holds them: they go when the copies are made.
        const TWlasny<TObiektBazowy> kopie = TworzInstancje(nullptr);
        static_cast<TListaBazowa&>(*kopie).DopiszObiektyOCechach(dane, pola, wartosci, rozmLiter);
        ZerujDane();
        return PrzeniesDane(static_cast<TListaBazowa&>(*kopie));
    }
    ZerujDane();
    return DopiszObiektyOCechach(dane, pola, wartosci, rozmLiter);
}

bool TListaBazowa::DopiszDane(const TListaBazowa* dane) {
    if (dane == nullptr)
        return false;
    const std::int32_t razem = FIleObiektow + dane->IleObiektow();
    if (FPojemnosc < razem)
        UstawPojemnosc(razem);
    const std::int32_t ile = dane->IleObiektow(); // a list added to itself takes the elements that it has now
    for (std::int32_t i = 0; i < ile; ++i)
        DopiszObiekt(dane->Obiekty(i), MaxInt); // an empty place too
    return ile != 0;
}

// --- moving

void TListaBazowa::SprawdzPrzenoszony(const TListaBazowa& dane, const TObiektBazowy& element) {
    if (dane.Klasa()->Ma(ckListaZObiektami))
        SprawdzOddanie(element);
    if (Klasa()->Ma(ckListaZObiektami)) {
        SprawdzZycie();
        if (dane.Klasa()->Ma(ckListaZObiektami))
            SprawdzCykl(*this, element); // its owner gives it away
        else
            SprawdzPrzyjecie(*this, element);
    }
    SprawdzElement(element);
}

void TListaBazowa::PrzejmijSlot(TListaBazowa& dane, std::int32_t ktory) noexcept {
    TObiektBazowy* element = dane.FObiekty[ktory];
    if (Klasa()->Ma(ckListaZObiektami))
        static_cast<TListaZObiektami&>(*this).Przejmij(*element);
    else if (dane.Klasa()->Ma(ckListaZObiektami))
        TListaZObiektami::Oddaj(*element);
    FObiekty[FIleObiektow++] = element;
}

template <class F> std::int32_t TListaBazowa::PrzeniesSloty(TListaBazowa& dane, const F& wybrany) {
    // The elements that go are chosen before any goes: an error leaves both lists as they were.
    std::vector<std::int32_t> ktore;
    for (std::int32_t i = 0; i < dane.FIleObiektow; ++i)
        if (const TObiektBazowy* element = dane.FObiekty[i]; element != nullptr && wybrany(*element)) {
            SprawdzPrzenoszony(dane, *element);
            ktore.push_back(i);
        }
    if (Klasa()->Ma(ckListaZObiektami) && !dane.Klasa()->Ma(ckListaZObiektami)) {
        // A pointer list may hold an object twice; an owner cannot.
        std::vector<const TObiektBazowy*> elementy(ktore.size());
        std::transform(ktore.begin(), ktore.end(), elementy.begin(),
                       [&dane](std::int32_t i) { return dane.FObiekty[i]; });
        std::sort(elementy.begin(), elementy.end(), std::less<>());
        if (const auto dwa = std::adjacent_find(elementy.begin(), elementy.end()); dwa != elementy.end())
            ZTErrorFmt(Komunikat(kmObiektMaWlasciciela), {NazwaKlasy(), (*dwa)->NazwaKlasy(), dane.NazwaKlasy()});
    }
    const auto ile = static_cast<std::int32_t>(ktore.size());
    if (FPojemnosc < FIleObiektow + ile)
        UstawPojemnosc(FIleObiektow + ile);
    for (const std::int32_t i : ktore) {
        PrzejmijSlot(dane, i);
        dane.FObiekty[i] = nullptr;
    }
    if (ile != 0)
        dane.UsunObiektyNil(false);
    return ile;
}

// One by one too, but an element's equal is found in order, and the places of those that went close up once.
std::int32_t TListaBazowa::PrzeniesBrakujace(TListaBazowa& dane, TArgumenty pola, TRozmiarLiter rozmLiter) {
    TRozneElementy rozne(pola, rozmLiter);
    for (const TObiektBazowy* element : *this)
        if (element != nullptr)
            rozne.Dodaj(*element, 0);
    std::int32_t ile = 0;
    std::int32_t i = 0;
    std::int32_t dokad = 0;
    TPierwszyBlad blad;
    blad.Wykonaj([&] {
        for (; i < dane.FIleObiektow; ++i) {
            const TObiektBazowy* element = dane.FObiekty[i];
            if (element == nullptr || rozne.Ma(*element)) {
                dane.FObiekty[dokad++] = dane.FObiekty[i];
                continue;
            }
            SprawdzPrzenoszony(dane, *element);
            if (FIleObiektow == FPojemnosc)
                ZwiekszPojemnosc();
            rozne.Dodaj(*element, 0);
            PrzejmijSlot(dane, i);
            ++ile;
        }
    });
    std::move(dane.FObiekty + i, dane.FObiekty + dane.FIleObiektow, dane.FObiekty + dokad);
    dane.FIleObiektow -= ile;
    blad.Rzuc();
    return ile;
}

bool TListaBazowa::PrzeniesWybrane(TListaBazowa& dane, TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter,
                                   ERodzajWyboru wybor) {
    if (wybor == rwyBrakujace) {
        SprawdzSelektoryElementow(u"POGB", &dane, pola, this);
    } else if (wybor != rwyWszystkie) {
        SprawdzDlugosci(u"POWC", pola, wartosci);
        SprawdzSelektoryElementow(u"POWC", &dane, pola);
    }
    if (&dane == this)
        return false;
    ZamknijDziury();
    dane.ZamknijDziury();
    const std::int32_t od = FIleObiektow;
    std::int32_t ile = 0;
    TPierwszyBlad blad;
    switch (wybor) {
    case rwyWszystkie:
        ile = PrzeniesSloty(dane, [](const TObiektBazowy& /*o*/) { return true; });
        break;
    case rwyMajace:
        ile =
            PrzeniesSloty(dane, [&](const TObiektBazowy& o) { return MaOcenioneCechy(o, pola, wartosci, rozmLiter); });
        break;
    case rwyNieMajace:
        ile =
            PrzeniesSloty(dane, [&](const TObiektBazowy& o) { return !MaOcenioneCechy(o, pola, wartosci, rozmLiter); });
        break;
    case rwyBrakujace:
        if (TRozneElementy::MoznaUporzadkowac(dane, this, pola)) {
            blad.Wykonaj([&] { ile = PrzeniesBrakujace(dane, pola, rozmLiter); });
            break;
        }
        // An element moved earlier counts as present, so these go one by one; when one raises, those before it are here
        // for good.
        blad.Wykonaj([&] {
            for (std::int32_t i = 0; i < dane.FIleObiektow;) {
                const TObiektBazowy* element = dane.FObiekty[i];
                if (element == nullptr || MaTakiJak(*element, pola, rozmLiter)) {
                    ++i;
                    continue;
                }
                SprawdzPrzenoszony(dane, *element);
                if (FIleObiektow == FPojemnosc)
                    ZwiekszPojemnosc();
                PrzejmijSlot(dane, i);
                std::move(dane.FObiekty + i + 1, dane.FObiekty + dane.FIleObiektow, dane.FObiekty + i);
                --dane.FIleObiektow;
                ++ile;
            }
        });
        break;
    }
    if (ile != 0)
        PoPrzeniesieniu(dane, od, ile);
    blad.Rzuc();
    return ile != 0;
}

bool TListaBazowa::PrzeniesObiektyWgCech(TListaBazowa& dane, TArgumenty pola, TArgumenty wartosci,
                                         TRozmiarLiter rozmLiter, bool majace) {
    return PrzeniesWybrane(dane, pola, wartosci, rozmLiter, majace ? rwyMajace : rwyNieMajace);
}

bool TListaBazowa::PrzeniesObiektyOCechach(TListaBazowa& dane, TArgumenty pola, TArgumenty wartosci,
                                           TRozmiarLiter rozmLiter) {
    return PrzeniesObiektyWgCech(dane, pola, wartosci, rozmLiter, true);
}

bool TListaBazowa::PrzeniesObiektyOprocz(TListaBazowa& dane, TArgumenty pola, TArgumenty wartosci,
                                         TRozmiarLiter rozmLiter) {
    return PrzeniesObiektyWgCech(dane, pola, wartosci, rozmLiter, false);
}

bool TListaBazowa::PrzeniesObiektyGdyBrak(TListaBazowa& dane, TArgumenty pola, TRozmiarLiter rozmLiter) {
    return PrzeniesWybrane(dane, pola, {}, rozmLiter, rwyBrakujace);
}

bool TListaBazowa::PrzeniesDane(TListaBazowa& dane) {
    return PrzeniesWybrane(dane, {}, {}, rlRozmLiterWazny, rwyWszystkie);
}

void TListaWskObiektow::PoPrzeniesObiekty(TListaBazowa& lista, std::int32_t od) {
    if (lista.Klasa()->Ma(ckListaRef))
        static_cast<TListaRefObiektow&>(lista).ZwolnijPrzeniesione(*this, od, IleObiektow());
}

// --- values of the elements

namespace {

void SprawdzSciezkeElementow(std::u16string_view operacja, const TListaBazowa& lista, std::u16string_view sciezka) {
    SprawdzSelektoryElementow(operacja, &lista, {sciezka});
}

} // namespace

void TListaBazowa::DajListeWartPola(std::u16string_view sciezka, TListaNapisow& wartosci) const {
    SprawdzSciezkeElementow(u"DajListeWartPola", *this, sciezka);
    wartosci.Zeruj();
    const auto przed = [](const std::u16string& a, const std::u16string& b) { return PorownajBezWielkosci(a, b) < 0; };
    std::set<std::u16string, decltype(przed)> teksty(przed);
    for (TObiektBazowy* element : *this)
        if (const TPole* pole = element == nullptr ? nullptr : element->PoleONazwie(sciezka); pole != nullptr)
            if (const auto [tekst, nowy] = teksty.insert(pole->GetJakoString()); nowy)
                wartosci.Dodaj(*tekst);
}

void TListaBazowa::WpiszDoStrings(std::u16string_view sciezka, TListaNapisow& napisy) const {
    SprawdzSciezkeElementow(u"WpiszDoStrings", *this, sciezka);
    napisy.Zeruj();
    for (TObiektBazowy* element : *this) {
        if (element == nullptr)
            continue;
        const TPole* pole = element->PoleONazwie(sciezka);
        napisy.Dodaj(pole == nullptr ? std::u16string() : pole->GetJakoString(),
                     reinterpret_cast<std::uintptr_t>(element));
    }
}

} // namespace ztok
