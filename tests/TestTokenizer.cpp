#include "tests/Testy.h"

#include <ctime>

#include "BrakPamieci.h"
#include "platforma/Przydzialy.h"
#include "platforma/SystemTestowy.h"
#include "ztok/persist/TZTParser.h"

using namespace ztok;
using namespace std::string_literals;
using strumienie::TOporny;

namespace {

static_assert(std::is_base_of_v<ztok::ZTException, ztok::EZTParserError>);

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

// What the current token shows: "kind text@line:column", and the lines met at its end where they are more.
std::string Opis(const TZTParser& p) {
    EXPECT_EQ(p.TokenString(), p.TrescTokenu());
    std::string opis = std::to_string(p.Token()) + ' ' + p.TokenString() + '@' + std::to_string(p.LiniaTokenu()) + ':' +
                       std::to_string(p.KolumnaTokenu());
    return p.SourceLine() == p.LiniaTokenu() ? opis : opis + '-' + std::to_string(p.SourceLine());
}

// One operation of a table row: a letter, and what it takes. Returns what it gives.
std::string Wykonaj(TZTParser& p, const std::string& operacja) {
    const std::string reszta = operacja.substr(1);
    std::int64_t calkowita = 0;
    double rzeczywista = 0;
    bool logiczna = false;
    std::string tekst;
    std::string_view widok;
    const auto wynik = [](bool jest, const auto& opis) { return jest ? std::string(opis()) : "-"; };
    TOporny cel;
    switch (operacja[0]) {
    case 'n': // the next token, or the one that has the name
        if (!reszta.empty())
            tekst = p.NextToken(reszta) ? "+" : "-";
        else if (p.NextToken() != p.Token())
            tekst = "other kind ";
        return tekst + Opis(p);
    case 'c':
        if (p.ReadNextChar() != p.Token())
            tekst = "other kind ";
        return tekst + Opis(p);
    case 'u':
        tekst = p.ReadTextUpTo(reszta[0]);
        return '[' + tekst + ']' + Opis(p);
    case 's':
        return p.SkipTextUpTo(reszta[0]), Opis(p);
    case 'b':
        return p.SkipBlanks(), std::to_string(p.Token()) + p.TokenString();
    case 'h':
        cel.porcja = INT64_MAX;
        return p.HexToBinary(cel), '{' + cel.dane + '}' + Opis(p);
    case 'i':
        return std::to_string(p.TokenInt());
    case 'k':
        return p.CheckToken(static_cast<std::uint8_t>(std::stoi(reszta))), "ok";
    case 'S':
        return p.CheckTokenSymbol(reszta), "ok";
    case 'y':
        return p.TokenSymbolIs(reszta) ? "y" : "-";
    case 'f':
        return Utf8ZUtf16(p.FormatErrStr(u"x"));
    case 'e':
        p.ErrorFmt(u"za duża wartość: %d", {300});
    case 'm':
        p.SetMaksTokenu(std::stoi(reszta));
        return reszta;
    case '=':
        return wynik(p.PrzedRowna(), [] { return "="; });
    case 'W': // the short cuts: text in either quote, integer, real, date, logical
        if (reszta == "c")
            return wynik(p.WezCalkowita(calkowita), [&] { return std::to_string(calkowita); });
        if (reszta == "r")
            return wynik(p.WezRzeczywista(rzeczywista),
                         [&] { return Utf8ZUtf16(FloatNaTekstDokladny(rzeczywista, UstawieniaPolskie())); });
        if (reszta == "d")
            return wynik(p.WezDate(UstawieniaPolskie(), rzeczywista),
                         [&] { return std::to_string(std::lround(rzeczywista)); });
        if (reszta == "l")
            return wynik(p.WezLogiczna(logiczna), [&] { return logiczna ? "T" : "N"; });
        return wynik(p.WezTekst(reszta[0], widok), [&] { return "[" + std::string(widok) + "]"; });
    default:
        ADD_FAILURE() << operacja;
        return {};
    }
}

// The results of a row's operations, after the first token has been read; "*" gives all tokens from the current one on,
// "x" and "X" turn the rules of XML on and off. A short cut that does not see its whole value in the buffer ends the
// row when `caly` is false.
std::vector<std::string> Wyniki(const std::string& bajty, const std::string& operacje, std::int64_t porcja, bool caly) {
    std::vector<std::string> wyniki;
    TOporny strumien(bajty);
    strumien.porcja = porcja;
    std::unique_ptr<TZTParser> p;
    for (const std::string& operacja : testy::Podziel(operacje, ' '))
        try {
            if (p == nullptr)
                p = std::make_unique<TZTParser>(strumien);
            if (operacja == "x" || operacja == "X") {
                p->SetTrybXML(operacja == "x");
                EXPECT_EQ(p->TrybXML(), operacja == "x");
            } else if (operacja != "*") {
                wyniki.push_back(Wykonaj(*p, operacja));
                if (!caly && (operacja[0] == 'W' || operacja[0] == '=') && wyniki.back() == "-") {
                    wyniki.pop_back();
                    return wyniki;
                }
            } else {
                for (wyniki.push_back(Opis(*p)); p->Token() != TZTParser::Koniec; wyniki.push_back(Opis(*p))) {
                    if (p->Token() != TZTParser::Tekst && p->Token() != TZTParser::TekstCudzyslow) {
                        EXPECT_EQ(bajty.compare(static_cast<std::size_t>(p->SourcePos()), p->TrescTokenu().size(),
                                                p->TrescTokenu()),
                                  0);
                    }
                    p->NextToken();
                }
            }
        } catch (const EZTParserError& e) {
            wyniki.push_back(Utf8ZUtf16(e.Komunikat()));
            EXPECT_TRUE(e.Komunikat().ends_with(
                Utf16ZUtf8(" w linii " + std::to_string(e.Linia()) + " na pozycji " + std::to_string(e.Kolumna()))));
            if (p == nullptr || std::string_view("ikS").find(operacja[0]) == std::string_view::npos)
                break;
        }
    return wyniki;
}

std::string Linia(const std::vector<std::string>& czesci) {
    std::string linia;
    for (const std::string& czesc : czesci)
        linia += (linia.empty() ? "" : "|") + czesc;
    return linia;
}

} // namespace

TEST(Tokenizer, Tabela) {
    for (const auto& w : testy::WczytajTabele("tokenizer.tsv")) {
        SCOPED_TRACE(testing::Message() << w.numer << ": " << w[0] << " " << w[1]);
        EXPECT_EQ(Linia(Wyniki(w[0], w[1], INT64_MAX, true)), w[2]);
        KazdyBufor([&](std::int64_t porcja) {
            // Whether a name was foreseen ("+") depends on what the buffer shows.
            std::string wyniki = Linia(Wyniki(w[0], w[1], porcja, false));
            std::string wzor = w[2].substr(0, w[1].find_first_of("W=") < w[1].size() ? wyniki.size() : w[2].size());
            std::replace(wyniki.begin(), wyniki.end(), '+', '-');
            std::replace(wzor.begin(), wzor.end(), '+', '-');
            EXPECT_EQ(wyniki, wzor);
        });
    }
}

// Random documents of pieces that matter, among them tokens longer than any small buffer: the buffer changes nothing.
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
        const char* const operacje = i % 3 == 0 ? "x *" : "*";
        const auto wzor = Wyniki(bajty, operacje, INT64_MAX, true);
        tokenow += wzor.size();
        for (int j = 0; j < 8; ++j) {
            const TRozmiarBufora bufor(static_cast<int>(1 + los() % 64));
            ASSERT_EQ(Wyniki(bajty, operacje, static_cast<std::int64_t>(1 + los() % 3 * 20), true), wzor)
                << bajty << " buffer " << ParseBufSize;
        }
    }
    EXPECT_GT(tokenow, ZTOK_SANITIZER ? 2000U : 20000U);
}

TEST(Tokenizer, Szesnastkowe) {
    std::string wzor;
    std::string pary;
    for (int i = 0; i < 1500; ++i) {
        wzor += static_cast<char>(i * 7);
        pary += (i % 97 == 0 ? "\r\n  " : "") + strumienie::Szesnastkowo(wzor.substr(wzor.size() - 1));
    }
    KazdyBufor([&](std::int64_t porcja) {
        EXPECT_EQ(Wyniki("{" + pary + "} x", "h", porcja, true).front(), '{' + wzor + "}125 }@17:93");
    });
}

// Floods: bounded memory and time, the bound to the byte.
TEST(Tokenizer, Zalew) {
    constexpr std::int64_t Maks = 100000;
    for (const auto& w : testy::WczytajTabele("zalew.tsv"))
        for (const std::int64_t porcja : {std::int64_t{1}, INT64_MAX}) {
            SCOPED_TRACE(testing::Message() << w[0] << '(' << w[1] << ")* " << porcja);
            const TRozmiarBufora bufor(porcja == 1 ? 1 : 4096);
            TOporny strumien(w[0]);
            strumien.porcja = porcja;
            while (strumien.dane.size() < 1U << 20U)
                strumien.dane += w[1];
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
            EXPECT_EQ(limit, w[2] == "limit");
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
    const TRozmiarBufora bufor(1);
    const std::string bajty = "abc " + std::string(1000, 'x') + " '" + std::string(9000, 'y') + "'";
    EXPECT_GT(testy::PsujKazdyPrzydzial([&] { return Linia(Wyniki(bajty, "*", INT64_MAX, true)); }).ile, 10);
}
