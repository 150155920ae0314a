// Globally unique identifiers, above all of interfaces.
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "ztok/platform/Eksport.h"

namespace ztok {

struct TGUID {
    std::uint32_t d1 = 0;
    std::uint16_t d2 = 0;
    std::uint16_t d3 = 0;
    std::array<std::uint8_t, 8> d4{};

    friend constexpr bool operator==(const TGUID&, const TGUID&) = default;
    // The order of the text forms.
    friend constexpr auto operator<=>(const TGUID&, const TGUID&) = default;
};
static_assert(sizeof(TGUID) == 16);

// "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}": hexadecimal digits in either case.
inline constexpr std::size_t kDlugoscTekstuGuid = 38;

// Bytes of the binary form.
using TBajtyGuid = std::array<std::uint8_t, 16>;

// Reads the text form; false, and `guid` untouched, when it is not one.
template <class TZnak>
[[nodiscard]] constexpr bool CzytajGuid(std::basic_string_view<TZnak> tekst, TGUID& guid) noexcept {
    if (tekst.size() != kDlugoscTekstuGuid || tekst.front() != TZnak('{') || tekst.back() != TZnak('}'))
        return false;
    std::array<std::uint8_t, 16> bajty{}; // in the order of the text
    std::size_t cyfra = 0;
    for (std::size_t i = 1; i + 1 < kDlugoscTekstuGuid; ++i) {
        const TZnak znak = tekst[i];
        if (i == 9 || i == 14 || i == 19 || i == 24) {
            if (znak != TZnak('-'))
                return false;
            continue;
        }
        unsigned wartosc = 0;
        if (znak >= TZnak('0') && znak <= TZnak('9'))
            wartosc = static_cast<unsigned>(znak - TZnak('0'));
        else if (znak >= TZnak('A') && znak <= TZnak('F'))
            wartosc = static_cast<unsigned>(znak - TZnak('A')) + 10U;
        else if (znak >= TZnak('a') && znak <= TZnak('f'))
            wartosc = static_cast<unsigned>(znak - TZnak('a')) + 10U;
        else
            return false;
        std::uint8_t& bajt = bajty[cyfra / 2];
        bajt = static_cast<std::uint8_t>(static_cast<unsigned>(bajt) << 4U | wartosc);
        ++cyfra;
    }
    guid.d1 = static_cast<std::uint32_t>(bajty[0]) << 24U | static_cast<std::uint32_t>(bajty[1]) << 16U |
              static_cast<std::uint32_t>(bajty[2]) << 8U | bajty[3];
    guid.d2 = static_cast<std::uint16_t>(bajty[4] << 8U | bajty[5]);
    guid.d3 = static_cast<std::uint16_t>(bajty[6] << 8U | bajty[7]);
    for (std::size_t i = 0; i < 8; ++i)
        guid.d4[i] = bajty[8 + i];
    return true;
}

// Identifier from a literal: a text that is none does not compile.
consteval TGUID Guid(const char (&tekst)[kDlugoscTekstuGuid + 1]) {
    TGUID guid;
    if (!CzytajGuid(std::string_view(tekst, kDlugoscTekstuGuid), guid))
        throw "not of the form {XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}";
    return guid;
}

// The same at run time. Raises EBladKonwersji.
[[nodiscard]] ZTOK_API TGUID GuidZTekstu(std::u16string_view tekst);
// False, and `guid` untouched, when the text is no identifier.
[[nodiscard]] ZTOK_API bool TryGuidZTekstu(std::u16string_view tekst, TGUID& guid) noexcept;
// Upper-case digits, in braces.
[[nodiscard]] ZTOK_API std::u16string GUIDToString(const TGUID& guid);

// Binary form, the same on every machine: d1, d2 and d3 with the least significant byte first, then d4.
[[nodiscard]] ZTOK_API TBajtyGuid BajtyGuid(const TGUID& guid) noexcept;
[[nodiscard]] ZTOK_API TGUID GuidZBajtow(const TBajtyGuid& bajty) noexcept;

} // namespace ztok
