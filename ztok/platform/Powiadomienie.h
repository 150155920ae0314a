// User notice: the last resort for an error that has no caller left to tell.
#pragma once

#include <string_view>

#include "ztok/platform/Eksport.h"

namespace ztok {

// Shows a notice; the caption is the running program's file name without its directory.
using TFunPowiadomienia = void (*)(std::u16string_view tresc, std::u16string_view naglowek) noexcept;

// Tells the user and waits until it is read: on Windows a message box without an owner and with a single OK button,
// elsewhere a line on standard error. Never throws. Safe to call from any thread.
ZTOK_API void Powiadom(std::u16string_view tresc) noexcept;

// Whether a function of the host's own hears notices.
[[nodiscard]] bool PowiadomieniePodmienione() noexcept;

// Notices go to the given function from now on; null is the system's way again. Returns the former one.
ZTOK_API TFunPowiadomienia UstawPowiadomienie(TFunPowiadomienia funkcja) noexcept;

} // namespace ztok
