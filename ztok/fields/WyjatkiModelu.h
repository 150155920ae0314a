// Exceptions of readers and files.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "ztok/util/ZTBledy.h"

namespace ztok {

ZTOK_WYJATEK_BIBLIOTEKI(TZTFileError, ZTException); // a file that cannot be saved or loaded

// Malformed text. The message ends with the line and the column, which stand beside it as well.
class ZTOK_API EZTParserError : public ZTException {
  public:
    // The message is whole already.
    explicit EZTParserError(std::u16string_view komunikat, std::int64_t linia = 0, std::int64_t kolumna = 0);
    EZTParserError(const EZTParserError& inny) noexcept;
    EZTParserError& operator=(const EZTParserError& inny) noexcept;
    ~EZTParserError() override;

    [[nodiscard]] std::int64_t Linia() const noexcept { return linia_; }
    [[nodiscard]] std::int64_t Kolumna() const noexcept { return kolumna_; }

  private:
    std::int64_t linia_;
    std::int64_t kolumna_;
};

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
