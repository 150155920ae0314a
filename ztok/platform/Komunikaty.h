// Messages of the library. The texts stand in Komunikaty.def, which the Windows resource is made from too.
#pragma once

#include <cstdint>
#include <string_view>

#include "ztok/platform/Eksport.h"

namespace ztok {

// The value is the message's number.
enum EKomunikat : std::uint16_t {
#define ZTOK_KOMUNIKAT(numer, nazwa, tekst) nazwa = numer,
#include "ztok/platform/Komunikaty.def"
#undef ZTOK_KOMUNIKAT
};

// Text of a message, a constant that is never freed and ends with a zero; the empty text for a number without one.
[[nodiscard]] ZTOK_API std::u16string_view Komunikat(EKomunikat numer) noexcept;

} // namespace ztok
