// Whether the selectors of an operation mean anything to the classes that it works on. The rules stand in
// docs/sciezki.md.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "ztok/fields/TypyPol.h"
#include "ztok/platform/TArgument.h"

namespace ztok {

class TListaBazowa;
class TObiektBazowy;

// Raises ZTException with the operation's tag for a selector that the object's class does not know, nor the other's: a
// number that is not declared, a name or a step of a path that is not there. Behind a pointer that is null or of an
// open type, and in a collection without elements, nothing is judged. To be called before anything changes; does
// nothing inside another operation's own calls (TOcenione).
void SprawdzSelektory(std::u16string_view operacja, const TObiektBazowy& obiekt, TArgumenty pola,
                      const TObiektBazowy* drugi = nullptr);
// The same about the elements of a list (null: of none) and of another: a selector that no element's class knows. The
// item class of a list is asked first, also when the list is empty; then the elements are not looked at.
void SprawdzSelektoryElementow(std::u16string_view operacja, const TListaBazowa* lista, TArgumenty pola,
                               const TObiektBazowy* drugi = nullptr);
// Raises ZTException when there is not one value a field.
void SprawdzDlugosci(std::u16string_view operacja, TArgumenty pola, TArgumenty wartosci);

// Whether the object knows the selector, or may.
[[nodiscard]] bool ZnaSelektor(const TObiektBazowy& obiekt, const TArgument& selektor);

// While it lives, this thread asks objects about selectors that were judged. An element that does not know one, since
// another class does, has none of its features, and nothing of it is cleared or copied.
class TOcenione {
  public:
    TOcenione() noexcept;
    TOcenione(const TOcenione&) = delete;
    TOcenione& operator=(const TOcenione&) = delete;
    ~TOcenione();
    [[nodiscard]] static bool Trwa() noexcept;
};

// MaCechy and PorownajWgPol of an element, inside an operation that has judged the selectors.
[[nodiscard]] bool MaOcenioneCechy(const TObiektBazowy& element, TArgumenty pola, TArgumenty wartosci,
                                   TRozmiarLiter rozmLiter);
[[nodiscard]] std::int32_t PorownajWgOcenionych(const TObiektBazowy& a, const TObiektBazowy& b, TArgumenty pola,
                                                TRozmiarLiter rozmLiter, std::uint32_t localeID);

// Takes the conditions name=value of an element's description apart; false when it is no list of conditions.
bool RozbierzWarunki(std::u16string_view opis, std::vector<TArgument>& nazwy, std::vector<TArgument>& wartosci);

} // namespace ztok
