// Measures the library beside those that a user would take instead: in one run, on the same data, with one allocator.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string>

#include <benchmark/benchmark.h>
#include <google/protobuf/stubs/common.h>

#include "biblioteki/Ztok.h"
#include "pomiary/Pomiary.h"
#include "pomiary/Tabela.h"

namespace pomiary {

namespace {

constexpr const char* kPlikZnakow = "/usr/share/unicode/UnicodeData.txt";

template <class TDane> struct TBiblioteka {
    std::string_view nazwa;
    TFabryka<TDane> fabryka;
};

template <class TDane>
constexpr TBiblioteka<TDane> kBiblioteki[] = {
    {kZtok, &SeriaZtok},   {kCereal, &SeriaCereal},     {kFlatBuffers, &SeriaFlatBuffers},
    {kBoost, &SeriaBoost}, {kProtobuf, &SeriaProtobuf}, {kProtobufArena, &SeriaProtobufArena}};

constexpr TBiblioteka<dane::TBaza> kFormyCzytelne[] = {{kZtok, &SeriaTekstuZtok},
                                                       {kRapidJson, &SeriaRapidJson},
                                                       {kPugiAtrybuty, &SeriaPugixmlAtrybuty},
                                                       {kPugiElementy, &SeriaPugixmlElementy}};

// Makes the series of a library, writes once, and checks that reading gives the data back. With a table the memory of a
// tree goes there.
template <class TDane>
std::unique_ptr<ISeria<TDane>> UtworzSerie(const TBiblioteka<TDane>& biblioteka, const TDane& dane, TUzycie uzycie,
                                           TTabela* tabela, std::string_view wierszPamieci) {
    auto seria = biblioteka.fabryka(dane, uzycie);
    const std::size_t bajty = seria->Zapisz();
    if (tabela != nullptr) {
        const auto obiekty = static_cast<double>(dane::IleObiektow(dane));
        const double pamiec = ZajetaPamiec([](void* s) { static_cast<ISeria<TDane>*>(s)->Wczytaj(); }, seria.get());
        const std::string wiersz(wierszPamieci);
        tabela->Dodaj(wiersz + ": memory, bytes an object", biblioteka.nazwa, pamiec / obiekty);
        tabela->Dodaj(wiersz + ": written, bytes an object", biblioteka.nazwa, static_cast<double>(bajty) / obiekty);
    }
    seria->Wczytaj();
    if (!(seria->Odtworz() == dane)) {
        std::fprintf(stderr, "%s: what was read is not what was written\n", std::string(biblioteka.nazwa).c_str());
        std::exit(1);
    }
    seria->Zniszcz();
    return seria;
}

template <class TDane> using TListaSerii = std::vector<TPozycjaListy<TDane>>;

template <class TDane>
TListaSerii<TDane> UtworzSerie(const TDane& dane, TUzycie uzycie, TTabela* tabela, std::string_view wierszPamieci,
                               std::span<const TBiblioteka<TDane>> biblioteki = kBiblioteki<TDane>) {
    TListaSerii<TDane> serie;
    for (const TBiblioteka<TDane>& biblioteka : biblioteki)
        serie.push_back({biblioteka.nazwa, UtworzSerie(biblioteka, dane, uzycie, tabela, wierszPamieci)});
    return serie;
}

// The same operations on few and on many objects, for us and for the structs of one peer.
void Skalowanie(TTabela& tabela) {
    constexpr const char* kZapis[] = {"write, 2,000 objects", "write, 2,000,000 objects"};
    constexpr const char* kOdczyt[] = {"read and destroy, 2,000 objects", "read and destroy, 2,000,000 objects"};
    constexpr int kFaktury[] = {328, 328000};
    dane::TBaza bazy[2];
    TListaSerii<dane::TBaza> serie[2];
    for (std::size_t i = 0; i < 2; ++i) {
        bazy[i] = dane::GenerujBaze(kFaktury[i], kFaktury[i] / 10);
        for (const auto& biblioteka : kBiblioteki<dane::TBaza>)
            if (biblioteka.nazwa == kZtok || biblioteka.nazwa == kCereal)
                serie[i].push_back(
                    {biblioteka.nazwa, UtworzSerie(biblioteka, bazy[i], TUzycie::Dostrojone, nullptr, {})});
        ZarejestrujSerie(kZapis[i], kOdczyt[i], serie[i], dane::IleObiektow(bazy[i]));
    }
    benchmark::RunSpecifiedBenchmarks(&tabela);
    for (const std::string_view biblioteka : {kZtok, kCereal})
        for (const auto& [nazwa, wiersze] : {std::pair{"write: growth of the cost an object", kZapis},
                                             std::pair{"read: growth of the cost an object", kOdczyt}})
            if (const double male = tabela.Mediana(wiersze[0], biblioteka); male != 0)
                tabela.Dodaj(nazwa, biblioteka, tabela.Mediana(wiersze[1], biblioteka) / male);
    benchmark::ClearRegisteredBenchmarks();
}

void Wszystko() {
    const dane::TBaza baza = dane::GenerujBaze(20000, 2000);
    const dane::TZnaki znaki = dane::WczytajZnaki(kPlikZnakow);
    const std::size_t obiekty = dane::IleObiektow(baza);
    const double mb = static_cast<double>(dane::BajtyWartosci(baza)) / 1e6;
    std::printf(
        "%zu objects, %.1f MB of values; %zu characters. Allocator: glibc's malloc, freed memory kept; ztok's pool\n"
        "on top of it holds objects, fields, short lists and texts of up to 250 units. Plain rows use each library as "
        "its manual\n"
        "shows, \"tuned\" rows keep one buffer in memory. Peers hold texts as UTF-8, ztok as UTF-16 and converts.\n"
        "Peers read into plain structs or generated classes. Times are the processor's.\n",
        obiekty, mb, znaki.znaki.size());
    std::fflush(stdout);

    TTabela tabela;
    // Memory is measured first, while the heap is in order.
    const auto serieBazy = UtworzSerie(baza, TUzycie::Zwykle, &tabela, "invoices");
    const auto serieZnakow = UtworzSerie(znaki, TUzycie::Zwykle, &tabela, "characters");
    const auto dostrojoneBazy = UtworzSerie(baza, TUzycie::Dostrojone, nullptr, {});
    const auto dostrojoneZnakow = UtworzSerie(znaki, TUzycie::Dostrojone, nullptr, {});
    const std::span<const TBiblioteka<dane::TBaza>> czytelne(kFormyCzytelne);
    const auto tekstyBazy = UtworzSerie(baza, TUzycie::Zwykle, &tabela, "invoices as text", czytelne);
    const auto dostrojoneTeksty = UtworzSerie(baza, TUzycie::Dostrojone, nullptr, {}, czytelne);
    const std::size_t ileZnakow = dane::IleObiektow(znaki);
    ZarejestrujSerie("invoices: write", "invoices: read and destroy", serieBazy, obiekty);
    ZarejestrujSerie("characters: write", "characters: read and destroy", serieZnakow, ileZnakow);
    ZarejestrujSerie("invoices: write, tuned", "invoices: read and destroy, tuned", dostrojoneBazy, obiekty);
    ZarejestrujSerie("characters: write, tuned", "characters: read and destroy, tuned", dostrojoneZnakow, ileZnakow);
    ZarejestrujSerie(kOperacjeTekstu[0], kOperacjeTekstu[1], tekstyBazy, obiekty);
    ZarejestrujSerie(kOperacjeTekstu[2], kOperacjeTekstu[3], dostrojoneTeksty, obiekty);
    ZarejestrujFazy(baza);
    ZarejestrujOperacje(baza);
    ZarejestrujKodowania(baza);
    ZarejestrujBajty();
    ZarejestrujTekst(baza);
    benchmark::RunSpecifiedBenchmarks(&tabela);
    PodsumujTekst(tabela);
    benchmark::ClearRegisteredBenchmarks();
    // By themselves: trees that are sorted, and point anywhere, leave the heap in disorder for the others.
    ZarejestrujModel(baza);
    benchmark::RunSpecifiedBenchmarks(&tabela);
    DodajWzrostKopii(tabela);
    benchmark::ClearRegisteredBenchmarks();
    // By itself: so many objects would leave the heap in disorder for the others. A run of chosen benchmarks is spared
    // it unless it names the objects.
    const std::string filtr = benchmark::GetBenchmarkFilter();
    if (filtr.empty() || filtr == "." || filtr == "all" || filtr.find("objects") != std::string::npos)
        Skalowanie(tabela);
    tabela.Drukuj();
}

} // namespace

} // namespace pomiary

int main(int argc, char** argv) {
    // Repetitions of all benchmarks are mixed, so that a disturbance of the machine meets all libraries alike. The
    // caller's own options come later and win.
    std::vector<std::string> opcje = {argv[0], "--benchmark_repetitions=9", "--benchmark_min_time=0.03",
                                      "--benchmark_enable_random_interleaving=true"};
    opcje.insert(opcje.end(), argv + 1, argv + argc);
    std::vector<char*> wskazniki;
    for (std::string& opcja : opcje)
        wskazniki.push_back(opcja.data());
    int ile = static_cast<int>(wskazniki.size());
    benchmark::Initialize(&ile, wskazniki.data());
    if (benchmark::ReportUnrecognizedArguments(ile, wskazniki.data()))
        return 1;
    if (!std::getenv("ZIMNO"))
        pomiary::ZatrzymujPamiec();
    pomiary::RejestrujKlasyPomiarow();
    pomiary::Wszystko();
    google::protobuf::ShutdownProtobufLibrary();
    return 0;
}
