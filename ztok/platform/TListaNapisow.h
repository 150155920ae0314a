// List of texts with a value beside each.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ztok/platform/Eksport.h"

namespace ztok {

// Sign of the comparison of two texts by code units, ASCII letters regardless of case.
[[nodiscard]] ZTOK_API int PorownajBezWielkosci(std::u16string_view a, std::u16string_view b) noexcept;

// Plain: texts stand where they were put. Sorted: they stand in ascending order, letter case of ASCII letters does not
// count, and a text that is there already is not added again. Indexes are 0-based; those that must exist are checked by
// nobody, as in a vector. The list does no locking.
class ZTOK_API TListaNapisow {
  public:
    struct TElement {
        std::u16string napis;
        std::uintptr_t wartosc;
    };

    explicit TListaNapisow(bool posortowana = false) noexcept : posortowana_(posortowana) {}

    [[nodiscard]] bool Posortowana() const noexcept { return posortowana_; }
    [[nodiscard]] std::size_t Ile() const noexcept { return elementy_.size(); }
    [[nodiscard]] bool Pusta() const noexcept { return elementy_.empty(); }
    [[nodiscard]] const std::u16string& Napis(std::size_t indeks) const noexcept { return elementy_[indeks].napis; }
    [[nodiscard]] std::uintptr_t Wartosc(std::size_t indeks) const noexcept { return elementy_[indeks].wartosc; }
    void UstawWartosc(std::size_t indeks, std::uintptr_t wartosc) noexcept { elementy_[indeks].wartosc = wartosc; }
    [[nodiscard]] auto begin() const noexcept { return elementy_.begin(); }
    [[nodiscard]] auto end() const noexcept { return elementy_.end(); }

    // Finds the first element whose text equals `napis` regardless of case; `pozycja` receives its index, and if there
    // is none, the index at which it would be added.
    [[nodiscard]] bool Znajdz(std::u16string_view napis, std::size_t& pozycja) const noexcept;
    // Index of that element, or -1.
    [[nodiscard]] std::ptrdiff_t IndeksNapisu(std::u16string_view napis) const noexcept;

    // Adds at the end, or where the text belongs when sorted. Returns its index; in a sorted list that has the text
    // already, the index of the old element, which stays as it is.
    std::size_t Dodaj(std::u16string_view napis, std::uintptr_t wartosc = 0);
    // Puts before the element at `indeks` (0 to Ile()) of a plain list; a sorted list adds.
    void Wstaw(std::size_t indeks, std::u16string_view napis, std::uintptr_t wartosc = 0);
    void DodajWszystkie(const TListaNapisow& inna);
    void Usun(std::size_t indeks) noexcept;
    void Zeruj() noexcept { elementy_.clear(); }

    // The texts with a line end between them.
    [[nodiscard]] std::u16string JakoTekst(std::u16string_view koniecLinii = u"\r\n") const;

  private:
    std::vector<TElement> elementy_;
    bool posortowana_;
};

} // namespace ztok
