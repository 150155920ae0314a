#include "ztok/kernel/TOpisKlasy.h"

#include "ztok/fields/Konwersje.h"
#include "ztok/fields/TPolaDaty.h"
#include "ztok/fields/TPolaLiczbowe.h"
#include "ztok/fields/TPolaListowe.h"
#include "ztok/fields/TPolaTekstowe.h"
#include "ztok/fields/TPoleWskObiektu.h"
#include "ztok/kernel/JadroBiezace.h"
#include "ztok/kernel/Kontekst.h"
#include "ztok/kernel/NumeryKlas.h"
#include "ztok/kernel/TJadroKlas.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Komunikaty.h"

namespace ztok {

ZTOK_KLASA_DEF(TWlasciwosc, TObiekt)
ZTOK_KLASA_DEF(TListaWlasciwosci, TListaObiektow)
ZTOK_KLASA_DEF(TOpisKlasy, TObiekt)
ZTOK_KLASA_DEF(TListaOpisowKlas, TListaObiektow)

namespace {

constexpr TWierszPola Wiersz(std::int32_t nr, std::u16string_view nazwa, TRodzajWartosci rodzaj, TDostep dostep,
                             const TKlasa* (*klasa)() noexcept = nullptr) {
    return {nr, nazwa, rodzaj, dostep, dostep, {}, klasa, nullptr};
}

} // namespace

const TKlasa* KlasaPolaWiersza(const TWierszPola& w) {
    const auto gdy = [&w](TDostep czytnik, const TKlasa* klasa) -> const TKlasa* {
        return w.czytnik == czytnik ? klasa : nullptr;
    };
    switch (w.rodzaj) {
    case TRodzajWartosci::Byte:
        return gdy(TDostep::PoleByte, TPoleByte::KlasaStatyczna());
    case TRodzajWartosci::Smallint:
        return gdy(TDostep::PoleSmallint, TPoleSmallint::KlasaStatyczna());
    case TRodzajWartosci::Word:
        return gdy(TDostep::PoleWord, TPoleWord::KlasaStatyczna());
    case TRodzajWartosci::Integer:
        return gdy(TDostep::PoleInteger, TPoleInteger::KlasaStatyczna());
    case TRodzajWartosci::Cardinal:
        return gdy(TDostep::PoleCardinal, TPoleCardinal::KlasaStatyczna());
    case TRodzajWartosci::Boolean:
        return gdy(TDostep::PoleBoolean, TPoleBoolean::KlasaStatyczna());
    case TRodzajWartosci::Zmiennoprzecinkowa:
        if (w.czytnik != TDostep::PoleDouble && w.czytnik != TDostep::PoleDateTime && w.czytnik != TDostep::PoleDate &&
            w.czytnik != TDostep::PoleTime)
            return nullptr;
        // The declared type's name tells dates and times from other real numbers.
        if (CompareTxtSgn(w.typ, u"TDateTime") == 0)
            return TPoleDateTime::KlasaStatyczna();
        if (CompareTxtSgn(w.typ, u"TDate") == 0)
            return TPoleDate::KlasaStatyczna();
        if (CompareTxtSgn(w.typ, u"TTime") == 0)
            return TPoleTime::KlasaStatyczna();
        return TPoleDouble::KlasaStatyczna();
    case TRodzajWartosci::Int64:
        return gdy(TDostep::PoleInt64, TPoleInt64::KlasaStatyczna());
    case TRodzajWartosci::AnsiString:
        return gdy(TDostep::PoleRawByteString, TPoleRawByteString::KlasaStatyczna());
    case TRodzajWartosci::WideString:
        return gdy(TDostep::PoleWideString, TPoleWideString::KlasaStatyczna());
    case TRodzajWartosci::String:
        return w.czytnik == TDostep::PoleString || w.czytnik == TDostep::PoleCDATA ? TPoleString::KlasaStatyczna()
                                                                                   : nullptr;
    case TRodzajWartosci::RefObiektu:
        return w.pisarz == TDostep::PoleRefObiektu ? gdy(TDostep::PoleRefObiektu, TPoleRefObiektu::KlasaStatyczna())
                                                   : nullptr;
    case TRodzajWartosci::WskObiektu:
        return w.pisarz == TDostep::PoleWskObiektu ? gdy(TDostep::PoleWskObiektu, TPoleWskObiektu::KlasaStatyczna())
                                                   : nullptr;
    case TRodzajWartosci::Obiekt: {
        const TKlasa* klasa = w.klasa == nullptr ? nullptr : w.klasa();
        return klasa != nullptr && klasa->Ma(ckPole) ? klasa : nullptr;
    }
    case TRodzajWartosci::StrList:
        return gdy(TDostep::PoleStrList, TPoleStrList::KlasaStatyczna());
    case TRodzajWartosci::WideStrList:
        return gdy(TDostep::PoleWideStrList, TPoleWideStrList::KlasaStatyczna());
    case TRodzajWartosci::Shortint:
    case TRodzajWartosci::Inny:
        break;
    }
    return nullptr;
}

namespace {

// Calls `dzialanie` for every row of the class, those of its ancestors first.
template <class F> void DlaWierszy(const TKlasa* klasa, const F& dzialanie) {
    if (klasa == nullptr)
        return;
    DlaWierszy(klasa->Przodek(), dzialanie);
    if (klasa->pola != nullptr)
        for (const TWierszPola& wiersz : klasa->pola())
            dzialanie(wiersz);
}

} // namespace

namespace {

// The kernel in use that holds the object; null for a free-standing one, and when a part on the way dies.
const TJadroKlas* JadroOpisu(const TObiektBazowy& opis) noexcept {
    const TObiektBazowy* korzen = &opis;
    for (; !korzen->Ginie(); korzen = korzen->Rodzic())
        if (korzen->Rodzic() == nullptr)
            return korzen == JadroIstniejace() ? JadroIstniejace() : nullptr;
    return nullptr;
}

} // namespace

void SprawdzUzycie(const TObiektBazowy& opis) {
    if (JadroOpisu(opis) != nullptr)
        ZTErrorFmt(Komunikat(kmJadroWUzyciu), {opis.NazwaKlasy()});
}

// --- TWlasciwosc

std::span<const TWierszPola> TWlasciwosc::PolaKlasy(std::type_identity<TWlasciwosc> /*klasa*/) noexcept {
    static constexpr TWierszPola wiersze[] = {
        Wiersz(0, u"Nazwa", TRodzajWartosci::String, TDostep::PoleString),
        Wiersz(1, u"Typ", TRodzajWartosci::Integer, TDostep::PoleInteger),
    };
    return wiersze;
}

TWlasciwosc::~TWlasciwosc() { DokonczZycie(); }

const TKlasa* TWlasciwosc::GetTyp() const { return KlasaONumerze(static_cast<std::uint32_t>(GetPoleInteger(1))); }

void TWlasciwosc::SetTyp(const TKlasa* typ) { SetPoleInteger(1, static_cast<std::int32_t>(NumerKlasy(typ))); }

bool TWlasciwosc::Zapisywane(const TObiekt& instancja) const {
    const std::u16string nazwa = GetNazwa();
    const TWierszPola* znaleziony = nullptr;
    DlaWierszy(instancja.Klasa(), [&](const TWierszPola& wiersz) {
        if (CompareTxtSgn(wiersz.nazwa, nazwa) == 0 && KlasaPolaWiersza(wiersz) != nullptr)
            znaleziony = &wiersz;
    });
    return znaleziony == nullptr || znaleziony->zapisywane == nullptr || znaleziony->zapisywane(instancja);
}

const TKlasa* TWlasciwosc::TypPolaNr(int nrPola) const {
    switch (nrPola) {
    case 0:
        return TPoleString::KlasaStatyczna();
    case 1:
        return TPoleInteger::KlasaStatyczna();
    default:
        return TObiekt::TypPolaNr(nrPola);
    }
}

void TWlasciwosc::ZerujDane() {
    SprawdzUzycie(*this);
    TObiekt::ZerujDane();
}

void TWlasciwosc::UstawNiepuste(int nrPola, bool niepuste) {
    if (!niepuste)
        SprawdzUzycie(*this);
    TObiekt::UstawNiepuste(nrPola, niepuste);
}

void TWlasciwosc::WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) {
    SprawdzUzycie(*this);
    TObiekt::WykonajKopiowanie(zrodlo, kopier);
}

void TWlasciwosc::SetBylyZmiany(int nrPola) {
    TObiekt::SetBylyZmiany(nrPola);
    if (JadroOpisu(*this) != nullptr)
        UniewaznijMigawki();
}

// --- TListaWlasciwosci

TListaWlasciwosci::~TListaWlasciwosci() { DokonczZycie(); }

TWlasciwosc* TListaWlasciwosci::DodajWlasciwosc(int nr, TWlasciwosc* wlasciwosc) {
    if (nr < 0 || nr > 32767 || (nr < IleObiektow() && FObiekty[nr] != nullptr))
        ZTError(Komunikat(kmBladDodaniaWlasciwosci));
    if (wlasciwosc != nullptr)
        SprawdzPrzyjecie(*this, *wlasciwosc);
    if (nr >= IleObiektow()) {
        UstawPojemnosc(nr + 1);
        while (FIleObiektow <= nr)
            FObiekty[FIleObiektow++] = nullptr;
    }
    if (wlasciwosc == nullptr)
        wlasciwosc = UtworzSurowy<TWlasciwosc>();
    Przejmij(*wlasciwosc);
    FObiekty[nr] = wlasciwosc;
    if (JadroOpisu(*this) != nullptr)
        UniewaznijMigawki();
    return wlasciwosc;
}

bool TListaWlasciwosci::JestPoleONazwie(std::u16string_view nazwa, int& nr) const {
    if (!nazwa.empty())
        for (std::int32_t i = 0; i < IleObiektow(); ++i)
            if (const TWlasciwosc* w = (*this)[i]; w != nullptr && CompareTxtSgn(w->GetNazwa(), nazwa) == 0) {
                nr = i;
                return true;
            }
    nr = -1;
    return false;
}

void TListaWlasciwosci::ZerujDane() {
    SprawdzUzycie(*this);
    UsunObiektyNil(true);
    TListaObiektow::ZerujDane();
}

TObiektBazowy* TListaWlasciwosci::UsunObiekt(std::int32_t nrObiektu, bool zwolnij, bool zachowajPojemnosc) {
    SprawdzUzycie(*this);
    return TListaObiektow::UsunObiekt(nrObiektu, zwolnij, zachowajPojemnosc);
}

void TListaWlasciwosci::SkrocListe(std::int32_t nowyRozm, bool zachowajPojemnosc) {
    SprawdzUzycie(*this);
    TListaObiektow::SkrocListe(nowyRozm, zachowajPojemnosc);
}

void TListaWlasciwosci::WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) {
    SprawdzUzycie(*this);
    TListaObiektow::WykonajKopiowanie(zrodlo, kopier);
}

// --- TOpisKlasy

std::span<const TWierszPola> TOpisKlasy::PolaKlasy(std::type_identity<TOpisKlasy> /*klasa*/) noexcept {
    static constexpr TWierszPola wiersze[] = {
        Wiersz(0, u"Nazwa", TRodzajWartosci::String, TDostep::PoleString),
        Wiersz(1, u"ListaWlasciwosci", TRodzajWartosci::Obiekt, TDostep::Obcy, &KlasaTypu<TListaWlasciwosci>),
    };
    return wiersze;
}

TOpisKlasy::~TOpisKlasy() { DokonczZycie(); }

TListaWlasciwosci* TOpisKlasy::GetListaWlasciwosci(int nrPola) const {
    TPole* pole = Pole(nrPola);
    return pole != nullptr && pole->JestKlasy(TListaWlasciwosci::KlasaStatyczna())
               ? static_cast<TListaWlasciwosci*>(pole)
               : nullptr;
}

const TKlasa* TOpisKlasy::TypPolaNr(int nrPola) const {
    switch (nrPola) {
    case 0:
        return TPoleString::KlasaStatyczna();
    case 1:
        return TListaWlasciwosci::KlasaStatyczna();
    default:
        return TObiekt::TypPolaNr(nrPola);
    }
}

void TOpisKlasy::ZerujDane() {
    SprawdzUzycie(*this);
    TObiekt::ZerujDane();
}

void TOpisKlasy::UstawNiepuste(int nrPola, bool niepuste) {
    if (!niepuste)
        SprawdzUzycie(*this);
    TObiekt::UstawNiepuste(nrPola, niepuste);
}

void TOpisKlasy::WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) {
    SprawdzUzycie(*this);
    TObiekt::WykonajKopiowanie(zrodlo, kopier);
}

// --- TListaOpisowKlas

TListaOpisowKlas::~TListaOpisowKlas() { DokonczZycie(); }

TOpisKlasy* TListaOpisowKlas::GetOpisKlasy(const TKlasa* klasa) {
    if (klasa == nullptr)
        ZTErrorFmt(Komunikat(kmBrakKlasy), {u"GetOpisKlasy"});
    if (ostatni_ >= 0 && ostatni_ < IleObiektow() && CompareTxtSgn((*this)[ostatni_]->GetNazwa(), klasa->nazwa) == 0)
        return (*this)[ostatni_];
    std::int32_t gdzie = 0;
    if (!JestOpisKlasy(klasa->nazwa, gdzie)) {
        TWlasny<TOpisKlasy> opis = GenerujOpisKlasy(klasa);
        // Building may have described another class; the place is looked up again.
        if (!JestOpisKlasy(klasa->nazwa, gdzie))
            DodajOpisKlasy(std::move(opis), gdzie);
    }
    ostatni_ = gdzie;
    return (*this)[gdzie];
}

TOpisKlasy* TListaOpisowKlas::GetOpisWgNazwy(std::u16string_view nazwa) {
    const TKlasa* klasa = nullptr;
    return JadroKlas()->JestKlasaONazwie(nazwa, klasa) ? GetOpisKlasy(klasa) : nullptr;
}

bool TListaOpisowKlas::JestOpisKlasy(std::u16string_view nazwa, std::int32_t& gdzie) const {
    std::int32_t lewy = 0;
    std::int32_t prawy = IleObiektow();
    while (lewy < prawy) { // narrows to the left on equality: the first of equal names
        const std::int32_t srodek = lewy + (prawy - lewy) / 2;
        if (CompareTxtSgn((*this)[srodek]->GetNazwa(), nazwa) < 0)
            lewy = srodek + 1;
        else
            prawy = srodek;
    }
    gdzie = lewy;
    return lewy < IleObiektow() && CompareTxtSgn((*this)[lewy]->GetNazwa(), nazwa) == 0;
}

void TListaOpisowKlas::DodajOpisKlasy(TWlasny<TOpisKlasy> opis, std::int32_t gdzie) { Dodaj(std::move(opis), gdzie); }

void TListaOpisowKlas::ZerujDane() {
    SprawdzUzycie(*this);
    TListaObiektow::ZerujDane();
}

TObiektBazowy* TListaOpisowKlas::UsunObiekt(std::int32_t nrObiektu, bool zwolnij, bool zachowajPojemnosc) {
    SprawdzUzycie(*this);
    return TListaObiektow::UsunObiekt(nrObiektu, zwolnij, zachowajPojemnosc);
}

void TListaOpisowKlas::SkrocListe(std::int32_t nowyRozm, bool zachowajPojemnosc) {
    SprawdzUzycie(*this);
    TListaObiektow::SkrocListe(nowyRozm, zachowajPojemnosc);
}

void TListaOpisowKlas::WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) {
    SprawdzUzycie(*this);
    TListaObiektow::WykonajKopiowanie(zrodlo, kopier);
}

void TListaOpisowKlas::UsunOpisKlasy(std::int32_t nr) { TListaObiektow::UsunObiekt(nr, true, false); }

TWlasny<TOpisKlasy> TListaOpisowKlas::GenerujOpisKlasy(const TKlasa* klasa) {
    if (klasa == nullptr)
        ZTErrorFmt(Komunikat(kmBrakKlasy), {u"GenerujOpisKlasy"});
    TWlasny<TOpisKlasy> opis = Utworz<TOpisKlasy>();
    opis->SetPoleString(0, klasa->nazwa);
    DlaWierszy(klasa, [&](const TWierszPola& wiersz) {
        const TKlasa* klasaPola = KlasaPolaWiersza(wiersz);
        if (wiersz.nr < 0 || klasaPola == nullptr)
            return;
        ZKontekstem(
            [&] {
                auto& tabela = static_cast<TListaWlasciwosci&>(*opis->DajPole(1));
                TWlasciwosc* wlasciwosc = tabela.DodajWlasciwosc(wiersz.nr, nullptr);
                wlasciwosc->SetNazwa(wiersz.nazwa);
                wlasciwosc->SetTyp(klasaPola);
            },
            [&](std::u16string_view komunikat) {
                return Formatuj(Komunikat(kmBladGenerowaniaOpisu), {opis->GetNazwa(), wiersz.nazwa, komunikat});
            });
    });
    JadroKlas()->RejestrujKlase(klasa);
    return opis;
}

} // namespace ztok
