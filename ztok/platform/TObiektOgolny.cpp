#include "ztok/platform/TObiektOgolny.h"

#include <cstdlib>

#include "ztok/platform/CzesciBloku.h"
#include "ztok/platform/DeklaracjaKlasy.h"
#include "ztok/platform/Powiadomienie.h"
#include "ztok/platform/PulaWnetrze.h"
#include "ztok/platform/TPierwszyBlad.h"
#include "ztok/platform/Wyjatki.h"

namespace ztok {

const TKlasa* TObiektOgolny::KlasaStatyczna() noexcept {
    static constinit TStanKlasy stan;
    static constinit const TKlasa klasa = {u"TObiektOgolny", nullptr, nullptr,       0,    kpInne, false, nullptr,
                                           nullptr,          nullptr, &ModulBiezacy, &stan};
    return &klasa;
}

const TKlasa* TObiektOgolny::Klasa() const noexcept { return KlasaStatyczna(); }

TObiektOgolny::~TObiektOgolny() = default;

void* TObiektOgolny::operator new(std::size_t rozmiar) { return pula::Przydziel(rozmiar); }

void TObiektOgolny::operator delete(void* blok, std::size_t rozmiar) noexcept {
    // Only plain fields leave the block of their object, and only by TObiekt::UstawPole.
    if (rozmiar <= pula::Ziarno && pula::czesciWyniesione.load(std::memory_order_relaxed) != 0 &&
        pula::OddajCzesc(blok)) [[unlikely]]
        return;
    pula::Zwolnij(blok, rozmiar);
}

void TObiektOgolny::WykonajDestrukcje() {}

void TObiektOgolny::Odlacz() noexcept {}

namespace {

// Levels of nested frees beyond which a child waits in a queue instead of going deeper: a few hundred bytes of stack a
// level keep this far inside a small thread's stack.
constexpr int kGranicaZaglebienia = 48;

// Trivially destructible, so that it does not tie the module to the thread.
struct TZwalnianie {
    int zaglebienie;
    TObiektOgolny** oczekujace;
    std::size_t ile;
    std::size_t pojemnosc;

    bool Odloz(TObiektOgolny* obiekt) noexcept {
        if (ile == pojemnosc) {
            const std::size_t nowa = pojemnosc == 0 ? 64 : 2 * pojemnosc;
            void* blok = std::realloc(oczekujace, nowa * sizeof(TObiektOgolny*));
            if (blok == nullptr)
                return false; // deeper, then
            oczekujace = static_cast<TObiektOgolny**>(blok);
            pojemnosc = nowa;
        }
        oczekujace[ile++] = obiekt;
        return true;
    }
    void OddajPamiec() noexcept {
        std::free(oczekujace);
        oczekujace = nullptr;
        pojemnosc = 0;
    }
};

ZTOK_TLS_BLISKI constinit thread_local TZwalnianie zwalnianie{};

void ZakonczIUsun(TObiektOgolny* obiekt, TPierwszyBlad& blad) noexcept {
    blad.Wykonaj([obiekt] { TPrzydzial::Zakoncz(*obiekt); });
    TPrzydzial::Usun(obiekt);
}

} // namespace

void Zwolnij(TObiektOgolny* obiekt) {
    if (obiekt == nullptr)
        return;
    TZwalnianie& z = zwalnianie;
    if (z.zaglebienie >= kGranicaZaglebienia && z.Odloz(obiekt)) {
        TPrzydzial::Odlacz(*obiekt);
        return;
    }
    TPierwszyBlad blad;
    ++z.zaglebienie;
    ZakonczIUsun(obiekt, blad);
    if (z.zaglebienie == 1 && z.pojemnosc != 0) {
        while (z.ile > 0)
            ZakonczIUsun(z.oczekujace[--z.ile], blad);
        z.OddajPamiec();
    }
    --z.zaglebienie;
    blad.Rzuc();
}

void ZwolnijCicho(TObiektOgolny* obiekt) noexcept {
    try {
        Zwolnij(obiekt);
    } catch (const EWyjatek& e) {
        Powiadom(e.Komunikat());
    } catch (...) {
        Powiadom(u"?");
    }
}

} // namespace ztok
