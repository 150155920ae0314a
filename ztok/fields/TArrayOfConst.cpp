#include "ztok/fields/TArrayOfConst.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "ztok/fields/Konwersje.h"
#include "ztok/kernel/JadroBiezace.h"
#include "ztok/kernel/NumeryKlas.h"
#include "ztok/lists/TKopierDanych.h"
#include "ztok/lists/TListaBazowa.h"
#include "ztok/lists/TPorownywaczDanych.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Interfejsy.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/LiczbyTekst.h"
#include "ztok/platform/TPierwszyBlad.h"
#include "ztok/platform/TWariant.h"
#include "ztok/platform/Wyjatki.h"
#include "ztok/util/ZTBledy.h"
#include "ztok/util/Zagniezdzenie.h"

namespace ztok {

ZTOK_KLASA_DEF(TArrayOfConst, TObiektBazowy)

namespace {

// The object of the model that an argument of the caller's names; null when it names none.
TObiektBazowy* ObiektModelu(const TArgument& wartosc) noexcept {
    TObiektOgolny* obiekt = wartosc.Tag() == TTag::Object ? wartosc.Obiekt() : nullptr;
    return obiekt != nullptr && obiekt->Klasa()->Ma(ckObiektBazowy) ? static_cast<TObiektBazowy*>(obiekt) : nullptr;
}

TArgument BezObiektu() noexcept { return {static_cast<const TObiektOgolny*>(nullptr)}; }

} // namespace

TArrayOfConst::TArrayOfConst(TObiektBazowy* wlasciciel) : TObiektBazowy(wlasciciel) {}

TArrayOfConst::~TArrayOfConst() { DokonczZycie(); }

// --- elements and what they hold

TArrayOfConst::TElement TArrayOfConst::Przyjmij(const TArgument& wartosc) {
    TElement element{wartosc, {}};
    // Of an element of its own the array knows what it is without looking: a raw object, or a class, may be gone.
    const std::size_t wlasny = NrWlasnego(wartosc);
    element.opieka = wlasny < elementy_.size() ? opieka_[wlasny] : OpiekaWartosci(wartosc);
    RejestrujKlase(KlasaONumerze(element.opieka.klasa));
    if (const TObiektBazowy* wzor = std::exchange(element.opieka.obiekt, nullptr); wzor != nullptr) {
        element.opieka.obiekt = wzor->KlonujObiekt(false).Oddaj();
        element.wartosc = TArgument(element.opieka.obiekt);
    } else if (element.wartosc.Tag() == TTag::Interface && element.wartosc.Interfejs() != nullptr) {
        element.wartosc.Interfejs()->_AddRef();
    }
    return element;
}

TArrayOfConst::TOpieka TArrayOfConst::OpiekaWartosci(const TArgument& wartosc) {
    if (wartosc.Tag() == TTag::Class)
        return {nullptr, NumerKlasy(wartosc.Klasa())};
    if (wartosc.Tag() == TTag::Object && wartosc.Obiekt() != nullptr)
        return {ObiektModelu(wartosc), NumerKlasy(wartosc.Obiekt()->Klasa())};
    return {};
}

std::size_t TArrayOfConst::NrWlasnego(const TArgument& wartosc) const noexcept {
    const TArgument* poczatek = elementy_.data();
    const bool nasz = std::less_equal<>()(poczatek, &wartosc) && std::less<>()(&wartosc, poczatek + elementy_.size());
    return nasz ? static_cast<std::size_t>(&wartosc - poczatek) : elementy_.size();
}

void TArrayOfConst::Porzuc(TElement& element) {
    const TOpieka opieka = std::exchange(element.opieka, {});
    const TArgument wartosc = std::exchange(element.wartosc, TArgument(0));
    if (opieka.obiekt != nullptr) {
        TPierwszyBlad blad;
        ZwolnijTrzymany(opieka.obiekt, blad);
        blad.Rzuc();
    } else if (wartosc.Tag() == TTag::Interface && wartosc.Interfejs() != nullptr) {
        wartosc.Interfejs()->_Release();
    }
}

void TArrayOfConst::SprawdzMiejsce() {
    if (Ile() >= MaksElementow)
        ZTErrorFmt(Komunikat(kmZlaLiczbaElementow), {NazwaKlasy(), std::int64_t{Ile()} + 1});
    if (elementy_.size() == elementy_.capacity())
        elementy_.reserve(2 * elementy_.size() + 4);
    if (opieka_.size() == opieka_.capacity())
        opieka_.reserve(2 * opieka_.size() + 4);
}

void TArrayOfConst::SprawdzIndeks(std::int32_t nr) const {
    if (nr < 0 || nr >= Ile())
        ZTErrorFmt(Komunikat(kmIndeksPozaZakresem), {NazwaKlasy(), nr});
}

void TArrayOfConst::Wloz(std::int32_t gdzie, TElement element) {
    try {
        SprawdzMiejsce();
    } catch (...) {
        Porzuc(element);
        throw;
    }
    Przejmij(element.opieka.obiekt);
    const std::int32_t miejsce = std::clamp(gdzie, 0, Ile());
    elementy_.insert(elementy_.begin() + miejsce, std::move(element.wartosc)); // has room: cannot fail
    opieka_.insert(opieka_.begin() + miejsce, element.opieka);
    niepuste_ = true;
}

void TArrayOfConst::Przejmij(TObiektBazowy* obiekt) {
    if (obiekt == nullptr)
        return;
    PoPrzyjeciu(*obiekt, *this);
}

void TArrayOfConst::Podmien(std::int32_t nr, TElement element) {
    Przejmij(element.opieka.obiekt);
    std::swap(elementy_[static_cast<std::size_t>(nr)], element.wartosc);
    std::swap(opieka_[static_cast<std::size_t>(nr)], element.opieka);
    niepuste_ = true;
    Porzuc(element);
}

TArrayOfConst::TElement TArrayOfConst::WyjmijElement(std::int32_t nr) noexcept {
    TElement element{std::move(elementy_[static_cast<std::size_t>(nr)]), opieka_[static_cast<std::size_t>(nr)]};
    elementy_.erase(elementy_.begin() + nr);
    opieka_.erase(opieka_.begin() + nr);
    niepuste_ = true;
    return element;
}

TObiektBazowy& TArrayOfConst::DodajNowy(const TKlasa& klasa) {
    RejestrujKlase(&klasa);
    TObiektBazowy* obiekt = nullptr;
    {
        const TTworzenieCzesci tworzenie(*this);
        obiekt = static_cast<TObiektBazowy*>(klasa.utworz(this));
    }
    Wloz(MaxInt, {TArgument(obiekt), {obiekt, NumerKlasy(&klasa)}});
    return *obiekt;
}

const TArgument& TArrayOfConst::Element(std::int32_t nr) const {
    SprawdzIndeks(nr);
    return elementy_[static_cast<std::size_t>(nr)];
}

void TArrayOfConst::Wstaw(std::int32_t gdzie, const TArgument& wartosc) { Wloz(gdzie, Przyjmij(wartosc)); }

void TArrayOfConst::DodajWszystkie(TArgumenty wartosci) {
    const std::size_t wlasne = wartosci.empty() ? elementy_.size() : NrWlasnego(wartosci.front());
    if (wlasne == elementy_.size()) {
        for (const TArgument& wartosc : wartosci)
            Dodaj(wartosc);
    } else {
        // They move when the array grows, and a hook of an object that is copied may take some away.
        for (std::size_t i = 0; i < wartosci.size() && wlasne + i < elementy_.size(); ++i)
            Dodaj(elementy_[wlasne + i]);
    }
    niepuste_ = true;
}

TObiektBazowy* TArrayOfConst::DodajObiekt(TWlasny<TObiektBazowy> obiekt, std::int32_t gdzie) {
    if (!obiekt) {
        Wloz(gdzie, {BezObiektu(), {}});
        return nullptr;
    }
    try {
        SprawdzPrzyjecie(*this, *obiekt);
    } catch (...) {
        static_cast<void>(obiekt.Oddaj());
        throw;
    }
    RejestrujKlase(obiekt->Klasa());
    TElement element{TArgument(obiekt.get()), {obiekt.get(), NumerKlasy(obiekt->Klasa())}};
    TObiektBazowy* wynik = obiekt.Oddaj();
    Wloz(gdzie, std::move(element));
    return wynik;
}

void TArrayOfConst::Ustaw(std::int32_t nr, const TArgument& wartosc) {
    SprawdzIndeks(nr);
    TElement element = Przyjmij(wartosc);
    if (nr < Ile()) // a hook of the object copied may have taken elements away
        Podmien(nr, std::move(element));
    else
        Wloz(MaxInt, std::move(element));
}

void TArrayOfConst::UstawWszystkie(TArgumenty wartosci) {
    // Made apart first: the values may be those of the array, and an error leaves it as it was.
    TArrayOfConst nowa;
    for (const TArgument& wartosc : wartosci)
        nowa.Wloz(MaxInt, Przyjmij(wartosc));
    for (std::int32_t i = 0; i < nowa.Ile(); ++i)
        Przejmij(nowa.Obiekt(i));
    elementy_.swap(nowa.elementy_);
    opieka_.swap(nowa.opieka_);
    niepuste_ = true;
    nowa.ZerujDane(); // errors of the old elements are the caller's
}

bool TArrayOfConst::Usun(std::int32_t nr) {
    if (nr < 0 || nr >= Ile())
        return false;
    TElement element = WyjmijElement(nr);
    Porzuc(element);
    return true;
}

TWlasny<TObiektBazowy> TArrayOfConst::WyjmijObiekt(std::int32_t nr) {
    if (Obiekt(nr) == nullptr)
        return nullptr;
    TWlasny<TObiektBazowy> obiekt(WyjmijElement(nr).opieka.obiekt);
    PoOddaniu(*obiekt);
    return obiekt;
}

std::int32_t TArrayOfConst::Znajdz(const TArgument& wartosc, std::int32_t od) const {
    TPorownywaczDanych porownywacz(nullptr, nullptr, rpWszystkiePola, rlRozmLiterWazny, LocaleNiezmienny,
                                   tprRefJakoWskazn);
    const std::size_t wlasny = NrWlasnego(wartosc);
    const TOpieka opieka = wlasny < elementy_.size() ? opieka_[wlasny] : OpiekaWartosci(wartosc);
    // Objects that hold unequal numbers without an order, as NaN, are told apart where they can be: here.
    const auto rowny = [&](const TArgument& element, const TOpieka& opiekaElementu) {
        if (element.Tag() != wartosc.Tag())
            return false;
        if (element.Tag() == TTag::Extended)
            return element.Rzeczywista() == wartosc.Rzeczywista();
        if (element.Tag() == TTag::Variant)
            return element.Wariant() == wartosc.Wariant();
        return PorownajElement(element, opiekaElementu, wartosc, opieka, porownywacz) == 0;
    };
    for (std::int32_t i = std::max(od, 0); i < Ile(); ++i)
        if (rowny(elementy_[static_cast<std::size_t>(i)], opieka_[static_cast<std::size_t>(i)]))
            return i;
    return -1;
}

void TArrayOfConst::RejestrujKlase(const TKlasa* klasa) {
    if (klasa == nullptr)
        return;
    const std::uint32_t numer = NumerKlasy(klasa);
    if (std::find(klasy_.begin(), klasy_.end(), numer) != klasy_.end())
        return;
    JadroBiezace().RejestrujKlase(klasa);
    klasy_.push_back(numer);
}

const TKlasa* TArrayOfConst::ZnanaKlasa(std::int32_t nr) const noexcept {
    return nr >= 0 && nr < IleKlas() ? KlasaONumerze(klasy_[static_cast<std::size_t>(nr)]) : nullptr;
}

std::u16string_view TArrayOfConst::NazwaKlasyElementu(const TOpieka& opieka) noexcept {
    const TKlasa* klasa = KlasaONumerze(opieka.klasa);
    return klasa == nullptr ? std::u16string_view() : klasa->nazwa;
}

// --- as a field

void TArrayOfConst::ZerujDane() {
    TPierwszyBlad blad;
    while (!elementy_.empty()) { // a hook of an object that dies may add another
        // Out of the array first: an object that dies finds none of its neighbours half dead.
        std::vector<TArgument> elementy;
        std::vector<TOpieka> opieka;
        elementy.swap(elementy_);
        opieka.swap(opieka_);
        for (std::size_t i = elementy.size(); i-- > 0;) {
            TElement element{std::move(elementy[i]), opieka[i]};
            blad.Wykonaj([&element] { Porzuc(element); });
        }
    }
    niepuste_ = false;
    blad.Rzuc();
}

bool TArrayOfConst::PoleNiepuste(int nrPola) const {
    return nrPola == CalyObiekt ? niepuste_ : nrPola >= 0 && nrPola < Ile();
}

void TArrayOfConst::UstawNiepuste(int nrPola, bool niepuste) {
    if (nrPola != CalyObiekt) {
        if (!niepuste)
            Usun(nrPola);
    } else if (niepuste) {
        niepuste_ = true;
    } else {
        ZerujDane();
    }
}

bool TArrayOfConst::ObiektIPole(std::u16string_view sciezka, bool tworz, TObiektBazowy*& obiekt, int& nrPola) {
    std::u16string_view numer;
    if (!TListaBazowa::WydzielNumerElem(sciezka, numer))
        return TObiektBazowy::ObiektIPole(sciezka, tworz, obiekt, nrPola);
    std::int32_t nr = -1;
    TObiektBazowy* element = SprobujTekstNaInt(numer, nr) ? Obiekt(nr) : nullptr;
    obiekt = nullptr;
    nrPola = CalyObiekt;
    return element != nullptr && element->ObiektIPole(sciezka, tworz, obiekt, nrPola);
}

void TArrayOfConst::PrzytnijPolaWgRozm(bool trymuj) {
    const TPoziom poziom(ZagniezdzenieWatku(), *this);
    for (std::int32_t i = Ile() - 1; i >= 0; --i)
        if (TObiektBazowy* obiekt = Obiekt(i); JestDoObejscia(obiekt))
            obiekt->PrzytnijPolaWgRozm(trymuj);
}

void TArrayOfConst::TrymujPolaTekstowe(bool podobiektyTez) {
    const TPoziom poziom(ZagniezdzenieWatku(), *this);
    for (std::int32_t i = Ile() - 1; i >= 0; --i)
        if (TObiektBazowy* obiekt = Obiekt(i); JestDoObejscia(obiekt))
            obiekt->TrymujPolaTekstowe(podobiektyTez);
}

bool TArrayOfConst::SaDaneUnicode(int nrPola) const {
    const TPoziom poziom(ZagniezdzenieWatku(), *this);
    const auto element = [this](std::int32_t nr) {
        const TObiektBazowy* obiekt = Obiekt(nr);
        return obiekt != nullptr ? JestDoObejscia(obiekt) && obiekt->SaDaneUnicode(CalyObiekt)
                                 : Element(nr).JestTekst16() && !MiesciSieWWin1250(Element(nr).JakoTekst());
    };
    if (nrPola != CalyObiekt)
        return PoleNiepuste(nrPola) && element(nrPola);
    for (std::int32_t i = 0; i < Ile(); ++i)
        if (element(i))
            return true;
    return false;
}

// --- variant and text for display

namespace {

TWariant WariantElementu(const TArgument& wartosc) {
    switch (wartosc.Tag()) {
    case TTag::Integer:
        return TWariant(static_cast<std::int32_t>(wartosc.Calkowita()));
    case TTag::Boolean:
        return TWariant(wartosc.Logiczna());
    case TTag::Extended:
        return TWariant(static_cast<double>(wartosc.Rzeczywista()));
    case TTag::Currency:
        return TWariant(TWaluta{wartosc.Calkowita()});
    case TTag::Int64:
        return TWariant(wartosc.Calkowita());
    case TTag::Char:
        return TWariant::AnsiString(std::string(1, static_cast<char>(wartosc.Calkowita())));
    case TTag::ShortString:
    case TTag::PChar:
    case TTag::AnsiString:
        return TWariant::AnsiString(wartosc.Bajty());
    case TTag::WideString:
        return TWariant::WideString(wartosc.Tekst());
    case TTag::WideChar:
    case TTag::PWideChar:
    case TTag::UnicodeString:
        return TWariant(wartosc.JakoTekst());
    case TTag::Variant:
        return wartosc.Wariant();
    case TTag::Pointer:
    case TTag::Object:
    case TTag::Class:
    case TTag::Interface:
        break; // an address is no value
    }
    return TWariant::Null();
}

TArgument ElementZWariantu(const TWariant& wartosc) {
    switch (wartosc.Typ()) {
    case TTypWariantu::Empty:
    case TTypWariantu::Null:
        return {nullptr};
    case TTypWariantu::Shortint:
    case TTypWariantu::Byte:
    case TTypWariantu::Smallint:
    case TTypWariantu::Word:
    case TTypWariantu::Integer:
        return {wartosc.JakoInt32()};
    case TTypWariantu::Cardinal:
    case TTypWariantu::Int64:
    case TTypWariantu::UInt64:
        return {wartosc.JakoInt64()};
    case TTypWariantu::Single:
    case TTypWariantu::Double:
    case TTypWariantu::Date:
        return {wartosc.JakoDouble()};
    case TTypWariantu::Currency:
        return {wartosc.JakoWaluta()};
    case TTypWariantu::Boolean:
        return {wartosc.JakoBool()};
    case TTypWariantu::AnsiString:
        return {wartosc.JakoTekst8()};
    case TTypWariantu::UnicodeString:
        return {wartosc.JakoTekst16()};
    case TTypWariantu::WideString:
        return TArgument::WideString(wartosc.JakoTekst16());
    default:
        return {wartosc}; // an array inside the array
    }
}

std::u16string TekstWariantu(const TWariant& wariant) {
    if (wariant.JestTablica())
        return Formatuj(Komunikat(kmIleElementow), {static_cast<std::int64_t>(wariant.Elementy().size())});
    try {
        return wariant.JakoTekst16();
    } catch (const EBladWariantu&) { // a date beyond the calendar
        return u"?";
    }
}

} // namespace

TWariant TArrayOfConst::GetJakoVariant() const {
    std::vector<TWariant> warianty;
    warianty.reserve(elementy_.size());
    for (const TArgument& element : elementy_)
        warianty.push_back(WariantElementu(element));
    return TWariant::Tablica(std::move(warianty));
}

void TArrayOfConst::SetJakoVariant(const TWariant& wartosc) {
    if (wartosc.JestPustyLubNull()) {
        ZerujDane();
        return;
    }
    std::vector<TArgument> wartosci;
    if (!wartosc.JestTablica()) {
        wartosci.push_back(ElementZWariantu(wartosc));
    } else {
        for (const TWariant& wariant : wartosc.Elementy())
            wartosci.push_back(ElementZWariantu(wariant));
    }
    UstawWszystkie(TArgumenty(wartosci));
}

std::u16string TArrayOfConst::GetJakoString() const {
    std::u16string tekst;
    for (std::size_t i = 0; i < elementy_.size(); ++i) {
        const TArgument& element = elementy_[i];
        if (i > 0)
            tekst += u"; ";
        if (opieka_[i].obiekt != nullptr)
            tekst += opieka_[i].obiekt->OpisTekstowy();
        else if (element.Tag() == TTag::Object || element.Tag() == TTag::Class)
            tekst += NazwaKlasyElementu(opieka_[i]);
        else if (element.Tag() == TTag::Boolean)
            tekst += NieTakWide[element.Logiczna() ? 1 : 0];
        else
            tekst += TekstWariantu(WariantElementu(element));
    }
    return tekst;
}

void TArrayOfConst::SetJakoString(std::u16string_view tekst) {
    if (!tekst.empty())
        BladAbstrakcyjny(KlasaStatyczna(), u"SetJakoString");
    ZerujDane();
}

std::u16string TArrayOfConst::OpisTekstowy() const { return Formatuj(Komunikat(kmIleElementow), {Ile()}); }

// --- comparison and copy

namespace {

template <class T> std::int32_t Znak(const T& a, const T& b) {
    return static_cast<int>(std::less<T>()(b, a)) - static_cast<int>(std::less<T>()(a, b));
}

// Every two variants have an order here, also those that PorownajWarianty refuses: comparing data must not raise.
std::int32_t PorownajWariantyElementow(const TWariant& a, const TWariant& b, const TPorownywaczDanych& porownywacz) {
    if (a.Typ() != b.Typ())
        return Znak(a.Typ(), b.Typ());
    if (!a.JestTablica())
        return ZTOKVarCompare(a, b, porownywacz.RozmLiter, porownywacz.LocaleID);
    if (a.Elementy().size() != b.Elementy().size())
        return Znak(a.Elementy().size(), b.Elementy().size());
    for (std::size_t i = 0; i < a.Elementy().size(); ++i)
        if (const std::int32_t wynik = PorownajWariantyElementow(a.Elementy()[i], b.Elementy()[i], porownywacz);
            wynik != 0)
            return wynik;
    return 0;
}

} // namespace

std::int32_t TArrayOfConst::PorownajElement(const TArgument& a, const TOpieka& opiekaA, const TArgument& b,
                                            const TOpieka& opiekaB, TPorownywaczDanych& porownywacz) {
    const TObiektBazowy* obiektA = opiekaA.obiekt;
    const TObiektBazowy* obiektB = opiekaB.obiekt;
    if (a.Tag() != b.Tag())
        return Znak(a.Tag(), b.Tag());
    switch (a.Tag()) {
    case TTag::Integer:
    case TTag::Currency:
    case TTag::Int64:
        return Znak(a.Calkowita(), b.Calkowita());
    case TTag::Boolean:
        return Znak(a.Logiczna(), b.Logiczna());
    case TTag::Extended:
        return static_cast<int>(a.Rzeczywista() > b.Rzeczywista()) -
               static_cast<int>(a.Rzeczywista() < b.Rzeczywista());
    case TTag::Char:
    case TTag::ShortString:
    case TTag::PChar:
    case TTag::WideChar:
    case TTag::PWideChar:
    case TTag::AnsiString:
    case TTag::WideString:
    case TTag::UnicodeString:
        return PorownajTeksty(a.JakoTekst(), b.JakoTekst(), porownywacz.RozmLiter, porownywacz.LocaleID);
    case TTag::Class:
        return CompareStrSgn(NazwaKlasyElementu(opiekaA), NazwaKlasyElementu(opiekaB));
    case TTag::Variant:
        return PorownajWariantyElementow(a.Wariant(), b.Wariant(), porownywacz);
    case TTag::Object:
        if (obiektA == nullptr || obiektB == nullptr) {
            if (obiektA == obiektB) // neither is of the model
                return Znak<const void*>(a.Obiekt(), b.Obiekt());
            return obiektA != nullptr ? 1 : -1;
        }
        if (const int wynik = CompareStrSgn(obiektA->NazwaKlasy(), obiektB->NazwaKlasy()); wynik != 0)
            return wynik;
        return obiektA->Porownaj(*obiektB, &porownywacz);
    case TTag::Pointer:
        return Znak(a.Wskaznik(), b.Wskaznik());
    case TTag::Interface:
        return Znak<const void*>(a.Interfejs(), b.Interfejs());
    }
    return 0;
}

std::int32_t TArrayOfConst::WykonajPorownanie(const TPole& inne, TPorownywaczDanych& porownywacz) const {
    SprawdzKlase(inne, KlasaStatyczna());
    const auto& inna = static_cast<const TArrayOfConst&>(inne);
    if (Ile() != inna.Ile())
        return Znak(Ile(), inna.Ile());
    for (std::size_t i = 0; i < elementy_.size() && i < inna.elementy_.size(); ++i)
        if (const std::int32_t wynik =
                PorownajElement(elementy_[i], opieka_[i], inna.elementy_[i], inna.opieka_[i], porownywacz);
            wynik != 0)
            return wynik;
    return 0;
}

std::int32_t TArrayOfConst::PorownajZCecha(const TArgument& cecha, TRozmiarLiter rozmLiter,
                                           std::uint32_t localeID) const {
    if (cecha.JestTekst8() || cecha.JestTekst16())
        return PorownajTeksty(cecha.JakoTekst(), GetJakoString(), rozmLiter, localeID);
    if (const TObiektBazowy* obiekt = ObiektModelu(cecha); obiekt != nullptr && obiekt->JestKlasy(KlasaStatyczna()))
        return obiekt->PorownajZObiektem(*this, rozmLiter, localeID);
    return TObiektBazowy::PorownajZCecha(cecha, rozmLiter, localeID);
}

void TArrayOfConst::WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) {
    SprawdzKlase(zrodlo, KlasaStatyczna());
    const auto& wzor = static_cast<const TArrayOfConst&>(zrodlo);
    while (Ile() > wzor.Ile())
        Usun(Ile() - 1);
    for (std::int32_t i = 0; i < wzor.Ile(); ++i) {
        const TObiektBazowy* skad = wzor.Obiekt(i);
        TObiektBazowy* dokad = Obiekt(i); // kept when it can be: pointers at it stay valid
        if (skad == nullptr || dokad == nullptr || dokad->Klasa() != skad->Klasa()) {
            TElement element;
            if (skad != nullptr) {
                RejestrujKlase(skad->Klasa());
                dokad = skad->TworzInstancje(this).Oddaj();
                element = {TArgument(dokad), {dokad, NumerKlasy(dokad->Klasa())}};
            } else if (const TTag tag = wzor.Element(i).Tag(); tag == TTag::Object || tag == TTag::Class) {
                element = {wzor.Element(i), wzor.opieka_[static_cast<std::size_t>(i)]};
                RejestrujKlase(KlasaONumerze(element.opieka.klasa));
            } else {
                element = Przyjmij(wzor.Element(i));
            }
            if (i < Ile())
                Podmien(i, std::move(element));
            else
                Wloz(i, std::move(element));
        }
        // What was replaced may have taken elements of either array along when it died.
        if (skad != nullptr && skad == wzor.Obiekt(i) && dokad == Obiekt(i))
            dokad->KopiujDane(*skad, &kopier);
    }
    niepuste_ = wzor.niepuste_;
}

} // namespace ztok
