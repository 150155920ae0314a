#include "ztok/platform/DatyTekst.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>

#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/PorownanieTekstow.h"
#include "ztok/platform/Wyjatki.h"

namespace ztok {

namespace {

constinit std::atomic<TFunkcjaDzisiaj> FunkcjaDzisiaj{nullptr};

[[nodiscard]] TData Dzisiaj() noexcept {
    const TFunkcjaDzisiaj funkcja = FunkcjaDzisiaj.load(std::memory_order_relaxed);
    return funkcja != nullptr ? funkcja() : DzisiajWgSystemu();
}

[[noreturn]] void ZlyTekst(std::u16string_view tekst, EKomunikat numer) {
    throw EBladKonwersji(Formatuj(Komunikat(numer), {Skrocony(tekst)}));
}

[[nodiscard]] constexpr bool Przestepny(int rok) noexcept { return rok % 4 == 0 && (rok % 100 != 0 || rok % 400 == 0); }

[[nodiscard]] constexpr int DniMiesiaca(int rok, int miesiac) noexcept {
    constexpr std::array<int, 12> Dni = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return miesiac == 2 && Przestepny(rok) ? 29 : Dni[static_cast<std::size_t>(miesiac - 1)];
}

// Days and dates by counting years from March, so that the leap day is the last one of its year.
[[nodiscard]] constexpr int DniOdRokuZero(const TData& d) noexcept {
    const int rok = d.miesiac > 2 ? d.rok : d.rok - 1;
    const int miesiac = (d.miesiac + 9) % 12; // March = 0
    return rok * 365 + rok / 4 - rok / 100 + rok / 400 + (miesiac * 153 + 2) / 5 + d.dzien - 1;
}

[[nodiscard]] constexpr TData DataZDni(int dni) noexcept {
    constexpr int DniWieku4 = 146097;
    const int wieki4 = dni / DniWieku4;
    const int reszta = dni % DniWieku4;
    const int lat = (reszta - reszta / 1460 + reszta / 36524 - reszta / 146096) / 365;
    const int dzienRoku = reszta - (lat * 365 + lat / 4 - lat / 100);
    const int miesiac = (dzienRoku * 5 + 2) / 153;
    const int dzien = dzienRoku - (miesiac * 153 + 2) / 5 + 1;
    const bool nowyRok = miesiac >= 10;
    return {wieki4 * 400 + lat + (nowyRok ? 1 : 0), nowyRok ? miesiac - 9 : miesiac + 3, dzien};
}

constexpr int DzienZero = DniOdRokuZero({1899, 12, 30});
constexpr int PierwszyDzien = DniOdRokuZero({1, 1, 1}) - DzienZero;
constexpr int OstatniDzien = DniOdRokuZero({9999, 12, 31}) - DzienZero;

// ---- reading text ---------------------------------------------------------------------------------------------------

struct TLiczba {
    int wartosc = 0; // stops growing at 1000000
    int cyfr = 0;
};

class TSkaner {
  public:
    explicit TSkaner(std::u16string_view tekst) noexcept : reszta_(tekst) {}

    [[nodiscard]] bool Koniec() const noexcept { return reszta_.empty(); }

    // Returns whether there were any.
    bool PominOdstepy() noexcept {
        const std::size_t ile = std::min(reszta_.find_first_not_of(u' '), reszta_.size());
        reszta_.remove_prefix(ile);
        return ile > 0;
    }

    // At least one digit, and at most so many.
    [[nodiscard]] bool WezLiczbe(TLiczba& liczba, int najwyzej = Granica) noexcept {
        liczba = {};
        while (!reszta_.empty() && reszta_.front() >= u'0' && reszta_.front() <= u'9' && liczba.cyfr < najwyzej) {
            liczba.wartosc = std::min(liczba.wartosc * 10 + (reszta_.front() - u'0'), Granica);
            liczba.cyfr += liczba.cyfr < Granica ? 1 : 0;
            reszta_.remove_prefix(1);
        }
        return liczba.cyfr > 0;
    }

    [[nodiscard]] bool WezZnak(char16_t znak) noexcept {
        if (reszta_.empty() || reszta_.front() != znak)
            return false;
        reszta_.remove_prefix(1);
        return true;
    }

    // A separator with blanks on either side; without one nothing is taken. Blanks alone are one if it is a blank.
    [[nodiscard]] bool WezSeparator(char16_t separator) noexcept {
        TSkaner proba = *this;
        const bool odstepy = proba.PominOdstepy();
        if (!proba.WezZnak(separator) && !(separator == u' ' && odstepy))
            return false;
        proba.PominOdstepy();
        *this = proba;
        return true;
    }

    // Letter case free; an empty word is never there.
    [[nodiscard]] bool WezSlowo(std::u16string_view slowo) noexcept {
        if (slowo.empty() || PorownajOrdynalnieBezWielkosci(reszta_.substr(0, slowo.size()), slowo) != 0)
            return false;
        reszta_.remove_prefix(slowo.size());
        return true;
    }

  private:
    static constexpr int Granica = 1'000'000;
    std::u16string_view reszta_;
};

// Which of year, month and day comes first, second, third in a date format.
using TKolejnosc = std::array<char, 3>;

[[nodiscard]] TKolejnosc KolejnoscDaty(std::u16string_view format) noexcept {
    const std::size_t rok = format.find_first_of(u"yY");
    const std::size_t miesiac = format.find_first_of(u"mM");
    const std::size_t dzien = format.find_first_of(u"dD");
    TKolejnosc kolejnosc = {'r', 'm', 'd'};
    const auto miejsce = [&](char co) { return co == 'r' ? rok : co == 'm' ? miesiac : dzien; };
    std::stable_sort(kolejnosc.begin(), kolejnosc.end(), [&](char a, char b) { return miejsce(a) < miejsce(b); });
    return kolejnosc;
}

// The year that a text of one or two digits means.
[[nodiscard]] int RokWOknie(int dwieCyfry, int okno) noexcept {
    const int rokBiezacy = Dzisiaj().rok;
    const int pierwszy = okno > 0 ? rokBiezacy - okno : rokBiezacy / 100 * 100;
    const int rok = pierwszy / 100 * 100 + dwieCyfry;
    return rok < pierwszy ? rok + 100 : rok;
}

// Takes a date from the text; false leaves the scanner anywhere.
[[nodiscard]] bool WezDate(TSkaner& skaner, double& wartosc, const TUstawieniaFormatu& u) noexcept {
    std::array<TLiczba, 3> liczby;
    if (!skaner.WezLiczbe(liczby[0]) || !skaner.WezSeparator(u.separatorDaty) || !skaner.WezLiczbe(liczby[1]))
        return false;
    bool zRokiem = false;
    TSkaner proba = skaner;
    if (proba.WezSeparator(u.separatorDaty)) {
        if (!proba.WezLiczbe(liczby[2]))
            return false;
        skaner = proba;
        zRokiem = true;
    }
    TData data;
    std::size_t i = 0;
    for (const char co : KolejnoscDaty(u.krotkiFormatDaty)) {
        if (co == 'r' && !zRokiem) {
            data.rok = Dzisiaj().rok;
            continue;
        }
        const TLiczba& liczba = liczby[i++];
        if (co == 'r')
            data.rok = liczba.cyfr <= 2 ? RokWOknie(liczba.wartosc, u.oknoWieku) : liczba.wartosc;
        else
            (co == 'm' ? data.miesiac : data.dzien) = liczba.wartosc;
    }
    return SprobujZlozycDate(data, wartosc);
}

// Takes a time from the text; false leaves the scanner anywhere.
[[nodiscard]] bool WezCzas(TSkaner& skaner, double& wartosc, const TUstawieniaFormatu& u) noexcept {
    TCzas czas;
    TLiczba liczba;
    if (!skaner.WezLiczbe(liczba))
        return false;
    czas.godzina = liczba.wartosc;
    if (skaner.WezSeparator(u.separatorCzasu)) {
        if (!skaner.WezLiczbe(liczba))
            return false;
        czas.minuta = liczba.wartosc;
        if (skaner.WezSeparator(u.separatorCzasu)) {
            if (!skaner.WezLiczbe(liczba))
                return false;
            czas.sekunda = liczba.wartosc;
            if (skaner.WezZnak(u.separatorDziesietny)) {
                if (!skaner.WezLiczbe(liczba))
                    return false;
                czas.milisekunda = liczba.wartosc;
            }
        }
    }
    TSkaner proba = skaner;
    proba.PominOdstepy();
    const bool rano = proba.WezSlowo(u.napisAM) || proba.WezSlowo(u"AM");
    const bool poPoludniu = !rano && (proba.WezSlowo(u.napisPM) || proba.WezSlowo(u"PM"));
    if (rano || poPoludniu) {
        if (czas.godzina < 1 || czas.godzina > 12)
            return false;
        czas.godzina = czas.godzina % 12 + (poPoludniu ? 12 : 0);
        skaner = proba;
    }
    return SprobujZlozycCzas(czas, wartosc);
}

// The longest of the names that the text goes on with; its index, -1 when there is none.
template <std::size_t Ile> [[nodiscard]] int WezNazwe(TSkaner& skaner, const std::array<std::u16string, Ile>& nazwy) {
    int ktora = -1;
    TSkaner najdalej = skaner;
    for (std::size_t i = 0; i < Ile; ++i)
        if (TSkaner proba = skaner; proba.WezSlowo(nazwy[i]) &&
                                    (ktora < 0 || nazwy[i].size() > nazwy[static_cast<std::size_t>(ktora)].size())) {
            ktora = static_cast<int>(i);
            najdalej = proba;
        }
    skaner = najdalej;
    return ktora;
}

// Takes a part of a date that a run of so many letters of a mask stands for; false leaves the scanner anywhere.
[[nodiscard]] bool WezCzesc(TSkaner& skaner, char16_t litera, std::size_t ile, TData& data,
                            const TUstawieniaFormatu& u) {
    if (litera == u'D' && (ile == 3 || ile == 4))
        return WezNazwe(skaner, ile == 3 ? u.krotkieNazwyDni : u.dlugieNazwyDni) >= 0;
    if (litera == u'M' && ile > 2) {
        data.miesiac = 1 + WezNazwe(skaner, ile == 3 ? u.krotkieNazwyMiesiecy : u.dlugieNazwyMiesiecy);
        return data.miesiac > 0;
    }
    if (ile > 4 && litera == u'D')
        return false;
    const int cyfr = litera == u'Y' ? (ile <= 2 ? 2 : 4) : 2;
    TLiczba liczba;
    if (!skaner.WezLiczbe(liczba, cyfr) || (liczba.cyfr < cyfr && (ile != 1 || litera == u'Y')))
        return false;
    (litera == u'Y'   ? data.rok
     : litera == u'M' ? data.miesiac
                      : data.dzien) =
        cyfr == 2 && litera == u'Y' ? RokWOknie(liczba.wartosc, u.oknoWieku) : liczba.wartosc;
    return true;
}

// Blanks and the end.
[[nodiscard]] bool Skonczony(TSkaner& skaner) noexcept {
    skaner.PominOdstepy();
    return skaner.Koniec();
}

} // namespace

bool SprobujZlozycDate(const TData& data, double& wynik) noexcept {
    if (data.rok < 1 || data.rok > 9999 || data.miesiac < 1 || data.miesiac > 12 || data.dzien < 1 ||
        data.dzien > DniMiesiaca(data.rok, data.miesiac))
        return false;
    wynik = DniOdRokuZero(data) - DzienZero;
    return true;
}

bool SprobujZlozycCzas(const TCzas& czas, double& wynik) noexcept {
    if (czas.godzina < 0 || czas.godzina > 23 || czas.minuta < 0 || czas.minuta > 59 || czas.sekunda < 0 ||
        czas.sekunda > 59 || czas.milisekunda < 0 || czas.milisekunda > 999)
        return false;
    const int milisekund = ((czas.godzina * 60 + czas.minuta) * 60 + czas.sekunda) * 1000 + czas.milisekunda;
    wynik = static_cast<double>(milisekund) / static_cast<double>(MilisekundDoby);
    return true;
}

bool SprobujRozlozycDateICzas(double wartosc, TData& data, TCzas& czas) noexcept {
    // Half a day beyond either end cannot round into the range, and NaN fails both tests.
    if (!(wartosc > PierwszyDzien - 1.0 && wartosc < OstatniDzien + 1.5))
        return false;
    const auto milisekund = static_cast<std::int64_t>(std::round(wartosc * static_cast<double>(MilisekundDoby)));
    const auto dzien = static_cast<int>(milisekund / MilisekundDoby);
    if (dzien < PierwszyDzien || dzien > OstatniDzien)
        return false;
    auto reszta = static_cast<int>(std::abs(milisekund % MilisekundDoby));
    data = DataZDni(dzien + DzienZero);
    czas.milisekunda = reszta % 1000;
    reszta /= 1000;
    czas.sekunda = reszta % 60;
    reszta /= 60;
    czas.minuta = reszta % 60;
    czas.godzina = reszta / 60;
    return true;
}

int DzienTygodnia(const TData& data) noexcept { return (DniOdRokuZero(data) + 3) % 7; } // day 0 is a Wednesday

bool SprobujTekstNaDate(std::u16string_view tekst, double& wartosc, const TUstawieniaFormatu& ustawienia) {
    TSkaner skaner(tekst);
    skaner.PominOdstepy();
    double wynik = 0;
    if (!WezDate(skaner, wynik, ustawienia) || !Skonczony(skaner))
        return false;
    wartosc = wynik;
    return true;
}

bool SprobujTekstNaDateWgMaski(std::u16string_view tekst, std::u16string_view maska, double& wartosc,
                               const TUstawieniaFormatu& ustawienia) {
    TSkaner skaner(tekst);
    TData data;
    for (std::size_t i = 0; i < maska.size();) {
        const char16_t znak = DuzaAscii(maska[i]);
        if (znak == u'"' || znak == u'\'') {
            const std::size_t koniec = std::min(maska.find(znak, i + 1), maska.size());
            for (++i; i < koniec; ++i)
                if (!skaner.WezZnak(maska[i]))
                    return false;
            ++i;
            continue;
        }
        if (znak != u'D' && znak != u'M' && znak != u'Y') {
            // Letters of times, of other formats and of parts of the day give no date.
            if (std::u16string_view(u"ACHNSTZ").find(znak) != std::u16string_view::npos ||
                !skaner.WezZnak(znak == u'/'   ? ustawienia.separatorDaty
                                : znak == u':' ? ustawienia.separatorCzasu
                                               : maska[i]))
                return false;
            ++i;
            continue;
        }
        std::size_t koniec = i + 1;
        while (koniec < maska.size() && DuzaAscii(maska[koniec]) == znak)
            ++koniec;
        const char16_t nastepny = koniec < maska.size() ? DuzaAscii(maska[koniec]) : u' ';
        // A number of one or two digits does not show where another one begins.
        if (koniec - i == 1 && znak != u'Y' && (nastepny == u'D' || nastepny == u'M' || nastepny == u'Y'))
            return false;
        if (!WezCzesc(skaner, znak, koniec - i, data, ustawienia))
            return false;
        i = koniec;
    }
    return skaner.Koniec() && SprobujZlozycDate(data, wartosc);
}

bool SprobujTekstNaCzas(std::u16string_view tekst, double& wartosc, const TUstawieniaFormatu& ustawienia) {
    TSkaner skaner(tekst);
    skaner.PominOdstepy();
    double wynik = 0;
    if (!WezCzas(skaner, wynik, ustawienia) || !Skonczony(skaner))
        return false;
    wartosc = wynik;
    return true;
}

bool SprobujTekstNaDateICzas(std::u16string_view tekst, double& wartosc, const TUstawieniaFormatu& ustawienia) {
    TSkaner skaner(tekst);
    skaner.PominOdstepy();
    double data = 0;
    if (!WezDate(skaner, data, ustawienia))
        return SprobujTekstNaCzas(tekst, wartosc, ustawienia);
    double czas = 0;
    const bool odstep = skaner.PominOdstepy();
    if (!skaner.Koniec() && (!odstep || !WezCzas(skaner, czas, ustawienia) || !Skonczony(skaner)))
        return false;
    wartosc = ZlaczDateICzas(data, czas);
    return true;
}

double TekstNaDate(std::u16string_view tekst, const TUstawieniaFormatu& ustawienia) {
    double wynik = 0;
    if (!SprobujTekstNaDate(tekst, wynik, ustawienia))
        ZlyTekst(tekst, kmNiepoprawnaData);
    return wynik;
}

double TekstNaCzas(std::u16string_view tekst, const TUstawieniaFormatu& ustawienia) {
    double wynik = 0;
    if (!SprobujTekstNaCzas(tekst, wynik, ustawienia))
        ZlyTekst(tekst, kmNiepoprawnyCzas);
    return wynik;
}

double TekstNaDateICzas(std::u16string_view tekst, const TUstawieniaFormatu& ustawienia) {
    double wynik = 0;
    if (!SprobujTekstNaDateICzas(tekst, wynik, ustawienia))
        ZlyTekst(tekst, kmNiepoprawnaDataICzas);
    return wynik;
}

TFunkcjaDzisiaj UstawFunkcjeDzisiaj(TFunkcjaDzisiaj funkcja) noexcept {
    return FunkcjaDzisiaj.exchange(funkcja, std::memory_order_relaxed);
}

} // namespace ztok
