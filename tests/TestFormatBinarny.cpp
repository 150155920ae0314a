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

class TTerminy : public TObiekt {
    ZTOK_OBIEKT(TTerminy, TObiekt, (0, Chwila, DateTime), (1, Dzien, Date), (2, Godzina, Time))
};

// Field 1 is stored only when field 0 is below 10; field 2 always; field 3 is a nested object that follows field 1.
class TWybrane : public TObiekt {
  public:
    [[nodiscard]] bool Trwale() const { return GetPoleByte(0) < 10; }
    ZTOK_OBIEKT(TWybrane, TObiekt, (0, Stan, Byte), (1, Chwilowe, ZapisGdy<rodzaj::Word, &TWybrane::Trwale>),
                (2, Stale, Byte), (3, Adres, ZapisGdy<rodzaj::Obiekt<TAdres>, &TWybrane::Trwale>),
                (4, Cel, Wsk<TAdres>))
};

class FormatBinarny : public testing::Test {
  protected:
    void SetUp() override { Rejestruj(); }
};

// --- counts and texts

TEST_F(FormatBinarny, Liczniki) {
    using TZapis = void (*)(TStrumien&, std::uint32_t);
    using TOdczyt = std::uint32_t (*)(TStrumien&);
    const struct {
        TZapis zapis;
        TOdczyt odczyt;
        std::uint32_t wartosc;
        const char* bajty; // null: out of the form's range
    } tabela[] = {
        {&TZapisywaczDanych::ZapiszLicznik15, &TOdczytywaczDanych::WczytajLicznik15, 0, "00"},
        {&TZapisywaczDanych::ZapiszLicznik15, &TOdczytywaczDanych::WczytajLicznik15, 0x7F, "7F"},
        {&TZapisywaczDanych::ZapiszLicznik15, &TOdczytywaczDanych::WczytajLicznik15, 0x80, "80 80"},
        {&TZapisywaczDanych::ZapiszLicznik15, &TOdczytywaczDanych::WczytajLicznik15, 0x1234, "92 34"},
        {&TZapisywaczDanych::ZapiszLicznik15, &TOdczytywaczDanych::WczytajLicznik15, 0x7FFF, "FF FF"},
        {&TZapisywaczDanych::ZapiszLicznik15, nullptr, 0x8000, nullptr},
        {&TZapisywaczDanych::ZapiszLicznik30, &TOdczytywaczDanych::WczytajLicznik30, 0x7F, "7F"},
        {&TZapisywaczDanych::ZapiszLicznik30, &TOdczytywaczDanych::WczytajLicznik30, 0x80, "80 80"},
        {&TZapisywaczDanych::ZapiszLicznik30, &TOdczytywaczDanych::WczytajLicznik30, 0x3FFF, "BF FF"},
        {&TZapisywaczDanych::ZapiszLicznik30, &TOdczytywaczDanych::WczytajLicznik30, 0x4000, "C0 00 00 40"},
        {&TZapisywaczDanych::ZapiszLicznik30, &TOdczytywaczDanych::WczytajLicznik30, 0x12345678, "D2 34 78 56"},
        {&TZapisywaczDanych::ZapiszLicznik30, &TOdczytywaczDanych::WczytajLicznik30, 0x3FFFFFFF, "FF FF FF FF"},
        {&TZapisywaczDanych::ZapiszLicznik30, nullptr, 0x40000000, nullptr},
        {&TZapisywaczDanych::ZapiszLicznik31, &TOdczytywaczDanych::WczytajLicznik31, 0, "00 00"},
        {&TZapisywaczDanych::ZapiszLicznik31, &TOdczytywaczDanych::WczytajLicznik31, 0x7FFF, "FF 7F"},
        {&TZapisywaczDanych::ZapiszLicznik31, &TOdczytywaczDanych::WczytajLicznik31, 0x8000, "00 80 00 80"},
        {&TZapisywaczDanych::ZapiszLicznik31, &TOdczytywaczDanych::WczytajLicznik31, 0x12345678, "34 92 78 56"},
        {&TZapisywaczDanych::ZapiszLicznik31, &TOdczytywaczDanych::WczytajLicznik31, 0x7FFFFFFF, "FF FF FF FF"},
        {&TZapisywaczDanych::ZapiszLicznik31, nullptr, 0x80000000, nullptr},
    };
    for (const auto& w : tabela) {
        strumienie::TOporny strumien;
        strumien.porcja = 1;
        if (w.bajty == nullptr) {
            EXPECT_THROW(w.zapis(strumien, w.wartosc), ZTException) << w.wartosc;
            EXPECT_EQ(strumien.dane, "");
            continue;
        }
        w.zapis(strumien, w.wartosc);
        EXPECT_EQ(Szesnastkowo(strumien.dane), w.bajty);
        EXPECT_EQ(w.odczyt(strumien), w.wartosc);
        EXPECT_EQ(strumien.pozycja, strumien.dane.size());
    }
    // A count that is longer than it need be is read all the same.
    strumienie::TOporny strumien(Bajty("80 05 C0 00 05 00 00 80 05 00"));
    EXPECT_EQ(TOdczytywaczDanych::WczytajLicznik15(strumien), 5U);
    EXPECT_EQ(TOdczytywaczDanych::WczytajLicznik30(strumien), 5U);
    EXPECT_EQ(TOdczytywaczDanych::WczytajLicznik31(strumien), 5U);
}

TEST_F(FormatBinarny, TekstPonadPojemnoscNieTrafiaDoStrumienia) {
    const char znak = 'x'; // the bytes behind it are never looked at
    const std::pair<std::size_t, const char16_t*> tabela[] = {
        {0x40000000U, u"przekroczono pojemność formatu: string (1073741824)"},
        {0x7FFFFFFFU, u"przekroczono pojemność formatu: string (2147483647)"},
#if SIZE_MAX > 0xFFFFFFFF
        {0x84000000U, u"przekroczono pojemność formatu: string (2214592512)"},
        {0x140000000U, u"przekroczono pojemność formatu: string (5368709120)"},
#endif
    };
    for (const auto& [dlugosc, komunikat] : tabela) {
        strumienie::TOporny strumien;
        EXPECT_EQ(
            Blad([&, ile = dlugosc] { TZapisywaczDanych::ZapiszAnsiString(strumien, std::string_view(&znak, ile)); }),
            komunikat);
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
            TZTMemoryStream wzor;
            TZapisywaczDanych::ZapiszLicznik30(wzor, static_cast<std::uint32_t>(bajtow));
            wzor.WriteBuffer(Utf8ZUtf16(tekst).data(), bajtow);
            TZTMemoryStream pamiec;
            TBuforZapisu zOknem(pamiec, 0x4000);
            TZapisywaczDanych::ZapiszWideString(zOknem, tekst, nullptr);
            zOknem.Flush();
            strumienie::TOporny bezOkna;
            TZapisywaczDanych::ZapiszWideString(bezOkna, tekst, nullptr);
            const auto zawartosc = wzor.Zawartosc();
            const std::string oczekiwane(zawartosc.begin(), zawartosc.end());
            const auto zapisane = pamiec.Zawartosc();
            EXPECT_TRUE(oczekiwane == std::string(zapisane.begin(), zapisane.end())) << bajtow << ' ' << szerokosc;
            EXPECT_TRUE(oczekiwane == bezOkna.dane) << bajtow << ' ' << szerokosc;
            std::u16string odczytany = u"stary";
            TOdczytywaczDanych::WczytajUtf8(bezOkna, odczytany, nullptr);
            EXPECT_TRUE(odczytany == tekst);
            pamiec.Seek(0, ESeek::Poczatek);
            TOdczytywaczDanych::WczytajUtf8(pamiec, odczytany, nullptr);
            EXPECT_TRUE(odczytany == tekst);
            EXPECT_EQ(pamiec.Pozostalo(), 0);
        }
}

// --- golden bytes

struct TWzor {
    const char* nazwa;
    void (*ustaw)(TWszystko&);
    const char* bajty;
};

const TWzor wzory[] = {
    {"empty", [](TWszystko&) {}, "00"},
    {"Byte", [](TWszystko& o) { o.SetB(200); }, "01 01 C8"},
    {"Byte 0", [](TWszystko& o) { o.SetB(0); }, "01 01 00"},
    {"Smallint", [](TWszystko& o) { o.SetS(-2); }, "01 02 FE FF"},
    {"Word", [](TWszystko& o) { o.SetW(0x1234); }, "01 04 34 12"},
    {"Integer", [](TWszystko& o) { o.SetI(-2147483647 - 1); }, "01 08 00 00 00 80"},
    {"Cardinal", [](TWszystko& o) { o.SetC(0xFEDCBA98); }, "01 10 98 BA DC FE"},
    {"Int64", [](TWszystko& o) { o.SetL(0x0102030405060708); }, "01 20 08 07 06 05 04 03 02 01"},
    {"Double", [](TWszystko& o) { o.SetD(-0.15625); }, "01 40 00 00 00 00 00 00 C4 BF"},
    {"Double -0", [](TWszystko& o) { o.SetD(-0.0); }, "01 40 00 00 00 00 00 00 00 80"},
    {"Boolean, field 7 alone", [](TWszystko& o) { o.SetTak(true); }, "01 80 01"},
    {"Boolean false", [](TWszystko& o) { o.SetTak(false); }, "01 80 00"},
    {"String, field 8 alone", [](TWszystko& o) { o.SetNazwa(u"Łódź €"); },
     "02 00 01 0B C5 81 C3 B3 64 C5 BA 20 E2 82 AC"},
    {"String of a character above 16 bits", [](TWszystko& o) { o.SetNazwa(u"😀"); }, "02 00 01 04 F0 9F 98 80"},
    {"RawByteString", [](TWszystko& o) { o.SetBajty(std::string_view("\0\xFF\xA3", 3)); }, "02 00 04 03 00 FF A3"},
    {"empty RawByteString", [](TWszystko& o) { o.SetBajty(""); }, "02 00 04 00"},
    {"WideString", [](TWszystko& o) { o.SetSzeroki(u"ą"); }, "02 00 08 02 C4 85"},
    {"CDATA", [](TWszystko& o) { o.SetOpis(u"<&>"); }, "02 00 10 03 '<&>'"},
    {"empty CDATA", [](TWszystko& o) { o.SetOpis(u""); }, "02 00 10 00"},
    {"nested object", [](TWszystko& o) { o.GetAdres().SetNumer(7); }, "02 00 20 01 02 07 00 00 00"},
    {"nested object without values", [](TWszystko& o) { o.GetAdres(); }, "00"},
    {"list",
     [](TWszystko& o) {
         o.GetAdresy().Dopisz();
         o.GetAdresy().Dopisz().SetUlica(u"A");
     },
     "02 00 40 02 00 00 01 01 01 'A'"},
    {"collection",
     [](TWszystko& o) {
         o.GetRozne().Dodaj(Utworz<TAdres>());
         static_cast<TWszystko&>(*o.GetRozne().Dodaj(Utworz<TWszystko>())).SetB(1);
         o.GetRozne().Dodaj(Utworz<TListaAdresow>());
     },
     "03 00 00 01 03 00 06 'TAdres' 00 09 'TWszystko' 01 01 01 0D 'TListaAdresow' 00 00"},
    {"pointer to the root", [](TWszystko& o) { o.SetWskaznik(&o); }, "03 00 00 02 01 00"},
    {"numbers: root 1, address 2, list 3, its elements 4 and 5",
     [](TWszystko& o) {
         o.GetAdres().SetNumer(1);
         o.GetAdresy().Dopisz();
         o.SetReferencja(&o.GetAdresy().Dopisz());
     },
     "03 00 60 04 01 02 01 00 00 00 02 00 00 00 05 00"},
    {"pointer lists; they take the numbers 2 and 3",
     [](TWszystko& o) {
         o.GetWskazywane().DodajObiekt(&o.GetPowiazane(), MaxInt);
         o.GetWskazywane().DodajObiekt(&o, MaxInt);
         o.GetPowiazane().DodajObiekt(&o.GetWskazywane(), MaxInt);
         o.GetPowiazane().DodajObiekt(&o, 0);
     },
     "03 00 00 18 02 00 03 00 01 00 02 00 01 00 02 00"},
};

TEST_F(FormatBinarny, WzorceBajtow) {
    for (const TWzor& wzor : wzory) {
        const TWlasny<TWszystko> obiekt = Utworz<TWszystko>();
        wzor.ustaw(*obiekt);
        const std::string bajty = Bajty(wzor.bajty);
        ASSERT_EQ(Szesnastkowo(Zapisz(*obiekt)), Szesnastkowo(bajty)) << wzor.nazwa;
        const TWlasny<TWszystko> odczytany = Utworz<TWszystko>();
        odczytany->SetL(1); // goes with the old content
        EXPECT_EQ(Wczytaj(*odczytany, bajty + "reszta"), static_cast<std::int64_t>(bajty.size())) << wzor.nazwa;
        EXPECT_EQ(Szesnastkowo(Zapisz(*odczytany)), Szesnastkowo(bajty)) << wzor.nazwa;
        EXPECT_EQ(odczytany->Porownaj(*obiekt), 0) << wzor.nazwa;
        EXPECT_EQ(odczytany->DajWyroznikObiektu(), DajKodTekstuAnsi(bajty)) << wzor.nazwa;
        strumienie::TOporny poBajcie(bajty + "reszta");
        odczytany->WczytajZeStrumienia(poBajcie);
        EXPECT_EQ(poBajcie.pozycja, bajty.size()) << wzor.nazwa;
        EXPECT_EQ(Szesnastkowo(Zapisz(*odczytany)), Szesnastkowo(bajty)) << wzor.nazwa;
    }
}

TEST_F(FormatBinarny, BajtLogicznyZostajeJakByl) {
    const TWlasny<TWszystko> o = Utworz<TWszystko>();
    Wczytaj(*o, Bajty("01 80 7B"));
    EXPECT_TRUE(o->GetTak());
    EXPECT_EQ(Szesnastkowo(Zapisz(*o)), "01 80 7B");
    EXPECT_EQ(Szesnastkowo(Zapisz(*o->KlonujObiekt(false))), "01 80 7B");
}

TEST_F(FormatBinarny, DatyICzasy) {
    const TWlasny<TTerminy> o = Utworz<TTerminy>();
    // Each field holds 45292.75; a date keeps the days of what it reads, a time the fraction.
    const std::string liczba = "00 00 00 00 98 1D E6 40";
    EXPECT_EQ(Wczytaj(*o, Bajty("01 07" + liczba + liczba + liczba)), 26);
    EXPECT_EQ(o->GetChwila(), 45292.75);
    EXPECT_EQ(o->GetDzien(), 45292.0);
    EXPECT_EQ(o->GetGodzina(), 0.75);
    EXPECT_EQ(Szesnastkowo(Zapisz(*o)), "01 07 " + liczba + " 00 00 00 00 80 1D E6 40 00 00 00 00 00 00 E8 3F");
}

// A list is an object of its own: it can be the root.
TEST_F(FormatBinarny, KorzeniemMozeBycLista) {
    TListaWszystkich lista;
    for (int i = 0; i < 3; ++i)
        lista.Dopisz().SetB(static_cast<std::uint8_t>(i));
    lista[2]->SetWskaznik(lista[0]); // the list is number 1
    const std::string bajty = Zapisz(lista);
    EXPECT_EQ(Szesnastkowo(bajty), "03 00 01 01 00 01 01 01 03 01 00 02 02 02 00");
    TListaWszystkich odczytana;
    Wczytaj(odczytana, bajty);
    ASSERT_EQ(odczytana.IleObiektow(), 3);
    EXPECT_EQ(odczytana.Pojemnosc(), 3);
    EXPECT_EQ(odczytana[2]->GetWskaznik(), odczytana[0]);
    EXPECT_EQ(odczytana[1]->Rodzic(), &odczytana);
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

TEST_F(FormatBinarny, TekstyWWindows1250) {
    const TWlasny<TWszystko> o = Utworz<TWszystko>();
    o->SetNazwa(u"żółw 漢");
    o->SetBajty("\xBF");
    o->SetSzeroki(u"ż");
    o->SetOpis(u"ź");
    TZapisywaczDanych zapisywacz;
    zapisywacz.OpcjeZapisu = ozWin1250;
    const std::string bajty = Zapisz(*o, &zapisywacz);
    EXPECT_EQ(Szesnastkowo(bajty), "02 00 1D 06 BF F3 B3 77 20 3F 01 BF 02 C5 BC 01 9F");
    TZTReadOnlyRawByteStream strumien(bajty);
    o->WczytajZeStrumienia(strumien, true);
    EXPECT_EQ(o->GetNazwa(), u"żółw ?");
    EXPECT_EQ(o->GetBajty(), "\xBF");
    EXPECT_EQ(o->GetSzeroki(), u"ż");
    EXPECT_EQ(o->GetOpis(), u"ź");
}

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
}

// The filter alone decides, over the class's own choice; it is not asked when objects get their numbers.
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
    EXPECT_EQ(pytan, 5);

    const TWlasny<TWybrane> w = Utworz<TWybrane>();
    w->SetStan(20);
    w->SetChwilowe(5);
    TZapisywaczDanych wszystko;
    wszystko.CzyZapisacPole = {[](void*, const TObiekt&, int) { return true; }, nullptr};
    EXPECT_EQ(Szesnastkowo(Zapisz(*w, &wszystko)), "01 03 14 05 00");
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
    // A part of the tree written alone is a tree of its own: what points out of it is left out, numbers begin at 1.
    TWszystko& czesc = static_cast<TWszystko&>(*o->GetRozne().Dodaj(Utworz<TWszystko>()));
    czesc.SetWskaznik(o.get());
    czesc.GetWskazywane().DodajObiekt(&czesc, MaxInt);
    EXPECT_EQ(Szesnastkowo(Zapisz(czesc)), "03 00 00 08 01 00 01 00");
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

TEST_F(FormatBinarny, BledyOdczytu) {
    const struct {
        const char* bajty;
        const char16_t* komunikat;
    } tabela[] = {
        {"02 00 40 FF FF FF FF", u"licznik 2147483647 większy niż pozostałe dane"},
        {"02 00 01 FF FF FF FF 'abc'", u"licznik 1073741823 większy niż pozostałe dane"},
        {"02 00 04 05 'abc'", u"licznik 5 większy niż pozostałe dane"},
        {"03 00 00 08 02 00 01 00 01", u"licznik 2 większy niż pozostałe dane"},
        {"04 01 00 00", u"błąd odczytu ze strumienia TZTReadOnlyRawByteStream: odczytano 3 z 4 bajtów"},
        {"", u"błąd odczytu ze strumienia TZTReadOnlyRawByteStream: odczytano 0 z 1 bajtów"},
        // Numbers that the class does not have take no bytes: 9, and 26 to 31.
        {"04 01 02 00 FC 05", u"(no error)"},
        {"90 01 01" /* 4097 bytes of bitmap, cut */,
         u"błąd odczytu ze strumienia TZTReadOnlyRawByteStream: odczytano 1 z 4097 bajtów"},
        // An unknown class is passed over without its record: what follows is read from there.
        {"03 00 00 01 02 00 02 'TX' 06 'TAdres' 00", u"(no error)"},
    };
    for (const auto& w : tabela) {
        const TWlasny<TWszystko> o = Utworz<TWszystko>();
        EXPECT_EQ(Utf8ZUtf16(Blad([&] { Wczytaj(*o, Bajty(w.bajty)); })), Utf8ZUtf16(w.komunikat)) << w.bajty;
    }
    const TWlasny<TWszystko> o = Utworz<TWszystko>();
    const std::string nieznana = Bajty("03 00 00 01 01 00 02 'TX' 00");
    TZTReadOnlyRawByteStream strumien(nieznana);
    TOdczytywaczDanych odczytywacz;
    odczytywacz.BladNieznanejKlasy = true;
    EXPECT_EQ(Utf8ZUtf16(Blad([&] { o->WczytajZeStrumienia(strumien, &odczytywacz); })),
              "TKolekcjaObiektow: nieznana klasa TX");
    const std::string najwieksza = Bajty("90 00") + std::string(4095, '\0') + Bajty("80 05");
    EXPECT_EQ(Wczytaj(*o, najwieksza), 4098); // field 32767, which the class has not
}

TEST_F(FormatBinarny, LimityOdczytuMoznaPodniesc) {
    const TWlasny<TWszystko> o = Utworz<TWszystko>();
    o->SetNazwa(std::u16string(100, u'x'));
    const std::string bajty = Zapisz(*o);
    const auto czytaj = [&](const TLimityOdczytu& limity) {
        TZTReadOnlyRawByteStream strumien(bajty);
        TOdczytywaczDanych odczytywacz(false, limity);
        return Utf8ZUtf16(Blad([&] { o->WczytajZeStrumienia(strumien, &odczytywacz); }));
    };
    TLimityOdczytu limity;
    limity.bajtyTekstu = 99;
    EXPECT_EQ(czytaj(limity), "przekroczono limit odczytu: rozmiar tekstu w bajtach (99)");
    limity.bajtyTekstu = 100;
    EXPECT_EQ(czytaj(limity), "(no error)");
    limity.pamiec = 150;
    EXPECT_EQ(czytaj(limity), "przekroczono limit odczytu: pamięć w bajtach (150)");
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
    std::size_t bajtow = 0;
    for (std::uint32_t ziarno = 0; ziarno < 150; ++ziarno) {
        SCOPED_TRACE(ziarno);
        const TWlasny<TWszystko> drzewo = Utworz<TWszystko>();
        TLosoweDrzewo(ziarno).Wypelnij(*drzewo, static_cast<int>(ziarno % 4));
        const std::string bajty = Zapisz(*drzewo);
        bajtow += bajty.size();
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
    RecordProperty("bytes", std::to_string(bajtow));
}

// The tree of tests/dane/drzewo.bin.
void Wzorcowe(TWszystko& o) {
    for (const TWzor& wzor : wzory)
        if (std::string_view(wzor.nazwa) != "pointer to the root")
            wzor.ustaw(o);
    o.GetPodrzedne().Dopisz().SetNazwa(u"Zażółć gęślą jaźń \xD83D z połową pary");
    o.GetPodrzedne().Dopisz().SetSzeroki(std::u16string(0x80, u'ą'));
    o.GetPodrzedne()[1]->SetWskaznik(o.GetPodrzedne()[0]);
    o.SetWskaznik(o.GetPodrzedne()[1]);
}

TEST_F(FormatBinarny, PlikWzorcowyNaKazdymSystemieTenSam) {
    const TWlasny<TWszystko> wzorcowe = Utworz<TWszystko>();
    Wzorcowe(*wzorcowe);
    const std::string bajty = Zapisz(*wzorcowe);
    const std::string sciezka = std::string(ZTOK_DANE_TESTOW) + "/drzewo.bin";
    if (const char* nowy = std::getenv("ZTOK_NOWY_WZORZEC"); nowy != nullptr)
        std::ofstream(nowy, std::ios::binary) << bajty;
    TStrumienPlikowy plik(Utf16ZUtf8(sciezka), ETrybPliku::Odczyt);
    std::string zPliku(static_cast<std::size_t>(plik.GetSize()), '\0');
    plik.ReadBuffer(zPliku.data(), zPliku.size());
    EXPECT_EQ(Szesnastkowo(zPliku), Szesnastkowo(bajty));
    const TWlasny<TWszystko> odczytane = Utworz<TWszystko>();
    plik.Seek(0, ESeek::Poczatek);
    odczytane->WczytajZeStrumienia(plik);
    EXPECT_EQ(plik.Pozostalo(), 0);
    SprawdzRowne(*wzorcowe, *odczytane);
    EXPECT_EQ(odczytane->GetWskaznik()->GetWskaznik(), odczytane->GetPodrzedne()[0]);
}

} // namespace
