// One row of a class's static field table, and the kinds of fields that rows can declare.
#pragma once

#include <cstdint>
#include <string_view>

#include "ztok/platform/TKlasa.h"

namespace ztok {

class TObiekt;

// Declared kind of a field's value.
enum class TRodzajWartosci : std::uint8_t {
    Byte,
    Smallint,
    Word,
    Integer,
    Cardinal,
    Shortint, // signed 8-bit: never a field
    Boolean,
    Zmiennoprzecinkowa,
    Int64,
    AnsiString,
    WideString,
    String,
    StrList,
    WideStrList,
    RefObiektu,
    WskObiektu,
    Obiekt, // an object of a declared class derived from TPole
    Inny,   // never a field
};

// The accessor that a row declares. A row whose reader is not the one that matches its kind declares no field of the
// model: its value is computed, or kept elsewhere.
enum class TDostep : std::uint8_t {
    Obcy,
    PoleByte,
    PoleSmallint,
    PoleWord,
    PoleInteger,
    PoleCardinal,
    PoleInt64,
    PoleDouble,
    PoleDateTime,
    PoleDate,
    PoleTime,
    PoleBoolean,
    PoleString,
    PoleCDATA,
    PoleRawByteString,
    PoleWideString,
    PoleStrList,
    PoleWideStrList,
    PoleRefObiektu,
    PoleWskObiektu,
};

struct TWierszPola {
    std::int32_t nr; // below 0: not part of the model
    std::u16string_view nazwa;
    TRodzajWartosci rodzaj;
    TDostep czytnik;
    TDostep pisarz;
    std::u16string_view typ;            // name of the declared type; tells dates and times from other real numbers
    const TKlasa* (*klasa)() noexcept;  // declared class: of the field, or of the object pointed at
    bool (*zapisywane)(const TObiekt&); // "stored" predicate; null: always stored
};

} // namespace ztok
