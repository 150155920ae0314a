#include <string>
#include <type_traits>

#include <pugixml.hpp>

#include "biblioteki/SeriaTekstu.h"

namespace pomiary {

namespace {

// Values as attributes of their object, or as elements inside it.
struct TAtrybuty {
    static auto Nowa(pugi::xml_node wezel, const char* nazwa) { return wezel.append_attribute(nazwa); }
    static auto Wartosc(const pugi::xml_node& wezel, const char* nazwa) { return wezel.attribute(nazwa); }
    static const char* Tekst(const pugi::xml_node& wezel, const char* nazwa) { return wezel.attribute(nazwa).value(); }
};

struct TElementy {
    static auto Nowa(pugi::xml_node wezel, const char* nazwa) { return wezel.append_child(nazwa).text(); }
    static auto Wartosc(const pugi::xml_node& wezel, const char* nazwa) { return wezel.child(nazwa).text(); }
    static const char* Tekst(const pugi::xml_node& wezel, const char* nazwa) { return wezel.child_value(nazwa); }
};

template <class TPostac> void Zapisz(pugi::xml_node korzen, const dane::TBaza& baza) {
    const auto pole = [](pugi::xml_node wezel, const char* nazwa, const auto& wartosc) {
        if constexpr (std::is_same_v<decltype(wartosc), const std::string&>)
            TPostac::Nowa(wezel, nazwa) = wartosc.c_str();
        else
            TPostac::Nowa(wezel, nazwa) = wartosc;
    };
    pugi::xml_node faktury = korzen.append_child("Faktury");
    for (const dane::TFaktura& f : baza.faktury) {
        pugi::xml_node faktura = faktury.append_child("Faktura");
        pole(faktura, "Numer", f.numerUtf8);
        pole(faktura, "Data", f.data);
        pole(faktura, "Klient", f.klient);
        pole(faktura, "Zaplacona", f.zaplacona);
        pole(faktura, "Uwagi", f.uwagiUtf8);
        pugi::xml_node pozycje = faktura.append_child("Pozycje");
        for (const dane::TPozycja& p : f.pozycje) {
            pugi::xml_node pozycja = pozycje.append_child("Pozycja");
            pole(pozycja, "Nazwa", p.nazwaUtf8);
            pole(pozycja, "Jednostka", p.jednostkaUtf8);
            pole(pozycja, "Ilosc", p.ilosc);
            pole(pozycja, "Cena", p.cena);
            pole(pozycja, "Vat", p.vat);
        }
    }
    pugi::xml_node klienci = korzen.append_child("Klienci");
    for (const dane::TKlient& k : baza.klienci) {
        pugi::xml_node klient = klienci.append_child("Klient");
        pole(klient, "Nazwa", k.nazwaUtf8);
        pole(klient, "Nip", k.nipUtf8);
        pole(klient, "Ulica", k.ulicaUtf8);
        pole(klient, "Miasto", k.miastoUtf8);
        pole(klient, "Kod", k.kodUtf8);
    }
}

template <class TPostac> void Wczytaj(const pugi::xml_node& korzen, dane::TBaza& baza) {
    const auto tekst = [](const pugi::xml_node& wezel, const char* nazwa) { return TPostac::Tekst(wezel, nazwa); };
    const auto liczba = [](const pugi::xml_node& wezel, const char* nazwa) { return TPostac::Wartosc(wezel, nazwa); };
    for (const pugi::xml_node& f : korzen.child("Faktury")) {
        dane::TFaktura& faktura = baza.faktury.emplace_back(dane::TFaktura{tekst(f, "Numer"),
                                                                           liczba(f, "Data").as_double(),
                                                                           liczba(f, "Klient").as_int(),
                                                                           liczba(f, "Zaplacona").as_bool(),
                                                                           tekst(f, "Uwagi"),
                                                                           {}});
        for (const pugi::xml_node& p : f.child("Pozycje"))
            faktura.pozycje.push_back({tekst(p, "Nazwa"), tekst(p, "Jednostka"), liczba(p, "Ilosc").as_double(),
                                       liczba(p, "Cena").as_double(), liczba(p, "Vat").as_int()});
    }
    for (const pugi::xml_node& k : korzen.child("Klienci"))
        baza.klienci.push_back(
            {tekst(k, "Nazwa"), tekst(k, "Nip"), tekst(k, "Ulica"), tekst(k, "Miasto"), tekst(k, "Kod")});
}

class TDoTekstu final : public pugi::xml_writer {
  public:
    explicit TDoTekstu(std::string& cel) : cel_(cel) {}
    void write(const void* bajty, std::size_t ile) override { cel_.append(static_cast<const char*>(bajty), ile); }

  private:
    std::string& cel_;
};

template <class TPostac> class TFormaPugixml {
  public:
    explicit TFormaPugixml(TUzycie uzycie) : uzycie_(uzycie) {}
    std::size_t Zapisz(const dane::TBaza& baza) {
        pugi::xml_document dokument;
        pomiary::Zapisz<TPostac>(dokument.append_child("Baza"), baza);
        if (uzycie_ == TUzycie::Zwykle)
            std::string().swap(bajty_);
        bajty_.clear();
        TDoTekstu cel(bajty_);
        dokument.save(cel, "", pugi::format_raw);
        return bajty_.size();
    }
    void Wczytaj(dane::TBaza& baza) {
        pugi::xml_document dokument;
        if (uzycie_ == TUzycie::Zwykle) {
            dokument.load_buffer(bajty_.data(), bajty_.size());
        } else {
            kopia_ = bajty_; // texts are decoded in it
            dokument.load_buffer_inplace(kopia_.data(), kopia_.size());
        }
        pomiary::Wczytaj<TPostac>(dokument.child("Baza"), baza);
    }

  private:
    TUzycie uzycie_;
    std::string bajty_;
    std::string kopia_;
};

} // namespace

std::unique_ptr<ISeria<dane::TBaza>> SeriaPugixmlAtrybuty(const dane::TBaza& dane, TUzycie uzycie) {
    return std::make_unique<TSeriaTekstu<TFormaPugixml<TAtrybuty>>>(dane, uzycie);
}
std::unique_ptr<ISeria<dane::TBaza>> SeriaPugixmlElementy(const dane::TBaza& dane, TUzycie uzycie) {
    return std::make_unique<TSeriaTekstu<TFormaPugixml<TElementy>>>(dane, uzycie);
}

} // namespace pomiary
