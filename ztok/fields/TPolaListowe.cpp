#include "ztok/fields/TPolaListowe.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <type_traits>
#include <utility>

#include "ztok/fields/Konwersje.h"
#include "ztok/fields/TPolaLiczbowe.h"
#include "ztok/fields/TPolaTekstowe.h"
#include "ztok/fields/WariantTekstowy.h"
#include "ztok/lists/TPorownywaczDanych.h"
#include "ztok/persist/TOdczytywaczTekstu.h"
#include "ztok/persist/TZapisywaczTekstu.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/LiczbyTekst.h"
#include "ztok/platform/TStrumien.h"
#include "ztok/platform/TWariant.h"
#include "ztok/util/Ztfunbazowe.h"

namespace ztok {

ZTOK_KLASA_DEF(TPoleIntList, TObiektBazowy)
ZTOK_KLASA_DEF(TPoleDoubleList, TObiektBazowy)
ZTOK_KLASA_DEF(TPoleStrList, TObiektBazowy)
ZTOK_KLASA_DEF(TPoleWideStrList, TObiektBazowy)

TPoleIntList::~TPoleIntList() { DokonczZycie(); }
TPoleDoubleList::~TPoleDoubleList() { DokonczZycie(); }
TPoleStrList::~TPoleStrList() { DokonczZycie(); }
TPoleWideStrList::~TPoleWideStrList() { DokonczZycie(); }

namespace {

template <class W> constexpr bool kTekst = std::is_same_v<W, std::u16string>;

// --- values as text for display

constexpr std::u16string_view kKoniecLinii = u"\r\n";

void DopiszWiersz(std::u16string& cel, std::u16string_view tekst) {
    if (!tekst.empty() && tekst.front() != u'"' && tekst.find_first_of(kKoniecLinii) == std::u16string_view::npos) {
        cel += tekst;
        return;
    }
    cel += u'"';
    for (const char16_t znak : tekst)
        cel.append(znak == u'"' ? 2 : 1, znak);
    cel += u'"';
}

// Takes one text off the front of the lines, with its line end.
std::u16string ZdejmijWiersz(std::u16string_view& tekst) {
    std::u16string wiersz;
    std::size_t i = 0;
    if (tekst.front() == u'"') {
        for (i = 1; i < tekst.size(); ++i) {
            if (tekst[i] == u'"' && (++i == tekst.size() || tekst[i] != u'"'))
                break;
            wiersz += tekst[i];
        }
    }
    const std::size_t koniec = std::min(tekst.find_first_of(kKoniecLinii, i), tekst.size());
    wiersz += tekst.substr(i, koniec - i);
    tekst.remove_prefix(koniec);
    if (tekst.starts_with(kKoniecLinii))
        tekst.remove_prefix(kKoniecLinii.size());
    else if (!tekst.empty())
        tekst.remove_prefix(1);
    return wiersz;
}

template <class W> std::u16string LiczbaNaTekst(W liczba) {
    if constexpr (std::is_same_v<W, double>)
        return FloatNaTekst(liczba, UstawieniaProcesu());
    else
        return IntNaTekst(liczba);
}

template <class W> W WartoscZTekstu(std::u16string_view tekst) {
    if constexpr (std::is_same_v<W, double>)
        return ZTOKStrToFloat(tekst);
    else
        return TekstNaInt(tekst);
}

template <class W> W WartoscZWariantu(const TWariant& wariant) {
    if constexpr (kTekst<W>)
        return wariant.JakoTekst16();
    else if constexpr (std::is_same_v<W, double>)
        return wariant.JakoDouble();
    else
        return wariant.JakoInt32();
}

// --- text form

constexpr std::size_t kWiersz = 64; // characters of numbers on a line, with what parts them

// The field class that shapes and writes a single value.
template <class W>
using TPoleWartosci = std::conditional_t<kTekst<W>, TPoleString,
                                         std::conditional_t<std::is_same_v<W, double>, TPoleDouble, TPoleInteger>>;

} // namespace

// --- values

template <class W> void TPoleListyWartosci<W>::UstawWartosci(std::vector<W> wartosci) noexcept {
    wartosci_ = std::move(wartosci);
    maWartosc_ = true;
}

template <class W> W TPoleListyWartosci<W>::Wartosc(std::int32_t indeks) const {
    return WZakresie(indeks) ? wartosci_[static_cast<std::size_t>(indeks)] : W();
}

template <class W> bool TPoleListyWartosci<W>::UstawWartosc(std::int32_t indeks, W wartosc) {
    if (!WZakresie(indeks))
        return false;
    wartosci_[static_cast<std::size_t>(indeks)] = std::move(wartosc);
    maWartosc_ = true;
    return true;
}

template <class W> std::int32_t TPoleListyWartosci<W>::Dodaj(W wartosc) {
    wartosci_.push_back(std::move(wartosc));
    maWartosc_ = true;
    return Ile() - 1;
}

template <class W> bool TPoleListyWartosci<W>::Wstaw(std::int32_t indeks, W wartosc) {
    if (indeks != Ile() && !WZakresie(indeks))
        return false;
    wartosci_.insert(wartosci_.begin() + indeks, std::move(wartosc));
    maWartosc_ = true;
    return true;
}

template <class W> bool TPoleListyWartosci<W>::Usun(std::int32_t indeks) {
    if (!WZakresie(indeks))
        return false;
    wartosci_.erase(wartosci_.begin() + indeks);
    return true;
}

template <class W> std::int32_t TPoleListyWartosci<W>::Znajdz(const W& wartosc, std::int32_t od) const noexcept {
    for (std::int32_t i = std::max(od, 0); i < Ile(); ++i)
        if (wartosci_[static_cast<std::size_t>(i)] == wartosc)
            return i;
    return -1;
}

template <class W> void TPoleListyWartosci<W>::Sortuj(TRodzajSortowania kierunek) {
    const auto przed = [&](const W& a, const W& b) {
        if constexpr (std::is_same_v<W, double>)
            if (std::isnan(a) || std::isnan(b))
                return std::isnan(b) && !std::isnan(a);
        const int znak = PorownajWartosci(a, b, nullptr);
        return kierunek == rsRosnaco ? znak < 0 : znak > 0;
    };
    std::stable_sort(wartosci_.begin(), wartosci_.end(), przed);
}

template <class W> bool TPoleListyWartosci<W>::Szerokie() const noexcept {
    return KlasaListy() == TPoleWideStrList::KlasaStatyczna();
}

template <class W>
int TPoleListyWartosci<W>::PorownajWartosci(const W& a, const W& b, const TPorownywaczDanych* porownywacz) const {
    if constexpr (kTekst<W>) {
        const TRozmiarLiter rozmLiter = porownywacz == nullptr ? rlRozmLiterNiewazny : porownywacz->RozmLiter;
        if (Szerokie())
            return PorownajTekstySzerokie(a, b, rozmLiter, porownywacz == nullptr ? 0 : porownywacz->LocaleID);
        return PorownajTeksty(a, b, rozmLiter, porownywacz == nullptr ? DefZTOKLocaleID : porownywacz->LocaleID);
    } else {
        return static_cast<int>(a > b) - static_cast<int>(a < b);
    }
}

// --- the field

template <class W> bool TPoleListyWartosci<W>::PoleNiepuste(int nrPola) const {
    return nrPola == CalyObiekt ? maWartosc_ : WZakresie(nrPola);
}

template <class W> void TPoleListyWartosci<W>::UstawNiepuste(int nrPola, bool niepuste) {
    if (nrPola != CalyObiekt)
        return;
    if (niepuste)
        maWartosc_ = true;
    else
        ZerujDane();
}

template <class W> void TPoleListyWartosci<W>::ZerujDane() {
    std::vector<W>().swap(wartosci_);
    maWartosc_ = false;
}

template <class W> TWariant TPoleListyWartosci<W>::GetJakoVariant() const {
    std::vector<TWariant> elementy;
    elementy.reserve(wartosci_.size());
    for (const W& wartosc : wartosci_)
        elementy.emplace_back(wartosc);
    return TWariant::Tablica(std::move(elementy));
}

template <class W> void TPoleListyWartosci<W>::SetJakoVariant(const TWariant& wartosc) {
    if (wartosc.JestPustyLubNull()) {
        ZerujDane();
    } else if (wartosc.JestTekstem()) {
        SetJakoString(wartosc.JakoTekst16());
    } else if (wartosc.JestTablica()) {
        std::vector<W> wartosci;
        wartosci.reserve(wartosc.Elementy().size());
        for (const TWariant& element : wartosc.Elementy())
            wartosci.push_back(WartoscZWariantu<W>(element));
        UstawWartosci(std::move(wartosci));
    } else {
        UstawWartosci({WartoscZWariantu<W>(wartosc)});
    }
}

template <class W> std::u16string TPoleListyWartosci<W>::GetJakoString() const {
    std::u16string tekst;
    for (const W& wartosc : wartosci_) {
        if (&wartosc != wartosci_.data())
            tekst += kTekst<W> ? kKoniecLinii : std::u16string_view(u";");
        if constexpr (kTekst<W>)
            DopiszWiersz(tekst, wartosc);
        else
            tekst += LiczbaNaTekst(wartosc);
    }
    return tekst;
}

template <class W> void TPoleListyWartosci<W>::SetJakoString(std::u16string_view tekst) {
    std::vector<W> wartosci;
    if constexpr (kTekst<W>) {
        while (!tekst.empty())
            wartosci.push_back(ZdejmijWiersz(tekst));
    } else {
        for (bool dalej = !ZTOKTrim(tekst).empty(); dalej;) {
            const std::size_t srednik = tekst.find(u';');
            wartosci.push_back(WartoscZTekstu<W>(ZTOKTrim(tekst.substr(0, srednik))));
            dalej = srednik != std::u16string_view::npos;
            tekst.remove_prefix(dalej ? srednik + 1 : tekst.size());
        }
    }
    UstawWartosci(std::move(wartosci));
}

template <class W>
std::u16string TPoleListyWartosci<W>::WartWgMaski(std::u16string_view maska,
                                                  const TUstawieniaFormatu* ustawienia) const {
    if (maska.empty())
        return GetJakoString();
    std::u16string tekst;
    TPoleWartosci<W> pole;
    for (const W& wartosc : wartosci_) {
        if (&wartosc != wartosci_.data())
            tekst += kTekst<W> ? kKoniecLinii : std::u16string_view(u";");
        pole.UstawWartosc(wartosc);
        tekst += pole.WartWgMaski(maska, ustawienia);
    }
    return tekst;
}

template <class W>
std::int32_t TPoleListyWartosci<W>::PorownajZCecha(const TArgument& cecha, TRozmiarLiter rozmLiter,
                                                   std::uint32_t localeID) const {
    if (!cecha.JestTekst8() && !cecha.JestTekst16())
        return TObiektBazowy::PorownajZCecha(cecha, rozmLiter, localeID);
    const std::u16string tekst = GetJakoString();
    return Szerokie() ? PorownajTekstySzerokie(cecha.JakoTekst(), tekst, rozmLiter, localeID)
                      : PorownajTeksty(cecha.JakoTekst(), tekst, rozmLiter, localeID);
}

template <class W> std::u16string TPoleListyWartosci<W>::OpisTekstowy() const {
    std::u16string opis;
    for (const W& wartosc : wartosci_) {
        opis += &wartosc == wartosci_.data() ? u"" : u"; ";
        if constexpr (kTekst<W>)
            opis += wartosc;
        else
            opis += LiczbaNaTekst(wartosc);
    }
    return WJednejLinii(std::move(opis));
}

template <class W> void TPoleListyWartosci<W>::TrymujPolaTekstowe(bool /*podobiektyTez*/) {
    if constexpr (kTekst<W>)
        for (W& wartosc : wartosci_)
            wartosc = std::u16string(ZTOKTrim(wartosc));
}

template <class W> void TPoleListyWartosci<W>::PrzytnijPolaWgRozm(bool trymuj) {
    if (trymuj)
        TrymujPolaTekstowe(true);
}

template <class W> bool TPoleListyWartosci<W>::SaDaneUnicode(int nrPola) const {
    if constexpr (kTekst<W>)
        for (std::int32_t i = 0; i < Ile(); ++i)
            if ((nrPola == CalyObiekt || nrPola == i) && !MiesciSieWWin1250(wartosci_[static_cast<std::size_t>(i)]))
                return true;
    return false;
}

template <class W>
std::int32_t TPoleListyWartosci<W>::WykonajPorownanie(const TPole& inne, TPorownywaczDanych& porownywacz) const {
    SprawdzKlase(inne, KlasaListy());
    const auto& drugie = static_cast<const TPoleListyWartosci&>(inne).wartosci_;
    if (wartosci_.size() != drugie.size())
        return wartosci_.size() > drugie.size() ? 1 : -1;
    for (std::size_t i = 0; i < wartosci_.size(); ++i)
        if (const int znak = PorownajWartosci(wartosci_[i], drugie[i], &porownywacz); znak != 0)
            return znak;
    return 0;
}

template <class W> void TPoleListyWartosci<W>::WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& /*kopier*/) {
    SprawdzKlase(zrodlo, KlasaListy());
    const auto& lista = static_cast<const TPoleListyWartosci&>(zrodlo);
    wartosci_ = lista.wartosci_;
    maWartosc_ = lista.maWartosc_;
}

// --- binary form

template <class W> void TPoleListyWartosci<W>::WykonajZapis(TStrumien& strumien, TZapisywaczDanych& zapisywacz) const {
    TZapisywaczDanych::ZapiszLicznik31(strumien, static_cast<std::uint32_t>(wartosci_.size()));
    if constexpr (kTekst<W>) {
        for (const W& wartosc : wartosci_)
            TZapisywaczDanych::ZapiszWideString(strumien, wartosc, Szerokie() ? nullptr : &zapisywacz);
    } else {
        strumien.WriteBuffer(wartosci_.data(), wartosci_.size() * sizeof(W));
    }
}

template <class W> void TPoleListyWartosci<W>::WykonajOdczyt(TStrumien& strumien, TOdczytywaczDanych& odczytywacz) {
    ZerujDane();
    maWartosc_ = true;
    const std::uint32_t ile = odczytywacz.WczytajIleElementow(strumien, kTekst<W> ? 1 : sizeof(W));
    if constexpr (kTekst<W>) {
        for (std::uint32_t i = 0; i < ile; ++i) {
            odczytywacz.ZuzyjPamiec(sizeof(W));
            if (Szerokie())
                TOdczytywaczDanych::WczytajUtf8(strumien, wartosci_.emplace_back(), &odczytywacz);
            else
                TOdczytywaczDanych::WczytajWideString(strumien, wartosci_.emplace_back(), &odczytywacz);
        }
    } else {
        constexpr std::size_t krok = 0x4000; // a false count costs no more than the data that are there
        while (wartosci_.size() < ile) {
            const std::size_t mam = wartosci_.size();
            const std::size_t nowe = std::min(ile - mam, std::max(krok, mam));
            odczytywacz.ZuzyjPamiec(static_cast<std::int64_t>(nowe * sizeof(W)));
            wartosci_.resize(mam + nowe);
            try {
                strumien.ReadBuffer(wartosci_.data() + mam, nowe * sizeof(W));
            } catch (...) {
                wartosci_.resize(mam);
                throw;
            }
        }
    }
}

// --- text form

template <class W> void TPoleListyWartosci<W>::WykonajZapisTekstowy(TZapisywaczTekstu& zapisywacz) const {
    zapisywacz.ZwiekszAkapit();
    zapisywacz.ZapiszLinie("(");
    std::size_t wWierszu = 0;
    for (const W& wartosc : wartosci_) {
        if (&wartosc != wartosci_.data())
            zapisywacz.ZapiszTxt(";");
        if constexpr (kTekst<W>) {
            if (&wartosc != wartosci_.data())
                zapisywacz.NowaLinia();
            zapisywacz.ZapiszTekst(wartosc);
        } else {
            constexpr std::size_t najdluzsza = std::is_same_v<W, double> ? 24 : 11;
            if (wWierszu + najdluzsza > kWiersz) {
                zapisywacz.NowaLinia();
                wWierszu = 0;
            }
            if constexpr (std::is_same_v<W, double>)
                zapisywacz.ZapiszLiczbe(wartosc);
            else
                zapisywacz.ZapiszLiczbe(static_cast<std::int64_t>(wartosc));
            wWierszu += najdluzsza;
        }
    }
    zapisywacz.ZapiszTxt(")");
    zapisywacz.ZmniejszAkapit();
}

template <class W> void TPoleListyWartosci<W>::WykonajOdczytTekstowy(TOdczytywaczTekstu& odczytywacz) {
    ZerujDane();
    maWartosc_ = true;
    odczytywacz.WczytajWNawiasach([&] {
        odczytywacz.ZuzyjPamiec(sizeof(W));
        if constexpr (kTekst<W>)
            wartosci_.push_back(odczytywacz.WczytajDowolnyTekst());
        else if constexpr (std::is_same_v<W, double>)
            wartosci_.push_back(odczytywacz.WczytajRzeczywista());
        else
            wartosci_.push_back(WczytajLiczbe<W>(odczytywacz.Parser));
    });
}

template class TPoleListyWartosci<std::int32_t>;
template class TPoleListyWartosci<double>;
template class TPoleListyWartosci<std::u16string>;

} // namespace ztok
