#include "ztok/platform/PowiadomienieSystemowe.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace ztok {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

std::size_t NazwaProgramu(char16_t* bufor, std::size_t ile) noexcept {
    constexpr DWORD NajdluzszaSciezka = 32768;
    auto* sciezka = static_cast<wchar_t*>(std::malloc(NajdluzszaSciezka * sizeof(wchar_t)));
    if (sciezka == nullptr)
        return 0;
    const wchar_t* const koniec = sciezka + GetModuleFileNameW(nullptr, sciezka, NajdluzszaSciezka);
    const wchar_t* nazwa = koniec;
    while (nazwa > sciezka && nazwa[-1] != L'\\' && nazwa[-1] != L'/')
        --nazwa;
    ile = std::min(ile, static_cast<std::size_t>(koniec - nazwa));
    std::memcpy(bufor, nazwa, ile * sizeof(char16_t));
    std::free(sciezka);
    return ile;
}

namespace {

// Zero-terminated copy: in the given place, cut, when there is no memory for the whole of it.
class TKopiaZZerem {
  public:
    explicit TKopiaZZerem(std::u16string_view tekst) noexcept
        : blok_(static_cast<wchar_t*>(std::malloc((tekst.size() + 1) * sizeof(wchar_t)))) {
        constexpr std::size_t Miejsca = sizeof zastepcza_ / sizeof *zastepcza_ - 1;
        const std::size_t ile = blok_ != nullptr ? tekst.size() : std::min(tekst.size(), Miejsca);
        wchar_t* cel = blok_ != nullptr ? blok_ : zastepcza_;
        if (ile != 0)
            std::memcpy(cel, tekst.data(), ile * sizeof(wchar_t));
        cel[ile] = L'\0';
    }
    TKopiaZZerem(const TKopiaZZerem&) = delete;
    TKopiaZZerem& operator=(const TKopiaZZerem&) = delete;
    ~TKopiaZZerem() { std::free(blok_); }
    [[nodiscard]] const wchar_t* Tekst() const noexcept { return blok_ != nullptr ? blok_ : zastepcza_; }

  private:
    wchar_t* blok_;
    wchar_t zastepcza_[1024];
};

} // namespace

void PowiadomSystemowo(std::u16string_view tresc, std::u16string_view naglowek) noexcept {
    const TKopiaZZerem kopiaTresci(tresc);
    const TKopiaZZerem kopiaNaglowka(naglowek);
    MessageBoxW(nullptr, kopiaTresci.Tekst(), kopiaNaglowka.Tekst(), MB_OK);
}

} // namespace ztok
