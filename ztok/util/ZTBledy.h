// Errors of the library's own checks.
#pragma once

#include <string_view>

#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/TArgument.h"
#include "ztok/platform/Wyjatki.h"

namespace ztok {

class TObiektOgolny;
struct TGUID;

ZTOK_WYJATEK_BIBLIOTEKI(ZTException, EWyjatek); // a check of the library's own failed

// Raises ZTException with the message.
[[noreturn]] ZTOK_API void ZTError(std::u16string_view komunikat);
[[noreturn]] ZTOK_API void ZTError(EKomunikat komunikat);

// Raises ZTException with the format filled by the arguments (see Formatuj, whose EBladFormatu a bad format gives).
[[noreturn]] ZTOK_API void ZTErrorFmt(std::u16string_view format, TArgumenty argumenty);
[[noreturn]] ZTOK_API void ZTErrorFmt(EKomunikat format, TArgumenty argumenty);

// Raises ZTException: the operation of this name makes no sense for the object's class.
[[noreturn]] ZTOK_API void NiedozwoloneUzycie(std::u16string_view operacja, const TObiektOgolny& obiekt);

// Raises ZTException: no object gives the interface. The message is the format, its "%s" (appended when it has none)
// the identifier; empty: the library's own.
[[noreturn]] ZTOK_API void BrakInterfejsu(const TGUID& iid, std::u16string_view komunikat);

} // namespace ztok
