// Tables of expected values: tab-separated text, UTF-8, a header line that starts with '#'.
#pragma once

#include <cstdint>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#ifndef ZTOK_DANE_TESTOW
#define ZTOK_DANE_TESTOW "tests/dane"
#endif

namespace testy {

using TWierszTsv = std::vector<std::string>;

// \t \r \n and \\ back to what they stand for.
inline std::string OdkodujTsv(std::string_view pole) {
    std::string wynik;
    for (std::size_t i = 0; i < pole.size(); ++i) {
        if (pole[i] != '\\' || i + 1 == pole.size()) {
            wynik += pole[i];
            continue;
        }
        const char znak = pole[++i];
        wynik += znak == 't' ? '\t' : znak == 'r' ? '\r' : znak == 'n' ? '\n' : znak;
    }
    return wynik;
}

inline std::vector<std::string_view> Podziel(std::string_view tekst, char separator) {
    std::vector<std::string_view> czesci;
    for (std::size_t od = 0;;) {
        const std::size_t koniec = tekst.find(separator, od);
        czesci.push_back(tekst.substr(od, koniec - od));
        if (koniec == std::string_view::npos)
            return czesci;
        od = koniec + 1;
    }
}

// Rows of the table without the header. Only LF ends a row: other control characters are data. Throws when the file
// is missing or has no rows, so that a test over it cannot pass empty.
inline std::vector<TWierszTsv> CzytajTsv(const std::string& nazwa) {
    std::ifstream plik(std::string(ZTOK_DANE_TESTOW) + "/" + nazwa, std::ios::binary);
    const std::string tresc{std::istreambuf_iterator<char>(plik), {}};
    std::vector<TWierszTsv> wiersze;
    for (std::string_view wiersz : Podziel(tresc, '\n')) {
        if (wiersz.empty() || wiersz.front() == '#')
            continue;
        TWierszTsv& pola = wiersze.emplace_back();
        for (std::string_view pole : Podziel(wiersz, '\t'))
            pola.push_back(OdkodujTsv(pole));
    }
    if (wiersze.empty())
        throw std::runtime_error("no rows in " + nazwa);
    return wiersze;
}

} // namespace testy
