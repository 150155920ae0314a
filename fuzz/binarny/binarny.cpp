// The binary reader over any bytes: an error or a valid tree, which can be written and read again.
#include <string>

#include "fuzz/Fuzz.h"
#include "tests/Probki.h"
#include "tests/StrumienieTestowe.h"

using namespace ztok;
using probki::TWszystko;

namespace {

bool Czytaj(TWszystko& o, TStrumien& strumien, bool ansi) {
    TOpcjeOdczytu opcje;
    opcje.odczytANSI = ansi;
    opcje.bladNieznanejKlasy = ansi;
    opcje.limity.pamiec = 64 * 1024 * 1024;
    try {
        o.WczytajZeStrumienia(strumien, opcje);
        return true;
    } catch (const EWyjatek& e) {
        fuzz::Wymagaj(!e.Komunikat().empty(), "an error has a message");
        return false;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dane, std::size_t ile) {
    static const bool zarejestrowane = (probki::Rejestruj(), RejestrujKlasy<TArrayOfConst>(), true);
    static_cast<void>(zarejestrowane);
    const std::string bajty(dane, dane + ile);
    for (const bool ansi : {false, true}) {
        const TWlasny<TWszystko> o = Utworz<TWszystko>();
        TZTReadOnlyRawByteStream zOknem(bajty);
        const bool przyjety = Czytaj(*o, zOknem, ansi);
        const TWlasny<TWszystko> inny = Utworz<TWszystko>();
        strumienie::TOporny bezOkna(bajty);
        const bool przyjetyBezOkna = Czytaj(*inny, bezOkna, ansi);
        fuzz::Wymagaj(przyjety == przyjetyBezOkna, "the stream makes no difference");
        fuzz::Wymagaj(!przyjety || strumienie::Zapisz(*o) == strumienie::Zapisz(*inny), "both reads give the same");
        static_cast<void>(o->Porownaj(*inny));

        // What lost its targets is written shorter the next time; then nothing changes any more.
        std::string zapis = strumienie::Zapisz(*o);
        for (std::size_t dlugosc = zapis.size() + 1; zapis.size() < dlugosc;) {
            dlugosc = zapis.size();
            strumienie::Wczytaj(*inny, zapis);
            std::string ponownie = strumienie::Zapisz(*inny);
            fuzz::Wymagaj(ponownie == zapis || ponownie.size() < dlugosc, "what was written reads back");
            zapis.swap(ponownie);
        }
    }
    return 0;
}
