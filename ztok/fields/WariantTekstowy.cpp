#include "ztok/fields/WariantTekstowy.h"

#include <charconv>
#include <string>
#include <utility>
#include <vector>

#include "ztok/fields/Konwersje.h"
#include "ztok/persist/TOdczytywaczTekstu.h"
#include "ztok/persist/TZapisywaczTekstu.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/TWariant.h"
#include "ztok/platform/Wyjatki.h"
#include "ztok/util/Zagniezdzenie.h"

namespace ztok {
namespace {

using enum TTypWariantu;

struct TNazwaTypu {
    TTypWariantu typ;
    std::string_view nazwa;
};
constexpr TNazwaTypu kNazwyTypow[] = {
    {Empty, "Empty"},
    {Null, "Null"},
    {Smallint, "Smallint"},
    {Integer, "Integer"},
    {Single, "Single"},
    {Double, "Double"},
    {Currency, "Currency"},
    {Date, "Date"},
    {WideString, "WideString"},
    {Boolean, "Boolean"},
    {Shortint, "Shortint"},
    {Byte, "Byte"},
    {Word, "Word"},
    {Cardinal, "Cardinal"},
    {Int64, "Int64"},
    {UInt64, "UInt64"},
    {AnsiString, "AnsiString"},
    {UnicodeString, "UnicodeString"},
};

std::string_view NazwaTypu(TTypWariantu typ) noexcept {
    for (const TNazwaTypu& wiersz : kNazwyTypow)
        if (wiersz.typ == typ)
            return wiersz.nazwa;
    return {};
}

TWariant WczytajUInt64(TZTParser& parser) {
    parser.CheckToken(TZTParser::Calkowita);
    const std::string_view cyfry = parser.TrescTokenu();
    std::uint64_t liczba = 0;
    const auto wynik = std::from_chars(cyfry.data(), cyfry.data() + cyfry.size(), liczba);
    if (wynik.ec != std::errc{} || wynik.ptr != cyfry.data() + cyfry.size())
        parser.Error(kmSpodziewanaLiczbaCalkowita);
    parser.NextToken();
    return liczba;
}

TWariant WczytajSingle(TOdczytywaczTekstu& odczytywacz) {
    const double liczba = odczytywacz.WczytajRzeczywista();
    try {
        return TWariant(liczba).Przeksztalc(Single);
    } catch (const EBladWariantu&) { // beyond the type
        odczytywacz.Parser.Error(kmSpodziewanaLiczbaUlamkowa);
    }
}

TWariant WczytajWartosc(TTypWariantu typ, TOdczytywaczTekstu& odczytywacz) {
    TZTParser& parser = odczytywacz.Parser;
    switch (typ) {
    case Null:
        return TWariant::Null();
    case Shortint:
        return WczytajLiczbe<std::int8_t>(parser);
    case Byte:
        return WczytajLiczbe<std::uint8_t>(parser);
    case Smallint:
        return WczytajLiczbe<std::int16_t>(parser);
    case Word:
        return WczytajLiczbe<std::uint16_t>(parser);
    case Integer:
        return WczytajLiczbe<std::int32_t>(parser);
    case Cardinal:
        return WczytajLiczbe<std::uint32_t>(parser);
    case Int64:
        return WczytajLiczbe<std::int64_t>(parser);
    case UInt64:
        return WczytajUInt64(parser);
    case Single:
        return WczytajSingle(odczytywacz);
    case Double:
        return odczytywacz.WczytajRzeczywista();
    case Date:
        return TDataCzas{odczytywacz.WczytajRzeczywista()};
    case Currency:
        return TWaluta{WczytajLiczbe<std::int64_t>(parser)};
    case Boolean: {
        const bool wartosc = parser.TokenInt() != 0;
        parser.NextToken();
        return wartosc;
    }
    case AnsiString:
        return TWariant::AnsiString(std::string(odczytywacz.WczytajTekstAnsi()));
    case WideString:
        return TWariant::WideString(TOdczytywaczTekstu::DekodujTrescUTF8(odczytywacz.WczytajTekstAnsi()));
    case UnicodeString:
        return TOdczytywaczTekstu::DekodujTrescUTF8(odczytywacz.WczytajTekstAnsi());
    default:
        return {};
    }
}

} // namespace

void ZapiszWariantTekstowo(const TWariant& wariant, TZapisywaczTekstu& zapisywacz, const TObiektBazowy& wlasciciel) {
    if (wariant.JestTablica()) {
        const TPoziom poziom(zapisywacz.Zagniezdzenie, wlasciciel);
        const char* przed = "(";
        for (const TWariant& element : wariant.Elementy()) {
            zapisywacz.ZapiszTxt(std::exchange(przed, ";"));
            if (&element != wariant.Elementy().data())
                zapisywacz.NowaLinia();
            ZapiszWariantTekstowo(element, zapisywacz, wlasciciel);
        }
        return zapisywacz.ZapiszTxt(wariant.Elementy().empty() ? "()" : ")");
    }
    zapisywacz.ZapiszTxt(NazwaTypu(wariant.Typ()));
    if (wariant.JestPustyLubNull())
        return;
    zapisywacz.ZapiszTxt(" ");
    switch (wariant.Typ()) {
    case Single:
    case Double:
    case Date:
        return zapisywacz.ZapiszLiczbe(wariant.JakoDouble());
    case Currency:
        return zapisywacz.ZapiszLiczbe(wariant.JakoWaluta().dziesieciotysieczne);
    case Boolean:
        return zapisywacz.ZapiszTxt(NieTak[wariant.JakoBool() ? 1 : 0].substr(0, 1));
    case AnsiString:
        return zapisywacz.ZapiszTekst(wariant.JakoTekst8(), Cudzyslow8Bit);
    case WideString:
    case UnicodeString:
        return zapisywacz.ZapiszTekst(wariant.JakoTekst16());
    default: // an integer: its text is its digits
        return zapisywacz.ZapiszTxt(wariant.JakoTekst8());
    }
}

TWariant WczytajWariantTekstowo(TOdczytywaczTekstu& odczytywacz, const TObiektBazowy& wlasciciel) {
    TZTParser& parser = odczytywacz.Parser;
    odczytywacz.ZuzyjPamiec(sizeof(TWariant));
    if (parser.Token() == '(') {
        const TPoziom poziom(odczytywacz.Zagniezdzenie, wlasciciel);
        std::vector<TWariant> elementy;
        odczytywacz.WczytajWNawiasach([&] { elementy.push_back(WczytajWariantTekstowo(odczytywacz, wlasciciel)); });
        return TWariant::Tablica(std::move(elementy));
    }
    parser.CheckToken(TZTParser::Symbol);
    for (const TNazwaTypu& wiersz : kNazwyTypow)
        if (parser.TokenSymbolIs(wiersz.nazwa)) {
            parser.NextToken();
            return WczytajWartosc(wiersz.typ, odczytywacz);
        }
    parser.Error(kmSpodziewanyIdentyfikator);
}

std::int64_t WczytajZGranic(TZTParser& parser, std::int64_t od, std::int64_t doIlu) {
    parser.CheckToken(TZTParser::Calkowita64);
    const std::int64_t liczba = parser.TokenInt();
    if (liczba < od || liczba > doIlu)
        parser.ErrorFmt(kmZaDuzaWartosc, {liczba});
    parser.NextToken();
    return liczba;
}

} // namespace ztok
