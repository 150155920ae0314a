#include "ztok/platform/Komunikaty.h"

namespace ztok {

// A switch makes the compiler reject a number used twice.
std::u16string_view Komunikat(EKomunikat numer) noexcept {
    switch (numer) {
#define ZTOK_KOMUNIKAT(wartosc, nazwa, tekst)                                                                          \
    case nazwa:                                                                                                        \
        return u"" tekst;
#include "ztok/platform/Komunikaty.def"
#undef ZTOK_KOMUNIKAT
    }
    return {};
}

} // namespace ztok
