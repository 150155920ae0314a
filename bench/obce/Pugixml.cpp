#include <string>
#include <type_traits>

#include <pugixml.hpp>

#include "obce/Obce.h"
#include "obce/SeriaTekstu.h"

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

template <class TPostac, class S> void Zapisz(pugi::xml_node wezel, const S& struktura) {
    KazdePole(struktura, [&](std::string_view nazwa, const auto& pole) {
        using W = std::remove_cvref_t<decltype(pole)>;
        if constexpr (dane::kLista<W>) {
            pugi::xml_node lista = wezel.append_child(nazwa.data());
            for (const auto& element : pole)
                Zapisz<TPostac>(lista.append_child("Element"), element);
        } else if constexpr (dane::kTekst<W>) {
            TPostac::Nowa(wezel, nazwa.data()) = pole.c_str();
        } else if constexpr (dane::kOdniesienie<W>) {
            TPostac::Nowa(wezel, nazwa.data()) = pole.numer;
        } else if constexpr (std::is_same_v<W, std::int64_t>) {
            TPostac::Nowa(wezel, nazwa.data()) = static_cast<long long>(pole);
        } else if constexpr (std::is_same_v<W, std::uint8_t>) {
            TPostac::Nowa(wezel, nazwa.data()) = static_cast<int>(pole);
        } else {
            TPostac::Nowa(wezel, nazwa.data()) = pole;
        }
    });
}

template <class TPostac, class S> void Wczytaj(const pugi::xml_node& wezel, S& struktura) {
    KazdePole(struktura, [&](std::string_view nazwa, auto& pole) {
        using W = std::remove_cvref_t<decltype(pole)>;
        const auto wartosc = [&] { return TPostac::Wartosc(wezel, nazwa.data()); };
        if constexpr (dane::kLista<W>) {
            for (const pugi::xml_node& element : wezel.child(nazwa.data()))
                Wczytaj<TPostac>(element, pole.emplace_back());
        } else if constexpr (dane::kTekst<W>) {
            pole = TPostac::Tekst(wezel, nazwa.data());
        } else if constexpr (dane::kOdniesienie<W>) {
            pole.numer = wartosc().as_int();
        } else if constexpr (std::is_same_v<W, bool>) {
            pole = wartosc().as_bool();
        } else if constexpr (std::is_same_v<W, double>) {
            pole = wartosc().as_double();
        } else {
            pole = static_cast<W>(wartosc().as_llong());
        }
    });
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
    std::string_view Zapisz(const dane::TBaza& baza) {
        pugi::xml_document dokument;
        pomiary::Zapisz<TPostac>(dokument.append_child("Baza"), baza);
        if (uzycie_ == TUzycie::Zwykle)
            std::string().swap(bajty_);
        bajty_.clear();
        TDoTekstu cel(bajty_);
        dokument.save(cel, "", pugi::format_raw);
        return bajty_;
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

void DodajPugixml(TBibliotekiBazy& bazy) {
    bazy.push_back({kPugiAtrybuty, &Utworz<TSeriaTekstu<TFormaPugixml<TAtrybuty>>, dane::TBaza>});
    bazy.push_back({kPugiElementy, &Utworz<TSeriaTekstu<TFormaPugixml<TElementy>>, dane::TBaza>});
}

} // namespace pomiary
