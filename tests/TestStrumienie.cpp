#include "tests/Testy.h"

#include <filesystem>

namespace ztok {
namespace {

using testy::Blad;

constexpr std::size_t Porcje[] = {1, 2, 3, 5, 7, 13, 1024, 70000};

// Runs of the tests beside each other have files of their own.
std::u16string PlikProbny(const char* nazwa) {
    static const std::string przebieg = std::to_string(std::random_device()());
    return Utf16ZUtf8(testing::TempDir()) + u"ztok_próba_ł_" + Utf16ZUtf8(przebieg + nazwa);
}

// What a stream must hold, and where it stands.
struct TModel {
    std::string dane;
    std::size_t pozycja = 0;

    void Pisz(const std::string& bajty) {
        dane.resize(std::max(dane.size(), pozycja));
        dane.replace(pozycja, bajty.size(), bajty);
        pozycja += bajty.size();
    }
    [[nodiscard]] std::string Dalej() const { return dane.substr(std::min(pozycja, dane.size())); }
};

std::u16string Niepelny(const TStrumien& s, std::int64_t ile, std::int64_t zIlu, bool zapis = false) {
    return zapis ? Formatuj(u"błąd zapisu do strumienia %s: zapisano %d z %d bajtów", {s.NazwaKlasy(), ile, zIlu})
                 : Formatuj(u"błąd odczytu ze strumienia %s: odczytano %d z %d bajtów", {s.NazwaKlasy(), ile, zIlu});
}

// One random action with both.
void Krok(TStrumien& s, TModel& m, std::mt19937& los) {
    const std::size_t porcja = Porcje[los() % std::size(Porcje)];
    const std::string dalej = m.Dalej();
    const std::size_t ile = std::min(porcja, dalej.size());
    const auto co = los() % 9;
    if (co < 3) {
        const std::string bajty = strumienie::LosoweBajty(los, porcja);
        if (std::uint8_t* miejsce = co == 0 ? s.MiejsceZapisu(porcja) : nullptr; miejsce != nullptr) {
            std::copy(bajty.begin(), bajty.end(), miejsce);
            s.Zapisano(porcja);
        } else {
            s.WriteBuffer(bajty.data(), porcja);
        }
        m.Pisz(bajty);
    } else if (co < 5) {
        std::string bajty(porcja, '\0');
        EXPECT_EQ(Blad<EBladOdczytu>([&] { s.ReadBuffer(bajty.data(), porcja); }),
                  ile == porcja ? u"(no error)"
                                : Niepelny(s, static_cast<std::int64_t>(ile), static_cast<std::int64_t>(porcja)));
        EXPECT_TRUE(bajty.starts_with(dalej.substr(0, ile)));
        m.pozycja += ile;
    } else if (co == 5) {
        const auto okno = s.Okno();
        EXPECT_TRUE(dalej.starts_with(std::string(okno.begin(), okno.end())));
    } else if (co == 6) {
        EXPECT_EQ(Blad<EBladOdczytu>([&] { s.Pomin(static_cast<std::int64_t>(porcja)); }),
                  ile == porcja ? u"(no error)" : Niepelny(s, 0, static_cast<std::int64_t>(porcja)));
        m.pozycja += ile == porcja ? porcja : 0;
    } else if (co == 7) {
        const std::size_t cel = los() % (m.dane.size() + 10);
        const std::size_t bazy[] = {0, m.pozycja, m.dane.size()};
        const auto skad = los() % 3;
        const auto oIle = static_cast<std::int64_t>(cel) - static_cast<std::int64_t>(bazy[skad]);
        EXPECT_EQ(s.Seek(oIle, static_cast<ESeek>(skad)), static_cast<std::int64_t>(cel));
        m.pozycja = cel;
    } else if (los() % 4 == 0) {
        m.dane.resize(los() % (m.dane.size() + 100));
        m.pozycja = std::min(m.pozycja, m.dane.size());
        s.SetSize(static_cast<std::int64_t>(m.dane.size()));
    }
    // Asking must change nothing, nor must not asking.
    if (los() % 2 == 0) {
        EXPECT_EQ(s.GetSize(), static_cast<std::int64_t>(m.dane.size()));
        EXPECT_EQ(s.GetPosition(), static_cast<std::int64_t>(m.pozycja));
        EXPECT_EQ(s.Pozostalo(), static_cast<std::int64_t>(m.Dalej().size()));
        EXPECT_TRUE(s.MozeMiec(s.Pozostalo()) && !s.MozeMiec(s.Pozostalo() + 1));
    }
}

void SprawdzZModelem(TStrumien& s, unsigned ziarno) {
    std::mt19937 los(ziarno);
    TModel m;
    for (int i = 0; i < 400 && !testing::Test::HasFailure(); ++i)
        Krok(s, m, los);
    const std::u16string nazwa(s.NazwaKlasy());
    EXPECT_EQ(Blad<EBladOdczytu>([&] { s.Seek(-1, ESeek::Poczatek); }),
              u"niedozwolona pozycja -1 w strumieniu " + nazwa);
    EXPECT_EQ(Blad<EBladOdczytu>([&] { s.Seek(INT64_MIN, ESeek::Biezaca); }),
              u"niedozwolona pozycja -9223372036854775808 w strumieniu " + nazwa);
    EXPECT_EQ(Blad<EBladZapisu>([&] { s.SetSize(-1); }), u"niedozwolony rozmiar -1 strumienia " + nazwa);
    EXPECT_EQ(Blad<EBladOdczytu>([&] { s.Pomin(-1); }), Niepelny(s, 0, -1));
    const std::int64_t rozmiar = s.GetSize();
    s.Seek(rozmiar + 5, ESeek::Poczatek);
    char znak = 'x';
    for (const std::int64_t ile : {0, -1}) { // nothing, wherever the stream stands
        EXPECT_EQ(s.Write(&znak, ile), 0);
        EXPECT_EQ(s.Read(&znak, ile), 0);
    }
    EXPECT_EQ(s.Read(&znak, 1), 0);
    EXPECT_EQ(s.GetSize(), rozmiar);
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
    EXPECT_EQ(Blad<EBladOdczytu>([&] { s.ReadBuffer(bufor, 3); }), Niepelny(s, 2, 3));
    EXPECT_EQ(Blad<EBladOdczytu>([&] { s.Pomin(1); }), Niepelny(s, 0, 1));
    s.pozycja = 1;
    EXPECT_EQ(Blad<EBladOdczytu>([&] { s.Pomin(2000); }), Niepelny(s, 5, 2000));
    s.pada = 8;
    EXPECT_EQ(Blad<EBladZapisu>([&] { s.WriteBuffer("ghi", 3); }), Niepelny(s, 2, 3, true));
    s.WriteBuffer("", 0); // asks for nothing
    EXPECT_EQ(s.zapisy, (std::vector<std::int64_t>{6, 3}));
    const std::u16string nieMa = u"klasa TStrumien nie ma operacji ";
    EXPECT_EQ(Blad<EBladAbstrakcyjny>([&] { s.Seek(0, ESeek::Poczatek); }), nieMa + u"Seek");
    EXPECT_EQ(Blad<EBladAbstrakcyjny>([&] { s.SetSize(0); }), nieMa + u"SetSize");
    s.pada = SIZE_MAX;
    s.dane.assign(3000, 'x');
    s.pozycja = 0;
    s.Pomin(2999);
    EXPECT_EQ(s.pozycja, 2999U);
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
    EXPECT_EQ(strumienie::Zawartosc(s), "\x34\x12");
}

TEST(Strumienie, TekstTylkoDoOdczytu) {
    for (const std::string& tekst : {std::string("a\0c", 3), std::string()}) {
        TZTReadOnlyRawByteStream wskazujacy(tekst), wlasny(std::string{tekst});
        for (TZTMemoryStream* s : {&wskazujacy, &wlasny}) {
            const std::u16string klasa = u" w TZTReadOnlyRawByteStream";
            EXPECT_EQ(Blad<ZTException>([&] { s->Write("x", 1); }), u"niedozwolone użycie Write" + klasa);
            EXPECT_EQ(Blad<ZTException>([&] { s->WriteBuffer("x", 1); }), u"niedozwolone użycie Write" + klasa);
            EXPECT_EQ(Blad<ZTException>([&] { s->WriteWord(1); }), u"niedozwolone użycie Write" + klasa);
            EXPECT_EQ(Blad<ZTException>([&] { s->SetSize(1); }), u"niedozwolone użycie SetSize" + klasa);
            std::string odczytany(tekst.size(), '?');
            s->ReadBuffer(odczytany.data(), tekst.size());
            EXPECT_EQ(odczytany, tekst);
            EXPECT_EQ(Blad<EBladOdczytu>([&] { s->ReadBuffer(odczytany.data(), 1); }), Niepelny(*s, 0, 1));
        }
    }
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
                const std::string bajty = strumienie::LosoweBajty(los, Porcje[los() % std::size(Porcje)]);
                bufor.WriteBuffer(bajty.data(), bajty.size());
                dane += bajty;
            }
        }
        EXPECT_TRUE(strumienie::Zawartosc(pamiec) == dane) << rozmiar;
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
            for (const std::u16string& tresc : testy::TPowiadomienia::Tresci())
                EXPECT_TRUE(tresc.starts_with(u"błąd zapisu do strumienia TStrumien: zapisano ")) << Utf8ZUtf16(tresc);
            EXPECT_EQ(cel.dane, dane.substr(0, przyjmie));
        }
    }
}

// One failure, one message: an error under way is the one that counts.
TEST(Strumienie, BuforMilczyGdyTrwaInnyBlad) {
    const testy::TPowiadomienia powiadomienia;
    TOporny cel;
    cel.pada = 0;
    EXPECT_EQ(Blad<EBladAsercji>([&] {
                  TBuforZapisu bufor(cel, 8);
                  bufor.WriteBuffer("x", 1);
                  throw EBladAsercji(u"inny");
              }),
              u"inny");
    EXPECT_TRUE(testy::TPowiadomienia::Tresci().empty());
    {
        TBuforZapisu bufor(cel, 2);
        bufor.WriteBuffer("ab", 2);
        EXPECT_EQ(bufor.Write("x", -1), 0);
        EXPECT_EQ(Blad<EBladZapisu>([&] { bufor.Flush(); }), Niepelny(cel, 0, 2, true));
        EXPECT_EQ(Blad<EBladZapisu>([&] { bufor.Flush(); }), Niepelny(cel, 0, 0, true));
    }
    EXPECT_TRUE(testy::TPowiadomienia::Tresci().empty()); // it was told
}

// A device that takes nothing, where the system has one.
TEST(Strumienie, PelnyDyskJestZglaszanyRaz) {
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "no /dev/full";
    const testy::TPowiadomienia powiadomienia;
    {
        TStrumienPlikowy plik(u"/dev/full", ETrybPliku::OdczytZapis);
        plik.WriteBuffer("abc", 3);
        const std::u16string blad = Blad<EBladSystemu>([&] { plik.Flush(); });
        EXPECT_TRUE(blad.starts_with(u"/dev/full: ") && blad.ends_with(u" (kod 28)")) << Utf8ZUtf16(blad);
        plik.Flush(); // nothing is written twice
        EXPECT_EQ(Blad<EBladSystemu>([&] { plik.WriteBuffer(std::string(100000, 'x').data(), 100000); }), blad);
        EXPECT_TRUE(testy::TPowiadomienia::Tresci().empty());
        plik.WriteBuffer("abc", 3);
    }
    EXPECT_EQ(testy::TPowiadomienia::Tresci().size(), 1U);
}

TEST(Strumienie, PlikTrybyIBledy) {
    const std::u16string sciezka = PlikProbny("tryby"), nowa = PlikProbny("nowa");
    UsunPlik(sciezka);
    EXPECT_THROW(TStrumienPlikowy(sciezka, ETrybPliku::Odczyt), EBladSystemu);
    EXPECT_THROW(TStrumienPlikowy(sciezka + u'\0' + u".inny", ETrybPliku::Tworzenie), EBladSystemu); // not a prefix
    EXPECT_THROW(TStrumienPlikowy(sciezka, ETrybPliku::OdczytZapis), EBladSystemu);
    TStrumienPlikowy(sciezka, ETrybPliku::Nowy).WriteBuffer("abc", 3);
    EXPECT_THROW(TStrumienPlikowy(sciezka, ETrybPliku::Nowy), EBladSystemu);
    {
        TStrumienPlikowy s(sciezka, ETrybPliku::OdczytZapis);
        s.Seek(0, ESeek::Koniec);
        s.WriteBuffer("def", 3);
        s.Utrwal();
        s.Zamknij();
        s.Zamknij();
        std::string bufor(100000, 'x');
        for (const std::int64_t ile : {1, 100000}) {
            EXPECT_THROW(s.Read(bufor.data(), ile), EBladSystemu);
            EXPECT_THROW(s.Write(bufor.data(), ile), EBladSystemu);
        }
        EXPECT_EQ(Blad<EBladSystemu>([&] { s.Read(bufor.data(), 1); }), u"plik " + sciezka + u" jest zamknięty");
    }
    char tekst[7] = {};
    {
        TStrumienPlikowy s(sciezka, ETrybPliku::Odczyt);
        EXPECT_EQ(Blad<EBladZapisu>([&] { s.WriteBuffer("x", 1); }), Niepelny(s, 0, 1, true));
        s.ReadBuffer(tekst, 6);
        EXPECT_STREQ(tekst, "abcdef");
    }
    constexpr std::int64_t Daleko = (std::int64_t{5} << 30) + 3; // beyond what 32 bits hold; the file is sparse
    {
        TStrumienPlikowy s(nowa, ETrybPliku::Tworzenie);
        s.Seek(Daleko, ESeek::Poczatek);
        s.WriteBuffer("koniec", 6);
        EXPECT_EQ(s.GetSize(), Daleko + 6);
        s.Seek(-6, ESeek::Koniec);
        s.ReadBuffer(tekst, 6);
        EXPECT_STREQ(tekst, "koniec");
        EXPECT_EQ(s.GetPosition(), Daleko + 6);
    }
    PrzeniesPlik(nowa, sciezka);
    EXPECT_EQ(TStrumienPlikowy(sciezka, ETrybPliku::Odczyt).GetSize(), Daleko + 6);
    EXPECT_FALSE(UsunPlik(nowa));
    EXPECT_NE(Blad<EBladSystemu>([&] { PrzeniesPlik(nowa, sciezka); }).find(sciezka), std::u16string::npos);
    EXPECT_TRUE(UsunPlik(sciezka));
}

} // namespace
} // namespace ztok
