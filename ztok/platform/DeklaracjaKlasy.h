// How a class declares its class reference.
//
// A class of the library says ZTOK_KLASA_DEKL(T) in its body and ZTOK_KLASA_DEF(T, Baza) in its source, so that the
// reference is one object that the library exports. Applications use ZTOK_OBIEKT and ZTOK_LISTA
// (kernel/DeklaracjaObiektu.h), which need no source.
#pragma once

#include <atomic>
#include <cstring>
#include <type_traits>

#include "ztok/platform/TObiektOgolny.h"

namespace ztok {

namespace szczegoly {

// Whether this module has made an object of exactly class T.
template <class T> ZTOK_LOKALNE inline constinit std::atomic<bool> utworzono{false};

// The first object of the class: the library meets the class, and learns what its objects begin with.
template <class T, class... A> T* UtworzPierwszy(A&&... argumenty) {
    PoznajKlase(T::KlasaStatyczna());
    T* obiekt = TPrzydzial::Nowy<T>(std::forward<A>(argumenty)...);
    const void* wzorzec = nullptr;
    std::memcpy(&wzorzec, static_cast<const void*>(obiekt), sizeof wzorzec);
    T::KlasaStatyczna()->stan->wzorzec.store(wzorzec, std::memory_order_relaxed);
    utworzono<T>.store(true, std::memory_order_relaxed);
    return obiekt;
}

} // namespace szczegoly

// Makes an object of exactly class T. Objects of the model are told which hooks their class replaces, and make their
// lock. The caller owns the object. Prefer Utworz.
template <class T, class... A> T* UtworzSurowy(A&&... argumenty) {
    szczegoly::WymagajMakra<T>();
    T* obiekt = szczegoly::utworzono<T>.load(std::memory_order_relaxed)
                    ? TPrzydzial::Nowy<T>(std::forward<A>(argumenty)...)
                    : szczegoly::UtworzPierwszy<T>(std::forward<A>(argumenty)...);
    if constexpr ((T::CechyKlasy & ckObiektBazowy) != 0) {
        TWlasny<T> straznik(obiekt);
        TPrzydzial::PoUtworzeniu(*obiekt, T::CechyKlasy | TObiektOgolny::CechyWlasne<T>());
        return straznik.Oddaj();
    } else {
        return obiekt;
    }
}

// Makes an object of exactly class T and hands it over. The arguments are the constructor's; for an object of the model
// the first is its owner, which becomes its parent and does not hold it.
template <class T, class... A> [[nodiscard]] TWlasny<T> Utworz(A&&... argumenty) {
    return TWlasny<T>(UtworzSurowy<T>(std::forward<A>(argumenty)...));
}

namespace szczegoly {

// The virtual constructor of class T.
template <class T> TObiektOgolny* UtworzWKlasie(TObiektBazowy* wlasciciel) {
    if constexpr ((T::CechyKlasy & ckObiektBazowy) != 0)
        return UtworzSurowy<T>(wlasciciel);
    else
        return UtworzSurowy<T>();
}

// The class of a base, which may be a template between two classes, such as TListaTypu, with no class of its own.
template <class T> const TKlasa* KlasaBazy() noexcept { return T::KlasaStatyczna(); }

template <class T> constexpr auto KonstruktorWirtualny() noexcept {
    using TFunkcja = TObiektOgolny* (*)(TObiektBazowy*);
    static_assert(std::is_convertible_v<T*, TObiektOgolny*>, "the class does not say `public` before its base");
    if constexpr (std::is_convertible_v<T*, TObiektOgolny*>) {
        constexpr bool doModelu = (T::CechyKlasy & ckObiektBazowy) != 0;
        constexpr bool zWlascicielem = doModelu && std::is_constructible_v<T, TObiektBazowy*>;
        constexpr bool bezWlasciciela = !doModelu && std::is_default_constructible_v<T>;
        if constexpr (!std::is_abstract_v<T> && (zWlascicielem || bezWlasciciela))
            return TFunkcja{&UtworzWKlasie<T>};
        else
            return TFunkcja{nullptr};
    } else {
        return TFunkcja{nullptr};
    }
}

template <class T> constexpr auto WierszeInterfejsow() noexcept {
    using TFunkcja = std::span<const TWierszInterfejsu> (*)() noexcept;
    if constexpr (requires { T::InterfejsyKlasy(); })
        return TFunkcja{&T::InterfejsyKlasy};
    else
        return TFunkcja{nullptr};
}

template <class T> constexpr auto WierszePol() noexcept {
    using TFunkcja = std::span<const TWierszPola> (*)() noexcept;
    // The tag keeps a class without rows from repeating those of its base.
    if constexpr (requires { T::PolaKlasy(std::type_identity<T>{}); })
        return TFunkcja{[]() noexcept { return T::PolaKlasy(std::type_identity<T>{}); }};
    else
        return TFunkcja{nullptr};
}

template <class T> constexpr auto KlasaElementow() noexcept {
    using TFunkcja = const TKlasa* (*)();
    if constexpr (requires { T::TypObiektow(); })
        return TFunkcja{&T::TypObiektow};
    else
        return TFunkcja{nullptr};
}

} // namespace szczegoly
} // namespace ztok

// The class reference as a constant; T is complete in the function body where this stands.
#define ZTOK_DANE_KLASY(T, Baza, nazwaKlasy)                                                                           \
    static constinit ::ztok::TStanKlasy stan;                                                                          \
    static constinit const ::ztok::TKlasa klasa = {                                                                    \
        nazwaKlasy,                                                                                                    \
        &::ztok::szczegoly::KlasaBazy<Baza>,                                                                           \
        ::ztok::szczegoly::KonstruktorWirtualny<T>(),                                                                  \
        T::CechyKlasy | ::ztok::TObiektOgolny::CechyWlasne<T>(),                                                       \
        T::KodPola,                                                                                                    \
        T::KodPola != Baza::KodPola,                                                                                   \
        ::ztok::szczegoly::WierszePol<T>(),                                                                            \
        ::ztok::szczegoly::WierszeInterfejsow<T>(),                                                                    \
        ::ztok::szczegoly::KlasaElementow<T>(),                                                                        \
        &::ztok::ModulBiezacy,                                                                                         \
        &stan,                                                                                                         \
        sizeof(T),                                                                                                     \
    };                                                                                                                 \
    return &klasa

#define ZTOK_KLASA_DEKL(T)                                                                                             \
  public:                                                                                                              \
    static const ::ztok::TKlasa* KlasaStatyczna() noexcept;                                                            \
    [[nodiscard]] const ::ztok::TKlasa* Klasa() const noexcept override;                                               \
                                                                                                                       \
  private:                                                                                                             \
    friend class ::ztok::TObiektOgolny;                                                                                \
                                                                                                                       \
  public:

#define ZTOK_KLASA_DEF(T, Baza)                                                                                        \
    const ::ztok::TKlasa* T::KlasaStatyczna() noexcept { ZTOK_DANE_KLASY(T, Baza, u## #T); }                           \
    const ::ztok::TKlasa* T::Klasa() const noexcept { return T::KlasaStatyczna(); }
