#include "ztok/platform/TArgument.h"

#include <algorithm>
#include <utility>

#include "ztok/platform/Kodowania.h"
#include "ztok/platform/TWariant.h"

namespace ztok {
namespace {

// The longest 8-bit text whose length fits the one byte that a short string has for it.
constexpr std::size_t kNajdluzszyShortString = 255;

} // namespace

TArgument::TArgument(const TWariant& wariant) : tag_(TTag::Variant) { wariant_ = new TWariant(wariant); }

TArgument::TArgument(const TArgument& inny) : tag_(inny.tag_), bajty_(inny.bajty_), tekst_(inny.tekst_) {
    // The variant last: nothing after it can throw, so it cannot leak.
    if (tag_ == TTag::Variant)
        wariant_ = new TWariant(*inny.wariant_);
    else
        KopiujWartosc(inny);
}

TArgument::TArgument(TArgument&& inny) noexcept
    : tag_(inny.tag_), bajty_(std::move(inny.bajty_)), tekst_(std::move(inny.tekst_)) {
    KopiujWartosc(inny);
    inny.Porzuc();
}

TArgument& TArgument::operator=(const TArgument& inny) {
    if (this != &inny)
        *this = TArgument(inny);
    return *this;
}

TArgument& TArgument::operator=(TArgument&& inny) noexcept {
    if (this == &inny)
        return *this;
    if (tag_ == TTag::Variant)
        delete wariant_;
    tag_ = inny.tag_;
    bajty_ = std::move(inny.bajty_);
    tekst_ = std::move(inny.tekst_);
    KopiujWartosc(inny);
    inny.Porzuc();
    return *this;
}

TArgument::~TArgument() {
    if (tag_ == TTag::Variant)
        delete wariant_;
}

// Copies the active member of the union; for a variant that is its address.
void TArgument::KopiujWartosc(const TArgument& inny) noexcept {
    switch (inny.tag_) {
    case TTag::Extended:
        rzeczywista_ = inny.rzeczywista_;
        break;
    case TTag::Pointer:
    case TTag::Object:
    case TTag::Class:
    case TTag::Interface:
        wskaznik_ = inny.wskaznik_;
        break;
    case TTag::Variant:
        wariant_ = inny.wariant_;
        break;
    default:
        calkowita_ = inny.calkowita_;
        break;
    }
}

// A moved-from argument becomes the integer 0: its variant belongs to the new owner.
void TArgument::Porzuc() noexcept {
    tag_ = TTag::Integer;
    calkowita_ = 0;
    bajty_.clear();
    tekst_.clear();
}

TArgument TArgument::BajtLogiczny(std::uint8_t bajt) noexcept {
    TArgument wynik(TTag::Boolean);
    wynik.calkowita_ = bajt;
    return wynik;
}

TArgument TArgument::ShortString(std::string bajty) {
    TArgument wynik(TTag::ShortString);
    if (bajty.size() > kNajdluzszyShortString)
        bajty.resize(kNajdluzszyShortString);
    wynik.bajty_ = std::move(bajty);
    return wynik;
}

TArgument TArgument::PChar(std::string bajty) {
    TArgument wynik(TTag::PChar);
    bajty.resize(std::min(bajty.find('\0'), bajty.size()));
    wynik.bajty_ = std::move(bajty);
    return wynik;
}

TArgument TArgument::PWideChar(std::u16string_view tekst) {
    TArgument wynik(TTag::PWideChar);
    wynik.tekst_ = tekst.substr(0, tekst.find(u'\0'));
    return wynik;
}

TArgument TArgument::WideString(std::u16string tekst) {
    TArgument wynik(TTag::WideString);
    wynik.tekst_ = std::move(tekst);
    return wynik;
}

TArgument TArgument::Pointer(const void* wskaznik) noexcept {
    TArgument wynik(TTag::Pointer);
    wynik.wskaznik_ = wskaznik;
    return wynik;
}

std::u16string TArgument::JakoTekst() const {
    switch (tag_) {
    case TTag::Char: {
        const char znak = static_cast<char>(calkowita_);
        return ZWin1250(std::string_view(&znak, 1));
    }
    case TTag::ShortString:
    case TTag::PChar:
    case TTag::AnsiString:
        return ZWin1250(bajty_);
    case TTag::WideChar:
        return std::u16string(1, static_cast<char16_t>(calkowita_));
    default:
        return tekst_; // empty for every kind that is no text
    }
}

} // namespace ztok
