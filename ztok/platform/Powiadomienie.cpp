#include "ztok/platform/Powiadomienie.h"

#include <atomic>

#include "ztok/platform/PowiadomienieSystemowe.h"

namespace ztok {

static constinit std::atomic<TFunPowiadomienia> Funkcja{nullptr};

void Powiadom(std::u16string_view tresc) noexcept {
    char16_t naglowek[260];
    const std::size_t ile = NazwaProgramu(naglowek, sizeof naglowek / sizeof *naglowek);
    const TFunPowiadomienia funkcja = Funkcja.load(std::memory_order_acquire);
    (funkcja != nullptr ? funkcja : &PowiadomSystemowo)(tresc, {naglowek, ile});
}

bool PowiadomieniePodmienione() noexcept { return Funkcja.load(std::memory_order_acquire) != nullptr; }

TFunPowiadomienia UstawPowiadomienie(TFunPowiadomienia funkcja) noexcept {
    return Funkcja.exchange(funkcja, std::memory_order_acq_rel);
}

} // namespace ztok
