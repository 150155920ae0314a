// The groups of rows. Each builds its data, adds its cells, and measures them together.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "pomiary/Biblioteka.h"
#include "pomiary/Pomiary.h"

namespace pomiary {

// Writing and reading whole trees; how the cost of an object grows.
void MierzSerie(TPomiary& pomiary, const dane::TBaza& baza, const dane::TZnaki& znaki);
void MierzWzrost(TPomiary& pomiary);
// Our write and read taken apart, and the tokenizer of the readable form.
void MierzFazy(TPomiary& pomiary, const dane::TBaza& baza);
// Copy and comparison of trees, sort and search of lists.
void MierzModel(TPomiary& pomiary, const dane::TBaza& baza, const dane::TZnaki& znaki);
// Access to fields, appending, values by path, comparison of texts.
void MierzOperacje(TPomiary& pomiary, const dane::TBaza& baza);
// Conversions of text between UTF-16 and bytes.
void MierzKodowania(TPomiary& pomiary, const dane::TBaza& baza);
// The cipher and the check sum.
void MierzBajty(TPomiary& pomiary);

// The peers' cells of a group.
void DodajObceDrzewa(TPomiary& pomiary, const dane::TBaza& baza);
void DodajObceOperacje(TPomiary& pomiary, const dane::TBaza& baza, std::size_t ilePozycji);
void DodajObceBajty(TPomiary& pomiary, std::span<std::uint8_t> bajty);
struct TTekstKodowany;
void DodajObceKodowania(TPomiary& pomiary, std::string_view rodzaj, TTekstKodowany& tekst);

// Rows that peers have too.
namespace wiersz {
inline constexpr const char* Kopia = "invoices: copy and destroy";
inline constexpr const char* Rownosc = "invoices: compare equal trees";
inline constexpr const char* DajInteger = "get an integer by number";
inline constexpr const char* UstawInteger = "set an integer by number";
inline constexpr const char* DajInt64 = "get a 64-bit integer by number";
inline constexpr const char* UstawInt64 = "set a 64-bit integer by number";
inline constexpr const char* DajDouble = "get a real by number";
inline constexpr const char* UstawDouble = "set a real by number";
inline constexpr const char* DajKopie = "get a text by number, a copy";
inline constexpr const char* DajWidok = "get a text by number, a view";
inline constexpr const char* UstawTekst = "set a text by number";
inline constexpr const char* Dopisz[] = {"append an object with six fields, to 5",
                                         "append an object with six fields, to "
                                         "100,000"};
inline constexpr const char* CrcDuzo = "CRC-32 of 16 MiB, a KiB";
inline constexpr const char* CrcMalo = "CRC-32 of 16 KiB, a KiB";
inline constexpr const char* Szyfrowanie = "Blowfish, 16 MiB, a KiB";
inline constexpr const char* Deszyfrowanie = "Blowfish, 16 MiB back, a KiB";
inline constexpr const char* Rozpisanie = "Blowfish, a key's schedule";
inline constexpr const char* SzyfrTekstu = "Blowfish, a text of 8 characters";
} // namespace wiersz

inline constexpr std::size_t kIleDopisz[] = {5, 100000};
inline constexpr std::string_view kKluczSzyfru = "0123456789ABCDEF";
inline constexpr std::size_t kKiB = 1024;

// A text in both forms, and room for a result.
struct TTekstKodowany {
    // What the page lacks is taken out of the text.
    TTekstKodowany(std::u16string_view znaki, std::uint16_t jakaStrona);
    char* WynikBajty() { return reinterpret_cast<char*>(wynik.data()); }

    std::uint16_t strona;
    std::string bajty;
    std::u16string tekst;
    std::u16string wynik;
};
// Adds both ways of one library, after a check: each function gives the units, or bytes, written into the result.
template <class TNaBajty, class TZBajtow>
void DodajKodowanie(TPomiary& pomiary, std::string_view rodzaj, std::string_view kolumna, TTekstKodowany& t,
                    TNaBajty naBajty, TZBajtow zBajtow) {
    const std::string strona = t.strona == 1250 ? "Windows-1250" : "UTF-8";
    const std::string tam = strona + " to UTF-16, " + std::string(rodzaj) + " (1000 bytes)";
    const std::string zPowrotem = "UTF-16 to " + strona + ", " + std::string(rodzaj) + " (1000 bytes of it)";
    Sprawdz(std::u16string_view(t.wynik.data(), zBajtow()) == t.tekst, tam, kolumna);
    Sprawdz(std::string_view(t.WynikBajty(), naBajty()) == t.bajty, zPowrotem, kolumna);
    const std::size_t kilobajtow = t.bajty.size() / 1000;
    pomiary.Dodaj(tam, kolumna, kilobajtow, [zBajtow] { Zuzyj(zBajtow()); });
    pomiary.Dodaj(zPowrotem, kolumna, kilobajtow, [naBajty] { Zuzyj(naBajty()); });
}

} // namespace pomiary
