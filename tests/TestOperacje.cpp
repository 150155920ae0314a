// Operations on trees, from tests/dane/operacje.tsv: what each gives, and what it leaves. After every one the trees are
// sound, and their binary form reads back; the second time everything is the same and no memory stays taken.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>

#include "fuzz/wywolania/StanDrzewa.h"
#include "tests/Bledy.h"
#include "tests/Probki.h"
#include "tests/StrumienieTestowe.h"
#include "tests/TabeleTestow.h"
#include "ztok/platform/Pula.h"
#include "ztok/platform/TListaNapisow.h"

namespace {

using namespace ztok;
using probki::TAdres;
using probki::TListaAdresow;
using probki::TWszystko;

// A class with its own ideas: widths of texts, a value that is computed, one that is not stored.
class TWlasna : public TObiekt {
  public:
    [[nodiscard]] bool Nigdy() const { return false; }
    ZTOK_OBIEKT(TWlasna, TObiekt, (0, A, String), (1, B, RawByteString), (2, C, CDATA), (3, W, Obiekt<TAdres>),
                (4, T, ZapisGdy<ztok::rodzaj::Integer, &TWlasna::Nigdy>), (5, S, WideString))
    [[nodiscard]] int RozmPolaNr(int nr) const override { return nr == 0 || nr == 5 ? 4 : TObiekt::RozmPolaNr(nr); }
};
// Common ancestors with different fields behind them.
class TPien : public TObiekt {
    ZTOK_OBIEKT(TPien, TObiekt, (0, A, Integer), (1, B, String), (4, Gniazdo, Obiekt<TAdres>))
};
class TGalaz : public TPien {
    ZTOK_OBIEKT(TGalaz, TPien, (5, C, Integer), (6, D, String))
};
class TKonar : public TPien {
    ZTOK_OBIEKT(TKonar, TPien, (5, C, String), (7, E, Integer))
};
class TListaPni : public TListaTypu<TPien> {
    ZTOK_LISTA(TListaPni, TPien)
};
class TListaGalezi : public TListaTypu<TGalaz> {
    ZTOK_LISTA(TListaGalezi, TGalaz)
};
// Every list of numbers, every kind of date, fields of derived classes, elements of derived classes.
class TZbior : public TObiekt {
    ZTOK_OBIEKT(TZbior, TObiekt, (0, Pnie, Obiekt<TListaPni>), (1, Galezie, Obiekt<TListaGalezi>),
                (2, Chwila, DateTime), (3, Dzien, Date), (4, Godzina, Time), (5, Pien, Obiekt<TPien>),
                (6, Wlasny, Obiekt<TWlasna>))
};

// Its hooks leave a trace: locks, fields made, changes told, objects cleared.
class TSlad : public TObiekt {
    ZTOK_OBIEKT(TSlad, TObiekt, (0, Liczba, Integer), (1, Nazwa, String), (2, Tak, Boolean), (3, Wskaznik, Wsk<TAdres>),
                (4, Referencja, Ref<TAdres>), (5, Adres, Obiekt<TAdres>), (6, Szeroki, WideString), (7, Kwota, Double),
                (8, Dziecko, Obiekt<TSlad>), (9, Dzieci, Obiekt<TKolekcjaObiektow>), (10, Lista, StrList),
                (11, Szerokie, WideStrList))
    void ZablokujObiekt() const override { Zapisz("("); }
    void OdblokujObiekt() const override { Zapisz(")"); }
    void UtworzonoPole(int nr) override { Zapisz("+" + std::to_string(nr) + (PoleNiepuste(nr) ? "!" : "")); }
    void SetBylyZmiany(int nr) override { Zapisz("~" + std::to_string(nr) + (PoleNiepuste(nr) ? "!" : "")); }
    void ZerujDane() override {
        Zapisz("0");
        TObiekt::ZerujDane();
    }
    void Zapisz(const std::string& co) const { slad += (this == pierwszy ? "o" : this == drugi ? "z" : "d") + co; }
    static inline std::string slad;
    static inline const void* pierwszy = nullptr;
    static inline const void* drugi = nullptr;
};

// More fields than a machine word has bits.
class TSzeroka : public TObiekt {
    ZTOK_OBIEKT(TSzeroka, TObiekt, (0, A, Integer), (63, B, String), (64, C, Boolean), (199, D, Obiekt<TAdres>),
                (200, E, Ref<TAdres>), (201, F, Double))
};

std::u16string Tekst16(std::string_view tekst) { return Utf16ZUtf8(tekst); }

// One line of the table at work.
struct TPrzebieg {
    std::vector<std::string> a; // the operation, then what it is given
    TObiekt* o;
    TObiekt* z;                 // the other tree
    TObiektBazowy* b = nullptr; // what the operation is asked of
    TZTMemoryStream strumien;   // an object that is no part of a model

    [[nodiscard]] std::string C(std::size_t i) const { return i < a.size() ? a[i] : std::string(); }
    [[nodiscard]] std::u16string S(std::size_t i) const { return Tekst16(C(i)); }
    [[nodiscard]] int I(std::size_t i) const {
        return C(i) == "max" || C(i).empty() ? MaxInt : std::atoi(C(i).c_str());
    }
    [[nodiscard]] bool T(std::size_t i) const { return C(i) == "T"; }
    [[nodiscard]] TRozmiarLiter R(std::size_t i) const { return C(i) == "n" ? rlRozmLiterNiewazny : rlRozmLiterWazny; }
    [[nodiscard]] TRodzajSortowania K(std::size_t i) const { return C(i) == "m" ? rsMalejaco : rsRosnaco; }
    [[nodiscard]] TPole* Pole(std::string_view sciezka) const {
        if (sciezka == "nil")
            return nullptr;
        const bool drugi = sciezka.substr(0, 1) == "z";
        sciezka.remove_prefix(drugi ? 1 : 0);
        const std::u16string dalej = Tekst16(sciezka.substr(sciezka.substr(0, 1) == "." ? 1 : 0));
        TObiektBazowy* obiekt = nullptr;
        int nr = CalyObiekt;
        if (!(drugi ? z : o)->ObiektIPole(dalej == u"o" ? u"" : dalej, true, obiekt, nr))
            ZTError(u"(no such object)");
        return nr == CalyObiekt ? obiekt : static_cast<TObiekt*>(obiekt)->DajPole(nr); // made, if it was not there
    }
    [[nodiscard]] TObiekt& O() const { return static_cast<TObiekt&>(*b); }
    [[nodiscard]] TListaBazowa& L() const { return static_cast<TListaBazowa&>(*b); }
    [[nodiscard]] TListaObiektow& LO() const { return static_cast<TListaObiektow&>(*b); }
    template <class P> [[nodiscard]] P* Jako(std::size_t i) const { return static_cast<P*>(Pole(C(i))); }
    [[nodiscard]] TListaBazowa* Lista(std::size_t i) const { return Jako<TListaBazowa>(i); }
    [[nodiscard]] TObiekt& Inny(std::size_t i) const { return *Jako<TObiekt>(i); }

    [[nodiscard]] TArgument Argument(const std::string& t) const {
        const std::string r = t.size() > 1 && t[1] == ':' ? t.substr(2) : "";
        switch (t.size() > 1 && t[1] == ':' ? t[0] : '-') {
        case 'L':
            return std::int64_t{std::atoll(r.c_str())};
        case 'D':
            return std::atof(r.c_str());
        case 'B':
            return r == "T";
        case 'c':
            return r[0];
        case 'C':
            return Tekst16(r)[0];
        case 'S':
            return TArgument::ShortString(PolskiAnsi(Tekst16(r)));
        case 'p':
            return TArgument::PChar(PolskiAnsi(Tekst16(r)));
        case 'w':
            return TArgument::PWideChar(Tekst16(r));
        case 'a':
            return PolskiAnsi(Tekst16(r));
        case 'W':
            return TArgument::WideString(Tekst16(r));
        case 'V':
            return r.empty() ? TWariant() : TWariant(std::atoi(r.c_str()));
        case 'P':
            return TArgument::Pointer(r.empty() ? nullptr : this);
        case 'o':
            return static_cast<const TObiektOgolny*>(Pole(r));
        case 's':
            return static_cast<const TObiektOgolny*>(&strumien);
        case 'K':
            return TAdres::KlasaStatyczna();
        case 'Y':
            return TWaluta{10000};
        case 'I':
            return static_cast<IInterfejs*>(nullptr);
        case 't':
            return Tekst16(r);
        default:
            return !t.empty() && t.find_first_not_of("-0123456789") == std::string::npos
                       ? TArgument(std::atoi(t.c_str()))
                       : TArgument(Tekst16(t));
        }
    }
    [[nodiscard]] std::vector<TArgument> A(std::size_t i) const {
        std::vector<TArgument> wynik;
        if (!C(i).empty())
            for (const std::string& t : testy::Podziel(C(i), ','))
                wynik.push_back(Argument(t));
        return wynik;
    }
    [[nodiscard]] std::vector<TRodzajSortowania> Kierunki(std::size_t i) const {
        std::vector<TRodzajSortowania> wynik;
        for (const char znak : C(i))
            wynik.push_back(znak == 'm' ? rsMalejaco : rsRosnaco);
        return wynik;
    }
    [[nodiscard]] std::vector<const TKlasa*> Klasy(std::size_t i) const {
        std::vector<const TKlasa*> wynik;
        for (const std::string& nazwa : testy::Podziel(C(i), ','))
            JadroKlas()->JestKlasaONazwie(Tekst16(nazwa), wynik.emplace_back(nullptr));
        return wynik;
    }
    // Where something stands: in the one tree or in the other.
    [[nodiscard]] std::string Gdzie(const TPole* pole) const {
        if (pole == nullptr)
            return "nil";
        if (!pole->Klasa()->Ma(ckObiektBazowy))
            return Utf8ZUtf16(pole->NazwaKlasy());
        const auto& x = static_cast<const TObiektBazowy&>(*pole);
        return (x.DajKorzen() == o ? "" : x.DajKorzen() == z ? "z." : "?") + Utf8ZUtf16(x.DajSciezkeDoSiebie());
    }
};

template <class T> std::string W(const T& wynik) {
    if constexpr (std::is_same_v<T, bool>)
        return wynik ? "T" : "F";
    else if constexpr (std::is_same_v<T, TWariant>)
        return std::to_string(static_cast<int>(wynik.Typ())) + ":" + Utf8ZUtf16(wynik.JakoTekst16());
    else if constexpr (std::is_convertible_v<T, std::u16string_view>)
        return Utf8ZUtf16(wynik);
    else
        return std::to_string(wynik);
}

using TOperacja = std::function<std::string(TPrzebieg&)>;
// An operation that gives something, or nothing.
#define OP(nazwa, wyrazenie)                                                                                           \
    {                                                                                                                  \
        nazwa, [](TPrzebieg& p) -> std::string { return W(wyrazenie); }                                                \
    }
#define ROB(nazwa, wyrazenie)                                                                                          \
    {                                                                                                                  \
        nazwa, [](TPrzebieg& p) -> std::string {                                                                       \
            wyrazenie;                                                                                                 \
            return "";                                                                                                 \
        }                                                                                                              \
    }
// One that tells an index, too.
#define GDZIE(nazwa, wyrazenie)                                                                                        \
    {                                                                                                                  \
        nazwa, [](TPrzebieg& p) -> std::string {                                                                       \
            std::int32_t g = -77;                                                                                      \
            const std::string wynik = wyrazenie;                                                                       \
            return wynik + " " + W(g);                                                                                 \
        }                                                                                                              \
    }

TRodzajWyszukiwania Jak(const TPrzebieg& p, std::size_t i) {
    return p.C(i) == "p" ? rwOdPoczatku : p.C(i) == "?" ? static_cast<TRodzajWyszukiwania>(2) : rwOdKonca;
}
std::string Napisy(const std::function<void(TListaNapisow&)>& dopisz, const TListaBazowa* lista) {
    TListaNapisow napisy;
    napisy.Dodaj(u"stary");
    dopisz(napisy);
    std::int32_t i = 0;
    for (std::size_t nr = 0; lista != nullptr && nr < napisy.Ile(); ++nr, ++i) {
        while (lista->Obiekty(i) == nullptr)
            ++i;
        EXPECT_EQ(napisy.Wartosc(nr), reinterpret_cast<std::uintptr_t>(lista->Obiekty(i)));
    }
    return Utf8ZUtf16(napisy.JakoTekst(u"|"));
}

// What stands behind backslashes: r, n, t, xHH.
std::string Odkoduj(const std::string& tekst) {
    std::string wynik;
    for (std::size_t i = 0; i < tekst.size(); ++i) {
        if (tekst[i] != '\\') {
            wynik += tekst[i];
        } else if (const char znak = tekst[++i]; znak == 'x') {
            wynik += static_cast<char>(std::stoi(tekst.substr(i + 1, 2), nullptr, 16));
            i += 2;
        } else {
            wynik += znak == 'r' ? '\r' : znak == 'n' ? '\n' : znak == 't' ? '\t' : znak;
        }
    }
    return wynik;
}

// Reads a document into the object: from one window, byte by byte, and by a reader that tells of every field. Where it
// ends, or the error, must be the same.
std::string Czytaj(const TPrzebieg& p, bool tekstem) {
    const std::string dane = tekstem ? Odkoduj(p.C(1)) : strumienie::Bajty(p.C(1));
    std::vector<std::string> wyniki;
    for (int jak = 0; jak < 4; ++jak) {
        const TWlasny<TObiektBazowy> o = p.b->TworzInstancje(nullptr);
        TObiektBazowy& cel = jak == 0 ? *p.b : *o;
        TZTReadOnlyRawByteStream okno(dane);
        strumienie::TOporny poBajcie(dane);
        TStrumien& strumien = jak % 2 == 0 ? static_cast<TStrumien&>(okno) : poBajcie;
        const std::u16string blad = testy::Blad([&] {
            if (jak < 2 && tekstem) {
                cel.WczytajTekstowo(strumien);
            } else if (jak < 2) {
                cel.WczytajZeStrumienia(strumien, p.T(2));
            } else if (tekstem) {
                TOdczytywaczTekstu(strumien).WczytajDokument(cel);
            } else {
                TOdczytywaczDanych odczytywacz(p.T(2));
                cel.WczytajZeStrumienia(strumien, &odczytywacz);
                odczytywacz.KorygujReferencje();
            }
        });
        wyniki.push_back(blad == u"(no error)" ? W(jak % 2 == 0 || tekstem ? okno.GetPosition() : std::int64_t{0})
                                               : "!" + Utf8ZUtf16(blad));
        EXPECT_EQ(blad == u"(no error)", wyniki[0][0] != '!') << p.C(1) << jak;
        if (jak % 2 == 0) { // what stream it was, and whether it tells its end, shows in some messages
            EXPECT_EQ(wyniki.back(), wyniki[0]) << p.C(1);
        } else if (!tekstem && blad == u"(no error)") {
            EXPECT_EQ(std::to_string(poBajcie.pozycja), wyniki[0]) << p.C(1);
        }
        if (blad == u"(no error)") {
            const std::string tekst = strumienie::Tekst(*p.b); // first: writing leaves a trace too
            EXPECT_EQ(strumienie::Tekst(cel), tekst) << p.C(1) << jak;
        }
    }
    return wyniki[0];
}

std::string Zapis(const TPrzebieg& p) {
    TZapisywaczDanych zapisywacz;
    zapisywacz.ZapisWszystkichPol = p.C(1).find('p') != std::string::npos;
    zapisywacz.OpcjeZapisu = p.C(1).find('w') != std::string::npos ? ozWin1250 : 0;
    if (p.C(1).empty())
        return strumienie::Szesnastkowo(strumienie::Zapisz(*p.b));
    p.b->DajObiektyDoZapisu(zapisywacz);
    return strumienie::Szesnastkowo(strumienie::Zapisz(*p.b, &zapisywacz));
}

const std::map<std::string, TOperacja>& Operacje() {
    static const std::map<std::string, TOperacja> operacje = {
        // paths
        OP("tekst", p.b->GetTekstowoWgSciezki(p.S(1))),
        OP("wariant", p.b->GetVariantowoWgSciezki(p.S(1))),
        OP("wariantNr", p.O().GetVariantowo(p.I(1))),
        OP("tresc", p.b->DajTrescWgSciezki(p.S(1))),
        OP("maska", p.Pole(p.C(1))->WartWgMaski(p.S(2))),
        OP("jest", p.b->SciezkaIstnieje(p.S(1))),
        OP("klasa",
           [&p] {
               const TKlasa* klasa = nullptr;
               int nr = -7;
               return p.b->KlasaIPole(p.S(1), klasa, nr) ? std::u16string(klasa->nazwa) + Tekst16(" " + W(nr)) : u"F";
           }()),
        OP("cel",
           [&p] {
               TObiektBazowy* obiekt = p.b;
               int nr = -7;
               const bool jest = p.b->ObiektIPole(p.S(1), p.T(2), obiekt, nr);
               return Tekst16(W(jest) + " " + p.Gdzie(obiekt) + " " + W(nr));
           }()),
        ROB("pisz", p.b->SetTekstowoWgSciezki(p.S(1), p.S(2))),
        ROB("piszW", p.b->SetVariantowoWgSciezki(p.S(1), TWariant(p.S(2)))),
        ROB("piszNr", p.O().SetVariantowo(p.I(1), TWariant(p.S(2)))),
        ROB("zeruj", p.b->ZerujPole(p.S(1))),
        OP("cecha", p.b->PorPoleONazwieZCecha(p.S(1), p.A(2).at(0), p.R(3), LocaleWin1250)),
        OP("maCeche", p.b->PoleMaCeche(p.S(1), p.A(2).at(0), p.R(3))),
        OP("cechaNr", p.b->PorPoleNrZCecha(p.I(1), p.A(2).at(0), p.R(3), LocaleWin1250)),
        OP("maCechy", p.b->MaCechy(p.A(1), p.A(2), p.R(3))),
        OP("porCechy", p.b->PorownajCechy(p.A(1), p.A(2), p.R(3), LocaleWin1250)),
        // values and fields
        ROB("wpisz", p.O().WpiszDane(p.A(1), p.A(2))),
        ROB("inicjuj", p.O().Inicjuj(p.A(1), p.A(2))),
        OP("niepuste", p.b->PoleNiepuste(p.I(1))),
        OP("doZapisu", p.b->PoleDoZapisu(p.I(1))),
        ROB("ustawNiepuste", p.b->UstawNiepuste(p.I(1), p.T(2))),
        OP("defWartosc", p.O().MaDefWartosc(p.I(1))),
        OP("jestPole", p.O().JestPole(p.I(1), p.C(2).empty() ? nullptr : p.Klasy(2)[0], p.T(3))),
        OP("nazwa", p.O().NazwaPolaNr(p.I(1))),
        OP("nr", p.O().NrPolaONazwie(p.S(1))),
        OP("przodek", p.O().OstPoleWspolPrzodka(p.Klasy(1)[0])),
        OP("czytaTyp", p.b->MoznaCzytacDaneTypu(p.S(1))),
        OP("ostatnie", p.O().OstUzywanePole()),
        ROB("zerujPola", p.b->ZerujDanePol(p.A(1))),
        ROB("zerujOprocz", p.b->ZerujDaneOprocz(p.A(1))),
        ROB("zerujDane", p.b->ZerujDane()),
        ROB("ustawPole",
            {
                auto* nowe = static_cast<TObiekt*>(static_cast<TObiektBazowy*>(p.Klasy(2)[0]->utworz(nullptr)));
                nowe->SetPoleInteger(0, 1);
                p.O().UstawPole(p.I(1), nowe, true);
            }),
        ROB("przytnij", p.b->PrzytnijPolaWgRozm(p.T(1))),
        ROB("trymuj", p.b->TrymujPolaTekstowe(p.T(1))),
        OP("unicode", p.b->SaDaneUnicode(p.I(1))),
        OP("opis", p.b->OpisTekstowy()),
        OP("drzewo", [&p] {
            std::u16string tekst = p.b->DrzewoObiektu();
            for (std::size_t i = tekst.find(u"\r\n"); i != std::u16string::npos; i = tekst.find(u"\r\n"))
                tekst.replace(i, 2, u"|");
            return tekst;
        }()),
        OP("maWartosc", p.b->GetMaWartosc(p.I(1))),
        ROB("setMaWartosc", p.b->SetMaWartosc(p.I(1), p.T(2))),
        OP("saDane", p.b->SaJakiesDane(p.I(1))),
        OP("getI", p.O().GetPoleInteger(p.I(1))),
        OP("getS", p.O().GetPoleString(p.I(1))),
        OP("getD", p.O().GetPoleDouble(p.I(1))),
        OP("getB", p.O().GetPoleBoolean(p.I(1))),
        {"getRef", [](TPrzebieg& p) { return p.Gdzie(p.O().GetPoleRefObiektu(p.I(1))); }},
        {"getWsk", [](TPrzebieg& p) { return p.Gdzie(p.O().GetPoleWskObiektu(p.I(1))); }},
        {"getLista", [](TPrzebieg& p) { return p.Gdzie(p.O().GetPoleStrList(p.I(1))); }},
        ROB("setI", p.O().SetPoleInteger(p.I(1), p.I(2))),
        ROB("setS", p.O().SetPoleString(p.I(1), p.S(2))),
        ROB("setCDATA", p.O().SetPoleCDATA(p.I(1), p.S(2))),
        ROB("setD", p.O().SetPoleDouble(p.I(1), p.I(2))),
        ROB("setB", p.O().SetPoleBoolean(p.I(1), static_cast<std::uint8_t>(p.I(2)))),
        ROB("setRef", p.O().SetPoleRefObiektu(p.I(1), p.Jako<TObiektBazowy>(2))),
        ROB("setWsk", p.O().SetPoleWskObiektu(p.I(1), p.Jako<TObiektBazowy>(2))),
        ROB("setLista", p.O().SetPoleStrList(p.I(1), *p.Jako<TPoleStrList>(2))),
        {"klon", [](TPrzebieg& p) {
             const TWlasny<TObiektBazowy> klon = p.b->KlonujObiekt(p.T(1));
             return (klon->Rodzic() == nullptr ? "" : "+") + W(klon->Porownaj(*p.b));
         }},
        // forms in streams
        {"bajty", [](TPrzebieg& p) { return Zapis(p); }},
        {"czytaj", [](TPrzebieg& p) { return Czytaj(p, false); }},
        {"czytajTekst", [](TPrzebieg& p) { return Czytaj(p, true); }},
        {"tekstem", [](TPrzebieg& p) {
             std::string tekst = strumienie::Tekst(*p.b, [&p](TZapisywaczTekstu& z) {
                 z.PominAkapity = p.C(1).find('a') == std::string::npos;
                 z.PominKonceLinii = p.C(1).find('l') != std::string::npos;
             });
             for (std::size_t i = tekst.find("\r\n"); i != std::string::npos; i = tekst.find("\r\n"))
                 tekst.replace(i, 2, "|");
             return tekst;
         }},
        // copies and comparisons
        ROB("kopiuj", p.b->KopiujDane(*p.Pole(p.C(1)))),
        ROB("kopiujPrzodkow", p.b->KopiujDanePrzodkow(*p.Jako<TObiektBazowy>(1))),
        ROB("kopiujPola", p.O().KopiujDanePol(p.Inny(1), p.A(2), p.T(3))),
        ROB("kopiujOprocz", p.O().KopiujDaneOprocz(p.Inny(1), p.A(2))),
        ROB("kopiujKlas", p.O().KopiujDaneKlas(p.Inny(1), p.Klasy(2))),
        ROB("przepisz", p.O().PrzepiszDane(*p.Jako<TObiektBazowy>(1), p.I(2), p.I(3))),
        OP("porownaj", p.b->Porownaj(*p.Pole(p.C(1)))),
        OP("porownajZ", p.b->PorownajZObiektem(*p.Jako<TObiektBazowy>(1), p.R(2))),
        OP("porownajPola", p.b->PorownajWgPol(*p.Jako<TObiektBazowy>(1), p.A(2), p.R(3))),
        OP("porownajOprocz", p.b->PorownajOproczPol(*p.Jako<TObiektBazowy>(1), p.A(2), p.R(3))),
        OP("porownajSciezki",
           [&p] {
               TPorownywaczDanych porownywacz(p.o, p.z, p.T(2) ? rpBezChwilowych : rpWszystkiePola, rlRozmLiterWazny,
                                              LocaleWin1250, p.T(3) ? tprRefJakoSciezki : tprRefJakoWskazn);
               return p.b->Porownaj(*p.Pole(p.C(1)), &porownywacz);
           }()),
        OP("porownajChwilowe",
           [&p] {
               TPorownywaczDanych porownywacz(p.o, p.z, rpBezChwilowych, rlRozmLiterWazny, LocaleWin1250,
                                              tprRefJakoWskazn);
               return p.b->PorownajOproczPol(*p.Jako<TObiektBazowy>(1), p.A(2), rlRozmLiterWazny, LocaleWin1250,
                                             &porownywacz);
           }()),
        // lists: adding and removing
        OP("ile", p.L().IleObiektow()),
        OP("pojemnosc", p.L().Pojemnosc()),
        {"dodaj", [](TPrzebieg& p) {
             const TKlasa* klasa = p.C(1) == "nil" ? nullptr : p.Klasy(1)[0];
             TObiektBazowy* nowy = klasa == nullptr ? nullptr : static_cast<TObiektBazowy*>(klasa->utworz(nullptr));
             return p.Gdzie(p.L().DodajObiekt(nowy, p.I(2)));
         }},
        {"dodajTen", [](TPrzebieg& p) { return p.Gdzie(p.L().DodajObiekt(p.Jako<TObiektBazowy>(1), p.I(2))); }},
        ROB("przypnij", p.L().PrzypnijObiekt(p.Jako<TObiektBazowy>(1))),
        {"dopisz", [](TPrzebieg& p) { return p.Gdzie(p.L().DopiszObiekt(p.Jako<TObiektBazowy>(1), p.I(2))); }},
        {"dopiszGdyBrak",
         [](TPrzebieg& p) {
             return p.Gdzie(p.L().DopiszObiektGdyBrak(p.Jako<TObiektBazowy>(1), p.A(2), p.R(3)));
         }},
        GDZIE("dopiszZ", p.Gdzie(p.LO().DopiszObiektGdyBrak(p.A(1), p.A(2), p.R(3), Jak(p, 4), g))),
        GDZIE("dodajZ", p.Gdzie(p.LO().DodajObiektGdyBrak(p.A(1), p.A(2), p.R(3), p.K(4), g))),
        {"dodajZw", [](TPrzebieg& p) { return p.Gdzie(p.LO().DodajObiektGdyBrak(p.A(1), p.A(2))); }},
        {"usun",
         [](TPrzebieg& p) {
             if (p.T(2) || p.L().Klasa()->Ma(ckListaWsk))
                 return p.Gdzie(p.L().UsunObiekt(p.I(1), p.T(2), p.T(3)));
             return p.Gdzie(TWlasny<TObiektBazowy>(p.L().UsunObiekt(p.I(1), false, p.T(3))).get());
         }},
        {"usunTen", [](TPrzebieg& p) { return p.Gdzie(p.L().UsunTenObiekt(p.Jako<TObiektBazowy>(1), true)); }},
        {"usunTaki", [](TPrzebieg& p) { return p.Gdzie(p.L().UsunTakiObiekt(*p.Jako<TObiektBazowy>(1), true)); }},
        ROB("usunNil", p.L().UsunObiektyNil(p.T(1))),
        OP("usunObiekty", p.L().UsunObiekty(p.A(1), p.A(2), p.R(3))),
        OP("usunOprocz", p.L().UsunObiektyOprocz(p.A(1), p.A(2), p.R(3))),
        OP("usunTe", p.L().UsunTeObiekty(*p.Jako<TListaWskObiektow>(1), p.T(2))),
        OP("usunDuplikaty", p.L().UsunDuplikaty(p.A(1), p.R(2))),
        ROB("skroc", p.L().SkrocListe(p.I(1), p.T(2))),
        ROB("wyrownaj", p.L().WyrownajDoListy(*p.Lista(1), p.T(2))),
        ROB("wpiszDoPol", p.L().WpiszDaneDoPol(p.A(1), p.A(2))),
        // lists: order and searches
        OP("przesun", p.L().PrzeniesObiekt(p.I(1), p.I(2))),
        OP("posortuj", p.L().PosortujWgPol(p.A(1), p.Kierunki(2), p.R(3))),
        OP("posortujL", p.L().PosortujWgPol(p.A(1), p.R(3), p.K(2))),
        OP("posortujK", p.L().PosortujWgPol(p.A(1), p.K(2))),
        OP("posortujFun", p.L().PosortujWgFun()),
        OP("maPorzadek", p.L().ListaMaPosortowanie(p.A(1), p.Kierunki(2), p.R(3))),
        GDZIE("jestObiekt", W(p.L().JestObiekt(p.A(1), p.A(2), g, p.R(3), Jak(p, 4), p.I(5)))),
        GDZIE("jestInny", W(p.L().JestInnyObiekt(p.A(1), p.A(2), g, p.R(3), Jak(p, 4), p.I(5)))),
        GDZIE("jestTakiJak", W(p.L().JestObiektTakiJak(*p.Jako<TObiektBazowy>(1), p.A(2), g, p.R(3), Jak(p, 4), p.I(5)))),
        GDZIE("jestTaki", W(p.L().JestTakiObiekt(*p.Jako<TObiektBazowy>(1), g, Jak(p, 2), p.I(3)))),
        OP("sa", std::u16string(1, p.L().JestObiekt(p.A(1), p.A(2), p.R(3), Jak(p, 4), p.I(5)) ? u'T' : u'F') +
                     (p.L().JestInnyObiekt(p.A(1), p.A(2), p.R(3), Jak(p, 4), p.I(5)) ? u'T' : u'F')),
        OP("saTakie",
           std::u16string(1, p.L().JestObiektTakiJak(*p.Jako<TObiektBazowy>(1), p.A(2), p.R(3), Jak(p, 4), p.I(5))
                                 ? u'T'
                                 : u'F') +
               (p.L().JestTakiObiekt(*p.Jako<TObiektBazowy>(1), Jak(p, 4), p.I(5)) ? u'T' : u'F')),
        GDZIE("wyszukaj", W(p.L().WyszukajWgPol(p.A(1), p.A(2), g, p.R(3), p.K(4)))),
        GDZIE("wyszukajK", W(p.L().WyszukajWgPol(p.A(1), p.A(2), g, p.K(3)))),
        GDZIE("wyszukajJak", W(p.L().WyszukajWgPol(*p.Jako<TObiektBazowy>(1), p.A(2), g, p.R(3), p.K(4)))),
        GDZIE("wyszukajJakK", W(p.L().WyszukajWgPol(*p.Jako<TObiektBazowy>(1), p.A(2), g, p.K(3)))),
        OP("wyszukane", std::u16string(1, p.L().WyszukajWgPol(p.A(1), p.A(2), p.R(4), p.K(5)) ? u'T' : u'F') +
                            (p.L().WyszukajWgPol(*p.Jako<TObiektBazowy>(3), p.A(1), p.R(4), p.K(5)) ? u'T' : u'F')),
        GDZIE("zakres",
              [&] {
                  std::int32_t od = -7;
                  const bool jest = p.L().WyszukajZakres(p.A(1), p.A(2), od, g, p.R(3), p.K(4));
                  return W(jest) + " " + W(od);
              }()),
        {"element", [](TPrzebieg& p) { return p.Gdzie(p.L().DajElemListy(p.S(1), p.T(2))); }},
        OP("wydziel",
           [&p] {
               const std::u16string s = p.S(1);
               std::u16string_view sciezka = s;
               std::u16string_view numer = u"?";
               const bool jest = TListaBazowa::WydzielNumerElem(sciezka, numer);
               return Tekst16(W(jest)) + u" " + std::u16string(numer) + u" " + std::u16string(sciezka);
           }()),
        // lists: from one to another
        OP("dopiszDane", p.L().DopiszDane(p.Lista(1))),
        OP("dopiszOCechach", p.L().DopiszObiektyOCechach(p.Lista(1), p.A(2), p.A(3), p.R(4))),
        OP("dopiszOprocz", p.L().DopiszObiektyOprocz(p.Lista(1), p.A(2), p.A(3), p.R(4))),
        OP("dopiszBraki", p.L().DopiszObiektyGdyBrak(p.Lista(1), p.A(2), p.R(3))),
        OP("kopiujOCechach", p.L().KopiujObiektyOCechach(p.Lista(1), p.A(2), p.A(3), p.R(4))),
        OP("przeniesDane", p.L().PrzeniesDane(*p.Lista(1))),
        OP("przeniesOCechach", p.L().PrzeniesObiektyOCechach(*p.Lista(1), p.A(2), p.A(3), p.R(4))),
        OP("przeniesOprocz", p.L().PrzeniesObiektyOprocz(*p.Lista(1), p.A(2), p.A(3), p.R(4))),
        OP("przeniesBraki", p.L().PrzeniesObiektyGdyBrak(*p.Lista(1), p.A(2), p.R(3))),
        {"przeniesZ", [](TPrzebieg& p) { return p.Gdzie(p.L().PrzeniesZListy(*p.Lista(1), p.I(2), p.I(3))); }},
        OP("przepnij", p.LO().PrzepnijLubKopiuj(*p.Jako<TListaObiektow>(1))),
        OP("moznaZ", p.LO().MoznaKopiowacZListy(p.Klasy(1)[0])),
        ROB("kopiujListyPol", p.LO().KopiujDanePol(*p.Jako<TListaObiektow>(1), p.A(2), p.T(3))),
        ROB("kopiujListyOprocz", p.LO().KopiujDaneOprocz(*p.Jako<TListaObiektow>(1), p.A(2))),
        ROB("kopiujListyKlas", p.LO().KopiujDaneKlas(*p.Jako<TListaObiektow>(1), p.Klasy(2))),
        {"wartPola", [](TPrzebieg& p) { return Napisy([&](auto& n) { p.L().DajListeWartPola(p.S(1), n); }, nullptr); }},
        {"doStrings", [](TPrzebieg& p) { return Napisy([&](auto& n) { p.L().WpiszDoStrings(p.S(1), n); }, &p.L()); }},
    };
    return operacje;
}

struct TPoczatek {
    std::string klasa = "TWszystko";
    std::string tresc;
};

TWlasny<TObiekt> Zbuduj(const TPoczatek& p) {
    const TKlasa* klasa = nullptr;
    EXPECT_TRUE(JadroKlas()->JestKlasaONazwie(Tekst16(p.klasa), klasa)) << p.klasa;
    TWlasny<TObiekt> o(static_cast<TObiekt*>(static_cast<TObiektBazowy*>(klasa->utworz(nullptr))));
    strumienie::ZTekstu(*o, "object " + p.klasa + " " + p.tresc + " end");
    return o;
}

// Why the tree cannot be written, by any form and before the first byte; empty when it can.
std::u16string Odmowa(const TObiektBazowy& o) {
    TZTMemoryStream strumien;
    const std::u16string odmowa = testy::Blad<ZTException>([&] { o.ZapiszTekstowo(strumien); });
    if (odmowa == u"(no error)")
        return u"";
    TZapisywaczDanych wlasny;
    EXPECT_EQ(testy::Blad<ZTException>([&] { o.ZapiszWStrumieniu(strumien); }), odmowa);
    EXPECT_EQ(testy::Blad<ZTException>([&] { o.ZapiszWStrumieniu(strumien, &wlasny); }), odmowa);
    EXPECT_EQ(testy::Blad<ZTException>([&] { static_cast<void>(o.DajWyroznikObiektu(&o)); }), odmowa);
    EXPECT_EQ(strumien.GetSize(), 0);
    return odmowa;
}

// The text form, and what it does not show: capacities, objects in fields without values.
std::vector<std::string> Linie(TObiektBazowy& o) {
    std::vector<std::string> linie;
    std::string tekst = strumienie::Tekst(o);
    for (std::size_t i = tekst.find("\r\n"); i != std::string::npos; i = tekst.find("\r\n")) {
        linie.push_back(tekst.substr(0, i));
        tekst.erase(0, i + 2);
    }
    drzewa::TStan stan;
    stan.Zbierz(o, nullptr);
    for (const TObiektBazowy* x : stan.obiekty)
        if (x->Klasa()->Ma(ckLista))
            linie.push_back(Utf8ZUtf16(x->DajSciezkeDoSiebie()) + "#" +
                            std::to_string(static_cast<const TListaBazowa*>(x)->Pojemnosc()));
        else if (x->Rodzic() != nullptr && x->Rodzic()->Klasa()->Ma(ckObiekt) && !x->PoleNiepuste(CalyObiekt))
            linie.push_back(Utf8ZUtf16(x->DajSciezkeDoSiebie()) + "#");
    return linie;
}

// What was taken out of the lines and what was put in, with the places.
std::string Roznica(const std::vector<std::string>& a, const std::vector<std::string>& b) {
    std::vector wspolne(a.size() + 1, std::vector<int>(b.size() + 1)); // how many lines the two ends share
    for (std::size_t i = a.size(); i-- > 0;)
        for (std::size_t j = b.size(); j-- > 0;)
            wspolne[i][j] = a[i] == b[j] ? wspolne[i + 1][j + 1] + 1 : std::max(wspolne[i + 1][j], wspolne[i][j + 1]);
    std::string wynik;
    for (std::size_t i = 0, j = 0; i < a.size() || j < b.size();) {
        if (i < a.size() && j < b.size() && a[i] == b[j]) {
            ++i;
            ++j;
        } else if (j == b.size() || (i < a.size() && wspolne[i + 1][j] >= wspolne[i][j + 1])) {
            wynik += " " + std::to_string(i) + "-" + a[i];
            ++i;
        } else {
            wynik += " " + std::to_string(j) + "+" + b[j];
            ++j;
        }
    }
    return wynik;
}

std::string Wykonaj(const std::vector<std::string>& pola, const TPoczatek& pierwszy, const TPoczatek& drugi) {
    const TWlasny<TObiekt> o = Zbuduj(pierwszy);
    const TWlasny<TObiekt> z = Zbuduj(drugi);
    TPrzebieg p{pola, o.get(), z.get(), nullptr, {}};
    const std::size_t malpa = p.a[0].find('@');
    p.b = static_cast<TObiektBazowy*>(malpa == std::string::npos ? p.o : p.Pole(p.a[0].substr(malpa + 1)));
    const std::vector<std::string> przed[] = {Linie(*o), Linie(*z)};
    const auto operacja = Operacje().find(p.a[0].substr(0, malpa));
    if (operacja == Operacje().end() || p.b == nullptr)
        return "no such operation";
    std::string wynik;
    TSlad::pierwszy = o.get();
    TSlad::drugi = z.get();
    TSlad::slad.clear();
    if (const std::u16string blad = testy::Blad([&] { wynik = operacja->second(p); }); blad != u"(no error)")
        wynik = "!" + Utf8ZUtf16(blad);
    if (!TSlad::slad.empty())
        wynik += " {" + TSlad::slad + "}";
    if (const char* blad = drzewa::Blad({o.get(), z.get()}); blad != nullptr)
        wynik += std::string(" BROKEN: ") + blad;
    for (const auto* x : {&o, &z}) {
        if (const std::u16string odmowa = Odmowa(**x); !odmowa.empty()) {
            wynik += (x == &o ? " o! " : " z! ") + Utf8ZUtf16(odmowa);
            continue;
        }
        if (const std::string zmiana = Roznica(przed[x == &z], Linie(**x)); !zmiana.empty())
            wynik += (x == &o ? " o:" : " z:") + zmiana;
        const TWlasny<TObiektBazowy> kopia = (*x)->TworzInstancje(nullptr);
        strumienie::Wczytaj(*kopia, strumienie::Zapisz(**x));
        for (const bool wciecia : {false, true}) { // a stream without a window gets the same text
            strumienie::TOporny bezOkna;
            TZapisywaczTekstu zapisywacz(bezOkna);
            zapisywacz.PominAkapity = !wciecia;
            zapisywacz.ZapiszDokument(**x);
            EXPECT_EQ(bezOkna.dane, strumienie::Tekst(**x, [=](TZapisywaczTekstu& t) { t.PominAkapity = !wciecia; }));
        }
        const std::string bajty = strumienie::Zapisz(**x);
        EXPECT_EQ((*x)->DajWyroznikObiektu(), DajKodTekstuAnsi(bajty)) << pola[0];
        // What has lost its targets is written shorter the next time.
        const std::string ponownie = strumienie::Zapisz(*kopia);
        EXPECT_TRUE(ponownie == bajty || ponownie.size() < bajty.size()) << pola[0];
    }
    std::string czysty; // any bytes, as a line of the table
    for (const char znak : wynik)
        if (const auto bajt = static_cast<unsigned char>(znak); znak == '\r')
            czysty += '|';
        else if (bajt < 32 || (bajt > 126 && !PoprawneUtf8(wynik)))
            czysty += "\\x" + strumienie::Szesnastkowo({&znak, 1});
        else
            czysty += znak;
    return czysty;
}

// A sort by number takes the values out of the objects, a sort by name asks their fields: of every kind.
TEST(Operacje, SortWgWartosciJakWgPol) {
    probki::Rejestruj();
    RejestrujKlasy<TZbior>();
    std::uint32_t los = 1;
    const auto losuj = [&los](std::uint32_t ile) {
        return static_cast<int>((los = los * 1664525 + 1013904223) >> 8U) % static_cast<int>(ile);
    };
    for (const bool daty : {false, true})
        for (const int nr : daty ? std::vector{2, 3, 4} : std::vector{0, 1, 2, 3, 4, 5, 6, 7, 8, 10, 11, 12})
            for (int ile = 2; ile < 30; ++ile) {
                TKolekcjaObiektow listy[2];
                for (int i = 0; i < ile; ++i) {
                    auto o = daty ? TWlasny<TObiekt>(Utworz<TZbior>()) : TWlasny<TObiekt>(Utworz<TWszystko>());
                    const int n = losuj(5) + (daty || nr == 1 || nr == 3 || nr == 5 || nr == 6 ? -2
                                              : nr == 4                                        ? 0x7FFFFFF8
                                                                                               : 0);
                    o->SetVariantowo(nr, daty      ? TWariant(TDataCzas{n / 8.0})
                                         : nr == 7 ? TWariant(n > 2)
                                         : nr == 4 ? TWariant(std::int64_t{n} + losuj(9))
                                                   : TWariant(n));
                    for (TKolekcjaObiektow& lista : listy)
                        lista.DopiszObiekt(o.get(), MaxInt);
                }
                const TArgument numer[] = {nr};
                const TArgument nazwa[] = {static_cast<TObiekt*>(listy[0].Obiekty(0))->NazwaPolaNr(nr)};
                const TRodzajSortowania kierunek = ile % 2 == 0 ? rsRosnaco : rsMalejaco;
                EXPECT_EQ(listy[0].PosortujWgPol(numer, kierunek), listy[1].PosortujWgPol(nazwa, kierunek));
                EXPECT_EQ(strumienie::Zapisz(listy[0]), strumienie::Zapisz(listy[1])) << nr << ' ' << ile;
                EXPECT_TRUE(listy[0].ListaMaPosortowanie(nazwa, {&kierunek, 1})) << nr;
            }
}

void RejestrujWszystkie() {
    probki::Rejestruj();
    RejestrujKlasy<TSlad, TSzeroka, TWlasna, TPien, TGalaz, TKonar, TListaPni, TListaGalezi, TZbior, TKolekcjaObiektow,
                   TPoleInteger, TPoleByte, TPoleString, TPoleWskObiektu, TListaWskObiektow, TListaBazowa, TObiekt>();
}

// A selector that no class in question knows is an error of every operation that acts by it, and changes nothing.
TEST(Operacje, SelektorKtoryNicNieZnaczy) {
    RejestrujWszystkie();
    const std::string adresy = "object Adresy object Numer=2 end object Numer=1 end object Numer=2 end end ";
    const TPoczatek poczatek = {"TWszystko", "I=1 object Adres Numer=1 end " + adresy +
                                                 "object Rozne object TAdres Numer=1 end object TWszystko end end"};
    // "@" is what is asked, "#" the selector; one that needs a value has one.
    const char* const operacje[] = {"maCechy@A # 1",
                                    "porCechy@A # 1",
                                    "porownajPola@A zA #",
                                    "porownajOprocz@A zA #",
                                    "zerujPola@A #",
                                    "zerujOprocz@A #",
                                    "kopiujPola@A zA # T",
                                    "kopiujOprocz@A zA #",
                                    "zerujPola@L #",
                                    "zerujOprocz@L #",
                                    "porownajPola@L z.L #",
                                    "porownajOprocz@L z.L #",
                                    "usunObiekty@L # 1",
                                    "usunOprocz@L # 1",
                                    "usunDuplikaty@L #",
                                    "jestObiekt@L # 1",
                                    "jestInny@L # 1",
                                    "jestTakiJak@L zA #",
                                    "wyszukaj@L # 1",
                                    "wyszukajJak@L zA #",
                                    "zakres@L # 1",
                                    "posortuj@L #",
                                    "maPorzadek@L #",
                                    "dopiszZ@L # 1",
                                    "dodajZ@L # 1",
                                    "wpiszDoPol@L # 1",
                                    "dopiszOCechach@L z.L # 1",
                                    "dopiszOprocz@L z.L # 1",
                                    "dopiszBraki@L z.L #",
                                    "kopiujOCechach@L z.L # 1",
                                    "przeniesOCechach@L z.L # 1",
                                    "przeniesOprocz@L z.L # 1",
                                    "przeniesBraki@L z.L #",
                                    "kopiujListyPol@L z.L # T",
                                    "kopiujListyOprocz@L z.L #",
                                    "wartPola@L #",
                                    "doStrings@L #",
                                    "dopiszGdyBrak@L zA #",
                                    "usunObiekty@K # 1",
                                    "usunDuplikaty@K #",
                                    "posortuj@K #",
                                    "kopiujOCechach@Z z.L # 1"};
    const auto zastap = [](std::string& tekst, const std::string& co, const std::string& czym) {
        for (std::size_t i = tekst.find(co); i != std::string::npos; i = tekst.find(co, i + czym.size()))
            tekst.replace(i, co.size(), czym);
    };
    for (const std::string operacja : operacje)
        for (const std::string selektor : {"Numerr", "55", "Adres..Numer", "Numer,Numer", "Adresy[0]..Numer"}) {
            const bool dlugosci = selektor == "Numer,Numer";
            const bool sciezka = operacja.substr(0, 4) == "wart" || operacja.substr(0, 9) == "doStrings";
            if ((dlugosci && operacja.back() != '1') || (sciezka && selektor == "55"))
                continue;
            std::string linia = operacja;
            zastap(linia, "#", selektor);
            zastap(linia, "@A", "@Adres");
            zastap(linia, "zA", "z.Adres");
            zastap(linia, "@L", "@Adresy");
            zastap(linia, "z.L", "z.Adresy");
            zastap(linia, "@K", "@Rozne");
            zastap(linia, "@Z", "@Adresy"); // what is emptied first
            const std::string wynik = Wykonaj(testy::Podziel(linia, ' '), poczatek, poczatek);
            EXPECT_EQ(wynik[0], '!') << linia;
            EXPECT_NE(wynik.find(dlugosci           ? "niedozwolona liczba elementów 1"
                                 : selektor == "55" ? "Błędne podpole = \"55\""
                                                    : "Błędna ścieżka : " + selektor),
                      std::string::npos)
                << linia << ": " << wynik;
            EXPECT_EQ(wynik.find(" o:"), std::string::npos) << linia << ": " << wynik;
            EXPECT_EQ(wynik.find(" z:"), std::string::npos) << linia << ": " << wynik;
        }
}

TEST(Operacje, JakWTabeli) {
    RejestrujWszystkie();
    std::ifstream plik(std::string(ZTOK_DANE_TESTOW) + "/operacje.tsv", std::ios::binary);
    const char* nowy = std::getenv("ZTOK_NOWY_WZORZEC"); // the table with what comes out now, to be looked through
    std::ofstream wyjscie(nowy == nullptr ? "" : nowy, std::ios::binary);
    TPoczatek poczatki[2];
    int ile = 0;
    for (std::string linia; std::getline(plik, linia);) {
        std::vector<std::string> pola = testy::Podziel(linia, '\t');
        if (linia.empty() || linia[0] == '#') {
            wyjscie << linia << '\n';
            continue;
        }
        if (pola[0] == "o=" || pola[0] == "z=") {
            poczatki[pola[0] == "z="] = {pola.at(1), pola.size() > 2 ? pola[2] : ""};
            wyjscie << linia << '\n';
            continue;
        }
        const auto strzalka = std::find(pola.begin(), pola.end(), "->");
        const std::string oczekiwane = strzalka == pola.end() ? "" : strzalka + 1 == pola.end() ? "" : strzalka[1];
        pola.erase(strzalka, pola.end());
        const std::string pierwszy = Wykonaj(pola, poczatki[0], poczatki[1]);
        const std::int64_t zajete = PulaZajete();
        EXPECT_EQ(Wykonaj(pola, poczatki[0], poczatki[1]), oczekiwane) << linia;
        EXPECT_EQ(pierwszy, oczekiwane) << linia;
        EXPECT_EQ(PulaZajete(), zajete) << linia;
        for (const std::string& pole : pola)
            wyjscie << pole << '\t';
        wyjscie << "->\t" << pierwszy << '\n';
        ++ile;
    }
    EXPECT_GT(ile, 300);
}

} // namespace
