// Numbers through masks.
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <type_traits>

#include "ztok/platform/LiczbyTekst.h"

namespace ztok {

namespace {

constexpr int CyfrCalkowitych = 18; // more are shown in the general form
constexpr int CyfrZnaczacych = 15;  // the last place after the point that shows a digit

enum class EElement : std::uint8_t { Koniec, Doslowny, Zero, Krzyzyk, Kropka, Przecinek, Wykladnik };

struct TElement {
    EElement rodzaj = EElement::Koniec;
    char16_t znak = 0;      // the character, or E / e of an exponent
    bool plus = false;      // exponent: sign shown for positive ones too
    int cyfrWykladnika = 0; // exponent: least number of digits
};

// Takes a section apart, element by element. Quotation marks give no element of their own.
class TCzytnikSekcji {
  public:
    explicit TCzytnikSekcji(std::u16string_view sekcja) noexcept : sekcja_(sekcja) {}

    [[nodiscard]] TElement Wez() noexcept {
        while (i_ < sekcja_.size()) {
            const char16_t znak = sekcja_[i_++];
            if (cudzyslow_ != 0) {
                if (znak != cudzyslow_)
                    return {EElement::Doslowny, znak};
                cudzyslow_ = 0;
                continue;
            }
            switch (znak) {
            case u'"':
            case u'\'':
                cudzyslow_ = znak;
                continue;
            case u'0':
                return {EElement::Zero, znak};
            case u'#':
                return {EElement::Krzyzyk, znak};
            case u'.':
                return {EElement::Kropka, znak};
            case u',':
                return {EElement::Przecinek, znak};
            case u'E':
            case u'e':
                if (i_ < sekcja_.size() && (sekcja_[i_] == u'+' || sekcja_[i_] == u'-'))
                    return WezWykladnik(znak);
                return {EElement::Doslowny, znak};
            default:
                return {EElement::Doslowny, znak};
            }
        }
        return {};
    }

  private:
    [[nodiscard]] TElement WezWykladnik(char16_t litera) noexcept {
        TElement element{EElement::Wykladnik, litera, sekcja_[i_++] == u'+', 0};
        for (; i_ < sekcja_.size() && sekcja_[i_] == u'0'; ++i_)
            element.cyfrWykladnika = std::min(element.cyfrWykladnika + 1, 4);
        return element;
    }

    std::u16string_view sekcja_;
    std::size_t i_ = 0;
    char16_t cudzyslow_ = 0;
};

// What a section asks for. Places are counted as in TCyfry: 0 units, -1 tenths.
struct TUkladSekcji {
    int calkowitych = 0;  // placeholders before the point
    int poPrzecinku = 0;  // placeholders after it
    int pierwszeZero = 0; // count of integer digits always shown
    int ostatnieZero = 0; // count of places after the point always shown
    bool tysiace = false;
    bool naukowy = false;
};

[[nodiscard]] TUkladSekcji ZbadajSekcje(std::u16string_view sekcja) noexcept {
    TUkladSekcji uklad;
    bool poKropce = false;
    int przedZerem = -1; // placeholders before the first `0`
    TCzytnikSekcji czytnik(sekcja);
    for (TElement e = czytnik.Wez(); e.rodzaj != EElement::Koniec; e = czytnik.Wez()) {
        switch (e.rodzaj) {
        case EElement::Zero:
        case EElement::Krzyzyk:
            if (poKropce) {
                ++uklad.poPrzecinku;
                if (e.rodzaj == EElement::Zero)
                    uklad.ostatnieZero = uklad.poPrzecinku;
            } else {
                if (e.rodzaj == EElement::Zero && przedZerem < 0)
                    przedZerem = uklad.calkowitych;
                ++uklad.calkowitych;
            }
            break;
        case EElement::Kropka:
            poKropce = true;
            break;
        case EElement::Przecinek:
            uklad.tysiace = true;
            break;
        case EElement::Wykladnik:
            uklad.naukowy = true;
            break;
        default:
            break;
        }
    }
    uklad.pierwszeZero = przedZerem < 0 ? 0 : uklad.calkowitych - przedZerem;
    return uklad;
}

// Sections of a mask; those that it lacks are empty.
using TSekcje = std::array<std::u16string_view, 3>;

[[nodiscard]] TSekcje PodzielMaske(std::u16string_view maska) noexcept {
    TSekcje sekcje;
    std::size_t ktora = 0;
    std::size_t poczatek = 0;
    char16_t cudzyslow = 0;
    for (std::size_t i = 0; i <= maska.size(); ++i) {
        if (i == maska.size() || (cudzyslow == 0 && maska[i] == u';')) {
            sekcje[ktora++] = maska.substr(poczatek, i - poczatek);
            poczatek = i + 1;
            if (ktora == sekcje.size())
                break;
        } else if (cudzyslow != 0) {
            cudzyslow = maska[i] == cudzyslow ? char16_t(0) : cudzyslow;
        } else if (maska[i] == u'"' || maska[i] == u'\'') {
            cudzyslow = maska[i];
        }
    }
    return sekcje;
}

// What the two kinds of numbers differ in.
[[nodiscard]] bool JestSkonczona(double liczba) noexcept { return std::isfinite(liczba); }
[[nodiscard]] bool JestSkonczona(TLiczbaDziesietna /*liczba*/) noexcept { return true; }
[[nodiscard]] int ZnakLiczby(double liczba) noexcept { return liczba < 0 ? -1 : liczba > 0 ? 1 : 0; }
[[nodiscard]] int ZnakLiczby(TLiczbaDziesietna liczba) noexcept {
    return liczba.modul == 0 ? 0 : liczba.ujemna ? -1 : 1;
}

// Digits as the section shows them.
[[nodiscard]] TCyfry CyfrySekcji(TLiczbaDziesietna liczba, const TUkladSekcji& uklad) noexcept {
    if (uklad.naukowy)
        return RozlozNaCyfry(liczba, std::clamp(uklad.calkowitych + uklad.poPrzecinku, 1, TCyfry::Pojemnosc), 10000);
    return RozlozNaCyfry(liczba, TCyfry::Pojemnosc, uklad.poPrzecinku);
}

[[nodiscard]] TCyfry CyfrySekcji(double liczba, const TUkladSekcji& uklad) noexcept {
    if (uklad.naukowy) {
        const int ile = std::clamp(uklad.calkowitych + uklad.poPrzecinku, 1, CyfrZnaczacych);
        return RozlozNaCyfry(liczba, ile, 10000);
    }
    // Integer digits are all shown; those after the point end where a double's certain digits do.
    const TCyfry pelne = RozlozNaCyfry(liczba, TCyfry::Najwiecej, uklad.poPrzecinku);
    const int znaczacych = std::clamp(pelne.wykladnik, CyfrZnaczacych, TCyfry::Najwiecej);
    return pelne.ile <= znaczacych ? pelne : RozlozNaCyfry(liczba, znaczacych, uklad.poPrzecinku);
}

// Writes one number through one section.
class TPisarz {
  public:
    TPisarz(std::u16string& wynik, TCyfry cyfry, const TUkladSekcji& uklad, const TUstawieniaFormatu& ustawienia)
        : wynik_(wynik), cyfry_(cyfry), uklad_(uklad), ustawienia_(ustawienia) {
        if (uklad.naukowy && cyfry_.ile > 0) { // the point moves to where the placeholders have it
            wykladnik_ = cyfry_.wykladnik - uklad.calkowitych;
            cyfry_.wykladnik = uklad.calkowitych;
        }
        miejsce_ = uklad.calkowitych - 1;
    }

    void Pisz(std::u16string_view sekcja) {
        TCzytnikSekcji czytnik(sekcja);
        for (TElement e = czytnik.Wez(); e.rodzaj != EElement::Koniec; e = czytnik.Wez()) {
            switch (e.rodzaj) {
            case EElement::Doslowny:
                wynik_ += e.znak;
                break;
            case EElement::Zero:
            case EElement::Krzyzyk:
                NastepneMiejsce();
                break;
            case EElement::Kropka:
                if (uklad_.calkowitych == 0 && !zalegle_)
                    PiszZalegle(0);
                break;
            case EElement::Wykladnik:
                PiszWykladnik(e);
                break;
            default:
                break;
            }
        }
    }

  private:
    // The next placeholder: the first one also takes the digits that have none.
    void NastepneMiejsce() {
        if (!zalegle_)
            PiszZalegle(std::max(miejsce_ + 1, 0));
        PiszMiejsce(miejsce_--);
    }

    void PiszZalegle(int doMiejsca) {
        zalegle_ = true;
        for (int m = cyfry_.wykladnik - 1; m >= doMiejsca; --m)
            PiszMiejsce(m);
    }

    void PiszMiejsce(int miejsce) {
        if (miejsce >= 0) {
            if (miejsce >= std::max(uklad_.pierwszeZero, cyfry_.wykladnik))
                return;
            wynik_ += static_cast<char16_t>(cyfry_.Cyfra(miejsce));
            if (uklad_.tysiace && miejsce > 0 && miejsce % 3 == 0 && ustawienia_.separatorTysiecy != 0)
                wynik_ += ustawienia_.separatorTysiecy;
            return;
        }
        const int jest = cyfry_.ile - cyfry_.wykladnik; // places after the point that hold digits
        if (-miejsce > std::max(uklad_.ostatnieZero, jest))
            return;
        if (miejsce == -1)
            wynik_ += ustawienia_.separatorDziesietny;
        wynik_ += static_cast<char16_t>(cyfry_.Cyfra(miejsce));
    }

    void PiszWykladnik(const TElement& e) {
        char bufor[8];
        char* const koniec = std::to_chars(bufor, bufor + sizeof bufor, std::abs(wykladnik_)).ptr;
        wynik_ += e.znak;
        if (wykladnik_ < 0)
            wynik_ += u'-';
        else if (e.plus)
            wynik_ += u'+';
        for (auto cyfr = koniec - bufor; cyfr < e.cyfrWykladnika; ++cyfr)
            wynik_ += u'0';
        wynik_.append(bufor, koniec);
    }

    std::u16string& wynik_;
    TCyfry cyfry_;
    const TUkladSekcji& uklad_;
    const TUstawieniaFormatu& ustawienia_;
    int wykladnik_ = 0;
    int miejsce_ = 0;      // of the next placeholder
    bool zalegle_ = false; // the digits before the first placeholder are written
};

} // namespace

namespace {

[[nodiscard]] std::u16string Ogolnie(double liczba, const TUstawieniaFormatu& ustawienia) {
    return FloatNaTekst(liczba, ustawienia);
}

[[nodiscard]] std::u16string Ogolnie(TLiczbaDziesietna liczba, const TUstawieniaFormatu& ustawienia) {
    return FormatujLiczbe(u"0.####", liczba, ustawienia);
}

template <class TLiczba>
std::u16string FormatujKazda(std::u16string_view maska, TLiczba liczba, const TUstawieniaFormatu& ustawienia) {
    if (!JestSkonczona(liczba))
        return Ogolnie(liczba, ustawienia);
    const TSekcje sekcje = PodzielMaske(maska);
    // The section goes by the number, and once more when the number rounds to zero in it.
    std::u16string_view sekcja = sekcje[0];
    bool wlasnaUjemna = false;
    if (ZnakLiczby(liczba) < 0 && !sekcje[1].empty()) {
        sekcja = sekcje[1];
        wlasnaUjemna = true;
    } else if (ZnakLiczby(liczba) == 0 && !sekcje[2].empty()) {
        sekcja = sekcje[2];
    }
    if (sekcja.empty())
        return Ogolnie(liczba, ustawienia);
    TUkladSekcji uklad = ZbadajSekcje(sekcja);
    TCyfry cyfry = CyfrySekcji(liczba, uklad);
    if (cyfry.ile == 0 && ZnakLiczby(liczba) != 0) {
        sekcja = sekcje[2].empty() ? sekcje[0] : sekcje[2];
        if (sekcja.empty())
            return u"0";
        uklad = ZbadajSekcje(sekcja);
        cyfry = CyfrySekcji(0.0, uklad);
    }
    if (std::is_same_v<TLiczba, double> && !uklad.naukowy && cyfry.wykladnik > CyfrCalkowitych)
        return Ogolnie(liczba, ustawienia);
    std::u16string wynik;
    if (cyfry.ujemna && !wlasnaUjemna)
        wynik += u'-';
    TPisarz(wynik, cyfry, uklad, ustawienia).Pisz(sekcja);
    return wynik;
}

} // namespace

std::u16string FormatujLiczbe(std::u16string_view maska, double liczba, const TUstawieniaFormatu& ustawienia) {
    return FormatujKazda(maska, liczba, ustawienia);
}

std::u16string FormatujLiczbe(std::u16string_view maska, TLiczbaDziesietna liczba,
                              const TUstawieniaFormatu& ustawienia) {
    return FormatujKazda(maska, liczba, ustawienia);
}

} // namespace ztok
