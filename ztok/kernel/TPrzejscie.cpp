#include "ztok/kernel/TPrzejscie.h"

#include "ztok/kernel/TObiektBazowy.h"
#include "ztok/platform/PulaWnetrze.h"

namespace ztok {

namespace {

ZTOK_TLS_BLISKI constinit thread_local TPrzejscie* biezace = nullptr; // the innermost of this thread

} // namespace

constinit std::atomic<int> TPrzejscie::czynne{0};

TPrzejscie::TPrzejscie() noexcept : poprzednie_(biezace) {
    biezace = this;
    czynne.fetch_add(1, std::memory_order_relaxed);
}

TPrzejscie::~TPrzejscie() {
    TPrzejscie** wskaznik = &biezace;
    while (*wskaznik != this && *wskaznik != nullptr)
        wskaznik = &(*wskaznik)->poprzednie_;
    if (*wskaznik == this)
        *wskaznik = poprzednie_;
    czynne.fetch_sub(1, std::memory_order_relaxed);
}

void TPrzejscie::ZapomnijWCzynnych(const TPole& pole) noexcept {
    for (TPrzejscie* p = biezace; p != nullptr; p = p->poprzednie_)
        p->ZgubPole(pole);
}

void TPrzejscie::ZarejestrujWCzynnych() noexcept {
    for (TPrzejscie* p = biezace; p != nullptr; p = p->poprzednie_)
        p->Zarejestruj();
}

} // namespace ztok
