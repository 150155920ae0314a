// Conversions of text: one long text of each kind, converted into memory that is there.
#include "ztok/platform/Kodowania.h"
#include "pomiary/Grupy.h"
#include "ztok/platform/TabeleStron.h"

namespace pomiary {

TTekstKodowany::TTekstKodowany(std::u16string_view znaki, std::uint16_t jakaStrona)
    : strona(jakaStrona), bajty(ztok::NaStroneKodowa(znaki, strona)), tekst(ztok::ZeStronyKodowej(bajty, strona)) {
    wynik.resize(4 * tekst.size() + 4);
}

namespace {

constexpr std::size_t kZnakow = 100000;

// Repeats the lines in turn up to the length.
std::u16string Zloz(const std::vector<std::u16string>& wiersze) {
    std::u16string wynik;
    for (std::size_t i = 0; wynik.size() < kZnakow; ++i)
        wynik.append(wiersze[i % wiersze.size()]).append(u"\r\n");
    return wynik;
}

void DodajNasze(TPomiary& pomiary, std::string_view rodzaj, TTekstKodowany& t) {
    const auto dodaj = [&](auto naBajty, auto zBajtow) { DodajKodowanie(pomiary, rodzaj, kZtok, t, naBajty, zBajtow); };
    if (t.strona == ztok::StronaUtf8) {
        dodaj([&t] { return ztok::KodujUtf8(t.tekst.data(), t.tekst.size(), t.WynikBajty()); },
              [&t] { return ztok::DekodujUtf8(t.bajty.data(), t.bajty.size(), t.wynik.data()); });
        return;
    }
    const ztok::TTabelaStrony& tabela = *ztok::TabelaStrony(t.strona);
    dodaj(
        [&t, &tabela] {
            ztok::NaBajty(tabela, t.tekst.data(), t.tekst.size(), t.WynikBajty());
            return t.tekst.size();
        },
        [&t, &tabela] {
            ztok::ZBajtow(tabela, t.bajty.data(), t.bajty.size(), t.wynik.data());
            return t.bajty.size();
        });
}

} // namespace

void MierzKodowania(TPomiary& pomiary, const dane::TBaza& baza) {
    std::vector<std::u16string> nazwy; // of the invoices: a Polish letter in nearly every word
    for (const dane::TFaktura& faktura : baza.faktury)
        for (const dane::TPozycja& p : faktura.pozycje)
            if (nazwy.size() < 5000)
                nazwy.push_back(ztok::Utf16ZUtf8(p.nazwa));
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
    struct TRodzaj {
        const char* nazwa;
        TTekstKodowany tekst;
    };
    TRodzaj teksty[] = {{"names", {Zloz(nazwy), ztok::StronaUtf8}},    {"Polish", {Zloz(polski), ztok::StronaUtf8}},
                        {"ASCII", {Zloz(ascii), ztok::StronaUtf8}},    {"mixed", {Zloz(mieszany), ztok::StronaUtf8}},
                        {"names", {Zloz(nazwy), ztok::StronaWin1250}}, {"ASCII", {Zloz(ascii), ztok::StronaWin1250}}};
    for (auto& [nazwa, tekst] : teksty) {
        DodajNasze(pomiary, nazwa, tekst);
        DodajObceKodowania(pomiary, nazwa, tekst);
    }
    pomiary.Wykonaj();
}

} // namespace pomiary
