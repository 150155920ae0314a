// Collects what was measured and prints it as one table.
#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace pomiary {

// The columns. Libraries are what the first ratio is taken to, plain C++ what the second is.
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
inline constexpr std::string_view kOpenSSL = "OpenSSL";
inline constexpr std::string_view kNettle = "nettle";
inline constexpr std::string_view kZlib = "zlib";
inline constexpr std::string_view kLibdeflate = "libdeflate";
inline constexpr std::string_view kCpp = "plain C++";        // structs and the standard library, texts as UTF-16
inline constexpr std::string_view kCppUtf8 = "plain, UTF-8"; // the same, texts as UTF-8

class TTabela {
  public:
    // Rows stand in the order in which they were first named.
    void Zapowiedz(std::string_view operacja) { Wiersz(operacja); }
    // One more measurement of a cell.
    void Dodaj(std::string_view operacja, std::string_view kolumna, double wartosc);
    // The median of a cell; 0 when there is none.
    [[nodiscard]] double Mediana(std::string_view operacja, std::string_view kolumna) const;
    // Adds a row made of two: how many times the second is the first, for each column that has both.
    void DodajIloraz(std::string_view operacja, std::string_view mianownik, std::string_view licznik);
    void Drukuj() const;

  private:
    struct TWiersz {
        std::string operacja;
        std::map<std::string, std::vector<double>, std::less<>> pomiary;
    };
    TWiersz& Wiersz(std::string_view operacja);
    [[nodiscard]] const TWiersz* Jest(std::string_view operacja) const;
    void DrukujCzesc(std::size_t od, std::size_t koniec, const std::set<std::string_view>& kolumny) const;

    std::vector<TWiersz> wiersze_;
};

} // namespace pomiary
