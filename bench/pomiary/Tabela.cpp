#include "pomiary/Tabela.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace pomiary {

namespace {

constexpr std::array kKolumny = {kZtok,      kCereal,       kFlatBuffers,  kBoost, kProtobuf, kProtobufArena,
                                 kRapidJson, kPugiAtrybuty, kPugiElementy, kIcu,   kIconv,    kOpenSSL,
                                 kNettle,    kZlib,         kLibdeflate,   kCpp,   kCppUtf8};
constexpr bool Czysta(std::string_view kolumna) { return kolumna == kCpp || kolumna == kCppUtf8; }
constexpr bool Obca(std::string_view kolumna) { return kolumna != kZtok && !Czysta(kolumna); }

double MedianaZ(std::vector<double> liczby) {
    if (liczby.empty())
        return 0;
    std::sort(liczby.begin(), liczby.end());
    const std::size_t srodek = liczby.size() / 2;
    return liczby.size() % 2 != 0 ? liczby[srodek] : (liczby[srodek - 1] + liczby[srodek]) / 2;
}

} // namespace

TTabela::TWiersz& TTabela::Wiersz(std::string_view operacja) {
    const auto gdzie =
        std::find_if(wiersze_.begin(), wiersze_.end(), [&](const TWiersz& w) { return w.operacja == operacja; });
    return gdzie != wiersze_.end() ? *gdzie : wiersze_.emplace_back(TWiersz{std::string(operacja), {}});
}

const TTabela::TWiersz* TTabela::Jest(std::string_view operacja) const {
    const auto gdzie =
        std::find_if(wiersze_.begin(), wiersze_.end(), [&](const TWiersz& w) { return w.operacja == operacja; });
    return gdzie != wiersze_.end() ? &*gdzie : nullptr;
}

void TTabela::Dodaj(std::string_view operacja, std::string_view kolumna, double wartosc) {
    Wiersz(operacja).pomiary[std::string(kolumna)].push_back(wartosc);
}

double TTabela::Mediana(std::string_view operacja, std::string_view kolumna) const {
    if (const TWiersz* wiersz = Jest(operacja))
        if (const auto pomiar = wiersz->pomiary.find(kolumna); pomiar != wiersz->pomiary.end())
            return MedianaZ(pomiar->second);
    return 0;
}

void TTabela::DodajIloraz(std::string_view operacja, std::string_view mianownik, std::string_view licznik) {
    for (const std::string_view kolumna : kKolumny)
        if (const double dol = Mediana(mianownik, kolumna), gora = Mediana(licznik, kolumna); dol != 0 && gora != 0)
            Dodaj(operacja, kolumna, gora / dol);
}

void TTabela::Drukuj() const {
    // A part of the table has the columns of its rows: a new one begins where a row has libraries, none of them in the
    // part.
    std::size_t od = 0;
    while (od < wiersze_.size()) {
        std::set<std::string_view> kolumny;
        const auto wspolna = [&](const auto& pomiar) { return Obca(pomiar.first) && kolumny.contains(pomiar.first); };
        const auto obca = [](const auto& kolumna) { return Obca(kolumna); };
        std::size_t koniec = od;
        for (; koniec < wiersze_.size(); ++koniec) {
            const auto& pomiary = wiersze_[koniec].pomiary;
            if (std::any_of(kolumny.begin(), kolumny.end(), obca) &&
                std::any_of(pomiary.begin(), pomiary.end(), [](const auto& p) { return Obca(p.first); }) &&
                std::none_of(pomiary.begin(), pomiary.end(), wspolna))
                break;
            for (const auto& [kolumna, liczby] : pomiary)
                kolumny.insert(kolumna);
        }
        DrukujCzesc(od, koniec, kolumny);
        od = koniec;
    }
}

void TTabela::DrukujCzesc(std::size_t od, std::size_t koniec, const std::set<std::string_view>& kolumny) const {
    const auto ktoras = [&](auto warunek) { return std::any_of(kolumny.begin(), kolumny.end(), warunek); };
    const bool saObce = ktoras([](std::string_view k) { return Obca(k); });
    const bool saCzyste = ktoras([](std::string_view k) { return Czysta(k); });
    std::printf("\n%-56s", "operation (median; ns an item)");
    for (const std::string_view kolumna : kKolumny)
        if (kolumny.contains(kolumna))
            std::printf(" %12.*s", static_cast<int>(kolumna.size()), kolumna.data());
    std::printf("%s%s\n", saObce ? "  to fastest" : "", saCzyste ? "    to plain" : "");
    for (; od < koniec; ++od) {
        const TWiersz& wiersz = wiersze_[od];
        std::printf("%-56s", wiersz.operacja.c_str());
        double obca = 0;
        double czysta = 0;
        for (const std::string_view kolumna : kKolumny) {
            if (!kolumny.contains(kolumna))
                continue;
            const double mediana = Mediana(wiersz.operacja, kolumna);
            if (mediana == 0)
                std::printf(" %12s", "");
            else
                std::printf(" %12.*f", mediana < 100 ? 2 : 1, mediana);
            double& najszybsza = Czysta(kolumna) ? czysta : obca;
            if (mediana != 0 && (Czysta(kolumna) || Obca(kolumna)) && (najszybsza == 0 || mediana < najszybsza))
                najszybsza = mediana;
        }
        const double nasz = Mediana(wiersz.operacja, kZtok);
        const auto iloraz = [&](bool jest, double najszybsza) {
            if (jest && nasz != 0 && najszybsza != 0)
                std::printf(" %11.2f", nasz / najszybsza);
            else if (jest)
                std::printf(" %11s", "");
        };
        iloraz(saObce, obca);
        iloraz(saCzyste, czysta);
        std::printf("\n");
    }
}

} // namespace pomiary
