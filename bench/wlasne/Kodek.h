// The binary form written by hand: what a program pays that knows its structs when it is compiled, and has nothing else
// of the model. docs/format-binarny.md has the grammar. Numbers are written always; a text, a list or a reference only
// when there is one, which is what the trees of the benchmarks hold.
#pragma once

#include <algorithm>
#include <bit>
#include <cstring>
#include <initializer_list>
#include <stdexcept>

#include "dane/Dane.h"

namespace pomiary::kodek {

static_assert(std::endian::native == std::endian::little, "numbers are copied as they lie in memory");

// Whether a character of two units, one of four bytes, begins there.
inline bool JestPara(std::u16string_view tekst, std::size_t i) {
    return (tekst[i] & 0xFC00) == 0xD800 && i + 1 < tekst.size() && (tekst[i + 1] & 0xFC00) == 0xDC00;
}

// Bytes of the text as UTF-8; a lone surrogate takes the three of its code.
inline std::size_t DlugoscUtf8(std::u16string_view tekst) {
    std::size_t bajtow = 0;
    for (std::size_t i = 0; i < tekst.size(); ++i) {
        if (JestPara(tekst, i)) {
            bajtow += 4;
            ++i;
        } else {
            bajtow += 1U + (tekst[i] >= 0x80 ? 1U : 0U) + (tekst[i] >= 0x800 ? 1U : 0U);
        }
    }
    return bajtow;
}

inline char* Koduj(std::u16string_view tekst, char* cel) {
    const auto bajt = [&cel](std::uint32_t b) { *cel++ = static_cast<char>(b); };
    for (std::size_t i = 0; i < tekst.size(); ++i) {
        std::uint32_t znak = tekst[i];
        if (znak < 0x80) {
            bajt(znak);
        } else if (znak < 0x800) {
            bajt(0xC0 | znak >> 6U);
            bajt(0x80 | (znak & 0x3F));
        } else if (JestPara(tekst, i)) {
            znak = 0x10000 + ((znak & 0x3FF) << 10U) + (tekst[++i] & 0x3FFU);
            bajt(0xF0 | znak >> 18U);
            bajt(0x80 | (znak >> 12U & 0x3F));
            bajt(0x80 | (znak >> 6U & 0x3F));
            bajt(0x80 | (znak & 0x3F));
        } else {
            bajt(0xE0 | znak >> 12U);
            bajt(0x80 | (znak >> 6U & 0x3F));
            bajt(0x80 | (znak & 0x3F));
        }
    }
    return cel;
}

// Raises std::runtime_error for bytes that are no UTF-8.
inline std::u16string Dekoduj(std::string_view bajty) {
    std::u16string wynik(bajty.size(), u'\0');
    char16_t* cel = wynik.data();
    for (std::size_t i = 0; i < bajty.size();) {
        const auto pierwszy = static_cast<unsigned char>(bajty[i++]);
        if (pierwszy < 0x80) {
            *cel++ = pierwszy;
            continue;
        }
        const std::size_t dalsze = pierwszy >= 0xF0 ? 3 : pierwszy >= 0xE0 ? 2 : 1;
        if (pierwszy < 0xC2 || pierwszy > 0xF4 || bajty.size() - i < dalsze)
            throw std::runtime_error("kodek: UTF-8");
        std::uint32_t znak = pierwszy & (0x3FU >> dalsze);
        for (std::size_t j = 0; j < dalsze; ++j) {
            const auto bajt = static_cast<unsigned char>(bajty[i++]);
            if ((bajt & 0xC0) != 0x80)
                throw std::runtime_error("kodek: UTF-8");
            znak = znak << 6U | (bajt & 0x3FU);
        }
        if (znak >= 0x10000) {
            *cel++ = static_cast<char16_t>(0xD7C0 + (znak >> 10U));
            *cel++ = static_cast<char16_t>(0xDC00 | (znak & 0x3FF));
        } else {
            *cel++ = static_cast<char16_t>(znak);
        }
    }
    wynik.resize(static_cast<std::size_t>(cel - wynik.data()));
    return wynik;
}

// The number that the first object of each list takes in the stream: the root is 1, and lists take numbers too.
struct TNumery {
    std::uint32_t klienci = 0;
    std::uint32_t waluty = 0;
    std::uint32_t znaki = 0;

    template <class TTekst> explicit TNumery(const dane::TBazaT<TTekst>& baza) {
        klienci = 4;
        for (const auto& faktura : baza.faktury)
            klienci += static_cast<std::uint32_t>(2 + faktura.pozycje.size());
        waluty = klienci + static_cast<std::uint32_t>(baza.klienci.size()) + 1;
    }
    template <class TTekst> explicit TNumery(const dane::TZnakiT<TTekst>& /*znaki*/) : znaki(3) {}

    template <class TTekst> std::uint32_t Pierwszy(const dane::TKlientT<TTekst>* /*cel*/) const { return klienci; }
    template <class TTekst> std::uint32_t Pierwszy(const dane::TWalutaT<TTekst>* /*cel*/) const { return waluty; }
    template <class TTekst> std::uint32_t Pierwszy(const dane::TZnakT<TTekst>* /*cel*/) const { return znaki; }
};

class TPisarz {
  public:
    TPisarz(std::string& bufor, const TNumery& numery)
        : bufor_(bufor), numery_(numery), gdzie_(bufor.data()), koniec_(bufor.data() + bufor.size()) {}

    template <class S> void Rekord(const S& struktura) {
        std::uint32_t mapa = 0;
        unsigned nr = 0;
        KazdePole(struktura, [&](std::string_view, const auto& pole) { mapa |= (Jest(pole) ? 1U : 0U) << nr++; });
        Miejsce(1 + sizeof mapa);
        const auto bajtow = static_cast<unsigned>(std::bit_width(mapa) + 7) / 8;
        *gdzie_++ = static_cast<char>(bajtow);
        std::memcpy(gdzie_, &mapa, sizeof mapa);
        gdzie_ += bajtow;
        KazdePole(struktura, [&](std::string_view, const auto& pole) {
            if (Jest(pole))
                Wartosc(pole);
        });
    }
    [[nodiscard]] std::size_t Zapisano() const { return static_cast<std::size_t>(gdzie_ - bufor_.data()); }

  private:
    template <class W> static bool Jest(const W& wartosc) {
        if constexpr (dane::kTekst<W> || dane::kLista<W>)
            return !wartosc.empty();
        else if constexpr (dane::kOdniesienie<W>)
            return wartosc.cel != nullptr;
        else
            return true;
    }
    template <class W> void Wartosc(const W& wartosc) {
        if constexpr (dane::kTekst<W>) {
            Tekst(wartosc);
        } else if constexpr (dane::kLista<W>) {
            Miejsce(4);
            Licznik31(static_cast<std::uint32_t>(wartosc.size()));
            for (const auto& element : wartosc)
                Rekord(element);
        } else if constexpr (dane::kOdniesienie<W>) {
            Miejsce(4);
            Licznik31(numery_.Pierwszy(wartosc.cel) + static_cast<std::uint32_t>(wartosc.numer));
        } else {
            Miejsce(sizeof wartosc);
            std::memcpy(gdzie_, &wartosc, sizeof wartosc);
            gdzie_ += sizeof wartosc;
        }
    }
    void Tekst(std::string_view tekst) {
        Miejsce(4 + tekst.size());
        Licznik30(static_cast<std::uint32_t>(tekst.size()));
        std::memcpy(gdzie_, tekst.data(), tekst.size());
        gdzie_ += tekst.size();
    }
    void Tekst(std::u16string_view tekst) {
        const std::size_t bajtow = DlugoscUtf8(tekst);
        Miejsce(4 + bajtow);
        Licznik30(static_cast<std::uint32_t>(bajtow));
        gdzie_ = Koduj(tekst, gdzie_);
    }
    void Licznik30(std::uint32_t n) {
        if (n < 0x80) {
            Bajty({n});
        } else if (n < 0x4000) {
            Bajty({0x80 | n >> 8U, n});
        } else {
            Bajty({0xC0 | n >> 24U, n >> 16U, n, n >> 8U});
        }
    }
    void Licznik31(std::uint32_t n) {
        if (n < 0x8000) {
            Bajty({n, n >> 8U});
        } else {
            Bajty({n >> 16U, 0x80 | n >> 24U, n, n >> 8U});
        }
    }
    void Bajty(std::initializer_list<std::uint32_t> bajty) {
        for (const std::uint32_t bajt : bajty)
            *gdzie_++ = static_cast<char>(bajt);
    }
    void Miejsce(std::size_t ile) {
        if (static_cast<std::size_t>(koniec_ - gdzie_) >= ile)
            return;
        const std::size_t zapisano = Zapisano();
        bufor_.resize(2 * bufor_.size() + ile);
        gdzie_ = bufor_.data() + zapisano;
        koniec_ = bufor_.data() + bufor_.size();
    }

    std::string& bufor_;
    const TNumery& numery_;
    char* gdzie_;
    char* koniec_;
};

class TCzytelnik {
  public:
    explicit TCzytelnik(std::string_view bajty) : reszta_(bajty) {}

    template <class S> void Rekord(S& struktura) {
        std::uint32_t mapa = 0;
        const std::string_view bajty = Wez(Bajt());
        std::memcpy(&mapa, bajty.data(), std::min(bajty.size(), sizeof mapa));
        unsigned nr = 0;
        KazdePole(struktura, [&](std::string_view, auto& pole) {
            if ((mapa >> nr++ & 1U) != 0)
                Wartosc(pole);
        });
    }

  private:
    template <class W> void Wartosc(W& wartosc) {
        if constexpr (std::is_same_v<W, std::string>) {
            wartosc = Wez(Licznik30());
        } else if constexpr (std::is_same_v<W, std::u16string>) {
            wartosc = Dekoduj(Wez(Licznik30()));
        } else if constexpr (dane::kLista<W>) {
            const std::uint32_t ile = Licznik31();
            if (ile > reszta_.size())
                throw std::runtime_error("kodek: count");
            wartosc.resize(ile);
            for (auto& element : wartosc)
                Rekord(element);
        } else if constexpr (dane::kOdniesienie<W>) {
            wartosc.numer = static_cast<std::int32_t>(Licznik31());
        } else {
            std::memcpy(&wartosc, Wez(sizeof wartosc).data(), sizeof wartosc);
        }
    }
    std::uint32_t Licznik30() {
        const std::uint32_t b = Bajt();
        if (b < 0x80)
            return b;
        if (b < 0xC0)
            return (b & 0x3FU) << 8U | Bajt();
        const std::uint32_t gora = (b & 0x3FU) << 24U | Bajt() << 16U;
        const std::uint32_t dol = Bajt();
        return gora | dol | Bajt() << 8U;
    }
    std::uint32_t Licznik31() {
        const std::uint32_t a = Bajt();
        const std::uint32_t b = Bajt();
        if (b < 0x80)
            return a | b << 8U;
        const std::uint32_t gora = a << 16U | (b & 0x7FU) << 24U;
        const std::uint32_t dol = Bajt();
        return gora | dol | Bajt() << 8U;
    }
    std::uint32_t Bajt() { return static_cast<unsigned char>(Wez(1)[0]); }
    std::string_view Wez(std::size_t ile) {
        if (ile > reszta_.size())
            throw std::runtime_error("kodek: end");
        const std::string_view bajty = reszta_.substr(0, ile);
        reszta_.remove_prefix(ile);
        return bajty;
    }

    std::string_view reszta_;
};

// Writes into the buffer, which grows as it must and is never cut; what was written lies at its beginning.
template <class TStruktury> std::string_view Zapisz(const TStruktury& struktury, std::string& bufor) {
    const TNumery numery(struktury);
    TPisarz pisarz(bufor, numery);
    pisarz.Rekord(struktury);
    return {bufor.data(), pisarz.Zapisano()};
}

// Reads into empty structs.
template <class TStruktury> void Wczytaj(TStruktury& struktury, std::string_view bajty) {
    TCzytelnik(bajty).Rekord(struktury);
    const TNumery numery(struktury);
    KazdeOdniesienie(struktury, [&](auto& odniesienie, const auto& lista) {
        if (odniesienie.numer < 0)
            return;
        const std::uint32_t numer = static_cast<std::uint32_t>(odniesienie.numer) - numery.Pierwszy(odniesienie.cel);
        const bool jest = numer < lista.size();
        odniesienie.numer = jest ? static_cast<std::int32_t>(numer) : -1;
        odniesienie.cel = jest ? &lista[numer] : nullptr;
    });
}

} // namespace pomiary::kodek
