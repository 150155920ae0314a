#include <gtest/gtest.h>

#include <fstream>
#include <limits>

#include "LosoweDrzewo.h"
#include "StrumienieTestowe.h"
#include "tests/Bledy.h"
#include "ztok/platform/Kodowania.h"

using namespace ztok;
using namespace probki;
using strumienie::Bajty;
using strumienie::Szesnastkowo;
using strumienie::Wczytaj;
using strumienie::Zapisz;
using testy::Blad;

namespace {

// Field 1 is stored only when field 0 is below 10; field 2 always; field 3 is a nested object that follows field 1.
class TWybrane : public TObiekt {
  public:
    [[nodiscard]] bool Trwale() const { return GetPoleByte(0) < 10; }
    ZTOK_OBIEKT(TWybrane, TObiekt, (0, Stan, Byte), (1, Chwilowe, ZapisGdy<rodzaj::Word, &TWybrane::Trwale>),
                (2, Stale, Byte), (3, Adres, ZapisGdy<rodzaj::Obiekt<TAdres>, &TWybrane::Trwale>),
                (4, Cel, Wsk<TAdres>))
};

// Edits the tree that it is written with.
class TMieszajacy : public TObiekt {
    ZTOK_OBIEKT(TMieszajacy, TObiekt, (0, Numer, Integer), (1, Dziecko, Obiekt<TMieszajacy>), (2, Tekst, String))
    void WykonajZapis(TStrumien& strumien, TZapisywaczDanych& zapisywacz) const override {
        Mieszaj();
        TObiekt::WykonajZapis(strumien, zapisywacz);
    }
    void WykonajZapisTekstowy(TZapisywaczTekstu& zapisywacz) const override {
        Mieszaj();
        TObiekt::WykonajZapisTekstowy(zapisywacz);
    }
    void Mieszaj() const {
        if (GetNumer() == 2 && Rodzic() != nullptr)
            mieszaj(*Rodzic());
    }
    static inline void (*mieszaj)(TObiektBazowy& rodzic) = nullptr;
};
class TListaMieszajacych : public TListaTypu<TMieszajacy> {
    ZTOK_LISTA(TListaMieszajacych, TMieszajacy)
};

class FormatBinarny : public testing::Test {
  protected:
    void SetUp() override { Rejestruj(); }
};

// What was announced must be what is written: a tree that changes meanwhile is no file.
TEST_F(FormatBinarny, ZmianaWTrakcieZapisu) {
    RejestrujKlasy<TMieszajacy, TListaMieszajacych>();
    const auto jakoLista = [](TObiektBazowy& o) -> TListaZObiektami& { return static_cast<TListaZObiektami&>(o); };
    static const auto lista = jakoLista;
    void (*const zmiany[])(TObiektBazowy&) = {
        [](TObiektBazowy& o) { lista(o).Dodaj(Utworz<TMieszajacy>()); },
        [](TObiektBazowy& o) { lista(o).UsunObiekt(0, true, true); },
        [](TObiektBazowy& o) { lista(o).PrzeniesObiekt(0, 2); },
    };
    for (const auto zmiana : zmiany)
        for (const bool kolekcja : {false, true})
            for (const bool tekstem : {false, true}) {
                const TWlasny<TListaZObiektami> l = kolekcja ? TWlasny<TListaZObiektami>(Utworz<TKolekcjaObiektow>())
                                                             : TWlasny<TListaZObiektami>(Utworz<TListaMieszajacych>());
                for (const int numer : {1, 2, 3})
                    static_cast<TMieszajacy&>(*l->Dodaj(Utworz<TMieszajacy>())).SetNumer(numer);
                TMieszajacy::mieszaj = zmiana;
                EXPECT_EQ(Blad<ZTException>([&] { tekstem ? void(strumienie::Tekst(*l)) : void(Zapisz(*l)); }),
                          std::u16string(l->NazwaKlasy()) + u" (): obiekt zmieniony w trakcie zapisu");
            }
    TMieszajacy::mieszaj = [](TObiektBazowy& o) { static_cast<TObiekt&>(o).UstawPole(2, nullptr, true); };
    TMieszajacy o;
    o.SetTekst(u"x");
    o.GetDziecko().SetNumer(2);
    EXPECT_EQ(Blad<ZTException>([&] { Zapisz(o); }), u"TMieszajacy (): obiekt zmieniony w trakcie zapisu");
}

// --- counts and texts

TEST_F(FormatBinarny, Liczniki) {
    using Z = TZapisywaczDanych;
    using O = TOdczytywaczDanych;
    const struct {
        void (*zapis)(TStrumien&, std::uint32_t);
        std::uint32_t (*odczyt)(TStrumien&);
        std::vector<std::pair<std::uint32_t, const char*>> wartosci;
        std::uint32_t zaDuza;
    } formy[] = {
        {&Z::ZapiszLicznik15,
         &O::WczytajLicznik15,
         {{0, "00"}, {0x7F, "7F"}, {0x80, "80 80"}, {0x1234, "92 34"}, {0x7FFF, "FF FF"}},
         0x8000},
        {&Z::ZapiszLicznik30,
         &O::WczytajLicznik30,
         {{0x7F, "7F"},
          {0x80, "80 80"},
          {0x3FFF, "BF FF"},
          {0x4000, "C0 00 00 40"},
          {0x12345678, "D2 34 78 56"},
          {0x3FFFFFFF, "FF FF FF FF"}},
         0x40000000},
        {&Z::ZapiszLicznik31,
         &O::WczytajLicznik31,
         {{0, "00 00"},
          {0x7FFF, "FF 7F"},
          {0x8000, "00 80 00 80"},
          {0x12345678, "34 92 78 56"},
          {0x7FFFFFFF, "FF FF FF FF"}},
         0x80000000},
    };
    for (const auto& forma : formy) {
        strumienie::TOporny pusty;
        EXPECT_THROW(forma.zapis(pusty, forma.zaDuza), ZTException) << forma.zaDuza;
        EXPECT_EQ(pusty.dane, "");
        for (const auto& [wartosc, bajty] : forma.wartosci) {
            strumienie::TOporny strumien;
            forma.zapis(strumien, wartosc);
            EXPECT_EQ(Szesnastkowo(strumien.dane), bajty);
            EXPECT_EQ(forma.odczyt(strumien), wartosc);
            EXPECT_EQ(strumien.pozycja, strumien.dane.size());
        }
    }
    // A count that is longer than it need be is read all the same.
    strumienie::TOporny strumien(Bajty("80 05 C0 00 05 00 00 80 05 00"));
    EXPECT_EQ(TOdczytywaczDanych::WczytajLicznik15(strumien), 5U);
    EXPECT_EQ(TOdczytywaczDanych::WczytajLicznik30(strumien), 5U);
    EXPECT_EQ(TOdczytywaczDanych::WczytajLicznik31(strumien), 5U);
}

TEST_F(FormatBinarny, TekstPonadPojemnoscNieTrafiaDoStrumienia) {
    const char znak = 'x'; // the bytes behind it are never looked at
    for (const std::int64_t dlugosc : {0x40000000LL, 0x7FFFFFFFLL, 0x84000000LL, 0x140000000LL}) {
        if (dlugosc > PTRDIFF_MAX)
            break;
        strumienie::TOporny strumien;
        const std::string_view tekst(&znak, static_cast<std::size_t>(dlugosc));
        EXPECT_EQ(Blad([&] { TZapisywaczDanych::ZapiszAnsiString(strumien, tekst); }),
                  u"przekroczono pojemność formatu: string (" + PolskiWide(std::to_string(dlugosc)) + u")");
        EXPECT_EQ(strumien.dane, "");
    }
}

// The count is placed before the text is encoded: lengths around each form, in characters of 1, 2 and 3 bytes.
TEST_F(FormatBinarny, TekstyWokolDlugosciLicznika) {
    for (const std::size_t bajtow :
         {0U, 1U, 2U, 0x7EU, 0x7FU, 0x80U, 0x81U, 0x3FFEU, 0x3FFFU, 0x4000U, 0x4001U, 70000U})
        for (const std::u16string_view znak : {u"a", u"ł", u"€", u"😀"}) {
            const std::size_t szerokosc = Utf8ZUtf16(znak).size();
            std::u16string tekst(bajtow % szerokosc, u'-');
            for (std::size_t i = 0; i < bajtow / szerokosc; ++i)
                tekst += znak;
            strumienie::TOporny wzor;
            TZapisywaczDanych::ZapiszLicznik30(wzor, static_cast<std::uint32_t>(bajtow));
            wzor.dane += Utf8ZUtf16(tekst);
            TZTMemoryStream pamiec;
            TBuforZapisu zOknem(pamiec, 0x4000);
            TZapisywaczDanych::ZapiszWideString(zOknem, tekst, nullptr);
            zOknem.Flush();
            strumienie::TOporny bezOkna;
            TZapisywaczDanych::ZapiszWideString(bezOkna, tekst, nullptr);
            EXPECT_TRUE(wzor.dane == strumienie::Zawartosc(pamiec)) << bajtow << ' ' << szerokosc;
            EXPECT_TRUE(wzor.dane == bezOkna.dane) << bajtow << ' ' << szerokosc;
            std::u16string odczytany = u"stary";
            TOdczytywaczDanych::WczytajUtf8(bezOkna, odczytany, nullptr);
            EXPECT_TRUE(odczytany == tekst);
            pamiec.Seek(0, ESeek::Poczatek);
            TOdczytywaczDanych::WczytajUtf8(pamiec, odczytany, nullptr);
            EXPECT_TRUE(odczytany == tekst);
            EXPECT_EQ(pamiec.Pozostalo(), 0);
        }
}

// A field table has null elements, where a class leaves field numbers out. An empty item keeps their place in the
// stream, since the place is the field's number.
TEST_F(FormatBinarny, PusteElementyZachowujaMiejsce) {
    const TOpisKlasy* opis = JadroKlas()->OpisKlasy(TWszystko::KlasaStatyczna());
    const TListaWlasciwosci* pola = opis->GetListaWlasciwosci();
    ASSERT_EQ(pola->IleObiektow(), 26);
    ASSERT_EQ(pola->GetWlasciwosc(9), nullptr);
    TOpisKlasy odczytany;
    Wczytaj(odczytany, Zapisz(*opis));
    ASSERT_EQ(odczytany.GetListaWlasciwosci()->IleObiektow(), 26);
    EXPECT_EQ(odczytany.GetListaWlasciwosci()->GetWlasciwosc(9)->GetNazwa(), u"");
    EXPECT_EQ(odczytany.GetListaWlasciwosci()->GetWlasciwosc(10)->GetNazwa(), u"Bajty");
    EXPECT_EQ(Zapisz(odczytany), Zapisz(*opis));
}

// --- options

TEST_F(FormatBinarny, KtorePolaSaZapisywane) {
    const TWlasny<TWybrane> o = Utworz<TWybrane>();
    o->SetStan(20);
    o->SetChwilowe(5);
    o->SetStale(0);
    o->GetAdres().SetNumer(1);
    o->SetCel(&o->GetAdres());
    // The nested object is left out of the write, and the pointer at it with it.
    EXPECT_EQ(Szesnastkowo(Zapisz(*o)), "01 05 14 00");
    o->SetStan(9);
    EXPECT_EQ(Szesnastkowo(Zapisz(*o)), "01 1F 09 05 00 00 01 02 01 00 00 00 02 00");
    o->SetStan(20);
    TZapisywaczDanych zapisywacz;
    zapisywacz.ZapisWszystkichPol = true;
    o->DajObiektyDoZapisu(zapisywacz);
    EXPECT_EQ(Szesnastkowo(Zapisz(*o, &zapisywacz)), "01 1F 14 05 00 00 01 02 01 00 00 00 02 00");
    TZapisywaczDanych zFiltrem; // the filter alone decides, over the class's own choice
    zFiltrem.CzyZapisacPole = {[](void*, const TObiekt&, int nr) { return nr < 2; }, nullptr};
    EXPECT_EQ(Szesnastkowo(Zapisz(*o, &zFiltrem)), "01 03 14 05 00");
}

// The filter is not asked when objects get their numbers.
TEST_F(FormatBinarny, FiltrPol) {
    const TWlasny<TWszystko> o = Utworz<TWszystko>();
    o->SetB(1);
    o->GetAdres().SetNumer(1);
    o->GetAdresy().Dopisz();
    o->SetReferencja(o->GetAdresy()[0]);
    o->GetWskazywane().DodajObiekt(&o->GetAdres(), MaxInt);
    TZapisywaczDanych zapisywacz;
    zapisywacz.CzyZapisacPole = {[](void* dane, const TObiekt& obiekt, int nr) {
                                     ++*static_cast<int*>(dane);
                                     return !obiekt.JestKlasy(TWszystko::KlasaStatyczna()) || nr != TWszystko::nrAdres;
                                 },
                                 nullptr};
    int pytan = 0;
    zapisywacz.CzyZapisacPole.dane = &pytan;
    o->DajObiektyDoZapisu(zapisywacz);
    EXPECT_EQ(pytan, 0);
    EXPECT_EQ(zapisywacz.ZapObiekty.IleObiektow(), 5);
    // Address 2 is left out but counted: the list's element stays number 4, and the number 2 is still written.
    EXPECT_EQ(Szesnastkowo(Zapisz(*o, &zapisywacz)), "03 01 40 0C 01 01 00 00 04 00 01 00 02 00");
    EXPECT_EQ(pytan, 8); // about the three objects already before the first byte
}

TEST_F(FormatBinarny, WskaznikiPozaDrzewo) {
    const TWlasny<TWszystko> obcy = Utworz<TWszystko>();
    TAdres obcyAdres;
    const TWlasny<TWszystko> o = Utworz<TWszystko>();
    o->SetB(1);
    o->SetWskaznik(obcy.get());
    o->SetReferencja(&obcyAdres);
    o->GetWskazywane().DodajObiekt(obcy.get(), MaxInt);
    o->GetPowiazane().DodajObiekt(&obcyAdres, MaxInt);
    o->GetPowiazane().DodajObiekt(o.get(), MaxInt);
    EXPECT_EQ(Szesnastkowo(Zapisz(*o)), "03 01 00 18 01 00 00 01 00 01 00");
}

TEST_F(FormatBinarny, NumeryObiektowZapisywacza) {
    TListaWszystkich lista;
    for (int i = 0; i < 100; ++i)
        lista.Dopisz();
    for (std::int32_t i = 0; i < 99; i += 2)
        lista.PrzeniesObiekt(i, 99 - i); // addresses out of order
    TZapisywaczDanych zapisywacz;
    std::int32_t gdzie = 0;
    EXPECT_FALSE(zapisywacz.JestObiekt(&lista, gdzie));
    EXPECT_EQ(gdzie, -1);
    lista.DajObiektyDoZapisu(zapisywacz);
    for (std::int32_t i = 0; i < 100; ++i)
        for (int razy = 0; razy < 2; ++razy) {
            EXPECT_TRUE(zapisywacz.JestObiekt(lista[i], gdzie));
            EXPECT_EQ(gdzie, i + 1);
        }
    EXPECT_FALSE(zapisywacz.JestObiekt(nullptr, gdzie));
    const TAdres obcy;
    EXPECT_FALSE(zapisywacz.JestObiekt(&obcy, gdzie));
    zapisywacz.DodajObiekt(obcy);
    EXPECT_TRUE(zapisywacz.JestObiekt(&obcy, gdzie));
    EXPECT_EQ(gdzie, 101);
}

// --- what a reader refuses

TEST_F(FormatBinarny, NieznanaKlasaINajwiekszaMapa) {
    const TWlasny<TWszystko> o = Utworz<TWszystko>();
    TOpcjeOdczytu opcje;
    opcje.bladNieznanejKlasy = true;
    const std::string nieznana = Bajty("03 00 00 01 01 00 02 'TX' 00");
    TZTReadOnlyRawByteStream strumien(nieznana);
    EXPECT_EQ(Blad([&] { o->WczytajZeStrumienia(strumien, opcje); }),
              u"Błąd odczytu pola TWszystko.Rozne (): TKolekcjaObiektow: nieznana klasa TX");
    const std::string najwieksza = Bajty("90 00") + std::string(4095, '\0') + Bajty("80 05");
    EXPECT_EQ(Wczytaj(*o, najwieksza), 4098); // field 32767, which the class has not
}

// What the limits count: from exactly that on, the tree is read, in both forms; one less and the error tells the limit.
TEST_F(FormatBinarny, LimityLiczaCoCzytaja) {
    constexpr std::int64_t kWskaznik = sizeof(void*);
    constexpr std::int64_t kWszystko = 26 * (kWskaznik + 1); // the field array of TWszystko
    constexpr std::int64_t kAdres = 3 * (kWskaznik + 1);
    const struct {
        const char* tresc;
        std::int64_t pamiec;
        std::int64_t wTekscie; // what the text form counts besides
        std::int64_t tekst;
        int poziomow;
    } tabela[] = {
        {"B=1", kWszystko + 48, 0, 0, 1},
        {"B=1 S=1", kWszystko + 2 * 48, 0, 0, 1},
        {"Nazwa=\"abcdefghij\"", kWszystko + 48 + 20, 0, 10, 1},
        {"object Adres Numer=1 end", kWszystko + kAdres + 2 * 48, 0, 0, 2},
        {"object Adresy object Numer=1 end object Numer=2 end end", kWszystko + 2 * kAdres + 3 * 48 + 2 * 96, 0, 0, 3},
        {"object Adresy object end object end end", kWszystko + 48 + 2 * 96, 2 * kAdres, 0, 3},
        {"object Rozne object TAdres end end", kWszystko + 48 + 96, kAdres, 0, 3},
        {"object Powiazane (1,1,1) end", kWszystko + 48 + 3 * (kWskaznik + 4), -(kWskaznik + 4), 0, 2},
    };
    for (const auto& w : tabela) {
        const TWlasny<TWszystko> wzor = Utworz<TWszystko>();
        const std::string tekst = std::string("object TWszystko ") + w.tresc + " end";
        strumienie::ZTekstu(*wzor, tekst);
        const std::string bajty = Zapisz(*wzor);
        for (const bool tekstem : {false, true}) {
            SCOPED_TRACE(testing::Message() << w.tresc << tekstem);
            const auto czytaj = [&](auto TLimityOdczytu::*ktory, auto ile) {
                const TWlasny<TWszystko> o = Utworz<TWszystko>();
                TOpcjeOdczytu opcje;
                opcje.limity.*ktory = ile;
                return Blad([&] {
                    TZTReadOnlyRawByteStream strumien(tekstem ? tekst : bajty);
                    tekstem ? o->WczytajTekstowo(strumien, opcje) : o->WczytajZeStrumienia(strumien, opcje);
                    EXPECT_EQ(Zapisz(*o), bajty);
                });
            };
            const auto granica = [&](auto TLimityOdczytu::*ktory, auto ile, const std::u16string& komunikat) {
                EXPECT_EQ(czytaj(ktory, ile), u"(no error)");
                const std::u16string blad = czytaj(ktory, --ile);
                EXPECT_NE(blad.find(komunikat + PolskiWide(std::to_string(ile))), std::u16string::npos)
                    << Utf8ZUtf16(blad);
            };
            const std::u16string pamiec = u"przekroczono limit odczytu: pamięć w bajtach (";
            granica(&TLimityOdczytu::pamiec, w.pamiec + (tekstem ? w.wTekscie : 0), pamiec);
            granica(&TLimityOdczytu::zaglebienie, w.poziomow, u"zagnieżdżenie obiektów głębsze niż ");
            if (w.tekst != 0)
                granica(&TLimityOdczytu::bajtyTekstu, w.tekst,
                        u"przekroczono limit odczytu: rozmiar tekstu w bajtach (");
        }
    }
}

// --- whole trees

// Bytes, comparison with letter case by value and by path, and fingerprint.
void SprawdzRowne(const TObiektBazowy& a, const TObiektBazowy& b) {
    for (const TTrybPorownRef tryb : {tprRefJakoWskazn, tprRefJakoSciezki}) {
        TPorownywaczDanych porownywacz(&a, &b, rpWszystkiePola, rlRozmLiterWazny, LocaleWin1250, tryb);
        EXPECT_EQ(a.Porownaj(b, &porownywacz), 0);
    }
    EXPECT_EQ(a.DajWyroznikObiektu(), b.DajWyroznikObiektu());
    EXPECT_TRUE(Zapisz(a) == Zapisz(b));
}

TEST_F(FormatBinarny, LosoweDrzewaTamIZPowrotem) {
    for (std::uint32_t ziarno = 0; ziarno < 150; ++ziarno) {
        SCOPED_TRACE(ziarno);
        const TWlasny<TWszystko> drzewo = Utworz<TWszystko>();
        TLosoweDrzewo(ziarno).Wypelnij(*drzewo, static_cast<int>(ziarno % 4));
        const std::string bajty = Zapisz(*drzewo);
        const TWlasny<TWszystko> odczytane = Utworz<TWszystko>();
        ASSERT_EQ(Wczytaj(*odczytane, bajty + "!"), static_cast<std::int64_t>(bajty.size()));
        SprawdzRowne(*drzewo, *odczytane);
        strumienie::TOporny poTrzy(bajty + "!");
        poTrzy.porcja = 3;
        odczytane->WczytajZeStrumienia(poTrzy);
        EXPECT_EQ(poTrzy.pozycja, bajty.size());
        SprawdzRowne(*drzewo, *odczytane);
        const TWlasny<TObiektBazowy> kopia = drzewo->KlonujObiekt(false);
        SprawdzRowne(*drzewo, *kopia);
        // One changed letter case is seen by all three.
        odczytane->SetNazwa(u"a");
        drzewo->SetNazwa(u"A");
        TPorownywaczDanych porownywacz(nullptr, nullptr, rpWszystkiePola, rlRozmLiterWazny, LocaleWin1250,
                                       tprRefJakoSciezki);
        EXPECT_NE(drzewo->Porownaj(*odczytane, &porownywacz), 0);
        EXPECT_NE(drzewo->DajWyroznikObiektu(), odczytane->DajWyroznikObiektu());
    }
}

// The tree of tests/dane/drzewo.bin reads the same on every system, and is written to the same bytes; drzewo.txt shows
// what it holds.
TEST_F(FormatBinarny, PlikWzorcowyNaKazdymSystemieTenSam) {
    const auto zPliku = [](const char* nazwa) {
        std::ifstream plik(std::string(ZTOK_DANE_TESTOW) + nazwa, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(plik), {});
    };
    const std::string bajty = zPliku("/drzewo.bin");
    const TWlasny<TWszystko> odczytane = Utworz<TWszystko>();
    EXPECT_EQ(Wczytaj(*odczytane, bajty), static_cast<std::int64_t>(bajty.size()));
    EXPECT_EQ(Szesnastkowo(Zapisz(*odczytane)), Szesnastkowo(bajty));
    EXPECT_EQ(strumienie::Tekst(*odczytane) + "\r\n", zPliku("/drzewo.txt"));
    EXPECT_EQ(odczytane->GetWskaznik()->GetWskaznik(), odczytane->GetPodrzedne()[0]);
}

} // namespace
