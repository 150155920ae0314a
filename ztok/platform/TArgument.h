// Tagged argument: one element of an array of tagged values, by which fields are named and values passed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "ztok/platform/Eksport.h"

namespace ztok {

class TObiektOgolny;
class TWariant;
struct IInterfejs;
struct TKlasa;

// Written to disk, never change: the tags of tagged-value arrays.
enum class TTag : std::uint8_t {
    Integer = 0,
    Boolean = 1,
    Char = 2,        // 8-bit character
    Extended = 3,    // real number, 80 bits
    ShortString = 4, // 8-bit text
    Pointer = 5,
    PChar = 6, // zero-terminated 8-bit text
    Object = 7,
    Class = 8,
    WideChar = 9,
    PWideChar = 10,  // zero-terminated wide text
    AnsiString = 11, // 8-bit text
    Currency = 12,
    Variant = 13,
    Interface = 14,
    WideString = 15,
    Int64 = 16,
    UnicodeString = 17,
};

// Amount with four decimal places, kept as ten-thousandths.
struct TWaluta {
    std::int64_t dziesieciotysieczne = 0;
    friend bool operator==(const TWaluta&, const TWaluta&) = default;
};

// Text and variants are owned; objects, classes, interfaces and raw pointers are not.
class ZTOK_API TArgument {
  public:
    TArgument(bool wartosc) noexcept : tag_(TTag::Boolean) { calkowita_ = wartosc ? 1 : 0; }
    TArgument(char znak) noexcept : tag_(TTag::Char) { calkowita_ = static_cast<unsigned char>(znak); }
    TArgument(char16_t znak) noexcept : tag_(TTag::WideChar) { calkowita_ = znak; }
    TArgument(std::int8_t wartosc) noexcept : tag_(TTag::Integer) { calkowita_ = wartosc; }
    TArgument(std::uint8_t wartosc) noexcept : tag_(TTag::Integer) { calkowita_ = wartosc; }
    TArgument(std::int16_t wartosc) noexcept : tag_(TTag::Integer) { calkowita_ = wartosc; }
    TArgument(std::uint16_t wartosc) noexcept : tag_(TTag::Integer) { calkowita_ = wartosc; }
    TArgument(int wartosc) noexcept : tag_(TTag::Integer) { calkowita_ = wartosc; }
    // An unsigned number has the tag of the least kind that holds its value: an index or a size names a field too.
    TArgument(unsigned wartosc) noexcept : TArgument(static_cast<unsigned long long>(wartosc)) {}
    TArgument(long wartosc) noexcept : tag_(sizeof(long) == 4 ? TTag::Integer : TTag::Int64) { calkowita_ = wartosc; }
    TArgument(unsigned long wartosc) noexcept : TArgument(static_cast<unsigned long long>(wartosc)) {}
    TArgument(long long wartosc) noexcept : tag_(TTag::Int64) { calkowita_ = wartosc; }
    TArgument(unsigned long long wartosc) noexcept : tag_(wartosc >> 31U == 0 ? TTag::Integer : TTag::Int64) {
        calkowita_ = static_cast<std::int64_t>(wartosc);
    }
    TArgument(float wartosc) noexcept : tag_(TTag::Extended) { rzeczywista_ = wartosc; }
    TArgument(double wartosc) noexcept : tag_(TTag::Extended) { rzeczywista_ = wartosc; }
    TArgument(long double wartosc) noexcept : tag_(TTag::Extended) { rzeczywista_ = wartosc; }
    TArgument(TWaluta wartosc) noexcept : tag_(TTag::Currency) { calkowita_ = wartosc.dziesieciotysieczne; }
    TArgument(std::u16string_view tekst) : tag_(TTag::UnicodeString), tekst_(tekst) { calkowita_ = 0; }
    TArgument(std::u16string tekst) noexcept : tag_(TTag::UnicodeString), tekst_(std::move(tekst)) { calkowita_ = 0; }
    TArgument(const char16_t* tekst) : TArgument(std::u16string_view(tekst)) {}
    // 8-bit text: bytes in the library's code page. A literal would be UTF-8: convert it first.
    TArgument(std::string bajty) noexcept : tag_(TTag::AnsiString), bajty_(std::move(bajty)) { calkowita_ = 0; }
    TArgument(const char* bajty) = delete;
    TArgument(std::nullptr_t) noexcept : tag_(TTag::Pointer) { wskaznik_ = nullptr; }
    TArgument(const TObiektOgolny* obiekt) noexcept : tag_(TTag::Object) { wskaznik_ = obiekt; }
    TArgument(const TKlasa* klasa) noexcept : tag_(TTag::Class) { wskaznik_ = klasa; }
    TArgument(IInterfejs* interfejs) noexcept : tag_(TTag::Interface) { wskaznik_ = interfejs; }
    // Any other pointer would quietly become a boolean: say what it is, or use Pointer().
    TArgument(const void* wskaznik) = delete;
    TArgument(const TWariant& wariant);
    TArgument(const TArgument& inny);
    TArgument(TArgument&& inny) noexcept;
    TArgument& operator=(const TArgument& inny);
    TArgument& operator=(TArgument&& inny) noexcept;
    ~TArgument();

    // A boolean with the byte that a stream had: true when it is not 0, kept as it is.
    static TArgument BajtLogiczny(std::uint8_t bajt) noexcept;
    // Kinds that no C++ type stands for.
    static TArgument ShortString(std::string bajty);       // at most 255 bytes are kept
    static TArgument PChar(std::string bajty);             // up to the first zero
    static TArgument PWideChar(std::u16string_view tekst); // up to the first zero
    static TArgument WideString(std::u16string tekst);
    static TArgument Pointer(const void* wskaznik) noexcept;

    [[nodiscard]] TTag Tag() const noexcept { return tag_; }
    [[nodiscard]] bool JestCalkowity() const noexcept { return tag_ == TTag::Integer || tag_ == TTag::Int64; }
    // Short string, 8-bit string or Unicode string: the kinds that can name a field.
    [[nodiscard]] bool JestNazwa() const noexcept {
        return tag_ == TTag::UnicodeString || tag_ == TTag::AnsiString || tag_ == TTag::ShortString;
    }
    [[nodiscard]] bool JestTekst8() const noexcept {
        return tag_ == TTag::AnsiString || tag_ == TTag::ShortString || tag_ == TTag::PChar || tag_ == TTag::Char;
    }
    [[nodiscard]] bool JestTekst16() const noexcept {
        return tag_ == TTag::UnicodeString || tag_ == TTag::WideString || tag_ == TTag::PWideChar ||
               tag_ == TTag::WideChar;
    }

    // The value, each for the tags that it names; the caller has looked at Tag().
    [[nodiscard]] std::int64_t Calkowita() const noexcept {
        return calkowita_;
    } // Integer, Int64, Boolean, Char, WideChar, Currency
    [[nodiscard]] bool Logiczna() const noexcept { return calkowita_ != 0; }
    [[nodiscard]] long double Rzeczywista() const noexcept { return rzeczywista_; } // Extended
    [[nodiscard]] const std::string& Bajty() const noexcept { return bajty_; }      // ShortString, PChar, AnsiString
    [[nodiscard]] const std::u16string& Tekst() const noexcept {
        return tekst_;
    }                                                                         // PWideChar, WideString, UnicodeString
    [[nodiscard]] const void* Wskaznik() const noexcept { return wskaznik_; } // Pointer
    [[nodiscard]] TObiektOgolny* Obiekt() const noexcept {                    // Object
        return static_cast<TObiektOgolny*>(const_cast<void*>(wskaznik_));
    }
    [[nodiscard]] const TKlasa* Klasa() const noexcept { return static_cast<const TKlasa*>(wskaznik_); } // Class
    [[nodiscard]] IInterfejs* Interfejs() const noexcept {                                               // Interface
        return static_cast<IInterfejs*>(const_cast<void*>(wskaznik_));
    }
    [[nodiscard]] const TWariant& Wariant() const noexcept { return *wariant_; } // Variant
    // Any text kind as Unicode; 8-bit kinds go through Windows-1250. Empty for the other kinds.
    [[nodiscard]] std::u16string JakoTekst() const;

  private:
    explicit TArgument(TTag tag) noexcept : tag_(tag) { calkowita_ = 0; }
    void KopiujWartosc(const TArgument& inny) noexcept;
    void Porzuc() noexcept;

    TTag tag_;
    union {
        std::int64_t calkowita_;
        long double rzeczywista_;
        const void* wskaznik_;
        TWariant* wariant_; // owned
    };
    std::string bajty_;
    std::u16string tekst_;
};

// A view of consecutive values, as std::span is, that a list in braces gives too: {TKlient::nrNazwa, u"Adres.Ulica"}.
// Such a list lives until the end of the call: a view of one is for parameters alone.
template <class T> class TCiag : public std::span<const T> {
  public:
    using std::span<const T>::span; // NOLINT(modernize-use-equals-default): taken for a constructor of its own
    constexpr TCiag() noexcept = default;
    constexpr TCiag(std::span<const T> ciag) noexcept : std::span<const T>(ciag) {}
    constexpr TCiag(std::initializer_list<T> lista) noexcept : std::span<const T>(lista.begin(), lista.size()) {}
};

using TArgumenty = TCiag<TArgument>;

} // namespace ztok
