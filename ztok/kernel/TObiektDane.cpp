// Whole-object operations: initialisation from arrays, features, comparison, copy, binary form.
#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <new>
#include <type_traits>
#include <vector>

#include "ztok/fields/Konwersje.h"
#include "ztok/fields/TArrayOfConst.h"
#include "ztok/fields/TPolaDaty.h"
#include "ztok/fields/TPolaLiczbowe.h"
#include "ztok/fields/TPolaTekstowe.h"
#include "ztok/fields/TPoleWskObiektu.h"
#include "ztok/kernel/Kontekst.h"
#include "ztok/kernel/Selektory.h"
#include "ztok/kernel/TJadroKlas.h"
#include "ztok/kernel/TObiekt.h"
#include "ztok/kernel/TOpisKlasy.h"
#include "ztok/lists/TKopierDanych.h"
#include "ztok/lists/TListaObiektow.h"
#include "ztok/lists/TPorownywaczDanych.h"
#include "ztok/persist/TOdczytywaczDanych.h"
#include "ztok/persist/TZapisywaczDanych.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/Pula.h"
#include "ztok/platform/TStrumien.h"
#include "ztok/platform/TWariant.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {

// --- initialisation from parallel arrays

void TObiekt::WpiszDane(TArgumenty pola, TArgumenty wartosci) {
    SprawdzDlugosci(u"WD", pola, wartosci);
    const TBlokadaObiektu blokada(*this);
    const TUzycie uzycie(*this);
    for (std::size_t i = 0; i < pola.size(); ++i)
        WpiszPare(pola[i], wartosci[i]);
}

void TObiekt::Inicjuj(TArgumenty pola, TArgumenty wartosci) {
    SprawdzDlugosci(u"WD", pola, wartosci); // before the old values go
    const TBlokadaObiektu blokada(*this);
    const TUzycie uzycie(*this);
    ZwolnijPola(true);
    WpiszDane(pola, wartosci);
}

void TObiekt::WpiszPare(const TArgument& pole, const TArgument& wartosc) {
    if (pole.Tag() == TTag::Integer) {
        WpiszWartosc(static_cast<std::int16_t>(pole.Calkowita()), wartosc, NazwaKlasy());
        return;
    }
    if (!pole.JestNazwa())
        ZTErrorFmt(Komunikat(kmBlednyTypIndeksu), {u"WD"});
    const std::u16string sciezka = pole.JakoTekst();
    TObiektBazowy* obiekt = nullptr;
    int nrPola = CalyObiekt;
    if (!ObiektIPole(sciezka, true, obiekt, nrPola) || obiekt == nullptr || !obiekt->Klasa()->Ma(ckObiekt))
        ZTErrorFmt(Komunikat(kmBlednePodpole), {u"WD", sciezka});
    auto& cel = static_cast<TObiekt&>(*obiekt);
    // The value of a pointer field is an address: no text or number behind a path, as in the conditions of one, sets
    // it.
    if (const TKlasa* typ = cel.TypPolaNr(nrPola);
        typ != nullptr && typ->Ma(ckPoleWsk) && wartosc.Tag() != TTag::Object && wartosc.Tag() != TTag::Pointer)
        ZTErrorFmt(Komunikat(kmBlednePodpole), {u"WD", sciezka});
    cel.WpiszWartosc(nrPola, wartosc, NazwaKlasy());
}

void TObiekt::WpiszWartosc(int nrPola, const TArgument& wartosc, std::u16string_view klasaKomunikatu) {
    switch (wartosc.Tag()) {
    case TTag::Integer:
        SetVariantowo(nrPola, TWariant(static_cast<std::int32_t>(wartosc.Calkowita())));
        return;
    case TTag::Int64:
        SetVariantowo(nrPola, TWariant(wartosc.Calkowita()));
        return;
    case TTag::Boolean:
        SetVariantowo(nrPola, TWariant(wartosc.Logiczna()));
        return;
    case TTag::Extended:
        SetVariantowo(nrPola, TWariant(static_cast<double>(wartosc.Rzeczywista())));
        return;
    case TTag::Char:
        SetVariantowo(nrPola, TWariant::AnsiString(std::string(1, static_cast<char>(wartosc.Calkowita()))));
        return;
    case TTag::ShortString:
    case TTag::PChar:
    case TTag::AnsiString:
        SetVariantowo(nrPola, TWariant::AnsiString(wartosc.Bajty()));
        return;
    case TTag::WideChar:
    case TTag::WideString:
    case TTag::UnicodeString:
        SetVariantowo(nrPola, TWariant(wartosc.JakoTekst()));
        return;
    case TTag::PWideChar: // its first character only, by intent
        SetVariantowo(nrPola, TWariant(wartosc.Tekst().substr(0, 1)));
        return;
    case TTag::Variant:
        SetVariantowo(nrPola, wartosc.Wariant());
        return;
    case TTag::Pointer:
        if (wartosc.Wskaznik() != nullptr)
            ZTErrorFmt(Komunikat(kmBladInicjalizacjiZrodlo), {NazwaKlasy(), u"Pointer"});
        SetMaWartosc(nrPola, false);
        return;
    case TTag::Object: {
        TObiektOgolny* ogolny = wartosc.Obiekt();
        if (ogolny != nullptr && !ogolny->Klasa()->Ma(ckObiektBazowy))
            ZTErrorFmt(Komunikat(kmBladInicjalizacjiTyp), {klasaKomunikatu, ogolny->NazwaKlasy(), NazwaPolaNr(nrPola)});
        auto* obiekt = static_cast<TObiektBazowy*>(ogolny);
        const TKlasa* typ = TypPolaNr(nrPola);
        if (typ != nullptr && typ->Ma(ckPoleRef))
            SetPoleRefObiektu(nrPola, obiekt);
        else if (typ != nullptr && typ->Ma(ckPoleWsk))
            SetPoleWskObiektu(nrPola, obiekt);
        else if (obiekt == nullptr)
            SetMaWartosc(nrPola, false);
        else
            PrzepiszDane(*obiekt, CalyObiekt, nrPola);
        return;
    }
    case TTag::Class:
    case TTag::Currency:
    case TTag::Interface:
        break;
    }
    ZTErrorFmt(Komunikat(kmBlednyTypWartosci), {u"WD", static_cast<int>(wartosc.Tag())});
}

void TObiekt::PrzepiszDane(const TObiektBazowy& zrodlo, int nrZrodla, int nrPola) {
    const TPole* skad = &zrodlo;
    if (nrZrodla != CalyObiekt) {
        if (!zrodlo.Klasa()->Ma(ckObiekt))
            BladKlasy(zrodlo, TObiekt::KlasaStatyczna());
        const auto& zPolami = static_cast<const TObiekt&>(zrodlo);
        skad = zPolami.Pole(nrZrodla);
        if (skad == nullptr && zPolami.TypPolaNr(nrZrodla) == nullptr)
            ZTErrorFmt(Komunikat(kmBrakPola), {zrodlo.NazwaKlasy(), nrZrodla});
    }
    if (nrPola == CalyObiekt) {
        if (skad == nullptr)
            ZerujDane();
        else
            KopiujDane(*skad);
        return;
    }
    const TBlokadaObiektu blokada(*this);
    if (skad == nullptr) {
        if (Pole(nrPola) == nullptr && TypPolaNr(nrPola) == nullptr)
            ZTErrorFmt(Komunikat(kmBrakPola), {NazwaKlasy(), nrPola});
        UstawNiepuste(nrPola, false);
    } else {
        TPole* dokad = DajPole(nrPola);
        if (dokad == nullptr)
            ZTErrorFmt(Komunikat(kmBrakPola), {NazwaKlasy(), nrPola});
        dokad->KopiujDane(*skad);
        UstawNiepuste(nrPola, true);
    }
    SetBylyZmiany(nrPola);
}

// --- comparison

bool TObiekt::ObaPola(int nrPola, const TObiekt& inny, const TPole*& tu, const TPole*& tam, std::int32_t& wynik) const {
    // A class may call a field full that was never made.
    tu = PoleNiepuste(nrPola) ? Pole(nrPola) : nullptr;
    tam = inny.PoleNiepuste(nrPola) ? inny.Pole(nrPola) : nullptr;
    if (tu != nullptr && tam != nullptr)
        return true;
    if (tu != nullptr)
        wynik = tu->MaDefWartosc() ? 0 : 1;
    else
        wynik = tam == nullptr || tam->MaDefWartosc() ? 0 : -1;
    return false;
}

std::int32_t TObiekt::PorownajPole(int nrPola, const TObiekt& inny, TPorownywaczDanych& porownywacz) const {
    const TPole* tu = nullptr;
    const TPole* tam = nullptr;
    std::int32_t wynik = 0;
    return ObaPola(nrPola, inny, tu, tam, wynik) ? tu->Porownaj(*tam, &porownywacz) : wynik;
}

bool TObiekt::DajPoleWprost(int nrPola, const TPole*& pole, unsigned& kod) const noexcept {
    pole = nrPola < 0 || Klasa()->Ma(ckWlasneNiepuste) ? nullptr : Pole(nrPola);
    if (pole == nullptr)
        return nrPola >= 0 && !Klasa()->Ma(ckWlasneNiepuste);
    const std::uint8_t stan = Stany()[nrPola];
    kod = stan >> 4U;
    if ((stan & (spObiekt | spDokladna)) != spDokladna)
        return false;
    if ((stan & spWartosc) == 0)
        pole = nullptr;
    return true;
}

std::int32_t TObiekt::WykonajPorownanie(const TPole& inne, TPorownywaczDanych& porownywacz) const {
    SprawdzKlase(inne, TObiekt::KlasaStatyczna());
    return porownywacz.PorownajCzesci(*this, static_cast<const TObiekt&>(inne));
}

// --- copy

namespace {

// More places for plain fields than this would only make the block too large for the pool.
constexpr int kNajwiecejMiejsc = 24;
// Places of a block, of 16 bytes each, for a text of so many units.
int MiejscaTekstu(std::size_t ile) noexcept {
    return ile <= TTekstPola::kNajdluzszyWPolu ? 0 : static_cast<int>(TTekstPola::RozmiarBloku(ile) / 16);
}

} // namespace

void TObiekt::WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) {
    SprawdzKlase(zrodlo, TObiekt::KlasaStatyczna());
    const auto& obiekt = static_cast<const TObiekt&>(zrodlo);
    int ile = std::max(ilePol_, obiekt.ilePol_);
    if (kopier.TrybKopiowania == tkdPolaPrzodka)
        ile = std::min(ile, OstPoleWspolPrzodka(obiekt.Klasa()));
    // A plain field of the library's goes straight over, unless the class has a say about it.
    const bool wprost = !Klasa()->Ma(ckWlasneTypyPol | ckWlasneUstawNiepuste | ckWlasneUtworzono);
    const TMigawkaOpisu& migawka = Migawka();
    const bool doMiejsc = wprost && FPola == nullptr && obiekt.FPola != nullptr;
    int naTeksty = doMiejsc ? ZarezerwujNaKopie(std::min(ile, obiekt.ilePol_), obiekt, migawka) : 0;
    for (int nr = 0; nr < ile; ++nr) {
        if (wprost) {
            const TPole* skad = obiekt.Pole(nr);
            const std::uint8_t stan = skad == nullptr ? 0 : obiekt.Stany()[nr];
            if ((stan & (spWartosc | spObiekt | spDokladna)) == (spWartosc | spDokladna)) {
                if ((doMiejsc && KopiujDoMiejsca(nr, *skad, stan, migawka, naTeksty)) ||
                    KopiujWprost(nr, *skad, stan, migawka))
                    continue;
            } else if ((stan & (spWartosc | spObiekt)) == 0 && nr >= ilePol_) {
                continue; // nothing there, nothing here
            }
        }
        KopiujPole(nr, obiekt, kopier);
    }
}

namespace {

template <class P> void PrzepiszWartosc(TPole& cel, const TPole& zrodlo) {
    static_cast<P&>(cel).UstawWartosc(static_cast<const P&>(zrodlo).Wartosc());
}

// Copies between two fields that are exactly of the class of the code; false for a code that is not known here.
bool PrzepiszWgKodu(unsigned kod, TPole& cel, const TPole& zrodlo) {
    switch (kod) {
    case kpString:
        PrzepiszWartosc<TPoleString>(cel, zrodlo);
        return true;
    case kpByte:
        PrzepiszWartosc<TPoleByte>(cel, zrodlo);
        return true;
    case kpInteger:
        PrzepiszWartosc<TPoleInteger>(cel, zrodlo);
        return true;
    case kpDouble:
        PrzepiszWartosc<TPoleDouble>(cel, zrodlo);
        return true;
    case kpDate:
        PrzepiszWartosc<TPoleDate>(cel, zrodlo);
        return true;
    default:
        return false;
    }
}

} // namespace

// Makes a block for the copies of the plain fields that hold a value, and of their texts. Returns the places for texts.
int TObiekt::ZarezerwujNaKopie(int ile, const TObiekt& zrodlo, const TMigawkaOpisu& migawka) {
    const std::uint8_t* stany = zrodlo.Stany();
    int pol = 0;
    std::size_t naTeksty = 0;
    int doPola = 0;
    for (int nr = 0; nr < std::min(ile, migawka.ilePol); ++nr) {
        const std::uint8_t stan = stany[nr];
        if (zrodlo.FPola[nr] == nullptr || (stan & (spWartosc | spObiekt)) == 0)
            continue;
        doPola = nr + 1;
        if ((stan & (spObiekt | spDokladna)) != spDokladna || migawka.pola[nr].kodProsty == kpInne)
            continue;
        ++pol;
        if (stan >> 4U == kpString) {
            const std::size_t znakow = static_cast<const TPoleString*>(zrodlo.FPola[nr])->Wartosc().size();
            naTeksty += znakow <= NajwiekszyBlokPuli ? static_cast<std::size_t>(MiejscaTekstu(znakow)) : 0;
        }
    }
    if (doPola == 0)
        return 0;
    pol = std::min(pol, kNajwiecejMiejsc);
    const int pojemnosc = std::min((doPola + 7) / 8 * 8, migawka.ilePol);
    // NOLINTNEXTLINE(readability-suspicious-call-argument): places of numbers, then places of fields
    if (BajtyBloku(pojemnosc, pol) + naTeksty * kMiejsce > NajwiekszyBlokPuli)
        naTeksty = 0;
    Zarezerwuj(pojemnosc, pol + static_cast<int>(naTeksty));
    return static_cast<int>(naTeksty);
}

bool TObiekt::KopiujDoMiejsca(int nr, const TPole& zrodlo, std::uint8_t stan, const TMigawkaOpisu& migawka,
                              int& naTeksty) {
    // A copied object may have written to its parent, or cleared it.
    if (nr >= std::min(pojPol_, migawka.ilePol) || zajete_ >= miejsca_ || Pole(nr) != nullptr)
        return false;
    const TMigawkaOpisu::TPozycja& pozycja = migawka.pola[nr];
    const auto wstaw = [&](TPole* pole, unsigned nowyStan) {
        FPola[nr] = pole;
        Stany()[nr] = static_cast<std::uint8_t>(nowyStan);
        ilePol_ = std::max(ilePol_, nr + 1);
    };
    const auto liczba = [&]<class P>(std::type_identity<P>) {
        P* pole = ::new (ZajmijMiejsca(1)) P;
        pole->UstawWartosc(static_cast<const P&>(zrodlo).Wartosc());
        wstaw(pole, unsigned{pozycja.stan} | spWartosc);
    };
    switch (pozycja.kodProsty == stan >> 4U ? pozycja.kodProsty : std::uint8_t{kpInne}) {
    case kpString: {
        auto* pole = ::new (ZajmijMiejsca(1)) TPoleString;
        wstaw(pole, pozycja.stan);
        const auto tekst = static_cast<const TPoleString&>(zrodlo).Wartosc();
        const int naTekst = tekst.size() <= NajwiekszyBlokPuli ? MiejscaTekstu(tekst.size()) : miejsca_ + 1;
        if (naTekst <= naTeksty && zajete_ + naTekst <= miejsca_) {
            naTeksty -= naTekst;
            pole->tekst_.UstawWMiejscu(tekst, ZajmijMiejsca(naTekst));
        } else {
            pole->tekst_.Ustaw(tekst);
        }
        Stany()[nr] |= spWartosc;
        return true;
    }
    case kpInteger:
        liczba(std::type_identity<TPoleInteger>{});
        return true;
    case kpDouble:
        liczba(std::type_identity<TPoleDouble>{});
        return true;
    case kpByte:
        liczba(std::type_identity<TPoleByte>{});
        return true;
    case kpDate:
        liczba(std::type_identity<TPoleDate>{});
        return true;
    default:
        return false;
    }
}

bool TObiekt::KopiujWprost(int nrPola, const TPole& zrodlo, std::uint8_t stan, const TMigawkaOpisu& migawka) {
    const unsigned kod = stan >> 4U;
    if (Pole(nrPola) == nullptr) {
        const TKlasa* typ = nrPola < migawka.ilePol ? migawka.pola[nrPola].klasa : nullptr;
        if (typ == nullptr || typ->kodPola != kod || !typ->kodWlasny)
            return false;
        UtworzPole(nrPola, typ);
    } else if (const std::uint8_t tu = Stany()[nrPola]; (tu >> 4U) != kod || (tu & spDokladna) == 0) {
        return false;
    }
    if (!PrzepiszWgKodu(kod, *FPola[nrPola], zrodlo))
        return false;
    Stany()[nrPola] |= spWartosc;
    return true;
}

void TObiekt::KopiujPole(int nrPola, const TObiekt& zrodlo, TKopierDanych& kopier) {
    const TPole* skad = zrodlo.Pole(nrPola);
    const std::uint8_t stan = skad == nullptr ? 0 : zrodlo.Stany()[nrPola];
    if ((stan & (spWartosc | spObiekt)) == 0) {
        UstawNiepuste(nrPola, false);
        return;
    }
    const TKlasa* klasa = skad->Klasa();
    if (const TPole* stare = Pole(nrPola); stare == nullptr || stare->Klasa() != klasa) {
        // A field of another class gives way; the class must be one that this object declares under the number.
        const TKlasa* typ = TypPolaNr(nrPola);
        if (typ == nullptr)
            ZTErrorFmt(Komunikat(kmBrakPola), {NazwaKlasy(), nrPola});
        if (!KlasaADziedziczyPoB(klasa, typ))
            ZglosZlyTyp(nrPola, *skad, typ);
        if (stare != nullptr)
            UstawPole(nrPola, nullptr, true);
        UtworzPole(nrPola, klasa);
    }
    if (zrodlo.Pole(nrPola) != skad) // its end, or a hook, has changed the source
        ZTErrorFmt(Komunikat(kmBrakPola), {zrodlo.NazwaKlasy(), nrPola});
    FPola[nrPola]->KopiujDane(*skad, &kopier);
    UstawNiepuste(nrPola, true);
}

// --- binary form

void TObiekt::DajObiektyDoZapisu(TZapisywaczDanych& zapisywacz) const {
    zapisywacz.DodajObiekt(*this);
    for (int nr = 0; nr < ilePol_; ++nr)
        if (const TObiektBazowy* obiekt = ObiektDoZapisu(nr, zapisywacz); obiekt != nullptr) {
            const TPoziom poziom(zapisywacz.Zagniezdzenie, *this, obiekt);
            obiekt->DajObiektyDoZapisu(zapisywacz);
        }
}

// The field's object that takes part in the write; null when it does not. The class that is asked may change its
// fields.
const TObiektBazowy* TObiekt::ObiektDoZapisu(int nrPola, const TZapisywaczDanych& zapisywacz) const {
    if (FPola[nrPola] == nullptr || (Stany()[nrPola] & spObiekt) == 0 || !PoleNiepuste(nrPola) ||
        (!zapisywacz.ZapisWszystkichPol && !PoleZapisywane(nrPola)))
        return nullptr;
    const TPole* pole = Pole(nrPola);
    return pole != nullptr && (Stany()[nrPola] & spObiekt) != 0 ? static_cast<const TObiektBazowy*>(pole) : nullptr;
}

bool TObiekt::PoleWZapisie(int nrPola, bool pytajKlase, std::uint32_t cechy, TZapisywaczDanych& zapisywacz) const {
    const std::uint8_t stan = Stany()[nrPola];
    if ((stan & spObiekt) != 0 || (cechy & ckWlasneNiepuste) != 0) {
        if (!PoleNiepuste(nrPola))
            return false;
    } else if ((stan & spWartosc) == 0) {
        return false;
    }
    if (zapisywacz.CzyZapisacPole) {
        if (!zapisywacz.CzyZapisacPole(*this, nrPola))
            return false;
    } else if (pytajKlase && !PoleZapisywane(nrPola)) {
        return false;
    }
    const TPole* pole = Pole(nrPola); // whoever was asked may have taken it away
    if (pole != nullptr && (Stany()[nrPola] >> 4U) == kpWskObiektu) {
        std::int32_t gdzie = -1;
        return zapisywacz.JestObiekt(static_cast<const TPoleWskObiektu*>(pole)->Obiekt(), gdzie) &&
               Pole(nrPola) != nullptr; // the first lookup collects the objects, whose classes are asked too
    }
    return pole != nullptr;
}

namespace {

// Bitmap of field numbers: small ones on the stack.
class TMapaPol {
  public:
    explicit TMapaPol(std::size_t bajtow) : bajtow_(bajtow) {
        if (bajtow > male_.size())
            duze_.resize(bajtow);
    }
    [[nodiscard]] std::uint8_t* Bajty() noexcept { return duze_.empty() ? male_.data() : duze_.data(); }
    [[nodiscard]] std::size_t Ile() const noexcept { return bajtow_; }

  private:
    std::array<std::uint8_t, 24> male_{};
    std::vector<std::uint8_t> duze_;
    std::size_t bajtow_;
};

} // namespace

namespace {

template <class P> void ZapiszSkalar(const TPole& pole, TStrumien& strumien) {
    const auto wartosc = static_cast<const P&>(pole).Wartosc();
    strumien.WriteBuffer(&wartosc, sizeof wartosc);
}

// Writes a field. The classes met most, known by their code, need no virtual call.
void ZapiszPole(const TPole& pole, unsigned kod, TStrumien& strumien, TZapisywaczDanych& zapisywacz) {
    switch (kod) {
    case kpString:
        return TZapisywaczDanych::ZapiszWideString(strumien, static_cast<const TPoleString&>(pole).Wartosc(),
                                                   &zapisywacz);
    case kpInteger:
        return ZapiszSkalar<TPoleInteger>(pole, strumien);
    case kpDouble:
        return ZapiszSkalar<TPoleDouble>(pole, strumien);
    case kpByte:
        return ZapiszSkalar<TPoleByte>(pole, strumien);
    case kpDate:
        return ZapiszSkalar<TPoleDate>(pole, strumien);
    default:
        pole.ZapiszWStrumieniu(strumien, &zapisywacz);
    }
}

// Apart from the writing, whose frames these texts would make large.
[[noreturn, gnu::noinline]] void BladZmianyPrzyZapisie(const TObiekt& obiekt) {
    ZTErrorFmt(kmZmianaPrzyZapisie, {obiekt.NazwaKlasy(), obiekt.DajSciezkeDoSiebie()});
}

// What a field counts for the reader's limit of memory.
constexpr std::int64_t kPamiecPola = 48;

} // namespace

void TObiekt::WykonajZapis(TStrumien& strumien, TZapisywaczDanych& zapisywacz) const {
    if (FPola == nullptr) {
        TZapisywaczDanych::ZapiszLicznik15(strumien, 0);
        return;
    }
    const std::uint32_t cechy = Klasa()->cechy;
    const bool pytajKlase =
        !zapisywacz.ZapisWszystkichPol && ((cechy & ckWlasneZapisywane) != 0 || Migawka().saPredykaty);
    // Nobody else has a say: then a plain field takes part when it holds a value.
    const bool poStanie = !pytajKlase && (cechy & ckWlasneNiepuste) == 0 && !zapisywacz.CzyZapisacPole;
    const auto bierze = [&](int nr) {
        if (Pole(nr) == nullptr) // whoever is asked may clear the object
            return false;
        const std::uint8_t stan = Stany()[nr];
        return (poStanie && (stan & (spWartosc | spObiekt)) == spWartosc && (stan >> 4U) != kpWskObiektu) ||
               PoleWZapisie(nr, pytajKlase, cechy, zapisywacz);
    };
    if (ilePol_ <= TMigawkaOpisu::kPolaMaski) {
        std::uint64_t pola = 0;
        for (int nr = 0, ile = ilePol_; nr < ile; ++nr)
            pola |= std::uint64_t{bierze(nr) ? 1U : 0U} << static_cast<unsigned>(nr);
        ZapiszWprost(pola, strumien, zapisywacz);
        return;
    }
    TMapaPol mapa((static_cast<std::size_t>(ilePol_) + 7) / 8);
    int ostatnie = -1;
    for (int nr = 0; nr < ilePol_; ++nr)
        if (nr < 8 * static_cast<int>(mapa.Ile()) && bierze(nr)) {
            mapa.Bajty()[nr / 8] |= static_cast<std::uint8_t>(1U << (static_cast<unsigned>(nr) % 8U));
            ostatnie = nr;
        }
    const auto bajtow = static_cast<std::uint32_t>(ostatnie + 8) / 8;
    TZapisywaczDanych::ZapiszLicznik15(strumien, bajtow);
    strumien.WriteBuffer(mapa.Bajty(), bajtow);
    for (std::uint32_t j = 0; j < bajtow; ++j)
        for (unsigned bity = mapa.Bajty()[j]; bity != 0; bity &= bity - 1) {
            const int nr = static_cast<int>(8 * j) + std::countr_zero(bity);
            if (Pole(nr) == nullptr) [[unlikely]]
                BladZmianyPrzyZapisie(*this);
            ZapiszPole(*FPola[nr], (Stany()[nr] & spDokladna) != 0 ? Stany()[nr] >> 4U : 0U, strumien, zapisywacz);
        }
}

// The fields of the bits. Their bytes are bounded first: then plain ones go into the stream's window without more ado.
void TObiekt::ZapiszWprost(std::uint64_t bity, TStrumien& strumien, TZapisywaczDanych& zapisywacz) const {
    const bool utf8 = (zapisywacz.OpcjeZapisu & ozWin1250) == 0;
    const auto kodPola = [this](int nr) {
        const std::uint8_t stan = Stany()[nr];
        return (stan & spDokladna) != 0 ? stan >> 4U : unsigned{kpInne};
    };
    std::size_t granica = 1 + sizeof bity;
    for (std::uint64_t b = bity; b != 0; b &= b - 1) {
        const int nr = std::countr_zero(b);
        if (Pole(nr) == nullptr) [[unlikely]] // whoever was asked about the fields has taken it away
            BladZmianyPrzyZapisie(*this);
        const TPole& pole = *FPola[nr];
        const std::size_t znakow = kodPola(nr) == kpString ? static_cast<const TPoleString&>(pole).Wartosc().size() : 2;
        granica += znakow < TZapisywaczDanych::kKrotszyTekst ? 3 * znakow + 4 : 0;
    }
    const auto bajtow = (static_cast<std::size_t>(std::bit_width(bity)) + 7) / 8;
    std::uint8_t* cel = strumien.MiejsceZapisu(granica);
    std::uint8_t* p = cel;
    if (cel != nullptr) {
        *p++ = static_cast<std::uint8_t>(bajtow);
        std::memcpy(p, &bity, sizeof bity);
        p += bajtow;
    } else {
        TZapisywaczDanych::ZapiszLicznik15(strumien, static_cast<std::uint32_t>(bajtow));
        strumien.WriteBuffer(&bity, bajtow);
    }
    const auto liczba = [&p]<class P>(std::type_identity<P>, const TPole& pole) {
        const auto wartosc = static_cast<const P&>(pole).Wartosc();
        std::memcpy(p, &wartosc, sizeof wartosc);
        p += sizeof wartosc;
    };
    for (; bity != 0; bity &= bity - 1) {
        const int nr = std::countr_zero(bity);
        const TPole& pole = *FPola[nr];
        const unsigned kod = kodPola(nr);
        if (cel != nullptr) {
            switch (kod) {
            case kpString:
                if (const auto tekst = static_cast<const TPoleString&>(pole).Wartosc();
                    utf8 && tekst.size() < TZapisywaczDanych::kKrotszyTekst) {
                    p = TZapisywaczDanych::UlozTekst(p, tekst);
                    continue;
                }
                break;
            case kpInteger:
                liczba(std::type_identity<TPoleInteger>{}, pole);
                continue;
            case kpDouble:
                liczba(std::type_identity<TPoleDouble>{}, pole);
                continue;
            case kpByte:
                liczba(std::type_identity<TPoleByte>{}, pole);
                continue;
            case kpDate:
                liczba(std::type_identity<TPoleDate>{}, pole);
                continue;
            default:
                break;
            }
            strumien.Zapisano(static_cast<std::size_t>(p - cel));
        }
        ZapiszPole(pole, kod, strumien, zapisywacz);
        if (kod == kpInne)
            SprawdzPoCzesci(bity & (bity - 1));
        // What an object does while it is written may change the bound.
        if (cel != nullptr)
            p = cel = kod == kpInne || kod == kpWskObiektu ? nullptr : strumien.MiejsceZapisu(granica);
    }
    if (cel != nullptr)
        strumien.Zapisano(static_cast<std::size_t>(p - cel));
}

// A part that was written may have changed its parent: the record has announced the fields of the bits.
void TObiekt::SprawdzPoCzesci(std::uint64_t bity) const {
    for (; bity != 0; bity &= bity - 1)
        if (Pole(std::countr_zero(bity)) == nullptr)
            BladZmianyPrzyZapisie(*this);
}

void TObiekt::WykonajOdczyt(TStrumien& strumien, TOdczytywaczDanych& odczytywacz) {
    if (FPola != nullptr || !zwyklyKoniec_)
        ZerujDane();
    const std::uint32_t bajtow = TOdczytywaczDanych::WczytajLicznik15(strumien);
    if (bajtow == 0)
        return;
    const TKlasa* klasa = Klasa();
    const TMigawkaOpisu& migawka = Migawka(klasa);
    constexpr std::uint32_t kWlasne = ckWlasneTypyPol | ckWlasneUtworzono | ckWlasneUstawNiepuste;
    std::uint64_t pola = 0;
    if ((klasa->cechy & kWlasne) == 0 && bajtow <= sizeof pola && FPola == nullptr && !odczytywacz.ChceKazdePole()) {
        std::uint8_t bajty[sizeof pola];
        if (bajtow == 1)
            strumien.ReadBuffer(bajty, 1);
        else
            strumien.ReadBuffer(bajty, bajtow);
        for (std::uint32_t j = 0; j < bajtow; ++j)
            pola |= std::uint64_t{bajty[j]} << (8U * j);
        WczytajWprost(pola & migawka.maskaPol, migawka, strumien, odczytywacz);
        return;
    }
    TMapaPol mapa(bajtow);
    strumien.ReadBuffer(mapa.Bajty(), bajtow);
    // The field array has room for every declared field as soon as it has one.
    odczytywacz.ZuzyjPamiec(migawka.ilePol * static_cast<std::int64_t>(sizeof(TPole*) + 1));
    for (std::uint32_t j = 0; j < bajtow; ++j)
        for (unsigned bity = mapa.Bajty()[j]; bity != 0; bity &= bity - 1)
            WczytajPoleNr(static_cast<int>(8 * j) + std::countr_zero(bity), migawka, strumien, odczytywacz);
}

void TObiekt::WczytajPoleNr(int nr, const TMigawkaOpisu& migawka, TStrumien& strumien,
                            TOdczytywaczDanych& odczytywacz) {
    const TKlasa* typ = nullptr;
    if (Klasa()->Ma(ckWlasneTypyPol))
        typ = TypPolaNr(nr);
    else if (nr < migawka.ilePol)
        typ = migawka.pola[nr].klasa;
    // A number that the class does not declare takes no bytes: the format relies on one layout at both ends.
    if (typ == nullptr || nr > 32767)
        return;
    ZKontekstem(
        [&] {
            TPole& pole = Pole(nr) != nullptr ? *Pole(nr) : UtworzPole(nr, typ);
            odczytywacz.ZuzyjPamiec(kPamiecPola);
            pole.WczytajZeStrumienia(strumien, &odczytywacz);
        },
        [&](std::u16string_view komunikat) { return KontekstOdczytu(nr, komunikat); });
    if (Pole(nr) == nullptr)
        return; // its own code has taken it away
    if ((Stany()[nr] >> 4U) == kpWskObiektu && nr < migawka.ilePol && migawka.pola[nr].wiersz != nullptr &&
        migawka.pola[nr].wiersz->klasa != nullptr)
        odczytywacz.OgraniczOstatni(migawka.pola[nr].wiersz->klasa());
    UstawNiepuste(nr, true);
}

namespace {

// As std::popcount, which is a call where the processor is not known to have the instruction.
int IleBitow(std::uint64_t bity) noexcept {
    bity -= bity >> 1U & 0x5555555555555555U;
    bity = (bity & 0x3333333333333333U) + (bity >> 2U & 0x3333333333333333U);
    bity = (bity + (bity >> 4U)) & 0x0F0F0F0F0F0F0F0FU;
    return static_cast<int>(bity * 0x0101010101010101U >> 56U);
}

} // namespace

namespace {

// Reads in the stream's window through a pointer of its own, and moves the stream when it gives way.
class TKursor {
  public:
    explicit TKursor(TStrumien& strumien) noexcept : strumien_(strumien) { Wez(); }
    TKursor(const TKursor&) = delete;
    TKursor& operator=(const TKursor&) = delete;
    ~TKursor() { Oddaj(); }

    void Wez() noexcept {
        const auto okno = strumien_.Okno();
        poczatek_ = poz_ = okno.data();
        koniec_ = poz_ + okno.size();
    }
    void Oddaj() noexcept {
        if (poz_ != poczatek_)
            strumien_.Pomin(poz_ - poczatek_);
        poczatek_ = poz_;
    }
    [[nodiscard]] const std::uint8_t* Poz() const noexcept { return poz_; }
    [[nodiscard]] const std::uint8_t* Koniec() const noexcept { return koniec_; }
    void Pomin(std::size_t ile) noexcept { poz_ += ile; }
    void Czytaj(void* bufor, std::size_t ile) {
        if (static_cast<std::size_t>(koniec_ - poz_) >= ile) [[likely]] {
            std::memcpy(bufor, poz_, ile);
            poz_ += ile;
            return;
        }
        Oddaj();
        strumien_.ReadBuffer(bufor, ile);
        Wez();
    }

  private:
    TStrumien& strumien_;
    const std::uint8_t* poczatek_ = nullptr;
    const std::uint8_t* poz_ = nullptr;
    const std::uint8_t* koniec_ = nullptr;
};

// Bytes of a plain field in the stream by its code; 0 for a text and for what is not plain.
constexpr std::uint8_t kBajtyLiczby[] = {0, 1, 1, 2, 2, 4, 4, 8, 8, 8, 8, 8, 0, 0, 0, 0};

// A bound of what the texts of the record take that starts at the bytes given, as far as a look ahead tells.
int MiejscaTekstow(std::uint64_t bity, const TMigawkaOpisu& migawka, const std::uint8_t* p,
                   const std::uint8_t* koniec) noexcept {
    int miejsca = 0;
    for (; bity != 0; bity &= bity - 1) {
        const unsigned kod = migawka.pola[std::countr_zero(bity)].kodProsty;
        std::ptrdiff_t bajtow = kBajtyLiczby[kod];
        if (kod == kpString) {
            if (p == koniec || *p >= 0x80)
                break;
            bajtow = *p + 1;
            miejsca += MiejscaTekstu(*p);
        }
        if (bajtow == 0 || koniec - p < bajtow)
            break;
        p += bajtow;
    }
    return miejsca;
}

} // namespace

// Nobody else has a say in the object's fields: they are made in its one block, in the order of the stream, and so are
// their texts.
void TObiekt::WczytajWprost(std::uint64_t bity, const TMigawkaOpisu& migawka, TStrumien& strumien,
                            TOdczytywaczDanych& odczytywacz) {
    if (bity == 0)
        return;
    odczytywacz.ZuzyjPamiec(migawka.ilePol * static_cast<std::int64_t>(sizeof(TPole*) + 1) +
                            kPamiecPola * IleBitow(bity));
    TKursor kursor(strumien);
    const int ile = std::min((static_cast<int>(std::bit_width(bity)) + 7) / 8 * 8, migawka.ilePol);
    const int miejsca = std::min(IleBitow(bity & migawka.maskaProstych), kNajwiecejMiejsc);
    int naTeksty =
        odczytywacz.FOdczytANSI ? 0 : MiejscaTekstow(bity & migawka.maskaPol, migawka, kursor.Poz(), kursor.Koniec());
    if (BajtyBloku(ile, miejsca + naTeksty) > NajwiekszyBlokPuli)
        naTeksty = 0;
    Zarezerwuj(ile, miejsca + naTeksty);
    const auto pola = [&] {
        for (; bity != 0; bity &= bity - 1) {
            const int nr = std::countr_zero(bity);
            const TMigawkaOpisu::TPozycja& pozycja = migawka.pola[nr];
            // An object read before may have written to its parent, or cleared it.
            if (nr < ilePol_ && FPola[nr] != nullptr) [[unlikely]] {
                kursor.Oddaj();
                WczytajPoleNr(nr, migawka, strumien, odczytywacz);
                kursor.Wez();
                continue;
            }
            const bool jestMiejsce = zajete_ < miejsca_ && nr < pojPol_;
            const auto wstaw = [&](TPole* pole, unsigned stan) {
                FPola[nr] = pole;
                Stany()[nr] = static_cast<std::uint8_t>(stan);
                ilePol_ = std::max(ilePol_, nr + 1);
            };
            const auto liczba = [&]<class P, class W>(std::type_identity<P>, W wartosc) {
                kursor.Czytaj(&wartosc, sizeof wartosc);
                P* pole = ::new (ZajmijMiejsca(1)) P;
                pole->UstawWartosc(wartosc);
                wstaw(pole, unsigned{pozycja.stan} | spWartosc);
            };
            switch (jestMiejsce ? pozycja.kodProsty : std::uint8_t{kpInne}) {
            case kpString: {
                auto* pole = ::new (ZajmijMiejsca(1)) TPoleString;
                wstaw(pole, pozycja.stan);
                const std::uint8_t* p = kursor.Poz();
                // Most texts have a count of one byte and lie in the stream's window.
                if (p != kursor.Koniec() && *p < 0x80 && *p < kursor.Koniec() - p && !odczytywacz.FOdczytANSI)
                    [[likely]] {
                    odczytywacz.SprawdzTekst(*p);
                    const char* bajty = reinterpret_cast<const char*>(p) + 1;
                    const int naTekst = MiejscaTekstu(*p);
                    if (naTekst <= naTeksty && zajete_ + naTekst <= miejsca_) {
                        naTeksty -= naTekst;
                        const std::size_t zajal = pole->tekst_.UstawUtf8WMiejscu(bajty, *p, ZajmijMiejsca(naTekst));
                        OddajMiejsca(naTekst - static_cast<int>(zajal / kMiejsce));
                    } else {
                        pole->tekst_.UstawUtf8(bajty, *p);
                    }
                    kursor.Pomin(std::size_t{*p} + 1);
                } else {
                    kursor.Oddaj();
                    TOdczytywaczDanych::WczytajWideString(strumien, pole->tekst_, &odczytywacz);
                    kursor.Wez();
                }
                Stany()[nr] |= spWartosc;
                break;
            }
            case kpInteger:
                liczba(std::type_identity<TPoleInteger>{}, std::int32_t{});
                break;
            case kpDouble:
                liczba(std::type_identity<TPoleDouble>{}, double{});
                break;
            case kpBoolean:
                liczba(std::type_identity<TPoleBoolean>{}, std::uint8_t{});
                break;
            case kpByte:
                liczba(std::type_identity<TPoleByte>{}, std::uint8_t{});
                break;
            case kpDate:
                liczba(std::type_identity<TPoleDate>{}, double{});
                break;
            default:
                kursor.Oddaj();
                UtworzPole(nr, pozycja.klasa).WczytajZeStrumienia(strumien, &odczytywacz);
                if (pozycja.stan >> 4U == kpWskObiektu && pozycja.wiersz != nullptr && pozycja.wiersz->klasa != nullptr)
                    odczytywacz.OgraniczOstatni(pozycja.wiersz->klasa());
                UstawNiepuste(nr, true);
                kursor.Wez();
            }
        }
    };
    ZKontekstem(pola,
                [&](std::u16string_view komunikat) { return KontekstOdczytu(std::countr_zero(bity), komunikat); });
}

std::u16string TObiekt::KontekstOdczytu(int nrPola, std::u16string_view komunikat) const {
    return FormatujBezWyjatku(Komunikat(kmBladOdczytuPola),
                              {NazwaKlasy(), NazwaPolaNr(nrPola), DajSciezkeDoSiebie(), komunikat});
}

bool TObiekt::MoznaCzytacDaneTypu(std::u16string_view nazwaTypu) const {
    return CompareTxtSgn(nazwaTypu, AliasXMLPolaNr(CalyObiekt)) == 0 || TObiektBazowy::MoznaCzytacDaneTypu(nazwaTypu);
}

} // namespace ztok
