// What readers do by a short way must be what they do by the long one: expected names of any length, long texts of a
// file.
#include <cctype>
#include <random>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "StrumienieTestowe.h"
#include "ztok/platform/Kodowania.h"

using namespace ztok;

namespace {

class TNazwy : public TObiekt {
    ZTOK_OBIEKT(TNazwy, TObiekt, (0, A, Integer), (1, Bcd, Integer), (2, Bcde, Integer), (3, Bcdefgh, Integer),
                (4, Bcdefghi, Integer), (5, Bcdefghij, Integer), (6, BcdefghijBcdefghij, Integer),
                (7, Teksty, WideStrList), (8, Tablica, Obiekt<TArrayOfConst>))
};

// A field is read by its whole name: with any letter changed there is no such field.
TEST(Czytniki, NazwyKazdejDlugosciSaSprawdzaneWCalosci) {
    TNazwy o;
    for (int nr = 0; nr <= 6; ++nr)
        o.SetPoleInteger(nr, nr + 1);
    TZTMemoryStream strumien;
    o.ZapiszTekstowo(strumien);
    const auto bajty = strumien.Zawartosc();
    std::string tekst(bajty.begin(), bajty.end());
    const auto wczytaj = [](TNazwy& cel, const std::string& skad) {
        TZTReadOnlyRawByteStream zrodlo(skad);
        cel.WczytajTekstowo(zrodlo);
    };
    TNazwy wczytany;
    wczytaj(wczytany, tekst);
    EXPECT_EQ(0, wczytany.Porownaj(o));
    int zmienionych = 0;
    for (std::size_t i = tekst.find('\n'); i < tekst.rfind('='); ++i) {
        if (std::isalpha(static_cast<unsigned char>(tekst[i])) == 0)
            continue;
        const char litera = std::exchange(tekst[i], 'z');
        EXPECT_THROW(wczytaj(wczytany, tekst), EWyjatek) << tekst;
        tekst[i] = litera;
        ++zmienionych;
    }
    EXPECT_EQ(1 + 3 + 4 + 7 + 8 + 9 + 18, zmienionych);
}

// Longer than a reader's step, with characters of every length across its edges; whole, and broken off.
TEST(Czytniki, DlugieTekstyListyITablicyZPliku) {
    const std::u16string sciezka =
        Utf16ZUtf8(testing::TempDir() + "ztok_czytniki_" + std::to_string(std::random_device{}()));
    std::u16string tekst;
    while (tekst.size() < 300'000)
        tekst += u"zażółć €😀";
    TNazwy o;
    o.GetTeksty().Dodaj(tekst);
    o.GetTablica().Dodaj(tekst);
    std::string zapis = strumienie::Zapisz(o);
    for (const bool caly : {true, false}) {
        if (!caly)
            zapis.resize(zapis.size() / 4);
        {
            TStrumienPlikowy plik(sciezka, ETrybPliku::Tworzenie);
            plik.WriteBuffer(zapis.data(), zapis.size());
        }
        TStrumienPlikowy plik(sciezka, ETrybPliku::Odczyt);
        TNazwy wczytany;
        if (caly) {
            wczytany.WczytajZeStrumienia(plik);
            EXPECT_EQ(0, wczytany.Porownaj(o));
        } else {
            EXPECT_THROW(wczytany.WczytajZeStrumienia(plik), EWyjatek);
        }
    }
    EXPECT_TRUE(UsunPlik(sciezka));
}

} // namespace
