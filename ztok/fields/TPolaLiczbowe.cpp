#include "ztok/fields/TPolaLiczbowe.h"

#include <bit>
#include <limits>
#include <string>
#include <type_traits>

#include "ztok/fields/Konwersje.h"
#include "ztok/persist/TOdczytywaczTekstu.h"
#include "ztok/persist/TZapisywaczTekstu.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/LiczbyTekst.h"
#include "ztok/platform/TStrumien.h"
#include "ztok/platform/TUstawieniaFormatu.h"
#include "ztok/platform/TWariant.h"
#include "ztok/platform/Wyjatki.h"

namespace ztok {

static_assert(std::endian::native == std::endian::little, "values go to the stream as they lie in memory");

ZTOK_KLASA_DEF(TPoleNumeryczne, TPole)
ZTOK_KLASA_DEF(TPoleCalkowitoliczbowe, TPoleNumeryczne)
ZTOK_KLASA_DEF(TPoleZmiennoprzecinkowe, TPoleNumeryczne)

namespace {

template <class W> constexpr bool kWaskie = sizeof(W) < 4 || std::is_same_v<W, std::int32_t>;

// What makes each number type of a field different from the others.
template <class W> W ZWariantu(const TWariant& wartosc) {
    if constexpr (std::is_same_v<W, double>)
        return wartosc.JakoDouble();
    else if constexpr (kWaskie<W>)
        return static_cast<W>(wartosc.JakoInt32());
    else
        return static_cast<W>(wartosc.JakoInt64());
}

template <class W> W ZTekstu(std::u16string_view tekst) {
    if constexpr (std::is_same_v<W, double>)
        return ZTOKStrToFloat(tekst);
    else if constexpr (std::is_same_v<W, std::int64_t>)
        return TekstNaInt64(tekst);
    else
        return static_cast<W>(TekstNaInt(tekst)); // the unsigned 32-bit field parses as a signed number too
}

template <class W> std::u16string NaTekst(W wartosc) {
    if constexpr (std::is_same_v<W, double>)
        return FloatNaTekst(wartosc, UstawieniaProcesu());
    else
        return IntNaTekst(static_cast<std::int64_t>(wartosc));
}

template <class W> W ZTokenu(TOdczytywaczTekstu& odczytywacz) {
    if constexpr (std::is_same_v<W, double>) {
        return odczytywacz.WczytajRzeczywista();
    } else {
        TZTParser& parser = odczytywacz.Parser;
        constexpr bool szeroka = sizeof(W) == 8 || std::is_same_v<W, std::uint32_t>;
        parser.CheckToken(szeroka ? TZTParser::Calkowita64 : TZTParser::Calkowita);
        const std::int64_t liczba = parser.TokenInt();
        if constexpr (sizeof(W) < 4)
            if (liczba < std::numeric_limits<W>::min() || liczba > std::numeric_limits<W>::max())
                parser.ErrorFmt(kmZaDuzaWartosc, {liczba});
        parser.NextToken();
        return static_cast<W>(liczba);
    }
}

} // namespace

template <class W, class Baza> TWariant TPoleLiczby<W, Baza>::GetJakoVariant() const { return TWariant(wartosc_); }

template <class W, class Baza> void TPoleLiczby<W, Baza>::SetJakoVariant(const TWariant& wartosc) {
    wartosc_ = ZWariantu<W>(wartosc);
}

template <class W, class Baza> std::u16string TPoleLiczby<W, Baza>::GetJakoString() const { return NaTekst(wartosc_); }

template <class W, class Baza> void TPoleLiczby<W, Baza>::SetJakoString(std::u16string_view tekst) {
    wartosc_ = ZTekstu<W>(tekst);
}

template <class W, class Baza> void TPoleLiczby<W, Baza>::ZerujDane() { wartosc_ = 0; }

template <class W, class Baza>
std::u16string TPoleLiczby<W, Baza>::WartWgMaski(std::u16string_view maska,
                                                 const TUstawieniaFormatu* ustawienia) const {
    if (maska.empty())
        return GetJakoString();
    if constexpr (kWaskie<W>)
        if (maska.front() == u'?')
            return std::u16string(DajElementMaski(maska, wartosc_));
    const TUstawieniaFormatu& format = ustawienia != nullptr ? *ustawienia : UstawieniaProcesu();
    if constexpr (std::is_integral_v<W>) {
        static_assert(std::is_signed_v<W> || sizeof(W) < sizeof(std::int64_t));
        return FormatujLiczbe(maska, TLiczbaDziesietna(std::int64_t{wartosc_}), format);
    } else {
        return FormatujLiczbe(maska, static_cast<double>(wartosc_), format);
    }
}

template <class W, class Baza> void TPoleLiczby<W, Baza>::KopiujDane(const TPole& zrodlo, TKopierDanych* kopier) {
    if (zrodlo.Klasa()->kodPola != this->Klasa()->kodPola)
        TPole::BladKlasy(zrodlo, this->Klasa());
    TPole::KopiujDane(zrodlo, kopier);
    wartosc_ = static_cast<const TPoleLiczby&>(zrodlo).wartosc_;
}

template <class W, class Baza>
std::int32_t TPoleLiczby<W, Baza>::Porownaj(const TPole& inne, TPorownywaczDanych* /*porownywacz*/) const {
    if (inne.Klasa()->kodPola != this->Klasa()->kodPola)
        TPole::BladKlasy(inne, this->Klasa());
    const W druga = static_cast<const TPoleLiczby&>(inne).wartosc_;
    // A NaN on either side is neither above nor below: 0.
    return static_cast<int>(wartosc_ > druga) - static_cast<int>(wartosc_ < druga);
}

template <class W, class Baza>
void TPoleLiczby<W, Baza>::ZapiszWStrumieniu(TStrumien& strumien, TZapisywaczDanych* /*zapisywacz*/) const {
    strumien.WriteBuffer(&wartosc_, sizeof(W));
}

template <class W, class Baza>
void TPoleLiczby<W, Baza>::WczytajZeStrumienia(TStrumien& strumien, TOdczytywaczDanych* odczytywacz) {
    TPole::ZglosOdczyt(*this, odczytywacz);
    strumien.ReadBuffer(&wartosc_, sizeof(W));
}

template <class W, class Baza>
void TPoleLiczby<W, Baza>::ZapiszTekstowo(TStrumien& strumien, TZapisywaczTekstu* zapisywacz) const {
    if constexpr (std::is_same_v<W, double>)
        TZapisTekstu(strumien, zapisywacz)->ZapiszLiczbe(wartosc_);
    else
        TZapisTekstu(strumien, zapisywacz)->ZapiszLiczbe(static_cast<std::int64_t>(wartosc_));
}

template <class W, class Baza>
void TPoleLiczby<W, Baza>::WczytajTekstowo(TStrumien& strumien, TOdczytywaczTekstu* odczytywacz) {
    TPole::ZglosOdczyt(*this, odczytywacz);
    wartosc_ = ZTokenu<W>(*TOdczytTekstu(strumien, odczytywacz));
}

template class TPoleLiczby<std::uint8_t, TPoleCalkowitoliczbowe>;
template class TPoleLiczby<std::int16_t, TPoleCalkowitoliczbowe>;
template class TPoleLiczby<std::uint16_t, TPoleCalkowitoliczbowe>;
template class TPoleLiczby<std::int32_t, TPoleCalkowitoliczbowe>;
template class TPoleLiczby<std::uint32_t, TPoleCalkowitoliczbowe>;
template class TPoleLiczby<std::int64_t, TPoleCalkowitoliczbowe>;
template class TPoleLiczby<double, TPoleZmiennoprzecinkowe>;

ZTOK_KLASA_DEF(TPoleByte, TPoleCalkowitoliczbowe)
ZTOK_KLASA_DEF(TPoleSmallint, TPoleCalkowitoliczbowe)
ZTOK_KLASA_DEF(TPoleWord, TPoleCalkowitoliczbowe)
ZTOK_KLASA_DEF(TPoleInteger, TPoleCalkowitoliczbowe)
ZTOK_KLASA_DEF(TPoleCardinal, TPoleCalkowitoliczbowe)
ZTOK_KLASA_DEF(TPoleInt64, TPoleCalkowitoliczbowe)
ZTOK_KLASA_DEF(TPoleDouble, TPoleZmiennoprzecinkowe)

} // namespace ztok
