// Operations by lists of fields: clearing, trimming, copying, describing.
#include <algorithm>
#include <vector>

#include "ztok/fields/Konwersje.h"
#include "ztok/fields/TPolaTekstowe.h"
#include "ztok/kernel/Selektory.h"
#include "ztok/kernel/TObiekt.h"
#include "ztok/lists/TKopierDanych.h"
#include "ztok/lists/TPorownywaczDanych.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/util/ZTBledy.h"
#include "ztok/util/Zagniezdzenie.h"

namespace ztok {

namespace {

// What a selector names that another class knows.
constexpr int kInnejKlasy = -2;

// The number that a selector names in the object, and what follows the name in its path. -1 with an empty rest is the
// whole object.
int NrWgSelektora(const TObiekt& obiekt, const TArgument& selektor, std::u16string_view operacja,
                  std::u16string& reszta) {
    reszta.clear();
    if (selektor.Tag() == TTag::Integer)
        return static_cast<std::int16_t>(selektor.Calkowita());
    if (!selektor.JestNazwa())
        ZTErrorFmt(Komunikat(kmBlednyTypIndeksu), {operacja});
    const std::u16string sciezka = selektor.JakoTekst();
    if (sciezka.empty())
        return CalyObiekt;
    std::u16string_view nazwa = sciezka;
    std::u16string_view dalej;
    WydzielNazwePola(nazwa, dalej);
    const int nr = obiekt.NrPolaONazwie(nazwa);
    if (nr < 0 && TOcenione::Trwa())
        return kInnejKlasy;
    if (nr < 0)
        ZTErrorFmt(Komunikat(kmBlednaSciezka), {operacja, sciezka});
    reszta = dalej;
    return nr;
}

// For every field number that the selectors name: the parts of it that they name, or none when they name it whole.
struct TWybranePole {
    int nr;
    bool cale;
    std::vector<TArgument> czesci;
};

std::vector<TWybranePole> WybranePola(const TObiekt& obiekt, TArgumenty pola, std::u16string_view operacja,
                                      bool& calyObiekt) {
    std::vector<TWybranePole> wybrane;
    calyObiekt = false;
    std::u16string reszta;
    for (const TArgument& selektor : pola) {
        const int nr = NrWgSelektora(obiekt, selektor, operacja, reszta);
        if (nr == kInnejKlasy)
            continue;
        calyObiekt = calyObiekt || nr == CalyObiekt;
        auto gdzie = std::find_if(wybrane.begin(), wybrane.end(), [nr](const TWybranePole& w) { return w.nr == nr; });
        if (gdzie == wybrane.end())
            gdzie = wybrane.insert(wybrane.end(), {nr, false, {}});
        if (reszta.empty())
            gdzie->cale = true;
        else
            gdzie->czesci.emplace_back(reszta);
    }
    return wybrane;
}

std::vector<TWybranePole>::const_iterator Znajdz(const std::vector<TWybranePole>& pola, int nr) {
    return std::find_if(pola.begin(), pola.end(), [nr](const TWybranePole& w) { return w.nr == nr; });
}

TObiektBazowy* JakoObiekt(TPole* pole) {
    return pole != nullptr && pole->Klasa()->Ma(ckObiektBazowy) ? static_cast<TObiektBazowy*>(pole) : nullptr;
}

// The object with fields that a field is: only such a one has parts; lists and pointers are taken as a whole.
TObiekt* JakoZPolami(TPole* pole) {
    return pole != nullptr && pole->Klasa()->Ma(ckObiekt) ? static_cast<TObiekt*>(pole) : nullptr;
}

// Compares nested objects but for the parts; one that is not there counts as an empty one.
std::int32_t PorownajOproczCzesci(const TObiekt* tu, const TObiekt* tam, TArgumenty czesci,
                                  TPorownywaczDanych& porownywacz) {
    if (tu == nullptr && tam == nullptr)
        return 0;
    const TWlasny<TObiektBazowy> pusty =
        tu != nullptr && tam != nullptr ? nullptr : (tu != nullptr ? tu : tam)->TworzInstancje(nullptr);
    const TObiektBazowy* lewy = tu != nullptr ? tu : pusty.get();
    const TObiektBazowy* prawy = tam != nullptr ? tam : pusty.get();
    return lewy->WykonajPorownOproczPol(*prawy, czesci, porownywacz);
}

// The text of a text field, changed by `zmien`; the field is cleared when nothing is left of it.
template <class F> void ZmienTekst(TObiekt& obiekt, int nr, TPole& pole, const F& zmien) {
    const auto zapisz = [&](auto& poleTekstowe) {
        using TZnak = typename std::remove_cvref_t<decltype(poleTekstowe.Wartosc())>::value_type;
        const std::basic_string<TZnak> nowy(zmien(std::basic_string_view<TZnak>(poleTekstowe.Wartosc())));
        if (nowy.size() == poleTekstowe.Wartosc().size())
            return;
        poleTekstowe.UstawWartosc(nowy);
        obiekt.UstawNiepuste(nr, !poleTekstowe.Wartosc().empty());
    };
    switch (pole.Klasa()->kodPola) {
    case kpString:
        return zapisz(static_cast<TPoleString&>(pole));
    case kpWideString:
        return zapisz(static_cast<TPoleWideString&>(pole));
    case kpRawByteString:
        return zapisz(static_cast<TPoleRawByteString&>(pole));
    default:
        return;
    }
}

// For an object without numbered fields: whether a selector names it as a whole.
bool CalyWsrod(TArgumenty pola, std::u16string_view operacja) {
    bool caly = false;
    for (const TArgument& selektor : pola) {
        if (selektor.Tag() == TTag::Integer)
            caly = caly || static_cast<std::int16_t>(selektor.Calkowita()) == CalyObiekt;
        else if (selektor.JestNazwa())
            caly = caly || selektor.JakoTekst().empty();
        else
            ZTErrorFmt(Komunikat(kmBlednyTypIndeksu), {operacja});
    }
    return caly;
}

} // namespace

// --- of any object of the model

void TObiektBazowy::ZerujDanePol(TArgumenty pola) {
    SprawdzSelektory(u"ZDP", *this, pola);
    const TBlokadaObiektu blokada(*this);
    for (const TArgument& selektor : pola) {
        if (TOcenione::Trwa() && !ZnaSelektor(*this, selektor))
            continue;
        if (selektor.Tag() == TTag::Integer)
            UstawNiepuste(static_cast<std::int16_t>(selektor.Calkowita()), false);
        else if (selektor.JestNazwa())
            ZerujPole(selektor.JakoTekst());
        else
            ZTErrorFmt(Komunikat(kmBlednyTypIndeksu), {u"ZDP"});
    }
}

void TObiektBazowy::ZerujDaneOprocz(TArgumenty pola) {
    SprawdzSelektory(u"ZDO", *this, pola);
    if (!CalyWsrod(pola, u"ZDO"))
        ZerujDane();
}

void TObiektBazowy::PrzytnijPolaWgRozm(bool /*trymuj*/) {}
void TObiektBazowy::TrymujPolaTekstowe(bool /*podobiektyTez*/) {}
bool TObiektBazowy::SaDaneUnicode(int /*nrPola*/) const { return false; }

std::int32_t TObiektBazowy::WykonajPorownWgPol(const TObiektBazowy& inny, TArgumenty pola,
                                               TPorownywaczDanych& porownywacz) const {
    for (const TArgument& selektor : pola) {
        std::int32_t wynik = 0;
        if (selektor.Tag() == TTag::Integer) {
            const auto nr = static_cast<std::int16_t>(selektor.Calkowita());
            if (nr == CalyObiekt) {
                wynik = Porownaj(inny, &porownywacz);
            } else {
                SprawdzKlase(*this, TObiekt::KlasaStatyczna());
                SprawdzKlase(inny, TObiekt::KlasaStatyczna());
                wynik =
                    static_cast<const TObiekt&>(*this).PorownajPole(nr, static_cast<const TObiekt&>(inny), porownywacz);
            }
        } else if (selektor.JestNazwa()) {
            const std::u16string sciezka = selektor.JakoTekst();
            const TPole* tu = const_cast<TObiektBazowy*>(this)->PoleONazwie(sciezka);
            const TPole* tam = const_cast<TObiektBazowy&>(inny).PoleONazwie(sciezka);
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

std::int32_t TObiektBazowy::WykonajPorownOproczPol(const TObiektBazowy& inny, TArgumenty pola,
                                                   TPorownywaczDanych& porownywacz) const {
    return CalyWsrod(pola, u"POP") ? 0 : Porownaj(inny, &porownywacz);
}

// --- of an object with fields

void TObiekt::ZerujDaneOprocz(TArgumenty pola) {
    SprawdzSelektory(u"ZDO", *this, pola);
    const TBlokadaObiektu blokada(*this);
    bool calyObiekt = false;
    const std::vector<TWybranePole> zachowane = WybranePola(*this, pola, u"ZDO", calyObiekt);
    if (calyObiekt)
        return;
    for (int nr = ilePol_ - 1; nr >= 0; --nr) {
        const auto gdzie = Znajdz(zachowane, nr);
        if (gdzie == zachowane.end())
            UstawNiepuste(nr, false);
        else if (TObiekt* obiekt = JakoZPolami(Pole(nr)); !gdzie->cale && obiekt != nullptr)
            obiekt->ZerujDaneOprocz(gdzie->czesci);
    }
}

std::int32_t TObiekt::WykonajPorownOproczPol(const TObiektBazowy& inny, TArgumenty pola,
                                             TPorownywaczDanych& porownywacz) const {
    SprawdzKlase(inny, TObiekt::KlasaStatyczna());
    const auto& obiekt = static_cast<const TObiekt&>(inny);
    bool calyObiekt = false;
    const std::vector<TWybranePole> pominiete = WybranePola(*this, pola, u"POP", calyObiekt);
    if (calyObiekt)
        return 0;
    const int ile = std::max(ilePol_, obiekt.ilePol_);
    for (int nr = 0; nr < ile; ++nr) {
        if (porownywacz.PominChwilowe && !PoleZapisywane(nr))
            continue;
        const auto gdzie = Znajdz(pominiete, nr);
        std::int32_t wynik = 0;
        if (gdzie == pominiete.end())
            wynik = PorownajPole(nr, obiekt, porownywacz);
        else if (!gdzie->cale)
            wynik =
                PorownajOproczCzesci(JakoZPolami(Pole(nr)), JakoZPolami(obiekt.Pole(nr)), gdzie->czesci, porownywacz);
        if (wynik != 0)
            return wynik;
    }
    return 0;
}

void TObiekt::PrzytnijPolaWgRozm(bool trymuj) {
    const TPoziom poziom(ZagniezdzenieWatku(), *this);
    const TBlokadaObiektu blokada(*this);
    for (int nr = 0; nr < ilePol_; ++nr) {
        TPole* pole = Pole(nr);
        if (pole == nullptr)
            continue;
        if (TObiektBazowy* obiekt = JakoObiekt(pole); obiekt != nullptr) {
            if (JestDoObejscia(obiekt))
                obiekt->PrzytnijPolaWgRozm(trymuj);
            continue;
        }
        const auto rozmiar = static_cast<std::size_t>(std::max(RozmPolaNr(nr), 0));
        if (rozmiar != 0 || trymuj)
            ZmienTekst(*this, nr, *pole,
                       [&](auto tekst) { return trymuj ? ZTOKTrim(tekst, rozmiar) : tekst.substr(0, rozmiar); });
    }
}

void TObiekt::TrymujPolaTekstowe(bool podobiektyTez) {
    const TPoziom poziom(ZagniezdzenieWatku(), *this);
    const TBlokadaObiektu blokada(*this);
    for (int nr = 0; nr < ilePol_; ++nr) {
        TPole* pole = Pole(nr);
        if (pole == nullptr)
            continue;
        if (TObiektBazowy* obiekt = JakoObiekt(pole); obiekt == nullptr)
            ZmienTekst(*this, nr, *pole, [](auto tekst) { return ZTOKTrim(tekst); });
        else if (podobiektyTez && JestDoObejscia(obiekt))
            obiekt->TrymujPolaTekstowe(true);
    }
}

bool TObiekt::SaDaneUnicode(int nrPola) const {
    if (nrPola == CalyObiekt) {
        for (int nr = 0; nr < ilePol_; ++nr)
            if (SaDaneUnicode(nr))
                return true;
        return false;
    }
    TPole* pole = Pole(nrPola);
    if (pole == nullptr)
        return false;
    if (const TObiektBazowy* obiekt = JakoObiekt(pole); obiekt != nullptr) {
        const TPoziom poziom(ZagniezdzenieWatku(), *this);
        return JestDoObejscia(obiekt) && obiekt->SaDaneUnicode(CalyObiekt);
    }
    switch (pole->Klasa()->kodPola) {
    case kpString:
        return !MiesciSieWWin1250(static_cast<const TPoleString*>(pole)->Wartosc());
    case kpWideString:
        return !MiesciSieWWin1250(static_cast<const TPoleWideString*>(pole)->Wartosc());
    default:
        return false;
    }
}

std::u16string TObiekt::OpisTekstowy() const {
    // The class and its first plain values, as much as fits a line.
    constexpr std::size_t kWiersz = 120;
    std::u16string opis = NazwaPolaNr(CalyObiekt);
    std::u16string_view przed = u": ";
    for (int nr = 0; nr < ilePol_ && opis.size() < kWiersz; ++nr) {
        const TPole* pole = Pole(nr);
        if (pole == nullptr || !PoleNiepuste(nr) || pole->Klasa()->Ma(ckObiektBazowy | ckPoleWsk))
            continue;
        opis.append(przed).append(NazwaPolaNr(nr)).append(u"=").append(pole->TekstDoOpisu());
        przed = u", ";
    }
    if (opis.size() > kWiersz)
        opis.replace(kWiersz - 3, std::u16string::npos, u"...");
    return opis;
}

// --- copy by fields

namespace {

// The top of a copy of some fields: as for a whole object, pointers are re-pointed or registered at the end. When one
// object is a part of the other (`razem`), the fields are copied into an object of their own first.
template <class F>
void KopiujPola(TObiekt& cel, const TObiekt& zrodlo, bool razem, TKopierDanych* kopier, const F& kopiuj) {
    if (&cel == &zrodlo)
        return;
    if (kopier != nullptr) {
        kopier->KopiowanoDane(zrodlo, cel); // what points at the source, within the copy, is to point here
        kopiuj(cel, zrodlo, *kopier);
        return;
    }
    if (razem) {
        const TWlasny<TObiektBazowy> osobno = zrodlo.TworzInstancje(nullptr);
        KopiujPola(static_cast<TObiekt&>(*osobno), zrodlo, false, nullptr, kopiuj);
        KopiujPola(cel, static_cast<TObiekt&>(*osobno), false, nullptr, kopiuj);
        return;
    }
    const TBlokadaObiektu blokada(cel);
    const TBlokadaObiektu blokadaZrodla(zrodlo);
    TKopierDanych wlasny; // goes before the locks do: after an error it still registers references
    wlasny.KopiowanoDane(zrodlo, cel);
    kopiuj(cel, zrodlo, wlasny);
    wlasny.PrzepnijReferencje();
}

} // namespace

// Copies between the nested objects of a number, a source that was never made counting as an empty one; false when
// there is nothing nested to take apart.
template <class F> bool TObiekt::KopiujCzesc(int nr, const TObiekt& zrodlo, const F& kopiuj) {
    const TPole* skad = zrodlo.Pole(nr);
    if (const TObiekt* dokad = JakoZPolami(Pole(nr)); skad == nullptr && dokad != nullptr) {
        const TWlasny<TObiektBazowy> pusty = dokad->TworzInstancje(nullptr);
        kopiuj(static_cast<TObiekt&>(*Pole(nr)), static_cast<const TObiekt&>(*pusty));
        return true;
    }
    if (skad == nullptr || !skad->Klasa()->Ma(ckObiekt))
        return false;
    kopiuj(static_cast<TObiekt&>(DajPoleKlasy(nr, TObiekt::KlasaStatyczna())), static_cast<const TObiekt&>(*skad));
    return true;
}

void TObiekt::KopiujDanePol(const TObiekt& zrodlo, TArgumenty pola, bool zerujPozostale, TKopierDanych* kopier) {
    SprawdzSelektory(u"KDP", *this, pola, &zrodlo);
    const auto kopiuj = [pola, zerujPozostale](TObiekt& cel, const TObiekt& skad, TKopierDanych& k) {
        if (zerujPozostale)
            cel.ZerujDaneOprocz(pola);
        bool calyObiekt = false;
        const std::vector<TWybranePole> wybrane = WybranePola(cel, pola, u"KDP", calyObiekt);
        if (calyObiekt) {
            cel.KopiujDane(skad, &k);
            return;
        }
        for (const TWybranePole& wybrane1 : wybrane)
            if (wybrane1.cale || !cel.KopiujCzesc(wybrane1.nr, skad, [&](TObiekt& dokad, const TObiekt& czesc) {
                    dokad.KopiujDanePol(czesc, wybrane1.czesci, false, &k);
                }))
                cel.KopiujPole(wybrane1.nr, skad, k);
    };
    KopiujPola(*this, zrodlo, JednoWDrugim(*this, zrodlo), kopier, kopiuj);
}

void TObiekt::KopiujDaneOprocz(const TObiekt& zrodlo, TArgumenty pola, TKopierDanych* kopier) {
    SprawdzSelektory(u"KDO", *this, pola, &zrodlo);
    const auto kopiuj = [pola](TObiekt& cel, const TObiekt& skad, TKopierDanych& k) {
        bool calyObiekt = false;
        const std::vector<TWybranePole> pominiete = WybranePola(cel, pola, u"KDO", calyObiekt);
        if (calyObiekt)
            return;
        const int ile = std::max(cel.ilePol_, skad.ilePol_);
        for (int nr = 0; nr < ile; ++nr) {
            const auto gdzie = Znajdz(pominiete, nr);
            if (gdzie == pominiete.end())
                cel.KopiujPole(nr, skad, k);
            else if (!gdzie->cale)
                cel.KopiujCzesc(nr, skad, [&](TObiekt& dokad, const TObiekt& czesc) {
                    dokad.KopiujDaneOprocz(czesc, gdzie->czesci, &k);
                });
        }
    };
    KopiujPola(*this, zrodlo, JednoWDrugim(*this, zrodlo), kopier, kopiuj);
}

void TObiekt::KopiujDaneKlas(const TObiekt& zrodlo, TCiag<const TKlasa*> klasy, TKopierDanych* kopier) {
    const auto kopiuj = [klasy](TObiekt& cel, const TObiekt& skad, TKopierDanych& k) {
        for (int nr = 0; nr < std::max(cel.ilePol_, skad.ilePol_); ++nr) {
            const TPole* pole = skad.Pole(nr) != nullptr ? skad.Pole(nr) : cel.Pole(nr); // what is not there is cleared
            if (pole != nullptr &&
                std::any_of(klasy.begin(), klasy.end(), [pole](const TKlasa* klasa) { return pole->JestKlasy(klasa); }))
                cel.KopiujPole(nr, skad, k);
        }
    };
    KopiujPola(*this, zrodlo, JednoWDrugim(*this, zrodlo), kopier, kopiuj);
}

} // namespace ztok
