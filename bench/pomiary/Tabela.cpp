#include "pomiary/Tabela.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace pomiary {

namespace {

constexpr char kRozdzielacz = '|';
constexpr std::array kKolumny = {kZtok,      kCereal,       kFlatBuffers,  kBoost, kProtobuf, kProtobufArena,
                                 kRapidJson, kPugiAtrybuty, kPugiElementy, kIcu,   kIconv,    kOpenSSL,
                                 kNettle,    kZlib,         kLibdeflate,   kCpp};
constexpr bool Obca(std::string_view kolumna) { return kolumna != kZtok && kolumna != kCpp; }
constexpr const char* kIle = "n";
constexpr const char* kReczny = "manual";

// Rows in the order in which their benchmarks were made: they are run in any order.
std::vector<std::string>& Kolejnosc() {
    static std::vector<std::string> kolejnosc;
    return kolejnosc;
}

std::size_t Miejsce(std::string_view operacja) {
    const auto gdzie = std::find(Kolejnosc().begin(), Kolejnosc().end(), operacja);
    if (gdzie == Kolejnosc().end())
        Kolejnosc().emplace_back(operacja);
    return static_cast<std::size_t>(std::find(Kolejnosc().begin(), Kolejnosc().end(), operacja) - Kolejnosc().begin());
}

double MedianaZ(std::vector<double> liczby) {
    if (liczby.empty())
        return 0;
    std::sort(liczby.begin(), liczby.end());
    const std::size_t srodek = liczby.size() / 2;
    return liczby.size() % 2 != 0 ? liczby[srodek] : (liczby[srodek - 1] + liczby[srodek]) / 2;
}

} // namespace

std::string NazwaPomiaru(std::string_view operacja, std::string_view biblioteka) {
    Miejsce(operacja);
    return std::string(operacja) + kRozdzielacz + std::string(biblioteka);
}

void UstawIle(benchmark::State& stan, std::size_t ile) { stan.counters[kIle] = static_cast<double>(ile); }

void UstawIleReczny(benchmark::State& stan, std::size_t ile) {
    UstawIle(stan, ile);
    stan.counters[kReczny] = 1;
}

bool TTabela::ReportContext(const Context& /*kontekst*/) { return true; }

void TTabela::ReportRuns(const std::vector<Run>& przebiegi) {
    for (const Run& przebieg : przebiegi) {
        const std::string& nazwa = przebieg.run_name.function_name;
        const std::size_t gdzie = nazwa.find(kRozdzielacz);
        const auto ile = przebieg.counters.find(kIle);
        if (przebieg.error_occurred)
            std::fprintf(stderr, "%s: %s\n", nazwa.c_str(), przebieg.error_message.c_str());
        if (przebieg.error_occurred || przebieg.run_type != Run::RT_Iteration || gdzie == std::string::npos ||
            ile == przebieg.counters.end())
            continue;
        const double czas =
            przebieg.counters.contains(kReczny) ? przebieg.real_accumulated_time : przebieg.cpu_accumulated_time;
        Dodaj(std::string_view(nazwa).substr(0, gdzie), std::string_view(nazwa).substr(gdzie + 1),
              czas * 1e9 / static_cast<double>(przebieg.iterations) / ile->second.value);
    }
    std::fputc('.', stderr);
}

TTabela::TWiersz& TTabela::Wiersz(std::string_view operacja) {
    const std::size_t miejsce = Miejsce(operacja);
    while (wiersze_.size() <= miejsce)
        wiersze_.push_back({Kolejnosc()[wiersze_.size()], {}});
    return wiersze_[miejsce];
}

void TTabela::Dodaj(std::string_view operacja, std::string_view biblioteka, double wartosc) {
    Wiersz(operacja).pomiary[std::string(biblioteka)].push_back(wartosc);
}

double TTabela::Mediana(std::string_view operacja, std::string_view biblioteka) const {
    for (const TWiersz& wiersz : wiersze_)
        if (wiersz.operacja == operacja)
            if (const auto pomiar = wiersz.pomiary.find(biblioteka); pomiar != wiersz.pomiary.end())
                return MedianaZ(pomiar->second);
    return 0;
}

void TTabela::Drukuj() const {
    // A part of the table has the columns of its rows: a new one begins where a row has peers, none of them in the
    // part.
    std::size_t od = 0;
    while (od < wiersze_.size()) {
        std::set<std::string_view> kolumny;
        const auto wspolna = [&](const auto& pomiar) { return Obca(pomiar.first) && kolumny.contains(pomiar.first); };
        const auto obca = [](const auto& kolumna) { return Obca(kolumna); };
        std::size_t koniec = od;
        for (; koniec < wiersze_.size(); ++koniec) {
            const auto& pomiary = wiersze_[koniec].pomiary;
            if (std::any_of(kolumny.begin(), kolumny.end(), obca) &&
                std::any_of(pomiary.begin(), pomiary.end(), [](const auto& p) { return Obca(p.first); }) &&
                std::none_of(pomiary.begin(), pomiary.end(), wspolna))
                break;
            for (const auto& [kolumna, liczby] : pomiary)
                kolumny.insert(kolumna);
        }
        DrukujCzesc(od, koniec, kolumny);
        od = koniec;
    }
}

void TTabela::DrukujCzesc(std::size_t od, std::size_t koniec, const std::set<std::string_view>& kolumny) const {
    std::printf("\n%-46s", "operation (median; ns an item)");
    for (const std::string_view kolumna : kKolumny)
        if (kolumny.contains(kolumna))
            std::printf(" %11.*s", static_cast<int>(kolumna.size()), kolumna.data());
    std::printf(" %11s\n", "to fastest");
    for (; od < koniec; ++od) {
        const TWiersz& wiersz = wiersze_[od];
        if (wiersz.pomiary.empty())
            continue;
        std::printf("%-46s", wiersz.operacja.c_str());
        double najszybszy = 0;
        for (const std::string_view kolumna : kKolumny) {
            if (!kolumny.contains(kolumna))
                continue;
            const double mediana = Mediana(wiersz.operacja, kolumna);
            if (mediana == 0)
                std::printf(" %11s", "");
            else
                std::printf(" %11.*f", mediana < 100 ? 2 : 1, mediana);
            if (mediana != 0 && Obca(kolumna) && (najszybszy == 0 || mediana < najszybszy))
                najszybszy = mediana;
        }
        const double nasz = Mediana(wiersz.operacja, kZtok);
        if (nasz != 0 && najszybszy != 0)
            std::printf(" %11.2f\n", nasz / najszybszy);
        else
            std::printf("\n");
    }
}

} // namespace pomiary
