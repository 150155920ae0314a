#include "ztok/platform/LiczbyTekst.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/PorownanieTekstow.h"
#include "ztok/platform/Wyjatki.h"

namespace ztok {

namespace {

constexpr int CyfrOgolnych = 15; // what a double holds for certain
constexpr int BezOgraniczenia = 10000;

[[noreturn]] void ZlaLiczba(std::u16string_view tekst, EKomunikat numer) {
    throw EBladKonwersji(Formatuj(Komunikat(numer), {Skrocony(tekst)}));
}

template <class T> [[nodiscard]] std::u16string CalkowitaNaTekst(T liczba) {
    char bufor[24];
    char* const koniec = std::to_chars(bufor, bufor + sizeof bufor, liczba).ptr;
    return {bufor, koniec};
}

[[nodiscard]] constexpr bool JestCyfra(char16_t znak) noexcept { return znak >= u'0' && znak <= u'9'; }

[[nodiscard]] constexpr unsigned CyfraSzesnastkowa(char16_t znak) noexcept {
    const char16_t duza = DuzaAscii(znak);
    return JestCyfra(znak) ? znak - u'0' : duza >= u'A' && duza <= u'F' ? duza - u'A' + 10U : 16U;
}

// Sign and magnitude of an integer text; false when it is none or is beyond 64 bits.
[[nodiscard]] bool RozbierzCalkowita(std::u16string_view tekst, bool& ujemna, bool& szesnastkowa,
                                     std::uint64_t& wielkosc) noexcept {
    std::size_t i = 0;
    while (i < tekst.size() && tekst[i] == u' ')
        ++i;
    ujemna = i < tekst.size() && tekst[i] == u'-';
    if (ujemna || (i < tekst.size() && tekst[i] == u'+'))
        ++i;
    tekst.remove_prefix(i);
    szesnastkowa = true;
    if (tekst.starts_with(u'$') || tekst.starts_with(u'x') || tekst.starts_with(u'X'))
        tekst.remove_prefix(1);
    else if (tekst.starts_with(u"0x") || tekst.starts_with(u"0X"))
        tekst.remove_prefix(2);
    else
        szesnastkowa = false;
    if (tekst.empty())
        return false;
    constexpr std::uint64_t Max = std::numeric_limits<std::uint64_t>::max();
    const unsigned podstawa = szesnastkowa ? 16 : 10;
    std::uint64_t wynik = 0;
    for (const char16_t znak : tekst) {
        const unsigned cyfra = CyfraSzesnastkowa(znak);
        if (cyfra >= podstawa || wynik > (Max - cyfra) / podstawa)
            return false;
        wynik = wynik * podstawa + cyfra;
    }
    wielkosc = wynik;
    return true;
}

template <class T> [[nodiscard]] bool SprobujCalkowita(std::u16string_view tekst, T& liczba) noexcept {
    using U = std::make_unsigned_t<T>;
    bool ujemna = false;
    bool szesnastkowa = false;
    std::uint64_t wielkosc = 0;
    if (!RozbierzCalkowita(tekst, ujemna, szesnastkowa, wielkosc))
        return false;
    constexpr auto Najwieksza = static_cast<std::uint64_t>(std::numeric_limits<T>::max());
    if (wielkosc > (szesnastkowa ? std::numeric_limits<U>::max() : ujemna ? Najwieksza + 1 : Najwieksza))
        return false;
    const auto bity = static_cast<U>(wielkosc);
    liczba = static_cast<T>(ujemna ? U{0} - bity : bity);
    return true;
}

// Splits `d.ddde[+-]dd` of std::to_chars; the last digit may be '0'.
void WczytajZapisNaukowy(const char* p, const char* koniec, TCyfry& wynik) noexcept {
    wynik.ile = 0;
    for (; p != koniec && *p != 'e'; ++p) {
        if (*p != '.')
            wynik.cyfry[wynik.ile++] = *p;
    }
    int wykladnik = 0;
    const bool ujemny = p[1] == '-';
    for (p += 2; p != koniec; ++p)
        wykladnik = wykladnik * 10 + (*p - '0');
    wynik.wykladnik = (ujemny ? -wykladnik : wykladnik) + 1;
}

// Takes trailing zeros away; without digits it is the zero without a sign.
void Oczysc(TCyfry& c) noexcept {
    while (c.ile > 0 && c.cyfry[c.ile - 1] == '0')
        --c.ile;
    if (c.ile == 0)
        c = TCyfry{};
}

// Keeps the first `ile` digits, half away from zero.
void Zaokraglij(TCyfry& c, int ile) noexcept {
    if (ile >= c.ile)
        return;
    const bool wGore = ile >= 0 && c.cyfry[ile] >= '5';
    c.ile = std::max(ile, 0);
    if (wGore) {
        while (c.ile > 0 && c.cyfry[c.ile - 1] == '9')
            --c.ile;
        if (c.ile > 0) {
            ++c.cyfry[c.ile - 1];
        } else {
            c.cyfry[0] = '1';
            c.ile = 1;
            ++c.wykladnik;
        }
    }
    Oczysc(c);
}

[[nodiscard]] TCyfry OsiemnascieCyfr(double liczba) noexcept {
    TCyfry c;
    if (liczba == 0)
        return c;
    char bufor[32];
    const auto zapis = std::to_chars(bufor, bufor + sizeof bufor, std::fabs(liczba), std::chars_format::scientific,
                                     TCyfry::Najwiecej - 1);
    WczytajZapisNaukowy(bufor, zapis.ptr, c);
    c.ujemna = std::signbit(liczba);
    Oczysc(c);
    return c;
}

[[nodiscard]] TCyfry NajkrotszeCyfry(double liczba) noexcept {
    TCyfry c;
    char bufor[32];
    const auto zapis = std::to_chars(bufor, bufor + sizeof bufor, std::fabs(liczba), std::chars_format::scientific);
    WczytajZapisNaukowy(bufor, zapis.ptr, c);
    c.ujemna = std::signbit(liczba);
    Oczysc(c);
    return c;
}

[[nodiscard]] std::u16string PozaZakresem(double liczba) {
    return std::isnan(liczba) ? u"NAN" : liczba > 0 ? u"INF" : u"-INF";
}

// Digits in the general form.
[[nodiscard]] std::u16string UlozOgolnie(const TCyfry& c, char16_t przecinek) {
    char16_t bufor[48];
    char16_t* p = bufor;
    if (c.ujemna)
        *p++ = u'-';
    const bool zWykladnikiem = c.ile > 0 && (c.wykladnik > CyfrOgolnych || c.wykladnik < -4);
    const int calkowitych = zWykladnikiem ? 1 : c.wykladnik;
    if (calkowitych <= 0)
        *p++ = u'0';
    for (int i = 0; i < calkowitych; ++i)
        *p++ = static_cast<char16_t>(i < c.ile ? c.cyfry[i] : '0');
    if (c.ile > calkowitych) {
        *p++ = przecinek;
        for (int i = calkowitych; i < 0; ++i)
            *p++ = u'0';
        for (int i = std::max(calkowitych, 0); i < c.ile; ++i)
            *p++ = static_cast<char16_t>(c.cyfry[i]);
    }
    if (zWykladnikiem) {
        char cyfry[8];
        char* const koniec = std::to_chars(cyfry, cyfry + sizeof cyfry, c.wykladnik - 1).ptr;
        *p++ = u'E';
        p = std::copy(cyfry, koniec, p);
    }
    return {bufor, p};
}

// The word for a number that digits cannot tell.
[[nodiscard]] bool WezSlowo(std::u16string_view tekst, double& liczba) noexcept {
    const bool ujemna = tekst.starts_with(u'-');
    const bool zeZnakiem = ujemna || tekst.starts_with(u'+');
    const std::u16string_view slowo = tekst.substr(zeZnakiem ? 1 : 0);
    if (PorownajOrdynalnieBezWielkosci(slowo, u"INF") == 0) {
        constexpr double Inf = std::numeric_limits<double>::infinity();
        liczba = ujemna ? -Inf : Inf;
        return true;
    }
    if (!zeZnakiem && PorownajOrdynalnieBezWielkosci(slowo, u"NAN") == 0) {
        liczba = std::numeric_limits<double>::quiet_NaN();
        return true;
    }
    return false;
}

// Copies the number to `cel` in the form that std::from_chars reads; null when the text is no number. `tekst` has no
// blanks around it, and `cel` has room for its length.
[[nodiscard]] char* PrzepiszLiczbe(std::u16string_view tekst, char16_t przecinek, char* cel) noexcept {
    const char16_t* p = tekst.data();
    const char16_t* const koniec = p + tekst.size();
    if (p != koniec && (*p == u'-' || *p == u'+')) {
        if (*p == u'-')
            *cel++ = '-';
        ++p;
    }
    const auto cyfry = [&] {
        const char16_t* const poczatek = p;
        for (; p != koniec && JestCyfra(*p); ++p)
            *cel++ = static_cast<char>(*p);
        return p != poczatek;
    };
    bool sa = cyfry();
    if (p != koniec && *p == przecinek) {
        ++p;
        *cel++ = '.';
        sa = cyfry() || sa;
    }
    if (!sa)
        return nullptr;
    if (p != koniec && (*p == u'e' || *p == u'E')) {
        ++p;
        *cel++ = 'e';
        if (p != koniec && (*p == u'-' || *p == u'+'))
            *cel++ = static_cast<char>(*p++);
        if (!cyfry())
            return nullptr;
    }
    return p == koniec ? cel : nullptr;
}

// Whether a number that std::from_chars found out of range is too small rather than too large: its first digit other
// than 0 stands on or after the point, counted with the exponent.
[[nodiscard]] bool JestZaMala(const char* od, const char* koniec) noexcept {
    const char* const e = std::find(od, koniec, 'e');
    const char* const kropka = std::find(od, e, '.');
    const char* const pierwsza = std::find_if(od, e, [](char znak) { return znak >= '1' && znak <= '9'; });
    if (pierwsza == e)
        return true; // zero, whatever the exponent
    std::int64_t wykladnik = 0;
    if (e != koniec) {
        const bool ujemny = e[1] == '-';
        for (const char* p = e + (ujemny || e[1] == '+' ? 2 : 1); p != koniec && wykladnik < (std::int64_t{1} << 40);
             ++p)
            wykladnik = wykladnik * 10 + (*p - '0');
        if (ujemny)
            wykladnik = -wykladnik;
    }
    return wykladnik + (kropka - pierwsza) <= 0;
}

} // namespace

std::u16string IntNaTekst(std::int64_t liczba) { return CalkowitaNaTekst(liczba); }
std::u16string UIntNaTekst(std::uint64_t liczba) { return CalkowitaNaTekst(liczba); }

bool SprobujTekstNaInt(std::u16string_view tekst, std::int32_t& liczba) noexcept {
    return SprobujCalkowita(tekst, liczba);
}

bool SprobujTekstNaInt64(std::u16string_view tekst, std::int64_t& liczba) noexcept {
    return SprobujCalkowita(tekst, liczba);
}

std::int32_t TekstNaInt(std::u16string_view tekst) {
    std::int32_t liczba = 0;
    if (!SprobujTekstNaInt(tekst, liczba))
        ZlaLiczba(tekst, kmNiepoprawnaLiczbaCalkowita);
    return liczba;
}

std::int64_t TekstNaInt64(std::u16string_view tekst) {
    std::int64_t liczba = 0;
    if (!SprobujTekstNaInt64(tekst, liczba))
        ZlaLiczba(tekst, kmNiepoprawnaLiczbaCalkowita);
    return liczba;
}

TCyfry RozlozNaCyfry(double liczba, int znaczacych, int poPrzecinku) noexcept {
    TCyfry c = OsiemnascieCyfr(liczba);
    if (c.ile > 0)
        Zaokraglij(c, std::min(znaczacych, c.wykladnik + poPrzecinku));
    return c;
}

TCyfry RozlozNaCyfry(TLiczbaDziesietna liczba, int znaczacych, int poPrzecinku) noexcept {
    TCyfry c;
    c.ile = static_cast<int>(std::to_chars(c.cyfry, c.cyfry + TCyfry::Pojemnosc, liczba.modul).ptr - c.cyfry);
    c.wykladnik = c.ile - liczba.miejsc;
    c.ujemna = liczba.ujemna;
    Oczysc(c);
    if (c.ile > 0)
        Zaokraglij(c, std::min(znaczacych, c.wykladnik + poPrzecinku));
    return c;
}

std::u16string FloatNaTekst(double liczba, const TUstawieniaFormatu& ustawienia) {
    if (!std::isfinite(liczba))
        return PozaZakresem(liczba);
    return UlozOgolnie(RozlozNaCyfry(liczba, CyfrOgolnych, BezOgraniczenia), ustawienia.separatorDziesietny);
}

std::u16string FloatNaTekstDokladny(double liczba, const TUstawieniaFormatu& ustawienia) {
    if (!std::isfinite(liczba))
        return PozaZakresem(liczba);
    if (liczba == 0)
        return std::signbit(liczba) ? u"-0" : u"0";
    // Where 15 digits read back to the number, they are the fewest digits that do, padded with zeros: every number of
    // 15 digits survives as a double. Only among the denormal ones, which hold less, can fewer digits do as well.
    if (!std::isnormal(liczba)) {
        std::u16string tekst = FloatNaTekst(liczba, ustawienia);
        double odczytana = 0;
        if (SprobujTekstNaFloat(tekst, odczytana, ustawienia) && odczytana == liczba)
            return tekst;
    }
    return UlozOgolnie(NajkrotszeCyfry(liczba), ustawienia.separatorDziesietny);
}

std::from_chars_result FloatZCyfr(const char* od, const char* koniec, double& liczba) noexcept {
    // W. D. Clinger, "How to read floating point numbers accurately", 1990: digits and a power of ten that doubles hold
    // exactly give the right number in one operation, which rounds once.
    static constexpr double potegi[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                        1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    constexpr int maksPotega = 22;
    constexpr std::uint64_t maksCyfry = std::uint64_t{1} << 53U;
    const auto ogolnie = [&] { return std::from_chars(od, koniec, liczba); };
    const char* p = od;
    const bool ujemna = p != koniec && *p == '-';
    p += ujemna ? 1 : 0;
    std::uint64_t cyfry = 0;
    int ile = 0;    // significant digits
    int miejsc = 0; // behind the point
    bool kropka = false;
    bool sa = false;
    for (; p != koniec && ((*p >= '0' && *p <= '9') || (*p == '.' && !kropka)); ++p) {
        if (*p == '.') {
            kropka = true;
            continue;
        }
        sa = true;
        miejsc += kropka ? 1 : 0;
        ile += ile != 0 || *p != '0' ? 1 : 0;
        if (ile > 18) // more than 64 bits may hold
            return ogolnie();
        cyfry = cyfry * 10 + static_cast<unsigned>(*p - '0');
    }
    int wykladnik = 0;
    if (p != koniec && (*p == 'e' || *p == 'E')) {
        const bool minus = p + 1 != koniec && p[1] == '-';
        p += minus || (p + 1 != koniec && p[1] == '+') ? 2 : 1;
        const char* const cyfryWykladnika = p;
        for (; p != koniec && *p >= '0' && *p <= '9' && p - cyfryWykladnika < 6; ++p)
            wykladnik = wykladnik * 10 + (*p - '0');
        if (p == cyfryWykladnika)
            return ogolnie();
        wykladnik = minus ? -wykladnik : wykladnik;
    }
    wykladnik -= miejsc;
    if (!sa || p != koniec || cyfry > maksCyfry || wykladnik < -maksPotega || wykladnik > maksPotega)
        return ogolnie();
    const auto modul = static_cast<double>(static_cast<std::int64_t>(cyfry));
    const double wynik = wykladnik < 0 ? modul / potegi[-wykladnik] : modul * potegi[wykladnik];
    liczba = ujemna ? -wynik : wynik;
    return {p, std::errc()};
}

bool SprobujTekstNaFloat(std::u16string_view tekst, double& liczba, const TUstawieniaFormatu& ustawienia) {
    while (!tekst.empty() && tekst.front() == u' ')
        tekst.remove_prefix(1);
    while (!tekst.empty() && tekst.back() == u' ')
        tekst.remove_suffix(1);
    char krotki[64];
    std::string dlugi;
    char* cel = krotki;
    if (tekst.size() > sizeof krotki) {
        dlugi.resize(tekst.size());
        cel = dlugi.data();
    }
    const char* const koniec = PrzepiszLiczbe(tekst, ustawienia.separatorDziesietny, cel);
    if (koniec == nullptr)
        return WezSlowo(tekst, liczba);
    double wynik = 0;
    const auto odczyt = FloatZCyfr(cel, koniec, wynik);
    if (odczyt.ec == std::errc::result_out_of_range) {
        if (!JestZaMala(cel, koniec))
            return false;
        wynik = *cel == '-' ? -0.0 : 0.0;
    } else if (odczyt.ec != std::errc{} || odczyt.ptr != koniec || !std::isfinite(wynik)) {
        return false;
    }
    liczba = wynik;
    return true;
}

double TekstNaFloat(std::u16string_view tekst, const TUstawieniaFormatu& ustawienia) {
    double liczba = 0;
    if (!SprobujTekstNaFloat(tekst, liczba, ustawienia))
        ZlaLiczba(tekst, kmNiepoprawnaLiczbaZmiennoprzecinkowa);
    return liczba;
}

} // namespace ztok
