// Message formatting: a format text with specifiers, filled with tagged arguments.
#pragma once

#include <string>
#include <string_view>

#include "ztok/platform/Eksport.h"
#include "ztok/platform/TArgument.h"

namespace ztok {

struct TUstawieniaFormatu;

// Fills `format` with the arguments. A specifier is
//     % [index :] [-] [width] [. precision] kind
// where `index` (from 0) names the argument, after which the next specifiers go on from there; `-` aligns left; width
// and precision are numbers of at most 65535 or `*`, which takes them from an integer argument (a negative width aligns
// left, a negative precision counts as none). Kinds, in either letter case:
//     s  text of any kind, its first `precision` characters; a variant's text, "?" when it has none; the class name of
//        an object, of a class and of the object behind an interface; "nil" when null
//     d  integer, u the same without sign, x in hexadecimal (an Integer has 8 digits at most); `precision` is the
//        least number of digits, filled up with zeros
//     f  real number or currency with `precision` digits after the separator (2), n the same with thousands separators,
//        m as an amount of money (digits by the settings), e in exponent form with `precision` digits (15),
//        g the shorter of both
//     p  address in hexadecimal
//     %  the sign itself: %%
// `ustawienia` shape the reals; null means those of the process. Raises EBladFormatu for a bad specifier, an argument
// that is missing or of another kind. Reads its arguments only; any number of threads may call it.
[[nodiscard]] ZTOK_API std::u16string Formatuj(std::u16string_view format, TArgumenty argumenty,
                                               const TUstawieniaFormatu* ustawienia = nullptr);

// A text for a message: one longer than kTekstWKomunikacie is cut, between characters, and ends with an ellipsis.
inline constexpr std::size_t kTekstWKomunikacie = 1000;
[[nodiscard]] ZTOK_API std::u16string Skrocony(std::u16string_view tekst);
// Formatuj with such texts: for messages about what came from outside.
[[nodiscard]] ZTOK_API std::u16string FormatujSkrocone(std::u16string_view format, TArgumenty argumenty);

// For the paths of an error, where nothing may fail: the unfilled format when it cannot be filled, no text when memory
// is short.
[[nodiscard]] ZTOK_API std::u16string FormatujBezWyjatku(std::u16string_view format, TArgumenty argumenty) noexcept;

} // namespace ztok
