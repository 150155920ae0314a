// The data that every library is measured on, as plain structs: each library builds its own objects from them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace pomiary::dane {

struct TPozycja {
    std::string nazwaUtf8;
    std::string jednostkaUtf8;
    double ilosc = 0;
    double cena = 0;
    std::int32_t vat = 0;
    bool operator==(const TPozycja&) const = default;
};

struct TFaktura {
    std::string numerUtf8;
    double data = 0; // days since 1899-12-30
    std::int32_t klient = 0;
    bool zaplacona = false;
    std::string uwagiUtf8; // mostly empty
    std::vector<TPozycja> pozycje;
    bool operator==(const TFaktura&) const = default;
};

struct TKlient {
    std::string nazwaUtf8;
    std::string nipUtf8;
    std::string ulicaUtf8;
    std::string miastoUtf8;
    std::string kodUtf8;
    bool operator==(const TKlient&) const = default;
};

// Invoices of 1 to 9 positions and their customers.
struct TBaza {
    std::vector<TFaktura> faktury;
    std::vector<TKlient> klienci;
    bool operator==(const TBaza&) const = default;
};

// One row of the Unicode character table; what a character lacks is empty or zero.
struct TZnak {
    std::int32_t kod = 0;
    std::string nazwaUtf8;
    std::string kategoriaUtf8;
    std::string kierunekUtf8;
    std::string rozkladUtf8;
    std::int32_t klasaLaczenia = 0;
    std::int32_t duza = 0;
    std::int32_t mala = 0;
    bool operator==(const TZnak&) const = default;
};

struct TZnaki {
    std::vector<TZnak> znaki;
    bool operator==(const TZnaki&) const = default;
};

// The same data for the same arguments, on every machine.
[[nodiscard]] TBaza GenerujBaze(int ileFaktur, int ileKlientow, std::uint64_t ziarno = 1);
// Reads the table of the Unicode characters; empty when the file is not there.
[[nodiscard]] TZnaki WczytajZnaki(const char* plik);

// Objects without the root: invoices, positions and customers; characters.
[[nodiscard]] std::size_t IleObiektow(const TBaza& baza);
[[nodiscard]] std::size_t IleObiektow(const TZnaki& znaki);
// Bytes of values: texts as UTF-8, numbers at their width.
[[nodiscard]] std::size_t BajtyWartosci(const TBaza& baza);
[[nodiscard]] std::size_t BajtyWartosci(const TZnaki& znaki);

} // namespace pomiary::dane
