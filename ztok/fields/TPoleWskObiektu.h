// Fields that point at other objects of the model.
#pragma once

#include "ztok/fields/TPole.h"

namespace ztok {

// A plain pointer; it does not own its target and does not hear when the target dies.
class ZTOK_API TPoleWskObiektu : public TPole {
    ZTOK_KLASA_DEKL(TPoleWskObiektu)
    static constexpr std::uint32_t CechyKlasy = ckPole | ckPoleWsk;
    static constexpr std::uint8_t KodPola = kpWskObiektu;

    TPoleWskObiektu() noexcept = default;
    ~TPoleWskObiektu() override;

    [[nodiscard]] TObiektBazowy* Obiekt() const noexcept { return obiekt_; }
    // Points at the object; a reference field registers itself with it. Null points at nothing.
    virtual void UstawObiekt(TObiektBazowy* obiekt);

    // The address as a number: for diagnostics and raw transfer. Setting registers nothing.
    [[nodiscard]] TWariant GetJakoVariant() const override;
    void SetJakoVariant(const TWariant& wartosc) override;
    [[nodiscard]] std::u16string GetJakoString() const override;
    void SetJakoString(std::u16string_view tekst) override;
    void ZerujDane() override;
    // The target's own WartWgMaski; empty when there is no target.
    [[nodiscard]] std::u16string WartWgMaski(std::u16string_view maska,
                                             const TUstawieniaFormatu* ustawienia = nullptr) const override;
    // The object is shared, not cloned; the copier re-points at the end of the copy.
    void KopiujDane(const TPole& zrodlo, TKopierDanych* kopier = nullptr) override;
    // Compares the objects pointed at, or their paths when the comparer asks for that. Null sorts first.
    [[nodiscard]] std::int32_t Porownaj(const TPole& inne, TPorownywaczDanych* porownywacz = nullptr) const override;
    // The number of the target in the stream. The record leaves the field out when the target has none.
    void ZapiszWStrumieniu(TStrumien& strumien, TZapisywaczDanych* zapisywacz) const override;
    // The number goes to the reader, which resolves it at the end; until then the field is null.
    void WczytajZeStrumienia(TStrumien& strumien, TOdczytywaczDanych* odczytywacz) override;
    void ZapiszTekstowo(TStrumien& strumien, TZapisywaczTekstu* zapisywacz) const override;
    void WczytajTekstowo(TStrumien& strumien, TOdczytywaczTekstu* odczytywacz) override;

  protected:
    void WykonajDestrukcje() override;

    TObiektBazowy* obiekt_ = nullptr;

  private:
    friend class TKopierDanych;
    void UstawAdres(std::intptr_t adres);
};

// A registered pointer: while it points at an object, it is in the object's set of incoming references, and an object
// that dies clears it.
class ZTOK_API TPoleRefObiektu : public TPoleWskObiektu {
    ZTOK_KLASA_DEKL(TPoleRefObiektu)
    static constexpr std::uint32_t CechyKlasy = ckPole | ckPoleWsk | ckPoleRef;

    TPoleRefObiektu() noexcept = default;
    ~TPoleRefObiektu() override;

    void UstawObiekt(TObiektBazowy* obiekt) override;
    void ZerujRefDo(TObiektBazowy* cel) override;
    void ZerujDane() override;
    void KopiujDane(const TPole& zrodlo, TKopierDanych* kopier = nullptr) override;
};

// Event: a function of the caller's with the caller's data; called with the field as sender.
struct TZdarzeniePola {
    void (*funkcja)(void* dane, TPole& nadawca) = nullptr;
    void* dane = nullptr;
    explicit operator bool() const noexcept { return funkcja != nullptr; }
};

// A reference that tells when it is cleared because its target dies; it still points at the target then. The event may
// free the field, change it, or raise: the pointer is cleared all the same.
class ZTOK_API TPoleRefZeZdarz : public TPoleRefObiektu {
    ZTOK_KLASA_DEKL(TPoleRefZeZdarz)

    TPoleRefZeZdarz() noexcept = default;
    ~TPoleRefZeZdarz() override;

    void ZerujRefDo(TObiektBazowy* cel) override;

    TZdarzeniePola OnZerujRefDo;

  private:
    bool* zginelo_ = nullptr; // told when the field dies during its event
};

} // namespace ztok
