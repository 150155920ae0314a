#include "ztok/platform/StronySystemu.h"

#include <limits>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace ztok {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

namespace {

// A call takes 31-bit lengths, and no empty text.
template <class Tekst> [[nodiscard]] bool Dlugosc(const Tekst& tekst, int& ile) noexcept {
    // UTF-8 is up to three times as long as the text.
    if (tekst.empty() || tekst.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()) / 3)
        return false;
    ile = static_cast<int>(tekst.size());
    return true;
}

[[nodiscard]] const wchar_t* Znaki(std::u16string_view tekst) noexcept {
    return reinterpret_cast<const wchar_t*>(tekst.data());
}

} // namespace

bool NaBajtySystemu(std::uint16_t strona, std::u16string_view tekst, char* cel) noexcept {
    int ile = 0;
    return Dlugosc(tekst, ile) &&
           WideCharToMultiByte(strona, WC_NO_BEST_FIT_CHARS, Znaki(tekst), ile, cel, ile, "?", nullptr) == ile;
}

bool ZBajtowSystemu(std::uint16_t strona, std::string_view bajty, char16_t* cel) noexcept {
    int ile = 0;
    return Dlugosc(bajty, ile) &&
           MultiByteToWideChar(strona, 0, bajty.data(), ile, reinterpret_cast<wchar_t*>(cel), ile) == ile;
}

// Ill-formed text is refused rather than replaced: what a replacement is has changed from one system to the next.
bool NaUtf8Systemu(std::u16string_view tekst, std::string& wynikUtf8) {
    int ile = 0;
    if (!Dlugosc(tekst, ile))
        return false;
    wynikUtf8.resize(3 * tekst.size());
    const int bajtow = WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, Znaki(tekst), ile, wynikUtf8.data(), 3 * ile,
                                           nullptr, nullptr);
    wynikUtf8.resize(static_cast<std::size_t>(bajtow));
    return bajtow != 0;
}

bool ZUtf8Systemu(std::string_view bajtyUtf8, std::u16string& wynik) {
    int ile = 0;
    if (!Dlugosc(bajtyUtf8, ile))
        return false;
    wynik.resize(bajtyUtf8.size());
    const int znakow = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bajtyUtf8.data(), ile,
                                           reinterpret_cast<wchar_t*>(wynik.data()), ile);
    wynik.resize(static_cast<std::size_t>(znakow));
    return znakow != 0;
}

} // namespace ztok
