// What the closing of the library, and the unloading of a module, ask of repository and controller.
#pragma once

namespace ztok {

class TModul;

// Give the process's reference back. The repository's registrations end with it; what its interfaces' destructors do
// may still use the kernel. Without waiting: a repository whose lock is held stays.
void ZamknijRepozytorium(bool czekaj) noexcept;
void ZamknijKontroler() noexcept;
// Frees what controllers, and what repositories, share.
void ZwolnijStanKontroli() noexcept;
void ZwolnijSpisRepozytoriow() noexcept;

// Takes out of every repository, and out of every controller, what cannot be used without the module, whose code is
// still there. Objects that nobody else holds end with it.
void WyrejestrujModul(const TModul& modul) noexcept;
void WyrejestrujKontrolowaneModulu(const TModul& modul) noexcept;

} // namespace ztok
