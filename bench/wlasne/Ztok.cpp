#include "wlasne/Ztok.h"

#include "ztok/platform/Kodowania.h"

namespace pomiary {

using ztok::Utf16ZUtf8;
using ztok::Utf8ZUtf16;

void RejestrujKlasyPomiarow() {
    ztok::RejestrujKlasy<TPozycja, TListaPozycji, TFaktura, TListaFaktur, TKlient, TListaKlientow, TWaluta, TListaWalut,
                         TBaza, TZnak, TListaZnakow, TZnaki>();
}

void Wypelnij(TPozycja& cel, const dane::TPozycja& p) {
    cel.SetNazwa(Utf16ZUtf8(p.nazwa));
    cel.SetLp(p.lp);
    cel.SetIlosc(p.ilosc);
    cel.SetCena(p.cena);
    cel.SetStawka(p.stawka);
    cel.SetTowar(p.towar);
}

void Wypelnij(TBaza& cel, const dane::TBaza& dane) {
    TListaKlientow& klienci = cel.GetKlienci();
    for (const dane::TKlient& k : dane.klienci) {
        TKlient& klient = klienci.Dopisz();
        klient.SetNazwa(Utf16ZUtf8(k.nazwa));
        klient.SetUlica(Utf16ZUtf8(k.ulica));
        klient.SetMiasto(Utf16ZUtf8(k.miasto));
        klient.SetNip(k.nip);
        klient.SetRodzaj(k.rodzaj);
        klient.SetStaly(k.staly);
    }
    TListaWalut& waluty = cel.GetWaluty();
    for (const dane::TWaluta& w : dane.waluty) {
        TWaluta& waluta = waluty.Dopisz();
        waluta.SetNazwa(Utf16ZUtf8(w.nazwa));
        waluta.SetKurs(w.kurs);
        waluta.SetWymienna(w.wymienna);
    }
    for (const dane::TFaktura& f : dane.faktury) {
        TFaktura& faktura = cel.GetFaktury().Dopisz();
        faktura.SetNumer(Utf16ZUtf8(f.numer));
        faktura.SetWystawiona(f.wystawiona);
        faktura.SetTermin(f.termin);
        faktura.SetKlient(klienci[f.klient.numer]);
        faktura.SetWaluta(waluty[f.waluta.numer]);
        faktura.SetKsiegowy(f.ksiegowy);
        faktura.SetRodzaj(f.rodzaj);
        faktura.SetZaplacona(f.zaplacona);
        faktura.SetUwagi(Utf16ZUtf8(f.uwagi));
        for (const dane::TPozycja& p : f.pozycje)
            Wypelnij(faktura.GetPozycje().Dopisz(), p);
    }
}

void Wypelnij(TZnaki& cel, const dane::TZnaki& dane) {
    TListaZnakow& znaki = cel.GetZnaki();
    for (const dane::TZnak& z : dane.znaki) {
        TZnak& znak = znaki.Dopisz();
        znak.SetKod(z.kod);
        znak.SetNazwa(Utf16ZUtf8(z.nazwa));
        znak.SetKategoria(Utf16ZUtf8(z.kategoria));
        znak.SetKierunek(Utf16ZUtf8(z.kierunek));
        znak.SetRozklad(Utf16ZUtf8(z.rozklad));
        znak.SetKlasaLaczenia(z.klasaLaczenia);
        znak.SetLustrzany(z.lustrzany);
    }
    // What a character lacks is a field that was never written.
    std::int32_t nr = 0;
    for (const dane::TZnak& z : dane.znaki) {
        TZnak& znak = *znaki[nr++];
        if (z.duza.cel != nullptr)
            znak.SetDuza(znaki[z.duza.numer]);
        if (z.mala.cel != nullptr)
            znak.SetMala(znaki[z.mala.numer]);
        if (z.tytulowa.cel != nullptr)
            znak.SetTytulowa(znaki[z.tytulowa.numer]);
    }
}

dane::TPozycja JakoStruktura(const TPozycja& p) {
    return {Utf8ZUtf16(p.GetNazwa()), p.GetLp(), p.GetIlosc(), p.GetCena(), p.GetStawka(), p.GetTowar()};
}

dane::TBaza JakoStruktury(const TBaza& baza) {
    dane::TBaza wynik;
    dane::TMiejsca klienci;
    dane::TMiejsca waluty;
    for (const TKlient* k : *baza.GetKlienci()) {
        klienci.Dodaj(k);
        wynik.klienci.push_back({Utf8ZUtf16(k->GetNazwa()), Utf8ZUtf16(k->GetUlica()), Utf8ZUtf16(k->GetMiasto()),
                                 k->GetNip(), k->GetRodzaj(), k->GetStaly()});
    }
    for (const TWaluta* w : *baza.GetWaluty()) {
        waluty.Dodaj(w);
        wynik.waluty.push_back({Utf8ZUtf16(w->GetNazwa()), w->GetKurs(), w->GetWymienna()});
    }
    for (const TFaktura* f : *baza.GetFaktury()) {
        dane::TFaktura& faktura = wynik.faktury.emplace_back();
        faktura = {Utf8ZUtf16(f->GetNumer()),
                   f->GetWystawiona(),
                   f->GetTermin(),
                   {klienci[f->GetKlient()], nullptr},
                   {waluty[f->GetWaluta()], nullptr},
                   f->GetKsiegowy(),
                   f->GetRodzaj(),
                   f->GetZaplacona(),
                   Utf8ZUtf16(f->GetUwagi()),
                   {}};
        for (const TPozycja* p : *f->GetPozycje())
            faktura.pozycje.push_back(JakoStruktura(*p));
    }
    return wynik;
}

dane::TZnaki JakoStruktury(const TZnaki& znaki) {
    dane::TZnaki wynik;
    dane::TMiejsca miejsca;
    for (const TZnak* z : *znaki.GetZnaki())
        miejsca.Dodaj(z);
    for (const TZnak* z : *znaki.GetZnaki())
        wynik.znaki.push_back({z->GetKod(),
                               Utf8ZUtf16(z->GetNazwa()),
                               Utf8ZUtf16(z->GetKategoria()),
                               Utf8ZUtf16(z->GetKierunek()),
                               Utf8ZUtf16(z->GetRozklad()),
                               z->GetKlasaLaczenia(),
                               z->GetLustrzany(),
                               {miejsca[z->GetDuza()], nullptr},
                               {miejsca[z->GetMala()], nullptr},
                               {miejsca[z->GetTytulowa()], nullptr}});
    return wynik;
}

} // namespace pomiary
