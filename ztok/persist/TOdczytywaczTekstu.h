// Reader of the readable form.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "ztok/fields/TTekstPola.h"
#include "ztok/persist/TOdczytywaczDanych.h"
#include "ztok/persist/TZTParser.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/TStrumien.h"

namespace ztok {

class EWyjatek;
class TObiekt;

// Numbers objects, resolves pointers and keeps limits as the binary reader does. One reader serves one read, on one
// thread.
class ZTOK_API TOdczytywaczTekstu : public TOdczytywaczDanych {
  public:
    // Reads the first token; a byte order mark of UTF-8 before it is passed over. The stream is not owned and must
    // outlive the reader. EZTParserError.
    explicit TOdczytywaczTekstu(TStrumien& strumien, const TLimityOdczytu& limity = {});
    ~TOdczytywaczTekstu() override;

    // Reads one whole document into the object, which is locked meanwhile: the header line, whose class must fit the
    // object (EZTObcyTypError), or whose tokens must be those of the header given; the fields; and "end". After an
    // error every pointer of the object is resolved or null.
    void WczytajDokument(TObiektBazowy& korzen, std::u16string_view naglowek = {});

    // One text: the current token, which must be one (EZTParserError), and those that "+" joins to it. Valid until the
    // next text is read.
    std::string_view WczytajTekstAnsi();
    // The same, handed to `odbior` where it lies: a long text that nothing is joined to is not copied on the way.
    template <class F> void WczytajTekstDo(const F& odbior) {
        SprawdzCzyTekst();
        if (Parser.NastepnyZnak() == '+') {
            odbior(WczytajTekstAnsi());
            return;
        }
        SprawdzTekst(static_cast<std::uint32_t>(Parser.TrescTokenu().size()));
        odbior(Parser.TrescTokenu());
        Parser.NextToken();
    }
    // The same decoded from the library's code page.
    [[nodiscard]] std::u16string WczytajTekst();
    // Bytes of UTF-8, or of Windows-1250 when they are no UTF-8.
    [[nodiscard]] static std::u16string DekodujTrescUTF8(std::string_view bajty);
    // The same as the text of a field: most texts are short and right, and need no memory on the way.
    static void ZTresciUTF8(std::string_view bajty, TTekstPola& cel) {
        constexpr std::size_t krotki = 256;
        char16_t znaki[krotki];
        if (bajty.size() <= krotki) {
            // What is ill-formed shows as U+FFFD, which is rare in texts.
            const std::u16string_view tekst(znaki, DekodujUtf8(bajty.data(), bajty.size(), znaki));
            if (!MozeMiecZamiennik(tekst) || PoprawneUtf8(bajty)) {
                cel.Ustaw(tekst);
                return;
            }
        }
        DlugaTrescUTF8(bajty, cel);
    }
    // The class name that the current token gives, as a symbol or as a text.
    [[nodiscard]] std::u16string NazwaKlasyTokenu() const;
    // The text of any token as it stands, for values that are not in quotes.
    std::string_view WczytajGolyToken();
    // Any token as wide text: double quotes hold UTF-8, single ones the library's code page, other tokens stand for
    // themselves.
    [[nodiscard]] std::u16string WczytajDowolnyTekst();
    // A real number, also one with a decimal comma. EBladKonwersji when it is none.
    double WczytajRzeczywista();
    // An object number, which waits for the end of the read.
    void WczytajRef(TPoleWskObiektu& pole);
    [[nodiscard]] std::uint32_t WczytajNumer();

    // Values in parentheses, "(a;b;c)": calls `element()` at the first token of each. The current token is then the one
    // behind them.
    template <class F> void WczytajWNawiasach(const F& element) {
        Parser.CheckToken('(');
        for (bool dalej = Parser.NextToken() != ')'; dalej;) {
            ZapamietajMiejsce();
            element();
            dalej = Parser.Token() == ';';
            if (dalej)
                Parser.NextToken();
            else
                Parser.CheckToken(')');
        }
        Parser.NextToken();
    }

    // Keeps the place of the current token as that of the value which is read: for the errors that do not tell theirs.
    void ZapamietajMiejsce() noexcept {
        linia_ = Parser.LiniaTokenu();
        kolumna_ = Parser.KolumnaTokenu();
    }
    // The message with the line and the column: the tokenizer's errors have them already.
    [[nodiscard]] std::u16string KomunikatZMiejscem(const EWyjatek& e) const;

    TStrumien& Strumien;

  private:
    // What the parser reads: the stream without the byte order mark that it may begin with.
    class TBezZnakuBom final : public TStrumien {
      public:
        explicit TBezZnakuBom(TStrumien& strumien) noexcept : strumien_(strumien) {}
        std::int64_t Read(void* bufor, std::int64_t ile) override;
        std::int64_t Write(const void* bufor, std::int64_t ile) override;
        // Bytes of the mark, once the first ones were read.
        [[nodiscard]] std::int64_t Pominiete() const noexcept { return pominiete_; }

      private:
        TStrumien& strumien_;
        char poczatek_[3] = {}; // what was read to look for the mark
        std::int64_t ma_ = -1;  // how many of them there are; -1: nothing was read yet
        std::int64_t podane_ = 0;
        std::int64_t pominiete_ = 0;
    };

    std::int64_t poczatek_; // position of the document in the stream, before the parser reads ahead; -1: not known
    std::int64_t linia_ = 1;
    std::int64_t kolumna_ = 1;
    TBezZnakuBom bezBom_;

  public:
    TZTParser Parser;
    const TObiekt* OdczytObiekt = nullptr; // whose fields are being read
    int OdczytPole = -1;                   // the field being read

    // Names the object whose fields are read, for a scope.
    class TPoleOdczytu {
      public:
        TPoleOdczytu(TOdczytywaczTekstu& odczytywacz, const TObiekt& obiekt) noexcept;
        TPoleOdczytu(const TPoleOdczytu&) = delete;
        TPoleOdczytu& operator=(const TPoleOdczytu&) = delete;
        ~TPoleOdczytu();

      private:
        TOdczytywaczTekstu& odczytywacz_;
        const TObiekt* obiekt_;
        int pole_;
    };

  private:
    // Whether U+FFFD may stand in the text: four units at a time, and a unit that looks alike does no harm.
    static void DlugaTrescUTF8(std::string_view bajty, TTekstPola& cel);
    [[nodiscard]] static bool MozeMiecZamiennik(std::u16string_view tekst) noexcept {
        std::size_t i = 0;
        for (; i + 4 <= tekst.size(); i += 4) {
            std::uint64_t cztery = 0;
            std::memcpy(&cztery, tekst.data() + i, sizeof cztery);
            const std::uint64_t rozne = cztery ^ 0xFFFDFFFDFFFDFFFDU;
            if (((rozne - 0x0001000100010001U) & ~rozne & 0x8000800080008000U) != 0)
                return true;
        }
        return tekst.substr(i).find(u'\uFFFD') != std::u16string_view::npos;
    }
    void WczytajNaglowek(const TObiektBazowy& korzen, std::u16string_view naglowek);
    void DopiszTekst();
    void SprawdzCzyTekst() const {
        if (Parser.Token() != TZTParser::TekstCudzyslow)
            Parser.CheckToken(TZTParser::Tekst);
    }

    std::string tekst_; // the text read last
};

// The reader given, or one of its own for a value that is read alone.
class TOdczytTekstu {
  public:
    TOdczytTekstu(TStrumien& strumien, TOdczytywaczTekstu* odczytywacz)
        : wlasny_(odczytywacz == nullptr ? new TOdczytywaczTekstu(strumien) : nullptr),
          odczytywacz_(odczytywacz == nullptr ? *wlasny_ : *odczytywacz) {}
    TOdczytTekstu(const TOdczytTekstu&) = delete;
    TOdczytTekstu& operator=(const TOdczytTekstu&) = delete;
    ~TOdczytTekstu() { delete wlasny_; }
    TOdczytywaczTekstu* operator->() const noexcept { return &odczytywacz_; }
    TOdczytywaczTekstu& operator*() const noexcept { return odczytywacz_; }

  private:
    TOdczytywaczTekstu* wlasny_;
    TOdczytywaczTekstu& odczytywacz_;
};

} // namespace ztok
