#include "ztok/platform/Wyjatki.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

#include "ztok/platform/Kodowania.h"

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
constexpr char TekstRezerwowyUtf8[] = "Brak pamięci na treść komunikatu";

} // namespace

constinit EWyjatek::TTresc EWyjatek::TTresc::Rezerwa{
    {1}, sizeof(TekstRezerwowy) / sizeof(char16_t) - 1, TekstRezerwowy, TekstRezerwowyUtf8};

EWyjatek::TTresc* EWyjatek::TTresc::Nowa(std::u16string_view komunikat) noexcept {
    const std::size_t bajtyTekstu = (komunikat.size() + 1) * sizeof(char16_t);
    auto* blok = static_cast<char*>(std::malloc(sizeof(TTresc) + bajtyTekstu + 3 * komunikat.size() + 1));
    if (blok == nullptr)
        return nullptr;
    auto* tekst = reinterpret_cast<char16_t*>(blok + sizeof(TTresc));
    if (!komunikat.empty())
        std::memcpy(tekst, komunikat.data(), komunikat.size() * sizeof(char16_t));
    tekst[komunikat.size()] = u'\0';
    char* utf8 = blok + sizeof(TTresc) + bajtyTekstu;
    utf8[KodujUtf8(tekst, komunikat.size(), utf8)] = '\0';
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

EWyjatek::EWyjatek(const EWyjatek& inny) noexcept
    : std::exception(inny), tresc_(inny.tresc_->Dolacz()), kontekst_(inny.kontekst_) {}

// NOLINTNEXTLINE(bugprone-unhandled-self-assignment): the content is joined before the old one is left
EWyjatek& EWyjatek::operator=(const EWyjatek& inny) noexcept {
    TTresc* tresc = inny.tresc_->Dolacz();
    std::exchange(tresc_, tresc)->Odlacz();
    kontekst_ = inny.kontekst_;
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
