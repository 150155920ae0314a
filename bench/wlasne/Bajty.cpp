// The cipher and the check sum.
#include <algorithm>
#include <vector>

#include "pomiary/Grupy.h"
#include "ztok/util/Blowfish.h"
#include "ztok/util/Prostehaszowanie.h"

namespace pomiary {

void MierzBajty(TPomiary& pomiary) {
    std::vector<std::uint8_t> bufor(pomiary.Ile(16 * kKiB * kKiB, 16 * kKiB));
    std::uint8_t* const bajty = bufor.data();
    const std::size_t ile = bufor.size();
    const ztok::TSzyfrator szyfrator(kKluczSzyfru);
    pomiary.Dodaj(wiersz::Szyfrowanie, kZtok, ile / kKiB,
                  [&] { szyfrator.SzyfrujBloki(bajty, ile / ztok::kBlokSzyfru); });
    pomiary.Dodaj(wiersz::Deszyfrowanie, kZtok, ile / kKiB,
                  [&] { szyfrator.DeszyfrujBloki(bajty, ile / ztok::kBlokSzyfru); });
    pomiary.Dodaj(wiersz::Rozpisanie, kZtok, 1, [] { Zuzyj(ztok::TSzyfrator(kKluczSzyfru).SilnyKlucz()); });
    // Ours keeps the key's cipher.
    pomiary.Dodaj(wiersz::SzyfrTekstu, kZtok, 1, [] { Zuzyj(ztok::SzyfrujTekst(u"Zażółć g", kKluczSzyfru)); });
    const auto crc = [&](const char* wiersz, std::size_t dlugosc) {
        pomiary.Dodaj(wiersz, kZtok, dlugosc / kKiB,
                      [=] { Zuzyj(ztok::DodajDoCRC(ztok::PoczatekCRC, bajty, dlugosc)); });
    };
    crc(wiersz::CrcDuzo, ile);
    crc(wiersz::CrcMalo, std::min(ile, 16 * kKiB));
    DodajObceBajty(pomiary, bufor);
    pomiary.Wykonaj();
}

} // namespace pomiary
