// Conversions of text beside ICU and iconv: one long text of each kind, converted into memory that is there.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <benchmark/benchmark.h>
#include <iconv.h>
#include <unicode/ucnv.h>
#include <unicode/ustring.h>

#include "pomiary/Pomiary.h"
#include "pomiary/Tabela.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/TabeleStron.h"

namespace pomiary {

namespace {

constexpr std::size_t kZnakow = 100000;

// A text in every form, and room for a result. Kept to the end of the process.
struct TTekst {
    // What the page lacks is taken out of the text.
    explicit TTekst(std::u16string_view znaki, std::uint16_t jakaStrona)
        : strona(jakaStrona), bajty(ztok::NaStroneKodowa(znaki, strona)), tekst(ztok::ZeStronyKodowej(bajty, strona)) {
        wynik.resize(4 * tekst.size() + 4);
    }

    std::uint16_t strona;
    std::string bajty;
    std::u16string tekst;
    std::u16string wynik;
};

[[noreturn]] void Zle(const std::string& nazwa) {
    std::fprintf(stderr, "%s: a wrong result\n", nazwa.c_str());
    std::exit(1);
}

// Registers both ways of one library: each function gives the units, or bytes, written into t.wynik.
template <class TNaBajty, class TZBajtow>
void Dwukierunkowo(std::string_view rodzaj, std::string_view biblioteka, TTekst& t, TNaBajty naBajty,
                   TZBajtow zBajtow) {
    const std::string strona = t.strona == ztok::StronaUtf8 ? "UTF-8" : "Windows-1250";
    const std::string tam = strona + " to UTF-16, " + std::string(rodzaj) + " (1000 bytes)";
    const std::string zPowrotem = "UTF-16 to " + strona + ", " + std::string(rodzaj) + " (1000 bytes of it)";
    if (std::u16string_view(t.wynik.data(), zBajtow()) != t.tekst)
        Zle(tam);
    if (std::string_view(reinterpret_cast<const char*>(t.wynik.data()), naBajty()) != t.bajty)
        Zle(zPowrotem);
    const auto rejestruj = [&](const std::string& operacja, auto funkcja) {
        benchmark::RegisterBenchmark(NazwaPomiaru(operacja, biblioteka).c_str(), [&t, funkcja](benchmark::State& stan) {
            for (auto krok : stan)
                Zuzyj(funkcja());
            stan.counters["n"] = static_cast<double>(t.bajty.size()) / 1000;
        });
    };
    rejestruj(tam, zBajtow);
    rejestruj(zPowrotem, naBajty);
}

void ZarejestrujNasze(std::string_view rodzaj, TTekst& t) {
    char* const bajty = reinterpret_cast<char*>(t.wynik.data());
    if (t.strona == ztok::StronaUtf8) {
        Dwukierunkowo(
            rodzaj, kZtok, t, [&t, bajty] { return ztok::KodujUtf8(t.tekst.data(), t.tekst.size(), bajty); },
            [&t] { return ztok::DekodujUtf8(t.bajty.data(), t.bajty.size(), t.wynik.data()); });
        return;
    }
    const ztok::TTabelaStrony& tabela = *ztok::TabelaStrony(t.strona);
    Dwukierunkowo(
        rodzaj, kZtok, t,
        [&t, &tabela, bajty] {
            ztok::NaBajty(tabela, t.tekst.data(), t.tekst.size(), bajty);
            return t.tekst.size();
        },
        [&t, &tabela] {
            ztok::ZBajtow(tabela, t.bajty.data(), t.bajty.size(), t.wynik.data());
            return t.bajty.size();
        });
}

void ZarejestrujIcu(std::string_view rodzaj, TTekst& t) {
    const auto pojemnosc = static_cast<std::int32_t>(t.wynik.size());
    const auto bajtow = static_cast<std::int32_t>(t.bajty.size());
    const auto znakow = static_cast<std::int32_t>(t.tekst.size());
    char* const bajty = reinterpret_cast<char*>(t.wynik.data());
    if (t.strona == ztok::StronaUtf8) { // its functions for UTF-8 alone, the faster ones
        Dwukierunkowo(
            rodzaj, kIcu, t,
            [&t, bajty, pojemnosc, znakow] {
                UErrorCode blad = U_ZERO_ERROR;
                std::int32_t ile = 0;
                u_strToUTF8(bajty, 2 * pojemnosc, &ile, t.tekst.data(), znakow, &blad);
                return static_cast<std::size_t>(ile);
            },
            [&t, pojemnosc, bajtow] {
                UErrorCode blad = U_ZERO_ERROR;
                std::int32_t ile = 0;
                u_strFromUTF8(t.wynik.data(), pojemnosc, &ile, t.bajty.data(), bajtow, &blad);
                return static_cast<std::size_t>(ile);
            });
        return;
    }
    UErrorCode blad = U_ZERO_ERROR;
    UConverter* konwerter = ucnv_open("windows-1250", &blad);
    Dwukierunkowo(
        rodzaj, kIcu, t,
        [&t, konwerter, bajty, pojemnosc, znakow] {
            UErrorCode b = U_ZERO_ERROR;
            return static_cast<std::size_t>(
                ucnv_fromUChars(konwerter, bajty, 2 * pojemnosc, t.tekst.data(), znakow, &b));
        },
        [&t, konwerter, pojemnosc, bajtow] {
            UErrorCode b = U_ZERO_ERROR;
            return static_cast<std::size_t>(
                ucnv_toUChars(konwerter, t.wynik.data(), pojemnosc, t.bajty.data(), bajtow, &b));
        });
}

// Bytes that iconv writes into the result.
std::size_t Iconv(iconv_t konwerter, const void* od, std::size_t bajtow, std::u16string& wynik) {
    char* skad = static_cast<char*>(const_cast<void*>(od));
    char* dokad = reinterpret_cast<char*>(wynik.data());
    std::size_t wolne = 2 * wynik.size();
    iconv(konwerter, nullptr, nullptr, nullptr, nullptr);
    iconv(konwerter, &skad, &bajtow, &dokad, &wolne);
    return 2 * wynik.size() - wolne;
}

void ZarejestrujIconv(std::string_view rodzaj, TTekst& t) {
    const char* const strona = t.strona == ztok::StronaUtf8 ? "UTF-8" : "CP1250";
    const iconv_t naBajty = iconv_open(strona, "UTF-16LE");
    const iconv_t zBajtow = iconv_open("UTF-16LE", strona);
    Dwukierunkowo(
        rodzaj, kIconv, t, [&t, naBajty] { return Iconv(naBajty, t.tekst.data(), 2 * t.tekst.size(), t.wynik); },
        [&t, zBajtow] { return Iconv(zBajtow, t.bajty.data(), t.bajty.size(), t.wynik) / 2; });
}

// Repeats the lines in turn up to the length.
std::u16string Zloz(const std::vector<std::u16string>& wiersze) {
    std::u16string wynik;
    for (std::size_t i = 0; wynik.size() < kZnakow; ++i)
        wynik.append(wiersze[i % wiersze.size()]).append(u"\r\n");
    return wynik;
}

} // namespace

void ZarejestrujKodowania(const dane::TBaza& baza) {
    std::vector<std::u16string> nazwy; // of the invoices: mostly ASCII, some Polish letters
    for (const dane::TFaktura& faktura : baza.faktury)
        for (const dane::TPozycja& p : faktura.pozycje)
            if (nazwy.size() < 5000)
                nazwy.push_back(ztok::Utf16ZUtf8(p.nazwaUtf8));
    std::vector<std::u16string> ascii = nazwy;
    for (std::u16string& nazwa : ascii)
        for (char16_t& znak : nazwa)
            znak &= 0x7F;
    const std::vector<std::u16string> polski = {
        u"Zażółć gęślą jaźń – „Pchnąć w tę łódź jeża lub ośm skrzyń fig”, rzekł wójt.",
        u"Należność w wysokości 1234,56 € płatna przelewem w ciągu czternastu dni od otrzymania faktury.",
        u"Żółw, źrebię i świnka morska mieszkały we wsi Ćmińsk… a potem wyruszyły w podróż do Łodzi."};
    std::vector<std::u16string> mieszany = polski; // two, three and four bytes a character, and ASCII
    mieszany.insert(mieszany.end(),
                    {u"Съешь ещё этих мягких французских булок, да выпей же чаю.", u"The quick brown fox.",
                     u"Ξεσκεπάζω την ψυχοφθόρα βδελυγμία", u"いろはにほへと ちりぬるを 我が世誰ぞ 常ならむ",
                     u"😀 😃 😄 ok 👍 𝒳 = 𝒴", u"= 12.5 % ≥ 3 × 4 → ½"});
    static TTekst teksty[] = {TTekst(Zloz(polski), ztok::StronaUtf8),    TTekst(Zloz(nazwy), ztok::StronaUtf8),
                              TTekst(Zloz(ascii), ztok::StronaUtf8),     TTekst(Zloz(mieszany), ztok::StronaUtf8),
                              TTekst(Zloz(polski), ztok::StronaWin1250), TTekst(Zloz(nazwy), ztok::StronaWin1250),
                              TTekst(Zloz(ascii), ztok::StronaWin1250)};
    constexpr const char* kRodzaje[] = {"Polish", "names", "ASCII", "mixed", "Polish", "names", "ASCII"};
    for (std::size_t i = 0; i < std::size(teksty); ++i) {
        ZarejestrujNasze(kRodzaje[i], teksty[i]);
        ZarejestrujIcu(kRodzaje[i], teksty[i]);
        ZarejestrujIconv(kRodzaje[i], teksty[i]);
    }
}

} // namespace pomiary
