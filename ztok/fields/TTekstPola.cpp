#include "ztok/fields/TTekstPola.h"

#include <cstring>
#include <limits>
#include <stdexcept>
#include <utility>

#include "ztok/platform/Pula.h"

namespace ztok {

namespace {

// What the text takes, in the steps in which the pool gives memory: a text that takes as much fits the old one's place.
constexpr std::size_t Rozmiar(std::size_t ile) noexcept {
    const std::size_t rozmiar = sizeof(std::uint32_t) + ile * sizeof(char16_t);
    return rozmiar > NajwiekszyBlokPuli ? rozmiar : (rozmiar + 15) / 16 * 16;
}

} // namespace

void TTekstPola::Ustaw(std::u16string_view tekst) {
    if (tekst.empty()) {
        Wyczysc();
        return;
    }
    const std::size_t bajtow = tekst.size() * sizeof(char16_t);
    if (blok_ != nullptr && Rozmiar(blok_->ile) == Rozmiar(tekst.size())) {
        std::memmove(static_cast<void*>(blok_ + 1), tekst.data(), bajtow);
        blok_->ile = static_cast<std::uint32_t>(tekst.size());
        return;
    }
    TTekstPola nowy;
    std::memcpy(nowy.Przygotuj(tekst.size()), tekst.data(), bajtow);
    std::swap(blok_, nowy.blok_);
}

char16_t* TTekstPola::Przygotuj(std::size_t ile) {
    if (ile > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("TTekstPola");
    auto* nowy = static_cast<TBlok*>(PulaPrzydziel(Rozmiar(ile)));
    nowy->ile = static_cast<std::uint32_t>(ile);
    Wyczysc();
    blok_ = nowy;
    return reinterpret_cast<char16_t*>(nowy + 1);
}

void TTekstPola::Wyczysc() noexcept {
    if (blok_ != nullptr)
        PulaZwolnij(blok_, Rozmiar(blok_->ile));
    blok_ = nullptr;
}

} // namespace ztok
