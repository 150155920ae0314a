#include "ztok/util/Ztfunbazowe.h"

#include <algorithm>

#include "ztok/platform/TListaNapisow.h"

namespace ztok {

namespace {

constexpr bool Odstep(char16_t znak) noexcept { return znak <= 32; }
constexpr bool Odstep(char znak) noexcept { return static_cast<unsigned char>(znak) <= 32; }

template <class TZnak> std::basic_string_view<TZnak> Przytnij(std::basic_string_view<TZnak> tekst) noexcept {
    while (!tekst.empty() && Odstep(tekst.back()))
        tekst.remove_suffix(1);
    while (!tekst.empty() && Odstep(tekst.front()))
        tekst.remove_prefix(1);
    return tekst;
}

// `linia(i)` gives line i as a view: one pass for the length, one that copies.
template <class TLinia> std::u16string Polacz(std::size_t ileLinii, TLinia linia, std::u16string_view separator) {
    std::size_t dlugosc = 0;
    for (std::size_t i = 0; i < ileLinii; ++i)
        if (const std::size_t ile = Przytnij(linia(i)).size(); ile != 0)
            dlugosc += ile + (dlugosc != 0 ? separator.size() : 0);
    std::u16string wynik;
    wynik.reserve(dlugosc);
    for (std::size_t i = 0; i < ileLinii; ++i) {
        if (const std::u16string_view tekst = Przytnij(linia(i)); !tekst.empty()) {
            if (!wynik.empty())
                wynik += separator;
            wynik += tekst;
        }
    }
    return wynik;
}

template <class TZnak> std::basic_string<TZnak> PrzedZnakiem(std::basic_string_view<TZnak> tekst, TZnak znak) {
    const std::size_t gdzie = tekst.find(znak);
    return std::basic_string<TZnak>(gdzie == tekst.npos ? tekst.substr(0, 0) : tekst.substr(0, gdzie));
}

template <class TZnak> std::basic_string<TZnak> PoZnaku(std::basic_string_view<TZnak> tekst, TZnak znak, bool trymuj) {
    if (const std::size_t gdzie = tekst.find(znak); gdzie != tekst.npos)
        tekst.remove_prefix(gdzie + 1);
    return std::basic_string<TZnak>(trymuj ? Przytnij(tekst) : tekst);
}

} // namespace

bool TekstPusty(std::u16string_view S, std::ptrdiff_t Od, std::ptrdiff_t Ile) noexcept {
    const std::ptrdiff_t koniec = std::min(static_cast<std::ptrdiff_t>(S.size()), Ile);
    for (std::ptrdiff_t i = std::max<std::ptrdiff_t>(Od, 1); i <= koniec; ++i)
        if (!Odstep(S[static_cast<std::size_t>(i - 1)]))
            return false;
    return true;
}

std::u16string ListaDoLinii(std::span<const std::u16string> Lista, std::u16string_view Separator) {
    return Polacz(
        Lista.size(), [Lista](std::size_t i) { return std::u16string_view(Lista[i]); }, Separator);
}

std::u16string ListaDoLinii(const TListaNapisow& Lista, std::u16string_view Separator) {
    return Polacz(
        Lista.Ile(), [&Lista](std::size_t i) { return std::u16string_view(Lista.Napis(i)); }, Separator);
}

std::u16string TrescPrzedZnakiem(std::u16string_view S, char16_t Znak) { return PrzedZnakiem(S, Znak); }

std::string TrescPrzedZnakiem(std::string_view S, char Znak) { return PrzedZnakiem(S, Znak); }

std::u16string TrescPoZnaku(std::u16string_view S, char16_t Znak, bool Trymuj) { return PoZnaku(S, Znak, Trymuj); }

std::string TrescPoZnaku(std::string_view S, char Znak, bool Trymuj) { return PoZnaku(S, Znak, Trymuj); }

std::u16string WJednejLinii(std::u16string S) noexcept {
    std::replace_if(
        S.begin(), S.end(), [](char16_t znak) { return znak < u' ' || znak == 0x7F; }, u' ');
    return S;
}

} // namespace ztok
