// Streams over memory.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "ztok/platform/TStrumien.h"

namespace ztok {

// Growable memory stream. It can work on memory that it does not own instead, whose size it then never exceeds: a
// write behind it is short.
class ZTOK_API TZTMemoryStream : public TStrumien {
    ZTOK_KLASA_DEKL(TZTMemoryStream)

    TZTMemoryStream() noexcept = default;
    ~TZTMemoryStream() override;

    std::int64_t Read(void* bufor, std::int64_t ile) override;
    // The bytes must not lie in this stream's own memory. Bytes between the end and a position behind it become zero.
    std::int64_t Write(const void* bufor, std::int64_t ile) override;
    std::int64_t Seek(std::int64_t przesuniecie, ESeek skad) override;
    // Size 0 gives the stream's own memory back. Raises EBladZapisu for a negative size, and for one over the size of
    // memory that is not owned.
    void SetSize(std::int64_t rozmiar) override;
    std::int64_t GetSize() override;
    std::int64_t GetPosition() override;
    [[nodiscard]] std::int64_t Pozostalo() override;

    // Works on the given memory from now on, at position 0. It is not owned and must outlive its use here. The stream's
    // own content is freed.
    void SetPointer(void* Ptr, std::int64_t Size) noexcept;

    // Writes the value little-endian, through Write.
    void WriteInt(std::int32_t Wartosc);
    void WriteWord(std::uint16_t Wartosc);

    // Takes memory for that many bytes in all, so that writing them does not move the content.
    void Zarezerwuj(std::int64_t pojemnosc);
    // The whole content; valid until the next change.
    [[nodiscard]] std::span<std::uint8_t> Zawartosc() noexcept;

  protected:
    // For a descendant with a Write of its own: closes the window to writing for good, so that every write gets there.
    void ZamknijOknoZapisu() noexcept;

  private:
    void Uzgodnij() noexcept;
    [[nodiscard]] std::int64_t Pozycja() const noexcept;
    void UstawPozycje(std::int64_t pozycja) noexcept;
    void UstawPojemnosc(std::int64_t pojemnosc);
    void ZwolnijPamiec() noexcept;

    std::uint8_t* pamiec_ = nullptr;
    std::int64_t rozmiar_ = 0; // without what was written through the window since (see Uzgodnij)
    std::int64_t pojemnosc_ = 0;
    std::int64_t pozaOknem_ = 0; // the position while the window is closed: no memory, or behind the end
    bool wlasna_ = true;
    bool oknoZapisu_ = true;
};

// Reads the bytes of an 8-bit text in place.
class ZTOK_API TZTReadOnlyRawByteStream : public TZTMemoryStream {
    ZTOK_KLASA_DEKL(TZTReadOnlyRawByteStream)

    // Refers to the text, which must stay as it is while the stream lives.
    explicit TZTReadOnlyRawByteStream(const std::string& tekst) noexcept;
    // Keeps the text itself.
    explicit TZTReadOnlyRawByteStream(std::string&& tekst) noexcept;
    ~TZTReadOnlyRawByteStream() override;

    // Both raise ZTException: the text is not to be changed.
    std::int64_t Write(const void* bufor, std::int64_t ile) override;
    void SetSize(std::int64_t rozmiar) override;

  private:
    void Wskaz(const std::string& tekst) noexcept;

    std::string wlasny_;
};

} // namespace ztok
