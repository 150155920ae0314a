#include "ztok/util/Prostehaszowanie.h"

#include <algorithm>

#include "ztok/platform/Kodowania.h"
#include "ztok/util/CRCWektory.h"
#include "ztok/util/Procesor.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {

ZTOK_KLASA_DEF(TZTCRCStream, TStrumien)

namespace {

// Entry i of table t is the CRC of byte i followed by t zero bytes, so that sixteen bytes are looked up at once
// ("slicing", Kounavis and Berry 2005); table 0 is the plain one.
constexpr std::size_t Naraz = 16;
using TTablica = std::array<std::uint32_t, 256>;

constexpr std::array<TTablica, Naraz> ZbudujTablice() noexcept {
    std::array<TTablica, Naraz> tablice{};
    for (std::uint32_t i = 0; i < 256; ++i) {
        std::uint32_t c = i;
        for (int krok = 0; krok < 8; ++krok)
            c = (c & 1U) != 0 ? (c >> 1U) ^ 0xEDB88320U : c >> 1U;
        tablice[0][i] = c;
    }
    for (std::size_t t = 1; t < Naraz; ++t)
        for (std::size_t i = 0; i < 256; ++i)
            tablice[t][i] = tablice[0][tablice[t - 1][i] & 0xFFU] ^ (tablice[t - 1][i] >> 8U);
    return tablice;
}

constexpr std::array<std::uint16_t, 256> ZbudujTablice16() noexcept {
    std::array<std::uint16_t, 256> tablica{};
    for (std::uint32_t i = 0; i < 256; ++i) {
        std::uint32_t c = i;
        for (int krok = 0; krok < 8; ++krok)
            c = (c & 1U) != 0 ? (c >> 1U) ^ 0xA001U : c >> 1U;
        tablica[i] = static_cast<std::uint16_t>(c);
    }
    return tablica;
}

constexpr std::array<TTablica, Naraz> Tablice = ZbudujTablice();
constexpr std::array<std::uint16_t, 256> Tablica16 = ZbudujTablice16();

// Eight steps of the bitwise rule: those low eight bits that it looks at select the table entry, the rest moves down.
// True of a whole 16-bit unit as of a byte.
constexpr std::uint32_t Dodaj16(std::uint32_t crc, std::uint32_t jednostka) noexcept {
    crc ^= jednostka;
    return Tablica16[crc & 0xFFU] ^ (crc >> 8U);
}

std::uint32_t TablicamiCRC(std::uint32_t crc, const std::uint8_t* b, std::size_t ile) noexcept {
    for (; ile >= Naraz; ile -= Naraz, b += Naraz) {
        std::uint32_t nowy = 0;
        for (std::size_t i = 0; i < 4; ++i)
            nowy ^= Tablice[Naraz - 1 - i][b[i] ^ ((crc >> (8U * i)) & 0xFFU)];
        for (std::size_t i = 4; i < Naraz; ++i)
            nowy ^= Tablice[Naraz - 1 - i][b[i]];
        crc = nowy;
    }
    for (; ile > 0; --ile, ++b)
        crc = Tablice[0][(*b ^ crc) & 0xFFU] ^ (crc >> 8U);
    return crc;
}

std::uint8_t Bajt1250(char16_t znak) noexcept {
    bool jest = false;
    return static_cast<std::uint8_t>(ZnakNaWin1250(znak, jest));
}

std::uint8_t BajtDolny(char16_t znak) noexcept { return static_cast<std::uint8_t>(znak); }

// CRC over one byte a unit, in pieces long enough for the fast path.
template <std::uint8_t (*Bajt)(char16_t) noexcept> std::uint32_t KodJednostek(std::u16string_view tekst) noexcept {
    std::uint32_t crc = PoczatekCRC;
    std::uint8_t bajty[512];
    while (!tekst.empty()) {
        const std::size_t ile = std::min(tekst.size(), sizeof bajty);
        std::transform(tekst.begin(), tekst.begin() + static_cast<std::ptrdiff_t>(ile), bajty, Bajt);
        crc = DodajDoCRC(crc, bajty, ile);
        tekst.remove_prefix(ile);
    }
    return crc;
}

} // namespace

constinit const std::array<std::uint32_t, 256> TablicaCRC = Tablice[0];

std::uint32_t DodajDoCRC(std::uint32_t crc, const void* bajty, std::size_t ile) noexcept {
    const auto* b = static_cast<const std::uint8_t*>(bajty);
#if ZTOK_WEKTORY_CRC
    if (ile >= wektory::kProgCRC && UzywaRozszerzenia(rzClmul)) {
        const wektory::TResztaCRC reszta = wektory::SkladajCRC(crc, b, ile);
        return TablicamiCRC(TablicamiCRC(0, reszta.bajty, sizeof reszta.bajty), b + reszta.ileWzieto,
                            ile - reszta.ileWzieto);
    }
#endif
    return TablicamiCRC(crc, b, ile);
}

std::uint32_t DajKodTekstu(std::u16string_view S) noexcept { return KodJednostek<&Bajt1250>(S); }

std::uint32_t DajKodTekstuAnsi(std::string_view S) noexcept { return DodajDoCRC(PoczatekCRC, S.data(), S.size()); }

std::uint32_t DajKodTekstuWide(std::u16string_view S) noexcept { return KodJednostek<&BajtDolny>(S); }

std::uint16_t DajKod16Tekstu(std::u16string_view S) noexcept {
    std::uint32_t crc = 0xFFFFU;
    for (const char16_t znak : S)
        crc = Dodaj16(crc, Bajt1250(znak));
    return static_cast<std::uint16_t>(crc);
}

std::uint16_t DajKod16TekstuAnsi(std::string_view S) noexcept {
    std::uint32_t crc = 0xFFFFU;
    for (const char znak : S)
        crc = Dodaj16(crc, static_cast<std::uint8_t>(znak));
    return static_cast<std::uint16_t>(crc);
}

std::uint16_t DajKod16TekstuWide(std::u16string_view S) noexcept {
    std::uint32_t crc = 0xFFFFU;
    for (const char16_t znak : S)
        crc = Dodaj16(crc, znak);
    return static_cast<std::uint16_t>(crc);
}

TZTCRCStream::~TZTCRCStream() = default;

std::int64_t TZTCRCStream::Read(void*, std::int64_t) { ZTErrorFmt(kmReadSufiks, {Klasa()}); }

std::int64_t TZTCRCStream::Write(const void* bufor, std::int64_t ile) {
    if (ile <= 0)
        return 0;
    crc_ = DodajDoCRC(crc_, bufor, static_cast<std::size_t>(ile));
    return ile;
}

} // namespace ztok
