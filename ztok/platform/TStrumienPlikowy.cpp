#include "ztok/platform/TStrumienPlikowy.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/Powiadomienie.h"
#include "ztok/platform/Wyjatki.h"

namespace ztok {

ZTOK_KLASA_DEF(TStrumienPlikowy, TStrumien)

TStrumienPlikowy::TStrumienPlikowy(std::u16string_view sciezka, ETrybPliku tryb)
    : sciezka_(sciezka), plik_(OtworzPlik(sciezka, tryb)), tylkoOdczyt_(tryb == ETrybPliku::Odczyt) {}

TStrumienPlikowy::~TStrumienPlikowy() {
    try {
        Flush();
    } catch (const EWyjatek& wyjatek) {
        Powiadom(wyjatek.Komunikat());
    } catch (...) {
        Powiadom(Komunikat(kmObcyWyjatek));
    }
    if (plik_ != BrakPliku)
        ZamknijPlik(plik_);
    delete[] bufor_;
}

void TStrumienPlikowy::PrzygotujBufor() {
    if (plik_ == BrakPliku)
        throw EBladSystemu(Formatuj(Komunikat(kmPlikZamkniety), {sciezka_}));
    if (bufor_ == nullptr)
        bufor_ = new std::uint8_t[RozmiarBufora];
}

// Nothing in the buffer, no window.
void TStrumienPlikowy::UstawPusty(std::int64_t pozycja) noexcept {
    stan_ = EStan::Pusty;
    poczatek_ = pozycja;
    poz_ = koniecOdczytu_ = koniecZapisu_ = nullptr;
}

// Writes what waits in the buffer or forgets what was read ahead; the position stays.
void TStrumienPlikowy::Oproznij() {
    const EStan stan = stan_;
    const std::int64_t poczatek = poczatek_;
    const std::int64_t ile = poz_ - (poz_ != nullptr ? bufor_ : nullptr);
    // First of all, so that after an error nothing is written twice.
    UstawPusty(poczatek + ile);
    if (stan != EStan::Zapis)
        return;
    if (const std::int64_t zapisano = PiszWszystko(poczatek, bufor_, ile); zapisano != ile)
        throw EBladZapisu(Formatuj(Komunikat(kmBladZapisu), {KlasaStatyczna(), zapisano, ile}));
}

std::int64_t TStrumienPlikowy::PiszWszystko(std::int64_t pozycja, const std::uint8_t* bajty, std::int64_t ile) {
    std::int64_t zapisano = 0;
    while (zapisano < ile) {
        const std::int64_t czesc = PiszPlik(plik_, pozycja + zapisano, bajty + zapisano, ile - zapisano, sciezka_);
        if (czesc <= 0)
            break;
        zapisano += czesc;
    }
    return zapisano;
}

std::int64_t TStrumienPlikowy::Read(void* bufor, std::int64_t ile) {
    if (ile <= 0)
        return 0;
    if (stan_ != EStan::Odczyt || poz_ == koniecOdczytu_) {
        Oproznij();
        if (ile >= RozmiarBufora) {
            const std::int64_t wynik = CzytajPlik(plik_, poczatek_, bufor, ile, sciezka_);
            poczatek_ += wynik;
            return wynik;
        }
        PrzygotujBufor();
        const std::int64_t wczytano = CzytajPlik(plik_, poczatek_, bufor_, RozmiarBufora, sciezka_);
        if (wczytano == 0)
            return 0;
        stan_ = EStan::Odczyt;
        poz_ = koniecZapisu_ = bufor_;
        koniecOdczytu_ = bufor_ + wczytano;
    }
    ile = std::min<std::int64_t>(ile, koniecOdczytu_ - poz_);
    std::memcpy(bufor, poz_, static_cast<std::size_t>(ile));
    poz_ += static_cast<std::ptrdiff_t>(ile);
    return ile;
}

std::int64_t TStrumienPlikowy::Write(const void* bufor, std::int64_t ile) {
    if (ile <= 0 || tylkoOdczyt_)
        return 0;
    if (stan_ != EStan::Zapis || ile > koniecZapisu_ - poz_) {
        Oproznij();
        if (ile >= RozmiarBufora) {
            const std::int64_t wynik = PiszWszystko(poczatek_, static_cast<const std::uint8_t*>(bufor), ile);
            poczatek_ += wynik;
            return wynik;
        }
        PrzygotujBufor();
        stan_ = EStan::Zapis;
        poz_ = koniecOdczytu_ = bufor_;
        koniecZapisu_ = bufor_ + RozmiarBufora;
    }
    std::memcpy(poz_, bufor, static_cast<std::size_t>(ile));
    poz_ += static_cast<std::ptrdiff_t>(ile);
    return ile;
}

std::int64_t TStrumienPlikowy::Seek(std::int64_t przesuniecie, ESeek skad) {
    const std::int64_t pozycja =
        PozycjaWgSeek(przesuniecie, skad, GetPosition(), skad == ESeek::Koniec ? GetSize() : 0);
    if (stan_ == EStan::Odczyt && pozycja >= poczatek_ && pozycja <= poczatek_ + (koniecOdczytu_ - bufor_)) {
        poz_ = bufor_ + (pozycja - poczatek_);
    } else if (pozycja != GetPosition()) {
        Oproznij();
        UstawPusty(pozycja);
    }
    return pozycja;
}

void TStrumienPlikowy::SetSize(std::int64_t rozmiar) {
    if (rozmiar < 0)
        ZglosZlyRozmiar(rozmiar);
    Oproznij();
    UstawRozmiarPliku(plik_, rozmiar, sciezka_);
    UstawPusty(std::min(poczatek_, rozmiar));
}

std::int64_t TStrumienPlikowy::GetSize() {
    const std::int64_t rozmiar = RozmiarPliku(plik_, sciezka_);
    return stan_ == EStan::Zapis ? std::max(rozmiar, GetPosition()) : rozmiar;
}

std::int64_t TStrumienPlikowy::GetPosition() { return poz_ == nullptr ? poczatek_ : poczatek_ + (poz_ - bufor_); }

std::int64_t TStrumienPlikowy::Pozostalo() { return std::max<std::int64_t>(0, GetSize() - GetPosition()); }

void TStrumienPlikowy::Flush() {
    if (stan_ == EStan::Zapis)
        Oproznij();
}

void TStrumienPlikowy::Utrwal() {
    Flush();
    UtrwalPlik(plik_, sciezka_);
}

void TStrumienPlikowy::Zamknij() {
    Flush();
    UstawPusty(0);
    if (plik_ != BrakPliku && !ZamknijPlik(std::exchange(plik_, BrakPliku)))
        ZglosBladSystemu(sciezka_, OstatniBladSystemu());
}

} // namespace ztok
