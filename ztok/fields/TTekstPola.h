// Text of a field: one block of the pool, of the size that the text needs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "ztok/platform/Eksport.h"

namespace ztok {

// Owns its units. Of the size of a pointer: most texts are short and a model holds very many of them, so a string's
// room for short text and for growth would cost more than the texts. An empty text has no block.
class ZTOK_API TTekstPola {
  public:
    constexpr TTekstPola() noexcept = default;
    TTekstPola(const TTekstPola&) = delete;
    TTekstPola& operator=(const TTekstPola&) = delete;
    ~TTekstPola() {
        if (blok_ != nullptr)
            Wyczysc();
    }

    // Valid until the next change. Units of the text itself may be given to Ustaw.
    [[nodiscard]] std::u16string_view Widok() const noexcept {
        return blok_ == nullptr ? std::u16string_view()
                                : std::u16string_view(reinterpret_cast<const char16_t*>(blok_ + 1), blok_->ile);
    }
    // Raises std::length_error above 2^32 - 1 units, and std::bad_alloc. The text is then as it was.
    void Ustaw(std::u16string_view tekst);
    // Makes the text of that many units (1 or more), to be filled by the caller. Raises as Ustaw does.
    [[nodiscard]] char16_t* Przygotuj(std::size_t ile);
    void Wyczysc() noexcept;

  private:
    struct TBlok { // then the units
        std::uint32_t ile;
    };

    TBlok* blok_ = nullptr;
};

static_assert(sizeof(TTekstPola) == sizeof(void*));

} // namespace ztok
