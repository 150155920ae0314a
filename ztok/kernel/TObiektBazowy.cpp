#include "ztok/kernel/TObiektBazowy.h"

#include <algorithm>
#include <vector>

#include "ztok/fields/Konwersje.h"
#include "ztok/fields/TArrayOfConst.h"
#include "ztok/fields/TPoleWskObiektu.h"
#include "ztok/kernel/JadroBiezace.h"
#include "ztok/kernel/Kontekst.h"
#include "ztok/kernel/Selektory.h"
#include "ztok/kernel/TJadroKlas.h"
#include "ztok/kernel/TLuzneDzieci.h"
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
#include "ztok/platform/PierwszeUzycie.h"
#include "ztok/platform/Powiadomienie.h"
#include "ztok/platform/PulaWnetrze.h"
#include "ztok/platform/TPierwszyBlad.h"
#include "ztok/platform/TSekcjaKrytyczna.h"
#include "ztok/platform/TStrumien.h"
#include "ztok/platform/TWariant.h"
#include "ztok/util/Prostehaszowanie.h"

namespace ztok {

ZTOK_KLASA_DEF(TObiektBazowy, TPole)

namespace {

// One for all: an object on the stack is prepared once in its life.
constinit std::atomic<TSekcjaKrytyczna*> sekcjaPrzygotowan{nullptr};

} // namespace

void ZwolnijSekcjePrzygotowan() noexcept { delete sekcjaPrzygotowan.exchange(nullptr, std::memory_order_acq_rel); }

TObiektBazowy::TObiektBazowy(TObiektBazowy* wlasciciel) : FRodzic(wlasciciel) {
    if (wlasciciel != nullptr && !wlasciciel->tworzyCzesc_) [[unlikely]]
        TLuzneDzieci::Dopisz(*this, *wlasciciel);
}

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
    utworzony_ = true;
    liczony_ = (cechy & ckParametr) != 0;
    if ((cechy & ckWlasneZycie) != 0)
        TworzSekcjeKrytyczna();
    zycie_ |= zyPrzygotowany;
}

void TObiektBazowy::Zablokuj() const {
    if (!utworzony_) [[unlikely]]
        PrzygotujNaStosie();
    ZablokujObiekt();
}

void TObiektBazowy::PrzygotujNaStosie() const {
    // A constructor that locks sees the class so far: one without a lock of its own leaves it to the derived class.
    if (!Klasa()->Ma(ckWlasneZycie))
        return;
    auto& ja = const_cast<TObiektBazowy&>(*this);
    const std::atomic_ref zycie(ja.zycie_);
    if ((zycie.load(std::memory_order_acquire) & (zyPrzygotowany | zyKonczony)) != 0)
        return;
    const TBlokada blokada(PrzyPierwszymUzyciu(sekcjaPrzygotowan)); // another thread may be about to lock it too
    if ((zycie.load(std::memory_order_relaxed) & (zyPrzygotowany | zyPrzygotowywany)) != 0)
        return;
    zycie.fetch_or(zyPrzygotowywany, std::memory_order_relaxed);
    try {
        ja.TworzSekcjeKrytyczna();
    } catch (...) {
        zycie.fetch_and(static_cast<std::uint8_t>(~zyPrzygotowywany), std::memory_order_relaxed);
        throw;
    }
    zycie.fetch_or(zyPrzygotowany, std::memory_order_release);
}

void TObiektBazowy::UstawRodzica(TObiektBazowy* rodzic) {
    if (luzny_)
        PrzestanBycLuzny();
    FRodzic = nullptr;
    if (rodzic != nullptr && !trzymany_)
        TLuzneDzieci::Dopisz(*this, *rodzic);
    FRodzic = rodzic;
}

void TObiektBazowy::PrzestanBycLuzny() noexcept { TLuzneDzieci::Wypisz(*this, *FRodzic); }

namespace {

ZTOK_TLS_BLISKI constinit thread_local TBlokadaObiektu* ostatniaBlokada = nullptr; // of this thread

} // namespace

void TBlokadaObiektu::Zablokuj() {
    obiekt_->Zablokuj();
    poprzednia_ = ostatniaBlokada;
    ostatniaBlokada = this;
}

void TBlokadaObiektu::Odblokuj() noexcept {
    ostatniaBlokada = poprzednia_;
    obiekt_->OdblokujObiekt();
}

void TBlokadaObiektu::Porzuc(const TObiektBazowy& obiekt) noexcept {
    for (TBlokadaObiektu** wskaznik = &ostatniaBlokada; *wskaznik != nullptr;) {
        TBlokadaObiektu& blokada = **wskaznik;
        if (blokada.obiekt_ == &obiekt) {
            *wskaznik = blokada.poprzednia_;
            blokada.obiekt_ = nullptr;
            obiekt.OdblokujObiekt();
        } else {
            wskaznik = &blokada.poprzednia_;
        }
    }
}

// --- end of life

// Whether the object, or one that holds it, is the one to be freed. The objects further out are, as a rule, those that
// hold the innermost one.
bool TObiektBazowy::TrzymaUzywany(const TObiektOgolny& wUzyciu, bool najglebiej, const TObiektOgolny& obiekt) noexcept {
    if (&wUzyciu == &obiekt)
        return true;
    if (!najglebiej || !wUzyciu.Klasa()->Ma(ckObiektBazowy))
        return false;
    for (const auto* o = static_cast<const TObiektBazowy*>(&wUzyciu); o != nullptr && o->trzymany_; o = o->FRodzic)
        if (o->FRodzic == &obiekt)
            return true;
    return false;
}

bool TObiektBazowy::MoznaZwolnic(EZwalniajacy kto, TPierwszyBlad& blad) const noexcept {
    std::u16string nazwa;
    const bool obcy = kto == EZwalniajacy::Inny;
    const bool wUzyciu = TLicznikZagniezdzenia::WUzyciu(*this, &TrzymaUzywany);
    if (utworzony_ && !Ginie() && !(obcy && trzymany_) && !wUzyciu) [[likely]]
        return true;
    bool wolno = false;
    blad.Wykonaj([&] {
        if (Ginie())
            BladGinie();
        if (!utworzony_)
            ZTErrorFmt(Komunikat(kmZwolnienieNieUtworzonego), {NazwaKlasy()});
        if (wUzyciu)
            ZTErrorFmt(Komunikat(kmObiektWUzyciu), {NazwaKlasy(), DajSciezkeDoSiebie()});
        if (FRodzic != nullptr && NazwaWRodzicu(nazwa))
            ZTErrorFmt(Komunikat(kmZwolnienieTrzymanego), {NazwaKlasy(), DajSciezkeDoSiebie()});
        wolno = true; // who held it has lost it
    });
    return wolno;
}

void TObiektBazowy::BladGinie() const { ZTErrorFmt(Komunikat(kmObiektGinie), {NazwaKlasy(), DajSciezkeDoSiebie()}); }

bool TObiektBazowy::Zakoncz(EZwalniajacy kto, TPierwszyBlad& blad) noexcept {
    if (!TObiektBazowy::MoznaZwolnic(kto, blad))
        return false;
    zycie_ |= zyKonczony;
    const auto zakoncz = [this, &blad] {
        if (!zwyklyKoniec_)
            blad.Wykonaj([this] { WykonajDestrukcje(); });
        if ((zycie_ & zyCzyszczony) == 0) // the class's own steps came to an error before these, or it has none
            blad.Wykonaj([this] { TObiektBazowy::WykonajDestrukcje(); });
    };
    if (trzymany_ && FRodzic != nullptr && !FRodzic->Ginie()) {
        const TUzycie uzycie(*this); // its owner goes on after it, and must be there
        zakoncz();
    } else {
        zakoncz();
    }
    return true;
}

void TObiektBazowy::WykonajDestrukcje() {
    if ((zycie_ & zyCzyszczony) != 0)
        return;
    zycie_ |= zyKonczony | zyCzyszczony;
    kontrola_.Zakoncz(*this);
    TPrzejscie::Zapomnij(*this);
    const auto kontekst = [this](EKomunikat numer) {
        return [this, numer](std::u16string_view komunikat) {
            return FormatujBezWyjatku(Komunikat(numer), {NazwaKlasy(), DajSciezkeDoSiebie(), komunikat});
        };
    };
    TPierwszyBlad blad;
    const auto zwolnijReferencje = [&] {
        if (MaJakiesRef()) [[unlikely]]
            blad.Wykonaj([&] { ZKontekstem([this] { ZwolnijReferencje(); }, kontekst(kmWyjatekZwolnijReferencje)); });
    };
    zwolnijReferencje();
    if (zwyklyKoniec_) { // only the fields are there to be cleared
        auto& obiekt = static_cast<TObiekt&>(*this);
        if (obiekt.FPola != nullptr)
            blad.Wykonaj([&] { ZKontekstem([&obiekt] { obiekt.ZwolnijPola(false); }, kontekst(kmWyjatekZerujDane)); });
        zwolnijReferencje();
    } else {
        blad.Wykonaj([&] { ZKontekstem([this] { ZerujDane(); }, kontekst(kmWyjatekZerujDane)); });
        zwolnijReferencje(); // the event of a part that died may have pointed something here
        // NOLINTNEXTLINE(clang-analyzer-optin.cplusplus.VirtualCall): Zwolnij calls this before the destructor
        if (utworzony_ || (zycie_ & zyPrzygotowany) != 0) {
            TBlokadaObiektu::Porzuc(*this);
            blad.Wykonaj([this] { UsunSekcjeKrytyczna(); });
        }
    }
    if (luzny_) [[unlikely]]
        PrzestanBycLuzny();
    if (maLuzne_.load(std::memory_order_relaxed)) [[unlikely]]
        TLuzneDzieci::Osieroc(*this);
    blad.Rzuc();
}

void TObiektBazowy::DokonczZycieCicho() noexcept {
    const auto cicho = [](auto&& krok) {
        try {
            krok();
        } catch (const EWyjatek& e) {
            Powiadom(e.Komunikat());
        } catch (...) {
            Powiadom(Komunikat(kmObcyWyjatek));
        }
    };
    if (!Ginie()) {
        zycie_ |= zyKonczony;
        // NOLINTNEXTLINE(clang-analyzer-optin.cplusplus.VirtualCall): each class calls this first, at its own level
        cicho([this] { WykonajDestrukcje(); });
    }
    if ((zycie_ & zyCzyszczony) == 0)
        cicho([this] { TObiektBazowy::WykonajDestrukcje(); });
}

void TObiektBazowy::Odlacz() noexcept {
    if (luzny_)
        PrzestanBycLuzny();
    PoOddaniu(*this);
}

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

// Whether the object holds something that could hold others in turn: nothing else can have the object above it for a
// part.
bool TObiektBazowy::MaCzesci() const {
    const std::uint32_t cechy = Klasa()->cechy;
    if ((cechy & ckLista) != 0)
        return (cechy & ckListaZObiektami) != 0 && !static_cast<const TListaBazowa*>(this)->ListaPusta();
    return (cechy & ckObiekt) == 0 || static_cast<const TObiekt*>(this)->MaCzesciWPolach();
}

void TObiektBazowy::SprawdzCykl(const TObiektBazowy& rodzic, const TObiektBazowy& nowy) {
    if (&nowy == &rodzic || (rodzic.FRodzic != nullptr && nowy.MaCzesci() && JestCzescia(rodzic, nowy)))
        ZTErrorFmt(Komunikat(kmObiektWSobie), {rodzic.NazwaKlasy(), nowy.NazwaKlasy()});
}

void TObiektBazowy::SprawdzWlasciciela(const TObiektBazowy& rodzic, const TObiektBazowy& nowy) {
    if (rodzic.Ginie())
        rodzic.BladGinie();
    SprawdzOddanie(nowy);
    if (!nowy.utworzony_)
        ZTErrorFmt(Komunikat(kmObiektNieUtworzony), {rodzic.NazwaKlasy(), nowy.NazwaKlasy()});
    if (nowy.liczony_)
        ZTErrorFmt(Komunikat(kmObiektLiczony), {rodzic.NazwaKlasy(), nowy.NazwaKlasy()});
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
        const TPoziom poziom(porownywacz->Zagniezdzenie, *this, &inne);
        return WykonajPorownanie(inne, *porownywacz);
    }
    SprawdzKlase(inne, KlasaStatyczna());
    TPorownywaczDanych wlasny(this, static_cast<const TObiektBazowy*>(&inne), rpWszystkiePola, rlRozmLiterNiewazny,
                              LocaleWin1250, tprRefJakoWskazn);
    const TBlokadaObiektu blokada(*this);
    const TPoziom poziom(wlasny.Zagniezdzenie, *this, &inne);
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
    if (Klasa()->Ma(ckLista))
        SprawdzSelektoryElementow(u"PWP", static_cast<const TListaBazowa*>(this), pola, &inny);
    else
        SprawdzSelektory(u"PWP", *this, pola, &inny);
    const TOcenione ocenione;
    if (porownywacz != nullptr)
        return WykonajPorownWgPol(inny, pola, *porownywacz);
    TPorownywaczDanych wlasny(this, &inny, rpWszystkiePola, rozmLiter, localeID, tprRefJakoWskazn);
    const TBlokadaObiektu blokada(*this);
    return WykonajPorownWgPol(inny, pola, wlasny);
}

std::int32_t TObiektBazowy::PorownajOproczPol(const TObiektBazowy& inny, TArgumenty pola, TRozmiarLiter rozmLiter,
                                              std::uint32_t localeID, TPorownywaczDanych* porownywacz) const {
    if (Klasa()->Ma(ckLista))
        SprawdzSelektoryElementow(u"POP", static_cast<const TListaBazowa*>(this), pola, &inny);
    else
        SprawdzSelektory(u"POP", *this, pola, &inny);
    const TOcenione ocenione;
    if (porownywacz != nullptr)
        return WykonajPorownOproczPol(inny, pola, *porownywacz);
    TPorownywaczDanych wlasny(this, &inny, rpWszystkiePola, rozmLiter, localeID, tprRefJakoWskazn);
    const TBlokadaObiektu blokada(*this);
    return WykonajPorownOproczPol(inny, pola, wlasny);
}

void TObiektBazowy::KopiujZ(const TPole& zrodlo, TKopierDanych& kopier) {
    TPole::KopiujDane(zrodlo, &kopier);
    const TPoziom poziom(kopier.Zagniezdzenie, *this, &zrodlo);
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
    const TUzycie uzycie(*this);
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
    const TUzycie uzycie(*this);
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
        zapisywacz->ZapisywanoObiekt(*this);
        const TPoziom poziom(zapisywacz->Zagniezdzenie, *this);
        WykonajZapis(strumien, *zapisywacz);
        return;
    }
    TZapisywaczDanych wlasny;
    const TBlokadaObiektu blokada(*this);
    const TUzycie uzycie(*this);
    wlasny.PrzygotujKorzen(*this); // refuses what could not be read again, before the first byte
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
    const TUzycie uzycie(*this);
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
        const TUzycie uzycie(*this);
        wzor->DajObiektyDoZapisu(zapisywacz);
        zapisywacz.SortujListe();
        zapisywacz.ZapisywanoObiekt(*this);
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

bool TObiektBazowy::PoleNiepuste(int /*nrPola*/) const { BladAbstrakcyjny(KlasaStatyczna(), u"PoleNiepuste"); }
bool TObiektBazowy::PoleDoZapisu(int nrPola) const { return PoleNiepuste(nrPola); }
void TObiektBazowy::UstawNiepuste(int /*nrPola*/, bool /*niepuste*/) {
    BladAbstrakcyjny(KlasaStatyczna(), u"UstawNiepuste");
}
std::int32_t TObiektBazowy::WykonajPorownanie(const TPole& /*inne*/, TPorownywaczDanych& /*porownywacz*/) const {
    BladAbstrakcyjny(KlasaStatyczna(), u"WykonajPorownanie");
}
void TObiektBazowy::WykonajKopiowanie(const TPole& /*zrodlo*/, TKopierDanych& /*kopier*/) {
    BladAbstrakcyjny(KlasaStatyczna(), u"WykonajKopiowanie");
}
void TObiektBazowy::WykonajZapis(TStrumien& /*strumien*/, TZapisywaczDanych& /*zapisywacz*/) const {
    BladAbstrakcyjny(KlasaStatyczna(), u"WykonajZapis");
}
void TObiektBazowy::WykonajOdczyt(TStrumien& /*strumien*/, TOdczytywaczDanych& /*odczytywacz*/) {
    BladAbstrakcyjny(KlasaStatyczna(), u"WykonajOdczyt");
}
void TObiektBazowy::WykonajZapisTekstowy(TZapisywaczTekstu& /*zapisywacz*/) const {
    BladAbstrakcyjny(KlasaStatyczna(), u"WykonajZapisTekstowy");
}
void TObiektBazowy::WykonajOdczytTekstowy(TOdczytywaczTekstu& /*odczytywacz*/) {
    BladAbstrakcyjny(KlasaStatyczna(), u"WykonajOdczytTekstowy");
}
void TObiektBazowy::WykonajZapisXML(TZapisywaczXML& /*zapisywacz*/) const {
    BladAbstrakcyjny(KlasaStatyczna(), u"WykonajZapisXML");
}
void TObiektBazowy::WykonajOdczytXML(TOdczytywaczXML& /*odczytywacz*/) {
    BladAbstrakcyjny(KlasaStatyczna(), u"WykonajOdczytXML");
}
void TObiektBazowy::WczytajZPlikuXMLWewn(TOdczytywaczXML& /*odczytywacz*/) {
    BladAbstrakcyjny(KlasaStatyczna(), u"WczytajZPlikuXMLWewn");
}
void TObiektBazowy::WczytajZPlikuXML(std::u16string_view /*plik*/) {
    BladAbstrakcyjny(KlasaStatyczna(), u"WczytajZPlikuXML");
}
void TObiektBazowy::WczytajStalaRES(std::u16string_view /*nazwa*/) {
    BladAbstrakcyjny(KlasaStatyczna(), u"WczytajStalaRES");
}

std::string TObiektBazowy::ZapiszWStringuXML() const { BladAbstrakcyjny(KlasaStatyczna(), u"ZapiszWStringuXML"); }
void TObiektBazowy::WczytajZeStringuXML(std::string_view /*tekst*/) {
    BladAbstrakcyjny(KlasaStatyczna(), u"WczytajZeStringuXML");
}
void TObiektBazowy::ZapiszWPlikuXML(std::u16string_view /*plik*/) const {
    BladAbstrakcyjny(KlasaStatyczna(), u"ZapiszWPlikuXML");
}
void TObiektBazowy::ZapiszWPliku(std::u16string_view /*plik*/) const {
    BladAbstrakcyjny(KlasaStatyczna(), u"ZapiszWPliku");
}
void TObiektBazowy::WczytajZPliku(std::u16string_view /*plik*/) {
    BladAbstrakcyjny(KlasaStatyczna(), u"WczytajZPliku");
}

// --- one name

std::u16string TObiektBazowy::OpisTekstowy() const { return u"?"; }
std::u16string TObiektBazowy::OpisTekstowyWide() const { return OpisTekstowy(); }
std::u16string TObiektBazowy::NazwaEdycjiPolaNr(int /*nrPola*/) const { return {}; }

} // namespace ztok
