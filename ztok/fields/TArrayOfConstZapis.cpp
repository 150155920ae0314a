// Binary and text form of tagged-value arrays.
#include <algorithm>
#include <cstring>
#include <iterator>
#include <limits>

#include "ztok/fields/Konwersje.h"
#include "ztok/fields/TArrayOfConst.h"
#include "ztok/fields/WariantTekstowy.h"
#include "ztok/kernel/JadroBiezace.h"
#include "ztok/persist/TOdczytywaczTekstu.h"
#include "ztok/persist/TZapisywaczTekstu.h"
#include "ztok/platform/Interfejsy.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/TStrumien.h"
#include "ztok/platform/TWariant.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {

// --- binary form

void TArrayOfConst::DajObiektyDoZapisu(TZapisywaczDanych& zapisywacz) const {
    TObiektBazowy::DajObiektyDoZapisu(zapisywacz);
    const TPoziom poziom(zapisywacz.Zagniezdzenie, *this);
    for (std::int32_t i = 0; i < Ile(); ++i)
        if (const TObiektBazowy* obiekt = Obiekt(i); obiekt != nullptr)
            obiekt->DajObiektyDoZapisu(zapisywacz);
}

namespace {

TArgument BezObiektu() noexcept { return {static_cast<const TObiektOgolny*>(nullptr)}; }

constexpr std::size_t kBajtyExtended = 10;
static_assert(std::numeric_limits<long double>::digits == 64, "a real number is the 80-bit one of the processor");

// Kinds that a stream gives only an empty place: what an address means ends with the process.
constexpr char kPustyAdres[4] = {};

void ZapiszNazweKlasy(TStrumien& strumien, std::u16string_view nazwa) {
    TZapisywaczDanych::ZapiszAnsiString(strumien, PolskiAnsi(nazwa));
}

template <class T> void ZapiszBajty(TStrumien& strumien, T liczba) { strumien.WriteBuffer(&liczba, sizeof liczba); }

template <class T> T WczytajBajty(TStrumien& strumien) {
    T liczba{};
    strumien.ReadBuffer(&liczba, sizeof liczba);
    return liczba;
}

long double ExtendedZBajtow(const void* bajty) noexcept {
    long double liczba = 0;
    std::memcpy(&liczba, bajty, kBajtyExtended);
    return liczba;
}

// The class of the name; null when the kernel does not know it.
const TKlasa* KlasaONazwie(std::u16string_view nazwa) {
    const TKlasa* klasa = nullptr;
    return JadroBiezace().JestKlasaONazwie(nazwa, klasa) ? klasa : nullptr;
}

bool JestTworzona(const TKlasa* klasa) noexcept {
    return klasa != nullptr && klasa->Ma(ckObiektBazowy) && klasa->utworz != nullptr;
}

} // namespace

void TArrayOfConst::WykonajZapis(TStrumien& strumien, TZapisywaczDanych& zapisywacz) const {
    TZapisywaczDanych::ZapiszLicznik15(strumien, static_cast<std::uint32_t>(elementy_.size()));
    // Objects are written, and read, from here and not from the large functions for the other kinds: their frames would
    // lie on the stack once a level.
    for (std::size_t i = 0; i < elementy_.size(); ++i) {
        ZapiszElement(i, strumien, zapisywacz);
        if (opieka_[i].obiekt != nullptr)
            opieka_[i].obiekt->ZapiszWStrumieniu(strumien, &zapisywacz);
    }
}

void TArrayOfConst::ZapiszElement(std::size_t nr, TStrumien& strumien, TZapisywaczDanych& zapisywacz) const {
    const TArgument& element = elementy_[nr];
    TTag tag = element.Tag();
    if (tag == TTag::Variant)
        ZTErrorFmt(Komunikat(kmBrakImplementacji), {u"ZapiszVariantWStrumieniu"});
    const bool tekst8 = tag == TTag::UnicodeString && zapisywacz.DaneDlaD2007;
    if (tekst8)
        tag = TTag::AnsiString;
    ZapiszBajty(strumien, static_cast<std::uint8_t>(tag));
    switch (element.Tag()) {
    case TTag::Integer:
        return ZapiszBajty(strumien, static_cast<std::int32_t>(element.Calkowita()));
    case TTag::Boolean:
    case TTag::Char:
        return ZapiszBajty(strumien, static_cast<std::uint8_t>(element.Calkowita()));
    case TTag::Extended: {
        const long double liczba = element.Rzeczywista();
        return strumien.WriteBuffer(&liczba, kBajtyExtended);
    }
    case TTag::ShortString:
    case TTag::PChar:
    case TTag::AnsiString:
        return TZapisywaczDanych::ZapiszAnsiString(strumien, element.Bajty());
    case TTag::Pointer:
    case TTag::Interface:
        return strumien.WriteBuffer(kPustyAdres, sizeof kPustyAdres);
    case TTag::Object:
        ZapiszNazweKlasy(strumien, NazwaKlasyElementu(opieka_[nr]));
        if (opieka_[nr].obiekt != nullptr)
            return; // its record is written by the caller
        return strumien.WriteBuffer(kPustyAdres, sizeof kPustyAdres);
    case TTag::Class:
        return ZapiszNazweKlasy(strumien, NazwaKlasyElementu(opieka_[nr]));
    case TTag::WideChar:
        return ZapiszBajty(strumien, static_cast<std::uint16_t>(element.Calkowita()));
    case TTag::Currency:
    case TTag::Int64:
        return ZapiszBajty(strumien, element.Calkowita());
    case TTag::PWideChar:
    case TTag::WideString:
        return TZapisywaczDanych::ZapiszWideString(strumien, element.Tekst(), nullptr);
    case TTag::UnicodeString:
        if (tekst8)
            return TZapisywaczDanych::ZapiszAnsiString(strumien, PolskiAnsi(element.Tekst()));
        return TZapisywaczDanych::ZapiszWideString(strumien, element.Tekst(), nullptr);
    case TTag::Variant:
        break;
    }
}

void TArrayOfConst::WykonajOdczyt(TStrumien& strumien, TOdczytywaczDanych& odczytywacz) {
    ZerujDane();
    niepuste_ = true;
    const std::uint32_t ile = TOdczytywaczDanych::WczytajLicznik15(strumien);
    constexpr std::int64_t kNajkrotszy = 2; // a tag and an empty text, or a byte
    if (!strumien.MozeMiec(kNajkrotszy * ile))
        ZTErrorFmt(Komunikat(kmLicznikPonadDane), {static_cast<std::int64_t>(ile)});
    for (std::uint32_t i = 0; i < ile; ++i)
        if (TObiektBazowy* obiekt = WczytajElement(strumien, odczytywacz); obiekt != nullptr)
            obiekt->WczytajZeStrumienia(strumien, &odczytywacz);
}

TObiektBazowy* TArrayOfConst::WczytajElement(TStrumien& strumien, TOdczytywaczDanych& odczytywacz) {
    odczytywacz.ZuzyjPamiec(sizeof(TArgument) + sizeof(TOpieka));
    const auto tag = WczytajBajty<std::uint8_t>(strumien);
    const auto bajty = [&] {
        std::string tekst;
        TOdczytywaczDanych::WczytajAnsiString(strumien, tekst, &odczytywacz);
        return tekst;
    };
    const auto tekst = [&] {
        std::u16string wynik;
        TOdczytywaczDanych::WczytajUtf8(strumien, wynik, &odczytywacz);
        return wynik;
    };
    const auto klasa = [&](std::u16string& nazwa) {
        nazwa = PolskiWide(bajty());
        const TKlasa* wynik = nazwa.empty() ? nullptr : KlasaONazwie(nazwa);
        if (wynik == nullptr && !nazwa.empty())
            ZTErrorFmt(Komunikat(kmNieznanaKlasa), {NazwaKlasy(), nazwa});
        RejestrujKlase(wynik);
        return wynik;
    };
    std::u16string nazwa;
    switch (static_cast<TTag>(tag)) {
    case TTag::Integer:
        Dodaj(WczytajBajty<std::int32_t>(strumien));
        break;
    case TTag::Boolean:
        Dodaj(TArgument::BajtLogiczny(WczytajBajty<std::uint8_t>(strumien)));
        break;
    case TTag::Char:
        Dodaj(static_cast<char>(WczytajBajty<std::uint8_t>(strumien)));
        break;
    case TTag::Extended: {
        char liczba[kBajtyExtended];
        strumien.ReadBuffer(liczba, sizeof liczba);
        Dodaj(ExtendedZBajtow(liczba));
        break;
    }
    case TTag::ShortString:
        Dodaj(TArgument::ShortString(bajty()));
        break;
    case TTag::Pointer:
        WczytajBajty<std::uint32_t>(strumien);
        Dodaj(TArgument::Pointer(nullptr));
        break;
    case TTag::PChar:
        Dodaj(TArgument::PChar(bajty()));
        break;
    case TTag::Object: {
        const TKlasa* znana = klasa(nazwa);
        if (znana == nullptr || !znana->Ma(ckObiektBazowy)) {
            WczytajBajty<std::uint32_t>(strumien);
            Dodaj(BezObiektu());
            break;
        }
        if (!JestTworzona(znana))
            ZTErrorFmt(Komunikat(kmKlasaAbstrakcyjna), {znana->nazwa});
        odczytywacz.ZuzyjPamiec(96);
        return &DodajNowy(*znana);
    }
    case TTag::Class:
        Dodaj(klasa(nazwa));
        break;
    case TTag::WideChar:
        Dodaj(static_cast<char16_t>(WczytajBajty<std::uint16_t>(strumien)));
        break;
    case TTag::PWideChar:
        Dodaj(TArgument::PWideChar(tekst()));
        break;
    case TTag::AnsiString:
        Dodaj(bajty());
        break;
    case TTag::Currency:
        Dodaj(TWaluta{WczytajBajty<std::int64_t>(strumien)});
        break;
    case TTag::Variant:
        ZTErrorFmt(Komunikat(kmBrakImplementacji), {u"WczytajVariantZeStrumienia"});
    case TTag::Interface:
        WczytajBajty<std::uint32_t>(strumien);
        Dodaj(static_cast<IInterfejs*>(nullptr));
        break;
    case TTag::WideString:
        Dodaj(TArgument::WideString(tekst()));
        break;
    case TTag::Int64:
        Dodaj(WczytajBajty<std::int64_t>(strumien));
        break;
    case TTag::UnicodeString:
        Dodaj(tekst());
        break;
    default:
        ZTErrorFmt(Komunikat(kmNieznanyZnacznik), {static_cast<int>(tag)});
    }
    return nullptr;
}

// --- text form

namespace {

// The names of the kinds, by tag.
constexpr std::string_view kNazwyTagow[] = {
    "Integer",  "Boolean", "Char",      "Extended",   "ShortString", "Pointer",
    "PChar",    "Object",  "Class",     "WideChar",   "PWideChar",   "AnsiString",
    "Currency", "Variant", "Interface", "WideString", "Int64",       "UnicodeString",
};

void ZapiszExtended(long double liczba, TZapisywaczTekstu& zapisywacz) {
    const auto krotka = static_cast<double>(liczba);
    const long double zKrotkiej = krotka;
    if (krotka - krotka == 0 && std::memcmp(&liczba, &zKrotkiej, kBajtyExtended) == 0) {
        zapisywacz.ZapiszLiczbe(krotka);
        return;
    }
    unsigned char bajty[kBajtyExtended];
    std::memcpy(bajty, &liczba, sizeof bajty);
    char cyfry[2 * kBajtyExtended];
    for (std::size_t i = 0; i < sizeof cyfry; ++i)
        cyfry[i] = "0123456789ABCDEF"[(i % 2 == 0 ? bajty[i / 2] >> 4U : bajty[i / 2]) & 15U];
    zapisywacz.ZapiszTekst(std::string_view(cyfry, sizeof cyfry), Cudzyslow8Bit);
}

// The bytes of a text of hexadecimal digits; false when it is none of that length.
bool BajtyZCyfr(std::string_view cyfry, unsigned char (&bajty)[kBajtyExtended]) noexcept {
    if (cyfry.size() != 2 * kBajtyExtended)
        return false;
    for (std::size_t i = 0; i < cyfry.size(); ++i) {
        constexpr std::string_view znaki = "0123456789ABCDEFabcdef";
        const std::size_t gdzie = znaki.find(cyfry[i]);
        if (gdzie == std::string_view::npos)
            return false;
        const std::size_t cyfra = gdzie < 16 ? gdzie : gdzie - 6;
        bajty[i / 2] = static_cast<unsigned char>((i % 2 == 0 ? 0U : unsigned{bajty[i / 2]} << 4U) | cyfra);
    }
    return true;
}

bool JestTekstem(const TZTParser& parser) noexcept {
    return parser.Token() == TZTParser::Tekst || parser.Token() == TZTParser::TekstCudzyslow;
}

long double WczytajExtended(TZTParser& parser) {
    double liczba = 0;
    if (parser.Token() == TZTParser::Calkowita) {
        std::string tekst = parser.TokenString();
        if (parser.NextToken() == ',') { // a decimal comma parts the tokens
            parser.NextToken();
            parser.CheckToken(TZTParser::Calkowita);
            tekst.append(",").append(parser.TrescTokenu());
            if (!ZTOKTryStrToFloat(PolskiWide(tekst), liczba))
                parser.Error(kmSpodziewanaLiczbaUlamkowa);
            parser.NextToken();
        } else if (!ZTOKTryStrToFloat(PolskiWide(tekst), liczba)) {
            parser.Error(kmSpodziewanaLiczbaUlamkowa);
        }
        return liczba;
    }
    parser.CheckToken(TZTParser::Ulamkowa);
    unsigned char bajty[kBajtyExtended];
    long double wynik = 0;
    if (JestTekstem(parser) && BajtyZCyfr(parser.TrescTokenu(), bajty))
        wynik = ExtendedZBajtow(bajty);
    else if (ZTOKTryStrToFloat(PolskiWide(parser.TrescTokenu()), liczba))
        wynik = liczba;
    else
        parser.Error(kmSpodziewanaLiczbaUlamkowa);
    parser.NextToken();
    return wynik;
}

// A text of exactly one character.
template <class TTekst, class F> auto WczytajZnak(TZTParser& parser, const F& dekoduj) {
    if (!JestTekstem(parser))
        parser.CheckToken(TZTParser::Tekst);
    const TTekst tekst = dekoduj(parser.TrescTokenu());
    if (tekst.size() != 1)
        parser.Error(kmNieprawidlowaStalaTekstowa);
    parser.NextToken();
    return tekst.front();
}

} // namespace

void TArrayOfConst::WykonajZapisTekstowy(TZapisywaczTekstu& zapisywacz) const {
    zapisywacz.ZwiekszAkapit();
    for (std::size_t i = 0; i < elementy_.size(); ++i) {
        const TObiektBazowy* obiekt = opieka_[i].obiekt;
        if (obiekt == nullptr) {
            ZapiszElementTekstowo(i, zapisywacz);
            continue;
        }
        zapisywacz.ZacznijObiekt(obiekt->NazwaKlasy());
        obiekt->ZapiszTekstowo(*zapisywacz.Strumien, &zapisywacz);
        zapisywacz.ZakonczObiekt();
    }
    zapisywacz.ZmniejszAkapit();
}

void TArrayOfConst::ZapiszElementTekstowo(std::size_t nr, TZapisywaczTekstu& zapisywacz) const {
    const TArgument& element = elementy_[nr];
    const bool tekst8 = element.Tag() == TTag::UnicodeString && zapisywacz.DaneDlaD2007;
    zapisywacz.ZapiszLinie(kNazwyTagow[static_cast<std::size_t>(tekst8 ? TTag::AnsiString : element.Tag())]);
    zapisywacz.ZapiszTxt("=");
    switch (element.Tag()) {
    case TTag::Integer:
    case TTag::Currency:
    case TTag::Int64:
        return zapisywacz.ZapiszLiczbe(element.Calkowita());
    case TTag::Boolean:
        return zapisywacz.ZapiszTxt(NieTak[element.Logiczna() ? 1 : 0].substr(0, 1));
    case TTag::Extended:
        return ZapiszExtended(element.Rzeczywista(), zapisywacz);
    case TTag::Char:
        return zapisywacz.ZapiszTekst(std::string(1, static_cast<char>(element.Calkowita())), Cudzyslow8Bit);
    case TTag::ShortString:
    case TTag::PChar:
    case TTag::AnsiString:
        return zapisywacz.ZapiszTekst(element.Bajty(), Cudzyslow8Bit);
    case TTag::WideChar:
    case TTag::PWideChar:
    case TTag::WideString:
    case TTag::UnicodeString:
        if (tekst8)
            return zapisywacz.ZapiszTekst(PolskiAnsi(element.Tekst()), Cudzyslow8Bit);
        return zapisywacz.ZapiszTekst(element.JakoTekst());
    case TTag::Variant:
        return ZapiszWariantTekstowo(element.Wariant(), zapisywacz, *this);
    case TTag::Class:
        if (const std::string nazwa = PolskiAnsi(NazwaKlasyElementu(opieka_[nr])); !nazwa.empty()) {
            if (JestNazwaTekstowa(nazwa))
                return zapisywacz.ZapiszTxt(nazwa);
            return zapisywacz.ZapiszTekst(nazwa, Cudzyslow8Bit);
        }
        break;
    case TTag::Object:
    case TTag::Pointer:
    case TTag::Interface:
        break;
    }
    zapisywacz.ZapiszTxt("0"); // nothing, or an address, which means nothing to a reader
}

void TArrayOfConst::WykonajOdczytTekstowy(TOdczytywaczTekstu& odczytywacz) {
    ZerujDane();
    niepuste_ = true;
    TZTParser& parser = odczytywacz.Parser;
    while (!parser.TokenSymbolIs("end")) {
        if (Ile() >= MaksElementow)
            parser.ErrorFmt(kmZlaLiczbaElementow, {NazwaKlasy(), std::int64_t{Ile()} + 1});
        odczytywacz.ZuzyjPamiec(sizeof(TArgument) + sizeof(TOpieka));
        if (TObiektBazowy* obiekt = WczytajElementTekstowo(odczytywacz); obiekt != nullptr) {
            obiekt->WczytajTekstowo(odczytywacz.Strumien, &odczytywacz);
            parser.CheckTokenSymbol("end");
            parser.NextToken();
        }
    }
}

TObiektBazowy* TArrayOfConst::WczytajElementTekstowo(TOdczytywaczTekstu& odczytywacz) {
    TZTParser& parser = odczytywacz.Parser;
    parser.CheckToken(TZTParser::Symbol);
    const auto* nazwa = std::find_if(std::begin(kNazwyTagow), std::end(kNazwyTagow),
                                     [&parser](std::string_view n) { return parser.TokenSymbolIs(n); });
    if (nazwa == std::end(kNazwyTagow))
        parser.Error(kmSpodziewanyIdentyfikator);
    const auto tag = static_cast<TTag>(nazwa - std::begin(kNazwyTagow));
    parser.NextToken();
    if (tag == TTag::Object && parser.Token() != '=') { // a frame
        const std::u16string nazwaKlasy = odczytywacz.NazwaKlasyTokenu();
        const TKlasa* klasa = KlasaONazwie(nazwaKlasy);
        if (!JestTworzona(klasa))
            parser.ErrorFmt(kmNieznanaKlasa, {NazwaKlasy(), nazwaKlasy});
        parser.NextToken();
        odczytywacz.ZuzyjPamiec(96);
        return &DodajNowy(*klasa);
    }
    parser.CheckToken('=');
    parser.NextToken();
    const auto tekst = [&] { return TOdczytywaczTekstu::DekodujTrescUTF8(odczytywacz.WczytajTekstAnsi()); };
    const auto bajty = [&] { return std::string(odczytywacz.WczytajTekstAnsi()); };
    switch (tag) {
    case TTag::Integer:
        Dodaj(WczytajLiczbe<std::int32_t>(parser));
        break;
    case TTag::Boolean: {
        const bool wartosc = parser.TokenInt() != 0;
        parser.NextToken();
        Dodaj(wartosc);
        break;
    }
    case TTag::Char:
        Dodaj(WczytajZnak<std::string>(parser, [](std::string_view b) { return std::string(b); }));
        break;
    case TTag::Extended:
        Dodaj(WczytajExtended(parser));
        break;
    case TTag::ShortString:
        Dodaj(TArgument::ShortString(bajty()));
        break;
    case TTag::PChar:
        Dodaj(TArgument::PChar(bajty()));
        break;
    case TTag::AnsiString:
        Dodaj(bajty());
        break;
    case TTag::WideChar:
        Dodaj(WczytajZnak<std::u16string>(parser, &TOdczytywaczTekstu::DekodujTrescUTF8));
        break;
    case TTag::PWideChar:
        Dodaj(TArgument::PWideChar(tekst()));
        break;
    case TTag::WideString:
        Dodaj(TArgument::WideString(tekst()));
        break;
    case TTag::UnicodeString:
        Dodaj(tekst());
        break;
    case TTag::Currency:
        Dodaj(TWaluta{WczytajLiczbe<std::int64_t>(parser)});
        break;
    case TTag::Int64:
        Dodaj(WczytajLiczbe<std::int64_t>(parser));
        break;
    case TTag::Class: {
        const TKlasa* klasa = nullptr;
        if (parser.Token() == TZTParser::Calkowita) {
            WczytajZGranic(parser, 0, 0);
            Dodaj(klasa);
            break;
        }
        const std::u16string nazwaKlasy = odczytywacz.NazwaKlasyTokenu();
        klasa = KlasaONazwie(nazwaKlasy);
        if (klasa == nullptr)
            parser.ErrorFmt(kmNieznanaKlasa, {NazwaKlasy(), nazwaKlasy});
        parser.NextToken();
        Dodaj(klasa);
        break;
    }
    case TTag::Variant:
        Dodaj(WczytajWariantTekstowo(odczytywacz, *this));
        break;
    case TTag::Pointer:
    case TTag::Object:
    case TTag::Interface:
        WczytajZGranic(parser, 0, 0);
        Dodaj(tag == TTag::Pointer  ? TArgument::Pointer(nullptr)
              : tag == TTag::Object ? BezObiektu()
                                    : TArgument(static_cast<IInterfejs*>(nullptr)));
        break;
    }
    return nullptr;
}

} // namespace ztok
