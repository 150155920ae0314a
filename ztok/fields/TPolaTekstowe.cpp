#include "ztok/fields/TPolaTekstowe.h"

#include "ztok/fields/Konwersje.h"
#include "ztok/kernel/TObiekt.h"
#include "ztok/lists/TPorownywaczDanych.h"
#include "ztok/persist/TOdczytywaczDanych.h"
#include "ztok/persist/TOdczytywaczTekstu.h"
#include "ztok/persist/TZapisywaczTekstu.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/TWariant.h"

namespace ztok {

ZTOK_KLASA_DEF(TPoleString, TPole)
ZTOK_KLASA_DEF(TPoleCDATA, TPoleString)
ZTOK_KLASA_DEF(TPoleFileName, TPoleString)
ZTOK_KLASA_DEF(TPoleRawByteString, TPole)
ZTOK_KLASA_DEF(TPoleWideString, TPole)

namespace {

std::u16string WgMaskiTekstu(std::u16string_view maska, std::u16string tekst, const TUstawieniaFormatu* ustawienia) {
    return maska.empty() ? tekst : Formatuj(maska, {std::move(tekst)}, ustawienia);
}

} // namespace

TPoleString::~TPoleString() = default;

void TPoleString::UstawTrescUTF8(std::string_view bajty) { TOdczytywaczTekstu::ZTresciUTF8(bajty, tekst_); }

TWariant TPoleString::GetJakoVariant() const { return TWariant(Wartosc()); }

void TPoleString::SetJakoVariant(const TWariant& wartosc) { tekst_.Ustaw(wartosc.JakoTekst16()); }

std::u16string TPoleString::GetJakoString() const { return std::u16string(Wartosc()); }

void TPoleString::SetJakoString(std::u16string_view tekst) { tekst_.Ustaw(tekst); }

void TPoleString::ZerujDane() { tekst_.Wyczysc(); }

std::u16string TPoleString::WartWgMaski(std::u16string_view maska, const TUstawieniaFormatu* ustawienia) const {
    return WgMaskiTekstu(maska, GetJakoString(), ustawienia);
}

void TPoleString::KopiujDane(const TPole& zrodlo, TKopierDanych* kopier) {
    SprawdzKlase(zrodlo, KlasaStatyczna());
    TPole::KopiujDane(zrodlo, kopier);
    tekst_.Ustaw(static_cast<const TPoleString&>(zrodlo).Wartosc());
}

std::int32_t TPoleString::Porownaj(const TPole& inne, TPorownywaczDanych* porownywacz) const {
    SprawdzKlase(inne, KlasaStatyczna());
    const std::u16string_view drugi = static_cast<const TPoleString&>(inne).Wartosc();
    if (porownywacz == nullptr)
        return PorownajTeksty(Wartosc(), drugi, rlRozmLiterNiewazny, DefZTOKLocaleID);
    return PorownajTeksty(Wartosc(), drugi, porownywacz->RozmLiter, porownywacz->LocaleID);
}

std::int32_t TPoleString::PorownajZCecha(const TArgument& cecha, TRozmiarLiter rozmLiter,
                                         std::uint32_t localeID) const {
    if (cecha.Tag() == TTag::UnicodeString)
        return PorownajTeksty(cecha.Tekst(), Wartosc(), rozmLiter, localeID);
    if (cecha.JestTekst8() || cecha.JestTekst16())
        return PorownajTeksty(cecha.JakoTekst(), Wartosc(), rozmLiter, localeID);
    return TPole::PorownajZCecha(cecha, rozmLiter, localeID);
}

void TPoleString::ZapiszWStrumieniu(TStrumien& strumien, TZapisywaczDanych* zapisywacz) const {
    TZapisywaczDanych::ZapiszWideString(strumien, Wartosc(), zapisywacz);
}

void TPoleString::WczytajZeStrumienia(TStrumien& strumien, TOdczytywaczDanych* odczytywacz) {
    ZglosOdczyt(*this, odczytywacz);
    TOdczytywaczDanych::WczytajWideString(strumien, tekst_, odczytywacz);
}

void TPoleString::ZapiszTekstowo(TStrumien& strumien, TZapisywaczTekstu* zapisywacz) const {
    TZapisTekstu(strumien, zapisywacz)->ZapiszTekst(Wartosc());
}

void TPoleString::WczytajTekstowo(TStrumien& strumien, TOdczytywaczTekstu* odczytywacz) {
    ZglosOdczyt(*this, odczytywacz);
    const TOdczytTekstu odczyt(strumien, odczytywacz);
    switch (odczyt->Parser.Token()) {
    case TZTParser::TekstCudzyslow:
        odczyt->WczytajTekstDo([this](std::string_view bajty) { UstawTrescUTF8(bajty); });
        break;
    case TZTParser::Tekst:
        odczyt->WczytajTekstDo(
            [this](std::string_view bajty) { tekst_.Ustaw(ZeStronyKodowej(bajty, DefStronaKodowa)); });
        break;
    default:
        tekst_.Ustaw(ZeStronyKodowej(odczyt->WczytajGolyToken(), DefStronaKodowa));
    }
}

TPoleRawByteString::~TPoleRawByteString() = default;

TWariant TPoleRawByteString::GetJakoVariant() const { return TWariant::AnsiString(bajty_); }

void TPoleRawByteString::SetJakoVariant(const TWariant& wartosc) { bajty_ = wartosc.JakoTekst8(); }

std::u16string TPoleRawByteString::GetJakoString() const { return ZeStronyKodowej(bajty_, DefStronaKodowa); }

void TPoleRawByteString::SetJakoString(std::u16string_view tekst) { bajty_ = NaStroneKodowa(tekst, DefStronaKodowa); }

std::string TPoleRawByteString::GetJakoZTAnsiString() const { return bajty_; }

void TPoleRawByteString::SetJakoZTAnsiString(std::string_view bajty) { bajty_ = bajty; }

void TPoleRawByteString::ZerujDane() { bajty_.clear(); }

std::u16string TPoleRawByteString::WartWgMaski(std::u16string_view maska, const TUstawieniaFormatu* ustawienia) const {
    return WgMaskiTekstu(maska, GetJakoString(), ustawienia);
}

void TPoleRawByteString::KopiujDane(const TPole& zrodlo, TKopierDanych* kopier) {
    SprawdzKlase(zrodlo, KlasaStatyczna());
    TPole::KopiujDane(zrodlo, kopier);
    bajty_ = static_cast<const TPoleRawByteString&>(zrodlo).bajty_;
}

std::int32_t TPoleRawByteString::Porownaj(const TPole& inne, TPorownywaczDanych* porownywacz) const {
    SprawdzKlase(inne, KlasaStatyczna());
    const std::string& drugie = static_cast<const TPoleRawByteString&>(inne).bajty_;
    if (porownywacz != nullptr && porownywacz->RozmLiter == rlRozmLiterWazny)
        return CompareStrSgn(bajty_, drugie);
    return CompareTxtSgn(bajty_, drugie);
}

void TPoleRawByteString::ZapiszWStrumieniu(TStrumien& strumien, TZapisywaczDanych* /*zapisywacz*/) const {
    TZapisywaczDanych::ZapiszAnsiString(strumien, bajty_);
}

void TPoleRawByteString::WczytajZeStrumienia(TStrumien& strumien, TOdczytywaczDanych* odczytywacz) {
    ZglosOdczyt(*this, odczytywacz);
    TOdczytywaczDanych::WczytajAnsiString(strumien, bajty_, odczytywacz);
}

void TPoleRawByteString::ZapiszTekstowo(TStrumien& strumien, TZapisywaczTekstu* zapisywacz) const {
    TZapisTekstu(strumien, zapisywacz)->ZapiszTekst(bajty_, Cudzyslow8Bit);
}

void TPoleRawByteString::WczytajTekstowo(TStrumien& strumien, TOdczytywaczTekstu* odczytywacz) {
    ZglosOdczyt(*this, odczytywacz);
    const TOdczytTekstu odczyt(strumien, odczytywacz);
    switch (odczyt->Parser.Token()) {
    case TZTParser::TekstCudzyslow:
        SetJakoString(TOdczytywaczTekstu::DekodujTrescUTF8(odczyt->WczytajTekstAnsi()));
        break;
    case TZTParser::Tekst:
        odczyt->WczytajTekstDo([this](std::string_view bajty) { bajty_ = bajty; });
        break;
    default:
        bajty_ = odczyt->WczytajGolyToken();
    }
}

TPoleWideString::~TPoleWideString() = default;

void TPoleWideString::UstawTrescUTF8(std::string_view bajty) { TOdczytywaczTekstu::ZTresciUTF8(bajty, tekst_); }

TWariant TPoleWideString::GetJakoVariant() const { return TWariant::WideString(std::u16string(Wartosc())); }

void TPoleWideString::SetJakoVariant(const TWariant& wartosc) { tekst_.Ustaw(wartosc.JakoTekst16()); }

std::u16string TPoleWideString::GetJakoString() const { return PolskiWide(Utf8ZUtf16(Wartosc())); }

void TPoleWideString::SetJakoString(std::u16string_view tekst) { tekst_.Ustaw(Utf16ZUtf8(PolskiAnsi(tekst))); }

void TPoleWideString::ZerujDane() { tekst_.Wyczysc(); }

std::u16string TPoleWideString::WartWgMaski(std::u16string_view maska, const TUstawieniaFormatu* ustawienia) const {
    return WgMaskiTekstu(maska, GetJakoString(), ustawienia);
}

void TPoleWideString::KopiujDane(const TPole& zrodlo, TKopierDanych* kopier) {
    SprawdzKlase(zrodlo, KlasaStatyczna());
    TPole::KopiujDane(zrodlo, kopier);
    tekst_.Ustaw(static_cast<const TPoleWideString&>(zrodlo).Wartosc());
}

std::int32_t TPoleWideString::Porownaj(const TPole& inne, TPorownywaczDanych* porownywacz) const {
    SprawdzKlase(inne, KlasaStatyczna());
    const std::u16string_view drugi = static_cast<const TPoleWideString&>(inne).Wartosc();
    if (porownywacz == nullptr)
        return CompareTxtSgn(Wartosc(), drugi);
    return PorownajTekstySzerokie(Wartosc(), drugi, porownywacz->RozmLiter, porownywacz->LocaleID);
}

std::int32_t TPoleWideString::PorownajZCecha(const TArgument& cecha, TRozmiarLiter rozmLiter,
                                             std::uint32_t localeID) const {
    if (cecha.JestTekst8() || cecha.JestTekst16())
        return PorownajTekstySzerokie(cecha.JakoTekst(), Wartosc(), rozmLiter, localeID);
    return TPole::PorownajZCecha(cecha, rozmLiter, localeID);
}

void TPoleWideString::ZapiszWStrumieniu(TStrumien& strumien, TZapisywaczDanych* /*zapisywacz*/) const {
    TZapisywaczDanych::ZapiszWideString(strumien, Wartosc(), nullptr);
}

void TPoleWideString::WczytajZeStrumienia(TStrumien& strumien, TOdczytywaczDanych* odczytywacz) {
    ZglosOdczyt(*this, odczytywacz);
    TOdczytywaczDanych::WczytajUtf8(strumien, tekst_, odczytywacz);
}

void TPoleWideString::ZapiszTekstowo(TStrumien& strumien, TZapisywaczTekstu* zapisywacz) const {
    TZapisTekstu(strumien, zapisywacz)->ZapiszTekstWide(Wartosc(), true);
}

void TPoleWideString::WczytajTekstowo(TStrumien& strumien, TOdczytywaczTekstu* odczytywacz) {
    ZglosOdczyt(*this, odczytywacz);
    const TOdczytTekstu odczyt(strumien, odczytywacz);
    switch (odczyt->Parser.Token()) {
    case TZTParser::TekstCudzyslow:
        odczyt->WczytajTekstDo([this](std::string_view bajty) { UstawTrescUTF8(bajty); });
        break;
    case TZTParser::Tekst:
        if (odczyt->OdczytObiekt != nullptr && odczyt->OdczytObiekt->PoleByloTekstowe(odczyt->OdczytPole))
            odczyt->WczytajTekstDo([this](std::string_view bajty) { tekst_.Ustaw(PolskiWide(bajty)); });
        else
            odczyt->WczytajTekstDo([this](std::string_view bajty) { UstawTrescUTF8(bajty); });
        break;
    default:
        tekst_.Ustaw(PolskiWide(odczyt->WczytajGolyToken()));
    }
}

} // namespace ztok
