#include "ztok/persist/TOdczytywaczDanych.h"

#include <algorithm>

#include "ztok/fields/Konwersje.h"
#include "ztok/fields/TPoleWskObiektu.h"
#include "ztok/fields/TTekstPola.h"
#include "ztok/lists/TListaWskObiektow.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/Komunikaty.h"
#include "ztok/platform/PulaWnetrze.h"
#include "ztok/platform/TStrumien.h"
#include "ztok/platform/TStrumienPlikowy.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {

namespace {

// What a text may grow by before more of it has been read, for a stream that cannot tell how much is left.
constexpr std::size_t kKrokTekstu = 64UL * 1024UL;

// The entry that the test accepts, or null. What dies during a read was read lately, or stands next to what died before
// it, as the elements of a list do: the search goes from the end and both ways from the place of the last one found.
template <class T, class F> T* ZnajdzWpis(std::vector<T>& wpisy, std::size_t& ostatni, F toTen) noexcept {
    const std::size_t ile = wpisy.size();
    for (std::size_t k = 0; k < ile; ++k)
        for (const std::size_t i : {ile - 1 - k, ostatni - k, ostatni + k}) // below zero it is a large number
            if (i < ile && toTen(wpisy[i])) {
                ostatni = i;
                return &wpisy[i];
            }
    return nullptr;
}

} // namespace

TLicznikZagniezdzenia& ZagniezdzenieWatku() noexcept {
    static constinit thread_local TLicznikZagniezdzenia licznik;
    return licznik;
}

void BladZagniezdzenia(const TObiektOgolny& obiekt, int granica) {
    ZTErrorFmt(Komunikat(kmZaGlebokieZagniezdzenie), {obiekt.NazwaKlasy(), granica});
}

TOdczytywaczDanych::TOdczytywaczDanych(bool odczytANSI, const TLimityOdczytu& limity)
    : FOdczytANSI(odczytANSI), limity_(limity) {
    Zagniezdzenie.granica = limity.zaglebienie;
}

TOdczytywaczDanych::~TOdczytywaczDanych() = default;

void TOdczytywaczDanych::ZgubPole(const TPole& pole) noexcept {
    // An object that no reader has numbered, such as a hook's temporary one, needs no search.
    const std::uint32_t cechy = pole.Klasa()->cechy;
    const bool obiekt = (cechy & ckObiektBazowy) != 0;
    if (obiekt && !static_cast<const TObiektBazowy&>(pole).odczytany_)
        return;
    if (obiekt)
        if (auto* wpis = ZnajdzWpis(OdczObiekty, ostatniObiekt_, [&pole](const TPole* p) { return p == &pole; }))
            *wpis = nullptr;
    if ((cechy & (ckPoleWsk | ckListaWsk)) != 0)
        if (auto* wpis = ZnajdzWpis(OdczRef, ostatniRef_, [&pole](const TWpisRef& w) { return w.pole == &pole; }))
            wpis->pole = nullptr;
}

void TOdczytywaczDanych::OdczytywanoPole(TPole& pole) {
    const std::uint32_t cechy = pole.Klasa()->cechy;
    if ((cechy & ckObiektBazowy) != 0) {
        OdczObiekty.push_back(static_cast<TObiektBazowy*>(&pole));
        OdczObiekty.back()->odczytany_ = true;
    }
    if ((cechy & (ckPoleWsk | ckListaWsk)) != 0)
        OdczRef.push_back({&pole, (cechy & ckListaWsk) != 0, nullptr, Numery.size(), 0});
}

void TOdczytywaczDanych::NumerPola(TPoleWskObiektu& pole, std::uint32_t numer) {
    if (OdczRef.empty() || OdczRef.back().pole != &pole)
        OdczRef.push_back({&pole, false, nullptr, Numery.size(), 0});
    Numery.push_back(numer);
    OdczRef.back().ile = 1;
}

void TOdczytywaczDanych::NumerElementu(TListaWskObiektow& lista, std::uint32_t numer) {
    if (OdczRef.empty() || OdczRef.back().pole != &lista)
        OdczRef.push_back({&lista, true, nullptr, Numery.size(), 0});
    Numery.push_back(numer);
    ++OdczRef.back().ile;
}

TObiektBazowy* TOdczytywaczDanych::ObiektONumerze(std::uint32_t numer) const noexcept {
    return numer >= 1 && numer <= OdczObiekty.size() ? OdczObiekty[numer - 1] : nullptr;
}

void TOdczytywaczDanych::KorygujReferencje() {
    for (TWpisRef& wpis : OdczRef) {
        TPole* pole = wpis.pole;
        if (pole == nullptr)
            continue;
        if (wpis.lista) {
            auto& lista = static_cast<TListaWskObiektow&>(*pole);
            std::int32_t ile = 0;
            for (std::size_t i = 0; i < wpis.ile; ++i)
                ile += ObiektONumerze(Numery[wpis.od + i]) != nullptr ? 1 : 0;
            lista.UstawPojemnosc(lista.IleObiektow() + ile); // a hook may have put some there
            for (std::size_t i = 0; i < wpis.ile && wpis.pole != nullptr; ++i)
                if (TObiektBazowy* obiekt = ObiektONumerze(Numery[wpis.od + i]); obiekt != nullptr)
                    lista.DodajObiekt(obiekt, MaxInt);
        } else if (wpis.ile != 0) {
            TObiektBazowy* obiekt = ObiektONumerze(Numery[wpis.od]);
            if (obiekt != nullptr && wpis.klasa != nullptr && !obiekt->JestKlasy(wpis.klasa))
                obiekt = nullptr;
            static_cast<TPoleWskObiektu&>(*pole).UstawObiekt(obiekt);
        }
        wpis.pole = nullptr; // resolved
    }
}

void TOdczytywaczDanych::ZerujReferencje() noexcept {
    for (TWpisRef& wpis : OdczRef)
        if (TPole* pole = std::exchange(wpis.pole, nullptr); pole != nullptr) {
            try {
                pole->ZerujDane();
            } catch (...) { // NOLINT(bugprone-empty-catch): the error that ended the read is the one to be told
            }
        }
}

// --- counts and texts

std::uint32_t TOdczytywaczDanych::WczytajLicznik15(TStrumien& strumien) {
    std::uint8_t bajty[2];
    strumien.ReadBuffer(bajty, 1);
    if (bajty[0] < 0x80)
        return bajty[0];
    strumien.ReadBuffer(bajty + 1, 1);
    return ((bajty[0] & 0x7FU) << 8U) | bajty[1];
}

std::uint32_t TOdczytywaczDanych::WczytajLicznik30(TStrumien& strumien) {
    std::uint8_t bajty[4];
    strumien.ReadBuffer(bajty, 1);
    if (bajty[0] < 0x80)
        return bajty[0];
    if (bajty[0] < 0xC0) {
        strumien.ReadBuffer(bajty + 1, 1);
        return ((bajty[0] & 0x7FU) << 8U) | bajty[1];
    }
    strumien.ReadBuffer(bajty + 1, 3);
    return ((bajty[0] & 0x3FU) << 24U) | (static_cast<std::uint32_t>(bajty[1]) << 16U) |
           (static_cast<std::uint32_t>(bajty[3]) << 8U) | bajty[2];
}

std::uint32_t TOdczytywaczDanych::WczytajLicznik31(TStrumien& strumien) {
    std::uint8_t bajty[4];
    strumien.ReadBuffer(bajty, 2);
    const std::uint32_t pierwsze = static_cast<std::uint32_t>(bajty[1]) << 8U | bajty[0];
    if (pierwsze < 0x8000)
        return pierwsze;
    strumien.ReadBuffer(bajty + 2, 2);
    return ((pierwsze & 0x7FFFU) << 16U) | (static_cast<std::uint32_t>(bajty[3]) << 8U) | bajty[2];
}

void TOdczytywaczDanych::BladLimitu(std::u16string_view limit, std::int64_t wartosc) {
    ZTErrorFmt(Komunikat(kmPrzekroczonoLimit), {limit, wartosc});
}

namespace {

[[noreturn]] void BladLicznikaPonadDane(std::uint32_t licznik) {
    ZTErrorFmt(Komunikat(kmLicznikPonadDane), {static_cast<std::int64_t>(licznik)});
}

// Reads the length of a text and checks it before anything is allocated.
std::size_t WczytajDlugosc(TStrumien& strumien, TOdczytywaczDanych* odczytywacz) {
    const std::uint32_t dlugosc = TOdczytywaczDanych::WczytajLicznik30(strumien);
    if (!strumien.MozeMiec(dlugosc))
        BladLicznikaPonadDane(dlugosc);
    if (odczytywacz != nullptr)
        odczytywacz->SprawdzTekst(dlugosc);
    else if (dlugosc > TLimityOdczytu{}.bajtyTekstu)
        ZTErrorFmt(Komunikat(kmPrzekroczonoLimit), {u"rozmiar tekstu w bajtach", TLimityOdczytu{}.bajtyTekstu});
    return dlugosc;
}

// Reads the bytes step by step, so that a false length costs no more than the data that are there.
void WczytajBajty(TStrumien& strumien, std::string& bajty, std::size_t dlugosc) {
    bajty.clear();
    while (bajty.size() < dlugosc) {
        const std::size_t mam = bajty.size();
        const std::size_t krok = std::min(dlugosc - mam, std::max(kKrokTekstu, mam));
        bajty.resize(mam + krok);
        strumien.ReadBuffer(bajty.data() + mam, krok);
    }
}

void Przyjmij(std::u16string& cel, std::u16string tekst) { cel = std::move(tekst); }
void Przyjmij(TTekstPola& cel, std::u16string_view tekst) { cel.Ustaw(tekst); }

constexpr std::size_t kKrotkiTekst = TTekstPola::kNajdluzszyOdRazu;

void DekodujKrotki(std::u16string& cel, const char* bajty, std::size_t ile) {
    char16_t znaki[kKrotkiTekst];
    cel.assign(znaki, DekodujUtf8(bajty, ile, znaki));
}
void DekodujKrotki(TTekstPola& cel, const char* bajty, std::size_t ile) { cel.UstawUtf8(bajty, ile); }

// Decodes the bytes that `wez` gives, through a small buffer, and hands the text to `odbior` piece by piece.
template <class TWez, class TOdbior> void DekodujKawalkami(TWez wez, std::size_t dlugosc, TOdbior odbior) {
    std::string bajty(kKrokTekstu, '\0');
    std::u16string znaki(kKrokTekstu, u'\0');
    for (std::size_t mam = 0; mam + dlugosc > 0;) {
        const std::size_t krok = std::min(dlugosc, kKrokTekstu - mam);
        wez(bajty.data() + mam, krok);
        mam += krok;
        dlugosc -= krok;
        const std::size_t pelne = dlugosc == 0 ? mam : PelneUtf8({bajty.data(), mam});
        odbior(std::u16string_view(znaki.data(), DekodujUtf8(bajty.data(), pelne, znaki.data())));
        std::copy(bajty.data() + pelne, bajty.data() + mam, bajty.data());
        mam -= pelne;
    }
}

void Wyczysc(std::u16string& cel) noexcept { cel = std::u16string(); }
void Wyczysc(TTekstPola& cel) noexcept { cel.Wyczysc(); }

char16_t* Przygotuj(std::u16string& cel, std::size_t ile) {
    cel.resize(ile);
    return cel.data();
}
char16_t* Przygotuj(TTekstPola& cel, std::size_t ile) { return cel.Przygotuj(ile); }

// Reads the bytes twice, to count and to convert, so that only the text itself takes much memory. `odPoczatku` gives
// the function that reads them, from their beginning.
template <class TTekst, class TOdPoczatku>
void DekodujDwukrotnie(TTekst& tekst, std::size_t dlugosc, TOdPoczatku odPoczatku) {
    std::size_t ile = 0;
    DekodujKawalkami(odPoczatku(), dlugosc, [&](std::u16string_view znaki) { ile += znaki.size(); });
    Wyczysc(tekst);
    char16_t* gdzie = Przygotuj(tekst, ile);
    try {
        DekodujKawalkami(odPoczatku(), dlugosc, [&](std::u16string_view znaki) {
            const std::size_t miesci = std::min(ile, znaki.size()); // a file may have been changed meanwhile
            gdzie = std::copy_n(znaki.data(), miesci, gdzie);
            ile -= miesci;
        });
    } catch (...) {
        Wyczysc(tekst);
        throw;
    }
    std::fill_n(gdzie, ile, u'\uFFFD');
}

void DekodujDlugi(std::u16string& cel, std::string_view bajtyUtf8) { cel = Utf16ZUtf8(bajtyUtf8); }

// A long text goes to its place by pieces: it is never in memory twice.
void DekodujDlugi(TTekstPola& cel, std::string_view bajtyUtf8) {
    if (!PoprawneUtf8(bajtyUtf8)) {
        DekodujDwukrotnie(cel, bajtyUtf8.size(), [bajtyUtf8] {
            return [skad = bajtyUtf8.data()](char* gdzie, std::size_t ile) mutable {
                std::copy_n(skad, ile, gdzie);
                skad += ile;
            };
        });
        return;
    }
    cel.UstawPoprawneUtf8(bajtyUtf8);
}

// A long text of a file is in memory only once, in its place.
template <class TTekst> void WczytajDlugiZPliku(TStrumienPlikowy& plik, TTekst& tekst, std::size_t dlugosc) {
    DekodujDwukrotnie(tekst, dlugosc, [&plik, poczatek = plik.GetPosition()] {
        plik.Seek(poczatek, ESeek::Poczatek);
        return [&plik](char* cel, std::size_t ile) { plik.ReadBuffer(cel, ile); };
    });
}

// A long text whose length in units shows only at its end, put together from pieces: it grows where it stands.
class TSkladanyTekst {
  public:
    // `najwyzej`: units that it can have, more than the pool's largest block holds.
    explicit TSkladanyTekst(std::size_t najwyzej)
        : najwyzej_(najwyzej), pojemnosc_(std::min(najwyzej, kKrokTekstu)), znaki_(tekst_.Przygotuj(pojemnosc_)) {}

    void Dopisz(std::u16string_view dalej) {
        if (dalej.size() > pojemnosc_ - ile_) {
            pojemnosc_ = std::min(najwyzej_, 2 * pojemnosc_ + dalej.size());
            znaki_ = tekst_.ZmienDlugosc(pojemnosc_);
        }
        dalej.copy(znaki_ + ile_, dalej.size());
        ile_ += dalej.size();
    }
    void Oddaj(TTekstPola& cel) {
        znaki_ = tekst_.ZmienDlugosc(ile_);
        cel.Przejmij(tekst_);
    }

  private:
    TTekstPola tekst_;
    std::size_t najwyzej_;
    std::size_t pojemnosc_;
    std::size_t ile_ = 0;
    char16_t* znaki_;
};

// A long text that can be read only once.
void WczytajDlugi(TStrumien& strumien, TTekstPola& tekst, std::size_t dlugosc) {
    TSkladanyTekst skladany(dlugosc);
    DekodujKawalkami([&strumien](char* cel, std::size_t ile) { strumien.ReadBuffer(cel, ile); }, dlugosc,
                     [&skladany](std::u16string_view znaki) { skladany.Dopisz(znaki); });
    skladany.Oddaj(tekst);
}
void WczytajDlugi(TStrumien& strumien, std::u16string& tekst, std::size_t dlugosc) {
    std::string bajty;
    WczytajBajty(strumien, bajty, dlugosc);
    tekst = Utf16ZUtf8(bajty);
}

// The same of the code page, of one byte a unit.
void WczytajDlugiAnsi(TStrumien& strumien, TTekstPola& tekst, std::size_t dlugosc) {
    TSkladanyTekst skladany(dlugosc);
    for (std::string bajty; dlugosc > 0; dlugosc -= bajty.size()) {
        bajty.resize(std::min(dlugosc, kKrokTekstu));
        strumien.ReadBuffer(bajty.data(), bajty.size());
        skladany.Dopisz(PolskiWide(bajty));
    }
    skladany.Oddaj(tekst);
}
void WczytajDlugiAnsi(TStrumien& strumien, std::u16string& tekst, std::size_t dlugosc) {
    std::string bajty;
    WczytajBajty(strumien, bajty, dlugosc);
    tekst = PolskiWide(bajty);
}

// Decodes UTF-8 in the stream's window, where most texts lie whole.
template <class TTekst> void WczytajTekstUtf8(TStrumien& strumien, TTekst& tekst, std::size_t dlugosc) {
    if (const auto okno = strumien.Okno(); okno.size() >= dlugosc) {
        const char* bajty = reinterpret_cast<const char*>(okno.data());
        if (dlugosc <= kKrotkiTekst) {
            DekodujKrotki(tekst, bajty, dlugosc);
        } else {
            DekodujDlugi(tekst, {bajty, dlugosc});
        }
        strumien.Pomin(static_cast<std::int64_t>(dlugosc));
        return;
    }
    if (dlugosc > kKrokTekstu) {
        if (auto* plik = dynamic_cast<TStrumienPlikowy*>(&strumien); plik != nullptr)
            WczytajDlugiZPliku(*plik, tekst, dlugosc);
        else
            WczytajDlugi(strumien, tekst, dlugosc);
        return;
    }
    std::string bajty;
    WczytajBajty(strumien, bajty, dlugosc);
    DekodujDlugi(tekst, bajty);
}

template <class TTekst> void WczytajTekst(TStrumien& strumien, TTekst& tekst, TOdczytywaczDanych* odczytywacz) {
    if (odczytywacz == nullptr || !odczytywacz->FOdczytANSI) {
        WczytajTekstUtf8(strumien, tekst, WczytajDlugosc(strumien, odczytywacz));
        return;
    }
    const std::size_t dlugosc = WczytajDlugosc(strumien, odczytywacz);
    if (dlugosc > kKrokTekstu)
        return WczytajDlugiAnsi(strumien, tekst, dlugosc);
    std::string bajty;
    WczytajBajty(strumien, bajty, dlugosc);
    Przyjmij(tekst, PolskiWide(bajty));
}

} // namespace

void TOdczytywaczDanych::SprawdzTekst(std::uint32_t dlugosc) {
    if (dlugosc > limity_.bajtyTekstu)
        BladLimitu(u"rozmiar tekstu w bajtach", limity_.bajtyTekstu);
    ZuzyjPamiec(2LL * dlugosc);
}

void TOdczytywaczDanych::WczytajAnsiString(TStrumien& strumien, std::string& bajty, TOdczytywaczDanych* odczytywacz) {
    WczytajBajty(strumien, bajty, WczytajDlugosc(strumien, odczytywacz));
}

void TOdczytywaczDanych::WczytajWideString(TStrumien& strumien, std::u16string& tekst,
                                           TOdczytywaczDanych* odczytywacz) {
    WczytajTekst(strumien, tekst, odczytywacz);
}
void TOdczytywaczDanych::WczytajWideString(TStrumien& strumien, TTekstPola& tekst, TOdczytywaczDanych* odczytywacz) {
    // Most texts have a count of one byte and lie in the stream's window.
    if (const auto okno = strumien.Okno(); !okno.empty() && okno[0] < 0x80 && okno[0] < okno.size() &&
                                           odczytywacz != nullptr && !odczytywacz->FOdczytANSI) {
        const std::uint8_t dlugosc = okno[0];
        odczytywacz->SprawdzTekst(dlugosc);
        tekst.UstawUtf8(reinterpret_cast<const char*>(okno.data()) + 1, dlugosc);
        strumien.Pomin(dlugosc + 1);
        return;
    }
    WczytajTekst(strumien, tekst, odczytywacz);
}

void TOdczytywaczDanych::WczytajUtf8(TStrumien& strumien, std::u16string& tekst, TOdczytywaczDanych* odczytywacz) {
    WczytajTekstUtf8(strumien, tekst, WczytajDlugosc(strumien, odczytywacz));
}
void TOdczytywaczDanych::WczytajUtf8(TStrumien& strumien, TTekstPola& tekst, TOdczytywaczDanych* odczytywacz) {
    WczytajTekstUtf8(strumien, tekst, WczytajDlugosc(strumien, odczytywacz));
}

std::uint32_t TOdczytywaczDanych::WczytajIleElementow(TStrumien& strumien, std::uint32_t bajtowNaElement) {
    const std::uint32_t ile = WczytajLicznik31(strumien);
    if (!strumien.MozeMiec(static_cast<std::int64_t>(ile) * bajtowNaElement))
        BladLicznikaPonadDane(ile);
    return ile;
}

} // namespace ztok
