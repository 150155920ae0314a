// The peers, a file each: every function adds its library's columns.
#pragma once

#include "pomiary/Biblioteka.h"
#include "pomiary/Tabela.h"

namespace pomiary {

void DodajCereal(TBibliotekiBazy& bazy, TBibliotekiZnakow& znaki);
void DodajFlatBuffers(TBibliotekiBazy& bazy, TBibliotekiZnakow& znaki);
void DodajBoost(TBibliotekiBazy& bazy, TBibliotekiZnakow& znaki);
void DodajProtobuf(TBibliotekiBazy& bazy, TBibliotekiZnakow& znaki);
void DodajRapidJson(TBibliotekiBazy& bazy);
void DodajPugixml(TBibliotekiBazy& bazy);

} // namespace pomiary
