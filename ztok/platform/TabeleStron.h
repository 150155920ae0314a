// The library's own tables of 8-bit code pages. For the sources of the conversions and their tests only.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "ztok/platform/Eksport.h"

namespace ztok {

// A code page whose lower half is ASCII, both ways.
struct TTabelaStrony {
    using TGorna = std::array<char16_t, 128>;

    explicit constexpr TTabelaStrony(const TGorna& gorna);

    // Byte of a character, '?' when the page lacks it.
    [[nodiscard]] constexpr unsigned Bajt(char16_t znak) const noexcept {
        return bajty[okna[znak >> 7U]][znak & 0x7FU];
    }
    [[nodiscard]] constexpr bool Ma(char16_t znak) const noexcept { return Bajt(znak) != '?' || znak == u'?'; }
    [[nodiscard]] constexpr char16_t Znak(char bajt) const noexcept { return znaki[static_cast<unsigned char>(bajt)]; }

    std::array<char16_t, 256> znaki{}; // of the bytes
    // The way back: windows of 128 characters, found by the upper nine bits. Window 0 has none of the page.
    std::array<std::array<std::uint8_t, 128>, 8> bajty{};
    std::array<std::uint8_t, 512> okna{};
};

constexpr TTabelaStrony::TTabelaStrony(const TGorna& gorna) {
    for (auto& okno : bajty)
        okno.fill('?');
    std::uint8_t okien = 1;
    for (unsigned kod = 0; kod < 256; ++kod) {
        const char16_t znak = kod < 128 ? static_cast<char16_t>(kod) : gorna[kod - 128];
        znaki[kod] = znak;
        std::uint8_t& okno = okna[znak >> 7U];
        if (okno == 0)
            okno = okien++; // a ninth window would not compile
        bajty[okno][znak & 0x7FU] = static_cast<std::uint8_t>(kod);
    }
}

// Table of a page; null for one that is not 8-bit or not known.
[[nodiscard]] ZTOK_API const TTabelaStrony* TabelaStrony(std::uint16_t strona) noexcept;

// `ile` characters at `od` as bytes, '?' for a unit that the page lacks; and back. Room for `ile` at `cel`.
ZTOK_API void NaBajty(const TTabelaStrony& tabela, const char16_t* od, std::size_t ile, char* cel) noexcept;
ZTOK_API void ZBajtow(const TTabelaStrony& tabela, const char* od, std::size_t ile, char16_t* cel) noexcept;

} // namespace ztok
