#include "ztok/lists/TListaWskObiektow.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <functional>
#include <new>
#include <utility>

#include "ztok/fields/Konwersje.h"
#include "ztok/kernel/Selektory.h"
#include "ztok/lists/TKopierDanych.h"
#include "ztok/lists/TPorownywaczDanych.h"
#include "ztok/persist/TOdczytywaczTekstu.h"
#include "ztok/persist/TZapisywaczTekstu.h"
#include "ztok/platform/TStrumien.h"

namespace ztok {

ZTOK_KLASA_DEF(TListaWskObiektow, TListaBazowa)
ZTOK_KLASA_DEF(TListaRefObiektow, TListaWskObiektow)

TListaWskObiektow::~TListaWskObiektow() { DokonczZycie(); }

TObiektBazowy* TListaWskObiektow::UsunObiekt(std::int32_t nrObiektu, bool /*zwolnij*/, bool zachowajPojemnosc) {
    return TListaBazowa::UsunObiekt(nrObiektu, false, zachowajPojemnosc);
}

namespace {

// The objects of a list, for one question after another whether it holds one.
class TZbior {
  public:
    explicit TZbior(const TListaBazowa& lista) {
        obiekty_.reserve(static_cast<std::size_t>(lista.IleObiektow()));
        for (const TObiektBazowy* obiekt : lista)
            obiekty_.push_back(obiekt);
        std::sort(obiekty_.begin(), obiekty_.end(), std::less<>());
    }
    [[nodiscard]] bool Ma(const TObiektBazowy* obiekt) const noexcept {
        return std::binary_search(obiekty_.begin(), obiekty_.end(), obiekt, std::less<>());
    }

  private:
    std::vector<const TObiektBazowy*> obiekty_;
};

// Nulls the slots that the condition picks, from the last to the first; true when any was. The condition is asked about
// all of them first: when it raises, the list is as it was.
template <class F>
bool NilujSloty(PListaObiektowBazowych obiekty, std::int32_t ile, std::vector<TObiektBazowy*>* usuniete, F warunek) {
    std::vector<std::int32_t> wybrane;
    for (std::int32_t i = ile - 1; i >= 0; --i)
        if (obiekty[i] != nullptr && warunek(*obiekty[i]))
            wybrane.push_back(i);
    if (usuniete != nullptr)
        usuniete->reserve(wybrane.size());
    for (const std::int32_t i : wybrane) {
        if (usuniete != nullptr)
            usuniete->push_back(obiekty[i]);
        obiekty[i] = nullptr;
    }
    return !wybrane.empty();
}

} // namespace

bool TListaWskObiektow::UsunObiekty(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter) {
    SprawdzDlugosci(u"UO", pola, wartosci);
    SprawdzSelektoryElementow(u"UO", this, pola);
    ZamknijDziury();
    const bool usunieto = NilujSloty(FObiekty, FIleObiektow, nullptr, [&](const TObiektBazowy& o) {
        return MaOcenioneCechy(o, pola, wartosci, rozmLiter);
    });
    if (usunieto)
        UsunObiektyNil(false);
    return usunieto;
}

bool TListaWskObiektow::UsunObiektyOprocz(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter) {
    SprawdzDlugosci(u"UOO", pola, wartosci);
    SprawdzSelektoryElementow(u"UOO", this, pola);
    ZamknijDziury();
    const bool usunieto = NilujSloty(FObiekty, FIleObiektow, nullptr, [&](const TObiektBazowy& o) {
        return !MaOcenioneCechy(o, pola, wartosci, rozmLiter);
    });
    if (usunieto)
        UsunObiektyNil(false);
    return usunieto;
}

bool TListaWskObiektow::UsunTeObiekty(const TListaWskObiektow& obiekty, bool zachowajPojemnosc) {
    if (&obiekty == this) {
        const bool byly = !ListaPusta();
        SkrocListe(0, zachowajPojemnosc);
        return byly;
    }
    ZamknijDziury();
    const TZbior zbior(obiekty);
    const bool usunieto =
        NilujSloty(FObiekty, FIleObiektow, nullptr, [&](const TObiektBazowy& o) { return zbior.Ma(&o); });
    if (usunieto)
        UsunObiektyNil(zachowajPojemnosc);
    return usunieto;
}

bool TListaWskObiektow::UsunDuplikaty(TArgumenty pola, TRozmiarLiter rozmLiter) {
    return WykonajUsunDuplikaty(pola, rozmLiter, false, false);
}

void TListaWskObiektow::ZerujRefDo(TObiektBazowy* cel) {
    ZamknijDziury();
    for (std::int32_t i = FIleObiektow - 1; i >= 0; --i)
        if (FObiekty[i] == cel)
            UsunObiekt(i, false, false);
}

void TListaWskObiektow::WyrownajDoListy(const TListaBazowa& lista, bool zachowajPojemnosc) {
    ZamknijDziury();
    if (lista.IleObiektow() <= FIleObiektow) {
        SkrocListe(lista.IleObiektow(), zachowajPojemnosc);
        return;
    }
    UstawPojemnosc(lista.IleObiektow());
    while (FIleObiektow < lista.IleObiektow())
        FObiekty[FIleObiektow++] = nullptr;
}

void TListaWskObiektow::PoPrzeniesieniu(TListaBazowa& lista, std::int32_t od, std::int32_t /*ile*/) {
    PoPrzeniesObiekty(lista, od);
}

bool TListaWskObiektow::WyszukajTenObiekt(const TObiektBazowy* obiekt, std::int32_t& gdzie) const noexcept {
    ZamknijDziury();
    const auto* koniec = FObiekty + FIleObiektow;
    const auto* miejsce = std::lower_bound(FObiekty, FObiekty + FIleObiektow, obiekt, std::less<>());
    gdzie = static_cast<std::int32_t>(miejsce - FObiekty);
    return miejsce != koniec && *miejsce == obiekt;
}

bool TListaWskObiektow::WyszukajTenObiekt(const TObiektBazowy* obiekt) const noexcept {
    std::int32_t gdzie = 0;
    return WyszukajTenObiekt(obiekt, gdzie);
}

bool TListaWskObiektow::DolaczObiektGdyBrak(TObiektBazowy* obiekt) {
    std::int32_t gdzie = 0;
    if (obiekt == nullptr || WyszukajTenObiekt(obiekt, gdzie))
        return false;
    DodajObiekt(obiekt, gdzie);
    return true;
}

std::int32_t TListaWskObiektow::WykonajPorownanie(const TPole& inne, TPorownywaczDanych& porownywacz) const {
    SprawdzKlase(inne, TListaBazowa::KlasaStatyczna());
    return porownywacz.PorownajCzesci(*this, static_cast<const TListaBazowa&>(inne));
}

void TListaWskObiektow::WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& /*kopier*/) {
    SprawdzKlase(zrodlo, TListaBazowa::KlasaStatyczna());
    const auto& lista = static_cast<const TListaBazowa&>(zrodlo);
    SkrocListe(0, true);
    UstawPojemnosc(std::max(FIleObiektow, lista.IleObiektow()));
    for (std::int32_t i = 0; i < lista.IleObiektow(); ++i)
        FObiekty[i] = lista.Obiekty(i);
    FIleObiektow = lista.IleObiektow();
}

void TListaWskObiektow::WykonajZapis(TStrumien& strumien, TZapisywaczDanych& zapisywacz) const {
    ZamknijDziury();
    std::vector<std::uint32_t> numery;
    numery.reserve(static_cast<std::size_t>(FIleObiektow));
    for (std::int32_t i = 0; i < FIleObiektow; ++i)
        if (std::int32_t gdzie = -1; zapisywacz.JestObiekt(FObiekty[i], gdzie))
            numery.push_back(static_cast<std::uint32_t>(gdzie) + 1);
    TZapisywaczDanych::ZapiszLicznik31(strumien, static_cast<std::uint32_t>(numery.size()));
    for (const std::uint32_t numer : numery)
        TZapisywaczDanych::ZapiszLicznik31(strumien, numer);
}

void TListaWskObiektow::WykonajOdczyt(TStrumien& strumien, TOdczytywaczDanych& odczytywacz) {
    ZerujDane();
    // The numbers wait with the reader; the list stays empty until they are resolved.
    const std::uint32_t ile = odczytywacz.WczytajIleElementow(strumien, 2);
    for (std::uint32_t i = 0; i < ile; ++i) {
        odczytywacz.ZuzyjPamiec(sizeof(void*) + sizeof(std::uint32_t));
        odczytywacz.NumerElementu(*this, TOdczytywaczDanych::WczytajLicznik31(strumien));
    }
}

void TListaWskObiektow::WykonajZapisTekstowy(TZapisywaczTekstu& zapisywacz) const {
    constexpr std::size_t maksWiersz = 64;
    ZamknijDziury();
    zapisywacz.ZwiekszAkapit();
    zapisywacz.ZapiszLinie("(");
    std::size_t wWierszu = 0; // characters of the numbers and their commas
    bool pierwszy = true;
    for (std::int32_t i = 0; i < FIleObiektow; ++i) {
        std::int32_t gdzie = -1;
        if (!zapisywacz.JestObiekt(FObiekty[i], gdzie))
            continue;
        char numer[16];
        const auto wynik = std::to_chars(numer, numer + sizeof numer, std::int64_t{gdzie} + 1);
        const auto ile = static_cast<std::size_t>(wynik.ptr - numer);
        if (!pierwszy) {
            zapisywacz.ZapiszTxt(",");
            ++wWierszu;
        }
        if (wWierszu + ile > maksWiersz) {
            zapisywacz.NowaLinia();
            wWierszu = 0;
        }
        zapisywacz.ZapiszTxt({numer, ile});
        wWierszu += ile;
        pierwszy = false;
    }
    zapisywacz.ZapiszTxt(")");
    zapisywacz.ZmniejszAkapit();
}

void TListaWskObiektow::WykonajOdczytTekstowy(TOdczytywaczTekstu& odczytywacz) {
    ZerujDane();
    TZTParser& parser = odczytywacz.Parser;
    parser.CheckToken('(');
    if (parser.NextToken() != ')') {
        odczytywacz.NumerElementu(*this, odczytywacz.WczytajNumer());
        while (parser.Token() == ',') {
            parser.NextToken();
            odczytywacz.ZuzyjPamiec(sizeof(void*) + sizeof(std::uint32_t));
            odczytywacz.NumerElementu(*this, odczytywacz.WczytajNumer());
        }
        parser.CheckToken(')');
    }
    parser.NextToken();
}

// --- reference list

// Where the holes of a list are, and where its elements stand once that was asked often enough.
struct TListaRefObiektow::TDziury {
    struct TMiejsce {
        const TObiektBazowy* obiekt;
        std::int32_t gdzie;
    };

    std::vector<std::int32_t> miejsca;
    std::vector<TMiejsce> spis; // by address
    std::int64_t przejrzane = 0;
};

TListaRefObiektow::~TListaRefObiektow() {
    DokonczZycie();
    delete slady_;
}

bool TListaRefObiektow::ZostawDziury(const TObiektBazowy* cel) noexcept {
    bool moze = true;
    try {
        if (slady_ == nullptr)
            slady_ = new TDziury;
        TDziury& d = *slady_;
        const std::size_t poprzednich = d.miejsca.size();
        // A few searches cost less than the list in order.
        constexpr std::int64_t kPrzegladow = 8;
        if (d.spis.empty() && d.przejrzane > kPrzegladow * FIleObiektow) {
            d.spis.reserve(static_cast<std::size_t>(FIleObiektow));
            for (std::int32_t i = 0; i < FIleObiektow; ++i)
                d.spis.push_back({FObiekty[i], i});
            std::sort(d.spis.begin(), d.spis.end(), [](const TDziury::TMiejsce& a, const TDziury::TMiejsce& b) {
                return std::less<>()(a.obiekt, b.obiekt);
            });
        }
        if (!d.spis.empty()) {
            auto p = std::lower_bound(
                d.spis.begin(), d.spis.end(), cel,
                [](const TDziury::TMiejsce& m, const TObiektBazowy* o) { return std::less<>()(m.obiekt, o); });
            for (; p != d.spis.end() && p->obiekt == cel; ++p)
                if (FObiekty[p->gdzie] == cel)
                    d.miejsca.push_back(p->gdzie);
        } else {
            for (std::int32_t i = FIleObiektow - 1; i >= 0; --i) {
                ++d.przejrzane;
                if (FObiekty[i] != cel)
                    continue;
                d.miejsca.push_back(i);
                if (!powtorki_)
                    break;
            }
        }
        for (std::size_t i = poprzednich; i < d.miejsca.size(); ++i)
            FObiekty[d.miejsca[i]] = nullptr;
    } catch (const std::bad_alloc&) {
        moze = false;
        if (slady_ != nullptr) // of this element nothing was taken out yet
            while (!slady_->miejsca.empty() && FObiekty[slady_->miejsca.back()] != nullptr)
                slady_->miejsca.pop_back();
    }
    if (slady_ != nullptr && !slady_->miejsca.empty()) {
        dziury_.store(saDziury, std::memory_order_release);
    } else { // only what has holes tells when the places change
        delete slady_;
        slady_ = nullptr;
    }
    return moze;
}

std::int32_t TListaRefObiektow::UsunDziury() noexcept {
    std::vector<std::int32_t>& miejsca = slady_->miejsca;
    std::sort(miejsca.begin(), miejsca.end());
    std::int32_t pojemnosc = FPojemnosc;
    for (std::size_t i = 0; i < miejsca.size(); ++i) {
        const std::int32_t od = miejsca[i] + 1;
        const std::int32_t doKtorego = i + 1 < miejsca.size() ? miejsca[i + 1] : FIleObiektow;
        std::copy(FObiekty + od, FObiekty + doKtorego, FObiekty + od - static_cast<std::int32_t>(i) - 1);
        pojemnosc = PojemnoscPoUsunieciu(pojemnosc, FIleObiektow - static_cast<std::int32_t>(i) - 1);
    }
    FIleObiektow -= static_cast<std::int32_t>(miejsca.size());
    delete slady_;
    slady_ = nullptr;
    return pojemnosc;
}

void TListaRefObiektow::ZerujRefDo(TObiektBazowy* cel) {
    constexpr std::int32_t kKrotka = 64; // closes up at once
    const bool zDziurami = cel != nullptr && FIleObiektow > kKrotka && Klasa() == KlasaStatyczna();
    if (zDziurami && !MaDziury() && !powtorki_ && FObiekty[FIleObiektow - 1] == cel)
        UsunObiekt(FIleObiektow - 1, false, false); // elements often die from the last to the first
    else if (zDziurami && ZostawDziury(cel))
        cel->ZwolnijRefOd(this);
    else
        TListaWskObiektow::ZerujRefDo(cel);
}

void TListaRefObiektow::Wyrejestruj(std::vector<TObiektBazowy*>& usuniete) {
    std::sort(usuniete.begin(), usuniete.end(), std::less<>());
    usuniete.erase(std::unique(usuniete.begin(), usuniete.end()), usuniete.end());
    // Those that still occur in the list stay registered.
    if (powtorki_) {
        const TZbior zostaly(*this);
        usuniete.erase(std::remove_if(usuniete.begin(), usuniete.end(),
                                      [&](const TObiektBazowy* obiekt) { return zostaly.Ma(obiekt); }),
                       usuniete.end());
    }
    for (TObiektBazowy* obiekt : usuniete)
        obiekt->ZwolnijRefOd(this);
}

TObiektBazowy* TListaRefObiektow::DodajObiekt(TObiektBazowy* nowyObiekt, std::int32_t gdzie) {
    ZamknijDziury();
    if (FIleObiektow == FPojemnosc)
        ZwiekszPojemnosc();
    if (FIleObiektow == 0)
        powtorki_ = false;
    if (nowyObiekt != nullptr)
        Zarejestruj(*nowyObiekt);
    return TListaWskObiektow::DodajObiekt(nowyObiekt, gdzie);
}

TObiektBazowy* TListaRefObiektow::UsunObiekt(std::int32_t nrObiektu, bool zwolnij, bool zachowajPojemnosc) {
    TObiektBazowy* obiekt = TListaWskObiektow::UsunObiekt(nrObiektu, zwolnij, zachowajPojemnosc);
    if (obiekt != nullptr && (!powtorki_ || ZnajdzObiekt(obiekt) < 0))
        obiekt->ZwolnijRefOd(this);
    return obiekt;
}

bool TListaRefObiektow::UsunObiekty(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter) {
    SprawdzDlugosci(u"UO", pola, wartosci);
    SprawdzSelektoryElementow(u"UO", this, pola);
    std::vector<TObiektBazowy*> usuniete;
    ZamknijDziury();
    NilujSloty(FObiekty, FIleObiektow, &usuniete,
               [&](const TObiektBazowy& o) { return MaOcenioneCechy(o, pola, wartosci, rozmLiter); });
    if (usuniete.empty())
        return false;
    UsunObiektyNil(false);
    Wyrejestruj(usuniete);
    return true;
}

bool TListaRefObiektow::UsunObiektyOprocz(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter) {
    SprawdzDlugosci(u"UOO", pola, wartosci);
    SprawdzSelektoryElementow(u"UOO", this, pola);
    std::vector<TObiektBazowy*> usuniete;
    ZamknijDziury();
    NilujSloty(FObiekty, FIleObiektow, &usuniete,
               [&](const TObiektBazowy& o) { return !MaOcenioneCechy(o, pola, wartosci, rozmLiter); });
    if (usuniete.empty())
        return false;
    UsunObiektyNil(false);
    Wyrejestruj(usuniete);
    return true;
}

bool TListaRefObiektow::UsunTeObiekty(const TListaWskObiektow& obiekty, bool zachowajPojemnosc) {
    if (&obiekty == this)
        return TListaWskObiektow::UsunTeObiekty(obiekty, zachowajPojemnosc);
    std::vector<TObiektBazowy*> usuniete;
    const TZbior zbior(obiekty);
    ZamknijDziury();
    NilujSloty(FObiekty, FIleObiektow, &usuniete, [&](const TObiektBazowy& o) { return zbior.Ma(&o); });
    if (usuniete.empty())
        return false;
    UsunObiektyNil(zachowajPojemnosc);
    Wyrejestruj(usuniete);
    return true;
}

bool TListaRefObiektow::UsunDuplikaty(TArgumenty pola, TRozmiarLiter rozmLiter) {
    return WykonajUsunDuplikaty(pola, rozmLiter, true, false);
}

void TListaRefObiektow::SkrocListe(std::int32_t nowyRozm, bool zachowajPojemnosc) {
    const std::int32_t granica = nowyRozm < 0 ? 0 : nowyRozm;
    ZamknijDziury();
    // Looking for a few of them, or among a few, needs no order.
    std::vector<const TObiektBazowy*> zostaja;
    if (powtorki_ && granica > 16 && FIleObiektow - granica > 16) {
        zostaja.assign(FObiekty, FObiekty + granica);
        std::sort(zostaja.begin(), zostaja.end(), std::less<>());
    }
    while (FIleObiektow > granica) {
        TObiektBazowy* obiekt = FObiekty[--FIleObiektow];
        const bool zostaje = !powtorki_ ? false
                             : zostaja.empty()
                                 ? std::find(FObiekty, FObiekty + granica, obiekt) != FObiekty + granica
                                 : std::binary_search(zostaja.begin(), zostaja.end(), obiekt, std::less<>());
        if (obiekt != nullptr && !zostaje)
            obiekt->ZwolnijRefOd(this);
    }
    TListaWskObiektow::SkrocListe(nowyRozm, zachowajPojemnosc);
}

void TListaRefObiektow::ZerujDane() {
    ZamknijDziury();
    while (FIleObiektow > 0)
        if (TObiektBazowy* obiekt = FObiekty[--FIleObiektow]; obiekt != nullptr)
            obiekt->ZwolnijRefOd(this);
    TListaWskObiektow::ZerujDane();
}

void TListaRefObiektow::WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) {
    TListaWskObiektow::WykonajKopiowanie(zrodlo, kopier);
    powtorki_ = true; // nobody has looked
    if (kopier.Odklada(*this))
        return; // the copier registers each with what it points at in the end
    powtorki_ = false;
    const std::int32_t ile = std::exchange(FIleObiektow, 0);
    while (FIleObiektow < ile) {
        if (FObiekty[FIleObiektow] != nullptr)
            Zarejestruj(*FObiekty[FIleObiektow]);
        ++FIleObiektow;
    }
}

void TListaRefObiektow::PoPrzeniesieniu(TListaBazowa& lista, std::int32_t od, std::int32_t ile) {
    for (std::int32_t i = od; i < od + ile; ++i)
        if (TObiektBazowy* element = Obiekty(i); element != nullptr)
            Zarejestruj(*element);
    TListaWskObiektow::PoPrzeniesieniu(lista, od, ile);
}

void TListaRefObiektow::ZwolnijPrzeniesione(const TListaBazowa& dokad, std::int32_t od, std::int32_t doKtorego) {
    const TZbior zostaly(*this);
    for (std::int32_t i = od; i < doKtorego; ++i)
        if (TObiektBazowy* element = dokad.Obiekty(i); element != nullptr && !zostaly.Ma(element))
            element->ZwolnijRefOd(this);
}

} // namespace ztok
