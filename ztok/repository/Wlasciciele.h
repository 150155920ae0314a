// The walk along owners, for the sources of this folder.
#pragma once

#include "ztok/platform/Guid.h"

namespace ztok {

class TObiektOgolny;

// The interface of the object itself, counted; false and null when it has none. The object may be null.
bool DajInterfejsObiektu(TObiektOgolny* obiekt, const TGUID& iid, void** wynik) noexcept;

} // namespace ztok
