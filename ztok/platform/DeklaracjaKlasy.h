// Class references of the platform's own classes: one line in the class body, one in the source.
#pragma once

#include "ztok/platform/TObiektOgolny.h"

namespace ztok {

// Row of a class reference; what a class does not have stays null.
constexpr TKlasa OpiszKlase(std::u16string_view nazwa, const TKlasa* (*przodek)() noexcept, std::uint32_t cechy,
                            TStanKlasy* stan, TObiektOgolny* (*utworz)(TObiektBazowy* wlasciciel) = nullptr,
                            std::span<const TWierszInterfejsu> (*interfejsy)() noexcept = nullptr) noexcept {
    return {nazwa, przodek, utworz, cechy, nullptr, interfejsy, nullptr, stan};
}

} // namespace ztok

// In the class body; leaves the access at public.
#define ZTOK_KLASA_DEKL(T)                                                                                             \
  public:                                                                                                              \
    static const ::ztok::TKlasa* KlasaStatyczna() noexcept;                                                            \
    [[nodiscard]] const ::ztok::TKlasa* Klasa() const noexcept override;

// In the class's source, in its namespace: ZTOK_KLASA_DEF(T, Base, u"T" [, virtual constructor [, own interfaces]]).
// The reference is a constant: it is there before any initialisation runs.
#define ZTOK_KLASA_DEF(T, Baza, nazwa, ...)                                                                            \
    static ::ztok::TStanKlasy ztokStan##T{&::ztok::ModulBiezacy()};                                                    \
    static constinit const ::ztok::TKlasa ztokKlasa##T =                                                               \
        ::ztok::OpiszKlase(nazwa, &Baza::KlasaStatyczna, T::CechyKlasy, &ztokStan##T __VA_OPT__(, ) __VA_ARGS__);      \
    const ::ztok::TKlasa* T::KlasaStatyczna() noexcept { return &ztokKlasa##T; }                                       \
    const ::ztok::TKlasa* T::Klasa() const noexcept { return &ztokKlasa##T; }
