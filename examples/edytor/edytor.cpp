// A terminal editor of one object, made of edit functions. It reads commands from the standard input up to its end or
// `koniec`, and prints the object as text then.
//
//     (an empty line)      the fields, by their labels
//     FIELD                one field
//     FIELD = TEXT         sets it; no text clears it
//     FIELD !              opens a nested object in the edit function of its class
//     cofnij               takes the last change back
//     koniec               leaves the object
//
// A field is named by its number, its label or its name.
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "ztok/kernel/Typypolbazowe.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/LiczbyTekst.h"

using namespace ztok;

namespace {

class TKlient : public TObiekt {
    ZTOK_OBIEKT(TKlient, TObiekt, (0, Nazwa, String), (1, KodPocztowy, String), (2, Miasto, String))
};
class TZlecenie : public TObiekt {
    ZTOK_OBIEKT(TZlecenie, TObiekt, (0, Numer, String), (1, DataPrzyjecia, Date), (2, Pilne, Boolean),
                (3, KwotaNetto, Double), (4, Sztuk, Integer), (5, Klient, Obiekt<TKlient>),
                (6, Uwagi, Obiekt<TArrayOfConst>))
};

void Wypisz(std::u16string_view tekst) { std::fputs((Utf8ZUtf16(tekst) + '\n').c_str(), stdout); }

// --- edit functions of values: they get the new text as a parameter, and answer whether they took it

// The default one.
bool EdytujWartosc(TPole& pole, TObiektBazowy* wlasciciel, bool /*flaga*/) {
    const TZTParam* parametry = JakoParametry(wlasciciel);
    if (parametry == nullptr)
        return false;
    pole.SetJakoString(parametry->Wartosc(0).Tekst());
    return true;
}

bool EdytujLiczbeSztuk(TPole& pole, TObiektBazowy* wlasciciel, bool flaga) {
    const std::u16string poprzednia = pole.GetJakoString();
    if (!EdytujWartosc(pole, wlasciciel, flaga))
        return false;
    if (static_cast<TPoleInteger&>(pole).Wartosc() >= 0)
        return true;
    pole.SetJakoString(poprzednia);
    JakoParametry(wlasciciel)->Ustaw(u"Uwaga", u"liczba nie może być ujemna");
    return false;
}

// Each text is one more element: a number when it looks like one.
bool EdytujTablice(TPole& pole, TObiektBazowy* wlasciciel, bool /*flaga*/) {
    const TZTParam* parametry = JakoParametry(wlasciciel);
    if (parametry == nullptr)
        return false;
    auto& tablica = static_cast<TArrayOfConst&>(pole);
    std::int32_t liczba = 0;
    if (SprobujTekstNaInt(parametry->Wartosc(0).Tekst(), liczba))
        tablica.Dodaj(liczba);
    else
        tablica.Dodaj(parametry->Wartosc(0));
    return true;
}

// --- the editor of an object

class TEdytor {
  public:
    explicit TEdytor(TObiekt& obiekt) : obiekt_(obiekt) {}

    // Obeys commands until `koniec` or the end of the input; answers whether the object has changed.
    bool Wykonaj() {
        WypiszPola();
        for (std::string wiersz; std::getline(std::cin, wiersz);) {
            const std::u16string polecenie(ZTOKTrim(Utf16ZUtf8(wiersz)));
            if (polecenie == u"koniec")
                break;
            try {
                Polecenie(polecenie);
            } catch (const EWyjatek& e) {
                Wypisz(u"! " + std::u16string(e.Komunikat()));
            }
        }
        return !historia_.empty();
    }

  private:
    void Polecenie(std::u16string_view polecenie) {
        if (polecenie.empty()) {
            WypiszPola();
        } else if (polecenie == u"cofnij") {
            Cofnij();
        } else if (const std::size_t znak = polecenie.find(u'='); znak != std::u16string_view::npos) {
            if (const int nr = NrPola(polecenie.substr(0, znak)); nr >= 0) {
                Ustaw(nr, ZTOKTrim(polecenie.substr(znak + 1)));
                WypiszPole(nr);
            }
        } else if (polecenie.back() == u'!') {
            if (const int nr = NrPola(polecenie.substr(0, polecenie.size() - 1)); nr >= 0)
                Otworz(nr);
        } else if (const int nr = NrPola(polecenie); nr >= 0) {
            WypiszPole(nr);
        }
    }

    int NrPola(std::u16string_view nazwa) const {
        nazwa = ZTOKTrim(nazwa);
        std::int32_t numer = -1;
        const int ile = obiekt_.RozmPolaNr(CalyObiekt);
        for (int nr = 0; nr < ile; ++nr)
            if (CompareTxtSgn(obiekt_.NazwaEdycjiPolaNr(nr), nazwa) == 0)
                return nr;
        if (!SprobujTekstNaInt(nazwa, numer))
            numer = obiekt_.NrPolaONazwie(nazwa);
        if (obiekt_.TypPolaNr(numer) != nullptr)
            return numer;
        Wypisz(u"! nie ma pola " + std::u16string(nazwa));
        return -1;
    }

    void WypiszPola() const {
        Wypisz(obiekt_.NazwaPolaNr(CalyObiekt) + u":");
        for (int nr = 0; nr < obiekt_.RozmPolaNr(CalyObiekt); ++nr)
            WypiszPole(nr);
    }

    void WypiszPole(int nr) const {
        std::u16string wartosc;
        if (obiekt_.PoleNiepuste(nr)) {
            const TPole& pole = *obiekt_.Pole(nr);
            wartosc = pole.Klasa()->Ma(ckObiekt) ? u"(" + static_cast<const TObiekt&>(pole).OpisTekstowy() + u")"
                                                 : pole.GetJakoString();
        }
        Wypisz(IntNaTekst(nr) + u". " + obiekt_.NazwaEdycjiPolaNr(nr) + u" = " + wartosc);
    }

    void Ustaw(int nr, std::u16string_view tekst) {
        Zmien([&] {
            if (tekst.empty()) {
                obiekt_.SetMaWartosc(nr, false);
                return true;
            }
            TPole& pole = *obiekt_.DajPole(nr);
            const TIntf<TZTParam> parametry = ZTParam({tekst}, &obiekt_);
            const bool przyjeto = pole.EdytujDane(parametry.get(), false);
            if (przyjeto)
                obiekt_.SetMaWartosc(nr, true);
            else if (parametry->NrWartosci(u"Uwaga") >= 0)
                Wypisz(u"! " + parametry->Wartosc(u"Uwaga").Tekst());
            return przyjeto;
        });
    }

    void Otworz(int nr) {
        TPole& pole = *obiekt_.DajPole(nr);
        if (!pole.Klasa()->Ma(ckObiekt)) {
            Wypisz(u"! to pole nie jest obiektem");
            return;
        }
        // The nearest class that has an edit function, its ancestors included.
        Zmien([&] { return pole.EdytujDaneWgKlasy(&obiekt_, false, TObiekt::KlasaStatyczna()); });
        WypiszPola();
    }

    // Runs a change, and remembers what was before it when it was one. An error leaves the object as it was.
    template <class F> void Zmien(F zmiana) {
        historia_.push_back(obiekt_.KlonujObiekt(false));
        try {
            if (!zmiana())
                historia_.pop_back();
        } catch (...) {
            obiekt_.KopiujDane(*historia_.back());
            historia_.pop_back();
            throw;
        }
    }

    void Cofnij() {
        if (historia_.empty()) {
            Wypisz(u"! nie ma czego cofnąć");
            return;
        }
        obiekt_.KopiujDane(*historia_.back());
        historia_.pop_back();
        WypiszPola();
    }

    TObiekt& obiekt_;
    std::vector<TWlasny<TObiektBazowy>> historia_;
};

bool EdytujObiekt(TPole& pole, TObiektBazowy* /*wlasciciel*/, bool /*flaga*/) {
    return TEdytor(static_cast<TObiekt&>(pole)).Wykonaj();
}

// A customer must have a name: without one, everything is as it was.
bool EdytujKlienta(TPole& pole, TObiektBazowy* /*wlasciciel*/, bool /*flaga*/) {
    auto& klient = static_cast<TKlient&>(pole);
    const TWlasny<TObiektBazowy> przed = klient.KlonujObiekt(false);
    if (!TEdytor(klient).Wykonaj())
        return false;
    if (!klient.GetNazwa().empty())
        return true;
    Wypisz(u"! klient musi mieć nazwę, przywrócono poprzednie dane");
    klient.KopiujDane(*przed);
    return false;
}

} // namespace

int main() {
    TJadroKlas& jadro = *JadroKlas();
    jadro.RejestrujFunEdycji(TObiekt::KlasaStatyczna(), &EdytujObiekt);
    jadro.RejestrujFunEdycji(TKlient::KlasaStatyczna(), &EdytujKlienta);
    jadro.RejestrujFunEdycji(TPoleInteger::KlasaStatyczna(), &EdytujLiczbeSztuk);
    jadro.RejestrujFunEdycji(TArrayOfConst::KlasaStatyczna(), &EdytujTablice);
    DefFunEdycji = &EdytujWartosc;

    Wypisz(u"POLE, POLE = TEKST, POLE !, cofnij, koniec; pusty wiersz: wszystkie pola");
    TZlecenie zlecenie;
    zlecenie.SetNumer(u"ZL/1");
    zlecenie.GetKlient().SetNazwa(u"Młyn Żuraw");
    const bool zmienione = zlecenie.EdytujDaneWgKlasy(nullptr, false, TObiekt::KlasaStatyczna());
    Wypisz(zmienione ? u"zmienione" : u"bez zmian");
    TZTMemoryStream dokument;
    zlecenie.ZapiszTekstowo(dokument);
    const auto bajty = dokument.Zawartosc();
    std::fwrite(bajty.data(), 1, bajty.size(), stdout);
    std::fputs("\n", stdout);
    return 0;
}
