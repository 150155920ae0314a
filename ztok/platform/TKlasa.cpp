#include "ztok/platform/TKlasa.h"

namespace ztok {

bool KlasaADziedziczyPoB(const TKlasa* a, const TKlasa* b) noexcept {
    if (b == nullptr)
        return false;
    for (const TKlasa* k = a; k != nullptr; k = k->Przodek())
        if (k == b)
            return true;
    return KlasaADziedziczyPoB(a, b->nazwa);
}

bool KlasaADziedziczyPoB(const TKlasa* a, std::u16string_view nazwaB) noexcept {
    for (const TKlasa* k = a; k != nullptr; k = k->Przodek())
        if (k->nazwa == nazwaB)
            return true;
    return false;
}

} // namespace ztok
