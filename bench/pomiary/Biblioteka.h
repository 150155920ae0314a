// What every library does with a data set: the operations that are measured.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "dane/Dane.h"

namespace pomiary {

// How a library writes to memory and reads from it.
enum class TUzycie : std::uint8_t {
    Zwykle,     // as its manual shows: standard streams where it takes them, a fresh buffer each time
    Dostrojone, // a buffer kept from one write to the next, and the shortest way into it that the library has
};

// One library with a tree of its own objects, built from the structs before the measurement.
template <class TDane> class ISeria {
  public:
    ISeria() = default;
    ISeria(const ISeria&) = delete;
    ISeria& operator=(const ISeria&) = delete;
    virtual ~ISeria() = default;

    // Writes the tree; returns the bytes written, which stay as they are until the next write.
    virtual std::string_view Zapisz() = 0;
    // Reads what was written last into a second tree, every reference resolved to its object.
    virtual void Wczytaj() = 0;
    virtual void Zniszcz() = 0;
    // The second tree as structs, the numbers of references taken from the objects they lead to: proof that the library
    // did the work.
    [[nodiscard]] virtual TDane Odtworz() = 0;
};

template <class TSeria, class TDane> std::unique_ptr<ISeria<TDane>> Utworz(const TDane& dane, TUzycie uzycie) {
    return std::make_unique<TSeria>(dane, uzycie);
}

// A column of the rows of one data set. The data must outlive the series: some libraries work on the structs
// themselves.
template <class TDane> struct TBiblioteka {
    std::string_view kolumna;
    std::unique_ptr<ISeria<TDane>> (*utworz)(const TDane&, TUzycie);
};
using TBibliotekiBazy = std::vector<TBiblioteka<dane::TBaza>>;
using TBibliotekiZnakow = std::vector<TBiblioteka<dane::TZnaki>>;

// ztok and plain C++ (on every target), and the peers (where there are any).
void DodajWlasne(TBibliotekiBazy& binarne, TBibliotekiZnakow& binarneZnakow, TBibliotekiBazy& tekstowe);
void DodajObce(TBibliotekiBazy& binarne, TBibliotekiZnakow& binarneZnakow, TBibliotekiBazy& tekstowe);

} // namespace pomiary
