// Paths: fields of a tree by name. The rules stand in docs/sciezki.md.
#include <exception>

#include "ztok/fields/Konwersje.h"
#include "ztok/fields/TArrayOfConst.h"
#include "ztok/fields/TPoleWskObiektu.h"
#include "ztok/kernel/JadroBiezace.h"
#include "ztok/kernel/Selektory.h"
#include "ztok/kernel/TObiekt.h"
#include "ztok/kernel/TOpisKlasy.h"
#include "ztok/lists/TListaBazowa.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/TWariant.h"
#include "ztok/util/ZTBledy.h"
#include "ztok/util/Zagniezdzenie.h"

namespace ztok {

namespace {

// A bad path: to callers a ZTException; here the walks over lists of mixed classes know it from other errors.
class EZlaSciezka : public ZTException {
  public:
    using ZTException::ZTException;
};

[[noreturn]] void ZlaSciezka(std::u16string_view operacja, std::u16string_view sciezka) {
    throw EZlaSciezka(Formatuj(Komunikat(kmBlednaSciezka), {operacja, Skrocony(sciezka)}));
}

constexpr std::u16string_view kDowolny = u"[?]"; // a step wherever it stands: a condition cannot hold "]"

// Pointers can lead round and round: a path has a bounded number of steps, as a tree has of levels.
thread_local int krokiSciezki = 0;

class TKrokSciezki {
  public:
    TKrokSciezki() noexcept { ++krokiSciezki; }
    TKrokSciezki(const TKrokSciezki&) = delete;
    TKrokSciezki& operator=(const TKrokSciezki&) = delete;
    ~TKrokSciezki() { --krokiSciezki; }
    [[nodiscard]] static bool Wolno() noexcept { return krokiSciezki < kZaglebienieDomyslne; }
};

// The field of a resolved path: the object itself for -1; null when it was never made.
TPole* PoleObiektu(TObiektBazowy& obiekt, int nrPola) {
    if (nrPola == CalyObiekt)
        return &obiekt;
    return obiekt.Klasa()->Ma(ckObiekt) ? static_cast<TObiekt&>(obiekt).Pole(nrPola) : nullptr;
}

} // namespace

// --- what a path leads to

bool TObiektBazowy::KlasaIPole(const TKlasa* od, std::u16string_view sciezka, const TKlasa*& klasa, int& nrPola) {
    // Every step takes something off the path, so the walk ends whatever the classes refer to.
    while (!sciezka.empty()) {
        if (od == nullptr)
            return false;
        if (od->Ma(ckLista)) {
            std::u16string_view numer;
            if (!TListaBazowa::WydzielNumerElem(sciezka, numer))
                return false;
            od = JadroKlas()->TypObiektowListy(od);
            continue;
        }
        if (!od->Ma(ckObiekt))
            return false;
        std::u16string_view reszta;
        WydzielNazwePola(sciezka, reszta);
        const TMigawkaOpisu& migawka = JadroBiezace().UtworzMigawke(od);
        const TListaWlasciwosci* pola = migawka.opis->GetListaWlasciwosci();
        int nr = -1;
        if (pola == nullptr || !pola->JestPoleONazwie(sciezka, nr))
            return false;
        if (reszta.empty()) {
            klasa = od;
            nrPola = nr;
            return true;
        }
        const TMigawkaOpisu::TPozycja& pozycja = migawka.pola[nr];
        od = pozycja.klasa != nullptr && pozycja.klasa->Ma(ckPoleWsk) && pozycja.wiersz != nullptr &&
                     pozycja.wiersz->klasa != nullptr
                 ? pozycja.wiersz->klasa()
                 : pozycja.klasa;
        sciezka = reszta;
    }
    klasa = od;
    nrPola = CalyObiekt;
    return od != nullptr;
}

bool TObiektBazowy::KlasaIPole(std::u16string_view sciezka, const TKlasa*& klasa, int& nrPola) const {
    return KlasaIPole(Klasa(), sciezka, klasa, nrPola);
}

bool TObiektBazowy::ObiektIPole(std::u16string_view sciezka, bool /*tworz*/, TObiektBazowy*& obiekt, int& nrPola) {
    obiekt = sciezka.empty() ? this : nullptr;
    nrPola = CalyObiekt;
    return sciezka.empty();
}

bool TObiekt::ObiektIPole(std::u16string_view sciezka, bool tworz, TObiektBazowy*& obiekt, int& nrPola) {
    if (sciezka.empty())
        return TObiektBazowy::ObiektIPole(sciezka, tworz, obiekt, nrPola);
    obiekt = nullptr;
    nrPola = CalyObiekt;
    std::u16string_view reszta;
    WydzielNazwePola(sciezka, reszta);
    const int nr = NrPolaONazwie(sciezka);
    if (nr < 0 || (tworz && !JestPole(nr, nullptr, true)))
        return false;
    if (reszta.empty()) {
        obiekt = this;
        nrPola = nr;
        return true;
    }
    TPole* pole = Pole(nr);
    if (pole == nullptr)
        return false;
    const std::uint32_t cechy = pole->Klasa()->cechy;
    if ((cechy & ckPoleWsk) != 0)
        pole = static_cast<TPoleWskObiektu*>(pole)->Obiekt();
    else if ((cechy & ckObiektBazowy) == 0)
        pole = nullptr;
    if (pole == nullptr || !TKrokSciezki::Wolno())
        return false;
    const TKrokSciezki krok;
    return static_cast<TObiektBazowy*>(pole)->ObiektIPole(reszta, tworz, obiekt, nrPola);
}

bool TListaBazowa::ObiektIPole(std::u16string_view sciezka, bool tworz, TObiektBazowy*& obiekt, int& nrPola) {
    if (sciezka.empty())
        return TObiektBazowy::ObiektIPole(sciezka, tworz, obiekt, nrPola);
    obiekt = nullptr;
    nrPola = CalyObiekt;
    std::u16string_view numer;
    if (!WydzielNumerElem(sciezka, numer) || !TKrokSciezki::Wolno())
        return false;
    const TKrokSciezki krok;
    try {
        TObiektBazowy* element = DajElemListy(numer, tworz);
        return element != nullptr && element->ObiektIPole(sciezka, tworz, obiekt, nrPola);
    } catch (const EWyjatek&) {
        obiekt = nullptr; // conditions that no element can meet lead nowhere
        return false;
    }
}

bool TObiektBazowy::SciezkaIstnieje(std::u16string_view sciezka) const {
    TObiektBazowy* obiekt = nullptr;
    int nrPola = CalyObiekt;
    return const_cast<TObiektBazowy*>(this)->ObiektIPole(sciezka, false, obiekt, nrPola);
}

// A path that ObiektIPole resolves gives an object: the analyzer cannot see it through the virtual call.
// NOLINTBEGIN(clang-analyzer-core.NonNullParamChecker,clang-analyzer-core.CallAndMessage)
TPole* TObiektBazowy::PoleONazwie(std::u16string_view sciezka) {
    TObiektBazowy* obiekt = nullptr;
    int nrPola = CalyObiekt;
    return ObiektIPole(sciezka, false, obiekt, nrPola) ? PoleObiektu(*obiekt, nrPola) : nullptr;
}

bool TObiektBazowy::CelSciezki(std::u16string_view operacja, std::u16string_view sciezka, TObiektBazowy*& obiekt,
                               int& nrPola) const {
    if (const_cast<TObiektBazowy*>(this)->ObiektIPole(sciezka, false, obiekt, nrPola))
        return true;
    // A good path may lead through objects that do not exist yet: there is no value then, and no error.
    const TKlasa* klasa = nullptr;
    if (!KlasaIPole(sciezka, klasa, nrPola))
        ZlaSciezka(operacja, sciezka);
    return false;
}

TObiekt& TObiektBazowy::CelZapisu(std::u16string_view operacja, std::u16string_view sciezka, int& nrPola) {
    TObiektBazowy* obiekt = nullptr;
    if (!ObiektIPole(sciezka, true, obiekt, nrPola) || nrPola == CalyObiekt || !obiekt->Klasa()->Ma(ckObiekt))
        ZlaSciezka(operacja, sciezka);
    auto& cel = static_cast<TObiekt&>(*obiekt);
    // The value of a pointer field is an address: nothing that comes as text may set it.
    if (const TKlasa* typ = cel.TypPolaNr(nrPola); typ != nullptr && typ->Ma(ckPoleWsk))
        ZlaSciezka(operacja, sciezka);
    return cel;
}

TWariant TObiektBazowy::GetVariantowoWgSciezki(std::u16string_view sciezka) const {
    TObiektBazowy* obiekt = nullptr;
    int nrPola = CalyObiekt;
    if (!CelSciezki(u"GetVariantowoWgSciezki", sciezka, obiekt, nrPola))
        return {};
    const TBlokadaObiektu blokada(*obiekt);
    const TPole* pole = PoleObiektu(*obiekt, nrPola);
    return pole == nullptr ? TWariant() : pole->GetJakoVariant();
}

void TObiektBazowy::SetVariantowoWgSciezki(std::u16string_view sciezka, const TWariant& wartosc) {
    int nrPola = CalyObiekt;
    CelZapisu(u"SetVariantowoWgSciezki", sciezka, nrPola).SetVariantowo(nrPola, wartosc);
}

std::u16string TObiektBazowy::GetTekstowoWgSciezki(std::u16string_view sciezka) const {
    TObiektBazowy* obiekt = nullptr;
    int nrPola = CalyObiekt;
    if (!CelSciezki(u"GetTekstowoWgSciezki", sciezka, obiekt, nrPola))
        return {};
    const TBlokadaObiektu blokada(*obiekt);
    const TPole* pole = PoleObiektu(*obiekt, nrPola);
    return pole == nullptr ? std::u16string() : pole->GetJakoString();
}

void TObiektBazowy::SetTekstowoWgSciezki(std::u16string_view sciezka, std::u16string_view tekst) {
    int nrPola = CalyObiekt;
    TObiekt& cel = CelZapisu(u"SetTekstowoWgSciezki", sciezka, nrPola);
    const TBlokadaObiektu blokada(cel);
    cel.DajPole(nrPola)->SetJakoString(tekst);
    cel.UstawNiepuste(nrPola, true);
    cel.SetBylyZmiany(nrPola);
}

std::u16string TObiektBazowy::DajTrescWgSciezki(std::u16string_view sciezka) const {
    TObiektBazowy* obiekt = nullptr;
    int nrPola = CalyObiekt;
    if (!const_cast<TObiektBazowy*>(this)->ObiektIPole(sciezka, false, obiekt, nrPola))
        return {};
    const TBlokadaObiektu blokada(*obiekt);
    const TPole* pole = PoleObiektu(*obiekt, nrPola);
    if (pole != nullptr && pole->Klasa()->Ma(ckPoleWsk))
        pole = static_cast<const TPoleWskObiektu*>(pole)->Obiekt();
    if (pole == nullptr)
        return {};
    return pole->Klasa()->Ma(ckObiektBazowy) ? static_cast<const TObiektBazowy*>(pole)->OpisTekstowy()
                                             : pole->GetJakoString();
}

std::u16string TObiektBazowy::WartWgMaski(std::u16string_view maska, const TUstawieniaFormatu* /*ustawienia*/) const {
    return DajTrescWgSciezki(maska);
}

// NOLINTEND(clang-analyzer-core.NonNullParamChecker,clang-analyzer-core.CallAndMessage)

// --- any element: the path up to "[?]" leads to a list, which goes through its elements

bool TObiektBazowy::ZDowolnym(std::u16string_view operacja, std::u16string_view sciezka, TListaBazowa*& lista,
                              std::u16string_view& odDowolnego) const {
    const std::size_t gdzie = sciezka.find(kDowolny);
    if (gdzie == std::u16string_view::npos)
        return false;
    odDowolnego = sciezka.substr(gdzie);
    lista = nullptr;
    // The walk goes deeper with each of them: as many as a path has steps.
    int ile = 0;
    for (std::size_t i = gdzie; i != std::u16string_view::npos; i = sciezka.find(kDowolny, i + 1))
        if (++ile > kZaglebienieDomyslne)
            ZlaSciezka(operacja, sciezka);
    const std::u16string_view przed = sciezka.substr(0, gdzie);
    TObiektBazowy* obiekt = nullptr;
    const TKlasa* klasa = nullptr;
    int nrPola = CalyObiekt;
    if (const_cast<TObiektBazowy*>(this)->ObiektIPole(przed, false, obiekt, nrPola)) {
        TPole* pole = PoleObiektu(*obiekt, nrPola);
        if (pole != nullptr && pole->Klasa()->Ma(ckPoleWsk))
            pole = static_cast<TPoleWskObiektu*>(pole)->Obiekt();
        if (pole != nullptr) {
            if (!pole->Klasa()->Ma(ckLista))
                ZlaSciezka(operacja, sciezka);
            lista = static_cast<TListaBazowa*>(pole);
            return true;
        }
        klasa = obiekt->Klasa();
    } else if (!KlasaIPole(przed, klasa, nrPola)) {
        ZlaSciezka(operacja, sciezka);
    }
    // Nothing there yet: as a list without elements, if the classes allow one.
    const TKlasa* typ = nrPola == CalyObiekt ? klasa : JadroKlas()->TypPolaKlasy(klasa, nrPola);
    if (typ == nullptr || !typ->Ma(ckLista | ckPoleWsk))
        ZlaSciezka(operacja, sciezka);
    return true;
}

// --- features

namespace {

// A field that was never made counts as a new one of its class.
std::int32_t PorownajDomyslne(const TKlasa* typ, const TArgument& cecha, TRozmiarLiter rozmLiter,
                              std::uint32_t localeID) {
    const TWlasny<TPole> domyslne(static_cast<TPole*>(typ->utworz(nullptr)));
    return domyslne->PorownajZCecha(cecha, rozmLiter, localeID);
}

} // namespace

std::int32_t TObiektBazowy::PorPoleNrZCecha(int nrPola, const TArgument& cecha, TRozmiarLiter rozmLiter,
                                            std::uint32_t localeID) const {
    if (nrPola != CalyObiekt)
        ZTErrorFmt(Komunikat(kmBrakPola), {NazwaKlasy(), nrPola});
    return PorownajZCecha(cecha, rozmLiter, localeID);
}

std::int32_t TObiekt::PorPoleNrZCecha(int nrPola, const TArgument& cecha, TRozmiarLiter rozmLiter,
                                      std::uint32_t localeID) const {
    const TBlokadaObiektu blokada(*this);
    const TPole* pole = nrPola == CalyObiekt ? this : Pole(nrPola);
    if (pole != nullptr)
        return pole->PorownajZCecha(cecha, rozmLiter, localeID);
    const TKlasa* typ = TypPolaNr(nrPola);
    if (typ == nullptr || typ->utworz == nullptr)
        ZTErrorFmt(Komunikat(kmBrakPola), {NazwaKlasy(), nrPola});
    return PorownajDomyslne(typ, cecha, rozmLiter, localeID);
}

bool TObiektBazowy::PoleNrMaCeche(int nrPola, const TArgument& cecha, TRozmiarLiter rozmLiter) const {
    return PorPoleNrZCecha(nrPola, cecha, rozmLiter, LocaleWin1250) == 0;
}

bool TObiektBazowy::MaCechy(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter) const {
    SprawdzDlugosci(u"MC", pola, wartosci);
    const bool ocenione = TOcenione::Trwa();
    if (!ocenione)
        SprawdzSelektory(u"MC", *this, pola);
    for (std::size_t i = 0; i < pola.size(); ++i) {
        if (pola[i].Tag() == TTag::Integer) {
            if (ocenione && !ZnaSelektor(*this, pola[i]))
                return false; // what is not there has no features
            if (!PoleNrMaCeche(static_cast<std::int16_t>(pola[i].Calkowita()), wartosci[i], rozmLiter))
                return false;
        } else if (pola[i].JestNazwa()) {
            const std::u16string sciezka = pola[i].JakoTekst();
            TObiektBazowy* obiekt = nullptr;
            int nrPola = CalyObiekt;
            if (sciezka.find(kDowolny) != std::u16string::npos) {
                try {
                    if (!PoleMaCeche(sciezka, wartosci[i], rozmLiter))
                        return false;
                } catch (const EZlaSciezka&) {
                    return false; // what is not there has no features
                }
            } else if (!const_cast<TObiektBazowy*>(this)->ObiektIPole(sciezka, false, obiekt, nrPola) ||
                       obiekt == nullptr || !obiekt->PoleNrMaCeche(nrPola, wartosci[i], rozmLiter))
                return false;
        } else {
            ZTErrorFmt(Komunikat(kmBlednyTypIndeksu), {u"MC"});
        }
    }
    return true;
}

std::int32_t TObiektBazowy::PorownajCechy(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter,
                                          std::uint32_t localeID) const {
    SprawdzDlugosci(u"PC", pola, wartosci);
    SprawdzSelektory(u"PC", *this, pola);
    for (std::size_t i = 0; i < pola.size(); ++i) {
        std::int32_t wynik = 0;
        if (pola[i].Tag() == TTag::Integer)
            wynik = PorPoleNrZCecha(static_cast<std::int16_t>(pola[i].Calkowita()), wartosci[i], rozmLiter, localeID);
        else if (pola[i].JestNazwa())
            wynik = PorPoleONazwieZCecha(pola[i].JakoTekst(), wartosci[i], rozmLiter, localeID);
        else
            ZTErrorFmt(Komunikat(kmBlednyTypIndeksu), {u"PC"});
        if (wynik != 0)
            return wynik;
    }
    return 0;
}

bool TObiektBazowy::PoleMaCeche(std::u16string_view sciezka, const TArgument& cecha, TRozmiarLiter rozmLiter) const {
    return PorPoleONazwieZCecha(sciezka, cecha, rozmLiter, LocaleWin1250) == 0;
}

std::int32_t TObiektBazowy::PorPoleONazwieZCecha(std::u16string_view sciezka, const TArgument& cecha,
                                                 TRozmiarLiter rozmLiter, std::uint32_t localeID) const {
    TListaBazowa* lista = nullptr;
    if (std::u16string_view dalej; ZDowolnym(u"PorPoleONazwieZCecha", sciezka, lista, dalej))
        return lista == nullptr ? 1 : lista->PorPoleONazwieZCecha(dalej, cecha, rozmLiter, localeID);
    TObiektBazowy* obiekt = nullptr;
    int nrPola = CalyObiekt;
    if (CelSciezki(u"PorPoleONazwieZCecha", sciezka, obiekt, nrPola) && obiekt != nullptr)
        return obiekt->PorPoleNrZCecha(nrPola, cecha, rozmLiter, localeID);
    // Nothing there: compared as the default value of the field that the classes declare.
    const TKlasa* klasa = nullptr;
    static_cast<void>(KlasaIPole(sciezka, klasa, nrPola));
    const TKlasa* typ = nrPola == CalyObiekt ? nullptr : JadroKlas()->TypPolaKlasy(klasa, nrPola);
    if (typ == nullptr || typ->utworz == nullptr)
        ZlaSciezka(u"PorPoleONazwieZCecha", sciezka);
    return PorownajDomyslne(typ, cecha, rozmLiter, localeID);
}

void TObiektBazowy::ZerujPole(std::u16string_view sciezka) {
    TListaBazowa* lista = nullptr;
    if (std::u16string_view dalej; ZDowolnym(u"ZerujPole", sciezka, lista, dalej)) {
        if (lista != nullptr)
            lista->ZerujPole(dalej);
        return;
    }
    TObiektBazowy* obiekt = nullptr;
    int nrPola = CalyObiekt;
    if (CelSciezki(u"ZerujPole", sciezka, obiekt, nrPola) && obiekt != nullptr)
        obiekt->SetMaWartosc(nrPola, false);
}

// --- lists: a path that begins with an element, "?" standing for any

bool TListaBazowa::KazdyElement(std::u16string_view sciezka, std::u16string_view& reszta) noexcept {
    std::u16string_view numer;
    reszta = sciezka;
    return WydzielNumerElem(reszta, numer) && numer == u"?";
}

std::int32_t TListaBazowa::PorPoleNrZCecha(int nrPola, const TArgument& cecha, TRozmiarLiter rozmLiter,
                                           std::uint32_t localeID) const {
    const TPole* pole = nrPola == CalyObiekt ? this : Obiekty(nrPola);
    return pole == nullptr ? 1 : pole->PorownajZCecha(cecha, rozmLiter, localeID); // nothing stands before any feature
}

namespace {

// Calls the action for the elements until it answers true. Where elements are of several classes, one whose class does
// not know the path is passed over; the path is bad when no element knows it.
template <class F> bool Dowolny(const TListaBazowa& lista, F dzialanie) {
    std::exception_ptr zla;
    bool dobra = false;
    for (TObiektBazowy* element : lista) {
        if (element == nullptr)
            continue;
        try {
            if (dzialanie(*element))
                return true;
            dobra = true;
        } catch (const EZlaSciezka&) {
            if (lista.Jednorodna())
                throw;
            if (!zla)
                zla = std::current_exception();
        }
    }
    if (zla && !dobra)
        std::rethrow_exception(zla);
    return false;
}

} // namespace

bool TListaBazowa::PoleMaCeche(std::u16string_view sciezka, const TArgument& cecha, TRozmiarLiter rozmLiter) const {
    std::u16string_view reszta;
    if (!KazdyElement(sciezka, reszta))
        return TObiektBazowy::PoleMaCeche(sciezka, cecha, rozmLiter);
    return Dowolny(*this, [&](const TObiektBazowy& element) { return element.PoleMaCeche(reszta, cecha, rozmLiter); });
}

std::int32_t TListaBazowa::PorPoleONazwieZCecha(std::u16string_view sciezka, const TArgument& cecha,
                                                TRozmiarLiter rozmLiter, std::uint32_t localeID) const {
    std::u16string_view reszta;
    if (!KazdyElement(sciezka, reszta))
        return TObiektBazowy::PorPoleONazwieZCecha(sciezka, cecha, rozmLiter, localeID);
    // Equal when any element is; else as the first element answers. An empty list sorts before every feature.
    std::int32_t pierwszy = 0;
    const bool rowny = Dowolny(*this, [&](const TObiektBazowy& element) {
        const std::int32_t wynik = element.PorPoleONazwieZCecha(reszta, cecha, rozmLiter, localeID);
        if (pierwszy == 0)
            pierwszy = wynik;
        return wynik == 0;
    });
    return rowny ? 0 : pierwszy == 0 ? 1 : pierwszy;
}

void TListaBazowa::ZerujPole(std::u16string_view sciezka) {
    std::u16string_view reszta;
    if (!KazdyElement(sciezka, reszta))
        TObiektBazowy::ZerujPole(sciezka);
    else if (reszta.empty())
        ZerujDane();
    else
        Dowolny(*this, [&](TObiektBazowy& element) {
            element.ZerujPole(reszta);
            return false;
        });
}

bool TListaBazowa::KlasaIPole(std::u16string_view sciezka, const TKlasa*& klasa, int& nrPola) const {
    return TObiektBazowy::KlasaIPole(sciezka, klasa, nrPola);
}

// --- a dump for diagnostics

namespace {

void DopiszDrzewo(std::u16string& tekst, std::u16string_view nazwa, const TPole& pole, std::size_t poziom,
                  TLicznikZagniezdzenia& licznik) {
    const std::uint32_t cechy = pole.Klasa()->cechy;
    tekst.append(2 * poziom, u' ').append(nazwa);
    if ((cechy & ckObiektBazowy) == 0) {
        tekst += u" = ";
        if ((cechy & ckPoleWsk) != 0) {
            const TObiektBazowy* cel = static_cast<const TPoleWskObiektu&>(pole).Obiekt();
            tekst += cel == nullptr ? std::u16string(u"nil") : u"-> " + cel->DajSciezkeDoSiebie();
        } else {
            tekst += pole.TekstDoOpisu();
        }
        tekst += u"\r\n";
        return;
    }
    tekst.append(nazwa.empty() ? u"" : u" ").append(u"(").append(pole.NazwaKlasy()).append(u")\r\n");
    const TPoziom glebiej(licznik, pole);
    if ((cechy & ckObiekt) != 0) {
        const auto& obiekt = static_cast<const TObiekt&>(pole);
        for (int nr = 0; nr <= obiekt.OstUzywanePole(); ++nr)
            if (const TPole* p = obiekt.Pole(nr); p != nullptr && obiekt.PoleNiepuste(nr))
                DopiszDrzewo(tekst, obiekt.NazwaPolaNr(nr), *p, poziom + 1, licznik);
    } else if ((cechy & ckLista) != 0) {
        const auto& lista = static_cast<const TListaBazowa&>(pole);
        for (std::int32_t i = 0; i < lista.IleObiektow(); ++i) {
            std::u16string numer = u"[" + TWariant(i).JakoTekst16() + u"]";
            const TObiektBazowy* element = lista.Obiekty(i);
            if ((cechy & ckListaWsk) != 0 || element == nullptr)
                tekst.append(2 * (poziom + 1), u' ')
                    .append(numer)
                    .append(element == nullptr ? u" nil" : u" -> " + element->DajSciezkeDoSiebie())
                    .append(u"\r\n");
            else
                DopiszDrzewo(tekst, numer, *element, poziom + 1, licznik);
        }
    } else if ((cechy & ckTablica) != 0) {
        const auto& tablica = static_cast<const TArrayOfConst&>(pole);
        tekst.append(2 * (poziom + 1), u' ').append(tablica.TekstDoOpisu()).append(u"\r\n");
        for (std::int32_t i = 0; i < tablica.Ile(); ++i)
            if (const TObiektBazowy* element = tablica.Obiekt(i); element != nullptr)
                DopiszDrzewo(tekst, u"[" + TWariant(i).JakoTekst16() + u"]", *element, poziom + 1, licznik);
    } else { // a list of values
        tekst.append(2 * (poziom + 1), u' ')
            .append(static_cast<const TObiektBazowy&>(pole).OpisTekstowy())
            .append(u"\r\n");
    }
}

} // namespace

std::u16string TObiektBazowy::DrzewoObiektu() const {
    std::u16string tekst;
    TLicznikZagniezdzenia licznik;
    DopiszDrzewo(tekst, {}, *this, 0, licznik);
    return tekst;
}

} // namespace ztok
