#include "ztok/platform/FormatKomunikatu.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <span>
#include <vector>

#include "ztok/platform/Interfejsy.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/LiczbyTekst.h"
#include "ztok/platform/TObiektOgolny.h"
#include "ztok/platform/TUstawieniaFormatu.h"
#include "ztok/platform/TWariant.h"
#include "ztok/platform/Wyjatki.h"

namespace ztok {
namespace {

// Far above every message, far below what could exhaust memory.
constexpr std::int64_t kNajwiekszaSzerokosc = 65535;
constexpr int kBrak = -1; // no precision given

// ---- digits of a real number

constexpr int kDomyslneCyfry = 15;
constexpr int kBezGranicy = 400; // more places after the point than any number has digits

// The number of a real argument: its digits on demand.
TCyfry CyfryArgumentu(const TArgument& argument, int znaczacych, int poPrzecinku) {
    if (argument.Tag() == TTag::Currency)
        return RozlozNaCyfry(TLiczbaDziesietna(argument.Calkowita(), 4), znaczacych, poPrzecinku);
    return RozlozNaCyfry(static_cast<double>(argument.Rzeczywista()), znaczacych, poPrzecinku);
}

void DopiszCyfre(std::u16string& cel, char cyfra) { cel.push_back(static_cast<char16_t>(cyfra)); }

// ---- shapes of a real number

std::u16string Wykladnicza(const TCyfry& cyfry, int znaczacych, const TUstawieniaFormatu& ustawienia) {
    const int najstarsza = cyfry.ile == 0 ? 0 : cyfry.wykladnik - 1;
    std::u16string wynik(cyfry.ujemna ? 1 : 0, u'-');
    DopiszCyfre(wynik, cyfry.Cyfra(najstarsza));
    wynik += ustawienia.separatorDziesietny;
    for (int i = 1; i < znaczacych; ++i)
        DopiszCyfre(wynik, cyfry.Cyfra(najstarsza - i));
    wynik += najstarsza < 0 ? u"E-" : u"E+";
    for (int waga : {100, 10, 1})
        DopiszCyfre(wynik, static_cast<char>('0' + std::abs(najstarsza) / waga % 10));
    return wynik;
}

// No trailing zeros; with an exponent when there are more integer digits than significant ones, or below 0.00001.
std::u16string Ogolna(const TCyfry& cyfry, int znaczacych, const TUstawieniaFormatu& ustawienia) {
    const int najstarsza = cyfry.wykladnik - 1;
    const bool zWykladnikiem = cyfry.ile != 0 && (cyfry.wykladnik > znaczacych || cyfry.wykladnik < -4);
    const int jednosci = zWykladnikiem ? najstarsza : 0; // the place in front of the separator
    std::u16string wynik(cyfry.ujemna ? 1 : 0, u'-');
    for (int miejsce = std::max(najstarsza, jednosci); miejsce >= std::min(cyfry.wykladnik - cyfry.ile, jednosci);
         --miejsce) {
        if (miejsce == jednosci - 1)
            wynik += ustawienia.separatorDziesietny;
        DopiszCyfre(wynik, cyfry.Cyfra(miejsce));
    }
    if (zWykladnikiem)
        wynik += u'E' + IntNaTekst(najstarsza);
    return wynik;
}

// Fixed places after the separator, without the sign.
std::u16string Stala(const TCyfry& cyfry, int poPrzecinku, bool tysiace, const TUstawieniaFormatu& ustawienia) {
    std::u16string wynik;
    for (int miejsce = std::max(cyfry.wykladnik - 1, 0); miejsce >= -poPrzecinku; --miejsce) {
        if (miejsce == -1)
            wynik += ustawienia.separatorDziesietny;
        DopiszCyfre(wynik, cyfry.Cyfra(miejsce));
        if (tysiace && miejsce > 0 && miejsce % 3 == 0 && ustawienia.separatorTysiecy != u'\0')
            wynik += ustawienia.separatorTysiecy;
    }
    return wynik;
}

// Places of the amount (1) and the symbol ($), by the numbers that the system's regional settings use.
constexpr std::array<std::u16string_view, 4> kWalutaDodatnia = {u"$1", u"1$", u"$ 1", u"1 $"};
constexpr std::array<std::u16string_view, 16> kWalutaUjemna = {u"($1)", u"-$1",  u"$-1",   u"$1-",  u"(1$)", u"-1$",
                                                               u"1-$",  u"1$-",  u"-1 $",  u"-$ 1", u"1 $-", u"$ 1-",
                                                               u"$ -1", u"1- $", u"($ 1)", u"(1 $)"};

std::u16string Kwota(std::u16string_view liczba, bool ujemna, const TUstawieniaFormatu& ustawienia) {
    const std::span<const std::u16string_view> wzory = ujemna ? std::span<const std::u16string_view>(kWalutaUjemna)
                                                              : std::span<const std::u16string_view>(kWalutaDodatnia);
    const std::size_t numer = ujemna ? ustawienia.formatWalutyUjemnej : ustawienia.formatWaluty;
    std::u16string wynik;
    for (char16_t znak : wzory[std::min(numer, wzory.size() - 1)]) {
        if (znak == u'1')
            wynik += liczba;
        else if (znak == u'$')
            wynik += ustawienia.symbolWaluty;
        else
            wynik += znak;
    }
    return wynik;
}

std::u16string TekstRzeczywistej(const TArgument& argument, char16_t rodzaj, int precyzja,
                                 const TUstawieniaFormatu& ustawienia) {
    if (argument.Tag() == TTag::Extended && !std::isfinite(static_cast<double>(argument.Rzeczywista())))
        return FloatNaTekst(static_cast<double>(argument.Rzeczywista()), ustawienia);
    if (rodzaj == u'e' || rodzaj == u'g') {
        // The exponent form has a separator, so at least two digits.
        const int znaczacych =
            precyzja == kBrak ? kDomyslneCyfry : std::clamp(precyzja, rodzaj == u'e' ? 2 : 1, TCyfry::Najwiecej);
        const TCyfry cyfry = CyfryArgumentu(argument, znaczacych, kBezGranicy);
        return rodzaj == u'e' ? Wykladnicza(cyfry, znaczacych, ustawienia) : Ogolna(cyfry, znaczacych, ustawienia);
    }
    const int domyslna = rodzaj == u'm' ? ustawienia.miejscWaluty : 2;
    const int poPrzecinku = std::min(precyzja == kBrak ? domyslna : precyzja, TCyfry::Najwiecej);
    const TCyfry cyfry = CyfryArgumentu(argument, TCyfry::Najwiecej, poPrzecinku);
    if (cyfry.wykladnik > TCyfry::Najwiecej) // more integer digits than are known
        return Ogolna(CyfryArgumentu(argument, kDomyslneCyfry, kBezGranicy), kDomyslneCyfry, ustawienia);
    const std::u16string liczba = Stala(cyfry, poPrzecinku, rodzaj != u'f', ustawienia);
    if (rodzaj == u'm')
        return Kwota(liczba, cyfry.ujemna, ustawienia);
    return cyfry.ujemna ? u'-' + liczba : liczba;
}

// ---- one specifier

struct TSpecyfikator {
    bool doLewej = false;
    std::size_t szerokosc = 0;
    int precyzja = kBrak;
    char16_t rodzaj = 0; // lower case
};

std::u16string TekstCalkowitej(const TArgument& argument, const TSpecyfikator& spec) {
    const std::int64_t wartosc = argument.Calkowita();
    const bool zeZnakiem = spec.rodzaj == u'd' && wartosc < 0;
    auto modul = static_cast<std::uint64_t>(wartosc);
    if (zeZnakiem)
        modul = 0 - modul;
    else if (argument.Tag() == TTag::Integer)
        modul = static_cast<std::uint32_t>(modul);
    char bufor[24];
    const auto r = std::to_chars(bufor, bufor + sizeof bufor, modul, spec.rodzaj == u'x' ? 16 : 10);
    const auto cyfr = static_cast<std::size_t>(r.ptr - bufor);
    std::u16string wynik(zeZnakiem ? 1 : 0, u'-');
    if (spec.precyzja != kBrak && cyfr < static_cast<std::size_t>(spec.precyzja))
        wynik.append(static_cast<std::size_t>(spec.precyzja) - cyfr, u'0');
    for (std::size_t i = 0; i < cyfr; ++i)
        DopiszCyfre(wynik, bufor[i] >= 'a' ? static_cast<char>(bufor[i] - 'a' + 'A') : bufor[i]);
    return wynik;
}

std::u16string TekstAdresu(const void* adres) {
    constexpr std::size_t cyfr = sizeof(void*) * 2;
    std::u16string wynik(cyfr, u'0');
    auto liczba = reinterpret_cast<std::uintptr_t>(adres);
    for (std::size_t i = cyfr; i > 0; liczba >>= 4U)
        wynik[--i] = u"0123456789ABCDEF"[liczba & 15U];
    return wynik;
}

const void* AdresArgumentu(const TArgument& argument) {
    switch (argument.Tag()) {
    case TTag::Object:
        return argument.Obiekt();
    case TTag::Class:
        return argument.Klasa();
    case TTag::Interface:
        return argument.Interfejs();
    default:
        return argument.Wskaznik();
    }
}

// Cuts the text to `ile` characters, and never inside a surrogate pair.
void Utnij(std::u16string& tekst, std::size_t ile) {
    if (tekst.size() <= ile)
        return;
    if (ile > 0 && (tekst[ile] & 0xFC00) == 0xDC00 && (tekst[ile - 1] & 0xFC00) == 0xD800)
        --ile;
    tekst.resize(ile);
}

class TFormatowanie {
  public:
    TFormatowanie(std::u16string_view format, TArgumenty argumenty, const TUstawieniaFormatu* ustawienia)
        : format_(format), argumenty_(argumenty), ustawienia_(ustawienia) {}

    std::u16string Wykonaj() {
        std::u16string wynik;
        wynik.reserve(format_.size() + 16 * argumenty_.size());
        while (pozycja_ < format_.size()) {
            const std::size_t procent = std::min(format_.find(u'%', pozycja_), format_.size());
            wynik += format_.substr(pozycja_, procent - pozycja_);
            pozycja_ = procent + 1;
            if (procent == format_.size())
                break;
            if (Nastepny() == u'%') {
                wynik += u'%';
                ++pozycja_;
            } else {
                Dopisz(wynik, Specyfikator());
            }
        }
        return wynik;
    }

  private:
    // The character at the position, or 0 at the end.
    [[nodiscard]] char16_t Nastepny() const noexcept { return pozycja_ < format_.size() ? format_[pozycja_] : u'\0'; }
    [[nodiscard]] bool Przyjmij(char16_t znak) noexcept {
        if (Nastepny() != znak)
            return false;
        ++pozycja_;
        return true;
    }
    [[nodiscard]] static bool Cyfra(char16_t znak) noexcept { return znak >= u'0' && znak <= u'9'; }

    [[noreturn]] void Blad(EKomunikat powod) const {
        throw EBladFormatu(Formatuj(Komunikat(kmBlednyFormat), {format_, Komunikat(powod)}));
    }

    const TArgument& Argument() {
        if (biezacy_ >= argumenty_.size())
            Blad(kmFormatBrakArgumentu);
        return argumenty_[biezacy_++];
    }

    std::int64_t Liczba() {
        std::int64_t liczba = 0;
        for (; Cyfra(Nastepny()); ++pozycja_) {
            liczba = liczba * 10 + (Nastepny() - u'0');
            if (liczba > kNajwiekszaSzerokosc)
                Blad(kmFormatZaDuzaLiczba);
        }
        return liczba;
    }

    // A number, or `*` and the number that an argument gives.
    std::int64_t LiczbaLubGwiazdka() {
        if (!Przyjmij(u'*'))
            return Liczba();
        const TArgument& argument = Argument();
        if (!argument.JestCalkowity())
            Blad(kmFormatGwiazdka);
        const std::int64_t liczba = argument.Calkowita();
        if (liczba > kNajwiekszaSzerokosc || liczba < -kNajwiekszaSzerokosc)
            Blad(kmFormatZaDuzaLiczba);
        return liczba;
    }

    TSpecyfikator Specyfikator() {
        TSpecyfikator spec;
        // Digits are an index when a colon follows them, else the width.
        std::int64_t szerokosc = 0;
        bool jestSzerokosc = false;
        if (Cyfra(Nastepny())) {
            szerokosc = Liczba();
            if (Przyjmij(u':'))
                biezacy_ = static_cast<std::size_t>(szerokosc);
            else
                jestSzerokosc = true;
        }
        if (!jestSzerokosc) {
            spec.doLewej = Przyjmij(u'-');
            szerokosc = LiczbaLubGwiazdka();
        }
        if (szerokosc < 0)
            spec.doLewej = true;
        spec.szerokosc = static_cast<std::size_t>(std::abs(szerokosc));
        if (Przyjmij(u'.')) {
            const std::int64_t precyzja = LiczbaLubGwiazdka();
            spec.precyzja = precyzja < 0 ? kBrak : static_cast<int>(precyzja);
        }
        const char16_t rodzaj = Nastepny();
        spec.rodzaj = rodzaj >= u'A' && rodzaj <= u'Z' ? static_cast<char16_t>(rodzaj - u'A' + u'a') : rodzaj;
        ++pozycja_;
        return spec;
    }

    void Dopisz(std::u16string& wynik, const TSpecyfikator& spec) {
        const std::u16string tekst = Tekst(spec);
        const std::size_t odstep = spec.szerokosc > tekst.size() ? spec.szerokosc - tekst.size() : 0;
        if (!spec.doLewej)
            wynik.append(odstep, u' ');
        wynik += tekst;
        if (spec.doLewej)
            wynik.append(odstep, u' ');
    }

    std::u16string Tekst(const TSpecyfikator& spec) {
        switch (spec.rodzaj) {
        case u's': {
            std::u16string tekst = TekstArgumentu(Argument());
            if (spec.precyzja != kBrak)
                Utnij(tekst, static_cast<std::size_t>(spec.precyzja));
            return tekst;
        }
        case u'd':
        case u'u':
        case u'x': {
            const TArgument& argument = Argument();
            if (!argument.JestCalkowity())
                Blad(kmFormatNieCalkowita);
            return TekstCalkowitej(argument, spec);
        }
        case u'f':
        case u'n':
        case u'm':
        case u'e':
        case u'g': {
            const TArgument& argument = Argument();
            if (argument.Tag() != TTag::Extended && argument.Tag() != TTag::Currency)
                Blad(kmFormatNieRzeczywista);
            return TekstRzeczywistej(argument, spec.rodzaj, spec.precyzja, Ustawienia());
        }
        case u'p': {
            const TArgument& argument = Argument();
            const TTag tag = argument.Tag();
            if (tag != TTag::Pointer && tag != TTag::Object && tag != TTag::Class && tag != TTag::Interface)
                Blad(kmFormatNieAdres);
            return TekstAdresu(AdresArgumentu(argument));
        }
        default:
            Blad(kmFormatSpecyfikator);
        }
    }

    [[nodiscard]] std::u16string TekstArgumentu(const TArgument& argument) const {
        if (argument.JestTekst8() || argument.JestTekst16())
            return argument.JakoTekst();
        switch (argument.Tag()) {
        case TTag::Variant:
            return TekstWariantu(argument.Wariant());
        case TTag::Object:
            return NazwaKlasy(argument.Obiekt());
        case TTag::Class:
            return std::u16string(argument.Klasa() == nullptr ? u"nil" : argument.Klasa()->nazwa);
        case TTag::Interface:
            return NazwaZaInterfejsem(argument.Interfejs());
        default:
            Blad(kmFormatNieTekst);
        }
    }

    // "?" for a variant without text: an array, a date out of range.
    static std::u16string TekstWariantu(const TWariant& wariant) {
        try {
            return wariant.JakoTekst16();
        } catch (const EBladKonwersji&) {
            return u"?";
        }
    }

    static std::u16string NazwaZaInterfejsem(IInterfejs* interfejs) {
        if (interfejs == nullptr)
            return u"nil";
        const TObiektOgolny* obiekt = ObiektZaInterfejsem(interfejs);
        return obiekt == nullptr ? u"?" : NazwaKlasy(obiekt);
    }

    static std::u16string NazwaKlasy(const TObiektOgolny* obiekt) {
        return std::u16string(obiekt == nullptr ? u"nil" : obiekt->NazwaKlasy());
    }

    [[nodiscard]] const TUstawieniaFormatu& Ustawienia() const {
        return ustawienia_ != nullptr ? *ustawienia_ : UstawieniaProcesu();
    }

    std::u16string_view format_;
    TArgumenty argumenty_;
    const TUstawieniaFormatu* ustawienia_;
    std::size_t pozycja_ = 0;
    std::size_t biezacy_ = 0;
};

} // namespace

std::u16string Formatuj(std::u16string_view format, TArgumenty argumenty, const TUstawieniaFormatu* ustawienia) {
    return TFormatowanie(format, argumenty, ustawienia).Wykonaj();
}

std::u16string Skrocony(std::u16string_view tekst) {
    if (tekst.size() <= kTekstWKomunikacie)
        return std::u16string(tekst);
    const bool wPol = (tekst[kTekstWKomunikacie - 1] & 0xFC00U) == 0xD800; // a pair of units is one character
    std::u16string wynik(tekst.substr(0, kTekstWKomunikacie - (wPol ? 1 : 0)));
    wynik += u'\u2026';
    return wynik;
}

std::u16string FormatujSkrocone(std::u16string_view format, TArgumenty argumenty) {
    std::vector<TArgument> skrocone(argumenty.begin(), argumenty.end());
    for (TArgument& argument : skrocone)
        if (argument.Tag() == TTag::UnicodeString && argument.Tekst().size() > kTekstWKomunikacie)
            argument = TArgument(Skrocony(argument.Tekst()));
    return Formatuj(format, skrocone);
}

std::u16string FormatujBezWyjatku(std::u16string_view format, TArgumenty argumenty) noexcept {
    try {
        return Formatuj(format, argumenty);
    } catch (...) {
        try {
            return std::u16string(format);
        } catch (...) {
            return {};
        }
    }
}

} // namespace ztok
