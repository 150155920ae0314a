#include "ztok/fields/TPoleBoolean.h"

#include "ztok/fields/Konwersje.h"
#include "ztok/persist/TOdczytywaczTekstu.h"
#include "ztok/persist/TZapisywaczTekstu.h"
#include "ztok/platform/TStrumien.h"
#include "ztok/platform/TWariant.h"

namespace ztok {

ZTOK_KLASA_DEF(TPoleBoolean, TPole)

TWariant TPoleBoolean::GetJakoVariant() const { return TWariant(Wartosc()); }

void TPoleBoolean::SetJakoVariant(const TWariant& wartosc) { bajt_ = wartosc.JakoBool() ? 1 : 0; }

std::u16string TPoleBoolean::GetJakoString() const {
    return std::u16string(NieTakWide[Wartosc() ? 1 : 0].substr(0, 1));
}

void TPoleBoolean::SetJakoString(std::u16string_view tekst) { bajt_ = ZTOKStrToBoolean(tekst) ? 1 : 0; }

void TPoleBoolean::ZerujDane() { bajt_ = 0; }

std::u16string TPoleBoolean::WartWgMaski(std::u16string_view maska, const TUstawieniaFormatu* /*ustawienia*/) const {
    return maska.empty() ? GetJakoString() : ZTOKFormatBool(maska, Wartosc());
}

void TPoleBoolean::KopiujDane(const TPole& zrodlo, TKopierDanych* kopier) {
    SprawdzKlase(zrodlo, KlasaStatyczna());
    TPole::KopiujDane(zrodlo, kopier);
    bajt_ = static_cast<const TPoleBoolean&>(zrodlo).bajt_;
}

std::int32_t TPoleBoolean::Porownaj(const TPole& inne, TPorownywaczDanych* /*porownywacz*/) const {
    SprawdzKlase(inne, KlasaStatyczna());
    return static_cast<int>(Wartosc()) - static_cast<int>(static_cast<const TPoleBoolean&>(inne).Wartosc());
}

void TPoleBoolean::ZapiszWStrumieniu(TStrumien& strumien, TZapisywaczDanych* /*zapisywacz*/) const {
    strumien.WriteBuffer(&bajt_, 1);
}

void TPoleBoolean::WczytajZeStrumienia(TStrumien& strumien, TOdczytywaczDanych* odczytywacz) {
    ZglosOdczyt(*this, odczytywacz);
    strumien.ReadBuffer(&bajt_, 1);
}

void TPoleBoolean::ZapiszTekstowo(TStrumien& strumien, TZapisywaczTekstu* zapisywacz) const {
    TZapisTekstu(strumien, zapisywacz)->ZapiszTxt(NieTak[Wartosc() ? 1 : 0].substr(0, 1));
}

void TPoleBoolean::WczytajTekstowo(TStrumien& strumien, TOdczytywaczTekstu* odczytywacz) {
    ZglosOdczyt(*this, odczytywacz);
    const TOdczytTekstu odczyt(strumien, odczytywacz);
    switch (odczyt->Parser.Token()) {
    case TZTParser::Symbol:
        SetJakoZTAnsiString(odczyt->Parser.TrescTokenu());
        odczyt->Parser.NextToken();
        break;
    case TZTParser::Calkowita:
        bajt_ = odczyt->Parser.TokenInt() != 0 ? 1 : 0;
        odczyt->Parser.NextToken();
        break;
    default:
        SetJakoString(PolskiWide(odczyt->WczytajTekstAnsi()));
    }
}

} // namespace ztok
