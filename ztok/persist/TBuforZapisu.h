// Write buffer in front of another stream.
#pragma once

#include <cstddef>

#include "ztok/platform/TStrumien.h"

namespace ztok {

// Collects small writes and passes them on in one piece; writes that do not fit the buffer go straight to the target.
// The buffer is the stream's write window. Write-only and forward-only: Read and Seek raise ZTException.
class ZTOK_API TBuforZapisu : public TStrumien {
    ZTOK_KLASA_DEKL(TBuforZapisu)

    static constexpr std::size_t DomyslnyRozmiar = 0x10000;

    // Writes to `strumien`, which is not owned and must outlive the buffer.
    explicit TBuforZapisu(TStrumien& strumien, std::size_t rozmiar = DomyslnyRozmiar);
    // Flushes; an error, which has no caller to go to, is shown as a user notice, unless another one is on its way
    // already. Call Flush first.
    ~TBuforZapisu() override;

    std::int64_t Read(void* bufor, std::int64_t ile) override;
    // Raises EBladZapisu when the target does not take what was collected before, from then on at every call: the bytes
    // in between are lost, and what followed them would be misread.
    std::int64_t Write(const void* bufor, std::int64_t ile) override;
    std::int64_t Seek(std::int64_t przesuniecie, ESeek skad) override;

    // Passes on what was collected. Raises as Write does.
    void Flush();

  private:
    void ZamknijOkno() noexcept;
    void OtworzOkno() noexcept;

    TStrumien& cel_;
    std::uint8_t* bufor_; // owned
    std::size_t rozmiar_;
    int wyjatkow_;            // on their way when the buffer was made
    bool uszkodzony_ = false; // the target failed in the middle
};

} // namespace ztok
