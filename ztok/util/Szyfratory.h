// The end of the ciphers kept for keys, for the closing of the library.
#pragma once

namespace ztok {

// Frees all of them, without waiting for a lock: nobody enciphers any more.
void ZwolnijPamiecSzyfratorow() noexcept;

} // namespace ztok
