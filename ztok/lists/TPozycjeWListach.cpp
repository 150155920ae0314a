#include "ztok/lists/TPozycjeWListach.h"

#include "ztok/lists/TListaBazowa.h"

namespace ztok {

std::int32_t TPozycjeWListach::Znajdz(const TListaBazowa& lista, const TObiektBazowy* element) {
    constexpr std::int32_t kKrotka = 16; // is searched faster than indexed
    if (lista.IleObiektow() <= kKrotka)
        return lista.ZnajdzObiekt(element);
    const std::size_t ktora = listy_.Znajdz(&lista);
    if (ktora == listy_.Ile()) {
        TIndeksWskaznikow& nowy = elementy_.emplace_back();
        for (std::int32_t i = 0; i < lista.IleObiektow(); ++i)
            nowy.Dopisz(lista.Obiekty(i));
        listy_.Dopisz(&lista);
    }
    const auto gdzie = static_cast<std::int32_t>(elementy_[ktora].Znajdz(element));
    return lista.Obiekty(gdzie) == element ? gdzie : lista.ZnajdzObiekt(element);
}

} // namespace ztok
