// CRC-32 by carry-less multiplication, where the processor has it. For the source of the hash codes only.
#pragma once

#include <cstddef>
#include <cstdint>

#if (defined(__x86_64__) || defined(__i386__)) && defined(__GNUC__)
#define ZTOK_WEKTORY_CRC 1
#else
#define ZTOK_WEKTORY_CRC 0
#endif

namespace ztok::wektory {

#if ZTOK_WEKTORY_CRC

// The fewest bytes that SkladajCRC takes.
inline constexpr std::size_t kProgCRC = 64;

// What a CRC computation left behind: 16 bytes whose CRC, begun with 0, is the CRC of all bytes taken.
struct TResztaCRC {
    std::uint8_t bajty[16];
    std::size_t ileWzieto; // a multiple of 16; what is left is shorter than 16 bytes
};

// For a processor with rzClmul.
[[nodiscard]] TResztaCRC SkladajCRC(std::uint32_t crc, const std::uint8_t* bajty, std::size_t ile) noexcept;

#endif

} // namespace ztok::wektory
