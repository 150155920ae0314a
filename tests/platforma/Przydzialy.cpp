#include "Przydzialy.h"

#include <cstdlib>

#include "ztok/platform/PulaWnetrze.h"

namespace przydzialy {

namespace {

struct TLicznik {
    bool czynny;
    bool wszystkie;
    std::int64_t psuty; // -1: none
    std::int64_t teraz;
    std::string_view szukany;
    TWynik wynik;
};
constinit thread_local TLicznik licznik{};

// What a block of the pool takes.
std::int64_t Zajmuje(std::size_t rozmiar) noexcept {
    return static_cast<std::int64_t>((rozmiar + ztok::pula::Ziarno - 1) / ztok::pula::Ziarno * ztok::pula::Ziarno);
}

constexpr ztok::pula::TNadzorPuli Nadzor = {
    [](std::size_t rozmiar) noexcept {
        if (Padnie(rozmiar))
            return false;
        ++licznik.wynik.zPuli;
        Przybylo(Zajmuje(rozmiar));
        return true;
    },
    [](std::size_t rozmiar) noexcept { Przybylo(-Zajmuje(rozmiar)); },
};

} // namespace

ZTOK_BEZ_ASAN bool Liczy() noexcept { return licznik.czynny; }

ZTOK_BEZ_ASAN bool Padnie(std::size_t rozmiar) noexcept {
    if (!licznik.czynny)
        return false;
    const std::int64_t nr = licznik.wynik.ile++;
    if (static_cast<std::int64_t>(rozmiar) > licznik.wynik.najwiekszy)
        licznik.wynik.najwiekszy = static_cast<std::int64_t>(rozmiar);
    return licznik.psuty >= 0 && (nr == licznik.psuty || (licznik.wszystkie && nr > licznik.psuty));
}

ZTOK_BEZ_ASAN void Przybylo(std::int64_t bajty) noexcept {
    if (!licznik.czynny)
        return;
    licznik.teraz += bajty;
    if (licznik.teraz > licznik.wynik.szczyt)
        licznik.wynik.szczyt = licznik.teraz;
}

ZTOK_BEZ_ASAN void Zwalniany(const void* blok, std::size_t rozmiar) noexcept {
    Przybylo(-static_cast<std::int64_t>(rozmiar));
    if (licznik.czynny && !licznik.szukany.empty() &&
        std::string_view(static_cast<const char*>(blok), rozmiar).find(licznik.szukany) != std::string_view::npos)
        licznik.wynik.znaleziony = true;
}

void Zacznij() {
    PrzejmijMalloc();
    ztok::pula::NadzorujPule(&Nadzor);
    licznik = {};
    licznik.psuty = -1;
    licznik.czynny = true;
}

TWynik Zakoncz() {
    licznik.czynny = false;
    ztok::pula::NadzorujPule(nullptr);
    licznik.wynik.zostalo = licznik.teraz;
    return licznik.wynik;
}

void Psuj(std::int64_t ktory, bool wszystkieOdTad) {
    if (!licznik.czynny)
        std::abort(); // the test would look for nothing
    licznik.psuty = ktory;
    licznik.wszystkie = wszystkieOdTad;
}

void Szukaj(std::string_view tekst) { licznik.szukany = tekst; }

} // namespace przydzialy
