#include <ctime>

#include "ztok/platform/DatyTekst.h"

namespace ztok {

TData DzisiajWgSystemu() noexcept {
    const std::time_t teraz = std::time(nullptr);
    std::tm czesci{};
    localtime_r(&teraz, &czesci);
    return {czesci.tm_year + 1900, czesci.tm_mon + 1, czesci.tm_mday};
}

} // namespace ztok
