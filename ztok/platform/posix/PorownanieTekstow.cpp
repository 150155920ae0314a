// Order of text by language where the system offers none that is the same on every machine. Each character has weights
// on three levels; a text is compared by all first weights, then by all second ones, then by all third ones, and at
// last by its hyphens and apostrophes, which the first three levels do not see (word order).
#include "ztok/platform/PorownanieTekstow.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace ztok {

namespace {

// Accents as second weights, in their order. Weights of several accents on one letter add up.
enum EAkcent : std::uint8_t {
    akBrak = 0,
    akWariant = 3, // another shape of the same letter
    akOstry = 14,
    akTepy = 15,
    akKropka = 16,
    akDaszek = 18,
    akDieresis = 19,
    akPtaszek = 20,
    akBrewis = 21,
    akMakron = 23,
    akTylda = 25,
    akPierscien = 26,
    akOgonek = 27,
    akCedylla = 28,
    akOstryPodwojny = 29,
    akPrzecinek = 30,
    akKreska = 47,
    akLigatura = 60,
};

// One accented letter: small form, capital form (0 when there is none), base letter, accent. The canonical
// decompositions of the Unicode character database for the Latin blocks, and the letters with a stroke.
struct TLitera {
    char16_t mala;
    char16_t duza;
    char16_t podstawa;
    EAkcent akcent;
};

constexpr auto Litery = std::to_array<TLitera>({
    {0x00E0, 0x00C0, u'a', akTepy},
    {0x00E1, 0x00C1, u'a', akOstry},
    {0x00E2, 0x00C2, u'a', akDaszek},
    {0x00E3, 0x00C3, u'a', akTylda},
    {0x00E4, 0x00C4, u'a', akDieresis},
    {0x00E5, 0x00C5, u'a', akPierscien},
    {0x0101, 0x0100, u'a', akMakron},
    {0x0103, 0x0102, u'a', akBrewis},
    {0x0105, 0x0104, u'a', akOgonek},
    {0x00AA, 0, u'a', akWariant},
    {0x00E7, 0x00C7, u'c', akCedylla},
    {0x0107, 0x0106, u'c', akOstry},
    {0x0109, 0x0108, u'c', akDaszek},
    {0x010B, 0x010A, u'c', akKropka},
    {0x010D, 0x010C, u'c', akPtaszek},
    {0x00F0, 0x00D0, u'd', akLigatura},
    {0x0138, 0, u'k', akLigatura},
    {0x014B, 0x014A, u'n', akLigatura},
    {0x010F, 0x010E, u'd', akPtaszek},
    {0x0111, 0x0110, u'd', akKreska},
    {0x00E8, 0x00C8, u'e', akTepy},
    {0x00E9, 0x00C9, u'e', akOstry},
    {0x00EA, 0x00CA, u'e', akDaszek},
    {0x00EB, 0x00CB, u'e', akDieresis},
    {0x0113, 0x0112, u'e', akMakron},
    {0x0115, 0x0114, u'e', akBrewis},
    {0x0117, 0x0116, u'e', akKropka},
    {0x0119, 0x0118, u'e', akOgonek},
    {0x011B, 0x011A, u'e', akPtaszek},
    {0x011D, 0x011C, u'g', akDaszek},
    {0x011F, 0x011E, u'g', akBrewis},
    {0x0121, 0x0120, u'g', akKropka},
    {0x0123, 0x0122, u'g', akCedylla},
    {0x0125, 0x0124, u'h', akDaszek},
    {0x0127, 0x0126, u'h', akKreska},
    {0x00EC, 0x00CC, u'i', akTepy},
    {0x00ED, 0x00CD, u'i', akOstry},
    {0x00EE, 0x00CE, u'i', akDaszek},
    {0x00EF, 0x00CF, u'i', akDieresis},
    {0x0129, 0x0128, u'i', akTylda},
    {0x012B, 0x012A, u'i', akMakron},
    {0x012D, 0x012C, u'i', akBrewis},
    {0x012F, 0x012E, u'i', akOgonek},
    {0, 0x0130, u'i', akKropka},
    {0x0131, 0, u'i', akWariant},
    {0x0135, 0x0134, u'j', akDaszek},
    {0x0137, 0x0136, u'k', akCedylla},
    {0x013A, 0x0139, u'l', akOstry},
    {0x013C, 0x013B, u'l', akCedylla},
    {0x013E, 0x013D, u'l', akPtaszek},
    {0x0140, 0x013F, u'l', akKropka},
    {0x0142, 0x0141, u'l', akKreska},
    {0x00F1, 0x00D1, u'n', akTylda},
    {0x0144, 0x0143, u'n', akOstry},
    {0x0146, 0x0145, u'n', akCedylla},
    {0x0148, 0x0147, u'n', akPtaszek},
    {0x00F2, 0x00D2, u'o', akTepy},
    {0x00F3, 0x00D3, u'o', akOstry},
    {0x00F4, 0x00D4, u'o', akDaszek},
    {0x00F5, 0x00D5, u'o', akTylda},
    {0x00F6, 0x00D6, u'o', akDieresis},
    {0x00F8, 0x00D8, u'o', akKreska},
    {0x014D, 0x014C, u'o', akMakron},
    {0x014F, 0x014E, u'o', akBrewis},
    {0x0151, 0x0150, u'o', akOstryPodwojny},
    {0x00BA, 0, u'o', akWariant},
    {0x0155, 0x0154, u'r', akOstry},
    {0x0157, 0x0156, u'r', akCedylla},
    {0x0159, 0x0158, u'r', akPtaszek},
    {0x015B, 0x015A, u's', akOstry},
    {0x015D, 0x015C, u's', akDaszek},
    {0x015F, 0x015E, u's', akCedylla},
    {0x0161, 0x0160, u's', akPtaszek},
    {0x0219, 0x0218, u's', akPrzecinek},
    {0x017F, 0, u's', akLigatura},
    {0x0163, 0x0162, u't', akCedylla},
    {0x0165, 0x0164, u't', akPtaszek},
    {0x0167, 0x0166, u't', akKreska},
    {0x021B, 0x021A, u't', akPrzecinek},
    {0x00F9, 0x00D9, u'u', akTepy},
    {0x00FA, 0x00DA, u'u', akOstry},
    {0x00FB, 0x00DB, u'u', akDaszek},
    {0x00FC, 0x00DC, u'u', akDieresis},
    {0x0169, 0x0168, u'u', akTylda},
    {0x016B, 0x016A, u'u', akMakron},
    {0x016D, 0x016C, u'u', akBrewis},
    {0x016F, 0x016E, u'u', akPierscien},
    {0x0171, 0x0170, u'u', akOstryPodwojny},
    {0x0173, 0x0172, u'u', akOgonek},
    {0x0175, 0x0174, u'w', akDaszek},
    {0x00FD, 0x00DD, u'y', akOstry},
    {0x00FF, 0x0178, u'y', akDieresis},
    {0x0177, 0x0176, u'y', akDaszek},
    {0x017A, 0x0179, u'z', akOstry},
    {0x017C, 0x017B, u'z', akKropka},
    {0x017E, 0x017D, u'z', akPtaszek},
    {0x03AC, 0x0386, 0x03B1, akOstry},
    {0x03AD, 0x0388, 0x03B5, akOstry},
    {0x03AE, 0x0389, 0x03B7, akOstry},
    {0x03AF, 0x038A, 0x03B9, akOstry},
    {0x03CC, 0x038C, 0x03BF, akOstry},
    {0x03CD, 0x038E, 0x03C5, akOstry},
    {0x03CE, 0x038F, 0x03C9, akOstry},
    {0x03C2, 0, 0x03C3, akLigatura},
    {0x0451, 0x0401, 0x0435, akDieresis},
});

// Letters that stand for two.
struct TPara {
    char16_t mala;
    char16_t duza;
    char16_t pierwsza;
    char16_t druga;
};

constexpr auto Pary = std::to_array<TPara>({
    {0x00DF, 0x1E9E, u's', u's'},
    {0x00E6, 0x00C6, u'a', u'e'},
    {0x0153, 0x0152, u'o', u'e'},
    {0x00FE, 0x00DE, u't', u'h'},
    {0x0133, 0x0132, u'i', u'j'},
    {0x2122, 0, u't', u'm'},
});

// Letters of the Polish alphabet beyond a to z, small forms; z-acute sorts before z-dot by their accents' order.
[[nodiscard]] constexpr bool JestPolska(char16_t mala) noexcept {
    constexpr std::u16string_view PolskieLitery = u"ąćęłńóśźż";
    return PolskieLitery.find(mala) != std::u16string_view::npos;
}

// Blanks, punctuation and signs of the code page Windows-1250 and a few more, in their order; those not listed follow.
constexpr std::u16string_view KolejnoscZnakow =
    u" \u00A0\t\n\v\f\r!\"#$%&()*,./:;?@[\\]^_`{|}~¡¦¨¯´¸¿ˇ˘˙˛˝‘’‚“”„′″‹›¢£¤¥€+<=>±«»×÷§©¬®°µ¶·…†‡•‰";

// Weights of one character. First weights: control characters < blanks, punctuation, signs < digits < letters; a
// letter has its code there times 64, so that accents which make letters of their own fit in between.
struct TWagi {
    std::uint32_t pierwsza = 0;
    std::uint8_t druga = 0;
    std::uint8_t trzecia = 0; // 0 small or caseless, 1 capital
};

constexpr std::uint32_t KlasaSterujacy = 1U << 28U;
constexpr std::uint32_t KlasaZnak = 2U << 28U;
constexpr std::uint32_t KlasaCyfra = 3U << 28U;
constexpr std::uint32_t KlasaLitera = 4U << 28U;

[[nodiscard]] constexpr TWagi WagiLitery(std::uint32_t mala, bool duza, EAkcent akcent) {
    return {KlasaLitera | mala * 64U, akcent, static_cast<std::uint8_t>(duza ? 1 : 0)};
}

// Weights of a code point outside the tables of accented and double letters.
[[nodiscard]] constexpr TWagi WagiZwykle(std::uint32_t kod) {
    if (const std::size_t miejsce = KolejnoscZnakow.find(static_cast<char16_t>(kod));
        kod < 0x10000 && miejsce != std::u16string_view::npos)
        return {KlasaZnak | static_cast<std::uint32_t>(miejsce), 0, 0};
    if (kod < 0x20 || kod == 0x7F)
        return {KlasaSterujacy | kod, 0, 0};
    if (kod >= '0' && kod <= '9')
        return {KlasaCyfra | kod * 4U, 0, 0};
    if (kod >= 0xBC && kod <= 0xBE) // fractions follow 0
        return {KlasaCyfra | ('0' * 4U + kod - 0xBBU), 0, 0};
    if (kod == 0xB9 || kod == 0xB2 || kod == 0xB3) // raised 1, 2, 3
        return {KlasaCyfra | (kod == 0xB9 ? '1' : kod - 0x80U) * 4U, akWariant, 0};
    if (kod >= 'a' && kod <= 'z')
        return WagiLitery(kod, false, akBrak);
    if (kod >= 'A' && kod <= 'Z')
        return WagiLitery(kod + 0x20, true, akBrak);
    if (kod < 0xC0 || (kod >= 0x2000 && kod <= 0x2BFF) || (kod >= 0x3000 && kod <= 0x303F))
        return {KlasaZnak | (0x100U + kod), 0, 0}; // after all that are listed
    if (kod >= 0x0391 && kod <= 0x03A9)            // Greek
        return WagiLitery(kod + 0x20, true, akBrak);
    if (kod >= 0x0410 && kod <= 0x042F) // Cyrillic
        return WagiLitery(kod + 0x20, true, akBrak);
    if (kod >= 0x0400 && kod <= 0x040F)
        return WagiLitery(kod + 0x50, true, akBrak);
    return WagiLitery(kod, false, akBrak);
}

// Weights of the characters that the tables above list, prepared at compile time; a first weight of 0 marks one that
// stands for two letters.
struct TTablicaWag {
    static constexpr std::size_t Ile = 0x460;
    std::array<TWagi, Ile> niezmienna{};
    std::array<TWagi, Ile> polska{};
};

constexpr TTablicaWag ZbudujTablice() {
    TTablicaWag t;
    for (std::uint32_t kod = 0; kod < TTablicaWag::Ile; ++kod)
        t.niezmienna[kod] = t.polska[kod] = WagiZwykle(kod);
    for (const TLitera& l : Litery) {
        for (const char16_t kod : {l.mala, l.duza}) {
            if (kod == 0)
                continue;
            const TWagi wagi = WagiLitery(l.podstawa, kod == l.duza, l.akcent);
            t.niezmienna[kod] = wagi;
            t.polska[kod] = wagi;
            if (JestPolska(l.mala)) {
                t.polska[kod].pierwsza += l.akcent;
                t.polska[kod].druga = akBrak;
            }
        }
    }
    for (const TPara& para : Pary) {
        for (const char16_t kod : {para.mala, para.duza}) {
            if (kod != 0 && kod < TTablicaWag::Ile)
                t.niezmienna[kod] = t.polska[kod] = {};
        }
    }
    return t;
}

constexpr TTablicaWag TablicaWag = ZbudujTablice();

[[nodiscard]] EAkcent AkcentLaczony(char16_t znak) noexcept {
    switch (znak) {
    case 0x0300:
        return akTepy;
    case 0x0301:
        return akOstry;
    case 0x0302:
        return akDaszek;
    case 0x0303:
        return akTylda;
    case 0x0304:
        return akMakron;
    case 0x0306:
        return akBrewis;
    case 0x0307:
        return akKropka;
    case 0x0308:
        return akDieresis;
    case 0x030A:
        return akPierscien;
    case 0x030B:
        return akOstryPodwojny;
    case 0x030C:
        return akPtaszek;
    case 0x0326:
        return akPrzecinek;
    case 0x0327:
        return akCedylla;
    case 0x0328:
        return akOgonek;
    case 0x0335:
        return akKreska;
    default:
        return akLigatura;
    }
}

[[nodiscard]] constexpr bool JestLaczony(char16_t znak) noexcept { return znak >= 0x0300 && znak <= 0x036F; }
// Place of a hyphen, dash or apostrophe among its kind, 0 for other characters.
[[nodiscard]] constexpr int Pomijany(char16_t znak) noexcept {
    constexpr std::u16string_view Kolejnosc = u"\u00AD'-\u2010\u2011\u2012\u2013\u2014\u2015";
    if (znak > u'-' && (znak < 0x00AD || (znak > 0x00AD && znak < 0x2010)))
        return 0; // nearly every character
    const std::size_t miejsce = Kolejnosc.find(znak);
    return miejsce == std::u16string_view::npos ? 0 : static_cast<int>(miejsce) + 1;
}

// Walks a text weight by weight.
class TPrzeglad {
  public:
    TPrzeglad(std::u16string_view tekst, bool polska) noexcept
        : tekst_(tekst), wagi_((polska ? TablicaWag.polska : TablicaWag.niezmienna).data()) {}

    // The next hyphen, dash or apostrophe before the next letter as its place among its kind, or 0.
    [[nodiscard]] int WezPomijany() noexcept {
        if (druga_ != 0 || pozycja_ >= tekst_.size())
            return 0;
        const int pomijany = Pomijany(tekst_[pozycja_]);
        pozycja_ += pomijany != 0 ? 1U : 0U;
        return pomijany;
    }

    // The next weights; false at the end. WezPomijany has answered 0.
    [[nodiscard]] bool Wez(TWagi& wagi) noexcept {
        if (druga_ != 0) {
            wagi = WagiLitery(druga_, duzaDruga_, akBrak);
            druga_ = 0;
        } else if (pozycja_ >= tekst_.size()) {
            return false;
        } else {
            WezZnak(wagi);
        }
        for (; pozycja_ < tekst_.size() && JestLaczony(tekst_[pozycja_]); ++pozycja_)
            wagi.druga = static_cast<std::uint8_t>(wagi.druga + AkcentLaczony(tekst_[pozycja_]));
        return true;
    }

  private:
    void WezZnak(TWagi& wagi) noexcept {
        const char16_t znak = Zlozony();
        if (znak < TTablicaWag::Ile && wagi_[znak].pierwsza != 0) {
            wagi = wagi_[znak];
            return;
        }
        for (const TPara& para : Pary) {
            if (znak == para.mala || znak == para.duza) {
                duzaDruga_ = znak == para.duza;
                wagi = WagiLitery(para.pierwsza, duzaDruga_, akLigatura);
                druga_ = para.druga;
                return;
            }
        }
        for (const TLitera& l : Litery) {
            if (znak == l.mala || znak == l.duza) {
                wagi = WagiLitery(l.podstawa, znak == l.duza, l.akcent);
                return;
            }
        }
        std::uint32_t kod = znak;
        if (kod - 0xD800U < 0x400U && pozycja_ < tekst_.size() && tekst_[pozycja_] - 0xDC00U < 0x400U)
            kod = 0x10000U + ((kod & 0x3FFU) << 10U) + (tekst_[pozycja_++] & 0x3FFU);
        wagi = WagiZwykle(kod);
    }

    // Takes one character, joined with the combining accent after it where a letter of the tables results, so that
    // both spellings of a letter have one place.
    [[nodiscard]] char16_t Zlozony() noexcept {
        const char16_t znak = tekst_[pozycja_++];
        if (pozycja_ >= tekst_.size() || !JestLaczony(tekst_[pozycja_]))
            return znak;
        const EAkcent akcent = AkcentLaczony(tekst_[pozycja_]);
        const char16_t mala = znak >= u'A' && znak <= u'Z' ? static_cast<char16_t>(znak + 0x20) : znak;
        for (const TLitera& l : Litery) {
            if (l.podstawa == mala && l.akcent == akcent && akcent != akLigatura) {
                const char16_t zlozony = mala == znak ? l.mala : l.duza;
                if (zlozony == 0)
                    return znak;
                ++pozycja_;
                return zlozony;
            }
        }
        return znak;
    }

    std::u16string_view tekst_;
    const TWagi* wagi_;
    std::size_t pozycja_ = 0;
    char16_t druga_ = 0; // second letter of a pair, still to be given
    bool duzaDruga_ = false;
};

// Compares the hyphens and apostrophes that stand before the next letter of both texts, and takes them: where one text
// has one and the other none, the one without sorts first.
[[nodiscard]] int PorownajPomijane(TPrzeglad& a, TPrzeglad& b) noexcept {
    int wynik = 0;
    while (true) {
        const int zA = a.WezPomijany();
        const int zB = b.WezPomijany();
        if (zA == 0 && zB == 0)
            return wynik;
        if (wynik == 0 && zA != zB)
            wynik = zA < zB ? -1 : 1;
    }
}

[[nodiscard]] bool JestPolski(std::uint32_t lcid) noexcept {
    constexpr std::uint32_t MaskaJezyka = 0x3FF;
    return (lcid & MaskaJezyka) == (LokalizacjaPolska & MaskaJezyka) || lcid == 0 || lcid == 0x0400 || lcid == 0x0800;
}

} // namespace

int PorownajWgLokalizacji(std::u16string_view a, std::u16string_view b, std::uint32_t lcid, bool bezWielkosci) {
    if (a == b)
        return 0;
    const bool polska = JestPolski(lcid);
    TPrzeglad pA(a, polska);
    TPrzeglad pB(b, polska);
    int pomijane = 0;
    int druga = 0;
    int trzecia = 0;
    while (true) {
        const int znaki = PorownajPomijane(pA, pB);
        pomijane = pomijane != 0 ? pomijane : znaki;
        TWagi wA;
        TWagi wB;
        const bool jestA = pA.Wez(wA);
        const bool jestB = pB.Wez(wB);
        if (!jestA && !jestB)
            break;
        if (!jestA || !jestB)
            return jestA ? 1 : -1;
        if (wA.pierwsza != wB.pierwsza)
            return wA.pierwsza < wB.pierwsza ? -1 : 1;
        if (druga == 0 && wA.druga != wB.druga)
            druga = wA.druga < wB.druga ? -1 : 1;
        if (trzecia == 0 && wA.trzecia != wB.trzecia)
            trzecia = wA.trzecia < wB.trzecia ? -1 : 1;
    }
    if (druga != 0)
        return druga;
    if (trzecia != 0 && !bezWielkosci)
        return trzecia;
    return pomijane;
}

} // namespace ztok
