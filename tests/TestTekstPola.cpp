#include "ztok/fields/TTekstPola.h"

#include <random>

#include <gtest/gtest.h>

#include "ztok/persist/TOdczytywaczDanych.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/util/Zttypybazowe.h"

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
        std::u16string znaki;
        const std::size_t ile = 200 + losowe() % 900;
        while (znaki.size() < ile)
            switch (losowe() % 4) {
            case 0:
                znaki += u"\U0001F600";
                break;
            case 1:
                znaki += static_cast<char16_t>(0x800 + losowe() % 0xE000); // lone surrogates too
                break;
            case 2:
                znaki += static_cast<char16_t>(losowe() % 0x800);
                break;
            default:
                znaki += static_cast<char16_t>(losowe() % 0x80);
            }
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

} // namespace
