// Writer of the readable form: nested `object ... end` blocks with one `name=value` line a field.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "ztok/persist/TBuforZapisu.h"
#include "ztok/persist/TZapisywaczDanych.h"

namespace ztok {

class TPoleWskObiektu;

// Settings of the whole library that a new text writer takes. Set them before threads start.
extern ZTOK_API bool DefPominAkapity;    // no indentation; true at first
extern ZTOK_API bool DefPominKonceLinii; // everything on one line; false at first

// Quotation mark of a text: wide text, stored as UTF-8, stands in double quotes, 8-bit text in single ones. Readers
// tell the two by it.
inline constexpr char CudzyslowSzeroki = '"';
inline constexpr char Cudzyslow8Bit = '\'';

// Whether a name can stand in the text form: a letter or "_" (or one letter of the Polish code page), then ASCII
// letters, digits and "_"; neither `object` nor `end`, in any letter case.
[[nodiscard]] ZTOK_API bool JestNazwaTekstowa(std::string_view nazwa) noexcept;

// One writer serves one write, on one thread. It decides which fields and objects are written, and numbers them, as the
// binary writer does; `OpcjeZapisu` has no meaning here.
class ZTOK_API TZapisywaczTekstu : public TZapisywaczDanych {
  public:
    // Writes to the stream, which is not owned and must outlive the writer. A file is written through a buffer of the
    // writer's own, which ZapiszDokument and the destructor flush.
    explicit TZapisywaczTekstu(TStrumien& strumien);
    ~TZapisywaczTekstu() override;

    // Writes one whole document, on a new line when the stream's position is not 0: the header line (empty: "object"
    // and the class name), the fields, and "end". The root is locked meanwhile. Nothing is written when the tree nests
    // too deep. ZTException for a field name that this format cannot hold, EBladZapisu when the stream takes too few
    // bytes.
    void ZapiszDokument(const TObiektBazowy& korzen, std::u16string_view naglowek = {});

    // NOLINTBEGIN(readability-make-member-function-const): a writer that writes is no constant
    // Text as it stands; the same on a new line.
    void ZapiszTxt(std::string_view tekst) { Strumien->WriteBuffer(tekst.data(), tekst.size()); }
    void ZapiszLinie(std::string_view tekst);
    void ZapiszBufor(const void* bufor, std::size_t ile) { Strumien->WriteBuffer(bufor, ile); }
    // NOLINTEND(readability-make-member-function-const)
    // Line end and indentation; nothing with PominKonceLinii.
    void NowaLinia();
    void ZapiszAkapit();
    void ZwiekszAkapit() noexcept { Akapit += RozmAkapitu; }
    void ZmniejszAkapit() noexcept { Akapit -= RozmAkapitu; }

    // One text as a literal that survives line ends, control characters and quotation marks: runs in quotes, `#code`
    // for every byte below 32 and for the quotation mark, `+` between lines of at most 4096 bytes.
    void ZapiszTekst(std::u16string_view tekst);
    void ZapiszTekst(std::string_view bajty, char cudzyslow);
    // UTF-8 in double quotes, or in single ones.
    void ZapiszTekstWide(std::u16string_view tekst, bool szeroki);
    // The number of the field's target; the target must take part in the write (ZTException otherwise).
    void ZapiszRef(const TPoleWskObiektu& pole);
    // Decimal text.
    void ZapiszLiczbe(std::int64_t liczba);
    // A real number in the form that reads back to the same bits, with the kernel's format settings. What the
    // tokenizer could not read as a number stands in quotes: NaN, infinities, unusual decimal separators. ZTException
    // for a separator with which the text does not read back.
    void ZapiszLiczbe(double liczba);

    // A date, a time, or both with a blank between them, with the kernel's format settings. ZTException when readers
    // would take the text for another value (to the second): not every format can be read.
    void ZapiszDate(double wartosc);
    void ZapiszCzas(double wartosc);
    void ZapiszDateICzas(double wartosc);

    // Writes a whole line, "name=value", at once. False, and nothing is written, when the stream shows no room for it
    // or the value is not of the usual form: then ZacznijPole and the value's own operation write it. `nazwa` is a name
    // that can stand in the text form; the field is exactly of the library's class of that code.
    [[nodiscard]] bool ZapiszLiniePola(std::string_view nazwa, const TPole& pole, unsigned kod);

    // Begins a field: new line, name, "=". ZTException for a name that readers could not tell from the rest: one that
    // is no identifier, or is `object` or `end`.
    void ZacznijPole(const TObiekt& obiekt, int nrPola);
    // Begins a frame: new line, "object", and the name of the field or class.
    void ZacznijPoleObiekt(const TObiekt& obiekt, int nrPola);
    void ZacznijObiekt(std::u16string_view nazwaKlasy);
    void ZakonczObiekt() { ZapiszLinie("end"); }

    std::int32_t Akapit = 0; // indentation, in characters
    TStrumien* Strumien;     // the target, or the buffer in front of it
    bool PominAkapity = DefPominAkapity;
    char ZnakAkapitu = ' ';
    std::uint8_t RozmAkapitu = 1; // step of the indentation
    bool PominKonceLinii = DefPominKonceLinii;
    const TObiekt* ZapisObiekt = nullptr; // whose fields are being written
    int ZapisPole = -1;                   // the field being written

  protected:
    // Writes the bytes of a text as runs between the quotation marks.
    void ZapiszTekstWewn(std::string_view bajty, char cudzyslow);

  private:
    [[nodiscard]] char* MiejsceLinii(std::string_view tekst, std::size_t zapas);
    // NOLINTNEXTLINE(readability-make-member-function-const): as above
    void ZatwierdzDo(const char* koniec) noexcept {
        Strumien->Zapisano(static_cast<std::size_t>(koniec - reinterpret_cast<char*>(Strumien->MiejsceZapisu(1))));
    }
    [[nodiscard]] bool NaPoczatku() const;
    void ZapiszChwile(unsigned kod, double wartosc, const char* od, const char* koniec);
    [[noreturn]] void NieDaSieZapisac(std::u16string_view tekst) const;
    void ZapiszNazweKlasy(std::u16string_view nazwa);
    [[nodiscard]] std::string_view NazwaPola(const TObiekt& obiekt, int nrPola);

    TStrumien& cel_;                   // behind the buffer
    TWlasny<TBuforZapisu> BuforZapisu; // in front of a file
    std::string AkapitStr;             // indentation, as long as it was ever needed
    std::string nazwa_;                // field name that a class gives itself
};

// The writer given, or one of its own for a value that is written alone.
class TZapisTekstu {
  public:
    TZapisTekstu(TStrumien& strumien, TZapisywaczTekstu* zapisywacz)
        : wlasny_(zapisywacz == nullptr ? new TZapisywaczTekstu(strumien) : nullptr),
          zapisywacz_(zapisywacz == nullptr ? *wlasny_ : *zapisywacz) {}
    TZapisTekstu(const TZapisTekstu&) = delete;
    TZapisTekstu& operator=(const TZapisTekstu&) = delete;
    ~TZapisTekstu() { delete wlasny_; }
    TZapisywaczTekstu* operator->() const noexcept { return &zapisywacz_; }

  private:
    TZapisywaczTekstu* wlasny_;
    TZapisywaczTekstu& zapisywacz_;
};

} // namespace ztok
