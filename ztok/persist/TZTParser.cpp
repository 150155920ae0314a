#include "ztok/persist/TZTParser.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

#include "ztok/fields/Konwersje.h"
#include "ztok/fields/TypyPol.h"
#include "ztok/fields/WyjatkiModelu.h"
#include "ztok/persist/BlokBajtow.h"
#include "ztok/persist/WartosciTekstowe.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/LiczbyTekst.h"
#include "ztok/platform/TStrumien.h"

namespace ztok {

namespace {

// What a token may begin with.
enum EPoczatek : std::uint8_t { pcZnak, pcKoniec, pcNazwa, pcCyfra, pcMinus, pcDolar, pcApostrof, pcCudzyslow, pcKod };

constexpr std::array<EPoczatek, 256> kPoczatki = [] {
    std::array<EPoczatek, 256> tablica{};
    for (unsigned i = 0; i < 256; ++i)
        if ((i >= 'A' && i <= 'Z') || (i >= 'a' && i <= 'z') || i == '_' || (i >= 0x80 && i <= 0xFD))
            tablica[i] = pcNazwa;
        else if (i >= '0' && i <= '9')
            tablica[i] = pcCyfra;
    tablica[0] = pcKoniec;
    tablica['-'] = pcMinus;
    tablica['$'] = pcDolar;
    tablica['\''] = pcApostrof;
    tablica['"'] = pcCudzyslow;
    tablica['#'] = pcKod;
    return tablica;
}();

constexpr std::uint8_t kNieCyfra = 0xFF;

constexpr std::array<std::uint8_t, 256> kSzesnastkowe = [] {
    std::array<std::uint8_t, 256> tablica{};
    for (unsigned i = 0; i < 256; ++i)
        tablica[i] = static_cast<std::uint8_t>(i >= '0' && i <= '9'   ? i - '0'
                                               : i >= 'A' && i <= 'F' ? i - 'A' + 10
                                               : i >= 'a' && i <= 'f' ? i - 'a' + 10
                                                                      : kNieCyfra);
    return tablica;
}();

[[nodiscard]] std::uint8_t Szesnastkowa(char znak) noexcept { return kSzesnastkowe[static_cast<unsigned char>(znak)]; }

[[nodiscard]] bool CzyCyfra(char znak) noexcept { return znak >= '0' && znak <= '9'; }

[[nodiscard]] unsigned Cyfry(const TBlokBajtow& blok) noexcept { return blok.Miedzy('0', '9'); }

// The bytes as text, each one a character: enough for numbers, which are ASCII.
std::u16string Poszerz(std::string_view bajty) {
    std::u16string tekst(bajty.size(), u'\0');
    std::transform(bajty.begin(), bajty.end(), tekst.begin(),
                   [](char bajt) { return static_cast<char16_t>(static_cast<unsigned char>(bajt)); });
    return tekst;
}

// The bytes for a message, whatever they are.
std::u16string DoKomunikatu(std::string_view bajty) {
    // Enough bytes for what a message shows; what the cut left of a character goes too.
    constexpr std::size_t kNajwiecej = 4 * (kTekstWKomunikacie + 1);
    if (bajty.size() > kNajwiecej)
        bajty = bajty.substr(0, PelneUtf8(bajty.substr(0, kNajwiecej)));
    return Skrocony(PoprawneUtf8(bajty) ? Utf16ZUtf8(bajty) : ZWin1250(bajty));
}

bool SprobujInt64(std::string_view tekst, std::int64_t& liczba) {
    const char* koniec = tekst.data() + tekst.size();
    std::int64_t wynik = 0;
    if (const auto [gdzie, blad] = std::from_chars(tekst.data(), koniec, wynik); blad == std::errc() && gdzie == koniec)
        [[likely]] {
        liczba = wynik;
        return true;
    }
    return SprobujTekstNaInt64(Poszerz(tekst), liczba);
}

bool JestInt32(std::string_view tekst) {
    std::int32_t liczba = 0;
    return SprobujTekstNaInt(Poszerz(tekst), liczba);
}

// The letter for false or true: its index, or -1.
int LiteraLogiczna(std::string_view tekst) noexcept {
    for (int i = 0; i < 2; ++i)
        if (tekst == NieTak[i].substr(0, 1))
            return i;
    return -1;
}

} // namespace

TZTParser::TZTParser(TStrumien& Strumien, std::int64_t maksTokenu, std::int64_t maksNazwy)
    : strumien_(Strumien), maksTokenu_(maksTokenu), maksNazwy_(maksNazwy) {
    UstawRozmiar(static_cast<std::size_t>(std::max<std::int32_t>(ParseBufSize, 1)));
    poz_ = koniec_ = bufor_;
    *koniec_ = '\0';
    try {
        NextToken();
    } catch (...) {
        std::free(bufor_);
        throw;
    }
}

TZTParser::~TZTParser() { std::free(bufor_); }

// The pointers into the buffer are the caller's to move. realloc, since it can grow a large buffer where it lies.
void TZTParser::UstawRozmiar(std::size_t rozmiar) {
    auto* nowy = static_cast<char*>(std::realloc(bufor_, rozmiar + TBlokBajtow::kIle));
    if (nowy == nullptr)
        throw std::bad_alloc();
    bufor_ = nowy;
    rozmiar_ = rozmiar;
}

// Reads more behind what is still needed: the token's text, else what was not taken yet. Returns whether there was
// more.
bool TZTParser::ReadBuffer(bool koniecDozwolony) {
    if (!koniecDanych_) {
        const char* od = tekstOd_ != nullptr ? tekstOd_ : poz_;
        const auto zachowane = static_cast<std::size_t>(koniec_ - od);
        const auto przedPoz = static_cast<std::size_t>(poz_ - od);
        const auto przedKoncemTekstu = static_cast<std::size_t>(tekstDo_ - tekstOd_);
        if (std::cmp_greater(zachowane, Granica()) && tekstOd_ != nullptr)
            BladLimitu(Granica());
        baza_ += od - bufor_;
        if (od != bufor_) // not every memmove looks at that: a long text read byte by byte would be copied each time
            std::memmove(bufor_, od, zachowane);

        std::size_t rozmiar = rozmiar_;
        // Doubles when what is kept takes more than four fifths (4 * size < 5 * kept, which could overflow), and when
        // no byte would fit.
        const std::size_t potrzebne = zachowane + (zachowane + 3) / 4;
        while (rozmiar < potrzebne || rozmiar - zachowane < 2) {
            if (rozmiar > std::numeric_limits<std::size_t>::max() / 2 - TBlokBajtow::kIle)
                throw std::bad_alloc();
            rozmiar *= 2;
        }
        if (rozmiar != rozmiar_)
            UstawRozmiar(rozmiar);
        poz_ = bufor_ + przedPoz;
        koniec_ = bufor_ + zachowane;
        *koniec_ = '\0';
        if (tekstOd_ != nullptr) {
            tekstOd_ = bufor_;
            tekstDo_ = bufor_ + przedKoncemTekstu;
        }

        const std::int64_t ile = strumien_.CzytajNajwyzej(koniec_, static_cast<std::int64_t>(rozmiar_ - zachowane - 1));
        if (ile > 0) {
            koniec_ += ile;
            *koniec_ = '\0';
            return true;
        }
        koniecDanych_ = true;
    }
    if (!koniecDozwolony)
        Error(kmNieoczekiwanyKoniecPliku);
    return false;
}

// The same inside a text whose bytes up to the filled end are taken: what they stood for before decoding is dropped, so
// that a text never takes more memory than its decoded form.
bool TZTParser::DoczytajTekst(bool koniecDozwolony) {
    baza_ += poz_ - tekstDo_;
    poz_ = koniec_ = tekstDo_;
    *koniec_ = '\0';
    return ReadBuffer(koniecDozwolony);
}

void TZTParser::ZapamietajMiejsce() noexcept {
    pozTokenu_ = baza_ + (poz_ - bufor_);
    liniaTokenu_ = linia_;
    lfTokenu_ = ostatniLf_;
}

void TZTParser::NowaLinia(const char* lf) noexcept {
    ++linia_;
    ostatniLf_ = baza_ + (lf - bufor_);
}

// Moves to the first byte that `stop` marks in its block, reading on where the buffer ends; `stop` must mark NUL. False
// at the end of data.
template <class TStop> bool TZTParser::PrzejdzDo(TStop stop) {
    for (char* p = poz_;;) {
        const unsigned maska = stop(TBlokBajtow(p));
        if (maska == 0) {
            p += TBlokBajtow::kIle;
            continue;
        }
        poz_ = p + std::countr_zero(maska);
        if (poz_ != koniec_) [[likely]]
            return true;
        if (!ReadBuffer(true))
            return false;
        p = poz_;
    }
}

void TZTParser::PominBlanki() {
    // What mostly parts tokens: nothing, or a line end. A NUL stands behind the last byte, so three can be looked at.
    if (static_cast<unsigned char>(poz_[0]) > 32)
        return;
    if (poz_[0] == '\r' && poz_[1] == '\n' && static_cast<unsigned char>(poz_[2]) > 32) {
        NowaLinia(poz_ + 1);
        poz_ += 2;
        return;
    }
    for (char* p = poz_;;) {
        if (static_cast<unsigned char>(*p) > 32) {
            poz_ = p;
            return;
        }
        const TBlokBajtow blok(p);
        const unsigned znaki = blok.Miedzy(33, 255);
        const unsigned zera = blok.Rowne('\0');
        // Of the bytes before the first character, and before a NUL, which may be the filled end.
        const unsigned stop = znaki | zera | (1U << TBlokBajtow::kIle);
        const int ile = std::countr_zero(stop);
        if (const unsigned lf = blok.Rowne('\n') & (stop - 1) & ~stop; lf != 0) {
            for (unsigned bity = lf; bity != 0; bity &= bity - 1)
                ++linia_;
            ostatniLf_ = baza_ + (p - bufor_) + std::bit_width(lf) - 1;
        }
        p += ile;
        if ((zera & stop & (~stop + 1)) == 0)
            continue;
        if (p != koniec_) {
            ++p;
            continue;
        }
        poz_ = p;
        if (!ReadBuffer(true))
            return;
        p = poz_;
    }
}

std::uint8_t TZTParser::NextToken() {
    const std::uint8_t poprzedni = token_;
    ZapomnijTresc();
    PominBlanki();
    ZapamietajMiejsce();
    tekstOd_ = tekstDo_ = poz_;
    const char c = *poz_;
    const EPoczatek poczatek = kPoczatki[static_cast<unsigned char>(c)];
    nazwa_ = poczatek < pcApostrof;
    switch (poczatek) {
    case pcKoniec:
        return token_ = Koniec;
    case pcNazwa:
        ++poz_;
        CzytajNazwe();
        token_ = Symbol;
        break;
    case pcCyfra:
        token_ = CzytajLiczbe();
        break;
    case pcMinus:
        ++poz_;
        if (poz_ == koniec_)
            ReadBuffer(true);
        token_ = CzyCyfra(*poz_) ? CzytajLiczbe() : static_cast<std::uint8_t>(c);
        break;
    case pcDolar:
        ++poz_;
        PrzejdzDo([](const TBlokBajtow& blok) {
            return ~(Cyfry(blok) | blok.Miedzy('A', 'F') | blok.Miedzy('a', 'f')) & TBlokBajtow::kWszystkie;
        });
        token_ = Calkowita;
        break;
    case pcCudzyslow:
        if (trybXML_) {
            CzytajTekstXML(poprzedni == '>');
            token_ = Tekst;
        } else {
            token_ = CzytajTekst();
        }
        break;
    case pcApostrof:
    case pcKod:
        if (!trybXML_) {
            token_ = CzytajTekst();
            break;
        }
        [[fallthrough]];
    case pcZnak:
        ++poz_;
        token_ = static_cast<std::uint8_t>(c);
        break;
    }
    // A text has said where it ends.
    if (token_ != Tekst && token_ != TekstCudzyslow)
        tekstDo_ = poz_;
    if (tekstDo_ - tekstOd_ > Granica()) [[unlikely]]
        BladLimitu(Granica());
    return token_;
}

bool TZTParser::NextToken(std::string_view nazwa) {
    ZapomnijTresc();
    PominBlanki();
    const auto ile = static_cast<std::ptrdiff_t>(nazwa.size());
    if (nazwa.empty() || koniec_ - poz_ <= ile || poz_[ile] != '=' || ile > maksTokenu_ ||
        !RowneKrotkie(poz_, nazwa.data(), nazwa.size())) {
        NextToken();
        return false;
    }
    ZapamietajMiejsce();
    tekstOd_ = poz_;
    tekstDo_ = poz_ += ile;
    token_ = Symbol;
    return true;
}

void TZTParser::CzytajNazwe() {
    const auto nazwa = [](const TBlokBajtow& blok) { return blok.LiteryAscii() | Cyfry(blok) | blok.Rowne('_'); };
    if (trybXML_)
        PrzejdzDo([nazwa](const TBlokBajtow& blok) {
            const unsigned xml = blok.Miedzy(0x80, 0xFD) | blok.Rowne('-') | blok.Rowne('.') | blok.Rowne(':');
            return ~(nazwa(blok) | xml) & TBlokBajtow::kWszystkie;
        });
    else
        PrzejdzDo([nazwa](const TBlokBajtow& blok) { return ~nazwa(blok) & TBlokBajtow::kWszystkie; });
}

std::uint8_t TZTParser::CzytajLiczbe() {
    PrzejdzDo([](const TBlokBajtow& blok) { return ~Cyfry(blok) & TBlokBajtow::kWszystkie; });
    const char c = *poz_;
    if (c != '.' && c != 'E' && c != 'e' && (c != ',' || !trybXML_))
        return Calkowita;
    ++poz_;
    PrzejdzDo([](const TBlokBajtow& blok) {
        const unsigned liczba = Cyfry(blok) | blok.Rowne('E') | blok.Rowne('e') | blok.Rowne('+') | blok.Rowne('-');
        return ~liczba & TBlokBajtow::kWszystkie;
    });
    return Ulamkowa;
}

// The byte at the position inside a text, 0 at the end of data.
char TZTParser::ZnakTekstu() {
    if (poz_ == koniec_) [[unlikely]]
        DoczytajTekst(true);
    return *poz_;
}

// Parts of a text follow each other without blanks. A part in quotes begins in place; what comes later moves up to what
// was decoded before.
std::uint8_t TZTParser::CzytajTekst() {
    std::uint8_t rodzaj = Tekst;
    if (*poz_ != '#')
        tekstOd_ = tekstDo_ = poz_ + 1;
    for (;;) {
        const char c = ZnakTekstu();
        if (c == '#') {
            CzytajKod();
        } else if (c == '\'' || c == '"') {
            CzytajBieg(c);
            rodzaj = c == '"' ? TekstCudzyslow : Tekst;
            // The other quote directly behind a closing one is a character, not an opening one.
            const char inny = c == '"' ? '\'' : '"';
            if (ZnakTekstu() == inny) {
                *tekstDo_++ = inny;
                ++poz_;
            }
        } else {
            return rodzaj;
        }
    }
}

void TZTParser::CzytajBieg(char cudzyslow) {
    ++poz_;
    for (;;) {
        const char* od = poz_;
        char* p = poz_;
        for (;;) {
            const TBlokBajtow blok(p);
            const unsigned stop = blok.Rowne(cudzyslow) | blok.Rowne('\n') | blok.Rowne('\r') | blok.Rowne('\0');
            if (stop == 0) {
                p += TBlokBajtow::kIle;
                continue;
            }
            p += std::countr_zero(stop);
            if (*p != '\0' || p == koniec_)
                break;
            ++p;
        }
        const auto ile = static_cast<std::size_t>(p - od);
        if (tekstDo_ != od)
            std::memmove(tekstDo_, od, ile);
        tekstDo_ += ile;
        poz_ = p;
        if (p == koniec_) {
            DoczytajTekst(false);
            continue;
        }
        if (*p != cudzyslow)
            Error(kmNieprawidlowaStalaTekstowa);
        ++poz_;
        if (ZnakTekstu() != cudzyslow)
            return;
        *tekstDo_++ = cudzyslow;
        ++poz_;
    }
}

void TZTParser::CzytajKod() {
    // Its place is taken first: reading on may put the next bytes right behind the decoded ones.
    *tekstDo_++ = '\0';
    ++poz_;
    if (!CzyCyfra(ZnakTekstu()))
        Error(kmNieprawidlowaStalaTekstowa);
    unsigned kod = 0;
    for (char c = *poz_; CzyCyfra(c); c = ZnakTekstu()) {
        kod = (kod * 10 + static_cast<unsigned>(c - '0')) % 256;
        ++poz_;
    }
    tekstDo_[-1] = static_cast<char>(kod);
}

void TZTParser::CzytajTekstXML(bool tresc) {
    if (!tresc)
        tekstOd_ = tekstDo_ = ++poz_;
    for (;;) {
        const bool jest = PrzejdzDo([tresc](const TBlokBajtow& blok) {
            return blok.Rowne('<') | blok.Rowne('\n') | blok.Rowne('\0') | (tresc ? 0U : blok.Rowne('"'));
        });
        if (!jest)
            Error(kmNieoczekiwanyKoniecPliku);
        if (*poz_ == '<' || *poz_ == '"')
            break;
        if (*poz_ == '\n')
            NowaLinia(poz_);
        ++poz_;
    }
    tekstDo_ = poz_;
    if (*poz_ == '"')
        ++poz_;
}

bool TZTParser::RownyBezWielkosci(std::string_view tekst) const noexcept {
    return CompareTxtSgn(TrescTokenu(), tekst) == 0;
}

std::int64_t TZTParser::TokenInt() const {
    std::int64_t liczba = 0;
    if (SprobujInt64(TrescTokenu(), liczba)) [[likely]]
        return liczba;
    const int logiczna = LiteraLogiczna(TrescTokenu());
    if (logiczna < 0)
        Error(kmSpodziewanaLiczbaCalkowita);
    return logiczna;
}

double TZTParser::StringToFloat(std::string_view S) {
    // The usual form at once; all that is rare or wrong the long way.
    if (double liczba = 0; CzytajRzeczywista(S, liczba))
        return liczba;
    if (S.size() > 1 ? CzyCyfra(S[S[0] == '-' ? 1 : 0]) : !S.empty() && CzyCyfra(S[0])) {
        double liczba = 0;
        const auto [gdzie, blad] = FloatZCyfr(S.data(), S.data() + S.size(), liczba);
        if (blad == std::errc() && gdzie == S.data() + S.size())
            return liczba;
    }
    double liczba = 0;
    if (!ZTOKTryStrToFloat(Poszerz(S), liczba))
        throw EBladKonwersji(Formatuj(Komunikat(kmNiepoprawnaLiczbaZmiennoprzecinkowa), {DoKomunikatu(S)}));
    return liczba;
}

void TZTParser::SprawdzInny(std::uint8_t T) const {
    std::int64_t liczba = 0;
    const std::string_view tekst = token_ == Tekst ? TrescTokenu() : std::string_view();
    switch (T) {
    case Symbol:
        Error(kmSpodziewanyIdentyfikator);
    case Tekst:
    case TekstCudzyslow:
        Error(kmSpodziewanyTekst);
    case Calkowita:
        if (!JestInt32(tekst) && LiteraLogiczna(tekst) < 0)
            Error(kmSpodziewanaLiczbaCalkowita);
        break;
    case Calkowita64:
        if (token_ != Calkowita && !SprobujInt64(tekst, liczba) && LiteraLogiczna(tekst) < 0)
            Error(kmSpodziewanaLiczbaCalkowita);
        break;
    case Ulamkowa:
        if (token_ != Tekst && token_ != Calkowita)
            Error(kmSpodziewanaLiczbaUlamkowa);
        break;
    default:
        ErrorFmt(kmSpodziewanyZnak, {static_cast<int>(T)});
    }
}

void TZTParser::BrakSymbolu(std::string_view S) const { ErrorFmt(kmSpodziewanySymbol, {DoKomunikatu(S)}); }

// Whether a value from `od` is over at `p`: a blank parts it from the next token, and that token is neither
// "+", which would go on with a text, nor ",", which could be a decimal comma. False where the buffer does not show it.
bool TZTParser::JestKoniecWartosci(const char* od, const char* p) const noexcept {
    if (static_cast<unsigned char>(*p) > 32 || p - od > maksTokenu_ || trybXML_)
        return false;
    while (p != koniec_ && static_cast<unsigned char>(*p) <= 32)
        ++p;
    return p != koniec_ && *p != '+' && *p != ',';
}

bool TZTParser::WezTekst(char cudzyslow, std::string_view& tekst) noexcept {
    if (poz_[0] != '=' || poz_[1] != cudzyslow)
        return false;
    const char* const od = poz_ + 2;
    for (const char* p = od;;) {
        const TBlokBajtow blok(p);
        const unsigned stop = blok.Rowne(cudzyslow) | blok.Rowne('\n') | blok.Rowne('\r') | blok.Rowne('\0');
        if (stop == 0) {
            p += TBlokBajtow::kIle;
            continue;
        }
        p += std::countr_zero(stop);
        if (*p != cudzyslow || !JestKoniecWartosci(od, p + 1))
            return false;
        tekst = {od, static_cast<std::size_t>(p - od)};
        poz_ += p + 1 - poz_;
        return true;
    }
}

bool TZTParser::WezCalkowita(std::int64_t& liczba) noexcept {
    if (*poz_ != '=')
        return false;
    const char* p = poz_ + 1;
    const bool ujemna = *p == '-';
    p += ujemna ? 1 : 0;
    const char* const od = p;
    std::int64_t cyfry = 0;
    for (; CzyCyfra(*p) && p - od < std::numeric_limits<std::int64_t>::digits10; ++p)
        cyfry = cyfry * 10 + (*p - '0');
    if (p == od || !JestKoniecWartosci(poz_ + 1, p))
        return false;
    liczba = ujemna ? -cyfry : cyfry;
    poz_ += p - poz_;
    return true;
}

bool TZTParser::WezRzeczywista(double& liczba) noexcept {
    if (*poz_ != '=')
        return false;
    const char* const od = poz_ + 1;
    const char* p = od;
    while (CzyCyfra(*p) || *p == '.' || *p == '-')
        ++p;
    if (!JestKoniecWartosci(od, p) || !CzytajRzeczywista({od, static_cast<std::size_t>(p - od)}, liczba))
        return false;
    poz_ += p - poz_;
    return true;
}

bool TZTParser::WezDate(const TUstawieniaFormatu& format, double& wartosc) noexcept {
    constexpr std::ptrdiff_t dlugosc = 10;
    const char* const od = poz_ + 2;
    if (koniec_ - od <= dlugosc || poz_[0] != '=' || poz_[1] != '"' || od[dlugosc] != '"' ||
        !JestKoniecWartosci(od, od + dlugosc + 1) ||
        !CzytajDate({od, static_cast<std::size_t>(dlugosc)}, format, wartosc))
        return false;
    poz_ += dlugosc + 3;
    return true;
}

bool TZTParser::WezLogiczna(bool& wartosc) noexcept {
    if (poz_[0] != '=')
        return false;
    const int ktora = LiteraLogiczna({poz_ + 1, 1});
    if (ktora < 0 || !JestKoniecWartosci(poz_ + 1, poz_ + 2))
        return false;
    wartosc = ktora != 0;
    poz_ += 2;
    return true;
}

void TZTParser::HexToBinary(TStrumien& Strumien) {
    std::array<char, 512> bajty;
    for (;;) {
        SkipBlanks();
        // Errors are told at the pairs, not at what stands before them.
        ZapamietajMiejsce();
        if (poz_ == koniec_)
            Error(kmNieoczekiwanyKoniecPliku);
        if (*poz_ == '}')
            break;
        std::size_t ile = 0;
        for (; ile < bajty.size(); ++ile) {
            while (koniec_ - poz_ < 2 && ReadBuffer(true)) {
            }
            // At the end of data a NUL stands for the digit that is missing.
            const std::uint8_t starsza = Szesnastkowa(poz_[0]);
            if (starsza == kNieCyfra || Szesnastkowa(poz_[1]) == kNieCyfra)
                break;
            bajty[ile] = static_cast<char>(starsza * 16 + Szesnastkowa(poz_[1]));
            poz_ += 2;
        }
        if (ile == 0)
            Error(kmNieprawidlowaWartoscBinarna);
        Strumien.WriteBuffer(bajty.data(), ile);
    }
    NextToken();
}

std::uint8_t TZTParser::ReadNextChar() {
    ZapomnijTresc();
    if (poz_ == koniec_)
        ReadBuffer(true);
    ZapamietajMiejsce();
    tekstOd_ = tekstDo_ = poz_;
    if (poz_ == koniec_)
        return token_ = Koniec;
    const char c = *poz_;
    if (c == '\n')
        NowaLinia(poz_);
    tekstDo_ = ++poz_;
    return token_ = c == '\0' ? std::uint8_t{' '} : static_cast<std::uint8_t>(c);
}

void TZTParser::PominDo(char znak, std::string* wynik) {
    ZapomnijTresc();
    nazwa_ = false;
    for (;;) {
        const auto zostalo = static_cast<std::size_t>(koniec_ - poz_);
        auto* gdzie = static_cast<char*>(std::memchr(poz_, znak, zostalo));
        const std::string_view bajty(poz_, gdzie != nullptr ? static_cast<std::size_t>(gdzie - poz_) : zostalo);
        linia_ += std::count(bajty.begin(), bajty.end(), '\r');
        if (const std::size_t lf = bajty.rfind('\n'); lf != std::string_view::npos)
            ostatniLf_ = baza_ + (poz_ - bufor_) + static_cast<std::int64_t>(lf);
        if (wynik != nullptr) {
            if (std::cmp_greater(wynik->size() + bajty.size(), maksTokenu_))
                BladLimitu(maksTokenu_);
            wynik->append(bajty);
        }
        poz_ += bajty.size();
        if (gdzie != nullptr || !ReadBuffer(true))
            break;
    }
    ZapamietajMiejsce();
    tekstOd_ = tekstDo_ = poz_;
    token_ = Symbol;
}

std::string TZTParser::ReadTextUpTo(char C) {
    std::string wynik;
    PominDo(C, &wynik);
    return wynik;
}

void TZTParser::SkipTextUpTo(char C) { PominDo(C, nullptr); }

void TZTParser::SkipBlanks() {
    ZapomnijTresc();
    PominBlanki();
}

std::u16string TZTParser::FormatErrStr(std::u16string_view Komunikat) const {
    return Formatuj(ztok::Komunikat(kmPozycjaBledu), {Komunikat, LiniaTokenu(), KolumnaTokenu()});
}

void TZTParser::Error(std::u16string_view Komunikat) const {
    throw EZTParserError(FormatErrStr(Komunikat), LiniaTokenu(), KolumnaTokenu());
}

void TZTParser::Error(EKomunikat Komunikat) const { Error(ztok::Komunikat(Komunikat)); }

void TZTParser::ErrorFmt(std::u16string_view Format, std::initializer_list<TArgument> Argumenty) const {
    Error(FormatujSkrocone(Format, TArgumenty(Argumenty.begin(), Argumenty.size())));
}

void TZTParser::ErrorFmt(EKomunikat Format, std::initializer_list<TArgument> Argumenty) const {
    ErrorFmt(Komunikat(Format), Argumenty);
}

void TZTParser::BladLimitu(std::int64_t granica) const {
    ErrorFmt(kmPrzekroczonoLimit,
             {granica < maksTokenu_ ? u"rozmiar nazwy w bajtach" : u"rozmiar tekstu w bajtach", granica});
}

} // namespace ztok
