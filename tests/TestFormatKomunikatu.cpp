#include "ztok/platform/FormatKomunikatu.h"

#include <gtest/gtest.h>

#include <bit>

#include "tests/TabeleTestow.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/TObiektLiczony.h"
#include "ztok/platform/TUstawieniaFormatu.h"
#include "ztok/platform/TWariant.h"
#include "ztok/platform/Wyjatki.h"

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

// "i:5|s:text|f:text@bits"
std::vector<TArgument> Argumenty(const std::string& opis) {
    std::vector<TArgument> wynik;
    if (opis.empty())
        return wynik;
    for (const std::string& czesc : testy::Podziel(opis, '|')) {
        const std::string tekst = czesc.substr(2);
        switch (czesc[0]) {
        case 'i':
            wynik.emplace_back(std::stoi(tekst));
            break;
        case 'l':
            wynik.emplace_back(static_cast<std::int64_t>(std::stoll(tekst)));
            break;
        case 'f':
            wynik.emplace_back(std::bit_cast<double>(
                static_cast<std::uint64_t>(std::stoull(tekst.substr(tekst.find('@') + 1), nullptr, 16))));
            break;
        case 'b':
            wynik.emplace_back(tekst == "True");
            break;
        case 'c':
            wynik.emplace_back(tekst[0]);
            break;
        default:
            wynik.emplace_back(Utf16ZUtf8(tekst));
        }
    }
    return wynik;
}

// "error" or "ok" and the text.
std::string Wynik(std::u16string_view format, TArgumenty argumenty) {
    const TUstawieniaFormatu ustawienia = UstawieniaTablicy();
    try {
        return "ok " + Utf8ZUtf16(Formatuj(format, argumenty, &ustawienia));
    } catch (const EBladFormatu&) {
        return "error ";
    }
}

TEST(FormatKomunikatu, TablicaOczekiwanych) {
    int porownano = 0;
    for (const testy::TWierszTabeli& w : testy::WczytajTabele("format_msg.tsv")) {
        if (w[5] == "?")
            continue;
        EXPECT_EQ(Wynik(Utf16ZUtf8(w[1]), Argumenty(w[2])), w[5] + ' ' + w[6]) << w[1] << " with " << w[2];
        ++porownano;
    }
    EXPECT_GT(porownano, 150);
}

struct TPrzypadek {
    std::u16string_view format;
    std::vector<TArgument> argumenty;
    std::string_view wynik; // UTF-8
};

TEST(FormatKomunikatu, RodzajeIArgumenty) {
    const std::u16string zera(sizeof(void*) * 2 - 2, u'0');
    const TPrzypadek przypadki[] = {
        // Texts of every kind.
        {u"%s %s", {std::string("\xB9"), u'ż'}, "ok ą ż"},
        {u"%s|%s|%s", {TArgument::ShortString("a"), TArgument::PChar(std::string("b\0c", 3)), 'c'}, "ok a|b|c"},
        {u"%s|%s", {TArgument::PWideChar(u"w"), TArgument::WideString(u"x")}, "ok w|x"},
        {u"%s|%s|%s", {TWariant(5), TWariant::Null(), TWariant(u"v")}, "ok 5||v"},
        {u"%s|%s", {TWariant::Tablica({TWariant(1)}), TWariant(TDataCzas{1e9})}, "ok ?|?"},
        {u"%s|%s", {TObiektLiczony::KlasaStatyczna(), static_cast<TObiektOgolny*>(nullptr)}, "ok TObiektLiczony|nil"},
        {u"%.1s|", {u"\U0001F600"}, "ok |"}, // half a character is none
        {u"%.3s|", {u"\U0001F600ab"}, "ok \U0001F600a|"},
        {u"%.4f %m", {TWaluta{-12345}, TWaluta{12345678}}, "ok -1,2345 1 234,57 zł"},
        {u"%s", {nullptr}, "error "},
    };
    for (const TPrzypadek& p : przypadki)
        EXPECT_EQ(Wynik(p.format, p.argumenty), p.wynik) << Utf8ZUtf16(p.format);
    EXPECT_EQ(Formatuj(u"%p", {TArgument::Pointer(reinterpret_cast<const void*>(std::uintptr_t{0xAB}))}), zera + u"AB");
}

TEST(FormatKomunikatu, BezWyjatkuDajeSamFormat) {
    EXPECT_EQ(FormatujBezWyjatku(u"%s: %d", {u"a", 1}), u"a: 1");
    EXPECT_EQ(FormatujBezWyjatku(u"%s: %d", {u"a"}), u"%s: %d");
    EXPECT_EQ(FormatujBezWyjatku(u"%s", {TWariant::Null()}), u"");
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
