#include "ztok/lists/TIndeksWskaznikow.h"

#include <algorithm>
#include <bit>

namespace ztok {

namespace {

constexpr std::size_t kKrotka = 16;

} // namespace

void TIndeksWskaznikow::Wstaw(std::size_t pozycja) const noexcept {
    const std::size_t maska = tablica_.size() - 1;
    for (std::size_t i = MieszajWskaznik(lista_[pozycja]) & maska;; i = (i + 1) & maska) {
        if (tablica_[i] == 0) {
            tablica_[i] = static_cast<std::uint32_t>(pozycja + 1);
            return;
        }
        if (lista_[tablica_[i] - 1] == lista_[pozycja]) {
            powtorki_ = true;
            return; // the first position stays
        }
    }
}

bool TIndeksWskaznikow::Zindeksuj() const noexcept {
    if (2 * lista_.size() > tablica_.size()) {
        try {
            tablica_.assign(std::bit_ceil(2 * lista_.size()), 0);
        } catch (...) {
            tablica_.clear();
            zindeksowane_ = 0;
            return false;
        }
        zindeksowane_ = 0;
    }
    for (; zindeksowane_ < lista_.size(); ++zindeksowane_)
        if (lista_[zindeksowane_] != nullptr)
            Wstaw(zindeksowane_);
    return true;
}

std::size_t TIndeksWskaznikow::Znajdz(const void* wskaznik) const noexcept {
    if (lista_.size() <= kKrotka || !Zindeksuj())
        return static_cast<std::size_t>(std::find(lista_.begin(), lista_.end(), wskaznik) - lista_.begin());
    const std::size_t maska = tablica_.size() - 1;
    for (std::size_t i = MieszajWskaznik(wskaznik) & maska; tablica_[i] != 0; i = (i + 1) & maska)
        if (lista_[tablica_[i] - 1] == wskaznik)
            return tablica_[i] - 1;
    return lista_.size();
}

void TIndeksWskaznikow::Usun(const void* wskaznik) noexcept {
    const std::size_t gdzie = Znajdz(wskaznik);
    if (gdzie == lista_.size())
        return;
    lista_[gdzie] = nullptr;
    if (powtorki_ || zindeksowane_ != lista_.size()) // the table knows the first one only
        std::replace(lista_.begin(), lista_.end(), wskaznik, static_cast<const void*>(nullptr));
}

void TIndeksWskaznikow::Zeruj() noexcept {
    lista_.clear();
    tablica_.clear();
    zindeksowane_ = 0;
    powtorki_ = false;
}

} // namespace ztok
