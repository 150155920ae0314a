// The structs as messages.
#pragma once

#include <array>
#include <utility>
#include <vector>

#include "dane/Dane.h"
#include "obce/dane.pb.h"

namespace pomiary {

void Wypelnij(pb::Pozycja& cel, const dane::TPozycja& p);
void Wypelnij(pb::Baza& cel, const dane::TBaza& dane);
void Wypelnij(pb::Znaki& cel, const dane::TZnaki& dane);
[[nodiscard]] dane::TPozycja JakoStruktura(const pb::Pozycja& p);

// Messages hold no pointers to each other: where the references of each lead stands beside them.
using TCeleFaktur = std::vector<std::pair<const pb::Klient*, const pb::Waluta*>>;
using TCeleZnakow = std::vector<std::array<const pb::Znak*, 3>>;
void Rozwiaz(const pb::Baza& baza, TCeleFaktur& cele);
void Rozwiaz(const pb::Znaki& znaki, TCeleZnakow& cele);

// The message and the references of a data set.
template <class TDane> struct TKomunikat;
template <> struct TKomunikat<dane::TBaza> {
    using Typ = pb::Baza;
    using TCele = TCeleFaktur;
};
template <> struct TKomunikat<dane::TZnaki> {
    using Typ = pb::Znaki;
    using TCele = TCeleZnakow;
};

} // namespace pomiary
