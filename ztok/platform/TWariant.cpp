#include "ztok/platform/TWariant.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <compare>
#include <limits>
#include <memory>
#include <utility>

#include "ztok/platform/DatyTekst.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/LiczbyTekst.h"
#include "ztok/platform/Wyjatki.h"

namespace ztok {
namespace {

using enum TTypWariantu;

struct TNazwaTypu {
    TTypWariantu typ;
    std::u16string_view nazwa;
};
constexpr std::array<TNazwaTypu, 20> kNazwyTypow = {{
    {Empty, u"Empty"},
    {Null, u"Null"},
    {Smallint, u"Smallint"},
    {Integer, u"Integer"},
    {Single, u"Single"},
    {Double, u"Double"},
    {Currency, u"Currency"},
    {Date, u"Date"},
    {WideString, u"WideString"},
    {Boolean, u"Boolean"},
    {Variant, u"Variant"},
    {Shortint, u"Shortint"},
    {Byte, u"Byte"},
    {Word, u"Word"},
    {Cardinal, u"Cardinal"},
    {Int64, u"Int64"},
    {UInt64, u"UInt64"},
    {AnsiString, u"AnsiString"},
    {UnicodeString, u"UnicodeString"},
    {ArrayOfVariant, u"Array of Variant"},
}};

constexpr std::u16string_view kPrawda = u"True";
constexpr std::u16string_view kFalsz = u"False";
constexpr std::uint64_t kUlamekWaluty = 10000;

std::u16string_view TekstLogicznej(bool wartosc) noexcept { return wartosc ? kPrawda : kFalsz; }

bool RowneBezLiter(std::u16string_view a, std::u16string_view b) noexcept {
    const auto mala = [](char16_t z) { return z >= u'A' && z <= u'Z' ? static_cast<char16_t>(z + 32) : z; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [mala](char16_t x, char16_t y) { return mala(x) == mala(y); });
}

// An integer of any width and sign.
struct TCalkowita {
    bool ujemna = false;
    std::uint64_t modul = 0;

    static TCalkowita Z(std::int64_t liczba) noexcept {
        const auto bity = static_cast<std::uint64_t>(liczba);
        return {liczba < 0, liczba < 0 ? 0 - bity : bity};
    }
    // `reszta` is the sign of (what was cut off - one half): the neighbour is taken when more than half was cut off,
    // the even one when just half.
    void Zaokraglij(std::partial_ordering reszta) noexcept {
        // NOLINTNEXTLINE(modernize-use-nullptr): a category of order, no pointer
        if (reszta > 0 || (reszta == 0 && modul % 2 != 0))
            ++modul;
    }
    // Whether the number is in min..max, min being 0 or negative.
    [[nodiscard]] bool MiesciSie(std::int64_t min, std::uint64_t max) const noexcept {
        return modul <= (ujemna ? Z(min).modul : max);
    }
    [[nodiscard]] std::int64_t Wartosc() const noexcept {
        return static_cast<std::int64_t>(ujemna ? 0 - modul : modul);
    }
};

// False for NaN and from 2^64 on.
bool CalkowitaZRzeczywistej(long double liczba, TCalkowita& wynik) noexcept {
    const long double modul = std::fabs(liczba);
    if (!(modul < 18446744073709551616.0L))
        return false;
    const long double calkowita = std::trunc(modul);
    wynik = {liczba < 0, static_cast<std::uint64_t>(calkowita)};
    wynik.Zaokraglij(modul - calkowita <=> 0.5L);
    // Rounding up 2^64 - 1/2 wraps to 0; it is out of range.
    return wynik.modul != 0 || calkowita < 1;
}

// ---- text of numbers and dates, by the settings of the process

constexpr bool Odstep(char16_t znak) noexcept { return znak == u' ' || znak == u'\u00A0' || znak == u'\u202F'; }
constexpr bool Cyfra(char16_t znak) noexcept { return znak >= u'0' && znak <= u'9'; }

// Drops the blanks around a number and those that group its digits.
std::u16string BezOdstepow(std::u16string_view tekst) {
    while (!tekst.empty() && Odstep(tekst.front()))
        tekst.remove_prefix(1);
    while (!tekst.empty() && Odstep(tekst.back()))
        tekst.remove_suffix(1);
    std::u16string wynik;
    wynik.reserve(tekst.size());
    for (std::size_t i = 0; i < tekst.size(); ++i)
        if (!(Odstep(tekst[i]) && Cyfra(tekst[i - 1]) && Cyfra(tekst[i + 1])))
            wynik += tekst[i];
    return wynik;
}

bool RzeczywistaZTekstu(std::u16string_view tekst, double& liczba) {
    return SprobujTekstNaFloat(BezOdstepow(tekst), liczba, UstawieniaProcesu());
}

// Decimal digits are read exactly; other texts as reals, which then are rounded.
bool CalkowitaZTekstu(std::u16string_view tekst, TCalkowita& wynik, bool& wZakresie) {
    wZakresie = true;
    const std::u16string goly = BezOdstepow(tekst);
    std::string cyfry;
    for (char16_t znak : goly)
        cyfry += znak < 0x80 ? static_cast<char>(znak) : '?';
    wynik.ujemna = cyfry.starts_with('-');
    const char* od = cyfry.data() + (cyfry.starts_with('-') || cyfry.starts_with('+') ? 1 : 0);
    const char* koniec = cyfry.data() + cyfry.size();
    const auto r = std::from_chars(od, koniec, wynik.modul);
    if (r.ec == std::errc{} && r.ptr == koniec)
        return true;
    double liczba = 0;
    if (!SprobujTekstNaFloat(goly, liczba, UstawieniaProcesu()))
        return false;
    wZakresie = CalkowitaZRzeczywistej(liczba, wynik);
    return true;
}

// Amount from decimal text, exactly; half a ten-thousandth goes to the even one. Other texts are read as reals.
bool KwotaZTekstu(std::u16string_view tekst, TCalkowita& wynik, bool& wZakresie) {
    const std::u16string goly = BezOdstepow(tekst);
    const char16_t separator = UstawieniaProcesu().separatorDziesietny;
    double liczba = 0;
    if (!SprobujTekstNaFloat(goly, liczba, UstawieniaProcesu()))
        return false;
    wynik = {goly.starts_with(u'-'), 0};
    wZakresie = std::fabs(liczba) < 1e15;
    int ulamkowych = -1; // digits seen behind the separator
    int ponad = 0;       // the first digit cut off, and whether anything follows it
    bool cosDalej = false;
    for (char16_t znak : std::u16string_view(goly).substr(goly.starts_with(u'-') || goly.starts_with(u'+') ? 1 : 0)) {
        if (znak == separator) {
            ulamkowych = 0;
        } else if (!wZakresie || !Cyfra(znak)) { // exponent
            wZakresie = CalkowitaZRzeczywistej(static_cast<long double>(liczba) * kUlamekWaluty, wynik);
            return true;
        } else if (ulamkowych < 4) {
            wynik.modul = wynik.modul * 10 + (znak - u'0');
            ulamkowych += ulamkowych < 0 ? 0 : 1;
        } else if (ulamkowych++ == 4) {
            ponad = znak - u'0';
        } else {
            cosDalej = cosDalej || znak != u'0';
        }
    }
    for (ulamkowych = std::max(ulamkowych, 0); ulamkowych < 4; ++ulamkowych)
        wynik.modul *= 10;
    wynik.Zaokraglij(ponad * 2 + (cosDalej ? 1 : 0) <=> 10);
    return true;
}

bool JestData(double dni) noexcept {
    TData data;
    TCzas czas;
    return SprobujRozlozycDateICzas(dni, data, czas);
}

std::u16string TekstCalkowitej(const TCalkowita& liczba) {
    char bufor[24];
    char* od = bufor;
    if (liczba.ujemna)
        *od++ = '-';
    const auto r = std::to_chars(od, bufor + sizeof bufor, liczba.modul);
    return {static_cast<const char*>(bufor), static_cast<const char*>(r.ptr)};
}

// All the digits there are, without trailing zeros.
std::u16string TekstKwoty(std::int64_t dziesieciotysieczne) {
    const TCalkowita kwota = TCalkowita::Z(dziesieciotysieczne);
    std::u16string wynik = TekstCalkowitej({kwota.ujemna, kwota.modul / kUlamekWaluty});
    if (std::uint64_t reszta = kwota.modul % kUlamekWaluty; reszta != 0) {
        wynik += UstawieniaProcesu().separatorDziesietny;
        for (std::uint64_t waga = kUlamekWaluty / 10; reszta != 0; reszta %= waga, waga /= 10)
            wynik += static_cast<char16_t>(u'0' + reszta / waga);
    }
    return wynik;
}

// NOLINTBEGIN(modernize-use-nullptr): categories of order, no pointers
int Znak(std::strong_ordering porzadek) noexcept { return porzadek < 0 ? -1 : porzadek > 0 ? 1 : 0; }
int Znak(std::partial_ordering porzadek) noexcept { return porzadek < 0 ? -1 : porzadek > 0 ? 1 : 0; }
// NOLINTEND(modernize-use-nullptr)

} // namespace

std::u16string NazwaTypuWariantu(TTypWariantu typ) {
    for (const TNazwaTypu& wiersz : kNazwyTypow)
        if (wiersz.typ == typ)
            return std::u16string(wiersz.nazwa);
    std::u16string nazwa = u"?";
    for (int bit = 12; bit >= 0; bit -= 4)
        nazwa += u"0123456789ABCDEF"[static_cast<unsigned>(typ) >> static_cast<unsigned>(bit) & 15U];
    return nazwa;
}

// Copies or moves the member that the type names into the union, which holds none.
template <class TOd> void TWariant::Zbuduj(TOd&& inny) {
    switch (inny.typ_) {
    case Single:
    case Double:
    case Date:
        std::construct_at(&rzeczywista_, inny.rzeczywista_);
        break;
    case UnicodeString:
    case TTypWariantu::WideString:
        std::construct_at(&tekst_, std::forward<TOd>(inny).tekst_);
        break;
    case TTypWariantu::AnsiString:
        std::construct_at(&bajty_, std::forward<TOd>(inny).bajty_);
        break;
    case ArrayOfVariant:
        std::construct_at(&tablica_, std::forward<TOd>(inny).tablica_);
        break;
    default:
        std::construct_at(&liczba_, inny.liczba_);
        break;
    }
    typ_ = inny.typ_;
}

// Ends the elements of an array without recursion and without memory. While an inner array is emptied, what waits
// stands first in it, and so comes last.
void TWariant::Oproznij(std::vector<TWariant>& elementy) noexcept {
    std::vector<TWariant> czekaja = std::move(elementy);
    while (!czekaja.empty()) {
        TWariant kolejny = std::move(czekaja.back());
        czekaja.pop_back();
        while (kolejny.typ_ == ArrayOfVariant && !kolejny.tablica_.empty()) {
            std::vector<TWariant> czesci = std::move(kolejny.tablica_);
            kolejny = std::move(czesci.back());
            if (czekaja.empty()) {
                czesci.pop_back();
            } else {
                if (czesci.size() > 1)
                    czesci.back() = std::move(czesci.front());
                czesci.front() = Tablica(std::move(czekaja));
            }
            czekaja = std::move(czesci);
        }
    }
}

// Leaves an empty variant.
void TWariant::Zburz() noexcept {
    switch (typ_) {
    case UnicodeString:
    case TTypWariantu::WideString:
        std::destroy_at(&tekst_);
        break;
    case TTypWariantu::AnsiString:
        std::destroy_at(&bajty_);
        break;
    case ArrayOfVariant:
        if (std::any_of(tablica_.begin(), tablica_.end(), [](const TWariant& w) { return w.JestTablica(); }))
            Oproznij(tablica_);
        std::destroy_at(&tablica_);
        break;
    default:
        break;
    }
    typ_ = Empty;
    std::construct_at(&liczba_, 0);
}

namespace {

// Arrays within arrays, which are copied by recursion: as deep as trees are read.
constexpr int kZaglebienieTablic = 256;
thread_local int zaglebienieTablic = 0;

class TPoziomTablicy {
  public:
    explicit TPoziomTablicy(const TWariant& tablica) {
        if (zaglebienieTablic >= kZaglebienieTablic)
            throw EBladWariantu(
                Formatuj(Komunikat(kmZaGlebokieZagniezdzenie), {tablica.NazwaTypu(), kZaglebienieTablic}));
        ++zaglebienieTablic;
    }
    TPoziomTablicy(const TPoziomTablicy&) = delete;
    TPoziomTablicy& operator=(const TPoziomTablicy&) = delete;
    ~TPoziomTablicy() { --zaglebienieTablic; }
};

} // namespace

TWariant::TWariant(const TWariant& inny) : TWariant() {
    if (inny.typ_ != ArrayOfVariant) {
        Zbuduj(inny);
        return;
    }
    const TPoziomTablicy poziom(inny);
    Zbuduj(inny);
}

TWariant::TWariant(TWariant&& inny) noexcept : TWariant() {
    Zbuduj(std::move(inny));
    inny.Zburz(); // NOLINT(bugprone-use-after-move): leaves it empty
}

TWariant& TWariant::operator=(const TWariant& inny) {
    if (this != &inny)
        *this = TWariant(inny);
    return *this;
}

TWariant& TWariant::operator=(TWariant&& inny) noexcept {
    // Through a temporary: `inny` may be an element of this array, or this variant itself.
    TWariant tymczasowy(std::move(inny));
    Zburz();
    Zbuduj(std::move(tymczasowy));
    return *this;
}

TWariant::~TWariant() { Zburz(); }

TWariant TWariant::Null() noexcept { return {TTypWariantu::Null, std::int64_t{0}}; }

TWariant TWariant::WideString(std::u16string tekst) noexcept {
    TWariant wynik(std::move(tekst));
    wynik.typ_ = TTypWariantu::WideString;
    return wynik;
}

TWariant TWariant::AnsiString(std::string bajty) noexcept {
    TWariant wynik;
    std::construct_at(&wynik.bajty_, std::move(bajty));
    wynik.typ_ = TTypWariantu::AnsiString;
    return wynik;
}

TWariant TWariant::Tablica(std::vector<TWariant> elementy) noexcept {
    TWariant wynik;
    std::construct_at(&wynik.tablica_, std::move(elementy));
    wynik.typ_ = ArrayOfVariant;
    return wynik;
}

bool operator==(const TWariant& a, const TWariant& b) noexcept {
    // Arrays whose elements are yet to be compared: they may nest to any depth.
    std::vector<std::pair<const TWariant*, const TWariant*>> tablice;
    const auto rowne = [&tablice](const TWariant& x, const TWariant& y) {
        if (x.typ_ != y.typ_)
            return false;
        switch (x.typ_) {
        case Single:
        case Double:
        case Date:
            return x.rzeczywista_ == y.rzeczywista_;
        case UnicodeString:
        case WideString:
            return x.tekst_ == y.tekst_;
        case AnsiString:
            return x.bajty_ == y.bajty_;
        case ArrayOfVariant:
            if (x.tablica_.size() != y.tablica_.size())
                return false;
            tablice.emplace_back(&x, &y);
            return true;
        default:
            return x.liczba_ == y.liczba_;
        }
    };
    bool wynik = rowne(a, b);
    while (wynik && !tablice.empty()) {
        const auto [x, y] = tablice.back();
        tablice.pop_back();
        for (std::size_t i = 0; wynik && i < x->tablica_.size(); ++i)
            wynik = rowne(x->tablica_[i], y->tablica_[i]);
    }
    return wynik;
}

bool TWariant::JestTekstem() const noexcept {
    return typ_ == TTypWariantu::UnicodeString || typ_ == TTypWariantu::AnsiString || typ_ == TTypWariantu::WideString;
}

bool TWariant::JestCalkowity() const noexcept {
    return typ_ == Smallint || typ_ == Integer || (typ_ >= Shortint && typ_ <= UInt64);
}

void TWariant::BladTypu(TTypWariantu cel) const {
    throw EBladWariantu(Formatuj(Komunikat(kmKonwersjaWariantu), {NazwaTypu(), NazwaTypuWariantu(cel)}));
}

void TWariant::BladZakresu(TTypWariantu cel) const {
    throw EBladWariantu(Formatuj(Komunikat(kmPrzepelnienieWariantu), {NazwaTypu(), NazwaTypuWariantu(cel)}));
}

std::u16string TWariant::Tekst() const { return typ_ == TTypWariantu::AnsiString ? ZWin1250(bajty_) : tekst_; }

// Any value as an integer of the type `cel`, which holds min..max; UInt64 as its bits.
std::int64_t TWariant::JakoCalkowita(std::int64_t min, std::uint64_t max, TTypWariantu cel) const {
    TCalkowita wynik;
    bool wZakresie = true;
    switch (typ_) {
    case Empty:
        break;
    case UInt64:
        wynik.modul = static_cast<std::uint64_t>(liczba_);
        break;
    case Boolean:
        // As a signed type; an unsigned one has no place for it.
        wynik = TCalkowita::Z(-liczba_);
        break;
    case Currency: {
        const TCalkowita kwota = TCalkowita::Z(liczba_);
        wynik = {kwota.ujemna, kwota.modul / kUlamekWaluty};
        wynik.Zaokraglij(kwota.modul % kUlamekWaluty <=> kUlamekWaluty / 2);
        break;
    }
    case Single:
    case Double:
    case Date:
        wZakresie = CalkowitaZRzeczywistej(rzeczywista_, wynik);
        break;
    case TTypWariantu::WideString:
    case TTypWariantu::AnsiString:
    case UnicodeString:
        if (!CalkowitaZTekstu(Tekst(), wynik, wZakresie))
            BladTypu(cel);
        break;
    default:
        if (!JestCalkowity())
            BladTypu(cel);
        wynik = TCalkowita::Z(liczba_);
        break;
    }
    if (!wZakresie || !wynik.MiesciSie(min, max))
        BladZakresu(cel);
    return wynik.Wartosc();
}

std::int32_t TWariant::JakoInt32() const {
    using TZakres = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(JakoCalkowita(TZakres::min(), TZakres::max(), Integer));
}

std::int64_t TWariant::JakoInt64() const {
    using TZakres = std::numeric_limits<std::int64_t>;
    return JakoCalkowita(TZakres::min(), TZakres::max(), Int64);
}

std::uint64_t TWariant::JakoUInt64() const {
    return static_cast<std::uint64_t>(JakoCalkowita(0, std::numeric_limits<std::uint64_t>::max(), UInt64));
}

double TWariant::JakoDouble() const {
    switch (typ_) {
    case Empty:
        return 0;
    case Single:
    case Double:
    case Date:
        return rzeczywista_;
    case Currency:
        return static_cast<double>(static_cast<long double>(liczba_) / kUlamekWaluty);
    case Boolean:
        return static_cast<double>(-liczba_);
    case UInt64:
        return static_cast<double>(static_cast<std::uint64_t>(liczba_));
    default:
        break;
    }
    if (JestCalkowity())
        return static_cast<double>(liczba_);
    double wynik = 0;
    if (!JestTekstem() || !RzeczywistaZTekstu(Tekst(), wynik))
        BladTypu(Double);
    return wynik;
}

bool TWariant::JakoBool() const {
    switch (typ_) {
    case Empty:
        return false;
    case Single:
    case Double:
    case Date:
        return rzeczywista_ != 0;
    case Currency:
    case Boolean:
        return liczba_ != 0;
    default:
        break;
    }
    if (JestCalkowity())
        return liczba_ != 0;
    if (!JestTekstem())
        BladTypu(Boolean);
    const std::u16string tekst = Tekst();
    if (RowneBezLiter(tekst, kPrawda))
        return true;
    double liczba = 0;
    if (!RowneBezLiter(tekst, kFalsz) && !RzeczywistaZTekstu(tekst, liczba))
        BladTypu(Boolean);
    return liczba != 0;
}

TDataCzas TWariant::JakoData() const {
    double dni = 0;
    if (JestTekstem()) {
        const std::u16string tekst = Tekst();
        // A text that is a number is no date: "12" is neither a day nor an hour here.
        if (double liczba = 0;
            RzeczywistaZTekstu(tekst, liczba) || !SprobujTekstNaDateICzas(tekst, dni, UstawieniaProcesu()))
            BladTypu(Date);
    } else if (JestNull() || JestTablica()) {
        BladTypu(Date);
    } else {
        dni = JakoDouble();
    }
    if (!JestData(dni))
        BladZakresu(Date);
    return {dni};
}

TWaluta TWariant::JakoWaluta() const {
    if (typ_ == Currency)
        return {liczba_};
    TCalkowita wynik;
    bool wZakresie = true;
    if (JestCalkowity()) {
        wynik = typ_ == UInt64 ? TCalkowita{false, static_cast<std::uint64_t>(liczba_)} : TCalkowita::Z(liczba_);
        wZakresie = wynik.modul <= std::numeric_limits<std::uint64_t>::max() / kUlamekWaluty;
        wynik.modul *= kUlamekWaluty;
    } else if (!JestNull() && !JestTablica()) {
        if (!JestTekstem())
            wZakresie = CalkowitaZRzeczywistej(static_cast<long double>(JakoDouble()) * kUlamekWaluty, wynik);
        else if (!KwotaZTekstu(Tekst(), wynik, wZakresie))
            BladTypu(Currency);
    } else {
        BladTypu(Currency);
    }
    using TZakres = std::numeric_limits<std::int64_t>;
    if (!wZakresie || !wynik.MiesciSie(TZakres::min(), TZakres::max()))
        BladZakresu(Currency);
    return {wynik.Wartosc()};
}

std::u16string TWariant::JakoTekst16() const {
    switch (typ_) {
    case Empty:
    case TTypWariantu::Null:
        return {};
    case Single:
    case Double:
        return FloatNaTekst(rzeczywista_, UstawieniaProcesu());
    case Currency:
        return TekstKwoty(liczba_);
    case Date:
        if (!JestData(rzeczywista_))
            BladZakresu(UnicodeString);
        // Day 0 shows its time alone, midnight too.
        return std::trunc(rzeczywista_) == 0 ? CzasNaTekst(rzeczywista_, UstawieniaProcesu())
                                             : DataLubCzasNaTekst(rzeczywista_, UstawieniaProcesu());
    case Boolean:
        return std::u16string(TekstLogicznej(liczba_ != 0));
    case UInt64:
        return TekstCalkowitej({false, static_cast<std::uint64_t>(liczba_)});
    default:
        break;
    }
    if (JestCalkowity())
        return TekstCalkowitej(TCalkowita::Z(liczba_));
    if (!JestTekstem())
        BladTypu(UnicodeString);
    return Tekst();
}

std::string TWariant::JakoTekst8() const { return typ_ == TTypWariantu::AnsiString ? bajty_ : Win1250(JakoTekst16()); }

TWariant TWariant::Przeksztalc(TTypWariantu typ) const {
    if (typ == typ_ || typ == Variant)
        return *this;
    if (JestNull() || JestTablica())
        BladTypu(typ);
    const auto calkowita = [this, typ]<class T>(T) {
        using TZakres = std::numeric_limits<T>;
        return TWariant(static_cast<T>(JakoCalkowita(TZakres::min(), TZakres::max(), typ)));
    };
    switch (typ) {
    case Shortint:
        return calkowita(std::int8_t{});
    case Byte:
        return calkowita(std::uint8_t{});
    case Smallint:
        return calkowita(std::int16_t{});
    case Word:
        return calkowita(std::uint16_t{});
    case Integer:
        return calkowita(std::int32_t{});
    case Cardinal:
        return calkowita(std::uint32_t{});
    case Int64:
        return {Int64, JakoInt64()};
    case UInt64:
        return {UInt64, static_cast<std::int64_t>(JakoUInt64())};
    case Single: {
        const double liczba = JakoDouble();
        if (std::isfinite(liczba) && std::fabs(liczba) > static_cast<double>(std::numeric_limits<float>::max()))
            BladZakresu(Single);
        return static_cast<float>(liczba);
    }
    case Double:
        return JakoDouble();
    case Currency:
        return JakoWaluta();
    case Date:
        return JakoData();
    case Boolean:
        return JakoBool();
    case TTypWariantu::WideString:
        return WideString(JakoTekst16());
    case TTypWariantu::AnsiString:
        return AnsiString(JakoTekst8());
    case UnicodeString:
        return JakoTekst16();
    default:
        BladTypu(typ);
    }
}

const std::vector<TWariant>& TWariant::Elementy() const {
    if (!JestTablica())
        BladTypu(ArrayOfVariant);
    return tablica_;
}

std::vector<TWariant>& TWariant::Elementy() {
    return const_cast<std::vector<TWariant>&>(std::as_const(*this).Elementy());
}

int PorownajWarianty(const TWariant& a, const TWariant& b) {
    // Missing values first.
    if (a.JestPustyLubNull() || b.JestPustyLubNull()) {
        const auto ranga = [](const TWariant& w) { return w.JestPusty() ? 0 : w.JestNull() ? 1 : 2; };
        return Znak(ranga(a) <=> ranga(b));
    }
    if (a.JestTablica() || b.JestTablica())
        (a.JestTablica() ? a : b).BladTypu((a.JestTablica() ? b : a).typ_);

    const bool logiczneA = a.typ_ == Boolean;
    const bool logiczneB = b.typ_ == Boolean;
    if (logiczneA && logiczneB)
        return Znak(a.liczba_ <=> b.liczba_);
    if ((a.JestTekstem() || logiczneA) && (b.JestTekstem() || logiczneB))
        return Znak(a.JakoTekst16().compare(b.JakoTekst16()) <=> 0);
    if (a.JestTekstem() || b.JestTekstem()) {
        // The other side is a number or a date: the text is read as one.
        const TWariant& tekst = a.JestTekstem() ? a : b;
        const TWariant& wartosc = a.JestTekstem() ? b : a;
        const double zTekstu = wartosc.typ_ == Date ? tekst.JakoData().dni : tekst.JakoDouble();
        const int wynik = Znak(zTekstu <=> wartosc.JakoDouble());
        return a.JestTekstem() ? wynik : -wynik;
    }
    const auto dokladny = [](const TWariant& w) {
        return w.JestCalkowity() || w.typ_ == Currency || w.typ_ == Boolean;
    };
    if (!dokladny(a) || !dokladny(b))
        return Znak(a.JakoDouble() <=> b.JakoDouble());

    // Whole part, rounded down, then the ten-thousandths.
    struct TCzesci {
        bool duza; // above the signed range: UInt64 only
        std::int64_t calkowita;
        std::int64_t reszta;
        // NOLINTNEXTLINE(modernize-use-nullptr,readability-implicit-bool-conversion): what the compiler makes of it
        auto operator<=>(const TCzesci&) const = default;
    };
    const auto czesci = [](const TWariant& w) -> TCzesci {
        const std::int64_t liczba = w.typ_ == Boolean ? -w.liczba_ : w.liczba_;
        if (w.typ_ != Currency)
            return {w.typ_ == UInt64 && liczba < 0, liczba, 0};
        constexpr auto ulamek = static_cast<std::int64_t>(kUlamekWaluty);
        const std::int64_t reszta = (liczba % ulamek + ulamek) % ulamek;
        return {false, liczba / ulamek - (liczba < 0 && reszta != 0 ? 1 : 0), reszta};
    };
    return Znak(czesci(a) <=> czesci(b));
}

} // namespace ztok
