#include <gtest/gtest.h>

#include <bit>
#include <ctime>
#include <random>
#include <tuple>

#include "Bledy.h"
#include "StrumienieTestowe.h"
#include "TabeleTestow.h"
#include "platforma/Przydzialy.h"
#include "platforma/SystemTestowy.h"
#include "ztok/fields/Konwersje.h"
#include "ztok/fields/WyjatkiModelu.h"
#include "ztok/persist/TZTParser.h"
#include "ztok/platform/Kodowania.h"

using namespace ztok;
using namespace std::string_literals;
using strumienie::TOporny;
using testy::Blad;

namespace {

// Sets the size of the first buffer for a scope.
class TRozmiarBufora {
  public:
    explicit TRozmiarBufora(int rozmiar) : poprzedni_(ParseBufSize) { ParseBufSize = rozmiar; }
    TRozmiarBufora(const TRozmiarBufora&) = delete;
    TRozmiarBufora& operator=(const TRozmiarBufora&) = delete;
    ~TRozmiarBufora() { ParseBufSize = poprzedni_; }

  private:
    std::int32_t poprzedni_;
};

// Runs the action with every small buffer and the usual one, each with reads of one byte and of all at once.
template <class F> void KazdyBufor(F dzialanie) {
    for (int rozmiar = 0; rozmiar <= 65; ++rozmiar)
        for (const std::int64_t porcja : {std::int64_t{1}, std::int64_t{7}, INT64_MAX}) {
            const TRozmiarBufora bufor(rozmiar == 65 ? 131072 : rozmiar);
            SCOPED_TRACE(testing::Message() << "buffer " << ParseBufSize << ", " << porcja << " bytes a read");
            dzialanie(porcja);
        }
}

// A token as "kind text@line:column" and, where it is not the same, the lines met at its end.
std::string Opis(int rodzaj, std::string_view tekst, std::int64_t linia, std::int64_t kolumna, std::int64_t linii) {
    std::string opis =
        std::to_string(rodzaj) + ' ' + std::string(tekst) + '@' + std::to_string(linia) + ':' + std::to_string(kolumna);
    return linii == linia ? opis : opis + '-' + std::to_string(linii);
}

// All tokens of the bytes, at last the end or the error.
std::vector<std::string> Tokeny(const std::string& bajty, bool xml, std::int64_t porcja) {
    std::vector<std::string> tokeny;
    TOporny strumien(bajty);
    strumien.porcja = porcja;
    try {
        TZTParser parser(strumien);
        parser.SetTrybXML(xml);
        for (;; parser.NextToken()) {
            EXPECT_EQ(parser.TokenString(), parser.TrescTokenu());
            const std::int64_t linii = parser.SourceLine();
            tokeny.push_back(
                Opis(parser.Token(), parser.TrescTokenu(), parser.LiniaTokenu(), parser.KolumnaTokenu(), linii));
            if (parser.Token() == TZTParser::Koniec)
                break;
            if (parser.Token() != TZTParser::Tekst && parser.Token() != TZTParser::TekstCudzyslow) {
                EXPECT_EQ(parser.TrescTokenu(),
                          bajty.substr(static_cast<std::size_t>(parser.SourcePos()), parser.TrescTokenu().size()));
            }
        }
    } catch (const EZTParserError& e) {
        tokeny.push_back(Utf8ZUtf16(e.Komunikat()));
        EXPECT_TRUE(e.Komunikat().ends_with(
            Utf16ZUtf8(" w linii " + std::to_string(e.Linia()) + " na pozycji " + std::to_string(e.Kolumna()))));
    }
    return tokeny;
}

std::vector<std::string> Tokeny(const std::string& bajty, bool xml) { return Tokeny(bajty, xml, INT64_MAX); }

// What the tokens must be, told by the rules alone: the whole input at hand, byte after byte.
class TModel {
  public:
    explicit TModel(std::string_view bajty) : s_(bajty) {}

    std::vector<std::string> Tokeny(bool xml) {
        std::vector<std::string> tokeny;
        int rodzaj = -1;
        for (bool pierwszy = true; rodzaj != 0; pierwszy = false) {
            const int poprzedni = rodzaj;
            while (i_ < s_.size() && Bajt() <= 32)
                if (s_[i_++] == '\n')
                    Lf();
            const std::size_t od = i_;
            const std::int64_t linia = linia_;
            const std::size_t lf = lf_;
            std::string tekst;
            try {
                rodzaj = Token(xml && !pierwszy, poprzedni == '>', tekst);
            } catch (const char* blad) {
                tokeny.push_back(blad + (" w linii " + std::to_string(linia)) + " na pozycji " +
                                 std::to_string(od - lf));
                return tokeny;
            }
            tokeny.push_back(Opis(rodzaj, tekst, linia, static_cast<std::int64_t>(od - lf), linia_));
        }
        return tokeny;
    }

  private:
    int Bajt() const { return i_ < s_.size() ? static_cast<unsigned char>(s_[i_]) : -1; }
    void Lf() {
        ++linia_;
        lf_ = i_ - 1;
    }
    static bool Litera(int c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_'; }
    static bool Cyfra(int c) { return c >= '0' && c <= '9'; }
    static bool Obcy(int c) { return c >= 0x80 && c <= 0xFD; }
    template <class F> void Bierz(std::string& tekst, F nalezy) {
        while (Bajt() >= 0 && nalezy(Bajt()))
            tekst += s_[i_++];
    }
    static bool Wsrod(int c, std::string_view znaki) { return znaki.find(static_cast<char>(c)) != znaki.npos; }

    int Token(bool xml, bool poNawiasie, std::string& tekst) {
        const int c = Bajt();
        if (c < 0)
            return 0;
        if (!xml && Wsrod(c, "'\"#"))
            return Napis(tekst);
        if (xml && c == '"')
            return NapisXML(poNawiasie, tekst);
        tekst += s_[i_++];
        if (Litera(c) || Obcy(c)) {
            Bierz(tekst, [&](int z) { return Litera(z) || Cyfra(z) || (xml && (Obcy(z) || Wsrod(z, "-.:"))); });
            return 1;
        }
        if (c == '$') {
            Bierz(tekst, [](int z) { return Wsrod(z, "0123456789ABCDEFabcdef"); });
            return 3;
        }
        if (!Cyfra(c) && (c != '-' || !Cyfra(Bajt())))
            return c;
        Bierz(tekst, Cyfra);
        if (Bajt() < 0 || !Wsrod(Bajt(), xml ? ".Ee," : ".Ee"))
            return 3;
        tekst += s_[i_++];
        Bierz(tekst, [](int z) { return Cyfra(z) || Wsrod(z, "Ee+-"); });
        return 4;
    }

    int Napis(std::string& tekst) {
        int rodzaj = 2;
        for (;;) {
            const int c = Bajt();
            if (c == '#') {
                ++i_;
                std::string cyfry;
                Bierz(cyfry, Cyfra);
                if (cyfry.empty())
                    throw "Nieprawidłowa stała tekstowa";
                int kod = 0;
                for (const char cyfra : cyfry)
                    kod = (kod * 10 + cyfra - '0') % 256;
                tekst += static_cast<char>(kod);
            } else if (c == '\'' || c == '"') {
                for (++i_;; ++i_) {
                    if (Bajt() < 0)
                        throw "Nieoczekiwany koniec pliku";
                    if (Bajt() == '\r' || Bajt() == '\n')
                        throw "Nieprawidłowa stała tekstowa";
                    if (Bajt() == c) {
                        ++i_;
                        if (Bajt() != c)
                            break;
                    }
                    tekst += s_[i_];
                }
                rodzaj = c == '"' ? 5 : 2;
                if (Bajt() == '\'' + '"' - c)
                    tekst += s_[i_++];
            } else {
                return rodzaj;
            }
        }
    }

    int NapisXML(bool tresc, std::string& tekst) {
        if (!tresc)
            ++i_;
        for (;; tekst += s_[i_++]) {
            if (Bajt() < 0)
                throw "Nieoczekiwany koniec pliku";
            if (Bajt() == '<' || (!tresc && Bajt() == '"'))
                break;
            if (Bajt() == '\n') {
                ++linia_;
                lf_ = i_;
            }
        }
        if (Bajt() == '"')
            ++i_;
        return 2;
    }

    std::string_view s_;
    std::size_t i_ = 0;
    std::int64_t linia_ = 1;
    std::size_t lf_ = 0;
};

std::string Linia(const std::vector<std::string>& tokeny) {
    std::string linia;
    for (const std::string& token : tokeny)
        linia += (linia.empty() ? "" : "|") + token;
    return linia;
}

struct TPrzypadek {
    std::string bajty;
    bool xml;
    std::string tokeny;
};

const TPrzypadek przypadki[] = {
    {"", false, "0 @1:0"},
    {" \t\r\n\0\x01 x"s, false, "1 x@2:4|0 @2:5"},
    {"object TAdres\r\n  Numer=-5\r\nend", false,
     "1 object@1:0|1 TAdres@1:7|1 Numer@2:3|61 =@2:8|3 -5@2:9|1 end@3:1|0 @3:4"},
    {"'it''s'", false, "2 it's@1:0|0 @1:7"},
    {"\"\"\"hi\"\"\"", false, "5 \"hi\"@1:0|0 @1:8"},
    {"'a'#13#10'b' #65#66", false, "2 a\r\nb@1:0|2 AB@1:13|0 @1:19"},
    {"'a'\"b", false, "2 a\"@1:0|1 b@1:4|0 @1:5"},
    {"'a'\"\"b\"", false, "5 a\"b@1:0|0 @1:7"},
    {"\"a\"'\"b\"'#39'c'\"", false,
     "2 a'b'\x27"
     "c\"@1:0|0 @1:15"},
    {"''\"\"", false, "Nieoczekiwany koniec pliku w linii 1 na pozycji 0"},
    {"'' \"\"#256#321 #000000000000000000000000000000065", false, "2 @1:0|5 \0A@1:3|2 A@1:14|0 @1:48"s},
    {"\"a\0b\"\0c"s, false, "5 a\0b@1:0|1 c@1:6|0 @1:7"s},
    {"-5 - 5 --5 -", false, "3 -5@1:0|45 -@1:3|3 5@1:5|45 -@1:7|3 -5@1:8|45 -@1:11|0 @1:12"},
    {"1e5 1.5 1. -1.E+5-E .5 1,5", false,
     "4 1e5@1:0|4 1.5@1:4|4 1.@1:8|4 -1.E+5-E@1:11|46 .@1:20|3 5@1:21|3 1@1:23|44 ,@1:24|3 5@1:25|0 @1:26"},
    {"x 1,5 1,,5", true, "1 x@1:0|4 1,5@1:2|4 1,@1:6|44 ,@1:8|3 5@1:9|0 @1:10"},
    {"$FF$ fg$0aG", false, "3 $FF@1:0|3 $@1:3|1 fg@1:5|3 $0a@1:7|1 G@1:10|0 @1:11"},
    {"a_1-b \xC4\x85z \xFE\xFD", false,
     "1 a_1@1:0|45 -@1:3|1 b@1:4|1 \xC4@1:6|1 \x85z@1:7|254 \xFE@1:10|1 \xFD@1:11|0 @1:12"},
    {"<?a:b-1.\xC4\x85 x=\"a'b\nc\"\n/>'#", true,
     "60 <@1:0|63 ?@1:1|1 a:b-1.\xC4\x85@1:2|1 x@1:11|61 =@1:12|2 a'b\nc@1:13-2|47 /@3:1|62 >@3:2|39 '@3:3|35 "
     "#@3:4|0 @3:5"},
    {"<a>\"b\" \"c\n<d e=\"f<", true,
     "60 <@1:0|1 a@1:1|62 >@1:2|2 \"b\" \"c\n@1:3-2|60 <@2:1|1 d@2:2|1 e@2:4|61 =@2:5|2 f@2:6|60 <@2:8|0 @2:9"},
    // faults
    {"x\n y='abc\r\n'", false, "1 x@1:0|1 y@2:2|61 =@2:3|Nieprawidłowa stała tekstowa w linii 2 na pozycji 4"},
    {"\n\"abc\n\"", false, "Nieprawidłowa stała tekstowa w linii 2 na pozycji 1"},
    {"'a'# 5", false, "Nieprawidłowa stała tekstowa w linii 1 na pozycji 0"},
    {"1\n\n\n  'abc", false, "3 1@1:0|Nieoczekiwany koniec pliku w linii 4 na pozycji 3"},
    {"<\n>\"\n\n", true, "60 <@1:0|62 >@2:1|Nieoczekiwany koniec pliku w linii 2 na pozycji 2"},
    {"<\"a\nb", true, "60 <@1:0|Nieoczekiwany koniec pliku w linii 1 na pozycji 1"},
};

} // namespace

TEST(Tokenizer, Tabela) {
    for (const TPrzypadek& p : przypadki) {
        SCOPED_TRACE(p.bajty);
        EXPECT_EQ(Linia(TModel(p.bajty).Tokeny(p.xml)), p.tokeny);
        KazdyBufor([&](std::int64_t porcja) { EXPECT_EQ(Linia(Tokeny(p.bajty, p.xml, porcja)), p.tokeny); });
    }
}

// Random documents of pieces that matter, among them tokens longer than any small buffer: as the model says, whatever
// the buffer.
TEST(Tokenizer, LosoweDokumenty) {
    // The first ones mostly end in an error, so they come seldom.
    const std::vector<std::string> kawalki = testy::Podziel(
        "'|\"|#|'a\n'|''|\"\"|#10|#39|#0065|'abc'|\"de\"| +\r\n| |\r\n|\n|-|12|-7.5e-3|,|.|$|$1aZ|object|end|x_1|=|<|"
        ">|/|\xC5\x82|\xFE|\x7F|'a text longer than the small buffers are, so that it is kept while they grow'|"
        "a_name_longer_than_a_block_of_bytes|88888888888888888888|                                 |"s +
            '\0',
        '|');
    std::size_t tokenow = 0;
    std::mt19937 los(5);
    for (int i = 0; i < (ZTOK_SANITIZER ? 300 : 3000); ++i) {
        std::string bajty;
        for (auto ile = los() % 40; ile > 0; --ile)
            bajty += kawalki[los() % 8 == 0 ? los() % kawalki.size() : 4 + los() % (kawalki.size() - 4)];
        const bool xml = i % 3 == 0;
        const auto wzor = TModel(bajty).Tokeny(xml);
        ASSERT_EQ(Tokeny(bajty, xml), wzor) << bajty;
        tokenow += wzor.size();
        for (int j = 0; j < 8; ++j) {
            const TRozmiarBufora bufor(static_cast<int>(1 + los() % 64));
            ASSERT_EQ(Tokeny(bajty, xml, static_cast<std::int64_t>(1 + los() % 3 * 20)), wzor)
                << bajty << " buffer " << ParseBufSize;
        }
    }
    EXPECT_GT(tokenow, ZTOK_SANITIZER ? 2000U : 20000U);
}

TEST(Tokenizer, Wartosci) {
    struct TWiersz {
        const char* bajty;
        const char* calkowita;    // empty: an error
        bool jako3, jako4, jako6; // what CheckToken accepts
    };
    static const TWiersz wiersze[] = {
        {"$FF", "255", true, true, true},
        {"-5", "-5", true, true, true},
        {"9223372036854775807", "9223372036854775807", true, true, true},
        {"9223372036854775808", "", true, true, true}, // an integer token, whatever its size
        {"$FFFFFFFFFFFFFFFF", "-1", true, true, true},
        {"$", "", true, true, true},
        {"'2147483647'", "2147483647", true, true, true},
        {"'2147483648'", "2147483648", false, true, true},
        {"'T'", "1", true, true, true},
        {"'N'", "0", true, true, true},
        {"'t'", "", false, true, false},
        {"''", "", false, true, false},
        {"\"5\"", "5", false, false, false}, // kind 5 is no number to CheckToken
        {"N", "0", false, false, false},
        {"1.5", "", false, true, false},
        {"=", "", false, false, false},
    };
    for (const TWiersz& w : wiersze) {
        SCOPED_TRACE(w.bajty);
        TOporny strumien(w.bajty);
        const TZTParser p(strumien);
        if (*w.calkowita != '\0')
            EXPECT_EQ(std::to_string(p.TokenInt()), w.calkowita);
        else
            EXPECT_EQ(Blad<EZTParserError>([&] { static_cast<void>(p.TokenInt()); }),
                      u"Spodziewana liczba całkowita w linii 1 na pozycji 0");
        const std::tuple<std::uint8_t, bool, std::u16string> sprawdzenia[] = {
            {1, p.Token() == 1, u"Spodziewany identyfikator"}, {2, p.Token() == 2, u"Spodziewany tekst"},
            {5, p.Token() == 5, u"Spodziewany tekst"},         {3, w.jako3, u"Spodziewana liczba całkowita"},
            {4, w.jako4, u"Spodziewana liczba ułamkowa"},      {6, w.jako6, u"Spodziewana liczba całkowita"},
            {61, p.Token() == 61, u"Spodziewany znak 3D"}};
        for (const auto& [rodzaj, przyjety, komunikat] : sprawdzenia)
            EXPECT_EQ(Blad<EZTParserError>([&, ktory = rodzaj] { p.CheckToken(ktory); }),
                      przyjety ? u"(no error)" : komunikat + u" w linii 1 na pozycji 0");
    }

    for (const std::string& tekst :
         testy::Podziel("0|-0|12.5|12,5|1e5|1E-320|1e-999|1e999|-||5.|.5|1.2.3| 7 |1 000,5|0x10|NAN|-INF|4\xC4|1e|+1|"
                        "123456789012345678901234567890",
                        '|')) {
        double wzor = 0;
        const auto jest = ZTOKTryStrToFloat(ZWin1250(tekst), wzor);
        if (jest)
            EXPECT_EQ(std::bit_cast<std::uint64_t>(TZTParser::StringToFloat(tekst)),
                      std::bit_cast<std::uint64_t>(wzor));
        else
            EXPECT_EQ(Blad<EBladKonwersji>([&] { static_cast<void>(TZTParser::StringToFloat(tekst)); }),
                      u"'" + ZWin1250(tekst) + u"' nie jest poprawną liczbą zmiennoprzecinkową");
    }
}

TEST(Tokenizer, SymboleIKomunikaty) {
    TOporny strumien("\n  oBJect 'end'");
    TZTParser p(strumien);
    EXPECT_TRUE(p.TokenSymbolIs("Object"));
    EXPECT_FALSE(p.TokenSymbolIs("Objec") || p.TokenSymbolIs("Objecs"));
    EXPECT_EQ(Blad<EZTParserError>([&] {
                  p.CheckTokenSymbol("OBJECT");
                  p.CheckTokenSymbol("end");
              }),
              u"Spodziewany symbol end w linii 2 na pozycji 3");
    EXPECT_EQ(Blad<EZTParserError>([&] { p.ErrorFmt(u"za duża wartość: %d", {300}); }),
              u"za duża wartość: 300 w linii 2 na pozycji 3");
    EXPECT_EQ(p.FormatErrStr(u"x"), u"x w linii 2 na pozycji 3");
    p.NextToken();
    EXPECT_FALSE(p.TokenSymbolIs("end")); // a text
}

TEST(Tokenizer, ZnakiITeksty) {
    KazdyBufor([](std::int64_t porcja) {
        TOporny strumien("<a \0\n\"x\"\r\ny\rz<b>1\r\n2"s);
        strumien.porcja = porcja;
        TZTParser p(strumien);
        EXPECT_EQ(p.NextToken(), TZTParser::Symbol);
        for (const int znak : {32, 32, 10, 34})
            EXPECT_EQ(p.ReadNextChar(), znak);
        EXPECT_EQ(p.TrescTokenu(), "\"");
        EXPECT_EQ(p.SourceLine(), 2);
        EXPECT_EQ(p.KolumnaTokenu(), 1);
        EXPECT_EQ(p.ReadTextUpTo('<'), "x\"\r\ny\rz");
        EXPECT_EQ(p.Token(), TZTParser::Symbol);
        EXPECT_EQ(p.SourceLine(), 4); // by carriage returns
        EXPECT_EQ(p.SourcePos(), 13);
        EXPECT_EQ(p.KolumnaTokenu(), 4); // by line feeds
        EXPECT_EQ(p.TokenString(), "");
        p.SkipTextUpTo('>');
        EXPECT_EQ(p.NextToken(), '>');
        EXPECT_EQ(p.ReadTextUpTo('<'), "1\r\n2");
        EXPECT_EQ(p.ReadTextUpTo('<'), "");
        EXPECT_EQ(p.ReadNextChar(), TZTParser::Koniec);
        EXPECT_EQ(p.NextToken(), TZTParser::Koniec);
        EXPECT_EQ(p.SourceLine(), 5);
    });
}

TEST(Tokenizer, Szesnastkowe) {
    std::string wzor;
    std::string pary;
    for (int i = 0; i < 1500; ++i) {
        wzor += static_cast<char>(i * 7);
        pary += (i % 97 == 0 ? "\r\n  " : "") + strumienie::Szesnastkowo(wzor.substr(wzor.size() - 1));
    }
    struct TWiersz {
        std::string bajty;
        std::string wynik; // the bytes, or the message
    };
    const TWiersz wiersze[] = {
        {"{" + pary + "} x", wzor},
        {"{}", ""},
        {"{ 4a\0 4B }"s, "JK"},
        {"{\n 41 4}", "Nieprawidłowa wartość binarna w linii 2 na pozycji 5"},
        {"{4 1}", "Nieprawidłowa wartość binarna w linii 1 na pozycji 1"},
        {"{41\n", "Nieoczekiwany koniec pliku w linii 2 na pozycji 1"},
        {"{414", "Nieprawidłowa wartość binarna w linii 1 na pozycji 3"},
    };
    KazdyBufor([&](std::int64_t porcja) {
        for (const TWiersz& w : wiersze) {
            TOporny strumien(w.bajty);
            strumien.porcja = porcja;
            TZTParser p(strumien);
            TOporny wynik;
            wynik.porcja = INT64_MAX;
            const std::u16string blad = Blad<EZTParserError>([&] { p.HexToBinary(wynik); });
            EXPECT_EQ(blad == u"(no error)" ? wynik.dane : Utf8ZUtf16(blad), w.wynik);
            EXPECT_EQ(p.Token(), blad == u"(no error)" ? '}' : '{');
        }
    });
}

// Floods: bounded memory and time, the bound to the byte.
TEST(Tokenizer, Zalew) {
    constexpr std::int64_t Maks = 100000;
    struct TWiersz {
        const char* poczatek;
        const char* kawalek;
        bool limit; // ends at the bound of a token
    };
    static const TWiersz wiersze[] = {
        {"", " ", false},    {"", "\n", false}, {"", "\0", false},    {"", "ab ", false},
        {"", "#65 ", false}, {"", "a", true},   {"", "7", true},      {"1.", "5", true},
        {"'", "x", true},    {"", "#65", true}, {"", "'a'", true},    {"'", "''", true},
        {"#", "0", false},   {"$", "F", true},  {"\"", "\"\"", true}, {"", "''\"", true},
    };
    for (const TWiersz& w : wiersze)
        for (const std::int64_t porcja : {std::int64_t{1}, INT64_MAX}) {
            SCOPED_TRACE(testing::Message() << w.poczatek << '(' << w.kawalek << ")* " << porcja);
            const TRozmiarBufora bufor(porcja == 1 ? 1 : 4096);
            TOporny strumien(w.poczatek);
            strumien.porcja = porcja;
            while (strumien.dane.size() < 1U << 20U)
                strumien.dane += *w.kawalek == '\0' ? "\0"s : w.kawalek;
            const std::clock_t start = std::clock(); // of the processor, where the system tells it
            przydzialy::Zacznij();
            bool limit = false;
            try {
                for (TZTParser p(strumien, Maks); p.Token() != TZTParser::Koniec; p.NextToken())
                    EXPECT_LE(p.TrescTokenu().size(), static_cast<std::size_t>(Maks));
            } catch (const EZTParserError& e) {
                limit = e.Komunikat() ==
                        u"przekroczono limit odczytu: rozmiar tekstu w bajtach (100000) w linii 1 na pozycji 0";
            }
            const std::int64_t szczyt = przydzialy::Zakoncz().szczyt;
            EXPECT_EQ(limit, w.limit);
            EXPECT_LT(szczyt, Maks * 5);
            EXPECT_LT(std::clock() - start, (ZTOK_SANITIZER ? 10 : 1) * CLOCKS_PER_SEC);
        }

    for (const std::int64_t ile : {Maks, Maks + 1})
        for (const int rozmiar : {1, 64, 131072}) {
            const TRozmiarBufora bufor(rozmiar);
            const std::string znaki(static_cast<std::size_t>(ile), 'x');
            for (const std::string& bajty : {znaki, znaki + " ", "\"" + znaki + "\" ", "<" + znaki + ">"}) {
                TOporny strumien(bajty);
                strumien.porcja = rozmiar == 1 ? 5000 : INT64_MAX;
                EXPECT_EQ(testy::Zglasza<EZTParserError>([&] {
                              TZTParser p(strumien, Maks);
                              EXPECT_TRUE(bajty[0] != '<' || p.ReadTextUpTo('>') == znaki);
                          }),
                          ile > Maks);
            }
        }
}

TEST(Tokenizer, BladStrumieniaIPamieci) {
    TOporny strumien("object 'abc'");
    strumien.rzuca = true;
    for (strumien.pada = 0; strumien.pada < strumien.dane.size(); ++strumien.pada) {
        strumien.pozycja = 0;
        EXPECT_TRUE(testy::Zglasza<EBladSystemu>([&] {
            for (TZTParser p(strumien); p.NextToken() != TZTParser::Koniec;) {
            }
        })) << strumien.pada;
    }
    if (!przydzialy::Liczone())
        GTEST_SKIP() << "allocations are counted on Linux without sanitizers";
    const TRozmiarBufora bufor(1);
    const std::string bajty = "abc " + std::string(1000, 'x') + " '" + std::string(9000, 'y') + "'";
    std::int64_t i = 0;
    for (bool blad = true; blad; ++i) {
        blad = false;
        TZTReadOnlyRawByteStream zrodlo(bajty);
        przydzialy::Zacznij();
        przydzialy::Psuj(i, true);
        try {
            for (TZTParser p(zrodlo); p.NextToken() != TZTParser::Koniec;) {
            }
        } catch (const std::bad_alloc&) {
            blad = true;
        }
        EXPECT_EQ(przydzialy::Zakoncz().zostalo, 0);
    }
    EXPECT_GT(i, 10);
}
