#include "ztok/platform/TListaNapisow.h"

#include <algorithm>

namespace ztok {

namespace {

constexpr char16_t MalaLitera(char16_t znak) noexcept {
    return znak >= u'A' && znak <= u'Z' ? static_cast<char16_t>(znak + (u'a' - u'A')) : znak;
}

} // namespace

int PorownajBezWielkosci(std::u16string_view a, std::u16string_view b) noexcept {
    const std::size_t wspolne = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < wspolne; ++i) {
        const char16_t x = MalaLitera(a[i]);
        const char16_t y = MalaLitera(b[i]);
        if (x != y)
            return x < y ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

bool TListaNapisow::Znajdz(std::u16string_view napis, std::size_t& pozycja) const noexcept {
    const auto i = posortowana_ ? std::lower_bound(elementy_.begin(), elementy_.end(), napis,
                                                   [](const TElement& element, std::u16string_view szukany) {
                                                       return PorownajBezWielkosci(element.napis, szukany) < 0;
                                                   })
                                : std::find_if(elementy_.begin(), elementy_.end(), [napis](const TElement& element) {
                                      return PorownajBezWielkosci(element.napis, napis) == 0;
                                  });
    pozycja = static_cast<std::size_t>(i - elementy_.begin());
    return i != elementy_.end() && PorownajBezWielkosci(i->napis, napis) == 0;
}

std::ptrdiff_t TListaNapisow::IndeksNapisu(std::u16string_view napis) const noexcept {
    std::size_t pozycja = 0;
    return Znajdz(napis, pozycja) ? static_cast<std::ptrdiff_t>(pozycja) : -1;
}

std::size_t TListaNapisow::Dodaj(std::u16string_view napis, std::uintptr_t wartosc) {
    std::size_t pozycja = elementy_.size();
    if (posortowana_ && Znajdz(napis, pozycja))
        return pozycja;
    elementy_.insert(elementy_.begin() + static_cast<std::ptrdiff_t>(pozycja), {std::u16string(napis), wartosc});
    return pozycja;
}

void TListaNapisow::Wstaw(std::size_t indeks, std::u16string_view napis, std::uintptr_t wartosc) {
    if (posortowana_)
        Dodaj(napis, wartosc);
    else
        elementy_.insert(elementy_.begin() + static_cast<std::ptrdiff_t>(indeks), {std::u16string(napis), wartosc});
}

void TListaNapisow::DodajWszystkie(const TListaNapisow& inna) {
    // By index: a plain list may be added to itself.
    for (std::size_t i = 0, ile = inna.Ile(); i < ile; ++i)
        Dodaj(std::u16string(inna.Napis(i)), inna.Wartosc(i));
}

void TListaNapisow::Usun(std::size_t indeks) noexcept {
    elementy_.erase(elementy_.begin() + static_cast<std::ptrdiff_t>(indeks));
}

std::u16string TListaNapisow::JakoTekst(std::u16string_view koniecLinii) const {
    std::u16string tekst;
    for (const TElement& element : elementy_) {
        if (&element != elementy_.data())
            tekst += koniecLinii;
        tekst += element.napis;
    }
    return tekst;
}

} // namespace ztok
