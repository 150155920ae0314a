// The structs as objects of the library's model.
#pragma once

#include "dane/Dane.h"
#include "ztok/kernel/Typypolbazowe.h"

namespace pomiary {

class TPozycja : public ztok::TObiekt {
    ZTOK_OBIEKT(TPozycja, ztok::TObiekt, (0, Nazwa, String), (1, Lp, Integer), (2, Ilosc, Double), (3, Cena, Double),
                (4, Stawka, Byte), (5, Towar, Int64))
};
class TListaPozycji : public ztok::TListaTypu<TPozycja> {
    ZTOK_LISTA(TListaPozycji, TPozycja)
};

class TKlient : public ztok::TObiekt {
    ZTOK_OBIEKT(TKlient, ztok::TObiekt, (0, Nazwa, String), (1, Ulica, String), (2, Miasto, String), (3, Nip, Int64),
                (4, Rodzaj, Byte), (5, Staly, Boolean))
};
class TListaKlientow : public ztok::TListaTypu<TKlient> {
    ZTOK_LISTA(TListaKlientow, TKlient)
};

class TWaluta : public ztok::TObiekt {
    ZTOK_OBIEKT(TWaluta, ztok::TObiekt, (0, Nazwa, String), (1, Kurs, Double), (2, Wymienna, Boolean))
};
class TListaWalut : public ztok::TListaTypu<TWaluta> {
    ZTOK_LISTA(TListaWalut, TWaluta)
};

class TFaktura : public ztok::TObiekt {
    ZTOK_OBIEKT(TFaktura, ztok::TObiekt, (0, Numer, String), (1, Wystawiona, Date), (2, Termin, Date),
                (3, Klient, Wsk<TKlient>), (4, Waluta, Ref<TWaluta>), (5, Ksiegowy, Int64), (6, Rodzaj, Byte),
                (7, Zaplacona, Boolean), (8, Uwagi, String), (9, Pozycje, Obiekt<TListaPozycji>))
};
class TListaFaktur : public ztok::TListaTypu<TFaktura> {
    ZTOK_LISTA(TListaFaktur, TFaktura)
};

class TBaza : public ztok::TObiekt {
    ZTOK_OBIEKT(TBaza, ztok::TObiekt, (0, Faktury, Obiekt<TListaFaktur>), (1, Klienci, Obiekt<TListaKlientow>),
                (2, Waluty, Obiekt<TListaWalut>))
};

class TZnak : public ztok::TObiekt {
    ZTOK_OBIEKT(TZnak, ztok::TObiekt, (0, Kod, Integer), (1, Nazwa, String), (2, Kategoria, String),
                (3, Kierunek, String), (4, Rozklad, String), (5, KlasaLaczenia, Byte), (6, Lustrzany, Boolean),
                (7, Duza, Ref<TZnak>), (8, Mala, Ref<TZnak>), (9, Tytulowa, Ref<TZnak>))
};
class TListaZnakow : public ztok::TListaTypu<TZnak> {
    ZTOK_LISTA(TListaZnakow, TZnak)
};
class TZnaki : public ztok::TObiekt {
    ZTOK_OBIEKT(TZnaki, ztok::TObiekt, (0, Znaki, Obiekt<TListaZnakow>))
};

// The model's class of a data set.
template <class TDane> struct TModel;
template <> struct TModel<dane::TBaza> { using Typ = TBaza; };
template <> struct TModel<dane::TZnaki> { using Typ = TZnaki; };

void RejestrujKlasyPomiarow();
void Wypelnij(TPozycja& cel, const dane::TPozycja& p);
void Wypelnij(TBaza& cel, const dane::TBaza& dane);
void Wypelnij(TZnaki& cel, const dane::TZnaki& dane);
// Back to structs; the numbers of references tell where the pointers lead.
[[nodiscard]] dane::TPozycja JakoStruktura(const TPozycja& p);
[[nodiscard]] dane::TBaza JakoStruktury(const TBaza& baza);
[[nodiscard]] dane::TZnaki JakoStruktury(const TZnaki& znaki);

template <class TDane> ztok::TWlasny<typename TModel<TDane>::Typ> JakoObiekty(const TDane& dane) {
    auto korzen = ztok::Utworz<typename TModel<TDane>::Typ>();
    Wypelnij(*korzen, dane);
    return korzen;
}

} // namespace pomiary
