// Text fields.
#pragma once

#include "ztok/fields/TPole.h"
#include "ztok/fields/TTekstPola.h"

namespace ztok {

// Unicode text. Compares in the library's Polish order unless a locale says otherwise.
class ZTOK_API TPoleString : public TPole {
    ZTOK_KLASA_DEKL(TPoleString)
    static constexpr std::uint32_t CechyKlasy = ckPole | ckPoleTekstowe;
    static constexpr std::uint8_t KodPola = kpString;

    TPoleString() noexcept = default;
    ~TPoleString() override;

    // Valid until the next change of the field.
    [[nodiscard]] std::u16string_view Wartosc() const noexcept { return tekst_.Widok(); }
    void UstawWartosc(std::u16string_view tekst) { tekst_.Ustaw(tekst); }
    // Takes bytes of UTF-8, or of Windows-1250 when they are no UTF-8.
    void UstawTrescUTF8(std::string_view bajty);

    [[nodiscard]] TWariant GetJakoVariant() const override;
    void SetJakoVariant(const TWariant& wartosc) override;
    [[nodiscard]] std::u16string GetJakoString() const override;
    void SetJakoString(std::u16string_view tekst) override;
    void ZerujDane() override;
    [[nodiscard]] std::u16string WartWgMaski(std::u16string_view maska,
                                             const TUstawieniaFormatu* ustawienia = nullptr) const override;
    void KopiujDane(const TPole& zrodlo, TKopierDanych* kopier = nullptr) override;
    // Without a comparer: by DefZTOKLocaleID, ignoring letter case.
    [[nodiscard]] std::int32_t Porownaj(const TPole& inne, TPorownywaczDanych* porownywacz = nullptr) const override;
    [[nodiscard]] std::int32_t PorownajZCecha(const TArgument& cecha, TRozmiarLiter rozmLiter,
                                              std::uint32_t localeID) const override;
    void ZapiszWStrumieniu(TStrumien& strumien, TZapisywaczDanych* zapisywacz) const override;
    void WczytajZeStrumienia(TStrumien& strumien, TOdczytywaczDanych* odczytywacz) override;
    void ZapiszTekstowo(TStrumien& strumien, TZapisywaczTekstu* zapisywacz) const override;
    void WczytajTekstowo(TStrumien& strumien, TOdczytywaczTekstu* odczytywacz) override;

  private:
    friend class TObiekt; // reads the text in place

    TTekstPola tekst_;
};

// Text that XML holds as a CDATA section.
class ZTOK_API TPoleCDATA : public TPoleString {
    ZTOK_KLASA_DEKL(TPoleCDATA)
};

// Name of a file: a class of its own, so that it can have an edit function of its own.
class ZTOK_API TPoleFileName : public TPoleString {
    ZTOK_KLASA_DEKL(TPoleFileName)
};

// Bytes of text in the library's default code page (DefStronaKodowa).
class ZTOK_API TPoleRawByteString : public TPole {
    ZTOK_KLASA_DEKL(TPoleRawByteString)
    static constexpr std::uint32_t CechyKlasy = ckPole | ckPoleTekstowe;
    static constexpr std::uint8_t KodPola = kpRawByteString;

    TPoleRawByteString() noexcept = default;
    ~TPoleRawByteString() override;

    [[nodiscard]] const std::string& Wartosc() const noexcept { return bajty_; }
    void UstawWartosc(std::string_view bajty) { bajty_ = bajty; }

    [[nodiscard]] TWariant GetJakoVariant() const override;
    void SetJakoVariant(const TWariant& wartosc) override;
    [[nodiscard]] std::u16string GetJakoString() const override;
    // A character that the code page lacks becomes "?".
    void SetJakoString(std::u16string_view tekst) override;
    // The bytes as they are, both ways.
    [[nodiscard]] std::string GetJakoZTAnsiString() const override;
    void SetJakoZTAnsiString(std::string_view bajty) override;
    void ZerujDane() override;
    [[nodiscard]] std::u16string WartWgMaski(std::u16string_view maska,
                                             const TUstawieniaFormatu* ustawienia = nullptr) const override;
    void KopiujDane(const TPole& zrodlo, TKopierDanych* kopier = nullptr) override;
    // Byte by byte; the locale is ignored.
    [[nodiscard]] std::int32_t Porownaj(const TPole& inne, TPorownywaczDanych* porownywacz = nullptr) const override;
    void ZapiszWStrumieniu(TStrumien& strumien, TZapisywaczDanych* zapisywacz) const override;
    void WczytajZeStrumienia(TStrumien& strumien, TOdczytywaczDanych* odczytywacz) override;
    void ZapiszTekstowo(TStrumien& strumien, TZapisywaczTekstu* zapisywacz) const override;
    void WczytajTekstowo(TStrumien& strumien, TOdczytywaczTekstu* odczytywacz) override;

  private:
    std::string bajty_;
};

// Wide text, whose form as plain text is its UTF-8 carried one byte a character: so it passes unchanged through the
// 8-bit paths. Orders by code unit unless a locale says otherwise.
class ZTOK_API TPoleWideString : public TPole {
    ZTOK_KLASA_DEKL(TPoleWideString)
    static constexpr std::uint32_t CechyKlasy = ckPole | ckPoleTekstowe;
    static constexpr std::uint8_t KodPola = kpWideString;

    TPoleWideString() noexcept = default;
    ~TPoleWideString() override;

    // Valid until the next change of the field.
    [[nodiscard]] std::u16string_view Wartosc() const noexcept { return tekst_.Widok(); }
    void UstawWartosc(std::u16string_view tekst) { tekst_.Ustaw(tekst); }
    // Takes bytes of UTF-8, or of Windows-1250 when they are no UTF-8.
    void UstawTrescUTF8(std::string_view bajty);

    [[nodiscard]] TWariant GetJakoVariant() const override;
    void SetJakoVariant(const TWariant& wartosc) override;
    [[nodiscard]] std::u16string GetJakoString() const override;
    void SetJakoString(std::u16string_view tekst) override;
    void ZerujDane() override;
    [[nodiscard]] std::u16string WartWgMaski(std::u16string_view maska,
                                             const TUstawieniaFormatu* ustawienia = nullptr) const override;
    void KopiujDane(const TPole& zrodlo, TKopierDanych* kopier = nullptr) override;
    [[nodiscard]] std::int32_t Porownaj(const TPole& inne, TPorownywaczDanych* porownywacz = nullptr) const override;
    [[nodiscard]] std::int32_t PorownajZCecha(const TArgument& cecha, TRozmiarLiter rozmLiter,
                                              std::uint32_t localeID) const override;
    void ZapiszWStrumieniu(TStrumien& strumien, TZapisywaczDanych* zapisywacz) const override;
    void WczytajZeStrumienia(TStrumien& strumien, TOdczytywaczDanych* odczytywacz) override;
    void ZapiszTekstowo(TStrumien& strumien, TZapisywaczTekstu* zapisywacz) const override;
    void WczytajTekstowo(TStrumien& strumien, TOdczytywaczTekstu* odczytywacz) override;

  private:
    TTekstPola tekst_;
};

static_assert(sizeof(TPoleString) == 2 * sizeof(void*));

} // namespace ztok
