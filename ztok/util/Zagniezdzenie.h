// The one counter of nesting, shared by everything that walks a tree.
#pragma once

#include "ztok/platform/Eksport.h"

namespace ztok {

class TObiektOgolny;

// How deep objects and lists may nest (each counts) in reading, writing, comparing and copying. The default keeps the
// recursion far inside a stack of 256 KiB: without a bound a few bytes of input a level would overflow the stack.
inline constexpr int kZaglebienieDomyslne = 256;

class TLicznikZagniezdzenia {
  public:
    constexpr explicit TLicznikZagniezdzenia(int dozwolone = kZaglebienieDomyslne) noexcept : granica(dozwolone) {}

    int granica;

  private:
    friend class TPorownywaczDanych;
    friend class TPoziom;
    int poziom_ = 0;
};

// For walks that have no context to count in: the levels of all such walks of the calling thread.
[[nodiscard]] ZTOK_API TLicznikZagniezdzenia& ZagniezdzenieWatku() noexcept;

[[noreturn]] ZTOK_API void BladZagniezdzenia(const TObiektOgolny& obiekt, int granica);

// One level for a scope; ZTException when it is one too many.
class TPoziom {
  public:
    TPoziom(TLicznikZagniezdzenia& licznik, const TObiektOgolny& obiekt) : licznik_(licznik) {
        if (licznik_.poziom_ >= licznik_.granica)
            BladZagniezdzenia(obiekt, licznik_.granica);
        ++licznik_.poziom_;
    }
    TPoziom(const TPoziom&) = delete;
    TPoziom& operator=(const TPoziom&) = delete;
    ~TPoziom() { --licznik_.poziom_; }

  private:
    TLicznikZagniezdzenia& licznik_;
};

} // namespace ztok
