// Any calls, made from bytes, on a few living trees: each is an error of the library or a result, and the trees stay
// valid. What holds between operations is held against each other: copies are equal, sorted lists are in order, what
// was saved reads back, a field has the value that it reads as.
#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "fuzz/Fuzz.h"
#include "fuzz/wywolania/Bajty.h"
#include "fuzz/wywolania/StanDrzewa.h"
#include "tests/Probki.h"
#include "tests/StrumienieTestowe.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/Pula.h"

using namespace ztok;
using drzewa::TStan;
using fuzz::Wymagaj;
using probki::TAdres;
using probki::TWszystko;

namespace {

class TListaWezlow;
class TWezel : public TWszystko {
    ZTOK_OBIEKT(TWezel, TWszystko, (25, Ref, Ref<TWezel>), (26, Jeden, Obiekt<TWezel>),
                (27, Dzieci, Obiekt<TListaWezlow>), (30, Tablica, Obiekt<TArrayOfConst>))
};
class TListaWezlow : public TListaTypu<TWezel> {
    ZTOK_LISTA(TListaWezlow, TWezel)
};

bool JestNad(const TObiektBazowy& przodek, const TObiektBazowy* o) {
    while (o != nullptr && o != &przodek)
        o = o->Rodzic();
    return o != nullptr;
}

std::string Tekstowo(const TObiektBazowy& o) {
    TZTMemoryStream strumien;
    o.ZapiszTekstowo(strumien);
    const auto bajty = strumien.Zawartosc();
    return {bajty.begin(), bajty.end()};
}

void WczytajTekst(TObiektBazowy& o, const std::string& tekst) {
    TZTReadOnlyRawByteStream strumien(tekst);
    o.WczytajTekstowo(strumien);
}

class TSwiat {
  public:
    explicit TSwiat(wywolania::TBajty& bajty) : bajty_(bajty) {
        for (auto& korzen : korzenie_)
            korzen = Utworz<TWezel>();
    }

    void Graj() {
        while (!bajty_.Koniec()) {
            Sprawdz();
            std::map<const TPole*, std::vector<const TObiektBazowy*>> przed;
            for (const TPole* pole : stan_.odniesienia)
                przed[pole] = TStan::Cele(*pole);
            ruszane_.clear();
            stale_ = false;
            try {
                Krok();
            } catch (const EWyjatek& e) {
                Wymagaj(!e.Komunikat().empty(), "an error has a message");
            }
            ZapomnijZwykleWskazniki();
            if (stale_)
                SprawdzStale(przed);
        }
        Sprawdz();
    }

    ~TSwiat() {
        for (const TLuzne& l : luzne_)
            Zwolnij(l.pole);
    }
    TSwiat(const TSwiat&) = delete;
    TSwiat& operator=(const TSwiat&) = delete;

  private:
    std::size_t Z(std::size_t ile) { return bajty_.Z(ile); }
    template <class... F> void Wybierz(const F&... co) { bajty_.Wybierz(co...); }
    template <class T, std::size_t N> const T& Jedno(const T (&tablica)[N]) { return tablica[Z(N)]; }
    std::int32_t Indeks(const TListaBazowa& lista) {
        const auto i = static_cast<std::int32_t>(Z(static_cast<std::size_t>(lista.IleObiektow()) + 3));
        return i > lista.IleObiektow() ? (i % 2 == 0 ? -1 : MaxInt) : i;
    }
    TRozmiarLiter Litery() { return Z(2) == 0 ? rlRozmLiterWazny : rlRozmLiterNiewazny; }

    TObiektBazowy& Obiekt() { return *stan_.obiekty[Z(stan_.obiekty.size())]; }
    // The next object of the kind, from a place of the data's choice.
    TObiektBazowy& Obiekt(std::uint32_t cecha) {
        std::size_t i = Z(stan_.obiekty.size());
        while (!stan_.obiekty[i]->Klasa()->Ma(cecha))
            i = (i + 1) % stan_.obiekty.size();
        return *stan_.obiekty[i];
    }
    TObiekt& ZPolami() { return static_cast<TObiekt&>(Obiekt(ckObiekt)); }
    TWezel& Wezel() {
        TObiekt& o = ZPolami();
        return o.JestKlasy(TWezel::KlasaStatyczna()) ? static_cast<TWezel&>(o) : *korzenie_[0];
    }
    // A list that owns, made if it is not there; the plain pointers' list is left to the lists of one call.
    TListaBazowa& Lista() {
        TListaBazowa& lista = JednaZList();
        ruszane_.push_back(&lista);
        return lista;
    }
    TListaBazowa& JednaZList() {
        TWezel& o = Wezel();
        switch (Z(6)) {
        case 0:
            return o.GetAdresy();
        case 1:
            return o.GetPodrzedne();
        case 2:
            return o.GetRozne();
        case 3:
            return o.GetPowiazane();
        case 4:
            return zewnetrzna_;
        default:
            return o.GetDzieci();
        }
    }
    int NrPola() { return static_cast<int>(Z(33)) - 1; }

    // An object only on request: the call must not free it before it is used.
    TArgument Wartosc(bool obiektTez = false) {
        static const std::u16string teksty[] = {
            u"",    u"a",          u"A",  u"ąć",    u"b b;c", u"12", u"0",     u"True",
            u"1,5", u"2024-02-29", u"漢", u"'\"\n", u"-7",    u"z",  u"1;2;3", std::u16string(700, u'x')};
        static constexpr std::int64_t liczby[] = {
            0, 1, -1, 2, 3, 127, 255, 256, -32768, 65536, 2147483647, -2147483648LL, 4294967295, INT64_MAX, INT64_MIN};
        switch (Z(8)) {
        case 0:
        case 1:
            return {static_cast<std::int32_t>(Jedno(liczby))};
        case 2:
            return {Jedno(liczby)};
        case 3:
            return {static_cast<double>(static_cast<int>(Z(7)) - 3) / 2};
        case 4:
            return {Z(2) == 0};
        case 5:
            return obiektTez ? TArgument(static_cast<const TObiektOgolny*>(&Obiekt())) : TArgument(nullptr);
        default:
            return {Jedno(teksty)};
        }
    }
    TWariant Wariant() {
        const TArgument wartosc = Wartosc();
        switch (wartosc.Tag()) {
        case TTag::Integer:
        case TTag::Int64:
            return {wartosc.Calkowita()};
        case TTag::Extended:
            return {static_cast<double>(wartosc.Rzeczywista())};
        case TTag::Boolean:
            return {wartosc.Logiczna()};
        case TTag::UnicodeString:
            return {wartosc.Tekst()};
        default:
            return Z(2) == 0 ? TWariant::Null() : TWariant::Tablica({TWariant(1), TWariant(u"a")});
        }
    }
    std::u16string Sciezka() {
        static constexpr std::u16string_view kWarunki = u"[Adres.Numer=2;Nazwa='b;c']";
        static constexpr std::u16string_view kCel = u"[Ref=77]"; // no number becomes an address
        static constexpr std::u16string_view czesci[] = {
            u"I",      u"Nazwa",   u"D",      u"C",          u"Adres",     u"Adresy", u"Podrzedne",
            u"Rozne",  u"Liczby",  u"Teksty", u"Referencja", u"Powiazane", u"Ref",    u"Jeden",
            u"Dzieci", u"Tablica", u"Numer",  u"Ulica",      u"Brak",      u"[0]",    u"[1]",
            u"[Max]",  u"[?]",     u"[I=1]",  u"[Nazwa=a]",  u"[",         kWarunki,  kCel};
        std::u16string sciezka;
        for (std::size_t i = Z(4); i-- > 0;) {
            sciezka += Jedno(czesci);
            if (i != 0)
                sciezka += u".";
        }
        return sciezka;
    }
    // A number leads to the address that a pointer field holds; for writing its name stands instead.
    std::vector<TArgument> Pola(bool doZapisu = false) {
        std::vector<TArgument> pola;
        for (std::size_t i = Z(3); i-- > 0;) {
            const int nr = NrPola();
            const TKlasa* typ = korzenie_[0]->TypPolaNr(nr);
            const bool adres = doZapisu && typ != nullptr && typ->Ma(ckPoleWsk);
            pola.push_back(Z(2) == 0 ? TArgument(Sciezka())
                           : adres   ? TArgument(korzenie_[0]->NazwaPolaNr(nr))
                                     : TArgument(nr));
        }
        return pola;
    }
    std::vector<TArgument> Wartosci(const std::vector<TArgument>& pola) {
        std::vector<TArgument> wartosci;
        for (std::size_t i = 0; i < pola.size(); ++i)
            wartosci.push_back(Wartosc(pola.size() == 1));
        return wartosci;
    }

    void Krok() {
        const auto stale = [this](auto co) { // references change only in the lists of the call, and as targets die
            return [this, co] {
                stale_ = true;
                co();
            };
        };
        Wybierz([&] { UstawWartosc(); }, stale([&] { Dodaj(); }), stale([&] { DodajWiele(); }),
                stale([&] { Wyjmij(); }), stale([&] { Usun(); }), stale([&] { PrzeniesWiele(); }), [&] { Kopiuj(); },
                stale([&] { Porownaj(Obiekt(), Obiekt()); }), stale([&] { Sortuj(); }), [&] { Zeruj(); },
                [&] { UstawOdniesienie(); }, [&] { ZapiszIWczytaj(); }, [&] { ListyWartosci(); },
                stale([&] { PrzeniesPole(); }), stale([&] { Dodaj(); }), [&] { UstawOdniesienie(); });
    }

    void SprawdzStale(const std::map<const TPole*, std::vector<const TObiektBazowy*>>& przed) {
        TStan po;
        for (auto& korzen : korzenie_)
            po.Zbierz(*korzen, nullptr);
        std::sort(po.obiekty.begin(), po.obiekty.end());
        for (const TPole* pole : po.odniesienia)
            if (const auto jest = przed.find(pole);
                jest != przed.end() && std::find(ruszane_.begin(), ruszane_.end(), pole) == ruszane_.end()) {
                std::vector<const TObiektBazowy*> cele = jest->second;
                std::erase_if(cele, [&](const TObiektBazowy* cel) {
                    return !std::binary_search(po.obiekty.begin(), po.obiekty.end(), cel);
                });
                Wymagaj(TStan::Cele(*pole) == cele, "references lose what dies, and nothing else");
            }
    }

    // The texts of an object's plain fields but one.
    static std::vector<std::u16string> Teksty(const TObiekt& o, int oprocz) {
        std::vector<std::u16string> teksty;
        for (int nr = 0; nr <= o.OstUzywanePole(); ++nr)
            if (const TPole* pole = o.Pole(nr); pole != nullptr && nr != oprocz && !pole->Klasa()->Ma(ckObiektBazowy))
                teksty.push_back(pole->GetJakoString() + (o.PoleNiepuste(nr) ? u"+" : u"-"));
        return teksty;
    }

    // Fields of plain values share a block with their owner's field array; they leave it and come back, the owners die:
    // every field keeps its value.
    struct TLuzne {
        int nr;
        TPole* pole;
        std::u16string tekst;
    };
    void PrzeniesPole() {
        TObiekt& o = ZPolami();
        const int nr = NrPola();
        const std::size_t ktore = Z(luzne_.size());
        Wybierz(
            [&] {
                TPole* pole = o.Pole(nr);
                if (pole == nullptr || pole->Klasa()->Ma(ckObiektBazowy | ckPoleWsk))
                    return;
                luzne_.push_back({nr, pole, pole->GetJakoString()});
                const auto inne = Teksty(o, nr);
                o.UstawPole(nr, nullptr, false);
                Wymagaj(o.Pole(nr) == nullptr && !o.PoleNiepuste(nr) && Teksty(o, nr) == inne, "one field goes out");
            },
            [&] {
                if (ktore >= luzne_.size())
                    return;
                const TLuzne l = luzne_[ktore];
                const TKlasa* typ = l.nr < 0 ? nullptr : o.TypPolaNr(l.nr);
                if (typ == nullptr || !l.pole->JestKlasy(typ))
                    return;
                const auto inne = Teksty(o, l.nr);
                luzne_.erase(luzne_.begin() + static_cast<std::ptrdiff_t>(ktore));
                o.UstawPole(l.nr, l.pole, true);
                Wymagaj(o.Pole(l.nr) == l.pole && o.PoleNiepuste(l.nr) && Teksty(o, l.nr) == inne, "one comes in");
            },
            [&] { // under a number that the class has not: the array grows, and the others stay where they are
                const auto inne = Teksty(o, -1);
                const int dalej = 31 + static_cast<int>(Z(60));
                o.UstawPole(dalej, Utworz<TPoleString>().Oddaj(), true);
                static_cast<TPoleString*>(o.Pole(dalej))->UstawWartosc(u"dalej");
                Wymagaj(o.OstUzywanePole() >= dalej && o.PoleNiepuste(dalej), "an undeclared field");
                if (Z(2) == 0) {
                    luzne_.push_back({-1, o.Pole(dalej), u"dalej"});
                    o.UstawPole(dalej, nullptr, false);
                } else {
                    o.UstawPole(dalej, nullptr, true);
                }
                Wymagaj(Teksty(o, -1) == inne, "the others are as they were");
            },
            [&] {
                if (ktore >= luzne_.size())
                    return;
                Zwolnij(luzne_[ktore].pole);
                luzne_.erase(luzne_.begin() + static_cast<std::ptrdiff_t>(ktore));
            });
    }

    [[nodiscard]] bool Pelno() const { return stan_.obiekty.size() >= 60; }

    void UstawWartosc() {
        TObiekt& o = ZPolami();
        const int nr = NrPola();
        const std::u16string sciezka = Sciezka();
        Wybierz(
            [&] {
                const TKlasa* typ = o.TypPolaNr(nr);
                if (typ == nullptr || typ->Ma(ckPoleWsk)) // an address is no value to play with
                    return;
                const auto inne = Teksty(o, nr);
                o.SetVariantowo(nr, Wariant());
                const TWariant jest = o.GetVariantowo(nr);
                Wymagaj(o.PoleNiepuste(nr) || o.Pole(nr)->Klasa()->Ma(ckObiektBazowy), "what was written counts");
                Wymagaj(Teksty(o, nr) == inne, "a write changes one field");
                Wymagaj(jest == o.GetVariantowoWgSciezki(o.NazwaPolaNr(nr)), "a number and a name lead to one value");
                Wymagaj(jest.JestTablica() || o.PoleNrMaCeche(nr, TArgument(jest), rlRozmLiterWazny),
                        "a field has the value that it reads as");
            },
            [&] { o.SetVariantowoWgSciezki(sciezka, Wariant()); },
            [&] {
                o.SetTekstowoWgSciezki(sciezka, Wartosc().JakoTekst());
                static_cast<void>(o.GetTekstowoWgSciezki(sciezka));
            },
            [&] {
                const std::vector<TArgument> pola = Pola(true);
                o.WpiszDane(pola, Wartosci(pola));
            },
            [&] {
                const TPole* pole = o.DajPole(nr);
                Wymagaj((pole == nullptr) == (o.TypPolaNr(nr) == nullptr && o.Pole(nr) == nullptr), "declared fields");
            });
    }

    // A refused object stays with its owner; otherwise the list takes it, also when it raises.
    void Wloz(TListaBazowa& lista, TWlasny<TObiektBazowy> nowy) {
        if (lista.Klasa()->Ma(ckListaWsk))
            return;
        TObiektBazowy* o = nowy.Oddaj();
        if (o == nullptr) {
            if (lista.Klasa()->Ma(ckListaObiektow) && !Pelno())
                lista.DodajObiekt(nullptr, Indeks(lista));
            return;
        }
        if (JestNad(*o, &lista)) {
            nowy = TWlasny<TObiektBazowy>(o);
            const std::int32_t ile = lista.IleObiektow();
            lista.DodajObiekt(o, 0);
            Wymagaj(lista.IleObiektow() == ile, "an object does not become a part of itself");
            return;
        }
        Wymagaj(lista.DodajObiekt(o, Indeks(lista)) == o, "a list takes the object itself");
    }

    void Dodaj() {
        if (Pelno())
            return;
        TListaBazowa& lista = Lista();
        const int nr = NrPola();
        Wybierz([&] { Wloz(lista, Utworz<TAdres>()); }, [&] { Wloz(lista, Utworz<TWszystko>()); },
                [&] { Wloz(lista, Utworz<TWezel>()); }, [&] { Wloz(lista, nullptr); },
                [&] {
                    if (TObiekt& o = ZPolami(); o.TypPolaNr(nr) != nullptr) // paths know declared fields only
                        o.UstawPole(nr, Utworz<TWezel>().Oddaj(), true);
                },
                [&] { Wloz(lista, Obiekt().KlonujObiekt(Z(2) == 0)); });
    }

    void DodajWiele() {
        if (Pelno())
            return;
        TListaBazowa& lista = Lista();
        const TListaBazowa& zrodlo = Lista();
        const std::vector<TArgument> pola = Pola(true);
        const std::vector<TArgument> wartosci = Wartosci(pola);
        Wybierz([&] { lista.DopiszDane(&zrodlo); },
                [&] { lista.DopiszObiektyOCechach(&zrodlo, pola, wartosci, Litery()); },
                [&] { lista.DopiszObiektyOprocz(&zrodlo, pola, wartosci, Litery()); },
                [&] { lista.DopiszObiektyGdyBrak(&zrodlo, pola, Litery()); },
                [&] { lista.KopiujObiektyOCechach(&zrodlo, pola, wartosci, Litery()); },
                [&] {
                    if (lista.Klasa()->Ma(ckListaObiektow))
                        static_cast<TListaObiektow&>(lista).DopiszObiektGdyBrak(pola, wartosci, Litery());
                });
    }

    // Out of one owner, and into another or nowhere.
    void Wyjmij() {
        TListaBazowa& skad = Lista();
        if (skad.Klasa()->Ma(ckListaZObiektami)) {
            const std::int32_t nr = Indeks(skad);
            TObiektBazowy* element = skad.Obiekty(nr);
            TWlasny<TObiektBazowy> wyjety = static_cast<TListaZObiektami&>(skad).Wyjmij(nr);
            Wymagaj(wyjety.get() == element, "what is taken out is the element");
            if (Z(4) != 0 && element != nullptr)
                Wloz(Z(2) == 0 ? skad : NowaLista(*element), std::move(wyjety));
            return;
        }
        TWezel& o = Wezel();
        TListaBazowa& dokad = Z(2) == 0 ? static_cast<TListaBazowa&>(o.GetDzieci()) : o.GetRozne();
        TWezel& jeden = o.GetJeden();
        o.UstawPole(TWezel::nrJeden, nullptr, false);
        Wloz(dokad, TWlasny<TObiektBazowy>(&jeden));
    }
    // Inside the element too: that is refused.
    TListaBazowa& NowaLista(TObiektBazowy& wyjety) {
        if (Z(4) == 0 && wyjety.JestKlasy(TWezel::KlasaStatyczna()))
            return static_cast<TWezel&>(wyjety).GetDzieci();
        return korzenie_[Z(2)]->GetDzieci();
    }

    void Usun() {
        TListaBazowa& lista = Lista();
        const std::vector<TArgument> pola = Pola();
        const bool zachowaj = Z(2) == 0;
        const TRozmiarLiter litery = Litery();
        Wybierz([&] { lista.UsunObiekt(Indeks(lista), true, zachowaj); },
                [&] { lista.UsunObiekty(pola, Wartosci(pola), litery); },
                [&] { lista.UsunObiektyOprocz(pola, Wartosci(pola), litery); },
                [&] {
                    lista.UsunDuplikaty(pola, litery);
                    Wymagaj(!lista.UsunDuplikaty(pola, litery), "duplicates go at once");
                },
                [&] {
                    TListaRefObiektow te;
                    te.DopiszDane(&lista);
                    te.SkrocListe(static_cast<std::int32_t>(Z(8)), false);
                    Lista().UsunTeObiekty(te, zachowaj);
                },
                [&] { lista.SkrocListe(static_cast<std::int32_t>(Z(8)), zachowaj); },
                [&] { lista.UsunObiektyNil(zachowaj); }, [&] { korzenie_[Z(2)] = Utworz<TWezel>(); });
    }

    void PrzeniesWiele() {
        TListaBazowa& dokad = Lista();
        TListaBazowa& skad = Lista();
        if (dokad.Klasa()->Ma(ckListaWsk) && skad.Klasa()->Ma(ckListaZObiektami))
            return; // nobody would own the elements
        for (const auto& korzen : korzenie_)
            if (skad.ZnajdzObiekt(korzen.get()) >= 0)
                return; // its owner is this world, of which the library does not know
        const std::vector<TArgument> pola = Pola();
        const std::int32_t ile = dokad.IleObiektow() + (&dokad == &skad ? 0 : skad.IleObiektow());
        Wybierz([&] { dokad.PrzeniesDane(skad); },
                [&] { dokad.PrzeniesObiektyOCechach(skad, pola, Wartosci(pola), Litery()); },
                [&] { dokad.PrzeniesObiektyOprocz(skad, pola, Wartosci(pola), Litery()); },
                [&] { dokad.PrzeniesObiektyGdyBrak(skad, pola, Litery()); },
                [&] {
                    const std::int32_t nr = Indeks(skad);
                    if (skad.Obiekty(nr) != nullptr)
                        dokad.PrzeniesZListy(skad, nr, Indeks(dokad));
                },
                [&] { dokad.PrzeniesObiekt(Indeks(dokad), Indeks(dokad)); });
        Wymagaj(dokad.IleObiektow() + (&dokad == &skad ? 0 : skad.IleObiektow()) == ile, "a move loses nothing");
    }

    void Kopiuj() {
        if (Pelno())
            return;
        TObiekt& dokad = ZPolami();
        TObiekt& skad = ZPolami();
        const bool osobne = !JestNad(dokad, &skad) && !JestNad(skad, &dokad);
        const std::vector<TArgument> pola = Pola();
        const std::vector<TArgument> jedno = {NrPola()};
        const bool takie = osobne && dokad.Klasa() == skad.Klasa() && jedno[0].Calkowita() != CalyObiekt;
        Wybierz([&] { dokad.KopiujDanePol(skad, pola, Z(2) == 0); }, [&] { dokad.KopiujDaneOprocz(skad, pola); },
                [&] {
                    dokad.KopiujDanePol(skad, jedno);
                    Wymagaj(!takie || dokad.PorownajWgPol(skad, jedno, rlRozmLiterWazny) == 0,
                            "a copied field is equal");
                },
                [&] {
                    dokad.KopiujDaneOprocz(skad, jedno);
                    Wymagaj(!takie || dokad.PorownajOproczPol(skad, jedno, rlRozmLiterWazny) == 0, "so are the others");
                },
                [&] { dokad.PrzepiszDane(Obiekt(), NrPola(), NrPola()); },
                [&] {
                    const TWlasny<TObiektBazowy> kopia = skad.KlonujObiekt(false);
                    Wymagaj(kopia->PorownajZObiektem(skad, rlRozmLiterWazny) == 0, "a clone is equal");
                    SprawdzKopie(skad, *kopia);
                },
                [&] {
                    dokad.KopiujDane(skad);
                    if (osobne && dokad.Klasa() == skad.Klasa())
                        Wymagaj(dokad.PorownajZObiektem(skad, rlRozmLiterWazny) == 0, "a copy is equal");
                });
    }

    // The same objects in the same places; what points inside points inside the copy, what points outside is shared.
    static void SprawdzKopie(TObiektBazowy& skad, TObiektBazowy& kopia) {
        TStan a;
        TStan b;
        a.Zbierz(skad, skad.Rodzic());
        b.Zbierz(kopia, nullptr);
        Wymagaj(a.obiekty.size() == b.obiekty.size() && strumienie::Zapisz(skad) == strumienie::Zapisz(kopia),
                "a copy has the same parts");
        const auto cele = [](const TStan& stan, const TStan* wzor) {
            std::vector<std::vector<const TObiektBazowy*>> wynik;
            for (const TPole* pole : stan.odniesienia)
                if (std::vector<const TObiektBazowy*> c = TStan::Cele(*pole); !c.empty()) {
                    for (const TObiektBazowy*& cel : c)
                        if (const auto jest = std::find(stan.obiekty.begin(), stan.obiekty.end(), cel);
                            wzor != nullptr && jest != stan.obiekty.end())
                            cel = wzor->obiekty[static_cast<std::size_t>(jest - stan.obiekty.begin())];
                    wynik.push_back(c);
                }
            return wynik;
        };
        Wymagaj(cele(a, &b) == cele(b, nullptr), "references of a copy lead into the copy");
    }

    static void Porownaj(const TObiektBazowy& a, const TObiektBazowy& b) {
        Wymagaj(a.Porownaj(a) == 0, "an object equals itself");
        const std::int32_t wynik = a.Porownaj(b);
        if (a.Klasa() == b.Klasa()) // of two collections with other classes each is the greater one
            Wymagaj((b.Porownaj(a) == 0) == (wynik == 0), "equality goes both ways");
    }

    void Sortuj() {
        TListaBazowa& lista = Lista();
        const std::vector<TArgument> pola = Pola();
        const TRodzajSortowania kierunki[] = {Z(2) == 0 ? rsRosnaco : rsMalejaco};
        const TRozmiarLiter litery = Litery();
        lista.PosortujWgPol(pola, kierunki, litery);
        for (const TObiektBazowy* a : lista)
            for (const TObiektBazowy* b : lista)
                if (a != nullptr && b != nullptr &&
                    a->PorownajWgPol(*b, pola, litery) != -b->PorownajWgPol(*a, pola, litery))
                    return; // collections with other classes have no order
        Wymagaj(lista.ListaMaPosortowanie(pola, kierunki, litery), "what was sorted is in order");
    }

    void Zeruj() {
        TObiekt& o = ZPolami();
        Wybierz([&] { Obiekt().ZerujDane(); }, [&] { o.ZerujPole(Sciezka()); }, [&] { o.ZerujDanePol(Pola()); },
                [&] { o.ZerujDaneOprocz(Pola()); },
                [&] {
                    const std::vector<TArgument> pola = Pola(true);
                    o.Inicjuj(pola, std::vector<TArgument>(pola.size(), Wartosc()));
                },
                [&] {
                    Obiekt().PrzytnijPolaWgRozm(Z(2) == 0);
                    o.TrymujPolaTekstowe(true);
                    Pokaz(o);
                },
                [&] { Obiekt().UstawNiepuste(NrPola(), Z(2) == 0); });
    }

    void Pokaz(const TObiekt& o) {
        static_cast<void>(o.SaDaneUnicode(CalyObiekt));
        static_cast<void>(o.DrzewoObiektu());
        static_cast<void>(o.OpisTekstowy());
        for (int nr = 0; nr <= o.OstUzywanePole(); ++nr)
            if (const TPole* pole = o.Pole(nr); pole != nullptr)
                static_cast<void>(pole->WartWgMaski(u"0.0"));
        static_cast<void>(o.DajTrescWgSciezki(Sciezka()));
    }

    void UstawOdniesienie() {
        TWezel& o = Wezel();
        TListaRefObiektow& lista = Z(4) == 0 ? zewnetrzna_ : o.GetPowiazane();
        Wybierz([&] { o.SetRef(&Wezel()); }, [&] { o.SetReferencja(&o.GetAdres()); },
                [&] { lista.UsunObiekt(Indeks(lista), true, Z(2) == 0); },
                [&] { lista.DodajObiekt(&Obiekt(), Indeks(lista)); });
    }

    // What was written reads back, in both forms, and then nothing changes any more. What lost its targets is written
    // shorter the next time.
    void ZapiszIWczytaj() {
        if (Pelno())
            return;
        const TWezel& o = Wezel();
        std::string zapis = strumienie::Zapisz(o);
        const bool tekstem = Z(2) == 0;
        if (TWezel& dokad = Wezel(); tekstem)
            WczytajTekst(dokad, Tekstowo(o));
        else
            strumienie::Wczytaj(dokad, zapis);
        const TWlasny<TWezel> kopia = Utworz<TWezel>();
        for (std::size_t dlugosc = zapis.size() + 1; zapis.size() < dlugosc;) {
            dlugosc = zapis.size();
            strumienie::Wczytaj(*kopia, zapis);
            std::string ponownie = strumienie::Zapisz(*kopia);
            Wymagaj(ponownie == zapis || ponownie.size() < dlugosc, "what was written reads back");
            zapis.swap(ponownie);
        }
        const TWlasny<TWezel> zTekstu = Utworz<TWezel>();
        WczytajTekst(*zTekstu, Tekstowo(*kopia));
        Wymagaj(strumienie::Zapisz(*zTekstu) == zapis, "both forms hold the same");
        Wymagaj(zTekstu->PorownajZObiektem(*kopia, rlRozmLiterWazny) == 0, "what was read is equal");
        Wymagaj(zTekstu->DajWyroznikObiektu() == kopia->DajWyroznikObiektu(), "equal content, equal fingerprint");
    }

    void ListyWartosci() {
        TWezel& o = Wezel();
        TArrayOfConst& tablica = o.GetTablica();
        const auto nr = static_cast<std::int32_t>(Z(4));
        Wybierz(
            [&] {
                if (!Pelno())
                    tablica.Wstaw(nr, Wartosc(true));
            },
            [&] { tablica.Usun(nr); }, [&] { Wloz(o.GetRozne(), tablica.WyjmijObiekt(nr)); },
            [&] { tablica.Ustaw(nr, Wartosc(true)); }, [&] { tablica.DodajObiekt(Utworz<TWezel>(), nr); },
            [&] { o.GetLiczby().Wstaw(nr, static_cast<std::int32_t>(Z(256))); },
            [&] { o.GetTeksty().Dodaj(Wartosc().JakoTekst()); },
            [&] {
                o.GetTeksty().Sortuj();
                o.GetLiczby().Sortuj(rsMalejaco);
            },
            [&] { o.GetUlamki().SetJakoString(Wartosc().JakoTekst()); });
    }

    // Plain pointers do not hear when their targets die: none outlives the call that made it.
    void ZapomnijZwykleWskazniki() {
        TStan stan;
        for (auto& korzen : korzenie_)
            stan.Zbierz(*korzen, nullptr);
        for (TPole* pole : stan.zwykle)
            pole->ZerujDane();
    }

    void Sprawdz() {
        stan_ = TStan();
        for (auto& korzen : korzenie_)
            stan_.Zbierz(*korzen, nullptr);
        for (TObiektBazowy* o : stan_.obiekty)
            if (const std::u16string sciezka = o->DajSciezkeDoSiebie(); o->DajKorzen()->DajPoleONazwie(sciezka) != o)
                Wymagaj(false, ("the path to an object leads to it: " + Utf8ZUtf16(sciezka)).c_str());
        stan_.odniesienia.push_back(&zewnetrzna_);
        stan_.SprawdzOdniesienia();
        Wymagaj(stan_.blad == nullptr, stan_.blad);
        for (const TLuzne& l : luzne_)
            Wymagaj(l.pole->GetJakoString() == l.tekst, "a field out of its object keeps its value");
    }

    wywolania::TBajty& bajty_;
    TWlasny<TWezel> korzenie_[2];
    TListaRefObiektow zewnetrzna_; // points into the trees from outside
    TStan stan_;
    std::vector<TLuzne> luzne_;         // fields out of any object
    std::vector<const TPole*> ruszane_; // lists that the step works on
    bool stale_ = false;                // the step leaves other references alone
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dane, std::size_t ile) {
    static const bool zarejestrowane =
        (probki::Rejestruj(), RejestrujKlasy<TArrayOfConst, TWezel, TListaWezlow>(), true);
    static_cast<void>(zarejestrowane);
    // What the library makes on first use stays; the same calls again leave nothing behind.
    for (int razy = 0; razy < 2; ++razy) {
        const std::int64_t zajete = PulaZajete();
        wywolania::TBajty bajty(dane, ile);
        if (ile > 0 && dane[ile - 1] % 4 == 0)
            wywolania::GrajListami(bajty);
        else
            TSwiat(bajty).Graj();
        if (PulaZajete() == zajete)
            return 0;
    }
    Wymagaj(false, "nothing is left behind");
    return 0;
}
