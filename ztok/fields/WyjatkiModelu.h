// Exceptions of readers and files.
#pragma once

#include <string>

#include "ztok/util/ZTBledy.h"

namespace ztok {

ZTOK_WYJATEK(EZTParserError, EWyjatek);  // malformed text; the message ends with line and column
ZTOK_WYJATEK(TZTFileError, ZTException); // a file that cannot be saved or loaded

// A reader met a class other than the one it must read.
class ZTOK_API EZTObcyTypError : public ZTException {
  public:
    EZTObcyTypError(std::u16string_view odczytany, std::u16string_view spodziewany);
    EZTObcyTypError(const EZTObcyTypError& inny) noexcept;
    EZTObcyTypError& operator=(const EZTObcyTypError& inny) noexcept;
    ~EZTObcyTypError() override;

    // The type that was read; with `bezPrzedrostka` only what follows its first ":".
    [[nodiscard]] std::u16string OdczytanyTyp(bool bezPrzedrostka) const;

  private:
    EWyjatek odczytany_; // a text whose copy cannot throw
};

} // namespace ztok
