#include "pomiary/Pomiary.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>

namespace pomiary {

void Sprawdz(bool dobrze, std::string_view operacja, std::string_view kolumna) {
    if (dobrze)
        return;
    std::fprintf(stderr, "%s, %s: a wrong result\n", std::string(operacja).c_str(), std::string(kolumna).c_str());
    std::exit(1);
}

void TPomiary::DodajKomorke(std::string_view operacja, std::string_view kolumna, std::size_t ile, TMiara miara) {
    if (Chciany(operacja))
        komorki_.push_back({std::string(operacja), std::string(kolumna), ile, std::move(miara), 1});
}

std::size_t TPomiary::IlePowtorzen(const TMiara& miara) const {
    std::size_t powtorzen = 1;
    double czas = miara(1);
    while (!opcje_.proba && czas < opcje_.najkrocej) {
        const double brak = opcje_.najkrocej / std::max(czas, 1e-7);
        powtorzen = static_cast<std::size_t>(static_cast<double>(powtorzen) * std::min(10.0, 1.1 * brak)) + 1;
        czas = miara(powtorzen);
    }
    return powtorzen;
}

// The order differs from round to round, so that a disturbance of the machine, and what one cell leaves in the caches
// for the next, meet all alike.
void TPomiary::Wykonaj() {
    static std::minstd_rand los(1);
    for (TKomorka& komorka : komorki_) {
        Tabela.Zapowiedz(komorka.operacja);
        komorka.powtorzen = IlePowtorzen(komorka.miara);
    }
    std::vector<TKomorka*> kolejnosc;
    for (TKomorka& komorka : komorki_)
        kolejnosc.push_back(&komorka);
    const int rundy = opcje_.proba ? 1 : opcje_.rundy;
    for (int runda = 0; runda < rundy; ++runda) {
        std::shuffle(kolejnosc.begin(), kolejnosc.end(), los);
        for (const TKomorka* k : kolejnosc) {
            const double czas = k->miara(k->powtorzen);
            Tabela.Dodaj(k->operacja, k->kolumna,
                         czas * 1e9 / static_cast<double>(k->powtorzen) / static_cast<double>(k->ile));
        }
        if (!komorki_.empty())
            std::fputc('.', stderr);
    }
    komorki_.clear();
}

} // namespace pomiary
