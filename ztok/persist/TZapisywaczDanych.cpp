#include "ztok/persist/TZapisywaczDanych.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "ztok/fields/Konwersje.h"
#include "ztok/kernel/TObiekt.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/TStrumien.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {

namespace {

// Puts a count into at most four bytes; how many.
std::size_t UlozLicznik15(std::uint8_t* cel, std::uint32_t licznik) noexcept {
    if (licznik < 0x80) {
        cel[0] = static_cast<std::uint8_t>(licznik);
        return 1;
    }
    cel[0] = static_cast<std::uint8_t>((licznik >> 8U) | 0x80U);
    cel[1] = static_cast<std::uint8_t>(licznik);
    return 2;
}

std::size_t UlozLicznik30(std::uint8_t* cel, std::uint32_t licznik) noexcept {
    if (licznik < 0x4000)
        return UlozLicznik15(cel, licznik);
    // The high bytes come most significant first, the low word least significant first.
    cel[0] = static_cast<std::uint8_t>((licznik >> 24U) | 0xC0U);
    cel[1] = static_cast<std::uint8_t>(licznik >> 16U);
    cel[2] = static_cast<std::uint8_t>(licznik);
    cel[3] = static_cast<std::uint8_t>(licznik >> 8U);
    return 4;
}

[[noreturn]] void BladLicznika(std::uint64_t licznik) {
    ZTErrorFmt(Komunikat(kmLicznikPozaZakresem), {static_cast<std::int64_t>(licznik)});
}

} // namespace

TZapisywaczDanych::TZapisywaczDanych() = default;
TZapisywaczDanych::~TZapisywaczDanych() = default;

void TZapisywaczDanych::PrzygotujKorzen(const TObiektBazowy& korzen) {
    SprawdzPrzedZapisem(korzen, *this);
    sprawdzony_ = &korzen;
    if (CzyZapisacPole)
        korzen.DajObiektyDoZapisu(*this);
    else
        nieZebrany_ = &korzen;
}

void TZapisywaczDanych::SprawdzSzczyt(const TObiektBazowy& obiekt) {
    if (sprawdzony_ != &obiekt)
        SprawdzPrzedZapisem(obiekt, *this);
}

void TZapisywaczDanych::DodajObiekt(const TObiektBazowy& obiekt) {
    // The record keeps pointers as lists of the model do; a write changes no object.
    ZapObiekty.DodajObiekt(const_cast<TObiektBazowy*>(&obiekt), MaxInt);
    posortowane_ = false;
}

void TZapisywaczDanych::DodajPusty() {
    ZapObiekty.DodajObiekt(nullptr, MaxInt);
    posortowane_ = false;
}

void TZapisywaczDanych::ZbierzObiekty() {
    const TNoweDno dno(Zagniezdzenie);
    std::exchange(nieZebrany_, nullptr)->DajObiektyDoZapisu(*this);
}

void TZapisywaczDanych::SortujListe() {
    Posortowane.clear();
    Posortowane.reserve(static_cast<std::size_t>(ZapObiekty.IleObiektow()));
    bool rosnaco = true;
    for (std::int32_t i = 0; i < ZapObiekty.IleObiektow(); ++i) {
        const TObiektBazowy* obiekt = ZapObiekty.Obiekty(i);
        rosnaco = rosnaco && (i == 0 || std::less<>()(Posortowane.back().obiekt, obiekt));
        Posortowane.push_back({obiekt, i});
    }
    if (!rosnaco)
        std::sort(Posortowane.begin(), Posortowane.end(), [](const TPozycja& a, const TPozycja& b) {
            return a.obiekt != b.obiekt ? std::less<>()(a.obiekt, b.obiekt) : a.pozycja < b.pozycja;
        });
    posortowane_ = true;
    OstObiekt = nullptr;
    OstGdzie = -1;
}

bool TZapisywaczDanych::JestObiekt(const TObiektBazowy* obiekt, std::int32_t& gdzie) {
    gdzie = -1;
    if (obiekt == nullptr)
        return false;
    if (nieZebrany_ != nullptr)
        ZbierzObiekty();
    if (!posortowane_)
        SortujListe();
    if (obiekt != OstObiekt) {
        const auto miejsce =
            std::lower_bound(Posortowane.begin(), Posortowane.end(), obiekt,
                             [](const TPozycja& p, const TObiektBazowy* o) { return std::less<>()(p.obiekt, o); });
        OstObiekt = obiekt;
        OstGdzie = miejsce != Posortowane.end() && miejsce->obiekt == obiekt ? miejsce->pozycja : -1;
    }
    gdzie = OstGdzie;
    return gdzie >= 0;
}

void TZapisywaczDanych::ZapiszLicznik15(TStrumien& strumien, std::uint32_t licznik) {
    if (licznik > 0x7FFF)
        BladLicznika(licznik);
    std::uint8_t bajty[2];
    strumien.WriteBuffer(bajty, UlozLicznik15(bajty, licznik));
}

void TZapisywaczDanych::ZapiszLicznik30(TStrumien& strumien, std::uint32_t licznik) {
    if (licznik > 0x3FFFFFFF)
        BladLicznika(licznik);
    std::uint8_t bajty[4];
    strumien.WriteBuffer(bajty, UlozLicznik30(bajty, licznik));
}

void TZapisywaczDanych::ZapiszLicznik31(TStrumien& strumien, std::uint32_t licznik) {
    if (licznik > 0x7FFFFFFF)
        BladLicznika(licznik);
    std::uint8_t bajty[4];
    if (licznik < 0x8000) {
        bajty[0] = static_cast<std::uint8_t>(licznik);
        bajty[1] = static_cast<std::uint8_t>(licznik >> 8U);
        strumien.WriteBuffer(bajty, 2);
        return;
    }
    bajty[0] = static_cast<std::uint8_t>(licznik >> 16U);
    bajty[1] = static_cast<std::uint8_t>((licznik >> 24U) | 0x80U);
    bajty[2] = static_cast<std::uint8_t>(licznik);
    bajty[3] = static_cast<std::uint8_t>(licznik >> 8U);
    strumien.WriteBuffer(bajty, 4);
}

void TZapisywaczDanych::ZapiszAnsiString(TStrumien& strumien, std::string_view bajty) {
    // The count form holds less than the limit that the message was made for; a length between would break the stream.
    if (bajty.size() > 0x3FFFFFFF)
        ZTErrorFmt(Komunikat(kmPrzekroczonoPojemnosc), {static_cast<std::int64_t>(bajty.size())});
    std::uint8_t licznik[4];
    const std::size_t ile = UlozLicznik30(licznik, static_cast<std::uint32_t>(bajty.size()));
    strumien.WriteBuffer(licznik, ile);
    strumien.WriteBuffer(bajty.data(), bajty.size());
}

void TZapisywaczDanych::ZapiszWideString(TStrumien& strumien, std::u16string_view tekst,
                                         const TZapisywaczDanych* zapisywacz) {
    if (zapisywacz != nullptr && (zapisywacz->OpcjeZapisu & ozWin1250) != 0) {
        ZapiszAnsiString(strumien, PolskiAnsi(tekst));
        return;
    }
    // Most texts fit the stream's window whole: encode in place behind the room for the shortest count, and move up in
    // the rare case that the bytes need a longer one.
    std::uint8_t* cel = tekst.size() < kKrotszyTekst ? strumien.MiejsceZapisu(3 * tekst.size() + 4) : nullptr;
    if (cel == nullptr) {
        if (tekst.size() > 0x3FFFFFFF)
            ZTErrorFmt(Komunikat(kmPrzekroczonoPojemnosc), {static_cast<std::int64_t>(tekst.size())});
        ZapiszAnsiString(strumien, Utf8ZUtf16(tekst));
        return;
    }
    strumien.Zapisano(static_cast<std::size_t>(UlozTekst(cel, tekst) - cel));
}

std::uint8_t* TZapisywaczDanych::UlozTekst(std::uint8_t* cel, std::u16string_view tekst) noexcept {
    std::size_t licznik = tekst.size() < 0x80 ? 1 : 2;
    const std::size_t ile = KodujUtf8(tekst.data(), tekst.size(), reinterpret_cast<char*>(cel) + licznik);
    if (const std::size_t potrzebny = ile < 0x80 ? 1 : 2; potrzebny != licznik) {
        std::memmove(cel + potrzebny, cel + licznik, ile);
        licznik = potrzebny;
    }
    static_assert(3 * kKrotszyTekst < 0x4000, "the longest text encoded in place has a count of two bytes");
    UlozLicznik15(cel, static_cast<std::uint32_t>(ile));
    return cel + licznik + ile;
}

} // namespace ztok
