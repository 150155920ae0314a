#include "ztok/platform/Wyladowanie.h"

namespace ztok {

namespace {

// Runs when the library is unloaded, or at the end of the process, after the static objects of the programs that use
// it.
[[gnu::destructor]] void PrzyWyladowaniu() { ZamknijPrzyWyladowaniu(); }

} // namespace

} // namespace ztok
