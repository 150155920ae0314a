#include <array>
#include <memory>
#include <utility>
#include <vector>

#include "obce/Obce.h"
#include "obce/dane_generated.h"

namespace pomiary {

namespace {

using TBudowniczy = flatbuffers::FlatBufferBuilder;

// An empty text is a missing one: what the library does with defaults.
flatbuffers::Offset<flatbuffers::String> Tekst(TBudowniczy& b, const std::string& tekst) {
    return tekst.empty() ? 0 : b.CreateString(tekst);
}

flatbuffers::Offset<fb::Baza> Zbuduj(TBudowniczy& b, const dane::TBaza& dane) {
    std::vector<flatbuffers::Offset<fb::Faktura>> faktury;
    faktury.reserve(dane.faktury.size());
    std::vector<flatbuffers::Offset<fb::Pozycja>> pozycje;
    for (const dane::TFaktura& f : dane.faktury) {
        pozycje.clear();
        for (const dane::TPozycja& p : f.pozycje)
            pozycje.push_back(fb::CreatePozycja(b, Tekst(b, p.nazwa), p.lp, p.ilosc, p.cena, p.stawka, p.towar));
        const auto numer = Tekst(b, f.numer);
        const auto uwagi = Tekst(b, f.uwagi);
        const auto lista = b.CreateVector(pozycje);
        faktury.push_back(fb::CreateFaktura(b, numer, f.wystawiona, f.termin, f.klient.numer, f.waluta.numer,
                                            f.ksiegowy, f.rodzaj, f.zaplacona, uwagi, lista));
    }
    std::vector<flatbuffers::Offset<fb::Klient>> klienci;
    klienci.reserve(dane.klienci.size());
    for (const dane::TKlient& k : dane.klienci) {
        const auto nazwa = Tekst(b, k.nazwa);
        const auto ulica = Tekst(b, k.ulica);
        klienci.push_back(fb::CreateKlient(b, nazwa, ulica, Tekst(b, k.miasto), k.nip, k.rodzaj, k.staly));
    }
    std::vector<flatbuffers::Offset<fb::Waluta>> waluty;
    for (const dane::TWaluta& w : dane.waluty)
        waluty.push_back(fb::CreateWaluta(b, Tekst(b, w.nazwa), w.kurs, w.wymienna));
    const auto listaFaktur = b.CreateVector(faktury);
    const auto listaKlientow = b.CreateVector(klienci);
    return fb::CreateBaza(b, listaFaktur, listaKlientow, b.CreateVector(waluty));
}

flatbuffers::Offset<fb::Znaki> Zbuduj(TBudowniczy& b, const dane::TZnaki& dane) {
    std::vector<flatbuffers::Offset<fb::Znak>> znaki;
    znaki.reserve(dane.znaki.size());
    for (const dane::TZnak& z : dane.znaki) {
        const auto nazwa = Tekst(b, z.nazwa);
        const auto kategoria = Tekst(b, z.kategoria);
        const auto kierunek = Tekst(b, z.kierunek);
        const auto rozklad = Tekst(b, z.rozklad);
        znaki.push_back(fb::CreateZnak(b, z.kod, nazwa, kategoria, kierunek, rozklad, z.klasaLaczenia, z.lustrzany,
                                       z.duza.numer, z.mala.numer, z.tytulowa.numer));
    }
    return fb::CreateZnaki(b, b.CreateVector(znaki));
}

// What was read: the library's own objects, which can be changed as those of the others; and, as they hold no pointers
// to each other, where the references of each lead.
template <class TDane> struct TWczytane;

template <> struct TWczytane<dane::TBaza> {
    std::unique_ptr<fb::BazaT> baza;
    std::vector<std::pair<const fb::KlientT*, const fb::WalutaT*>> cele;

    explicit TWczytane(const void* bajty) : baza(flatbuffers::GetRoot<fb::Baza>(bajty)->UnPack()) {
        cele.reserve(baza->faktury.size());
        for (const auto& f : baza->faktury)
            cele.emplace_back(baza->klienci[static_cast<std::size_t>(f->klient)].get(),
                              baza->waluty[static_cast<std::size_t>(f->waluta)].get());
    }
    [[nodiscard]] dane::TBaza JakoStruktury() const {
        dane::TBaza wynik;
        dane::TMiejsca klienci;
        dane::TMiejsca waluty;
        for (const auto& k : baza->klienci) {
            klienci.Dodaj(k.get());
            wynik.klienci.push_back({k->nazwa, k->ulica, k->miasto, k->nip, k->rodzaj, k->staly});
        }
        for (const auto& w : baza->waluty) {
            waluty.Dodaj(w.get());
            wynik.waluty.push_back({w->nazwa, w->kurs, w->wymienna});
        }
        for (std::size_t i = 0; i < baza->faktury.size(); ++i) {
            const fb::FakturaT& f = *baza->faktury[i];
            dane::TFaktura& faktura = wynik.faktury.emplace_back();
            faktura = {f.numer,
                       f.wystawiona,
                       f.termin,
                       {klienci[cele[i].first], nullptr},
                       {waluty[cele[i].second], nullptr},
                       f.ksiegowy,
                       f.rodzaj,
                       f.zaplacona,
                       f.uwagi,
                       {}};
            for (const auto& p : f.pozycje)
                faktura.pozycje.push_back({p->nazwa, p->lp, p->ilosc, p->cena, p->stawka, p->towar});
        }
        return wynik;
    }
};

template <> struct TWczytane<dane::TZnaki> {
    std::unique_ptr<fb::ZnakiT> znaki;
    std::vector<std::array<const fb::ZnakT*, 3>> cele;

    explicit TWczytane(const void* bajty) : znaki(flatbuffers::GetRoot<fb::Znaki>(bajty)->UnPack()) {
        const auto cel = [this](std::int32_t numer) {
            return numer >= 0 ? znaki->znaki[static_cast<std::size_t>(numer)].get() : nullptr;
        };
        cele.reserve(znaki->znaki.size());
        for (const auto& z : znaki->znaki)
            cele.push_back({cel(z->duza), cel(z->mala), cel(z->tytulowa)});
    }
    [[nodiscard]] dane::TZnaki JakoStruktury() const {
        dane::TZnaki wynik;
        dane::TMiejsca miejsca;
        for (const auto& z : znaki->znaki)
            miejsca.Dodaj(z.get());
        for (std::size_t i = 0; i < znaki->znaki.size(); ++i) {
            const fb::ZnakT& z = *znaki->znaki[i];
            wynik.znaki.push_back({z.kod,
                                   z.nazwa,
                                   z.kategoria,
                                   z.kierunek,
                                   z.rozklad,
                                   z.klasa_laczenia,
                                   z.lustrzany,
                                   {miejsca[cele[i][0]], nullptr},
                                   {miejsca[cele[i][1]], nullptr},
                                   {miejsca[cele[i][2]], nullptr}});
        }
        return wynik;
    }
};

// Writes straight from the structs.
template <class TDane> class TSeriaFlatBuffers final : public ISeria<TDane> {
  public:
    TSeriaFlatBuffers(const TDane& dane, TUzycie uzycie) : dane_(dane), uzycie_(uzycie) {}

    std::string_view Zapisz() override {
        if (uzycie_ == TUzycie::Zwykle)
            budowniczy_ = TBudowniczy();
        budowniczy_.Clear();
        budowniczy_.Finish(Zbuduj(budowniczy_, dane_));
        return {reinterpret_cast<const char*>(budowniczy_.GetBufferPointer()), budowniczy_.GetSize()};
    }
    void Wczytaj() override {
        wczytane_ = std::make_unique<TWczytane<TDane>>(static_cast<const void*>(budowniczy_.GetBufferPointer()));
    }
    void Zniszcz() override { wczytane_.reset(); }
    [[nodiscard]] TDane Odtworz() override { return wczytane_->JakoStruktury(); }

  private:
    const TDane& dane_;
    TUzycie uzycie_;
    TBudowniczy budowniczy_;
    std::unique_ptr<TWczytane<TDane>> wczytane_;
};

} // namespace

void DodajFlatBuffers(TBibliotekiBazy& bazy, TBibliotekiZnakow& znaki) {
    bazy.push_back({kFlatBuffers, &Utworz<TSeriaFlatBuffers<dane::TBaza>, dane::TBaza>});
    znaki.push_back({kFlatBuffers, &Utworz<TSeriaFlatBuffers<dane::TZnaki>, dane::TZnaki>});
}

} // namespace pomiary
