#include "ztok/fields/WyjatkiModelu.h"

#include "ztok/platform/FormatKomunikatu.h"

namespace ztok {

EZTParserError::EZTParserError(std::u16string_view komunikat, std::int64_t linia, std::int64_t kolumna)
    : ZTException(komunikat), linia_(linia), kolumna_(kolumna) {}
EZTParserError::EZTParserError(const EZTParserError&) noexcept = default;
EZTParserError& EZTParserError::operator=(const EZTParserError&) noexcept = default;
EZTParserError::~EZTParserError() = default;
TZTFileError::TZTFileError(const TZTFileError&) noexcept = default;
TZTFileError& TZTFileError::operator=(const TZTFileError&) noexcept = default;
TZTFileError::~TZTFileError() = default;

EZTObcyTypError::EZTObcyTypError(std::u16string_view odczytany, std::u16string_view spodziewany)
    : ZTException(Formatuj(ztok::Komunikat(kmObcyTyp), {Skrocony(odczytany), spodziewany})), odczytany_(odczytany) {}
EZTObcyTypError::EZTObcyTypError(const EZTObcyTypError&) noexcept = default;
EZTObcyTypError& EZTObcyTypError::operator=(const EZTObcyTypError&) noexcept = default;
EZTObcyTypError::~EZTObcyTypError() = default;

std::u16string EZTObcyTypError::OdczytanyTyp(bool bezPrzedrostka) const {
    const std::u16string_view typ = odczytany_.Komunikat();
    const std::size_t dwukropek = bezPrzedrostka ? typ.find(u':') : std::u16string_view::npos;
    return std::u16string(dwukropek == std::u16string_view::npos ? typ : typ.substr(dwukropek + 1));
}

} // namespace ztok
