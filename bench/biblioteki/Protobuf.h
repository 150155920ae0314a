// The structs as messages.
#pragma once

#include "biblioteki/dane.pb.h"
#include "dane/Dane.h"

namespace pomiary {

void Wypelnij(pb::Pozycja& cel, const dane::TPozycja& p);
void Wypelnij(pb::Baza& cel, const dane::TBaza& dane);
void Wypelnij(pb::Znaki& cel, const dane::TZnaki& dane);

} // namespace pomiary
