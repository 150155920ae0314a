#include "ztok/platform/TStrumien.h"

#include <algorithm>
#include <limits>

#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/Wyjatki.h"

namespace ztok {

ZTOK_KLASA_DEF(TStrumien, TObiektOgolny)

TStrumien::~TStrumien() = default;

std::int64_t TStrumien::Seek(std::int64_t, ESeek) {
    throw EBladAbstrakcyjny(Formatuj(Komunikat(kmWywolanieAbstrakcyjne), {KlasaStatyczna(), u"Seek"}));
}

void TStrumien::SetSize(std::int64_t) {
    throw EBladAbstrakcyjny(Formatuj(Komunikat(kmWywolanieAbstrakcyjne), {KlasaStatyczna(), u"SetSize"}));
}

std::int64_t TStrumien::GetSize() {
    const std::int64_t pozycja = GetPosition();
    const std::int64_t rozmiar = Seek(0, ESeek::Koniec);
    Seek(pozycja, ESeek::Poczatek);
    return rozmiar;
}

std::int64_t TStrumien::GetPosition() { return Seek(0, ESeek::Biezaca); }

std::int64_t TStrumien::Pozostalo() { return -1; }

std::int64_t TStrumien::PozycjaWgSeek(std::int64_t przesuniecie, ESeek skad, std::int64_t biezaca,
                                      std::int64_t koniec) const {
    const std::int64_t baza = skad == ESeek::Poczatek ? 0 : skad == ESeek::Biezaca ? biezaca : koniec;
    if (przesuniecie < -baza || przesuniecie > std::numeric_limits<std::int64_t>::max() - baza)
        throw EBladOdczytu(Formatuj(Komunikat(kmZlaPozycja), {przesuniecie, Klasa()}));
    return baza + przesuniecie;
}

void TStrumien::ZglosZlyRozmiar(std::int64_t rozmiar) const {
    throw EBladZapisu(Formatuj(Komunikat(kmZlyRozmiar), {rozmiar, Klasa()}));
}

std::int64_t TStrumien::CzytajNajwyzej(void* bufor, std::int64_t ile) {
    const std::int64_t czesc = Read(bufor, ile);
    if (czesc > ile)
        throw EBladOdczytu(Formatuj(Komunikat(kmBladOdczytu), {Klasa(), czesc, ile}));
    return czesc < 0 ? 0 : czesc;
}

// Read may give fewer bytes than there are, one at a time even: it is asked until the buffer is full.
void TStrumien::CzytajCalosc(void* bufor, std::size_t ile) {
    auto* cel = static_cast<std::uint8_t*>(bufor);
    std::size_t przeczytano = 0;
    while (przeczytano < ile) {
        const auto brakuje = static_cast<std::int64_t>(ile - przeczytano);
        const std::int64_t czesc = brakuje > 0 ? CzytajNajwyzej(cel + przeczytano, brakuje) : 0;
        if (czesc <= 0)
            throw EBladOdczytu(Formatuj(Komunikat(kmBladOdczytu), {Klasa(), przeczytano, ile}));
        przeczytano += static_cast<std::size_t>(czesc);
    }
}

void TStrumien::PiszCalosc(const void* bufor, std::size_t ile) {
    if (ile == 0)
        return;
    const auto calosc = static_cast<std::int64_t>(ile);
    const std::int64_t zapisano = calosc > 0 ? Write(bufor, calosc) : 0;
    if (zapisano != calosc)
        throw EBladZapisu(Formatuj(Komunikat(kmBladZapisu), {Klasa(), zapisano, ile}));
}

void TStrumien::PominPozaOknem(std::int64_t ile) {
    const std::int64_t pozostalo = Pozostalo();
    if (ile >= 0 && pozostalo >= ile) {
        Seek(ile, ESeek::Biezaca);
        return;
    }
    std::int64_t pominieto = 0;
    if (ile >= 0 && pozostalo < 0) {
        std::uint8_t bufor[1024];
        while (pominieto < ile) {
            const std::int64_t czesc = CzytajNajwyzej(bufor, std::min<std::int64_t>(ile - pominieto, sizeof bufor));
            if (czesc <= 0)
                break;
            pominieto += czesc;
        }
    }
    if (pominieto != ile)
        throw EBladOdczytu(Formatuj(Komunikat(kmBladOdczytu), {Klasa(), pominieto, ile}));
}

} // namespace ztok
