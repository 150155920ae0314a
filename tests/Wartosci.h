// Values written in the tables of the tests: "kind:text".
#pragma once

#include <functional>
#include <map>
#include <string>

#include "tests/TabeleTestow.h"
#include "ztok/platform/TArgument.h"
#include "ztok/platform/TObiektLiczony.h"
#include "ztok/platform/TWariant.h"

namespace testy {

// "2.5", or "text@bits" where the bits decide.
inline double Rzeczywista(const std::string& tekst) {
    const std::size_t bity = tekst.find('@');
    return bity == std::string::npos
               ? std::stod(tekst)
               : std::bit_cast<double>(static_cast<std::uint64_t>(std::stoull(tekst.substr(bity + 1), nullptr, 16)));
}

template <class W>
W ZOpisu(const std::map<std::string, std::function<W(const std::string&)>>& rodzaje, const std::string& opis) {
    const std::size_t dwukropek = opis.find(':');
    const auto rodzaj = rodzaje.find(opis.substr(0, dwukropek));
    if (rodzaj == rodzaje.end())
        throw std::invalid_argument(opis);
    return rodzaj->second(opis.substr(dwukropek + 1));
}

// The types of variants; 8-bit text is the bytes of the table.
inline ztok::TWariant Wariant(const std::string& opis) {
    using ztok::TWariant;
    using S = const std::string&;
    static const std::map<std::string, std::function<TWariant(S)>> rodzaje = {
        {"empty", [](S) { return TWariant(); }},
        {"null", [](S) { return TWariant::Null(); }},
        {"shortint", [](S t) { return TWariant(static_cast<std::int8_t>(std::stoi(t))); }},
        {"byte", [](S t) { return TWariant(static_cast<std::uint8_t>(std::stoi(t))); }},
        {"smallint", [](S t) { return TWariant(static_cast<std::int16_t>(std::stoi(t))); }},
        {"word", [](S t) { return TWariant(static_cast<std::uint16_t>(std::stoi(t))); }},
        {"int", [](S t) { return TWariant(std::stoi(t)); }},
        {"cardinal", [](S t) { return TWariant(static_cast<std::uint32_t>(std::stoull(t))); }},
        {"int64", [](S t) { return TWariant(static_cast<std::int64_t>(std::stoll(t))); }},
        {"uint64", [](S t) { return TWariant(static_cast<std::uint64_t>(std::stoull(t))); }},
        {"single", [](S t) { return TWariant(static_cast<float>(Rzeczywista(t))); }},
        {"double", [](S t) { return TWariant(Rzeczywista(t)); }},
        {"date", [](S t) { return TWariant(ztok::TDataCzas{Rzeczywista(t)}); }},
        {"currency", [](S t) { return TWariant(ztok::TWaluta{std::stoll(t)}); }},
        {"bool", [](S t) { return TWariant(t == "True"); }},
        {"str", [](S t) { return TWariant(ztok::Utf16ZUtf8(t)); }},
        {"wide", [](S t) { return TWariant::WideString(ztok::Utf16ZUtf8(t)); }},
        {"ansi", [](S t) { return TWariant::AnsiString(t); }},
        {"array", [](S t) { return t.empty() ? TWariant::Tablica({}) : TWariant::Tablica({Wariant(t)}); }},
    };
    return ZOpisu(rodzaje, opis);
}

// The tags of arguments.
inline ztok::TArgument Argument(const std::string& opis) {
    using ztok::TArgument;
    using S = const std::string&;
    static const std::map<std::string, std::function<TArgument(S)>> rodzaje = {
        {"i", [](S t) { return TArgument(std::stoi(t)); }},
        {"l", [](S t) { return TArgument(static_cast<std::int64_t>(std::stoll(t))); }},
        {"f", [](S t) { return TArgument(Rzeczywista(t)); }},
        {"m", [](S t) { return TArgument(ztok::TWaluta{std::stoll(t)}); }},
        {"b", [](S t) { return TArgument(t == "True"); }},
        {"c", [](S t) { return TArgument(t.at(0)); }},
        {"wc", [](S t) { return TArgument(ztok::Utf16ZUtf8(t).at(0)); }},
        {"s", [](S t) { return TArgument(ztok::Utf16ZUtf8(t)); }},
        {"wide", [](S t) { return TArgument::WideString(ztok::Utf16ZUtf8(t)); }},
        {"pwide", [](S t) { return TArgument::PWideChar(ztok::Utf16ZUtf8(t)); }},
        {"short", [](S t) { return TArgument::ShortString(t); }},
        {"pchar", [](S t) { return TArgument::PChar(t); }},
        {"ansi", [](S t) { return TArgument(t); }},
        {"v", [](S t) { return TArgument(Wariant(t)); }},
        {"nil", [](S) { return TArgument(nullptr); }},
        {"pointer", [](S t) { return TArgument::Pointer(reinterpret_cast<void*>(std::stoul(t, nullptr, 16))); }},
        {"object", [](S) { return TArgument(static_cast<ztok::TObiektOgolny*>(nullptr)); }},
        {"class", [](S t) { return TArgument(t.empty() ? nullptr : ztok::TObiektLiczony::KlasaStatyczna()); }},
        {"interface", [](S) { return TArgument(static_cast<ztok::IInterfejs*>(nullptr)); }},
    };
    return ZOpisu(rodzaje, opis);
}

} // namespace testy
