#include "ztok/kernel/TJadroKlas.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "ztok/fields/Konwersje.h"
#include "ztok/fields/TArrayOfConst.h"
#include "ztok/fields/TPoleWskObiektu.h"
#include "ztok/kernel/JadroBiezace.h"
#include "ztok/kernel/NumeryKlas.h"
#include "ztok/kernel/TLuzneDzieci.h"
#include "ztok/kernel/TOpisKlasy.h"
#include "ztok/lists/TListaWskObiektow.h"
#include "ztok/lists/TListaZObiektami.h"
#include "ztok/persist/TZapisywaczTekstu.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/Powiadomienie.h"
#include "ztok/platform/Pula.h"
#include "ztok/platform/TPierwszyBlad.h"
#include "ztok/platform/Wyladowanie.h"
#include "ztok/repository/Zamykanie.h"
#include "ztok/util/Szyfratory.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {

ZTOK_KLASA_DEF(TJadroKlas, TObiektTS)

namespace {

std::uint64_t NowyNumerJadra() noexcept {
    static std::atomic<std::uint64_t> ostatni{0};
    return ostatni.fetch_add(1, std::memory_order_relaxed) + 1;
}

// Lower case of the capitals that a label can meet: ASCII and Latin Extended-A, where the pairs stand side by side.
char16_t MalaLitera(char16_t znak) noexcept {
    if (znak >= u'A' && znak <= u'Z')
        return static_cast<char16_t>(znak + 32);
    const bool nieparzyste = (znak >= 0x0139 && znak <= 0x0148) || (znak >= 0x0179 && znak <= 0x017E);
    const bool parzyste = (znak >= 0x0100 && znak <= 0x0137) || (znak >= 0x014A && znak <= 0x0177);
    if ((nieparzyste && znak % 2 == 1) || (parzyste && znak % 2 == 0))
        return static_cast<char16_t>(znak + 1);
    return znak;
}

// Class references and functions as the values of a string list.
std::uintptr_t Wartosc(const TKlasa* klasa) noexcept { return reinterpret_cast<std::uintptr_t>(klasa); }
const TKlasa* KlasaZWartosci(std::uintptr_t wartosc) noexcept { return reinterpret_cast<const TKlasa*>(wartosc); }

std::u16string DuzymiLiterami(std::u16string_view nazwa) {
    std::u16string wynik(nazwa);
    for (char16_t& znak : wynik)
        if (znak >= u'a' && znak <= u'z')
            znak = static_cast<char16_t>(znak - 32);
    return wynik;
}

} // namespace

TJadroKlas::TJadroKlas(TObiektBazowy* wlasciciel)
    : TObiektTS(wlasciciel), numer_(NowyNumerJadra()), klasy_(true), funEdycji_(true) {
    UstawDefFormatDatyICzasu();
}

TJadroKlas::~TJadroKlas() { DokonczZycie(); }

void TJadroKlas::WykonajDestrukcje() {
    {
        const TBlokada blokada(sekcjaInterfejsow_);
        // Out of the registry first: an object that dies with its last reference may want to unregister itself.
        const std::vector<IInterfejs*> oddawane = std::exchange(interfejsy_, {});
        implementacje_.clear();
        for (IInterfejs* interfejs : oddawane)
            interfejs->_Release();
    }
    funEdycji_.Zeruj();
    klasy_.Zeruj();
    TPierwszyBlad blad;
    blad.Wykonaj([this] { TObiektTS::WykonajDestrukcje(); });
    ZwolnijMigawki(numer_);
    blad.Rzuc();
}

void TJadroKlas::ZerujDane() {
    SprawdzUzycie(*this);
    TObiektTS::ZerujDane();
}

void TJadroKlas::UstawNiepuste(int nrPola, bool niepuste) {
    if (!niepuste)
        SprawdzUzycie(*this);
    TObiektTS::UstawNiepuste(nrPola, niepuste);
}

void TJadroKlas::WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) {
    SprawdzUzycie(*this);
    TObiektTS::WykonajKopiowanie(zrodlo, kopier);
}

// A null class reference is a mistake of the caller's, in every operation that needs the class.
const TKlasa* TJadroKlas::KlasaPodana(std::u16string_view operacja, const TKlasa* klasa) {
    if (klasa == nullptr)
        ZTErrorFmt(Komunikat(kmBrakKlasy), {operacja});
    return klasa;
}

const TKlasa* TJadroKlas::TypPolaNr(int nrPola) const {
    return nrPola == 0 ? TListaOpisowKlas::KlasaStatyczna() : TObiektTS::TypPolaNr(nrPola);
}

// --- classes

void TJadroKlas::RejestrujKlase(const TKlasa* klasa) {
    KlasaPodana(u"RejestrujKlase", klasa);
    const TBlokadaObiektu blokada(*this);
    NumerKlasy(klasa);
    klasy_.Dodaj(klasa->nazwa, Wartosc(klasa));
}

void TJadroKlas::WyrejestrujKlase(const TKlasa* klasa) {
    KlasaPodana(u"WyrejestrujKlase", klasa);
    const TBlokadaObiektu blokada(*this);
    std::size_t gdzie = 0;
    if (klasy_.Znajdz(klasa->nazwa, gdzie))
        klasy_.Usun(gdzie);
}

bool TJadroKlas::JestKlasaONazwie(std::u16string_view nazwa, const TKlasa*& klasa) const {
    const TBlokadaObiektu blokada(*this);
    std::size_t gdzie = 0;
    if (!klasy_.Znajdz(nazwa, gdzie))
        return false;
    klasa = KlasaZWartosci(klasy_.Wartosc(gdzie));
    return true;
}

void TJadroKlas::DajListeZnanychKlas(TListaNapisow& lista) const {
    const TBlokadaObiektu blokada(*this);
    lista.Zeruj();
    lista.DodajWszystkie(klasy_);
}

TListaOpisowKlas& TJadroKlas::Opisy() { return static_cast<TListaOpisowKlas&>(*DajPole(0)); }

TOpisKlasy* TJadroKlas::OpisKlasy(const TKlasa* klasa) {
    const TBlokadaObiektu blokada(*this);
    NumerKlasy(KlasaPodana(u"OpisKlasy", klasa)); // refuses another class of the name
    return Opisy().GetOpisKlasy(klasa);
}

TOpisKlasy* TJadroKlas::OpisWgNazwy(std::u16string_view nazwa) {
    const TBlokadaObiektu blokada(*this);
    return Opisy().GetOpisWgNazwy(nazwa);
}

const TKlasa* TJadroKlas::TypPolaKlasy(const TKlasa* klasa, int nrPola) {
    const TBlokadaObiektu blokada(*this);
    const TListaWlasciwosci* lista = OpisKlasy(klasa)->GetListaWlasciwosci();
    const TWlasciwosc* wlasciwosc = lista == nullptr ? nullptr : lista->GetWlasciwosc(nrPola);
    return wlasciwosc == nullptr ? nullptr : wlasciwosc->GetTyp();
}

const TKlasa* TJadroKlas::TypObiektowListy(const TKlasa* klasa) const {
    return klasa == nullptr || !klasa->Ma(ckListaObiektow) || klasa->typObiektow == nullptr ? nullptr
                                                                                            : klasa->typObiektow();
}

const TMigawkaOpisu& TJadroKlas::UtworzMigawke(const TKlasa* klasa) {
    const TBlokadaObiektu blokada(*this);
    if (const TMigawkaOpisu* gotowa = klasa->stan->migawka.load(std::memory_order_acquire);
        gotowa != nullptr && gotowa->numerJadra == numer_)
        return *gotowa; // another thread was first
    if (const TMigawkaOpisu* dawna = PrzywrocMigawke(klasa, numer_); dawna != nullptr)
        return *dawna;
    auto migawka = std::make_unique<TMigawkaOpisu>();
    migawka->numerJadra = numer_;
    migawka->opis = OpisKlasy(klasa);
    const TListaWlasciwosci* lista = migawka->opis->GetListaWlasciwosci();
    migawka->ilePol = lista == nullptr ? 0 : lista->IleObiektow();
    migawka->saPredykaty = false;
    auto pola = std::make_unique<TMigawkaOpisu::TPozycja[]>(static_cast<std::size_t>(migawka->ilePol));
    for (const TKlasa* k = klasa; k != nullptr; k = k->Przodek())
        if (k->pola != nullptr)
            for (const TWierszPola& wiersz : k->pola())
                if (wiersz.nr >= 0 && wiersz.nr < migawka->ilePol && lista->GetWlasciwosc(wiersz.nr) != nullptr &&
                    KlasaPolaWiersza(wiersz) != nullptr &&
                    CompareTxtSgn(lista->GetWlasciwosc(wiersz.nr)->GetNazwa(), wiersz.nazwa) == 0) {
                    pola[static_cast<std::size_t>(wiersz.nr)].wiersz = &wiersz;
                    migawka->saPredykaty = migawka->saPredykaty || wiersz.zapisywane != nullptr;
                }
    migawka->saObiekty = false;
    for (int nr = 0; nr < migawka->ilePol; ++nr)
        if (const TWlasciwosc* wlasciwosc = lista->GetWlasciwosc(nr); wlasciwosc != nullptr)
            if (const TKlasa* typ = wlasciwosc->GetTyp(); typ != nullptr) {
                TMigawkaOpisu::TPozycja& pozycja = pola[static_cast<std::size_t>(nr)];
                const std::uint8_t stan = StanKlasy(*typ);
                const bool prosta = MoznaWBloku(stan);
                pozycja.klasa = typ;
                pozycja.stan = stan;
                pozycja.kodProsty = prosta ? stan >> 4U : kpInne;
                if (nr < TMigawkaOpisu::kPolaMaski) {
                    migawka->maskaPol |= std::uint64_t{1} << nr;
                    migawka->maskaProstych |= std::uint64_t{prosta ? 1U : 0U} << nr;
                }
                migawka->saObiekty = migawka->saObiekty || typ->Ma(ckObiektBazowy);
            }
    std::string nazwy8;
    std::vector<std::size_t> konce(static_cast<std::size_t>(migawka->ilePol));
    for (std::size_t nr = 0; nr < konce.size(); ++nr) {
        if (const TWlasciwosc* w = lista == nullptr ? nullptr : lista->GetWlasciwosc(static_cast<int>(nr));
            w != nullptr)
            if (const std::string nazwa = PolskiAnsi(w->GetNazwa()); JestNazwaTekstowa(nazwa))
                nazwy8 += nazwa;
        konce[nr] = nazwy8.size();
    }
    auto nazwy = std::make_unique<char[]>(nazwy8.size() + 1);
    std::copy(nazwy8.begin(), nazwy8.end(), nazwy.get());
    for (std::size_t nr = 0, od = 0; nr < konce.size(); od = konce[nr++])
        pola[nr].nazwa8 = std::string_view(nazwy.get() + od, konce[nr] - od);
    migawka->pola = pola.get();
    migawka->nazwy = nazwy.get();
    ZachowajMigawke(klasa, migawka.get());
    pola.release();  // NOLINT(bugprone-unused-return-value): the registry owns all three from here on
    nazwy.release(); // NOLINT(bugprone-unused-return-value)
    return *migawka.release();
}

void TJadroKlas::ZapomnijKlase(const TKlasa* klasa, const TKlasa* zastepcza) {
    const TBlokadaObiektu blokada(*this);
    std::size_t gdzie = 0;
    if (klasy_.Znajdz(klasa->nazwa, gdzie) && klasy_.Wartosc(gdzie) == Wartosc(klasa)) {
        if (zastepcza != nullptr)
            klasy_.UstawWartosc(gdzie, Wartosc(zastepcza));
        else
            klasy_.Usun(gdzie);
    }
    if (zastepcza != nullptr)
        return;
    // No class of that name is left: what its module registered for it would point into unloaded code, and a new
    // version of the module may declare other fields.
    if (funEdycji_.Znajdz(DuzymiLiterami(klasa->nazwa), gdzie))
        funEdycji_.Usun(gdzie);
    std::int32_t nr = 0;
    if (JestPole(0) && Opisy().JestOpisKlasy(klasa->nazwa, nr))
        Opisy().UsunOpisKlasy(nr);
}

// --- edit functions

void TJadroKlas::RejestrujFunEdycji(const TKlasa* klasa, TFunEdycji funkcja) {
    KlasaPodana(u"RejestrujFunEdycji", klasa);
    const TBlokadaObiektu blokada(*this);
    RejestrujKlase(klasa);
    const std::u16string klucz = DuzymiLiterami(klasa->nazwa);
    std::size_t gdzie = 0;
    const bool jest = funEdycji_.Znajdz(klucz, gdzie);
    if (funkcja == nullptr) {
        if (jest)
            funEdycji_.Usun(gdzie);
    } else if (jest) {
        funEdycji_.UstawWartosc(gdzie, reinterpret_cast<std::uintptr_t>(funkcja));
    } else {
        funEdycji_.Dodaj(klucz, reinterpret_cast<std::uintptr_t>(funkcja));
    }
}

bool TJadroKlas::JestFunEdycji(const TKlasa* klasa, TFunEdycji& funkcja) const {
    const TBlokadaObiektu blokada(*this);
    std::size_t gdzie = 0;
    funkcja = klasa != nullptr && funEdycji_.Znajdz(DuzymiLiterami(klasa->nazwa), gdzie)
                  ? reinterpret_cast<TFunEdycji>(funEdycji_.Wartosc(gdzie))
                  : nullptr;
    return funkcja != nullptr;
}

// --- interfaces

void TJadroKlas::RejestrujInterfejs(IInterfejs* interfejs) {
    if (interfejs == nullptr)
        return;
    const TBlokada blokada(sekcjaInterfejsow_);
    if (std::find(interfejsy_.begin(), interfejsy_.end(), interfejs) != interfejsy_.end())
        return;
    const TObiektOgolny* obiekt = DajObiektImplInterfejs(interfejs);
    std::u16string nazwa(obiekt == nullptr ? std::u16string_view(u"?") : obiekt->NazwaKlasy());
    interfejsy_.reserve(interfejsy_.size() + 1);
    implementacje_.push_back(std::move(nazwa));
    interfejsy_.push_back(interfejs);
    interfejs->_AddRef();
}

bool TJadroKlas::WyrejestrujInterfejs(IInterfejs* interfejs) {
    const TBlokada blokada(sekcjaInterfejsow_);
    const auto gdzie = std::find(interfejsy_.begin(), interfejsy_.end(), interfejs);
    if (interfejs == nullptr || gdzie == interfejsy_.end())
        return false;
    implementacje_.erase(implementacje_.begin() + (gdzie - interfejsy_.begin()));
    interfejsy_.erase(gdzie);
    interfejs->_Release();
    return true;
}

bool TJadroKlas::DajInterfejs(const TGUID& iid, void** wynik) const {
    *wynik = nullptr;
    const TBlokada blokada(sekcjaInterfejsow_);
    // By index: an interface's answer may register or unregister others.
    for (std::size_t i = interfejsy_.size(); i-- > 0;)
        if (i < interfejsy_.size() && interfejsy_[i]->QueryInterface(iid, wynik) == kIntfOk && *wynik != nullptr)
            return true;
    *wynik = nullptr;
    return false;
}

TObiektOgolny* TJadroKlas::DajObiektImplInterfejs(IInterfejs* interfejs) const noexcept {
    return ObiektZaInterfejsem(interfejs);
}

bool TJadroKlas::GetInterfaceEntry(IInterfejs* interfejs, const TWierszInterfejsu*& wpis) const noexcept {
    TObiektOgolny* obiekt = DajObiektImplInterfejs(interfejs);
    if (obiekt == nullptr)
        return false;
    for (const TKlasa* klasa = obiekt->Klasa(); klasa != nullptr; klasa = klasa->Przodek())
        if (klasa->interfejsy != nullptr)
            for (const TWierszInterfejsu& wiersz : klasa->interfejsy())
                if (wiersz.rzutuj(obiekt) == static_cast<void*>(interfejs)) {
                    wpis = &wiersz;
                    return true;
                }
    return false;
}

bool TJadroKlas::DajGUIDInterfejsu(IInterfejs* interfejs, TGUID& iid) const noexcept {
    const TWierszInterfejsu* wpis = nullptr;
    if (!GetInterfaceEntry(interfejs, wpis))
        return false;
    iid = *wpis->iid;
    return true;
}

std::u16string TJadroKlas::NazwyInterfejsow() const {
    const TBlokada blokada(sekcjaInterfejsow_);
    std::u16string nazwy;
    for (const std::u16string& nazwa : implementacje_)
        nazwy.append(nazwa).append(u"\r\n");
    return nazwy;
}

bool TJadroKlas::NiktNieTrzyma() const noexcept {
    if (!sekcjaInterfejsow_.SprobujWejsc())
        return false;
    sekcjaInterfejsow_.Wyjdz();
    if (!SprobujZablokowac())
        return false;
    OdblokujObiekt();
    return true;
}

// --- labels and formats

std::u16string TJadroKlas::NazwaPolaNaEkran(std::u16string_view nazwa) const {
    // Only the low byte is looked at, on purpose: "Ł" and "Ś" are capitals, other letters beyond ASCII are not.
    const auto duza = [nazwa](std::size_t i) {
        const unsigned bajt = static_cast<unsigned>(nazwa[i]) & 0xFFU;
        return bajt >= 65 && bajt <= 90;
    };
    std::u16string wynik;
    wynik.reserve(nazwa.size() + nazwa.size() / 4);
    for (std::size_t i = 0; i < nazwa.size(); ++i) {
        char16_t znak = nazwa[i] == u'_' ? u' ' : nazwa[i];
        if (i > 0 && duza(i) && !duza(i - 1)) {
            wynik += u' ';
            if (i + 1 == nazwa.size() || !duza(i + 1))
                znak = MalaLitera(znak);
        }
        wynik += znak;
    }
    return std::u16string(ZTOKTrim(wynik));
}

void TJadroKlas::UstawDefFormatDatyICzasu() { format_ = UstawieniaPolskie(); }

// --- privileged operations

namespace {

// Clears what one object points at; its nested objects wait in the queue, since a tree may be of any depth.
void ZwolnijLinkiObiektu(TObiektBazowy& obiekt, std::vector<TObiektBazowy*>& kolejka) {
    const std::uint32_t cechy = obiekt.Klasa()->cechy;
    if ((cechy & ckObiekt) != 0) {
        auto& zPolami = static_cast<TObiekt&>(obiekt);
        for (int nr = 0; nr <= zPolami.OstUzywanePole(); ++nr) {
            TPole* pole = zPolami.Pole(nr);
            if (pole == nullptr)
                continue;
            if (pole->Klasa()->Ma(ckObiekt | ckListaZObiektami | ckTablica))
                kolejka.push_back(static_cast<TObiektBazowy*>(pole));
            else if (pole->Klasa()->Ma(ckPoleWsk | ckListaWsk))
                zPolami.SetMaWartosc(nr, false);
        }
    } else if ((cechy & ckTablica) != 0) {
        const auto& tablica = static_cast<const TArrayOfConst&>(obiekt);
        for (std::int32_t i = 0; i < tablica.Ile(); ++i)
            if (TObiektBazowy* element = tablica.Obiekt(i); element != nullptr)
                kolejka.push_back(element);
    } else if ((cechy & ckListaZObiektami) != 0) {
        for (TObiektBazowy* element : static_cast<const TListaBazowa&>(obiekt))
            if (element != nullptr)
                kolejka.push_back(element);
    } else if ((cechy & ckListaWsk) != 0) {
        static_cast<TListaBazowa&>(obiekt).SkrocListe(0, true);
    }
}

} // namespace

void TJadroKlas::ZwolnijLinki(TObiektBazowy& obiekt) {
    obiekt.ZwolnijReferencje();
    std::vector<TObiektBazowy*> kolejka{&obiekt};
    while (!kolejka.empty()) {
        TObiektBazowy& nastepny = *kolejka.back();
        kolejka.pop_back();
        ZwolnijLinkiObiektu(nastepny, kolejka);
    }
}

void TJadroKlas::UstawElemListy(TListaBazowa& lista, std::int32_t indeks, TObiektBazowy* obiekt) noexcept {
    lista.ZamknijDziury();
    lista.FObiekty[indeks] = obiekt;
    lista.jednorodna_ = false;
}

void TJadroKlas::NilujElemListy(TListaZObiektami& lista, std::int32_t indeks) {
    TObiektBazowy* obiekt = lista.FObiekty[indeks];
    lista.FObiekty[indeks] = nullptr;
    TPierwszyBlad blad;
    ZwolnijTrzymany(obiekt, blad);
    blad.Rzuc();
}

void TJadroKlas::UstawPole(TObiekt& obiekt, int nrPola, TPole* pole, bool zwolnijPoprzednie) {
    obiekt.UstawPole(nrPola, pole, zwolnijPoprzednie);
}

// --- the one kernel

TJadroKlas* UserKernel = nullptr;

TJadroKlas* wlasneJadro = nullptr;

namespace {

std::atomic<bool> zamknieta{false};

void Zamknij(bool czekaj) noexcept {
    if (g_ZTOKQuiet)
        return;
    // Before the kernel: registrations are objects of the model, and hold interfaces.
    ZamknijRepozytorium(czekaj);
    ZamknijKontroler();
    if (zamknieta.exchange(true) || wlasneJadro == nullptr)
        return;
    try {
        if (!czekaj && !wlasneJadro->NiktNieTrzyma())
            return; // a thread that was ended holds a lock for ever: the kernel stays
        const std::u16string nazwy = wlasneJadro->NazwyInterfejsow();
        if (!nazwy.empty())
            Powiadom(Formatuj(Komunikat(kmNiewyrejestrowaneInterfejsy), {nazwy}));
        TPierwszyBlad blad;
        // What dies with it may still ask for the kernel, and must not make another.
        blad.Wykonaj([] { Zwolnij(wlasneJadro); });
        wlasneJadro = nullptr;
        ZwolnijMigawki();
        blad.Rzuc();
    } catch (const EWyjatek& e) {
        Powiadom(FormatujBezWyjatku(Komunikat(kmWyjatekZwalnianiaJadra), {e.Komunikat()}));
    } catch (const std::exception&) {
        Powiadom(FormatujBezWyjatku(Komunikat(kmWyjatekZwalnianiaJadra), {Komunikat(kmObcyWyjatek)}));
    }
}

} // namespace

TJadroKlas* JadroKlas() {
    if (TJadroKlas* jadro = JadroIstniejace(); jadro != nullptr)
        return jadro;
    wlasneJadro = UtworzSurowy<TJadroKlas>(nullptr);
    zamknieta = false;
    return wlasneJadro;
}

void ZamknijBiblioteke() noexcept { Zamknij(true); }

void ZamknijPrzyWyladowaniu() noexcept {
    Zamknij(false);
    ZwolnijRejestrKlas();
    ZwolnijUstawieniaProcesu();
    ZwolnijPamiecSzyfratorow();
    ZwolnijStanKontroli();
    ZwolnijSpisRepozytoriow();
    TLuzneDzieci::Zwolnij();
    ZwolnijSekcjePrzygotowan();
    ZamknijPule();
}

} // namespace ztok
