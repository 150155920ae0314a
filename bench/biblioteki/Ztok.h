// The structs as objects of the library's model.
#pragma once

#include "dane/Dane.h"
#include "ztok/kernel/Typypolbazowe.h"

namespace pomiary {

class TPozycja : public ztok::TObiekt {
    ZTOK_OBIEKT(TPozycja, ztok::TObiekt, (0, Nazwa, String), (1, Jednostka, String), (2, Ilosc, Double),
                (3, Cena, Double), (4, Vat, Integer))
};
class TListaPozycji : public ztok::TListaTypu<TPozycja> {
    ZTOK_LISTA(TListaPozycji, TPozycja)
};

class TFaktura : public ztok::TObiekt {
    ZTOK_OBIEKT(TFaktura, ztok::TObiekt, (0, Numer, String), (1, Data, Date), (2, Klient, Integer),
                (3, Zaplacona, Boolean), (4, Uwagi, String), (5, Pozycje, Obiekt<TListaPozycji>))
};
class TListaFaktur : public ztok::TListaTypu<TFaktura> {
    ZTOK_LISTA(TListaFaktur, TFaktura)
};

class TKlient : public ztok::TObiekt {
    ZTOK_OBIEKT(TKlient, ztok::TObiekt, (0, Nazwa, String), (1, Nip, String), (2, Ulica, String), (3, Miasto, String),
                (4, Kod, String))
};
class TListaKlientow : public ztok::TListaTypu<TKlient> {
    ZTOK_LISTA(TListaKlientow, TKlient)
};

class TBaza : public ztok::TObiekt {
    ZTOK_OBIEKT(TBaza, ztok::TObiekt, (0, Faktury, Obiekt<TListaFaktur>), (1, Klienci, Obiekt<TListaKlientow>))
};

class TZnak : public ztok::TObiekt {
    ZTOK_OBIEKT(TZnak, ztok::TObiekt, (0, Kod, Integer), (1, Nazwa, String), (2, Kategoria, String),
                (3, Kierunek, String), (4, Rozklad, String), (5, KlasaLaczenia, Integer), (6, Duza, Integer),
                (7, Mala, Integer))
};
class TListaZnakow : public ztok::TListaTypu<TZnak> {
    ZTOK_LISTA(TListaZnakow, TZnak)
};
class TZnaki : public ztok::TObiekt {
    ZTOK_OBIEKT(TZnaki, ztok::TObiekt, (0, Znaki, Obiekt<TListaZnakow>))
};

void RejestrujKlasyPomiarow();
void Wypelnij(TPozycja& cel, const dane::TPozycja& p);
void Wypelnij(TBaza& cel, const dane::TBaza& dane);
void Wypelnij(TZnaki& cel, const dane::TZnaki& dane);

} // namespace pomiary
