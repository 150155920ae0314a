// Controller: tells every registered object of an operation; and the search for an interface among an object's owners.
#pragma once

#include <cstddef>
#include <string_view>

#include "ztok/platform/Interfejsy.h"
#include "ztok/platform/TListaTS.h"
#include "ztok/platform/TObiektLiczony.h"

namespace ztok {

struct TRozgloszenie;

// Names an object's owner, for the walk along owners. It is looked for in the interface table of the object's class.
struct IDostep : IInterfejs {
    static constexpr TGUID IID = Guid("{E58B19A9-4FA3-4A0B-A139-9F44466D4A27}");

    // The owner; null when there is none. Not handed over.
    virtual TObiektOgolny* DajWlasciciela() = 0;

  protected:
    ~IDostep() = default;
};

// What takes part in broadcasts. It is looked for in the interface table of the object's class.
struct IKontrolowany : IInterfejs {
    static constexpr TGUID IID = Guid("{E31712C2-22F1-46B5-A467-400839F7987F}");

    // Called for every operation that is broadcast, on the thread of the one who broadcasts and with no lock held. May
    // register and unregister objects, broadcast, and free any object, its own included.
    virtual void WykonajOperacje(std::u16string_view p_Identyfikator) = 0;

  protected:
    ~IKontrolowany() = default;
};

struct IKontroler : IInterfejs {
    static constexpr TGUID IID = Guid("{961DFE6B-02FB-4FE9-BD91-10B22963A2FC}");

    // Adds the object, which is not held; null and an object that is there already change nothing. An object without
    // IKontrolowany is passed over by broadcasts. It must be a component, a counted object or an object of the model,
    // which leave by themselves when they die; ZTException for another.
    virtual void Rejestruj(TObiektOgolny* p_Kontrolowany) = 0;
    // Removes the object, if it is there. A broadcast that runs still calls it.
    virtual void Wyrejestruj(TObiektOgolny* p_Kontrolowany) noexcept = 0;
    // Calls every object that is registered now, in the order of registration. Counted objects are held until they
    // were called. An object that dies meanwhile is not called. Every object is called even if one raises; the first
    // error is raised then.
    virtual void Operacja(std::u16string_view p_Identyfikator) = 0;

  protected:
    ~IKontroler() = default;
};

// Safe to use from any thread. An object that another thread frees while it is called waits there until the call is
// over; so an object must not be freed under a lock that its WykonajOperacje takes, and two objects called on two
// threads must not free each other.
class ZTOK_API TKontroler : public TImplementacja<TObiektLiczony, IKontroler> {
    ZTOK_KLASA_DEKL(TKontroler)

    TKontroler();
    ~TKontroler() override;

    void Rejestruj(TObiektOgolny* p_Kontrolowany) override;
    void Wyrejestruj(TObiektOgolny* p_Kontrolowany) noexcept override;
    void Operacja(std::u16string_view p_Identyfikator) override;

    // Objects registered now: for tests and diagnostics.
    [[nodiscard]] std::size_t IleZarejestrowanych();

  private:
    friend void ZapomnijKontrolowany(TObiektOgolny& obiekt) noexcept;
    friend void WyrejestrujKontrolowaneModulu(const TModul& modul) noexcept;

    // The mark by which the object tells of its death; null for an object that does not.
    static TZnakKontroli* ZnakKontroli(TObiektOgolny& obiekt) noexcept;
    void ZrobMigawke(TRozgloszenie& rozgloszenie);

    TListaTS<TObiektOgolny*> FLista; // not held
};

// The controller of the process, made on the first call, from any thread, and kept until ZamknijBiblioteke.
[[nodiscard]] ZTOK_API TIntf<IKontroler> Kontroler();

// Looks for an interface on the object, then along its owners: a component's owner, else the one that IDostep names.
// Gives a counted reference, or false and null; a null object has none. Owners in a circle end the search.
ZTOK_API bool DajInterfejsWlasciciela(TObiektOgolny* Obiekt, void** Interfejs, const TGUID& IID);
template <CInterfejs T> bool DajInterfejsWlasciciela(TObiektOgolny* Obiekt, TIntf<T>& Interfejs) {
    void* wynik = nullptr;
    const bool jest = DajInterfejsWlasciciela(Obiekt, &wynik, T::IID);
    Interfejs = TIntf<T>::Przejmij(static_cast<T*>(wynik));
    return jest;
}

} // namespace ztok
