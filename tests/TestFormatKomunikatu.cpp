#include "tests/Testy.h"

namespace ztok {
namespace {

std::vector<TArgument> Argumenty(const std::string& opis) {
    std::vector<TArgument> wynik;
    if (!opis.empty())
        for (const std::string& czesc : testy::Podziel(opis, '|'))
            wynik.push_back(testy::Argument(czesc));
    return wynik;
}

TEST(FormatKomunikatu, TablicaOczekiwanych) {
    TUstawieniaFormatu ustawienia;
    ustawienia.separatorDziesietny = u',';
    testy::SprawdzTabele("format_msg.tsv", 5, [&](const testy::TWierszTabeli& w) {
        std::u16string tekst;
        const std::u16string blad =
            testy::Blad<EBladFormatu>([&] { tekst = Formatuj(w.Tekst(1), Argumenty(w[2]), &ustawienia); });
        const bool dobry = blad == u"(no error)";
        EXPECT_EQ(Utf8ZUtf16(dobry ? tekst : blad), w[6]);
        return dobry ? "ok" : "error";
    });
}

TEST(FormatKomunikatu, BezWyjatkuDajeSamFormat) {
    EXPECT_EQ(FormatujBezWyjatku(u"%s: %d", {u"a", 1}), u"a: 1");
    EXPECT_EQ(FormatujBezWyjatku(u"%s: %d", {u"a"}), u"%s: %d");
    EXPECT_EQ(FormatujBezWyjatku(u"%s", {TWariant::Null()}), u"");
    const std::u16string zera(sizeof(void*) * 2 - 2, u'0');
    EXPECT_EQ(Formatuj(u"%p", {TArgument::Pointer(reinterpret_cast<const void*>(std::uintptr_t{0xAB}))}), zera + u"AB");
}

// Arguments are values: copies and moves keep tag and value, and own what they hold.
TEST(TArgument, KopieIPrzeniesienia) {
    const std::vector<TArgument> wzory = {true,
                                          'c',
                                          u'ż',
                                          7,
                                          std::int64_t{1} << 40,
                                          2.5L,
                                          TWaluta{5},
                                          u"tekst dłuższy niż bufor w miejscu",
                                          std::string("bajty"),
                                          TWariant(u"w"),
                                          nullptr};
    const auto opis = [](const TArgument& a) {
        std::u16string wynik = a.JakoTekst();
        if (a.Tag() == TTag::Variant)
            wynik = a.Wariant().JakoTekst16();
        else if (a.Tag() == TTag::Extended)
            wynik = Formatuj(u"%g", {a});
        else if (wynik.empty() && a.Tag() != TTag::Pointer)
            wynik = Formatuj(u"%d", {a.Calkowita()});
        return Formatuj(u"%d:%s", {static_cast<int>(a.Tag()), wynik});
    };
    testy::SprawdzKopie(wzory, opis);
    EXPECT_EQ(TArgument::ShortString(std::string(300, 'a')).Bajty().size(), 255U);
    static_assert(!std::is_constructible_v<TArgument, const char*> && !std::is_constructible_v<TArgument, int*>);
}

} // namespace
} // namespace ztok
