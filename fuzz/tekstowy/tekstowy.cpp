// The text reader over any bytes: an error or a valid tree, which can be written and read again.
#include <string>

#include "fuzz/Fuzz.h"
#include "tests/Probki.h"
#include "tests/StrumienieTestowe.h"

using namespace ztok;
using probki::TWszystko;

namespace {

bool Czytaj(TWszystko& o, TStrumien& strumien) {
    TOpcjeOdczytu opcje;
    opcje.limity.pamiec = 64 * 1024 * 1024;
    try {
        o.WczytajTekstowo(strumien, opcje);
        return true;
    } catch (const EWyjatek& e) {
        fuzz::Wymagaj(!e.Komunikat().empty(), "an error has a message");
        return false;
    }
}

std::string Zapisz(const TWszystko& o) {
    TZTMemoryStream strumien;
    o.ZapiszTekstowo(strumien);
    const auto bajty = strumien.Zawartosc();
    return {bajty.begin(), bajty.end()};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dane, std::size_t ile) {
    static const bool zarejestrowane = (probki::Rejestruj(), RejestrujKlasy<TArrayOfConst>(), true);
    static_cast<void>(zarejestrowane);
    ParseBufSize = ile % 2 == 0 ? 131072 : 16;
    const std::string bajty(dane, dane + ile);
    const TWlasny<TWszystko> o = Utworz<TWszystko>();
    TZTReadOnlyRawByteStream zOknem(bajty);
    const bool przyjety = Czytaj(*o, zOknem);
    const TWlasny<TWszystko> inny = Utworz<TWszystko>();
    strumienie::TOporny bezOkna(bajty);
    fuzz::Wymagaj(przyjety == Czytaj(*inny, bezOkna), "the stream makes no difference");
    std::string zapis = Zapisz(*o);
    fuzz::Wymagaj(zapis == Zapisz(*inny), "both reads give the same");
    // What lost its targets is written shorter the next time; then nothing changes any more.
    for (std::size_t dlugosc = zapis.size() + 1; zapis.size() < dlugosc;) {
        dlugosc = zapis.size();
        TZTReadOnlyRawByteStream strumien(zapis);
        fuzz::Wymagaj(Czytaj(*inny, strumien), "what was written is read");
        std::string ponownie = Zapisz(*inny);
        fuzz::Wymagaj(ponownie == zapis || ponownie.size() < dlugosc, "what was written reads back");
        zapis.swap(ponownie);
    }
    return 0;
}
