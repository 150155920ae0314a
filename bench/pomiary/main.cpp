// Measures the library beside what a user would take instead: in one run, on the same data, with one allocator.
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string_view>

#include "pomiary/Grupy.h"
#include "wlasne/Ztok.h"

namespace pomiary {

namespace {

constexpr const char* kPlikZnakow = "/usr/share/unicode/UnicodeData.txt";

// False for an argument that is none of the program's.
bool Wczytaj(TOpcje& opcje, std::string_view argument) {
    const auto zaczyna = [&](std::string_view poczatek) {
        const bool tak = argument.starts_with(poczatek);
        argument.remove_prefix(tak ? poczatek.size() : 0);
        return tak;
    };
    if (argument == "--proba")
        opcje.proba = true;
    else if (zaczyna("--rundy="))
        opcje.rundy = std::atoi(argument.data());
    else if (zaczyna("--wiersze="))
        opcje.wiersze = argument;
    else
        return false;
    return opcje.rundy > 0;
}

void Wszystko(const TOpcje& opcje) {
    TPomiary pomiary(opcje);
    const dane::TBaza baza = dane::GenerujBaze(pomiary.Ile(20000, 40));
    const dane::TZnaki znaki = dane::WczytajZnaki(kPlikZnakow, pomiary.Ile(1000000, 300));
    Sprawdz(!znaki.znaki.empty(), kPlikZnakow, "unicode-data");
    std::printf("%zu objects of invoices, %.1f MB of values; %zu characters. %d rounds, interleaved; medians.\n"
                "%s\n"
                "Rows use each library as its manual shows, \"tuned\" ones keep one buffer in memory. Libraries and "
                "\"plain, UTF-8\" hold\ntexts as UTF-8, \"plain C++\" as UTF-16; ztok holds UTF-16 and writes UTF-8. "
                "The plain columns write the same bytes as ztok.\n",
                dane::IleObiektow(baza), static_cast<double>(dane::BajtyWartosci(baza)) / 1e6, znaki.znaki.size(),
                opcje.proba ? 1 : opcje.rundy, OpisSystemu());
    std::fflush(stdout);
    // First, while the heap is in order: it measures memory too.
    MierzSerie(pomiary, baza, znaki);
    MierzFazy(pomiary, baza);
    MierzOperacje(pomiary, baza);
    MierzModel(pomiary, baza, znaki);
    MierzKodowania(pomiary, baza);
    MierzBajty(pomiary);
    MierzWzrost(pomiary);
    std::fputc('\n', stderr);
    pomiary.Tabela.Drukuj();
}

} // namespace

} // namespace pomiary

int main(int argc, char** argv) {
    pomiary::TOpcje opcje;
    for (int i = 1; i < argc; ++i)
        if (!pomiary::Wczytaj(opcje, argv[i])) {
            std::fprintf(stderr, "%s [--proba] [--rundy=N] [--wiersze=TEXT]\n", argv[0]);
            return 2;
        }
    try {
        pomiary::ZatrzymujPamiec();
        pomiary::RejestrujKlasyPomiarow();
        pomiary::Wszystko(opcje);
    } catch (const std::exception& blad) {
        std::fprintf(stderr, "pomiary: %s\n", blad.what());
        return 1;
    }
    return 0;
}
