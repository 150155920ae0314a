#include "biblioteki/Protobuf.h"

#include <optional>
#include <string>

#include <google/protobuf/arena.h>

#include "biblioteki/Biblioteka.h"

namespace pomiary {

void Wypelnij(pb::Pozycja& cel, const dane::TPozycja& p) {
    cel.set_nazwa(p.nazwaUtf8);
    cel.set_jednostka(p.jednostkaUtf8);
    cel.set_ilosc(p.ilosc);
    cel.set_cena(p.cena);
    cel.set_vat(p.vat);
}

void Wypelnij(pb::Baza& cel, const dane::TBaza& dane) {
    for (const dane::TFaktura& f : dane.faktury) {
        pb::Faktura& faktura = *cel.add_faktury();
        faktura.set_numer(f.numerUtf8);
        faktura.set_data(f.data);
        faktura.set_klient(f.klient);
        faktura.set_zaplacona(f.zaplacona);
        faktura.set_uwagi(f.uwagiUtf8);
        for (const dane::TPozycja& p : f.pozycje)
            Wypelnij(*faktura.add_pozycje(), p);
    }
    for (const dane::TKlient& k : dane.klienci) {
        pb::Klient& klient = *cel.add_klienci();
        klient.set_nazwa(k.nazwaUtf8);
        klient.set_nip(k.nipUtf8);
        klient.set_ulica(k.ulicaUtf8);
        klient.set_miasto(k.miastoUtf8);
        klient.set_kod(k.kodUtf8);
    }
}

void Wypelnij(pb::Znaki& cel, const dane::TZnaki& dane) {
    for (const dane::TZnak& z : dane.znaki) {
        pb::Znak& znak = *cel.add_znaki();
        znak.set_kod(z.kod);
        znak.set_nazwa(z.nazwaUtf8);
        znak.set_kategoria(z.kategoriaUtf8);
        znak.set_kierunek(z.kierunekUtf8);
        znak.set_rozklad(z.rozkladUtf8);
        znak.set_klasa_laczenia(z.klasaLaczenia);
        znak.set_duza(z.duza);
        znak.set_mala(z.mala);
    }
}

namespace {

dane::TBaza JakoStruktury(const pb::Baza& baza) {
    dane::TBaza wynik;
    for (const pb::Faktura& f : baza.faktury()) {
        dane::TFaktura& faktura =
            wynik.faktury.emplace_back(dane::TFaktura{f.numer(), f.data(), f.klient(), f.zaplacona(), f.uwagi(), {}});
        for (const pb::Pozycja& p : f.pozycje())
            faktura.pozycje.push_back({p.nazwa(), p.jednostka(), p.ilosc(), p.cena(), p.vat()});
    }
    for (const pb::Klient& k : baza.klienci())
        wynik.klienci.push_back({k.nazwa(), k.nip(), k.ulica(), k.miasto(), k.kod()});
    return wynik;
}

dane::TZnaki JakoStruktury(const pb::Znaki& znaki) {
    dane::TZnaki wynik;
    for (const pb::Znak& z : znaki.znaki())
        wynik.znaki.push_back(
            {z.kod(), z.nazwa(), z.kategoria(), z.kierunek(), z.rozklad(), z.klasa_laczenia(), z.duza(), z.mala()});
    return wynik;
}

// Messages on the heap, or on an arena each tree of its own.
template <class TKomunikat, class TDane, bool NaArenie> class TSeriaProtobuf final : public ISeria<TDane> {
  public:
    TSeriaProtobuf(const TDane& dane, TUzycie uzycie) : uzycie_(uzycie) { Wypelnij(drzewo_.Nowe(), dane); }

    std::size_t Zapisz() override {
        if (uzycie_ == TUzycie::Zwykle) {
            bajty_ = drzewo_.komunikat->SerializeAsString();
            return bajty_.size();
        }
        const std::size_t ile = drzewo_.komunikat->ByteSizeLong();
        if (bajty_.size() < ile)
            bajty_.resize(ile);
        drzewo_.komunikat->SerializeWithCachedSizesToArray(reinterpret_cast<std::uint8_t*>(bajty_.data()));
        return ile;
    }
    void Wczytaj() override {
        if (!wczytane_.Nowe().ParseFromString(bajty_))
            throw std::runtime_error("protobuf");
    }
    void Zniszcz() override { wczytane_.Usun(); }
    [[nodiscard]] TDane Odtworz() const override { return JakoStruktury(*wczytane_.komunikat); }

  private:
    struct TDrzewo {
        std::optional<google::protobuf::Arena> arena;
        std::optional<TKomunikat> wlasny;
        TKomunikat* komunikat = nullptr;

        TKomunikat& Nowe() {
            komunikat =
                NaArenie ? google::protobuf::Arena::CreateMessage<TKomunikat>(&arena.emplace()) : &wlasny.emplace();
            return *komunikat;
        }
        void Usun() {
            wlasny.reset();
            arena.reset();
        }
    };
    TDrzewo drzewo_;
    TDrzewo wczytane_;
    TUzycie uzycie_;
    std::string bajty_;
};

} // namespace

std::unique_ptr<ISeria<dane::TBaza>> SeriaProtobuf(const dane::TBaza& dane, TUzycie uzycie) {
    return std::make_unique<TSeriaProtobuf<pb::Baza, dane::TBaza, false>>(dane, uzycie);
}
std::unique_ptr<ISeria<dane::TBaza>> SeriaProtobufArena(const dane::TBaza& dane, TUzycie uzycie) {
    return std::make_unique<TSeriaProtobuf<pb::Baza, dane::TBaza, true>>(dane, uzycie);
}
std::unique_ptr<ISeria<dane::TZnaki>> SeriaProtobuf(const dane::TZnaki& dane, TUzycie uzycie) {
    return std::make_unique<TSeriaProtobuf<pb::Znaki, dane::TZnaki, false>>(dane, uzycie);
}
std::unique_ptr<ISeria<dane::TZnaki>> SeriaProtobufArena(const dane::TZnaki& dane, TUzycie uzycie) {
    return std::make_unique<TSeriaProtobuf<pb::Znaki, dane::TZnaki, true>>(dane, uzycie);
}

} // namespace pomiary
