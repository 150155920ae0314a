#include "ztok/fields/TPole.h"

#include "ztok/fields/Konwersje.h"
#include "ztok/fields/TPoleWskObiektu.h"
#include "ztok/fields/TZTParam.h"
#include "ztok/kernel/TJadroKlas.h"
#include "ztok/kernel/TObiektBazowy.h"
#include "ztok/lists/TKopierDanych.h"
#include "ztok/persist/TOdczytywaczTekstu.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Guid.h"
#include "ztok/platform/Interfejsy.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/TWariant.h"
#include "ztok/platform/Wyjatki.h"
#include "ztok/util/ZTBledy.h"
#include "ztok/util/Ztfunbazowe.h"

namespace ztok {

ZTOK_KLASA_DEF(TTrwaly, TObiektOgolny)
ZTOK_KLASA_DEF(TPole, TTrwaly)

TFunEdycji DefFunEdycji = nullptr;

TTrwaly::~TTrwaly() = default;

void TTrwaly::PrzypiszDo(TTrwaly& cel) const {
    throw EBladKonwersji(Formatuj(Komunikat(kmBladRzutowania), {NazwaKlasy(), cel.NazwaKlasy()}));
}

void TTrwaly::DefiniujWlasciwosci() {}

void TTrwaly::Przypisz(const TTrwaly& zrodlo) { zrodlo.PrzypiszDo(*this); }

TPole::~TPole() = default;

void TPole::BladKlasy(const TPole& inne, const TKlasa* klasa) {
    throw EBladRzutowania(Formatuj(Komunikat(kmBladRzutowania), {inne.NazwaKlasy(), klasa->nazwa}));
}

void TPole::BladAbstrakcyjny(const TKlasa* klasa, std::u16string_view operacja) {
    throw EBladAbstrakcyjny(Formatuj(Komunikat(kmWywolanieAbstrakcyjne), {klasa->nazwa, operacja}));
}

void TPole::ZglosOdczyt(TPole& pole, TOdczytywaczDanych* odczytywacz) {
    if (odczytywacz != nullptr && odczytywacz->ChceKazdePole())
        odczytywacz->OdczytywanoPole(pole);
}

std::int32_t TPole::_AddRef() noexcept { return -1; }
std::int32_t TPole::_Release() noexcept { return -1; }
void TPole::ZerujRefDo(TObiektBazowy* /*cel*/) {}
TWariant TPole::GetJakoVariant() const { BladAbstrakcyjny(KlasaStatyczna(), u"GetJakoVariant"); }
void TPole::SetJakoVariant(const TWariant& /*wartosc*/) { BladAbstrakcyjny(KlasaStatyczna(), u"SetJakoVariant"); }
std::u16string TPole::GetJakoString() const { BladAbstrakcyjny(KlasaStatyczna(), u"GetJakoString"); }
void TPole::SetJakoString(std::u16string_view /*tekst*/) { BladAbstrakcyjny(KlasaStatyczna(), u"SetJakoString"); }
std::string TPole::GetJakoZTAnsiString() const { return PolskiAnsi(GetJakoString()); }
void TPole::SetJakoZTAnsiString(std::string_view bajty) { SetJakoString(PolskiWide(bajty)); }

std::int32_t TPole::QueryInterface(const TGUID& iid, void** wynik) noexcept {
    return OdpowiedzInterfejsem(this, iid, wynik);
}

void TPole::ZerujDane() { BladAbstrakcyjny(KlasaStatyczna(), u"ZerujDane"); }

std::u16string TPole::WartWgMaski(std::u16string_view /*maska*/, const TUstawieniaFormatu* /*ustawienia*/) const {
    return GetJakoString();
}

void TPole::KopiujDane(const TPole& zrodlo, TKopierDanych* kopier) {
    if (kopier != nullptr)
        kopier->KopiowanoDane(zrodlo, *this);
}

std::int32_t TPole::Porownaj(const TPole& /*inne*/, TPorownywaczDanych* /*porownywacz*/) const { return 0; }

namespace {

template <class T> int Znak(T a, T b) noexcept { return a < b ? -1 : static_cast<int>(a > b); }

// Sign of an integer minus the value of a variant, exact for integers of any size.
int PorownajZLiczba(std::int64_t cecha, const TWariant& wartosc) { return PorownajWarianty(TWariant(cecha), wartosc); }

// The zero of the feature's kind, for a value that is null.
TWariant ZeroCechy(const TArgument& cecha) {
    switch (cecha.Tag()) {
    case TTag::Integer:
    case TTag::Int64:
    case TTag::Object:
        return TWariant(0);
    case TTag::Boolean:
        return TWariant(false);
    case TTag::Extended:
        return TWariant(TWaluta{});
    default:
        return cecha.JestTekst8() || cecha.JestTekst16() ? TWariant(std::u16string()) : TWariant::Null();
    }
}

} // namespace

std::int32_t TPole::PorownajZCecha(const TArgument& cecha, TRozmiarLiter rozmLiter, std::uint32_t localeID) const {
    TWariant wartosc = GetJakoVariant();
    if (wartosc.JestNull())
        wartosc = ZeroCechy(cecha);
    switch (cecha.Tag()) {
    case TTag::Integer:
    case TTag::Int64:
        return PorownajZLiczba(cecha.Calkowita(), wartosc);
    case TTag::Boolean: {
        const bool logiczna = wartosc.JakoBool();
        if (logiczna == cecha.Logiczna())
            return 0;
        return logiczna ? -1 : 1;
    }
    case TTag::Extended:
        return PorownajWarianty(TWariant(static_cast<double>(cecha.Rzeczywista())), wartosc);
    case TTag::Object:
        return PorownajZLiczba(static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(cecha.Obiekt())), wartosc);
    case TTag::Char:
    case TTag::ShortString:
    case TTag::PChar:
    case TTag::AnsiString:
    case TTag::WideChar:
    case TTag::PWideChar:
    case TTag::WideString:
    case TTag::UnicodeString:
        return PorownajTeksty(cecha.JakoTekst(), wartosc.JakoTekst16(), rozmLiter, localeID);
    case TTag::Variant:
        return ZTOKVarCompare(cecha.Wariant(), wartosc, rozmLiter, localeID);
    default:
        ZTErrorFmt(Komunikat(kmBlednyTypParametru), {static_cast<int>(cecha.Tag())});
    }
}

bool TPole::EdytujDane(TObiektBazowy* wlasciciel, bool flaga) { return EdytujDaneWgKlasy(wlasciciel, flaga); }

bool TPole::EdytujDane(bool flaga) { return EdytujDane(static_cast<TObiektBazowy*>(nullptr), flaga); }

bool TPole::EdytujDane(TArgumenty argumenty, bool flaga) {
    const TIntf<TZTParam> parametry = ZTParam(argumenty, nullptr, flaga);
    return EdytujDane(parametry.get(), flaga);
}

bool TPole::EdytujDaneWgKlasy(TObiektBazowy* wlasciciel, bool flaga, const TKlasa* granica) {
    // Only parameter objects: another owner that counts may have no reference yet, and must not die of this one.
    const TIntf<TObiektBazowy> przytrzymanie(wlasciciel != nullptr && wlasciciel->Klasa()->Ma(ckParametr) ? wlasciciel
                                                                                                          : nullptr);
    if (granica == nullptr)
        granica = Klasa();
    for (const TKlasa* klasa = Klasa(); klasa != nullptr && KlasaADziedziczyPoB(klasa, granica);
         klasa = klasa->Przodek()) {
        TFunEdycji funkcja = nullptr;
        if (JadroKlas()->JestFunEdycji(klasa, funkcja))
            return funkcja(*this, wlasciciel, flaga);
    }
    return DefFunEdycji != nullptr && DefFunEdycji(*this, wlasciciel, flaga);
}

void TPole::ZapiszWStrumieniu(TStrumien& /*strumien*/, TZapisywaczDanych* /*zapisywacz*/) const {
    BladAbstrakcyjny(KlasaStatyczna(), u"ZapiszWStrumieniu");
}

void TPole::WczytajZeStrumienia(TStrumien& /*strumien*/, TOdczytywaczDanych* odczytywacz) {
    if (odczytywacz != nullptr)
        odczytywacz->OdczytywanoPole(*this);
}

void TPole::ZapiszTekstowo(TStrumien& /*strumien*/, TZapisywaczTekstu* /*zapisywacz*/) const {
    BladAbstrakcyjny(KlasaStatyczna(), u"ZapiszTekstowo");
}

void TPole::WczytajTekstowo(TStrumien& /*strumien*/, TOdczytywaczTekstu* odczytywacz) {
    if (odczytywacz != nullptr)
        odczytywacz->OdczytywanoPole(*this);
}

void TPole::ZapiszXMLowo(TStrumien& /*strumien*/, TZapisywaczXML* /*zapisywacz*/) const {
    BladAbstrakcyjny(KlasaStatyczna(), u"ZapiszXMLowo");
}

void TPole::WczytajXMLowo(TStrumien& /*strumien*/, TOdczytywaczXML* /*odczytywacz*/) {
    BladAbstrakcyjny(KlasaStatyczna(), u"WczytajXMLowo");
}

void TPole::SprawdzVarType(const TWariant& wartosc, std::span<const std::uint16_t> dozwolone) const {
    for (const std::uint16_t typ : dozwolone)
        if (typ == static_cast<std::uint16_t>(wartosc.Typ()))
            return;
    throw EBladAsercji(Formatuj(Komunikat(kmBlednyTypVariant), {NazwaKlasy(), wartosc.NazwaTypu()}));
}

std::u16string TPole::InfoWartPozaZakresem(const TWariant& wartosc) const {
    std::u16string tekst = u"?";
    try {
        tekst = wartosc.JakoTekst16();
    } catch (const EBladKonwersji&) { // NOLINT(bugprone-empty-catch): the value has no text, "?" stands for it
    }
    return Formatuj(Komunikat(kmWartoscPozaZakresem), {NazwaKlasy(), Skrocony(tekst)});
}

std::u16string TPole::TekstDoOpisu() const {
    try {
        return WJednejLinii(GetJakoString());
    } catch (const EBladKonwersji&) {
        return u"?";
    }
}

bool TPole::MaDefWartosc() const {
    const TKlasa* klasa = Klasa();
    if (klasa->Ma(ckPoleWsk)) // a stream leaves out a pointer at nothing, and the tree read back is equal
        return static_cast<const TPoleWskObiektu*>(this)->Obiekt() == nullptr;
    if (klasa->Ma(ckObiektBazowy) || klasa->utworz == nullptr)
        return false;
    // A new field has the default value; comparing letter by letter tells an empty text from any other.
    const TWlasny<TPole> domyslne(static_cast<TPole*>(klasa->utworz(nullptr)));
    return Porownaj(*domyslne, nullptr) == 0;
}

} // namespace ztok
