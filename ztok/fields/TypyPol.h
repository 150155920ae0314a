// Enumerations and settings that fields, lists and formats share.
#pragma once

#include <cstdint>

#include "ztok/platform/Eksport.h"

namespace ztok {

enum TRozmiarLiter : std::uint8_t { rlRozmLiterWazny, rlRozmLiterNiewazny };
enum TRodzajWyszukiwania : std::uint8_t { rwOdKonca, rwOdPoczatku };
enum TRodzajSortowania : std::uint8_t { rsRosnaco, rsMalejaco };
enum TRodzajPorownPol : std::uint8_t { rpWszystkiePola, rpBezChwilowych };
enum TTrybPorownRef : std::uint8_t { tprRefJakoWskazn, tprRefJakoSciezki };
enum TTrybKopiowaniaDanych : std::uint8_t { tkdDomyslny, tkdPolaPrzodka };
enum TTypZapisuXML : std::uint8_t { tzxDomyslny, tzxWierszowy, tzxStandard, tzxCelina, tzxOSOZ, tzxECS };
enum TTypKodowaniaXML : std::uint8_t { tkxDomyslny, tkxWin1250, tkxUTF8, tkxISO88592, tkxWin1251, tkxISO88591 };
enum TTypKodowaniaCSV : std::uint8_t { tkcDomyslny, tkcWin1250, tkcUTF8, tkcISO88592 };

// Stands for no particular index: append, or start from the natural end.
inline constexpr std::int32_t MaxInt = 2147483647;

// The field number that means the whole object.
inline constexpr int CalyObiekt = -1;

// Locale identifiers with a meaning of their own: ordinal comparison, and the library's Windows-1250 order, which 0
// selects as well.
inline constexpr std::uint32_t LocaleNiezmienny = 127;
inline constexpr std::uint32_t LocaleWin1250 = 4096;

// Settings of the whole library. Set them before threads start.
extern ZTOK_API std::uint16_t DefStronaKodowa;    // code page of 8-bit text: 1250, 1251, 28591, 28592 or 65001
extern ZTOK_API std::uint32_t DefZTOKLocaleID;    // locale of comparisons without a comparer
extern ZTOK_API bool g_ZTOKQuiet;                 // no warnings at unload, and the kernel stays
extern ZTOK_API TTypZapisuXML DefTypZapisuXML;    // what an XML writer takes for tzxDomyslny
extern ZTOK_API TTypKodowaniaXML DefKodowanieXML; // and for tkxDomyslny
extern ZTOK_API TTypKodowaniaCSV DefKodowanieCSV; // the same for CSV
extern ZTOK_API std::int32_t ParseBufSize;        // bytes of a tokenizer's first buffer; any number above 0 will do

} // namespace ztok
