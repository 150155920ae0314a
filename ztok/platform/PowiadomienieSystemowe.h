// What a user notice needs of the operating system.
#pragma once

#include <cstddef>
#include <string_view>

namespace ztok {

// Writes the running program's file name without its directory to `bufor` of `ile` units; returns the units written.
std::size_t NazwaProgramu(char16_t* bufor, std::size_t ile) noexcept;

void PowiadomSystemowo(std::u16string_view tresc, std::u16string_view naglowek) noexcept;

} // namespace ztok
