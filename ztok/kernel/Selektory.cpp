#include "ztok/kernel/Selektory.h"

#include <algorithm>

#include "ztok/fields/Konwersje.h"
#include "ztok/fields/TPoleWskObiektu.h"
#include "ztok/kernel/JadroBiezace.h"
#include "ztok/kernel/TObiekt.h"
#include "ztok/kernel/TOpisKlasy.h"
#include "ztok/lists/TListaBazowa.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/LiczbyTekst.h"
#include "ztok/platform/PulaWnetrze.h"
#include "ztok/util/ZTBledy.h"
#include "ztok/util/Zagniezdzenie.h"

namespace ztok {

namespace {

ZTOK_TLS_BLISKI constinit thread_local int ileOcenionych = 0; // how many TOcenione live

// What a class, or an object, says of a selector.
enum class EOcena : std::uint8_t {
    Dobra,
    Zla,
    Otwarta, // nothing: it depends on objects that are not there
};

EOcena OcenKlasy(const TKlasa* klasa, std::u16string_view sciezka, int kroki);

// The description of an element, between the brackets.
EOcena OcenOpisElementu(const TKlasa* klasa, std::u16string_view opis, int kroki) {
    if (std::int32_t numer = 0; CompareTxtSgn(opis, u"Max") == 0 || opis == u"?" || SprobujTekstNaInt(opis, numer))
        return EOcena::Dobra;
    std::vector<TArgument> nazwy;
    std::vector<TArgument> wartosci;
    if (!RozbierzWarunki(opis, nazwy, wartosci))
        return EOcena::Zla;
    const bool zla = std::any_of(nazwy.begin(), nazwy.end(), [&](const TArgument& nazwa) {
        return OcenKlasy(klasa, nazwa.JakoTekst(), kroki) == EOcena::Zla;
    });
    return zla ? EOcena::Zla : EOcena::Dobra;
}

// A path seen from any object of the class; null: of some class.
EOcena OcenKlasy(const TKlasa* klasa, std::u16string_view sciezka, int kroki) {
    for (; !sciezka.empty(); --kroki) {
        if (klasa == nullptr)
            return EOcena::Otwarta;
        if (kroki == 0)
            return EOcena::Zla;
        if (klasa->Ma(ckLista)) {
            std::u16string_view opis;
            if (!TListaBazowa::WydzielNumerElem(sciezka, opis))
                return EOcena::Zla;
            klasa = JadroKlas()->TypObiektowListy(klasa);
            if (OcenOpisElementu(klasa, opis, kroki - 1) == EOcena::Zla)
                return EOcena::Zla;
            continue;
        }
        if (!klasa->Ma(ckObiekt))
            return EOcena::Zla;
        if (klasa->Ma(ckWlasneNazwyPol))
            return EOcena::Otwarta; // only an object knows
        std::u16string_view reszta;
        WydzielNazwePola(sciezka, reszta);
        const TListaWlasciwosci* pola = JadroBiezace().UtworzMigawke(klasa).opis->GetListaWlasciwosci();
        int nr = -1;
        if (pola == nullptr || !pola->JestPoleONazwie(sciezka, nr))
            return EOcena::Zla;
        klasa = pola->GetWlasciwosc(nr)->GetTyp();
        sciezka = reszta;
        if (!sciezka.empty() && klasa != nullptr && klasa->Ma(ckPoleWsk))
            return EOcena::Otwarta;
    }
    return EOcena::Dobra;
}

// Whether the declared target of a pointer may be of any class: one without fields, or a list of no item class.
bool Otwarty(const TKlasa* cel) {
    if (cel == nullptr || (cel->Ma(ckLista) ? JadroKlas()->TypObiektowListy(cel) == nullptr : !cel->Ma(ckObiekt)))
        return true;
    return cel->Ma(ckObiekt) && JadroBiezace().UtworzMigawke(cel).ilePol == 0;
}

const TKlasa* CelWskaznika(const TObiekt& obiekt, int nr) {
    const TMigawkaOpisu& migawka = JadroBiezace().UtworzMigawke(obiekt.Klasa());
    const TWierszPola* wiersz = nr < migawka.ilePol ? migawka.pola[nr].wiersz : nullptr;
    return wiersz == nullptr || wiersz->klasa == nullptr ? nullptr : wiersz->klasa();
}

// A path seen from this object: as far as there are objects on the way, they are asked.
EOcena Ocen(const TObiektBazowy& obiekt, std::u16string_view sciezka, int kroki) {
    if (sciezka.empty())
        return EOcena::Dobra;
    if (kroki == 0)
        return EOcena::Zla;
    if (obiekt.Klasa()->Ma(ckLista)) {
        const auto& lista = static_cast<const TListaBazowa&>(obiekt);
        const EOcena klasy = OcenKlasy(obiekt.Klasa(), sciezka, kroki);
        std::u16string_view opis;
        if (klasy == EOcena::Dobra || !TListaBazowa::WydzielNumerElem(sciezka, opis) ||
            OcenOpisElementu(nullptr, opis, kroki) == EOcena::Zla)
            return klasy;
        // Elements may be of classes that know more than the item class.
        for (std::int32_t i = 0; i < lista.IleObiektow(); ++i)
            if (const TObiektBazowy* element = lista.Obiekty(i);
                element != nullptr && Ocen(*element, sciezka, kroki - 1) != EOcena::Zla)
                return EOcena::Otwarta;
        return lista.ListaPusta() ? klasy : EOcena::Zla;
    }
    if (!obiekt.Klasa()->Ma(ckObiekt))
        return EOcena::Zla;
    const auto& zPolami = static_cast<const TObiekt&>(obiekt);
    std::u16string_view reszta;
    WydzielNazwePola(sciezka, reszta);
    const int nr = zPolami.NrPolaONazwie(sciezka);
    if (nr < 0)
        return EOcena::Zla;
    if (reszta.empty())
        return EOcena::Dobra;
    const TPole* pole = zPolami.Pole(nr);
    const TKlasa* typ = pole != nullptr ? pole->Klasa() : zPolami.TypPolaNr(nr);
    if (typ == nullptr || (pole == nullptr && !typ->Ma(ckPoleWsk)))
        return typ == nullptr ? EOcena::Zla : OcenKlasy(typ, reszta, kroki - 1);
    if (typ->Ma(ckPoleWsk)) {
        const TObiektBazowy* cel = pole == nullptr ? nullptr : static_cast<const TPoleWskObiektu*>(pole)->Obiekt();
        return cel == nullptr || Otwarty(CelWskaznika(zPolami, nr)) ? EOcena::Otwarta : Ocen(*cel, reszta, kroki - 1);
    }
    return typ->Ma(ckObiektBazowy) ? Ocen(static_cast<const TObiektBazowy&>(*pole), reszta, kroki - 1) : EOcena::Zla;
}

EOcena OcenNumer(const TObiektBazowy& obiekt, int nr) {
    if (nr == CalyObiekt || (obiekt.Klasa()->Ma(ckLista) && nr >= 0)) // elements: an index without one has no feature
        return EOcena::Dobra;
    if (!obiekt.Klasa()->Ma(ckObiekt))
        return EOcena::Zla;
    const auto& zPolami = static_cast<const TObiekt&>(obiekt);
    return zPolami.Pole(nr) != nullptr || zPolami.TypPolaNr(nr) != nullptr ? EOcena::Dobra : EOcena::Zla;
}

EOcena OcenNumerKlasy(const TKlasa* klasa, int nr) {
    if (nr == CalyObiekt)
        return EOcena::Dobra;
    if (klasa == nullptr || klasa->Ma(ckWlasneTypyPol))
        return EOcena::Otwarta;
    const TMigawkaOpisu& migawka = JadroBiezace().UtworzMigawke(klasa);
    return nr >= 0 && nr < migawka.ilePol && migawka.pola[nr].klasa != nullptr ? EOcena::Dobra : EOcena::Zla;
}

// Whether there is nothing between two dots, or before the first. Brackets may hold any text.
bool PustyKrok(std::u16string_view sciezka) noexcept {
    bool wNawiasie = false;
    char16_t poprzedni = u'.';
    for (const char16_t znak : sciezka) {
        if (!wNawiasie && znak == u'.' && poprzedni == u'.')
            return true;
        wNawiasie = znak == u'[' || (wNawiasie && znak != u']');
        poprzedni = znak;
    }
    return false;
}

// One selector of an operation.
class TSelektor {
  public:
    TSelektor(std::u16string_view operacja, const TArgument& selektor)
        : operacja_(operacja), numer_(selektor.Tag() == TTag::Integer) {
        if (numer_)
            nr_ = static_cast<std::int16_t>(selektor.Calkowita());
        else if (selektor.JestNazwa())
            sciezka_ = selektor.JakoTekst();
        else
            ZTErrorFmt(kmBlednyTypIndeksu, {operacja});
        if (PustyKrok(sciezka_))
            Blad(); // whatever the classes are
    }
    [[nodiscard]] bool Caly() const noexcept { return numer_ ? nr_ == CalyObiekt : sciezka_.empty(); }
    [[nodiscard]] EOcena Ocen(const TObiektBazowy& obiekt) const {
        return numer_ ? OcenNumer(obiekt, nr_) : ztok::Ocen(obiekt, sciezka_, kZaglebienieDomyslne);
    }
    [[nodiscard]] EOcena OcenKlasy(const TKlasa* klasa) const {
        return numer_ ? OcenNumerKlasy(klasa, nr_) : ztok::OcenKlasy(klasa, sciezka_, kZaglebienieDomyslne);
    }
    [[nodiscard]] EOcena OcenElementy(const TListaBazowa& lista) const;
    [[noreturn]] void Blad() const {
        if (numer_)
            ZTErrorFmt(kmBlednePodpole, {operacja_, IntNaTekst(nr_)});
        ZTErrorFmt(kmBlednaSciezka, {operacja_, sciezka_});
    }

  private:
    std::u16string_view operacja_;
    bool numer_;
    int nr_ = CalyObiekt;
    std::u16string sciezka_;
};

EOcena TSelektor::OcenElementy(const TListaBazowa& lista) const {
    const TKlasa* typ = JadroKlas()->TypObiektowListy(lista.Klasa());
    if (typ != nullptr && !typ->Ma(ckObiekt))
        return EOcena::Otwarta; // elements without fields of their own take a selector as they like
    const EOcena klasy = OcenKlasy(typ);
    if (klasy == EOcena::Dobra || lista.ListaPusta() ||
        (klasy == EOcena::Zla && lista.Jednorodna() &&
         (numer_ || sciezka_.find_first_of(u".[") == std::u16string::npos)))
        return klasy;
    const TKlasa* poprzednia = nullptr; // a class that does not know the number says so once
    for (std::int32_t i = 0; i < lista.IleObiektow(); ++i) {
        const TObiektBazowy* element = lista.Obiekty(i);
        if (element == nullptr || (numer_ && element->Klasa() == poprzednia))
            continue;
        poprzednia = element->Klasa();
        if (!poprzednia->Ma(ckObiekt) || Ocen(*element) != EOcena::Zla)
            return EOcena::Otwarta;
    }
    return EOcena::Zla;
}

} // namespace

TOcenione::TOcenione() noexcept { ++ileOcenionych; }
TOcenione::~TOcenione() { --ileOcenionych; }
bool TOcenione::Trwa() noexcept { return ileOcenionych != 0; }

void SprawdzSelektory(std::u16string_view operacja, const TObiektBazowy& obiekt, TArgumenty pola,
                      const TObiektBazowy* drugi) {
    if (TOcenione::Trwa())
        return;
    for (const TArgument& pole : pola)
        if (const TSelektor selektor(operacja, pole); !selektor.Caly() && selektor.Ocen(obiekt) == EOcena::Zla &&
                                                      (drugi == nullptr || selektor.Ocen(*drugi) == EOcena::Zla))
            selektor.Blad();
}

void SprawdzSelektoryElementow(std::u16string_view operacja, const TListaBazowa* lista, TArgumenty pola,
                               const TObiektBazowy* drugi) {
    if (TOcenione::Trwa())
        return;
    for (const TArgument& pole : pola) {
        const TSelektor selektor(operacja, pole);
        if (selektor.Caly() || lista == nullptr || selektor.OcenElementy(*lista) != EOcena::Zla)
            continue;
        if (drugi == nullptr ||
            (drugi->Klasa()->Ma(ckLista) ? selektor.OcenElementy(static_cast<const TListaBazowa&>(*drugi))
                                         : selektor.Ocen(*drugi)) == EOcena::Zla)
            selektor.Blad();
    }
}

bool ZnaSelektor(const TObiektBazowy& obiekt, const TArgument& selektor) {
    if (selektor.Tag() == TTag::Integer)
        return OcenNumer(obiekt, static_cast<std::int16_t>(selektor.Calkowita())) != EOcena::Zla;
    return TSelektor({}, selektor).Ocen(obiekt) != EOcena::Zla;
}

bool MaOcenioneCechy(const TObiektBazowy& element, TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter) {
    const TOcenione ocenione;
    return element.MaCechy(pola, wartosci, rozmLiter);
}

std::int32_t PorownajWgOcenionych(const TObiektBazowy& a, const TObiektBazowy& b, TArgumenty pola,
                                  TRozmiarLiter rozmLiter, std::uint32_t localeID) {
    const TOcenione ocenione;
    return a.PorownajWgPol(b, pola, rozmLiter, localeID);
}

void SprawdzDlugosci(std::u16string_view operacja, TArgumenty pola, TArgumenty wartosci) {
    if (pola.size() != wartosci.size())
        ZTErrorFmt(kmZlaLiczbaElementow, {operacja, static_cast<std::int64_t>(wartosci.size())});
}

} // namespace ztok
