#include "ztok/platform/StronySystemu.h"

namespace ztok {

// What the system has here depends on what is installed: the library's tables do it all.
bool NaBajtySystemu(std::uint16_t /*strona*/, std::u16string_view /*tekst*/, char* /*cel*/) noexcept { return false; }
bool ZBajtowSystemu(std::uint16_t /*strona*/, std::string_view /*bajty*/, char16_t* /*cel*/) noexcept { return false; }
bool NaUtf8Systemu(std::u16string_view /*tekst*/, std::string& /*wynikUtf8*/) { return false; }
bool ZUtf8Systemu(std::string_view /*bajtyUtf8*/, std::u16string& /*wynik*/) { return false; }

} // namespace ztok
