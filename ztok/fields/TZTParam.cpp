#include "ztok/fields/TZTParam.h"

#include <utility>

#include "ztok/fields/Konwersje.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {
namespace {

// Count of an object that is being freed: references taken and dropped by its last steps never lead to 0 again.
constexpr std::int32_t kUmierajacy = 0x40000000;

} // namespace

ZTOK_KLASA_DEF(TZTParamBazowy, TObiektBazowy)
ZTOK_KLASA_DEF(TZTParam, TZTParamBazowy)

TZTParamBazowy::~TZTParamBazowy() { DokonczZycie(); }

std::int32_t TZTParamBazowy::_AddRef() noexcept { return licznik_.fetch_add(1, std::memory_order_relaxed) + 1; }

std::int32_t TZTParamBazowy::_Release() noexcept {
    // What every holder did to the object is seen by the one that frees it.
    const std::int32_t zostalo = licznik_.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (zostalo == 0) {
        licznik_.store(kUmierajacy, std::memory_order_relaxed);
        ZwolnijCicho(this);
    }
    return zostalo;
}

void TZTParamBazowy::ZerujDane() {}

TZTParam::~TZTParam() { DokonczZycie(); }

// --- values

TZTParam::TPozycja TZTParam::Pozycja(std::u16string_view nazwa, const TArgument& wartosc) {
    TPozycja pozycja{std::u16string(nazwa), wartosc, {}, nullptr};
    if (wartosc.Tag() == TTag::Interface)
        pozycja.interfejs = TIntf<IInterfejs>(wartosc.Interfejs());
    else if (wartosc.Tag() == TTag::Object && wartosc.Obiekt() != nullptr &&
             wartosc.Obiekt()->Klasa()->Ma(ckObiektBazowy))
        pozycja.obiekt = static_cast<TObiektBazowy*>(wartosc.Obiekt());
    return pozycja;
}

void TZTParam::Wypisz(TObiektBazowy* obiekt) {
    if (obiekt == nullptr || obiekt == wlasciciel_)
        return;
    for (const TPozycja& pozycja : pozycje_)
        if (pozycja.obiekt == obiekt)
            return;
    obiekt->ZwolnijRefOd(this);
}

void TZTParam::Dolacz(std::u16string_view nazwa, const TArgument& wartosc) {
    pozycje_.push_back(Pozycja(nazwa, wartosc));
    if (TObiektBazowy* obiekt = pozycje_.back().obiekt; obiekt != nullptr) {
        try {
            obiekt->DodajRefOd(this);
        } catch (...) {
            pozycje_.pop_back();
            throw;
        }
    }
}

void TZTParam::Podmien(TPozycja& pozycja, const TArgument& wartosc) {
    TPozycja nowa = Pozycja(pozycja.nazwa, wartosc);
    if (nowa.obiekt != nullptr)
        nowa.obiekt->DodajRefOd(this);
    std::swap(pozycja, nowa);
    Wypisz(nowa.obiekt);
}

std::int32_t TZTParam::NrWartosci(std::u16string_view nazwa) const noexcept {
    if (!nazwa.empty())
        for (std::size_t i = 0; i < pozycje_.size(); ++i)
            if (CompareTxtSgn(pozycje_[i].nazwa, nazwa) == 0)
                return static_cast<std::int32_t>(i);
    return -1;
}

std::u16string_view TZTParam::NazwaWartosci(std::int32_t nr) const noexcept {
    return nr >= 0 && nr < Ile() ? std::u16string_view(pozycje_[static_cast<std::size_t>(nr)].nazwa)
                                 : std::u16string_view();
}

const TArgument& TZTParam::Wartosc(std::int32_t nr) const {
    if (nr < 0 || nr >= Ile())
        ZTErrorFmt(Komunikat(kmIndeksPozaZakresem), {NazwaKlasy(), nr});
    return pozycje_[static_cast<std::size_t>(nr)].wartosc;
}

const TArgument& TZTParam::Wartosc(std::u16string_view nazwa) const {
    const std::int32_t nr = NrWartosci(nazwa);
    if (nr < 0)
        ZTErrorFmt(Komunikat(kmBlednePodpole), {NazwaKlasy(), nazwa});
    return Wartosc(nr);
}

void TZTParam::Ustaw(std::int32_t nr, const TArgument& wartosc) {
    static_cast<void>(Wartosc(nr)); // checks the index
    Podmien(pozycje_[static_cast<std::size_t>(nr)], wartosc);
}

void TZTParam::Ustaw(std::u16string_view nazwa, const TArgument& wartosc) {
    if (const std::int32_t nr = NrWartosci(nazwa); nr >= 0)
        Podmien(pozycje_[static_cast<std::size_t>(nr)], wartosc);
    else
        Dolacz(nazwa, wartosc);
}

void TZTParam::UstawWlasciciela(TObiektBazowy* wlasciciel) {
    if (wlasciciel != nullptr)
        wlasciciel->DodajRefOd(this);
    Wypisz(std::exchange(wlasciciel_, wlasciciel));
}

void TZTParam::ZerujDane() {
    const std::vector<TPozycja> pozycje = std::exchange(pozycje_, {});
    UstawWlasciciela(nullptr);
    flaga_ = false;
    for (const TPozycja& pozycja : pozycje)
        Wypisz(pozycja.obiekt);
}

void TZTParam::ZerujRefDo(TObiektBazowy* cel) {
    if (wlasciciel_ == cel)
        wlasciciel_ = nullptr;
    for (TPozycja& pozycja : pozycje_)
        if (pozycja.obiekt == cel) {
            pozycja.obiekt = nullptr;
            pozycja.wartosc = TArgument(static_cast<const TObiektOgolny*>(nullptr));
        }
}

std::u16string TZTParam::OpisTekstowy() const { return Formatuj(Komunikat(kmIleElementow), {Ile()}); }

// --- making and finding

TIntf<TZTParam> ZTParam(TArgumenty wartosci, TObiektBazowy* wlasciciel, bool flaga) {
    TIntf<TZTParam> parametry(UtworzSurowy<TZTParam>());
    for (const TArgument& wartosc : wartosci)
        parametry->Dodaj(wartosc);
    parametry->UstawWlasciciela(wlasciciel);
    parametry->UstawFlage(flaga);
    return parametry;
}

TIntf<TZTParam> ZTParam(TArgumenty nazwy, TArgumenty wartosci, TObiektBazowy* wlasciciel, bool flaga) {
    if (nazwy.size() != wartosci.size())
        ZTErrorFmt(Komunikat(kmZlaLiczbaElementow), {u"ZTParam", static_cast<std::int64_t>(wartosci.size())});
    TIntf<TZTParam> parametry = ZTParam(TArgumenty(), wlasciciel, flaga);
    for (std::size_t i = 0; i < nazwy.size(); ++i) {
        if (!nazwy[i].JestNazwa())
            ZTErrorFmt(Komunikat(kmBlednyTypIndeksu), {u"ZTParam"});
        parametry->Ustaw(nazwy[i].JakoTekst(), wartosci[i]);
    }
    return parametry;
}

TZTParam* JakoParametry(TObiektBazowy* wlasciciel) noexcept {
    return wlasciciel != nullptr && wlasciciel->JestKlasy(TZTParam::KlasaStatyczna())
               ? static_cast<TZTParam*>(wlasciciel)
               : nullptr;
}

} // namespace ztok
