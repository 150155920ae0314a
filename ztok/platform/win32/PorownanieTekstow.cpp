#include "ztok/platform/PorownanieTekstow.h"

#include <windows.h>

#include "ztok/platform/PlikSystemowy.h"

namespace ztok {

namespace {

// The system refuses a null pointer even for no characters.
[[nodiscard]] const wchar_t* Adres(std::u16string_view tekst) noexcept {
    static_assert(sizeof(wchar_t) == sizeof(char16_t));
    return tekst.empty() ? L"" : reinterpret_cast<const wchar_t*>(tekst.data());
}

} // namespace

int PorownajWgLokalizacji(std::u16string_view a, std::u16string_view b, std::uint32_t lcid, bool bezWielkosci) {
    // The result 0 is the failure, but the last error tells of failures that a result hides.
    SetLastError(ERROR_SUCCESS);
    const int wynik = CompareStringW(lcid, bezWielkosci ? NORM_IGNORECASE : 0U, Adres(a), static_cast<int>(a.size()),
                                     Adres(b), static_cast<int>(b.size()));
    const DWORD blad = GetLastError();
    if (blad != ERROR_SUCCESS || wynik == 0)
        ZglosBladSystemu(u"CompareStringW", blad);
    return wynik - CSTR_EQUAL;
}

} // namespace ztok
