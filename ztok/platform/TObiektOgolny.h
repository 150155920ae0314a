// Root of everything that has a class name: objects of the model, streams, components, counted objects.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>

#include "ztok/platform/TKlasa.h"

namespace ztok {

class TKolekcjaObiektow;
class TListaBazowa;
class TListaObiektow;
class TListaWskObiektow;
class TObiekt;
class TPierwszyBlad;
class TPole;
class TPoleWskObiektu;
class TPorownywaczDanych;

// Who frees an object: the list or field that holds it, or anybody else.
enum class EZwalniajacy : std::uint8_t { Wlasciciel, Inny };

namespace szczegoly {

// Asked where the class is used, which is after every declaration that could follow.
template <class T> inline constexpr bool Zdefiniowana = requires { sizeof(T); };

// Refuses a class without a class macro of its own: it would live under the name, and in the size, of its base.
template <class T> constexpr void WymagajMakra() noexcept {
    static_assert(std::is_same_v<decltype(&T::Klasa), const TKlasa* (T::*)() const noexcept>,
                  "the class has no ZTOK_OBIEKT or ZTOK_LISTA of its own in its body");
}

// Whether a comparison is one of those that the comparer walks itself.
template <class> inline constexpr bool kPorownanieZnane = false;
template <class C>
inline constexpr bool kPorownanieZnane<std::int32_t (C::*)(const TPole&, TPorownywaczDanych&) const> =
    std::is_same_v<C, TObiekt> || std::is_same_v<C, TListaObiektow> || std::is_same_v<C, TKolekcjaObiektow> ||
    std::is_same_v<C, TListaWskObiektow>;

} // namespace szczegoly

// The class reference of a type, as a function whose address is a constant in every module.
template <class T> const TKlasa* KlasaTypu() noexcept {
    static_assert(szczegoly::Zdefiniowana<T>, "the class is declared, and defined nowhere that is seen from here");
    if constexpr (szczegoly::Zdefiniowana<T>) {
        szczegoly::WymagajMakra<T>();
        return T::KlasaStatyczna();
    } else {
        return nullptr;
    }
}

class ZTOK_API TObiektOgolny {
  public:
    static constexpr std::uint32_t CechyKlasy = 0;
    static constexpr std::uint8_t KodPola = kpInne;

    TObiektOgolny(const TObiektOgolny&) = delete;
    TObiektOgolny& operator=(const TObiektOgolny&) = delete;
    virtual ~TObiektOgolny();

    static const TKlasa* KlasaStatyczna() noexcept;
    // The class of this object: its most derived one.
    [[nodiscard]] virtual const TKlasa* Klasa() const noexcept;
    // Name of that class.
    [[nodiscard]] std::u16string_view NazwaKlasy() const noexcept { return Klasa()->nazwa; }
    // Whether the object is of the class or of one derived from it (by name, see KlasaADziedziczyPoB).
    [[nodiscard]] bool JestKlasy(const TKlasa* klasa) const noexcept { return KlasaADziedziczyPoB(Klasa(), klasa); }

    // Which hooks class T replaces (ck...Wlasn...): the type of a member that T inherits names the class it comes from.
    // A hook that cannot be seen from here counts as replaced.
    template <class T> [[nodiscard]] static constexpr std::uint32_t CechyWlasne() noexcept;

  protected:
    TObiektOgolny() noexcept = default;

    // Memory comes from the pool; `new` and `delete` are for Utworz and Zwolnij alone.
    static void* operator new(std::size_t rozmiar);
    static void operator delete(void* blok, std::size_t rozmiar) noexcept;

    // Runs the documented steps at the end of life while the object still has its full type: every one of them, even
    // when one fails. Raises the first error, after all steps. Calls of Zwolnij only; a second call does nothing.
    virtual void WykonajDestrukcje();
    // The owner dies before this object does: forgets it.
    virtual void Odlacz() noexcept;
    // Whether the object may be freed, by its owner or by anybody else; an error says why not.
    [[nodiscard]] virtual bool MoznaZwolnic(EZwalniajacy kto, TPierwszyBlad& blad) const noexcept;
    // The end of life, once; false for an object that may not be freed, which goes on living.
    [[nodiscard]] virtual bool Zakoncz(EZwalniajacy kto, TPierwszyBlad& blad) noexcept;

  private:
    friend struct TPrzydzial;
};

// The one place that may say `new` and `delete` for objects with a class.
struct TPrzydzial {
    template <class T, class... A> static T* Nowy(A&&... argumenty) { return new T(std::forward<A>(argumenty)...); }
    static void Usun(TObiektOgolny* obiekt) noexcept { delete obiekt; }
    // The same for an object known to be exactly a T.
    template <class T> static void UsunDokladny(T* obiekt) noexcept {
        obiekt->T::~T();
        T::operator delete(obiekt, sizeof(T));
    }
    static bool MoznaZwolnic(const TObiektOgolny& obiekt, EZwalniajacy kto, TPierwszyBlad& blad) noexcept {
        return obiekt.MoznaZwolnic(kto, blad);
    }
    static bool Zakoncz(TObiektOgolny& obiekt, EZwalniajacy kto, TPierwszyBlad& blad) noexcept {
        return obiekt.Zakoncz(kto, blad);
    }
    static void Odlacz(TObiektOgolny& obiekt) noexcept { obiekt.Odlacz(); }
    template <class T> static void PoUtworzeniu(T& obiekt, std::uint32_t cechy) { obiekt.PoUtworzeniu(cechy); }
};

template <class T> constexpr std::uint32_t TObiektOgolny::CechyWlasne() noexcept {
    std::uint32_t cechy = 0;
    if constexpr (!requires { requires std::is_same_v<decltype(&T::WykonajDestrukcje), void (TObiektOgolny::*)()>; })
        cechy |= ckWlasnaDestrukcja;
    if constexpr ((T::CechyKlasy & ckObiektBazowy) != 0) {
        if constexpr (!requires {
                          requires std::is_same_v<decltype(&T::ZablokujObiekt), void (TObiektBazowy::*)() const>;
                          requires std::is_same_v<decltype(&T::OdblokujObiekt), void (TObiektBazowy::*)() const>;
                      })
            cechy |= ckWlasnaBlokada;
        if constexpr (!requires {
                          requires std::is_same_v<decltype(&T::WykonajDestrukcje), void (TObiektBazowy::*)()>;
                          requires std::is_same_v<decltype(&T::TworzSekcjeKrytyczna), void (TObiektBazowy::*)()>;
                          requires std::is_same_v<decltype(&T::UsunSekcjeKrytyczna), void (TObiektBazowy::*)()>;
                      })
            cechy |= ckWlasneZycie;
    }
    if constexpr ((T::CechyKlasy & ckObiekt) != 0) {
        if constexpr (!requires {
                          requires std::is_same_v<decltype(&T::PoleZapisywane), bool (TObiekt::*)(int) const>;
                      })
            cechy |= ckWlasneZapisywane;
        if constexpr (!requires {
                          requires std::is_same_v<decltype(&T::TypPolaNr), const TKlasa* (TObiekt::*)(int) const>;
                      })
            cechy |= ckWlasneTypyPol;
        if constexpr (!requires { requires std::is_same_v<decltype(&T::UtworzonoPole), void (TObiekt::*)(int)>; })
            cechy |= ckWlasneUtworzono;
        if constexpr (!requires { requires std::is_same_v<decltype(&T::PoleNiepuste), bool (TObiekt::*)(int) const>; })
            cechy |= ckWlasneNiepuste;
        if constexpr (!requires { requires std::is_same_v<decltype(&T::UstawNiepuste), void (TObiekt::*)(int, bool)>; })
            cechy |= ckWlasneUstawNiepuste;
        if constexpr (!requires {
                          requires std::is_same_v<decltype(&T::NazwaPolaNr), std::u16string (TObiekt::*)(int) const>;
                      })
            cechy |= ckWlasneNazwyPol;
        if constexpr (!requires { requires std::is_same_v<decltype(&T::ZerujDane), void (TObiekt::*)()>; })
            cechy |= ckWlasneZerowanie;
    }
    if constexpr ((T::CechyKlasy & ckListaObiektow) != 0) {
        if constexpr (!requires {
                          requires std::is_same_v<decltype(&T::WyrownajDoListy),
                                                  void (TListaObiektow::*)(const TListaBazowa&, bool)>;
                      })
            cechy |= ckWlasneWyrownanie;
    }
    if constexpr ((T::CechyKlasy & ckObiektBazowy) != 0) {
        if constexpr (!requires {
                          requires std::is_same_v<decltype(&T::Porownaj), std::int32_t (TObiektBazowy::*)(
                                                                              const TPole&, TPorownywaczDanych*) const>;
                          requires szczegoly::kPorownanieZnane<decltype(&T::WykonajPorownanie)>;
                      })
            cechy |= ckWlasnePorownanie;
    } else if constexpr ((T::CechyKlasy & ckPoleWsk) != 0) {
        if constexpr (!requires {
                          requires std::is_same_v<decltype(&T::Porownaj), std::int32_t (TPoleWskObiektu::*)(
                                                                              const TPole&, TPorownywaczDanych*) const>;
                      })
            cechy |= ckWlasnePorownanie;
    }
    return cechy;
}

// Ends the life of an object made by Utworz: its steps run, its memory is freed, and only then the first error that a
// step raised is raised. Null is nothing. Deep trees are freed without deep recursion.
//
// An error, and nothing happens, for an object of the model on the stack or in another object, for one that a list or
// field holds (who wants it freed empties the place), and for one that is dying already. One that is freed for the
// second time is told too, as long as its memory, of at most NajwiekszyBlokPuli bytes, has not become another object's.
ZTOK_API void Zwolnij(TObiektOgolny* obiekt);
// The same for the list or field that holds the object, which leaves its owner only when it is dead: whether it is. The
// error, if any, is kept.
bool ZwolnijTrzymany(TObiektOgolny* obiekt, TPierwszyBlad& blad) noexcept;
// The same for unwinding and smart pointers: an error goes to the user notice instead of the caller.
ZTOK_API void ZwolnijCicho(TObiektOgolny* obiekt) noexcept;

// Owner of an object made by Utworz.
template <class T> class TWlasny {
  public:
    constexpr TWlasny() noexcept = default;
    constexpr TWlasny(std::nullptr_t) noexcept {}
    explicit TWlasny(T* obiekt) noexcept : obiekt_(obiekt) {}
    TWlasny(TWlasny&& inny) noexcept : obiekt_(inny.Oddaj()) {}
    template <class U>
    requires requires(U* u) { static_cast<T*>(u); }
    TWlasny(TWlasny<U>&& inny) noexcept : obiekt_(inny.Oddaj()) {}
    TWlasny(const TWlasny&) = delete;
    TWlasny& operator=(const TWlasny&) = delete;
    TWlasny& operator=(TWlasny&& inny) noexcept {
        Ustaw(inny.Oddaj());
        return *this;
    }
    ~TWlasny() {
        if (obiekt_ != nullptr)
            ZwolnijCicho(obiekt_);
    }

    [[nodiscard]] T* get() const noexcept { return obiekt_; }
    T* operator->() const noexcept { return obiekt_; }
    T& operator*() const noexcept { return *obiekt_; }
    explicit operator bool() const noexcept { return obiekt_ != nullptr; }
    // Hands the object over to the caller.
    [[nodiscard]] T* Oddaj() noexcept { return std::exchange(obiekt_, nullptr); }
    // Frees the object held and takes the given one.
    void Ustaw(T* obiekt = nullptr) noexcept {
        if (obiekt != obiekt_)
            ZwolnijCicho(std::exchange(obiekt_, obiekt));
    }

  private:
    T* obiekt_ = nullptr;
};

} // namespace ztok
