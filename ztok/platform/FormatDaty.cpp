// Dates and times through masks.
#include <algorithm>
#include <charconv>

#include "ztok/platform/DatyTekst.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/LiczbyTekst.h"
#include "ztok/platform/PorownanieTekstow.h"
#include "ztok/platform/Wyjatki.h"

namespace ztok {

namespace {

constexpr std::u16string_view MaskaDomyslna = u"c";
// Formats of the settings may name each other, in a circle even: this many levels are looked through.
constexpr int NajwiecejPoziomow = 2;

struct TChwila {
    TData data;
    TCzas czas;

    [[nodiscard]] bool PelnaDoba() const noexcept { // to the second
        return czas.godzina == 0 && czas.minuta == 0 && czas.sekunda == 0;
    }
};

// The number of the message is always written with a dot: it is no text of the user's.
[[nodiscard]] TChwila Rozloz(double wartosc) {
    TChwila chwila;
    if (!SprobujRozlozycDateICzas(wartosc, chwila.data, chwila.czas)) {
        throw EBladKonwersji(Formatuj(Komunikat(kmNiepoprawnaData), {FloatNaTekst(wartosc, UstawieniaPolskie())}));
    }
    return chwila;
}

// How the marks of forenoon and afternoon are written in a mask.
enum class EPoraDnia : std::uint8_t { Brak, AmPm, AP, ZUstawien };

[[nodiscard]] EPoraDnia PoraDnia(std::u16string_view reszta) noexcept {
    const auto zaczyna = [&](std::u16string_view slowo) {
        return PorownajOrdynalnieBezWielkosci(reszta.substr(0, slowo.size()), slowo) == 0;
    };
    return zaczyna(u"am/pm")  ? EPoraDnia::AmPm
           : zaczyna(u"a/p")  ? EPoraDnia::AP
           : zaczyna(u"ampm") ? EPoraDnia::ZUstawien
                              : EPoraDnia::Brak;
}

// Whether such a mark stands in the mask outside quotation marks.
[[nodiscard]] bool MaPoreDnia(std::u16string_view maska) noexcept {
    char16_t cudzyslow = 0;
    for (std::size_t i = 0; i < maska.size(); ++i) {
        if (cudzyslow != 0)
            cudzyslow = maska[i] == cudzyslow ? char16_t(0) : cudzyslow;
        else if (maska[i] == u'"' || maska[i] == u'\'')
            cudzyslow = maska[i];
        else if (DuzaAscii(maska[i]) == u'A' && PoraDnia(maska.substr(i)) != EPoraDnia::Brak)
            return true;
    }
    return false;
}

class TPisarzDaty {
  public:
    TPisarzDaty(std::u16string& wynik, const TChwila& chwila, const TUstawieniaFormatu& ustawienia) noexcept
        : wynik_(wynik), chwila_(chwila), u_(ustawienia) {}

    void Pisz(std::u16string_view maska, int poziom) {
        char16_t poprzednia = 0; // the last letter that stood for a part
        for (std::size_t i = 0; i < maska.size();) {
            const char16_t znak = DuzaAscii(maska[i]);
            if (znak == u'"' || znak == u'\'') {
                const std::size_t koniec = std::min(maska.find(znak, i + 1), maska.size());
                wynik_ += maska.substr(i + 1, koniec - i - 1);
                i = koniec + 1;
                continue;
            }
            if (znak == u'A') {
                if (const std::size_t dlugosc = PiszPoreDnia(maska.substr(i)); dlugosc > 0) {
                    i += dlugosc;
                    poprzednia = znak;
                    continue;
                }
            }
            if (!JestCzescia(znak)) {
                wynik_ += znak == u'/' ? u_.separatorDaty : znak == u':' ? u_.separatorCzasu : maska[i];
                ++i;
                continue;
            }
            std::size_t koniec = i + 1;
            while (koniec < maska.size() && DuzaAscii(maska[koniec]) == znak)
                ++koniec;
            const auto ile = static_cast<int>(std::min<std::size_t>(koniec - i, 6));
            const bool minuty = znak == u'M' && poprzednia == u'H';
            PiszCzesc(minuty ? u'N' : znak, ile, maska.substr(koniec), poziom);
            poprzednia = znak;
            i = koniec;
        }
    }

    void PiszDateICzas(int poziom) {
        Zagniezdz(u_.krotkiFormatDaty, poziom);
        if (!chwila_.PelnaDoba()) {
            wynik_ += u' ';
            Zagniezdz(u_.dlugiFormatCzasu, poziom);
        }
    }

  private:
    [[nodiscard]] static bool JestCzescia(char16_t duza) noexcept {
        return std::u16string_view(u"CDMYHNSZT").find(duza) != std::u16string_view::npos;
    }

    void Liczba(int liczba, int cyfr) {
        char bufor[12];
        char* const koniec = std::to_chars(bufor, bufor + sizeof bufor, liczba).ptr;
        for (auto jest = koniec - bufor; jest < cyfr; ++jest)
            wynik_ += u'0';
        wynik_.append(bufor, koniec);
    }

    void Zagniezdz(std::u16string_view maska, int poziom) {
        if (poziom < NajwiecejPoziomow)
            Pisz(maska, poziom + 1);
    }

    // The rest of the mask tells the hour whether it counts to 12.
    void PiszCzesc(char16_t litera, int ile, std::u16string_view reszta, int poziom) {
        const TData& d = chwila_.data;
        const TCzas& c = chwila_.czas;
        switch (litera) {
        case u'C':
            PiszDateICzas(poziom);
            break;
        case u'D':
            if (ile <= 2)
                Liczba(d.dzien, ile);
            else if (ile <= 4)
                wynik_ +=
                    (ile == 3 ? u_.krotkieNazwyDni : u_.dlugieNazwyDni)[static_cast<std::size_t>(DzienTygodnia(d))];
            else
                Zagniezdz(ile == 5 ? u_.krotkiFormatDaty : u_.dlugiFormatDaty, poziom);
            break;
        case u'M':
            if (ile <= 2)
                Liczba(d.miesiac, ile);
            else
                wynik_ += (ile == 3 ? u_.krotkieNazwyMiesiecy
                                    : u_.dlugieNazwyMiesiecy)[static_cast<std::size_t>(d.miesiac - 1)];
            break;
        case u'Y':
            if (ile <= 2)
                Liczba(d.rok % 100, 2);
            else
                Liczba(d.rok, 4);
            break;
        case u'H':
            Liczba(MaPoreDnia(reszta) ? (c.godzina + 11) % 12 + 1 : c.godzina, std::min(ile, 2));
            break;
        case u'N':
            Liczba(c.minuta, std::min(ile, 2));
            break;
        case u'S':
            Liczba(c.sekunda, std::min(ile, 2));
            break;
        case u'Z':
            Liczba(c.milisekunda, std::min(ile, 3));
            break;
        default: // T
            Zagniezdz(ile == 1 ? u_.krotkiFormatCzasu : u_.dlugiFormatCzasu, poziom);
            break;
        }
    }

    // Writes a mark of forenoon or afternoon; the length that it takes in the mask, 0 when there is none.
    std::size_t PiszPoreDnia(std::u16string_view reszta) {
        const bool rano = chwila_.czas.godzina < 12;
        switch (PoraDnia(reszta)) {
        case EPoraDnia::AmPm:
            wynik_ += reszta.substr(rano ? 0 : 3, 2);
            return 5;
        case EPoraDnia::AP:
            wynik_ += reszta[rano ? 0 : 2];
            return 3;
        case EPoraDnia::ZUstawien:
            wynik_ += rano ? u_.napisAM : u_.napisPM;
            return 4;
        default:
            return 0;
        }
    }

    std::u16string& wynik_;
    const TChwila& chwila_;
    const TUstawieniaFormatu& u_;
};

[[nodiscard]] std::u16string Napisz(std::u16string_view maska, double wartosc, const TUstawieniaFormatu& ustawienia) {
    const TChwila chwila = Rozloz(wartosc);
    std::u16string wynik;
    TPisarzDaty(wynik, chwila, ustawienia).Pisz(maska, 0);
    return wynik;
}

} // namespace

std::u16string DataNaTekst(double wartosc, const TUstawieniaFormatu& ustawienia) {
    return Napisz(ustawienia.krotkiFormatDaty, wartosc, ustawienia);
}

std::u16string CzasNaTekst(double wartosc, const TUstawieniaFormatu& ustawienia) {
    return Napisz(ustawienia.dlugiFormatCzasu, wartosc, ustawienia);
}

std::u16string DataICzasNaTekst(double wartosc, const TUstawieniaFormatu& ustawienia) {
    return Napisz(MaskaDomyslna, wartosc, ustawienia);
}

std::u16string DataLubCzasNaTekst(double wartosc, const TUstawieniaFormatu& ustawienia) {
    const TChwila chwila = Rozloz(wartosc);
    if (chwila.czas == TCzas{})
        return DataNaTekst(wartosc, ustawienia);
    if (chwila.data == TData{1899, 12, 30})
        return CzasNaTekst(wartosc, ustawienia);
    return DataNaTekst(wartosc, ustawienia) + u' ' + CzasNaTekst(wartosc, ustawienia);
}

std::u16string FormatujDateCzas(std::u16string_view maska, double wartosc, const TUstawieniaFormatu& ustawienia) {
    return Napisz(maska.empty() ? MaskaDomyslna : maska, wartosc, ustawienia);
}

} // namespace ztok
