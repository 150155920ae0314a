#include "ztok/util/Blowfish.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <span>
#include <type_traits>
#include <utility>
#include <vector>

#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/PierwszeUzycie.h"
#include "ztok/platform/TSekcjaKrytyczna.h"
#include "ztok/util/Szyfratory.h"
#include "ztok/util/Wymazanie.h"
#include "ztok/util/ZTBledy.h"
#include "ztok/util/Zttypybazowe.h"

namespace ztok {

// The ciphers of the keys used last.
class TPamiecSzyfratorow {
  public:
    TPamiecSzyfratorow() = default;
    TPamiecSzyfratorow(const TPamiecSzyfratorow&) = delete;
    TPamiecSzyfratorow& operator=(const TPamiecSzyfratorow&) = delete;
    ~TPamiecSzyfratorow() = default;

    // The cipher of the key, counted as in use until Oddaj.
    const TSzyfrator& Wez(std::string_view klucz) {
        const TBlokada blokada(sekcja_);
        TSzyfrator& szyfrator = klucz.empty() ? Domyslny() : Szukaj(klucz);
        szyfrator.FTrwaSzyfrowanie.fetch_add(1, std::memory_order_relaxed);
        return szyfrator;
    }

    void Oddaj(const TSzyfrator& szyfrator) noexcept {
        const_cast<TSzyfrator&>(szyfrator).FTrwaSzyfrowanie.fetch_sub(1, std::memory_order_release);
        const TBlokada blokada(sekcja_);
        if (lista_.size() > kNajwiecej)
            UsunBezczynne(ostatni_);
    }

    void Zwolnij() noexcept {
        const TBlokada blokada(sekcja_);
        UsunBezczynne(nullptr);
    }

    [[nodiscard]] std::size_t Ile() noexcept {
        const TBlokada blokada(sekcja_);
        return lista_.size();
    }

  private:
    static constexpr std::size_t kNajwiecej = 64;

    // Stays where it is made, since a short text that is moved leaves its bytes behind.
    struct TWpis {
        explicit TWpis(std::string_view k) : szyfrator(k), klucz(k) {}
        TWpis(const TWpis&) = delete;
        TWpis& operator=(const TWpis&) = delete;
        ~TWpis() { WymazSekret(klucz.data(), klucz.size()); }

        TSzyfrator szyfrator;
        std::string klucz;
    };
    using TElement = std::unique_ptr<TWpis>;

    // Whoever reads the library finds this key: it hides a text from a glance, no more.
    TSzyfrator& Domyslny() {
        if (domyslny_ == nullptr) {
            constexpr std::array<std::string_view, 3> kawalki = {"Ztok",
                                                                 "\xA7"
                                                                 "2026",
                                                                 "szyfr-domyslny"};
            std::string klucz;
            for (const std::string_view kawalek : kawalki)
                klucz += kawalek;
            domyslny_ = std::make_unique<TSzyfrator>(klucz);
        }
        return *domyslny_;
    }

    TSzyfrator& Szukaj(std::string_view klucz) {
        auto gdzie = std::lower_bound(lista_.begin(), lista_.end(), klucz,
                                      [](const TElement& wpis, std::string_view k) { return wpis->klucz < k; });
        if (gdzie == lista_.end() || (*gdzie)->klucz != klucz)
            gdzie = lista_.insert(gdzie, std::make_unique<TWpis>(klucz));
        ostatni_ = &(*gdzie)->szyfrator;
        return *ostatni_;
    }

    // Frees the ciphers that nobody uses, but not the one given.
    void UsunBezczynne(const TSzyfrator* zostaje) noexcept {
        std::erase_if(lista_, [zostaje](const TElement& wpis) {
            const bool bezczynny = wpis->szyfrator.FTrwaSzyfrowanie.load(std::memory_order_acquire) == 0;
            return bezczynny && &wpis->szyfrator != zostaje;
        });
        if (zostaje == nullptr)
            ostatni_ = nullptr;
    }

    TSekcjaKrytyczna sekcja_;
    std::vector<TElement> lista_; // by key, in the order of its bytes
    TSzyfrator* ostatni_ = nullptr;
    std::unique_ptr<TSzyfrator> domyslny_;
};

namespace {

constinit std::atomic<TPamiecSzyfratorow*> pamiecSzyfratorow{nullptr};

// Holds the cipher of a key for its own lifetime.
class TUzycie {
  public:
    explicit TUzycie(std::string_view klucz)
        : pamiec_(PrzyPierwszymUzyciu(pamiecSzyfratorow)), szyfrator_(pamiec_.Wez(klucz)) {}
    TUzycie(const TUzycie&) = delete;
    TUzycie& operator=(const TUzycie&) = delete;
    ~TUzycie() { pamiec_.Oddaj(szyfrator_); }

    const TSzyfrator* operator->() const noexcept { return &szyfrator_; }

  private:
    TPamiecSzyfratorow& pamiec_;
    const TSzyfrator& szyfrator_;
};

template <class TZnak> std::basic_string<TZnak> Szyfruj(const void* bajty, std::size_t ile, std::string_view klucz) {
    TZTMemoryStream strumien;
    strumien.WriteBuffer(bajty, ile);
    SzyfrujStrumien(strumien, klucz);
    constexpr char cyfry[] = "0123456789ABCDEF";
    std::basic_string<TZnak> wynik;
    wynik.reserve(strumien.Zawartosc().size() * 2);
    for (const std::uint8_t bajt : strumien.Zawartosc()) {
        wynik.push_back(static_cast<TZnak>(cyfry[bajt >> 4U]));
        wynik.push_back(static_cast<TZnak>(cyfry[bajt & 0xFU]));
    }
    return wynik;
}

template <class TZnak> std::uint8_t Cyfra(TZnak znak) {
    if (znak >= TZnak('0') && znak <= TZnak('9'))
        return static_cast<std::uint8_t>(znak - TZnak('0'));
    if (znak >= TZnak('A') && znak <= TZnak('F'))
        return static_cast<std::uint8_t>(znak - TZnak('A') + 10);
    if (znak >= TZnak('a') && znak <= TZnak('f'))
        return static_cast<std::uint8_t>(znak - TZnak('a') + 10);
    const int kod = static_cast<std::make_unsigned_t<TZnak>>(znak);
    ZTErrorFmt(kmDeszyfrujTekst, {Formatuj(Komunikat(kmZnakNieSzesnastkowy), {kod})});
}

template <class TTekst, class TZnak> TTekst Deszyfruj(std::basic_string_view<TZnak> tekst, std::string_view klucz) {
    if (tekst.size() % 2 != 0)
        ZTError(kmDeszyfrujTekstOdd);
    TZTMemoryStream strumien;
    strumien.SetSize(static_cast<std::int64_t>(tekst.size() / 2));
    std::size_t i = 0;
    for (std::uint8_t& bajt : strumien.Zawartosc()) {
        const unsigned wyzsza = Cyfra(tekst[i++]);
        bajt = static_cast<std::uint8_t>(wyzsza << 4U | Cyfra(tekst[i++]));
    }
    const TUzycie szyfrator(klucz);
    try {
        szyfrator->OdszyfrujStrumien(strumien);
    } catch (const ZTException&) {
        ZTErrorFmt(kmDeszyfrujTekst, {Komunikat(kmNieudaneDeszyfrowanie)});
    }
    const std::span<const std::uint8_t> bajty = strumien.Zawartosc();
    TTekst wynik(bajty.size() / sizeof(typename TTekst::value_type), {});
    if (bajty.size() % sizeof(typename TTekst::value_type) != 0) // the key fits, but no text of such units was there
        ZTErrorFmt(kmDeszyfrujTekst, {Komunikat(kmNieudaneDeszyfrowanie)});
    if (!bajty.empty())
        std::memcpy(wynik.data(), bajty.data(), bajty.size());
    return wynik;
}

} // namespace

void SzyfrujStrumien(TStrumien& Zrodlo, TStrumien& Cel, std::string_view Klucz) {
    TUzycie(Klucz)->SzyfrujStrumien(Zrodlo, Cel);
}

void OdszyfrujStrumien(TStrumien& Zrodlo, TStrumien& Cel, std::string_view Klucz) {
    TUzycie(Klucz)->OdszyfrujStrumien(Zrodlo, Cel);
}

void SzyfrujStrumien(TZTMemoryStream& Strumien, std::string_view Klucz) { TUzycie(Klucz)->SzyfrujStrumien(Strumien); }

void OdszyfrujStrumien(TZTMemoryStream& Strumien, std::string_view Klucz) {
    TUzycie(Klucz)->OdszyfrujStrumien(Strumien);
}

std::u16string SzyfrujTekst(std::u16string_view Tekst, std::string_view Klucz) {
    return Szyfruj<char16_t>(Tekst.data(), Tekst.size() * sizeof(char16_t), Klucz);
}

std::string SzyfrujTekstAnsi(std::string_view Tekst, std::string_view Klucz) {
    return Szyfruj<char>(Tekst.data(), Tekst.size(), Klucz);
}

std::u16string DeszyfrujTekst(std::u16string_view Tekst, std::string_view Klucz) {
    return Deszyfruj<std::u16string>(Tekst, Klucz);
}

std::string DeszyfrujTekstAnsi(std::string_view Tekst, std::string_view Klucz) {
    return Deszyfruj<std::string>(Tekst, Klucz);
}

void ZwolnijSzyfratory() noexcept {
    if (TPamiecSzyfratorow* pamiec = pamiecSzyfratorow.load(std::memory_order_acquire); pamiec != nullptr)
        pamiec->Zwolnij();
}

std::size_t IleSzyfratorow() noexcept {
    TPamiecSzyfratorow* pamiec = pamiecSzyfratorow.load(std::memory_order_acquire);
    return pamiec != nullptr ? pamiec->Ile() : 0;
}

void ZwolnijPamiecSzyfratorow() noexcept { delete pamiecSzyfratorow.exchange(nullptr, std::memory_order_acq_rel); }

} // namespace ztok
