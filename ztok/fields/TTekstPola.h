// Text of a field: a short text in place, a longer one in a block of the pool of the size that it needs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "ztok/platform/Eksport.h"
#include "ztok/platform/Pula.h"
#include "ztok/platform/ZatrutaPamiec.h"

namespace ztok {

// Owns its units. Of the size of a pointer: most texts are short and a model holds very many of them, so a string's
// room for short text and for growth would cost more than the texts.
class ZTOK_API TTekstPola {
  public:
    constexpr TTekstPola() noexcept = default;
    TTekstPola(const TTekstPola&) = delete;
    TTekstPola& operator=(const TTekstPola&) = delete;
    ~TTekstPola() { OpuscBlok(); }

    // Valid until the next change. Units of the text itself may be given to Ustaw.
    [[nodiscard]] std::u16string_view Widok() const noexcept {
        if (!MaBlok())
            return {reinterpret_cast<const char16_t*>(bajty_ + sizeof(char16_t)), std::size_t{bajty_[0]} >> 1U};
        const TBlok* blok = Blok();
        return {reinterpret_cast<const char16_t*>(blok + 1), blok->ile};
    }
    // Raises std::length_error above 2^32 - 1 units, and std::bad_alloc. The text is then as it was.
    void Ustaw(std::u16string_view tekst);
    // The text of that many bytes of UTF-8, at most kNajdluzszyOdRazu, straight to its place. Raises as Ustaw does.
    void UstawUtf8(const char* bajty, std::size_t ile);
    static constexpr std::size_t kNajdluzszyOdRazu = 256;
    // The text of any bytes that PoprawneUtf8 accepts, by pieces whose ends are ends of characters: it is never in
    // memory twice. Raises as Ustaw does.
    void UstawPoprawneUtf8(std::string_view bajtyUtf8);
    // The first two for a text that was never set, whose units may stand at `miejsce`: room for RozmiarBloku(ile)
    // bytes, aligned as the pool's blocks, that stays as long as the text does. Returns how many of them it took, 0 for
    // a short text. A later change leaves the place for good, unless the new text fits it.
    std::size_t UstawWMiejscu(std::u16string_view tekst, void* miejsce) noexcept;
    std::size_t UstawUtf8WMiejscu(const char* bajty, std::size_t ile, void* miejsce) noexcept;
    // What a text of that many units takes outside its field, in the steps in which the pool gives memory.
    [[nodiscard]] static constexpr std::size_t RozmiarBloku(std::size_t ile) noexcept {
        const std::size_t rozmiar = sizeof(TBlok) + ile * sizeof(char16_t);
        return rozmiar > NajwiekszyBlokPuli ? rozmiar : (rozmiar + 15) / 16 * 16;
    }
    // A text of so many units stands in its field.
    static constexpr std::size_t kNajdluzszyWPolu = sizeof(void*) / sizeof(char16_t) - 1;
    // Makes the text of that many units (1 or more), to be filled by the caller. Raises as Ustaw does.
    [[nodiscard]] char16_t* Przygotuj(std::size_t ile);
    // Changes the length of such a text, of which the shorter length stays; before and after it is longer than the
    // pool's largest block. Raises as Ustaw does.
    [[nodiscard]] char16_t* ZmienDlugosc(std::size_t ile);
    // Takes over another's text, which is empty then.
    void Przejmij(TTekstPola& inny) noexcept {
        OpuscBlok();
        std::memcpy(bajty_, inny.bajty_, sizeof bajty_);
        inny.bajty_[0] = kKrotki;
    }
    void Wyczysc() noexcept {
        OpuscBlok();
        bajty_[0] = kKrotki;
    }

  private:
    struct TBlok { // then the units
        std::uint32_t ile;
    };

    // Blocks are aligned, so the lowest bit of the lowest byte tells a text in place: that byte then holds its length
    // above the bit, and the units follow at the second one's place. The next bit tells a block that is a part of
    // another one and goes with it.
    static constexpr unsigned char kKrotki = 1;
    static constexpr unsigned char kCzesc = 2;

    [[nodiscard]] bool MaBlok() const noexcept { return (bajty_[0] & kKrotki) == 0; }
    [[nodiscard]] bool MaWlasnyBlok() const noexcept { return (bajty_[0] & (kKrotki | kCzesc)) == 0; }
    [[nodiscard]] TBlok* Blok() const noexcept {
        std::uintptr_t adres = 0;
        std::memcpy(&adres, bajty_, sizeof adres);
        return reinterpret_cast<TBlok*>(adres & ~std::uintptr_t{kCzesc});
    }
    void UstawBlok(TBlok* blok) noexcept { std::memcpy(bajty_, &blok, sizeof blok); }
    // Gives up the text's block, or its place in another.
    void OpuscBlok() noexcept {
        if (MaWlasnyBlok())
            ZwolnijBlok();
        else if (kPamiecZatruta && MaBlok())
            Zatruj(Blok(), RozmiarBloku(Blok()->ile));
    }
    void ZwolnijBlok() noexcept;
    // Takes a text of up to kNajdluzszyWPolu bytes of UTF-8.
    void UstawKrotkiUtf8(const char* bajty, std::size_t ile);

    alignas(void*) unsigned char bajty_[sizeof(void*)] = {kKrotki};
};

static_assert(sizeof(TTekstPola) == sizeof(void*));

} // namespace ztok
