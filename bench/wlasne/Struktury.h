// The data sets with their texts in another form.
#pragma once

#include <string>
#include <type_traits>

#include "dane/Dane.h"
#include "ztok/platform/Kodowania.h"

namespace pomiary {

// References have their numbers only; Rozwiaz finds the objects.
template <class TTekst, template <class> class S, class TStary> S<TTekst> ZTekstami(const S<TStary>& dane) {
    S<TTekst> wynik;
    Przepisz(wynik, dane, [](const TStary& tekst) {
        if constexpr (std::is_same_v<TTekst, TStary>)
            return tekst;
        else if constexpr (std::is_same_v<TTekst, std::u16string>)
            return ztok::Utf16ZUtf8(tekst);
        else
            return ztok::Utf8ZUtf16(tekst);
    });
    return wynik;
}

} // namespace pomiary
