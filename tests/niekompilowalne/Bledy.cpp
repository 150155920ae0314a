// Typical mistakes of a declaration and of its use. Each stands beside what is right; a macro of its name selects it,
// and without a macro the file compiles. What the compilers say of each is kept in komunikaty.tsv.
#include <cstdint>
#include <string>

#include "ztok/kernel/Typypolbazowe.h"
using namespace ztok;

class TKlient : public TObiekt {
    ZTOK_OBIEKT(TKlient, TObiekt, (0, Nazwa, String), (1, Vip, Boolean), (2, Punkty, Integer))
};
class TPozniej; // defined at the end, if at all

#ifdef NieznanyRodzaj
class TA : public TObiekt {
    ZTOK_OBIEKT(TA, TObiekt, (0, Nazwa, Napis), (1, Ile, Integer))
};
#else
class TA : public TObiekt {
    ZTOK_OBIEKT(TA, TObiekt, (0, Nazwa, String), (1, Ile, Integer))
};
#endif

#ifdef RodzajWbudowany
class TB : public TObiekt {
    ZTOK_OBIEKT(TB, TObiekt, (0, Nazwa, String), (1, Ile, int))
};
#else
class TB : public TObiekt {
    ZTOK_OBIEKT(TB, TObiekt, (0, Nazwa, String), (1, Ile, Integer))
};
#endif

#ifdef RodzajStandardowy
class TC : public TObiekt {
    ZTOK_OBIEKT(TC, TObiekt, (0, Nazwa, std::u16string), (1, Ile, Integer))
};
#else
class TC : public TObiekt {
    ZTOK_OBIEKT(TC, TObiekt, (0, Nazwa, String), (1, Ile, Integer))
};
#endif

#ifdef NieznanaKlasa
class TD : public TObiekt {
    ZTOK_OBIEKT(TD, TObiekt, (0, Nazwa, String), (1, Klient, Obiekt<TKlijent>))
};
#else
class TD : public TObiekt {
    ZTOK_OBIEKT(TD, TObiekt, (0, Nazwa, String), (1, Klient, Obiekt<TKlient>))
};
#endif

#ifdef KlasaSpozaModelu
class TE : public TObiekt {
    ZTOK_OBIEKT(TE, TObiekt, (0, Nazwa, String), (1, Uwagi, Obiekt<std::u16string>))
};
#else
class TE : public TObiekt {
    ZTOK_OBIEKT(TE, TObiekt, (0, Nazwa, String), (1, Uwagi, Obiekt<TPoleStrList>))
};
#endif

// Its class is declared, and defined nowhere.
#ifdef KlasaNiezdefiniowana
class TF : public TObiekt {
    ZTOK_OBIEKT(TF, TObiekt, (0, Nazwa, String), (1, Klient, Obiekt<TPozniej>))
};
void Uzyj(TF& o) { o.GetKlient(); }
#else
class TF : public TObiekt {
    ZTOK_OBIEKT(TF, TObiekt, (0, Nazwa, String), (1, Klient, Obiekt<TKlient>))
};
void Uzyj(TF& o) { o.GetKlient(); }
#endif

#ifdef BrakPrzecinkaWierszy
class TG : public TObiekt {
    ZTOK_OBIEKT(TG, TObiekt, (0, Nazwa, String)(1, Ile, Integer), (2, Vip, Boolean))
};
#else
class TG : public TObiekt {
    ZTOK_OBIEKT(TG, TObiekt, (0, Nazwa, String), (1, Ile, Integer), (2, Vip, Boolean))
};
#endif

#ifdef BrakPrzecinkaWiersza
class TH : public TObiekt {
    ZTOK_OBIEKT(TH, TObiekt, (0, Nazwa String), (1, Ile, Integer))
};
#else
class TH : public TObiekt {
    ZTOK_OBIEKT(TH, TObiekt, (0, Nazwa, String), (1, Ile, Integer))
};
#endif

#ifdef BrakNawiasow
class TI : public TObiekt {
    ZTOK_OBIEKT(TI, TObiekt, 0, Nazwa, String)
};
#else
class TI : public TObiekt {
    ZTOK_OBIEKT(TI, TObiekt, (0, Nazwa, String))
};
#endif

#ifdef NumerDwaRazy
class TJ : public TObiekt {
    ZTOK_OBIEKT(TJ, TObiekt, (0, Nazwa, String), (0, Ile, Integer))
};
#else
class TJ : public TObiekt {
    ZTOK_OBIEKT(TJ, TObiekt, (0, Nazwa, String), (1, Ile, Integer))
};
#endif

#ifdef NazwaDwaRazy
class TK : public TObiekt {
    ZTOK_OBIEKT(TK, TObiekt, (0, Nazwa, String), (1, Nazwa, Integer))
};
#else
class TK : public TObiekt {
    ZTOK_OBIEKT(TK, TObiekt, (0, Nazwa, String), (1, Ile, Integer))
};
#endif

#ifdef NumerZaDuzy
class TKA : public TObiekt {
    ZTOK_OBIEKT(TKA, TObiekt, (0, Nazwa, String), (32768, Ile, Integer))
};
#else
class TKA : public TObiekt {
    ZTOK_OBIEKT(TKA, TObiekt, (0, Nazwa, String), (32767, Ile, Integer))
};
#endif

#ifdef ZaslonietyCzlonek
class TKB : public TObiekt {
    ZTOK_OBIEKT(TKB, TObiekt, (0, PoleString, String))
};
#else
class TKB : public TObiekt {
    ZTOK_OBIEKT(TKB, TObiekt, (0, Pole, String))
};
#endif

#define DZIESIEC(n)                                                                                                    \
    (n##0, A##n, Byte), (n##1, B##n, Byte), (n##2, C##n, Byte), (n##3, D##n, Byte), (n##4, E##n, Byte),                \
        (n##5, F##n, Byte), (n##6, G##n, Byte), (n##7, H##n, Byte), (n##8, I##n, Byte), (n##9, J##n, Byte)
#define STO(n)                                                                                                         \
    DZIESIEC(n##0), DZIESIEC(n##1), DZIESIEC(n##2), DZIESIEC(n##3), DZIESIEC(n##4), DZIESIEC(n##5), DZIESIEC(n##6),    \
        DZIESIEC(n##7), DZIESIEC(n##8), DZIESIEC(n##9)
#ifdef ZaDuzoWierszy
class TKC : public TObiekt {
    ZTOK_OBIEKT(TKC, TObiekt, STO(1), STO(2), STO(3), STO(4), STO(5), DZIESIEC(1), DZIESIEC(2), DZIESIEC(3),
                DZIESIEC(4), DZIESIEC(5))
};
#else
class TKC : public TObiekt {
    ZTOK_OBIEKT(TKC, TObiekt, DZIESIEC(1), DZIESIEC(2), DZIESIEC(3), DZIESIEC(4), DZIESIEC(5))
};
static_assert(TKC::nrJ5 == 59);
#endif

// The class has the descriptor, and the identity, of its base, and is refused wherever it could be made.
#if defined(BrakMakra) || defined(BrakMakraTworzonej) || defined(BrakMakraElementu) || defined(BrakMakraPola)
class TL : public TKlient {
  public:
    bool Wazny() const { return GetVip(); }
};
#else
class TL : public TKlient {
    ZTOK_OBIEKT(TL, TKlient)
    bool Wazny() const { return GetVip(); }
};
#endif
#if !defined(BrakMakraTworzonej) && !defined(BrakMakraElementu) && !defined(BrakMakraPola)
void RejestrujL() { RejestrujKlasy<TL>(); }
#endif
#if !defined(BrakMakra) && !defined(BrakMakraElementu) && !defined(BrakMakraPola)
void UtworzL() { Utworz<TL>()->SetVip(true); }
#endif
#if !defined(BrakMakra) && !defined(BrakMakraTworzonej) && !defined(BrakMakraPola)
class TLA : public TListaTypu<TL> {
    ZTOK_LISTA(TLA, TL)
};
#endif
#if !defined(BrakMakra) && !defined(BrakMakraTworzonej) && !defined(BrakMakraElementu)
class TLB : public TObiekt {
    ZTOK_OBIEKT(TLB, TObiekt, (0, Klient, Obiekt<TL>))
};
#endif

#ifdef InnaKlasaWMakrze
class TM : public TKlient {
    ZTOK_OBIEKT(TKlient, TKlient, (3, Uwagi, String))
};
#else
class TM : public TKlient {
    ZTOK_OBIEKT(TM, TKlient, (3, Uwagi, String))
};
#endif

#ifdef InnaBazaWMakrze
class TN : public TObiekt {
    ZTOK_OBIEKT(TN, TKlient, (3, Uwagi, String))
};
#else
class TN : public TKlient {
    ZTOK_OBIEKT(TN, TKlient, (3, Uwagi, String))
};
#endif

#ifdef BrakPublic
class TO : TObiekt {
    ZTOK_OBIEKT(TO, TObiekt, (0, Nazwa, String))
};
#else
class TO : public TObiekt {
    ZTOK_OBIEKT(TO, TObiekt, (0, Nazwa, String))
};
#endif
void RejestrujO() { RejestrujKlasy<TO>(); }

#ifdef InnyElementListy
class TP : public TListaTypu<TA> {
    ZTOK_LISTA(TP, TKlient)
};
#else
class TP : public TListaTypu<TKlient> {
    ZTOK_LISTA(TP, TKlient)
};
#endif

#ifdef RodzajBezPrzestrzeni
class TR : public TObiekt {
    bool Wystawiona() const { return true; }
    ZTOK_OBIEKT(TR, TObiekt, (0, Numer, ZapisGdy<Word, &TR::Wystawiona>))
};
#else
class TR : public TObiekt {
    bool Wystawiona() const { return true; }
    ZTOK_OBIEKT(TR, TObiekt, (0, Numer, ZapisGdy<rodzaj::Word, &TR::Wystawiona>))
};
#endif

void Uzyj(TKlient& klient, const TKlient& staly, TD& zlozony) {
#ifdef TekstWaski
    klient.SetNazwa("x");
#else
    klient.SetNazwa(u"x");
#endif
#ifdef LiczbaJakoLogiczna
    klient.SetVip(2);
#else
    klient.SetVip(true);
#endif
#ifdef ZapisDoStalej
    staly.SetPunkty(2);
#else
    static_cast<void>(staly.GetPunkty());
#endif
#ifdef ZapisObiektu
    zlozony.SetKlient(klient);
#else
    zlozony.GetKlient().KopiujDane(klient);
#endif
}
