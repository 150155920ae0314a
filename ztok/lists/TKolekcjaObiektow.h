// Owning collection: elements of any classes that the kernel knows by name.
#pragma once

#include "ztok/lists/TListaZObiektami.h"

namespace ztok {

// Its stream holds the class name of each element. A null element is no element: it can be added only to be removed.
class ZTOK_API TKolekcjaObiektow : public TListaZObiektami {
    ZTOK_KLASA_DEKL(TKolekcjaObiektow)
    static constexpr std::uint32_t CechyKlasy = ckPole | ckObiektBazowy | ckLista | ckListaZObiektami | ckKolekcja;

    explicit TKolekcjaObiektow(TObiektBazowy* wlasciciel = nullptr) : TListaZObiektami(wlasciciel) {}
    ~TKolekcjaObiektow() override;

    // Adds a copy of the object's own class; the object stays with the caller.
    TObiektBazowy* DopiszObiekt(TObiektBazowy* nowyObiekt, std::int32_t gdzie) override;
    [[nodiscard]] std::int32_t WykonajPorownanie(const TPole& inne, TPorownywaczDanych& porownywacz) const override;
    void WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) override;
    void WykonajZapis(TStrumien& strumien, TZapisywaczDanych& zapisywacz) const override;
    // An entry whose class the kernel does not know is passed over without reading its record; see
    // TOdczytywaczDanych::BladNieznanejKlasy.
    void WykonajOdczyt(TStrumien& strumien, TOdczytywaczDanych& odczytywacz) override;
    void WykonajZapisTekstowy(TZapisywaczTekstu& zapisywacz) const override;
    void WykonajOdczytTekstowy(TOdczytywaczTekstu& odczytywacz) override;

  private:
    // Frees what stands there and puts the object in its place; behind the end it is added.
    void WstawNaMiejsce(TWlasny<TObiektBazowy> nowy, std::int32_t gdzie);
};

} // namespace ztok
