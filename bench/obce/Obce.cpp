#include "obce/Obce.h"

namespace pomiary {

void DodajObce(TBibliotekiBazy& binarne, TBibliotekiZnakow& binarneZnakow, TBibliotekiBazy& tekstowe) {
    DodajCereal(binarne, binarneZnakow);
    DodajFlatBuffers(binarne, binarneZnakow);
    DodajBoost(binarne, binarneZnakow);
    DodajProtobuf(binarne, binarneZnakow);
    DodajRapidJson(tekstowe);
    DodajPugixml(tekstowe);
}

} // namespace pomiary
