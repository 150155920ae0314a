#include <windows.h>

#include "ztok/platform/DatyTekst.h"

namespace ztok {

TData DzisiajWgSystemu() noexcept {
    SYSTEMTIME czesci{};
    GetLocalTime(&czesci);
    return {czesci.wYear, czesci.wMonth, czesci.wDay};
}

} // namespace ztok
