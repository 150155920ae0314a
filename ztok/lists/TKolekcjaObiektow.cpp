#include "ztok/lists/TKolekcjaObiektow.h"

#include "ztok/fields/Konwersje.h"
#include "ztok/kernel/TJadroKlas.h"
#include "ztok/lists/TKopierDanych.h"
#include "ztok/lists/TPorownywaczDanych.h"
#include "ztok/persist/TOdczytywaczTekstu.h"
#include "ztok/persist/TZapisywaczTekstu.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/TPierwszyBlad.h"
#include "ztok/platform/TStrumien.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {

ZTOK_KLASA_DEF(TKolekcjaObiektow, TListaZObiektami)

TKolekcjaObiektow::~TKolekcjaObiektow() { DokonczZycie(); }

TObiektBazowy* TKolekcjaObiektow::DopiszObiekt(TObiektBazowy* nowyObiekt, std::int32_t gdzie) {
    if (nowyObiekt == nullptr)
        return DodajObiekt(nullptr, gdzie);
    TObiektBazowy* kopia = DodajObiekt(nowyObiekt->TworzInstancje(nullptr).Oddaj(), gdzie);
    kopia->KopiujDane(*nowyObiekt);
    return kopia;
}

std::int32_t TKolekcjaObiektow::WykonajPorownanie(const TPole& inne, TPorownywaczDanych& porownywacz) const {
    return porownywacz.PorownajCzesci(*this, JakoLista(inne));
}

void TKolekcjaObiektow::WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) {
    const TListaBazowa& lista = JakoLista(zrodlo);
    if (MaMojeElementy(lista)) {
        const TWlasny<TObiektBazowy> kopie = TworzInstancje(nullptr);
        kopie->KopiujDane(zrodlo);
        WykonajKopiowanie(*kopie, kopier);
        return;
    }
    if (FIleObiektow > lista.IleObiektow())
        SkrocListe(lista.IleObiektow(), false);
    for (std::int32_t i = 0; i < lista.IleObiektow(); ++i) {
        const TObiektBazowy* skad = lista.Obiekty(i);
        TObiektBazowy* dokad = Obiekty(i);
        if (skad == nullptr || dokad == nullptr || dokad->Klasa() != skad->Klasa()) {
            TWlasny<TObiektBazowy> nowy;
            if (skad != nullptr)
                nowy = Tworz([&] { return skad->TworzInstancje(this).Oddaj(); });
            dokad = nowy.get();
            WstawNaMiejsce(std::move(nowy), i);
        }
        // What was freed, and every hook of an element, may have changed either list.
        if (skad != nullptr && lista.Obiekty(i) == skad && Obiekty(i) == dokad)
            dokad->KopiujDane(*skad, &kopier);
    }
}

void TKolekcjaObiektow::WstawNaMiejsce(TWlasny<TObiektBazowy> nowy, std::int32_t gdzie) {
    TObiektBazowy* const stary = Obiekty(gdzie);
    if (gdzie >= FIleObiektow) {
        DodajObiekt(nowy.Oddaj(), gdzie);
        return;
    }
    TPierwszyBlad blad;
    const bool wolne = stary == nullptr || (ZwolnijTrzymany(stary, blad) && NilujPoZwolnieniu(gdzie, stary));
    if (wolne && Obiekty(gdzie) == nullptr && gdzie < FIleObiektow) {
        if (nowy)
            Przejmij(*nowy);
        FObiekty[gdzie] = nowy.Oddaj();
    }
    blad.Rzuc();
}

void TKolekcjaObiektow::WykonajZapis(TStrumien& strumien, TZapisywaczDanych& zapisywacz) const {
    TZapisywaczDanych::ZapiszLicznik31(strumien, IleNiepustych());
    const std::int32_t ile = FIleObiektow;
    for (std::int32_t i = 0; i < ile; ++i) {
        const TObiektBazowy* element = FObiekty[i];
        if (element == nullptr)
            continue;
        const std::string nazwa = PolskiAnsi(element->NazwaKlasy());
        TZapisywaczDanych::ZapiszLicznik15(strumien, static_cast<std::uint32_t>(nazwa.size()));
        strumien.WriteBuffer(nazwa.data(), nazwa.size());
        element->ZapiszWStrumieniu(strumien, &zapisywacz);
        SprawdzPoZapisie(ile, i, element);
    }
}

void TKolekcjaObiektow::WykonajOdczyt(TStrumien& strumien, TOdczytywaczDanych& odczytywacz) {
    ZerujDane();
    const std::uint32_t ile = odczytywacz.WczytajIleElementow(strumien, 1);
    std::string nazwa8;
    for (std::uint32_t i = 0; i < ile; ++i) {
        const std::uint32_t dlugosc = TOdczytywaczDanych::WczytajLicznik15(strumien);
        nazwa8.resize(dlugosc);
        strumien.ReadBuffer(nazwa8.data(), dlugosc);
        const std::u16string nazwa = PolskiWide(nazwa8);
        const TKlasa* klasa = nullptr;
        const bool znana =
            JadroKlas()->JestKlasaONazwie(nazwa, klasa) && klasa->Ma(ckObiektBazowy) && klasa->utworz != nullptr;
        if (!znana) {
            if (odczytywacz.BladNieznanejKlasy)
                ZTErrorFmt(Komunikat(kmNieznanaKlasa), {NazwaKlasy(), nazwa});
            continue; // without its record: what follows is read from the wrong place
        }
        odczytywacz.ZuzyjPamiec(96);
        MiejsceNaOdczytany(ile);
        DodajObiekt(Tworz([&] { return klasa->utworz(this); }).Oddaj(), MaxInt)
            ->WczytajZeStrumienia(strumien, &odczytywacz);
    }
    UstawPojemnosc(FIleObiektow);
}

void TKolekcjaObiektow::WykonajZapisTekstowy(TZapisywaczTekstu& zapisywacz) const {
    zapisywacz.ZwiekszAkapit();
    const std::int32_t ile = FIleObiektow;
    for (std::int32_t i = 0; i < ile; ++i) {
        const TObiektBazowy* element = FObiekty[i];
        if (element == nullptr)
            continue;
        zapisywacz.ZacznijObiekt(element->NazwaKlasy());
        element->ZapiszTekstowo(*zapisywacz.Strumien, &zapisywacz);
        SprawdzPoZapisie(ile, i, element);
        zapisywacz.ZakonczObiekt();
    }
    zapisywacz.ZmniejszAkapit();
}

void TKolekcjaObiektow::WykonajOdczytTekstowy(TOdczytywaczTekstu& odczytywacz) {
    ZerujDane();
    TZTParser& parser = odczytywacz.Parser;
    while (!parser.TokenSymbolIs("end")) {
        parser.CheckTokenSymbol("object");
        parser.NextToken();
        const std::u16string nazwa = odczytywacz.NazwaKlasyTokenu();
        const TKlasa* klasa = nullptr;
        if (!JadroKlas()->JestKlasaONazwie(nazwa, klasa) || !klasa->Ma(ckObiektBazowy) || klasa->utworz == nullptr)
            parser.ErrorFmt(kmNieznanaKlasa, {NazwaKlasy(), nazwa});
        parser.NextToken();
        odczytywacz.ZuzyjPamiec(96);
        DodajObiekt(Tworz([&] { return klasa->utworz(this); }).Oddaj(), MaxInt)
            ->WczytajTekstowo(odczytywacz.Strumien, &odczytywacz);
        parser.CheckTokenSymbol("end");
        parser.NextToken();
    }
}

} // namespace ztok
