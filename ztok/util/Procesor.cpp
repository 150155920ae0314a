#include "ztok/util/Procesor.h"

#include <atomic>

namespace ztok {

namespace {

unsigned RozszerzeniaProcesora() noexcept {
    unsigned wynik = 0;
#if (defined(__x86_64__) || defined(__i386__)) && defined(__GNUC__)
    // NOLINTBEGIN(readability-implicit-bool-conversion): an int with some compilers, a bool with others
    if (__builtin_cpu_supports("pclmul") && __builtin_cpu_supports("sse4.1"))
        wynik |= rzClmul;
#if defined(__x86_64__)
    if (__builtin_cpu_supports("bmi"))
        wynik |= rzBmi;
#endif
        // NOLINTEND(readability-implicit-bool-conversion)
#endif
    return wynik;
}

constinit std::atomic<unsigned> wlaczone{rzWszystkie};

unsigned Uzywane() noexcept {
    static const unsigned ma = RozszerzeniaProcesora();
    return ma & wlaczone.load(std::memory_order_relaxed);
}

} // namespace

unsigned UzywajRozszerzen(unsigned dozwolone) noexcept {
    wlaczone.store(dozwolone, std::memory_order_relaxed);
    return Uzywane();
}

bool UzywaRozszerzenia(ERozszerzenie rozszerzenie) noexcept { return (Uzywane() & rozszerzenie) != 0; }

} // namespace ztok
