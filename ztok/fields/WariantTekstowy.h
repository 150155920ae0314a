// Text form of variants, and of the integers and names in them.
#pragma once

#include <cstdint>
#include <limits>

namespace ztok {

class TObiektBazowy;
class TOdczytywaczTekstu;
class TWariant;
class TZTParser;
class TZapisywaczTekstu;

// A variant as its type and its value: `Integer 5`, `Null`, `UnicodeString "x"`; an array as its elements in
// parentheses with ";" between them. `wlasciciel` is the object that is written or read: its class is named when arrays
// nest too deep (ZTException).
void ZapiszWariantTekstowo(const TWariant& wariant, TZapisywaczTekstu& zapisywacz, const TObiektBazowy& wlasciciel);
// The variant that the current token begins. EZTParserError when it is none.
[[nodiscard]] TWariant WczytajWariantTekstowo(TOdczytywaczTekstu& odczytywacz, const TObiektBazowy& wlasciciel);

// An integer token within the bounds; EZTParserError for any other.
std::int64_t WczytajZGranic(TZTParser& parser, std::int64_t od, std::int64_t doIlu);
template <class T> T WczytajLiczbe(TZTParser& parser) {
    return static_cast<T>(WczytajZGranic(parser, std::numeric_limits<T>::min(), std::numeric_limits<T>::max()));
}

} // namespace ztok
