// An invoice with its customer and positions: built, saved to a file, read back, compared.
#include <cstdio>

#include "ztok/kernel/Typypolbazowe.h"
using namespace ztok;

class TKlient : public TObiekt {
    ZTOK_OBIEKT(TKlient, TObiekt, (0, Nazwa, String), (1, Miasto, String))
};
class TPozycja : public TObiekt {
    ZTOK_OBIEKT(TPozycja, TObiekt, (0, Towar, String), (1, Ile, Integer), (2, Cena, Double))
};
class TListaPozycji : public TListaTypu<TPozycja> {
    ZTOK_LISTA(TListaPozycji, TPozycja)
};
class TFaktura : public TObiekt {
    ZTOK_OBIEKT(TFaktura, TObiekt, (0, Numer, String), (1, Klient, Obiekt<TKlient>),
                (2, Pozycje, Obiekt<TListaPozycji>))
};

int main() {
    TFaktura faktura, wczytana;
    faktura.SetNumer(u"FV/7/2026");
    faktura.GetKlient().SetNazwa(u"Młyn Żuraw");
    faktura.GetPozycje().Dopisz().WpiszDane({u"Towar", u"Ile", u"Cena"}, {u"mąka żytnia", 40, 2.75});
    TStrumienPlikowy plik(u"faktura.dat", ETrybPliku::Tworzenie);
    faktura.ZapiszWStrumieniu(plik);
    plik.Seek(0, ESeek::Poczatek);
    wczytana.WczytajZeStrumienia(plik);
    for (const TPozycja* pozycja : wczytana.GetPozycje())
        std::printf("%d x %.2f\n", pozycja->GetIle(), pozycja->GetCena());
    return wczytana.Porownaj(faktura) == 0 ? 0 : 1;
}
