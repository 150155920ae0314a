#include "ztok/platform/Kodowania.h"

#include <algorithm>
#include <cstring>

#include "ztok/platform/PrzebiegiAscii.h"

namespace ztok {

namespace {

constexpr char16_t ZnakZastepczy = 0xFFFD;

[[nodiscard]] constexpr bool JestWysokim(unsigned znak) noexcept { return znak - 0xD800U < 0x400U; }
[[nodiscard]] constexpr bool JestNiskim(unsigned znak) noexcept { return znak - 0xDC00U < 0x400U; }

// ---- UTF-8 sequences ------------------------------------------------------------------------------------------------

// One sequence as it was read: its length in bytes and its code point, or the length of a maximal ill-formed part.
struct TSekwencja {
    unsigned bajtow;
    unsigned znak;
    bool poprawna;
};

// Reads the sequence at a byte that is not ASCII. The ranges of the second byte are those of table 3-7 of the Unicode
// standard, but for the surrogates: `doEd` is the last second byte that is taken after ED.
[[nodiscard]] TSekwencja WezSekwencje(const unsigned char* p, std::size_t ile, unsigned doEd) noexcept {
    const unsigned pierwszy = p[0];
    unsigned dlugosc = 0;
    unsigned znak = 0;
    unsigned odDrugi = 0x80;
    unsigned doDrugi = 0xBF;
    if (pierwszy >= 0xC2 && pierwszy <= 0xDF) {
        dlugosc = 2;
        znak = pierwszy & 0x1FU;
    } else if (pierwszy >= 0xE0 && pierwszy <= 0xEF) {
        dlugosc = 3;
        znak = pierwszy & 0x0FU;
        if (pierwszy == 0xE0)
            odDrugi = 0xA0;
        else if (pierwszy == 0xED)
            doDrugi = doEd;
    } else if (pierwszy >= 0xF0 && pierwszy <= 0xF4) {
        dlugosc = 4;
        znak = pierwszy & 0x07U;
        if (pierwszy == 0xF0)
            odDrugi = 0x90;
        else if (pierwszy == 0xF4)
            doDrugi = 0x8F;
    } else {
        return {1, 0, false};
    }
    if (ile < 2 || p[1] < odDrugi || p[1] > doDrugi)
        return {1, 0, false};
    znak = znak << 6U | (p[1] & 0x3FU);
    for (unsigned i = 2; i < dlugosc; ++i) {
        if (i >= ile || (p[i] & 0xC0U) != 0x80U)
            return {i, 0, false};
        znak = znak << 6U | (p[i] & 0x3FU);
    }
    return {dlugosc, znak, true};
}

// Last second bytes after ED: none of the surrogates, the high ones only, both kinds. After a three-byte high surrogate
// a three-byte low one would make a second form of a four-byte sequence.
constexpr unsigned kBezSurogatow = 0x9F;
constexpr unsigned kTylkoWysokie = 0xAF;
constexpr unsigned kWszystkie = 0xBF;

// Whether a sequence of one or two bytes starts here, told without a jump between the two.
[[nodiscard]] inline bool JednoLubDwubajtowa(unsigned pierwszy, unsigned drugi) noexcept {
    const unsigned ascii = pierwszy < 0x80 ? 1U : 0U;
    const unsigned dwa = (pierwszy - 0xC2U < 0x1EU ? 1U : 0U) & ((drugi & 0xC0U) == 0x80U ? 1U : 0U);
    return (ascii | dwa) != 0;
}

template <bool scisle> std::size_t Dekoduj(const char* od, std::size_t ile, char16_t* cel) noexcept {
    const auto* bajty = reinterpret_cast<const unsigned char*>(od);
    char16_t* p = cel;
    std::size_t i = 0;
    bool poWysokim = false;
    while (i < ile) {
        const std::size_t ascii = PoszerzAscii(od + i, ile - i, p);
        i += ascii;
        p += ascii;
        poWysokim = poWysokim && ascii == 0;
        const std::size_t koniec = std::min(ile, i + 16);
        while (i < koniec) {
            const unsigned pierwszy = bajty[i];
            // One- and two-byte sequences without a jump that depends on which it is; anything else leaves below.
            const unsigned drugi = i + 1 < ile ? bajty[i + 1] : 0U;
            if (JednoLubDwubajtowa(pierwszy, drugi)) {
                const unsigned dwa = pierwszy >= 0x80 ? 1U : 0U;
                *p++ = static_cast<char16_t>(dwa != 0 ? (pierwszy & 0x1FU) << 6U | (drugi & 0x3FU) : pierwszy);
                i += 1 + dwa;
                poWysokim = false;
                continue;
            }
            const TSekwencja sekwencja = WezSekwencje(bajty + i, ile - i,
                                                      scisle      ? kBezSurogatow
                                                      : poWysokim ? kTylkoWysokie
                                                                  : kWszystkie);
            i += sekwencja.bajtow;
            poWysokim = false;
            if (!sekwencja.poprawna) {
                *p++ = ZnakZastepczy;
            } else if (sekwencja.znak >= 0x10000) {
                *p++ = static_cast<char16_t>(0xD7C0U + (sekwencja.znak >> 10U));
                *p++ = static_cast<char16_t>(0xDC00U | (sekwencja.znak & 0x3FFU));
            } else {
                *p++ = static_cast<char16_t>(sekwencja.znak);
                poWysokim = JestWysokim(sekwencja.znak);
            }
        }
    }
    return static_cast<std::size_t>(p - cel);
}

// Where the first surrogate of well-formed generalised UTF-8 stands, from `od` on; its length when there is none.
[[nodiscard]] std::size_t PierwszySurogat(std::string_view bajtyUtf8, std::size_t od) noexcept {
    for (; (od = bajtyUtf8.find('\xED', od)) < bajtyUtf8.size(); ++od)
        if (static_cast<unsigned char>(bajtyUtf8[od + 1]) >= 0xA0)
            return od;
    return bajtyUtf8.size();
}

// Grows by at least half, so that many appends stay linear.
template <class Tekst> void ZapewnijMiejsce(Tekst& tekst, std::size_t ile) {
    if (tekst.capacity() - tekst.size() < ile)
        tekst.reserve(std::max(tekst.size() + ile, tekst.capacity() + tekst.capacity() / 2));
}

} // namespace

std::size_t KodujUtf8(const char16_t* od, std::size_t ile, char* cel) noexcept {
    char* p = cel;
    std::size_t i = 0;
    while (i < ile) {
        const std::size_t ascii = ZwezAscii(od + i, ile - i, p);
        i += ascii;
        p += ascii;
        // A block holds something else, or the end is near: a stretch unit by unit. Below U+0800 without a jump that
        // depends on the text, since ASCII and two-byte letters alternate at random there.
        const std::size_t koniec = std::min(ile, i + 8);
        while (i < koniec) {
            const unsigned znak = od[i++];
            if (znak < 0x800) {
                const unsigned dwa = znak >= 0x80 ? 1U : 0U;
                p[0] = static_cast<char>(dwa != 0 ? 0xC0U | znak >> 6U : znak);
                p[1] = static_cast<char>(0x80U | (znak & 0x3FU));
                p += 1 + dwa;
            } else if (JestWysokim(znak) && i < ile && JestNiskim(od[i])) {
                const unsigned punkt = 0x10000U + ((znak & 0x3FFU) << 10U) + (od[i++] & 0x3FFU);
                p[0] = static_cast<char>(0xF0U | punkt >> 18U);
                p[1] = static_cast<char>(0x80U | (punkt >> 12U & 0x3FU));
                p[2] = static_cast<char>(0x80U | (punkt >> 6U & 0x3FU));
                p[3] = static_cast<char>(0x80U | (punkt & 0x3FU));
                p += 4;
            } else {
                p[0] = static_cast<char>(0xE0U | znak >> 12U);
                p[1] = static_cast<char>(0x80U | (znak >> 6U & 0x3FU));
                p[2] = static_cast<char>(0x80U | (znak & 0x3FU));
                p += 3;
            }
        }
    }
    return static_cast<std::size_t>(p - cel);
}

std::size_t DekodujUtf8(const char* od, std::size_t ile, char16_t* cel) noexcept {
    return Dekoduj<false>(od, ile, cel);
}

std::size_t DekodujUtf8Scisle(const char* od, std::size_t ile, char16_t* cel) noexcept {
    return Dekoduj<true>(od, ile, cel);
}

std::size_t PelneUtf8(std::string_view kawalek) noexcept {
    const auto bajt = [&](std::size_t i) { return static_cast<unsigned char>(kawalek[i]); };
    std::size_t ile = kawalek.size();
    // A sequence that may go on behind the end starts at a leading byte among the last three.
    for (std::size_t i = 1; i <= 3 && i <= ile; ++i)
        if (const unsigned pierwszy = bajt(ile - i); pierwszy >= 0xC0) {
            const std::size_t dlugosc = pierwszy < 0xE0 ? 2 : pierwszy < 0xF0 ? 3 : 4;
            ile -= dlugosc > i ? i : 0;
            break;
        }
    // A high surrogate stays with what stands behind it.
    if (ile >= 3 && bajt(ile - 3) == 0xED && bajt(ile - 2) - 0xA0U < 0x10U)
        ile -= 3;
    return ile;
}

bool PoprawneUtf8(std::string_view bajty) noexcept {
    const auto* p = reinterpret_cast<const unsigned char*>(bajty.data());
    const std::size_t ile = bajty.size();
    std::size_t i = 0;
    bool poWysokim = false;
    while (i < ile) {
        const std::size_t ascii = PominAscii(bajty.data() + i, ile - i);
        i += ascii;
        poWysokim = poWysokim && ascii == 0;
        const std::size_t koniec = std::min(ile, i + 16);
        while (i < koniec) {
            if (i + 1 < ile && JednoLubDwubajtowa(p[i], p[i + 1])) {
                i += p[i] >= 0x80 ? 2U : 1U;
                poWysokim = false;
                continue;
            }
            if (p[i] < 0x80) // the last byte
                return true;
            const TSekwencja sekwencja = WezSekwencje(p + i, ile - i, poWysokim ? kTylkoWysokie : kWszystkie);
            if (!sekwencja.poprawna)
                return false;
            i += sekwencja.bajtow;
            poWysokim = JestWysokim(sekwencja.znak);
        }
    }
    return true;
}

bool MaSurogatUtf8(std::string_view bajty) noexcept { return PierwszySurogat(bajty, 0) < bajty.size(); }

void ZastapSurogaty(std::string& tekstUtf8) noexcept {
    for (std::size_t i = 0; (i = PierwszySurogat(tekstUtf8, i)) < tekstUtf8.size(); i += 3)
        std::memcpy(tekstUtf8.data() + i, "\xEF\xBF\xBD", 3);
}

bool MaSamotnySurogat(std::u16string_view tekst) noexcept {
    for (std::size_t i = 0; i < tekst.size(); ++i) {
        if (JestNiskim(tekst[i]))
            return true;
        if (JestWysokim(tekst[i]) && (++i == tekst.size() || !JestNiskim(tekst[i])))
            return true;
    }
    return false;
}

std::size_t DlugoscUtf8(std::u16string_view tekst) noexcept {
    std::size_t wynik = tekst.size();
    for (std::size_t i = 0; i < tekst.size(); ++i) {
        const unsigned znak = tekst[i];
        wynik += (znak >= 0x80 ? 1U : 0U) + (znak >= 0x800 ? 1U : 0U);
        if (JestWysokim(znak) && i + 1 < tekst.size() && JestNiskim(tekst[i + 1]))
            ++i; // 3 bytes are counted for the first half and 1 for the second: the pair's four
    }
    return wynik;
}

void DopiszUtf8(std::string& celUtf8, std::u16string_view tekst) {
    constexpr std::size_t Kawalek = 256;
    char bufor[3 * Kawalek];
    ZapewnijMiejsce(celUtf8, tekst.size());
    while (!tekst.empty()) {
        std::size_t ile = std::min(tekst.size(), Kawalek);
        if (ile < tekst.size() && JestWysokim(tekst[ile - 1]))
            --ile; // the pair stays together; a piece is longer than one unit, so it never becomes empty
        celUtf8.append(bufor, KodujUtf8(tekst.data(), ile, bufor));
        tekst.remove_prefix(ile);
    }
}

std::string Utf8ZUtf16(std::u16string_view tekst) {
    std::string wynik;
    DopiszUtf8(wynik, tekst);
    return wynik;
}

void DopiszZUtf8(std::u16string& cel, std::string_view bajtyUtf8) {
    constexpr std::size_t Krotki = 256;
    if (bajtyUtf8.size() <= Krotki) { // exact size of the result, one allocation
        char16_t bufor[Krotki];
        cel.append(bufor, DekodujUtf8(bajtyUtf8.data(), bajtyUtf8.size(), bufor));
        return;
    }
    const std::size_t poprzednio = cel.size();
    ZapewnijMiejsce(cel, bajtyUtf8.size());
    cel.resize(poprzednio + bajtyUtf8.size());
    cel.resize(poprzednio + DekodujUtf8(bajtyUtf8.data(), bajtyUtf8.size(), cel.data() + poprzednio));
}

std::u16string Utf16ZUtf8(std::string_view bajtyUtf8) {
    std::u16string wynik;
    DopiszZUtf8(wynik, bajtyUtf8);
    return wynik;
}

} // namespace ztok
