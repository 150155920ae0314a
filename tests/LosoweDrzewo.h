// Random trees of the sample classes, the same for a seed on every target: every kind of field, extreme numbers, any
// UTF-16 text, nested lists and collections, arrays of mixed values, pointers and references inside the tree.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "Probki.h"
#include "StrumienieTestowe.h"

namespace probki {

class TLosoweDrzewo {
  public:
    explicit TLosoweDrzewo(std::uint32_t ziarno) : los_(ziarno) {}

    // Fills the object, nested at most so deep, and points the pointers of the tree at its objects.
    void Wypelnij(TWszystko& korzen, int glebokosc) {
        wszystkie_.clear();
        adresy_.clear();
        budowane_.clear();
        Buduj(korzen, glebokosc);
        for (TWszystko* o : budowane_)
            Powiaz(*o);
    }

    std::u16string Tekst() {
        static constexpr char16_t zakresy[][2] = {
            {1, 0x7F}, {0xA0, 0x17F}, {0x3040, 0x9FFF}, {0xD800, 0xDFFF}, {0, 0xFFFF}};
        static constexpr std::size_t dlugosci[] = {0, 1, 2, 5, 42, 43, 127, 128, 300, 6000};
        std::size_t dlugosc = dlugosci[Z(Z(8) == 0 ? 10 : 7)];
        std::u16string tekst;
        const auto& zakres = zakresy[Z(5)];
        while (dlugosc-- > 0)
            tekst += static_cast<char16_t>(zakres[0] + Z(zakres[1] - zakres[0] + 1U));
        return tekst;
    }

    std::uint32_t Z(std::size_t ile) { return static_cast<std::uint32_t>(los_() % ile); }

    bool warianty = false; // among the elements of arrays: the text form alone has a place for them

  private:
    template <class W> W Liczba() {
        const auto losowa = static_cast<std::uint64_t>(los_()) << 32U | los_();
        if constexpr (std::is_same_v<W, double>) {
            static constexpr double brzegi[] = {-0.0, 5e-324, 1.7976931348623157e308, -1e-9,
                                                std::numeric_limits<double>::infinity()};
            const double dowolna = std::bit_cast<double>(losowa);
            return Z(2) == 0 || dowolna != dowolna ? brzegi[Z(5)] : dowolna;
        } else {
            static constexpr W brzegi[] = {std::numeric_limits<W>::min(), std::numeric_limits<W>::max(), 0, 1};
            return Z(2) == 0 ? brzegi[Z(4)] : static_cast<W>(losowa);
        }
    }

    bool Tak() { return Z(2) == 0; }

    std::string Bajty() { return strumienie::LosoweBajty(los_, Z(300)); }

    // Values for some of the fields, of what each of them takes.
    template <class K, class... W> void Ustaw(K& o, void (K::*... pola)(W)) {
        const auto ustaw = [&]<class T>(void (K::*pole)(T)) {
            if (!Tak())
                return;
            if constexpr (std::is_same_v<T, ztok::TBajtLogiczny>)
                (o.*pole)(Tak());
            else if constexpr (std::is_same_v<T, std::string_view>)
                (o.*pole)(Bajty());
            else if constexpr (std::is_same_v<T, std::u16string_view>)
                (o.*pole)(Tekst());
            else
                (o.*pole)(Liczba<T>());
        };
        (ustaw(pola), ...);
    }

    // Any ten bytes, or a number that eight hold.
    long double Rzeczywista() {
        if (Tak())
            return Liczba<double>();
        const std::uint32_t bity[] = {static_cast<std::uint32_t>(los_()), static_cast<std::uint32_t>(los_()),
                                      static_cast<std::uint32_t>(los_())};
        long double liczba = 0;
        std::memcpy(&liczba, bity, 10);
        return liczba;
    }

    ztok::TWariant Wariant(std::uint32_t glebokosc) {
        using namespace ztok;
        const std::string bajty = Bajty();
        const std::u16string tekst = Tekst();
        const std::vector<TWariant> wartosci = {{},
                                                TWariant::Null(),
                                                Liczba<std::int8_t>(),
                                                Liczba<std::uint8_t>(),
                                                Liczba<std::int16_t>(),
                                                Liczba<std::uint16_t>(),
                                                Liczba<std::int32_t>(),
                                                Liczba<std::uint32_t>(),
                                                Liczba<std::int64_t>(),
                                                Liczba<std::uint64_t>(),
                                                static_cast<float>(Liczba<std::int32_t>()) / 7,
                                                Liczba<double>(),
                                                TDataCzas{Liczba<double>()},
                                                TWaluta{Liczba<std::int64_t>()},
                                                Tak(),
                                                TWariant::AnsiString(bajty),
                                                TWariant::WideString(tekst),
                                                tekst};
        if (const std::uint32_t i = Z(wartosci.size() + glebokosc); i < wartosci.size())
            return wartosci[i];
        std::vector<TWariant> elementy;
        for (std::uint32_t i = Z(4); i > 0; --i)
            elementy.push_back(Wariant(glebokosc - 1));
        return TWariant::Tablica(std::move(elementy));
    }

    // Sometimes nothing, sometimes an empty list that counts as a value.
    template <class L, class F> void Wypelnij(L& lista, const F& wartosc) {
        if (Tak())
            return;
        lista.UstawNiepuste(ztok::CalyObiekt, true);
        for (std::uint32_t i = Z(4); i > 0; --i)
            lista.Dodaj(wartosc());
        if (lista.Ile() == 3) // longer than a line of the text form
            for (std::uint32_t i = Z(30); i > 0; --i)
                lista.Dodaj(wartosc());
    }

    void Buduj(TAdres& adres) {
        wszystkie_.push_back(&adres);
        adresy_.push_back(&adres);
        Ustaw(adres, &TAdres::SetUlica<>, &TAdres::SetNumer<>, &TAdres::SetMiasto<>);
    }

    void Buduj(TWszystko& o, int glebokosc) {
        wszystkie_.push_back(&o);
        budowane_.push_back(&o);
        using T = TWszystko;
        Ustaw(o, &T::SetB<>, &T::SetS<>, &T::SetW<>, &T::SetI<>, &T::SetC<>, &T::SetL<>, &T::SetD<>, &T::SetTak<>,
              &T::SetNazwa<>, &T::SetBajty<>, &T::SetSzeroki<>, &T::SetOpis<>);
        if (Tak()) {
            Buduj(o.GetAdres());
            o.GetAdres().SetNumer(1); // without any value it takes no part in a write, nor what points at it
        }
        for (std::uint32_t i = Z(4); i > 0; --i)
            Buduj(o.GetAdresy().Dopisz());
        Wypelnij(o.GetLiczby(), [&] { return Liczba<std::int32_t>(); });
        Wypelnij(o.GetUlamki(), [&] { return Liczba<double>(); });
        Wypelnij(o.GetTeksty(), [&] { return Tekst(); });
        Wypelnij(o.GetTekstySzerokie(), [&] { return Tekst(); });
        if (Tak())
            Buduj(o.GetTablica(), glebokosc);
        if (glebokosc > 0) {
            for (std::uint32_t i = Z(4); i > 0; --i)
                Buduj(o.GetPodrzedne().Dopisz(), glebokosc - 1);
            for (std::uint32_t i = Z(4); i > 0; --i) {
                if (Tak())
                    Buduj(static_cast<TAdres&>(*o.GetRozne().Dodaj(ztok::Utworz<TAdres>())));
                else
                    Buduj(static_cast<TWszystko&>(*o.GetRozne().Dodaj(ztok::Utworz<TWszystko>())), glebokosc - 1);
            }
        }
    }

    void Buduj(ztok::TArrayOfConst& tablica, int glebokosc) {
        using namespace ztok;
        wszystkie_.push_back(&tablica);
        tablica.UstawNiepuste(CalyObiekt, true);
        for (std::uint32_t i = Z(8); i > 0; --i) {
            const auto liczba = Liczba<std::int64_t>();
            const std::string bajty = Bajty();
            const std::u16string tekst = Tekst();
            const TArgument wartosci[] = {static_cast<std::int32_t>(liczba),
                                          TArgument::BajtLogiczny(Tak() ? 1 : 0),
                                          static_cast<char>(liczba),
                                          Rzeczywista(),
                                          TArgument::ShortString(bajty),
                                          nullptr,
                                          TArgument::PChar(bajty),
                                          static_cast<const TObiektOgolny*>(nullptr),
                                          Tak() ? TAdres::KlasaStatyczna() : nullptr,
                                          static_cast<char16_t>(liczba),
                                          TArgument::PWideChar(tekst),
                                          bajty,
                                          TWaluta{liczba},
                                          static_cast<IInterfejs*>(nullptr),
                                          TArgument::WideString(tekst),
                                          liczba,
                                          tekst,
                                          warianty ? TArgument(Wariant(3)) : TArgument(0)};
            const std::uint32_t ktora = Z(std::size(wartosci) + 3);
            if (ktora < std::size(wartosci))
                tablica.Dodaj(wartosci[ktora]);
            else if (ktora % 3 == 0 || glebokosc == 0)
                Buduj(static_cast<TAdres&>(*tablica.DodajObiekt(Utworz<TAdres>())));
            else if (ktora % 3 == 1)
                Buduj(static_cast<TWszystko&>(*tablica.DodajObiekt(Utworz<TWszystko>())), glebokosc - 1);
            else
                Buduj(static_cast<TArrayOfConst&>(*tablica.DodajObiekt(Utworz<TArrayOfConst>())), glebokosc - 1);
        }
    }

    void Powiaz(TWszystko& o) {
        if (Tak())
            o.SetWskaznik(budowane_[Z(budowane_.size())]);
        if (!adresy_.empty() && Tak())
            o.SetReferencja(adresy_[Z(adresy_.size())]);
        for (std::uint32_t i = Z(4); i > 0; --i)
            o.GetWskazywane().DodajObiekt(wszystkie_[Z(wszystkie_.size())], ztok::MaxInt);
        for (std::uint32_t i = Z(4); i > 0; --i)
            o.GetPowiazane().DodajObiekt(wszystkie_[Z(wszystkie_.size())], ztok::MaxInt);
    }

    std::mt19937 los_;
    std::vector<ztok::TObiektBazowy*> wszystkie_;
    std::vector<TAdres*> adresy_;
    std::vector<TWszystko*> budowane_;
};

} // namespace probki
