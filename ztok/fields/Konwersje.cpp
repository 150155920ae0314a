#include "ztok/fields/Konwersje.h"

#include <algorithm>

#include "ztok/kernel/TJadroKlas.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/LiczbyTekst.h"
#include "ztok/platform/PorownanieTekstow.h"
#include "ztok/platform/TWariant.h"
#include "ztok/platform/Wyjatki.h"

namespace ztok {

std::uint16_t DefStronaKodowa = 1250;
std::uint32_t DefZTOKLocaleID = 0;
bool g_ZTOKQuiet = false;
TTypZapisuXML DefTypZapisuXML = tzxStandard;
TTypKodowaniaXML DefKodowanieXML = tkxUTF8;
TTypKodowaniaCSV DefKodowanieCSV = tkcWin1250;
std::int32_t ParseBufSize = 131072;

const std::u16string_view NieTakWide[2] = {Komunikat(kmNie), Komunikat(kmTak)};
const std::string_view NieTak[2] = {"Nie", "Tak"}; // ASCII, so the same bytes in the code page

int CompareTxtSgn(std::u16string_view a, std::u16string_view b) noexcept {
    return PorownajOrdynalnieBezWielkosci(a, b);
}
int CompareTxtSgn(std::string_view a, std::string_view b) noexcept { return PorownajOrdynalnieBezWielkosci(a, b); }
int CompareStrSgn(std::u16string_view a, std::u16string_view b) noexcept { return PorownajOrdynalnie(a, b); }
int CompareStrSgn(std::string_view a, std::string_view b) noexcept { return PorownajOrdynalnie(a, b); }

std::int16_t ZTOKWin1250CompareStr(std::u16string_view a, std::u16string_view b) noexcept {
    return static_cast<std::int16_t>(PorownajWin1250(a, b));
}

std::int16_t ZTOKWin1250CompareText(std::u16string_view a, std::u16string_view b) noexcept {
    return static_cast<std::int16_t>(PorownajWin1250BezWielkosci(a, b));
}

int ZTOKWideCompareStr(std::u16string_view a, std::u16string_view b, std::uint32_t localeID) {
    return PorownajWgLokalizacji(a, b, localeID, false);
}

int ZTOKWideCompareText(std::u16string_view a, std::u16string_view b, std::uint32_t localeID) {
    return PorownajWgLokalizacji(a, b, localeID, true);
}

int ZTOKWStrComp(const char16_t* a, const char16_t* b) { return ZTOKWideCompareStr(a, b, LocaleNiezmienny); }

int ZTOKWCharComp(char16_t a, char16_t b) {
    return ZTOKWideCompareStr(std::u16string_view(&a, 1), std::u16string_view(&b, 1), LocaleNiezmienny);
}

int PorownajTeksty(std::u16string_view a, std::u16string_view b, TRozmiarLiter rozmLiter, std::uint32_t localeID) {
    if (localeID == 0 || localeID == LocaleWin1250)
        return rozmLiter == rlRozmLiterNiewazny ? ZTOKWin1250CompareText(a, b) : ZTOKWin1250CompareStr(a, b);
    return PorownajTekstySzerokie(a, b, rozmLiter, localeID);
}

int PorownajTekstySzerokie(std::u16string_view a, std::u16string_view b, TRozmiarLiter rozmLiter,
                           std::uint32_t localeID) {
    if (localeID == 0 || localeID == LocaleWin1250 || localeID == LocaleNiezmienny)
        return rozmLiter == rlRozmLiterNiewazny ? CompareTxtSgn(a, b) : CompareStrSgn(a, b);
    return rozmLiter == rlRozmLiterNiewazny ? ZTOKWideCompareText(a, b, localeID) : ZTOKWideCompareStr(a, b, localeID);
}

int ZTOKVarCompare(const TWariant& a, const TWariant& b, TRozmiarLiter rozmLiter, std::uint32_t localeID) {
    if (a.JestTekstem() || b.JestTekstem())
        return PorownajTeksty(a.JakoTekst16(), b.JakoTekst16(), rozmLiter, localeID);
    return PorownajWarianty(a, b);
}

bool ZTOKStrToBoolean(std::u16string_view tekst) {
    if (tekst == NieTakWide[1].substr(0, 1) || tekst == u"1")
        return true;
    if (tekst == NieTakWide[0].substr(0, 1) || tekst == u"0")
        return false;
    for (const std::u16string_view prawda : {u"true", u"yes", u"tak"})
        if (CompareTxtSgn(tekst, prawda) == 0)
            return true;
    for (const std::u16string_view falsz : {u"false", u"no", u"nie"})
        if (CompareTxtSgn(tekst, falsz) == 0)
            return false;
    return TekstNaInt(tekst) != 0;
}

std::u16string ZTOKFormatBool(std::u16string_view maska, bool wartosc) {
    const std::size_t srednik = maska.find(u';');
    if (srednik == std::u16string_view::npos)
        return std::u16string(wartosc ? maska : std::u16string_view());
    return std::u16string(wartosc ? maska.substr(0, srednik) : maska.substr(srednik + 1));
}

bool ZTOKTryStrToFloat(std::u16string_view tekst, double& wartosc) {
    const TUstawieniaFormatu& format = JadroKlas()->Format();
    if (SprobujTekstNaFloat(tekst, wartosc, format))
        return true;
    const char16_t inny = format.separatorDziesietny == u'.' ? u',' : u'.';
    if (tekst.find(inny) == std::u16string_view::npos && tekst.find(u' ') == std::u16string_view::npos)
        return false;
    std::u16string kopia(tekst);
    if (const std::size_t gdzie = kopia.find(inny); gdzie != std::u16string::npos)
        kopia[gdzie] = format.separatorDziesietny;
    std::erase(kopia, u' ');
    return SprobujTekstNaFloat(kopia, wartosc, format);
}

double ZTOKStrToFloat(std::u16string_view tekst) {
    double wartosc = 0;
    if (!ZTOKTryStrToFloat(tekst, wartosc))
        throw EBladKonwersji(Formatuj(Komunikat(kmNiepoprawnaLiczbaZmiennoprzecinkowa), {Skrocony(tekst)}));
    return wartosc;
}

std::u16string_view DajElementMaski(std::u16string_view maska, std::int64_t indeks) noexcept {
    if (maska.empty() || indeks < 0)
        return {};
    if (maska.front() == u'?')
        maska.remove_prefix(1);
    for (; indeks > 0; --indeks) {
        const std::size_t srednik = maska.find(u';');
        if (srednik == std::u16string_view::npos)
            return {};
        maska.remove_prefix(srednik + 1);
    }
    return maska.substr(0, maska.find(u';'));
}

namespace {

template <class Znak>
std::basic_string_view<Znak> Przytnij(std::basic_string_view<Znak> tekst, std::size_t maks) noexcept {
    const auto blank = [](Znak znak) { return static_cast<std::make_unsigned_t<Znak>>(znak) < 33; };
    while (!tekst.empty() && blank(tekst.front()))
        tekst.remove_prefix(1);
    if (maks != 0)
        tekst = tekst.substr(0, maks);
    while (!tekst.empty() && blank(tekst.back()))
        tekst.remove_suffix(1);
    return tekst;
}

} // namespace

std::u16string_view ZTOKTrim(std::u16string_view tekst, std::size_t maks) noexcept { return Przytnij(tekst, maks); }
std::string_view ZTOKTrim(std::string_view tekst, std::size_t maks) noexcept { return Przytnij(tekst, maks); }

void WydzielNazwePola(std::u16string_view& sciezka, std::u16string_view& reszta) noexcept {
    const std::size_t gdzie = sciezka.find_first_of(u".[");
    if (gdzie == std::u16string_view::npos) {
        reszta = {};
        return;
    }
    reszta = sciezka.substr(sciezka[gdzie] == u'.' ? gdzie + 1 : gdzie);
    sciezka = sciezka.substr(0, gdzie);
}

} // namespace ztok
