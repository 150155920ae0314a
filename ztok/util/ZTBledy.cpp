#include "ztok/util/ZTBledy.h"

#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Guid.h"
#include "ztok/platform/TObiektOgolny.h"

namespace ztok {

ZTException::ZTException(const ZTException&) noexcept = default;
ZTException& ZTException::operator=(const ZTException&) noexcept = default;
ZTException::~ZTException() = default;

void ZTError(std::u16string_view komunikat) { throw ZTException(komunikat); }

void ZTError(EKomunikat komunikat) { throw ZTException(Komunikat(komunikat)); }

void ZTErrorFmt(std::u16string_view format, TArgumenty argumenty) { ZTError(FormatujSkrocone(format, argumenty)); }

void ZTErrorFmt(EKomunikat format, TArgumenty argumenty) { ZTErrorFmt(Komunikat(format), argumenty); }

void NiedozwoloneUzycie(std::u16string_view operacja, const TObiektOgolny& obiekt) {
    ZTErrorFmt(kmNiedozwoloneUzycie, {operacja, obiekt.Klasa()});
}

void BrakInterfejsu(const TGUID& iid, std::u16string_view komunikat) {
    std::u16string format(komunikat.empty() ? Komunikat(kmBrakInterfejsu) : komunikat);
    if (format.find(u"%s") == std::u16string::npos)
        format += u" %s";
    ZTErrorFmt(format, {GUIDToString(iid)});
}

} // namespace ztok
