#include "dane/Dane.h"

#include <array>
#include <charconv>
#include <fstream>
#include <iterator>
#include <string_view>

namespace pomiary::dane {

namespace {

// The generator of Steele, Lea and Flood (splitmix64): the standard's distributions differ between libraries.
class TLosowe {
  public:
    explicit TLosowe(std::uint64_t ziarno) noexcept : stan_(ziarno) {}
    // 0 to granica - 1
    std::size_t Ponizej(std::size_t granica) noexcept {
        std::uint64_t z = stan_ += 0x9E3779B97F4A7C15U;
        z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
        return static_cast<std::size_t>((z ^ (z >> 31U)) % granica);
    }
    template <class T> const auto& Jeden(const T& tablica) noexcept { return tablica[Ponizej(std::size(tablica))]; }

  private:
    std::uint64_t stan_;
};

constexpr std::string_view kTowary[] = {
    "Śruba zamkowa",    "Nakrętka samokontrująca", "Wkręt do drewna",     "Gwóźdź papowy",     "Blacha trapezowa",
    "Kątownik stalowy", "Płyta gipsowa",           "Wełna mineralna",     "Zaprawa murarska",  "Cegła klinkierowa",
    "Rura miedziana",   "Złączka żeliwna",         "Przewód elektryczny", "Łącznik krzyżowy",  "Żarówka ledowa",
    "Farba emulsyjna",  "Pędzel okrągły",          "Dźwignia zaciskowa",  "Młotek ciesielski", "Obcęgi"};
constexpr std::string_view kCechy[] = {"ocynkowana", "żółta",         "duża",    "mała",      "średnia",  "wzmocniona",
                                       "gładka",     "cienkościenna", "łączona", "powlekana", "do wnętrz"};
constexpr std::string_view kWymiary[] = {"M8 × 40", "2,5 mm²", "120 × 60 cm", "Ø 15 mm", "25 kg"};
constexpr std::string_view kJednostki[] = {"szt.", "kg", "m²", "opak.", "mb"};
constexpr std::string_view kUwagi[] = {"Płatne przelewem w ciągu 14 dni", "Odbiór własny w magazynie w Łodzi",
                                       "Zgłosić się do pani Zofii Święcickiej"};
constexpr std::string_view kFirmy[] = {"Zakład Usług Budowlanych", "Hurtownia Materiałów", "Przedsiębiorstwo Handlowe",
                                       "Spółdzielnia Pracy"};
constexpr std::string_view kNazwiska[] = {"Żółkiewski", "Gęślak",  "Wiśniewska", "Brzęczyszczykiewicz",
                                          "Ćwikła",     "Śniadek", "Łuczak",     "Nowak"};
constexpr std::string_view kUlice[] = {"Święty Marcin", "Źródlana", "Piłsudskiego", "Kościuszki", "Łąkowa", "Długa"};
constexpr std::string_view kMiasta[] = {"Łódź", "Kraków", "Gdańsk", "Poznań", "Częstochowa", "Zielona Góra", "Żywiec"};
constexpr std::array<std::int32_t, 4> kStawki = {0, 5, 8, 23};

std::string Cyfry(TLosowe& los, int ile) {
    std::string cyfry;
    for (int i = 0; i < ile; ++i)
        cyfry += static_cast<char>('0' + los.Ponizej(10));
    return cyfry;
}

std::string Zlacz(std::initializer_list<std::string_view> czesci) {
    std::string tekst;
    for (const std::string_view czesc : czesci)
        tekst += czesc;
    return tekst;
}

TPozycja GenerujPozycje(TLosowe& los) {
    TPozycja pozycja;
    pozycja.nazwaUtf8 = Zlacz({los.Jeden(kTowary), " ", los.Jeden(kCechy), " ", los.Jeden(kWymiary), " ",
                               std::to_string(1 + los.Ponizej(99))});
    pozycja.jednostkaUtf8 = los.Jeden(kJednostki);
    pozycja.ilosc = static_cast<double>(1 + los.Ponizej(400)) / 4;
    pozycja.cena = static_cast<double>(1 + los.Ponizej(100000)) / 100;
    pozycja.vat = los.Jeden(kStawki);
    return pozycja;
}

std::int32_t Szesnastkowo(std::string_view tekst) {
    std::int32_t liczba = 0;
    std::from_chars(tekst.data(), tekst.data() + tekst.size(), liczba, 16);
    return liczba;
}

} // namespace

TBaza GenerujBaze(int ileFaktur, int ileKlientow, std::uint64_t ziarno) {
    TLosowe los(ziarno);
    TBaza baza;
    baza.klienci.reserve(static_cast<std::size_t>(ileKlientow));
    for (int i = 0; i < ileKlientow; ++i)
        baza.klienci.push_back({Zlacz({los.Jeden(kFirmy), " ", los.Jeden(kNazwiska), " ", std::to_string(i)}),
                                Cyfry(los, 10), Zlacz({"ul. ", los.Jeden(kUlice), " ", Cyfry(los, 2)}),
                                std::string(los.Jeden(kMiasta)), Zlacz({Cyfry(los, 2), "-", Cyfry(los, 3)})});
    baza.faktury.reserve(static_cast<std::size_t>(ileFaktur));
    for (int i = 0; i < ileFaktur; ++i) {
        TFaktura& faktura = baza.faktury.emplace_back();
        faktura.numerUtf8 = Zlacz({"FV/", std::to_string(i + 1), "/2026"});
        faktura.data = static_cast<double>(46000 + los.Ponizej(365));
        faktura.klient = static_cast<std::int32_t>(los.Ponizej(static_cast<std::size_t>(ileKlientow)));
        faktura.zaplacona = los.Ponizej(3) != 0;
        if (los.Ponizej(4) == 0)
            faktura.uwagiUtf8 = los.Jeden(kUwagi);
        const std::size_t ile = 1 + los.Ponizej(9);
        faktura.pozycje.reserve(ile);
        for (std::size_t j = 0; j < ile; ++j)
            faktura.pozycje.push_back(GenerujPozycje(los));
    }
    return baza;
}

TZnaki WczytajZnaki(const char* plik) {
    TZnaki wynik;
    std::ifstream strumien(plik);
    for (std::string wiersz; std::getline(strumien, wiersz);) {
        std::array<std::string_view, 15> kolumny;
        std::string_view reszta = wiersz;
        for (std::string_view& kolumna : kolumny) {
            kolumna = reszta.substr(0, reszta.find(';'));
            reszta.remove_prefix(kolumna.size() == reszta.size() ? reszta.size() : kolumna.size() + 1);
        }
        TZnak& znak = wynik.znaki.emplace_back();
        znak.kod = Szesnastkowo(kolumny[0]);
        znak.nazwaUtf8 = kolumny[1];
        znak.kategoriaUtf8 = kolumny[2];
        znak.kierunekUtf8 = kolumny[4];
        znak.rozkladUtf8 = kolumny[5];
        std::from_chars(kolumny[3].data(), kolumny[3].data() + kolumny[3].size(), znak.klasaLaczenia);
        znak.duza = Szesnastkowo(kolumny[12]);
        znak.mala = Szesnastkowo(kolumny[13]);
    }
    return wynik;
}

std::size_t IleObiektow(const TBaza& baza) {
    std::size_t ile = baza.faktury.size() + baza.klienci.size();
    for (const TFaktura& faktura : baza.faktury)
        ile += faktura.pozycje.size();
    return ile;
}

std::size_t IleObiektow(const TZnaki& znaki) { return znaki.znaki.size(); }

std::size_t BajtyWartosci(const TBaza& baza) {
    std::size_t bajty = 0;
    for (const TKlient& k : baza.klienci)
        bajty += k.nazwaUtf8.size() + k.nipUtf8.size() + k.ulicaUtf8.size() + k.miastoUtf8.size() + k.kodUtf8.size();
    for (const TFaktura& f : baza.faktury) {
        bajty += f.numerUtf8.size() + f.uwagiUtf8.size() + sizeof f.data + sizeof f.klient + 1;
        for (const TPozycja& p : f.pozycje)
            bajty += p.nazwaUtf8.size() + p.jednostkaUtf8.size() + sizeof p.ilosc + sizeof p.cena + sizeof p.vat;
    }
    return bajty;
}

std::size_t BajtyWartosci(const TZnaki& znaki) {
    std::size_t bajty = 0;
    for (const TZnak& z : znaki.znaki)
        bajty += z.nazwaUtf8.size() + z.kategoriaUtf8.size() + z.kierunekUtf8.size() + z.rozkladUtf8.size() +
                 4 * sizeof z.kod;
    return bajty;
}

} // namespace pomiary::dane
