// Positions of elements in their lists, for a walk that asks about many of them.
#pragma once

#include <cstdint>
#include <deque>

#include "ztok/lists/TIndeksWskaznikow.h"

namespace ztok {

class TListaBazowa;
class TObiektBazowy;

// Answers as TListaBazowa::ZnajdzObiekt for a list that holds each of its elements once. A long list is indexed when it
// is first asked about; a list that has changed since is searched.
class TPozycjeWListach {
  public:
    [[nodiscard]] std::int32_t Znajdz(const TListaBazowa& lista, const TObiektBazowy* element);

  private:
    TIndeksWskaznikow listy_;
    std::deque<TIndeksWskaznikow> elementy_; // of each of them
};

} // namespace ztok
