#include "tests/Testy.h"
#include "tests/Watki.h"

#include "ztok/platform/TListaNapisow.h"
#include "ztok/platform/TListaTS.h"

namespace ztok {
namespace {

struct TBezWielkosci {
    bool operator()(const std::u16string& a, const std::u16string& b) const { return PorownajBezWielkosci(a, b) < 0; }
};

TEST(ListaNapisow, PosortowanaZgodnaZMapa) {
    std::mt19937 los(5);
    constexpr std::u16string_view Znaki = u"aAbBzZ_[łŁ";
    TListaNapisow lista(true);
    std::map<std::u16string, std::uintptr_t, TBezWielkosci> model;
    for (std::uintptr_t i = 0; i < 3000; ++i) {
        std::u16string napis;
        for (std::size_t ile = los() % 4; ile > 0; --ile)
            napis += Znaki[los() % Znaki.size()];
        std::size_t pozycja = 0;
        ASSERT_EQ(lista.Znajdz(napis, pozycja), model.contains(napis));
        if (los() % 3 == 0) {
            if (const std::ptrdiff_t gdzie = lista.IndeksNapisu(napis); gdzie >= 0)
                lista.Usun(static_cast<std::size_t>(gdzie));
            model.erase(napis);
        } else {
            // An element that is there keeps its spelling and its value.
            ASSERT_EQ(lista.Dodaj(napis, i), pozycja);
            model.try_emplace(napis, i);
        }
    }
    ASSERT_EQ(lista.Ile(), model.size());
    auto oczekiwany = model.begin();
    for (const TListaNapisow::TElement& element : lista) {
        EXPECT_EQ(element.napis, oczekiwany->first);
        EXPECT_EQ(element.wartosc, oczekiwany++->second);
    }
}

TEST(ListaNapisow, ZwyklaTrzymaKolejnoscIPowtorzenia) {
    TListaNapisow lista;
    lista.Dodaj(u"b", 1);
    lista.Dodaj(u"a", 2);
    lista.Wstaw(0, u"B", 3);
    lista.DodajWszystkie(lista);
    EXPECT_EQ(lista.JakoTekst(u"|"), u"B|b|a|B|b|a");
    EXPECT_EQ(lista.IndeksNapisu(u"A"), 2);
    EXPECT_EQ(lista.IndeksNapisu(u"x"), -1);
    lista.Usun(0);
    EXPECT_EQ(lista.JakoTekst(), u"b\r\na\r\nB\r\nb\r\na");
    lista.Zeruj();
    EXPECT_EQ(lista.JakoTekst(), u"");
    // Beyond ASCII letter case counts; between ASCII letters the folded one decides.
    EXPECT_EQ(PorownajBezWielkosci(u"AB", u"ab"), 0);
    EXPECT_NE(PorownajBezWielkosci(u"Ł", u"ł"), 0);
    EXPECT_LT(PorownajBezWielkosci(u"a", u"aA"), 0);
    EXPECT_GT(PorownajBezWielkosci(u"B", u"a"), 0);
}

TEST(ListaTS, WieleWatkowIBlokadaWielokrotna) {
    TListaTS<int> lista;
    testy::WWatkach(4, [&lista](int w) {
        for (int i = 0; i < 500; ++i) {
            const auto elementy = lista.LockList();
            const std::size_t bylo = elementy->size();
            lista.Add(w * 1000 + i); // the same thread again
            EXPECT_EQ(elementy->size(), bylo + 1);
        }
    });
    EXPECT_EQ(lista.Kopia().size(), 2000U);
    EXPECT_TRUE(lista.Remove(3499));
    EXPECT_FALSE(lista.Remove(3499));

    TSekcjaKrytyczna sekcja;
    const TBlokada blokada(sekcja);
    testy::WWatkach(1, [&sekcja](int) { EXPECT_FALSE(sekcja.SprobujWejsc()); });
    EXPECT_TRUE(sekcja.SprobujWejsc());
    sekcja.Wyjdz();
}

} // namespace
} // namespace ztok
