// Parameter objects: what is passed to an edit function in place of the owner of its dialog.
#pragma once

#include <atomic>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "ztok/kernel/TObiektBazowy.h"
#include "ztok/platform/Interfejsy.h"

namespace ztok {

// A counted object. It starts with the count 0 and belongs to its maker until the first reference is taken; the last
// _Release frees it, and errors of its end go to the user notice. Hold it by a TIntf. Counting is safe from any thread.
// Never on the stack, where nobody may free it; it is no data, so it has no copy, no comparison and no stream.
class ZTOK_API TZTParamBazowy : public TObiektBazowy {
    ZTOK_KLASA_DEKL(TZTParamBazowy)
    static constexpr std::uint32_t CechyKlasy = ckPole | ckObiektBazowy | ckParametr;

    ~TZTParamBazowy() override;

    // NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): as in IInterfejs
    std::int32_t _AddRef() noexcept override;
    std::int32_t _Release() noexcept override;
    // NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
    // References held now: for tests and diagnostics, outdated at once when other threads count too.
    [[nodiscard]] std::int32_t LiczbaReferencji() const noexcept { return licznik_.load(std::memory_order_relaxed); }
    void ZerujDane() override;

  protected:
    friend struct TPrzydzial;
    explicit TZTParamBazowy(TObiektBazowy* wlasciciel = nullptr) : TObiektBazowy(wlasciciel) {}

  private:
    std::atomic<std::int32_t> licznik_{0};
};

// Values by index and by name, with the owner and the flag that the edit function would have been given. It holds the
// objects of the model among its values, and the owner, by registered pointers: one that dies becomes null here.
// Interfaces are held counted; all other objects and pointers are the caller's, who keeps them as long as they are
// used. An edit function may set values, for its caller to read. For one thread at a time.
class ZTOK_API TZTParam : public TZTParamBazowy {
    ZTOK_KLASA_DEKL(TZTParam)

    ~TZTParam() override;

    [[nodiscard]] std::int32_t Ile() const noexcept { return static_cast<std::int32_t>(pozycje_.size()); }
    // The index of the value with the name, in any letter case; -1 when there is none.
    [[nodiscard]] std::int32_t NrWartosci(std::u16string_view nazwa) const noexcept;
    // The name of a value; empty for one without and for an index out of range.
    [[nodiscard]] std::u16string_view NazwaWartosci(std::int32_t nr) const noexcept;
    // The value; valid until the parameters change. ZTException when there is none.
    [[nodiscard]] const TArgument& Wartosc(std::int32_t nr) const;
    [[nodiscard]] const TArgument& Wartosc(std::u16string_view nazwa) const;
    // Adds a value without a name.
    void Dodaj(const TArgument& wartosc) { Dolacz({}, wartosc); }
    // Replaces a value: ZTException for an index out of range; a value with a new name is added.
    void Ustaw(std::int32_t nr, const TArgument& wartosc);
    void Ustaw(std::u16string_view nazwa, const TArgument& wartosc);

    [[nodiscard]] TObiektBazowy* Wlasciciel() const noexcept { return wlasciciel_; }
    void UstawWlasciciela(TObiektBazowy* wlasciciel);
    [[nodiscard]] bool Flaga() const noexcept { return flaga_; }
    void UstawFlage(bool flaga) noexcept { flaga_ = flaga; }

    void ZerujDane() override;
    void ZerujRefDo(TObiektBazowy* cel) override;
    [[nodiscard]] std::u16string OpisTekstowy() const override;

  protected:
    friend struct TPrzydzial;
    using TZTParamBazowy::TZTParamBazowy;

  private:
    struct TPozycja {
        std::u16string nazwa;
        TArgument wartosc;
        TIntf<IInterfejs> interfejs;
        TObiektBazowy* obiekt = nullptr; // the value, when it is an object of the model
    };

    static TPozycja Pozycja(std::u16string_view nazwa, const TArgument& wartosc);
    void Dolacz(std::u16string_view nazwa, const TArgument& wartosc);
    void Podmien(TPozycja& pozycja, const TArgument& wartosc);
    void Wypisz(TObiektBazowy* obiekt);

    std::vector<TPozycja> pozycje_;
    TObiektBazowy* wlasciciel_ = nullptr;
    bool flaga_ = false;
};

// Makes a parameter object: pole.EdytujDane(ZTParam({u"Kopia", 2}).get(), true). With names, both arrays are of one
// length (ZTException), and a name is a text.
[[nodiscard]] ZTOK_API TIntf<TZTParam> ZTParam(TArgumenty wartosci, TObiektBazowy* wlasciciel = nullptr,
                                               bool flaga = false);
[[nodiscard]] ZTOK_API TIntf<TZTParam> ZTParam(TArgumenty nazwy, TArgumenty wartosci,
                                               TObiektBazowy* wlasciciel = nullptr, bool flaga = false);
[[nodiscard]] inline TIntf<TZTParam> ZTParam(std::initializer_list<TArgument> wartosci,
                                             TObiektBazowy* wlasciciel = nullptr, bool flaga = false) {
    return ZTParam(TArgumenty(wartosci.begin(), wartosci.size()), wlasciciel, flaga);
}
[[nodiscard]] inline TIntf<TZTParam> ZTParam(std::initializer_list<TArgument> nazwy,
                                             std::initializer_list<TArgument> wartosci,
                                             TObiektBazowy* wlasciciel = nullptr, bool flaga = false) {
    return ZTParam(TArgumenty(nazwy.begin(), nazwy.size()), TArgumenty(wartosci.begin(), wartosci.size()), wlasciciel,
                   flaga);
}

// The parameters that an edit function was given as its owner; null when it was given another owner or none.
[[nodiscard]] ZTOK_API TZTParam* JakoParametry(TObiektBazowy* wlasciciel) noexcept;

} // namespace ztok
