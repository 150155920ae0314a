// Date and time fields.
#pragma once

#include "ztok/fields/TPole.h"

namespace ztok {

// A date-time number: whole days since 1899-12-30, the time of day as the fraction. Below zero the fraction still
// counts the time of day forward, with the sign of the date: -5.25 is 06:00 on 1899-12-25. Text that is shown follows
// the process's format settings; the derived classes say what part of the number they keep.
class ZTOK_API TPoleDateTimeBazowe : public TPole {
    ZTOK_KLASA_DEKL(TPoleDateTimeBazowe)

    [[nodiscard]] double Wartosc() const noexcept { return wartosc_; }

    [[nodiscard]] TWariant GetJakoVariant() const override;
    void SetJakoVariant(const TWariant& wartosc) override;
    void ZerujDane() override;
    [[nodiscard]] std::u16string WartWgMaski(std::u16string_view maska,
                                             const TUstawieniaFormatu* ustawienia = nullptr) const override;
    void KopiujDane(const TPole& zrodlo, TKopierDanych* kopier = nullptr) override;
    [[nodiscard]] std::int32_t Porownaj(const TPole& inne, TPorownywaczDanych* porownywacz = nullptr) const override;
    void ZapiszWStrumieniu(TStrumien& strumien, TZapisywaczDanych* zapisywacz) const override;
    void WczytajZeStrumienia(TStrumien& strumien, TOdczytywaczDanych* odczytywacz) override;
    // Whole seconds of the years 1 to 9999; EBladKonwersji for other dates.
    void ZapiszTekstowo(TStrumien& strumien, TZapisywaczTekstu* zapisywacz) const override;
    void WczytajTekstowo(TStrumien& strumien, TOdczytywaczTekstu* odczytywacz) override;

  protected:
    TPoleDateTimeBazowe() noexcept = default;

    double wartosc_ = 0;

  private:
    // The part of the number that this field's class keeps.
    [[nodiscard]] double Czesc(double wartosc) const noexcept;
};

// Whole days: every value set or read is cut toward zero.
class ZTOK_API TPoleDate : public TPoleDateTimeBazowe {
    ZTOK_KLASA_DEKL(TPoleDate)
    static constexpr std::uint8_t KodPola = kpDate;

    static double CzescDaty(double wartosc) noexcept;
    void UstawWartosc(double wartosc) noexcept { wartosc_ = CzescDaty(wartosc); }
    [[nodiscard]] std::u16string GetJakoString() const override;
    void SetJakoString(std::u16string_view tekst) override;
};

// The time of day: every value set or read is reduced to its fraction.
class ZTOK_API TPoleTime : public TPoleDateTimeBazowe {
    ZTOK_KLASA_DEKL(TPoleTime)
    static constexpr std::uint8_t KodPola = kpTime;

    static double CzescCzasu(double wartosc) noexcept;
    void UstawWartosc(double wartosc) noexcept { wartosc_ = CzescCzasu(wartosc); }
    [[nodiscard]] std::u16string GetJakoString() const override;
    void SetJakoString(std::u16string_view tekst) override;
};

// The whole number. Its text is the date alone for a whole day, the time alone for a value below a day and not 0.
class ZTOK_API TPoleDateTime : public TPoleDateTimeBazowe {
    ZTOK_KLASA_DEKL(TPoleDateTime)
    static constexpr std::uint8_t KodPola = kpDateTime;

    void UstawWartosc(double wartosc) noexcept { wartosc_ = wartosc; }
    [[nodiscard]] std::u16string GetJakoString() const override;
    void SetJakoString(std::u16string_view tekst) override;
};

} // namespace ztok
