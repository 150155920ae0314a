#include "ztok/fields/TPoleWskObiektu.h"

#include <utility>

#include "ztok/fields/Konwersje.h"
#include "ztok/kernel/TObiektBazowy.h"
#include "ztok/kernel/TPrzejscie.h"
#include "ztok/lists/TKopierDanych.h"
#include "ztok/lists/TPorownywaczDanych.h"
#include "ztok/persist/TOdczytywaczTekstu.h"
#include "ztok/persist/TZapisywaczTekstu.h"
#include "ztok/platform/LiczbyTekst.h"
#include "ztok/platform/TStrumien.h"
#include "ztok/platform/TWariant.h"

namespace ztok {

ZTOK_KLASA_DEF(TPoleWskObiektu, TPole)
ZTOK_KLASA_DEF(TPoleRefObiektu, TPoleWskObiektu)
ZTOK_KLASA_DEF(TPoleRefZeZdarz, TPoleRefObiektu)

TPoleWskObiektu::~TPoleWskObiektu() = default;

void TPoleWskObiektu::WykonajDestrukcje() {
    TPrzejscie::Zapomnij(*this);
    ZerujDane();
}

void TPoleWskObiektu::UstawObiekt(TObiektBazowy* obiekt) { obiekt_ = obiekt; }

TWariant TPoleWskObiektu::GetJakoVariant() const {
    const auto adres = reinterpret_cast<std::intptr_t>(obiekt_);
    if constexpr (sizeof(void*) == 4)
        return TWariant(static_cast<std::int32_t>(adres));
    else
        return TWariant(static_cast<std::int64_t>(adres));
}

void TPoleWskObiektu::SetJakoVariant(const TWariant& wartosc) {
    UstawAdres(static_cast<std::intptr_t>(wartosc.JakoInt64()));
}

std::u16string TPoleWskObiektu::GetJakoString() const {
    return IntNaTekst(static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(obiekt_)));
}

void TPoleWskObiektu::SetJakoString(std::u16string_view tekst) {
    UstawAdres(static_cast<std::intptr_t>(TekstNaInt64(tekst)));
}

void TPoleWskObiektu::UstawAdres(std::intptr_t adres) {
    auto* cel = reinterpret_cast<TObiektBazowy*>(adres);
    if (cel == obiekt_)
        return;
    UstawObiekt(nullptr); // an object that is no longer pointed at must not remember this field
    obiekt_ = cel;
}

void TPoleWskObiektu::ZerujDane() { obiekt_ = nullptr; }

std::u16string TPoleWskObiektu::WartWgMaski(std::u16string_view maska, const TUstawieniaFormatu* ustawienia) const {
    return obiekt_ == nullptr ? std::u16string() : obiekt_->WartWgMaski(maska, ustawienia);
}

void TPoleWskObiektu::KopiujDane(const TPole& zrodlo, TKopierDanych* kopier) {
    SprawdzKlase(zrodlo, TPoleWskObiektu::KlasaStatyczna());
    TPole::KopiujDane(zrodlo, kopier);
    UstawObiekt(static_cast<const TPoleWskObiektu&>(zrodlo).obiekt_);
}

std::int32_t TPoleWskObiektu::Porownaj(const TPole& inne, TPorownywaczDanych* porownywacz) const {
    if (&inne == this)
        return 0;
    SprawdzKlase(inne, TPoleWskObiektu::KlasaStatyczna());
    const TObiektBazowy* drugi = static_cast<const TPoleWskObiektu&>(inne).obiekt_;
    if (obiekt_ == nullptr || drugi == nullptr)
        return static_cast<int>(obiekt_ != nullptr) - static_cast<int>(drugi != nullptr);
    std::int32_t wynik = 0;
    if (porownywacz != nullptr && porownywacz->PorownajWskazania(obiekt_, drugi, wynik))
        return wynik;
    if (obiekt_ == drugi || (porownywacz != nullptr && !porownywacz->NowaParaCelow(obiekt_, drugi)))
        return 0;
    return TPorownywaczDanych::PorownajDowolne(*obiekt_, *drugi, porownywacz);
}

void TPoleWskObiektu::ZapiszWStrumieniu(TStrumien& strumien, TZapisywaczDanych* zapisywacz) const {
    std::int32_t gdzie = -1;
    if (zapisywacz != nullptr && zapisywacz->JestObiekt(obiekt_, gdzie))
        TZapisywaczDanych::ZapiszLicznik31(strumien, static_cast<std::uint32_t>(gdzie) + 1);
}

void TPoleWskObiektu::WczytajZeStrumienia(TStrumien& strumien, TOdczytywaczDanych* odczytywacz) {
    UstawObiekt(nullptr);
    if (odczytywacz != nullptr)
        odczytywacz->OdczytywanoPole(*this);
    const std::uint32_t numer = TOdczytywaczDanych::WczytajLicznik31(strumien);
    if (odczytywacz != nullptr)
        odczytywacz->NumerPola(*this, numer);
}

void TPoleWskObiektu::ZapiszTekstowo(TStrumien& strumien, TZapisywaczTekstu* zapisywacz) const {
    TZapisTekstu(strumien, zapisywacz)->ZapiszRef(*this);
}

void TPoleWskObiektu::WczytajTekstowo(TStrumien& strumien, TOdczytywaczTekstu* odczytywacz) {
    UstawObiekt(nullptr);
    TPole::WczytajTekstowo(strumien, odczytywacz);
    const TOdczytTekstu odczyt(strumien, odczytywacz);
    odczyt->WczytajRef(*this);
}

TPoleRefObiektu::~TPoleRefObiektu() {
    if (obiekt_ != nullptr) // on the stack, or a part of something else: nobody has ended it
        obiekt_->ZwolnijRefOd(this);
}

void TPoleRefObiektu::UstawObiekt(TObiektBazowy* obiekt) {
    if (obiekt == obiekt_)
        return;
    if (obiekt != nullptr)
        obiekt->DodajRefOd(this); // the only step that can fail comes first
    if (obiekt_ != nullptr)
        obiekt_->ZwolnijRefOd(this);
    obiekt_ = obiekt;
}

void TPoleRefObiektu::ZerujRefDo(TObiektBazowy* cel) {
    if (obiekt_ == cel)
        obiekt_ = nullptr;
}

void TPoleRefObiektu::ZerujDane() { TPoleRefObiektu::UstawObiekt(nullptr); }

void TPoleRefObiektu::KopiujDane(const TPole& zrodlo, TKopierDanych* kopier) {
    SprawdzKlase(zrodlo, TPoleWskObiektu::KlasaStatyczna());
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): the parent would set the target at once
    TPole::KopiujDane(zrodlo, kopier);
    TObiektBazowy* cel = static_cast<const TPoleWskObiektu&>(zrodlo).Obiekt();
    const TKlasa* klasa = Klasa();
    const bool wprost = klasa == KlasaStatyczna() || klasa == TPoleRefZeZdarz::KlasaStatyczna();
    if (!wprost || kopier == nullptr || !kopier->Odklada(*this)) {
        UstawObiekt(cel); // a class of the application's hears of it
    } else if (cel != obiekt_) {
        if (obiekt_ != nullptr)
            obiekt_->ZwolnijRefOd(this);
        obiekt_ = cel; // registered by the copier, when it is known whether the target has a copy
    }
}

TPoleRefZeZdarz::~TPoleRefZeZdarz() {
    if (zginelo_ != nullptr)
        *zginelo_ = true;
}

void TPoleRefZeZdarz::ZerujRefDo(TObiektBazowy* cel) {
    if (obiekt_ != cel || !OnZerujRefDo) {
        TPoleRefObiektu::ZerujRefDo(cel);
        return;
    }
    // The event may free this field, and may raise: the pointer goes in every case.
    bool zginelo = false;
    bool* const wyzej = std::exchange(zginelo_, &zginelo);
    const auto poZdarzeniu = [&] {
        if (!zginelo) {
            zginelo_ = wyzej;
            TPoleRefObiektu::ZerujRefDo(cel);
        } else if (wyzej != nullptr) {
            *wyzej = true;
        }
    };
    try {
        OnZerujRefDo.funkcja(OnZerujRefDo.dane, *this);
    } catch (...) {
        poZdarzeniu();
        throw;
    }
    poZdarzeniu();
}

} // namespace ztok
