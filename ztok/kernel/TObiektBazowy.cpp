#include "ztok/kernel/TObiektBazowy.h"

#include <algorithm>
#include <vector>

#include "ztok/fields/Konwersje.h"
#include "ztok/fields/TArrayOfConst.h"
#include "ztok/fields/TPoleWskObiektu.h"
#include "ztok/kernel/Kontekst.h"
#include "ztok/kernel/TJadroKlas.h"
#include "ztok/kernel/TPrzejscie.h"
#include "ztok/lists/TKopierDanych.h"
#include "ztok/lists/TListaBazowa.h"
#include "ztok/lists/TPorownywaczDanych.h"
#include "ztok/lists/TPozycjeWListach.h"
#include "ztok/persist/TBuforZapisu.h"
#include "ztok/persist/TOdczytywaczDanych.h"
#include "ztok/persist/TZapisywaczDanych.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/Powiadomienie.h"
#include "ztok/platform/TPierwszyBlad.h"
#include "ztok/platform/TStrumien.h"
#include "ztok/platform/TWariant.h"
#include "ztok/util/Prostehaszowanie.h"

namespace ztok {

ZTOK_KLASA_DEF(TObiektBazowy, TPole)

TObiektBazowy::TObiektBazowy(TObiektBazowy* wlasciciel) noexcept : FRodzic(wlasciciel) {}

TObiektBazowy::~TObiektBazowy() {
    DokonczZycie();
    if (MaJakiesRef()) [[unlikely]] { // an error kept the end of life from its last step
        TPierwszyBlad pominiety;
        pominiety.Wykonaj([this] { ZwolnijReferencje(); });
    }
}

void TObiektBazowy::PoUtworzeniu(std::uint32_t cechy) {
    bezBlokady_ = (cechy & ckWlasnaBlokada) == 0;
    zwyklyKoniec_ = (cechy & (ckObiekt | ckWlasnaBlokada | ckWlasneZycie | ckWlasneZerowanie)) == ckObiekt;
    if ((cechy & ckWlasneZycie) != 0)
        TworzSekcjeKrytyczna();
}

// --- end of life

void TObiektBazowy::WykonajDestrukcje() {
    if (zakonczony_)
        return;
    zakonczony_ = true;
    kontrola_.Zakoncz(*this);
    TPrzejscie::Zapomnij(*this);
    const auto kontekst = [this](EKomunikat numer) {
        return [this, numer](std::u16string_view komunikat) {
            return FormatujBezWyjatku(Komunikat(numer), {NazwaKlasy(), DajSciezkeDoSiebie(), komunikat});
        };
    };
    if (zwyklyKoniec_ && !MaJakiesRef()) [[likely]] { // only the fields are there to be cleared
        auto& obiekt = static_cast<TObiekt&>(*this);
        if (obiekt.FPola != nullptr)
            ZKontekstem([&obiekt] { obiekt.ZwolnijPola(false); }, kontekst(kmWyjatekZerujDane));
        if (MaJakiesRef()) [[unlikely]]
            ZKontekstem([this] { ZwolnijReferencje(); }, kontekst(kmWyjatekZwolnijReferencje));
        return;
    }
    TPierwszyBlad blad;
    const auto zwolnijReferencje = [&] {
        if (MaJakiesRef())
            blad.Wykonaj([&] { ZKontekstem([this] { ZwolnijReferencje(); }, kontekst(kmWyjatekZwolnijReferencje)); });
    };
    zwolnijReferencje();
    blad.Wykonaj([&] { ZKontekstem([this] { ZerujDane(); }, kontekst(kmWyjatekZerujDane)); });
    zwolnijReferencje(); // the event of a part that died may have pointed something here
    // NOLINTNEXTLINE(clang-analyzer-optin.cplusplus.VirtualCall): Zwolnij calls this before the destructor
    blad.Wykonaj([this] { UsunSekcjeKrytyczna(); });
    blad.Rzuc();
}

void TObiektBazowy::DokonczZycieCicho() noexcept {
    try {
        // NOLINTNEXTLINE(clang-analyzer-optin.cplusplus.VirtualCall): each class calls this first, at its own level
        WykonajDestrukcje();
    } catch (const EWyjatek& e) {
        Powiadom(e.Komunikat());
    } catch (...) {
        Powiadom(Komunikat(kmObcyWyjatek));
    }
}

void TObiektBazowy::Odlacz() noexcept { FRodzic = nullptr; }

void TObiektBazowy::TworzSekcjeKrytyczna() {}
void TObiektBazowy::UsunSekcjeKrytyczna() {}
void TObiektBazowy::ZablokujObiekt() const {}
void TObiektBazowy::OdblokujObiekt() const {}

// --- parents and paths

namespace {

// Follows the parents upwards, at most around a cycle that code has made: the second walker moves half as fast, and the
// first meets it there.
template <class O, class F> O* WGore(O* od, const F& koniec) {
    O* wolny = od;
    bool krok = false;
    for (O* o = od; o != nullptr; o = o->Rodzic()) {
        if (koniec(*o))
            return o;
        if (krok)
            wolny = wolny->Rodzic();
        krok = !krok;
        if (o->Rodzic() == wolny)
            return nullptr;
    }
    return nullptr;
}

} // namespace

bool TObiektBazowy::JestCzescia(const TObiektBazowy& czesc, const TObiektBazowy& calosc) noexcept {
    return WGore(&czesc, [&calosc](const TObiektBazowy& o) { return &o == &calosc; }) != nullptr;
}

void TObiektBazowy::SprawdzCykl(const TObiektBazowy& rodzic, const TObiektBazowy& nowy) {
    const std::uint32_t cechy = nowy.Klasa()->cechy;
    const bool pusty = (cechy & ckLista) != 0
                           ? static_cast<const TListaBazowa&>(nowy).ListaPusta()
                           : (cechy & ckObiekt) != 0 && static_cast<const TObiekt&>(nowy).OstUzywanePole() < 0;
    if (pusty && &nowy != &rodzic)
        return; // has no parts
    // Bounded, or building a chain downwards would take the square of its length.
    const TObiektBazowy* o = &rodzic;
    for (int poziom = 0; o != nullptr && poziom < 2 * kZaglebienieDomyslne; ++poziom, o = o->FRodzic)
        if (o == &nowy)
            ZTErrorFmt(Komunikat(kmObiektWSobie), {rodzic.NazwaKlasy(), nowy.NazwaKlasy()});
}

void TObiektBazowy::SprawdzWlasciciela(const TObiektBazowy& rodzic, const TObiektBazowy& nowy) {
    std::u16string nazwa;
    if (nowy.FRodzic != nullptr && nowy.NazwaWRodzicu(nazwa))
        ZTErrorFmt(Komunikat(kmObiektMaWlasciciela),
                   {rodzic.NazwaKlasy(), nowy.NazwaKlasy(), nowy.DajSciezkeDoSiebie()});
}

TObiektBazowy* TObiektBazowy::DajKorzen() noexcept {
    TObiektBazowy* korzen = WGore(this, [](const TObiektBazowy& o) { return o.Rodzic() == nullptr; });
    return korzen != nullptr ? korzen : this;
}

const TObiektBazowy* TObiektBazowy::DajKorzen() const noexcept { return const_cast<TObiektBazowy*>(this)->DajKorzen(); }

TObiektBazowy* TObiektBazowy::DajRodzica(const TKlasa* klasa) const noexcept {
    return FRodzic == nullptr ? nullptr
                              : WGore(FRodzic, [klasa](const TObiektBazowy& o) { return o.JestKlasy(klasa); });
}

bool TObiektBazowy::NazwaWRodzicu(std::u16string& nazwa, TPozycjeWListach* pozycje) const {
    const std::uint32_t cechy = FRodzic->Klasa()->cechy;
    if ((cechy & ckLista) != 0) {
        const auto& lista = static_cast<const TListaBazowa&>(*FRodzic);
        const std::int32_t indeks = pozycje == nullptr ? lista.ZnajdzObiekt(this) : pozycje->Znajdz(lista, this);
        nazwa = Formatuj(u"[%d]", {indeks});
        return indeks >= 0;
    }
    if ((cechy & ckTablica) != 0) {
        const auto& tablica = static_cast<const TArrayOfConst&>(*FRodzic);
        std::int32_t indeks = tablica.Ile() - 1;
        while (indeks >= 0 && tablica.Obiekt(indeks) != this)
            --indeks;
        nazwa = Formatuj(u"[%d]", {indeks});
        return indeks >= 0;
    }
    if ((cechy & ckObiekt) == 0)
        return false;
    const auto& rodzic = static_cast<const TObiekt&>(*FRodzic);
    int nr = rodzic.OstUzywanePole();
    while (nr >= 0 && rodzic.Pole(nr) != this)
        --nr;
    if (nr < 0)
        return false; // a parent that does not hold this object
    nazwa = rodzic.NazwaPolaNr(nr);
    if (nazwa.empty())
        nazwa = Formatuj(u"#%d", {nr});
    return true;
}

std::u16string TObiektBazowy::DajSciezkeDoSiebie(const TObiektBazowy* korzen) const noexcept {
    return Sciezka(korzen, nullptr);
}

std::u16string TObiektBazowy::Sciezka(const TObiektBazowy* korzen, TPozycjeWListach* pozycje) const noexcept {
    try {
        std::vector<std::u16string> odKonca;
        std::u16string nazwa;
        const TObiektBazowy* poczatek = WGore(this, [&](const TObiektBazowy& o) {
            if (&o == korzen || o.FRodzic == nullptr || !o.NazwaWRodzicu(nazwa, pozycje))
                return true;
            odKonca.push_back(std::move(nazwa));
            return false;
        });
        std::u16string sciezka;
        if (poczatek == nullptr)
            sciezka = u"?"; // parents that go round
        for (std::size_t i = odKonca.size(); i-- > 0;) {
            if (!sciezka.empty() && odKonca[i].front() != u'[')
                sciezka += u'.';
            sciezka += odKonca[i];
        }
        return sciezka;
    } catch (...) {
        return {};
    }
}

// --- incoming references

bool TObiektBazowy::JestRefOd(const TPole* pole, int& gdzie) const noexcept { return odwolania_.Znajdz(pole, gdzie); }

bool TObiektBazowy::MaRefOd(const TPole* pole) const noexcept {
    int gdzie = 0;
    return JestRefOd(pole, gdzie);
}

bool TObiektBazowy::DodajRefOd(TPole* pole) { return pole != nullptr && odwolania_.Dodaj(pole); }

void TObiektBazowy::ZwolnijRefOd(TPole* pole) { odwolania_.Usun(pole); }

void TObiektBazowy::ZwolnijReferencje() {
    TPrzejscie::ZarejestrujOdlozone();
    TPierwszyBlad blad;
    // Events may point fields here anew, two of them each other's for ever: so there is an end to asking them.
    const std::int64_t zdarzen = 4 * std::int64_t{odwolania_.Ile()} + 1000;
    for (std::int64_t ile = 0; MaJakiesRef(); ++ile) {
        TPole* pole = odwolania_.ZdejmijOstatni();
        blad.Wykonaj([&] {
            if (ile >= zdarzen && pole->Klasa()->Ma(ckPoleRef))
                static_cast<TPoleRefObiektu*>(pole)->TPoleRefObiektu::ZerujRefDo(this);
            else
                pole->ZerujRefDo(this);
        });
    }
    blad.Rzuc();
}

void TObiektBazowy::ZerujRefDo(TObiektBazowy* /*cel*/) {}

// --- state under the lock

bool TObiektBazowy::GetMaWartosc(int nrPola) const {
    const TBlokadaObiektu blokada(*this);
    return PoleNiepuste(nrPola);
}

void TObiektBazowy::SetMaWartosc(int nrPola, bool maWartosc) {
    const TBlokadaObiektu blokada(*this);
    UstawNiepuste(nrPola, maWartosc);
}

bool TObiektBazowy::SaJakiesDane(int nrPola) const {
    const TBlokadaObiektu blokada(*this);
    return PoleDoZapisu(nrPola);
}

// --- comparison and copy

std::int32_t TObiektBazowy::Porownaj(const TPole& inne, TPorownywaczDanych* porownywacz) const {
    if (&inne == this)
        return 0;
    if (porownywacz != nullptr) {
        const TPoziom poziom(porownywacz->Zagniezdzenie, *this);
        return WykonajPorownanie(inne, *porownywacz);
    }
    SprawdzKlase(inne, KlasaStatyczna());
    TPorownywaczDanych wlasny(this, static_cast<const TObiektBazowy*>(&inne), rpWszystkiePola, rlRozmLiterNiewazny,
                              LocaleWin1250, tprRefJakoWskazn);
    const TBlokadaObiektu blokada(*this);
    const TPoziom poziom(wlasny.Zagniezdzenie, *this);
    return WykonajPorownanie(inne, wlasny);
}

std::int32_t TObiektBazowy::PorownajZObiektem(const TObiektBazowy& inny, TRozmiarLiter rozmLiter,
                                              std::uint32_t localeID) const {
    TPorownywaczDanych porownywacz(this, &inny, rpWszystkiePola, rozmLiter, localeID, tprRefJakoWskazn);
    const TBlokadaObiektu blokada(*this);
    return Porownaj(inny, &porownywacz);
}

std::int32_t TObiektBazowy::PorownajWgPol(const TObiektBazowy& inny, TArgumenty pola, TRozmiarLiter rozmLiter,
                                          std::uint32_t localeID, TPorownywaczDanych* porownywacz) const {
    if (porownywacz != nullptr)
        return WykonajPorownWgPol(inny, pola, *porownywacz);
    TPorownywaczDanych wlasny(this, &inny, rpWszystkiePola, rozmLiter, localeID, tprRefJakoWskazn);
    const TBlokadaObiektu blokada(*this);
    return WykonajPorownWgPol(inny, pola, wlasny);
}

std::int32_t TObiektBazowy::PorownajOproczPol(const TObiektBazowy& inny, TArgumenty pola, TRozmiarLiter rozmLiter,
                                              std::uint32_t localeID, TPorownywaczDanych* porownywacz) const {
    if (porownywacz != nullptr)
        return WykonajPorownOproczPol(inny, pola, *porownywacz);
    TPorownywaczDanych wlasny(this, &inny, rpWszystkiePola, rozmLiter, localeID, tprRefJakoWskazn);
    const TBlokadaObiektu blokada(*this);
    return WykonajPorownOproczPol(inny, pola, wlasny);
}

void TObiektBazowy::KopiujZ(const TPole& zrodlo, TKopierDanych& kopier) {
    TPole::KopiujDane(zrodlo, &kopier);
    const TPoziom poziom(kopier.Zagniezdzenie, *this);
    WykonajKopiowanie(zrodlo, kopier);
}

// A copy between an object and a part of it would free, or go on growing, what it still reads.
bool TObiektBazowy::JednoWDrugim(const TObiektBazowy& a, const TObiektBazowy& b) noexcept {
    return JestCzescia(a, b) || JestCzescia(b, a);
}

void TObiektBazowy::KopiujDane(const TPole& zrodlo, TKopierDanych* kopier) {
    if (&zrodlo == this)
        return;
    if (kopier != nullptr) {
        KopiujZ(zrodlo, *kopier);
        return;
    }
    SprawdzKlase(zrodlo, KlasaStatyczna());
    const auto& obiekt = static_cast<const TObiektBazowy&>(zrodlo);
    if (JednoWDrugim(*this, obiekt)) {
        const TWlasny<TObiektBazowy> osobno = obiekt.KlonujObiekt(false);
        KopiujDane(*osobno);
        return;
    }
    const TBlokadaObiektu blokada(*this);
    const TBlokadaObiektu blokadaZrodla(obiekt);
    TKopierDanych wlasny; // goes before the locks do: after an error it still registers references
    KopiujZ(zrodlo, wlasny);
    wlasny.PrzepnijReferencje();
}

void TObiektBazowy::KopiujDanePrzodkow(const TObiektBazowy& zrodlo, TKopierDanych* kopier) {
    if (&zrodlo == this)
        return;
    if (kopier != nullptr) {
        KopiujZ(zrodlo, *kopier);
        return;
    }
    if (JednoWDrugim(*this, zrodlo)) {
        const TWlasny<TObiektBazowy> osobno = zrodlo.KlonujObiekt(false);
        KopiujDanePrzodkow(*osobno);
        return;
    }
    TKopierDanych wlasny;
    wlasny.TrybKopiowania = tkdPolaPrzodka;
    KopiujZ(zrodlo, wlasny);
    wlasny.PrzepnijReferencje();
}

TWlasny<TObiektBazowy> TObiektBazowy::TworzInstancje(TObiektBazowy* wlasciciel) const {
    const TKlasa* klasa = Klasa();
    if (klasa->utworz == nullptr)
        ZTErrorFmt(Komunikat(kmKlasaAbstrakcyjna), {klasa->nazwa});
    return TWlasny<TObiektBazowy>(static_cast<TObiektBazowy*>(klasa->utworz(wlasciciel)));
}

TWlasny<TObiektBazowy> TObiektBazowy::KlonujObiekt(bool zachowajRodzica) const {
    TWlasny<TObiektBazowy> kopia = TworzInstancje(zachowajRodzica ? FRodzic : nullptr);
    kopia->KopiujDane(*this);
    return kopia;
}

bool TObiektBazowy::MoznaCzytacDaneTypu(std::u16string_view nazwaTypu) const {
    const TKlasa* klasa = Klasa();
    if (CompareTxtSgn(nazwaTypu, klasa->nazwa) == 0)
        return true;
    while (nazwaTypu.size() >= 2 && nazwaTypu.front() == u'_')
        nazwaTypu.remove_prefix(1);
    if (CompareTxtSgn(nazwaTypu, klasa->nazwa) == 0)
        return true;
    const TKlasa* znana = nullptr;
    if (JadroKlas()->JestKlasaONazwie(nazwaTypu, znana))
        return KlasaADziedziczyPoB(klasa, znana) || KlasaADziedziczyPoB(znana, klasa);
    // A name that the kernel does not know may still be an ancestor's.
    for (const TKlasa* k = klasa->Przodek(); k != nullptr && k->Ma(ckObiektBazowy); k = k->Przodek())
        if (CompareTxtSgn(nazwaTypu, k->nazwa) == 0)
            return true;
    return false;
}

// --- binary form

void TObiektBazowy::DajObiektyDoZapisu(TZapisywaczDanych& zapisywacz) const { zapisywacz.DodajObiekt(*this); }

void TObiektBazowy::ZapiszWStrumieniu(TStrumien& strumien, TZapisywaczDanych* zapisywacz) const {
    if (zapisywacz != nullptr) {
        const TPoziom poziom(zapisywacz->Zagniezdzenie, *this);
        WykonajZapis(strumien, *zapisywacz);
        return;
    }
    TZapisywaczDanych wlasny;
    const TBlokadaObiektu blokada(*this);
    wlasny.PrzygotujKorzen(*this); // refuses a tree that nests too deep before the first byte
    const TPoziom poziom(wlasny.Zagniezdzenie, *this);
    TBuforZapisu bufor(strumien, 0x4000);
    WykonajZapis(bufor, wlasny);
    bufor.Flush();
}

void TObiektBazowy::WczytajZeStrumienia(TStrumien& strumien, TOdczytywaczDanych* odczytywacz) {
    if (odczytywacz == nullptr) {
        WczytajZeStrumienia(strumien, false);
        return;
    }
    const TPoziom poziom(odczytywacz->Zagniezdzenie, *this);
    if (odczytywacz->ChceKazdePole())
        odczytywacz->OdczytywanoPole(*this);
    else
        odczytywacz->TOdczytywaczDanych::OdczytywanoPole(*this);
    WykonajOdczyt(strumien, *odczytywacz);
}

void TObiektBazowy::WczytajZeStrumienia(TStrumien& strumien, bool odczytANSI) {
    TOpcjeOdczytu opcje;
    opcje.odczytANSI = odczytANSI;
    WczytajZeStrumienia(strumien, opcje);
}

void TObiektBazowy::WczytajZeStrumienia(TStrumien& strumien, const TOpcjeOdczytu& opcje) {
    TOdczytywaczDanych wlasny(opcje.odczytANSI, opcje.limity);
    wlasny.kazdePole_ = false;
    wlasny.BladNieznanejKlasy = opcje.bladNieznanejKlasy;
    const TBlokadaObiektu blokada(*this);
    ZerujDane();
    try {
        WczytajZeStrumienia(strumien, &wlasny);
        wlasny.KorygujReferencje();
    } catch (...) {
        wlasny.ZerujReferencje();
        throw;
    }
}

std::uint32_t TObiektBazowy::DajWyroznikObiektu(const TObiektBazowy* wzor) const {
    TZTCRCStream suma;
    if (wzor != nullptr) {
        TZapisywaczDanych zapisywacz;
        const TBlokadaObiektu blokada(*this);
        wzor->DajObiektyDoZapisu(zapisywacz);
        zapisywacz.SortujListe();
        TBuforZapisu bufor(suma, 0x4000);
        const TPoziom poziom(zapisywacz.Zagniezdzenie, *this);
        WykonajZapis(bufor, zapisywacz);
        bufor.Flush();
    } else {
        ZapiszWStrumieniu(suma);
    }
    return suma.CRC();
}

// --- operations that a class supplies

bool TObiektBazowy::PoleNiepuste(int /*nrPola*/) const { BladAbstrakcyjny(u"PoleNiepuste"); }
bool TObiektBazowy::PoleDoZapisu(int nrPola) const { return PoleNiepuste(nrPola); }
void TObiektBazowy::UstawNiepuste(int /*nrPola*/, bool /*niepuste*/) { BladAbstrakcyjny(u"UstawNiepuste"); }
std::int32_t TObiektBazowy::WykonajPorownanie(const TPole& /*inne*/, TPorownywaczDanych& /*porownywacz*/) const {
    BladAbstrakcyjny(u"WykonajPorownanie");
}
void TObiektBazowy::WykonajKopiowanie(const TPole& /*zrodlo*/, TKopierDanych& /*kopier*/) {
    BladAbstrakcyjny(u"WykonajKopiowanie");
}
void TObiektBazowy::WykonajZapis(TStrumien& /*strumien*/, TZapisywaczDanych& /*zapisywacz*/) const {
    BladAbstrakcyjny(u"WykonajZapis");
}
void TObiektBazowy::WykonajOdczyt(TStrumien& /*strumien*/, TOdczytywaczDanych& /*odczytywacz*/) {
    BladAbstrakcyjny(u"WykonajOdczyt");
}
void TObiektBazowy::WykonajZapisTekstowy(TZapisywaczTekstu& /*zapisywacz*/) const {
    BladAbstrakcyjny(u"WykonajZapisTekstowy");
}
void TObiektBazowy::WykonajOdczytTekstowy(TOdczytywaczTekstu& /*odczytywacz*/) {
    BladAbstrakcyjny(u"WykonajOdczytTekstowy");
}
void TObiektBazowy::WykonajZapisXML(TZapisywaczXML& /*zapisywacz*/) const { BladAbstrakcyjny(u"WykonajZapisXML"); }
void TObiektBazowy::WykonajOdczytXML(TOdczytywaczXML& /*odczytywacz*/) { BladAbstrakcyjny(u"WykonajOdczytXML"); }
void TObiektBazowy::WczytajZPlikuXMLWewn(TOdczytywaczXML& /*odczytywacz*/) {
    BladAbstrakcyjny(u"WczytajZPlikuXMLWewn");
}
void TObiektBazowy::WczytajZPlikuXML(std::u16string_view /*plik*/) { BladAbstrakcyjny(u"WczytajZPlikuXML"); }
void TObiektBazowy::WczytajStalaRES(std::u16string_view /*nazwa*/) { BladAbstrakcyjny(u"WczytajStalaRES"); }

std::string TObiektBazowy::ZapiszWStringuXML() const { BladAbstrakcyjny(u"ZapiszWStringuXML"); }
void TObiektBazowy::WczytajZeStringuXML(std::string_view /*tekst*/) { BladAbstrakcyjny(u"WczytajZeStringuXML"); }
void TObiektBazowy::ZapiszWPlikuXML(std::u16string_view /*plik*/) const { BladAbstrakcyjny(u"ZapiszWPlikuXML"); }
void TObiektBazowy::ZapiszWPliku(std::u16string_view /*plik*/) const { BladAbstrakcyjny(u"ZapiszWPliku"); }
void TObiektBazowy::WczytajZPliku(std::u16string_view /*plik*/) { BladAbstrakcyjny(u"WczytajZPliku"); }

// --- one name

std::u16string TObiektBazowy::OpisTekstowy() const { return u"?"; }
std::u16string TObiektBazowy::OpisTekstowyWide() const { return OpisTekstowy(); }
std::u16string TObiektBazowy::NazwaEdycjiPolaNr(int /*nrPola*/) const { return {}; }

} // namespace ztok
