#include <windows.h>
// after it
#include <psapi.h>

#include "system/System.h"
#include "ztok/platform/Pula.h"

namespace pomiary {

namespace {

double Rezydentne() {
    ztok::OddajPamiecPuli();
    HeapCompact(GetProcessHeap(), 0);
    PROCESS_MEMORY_COUNTERS liczniki{};
    liczniki.cb = sizeof liczniki;
    return GetProcessMemoryInfo(GetCurrentProcess(), &liczniki, sizeof liczniki) != 0
               ? static_cast<double>(liczniki.WorkingSetSize)
               : 0;
}

} // namespace

// Measured in this process: it does not see what lands in memory that was freed before.
double ZajetaPamiec(void (*funkcja)(void*), void* dane) {
    const double przed = Rezydentne();
    funkcja(dane);
    return Rezydentne() - przed;
}

void ZatrzymujPamiec() {}

// The processor's time comes in steps of milliseconds here.
double Sekundy() {
    static const double naSekunde = [] {
        LARGE_INTEGER czestosc{};
        QueryPerformanceFrequency(&czestosc);
        return static_cast<double>(czestosc.QuadPart);
    }();
    LARGE_INTEGER licznik{};
    QueryPerformanceCounter(&licznik);
    return static_cast<double>(licznik.QuadPart) / naSekunde;
}

const char* OpisSystemu() {
    return "32-bit Windows. Allocator: the C runtime's malloc on the heap of the process (under Wine: Wine's); ztok's "
           "pool on top\nof it holds objects, fields, short lists and texts of up to 250 units. Times are those of the "
           "clock on the wall.";
}

// Two gigabytes of addresses.
const std::size_t kNajwiekszeDrzewo = 200000;

} // namespace pomiary
