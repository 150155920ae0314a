// The groups of benchmarks.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "biblioteki/Biblioteka.h"
#include "dane/Dane.h"

namespace pomiary {

class TTabela;

// Makes the compiler believe that the value is used and that memory may have changed.
template <class T> inline void Zuzyj(const T& wartosc) { asm volatile("" : : "g"(&wartosc) : "memory"); }

template <class TDane> struct TPozycjaListy {
    std::string_view biblioteka;
    std::unique_ptr<ISeria<TDane>> seria;
};

// Writing and reading the data set in every library of the list, which must outlive the run.
template <class TDane>
void ZarejestrujSerie(std::string_view zapis, std::string_view odczyt, const std::vector<TPozycjaListy<TDane>>& serie,
                      std::size_t ileObiektow);
// Our write and read taken apart.
void ZarejestrujFazy(const dane::TBaza& baza);
// Access to fields by number, appending, comparing texts.
void ZarejestrujOperacje(const dane::TBaza& baza);
// Conversions of text between UTF-16 and bytes.
void ZarejestrujKodowania(const dane::TBaza& baza);
// Copy and comparison of trees, sort and bisection of a list; and, when it has run, how the cost of a copy grows.
void ZarejestrujModel(const dane::TBaza& baza);
void DodajWzrostKopii(TTabela& tabela);
// The cipher and the check sum.
void ZarejestrujBajty();
// Writing and reading the readable form: plainly, and tuned.
inline constexpr const char* kOperacjeTekstu[] = {"invoices: write text", "invoices: read text and destroy",
                                                  "invoices: write text, tuned",
                                                  "invoices: read text and destroy, tuned"};
// The tokenizer over the invoices in readable form; the second adds what follows from the times.
void ZarejestrujTekst(const dane::TBaza& baza);
void PodsumujTekst(TTabela& tabela);

// Resident memory that the function leaves behind it, measured in a process of its own; negative when that failed.
[[nodiscard]] double ZajetaPamiec(void (*funkcja)(void*), void* dane);
// Keeps freed memory in the process for the next tree, so that no library pays for fresh pages in every iteration.
void ZatrzymujPamiec();
// Processor time of this process, in seconds.
[[nodiscard]] double CzasProcesora();

} // namespace pomiary
