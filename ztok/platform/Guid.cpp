#include "ztok/platform/Guid.h"

#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/Wyjatki.h"

namespace ztok {

bool TryGuidZTekstu(std::u16string_view tekst, TGUID& guid) noexcept { return CzytajGuid(tekst, guid); }

TGUID GuidZTekstu(std::u16string_view tekst) {
    TGUID guid;
    if (!CzytajGuid(tekst, guid)) {
        throw EBladKonwersji(Formatuj(Komunikat(kmNiepoprawnyGUID), {Skrocony(tekst)}));
    }
    return guid;
}

std::u16string GUIDToString(const TGUID& guid) {
    std::u16string tekst;
    tekst.reserve(kDlugoscTekstuGuid);
    const auto dopisz = [&tekst](std::uint32_t liczba, unsigned cyfr) {
        for (unsigned i = cyfr; i-- > 0;)
            tekst += u"0123456789ABCDEF"[liczba >> (4U * i) & 15U];
    };
    tekst += u'{';
    dopisz(guid.d1, 8);
    tekst += u'-';
    dopisz(guid.d2, 4);
    tekst += u'-';
    dopisz(guid.d3, 4);
    tekst += u'-';
    for (std::size_t i = 0; i < guid.d4.size(); ++i) {
        if (i == 2)
            tekst += u'-';
        dopisz(guid.d4[i], 2);
    }
    tekst += u'}';
    return tekst;
}

TBajtyGuid BajtyGuid(const TGUID& guid) noexcept {
    TBajtyGuid bajty{};
    for (unsigned i = 0; i < 4; ++i)
        bajty[i] = static_cast<std::uint8_t>(guid.d1 >> (8U * i));
    for (unsigned i = 0; i < 2; ++i) {
        bajty[4 + i] = static_cast<std::uint8_t>(guid.d2 >> (8U * i));
        bajty[6 + i] = static_cast<std::uint8_t>(guid.d3 >> (8U * i));
    }
    for (std::size_t i = 0; i < guid.d4.size(); ++i)
        bajty[8 + i] = guid.d4[i];
    return bajty;
}

TGUID GuidZBajtow(const TBajtyGuid& bajty) noexcept {
    TGUID guid;
    for (unsigned i = 0; i < 4; ++i)
        guid.d1 |= static_cast<std::uint32_t>(bajty[i]) << (8U * i);
    guid.d2 = static_cast<std::uint16_t>(bajty[4] | bajty[5] << 8U);
    guid.d3 = static_cast<std::uint16_t>(bajty[6] | bajty[7] << 8U);
    for (std::size_t i = 0; i < guid.d4.size(); ++i)
        guid.d4[i] = bajty[8 + i];
    return guid;
}

} // namespace ztok
