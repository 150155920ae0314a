// The readable form: what cutting it into tokens costs by itself.
#include <charconv>
#include <string>

#include <benchmark/benchmark.h>

#include "pomiary/Pomiary.h"
#include "pomiary/Tabela.h"
#include "ztok/persist/TZTParser.h"
#include "ztok/util/Zttypybazowe.h"

namespace pomiary {

namespace {

// Writes `object ... end` blocks with a line for each field, indented by a blank a level.
class TDokument {
  public:
    void Obiekt(std::string_view nazwa) {
        Wiersz("object ");
        tekstUtf8_ += nazwa;
        ++poziom_;
    }
    void Koniec() {
        --poziom_;
        Wiersz("end");
    }
    void Tekst(std::string_view nazwa, std::string_view wartoscUtf8) {
        if (wartoscUtf8.empty())
            return;
        Pole(nazwa);
        tekstUtf8_ += '"';
        tekstUtf8_ += wartoscUtf8;
        tekstUtf8_ += '"';
    }
    template <class T> void Liczba(std::string_view nazwa, T wartosc) {
        Pole(nazwa);
        char cyfry[32];
        tekstUtf8_.append(cyfry, std::to_chars(cyfry, cyfry + sizeof cyfry, wartosc).ptr);
    }
    std::string Oddaj() { return std::move(tekstUtf8_); }

  private:
    void Wiersz(std::string_view tekst) {
        if (!tekstUtf8_.empty())
            tekstUtf8_ += "\r\n";
        tekstUtf8_.append(poziom_, ' ');
        tekstUtf8_ += tekst;
    }
    void Pole(std::string_view nazwa) {
        Wiersz(nazwa);
        tekstUtf8_ += '=';
    }

    std::string tekstUtf8_;
    std::size_t poziom_ = 0;
};

std::string Faktury(const dane::TBaza& baza) {
    TDokument d;
    d.Obiekt("TBaza");
    d.Obiekt("Faktury");
    for (const dane::TFaktura& f : baza.faktury) {
        d.Obiekt("TFaktura");
        d.Tekst("Numer", f.numerUtf8);
        d.Liczba("Data", f.data);
        d.Liczba("Klient", f.klient);
        d.Tekst("Zaplacona", f.zaplacona ? "T" : "N");
        d.Tekst("Uwagi", f.uwagiUtf8);
        d.Obiekt("Pozycje");
        for (const dane::TPozycja& p : f.pozycje) {
            d.Obiekt("TPozycja");
            d.Tekst("Nazwa", p.nazwaUtf8);
            d.Tekst("Jednostka", p.jednostkaUtf8);
            d.Liczba("Ilosc", p.ilosc);
            d.Liczba("Cena", p.cena);
            d.Liczba("Vat", p.vat);
            d.Koniec();
        }
        d.Koniec();
        d.Koniec();
    }
    d.Koniec();
    d.Koniec();
    return d.Oddaj();
}

} // namespace

void ZarejestrujTekst(const dane::TBaza& baza) {
    static const std::string dokument = Faktury(baza);
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
}

} // namespace pomiary
