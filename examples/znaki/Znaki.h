// The model of the character database: blocks, each with its characters.
#pragma once

#include "ztok/kernel/Typypolbazowe.h"

class TZnak : public ztok::TObiekt {
    ZTOK_OBIEKT(TZnak, ztok::TObiekt, (0, Kod, Cardinal), // code point
                (1, Nazwa, String),                       // its name in capitals, or <control> and the like
                (2, Kategoria, String),                   // general category, two letters
                (3, KlasaLaczenia, Byte),                 // canonical combining class
                (4, Lustrzany, Boolean),                  // mirrored in right-to-left text
                (5, Wartosc, Double),                     // numeric value, for the characters that have one
                (6, StaraNazwa, String),                  // name in the first version, if it was another
                (7, Duza, Ref<TZnak>),                    // the character in upper, lower and title case
                (8, Mala, Ref<TZnak>), (9, Tytulowa, Ref<TZnak>),
                (10, RodzajRozkladu,
                 String), // how it is made of others: empty for the same text, <compat> and the like
                (11, Rozklad, Obiekt<ztok::TListaRefObiektow>)) // what it is made of; may hold one character twice
};

class TListaZnakow : public ztok::TListaTypu<TZnak> {
    ZTOK_LISTA(TListaZnakow, TZnak)
};

class TBlok : public ztok::TObiekt {
    ZTOK_OBIEKT(TBlok, ztok::TObiekt, (0, Pierwszy, Cardinal), (1, Ostatni, Cardinal), (2, Nazwa, String),
                (3, Znaki, Obiekt<TListaZnakow>))
};

class TListaBlokow : public ztok::TListaTypu<TBlok> {
    ZTOK_LISTA(TListaBlokow, TBlok)
};
