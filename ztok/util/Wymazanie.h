// Overwriting of memory that held a secret.
#pragma once

#include <cstddef>
#include <cstring>

namespace ztok {

// Overwrites the bytes, also where the compiler sees that nobody reads them again.
inline void WymazSekret(void* bajty, std::size_t ile) noexcept {
    void* (*const volatile wypelnij)(void*, int, std::size_t) = &std::memset;
    wypelnij(bajty, 0, ile);
}

} // namespace ztok
