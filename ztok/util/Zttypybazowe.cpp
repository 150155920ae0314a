#include "ztok/util/Zttypybazowe.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

#include "ztok/util/ZTBledy.h"

namespace ztok {

ZTOK_KLASA_DEF(TZTMemoryStream, TStrumien)
ZTOK_KLASA_DEF(TZTReadOnlyRawByteStream, TZTMemoryStream)

TZTMemoryStream::~TZTMemoryStream() { ZwolnijPamiec(); }

// Writes through the window reach up to the capacity, so the position may have passed the known size.
void TZTMemoryStream::Uzgodnij() noexcept {
    if (poz_ != nullptr)
        rozmiar_ = std::max<std::int64_t>(rozmiar_, poz_ - pamiec_);
}

std::int64_t TZTMemoryStream::Pozycja() const noexcept { return poz_ != nullptr ? poz_ - pamiec_ : pozaOknem_; }

void TZTMemoryStream::UstawPozycje(std::int64_t pozycja) noexcept {
    if (pamiec_ == nullptr || pozycja > rozmiar_) {
        poz_ = koniecOdczytu_ = koniecZapisu_ = nullptr;
        pozaOknem_ = pozycja;
        return;
    }
    poz_ = pamiec_ + pozycja;
    koniecOdczytu_ = pamiec_ + rozmiar_;
    koniecZapisu_ = oknoZapisu_ ? pamiec_ + pojemnosc_ : pamiec_;
}

// Moves the content to a block of that capacity and leaves the position to the caller.
void TZTMemoryStream::UstawPojemnosc(std::int64_t pojemnosc) {
    if (pojemnosc > std::numeric_limits<std::ptrdiff_t>::max())
        throw std::bad_alloc();
    void* blok = std::realloc(pamiec_, static_cast<std::size_t>(pojemnosc));
    if (blok == nullptr)
        throw std::bad_alloc();
    pamiec_ = static_cast<std::uint8_t*>(blok);
    pojemnosc_ = pojemnosc;
}

void TZTMemoryStream::ZwolnijPamiec() noexcept {
    if (wlasna_)
        std::free(pamiec_);
    pamiec_ = nullptr;
    rozmiar_ = pojemnosc_ = 0;
}

std::int64_t TZTMemoryStream::Read(void* bufor, std::int64_t ile) {
    Uzgodnij();
    const std::int64_t pozycja = Pozycja();
    ile = std::min(ile, rozmiar_ - pozycja);
    if (ile <= 0)
        return 0;
    std::memcpy(bufor, pamiec_ + pozycja, static_cast<std::size_t>(ile));
    UstawPozycje(pozycja + ile);
    return ile;
}

std::int64_t TZTMemoryStream::Write(const void* bufor, std::int64_t ile) {
    Uzgodnij();
    const std::int64_t pozycja = Pozycja();
    if (!wlasna_)
        ile = std::min(ile, pojemnosc_ - pozycja);
    if (ile <= 0)
        return 0;
    if (ile > std::numeric_limits<std::ptrdiff_t>::max() - pozycja)
        throw std::bad_alloc();
    const std::int64_t koniec = pozycja + ile;
    if (koniec > pojemnosc_) {
        constexpr std::int64_t Najmniejsza = 256;
        const std::int64_t zapas =
            std::min<std::int64_t>(pojemnosc_, std::numeric_limits<std::ptrdiff_t>::max() - koniec);
        UstawPojemnosc(std::max(koniec, std::max(pojemnosc_ + zapas, Najmniejsza)));
    }
    if (pozycja > rozmiar_)
        std::memset(pamiec_ + rozmiar_, 0, static_cast<std::size_t>(pozycja - rozmiar_));
    std::memcpy(pamiec_ + pozycja, bufor, static_cast<std::size_t>(ile));
    rozmiar_ = std::max(rozmiar_, koniec);
    UstawPozycje(koniec);
    return ile;
}

std::int64_t TZTMemoryStream::Seek(std::int64_t przesuniecie, ESeek skad) {
    Uzgodnij();
    const std::int64_t pozycja = PozycjaWgSeek(przesuniecie, skad, Pozycja(), rozmiar_);
    UstawPozycje(pozycja);
    return pozycja;
}

void TZTMemoryStream::SetSize(std::int64_t rozmiar) {
    Uzgodnij();
    if (rozmiar < 0 || (!wlasna_ && rozmiar > pojemnosc_))
        ZglosZlyRozmiar(rozmiar);
    const std::int64_t pozycja = std::min(Pozycja(), rozmiar);
    if (rozmiar == 0 && wlasna_) {
        ZwolnijPamiec();
    } else {
        if (rozmiar > pojemnosc_)
            UstawPojemnosc(rozmiar);
        if (rozmiar > rozmiar_)
            std::memset(pamiec_ + rozmiar_, 0, static_cast<std::size_t>(rozmiar - rozmiar_));
        rozmiar_ = rozmiar;
    }
    UstawPozycje(pozycja);
}

std::int64_t TZTMemoryStream::GetSize() {
    Uzgodnij();
    return rozmiar_;
}

std::int64_t TZTMemoryStream::GetPosition() { return Pozycja(); }

std::int64_t TZTMemoryStream::Pozostalo() {
    Uzgodnij();
    return std::max<std::int64_t>(0, rozmiar_ - Pozycja());
}

void TZTMemoryStream::SetPointer(void* Ptr, std::int64_t Size) noexcept {
    ZwolnijPamiec();
    wlasna_ = Ptr == nullptr;
    pamiec_ = static_cast<std::uint8_t*>(Ptr);
    rozmiar_ = pojemnosc_ = wlasna_ ? 0 : std::max<std::int64_t>(Size, 0);
    UstawPozycje(0);
}

void TZTMemoryStream::WriteInt(std::int32_t Wartosc) {
    const auto bity = static_cast<std::uint32_t>(Wartosc);
    const std::uint8_t bajty[] = {static_cast<std::uint8_t>(bity), static_cast<std::uint8_t>(bity >> 8U),
                                  static_cast<std::uint8_t>(bity >> 16U), static_cast<std::uint8_t>(bity >> 24U)};
    WriteBuffer(bajty, sizeof bajty);
}

void TZTMemoryStream::WriteWord(std::uint16_t Wartosc) {
    const std::uint8_t bajty[] = {static_cast<std::uint8_t>(Wartosc), static_cast<std::uint8_t>(Wartosc >> 8U)};
    WriteBuffer(bajty, sizeof bajty);
}

void TZTMemoryStream::Zarezerwuj(std::int64_t pojemnosc) {
    if (!wlasna_ || pojemnosc <= pojemnosc_)
        return;
    Uzgodnij();
    const std::int64_t pozycja = Pozycja();
    UstawPojemnosc(pojemnosc);
    UstawPozycje(pozycja);
}

std::span<std::uint8_t> TZTMemoryStream::Zawartosc() noexcept {
    Uzgodnij();
    return {pamiec_, static_cast<std::size_t>(rozmiar_)};
}

void TZTMemoryStream::ZamknijOknoZapisu() noexcept {
    Uzgodnij();
    oknoZapisu_ = false;
    UstawPozycje(Pozycja());
}

TZTReadOnlyRawByteStream::TZTReadOnlyRawByteStream(const std::string& tekst) noexcept { Wskaz(tekst); }

TZTReadOnlyRawByteStream::TZTReadOnlyRawByteStream(std::string&& tekst) noexcept : wlasny_(std::move(tekst)) {
    Wskaz(wlasny_);
}

TZTReadOnlyRawByteStream::~TZTReadOnlyRawByteStream() { SetPointer(nullptr, 0); }

// The memory is only read: the window stays closed to writing, and Write raises.
void TZTReadOnlyRawByteStream::Wskaz(const std::string& tekst) noexcept {
    ZamknijOknoZapisu();
    SetPointer(const_cast<char*>(tekst.data()), static_cast<std::int64_t>(tekst.size()));
}

std::int64_t TZTReadOnlyRawByteStream::Write(const void*, std::int64_t) { NiedozwoloneUzycie(u"Write", *this); }

void TZTReadOnlyRawByteStream::SetSize(std::int64_t) { NiedozwoloneUzycie(u"SetSize", *this); }

} // namespace ztok
