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
#include "ztok/kernel/MakraDeklaracji.h"
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

// What is known to be of class T. KlasaTypu has already refused a class that is not defined.
template <class T, class P> T* Jako(P* pole) noexcept {
    if constexpr (szczegoly::Zdefiniowana<T>) {
        static_assert(std::is_base_of_v<P, T>,
                      "a pointer field points at an object of the model, a nested field is one");
        return static_cast<T*>(pole);
    } else {
        return nullptr;
    }
}

// Pointer to an object of class T, plain or registered. The reader checks the class of what the field points at.
template <class T, bool Rejestrowany> struct Wskaznik {
    using TZapis = T*;
    static T* Daj(const TObiekt& obiekt, int nr) {
        TObiektBazowy* cel = Rejestrowany ? obiekt.GetPoleRefObiektu(nr) : obiekt.GetPoleWskObiektu(nr);
        return cel != nullptr && cel->JestKlasy(KlasaTypu<T>()) ? Jako<T>(cel) : nullptr;
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
    static T& Daj(TObiekt& obiekt, int nr) { return *Jako<T>(&obiekt.DajPoleKlasy(nr, KlasaTypu<T>())); }
    static const T* Daj(const TObiekt& obiekt, int nr) {
        const TPole* pole = obiekt.Pole(nr);
        return pole != nullptr && pole->JestKlasy(KlasaTypu<T>()) ? Jako<const T>(pole) : nullptr;
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

namespace ztok::szczegoly {

// The number of a row, as a type: accessors of two rows of one name differ, and the compiler tells of the constant
// alone.
template <int> struct TNumer {};

// The kind that a row names. One that the compiler did not find, and has told of, does everything: what uses the field
// has nothing to add.
template <class K> struct TRodzaj {
    struct TZapis {
        template <class W> TZapis(const W& /*wartosc*/) noexcept {}
        template <class W> operator W() const;
    };
    static TZapis Daj(const TObiekt& /*obiekt*/, int nr) { return nr; }
    static void Ustaw(TObiekt& /*obiekt*/, int /*nr*/, const TZapis& /*wartosc*/) {}
    static constexpr TWierszPola Wiersz(std::int32_t /*nr*/, std::u16string_view nazwa) noexcept {
        return {-1, nazwa, TRodzajWartosci::Inny, TDostep::Obcy, TDostep::Obcy, {}, nullptr, nullptr};
    }
};
template <class K>
requires requires { &K::Wiersz; }
struct TRodzaj<K> : K {};

inline constexpr int OstatniNumer = 32767;
// A number that two rows of the table declare a field with; -1 when there is none.
constexpr int PowtorzonyNumer(std::span<const TWierszPola> wiersze) noexcept {
    std::uint64_t zajete[(OstatniNumer + 1) / 64] = {};
    for (const TWierszPola& wiersz : wiersze) {
        const bool pole = wiersz.czytnik != TDostep::Obcy || wiersz.rodzaj == TRodzajWartosci::Obiekt;
        if (!pole || wiersz.nr < 0 || wiersz.nr > OstatniNumer)
            continue;
        std::uint64_t& slowo = zajete[wiersz.nr / 64];
        const std::uint64_t bit = std::uint64_t{1} << (static_cast<unsigned>(wiersz.nr) % 64U);
        if ((slowo & bit) != 0)
            return wiersz.nr;
        slowo |= bit;
    }
    return -1;
}
// Whether the first row of the number has the name.
constexpr bool JestPierwszy(std::span<const TWierszPola> wiersze, std::int32_t nr, std::u16string_view nazwa) noexcept {
    for (const TWierszPola& wiersz : wiersze)
        if (wiersz.nr == nr)
            return wiersz.nazwa == nazwa;
    return true;
}

// A class with numbered fields, to be made with its owner.
template <class B>
concept CWpisywalny = std::is_base_of_v<TObiekt, B> && std::is_constructible_v<B, TObiektBazowy*>;

// The nearest class of the library's among a class and its ancestors.
template <class B> struct TKlasaBiblioteki { using Typ = B; };
template <class B>
requires requires { typename B::Bazowa; }
struct TKlasaBiblioteki<B> : TKlasaBiblioteki<typename B::Bazowa> {};
// Whether it has the member that the function's constraint names.
template <class B, class F> constexpr bool MaCzlonek(F /*czlonek*/) noexcept {
    return std::is_invocable_v<F, std::type_identity<typename TKlasaBiblioteki<B>::Typ>>;
}

} // namespace ztok::szczegoly
