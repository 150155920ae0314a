// Tables of expected values: UTF-8, tab-separated, one header line; tab, CR, LF and backslash inside a field are
// written \t \r \n \\.
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

    [[nodiscard]] const std::string& Utf8(std::size_t kolumna) const { return polaUtf8.at(kolumna); }
    [[nodiscard]] std::u16string Tekst(std::size_t kolumna) const { return ztok::Utf16ZUtf8(Utf8(kolumna)); }
    [[nodiscard]] double Rzeczywista(std::size_t kolumna) const { return std::bit_cast<double>(Bity(kolumna)); }
    [[nodiscard]] std::uint64_t Bity(std::size_t kolumna) const { return std::stoull(Utf8(kolumna), nullptr, 16); }
    [[nodiscard]] std::int64_t Calkowita(std::size_t kolumna) const { return std::stoll(Utf8(kolumna)); }
};

inline std::vector<TWierszTabeli> WczytajTabele(const std::string& nazwa) {
    std::ifstream plik(std::string(ZTOK_DANE_TESTOW) + "/" + nazwa, std::ios::binary);
    const std::string tresc((std::istreambuf_iterator<char>(plik)), std::istreambuf_iterator<char>());
    std::vector<TWierszTabeli> wynik;
    int numer = 0;
    for (std::size_t poczatek = 0; poczatek < tresc.size();) {
        const std::size_t koniec = tresc.find('\n', poczatek);
        const std::string_view linia = std::string_view(tresc).substr(poczatek, koniec - poczatek);
        poczatek = koniec == std::string::npos ? tresc.size() : koniec + 1;
        ++numer;
        if (numer == 1 || linia.empty())
            continue;
        TWierszTabeli wiersz{numer, {""}};
        for (std::size_t i = 0; i < linia.size(); ++i) {
            if (linia[i] == '\t') {
                wiersz.polaUtf8.emplace_back();
            } else if (linia[i] == '\\' && i + 1 < linia.size()) {
                const char znak = linia[++i];
                wiersz.polaUtf8.back() += znak == 't' ? '\t' : znak == 'r' ? '\r' : znak == 'n' ? '\n' : znak;
            } else {
                wiersz.polaUtf8.back() += linia[i];
            }
        }
        wynik.push_back(std::move(wiersz));
    }
    if (wynik.empty())
        throw std::runtime_error("no table " + nazwa);
    return wynik;
}

} // namespace testy
