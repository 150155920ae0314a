#include "SystemTestowy.h"

#include <cstdlib>

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#include <pthread.h>
#endif

namespace systemTestowy {

#if defined(_WIN32)

namespace {
struct TZadanie {
    void (*funkcja)(void*);
    void* dane;
};
DWORD WINAPI Wykonaj(void* zadanie) {
    const auto& z = *static_cast<TZadanie*>(zadanie);
    z.funkcja(z.dane);
    return 0;
}
} // namespace

void WMalymWatku(std::size_t stos, void (*funkcja)(void*), void* dane) {
    TZadanie zadanie{funkcja, dane};
    const HANDLE watek = CreateThread(nullptr, stos, &Wykonaj, &zadanie, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    if (watek == nullptr)
        std::abort();
    WaitForSingleObject(watek, INFINITE);
    CloseHandle(watek);
}

TZaladowany::TZaladowany(const std::string& sciezka) : uchwyt_(LoadLibraryA(sciezka.c_str())) {}
TZaladowany::~TZaladowany() {
    if (uchwyt_ != nullptr)
        FreeLibrary(static_cast<HMODULE>(uchwyt_));
}
void (*TZaladowany::Adres(const char* nazwa) const)() {
    return reinterpret_cast<void (*)()>(GetProcAddress(static_cast<HMODULE>(uchwyt_), nazwa));
}
bool TZaladowany::WPamieci(const std::string& sciezka) {
    return GetModuleHandleA(sciezka.substr(sciezka.find_last_of("/\\") + 1).c_str()) != nullptr;
}

#else

void WMalymWatku(std::size_t stos, void (*funkcja)(void*), void* dane) {
    struct TZadanie {
        void (*funkcja)(void*);
        void* dane;
    } zadanie{funkcja, dane};
    pthread_attr_t cechy;
    pthread_attr_init(&cechy);
    pthread_attr_setstacksize(&cechy, stos);
    pthread_t watek{};
    const auto wykonaj = [](void* z) -> void* {
        static_cast<TZadanie*>(z)->funkcja(static_cast<TZadanie*>(z)->dane);
        return nullptr;
    };
    if (pthread_create(&watek, &cechy, wykonaj, &zadanie) != 0)
        std::abort();
    pthread_join(watek, nullptr);
    pthread_attr_destroy(&cechy);
}

TZaladowany::TZaladowany(const std::string& sciezka) : uchwyt_(dlopen(sciezka.c_str(), RTLD_NOW | RTLD_LOCAL)) {}
TZaladowany::~TZaladowany() {
    if (uchwyt_ != nullptr)
        dlclose(uchwyt_);
}
void (*TZaladowany::Adres(const char* nazwa) const)() { return reinterpret_cast<void (*)()>(dlsym(uchwyt_, nazwa)); }
bool TZaladowany::WPamieci(const std::string& sciezka) {
    void* uchwyt = dlopen(sciezka.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (uchwyt == nullptr)
        return false;
    dlclose(uchwyt);
    return true;
}

#endif

} // namespace systemTestowy
