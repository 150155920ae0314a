// Whole-object operations: initialisation from arrays, features, comparison, copy, binary form.
#include <algorithm>
#include <array>
#include <bit>
#include <vector>

#include "ztok/fields/Konwersje.h"
#include "ztok/fields/TArrayOfConst.h"
#include "ztok/fields/TPolaDaty.h"
#include "ztok/fields/TPolaLiczbowe.h"
#include "ztok/fields/TPolaTekstowe.h"
#include "ztok/fields/TPoleWskObiektu.h"
#include "ztok/kernel/TJadroKlas.h"
#include "ztok/kernel/TObiekt.h"
#include "ztok/kernel/TOpisKlasy.h"
#include "ztok/lists/TKopierDanych.h"
#include "ztok/lists/TListaBazowa.h"
#include "ztok/lists/TPorownywaczDanych.h"
#include "ztok/persist/TOdczytywaczDanych.h"
#include "ztok/persist/TZapisywaczDanych.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/TStrumien.h"
#include "ztok/platform/TWariant.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {

// --- initialisation from parallel arrays

void TObiekt::WpiszDane(TArgumenty pola, TArgumenty wartosci) {
    if (pola.size() != wartosci.size())
        ZTErrorFmt(Komunikat(kmZlaLiczbaElementow), {u"WD", static_cast<std::int64_t>(wartosci.size())});
    const TBlokadaObiektu blokada(*this);
    for (std::size_t i = 0; i < pola.size(); ++i)
        WpiszPare(pola[i], wartosci[i]);
}

void TObiekt::Inicjuj(TArgumenty pola, TArgumenty wartosci) {
    const TBlokadaObiektu blokada(*this);
    ZwolnijPola(true);
    WpiszDane(pola, wartosci);
}

void TObiekt::WpiszPare(const TArgument& pole, const TArgument& wartosc) {
    if (pole.Tag() == TTag::Integer) {
        WpiszWartosc(static_cast<std::int16_t>(pole.Calkowita()), wartosc, NazwaKlasy());
        return;
    }
    if (!pole.JestNazwa())
        ZTErrorFmt(Komunikat(kmBlednyTypIndeksu), {u"WD"});
    const std::u16string sciezka = pole.JakoTekst();
    TObiektBazowy* obiekt = nullptr;
    int nrPola = CalyObiekt;
    if (!ObiektIPole(sciezka, true, obiekt, nrPola) || obiekt == nullptr || !obiekt->Klasa()->Ma(ckObiekt))
        ZTErrorFmt(Komunikat(kmBlednePodpole), {u"WD", sciezka});
    static_cast<TObiekt*>(obiekt)->WpiszWartosc(nrPola, wartosc, NazwaKlasy());
}

void TObiekt::WpiszWartosc(int nrPola, const TArgument& wartosc, std::u16string_view klasaKomunikatu) {
    switch (wartosc.Tag()) {
    case TTag::Integer:
        SetVariantowo(nrPola, TWariant(static_cast<std::int32_t>(wartosc.Calkowita())));
        return;
    case TTag::Int64:
        SetVariantowo(nrPola, TWariant(wartosc.Calkowita()));
        return;
    case TTag::Boolean:
        SetVariantowo(nrPola, TWariant(wartosc.Logiczna()));
        return;
    case TTag::Extended:
        SetVariantowo(nrPola, TWariant(static_cast<double>(wartosc.Rzeczywista())));
        return;
    case TTag::Char:
        SetVariantowo(nrPola, TWariant::AnsiString(std::string(1, static_cast<char>(wartosc.Calkowita()))));
        return;
    case TTag::ShortString:
    case TTag::PChar:
    case TTag::AnsiString:
        SetVariantowo(nrPola, TWariant::AnsiString(wartosc.Bajty()));
        return;
    case TTag::WideChar:
    case TTag::WideString:
    case TTag::UnicodeString:
        SetVariantowo(nrPola, TWariant(wartosc.JakoTekst()));
        return;
    case TTag::PWideChar: // its first character only, by intent
        SetVariantowo(nrPola, TWariant(wartosc.Tekst().substr(0, 1)));
        return;
    case TTag::Variant:
        SetVariantowo(nrPola, wartosc.Wariant());
        return;
    case TTag::Pointer:
        if (wartosc.Wskaznik() != nullptr)
            ZTErrorFmt(Komunikat(kmBladInicjalizacjiZrodlo), {NazwaKlasy(), u"Pointer"});
        SetMaWartosc(nrPola, false);
        return;
    case TTag::Object: {
        TObiektOgolny* ogolny = wartosc.Obiekt();
        if (ogolny != nullptr && !ogolny->Klasa()->Ma(ckObiektBazowy))
            ZTErrorFmt(Komunikat(kmBladInicjalizacjiTyp), {klasaKomunikatu, ogolny->NazwaKlasy(), NazwaPolaNr(nrPola)});
        auto* obiekt = static_cast<TObiektBazowy*>(ogolny);
        const TKlasa* typ = TypPolaNr(nrPola);
        if (typ != nullptr && typ->Ma(ckPoleRef))
            SetPoleRefObiektu(nrPola, obiekt);
        else if (typ != nullptr && typ->Ma(ckPoleWsk))
            SetPoleWskObiektu(nrPola, obiekt);
        else if (obiekt == nullptr)
            SetMaWartosc(nrPola, false);
        else
            PrzepiszDane(*obiekt, CalyObiekt, nrPola);
        return;
    }
    case TTag::Class:
    case TTag::Currency:
    case TTag::Interface:
        break;
    }
    ZTErrorFmt(Komunikat(kmBlednyTypWartosci), {u"WD", static_cast<int>(wartosc.Tag())});
}

void TObiekt::PrzepiszDane(const TObiektBazowy& zrodlo, int nrZrodla, int nrPola) {
    const TPole* skad = &zrodlo;
    if (nrZrodla != CalyObiekt) {
        if (!zrodlo.Klasa()->Ma(ckObiekt))
            BladKlasy(zrodlo, TObiekt::KlasaStatyczna());
        skad = static_cast<const TObiekt&>(zrodlo).Pole(nrZrodla);
    }
    if (nrPola == CalyObiekt) {
        if (skad == nullptr)
            ZerujDane();
        else
            KopiujDane(*skad);
        return;
    }
    const TBlokadaObiektu blokada(*this);
    if (skad == nullptr) {
        UstawNiepuste(nrPola, false);
    } else {
        TPole* dokad = DajPole(nrPola);
        if (dokad == nullptr)
            ZTErrorFmt(Komunikat(kmBrakPola), {NazwaKlasy(), nrPola});
        dokad->KopiujDane(*skad);
        UstawNiepuste(nrPola, true);
    }
    SetBylyZmiany(nrPola);
}

// --- paths

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
    // Pointers can lead round and round: a path has a bounded number of steps, as a tree has of levels.
    static thread_local int kroki = 0;
    if (pole == nullptr || kroki >= kZaglebienieDomyslne)
        return false;
    struct TKrok {
        TKrok() noexcept { ++kroki; }
        TKrok(const TKrok&) = delete;
        TKrok& operator=(const TKrok&) = delete;
        ~TKrok() { --kroki; }
    } const krok;
    return static_cast<TObiektBazowy*>(pole)->ObiektIPole(reszta, tworz, obiekt, nrPola);
}

// --- features

std::int32_t TObiekt::PorownajNieobecne(int nrPola, const TArgument& cecha, TRozmiarLiter rozmLiter,
                                        std::uint32_t localeID) const {
    const TKlasa* typ = TypPolaNr(nrPola);
    if (typ == nullptr || typ->utworz == nullptr)
        ZTErrorFmt(Komunikat(kmBrakPola), {NazwaKlasy(), nrPola});
    const TWlasny<TPole> domyslne(static_cast<TPole*>(typ->utworz(nullptr)));
    return domyslne->PorownajZCecha(cecha, rozmLiter, localeID);
}

std::int32_t TObiekt::PorPoleNrZCecha(int nrPola, const TArgument& cecha, TRozmiarLiter rozmLiter,
                                      std::uint32_t localeID) const {
    const TPole* pole = nrPola == CalyObiekt ? this : Pole(nrPola);
    return pole != nullptr ? pole->PorownajZCecha(cecha, rozmLiter, localeID)
                           : PorownajNieobecne(nrPola, cecha, rozmLiter, localeID);
}

bool TObiekt::PoleNrMaCeche(int nrPola, const TArgument& cecha, TRozmiarLiter rozmLiter) const {
    return PorPoleNrZCecha(nrPola, cecha, rozmLiter, LocaleWin1250) == 0;
}

bool TObiekt::MaCechy(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter) const {
    for (std::size_t i = 0; i < pola.size() && i < wartosci.size(); ++i) {
        if (pola[i].Tag() == TTag::Integer) {
            if (!PoleNrMaCeche(static_cast<std::int16_t>(pola[i].Calkowita()), wartosci[i], rozmLiter))
                return false;
        } else if (pola[i].JestNazwa()) {
            TObiektBazowy* obiekt = nullptr;
            int nrPola = CalyObiekt;
            if (!const_cast<TObiekt*>(this)->ObiektIPole(pola[i].JakoTekst(), false, obiekt, nrPola) ||
                !obiekt->PoleNrMaCeche(nrPola, wartosci[i], rozmLiter))
                return false;
        } else {
            ZTErrorFmt(Komunikat(kmBlednyTypIndeksu), {u"MC"});
        }
    }
    return true;
}

std::int32_t TObiekt::PorownajCechy(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter,
                                    std::uint32_t localeID) const {
    for (std::size_t i = 0; i < pola.size() && i < wartosci.size(); ++i) {
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

// --- comparison

std::int32_t TObiekt::PorownajPole(int nrPola, const TObiekt& inny, TPorownywaczDanych& porownywacz) const {
    const bool tu = PoleNiepuste(nrPola);
    const bool tam = inny.PoleNiepuste(nrPola);
    if (tu && tam)
        return FPola[nrPola]->Porownaj(*inny.FPola[nrPola], &porownywacz);
    if (tu)
        return FPola[nrPola]->MaDefWartosc() ? 0 : 1;
    if (tam)
        return inny.FPola[nrPola]->MaDefWartosc() ? 0 : -1;
    return 0;
}

std::int32_t TObiekt::WykonajPorownanie(const TPole& inne, TPorownywaczDanych& porownywacz) const {
    SprawdzKlase(inne, TObiekt::KlasaStatyczna());
    const auto& inny = static_cast<const TObiekt&>(inne);
    const int ile = std::max(ilePol_, inny.ilePol_);
    for (int nr = 0; nr < ile; ++nr) {
        if (porownywacz.PominChwilowe && !PoleZapisywane(nr))
            continue;
        if (const std::int32_t wynik = PorownajPole(nr, inny, porownywacz); wynik != 0)
            return wynik;
    }
    return 0;
}

std::int32_t TObiekt::WykonajPorownWgPol(const TObiektBazowy& inny, TArgumenty pola,
                                         TPorownywaczDanych& porownywacz) const {
    SprawdzKlase(inny, TObiekt::KlasaStatyczna());
    const auto& obiekt = static_cast<const TObiekt&>(inny);
    for (const TArgument& selektor : pola) {
        std::int32_t wynik = 0;
        if (selektor.Tag() == TTag::Integer) {
            const auto nr = static_cast<std::int16_t>(selektor.Calkowita());
            wynik = nr == CalyObiekt ? Porownaj(inny, &porownywacz) : PorownajPole(nr, obiekt, porownywacz);
        } else if (selektor.JestNazwa()) {
            const std::u16string sciezka = selektor.JakoTekst();
            const TPole* tu = const_cast<TObiekt*>(this)->PoleONazwie(sciezka);
            const TPole* tam = const_cast<TObiekt&>(obiekt).PoleONazwie(sciezka);
            wynik = tu != nullptr && tam != nullptr
                        ? tu->Porownaj(*tam, &porownywacz)
                        : static_cast<int>(tu != nullptr) - static_cast<int>(tam != nullptr);
        } else {
            ZTErrorFmt(Komunikat(kmBlednyTypIndeksu), {u"PWP"});
        }
        if (wynik != 0)
            return wynik;
    }
    return 0;
}

std::int32_t TObiekt::WykonajPorownOproczPol(const TObiektBazowy& inny, TArgumenty pola,
                                             TPorownywaczDanych& porownywacz) const {
    SprawdzKlase(inny, TObiekt::KlasaStatyczna());
    const auto& obiekt = static_cast<const TObiekt&>(inny);
    std::vector<int> pominiete;
    for (const TArgument& selektor : pola) {
        if (selektor.Tag() == TTag::Integer)
            pominiete.push_back(static_cast<std::int16_t>(selektor.Calkowita()));
        else if (selektor.JestNazwa())
            pominiete.push_back(NrPolaONazwie(selektor.JakoTekst()));
        else
            ZTErrorFmt(Komunikat(kmBlednyTypIndeksu), {u"POP"});
    }
    const int ile = std::max(ilePol_, obiekt.ilePol_);
    for (int nr = 0; nr < ile; ++nr)
        if (std::find(pominiete.begin(), pominiete.end(), nr) == pominiete.end())
            if (const std::int32_t wynik = PorownajPole(nr, obiekt, porownywacz); wynik != 0)
                return wynik;
    return 0;
}

// --- copy

void TObiekt::WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) {
    SprawdzKlase(zrodlo, TObiekt::KlasaStatyczna());
    const auto& obiekt = static_cast<const TObiekt&>(zrodlo);
    int ile = std::max(ilePol_, obiekt.ilePol_);
    if (kopier.TrybKopiowania == tkdPolaPrzodka)
        ile = std::min(ile, OstPoleWspolPrzodka(obiekt.Klasa()));
    for (int nr = 0; nr < ile; ++nr)
        KopiujPole(nr, obiekt, kopier);
}

void TObiekt::KopiujPole(int nrPola, const TObiekt& zrodlo, TKopierDanych& kopier) {
    const TPole* skad = zrodlo.Pole(nrPola);
    const std::uint8_t stan = skad == nullptr ? 0 : zrodlo.Stany()[nrPola];
    if ((stan & (spWartosc | spObiekt)) == 0) {
        UstawNiepuste(nrPola, false);
        return;
    }
    const TKlasa* klasa = skad->Klasa();
    if (const TPole* stare = Pole(nrPola); stare == nullptr || stare->Klasa() != klasa) {
        // A field of another class gives way; the class must be one that this object declares under the number.
        const TKlasa* typ = TypPolaNr(nrPola);
        if (typ == nullptr)
            ZTErrorFmt(Komunikat(kmBrakPola), {NazwaKlasy(), nrPola});
        if (!KlasaADziedziczyPoB(klasa, typ))
            ZglosZlyTyp(nrPola, *skad, typ);
        if (stare != nullptr)
            UstawPole(nrPola, nullptr, true);
        UtworzPole(nrPola, klasa);
    }
    FPola[nrPola]->KopiujDane(*skad, &kopier);
    UstawNiepuste(nrPola, true);
}

// --- binary form

void TObiekt::DajObiektyDoZapisu(TZapisywaczDanych& zapisywacz) const {
    zapisywacz.DodajObiekt(*this);
    if (FPola == nullptr)
        return;
    const std::uint8_t* stany = Stany();
    for (int nr = 0; nr < ilePol_; ++nr) {
        if ((stany[nr] & spObiekt) == 0 || FPola[nr] == nullptr || !PoleNiepuste(nr) ||
            (!zapisywacz.ZapisWszystkichPol && !PoleZapisywane(nr)))
            continue;
        const TPoziom poziom(zapisywacz.Zagniezdzenie, *this);
        static_cast<const TObiektBazowy*>(FPola[nr])->DajObiektyDoZapisu(zapisywacz);
    }
}

bool TObiekt::PoleWZapisie(int nrPola, bool pytajKlase, std::uint32_t cechy, TZapisywaczDanych& zapisywacz) const {
    const std::uint8_t stan = Stany()[nrPola];
    if ((stan & spObiekt) != 0 || (cechy & ckWlasneNiepuste) != 0) {
        if (!PoleNiepuste(nrPola))
            return false;
    } else if ((stan & spWartosc) == 0) {
        return false;
    }
    if (zapisywacz.CzyZapisacPole) {
        if (!zapisywacz.CzyZapisacPole(*this, nrPola))
            return false;
    } else if (pytajKlase && !PoleZapisywane(nrPola)) {
        return false;
    }
    if ((stan >> 4U) == kpWskObiektu) {
        std::int32_t gdzie = -1;
        return zapisywacz.JestObiekt(static_cast<const TPoleWskObiektu*>(FPola[nrPola])->Obiekt(), gdzie);
    }
    return true;
}

void TObiekt::SprawdzZagniezdzeniePol(TZapisywaczDanych& zapisywacz) const {
    if (FPola == nullptr)
        return;
    const std::uint8_t* stany = Stany();
    for (int nr = 0; nr < ilePol_; ++nr)
        if ((stany[nr] & spObiekt) != 0 && FPola[nr] != nullptr && PoleNiepuste(nr) &&
            (zapisywacz.ZapisWszystkichPol || PoleZapisywane(nr)))
            SprawdzZagniezdzenie(static_cast<const TObiektBazowy&>(*FPola[nr]), zapisywacz);
}

void SprawdzZagniezdzenie(const TObiektBazowy& obiekt, TZapisywaczDanych& zapisywacz) {
    const TPoziom poziom(zapisywacz.Zagniezdzenie, obiekt);
    const std::uint32_t cechy = obiekt.Klasa()->cechy;
    if ((cechy & ckObiekt) != 0) {
        static_cast<const TObiekt&>(obiekt).SprawdzZagniezdzeniePol(zapisywacz);
    } else if ((cechy & ckTablica) != 0) {
        const auto& tablica = static_cast<const TArrayOfConst&>(obiekt);
        for (std::int32_t i = 0; i < tablica.Ile(); ++i)
            if (const TObiektBazowy* element = tablica.Obiekt(i); element != nullptr)
                SprawdzZagniezdzenie(*element, zapisywacz);
    } else if ((cechy & ckListaZObiektami) != 0) {
        const auto& lista = static_cast<const TListaBazowa&>(obiekt);
        for (std::int32_t i = 0; i < lista.IleObiektow(); ++i) {
            const TObiektBazowy* element = lista.Obiekty(i);
            if (element == nullptr)
                continue;
            SprawdzZagniezdzenie(*element, zapisywacz);
            // Elements of one class that nests nothing are all as deep as the first.
            if (lista.Jednorodna() && element->Klasa()->Ma(ckObiekt) && !element->Klasa()->Ma(ckWlasneTypyPol) &&
                !static_cast<const TObiekt*>(element)->Migawka().saObiekty)
                break;
        }
    }
}

namespace {

// Bitmap of field numbers: small ones on the stack.
class TMapaPol {
  public:
    explicit TMapaPol(std::size_t bajtow) : bajtow_(bajtow) {
        if (bajtow > male_.size())
            duze_.resize(bajtow);
    }
    [[nodiscard]] std::uint8_t* Bajty() noexcept { return duze_.empty() ? male_.data() : duze_.data(); }
    [[nodiscard]] std::size_t Ile() const noexcept { return bajtow_; }

  private:
    std::array<std::uint8_t, 24> male_{};
    std::vector<std::uint8_t> duze_;
    std::size_t bajtow_;
};

} // namespace

namespace {

template <class P> void ZapiszSkalar(const TPole& pole, TStrumien& strumien) {
    const auto wartosc = static_cast<const P&>(pole).Wartosc();
    strumien.WriteBuffer(&wartosc, sizeof wartosc);
}

// Writes a field. The classes met most, known by their code, need no virtual call.
void ZapiszPole(const TPole& pole, unsigned kod, TStrumien& strumien, TZapisywaczDanych& zapisywacz) {
    switch (kod) {
    case kpString:
        return TZapisywaczDanych::ZapiszWideString(strumien, static_cast<const TPoleString&>(pole).Wartosc(),
                                                   &zapisywacz);
    case kpInteger:
        return ZapiszSkalar<TPoleInteger>(pole, strumien);
    case kpDouble:
        return ZapiszSkalar<TPoleDouble>(pole, strumien);
    case kpByte:
        return ZapiszSkalar<TPoleByte>(pole, strumien);
    case kpDate:
        return ZapiszSkalar<TPoleDate>(pole, strumien);
    default:
        pole.ZapiszWStrumieniu(strumien, &zapisywacz);
    }
}

template <class P> void CzytajSkalar(TPole& pole, TStrumien& strumien) {
    decltype(static_cast<P&>(pole).Wartosc()) wartosc;
    strumien.ReadBuffer(&wartosc, sizeof wartosc);
    static_cast<P&>(pole).UstawWartosc(wartosc);
}

// Reads a field that a plain reader need not hear of.
void WczytajPole(TPole& pole, unsigned kod, TStrumien& strumien, TOdczytywaczDanych& odczytywacz) {
    switch (kod) {
    case kpInteger:
        return CzytajSkalar<TPoleInteger>(pole, strumien);
    case kpDouble:
        return CzytajSkalar<TPoleDouble>(pole, strumien);
    case kpByte:
        return CzytajSkalar<TPoleByte>(pole, strumien);
    case kpDate:
        return CzytajSkalar<TPoleDate>(pole, strumien);
    default:
        pole.WczytajZeStrumienia(strumien, &odczytywacz);
    }
}

} // namespace

void TObiekt::WykonajZapis(TStrumien& strumien, TZapisywaczDanych& zapisywacz) const {
    if (FPola == nullptr) {
        TZapisywaczDanych::ZapiszLicznik15(strumien, 0);
        return;
    }
    TMapaPol mapa((static_cast<std::size_t>(ilePol_) + 7) / 8);
    const std::uint32_t cechy = Klasa()->cechy;
    const bool pytajKlase =
        !zapisywacz.ZapisWszystkichPol && ((cechy & ckWlasneZapisywane) != 0 || Migawka().saPredykaty);
    const std::uint8_t* stany = Stany();
    // Nobody else has a say: then a plain field takes part when it holds a value.
    const bool poStanie = !pytajKlase && (cechy & ckWlasneNiepuste) == 0 && !zapisywacz.CzyZapisacPole;
    const auto bierze = [&](int nr) {
        const std::uint8_t stan = stany[nr];
        return (poStanie && (stan & (spWartosc | spObiekt)) == spWartosc && (stan >> 4U) != kpWskObiektu) ||
               PoleWZapisie(nr, pytajKlase, cechy, zapisywacz);
    };
    int ostatnie = -1;
    for (int nr = 0; nr < ilePol_; ++nr)
        if (FPola[nr] != nullptr && bierze(nr)) {
            mapa.Bajty()[nr / 8] |= static_cast<std::uint8_t>(1U << (static_cast<unsigned>(nr) % 8U));
            ostatnie = nr;
        }
    const auto bajtow = static_cast<std::uint32_t>(ostatnie + 8) / 8;
    TZapisywaczDanych::ZapiszLicznik15(strumien, bajtow);
    strumien.WriteBuffer(mapa.Bajty(), bajtow);
    for (std::uint32_t j = 0; j < bajtow; ++j)
        for (unsigned bity = mapa.Bajty()[j]; bity != 0; bity &= bity - 1) {
            const std::size_t nr = 8 * std::size_t{j} + static_cast<unsigned>(std::countr_zero(bity));
            ZapiszPole(*FPola[nr], (stany[nr] & spDokladna) != 0 ? stany[nr] >> 4U : 0U, strumien, zapisywacz);
        }
}

void TObiekt::WykonajOdczyt(TStrumien& strumien, TOdczytywaczDanych& odczytywacz) {
    ZerujDane();
    const std::uint32_t bajtow = TOdczytywaczDanych::WczytajLicznik15(strumien);
    if (bajtow == 0)
        return;
    TMapaPol mapa(bajtow);
    strumien.ReadBuffer(mapa.Bajty(), bajtow);
    const std::uint32_t cechy = Klasa()->cechy;
    const TMigawkaOpisu& migawka = Migawka();
    const bool szybko = (cechy & ckWlasneUstawNiepuste) == 0 && !odczytywacz.ChceKazdePole();
    if ((cechy & ckWlasneTypyPol) == 0)
        Zarezerwuj(std::min(static_cast<int>(8 * bajtow), migawka.ilePol));
    // The field array has room for every declared field as soon as it has one.
    odczytywacz.ZuzyjPamiec(migawka.ilePol * static_cast<std::int64_t>(sizeof(TPole*) + 1));
    for (std::uint32_t j = 0; j < bajtow; ++j)
        for (unsigned bity = mapa.Bajty()[j]; bity != 0; bity &= bity - 1) {
            const int nr = static_cast<int>(8 * j + static_cast<unsigned>(std::countr_zero(bity)));
            const TKlasa* typ = nullptr;
            if ((cechy & ckWlasneTypyPol) != 0)
                typ = TypPolaNr(nr);
            else if (nr < migawka.ilePol)
                typ = migawka.pola[nr].klasa;
            // A number that the class does not declare takes no bytes: the format relies on one layout at both ends.
            if (typ == nullptr || nr > 32767)
                continue;
            TPole& pole = Pole(nr) != nullptr ? *Pole(nr) : UtworzPole(nr, typ);
            odczytywacz.ZuzyjPamiec(48);
            std::uint8_t& stan = Stany()[nr];
            if (szybko && (stan & (spDokladna | spObiekt)) == spDokladna && (stan >> 4U) != kpWskObiektu) {
                WczytajPole(pole, stan >> 4U, strumien, odczytywacz);
                Stany()[nr] |= spWartosc;
                continue;
            }
            pole.WczytajZeStrumienia(strumien, &odczytywacz);
            if ((Stany()[nr] >> 4U) == kpWskObiektu && nr < migawka.ilePol && migawka.pola[nr].wiersz != nullptr &&
                migawka.pola[nr].wiersz->klasa != nullptr)
                odczytywacz.OgraniczOstatni(migawka.pola[nr].wiersz->klasa());
            UstawNiepuste(nr, true);
        }
}

bool TObiekt::MoznaCzytacDaneTypu(std::u16string_view nazwaTypu) const {
    return CompareTxtSgn(nazwaTypu, AliasXMLPolaNr(CalyObiekt)) == 0 || TObiektBazowy::MoznaCzytacDaneTypu(nazwaTypu);
}

} // namespace ztok
