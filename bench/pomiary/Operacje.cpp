#include <algorithm>
#include <array>

#include <benchmark/benchmark.h>
#include <google/protobuf/arena.h>

#include "biblioteki/Protobuf.h"
#include "biblioteki/Ztok.h"
#include "pomiary/Pomiary.h"
#include "pomiary/Tabela.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/PorownanieTekstow.h"

namespace pomiary {

namespace {

constexpr std::size_t kIle = 1000;

// Positions in every form, kept to the end of the process.
struct TPozycje {
    ztok::TWlasny<TListaPozycji> nasze = ztok::Utworz<TListaPozycji>();
    std::array<TPozycja*, kIle> wskazniki{};
    std::array<pb::Pozycja, kIle> komunikaty;
    std::vector<std::u16string> nazwy;
    std::vector<std::u16string> nazwyDuze;

    explicit TPozycje(const dane::TBaza& baza) {
        std::size_t i = 0;
        for (const dane::TFaktura& faktura : baza.faktury)
            for (const dane::TPozycja& p : faktura.pozycje) {
                if (i == kIle)
                    return;
                wskazniki[i] = &nasze->Dopisz();
                Wypelnij(*wskazniki[i], p);
                Wypelnij(komunikaty[i++], p);
                nazwy.push_back(ztok::Utf16ZUtf8(p.nazwaUtf8));
                // The same text up to its end, as texts that meet in a sorted list often are.
                nazwyDuze.push_back(nazwy.back());
                for (char16_t& znak : nazwyDuze.back())
                    znak = ztok::DuzaAscii(znak);
            }
    }
};

// Registers `krok(i)` as the benchmark of one of kIle items.
template <class TKrok> void KazdaPozycja(std::string_view operacja, std::string_view biblioteka, TKrok krok) {
    benchmark::RegisterBenchmark(NazwaPomiaru(operacja, biblioteka).c_str(), [krok](benchmark::State& stan) {
        for (auto obrot : stan)
            for (std::size_t i = 0; i < kIle; ++i)
                krok(i);
        UstawIle(stan, kIle);
    });
}

// Registers `lista(n)`, which makes a list of n items and destroys it: short lists and a long one.
template <class TLista> void Dopisywanie(std::string_view co, std::string_view biblioteka, TLista lista) {
    for (const auto& [ile, opis] : {std::pair<std::size_t, const char*>{5, " to a list of 5"},
                                    std::pair<std::size_t, const char*>{100000, " to a list of 100,000"}}) {
        benchmark::RegisterBenchmark(NazwaPomiaru(std::string(co) + opis, biblioteka).c_str(),
                                     [lista, n = ile](benchmark::State& stan) {
                                         for (auto krok : stan)
                                             lista(n);
                                         UstawIle(stan, n);
                                     });
    }
}

void ZarejestrujPola(TPozycje& p) {
    TPozycja* const* nasze = p.wskazniki.data();
    pb::Pozycja* komunikaty = p.komunikaty.data();
    const google::protobuf::Reflection* odbicie = pb::Pozycja::GetReflection();
    const google::protobuf::Descriptor* opis = pb::Pozycja::descriptor();
    const auto* vat = opis->FindFieldByNumber(5);
    const auto* cena = opis->FindFieldByNumber(4);
    const auto* nazwa = opis->FindFieldByNumber(1);

    KazdaPozycja("get an integer by number", kZtok,
                 [=](std::size_t i) { Zuzyj(nasze[i]->GetPoleInteger(TPozycja::nrVat)); });
    KazdaPozycja("get an integer by number", kProtobuf,
                 [=](std::size_t i) { Zuzyj(odbicie->GetInt32(komunikaty[i], vat)); });
    KazdaPozycja("get a real by number", kZtok,
                 [=](std::size_t i) { Zuzyj(nasze[i]->GetPoleDouble(TPozycja::nrCena)); });
    KazdaPozycja("get a real by number", kProtobuf,
                 [=](std::size_t i) { Zuzyj(odbicie->GetDouble(komunikaty[i], cena)); });
    KazdaPozycja("set an integer by number", kZtok, [=](std::size_t i) {
        nasze[i]->SetPoleInteger(TPozycja::nrVat, static_cast<std::int32_t>(i));
        Zuzyj(i);
    });
    KazdaPozycja("set an integer by number", kProtobuf, [=](std::size_t i) {
        odbicie->SetInt32(&komunikaty[i], vat, static_cast<std::int32_t>(i));
        Zuzyj(i);
    });
    KazdaPozycja("set a real by number", kZtok, [=](std::size_t i) {
        nasze[i]->SetPoleDouble(TPozycja::nrCena, static_cast<double>(i));
        Zuzyj(i);
    });
    KazdaPozycja("set a real by number", kProtobuf, [=](std::size_t i) {
        odbicie->SetDouble(&komunikaty[i], cena, static_cast<double>(i));
        Zuzyj(i);
    });
    KazdaPozycja("get a text by number (a copy)", kZtok,
                 [=](std::size_t i) { Zuzyj(nasze[i]->GetPoleString(TPozycja::nrNazwa)); });
    KazdaPozycja("get a text by number (a copy)", kProtobuf,
                 [=](std::size_t i) { Zuzyj(odbicie->GetString(komunikaty[i], nazwa)); });
    KazdaPozycja("set a text by number", kZtok, [=](std::size_t i) {
        nasze[i]->SetPoleString(TPozycja::nrNazwa, u"Śruba zamkowa ocynkowana");
        Zuzyj(i);
    });
    KazdaPozycja("set a text by number", kProtobuf, [=](std::size_t i) {
        odbicie->SetString(&komunikaty[i], nazwa, "\xC5\x9Aruba zamkowa ocynkowana");
        Zuzyj(i);
    });
}

void ZarejestrujDopisywanie(TPozycje& p) {
    Dopisywanie("append an object", kZtok, [](std::size_t n) {
        const auto lista = ztok::Utworz<TListaPozycji>();
        for (std::size_t i = 0; i < n; ++i)
            Zuzyj(lista->Dopisz());
    });
    Dopisywanie("append an object", kProtobuf, [](std::size_t n) {
        pb::Faktura lista;
        for (std::size_t i = 0; i < n; ++i)
            Zuzyj(*lista.add_pozycje());
    });
    Dopisywanie("append an object", kProtobufArena, [](std::size_t n) {
        google::protobuf::Arena arena;
        auto* lista = google::protobuf::Arena::CreateMessage<pb::Faktura>(&arena);
        for (std::size_t i = 0; i < n; ++i)
            Zuzyj(*lista->add_pozycje());
    });
    Dopisywanie("append an object", kCpp, [](std::size_t n) {
        std::vector<dane::TPozycja> lista;
        for (std::size_t i = 0; i < n; ++i)
            Zuzyj(lista.emplace_back());
    });
    TPozycja* obiekt = p.wskazniki[0];
    Dopisywanie("append a pointer", kZtok, [obiekt](std::size_t n) {
        ztok::TListaWskObiektow lista;
        for (std::size_t i = 0; i < n; ++i)
            lista.DodajObiekt(obiekt, ztok::MaxInt);
        Zuzyj(lista);
    });
    Dopisywanie("append a pointer", kCpp, [obiekt](std::size_t n) {
        std::vector<TPozycja*> lista;
        for (std::size_t i = 0; i < n; ++i)
            Zuzyj(lista.emplace_back(obiekt));
    });
}

} // namespace

void ZarejestrujOperacje(const dane::TBaza& baza) {
    static TPozycje p(baza);
    ZarejestrujPola(p);
    ZarejestrujDopisywanie(p);

    const std::u16string* nazwy = p.nazwy.data();
    const std::u16string* duze = p.nazwyDuze.data();
    const auto nastepna = [](std::size_t i) { return (i + 1) % kIle; };
    KazdaPozycja("compare in 1250 order, texts that differ", kZtok,
                 [=](std::size_t i) { Zuzyj(ztok::PorownajWin1250(nazwy[i], nazwy[nastepna(i)])); });
    KazdaPozycja("compare in 1250 order, texts that differ", kCpp,
                 [=](std::size_t i) { Zuzyj(nazwy[i].compare(nazwy[nastepna(i)])); });
    KazdaPozycja("compare in 1250 order, case only differs", kZtok,
                 [=](std::size_t i) { Zuzyj(ztok::PorownajWin1250BezWielkosci(nazwy[i], duze[i])); });
    KazdaPozycja("compare in 1250 order, equal texts", kZtok, [=](std::size_t i) {
        Zuzyj(ztok::PorownajWin1250BezWielkosci(nazwy[i], std::u16string_view(nazwy[i])));
    });
    KazdaPozycja("compare in 1250 order, equal texts", kCpp,
                 [=](std::size_t i) { Zuzyj(nazwy[i].compare(std::u16string_view(nazwy[i]))); });
}

} // namespace pomiary
