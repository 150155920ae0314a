#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "tests/Bledy.h"
#include "tests/StrumienieTestowe.h"
#include "ztok/persist/TBuforZapisu.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/TStrumienPlikowy.h"
#include "ztok/util/Prostehaszowanie.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {
namespace {

using testy::Blad;

constexpr std::size_t Porcje[] = {1, 2, 3, 5, 7, 13, 1024, 70000};

// Runs of the tests beside each other have files of their own.
std::u16string PlikProbny(const char* nazwa) {
    static const std::string przebieg = std::to_string(std::random_device()());
    return Utf16ZUtf8(testing::TempDir()) + u"ztok_próba_ł_" + Utf16ZUtf8(przebieg + nazwa);
}

std::string Bajty(std::mt19937& los, std::size_t ile) {
    std::string bajty(ile, '\0');
    for (char& b : bajty)
        b = static_cast<char>(los());
    return bajty;
}

// A stream and what it must hold.
struct TModel {
    std::string dane;
    std::size_t pozycja = 0;

    void Pisz(const std::string& bajty) {
        dane.resize(std::max(dane.size(), pozycja + bajty.size()));
        std::copy(bajty.begin(), bajty.end(), dane.begin() + static_cast<std::ptrdiff_t>(pozycja));
        pozycja += bajty.size();
    }
    [[nodiscard]] std::size_t Zostalo() const { return dane.size() - std::min(pozycja, dane.size()); }
};

void Krok(TStrumien& s, TModel& m, std::mt19937& los) {
    const std::size_t porcja = Porcje[los() % std::size(Porcje)];
    switch (los() % 9) {
    case 0:
    case 1: {
        const std::string bajty = Bajty(los, porcja);
        s.WriteBuffer(bajty.data(), bajty.size());
        m.Pisz(bajty);
        break;
    }
    case 2:
        if (std::uint8_t* miejsce = s.MiejsceZapisu(porcja); miejsce != nullptr) {
            const std::string bajty = Bajty(los, porcja);
            std::copy(bajty.begin(), bajty.end(), miejsce);
            s.Zapisano(bajty.size());
            m.Pisz(bajty);
        }
        break;
    case 3:
    case 4: {
        std::string bajty(porcja, '\0');
        const std::size_t ile = std::min(porcja, m.Zostalo());
        if (ile == porcja)
            s.ReadBuffer(bajty.data(), porcja);
        else
            EXPECT_THROW(s.ReadBuffer(bajty.data(), porcja), EBladOdczytu);
        EXPECT_EQ(bajty.substr(0, ile), m.dane.substr(std::min(m.pozycja, m.dane.size()), ile));
        m.pozycja += ile;
        break;
    }
    case 5: {
        const auto okno = s.Okno();
        ASSERT_LE(okno.size(), m.Zostalo());
        EXPECT_TRUE(std::equal(okno.begin(), okno.end(), m.dane.begin() + static_cast<std::ptrdiff_t>(m.pozycja),
                               [](std::uint8_t a, char b) { return a == static_cast<std::uint8_t>(b); }) ||
                    okno.empty());
        break;
    }
    case 6:
        if (porcja <= m.Zostalo()) {
            s.Pomin(static_cast<std::int64_t>(porcja));
            m.pozycja += porcja;
        } else {
            EXPECT_THROW(s.Pomin(static_cast<std::int64_t>(porcja)), EBladOdczytu);
        }
        break;
    case 7: {
        const std::size_t cel = los() % (m.dane.size() + 10);
        const auto skad = static_cast<ESeek>(los() % 3);
        const std::size_t baza = skad == ESeek::Poczatek ? 0 : skad == ESeek::Biezaca ? m.pozycja : m.dane.size();
        EXPECT_EQ(s.Seek(static_cast<std::int64_t>(cel) - static_cast<std::int64_t>(baza), skad),
                  static_cast<std::int64_t>(cel));
        m.pozycja = cel;
        break;
    }
    default:
        if (los() % 4 == 0) {
            m.dane.resize(los() % (m.dane.size() + 100));
            m.pozycja = std::min(m.pozycja, m.dane.size());
            s.SetSize(static_cast<std::int64_t>(m.dane.size()));
        }
    }
    // Asking must change nothing, nor must not asking.
    if (los() % 2 == 0) {
        EXPECT_EQ(s.GetSize(), static_cast<std::int64_t>(m.dane.size()));
        EXPECT_EQ(s.GetPosition(), static_cast<std::int64_t>(m.pozycja));
        EXPECT_EQ(s.Pozostalo(), static_cast<std::int64_t>(m.Zostalo()));
        EXPECT_TRUE(s.MozeMiec(s.Pozostalo()));
        EXPECT_FALSE(s.MozeMiec(s.Pozostalo() + 1));
    }
}

void SprawdzZModelem(TStrumien& s, unsigned ziarno) {
    std::mt19937 los(ziarno);
    TModel m;
    for (int i = 0; i < 400 && !testing::Test::HasFailure(); ++i)
        Krok(s, m, los);
    EXPECT_THROW(s.Seek(-1, ESeek::Poczatek), EBladOdczytu);
    std::string wszystko(m.dane.size(), '\0');
    s.Seek(0, ESeek::Poczatek);
    s.ReadBuffer(wszystko.data(), wszystko.size());
    EXPECT_TRUE(wszystko == m.dane);
}

TEST(Strumienie, LosoweDzialaniaZgodneZModelem) {
    for (unsigned ziarno = 1; ziarno <= 20 && !HasFailure(); ++ziarno) {
        SCOPED_TRACE(ziarno);
        TZTMemoryStream pamiec;
        SprawdzZModelem(pamiec, ziarno);
        const std::u16string sciezka = PlikProbny("model");
        TStrumienPlikowy plik(sciezka, ETrybPliku::Tworzenie);
        SprawdzZModelem(plik, ziarno + 1000);
        plik.Zamknij();
        EXPECT_TRUE(UsunPlik(sciezka));
    }
}

// Gives one byte a call, takes a limited number, and remembers what it was given at once.
class TOporny : public strumienie::TOporny {
  public:
    std::vector<std::int64_t> zapisy;
    std::int64_t Write(const void* bufor, std::int64_t ile) override {
        zapisy.push_back(ile);
        return strumienie::TOporny::Write(bufor, ile);
    }
};

TEST(Strumienie, BazaCzytaDoSkutkuAPiszeRaz) {
    TOporny s;
    s.WriteBuffer("abcdef", 6);
    char bufor[4] = {};
    s.ReadBuffer(bufor, 3);
    s.Pomin(1);
    EXPECT_STREQ(bufor, "abc");
    EXPECT_EQ(s.Pozostalo(), -1);
    EXPECT_TRUE(s.MozeMiec(1000));
    EXPECT_THROW(s.ReadBuffer(bufor, 3), EBladOdczytu);
    s.pada = 8;
    EXPECT_THROW(s.WriteBuffer("ghi", 3), EBladZapisu);
    EXPECT_EQ(s.zapisy, (std::vector<std::int64_t>{6, 3}));
    EXPECT_THROW(s.Seek(0, ESeek::Poczatek), EBladAbstrakcyjny);
    EXPECT_THROW(s.SetSize(0), EBladAbstrakcyjny);
}

TEST(Strumienie, PamiecObcaNieRosnieANieWlasnaNieJestZwalniana) {
    std::uint8_t pamiec[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    TZTMemoryStream s;
    s.WriteInt(7);
    s.SetPointer(pamiec, 6);
    EXPECT_EQ(s.GetSize(), 6);
    s.WriteInt(-2);
    EXPECT_EQ(s.Write("xyz", 3), 2);
    EXPECT_EQ(std::vector<std::uint8_t>(pamiec, pamiec + 8),
              (std::vector<std::uint8_t>{0xFE, 0xFF, 0xFF, 0xFF, 'x', 'y', 7, 8}));
    EXPECT_THROW(s.WriteWord(1), EBladZapisu);
    EXPECT_THROW(s.SetSize(7), EBladZapisu);
    s.SetPointer(nullptr, 0);
    s.WriteWord(0x1234);
    EXPECT_EQ(std::vector<std::uint8_t>(s.Zawartosc().begin(), s.Zawartosc().end()),
              (std::vector<std::uint8_t>{0x34, 0x12}));
}

TEST(Strumienie, TekstTylkoDoOdczytu) {
    const std::string tekst("a\0c", 3);
    TZTReadOnlyRawByteStream wskazujacy(tekst);
    TZTReadOnlyRawByteStream wlasny(std::string("a\0c", 3));
    for (TZTMemoryStream* s : {static_cast<TZTMemoryStream*>(&wskazujacy), static_cast<TZTMemoryStream*>(&wlasny)}) {
        const std::u16string niedozwolone = u"niedozwolone użycie Write w TZTReadOnlyRawByteStream";
        EXPECT_EQ(Blad<ZTException>([&] { s->Write("x", 1); }), niedozwolone);
        EXPECT_EQ(Blad<ZTException>([&] { s->WriteBuffer("x", 1); }), niedozwolone);
        EXPECT_EQ(Blad<ZTException>([&] { s->WriteWord(1); }), niedozwolone);
        EXPECT_EQ(Blad<ZTException>([&] { s->SetSize(1); }), u"niedozwolone użycie SetSize w TZTReadOnlyRawByteStream");
        std::string odczytany(3, '?');
        s->ReadBuffer(odczytany.data(), 3);
        EXPECT_EQ(odczytany, tekst);
        EXPECT_THROW(s->ReadBuffer(odczytany.data(), 1), EBladOdczytu);
    }
    TZTReadOnlyRawByteStream pusty{std::string()};
    EXPECT_EQ(pusty.GetSize(), 0);
    char znak = 0;
    EXPECT_EQ(pusty.Read(&znak, 1), 0);
}

TEST(Strumienie, BuforPrzekazujeWgRegulAKazdyRozmiarDajeTeSameBajty) {
    TOporny cel;
    {
        TBuforZapisu bufor(cel, 8);
        for (const std::int64_t ile : {3, 3, 3, 5, 9, 8, 1})
            EXPECT_EQ(bufor.Write("123456789", ile), ile);
        // 3+3 | 3+5 fill the buffer | 9 goes directly | 8 fits exactly | 1 begins anew
        EXPECT_EQ(cel.zapisy, (std::vector<std::int64_t>{6, 8, 9, 8}));
        EXPECT_EQ(Blad<ZTException>([&] { bufor.Read(nullptr, 1); }), u"Unexpected call to Read method");
        EXPECT_EQ(Blad<ZTException>([&] { bufor.Seek(0, ESeek::Biezaca); }), u"Unexpected call to Seek method");
        bufor.Flush();
        bufor.Flush();
        EXPECT_EQ(cel.zapisy.size(), 5U);
    }
    EXPECT_EQ(cel.zapisy.size(), 5U);
    for (const std::size_t rozmiar : {0U, 1U, 2U, 7U, 1000U, 0x10000U}) {
        std::mt19937 los(static_cast<unsigned>(rozmiar));
        TZTMemoryStream pamiec;
        std::string dane;
        {
            TBuforZapisu bufor(pamiec, rozmiar);
            for (int i = 0; i < 200; ++i) {
                const std::string bajty = Bajty(los, Porcje[los() % std::size(Porcje)]);
                bufor.WriteBuffer(bajty.data(), bajty.size());
                dane += bajty;
            }
        }
        const auto zawartosc = pamiec.Zawartosc();
        EXPECT_TRUE(std::string(zawartosc.begin(), zawartosc.end()) == dane) << rozmiar;
    }
}

TEST(Strumienie, BladCeluRazZglaszanyNigdyNieZostawiaDziury) {
    const std::string dane = "0123456789abcdefghij";
    for (std::size_t przyjmie = 0; przyjmie < dane.size(); ++przyjmie) {
        for (const std::size_t porcja : {1U, 3U, 5U}) {
            TOporny cel;
            cel.pada = przyjmie;
            const testy::TPowiadomienia powiadomienia;
            bool zgloszony = false;
            {
                TBuforZapisu bufor(cel, 4);
                for (std::size_t i = 0; i < dane.size(); i += porcja) {
                    try {
                        bufor.WriteBuffer(dane.data() + i, std::min(porcja, dane.size() - i));
                        EXPECT_FALSE(zgloszony);
                    } catch (const EBladZapisu&) {
                        zgloszony = true;
                        cel.pada = SIZE_MAX;
                    }
                }
            }
            EXPECT_NE(zgloszony, testy::TPowiadomienia::Tresci().size() == 1);
            EXPECT_EQ(cel.dane, dane.substr(0, przyjmie));
        }
    }
}

TEST(Strumienie, PlikTrybyIBledy) {
    const std::u16string sciezka = PlikProbny("tryby");
    UsunPlik(sciezka);
    EXPECT_THROW(TStrumienPlikowy(sciezka, ETrybPliku::Odczyt), EBladSystemu);
    EXPECT_THROW(TStrumienPlikowy(sciezka, ETrybPliku::OdczytZapis), EBladSystemu);
    TStrumienPlikowy(sciezka, ETrybPliku::Nowy).WriteBuffer("abc", 3);
    EXPECT_THROW(TStrumienPlikowy(sciezka, ETrybPliku::Nowy), EBladSystemu);
    {
        TStrumienPlikowy s(sciezka, ETrybPliku::OdczytZapis);
        s.Seek(0, ESeek::Koniec);
        s.WriteBuffer("def", 3);
        s.Utrwal();
        s.Zamknij();
        char znak = 0;
        EXPECT_THROW(s.Read(&znak, 1), EBladSystemu);
        EXPECT_THROW(s.Write("x", 1), EBladSystemu);
    }
    {
        TStrumienPlikowy s(sciezka, ETrybPliku::Odczyt);
        EXPECT_THROW(s.WriteBuffer("x", 1), EBladZapisu);
        char tekst[7] = {};
        s.ReadBuffer(tekst, 6);
        EXPECT_STREQ(tekst, "abcdef");
    }
    const std::u16string nowa = PlikProbny("nowa");
    TStrumienPlikowy(nowa, ETrybPliku::Tworzenie).WriteBuffer("nowa", 4);
    PrzeniesPlik(nowa, sciezka);
    EXPECT_EQ(TStrumienPlikowy(sciezka, ETrybPliku::Odczyt).GetSize(), 4);
    EXPECT_FALSE(UsunPlik(nowa));
    EXPECT_NE(Blad<EBladSystemu>([&] { PrzeniesPlik(nowa, sciezka); }).find(sciezka), std::u16string::npos);
    EXPECT_TRUE(UsunPlik(sciezka));
}

// Beyond what 32 bits hold; the file is sparse.
TEST(Strumienie, PlikPonadCzteryGigabajty) {
    const std::u16string sciezka = PlikProbny("duzy");
    {
        TStrumienPlikowy s(sciezka, ETrybPliku::Tworzenie);
        constexpr std::int64_t Daleko = (std::int64_t{5} << 30) + 3;
        s.Seek(Daleko, ESeek::Poczatek);
        s.WriteBuffer("koniec", 6);
        EXPECT_EQ(s.GetSize(), Daleko + 6);
        s.Seek(-6, ESeek::Koniec);
        char tekst[7] = {};
        s.ReadBuffer(tekst, 6);
        EXPECT_STREQ(tekst, "koniec");
        EXPECT_EQ(s.GetPosition(), Daleko + 6);
    }
    UsunPlik(sciezka);
}

} // namespace
} // namespace ztok
