#include <cstdint>

#include <pthread.h>
#include <sys/mman.h>

#include "ztok/platform/PulaWnetrze.h"

namespace ztok::pula {

// The variable is for speed and has no destructor, which would keep the library loaded until the thread ends; the key
// is for its callback at the end of the thread, and is deleted when the library goes.
constinit thread_local TPulaWatku* pulaWatku = nullptr;

namespace {

constinit pthread_key_t klucz{};
constinit bool jestKlucz = false;

pthread_mutex_t blokada = PTHREAD_MUTEX_INITIALIZER;

void KoniecWatku(void* pula) {
    pulaWatku = nullptr;
    ZakonczWatek(static_cast<TPulaWatku*>(pula));
}

void* Mapuj(std::size_t rozmiar) noexcept {
    void* pamiec = mmap(nullptr, rozmiar, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return pamiec == MAP_FAILED ? nullptr : pamiec;
}

} // namespace

bool UstawPuleWatku(TPulaWatku* pula) noexcept {
    if (!jestKlucz)
        jestKlucz = pthread_key_create(&klucz, &KoniecWatku) == 0;
    if (!jestKlucz || pthread_setspecific(klucz, pula) != 0)
        return false;
    pulaWatku = pula;
    return true;
}

void ZwolnijMiejscaWatkow() noexcept {
    if (jestKlucz)
        pthread_key_delete(klucz);
    jestKlucz = false;
    pulaWatku = nullptr;
}

void Zablokuj() noexcept { pthread_mutex_lock(&blokada); }

bool SprobujZablokowac() noexcept { return pthread_mutex_trylock(&blokada) == 0; }

void Odblokuj() noexcept { pthread_mutex_unlock(&blokada); }

void* PrzydzielPlyte() noexcept {
    // The system mostly puts a mapping right below the last one, which was aligned.
    void* pamiec = Mapuj(RozmiarPlyty);
    if (pamiec == nullptr || reinterpret_cast<std::uintptr_t>(pamiec) % RozmiarPlyty == 0)
        return pamiec;
    munmap(pamiec, RozmiarPlyty);
    pamiec = Mapuj(2 * RozmiarPlyty);
    if (pamiec == nullptr)
        return nullptr;
    auto* poczatek = static_cast<std::uint8_t*>(pamiec);
    const std::size_t przed = (RozmiarPlyty - reinterpret_cast<std::uintptr_t>(pamiec) % RozmiarPlyty) % RozmiarPlyty;
    if (przed != 0)
        munmap(poczatek, przed);
    munmap(poczatek + przed + RozmiarPlyty, RozmiarPlyty - przed);
    return poczatek + przed;
}

void ZwolnijPlyte(void* plyta) noexcept { munmap(plyta, RozmiarPlyty); }

} // namespace ztok::pula
