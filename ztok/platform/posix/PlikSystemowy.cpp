// 64-bit file positions on 32-bit systems too.
// NOLINTNEXTLINE(bugprone-reserved-identifier,cppcoreguidelines-macro-usage): the name is the system's
#define _FILE_OFFSET_BITS 64

#include "ztok/platform/PlikSystemowy.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/Wyjatki.h"

namespace ztok {

static_assert(sizeof(off_t) == 8);

namespace {

// No call moves more than that; some systems refuse more.
constexpr std::int64_t NajwiekszaPorcja = std::int64_t{1} << 30;

int Deskryptor(TUchwytPliku plik) noexcept { return static_cast<int>(plik); }

// Repeats a call that a signal broke off.
template <class TWywolanie> auto BezPrzerwan(TWywolanie wywolanie) {
    auto wynik = wywolanie();
    while (wynik == -1 && errno == EINTR)
        wynik = wywolanie();
    return wynik;
}

[[noreturn]] void ZglosOstatniBlad(std::u16string_view czego) { ZglosBladSystemu(czego, OstatniBladSystemu()); }

} // namespace

std::uint32_t OstatniBladSystemu() noexcept { return static_cast<std::uint32_t>(errno); }

std::u16string TekstBleduSystemu(std::uint32_t kod) {
    return Utf16ZUtf8(std::generic_category().message(static_cast<int>(kod)));
}

void ZglosBladSystemu(std::u16string_view czego, std::uint32_t kod) {
    throw EBladSystemu(Formatuj(Komunikat(kmBladSystemu), {czego, TekstBleduSystemu(kod), kod}));
}

namespace {

// The path as the system takes it. A NUL would end it, and another file would be meant.
std::string SciezkaUtf8(std::u16string_view sciezka) {
    if (const std::size_t zero = sciezka.find(u'\0'); zero != std::u16string_view::npos)
        ZglosBladSystemu(sciezka.substr(0, zero), EINVAL);
    return Utf8ZUtf16(sciezka);
}

} // namespace

TUchwytPliku OtworzPlik(std::u16string_view sciezka, ETrybPliku tryb) {
    const std::string sciezkaUtf8 = SciezkaUtf8(sciezka);
    int flagi = O_CLOEXEC;
    switch (tryb) {
    case ETrybPliku::Odczyt:
        flagi |= O_RDONLY;
        break;
    case ETrybPliku::Tworzenie:
        flagi |= O_RDWR | O_CREAT | O_TRUNC;
        break;
    case ETrybPliku::Nowy:
        flagi |= O_RDWR | O_CREAT | O_EXCL;
        break;
    case ETrybPliku::OdczytZapis:
        flagi |= O_RDWR;
        break;
    }
    const int plik = BezPrzerwan([&] { return open(sciezkaUtf8.c_str(), flagi, 0666); });
    if (plik == -1)
        ZglosOstatniBlad(sciezka);
    // A directory opens for reading and fails later, with a text that tells less.
    struct stat stan {};
    if (fstat(plik, &stan) == 0 && S_ISDIR(stan.st_mode)) {
        close(plik);
        ZglosBladSystemu(sciezka, EISDIR);
    }
    return plik;
}

bool ZamknijPlik(TUchwytPliku plik) noexcept { return close(Deskryptor(plik)) == 0 || errno == EINTR; }

std::int64_t CzytajPlik(TUchwytPliku plik, std::int64_t pozycja, void* bufor, std::int64_t ile,
                        std::u16string_view sciezka) {
    const auto porcja = static_cast<std::size_t>(std::min(ile, NajwiekszaPorcja));
    const ssize_t wynik = BezPrzerwan([&] { return pread(Deskryptor(plik), bufor, porcja, pozycja); });
    if (wynik == -1)
        ZglosOstatniBlad(sciezka);
    return wynik;
}

std::int64_t PiszPlik(TUchwytPliku plik, std::int64_t pozycja, const void* bufor, std::int64_t ile,
                      std::u16string_view sciezka) {
    const auto porcja = static_cast<std::size_t>(std::min(ile, NajwiekszaPorcja));
    const ssize_t wynik = BezPrzerwan([&] { return pwrite(Deskryptor(plik), bufor, porcja, pozycja); });
    if (wynik == -1)
        ZglosOstatniBlad(sciezka);
    return wynik;
}

std::int64_t RozmiarPliku(TUchwytPliku plik, std::u16string_view sciezka) {
    struct stat stan {};
    if (fstat(Deskryptor(plik), &stan) == -1)
        ZglosOstatniBlad(sciezka);
    return stan.st_size;
}

void UstawRozmiarPliku(TUchwytPliku plik, std::int64_t rozmiar, std::u16string_view sciezka) {
    if (BezPrzerwan([&] { return ftruncate(Deskryptor(plik), rozmiar); }) == -1)
        ZglosOstatniBlad(sciezka);
}

void UtrwalPlik(TUchwytPliku plik, std::u16string_view sciezka) {
    // Pipes and the like have nothing to make durable.
    if (BezPrzerwan([&] { return fsync(Deskryptor(plik)); }) == -1 && errno != EINVAL)
        ZglosOstatniBlad(sciezka);
}

void PrzeniesPlik(std::u16string_view z, std::u16string_view na) {
    const std::string celUtf8 = SciezkaUtf8(na);
    if (std::rename(SciezkaUtf8(z).c_str(), celUtf8.c_str()) == -1)
        ZglosOstatniBlad(na);
    // The new name is durable when its directory is; a system that cannot do that has done what it can.
    const std::size_t ukosnik = celUtf8.rfind('/');
    const std::string katalogUtf8 = ukosnik == std::string::npos ? "." : celUtf8.substr(0, ukosnik + 1);
    const int katalog = BezPrzerwan([&] { return open(katalogUtf8.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
    if (katalog != -1) {
        fsync(katalog);
        close(katalog);
    }
}

bool UsunPlik(std::u16string_view sciezka) {
    if (unlink(SciezkaUtf8(sciezka).c_str()) == 0)
        return true;
    if (errno != ENOENT)
        ZglosOstatniBlad(sciezka);
    return false;
}

} // namespace ztok
