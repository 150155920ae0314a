// The one counter of nesting, shared by everything that walks a tree.
#pragma once

#include <atomic>

#include "ztok/platform/Eksport.h"

namespace ztok {

class TObiektOgolny;

// How deep objects and lists may nest (each counts) in reading, writing, comparing and copying. The default keeps the
// recursion far inside a stack of 256 KiB: without a bound a few bytes of input a level would overflow the stack.
inline constexpr int kZaglebienieDomyslne = 256;

class TPoziom;

class ZTOK_API TLicznikZagniezdzenia {
  public:
    // `pilnowany`: the objects that the walk is in just now must not be freed meanwhile, by hooks that it calls.
    constexpr explicit TLicznikZagniezdzenia(bool pilnowany = false) noexcept : pilnowany_(pilnowany) {}
    TLicznikZagniezdzenia(const TLicznikZagniezdzenia&) = delete;
    TLicznikZagniezdzenia& operator=(const TLicznikZagniezdzenia&) = delete;

    // Whether the test accepts the object that a watched walk of this thread is in; `najglebiej` tells the innermost
    // one of each walk.
    using TPytanie = bool (*)(const TObiektOgolny& wUzyciu, bool najglebiej, const TObiektOgolny& obiekt) noexcept;
    [[nodiscard]] static bool WUzyciu(const TObiektOgolny& obiekt, TPytanie pytanie) noexcept {
        return czynne.load(std::memory_order_relaxed) != 0 && JestWUzyciu(obiekt, pytanie);
    }

    int granica = kZaglebienieDomyslne;

    // Whether no level is entered.
    [[nodiscard]] bool NaSzczycie() const noexcept { return poziom_ == 0; }

  private:
    friend class TNoweDno;
    friend class TPorownywaczDanych;
    friend class TPoziom;

    void Wlacz() noexcept;
    void Wylacz() noexcept;
    [[nodiscard]] static bool JestWUzyciu(const TObiektOgolny& obiekt, TPytanie pytanie) noexcept;

    static std::atomic<int> czynne; // watched walks, in the process
    int poziom_ = 0;
    int dno_ = 0; // level from which nesting counts
    const bool pilnowany_;
    const TPoziom* ostatni_ = nullptr;
    TLicznikZagniezdzenia* poprzedni_ = nullptr; // of this thread
};

// For walks that have no context to count in: the levels of all such walks of the calling thread.
[[nodiscard]] ZTOK_API TLicznikZagniezdzenia& ZagniezdzenieWatku() noexcept;

[[noreturn]] ZTOK_API void BladZagniezdzenia(const TObiektOgolny& obiekt, int granica);

// One level for a scope; ZTException when it is one too many. A walk may be in two objects at once: that which is
// copied or compared, too.
class TPoziom {
  public:
    TPoziom(TLicznikZagniezdzenia& licznik, const TObiektOgolny& obiekt, const TObiektOgolny* drugi = nullptr)
        : licznik_(licznik), obiekt_(&obiekt), drugi_(drugi), poprzedni_(licznik.ostatni_) {
        if (licznik_.poziom_ - licznik_.dno_ >= licznik_.granica)
            BladZagniezdzenia(obiekt, licznik_.granica);
        ++licznik_.poziom_;
        if (licznik_.pilnowany_ && poprzedni_ == nullptr)
            licznik_.Wlacz();
        licznik_.ostatni_ = this;
    }
    TPoziom(const TPoziom&) = delete;
    TPoziom& operator=(const TPoziom&) = delete;
    ~TPoziom() {
        --licznik_.poziom_;
        licznik_.ostatni_ = poprzedni_;
        if (licznik_.pilnowany_ && poprzedni_ == nullptr)
            licznik_.Wylacz();
    }

  private:
    friend class TLicznikZagniezdzenia;

    TLicznikZagniezdzenia& licznik_;
    const TObiektOgolny* obiekt_;
    const TObiektOgolny* drugi_;
    const TPoziom* poprzedni_;
};

// A walk inside another one, whose levels are none of its own.
class TNoweDno {
  public:
    explicit TNoweDno(TLicznikZagniezdzenia& licznik) noexcept : licznik_(licznik), dawne_(licznik.dno_) {
        licznik.dno_ = licznik.poziom_;
    }
    TNoweDno(const TNoweDno&) = delete;
    TNoweDno& operator=(const TNoweDno&) = delete;
    ~TNoweDno() { licznik_.dno_ = dawne_; }

  private:
    TLicznikZagniezdzenia& licznik_;
    int dawne_;
};

// An operation of several steps is in the object: hooks that it calls cannot free it.
class TUzycie {
  public:
    explicit TUzycie(const TObiektOgolny& obiekt) : poziom_(licznik_, obiekt) {}

  private:
    TLicznikZagniezdzenia licznik_{true};
    TPoziom poziom_;
};

} // namespace ztok
