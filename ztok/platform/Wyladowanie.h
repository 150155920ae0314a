// What the system's own notice of the library's unloading calls.
#pragma once

namespace ztok {

// The steps of ZamknijBiblioteke, if nobody has run them yet, without waiting for a lock.
void ZamknijPrzyWyladowaniu() noexcept;

} // namespace ztok
