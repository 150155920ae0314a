// protobuf beside our trees and fields.
#include <memory>
#include <vector>

#include <google/protobuf/arena.h>
#include <google/protobuf/util/message_differencer.h>

#include "obce/Protobuf.h"
#include "pomiary/Grupy.h"
#include "pomiary/Tabela.h"

namespace pomiary {

namespace {

// Its two trees live as long as the cells.
struct TDrzewa {
    pb::Baza pierwsze;
    pb::Baza drugie;
};

std::string Utf8(const char8_t* tekst) { return reinterpret_cast<const char*>(tekst); }

} // namespace

void DodajObceDrzewa(TPomiary& pomiary, const dane::TBaza& baza) {
    const std::size_t ile = dane::IleObiektow(baza);
    const auto d = std::make_shared<TDrzewa>();
    Wypelnij(d->pierwsze, baza);
    d->drugie = d->pierwsze;
    pomiary.Dodaj(wiersz::Kopia, kProtobuf, ile, [d] {
        const pb::Baza kopia(d->pierwsze);
        TCeleFaktur cele;
        Rozwiaz(kopia, cele);
        Zuzyj(cele);
    });
    pomiary.Dodaj(wiersz::Kopia, kProtobufArena, ile, [d] {
        google::protobuf::Arena arena;
        auto* kopia = google::protobuf::Arena::CreateMessage<pb::Baza>(&arena);
        kopia->CopyFrom(d->pierwsze);
        TCeleFaktur cele;
        Rozwiaz(*kopia, cele);
        Zuzyj(cele);
    });
    const auto rowne = [d] { return google::protobuf::util::MessageDifferencer::Equals(d->pierwsze, d->drugie); };
    Sprawdz(rowne(), wiersz::Rownosc, kProtobuf);
    pomiary.Dodaj(wiersz::Rownosc, kProtobuf, ile, [rowne] { Zuzyj(rowne()); });
}

// Fields through reflection, which is how a field is reached whose number is known only at run time.
void DodajObceOperacje(TPomiary& pomiary, const dane::TBaza& baza, std::size_t ilePozycji) {
    const auto komunikaty = std::make_shared<std::vector<pb::Pozycja>>();
    const auto wzory = std::make_shared<std::vector<dane::TPozycja>>();
    for (const dane::TFaktura& faktura : baza.faktury)
        for (const dane::TPozycja& p : faktura.pozycje)
            if (wzory->size() < ilePozycji) {
                wzory->push_back(p);
                Wypelnij(komunikaty->emplace_back(), p);
                Sprawdz(JakoStruktura(komunikaty->back()) == p, "position", kProtobuf);
            }
    const google::protobuf::Reflection* const odbicie = pb::Pozycja::GetReflection();
    const auto pole = [](int numer) { return pb::Pozycja::descriptor()->FindFieldByNumber(numer); };
    const auto* const nazwa = pole(1);
    const auto* const lp = pole(2);
    const auto* const cena = pole(4);
    const auto* const towar = pole(6);
    const auto kazdy = [&](const char* wiersz, auto krok) {
        pomiary.DodajKazdy(wiersz, kProtobuf, ilePozycji,
                           [komunikaty, krok](std::size_t i) { krok((*komunikaty)[i], i); });
    };
    kazdy(wiersz::DajInteger, [=](auto& k, std::size_t) { Zuzyj(odbicie->GetInt32(k, lp)); });
    kazdy(wiersz::UstawInteger,
          [=](auto& k, std::size_t i) { odbicie->SetInt32(&k, lp, static_cast<std::int32_t>(i)); });
    kazdy(wiersz::DajInt64, [=](auto& k, std::size_t) { Zuzyj(odbicie->GetInt64(k, towar)); });
    kazdy(wiersz::UstawInt64,
          [=](auto& k, std::size_t i) { odbicie->SetInt64(&k, towar, static_cast<std::int64_t>(i)); });
    kazdy(wiersz::DajDouble, [=](auto& k, std::size_t) { Zuzyj(odbicie->GetDouble(k, cena)); });
    kazdy(wiersz::UstawDouble, [=](auto& k, std::size_t i) { odbicie->SetDouble(&k, cena, static_cast<double>(i)); });
    kazdy(wiersz::DajKopie, [=](auto& k, std::size_t) { Zuzyj(odbicie->GetString(k, nazwa)); });
    kazdy(wiersz::DajWidok, [=](auto& k, std::size_t) {
        std::string bufor;
        Zuzyj(odbicie->GetStringReference(k, nazwa, &bufor));
    });
    const std::string nowa = Utf8(u8"śruba zamkowa żółta");
    kazdy(wiersz::UstawTekst, [=](auto& k, std::size_t) { odbicie->SetString(&k, nazwa, nowa); });

    for (std::size_t d = 0; d < 2; ++d) {
        const std::size_t naListe = pomiary.Ile(kIleDopisz[d], 5);
        const auto wypelnij = [wzory, naListe, ilePozycji](pb::Faktura& lista) {
            for (std::size_t i = 0; i < naListe; ++i)
                Wypelnij(*lista.add_pozycje(), (*wzory)[i % ilePozycji]);
            Zuzyj(lista);
        };
        pomiary.Dodaj(wiersz::Dopisz[d], kProtobuf, naListe, [wypelnij] {
            pb::Faktura lista;
            wypelnij(lista);
        });
        pomiary.Dodaj(wiersz::Dopisz[d], kProtobufArena, naListe, [wypelnij] {
            google::protobuf::Arena arena;
            wypelnij(*google::protobuf::Arena::CreateMessage<pb::Faktura>(&arena));
        });
    }
}

} // namespace pomiary
