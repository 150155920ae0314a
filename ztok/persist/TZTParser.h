// Tokenizer of the readable formats.
#pragma once

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>
#include <string_view>

#include "ztok/platform/Eksport.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/TArgument.h"

namespace ztok {

class TStrumien;
struct TUstawieniaFormatu;

// The longest token, unless a caller wants another bound: one unclosed quote must not take all memory.
inline constexpr std::int64_t MaksTokenuDomyslny = 256LL * 1024 * 1024;

// Cuts a stream of bytes into tokens. Made, it stands at the first one.
//
// A token is described by its kind, a byte:
//     0  the end of data
//     1  a symbol: a name
//     2  a text whose last quoted part was in single quotes, or only codes (#13); with XML on, a text in double quotes
//     3  an integer: decimal digits with an optional "-", or "$" and hexadecimal digits
//     4  a real number
//     5  a text whose last quoted part was in double quotes
//     any other: that character itself
// Bytes up to 32 part tokens, and so does a NUL: only the stream's end is the end. The numbers are compared with by
// callers and never change.
//
// Texts are decoded where they lie in the buffer, and nothing is allocated for a token. The buffer starts with
// ParseBufSize bytes, keeps what the current token needs and doubles for a long one.
//
// After EZTParserError, or an error of the stream, a parser is only good for being destroyed. One parser belongs to one
// thread.
class ZTOK_API TZTParser {
  public:
    // Constants of an exported class would have to be exported too; an enumeration has no address.
    enum ERodzaj : std::uint8_t {
        Koniec = 0,
        Symbol = 1,
        Tekst = 2,
        Calkowita = 3,
        Ulamkowa = 4,
        TekstCudzyslow = 5,
        Calkowita64 = 6, // CheckToken only: an integer of 64 bits
    };

    // Reads the first token. The stream is not owned and must outlive the parser, which reads ahead of the tokens.
    // EZTParserError as for NextToken.
    explicit TZTParser(TStrumien& Strumien, std::int64_t maksTokenu = MaksTokenuDomyslny,
                       std::int64_t maksNazwy = MaksTokenuDomyslny);
    TZTParser(const TZTParser&) = delete;
    TZTParser& operator=(const TZTParser&) = delete;
    ~TZTParser();

    // Rules of XML for names, numbers and quotes, from the next token on; off at first. A name then has also bytes 80
    // to FD, "-", "." and ":"; a real number may have a comma; single quotes and "#" are characters; a text in double
    // quotes runs to the next double quote or "<", but behind a ">" it is content, which runs to the next "<" and keeps
    // the quotes.
    void SetTrybXML(bool trybXML) noexcept { trybXML_ = trybXML; }
    [[nodiscard]] bool TrybXML() const noexcept { return trybXML_; }
    // The most bytes that a token's text, or a text of ReadTextUpTo, may have (a name or a number: maksNazwy, if that
    // is less). Memory stays below four times that, or the first buffer.
    void SetMaksTokenu(std::int64_t maksTokenu) noexcept { maksTokenu_ = maksTokenu; }

    // Goes to the next token; returns its kind. EZTParserError for a text that is broken by a line end, is not closed
    // or has a "#" without digits, and for a token longer than the bound.
    std::uint8_t NextToken();

    // NextToken, told what name is expected. Whether that name is the token now, with "=" directly behind it; the token
    // may be another one.
    bool NextToken(std::string_view nazwa);

    // The first byte of the next token, 0 at the end of data. The current one stays, its text may move.
    [[nodiscard]] char NastepnyZnak() {
        PominBlanki();
        return *poz_;
    }

    // Kind of the current token.
    [[nodiscard]] std::uint8_t Token() const noexcept { return token_; }
    // Its text: of kinds 2 and 5 the decoded one, else the bytes as they stand. A view into the buffer, valid until the
    // next operation that reads.
    [[nodiscard]] std::string_view TrescTokenu() const noexcept {
        return {tekstOd_, static_cast<std::size_t>(tekstDo_ - tekstOd_)};
    }
    // The same as a copy.
    [[nodiscard]] std::string TokenString() const { return std::string(TrescTokenu()); }
    // Position in the stream, counted from where the parser began, of the token's first byte, a quote included.
    [[nodiscard]] std::int64_t SourcePos() const noexcept { return pozTokenu_; }
    // Lines met so far, the first is 1. Line feeds are counted; inside ReadTextUpTo and SkipTextUpTo carriage returns.
    [[nodiscard]] std::int64_t SourceLine() const noexcept { return linia_; }

    // Whether the token is a symbol that equals S, ASCII letters in any case.
    [[nodiscard]] bool TokenSymbolIs(std::string_view S) const noexcept {
        return token_ == Symbol && TrescTokenu().size() == S.size() &&
               (std::memcmp(tekstOd_, S.data(), S.size()) == 0 || RownyBezWielkosci(S));
    }
    // The token as an integer: decimal or "$" and hexadecimal; the letters for false and true (N, T) are 0 and 1.
    // EZTParserError when it is none.
    [[nodiscard]] std::int64_t TokenInt() const;
    // Text to real number, as ZTOKStrToFloat. EBladKonwersji when it is none. Has nothing to do with the current token.
    [[nodiscard]] static double StringToFloat(std::string_view S);

    // EZTParserError unless the token is of kind T. Some texts do as well: for Calkowita a Tekst that is an integer of
    // 32 bits or N or T; for Calkowita64 an integer, or a Tekst with one of 64 bits or N or T; for Ulamkowa an integer
    // and any Tekst.
    void CheckToken(std::uint8_t T) const {
        if (token_ != T) [[unlikely]]
            SprawdzInny(T);
    }
    // EZTParserError unless TokenSymbolIs(S).
    void CheckTokenSymbol(std::string_view S) const {
        if (!TokenSymbolIs(S)) [[unlikely]]
            BrakSymbolu(S);
    }

    // Short cuts for "=" and a value, when both stand in the buffer directly behind the current token and what follows
    // shows that the value ends there. The token stays the current one, and NextToken goes on behind the value. False,
    // and nothing changes, for anything else: NextToken is the way to read it then.
    //
    // Whether "=" stands directly behind the current token.
    [[nodiscard]] bool PrzedRowna() const noexcept { return *poz_ == '='; }
    // A text of one part in these quotes, without any of them inside. The view is valid until NextToken.
    [[nodiscard]] bool WezTekst(char cudzyslow, std::string_view& tekst) noexcept;
    // Decimal digits, with an optional "-", that fit the type.
    [[nodiscard]] bool WezCalkowita(std::int64_t& liczba) noexcept;
    // An integer or a number with a point, up to 15 digits.
    [[nodiscard]] bool WezRzeczywista(double& liczba) noexcept;
    // A date in double quotes, when the format is the usual one.
    [[nodiscard]] bool WezDate(const TUstawieniaFormatu& format, double& wartosc) noexcept;
    // The letter for false or true.
    [[nodiscard]] bool WezLogiczna(bool& wartosc) noexcept;

    // Decodes hexadecimal pairs, with blanks between them, up to a "}" into the stream. The current token is what
    // stands before the pairs; afterwards it is the "}". EZTParserError for anything that is no pair, and when the "}"
    // is missing.
    void HexToBinary(TStrumien& Strumien);

    // The next byte, a blank too, becomes the token: its kind is the byte, 32 for a NUL. Returns the kind.
    std::uint8_t ReadNextChar();
    // Takes the bytes from behind the current token up to the next C or the end of data; C is not consumed. The token
    // is then an empty symbol at that place. ReadTextUpTo raises EZTParserError for more bytes than the bound.
    [[nodiscard]] std::string ReadTextUpTo(char C);
    void SkipTextUpTo(char C);
    // Goes to the next byte that is no blank. The kind stays, the token's text does not.
    void SkipBlanks();

    // Raise EZTParserError with the message, or the filled format, at the current token.
    [[noreturn]] void Error(std::u16string_view Komunikat) const;
    [[noreturn]] void Error(EKomunikat Komunikat) const;
    [[noreturn]] void ErrorFmt(std::u16string_view Format, std::initializer_list<TArgument> Argumenty) const;
    [[noreturn]] void ErrorFmt(EKomunikat Format, std::initializer_list<TArgument> Argumenty) const;
    // The message with the line and the column of the current token. The column is the distance to the last line feed
    // before the token: 1 for the first byte of a line. The first line has none before it, and there the distance to
    // the start of the stream counts.
    [[nodiscard]] std::u16string FormatErrStr(std::u16string_view Komunikat) const;
    [[nodiscard]] std::int64_t LiniaTokenu() const noexcept { return liniaTokenu_; }
    [[nodiscard]] std::int64_t KolumnaTokenu() const noexcept { return pozTokenu_ - lfTokenu_; }

  private:
    bool ReadBuffer(bool koniecDozwolony);
    [[nodiscard]] std::int64_t Granica() const noexcept {
        return nazwa_ && maksNazwy_ < maksTokenu_ ? maksNazwy_ : maksTokenu_;
    }
    bool DoczytajTekst(bool koniecDozwolony);
    void UstawRozmiar(std::size_t rozmiar);
    void ZapomnijTresc() noexcept { tekstOd_ = tekstDo_ = nullptr; }
    void ZapamietajMiejsce() noexcept;
    void NowaLinia(const char* lf) noexcept;
    template <class TStop> bool PrzejdzDo(TStop stop);
    void PominBlanki();
    void PominDo(char znak, std::string* wynik);
    char ZnakTekstu();
    void CzytajNazwe();
    std::uint8_t CzytajLiczbe();
    std::uint8_t CzytajTekst();
    void CzytajBieg(char cudzyslow);
    void CzytajKod();
    void CzytajTekstXML(bool tresc);
    [[nodiscard]] bool RownyBezWielkosci(std::string_view tekst) const noexcept;
    void SprawdzInny(std::uint8_t T) const;
    [[noreturn]] void BrakSymbolu(std::string_view S) const;
    [[nodiscard]] bool JestKoniecWartosci(const char* od, const char* p) const noexcept;
    [[noreturn]] void BladLimitu(std::int64_t granica) const;

    TStrumien& strumien_;
    char* bufor_ = nullptr;
    std::size_t rozmiar_ = 0; // without the bytes behind it that only blocks may read
    char* poz_ = nullptr;     // the next byte
    char* koniec_ = nullptr;  // behind the last byte that was read; a NUL stands there
    char* tekstOd_ = nullptr; // the token's text; null: there is none to keep
    char* tekstDo_ = nullptr;
    std::int64_t baza_ = 0; // poz_ is at baza_ + (poz_ - bufor_) of the stream
    std::int64_t linia_ = 1;
    std::int64_t ostatniLf_ = 0; // position of the last line feed met; 0: none, or the first byte
    std::int64_t pozTokenu_ = 0;
    std::int64_t liniaTokenu_ = 1;
    std::int64_t lfTokenu_ = 0;
    std::int64_t maksTokenu_;
    std::int64_t maksNazwy_;
    std::uint8_t token_ = Koniec;
    bool nazwa_ = false; // the token is no text
    bool trybXML_ = false;
    bool koniecDanych_ = false;
};

} // namespace ztok
