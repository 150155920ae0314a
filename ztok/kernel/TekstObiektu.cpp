// Text form of objects: whole documents, and the fields of one object.
#include <utility>

#include "ztok/fields/Konwersje.h"
#include "ztok/fields/TPolaDaty.h"
#include "ztok/fields/TPolaLiczbowe.h"
#include "ztok/fields/TPolaTekstowe.h"
#include "ztok/fields/TPoleBoolean.h"
#include "ztok/kernel/Kontekst.h"
#include "ztok/kernel/TJadroKlas.h"
#include "ztok/kernel/TOpisKlasy.h"
#include "ztok/persist/TOdczytywaczTekstu.h"
#include "ztok/persist/TZapisywaczTekstu.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/TStrumien.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {

// --- documents

void TObiektBazowy::ZapiszTekstowo(TStrumien& strumien, TZapisywaczTekstu* zapisywacz) const {
    if (zapisywacz == nullptr) {
        ZapiszTekstowo(strumien, std::u16string_view());
        return;
    }
    zapisywacz->ZapisywanoObiekt(*this);
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
    if (FPola == nullptr)
        return;
    const std::uint32_t cechy = Klasa()->cechy;
    const bool pytajKlase =
        !zapisywacz.ZapisWszystkichPol && ((cechy & ckWlasneZapisywane) != 0 || Migawka().saPredykaty);
    const TObiekt* const poprzedni = std::exchange(zapisywacz.ZapisObiekt, this);
    const int poprzednie = zapisywacz.ZapisPole;
    zapisywacz.ZwiekszAkapit();
    // Nobody else has a say: then a plain field takes part when it holds a value.
    const bool poStanie = !pytajKlase && (cechy & ckWlasneNiepuste) == 0 && !zapisywacz.CzyZapisacPole;
    const TMigawkaOpisu* const migawka = (cechy & ckWlasneNazwyPol) == 0 ? &Migawka() : nullptr;
    for (int nr = 0; nr < ilePol_; ++nr) {
        if (FPola[nr] == nullptr)
            continue; // what is asked and written below may change the fields: each look is a new one
        const std::uint8_t stan = Stany()[nr];
        const unsigned kod = stan >> 4U;
        const bool zwykle = (stan & spObiekt) == 0 && kod != kpWskObiektu;
        if (poStanie && zwykle ? (stan & spWartosc) == 0 : !PoleWZapisie(nr, pytajKlase, cechy, zapisywacz))
            continue;
        zapisywacz.ZapisPole = nr;
        if (zwykle && (stan & spDokladna) != 0 && migawka != nullptr && nr < migawka->ilePol &&
            !migawka->pola[nr].nazwa8.empty() && zapisywacz.ZapiszLiniePola(migawka->pola[nr].nazwa8, *FPola[nr], kod))
            continue;
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

namespace {

// The field of exactly that name, -1 if there is none; `po` is the number of the field read last, since fields come in
// order.
int PoleONazwie8(const TMigawkaOpisu& migawka, std::string_view nazwa, int po) noexcept {
    for (int i = 1; i <= migawka.ilePol; ++i) {
        const int nr = po + i < migawka.ilePol ? po + i : po + i - migawka.ilePol;
        if (migawka.pola[nr].nazwa8 == nazwa)
            return nr;
    }
    return -1;
}

} // namespace

// The field that the current token names.
int TObiekt::PoleZTekstu(TOdczytywaczTekstu& odczytywacz, int po) const {
    TZTParser& parser = odczytywacz.Parser;
    parser.CheckToken(TZTParser::Symbol);
    const std::string_view nazwa = parser.TrescTokenu();
    if (!Klasa()->Ma(ckWlasneNazwyPol))
        if (const int nr = PoleONazwie8(Migawka(), nazwa, po); nr >= 0)
            return nr;
    const int nr = NrPolaONazwie(PolskiWide(nazwa));
    if (nr < 0)
        parser.Error(kmSpodziewanyIdentyfikator);
    return nr;
}

namespace {

// Reads "=" and the value of a field that a plain reader need not hear of, when it is written in the usual way; false
// leaves everything to the field itself. The parser then stands before the next token.
bool WczytajWartosc(TPole& pole, unsigned kod, TOdczytywaczTekstu& odczytywacz) {
    TZTParser& parser = odczytywacz.Parser;
    std::string_view bajty;
    std::int64_t calkowita = 0;
    double rzeczywista = 0;
    bool logiczna = false;
    const auto tekst = [&](auto& poleTekstowe) {
        if (!parser.WezTekst(CudzyslowSzeroki, bajty))
            return false;
        odczytywacz.SprawdzTekst(static_cast<std::uint32_t>(bajty.size()));
        poleTekstowe.UstawTrescUTF8(bajty);
        return true;
    };
    switch (kod) {
    case kpString:
        return tekst(static_cast<TPoleString&>(pole));
    case kpWideString:
        return tekst(static_cast<TPoleWideString&>(pole));
    case kpBoolean:
        if (!parser.WezLogiczna(logiczna))
            return false;
        static_cast<TPoleBoolean&>(pole).UstawWartosc(logiczna ? 1 : 0);
        return true;
    case kpInteger:
        if (!parser.WezCalkowita(calkowita))
            return false;
        static_cast<TPoleInteger&>(pole).UstawWartosc(static_cast<std::int32_t>(calkowita));
        return true;
    case kpInt64:
        if (!parser.WezCalkowita(calkowita))
            return false;
        static_cast<TPoleInt64&>(pole).UstawWartosc(calkowita);
        return true;
    case kpDate:
        if (!parser.WezDate(JadroKlas()->Format(), rzeczywista))
            return false;
        static_cast<TPoleDate&>(pole).UstawWartosc(rzeczywista);
        return true;
    case kpDouble:
        if (!parser.WezRzeczywista(rzeczywista))
            return false;
        static_cast<TPoleDouble&>(pole).UstawWartosc(rzeczywista);
        return true;
    default:
        return false;
    }
}

} // namespace

void TObiekt::WykonajOdczytTekstowy(TOdczytywaczTekstu& odczytywacz) {
    ZerujDane();
    TZTParser& parser = odczytywacz.Parser;
    TOdczytywaczTekstu::TPoleOdczytu poprzednie(odczytywacz, *this);
    const TMigawkaOpisu& migawka = Migawka();
    // Such a class leaves its fields to their names and classes as they are declared.
    const bool szybko =
        !Klasa()->Ma(ckWlasneNazwyPol | ckWlasneTypyPol | ckWlasneUstawNiepuste) && !odczytywacz.ChceKazdePole();
    odczytywacz.ZuzyjPamiec(migawka.ilePol * static_cast<std::int64_t>(sizeof(TPole*) + 1));
    int czytane = -1; // the field that is read
    const auto pola = [&] {
        bool spodziewane = false; // the token is the name of the field behind number nr, with "=" behind it
        for (int nr = -1;;) {
            int nastepne = nr + 1;
            czytane = -1;
            odczytywacz.ZapamietajMiejsce();
            if (szybko && !spodziewane && parser.Token() == TZTParser::Symbol && parser.PrzedRowna()) {
                nastepne = PoleONazwie8(migawka, parser.TrescTokenu(), nr);
                spodziewane = nastepne >= 0;
            }
            if (spodziewane) {
                spodziewane = false;
                const TKlasa* typ = migawka.pola[nastepne].klasa;
                czytane = nastepne;
                if (!typ->Ma(ckObiektBazowy | ckPoleWsk)) {
                    TPole* jest = Pole(nastepne);
                    TPole& pole = jest != nullptr ? *jest : UtworzPole(nastepne, typ);
                    const std::uint8_t stan = Stany()[nastepne];
                    if ((stan & spDokladna) != 0 && WczytajWartosc(pole, stan >> 4U, odczytywacz)) {
                        odczytywacz.ZuzyjPamiec(48);
                        Stany()[nastepne] |= spWartosc;
                        nr = nastepne;
                        czytane = -1;
                        spodziewane = parser.NextToken(nr + 1 < migawka.ilePol ? migawka.pola[nr + 1].nazwa8
                                                                               : std::string_view());
                        continue;
                    }
                }
            }
            if (parser.TokenSymbolIs("end"))
                break;
            const bool obiekt = parser.TokenSymbolIs("object");
            if (obiekt)
                parser.NextToken();
            nr = czytane = PoleZTekstu(odczytywacz, nr);
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
            odczytywacz.ZapamietajMiejsce();
            // Given twice: what was read before goes, since a reader may know a field that can die only once.
            if (Pole(nr) != nullptr && (obiekt || (Stany()[nr] >> 4U) == kpWskObiektu))
                UstawPole(nr, nullptr, true);
            TPole& pole = *DajPole(nr);
            pole.WczytajTekstowo(odczytywacz.Strumien, &odczytywacz);
            if (Pole(nr) != &pole) // its own code has taken it away
                ZTErrorFmt(Komunikat(kmBrakPola), {NazwaKlasy(), nr});
            if (obiekt) {
                parser.CheckTokenSymbol("end");
                parser.NextToken();
            } else if ((Stany()[nr] >> 4U) == kpWskObiektu && nr < migawka.ilePol &&
                       migawka.pola[nr].wiersz != nullptr && migawka.pola[nr].wiersz->klasa != nullptr) {
                odczytywacz.OgraniczOstatni(migawka.pola[nr].wiersz->klasa());
            }
            UstawNiepuste(nr, true);
        }
    };
    ZKontekstem(pola, [&](const EWyjatek& e) {
        // Between two fields it is the field of the parent that is read.
        return czytane < 0 ? std::u16string() : KontekstOdczytu(czytane, odczytywacz.KomunikatZMiejscem(e));
    });
}

} // namespace ztok
