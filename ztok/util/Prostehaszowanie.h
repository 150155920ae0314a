// Hash codes of texts and a stream that computes a check sum. The codes are stable and not cryptographic.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "ztok/platform/TStrumien.h"

namespace ztok {

// Reflected CRC-32 table of the polynomial 0xEDB88320 (CRC-32/ISO-HDLC).
extern ZTOK_API const std::array<std::uint32_t, 256> TablicaCRC;

inline constexpr std::uint32_t PoczatekCRC = 0xFFFFFFFFU;

// Running CRC-32 over the bytes, begun with PoczatekCRC and not inverted at the end (CRC-32/JAMCRC).
[[nodiscard]] ZTOK_API std::uint32_t DodajDoCRC(std::uint32_t crc, const void* bajty, std::size_t ile) noexcept;

// 32-bit codes: CRC-32/JAMCRC over the Windows-1250 bytes of a Unicode text ("?" for what the page lacks), over the
// bytes of an 8-bit text, over the low bytes of a Unicode text's units. The empty text has 0xFFFFFFFF.
[[nodiscard]] ZTOK_API std::uint32_t DajKodTekstu(std::u16string_view S) noexcept;
[[nodiscard]] ZTOK_API std::uint32_t DajKodTekstuAnsi(std::string_view S) noexcept;
[[nodiscard]] ZTOK_API std::uint32_t DajKodTekstuWide(std::u16string_view S) noexcept;

// 16-bit codes: CRC-16/MODBUS over the same, except that the wide one takes each whole 16-bit unit in the place of a
// byte: for text beyond U+00FF it agrees with no code computed by bytes. The empty text has 0xFFFF.
[[nodiscard]] ZTOK_API std::uint16_t DajKod16Tekstu(std::u16string_view S) noexcept;
[[nodiscard]] ZTOK_API std::uint16_t DajKod16TekstuAnsi(std::string_view S) noexcept;
[[nodiscard]] ZTOK_API std::uint16_t DajKod16TekstuWide(std::u16string_view S) noexcept;

// Write-only stream that keeps nothing but the running CRC: after Reset it is DajKodTekstuAnsi of all bytes written.
class ZTOK_API TZTCRCStream : public TStrumien {
    ZTOK_KLASA_DEKL(TZTCRCStream)

    TZTCRCStream() noexcept { Reset(); }
    ~TZTCRCStream() override;

    void Reset() noexcept { crc_ = PoczatekCRC; }
    // Raises ZTException: there is nothing to read.
    std::int64_t Read(void* bufor, std::int64_t ile) override;
    // Takes every byte.
    std::int64_t Write(const void* bufor, std::int64_t ile) override;
    [[nodiscard]] std::uint32_t CRC() const noexcept { return crc_; }

  private:
    std::uint32_t crc_;
};

} // namespace ztok
