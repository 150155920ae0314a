// Lists of every kind, two of each, against plain vectors: elements, capacities, owners, registrations, lives.
#include <algorithm>
#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "fuzz/Fuzz.h"
#include "fuzz/wywolania/Bajty.h"
#include "ztok/kernel/Typypolbazowe.h"

using namespace ztok;
using fuzz::Wymagaj;

namespace {

std::set<const TObiektBazowy*> zywe;

class TKlucz : public TObiekt {
    ZTOK_OBIEKT(TKlucz, TObiekt, (0, Klucz, Integer), (1, Nazwa, String), (2, Waga, Double))
    void TworzSekcjeKrytyczna() override { zywe.insert(this); }
    void UsunSekcjeKrytyczna() override { zywe.erase(this); }
};
class TListaKluczy : public TListaTypu<TKlucz> {
    ZTOK_LISTA(TListaKluczy, TKlucz)
};

using TElementy = std::vector<TKlucz*>;
using TArg = std::vector<TArgument>;

int Znak(double a, double b) { return static_cast<int>(a > b) - static_cast<int>(a < b); }

// A value of field `pole`, as a number: of the names "" and "B" and "a", too, which stand so.
double Wartosc(const TKlucz& o, int pole) {
    return pole == 0 ? o.GetKlucz() : pole == 2 ? o.GetWaga() : o.GetNazwa().empty() ? 0 : o.GetNazwa() == u"B" ? 1 : 2;
}

// By number, what is missing equals the default value and stands before any other; by path, before any.
int Porownaj(const TKlucz& a, const TKlucz& b, int pole, bool sciezka) {
    const bool jestA = sciezka ? a.Pole(pole) != nullptr : a.PoleNiepuste(pole);
    const bool jestB = sciezka ? b.Pole(pole) != nullptr : b.PoleNiepuste(pole);
    if (jestA && jestB)
        return Znak(Wartosc(a, pole), Wartosc(b, pole));
    if (sciezka)
        return static_cast<int>(jestA) - static_cast<int>(jestB);
    return (jestA && Wartosc(a, pole) != 0 ? 1 : 0) - (jestB && Wartosc(b, pole) != 0 ? 1 : 0);
}

// The rules of the sort, word by word: the pivot is an object, equal elements are exchanged, both ends stay inside.
template <class F> bool SortModelu(TElementy& e, std::ptrdiff_t l, std::ptrdiff_t r, const F& porownaj) {
    bool zmiana = false;
    while (l < r) {
        const auto at = [&e](std::ptrdiff_t i) { return e.begin() + i; };
        const TKlucz* os = *at((l + r) / 2);
        std::ptrdiff_t i = l;
        std::ptrdiff_t j = r;
        do {
            for (; i < r && porownaj(**at(i), *os) < 0; ++i) {
            }
            for (; j > l && porownaj(**at(j), *os) > 0; --j) {
            }
            if (i <= j) {
                zmiana = zmiana || i != j;
                std::iter_swap(at(i++), at(j--));
            }
        } while (i <= j);
        zmiana = (j > l && SortModelu(e, l, j, porownaj)) || zmiana;
        l = i;
    }
    return zmiana;
}

std::uint32_t losPorownan = 1;
std::int16_t JakPopadnie(const TObiektBazowy& /*a*/, const TObiektBazowy& /*b*/) {
    losPorownan = losPorownan * 1664525U + 1013904223U;
    return static_cast<std::int16_t>(static_cast<int>(losPorownan >> 30U) - 1);
}
std::int16_t WgKlucza(const TObiektBazowy& a, const TObiektBazowy& b) {
    return static_cast<std::int16_t>(
        Znak(static_cast<const TKlucz&>(a).GetKlucz(), static_cast<const TKlucz&>(b).GetKlucz()));
}

// What a list is expected to hold, with the rules of capacity.
struct TModel {
    TElementy e;
    std::int32_t pojemnosc = 0;

    [[nodiscard]] std::int32_t Ile() const { return static_cast<std::int32_t>(e.size()); }
    void Dodaj(TKlucz* o, std::int32_t gdzie) {
        if (Ile() == pojemnosc)
            pojemnosc += pojemnosc > 128 ? pojemnosc / 8 : pojemnosc >= 9 ? 16 : 4;
        e.insert(e.begin() + std::clamp(gdzie, 0, Ile()), o);
    }
    TKlucz* Usun(std::int32_t i, bool zachowaj) {
        if (i < 0 || i >= Ile())
            return nullptr;
        TKlucz* o = e[static_cast<std::size_t>(i)];
        e.erase(e.begin() + i);
        if (!zachowaj && pojemnosc >= 33 && pojemnosc - Ile() > pojemnosc / 4)
            pojemnosc = Ile() + Ile() / 8;
        return o;
    }
    // Removes many at once: a compaction that trims.
    template <class F> bool UsunNiektore(const F& ginie, bool zachowaj) {
        const bool byly = std::erase_if(e, ginie) != 0;
        if (byly && !zachowaj)
            pojemnosc = Ile();
        return byly;
    }
};

class TSwiatList {
  public:
    explicit TSwiatList(wywolania::TBajty& bajty) : b_(bajty) {
        for (std::size_t i = 0; i < 8; ++i)
            listy_[i] = i < 2   ? TWlasny<TListaBazowa>(Utworz<TListaKluczy>())
                        : i < 4 ? TWlasny<TListaBazowa>(Utworz<TKolekcjaObiektow>())
                        : i < 6 ? TWlasny<TListaBazowa>(Utworz<TListaWskObiektow>())
                                : TWlasny<TListaBazowa>(Utworz<TListaRefObiektow>());
        for (int i = 0; i < 10; ++i)
            wolne_.push_back(Nowy());
    }

    void Graj() {
        for (int krok = 0; !b_.Koniec(); ++krok) {
            rosnie_ = krok / 400 % 2 == 0; // grows long, then shrinks among many operations
            const std::size_t a = Z(8);
            const std::size_t z = Z(a < 4 ? 4 : 8); // an owner takes from owners
            if (rosnie_ && Z(24) != 0)
                DodajLubUsun(*listy_[a], modele_[a], a < 4);
            else
                Krok(a, z);
            Sprawdz();
        }
    }

  private:
    std::size_t Z(std::size_t ile) { return b_.Z(ile); }
    bool Tak() { return Z(2) == 0; }
    std::int32_t Indeks(std::int32_t ile) {
        return static_cast<std::int32_t>(Z(static_cast<std::size_t>(ile) + 4)) - 2;
    }
    TWlasny<TKlucz> Nowy() {
        TWlasny<TKlucz> o = Utworz<TKlucz>();
        if (Z(4) != 0)
            o->SetKlucz(static_cast<int>(Z(9)));
        if (Tak())
            o->SetNazwa(Tak() ? u"a" : u"B");
        if (Tak())
            o->SetWaga(static_cast<double>(Z(5)) - 2);
        return o;
    }
    TKlucz& Dowolny() {
        if (const TModel& m = modele_[Z(4)]; m.Ile() != 0 && Tak())
            return *m.e[Z(m.e.size())];
        return *wolne_[Z(wolne_.size())];
    }

    void DodajLubUsun(TListaBazowa& l, TModel& m, bool wlasna) {
        const std::int32_t gdzie = Z(3) == 0 ? MaxInt : Indeks(m.Ile());
        const bool zachowaj = Tak();
        if (Z(6) < (rosnie_ ? 5U : 2U)) {
            TKlucz* o = wlasna ? nullptr : &Dowolny();
            if (wlasna) {
                const bool sama = l.Klasa()->Ma(ckListaObiektow) && Tak(); // the list makes the item
                o = static_cast<TKlucz*>(l.DodajObiekt(sama ? nullptr : Nowy().Oddaj(), gdzie));
                if (sama)
                    o->SetKlucz(static_cast<int>(Z(9)));
            } else {
                l.DodajObiekt(o, gdzie);
            }
            m.Dodaj(o, gdzie);
            return;
        }
        const bool zwolnij = Tak();
        TKlucz* o = m.Usun(gdzie, zachowaj);
        Wymagaj(l.UsunObiekt(gdzie, zwolnij, zachowaj) == (zwolnij && wlasna ? nullptr : o), "what is removed");
        if (wlasna && !zwolnij && o != nullptr)
            wolne_.emplace_back(o);
    }

    void Krok(std::size_t a, std::size_t z) {
        TListaBazowa& l = *listy_[a];
        TModel& m = modele_[a];
        TListaBazowa& druga = *listy_[z];
        TModel& mz = modele_[z];
        const bool wlasna = a < 4;
        const bool zachowaj = Tak();
        const std::int32_t n = m.Ile();
        const int klucz = static_cast<int>(Z(9));
        const bool oprocz = Z(4) == 0;
        const TArg pola = Tak() ? TArg{TArgument(0)} : TArg{u"klucz"};
        const TArg wartosci = {klucz};
        const auto ma = [&](const TKlucz* o) { return (o->GetKlucz() == klucz) != oprocz; };
        b_.Wybierz(
            [&] { DodajLubUsun(l, m, wlasna); }, [&] { DodajLubUsun(l, m, wlasna); },
            [&] {
                const std::int32_t dlugosc = Z(8) == 0 ? -1 : n - static_cast<std::int32_t>(Z(10)) + 2;
                l.SkrocListe(dlugosc, zachowaj);
                m.e.resize(static_cast<std::size_t>(std::clamp(dlugosc, 0, n)));
                if (!zachowaj)
                    m.pojemnosc = std::max(dlugosc, 0);
            },
            [&] {
                const std::int32_t od = Indeks(n);
                const std::int32_t gdzie = Indeks(n);
                const bool dobre = od != gdzie && od >= 0 && od < n && gdzie >= 0 && gdzie < n;
                Wymagaj(l.PrzeniesObiekt(od, gdzie) == dobre, "whether it moves");
                if (dobre) {
                    TKlucz* o = m.e[static_cast<std::size_t>(od)];
                    m.e.erase(m.e.begin() + od);
                    m.e.insert(m.e.begin() + gdzie, o);
                    l.ZamienObiekty(od, gdzie);
                    std::iter_swap(m.e.begin() + od, m.e.begin() + gdzie);
                }
            },
            [&] { // of equal elements the first stays
                const bool calosc = Tak();
                TElementy widziane;
                const auto ginie = [&](TKlucz* o) {
                    const auto taki = [&](const TKlucz* w) {
                        return Porownaj(*o, *w, 0, false) == 0 &&
                               (!calosc || (Porownaj(*o, *w, 1, false) == 0 && Porownaj(*o, *w, 2, false) == 0));
                    };
                    const bool byl = std::any_of(widziane.begin(), widziane.end(), taki);
                    widziane.push_back(o);
                    return byl;
                };
                const bool zmiana = m.UsunNiektore(ginie, false);
                Wymagaj(l.UsunDuplikaty(calosc ? TArg{} : TArg{TArgument(0)}, rlRozmLiterWazny) == zmiana,
                        "duplicates");
            },
            [&] {
                const bool zmiana = m.UsunNiektore(ma, false);
                Wymagaj((oprocz ? l.UsunObiektyOprocz(pola, wartosci, rlRozmLiterWazny)
                                : l.UsunObiekty(pola, wartosci, rlRozmLiterWazny)) == zmiana,
                        "elements that have the values");
            },
            [&] { // every occurrence from a pointer list, the element from an owning one
                TListaWskObiektow te;
                for (std::size_t i = Z(4); n > 0 && i-- > 0;)
                    te.DodajObiekt(m.e[Z(m.e.size())], MaxInt);
                const bool zmiana = m.UsunNiektore([&](const TKlucz* o) { return te.ZnajdzObiekt(o) >= 0; }, zachowaj);
                Wymagaj(l.UsunTeObiekty(te, zachowaj) == zmiana, "these elements");
            },
            [&] {
                m.pojemnosc = n + static_cast<std::int32_t>(Z(50));
                l.UstawPojemnosc(m.pojemnosc);
                if (Z(8) == 0) {
                    l.ZerujDane();
                    m = TModel();
                }
            },
            [&] {
                if (mz.Ile() == 0 || &m == &mz)
                    return;
                const auto skad = static_cast<std::int32_t>(Z(mz.e.size()));
                const std::int32_t dokad = Indeks(n);
                TKlucz* o = mz.Usun(skad, false);
                Wymagaj(l.PrzeniesZListy(druga, skad, dokad) == o, "what is moved");
                m.Dodaj(o, dokad);
                if (!wlasna && z < 4)
                    wolne_.emplace_back(o);
            },
            [&] { // by identity from the end; by content from the end
                if (n == 0)
                    return;
                const TKlucz* wzor = m.e[Z(m.e.size())];
                const bool tresc = Tak();
                std::int32_t i = n - 1;
                while (tresc ? m.e[static_cast<std::size_t>(i)]->Porownaj(*wzor) != 0
                             : m.e[static_cast<std::size_t>(i)] != wzor)
                    --i;
                TKlucz* o = m.Usun(i, false);
                Wymagaj((tresc ? l.UsunTakiObiekt(*wzor, false) : l.UsunTenObiekt(wzor, false)) == o, "this element");
                if (wlasna)
                    wolne_.emplace_back(o);
            },
            [&] {
                if (wolne_.size() < 10)
                    wolne_.push_back(Nowy()); // before one dies, whose address it would get
                wolne_.erase(wolne_.begin() + static_cast<std::ptrdiff_t>(Z(wolne_.size())));
            },
            [&] { Przenies(l, m, druga, mz, !wlasna && z < 4, pola, wartosci, oprocz, ma); },
            [&] { Dopisz(l, m, *listy_[Z(8)], wlasna, pola, wartosci, oprocz, ma); },
            [&] {
                if (&m == &mz || (mz.Ile() > n ? a >= 2 : l.Klasa() == TKolekcjaObiektow::KlasaStatyczna()))
                    return; // a collection cannot; pointer lists would have empty places
                l.WyrownajDoListy(druga, zachowaj);
                if (mz.Ile() <= n) {
                    m.e.resize(mz.e.size());
                    m.pojemnosc = zachowaj ? m.pojemnosc : mz.Ile();
                } else {
                    m.pojemnosc = mz.Ile();
                    for (std::int32_t i = n; i < mz.Ile(); ++i)
                        m.e.push_back(static_cast<TKlucz*>(l.Obiekty(i)));
                }
            },
            [&] { Sortuj(l, m); }, [&] { Szukaj(l, m, klucz); });
    }

    template <class F>
    void Przenies(TListaBazowa& l, TModel& m, TListaBazowa& z, TModel& mz, bool zwalnia, const TArg& pola,
                  const TArg& wartosci, bool oprocz, const F& ma) {
        const std::size_t jak = Z(3);
        const std::int32_t przed = m.Ile();
        TElementy zostaje;
        TElementy razem = m.e;
        for (TKlucz* o : mz.e) {
            const auto taki = [o](const TKlucz* w) { return Porownaj(*w, *o, 0, false) == 0; };
            const bool idzie = jak == 0 || (jak == 1 ? ma(o) : std::none_of(razem.begin(), razem.end(), taki));
            (idzie ? razem : zostaje).push_back(o);
            if (idzie && jak == 2 && static_cast<std::int32_t>(razem.size()) > m.pojemnosc)
                m.pojemnosc += m.pojemnosc > 128 ? m.pojemnosc / 8 : m.pojemnosc >= 9 ? 16 : 4;
        }
        const bool zmiana = jak == 0   ? l.PrzeniesDane(z)
                            : jak == 2 ? l.PrzeniesObiektyGdyBrak(z, TArg{TArgument(0)}, rlRozmLiterWazny)
                            : oprocz   ? l.PrzeniesObiektyOprocz(z, pola, wartosci, rlRozmLiterWazny)
                                       : l.PrzeniesObiektyOCechach(z, pola, wartosci, rlRozmLiterWazny);
        if (&m == &mz) {
            Wymagaj(!zmiana, "nothing moves into itself");
            m.pojemnosc = l.Pojemnosc();
            return;
        }
        Wymagaj(zmiana == (static_cast<std::int32_t>(razem.size()) != przed), "whether anything moved");
        for (auto i = static_cast<std::size_t>(przed); zwalnia && i < razem.size(); ++i)
            wolne_.emplace_back(razem[i]);
        m.e = razem;
        m.pojemnosc = std::max(m.pojemnosc, m.Ile());
        if (jak != 2 && zmiana)
            mz.pojemnosc = static_cast<std::int32_t>(zostaje.size());
        mz.e = zostaje;
    }

    template <class F>
    void Dopisz(TListaBazowa& l, TModel& m, const TListaBazowa& z, bool wlasna, const TArg& pola, const TArg& wartosci,
                bool oprocz, const F& ma) {
        if (m.Ile() > 60)
            return;
        const std::size_t jak = Z(3);
        TElementy wzory = m.e;
        for (std::int32_t i = 0, ile = z.IleObiektow(); i < ile && ile < 60; ++i) {
            auto* o = static_cast<TKlucz*>(z.Obiekty(i));
            const auto taki = [o](const TKlucz* w) { return Porownaj(*w, *o, 0, false) == 0; };
            if (jak == 0 || (jak == 1 ? ma(o) : std::none_of(wzory.begin(), wzory.end(), taki)))
                wzory.push_back(o);
        }
        if (z.IleObiektow() >= 60)
            return;
        const bool zmiana = jak == 0   ? l.DopiszDane(&z)
                            : jak == 2 ? l.DopiszObiektyGdyBrak(&z, TArg{TArgument(0)}, rlRozmLiterWazny)
                            : oprocz   ? l.DopiszObiektyOprocz(&z, pola, wartosci, rlRozmLiterWazny)
                                       : l.DopiszObiektyOCechach(&z, pola, wartosci, rlRozmLiterWazny);
        Wymagaj(zmiana == (wzory.size() != m.e.size()), "whether anything was added");
        Wymagaj(l.IleObiektow() == static_cast<std::int32_t>(wzory.size()), "as many as expected were added");
        if (jak == 0)
            m.pojemnosc = std::max(m.pojemnosc, l.IleObiektow());
        for (std::size_t i = m.e.size(); i < wzory.size(); ++i) {
            auto* nowy = static_cast<TKlucz*>(l.Obiekty(static_cast<std::int32_t>(i)));
            Wymagaj(wlasna ? nowy != wzory[i] && nowy->Porownaj(*wzory[i]) == 0 : nowy == wzory[i],
                    "owners copy, the others point");
            m.Dodaj(nowy, MaxInt);
        }
    }

    void Sortuj(TListaBazowa& l, TModel& m) {
        const auto ostatni = static_cast<std::ptrdiff_t>(m.e.size()) - 1;
        bool zmiana = false;
        switch (Z(6)) {
        case 0:
            zmiana = SortModelu(m.e, 0, ostatni, &WgKlucza);
            Wymagaj(l.PosortujWgFun(&WgKlucza) == zmiana, "a sort tells whether it changed anything");
            return;
        case 1:
            zmiana = SortModelu(m.e, 0, ostatni, [](const TKlucz& a, const TKlucz& b) { return a.Porownaj(b); });
            Wymagaj(l.PosortujWgFun() == zmiana, "a sort by the whole content");
            return;
        case 2: { // answers that contradict each other: it ends, and every element is still there once
            l.PosortujWgFun(&JakPopadnie);
            TElementy potem;
            for (TObiektBazowy* o : l)
                potem.push_back(static_cast<TKlucz*>(o));
            Wymagaj(std::is_permutation(potem.begin(), potem.end(), m.e.begin(), m.e.end()), "nothing is lost");
            m.e = potem;
            return;
        }
        default: {
            struct TKryterium {
                int pole;
                bool sciezka, malejaco;
            };
            static const char16_t* const nazwy[] = {u"Klucz", u"nAZWA", u"Waga"};
            std::vector<TKryterium> kryteria(1 + Z(3));
            TArg pola;
            std::vector<TRodzajSortowania> kierunki;
            const std::size_t ileKierunkow = Z(4);
            for (std::size_t i = 0; i < kryteria.size(); ++i) {
                kryteria[i] = {static_cast<int>(Z(3)), Z(4) == 0, false};
                pola.push_back(kryteria[i].sciezka ? TArgument(nazwy[kryteria[i].pole]) : TArgument(kryteria[i].pole));
                if (i < ileKierunkow)
                    kierunki.push_back(Tak() ? rsMalejaco : rsRosnaco);
                kryteria[i].malejaco = !kierunki.empty() && kierunki.back() == rsMalejaco; // the last one goes on
            }
            const auto porownaj = [&](const TKlucz& a, const TKlucz& b) {
                for (const TKryterium& k : kryteria)
                    if (const int wynik = &a == &b ? 0 : Porownaj(a, b, k.pole, k.sciezka); wynik != 0)
                        return k.malejaco ? -wynik : wynik;
                return 0;
            };
            const auto wPorzadku = [&] {
                return std::adjacent_find(m.e.begin(), m.e.end(), [&](const TKlucz* a, const TKlucz* b) {
                           return porownaj(*a, *b) > 0;
                       }) == m.e.end();
            };
            Wymagaj(l.ListaMaPosortowanie(pola, kierunki) == wPorzadku(), "whether a list is in order");
            zmiana = SortModelu(m.e, 0, ostatni, porownaj);
            Wymagaj(l.PosortujWgPol(pola, kierunki) == zmiana, "a sort by fields");
            Wymagaj(l.ListaMaPosortowanie(pola, kierunki) == wPorzadku(), "whether it is in order then");
        }
        }
    }

    void Szukaj(TListaBazowa& l, TModel& m, int klucz) {
        const bool malejaco = Tak();
        const TRodzajSortowania kierunek = malejaco ? rsMalejaco : rsRosnaco;
        const TArg pola = {0};
        l.PosortujWgPol(pola, rlRozmLiterWazny, kierunek);
        for (std::int32_t i = 0; i < m.Ile(); ++i)
            m.e[static_cast<std::size_t>(i)] = static_cast<TKlucz*>(l.Obiekty(i));
        const auto przed = [&](const TKlucz* o) { return malejaco ? o->GetKlucz() > klucz : o->GetKlucz() < klucz; };
        const auto rowny = [&](const TKlucz* o) { return o->GetKlucz() == klucz; };
        const auto od = static_cast<std::int32_t>(std::count_if(m.e.begin(), m.e.end(), przed));
        const auto ile = static_cast<std::int32_t>(std::count_if(m.e.begin(), m.e.end(), rowny));
        const TArg wartosci = {klucz};
        const TWlasny<TKlucz> wzor = Utworz<TKlucz>();
        wzor->SetKlucz(klucz);
        std::int32_t gdzie = -7;
        std::int32_t ostatni = -7;
        Wymagaj(l.WyszukajWgPol(pola, wartosci, gdzie, rlRozmLiterWazny, kierunek) == (ile != 0) && gdzie == od,
                "bisection by values");
        Wymagaj(l.WyszukajWgPol(*wzor, pola, gdzie, rlRozmLiterWazny, kierunek) == (ile != 0) && gdzie == od,
                "bisection by an example");
        Wymagaj(l.WyszukajZakres(pola, wartosci, gdzie, ostatni, rlRozmLiterWazny, kierunek) == (ile != 0) &&
                    gdzie == od && ostatni == (ile == 0 ? od : od + ile - 1),
                "the whole run");
        const auto skad = static_cast<std::int32_t>(Z(m.e.size() + 1));
        const auto dalszy = std::find_if(m.e.begin() + skad, m.e.end(), rowny) - m.e.begin();
        Wymagaj(l.JestObiekt(pola, wartosci, gdzie, rlRozmLiterWazny, rwOdPoczatku, skad) == (dalszy < m.Ile()) &&
                    gdzie == dalszy,
                "a search from the beginning");
        std::int32_t wstecz = skad - 1;
        while (wstecz >= 0 && rowny(m.e[static_cast<std::size_t>(wstecz)]))
            --wstecz;
        Wymagaj(l.JestInnyObiekt(pola, wartosci, gdzie, rlRozmLiterWazny, rwOdKonca, skad - 1) == (wstecz >= 0) &&
                    gdzie == wstecz,
                "a search from the end");
    }

    // Elements that died went out of the reference lists by themselves; nobody tells a plain pointer list.
    void Sprawdz() {
        for (std::size_t j = 4; j < 8; ++j)
            for (std::int32_t i = modele_[j].Ile() - 1; i >= 0; --i)
                if (zywe.count(modele_[j].e[static_cast<std::size_t>(i)]) == 0) {
                    if (j < 6)
                        listy_[j]->UsunObiekt(i, false, false);
                    modele_[j].Usun(i, false);
                }
        std::set<const TObiektBazowy*> oczekiwane;
        for (const auto& o : wolne_) {
            Wymagaj(o->Rodzic() == nullptr && !o->JestTrzymany(), "what is free has no owner");
            oczekiwane.insert(o.get());
        }
        for (std::size_t j = 0; j < 8; ++j) {
            const TListaBazowa& l = *listy_[j];
            const TModel& m = modele_[j];
            Wymagaj(l.IleObiektow() == m.Ile(), "how many there are");
            Wymagaj(l.Pojemnosc() == m.pojemnosc, "the capacity");
            Wymagaj(l.Obiekty(-1) == nullptr && l.Obiekty(m.Ile()) == nullptr, "nothing outside");
            for (std::int32_t i = 0; i < m.Ile(); ++i) {
                const TKlucz* o = m.e[static_cast<std::size_t>(i)];
                Wymagaj(l.Obiekty(i) == o, "the elements");
                if (j < 4) {
                    Wymagaj(o->Rodzic() == &l && o->JestTrzymany(), "an element's owner");
                    Wymagaj(oczekiwane.insert(o).second, "one owner");
                }
            }
        }
        Wymagaj(zywe == oczekiwane, "nothing leaks, nothing dies too early");
        for (const TObiektBazowy* o : oczekiwane) {
            bool jakis = false;
            for (std::size_t j = 6; j < 8; ++j) {
                const TElementy& e = modele_[j].e;
                const bool jest = std::find(e.begin(), e.end(), o) != e.end();
                jakis = jakis || jest;
                Wymagaj(o->MaRefOd(listy_[j].get()) == jest, "who points at it");
            }
            Wymagaj(o->MaJakiesRef() == jakis, "nobody else does");
        }
    }

    wywolania::TBajty& b_;
    bool rosnie_ = true;
    std::vector<TWlasny<TKlucz>> wolne_; // owned by this world
    TWlasny<TListaBazowa> listy_[8];     // two of a kind: of items, of anything, of pointers, of references
    TModel modele_[8];
};

} // namespace

void wywolania::GrajListami(TBajty& bajty) { TSwiatList(bajty).Graj(); }
