#include <string>
#include <string_view>

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "biblioteki/SeriaTekstu.h"

namespace pomiary {

namespace {

using TPisarz = rapidjson::Writer<rapidjson::StringBuffer>;

template <std::size_t N> void Nazwa(TPisarz& pisarz, const char (&nazwa)[N]) { pisarz.Key(nazwa, N - 1); }

template <std::size_t N> void Tekst(TPisarz& pisarz, const char (&nazwa)[N], const std::string& tekstUtf8) {
    Nazwa(pisarz, nazwa);
    pisarz.String(tekstUtf8.data(), static_cast<rapidjson::SizeType>(tekstUtf8.size()));
}

template <std::size_t N> void Liczba(TPisarz& pisarz, const char (&nazwa)[N], double liczba) {
    Nazwa(pisarz, nazwa);
    pisarz.Double(liczba);
}

template <std::size_t N> void Liczba(TPisarz& pisarz, const char (&nazwa)[N], std::int32_t liczba) {
    Nazwa(pisarz, nazwa);
    pisarz.Int(liczba);
}

template <class TElementy, class TZapisz>
void Lista(TPisarz& pisarz, const TElementy& elementy, const TZapisz& zapisz) {
    pisarz.StartArray();
    for (const auto& element : elementy) {
        pisarz.StartObject();
        zapisz(element);
        pisarz.EndObject();
    }
    pisarz.EndArray();
}

void Zapisz(TPisarz& pisarz, const dane::TBaza& baza) {
    pisarz.StartObject();
    Nazwa(pisarz, "Faktury");
    Lista(pisarz, baza.faktury, [&](const dane::TFaktura& f) {
        Tekst(pisarz, "Numer", f.numerUtf8);
        Liczba(pisarz, "Data", f.data);
        Liczba(pisarz, "Klient", f.klient);
        Nazwa(pisarz, "Zaplacona");
        pisarz.Bool(f.zaplacona);
        Tekst(pisarz, "Uwagi", f.uwagiUtf8);
        Nazwa(pisarz, "Pozycje");
        Lista(pisarz, f.pozycje, [&](const dane::TPozycja& p) {
            Tekst(pisarz, "Nazwa", p.nazwaUtf8);
            Tekst(pisarz, "Jednostka", p.jednostkaUtf8);
            Liczba(pisarz, "Ilosc", p.ilosc);
            Liczba(pisarz, "Cena", p.cena);
            Liczba(pisarz, "Vat", p.vat);
        });
    });
    Nazwa(pisarz, "Klienci");
    Lista(pisarz, baza.klienci, [&](const dane::TKlient& k) {
        Tekst(pisarz, "Nazwa", k.nazwaUtf8);
        Tekst(pisarz, "Nip", k.nipUtf8);
        Tekst(pisarz, "Ulica", k.ulicaUtf8);
        Tekst(pisarz, "Miasto", k.miastoUtf8);
        Tekst(pisarz, "Kod", k.kodUtf8);
    });
    pisarz.EndObject();
}

std::string Tekst(const rapidjson::Value& wartosc) { return {wartosc.GetString(), wartosc.GetStringLength()}; }

void Wczytaj(const rapidjson::Value& dokument, dane::TBaza& baza) {
    const auto faktury = dokument["Faktury"].GetArray();
    baza.faktury.reserve(faktury.Size());
    for (const rapidjson::Value& f : faktury) {
        dane::TFaktura& faktura = baza.faktury.emplace_back(dane::TFaktura{Tekst(f["Numer"]),
                                                                           f["Data"].GetDouble(),
                                                                           f["Klient"].GetInt(),
                                                                           f["Zaplacona"].GetBool(),
                                                                           Tekst(f["Uwagi"]),
                                                                           {}});
        const auto pozycje = f["Pozycje"].GetArray();
        faktura.pozycje.reserve(pozycje.Size());
        for (const rapidjson::Value& p : pozycje)
            faktura.pozycje.push_back({Tekst(p["Nazwa"]), Tekst(p["Jednostka"]), p["Ilosc"].GetDouble(),
                                       p["Cena"].GetDouble(), p["Vat"].GetInt()});
    }
    const auto klienci = dokument["Klienci"].GetArray();
    baza.klienci.reserve(klienci.Size());
    for (const rapidjson::Value& k : klienci)
        baza.klienci.push_back(
            {Tekst(k["Nazwa"]), Tekst(k["Nip"]), Tekst(k["Ulica"]), Tekst(k["Miasto"]), Tekst(k["Kod"])});
}

class TFormaRapidJson {
  public:
    explicit TFormaRapidJson(TUzycie uzycie) : uzycie_(uzycie) {}
    std::size_t Zapisz(const dane::TBaza& baza) {
        if (uzycie_ == TUzycie::Zwykle)
            bajty_ = rapidjson::StringBuffer();
        else
            bajty_.Clear();
        TPisarz pisarz(bajty_);
        pomiary::Zapisz(pisarz, baza);
        return bajty_.GetSize();
    }
    void Wczytaj(dane::TBaza& baza) {
        rapidjson::Document dokument;
        if (uzycie_ == TUzycie::Zwykle) {
            dokument.Parse(bajty_.GetString(), bajty_.GetSize());
        } else {
            kopia_.assign(bajty_.GetString(), bajty_.GetSize()); // texts are decoded in it
            dokument.ParseInsitu(kopia_.data());
        }
        pomiary::Wczytaj(dokument, baza);
    }

  private:
    TUzycie uzycie_;
    rapidjson::StringBuffer bajty_;
    std::string kopia_;
};

} // namespace

std::unique_ptr<ISeria<dane::TBaza>> SeriaRapidJson(const dane::TBaza& dane, TUzycie uzycie) {
    return std::make_unique<TSeriaTekstu<TFormaRapidJson>>(dane, uzycie);
}

} // namespace pomiary
