// Every library over the data sets.
#include <span>

#include "pomiary/Grupy.h"

namespace pomiary {

namespace {

template <class TDane> struct TKolumna {
    std::string_view nazwa;
    std::unique_ptr<ISeria<TDane>> seria;
};
template <class TDane> using TKolumny = std::vector<TKolumna<TDane>>;

// Reading what was written gives the data back, every reference at its object.
template <class TDane>
void SprawdzSerie(ISeria<TDane>& seria, const TDane& dane, std::string_view zestaw, std::string_view kolumna) {
    seria.Zapisz();
    seria.Wczytaj();
    Sprawdz(seria.Odtworz() == dane, zestaw, kolumna);
    seria.Zniszcz();
}

// The series of a data set, checked.
template <class TDane>
TKolumny<TDane> UtworzSerie(const std::vector<TBiblioteka<TDane>>& biblioteki, const TDane& dane,
                            std::string_view zestaw, TUzycie uzycie) {
    TKolumny<TDane> kolumny;
    std::string nasze; // what plain C++ writes is what we write
    for (const TBiblioteka<TDane>& biblioteka : biblioteki) {
        auto seria = biblioteka.utworz(dane, uzycie);
        if (biblioteka.kolumna == kZtok)
            nasze = seria->Zapisz();
        else if (biblioteka.kolumna == kCpp || biblioteka.kolumna == kCppUtf8)
            Sprawdz(seria->Zapisz() == nasze, zestaw, biblioteka.kolumna);
        SprawdzSerie(*seria, dane, zestaw, biblioteka.kolumna);
        kolumny.push_back({biblioteka.kolumna, std::move(seria)});
    }
    return kolumny;
}

// What a tree takes that was read, and what it takes when it is written. The series go to those that live on, so that
// none finds memory that another has left.
template <class TDane>
void DodajPamiec(TPomiary& pomiary, const std::vector<TBiblioteka<TDane>>& biblioteki, const TDane& dane,
                 const std::string& zestaw, std::vector<std::shared_ptr<void>>& zywe) {
    const std::string napisane = zestaw + ": written, bytes an object";
    const std::string pamiec = zestaw + ": memory, bytes an object";
    if (!pomiary.Chciany(napisane) && !pomiary.Chciany(pamiec))
        return;
    const auto obiekty = static_cast<double>(dane::IleObiektow(dane));
    for (const TBiblioteka<TDane>& biblioteka : biblioteki) {
        std::shared_ptr<ISeria<TDane>> seria = biblioteka.utworz(dane, TUzycie::Zwykle);
        pomiary.Tabela.Dodaj(napisane, biblioteka.kolumna, static_cast<double>(seria->Zapisz().size()) / obiekty);
        const double zajete = ZajetaPamiec([](void* s) { static_cast<ISeria<TDane>*>(s)->Wczytaj(); }, seria.get());
        if (zajete > 0)
            pomiary.Tabela.Dodaj(pamiec, biblioteka.kolumna, zajete / obiekty);
        zywe.push_back(std::move(seria));
    }
}

template <class TDane>
void DodajSerie(TPomiary& pomiary, const std::string& zapis, const std::string& odczyt, const TKolumny<TDane>& kolumny,
                std::size_t obiekty) {
    for (const TKolumna<TDane>& kolumna : kolumny) {
        ISeria<TDane>* seria = kolumna.seria.get();
        pomiary.Dodaj(zapis, kolumna.nazwa, obiekty, [seria] { Zuzyj(seria->Zapisz()); });
        pomiary.Dodaj(odczyt, kolumna.nazwa, obiekty, [seria] {
            seria->Wczytaj();
            seria->Zniszcz();
        });
    }
}

// A data set as a group: as the manuals show, and tuned.
template <class TDane>
void MierzZestaw(TPomiary& pomiary, const std::vector<TBiblioteka<TDane>>& biblioteki, const TDane& dane,
                 const std::string& zestaw, bool obieFormy = true) {
    const std::string zapis = zestaw + ": write";
    const std::string odczyt = zestaw + ": read and destroy";
    const std::size_t obiekty = dane::IleObiektow(dane);
    if (!pomiary.Chciany(zapis + " tuned") && !pomiary.Chciany(odczyt + ", tuned"))
        return;
    const auto zwykle = obieFormy ? UtworzSerie(biblioteki, dane, zestaw, TUzycie::Zwykle) : TKolumny<TDane>();
    const auto dostrojone = UtworzSerie(biblioteki, dane, zestaw, TUzycie::Dostrojone);
    DodajSerie(pomiary, zapis, odczyt, zwykle, obiekty);
    DodajSerie(pomiary, zapis + ", tuned", odczyt + ", tuned", dostrojone, obiekty);
    pomiary.Wykonaj();
}

} // namespace

void MierzSerie(TPomiary& pomiary, const dane::TBaza& baza, const dane::TZnaki& znaki) {
    TBibliotekiBazy binarne;
    TBibliotekiZnakow binarneZnakow;
    TBibliotekiBazy tekstowe;
    DodajWlasne(binarne, binarneZnakow, tekstowe);
    DodajObce(binarne, binarneZnakow, tekstowe);
    { // first, while the heap is in order
        std::vector<std::shared_ptr<void>> zywe;
        DodajPamiec(pomiary, binarne, baza, "invoices", zywe);
        DodajPamiec(pomiary, binarneZnakow, znaki, "characters", zywe);
    }
    MierzZestaw(pomiary, binarne, baza, "invoices");
    MierzZestaw(pomiary, binarneZnakow, znaki, "characters");
    MierzZestaw(pomiary, binarneZnakow, JednegoCelu(znaki), "characters, all refer to one", false);
    MierzZestaw(pomiary, tekstowe, baza, "invoices as text");
}

void MierzWzrost(TPomiary& pomiary) {
    constexpr std::size_t kNaFakture = 6; // objects, about
    const std::size_t obiekty[] = {pomiary.Ile(2000, 60), pomiary.Ile(kNajwiekszeDrzewo, 600)};
    const std::string wiersze[] = {"write, growth to " + std::to_string(obiekty[1]) + " objects",
                                   "read, growth to " + std::to_string(obiekty[1]) + " objects"};
    if (!pomiary.Chciany(wiersze[0]) && !pomiary.Chciany(wiersze[1]))
        return;
    TBibliotekiBazy biblioteki;
    TBibliotekiZnakow znakow;
    TBibliotekiBazy tekstowe;
    DodajWlasne(biblioteki, znakow, tekstowe);
    DodajObce(biblioteki, znakow, tekstowe);
    std::erase_if(biblioteki,
                  [](const auto& b) { return b.kolumna != kZtok && b.kolumna != kCpp && b.kolumna != kCereal; });
    const dane::TBaza bazy[] = {dane::GenerujBaze(obiekty[0] / kNaFakture), dane::GenerujBaze(obiekty[1] / kNaFakture)};
    TKolumny<dane::TBaza> kolumny[2];
    std::string nazwy[2][2];
    for (std::size_t i = 0; i < 2; ++i) {
        nazwy[i][0] = wiersze[0] + ": of " + std::to_string(obiekty[i]);
        nazwy[i][1] = wiersze[1] + ": of " + std::to_string(obiekty[i]);
        kolumny[i] = UtworzSerie(biblioteki, bazy[i], nazwy[i][1], TUzycie::Dostrojone);
        DodajSerie(pomiary, nazwy[i][0], nazwy[i][1], kolumny[i], dane::IleObiektow(bazy[i]));
    }
    pomiary.Wykonaj();
    for (std::size_t j = 0; j < 2; ++j)
        pomiary.Tabela.DodajIloraz(wiersze[j], nazwy[0][j], nazwy[1][j]);
}

} // namespace pomiary
