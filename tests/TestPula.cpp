#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <random>
#include <thread>
#include <vector>

#include "platforma/Przydzialy.h"
#include "ztok/kernel/Typypolbazowe.h"
#include "ztok/platform/Pula.h"
#include "ztok/platform/PulaWnetrze.h"

namespace ztok {
namespace {

struct TBlok {
    std::uint8_t* adres;
    std::size_t rozmiar;
    std::uint8_t wzor;
};

TBlok Nowy(std::mt19937& los) {
    const std::size_t rozmiar = 1 + los() % (los() % 8 == 0 ? 700U : 80U);
    TBlok blok{static_cast<std::uint8_t*>(PulaPrzydziel(rozmiar)), rozmiar, static_cast<std::uint8_t>(los())};
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(blok.adres) % (rozmiar <= NajwiekszyBlokPuli ? 16 : 8), 0U);
    std::memset(blok.adres, blok.wzor, rozmiar);
    return blok;
}

// Whoever else wrote into the block would have left a trace.
void Zwolnij(const TBlok& blok) {
    EXPECT_EQ(std::count(blok.adres, blok.adres + blok.rozmiar, blok.wzor), static_cast<std::ptrdiff_t>(blok.rozmiar));
    PulaZwolnij(blok.adres, blok.rozmiar);
}

TEST(Pula, LosowoWieleWatkowZwalniaCudzeBloki) {
    const std::int64_t przedtem = PulaZajete();
    std::mutex blokada;
    std::vector<TBlok> wspolne;
    std::vector<std::thread> watki;
    for (unsigned w = 0; w < 4; ++w) {
        watki.emplace_back([&, w] {
            std::mt19937 los(w);
            std::vector<TBlok> wlasne;
            for (int i = 0; i < 40000; ++i) {
                if (los() % 20 < 11 || wlasne.empty()) {
                    wlasne.push_back(Nowy(los));
                } else {
                    std::swap(wlasne[los() % wlasne.size()], wlasne.back());
                    Zwolnij(wlasne.back());
                    wlasne.pop_back();
                }
                if (i % 1000 == 0) {
                    const std::lock_guard straznik(blokada);
                    std::swap(wlasne, wspolne);
                    if (w == 0 && i % 5000 == 0)
                        OddajPamiecPuli();
                }
            }
            const std::lock_guard straznik(blokada);
            wspolne.insert(wspolne.end(), wlasne.begin(), wlasne.end());
        });
    }
    for (std::thread& w : watki)
        w.join();
    EXPECT_EQ(PulaZajete(), przedtem + static_cast<std::int64_t>(wspolne.size()));
    // Half of them go, then free memory, then the rest, which must have stayed.
    for (std::size_t i = 0; i < wspolne.size(); i += 2)
        Zwolnij(wspolne[i]);
    OddajPamiecPuli();
    for (std::size_t i = 1; i < wspolne.size(); i += 2)
        Zwolnij(wspolne[i]);
    EXPECT_EQ(PulaZajete(), przedtem);
    OddajPamiecPuli();
    EXPECT_EQ(PulaZajete(), przedtem);
}

// The slab that a thread has just begun looks unused to everybody else.
TEST(Pula, OddawanieOmijaPlyteKrojonaPrzezInnyWatek) {
    const std::int64_t przedtem = PulaZajete();
    std::atomic<int> etap{0};
    // Not atomic::wait: without futexes it can miss the change that comes between its look and its sleep.
    const auto czekaj = [&etap](int na) {
        while (etap != na)
            std::this_thread::yield();
    };
    std::thread watek([&etap, &czekaj] {
        std::mt19937 los(1);
        const TBlok pierwszy = Nowy(los);
        etap = 1;
        czekaj(2);
        Zwolnij(pierwszy);
        Zwolnij(Nowy(los));
    });
    czekaj(1);
    OddajPamiecPuli();
    EXPECT_EQ(PulaZajete(), przedtem + 1);
    etap = 2;
    watek.join();
    EXPECT_EQ(PulaZajete(), przedtem);
}

// A thread that only makes and one that only frees: the blocks must come round.
TEST(Pula, ZwolnioneGdzieIndziejWracaDoObiegu) {
    if (pula::BezPuli())
        GTEST_SKIP();
    OddajPamiecPuli();
    std::vector<void*> wszystkie;
    for (int runda = 0; runda < 50; ++runda) {
        std::vector<void*> bloki(5000);
        for (void*& blok : bloki)
            blok = PulaPrzydziel(40);
        wszystkie.insert(wszystkie.end(), bloki.begin(), bloki.end());
        std::thread([&bloki] {
            for (void* blok : bloki)
                PulaZwolnij(blok, 40);
        }).join();
    }
    std::sort(wszystkie.begin(), wszystkie.end());
    const auto rozne = std::unique(wszystkie.begin(), wszystkie.end()) - wszystkie.begin();
    EXPECT_LT(rozne, 3 * 5000);
}

TEST(Pula, KolejneAdresyIZwrotWOdwrotnejKolejnosci) {
    if (pula::BezPuli())
        GTEST_SKIP();
    OddajPamiecPuli();
    // Takes what earlier tests left free between blocks in use: from here on blocks are fresh.
    std::vector<void*> resztki(20000);
    for (void*& blok : resztki)
        blok = PulaPrzydziel(48);
    // Several magazines and slabs.
    std::vector<std::uint8_t*> bloki(20000);
    for (auto& blok : bloki)
        blok = static_cast<std::uint8_t*>(PulaPrzydziel(48));
    const auto sasiednie = static_cast<std::size_t>(
        std::count_if(bloki.begin() + 1, bloki.end(), [](std::uint8_t*& blok) { return blok == (&blok)[-1] + 48; }));
    EXPECT_GT(sasiednie, bloki.size() * 99 / 100);
    for (std::size_t i = bloki.size(); i-- > 0;)
        PulaZwolnij(bloki[i], 48);
    for (std::uint8_t* blok : bloki)
        ASSERT_EQ(PulaPrzydziel(48), blok);
    for (std::uint8_t* blok : bloki)
        PulaZwolnij(blok, 48);
    for (void* blok : resztki)
        PulaZwolnij(blok, 48);
}

TEST(Pula, NadzorSlyszyKazdyBlok) {
    przydzialy::Zacznij();
    void* maly = PulaPrzydziel(40);
    przydzialy::Psuj(1, false);
    EXPECT_THROW(static_cast<void>(PulaPrzydziel(40)), std::bad_alloc);
    void* duzy = PulaPrzydziel(NajwiekszyBlokPuli + 1); // of malloc, as the exception may be
    PulaZwolnij(PulaPrzydziel(16), 16);
    PulaZwolnij(duzy, NajwiekszyBlokPuli + 1);
    PulaZwolnij(maly, 40);
    const auto wynik = przydzialy::Zakoncz();
    EXPECT_GE(wynik.ile, 3);
    EXPECT_EQ(wynik.zPuli, pula::BezPuli() ? 0 : 2);
    EXPECT_GE(wynik.szczyt, 48 + 16);
    EXPECT_EQ(wynik.zostalo, 0);
}

#if ZTOK_ASAN
class TTrzyLiczby : public TObiekt {
    ZTOK_OBIEKT(TTrzyLiczby, TObiekt, (0, A, Integer), (1, B, String), (2, C, Integer))
};

// The sanitizer sees what the product has: places in an object's block, older blocks, the pool's own.
TEST(Pula, SanitizerWidziCoWolne) {
    const auto zatruty = [](const void* adres, std::size_t dalej = 0) {
        return __asan_address_is_poisoned(static_cast<const char*>(adres) + dalej) != 0;
    };
    auto* blok = static_cast<char*>(PulaPrzydziel(41));
    EXPECT_FALSE(zatruty(blok, 40));
    EXPECT_TRUE(zatruty(blok, 41)); // beyond what was asked for
    PulaZwolnij(blok, 41);
    EXPECT_TRUE(zatruty(blok));
    EXPECT_TRUE(zatruty(blok, 40));

    TTrzyLiczby wzor;
    wzor.SetA(1);
    wzor.SetB(u"dłuższy niż pole");
    wzor.SetC(3);
    TWlasny<TTrzyLiczby> o = Utworz<TTrzyLiczby>();
    o->SetA(7);
    const TPole* const a = o->Pole(0);
    EXPECT_FALSE(zatruty(a));
    EXPECT_TRUE(zatruty(a, 16)); // the place of a field that is not written yet
    o->SetC(8);
    EXPECT_EQ(static_cast<const void*>(o->Pole(2)), reinterpret_cast<const char*>(a) + 16);
    EXPECT_FALSE(zatruty(a, 16));
    o->UstawPole(0, nullptr, true);
    EXPECT_TRUE(zatruty(a)); // places are not used twice
    EXPECT_FALSE(zatruty(a, 16));
    o->KopiujDane(wzor); // cleared first: fields and the text in one block
    const TPole* const b = o->Pole(1);
    const char16_t* const tekst =
        o->Pole(1) == nullptr ? nullptr : static_cast<const TPoleString*>(b)->Wartosc().data();
    EXPECT_FALSE(zatruty(tekst));
    o->UstawPole(1, nullptr, true);
    EXPECT_TRUE(zatruty(tekst));
    const TPole* const c = o->Pole(2);
    o->UstawPole(2, nullptr, false); // taken out: alive as long as its own end
    Zwolnij(o.Oddaj());
    EXPECT_FALSE(zatruty(c));
    EXPECT_EQ(static_cast<const TPoleInteger*>(c)->Wartosc(), 3);
    Zwolnij(const_cast<TPole*>(c));
    EXPECT_TRUE(zatruty(c));
}
#endif

} // namespace
} // namespace ztok
