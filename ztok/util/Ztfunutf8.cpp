#include "ztok/util/Ztfunutf8.h"

namespace ztok {

std::u16string PolskiWide(std::string_view bajty) { return ZWin1250(bajty); }
std::string PolskiAnsi(std::u16string_view tekst) { return Win1250(tekst); }
std::string PoPolsku(std::u16string_view tekst) { return Win1250(tekst); }

bool SprobujZUtf8(std::string_view bajtyUtf8, std::u16string& tekst) {
    if (!PoprawneUtf8(bajtyUtf8))
        return false;
    tekst = Utf16ZUtf8(bajtyUtf8);
    return true;
}

std::u16string ZUtf8LubPolskiego(std::string_view bajty) {
    return PoprawneUtf8(bajty) ? Utf16ZUtf8(bajty) : PolskiWide(bajty);
}

} // namespace ztok
