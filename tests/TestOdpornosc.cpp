// Hostile streams, faults of memory and streams, deep trees: an error or a result, never a broken object.
#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <functional>
#include <iostream>
#include <random>

#include "BrakPamieci.h"
#include "LosoweDrzewo.h"
#include "StrumienieTestowe.h"
#include "fuzz/wywolania/StanDrzewa.h"
#include "platforma/SystemTestowy.h"
#include "tests/Bledy.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/TStrumienPlikowy.h"

using namespace ztok;
using namespace probki;
using strumienie::Bajty;
using strumienie::Wczytaj;
using strumienie::Zapisz;
using systemTestowy::WMalymWatku;
using testy::Blad;
using testy::Zglasza;

namespace {

class TListaOgniw;

// Nests in itself in each way that there is.
class TOgniwo : public TObiekt {
    ZTOK_OBIEKT(TOgniwo, TObiekt, (0, Dalej, Obiekt<TOgniwo>), (1, Wartosc, Byte), (2, Lista, Obiekt<TListaOgniw>),
                (3, Kolekcja, Obiekt<TKolekcjaObiektow>), (4, Tekst, String))
};
class TListaOgniw : public TListaTypu<TOgniwo> {
    ZTOK_LISTA(TListaOgniw, TOgniwo)
};

class Odpornosc : public testing::Test {
  protected:
    void SetUp() override {
        Rejestruj();
        RejestrujKlasy<TOgniwo, TListaOgniw>();
    }
};

// Small streams of TWszystko that together have every kind of field, list and pointer.
const std::vector<std::string>& Strumienie() {
    static const std::vector<std::string> strumienie = [] {
        std::vector<std::string> wynik;
        const TWlasny<TWszystko> o = Utworz<TWszystko>();
        strumienie::ZTekstu(*o, R"(object TWszystko
            B=1 D=1.5 Tak=T Nazwa="Żółw" Bajty='ab' Szeroki="漢"
            object Adres Numer=3 end
            object Adresy object Ulica="A" end object end end
            object Podrzedne object L=-1 object Rozne object TListaAdresow end end Wskaznik=1 end end
            object Rozne object TAdres end object TWszystko Referencja=2 end end
            Wskaznik=7 Referencja=5 object Wskazywane (7,10) end object Powiazane (1,14) end
        end)");
        wynik.push_back(Zapisz(*o));
        for (std::uint32_t ziarno = 0; wynik.size() < 4; ++ziarno) {
            TLosoweDrzewo(ziarno).Wypelnij(*o, 1);
            if (std::string bajty = Zapisz(*o); bajty.size() > 40 && bajty.size() < 220)
                wynik.push_back(std::move(bajty));
            o->ZerujDane();
        }
        return wynik;
    }();
    return strumienie;
}

// The same trees as documents of the text form.
const std::vector<std::string>& Dokumenty(bool tekstem) {
    static const std::vector<std::string> teksty = [] {
        std::vector<std::string> wynik;
        for (const std::string& bajty : Strumienie()) {
            const TWlasny<TWszystko> o = Utworz<TWszystko>();
            Wczytaj(*o, bajty);
            wynik.push_back(strumienie::Tekst(*o));
        }
        return wynik;
    }();
    return tekstem ? teksty : Strumienie();
}

void SprawdzDrzewo(TObiektBazowy& korzen) { EXPECT_STREQ(drzewa::Blad({&korzen}), nullptr); }

std::string Zapisany(const TWszystko& o, bool tekstem) { return tekstem ? strumienie::Tekst(o) : Zapisz(o); }
void Odczytaj(TWszystko& o, TStrumien& strumien, bool tekstem) {
    tekstem ? o.WczytajTekstowo(strumien) : o.WczytajZeStrumienia(strumien);
}

// Reads the stream into the object. Whatever it holds: an error of the library or an object, a valid tree in both
// cases, which can be written, and read from that again with the same result.
bool CzytajObce(TWszystko& o, TStrumien& strumien, bool tekstem = false) {
    bool przyjety = true;
    try {
        Odczytaj(o, strumien, tekstem);
    } catch (const EWyjatek& e) {
        EXPECT_FALSE(e.Komunikat().empty());
        przyjety = false;
    }
    SprawdzDrzewo(o);
    // A pointer list that has lost its targets is written empty, and not at all the next time; nor are pointers at an
    // object that has nothing else.
    std::string bajty = Zapisany(o, tekstem);
    for (std::size_t dlugosc = bajty.size() + 1; bajty.size() < dlugosc;) {
        dlugosc = bajty.size();
        TZTReadOnlyRawByteStream znowu(bajty);
        Odczytaj(o, znowu, tekstem);
        std::string ponownie = Zapisany(o, tekstem);
        EXPECT_TRUE(ponownie == bajty || ponownie.size() < dlugosc);
        bajty.swap(ponownie);
    }
    return przyjety;
}

bool CzytajObce(TWszystko& o, const std::string& bajty, bool tekstem = false) {
    TZTReadOnlyRawByteStream strumien(bajty);
    return CzytajObce(o, strumien, tekstem);
}

template <auto Zapisz> std::string Licznik(std::uint32_t wartosc) {
    strumienie::TOporny s;
    Zapisz(s, wartosc);
    return s.dane;
}
constexpr auto Licznik30 = &Licznik<&TZapisywaczDanych::ZapiszLicznik30>;
constexpr auto Licznik31 = &Licznik<&TZapisywaczDanych::ZapiszLicznik31>;

std::string Powtorz(std::string_view bajty, std::size_t razy) {
    std::string wynik;
    wynik.reserve(bajty.size() * razy);
    while (razy-- > 0)
        wynik += bajty;
    return wynik;
}

// What the action allocates.
template <class F> przydzialy::TWynik ZmierzPamiec(F dzialanie) {
    przydzialy::Zacznij();
    dzialanie();
    return przydzialy::Zakoncz();
}

// --- memory

TEST_F(Odpornosc, PamiecJestWMiareDanych) {
    constexpr std::size_t N = (ZTOK_SANITIZER ? 1 : 4) * 512 * 1024;
    const std::string lista = Bajty("03 00 80 00");    // TWszystko.Podrzedne follows
    const std::string kolekcja = Bajty("03 00 00 01"); // TWszystko.Rozne follows
    // A list of lists, each of which claims as many elements as there are bytes left.
    std::string pozory;
    for (int poziom = 0; poziom < 120; ++poziom)
        pozory += lista + Licznik31(N - 4096);
    const auto powtorz = [](std::string_view co) { return Powtorz(co, N / co.size()); };
    const auto dokument = [&](std::string_view od, std::string_view co, std::string_view po) {
        return "object TWszystko\n" + std::string(od) + powtorz(co) + std::string(po) + "\nend";
    };
    const struct {
        const char* nazwa;
        std::string bajty;
        double k; // what the shape may cost: bytes of memory a byte of input
        bool tekstowo = false;
    } ksztalty[] = {
        {"empty objects", lista + Licznik31(N / 4) + std::string(N / 4, '\0'), 120},
        {"objects of one field", lista + Licznik31(N / 3) + powtorz(Bajty("01 01 05")), 120},
        {"objects with an empty list", lista + Licznik31(N / 6) + powtorz(Bajty("03 00 00 08 00 00")), 120},
        {"collection", kolekcja + Licznik31(N / 8) + powtorz(Bajty("06 'TAdres' 00")), 60},
        {"unknown classes", kolekcja + Licznik31(N / 4) + std::string(N / 4, '\0'), 2},
        {"pointers to the root", Bajty("03 00 00 08") + Licznik31(N / 2) + powtorz(Bajty("01 00")), 16},
        {"pointers to nothing", Bajty("03 00 00 08") + Licznik31(N / 2) + powtorz(Bajty("05 00")), 16},
        {"text", Bajty("02 00 01") + Licznik30(N) + std::string(N, 'x'), 2},
        {"wide text", Bajty("02 00 08") + Licznik30(N) + powtorz("\xC4\x85"), 2},
        {"ill-formed text", Bajty("02 00 01") + Licznik30(N / 3 * 3) + powtorz("\xC4\x85\xFF"), 2},
        {"bytes", Bajty("02 00 04") + Licznik30(N) + std::string(N, 'x'), 2},
        {"claims in claims", pozory + std::string(N, '\xFF'), 2},
        {"empty objects", dokument("object Podrzedne\n", "object\nend\n", "end"), 16, true},
        {"objects of one field", dokument("object Podrzedne\n", "object B=5\nend\n", "end"), 40, true},
        {"collection", dokument("object Rozne\n", "object TAdres\nend\n", "end"), 12, true},
        {"pointers", dokument("object Wskazywane\n(1", ",1", ")\nend"), 16, true},
        {"integers", dokument("object Liczby\n(1", ";1", ")\nend"), 8, true},
        {"texts of lists", dokument("object Teksty\n('a'", ";'b'", ")\nend"), 60, true},
        {"text", dokument("Nazwa=\"", "x", "\""), 6, true},
        {"text in runs", dokument("Nazwa=\"\"", " + \"xxxxxxxxxxxx\"", ""), 6, true},
        {"bytes", dokument("Bajty='", "x", "'"), 6, true},
    };
    for (const auto& ksztalt : ksztalty) {
        for (const bool zOknem : {true, false}) {
            const TWlasny<TWszystko> o = Utworz<TWszystko>();
            TZTReadOnlyRawByteStream okno(ksztalt.bajty);
            strumienie::TOporny bezOkna(ksztalt.bajty);
            bezOkna.porcja = 4096;
            TStrumien& strumien = zOknem ? static_cast<TStrumien&>(okno) : bezOkna;
            const std::clock_t start = std::clock(); // of the processor, where the system tells it
            const auto wynik =
                ZmierzPamiec([&] { Zglasza<EWyjatek>([&] { Odczytaj(*o, strumien, ksztalt.tekstowo); }); });
            const auto bajty = static_cast<double>(ksztalt.bajty.size());
            std::cout << "    k = " << static_cast<double>(wynik.szczyt) / bajty
                      << (ksztalt.tekstowo ? ", text form: " : ": ") << ksztalt.nazwa << (zOknem ? "" : ", no window")
                      << '\n';
            EXPECT_LE(wynik.szczyt, ksztalt.k * bajty + 1024 * 1024) << ksztalt.nazwa;
            EXPECT_LT(std::clock() - start, (ZTOK_SANITIZER ? 20 : 4) * CLOCKS_PER_SEC) << ksztalt.nazwa;
        }
    }
}

// A long text of a file is in memory only once, in its place.
TEST_F(Odpornosc, TekstZPlikuJestWPamieciRaz) {
    const std::u16string sciezka = Utf16ZUtf8(testing::TempDir()) + u"ztok_dlugi_tekst" +
                                   PolskiWide(std::to_string(std::random_device()())); // its own of every run
    constexpr std::size_t N = 3'000'000;
    for (const std::string& wzor : {std::string("x"), std::string("\xC4\x85"), std::string("\xE2\x82\xAC"),
                                    std::string("\xF0\x9F\x98\x80"), std::string("za\xC5\xBC\xF3\xED\xA0\x80 ")}) {
        const std::string utf8 = Powtorz(wzor, N / wzor.size());
        for (const char* numer : {"02 00 01", "02 00 08"}) { // TWszystko's text and wide text
            {
                TStrumienPlikowy plik(sciezka, ETrybPliku::Tworzenie);
                const std::string dane = Bajty(numer) + Licznik30(static_cast<std::uint32_t>(utf8.size())) + utf8;
                plik.WriteBuffer(dane.data(), dane.size());
                plik.Zamknij();
            }
            const TWlasny<TWszystko> o = Utworz<TWszystko>();
            TStrumienPlikowy plik(sciezka, ETrybPliku::Odczyt);
            const auto wynik = ZmierzPamiec([&] { o->WczytajZeStrumienia(plik); });
            EXPECT_LE(wynik.szczyt, 2 * static_cast<std::int64_t>(N) + 1024 * 1024);
            EXPECT_TRUE((numer[7] == '1' ? o->GetNazwa() : o->GetSzeroki()) == Utf16ZUtf8(utf8));
        }
    }
    EXPECT_TRUE(UsunPlik(sciezka));
}

// Wherever a count may stand, one of each form is put instead of what stands there.
TEST_F(Odpornosc, KazdyLicznikZamienionyNaOgromny) {
    std::vector<std::string> liczniki = {Bajty("FF FF FF FF"), Bajty("80 00"), Bajty("00 80 00 00")};
    for (const std::uint32_t wartosc : {1U << 7U, 1U << 15U, 1U << 16U, 1U << 24U, 0x0CCCCCCDU, 0x15555556U,
                                        0x1FFFFFFFU, 0x20000001U, 0x3FFFFFFFU, 0x40000000U, 0x7FFFFFFFU}) {
        liczniki.push_back(wartosc < 0x40000000 ? Licznik30(wartosc) : std::string());
        liczniki.push_back(Licznik31(wartosc));
    }
    const TWlasny<TWszystko> o = Utworz<TWszystko>();
    std::int64_t najwiekszy = 0;
    for (const std::string& wzor : Strumienie())
        for (std::size_t gdzie = 0; gdzie < wzor.size(); gdzie += ZTOK_SANITIZER ? 5 : 1)
            for (const std::string& licznik : liczniki)
                for (const std::size_t zamiast : {std::size_t{1}, licznik.size()}) {
                    std::string bajty = wzor;
                    bajty.replace(gdzie, zamiast, licznik);
                    for (const bool zOknem : {true, false}) {
                        TZTReadOnlyRawByteStream okno(bajty);
                        strumienie::TOporny bezOkna(bajty);
                        bezOkna.porcja = 1000;
                        przydzialy::Zacznij();
                        CzytajObce(*o, zOknem ? static_cast<TStrumien&>(okno) : bezOkna);
                        najwiekszy = std::max(najwiekszy, przydzialy::Zakoncz().najwiekszy);
                    }
                }
    EXPECT_LE(najwiekszy, 1024 * 1024);
}

// --- depth

enum class ESciezka { Pole, Lista, Kolekcja };

// A chain of so many levels, objects and lists counted, and what its innermost level holds.
std::string Lancuch(ESciezka sciezka, std::size_t poziomow) {
    const std::string obiekt = Bajty("01 02 07");
    if (sciezka == ESciezka::Pole)
        return Powtorz(Bajty("01 01"), poziomow - 1) + obiekt;
    const std::string poziom = sciezka == ESciezka::Lista ? Bajty("01 04 01 00") : Bajty("01 08 01 00 07 'TOgniwo'");
    const std::string lista = sciezka == ESciezka::Lista ? Bajty("01 04 00 00") : Bajty("01 08 00 00");
    const std::size_t pary = (poziomow - 1) / 2;
    return poziomow % 2 == 1 ? Powtorz(poziom, pary) + obiekt : Powtorz(poziom, pary) + lista;
}

template <class F> bool ZaGleboko(F dzialanie) {
    try {
        dzialanie();
    } catch (const ZTException& e) {
        EXPECT_NE(e.Komunikat().find(u"zagnieżdżenie obiektów głębsze niż 256"), std::u16string_view::npos);
        return true;
    }
    return false;
}

TEST_F(Odpornosc, GlebokoscDo256WMalymWatku) {
    for (const ESciezka sciezka : {ESciezka::Pole, ESciezka::Lista, ESciezka::Kolekcja})
        for (const std::size_t poziomow : {255U, 256U, 257U, 258U, 1000000U}) {
            SCOPED_TRACE(static_cast<int>(sciezka) * 10000000 + static_cast<int>(poziomow));
            const std::string bajty = Lancuch(sciezka, poziomow);
            WMalymWatku([&] {
                const TWlasny<TOgniwo> o = Utworz<TOgniwo>();
                EXPECT_EQ(ZaGleboko([&] { Wczytaj(*o, bajty); }), poziomow > 256);
                SprawdzDrzewo(*o);
                if (poziomow > 256)
                    return;
                // What was read can be written, compared, copied; an empty innermost list is not written.
                EXPECT_EQ(Zapisz(*o) == bajty, poziomow % 2 == 1 || sciezka == ESciezka::Pole);
                const TWlasny<TObiektBazowy> kopia = o->KlonujObiekt(false);
                EXPECT_EQ(o->Porownaj(*kopia), 0);
                EXPECT_EQ(o->DajWyroznikObiektu(), kopia->DajWyroznikObiektu());
                EXPECT_EQ(o->DajWyroznikObiektu(kopia.get()), kopia->DajWyroznikObiektu());
            });
        }
}

// A chain made by code, of a million objects: it dies without deep recursion, everything else refuses it.
TEST_F(Odpornosc, LancuchMilionaObiektow) {
    constexpr int Dlugosc = ZTOK_SANITIZER ? 100000 : 1000000;
    for (const bool zWartosciami : {true, false})
        for (const ESciezka sciezka : {ESciezka::Pole, ESciezka::Lista, ESciezka::Kolekcja})
            WMalymWatku([&] {
                const std::int64_t zajete = PulaZajete();
                const auto utworz = [&] {
                    TWlasny<TOgniwo> poczatek = Utworz<TOgniwo>();
                    TOgniwo* o = poczatek.get();
                    for (int i = 1; i < Dlugosc; ++i) {
                        if (zWartosciami)
                            o->SetWartosc(1);
                        o = sciezka == ESciezka::Pole ? &o->GetDalej()
                            : sciezka == ESciezka::Lista
                                ? &o->GetLista().Dopisz()
                                : static_cast<TOgniwo*>(o->GetKolekcja().Dodaj(Utworz<TOgniwo>()));
                    }
                    o->SetWartosc(2);
                    return poczatek;
                };
                TWlasny<TOgniwo> a = utworz();
                TWlasny<TOgniwo> b = utworz();
                const std::clock_t start = std::clock();
                const std::int64_t obiektow = PulaZajete() - zajete;
                EXPECT_GT(obiektow, 2 * Dlugosc);
                TZTMemoryStream pamiec;
                EXPECT_TRUE(ZaGleboko([&] { a->ZapiszWStrumieniu(pamiec); }));
                EXPECT_EQ(pamiec.GetSize(), 0); // refused before the first byte
                EXPECT_TRUE(ZaGleboko([&] { static_cast<void>(a->DajWyroznikObiektu()); }));
                EXPECT_TRUE(ZaGleboko([&] { static_cast<void>(a->DajWyroznikObiektu(a.get())); }));
                EXPECT_TRUE(ZaGleboko([&] { static_cast<void>(a->Porownaj(*b)); }));
                const TWlasny<TOgniwo> kopia = Utworz<TOgniwo>();
                EXPECT_TRUE(ZaGleboko([&] { kopia->KopiujDane(*a); }));
                SprawdzDrzewo(*kopia);
                EXPECT_EQ(a->DajSciezkeDoSiebie(), u"");
                a.Ustaw();
                b->ZerujDane();
                EXPECT_LT(std::clock() - start, 5 * CLOCKS_PER_SEC);
            });
}

// --- owners by code

// A copy of some fields between an object and a part of it gives what a copy from a clone gives, in both directions.
TEST_F(Odpornosc, KopieCzesciMiedzyObiektemAJegoCzescia) {
    static const TArgument pola[] = {TWszystko::nrPodrzedne, u"Adres.Ulica"};
    static const TKlasa* const klasy[] = {TListaWszystkich::KlasaStatyczna(), TPoleInteger::KlasaStatyczna()};
    void (*const kopie[])(TWszystko&, const TWszystko&) = {
        [](TWszystko& cel, const TWszystko& z) { cel.KopiujDanePol(z, pola, true); },
        [](TWszystko& cel, const TWszystko& z) { cel.KopiujDaneOprocz(z, {}); },
        [](TWszystko& cel, const TWszystko& z) { cel.KopiujDaneKlas(z, klasy); },
        [](TWszystko& cel, const TWszystko& z) { cel.GetPodrzedne().KopiujDanePol(*z.GetPodrzedne(), pola, false); },
        [](TWszystko& cel, const TWszystko& z) { cel.GetPodrzedne().KopiujDaneOprocz(*z.GetPodrzedne(), {}); },
        [](TWszystko& cel, const TWszystko& z) { cel.GetPodrzedne().KopiujDaneKlas(*z.GetPodrzedne(), klasy); },
        [](TWszystko& cel, const TWszystko& z) {
            cel.GetPodrzedne().KopiujObiektyOCechach(z.GetPodrzedne(), {}, {}, rlRozmLiterWazny);
        },
    };
    const auto czesc = [](TWszystko& korzen) -> TWszystko& { return *korzen.GetPodrzedne()[0]; };
    const TWlasny<TWszystko> wzor = Utworz<TWszystko>();
    TWszystko* o = wzor.get();
    for (int i = 0; i < 4; ++i, o = &o->GetPodrzedne().Dopisz()) {
        o->SetI(i);
        o->GetAdres().SetUlica(std::u16string(3, static_cast<char16_t>(u'a' + i)));
        o->GetAdresy().Dopisz().SetNumer(i);
    }
    for (std::size_t nr = 0; nr < std::size(kopie); ++nr)
        for (const bool zCzesci : {true, false}) {
            SCOPED_TRACE(testing::Message() << nr << ' ' << zCzesci);
            TWszystko razem;
            TWszystko osobno;
            razem.KopiujDane(*wzor);
            osobno.KopiujDane(*wzor);
            kopie[nr](zCzesci ? razem : czesc(razem), zCzesci ? czesc(razem) : razem);
            kopie[nr](zCzesci ? osobno : czesc(osobno), zCzesci ? czesc(*wzor) : *wzor);
            EXPECT_EQ(razem.PorownajZObiektem(osobno, rlRozmLiterWazny), 0);
            EXPECT_NE(razem.PorownajZObiektem(*wzor, rlRozmLiterWazny), 0);
            SprawdzDrzewo(razem);
        }
}

// What leads back: pointer lists that hold their owners, a list of what is to die inside what dies, conditions of a
// path that name a pointer, a field that is to hold what holds it.
TEST_F(Odpornosc, CoWracaDoSiebie) {
    const TWlasny<TWszystko> o = Utworz<TWszystko>();
    TWszystko& element = o->GetPodrzedne().Dopisz();
    o->SetNazwa(u" x ");
    element.SetNazwa(u" y ");
    for (TListaWskObiektow* lista : {&o->GetWskazywane(), static_cast<TListaWskObiektow*>(&element.GetPowiazane())})
        for (TObiektBazowy* cel : {static_cast<TObiektBazowy*>(o.get()), static_cast<TObiektBazowy*>(&element),
                                   static_cast<TObiektBazowy*>(lista)})
            lista->DodajObiekt(cel, MaxInt);
    EXPECT_FALSE(o->SaDaneUnicode(CalyObiekt));
    o->TrymujPolaTekstowe(true);
    o->GetWskazywane().PrzytnijPolaWgRozm(true);
    EXPECT_EQ(o->GetNazwa() + element.GetNazwa(), u"xy");

    EXPECT_THROW(o->SetTekstowoWgSciezki(u"Podrzedne[Referencja=77].I", u"1"), ZTException);
    EXPECT_EQ(o->GetPodrzedne().IleObiektow(), 1);
    o->GetPodrzedne().Dopisz();
    element.GetPowiazane().DodajObiekt(o->GetPodrzedne()[1], 0);
    EXPECT_TRUE(o->GetPodrzedne().UsunTeObiekty(element.GetPowiazane(), false));
    EXPECT_TRUE(o->GetPodrzedne().ListaPusta());

    TOgniwo ogniwo;
    for (TOgniwo* gdzie : {&ogniwo, &ogniwo.GetDalej().GetLista().Dopisz()})
        EXPECT_EQ(Blad<ZTException>([&] { gdzie->UstawPole(TOgniwo::nrDalej, &ogniwo, gdzie != &ogniwo); }),
                  u"TOgniwo: obiekt klasy TOgniwo nie może zawierać samego siebie");
    SprawdzDrzewo(ogniwo);
}

// --- class names and object numbers

TEST_F(Odpornosc, KazdaNazwaKlasyZamienionaNaKazdaInna) {
    TListaNapisow znane;
    JadroKlas()->DajListeZnanychKlas(znane);
    std::vector<std::string> nazwy = {"", "T", "tadres", "TAdres ", "\xFF\x80\x81"};
    nazwy.emplace_back("TAdres\0x", 8);
    for (const std::size_t dlugosc : {127U, 128U, 0x7FFFU})
        nazwy.emplace_back(dlugosc, 'T');
    for (std::size_t i = 0; i < znane.Ile(); ++i)
        nazwy.push_back(Utf8ZUtf16(znane.Napis(i)));
    EXPECT_GT(znane.Ile(), 6U);
    int przyjete = 0;
    for (const std::string_view reszta : {"00", "00 00", "01 01 00", "03 00 00 01 00 00 00"})
        for (const std::string& nazwa : nazwy) {
            strumienie::TOporny s(Bajty("03 00 00 01 01 00"));
            TZapisywaczDanych::ZapiszLicznik15(s, static_cast<std::uint32_t>(nazwa.size()));
            s.dane += nazwa + Bajty(reszta);
            const TWlasny<TWszystko> o = Utworz<TWszystko>();
            przyjete += CzytajObce(*o, s) ? 1 : 0;
            const TListaBazowa& rozne = o->GetRozne();
            EXPECT_LE(rozne.IleObiektow(), 1);
        }
    EXPECT_GT(przyjete, 10);
}

TEST_F(Odpornosc, KazdyNumerPrzekierowany) {
    // Root 1, address 2, list 3 and its address 4, pointer lists 5 and 6.
    const std::string wzor = Bajty("03 00 60 1E 01 02 00 00 00 00 01 00 00");
    const TWlasny<TWszystko> o = Utworz<TWszystko>();
    for (const std::uint32_t numer : {0U, 1U, 2U, 3U, 4U, 5U, 6U, 7U, 8U, 0x7FFFU, 0x8000U, 0x10001U, 0x7FFFFFFFU}) {
        const std::string n = Licznik31(numer);
        const std::string bajty = wzor + n + n + Bajty("02 00") + n + n + Bajty("01 00") + n;
        ASSERT_TRUE(CzytajObce(*o, bajty)) << numer;
        Wczytaj(*o, bajty);
        TObiektBazowy* cele[] = {nullptr,           o.get(),           &o->GetAdres(),
                                 &o->GetAdresy(),   o->GetAdresy()[0], &o->GetWskazywane(),
                                 &o->GetPowiazane()};
        TObiektBazowy* cel = numer < std::size(cele) ? cele[numer] : nullptr;
        EXPECT_EQ(o->GetPoleWskObiektu(TWszystko::nrWskaznik), numer == 1 ? cel : nullptr) << numer;
        EXPECT_EQ(o->GetPoleRefObiektu(TWszystko::nrReferencja), numer == 2 || numer == 4 ? cel : nullptr) << numer;
        EXPECT_EQ(o->GetWskazywane().IleObiektow(), cel == nullptr ? 0 : 2) << numer;
        EXPECT_EQ(o->GetWskazywane().Obiekty(1), cel) << numer;
        EXPECT_EQ(o->GetPowiazane().Obiekty(0), cel) << numer;
        EXPECT_EQ(o->GetAdres().MaRefOd(&o->GetPowiazane()), numer == 2);
    }
}

// --- damaged streams

TEST_F(Odpornosc, KazdyPrzedrostek) {
    const TWlasny<TWszystko> o = Utworz<TWszystko>();
    for (const bool tekstem : {false, true})
        for (const std::string& bajty : Dokumenty(tekstem)) {
            for (std::size_t ile = 0; ile < bajty.size(); ++ile) {
                strumienie::TOporny bezOkna(bajty.substr(0, ile));
                EXPECT_FALSE(CzytajObce(*o, bajty.substr(0, ile), tekstem) || CzytajObce(*o, bezOkna, tekstem)) << ile;
            }
            EXPECT_TRUE(CzytajObce(*o, bajty, tekstem));
            EXPECT_TRUE(Zapisany(*o, tekstem) == bajty);
        }
}

TEST_F(Odpornosc, KazdyBajtKazdaWartosc) {
    const std::clock_t start = std::clock();
    const TWlasny<TWszystko> o = Utworz<TWszystko>();
    int przyjete[2] = {};
    std::mt19937 los(1);
    for (const bool tekstem : {false, true}) {
        const unsigned krok = tekstem ? 37 : ZTOK_SANITIZER ? 7 : 1;
        for (const std::string& wzor : Dokumenty(tekstem))
            for (std::size_t gdzie = 0; gdzie < wzor.size(); ++gdzie)
                for (unsigned zmiana = 1; zmiana < 256; zmiana += krok) {
                    std::string bajty = wzor;
                    bajty[gdzie] = static_cast<char>(static_cast<unsigned char>(bajty[gdzie]) ^ zmiana);
                    przyjete[tekstem] += CzytajObce(*o, bajty, tekstem) ? 1 : 0;
                }
        // Several edits at once reach what one cannot.
        for (int i = 0; i < (tekstem ? 6000 : ZTOK_SANITIZER ? 10000 : 50000); ++i) {
            std::string bajty = Dokumenty(tekstem)[los() % Dokumenty(tekstem).size()];
            for (auto zmian = 1 + los() % 4; zmian > 0; --zmian) {
                const auto gdzie = los() % bajty.size();
                if (los() % 4 == 0)
                    bajty.insert(gdzie, bajty, los() % bajty.size(), los() % 12);
                else if (los() % 4 == 0 && bajty.size() > 20)
                    bajty.erase(gdzie, los() % 8);
                else
                    bajty[gdzie] = static_cast<char>(los());
                if (bajty.empty())
                    bajty = "x";
            }
            przyjete[tekstem] += CzytajObce(*o, bajty, tekstem) ? 1 : 0;
        }
    }
    EXPECT_GT(przyjete[0], 10000);
    EXPECT_GT(przyjete[1], 300);
    EXPECT_LT(std::clock() - start, 120 * CLOCKS_PER_SEC);
}

// --- faults

// What has failed for want of memory has left a valid object, also before anything clears it. An unfinished copy may
// still point into its source, but what it points at knows of it.
template <class F> void ZostawiaCaly(TWszystko& o, bool drzewo, const F& dzialanie) {
    try {
        dzialanie();
    } catch (...) {
        przydzialy::Psuj(-1, false);
        if (drzewo)
            SprawdzDrzewo(o);
        Zapisz(o);
        throw;
    }
}

TEST_F(Odpornosc, KazdyPrzydzialMozeZawiesc) {
    const std::string bajty = Strumienie()[0];
    const TWlasny<TWszystko> zrodlo = Utworz<TWszystko>();
    Wczytaj(*zrodlo, bajty);
    // What can go wrong in the middle, with the result that it must give.
    const std::pair<const char*, std::function<std::string()>> dzialania[] = {
        {"save", [&] { return Zapisz(*zrodlo); }},
        {"load",
         [&] {
             const TWlasny<TWszystko> o = Utworz<TWszystko>();
             ZostawiaCaly(*o, true, [&] { Wczytaj(*o, bajty); });
             return std::to_string(o->GetPodrzedne().IleObiektow());
         }},
        {"copy",
         [&] {
             const TWlasny<TWszystko> o = Utworz<TWszystko>();
             o->GetPowiazane().DodajObiekt(zrodlo.get(), MaxInt);
             o->GetAdresy().Dopisz();
             ZostawiaCaly(*o, false, [&] { o->KopiujDane(*zrodlo); });
             return std::to_string(o->GetPodrzedne().IleObiektow());
         }},
        {"compare",
         [&] {
             const TWlasny<TWszystko> inny = Utworz<TWszystko>();
             Wczytaj(*inny, bajty);
             TPorownywaczDanych wskazniki(nullptr, nullptr, rpWszystkiePola, rlRozmLiterWazny, LocaleWin1250,
                                          tprRefJakoWskazn);
             return std::to_string(zrodlo->Porownaj(*inny, &wskazniki));
         }},
        {"fingerprint", [&] { return std::to_string(zrodlo->DajWyroznikObiektu(zrodlo.get())); }},
    };
    for (const auto& [nazwa, dzialanie] : dzialania) {
        SCOPED_TRACE(nazwa);
        EXPECT_GT(testy::PsujKazdyPrzydzial(dzialanie).ile, 3);
        SprawdzDrzewo(*zrodlo);
        EXPECT_TRUE(Zapisz(*zrodlo) == bajty);
    }
}

TEST_F(Odpornosc, StrumienZawodziNaKazdejPozycji) {
    const TWlasny<TWszystko> zrodlo = Utworz<TWszystko>();
    TLosoweDrzewo(3).Wypelnij(*zrodlo, 2);
    for (const bool tekstem : {false, true}) {
        const std::string bajty = Zapisany(*zrodlo, tekstem);
        const std::size_t krok = 1 + bajty.size() / 600;
        const TWlasny<TWszystko> o = Utworz<TWszystko>();
        for (std::size_t gdzie = 0; gdzie < bajty.size(); gdzie += krok)
            for (const bool rzuca : {false, true}) {
                strumienie::TOporny zapis;
                zapis.pada = gdzie;
                zapis.rzuca = rzuca;
                strumienie::TOporny odczyt(bajty);
                odczyt.pada = gdzie;
                odczyt.rzuca = rzuca;
                odczyt.porcja = 7;
                const auto pisz = [&] { tekstem ? zrodlo->ZapiszTekstowo(zapis) : zrodlo->ZapiszWStrumieniu(zapis); };
                const auto czytaj = [&] { Odczytaj(*o, odczyt, tekstem); };
                EXPECT_TRUE(rzuca ? Zglasza<EBladSystemu>(pisz) : Zglasza<EBladZapisu>(pisz)) << gdzie;
                EXPECT_TRUE(rzuca     ? Zglasza<EBladSystemu>(czytaj)
                            : tekstem ? Zglasza<EWyjatek>(czytaj)
                                      : Zglasza<EBladOdczytu>(czytaj))
                    << gdzie;
                EXPECT_TRUE(bajty.compare(0, zapis.dane.size(), zapis.dane) == 0);
                SprawdzDrzewo(*o);
            }
        strumienie::TOporny odczyt(bajty);
        Odczytaj(*o, odczyt, tekstem);
        EXPECT_TRUE(Zapisany(*o, tekstem) == bajty);
    }
}

// A class whose every hook counts down to an exception.
struct TObcyBlad {};
class TZHakami : public TObiektTS {
  public:
    static inline int doBledu = -1;
    static inline int rodzajBledu = 0;
    static inline int zablokowane = 0;
    static void Odlicz() {
        if (doBledu < 0 || doBledu-- > 0)
            return;
        if (rodzajBledu == 0)
            throw EBladAsercji(u"hak");
        if (rodzajBledu == 1)
            throw std::bad_alloc();
        throw TObcyBlad();
    }
    ZTOK_OBIEKT(TZHakami, TObiektTS, (0, Liczba, Integer), (1, Tekst, String), (2, Dziecko, Obiekt<TZHakami>),
                (3, Rozne, Obiekt<TKolekcjaObiektow>), (4, Cel, Ref<TZHakami>), (5, Cele, Obiekt<TListaRefObiektow>))
    template <class T> static T Odliczone(T wartosc) {
        Odlicz();
        return wartosc;
    }
    void UtworzonoPole(int) override { Odlicz(); }
    [[nodiscard]] bool PoleZapisywane(int) const override { return Odliczone(true); }
    [[nodiscard]] const TKlasa* TypPolaNr(int nr) const override { return Odliczone(TObiektTS::TypPolaNr(nr)); }
    [[nodiscard]] bool PoleNiepuste(int nr) const override { return Odliczone(TObiektTS::PoleNiepuste(nr)); }
    void ZablokujObiekt() const override {
        Odlicz();
        TObiektTS::ZablokujObiekt();
        ++zablokowane;
    }
    void OdblokujObiekt() const override {
        --zablokowane;
        TObiektTS::OdblokujObiekt();
    }
};

// Which of the three kinds of exceptions comes out of the action; -1 is none.
template <class F> int RodzajBledu(F dzialanie) {
    try {
        dzialanie();
    } catch (const EBladAsercji& e) {
        EXPECT_NE(e.Komunikat().find(u"hak"), std::u16string_view::npos); // behind the field that was read
        return 0;
    } catch (const std::bad_alloc&) {
        return 1;
    } catch (const TObcyBlad&) {
        return 2;
    }
    return -1;
}

TEST_F(Odpornosc, WyjatekZKazdegoHaka) {
    RejestrujKlasy<TZHakami>();
    void (*const operacje[])(TZHakami&, TZHakami&, const std::string&) = {
        [](TZHakami& cel, TZHakami&, const std::string& dane) { Wczytaj(cel, dane); },
        [](TZHakami&, TZHakami& z, const std::string&) { Zapisz(z); },
        [](TZHakami& cel, TZHakami& z, const std::string&) { cel.KopiujDane(z); },
        [](TZHakami& cel, TZHakami& z, const std::string&) { static_cast<void>(cel.Porownaj(z)); },
    };
    std::int64_t zajete = 0;
    for (int razy = 0; razy < 2; ++razy) { // the kernel's descriptors come with the first time
        zajete = PulaZajete();
        const TWlasny<TZHakami> zrodlo = Utworz<TZHakami>();
        strumienie::ZTekstu(*zrodlo, R"(object TZHakami Liczba=1 object Dziecko Tekst="a" end
            object Rozne object TZHakami Liczba=2 Cel=1 end end Cel=2 object Cele (4) end end)");
        const std::string bajty = Zapisz(*zrodlo);
        const TWlasny<TZHakami> o = Utworz<TZHakami>();
        for (int nr = 0; nr < 4; ++nr)
            for (TZHakami::rodzajBledu = 0; TZHakami::rodzajBledu < 3; ++TZHakami::rodzajBledu) {
                int krok = 0;
                for (bool blad = true; blad; ++krok) {
                    TZHakami::doBledu = krok;
                    blad = RodzajBledu([&] { operacje[nr](*o, *zrodlo, bajty); }) == TZHakami::rodzajBledu;
                    TZHakami::doBledu = -1;
                    EXPECT_EQ(TZHakami::zablokowane, 0) << nr << ' ' << krok;
                    if (nr != 2)
                        SprawdzDrzewo(*o);
                    SprawdzDrzewo(*zrodlo);
                }
                EXPECT_GT(krok, 2) << nr;
            }
        o->ZerujDane();
        EXPECT_TRUE(Zapisz(*zrodlo) == bajty);
        Wczytaj(*o, bajty);
        EXPECT_TRUE(Zapisz(*o) == bajty);
    }
    EXPECT_EQ(PulaZajete(), zajete);
}

} // namespace
