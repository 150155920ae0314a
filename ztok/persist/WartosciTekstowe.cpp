#include "ztok/persist/WartosciTekstowe.h"

#include <charconv>
#include <cmath>

#include "ztok/platform/DatyTekst.h"
#include "ztok/platform/TUstawieniaFormatu.h"

namespace ztok {

namespace {

constexpr double kGranica = 1e15;
constexpr int kCyfrDokladnych = 15; // decimal digits that every double keeps

bool JestCyfra(char znak) noexcept { return znak >= '0' && znak <= '9'; }

char* PiszDwie(int liczba, char* cel) noexcept {
    cel[0] = static_cast<char>('0' + liczba / 10);
    cel[1] = static_cast<char>('0' + liczba % 10);
    return cel + 2;
}

int Dwie(const char* cyfry) noexcept { return (cyfry[0] - '0') * 10 + (cyfry[1] - '0'); }

// A number that is a decimal of at most 15 digits is the double of no other such decimal, so these digits are its
// shortest ones. Whether it is one shows by dividing: the quotient of two exact doubles is the double next to the
// decimal.
template <int Miejsc> char* PiszDziesietna(double modul, char16_t przecinek, char* cel) noexcept {
    constexpr std::uint64_t potega = Miejsc == 2 ? 100 : Miejsc == 4 ? 10000 : 1000000;
    constexpr auto mnoznik = static_cast<double>(potega);
    const double przesunieta = modul * mnoznik + 0.5;
    if (!(przesunieta < kGranica))
        return nullptr;
    const auto cyfry = static_cast<std::uint64_t>(static_cast<std::int64_t>(przesunieta));
    if (static_cast<double>(static_cast<std::int64_t>(cyfry)) / mnoznik != modul)
        return nullptr;
    const std::uint64_t calkowita = cyfry / potega;
    auto ulamek = static_cast<unsigned>(cyfry - calkowita * potega);
    cel = PiszCalkowita(static_cast<std::int64_t>(calkowita), cel);
    *cel++ = static_cast<char>(przecinek);
    for (int i = Miejsc; i > 0; i -= 2, ulamek /= 100)
        PiszDwie(static_cast<int>(ulamek % 100), cel + i - 2);
    cel += Miejsc;
    while (cel[-1] == '0')
        --cel;
    return cel;
}

bool ZwyklaData(const TUstawieniaFormatu& format) noexcept {
    return format.separatorDaty == u'-' && format.krotkiFormatDaty == u"yyyy-MM-dd";
}
bool ZwyklyCzas(const TUstawieniaFormatu& format) noexcept {
    return format.dlugiFormatCzasu == u"hh:mm:ss" && format.separatorCzasu == u':';
}

} // namespace

char* PiszCalkowita(std::int64_t liczba, char* cel) noexcept {
    return std::to_chars(cel, cel + kMiejsceWartosci, liczba).ptr;
}

char* PiszRzeczywista(double liczba, const TUstawieniaFormatu& format, char* cel) noexcept {
    constexpr double najmniejsza = 1e-3; // far above the numbers that take an exponent
    const double modul = std::fabs(liczba);
    if (!(modul < kGranica) || (modul < najmniejsza && modul != 0) ||
        (format.separatorDziesietny != u'.' && format.separatorDziesietny != u','))
        return nullptr;
    // A negative zero shows its sign or not as the general function decides.
    if (modul == 0 && std::signbit(liczba))
        return nullptr;
    if (liczba < 0)
        *cel++ = '-';
    if (const auto calkowita = static_cast<std::int64_t>(modul); static_cast<double>(calkowita) == modul)
        return PiszCalkowita(calkowita, cel);
    if (char* koniec = PiszDziesietna<2>(modul, format.separatorDziesietny, cel); koniec != nullptr)
        return koniec;
    if (char* koniec = PiszDziesietna<4>(modul, format.separatorDziesietny, cel); koniec != nullptr)
        return koniec;
    return PiszDziesietna<6>(modul, format.separatorDziesietny, cel);
}

char* PiszDate(double wartosc, const TUstawieniaFormatu& format, char* cel) noexcept {
    TData data;
    TCzas czas;
    if (!ZwyklaData(format) || !SprobujRozlozycDateICzas(wartosc, data, czas))
        return nullptr;
    cel = PiszDwie(data.rok % 100, PiszDwie(data.rok / 100, cel));
    *cel++ = '-';
    cel = PiszDwie(data.miesiac, cel);
    *cel++ = '-';
    return PiszDwie(data.dzien, cel);
}

char* PiszCzas(double wartosc, const TUstawieniaFormatu& format, char* cel) noexcept {
    TData data;
    TCzas czas;
    if (!ZwyklyCzas(format) || !SprobujRozlozycDateICzas(wartosc, data, czas))
        return nullptr;
    cel = PiszDwie(czas.godzina, cel);
    *cel++ = ':';
    cel = PiszDwie(czas.minuta, cel);
    *cel++ = ':';
    return PiszDwie(czas.sekunda, cel);
}

// The digits without the point and the power of ten are exact, and dividing rounds once.
bool CzytajRzeczywista(std::string_view tekst, double& liczba) noexcept {
    constexpr double potegi[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14};
    const char* p = tekst.data();
    const char* const koniec = p + tekst.size();
    const bool ujemna = p != koniec && *p == '-';
    p += ujemna ? 1 : 0;
    // With its point the number is one byte longer than its digits.
    if (koniec - p > kCyfrDokladnych + 1 || p == koniec || !JestCyfra(*p))
        return false;
    std::uint64_t cyfry = 0;
    const char* const od = p;
    for (; p != koniec && JestCyfra(*p); ++p)
        cyfry = cyfry * 10 + static_cast<unsigned>(*p - '0');
    std::ptrdiff_t ile = p - od;
    std::ptrdiff_t miejsc = 0;
    if (p != koniec) {
        if (*p != '.')
            return false;
        const char* const ulamek = ++p;
        for (; p != koniec && JestCyfra(*p); ++p)
            cyfry = cyfry * 10 + static_cast<unsigned>(*p - '0');
        miejsc = p - ulamek;
        ile += miejsc;
        if (p != koniec || miejsc == 0)
            return false;
    }
    if (ile > kCyfrDokladnych)
        return false;
    const double modul = static_cast<double>(cyfry) / potegi[miejsc];
    liczba = ujemna ? -modul : modul;
    return true;
}

bool CzytajDate(std::string_view tekst, const TUstawieniaFormatu& format, double& wartosc) noexcept {
    constexpr std::string_view wzor = "0000-00-00";
    if (tekst.size() != wzor.size() || !ZwyklaData(format))
        return false;
    for (std::size_t i = 0; i < wzor.size(); ++i)
        if (wzor[i] == '0' ? !JestCyfra(tekst[i]) : tekst[i] != wzor[i])
            return false;
    const char* p = tekst.data();
    return SprobujZlozycDate({Dwie(p) * 100 + Dwie(p + 2), Dwie(p + 5), Dwie(p + 8)}, wartosc);
}

bool CzytajCzas(std::string_view tekst, const TUstawieniaFormatu& format, double& wartosc) noexcept {
    constexpr std::string_view wzor = "00:00:00";
    if (tekst.size() != wzor.size() || format.separatorCzasu != u':')
        return false;
    for (std::size_t i = 0; i < wzor.size(); ++i)
        if (wzor[i] == '0' ? !JestCyfra(tekst[i]) : tekst[i] != wzor[i])
            return false;
    const char* p = tekst.data();
    return SprobujZlozycCzas({Dwie(p), Dwie(p + 3), Dwie(p + 6), 0}, wartosc);
}

} // namespace ztok
