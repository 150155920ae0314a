// The program's own allocation functions stand in front of the system's: the dynamic linker takes them for every
// module.
#if !defined(_WIN32)

#include <cerrno>
#include <cstdlib>
#include <malloc.h>
#include <new>

#include "Przydzialy.h"
#include "SystemTestowy.h"

#if ZTOK_ASAN || !ZTOK_SANITIZER

// The functions behind, under the names by which a program reaches them when it has its own in front: the sanitizer's,
// whose checks stay, or the system's.
#if ZTOK_ASAN
#define ZTOK_PRAWDZIWE(nazwa) __interceptor_##nazwa
#else
#define ZTOK_PRAWDZIWE(nazwa) __libc_##nazwa
#endif

// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
void* ZTOK_PRAWDZIWE(malloc)(std::size_t);
void* ZTOK_PRAWDZIWE(calloc)(std::size_t, std::size_t);
void* ZTOK_PRAWDZIWE(realloc)(void*, std::size_t);
void ZTOK_PRAWDZIWE(free)(void*);
}
// NOLINTEND(bugprone-reserved-identifier)

namespace {

ZTOK_BEZ_ASAN std::int64_t Rozmiar(void* blok) noexcept {
    return blok == nullptr || !przydzialy::Liczy() ? 0 : static_cast<std::int64_t>(malloc_usable_size(blok));
}

ZTOK_BEZ_ASAN void* Liczony(void* blok) noexcept {
    przydzialy::Przybylo(Rozmiar(blok));
    return blok;
}

ZTOK_BEZ_ASAN void* Brak() noexcept {
    errno = ENOMEM;
    return nullptr;
}

} // namespace

#define ZTOK_WIDOCZNE ZTOK_BEZ_ASAN __attribute__((visibility("default")))

extern "C" {
ZTOK_WIDOCZNE void* malloc(std::size_t rozmiar) {
    return przydzialy::Padnie(rozmiar) ? Brak() : Liczony(ZTOK_PRAWDZIWE(malloc)(rozmiar));
}
ZTOK_WIDOCZNE void* calloc(std::size_t ile, std::size_t rozmiar) {
    return przydzialy::Padnie(ile * rozmiar) ? Brak() : Liczony(ZTOK_PRAWDZIWE(calloc)(ile, rozmiar));
}
ZTOK_WIDOCZNE void* realloc(void* blok, std::size_t rozmiar) {
    if (rozmiar != 0 && przydzialy::Padnie(rozmiar))
        return Brak();
    const std::int64_t stary = Rozmiar(blok);
    void* nowy = ZTOK_PRAWDZIWE(realloc)(blok, rozmiar);
    if (nowy != nullptr || rozmiar == 0)
        przydzialy::Przybylo(Rozmiar(nowy) - stary);
    return nowy;
}
ZTOK_WIDOCZNE void free(void* blok) {
    if (blok != nullptr && przydzialy::Liczy())
        przydzialy::Zwalniany(blok, malloc_usable_size(blok));
    ZTOK_PRAWDZIWE(free)(blok);
}
}

#if ZTOK_ASAN
// The sanitizer's operator new does not go through malloc.
ZTOK_WIDOCZNE void* operator new(std::size_t rozmiar) {
    void* blok = std::malloc(rozmiar == 0 ? 1 : rozmiar);
    if (blok == nullptr)
        throw std::bad_alloc();
    return blok;
}
ZTOK_WIDOCZNE void* operator new(std::size_t rozmiar, const std::nothrow_t& /*bezWyjatku*/) noexcept {
    return std::malloc(rozmiar == 0 ? 1 : rozmiar);
}
ZTOK_WIDOCZNE void* operator new[](std::size_t rozmiar) { return ::operator new(rozmiar); }
ZTOK_WIDOCZNE void operator delete(void* blok) noexcept { std::free(blok); }
ZTOK_WIDOCZNE void operator delete(void* blok, std::size_t /*rozmiar*/) noexcept { std::free(blok); }
ZTOK_WIDOCZNE void operator delete(void* blok, const std::nothrow_t& /*bezWyjatku*/) noexcept { std::free(blok); }
ZTOK_WIDOCZNE void operator delete[](void* blok) noexcept { std::free(blok); }
ZTOK_WIDOCZNE void operator delete[](void* blok, std::size_t /*rozmiar*/) noexcept { std::free(blok); }
#endif

#endif

void przydzialy::PrzejmijMalloc() {}

#endif
