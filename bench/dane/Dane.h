// The data that everything is measured on, as plain structs: each library builds its own objects from them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace pomiary::dane {

// Another object of the data: its place in its list, which is what a file holds, and the object itself, found again
// after a read. Equal when the places are.
template <class T> struct TOdniesienie {
    std::int32_t numer = -1; // none
    const T* cel = nullptr;
    bool operator==(const TOdniesienie& inne) const { return numer == inne.numer; }
};

// One member of a struct under its name.
template <class S, class W> struct TPole {
    std::string_view nazwa; // ends with a zero
    W S::*gdzie;
};

// The structs hold texts as UTF-8 (std::string, as the peers do) or as UTF-16 (std::u16string, as ztok does). Their
// members stand in the order of ztok's field numbers.
template <class TTekst> struct TPozycjaT {
    TTekst nazwa;
    std::int32_t lp = 0;
    double ilosc = 0;
    double cena = 0;
    std::uint8_t stawka = 0;
    std::int64_t towar = 0;
    bool operator==(const TPozycjaT&) const = default;
    static constexpr auto Pola() {
        using S = TPozycjaT;
        return std::tuple{TPole{"Nazwa", &S::nazwa}, TPole{"Lp", &S::lp},         TPole{"Ilosc", &S::ilosc},
                          TPole{"Cena", &S::cena},   TPole{"Stawka", &S::stawka}, TPole{"Towar", &S::towar}};
    }
};

template <class TTekst> struct TKlientT {
    TTekst nazwa;
    TTekst ulica;
    TTekst miasto;
    std::int64_t nip = 0;
    std::uint8_t rodzaj = 0;
    bool staly = false;
    bool operator==(const TKlientT&) const = default;
    static constexpr auto Pola() {
        using S = TKlientT;
        return std::tuple{TPole{"Nazwa", &S::nazwa}, TPole{"Ulica", &S::ulica},   TPole{"Miasto", &S::miasto},
                          TPole{"Nip", &S::nip},     TPole{"Rodzaj", &S::rodzaj}, TPole{"Staly", &S::staly}};
    }
};

template <class TTekst> struct TWalutaT {
    TTekst nazwa;
    double kurs = 0;
    bool wymienna = false;
    bool operator==(const TWalutaT&) const = default;
    static constexpr auto Pola() {
        using S = TWalutaT;
        return std::tuple{TPole{"Nazwa", &S::nazwa}, TPole{"Kurs", &S::kurs}, TPole{"Wymienna", &S::wymienna}};
    }
};

template <class TTekst> struct TFakturaT {
    TTekst numer;
    double wystawiona = 0; // days since 1899-12-30
    double termin = 0;
    TOdniesienie<TKlientT<TTekst>> klient;
    TOdniesienie<TWalutaT<TTekst>> waluta;
    std::int64_t ksiegowy = 0;
    std::uint8_t rodzaj = 0;
    bool zaplacona = false;
    TTekst uwagi; // every other invoice has them
    std::vector<TPozycjaT<TTekst>> pozycje;
    bool operator==(const TFakturaT&) const = default;
    static constexpr auto Pola() {
        using S = TFakturaT;
        return std::tuple{TPole{"Numer", &S::numer},   TPole{"Wystawiona", &S::wystawiona},
                          TPole{"Termin", &S::termin}, TPole{"Klient", &S::klient},
                          TPole{"Waluta", &S::waluta}, TPole{"Ksiegowy", &S::ksiegowy},
                          TPole{"Rodzaj", &S::rodzaj}, TPole{"Zaplacona", &S::zaplacona},
                          TPole{"Uwagi", &S::uwagi},   TPole{"Pozycje", &S::pozycje}};
    }
};

template <class TTekst> struct TBazaT {
    std::vector<TFakturaT<TTekst>> faktury;
    std::vector<TKlientT<TTekst>> klienci;
    std::vector<TWalutaT<TTekst>> waluty;
    bool operator==(const TBazaT&) const = default;
    static constexpr auto Pola() {
        using S = TBazaT;
        return std::tuple{TPole{"Faktury", &S::faktury}, TPole{"Klienci", &S::klienci}, TPole{"Waluty", &S::waluty}};
    }
};

// One row of the Unicode character table; what a character lacks is empty or none.
template <class TTekst> struct TZnakT {
    std::int32_t kod = 0;
    TTekst nazwa;
    TTekst kategoria;
    TTekst kierunek;
    TTekst rozklad;
    std::uint8_t klasaLaczenia = 0;
    bool lustrzany = false;
    TOdniesienie<TZnakT> duza; // in upper, lower and title case
    TOdniesienie<TZnakT> mala;
    TOdniesienie<TZnakT> tytulowa;
    bool operator==(const TZnakT&) const = default;
    static constexpr auto Pola() {
        using S = TZnakT;
        return std::tuple{TPole{"Kod", &S::kod},
                          TPole{"Nazwa", &S::nazwa},
                          TPole{"Kategoria", &S::kategoria},
                          TPole{"Kierunek", &S::kierunek},
                          TPole{"Rozklad", &S::rozklad},
                          TPole{"KlasaLaczenia", &S::klasaLaczenia},
                          TPole{"Lustrzany", &S::lustrzany},
                          TPole{"Duza", &S::duza},
                          TPole{"Mala", &S::mala},
                          TPole{"Tytulowa", &S::tytulowa}};
    }
};

template <class TTekst> struct TZnakiT {
    std::vector<TZnakT<TTekst>> znaki;
    bool operator==(const TZnakiT&) const = default;
    static constexpr auto Pola() { return std::tuple{TPole{"Znaki", &TZnakiT::znaki}}; }
};

using TPozycja = TPozycjaT<std::string>;
using TKlient = TKlientT<std::string>;
using TWaluta = TWalutaT<std::string>;
using TFaktura = TFakturaT<std::string>;
using TBaza = TBazaT<std::string>;
using TZnak = TZnakT<std::string>;
using TZnaki = TZnakiT<std::string>;

// What a member is.
template <class T> inline constexpr bool kOdniesienie = false;
template <class T> inline constexpr bool kOdniesienie<TOdniesienie<T>> = true;
template <class T> inline constexpr bool kLista = false;
template <class T> inline constexpr bool kLista<std::vector<T>> = true;
template <class T> inline constexpr bool kTekst = std::is_same_v<T, std::string> || std::is_same_v<T, std::u16string>;

// Calls f(name, member) for each member in turn.
template <class S, class F> void KazdePole(S& struktura, const F& f) {
    std::apply([&](const auto&... pole) { (f(pole.nazwa, struktura.*pole.gdzie), ...); },
               std::remove_const_t<S>::Pola());
}

// The same values, the texts in the other form.
template <class TDo, class TZ, class F> void Przepisz(TDo& cel, const TZ& zrodlo, const F& tekst) {
    if constexpr (kTekst<TDo>) {
        cel = tekst(zrodlo);
    } else if constexpr (kLista<TDo>) {
        cel.resize(zrodlo.size());
        for (std::size_t i = 0; i < zrodlo.size(); ++i)
            Przepisz(cel[i], zrodlo[i], tekst);
    } else if constexpr (kOdniesienie<TDo>) {
        cel.numer = zrodlo.numer;
    } else if constexpr (std::is_arithmetic_v<TDo>) {
        cel = zrodlo;
    } else {
        constexpr auto doPol = TDo::Pola();
        constexpr auto zPol = TZ::Pola();
        [&]<std::size_t... Nr>(std::index_sequence<Nr...>) {
            (Przepisz(cel.*std::get<Nr>(doPol).gdzie, zrodlo.*std::get<Nr>(zPol).gdzie, tekst), ...);
        }
        (std::make_index_sequence<std::tuple_size_v<decltype(doPol)>>());
    }
}

// Calls f(reference, the list it leads to) for every reference of the tree.
template <class TTekst, class F> void KazdeOdniesienie(TBazaT<TTekst>& baza, const F& f) {
    for (auto& faktura : baza.faktury) {
        f(faktura.klient, baza.klienci);
        f(faktura.waluta, baza.waluty);
    }
}
template <class TTekst, class F> void KazdeOdniesienie(TZnakiT<TTekst>& znaki, const F& f) {
    for (auto& znak : znaki.znaki) {
        f(znak.duza, znaki.znaki);
        f(znak.mala, znaki.znaki);
        f(znak.tytulowa, znaki.znaki);
    }
}
// After a read: the objects from their places.
template <class TDane> void Rozwiaz(TDane& dane) {
    KazdeOdniesienie(dane, [](auto& odniesienie, const auto& lista) {
        odniesienie.cel = odniesienie.numer >= 0 ? &lista[static_cast<std::size_t>(odniesienie.numer)] : nullptr;
    });
}
// The places from the objects: what shows where the references lead.
template <class TDane> void UstawNumeryWgCelow(TDane& dane) {
    KazdeOdniesienie(dane, [](auto& odniesienie, const auto& lista) {
        odniesienie.numer = odniesienie.cel != nullptr ? static_cast<std::int32_t>(odniesienie.cel - lista.data()) : -1;
    });
}

// The places of objects that do not stand in an array, by address.
class TMiejsca {
  public:
    void Dodaj(const void* obiekt) { miejsca_.emplace(obiekt, static_cast<std::int32_t>(miejsca_.size())); }
    // -1 for null and for what is not there.
    [[nodiscard]] std::int32_t operator[](const void* obiekt) const {
        const auto miejsce = miejsca_.find(obiekt);
        return miejsce != miejsca_.end() ? miejsce->second : -1;
    }

  private:
    std::map<const void*, std::int32_t> miejsca_;
};

// Invoices of 1 to 9 positions, their customers and currencies: the same for the same arguments, on every machine.
[[nodiscard]] TBaza GenerujBaze(std::size_t ileFaktur);
// The table of the Unicode characters, at most so many of them; empty when the file is not there.
[[nodiscard]] TZnaki WczytajZnaki(const char* plik, std::size_t najwyzej);
// The same characters, each of which refers three times to the first one.
[[nodiscard]] TZnaki JednegoCelu(TZnaki znaki);

// Objects without the root and the lists.
[[nodiscard]] std::size_t IleObiektow(const TBaza& baza);
[[nodiscard]] std::size_t IleObiektow(const TZnaki& znaki);
// Bytes of values: texts as UTF-8, numbers at their width, references as numbers.
[[nodiscard]] std::size_t BajtyWartosci(const TBaza& baza);
[[nodiscard]] std::size_t BajtyWartosci(const TZnaki& znaki);

} // namespace pomiary::dane
