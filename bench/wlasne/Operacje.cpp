// Small operations on objects: access to fields, appending, values by path; and comparison of texts.
#include <memory>
#include <string>
#include <vector>

#include "pomiary/Grupy.h"
#include "wlasne/Struktury.h"
#include "wlasne/Ztok.h"
#include "ztok/platform/PorownanieTekstow.h"

namespace pomiary {

namespace {

using TWiersz = dane::TPozycjaT<std::u16string>;

// The least that an object with fields by number can be: a virtual call, and no check of the kind.
class IPoleWirtualne {
  public:
    IPoleWirtualne() = default;
    IPoleWirtualne(const IPoleWirtualne&) = delete;
    IPoleWirtualne& operator=(const IPoleWirtualne&) = delete;
    virtual ~IPoleWirtualne() = default;
    [[nodiscard]] virtual std::int64_t Daj() const { return 0; }
    virtual void Ustaw(std::int64_t /*wartosc*/) {}
    [[nodiscard]] virtual std::u16string_view DajTekst() const { return {}; }
    virtual void UstawTekst(std::u16string_view /*wartosc*/) {}
};
template <class T> class TPoleWirtualne final : public IPoleWirtualne {
  public:
    explicit TPoleWirtualne(T wartosc) : wartosc_(wartosc) {}
    [[nodiscard]] std::int64_t Daj() const override { return static_cast<std::int64_t>(wartosc_); }
    void Ustaw(std::int64_t wartosc) override { wartosc_ = static_cast<T>(wartosc); }

  private:
    T wartosc_;
};
class TPoleWirtualneTekst final : public IPoleWirtualne {
  public:
    explicit TPoleWirtualneTekst(std::u16string wartosc) : wartosc_(std::move(wartosc)) {}
    [[nodiscard]] std::u16string_view DajTekst() const override { return wartosc_; }
    void UstawTekst(std::u16string_view wartosc) override { wartosc_ = wartosc; }

  private:
    std::u16string wartosc_;
};
using TPolaWirtualne = std::vector<std::unique_ptr<IPoleWirtualne>>;

TPolaWirtualne JakoPola(const TWiersz& w) {
    TPolaWirtualne pola;
    pola.push_back(std::make_unique<TPoleWirtualneTekst>(w.nazwa));
    pola.push_back(std::make_unique<TPoleWirtualne<std::int32_t>>(w.lp));
    pola.push_back(std::make_unique<TPoleWirtualne<double>>(w.ilosc));
    pola.push_back(std::make_unique<TPoleWirtualne<double>>(w.cena));
    pola.push_back(std::make_unique<TPoleWirtualne<std::uint8_t>>(w.stawka));
    pola.push_back(std::make_unique<TPoleWirtualne<std::int64_t>>(w.towar));
    return pola;
}

// A value that differs from one item to the next.
template <class T> T Kolejna(std::size_t i) { return static_cast<T>(i); }

constexpr std::u16string_view kNowaNazwa = u"śruba zamkowa żółta";

// Positions in every form of ours.
struct TPozycje {
    ztok::TWlasny<TListaPozycji> lista = ztok::Utworz<TListaPozycji>();
    std::vector<TPozycja*> nasze;
    std::vector<TPolaWirtualne> wirtualne;
    std::vector<TWiersz> wiersze;

    TPozycje(const dane::TBaza& baza, std::size_t ile) {
        for (const dane::TFaktura& faktura : baza.faktury)
            for (const dane::TPozycja& p : faktura.pozycje)
                if (nasze.size() < ile) {
                    Wypelnij(*nasze.emplace_back(&lista->Dopisz()), p);
                    wiersze.push_back(ZTekstami<std::u16string>(p));
                    wirtualne.push_back(JakoPola(wiersze.back()));
                }
    }
};

// Fields by number. The numbers are hidden from the compiler; the plain column calls a virtual field.
void DodajPola(TPomiary& pomiary, const TPozycje& p, std::size_t ile) {
    TPozycja* const* const nasze = p.nasze.data();
    const TPolaWirtualne* const pola = p.wirtualne.data();
    const auto para = [&](const char* wiersz, auto nasz, auto wirtualny) {
        pomiary.DodajKazdy(wiersz, kZtok, ile, nasz);
        pomiary.DodajKazdy(wiersz, kCpp, ile, wirtualny);
    };
    const auto pole = [pola](std::size_t i, int nr) -> IPoleWirtualne& {
        return *pola[i][static_cast<std::size_t>(Ukryj(nr))];
    };
    para(
        wiersz::DajInteger, [=](std::size_t i) { Zuzyj(nasze[i]->GetPoleInteger(Ukryj(TPozycja::nrLp))); },
        [=](std::size_t i) { Zuzyj(pole(i, TPozycja::nrLp).Daj()); });
    para(
        wiersz::UstawInteger,
        [=](std::size_t i) { nasze[i]->SetPoleInteger(Ukryj(TPozycja::nrLp), Kolejna<std::int32_t>(i)); },
        [=](std::size_t i) { pole(i, TPozycja::nrLp).Ustaw(Kolejna<std::int32_t>(i)); });
    para(
        wiersz::DajInt64, [=](std::size_t i) { Zuzyj(nasze[i]->GetPoleInt64(Ukryj(TPozycja::nrTowar))); },
        [=](std::size_t i) { Zuzyj(pole(i, TPozycja::nrTowar).Daj()); });
    para(
        wiersz::UstawInt64,
        [=](std::size_t i) { nasze[i]->SetPoleInt64(Ukryj(TPozycja::nrTowar), Kolejna<std::int64_t>(i)); },
        [=](std::size_t i) { pole(i, TPozycja::nrTowar).Ustaw(Kolejna<std::int64_t>(i)); });
    pomiary.DodajKazdy(wiersz::DajDouble, kZtok, ile,
                       [=](std::size_t i) { Zuzyj(nasze[i]->GetPoleDouble(Ukryj(TPozycja::nrCena))); });
    pomiary.DodajKazdy(wiersz::UstawDouble, kZtok, ile,
                       [=](std::size_t i) { nasze[i]->SetPoleDouble(Ukryj(TPozycja::nrCena), Kolejna<double>(i)); });
    para(
        wiersz::DajKopie, [=](std::size_t i) { Zuzyj(nasze[i]->GetPoleString(Ukryj(TPozycja::nrNazwa))); },
        [=](std::size_t i) { Zuzyj(std::u16string(pole(i, TPozycja::nrNazwa).DajTekst())); });
    para(
        wiersz::DajWidok,
        [=](std::size_t i) {
            ztok::TPole& p1 = nasze[i]->DajPoleKlasy(Ukryj(TPozycja::nrNazwa), ztok::TPoleString::KlasaStatyczna());
            Zuzyj(static_cast<ztok::TPoleString&>(p1).Wartosc());
        },
        [=](std::size_t i) { Zuzyj(pole(i, TPozycja::nrNazwa).DajTekst()); });
    para(
        wiersz::UstawTekst, [=](std::size_t i) { nasze[i]->SetPoleString(Ukryj(TPozycja::nrNazwa), kNowaNazwa); },
        [=](std::size_t i) { pole(i, TPozycja::nrNazwa).UstawTekst(kNowaNazwa); });
}

// Pointers, values by path and by lists of names, on the whole tree.
void DodajSciezki(TPomiary& pomiary, TBaza& baza, std::size_t ile) {
    // So many of a list's elements, from the beginning again where it ends.
    const auto elementy = [ile](const auto& lista) {
        std::vector<std::remove_reference_t<decltype(*lista[0])>*> wynik;
        for (std::size_t i = 0; i < ile; ++i)
            wynik.push_back(lista[static_cast<std::int32_t>(i) % lista.IleObiektow()]);
        return wynik;
    };
    const auto faktury = elementy(baza.GetFaktury());
    pomiary.DodajKazdy("get a pointer (Wsk) by number", kZtok, ile,
                       [faktury](std::size_t i) { Zuzyj(faktury[i]->GetPoleWskObiektu(Ukryj(TFaktura::nrKlient))); });
    pomiary.DodajKazdy("set a pointer (Wsk) by number", kZtok, ile,
                       [faktury, klienci = elementy(baza.GetKlienci())](std::size_t i) {
                           faktury[i]->SetPoleWskObiektu(Ukryj(TFaktura::nrKlient), klienci[i]);
                       });
    pomiary.DodajKazdy("set a reference (Ref) by number, targets shared", kZtok, ile,
                       [faktury, waluty = elementy(baza.GetWaluty())](std::size_t i) {
                           faktury[i]->SetPoleRefObiektu(Ukryj(TFaktura::nrWaluta), waluty[i]);
                       });

    auto sciezki = std::make_shared<std::vector<std::u16string>>();
    auto wartosci = std::make_shared<std::vector<std::u16string>>();
    for (std::size_t i = 0; i < ile; ++i) {
        const auto nr = ztok::Utf16ZUtf8(std::to_string(i % static_cast<std::size_t>(baza.GetFaktury().IleObiektow())));
        sciezki->push_back(u"Faktury[" + nr + u"].Klient.Nazwa");
        wartosci->push_back(faktury[i]->GetKlient()->GetNazwa());
        Sprawdz(baza.GetTekstowoWgSciezki((*sciezki)[i]) == (*wartosci)[i], "path", kZtok);
    }
    pomiary.DodajKazdy("get a text by path, through list and pointer", kZtok, ile,
                       [&baza, sciezki](std::size_t i) { Zuzyj(baza.GetTekstowoWgSciezki((*sciezki)[i])); });
    pomiary.DodajKazdy(
        "set a text by path, through list and pointer", kZtok, ile,
        [&baza, sciezki, wartosci](std::size_t i) { baza.SetTekstowoWgSciezki((*sciezki)[i], (*wartosci)[i]); });
}

void Wpisz(TPozycja& cel, const TWiersz& w) {
    cel.WpiszDane({Ukryj(TPozycja::nrNazwa), Ukryj(TPozycja::nrLp), Ukryj(TPozycja::nrIlosc), Ukryj(TPozycja::nrCena),
                   Ukryj(TPozycja::nrStawka), Ukryj(TPozycja::nrTowar)},
                  {w.nazwa, w.lp, w.ilosc, w.cena, w.stawka, w.towar});
}
void WpiszWgNazw(TPozycja& cel, const TWiersz& w) {
    cel.WpiszDane({u"Nazwa", u"Lp", u"Ilosc", u"Cena", u"Stawka", u"Towar"},
                  {w.nazwa, w.lp, w.ilosc, w.cena, w.stawka, w.towar});
}
void Ustaw(TPozycja& cel, const TWiersz& w) {
    cel.SetPoleString(Ukryj(TPozycja::nrNazwa), w.nazwa);
    cel.SetPoleInteger(Ukryj(TPozycja::nrLp), w.lp);
    cel.SetPoleDouble(Ukryj(TPozycja::nrIlosc), w.ilosc);
    cel.SetPoleDouble(Ukryj(TPozycja::nrCena), w.cena);
    cel.SetPoleByte(Ukryj(TPozycja::nrStawka), w.stawka);
    cel.SetPoleInt64(Ukryj(TPozycja::nrTowar), w.towar);
}

// Six fields at once, into an object that has them and into one that is new in its list.
void DodajWpisywanie(TPomiary& pomiary, TPozycje& p, std::size_t ile) {
    const TWiersz* const wiersze = p.wiersze.data();
    auto cele = std::make_shared<std::vector<TWiersz>>(p.wiersze);
    constexpr const char* kWpisz = "write six fields";
    const auto dodaj = [&](const char* wiersz, auto wpisz) {
        const auto nowa = ztok::Utworz<TPozycja>();
        wpisz(*nowa, wiersze[0]);
        Sprawdz(ZTekstami<std::u16string>(JakoStruktura(*nowa)) == wiersze[0], wiersz, kZtok);
        TPozycja* const* const nasze = p.nasze.data();
        pomiary.DodajKazdy(wiersz, kZtok, ile, [=](std::size_t i) { wpisz(*nasze[i], wiersze[i]); });
    };
    dodaj(kWpisz, &Ustaw);
    dodaj("WpiszDane of six fields, by numbers", &Wpisz);
    dodaj("WpiszDane of six fields, by names", &WpiszWgNazw);
    pomiary.DodajKazdy(kWpisz, kCpp, ile, [=](std::size_t i) {
        (*cele)[i] = wiersze[i];
        Zuzyj((*cele)[i]);
    });
    for (std::size_t d = 0; d < 2; ++d) {
        const std::size_t naListe = pomiary.Ile(kIleDopisz[d], 5);
        pomiary.Dodaj(wiersz::Dopisz[d], kZtok, naListe, [=] {
            const auto lista = ztok::Utworz<TListaPozycji>();
            for (std::size_t i = 0; i < naListe; ++i)
                Ustaw(lista->Dopisz(), wiersze[i % ile]);
            Zuzyj(*lista);
        });
        pomiary.Dodaj(wiersz::Dopisz[d], kCpp, naListe, [=] {
            std::vector<TWiersz> lista;
            for (std::size_t i = 0; i < naListe; ++i)
                lista.push_back(wiersze[i % ile]);
            Zuzyj(lista);
        });
    }
}

void DodajPorownania(TPomiary& pomiary, const TPozycje& p, std::size_t ile) {
    const TWiersz* const w = p.wiersze.data();
    // The same text up to its end, as texts that meet in a sorted list often are.
    auto duze = std::make_shared<std::vector<std::u16string>>();
    for (const TWiersz& wiersz : p.wiersze)
        for (char16_t& znak : duze->emplace_back(wiersz.nazwa))
            znak = ztok::DuzaAscii(znak);
    const auto rowne = std::make_shared<std::vector<TWiersz>>(p.wiersze);
    constexpr const char* kRozne = "compare in 1250 order, texts that differ";
    constexpr const char* kRowne = "compare in 1250 order, equal texts";
    pomiary.DodajKazdy(kRozne, kZtok, ile,
                       [=](std::size_t i) { Zuzyj(ztok::PorownajWin1250(w[i].nazwa, w[(i + 1) % ile].nazwa)); });
    pomiary.DodajKazdy(kRozne, kCpp, ile, [=](std::size_t i) { Zuzyj(w[i].nazwa.compare(w[(i + 1) % ile].nazwa)); });
    pomiary.DodajKazdy("compare in 1250 order, case only differs", kZtok, ile,
                       [=](std::size_t i) { Zuzyj(ztok::PorownajWin1250BezWielkosci(w[i].nazwa, (*duze)[i])); });
    pomiary.DodajKazdy(kRowne, kZtok, ile,
                       [=](std::size_t i) { Zuzyj(ztok::PorownajWin1250BezWielkosci(w[i].nazwa, (*rowne)[i].nazwa)); });
    pomiary.DodajKazdy(kRowne, kCpp, ile, [=](std::size_t i) { Zuzyj(w[i].nazwa.compare((*rowne)[i].nazwa)); });
}

} // namespace

void MierzOperacje(TPomiary& pomiary, const dane::TBaza& baza) {
    const std::size_t ile = pomiary.Ile(1000, 20);
    TPozycje p(baza, ile);
    const auto drzewo = JakoObiekty(baza);
    DodajPola(pomiary, p, ile);
    DodajSciezki(pomiary, *drzewo, ile);
    TPozycje wpisywane(baza, ile); // the fields of the others change
    DodajWpisywanie(pomiary, wpisywane, ile);
    DodajPorownania(pomiary, wpisywane, ile);
    DodajObceOperacje(pomiary, baza, ile);
    pomiary.Wykonaj();
}

} // namespace pomiary
