// Buffered stream over a file on disk.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "ztok/platform/PlikSystemowy.h"
#include "ztok/platform/TStrumien.h"

namespace ztok {

// The buffer holds either bytes read ahead, which are the read window, or bytes not yet written, which are followed by
// the write window; turning from one to the other empties it.
class ZTOK_API TStrumienPlikowy : public TStrumien {
    ZTOK_KLASA_DEKL(TStrumienPlikowy)

    // Opens the file. Raises EBladSystemu.
    TStrumienPlikowy(std::u16string_view sciezka, ETrybPliku tryb);
    // Writes what is left and closes; an error, which has no caller to go to, is shown as a user notice. Call Flush or
    // Zamknij first.
    ~TStrumienPlikowy() override;

    std::int64_t Read(void* bufor, std::int64_t ile) override;
    // Takes nothing when the file was opened for reading only.
    std::int64_t Write(const void* bufor, std::int64_t ile) override;
    std::int64_t Seek(std::int64_t przesuniecie, ESeek skad) override;
    void SetSize(std::int64_t rozmiar) override;
    std::int64_t GetSize() override;
    std::int64_t GetPosition() override;
    [[nodiscard]] std::int64_t Pozostalo() override;

    // Passes everything written so far to the system. After an error the bytes that were not passed on are dropped.
    void Flush();
    // Flush, and the content is on the disk when it returns.
    void Utrwal();
    // Flush, then closes the file; later operations raise EBladSystemu.
    void Zamknij();

    [[nodiscard]] const std::u16string& Sciezka() const noexcept { return sciezka_; }

  private:
    static constexpr std::int64_t RozmiarBufora = 0x10000;
    enum class EStan : std::uint8_t { Pusty, Odczyt, Zapis };

    void Oproznij();
    void UstawPusty(std::int64_t pozycja) noexcept;
    void PrzygotujBufor();
    std::int64_t PiszWszystko(std::int64_t pozycja, const std::uint8_t* bajty, std::int64_t ile);

    std::u16string sciezka_;
    TUchwytPliku plik_;             // BrakPliku once closed
    std::uint8_t* bufor_ = nullptr; // owned; made at the first use
    std::int64_t poczatek_ = 0;     // position of the buffer's first byte in the file
    EStan stan_ = EStan::Pusty;
    bool tylkoOdczyt_;
};

} // namespace ztok
