// Streams that behave as badly as a stream may, and short cuts from objects to bytes and back.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

#include "ztok/kernel/Typypolbazowe.h"
#include "ztok/util/Zttypybazowe.h"

namespace strumienie {

// No window, cannot tell how much is left, gives and takes at most `porcja` bytes a call. Fails at the byte `pada`:
// raises, or is short.
class TOporny : public ztok::TStrumien {
  public:
    explicit TOporny(std::string bajty = {}) : dane(std::move(bajty)) {}

    std::int64_t Read(void* bufor, std::int64_t ile) override {
        ile = std::min({ile, porcja, static_cast<std::int64_t>(std::min(dane.size(), pada) - pozycja)});
        if (ile <= 0 && pozycja == pada && rzuca)
            throw ztok::EBladSystemu(u"dysk");
        std::memcpy(bufor, dane.data() + pozycja, static_cast<std::size_t>(std::max<std::int64_t>(ile, 0)));
        pozycja += static_cast<std::size_t>(std::max<std::int64_t>(ile, 0));
        return ile;
    }
    std::int64_t Write(const void* bufor, std::int64_t ile) override {
        const auto przyjete = std::min(static_cast<std::size_t>(ile), pada - std::min(pada, dane.size()));
        if (przyjete < static_cast<std::size_t>(ile) && rzuca)
            throw ztok::EBladSystemu(u"dysk");
        dane.append(static_cast<const char*>(bufor), przyjete);
        return static_cast<std::int64_t>(przyjete);
    }

    std::string dane;
    std::size_t pozycja = 0;
    std::int64_t porcja = 1;
    std::size_t pada = SIZE_MAX;
    bool rzuca = false;
};

inline std::string Zawartosc(ztok::TZTMemoryStream& strumien) {
    return {strumien.Zawartosc().begin(), strumien.Zawartosc().end()};
}

inline std::string LosoweBajty(std::mt19937& los, std::size_t ile) {
    std::string bajty(ile, '\0');
    std::generate(bajty.begin(), bajty.end(), [&los] { return static_cast<char>(los()); });
    return bajty;
}

// A character as UTF-16; a lone surrogate as it is.
inline std::u16string Znak(char32_t kod) {
    if (kod <= 0xFFFF)
        return {static_cast<char16_t>(kod)};
    return {static_cast<char16_t>(0xD7C0U + (kod >> 10U)), static_cast<char16_t>(0xDC00U + (kod & 0x3FFU))};
}

// Random text, at least half of it ASCII; the rest up to U+07FF, of the basic plane, pairs, surrogates, by `rodzajow`.
inline std::u16string LosowyTekst(std::mt19937& los, std::size_t ile, std::size_t rodzajow) {
    std::u16string tekst;
    while (tekst.size() < ile) {
        const std::size_t rodzaj = los() % (2 * rodzajow);
        const auto x = static_cast<unsigned>(los());
        tekst += Znak(rodzaj == 1   ? x % 0x800
                      : rodzaj == 2 ? x % 0x10000
                      : rodzaj == 3 ? 0x10000 + x % 0x100000
                      : rodzaj == 4 ? 0xD800 + x % 0x800
                                    : x % 0x80);
    }
    return tekst;
}

inline std::string Zapisz(const ztok::TPole& obiekt, ztok::TZapisywaczDanych* zapisywacz = nullptr) {
    ztok::TZTMemoryStream strumien;
    obiekt.ZapiszWStrumieniu(strumien, zapisywacz);
    return Zawartosc(strumien);
}

// Returns the position behind what was read.
inline std::int64_t Wczytaj(ztok::TObiektBazowy& obiekt, const std::string& bajty) {
    ztok::TZTReadOnlyRawByteStream strumien(bajty);
    obiekt.WczytajZeStrumienia(strumien);
    return strumien.GetPosition();
}

// The same with the text form, by a writer whose options are set first.
template <class F> std::string Tekst(const ztok::TObiektBazowy& obiekt, const F& ustaw) {
    ztok::TZTMemoryStream strumien;
    ztok::TZapisywaczTekstu zapisywacz(strumien);
    ustaw(zapisywacz);
    zapisywacz.ZapiszDokument(obiekt);
    return Zawartosc(strumien);
}

inline std::string Tekst(const ztok::TObiektBazowy& obiekt) {
    ztok::TZTMemoryStream strumien;
    obiekt.ZapiszTekstowo(strumien);
    return Zawartosc(strumien);
}

inline std::int64_t ZTekstu(ztok::TObiektBazowy& obiekt, const std::string& tekst,
                            const ztok::TOpcjeOdczytu& opcje = {}, std::u16string_view naglowek = {}) {
    ztok::TZTReadOnlyRawByteStream strumien(tekst);
    obiekt.WczytajTekstowo(strumien, opcje, naglowek);
    return strumien.GetPosition();
}

inline std::string Szesnastkowo(std::string_view bajty) {
    std::string tekst;
    for (const char znak : bajty) {
        if (!tekst.empty())
            tekst += ' ';
        tekst += "0123456789ABCDEF"[static_cast<unsigned char>(znak) >> 4U];
        tekst += "0123456789ABCDEF"[static_cast<unsigned char>(znak) & 15U];
    }
    return tekst;
}

// The bytes of a hexadecimal text; blanks do not matter, text in apostrophes stands for itself.
inline std::string Bajty(std::string_view tekst) {
    std::string bajty;
    for (std::size_t i = 0; i < tekst.size(); ++i) {
        if (tekst[i] == ' ')
            continue;
        if (tekst[i] == '\'') {
            while (tekst[++i] != '\'')
                bajty += tekst[i];
        } else {
            bajty += static_cast<char>(std::stoi(std::string(tekst.substr(i++, 2)), nullptr, 16));
        }
    }
    return bajty;
}

} // namespace strumienie
