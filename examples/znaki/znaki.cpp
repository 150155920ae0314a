// The library's main job on real data: the Unicode character database becomes a tree of objects, which is saved to a
// file, read back and proven equal, in the binary form and as text; then sorted and searched. Characters refer to
// others: their upper case, their parts.
//
//     znaki UnicodeData.txt Blocks.txt [FILE]
//
// The tree is saved to FILE and FILE.txt, or to temporary files. Ends with 0 when both trees are equal, 1 when they
// differ, 2 when the data are not there or not as they should be.
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

// Every field of every object, texts with their letter case.
bool Rowne(const TListaBlokow& a, const TListaBlokow& b) {
    ztok::TPorownywaczDanych porownywacz(&a, &b, ztok::rpWszystkiePola, ztok::rlRozmLiterWazny, ztok::LocaleNiezmienny,
                                         ztok::tprRefJakoWskazn);
    return a.Porownaj(b, &porownywacz) == 0;
}

// The same places of the tree are referred to, each by its path.
bool RowneOdniesienia(const TListaBlokow& a, const TListaBlokow& b) {
    ztok::TPorownywaczDanych porownywacz(&a, &b, ztok::rpWszystkiePola, ztok::rlRozmLiterWazny, ztok::LocaleNiezmienny,
                                         ztok::tprRefJakoSciezki);
    return a.Porownaj(b, &porownywacz) == 0;
}

const ztok::TArgument poNazwie[] = {TZnak::nrNazwa};

// Pointers at all the characters, sorted by name.
bool ZbierzWgNazw(const TListaBlokow& bloki, ztok::TListaWskObiektow& wgNazw) {
    for (const TBlok* blok : bloki)
        wgNazw.DopiszDane(blok->GetZnaki());
    return wgNazw.PosortujWgPol(poNazwie);
}

// By bisection; null when there is none.
TZnak* ZnakONazwie(const ztok::TListaWskObiektow& wgNazw, std::u16string_view nazwa) {
    const ztok::TArgument wartosci[] = {nazwa};
    std::int32_t gdzie = -1;
    return wgNazw.WyszukajWgPol(poNazwie, wartosci, gdzie) ? static_cast<TZnak*>(wgNazw.Obiekty(gdzie)) : nullptr;
}

bool KazdySieZnajduje(const ztok::TListaWskObiektow& wgNazw) {
    for (const ztok::TObiektBazowy* obiekt : wgNazw) {
        const std::u16string nazwa = static_cast<const TZnak*>(obiekt)->GetNazwa();
        const TZnak* znak = ZnakONazwie(wgNazw, nazwa);
        if (znak == nullptr || znak->GetNazwa() != nazwa)
            return false;
    }
    return true;
}

// How often characters refer to others; with a character given, how often to that one.
std::int64_t IleOdniesien(const ztok::TListaWskObiektow& znaki, const TZnak* cel = nullptr) {
    std::int64_t ile = 0;
    for (const ztok::TObiektBazowy* obiekt : znaki) {
        const auto& znak = *static_cast<const TZnak*>(obiekt);
        const auto licz = [&](const ztok::TObiektBazowy* dokad) {
            ile += dokad != nullptr && (cel == nullptr || dokad == cel) ? 1 : 0;
        };
        licz(znak.GetDuza());
        licz(znak.GetMala());
        licz(znak.GetTytulowa());
        if (const ztok::TListaRefObiektow* rozklad = znak.GetRozklad(); rozklad != nullptr)
            for (const ztok::TObiektBazowy* czesc : *rozklad)
                licz(czesc);
    }
    return ile;
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

std::string Utf8(const TZnak* znak) {
    if (znak == nullptr)
        return "none";
    const std::uint32_t kod = znak->GetKod();
    return ztok::Utf8ZUtf16(kod < 0x10000 ? std::u16string{static_cast<char16_t>(kod)}
                                          : std::u16string{static_cast<char16_t>(0xD7C0U + (kod >> 10U)),
                                                           static_cast<char16_t>(0xDC00U + (kod & 0x3FFU))});
}

std::string Rozklad(const TZnak& znak) {
    std::string tekst = ztok::Utf8ZUtf16(znak.GetRodzajRozkladu());
    if (const ztok::TListaRefObiektow* rozklad = znak.GetRozklad(); rozklad != nullptr)
        for (const ztok::TObiektBazowy* czesc : *rozklad)
            tekst += " " + Utf8(static_cast<const TZnak*>(czesc));
    return tekst;
}

void WypiszZnak(const TZnak& znak) {
    std::printf("looked up:  U+%04X %s  %s, category %s, first named %s\n", static_cast<unsigned>(znak.GetKod()),
                Utf8(&znak).c_str(), ztok::Utf8ZUtf16(znak.GetNazwa()).c_str(),
                ztok::Utf8ZUtf16(znak.GetKategoria()).c_str(), ztok::Utf8ZUtf16(znak.GetStaraNazwa()).c_str());
    std::printf("            upper case %s, title case %s, made of %s\n", Utf8(znak.GetDuza()).c_str(),
                Utf8(znak.GetTytulowa()).c_str(), Rozklad(znak).c_str());
}

// Deletes the character of that name from its block. References to it must go, and no other; shown with one that is
// made of it.
bool UsunZnak(ztok::TListaWskObiektow& wgNazw, std::u16string_view nazwa, const TZnak& zlozony) {
    TZnak* znak = ZnakONazwie(wgNazw, nazwa);
    if (znak == nullptr)
        return false;
    wgNazw.UsunTenObiekt(znak, false); // plain pointers hear of nothing
    const std::string tekst = Utf8(znak);
    const std::int64_t bylo = IleOdniesien(wgNazw);
    const std::int64_t doNiego = IleOdniesien(wgNazw, znak);
    static_cast<TListaZnakow*>(znak->Rodzic())->UsunTenObiekt(znak, true);
    std::printf("deleted:    %s with %lld references to it; %s is made of %s now\n", tekst.c_str(),
                static_cast<long long>(doNiego), Utf8(&zlozony).c_str(), Rozklad(zlozony).c_str());
    return doNiego > 0 && IleOdniesien(wgNazw) == bylo - doNiego;
}

// Saves the tree as text and reads it back; the result is proven by its bytes. Says how large the text is and how fast.
bool PrzezTekst(const TListaBlokow& bloki, std::uint32_t wyroznik, const std::u16string& plik) {
    const auto sekundy = [](auto krok) {
        const auto start = std::chrono::steady_clock::now();
        krok();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };
    std::int64_t bajtow = 0;
    const double zapis = sekundy([&] {
        ztok::TStrumienPlikowy strumien(plik, ztok::ETrybPliku::Tworzenie);
        bloki.ZapiszTekstowo(strumien);
        strumien.Flush();
        bajtow = strumien.GetSize();
    });
    TListaBlokow wczytane;
    bool doKonca = false;
    const double odczyt = sekundy([&] {
        ztok::TStrumienPlikowy strumien(plik, ztok::ETrybPliku::Odczyt);
        wczytane.WczytajTekstowo(strumien);
        doKonca = strumien.Pozostalo() == 0;
    });
    const double megabajtow = static_cast<double>(bajtow) / 1e6;
    std::printf("as text:    %s, %lld bytes, written at %.0f MB/s and read at %.0f MB/s\n",
                ztok::Utf8ZUtf16(plik).c_str(), static_cast<long long>(bajtow), megabajtow / zapis,
                megabajtow / odczyt);
    return doKonca && wczytane.DajWyroznikObiektu() == wyroznik && RowneOdniesienia(bloki, wczytane);
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
    std::printf("reads:      %s and %s\nit took:\n", plikZnakow.c_str(), plikBlokow.c_str());
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
    const bool rowneOdniesienia =
        Krok("compare, references as paths", [&] { return RowneOdniesienia(bloki, wczytane); });
    ztok::TListaWskObiektow wgNazw;
    Krok("sort by name", [&] { return ZbierzWgNazw(wczytane, wgNazw); });
    const bool znalezione = Krok("find each name by bisection", [&] { return KazdySieZnajduje(wgNazw); });
    TZnak* znak = ZnakONazwie(wgNazw, u"LATIN SMALL LETTER DZ WITH CARON");

    const std::int64_t znakow = wgNazw.IleObiektow();
    const std::int64_t odniesien = IleOdniesien(wgNazw);
    std::printf("records:    %zu in %d blocks, read back %lld with %lld references to each other\n", rekordow,
                bloki.IleObiektow(), static_cast<long long>(znakow), static_cast<long long>(odniesien));
    std::printf("saved:      %s, %lld bytes, %.1f a record\n", ztok::Utf8ZUtf16(plik).c_str(),
                static_cast<long long>(bajtow), static_cast<double>(bajtow) / static_cast<double>(rekordow));
    // The list, its blocks with a list each, the characters, and a list for each that is made of others.
    std::int64_t zlozonych = 0;
    for (const ztok::TObiektBazowy* obiekt : wgNazw)
        zlozonych += static_cast<const TZnak*>(obiekt)->GetRozklad() != nullptr ? 1 : 0;
    WypiszPamiec(drzewa, 1 + 2 * std::int64_t{wczytane.IleObiektow()} + znakow + zlozonych);
    const bool przezTekst = PrzezTekst(bloki, wyroznik, plik + u".txt");
    WypiszKategorie(wczytane);
    if (znak != nullptr)
        WypiszZnak(*znak);
    const bool widac = znak != nullptr && WidzacRoznice(bloki, wczytane, *znak);

    // By path, from the root through a list, a list and a reference.
    const std::u16string sciezka = u"[Nazwa='Latin Extended-B'].Znaki[Kod=454].Duza.Nazwa";
    const std::u16string wgSciezki = wczytane.GetTekstowoWgSciezki(sciezka);
    std::printf("by path:    %s is %s\n", ztok::Utf8ZUtf16(sciezka).c_str(), ztok::Utf8ZUtf16(wgSciezki).c_str());
    const bool wyczyszczone = znak != nullptr && UsunZnak(wgNazw, u"LATIN SMALL LETTER Z WITH CARON", *znak);

    const std::pair<const char*, bool> sprawdzenia[] = {
        {"every record is in the tree read back", znakow == static_cast<std::int64_t>(rekordow)},
        {"the file is read to its end", doKonca},
        {"equal field by field, with letter case", rowne},
        {"equal by fingerprint", wyroznik == wyroznikWczytanych},
        {"equal after the way through text", przezTekst},
        {"the same records are referred to", rowneOdniesienia && odniesien > 0},
        {"every name is found, and a path", znalezione && znak != nullptr && wgSciezki == znak->GetDuza()->GetNazwa()},
        {"one letter of another case is a difference", widac},
        {"a deleted record leaves no reference", wyczyszczone},
    };
    bool dobrze = true;
    for (const auto& [co, jest] : sprawdzenia) {
        std::printf("%-44s %s\n", co, jest ? "yes" : "NO");
        dobrze = dobrze && jest;
    }
    std::printf(
        "fingerprints, of all that a tree holds: %08X as built, %08X as read back; equal trees have equal ones\n",
        static_cast<unsigned>(wyroznik), static_cast<unsigned>(wyroznikWczytanych));
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
            argc == 4 ? std::filesystem::absolute(argv[3]) : std::filesystem::temp_directory_path() / "ztok-znaki.dat";
        const bool dobrze = Pokaz(argv[1], argv[2], plik.u16string());
        if (argc != 4) {
            std::filesystem::remove(plik);
            std::filesystem::remove(std::filesystem::path(plik) += ".txt");
            std::printf("Both files were temporary; name one to keep them: znaki UnicodeData.txt Blocks.txt FILE\n");
        }
        return dobrze ? 0 : 1;
    } catch (const std::exception& blad) {
        std::fprintf(stderr, "znaki: %s\n", blad.what());
        return 2;
    }
}
