#include "ztok/persist/TBuforZapisu.h"

#include <cstring>
#include <exception>

#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Powiadomienie.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {

ZTOK_KLASA_DEF(TBuforZapisu, TStrumien)

TBuforZapisu::TBuforZapisu(TStrumien& strumien, std::size_t rozmiar)
    : cel_(strumien), bufor_(new std::uint8_t[rozmiar]), rozmiar_(rozmiar), wyjatkow_(std::uncaught_exceptions()) {
    poz_ = koniecOdczytu_ = bufor_;
    OtworzOkno();
}

TBuforZapisu::~TBuforZapisu() {
    const bool blad = std::uncaught_exceptions() > wyjatkow_; // the write failed, and its caller hears of it
    try {
        if (!uszkodzony_)
            Flush();
    } catch (const EWyjatek& wyjatek) {
        if (!blad)
            Powiadom(wyjatek.Komunikat());
    } catch (...) {
        if (!blad)
            Powiadom(Komunikat(kmObcyWyjatek));
    }
    delete[] bufor_;
}

void TBuforZapisu::Flush() {
    const auto ile = static_cast<std::size_t>(poz_ - bufor_);
    if (uszkodzony_)
        throw EBladZapisu(Formatuj(Komunikat(kmBladZapisu), {cel_.Klasa(), 0, ile}));
    if (ile == 0)
        return;
    ZamknijOkno();
    cel_.WriteBuffer(bufor_, ile);
    OtworzOkno();
}

// Until the target has taken everything the buffer counts as damaged.
void TBuforZapisu::ZamknijOkno() noexcept {
    uszkodzony_ = true;
    poz_ = koniecZapisu_ = bufor_;
}

void TBuforZapisu::OtworzOkno() noexcept {
    uszkodzony_ = false;
    koniecZapisu_ = bufor_ + rozmiar_;
}

std::int64_t TBuforZapisu::Write(const void* bufor, std::int64_t ile) {
    if (ile <= 0)
        return 0;
    if (ile > koniecZapisu_ - poz_) {
        Flush();
        if (ile >= static_cast<std::int64_t>(rozmiar_)) {
            ZamknijOkno();
            const std::int64_t zapisano = cel_.Write(bufor, ile);
            if (zapisano == ile)
                OtworzOkno();
            return zapisano;
        }
    }
    std::memcpy(poz_, bufor, static_cast<std::size_t>(ile));
    poz_ += static_cast<std::ptrdiff_t>(ile);
    return ile;
}

std::int64_t TBuforZapisu::Read(void*, std::int64_t) { ZTError(kmNieoczekiwaneRead); }

std::int64_t TBuforZapisu::Seek(std::int64_t, ESeek) { ZTError(kmNieoczekiwaneSeek); }

} // namespace ztok
