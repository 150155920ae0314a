#include <string>
#include <string_view>

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "obce/Obce.h"
#include "obce/SeriaTekstu.h"

namespace pomiary {

namespace {

using TPisarz = rapidjson::Writer<rapidjson::StringBuffer>;

template <class W> void Zapisz(TPisarz& pisarz, const W& wartosc) {
    if constexpr (dane::kTekst<W>) {
        pisarz.String(wartosc.data(), static_cast<rapidjson::SizeType>(wartosc.size()));
    } else if constexpr (dane::kLista<W>) {
        pisarz.StartArray();
        for (const auto& element : wartosc)
            Zapisz(pisarz, element);
        pisarz.EndArray();
    } else if constexpr (dane::kOdniesienie<W>) {
        pisarz.Int(wartosc.numer);
    } else if constexpr (std::is_same_v<W, bool>) {
        pisarz.Bool(wartosc);
    } else if constexpr (std::is_same_v<W, double>) {
        pisarz.Double(wartosc);
    } else if constexpr (std::is_same_v<W, std::int64_t>) {
        pisarz.Int64(wartosc);
    } else if constexpr (std::is_integral_v<W>) {
        pisarz.Int(wartosc);
    } else {
        pisarz.StartObject();
        KazdePole(wartosc, [&](std::string_view nazwa, const auto& pole) {
            pisarz.Key(nazwa.data(), static_cast<rapidjson::SizeType>(nazwa.size()));
            Zapisz(pisarz, pole);
        });
        pisarz.EndObject();
    }
}

template <class W> void Wczytaj(const rapidjson::Value& zrodlo, W& wartosc) {
    if constexpr (dane::kTekst<W>) {
        wartosc.assign(zrodlo.GetString(), zrodlo.GetStringLength());
    } else if constexpr (dane::kLista<W>) {
        const auto elementy = zrodlo.GetArray();
        wartosc.resize(elementy.Size());
        for (rapidjson::SizeType i = 0; i < elementy.Size(); ++i)
            Wczytaj(elementy[i], wartosc[i]);
    } else if constexpr (dane::kOdniesienie<W>) {
        wartosc.numer = zrodlo.GetInt();
    } else if constexpr (std::is_same_v<W, bool>) {
        wartosc = zrodlo.GetBool();
    } else if constexpr (std::is_same_v<W, double>) {
        wartosc = zrodlo.GetDouble();
    } else if constexpr (std::is_same_v<W, std::int64_t>) {
        wartosc = zrodlo.GetInt64();
    } else if constexpr (std::is_integral_v<W>) {
        wartosc = static_cast<W>(zrodlo.GetInt());
    } else {
        KazdePole(wartosc, [&](std::string_view nazwa, auto& pole) {
            const auto klucz = rapidjson::StringRef(nazwa.data(), nazwa.size());
            Wczytaj(zrodlo[rapidjson::Value(klucz)], pole);
        });
    }
}

class TFormaRapidJson {
  public:
    explicit TFormaRapidJson(TUzycie uzycie) : uzycie_(uzycie) {}
    std::string_view Zapisz(const dane::TBaza& baza) {
        if (uzycie_ == TUzycie::Zwykle)
            bajty_ = rapidjson::StringBuffer();
        else
            bajty_.Clear();
        TPisarz pisarz(bajty_);
        pomiary::Zapisz(pisarz, baza);
        return {bajty_.GetString(), bajty_.GetSize()};
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

void DodajRapidJson(TBibliotekiBazy& bazy) {
    bazy.push_back({kRapidJson, &Utworz<TSeriaTekstu<TFormaRapidJson>, dane::TBaza>});
}

} // namespace pomiary
