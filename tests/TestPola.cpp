// Scalar and text fields: conversions, cutting, masks, comparison, features.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/Bledy.h"
#include "ztok/kernel/Typypolbazowe.h"

namespace {

using namespace ztok;
using testy::Blad;
using testy::Zglasza;

TWlasny<TPole> NowePole(const TKlasa* klasa) { return TWlasny<TPole>(static_cast<TPole*>(klasa->utworz(nullptr))); }
template <class P> TWlasny<TPole> Pole(decltype(std::declval<P>().Wartosc()) wartosc) {
    auto pole = Utworz<P>();
    if constexpr (std::is_same_v<P, TPoleBoolean>)
        pole->UstawWartosc(wartosc ? 1 : 0);
    else
        pole->UstawWartosc(wartosc);
    return pole;
}

const TKlasa* const kPola[] = {
    TPoleBoolean::KlasaStatyczna(),   TPoleByte::KlasaStatyczna(),     TPoleSmallint::KlasaStatyczna(),
    TPoleWord::KlasaStatyczna(),      TPoleInteger::KlasaStatyczna(),  TPoleCardinal::KlasaStatyczna(),
    TPoleInt64::KlasaStatyczna(),     TPoleDouble::KlasaStatyczna(),   TPoleString::KlasaStatyczna(),
    TPoleCDATA::KlasaStatyczna(),     TPoleFileName::KlasaStatyczna(), TPoleRawByteString::KlasaStatyczna(),
    TPoleWideString::KlasaStatyczna()};

TEST(Pola, NoweZeroweIBezLicznika) {
    for (const TKlasa* klasa : kPola) {
        const TWlasny<TPole> pole = NowePole(klasa);
        const bool tekst = klasa->Ma(ckPoleTekstowe);
        const std::u16string zero = tekst ? u"" : klasa == TPoleBoolean::KlasaStatyczna() ? u"N" : u"0";
        EXPECT_EQ(pole->GetJakoString(), zero);
        EXPECT_TRUE(pole->MaDefWartosc());
        pole->SetJakoString(u"1");
        EXPECT_FALSE(pole->MaDefWartosc());
        EXPECT_EQ(pole->WartWgMaski(u""), klasa == TPoleBoolean::KlasaStatyczna() ? u"T" : u"1");
        pole->ZerujDane();
        EXPECT_EQ(pole->GetJakoString(), zero);
        EXPECT_EQ(pole->_AddRef(), -1);
        EXPECT_EQ(pole->_Release(), -1);
        void* wynik = pole.get();
        EXPECT_EQ(pole->QueryInterface(Guid("{0B1C2D3E-4F50-4162-8394-A5B6C7D8E9F0}"), &wynik),
                  static_cast<std::int32_t>(0x80004002U));
        EXPECT_EQ(wynik, nullptr);
    }
}

TEST(Pola, PoleInnejKlasyNieWejdzie) {
    for (const TKlasa* a : kPola)
        for (const TKlasa* b : kPola) {
            const TWlasny<TPole> pa = NowePole(a);
            const TWlasny<TPole> pb = NowePole(b);
            const bool pasuje = a->kodPola == b->kodPola;
            EXPECT_EQ(Zglasza<EBladRzutowania>([&] { pa->KopiujDane(*pb); }), !pasuje);
            EXPECT_EQ(Zglasza<EBladRzutowania>([&] { static_cast<void>(pa->Porownaj(*pb)); }), !pasuje);
        }
}

// Text and variant in, text and variant type out; "!" for a conversion error.
TEST(Pola, TekstTamIZPowrotem) {
    struct {
        const TKlasa* klasa;
        std::u16string_view tekst;
        std::u16string_view wynik;
    } const tabela[] = {
        {TPoleByte::KlasaStatyczna(), u"255", u"255"},
        {TPoleByte::KlasaStatyczna(), u"300", u"44"}, // cut to 8 bits, without an error
        {TPoleByte::KlasaStatyczna(), u"-1", u"255"},
        {TPoleByte::KlasaStatyczna(), u"2147483648", u"!"},
        {TPoleSmallint::KlasaStatyczna(), u"32768", u"-32768"},
        {TPoleSmallint::KlasaStatyczna(), u"-32769", u"32767"},
        {TPoleWord::KlasaStatyczna(), u"65536", u"0"},
        {TPoleWord::KlasaStatyczna(), u"-1", u"65535"},
        {TPoleInteger::KlasaStatyczna(), u"-2147483648", u"-2147483648"},
        {TPoleInteger::KlasaStatyczna(), u"2147483648", u"!"},
        {TPoleInteger::KlasaStatyczna(), u"", u"!"},
        {TPoleInteger::KlasaStatyczna(), u"1.0", u"!"},
        {TPoleCardinal::KlasaStatyczna(), u"-1", u"4294967295"},
        {TPoleCardinal::KlasaStatyczna(), u"2147483647", u"2147483647"},
        {TPoleCardinal::KlasaStatyczna(), u"3000000000", u"!"}, // a signed parse, on purpose
        {TPoleInt64::KlasaStatyczna(), u"-9223372036854775808", u"-9223372036854775808"},
        {TPoleInt64::KlasaStatyczna(), u"9223372036854775808", u"!"},
        {TPoleDouble::KlasaStatyczna(), u"1 234,5", u"1234,5"},
        {TPoleDouble::KlasaStatyczna(), u"-1234.5", u"-1234,5"}, // text out is the process's format
        {TPoleDouble::KlasaStatyczna(), u"1,234,5", u"!"},
        {TPoleDouble::KlasaStatyczna(), u"x", u"!"},
        {TPoleBoolean::KlasaStatyczna(), u"T", u"T"},
        {TPoleBoolean::KlasaStatyczna(), u"t", u"!"},
        {TPoleBoolean::KlasaStatyczna(), u"tAk", u"T"},
        {TPoleBoolean::KlasaStatyczna(), u"NO", u"N"},
        {TPoleBoolean::KlasaStatyczna(), u"-7", u"T"},
        {TPoleBoolean::KlasaStatyczna(), u"0", u"N"},
        {TPoleString::KlasaStatyczna(), u"Łódź \x4E00\xD800", u"Łódź \x4E00\xD800"},
        {TPoleRawByteString::KlasaStatyczna(), u"Łódź \x4E00", u"Łódź ?"},
    };
    for (const auto& t : tabela) {
        const TWlasny<TPole> pole = NowePole(t.klasa);
        pole->SetJakoString(u"1");
        const std::u16string przed = pole->GetJakoString();
        const bool blad = Zglasza<EBladKonwersji>([&] { pole->SetJakoString(t.tekst); });
        EXPECT_EQ(blad ? u"!" : pole->GetJakoString(), t.wynik) << testing::PrintToString(t.tekst);
        if (blad) {
            EXPECT_EQ(pole->GetJakoString(), przed); // keeps its former value
        }
    }
    EXPECT_EQ(Blad<EBladKonwersji>([] { Utworz<TPoleDouble>()->SetJakoString(u"12x"); }),
              u"'12x' nie jest poprawną liczbą zmiennoprzecinkową");
}

TEST(Pola, WariantTamIZPowrotem) {
    struct {
        const TKlasa* klasa;
        TTypWariantu typ;
        TWariant wartosc;
        std::u16string_view wynik;
    } const tabela[] = {
        {TPoleBoolean::KlasaStatyczna(), TTypWariantu::Boolean, 5, u"T"},
        {TPoleByte::KlasaStatyczna(), TTypWariantu::Byte, 511, u"255"},
        {TPoleByte::KlasaStatyczna(), TTypWariantu::Byte, 2.5, u"2"},
        {TPoleByte::KlasaStatyczna(), TTypWariantu::Byte, 4294967295U, u"!"}, // above a signed 32-bit number
        {TPoleSmallint::KlasaStatyczna(), TTypWariantu::Smallint, 40000, u"-25536"},
        {TPoleWord::KlasaStatyczna(), TTypWariantu::Word, -2, u"65534"},
        {TPoleInteger::KlasaStatyczna(), TTypWariantu::Integer, 5000000000LL, u"!"},
        {TPoleInteger::KlasaStatyczna(), TTypWariantu::Integer, TWariant::Null(), u"!"},
        {TPoleInteger::KlasaStatyczna(), TTypWariantu::Integer, TWariant(), u"0"},
        {TPoleCardinal::KlasaStatyczna(), TTypWariantu::Cardinal, 5000000000LL, u"705032704"},
        {TPoleCardinal::KlasaStatyczna(), TTypWariantu::Cardinal, 3000000000U, u"3000000000"},
        {TPoleInt64::KlasaStatyczna(), TTypWariantu::Int64, u"-5000000000", u"-5000000000"},
        {TPoleDouble::KlasaStatyczna(), TTypWariantu::Double, u"2,5", u"2,5"},
        {TPoleDouble::KlasaStatyczna(), TTypWariantu::Double, true, u"-1"},
        {TPoleString::KlasaStatyczna(), TTypWariantu::UnicodeString, TWariant::AnsiString("\xB9"), u"ą"},
        {TPoleString::KlasaStatyczna(), TTypWariantu::UnicodeString, TWariant::Null(), u""},
        {TPoleRawByteString::KlasaStatyczna(), TTypWariantu::AnsiString, u"ąλ", u"ą?"},
        {TPoleWideString::KlasaStatyczna(), TTypWariantu::WideString, u"abc", u"abc"},
    };
    for (const auto& t : tabela) {
        const TWlasny<TPole> pole = NowePole(t.klasa);
        EXPECT_EQ(pole->GetJakoVariant().Typ(), t.typ);
        const bool blad = Zglasza<EBladWariantu>([&] { pole->SetJakoVariant(t.wartosc); });
        EXPECT_EQ(blad ? u"!" : pole->GetJakoString(), t.wynik);
        const TWlasny<TPole> drugie = NowePole(t.klasa); // what a field gives, a field of its class takes
        drugie->SetJakoVariant(pole->GetJakoVariant());
        EXPECT_EQ(drugie->Porownaj(*pole), 0);
    }
    // The 8-bit form goes through Windows-1250, except of bytes, which are as they are.
    const auto napis = Pole<TPoleString>(u"ąλ");
    EXPECT_EQ(napis->GetJakoZTAnsiString(), "\xB9?");
    napis->SetJakoZTAnsiString("\xA3");
    EXPECT_EQ(napis->GetJakoString(), u"Ł");
    const auto bajty = Utworz<TPoleRawByteString>();
    std::string wszystkie;
    for (int i = 0; i < 256; ++i)
        wszystkie += static_cast<char>(i);
    DefStronaKodowa = 1;
    bajty->SetJakoZTAnsiString(wszystkie);
    EXPECT_EQ(bajty->GetJakoZTAnsiString(), wszystkie);
    // The text form is of the default code page; one that the library does not know is an error.
    EXPECT_TRUE(Zglasza<EBladKonwersji>([&] { static_cast<void>(bajty->GetJakoString()); }));
    for (const auto& [strona, bajty8] : {std::pair{1251, "\xEA\xF3\xEB\x3F"}, std::pair{28592, "???\xB1"},
                                         std::pair{65001, "\xD0\xBA\xD1\x83\xD0\xBB\xC4\x85"}}) {
        DefStronaKodowa = static_cast<std::uint16_t>(strona);
        bajty->SetJakoString(u"кулą");
        EXPECT_EQ(bajty->GetJakoZTAnsiString(), bajty8);
        EXPECT_EQ(bajty->GetJakoString(), ZeStronyKodowej(bajty8, DefStronaKodowa));
    }
    DefStronaKodowa = 1250;
    bajty->SetJakoZTAnsiString(wszystkie);
    EXPECT_EQ(PolskiAnsi(bajty->GetJakoString()), wszystkie);
}

TEST(Pola, SzerokiTekstPrzechodziPrzezOsiemBitow) {
    const auto pole = Utworz<TPoleWideString>();
    const auto kopia = Utworz<TPoleWideString>();
    pole->UstawWartosc(u"zażółć");
    EXPECT_EQ(pole->GetJakoString().size(), 10U);
    for (char32_t kod = 1; kod < 0x110000; kod += kod < 0x3000 ? 1 : 61) {
        if (kod >= 0xD800 && kod < 0xE000)
            continue;
        std::u16string znak;
        if (kod < 0x10000) {
            znak = static_cast<char16_t>(kod);
        } else {
            znak += static_cast<char16_t>(0xD800 + ((kod - 0x10000) >> 10U));
            znak += static_cast<char16_t>(0xDC00 + (kod & 0x3FFU));
        }
        pole->UstawWartosc(znak);
        kopia->SetJakoString(pole->GetJakoString());
        ASSERT_EQ(kopia->Wartosc(), znak) << std::hex << static_cast<unsigned>(kod);
        kopia->ZerujDane();
        kopia->SetJakoZTAnsiString(pole->GetJakoZTAnsiString());
        ASSERT_EQ(kopia->Wartosc(), znak) << std::hex << static_cast<unsigned>(kod);
    }
}

TEST(Pola, WartoscWgMaski) {
    TUstawieniaFormatu ustawienia = UstawieniaPolskie();
    struct {
        TWlasny<TPole> pole;
        std::u16string_view maska;
        std::u16string_view wynik;
        bool swoje = false;
    } const tabela[] = {
        {Pole<TPoleInteger>(2), u"?zero;jeden;dwa", u"dwa"},
        {Pole<TPoleInteger>(0), u"?zero;jeden;dwa", u"zero"},
        {Pole<TPoleInteger>(3), u"?zero;jeden;dwa", u""},
        {Pole<TPoleInteger>(-1), u"?zero;jeden;dwa", u""},
        {Pole<TPoleByte>(1), u"?a;b", u"b"},
        {Pole<TPoleSmallint>(-1), u"?a;b", u""},
        {Pole<TPoleWord>(1), u"?a;", u""},
        {Pole<TPoleInt64>(1), u"?a;b", u"?a"}, // a number format like any other
        {Pole<TPoleCardinal>(1), u"?0", u"?1"},
        {Pole<TPoleDouble>(1.5), u"?0.00", u"?1,50"},
        {Pole<TPoleDouble>(1234.5), u"#,##0.00", u"1 234.50", true},
        {Pole<TPoleDouble>(1234.5), u"0.00", u"1234,50"},
        {Pole<TPoleInteger>(-5), u"0;(0);brak", u"(5)"},
        {Pole<TPoleInteger>(0), u"0;(0);brak", u"brak"},
        {Pole<TPoleInt64>(9007199254740992), u"0", u"9007199254740992"},
        {Pole<TPoleInt64>(std::numeric_limits<std::int64_t>::max()), u"0", u"9223372036854775807"},
        {Pole<TPoleInt64>(std::numeric_limits<std::int64_t>::min()), u"#,##0.0", u"-9 223 372 036 854 775 808.0", true},
        {Pole<TPoleInt64>(-9007199254740993), u";(0)", u"(9007199254740993)"},
        {Pole<TPoleInt64>(9007199254740993), u";(0)", u"9007199254740993"},
        {Pole<TPoleInt64>(1234567890123456789), u"0.00E+00", u"1,23E+18"},
        {Pole<TPoleBoolean>(true), u"tak", u"tak"},
        {Pole<TPoleBoolean>(false), u"tak", u""},
        {Pole<TPoleBoolean>(false), u"jest;brak;nic", u"brak;nic"},
        {Pole<TPoleBoolean>(true), u";brak", u""},
        {Pole<TPoleString>(u"x"), u"[%s]", u"[x]"},
        {Pole<TPoleString>(u"x%s"), u"Nazwa: %s", u"Nazwa: x%s"},
        {Pole<TPoleString>(u"x"), u"", u"x"},
        {Pole<TPoleRawByteString>("\xB9"), u"%5s|", u"    ą|"},
        {Pole<TPoleWideString>(u"ab"), u"%s-%0:s", u"ab-ab"},
    };
    for (const auto& t : tabela)
        EXPECT_EQ(t.pole->WartWgMaski(t.maska, t.swoje ? &ustawienia : nullptr), t.wynik)
            << testing::PrintToString(t.maska);
}

TEST(Pola, PorownanieLiczbIPrawdy) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    struct {
        TWlasny<TPole> a;
        TWlasny<TPole> b;
        int wynik;
    } const tabela[] = {
        {Pole<TPoleBoolean>(false), Pole<TPoleBoolean>(true), -1},
        {Pole<TPoleByte>(200), Pole<TPoleByte>(100), 1},
        {Pole<TPoleSmallint>(-1), Pole<TPoleSmallint>(1), -1},
        {Pole<TPoleWord>(65535), Pole<TPoleWord>(1), 1},
        {Pole<TPoleInteger>(-2147483647 - 1), Pole<TPoleInteger>(2147483647), -1},
        {Pole<TPoleCardinal>(4294967295U), Pole<TPoleCardinal>(0U), 1},
        {Pole<TPoleInt64>(-1), Pole<TPoleInt64>(0), -1},
        {Pole<TPoleInt64>(4294967296), Pole<TPoleInt64>(1), 1},
        {Pole<TPoleInt64>(9007199254740993), Pole<TPoleInt64>(9007199254740992), 1},
        {Pole<TPoleDouble>(-0.0), Pole<TPoleDouble>(0.0), 0},
        {Pole<TPoleDouble>(1.0), Pole<TPoleDouble>(1.0000000000000002), -1},
        {Pole<TPoleDouble>(nan), Pole<TPoleDouble>(1.0), 0},
        {Pole<TPoleDouble>(nan), Pole<TPoleDouble>(nan), 0},
        {Pole<TPoleDouble>(-INFINITY), Pole<TPoleDouble>(-1e308), -1},
    };
    for (const auto& t : tabela) {
        EXPECT_EQ(t.a->Porownaj(*t.b), t.wynik);
        EXPECT_EQ(t.b->Porownaj(*t.a), -t.wynik);
        EXPECT_EQ(t.a->Porownaj(*t.a), 0);
    }
}

// Comparison of texts by class, comparer and locale; features give the same with the sides turned.
TEST(Pola, PorownanieTekstow) {
    constexpr std::uint32_t kBez = 1; // no comparer
    struct {
        const TKlasa* klasa;
        std::u16string_view a;
        std::u16string_view b;
        std::uint32_t locale;
        TRozmiarLiter rozm;
        int wynik;
    } const tabela[] = {
        {TPoleString::KlasaStatyczna(), u"abc", u"ABC", kBez, rlRozmLiterNiewazny, 0},
        {TPoleString::KlasaStatyczna(), u"łódź", u"ŁÓDŹ", kBez, rlRozmLiterNiewazny, 1}, // only ASCII letters fold
        {TPoleString::KlasaStatyczna(), u"ł", u"Ą", kBez, rlRozmLiterNiewazny, 1},       // bytes B3, A5; codes 142, 104
        {TPoleString::KlasaStatyczna(), u"Ł", u"Ą", LocaleWin1250, rlRozmLiterWazny, -1}, // bytes A3, A5
        {TPoleString::KlasaStatyczna(), u"Ł", u"Ą", 0, rlRozmLiterWazny, -1},
        {TPoleString::KlasaStatyczna(), u"Ł", u"Ą", LocaleNiezmienny, rlRozmLiterWazny, 1}, // codes 141, 104
        {TPoleString::KlasaStatyczna(), u"a", u"B", LocaleWin1250, rlRozmLiterWazny, 1},
        {TPoleString::KlasaStatyczna(), u"a", u"B", LocaleWin1250, rlRozmLiterNiewazny, -1},
        {TPoleString::KlasaStatyczna(), u"a", u"B", LocaleNiezmienny, rlRozmLiterNiewazny, -1},
        {TPoleCDATA::KlasaStatyczna(), u"Ł", u"Ą", 0, rlRozmLiterWazny, -1},
        {TPoleWideString::KlasaStatyczna(), u"abc", u"ABC", kBez, rlRozmLiterNiewazny, 0},
        {TPoleWideString::KlasaStatyczna(), u"Ł", u"Ą", LocaleWin1250, rlRozmLiterWazny, 1}, // always by code
        {TPoleWideString::KlasaStatyczna(), u"Ł", u"Ą", 0, rlRozmLiterNiewazny, 1},
        {TPoleWideString::KlasaStatyczna(), u"a", u"B", LocaleNiezmienny, rlRozmLiterWazny, 1},
        {TPoleRawByteString::KlasaStatyczna(), u"abc", u"ABC", kBez, rlRozmLiterNiewazny, 0},
        {TPoleRawByteString::KlasaStatyczna(), u"Ł", u"Ą", LocaleNiezmienny, rlRozmLiterWazny, -1}, // bytes, always
        {TPoleRawByteString::KlasaStatyczna(), u"a", u"B", LocaleNiezmienny, rlRozmLiterNiewazny, -1},
        {TPoleRawByteString::KlasaStatyczna(), u"a", u"B", 0, rlRozmLiterWazny, 1},
        {TPoleString::KlasaStatyczna(), u"ab", u"abc", 0, rlRozmLiterWazny, -1},
    };
    const auto nowe = [](const TKlasa* klasa, std::u16string_view tekst) {
        TWlasny<TPole> pole = NowePole(klasa);
        pole->SetJakoVariant(TWariant(tekst));
        return pole;
    };
    for (const auto& t : tabela) {
        const TWlasny<TPole> a = nowe(t.klasa, t.a);
        const TWlasny<TPole> b = nowe(t.klasa, t.b);
        TPorownywaczDanych porownywacz(nullptr, nullptr, rpWszystkiePola, t.rozm, t.locale, tprRefJakoWskazn);
        TPorownywaczDanych* p = t.locale == kBez ? nullptr : &porownywacz;
        const auto opis = testing::PrintToString(t.a) + std::to_string(t.locale);
        EXPECT_EQ(a->Porownaj(*b, p), t.wynik) << opis;
        EXPECT_EQ(b->Porownaj(*a, p), -t.wynik) << opis;
        if (t.locale == kBez || t.klasa == TPoleRawByteString::KlasaStatyczna())
            continue;
        EXPECT_EQ(b->PorownajZCecha(t.a, t.rozm, t.locale), t.wynik) << opis; // the feature first
        EXPECT_EQ(b->PorownajZCecha(PolskiAnsi(t.a), t.rozm, t.locale), t.wynik) << opis;
        EXPECT_EQ(b->PorownajZCecha(TWariant(t.a), t.rozm, t.locale),
                  PorownajTeksty(t.a, t.b, t.rozm, t.locale)); // variants: the library's order in every class
    }
    // Bytes keep the general comparison, by their variant form and the locale.
    EXPECT_EQ(nowe(TPoleRawByteString::KlasaStatyczna(), u"Ą")->PorownajZCecha(u"Ł", rlRozmLiterWazny, 127), 1);
    EXPECT_EQ(nowe(TPoleRawByteString::KlasaStatyczna(), u"Ą")->PorownajZCecha(u"Ł", rlRozmLiterWazny, 0), -1);
    DefZTOKLocaleID = LocaleNiezmienny;
    EXPECT_EQ(nowe(TPoleString::KlasaStatyczna(), u"Ł")->Porownaj(*nowe(TPoleString::KlasaStatyczna(), u"Ą")), 1);
    DefZTOKLocaleID = 0;
}

// A field whose value is the null variant, as an application may write it.
class TPoleNull : public TPoleInteger {
    ZTOK_KLASA_DEKL(TPoleNull)
    [[nodiscard]] TWariant GetJakoVariant() const override { return TWariant::Null(); }
};
ZTOK_KLASA_DEF(TPoleNull, TPoleInteger)

TEST(Pola, PorownanieZCecha) {
    const auto obiekt = Utworz<TObiekt>();
    struct {
        TWlasny<TPole> pole;
        TArgument cecha;
        int wynik; // sign of the feature minus the value
    } const tabela[] = {
        {Pole<TPoleInteger>(5), 7, 1},
        {Pole<TPoleInteger>(5), 3, -1},
        {Pole<TPoleInteger>(5), 5LL, 0},
        {Pole<TPoleInt64>(9007199254740993), 9007199254740992LL, -1}, // exact beyond 53 bits
        {Pole<TPoleCardinal>(4294967295U), -1, -1},
        {Pole<TPoleByte>(200), 200.5, 1},
        {Pole<TPoleDouble>(0.1), 0.1, 0},
        {Pole<TPoleDouble>(2.0), 2, 0},
        {Pole<TPoleBoolean>(true), true, 0},
        {Pole<TPoleBoolean>(true), false, -1},
        {Pole<TPoleBoolean>(false), true, 1},
        {Pole<TPoleInteger>(2), true, 0}, // any number but 0 is true
        {Pole<TPoleInteger>(12), u"12", 0},
        {Pole<TPoleInteger>(12), u"2", 1}, // texts
        {Pole<TPoleInteger>(1), u'1', 0},
        {Pole<TPoleInteger>(1), '2', 1},
        {Pole<TPoleString>(u"ż"), '\xBF', 0},
        {Pole<TPoleString>(u"żyto"), TArgument::ShortString("\xBFyto"), 0},
        {Pole<TPoleString>(u"żyto"), TArgument::PChar("\xBFyto"), 0},
        {Pole<TPoleString>(u"abc"), TArgument::PWideChar(u"abd"), 1},
        {Pole<TPoleString>(u"abc"), TArgument::WideString(u"ABC"), -1},
        {Pole<TPoleString>(u"12"), 12, 0}, // the value becomes a number
        {Pole<TPoleWideString>(u"12"), 13, 1},
        {Pole<TPoleInteger>(12), TArgument(TWariant(11)), -1},
        {Pole<TPoleInteger>(12), TArgument(TWariant(u"12")), 0},
        {Pole<TPoleNull>(9), 0, 0}, // null takes the zero of the feature's kind
        {Pole<TPoleNull>(9), -1LL, -1},
        {Pole<TPoleNull>(9), false, 0},
        {Pole<TPoleNull>(9), u"", 0},
        {Pole<TPoleNull>(9), 'a', 1},
        {Pole<TPoleNull>(9), 0.5, 1},
        {Pole<TPoleNull>(9), TArgument(static_cast<TObiektOgolny*>(nullptr)), 0},
        {Pole<TPoleNull>(9), TArgument(TWariant::Null()), 0},
    };
    int nr = 0;
    for (const auto& t : tabela)
        EXPECT_EQ(t.pole->PorownajZCecha(t.cecha, rlRozmLiterWazny, LocaleWin1250), t.wynik) << "row " << nr, ++nr;
    const auto wskaznik = Utworz<TPoleWskObiektu>();
    wskaznik->UstawObiekt(obiekt.get());
    EXPECT_EQ(wskaznik->PorownajZCecha(obiekt.get(), rlRozmLiterWazny, 0), 0);
    EXPECT_EQ(wskaznik->PorownajZCecha(static_cast<TObiektOgolny*>(nullptr), rlRozmLiterWazny, 0),
              reinterpret_cast<std::intptr_t>(obiekt.get()) > 0 ? -1 : 1);
    const std::pair<TArgument, std::u16string_view> zle[] = {{nullptr, u"5"},
                                                             {TObiekt::KlasaStatyczna(), u"8"},
                                                             {TWaluta{0}, u"12"},
                                                             {static_cast<IInterfejs*>(nullptr), u"14"}};
    for (const auto& zla : zle)
        EXPECT_EQ(Blad<ZTException>([&zla] {
                      static_cast<void>(Pole<TPoleString>(u"x")->PorownajZCecha(zla.first, rlRozmLiterWazny, 0));
                  }),
                  u"błędny typ parametru: " + std::u16string(zla.second));
    EXPECT_TRUE(Zglasza<EBladWariantu>(
        [] { static_cast<void>(Pole<TPoleString>(u"x")->PorownajZCecha(5, rlRozmLiterWazny, 0)); }));
}

TEST(Pola, SprawdzanieWariantu) {
    const auto pole = Utworz<TPoleByte>();
    const std::uint16_t dozwolone[] = {3, 17};
    pole->SprawdzVarType(TWariant(5), dozwolone);
    pole->SprawdzVarType(TWariant(std::uint8_t{5}), dozwolone);
    EXPECT_EQ(Blad<EBladAsercji>([&] { pole->SprawdzVarType(TWariant(1.5), dozwolone); }),
              u"TPoleByte: Błędny typ Variant = Double");
    EXPECT_EQ(pole->InfoWartPozaZakresem(TWariant(300)), u"TPoleByte: wartość poza zakresem = 300");
    EXPECT_EQ(pole->InfoWartPozaZakresem(TWariant::Tablica({1, 2})), u"TPoleByte: wartość poza zakresem = ?");
    const auto goly = Utworz<TPole>();
    EXPECT_EQ(Blad<EBladAbstrakcyjny>([&] { static_cast<void>(goly->GetJakoString()); }),
              u"klasa TPole nie ma operacji GetJakoString");
    EXPECT_TRUE(Zglasza<EBladAbstrakcyjny>([&] { goly->ZerujDane(); }));
    EXPECT_EQ(goly->Porownaj(*pole), 0);
}

TEST(Pola, PolaWskazujace) {
    auto a = Utworz<TObiekt>();
    auto b = Utworz<TObiekt>();
    const auto ref = Utworz<TPoleRefObiektu>();
    const auto drugie = Utworz<TPoleRefObiektu>();
    const auto wsk = Utworz<TPoleWskObiektu>();
    ref->UstawObiekt(a.get());
    drugie->UstawObiekt(b.get());
    ref->UstawObiekt(b.get());
    ref->UstawObiekt(a.get());
    drugie->KopiujDane(*ref); // the registration moves
    drugie->KopiujDane(*drugie);
    EXPECT_TRUE(a->MaRefOd(drugie.get()));
    EXPECT_FALSE(b->MaJakiesRef());
    wsk->KopiujDane(*ref);
    EXPECT_FALSE(a->MaRefOd(wsk.get()));
    EXPECT_TRUE(Zglasza<EBladRzutowania>([&] { ref->KopiujDane(*Utworz<TPoleInteger>()); }));
    drugie->ZerujDane();
    EXPECT_FALSE(a->MaRefOd(drugie.get()));
    EXPECT_TRUE(drugie->MaDefWartosc());
    EXPECT_EQ(drugie->Porownaj(*ref), -1); // null first
    EXPECT_EQ(ref->Porownaj(*drugie), 1);
    drugie->UstawObiekt(b.get());
    EXPECT_EQ(ref->Porownaj(*drugie), 0); // equal objects
    b->UstawPole(0, Pole<TPoleString>(u"x").Oddaj(), true);
    b->UstawNiepuste(0, true);
    EXPECT_EQ(ref->Porownaj(*drugie), -1);

    static TObiektBazowy* widziany = nullptr;
    const auto zdarzenie = Utworz<TPoleRefZeZdarz>();
    zdarzenie->OnZerujRefDo = {[](void* dane, TPole& nadawca) {
                                   ++*static_cast<int*>(dane);
                                   widziany = static_cast<TPoleRefZeZdarz&>(nadawca).Obiekt();
                               },
                               nullptr};
    int zdarzen = 0;
    zdarzenie->OnZerujRefDo.dane = &zdarzen;
    zdarzenie->UstawObiekt(a.get());
    const TObiektBazowy* adresA = a.get();
    a.Ustaw();
    EXPECT_EQ(zdarzen, 1);
    EXPECT_EQ(widziany, adresA);
    EXPECT_TRUE(zdarzenie->Obiekt() == nullptr && ref->Obiekt() == nullptr);
    EXPECT_EQ(wsk->Obiekt(), adresA); // unregistered: dangles by design
}

} // namespace
