#include "obce/Protobuf.h"

#include <optional>
#include <string>

#include <google/protobuf/arena.h>

#include "obce/Obce.h"

namespace pomiary {

void Wypelnij(pb::Pozycja& cel, const dane::TPozycja& p) {
    cel.set_nazwa(p.nazwa);
    cel.set_lp(p.lp);
    cel.set_ilosc(p.ilosc);
    cel.set_cena(p.cena);
    cel.set_stawka(p.stawka);
    cel.set_towar(p.towar);
}

void Wypelnij(pb::Baza& cel, const dane::TBaza& dane) {
    for (const dane::TFaktura& f : dane.faktury) {
        pb::Faktura& faktura = *cel.add_faktury();
        faktura.set_numer(f.numer);
        faktura.set_wystawiona(f.wystawiona);
        faktura.set_termin(f.termin);
        faktura.set_klient(f.klient.numer);
        faktura.set_waluta(f.waluta.numer);
        faktura.set_ksiegowy(f.ksiegowy);
        faktura.set_rodzaj(f.rodzaj);
        faktura.set_zaplacona(f.zaplacona);
        faktura.set_uwagi(f.uwagi);
        for (const dane::TPozycja& p : f.pozycje)
            Wypelnij(*faktura.add_pozycje(), p);
    }
    for (const dane::TKlient& k : dane.klienci) {
        pb::Klient& klient = *cel.add_klienci();
        klient.set_nazwa(k.nazwa);
        klient.set_ulica(k.ulica);
        klient.set_miasto(k.miasto);
        klient.set_nip(k.nip);
        klient.set_rodzaj(k.rodzaj);
        klient.set_staly(k.staly);
    }
    for (const dane::TWaluta& w : dane.waluty) {
        pb::Waluta& waluta = *cel.add_waluty();
        waluta.set_nazwa(w.nazwa);
        waluta.set_kurs(w.kurs);
        waluta.set_wymienna(w.wymienna);
    }
}

void Wypelnij(pb::Znaki& cel, const dane::TZnaki& dane) {
    for (const dane::TZnak& z : dane.znaki) {
        pb::Znak& znak = *cel.add_znaki();
        znak.set_kod(z.kod);
        znak.set_nazwa(z.nazwa);
        znak.set_kategoria(z.kategoria);
        znak.set_kierunek(z.kierunek);
        znak.set_rozklad(z.rozklad);
        znak.set_klasa_laczenia(z.klasaLaczenia);
        znak.set_lustrzany(z.lustrzany);
        znak.set_duza(static_cast<std::uint32_t>(z.duza.numer + 1));
        znak.set_mala(static_cast<std::uint32_t>(z.mala.numer + 1));
        znak.set_tytulowa(static_cast<std::uint32_t>(z.tytulowa.numer + 1));
    }
}

void Rozwiaz(const pb::Baza& baza, TCeleFaktur& cele) {
    cele.reserve(static_cast<std::size_t>(baza.faktury_size()));
    for (const pb::Faktura& f : baza.faktury())
        cele.emplace_back(&baza.klienci(f.klient()), &baza.waluty(f.waluta()));
}

void Rozwiaz(const pb::Znaki& znaki, TCeleZnakow& cele) {
    const auto cel = [&](std::uint32_t numer) {
        return numer != 0 ? &znaki.znaki(static_cast<int>(numer) - 1) : nullptr;
    };
    cele.reserve(static_cast<std::size_t>(znaki.znaki_size()));
    for (const pb::Znak& z : znaki.znaki())
        cele.push_back({cel(z.duza()), cel(z.mala()), cel(z.tytulowa())});
}

dane::TPozycja JakoStruktura(const pb::Pozycja& p) {
    return {p.nazwa(), p.lp(), p.ilosc(), p.cena(), static_cast<std::uint8_t>(p.stawka()), p.towar()};
}

namespace {

dane::TBaza JakoStruktury(const pb::Baza& baza, const TCeleFaktur& cele) {
    dane::TBaza wynik;
    dane::TMiejsca klienci;
    dane::TMiejsca waluty;
    for (const pb::Klient& k : baza.klienci()) {
        klienci.Dodaj(&k);
        wynik.klienci.push_back(
            {k.nazwa(), k.ulica(), k.miasto(), k.nip(), static_cast<std::uint8_t>(k.rodzaj()), k.staly()});
    }
    for (const pb::Waluta& w : baza.waluty()) {
        waluty.Dodaj(&w);
        wynik.waluty.push_back({w.nazwa(), w.kurs(), w.wymienna()});
    }
    for (int i = 0; i < baza.faktury_size(); ++i) {
        const pb::Faktura& f = baza.faktury(i);
        const auto& [klient, waluta] = cele[static_cast<std::size_t>(i)];
        dane::TFaktura& faktura = wynik.faktury.emplace_back();
        faktura = {f.numer(),
                   f.wystawiona(),
                   f.termin(),
                   {klienci[klient], nullptr},
                   {waluty[waluta], nullptr},
                   f.ksiegowy(),
                   static_cast<std::uint8_t>(f.rodzaj()),
                   f.zaplacona(),
                   f.uwagi(),
                   {}};
        for (const pb::Pozycja& p : f.pozycje())
            faktura.pozycje.push_back(JakoStruktura(p));
    }
    return wynik;
}

dane::TZnaki JakoStruktury(const pb::Znaki& znaki, const TCeleZnakow& cele) {
    dane::TZnaki wynik;
    dane::TMiejsca miejsca;
    for (const pb::Znak& z : znaki.znaki())
        miejsca.Dodaj(&z);
    for (int i = 0; i < znaki.znaki_size(); ++i) {
        const pb::Znak& z = znaki.znaki(i);
        const auto& c = cele[static_cast<std::size_t>(i)];
        wynik.znaki.push_back({z.kod(),
                               z.nazwa(),
                               z.kategoria(),
                               z.kierunek(),
                               z.rozklad(),
                               static_cast<std::uint8_t>(z.klasa_laczenia()),
                               z.lustrzany(),
                               {miejsca[c[0]], nullptr},
                               {miejsca[c[1]], nullptr},
                               {miejsca[c[2]], nullptr}});
    }
    return wynik;
}

// Messages on the heap, or on an arena each tree of its own.
template <class TDane, bool NaArenie> class TSeriaProtobuf final : public ISeria<TDane> {
  public:
    TSeriaProtobuf(const TDane& dane, TUzycie uzycie) : uzycie_(uzycie) { Wypelnij(drzewo_.Nowe(), dane); }

    std::string_view Zapisz() override {
        if (uzycie_ == TUzycie::Zwykle)
            return zapisane_ = bajty_ = drzewo_.komunikat->SerializeAsString();
        const std::size_t ile = drzewo_.komunikat->ByteSizeLong();
        if (bajty_.size() < ile)
            bajty_.resize(ile);
        drzewo_.komunikat->SerializeWithCachedSizesToArray(reinterpret_cast<std::uint8_t*>(bajty_.data()));
        return zapisane_ = std::string_view(bajty_.data(), ile);
    }
    void Wczytaj() override {
        if (!wczytane_.Nowe().ParseFromArray(zapisane_.data(), static_cast<int>(zapisane_.size())))
            throw std::runtime_error("protobuf");
        Rozwiaz(*wczytane_.komunikat, cele_);
    }
    void Zniszcz() override {
        cele_ = {};
        wczytane_.Usun();
    }
    [[nodiscard]] TDane Odtworz() override { return JakoStruktury(*wczytane_.komunikat, cele_); }

  private:
    struct TDrzewo {
        std::optional<google::protobuf::Arena> arena;
        std::optional<typename TKomunikat<TDane>::Typ> wlasny;
        typename TKomunikat<TDane>::Typ* komunikat = nullptr;

        auto& Nowe() {
            if constexpr (NaArenie)
                komunikat = google::protobuf::Arena::CreateMessage<typename TKomunikat<TDane>::Typ>(&arena.emplace());
            else
                komunikat = &wlasny.emplace();
            return *komunikat;
        }
        void Usun() {
            wlasny.reset();
            arena.reset();
        }
    };
    TDrzewo drzewo_;
    TDrzewo wczytane_;
    typename TKomunikat<TDane>::TCele cele_;
    TUzycie uzycie_;
    std::string bajty_;
    std::string_view zapisane_;
};

} // namespace

void DodajProtobuf(TBibliotekiBazy& bazy, TBibliotekiZnakow& znaki) {
    bazy.push_back({kProtobuf, &Utworz<TSeriaProtobuf<dane::TBaza, false>, dane::TBaza>});
    bazy.push_back({kProtobufArena, &Utworz<TSeriaProtobuf<dane::TBaza, true>, dane::TBaza>});
    znaki.push_back({kProtobuf, &Utworz<TSeriaProtobuf<dane::TZnaki, false>, dane::TZnaki>});
    znaki.push_back({kProtobufArena, &Utworz<TSeriaProtobuf<dane::TZnaki, true>, dane::TZnaki>});
}

} // namespace pomiary
