// Memory as a stream buffer, for the libraries that write to one: no faster way into memory is left to them.
#pragma once

#include <cstring>
#include <streambuf>

namespace pomiary {

class TBuforPamieci : public std::streambuf {
  public:
    // Reads and writes within the bytes given, which must outlive the buffer.
    TBuforPamieci(char* bajty, std::size_t ile) {
        setg(bajty, bajty, bajty + ile);
        setp(bajty, bajty + ile);
    }
    [[nodiscard]] std::size_t Zapisano() const { return static_cast<std::size_t>(pptr() - pbase()); }

  protected:
    // pbump takes an int; a whole write is below that.
    std::streamsize xsputn(const char* bajty, std::streamsize ile) override {
        if (ile > epptr() - pptr())
            return 0;
        std::memcpy(pptr(), bajty, static_cast<std::size_t>(ile));
        pbump(static_cast<int>(ile));
        return ile;
    }
    std::streamsize xsgetn(char* bajty, std::streamsize ile) override {
        if (ile > egptr() - gptr())
            return 0;
        std::memcpy(bajty, gptr(), static_cast<std::size_t>(ile));
        gbump(static_cast<int>(ile));
        return ile;
    }
};

} // namespace pomiary
