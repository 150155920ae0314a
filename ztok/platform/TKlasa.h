// Class reference: the constant data of one class, and the mutable part that stands beside it.
#pragma once

#include <atomic>
#include <cstdint>
#include <span>
#include <string_view>

#include "ztok/platform/Eksport.h"

namespace ztok {

class TObiektOgolny;
class TObiektBazowy;
class TPole;
struct TGUID;
struct TKlasa;
struct TWierszPola;
struct TMigawkaOpisu;

// What a class inherits from, as bits: the tests that the library makes in its inner loops. A class has the
// bits of all its ancestors; classes of an application inherit them with the base class.
enum ECechyKlasy : std::uint32_t {
    ckPole = 1U << 0U,            // TPole
    ckObiektBazowy = 1U << 1U,    // TObiektBazowy: an object of the model
    ckObiekt = 1U << 2U,          // TObiekt: has numbered fields
    ckLista = 1U << 3U,           // TListaBazowa
    ckListaZObiektami = 1U << 4U, // owns its elements
    ckListaObiektow = 1U << 5U,   // one item class
    ckKolekcja = 1U << 6U,        // mixed classes
    ckListaWsk = 1U << 7U,        // TListaWskObiektow
    ckListaRef = 1U << 8U,        // TListaRefObiektow
    ckPoleWsk = 1U << 9U,         // TPoleWskObiektu
    ckPoleRef = 1U << 10U,        // TPoleRefObiektu
    ckParametr = 1U << 11U,       // parameter object: counted
    ckPoleTekstowe = 1U << 12U,   // a field whose value is text
    ckTablica = 1U << 13U,        // TArrayOfConst

    // Which hooks a class of its own replaces; found by the compiler for each class (DeklaracjaKlasy.h), so that
    // classes that replace none pay for none.
    ckWlasnaDestrukcja = 1U << 16U,    // WykonajDestrukcje: otherwise nothing happens but the C++ destructor
    ckWlasnaBlokada = 1U << 17U,       // ZablokujObiekt, OdblokujObiekt
    ckWlasneZapisywane = 1U << 18U,    // PoleZapisywane
    ckWlasneTypyPol = 1U << 19U,       // TypPolaNr
    ckWlasneUtworzono = 1U << 20U,     // UtworzonoPole
    ckWlasneNiepuste = 1U << 21U,      // PoleNiepuste of an object with fields
    ckWlasneUstawNiepuste = 1U << 22U, // UstawNiepuste of an object with fields
    ckWlasneNazwyPol = 1U << 23U,      // NazwaPolaNr
    ckWlasneZycie = 1U << 24U,         // making and ending: WykonajDestrukcje, Tworz- and UsunSekcjeKrytyczna
    ckWlasneZerowanie = 1U << 25U,     // ZerujDane of an object with fields
    ckWlasneWyrownanie = 1U << 26U,    // WyrownajDoListy of a list of one item class
    ckWlasnePorownanie = 1U << 27U,    // Porownaj or WykonajPorownanie of an object, a list or a pointer field
};

// Codes of the field classes whose value the typed accessors reach without a virtual call. A class derived from one of
// them keeps its code.
enum EKodPola : std::uint8_t {
    kpInne = 0,
    kpBoolean,
    kpByte,
    kpSmallint,
    kpWord,
    kpInteger,
    kpCardinal,
    kpInt64,
    kpDouble,
    kpDateTime,
    kpDate,
    kpTime,
    kpString,
    kpRawByteString,
    kpWideString,
    kpWskObiektu,
};

// One module (program, DLL, shared object) that declares classes. Its destructor, which runs when the module is
// unloaded, takes every class of the module out of the library's registries.
class TModul {
  public:
    TModul() noexcept = default;
    TModul(const TModul&) = delete;
    TModul& operator=(const TModul&) = delete;
    ZTOK_API ~TModul();
};

// The module that this code belongs to: one object a module.
ZTOK_LOKALNE inline TModul& ModulBiezacy() noexcept {
    static TModul modul;
    return modul;
}

// The mutable part of a class reference.
struct TStanKlasy {
    std::atomic<std::uint32_t> numer{0};                // class number, 0 until the library meets the class
    std::atomic<const TMigawkaOpisu*> migawka{nullptr}; // descriptor found last, with the kernel it belongs to
    std::atomic<const void*> wzorzec{nullptr};          // first word of every object of exactly the class, once one was
                                                        // made
};

// One interface that a class implements: its identifier and the cast from the object to the interface.
struct TWierszInterfejsu {
    const TGUID* iid;
    void* (*rzutuj)(TObiektOgolny* obiekt) noexcept;
};

// Meets a class before its first object is made. ZTException when another class of the name is in use.
ZTOK_API void PoznajKlase(const TKlasa* klasa);

// Constant data of one class. Parent, item class and field classes are functions: the address of an object that
// another module exports is no constant on Windows. Two modules can hold the same class, so classes are the same
// when their names are (KlasaADziedziczyPoB).
struct TKlasa {
    std::u16string_view nazwa;
    const TKlasa* (*przodek)() noexcept;                 // null for the root
    TObiektOgolny* (*utworz)(TObiektBazowy* wlasciciel); // virtual constructor; null for an abstract class
    std::uint32_t cechy;                                 // ECechyKlasy
    std::uint8_t kodPola;                                // EKodPola
    bool kodWlasny;                                      // the code is the class's own, not its base's
    std::span<const TWierszPola> (*pola)() noexcept;     // the class's own rows, without its ancestors'; may be null
    std::span<const TWierszInterfejsu> (*interfejsy)() noexcept; // own rows; may be null
    const TKlasa* (*typObiektow)(); // item class of a list of one item class; null elsewhere
    TModul& (*modul)() noexcept;    // the module that declares the class
    TStanKlasy* stan;
    std::uint32_t rozmiar; // of an object, in bytes

    [[nodiscard]] const TKlasa* Przodek() const noexcept { return przodek == nullptr ? nullptr : przodek(); }
    [[nodiscard]] bool Ma(std::uint32_t cecha) const noexcept { return (cechy & cecha) != 0; }
};

// Whether class A is B or inherits from it. Names are compared along A's ancestors, so that the class of the same
// name from another module matches. Null is no class: false.
[[nodiscard]] ZTOK_API bool KlasaADziedziczyPoB(const TKlasa* a, const TKlasa* b) noexcept;
// The same for a class name, compared exactly.
[[nodiscard]] ZTOK_API bool KlasaADziedziczyPoB(const TKlasa* a, std::u16string_view nazwaB) noexcept;

} // namespace ztok
