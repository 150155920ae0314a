// Where there are no peers to build.
#include "pomiary/Grupy.h"

namespace pomiary {

void DodajObce(TBibliotekiBazy& /*binarne*/, TBibliotekiZnakow& /*binarneZnakow*/, TBibliotekiBazy& /*tekstowe*/) {}
void DodajObceDrzewa(TPomiary& /*pomiary*/, const dane::TBaza& /*baza*/) {}
void DodajObceOperacje(TPomiary& /*pomiary*/, const dane::TBaza& /*baza*/, std::size_t /*ilePozycji*/) {}
void DodajObceBajty(TPomiary& /*pomiary*/, std::span<std::uint8_t> /*bajty*/) {}
void DodajObceKodowania(TPomiary& /*pomiary*/, std::string_view /*rodzaj*/, TTekstKodowany& /*tekst*/) {}

} // namespace pomiary
