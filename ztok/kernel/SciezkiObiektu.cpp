// Paths: fields of a tree by name. The rules stand in docs/sciezki.md.
#include "ztok/fields/Konwersje.h"
#include "ztok/fields/TArrayOfConst.h"
#include "ztok/fields/TPoleWskObiektu.h"
#include "ztok/kernel/JadroBiezace.h"
#include "ztok/kernel/TObiekt.h"
#include "ztok/kernel/TOpisKlasy.h"
#include "ztok/lists/TListaBazowa.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/TWariant.h"
#include "ztok/util/ZTBledy.h"
#include "ztok/util/Zagniezdzenie.h"

namespace ztok {

namespace {

[[noreturn]] void ZlaSciezka(std::u16string_view operacja, std::u16string_view sciezka) {
    ZTErrorFmt(Komunikat(kmBlednaSciezka), {operacja, sciezka});
}

// The class and field number that a path leads to from a class.
bool KlasaIPoleOd(const TKlasa* od, std::u16string_view sciezka, const TKlasa*& klasa, int& nrPola) {
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

// The field of a resolved path: the object itself for -1; null when it was never made.
TPole* PoleObiektu(TObiektBazowy& obiekt, int nrPola) {
    if (nrPola == CalyObiekt)
        return &obiekt;
    return obiekt.Klasa()->Ma(ckObiekt) ? static_cast<TObiekt&>(obiekt).Pole(nrPola) : nullptr;
}

} // namespace

bool TObiektBazowy::ObiektIPole(std::u16string_view sciezka, bool /*tworz*/, TObiektBazowy*& obiekt, int& nrPola) {
    obiekt = sciezka.empty() ? this : nullptr;
    nrPola = CalyObiekt;
    return sciezka.empty();
}

bool TObiektBazowy::KlasaIPole(std::u16string_view sciezka, const TKlasa*& klasa, int& nrPola) const {
    return KlasaIPoleOd(Klasa(), sciezka, klasa, nrPola);
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
    const TPole* pole = const_cast<TObiektBazowy*>(this)->PoleONazwie(sciezka);
    if (pole != nullptr && pole->Klasa()->Ma(ckPoleWsk))
        pole = static_cast<const TPoleWskObiektu*>(pole)->Obiekt();
    if (pole == nullptr)
        return {};
    return pole->Klasa()->Ma(ckObiektBazowy) ? static_cast<const TObiektBazowy*>(pole)->OpisTekstowy()
                                             : pole->GetJakoString();
}

// NOLINTEND(clang-analyzer-core.NonNullParamChecker,clang-analyzer-core.CallAndMessage)

// --- any element: the path up to "[?]" leads to a list, which goes through its elements

bool TObiektBazowy::ZDowolnym(std::u16string_view operacja, std::u16string_view sciezka, TListaBazowa*& lista,
                              std::u16string_view& odDowolnego) const {
    constexpr std::u16string_view dowolny = u"[?]"; // a step wherever it stands: a condition cannot hold "]"
    const std::size_t gdzie = sciezka.find(dowolny);
    if (gdzie == std::u16string_view::npos)
        return false;
    odDowolnego = sciezka.substr(gdzie);
    lista = nullptr;
    // The walk goes deeper with each of them: as many as a path has steps.
    int ile = 0;
    for (std::size_t i = gdzie; i != std::u16string_view::npos; i = sciezka.find(dowolny, i + 1))
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
    if (CelSciezki(u"PorPoleONazwieZCecha", sciezka, obiekt, nrPola))
        return obiekt->PorPoleNrZCecha(nrPola, cecha, rozmLiter, localeID);
    // Nothing there: compared as the default value of the field that the classes declare.
    const TKlasa* klasa = nullptr;
    static_cast<void>(KlasaIPole(sciezka, klasa, nrPola));
    const TKlasa* typ = nrPola == CalyObiekt ? nullptr : JadroKlas()->TypPolaKlasy(klasa, nrPola);
    if (typ == nullptr || typ->utworz == nullptr)
        ZlaSciezka(u"PorPoleONazwieZCecha", sciezka);
    const TWlasny<TPole> domyslne(static_cast<TPole*>(typ->utworz(nullptr)));
    return domyslne->PorownajZCecha(cecha, rozmLiter, localeID);
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

bool TListaBazowa::PoleNrMaCeche(int nrPola, const TArgument& cecha, TRozmiarLiter rozmLiter) const {
    return PorPoleNrZCecha(nrPola, cecha, rozmLiter, LocaleWin1250) == 0;
}

std::int32_t TListaBazowa::PorPoleNrZCecha(int nrPola, const TArgument& cecha, TRozmiarLiter rozmLiter,
                                           std::uint32_t localeID) const {
    const TPole* pole = nrPola == CalyObiekt ? this : Obiekty(nrPola);
    if (pole == nullptr)
        ZTErrorFmt(Komunikat(kmIndeksPozaZakresem), {NazwaKlasy(), nrPola});
    return pole->PorownajZCecha(cecha, rozmLiter, localeID);
}

bool TListaBazowa::PoleMaCeche(std::u16string_view sciezka, const TArgument& cecha, TRozmiarLiter rozmLiter) const {
    std::u16string_view reszta;
    if (!KazdyElement(sciezka, reszta))
        return TObiektBazowy::PoleMaCeche(sciezka, cecha, rozmLiter);
    for (const TObiektBazowy* element : *this)
        if (element != nullptr && element->PoleMaCeche(reszta, cecha, rozmLiter))
            return true;
    return false;
}

std::int32_t TListaBazowa::PorPoleONazwieZCecha(std::u16string_view sciezka, const TArgument& cecha,
                                                TRozmiarLiter rozmLiter, std::uint32_t localeID) const {
    std::u16string_view reszta;
    if (!KazdyElement(sciezka, reszta))
        return TObiektBazowy::PorPoleONazwieZCecha(sciezka, cecha, rozmLiter, localeID);
    // Equal when any element is; else as the first element answers. An empty list sorts before every feature.
    std::int32_t pierwszy = 1;
    bool byl = false;
    for (const TObiektBazowy* element : *this) {
        if (element == nullptr)
            continue;
        const std::int32_t wynik = element->PorPoleONazwieZCecha(reszta, cecha, rozmLiter, localeID);
        if (wynik == 0)
            return 0;
        if (!byl)
            pierwszy = wynik;
        byl = true;
    }
    return pierwszy;
}

void TListaBazowa::ZerujPole(std::u16string_view sciezka) {
    std::u16string_view reszta;
    if (!KazdyElement(sciezka, reszta)) {
        TObiektBazowy::ZerujPole(sciezka);
        return;
    }
    if (reszta.empty()) {
        ZerujDane();
        return;
    }
    for (TObiektBazowy* element : ListaOdKonca())
        if (element != nullptr)
            element->ZerujPole(reszta);
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
            if (obiekt.PoleNiepuste(nr))
                DopiszDrzewo(tekst, obiekt.NazwaPolaNr(nr), *obiekt.Pole(nr), poziom + 1, licznik);
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
