// Variant: one value of a closed set of types, which converts between them.
#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ztok/platform/Eksport.h"
#include "ztok/platform/TArgument.h"

namespace ztok {

// Written to disk, never change: the type codes of variants. An array holds variants and has one dimension.
enum class TTypWariantu : std::uint16_t {
    Empty = 0,
    Null = 1,
    Smallint = 2, // signed 16-bit
    Integer = 3,  // signed 32-bit
    Single = 4,
    Double = 5,
    Currency = 6,
    Date = 7,
    WideString = 8,
    Boolean = 11,
    Variant = 12,  // type of array elements; no value has it
    Shortint = 16, // signed 8-bit
    Byte = 17,
    Word = 18,     // unsigned 16-bit
    Cardinal = 19, // unsigned 32-bit
    Int64 = 20,
    UInt64 = 21,
    AnsiString = 0x0100, // 8-bit text
    UnicodeString = 0x0101,
    Array = 0x2000, // bit
    ArrayOfVariant = 0x200C,
};

// Name of the type for messages; "?" and the number in hexadecimal for a code that names no type.
[[nodiscard]] ZTOK_API std::u16string NazwaTypuWariantu(TTypWariantu typ);

// Days since 1899-12-30 with the time of day as the fraction. A type of its own, so that a date cannot be taken for
// a number by mistake. Before that day the fraction still counts forward: -1.25 is 06:00 on 1899-12-29.
struct TDataCzas {
    double dni = 0;
    friend bool operator==(const TDataCzas&, const TDataCzas&) = default;
};

// Conversions follow these rules:
//  - empty is 0, false or no text; null is no text, and an error for everything else;
//  - true is -1 as a number; every number but 0 is true; as text a boolean is "True" or "False", read in any case;
//  - reals become integers by rounding half to even; a result out of range is an error, never cut;
//  - text becomes a number or date, and they text, by the format settings of the process;
//  - 8-bit text is in Windows-1250.
// Errors are EBladWariantu. A variant may be read by several threads at once, as any value.
class ZTOK_API TWariant {
  public:
    TWariant() noexcept : TWariant(TTypWariantu::Empty, std::int64_t{0}) {}
    template <std::same_as<bool> T> TWariant(T wartosc) noexcept : TWariant(TTypWariantu::Boolean, Bit(wartosc)) {}
    TWariant(std::int8_t wartosc) noexcept : TWariant(TTypWariantu::Shortint, std::int64_t{wartosc}) {}
    TWariant(std::uint8_t wartosc) noexcept : TWariant(TTypWariantu::Byte, std::int64_t{wartosc}) {}
    TWariant(std::int16_t wartosc) noexcept : TWariant(TTypWariantu::Smallint, std::int64_t{wartosc}) {}
    TWariant(std::uint16_t wartosc) noexcept : TWariant(TTypWariantu::Word, std::int64_t{wartosc}) {}
    TWariant(int wartosc) noexcept : TWariant(TTypWariantu::Integer, std::int64_t{wartosc}) {}
    TWariant(unsigned wartosc) noexcept : TWariant(TTypWariantu::Cardinal, std::int64_t{wartosc}) {}
    TWariant(long wartosc) noexcept
        : TWariant(sizeof(long) == 4 ? TTypWariantu::Integer : TTypWariantu::Int64, std::int64_t{wartosc}) {}
    TWariant(unsigned long wartosc) noexcept
        : TWariant(sizeof(long) == 4 ? TTypWariantu::Cardinal : TTypWariantu::UInt64,
                   static_cast<std::int64_t>(wartosc)) {}
    TWariant(long long wartosc) noexcept : TWariant(TTypWariantu::Int64, std::int64_t{wartosc}) {}
    TWariant(unsigned long long wartosc) noexcept
        : TWariant(TTypWariantu::UInt64, static_cast<std::int64_t>(wartosc)) {}
    TWariant(float wartosc) noexcept : TWariant(TTypWariantu::Single, double{wartosc}) {}
    TWariant(double wartosc) noexcept : TWariant(TTypWariantu::Double, wartosc) {}
    TWariant(TWaluta wartosc) noexcept : TWariant(TTypWariantu::Currency, wartosc.dziesieciotysieczne) {}
    TWariant(TDataCzas wartosc) noexcept : TWariant(TTypWariantu::Date, wartosc.dni) {}
    TWariant(std::u16string tekst) noexcept : typ_(TTypWariantu::UnicodeString), tekst_(std::move(tekst)) {}
    TWariant(std::u16string_view tekst) : TWariant(std::u16string(tekst)) {}
    TWariant(const char16_t* tekst) : TWariant(std::u16string(tekst)) {}
    // A character would become a number, a pointer a boolean.
    TWariant(char) = delete;
    TWariant(char16_t) = delete;
    TWariant(const void*) = delete;
    // A moved-from variant is empty.
    TWariant(const TWariant& inny);
    TWariant(TWariant&& inny) noexcept;
    TWariant& operator=(const TWariant& inny);
    TWariant& operator=(TWariant&& inny) noexcept;
    ~TWariant();

    // Types that no C++ type stands for.
    static TWariant Null() noexcept;
    static TWariant WideString(std::u16string tekst) noexcept;
    static TWariant AnsiString(std::string bajty) noexcept;
    static TWariant Tablica(std::vector<TWariant> elementy) noexcept;

    [[nodiscard]] TTypWariantu Typ() const noexcept { return typ_; }
    [[nodiscard]] std::u16string NazwaTypu() const { return NazwaTypuWariantu(typ_); }
    [[nodiscard]] bool JestPusty() const noexcept { return typ_ == TTypWariantu::Empty; }
    [[nodiscard]] bool JestNull() const noexcept { return typ_ == TTypWariantu::Null; }
    [[nodiscard]] bool JestPustyLubNull() const noexcept { return JestPusty() || JestNull(); }
    [[nodiscard]] bool JestTekstem() const noexcept;   // 8-bit, wide or Unicode
    [[nodiscard]] bool JestCalkowity() const noexcept; // an integer of any width; booleans are none
    [[nodiscard]] bool JestTablica() const noexcept { return typ_ == TTypWariantu::ArrayOfVariant; }

    [[nodiscard]] std::int32_t JakoInt32() const;
    [[nodiscard]] std::int64_t JakoInt64() const;
    [[nodiscard]] std::uint64_t JakoUInt64() const;
    [[nodiscard]] double JakoDouble() const;
    [[nodiscard]] bool JakoBool() const;
    // From 0001-01-01 to 9999-12-31; an error outside.
    [[nodiscard]] TDataCzas JakoData() const;
    [[nodiscard]] TWaluta JakoWaluta() const;
    [[nodiscard]] std::u16string JakoTekst16() const;
    // Characters that Windows-1250 lacks are replaced as Win1250 does.
    [[nodiscard]] std::string JakoTekst8() const;
    // The value with the given type. Here null has no text: it only becomes null. Only an array becomes an array;
    // Variant gives a copy.
    [[nodiscard]] TWariant Przeksztalc(TTypWariantu typ) const;

    // Elements of an array; EBladWariantu for another type.
    [[nodiscard]] const std::vector<TWariant>& Elementy() const;
    [[nodiscard]] std::vector<TWariant>& Elementy();

    // The same type and the same value: no conversion. PorownajWarianty compares by value.
    ZTOK_API friend bool operator==(const TWariant& a, const TWariant& b) noexcept;

  private:
    friend ZTOK_API int PorownajWarianty(const TWariant& a, const TWariant& b);

    TWariant(TTypWariantu typ, std::int64_t wartosc) noexcept : typ_(typ), liczba_(wartosc) {}
    TWariant(TTypWariantu typ, double wartosc) noexcept : typ_(typ), rzeczywista_(wartosc) {}
    static std::int64_t Bit(bool wartosc) noexcept { return wartosc ? 1 : 0; }
    template <class TOd> void Zbuduj(TOd&& inny);
    void Zburz() noexcept;
    static void Oproznij(std::vector<TWariant>& elementy) noexcept;
    [[nodiscard]] std::u16string Tekst() const; // text types only
    [[nodiscard]] std::int64_t JakoCalkowita(std::int64_t min, std::uint64_t max, TTypWariantu cel) const;
    [[noreturn]] void BladTypu(TTypWariantu cel) const;
    [[noreturn]] void BladZakresu(TTypWariantu cel) const;

    TTypWariantu typ_;
    // The member that the type names.
    union {
        std::int64_t liczba_;  // integers (UInt64 as its bits), booleans (0, 1), currency; 0 without a value
        double rzeczywista_;   // Single, Double, Date
        std::u16string tekst_; // UnicodeString, WideString
        std::string bajty_;    // AnsiString
        std::vector<TWariant> tablica_;
    };
};

// Order of two variants by value: -1, 0 or 1.
//  - Empty sorts before null and null before every value, so that a sorted list has its missing values first.
//  - Two texts compare by character code, a boolean and a text as texts, two booleans false before true.
//  - Text against a number or date is converted to it; EBladWariantu when it does not convert.
//  - Other pairs compare as numbers, true being -1: integers and currency exactly, with a real or date as doubles.
//    NaN is equal to everything, as in fields.
//  - Arrays have no order: EBladWariantu.
[[nodiscard]] ZTOK_API int PorownajWarianty(const TWariant& a, const TWariant& b);

} // namespace ztok
