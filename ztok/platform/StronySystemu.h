// Code pages as the operating system converts them. Each function answers false where the system cannot do it all (it
// lacks the page or the function, the text is ill-formed): the library's own code then does, with the same result.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ztok {

// 8-bit pages: '?' for a unit that the page lacks, no look-alikes. `cel` has room for as many as the text has, and may
// be scratched.
[[nodiscard]] bool NaBajtySystemu(std::uint16_t strona, std::u16string_view tekst, char* cel) noexcept;
[[nodiscard]] bool ZBajtowSystemu(std::uint16_t strona, std::string_view bajty, char16_t* cel) noexcept;

// UTF-8 of the standard, well-formed text only. The result replaces what the string holds.
[[nodiscard]] bool NaUtf8Systemu(std::u16string_view tekst, std::string& wynikUtf8);
[[nodiscard]] bool ZUtf8Systemu(std::string_view bajtyUtf8, std::u16string& wynik);

} // namespace ztok
