// Blowfish cipher for texts and streams: 16 rounds, codebook mode, a key of up to 72 bytes. It keeps data from being
// read at a glance; it is no protection against an attacker (docs/szyfr.md says what it leaves open).
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "ztok/platform/Eksport.h"

namespace ztok {

class TStrumien;
class TZTMemoryStream;

// State of the cipher: what the key schedule makes of the digits of pi.
struct TBoxes {
    std::uint32_t P[18];
    std::uint32_t S[4][256];
};

// The state before a key: the hexadecimal digits of pi behind the point.
extern const TBoxes kBoxesPi;

// A block: 8 bytes, taken as two little-endian words of which the first is the left half.
inline constexpr std::size_t kBlokSzyfru = 8;

// One keyed cipher. It keeps nothing from one call to the next, so any number of threads may use one at once.
class ZTOK_API TSzyfrator {
  public:
    // Bytes of a key that count: behind them a longer key makes no difference.
    static constexpr std::size_t kNajdluzszyKlucz = 72;

    // The key is any bytes, at least one. One that gives the same value twice in an S-box (about 1 in 30 thousand) is
    // weak: the letter A is appended, or the first of B to Z that helps. Raises ZTException when none does, as with a
    // weak key of 72 bytes or more, and for an empty key.
    explicit TSzyfrator(std::string_view Klucz);
    TSzyfrator(const TSzyfrator&) = delete;
    TSzyfrator& operator=(const TSzyfrator&) = delete;
    // Overwrites the state.
    ~TSzyfrator();

    // Whether the key was strong as it was given.
    [[nodiscard]] bool SilnyKlucz() const noexcept { return FSilnyKlucz; }

    // Enciphers or deciphers whole blocks in place; `ile` is their number.
    void SzyfrujBloki(void* bajty, std::size_t ile) const noexcept;
    void DeszyfrujBloki(void* bajty, std::size_t ile) const noexcept;

    // The operations of the functions below, with this key.
    void SzyfrujStrumien(TStrumien& Zrodlo, TStrumien& Cel) const;
    void OdszyfrujStrumien(TStrumien& Zrodlo, TStrumien& Cel) const;
    void SzyfrujStrumien(TZTMemoryStream& Strumien) const;
    void OdszyfrujStrumien(TZTMemoryStream& Strumien) const;

  private:
    friend class TPamiecSzyfratorow;

    bool Rozpisz(std::string_view klucz) noexcept;

    TBoxes FBoxes;
    bool FSilnyKlucz;
    std::atomic<std::int32_t> FTrwaSzyfrowanie{0}; // uses of the cached cipher that run now
};

// The key of every function below is any bytes; the empty key stands for the library's own, which is no secret. The
// ciphers of the keys used last are kept, so that a key is scheduled once. All may be called from any thread, each
// stream from one at a time.

// Enciphers the whole content of a stream, from its beginning, and writes the result to the target at its position. N
// bytes become N + 2 to N + 9, a multiple of 8; an empty stream stays empty. The source must be able to seek.
ZTOK_API void SzyfrujStrumien(TStrumien& Zrodlo, TStrumien& Cel, std::string_view Klucz);
// The reverse. Raises ZTException, with nothing written, when the length is no multiple of 8 or the end is not what
// enciphering appends: the data are damaged or the key is another one. A wrong key passes once in some 2^16 times.
ZTOK_API void OdszyfrujStrumien(TStrumien& Zrodlo, TStrumien& Cel, std::string_view Klucz);
// The same in place; the position is 0 afterwards. When they raise, the content is as it was.
ZTOK_API void SzyfrujStrumien(TZTMemoryStream& Strumien, std::string_view Klucz);
ZTOK_API void OdszyfrujStrumien(TZTMemoryStream& Strumien, std::string_view Klucz);

// The UTF-16 little-endian bytes of the text, enciphered as a stream, as upper-case hexadecimal digits. The empty text
// gives the empty text.
[[nodiscard]] ZTOK_API std::u16string SzyfrujTekst(std::u16string_view Tekst, std::string_view Klucz);
// The same of the bytes of an 8-bit text.
[[nodiscard]] ZTOK_API std::string SzyfrujTekstAnsi(std::string_view Tekst, std::string_view Klucz);
// The reverse; digits in either case. Raises ZTException for what is no such text: an odd number of digits, other
// characters, data that do not decipher.
[[nodiscard]] ZTOK_API std::u16string DeszyfrujTekst(std::u16string_view Tekst, std::string_view Klucz);
[[nodiscard]] ZTOK_API std::string DeszyfrujTekstAnsi(std::string_view Tekst, std::string_view Klucz);

// Frees the ciphers kept that are not in use, and overwrites them and their keys.
ZTOK_API void ZwolnijSzyfratory() noexcept;
// Ciphers kept for keys now: for tests and diagnostics.
[[nodiscard]] ZTOK_API std::size_t IleSzyfratorow() noexcept;

} // namespace ztok
