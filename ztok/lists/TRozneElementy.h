// Different elements, found in their order instead of one by one.
#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <vector>

#include "ztok/fields/TypyPol.h"
#include "ztok/kernel/TPrzejscie.h"
#include "ztok/platform/TArgument.h"

namespace ztok {

class TListaBazowa;
class TObiektBazowy;

// Keeps one of each group of equal elements, equal on the fields given or, without any, on everything. Only for data
// that the comparison puts into one order: no class with a comparison of its own, one class of field under one number,
// no NaN, no field that some objects lack and others have at its default (which equal each other, and yet a value may
// lie between), no mixed collections, and no pointers that go round.
class TRozneElementy : private TPrzejscie {
  public:
    // Refers to the fields.
    TRozneElementy(TArgumenty pola, TRozmiarLiter rozmLiter);
    TRozneElementy(const TRozneElementy&) = delete;
    TRozneElementy& operator=(const TRozneElementy&) = delete;
    ~TRozneElementy() override = default;

    // Whether the elements of both lists are such data; asked before any is added. Below some number of elements the
    // answer is false: they are compared faster than looked at. `cele` gets the targets of the pointers compared.
    [[nodiscard]] static bool MoznaUporzadkowac(const TListaBazowa& lista, const TListaBazowa* druga, TArgumenty pola,
                                                std::vector<const TObiektBazowy*>* cele = nullptr);

    [[nodiscard]] bool SaRowne(const TObiektBazowy& a, const TObiektBazowy& b) const;
    [[nodiscard]] bool Ma(const TObiektBazowy& element) const { return elementy_.contains({&element, -1}); }
    // Whether an object of the model has died since: those that were added may be gone.
    [[nodiscard]] bool Zginal() const noexcept { return zginal_; }
    // Position of the equal element that was added before, or -1: it is added then.
    std::int32_t Dodaj(const TObiektBazowy& element, std::int32_t pozycja);

  private:
    struct TElement {
        const TObiektBazowy* obiekt;
        std::int32_t pozycja;
    };

    void ZgubPole(const TPole& pole) noexcept override;
    [[nodiscard]] std::int32_t Porownaj(const TObiektBazowy& a, const TObiektBazowy& b) const;

    TArgumenty pola_;
    TRozmiarLiter rozmLiter_;
    bool zginal_ = false;
    std::set<TElement, std::function<bool(const TElement&, const TElement&)>> elementy_;
};

} // namespace ztok
