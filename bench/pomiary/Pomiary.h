// The loop that measures: a cell is a row of the table and a column, an operation and who does it.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "pomiary/Tabela.h"
#include "system/System.h"

namespace pomiary {

// Makes the compiler believe that the value is used and that memory may have changed.
template <class T> inline void Zuzyj(const T& wartosc) { asm volatile("" : : "g"(&wartosc) : "memory"); }
// The number, which the compiler cannot know any more: a field's number mostly comes from elsewhere.
inline int Ukryj(int numer) {
    asm volatile("" : "+r"(numer));
    return numer;
}

// Ends the program with a message unless the condition holds: what works wrongly is not measured.
void Sprawdz(bool dobrze, std::string_view operacja, std::string_view kolumna);

struct TOpcje {
    bool proba = false;      // little data, one round, each operation once: proves that all of it works
    int rundy = 9;           // each measures every cell of a group once, in an order of its own
    double najkrocej = 0.01; // seconds that one measurement takes at least
    std::string wiersze;     // only rows with this in their names
};

class TPomiary {
  public:
    explicit TPomiary(TOpcje opcje) : opcje_(std::move(opcje)) {}

    [[nodiscard]] bool Proba() const { return opcje_.proba; }
    [[nodiscard]] std::size_t Ile(std::size_t naprawde, std::size_t wProbie) const {
        return opcje_.proba ? wProbie : naprawde;
    }
    [[nodiscard]] bool Chciany(std::string_view operacja) const {
        return operacja.find(opcje_.wiersze) != std::string_view::npos;
    }

    // Adds the cell of `krok()`, which handles so many items.
    template <class TKrok>
    void Dodaj(std::string_view operacja, std::string_view kolumna, std::size_t ile, TKrok krok) {
        DodajKomorke(operacja, kolumna, ile, [krok](std::size_t powtorzen) {
            const double start = Sekundy();
            for (std::size_t i = 0; i < powtorzen; ++i)
                krok();
            return Sekundy() - start;
        });
    }
    // Adds the cell of `krok(i)` for each of so many items.
    template <class TKrok>
    void DodajKazdy(std::string_view operacja, std::string_view kolumna, std::size_t ile, TKrok krok) {
        Dodaj(operacja, kolumna, ile, [krok, ile] {
            for (std::size_t i = 0; i < ile; ++i)
                krok(i);
        });
    }
    // The same for `krok(what przygotuj() gave)`; what is prepared is made and destroyed outside the time.
    template <class TPrzygotuj, class TKrok>
    void PoPrzygotowaniu(std::string_view operacja, std::string_view kolumna, std::size_t ile, TPrzygotuj przygotuj,
                         TKrok krok) {
        DodajKomorke(operacja, kolumna, ile, [przygotuj, krok](std::size_t powtorzen) {
            double razem = 0;
            for (std::size_t i = 0; i < powtorzen; ++i) {
                auto dane = przygotuj();
                const double start = Sekundy();
                krok(dane);
                razem += Sekundy() - start;
            }
            return razem;
        });
    }
    // Measures the cells added since the last time, and forgets them.
    void Wykonaj();

    TTabela Tabela;

  private:
    // Seconds that so many repetitions take.
    using TMiara = std::function<double(std::size_t powtorzen)>;
    struct TKomorka {
        std::string operacja;
        std::string kolumna;
        std::size_t ile;
        TMiara miara;
        std::size_t powtorzen;
    };
    void DodajKomorke(std::string_view operacja, std::string_view kolumna, std::size_t ile, TMiara miara);
    [[nodiscard]] std::size_t IlePowtorzen(const TMiara& miara) const;

    TOpcje opcje_;
    std::vector<TKomorka> komorki_;
};

} // namespace pomiary
