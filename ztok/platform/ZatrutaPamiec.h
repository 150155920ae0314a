// Memory that nobody may touch for now, told to the address sanitizer: without it these cost nothing.
#pragma once

#include <cstddef>

#if defined(__SANITIZE_ADDRESS__)
#define ZTOK_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZTOK_ASAN 1
#endif
#endif
#ifndef ZTOK_ASAN
#define ZTOK_ASAN 0
#endif

#if ZTOK_ASAN
#include <sanitizer/asan_interface.h>
#include <sanitizer/lsan_interface.h>
// For a function that keeps links of its own in such memory.
#define ZTOK_BEZ_ASAN __attribute__((no_sanitize("address")))
#else
#define ZTOK_BEZ_ASAN
#endif

namespace ztok {

// Whether an access to poisoned memory is reported.
inline constexpr bool kPamiecZatruta = ZTOK_ASAN != 0;

// From here on an access to one of these bytes is an error. The end of what is poisoned should be aligned to 8.
inline void Zatruj([[maybe_unused]] const void* adres, [[maybe_unused]] std::size_t bajty) noexcept {
#if ZTOK_ASAN
    __asan_poison_memory_region(adres, bajty);
#endif
}

// The bytes may be used again; `adres` is aligned to 8.
inline void Odtruj([[maybe_unused]] const void* adres, [[maybe_unused]] std::size_t bajty) noexcept {
#if ZTOK_ASAN
    __asan_unpoison_memory_region(adres, bajty);
#endif
}

// Memory that the leak checker does not know of, but where pointers to blocks of malloc stand: from here on, or no
// longer.
inline void PrzeszukujWyciek([[maybe_unused]] const void* adres, [[maybe_unused]] std::size_t bajty,
                             [[maybe_unused]] bool tak) noexcept {
#if ZTOK_ASAN
    (tak ? __lsan_register_root_region : __lsan_unregister_root_region)(adres, bajty);
#endif
}

} // namespace ztok
