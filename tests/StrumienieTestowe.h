// Streams that behave as badly as a stream may, and short cuts from objects to bytes and back.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
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

inline std::string Zapisz(const ztok::TPole& obiekt, ztok::TZapisywaczDanych* zapisywacz = nullptr) {
    ztok::TZTMemoryStream strumien;
    obiekt.ZapiszWStrumieniu(strumien, zapisywacz);
    const auto bajty = strumien.Zawartosc();
    return {bajty.begin(), bajty.end()};
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
    const auto bajty = strumien.Zawartosc();
    return {bajty.begin(), bajty.end()};
}

inline std::string Tekst(const ztok::TObiektBazowy& obiekt) {
    ztok::TZTMemoryStream strumien;
    obiekt.ZapiszTekstowo(strumien);
    const auto bajty = strumien.Zawartosc();
    return {bajty.begin(), bajty.end()};
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
    const auto cyfra = [](char znak) { return znak <= '9' ? znak - '0' : znak - 'A' + 10; };
    for (std::size_t i = 0; i < tekst.size(); ++i) {
        if (tekst[i] == ' ')
            continue;
        if (tekst[i] == '\'') {
            while (tekst[++i] != '\'')
                bajty += tekst[i];
        } else {
            bajty += static_cast<char>(cyfra(tekst[i]) * 16 + cyfra(tekst[i + 1]));
            ++i;
        }
    }
    return bajty;
}

} // namespace strumienie
