#include "ztok/platform/Kodowania.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/KodowaniaWektory.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/Wyjatki.h"

namespace ztok {

namespace {

constexpr char16_t ZnakZastepczy = 0xFFFD;

[[nodiscard]] constexpr bool JestWysokim(unsigned znak) noexcept { return znak - 0xD800U < 0x400U; }
[[nodiscard]] constexpr bool JestNiskim(unsigned znak) noexcept { return znak - 0xDC00U < 0x400U; }

// ---- ASCII runs -----------------------------------------------------------------------------------------------------

// Copies the leading ASCII of 8-unit blocks as bytes. Stops at the first block with anything else, whose leading ASCII
// it copies too. Both ends need room for whole blocks only as far as `ile` reaches.
[[nodiscard]] std::size_t ZwezAscii(const char16_t* od, std::size_t ile, char* cel) noexcept {
    std::size_t i = 0;
#if defined(__SSE2__)
    const __m128i poza = _mm_set1_epi16(static_cast<short>(0xFF80));
    for (; ile - i >= 8; i += 8) {
        const __m128i blok = _mm_loadu_si128(reinterpret_cast<const __m128i*>(od + i));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(cel + i), _mm_packus_epi16(blok, blok));
        const __m128i ascii = _mm_cmpeq_epi16(_mm_and_si128(blok, poza), _mm_setzero_si128());
        const auto maska = static_cast<unsigned>(_mm_movemask_epi8(ascii));
        if (maska != 0xFFFFU)
            return i + static_cast<unsigned>(std::countr_one(maska)) / 2;
    }
#else
    for (; ile - i >= 4; i += 4) {
        std::uint64_t blok = 0;
        std::memcpy(&blok, od + i, sizeof blok);
        if ((blok & 0xFF80FF80FF80FF80U) != 0)
            return i;
        for (std::size_t k = 0; k < 4; ++k)
            cel[i + k] = static_cast<char>(od[i + k]);
    }
#endif
    return i;
}

// The reverse: copies the leading ASCII of 16- and 8-byte blocks as units, in the same way.
[[nodiscard]] std::size_t PoszerzAscii(const char* od, std::size_t ile, char16_t* cel) noexcept {
    std::size_t i = 0;
#if defined(__SSE2__)
    const __m128i zero = _mm_setzero_si128();
    for (; ile - i >= 16; i += 16) {
        const __m128i blok = _mm_loadu_si128(reinterpret_cast<const __m128i*>(od + i));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(cel + i), _mm_unpacklo_epi8(blok, zero));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(cel + i + 8), _mm_unpackhi_epi8(blok, zero));
        const auto maska = static_cast<unsigned>(_mm_movemask_epi8(blok));
        if (maska != 0)
            return i + static_cast<unsigned>(std::countr_zero(maska));
    }
    if (ile - i >= 8) {
        const __m128i blok = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(od + i));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(cel + i), _mm_unpacklo_epi8(blok, zero));
        const auto maska = static_cast<unsigned>(_mm_movemask_epi8(blok)) & 0xFFU;
        i += maska != 0 ? static_cast<unsigned>(std::countr_zero(maska)) : 8U;
    }
#else
    for (; ile - i >= 8; i += 8) {
        std::uint64_t blok = 0;
        std::memcpy(&blok, od + i, sizeof blok);
        if ((blok & 0x8080808080808080U) != 0)
            return i;
        for (std::size_t k = 0; k < 8; ++k)
            cel[i + k] = static_cast<char16_t>(od[i + k]);
    }
#endif
    return i;
}

// Length of the leading ASCII, rounded down to whole blocks where it does not end the text.
[[nodiscard]] std::size_t PominAscii(const char* od, std::size_t ile) noexcept {
    std::size_t i = 0;
#if defined(__SSE2__)
    for (; ile - i >= 16; i += 16) {
        const __m128i blok = _mm_loadu_si128(reinterpret_cast<const __m128i*>(od + i));
        const auto maska = static_cast<unsigned>(_mm_movemask_epi8(blok));
        if (maska != 0)
            return i + static_cast<unsigned>(std::countr_zero(maska));
    }
#endif
    for (; ile - i >= 8; i += 8) {
        std::uint64_t blok = 0;
        std::memcpy(&blok, od + i, sizeof blok);
        if ((blok & 0x8080808080808080U) != 0)
            break;
    }
    return i;
}

// ---- UTF-8 sequences ------------------------------------------------------------------------------------------------

// One sequence as it was read: its length in bytes and its code point, or the length of a maximal ill-formed part.
struct TSekwencja {
    unsigned bajtow;
    unsigned znak;
    bool poprawna;
};

// Reads the sequence at a byte that is not ASCII. `poWysokim`: directly before it stands a three-byte high surrogate,
// so a three-byte low one would make a second form of a four-byte sequence and is refused at its first byte.
// The ranges of the second byte are those of table 3-7 of the Unicode standard, widened by the surrogates.
[[nodiscard]] TSekwencja WezSekwencje(const unsigned char* p, std::size_t ile, bool poWysokim) noexcept {
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
        else if (pierwszy == 0xED && poWysokim)
            doDrugi = 0xAF;
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

// Whether a sequence of one or two bytes starts here, told without a jump between the two.
[[nodiscard]] inline bool JednoLubDwubajtowa(unsigned pierwszy, unsigned drugi) noexcept {
    const unsigned ascii = pierwszy < 0x80 ? 1U : 0U;
    const unsigned dwa = (pierwszy - 0xC2U < 0x1EU ? 1U : 0U) & ((drugi & 0xC0U) == 0x80U ? 1U : 0U);
    return (ascii | dwa) != 0;
}

// ---- Windows-1250 ---------------------------------------------------------------------------------------------------

// The upper half of the page, as published by its owner; the five free bytes keep their own codes.
constexpr std::array<char16_t, 128> TablicaWin1250 = {
    0x20AC, 0x0081, 0x201A, 0x0083, 0x201E, 0x2026, 0x2020, 0x2021, 0x0088, 0x2030, 0x0160, 0x2039, 0x015A,
    0x0164, 0x017D, 0x0179, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x0098, 0x2122,
    0x0161, 0x203A, 0x015B, 0x0165, 0x017E, 0x017A, 0x00A0, 0x02C7, 0x02D8, 0x0141, 0x00A4, 0x0104, 0x00A6,
    0x00A7, 0x00A8, 0x00A9, 0x015E, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x017B, 0x00B0, 0x00B1, 0x02DB, 0x0142,
    0x00B4, 0x00B5, 0x00B6, 0x00B7, 0x00B8, 0x0105, 0x015F, 0x00BB, 0x013D, 0x02DD, 0x013E, 0x017C, 0x0154,
    0x00C1, 0x00C2, 0x0102, 0x00C4, 0x0139, 0x0106, 0x00C7, 0x010C, 0x00C9, 0x0118, 0x00CB, 0x011A, 0x00CD,
    0x00CE, 0x010E, 0x0110, 0x0143, 0x0147, 0x00D3, 0x00D4, 0x0150, 0x00D6, 0x00D7, 0x0158, 0x016E, 0x00DA,
    0x0170, 0x00DC, 0x00DD, 0x0162, 0x00DF, 0x0155, 0x00E1, 0x00E2, 0x0103, 0x00E4, 0x013A, 0x0107, 0x00E7,
    0x010D, 0x00E9, 0x0119, 0x00EB, 0x011B, 0x00ED, 0x00EE, 0x010F, 0x0111, 0x0144, 0x0148, 0x00F3, 0x00F4,
    0x0151, 0x00F6, 0x00F7, 0x0159, 0x016F, 0x00FA, 0x0171, 0x00FC, 0x00FD, 0x0163, 0x02D9,
};

// The way back: blocks of 256 characters, found by the character's upper byte. 0 = the page lacks the character
// (U+0000 reads as 0 either way). Five blocks hold characters of the page, block 0 is the empty one.
struct TOdwrotna {
    std::array<std::uint8_t, 256> blok{};
    std::array<std::array<std::uint8_t, 256>, 6> bajt{};
};

constexpr TOdwrotna ZbudujOdwrotna(const std::array<char16_t, 128>& gorna) {
    TOdwrotna wynik;
    std::uint8_t blokow = 1;
    wynik.blok[0] = blokow++;
    for (unsigned kod = 0; kod < 128; ++kod)
        wynik.bajt[1][kod] = static_cast<std::uint8_t>(kod);
    for (unsigned kod = 128; kod < 256; ++kod) {
        const char16_t znak = gorna[kod - 128];
        std::uint8_t& blok = wynik.blok[znak >> 8U];
        if (blok == 0)
            blok = blokow++;
        wynik.bajt[blok][znak & 0xFFU] = static_cast<std::uint8_t>(kod);
    }
    return wynik;
}

constexpr TOdwrotna OdwrotnaWin1250 = ZbudujOdwrotna(TablicaWin1250);

[[nodiscard]] inline unsigned BajtLubZero(const TOdwrotna& tablica, char16_t znak) noexcept {
    return tablica.bajt[tablica.blok[znak >> 8U]][znak & 0xFFU];
}

[[nodiscard]] inline char16_t ZnakBajtu(const std::array<char16_t, 128>& gorna, char bajt) noexcept {
    const auto kod = static_cast<unsigned char>(bajt);
    return kod < 128 ? static_cast<char16_t>(kod) : gorna[kod - 128U];
}

std::string NaBajty(std::u16string_view tekst, const TOdwrotna& tablica) {
    std::string wynik(tekst.size(), '\0');
    for (std::size_t i = ZwezAscii(tekst.data(), tekst.size(), wynik.data()); i < tekst.size(); ++i) {
        const unsigned bajt = BajtLubZero(tablica, tekst[i]);
        wynik[i] = bajt != 0 || tekst[i] == 0 ? static_cast<char>(bajt) : '?';
    }
    return wynik;
}

std::u16string ZBajtow(std::string_view bajty, const std::array<char16_t, 128>& gorna) {
    std::u16string wynik(bajty.size(), u'\0');
    for (std::size_t i = PoszerzAscii(bajty.data(), bajty.size(), wynik.data()); i < bajty.size(); ++i)
        wynik[i] = ZnakBajtu(gorna, bajty[i]);
    return wynik;
}

[[noreturn]] void NieznanaStrona(std::uint16_t strona) {
    throw EBladKonwersji(Formatuj(Komunikat(kmNieznanaStronaKodowa), {strona}));
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
#if ZTOK_WEKTORY_UTF8
        if (wektory::Sa()) {
            const wektory::TPostep postep = wektory::Koduj(od + i, ile - i, p);
            i += postep.przeczytano;
            p += postep.zapisano;
            if (i == ile)
                break;
        }
#endif
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
    const auto* bajty = reinterpret_cast<const unsigned char*>(od);
    char16_t* p = cel;
    std::size_t i = 0;
    bool poWysokim = false;
    while (i < ile) {
#if ZTOK_WEKTORY_UTF8
        if (wektory::Sa()) {
            const wektory::TPostep postep = wektory::Dekoduj(od + i, ile - i, p);
            i += postep.przeczytano;
            p += postep.zapisano;
            poWysokim = poWysokim && postep.przeczytano == 0;
            if (i == ile)
                break;
        }
#endif
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
            const TSekwencja sekwencja = WezSekwencje(bajty + i, ile - i, poWysokim);
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
            const TSekwencja sekwencja = WezSekwencje(p + i, ile - i, poWysokim);
            if (!sekwencja.poprawna)
                return false;
            i += sekwencja.bajtow;
            poWysokim = JestWysokim(sekwencja.znak);
        }
    }
    return true;
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

int KodWin1250(char16_t znak) noexcept {
    const unsigned bajt = BajtLubZero(OdwrotnaWin1250, znak);
    return bajt != 0 ? static_cast<int>(bajt) : static_cast<int>(znak);
}

char16_t ZnakZWin1250(char bajt) noexcept { return ZnakBajtu(TablicaWin1250, bajt); }

char ZnakNaWin1250(char16_t znak, bool& jest) noexcept {
    const unsigned bajt = BajtLubZero(OdwrotnaWin1250, znak);
    jest = bajt != 0 || znak == 0;
    return jest ? static_cast<char>(bajt) : '?';
}

std::string Win1250(std::u16string_view tekst) { return NaBajty(tekst, OdwrotnaWin1250); }

std::u16string ZWin1250(std::string_view bajty) { return ZBajtow(bajty, TablicaWin1250); }

bool MiesciSieWWin1250(std::u16string_view tekst) noexcept {
    return std::all_of(tekst.begin(), tekst.end(),
                       [](char16_t znak) { return znak == 0 || BajtLubZero(OdwrotnaWin1250, znak) != 0; });
}

std::string NaStroneKodowa(std::u16string_view tekst, std::uint16_t strona) {
    if (strona == StronaWin1250)
        return Win1250(tekst);
    NieznanaStrona(strona);
}

std::u16string ZeStronyKodowej(std::string_view bajty, std::uint16_t strona) {
    if (strona == StronaWin1250)
        return ZWin1250(bajty);
    NieznanaStrona(strona);
}

} // namespace ztok
