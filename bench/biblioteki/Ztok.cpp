#include "biblioteki/Ztok.h"

#include "biblioteki/Biblioteka.h"
#include "ztok/platform/Kodowania.h"

namespace pomiary {

using ztok::Utf16ZUtf8;
using ztok::Utf8ZUtf16;

void RejestrujKlasyPomiarow() {
    ztok::RejestrujKlasy<TPozycja, TListaPozycji, TFaktura, TListaFaktur, TKlient, TListaKlientow, TBaza, TZnak,
                         TListaZnakow, TZnaki>();
}

void Wypelnij(TPozycja& cel, const dane::TPozycja& p) {
    cel.SetNazwa(Utf16ZUtf8(p.nazwaUtf8));
    cel.SetJednostka(Utf16ZUtf8(p.jednostkaUtf8));
    cel.SetIlosc(p.ilosc);
    cel.SetCena(p.cena);
    cel.SetVat(p.vat);
}

void Wypelnij(TBaza& cel, const dane::TBaza& dane) {
    for (const dane::TFaktura& f : dane.faktury) {
        TFaktura& faktura = cel.GetFaktury().Dopisz();
        faktura.SetNumer(Utf16ZUtf8(f.numerUtf8));
        faktura.SetData(f.data);
        faktura.SetKlient(f.klient);
        faktura.SetZaplacona(f.zaplacona);
        faktura.SetUwagi(Utf16ZUtf8(f.uwagiUtf8));
        for (const dane::TPozycja& p : f.pozycje)
            Wypelnij(faktura.GetPozycje().Dopisz(), p);
    }
    for (const dane::TKlient& k : dane.klienci) {
        TKlient& klient = cel.GetKlienci().Dopisz();
        klient.SetNazwa(Utf16ZUtf8(k.nazwaUtf8));
        klient.SetNip(Utf16ZUtf8(k.nipUtf8));
        klient.SetUlica(Utf16ZUtf8(k.ulicaUtf8));
        klient.SetMiasto(Utf16ZUtf8(k.miastoUtf8));
        klient.SetKod(Utf16ZUtf8(k.kodUtf8));
    }
}

void Wypelnij(TZnaki& cel, const dane::TZnaki& dane) {
    for (const dane::TZnak& z : dane.znaki) {
        TZnak& znak = cel.GetZnaki().Dopisz();
        znak.SetKod(z.kod);
        znak.SetNazwa(Utf16ZUtf8(z.nazwaUtf8));
        znak.SetKategoria(Utf16ZUtf8(z.kategoriaUtf8));
        znak.SetKierunek(Utf16ZUtf8(z.kierunekUtf8));
        znak.SetRozklad(Utf16ZUtf8(z.rozkladUtf8));
        // What a character lacks is a field that was never written.
        if (z.klasaLaczenia != 0)
            znak.SetKlasaLaczenia(z.klasaLaczenia);
        if (z.duza != 0)
            znak.SetDuza(z.duza);
        if (z.mala != 0)
            znak.SetMala(z.mala);
    }
}

namespace {

dane::TBaza JakoStruktury(const TBaza& baza) {
    dane::TBaza wynik;
    for (const TFaktura* f : *baza.GetFaktury()) {
        dane::TFaktura& faktura = wynik.faktury.emplace_back(dane::TFaktura{
            Utf8ZUtf16(f->GetNumer()), f->GetData(), f->GetKlient(), f->GetZaplacona(), Utf8ZUtf16(f->GetUwagi()), {}});
        for (const TPozycja* p : *f->GetPozycje())
            faktura.pozycje.push_back(
                {Utf8ZUtf16(p->GetNazwa()), Utf8ZUtf16(p->GetJednostka()), p->GetIlosc(), p->GetCena(), p->GetVat()});
    }
    for (const TKlient* k : *baza.GetKlienci())
        wynik.klienci.push_back({Utf8ZUtf16(k->GetNazwa()), Utf8ZUtf16(k->GetNip()), Utf8ZUtf16(k->GetUlica()),
                                 Utf8ZUtf16(k->GetMiasto()), Utf8ZUtf16(k->GetKod())});
    return wynik;
}

dane::TZnaki JakoStruktury(const TZnaki& znaki) {
    dane::TZnaki wynik;
    for (const TZnak* z : *znaki.GetZnaki())
        wynik.znaki.push_back({z->GetKod(), Utf8ZUtf16(z->GetNazwa()), Utf8ZUtf16(z->GetKategoria()),
                               Utf8ZUtf16(z->GetKierunek()), Utf8ZUtf16(z->GetRozklad()), z->GetKlasaLaczenia(),
                               z->GetDuza(), z->GetMala()});
    return wynik;
}

// The two forms of our own.
struct TBinarnie {
    static void Zapisz(const ztok::TObiektBazowy& obiekt, ztok::TStrumien& strumien) {
        obiekt.ZapiszWStrumieniu(strumien);
    }
    static void Wczytaj(ztok::TObiektBazowy& obiekt, ztok::TStrumien& strumien) {
        obiekt.WczytajZeStrumienia(strumien);
    }
};
struct TTekstowo {
    static void Zapisz(const ztok::TObiektBazowy& obiekt, ztok::TStrumien& strumien) {
        obiekt.ZapiszTekstowo(strumien, std::u16string_view());
    }
    static void Wczytaj(ztok::TObiektBazowy& obiekt, ztok::TStrumien& strumien) {
        obiekt.WczytajTekstowo(strumien, std::u16string_view());
    }
};

template <class TKorzen, class TDane, class TForma = TBinarnie> class TSeriaZtok final : public ISeria<TDane> {
  public:
    TSeriaZtok(const TDane& dane, TUzycie uzycie) : uzycie_(uzycie), drzewo_(ztok::Utworz<TKorzen>()) {
        Wypelnij(*drzewo_, dane);
    }

    std::size_t Zapisz() override {
        if (uzycie_ == TUzycie::Zwykle)
            bajty_.SetSize(0); // gives the memory back
        bajty_.Seek(0, ztok::ESeek::Poczatek);
        TForma::Zapisz(*drzewo_, bajty_);
        return static_cast<std::size_t>(bajty_.GetPosition());
    }
    void Wczytaj() override {
        bajty_.Seek(0, ztok::ESeek::Poczatek);
        wczytane_ = ztok::Utworz<TKorzen>();
        TForma::Wczytaj(*wczytane_, bajty_);
    }
    void Zniszcz() override { ztok::Zwolnij(wczytane_.Oddaj()); }
    [[nodiscard]] TDane Odtworz() const override { return JakoStruktury(static_cast<const TKorzen&>(*wczytane_)); }

  private:
    TUzycie uzycie_;
    ztok::TWlasny<TKorzen> drzewo_;
    ztok::TWlasny<TKorzen> wczytane_;
    ztok::TZTMemoryStream bajty_;
};

} // namespace

std::unique_ptr<ISeria<dane::TBaza>> SeriaZtok(const dane::TBaza& dane, TUzycie uzycie) {
    return std::make_unique<TSeriaZtok<TBaza, dane::TBaza>>(dane, uzycie);
}
std::unique_ptr<ISeria<dane::TZnaki>> SeriaZtok(const dane::TZnaki& dane, TUzycie uzycie) {
    return std::make_unique<TSeriaZtok<TZnaki, dane::TZnaki>>(dane, uzycie);
}
std::unique_ptr<ISeria<dane::TBaza>> SeriaTekstuZtok(const dane::TBaza& dane, TUzycie uzycie) {
    return std::make_unique<TSeriaZtok<TBaza, dane::TBaza, TTekstowo>>(dane, uzycie);
}

} // namespace pomiary
