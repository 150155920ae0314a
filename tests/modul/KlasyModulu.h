// A class that the program and the module both hold.
#pragma once

#include "ztok/kernel/Typypolbazowe.h"

namespace probki {

class TWspolna : public ztok::TObiekt {
    ZTOK_OBIEKT(TWspolna, ztok::TObiekt, (0, Nazwa, String), (1, Inna, Ref<TWspolna>))
};

} // namespace probki
