// Field paths and operations by lists of fields.
#include <gtest/gtest.h>

#include <functional>

#include "tests/Bledy.h"
#include "tests/LosoweDrzewo.h"
#include "tests/Probki.h"
#include "ztok/platform/Kodowania.h"

namespace {

using namespace ztok;
using probki::TAdres;
using probki::TWszystko;
using testy::Blad;

using TArg = std::vector<TArgument>;
constexpr TRozmiarLiter kWazny = rlRozmLiterWazny;

class Sciezki : public ::testing::Test {
  protected:
    void SetUp() override {
        probki::Rejestruj();
        o.SetI(7);
        o.SetNazwa(u"Korzeń");
        o.GetAdres().SetUlica(u"Długa");
        for (const int n : {1, 2, 3}) {
            TAdres& a = o.GetAdresy().Dopisz();
            a.SetNumer(n);
            a.SetUlica(n == 2 ? u"A; B" : u"Inna");
        }
        static_cast<TWszystko*>(o.GetRozne().Dodaj(Utworz<TWszystko>()))->SetI(9);
        o.GetPodrzedne().Dopisz().GetAdresy().Dopisz().SetNumer(5);
        o.SetWskaznik(&o);
        o.SetReferencja(static_cast<TAdres*>(o.GetAdresy().Obiekty(1)));
        o.GetPowiazane().DodajObiekt(&o.GetAdres(), MaxInt);
    }
    TWszystko o;
};

TEST_F(Sciezki, TablicaSciezek) {
    enum TStan { jest, bezObiektu, zla }; // there; a good path through what does not exist; a bad path
    const auto sprawdz = [this](std::u16string_view sciezka, TStan stan, std::u16string_view oczekiwane) {
        SCOPED_TRACE(Utf8ZUtf16(sciezka));
        TObiektBazowy* obiekt = nullptr;
        int nr = -2;
        EXPECT_EQ(o.ObiektIPole(sciezka, false, obiekt, nr), stan == jest);
        EXPECT_EQ(obiekt != nullptr, stan == jest);
        EXPECT_EQ(o.SciezkaIstnieje(sciezka), stan == jest);
        const TKlasa* klasa = nullptr;
        int nrKlasy = -2;
        const bool zKlas = o.KlasaIPole(sciezka, klasa, nrKlasy);
        if (stan == jest && zKlas) {
            EXPECT_EQ(klasa, obiekt->Klasa());
            EXPECT_EQ(nrKlasy, nr);
        }
        if (sciezka.find(u"Rozne") != 0 && sciezka.find(u"Powiazane") != 0) {
            EXPECT_EQ(zKlas, stan != zla); // the classes do not say what a collection holds
        }
        const auto tekst = [&](std::u16string_view operacja, auto dzialanie) {
            std::u16string wynik;
            const std::u16string blad = Blad([&] { wynik = dzialanie(); });
            EXPECT_EQ(blad, stan == zla ? std::u16string(operacja).append(u": Błędna ścieżka : ").append(sciezka)
                                        : u"(no error)");
            EXPECT_EQ(wynik, oczekiwane);
        };
        tekst(u"GetTekstowoWgSciezki", [&] { return o.GetTekstowoWgSciezki(sciezka); });
        tekst(u"GetVariantowoWgSciezki", [&] { return o.GetVariantowoWgSciezki(sciezka).JakoTekst16(); });
        EXPECT_EQ(o.DajTrescWgSciezki(sciezka), oczekiwane);
        if (stan != jest)
            tekst(u"ZerujPole", [&] {
                o.ZerujPole(sciezka);
                return std::u16string();
            });
    };
    const std::u16string_view dobre[] = {u"I",
                                         u"7",
                                         u"nAZWA",
                                         u"Korzeń",
                                         u"Adres.Ulica",
                                         u"Długa",
                                         u"ADRES.ulica",
                                         u"Długa",
                                         u"Adresy[1].Numer",
                                         u"2",
                                         u"Adresy[1]Numer",
                                         u"2",
                                         u"Adresy.[1].Numer",
                                         u"2",
                                         u"Adresy[max].Numer",
                                         u"3",
                                         u"Rozne[0].I",
                                         u"9",
                                         u"Adresy[Numer=2;Ulica='A; B'].Numer",
                                         u"2",
                                         u"Adresy[Ulica=Inna].Numer",
                                         u"3",
                                         u"Referencja.Ulica",
                                         u"A; B",
                                         u"Podrzedne[0].Adresy[0].Numer",
                                         u"5",
                                         u"Wskaznik.Wskaznik.Adres.Ulica",
                                         u"Długa",
                                         u"S",
                                         u"",
                                         u"Powiazane[0].Ulica",
                                         u"Długa",
                                         u"Adres.Miasto",
                                         u""};
    for (std::size_t i = 0; i < std::size(dobre); i += 2)
        sprawdz(dobre[i], jest, dobre[i + 1]);
    for (const std::u16string_view s : {u"Adresy[3].Numer", u"Adresy[-1].Numer", u"Adresy[Numer=4].Ulica",
                                        u"Podrzedne[0].Adres.Ulica", u"Podrzedne[0].Wskaznik.I"})
        sprawdz(s, bezObiektu, u"");
    for (const std::u16string_view s : {u"Nie", u"Adres.Nie", u"Adresy[0].Nie", u"Adresy.Numer", u"Adresy[0", u"[0].I",
                                        u"I.J", u"Adres..Ulica", u".I", u"Adres[0].Ulica", u"Rozne[1].I"})
        sprawdz(s, zla, u"");
    TObiektBazowy* obiekt = nullptr;
    int nr = 0;
    EXPECT_TRUE(o.ObiektIPole(u"", false, obiekt, nr));
    EXPECT_EQ(obiekt, &o);
    EXPECT_EQ(nr, CalyObiekt);
    EXPECT_EQ(o.DajPoleONazwie(u"Adresy[1]"), o.GetAdresy().Obiekty(1));
    EXPECT_EQ(o.GetAdresy().PoleONazwie(u"[1]"), o.GetAdresy().Obiekty(1));
    EXPECT_NE(o.DrzewoObiektu().find(u"Referencja = -> Adresy[1]\r\n"), std::u16string::npos);
}

TEST_F(Sciezki, ZapisWgSciezki) {
    const std::u16string_view sciezki[] = {u"S",
                                           u"Podrzedne[0].Adres.Ulica",
                                           u"Adresy[Numer=8].Miasto", // good
                                           u"Adresy[9].Numer",
                                           u"Wskaznik",
                                           u"referencja",
                                           u"Podrzedne[0].Wskaznik.I",
                                           u"",
                                           u"Adresy[0]",
                                           u"Adres.Nie",
                                           u"Adresy[Brak=1].Numer"};
    for (std::size_t i = 0; i < std::size(sciezki); ++i)
        for (const bool tekstowo : {true, false}) {
            const std::u16string sciezka(sciezki[i]);
            const std::u16string blad = Blad([&] {
                tekstowo ? o.SetTekstowoWgSciezki(sciezka, u"12") : o.SetVariantowoWgSciezki(sciezka, TWariant(13));
            });
            const std::u16string operacja = tekstowo ? u"SetTekstowoWgSciezki" : u"SetVariantowoWgSciezki";
            EXPECT_EQ(blad, i < 3 ? u"(no error)" : operacja + u": Błędna ścieżka : " + sciezka);
            if (i < 3) {
                EXPECT_EQ(o.GetTekstowoWgSciezki(sciezka), tekstowo ? u"12" : u"13");
            }
        }
    EXPECT_EQ(o.GetAdresy().IleObiektow(), 4); // made once, found then; refused conditions leave nothing behind
    EXPECT_EQ(o.GetWskaznik(), &o);
    EXPECT_EQ(o.GetReferencja(), o.GetAdresy().Obiekty(1));
}

// Every object that the tree owns, with its path from any object above it.
void Obejdz(TObiektBazowy& obiekt, const std::function<void(TObiektBazowy&)>& co) {
    co(obiekt);
    if (obiekt.Klasa()->Ma(ckListaZObiektami)) {
        for (TObiektBazowy* element : static_cast<TListaBazowa&>(obiekt))
            Obejdz(*element, co);
    } else if (obiekt.Klasa()->Ma(ckObiekt)) {
        auto& zPolami = static_cast<TObiekt&>(obiekt);
        for (int nr = 0; nr <= zPolami.OstUzywanePole(); ++nr)
            if (TPole* pole = zPolami.Pole(nr); pole != nullptr && pole->Klasa()->Ma(ckObiektBazowy))
                Obejdz(static_cast<TObiektBazowy&>(*pole), co);
    }
}

TEST_F(Sciezki, WlasnaSciezkaProwadziDoObiektu) {
    int ile = 0;
    for (std::uint32_t ziarno = 0; ziarno < 40; ++ziarno) {
        TWszystko korzen;
        probki::TLosoweDrzewo(ziarno).Wypelnij(korzen, 4);
        Obejdz(korzen, [&](TObiektBazowy& x) {
            ++ile;
            for (TObiektBazowy* od = &x; od != nullptr; od = od->Rodzic())
                ASSERT_EQ(od->PoleONazwie(x.DajSciezkeDoSiebie(od)), &x);
            const std::u16string sciezka = x.DajSciezkeDoSiebie();
            const TKlasa* klasa = nullptr;
            int nr = -2;
            if (sciezka.find(u"Rozne") != std::u16string::npos)
                return;
            TObiektBazowy* obiekt = nullptr;
            int nrObiektu = -2;
            ASSERT_TRUE(korzen.KlasaIPole(sciezka, klasa, nr));
            ASSERT_TRUE(korzen.ObiektIPole(sciezka, false, obiekt, nrObiektu));
            ASSERT_EQ(klasa, obiekt->Klasa());
            ASSERT_EQ(nr, nrObiektu);
        });
    }
    EXPECT_GT(ile, 1000);
}

TEST_F(Sciezki, DowolnyElement) {
    probki::TListaWszystkich& podrzedne = o.GetPodrzedne();
    podrzedne.Dopisz();
    for (const int n : {6, 7})
        podrzedne[1]->GetAdresy().Dopisz().SetNumer(n);
    o.GetRozne().Dodaj(Utworz<TAdres>())->SetTekstowoWgSciezki(u"Numer", u"9");
    o.GetRozne().Dodaj(Utworz<probki::TListaAdresow>());
    std::u16string dlugi = u"Adresy";
    for (int i = 0; i < 300; ++i)
        dlugi += u"[?]";
    const auto sprawdz = [](const TObiektBazowy& obiekt, int wynik, int cecha, auto... sciezki) { // 9: a bad path
        for (const std::u16string_view sciezka : {std::u16string_view(sciezki)...}) {
            SCOPED_TRACE(Utf8ZUtf16(sciezka));
            std::int32_t jest = 9;
            const std::u16string blad =
                Blad([&] { jest = obiekt.PorPoleONazwieZCecha(sciezka, cecha, kWazny, LocaleWin1250); });
            EXPECT_EQ(jest, wynik);
            EXPECT_EQ(blad.find(u"PorPoleONazwieZCecha: Błędna ścieżka : ") == 0, wynik == 9);
            EXPECT_EQ(obiekt.MaCechy(TArg{TArgument(sciezka)}, TArg{TArgument(cecha)}, kWazny), wynik == 0);
            if (wynik != 9) {
                EXPECT_EQ(obiekt.PoleMaCeche(sciezka, cecha, kWazny), wynik == 0);
                EXPECT_EQ(obiekt.PorownajCechy(TArg{TArgument(sciezka)}, TArg{TArgument(cecha)}, kWazny, LocaleWin1250),
                          wynik);
            }
            EXPECT_EQ(obiekt.SciezkaIstnieje(sciezka), wynik != 9 && sciezka.find(u'?') == std::u16string_view::npos);
        }
    };
    TListaBazowa& lista = o.GetAdresy();
    sprawdz(o, 0, 3, u"Adresy[?].Numer", u"adresy.[?]Numer", u"Wskaznik.Adresy[?].Numer");
    sprawdz(o, 1, 4, u"Adresy[?].Numer");
    sprawdz(o, -1, 0, u"Adresy[?].Numer");
    sprawdz(o, 0, 7, u"Podrzedne[?].Adresy[?].Numer", u"Podrzedne[?].Adresy[Max].Numer");
    sprawdz(o, -1, 4, u"Podrzedne[?].Adresy[?].Numer", u"Podrzedne[1].Adresy[?].Numer"); // as the first element
    sprawdz(o, 0, 9, u"Rozne[?].I", u"Rozne[?].Numer"); // each of a class that knows it
    sprawdz(o, -1, 8, u"Rozne[?].Numer");
    // No element, a list that was never made, nothing behind a pointer.
    sprawdz(o, 1, 9, u"Podrzedne[I=77].Adresy[?].Numer", u"Podrzedne[0].Podrzedne[?].I", u"Podrzedne[0].Rozne[?].I",
            u"Podrzedne[0].Wskaznik.Adresy[?].Numer", u"Rozne[2][?].Numer", u"Rozne[?].Adresy[?].X");
    sprawdz(o, 9, 1, u"Adres[?].Numer", u"I[?]", u"[?].Numer", u"Nie[?].Numer", u"Adresy[?].Nie", u"Rozne[?].Nie",
            dlugi);
    sprawdz(lista, 0, 2, u"[?].Numer", u"[1].Numer");
    sprawdz(lista, -1, 0, u"[max].Numer", u"[?].Numer");
    sprawdz(lista, 9, 1, u"[?].Nie", u"Numer");
    EXPECT_TRUE(lista.MaCechy(TArg{u"[1].Numer", u"[?].Ulica"}, TArg{2, u"Inna"}, kWazny));
    EXPECT_FALSE(lista.MaCechy(TArg{u"[1].Numer", u"[7].Ulica"}, TArg{2, u"Inna"}, kWazny));
    EXPECT_FALSE(lista.PoleNrMaCeche(3, 0, kWazny)); // an index without an element is no error
    EXPECT_EQ(lista.PorPoleNrZCecha(-2, 0, kWazny, LocaleWin1250), 1);
    EXPECT_TRUE(o.GetLiczby().MaCechy(TArg{-1}, TArg{u""}, kWazny));

    o.ZerujPole(u"Rozne[?].Numer");
    sprawdz(o, 0, 0, u"Rozne[1].Numer"); // nothing there counts as the default value
    sprawdz(o, 0, 9, u"Rozne[0].I");
    o.ZerujPole(u"Podrzedne[?].Adresy[?].Numer");
    sprawdz(o, 1, 7, u"Podrzedne[?].Adresy[?].Numer");
    o.ZerujPole(u"Podrzedne[?].Adresy[?]");
    EXPECT_TRUE(podrzedne[1]->GetAdresy().ListaPusta());
    EXPECT_EQ(podrzedne.IleObiektow(), 2);
    o.ZerujPole(u"Podrzedne[0].Podrzedne[?].I"); // nothing there
    EXPECT_EQ(podrzedne[0]->Pole(TWszystko::nrPodrzedne), nullptr);
    lista.ZerujPole(u"[?]");
    EXPECT_EQ(lista.IleObiektow(), 0);
    EXPECT_EQ(o.GetReferencja(), nullptr);
}

class TMiarka : public TObiekt {
    ZTOK_OBIEKT(TMiarka, TObiekt, (0, A, String), (1, B, RawByteString), (2, C, CDATA), (3, W, Obiekt<TAdres>))
    [[nodiscard]] int RozmPolaNr(int nr) const override { return nr == 0 ? 4 : TObiekt::RozmPolaNr(nr); }
};

TEST_F(Sciezki, PrzycinanieTekstow) {
    TMiarka m;
    const auto ustaw = [&] {
        m.SetA(u"  abcdef ");
        m.SetB("  x ");
        m.SetC(u"   ");
        m.GetW().SetUlica(u" u ");
    };
    ustaw();
    m.PrzytnijPolaWgRozm(false);
    EXPECT_EQ(m.GetA(), u"  ab");
    EXPECT_EQ(m.GetB(), "  x ");
    ustaw();
    m.PrzytnijPolaWgRozm(true);
    EXPECT_EQ(m.GetA(), u"abcd");
    EXPECT_FALSE(m.PoleNiepuste(TMiarka::nrC)); // nothing is left of it
    EXPECT_EQ(m.GetW().GetUlica(), u"u");
    ustaw();
    m.TrymujPolaTekstowe(false);
    EXPECT_EQ(m.GetA(), u"abcdef");
    EXPECT_EQ(m.GetB(), "x");
    EXPECT_EQ(m.GetW().GetUlica(), u" u ");
    m.TrymujPolaTekstowe(true);
    EXPECT_EQ(m.GetW().GetUlica(), u"u");
    EXPECT_FALSE(m.SaDaneUnicode(CalyObiekt));
    m.GetW().SetMiasto(u"ż東");
    EXPECT_TRUE(m.SaDaneUnicode(CalyObiekt));
    EXPECT_FALSE(m.SaDaneUnicode(TMiarka::nrA));
    EXPECT_EQ(m.OpisTekstowy(), u"Miarka: A=abcdef, B=x");
}

TEST_F(Sciezki, OperacjePoListachPol) {
    const TWszystko& z = o;
    // What remains of field 3, 8, the nested street and number, and the list, after each operation.
    const auto stan = [](const TWszystko& w) {
        const TAdres* a = w.GetAdres();
        return u"" + std::u16string(w.GetI() == 7 ? u"I" : u"-") + (w.GetNazwa().empty() ? u"-" : u"N") +
               (a == nullptr || a->GetUlica().empty() ? u"-" : u"U") +
               (a == nullptr || a->GetNumer() == 0 ? u"-" : u"n") +
               (w.GetAdresy() == nullptr || w.GetAdresy()->ListaPusta() ? u"-" : u"L");
    };
    o.GetAdres().SetNumer(4);
    const TKlasa* const klasy[] = {TPoleInteger::KlasaStatyczna(), probki::TListaAdresow::KlasaStatyczna()};
    const struct {
        const char* nazwa;
        TArg pola;
        std::u16string zeruj, oprocz, kopiuj, kopiujOprocz;
    } tablica[] = {
        {"none", {}, u"INUnL", u"-----", u"-----", u"INUnL"},
        {"number", {3}, u"-NUnL", u"I----", u"I----", u"-NUnL"},
        {"name", {u"nazwa", 3}, u"--UnL", u"IN---", u"IN---", u"--UnL"},
        {"whole object", {u"Adres"}, u"IN--L", u"--Un-", u"--Un-", u"IN--L"},
        {"part", {u"Adres.Ulica"}, u"IN-nL", u"--U--", u"--U--", u"IN-nL"},
        {"parts", {u"Adres.Ulica", u"Adres.Numer", std::string("I")}, u"-N--L", u"I-Un-", u"I-Un-", u"-N--L"},
        {"part and whole", {u"Adres.Ulica", 13}, u"IN--L", u"--Un-", u"--Un-", u"IN--L"},
        {"list", {14}, u"INUn-", u"----L", u"----L", u"INUn-"},
        {"element", {u"Adresy[0].Numer"}, u"INUnL", u"----L", u"----L", u"INUn-"}, // else a list counts as a whole
        {"everything", {u""}, u"-----", u"INUnL", u"INUnL", u"-----"},
    };
    for (const auto& w : tablica) {
        SCOPED_TRACE(w.nazwa);
        TWszystko x;
        const auto od = [&](bool pelny) -> TWszystko& {
            x.ZerujDane();
            if (pelny)
                x.KopiujDane(z);
            return x;
        };
        od(true).ZerujDanePol(w.pola);
        EXPECT_EQ(stan(x), w.zeruj);
        od(true).ZerujDaneOprocz(w.pola);
        EXPECT_EQ(stan(x), w.oprocz);
        od(false).KopiujDanePol(z, w.pola);
        EXPECT_EQ(stan(x), w.kopiuj);
        od(true).KopiujDanePol(z, w.pola, true);
        EXPECT_EQ(stan(x), w.kopiuj);
        od(false).KopiujDaneOprocz(z, w.pola);
        EXPECT_EQ(stan(x), w.kopiujOprocz);
    }
    TWszystko x;
    x.KopiujDaneKlas(z, klasy);
    EXPECT_EQ(stan(x), u"I---L");
    x.KopiujDanePol(z, TArg{u"Adresy", u"Referencja", u"Powiazane"});
    EXPECT_EQ(x.GetReferencja(), x.GetAdresy().Obiekty(1)); // what was copied along is pointed at
    EXPECT_TRUE(o.GetAdres().MaRefOd(&x.GetPowiazane()));   // what was not stays where it is
    const struct {
        std::u16string kod;
        std::function<void(const TArg&)> operacja;
    } operacje[] = {{u"ZDP", [&](const TArg& p) { x.ZerujDanePol(p); }},
                    {u"ZDO", [&](const TArg& p) { x.ZerujDaneOprocz(p); }},
                    {u"KDP", [&](const TArg& p) { x.KopiujDanePol(z, p); }},
                    {u"KDO", [&](const TArg& p) { x.KopiujDaneOprocz(z, p); }}};
    for (const auto& w : operacje) {
        EXPECT_EQ(Blad([&] { w.operacja(TArg{2.5}); }), w.kod + u": Błędny typ indeksu");
        EXPECT_EQ(Blad([&] { w.operacja(TArg{u"Nie.Ma"}); }),
                  (w.kod == u"ZDP" ? u"ZerujPole" : w.kod) + u": Błędna ścieżka : Nie.Ma");
    }
    EXPECT_EQ(stan(x), u"I---L");

    // The same on lists, element by element; elements of the list's class move, others are copied.
    probki::TListaAdresow lista;
    lista.KopiujDanePol(o.GetAdresy(), TArg{1}, false);
    EXPECT_EQ(lista.IleObiektow(), 3);
    EXPECT_EQ(lista.GetTekstowoWgSciezki(u"[1].Numer"), u"2");
    EXPECT_EQ(lista.GetTekstowoWgSciezki(u"[1].Ulica"), u"");
    lista.KopiujDaneOprocz(o.GetAdresy(), TArg{1});
    EXPECT_EQ(lista.Porownaj(o.GetAdresy()), 0);
    TObiektBazowy* pierwszy = lista.Obiekty(0);
    EXPECT_TRUE(x.GetAdresy().PrzepnijLubKopiuj(lista));
    EXPECT_EQ(x.GetAdresy().Obiekty(0), pierwszy);
    EXPECT_EQ(pierwszy->Rodzic(), &x.GetAdresy());
    EXPECT_EQ(x.GetReferencja(), nullptr);
    EXPECT_TRUE(lista.ListaPusta());
    EXPECT_FALSE(x.GetPodrzedne().PrzepnijLubKopiuj(x.GetPodrzedne()));
}

TEST_F(Sciezki, ZKlasyIJakoMaska) {
    const TKlasa* klasa = nullptr;
    int nr = -2;
    EXPECT_TRUE(TObiektBazowy::KlasaIPole(TWszystko::KlasaStatyczna(), u"Podrzedne[?].Adres.Numer", klasa, nr));
    EXPECT_EQ(klasa, TAdres::KlasaStatyczna());
    EXPECT_EQ(nr, 1);
    EXPECT_TRUE(TListaBazowa::KlasaIPole(probki::TListaAdresow::KlasaStatyczna(), u"[0]", klasa, nr));
    EXPECT_EQ(klasa, TAdres::KlasaStatyczna());
    EXPECT_FALSE(TObiektBazowy::KlasaIPole(nullptr, u"", klasa, nr));
    // An object's value by mask is what stands at the path; a pointer's is its target's.
    EXPECT_EQ(o.WartWgMaski(u"Adres.Ulica"), u"Długa");
    EXPECT_EQ(o.Pole(TWszystko::nrReferencja)->WartWgMaski(u"Numer"), u"2");
    EXPECT_EQ(o.Pole(TWszystko::nrReferencja)->WartWgMaski(u""), u"Adres: Ulica=A; B, Numer=2");
    EXPECT_EQ(o.GetAdresy().WartWgMaski(u"[0].Numer"), u"1");
    EXPECT_EQ(o.WartWgMaski(u"Nie"), u"");
}

// Whatever a path says, no number of it becomes an address, and its length is no depth of the stack.
TEST_F(Sciezki, ZlosliweSciezki) {
    for (const std::u16string_view s : {u"Podrzedne[Wskaznik=4660].I", u"Podrzedne[I=3;referencja=4660].I"})
        EXPECT_EQ(Blad([&] { o.SetTekstowoWgSciezki(s, u"1"); }).find(u"SetTekstowoWgSciezki: Błędna ścieżka"), 0U);
    EXPECT_EQ(Blad([&] { o.GetPodrzedne().DajElemListy(u"Wskaznik=4660", true); }),
              u"WD: Błędne podpole = \"Wskaznik\"");
    EXPECT_EQ(o.GetPodrzedne().IleObiektow(), 1);
    std::u16string wGlab;
    for (int i = 0; i < 200000; ++i)
        wGlab += u"[0]";
    TListaWskObiektow wkolko;
    wkolko.DodajObiekt(&wkolko, 0);
    EXPECT_FALSE(wkolko.SciezkaIstnieje(wGlab));
    EXPECT_TRUE(wkolko.SciezkaIstnieje(wGlab.substr(0, 600)));
    const auto przezWskaznik = [](int kroki) {
        std::u16string tekst;
        while (kroki-- > 0)
            tekst += u"Wskaznik.";
        return tekst + u"I";
    };
    EXPECT_EQ(o.GetTekstowoWgSciezki(przezWskaznik(200)), u"7");
    EXPECT_FALSE(o.SciezkaIstnieje(przezWskaznik(200000)));
}

// Part of a nested object that the source, or the target, has not.
TEST_F(Sciezki, CzesciKtorychNieMa) {
    const TArg czesc = {u"Adres.Ulica"};
    const auto stan = [](const TWszystko& w) {
        const TAdres* a = w.GetAdres();
        return a == nullptr ? u"brak" : a->GetUlica() + (a->GetNumer() == 0 ? u"" : u"+");
    };
    const struct {
        bool zrodlo, cel;
        std::u16string_view pol, oprocz;
    } tablica[] = {{true, true, u"zrodlo+", u"cel+"}, {false, true, u"+", u"cel"}, {true, false, u"zrodlo", u"+"}};
    for (const auto& w : tablica)
        for (const bool oprocz : {false, true}) {
            TWszystko zrodlo;
            TWszystko cel;
            if (w.zrodlo)
                zrodlo.WpiszDane({u"Adres.Ulica", u"Adres.Numer"}, {u"zrodlo", 1});
            if (w.cel)
                cel.WpiszDane({u"Adres.Ulica", u"Adres.Numer"}, {u"cel", 2});
            if (oprocz)
                cel.KopiujDaneOprocz(zrodlo, czesc);
            else
                cel.KopiujDanePol(zrodlo, czesc);
            EXPECT_EQ(stan(cel), oprocz ? w.oprocz : w.pol) << w.zrodlo << w.cel << oprocz;
            EXPECT_EQ(cel.PorownajOproczPol(zrodlo, czesc, kWazny), oprocz || !w.cel ? oprocz ? 0 : -1 : 1)
                << w.zrodlo << w.cel << oprocz;
        }
    TWszystko pelny;
    pelny.SetI(5);
    const TKlasa* const klasy[] = {TPoleInteger::KlasaStatyczna()};
    pelny.KopiujDaneKlas(TWszystko(), klasy); // a field that the source never made is empty in the copy
    EXPECT_FALSE(pelny.PoleNiepuste(TWszystko::nrI));
    EXPECT_EQ(Blad([&] { static_cast<void>(o.PorownajOproczPol(pelny, TArg{u"Nie"}, kWazny)); }),
              u"POP: Błędna ścieżka : Nie");
}

} // namespace
