#include "ztok/platform/TSekcjaKrytyczna.h"

#include <new>

#include <pthread.h>

#include "ztok/platform/PlikSystemowy.h"

namespace ztok {

namespace {

pthread_mutex_t* Muteks(unsigned char* systemowa) noexcept {
    static_assert(sizeof(pthread_mutex_t) <= sizeof(TSekcjaKrytyczna));
    static_assert(alignof(pthread_mutex_t) <= alignof(TSekcjaKrytyczna));
    return std::launder(reinterpret_cast<pthread_mutex_t*>(systemowa));
}

} // namespace

TSekcjaKrytyczna::TSekcjaKrytyczna() {
    auto* muteks = ::new (static_cast<void*>(systemowa_)) pthread_mutex_t;
    pthread_mutexattr_t cechy;
    int kod = pthread_mutexattr_init(&cechy);
    if (kod == 0) {
        pthread_mutexattr_settype(&cechy, PTHREAD_MUTEX_RECURSIVE);
        kod = pthread_mutex_init(muteks, &cechy);
        pthread_mutexattr_destroy(&cechy);
    }
    if (kod != 0)
        ZglosBladSystemu(u"TSekcjaKrytyczna", static_cast<std::uint32_t>(kod));
}

TSekcjaKrytyczna::~TSekcjaKrytyczna() { pthread_mutex_destroy(Muteks(systemowa_)); }

void TSekcjaKrytyczna::Wejdz() noexcept { pthread_mutex_lock(Muteks(systemowa_)); }

bool TSekcjaKrytyczna::SprobujWejsc() noexcept { return pthread_mutex_trylock(Muteks(systemowa_)) == 0; }

void TSekcjaKrytyczna::Wyjdz() noexcept { pthread_mutex_unlock(Muteks(systemowa_)); }

} // namespace ztok
