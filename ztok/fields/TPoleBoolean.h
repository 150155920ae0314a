// Boolean field.
#pragma once

#include "ztok/fields/TPole.h"

namespace ztok {

// A byte that a caller passes as a boolean: made from bool or from a raw byte, so that a byte above 1 can be refused.
class TBajtLogiczny {
  public:
    constexpr TBajtLogiczny(bool wartosc) noexcept : bajt_(wartosc ? 1 : 0) {}
    constexpr TBajtLogiczny(std::uint8_t bajt) noexcept : bajt_(bajt) {}
    [[nodiscard]] constexpr std::uint8_t Bajt() const noexcept { return bajt_; }

  private:
    std::uint8_t bajt_;
};

// Holds one byte, 0 for false and 1 for true. The byte is kept as read, never as a C++ bool: a stream may hold any.
class ZTOK_API TPoleBoolean : public TPole {
    ZTOK_KLASA_DEKL(TPoleBoolean)
    static constexpr std::uint8_t KodPola = kpBoolean;

    TPoleBoolean() noexcept = default;

    [[nodiscard]] bool Wartosc() const noexcept { return bajt_ != 0; }
    void UstawWartosc(std::uint8_t bajt) noexcept { bajt_ = bajt; }

    [[nodiscard]] TWariant GetJakoVariant() const override;
    void SetJakoVariant(const TWariant& wartosc) override;
    [[nodiscard]] std::u16string GetJakoString() const override;
    void SetJakoString(std::u16string_view tekst) override;
    void ZerujDane() override;
    [[nodiscard]] std::u16string WartWgMaski(std::u16string_view maska,
                                             const TUstawieniaFormatu* ustawienia = nullptr) const override;
    void KopiujDane(const TPole& zrodlo, TKopierDanych* kopier = nullptr) override;
    [[nodiscard]] std::int32_t Porownaj(const TPole& inne, TPorownywaczDanych* porownywacz = nullptr) const override;
    void ZapiszWStrumieniu(TStrumien& strumien, TZapisywaczDanych* zapisywacz) const override;
    void WczytajZeStrumienia(TStrumien& strumien, TOdczytywaczDanych* odczytywacz) override;
    void ZapiszTekstowo(TStrumien& strumien, TZapisywaczTekstu* zapisywacz) const override;
    void WczytajTekstowo(TStrumien& strumien, TOdczytywaczTekstu* odczytywacz) override;

  private:
    std::uint8_t bajt_ = 0;
};

} // namespace ztok
