// Fields of every class: the table of their values' forms, and what no table can say.
#include "tests/Testy.h"

namespace {

using namespace ztok;
using testy::Blad;
using testy::Wariant;
using testy::Zglasza;

// A field whose value is the null variant, as an application may write it.
class TPoleNull : public TPoleInteger {
    ZTOK_KLASA_DEKL(TPoleNull)
    [[nodiscard]] TWariant GetJakoVariant() const override { return TWariant::Null(); }
};
ZTOK_KLASA_DEF(TPoleNull, TPoleInteger)

const TKlasa* const kPola[] = {
    TPoleBoolean::KlasaStatyczna(),    TPoleByte::KlasaStatyczna(),        TPoleSmallint::KlasaStatyczna(),
    TPoleWord::KlasaStatyczna(),       TPoleInteger::KlasaStatyczna(),     TPoleCardinal::KlasaStatyczna(),
    TPoleInt64::KlasaStatyczna(),      TPoleDouble::KlasaStatyczna(),      TPoleString::KlasaStatyczna(),
    TPoleCDATA::KlasaStatyczna(),      TPoleFileName::KlasaStatyczna(),    TPoleRawByteString::KlasaStatyczna(),
    TPoleWideString::KlasaStatyczna(), TPoleDate::KlasaStatyczna(),        TPoleTime::KlasaStatyczna(),
    TPoleDateTime::KlasaStatyczna(),   TPoleIntList::KlasaStatyczna(),     TPoleDoubleList::KlasaStatyczna(),
    TPoleStrList::KlasaStatyczna(),    TPoleWideStrList::KlasaStatyczna(), TPoleNull::KlasaStatyczna()};

const auto kPojedyncze = std::span(kPola).first(16); // one value of a class of its own

bool JestDaty(const TKlasa* klasa) { return KlasaADziedziczyPoB(klasa, TPoleDateTimeBazowe::KlasaStatyczna()); }

TWlasny<TPole> NowePole(const TKlasa* klasa) { return TWlasny<TPole>(static_cast<TPole*>(klasa->utworz(nullptr))); }

TWlasny<TPole> NowePole(const std::string& nazwa, const TWariant& wartosc = {}) {
    for (const TKlasa* klasa : kPola)
        if (klasa->nazwa == u"TPole" + Utf16ZUtf8(nazwa)) {
            TWlasny<TPole> pole = NowePole(klasa);
            if (!wartosc.JestPusty())
                pole->SetJakoVariant(wartosc);
            return pole;
        }
    throw std::invalid_argument(nazwa);
}

// What the row's operation on a field of its class gives, as UTF-8.
std::string Wynik(const std::string& operacja, const testy::TWierszTabeli& w) {
    const std::string& wartosc = w[2];
    const std::string& argument = w[3];
    const auto tekst = [](const TPole& pole) { return Utf8ZUtf16(pole.GetJakoString()); };
    if (operacja == "text") {
        const TWlasny<TPole> pole = NowePole(w[1]);
        pole->SetJakoString(w.Tekst(2));
        return tekst(*pole);
    }
    if (operacja == "read") { // the text form, up to the word behind it
        strumienie::TOporny strumien(wartosc + " end");
        const TWlasny<TPole> pole = NowePole(w[1]);
        pole->WczytajTekstowo(strumien, nullptr);
        return tekst(*pole);
    }
    if (operacja == "texts") {
        const std::vector<std::string> strony = testy::Podziel(wartosc, '|');
        const TWlasny<TPole> a = NowePole(w[1], TWariant(Utf16ZUtf8(strony[0])));
        const TWlasny<TPole> b = NowePole(w[1], TWariant(Utf16ZUtf8(strony[1])));
        const auto rozm = argument.ends_with("any case") ? rlRozmLiterNiewazny : rlRozmLiterWazny;
        if (argument[0] == '-') { // no comparer
            EXPECT_EQ(std::to_string(-b->Porownaj(*a)), w[4]);
            return std::to_string(a->Porownaj(*b));
        }
        const auto locale = static_cast<std::uint32_t>(std::stoul(argument));
        TPorownywaczDanych p(nullptr, nullptr, rpWszystkiePola, rozm, locale, tprRefJakoWskazn);
        EXPECT_EQ(std::to_string(-b->Porownaj(*a, &p)), w[4]);
        if (w[1] != "RawByteString") {
            const std::u16string cecha = Utf16ZUtf8(strony[0]);
            for (const TArgument& ta : {TArgument(cecha), TArgument(PolskiAnsi(cecha)), TArgument::WideString(cecha)})
                EXPECT_EQ(std::to_string(b->PorownajZCecha(ta, rozm, locale)), w[4]); // the feature first
            // Variants: the library's order in every class.
            EXPECT_EQ(b->PorownajZCecha(TWariant(cecha), rozm, locale),
                      PorownajTeksty(cecha, Utf16ZUtf8(strony[1]), rozm, locale));
        }
        return std::to_string(a->Porownaj(*b, &p));
    }
    const TWlasny<TPole> pole = NowePole(w[1], Wariant(wartosc));
    if (operacja == "variant") {
        EXPECT_EQ(Utf8ZUtf16(pole->GetJakoVariant().NazwaTypu()), argument);
        EXPECT_EQ(NowePole(w[1], pole->GetJakoVariant())->Porownaj(*pole), 0); // a field of the class takes it
        return tekst(*pole);
    }
    if (operacja == "bytes") { // the binary form, read back; the text form, read back
        const std::string bajty = strumienie::Zapisz(*pole);
        const TWlasny<TPole> odczytane = NowePole(w[1]);
        strumienie::TOporny strumien(bajty);
        odczytane->WczytajZeStrumienia(strumien, nullptr);
        EXPECT_EQ(strumien.pozycja, bajty.size());
        EXPECT_EQ(strumienie::Zapisz(*odczytane), bajty);
        TZTMemoryStream zapisane;
        pole->ZapiszTekstowo(zapisane, nullptr);
        const std::string forma = strumienie::Zawartosc(zapisane);
        EXPECT_EQ(forma, argument);
        strumienie::TOporny strumienTekstu(forma + " end");
        const TWlasny<TPole> zTekstu = NowePole(w[1]);
        zTekstu->WczytajTekstowo(strumienTekstu, nullptr);
        EXPECT_EQ(strumienie::Zapisz(*zTekstu), bajty);
        return strumienie::Szesnastkowo(bajty);
    }
    const TUstawieniaFormatu ustawienia = UstawieniaPolskie(); // of the caller's
    if (operacja.starts_with("mask"))
        return Utf8ZUtf16(pole->WartWgMaski(w.Tekst(3), operacja == "mask." ? &ustawienia : nullptr));
    if (operacja == "compare") {
        const TWlasny<TPole> drugie = NowePole(w[1], Wariant(argument));
        EXPECT_EQ(std::to_string(-drugie->Porownaj(*pole)), w[4]);
        EXPECT_EQ(pole->Porownaj(*pole), 0);
        return std::to_string(pole->Porownaj(*drugie));
    }
    if (operacja == "feature")
        return std::to_string(pole->PorownajZCecha(testy::Argument(argument), rlRozmLiterWazny, LocaleWin1250));
    throw std::invalid_argument(operacja);
}

TEST(Pola, Tabela) {
    testy::SprawdzTabele("pola.tsv", 4, [](const auto& w) { return Wynik(w[0], w); });
}

TEST(Pola, NoweZeroweIBezLicznika) {
    for (const TKlasa* klasa : kPojedyncze) {
        const TWlasny<TPole> pole = NowePole(klasa);
        const std::string bajty = strumienie::Zapisz(*pole);
        EXPECT_TRUE(pole->MaDefWartosc());
        pole->SetJakoString(JestDaty(klasa) ? u"2015-01-02 02:00" : u"1");
        EXPECT_FALSE(pole->MaDefWartosc());
        EXPECT_EQ(pole->WartWgMaski(u""), pole->GetJakoString());
        pole->ZerujDane();
        EXPECT_EQ(strumienie::Zapisz(*pole), bajty);
        EXPECT_EQ(bajty.find_first_not_of('\0'), bajty.npos);
        EXPECT_EQ(pole->_AddRef(), -1);
        EXPECT_EQ(pole->_Release(), -1);
        void* wynik = pole.get();
        EXPECT_EQ(pole->QueryInterface(Guid("{0B1C2D3E-4F50-4162-8394-A5B6C7D8E9F0}"), &wynik),
                  static_cast<std::int32_t>(0x80004002U));
        EXPECT_EQ(wynik, nullptr);
    }
}

TEST(Pola, PoleInnejKlasyNieWejdzie) {
    for (const TKlasa* a : kPojedyncze)
        for (const TKlasa* b : kPojedyncze) {
            const TWlasny<TPole> pa = NowePole(a);
            const TWlasny<TPole> pb = NowePole(b);
            const bool pasuje = a->kodPola == b->kodPola;
            const bool porownywalne = pasuje || (JestDaty(a) && JestDaty(b));
            EXPECT_EQ(Zglasza<EBladRzutowania>([&] { pa->KopiujDane(*pb); }), !pasuje);
            EXPECT_EQ(Zglasza<EBladRzutowania>([&] { static_cast<void>(pa->Porownaj(*pb)); }), !porownywalne)
                << Utf8ZUtf16(a->nazwa) << Utf8ZUtf16(b->nazwa);
        }
    EXPECT_EQ(Blad([] { Utworz<TPoleByte>()->KopiujDane(*Utworz<TPoleWord>()); }),
              u"obiekt klasy TPoleWord nie jest klasy TPoleByte");
}

TEST(Pola, OsmiobitowePostaci) {
    // The 8-bit form goes through Windows-1250, except of bytes, which are as they are.
    const TWlasny<TPole> napis = NowePole("String", TWariant(u"ąλ"));
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
        const std::u16string znak = strumienie::Znak(kod);
        pole->UstawWartosc(znak);
        kopia->SetJakoString(pole->GetJakoString());
        ASSERT_EQ(kopia->Wartosc(), znak) << std::hex << static_cast<unsigned>(kod);
        kopia->ZerujDane();
        kopia->SetJakoZTAnsiString(pole->GetJakoZTAnsiString());
        ASSERT_EQ(kopia->Wartosc(), znak) << std::hex << static_cast<unsigned>(kod);
    }
}

TEST(Pola, BezPorownywaczaJezykZUstawien) {
    DefZTOKLocaleID = LocaleNiezmienny;
    const TWlasny<TPole> pierwsze = NowePole("String", TWariant(u"Ł"));
    EXPECT_EQ(pierwsze->Porownaj(*NowePole("String", TWariant(u"Ą"))), 1);
    DefZTOKLocaleID = 0;
    EXPECT_EQ(pierwsze->Porownaj(*NowePole("String", TWariant(u"Ą"))), -1);
    const auto wskaznik = Utworz<TPoleWskObiektu>();
    const auto obiekt = Utworz<TObiekt>();
    wskaznik->UstawObiekt(obiekt.get());
    EXPECT_EQ(wskaznik->PorownajZCecha(obiekt.get(), rlRozmLiterWazny, 0), 0);
    EXPECT_EQ(wskaznik->PorownajZCecha(static_cast<TObiektOgolny*>(nullptr), rlRozmLiterWazny, 0),
              reinterpret_cast<std::intptr_t>(obiekt.get()) > 0 ? -1 : 1);
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
}

// What a field class does not write itself names the operation.
TEST(Pola, OperacjeBezTresci) {
    const auto goly = Utworz<TPole>();
    TZTMemoryStream strumien;
    const std::pair<const char16_t*, std::function<void()>> operacje[] = {
        {u"GetJakoVariant", [&] { static_cast<void>(goly->GetJakoVariant()); }},
        {u"SetJakoVariant", [&] { goly->SetJakoVariant(1); }},
        {u"GetJakoString", [&] { static_cast<void>(goly->GetJakoString()); }},
        {u"SetJakoString", [&] { goly->SetJakoString(u"1"); }},
        {u"ZerujDane", [&] { goly->ZerujDane(); }},
        {u"ZapiszWStrumieniu", [&] { goly->ZapiszWStrumieniu(strumien, nullptr); }},
        {u"ZapiszTekstowo", [&] { goly->ZapiszTekstowo(strumien, nullptr); }},
        {u"ZapiszXMLowo", [&] { goly->ZapiszXMLowo(strumien, nullptr); }},
        {u"WczytajXMLowo", [&] { goly->WczytajXMLowo(strumien, nullptr); }},
    };
    for (const auto& [nazwa, dzialanie] : operacje)
        EXPECT_EQ(Blad<EBladAbstrakcyjny>(dzialanie), std::u16string(u"klasa TPole nie ma operacji ") + nazwa);
    goly->WczytajZeStrumienia(strumien, nullptr); // nothing
    goly->WczytajTekstowo(strumien, nullptr);
    EXPECT_EQ(goly->Porownaj(*Utworz<TPoleByte>()), 0);
    EXPECT_EQ(Blad<EBladKonwersji>([&] { goly->Przypisz(*Utworz<TPoleByte>()); }),
              u"obiekt klasy TPoleByte nie jest klasy TPole");
}

// Addresses as numbers, and the order of targets; the rest of what references do is in the tests of references.
TEST(Pola, PolaWskazujace) {
    auto a = Utworz<TObiekt>();
    auto b = Utworz<TObiekt>();
    const auto ref = Utworz<TPoleRefObiektu>();
    const auto drugie = Utworz<TPoleRefObiektu>();
    const auto wsk = Utworz<TPoleWskObiektu>();
    ref->UstawObiekt(a.get());
    EXPECT_EQ(drugie->Porownaj(*ref), -1); // null first
    EXPECT_EQ(ref->Porownaj(*drugie), 1);
    drugie->UstawObiekt(b.get());
    EXPECT_EQ(ref->Porownaj(*drugie), 0); // equal objects
    b->UstawPole(0, NowePole("String", TWariant(u"x")).Oddaj(), true);
    b->UstawNiepuste(0, true);
    EXPECT_EQ(ref->Porownaj(*drugie), -1);
    EXPECT_EQ(wsk->WartWgMaski(u""), u"");
    for (const bool tekstem : {false, true}) {
        if (tekstem)
            wsk->SetJakoString(ref->GetJakoString());
        else
            wsk->SetJakoVariant(ref->GetJakoVariant());
        EXPECT_EQ(wsk->Obiekt(), a.get());
        EXPECT_FALSE(a->MaRefOd(wsk.get()));
        EXPECT_EQ(wsk->GetJakoVariant().JakoInt64(), reinterpret_cast<std::intptr_t>(a.get()));
        wsk->ZerujDane();
        EXPECT_TRUE(wsk->MaDefWartosc());
    }
    drugie->SetJakoVariant(ref->GetJakoVariant()); // leaves its target, registers with none
    EXPECT_FALSE(b->MaJakiesRef() || a->MaRefOd(drugie.get()));
    drugie->SetJakoVariant(0);
    EXPECT_TRUE(Zglasza<EBladRzutowania>([&] { ref->KopiujDane(*Utworz<TPoleInteger>()); }));
    EXPECT_TRUE(Zglasza<EBladRzutowania>([&] { static_cast<void>(ref->Porownaj(*Utworz<TPoleInteger>())); }));
}

} // namespace
