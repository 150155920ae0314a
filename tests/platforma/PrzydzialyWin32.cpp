// Windows binds each module's calls to a table of addresses: the entries of the allocation functions are changed in the
// library, in the C++ runtime and in this program.
#if defined(_WIN32)

#include <cstdlib>
#include <cstring>
#include <malloc.h>

#include <windows.h>

#include "Przydzialy.h"

namespace {

struct TFunkcja {
    const char* nazwa;
    void (*nasza)();
    void (*prawdziwa)();
};

void* Malloc(std::size_t rozmiar);
void* Calloc(std::size_t ile, std::size_t rozmiar);
void* Realloc(void* blok, std::size_t rozmiar);
void Free(void* blok);

constinit TFunkcja funkcje[] = {
    {"malloc", reinterpret_cast<void (*)()>(&Malloc), nullptr},
    {"calloc", reinterpret_cast<void (*)()>(&Calloc), nullptr},
    {"realloc", reinterpret_cast<void (*)()>(&Realloc), nullptr},
    {"free", reinterpret_cast<void (*)()>(&Free), nullptr},
};

template <class F> F* Prawdziwa(std::size_t nr) { return reinterpret_cast<F*>(funkcje[nr].prawdziwa); }

std::int64_t Rozmiar(void* blok) {
    return blok == nullptr || !przydzialy::Liczy() ? 0 : static_cast<std::int64_t>(_msize(blok));
}

void* Liczony(void* blok) {
    przydzialy::Przybylo(Rozmiar(blok));
    return blok;
}

void* Malloc(std::size_t rozmiar) {
    return przydzialy::Padnie(rozmiar) ? nullptr : Liczony(Prawdziwa<void*(std::size_t)>(0)(rozmiar));
}
void* Calloc(std::size_t ile, std::size_t rozmiar) {
    return przydzialy::Padnie(ile * rozmiar) ? nullptr
                                             : Liczony(Prawdziwa<void*(std::size_t, std::size_t)>(1)(ile, rozmiar));
}
void* Realloc(void* blok, std::size_t rozmiar) {
    if (rozmiar != 0 && przydzialy::Padnie(rozmiar))
        return nullptr;
    const std::int64_t stary = Rozmiar(blok);
    void* nowy = Prawdziwa<void*(void*, std::size_t)>(2)(blok, rozmiar);
    if (nowy != nullptr || rozmiar == 0)
        przydzialy::Przybylo(Rozmiar(nowy) - stary);
    return nowy;
}
void Free(void* blok) {
    if (blok != nullptr && przydzialy::Liczy())
        przydzialy::Zwalniany(blok, _msize(blok));
    Prawdziwa<void(void*)>(3)(blok);
}

template <class T> T* Miejsce(HMODULE modul, DWORD przesuniecie) {
    return reinterpret_cast<T*>(reinterpret_cast<char*>(modul) + przesuniecie);
}

void Przejmij(HMODULE modul) {
    const auto* dos = Miejsce<IMAGE_DOS_HEADER>(modul, 0);
    const auto* naglowek = Miejsce<IMAGE_NT_HEADERS>(modul, static_cast<DWORD>(dos->e_lfanew));
    const DWORD spis = naglowek->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (auto* skad = Miejsce<IMAGE_IMPORT_DESCRIPTOR>(modul, spis); skad->Name != 0; ++skad) {
        auto* nazwy = Miejsce<IMAGE_THUNK_DATA>(modul, skad->OriginalFirstThunk);
        for (auto* adres = Miejsce<IMAGE_THUNK_DATA>(modul, skad->FirstThunk); adres->u1.Function != 0;
             ++adres, ++nazwy) {
            if (IMAGE_SNAP_BY_ORDINAL(nazwy->u1.Ordinal))
                continue;
            const char* nazwa = Miejsce<IMAGE_IMPORT_BY_NAME>(modul, nazwy->u1.AddressOfData)->Name;
            for (TFunkcja& funkcja : funkcje) {
                if (std::strcmp(nazwa, funkcja.nazwa) != 0)
                    continue;
                DWORD ochrona = 0;
                if (VirtualProtect(adres, sizeof *adres, PAGE_READWRITE, &ochrona) == 0)
                    std::abort();
                funkcja.prawdziwa = reinterpret_cast<void (*)()>(adres->u1.Function);
                adres->u1.Function = reinterpret_cast<ULONG_PTR>(funkcja.nasza);
                VirtualProtect(adres, sizeof *adres, ochrona, &ochrona);
            }
        }
    }
}

} // namespace

void przydzialy::PrzejmijMalloc() {
    static const bool przejete = [] {
        // The thread's counter is made before its first use inside an allocation.
        Przybylo(0);
        for (const char* modul : {"ztok.dll", "libstdc++-6.dll", static_cast<const char*>(nullptr)})
            Przejmij(GetModuleHandleA(modul));
        return true;
    }();
    static_cast<void>(przejete);
}

#endif
