#include <cstdio>
#include <ctime>

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include "system/System.h"
#include "ztok/platform/Pula.h"

namespace pomiary {

namespace {

double Rezydentne() {
    malloc_trim(0);
    ztok::OddajPamiecPuli();
    long strony = 0;
    if (std::FILE* plik = std::fopen("/proc/self/statm", "r"); plik != nullptr) {
        if (std::fscanf(plik, "%*d %ld", &strony) != 1)
            strony = 0;
        std::fclose(plik);
    }
    return static_cast<double>(strony) * static_cast<double>(sysconf(_SC_PAGESIZE));
}

} // namespace

// Measured in a process of its own.
double ZajetaPamiec(void (*funkcja)(void*), void* dane) {
    int rura[2];
    if (pipe(rura) != 0)
        return -1;
    const pid_t dziecko = fork();
    if (dziecko == 0) {
        const double przed = Rezydentne();
        try {
            funkcja(dane);
        } catch (...) {
            _exit(1); // the checks that follow tell of it
        }
        const double wynik = Rezydentne() - przed;
        _exit(write(rura[1], &wynik, sizeof wynik) == sizeof wynik ? 0 : 1);
    }
    double wynik = -1;
    close(rura[1]);
    if (dziecko < 0 || read(rura[0], &wynik, sizeof wynik) != sizeof wynik)
        wynik = -1;
    close(rura[0]);
    if (dziecko > 0)
        waitpid(dziecko, nullptr, 0);
    return wynik;
}

void ZatrzymujPamiec() {
    constexpr int kBezGranic = 0x7FFFFFFF;
    mallopt(M_TRIM_THRESHOLD, kBezGranic);
    mallopt(M_MMAP_MAX, 0);
}

double Sekundy() {
    timespec czas{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &czas);
    return static_cast<double>(czas.tv_sec) + static_cast<double>(czas.tv_nsec) * 1e-9;
}

const char* OpisSystemu() {
    return "Allocator: glibc's malloc, freed memory kept; ztok's pool on top of it holds objects, fields, short lists "
           "and\ntexts of up to 250 units. Times are the processor's.";
}

const std::size_t kNajwiekszeDrzewo = 2000000;

} // namespace pomiary
