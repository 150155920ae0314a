#include "Przydzialy.h"

#include "SystemTestowy.h"

#if defined(__linux__) && !ZTOK_SANITIZER

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <malloc.h>
#include <new>

#include "ztok/platform/Pula.h"

namespace {

struct TLicznik {
    bool czynny;
    bool wszystkie;
    std::int64_t psuty; // -1: none
    std::int64_t teraz;
    std::string_view szukany;
    przydzialy::TWynik wynik;
};
constinit thread_local TLicznik licznik{};

// Whether this allocation is to fail.
bool Padnie(std::size_t rozmiar) noexcept {
    if (!licznik.czynny)
        return false;
    const std::int64_t nr = licznik.wynik.ile++;
    if (static_cast<std::int64_t>(rozmiar) > licznik.wynik.najwiekszy)
        licznik.wynik.najwiekszy = static_cast<std::int64_t>(rozmiar);
    return licznik.psuty >= 0 && (nr == licznik.psuty || (licznik.wszystkie && nr > licznik.psuty));
}

void Przybylo(std::int64_t bajty) noexcept {
    if (!licznik.czynny)
        return;
    licznik.teraz += bajty;
    if (licznik.teraz > licznik.wynik.szczyt)
        licznik.wynik.szczyt = licznik.teraz;
}

void* Liczony(void* blok) noexcept {
    if (blok != nullptr)
        Przybylo(static_cast<std::int64_t>(malloc_usable_size(blok)));
    return blok;
}

void* Brak() noexcept {
    errno = ENOMEM;
    return nullptr;
}

} // namespace

// The system's functions under the names by which a program reaches them when it has its own in front.
extern "C" {
void* __libc_malloc(std::size_t);              // NOLINT(bugprone-reserved-identifier)
void* __libc_calloc(std::size_t, std::size_t); // NOLINT(bugprone-reserved-identifier)
void* __libc_realloc(void*, std::size_t);      // NOLINT(bugprone-reserved-identifier)
void __libc_free(void*);                       // NOLINT(bugprone-reserved-identifier)

__attribute__((visibility("default"))) void* malloc(std::size_t rozmiar) {
    return Padnie(rozmiar) ? Brak() : Liczony(__libc_malloc(rozmiar));
}
__attribute__((visibility("default"))) void* calloc(std::size_t ile, std::size_t rozmiar) {
    return Padnie(ile * rozmiar) ? Brak() : Liczony(__libc_calloc(ile, rozmiar));
}
__attribute__((visibility("default"))) void* realloc(void* blok, std::size_t rozmiar) {
    if (rozmiar != 0 && Padnie(rozmiar))
        return Brak();
    const std::int64_t stary = blok == nullptr ? 0 : static_cast<std::int64_t>(malloc_usable_size(blok));
    void* nowy = __libc_realloc(blok, rozmiar);
    if (nowy != nullptr || rozmiar == 0)
        Przybylo((nowy == nullptr ? 0 : static_cast<std::int64_t>(malloc_usable_size(nowy))) - stary);
    return nowy;
}
__attribute__((visibility("default"))) void free(void* blok) {
    if (blok != nullptr) {
        const std::size_t rozmiar = malloc_usable_size(blok);
        Przybylo(-static_cast<std::int64_t>(rozmiar));
        if (licznik.czynny && !licznik.szukany.empty() &&
            memmem(blok, rozmiar, licznik.szukany.data(), licznik.szukany.size()) != nullptr)
            licznik.wynik.znaleziony = true;
    }
    __libc_free(blok);
}
}

// In front of the pool's, so that each block of an object counts and can fail, not only the pool's slabs.
namespace ztok {
__attribute__((visibility("default"))) void* PulaPrzydziel(std::size_t rozmiar) {
    static const auto prawdziwa =
        reinterpret_cast<void* (*)(std::size_t)>(dlsym(RTLD_NEXT, "_ZN4ztok13PulaPrzydzielEm"));
    if (Padnie(rozmiar))
        throw std::bad_alloc();
    if (rozmiar <= NajwiekszyBlokPuli)
        Przybylo(static_cast<std::int64_t>((rozmiar + 15) / 16 * 16));
    const bool czynny = licznik.czynny;
    licznik.czynny = czynny && rozmiar > NajwiekszyBlokPuli; // slabs are not counted beside their blocks
    void* blok = prawdziwa(rozmiar);
    licznik.czynny = czynny;
    return blok;
}
__attribute__((visibility("default"))) void PulaZwolnij(void* blok, std::size_t rozmiar) noexcept {
    static const auto prawdziwa =
        reinterpret_cast<void (*)(void*, std::size_t)>(dlsym(RTLD_NEXT, "_ZN4ztok11PulaZwolnijEPvm"));
    if (rozmiar <= NajwiekszyBlokPuli)
        Przybylo(-static_cast<std::int64_t>((rozmiar + 15) / 16 * 16));
    prawdziwa(blok, rozmiar);
}
} // namespace ztok

namespace przydzialy {

bool Liczone() { return true; }

void Zacznij() {
    licznik = {};
    licznik.psuty = -1;
    licznik.czynny = true;
}

TWynik Zakoncz() {
    licznik.czynny = false;
    licznik.wynik.zostalo = licznik.teraz;
    return licznik.wynik;
}

void Psuj(std::int64_t ktory, bool wszystkieOdTad) {
    licznik.psuty = ktory;
    licznik.wszystkie = wszystkieOdTad;
}

void Szukaj(std::string_view tekst) { licznik.szukany = tekst; }

} // namespace przydzialy

#else

namespace przydzialy {
bool Liczone() { return false; }
void Zacznij() {}
TWynik Zakoncz() { return {}; }
void Psuj(std::int64_t /*ktory*/, bool /*wszystkieOdTad*/) {}
void Szukaj(std::string_view /*tekst*/) {}
} // namespace przydzialy

#endif
