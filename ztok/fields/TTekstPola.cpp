#include "ztok/fields/TTekstPola.h"

#include <bit>
#include <limits>
#include <stdexcept>

#include "ztok/platform/Kodowania.h"
#include "ztok/platform/PulaWnetrze.h"

namespace ztok {

static_assert(std::endian::native == std::endian::little, "the lowest byte of a pointer is its first");

namespace {

// What the text takes, in the steps in which the pool gives memory: a text that takes as much fits the old one's place.
constexpr std::size_t Rozmiar(std::size_t ile) noexcept {
    const std::size_t rozmiar = sizeof(std::uint32_t) + ile * sizeof(char16_t);
    return rozmiar > NajwiekszyBlokPuli ? rozmiar : (rozmiar + 15) / 16 * 16;
}

} // namespace

void TTekstPola::Ustaw(std::u16string_view tekst) {
    const std::size_t bajtow = tekst.size() * sizeof(char16_t);
    if (tekst.size() <= kNajdluzszyWMiejscu) {
        unsigned char nowe[sizeof bajty_] = {static_cast<unsigned char>(tekst.size() << 1U | kKrotki)};
        if (!tekst.empty())
            std::memcpy(nowe + sizeof(char16_t), tekst.data(), bajtow);
        if (MaBlok())
            ZwolnijBlok();
        std::memcpy(bajty_, nowe, sizeof bajty_);
        return;
    }
    if (MaBlok()) {
        TBlok* blok = Blok();
        if (Rozmiar(blok->ile) == Rozmiar(tekst.size())) {
            std::memmove(static_cast<void*>(blok + 1), tekst.data(), bajtow);
            blok->ile = static_cast<std::uint32_t>(tekst.size());
            return;
        }
    }
    TTekstPola nowy;
    std::memcpy(nowy.Przygotuj(tekst.size()), tekst.data(), bajtow);
    if (MaBlok())
        ZwolnijBlok();
    UstawBlok(nowy.Blok());
    nowy.bajty_[0] = kKrotki;
}

void TTekstPola::UstawUtf8(const char* bajty, std::size_t ile) {
    if (ile <= kNajdluzszyWMiejscu) {
        unsigned char nowe[sizeof bajty_] = {static_cast<unsigned char>(ile << 1U | kKrotki)};
        unsigned wszystkie = 0;
        for (std::size_t i = 0; i < ile; ++i) {
            const auto bajt = static_cast<unsigned char>(bajty[i]);
            nowe[sizeof(char16_t) * (i + 1)] = bajt;
            wszystkie |= bajt;
        }
        if (wszystkie >= 0x80) {
            char16_t znaki[kNajdluzszyWMiejscu];
            return Ustaw({znaki, DekodujUtf8(bajty, ile, znaki)});
        }
        if (MaBlok())
            ZwolnijBlok();
        std::memcpy(bajty_, nowe, sizeof bajty_);
        return;
    }
    auto* nowy = static_cast<TBlok*>(pula::Przydziel(Rozmiar(ile)));
    auto* miejsce = reinterpret_cast<char16_t*>(nowy + 1);
    const std::size_t znakow = DekodujUtf8(bajty, ile, miejsce);
    if (znakow > kNajdluzszyWMiejscu && Rozmiar(znakow) == Rozmiar(ile)) [[likely]] {
        nowy->ile = static_cast<std::uint32_t>(znakow);
        if (MaBlok())
            ZwolnijBlok();
        UstawBlok(nowy);
        return;
    }
    // Letters of two bytes made the block larger than the text needs.
    char16_t znaki[kNajdluzszyOdRazu];
    std::memcpy(znaki, miejsce, znakow * sizeof(char16_t));
    pula::Zwolnij(nowy, Rozmiar(ile));
    Ustaw({znaki, znakow});
}

char16_t* TTekstPola::Przygotuj(std::size_t ile) {
    if (ile > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("TTekstPola");
    if (ile <= kNajdluzszyWMiejscu) {
        Wyczysc();
        bajty_[0] = static_cast<unsigned char>(ile << 1U | kKrotki);
        return reinterpret_cast<char16_t*>(bajty_ + sizeof(char16_t));
    }
    auto* nowy = static_cast<TBlok*>(pula::Przydziel(Rozmiar(ile)));
    nowy->ile = static_cast<std::uint32_t>(ile);
    if (MaBlok())
        ZwolnijBlok();
    UstawBlok(nowy);
    return reinterpret_cast<char16_t*>(nowy + 1);
}

void TTekstPola::ZwolnijBlok() noexcept { pula::Zwolnij(Blok(), Rozmiar(Blok()->ile)); }

} // namespace ztok
