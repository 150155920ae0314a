// The field: base of every value holder of the model, and of its objects.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

#include "ztok/fields/TypyPol.h"
#include "ztok/platform/TArgument.h"
#include "ztok/platform/TTrwaly.h"

namespace ztok {

class TKopierDanych;
class TObiektBazowy;
class TOdczytywaczDanych;
class TOdczytywaczTekstu;
class TOdczytywaczXML;
class TPorownywaczDanych;
class TStrumien;
class TWariant;
class TZapisywaczDanych;
class TZapisywaczTekstu;
class TZapisywaczXML;
struct TGUID;
struct TUstawieniaFormatu;

// A field holds one value; TPole itself holds none. The object whose field it is owns it (TObiekt::UstawPole).
// A new field's value is zero. Operations that a class does not supply raise EBladAbstrakcyjny. The order of the
// virtual operations is part of the interface. A field is not locked: its object is.
class ZTOK_API TPole : public TTrwaly {
    ZTOK_KLASA_DEKL(TPole)
    static constexpr std::uint32_t CechyKlasy = ckPole;

    TPole() noexcept = default;
    ~TPole() override;

    // Reference counting is off: no interface reference frees a field. Both answer -1.
    virtual std::int32_t
    _AddRef() noexcept; // NOLINT(bugprone-reserved-identifier): the name is fixed by the interface contract
    virtual std::int32_t
    _Release() noexcept; // NOLINT(bugprone-reserved-identifier): the name is fixed by the interface contract
    // Forgets every reference to the target, which is about to die. Nothing here.
    virtual void ZerujRefDo(TObiektBazowy* cel);
    // The value as a variant. Setting converts, and cuts an integer to the field's width; EBladWariantu when the
    // variant does not convert.
    [[nodiscard]] virtual TWariant GetJakoVariant() const;
    virtual void SetJakoVariant(const TWariant& wartosc);
    // The value as text, with the process's format settings. EBladKonwersji for a text that is no value.
    [[nodiscard]] virtual std::u16string GetJakoString() const;
    virtual void SetJakoString(std::u16string_view tekst);
    // The same as Windows-1250 bytes.
    [[nodiscard]] virtual std::string GetJakoZTAnsiString() const;
    virtual void SetJakoZTAnsiString(std::string_view bajty);
    // Gives the interface that the object's class implements: 0, or 0x80004002 and null.
    virtual std::int32_t QueryInterface(const TGUID& iid, void** wynik) noexcept;
    // Sets the value to its zero.
    virtual void ZerujDane();
    // The value shaped by a mask, for display. Null settings mean the process's. The base ignores the mask.
    [[nodiscard]] virtual std::u16string WartWgMaski(std::u16string_view maska,
                                                     const TUstawieniaFormatu* ustawienia = nullptr) const;
    // Takes the value of a field of the same class (EBladRzutowania otherwise). The copier, if any, is told.
    virtual void KopiujDane(const TPole& zrodlo, TKopierDanych* kopier = nullptr);
    // Sign of this value minus the other's. The other field must be of the same class (EBladRzutowania otherwise).
    [[nodiscard]] virtual std::int32_t Porownaj(const TPole& inne, TPorownywaczDanych* porownywacz = nullptr) const;
    // Sign of the feature minus the value: where the feature lies. Text features compare by the letter case and locale
    // given (see TypyPol.h). ZTException for a feature of a kind that has no value.
    [[nodiscard]] virtual std::int32_t PorownajZCecha(const TArgument& cecha, TRozmiarLiter rozmLiter,
                                                      std::uint32_t localeID) const;
    // Runs the edit function registered for the field's class, or else the default one; returns its answer, false when
    // there is none.
    virtual bool EdytujDane(TObiektBazowy* wlasciciel, bool flaga);
    // Binary form. Reading tells the reader about the field first.
    virtual void ZapiszWStrumieniu(TStrumien& strumien, TZapisywaczDanych* zapisywacz) const;
    virtual void WczytajZeStrumienia(TStrumien& strumien, TOdczytywaczDanych* odczytywacz);
    // Text form.
    virtual void ZapiszTekstowo(TStrumien& strumien, TZapisywaczTekstu* zapisywacz) const;
    virtual void WczytajTekstowo(TStrumien& strumien, TOdczytywaczTekstu* odczytywacz);
    // XML form.
    virtual void ZapiszXMLowo(TStrumien& strumien, TZapisywaczXML* zapisywacz) const;
    virtual void WczytajXMLowo(TStrumien& strumien, TOdczytywaczXML* odczytywacz);

    // Raises EBladAsercji unless the variant's type code is one of those given.
    void SprawdzVarType(const TWariant& wartosc, std::span<const std::uint16_t> dozwolone) const;
    // "class: value out of range = value", for messages.
    [[nodiscard]] std::u16string InfoWartPozaZakresem(const TWariant& wartosc) const;

    // Without an owner, and with the arguments as a parameter object (TZTParam) in its place.
    bool EdytujDane(bool flaga);
    bool EdytujDane(TArgumenty argumenty, bool flaga);
    // Braces are arguments here, not a null owner.
    bool EdytujDane(std::initializer_list<TArgument> argumenty, bool flaga) {
        return EdytujDane(TArgumenty(argumenty.begin(), argumenty.size()), flaga);
    }
    // As EdytujDane; the search for an edit function goes up from the field's class to the class limit, which is asked
    // too (null: the field's own class alone). Then the default edit function is asked. A parameter object given as the
    // owner is held meanwhile; one that nobody else holds is freed at the end.
    bool EdytujDaneWgKlasy(TObiektBazowy* wlasciciel, bool flaga, const TKlasa* granica = nullptr);

    // The text for descriptions: one line, "?" for a value that has no text, as a date beyond the calendar. A
    // description must not fail.
    [[nodiscard]] std::u16string TekstDoOpisu() const;

    // Whether a plain value is at its default, and a pointer null; objects of the model answer false.
    [[nodiscard]] bool MaDefWartosc() const;

  protected:
    friend class TPorownywaczDanych;
    // Raises EBladRzutowania unless the other field is of the class.
    void SprawdzKlase(const TPole& inne, const TKlasa* klasa) const {
        if (inne.Klasa() != klasa && !inne.JestKlasy(klasa))
            BladKlasy(inne, klasa);
    }
    [[noreturn]] static void BladKlasy(const TPole& inne, const TKlasa* klasa);
    [[noreturn]] static void BladAbstrakcyjny(const TKlasa* klasa, std::u16string_view operacja);
    // The base step of reading and copying, inline for fields that a plain reader does not ask about.
    static void ZglosOdczyt(TPole& pole, TOdczytywaczDanych* odczytywacz);
};

// Edit function of a class: the field to edit, the owner of the dialog or parameters, and a flag of the caller's.
using TFunEdycji = bool (*)(TPole& pole, TObiektBazowy* wlasciciel, bool flaga);

// Called when no class has an edit function; null by default.
extern ZTOK_API TFunEdycji DefFunEdycji;

} // namespace ztok
