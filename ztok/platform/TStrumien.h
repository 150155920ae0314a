// Byte stream: the base of memory streams, files, buffers and check sums.
#pragma once

#include <cstdint>
#include <cstring>
#include <span>

#include "ztok/platform/DeklaracjaKlasy.h"

namespace ztok {

// What the offset of a Seek counts from.
enum class ESeek : std::uint8_t { Poczatek, Biezaca, Koniec };

// A stream belongs to one thread at a time.
//
// A stream that holds bytes around its position in memory shows them as a window, and the inline operations work there
// without a virtual call: `poz_` is then the stream's position, the bytes from it to `koniecOdczytu_` can be read, the
// places from it to `koniecZapisu_` written. A window that is not open for reading or for writing ends at or before
// `poz_`; a stream without one leaves all three null. Between two calls of a virtual operation `poz_` moves ahead
// only, within the window, so a stream finds out there how far its window was used.
class ZTOK_API TStrumien : public TObiektOgolny {
    ZTOK_KLASA_DEKL(TStrumien)

    ~TStrumien() override;

    // Reads up to `ile` bytes (0 or more) from the position and moves it; returns how many, fewer than asked only when
    // that is what there is for now, 0 only at the end. Raises EBladSystemu when the system refuses.
    virtual std::int64_t Read(void* bufor, std::int64_t ile) = 0;
    // Writes up to `ile` bytes at the position and moves it; returns how many were taken.
    virtual std::int64_t Write(const void* bufor, std::int64_t ile) = 0;
    // Sets the position, which may lie behind the end, and returns it. Raises EBladOdczytu for one before the
    // beginning.
    virtual std::int64_t Seek(std::int64_t przesuniecie, ESeek skad);
    // Cuts or extends the stream; new bytes are zero. A position behind the new end moves to it.
    virtual void SetSize(std::int64_t rozmiar);
    virtual std::int64_t GetSize();
    virtual std::int64_t GetPosition();
    // Bytes left to read, or -1 when the stream cannot tell.
    [[nodiscard]] virtual std::int64_t Pozostalo();

    // Read, of a stream of anybody's: EBladOdczytu for an answer above `ile`, 0 at the end.
    std::int64_t CzytajNajwyzej(void* bufor, std::int64_t ile);
    // Reads exactly `ile` bytes; raises EBladOdczytu when the stream ends before.
    void ReadBuffer(void* bufor, std::size_t ile) {
        const auto zadane = static_cast<std::ptrdiff_t>(ile);
        if (zadane > 0 && zadane <= koniecOdczytu_ - poz_) [[likely]] {
            std::memcpy(bufor, poz_, ile);
            poz_ += ile;
        } else {
            CzytajCalosc(bufor, ile);
        }
    }

    // Writes exactly `ile` bytes in one Write; raises EBladZapisu when the stream takes fewer.
    void WriteBuffer(const void* bufor, std::size_t ile) {
        if (std::uint8_t* cel = MiejsceZapisu(ile); cel != nullptr) [[likely]] {
            std::memcpy(cel, bufor, ile);
            poz_ += ile;
        } else {
            PiszCalosc(bufor, ile);
        }
    }

    // The bytes that can be read in place at the position. May be empty although bytes are left: the next read fills it
    // again. Valid until the next operation of the stream other than Pomin within it.
    [[nodiscard]] std::span<const std::uint8_t> Okno() const noexcept {
        return koniecOdczytu_ - poz_ > 0 ? std::span<const std::uint8_t>(poz_, koniecOdczytu_)
                                         : std::span<const std::uint8_t>();
    }
    // Moves over exactly `ile` bytes as if they had been read; raises EBladOdczytu when the stream ends before.
    void Pomin(std::int64_t ile) {
        if (ile > 0 && ile <= koniecOdczytu_ - poz_) [[likely]]
            poz_ += static_cast<std::ptrdiff_t>(ile);
        else
            PominPozaOknem(ile);
    }

    // Place for `ile` bytes (1 or more) at the position, to be filled and confirmed by Zapisano; null when the window
    // has no such room: use WriteBuffer then.
    [[nodiscard]] std::uint8_t* MiejsceZapisu(std::size_t ile) const noexcept {
        const auto zadane = static_cast<std::ptrdiff_t>(ile);
        return zadane > 0 && zadane <= koniecZapisu_ - poz_ ? poz_ : nullptr;
    }
    // Confirms the first `ile` bytes of the place given by MiejsceZapisu.
    void Zapisano(std::size_t ile) noexcept { poz_ += ile; }

    // False when the stream knows that fewer than `ile` bytes are left: to be asked before memory is taken for a count
    // that was read from it.
    [[nodiscard]] bool MozeMiec(std::int64_t ile) {
        if (ile <= koniecOdczytu_ - poz_)
            return true;
        const std::int64_t pozostalo = Pozostalo();
        return pozostalo < 0 || ile <= pozostalo;
    }

  protected:
    TStrumien() noexcept = default;

    // The position that a Seek asks for; raises EBladOdczytu when it is negative or beyond 63 bits.
    [[nodiscard]] std::int64_t PozycjaWgSeek(std::int64_t przesuniecie, ESeek skad, std::int64_t biezaca,
                                             std::int64_t koniec) const;
    [[noreturn]] void ZglosZlyRozmiar(std::int64_t rozmiar) const;

    std::uint8_t* poz_ = nullptr;
    std::uint8_t* koniecOdczytu_ = nullptr;
    std::uint8_t* koniecZapisu_ = nullptr;

  private:
    void CzytajCalosc(void* bufor, std::size_t ile);
    void PiszCalosc(const void* bufor, std::size_t ile);
    void PominPozaOknem(std::int64_t ile);
};

} // namespace ztok
