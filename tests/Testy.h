// What nearly every test of values, fields and streams uses.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/Bledy.h"
#include "tests/StrumienieTestowe.h"
#include "tests/TabeleTestow.h"
#include "tests/Wartosci.h"
#include "ztok/kernel/Typypolbazowe.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/LiczbyTekst.h"
#include "ztok/platform/TObiektLiczony.h"
#include "ztok/platform/TUstawieniaFormatu.h"
#include "ztok/util/ZTBledy.h"

namespace testy {

// In every row of the table `kolumna` has what the function makes of the row, "!" and the message where it raises. Rows
// that have "?" there are open.
template <class F> void SprawdzTabele(const std::string& nazwa, std::size_t kolumna, F wynik) {
    for (const TWierszTabeli& w : WczytajTabele(nazwa, kolumna)) {
        SCOPED_TRACE(nazwa + ' ' + std::to_string(w.numer) + ' ' + w[0] + ' ' + w[1]);
        std::string dane;
        const std::u16string blad = Blad([&] { dane = wynik(w); });
        EXPECT_EQ(blad == u"(no error)" ? dane : '!' + ztok::Utf8ZUtf16(blad), w[kolumna]);
    }
}

// The same for functions that read a number and tell whether they could: "ok" and the bits, or the value stays.
template <class F> void SprawdzOdczyt(const std::string& nazwa, std::size_t kolumna, F odczytaj) {
    SprawdzTabele(nazwa, kolumna, [&](const TWierszTabeli& w) {
        double wartosc = 77;
        const bool dobra = odczytaj(w, wartosc);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(wartosc),
                  dobra ? w.Bity(kolumna + 1) : std::bit_cast<std::uint64_t>(77.0));
        return dobra ? "ok" : "error";
    });
}

// Values of every kind stay what they are through copies and moves, over values of every kind and over themselves.
template <class T, class F> void SprawdzKopie(const std::vector<T>& wzory, F opis) {
    for (const T& wzor : wzory)
        for (const T& poprzedni : wzory) {
            T kopia(wzor);
            T cel(poprzedni);
            cel = kopia;
            EXPECT_EQ(opis(cel), opis(wzor));
            T& sam = cel;
            cel = sam;
            cel = std::move(sam);
            EXPECT_EQ(opis(cel), opis(wzor));
            T przeniesiony(std::move(cel));
            cel = T(poprzedni);
            cel = std::move(przeniesiony);
            EXPECT_EQ(opis(cel), opis(wzor));
        }
}

} // namespace testy
