// Copy, comparison, sort and search of whole trees and lists, beside the same on structs.
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "pomiary/Grupy.h"
#include "wlasne/Struktury.h"
#include "wlasne/Ztok.h"
#include "ztok/platform/PorownanieTekstow.h"

namespace pomiary {

namespace {

using ztok::TArgument;

// Two equal trees of ours and of structs, and the rows of their copy. References lead into the copy.
template <class TDane> struct TDrzewa {
    ztok::TWlasny<typename TModel<TDane>::Typ> nasze;
    ztok::TWlasny<ztok::TObiektBazowy> kopia;
    decltype(ZTekstami<std::u16string>(std::declval<TDane>())) struktury;

    TDrzewa(TPomiary& pomiary, const TDane& dane, std::string_view wierszKopii)
        : nasze(JakoObiekty(dane)), kopia(nasze->KlonujObiekt(false)), struktury(ZTekstami<std::u16string>(dane)) {
        const std::size_t ile = dane::IleObiektow(dane);
        Sprawdz(JakoStruktury(static_cast<const typename TModel<TDane>::Typ&>(*kopia)) == dane, wierszKopii, kZtok);
        pomiary.Dodaj(wierszKopii, kZtok, ile, [this] { Zuzyj(nasze->KlonujObiekt(false)); });
        pomiary.Dodaj(wierszKopii, kCpp, ile, [this] {
            auto nowe = struktury;
            Rozwiaz(nowe);
            Zuzyj(nowe);
        });
    }
};

void MierzDrzewa(TPomiary& pomiary, const dane::TBaza& baza, const dane::TZnaki& znaki) {
    const TDrzewa<dane::TBaza> drzewa(pomiary, baza, wiersz::Kopia);
    const TDrzewa<dane::TZnaki> drzewaZnakow(pomiary, znaki, "characters: copy and destroy");
    const TDrzewa<dane::TZnaki> drzewaJednegoCelu(pomiary, JednegoCelu(znaki),
                                                  "characters, all refer to one: copy and destroy");
    // Targets are compared too, each pair of them once.
    const std::size_t ile = dane::IleObiektow(baza);
    const auto rowne = [&drzewa] {
        return drzewa.nasze->PorownajZObiektem(*drzewa.kopia, ztok::rlRozmLiterWazny, ztok::LocaleWin1250) == 0;
    };
    Sprawdz(rowne(), wiersz::Rownosc, kZtok);
    pomiary.Dodaj(wiersz::Rownosc, kZtok, ile, [rowne] { Zuzyj(rowne()); });
    const auto struktury2 = drzewa.struktury;
    pomiary.Dodaj(wiersz::Rownosc, kCpp, ile, [&] { Zuzyj(drzewa.struktury == struktury2); });
    DodajObceDrzewa(pomiary, baza);
    pomiary.Wykonaj();
}

// Positions as pointers, of ours and of structs.
struct TPozycje {
    using TWiersz = dane::TPozycjaT<std::u16string>;

    ztok::TWlasny<TListaPozycji> nasze = ztok::Utworz<TListaPozycji>();
    ztok::TListaWskObiektow lista;
    std::vector<TWiersz> wiersze;
    std::vector<const TWiersz*> wskazniki;

    explicit TPozycje(std::size_t ile) {
        const dane::TBaza baza = dane::GenerujBaze(ile / 4);
        wiersze.reserve(ile);
        for (const dane::TFaktura& f : baza.faktury)
            for (const dane::TPozycja& p : f.pozycje)
                if (wiersze.size() < ile) {
                    Wypelnij(nasze->Dopisz(), p);
                    wiersze.push_back(ZTekstami<std::u16string>(p));
                }
        Przywroc();
    }
    void Przywroc() {
        lista.SkrocListe(0, true);
        lista.DopiszDane(nasze.get());
        wskazniki.clear();
        for (const TWiersz& w : wiersze)
            wskazniki.push_back(&w);
    }
    // The order of both: Windows-1250, then the price.
    static bool Przed(const TWiersz* a, const TWiersz* b) {
        const int wynik = ztok::PorownajWin1250(a->nazwa, b->nazwa);
        return wynik != 0 ? wynik < 0 : a->cena < b->cena;
    }
    void SortujNasze() {
        const TArgument pola[] = {Ukryj(TPozycja::nrNazwa), Ukryj(TPozycja::nrCena)};
        lista.PosortujWgPol(pola);
    }
    void SortujStandardowo() { std::sort(wskazniki.begin(), wskazniki.end(), &Przed); }
    [[nodiscard]] bool TaSamaKolejnosc() const {
        for (std::size_t i = 0; i < wskazniki.size(); ++i) {
            const auto& nasza = static_cast<const TPozycja&>(*lista.Obiekty(static_cast<std::int32_t>(i)));
            if (nasza.GetNazwa() != wskazniki[i]->nazwa || nasza.GetCena() != wskazniki[i]->cena)
                return false;
        }
        return true;
    }
};

void MierzListy(TPomiary& pomiary) {
    const std::size_t ile = pomiary.Ile(200000, 500);
    const std::size_t szukan = pomiary.Ile(1000, 100);
    const std::string wiersze = std::to_string(ile) + " positions by ";
    const std::string sort = "sort " + wiersze + "name and price";
    const std::string bisekcja = "bisect " + wiersze + "name and price";
    const std::size_t szukanych = ile / 20;
    const std::string wiersze2 = std::to_string(szukanych) + " positions by ";
    const std::string wgNazwy = "search " + wiersze2 + "name and price, an element";
    const std::string wgTowaru = "search " + wiersze2 + "a 64-bit integer, an element";

    TPozycje sortowane(ile);
    pomiary.PoPrzygotowaniu(
        sort, kZtok, ile, [&] { return sortowane.Przywroc(), 0; }, [&](int) { sortowane.SortujNasze(); });
    pomiary.PoPrzygotowaniu(
        sort, kCpp, ile, [&] { return sortowane.Przywroc(), 0; }, [&](int) { sortowane.SortujStandardowo(); });

    TPozycje p(ile);
    p.SortujNasze();
    p.SortujStandardowo();
    Sprawdz(p.TaSamaKolejnosc(), sort, kZtok);
    const std::size_t krok = ile / szukan;
    const auto nasza = [&p, krok](std::size_t i) {
        const TPozycje::TWiersz& w = p.wiersze[i * krok];
        const TArgument pola[] = {Ukryj(TPozycja::nrNazwa), Ukryj(TPozycja::nrCena)};
        const TArgument wartosci[] = {w.nazwa, w.cena};
        std::int32_t gdzie = 0;
        return p.lista.WyszukajWgPol(pola, wartosci, gdzie) ? gdzie : -1;
    };
    const auto standardowa = [&p, krok](std::size_t i) {
        return static_cast<std::int32_t>(
            std::lower_bound(p.wskazniki.begin(), p.wskazniki.end(), &p.wiersze[i * krok], &TPozycje::Przed) -
            p.wskazniki.begin());
    };
    for (std::size_t i = 0; i < szukan; ++i)
        Sprawdz(nasza(i) == standardowa(i), bisekcja, kZtok);
    pomiary.DodajKazdy(bisekcja, kZtok, szukan, [nasza](std::size_t i) { Zuzyj(nasza(i)); });
    pomiary.DodajKazdy(bisekcja, kCpp, szukan, [standardowa](std::size_t i) { Zuzyj(standardowa(i)); });

    // From the first element; what is looked for comes last.
    TPozycje s(szukanych);
    TPozycje::TWiersz& ostatni = s.wiersze.back();
    ostatni.nazwa += u" ostatnia";
    ostatni.towar = -1;
    TPozycja& naszOstatni = *(*s.nasze)[s.nasze->IleObiektow() - 1];
    naszOstatni.SetNazwa(ostatni.nazwa);
    naszOstatni.SetTowar(ostatni.towar);
    const auto szukaj = [&s](std::initializer_list<TArgument> pola, std::initializer_list<TArgument> wartosci) {
        std::int32_t gdzie = 0;
        const bool jest = s.lista.JestObiekt(ztok::TArgumenty(pola.begin(), pola.size()),
                                             ztok::TArgumenty(wartosci.begin(), wartosci.size()), gdzie,
                                             ztok::rlRozmLiterWazny, ztok::rwOdPoczatku, 0);
        return jest && static_cast<std::size_t>(gdzie) + 1 == s.wskazniki.size();
    };
    const auto wgNazwyNasze = [szukaj, &ostatni] {
        return szukaj({Ukryj(TPozycja::nrNazwa), Ukryj(TPozycja::nrCena)}, {ostatni.nazwa, ostatni.cena});
    };
    const auto wgTowaruNasze = [szukaj] { return szukaj({Ukryj(TPozycja::nrTowar)}, {-1}); };
    Sprawdz(wgNazwyNasze(), wgNazwy, kZtok);
    Sprawdz(wgTowaruNasze(), wgTowaru, kZtok);
    pomiary.Dodaj(wgNazwy, kZtok, szukanych, [wgNazwyNasze] { Zuzyj(wgNazwyNasze()); });
    pomiary.Dodaj(wgTowaru, kZtok, szukanych, [wgTowaruNasze] { Zuzyj(wgTowaruNasze()); });
    pomiary.Dodaj(wgNazwy, kCpp, szukanych, [&s, &ostatni] {
        Zuzyj(std::find_if(s.wskazniki.begin(), s.wskazniki.end(), [&ostatni](const TPozycje::TWiersz* w) {
            return w->nazwa == ostatni.nazwa && w->cena == ostatni.cena;
        }));
    });
    pomiary.Dodaj(wgTowaru, kCpp, szukanych, [&s] {
        Zuzyj(std::find_if(s.wskazniki.begin(), s.wskazniki.end(),
                           [](const TPozycje::TWiersz* w) { return w->towar == -1; }));
    });
    pomiary.Wykonaj();
}

} // namespace

void MierzModel(TPomiary& pomiary, const dane::TBaza& baza, const dane::TZnaki& znaki) {
    MierzDrzewa(pomiary, baza, znaki);
    MierzListy(pomiary);
}

} // namespace pomiary
