// The end of the process's repository and controller, for the closing of the library.
#pragma once

namespace ztok {

// Give the process's reference back. The repository's registrations end with it; what its interfaces' destructors do
// may still use the kernel. Without waiting: a repository whose lock is held stays.
void ZamknijRepozytorium(bool czekaj) noexcept;
void ZamknijKontroler() noexcept;
// Frees what controllers share.
void ZwolnijStanKontroli() noexcept;

} // namespace ztok
