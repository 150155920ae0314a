// What must hold of every living tree, whatever was done to it, read from the slots themselves.
#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "ztok/kernel/Typypolbazowe.h"

namespace drzewa {

using namespace ztok;

struct TStan {
    std::vector<TObiektBazowy*> obiekty; // of all trees, owners before what they hold
    std::vector<TPole*> odniesienia;     // registered pointers and lists of them
    std::vector<TPole*> zwykle;          // plain ones
    const char* blad = nullptr;          // what does not hold

    void Wymagaj(bool warunek, const char* co) {
        if (!warunek && blad == nullptr)
            blad = co;
    }

    // Objects to follow; `klasaCelu` is the class that a pointer field declares.
    void Zbierz(TPole& pole, const TObiektBazowy* wlasciciel, const TKlasa* klasaCelu = nullptr) {
        const std::uint32_t cechy = pole.Klasa()->cechy;
        if ((cechy & (ckPoleRef | ckListaRef)) != 0)
            odniesienia.push_back(&pole);
        else if ((cechy & (ckPoleWsk | ckListaWsk)) != 0)
            zwykle.push_back(&pole);
        if ((cechy & ckPoleWsk) != 0 && klasaCelu != nullptr) {
            const TObiektBazowy* cel = static_cast<const TPoleWskObiektu&>(pole).Obiekt();
            Wymagaj(cel == nullptr || cel->JestKlasy(klasaCelu), "a pointer leads to an object of its class");
        }
        if ((cechy & ckObiektBazowy) == 0)
            return;
        auto& o = static_cast<TObiektBazowy&>(pole);
        Wymagaj(o.Rodzic() == wlasciciel, "an object's parent is its owner");
        Wymagaj(o.JestTrzymany() == (wlasciciel != nullptr), "an object knows whether it is held");
        Wymagaj(std::find(obiekty.begin(), obiekty.end(), &o) == obiekty.end() || obiekty.size() > 200,
                "an object has one owner");
        obiekty.push_back(&o);
        if ((cechy & ckObiekt) != 0) {
            auto& zPolami = static_cast<TObiekt&>(o);
            for (int nr = 0; nr <= zPolami.OstUzywanePole(); ++nr)
                if (TPole* p = zPolami.Pole(nr); p != nullptr) {
                    const TKlasa* typ = zPolami.TypPolaNr(nr);
                    Wymagaj(typ == nullptr || p->JestKlasy(typ), "a field is of its class");
                    Zbierz(*p, &o, KlasaCelu(*o.Klasa(), nr));
                }
        } else if ((cechy & ckLista) != 0) {
            auto& lista = static_cast<TListaBazowa&>(o);
            Wymagaj(lista.IleObiektow() >= 0 && lista.IleObiektow() <= lista.Pojemnosc(), "elements have their room");
            for (TObiektBazowy* element : lista) {
                Wymagaj(element != nullptr || (cechy & ckListaObiektow) == 0, "no empty place among items");
                if (element != nullptr && (cechy & ckListaZObiektami) != 0)
                    Zbierz(*element, &o);
            }
        } else if ((cechy & ckTablica) != 0) {
            auto& tablica = static_cast<TArrayOfConst&>(o);
            for (std::int32_t i = 0; i < tablica.Ile(); ++i)
                if (tablica.Obiekt(i) != nullptr)
                    Zbierz(*tablica.Obiekt(i), &o);
        }
    }

    static const TKlasa* KlasaCelu(const TKlasa& klasa, int nr) {
        for (const TKlasa* k = &klasa; k != nullptr; k = k->Przodek())
            if (k->pola != nullptr)
                for (const TWierszPola& wiersz : k->pola())
                    if (wiersz.nr == nr && wiersz.klasa != nullptr)
                        return wiersz.klasa();
        return nullptr;
    }

    // What a pointer or a list of them leads to, in its order.
    static std::vector<const TObiektBazowy*> Cele(const TPole& odniesienie) {
        std::vector<const TObiektBazowy*> cele;
        if (odniesienie.Klasa()->Ma(ckPoleWsk))
            cele.push_back(static_cast<const TPoleWskObiektu&>(odniesienie).Obiekt());
        else
            for (const TObiektBazowy* cel : static_cast<const TListaBazowa&>(odniesienie))
                cele.push_back(cel);
        std::erase(cele, nullptr);
        return cele;
    }

    // Every registered pointer leads to a living object that knows of it, and objects know of nothing else.
    void SprawdzOdniesienia() {
        std::vector<std::pair<const TObiektBazowy*, int>> ile;
        for (const TObiektBazowy* o : obiekty)
            ile.emplace_back(o, 0);
        std::sort(ile.begin(), ile.end());
        for (const TPole* odniesienie : odniesienia) {
            std::vector<const TObiektBazowy*> cele = Cele(*odniesienie);
            std::sort(cele.begin(), cele.end());
            cele.erase(std::unique(cele.begin(), cele.end()), cele.end());
            for (const TObiektBazowy* cel : cele) {
                const auto jest = std::lower_bound(ile.begin(), ile.end(), std::pair(cel, 0));
                if (jest == ile.end() || jest->first != cel)
                    return Wymagaj(false, "a reference leads to a living object");
                Wymagaj(cel->MaRefOd(odniesienie), "a target knows of its reference");
                ++jest->second;
            }
        }
        for (const auto& [o, znane] : ile) {
            const auto pamieta = [cel = o](const TPole* p) { return cel->MaRefOd(p); };
            Wymagaj(o->MaJakiesRef() == (znane != 0) &&
                        std::count_if(odniesienia.begin(), odniesienia.end(), pamieta) == znane,
                    "a target knows of no other reference");
        }
    }
};

// What does not hold of the trees, which refer to one another only; null when all does.
inline const char* Blad(std::initializer_list<TObiektBazowy*> korzenie) {
    TStan stan;
    for (TObiektBazowy* korzen : korzenie)
        stan.Zbierz(*korzen, nullptr);
    stan.SprawdzOdniesienia();
    for (const TPole* pole : stan.zwykle)
        for (const TObiektBazowy* cel : TStan::Cele(*pole))
            stan.Wymagaj(std::find(stan.obiekty.begin(), stan.obiekty.end(), cel) != stan.obiekty.end(),
                         "a plain pointer leads to a living object");
    return stan.blad;
}

} // namespace drzewa
