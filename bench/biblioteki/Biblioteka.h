// What every library does with the data: the operations that are measured.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

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

    // Writes the tree; returns the bytes written.
    virtual std::size_t Zapisz() = 0;
    // Reads what was written last into a second tree, and destroys that tree.
    virtual void Wczytaj() = 0;
    virtual void Zniszcz() = 0;
    // The second tree as structs: proof that the library did the work.
    [[nodiscard]] virtual TDane Odtworz() const = 0;
};

template <class TDane> using TFabryka = std::unique_ptr<ISeria<TDane>> (*)(const TDane&, TUzycie);

// A factory per library and data set. The data must outlive the series: cereal and Boost.Serialization work on the
// structs themselves, FlatBuffers writes from them.
#define POMIARY_FABRYKI(TDane)                                                                                         \
    std::unique_ptr<ISeria<TDane>> SeriaZtok(const TDane& dane, TUzycie uzycie);                                       \
    std::unique_ptr<ISeria<TDane>> SeriaCereal(const TDane& dane, TUzycie uzycie);                                     \
    std::unique_ptr<ISeria<TDane>> SeriaFlatBuffers(const TDane& dane, TUzycie uzycie);                                \
    std::unique_ptr<ISeria<TDane>> SeriaBoost(const TDane& dane, TUzycie uzycie);                                      \
    std::unique_ptr<ISeria<TDane>> SeriaProtobuf(const TDane& dane, TUzycie uzycie);                                   \
    std::unique_ptr<ISeria<TDane>> SeriaProtobufArena(const TDane& dane, TUzycie uzycie);
POMIARY_FABRYKI(dane::TBaza)
POMIARY_FABRYKI(dane::TZnaki)
#undef POMIARY_FABRYKI

// The same for the readable forms.
std::unique_ptr<ISeria<dane::TBaza>> SeriaTekstuZtok(const dane::TBaza& dane, TUzycie uzycie);
std::unique_ptr<ISeria<dane::TBaza>> SeriaRapidJson(const dane::TBaza& dane, TUzycie uzycie);
std::unique_ptr<ISeria<dane::TBaza>> SeriaPugixmlAtrybuty(const dane::TBaza& dane, TUzycie uzycie);
std::unique_ptr<ISeria<dane::TBaza>> SeriaPugixmlElementy(const dane::TBaza& dane, TUzycie uzycie);

} // namespace pomiary
