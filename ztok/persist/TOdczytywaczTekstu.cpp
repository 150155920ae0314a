#include "ztok/persist/TOdczytywaczTekstu.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "ztok/fields/Konwersje.h"
#include "ztok/fields/TPoleWskObiektu.h"
#include "ztok/fields/WyjatkiModelu.h"
#include "ztok/kernel/Kontekst.h"
#include "ztok/kernel/TObiekt.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/util/Ztfunutf8.h"
#include "ztok/util/Zttypybazowe.h"

namespace ztok {

namespace {

// How the buffer of a long text grows, until it is 1 MiB at a step.
constexpr std::size_t kGranicaWzrostu = 0x40000;
constexpr std::size_t kKrokWzrostu = 0x100000;

std::int64_t PozycjaJesliZnana(TStrumien& strumien) { return strumien.Pozostalo() < 0 ? -1 : strumien.GetPosition(); }

} // namespace

TOdczytywaczTekstu::TOdczytywaczTekstu(TStrumien& strumien, const TLimityOdczytu& limity)
    : TOdczytywaczDanych(false, limity), Strumien(strumien), poczatek_(PozycjaJesliZnana(strumien)), bezBom_(strumien),
      Parser(bezBom_, limity.bajtyTekstu, limity.bajtyNazwy) {}

TOdczytywaczTekstu::~TOdczytywaczTekstu() = default;

std::int64_t TOdczytywaczTekstu::TBezZnakuBom::Read(void* bufor, std::int64_t ile) {
    constexpr char kBom[3] = {'\xEF', '\xBB', '\xBF'};
    if (ma_ < 0) {
        ma_ = 0;
        bool bom = true;
        while (bom && ma_ < 3 && strumien_.CzytajNajwyzej(poczatek_ + ma_, 1) == 1) {
            bom = poczatek_[ma_] == kBom[ma_];
            ++ma_;
        }
        if (bom && ma_ == 3)
            podane_ = pominiete_ = 3;
    }
    if (podane_ == ma_)
        return strumien_.CzytajNajwyzej(bufor, ile);
    const std::int64_t czesc = std::min(ile, ma_ - podane_);
    std::memcpy(bufor, poczatek_ + podane_, static_cast<std::size_t>(czesc));
    podane_ += czesc;
    return czesc;
}

std::int64_t TOdczytywaczTekstu::TBezZnakuBom::Write(const void* /*bufor*/, std::int64_t /*ile*/) { return 0; }

std::u16string TOdczytywaczTekstu::KomunikatZMiejscem(const EWyjatek& e) const {
    if (dynamic_cast<const EZTParserError*>(&e) != nullptr)
        return std::u16string(e.Komunikat());
    return FormatujBezWyjatku(Komunikat(kmPozycjaBledu), {e.Komunikat(), linia_, kolumna_});
}

void TOdczytywaczTekstu::WczytajDokument(TObiektBazowy& korzen, std::u16string_view naglowek) {
    const TBlokadaObiektu blokada(korzen);
    const TUzycie uzycie(korzen);
    ZKontekstem(
        [&] {
            WczytajNaglowek(korzen, naglowek);
            korzen.ZerujDane();
            try {
                korzen.WczytajTekstowo(Strumien, this);
                Parser.CheckTokenSymbol("end");
                KorygujReferencje();
            } catch (...) {
                ZerujReferencje();
                throw;
            }
        },
        [this](const EWyjatek& e) { return KomunikatZMiejscem(e); });
    // The parser reads ahead; what follows the document belongs to the caller. Its text is not looked at.
    if (poczatek_ >= 0)
        Strumien.Seek(poczatek_ + bezBom_.Pominiete() + Parser.SourcePos() +
                          static_cast<std::int64_t>(Parser.TrescTokenu().size()),
                      ESeek::Poczatek);
}

void TOdczytywaczTekstu::WczytajNaglowek(const TObiektBazowy& korzen, std::u16string_view naglowek) {
    if (naglowek.empty()) {
        Parser.CheckTokenSymbol("object");
        Parser.NextToken();
        ZapamietajMiejsce();
        const std::u16string klasa = NazwaKlasyTokenu();
        if (!korzen.MoznaCzytacDaneTypu(klasa))
            throw EZTObcyTypError(klasa, korzen.NazwaKlasy());
        Parser.NextToken();
        return;
    }
    TZTReadOnlyRawByteStream strumien(PolskiAnsi(naglowek));
    for (TZTParser wzor(strumien); wzor.Token() != TZTParser::Koniec; wzor.NextToken(), Parser.NextToken()) {
        if (wzor.Token() == TZTParser::Symbol)
            Parser.CheckTokenSymbol(wzor.TrescTokenu());
        else if (Parser.Token() != wzor.Token() || Parser.TrescTokenu() != wzor.TrescTokenu())
            Parser.ErrorFmt(kmSpodziewanySymbol, {Skrocony(PolskiWide(wzor.TrescTokenu()))});
    }
}

void TOdczytywaczTekstu::DopiszTekst() {
    SprawdzCzyTekst();
    const std::string_view kawalek = Parser.TrescTokenu();
    const std::size_t potrzeba = tekst_.size() + kawalek.size();
    if (potrzeba > tekst_.capacity()) {
        if (static_cast<std::int64_t>(potrzeba) > Limity().bajtyTekstu)
            SprawdzTekst(static_cast<std::uint32_t>(std::min<std::size_t>(potrzeba, 0xFFFFFFFFU)));
        tekst_.reserve(
            std::max(potrzeba, tekst_.size() <= kGranicaWzrostu ? 4 * tekst_.size() : tekst_.size() + kKrokWzrostu));
    }
    tekst_ += kawalek;
}

std::string_view TOdczytywaczTekstu::WczytajTekstAnsi() {
    tekst_.clear();
    DopiszTekst();
    while (Parser.NextToken() == '+') {
        Parser.NextToken();
        DopiszTekst();
    }
    SprawdzTekst(static_cast<std::uint32_t>(tekst_.size()));
    return tekst_;
}

std::u16string TOdczytywaczTekstu::NazwaKlasyTokenu() const {
    if (Parser.Token() != TZTParser::TekstCudzyslow && Parser.Token() != TZTParser::Tekst)
        Parser.CheckToken(TZTParser::Symbol);
    if (static_cast<std::int64_t>(Parser.TrescTokenu().size()) > Limity().bajtyNazwy)
        BladLimitu(u"rozmiar nazwy w bajtach", Limity().bajtyNazwy);
    return PolskiWide(Parser.TrescTokenu());
}

std::u16string TOdczytywaczTekstu::WczytajTekst() { return ZeStronyKodowej(WczytajTekstAnsi(), DefStronaKodowa); }

std::u16string TOdczytywaczTekstu::DekodujTrescUTF8(std::string_view bajty) { return ZUtf8LubPolskiego(bajty); }

void TOdczytywaczTekstu::DlugaTrescUTF8(std::string_view bajty, TTekstPola& cel) {
    if (PoprawneUtf8(bajty))
        cel.UstawPoprawneUtf8(bajty);
    else
        cel.Ustaw(PolskiWide(bajty));
}

std::string_view TOdczytywaczTekstu::WczytajGolyToken() {
    tekst_ = Parser.TrescTokenu();
    Parser.NextToken();
    SprawdzTekst(static_cast<std::uint32_t>(tekst_.size()));
    return tekst_;
}

std::u16string TOdczytywaczTekstu::WczytajDowolnyTekst() {
    switch (Parser.Token()) {
    case TZTParser::TekstCudzyslow:
        return DekodujTrescUTF8(WczytajTekstAnsi());
    case TZTParser::Tekst:
        return WczytajTekst();
    default:
        return ZeStronyKodowej(WczytajGolyToken(), DefStronaKodowa);
    }
}

double TOdczytywaczTekstu::WczytajRzeczywista() {
    std::string tekst = Parser.TokenString();
    const bool calkowita = Parser.Token() == TZTParser::Calkowita;
    Parser.NextToken();
    if (calkowita && Parser.Token() == ',') { // the tokenizer parts a number with a decimal comma into three tokens
        Parser.NextToken();
        tekst += ',';
        tekst += Parser.TrescTokenu();
        Parser.NextToken();
    }
    return TZTParser::StringToFloat(tekst);
}

void TOdczytywaczTekstu::WczytajRef(TPoleWskObiektu& pole) { NumerPola(pole, WczytajNumer()); }

std::uint32_t TOdczytywaczTekstu::WczytajNumer() {
    Parser.CheckToken(TZTParser::Calkowita);
    const std::int64_t numer = Parser.TokenInt();
    if (numer < 0 || numer > std::numeric_limits<std::uint32_t>::max())
        Parser.ErrorFmt(kmZaDuzaWartosc, {numer});
    Parser.NextToken();
    return static_cast<std::uint32_t>(numer);
}

TOdczytywaczTekstu::TPoleOdczytu::TPoleOdczytu(TOdczytywaczTekstu& odczytywacz, const TObiekt& obiekt) noexcept
    : odczytywacz_(odczytywacz), obiekt_(odczytywacz.OdczytObiekt), pole_(odczytywacz.OdczytPole) {
    odczytywacz.OdczytObiekt = &obiekt;
}

TOdczytywaczTekstu::TPoleOdczytu::~TPoleOdczytu() {
    odczytywacz_.OdczytObiekt = obiekt_;
    odczytywacz_.OdczytPole = pole_;
}

} // namespace ztok
