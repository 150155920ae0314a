#include "ztok/platform/PlikSystemowy.h"

#include <algorithm>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/Wyjatki.h"

namespace ztok {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

namespace {

// A call moves 32-bit lengths only.
constexpr std::int64_t NajwiekszaPorcja = std::int64_t{1} << 30;

HANDLE Uchwyt(TUchwytPliku plik) noexcept { return reinterpret_cast<HANDLE>(plik); }

// A NUL would end the path, and another file would be meant.
const wchar_t* Sciezka(const std::u16string& sciezka) {
    if (const std::size_t zero = sciezka.find(u'\0'); zero != std::u16string::npos)
        ZglosBladSystemu(std::u16string_view(sciezka).substr(0, zero), ERROR_INVALID_NAME);
    return reinterpret_cast<const wchar_t*>(sciezka.c_str());
}

OVERLAPPED Polozenie(std::int64_t pozycja) noexcept {
    OVERLAPPED polozenie{};
    polozenie.Offset = static_cast<DWORD>(static_cast<std::uint64_t>(pozycja));
    polozenie.OffsetHigh = static_cast<DWORD>(static_cast<std::uint64_t>(pozycja) >> 32U);
    return polozenie;
}

[[noreturn]] void ZglosOstatniBlad(std::u16string_view czego) { ZglosBladSystemu(czego, OstatniBladSystemu()); }

} // namespace

std::uint32_t OstatniBladSystemu() noexcept { return GetLastError(); }

std::u16string TekstBleduSystemu(std::uint32_t kod) {
    wchar_t bufor[512];
    DWORD ile = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, kod, 0, bufor,
                               sizeof bufor / sizeof *bufor, nullptr);
    while (ile > 0 && (bufor[ile - 1] <= L' ' || bufor[ile - 1] == L'.'))
        --ile;
    if (ile == 0)
        return std::u16string(Komunikat(kmNieznanyBladSystemu));
    return {reinterpret_cast<const char16_t*>(bufor), ile};
}

void ZglosBladSystemu(std::u16string_view czego, std::uint32_t kod) {
    throw EBladSystemu(Formatuj(Komunikat(kmBladSystemu), {czego, TekstBleduSystemu(kod), kod}));
}

TUchwytPliku OtworzPlik(std::u16string_view sciezka, ETrybPliku tryb) {
    DWORD dostep = GENERIC_READ | GENERIC_WRITE;
    DWORD istniejacy = OPEN_EXISTING;
    DWORD wspolne = FILE_SHARE_READ;
    switch (tryb) {
    case ETrybPliku::Odczyt:
        dostep = GENERIC_READ;
        wspolne |= FILE_SHARE_DELETE;
        break;
    case ETrybPliku::Tworzenie:
        istniejacy = CREATE_ALWAYS;
        break;
    case ETrybPliku::Nowy:
        istniejacy = CREATE_NEW;
        break;
    case ETrybPliku::OdczytZapis:
        break;
    }
    HANDLE plik = CreateFileW(Sciezka(std::u16string(sciezka)), dostep, wspolne, nullptr, istniejacy,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (plik == INVALID_HANDLE_VALUE)
        ZglosOstatniBlad(sciezka);
    return reinterpret_cast<TUchwytPliku>(plik);
}

bool ZamknijPlik(TUchwytPliku plik) noexcept { return CloseHandle(Uchwyt(plik)) != 0; }

std::int64_t CzytajPlik(TUchwytPliku plik, std::int64_t pozycja, void* bufor, std::int64_t ile,
                        std::u16string_view sciezka) {
    OVERLAPPED polozenie = Polozenie(pozycja);
    DWORD wynik = 0;
    if (ReadFile(Uchwyt(plik), bufor, static_cast<DWORD>(std::min(ile, NajwiekszaPorcja)), &wynik, &polozenie) == 0 &&
        GetLastError() != ERROR_HANDLE_EOF)
        ZglosOstatniBlad(sciezka);
    return wynik;
}

std::int64_t PiszPlik(TUchwytPliku plik, std::int64_t pozycja, const void* bufor, std::int64_t ile,
                      std::u16string_view sciezka) {
    OVERLAPPED polozenie = Polozenie(pozycja);
    DWORD wynik = 0;
    if (WriteFile(Uchwyt(plik), bufor, static_cast<DWORD>(std::min(ile, NajwiekszaPorcja)), &wynik, &polozenie) == 0)
        ZglosOstatniBlad(sciezka);
    return wynik;
}

std::int64_t RozmiarPliku(TUchwytPliku plik, std::u16string_view sciezka) {
    LARGE_INTEGER rozmiar{};
    if (GetFileSizeEx(Uchwyt(plik), &rozmiar) == 0)
        ZglosOstatniBlad(sciezka);
    return rozmiar.QuadPart;
}

void UstawRozmiarPliku(TUchwytPliku plik, std::int64_t rozmiar, std::u16string_view sciezka) {
    LARGE_INTEGER pozycja{};
    pozycja.QuadPart = rozmiar;
    if (SetFilePointerEx(Uchwyt(plik), pozycja, nullptr, FILE_BEGIN) == 0 || SetEndOfFile(Uchwyt(plik)) == 0)
        ZglosOstatniBlad(sciezka);
}

void UtrwalPlik(TUchwytPliku plik, std::u16string_view sciezka) {
    if (FlushFileBuffers(Uchwyt(plik)) == 0)
        ZglosOstatniBlad(sciezka);
}

void PrzeniesPlik(std::u16string_view z, std::u16string_view na) {
    if (MoveFileExW(Sciezka(std::u16string(z)), Sciezka(std::u16string(na)),
                    MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == 0)
        ZglosOstatniBlad(na);
}

bool UsunPlik(std::u16string_view sciezka) {
    if (DeleteFileW(Sciezka(std::u16string(sciezka))) != 0)
        return true;
    const DWORD kod = GetLastError();
    if (kod != ERROR_FILE_NOT_FOUND && kod != ERROR_PATH_NOT_FOUND)
        ZglosBladSystemu(sciezka, kod);
    return false;
}

} // namespace ztok
