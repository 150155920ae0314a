// The tokenizer over any bytes: an error or tokens, the same ones whatever the buffer and the reads.
#include <string>

#include "fuzz/Fuzz.h"
#include "tests/StrumienieTestowe.h"
#include "ztok/persist/TZTParser.h"
#include "ztok/platform/Kodowania.h"

using namespace ztok;

namespace {

// Which operations are called between tokens.
enum class ETryb { Tekst, Xml, Rozne };

void Operacja(TZTParser& parser, std::string& slad) {
    strumienie::TOporny binarne;
    binarne.porcja = INT64_MAX;
    switch (parser.Token()) {
    case '{':
        parser.HexToBinary(binarne);
        slad += binarne.dane;
        break;
    case '>':
        slad += parser.ReadTextUpTo('<');
        break;
    case '!':
        parser.SkipTextUpTo('-');
        break;
    case '[':
        parser.ReadNextChar();
        break;
    case '(':
        parser.SkipBlanks();
        parser.ReadNextChar();
        break;
    case '?':
        parser.SetTrybXML(!parser.TrybXML());
        parser.NextToken();
        break;
    case TZTParser::Symbol:
        if (parser.TokenSymbolIs("tak"))
            parser.CheckTokenSymbol("TAK");
        parser.NextToken();
        break;
    case TZTParser::Calkowita:
    case TZTParser::Tekst:
        parser.CheckToken(TZTParser::Ulamkowa);
        parser.CheckToken(TZTParser::Calkowita64);
        slad += std::to_string(parser.TokenInt());
        parser.NextToken();
        break;
    case TZTParser::Ulamkowa:
        slad += std::to_string(TZTParser::StringToFloat(parser.TrescTokenu()));
        parser.NextToken();
        break;
    default:
        parser.NextToken();
    }
}

// All that the tokenizer tells, up to its end or its error.
std::string Slad(const std::string& bajty, ETryb tryb, std::int32_t bufor, std::int64_t porcja) {
    strumienie::TOporny strumien(bajty);
    strumien.porcja = porcja;
    ParseBufSize = bufor;
    std::string slad;
    try {
        TZTParser parser(strumien);
        parser.SetTrybXML(tryb == ETryb::Xml);
        for (std::int64_t poprzednia = -1; parser.Token() != TZTParser::Koniec;) {
            fuzz::Wymagaj(parser.SourcePos() > poprzednia, "tokens follow each other");
            fuzz::Wymagaj(parser.TrescTokenu().size() <= bajty.size(), "no token is longer than the data");
            // An empty symbol takes no place.
            poprzednia = parser.SourcePos() - (parser.TrescTokenu().empty() ? 1 : 0);
            slad += std::to_string(parser.Token()) + ' ' + parser.TokenString() + ' ' +
                    std::to_string(parser.SourcePos()) + ' ' + std::to_string(parser.SourceLine()) + ' ' +
                    std::to_string(parser.LiniaTokenu()) + ':' + std::to_string(parser.KolumnaTokenu()) + '\n';
            if (tryb == ETryb::Rozne)
                Operacja(parser, slad);
            else
                parser.NextToken();
        }
    } catch (const EWyjatek& e) {
        slad += e.what();
    }
    return slad;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dane, std::size_t ile) {
    const std::string bajty(dane, dane + ile);
    const auto bufor = static_cast<std::int32_t>(1 + ile % 64);
    for (const ETryb tryb : {ETryb::Tekst, ETryb::Xml, ETryb::Rozne}) {
        const std::string wzor = Slad(bajty, tryb, 4096, INT64_MAX);
        fuzz::Wymagaj(Slad(bajty, tryb, bufor, 1) == wzor, "reads of one byte give the same tokens");
        fuzz::Wymagaj(Slad(bajty, tryb, bufor, 1 + static_cast<std::int64_t>(ile % 19)) == wzor,
                      "a small buffer gives the same tokens");
    }
    return 0;
}
