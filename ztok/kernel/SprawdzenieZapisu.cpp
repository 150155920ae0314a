// What is looked at before the first byte of a write, so that what is written can be read.
#include "ztok/fields/TArrayOfConst.h"
#include "ztok/kernel/TObiekt.h"
#include "ztok/kernel/TOpisKlasy.h"
#include "ztok/lists/TListaObiektow.h"
#include "ztok/persist/TZapisywaczDanych.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {

namespace {

// One class: also when two modules hold it.
bool TaSama(const TKlasa* a, const TKlasa* b) noexcept { return a == b || (b != nullptr && a->nazwa == b->nazwa); }

// Apart from the walk, whose frames these texts would make large.
[[noreturn, gnu::noinline]] void BladPola(const TObiekt& obiekt, int nr, const TObiektBazowy& czesc,
                                          const TKlasa* typ) {
    if (typ == nullptr)
        ZTErrorFmt(kmBrakPola, {obiekt.NazwaKlasy(), nr});
    ZTErrorFmt(kmNiezgodnyTypPola, {obiekt.NazwaKlasy(), obiekt.NazwaPolaNr(nr), czesc.Klasa(), typ});
}

[[noreturn, gnu::noinline]] void BladElementu(const TListaBazowa& lista, std::int32_t i, const TKlasa* typ) {
    ZTErrorFmt(kmElementInnejKlasy, {lista.Klasa(), lista.DajSciezkeDoSiebie(), i, lista.Obiekty(i)->Klasa(), typ});
}

} // namespace

void TObiekt::SprawdzPolaPrzedZapisem(TZapisywaczDanych& zapisywacz) const {
    for (int nr = 0; nr < ilePol_; ++nr) {
        if ((Stany()[nr] & spObiekt) == 0 || FPola[nr] == nullptr || !PoleNiepuste(nr))
            continue;
        const bool wybrane = zapisywacz.CzyZapisacPole ? zapisywacz.CzyZapisacPole(*this, nr)
                                                       : zapisywacz.ZapisWszystkichPol || PoleZapisywane(nr);
        const auto* czesc = static_cast<const TObiektBazowy*>(Pole(nr)); // a filter may do anything
        if (!wybrane || czesc == nullptr)
            continue;
        // The record does not tell the class: the reader makes a field of the declared one.
        if (const TKlasa* typ = TypPolaNr(nr); !TaSama(czesc->Klasa(), typ))
            BladPola(*this, nr, *czesc, typ);
        SprawdzPrzedZapisem(*czesc, zapisywacz);
    }
}

void SprawdzPrzedZapisem(const TObiektBazowy& obiekt, TZapisywaczDanych& zapisywacz) {
    const TPoziom poziom(zapisywacz.Zagniezdzenie, obiekt);
    const std::uint32_t cechy = obiekt.Klasa()->cechy;
    if ((cechy & ckObiekt) != 0) {
        static_cast<const TObiekt&>(obiekt).SprawdzPolaPrzedZapisem(zapisywacz);
    } else if ((cechy & ckTablica) != 0) {
        const auto& tablica = static_cast<const TArrayOfConst&>(obiekt);
        for (std::int32_t i = 0; i < tablica.Ile(); ++i)
            if (const TObiektBazowy* element = tablica.Obiekt(i); element != nullptr)
                SprawdzPrzedZapisem(*element, zapisywacz);
    } else if ((cechy & ckListaZObiektami) != 0) {
        const auto& lista = static_cast<const TListaBazowa&>(obiekt);
        const TKlasa* klasa = (cechy & ckListaObiektow) != 0 && lista.Klasa()->typObiektow != nullptr
                                  ? static_cast<const TListaObiektow&>(lista).TypObiektowListy()
                                  : nullptr;
        // Elements of one class that nests nothing are one level, and need not be looked at.
        const bool plaskie = klasa != nullptr && lista.Jednorodna() && klasa->Ma(ckObiekt) &&
                             !klasa->Ma(ckWlasneTypyPol) && !TObiekt::Migawka(klasa).saObiekty;
        for (std::int32_t i = 0; i < lista.IleObiektow(); ++i) {
            const TObiektBazowy* element = lista.Obiekty(i);
            if (element == nullptr)
                continue;
            if (plaskie) {
                const TPoziom poziomElementu(zapisywacz.Zagniezdzenie, *element);
                break;
            }
            // A list of one class tells it nowhere.
            if (klasa != nullptr && !TaSama(element->Klasa(), klasa))
                BladElementu(lista, i, klasa);
            SprawdzPrzedZapisem(*element, zapisywacz);
        }
    }
}

} // namespace ztok
