// Exceptions: the root class and those of the platform layer.
#pragma once

#include <exception>
#include <string_view>

#include "ztok/platform/Eksport.h"

namespace ztok {

// Root of every exception of the library. The message is UTF-16; what() gives it in UTF-8. Copies share the message,
// so copying cannot throw.
class ZTOK_API EWyjatek : public std::exception {
  public:
    explicit EWyjatek(std::u16string_view komunikat);
    EWyjatek(const EWyjatek& inny) noexcept;
    EWyjatek& operator=(const EWyjatek& inny) noexcept;
    ~EWyjatek() override;

    [[nodiscard]] std::u16string_view Komunikat() const noexcept;
    [[nodiscard]] const char* what() const noexcept override;
    // Replaces the message.
    void ZmienKomunikat(std::u16string_view komunikat);
    // Context (class, path, field) is added once, where the error happened: whoever catches an exception that has it
    // already raises it as it is.
    [[nodiscard]] bool MaKontekst() const noexcept { return kontekst_; }
    // Replaces the message by one with context; the caller then raises the exception again with `throw;`.
    void DodajKontekst(std::u16string_view komunikat) {
        ZmienKomunikat(komunikat);
        kontekst_ = true;
    }

  private:
    struct TTresc;
    TTresc* tresc_;
    bool kontekst_ = false;
};

// Declares an exception class with a key function, so that it is one class in all modules that see the declaration:
//     ZTOK_WYJATEK(EBladFaktury, ztok::ZTException);
// and, in one source of the program, ZTOK_WYJATEK_DEF(EBladFaktury);
#define ZTOK_WYJATEK(Nazwa, Baza) ZTOK_KLASA_WYJATKU(ZTOK_WSPOLNE, Nazwa, Baza)
#define ZTOK_KLASA_WYJATKU(widocznosc, Nazwa, Baza)                                                                    \
    class widocznosc Nazwa : public Baza {                                                                             \
      public:                                                                                                          \
        using Baza::Baza;                                                                                              \
        Nazwa(const Nazwa&) noexcept;                                                                                  \
        Nazwa& operator=(const Nazwa&) noexcept;                                                                       \
        ~Nazwa() override;                                                                                             \
    }
#define ZTOK_WYJATEK_DEF(Nazwa)                                                                                        \
    Nazwa::Nazwa(const Nazwa&) noexcept = default;                                                                     \
    Nazwa& Nazwa::operator=(const Nazwa&) noexcept = default;                                                          \
    Nazwa::~Nazwa() = default

// Those of the library, which exports them.
#define ZTOK_WYJATEK_BIBLIOTEKI(Nazwa, Baza) ZTOK_KLASA_WYJATKU(ZTOK_API, Nazwa, Baza)

ZTOK_WYJATEK_BIBLIOTEKI(EBladKonwersji, EWyjatek);      // text or variant that does not convert
ZTOK_WYJATEK_BIBLIOTEKI(EBladWariantu, EBladKonwersji); // variant conversion: wrong type or out of range
ZTOK_WYJATEK_BIBLIOTEKI(EBladOdczytu, EWyjatek);        // stream: fewer bytes than asked
ZTOK_WYJATEK_BIBLIOTEKI(EBladZapisu, EWyjatek);         // stream: fewer bytes written than asked
ZTOK_WYJATEK_BIBLIOTEKI(EBladRzutowania, EWyjatek);     // an object is not of the class that it must be
ZTOK_WYJATEK_BIBLIOTEKI(EBladAbstrakcyjny, EWyjatek);   // call of an operation that the class does not supply
ZTOK_WYJATEK_BIBLIOTEKI(EBladSystemu, EWyjatek);        // the operating system refused
ZTOK_WYJATEK_BIBLIOTEKI(EBladAsercji, EWyjatek);        // a condition of the library's own does not hold
ZTOK_WYJATEK_BIBLIOTEKI(EBladFormatu, EBladKonwersji);  // format string and its arguments do not fit

} // namespace ztok
