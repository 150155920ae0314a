#include "ztok/fields/TTekstPola.h"

#include "tests/Testy.h"

#include "tests/Probki.h"
#include "ztok/persist/TOdczytywaczDanych.h"

namespace {

using namespace ztok;

TEST(TekstPola, HoldsWhatAStringHoldsAlsoWhenGivenPartsOfItself) {
    std::mt19937 losowe(7);
    TTekstPola tekst;
    std::u16string wzor;
    for (int krok = 0; krok < 20000; ++krok) {
        if (losowe() % 3 == 0) {
            const std::size_t od = losowe() % (wzor.size() + 1);
            const std::size_t ile = losowe() % (wzor.size() - od + 1);
            tekst.Ustaw(tekst.Widok().substr(od, ile));
            wzor = wzor.substr(od, ile);
        } else {
            wzor.assign(losowe() % (krok % 50 == 0 ? 700 : 30), u' ');
            for (char16_t& znak : wzor)
                znak = static_cast<char16_t>(losowe());
            tekst.Ustaw(wzor);
        }
        ASSERT_EQ(tekst.Widok(), wzor);
    }
}

// Long texts are decoded by pieces: whatever stands at their ends, the result is that of one piece.
TEST(TekstPola, ReadsLongTextsAsShortOnes) {
    std::mt19937 losowe(20261121);
    for (int proba = 0; proba < 2000; ++proba) {
        const std::u16string znaki = strumienie::LosowyTekst(losowe, 200 + losowe() % 900, 2 + losowe() % 4);
        std::string bajtyUtf8 = Utf8ZUtf16(znaki);
        if (proba % 3 == 0)
            bajtyUtf8[losowe() % bajtyUtf8.size()] = static_cast<char>(losowe());
        std::string zapis;
        zapis += static_cast<char>(0x80U | bajtyUtf8.size() >> 8U);
        zapis += static_cast<char>(bajtyUtf8.size());
        zapis += bajtyUtf8;
        TZTReadOnlyRawByteStream strumien(zapis);
        TTekstPola tekst;
        TOdczytywaczDanych::WczytajUtf8(strumien, tekst, nullptr);
        ASSERT_EQ(tekst.Widok(), Utf16ZUtf8(bajtyUtf8));
    }
}

// Texts that were read or copied may stand in their object's block: they change, grow, leave with their field and
// outlive the object. Lengths lie around every bound: of texts in their field, of counts, of blocks, of write buffers.
TEST(TekstPola, OfAnObjectMayStandInItsBlock) {
    std::mt19937 losowe(20261121);
    const auto tekst = [&] {
        constexpr std::size_t kDlugosci[] = {0, 1, 2, 3, 4, 5, 6, 30, 60, 126, 127, 128, 200, 240, 0xFFF, 0x1000, 6000};
        const std::size_t ile = losowe() % 2 == 0 ? losowe() % 40 : kDlugosci[losowe() % std::size(kDlugosci)];
        constexpr char16_t kZnaki[] = u"abcxyzĄęŻ\u4E00\uFFFD";
        std::u16string wynik;
        for (std::size_t i = 0, rodzaj = losowe() % 3; i < ile; ++i)
            wynik += kZnaki[losowe() % (rodzaj == 0 ? 6 : std::size(kZnaki) - 1)];
        return wynik;
    };
    const TArgument inne[] = {5, 11, 12, 13, 14};
    for (int proba = 0; proba < 200; ++proba) {
        probki::TListaWszystkich zrodlo;
        for (std::size_t i = 0, ile = 1 + losowe() % 6; i < ile; ++i) {
            probki::TWszystko& o = zrodlo.Dopisz();
            for (const int nr : {8, 11, 12})
                if (losowe() % 4 != 0)
                    o.SetVariantowo(nr, TWariant(tekst()));
            o.SetL(static_cast<std::int64_t>(losowe()));
            o.SetD(0.5);
            if (losowe() % 3 == 0)
                o.GetAdres().SetUlica(tekst());
            o.GetAdresy().Dopisz().SetMiasto(tekst());
        }
        TZTMemoryStream strumien;
        zrodlo.ZapiszWStrumieniu(strumien);
        strumien.Seek(0, ESeek::Poczatek);
        probki::TListaWszystkich odczytane;
        odczytane.WczytajZeStrumienia(strumien);
        ASSERT_EQ(strumien.Pozostalo(), 0);
        ASSERT_EQ(zrodlo.PorownajZObiektem(odczytane, rlRozmLiterWazny), 0);
        TWlasny<TObiektBazowy> kopia = odczytane.KlonujObiekt(false);
        ASSERT_EQ(zrodlo.PorownajZObiektem(*kopia, rlRozmLiterWazny), 0);

        auto& lista = proba % 2 == 0 ? odczytane : static_cast<probki::TListaWszystkich&>(*kopia);
        std::vector<std::pair<TWlasny<TPole>, std::u16string>> wyjete;
        for (int krok = 0; krok < 20; ++krok) {
            const auto ktory = static_cast<std::int32_t>(losowe() % static_cast<std::size_t>(lista.IleObiektow()));
            probki::TWszystko& o = *lista[ktory];
            const std::u16string nowy = tekst();
            if (losowe() % 2 == 0) {
                o.SetNazwa(nowy);
                ASSERT_EQ(o.GetNazwa(), nowy);
            } else if (o.JestPole(8)) {
                std::u16string stary = o.GetNazwa();
                TWlasny<TPole> pole(o.Pole(8));
                o.UstawPole(8, nullptr, false);
                wyjete.emplace_back(std::move(pole), std::move(stary));
            }
            ASSERT_EQ(zrodlo[ktory]->PorownajWgPol(o, inne, rlRozmLiterWazny), 0);
        }
        odczytane.ZerujDane();
        kopia.Ustaw();
        for (const auto& [pole, stary] : wyjete)
            ASSERT_EQ(static_cast<const TPoleString&>(*pole).Wartosc(), stary);
    }
}

} // namespace
