#include "ztok/platform/TSekcjaKrytyczna.h"

#include <new>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace ztok {

namespace {

CRITICAL_SECTION* Sekcja(unsigned char* systemowa) noexcept {
    static_assert(sizeof(CRITICAL_SECTION) <= sizeof(TSekcjaKrytyczna));
    static_assert(alignof(CRITICAL_SECTION) <= alignof(TSekcjaKrytyczna));
    return std::launder(reinterpret_cast<CRITICAL_SECTION*>(systemowa));
}

} // namespace

TSekcjaKrytyczna::TSekcjaKrytyczna() {
    InitializeCriticalSection(::new (static_cast<void*>(systemowa_)) CRITICAL_SECTION);
}

TSekcjaKrytyczna::~TSekcjaKrytyczna() { DeleteCriticalSection(Sekcja(systemowa_)); }

void TSekcjaKrytyczna::Wejdz() noexcept { EnterCriticalSection(Sekcja(systemowa_)); }

bool TSekcjaKrytyczna::SprobujWejsc() noexcept { return TryEnterCriticalSection(Sekcja(systemowa_)) != 0; }

void TSekcjaKrytyczna::Wyjdz() noexcept { LeaveCriticalSection(Sekcja(systemowa_)); }

} // namespace ztok
