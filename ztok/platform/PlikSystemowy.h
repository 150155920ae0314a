// Files as the operating system gives them: 64-bit positions, paths in UTF-16, every failure EBladSystemu with the
// system's own text. What users need is TStrumienPlikowy; this is for it and for replacing files.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "ztok/platform/Eksport.h"

namespace ztok {

enum class ETrybPliku : std::uint8_t {
    Odczyt,      // an existing file, read only
    Tworzenie,   // a new file or an existing one cut to nothing, read and write
    Nowy,        // a new file; fails when there is one
    OdczytZapis, // an existing file, read and write
};

using TUchwytPliku = std::intptr_t;
inline constexpr TUchwytPliku BrakPliku = -1;

// The system's number of the error that a call of the system met last in this thread, and the system's text for it.
[[nodiscard]] ZTOK_API std::uint32_t OstatniBladSystemu() noexcept;
[[nodiscard]] ZTOK_API std::u16string TekstBleduSystemu(std::uint32_t kod);
// Raises EBladSystemu: what was being done (a path, say), the system's text and the number.
[[noreturn]] ZTOK_API void ZglosBladSystemu(std::u16string_view czego, std::uint32_t kod);

[[nodiscard]] TUchwytPliku OtworzPlik(std::u16string_view sciezka, ETrybPliku tryb);
// False when the system could not keep what was written.
bool ZamknijPlik(TUchwytPliku plik) noexcept;
// `sciezka` is for the message of an error. Reads and writes at a position, independent of the system's own; may be
// short. Reading gives 0 at the end only.
[[nodiscard]] std::int64_t CzytajPlik(TUchwytPliku plik, std::int64_t pozycja, void* bufor, std::int64_t ile,
                                      std::u16string_view sciezka);
[[nodiscard]] std::int64_t PiszPlik(TUchwytPliku plik, std::int64_t pozycja, const void* bufor, std::int64_t ile,
                                    std::u16string_view sciezka);
[[nodiscard]] std::int64_t RozmiarPliku(TUchwytPliku plik, std::u16string_view sciezka);
void UstawRozmiarPliku(TUchwytPliku plik, std::int64_t rozmiar, std::u16string_view sciezka);
// Returns when the content is on the disk.
void UtrwalPlik(TUchwytPliku plik, std::u16string_view sciezka);

// Gives the file `z` the name `na` in one step; a file of that name is replaced, and stays whole when this fails.
ZTOK_API void PrzeniesPlik(std::u16string_view z, std::u16string_view na);
// Whether there was such a file.
ZTOK_API bool UsunPlik(std::u16string_view sciezka);

} // namespace ztok
