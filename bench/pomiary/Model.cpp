// Copy, comparison, sort and search of whole trees and lists.
#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <google/protobuf/arena.h>
#include <google/protobuf/util/message_differencer.h>

#include "biblioteki/Protobuf.h"
#include "biblioteki/Ztok.h"
#include "pomiary/Pomiary.h"
#include "pomiary/Tabela.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/PorownanieTekstow.h"

namespace pomiary {

namespace {

// An object that points at another one of its list.
class TWezel : public ztok::TObiekt {
    ZTOK_OBIEKT(TWezel, ztok::TObiekt, (0, Kod, Integer), (1, Inny, Ref<TWezel>))
};
class TListaWezlow : public ztok::TListaTypu<TWezel> {
    ZTOK_LISTA(TListaWezlow, TWezel)
};

// Registers the whole operation `krok()` on so many items.
template <class TKrok>
void Calosc(std::string_view operacja, std::string_view biblioteka, std::size_t ile, TKrok krok) {
    benchmark::RegisterBenchmark(NazwaPomiaru(operacja, biblioteka).c_str(), [=](benchmark::State& stan) {
        for (auto obrot : stan)
            krok();
        UstawIle(stan, ile);
    });
}

// The same, `przygotuj()` before it outside the time.
template <class TPrzygotuj, class TKrok>
void PoPrzygotowaniu(std::string_view operacja, std::string_view biblioteka, std::size_t ile, TPrzygotuj przygotuj,
                     TKrok krok) {
    benchmark::RegisterBenchmark(NazwaPomiaru(operacja, biblioteka).c_str(), [=](benchmark::State& stan) {
        for (auto obrot : stan) {
            przygotuj();
            const double start = CzasProcesora();
            krok();
            stan.SetIterationTime(CzasProcesora() - start);
        }
        UstawIleReczny(stan, ile);
    })->UseManualTime();
}

void ZarejestrujDrzewa(const dane::TBaza& baza) {
    struct TDrzewa {
        ztok::TWlasny<TBaza> nasze = ztok::Utworz<TBaza>();
        ztok::TWlasny<ztok::TObiektBazowy> nasze2;
        pb::Baza komunikat;
        pb::Baza komunikat2;
        dane::TBaza struktury;
    };
    static auto* const d = new TDrzewa; // kept to the end of the process
    Wypelnij(*d->nasze, baza);
    d->nasze2 = d->nasze->KlonujObiekt(false);
    Wypelnij(d->komunikat, baza);
    d->komunikat2 = d->komunikat;
    d->struktury = baza;

    const std::size_t ile = dane::IleObiektow(baza);
    constexpr const char* kKopia = "invoices: copy and destroy";
    Calosc(kKopia, kZtok, ile, [] { Zuzyj(d->nasze->KlonujObiekt(false)); });
    Calosc(kKopia, kProtobuf, ile, [] { Zuzyj(pb::Baza(d->komunikat)); });
    Calosc(kKopia, kProtobufArena, ile, [] {
        google::protobuf::Arena arena;
        auto* kopia = google::protobuf::Arena::CreateMessage<pb::Baza>(&arena);
        kopia->CopyFrom(d->komunikat);
        Zuzyj(*kopia);
    });
    Calosc(kKopia, kCpp, ile, [] { Zuzyj(dane::TBaza(d->struktury)); });

    constexpr const char* kRownosc = "invoices: compare equal trees";
    Calosc(kRownosc, kZtok, ile,
           [] { Zuzyj(d->nasze->PorownajZObiektem(*d->nasze2, ztok::rlRozmLiterWazny, ztok::LocaleWin1250)); });
    Calosc(kRownosc, kProtobuf, ile,
           [] { Zuzyj(google::protobuf::util::MessageDifferencer::Equals(d->komunikat, d->komunikat2)); });
    static const dane::TBaza* const baza2 = &baza;
    Calosc(kRownosc, kCpp, ile, [] { Zuzyj(d->struktury == *baza2); });
}

// Positions as pointers in one order, for us and for the standard algorithms on the same comparison.
struct TSortowane {
    struct TWiersz {
        std::u16string nazwa;
        double cena;
    };
    ztok::TWlasny<TListaPozycji> nasze = ztok::Utworz<TListaPozycji>();
    ztok::TListaWskObiektow lista;
    std::vector<TWiersz> wiersze;
    std::vector<const TWiersz*> wskazniki;

    explicit TSortowane(std::size_t ile) {
        const dane::TBaza baza = dane::GenerujBaze(static_cast<int>(ile / 4), 1);
        wiersze.reserve(ile);
        for (const dane::TFaktura& f : baza.faktury)
            for (const dane::TPozycja& p : f.pozycje)
                if (wiersze.size() < ile) {
                    Wypelnij(nasze->Dopisz(), p);
                    wiersze.push_back({ztok::Utf16ZUtf8(p.nazwaUtf8), p.cena});
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
    static bool Przed(const TWiersz& a, const TWiersz& b) {
        const int wynik = ztok::PorownajWin1250(a.nazwa, b.nazwa);
        return wynik != 0 ? wynik < 0 : a.cena < b.cena;
    }
    void SortujNasze() {
        static const ztok::TArgument pola[] = {TPozycja::nrNazwa, TPozycja::nrCena};
        lista.PosortujWgPol(pola);
    }
    void SortujStandardowo() {
        std::sort(wskazniki.begin(), wskazniki.end(), [](const TWiersz* a, const TWiersz* b) { return Przed(*a, *b); });
    }
};

void ZarejestrujSortowanie() {
    constexpr std::size_t kIle = 200000;
    constexpr std::size_t kSzukan = 1000;
    constexpr const char* kSort = "sort 200,000 positions by name and price";
    constexpr const char* kSzukaj = "bisect 200,000 positions by name and price";
    static auto* const s = new TSortowane(kIle);
    static auto* const posortowane = new TSortowane(kIle);
    posortowane->SortujNasze();
    posortowane->SortujStandardowo();
    PoPrzygotowaniu(
        kSort, kZtok, kIle, [] { s->Przywroc(); }, [] { s->SortujNasze(); });
    PoPrzygotowaniu(
        kSort, kCpp, kIle, [] { s->Przywroc(); }, [] { s->SortujStandardowo(); });
    Calosc(kSzukaj, kZtok, kSzukan, [] {
        static const ztok::TArgument pola[] = {TPozycja::nrNazwa, TPozycja::nrCena};
        for (std::size_t i = 0; i < kSzukan; ++i) {
            const TSortowane::TWiersz& w = posortowane->wiersze[i * (kIle / kSzukan)];
            const ztok::TArgument wartosci[] = {w.nazwa, w.cena};
            std::int32_t gdzie = 0;
            Zuzyj(posortowane->lista.WyszukajWgPol(pola, wartosci, gdzie));
        }
    });
    Calosc(kSzukaj, kCpp, kSzukan, [] {
        for (std::size_t i = 0; i < kSzukan; ++i)
            Zuzyj(std::lower_bound(posortowane->wskazniki.begin(), posortowane->wskazniki.end(),
                                   &posortowane->wiersze[i * (kIle / kSzukan)],
                                   [](const auto* a, const auto* b) { return TSortowane::Przed(*a, *b); }));
    });
}

constexpr const char* kKopiaRef[] = {"copy with references, 2,000 objects", "copy with references, 200,000 objects",
                                     "copy with far references, 200,000 objects"};

} // namespace

void ZarejestrujModel(const dane::TBaza& baza) {
    ZarejestrujDrzewa(baza);
    ZarejestrujSortowanie();
    // References lead at most 500 objects away, as they mostly do in data; the last tree's anywhere, so that each is a
    // miss of every cache.
    constexpr std::int32_t kIle[] = {2000, 200000, 200000};
    constexpr std::int32_t kOkno[] = {1000, 1000, 200000};
    static ztok::TWlasny<TListaWezlow> drzewa[3];
    static ztok::TWlasny<ztok::TObiektBazowy> kopie[3];
    std::minstd_rand los(1);
    for (std::size_t k = 0; k < 3; ++k) {
        TListaWezlow& drzewo = *(drzewa[k] = ztok::Utworz<TListaWezlow>());
        for (std::int32_t i = 0; i < kIle[k]; ++i)
            drzewo.Dopisz().SetKod(i);
        for (std::int32_t i = 0; i < kIle[k]; ++i) {
            const auto skok = static_cast<std::int32_t>(los() % static_cast<std::uint32_t>(kOkno[k])) - kOkno[k] / 2;
            drzewo[i]->SetInny(drzewo[(i + skok + kIle[k]) % kIle[k]]);
        }
        PoPrzygotowaniu(
            kKopiaRef[k], kZtok, static_cast<std::size_t>(kIle[k]), [&kopia = kopie[k]] { kopia = nullptr; },
            [&drzewo, &kopia = kopie[k]] { kopia = drzewo.KlonujObiekt(false); });
    }
}

void DodajWzrostKopii(TTabela& tabela) {
    if (const double male = tabela.Mediana(kKopiaRef[0], kZtok); male != 0)
        tabela.Dodaj("copy with references: growth of the cost", kZtok, tabela.Mediana(kKopiaRef[1], kZtok) / male);
}

} // namespace pomiary
