// 8-bit code pages.
#include <algorithm>
#include <array>

#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/PrzebiegiAscii.h"
#include "ztok/platform/StronySystemu.h"
#include "ztok/platform/TabeleStron.h"
#include "ztok/platform/Wyjatki.h"

namespace ztok {

namespace {

// The upper halves, as published by the pages' owners; a byte without a character stands for the control character of
// its own code.
constexpr TTabelaStrony TabelaWin1250(TTabelaStrony::TGorna{
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
});

constexpr TTabelaStrony TabelaWin1251(TTabelaStrony::TGorna{
    0x0402, 0x0403, 0x201A, 0x0453, 0x201E, 0x2026, 0x2020, 0x2021, 0x20AC, 0x2030, 0x0409, 0x2039, 0x040A,
    0x040C, 0x040B, 0x040F, 0x0452, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x0098, 0x2122,
    0x0459, 0x203A, 0x045A, 0x045C, 0x045B, 0x045F, 0x00A0, 0x040E, 0x045E, 0x0408, 0x00A4, 0x0490, 0x00A6,
    0x00A7, 0x0401, 0x00A9, 0x0404, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x0407, 0x00B0, 0x00B1, 0x0406, 0x0456,
    0x0491, 0x00B5, 0x00B6, 0x00B7, 0x0451, 0x2116, 0x0454, 0x00BB, 0x0458, 0x0405, 0x0455, 0x0457, 0x0410,
    0x0411, 0x0412, 0x0413, 0x0414, 0x0415, 0x0416, 0x0417, 0x0418, 0x0419, 0x041A, 0x041B, 0x041C, 0x041D,
    0x041E, 0x041F, 0x0420, 0x0421, 0x0422, 0x0423, 0x0424, 0x0425, 0x0426, 0x0427, 0x0428, 0x0429, 0x042A,
    0x042B, 0x042C, 0x042D, 0x042E, 0x042F, 0x0430, 0x0431, 0x0432, 0x0433, 0x0434, 0x0435, 0x0436, 0x0437,
    0x0438, 0x0439, 0x043A, 0x043B, 0x043C, 0x043D, 0x043E, 0x043F, 0x0440, 0x0441, 0x0442, 0x0443, 0x0444,
    0x0445, 0x0446, 0x0447, 0x0448, 0x0449, 0x044A, 0x044B, 0x044C, 0x044D, 0x044E, 0x044F,
});

// The characters of ISO 8859-2 from A0 on; the 32 before are control characters.
constexpr std::array<char16_t, 96> Iso2OdA0 = {
    0x00A0, 0x0104, 0x02D8, 0x0141, 0x00A4, 0x013D, 0x015A, 0x00A7, 0x00A8, 0x0160, 0x015E, 0x0164, 0x0179, 0x00AD,
    0x017D, 0x017B, 0x00B0, 0x0105, 0x02DB, 0x0142, 0x00B4, 0x013E, 0x015B, 0x02C7, 0x00B8, 0x0161, 0x015F, 0x0165,
    0x017A, 0x02DD, 0x017E, 0x017C, 0x0154, 0x00C1, 0x00C2, 0x0102, 0x00C4, 0x0139, 0x0106, 0x00C7, 0x010C, 0x00C9,
    0x0118, 0x00CB, 0x011A, 0x00CD, 0x00CE, 0x010E, 0x0110, 0x0143, 0x0147, 0x00D3, 0x00D4, 0x0150, 0x00D6, 0x00D7,
    0x0158, 0x016E, 0x00DA, 0x0170, 0x00DC, 0x00DD, 0x0162, 0x00DF, 0x0155, 0x00E1, 0x00E2, 0x0103, 0x00E4, 0x013A,
    0x0107, 0x00E7, 0x010D, 0x00E9, 0x0119, 0x00EB, 0x011B, 0x00ED, 0x00EE, 0x010F, 0x0111, 0x0144, 0x0148, 0x00F3,
    0x00F4, 0x0151, 0x00F6, 0x00F7, 0x0159, 0x016F, 0x00FA, 0x0171, 0x00FC, 0x00FD, 0x0163, 0x02D9,
};

constexpr TTabelaStrony::TGorna GornaIso(const std::array<char16_t, 96>* odA0) {
    TTabelaStrony::TGorna wynik{};
    for (unsigned kod = 128; kod < 256; ++kod)
        wynik[kod - 128] = odA0 == nullptr || kod < 0xA0 ? static_cast<char16_t>(kod) : (*odA0)[kod - 0xA0];
    return wynik;
}

constexpr TTabelaStrony TabelaIso1(GornaIso(nullptr));
constexpr TTabelaStrony TabelaIso2(GornaIso(&Iso2OdA0));

// How much goes through the table before ASCII is looked for again: in Polish text the next letter is never far, and a
// run that ends soon costs more than the table.
constexpr std::size_t kPoAscii = 128;

// The table of the page; raises EBladKonwersji for an unknown one.
[[nodiscard]] const TTabelaStrony& WezTabele(std::uint16_t strona) {
    const TTabelaStrony* tabela = TabelaStrony(strona);
    if (tabela == nullptr)
        throw EBladKonwersji(Formatuj(Komunikat(kmNieznanaStronaKodowa), {strona}));
    return *tabela;
}

} // namespace

const TTabelaStrony* TabelaStrony(std::uint16_t strona) noexcept {
    switch (strona) {
    case StronaWin1250:
        return &TabelaWin1250;
    case StronaWin1251:
        return &TabelaWin1251;
    case StronaIso8859_1:
        return &TabelaIso1;
    case StronaIso8859_2:
        return &TabelaIso2;
    default:
        return nullptr;
    }
}

void NaBajty(const TTabelaStrony& tabela, const char16_t* od, std::size_t ile, char* cel) noexcept {
    for (std::size_t i = 0; i < ile;) {
        i += ZwezAscii(od + i, ile - i, cel + i);
        for (const std::size_t koniec = std::min(ile, i + kPoAscii); i < koniec; ++i)
            cel[i] = static_cast<char>(tabela.Bajt(od[i]));
    }
}

void ZBajtow(const TTabelaStrony& tabela, const char* od, std::size_t ile, char16_t* cel) noexcept {
    for (std::size_t i = 0; i < ile;) {
        i += PoszerzAscii(od + i, ile - i, cel + i);
        for (const std::size_t koniec = std::min(ile, i + kPoAscii); i < koniec; ++i)
            cel[i] = tabela.Znak(od[i]);
    }
}

int KodWin1250(char16_t znak) noexcept {
    if (TabelaWin1250.Ma(znak))
        return static_cast<int>(TabelaWin1250.Bajt(znak));
    return znak < 256 ? znak + 256 : znak;
}

char16_t ZnakZWin1250(char bajt) noexcept { return TabelaWin1250.Znak(bajt); }

char ZnakNaWin1250(char16_t znak, bool& jest) noexcept {
    jest = TabelaWin1250.Ma(znak);
    return static_cast<char>(TabelaWin1250.Bajt(znak));
}

std::string Win1250(std::u16string_view tekst) { return NaStroneKodowa(tekst, StronaWin1250); }

std::u16string ZWin1250(std::string_view bajty) { return ZeStronyKodowej(bajty, StronaWin1250); }

bool MiesciSieWWin1250(std::u16string_view tekst) noexcept {
    return std::all_of(tekst.begin(), tekst.end(), [](char16_t znak) { return TabelaWin1250.Ma(znak); });
}

std::string NaStroneKodowa(std::u16string_view tekst, std::uint16_t strona) {
    std::string wynik;
    if (strona == StronaUtf8) {
        if (!NaUtf8Systemu(tekst, wynik)) {
            wynik = Utf8ZUtf16(tekst);
            ZastapSurogaty(wynik);
        }
        return wynik;
    }
    const TTabelaStrony& tabela = WezTabele(strona);
    wynik.resize(tekst.size());
    const std::size_t i = ZwezAscii(tekst.data(), tekst.size(), wynik.data());
    if (i < tekst.size() && !NaBajtySystemu(strona, tekst.substr(i), wynik.data() + i))
        NaBajty(tabela, tekst.data() + i, tekst.size() - i, wynik.data() + i);
    return wynik;
}

std::u16string ZeStronyKodowej(std::string_view bajty, std::uint16_t strona) {
    std::u16string wynik;
    if (strona == StronaUtf8) {
        if (!ZUtf8Systemu(bajty, wynik)) {
            wynik.resize(bajty.size());
            wynik.resize(DekodujUtf8Scisle(bajty.data(), bajty.size(), wynik.data()));
        }
        return wynik;
    }
    const TTabelaStrony& tabela = WezTabele(strona);
    wynik.resize(bajty.size());
    const std::size_t i = PoszerzAscii(bajty.data(), bajty.size(), wynik.data());
    if (i < bajty.size() && !ZBajtowSystemu(strona, bajty.substr(i), wynik.data() + i))
        ZBajtow(tabela, bajty.data() + i, bajty.size() - i, wynik.data() + i);
    return wynik;
}

bool MiesciSieNaStronie(std::u16string_view tekst, std::uint16_t strona) {
    if (strona == StronaUtf8)
        return !MaSamotnySurogat(tekst);
    const TTabelaStrony& tabela = WezTabele(strona);
    return std::all_of(tekst.begin(), tekst.end(), [&](char16_t znak) { return tabela.Ma(znak); });
}

bool PoprawneNaStronie(std::string_view bajty, std::uint16_t strona) {
    if (strona == StronaUtf8)
        return PoprawneUtf8(bajty) && !MaSurogatUtf8(bajty);
    static_cast<void>(WezTabele(strona));
    return true; // every byte has a character
}

} // namespace ztok
