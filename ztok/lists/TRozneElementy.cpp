#include "ztok/lists/TRozneElementy.h"

#include <cmath>
#include <unordered_map>
#include <utility>
#include <vector>

#include "ztok/fields/Konwersje.h"
#include "ztok/fields/TPolaDaty.h"
#include "ztok/fields/TPolaLiczbowe.h"
#include "ztok/fields/TPolaListowe.h"
#include "ztok/fields/TPoleWskObiektu.h"
#include "ztok/kernel/TObiekt.h"
#include "ztok/lists/TListaBazowa.h"
#include "ztok/lists/TPorownywaczDanych.h"

namespace ztok {

namespace {

// Looks at data, whether the comparison orders them. Every step answers whether they still may be so.
class TPrzeglad {
  public:
    // All that the object holds.
    bool Obiekt(const TObiektBazowy& obiekt) {
        const TKlasa* klasa = obiekt.Klasa();
        if (klasa == TPoleIntList::KlasaStatyczna() || klasa == TPoleStrList::KlasaStatyczna() ||
            klasa == TPoleWideStrList::KlasaStatyczna())
            return true;
        if (klasa->Ma(ckWlasnePorownanie | ckWlasneNiepuste) || glebokosc_ == kZaglebienieDomyslne)
            return false;
        const auto [wpis, nowy] = obejrzane_.emplace(&obiekt, false);
        if (!nowy)
            return wpis->second; // in the middle of being looked at: the pointers go round
        bool& obejrzany = wpis->second;
        ++glebokosc_;
        const bool moze = klasa->Ma(ckObiekt) ? Pola(static_cast<const TObiekt&>(obiekt))
                                              : Elementy(static_cast<const TListaBazowa&>(obiekt));
        --glebokosc_;
        return obejrzany = moze;
    }
    // What the selectors name in it.
    bool Wybrane(const TObiektBazowy& obiekt, TArgumenty pola) {
        if (!obiekt.Klasa()->Ma(ckObiekt) || obiekt.Klasa()->Ma(ckWlasneNiepuste))
            return false;
        TKlasaDanych& dane = klasy_[nullptr];
        ++dane.obiektow;
        for (std::size_t i = 0; i < pola.size(); ++i) {
            const TPole* pole = nullptr;
            if (pola[i].Tag() == TTag::Integer) {
                const auto nr = static_cast<std::int16_t>(pola[i].Calkowita());
                if (nr == CalyObiekt)
                    return false;
                pole = obiekt.PoleNiepuste(nr) ? static_cast<const TObiekt&>(obiekt).Pole(nr) : nullptr;
            } else if (pola[i].JestNazwa()) {
                pole = const_cast<TObiektBazowy&>(obiekt).PoleONazwie(pola[i].JakoTekst());
            } else {
                return false;
            }
            if (pole != nullptr && !Pole(*pole, dane.Pole(i)))
                return false;
        }
        return true;
    }
    // After all were looked at.
    [[nodiscard]] bool BrakObokDomyslnych() const {
        for (const auto& [klasa, dane] : klasy_)
            for (const TPoleDanych& pole : dane.pola)
                if (pole.domyslna && pole.pelnych < dane.obiektow)
                    return true;
        return false;
    }

    [[nodiscard]] const std::vector<const TObiektBazowy*>& Cele() const noexcept { return cele_; }

  private:
    struct TPoleDanych {
        const TKlasa* klasa = nullptr;
        std::int64_t pelnych = 0;
        bool domyslna = false;
    };
    struct TKlasaDanych {
        std::int64_t obiektow = 0;
        std::vector<TPoleDanych> pola;
        TPoleDanych& Pole(std::size_t nr) {
            if (pola.size() <= nr)
                pola.resize(nr + 1);
            return pola[nr];
        }
    };

    bool Pola(const TObiekt& obiekt) {
        TKlasaDanych& dane = klasy_[obiekt.Klasa()];
        ++dane.obiektow;
        for (int nr = 0; nr <= obiekt.OstUzywanePole(); ++nr)
            if (const TPole* pole = obiekt.Pole(nr);
                pole != nullptr && obiekt.PoleNiepuste(nr) && !Pole(*pole, dane.Pole(static_cast<std::size_t>(nr))))
                return false;
        return true;
    }
    bool Elementy(const TListaBazowa& lista) {
        if (!lista.Klasa()->Ma(ckListaObiektow))
            return lista.ListaPusta();
        for (const TObiektBazowy* element : lista)
            if (element != nullptr && !Obiekt(*element))
                return false;
        return true;
    }
    bool Pole(const TPole& pole, TPoleDanych& dane) {
        const TKlasa* klasa = pole.Klasa();
        if (dane.klasa == nullptr)
            dane.klasa = klasa;
        if (dane.klasa != klasa)
            return false;
        ++dane.pelnych;
        dane.domyslna = dane.domyslna || pole.MaDefWartosc();
        if (klasa->Ma(ckObiektBazowy))
            return Obiekt(static_cast<const TObiektBazowy&>(pole));
        if (klasa->Ma(ckPoleWsk)) {
            const TObiektBazowy* cel = static_cast<const TPoleWskObiektu&>(pole).Obiekt();
            if (cel != nullptr)
                cele_.push_back(cel);
            return !klasa->Ma(ckWlasnePorownanie) && (cel == nullptr || Obiekt(*cel));
        }
        // A class of an application's may compare as it likes.
        return klasa->modul == TPole::KlasaStatyczna()->modul && !JestNaN(pole);
    }
    static bool JestNaN(const TPole& pole) {
        switch (pole.Klasa()->kodPola) {
        case kpDouble:
            return std::isnan(static_cast<const TPoleDouble&>(pole).Wartosc());
        case kpDateTime:
        case kpDate:
        case kpTime:
            return std::isnan(static_cast<const TPoleDateTimeBazowe&>(pole).Wartosc());
        default:
            return false;
        }
    }

    std::unordered_map<const TKlasa*, TKlasaDanych> klasy_;
    std::unordered_map<const TObiektBazowy*, bool> obejrzane_;
    std::vector<const TObiektBazowy*> cele_;
    int glebokosc_ = 0;
};

} // namespace

TRozneElementy::TRozneElementy(TArgumenty pola, TRozmiarLiter rozmLiter)
    : pola_(pola), rozmLiter_(rozmLiter),
      elementy_([this](const TElement& a, const TElement& b) { return Porownaj(*a.obiekt, *b.obiekt) < 0; }) {}

bool TRozneElementy::MoznaUporzadkowac(const TListaBazowa& lista, const TListaBazowa* druga, TArgumenty pola,
                                       std::vector<const TObiektBazowy*>* cele) {
    constexpr std::int32_t kNiewiele = 32;
    if (lista.IleObiektow() + (druga == nullptr ? 0 : druga->IleObiektow()) < kNiewiele)
        return false;
    try {
        TPrzeglad przeglad;
        for (const TListaBazowa* l : {&lista, druga}) {
            for (std::int32_t i = 0; l != nullptr && i < l->IleObiektow(); ++i)
                if (const TObiektBazowy* element = l->Obiekty(i);
                    element != nullptr &&
                    !(pola.empty() ? przeglad.Obiekt(*element) : przeglad.Wybrane(*element, pola)))
                    return false;
        }
        if (cele != nullptr)
            *cele = przeglad.Cele();
        return !przeglad.BrakObokDomyslnych();
    } catch (...) {
        return false; // a bad path, or no memory: the comparison itself will tell
    }
}

std::int32_t TRozneElementy::Porownaj(const TObiektBazowy& a, const TObiektBazowy& b) const {
    return pola_.empty() ? TPorownywaczDanych::PorownajDowolne(a, b)
                         : a.PorownajWgPol(b, pola_, rozmLiter_, LocaleWin1250);
}

void TRozneElementy::ZgubPole(const TPole& pole) noexcept { zginal_ = zginal_ || pole.Klasa()->Ma(ckObiektBazowy); }

bool TRozneElementy::SaRowne(const TObiektBazowy& a, const TObiektBazowy& b) const { return Porownaj(a, b) == 0; }

std::int32_t TRozneElementy::Dodaj(const TObiektBazowy& element, std::int32_t pozycja) {
    const auto [wpis, nowy] = elementy_.insert({&element, pozycja});
    return nowy ? -1 : wpis->pozycja;
}

} // namespace ztok
