#include "ztok/persist/TZapisywaczTekstu.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>

#include "ztok/fields/Konwersje.h"
#include "ztok/fields/KonwersjeWartosci.h"
#include "ztok/fields/TPolaDaty.h"
#include "ztok/fields/TPolaLiczbowe.h"
#include "ztok/fields/TPolaTekstowe.h"
#include "ztok/fields/TPoleBoolean.h"
#include "ztok/fields/TPoleWskObiektu.h"
#include "ztok/kernel/TJadroKlas.h"
#include "ztok/kernel/TOpisKlasy.h"
#include "ztok/persist/BlokBajtow.h"
#include "ztok/persist/TZTParser.h"
#include "ztok/persist/WartosciTekstowe.h"
#include "ztok/platform/DatyTekst.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/LiczbyTekst.h"
#include "ztok/platform/TStrumienPlikowy.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {

bool DefPominAkapity = true;
bool DefPominKonceLinii = false;

namespace {

constexpr std::size_t kWiersz = 4096; // bytes of a text on one line
constexpr std::size_t kKosztKodu = 4; // of them, for a byte written as a code

bool JestZnakiemSpecjalnym(char bajt, char cudzyslow) noexcept {
    return static_cast<unsigned char>(bajt) < 32 || bajt == cudzyslow;
}

// Bytes from the beginning that stand in quotes as they are.
std::size_t DlugoscOdcinka(const char* bajty, std::size_t ile, char cudzyslow) noexcept {
    std::size_t i = 0;
    for (; i + TBlokBajtow::kIle <= ile; i += TBlokBajtow::kIle) {
        const TBlokBajtow blok(bajty + i);
        if (const unsigned maska = blok.Miedzy(0, 31) | blok.Rowne(cudzyslow); maska != 0)
            return i + static_cast<std::size_t>(std::countr_zero(maska));
    }
    while (i < ile && !JestZnakiemSpecjalnym(bajty[i], cudzyslow))
        ++i;
    return i;
}

// Whether a literal of these bytes shows its kind of quotation mark only after the first line, and the kind matters.
bool PoczatekBezCudzyslowu(std::string_view bajty, char cudzyslow) noexcept {
    const std::string_view wiersz = bajty.substr(0, kWiersz / kKosztKodu);
    return bajty.size() > wiersz.size() &&
           std::all_of(wiersz.begin(), wiersz.end(), [=](char b) { return JestZnakiemSpecjalnym(b, cudzyslow); }) &&
           std::any_of(bajty.begin(), bajty.end(), [](char b) { return static_cast<unsigned char>(b) > 127; });
}

} // namespace

TZapisywaczTekstu::TZapisywaczTekstu(TStrumien& strumien) : Strumien(&strumien), cel_(strumien) {
    if (strumien.JestKlasy(TStrumienPlikowy::KlasaStatyczna())) {
        BuforZapisu = Utworz<TBuforZapisu>(strumien);
        Strumien = BuforZapisu.get();
    }
}

TZapisywaczTekstu::~TZapisywaczTekstu() = default;

// A stream that does not tell its position counts as empty.
bool TZapisywaczTekstu::NaPoczatku() const {
    try {
        return cel_.GetPosition() == 0;
    } catch (const EWyjatek&) {
        return true;
    }
}

void TZapisywaczTekstu::ZapiszDokument(const TObiektBazowy& korzen, std::u16string_view naglowek) {
    const TBlokadaObiektu blokada(korzen);
    const TUzycie uzycie(korzen);
    PrzygotujKorzen(korzen);
    if (!NaPoczatku()) // what stands before must not run together with the header
        ZapiszTxt(PominKonceLinii ? " " : "\r\n");
    if (naglowek.empty()) {
        ZapiszTxt("object ");
        ZapiszNazweKlasy(korzen.NazwaKlasy());
    } else {
        ZapiszTxt(PolskiAnsi(naglowek));
    }
    korzen.ZapiszTekstowo(*Strumien, this);
    ZakonczObiekt();
    if (BuforZapisu)
        BuforZapisu->Flush();
}

// Begins a line with the text, as ZapiszLinie; null when the stream shows no room for it and `zapas` bytes more. What
// stands there is written when ZatwierdzDo is told where it ends.
// NOLINTNEXTLINE(readability-make-member-function-const): as in the header
char* TZapisywaczTekstu::MiejsceLinii(std::string_view tekst, std::size_t zapas) {
    const std::size_t akapit = PominAkapity || PominKonceLinii || Akapit <= 0 ? 0 : static_cast<std::size_t>(Akapit);
    char* cel = reinterpret_cast<char*>(Strumien->MiejsceZapisu(2 + akapit + tekst.size() + zapas));
    if (cel == nullptr)
        return nullptr;
    if (PominKonceLinii) {
        *cel++ = ' ';
    } else {
        *cel++ = '\r';
        *cel++ = '\n';
        for (std::size_t i = 0; i < akapit; ++i)
            *cel++ = ZnakAkapitu;
    }
    return KopiujKrotki(cel, tekst);
}

void TZapisywaczTekstu::ZapiszLinie(std::string_view tekst) {
    if (const char* koniec = MiejsceLinii(tekst, 0); koniec != nullptr) {
        ZatwierdzDo(koniec);
        return;
    }
    if (PominKonceLinii)
        ZapiszTxt(" "); // what stands before must not run together with the text
    else
        NowaLinia();
    ZapiszTxt(tekst);
}

void TZapisywaczTekstu::NowaLinia() {
    if (PominKonceLinii)
        return;
    ZapiszTxt("\r\n");
    ZapiszAkapit();
}

void TZapisywaczTekstu::ZapiszAkapit() {
    if (PominAkapity || Akapit <= 0)
        return;
    const auto ile = static_cast<std::size_t>(Akapit);
    if (AkapitStr.size() < ile || AkapitStr.front() != ZnakAkapitu)
        AkapitStr.assign(ile, ZnakAkapitu);
    ZapiszTxt(std::string_view(AkapitStr).substr(0, ile));
}

// --- frames and names

bool JestNazwaTekstowa(std::string_view nazwa) noexcept {
    const auto litera = [](char z) { return (z >= 'A' && z <= 'Z') || (z >= 'a' && z <= 'z') || z == '_'; };
    if (nazwa.empty() || CompareTxtSgn(nazwa, "object") == 0 || CompareTxtSgn(nazwa, "end") == 0)
        return false;
    const auto pierwszy = static_cast<unsigned char>(nazwa.front());
    return (litera(nazwa.front()) || (pierwszy >= 0x80 && pierwszy <= 0xFD)) &&
           std::all_of(nazwa.begin() + 1, nazwa.end(), [&](char z) { return litera(z) || (z >= '0' && z <= '9'); });
}

std::string_view TZapisywaczTekstu::NazwaPola(const TObiekt& obiekt, int nrPola) {
    std::string_view nazwa = obiekt.Nazwa8PolaNr(nrPola);
    if (nazwa.empty()) {
        // The class names its fields itself, or declares a name that cannot be written.
        nazwa_ = PolskiAnsi(obiekt.NazwaPolaNr(nrPola));
        nazwa = nazwa_;
        if (!JestNazwaTekstowa(nazwa))
            ZTErrorFmt(Komunikat(kmNieDaSieZapisacTekstowo), {obiekt.NazwaPolaNr(nrPola)});
    }
    return nazwa;
}

void TZapisywaczTekstu::ZacznijPole(const TObiekt& obiekt, int nrPola) {
    ZapiszLinie(NazwaPola(obiekt, nrPola));
    ZapiszTxt("=");
}

void TZapisywaczTekstu::ZacznijPoleObiekt(const TObiekt& obiekt, int nrPola) {
    ZapiszLinie("object ");
    ZapiszTxt(NazwaPola(obiekt, nrPola));
}

void TZapisywaczTekstu::ZapiszNazweKlasy(std::u16string_view nazwa) {
    const std::string bajty = PolskiAnsi(nazwa);
    if (JestNazwaTekstowa(bajty))
        ZapiszTxt(bajty);
    else
        ZapiszTekst(bajty, Cudzyslow8Bit);
}

void TZapisywaczTekstu::ZacznijObiekt(std::u16string_view nazwaKlasy) {
    ZapiszLinie("object ");
    ZapiszNazweKlasy(nazwaKlasy);
}

// --- values

void TZapisywaczTekstu::ZapiszRef(const TPoleWskObiektu& pole) {
    std::int32_t gdzie = -1;
    if (!JestObiekt(pole.Obiekt(), gdzie))
        NieDaSieZapisac(pole.NazwaKlasy());
    ZapiszLiczbe(std::int64_t{gdzie} + 1);
}

void TZapisywaczTekstu::ZapiszLiczbe(std::int64_t liczba) {
    char znaki[kMiejsceWartosci];
    ZapiszTxt({znaki, static_cast<std::size_t>(PiszCalkowita(liczba, znaki) - znaki)});
}

void TZapisywaczTekstu::ZapiszLiczbe(double liczba) {
    const TUstawieniaFormatu& format = JadroKlas()->Format();
    char znaki[kMiejsceWartosci];
    if (const char* koniec = PiszRzeczywista(liczba, format, znaki); koniec != nullptr) {
        ZapiszTxt({znaki, static_cast<std::size_t>(koniec - znaki)});
        return;
    }
    const std::u16string tekst = FloatNaTekstDokladny(liczba, format);
    const std::string bajty = PolskiAnsi(tekst);
    if (std::isfinite(liczba) && (format.separatorDziesietny == u'.' || format.separatorDziesietny == u',')) {
        ZapiszTxt(bajty);
        return;
    }
    // A separator may be a digit, a letter or no character of the page: such a text gives another number, or none.
    bool wraca = false;
    try {
        const double inna = TZTParser::StringToFloat(bajty);
        wraca = inna == liczba || (std::isnan(inna) && std::isnan(liczba));
    } catch (const EBladKonwersji&) { // NOLINT(bugprone-empty-catch): the text is no number
    }
    if (!wraca)
        NieDaSieZapisac(tekst);
    ZapiszTekst(bajty, Cudzyslow8Bit);
}

void TZapisywaczTekstu::ZapiszDate(double wartosc) {
    char znaki[kMiejsceWartosci];
    ZapiszChwile(kpDate, wartosc, znaki, PiszDate(wartosc, JadroKlas()->Format(), znaki));
}

void TZapisywaczTekstu::ZapiszCzas(double wartosc) {
    char znaki[kMiejsceWartosci];
    ZapiszChwile(kpTime, wartosc, znaki, PiszCzas(wartosc, JadroKlas()->Format(), znaki));
}

void TZapisywaczTekstu::ZapiszDateICzas(double wartosc) {
    char znaki[kMiejsceWartosci];
    const TUstawieniaFormatu& format = JadroKlas()->Format();
    char* data = PiszDate(wartosc, format, znaki);
    if (data != nullptr)
        *data++ = ' ';
    ZapiszChwile(kpDateTime, wartosc, znaki, data == nullptr ? nullptr : PiszCzas(wartosc, format, data));
}

// Writes what stands between `od` and `koniec`; null: the text of the kernel's format, which must give the value back.
void TZapisywaczTekstu::ZapiszChwile(unsigned kod, double wartosc, const char* od, const char* koniec) {
    if (koniec != nullptr) {
        ZapiszTekst({od, static_cast<std::size_t>(koniec - od)}, CudzyslowSzeroki);
        return;
    }
    const std::u16string tekst = kod == kpDate   ? ZTOKDateToStr(wartosc)
                                 : kod == kpTime ? ZTOKTimeToStr(wartosc)
                                                 : ZTOKDateTimeToStr(wartosc);
    const auto taSama = [&](double inna) {
        TData daty[2];
        TCzas czasy[2];
        return SprobujRozlozycDateICzas(wartosc, daty[0], czasy[0]) &&
               SprobujRozlozycDateICzas(inna, daty[1], czasy[1]) && (kod == kpTime || daty[0] == daty[1]) &&
               (kod == kpDate || (czasy[0].godzina == czasy[1].godzina && czasy[0].minuta == czasy[1].minuta &&
                                  czasy[0].sekunda == czasy[1].sekunda));
    };
    bool wraca = false;
    try {
        wraca = taSama(ChwilaZTekstu(kod, Utf8ZUtf16(tekst)));
    } catch (const EBladKonwersji&) { // NOLINT(bugprone-empty-catch): the text is no date
    }
    if (!wraca)
        NieDaSieZapisac(tekst);
    ZapiszTekst(tekst);
}

// The value's text stands for the field when there is none: a value that is written alone.
void TZapisywaczTekstu::NieDaSieZapisac(std::u16string_view tekst) const {
    const std::u16string pole = ZapisObiekt == nullptr ? std::u16string() : ZapisObiekt->NazwaPolaNr(ZapisPole);
    ZTErrorFmt(kmNieDaSieZapisacTekstowo, {pole.empty() ? tekst : std::u16string_view(pole)});
}

namespace {

// A text that needs no codes, in its quotes; null for another. There is room for three bytes a unit and the quotes.
char* PiszTekst(std::u16string_view tekst, char* cel) noexcept {
    const std::size_t ile = tekst.empty() ? 0 : KodujUtf8(tekst.data(), tekst.size(), cel + 1);
    if (DlugoscOdcinka(cel + 1, ile, CudzyslowSzeroki) < ile)
        return nullptr;
    cel[0] = cel[ile + 1] = CudzyslowSzeroki;
    return cel + ile + 2;
}

// The same for 8-bit text, which takes its own size.
char* PiszTekst(std::string_view bajty, char* cel) noexcept {
    if (DlugoscOdcinka(bajty.data(), bajty.size(), Cudzyslow8Bit) < bajty.size())
        return nullptr;
    *cel++ = Cudzyslow8Bit;
    cel = KopiujKrotki(cel, bajty);
    *cel++ = Cudzyslow8Bit;
    return cel;
}

} // namespace

bool TZapisywaczTekstu::ZapiszLiniePola(std::string_view nazwa, const TPole& pole, unsigned kod) {
    const auto linia = [&](std::size_t zapas, auto pisz) {
        char* cel = MiejsceLinii(nazwa, zapas + 1);
        if (cel == nullptr)
            return false;
        *cel++ = '=';
        const char* koniec = pisz(cel);
        if (koniec == nullptr)
            return false;
        ZatwierdzDo(koniec);
        return true;
    };
    const auto calkowita = [&](std::int64_t liczba) {
        return linia(kMiejsceWartosci, [&](char* cel) { return PiszCalkowita(liczba, cel); });
    };
    const auto tekst = [&](std::u16string_view znaki) {
        return 3 * znaki.size() <= kWiersz &&
               linia(3 * znaki.size() + 2, [&](char* cel) { return PiszTekst(znaki, cel); });
    };
    switch (kod) {
    case kpBoolean:
        return linia(1, [&](char* cel) {
            return KopiujKrotki(cel, NieTak[static_cast<const TPoleBoolean&>(pole).Wartosc() ? 1 : 0].substr(0, 1));
        });
    case kpByte:
        return calkowita(static_cast<const TPoleByte&>(pole).Wartosc());
    case kpInteger:
        return calkowita(static_cast<const TPoleInteger&>(pole).Wartosc());
    case kpInt64:
        return calkowita(static_cast<const TPoleInt64&>(pole).Wartosc());
    case kpDouble:
        return linia(kMiejsceWartosci, [&](char* cel) {
            return PiszRzeczywista(static_cast<const TPoleDouble&>(pole).Wartosc(), JadroKlas()->Format(), cel);
        });
    case kpDate:
        return linia(kMiejsceWartosci, [&](char* cel) {
            *cel = CudzyslowSzeroki;
            cel = PiszDate(static_cast<const TPoleDate&>(pole).Wartosc(), JadroKlas()->Format(), cel + 1);
            if (cel != nullptr)
                *cel++ = CudzyslowSzeroki;
            return cel;
        });
    case kpString:
        return tekst(static_cast<const TPoleString&>(pole).Wartosc());
    case kpWideString:
        return tekst(static_cast<const TPoleWideString&>(pole).Wartosc());
    case kpRawByteString: {
        const std::string& bajty = static_cast<const TPoleRawByteString&>(pole).Wartosc();
        return bajty.size() <= kWiersz && linia(bajty.size() + 2, [&](char* cel) { return PiszTekst(bajty, cel); });
    }
    default:
        return false;
    }
}

void TZapisywaczTekstu::ZapiszTekst(std::u16string_view tekst) { ZapiszTekstWide(tekst, true); }

void TZapisywaczTekstu::ZapiszTekst(std::string_view bajty, char cudzyslow) { ZapiszTekstWewn(bajty, cudzyslow); }

void TZapisywaczTekstu::ZapiszTekstWide(std::u16string_view tekst, bool szeroki) {
    const char cudzyslow = szeroki ? CudzyslowSzeroki : Cudzyslow8Bit;
    // Most texts fit one line and have nothing to be coded: they are made in their place.
    char* cel =
        3 * tekst.size() <= kWiersz ? reinterpret_cast<char*>(Strumien->MiejsceZapisu(3 * tekst.size() + 2)) : nullptr;
    if (cel == nullptr) {
        ZapiszTekstWewn(Utf8ZUtf16(tekst), cudzyslow);
        return;
    }
    const std::size_t ile = KodujUtf8(tekst.data(), tekst.size(), cel + 1);
    if (DlugoscOdcinka(cel + 1, ile, cudzyslow) < ile) {
        char kopia[kWiersz];
        std::memcpy(kopia, cel + 1, ile); // the same place takes the runs
        ZapiszTekstWewn({kopia, ile}, cudzyslow);
        return;
    }
    cel[0] = cel[ile + 1] = cudzyslow;
    Strumien->Zapisano(ile + 2);
}

void TZapisywaczTekstu::ZapiszTekstWewn(std::string_view bajty, char cudzyslow) {
    const char para[2] = {cudzyslow, cudzyslow};
    if (bajty.empty()) {
        ZapiszTxt({para, 2});
        return;
    }
    const std::size_t wiersz = PominKonceLinii ? bajty.size() * kKosztKodu : kWiersz;
    ZwiekszAkapit();
    if (bajty.size() > wiersz)
        NowaLinia();
    if (cudzyslow == CudzyslowSzeroki && !PominKonceLinii && PoczatekBezCudzyslowu(bajty, cudzyslow))
        ZapiszTxt({para, 2}); // shows from the start that the text is UTF-8
    for (std::size_t zostalo = wiersz; !bajty.empty();) {
        std::size_t ile = 1;
        std::size_t koszt = kKosztKodu;
        if (JestZnakiemSpecjalnym(bajty.front(), cudzyslow)) {
            char kod[8] = {'#'};
            const auto wynik =
                std::to_chars(kod + 1, kod + sizeof kod, static_cast<unsigned>(static_cast<unsigned char>(bajty[0])));
            ZapiszTxt({kod, static_cast<std::size_t>(wynik.ptr - kod)});
        } else {
            ile = koszt = DlugoscOdcinka(bajty.data(), std::min(bajty.size(), zostalo), cudzyslow);
            ZapiszTxt({para, 1});
            ZapiszTxt(bajty.substr(0, ile));
            ZapiszTxt({para, 1});
        }
        bajty.remove_prefix(ile);
        zostalo -= std::min(koszt, zostalo);
        if (zostalo == 0 && !bajty.empty()) {
            ZapiszTxt(" +");
            NowaLinia();
            zostalo = wiersz;
        }
    }
    ZmniejszAkapit();
}

} // namespace ztok
