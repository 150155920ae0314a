// After every test the pool holds as many blocks as before it, what the kernel keeps apart: its descriptors are built
// on first use and stay. Without a pool (sanitizers) the leak checker of the sanitizer does this work.
#include <gtest/gtest.h>

#include "ztok/kernel/Typypolbazowe.h"
#include "ztok/platform/Pula.h"

namespace {

using namespace ztok;

// TObiekt::JestWBloku, whether a field stands in the block of its owner's field array: no user's business, but an
// explicit instantiation may name it.
struct TJestWBloku {
    using Typ = bool (TObiekt::*)(const TPole*) const noexcept;
    friend Typ Daj(TJestWBloku);
};
template <class TCo, typename TCo::Typ Czlonek> struct TUjawnij {
    friend typename TCo::Typ Daj(TCo) { return Czlonek; }
};
template struct TUjawnij<TJestWBloku, &TObiekt::JestWBloku>;

// Blocks of a tree: each object is one, and so are the field array of an object, a field that does not stand in it, the
// text of a field unless it is short, and the array of a short list.
std::int64_t Bloki(const TPole& pole, const TObiekt* wlasciciel = nullptr) {
    const TKlasa* klasa = pole.Klasa();
    std::int64_t ile = wlasciciel != nullptr && (wlasciciel->*Daj(TJestWBloku{}))(&pole) ? 0 : 1;
    if (klasa->kodPola == kpString &&
        static_cast<const TPoleString&>(pole).Wartosc().size() >= sizeof(void*) / sizeof(char16_t))
        ++ile;
    if (klasa->Ma(ckObiekt)) {
        const auto& obiekt = static_cast<const TObiekt&>(pole);
        ile += obiekt.OstUzywanePole() >= 0 ? 1 : 0;
        for (int nr = 0; nr <= obiekt.OstUzywanePole(); ++nr)
            if (obiekt.Pole(nr) != nullptr)
                ile += Bloki(*obiekt.Pole(nr), &obiekt);
    } else if (klasa->Ma(ckListaZObiektami)) {
        const auto& lista = static_cast<const TListaBazowa&>(pole);
        const std::size_t bajty = static_cast<std::size_t>(lista.Pojemnosc()) * sizeof(TObiektBazowy*);
        ile += bajty > 0 && bajty <= NajwiekszyBlokPuli ? 1 : 0;
        for (std::int32_t i = 0; i < lista.IleObiektow(); ++i)
            if (lista.Obiekty(i) != nullptr)
                ile += Bloki(*lista.Obiekty(i));
    }
    return ile;
}

class TWyciek : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo& /*test*/) override { przed_ = BezJadra(); }
    void OnTestEnd(const testing::TestInfo& /*test*/) override {
        EXPECT_EQ(UserKernel, nullptr) << "the test leaves its kernel installed";
        EXPECT_EQ(BezJadra() - przed_, 0) << "blocks that the test does not free";
    }

    static std::int64_t BezJadra() {
        const std::int64_t jadro = Bloki(*JadroKlas()); // first: makes the kernel if there is none
        return PulaZajete() - jadro;
    }

    std::int64_t przed_ = 0;
};

// The program's start belongs to the framework; the listener is there before the first test.
const bool zarejestrowany = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new TWyciek);
    return true;
}();

} // namespace
