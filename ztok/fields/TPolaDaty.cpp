#include "ztok/fields/TPolaDaty.h"

#include <cmath>

#include "ztok/fields/Konwersje.h"
#include "ztok/fields/KonwersjeWartosci.h"
#include "ztok/kernel/TJadroKlas.h"
#include "ztok/persist/TOdczytywaczTekstu.h"
#include "ztok/persist/TZapisywaczTekstu.h"
#include "ztok/persist/WartosciTekstowe.h"
#include "ztok/platform/DatyTekst.h"
#include "ztok/platform/TStrumien.h"
#include "ztok/platform/TWariant.h"

namespace ztok {

ZTOK_KLASA_DEF(TPoleDateTimeBazowe, TPole)
ZTOK_KLASA_DEF(TPoleDate, TPoleDateTimeBazowe)
ZTOK_KLASA_DEF(TPoleTime, TPoleDateTimeBazowe)
ZTOK_KLASA_DEF(TPoleDateTime, TPoleDateTimeBazowe)

namespace {

// Names of months and words of the day are wide text, which is written as UTF-8.
double DataZTekstu(std::string_view bajty) {
    double wartosc = 0;
    return CzytajDate(bajty, JadroKlas()->Format(), wartosc)
               ? wartosc
               : ZTOKStrToDate(TOdczytywaczTekstu::DekodujTrescUTF8(bajty));
}

double CzasZTekstu(std::string_view bajty) {
    double wartosc = 0;
    return CzytajCzas(bajty, JadroKlas()->Format(), wartosc)
               ? wartosc
               : ZTOKStrToTime(TOdczytywaczTekstu::DekodujTrescUTF8(bajty));
}

} // namespace

double ChwilaZTekstu(unsigned kod, std::string_view bajty) {
    const std::size_t spacja = bajty.find(' ');
    const std::string_view data = bajty.substr(0, spacja);
    const std::string_view czas = spacja == std::string_view::npos ? bajty : bajty.substr(spacja + 1);
    switch (kod) {
    case kpDate:
        return DataZTekstu(data);
    case kpTime:
        return CzasZTekstu(czas);
    default:
        return spacja == std::string_view::npos ? DataZTekstu(data)
                                                : ZlaczDateICzas(DataZTekstu(data), CzasZTekstu(czas));
    }
}

double TPoleDate::CzescDaty(double wartosc) noexcept { return std::trunc(wartosc); }

double TPoleTime::CzescCzasu(double wartosc) noexcept {
    // An infinity has no fraction; the difference would be a NaN of no meaning.
    return std::isinf(wartosc) ? 0 : wartosc - std::trunc(wartosc);
}

double TPoleDateTimeBazowe::Czesc(double wartosc) const noexcept {
    switch (Klasa()->kodPola) {
    case kpDate:
        return TPoleDate::CzescDaty(wartosc);
    case kpTime:
        return TPoleTime::CzescCzasu(wartosc);
    default:
        return wartosc;
    }
}

TWariant TPoleDateTimeBazowe::GetJakoVariant() const { return TWariant(TDataCzas{wartosc_}); }

void TPoleDateTimeBazowe::SetJakoVariant(const TWariant& wartosc) {
    if (Klasa()->kodPola == kpInne)
        BladAbstrakcyjny(KlasaStatyczna(), u"SetJakoVariant");
    wartosc_ = Czesc(wartosc.JakoData().dni);
}

void TPoleDateTimeBazowe::ZerujDane() { wartosc_ = 0; }

std::u16string TPoleDateTimeBazowe::WartWgMaski(std::u16string_view maska, const TUstawieniaFormatu* ustawienia) const {
    return maska.empty() ? GetJakoString()
                         : FormatujDateCzas(maska, wartosc_, ustawienia != nullptr ? *ustawienia : UstawieniaProcesu());
}

void TPoleDateTimeBazowe::KopiujDane(const TPole& zrodlo, TKopierDanych* kopier) {
    SprawdzKlase(zrodlo, Klasa());
    TPole::KopiujDane(zrodlo, kopier);
    wartosc_ = static_cast<const TPoleDateTimeBazowe&>(zrodlo).wartosc_;
}

std::int32_t TPoleDateTimeBazowe::Porownaj(const TPole& inne, TPorownywaczDanych* /*porownywacz*/) const {
    SprawdzKlase(inne, TPoleDateTimeBazowe::KlasaStatyczna());
    const double druga = static_cast<const TPoleDateTimeBazowe&>(inne).wartosc_;
    return static_cast<int>(wartosc_ > druga) - static_cast<int>(wartosc_ < druga);
}

void TPoleDateTimeBazowe::ZapiszWStrumieniu(TStrumien& strumien, TZapisywaczDanych* /*zapisywacz*/) const {
    strumien.WriteBuffer(&wartosc_, sizeof wartosc_);
}

void TPoleDateTimeBazowe::WczytajZeStrumienia(TStrumien& strumien, TOdczytywaczDanych* odczytywacz) {
    ZglosOdczyt(*this, odczytywacz);
    double wartosc = 0;
    strumien.ReadBuffer(&wartosc, sizeof wartosc);
    wartosc_ = Czesc(wartosc);
}

void TPoleDateTimeBazowe::ZapiszTekstowo(TStrumien& strumien, TZapisywaczTekstu* zapisywacz) const {
    const TZapisTekstu zapis(strumien, zapisywacz);
    switch (Klasa()->kodPola) {
    case kpDate:
        return zapis->ZapiszDate(wartosc_);
    case kpTime:
        return zapis->ZapiszCzas(wartosc_);
    default:
        return zapis->ZapiszDateICzas(wartosc_);
    }
}

void TPoleDateTimeBazowe::WczytajTekstowo(TStrumien& strumien, TOdczytywaczTekstu* odczytywacz) {
    ZglosOdczyt(*this, odczytywacz);
    const TOdczytTekstu odczyt(strumien, odczytywacz);
    wartosc_ = Czesc(ChwilaZTekstu(Klasa()->kodPola, odczyt->WczytajTekstAnsi()));
}

std::u16string TPoleDate::GetJakoString() const { return DataNaTekst(wartosc_, UstawieniaProcesu()); }
void TPoleDate::SetJakoString(std::u16string_view tekst) { UstawWartosc(TekstNaDateICzas(tekst, UstawieniaProcesu())); }

std::u16string TPoleTime::GetJakoString() const { return CzasNaTekst(wartosc_, UstawieniaProcesu()); }
void TPoleTime::SetJakoString(std::u16string_view tekst) { UstawWartosc(TekstNaDateICzas(tekst, UstawieniaProcesu())); }

std::u16string TPoleDateTime::GetJakoString() const { return DataLubCzasNaTekst(wartosc_, UstawieniaProcesu()); }
void TPoleDateTime::SetJakoString(std::u16string_view tekst) {
    UstawWartosc(TekstNaDateICzas(tekst, UstawieniaProcesu()));
}

} // namespace ztok
