// One keyed cipher: key schedule, blocks, padding (B. Schneier, "Description of a New Variable-Length Key, 64-Bit Block
// Cipher", 1993).
#include "ztok/util/Blowfish.h"

#include <algorithm>
#include <bit>
#include <bitset>
#include <cstring>
#include <limits>
#include <new>
#include <span>
#include <utility>

#include "ztok/util/Procesor.h"
#include "ztok/util/Wymazanie.h"
#include "ztok/util/ZTBledy.h"
#include "ztok/util/Zttypybazowe.h"

namespace ztok {

namespace {

static_assert(std::endian::native == std::endian::little, "blocks are taken as the processor's own words");

constexpr std::size_t kRundy = 16;

// Bits 16 to 23 in one instruction, for processors that have it (rzBmi).
#if defined(__x86_64__)
[[gnu::always_inline]] inline std::uint32_t Bextr(std::uint32_t x) noexcept {
    constexpr std::uint32_t odIle = 0x0810;
    std::uint32_t wynik = 0;
    __asm__("bextr %2, %1, %0" : "=r"(wynik) : "r"(x), "r"(odIle) : "cc"); // NOLINT(hicpp-no-assembler)
    return wynik;
}
#else
constexpr std::uint32_t Bextr(std::uint32_t x) noexcept { return x >> 16U & 0xFFU; }
#endif

template <bool ZBextr> [[gnu::always_inline]] inline std::uint32_t F(const TBoxes& boxes, std::uint32_t x) noexcept {
    const std::uint32_t drugi = ZBextr ? Bextr(x) : x >> 16U & 0xFFU;
    return ((boxes.S[0][x >> 24U] + boxes.S[1][drugi]) ^ boxes.S[2][x >> 8U & 0xFFU]) + boxes.S[3][x & 0xFFU];
}

// Keeps the compiler from joining what was computed with what follows in an order of its own, which would put a step
// more on the chain of look-ups.
template <bool Tak> [[gnu::always_inline]] inline std::uint32_t Najpierw(std::uint32_t wartosc) noexcept {
    if constexpr (Tak)
        __asm__("" : "+r"(wartosc)); // NOLINT(hicpp-no-assembler): no instruction
    return wartosc;
}

// The subkeys of the two directions differ in their order alone.
template <bool Szyfruj> constexpr std::size_t Podklucz(std::size_t ktory) noexcept {
    return Szyfruj ? ktory : kRundy + 1 - ktory;
}

// Enciphers, or deciphers, sizeof...(I) blocks at once. One block is a chain of 16 look-ups, each waiting for the last;
// the look-ups of independent blocks fill the time. The halves change places at the end.
template <bool Szyfruj, bool ZBextr, std::size_t... I>
[[gnu::always_inline]] inline void Rundy(const TBoxes& boxes, std::uint32_t* lewe, std::uint32_t* prawe,
                                         std::index_sequence<I...> /*numery*/) noexcept {
    constexpr bool sam = sizeof...(I) == 1;
    const std::uint32_t pierwszy = boxes.P[Podklucz<Szyfruj>(0)];
    ((lewe[I] ^= pierwszy), ...);
    // A half takes its next subkey before the look-ups that it waits for.
    for (std::size_t runda = 0; runda < kRundy; runda += 2) {
        const std::uint32_t prawy = boxes.P[Podklucz<Szyfruj>(runda + 1)];
        const std::uint32_t lewy = boxes.P[Podklucz<Szyfruj>(runda + 2)];
        ((prawe[I] = Najpierw<sam>(prawe[I] ^ prawy) ^ F<ZBextr>(boxes, lewe[I])), ...);
        ((lewe[I] = Najpierw<sam>(lewe[I] ^ lewy) ^ F<ZBextr>(boxes, prawe[I])), ...);
    }
    const std::uint32_t ostatni = boxes.P[Podklucz<Szyfruj>(kRundy + 1)];
    ((prawe[I] ^= ostatni), ...);
}

template <bool Szyfruj, std::size_t... I>
[[gnu::always_inline]] inline void BlokiNaraz(const TBoxes& boxes, std::uint8_t* bajty,
                                              std::index_sequence<I...> numery) noexcept {
    std::uint64_t bloki[] = {(static_cast<void>(I), std::uint64_t{0})...};
    std::memcpy(bloki, bajty, sizeof bloki);
    std::uint32_t lewe[] = {static_cast<std::uint32_t>(bloki[I])...};
    std::uint32_t prawe[] = {static_cast<std::uint32_t>(bloki[I] >> 32U)...};
    Rundy<Szyfruj, false>(boxes, lewe, prawe, numery);
    ((bloki[I] = std::uint64_t{lewe[I]} << 32U | prawe[I]), ...);
    std::memcpy(bajty, bloki, sizeof bloki);
}

template <bool Szyfruj> void Bloki(const TBoxes& boxes, void* pamiec, std::size_t ile) noexcept {
    constexpr std::size_t Naraz = 6; // more gains nothing: the ports of the first cache are busy
    auto* bajty = static_cast<std::uint8_t*>(pamiec);
    for (; ile >= Naraz; ile -= Naraz, bajty += Naraz * kBlokSzyfru)
        BlokiNaraz<Szyfruj>(boxes, bajty, std::make_index_sequence<Naraz>());
    for (; ile > 0; --ile, bajty += kBlokSzyfru)
        BlokiNaraz<Szyfruj>(boxes, bajty, std::make_index_sequence<1>());
}

// Tells whether a value came before. The low bits of the values seen answer nearly always; the values themselves are
// asked only where these agree.
class TPowtorzenia {
  public:
    explicit TPowtorzenia(const std::uint32_t* wartosci) noexcept : wartosci_(wartosci) {}
    void Dodaj(std::uint32_t wartosc) noexcept {
        const std::size_t bity = wartosc % Bity;
        if (byly_[bity])
            jest_ = jest_ || std::find(wartosci_, wartosci_ + ile_, wartosc) != wartosci_ + ile_;
        byly_[bity] = true;
        ++ile_;
    }
    [[nodiscard]] bool Jest() const noexcept { return jest_; }

  private:
    static constexpr std::size_t Bity = std::size_t{1} << 14U;

    const std::uint32_t* wartosci_;
    std::size_t ile_ = 0;
    bool jest_ = false;
    std::bitset<Bity> byly_;
};

// The key schedule, from kBoxesPi on; whether no S-box holds a value twice. Every block waits for the last: the time of
// a look-up's index counts 8,336 times.
template <bool ZBextr> bool RozpiszKlucz(TBoxes& boxes, std::string_view klucz) noexcept {
    boxes = kBoxesPi;
    std::size_t nrBajtu = 0;
    for (std::uint32_t& p : boxes.P) {
        std::uint32_t slowo = 0;
        for (int i = 0; i < 4; ++i) {
            slowo = slowo << 8U | static_cast<std::uint8_t>(klucz[nrBajtu]);
            nrBajtu = nrBajtu + 1 < klucz.size() ? nrBajtu + 1 : 0;
        }
        p ^= slowo;
    }
    std::uint32_t lewa = 0;
    std::uint32_t prawa = 0;
    const auto nastepnaPara = [&](std::uint32_t* cel) noexcept {
        Rundy<true, ZBextr>(boxes, &lewa, &prawa, std::make_index_sequence<1>());
        std::swap(lewa, prawa);
        cel[0] = lewa;
        cel[1] = prawa;
    };
    for (std::size_t i = 0; i < std::size(boxes.P); i += 2)
        nastepnaPara(boxes.P + i);
    bool silny = true;
    for (auto& box : boxes.S) {
        // The test of a pair runs while the next one waits for its look-ups.
        TPowtorzenia powtorzenia(box);
        for (std::size_t i = 0; i < std::size(box); i += 2) {
            nastepnaPara(box + i);
            powtorzenia.Dodaj(box[i]);
            powtorzenia.Dodaj(box[i + 1]);
        }
        silny = silny && !powtorzenia.Jest();
    }
    return silny;
}

// What enciphering appends: P bytes of kWypelnienie and a byte P from 1 to 8.
constexpr std::uint8_t kWypelnienie = 1;

constexpr std::size_t IleWypelnienia(std::size_t dlugosc) noexcept { return kBlokSzyfru - (dlugosc + 1) % kBlokSzyfru; }

// Length of the text under so many bytes of ciphertext. Looks at their last two blocks, which hold all that was
// appended, and leaves the bytes as they are. Raises ZTException when they are nothing that enciphering gives.
std::size_t DlugoscOdszyfrowanych(const TSzyfrator& szyfrator, std::span<const std::uint8_t> bajty) {
    const std::size_t ile = bajty.size();
    if (ile == 0)
        return 0;
    std::uint8_t koniec[2 * kBlokSzyfru];
    const std::size_t ileKonca = std::min(ile, sizeof koniec);
    if (ile % kBlokSzyfru == 0) {
        std::memcpy(koniec, bajty.data() + (ile - ileKonca), ileKonca);
        szyfrator.DeszyfrujBloki(koniec, ileKonca / kBlokSzyfru);
        const std::size_t p = koniec[ileKonca - 1];
        if (p >= 1 && p <= kBlokSzyfru && p < ileKonca &&
            std::all_of(koniec + (ileKonca - 1 - p), koniec + (ileKonca - 1),
                        [](std::uint8_t bajt) { return bajt == kWypelnienie; }))
            return ile - p - 1;
    }
    ZTError(kmOdszyfrujStrumien);
}

// The whole content of a stream.
void WczytajCalosc(TStrumien& zrodlo, TZTMemoryStream& cel) {
    zrodlo.Seek(0, ESeek::Poczatek);
    if (const std::int64_t pozostalo = zrodlo.Pozostalo(); pozostalo > 0)
        cel.Zarezerwuj(pozostalo + static_cast<std::int64_t>(kBlokSzyfru) + 1);
    std::uint8_t bufor[16384];
    while (const std::int64_t ile = zrodlo.CzytajNajwyzej(bufor, sizeof bufor))
        cel.WriteBuffer(bufor, static_cast<std::size_t>(ile));
}

template <class TOperacja> void PrzezPamiec(TStrumien& zrodlo, TStrumien& cel, TOperacja operacja) {
    TZTMemoryStream pamiec;
    WczytajCalosc(zrodlo, pamiec);
    operacja(pamiec);
    if (const std::span<const std::uint8_t> wynik = pamiec.Zawartosc(); !wynik.empty())
        cel.WriteBuffer(wynik.data(), wynik.size());
}

} // namespace

TSzyfrator::TSzyfrator(std::string_view Klucz) : FSilnyKlucz(!Klucz.empty() && Rozpisz(Klucz)) {
    if (FSilnyKlucz)
        return;
    bool silny = false;
    if (!Klucz.empty() && Klucz.size() < kNajdluzszyKlucz) {
        char poprawiony[kNajdluzszyKlucz];
        *std::copy(Klucz.begin(), Klucz.end(), poprawiony) = 'A';
        char& litera = poprawiony[Klucz.size()];
        while (!(silny = Rozpisz({poprawiony, Klucz.size() + 1})) && litera != 'Z')
            ++litera;
        WymazSekret(poprawiony, sizeof poprawiony);
    }
    if (!silny) {
        WymazSekret(&FBoxes, sizeof FBoxes);
        ZTError(kmBlednyKluczSzyfrowania);
    }
}

TSzyfrator::~TSzyfrator() { WymazSekret(&FBoxes, sizeof FBoxes); }

bool TSzyfrator::Rozpisz(std::string_view klucz) noexcept {
    return UzywaRozszerzenia(rzBmi) ? RozpiszKlucz<true>(FBoxes, klucz) : RozpiszKlucz<false>(FBoxes, klucz);
}

void TSzyfrator::SzyfrujBloki(void* bajty, std::size_t ile) const noexcept { Bloki<true>(FBoxes, bajty, ile); }

void TSzyfrator::DeszyfrujBloki(void* bajty, std::size_t ile) const noexcept { Bloki<false>(FBoxes, bajty, ile); }

void TSzyfrator::SzyfrujStrumien(TZTMemoryStream& Strumien) const {
    const auto dlugosc = static_cast<std::size_t>(Strumien.GetSize());
    if (dlugosc != 0) {
        const std::size_t p = IleWypelnienia(dlugosc);
        if (dlugosc > static_cast<std::size_t>(std::numeric_limits<std::ptrdiff_t>::max()) - p - 1)
            throw std::bad_alloc();
        Strumien.SetSize(static_cast<std::int64_t>(dlugosc + p + 1));
        const std::span<std::uint8_t> bajty = Strumien.Zawartosc();
        std::memset(bajty.data() + dlugosc, kWypelnienie, p);
        bajty.back() = static_cast<std::uint8_t>(p);
        SzyfrujBloki(bajty.data(), bajty.size() / kBlokSzyfru);
    }
    Strumien.Seek(0, ESeek::Poczatek);
}

void TSzyfrator::OdszyfrujStrumien(TZTMemoryStream& Strumien) const {
    Strumien.SetSize(Strumien.GetSize()); // raises for a stream over what must not be changed
    const std::span<std::uint8_t> bajty = Strumien.Zawartosc();
    const std::size_t dlugosc = DlugoscOdszyfrowanych(*this, bajty);
    if (!bajty.empty()) {
        DeszyfrujBloki(bajty.data(), bajty.size() / kBlokSzyfru);
        Strumien.SetSize(static_cast<std::int64_t>(dlugosc));
    }
    Strumien.Seek(0, ESeek::Poczatek);
}

void TSzyfrator::SzyfrujStrumien(TStrumien& Zrodlo, TStrumien& Cel) const {
    PrzezPamiec(Zrodlo, Cel, [this](TZTMemoryStream& pamiec) { SzyfrujStrumien(pamiec); });
}

void TSzyfrator::OdszyfrujStrumien(TStrumien& Zrodlo, TStrumien& Cel) const {
    PrzezPamiec(Zrodlo, Cel, [this](TZTMemoryStream& pamiec) { OdszyfrujStrumien(pamiec); });
}

} // namespace ztok
