#include "ztok/fields/KonwersjeWartosci.h"

#include <cmath>
#include <vector>

#include "ztok/fields/Konwersje.h"
#include "ztok/kernel/TJadroKlas.h"
#include "ztok/platform/DatyTekst.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Interfejsy.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/LiczbyTekst.h"
#include "ztok/platform/TObiektOgolny.h"
#include "ztok/platform/TWariant.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {

const std::u16string_view FalseTrue[2] = {u"False", u"True"};

namespace {

const TUstawieniaFormatu& FormatJadra() { return JadroKlas()->Format(); }

// A date whose year stands last, with the year first; empty when the text is no such date.
std::u16string RokNaPoczatek(std::u16string_view tekst, char16_t separator) {
    const std::size_t pierwszy = tekst.find(separator);
    const std::size_t drugi = pierwszy == std::u16string_view::npos ? pierwszy : tekst.find(separator, pierwszy + 1);
    if (drugi == std::u16string_view::npos || pierwszy > 2 || tekst.size() - drugi - 1 != 4)
        return {};
    std::u16string wynik(tekst.substr(drugi + 1));
    wynik += separator;
    wynik += tekst.substr(pierwszy + 1, drugi - pierwszy - 1);
    wynik += separator;
    wynik += tekst.substr(0, pierwszy);
    return wynik;
}

std::u16string Szesnastkowo(const void* wskaznik) {
    return Formatuj(u"%.8x", {static_cast<std::int64_t>(reinterpret_cast<std::uintptr_t>(wskaznik))});
}

std::u16string DuzeSzesnastkowe(std::u16string tekst) {
    for (char16_t& znak : tekst)
        if (znak >= u'a' && znak <= u'f')
            znak = static_cast<char16_t>(znak - 32);
    return tekst;
}

constexpr std::u16string_view kNil = u"nil";

} // namespace

std::u16string ZTOKFloatToStr(double wartosc) { return FloatNaTekst(wartosc, FormatJadra()); }
std::u16string ZTOKDateToStr(double wartosc) { return DataNaTekst(wartosc, FormatJadra()); }
std::u16string ZTOKTimeToStr(double wartosc) { return CzasNaTekst(wartosc, FormatJadra()); }

std::u16string ZTOKDateTimeToStr(double wartosc) {
    std::u16string tekst = ZTOKDateToStr(wartosc);
    tekst += u' ';
    tekst += ZTOKTimeToStr(wartosc);
    return tekst;
}

double ZTOKStrToDate(std::u16string_view tekst) {
    const TUstawieniaFormatu& format = FormatJadra();
    double wartosc = 0;
    if (SprobujTekstNaDateWgMaski(tekst, format.krotkiFormatDaty, wartosc, format) ||
        SprobujTekstNaDate(tekst, wartosc, format))
        return wartosc;
    std::u16string kopia(ZTOKTrim(tekst));
    for (char16_t& znak : kopia)
        if (znak == u'.' || znak == u'/' || znak == u'-')
            znak = format.separatorDaty;
    // A kernel format may have a separator that is not its own: then the text is in its order already.
    if (!SprobujTekstNaDate(kopia, wartosc, format) &&
        !SprobujTekstNaDate(RokNaPoczatek(kopia, format.separatorDaty), wartosc, format))
        throw EBladKonwersji(Formatuj(Komunikat(kmNiepoprawnaData), {Skrocony(tekst)}));
    return wartosc;
}

double ZTOKStrToTime(std::u16string_view tekst) { return TekstNaCzas(tekst, FormatJadra()); }

double ZTOKStrToDateTime(std::u16string_view tekst) {
    tekst = ZTOKTrim(tekst);
    const std::size_t spacja = tekst.find(u' ');
    if (spacja == std::u16string_view::npos)
        return ZTOKStrToDate(tekst);
    return ZlaczDateICzas(ZTOKStrToDate(tekst.substr(0, spacja)), ZTOKStrToTime(tekst.substr(spacja + 1)));
}

namespace {

// Where the date ends: the first "T", or else the first blank.
std::size_t KoniecDatyXML(std::u16string_view tekst) noexcept {
    const std::size_t t = tekst.find(u'T');
    return t != std::u16string_view::npos ? t : tekst.find(u' ');
}

bool MaCzasXML(std::u16string_view tekst, std::size_t koniecDaty) noexcept {
    return koniecDaty + 1 < tekst.size() && tekst[koniecDaty + 1] >= u'0' && tekst[koniecDaty + 1] <= u'9';
}

} // namespace

std::u16string ZTOKDateTimeToXML(double wartosc, bool zawszeCzas) {
    std::u16string tekst = ZTOKDateToStr(wartosc);
    if (zawszeCzas || wartosc != std::trunc(wartosc)) {
        tekst += u'T';
        tekst += ZTOKTimeToStr(wartosc);
    }
    return tekst;
}

double ZTOKXMLToDate(std::u16string_view tekst) {
    const std::size_t koniec = KoniecDatyXML(tekst);
    if (koniec != std::u16string_view::npos && (koniec + 1 == tekst.size() || MaCzasXML(tekst, koniec)))
        tekst = tekst.substr(0, koniec);
    return ZTOKStrToDate(tekst);
}

double ZTOKXMLToTime(std::u16string_view tekst) {
    if (const std::size_t koniec = KoniecDatyXML(tekst); koniec != std::u16string_view::npos)
        tekst.remove_prefix(koniec + 1);
    const std::size_t kropka = tekst.find(u'.');
    const double czas = ZTOKStrToTime(tekst.substr(0, kropka));
    if (kropka == std::u16string_view::npos)
        return czas;
    std::u16string ulamek = u"0";
    ulamek += tekst.substr(kropka);
    return czas + ZTOKStrToFloat(std::u16string_view(ulamek).substr(0, ulamek.find(u'+'))) / 86400;
}

double ZTOKXMLToDateTime(std::u16string_view tekst) {
    tekst = tekst.substr(0, tekst.find_last_of(u"+Z"));
    const std::size_t koniec = KoniecDatyXML(tekst);
    const double data = ZTOKXMLToDate(tekst);
    return koniec != std::u16string_view::npos && MaCzasXML(tekst, koniec) ? ZlaczDateICzas(data, ZTOKXMLToTime(tekst))
                                                                           : data;
}

bool ZTOKVarEmptyOrNull(const TWariant& wariant) noexcept { return wariant.JestPustyLubNull(); }

std::u16string ZTOKFormatVar(std::u16string_view maska, const TWariant& wariant) {
    const TUstawieniaFormatu& format = UstawieniaProcesu();
    switch (wariant.Typ()) {
    case TTypWariantu::Smallint:
    case TTypWariantu::Shortint:
    case TTypWariantu::Byte:
    case TTypWariantu::Word:
    case TTypWariantu::Cardinal:
    case TTypWariantu::Int64:
        return FormatujLiczbe(maska, TLiczbaDziesietna(wariant.JakoInt64()), format);
    case TTypWariantu::UInt64:
        return FormatujLiczbe(maska, TLiczbaDziesietna(wariant.JakoUInt64(), 0, false), format);
    case TTypWariantu::Currency:
        return FormatujLiczbe(maska, TLiczbaDziesietna(wariant.JakoWaluta().dziesieciotysieczne, 4), format);
    case TTypWariantu::Single:
    case TTypWariantu::Double:
        return FormatujLiczbe(maska, wariant.JakoDouble(), format);
    case TTypWariantu::Integer:
        if (maska.empty())
            return IntNaTekst(wariant.JakoInt32());
        if (maska.front() == u'?')
            return std::u16string(DajElementMaski(maska, wariant.JakoInt32()));
        return FormatujLiczbe(maska, TLiczbaDziesietna(wariant.JakoInt64()), format);
    case TTypWariantu::Date:
        return FormatujDateCzas(maska, wariant.JakoData().dni, format);
    case TTypWariantu::Boolean:
        return ZTOKFormatBool(maska, wariant.JakoBool());
    default:
        return wariant.JakoTekst16();
    }
}

std::u16string ZTOKVarRecToStr(const TArgument& argument) {
    switch (argument.Tag()) {
    case TTag::Integer:
    case TTag::Int64:
        return IntNaTekst(argument.Calkowita());
    case TTag::Boolean:
        return std::u16string(FalseTrue[argument.Logiczna() ? 1 : 0]);
    case TTag::Char:
    case TTag::ShortString:
    case TTag::PChar:
    case TTag::AnsiString:
    case TTag::WideChar:
    case TTag::PWideChar:
    case TTag::WideString:
    case TTag::UnicodeString:
        return argument.JakoTekst();
    case TTag::Extended:
        return FloatNaTekst(static_cast<double>(argument.Rzeczywista()), UstawieniaProcesu());
    case TTag::Currency:
        return FloatNaTekst(static_cast<double>(argument.Calkowita()) / 10000, UstawieniaProcesu());
    case TTag::Variant:
        return argument.Wariant().JakoTekst16();
    case TTag::Pointer:
        return argument.Wskaznik() == nullptr ? std::u16string(kNil)
                                              : DuzeSzesnastkowe(Szesnastkowo(argument.Wskaznik()));
    case TTag::Object: {
        if (argument.Obiekt() == nullptr)
            return std::u16string(kNil);
        std::u16string tekst = u"(";
        return tekst.append(argument.Obiekt()->NazwaKlasy()).append(u")");
    }
    case TTag::Class:
        return std::u16string(argument.Klasa() == nullptr ? kNil : argument.Klasa()->nazwa);
    case TTag::Interface: {
        if (argument.Interfejs() == nullptr)
            return std::u16string(kNil);
        const TObiektOgolny* obiekt = ObiektZaInterfejsem(argument.Interfejs());
        std::u16string tekst = u"? (";
        return tekst.append(obiekt == nullptr ? std::u16string_view(u"?") : obiekt->NazwaKlasy()).append(u")");
    }
    }
    ZTErrorFmt(Komunikat(kmBlednyTypParametru), {static_cast<int>(argument.Tag())});
}

TWariant ZTOKVarRecToVariant(const TArgument& argument) {
    switch (argument.Tag()) {
    case TTag::Integer:
        return {static_cast<std::int32_t>(argument.Calkowita())};
    case TTag::Int64:
        return {argument.Calkowita()};
    case TTag::Boolean:
        return {argument.Logiczna()};
    case TTag::Char:
        return TWariant::AnsiString(std::string(1, static_cast<char>(argument.Calkowita())));
    case TTag::ShortString:
    case TTag::AnsiString:
        return TWariant::AnsiString(argument.Bajty());
    case TTag::Extended:
        return {static_cast<double>(argument.Rzeczywista())};
    case TTag::WideChar:
    case TTag::PWideChar:
    case TTag::UnicodeString:
        return {argument.JakoTekst()};
    case TTag::WideString:
        return TWariant::WideString(argument.Tekst());
    case TTag::Currency:
        return {TWaluta{argument.Calkowita()}};
    case TTag::Variant:
        return argument.Wariant();
    case TTag::Pointer:
    case TTag::PChar:
    case TTag::Object:
    case TTag::Class:
    case TTag::Interface:
        break;
    }
    ZTErrorFmt(Komunikat(kmBlednyTypParametru), {static_cast<int>(argument.Tag())});
}

TWariant ZTOKArrayOfConstToVariant(TArgumenty argumenty) {
    std::vector<TWariant> elementy;
    elementy.reserve(argumenty.size());
    for (const TArgument& argument : argumenty)
        elementy.push_back(ZTOKVarRecToVariant(argument));
    return TWariant::Tablica(std::move(elementy));
}

namespace {

constexpr std::u16string_view kObject = u"object ";

// End of the type name in a line that begins with "object "; 0 for another line.
std::size_t KoniecNazwyTypu(std::u16string_view linia) noexcept {
    if (linia.size() < kObject.size() || CompareTxtSgn(linia.substr(0, kObject.size()), kObject) != 0)
        return 0;
    std::size_t koniec = kObject.size();
    const auto wNazwie = [](char16_t znak) {
        return (znak >= u'a' && znak <= u'z') || (znak >= u'A' && znak <= u'Z') || (znak >= u'0' && znak <= u'9') ||
               znak == u'_';
    };
    while (koniec < linia.size() && koniec < 64 && wNazwie(linia[koniec]))
        ++koniec;
    return koniec;
}

} // namespace

bool WydzielNazweTypu(std::u16string& nazwa, std::u16string_view linia) {
    const std::size_t koniec = KoniecNazwyTypu(linia);
    if (koniec == 0)
        return false;
    nazwa = linia.substr(kObject.size(), koniec - kObject.size());
    return true;
}

std::u16string PodmienNazweTypu(std::u16string_view linia, std::u16string_view nowaNazwa) {
    std::u16string wynik(linia);
    if (const std::size_t koniec = KoniecNazwyTypu(linia); koniec != 0)
        wynik.replace(kObject.size(), koniec - kObject.size(), nowaNazwa);
    return wynik;
}

} // namespace ztok
