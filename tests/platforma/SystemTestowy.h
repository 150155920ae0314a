// What the tests ask of the system: threads with a small stack, modules.
#pragma once

#include <cstddef>
#include <string>

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define ZTOK_SANITIZER 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define ZTOK_SANITIZER 1
#endif
#ifndef ZTOK_SANITIZER
#define ZTOK_SANITIZER 0
#endif

namespace systemTestowy {

// Frames are several times larger under the sanitizers.
inline constexpr std::size_t MalyStos = 256 * 1024 * (ZTOK_SANITIZER ? 6 : 1);

// Runs the function in a thread of that stack and waits for its end.
void WMalymWatku(std::size_t stos, void (*funkcja)(void*), void* dane);
template <class F> void WMalymWatku(F funkcja) {
    WMalymWatku(
        MalyStos, [](void* dane) { (*static_cast<F*>(dane))(); }, &funkcja);
}

// A module loaded for the scope.
class TZaladowany {
  public:
    explicit TZaladowany(const std::string& sciezka);
    TZaladowany(const TZaladowany&) = delete;
    TZaladowany& operator=(const TZaladowany&) = delete;
    ~TZaladowany();
    [[nodiscard]] bool Jest() const { return uchwyt_ != nullptr; }
    template <class F> [[nodiscard]] F Funkcja(const char* nazwa) const { return reinterpret_cast<F>(Adres(nazwa)); }
    // Whether the process holds the module.
    static bool WPamieci(const std::string& sciezka);

  private:
    [[nodiscard]] void (*Adres(const char* nazwa) const)();
    void* uchwyt_;
};

} // namespace systemTestowy
