// Libraries that have the cipher and the check sum.
#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>

#define OPENSSL_SUPPRESS_DEPRECATED
#include <libdeflate.h>
#include <nettle/blowfish.h>
#include <openssl/blowfish.h>
#include <zlib.h>

#include "pomiary/Grupy.h"
#include "pomiary/Tabela.h"
#include "ztok/util/Blowfish.h"
#include "ztok/util/Prostehaszowanie.h"

namespace pomiary {

namespace {

const auto* const kBajtyKlucza = reinterpret_cast<const std::uint8_t*>(kKluczSzyfru.data());

BF_KEY KluczOpenSSL() {
    BF_KEY klucz;
    BF_set_key(&klucz, static_cast<int>(kKluczSzyfru.size()), kBajtyKlucza);
    return klucz;
}

// The peer's block is ours, whose words are little-endian.
template <class F> void SprawdzBlok(std::string_view kolumna, F szyfruj) {
    using TBlok = std::array<std::uint8_t, BF_BLOCK>;
    const auto odwrocSlowa = [](TBlok blok) {
        std::reverse(blok.begin(), blok.begin() + 4);
        std::reverse(blok.begin() + 4, blok.end());
        return blok;
    };
    TBlok nasz = {'b', 'e', 'n', 'c', 'h', 0, 0xFF, 0x80};
    TBlok obcy = odwrocSlowa(nasz);
    ztok::TSzyfrator(kKluczSzyfru).SzyfrujBloki(nasz.data(), 1);
    szyfruj(obcy.data());
    Sprawdz(odwrocSlowa(obcy) == nasz, wiersz::Szyfrowanie, kolumna);
}

} // namespace

void DodajObceBajty(TPomiary& pomiary, std::span<std::uint8_t> bufor) {
    std::uint8_t* const bajty = bufor.data();
    const std::size_t ile = bufor.size();

    const auto openSSL = std::make_shared<BF_KEY>(KluczOpenSSL());
    const auto bloki = [openSSL, bajty, ile](int kierunek) {
        for (std::size_t i = 0; i < ile; i += BF_BLOCK)
            BF_ecb_encrypt(bajty + i, bajty + i, openSSL.get(), kierunek);
    };
    const auto nettle = std::make_shared<blowfish_ctx>();
    blowfish_set_key(nettle.get(), kKluczSzyfru.size(), kBajtyKlucza);
    SprawdzBlok(kOpenSSL, [&](std::uint8_t* blok) { BF_ecb_encrypt(blok, blok, openSSL.get(), BF_ENCRYPT); });
    SprawdzBlok(kNettle, [&](std::uint8_t* blok) { blowfish_encrypt(nettle.get(), BF_BLOCK, blok, blok); });

    pomiary.Dodaj(wiersz::Szyfrowanie, kOpenSSL, ile / kKiB, [=] { bloki(BF_ENCRYPT); });
    pomiary.Dodaj(wiersz::Deszyfrowanie, kOpenSSL, ile / kKiB, [=] { bloki(BF_DECRYPT); });
    pomiary.Dodaj(wiersz::Rozpisanie, kOpenSSL, 1, [] { Zuzyj(KluczOpenSSL()); });
    // The peer schedules the key each time, as its user must who has nothing but the key.
    pomiary.Dodaj(wiersz::SzyfrTekstu, kOpenSSL, 1, [] {
        const BF_KEY klucz = KluczOpenSSL();
        std::uint8_t znaki[24] = {};
        for (std::size_t i = 0; i < sizeof znaki; i += BF_BLOCK)
            BF_ecb_encrypt(znaki + i, znaki + i, &klucz, BF_ENCRYPT);
        Zuzyj(znaki);
    });
    pomiary.Dodaj(wiersz::Szyfrowanie, kNettle, ile / kKiB, [=] { blowfish_encrypt(nettle.get(), ile, bajty, bajty); });
    pomiary.Dodaj(wiersz::Deszyfrowanie, kNettle, ile / kKiB,
                  [=] { blowfish_decrypt(nettle.get(), ile, bajty, bajty); });
    pomiary.Dodaj(wiersz::Rozpisanie, kNettle, 1, [] {
        blowfish_ctx klucz;
        Zuzyj(blowfish_set_key(&klucz, kKluczSzyfru.size(), kBajtyKlucza));
    });

    const auto crc = [&](const char* wiersz, std::size_t dlugosc) {
        const std::uint32_t nasza = ztok::DodajDoCRC(ztok::PoczatekCRC, bajty, dlugosc);
        Sprawdz(~nasza == crc32(0, bajty, static_cast<uInt>(dlugosc)), wiersz, kZlib);
        pomiary.Dodaj(wiersz, kZlib, dlugosc / kKiB, [=] { Zuzyj(crc32(0, bajty, static_cast<uInt>(dlugosc))); });
        pomiary.Dodaj(wiersz, kLibdeflate, dlugosc / kKiB, [=] { Zuzyj(libdeflate_crc32(0, bajty, dlugosc)); });
    };
    crc(wiersz::CrcDuzo, ile);
    crc(wiersz::CrcMalo, std::min(ile, 16 * kKiB));
}

} // namespace pomiary
