// How an application declares its classes.
//
//     class TListaPozycji;
//     class TFaktura : public ztok::TObiekt {
//         ZTOK_OBIEKT(TFaktura, ztok::TObiekt,
//                     (0, Numer, String),
//                     (1, Rabat, Double),
//                     (2, Pozycje, Obiekt<TListaPozycji>))
//     };
//     class TListaFaktur : public ztok::TListaTypu<TFaktura> {
//         ZTOK_LISTA(TListaFaktur, TFaktura)
//     };
//     ztok::RejestrujKlasy<TFaktura, TListaFaktur>();
//
// Each row declares one field: number, name, kind. From it come the row of the class's field table, the constant
// `nrNumer`, and the accessors `GetNumer` and `SetNumer`. The kinds stand in namespace ztok::rodzaj below. The whole
// class is in its header; a class that several modules share is found by its name in each of them.
#pragma once

#include <iterator>
#include <span>
#include <type_traits>

#include "ztok/fields/TPolaDaty.h"
#include "ztok/fields/TPolaLiczbowe.h"
#include "ztok/fields/TPolaListowe.h"
#include "ztok/fields/TPolaTekstowe.h"
#include "ztok/fields/TPoleWskObiektu.h"
#include "ztok/kernel/TObiekt.h"
#include "ztok/kernel/TWierszPola.h"

namespace ztok::rodzaj {

template <class> struct TypZapisu;
template <class W> struct TypZapisu<void (TObiekt::*)(int, W)> { using Typ = W; };

// A kind whose value goes through a typed reader and writer of TObiekt.
template <TRodzajWartosci Rodzaj, TDostep Dostep, auto Czytnik, auto Pisarz> struct Wartosc {
    using TZapis = typename TypZapisu<decltype(Pisarz)>::Typ;
    static auto Daj(const TObiekt& obiekt, int nr) { return (obiekt.*Czytnik)(nr); }
    static void Ustaw(TObiekt& obiekt, int nr, TZapis wartosc) { (obiekt.*Pisarz)(nr, wartosc); }
    static constexpr TWierszPola Wiersz(std::int32_t nr, std::u16string_view nazwa) noexcept {
        return {nr, nazwa, Rodzaj, Dostep, Dostep, {}, nullptr, nullptr};
    }
};

using Byte = Wartosc<TRodzajWartosci::Byte, TDostep::PoleByte, &TObiekt::GetPoleByte, &TObiekt::SetPoleByte>;
using Smallint =
    Wartosc<TRodzajWartosci::Smallint, TDostep::PoleSmallint, &TObiekt::GetPoleSmallint, &TObiekt::SetPoleSmallint>;
using Word = Wartosc<TRodzajWartosci::Word, TDostep::PoleWord, &TObiekt::GetPoleWord, &TObiekt::SetPoleWord>;
using Integer =
    Wartosc<TRodzajWartosci::Integer, TDostep::PoleInteger, &TObiekt::GetPoleInteger, &TObiekt::SetPoleInteger>;
using Cardinal =
    Wartosc<TRodzajWartosci::Cardinal, TDostep::PoleCardinal, &TObiekt::GetPoleCardinal, &TObiekt::SetPoleCardinal>;
using Int64 = Wartosc<TRodzajWartosci::Int64, TDostep::PoleInt64, &TObiekt::GetPoleInt64, &TObiekt::SetPoleInt64>;
using Double =
    Wartosc<TRodzajWartosci::Zmiennoprzecinkowa, TDostep::PoleDouble, &TObiekt::GetPoleDouble, &TObiekt::SetPoleDouble>;
// A real number whose declared type says that it is a date, a time or both.
template <class K, int Typ> struct Chwila : K {
    static constexpr TWierszPola Wiersz(std::int32_t nr, std::u16string_view nazwa) noexcept {
        constexpr std::u16string_view typy[] = {u"TDateTime", u"TDate", u"TTime"};
        TWierszPola wiersz = K::Wiersz(nr, nazwa);
        wiersz.typ = typy[Typ];
        return wiersz;
    }
};
using DateTime = Chwila<Wartosc<TRodzajWartosci::Zmiennoprzecinkowa, TDostep::PoleDateTime, &TObiekt::GetPoleDateTime,
                                &TObiekt::SetPoleDateTime>,
                        0>;
using Date = Chwila<
    Wartosc<TRodzajWartosci::Zmiennoprzecinkowa, TDostep::PoleDate, &TObiekt::GetPoleDate, &TObiekt::SetPoleDate>, 1>;
using Time = Chwila<
    Wartosc<TRodzajWartosci::Zmiennoprzecinkowa, TDostep::PoleTime, &TObiekt::GetPoleTime, &TObiekt::SetPoleTime>, 2>;
using Boolean =
    Wartosc<TRodzajWartosci::Boolean, TDostep::PoleBoolean, &TObiekt::GetPoleBoolean, &TObiekt::SetPoleBoolean>;
using String = Wartosc<TRodzajWartosci::String, TDostep::PoleString, &TObiekt::GetPoleString, &TObiekt::SetPoleString>;
using CDATA = Wartosc<TRodzajWartosci::String, TDostep::PoleCDATA, &TObiekt::GetPoleCDATA, &TObiekt::SetPoleCDATA>;
using RawByteString = Wartosc<TRodzajWartosci::AnsiString, TDostep::PoleRawByteString, &TObiekt::GetPoleRawByteString,
                              &TObiekt::SetPoleRawByteString>;
using WideString = Wartosc<TRodzajWartosci::WideString, TDostep::PoleWideString, &TObiekt::GetPoleWideString,
                           &TObiekt::SetPoleWideString>;

// Pointer to an object of class T, plain or registered. The reader checks the class of what the field points at.
template <class T, bool Rejestrowany> struct Wskaznik {
    using TZapis = T*;
    static T* Daj(const TObiekt& obiekt, int nr) {
        static_assert(std::is_base_of_v<TObiektBazowy, T>, "a pointer field points at an object of the model");
        TObiektBazowy* cel = Rejestrowany ? obiekt.GetPoleRefObiektu(nr) : obiekt.GetPoleWskObiektu(nr);
        return cel != nullptr && cel->JestKlasy(T::KlasaStatyczna()) ? static_cast<T*>(cel) : nullptr;
    }
    static void Ustaw(TObiekt& obiekt, int nr, T* cel) {
        if constexpr (Rejestrowany)
            obiekt.SetPoleRefObiektu(nr, cel);
        else
            obiekt.SetPoleWskObiektu(nr, cel);
    }
    static constexpr TWierszPola Wiersz(std::int32_t nr, std::u16string_view nazwa) noexcept {
        constexpr TDostep dostep = Rejestrowany ? TDostep::PoleRefObiektu : TDostep::PoleWskObiektu;
        return {nr,
                nazwa,
                Rejestrowany ? TRodzajWartosci::RefObiektu : TRodzajWartosci::WskObiektu,
                dostep,
                dostep,
                {},
                &KlasaTypu<T>,
                nullptr};
    }
};
template <class T> using Wsk = Wskaznik<T, false>;
template <class T> using Ref = Wskaznik<T, true>;

// A nested object, list or other field of the declared class. The reader makes it; a const object gives null instead.
template <class T> struct Obiekt {
    static T& Daj(TObiekt& obiekt, int nr) {
        static_assert(std::is_base_of_v<TPole, T>, "a nested field is of a class derived from TPole");
        return static_cast<T&>(obiekt.DajPoleKlasy(nr, T::KlasaStatyczna()));
    }
    static const T* Daj(const TObiekt& obiekt, int nr) {
        const TPole* pole = obiekt.Pole(nr);
        return pole != nullptr && pole->JestKlasy(T::KlasaStatyczna()) ? static_cast<const T*>(pole) : nullptr;
    }
    static constexpr TWierszPola Wiersz(std::int32_t nr, std::u16string_view nazwa) noexcept {
        return {nr, nazwa, TRodzajWartosci::Obiekt, TDostep::Obcy, TDostep::Obcy, {}, &KlasaTypu<T>, nullptr};
    }
};

// A list of texts. Lists of numbers are nested fields: Obiekt<TPoleIntList>.
struct StrList : Obiekt<TPoleStrList> {
    static constexpr TWierszPola Wiersz(std::int32_t nr, std::u16string_view nazwa) noexcept {
        return {nr, nazwa, TRodzajWartosci::StrList, TDostep::PoleStrList, TDostep::PoleStrList, {}, nullptr, nullptr};
    }
};
struct WideStrList : Obiekt<TPoleWideStrList> {
    static constexpr TWierszPola Wiersz(std::int32_t nr, std::u16string_view nazwa) noexcept {
        return {nr,      nazwa,  TRodzajWartosci::WideStrList, TDostep::PoleWideStrList, TDostep::PoleWideStrList, {},
                nullptr, nullptr};
    }
};

// Another kind, stored only when the predicate says so for the object: ZapisGdy<rodzaj::Word, &TFaktura::Wystawiona>,
// a const member function that stands before the macro in the class.
template <class K, auto Predykat> struct ZapisGdy : K {
    template <class O> static bool Zapytaj(bool (O::*predykat)() const, const TObiekt& obiekt) {
        return (static_cast<const O&>(obiekt).*predykat)();
    }
    static constexpr TWierszPola Wiersz(std::int32_t nr, std::u16string_view nazwa) noexcept {
        TWierszPola wiersz = K::Wiersz(nr, nazwa);
        wiersz.zapisywane = [](const TObiekt& obiekt) { return Zapytaj(Predykat, obiekt); };
        return wiersz;
    }
};

// A property whose value a foreign reader gives: it stands in the table and is no field of the model.
template <class K> struct Obcy {
    static constexpr TWierszPola Wiersz(std::int32_t nr, std::u16string_view nazwa) noexcept {
        TWierszPola wiersz = K::Wiersz(nr, nazwa);
        wiersz.rodzaj = wiersz.rodzaj == TRodzajWartosci::Obiekt ? TRodzajWartosci::Inny : wiersz.rodzaj;
        wiersz.czytnik = TDostep::Obcy;
        wiersz.pisarz = TDostep::Obcy;
        return wiersz;
    }
};

// A signed 8-bit property: the table knows the kind, the model has no field for it.
struct Shortint {
    static constexpr TWierszPola Wiersz(std::int32_t nr, std::u16string_view nazwa) noexcept {
        return {nr, nazwa, TRodzajWartosci::Shortint, TDostep::Obcy, TDostep::Obcy, {}, nullptr, nullptr};
    }
};

} // namespace ztok::rodzaj

// Calls macro(element) for each of the further arguments, which are parenthesised tuples.
#define ZTOK_NAWIASY ()
#define ZTOK_ROZWIN(...) ZTOK_ROZWIN_4(ZTOK_ROZWIN_4(ZTOK_ROZWIN_4(ZTOK_ROZWIN_4(__VA_ARGS__))))
#define ZTOK_ROZWIN_4(...) ZTOK_ROZWIN_3(ZTOK_ROZWIN_3(ZTOK_ROZWIN_3(ZTOK_ROZWIN_3(__VA_ARGS__))))
#define ZTOK_ROZWIN_3(...) ZTOK_ROZWIN_2(ZTOK_ROZWIN_2(ZTOK_ROZWIN_2(ZTOK_ROZWIN_2(__VA_ARGS__))))
#define ZTOK_ROZWIN_2(...) ZTOK_ROZWIN_1(ZTOK_ROZWIN_1(ZTOK_ROZWIN_1(ZTOK_ROZWIN_1(__VA_ARGS__))))
#define ZTOK_ROZWIN_1(...) __VA_ARGS__
#define ZTOK_DLA_KAZDEGO(makro, ...) __VA_OPT__(ZTOK_ROZWIN(ZTOK_DLA_KAZDEGO_KROK(makro, __VA_ARGS__)))
#define ZTOK_DLA_KAZDEGO_KROK(makro, pierwszy, ...)                                                                    \
    makro pierwszy __VA_OPT__(ZTOK_DLA_KAZDEGO_DALEJ ZTOK_NAWIASY(makro, __VA_ARGS__))
#define ZTOK_DLA_KAZDEGO_DALEJ() ZTOK_DLA_KAZDEGO_KROK

// One row: its number as a constant, and its accessors. They are templates so that the class of a nested field may be
// declared later.
#define ZTOK_DOSTEP_POLA(numer, nazwa, ...)                                                                            \
    [[maybe_unused]] static constexpr int nr##nazwa = numer;                                                           \
    template <class ZTOK_K = ::ztok::rodzaj::__VA_ARGS__> decltype(auto) Get##nazwa() {                                \
        return ZTOK_K::Daj(*this, numer);                                                                              \
    }                                                                                                                  \
    template <class ZTOK_K = ::ztok::rodzaj::__VA_ARGS__> decltype(auto) Get##nazwa() const {                          \
        return ZTOK_K::Daj(*this, numer);                                                                              \
    }                                                                                                                  \
    template <class ZTOK_K = ::ztok::rodzaj::__VA_ARGS__> void Set##nazwa(typename ZTOK_K::TZapis wartosc) {           \
        ZTOK_K::Ustaw(*this, numer, wartosc);                                                                          \
    }

#define ZTOK_WIERSZ_POLA(numer, nazwa, ...) ::ztok::rodzaj::__VA_ARGS__::Wiersz(numer, u## #nazwa),

// Body of every class of the model: its class reference, the constructors of its base, and an end of life that runs at
// the level of the whole class also for objects on the stack. Code of a class's own for the end of life goes into
// WykonajDestrukcje, which calls Bazowa::WykonajDestrukcje last.
#define ZTOK_KLASA_MODELU(T, Baza)                                                                                     \
  public:                                                                                                              \
    using Bazowa = Baza;                                                                                               \
    using Bazowa::Bazowa;                                                                                              \
    ~T() override { this->DokonczZycie(); }                                                                            \
    static const ::ztok::TKlasa* KlasaStatyczna() noexcept { ZTOK_DANE_KLASY(T, Bazowa, u## #T); }                     \
    [[nodiscard]] const ::ztok::TKlasa* Klasa() const noexcept override { return T::KlasaStatyczna(); }                \
                                                                                                                       \
  private:                                                                                                             \
    friend class ::ztok::TObiektOgolny;                                                                                \
                                                                                                                       \
  public:

// An object with fields (or a collection); the rows may be none.
#define ZTOK_OBIEKT(T, Baza, ...)                                                                                      \
    ZTOK_KLASA_MODELU(T, Baza)                                                                                         \
    static std::span<const ::ztok::TWierszPola> PolaKlasy(std::type_identity<T> /*klasa*/) noexcept {                  \
        static constexpr ::ztok::TWierszPola wiersze[] = {ZTOK_DLA_KAZDEGO(ZTOK_WIERSZ_POLA, __VA_ARGS__){}};          \
        return std::span<const ::ztok::TWierszPola>(wiersze, std::size(wiersze) - 1);                                  \
    }                                                                                                                  \
    ZTOK_DLA_KAZDEGO(ZTOK_DOSTEP_POLA, __VA_ARGS__)

// A list that derives from ztok::TListaTypu<Element>.
#define ZTOK_LISTA(T, Element) ZTOK_KLASA_MODELU(T, ::ztok::TListaTypu<Element>)
