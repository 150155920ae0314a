// What every library does with the data: the operations that are measured.
#pragma once

#include <cstddef>
#include <memory>

#include "dane/Dane.h"

namespace pomiary {

// One library with a tree of its own objects, built from the structs before the measurement. Every library writes to
// memory that it keeps from one write to the next.
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

template <class TDane> using TFabryka = std::unique_ptr<ISeria<TDane>> (*)(const TDane&);

// A factory per library and data set. The data must outlive the series: cereal and Boost.Serialization work on the
// structs themselves, FlatBuffers writes from them.
#define POMIARY_FABRYKI(TDane)                                                                                         \
    std::unique_ptr<ISeria<TDane>> SeriaZtok(const TDane& dane);                                                       \
    std::unique_ptr<ISeria<TDane>> SeriaCereal(const TDane& dane);                                                     \
    std::unique_ptr<ISeria<TDane>> SeriaFlatBuffers(const TDane& dane);                                                \
    std::unique_ptr<ISeria<TDane>> SeriaBoost(const TDane& dane);                                                      \
    std::unique_ptr<ISeria<TDane>> SeriaProtobuf(const TDane& dane);                                                   \
    std::unique_ptr<ISeria<TDane>> SeriaProtobufArena(const TDane& dane);
POMIARY_FABRYKI(dane::TBaza)
POMIARY_FABRYKI(dane::TZnaki)
#undef POMIARY_FABRYKI

} // namespace pomiary
