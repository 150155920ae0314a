#include "tests/Testy.h"

namespace ztok {
namespace {

TUstawieniaFormatu UstawieniaTablicy() {
    TUstawieniaFormatu u;
    u.separatorDziesietny = u',';
    u.separatorTysiecy = u' ';
    u.symbolWaluty = u"zł";
    u.formatWaluty = 3;
    u.formatWalutyUjemnej = 8;
    u.miejscWaluty = 2;
    return u;
}

std::vector<TArgument> Argumenty(const std::string& opis) {
    std::vector<TArgument> wynik;
    if (!opis.empty())
        for (const std::string& czesc : testy::Podziel(opis, '|'))
            wynik.push_back(testy::Argument(czesc));
    return wynik;
}

// "error" or "ok" and the text.
std::string Wynik(std::u16string_view format, TArgumenty argumenty) {
    const TUstawieniaFormatu ustawienia = UstawieniaTablicy();
    try {
        return "ok " + Utf8ZUtf16(Formatuj(format, argumenty, &ustawienia));
    } catch (const EBladFormatu& e) {
        return "error " + Utf8ZUtf16(e.Komunikat());
    }
}

TEST(FormatKomunikatu, TablicaOczekiwanych) {
    int porownano = 0;
    for (const testy::TWierszTabeli& w : testy::WczytajTabele("format_msg.tsv")) {
        if (w[5] == "?")
            continue;
        SCOPED_TRACE(std::to_string(w.numer) + ' ' + w[1] + " with " + w[2]);
        EXPECT_EQ(Wynik(Utf16ZUtf8(w[1]), Argumenty(w[2])), w[5] + ' ' + w[6]);
        ++porownano;
    }
    EXPECT_GT(porownano, 150);
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
    for (const TArgument& wzor : wzory) {
        for (const TArgument& poprzedni : wzory) {
            TArgument kopia(wzor);
            TArgument cel(poprzedni);
            cel = kopia;
            EXPECT_EQ(opis(cel), opis(wzor));
            TArgument przeniesiony(std::move(kopia));
            cel = TArgument(poprzedni);
            cel = std::move(przeniesiony);
            EXPECT_EQ(opis(cel), opis(wzor));
            TArgument& sam = cel;
            cel = sam;
            EXPECT_EQ(opis(cel), opis(wzor));
        }
    }
    EXPECT_EQ(TArgument::ShortString(std::string(300, 'a')).Bajty().size(), 255U);
    static_assert(!std::is_constructible_v<TArgument, const char*> && !std::is_constructible_v<TArgument, int*>);
}

} // namespace
} // namespace ztok
