#include <memory>
#include <vector>

#include "biblioteki/Biblioteka.h"
#include "biblioteki/dane_generated.h"

namespace pomiary {

namespace {

using TBudowniczy = flatbuffers::FlatBufferBuilder;

// An empty text is a missing one: what the library does with defaults.
flatbuffers::Offset<flatbuffers::String> Tekst(TBudowniczy& b, const std::string& tekstUtf8) {
    return tekstUtf8.empty() ? 0 : b.CreateString(tekstUtf8);
}

flatbuffers::Offset<fb::Baza> Zbuduj(TBudowniczy& b, const dane::TBaza& dane) {
    std::vector<flatbuffers::Offset<fb::Faktura>> faktury;
    faktury.reserve(dane.faktury.size());
    std::vector<flatbuffers::Offset<fb::Pozycja>> pozycje;
    for (const dane::TFaktura& f : dane.faktury) {
        pozycje.clear();
        for (const dane::TPozycja& p : f.pozycje) {
            const auto nazwa = Tekst(b, p.nazwaUtf8);
            const auto jednostka = Tekst(b, p.jednostkaUtf8);
            pozycje.push_back(fb::CreatePozycja(b, nazwa, jednostka, p.ilosc, p.cena, p.vat));
        }
        const auto numer = Tekst(b, f.numerUtf8);
        const auto uwagi = Tekst(b, f.uwagiUtf8);
        const auto lista = b.CreateVector(pozycje);
        faktury.push_back(fb::CreateFaktura(b, numer, f.data, f.klient, f.zaplacona, uwagi, lista));
    }
    std::vector<flatbuffers::Offset<fb::Klient>> klienci;
    klienci.reserve(dane.klienci.size());
    for (const dane::TKlient& k : dane.klienci) {
        const auto nazwa = Tekst(b, k.nazwaUtf8);
        const auto nip = Tekst(b, k.nipUtf8);
        const auto ulica = Tekst(b, k.ulicaUtf8);
        const auto miasto = Tekst(b, k.miastoUtf8);
        klienci.push_back(fb::CreateKlient(b, nazwa, nip, ulica, miasto, Tekst(b, k.kodUtf8)));
    }
    const auto listaFaktur = b.CreateVector(faktury);
    return fb::CreateBaza(b, listaFaktur, b.CreateVector(klienci));
}

flatbuffers::Offset<fb::Znaki> Zbuduj(TBudowniczy& b, const dane::TZnaki& dane) {
    std::vector<flatbuffers::Offset<fb::Znak>> znaki;
    znaki.reserve(dane.znaki.size());
    for (const dane::TZnak& z : dane.znaki) {
        const auto nazwa = Tekst(b, z.nazwaUtf8);
        const auto kategoria = Tekst(b, z.kategoriaUtf8);
        const auto kierunek = Tekst(b, z.kierunekUtf8);
        const auto rozklad = Tekst(b, z.rozkladUtf8);
        znaki.push_back(fb::CreateZnak(b, z.kod, nazwa, kategoria, kierunek, rozklad, z.klasaLaczenia, z.duza, z.mala));
    }
    return fb::CreateZnaki(b, b.CreateVector(znaki));
}

dane::TBaza JakoStruktury(const fb::BazaT& baza) {
    dane::TBaza wynik;
    for (const auto& f : baza.faktury) {
        dane::TFaktura& faktura =
            wynik.faktury.emplace_back(dane::TFaktura{f->numer, f->data, f->klient, f->zaplacona, f->uwagi, {}});
        for (const auto& p : f->pozycje)
            faktura.pozycje.push_back({p->nazwa, p->jednostka, p->ilosc, p->cena, p->vat});
    }
    for (const auto& k : baza.klienci)
        wynik.klienci.push_back({k->nazwa, k->nip, k->ulica, k->miasto, k->kod});
    return wynik;
}

dane::TZnaki JakoStruktury(const fb::ZnakiT& znaki) {
    dane::TZnaki wynik;
    for (const auto& z : znaki.znaki)
        wynik.znaki.push_back(
            {z->kod, z->nazwa, z->kategoria, z->kierunek, z->rozklad, z->klasa_laczenia, z->duza, z->mala});
    return wynik;
}

// Writes straight from the structs; reads into the library's own objects, which can be changed as those of the others.
template <class TKorzen, class TDane> class TSeriaFlatBuffers final : public ISeria<TDane> {
  public:
    TSeriaFlatBuffers(const TDane& dane, TUzycie uzycie) : dane_(dane), uzycie_(uzycie) {}

    std::size_t Zapisz() override {
        if (uzycie_ == TUzycie::Zwykle)
            budowniczy_ = TBudowniczy();
        budowniczy_.Clear();
        budowniczy_.Finish(Zbuduj(budowniczy_, dane_));
        return budowniczy_.GetSize();
    }
    void Wczytaj() override {
        wczytane_.reset(flatbuffers::GetRoot<TKorzen>(budowniczy_.GetBufferPointer())->UnPack());
    }
    void Zniszcz() override { wczytane_.reset(); }
    [[nodiscard]] TDane Odtworz() const override { return JakoStruktury(*wczytane_); }

  private:
    const TDane& dane_;
    TUzycie uzycie_;
    TBudowniczy budowniczy_;
    std::unique_ptr<typename TKorzen::NativeTableType> wczytane_;
};

} // namespace

std::unique_ptr<ISeria<dane::TBaza>> SeriaFlatBuffers(const dane::TBaza& dane, TUzycie uzycie) {
    return std::make_unique<TSeriaFlatBuffers<fb::Baza, dane::TBaza>>(dane, uzycie);
}
std::unique_ptr<ISeria<dane::TZnaki>> SeriaFlatBuffers(const dane::TZnaki& dane, TUzycie uzycie) {
    return std::make_unique<TSeriaFlatBuffers<fb::Znaki, dane::TZnaki>>(dane, uzycie);
}

} // namespace pomiary
