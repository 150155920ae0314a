#include "ztok/platform/PowiadomienieSystemowe.h"

#include <algorithm>
#include <cstring>

#include <unistd.h>

#include "ztok/platform/Kodowania.h"

namespace ztok {

std::size_t NazwaProgramu(char16_t* bufor, std::size_t ile) noexcept {
    char sciezka[4096];
    const ssize_t dlugosc = readlink("/proc/self/exe", sciezka, sizeof sciezka);
    if (dlugosc <= 0)
        return 0;
    std::string_view nazwa(sciezka, static_cast<std::size_t>(dlugosc));
    nazwa.remove_prefix(nazwa.rfind('/') + 1);
    // No more units come out of a text than it has bytes.
    return DekodujUtf8(nazwa.data(), std::min(nazwa.size(), ile), bufor);
}

namespace {

void Pisz(const char* bajty, std::size_t ile) noexcept {
    while (ile > 0) {
        const ssize_t zapisano = write(STDERR_FILENO, bajty, ile);
        if (zapisano <= 0)
            return;
        bajty += zapisano;
        ile -= static_cast<std::size_t>(zapisano);
    }
}

// In pieces through a small buffer: there may be no memory left.
void PiszTekst(std::u16string_view tekst) noexcept {
    constexpr std::size_t Porcja = 256;
    char utf8[3 * Porcja];
    while (!tekst.empty()) {
        std::size_t ile = std::min(tekst.size(), Porcja);
        if (ile < tekst.size() && tekst[ile - 1] >= 0xD800 && tekst[ile - 1] <= 0xDBFF)
            --ile; // keeps a surrogate with its partner
        std::size_t bajty = KodujUtf8(tekst.data(), ile, utf8);
        // The messages' line ends, carriage returns alone or with a line feed, as a terminal wants them.
        std::size_t cel = 0;
        for (std::size_t i = 0; i < bajty; ++i) {
            if (utf8[i] == '\n' && i > 0 && utf8[i - 1] == '\r')
                continue;
            utf8[cel++] = utf8[i] == '\r' ? '\n' : utf8[i];
        }
        Pisz(utf8, cel);
        tekst.remove_prefix(ile);
    }
}

} // namespace

void PowiadomSystemowo(std::u16string_view tresc, std::u16string_view naglowek) noexcept {
    PiszTekst(naglowek);
    Pisz(": ", 2);
    PiszTekst(tresc);
    Pisz("\n", 1);
}

} // namespace ztok
