// The library's main job on real data: the Unicode character database becomes a tree of objects, which is saved to a
// file, read back and proven equal.
//
//     znaki UnicodeData.txt Blocks.txt [FILE]
//
// The tree is saved to FILE, or to a temporary file. Ends with 0 when both trees are equal, 1 when they differ, 2 when
// the data are not there or not as they should be.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "Wczytywanie.h"
#include "Znaki.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/Pula.h"

namespace {

// Runs one step and prints its time.
template <class F> auto Krok(const char* nazwa, F krok) {
    const auto start = std::chrono::steady_clock::now();
    const auto wynik = krok();
    const std::chrono::duration<double, std::milli> czas = std::chrono::steady_clock::now() - start;
    std::printf("  %-28s %8.2f ms\n", nazwa, czas.count());
    return wynik;
}

std::int64_t IleZnakow(const TListaBlokow& bloki) {
    std::int64_t ile = 0;
    for (const TBlok* blok : bloki)
        if (const TListaZnakow* znaki = blok->GetZnaki(); znaki != nullptr)
            ile += znaki->IleObiektow();
    return ile;
}

// Every field of every object, texts with their letter case.
bool Rowne(const TListaBlokow& a, const TListaBlokow& b) {
    ztok::TPorownywaczDanych porownywacz(&a, &b, ztok::rpWszystkiePola, ztok::rlRozmLiterWazny, ztok::LocaleNiezmienny,
                                         ztok::tprRefJakoWskazn);
    return a.Porownaj(b, &porownywacz) == 0;
}

// The first character of the name, block by block; null when there is none.
TZnak* ZnakONazwie(const TListaBlokow& bloki, std::u16string_view nazwa) {
    const ztok::TArgument pola[] = {TZnak::nrNazwa};
    const ztok::TArgument wartosci[] = {nazwa};
    for (const TBlok* blok : bloki) {
        const TListaZnakow* znaki = blok->GetZnaki();
        std::int32_t gdzie = -1;
        if (znaki != nullptr && znaki->JestObiekt(pola, wartosci, gdzie, ztok::rlRozmLiterWazny, ztok::rwOdPoczatku))
            return (*znaki)[gdzie];
    }
    return nullptr;
}

// What the comparison says is worth something only if it sees one letter of another case among all texts.
bool WidzacRoznice(const TListaBlokow& bloki, const TListaBlokow& wczytane, TZnak& znak) {
    const std::u16string nazwa = znak.GetNazwa();
    std::u16string zmieniona = nazwa;
    zmieniona.front() = static_cast<char16_t>(zmieniona.front() ^ 0x20U); // L and l
    const std::uint32_t wyroznik = wczytane.DajWyroznikObiektu();
    znak.SetNazwa(zmieniona);
    const bool widac =
        !Rowne(bloki, wczytane) && bloki.Porownaj(wczytane) == 0 && wczytane.DajWyroznikObiektu() != wyroznik;
    znak.SetNazwa(nazwa);
    return widac;
}

void WypiszKategorie(const TListaBlokow& bloki) {
    std::map<std::u16string, int> licznik;
    for (const TBlok* blok : bloki)
        if (const TListaZnakow* znaki = blok->GetZnaki(); znaki != nullptr)
            for (const TZnak* znak : *znaki)
                ++licznik[znak->GetKategoria()];
    std::vector<std::pair<std::u16string, int>> czeste(licznik.begin(), licznik.end());
    std::stable_sort(czeste.begin(), czeste.end(), [](const auto& a, const auto& b) { return a.second > b.second; });
    std::printf("most frequent of %zu categories:", czeste.size());
    for (std::size_t i = 0; i < czeste.size() && i < 5; ++i)
        std::printf("  %s %d", ztok::Utf8ZUtf16(czeste[i].first).c_str(), czeste[i].second);
    std::printf("\n");
}

void WypiszZnak(const TZnak& znak) {
    const std::uint32_t kod = znak.GetKod();
    const std::u16string tekst = kod < 0x10000 ? std::u16string{static_cast<char16_t>(kod)}
                                               : std::u16string{static_cast<char16_t>(0xD7C0U + (kod >> 10U)),
                                                                static_cast<char16_t>(0xDC00U + (kod & 0x3FFU))};
    std::printf("looked up:  U+%04X %s  %s, category %s, combining class %d, mirrored: %s, first named %s\n",
                static_cast<unsigned>(kod), ztok::Utf8ZUtf16(tekst).c_str(), ztok::Utf8ZUtf16(znak.GetNazwa()).c_str(),
                ztok::Utf8ZUtf16(znak.GetKategoria()).c_str(), znak.GetKlasaLaczenia(),
                znak.GetLustrzany() ? "yes" : "no", ztok::Utf8ZUtf16(znak.GetStaraNazwa()).c_str());
}

void WypiszPamiec(std::int64_t drzewa, std::int64_t obiektow) {
    std::printf("memory:     %lld allocations for two trees of %lld objects each", static_cast<long long>(drzewa),
                static_cast<long long>(obiektow));
    // Where the system tells of this process; Wine would tell of its server.
    std::ifstream stan("/proc/self/status");
    std::string wiersz;
    if (std::getline(stan, wiersz) && wiersz == "Name:\tznaki")
        while (std::getline(stan, wiersz))
            if (wiersz.starts_with("VmHWM:"))
                std::printf(", at most %.1f MiB of the process", std::strtod(wiersz.c_str() + 6, nullptr) / 1024);
    std::printf("\n");
}

bool Pokaz(const std::string& plikZnakow, const std::string& plikBlokow, const std::u16string& plik) {
    const std::int64_t zajetePrzed = ztok::PulaZajete();
    TListaBlokow bloki;
    TListaBlokow wczytane;
    const std::size_t rekordow = Krok("parse and build", [&] { return WczytajZnaki(plikZnakow, plikBlokow, bloki); });
    const std::int64_t bajtow = Krok("save", [&] {
        ztok::TStrumienPlikowy strumien(plik, ztok::ETrybPliku::Tworzenie);
        bloki.ZapiszWStrumieniu(strumien);
        strumien.Flush();
        return strumien.GetSize();
    });
    const bool doKonca = Krok("read back", [&] {
        ztok::TStrumienPlikowy strumien(plik, ztok::ETrybPliku::Odczyt);
        wczytane.WczytajZeStrumienia(strumien);
        return strumien.Pozostalo() == 0;
    });
    const std::int64_t drzewa = ztok::PulaZajete() - zajetePrzed;
    const bool rowne = Krok("compare, letter case matters", [&] { return Rowne(bloki, wczytane); });
    const auto [wyroznik, wyroznikWczytanych] =
        Krok("two fingerprints", [&] { return std::pair(bloki.DajWyroznikObiektu(), wczytane.DajWyroznikObiektu()); });
    TZnak* znak = Krok("look up by name", [&] { return ZnakONazwie(wczytane, u"LATIN SMALL LETTER L WITH STROKE"); });

    const std::int64_t znakow = IleZnakow(wczytane);
    std::printf("records:    %zu in %d blocks, read back %lld\n", rekordow, bloki.IleObiektow(),
                static_cast<long long>(znakow));
    std::printf("file:       %lld bytes, %.1f a record\n", static_cast<long long>(bajtow),
                static_cast<double>(bajtow) / static_cast<double>(rekordow));
    // The list, its blocks with a list each, and the characters.
    WypiszPamiec(drzewa, 1 + 2 * std::int64_t{wczytane.IleObiektow()} + znakow);
    WypiszKategorie(wczytane);
    if (znak != nullptr)
        WypiszZnak(*znak);
    const bool widac =
        znak != nullptr && Krok("see one changed letter", [&] { return WidzacRoznice(bloki, wczytane, *znak); });

    const std::pair<const char*, bool> sprawdzenia[] = {
        {"every record is in the tree read back", znakow == static_cast<std::int64_t>(rekordow)},
        {"the file is read to its end", doKonca},
        {"equal field by field, with letter case", rowne},
        {"equal by fingerprint", wyroznik == wyroznikWczytanych},
        {"found by name", znak != nullptr},
        {"one letter of another case is a difference", widac},
    };
    bool dobrze = true;
    for (const auto& [co, jest] : sprawdzenia) {
        std::printf("%-44s %s\n", co, jest ? "yes" : "NO");
        dobrze = dobrze && jest;
    }
    std::printf("fingerprint: %08X and %08X\n", static_cast<unsigned>(wyroznik),
                static_cast<unsigned>(wyroznikWczytanych));
    return dobrze;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3 && argc != 4) {
        std::fprintf(stderr, "znaki UnicodeData.txt Blocks.txt [FILE]\n");
        return 2;
    }
    try {
        const std::filesystem::path plik =
            argc == 4 ? std::filesystem::path(argv[3]) : std::filesystem::temp_directory_path() / "ztok-znaki.dat";
        const bool dobrze = Pokaz(argv[1], argv[2], plik.u16string());
        if (argc != 4)
            std::filesystem::remove(plik);
        return dobrze ? 0 : 1;
    } catch (const std::exception& blad) {
        std::fprintf(stderr, "znaki: %s\n", blad.what());
        return 2;
    }
}
