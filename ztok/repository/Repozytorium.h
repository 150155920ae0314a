// Repository: classes, factories and ready interfaces under identifiers, for parts of an application that do not know
// each other's classes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "ztok/fields/TPoleWskObiektu.h"
#include "ztok/kernel/TObiekt.h"
#include "ztok/lists/TListaObiektow.h"
#include "ztok/platform/Guid.h"
#include "ztok/platform/Interfejsy.h"
#include "ztok/platform/TArgument.h"
#include "ztok/platform/TObiektLiczony.h"
#include "ztok/platform/TSekcjaKrytyczna.h"

namespace ztok {

class TListaNapisow;

// What the repository gives: an interface, or an object with the duty to free it. A counted object is held by one
// reference. An object that has an owner (a component, or a list or field of the model) belongs to that owner, also
// when it was given to it later; every other belongs to the handle until OddajObiekt takes it. An object of the model
// that dies leaves the handle empty. The interfaces of an object that is not counted live as long as the object.
class ZTOK_API TUchwyt {
  public:
    TUchwyt() noexcept = default;
    TUchwyt(TUchwyt&& inny) noexcept;
    TUchwyt& operator=(TUchwyt&& inny) noexcept;
    TUchwyt(const TUchwyt&) = delete;
    TUchwyt& operator=(const TUchwyt&) = delete;
    ~TUchwyt() { Zeruj(); }

    [[nodiscard]] bool Pusty() const noexcept { return Trzymany() == nullptr && !interfejs_; }
    // Gives back what it holds.
    void Zeruj() noexcept;
    // For factories: takes an object over, or holds an interface.
    void UstawObiekt(TObiektOgolny* obiekt);
    void UstawInterfejs(TIntf<IInterfejs> interfejs) noexcept;

    // The object, or the one behind the interface; null when there is none, or when the interface does not tell.
    [[nodiscard]] TObiektOgolny* Obiekt() const noexcept;
    // An object that is not counted goes to the caller; null when there is none, or when another owns it.
    [[nodiscard]] TWlasny<TObiektOgolny> OddajObiekt() noexcept;
    // An interface of what the handle holds; null when it has none such.
    template <CInterfejs T> [[nodiscard]] TIntf<T> Interfejs() const noexcept {
        return TIntf<T>::Przejmij(static_cast<T*>(DajInterfejs(T::IID)));
    }

  private:
    [[nodiscard]] void* DajInterfejs(const TGUID& iid) const noexcept;
    // The object, unless it has died.
    [[nodiscard]] TObiektOgolny* Trzymany() const noexcept;

    TObiektOgolny* obiekt_ = nullptr;
    TWlasny<TPoleRefObiektu> odwolanie_; // to an object of the model that is not counted: hears of its death
    bool wlasny_ = false;
    TIntf<IInterfejs> interfejs_;
};

// Functions that make what is registered. They are called with no lock held, and may use the repository. What they
// return belongs to the caller (see TUchwyt); null means that nothing could be made.
//
// Makes an object of the registered class.
using TKonstruktorKlasy = TObiektOgolny* (*)(const TKlasa* Klasa, TObiektOgolny* Wlasciciel, TObiektOgolny* Rodzic,
                                             TArgumenty Argumenty);
// Makes an object.
using TKonstruktor = TObiektOgolny* (*)(TObiektOgolny* Wlasciciel, TObiektOgolny* Rodzic, TArgumenty Argumenty);
// Fills the handle with an interface; whether it did. Owner is the object that owns the repository.
using TKonstruktorInt = bool (*)(TUchwyt& Uchwyt, const TGUID& GUID, bool Wymagany, TObiektOgolny* Wlasciciel,
                                 TObiektOgolny* Rodzic, std::u16string_view Identyfikator, TObiektOgolny* Owner);

// The constructor of a class for which none is given: the class's virtual one. An object of the model gets `Rodzic` as
// its parent if that is one too, else `Wlasciciel`.
ZTOK_API TObiektOgolny* KonstruktorDomyslny(const TKlasa* Klasa, TObiektOgolny* Wlasciciel, TObiektOgolny* Rodzic,
                                            TArgumenty Argumenty);

struct IRepozytoriumKlas;

// Looking up. Identifiers tell the registrations of one GUID apart, letter case counts; the empty one is the default.
// What is not found here is asked of the outer repository, if there is one.
struct IRepozytoriumBazowe : IInterfejs {
    static constexpr TGUID IID = Guid("{F0D4342D-9904-45CA-B470-09708C2DF6D7}");

    // Whether this repository itself has the registration.
    virtual bool JestZarejestrowany(const TGUID& GUID, std::u16string_view Identyfikator) = 0;
    // The constructor of a class registration; false, and nothing changed, when there is none.
    virtual bool DajKonstruktor(TKonstruktorKlasy& Konstruktor, const TGUID& GUID,
                                std::u16string_view Identyfikator) = 0;
    // Makes what is registered and puts it into the handle; false, and the handle empty, for an unknown key and when it
    // could not be made. The flag, the objects (any may be null) and the arguments are for the factory; what it
    // raises comes through.
    virtual bool DajUchwyt(TUchwyt& Uchwyt, const TGUID& GUID, bool Wymagany, std::u16string_view Identyfikator,
                           TObiektOgolny* Wlasciciel, TObiektOgolny* Rodzic, TArgumenty Argumenty) = 0;
    // The GUID under which the class is registered with that identifier: the first in the order of their texts.
    virtual bool DajIIDWgKlasy(const TKlasa* Klasa, TGUID& Iid, std::u16string_view Identyfikator) = 0;
    // Replaces the content of the list by the identifiers registered under the GUID, in ascending order: those of the
    // nearest repository that has any.
    virtual void DajListeIdentyfikatorow(const TGUID& GUID, TListaNapisow& Lista) = 0;
    // The outer repository; null when there is none.
    virtual TIntf<IRepozytoriumKlas> DajParent() = 0;

    // Without owners and arguments.
    bool DajUchwyt(TUchwyt& Uchwyt, const TGUID& GUID, std::u16string_view Identyfikator = {}) {
        return DajUchwyt(Uchwyt, GUID, false, Identyfikator, nullptr, nullptr, {});
    }
    // The interface that the registration is about; null when there is none.
    template <CInterfejs T>
    [[nodiscard]] TIntf<T> DajInterfejs(std::u16string_view Identyfikator = {}, TObiektOgolny* Wlasciciel = nullptr,
                                        TObiektOgolny* Rodzic = nullptr) {
        TUchwyt uchwyt;
        DajUchwyt(uchwyt, T::IID, false, Identyfikator, Wlasciciel, Rodzic, {});
        return uchwyt.template Interfejs<T>();
    }

  protected:
    ~IRepozytoriumBazowe() = default;
};

// Registering. A registration goes with the module whose code it needs: that of the class, of the object behind the
// interface, of the function. The module of a function is taken to be the caller's; who registers another module's
// function takes the registration out before that module is unloaded. Nobody may use what a module registered, nor hold
// what it made, while the module is unloaded.
struct IRepozytoriumKlas : IRepozytoriumBazowe {
    static constexpr TGUID IID = Guid("{AB4F169A-0D69-4499-B318-3F623036F1E3}");

    using IRepozytoriumBazowe::DajUchwyt;

    // A class with its constructor (null: KonstruktorDomyslny), and a ready interface, which is asked for the GUID and
    // held: ZTException when it has none such. A key that is there already stays as it is.
    virtual void RejestrujObiekt(const TGUID& GUID, const TKlasa* Klasa, TKonstruktorKlasy Konstruktor,
                                 std::u16string_view Identyfikator, TModul& Modul = ModulBiezacy()) = 0;
    virtual void RejestrujObiekt(const TGUID& GUID, IInterfejs* Int, std::u16string_view Identyfikator,
                                 TModul& Modul = ModulBiezacy()) = 0;
    // Factories. EWyjatek for a key that is there already.
    virtual void RejestrujObiekt(const TGUID& GUID, TKonstruktorInt KonstruktorInt, std::u16string_view Identyfikator,
                                 TModul& Modul = ModulBiezacy()) = 0;
    virtual void RejestrujObiekt(const TGUID& GUID, TKonstruktor Konstruktor, std::u16string_view Identyfikator,
                                 TModul& Modul = ModulBiezacy()) = 0;
    // Removes the registration, if it is there.
    virtual void WyrejestrujObiekt(const TGUID& GUID, std::u16string_view Identyfikator) = 0;
    // Sets the outer repository, which is held, or takes it away. ZTException for one that leads back here. To be set
    // before others use this repository: the look for a circle is no single step.
    virtual void UstawParent(TIntf<IRepozytoriumKlas> Zewnetrzne) = 0;

  protected:
    ~IRepozytoriumKlas() = default;
};

// One registration: its key as fields, and one way to what is registered.
class ZTOK_API TDaneObiektu : public TObiekt {
    ZTOK_KLASA_DEKL(TDaneObiektu)
    static std::span<const TWierszPola> PolaKlasy(std::type_identity<TDaneObiektu> klasa) noexcept;

    explicit TDaneObiektu(TObiektBazowy* wlasciciel = nullptr) : TObiekt(wlasciciel) {}
    ~TDaneObiektu() override;

    [[nodiscard]] std::u16string GetGuidTekstowo() const { return GetPoleString(0); }
    void SetGuidTekstowo(std::u16string_view tekst) { SetPoleString(0, tekst); }
    [[nodiscard]] std::u16string GetIdentyfikator() const { return GetPoleString(1); }
    void SetIdentyfikator(std::u16string_view identyfikator) { SetPoleString(1, identyfikator); }
    // Field 0 as a value. EBladKonwersji for a text that is no GUID; all zeros for the empty one.
    [[nodiscard]] TGUID GetGUID() const;
    void SetGUID(const TGUID& guid) { SetGuidTekstowo(GUIDToString(guid)); }

    // Whether it cannot be used without the module.
    [[nodiscard]] bool ZModulu(const TModul& modul) const noexcept;
    // Copies what is no field.
    void KopiujSposob(const TDaneObiektu& zrodlo);
    void WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) override;

    TKonstruktor FKonstruktor = nullptr;
    TIntf<IInterfejs> FInt;
    const TKlasa* FKlasa = nullptr;
    TKonstruktorKlasy FTKonstruktorKlasy = nullptr;
    TKonstruktorInt FKonstruktorInt = nullptr;
    const TModul* FModul = nullptr; // whose code FInt or the function is
};

using TEnumLista = TEnumListaObiektow<TDaneObiektu>;

// The registrations, sorted by GUID text and identifier.
class ZTOK_API TLista : public TListaTypu<TDaneObiektu> {
    ZTOK_KLASA_DEKL(TLista)

    explicit TLista(TObiektBazowy* wlasciciel = nullptr) : TListaTypu(wlasciciel) {}
    ~TLista() override;

    [[nodiscard]] TDaneObiektu* Element(std::int32_t NrElem) const noexcept { return (*this)[NrElem]; }
};

// Safe to use from any thread.
class ZTOK_API TRepozytoriumKlas : public TImplementacja<TObiektLiczony, IRepozytoriumKlas> {
    ZTOK_KLASA_DEKL(TRepozytoriumKlas)
    static std::span<const TWierszInterfejsu> InterfejsyKlasy() noexcept;

    // The owner is handed to factories; it is not held and must outlive the repository.
    explicit TRepozytoriumKlas(TObiektOgolny* Owner = nullptr);
    ~TRepozytoriumKlas() override;

    // The registrations, to be looked at until UnlockList gives the lock back, on the same thread. Nothing else of this
    // folder is to be called meanwhile.
    TLista& LockList() noexcept;
    void UnlockList() noexcept;

    bool JestZarejestrowany(const TGUID& GUID, std::u16string_view Identyfikator) override;
    bool DajKonstruktor(TKonstruktorKlasy& Konstruktor, const TGUID& GUID, std::u16string_view Identyfikator) override;
    bool DajUchwyt(TUchwyt& Uchwyt, const TGUID& GUID, bool Wymagany, std::u16string_view Identyfikator,
                   TObiektOgolny* Wlasciciel, TObiektOgolny* Rodzic, TArgumenty Argumenty) override;
    using IRepozytoriumBazowe::DajUchwyt;
    bool DajIIDWgKlasy(const TKlasa* Klasa, TGUID& Iid, std::u16string_view Identyfikator) override;
    void DajListeIdentyfikatorow(const TGUID& GUID, TListaNapisow& Lista) override;
    TIntf<IRepozytoriumKlas> DajParent() override;
    void RejestrujObiekt(const TGUID& GUID, const TKlasa* Klasa, TKonstruktorKlasy Konstruktor,
                         std::u16string_view Identyfikator, TModul& Modul = ModulBiezacy()) override;
    void RejestrujObiekt(const TGUID& GUID, IInterfejs* Int, std::u16string_view Identyfikator,
                         TModul& Modul = ModulBiezacy()) override;
    void RejestrujObiekt(const TGUID& GUID, TKonstruktorInt KonstruktorInt, std::u16string_view Identyfikator,
                         TModul& Modul = ModulBiezacy()) override;
    void RejestrujObiekt(const TGUID& GUID, TKonstruktor Konstruktor, std::u16string_view Identyfikator,
                         TModul& Modul = ModulBiezacy()) override;
    void WyrejestrujObiekt(const TGUID& GUID, std::u16string_view Identyfikator) override;
    void UstawParent(TIntf<IRepozytoriumKlas> Zewnetrzne) override;

  private:
    friend void ZamknijRepozytorium(bool czekaj) noexcept;
    friend void WyrejestrujModul(const TModul& modul) noexcept;

    // The registration, under the lock; null, and where it belongs, when there is none.
    TDaneObiektu* Znajdz(std::u16string_view guid, std::u16string_view identyfikator, std::int32_t& gdzie);
    void Wpisz(TWlasny<TDaneObiektu> dane, const TGUID& guid, std::u16string_view identyfikator, bool jedyne);
    TWlasny<TDaneObiektu> Wyjmij(std::int32_t nr);
    // Some registration that goes with the module; null when there is none left.
    TWlasny<TDaneObiektu> WyjmijZModulu(const TModul& modul);

    TObiektOgolny* FOwner;
    TWlasny<TLista> FLista;
    TSekcjaKrytyczna FLock;
    TIntf<IRepozytoriumKlas> Parent;
};

// The repository of the process, made on the first call, after the controller, which is its owner. Kept until
// ZamknijBiblioteke.
[[nodiscard]] ZTOK_API TIntf<IRepozytoriumKlas> RepozytoriumKlas();
// The repository that serves the object: the object itself if it is one, else that of its owners (see
// DajInterfejsWlasciciela). False and null when there is none.
ZTOK_API bool RepozytoriumKlas(TObiektOgolny* Obiekt, TIntf<IRepozytoriumKlas>& Repozytorium);
// The same; when there is none, the process's, or ZTException if one is required.
[[nodiscard]] ZTOK_API TIntf<IRepozytoriumKlas> RepozytoriumKlas(TObiektOgolny* Obiekt, bool Wymagany);
// Asks the repository that serves the component, which is the owner of what is made; `Obiekt` is its parent.
ZTOK_API bool RKDajUchwyt(TObiektOgolny* Komponent, TUchwyt& Uchwyt, const TGUID& GUID, bool Wymagany = false,
                          std::u16string_view Identyfikator = {}, TObiektOgolny* Obiekt = nullptr);

} // namespace ztok
