// A class that the program and the module both hold.
#pragma once

#include "ztok/kernel/Typypolbazowe.h"

namespace probki {

class TWspolna : public ztok::TObiekt {
    ZTOK_OBIEKT(TWspolna, ztok::TObiekt, (0, Nazwa, String), (1, Inna, Ref<TWspolna>))
};

// What a module offers through the repository.
struct IUsluga : ztok::IInterfejs {
    static constexpr ztok::TGUID IID = ztok::Guid("{C3715265-1F99-4861-9838-6EF4E3BC6E8A}");
    virtual std::u16string Nazwij() = 0;

  protected:
    ~IUsluga() = default;
};

} // namespace probki
