// Rows of a table of expected values, with the number of the row and columns as values.
#pragma once

#include <bit>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "tests/TablicaTsv.h"
#include "ztok/platform/Kodowania.h"

namespace testy {

struct TWierszTabeli {
    int numer = 0; // for messages
    TWierszTsv polaUtf8;

    [[nodiscard]] const std::string& Utf8(std::size_t kolumna) const { return polaUtf8.at(kolumna); }
    [[nodiscard]] std::u16string Tekst(std::size_t kolumna) const { return ztok::Utf16ZUtf8(Utf8(kolumna)); }
    [[nodiscard]] double Rzeczywista(std::size_t kolumna) const { return std::bit_cast<double>(Bity(kolumna)); }
    [[nodiscard]] std::uint64_t Bity(std::size_t kolumna) const { return std::stoull(Utf8(kolumna), nullptr, 16); }
    [[nodiscard]] std::int64_t Calkowita(std::size_t kolumna) const { return std::stoll(Utf8(kolumna)); }
};

inline std::vector<TWierszTabeli> WczytajTabele(const std::string& nazwa) {
    std::vector<TWierszTabeli> wynik;
    for (TWierszTsv& pola : CzytajTsv(nazwa))
        wynik.push_back({static_cast<int>(wynik.size()) + 1, std::move(pola)});
    return wynik;
}

} // namespace testy
