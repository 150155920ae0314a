#include "ztok/fields/TTekstPola.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <stdexcept>

#include "ztok/platform/Kodowania.h"
#include "ztok/platform/PulaWnetrze.h"

namespace ztok {

static_assert(std::endian::native == std::endian::little, "the lowest byte of a pointer is its first");

void TTekstPola::Ustaw(std::u16string_view tekst) {
    const std::size_t bajtow = tekst.size() * sizeof(char16_t);
    if (tekst.size() <= kNajdluzszyWPolu) {
        unsigned char nowe[sizeof bajty_] = {static_cast<unsigned char>(tekst.size() << 1U | kKrotki)};
        if (!tekst.empty())
            std::memcpy(nowe + sizeof(char16_t), tekst.data(), bajtow);
        OpuscBlok();
        std::memcpy(bajty_, nowe, sizeof bajty_);
        return;
    }
    if (MaBlok()) {
        TBlok* blok = Blok();
        if (RozmiarBloku(blok->ile) == RozmiarBloku(tekst.size())) {
            std::memmove(static_cast<void*>(blok + 1), tekst.data(), bajtow);
            blok->ile = static_cast<std::uint32_t>(tekst.size());
            return;
        }
    }
    TTekstPola nowy;
    std::memcpy(nowy.Przygotuj(tekst.size()), tekst.data(), bajtow);
    Przejmij(nowy);
}

void TTekstPola::UstawKrotkiUtf8(const char* bajty, std::size_t ile) {
    unsigned char nowe[sizeof bajty_] = {static_cast<unsigned char>(ile << 1U | kKrotki)};
    unsigned wszystkie = 0;
    for (std::size_t i = 0; i < ile; ++i) {
        const auto bajt = static_cast<unsigned char>(bajty[i]);
        nowe[sizeof(char16_t) * (i + 1)] = bajt;
        wszystkie |= bajt;
    }
    if (wszystkie >= 0x80) {
        char16_t znaki[kNajdluzszyWPolu];
        return Ustaw({znaki, DekodujUtf8(bajty, ile, znaki)});
    }
    OpuscBlok();
    std::memcpy(bajty_, nowe, sizeof bajty_);
}

void TTekstPola::UstawUtf8(const char* bajty, std::size_t ile) {
    if (ile <= kNajdluzszyWPolu)
        return UstawKrotkiUtf8(bajty, ile);
    auto* nowy = static_cast<TBlok*>(pula::Przydziel(RozmiarBloku(ile)));
    auto* miejsce = reinterpret_cast<char16_t*>(nowy + 1);
    const std::size_t znakow = DekodujUtf8(bajty, ile, miejsce);
    if (znakow > kNajdluzszyWPolu && RozmiarBloku(znakow) == RozmiarBloku(ile)) [[likely]] {
        nowy->ile = static_cast<std::uint32_t>(znakow);
        OpuscBlok();
        UstawBlok(nowy);
        return;
    }
    // Letters of two bytes made the block larger than the text needs.
    char16_t znaki[kNajdluzszyOdRazu];
    std::memcpy(znaki, miejsce, znakow * sizeof(char16_t));
    pula::Zwolnij(nowy, RozmiarBloku(ile));
    Ustaw({znaki, znakow});
}

std::size_t TTekstPola::UstawWMiejscu(std::u16string_view tekst, void* miejsce) noexcept {
    if (tekst.size() <= kNajdluzszyWPolu) {
        Ustaw(tekst);
        return 0;
    }
    auto* blok = static_cast<TBlok*>(miejsce);
    blok->ile = static_cast<std::uint32_t>(tekst.size());
    std::memcpy(static_cast<void*>(blok + 1), tekst.data(), tekst.size() * sizeof(char16_t));
    UstawBlok(blok);
    bajty_[0] |= kCzesc;
    return RozmiarBloku(tekst.size());
}

std::size_t TTekstPola::UstawUtf8WMiejscu(const char* bajty, std::size_t ile, void* miejsce) noexcept {
    if (ile <= kNajdluzszyWPolu) {
        UstawKrotkiUtf8(bajty, ile);
        return 0;
    }
    auto* blok = static_cast<TBlok*>(miejsce);
    auto* znaki = reinterpret_cast<char16_t*>(blok + 1);
    const std::size_t znakow = DekodujUtf8(bajty, ile, znaki);
    if (znakow <= kNajdluzszyWPolu) {
        Ustaw({znaki, znakow});
        return 0;
    }
    blok->ile = static_cast<std::uint32_t>(znakow);
    UstawBlok(blok);
    bajty_[0] |= kCzesc;
    return RozmiarBloku(znakow);
}

char16_t* TTekstPola::Przygotuj(std::size_t ile) {
    if (ile > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("TTekstPola");
    if (ile <= kNajdluzszyWPolu) {
        Wyczysc();
        bajty_[0] = static_cast<unsigned char>(ile << 1U | kKrotki);
        return reinterpret_cast<char16_t*>(bajty_ + sizeof(char16_t));
    }
    auto* nowy = static_cast<TBlok*>(pula::Przydziel(RozmiarBloku(ile)));
    nowy->ile = static_cast<std::uint32_t>(ile);
    OpuscBlok();
    UstawBlok(nowy);
    return reinterpret_cast<char16_t*>(nowy + 1);
}

void TTekstPola::UstawPoprawneUtf8(std::string_view bajtyUtf8) {
    const auto dalszy = [](char bajt) { return (static_cast<unsigned char>(bajt) & 0xC0U) == 0x80U; };
    std::size_t ile = 0;
    for (const char bajt : bajtyUtf8)
        ile += (dalszy(bajt) ? 0U : 1U) + (static_cast<unsigned char>(bajt) >= 0xF0U ? 1U : 0U);
    for (char16_t* gdzie = Przygotuj(ile); !bajtyUtf8.empty();) {
        std::size_t kawalek = std::min(bajtyUtf8.size(), kNajdluzszyOdRazu);
        while (kawalek < bajtyUtf8.size() && dalszy(bajtyUtf8[kawalek]))
            --kawalek;
        char16_t znaki[kNajdluzszyOdRazu];
        gdzie = std::copy_n(znaki, DekodujUtf8(bajtyUtf8.data(), kawalek, znaki), gdzie);
        bajtyUtf8.remove_prefix(kawalek);
    }
}

char16_t* TTekstPola::ZmienDlugosc(std::size_t ile) {
    if (ile > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("TTekstPola");
    auto* blok = static_cast<TBlok*>(pula::ZmienRozmiarDuzego(Blok(), RozmiarBloku(ile)));
    blok->ile = static_cast<std::uint32_t>(ile);
    UstawBlok(blok);
    return reinterpret_cast<char16_t*>(blok + 1);
}

void TTekstPola::ZwolnijBlok() noexcept { pula::Zwolnij(Blok(), RozmiarBloku(Blok()->ile)); }

} // namespace ztok
