#include <benchmark/benchmark.h>

#include "biblioteki/Ztok.h"
#include "pomiary/Pomiary.h"
#include "pomiary/Tabela.h"

namespace pomiary {

template <class TDane>
void ZarejestrujSerie(std::string_view zapis, std::string_view odczyt, const std::vector<TPozycjaListy<TDane>>& serie,
                      std::size_t ileObiektow) {
    for (const TPozycjaListy<TDane>& pozycja : serie) {
        ISeria<TDane>* seria = pozycja.seria.get();
        benchmark::RegisterBenchmark(NazwaPomiaru(zapis, pozycja.biblioteka).c_str(),
                                     [seria, ileObiektow](benchmark::State& stan) {
                                         for (auto krok : stan)
                                             Zuzyj(seria->Zapisz());
                                         UstawIle(stan, ileObiektow);
                                     });
        benchmark::RegisterBenchmark(NazwaPomiaru(odczyt, pozycja.biblioteka).c_str(),
                                     [seria, ileObiektow](benchmark::State& stan) {
                                         for (auto krok : stan) {
                                             seria->Wczytaj();
                                             seria->Zniszcz();
                                         }
                                         UstawIle(stan, ileObiektow);
                                     });
    }
}

template void ZarejestrujSerie(std::string_view, std::string_view, const std::vector<TPozycjaListy<dane::TBaza>>&,
                               std::size_t);
template void ZarejestrujSerie(std::string_view, std::string_view, const std::vector<TPozycjaListy<dane::TZnaki>>&,
                               std::size_t);

namespace {

// Registers one phase: prepare what it needs, then time the phase alone.
template <class TPrzygotuj, class TFaza>
void Faza(std::string_view nazwa, std::size_t ileObiektow, TPrzygotuj przygotuj, TFaza faza) {
    benchmark::RegisterBenchmark(NazwaPomiaru(nazwa, kZtok).c_str(), [=](benchmark::State& stan) {
        for (auto krok : stan) {
            auto dane = przygotuj();
            const double start = CzasProcesora();
            faza(dane);
            stan.SetIterationTime(CzasProcesora() - start);
        }
        UstawIleReczny(stan, ileObiektow);
    })->UseManualTime();
}

} // namespace

void ZarejestrujFazy(const dane::TBaza& baza) {
    const std::size_t ile = dane::IleObiektow(baza);
    // One tree for all phases, kept to the end of the process.
    static TBaza* drzewo = ztok::UtworzSurowy<TBaza>();
    static ztok::TZTMemoryStream strumien;
    Wypelnij(*drzewo, baza);
    drzewo->ZapiszWStrumieniu(strumien);

    struct TNic {};
    using TZapisywacz = std::unique_ptr<ztok::TZapisywaczDanych>;
    Faza(
        "phase: collecting objects", ile, [] { return std::make_unique<ztok::TZapisywaczDanych>(); },
        [](TZapisywacz& z) { drzewo->DajObiektyDoZapisu(*z); });
    Faza(
        "phase: sorting addresses", ile,
        [] {
            auto z = std::make_unique<ztok::TZapisywaczDanych>();
            drzewo->DajObiektyDoZapisu(*z);
            return z;
        },
        [](TZapisywacz& z) { z->SortujListe(); });
    Faza(
        "phase: whole write", ile,
        [] {
            strumien.Seek(0, ztok::ESeek::Poczatek);
            return TNic{};
        },
        [](TNic&) { drzewo->ZapiszWStrumieniu(strumien); });
    Faza(
        "phase: read", ile,
        [] {
            strumien.Seek(0, ztok::ESeek::Poczatek);
            return ztok::Utworz<TBaza>();
        },
        [](ztok::TWlasny<TBaza>& nowe) { nowe->WczytajZeStrumienia(strumien); });
    Faza(
        "phase: destroy", ile,
        [] {
            strumien.Seek(0, ztok::ESeek::Poczatek);
            auto nowe = ztok::Utworz<TBaza>();
            nowe->WczytajZeStrumienia(strumien);
            return nowe;
        },
        [](ztok::TWlasny<TBaza>& nowe) { ztok::Zwolnij(nowe.Oddaj()); });
}

} // namespace pomiary
