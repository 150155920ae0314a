#include "tests/Testy.h"

#include "LosoweDrzewo.h"

using namespace ztok;
using namespace probki;
using strumienie::Szesnastkowo;
using strumienie::Zapisz;
using testy::Blad;
using testy::Zglasza;

namespace {

using TTeksty = std::vector<std::u16string>;

// Random lists of a few values, against a vector that goes through the same steps.
template <class L> void PorownajZModelem(std::uint32_t ziarno, const std::vector<decltype(L().Wartosc(0))>& zasob) {
    using W = decltype(L().Wartosc(0));
    std::mt19937 los(ziarno);
    const auto z = [&](std::size_t ile) { return static_cast<std::int32_t>(los() % ile); };
    L lista;
    std::vector<W> model;
    for (int krok = 0; krok < 3000; ++krok) {
        const std::int32_t i = krok % 50 == 0 ? MaxInt : z(model.size() + 3) - 1;
        const bool jest = i >= 0 && i < lista.Ile();
        const W wartosc = zasob[static_cast<std::size_t>(z(zasob.size()))];
        switch (z(model.size() > 20 ? 4 : 6)) {
        case 0:
        case 1:
            ASSERT_EQ(lista.Usun(i), jest);
            if (jest)
                model.erase(model.begin() + i);
            break;
        case 2:
            ASSERT_EQ(lista.UstawWartosc(i, wartosc), jest);
            if (jest)
                model[static_cast<std::size_t>(i)] = wartosc;
            break;
        case 3: {
            const std::int32_t od = std::max(std::min(i, lista.Ile()), 0);
            const auto gdzie = std::find(model.begin() + od, model.end(), wartosc);
            ASSERT_EQ(lista.Znajdz(wartosc, i), gdzie == model.end() ? -1 : gdzie - model.begin());
            break;
        }
        case 4: {
            const bool wstawi = jest || i == lista.Ile();
            ASSERT_EQ(lista.Wstaw(i, wartosc), wstawi);
            if (wstawi)
                model.insert(model.begin() + i, wartosc);
            break;
        }
        default:
            ASSERT_EQ(lista.Dodaj(wartosc), static_cast<std::int32_t>(model.size()));
            model.push_back(wartosc);
        }
        ASSERT_EQ(lista.Wartosci(), model);
        ASSERT_EQ(lista[i], i >= 0 && i < lista.Ile() ? model[static_cast<std::size_t>(i)] : W());
        // Text and variant forms give the same list again.
        L zTekstu, zWariantu;
        zTekstu.SetJakoString(lista.GetJakoString());
        ASSERT_EQ(zTekstu.Wartosci(), model) << ziarno;
        zWariantu.SetJakoVariant(lista.GetJakoVariant());
        ASSERT_EQ(zWariantu.Porownaj(lista), 0);
    }
}

TEST(PolaListowe, DzialajaJakWektor) {
    PorownajZModelem<TPoleIntList>(1, {0, 1, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()});
    PorownajZModelem<TPoleDoubleList>(2, {0, -2.5, 1e300, std::numeric_limits<double>::infinity()});
    const TTeksty teksty = {u"",  u"a",  u"\"",   u"\"a\"\"b", u"a\r\nb", u"\n",   u"x;y",
                            u" ", u"\r", u"żółć", u"a\"",      u"\xD800", u"\"\"", u"\"\r\n\""};
    PorownajZModelem<TPoleStrList>(3, teksty);
    PorownajZModelem<TPoleWideStrList>(4, teksty);
}

TEST(PolaListowe, WartosciITekst) {
    TPoleIntList liczby;
    EXPECT_FALSE(liczby.PoleNiepuste(CalyObiekt));
    liczby.SetJakoString(u"");
    EXPECT_TRUE(liczby.PoleNiepuste(CalyObiekt));
    EXPECT_EQ(liczby.Ile(), 0);
    liczby.SetJakoString(u" 3; -1;2 ");
    EXPECT_EQ(liczby.OpisTekstowy(), u"3; -1; 2");
    EXPECT_TRUE(Zglasza<EBladKonwersji>([&] { liczby.SetJakoString(u"1;x"); }));
    EXPECT_EQ(liczby.Wartosci(), (std::vector<int>{3, -1, 2})); // as they were
    liczby.SetJakoVariant(TWariant::Null());
    EXPECT_FALSE(liczby.PoleNiepuste(CalyObiekt));

    TPoleDoubleList ulamki;
    const double nan = std::nan("");
    ulamki.UstawWartosci({2, nan, -1.5, 10});
    EXPECT_EQ(ulamki.Znajdz(nan), -1);
    ulamki.Sortuj(rsMalejaco);
    EXPECT_EQ(ulamki.GetJakoString(), u"10;2;-1,5;NAN");
    ulamki.Sortuj();
    EXPECT_EQ(ulamki.GetJakoString(), u"-1,5;2;10;NAN");

    TPoleStrList teksty, inne;
    teksty.UstawWartosci({u"Żuk", u"żaba", u"Ala", u"ala"});
    teksty.Sortuj();
    EXPECT_EQ(teksty.GetJakoString(), u"Ala\r\nala\r\nŻuk\r\nżaba"); // the code page's order
    EXPECT_EQ(teksty.PorownajZCecha(TArgument(u"ALA"), rlRozmLiterNiewazny, LocaleWin1250), -1);
    inne.UstawWartosci({u"ALA", u"ala", u"Żuk", u"żaba"});
    EXPECT_EQ(teksty.Porownaj(inne), 0);
    EXPECT_EQ(teksty.PorownajZObiektem(inne, rlRozmLiterWazny), 1);
    inne.Usun(3);
    EXPECT_EQ(teksty.Porownaj(inne), 1);
    EXPECT_EQ(inne.Porownaj(teksty), -1);
    teksty.SetJakoString(u"a\n\"b\"\"\r\nc\"\r\nd\r\n");
    EXPECT_EQ(teksty.OpisTekstowy(), u"a; b\"  c; d"); // one line
    TPoleWideStrList szerokie;
    EXPECT_TRUE(Zglasza<EBladRzutowania>([&] { szerokie.KopiujDane(teksty); }));
    EXPECT_TRUE(Zglasza<EBladRzutowania>([&] { static_cast<void>(szerokie.Porownaj(teksty)); }));
}

TEST(PolaListowe, JakoPolaObiektu) {
    Rejestruj();
    const TWlasny<TWszystko> o = Utworz<TWszystko>();
    EXPECT_EQ(o->GetPoleStrList(23), nullptr);
    EXPECT_EQ(o->GetPoleWideStrList(24), nullptr);
    EXPECT_EQ(Zapisz(*o), std::string(1, '\0')); // reading made nothing
    TPoleStrList wzor;
    wzor.UstawWartosci({u" a ", u"ż"});
    TPoleWideStrList szerokie;
    szerokie.UstawWartosci({u"ż"});
    o->SetPoleStrList(23, wzor);
    o->GetLiczby().UstawWartosci({1, -2, 3});
    EXPECT_TRUE(o->GetMaWartosc(23));
    EXPECT_EQ(o->GetPoleStrList(23)->Wartosci(), wzor.Wartosci());
    EXPECT_TRUE(Zglasza<EBladRzutowania>([&] { o->SetPoleWideStrList(23, szerokie); }));
    EXPECT_EQ(Szesnastkowo(Zapisz(*o)),
              "03 00 00 A0 03 00 01 00 00 00 FE FF FF FF 03 00 00 00 02 00 03 20 61 20 02 C5 BC");
    TZapisywaczDanych ansi;
    ansi.OpcjeZapisu = ozWin1250;
    EXPECT_EQ(Szesnastkowo(Zapisz(wzor, &ansi)), "02 00 03 20 61 20 01 BF");
    EXPECT_EQ(Szesnastkowo(Zapisz(szerokie, &ansi)), "01 00 02 C5 BC");
    EXPECT_EQ(strumienie::Tekst(*o), "object TWszystko\r\nobject Liczby\r\n(1;-2;3)\r\nend\r\n"
                                     "object Teksty\r\n(\" a \";\r\n\"\xC5\xBC\")\r\nend\r\nend");
    EXPECT_TRUE(o->DrzewoObiektu().find(u"  1; -2; 3\r\n") != std::u16string::npos);
    o->PrzytnijPolaWgRozm(true);
    EXPECT_EQ(o->GetPoleStrList(23)->Wartosc(0), u"a");
    o->SetMaWartosc(23, false);
    EXPECT_EQ(o->GetPoleStrList(23)->Ile(), 0);
    EXPECT_FALSE(o->GetMaWartosc(23));
    o->SetPoleStrList(23, *o->GetPoleStrList(23)); // set to what it is: nothing, but set
    EXPECT_TRUE(o->GetMaWartosc(23));

    o->WpiszDane({21, u"Ulamki", 23, 24}, {TWariant::Tablica({4, u"5"}), u"1,5;2", &wzor, &szerokie});
    EXPECT_EQ(o->GetLiczby().GetJakoString() + u'|' + o->GetUlamki().GetJakoString(), u"4;5|1,5;2");
    EXPECT_EQ(o->GetTeksty().Porownaj(wzor), 0);
    EXPECT_EQ(o->GetTekstySzerokie().Porownaj(szerokie), 0);

    // Counts that the data cannot hold, in a stream that cannot tell how much is left.
    for (const char* wrogie :
         {"03 00 00 20 FF FF FF FF 01", "03 00 00 80 FF FF FF FF 01 61", "03 00 00 40 00 A0 00 00"}) {
        const TWlasny<TWszystko> kopia = Utworz<TWszystko>();
        strumienie::TOporny strumien(strumienie::Bajty(wrogie));
        EXPECT_NE(Blad([&] { kopia->WczytajZeStrumienia(strumien); }), u"(no error)") << wrogie;
    }
}

// Is told of every typed write.
class TZgloszenia : public TObiekt {
    ZTOK_OBIEKT(TZgloszenia, TObiekt, (0, Teksty, StrList), (1, Szerokie, WideStrList))
    void SetBylyZmiany(int nrPola) override {
        if (zmiana)
            zmiana(nrPola);
    }
    std::function<void(int)> zmiana;
};

TEST(PolaListowe, ZgloszenieZmianyMozeWszystko) {
    TZgloszenia o;
    TPoleStrList wzor;
    wzor.UstawWartosci({u"a", u"b"});
    const auto pisz = [&] { o.SetPoleStrList(0, wzor); };
    o.zmiana = [&](int nr) { o.UstawPole(nr, nullptr, true); }; // the field that was written
    pisz();
    EXPECT_EQ(o.GetPoleStrList(0), nullptr);
    o.zmiana = [&](int) { o.ZerujDane(); };
    pisz();
    EXPECT_EQ(o.GetPoleStrList(0), nullptr);
    o.zmiana = [&](int) { wzor.ZerujDane(); }; // the source
    pisz();
    EXPECT_EQ(o.GetTeksty().Ile(), 2);
    o.zmiana = [&](int nr) {
        EXPECT_EQ(nr, 1);
        ZTErrorFmt(u"zmiana", {});
    };
    EXPECT_EQ(Blad([&] { o.SetPoleWideStrList(1, TPoleWideStrList()); }), u"zmiana");
    EXPECT_TRUE(o.GetMaWartosc(1)); // it was written before it was told
    o.zmiana = nullptr;
}

} // namespace
