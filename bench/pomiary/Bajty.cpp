// The cipher and the check sum beside the libraries that have them.
#include <cstdint>
#include <memory>
#include <vector>

#define OPENSSL_SUPPRESS_DEPRECATED
#include <libdeflate.h>
#include <nettle/blowfish.h>
#include <openssl/blowfish.h>
#include <zlib.h>

#include "biblioteki/Biblioteka.h"
#include "pomiary/Pomiary.h"
#include "pomiary/Tabela.h"
#include "ztok/util/Blowfish.h"
#include "ztok/util/Prostehaszowanie.h"

namespace pomiary {

namespace {

constexpr std::size_t kKiB = 1024;
constexpr std::size_t kDuzo = 16 * kKiB * kKiB;
constexpr std::string_view kKlucz = "0123456789ABCDEF";
const auto* const kBajtyKlucza = reinterpret_cast<const std::uint8_t*>(kKlucz.data());

template <class TKrok>
void Pomiar(std::string_view operacja, std::string_view biblioteka, std::size_t ile, TKrok krok) {
    benchmark::RegisterBenchmark(NazwaPomiaru(operacja, biblioteka).c_str(), [=](benchmark::State& stan) {
        for (auto obrot : stan)
            krok();
        UstawIle(stan, ile);
    });
}

void ZarejestrujCRC(const std::uint8_t* bajty) {
    for (const auto& [ile, operacja] :
         {std::pair{kDuzo, "CRC-32 of 16 MiB, a KiB"}, {16 * kKiB, "CRC-32 of 16 KiB, a KiB"}}) {
        const std::size_t dlugosc = ile;
        Pomiar(operacja, kZtok, dlugosc / kKiB,
               [=] { benchmark::DoNotOptimize(ztok::DodajDoCRC(ztok::PoczatekCRC, bajty, dlugosc)); });
        Pomiar(operacja, kZlib, dlugosc / kKiB,
               [=] { benchmark::DoNotOptimize(crc32(0, bajty, static_cast<uInt>(dlugosc))); });
        Pomiar(operacja, kLibdeflate, dlugosc / kKiB,
               [=] { benchmark::DoNotOptimize(libdeflate_crc32(0, bajty, dlugosc)); });
    }
}

} // namespace

void ZarejestrujBajty() {
    // One buffer for all, kept to the end of the process.
    static std::vector<std::uint8_t> bufor(kDuzo);
    std::uint8_t* const bajty = bufor.data();

    constexpr std::string_view szyfrowanie = "Blowfish, 16 MiB, a KiB";
    constexpr std::string_view deszyfrowanie = "Blowfish, 16 MiB back, a KiB";
    constexpr std::string_view rozpisanie = "Blowfish, a key's schedule";
    // Ours keeps the key's cipher; the peer schedules the key each time, as its user must who has nothing but the key.
    constexpr std::string_view tekst = "Blowfish, a text of 8 characters";
    static const ztok::TSzyfrator nasz(kKlucz);
    Pomiar(szyfrowanie, kZtok, kDuzo / kKiB, [=] { nasz.SzyfrujBloki(bajty, kDuzo / ztok::kBlokSzyfru); });
    Pomiar(deszyfrowanie, kZtok, kDuzo / kKiB, [=] { nasz.DeszyfrujBloki(bajty, kDuzo / ztok::kBlokSzyfru); });
    Pomiar(rozpisanie, kZtok, 1, [] { benchmark::DoNotOptimize(ztok::TSzyfrator(kKlucz).SilnyKlucz()); });
    Pomiar(tekst, kZtok, 1, [] { benchmark::DoNotOptimize(ztok::SzyfrujTekst(u"Zażółć g", kKlucz)); });

    static BF_KEY openSSL;
    BF_set_key(&openSSL, static_cast<int>(kKlucz.size()), kBajtyKlucza);
    const auto bloki = [=](int kierunek) {
        for (std::size_t i = 0; i < kDuzo; i += BF_BLOCK)
            BF_ecb_encrypt(bajty + i, bajty + i, &openSSL, kierunek);
    };
    Pomiar(szyfrowanie, kOpenSSL, kDuzo / kKiB, [=] { bloki(BF_ENCRYPT); });
    Pomiar(deszyfrowanie, kOpenSSL, kDuzo / kKiB, [=] { bloki(BF_DECRYPT); });
    Pomiar(rozpisanie, kOpenSSL, 1, [] {
        BF_KEY klucz;
        BF_set_key(&klucz, static_cast<int>(kKlucz.size()), kBajtyKlucza);
        benchmark::DoNotOptimize(klucz);
    });

    Pomiar(tekst, kOpenSSL, 1, [] {
        BF_KEY klucz;
        BF_set_key(&klucz, static_cast<int>(kKlucz.size()), kBajtyKlucza);
        std::uint8_t znaki[24] = {};
        for (std::size_t i = 0; i < sizeof znaki; i += BF_BLOCK)
            BF_ecb_encrypt(znaki + i, znaki + i, &klucz, BF_ENCRYPT);
        benchmark::DoNotOptimize(znaki);
    });

    static blowfish_ctx nettle;
    blowfish_set_key(&nettle, kKlucz.size(), kBajtyKlucza);
    Pomiar(szyfrowanie, kNettle, kDuzo / kKiB, [=] { blowfish_encrypt(&nettle, kDuzo, bajty, bajty); });
    Pomiar(deszyfrowanie, kNettle, kDuzo / kKiB, [=] { blowfish_decrypt(&nettle, kDuzo, bajty, bajty); });
    Pomiar(rozpisanie, kNettle, 1, [] {
        blowfish_ctx klucz;
        benchmark::DoNotOptimize(blowfish_set_key(&klucz, kKlucz.size(), kBajtyKlucza));
    });

    ZarejestrujCRC(bajty);
}

} // namespace pomiary
