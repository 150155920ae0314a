#include "dane/Dane.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <iterator>

namespace pomiary::dane {

namespace {

// The generator of Steele, Lea and Flood (splitmix64): the standard's distributions differ between libraries.
class TLosowe {
  public:
    explicit TLosowe(std::uint64_t ziarno) noexcept : stan_(ziarno) {}
    // 0 to granica - 1
    template <class T = std::size_t> T Ponizej(std::uint64_t granica) noexcept {
        std::uint64_t z = stan_ += 0x9E3779B97F4A7C15U;
        z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
        return static_cast<T>((z ^ (z >> 31U)) % granica);
    }
    bool Jeden(std::uint64_t zIlu) noexcept { return Ponizej(zIlu) == 0; }

  private:
    std::uint64_t stan_;
};

constexpr std::string_view kSlowa[] = {
    "śruba",      "nakrętka", "wkręt",   "gwóźdź",    "blacha",   "kątownik",   "płyta",      "wełna",
    "zaprawa",    "cegła",    "złączka", "przewód",   "łącznik",  "żarówka",    "pędzel",     "dźwignia",
    "młotek",     "obcęgi",   "żółta",   "duża",      "średnia",  "gładka",     "łączona",    "miedź",
    "wnętrze",    "święty",   "źródło",  "ściana",    "Łódź",     "Kraków",     "Gdańsk",     "Poznań",
    "Żywiec",     "Wąchock",  "Święcki", "Gęślak",    "Łuczak",   "Brzęczysz",  "Żółkiewski", "hurtownia",
    "materiałów", "usługi",   "spółka",  "pracę",     "płatność", "przesyłka",  "odbiór",     "własny",
    "magazyn",    "zgłosić",  "się",     "należność", "dostępne", "późniejszy", "część",      "zwrócić",
    "uwagę",      "wójt",     "jeża",    "ćwiartka",  "miesiąc",  "rozróżnić"};

std::size_t Znakow(std::string_view utf8) {
    return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char b) { return (b & 0xC0) != 0x80; }));
}

// Words, of that many characters together.
std::string Tekst(TLosowe& los, std::size_t od, std::size_t najwyzej) {
    const std::size_t cel = od + los.Ponizej(najwyzej - od + 1);
    std::string tekst;
    std::size_t znakow = 0;
    while (true) {
        const std::string_view slowo = kSlowa[los.Ponizej(std::size(kSlowa))];
        const std::size_t razem = znakow + (znakow != 0 ? 1 : 0) + Znakow(slowo);
        if (razem > cel && znakow >= od)
            return tekst;
        if (razem > najwyzej)
            continue;
        tekst.append(znakow != 0 ? " " : "").append(slowo);
        znakow = razem;
    }
}
std::string Tekst(TLosowe& los) { return Tekst(los, 10, 40); }

TPozycja GenerujPozycje(TLosowe& los, std::size_t lp) {
    constexpr std::array<std::uint8_t, 4> stawki = {0, 5, 8, 23};
    TPozycja pozycja;
    pozycja.nazwa = Tekst(los);
    pozycja.lp = static_cast<std::int32_t>(lp);
    pozycja.ilosc = (1 + los.Ponizej<double>(400)) / 4;
    pozycja.cena = (1 + los.Ponizej<double>(100000)) / 100;
    pozycja.stawka = stawki[los.Ponizej(stawki.size())];
    pozycja.towar = 5900000000000 + los.Ponizej<std::int64_t>(10000000000);
    return pozycja;
}

std::int32_t Szesnastkowo(std::string_view tekst) {
    std::int32_t liczba = 0;
    std::from_chars(tekst.data(), tekst.data() + tekst.size(), liczba, 16);
    return liczba;
}

template <class S> std::size_t Bajty(const S& wartosc) {
    std::size_t bajty = 0;
    if constexpr (kTekst<S>) {
        bajty = wartosc.size();
    } else if constexpr (kLista<S>) {
        for (const auto& element : wartosc)
            bajty += Bajty(element);
    } else if constexpr (kOdniesienie<S>) {
        bajty = sizeof wartosc.numer;
    } else if constexpr (std::is_arithmetic_v<S>) {
        bajty = sizeof wartosc;
    } else {
        KazdePole(wartosc, [&](std::string_view, const auto& pole) { bajty += Bajty(pole); });
    }
    return bajty;
}

} // namespace

TBaza GenerujBaze(std::size_t ileFaktur) {
    TLosowe los(1);
    TBaza baza;
    baza.waluty.resize(6);
    for (TWaluta& waluta : baza.waluty)
        waluta = {Tekst(los), (1 + los.Ponizej<double>(60000)) / 10000, los.Jeden(2)};
    baza.klienci.resize(1 + ileFaktur / 10);
    for (TKlient& klient : baza.klienci)
        klient = {Tekst(los),
                  Tekst(los),
                  Tekst(los),
                  1000000000 + los.Ponizej<std::int64_t>(9000000000),
                  los.Ponizej<std::uint8_t>(5),
                  los.Jeden(3)};
    baza.faktury.resize(ileFaktur);
    for (std::size_t i = 0; i < ileFaktur; ++i) {
        TFaktura& faktura = baza.faktury[i];
        faktura.numer = "FV/Łódź/" + std::to_string(i + 1) + "/2026";
        faktura.wystawiona = static_cast<double>(46000 + los.Ponizej(365));
        faktura.termin = faktura.wystawiona + 14;
        faktura.klient.numer = los.Ponizej<std::int32_t>(baza.klienci.size());
        faktura.waluta.numer = los.Ponizej<std::int32_t>(baza.waluty.size());
        faktura.ksiegowy = (std::int64_t{2026} << 32U) + static_cast<std::int64_t>(i);
        faktura.rodzaj = los.Ponizej<std::uint8_t>(4);
        faktura.zaplacona = !los.Jeden(3);
        if (los.Jeden(2))
            faktura.uwagi = Tekst(los, 20, 120);
        const std::size_t ile = 1 + los.Ponizej(9);
        for (std::size_t j = 0; j < ile; ++j)
            faktura.pozycje.push_back(GenerujPozycje(los, j + 1));
    }
    Rozwiaz(baza);
    return baza;
}

TZnaki WczytajZnaki(const char* plik, std::size_t najwyzej) {
    TZnaki wynik;
    std::ifstream strumien(plik);
    std::map<std::int32_t, std::int32_t> miejsca; // of the codes
    std::vector<std::array<std::int32_t, 3>> inne;
    for (std::string wiersz; wynik.znaki.size() < najwyzej && std::getline(strumien, wiersz);) {
        std::array<std::string_view, 15> kolumny;
        std::string_view reszta = wiersz;
        for (std::string_view& kolumna : kolumny) {
            kolumna = reszta.substr(0, reszta.find(';'));
            reszta.remove_prefix(kolumna.size() == reszta.size() ? reszta.size() : kolumna.size() + 1);
        }
        TZnak& znak = wynik.znaki.emplace_back();
        znak.kod = Szesnastkowo(kolumny[0]);
        znak.nazwa = kolumny[1];
        znak.kategoria = kolumny[2];
        znak.kierunek = kolumny[4];
        znak.rozklad = kolumny[5];
        std::from_chars(kolumny[3].data(), kolumny[3].data() + kolumny[3].size(), znak.klasaLaczenia);
        znak.lustrzany = kolumny[9] == "Y";
        miejsca.emplace(znak.kod, static_cast<std::int32_t>(miejsca.size()));
        inne.push_back({Szesnastkowo(kolumny[12]), Szesnastkowo(kolumny[13]), Szesnastkowo(kolumny[14])});
    }
    const auto miejsce = [&](std::int32_t kod) {
        const auto gdzie = miejsca.find(kod);
        return gdzie != miejsca.end() && kod != 0 ? gdzie->second : -1;
    };
    for (std::size_t i = 0; i < wynik.znaki.size(); ++i) {
        TZnak& znak = wynik.znaki[i];
        znak.duza.numer = miejsce(inne[i][0]);
        znak.mala.numer = miejsce(inne[i][1]);
        znak.tytulowa.numer = miejsce(inne[i][2]);
    }
    Rozwiaz(wynik);
    return wynik;
}

TZnaki JednegoCelu(TZnaki znaki) {
    for (TZnak& znak : znaki.znaki)
        znak.duza.numer = znak.mala.numer = znak.tytulowa.numer = 0;
    Rozwiaz(znaki);
    return znaki;
}

std::size_t IleObiektow(const TBaza& baza) {
    std::size_t ile = baza.faktury.size() + baza.klienci.size() + baza.waluty.size();
    for (const TFaktura& faktura : baza.faktury)
        ile += faktura.pozycje.size();
    return ile;
}

std::size_t IleObiektow(const TZnaki& znaki) { return znaki.znaki.size(); }

std::size_t BajtyWartosci(const TBaza& baza) { return Bajty(baza); }
std::size_t BajtyWartosci(const TZnaki& znaki) { return Bajty(znaki); }

} // namespace pomiary::dane
