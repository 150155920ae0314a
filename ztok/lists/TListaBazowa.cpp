#include "ztok/lists/TListaBazowa.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <new>
#include <unordered_map>
#include <vector>

#include "ztok/fields/Konwersje.h"
#include "ztok/kernel/Selektory.h"
#include "ztok/kernel/TObiekt.h"
#include "ztok/lists/TListaObiektow.h"
#include "ztok/lists/TListaWskObiektow.h"
#include "ztok/lists/TPorownywaczDanych.h"
#include "ztok/lists/TRozneElementy.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/LiczbyTekst.h"
#include "ztok/platform/PulaWnetrze.h"
#include "ztok/platform/TPierwszyBlad.h"
#include "ztok/util/ZTBledy.h"
#include "ztok/util/Zagniezdzenie.h"

namespace ztok {

ZTOK_KLASA_DEF(TListaBazowa, TObiektBazowy)

bool TEnumListaBazowaOdKonca::MoveNext() noexcept {
    const std::int32_t ile = FLista->IleObiektow();
    if (FKtory <= 0 || ile == 0)
        return false;
    FKtory = ile <= FKtory ? ile - 1 : FKtory - 1;
    return true;
}

namespace {

// Small arrays come from the pool; larger ones can grow in their place.
std::size_t BajtyTablicy(std::int32_t pojemnosc) noexcept {
    return static_cast<std::size_t>(pojemnosc) * sizeof(TObiektBazowy*);
}

void OddajTablice(PListaObiektowBazowych tablica, std::int32_t pojemnosc) noexcept {
    if (BajtyTablicy(pojemnosc) > NajwiekszyBlokPuli)
        std::free(static_cast<void*>(tablica));
    else if (tablica != nullptr)
        pula::Zwolnij(static_cast<void*>(tablica), BajtyTablicy(pojemnosc));
}

// An array of the new capacity with the old one's slots; null when there is no memory.
PListaObiektowBazowych ZmienTablice(PListaObiektowBazowych tablica, std::int32_t stara, std::int32_t nowa) {
    const std::size_t bajty = BajtyTablicy(nowa);
    const bool zPuli = tablica == nullptr || BajtyTablicy(stara) <= NajwiekszyBlokPuli;
    if (bajty > NajwiekszyBlokPuli && (!zPuli || tablica == nullptr))
        return static_cast<PListaObiektowBazowych>(std::realloc(static_cast<void*>(tablica), bajty));
    void* blok = bajty > NajwiekszyBlokPuli ? std::malloc(bajty) : pula::Przydziel(bajty);
    if (blok != nullptr && tablica != nullptr) {
        std::memcpy(blok, static_cast<const void*>(tablica), std::min(bajty, BajtyTablicy(stara)));
        OddajTablice(tablica, stara);
    }
    return static_cast<PListaObiektowBazowych>(blok);
}

} // namespace

TListaBazowa::~TListaBazowa() {
    DokonczZycie();
    OddajTablice(FObiekty, FPojemnosc);
}

// --- size

void TListaBazowa::UstawPojemnosc(std::int32_t pojemnosc) {
    ZamknijDziury();
    ZmienPojemnosc(pojemnosc);
}

void TListaBazowa::ZmienPojemnosc(std::int32_t pojemnosc) {
    if (pojemnosc == FPojemnosc)
        return;
    if (pojemnosc <= 0) {
        OddajTablice(FObiekty, FPojemnosc);
        FObiekty = nullptr;
        FPojemnosc = 0;
        return;
    }
    if (static_cast<std::size_t>(pojemnosc) > static_cast<std::size_t>(-1) / sizeof(TObiektBazowy*))
        throw std::bad_alloc();
    PListaObiektowBazowych tablica = ZmienTablice(FObiekty, FPojemnosc, pojemnosc);
    if (tablica == nullptr)
        throw std::bad_alloc();
    FObiekty = tablica;
    FPojemnosc = pojemnosc;
}

void TListaBazowa::ZwiekszPojemnosc() {
    ZamknijDziury();
    const std::int32_t c = FPojemnosc;
    // The steps are visible to users and fixed.
    UstawPojemnosc(c + (c > 128 ? c / 8 : c > 8 ? 16 : 4));
}

void TListaBazowa::ZerujDane() {
    FIleObiektow = 0;
    UstawPojemnosc(0);
}

void TListaBazowa::SkrocListe(std::int32_t nowyRozm, bool zachowajPojemnosc) {
    ZamknijDziury();
    if (nowyRozm < 0)
        nowyRozm = 0;
    if (nowyRozm < FIleObiektow)
        FIleObiektow = nowyRozm;
    if (!zachowajPojemnosc)
        UstawPojemnosc(nowyRozm);
}

void TListaBazowa::WyrownajDoListy(const TListaBazowa& /*lista*/, bool /*zachowajPojemnosc*/) {
    ZTErrorFmt(Komunikat(kmBrakWyrownania), {NazwaKlasy()});
}

void TListaBazowa::WykonajZamkniecie() const noexcept {
    EDziury stan = saDziury;
    if (dziury_.compare_exchange_strong(stan, zamykane, std::memory_order_acquire)) {
        // Nobody has seen the list since the elements died: this is the end of their removal.
        auto& lista = static_cast<TListaRefObiektow&>(const_cast<TListaBazowa&>(*this));
        TPierwszyBlad pominiety; // a larger array than need be
        pominiety.Wykonaj([&] { lista.ZmienPojemnosc(lista.UsunDziury()); });
        dziury_.store(bezDziur, std::memory_order_release);
        return;
    }
    while (dziury_.load(std::memory_order_acquire) == zamykane) {
        // another thread is about it
    }
}

// --- adding

TObiektBazowy* TListaBazowa::DodajObiekt(TObiektBazowy* nowyObiekt, std::int32_t gdzie) {
    ZamknijDziury();
    if (FIleObiektow == FPojemnosc)
        ZwiekszPojemnosc();
    if (gdzie < 0)
        gdzie = 0;
    if (gdzie > FIleObiektow)
        gdzie = FIleObiektow;
    // NOLINTBEGIN(clang-analyzer-core.NonNullParamChecker,clang-analyzer-core.NullDereference): room was made above
    if (gdzie < FIleObiektow)
        std::memmove(static_cast<void*>(FObiekty + gdzie + 1), static_cast<const void*>(FObiekty + gdzie),
                     static_cast<std::size_t>(FIleObiektow - gdzie) * sizeof(TObiektBazowy*));
    FObiekty[gdzie] = nowyObiekt;
    // NOLINTEND(clang-analyzer-core.NonNullParamChecker,clang-analyzer-core.NullDereference)
    ++FIleObiektow;
    return nowyObiekt;
}

TObiektBazowy* TListaBazowa::DopiszObiekt(TObiektBazowy* nowyObiekt, std::int32_t gdzie) {
    return DodajObiekt(nowyObiekt, gdzie);
}

void TListaBazowa::PrzypnijObiekt(TObiektBazowy* obiekt) { DodajObiekt(obiekt, MaxInt); }

TObiektBazowy* TListaBazowa::DopiszTenGdyBrak(TObiektBazowy* nowyObiekt, TArgumenty pola, TRozmiarLiter rozmLiter) {
    std::int32_t gdzie = -1;
    if (nowyObiekt != nullptr && JestObiektTakiJak(*nowyObiekt, pola, gdzie, rozmLiter, rwOdKonca, MaxInt))
        return FObiekty[gdzie];
    return DopiszObiekt(nowyObiekt, MaxInt);
}

TObiektBazowy* TListaBazowa::PrzeniesZListy(TListaBazowa& lista, std::int32_t nrObiektu, std::int32_t gdzie) {
    if (const TObiektBazowy* element = lista.Obiekty(nrObiektu); element != nullptr)
        SprawdzPrzenoszony(lista, *element);
    return DodajObiekt(lista.UsunObiekt(nrObiektu, false, false), gdzie);
}

void TListaBazowa::PoPrzeniesieniu(TListaBazowa& /*lista*/, std::int32_t /*od*/, std::int32_t /*ile*/) {
    BladAbstrakcyjny(KlasaStatyczna(), u"PoPrzeniesieniu");
}
void TListaBazowa::SprawdzElement(const TObiektBazowy& /*element*/) {}

// --- removing

std::int32_t TListaBazowa::MiejsceElementu(std::int32_t gdzie, const TObiektBazowy* obiekt) const noexcept {
    return Obiekty(gdzie) == obiekt ? gdzie : ZnajdzObiekt(obiekt);
}

bool TListaBazowa::NilujPoZwolnieniu(std::int32_t gdzie, const TObiektBazowy* obiekt) noexcept {
    gdzie = MiejsceElementu(gdzie, obiekt);
    if (gdzie >= 0)
        FObiekty[gdzie] = nullptr;
    return gdzie >= 0;
}

TObiektBazowy* TListaBazowa::UsunObiekt(std::int32_t nrObiektu, bool zwolnij, bool zachowajPojemnosc) {
    ZamknijDziury();
    if (nrObiektu < 0 || nrObiektu >= FIleObiektow)
        return nullptr;
    TObiektBazowy* obiekt = FObiekty[nrObiektu];
    if (zwolnij) {
        Zwolnij(obiekt);
        nrObiektu = MiejsceElementu(nrObiektu, obiekt);
        if (nrObiektu < 0)
            return nullptr;
        obiekt = nullptr;
    }
    --FIleObiektow;
    std::memmove(static_cast<void*>(FObiekty + nrObiektu), static_cast<const void*>(FObiekty + nrObiektu + 1),
                 static_cast<std::size_t>(FIleObiektow - nrObiektu) * sizeof(TObiektBazowy*));
    if (!zachowajPojemnosc)
        UstawPojemnosc(PojemnoscPoUsunieciu(FPojemnosc, FIleObiektow));
    return obiekt;
}

TObiektBazowy* TListaBazowa::UsunTenObiekt(const TObiektBazowy* obiekt, bool zwolnij) {
    const std::int32_t gdzie = ZnajdzObiekt(obiekt);
    return gdzie < 0 ? nullptr : UsunObiekt(gdzie, zwolnij, false);
}

TObiektBazowy* TListaBazowa::UsunTakiObiekt(const TObiektBazowy& obiekt, bool zwolnij) {
    std::int32_t gdzie = -1;
    return JestTakiObiekt(obiekt, gdzie) ? UsunObiekt(gdzie, zwolnij, false) : nullptr;
}

void TListaBazowa::UsunObiektyNil(bool zachowajPojemnosc) {
    ZamknijDziury();
    std::int32_t dokad = 0;
    for (std::int32_t skad = 0; skad < FIleObiektow; ++skad)
        if (FObiekty[skad] != nullptr)
            FObiekty[dokad++] = FObiekty[skad];
    FIleObiektow = dokad;
    if (!zachowajPojemnosc)
        UstawPojemnosc(FIleObiektow);
}

bool TListaBazowa::UsunObiekty(TArgumenty /*pola*/, TArgumenty /*wartosci*/, TRozmiarLiter /*rozmLiter*/) {
    BladAbstrakcyjny(KlasaStatyczna(), u"UsunObiekty");
}
bool TListaBazowa::UsunObiektyOprocz(TArgumenty /*pola*/, TArgumenty /*wartosci*/, TRozmiarLiter /*rozmLiter*/) {
    BladAbstrakcyjny(KlasaStatyczna(), u"UsunObiektyOprocz");
}
bool TListaBazowa::UsunTeObiekty(const TListaWskObiektow& /*obiekty*/, bool /*zachowajPojemnosc*/) {
    BladAbstrakcyjny(KlasaStatyczna(), u"UsunTeObiekty");
}
bool TListaBazowa::UsunDuplikaty(TArgumenty /*pola*/, TRozmiarLiter /*rozmLiter*/) {
    BladAbstrakcyjny(KlasaStatyczna(), u"UsunDuplikaty");
}

namespace {

// Which elements equal an earlier one, as far as that can be found in order: for each its position, else -1.
std::vector<std::int32_t> WczesniejszeRowne(const TListaBazowa& lista, TArgumenty pola, TRozmiarLiter rozmLiter,
                                            bool zwolnij) {
    std::vector<std::int32_t> wynik;
    std::vector<const TObiektBazowy*> cele;
    if (!TRozneElementy::MoznaUporzadkowac(lista, nullptr, pola, &cele))
        return wynik;
    TRozneElementy rozne(pola, rozmLiter);
    wynik.assign(static_cast<std::size_t>(lista.IleObiektow()), -1);
    for (std::int32_t i = 0; i < lista.IleObiektow(); ++i)
        if (const TObiektBazowy* element = lista.Obiekty(i); element != nullptr)
            wynik[static_cast<std::size_t>(i)] = rozne.Dodaj(*element, i);
    if (zwolnij) {
        // An element that dies clears the references at it and its parts: what held them may equal another one then.
        for (const TObiektBazowy*& cel : cele)
            for (int poziom = 0; cel != nullptr && cel->Rodzic() != &lista; cel = cel->Rodzic())
                if (++poziom > 2 * kZaglebienieDomyslne) // parents that go round
                    return {};
        std::sort(cele.begin(), cele.end(), std::less<>());
        for (std::int32_t i = 0; i < lista.IleObiektow(); ++i)
            if (wynik[static_cast<std::size_t>(i)] >= 0 &&
                std::binary_search(cele.begin(), cele.end(), lista.Obiekty(i), std::less<>()))
                return {};
    }
    return wynik;
}

} // namespace

bool TListaBazowa::WykonajUsunDuplikaty(TArgumenty pola, TRozmiarLiter rozmLiter, bool zwolnijRef, bool zwolnij) {
    SprawdzSelektoryElementow(u"UD", this, pola);
    TPierwszyBlad blad;
    bool usunieto = false;
    ZamknijDziury();
    // A reference list may hold an object more than once: it refers to it until the last one goes.
    std::unordered_map<const TObiektBazowy*, std::int32_t> wystapienia;
    // An element that cannot be compared ends the search; those dropped so far leave no holes.
    blad.Wykonaj([&] {
        const auto rowne = [&](const TObiektBazowy& a, const TObiektBazowy& b) {
            return (pola.empty() ? TPorownywaczDanych::PorownajDowolne(a, b)
                                 : PorownajWgOcenionych(a, b, pola, rozmLiter, LocaleWin1250)) == 0;
        };
        std::vector<std::int32_t> wczesniejsze = WczesniejszeRowne(*this, pola, rozmLiter, zwolnij);
        if (zwolnijRef)
            for (std::int32_t i = 0; i < FIleObiektow; ++i)
                ++wystapienia[FObiekty[i]];
        const std::int32_t ile = FIleObiektow;
        for (std::int32_t i = FIleObiektow - 1; i >= 1; --i) {
            TObiektBazowy* element = Obiekty(i); // asked anew each time: what dies may tell somebody who edits the list
            if (element == nullptr)
                continue;
            if (FIleObiektow != ile)
                wczesniejsze.clear();
            std::int32_t j = i - 1;
            if (!wczesniejsze.empty()) {
                const std::int32_t znany = wczesniejsze[static_cast<std::size_t>(i)];
                if (znany < 0)
                    continue;
                // What was told of a death may have changed them.
                if (const TObiektBazowy* inny = Obiekty(znany); inny != nullptr && rowne(*element, *inny))
                    j = znany;
            }
            while (j >= 0 && !(Obiekty(j) != nullptr && rowne(*element, *Obiekty(j))))
                --j;
            if (j < 0 || Obiekty(i) != element)
                continue;
            if (zwolnij) {
                if (ZwolnijTrzymany(element, blad))
                    usunieto = NilujPoZwolnieniu(i, element) || usunieto;
                continue;
            }
            FObiekty[i] = nullptr;
            usunieto = true;
            if (zwolnijRef && --wystapienia[element] == 0)
                element->ZwolnijRefOd(this);
        }
    });
    if (usunieto)
        UsunObiektyNil(false);
    blad.Rzuc();
    return usunieto;
}

// --- order

bool TListaBazowa::PrzeniesObiekt(std::int32_t nrObiektu, std::int32_t gdzie) {
    ZamknijDziury();
    if (nrObiektu == gdzie || nrObiektu < 0 || gdzie < 0 || nrObiektu >= FIleObiektow || gdzie >= FIleObiektow)
        return false;
    TObiektBazowy* obiekt = FObiekty[nrObiektu];
    if (nrObiektu < gdzie)
        std::memmove(static_cast<void*>(FObiekty + nrObiektu), static_cast<const void*>(FObiekty + nrObiektu + 1),
                     static_cast<std::size_t>(gdzie - nrObiektu) * sizeof(TObiektBazowy*));
    else
        std::memmove(static_cast<void*>(FObiekty + gdzie + 1), static_cast<const void*>(FObiekty + gdzie),
                     static_cast<std::size_t>(nrObiektu - gdzie) * sizeof(TObiektBazowy*));
    FObiekty[gdzie] = obiekt;
    return true;
}

std::int16_t TListaBazowa::PorownajObiekty(const TObiektBazowy& obiektA, const TObiektBazowy& obiektB) const {
    return static_cast<std::int16_t>(TPorownywaczDanych::PorownajDowolne(obiektA, obiektB));
}

// --- as a field of its owner

std::u16string TListaBazowa::WartWgMaski(std::u16string_view maska, const TUstawieniaFormatu* ustawienia) const {
    return maska == u"*" ? IntNaTekst(IleObiektow()) : TObiektBazowy::WartWgMaski(maska, ustawienia);
}

bool TListaBazowa::PoleNiepuste(int nrPola) const {
    if (nrPola == CalyObiekt)
        return IleObiektow() >= 1;
    const TObiektBazowy* element = Obiekty(nrPola);
    return element != nullptr && element->PoleNiepuste(CalyObiekt);
}

bool TListaBazowa::PoleDoZapisu(int nrPola) const {
    if (nrPola == CalyObiekt)
        return IleObiektow() >= 1;
    const TObiektBazowy* element = Obiekty(nrPola);
    return element != nullptr && element->PoleDoZapisu(CalyObiekt);
}

void TListaBazowa::UstawNiepuste(int nrPola, bool niepuste) {
    if (niepuste)
        return;
    if (nrPola == CalyObiekt)
        ZerujDane();
    else
        UsunObiekt(nrPola, true, false);
}

void TListaBazowa::ZerujDanePol(TArgumenty pola) {
    SprawdzSelektoryElementow(u"ZDP", this, pola);
    const TOcenione ocenione;
    const TPoziom poziom(ZagniezdzenieWatku(), *this);
    for (TObiektBazowy* element : ListaOdKonca())
        if (element != nullptr)
            element->ZerujDanePol(pola);
}

void TListaBazowa::ZerujDaneOprocz(TArgumenty pola) {
    SprawdzSelektoryElementow(u"ZDO", this, pola);
    const TOcenione ocenione;
    const TPoziom poziom(ZagniezdzenieWatku(), *this);
    for (TObiektBazowy* element : ListaOdKonca())
        if (element != nullptr)
            element->ZerujDaneOprocz(pola);
}

void TListaBazowa::PrzytnijPolaWgRozm(bool trymuj) {
    const TPoziom poziom(ZagniezdzenieWatku(), *this);
    for (TObiektBazowy* element : *this)
        if (JestDoObejscia(element))
            element->PrzytnijPolaWgRozm(trymuj);
}

void TListaBazowa::TrymujPolaTekstowe(bool podobiektyTez) {
    const TPoziom poziom(ZagniezdzenieWatku(), *this);
    for (TObiektBazowy* element : ListaOdKonca())
        if (JestDoObejscia(element))
            element->TrymujPolaTekstowe(podobiektyTez);
}

bool TListaBazowa::SaDaneUnicode(int nrPola) const {
    const TPoziom poziom(ZagniezdzenieWatku(), *this);
    for (const TObiektBazowy* element : *this)
        if (JestDoObejscia(element) && element->SaDaneUnicode(nrPola))
            return true;
    return false;
}

std::u16string TListaBazowa::OpisTekstowy() const { return Formatuj(Komunikat(kmIleElementow), {IleObiektow()}); }

void TListaBazowa::WpiszDaneDoPol(TArgumenty p_KtorePola, TArgumenty p_JakieWartosci) {
    SprawdzDlugosci(u"WD", p_KtorePola, p_JakieWartosci);
    SprawdzSelektoryElementow(u"WD", this, p_KtorePola);
    for (TObiektBazowy* element : *this) {
        if (element == nullptr)
            continue;
        if (!element->Klasa()->Ma(ckObiekt))
            BladKlasy(*element, TObiekt::KlasaStatyczna());
        static_cast<TObiekt*>(element)->WpiszDane(p_KtorePola, p_JakieWartosci);
    }
}

template <class F>
std::int32_t TListaBazowa::PorownajElementy(const TObiektBazowy& inny, TPorownywaczDanych& porownywacz,
                                            const F& porownaj) const {
    SprawdzKlase(inny, TListaBazowa::KlasaStatyczna());
    const auto& inna = static_cast<const TListaBazowa&>(inny);
    if (inna.IleObiektow() != IleObiektow())
        return inna.FIleObiektow < FIleObiektow ? 1 : -1;
    const TPoziom poziom(porownywacz.Zagniezdzenie, *this); // a pointer list may hold itself
    for (std::int32_t i = 0; i < FIleObiektow; ++i) {
        const TObiektBazowy* tu = Obiekty(i);
        const TObiektBazowy* tam = inna.Obiekty(i);
        std::int32_t wynik = static_cast<int>(tu != nullptr) - static_cast<int>(tam != nullptr);
        if (tu != tam && tu != nullptr && tam != nullptr)
            wynik = porownaj(*tu, *tam);
        if (wynik != 0)
            return wynik;
    }
    return 0;
}

std::int32_t TListaBazowa::WykonajPorownWgPol(const TObiektBazowy& inny, TArgumenty pola,
                                              TPorownywaczDanych& porownywacz) const {
    return PorownajElementy(inny, porownywacz, [&](const TObiektBazowy& tu, const TObiektBazowy& tam) {
        return tu.WykonajPorownWgPol(tam, pola, porownywacz);
    });
}

std::int32_t TListaBazowa::WykonajPorownOproczPol(const TObiektBazowy& inny, TArgumenty pola,
                                                  TPorownywaczDanych& porownywacz) const {
    return PorownajElementy(inny, porownywacz, [&](const TObiektBazowy& tu, const TObiektBazowy& tam) {
        return tu.WykonajPorownOproczPol(tam, pola, porownywacz);
    });
}

// --- elements by text

bool TListaBazowa::WydzielNumerElem(std::u16string_view& sciezka, std::u16string_view& numer) noexcept {
    if (sciezka.empty() || sciezka.front() != u'[')
        return false;
    const std::size_t koniec = sciezka.find(u']');
    if (koniec == std::u16string_view::npos)
        return false;
    numer = sciezka.substr(1, koniec - 1);
    sciezka.remove_prefix(koniec + 1);
    if (!sciezka.empty() && sciezka.front() == u'.')
        sciezka.remove_prefix(1);
    return true;
}

TObiektBazowy* TListaBazowa::DajElemListy(std::u16string_view opis, bool tworz) {
    if (CompareTxtSgn(opis, u"Max") == 0)
        return Obiekty(IleObiektow() - 1);
    if (std::int32_t numer = 0; SprobujTekstNaInt(opis, numer))
        return Obiekty(numer);
    return DajElemListyWCech(opis, tworz);
}

bool RozbierzWarunki(std::u16string_view opis, std::vector<TArgument>& nazwy, std::vector<TArgument>& wartosci) {
    while (true) {
        const std::size_t rowna = opis.find(u'=');
        if (rowna == std::u16string_view::npos)
            return !nazwy.empty();
        if (rowna == 0 || rowna + 1 == opis.size())
            return false;
        nazwy.emplace_back(opis.substr(0, rowna));
        opis.remove_prefix(rowna + 1);
        std::size_t koniec = 0;
        if (opis.front() == u'\'') {
            koniec = opis.find(u'\'', 1);
            if (koniec == std::u16string_view::npos)
                return false;
            wartosci.emplace_back(opis.substr(1, koniec - 1));
            ++koniec;
        } else {
            koniec = std::min(opis.find(u';'), opis.size());
            wartosci.emplace_back(opis.substr(0, koniec));
        }
        opis.remove_prefix(koniec);
        if (opis.empty())
            return true;
        if (opis.front() != u';')
            return false;
        opis.remove_prefix(1);
    }
}

TObiektBazowy* TListaBazowa::DajElemListyWCech(std::u16string_view opis, bool tworz) {
    std::vector<TArgument> nazwy;
    std::vector<TArgument> wartosci;
    if (!RozbierzWarunki(opis, nazwy, wartosci))
        return nullptr;
    const TOcenione pytanie; // conditions that no element can meet lead nowhere
    if (std::int32_t gdzie = -1; JestObiekt(nazwy, wartosci, gdzie, rlRozmLiterWazny, rwOdKonca, MaxInt))
        return FObiekty[gdzie];
    if (!tworz || !Klasa()->Ma(ckListaObiektow))
        return nullptr;
    return static_cast<TListaObiektow&>(*this).DodajZDanymi(MaxInt, nazwy, wartosci);
}

} // namespace ztok
