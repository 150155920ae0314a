// Text form of objects: whole documents, and the fields of one object.
#include <utility>

#include "ztok/fields/Konwersje.h"
#include "ztok/fields/TPolaDaty.h"
#include "ztok/fields/TPolaLiczbowe.h"
#include "ztok/fields/TPolaTekstowe.h"
#include "ztok/kernel/TOpisKlasy.h"
#include "ztok/persist/TOdczytywaczTekstu.h"
#include "ztok/persist/TZapisywaczTekstu.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/TStrumien.h"

namespace ztok {

// --- documents

void TObiektBazowy::ZapiszTekstowo(TStrumien& strumien, TZapisywaczTekstu* zapisywacz) const {
    if (zapisywacz == nullptr) {
        ZapiszTekstowo(strumien, std::u16string_view());
        return;
    }
    const TPoziom poziom(zapisywacz->Zagniezdzenie, *this);
    WykonajZapisTekstowy(*zapisywacz);
}

void TObiektBazowy::ZapiszTekstowo(TStrumien& strumien, std::u16string_view naglowek) const {
    TZapisywaczTekstu(strumien).ZapiszDokument(*this, naglowek);
}

void TObiektBazowy::WczytajTekstowo(TStrumien& strumien, TOdczytywaczTekstu* odczytywacz) {
    if (odczytywacz == nullptr) {
        WczytajTekstowo(strumien, std::u16string_view());
        return;
    }
    const TPoziom poziom(odczytywacz->Zagniezdzenie, *this);
    odczytywacz->OdczytywanoPole(*this);
    WykonajOdczytTekstowy(*odczytywacz);
}

void TObiektBazowy::WczytajTekstowo(TStrumien& strumien, std::u16string_view naglowek) {
    WczytajTekstowo(strumien, TOpcjeOdczytu{}, naglowek);
}

void TObiektBazowy::WczytajTekstowo(TStrumien& strumien, const TOpcjeOdczytu& opcje, std::u16string_view naglowek) {
    TOdczytywaczTekstu wlasny(strumien, opcje.limity);
    wlasny.kazdePole_ = false;
    wlasny.WczytajDokument(*this, naglowek);
}

// --- the fields of an object

std::string_view TObiekt::Nazwa8PolaNr(int nrPola) const {
    const TMigawkaOpisu& migawka = Migawka();
    return nrPola < 0 || nrPola >= migawka.ilePol || Klasa()->Ma(ckWlasneNazwyPol) ? std::string_view()
                                                                                   : migawka.pola[nrPola].nazwa8;
}

void TObiekt::WykonajZapisTekstowy(TZapisywaczTekstu& zapisywacz) const {
    const std::uint32_t cechy = Klasa()->cechy;
    const bool pytajKlase = FPola != nullptr && !zapisywacz.ZapisWszystkichPol &&
                            ((cechy & ckWlasneZapisywane) != 0 || Migawka().saPredykaty);
    const TObiekt* const poprzedni = std::exchange(zapisywacz.ZapisObiekt, this);
    const int poprzednie = zapisywacz.ZapisPole;
    zapisywacz.ZwiekszAkapit();
    for (int nr = 0; nr < ilePol_; ++nr) {
        if (FPola[nr] == nullptr || !PoleWZapisie(nr, pytajKlase, cechy, zapisywacz))
            continue;
        zapisywacz.ZapisPole = nr;
        if ((Stany()[nr] & spObiekt) == 0) {
            zapisywacz.ZacznijPole(*this, nr);
            FPola[nr]->ZapiszTekstowo(*zapisywacz.Strumien, &zapisywacz);
        } else {
            zapisywacz.ZacznijPoleObiekt(*this, nr);
            FPola[nr]->ZapiszTekstowo(*zapisywacz.Strumien, &zapisywacz);
            zapisywacz.ZakonczObiekt();
        }
    }
    zapisywacz.ZmniejszAkapit();
    zapisywacz.ZapisObiekt = poprzedni;
    zapisywacz.ZapisPole = poprzednie;
}

// The field that the current token names; `po` is the number of the field read last, since fields come in order.
int TObiekt::PoleZTekstu(TOdczytywaczTekstu& odczytywacz, int po) const {
    TZTParser& parser = odczytywacz.Parser;
    parser.CheckToken(TZTParser::Symbol);
    const TMigawkaOpisu& migawka = Migawka();
    const std::string_view nazwa = parser.TrescTokenu();
    if (!Klasa()->Ma(ckWlasneNazwyPol))
        for (int i = 1; i <= migawka.ilePol; ++i) {
            const int nr = po + i < migawka.ilePol ? po + i : po + i - migawka.ilePol;
            if (migawka.pola[nr].nazwa8 == nazwa)
                return nr;
        }
    const int nr = NrPolaONazwie(PolskiWide(nazwa));
    if (nr < 0)
        parser.Error(kmSpodziewanyIdentyfikator);
    return nr;
}

void TObiekt::WykonajOdczytTekstowy(TOdczytywaczTekstu& odczytywacz) {
    ZerujDane();
    TZTParser& parser = odczytywacz.Parser;
    TOdczytywaczTekstu::TPoleOdczytu poprzednie(odczytywacz, *this);
    const TMigawkaOpisu& migawka = Migawka();
    odczytywacz.ZuzyjPamiec(migawka.ilePol * static_cast<std::int64_t>(sizeof(TPole*) + 1));
    for (int nr = -1; !parser.TokenSymbolIs("end");) {
        const bool obiekt = parser.TokenSymbolIs("object");
        if (obiekt)
            parser.NextToken();
        nr = PoleZTekstu(odczytywacz, nr);
        const TKlasa* typ = TypPolaNr(nr);
        if (typ == nullptr || typ->Ma(ckObiektBazowy) != obiekt)
            parser.Error(kmSpodziewanyIdentyfikator);
        parser.NextToken();
        if (!obiekt) {
            parser.CheckToken('=');
            parser.NextToken();
        }
        odczytywacz.ZuzyjPamiec(48);
        odczytywacz.OdczytPole = nr;
        // Given twice: what was read before goes, since a reader may know a field that can die only once.
        if (Pole(nr) != nullptr && (obiekt || (Stany()[nr] >> 4U) == kpWskObiektu))
            UstawPole(nr, nullptr, true);
        TPole& pole = *DajPole(nr);
        pole.WczytajTekstowo(odczytywacz.Strumien, &odczytywacz);
        if (obiekt) {
            parser.CheckTokenSymbol("end");
            parser.NextToken();
        } else if ((Stany()[nr] >> 4U) == kpWskObiektu && nr < migawka.ilePol && migawka.pola[nr].wiersz != nullptr &&
                   migawka.pola[nr].wiersz->klasa != nullptr) {
            odczytywacz.OgraniczOstatni(migawka.pola[nr].wiersz->klasa());
        }
        UstawNiepuste(nr, true);
    }
}

} // namespace ztok
