// Sample classes that the tests of every format and operation share: one field of each kind, nested objects, lists,
// collections and pointers.
#pragma once

#include "ztok/kernel/Typypolbazowe.h"

namespace probki {

class TAdres : public ztok::TObiekt {
    ZTOK_OBIEKT(TAdres, ztok::TObiekt, (0, Ulica, String), (1, Numer, Integer), (2, Miasto, String))
};

class TListaAdresow : public ztok::TListaTypu<TAdres> {
    ZTOK_LISTA(TListaAdresow, TAdres)
};

class TWszystko;
class TListaWszystkich;

// One field of every kind and of every kind of list. Number 9 is left out; the bitmap of all is four bytes long.
class TWszystko : public ztok::TObiekt {
    ZTOK_OBIEKT(TWszystko, ztok::TObiekt, (0, B, Byte), (1, S, Smallint), (2, W, Word), (3, I, Integer),
                (4, C, Cardinal), (5, L, Int64), (6, D, Double), (7, Tak, Boolean), (8, Nazwa, String),
                (10, Bajty, RawByteString), (11, Szeroki, WideString), (12, Opis, CDATA), (13, Adres, Obiekt<TAdres>),
                (14, Adresy, Obiekt<TListaAdresow>), (15, Podrzedne, Obiekt<TListaWszystkich>),
                (16, Rozne, Obiekt<ztok::TKolekcjaObiektow>), (17, Wskaznik, Wsk<TWszystko>),
                (18, Referencja, Ref<TAdres>), (19, Wskazywane, Obiekt<ztok::TListaWskObiektow>),
                (20, Powiazane, Obiekt<ztok::TListaRefObiektow>), (21, Liczby, Obiekt<ztok::TPoleIntList>),
                (22, Ulamki, Obiekt<ztok::TPoleDoubleList>), (23, Teksty, StrList), (24, TekstySzerokie, WideStrList),
                (25, Tablica, Obiekt<ztok::TArrayOfConst>))
};

class TListaWszystkich : public ztok::TListaTypu<TWszystko> {
    ZTOK_LISTA(TListaWszystkich, TWszystko)
};

inline void Rejestruj() {
    ztok::RejestrujKlasy<TAdres, TListaAdresow, TWszystko, TListaWszystkich, ztok::TArrayOfConst>();
}

} // namespace probki
