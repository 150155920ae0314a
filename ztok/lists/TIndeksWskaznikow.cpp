#include "ztok/lists/TIndeksWskaznikow.h"

#include <bit>

namespace ztok {

namespace {

constexpr std::size_t kKrotka = 16;

} // namespace

void TIndeksWskaznikow::Wstaw(std::size_t pozycja) noexcept {
    const std::size_t maska = tablica_.size() - 1;
    for (std::size_t i = MieszajWskaznik(lista_[pozycja]) & maska;; i = (i + 1) & maska) {
        if (tablica_[i] == 0) {
            tablica_[i] = static_cast<std::uint32_t>(pozycja + 1);
            return;
        }
        if (lista_[tablica_[i] - 1] == lista_[pozycja])
            return; // the first position stays
    }
}

void TIndeksWskaznikow::Dopisz(const void* wskaznik) {
    lista_.push_back(wskaznik);
    if (lista_.size() <= kKrotka)
        return;
    if (2 * lista_.size() > tablica_.size()) {
        try {
            tablica_.assign(std::bit_ceil(4 * lista_.size()), 0);
        } catch (...) {
            lista_.pop_back();
            throw;
        }
        for (std::size_t i = 0; i < lista_.size(); ++i)
            Wstaw(i);
    } else {
        Wstaw(lista_.size() - 1);
    }
}

std::size_t TIndeksWskaznikow::Znajdz(const void* wskaznik) const noexcept {
    if (tablica_.empty()) {
        for (std::size_t i = 0; i < lista_.size(); ++i)
            if (lista_[i] == wskaznik)
                return i;
        return lista_.size();
    }
    const std::size_t maska = tablica_.size() - 1;
    for (std::size_t i = MieszajWskaznik(wskaznik) & maska; tablica_[i] != 0; i = (i + 1) & maska)
        if (lista_[tablica_[i] - 1] == wskaznik)
            return tablica_[i] - 1;
    return lista_.size();
}

void TIndeksWskaznikow::Zeruj() noexcept {
    lista_.clear();
    tablica_.clear();
}

} // namespace ztok
