#include "ztok/platform/TObiektOgolny.h"

#include <cstdlib>
#include <new>

#include "ztok/platform/CzesciBloku.h"
#include "ztok/platform/DeklaracjaKlasy.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/Powiadomienie.h"
#include "ztok/platform/PulaWnetrze.h"
#include "ztok/platform/TPierwszyBlad.h"
#include "ztok/platform/Wyjatki.h"

namespace ztok {

const TKlasa* TObiektOgolny::KlasaStatyczna() noexcept {
    static constinit TStanKlasy stan;
    static constinit const TKlasa klasa = {u"TObiektOgolny", nullptr,       nullptr, 0,
                                           kpInne,           false,         nullptr, nullptr,
                                           nullptr,          &ModulBiezacy, &stan,   sizeof(TObiektOgolny)};
    return &klasa;
}

const TKlasa* TObiektOgolny::Klasa() const noexcept { return KlasaStatyczna(); }

TObiektOgolny::~TObiektOgolny() = default;

void* TObiektOgolny::operator new(std::size_t rozmiar) { return pula::Przydziel(rozmiar); }

namespace {

// What stands in the memory of an object that was freed, until somebody else gets it: it tells whoever frees the object
// once more.
class TZwolnionyObiekt final : public TObiektOgolny {
  public:
    [[nodiscard]] const TKlasa* Klasa() const noexcept override {
        static constinit TStanKlasy stan;
        static constinit const TKlasa klasa = {u"TZwolnionyObiekt",
                                               &KlasaTypu<TObiektOgolny>,
                                               nullptr,
                                               0,
                                               kpInne,
                                               false,
                                               nullptr,
                                               nullptr,
                                               nullptr,
                                               &ModulBiezacy,
                                               &stan,
                                               sizeof(TZwolnionyObiekt)};
        return &klasa;
    }

  protected:
    [[nodiscard]] bool MoznaZwolnic(EZwalniajacy /*kto*/, TPierwszyBlad& blad) const noexcept override {
        blad.Wykonaj([] { throw EWyjatek(Komunikat(kmObiektZwolniony)); });
        return false;
    }
    [[nodiscard]] bool Zakoncz(EZwalniajacy kto, TPierwszyBlad& blad) noexcept override {
        return MoznaZwolnic(kto, blad);
    }
};
static_assert(sizeof(TZwolnionyObiekt) == sizeof(void*), "the first word of a free block");

} // namespace

void TObiektOgolny::operator delete(void* blok, std::size_t rozmiar) noexcept {
    // Only plain fields leave the block of their object, and only by TObiekt::UstawPole.
    if (rozmiar <= pula::Ziarno) {
        if (pula::czesciWyniesione.load(std::memory_order_relaxed) != 0 && pula::OddajCzesc(blok)) [[unlikely]]
            return;
    } else {
        ::new (blok) TZwolnionyObiekt;
    }
    pula::Zwolnij(blok, rozmiar);
}

void TObiektOgolny::WykonajDestrukcje() {}

void TObiektOgolny::Odlacz() noexcept {}

bool TObiektOgolny::MoznaZwolnic(EZwalniajacy /*kto*/, TPierwszyBlad& /*blad*/) const noexcept { return true; }

bool TObiektOgolny::Zakoncz(EZwalniajacy /*kto*/, TPierwszyBlad& blad) noexcept {
    blad.Wykonaj([this] { WykonajDestrukcje(); });
    return true;
}

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

bool ZakonczIUsun(TObiektOgolny* obiekt, EZwalniajacy kto, TPierwszyBlad& blad) noexcept {
    if (!TPrzydzial::Zakoncz(*obiekt, kto, blad))
        return false;
    TPrzydzial::Usun(obiekt);
    return true;
}

bool Zwolnij(TObiektOgolny* obiekt, EZwalniajacy kto, TPierwszyBlad& blad) noexcept {
    if (obiekt == nullptr)
        return true;
    TZwalnianie& z = zwalnianie;
    if (z.zaglebienie >= kGranicaZaglebienia) {
        if (!TPrzydzial::MoznaZwolnic(*obiekt, kto, blad))
            return false;
        if (z.Odloz(obiekt)) {
            TPrzydzial::Odlacz(*obiekt);
            return true;
        }
    }
    ++z.zaglebienie;
    const bool zwolniony = ZakonczIUsun(obiekt, kto, blad);
    if (z.zaglebienie == 1 && z.pojemnosc != 0) {
        while (z.ile > 0)
            ZakonczIUsun(z.oczekujace[--z.ile], EZwalniajacy::Wlasciciel, blad);
        z.OddajPamiec();
    }
    --z.zaglebienie;
    return zwolniony;
}

} // namespace

void Zwolnij(TObiektOgolny* obiekt) {
    TPierwszyBlad blad;
    Zwolnij(obiekt, EZwalniajacy::Inny, blad);
    blad.Rzuc();
}

bool ZwolnijTrzymany(TObiektOgolny* obiekt, TPierwszyBlad& blad) noexcept {
    return Zwolnij(obiekt, EZwalniajacy::Wlasciciel, blad);
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
