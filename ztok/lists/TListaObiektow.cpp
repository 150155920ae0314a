#include "ztok/lists/TListaObiektow.h"

#include <algorithm>

#include "ztok/kernel/Selektory.h"
#include "ztok/kernel/TJadroKlas.h"
#include "ztok/kernel/TObiekt.h"
#include "ztok/lists/TKopierDanych.h"
#include "ztok/lists/TPorownywaczDanych.h"
#include "ztok/persist/TOdczytywaczTekstu.h"
#include "ztok/persist/TZapisywaczTekstu.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/TStrumien.h"
#include "ztok/platform/Wyjatki.h"

namespace ztok {

ZTOK_KLASA_DEF(TListaObiektow, TListaZObiektami)

TListaObiektow::~TListaObiektow() { DokonczZycie(); }

const TKlasa* TListaObiektow::TypObiektowListy() const {
    const TKlasa* klasa = Klasa();
    if (klasa->typObiektow == nullptr)
        BladAbstrakcyjny(KlasaStatyczna(), u"TypObiektow");
    return klasa->typObiektow();
}

const TKlasa& TListaObiektow::KlasaElementu() const { return *TypObiektowListy(); }

void TListaObiektow::SprawdzElement(const TObiektBazowy& element) {
    const TKlasa& klasa = KlasaElementu();
    if (element.Klasa() == &klasa)
        return;
    if (!element.JestKlasy(&klasa))
        BladKlasy(element, &klasa);
    jednorodna_ = false;
}

TObiektBazowy* TListaObiektow::DodajObiekt(TObiektBazowy* nowyObiekt, std::int32_t gdzie) {
    if (nowyObiekt == nullptr)
        return DodajNowy(KlasaElementu(), gdzie);
    SprawdzPrzyjecie(*this, *nowyObiekt);
    TWlasny<TObiektBazowy> straznik(nowyObiekt); // the list has taken it over, also when it refuses it
    SprawdzElement(*nowyObiekt);
    return TListaZObiektami::DodajObiekt(straznik.Oddaj(), gdzie);
}

TObiektBazowy* TListaObiektow::DopiszObiekt(TObiektBazowy* nowyObiekt, std::int32_t gdzie) {
    TObiektBazowy* kopia = DodajObiekt(nullptr, gdzie);
    if (nowyObiekt != nullptr)
        kopia->KopiujDane(*nowyObiekt);
    return kopia;
}

TObiektBazowy* TListaObiektow::DodajZDanymi(std::int32_t gdzie, TArgumenty pola, TArgumenty wartosci) {
    TObiektBazowy* nowy = DodajObiekt(nullptr, gdzie);
    try {
        SprawdzKlase(*nowy, TObiekt::KlasaStatyczna());
        static_cast<TObiekt*>(nowy)->WpiszDane(pola, wartosci);
    } catch (...) {
        UsunTenObiekt(nowy, true); // what it was made for it cannot hold
        throw;
    }
    return nowy;
}

TObiektBazowy* TListaObiektow::DopiszObiektGdyBrak(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter,
                                                   TRodzajWyszukiwania jakSzukac, std::int32_t& gdzie) {
    if (JestObiekt(pola, wartosci, gdzie, rozmLiter, jakSzukac, MaxInt))
        return FObiekty[gdzie];
    gdzie = FIleObiektow;
    return DodajZDanymi(MaxInt, pola, wartosci);
}

TObiektBazowy* TListaObiektow::DopiszObiektGdyBrak(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter,
                                                   TRodzajWyszukiwania jakSzukac) {
    std::int32_t gdzie = -1;
    return DopiszObiektGdyBrak(pola, wartosci, rozmLiter, jakSzukac, gdzie);
}

TObiektBazowy* TListaObiektow::DodajObiektGdyBrak(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter,
                                                  TRodzajSortowania sortowanie, std::int32_t& gdzie) {
    if (WyszukajWgPol(pola, wartosci, gdzie, rozmLiter, sortowanie, LocaleWin1250))
        return FObiekty[gdzie];
    return DodajZDanymi(gdzie, pola, wartosci);
}

TObiektBazowy* TListaObiektow::DodajObiektGdyBrak(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter,
                                                  TRodzajSortowania sortowanie) {
    std::int32_t gdzie = -1;
    return DodajObiektGdyBrak(pola, wartosci, rozmLiter, sortowanie, gdzie);
}

bool TListaObiektow::MoznaKopiowacZListy(const TKlasa* klasaListy) const {
    const TKlasa* tu = TypObiektowListy();
    const TKlasa* tam = JadroKlas()->TypObiektowListy(klasaListy);
    return KlasaADziedziczyPoB(tu, tam) || KlasaADziedziczyPoB(tam, tu);
}

bool TListaObiektow::MoznaKopiowacZListy(const TListaObiektow& lista) const {
    return MoznaKopiowacZListy(lista.Klasa());
}

void TListaObiektow::WyrownajDoListy(const TListaBazowa& lista, bool zachowajPojemnosc) {
    if (lista.IleObiektow() <= FIleObiektow) {
        SkrocListe(lista.IleObiektow(), zachowajPojemnosc);
        return;
    }
    UstawPojemnosc(lista.IleObiektow());
    const TKlasa& klasa = KlasaElementu();
    for (std::int32_t brakuje = lista.IleObiektow() - FIleObiektow; brakuje > 0; --brakuje)
        DodajNowy(klasa, MaxInt);
}

namespace {

// Copies between elements of two lists as the operation says, under one copier, so that pointers inside the copy find
// it. When one list is a part of the other (`razem`), the elements are copied into a list of their own first.
template <class F> void KopiujElementy(TListaObiektow& cel, const TListaObiektow& zrodlo, bool razem, const F& kopiuj) {
    if (&cel == &zrodlo)
        return;
    if (razem) {
        const TWlasny<TObiektBazowy> osobno = zrodlo.TworzInstancje(nullptr);
        KopiujElementy(static_cast<TListaObiektow&>(*osobno), zrodlo, false, kopiuj);
        KopiujElementy(cel, static_cast<TListaObiektow&>(*osobno), false, kopiuj);
        return;
    }
    cel.WyrownajDoListy(zrodlo, false);
    const TOcenione ocenione;
    TKopierDanych kopier;
    for (std::int32_t i = 0; i < cel.IleObiektow(); ++i) {
        TObiektBazowy* dokad = cel.Obiekty(i);
        const TObiektBazowy* skad = zrodlo.Obiekty(i);
        if (dokad != nullptr && skad != nullptr && dokad->Klasa()->Ma(ckObiekt) && skad->Klasa()->Ma(ckObiekt))
            kopiuj(static_cast<TObiekt&>(*dokad), static_cast<const TObiekt&>(*skad), kopier);
    }
    kopier.PrzepnijReferencje();
}

} // namespace

void TListaObiektow::KopiujDanePol(const TListaObiektow& zrodlo, TArgumenty pola, bool zerujPozostale) {
    SprawdzSelektoryElementow(u"KDP", this, pola, &zrodlo);
    KopiujElementy(*this, zrodlo, JednoWDrugim(*this, zrodlo),
                   [&](TObiekt& dokad, const TObiekt& skad, TKopierDanych& kopier) {
                       dokad.KopiujDanePol(skad, pola, zerujPozostale, &kopier);
                   });
}

void TListaObiektow::KopiujDaneOprocz(const TListaObiektow& zrodlo, TArgumenty pola) {
    SprawdzSelektoryElementow(u"KDO", this, pola, &zrodlo);
    KopiujElementy(*this, zrodlo, JednoWDrugim(*this, zrodlo),
                   [&](TObiekt& dokad, const TObiekt& skad, TKopierDanych& kopier) {
                       dokad.KopiujDaneOprocz(skad, pola, &kopier);
                   });
}

void TListaObiektow::KopiujDaneKlas(const TListaObiektow& zrodlo, TCiag<const TKlasa*> klasy) {
    KopiujElementy(*this, zrodlo, JednoWDrugim(*this, zrodlo),
                   [&](TObiekt& dokad, const TObiekt& skad, TKopierDanych& kopier) {
                       dokad.KopiujDaneKlas(skad, klasy, &kopier);
                   });
}

bool TListaObiektow::PrzepnijLubKopiuj(TListaObiektow& lista) {
    if (!MoznaKopiowacZListy(lista) || JednoWDrugim(*this, lista))
        return false; // elements of a list can neither be emptied with it nor go into their own parts
    ZerujDane();
    // Elements of this list's own class are moved; when the other list holds more general ones, copies of this list's
    // class take over what both know.
    if (KlasaADziedziczyPoB(lista.TypObiektowListy(), TypObiektowListy()))
        return PrzeniesDane(lista);
    KopiujDane(lista);
    return !ListaPusta();
}

std::int32_t TListaObiektow::WykonajPorownanie(const TPole& inne, TPorownywaczDanych& porownywacz) const {
    return porownywacz.PorownajCzesci(*this, JakoLista(inne));
}

void TListaObiektow::WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) {
    const TListaBazowa& lista = JakoLista(zrodlo);
    if (MaMojeElementy(lista)) {
        // What is copied is this list's own, and would die, or change, on the way.
        const TWlasny<TObiektBazowy> kopie = TworzInstancje(nullptr);
        kopie->KopiujDane(zrodlo);
        WykonajKopiowanie(*kopie, kopier);
        return;
    }
    // Each new item is made just before its content, next to which it then stands in memory.
    const bool poKolei = lista.IleObiektow() > FIleObiektow && !Klasa()->Ma(ckWlasneWyrownanie);
    if (poKolei)
        UstawPojemnosc(lista.IleObiektow());
    else
        WyrownajDoListy(lista, false);
    const TKlasa* nowe = poKolei ? &KlasaElementu() : nullptr;
    for (std::int32_t i = 0; i < FIleObiektow || (nowe != nullptr && i < lista.IleObiektow()); ++i) {
        if (i == FIleObiektow)
            DodajNowy(*nowe, MaxInt);
        // Every hook of an element may change either list.
        if (TObiektBazowy* dokad = Obiekty(i); dokad != nullptr && lista.Obiekty(i) != nullptr)
            dokad->KopiujDane(*lista.Obiekty(i), &kopier);
    }
}

void TListaObiektow::DajObiektyDoZapisu(TZapisywaczDanych& zapisywacz) const {
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): the list itself, not its items
    TObiektBazowy::DajObiektyDoZapisu(zapisywacz);
    for (std::int32_t i = 0; i < FIleObiektow; ++i)
        if (FObiekty[i] != nullptr) {
            const TPoziom poziom(zapisywacz.Zagniezdzenie, *this, FObiekty[i]);
            FObiekty[i]->DajObiektyDoZapisu(zapisywacz);
        } else {
            zapisywacz.DodajPusty(); // an item is written in its place, and the reader counts it
        }
}

void TListaObiektow::WykonajZapis(TStrumien& strumien, TZapisywaczDanych& zapisywacz) const {
    const std::int32_t ile = FIleObiektow;
    TZapisywaczDanych::ZapiszLicznik31(strumien, static_cast<std::uint32_t>(ile));
    for (std::int32_t i = 0; i < ile; ++i) {
        if (const TObiektBazowy* element = FObiekty[i]; element != nullptr) {
            element->ZapiszWStrumieniu(strumien, &zapisywacz);
            SprawdzPoZapisie(ile, i, element);
        } else { // a fresh item keeps the place, so that positions come back
            const TWlasny<TObiektBazowy> pusty(static_cast<TObiektBazowy*>(KlasaElementu().utworz(nullptr)));
            pusty->ZapiszWStrumieniu(strumien, &zapisywacz);
        }
    }
}

void TListaObiektow::WykonajOdczyt(TStrumien& strumien, TOdczytywaczDanych& odczytywacz) {
    ZerujDane();
    const std::uint32_t ile = odczytywacz.WczytajIleElementow(strumien, 1);
    if (ile == 0)
        return;
    for (std::uint32_t i = 0; i < ile; ++i) {
        odczytywacz.ZuzyjPamiec(96);
        MiejsceNaOdczytany(ile);
        DodajObiekt(nullptr, MaxInt)->WczytajZeStrumienia(strumien, &odczytywacz); // as the class adds items
    }
    UstawPojemnosc(std::max(static_cast<std::int32_t>(ile), FIleObiektow)); // a hook may have added some
}

void TListaObiektow::WykonajZapisTekstowy(TZapisywaczTekstu& zapisywacz) const {
    zapisywacz.ZwiekszAkapit();
    const std::int32_t ile = FIleObiektow;
    for (std::int32_t i = 0; i < ile; ++i) {
        zapisywacz.ZapiszLinie("object");
        if (const TObiektBazowy* element = FObiekty[i]; element != nullptr) { // an empty frame keeps an empty place
            element->ZapiszTekstowo(*zapisywacz.Strumien, &zapisywacz);
            SprawdzPoZapisie(ile, i, element);
        }
        zapisywacz.ZakonczObiekt();
    }
    zapisywacz.ZmniejszAkapit();
}

void TListaObiektow::WykonajOdczytTekstowy(TOdczytywaczTekstu& odczytywacz) {
    ZerujDane();
    TZTParser& parser = odczytywacz.Parser;
    if (parser.TokenSymbolIs("end"))
        return;
    if (!parser.TokenSymbolIs("object")) { // one element, without a frame of its own
        odczytywacz.ZuzyjPamiec(96);
        DodajObiekt(nullptr, MaxInt)->WczytajTekstowo(odczytywacz.Strumien, &odczytywacz);
        return;
    }
    do {
        parser.CheckTokenSymbol("object");
        parser.NextToken();
        odczytywacz.ZuzyjPamiec(96);
        DodajObiekt(nullptr, MaxInt)->WczytajTekstowo(odczytywacz.Strumien, &odczytywacz);
        parser.CheckTokenSymbol("end");
        parser.NextToken();
    } while (!parser.TokenSymbolIs("end"));
}

} // namespace ztok
