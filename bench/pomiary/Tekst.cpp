// The readable form: what cutting it into tokens costs by itself, and how the whole stands to the fastest JSON library.
#include <string>

#include <benchmark/benchmark.h>

#include "biblioteki/Ztok.h"
#include "pomiary/Pomiary.h"
#include "pomiary/Tabela.h"
#include "ztok/persist/TZTParser.h"
#include "ztok/util/Zttypybazowe.h"

namespace pomiary {

void ZarejestrujTekst(const dane::TBaza& baza) {
    static const std::string dokument = [&baza] {
        const auto drzewo = ztok::Utworz<TBaza>();
        Wypelnij(*drzewo, baza);
        ztok::TZTMemoryStream strumien;
        drzewo->ZapiszTekstowo(strumien, std::u16string_view());
        const auto bajty = strumien.Zawartosc();
        return std::string(reinterpret_cast<const char*>(bajty.data()), bajty.size());
    }();
    static std::size_t tokeny;
    tokeny = 0;
    const auto kroj = [](benchmark::State& stan) {
        for (auto krok : stan) {
            ztok::TZTReadOnlyRawByteStream strumien(dokument);
            std::size_t ile = 0;
            for (ztok::TZTParser parser(strumien); parser.Token() != ztok::TZTParser::Koniec; parser.NextToken())
                ++ile;
            tokeny = ile;
        }
    };
    benchmark::RegisterBenchmark(NazwaPomiaru("text: tokens alone, a kilobyte", kZtok).c_str(),
                                 [kroj](benchmark::State& stan) {
                                     kroj(stan);
                                     UstawIle(stan, dokument.size() / 1000);
                                 });
    benchmark::RegisterBenchmark(NazwaPomiaru("text: tokens alone, a token", kZtok).c_str(),
                                 [kroj](benchmark::State& stan) {
                                     kroj(stan);
                                     UstawIle(stan, tokeny);
                                 });
}

void PodsumujTekst(TTabela& tabela) {
    if (const double naKilobajt = tabela.Mediana("text: tokens alone, a kilobyte", kZtok); naKilobajt != 0)
        tabela.Dodaj("text: tokens alone, MB a second", kZtok, 1e6 / naKilobajt);
    for (const char* operacja : kOperacjeTekstu) {
        const double ich = tabela.Mediana(operacja, kRapidJson);
        if (const double nasz = tabela.Mediana(operacja, kZtok); nasz != 0 && ich != 0)
            tabela.Dodaj(std::string(operacja) + ": to RapidJSON", kZtok, nasz / ich);
    }
}

} // namespace pomiary
