#include "ztok/lists/TPorownywaczDanych.h"

#include <algorithm>

#include "ztok/fields/Konwersje.h"
#include "ztok/fields/TPolaLiczbowe.h"
#include "ztok/fields/TPolaTekstowe.h"
#include "ztok/fields/TPoleWskObiektu.h"
#include "ztok/kernel/TObiekt.h"
#include "ztok/lists/TListaBazowa.h"

namespace ztok {

TPorownywaczDanych::TPorownywaczDanych(const TObiektBazowy* obiektCo, const TObiektBazowy* obiektZCzym,
                                       TRodzajPorownPol rodzaj, TRozmiarLiter rozmLiter, std::uint32_t localeID,
                                       TTrybPorownRef trybRef)
    : ObiektCo(obiektCo), ObiektZCzym(obiektZCzym), PominChwilowe(rodzaj == rpBezChwilowych),
      RefJakoSciezki(trybRef == tprRefJakoSciezki), RozmLiter(rozmLiter), LocaleID(localeID) {}

void TPorownywaczDanych::Porownuje(const TPole& co, const TPole& zCzym) {
    if (SaPorownywane(co, zCzym))
        return;
    FCo.Dopisz(&co);
    FZCzym.Dopisz(&zCzym);
}

bool TPorownywaczDanych::SaPorownywane(const TPole& co, const TPole& zCzym) const {
    std::size_t gdzie = 0;
    return JestPara(co, zCzym, gdzie);
}

bool TPorownywaczDanych::JestPara(const TPole& co, const TPole& zCzym, std::size_t& gdzie) const {
    gdzie = std::min(FCo.Znajdz(&co), FZCzym.Znajdz(&zCzym));
    return gdzie < FCo.Ile();
}

void TPorownywaczDanych::ZerujListy() {
    FCo.Zeruj();
    FZCzym.Zeruj();
    pary_.clear();
    ilePar_ = 0;
}

bool TPorownywaczDanych::NowaParaCelow(const TObiektBazowy* co, const TObiektBazowy* zCzym) {
    const auto miejsce = [](std::vector<TPara>& tablica, const TPara& para) -> TPara& {
        const std::size_t maska = tablica.size() - 1;
        std::size_t i = (MieszajWskaznik(para.co) ^ (MieszajWskaznik(para.zCzym) * 3)) & maska;
        while (tablica[i].co != nullptr && tablica[i] != para)
            i = (i + 1) & maska;
        return tablica[i];
    };
    const TPara para{co, zCzym};
    if (2 * (ilePar_ + 1) > pary_.size()) {
        std::vector<TPara> wieksza(pary_.empty() ? 16 : 2 * pary_.size());
        for (const TPara& stara : pary_)
            if (stara.co != nullptr)
                miejsce(wieksza, stara) = stara;
        pary_.swap(wieksza);
    }
    TPara& cel = miejsce(pary_, para);
    if (cel.co != nullptr)
        return false;
    cel = para;
    ++ilePar_;
    return true;
}

// --- the walk

namespace {

std::int32_t Znak(std::int32_t a, std::int32_t b) noexcept { return static_cast<int>(a > b) - static_cast<int>(a < b); }

constexpr std::int32_t kPrzedPierwszym = -1;

} // namespace

std::int32_t TPorownywaczDanych::PorownajKlasy(const TObiektBazowy& co, const TObiektBazowy& zCzym) noexcept {
    if (co.Klasa() == zCzym.Klasa())
        return 0;
    return Znak(co.NazwaKlasy().compare(zCzym.NazwaKlasy()), 0);
}

std::int32_t TPorownywaczDanych::PorownajDowolne(const TObiektBazowy& co, const TObiektBazowy& zCzym,
                                                 TPorownywaczDanych* porownywacz) {
    const std::int32_t wynik = PorownajKlasy(co, zCzym);
    return wynik != 0 ? wynik : co.Porownaj(zCzym, porownywacz);
}

bool TPorownywaczDanych::PorownajWskazania(const TObiektBazowy* co, const TObiektBazowy* zCzym, std::int32_t& wynik) {
    wynik = static_cast<int>(co != nullptr) - static_cast<int>(zCzym != nullptr);
    if (co == nullptr || zCzym == nullptr)
        return true;
    if (!RefJakoSciezki)
        return false;
    wynik = CompareStrSgn(co->Sciezka(ObiektCo, &pozycje_), zCzym->Sciezka(ObiektZCzym, &pozycje_));
    return true;
}

// Calls out at the level given, from which the levels of the call count on.
template <class F> std::int32_t TPorownywaczDanych::Zapytaj(int poziom, const F& porownaj) {
    class TPowrot {
      public:
        explicit TPowrot(int& zmienna) noexcept : zmienna_(zmienna), wartosc_(zmienna) {}
        TPowrot(const TPowrot&) = delete;
        TPowrot& operator=(const TPowrot&) = delete;
        ~TPowrot() { zmienna_ = wartosc_; }

      private:
        int& zmienna_;
        int wartosc_;
    };
    const TPowrot powrot(Zagniezdzenie.poziom_);
    Zagniezdzenie.poziom_ = poziom;
    return porownaj();
}

bool TPorownywaczDanych::WejdzDoCzesci(const TRamka& ramka, const TObiektBazowy& co, const TObiektBazowy& zCzym,
                                       TRamka& dalej, std::int32_t& wynik) {
    if (&co == &zCzym)
        return false;
    if (co.Klasa()->Ma(ckWlasnePorownanie)) {
        wynik = Zapytaj(ramka.poziom, [&] { return co.Porownaj(zCzym, this); });
        return false;
    }
    if (ramka.poziom >= Zagniezdzenie.granica)
        BladZagniezdzenia(co, Zagniezdzenie.granica);
    const bool lista = co.Klasa()->Ma(ckLista);
    co.SprawdzKlase(zCzym, lista ? TListaBazowa::KlasaStatyczna() : TObiekt::KlasaStatyczna());
    dalej = {&co, &zCzym, kPrzedPierwszym, ramka.poziom + 1};
    return true;
}

// What a pointer leads to is a tree of its own: its levels count anew.
bool TPorownywaczDanych::WejdzDoCelu(const TObiektBazowy* co, const TObiektBazowy* zCzym, TRamka& dalej,
                                     std::int32_t& wynik) {
    wynik = PorownajKlasy(*co, *zCzym);
    if (wynik != 0)
        return false;
    dalej = {co, zCzym, kPrzedPierwszym, poziomPrzebiegu_};
    return true;
}

namespace {

template <class P> std::int32_t PorownajLiczby(const TPole& a, const TPole& b) {
    const auto tu = static_cast<const P&>(a).Wartosc();
    const auto tam = static_cast<const P&>(b).Wartosc();
    return static_cast<int>(tu > tam) - static_cast<int>(tu < tam);
}

} // namespace

// Two fields that are exactly of the library's class of the code, if it is one of those met most.
bool TPorownywaczDanych::PorownajWgKodu(unsigned kod, const TPole& co, const TPole& zCzym, std::int32_t& wynik) const {
    switch (kod) {
    case kpString:
        wynik = PorownajTeksty(static_cast<const TPoleString&>(co).Wartosc(),
                               static_cast<const TPoleString&>(zCzym).Wartosc(), RozmLiter, LocaleID);
        return true;
    case kpInteger:
        wynik = PorownajLiczby<TPoleInteger>(co, zCzym);
        return true;
    case kpDouble:
        wynik = PorownajLiczby<TPoleDouble>(co, zCzym);
        return true;
    case kpByte:
        wynik = PorownajLiczby<TPoleByte>(co, zCzym);
        return true;
    default:
        return false;
    }
}

bool TPorownywaczDanych::KrokPol(TRamka& ramka, TRamka& dalej, std::int32_t& wynik) {
    const auto& a = static_cast<const TObiekt&>(*ramka.co);
    const auto& b = static_cast<const TObiekt&>(*ramka.zCzym);
    const bool wprost = ((a.Klasa()->cechy | b.Klasa()->cechy) & ckWlasneNiepuste) == 0;
    for (int nr = ramka.ostatni + 1; wynik == 0 && nr < std::max(a.ilePol_, b.ilePol_); ++nr) {
        if (PominChwilowe && !a.PoleZapisywane(nr))
            continue;
        const TPole* tu = a.Pole(nr);
        const TPole* tam = b.Pole(nr);
        constexpr unsigned kProste = TObiekt::spWartosc | TObiekt::spDokladna;
        if (wprost && tu != nullptr && tam != nullptr && a.Stany()[nr] == b.Stany()[nr] &&
            (a.Stany()[nr] & (kProste | TObiekt::spObiekt)) == kProste &&
            PorownajWgKodu(a.Stany()[nr] >> 4U, *tu, *tam, wynik))
            continue;
        if (!a.ObaPola(nr, b, tu, tam, wynik))
            continue;
        const std::uint8_t stan = a.Stany()[nr];
        ramka.ostatni = nr;
        if ((stan & TObiekt::spObiekt) != 0 && tam->Klasa()->Ma(ckObiektBazowy)) {
            if (WejdzDoCzesci(ramka, static_cast<const TObiektBazowy&>(*tu), static_cast<const TObiektBazowy&>(*tam),
                              dalej, wynik))
                return true;
        } else if ((stan >> 4U) == kpWskObiektu && tam != tu && !tu->Klasa()->Ma(ckWlasnePorownanie)) {
            tu->SprawdzKlase(*tam, TPoleWskObiektu::KlasaStatyczna());
            const TObiektBazowy* cel = static_cast<const TPoleWskObiektu*>(tu)->Obiekt();
            const TObiektBazowy* drugi = static_cast<const TPoleWskObiektu*>(tam)->Obiekt();
            if (PorownajWskazania(cel, drugi, wynik) || cel == drugi || !NowaParaCelow(cel, drugi))
                continue;
            if (cel->Klasa()->Ma(ckWlasnePorownanie))
                wynik = Zapytaj(ramka.poziom, [&] { return PorownajDowolne(*cel, *drugi, this); });
            else if (WejdzDoCelu(cel, drugi, dalej, wynik))
                return true;
        } else {
            wynik = tu->Porownaj(*tam, this);
        }
    }
    return false;
}

bool TPorownywaczDanych::KrokWskaznikow(TRamka& ramka, TRamka& dalej, std::int32_t& wynik) {
    const auto& a = static_cast<const TListaBazowa&>(*ramka.co);
    const auto& b = static_cast<const TListaBazowa&>(*ramka.zCzym);
    if (ramka.ostatni == kPrzedPierwszym) {
        if (SaPorownywane(a, b))
            return false;
        Porownuje(a, b);
        wynik = Znak(a.IleObiektow(), b.IleObiektow());
    }
    while (wynik == 0 && ++ramka.ostatni < a.IleObiektow()) {
        const TObiektBazowy* tu = a.Obiekty(ramka.ostatni);
        const TObiektBazowy* tam = b.Obiekty(ramka.ostatni);
        if (PorownajWskazania(tu, tam, wynik) || tu == tam)
            continue;
        if (!tu->Klasa()->Ma(ckWlasnePorownanie)) {
            if (WejdzDoCelu(tu, tam, dalej, wynik))
                return true;
            continue;
        }
        wynik = PorownajKlasy(*tu, *tam);
        if (wynik == 0)
            wynik = Zapytaj(ramka.poziom, [&] {
                const TPoziom poziom(Zagniezdzenie, a);
                return tu->WykonajPorownanie(*tam, *this);
            });
    }
    return false;
}

bool TPorownywaczDanych::Krok(TRamka& ramka, TRamka& dalej, std::int32_t& wynik) {
    const std::uint32_t cechy = ramka.co->Klasa()->cechy;
    if ((cechy & ckObiekt) != 0)
        return KrokPol(ramka, dalej, wynik);
    if ((cechy & ckListaWsk) != 0)
        return KrokWskaznikow(ramka, dalej, wynik);
    const auto& a = static_cast<const TListaBazowa&>(*ramka.co);
    const auto& b = static_cast<const TListaBazowa&>(*ramka.zCzym);
    if (ramka.ostatni == kPrzedPierwszym)
        wynik = Znak(a.IleObiektow(), b.IleObiektow());
    while (wynik == 0 && ++ramka.ostatni < a.IleObiektow()) {
        const TObiektBazowy* tu = a.Obiekty(ramka.ostatni);
        const TObiektBazowy* tam = b.Obiekty(ramka.ostatni);
        if (tu == nullptr || tam == nullptr)
            wynik = static_cast<int>(tu != nullptr) - static_cast<int>(tam != nullptr);
        else if ((cechy & ckKolekcja) != 0 && PorownajKlasy(*tu, *tam) != 0)
            wynik = 1; // whichever side asks
        else if (WejdzDoCzesci(ramka, *tu, *tam, dalej, wynik))
            return true;
    }
    return false;
}

std::int32_t TPorownywaczDanych::PorownajCzesci(const TObiektBazowy& co, const TObiektBazowy& zCzym) {
    class TPrzebieg {
      public:
        explicit TPrzebieg(TPorownywaczDanych& porownywacz) noexcept
            : porownywacz_(porownywacz), dno(porownywacz.ramki_.size()), poziom_(porownywacz.poziomPrzebiegu_) {
            porownywacz.poziomPrzebiegu_ = porownywacz.Zagniezdzenie.poziom_;
        }
        TPrzebieg(const TPrzebieg&) = delete;
        TPrzebieg& operator=(const TPrzebieg&) = delete;
        ~TPrzebieg() {
            porownywacz_.ramki_.erase(porownywacz_.ramki_.begin() + static_cast<std::ptrdiff_t>(dno),
                                      porownywacz_.ramki_.end());
            porownywacz_.poziomPrzebiegu_ = poziom_;
        }

      private:
        TPorownywaczDanych& porownywacz_;

      public:
        const std::size_t dno;

      private:
        int poziom_;
    };
    const TPrzebieg przebieg(*this);
    TRamka ramka{&co, &zCzym, kPrzedPierwszym, Zagniezdzenie.poziom_};
    for (;;) {
        TRamka dalej{};
        std::int32_t wynik = 0;
        if (Krok(ramka, dalej, wynik)) {
            ramki_.push_back(ramka);
            ramka = dalej;
            continue;
        }
        if (wynik != 0 || ramki_.size() == przebieg.dno)
            return wynik;
        ramka = ramki_.back();
        ramki_.pop_back();
    }
}

} // namespace ztok
