#include "ztok/kernel/TObiekt.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>

#include "ztok/fields/Konwersje.h"
#include "ztok/fields/TPolaDaty.h"
#include "ztok/fields/TPolaLiczbowe.h"
#include "ztok/fields/TPolaListowe.h"
#include "ztok/fields/TPolaTekstowe.h"
#include "ztok/fields/TPoleWskObiektu.h"
#include "ztok/kernel/JadroBiezace.h"
#include "ztok/kernel/TOpisKlasy.h"
#include "ztok/platform/CzesciBloku.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/PulaWnetrze.h"
#include "ztok/platform/TPierwszyBlad.h"
#include "ztok/platform/TWariant.h"
#include "ztok/util/ZTBledy.h"
#include "ztok/util/Zagniezdzenie.h"

namespace ztok {

ZTOK_KLASA_DEF(TObiekt, TObiektBazowy)

TObiekt::~TObiekt() {
    DokonczZycie();
    if (FPola == nullptr) [[likely]]
        return;
    // Clearing failed before it came to the fields, at the object's lock: the error is told, the fields go all the
    // same.
    try {
        ZwolnijPola(false);
    } catch (...) { // NOLINT(bugprone-empty-catch): the second error of one end
    }
}

// --- metadata

const TMigawkaOpisu& TObiekt::Migawka() const { return Migawka(Klasa()); }

const TMigawkaOpisu& TObiekt::Migawka(const TKlasa* klasa) {
    TJadroKlas& jadro = JadroBiezace();
    const TMigawkaOpisu* migawka = klasa->stan->migawka.load(std::memory_order_acquire);
    if (migawka != nullptr && migawka->numerJadra == jadro.Numer()) [[likely]]
        return *migawka;
    return jadro.UtworzMigawke(klasa);
}

const TKlasa* TObiekt::TypPolaNr(int nrPola) const {
    const TMigawkaOpisu& migawka = Migawka();
    return nrPola >= 0 && nrPola < migawka.ilePol ? migawka.pola[nrPola].klasa : nullptr;
}

int TObiekt::RozmPolaNr(int nrPola) const { return nrPola == CalyObiekt ? Migawka().ilePol : 0; }

std::u16string TObiekt::NazwaPolaNr(int nrPola) const {
    if (nrPola == CalyObiekt)
        return std::u16string(NazwaKlasy().substr(1));
    const TMigawkaOpisu& migawka = Migawka();
    if (nrPola < 0 || nrPola >= migawka.ilePol)
        return {};
    const TWlasciwosc* wlasciwosc = migawka.opis->GetListaWlasciwosci()->GetWlasciwosc(nrPola);
    return wlasciwosc == nullptr ? std::u16string() : wlasciwosc->GetNazwa();
}

int TObiekt::NrPolaONazwie(std::u16string_view nazwa) const {
    int nr = -1;
    if (const TListaWlasciwosci* lista = Migawka().opis->GetListaWlasciwosci(); lista != nullptr)
        lista->JestPoleONazwie(nazwa, nr);
    return nr;
}

std::u16string TObiekt::AliasXMLPolaNr(int nrPola) const { return NazwaPolaNr(nrPola); }

bool TObiekt::PoleZapisywane(int nrPola) const {
    const TMigawkaOpisu& migawka = Migawka();
    if (!migawka.saPredykaty || nrPola < 0 || nrPola >= migawka.ilePol)
        return true;
    const TWierszPola* wiersz = migawka.pola[nrPola].wiersz;
    return wiersz == nullptr || wiersz->zapisywane == nullptr || wiersz->zapisywane(*this);
}

bool TObiekt::PoleByloTekstowe(int /*nrPola*/) const { return false; }
void TObiekt::UtworzonoPole(int /*nrPola*/) {}
void TObiekt::SetBylyZmiany(int /*nrPola*/) {}

std::u16string TObiekt::NazwaEdycjiPolaNr(int nrPola) const {
    return JadroKlas()->NazwaPolaNaEkran(NazwaPolaNr(nrPola));
}

int TObiekt::OstPoleWspolPrzodka(const TKlasa* inna) const {
    // The deepest ancestor of this class that the other class has too, as far as the chains agree from the root.
    const TKlasa* wspolna = Klasa();
    while (wspolna != nullptr && !KlasaADziedziczyPoB(inna, wspolna))
        wspolna = wspolna->Przodek();
    if (wspolna == nullptr || !wspolna->Ma(ckObiekt))
        return -1;
    if (wspolna == Klasa())
        return RozmPolaNr(CalyObiekt);
    const TListaWlasciwosci* lista = JadroKlas()->OpisKlasy(wspolna)->GetListaWlasciwosci();
    return lista == nullptr ? 0 : lista->IleObiektow();
}

// --- storage

std::uint8_t TObiekt::StanKlasy(const TKlasa& klasa) noexcept {
    auto stan = static_cast<std::uint8_t>(klasa.kodPola << 4U);
    if (klasa.Ma(ckObiektBazowy))
        stan |= spObiekt;
    if (klasa.Ma(ckWlasnaDestrukcja))
        stan |= spDestrukcja;
    if (klasa.kodWlasny)
        stan |= spDokladna;
    return stan;
}

namespace {

// No more places than this are made for plain fields that are yet to be written.
constexpr int kMiejscaNaZapas = 12;

} // namespace

void TObiekt::ZrobMiejsceDlaPola(int nrPola) {
    if (nrPola < ilePol_ && nrPola >= 0)
        return;
    if (nrPola < 0 || nrPola > kNajwiekszyNumer)
        ZTErrorFmt(Komunikat(kmBrakPola), {NazwaKlasy(), nrPola});
    if (nrPola >= pojPol_) {
        int nowa = nrPola + 1;
        int miejsca = 0;
        // Room for all declared fields at once, if the descriptor is there already; asking for it here would build it
        // while descriptors themselves are being built.
        const TMigawkaOpisu* migawka = Klasa()->stan->migawka.load(std::memory_order_acquire);
        if (migawka != nullptr && migawka->numerJadra == JadroBiezace().Numer() && migawka->ilePol > nowa) {
            nowa = migawka->ilePol;
            miejsca = std::popcount(migawka->maskaProstych);
            if (miejsca > kMiejscaNaZapas)
                miejsca = 0;
        }
        Zarezerwuj(nowa, miejsca);
    }
    ilePol_ = nrPola + 1; // the positions up to here are null since the block was made
}

namespace {

// The first place of a block that replaced another, whose field objects are alive.
struct TPoprzedniBlok {
    TPole** pola;
    std::uint16_t ilePol;
    std::uint8_t miejsca;
    bool jestPoprzedni; // its own first place is such a record
};

bool Lezy(const TPole* pole, TPole* const* blok, std::size_t bajty) noexcept {
    return reinterpret_cast<std::uintptr_t>(pole) - reinterpret_cast<std::uintptr_t>(blok) < bajty;
}

TPoprzedniBlok Poprzedni(const TPole* const* pola, std::size_t bajtyTablicy) noexcept {
    TPoprzedniBlok poprzedni;
    std::memcpy(&poprzedni, reinterpret_cast<const char*>(pola) + bajtyTablicy, sizeof poprzedni);
    return poprzedni;
}

} // namespace

bool TObiekt::MoznaWBloku(std::uint8_t stan) noexcept {
    constexpr unsigned kProste = 1U << kpBoolean | 1U << kpByte | 1U << kpSmallint | 1U << kpWord | 1U << kpInteger |
                                 1U << kpCardinal | 1U << kpInt64 | 1U << kpDouble | 1U << kpDateTime | 1U << kpDate |
                                 1U << kpTime | 1U << kpString | 1U << kpWideString;
    return (stan & spDokladna) != 0 && (kProste >> (stan >> 4U) & 1U) != 0;
}

bool TObiekt::JestWBloku(const TPole* pole) const noexcept {
    if (Lezy(pole, FPola, BajtyBloku(pojPol_, miejsca_)))
        return true;
    if (!jestPoprzedni_) [[likely]]
        return false;
    for (TPoprzedniBlok p = Poprzedni(FPola, BajtyBloku(pojPol_, 0));; p = Poprzedni(p.pola, BajtyBloku(p.ilePol, 0))) {
        if (Lezy(pole, p.pola, BajtyBloku(p.ilePol, p.miejsca)))
            return true;
        if (!p.jestPoprzedni)
            return false;
    }
}

void TObiekt::Zarezerwuj(int ile, int miejsca) {
    if (ile <= pojPol_)
        return;
    static_assert(sizeof(TPoprzedniBlok) <= kMiejsce);
    // Field objects do not move: a block with some of them stays, behind the new one.
    const bool zostaje = zajete_ != 0;
    if (FPola != nullptr)
        miejsca = zostaje ? 1 : miejsca_;
    const auto pola = static_cast<std::size_t>(ile);
    auto* blok = static_cast<TPole**>(pula::Przydziel(BajtyBloku(ile, miejsca)));
    std::memset(static_cast<void*>(blok), 0, pola * (sizeof(TPole*) + 1));
    if (FPola != nullptr) {
        const auto stare = static_cast<std::size_t>(ilePol_);
        std::memcpy(static_cast<void*>(blok), static_cast<const void*>(FPola), stare * sizeof(TPole*));
        std::memcpy(blok + ile, Stany(), stare);
        if (zostaje) {
            const TPoprzedniBlok poprzedni = {FPola, static_cast<std::uint16_t>(pojPol_), miejsca_, jestPoprzedni_};
            std::memcpy(reinterpret_cast<char*>(blok) + BajtyBloku(ile, 0), &poprzedni, sizeof poprzedni);
            Zatruj(static_cast<void*>(FPola), BajtyBloku(pojPol_, 0));
        } else {
            pula::Zwolnij(static_cast<void*>(FPola), BajtyBloku(pojPol_, miejsca_));
        }
    }
    FPola = blok;
    pojPol_ = ile;
    miejsca_ = static_cast<std::uint8_t>(miejsca);
    zajete_ = zostaje ? 1 : 0;
    jestPoprzedni_ = zostaje;
    Zatruj(MiejsceNr(zajete_), static_cast<std::size_t>(miejsca_ - zajete_) * kMiejsce);
}

void TObiekt::OddajBlok() noexcept {
    TPoprzedniBlok blok = {FPola, static_cast<std::uint16_t>(pojPol_), miejsca_, jestPoprzedni_};
    while (true) {
        const TPoprzedniBlok nastepny =
            blok.jestPoprzedni ? Poprzedni(blok.pola, BajtyBloku(blok.ilePol, 0)) : TPoprzedniBlok{};
        const std::size_t bajty = BajtyBloku(blok.ilePol, blok.miejsca);
        if (wyniesione_) [[unlikely]]
            pula::OddajBlokZCzesciami(static_cast<void*>(blok.pola), bajty);
        else
            pula::Zwolnij(static_cast<void*>(blok.pola), bajty);
        if (!blok.jestPoprzedni) [[likely]]
            break;
        blok = nastepny;
    }
    FPola = nullptr;
    pojPol_ = 0;
    miejsca_ = 0;
    zajete_ = 0;
    wyniesione_ = false;
    jestPoprzedni_ = false;
}

namespace {

template <class P> TPole* NowyWMiejscu(void* miejsce) noexcept {
    static_assert(sizeof(P) <= pula::Ziarno);
    return ::new (miejsce) P;
}

} // namespace

TPole* TObiekt::UtworzWBloku(unsigned kod) noexcept {
    if (zajete_ == miejsca_)
        return nullptr;
    void* miejsce = ZajmijMiejsca(1);
    switch (kod) {
    case kpBoolean:
        return NowyWMiejscu<TPoleBoolean>(miejsce);
    case kpByte:
        return NowyWMiejscu<TPoleByte>(miejsce);
    case kpSmallint:
        return NowyWMiejscu<TPoleSmallint>(miejsce);
    case kpWord:
        return NowyWMiejscu<TPoleWord>(miejsce);
    case kpInteger:
        return NowyWMiejscu<TPoleInteger>(miejsce);
    case kpCardinal:
        return NowyWMiejscu<TPoleCardinal>(miejsce);
    case kpInt64:
        return NowyWMiejscu<TPoleInt64>(miejsce);
    case kpDouble:
        return NowyWMiejscu<TPoleDouble>(miejsce);
    case kpDateTime:
        return NowyWMiejscu<TPoleDateTime>(miejsce);
    case kpDate:
        return NowyWMiejscu<TPoleDate>(miejsce);
    case kpTime:
        return NowyWMiejscu<TPoleTime>(miejsce);
    case kpString:
        return NowyWMiejscu<TPoleString>(miejsce);
    default:
        return NowyWMiejscu<TPoleWideString>(miejsce);
    }
}

TPole& TObiekt::UtworzPole(int nrPola, const TKlasa* klasa) {
    if (klasa->utworz == nullptr || !klasa->Ma(ckPole))
        ZTErrorFmt(Komunikat(kmKlasaAbstrakcyjna), {klasa->nazwa});
    SprawdzZycie();
    ZrobMiejsceDlaPola(nrPola);
    const std::uint8_t stanKlasy = StanKlasy(*klasa);
    TPole* pole = MoznaWBloku(stanKlasy) ? UtworzWBloku(stanKlasy >> 4U) : nullptr;
    if (pole == nullptr) {
        const TTworzenieCzesci tworzenie(*this);
        TWlasny<TPole> nowe(static_cast<TPole*>(klasa->utworz(this)));
        // Its constructor may have cleared this object, or made the field itself.
        ZrobMiejsceDlaPola(nrPola);
        if (FPola[nrPola] != nullptr)
            return *FPola[nrPola];
        pole = nowe.Oddaj();
    }
    FPola[nrPola] = pole;
    std::uint8_t& stan = Stany()[nrPola];
    stan = static_cast<std::uint8_t>((stan & spWartosc) | stanKlasy);
    if ((stan & spObiekt) != 0)
        PoPrzyjeciu(static_cast<TObiektBazowy&>(*pole), *this);
    if (Klasa()->Ma(ckWlasneUtworzono)) [[unlikely]] {
        const TUzycie uzycie(*this);
        UtworzonoPole(nrPola);
        pole = Pole(nrPola);
        if (pole == nullptr) // the hook has taken it away
            ZTErrorFmt(Komunikat(kmBrakPola), {NazwaKlasy(), nrPola});
    }
    return *pole;
}

bool TObiekt::JestPole(int nrPola, const TKlasa* klasa, bool tworz) {
    if (Pole(nrPola) != nullptr)
        return true;
    if (!tworz || nrPola < 0 || nrPola > kNajwiekszyNumer)
        return false;
    if (klasa == nullptr)
        klasa = TypPolaNr(nrPola);
    if (klasa == nullptr)
        return false;
    UtworzPole(nrPola, klasa);
    return true;
}

TPole* TObiekt::DajPole(int nrPola) { return JestPole(nrPola, nullptr, true) ? FPola[nrPola] : nullptr; }

TPole& TObiekt::DajPoleKlasy(int nrPola, const TKlasa* klasa) {
    const TBlokadaObiektu blokada(*this);
    TPole* pole = DajPole(nrPola);
    if (pole == nullptr)
        ZTErrorFmt(Komunikat(kmBrakPola), {NazwaKlasy(), nrPola});
    if (!pole->JestKlasy(klasa))
        ZglosZlyTyp(nrPola, *pole, klasa);
    return *pole;
}

void TObiekt::UstawPole(int nrPola, TPole* pole, bool zwolnijPoprzednie) {
    const bool nowe = pole != nullptr && pole != Pole(nrPola);
    if (nowe && pole->Klasa()->Ma(ckObiektBazowy))
        SprawdzPrzyjecie(*this, static_cast<const TObiektBazowy&>(*pole));
    if (nowe)
        for (int nr = 0; nr < ilePol_; ++nr)
            if (FPola[nr] == pole)
                ZTErrorFmt(Komunikat(kmPoleDwaRazy), {NazwaKlasy(), pole->NazwaKlasy(), nr});
    TWlasny<TPole> straznik(pole);
    ZrobMiejsceDlaPola(nrPola);
    TPierwszyBlad blad;
    if (TPole* poprzednie = FPola[nrPola]; poprzednie != nullptr && poprzednie != pole) {
        if (zwolnijPoprzednie) {
            ZwolnijPole(nrPola, blad);
            ZrobMiejsceDlaPola(nrPola); // it may have cleared this object
        } else {
            OddajPole(nrPola);
        }
        if (FPola[nrPola] != nullptr)
            blad.Rzuc(); // it is dying already, or its end has put another one there
    }
    if (FPola[nrPola] != nullptr && FPola[nrPola] != pole)
        ZTErrorFmt(Komunikat(kmBrakPola), {NazwaKlasy(), nrPola});
    FPola[nrPola] = straznik.Oddaj();
    std::uint8_t& stan = Stany()[nrPola];
    if (pole == nullptr) {
        stan = 0;
    } else {
        const std::uint8_t stanKlasy = StanKlasy(*pole->Klasa());
        if ((stanKlasy & spObiekt) != 0) {
            PoPrzyjeciu(static_cast<TObiektBazowy&>(*pole), *this);
            stan = static_cast<std::uint8_t>((stan & spWartosc) | stanKlasy);
        } else {
            stan = static_cast<std::uint8_t>(spWartosc | stanKlasy);
        }
    }
    blad.Rzuc();
}

void TObiekt::OddajPole(int nrPola) {
    TPole* const pole = FPola[nrPola];
    if (pole->Klasa()->Ma(ckObiektBazowy)) {
        auto& obiekt = static_cast<TObiektBazowy&>(*pole);
        SprawdzOddanie(obiekt);
        PoOddaniu(obiekt);
    } else if (JestWBloku(pole)) {
        pula::WyniesCzesc(pole);
        wyniesione_ = true;
    }
    FPola[nrPola] = nullptr;
}

namespace {

// Ends a plain field in the block, whose memory goes with the block: a number has no end to speak of.
void ZakonczWBloku(TPole* pole, unsigned kod) noexcept {
    if (kod == kpString)
        static_cast<TPoleString*>(pole)->TPoleString::~TPoleString();
    else if (kod == kpWideString)
        static_cast<TPoleWideString*>(pole)->TPoleWideString::~TPoleWideString();
    Zatruj(pole, pula::Ziarno);
}

// Frees a field that is exactly of the class of its code: the classes met most are freed without a virtual call.
void UsunPoleKodu(TPole* pole, unsigned kod) noexcept {
    switch (kod) {
    case kpString:
        return TPrzydzial::UsunDokladny(static_cast<TPoleString*>(pole));
    case kpInteger:
        return TPrzydzial::UsunDokladny(static_cast<TPoleInteger*>(pole));
    case kpDouble:
        return TPrzydzial::UsunDokladny(static_cast<TPoleDouble*>(pole));
    case kpBoolean:
        return TPrzydzial::UsunDokladny(static_cast<TPoleBoolean*>(pole));
    case kpByte:
        return TPrzydzial::UsunDokladny(static_cast<TPoleByte*>(pole));
    case kpDate:
        return TPrzydzial::UsunDokladny(static_cast<TPoleDate*>(pole));
    default:
        TPrzydzial::Usun(pole);
    }
}

} // namespace

void TObiekt::UsunPole(TPole* pole, std::uint8_t stan) noexcept {
    if ((stan & spDokladna) == 0)
        return TPrzydzial::Usun(pole);
    const unsigned kod = stan >> 4U;
    if (!JestWBloku(pole))
        return UsunPoleKodu(pole, kod);
    ZakonczWBloku(pole, kod);
    if (wyniesione_) [[unlikely]]
        pula::OddajCzesc(pole); // it left the object and came back
}

bool TObiekt::MaCzesciWPolach() const noexcept {
    for (int nr = 0; nr < ilePol_; ++nr)
        if (FPola[nr] != nullptr && (Stany()[nr] & spObiekt) != 0 &&
            FPola[nr]->Klasa()->Ma(ckObiekt | ckListaZObiektami | ckTablica))
            return true;
    return false;
}

// An object leaves its place when it is dead, so that its path tells of it; one that its owner may not free stays. A
// plain value leaves first.
void TObiekt::ZwolnijPole(int nrPola, TPierwszyBlad& blad) {
    TPole* const pole = FPola[nrPola];
    const std::uint8_t stan = Stany()[nrPola];
    if ((stan & spObiekt) != 0) {
        if (ZwolnijTrzymany(pole, blad) && Pole(nrPola) == pole) // this object may have been cleared meanwhile
            FPola[nrPola] = nullptr;
        return;
    }
    FPola[nrPola] = nullptr;
    if ((stan & spDestrukcja) != 0)
        ZwolnijTrzymany(pole, blad);
    else
        UsunPole(pole, stan);
}

void TObiekt::ZwolnijPola(bool zachowajTablice) {
    TPierwszyBlad blad;
    for (int nr = ilePol_ - 1; nr >= 0; --nr) {
        TPole* const pole = Pole(nr);
        if (pole != nullptr) {
            if (!wyniesione_ && Lezy(pole, FPola, BajtyBloku(pojPol_, miejsca_))) [[likely]] {
                FPola[nr] = nullptr;
                ZakonczWBloku(pole, Stany()[nr] >> 4U);
            } else {
                ZwolnijPole(nr, blad);
            }
        }
        // The end of a field may have written to others, below and above.
        if (!zachowajTablice && ilePol_ == nr + 1 && FPola[nr] == nullptr)
            ilePol_ = nr;
    }
    if (zachowajTablice) {
        // The places are free again, unless a field has left one or was written meanwhile.
        if (!wyniesione_ && std::all_of(FPola, FPola + ilePol_, [](const TPole* pole) { return pole == nullptr; }))
            zajete_ = jestPoprzedni_ ? 1 : 0;
    } else if (FPola != nullptr && ilePol_ == 0) {
        OddajBlok();
    }
    blad.Rzuc();
}

void TObiekt::ZerujDane() {
    const TBlokadaObiektu blokada(*this);
    if (FPola != nullptr)
        ZwolnijPola(false);
}

// --- whether fields hold values

bool TObiekt::PoleNiepuste(int nrPola) const {
    if (nrPola != CalyObiekt) {
        const TPole* pole = Pole(nrPola);
        if (pole == nullptr)
            return false;
        const std::uint8_t stan = Stany()[nrPola];
        return (stan & spObiekt) != 0 ? static_cast<const TObiektBazowy*>(pole)->PoleNiepuste(CalyObiekt)
                                      : (stan & spWartosc) != 0;
    }
    const std::uint8_t* stany = FPola == nullptr ? nullptr : Stany();
    for (int nr = 0; nr < ilePol_; ++nr)
        if ((stany[nr] & (spWartosc | spObiekt)) == spWartosc && FPola[nr] != nullptr)
            return true;
    for (int nr = 0; nr < ilePol_; ++nr)
        if ((stany[nr] & spObiekt) != 0 && FPola[nr] != nullptr) {
            // Only a chain of objects without any value of their own recurses further.
            const TPoziom poziom(ZagniezdzenieWatku(), *this);
            if (static_cast<const TObiektBazowy*>(FPola[nr])->PoleNiepuste(CalyObiekt))
                return true;
        }
    return false;
}

bool TObiekt::PoleDoZapisu(int nrPola) const {
    if (nrPola != CalyObiekt)
        return PoleNiepuste(nrPola) && PoleZapisywane(nrPola);
    for (int nr = 0; nr < ilePol_; ++nr)
        if (FPola[nr] != nullptr && PoleDoZapisu(nr))
            return true;
    return false;
}

void TObiekt::UstawNiepuste(int nrPola, bool niepuste) {
    if (nrPola == CalyObiekt) {
        if (!niepuste)
            ZerujDane();
        return;
    }
    if (nrPola < 0 || nrPola >= ilePol_)
        return;
    std::uint8_t& stan = Stany()[nrPola];
    if (niepuste) {
        if ((stan & spObiekt) == 0)
            stan |= spWartosc;
    } else {
        stan &= static_cast<std::uint8_t>(~spWartosc);
        if (FPola[nrPola] != nullptr)
            FPola[nrPola]->ZerujDane();
    }
}

bool TObiekt::MaDefWartosc(int nrPola) const {
    const TPole* pole = Pole(nrPola);
    return pole == nullptr || pole->MaDefWartosc();
}

// --- typed access

namespace {

template <class P> bool JestPolem(const TPole& pole, unsigned kod) {
    if constexpr (P::KodPola != kpInne && P::CechyKlasy == (P::CechyKlasy & ~ckPoleRef))
        return kod == P::KodPola;
    else
        return pole.JestKlasy(P::KlasaStatyczna());
}

} // namespace

template <class P> P* TObiekt::PoleKlasy(int nrPola) const {
    TPole* pole = Pole(nrPola);
    if (pole == nullptr)
        return nullptr;
    if (!JestPolem<P>(*pole, Stany()[nrPola] >> 4U)) [[unlikely]]
        ZglosZlyTyp(nrPola, *pole, P::KlasaStatyczna());
    return static_cast<P*>(pole);
}

template <class P> P& TObiekt::PoleDoZapisuKlasy(int nrPola) {
    if (P* pole = PoleKlasy<P>(nrPola); pole != nullptr) [[likely]]
        return *pole;
    if (!JestPole(nrPola, nullptr, true))
        ZTErrorFmt(Komunikat(kmBrakPola), {NazwaKlasy(), nrPola});
    return *PoleKlasy<P>(nrPola);
}

void TObiekt::ZglosZlyTyp(int nrPola, const TPole& pole, const TKlasa* spodziewana) const {
    throw EBladRzutowania(Formatuj(Komunikat(kmNiezgodnyTypPola),
                                   {NazwaKlasy(), NazwaPolaNr(nrPola), pole.NazwaKlasy(), spodziewana->nazwa}));
}

template <class P> auto TObiekt::Czytaj(int nrPola) const {
    // The value itself, also of a text, which its field shows as a view only: copied before the lock is released.
    using TWartosc = std::remove_cvref_t<decltype(std::declval<const P&>().Wartosc())>;
    using W = std::conditional_t<std::is_same_v<TWartosc, std::u16string_view>, std::u16string, TWartosc>;
    const TBlokadaObiektu blokada(*this);
    const P* pole = PoleKlasy<P>(nrPola);
    return pole == nullptr ? W{} : W(pole->Wartosc());
}

template <class P, class W> void TObiekt::Pisz(int nrPola, W wartosc) {
    const TBlokadaObiektu blokada(*this);
    PoleDoZapisuKlasy<P>(nrPola).UstawWartosc(wartosc);
    UstawNiepuste(nrPola, true);
    SetBylyZmiany(nrPola);
}

std::uint8_t TObiekt::GetPoleByte(int nrPola) const { return Czytaj<TPoleByte>(nrPola); }
std::int16_t TObiekt::GetPoleSmallint(int nrPola) const { return Czytaj<TPoleSmallint>(nrPola); }
std::uint16_t TObiekt::GetPoleWord(int nrPola) const { return Czytaj<TPoleWord>(nrPola); }
std::int32_t TObiekt::GetPoleInteger(int nrPola) const { return Czytaj<TPoleInteger>(nrPola); }
std::uint32_t TObiekt::GetPoleCardinal(int nrPola) const { return Czytaj<TPoleCardinal>(nrPola); }
std::int64_t TObiekt::GetPoleInt64(int nrPola) const { return Czytaj<TPoleInt64>(nrPola); }
double TObiekt::GetPoleDouble(int nrPola) const { return Czytaj<TPoleDouble>(nrPola); }
double TObiekt::GetPoleDateTime(int nrPola) const { return Czytaj<TPoleDateTime>(nrPola); }
double TObiekt::GetPoleDate(int nrPola) const { return Czytaj<TPoleDate>(nrPola); }
double TObiekt::GetPoleTime(int nrPola) const { return Czytaj<TPoleTime>(nrPola); }
bool TObiekt::GetPoleBoolean(int nrPola) const { return Czytaj<TPoleBoolean>(nrPola); }
std::u16string TObiekt::GetPoleString(int nrPola) const { return Czytaj<TPoleString>(nrPola); }
std::u16string TObiekt::GetPoleCDATA(int nrPola) const { return Czytaj<TPoleString>(nrPola); }
std::string TObiekt::GetPoleRawByteString(int nrPola) const { return Czytaj<TPoleRawByteString>(nrPola); }
std::u16string TObiekt::GetPoleWideString(int nrPola) const { return Czytaj<TPoleWideString>(nrPola); }

void TObiekt::SetPoleByte(int nrPola, std::uint8_t wartosc) { Pisz<TPoleByte>(nrPola, wartosc); }
void TObiekt::SetPoleSmallint(int nrPola, std::int16_t wartosc) { Pisz<TPoleSmallint>(nrPola, wartosc); }
void TObiekt::SetPoleWord(int nrPola, std::uint16_t wartosc) { Pisz<TPoleWord>(nrPola, wartosc); }
void TObiekt::SetPoleInteger(int nrPola, std::int32_t wartosc) { Pisz<TPoleInteger>(nrPola, wartosc); }
void TObiekt::SetPoleCardinal(int nrPola, std::uint32_t wartosc) { Pisz<TPoleCardinal>(nrPola, wartosc); }
void TObiekt::SetPoleInt64(int nrPola, std::int64_t wartosc) { Pisz<TPoleInt64>(nrPola, wartosc); }
void TObiekt::SetPoleDouble(int nrPola, double wartosc) { Pisz<TPoleDouble>(nrPola, wartosc); }
void TObiekt::SetPoleDateTime(int nrPola, double wartosc) { Pisz<TPoleDateTime>(nrPola, wartosc); }
void TObiekt::SetPoleDate(int nrPola, double wartosc) { Pisz<TPoleDate>(nrPola, wartosc); }
void TObiekt::SetPoleTime(int nrPola, double wartosc) { Pisz<TPoleTime>(nrPola, wartosc); }

void TObiekt::SetPoleBoolean(int nrPola, TBajtLogiczny wartosc) {
    if (wartosc.Bajt() > 1)
        ZTErrorFmt(Komunikat(kmBlednaWartoscBoolean), {wartosc.Bajt()});
    Pisz<TPoleBoolean>(nrPola, wartosc.Bajt());
}

void TObiekt::SetPoleString(int nrPola, std::u16string_view wartosc) {
    if (!wartosc.empty()) {
        Pisz<TPoleString>(nrPola, wartosc);
        return;
    }
    const TBlokadaObiektu blokada(*this);
    static_cast<void>(PoleKlasy<TPoleString>(nrPola));
    UstawNiepuste(nrPola, false);
    SetBylyZmiany(nrPola);
}

void TObiekt::SetPoleCDATA(int nrPola, std::u16string_view wartosc) { Pisz<TPoleString>(nrPola, wartosc); }
void TObiekt::SetPoleRawByteString(int nrPola, std::string_view wartosc) { Pisz<TPoleRawByteString>(nrPola, wartosc); }
void TObiekt::SetPoleWideString(int nrPola, std::u16string_view wartosc) { Pisz<TPoleWideString>(nrPola, wartosc); }

TObiektBazowy* TObiekt::GetPoleRefObiektu(int nrPola) const {
    const TBlokadaObiektu blokada(*this);
    const TPoleRefObiektu* pole = PoleKlasy<TPoleRefObiektu>(nrPola);
    return pole == nullptr ? nullptr : pole->Obiekt();
}

TObiektBazowy* TObiekt::GetPoleWskObiektu(int nrPola) const {
    const TBlokadaObiektu blokada(*this);
    const TPoleWskObiektu* pole = PoleKlasy<TPoleWskObiektu>(nrPola);
    return pole == nullptr ? nullptr : pole->Obiekt();
}

void TObiekt::SetPoleRefObiektu(int nrPola, TObiektBazowy* wartosc) {
    const TBlokadaObiektu blokada(*this);
    PoleDoZapisuKlasy<TPoleRefObiektu>(nrPola).UstawObiekt(wartosc);
    UstawNiepuste(nrPola, true);
    SetBylyZmiany(nrPola);
}

void TObiekt::SetPoleWskObiektu(int nrPola, TObiektBazowy* wartosc) {
    const TBlokadaObiektu blokada(*this);
    PoleDoZapisuKlasy<TPoleWskObiektu>(nrPola).UstawObiekt(wartosc);
    UstawNiepuste(nrPola, true);
    SetBylyZmiany(nrPola);
}

TWariant TObiekt::GetVariantowo(int nrPola) const {
    const TBlokadaObiektu blokada(*this);
    const TPole* pole = Pole(nrPola);
    return pole == nullptr ? TWariant() : pole->GetJakoVariant();
}

void TObiekt::SetVariantowo(int nrPola, const TWariant& wartosc) {
    const TBlokadaObiektu blokada(*this);
    TPole* pole = DajPole(nrPola);
    if (pole == nullptr)
        ZTErrorFmt(Komunikat(kmBrakPola), {NazwaKlasy(), nrPola});
    pole->SetJakoVariant(wartosc);
    UstawNiepuste(nrPola, true);
    SetBylyZmiany(nrPola);
}

TPoleStrList* TObiekt::GetPoleStrList(int nrPola) const { return CzytajListe<TPoleStrList>(nrPola); }
TPoleWideStrList* TObiekt::GetPoleWideStrList(int nrPola) const { return CzytajListe<TPoleWideStrList>(nrPola); }

template <class P> P* TObiekt::CzytajListe(int nrPola) const {
    const TBlokadaObiektu blokada(*this);
    return PoleKlasy<P>(nrPola);
}

template <class P> void TObiekt::PiszListe(int nrPola, const P& wartosc) {
    const TBlokadaObiektu blokada(*this);
    P& pole = PoleDoZapisuKlasy<P>(nrPola);
    if (&pole != &wartosc)
        pole.UstawWartosci(wartosc.Wartosci());
    pole.UstawNiepuste(CalyObiekt, true);
    SetBylyZmiany(nrPola);
}

void TObiekt::SetPoleStrList(int nrPola, const TPoleStrList& wartosc) { PiszListe(nrPola, wartosc); }
void TObiekt::SetPoleWideStrList(int nrPola, const TPoleWideStrList& wartosc) { PiszListe(nrPola, wartosc); }

} // namespace ztok
