// Want of memory at every place where an action takes some.
#pragma once

#include <gtest/gtest.h>

#include "platforma/Przydzialy.h"
#include "ztok/platform/Pula.h"
#include "ztok/platform/Wyjatki.h"

namespace testy {

// Runs an action, which gives a value, with one of its allocations failing, then with all from that one on, for each of
// them. Every time it must raise and hold no memory afterwards, and then give the same value as before. Returns what
// it allocates.
template <class F> przydzialy::TWynik PsujKazdyPrzydzial(F dzialanie) {
    const auto oczekiwane = dzialanie();
    przydzialy::Zacznij();
    static_cast<void>(dzialanie());
    const przydzialy::TWynik wynik = przydzialy::Zakoncz();
    for (const bool naZawsze : {false, true})
        for (std::int64_t i = 0; i < wynik.ile; ++i) {
            bool blad = false;
            const std::int64_t zajete = ztok::PulaZajete();
            przydzialy::Zacznij();
            przydzialy::Psuj(i, naZawsze);
            try {
                static_cast<void>(dzialanie());
            } catch (const std::bad_alloc&) {
                blad = true;
            } catch (const ztok::EWyjatek&) {
                blad = true;
            }
            EXPECT_EQ(przydzialy::Zakoncz().zostalo, 0) << i;
            EXPECT_EQ(ztok::PulaZajete(), zajete) << i;
            EXPECT_TRUE(blad) << i;
            EXPECT_EQ(dzialanie(), oczekiwane) << i;
        }
    return wynik;
}

} // namespace testy
