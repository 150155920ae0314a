// Tables of expected values: UTF-8, tab-separated, one header line; tab, CR, LF, backslash and any byte inside a field
// are written \t \r \n \\ \x1F.
#pragma once

#include <bit>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "ztok/platform/Kodowania.h"

#ifndef ZTOK_DANE_TESTOW
#define ZTOK_DANE_TESTOW "tests/dane"
#endif

namespace testy {

struct TWierszTabeli {
    int numer = 0; // line in the file, for messages
    std::vector<std::string> polaUtf8;

    const std::string& operator[](std::size_t kolumna) const { return polaUtf8.at(kolumna); }
    [[nodiscard]] const std::string& Utf8(std::size_t kolumna) const { return polaUtf8.at(kolumna); }
    [[nodiscard]] std::u16string Tekst(std::size_t kolumna) const { return ztok::Utf16ZUtf8(Utf8(kolumna)); }
    [[nodiscard]] double Rzeczywista(std::size_t kolumna) const { return std::bit_cast<double>(Bity(kolumna)); }
    [[nodiscard]] std::uint64_t Bity(std::size_t kolumna) const { return std::stoull(Utf8(kolumna), nullptr, 16); }
    [[nodiscard]] std::int64_t Calkowita(std::size_t kolumna) const { return std::stoll(Utf8(kolumna)); }
};

inline std::vector<std::string> Podziel(std::string_view tekst, char separator) {
    std::vector<std::string> czesci(1);
    for (const char znak : tekst)
        if (znak == separator)
            czesci.emplace_back();
        else
            czesci.back() += znak;
    return czesci;
}

// The rows without the header, and without those that are open: "?" in `kolumna`. Throws when the file is missing or
// has none, so that a test over it cannot pass empty.
inline std::vector<TWierszTabeli> WczytajTabele(const std::string& nazwa, std::size_t kolumna = SIZE_MAX) {
    std::ifstream plik(std::string(ZTOK_DANE_TESTOW) + "/" + nazwa, std::ios::binary);
    const std::string tresc((std::istreambuf_iterator<char>(plik)), std::istreambuf_iterator<char>());
    std::vector<TWierszTabeli> wynik;
    int numer = 0;
    for (const std::string& linia : Podziel(tresc, '\n')) {
        if (++numer == 1 || linia.empty())
            continue;
        TWierszTabeli wiersz{numer, {""}};
        for (std::size_t i = 0; i < linia.size(); ++i) {
            if (linia[i] == '\t') {
                wiersz.polaUtf8.emplace_back();
            } else if (linia[i] == '\\' && i + 1 < linia.size()) {
                const char znak = linia[++i];
                wiersz.polaUtf8.back() += znak == 't'   ? '\t'
                                          : znak == 'r' ? '\r'
                                          : znak == 'n' ? '\n'
                                          : znak == 'x'
                                              ? static_cast<char>(std::stoi(linia.substr(i + 1, 2), nullptr, 16))
                                              : znak;
                i += znak == 'x' ? 2 : 0;
            } else {
                wiersz.polaUtf8.back() += linia[i];
            }
        }
        if (kolumna >= wiersz.polaUtf8.size() || wiersz[kolumna] != "?")
            wynik.push_back(std::move(wiersz));
    }
    if (wynik.empty())
        throw std::runtime_error("no table " + nazwa);
    return wynik;
}

} // namespace testy
