// Collects what was measured and prints it as one table.
#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

namespace pomiary {

// The columns. The peers are what the ratio is taken to; plain C++ is shown for orientation.
inline constexpr std::string_view kZtok = "ztok";
inline constexpr std::string_view kCereal = "cereal";
inline constexpr std::string_view kFlatBuffers = "FlatBuffers";
inline constexpr std::string_view kBoost = "Boost";
inline constexpr std::string_view kProtobuf = "protobuf";
inline constexpr std::string_view kProtobufArena = "pb arena";
inline constexpr std::string_view kRapidJson = "RapidJSON";
inline constexpr std::string_view kPugiAtrybuty = "pugi attr";
inline constexpr std::string_view kPugiElementy = "pugi elem";
inline constexpr std::string_view kIcu = "ICU";
inline constexpr std::string_view kIconv = "iconv";
inline constexpr std::string_view kCpp = "plain C++";
inline constexpr std::string_view kOpenSSL = "OpenSSL";
inline constexpr std::string_view kNettle = "nettle";
inline constexpr std::string_view kZlib = "zlib";
inline constexpr std::string_view kLibdeflate = "libdeflate";

// Name of a benchmark: the row and the column.
[[nodiscard]] std::string NazwaPomiaru(std::string_view operacja, std::string_view biblioteka);
// Says how many items one iteration handles, so that the table can tell nanoseconds an item.
void UstawIle(benchmark::State& stan, std::size_t ile);
// For a benchmark that times itself: its time is the manual one.
void UstawIleReczny(benchmark::State& stan, std::size_t ile);

// Takes the processor time of every repetition; the table shows medians.
class TTabela : public benchmark::BenchmarkReporter {
  public:
    bool ReportContext(const Context& kontekst) override;
    void ReportRuns(const std::vector<Run>& przebiegi) override;

    // A value that no benchmark gives.
    void Dodaj(std::string_view operacja, std::string_view biblioteka, double wartosc);
    // The median of a cell; 0 when there is none.
    [[nodiscard]] double Mediana(std::string_view operacja, std::string_view biblioteka) const;
    void Drukuj() const;

  private:
    struct TWiersz {
        std::string operacja;
        std::map<std::string, std::vector<double>, std::less<>> pomiary;
    };
    TWiersz& Wiersz(std::string_view operacja);
    void DrukujCzesc(std::size_t od, std::size_t koniec, const std::set<std::string_view>& kolumny) const;

    std::vector<TWiersz> wiersze_;
};

} // namespace pomiary
