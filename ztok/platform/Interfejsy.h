// Interfaces: abstract structs found by identifier, their counted pointer, and the search that objects share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>
#include <utility>

#include "ztok/platform/Eksport.h"
#include "ztok/platform/Guid.h"
#include "ztok/platform/TKlasa.h"
#include "ztok/platform/TObiektOgolny.h"

namespace ztok {

// Answers of QueryInterface.
inline constexpr std::int32_t kIntfOk = 0;
inline constexpr std::int32_t kIntfBrak = static_cast<std::int32_t>(0x80004002U); // no such interface

// Root of all interfaces. An interface is an abstract struct that derives from IInterfejs or another interface as its
// only base, adds pure virtual operations and has its identifier as `static constexpr TGUID IID`. It has no destructor
// of its own: its object lives as its class says, counted or owned.
struct IInterfejs {
    static constexpr TGUID IID = Guid("{00000000-0000-0000-C000-000000000046}");

    // Puts the interface with the identifier into *wynik, counted once more for the caller, and returns kIntfOk; or
    // null and kIntfBrak.
    virtual std::int32_t QueryInterface(const TGUID& iid, void** wynik) noexcept = 0;
    // NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the names that callers know them by
    // One reference more, one less: the new count, or -1 from objects that do not count. The last _Release of a
    // counted object frees it.
    virtual std::int32_t _AddRef() noexcept = 0;
    virtual std::int32_t _Release() noexcept = 0;
    // NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

  protected:
    ~IInterfejs() = default;
};

template <class T>
concept CInterfejs = std::is_base_of_v<IInterfejs, T> && std::is_same_v<decltype(T::IID), const TGUID>;

// By this identifier the QueryInterface of an object's interface gives the object itself, as TObiektOgolny* and not
// counted.
inline constexpr TGUID IID_ObiektImplementujacy = Guid("{7C0E4B52-93D1-4F86-A5E7-2B6F1D90C3A8}");

// The object that implements the interface; null for null and for an interface that does not tell.
[[nodiscard]] ZTOK_API TObiektOgolny* ObiektZaInterfejsem(IInterfejs* interfejs) noexcept;

// Pointer to the interface of the object with the identifier, from the interface tables of its class and then of its
// ancestors; not counted. Null when there is none. IInterfejs::IID gives the object's first interface: always the same
// address for one object.
[[nodiscard]] ZTOK_API void* ZnajdzInterfejs(TObiektOgolny* obiekt, const TGUID& iid) noexcept;

// Body of every object's QueryInterface: the object itself for IID_ObiektImplementujacy, else what ZnajdzInterfejs
// finds, counted by the object's _AddRef.
template <class T> std::int32_t OdpowiedzInterfejsem(T* obiekt, const TGUID& iid, void** wynik) noexcept {
    if (wynik == nullptr)
        return kIntfBrak;
    TObiektOgolny* const ogolny = obiekt;
    if (iid == IID_ObiektImplementujacy) {
        *wynik = ogolny;
        return kIntfOk;
    }
    *wynik = ZnajdzInterfejs(ogolny, iid);
    if (*wynik == nullptr)
        return kIntfBrak;
    obiekt->_AddRef();
    return kIntfOk;
}

// Row of a class's interface table: class K implements interface I.
template <class K, CInterfejs I> constexpr TWierszInterfejsu WierszInterfejsu() noexcept {
    return {&I::IID, [](TObiektOgolny* obiekt) noexcept -> void* { return static_cast<I*>(static_cast<K*>(obiekt)); }};
}

// Base of a class that implements interfaces: `class TMoja : public TImplementacja<TObiektLiczony, IPierwszy, IDrugi>`.
// It joins the three operations of every interface with those of the base, and makes the class's interface table.
template <class TBaza, CInterfejs... I> class TImplementacja : public TBaza, public I... {
  public:
    using TBaza::TBaza;

    std::int32_t QueryInterface(const TGUID& iid, void** wynik) noexcept override {
        return TBaza::QueryInterface(iid, wynik);
    }
    // NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): as in IInterfejs
    std::int32_t _AddRef() noexcept override { return TBaza::_AddRef(); }
    std::int32_t _Release() noexcept override { return TBaza::_Release(); }
    // NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

    // The class's own rows, for its class reference.
    static std::span<const TWierszInterfejsu> InterfejsyKlasy() noexcept {
        static constexpr TWierszInterfejsu wiersze[] = {WierszInterfejsu<TImplementacja, I>()...};
        return wiersze;
    }
};

// Counted pointer to an interface. As safe for threads as a plain pointer: the count of the object is, the pointer
// itself is not.
template <class T> class TIntf {
  public:
    constexpr TIntf() noexcept = default;
    constexpr TIntf(std::nullptr_t) noexcept {}
    // Counts one reference; the caller keeps his.
    explicit TIntf(T* interfejs) noexcept : interfejs_(interfejs) { Policz(); }
    TIntf(const TIntf& inny) noexcept : TIntf(inny.interfejs_) {}
    TIntf(TIntf&& inny) noexcept : interfejs_(inny.Oddaj()) {}
    template <class U>
    requires std::is_convertible_v<U*, T*> TIntf(const TIntf<U>& inny)
    noexcept : TIntf(static_cast<T*>(inny.get())) {}
    template <class U>
    requires std::is_convertible_v<U*, T*> TIntf(TIntf<U>&& inny)
    noexcept : interfejs_(inny.Oddaj()) {}
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): the copy is made first
    TIntf& operator=(const TIntf& inny) noexcept {
        TIntf(inny).Zamien(*this);
        return *this;
    }
    TIntf& operator=(TIntf&& inny) noexcept {
        TIntf(std::move(inny)).Zamien(*this);
        return *this;
    }
    ~TIntf() {
        if (interfejs_ != nullptr)
            interfejs_->_Release();
    }

    // Takes over a reference that was counted already.
    [[nodiscard]] static TIntf Przejmij(T* interfejs) noexcept {
        TIntf wynik;
        wynik.interfejs_ = interfejs;
        return wynik;
    }
    // Hands the counted reference over to the caller.
    [[nodiscard]] T* Oddaj() noexcept { return std::exchange(interfejs_, nullptr); }

    [[nodiscard]] T* get() const noexcept { return interfejs_; }
    T* operator->() const noexcept { return interfejs_; }
    T& operator*() const noexcept { return *interfejs_; }
    explicit operator bool() const noexcept { return interfejs_ != nullptr; }
    friend bool operator==(const TIntf& a, const TIntf& b) noexcept { return a.interfejs_ == b.interfejs_; }
    friend bool operator==(const TIntf& a, std::nullptr_t) noexcept { return a.interfejs_ == nullptr; }

    // Another interface of the same object; null when it has none.
    template <CInterfejs U> [[nodiscard]] TIntf<U> As() const noexcept {
        void* wynik = nullptr;
        if (interfejs_ == nullptr || interfejs_->QueryInterface(U::IID, &wynik) != kIntfOk)
            return {};
        return TIntf<U>::Przejmij(static_cast<U*>(wynik));
    }

  private:
    void Policz() noexcept {
        if (interfejs_ != nullptr)
            interfejs_->_AddRef();
    }
    void Zamien(TIntf& inny) noexcept { std::swap(interfejs_, inny.interfejs_); }

    T* interfejs_ = nullptr;
};

} // namespace ztok
