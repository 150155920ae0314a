// Numeric fields: the integer family and the real field.
#pragma once

#include "ztok/fields/TPole.h"

namespace ztok {

// Groupings without a value of their own.
class ZTOK_API TPoleNumeryczne : public TPole {
    ZTOK_KLASA_DEKL(TPoleNumeryczne)
};
class ZTOK_API TPoleCalkowitoliczbowe : public TPoleNumeryczne {
    ZTOK_KLASA_DEKL(TPoleCalkowitoliczbowe)
};
class ZTOK_API TPoleZmiennoprzecinkowe : public TPoleNumeryczne {
    ZTOK_KLASA_DEKL(TPoleZmiennoprzecinkowe)
};

// One value of the number type W; what the integer classes and the real class below have in common. Setting from text
// or variant cuts an integer to the field's width, without a check.
template <class W, class Baza> class TPoleLiczby : public Baza {
  public:
    [[nodiscard]] W Wartosc() const noexcept { return wartosc_; }
    void UstawWartosc(W wartosc) noexcept { wartosc_ = wartosc; }

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
    W wartosc_ = 0;
};

extern template class ZTOK_API TPoleLiczby<std::uint8_t, TPoleCalkowitoliczbowe>;
extern template class ZTOK_API TPoleLiczby<std::int16_t, TPoleCalkowitoliczbowe>;
extern template class ZTOK_API TPoleLiczby<std::uint16_t, TPoleCalkowitoliczbowe>;
extern template class ZTOK_API TPoleLiczby<std::int32_t, TPoleCalkowitoliczbowe>;
extern template class ZTOK_API TPoleLiczby<std::uint32_t, TPoleCalkowitoliczbowe>;
extern template class ZTOK_API TPoleLiczby<std::int64_t, TPoleCalkowitoliczbowe>;
extern template class ZTOK_API TPoleLiczby<double, TPoleZmiennoprzecinkowe>;

class ZTOK_API TPoleByte : public TPoleLiczby<std::uint8_t, TPoleCalkowitoliczbowe> {
    ZTOK_KLASA_DEKL(TPoleByte)
    static constexpr std::uint8_t KodPola = kpByte;
};
class ZTOK_API TPoleSmallint : public TPoleLiczby<std::int16_t, TPoleCalkowitoliczbowe> {
    ZTOK_KLASA_DEKL(TPoleSmallint)
    static constexpr std::uint8_t KodPola = kpSmallint;
};
class ZTOK_API TPoleWord : public TPoleLiczby<std::uint16_t, TPoleCalkowitoliczbowe> {
    ZTOK_KLASA_DEKL(TPoleWord)
    static constexpr std::uint8_t KodPola = kpWord;
};
class ZTOK_API TPoleInteger : public TPoleLiczby<std::int32_t, TPoleCalkowitoliczbowe> {
    ZTOK_KLASA_DEKL(TPoleInteger)
    static constexpr std::uint8_t KodPola = kpInteger;
};
// Text above 2147483647 is refused, although the field's own text can be above it.
class ZTOK_API TPoleCardinal : public TPoleLiczby<std::uint32_t, TPoleCalkowitoliczbowe> {
    ZTOK_KLASA_DEKL(TPoleCardinal)
    static constexpr std::uint8_t KodPola = kpCardinal;
};
class ZTOK_API TPoleInt64 : public TPoleLiczby<std::int64_t, TPoleCalkowitoliczbowe> {
    ZTOK_KLASA_DEKL(TPoleInt64)
    static constexpr std::uint8_t KodPola = kpInt64;
};
class ZTOK_API TPoleDouble : public TPoleLiczby<double, TPoleZmiennoprzecinkowe> {
    ZTOK_KLASA_DEKL(TPoleDouble)
    static constexpr std::uint8_t KodPola = kpDouble;
};

static_assert((sizeof(TPoleInt64) == 16 && sizeof(TPoleDouble) == 16) || sizeof(void*) == 4,
              "a scalar field is one table pointer and its value");

} // namespace ztok
