#include "ztok/platform/Wyjatki.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

namespace ztok {

// Both texts lie behind the struct in one block, so that making a message takes one allocation, and only that one can
// fail. The type is trivially destructible: the reserve content may be used until the very end of the process.
struct EWyjatek::TTresc {
    std::atomic<std::uint32_t> odwolania;
    std::size_t dlugosc;
    const char16_t* tekst;
    const char* utf8;

    // Content with one owner; null when there is no memory for it.
    static TTresc* Nowa(std::u16string_view komunikat) noexcept;
    TTresc* Dolacz() noexcept;
    void Odlacz() noexcept;
    static TTresc Rezerwa;
};

namespace {

// Shown when there is no memory for the message itself.
constexpr char16_t TekstRezerwowy[] = u"Brak pamięci na treść komunikatu";
constexpr char TekstRezerwowyUtf8[] = "Brak pami\xC4\x99"
                                      "ci na tre\xC5\x9B\xC4\x87 komunikatu";

// The next code point at `i`, which moves behind it; a lone surrogate gives U+FFFD.
char32_t NastepnyZnak(std::u16string_view tekst, std::size_t& i) noexcept {
    const char32_t znak = tekst[i++];
    if (znak < 0xD800U || znak > 0xDFFFU)
        return znak;
    if (znak < 0xDC00U && i < tekst.size() && tekst[i] >= 0xDC00U && tekst[i] <= 0xDFFFU)
        return 0x10000U + ((znak - 0xD800U) << 10U) + (static_cast<char32_t>(tekst[i++]) - 0xDC00U);
    return 0xFFFDU;
}

constexpr std::size_t DlugoscUtf8(char32_t znak) noexcept {
    return znak < 0x80U ? 1U : znak < 0x800U ? 2U : znak < 0x10000U ? 3U : 4U;
}

// Writes straight into the block: a conversion that returns a string could fail halfway.
char* DopiszUtf8(char* cel, char32_t znak) noexcept {
    const auto dopelnienie = [&znak](unsigned przesuniecie) {
        return static_cast<char>(0x80U | ((znak >> przesuniecie) & 0x3FU));
    };
    switch (DlugoscUtf8(znak)) {
    case 1:
        *cel++ = static_cast<char>(znak);
        break;
    case 2:
        *cel++ = static_cast<char>(0xC0U | (znak >> 6U));
        *cel++ = dopelnienie(0);
        break;
    case 3:
        *cel++ = static_cast<char>(0xE0U | (znak >> 12U));
        *cel++ = dopelnienie(6);
        *cel++ = dopelnienie(0);
        break;
    default:
        *cel++ = static_cast<char>(0xF0U | (znak >> 18U));
        *cel++ = dopelnienie(12);
        *cel++ = dopelnienie(6);
        *cel++ = dopelnienie(0);
    }
    return cel;
}

} // namespace

constinit EWyjatek::TTresc EWyjatek::TTresc::Rezerwa{
    {1}, sizeof(TekstRezerwowy) / sizeof(char16_t) - 1, TekstRezerwowy, TekstRezerwowyUtf8};

EWyjatek::TTresc* EWyjatek::TTresc::Nowa(std::u16string_view komunikat) noexcept {
    std::size_t bajtyUtf8 = 0;
    for (std::size_t i = 0; i < komunikat.size();)
        bajtyUtf8 += DlugoscUtf8(NastepnyZnak(komunikat, i));
    const std::size_t bajtyTekstu = (komunikat.size() + 1) * sizeof(char16_t);
    auto* blok = static_cast<char*>(std::malloc(sizeof(TTresc) + bajtyTekstu + bajtyUtf8 + 1));
    if (blok == nullptr)
        return nullptr;
    auto* tekst = reinterpret_cast<char16_t*>(blok + sizeof(TTresc));
    if (!komunikat.empty())
        std::memcpy(tekst, komunikat.data(), komunikat.size() * sizeof(char16_t));
    tekst[komunikat.size()] = u'\0';
    char* utf8 = blok + sizeof(TTresc) + bajtyTekstu;
    char* koniec = utf8;
    for (std::size_t i = 0; i < komunikat.size();)
        koniec = DopiszUtf8(koniec, NastepnyZnak(komunikat, i));
    *koniec = '\0';
    return ::new (blok) TTresc{{1}, komunikat.size(), tekst, utf8};
}

EWyjatek::TTresc* EWyjatek::TTresc::Dolacz() noexcept {
    if (this != &Rezerwa)
        odwolania.fetch_add(1, std::memory_order_relaxed);
    return this;
}

void EWyjatek::TTresc::Odlacz() noexcept {
    if (this != &Rezerwa && odwolania.fetch_sub(1, std::memory_order_acq_rel) == 1)
        std::free(this);
}

EWyjatek::EWyjatek(std::u16string_view komunikat) : tresc_(TTresc::Nowa(komunikat)) {
    if (tresc_ == nullptr)
        tresc_ = &TTresc::Rezerwa;
}

EWyjatek::EWyjatek(const EWyjatek& inny) noexcept : std::exception(inny), tresc_(inny.tresc_->Dolacz()) {}

EWyjatek& EWyjatek::operator=(const EWyjatek& inny) noexcept {
    TTresc* tresc = inny.tresc_->Dolacz();
    std::exchange(tresc_, tresc)->Odlacz();
    return *this;
}

EWyjatek::~EWyjatek() { tresc_->Odlacz(); }

std::u16string_view EWyjatek::Komunikat() const noexcept { return {tresc_->tekst, tresc_->dlugosc}; }

const char* EWyjatek::what() const noexcept { return tresc_->utf8; }

// The new message is often made from the old one, which therefore goes last; without memory the old one stays, as it
// says more than the reserve.
void EWyjatek::ZmienKomunikat(std::u16string_view komunikat) {
    if (TTresc* tresc = TTresc::Nowa(komunikat); tresc != nullptr)
        std::exchange(tresc_, tresc)->Odlacz();
}

#define ZTOK_WYJATEK_DEF(Nazwa)                                                                                        \
    Nazwa::Nazwa(const Nazwa&) noexcept = default;                                                                     \
    Nazwa& Nazwa::operator=(const Nazwa&) noexcept = default;                                                          \
    Nazwa::~Nazwa() = default

ZTOK_WYJATEK_DEF(EBladKonwersji);
ZTOK_WYJATEK_DEF(EBladWariantu);
ZTOK_WYJATEK_DEF(EBladOdczytu);
ZTOK_WYJATEK_DEF(EBladZapisu);
ZTOK_WYJATEK_DEF(EBladRzutowania);
ZTOK_WYJATEK_DEF(EBladAbstrakcyjny);
ZTOK_WYJATEK_DEF(EBladSystemu);
ZTOK_WYJATEK_DEF(EBladAsercji);
ZTOK_WYJATEK_DEF(EBladFormatu);

} // namespace ztok
