#include "Wczytywanie.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <fstream>
#include <string_view>
#include <utility>
#include <vector>

#include "ztok/platform/Kodowania.h"

namespace {

[[noreturn]] void Zglos(const std::string& plik, std::size_t wiersz, const char* powod) {
    throw BladDanych(plik + ":" + std::to_string(wiersz) + ": " + powod);
}

// Calls funkcja(line, its number) for each line that is neither empty nor a comment.
template <class F> void DlaWierszy(const std::string& plik, F funkcja) {
    std::ifstream wejscie(plik, std::ios::binary);
    if (!wejscie)
        throw BladDanych(plik + ": cannot be opened");
    std::string bufor;
    for (std::size_t nr = 1; std::getline(wejscie, bufor); ++nr) {
        std::string_view wiersz = bufor;
        if (wiersz.ends_with('\r'))
            wiersz.remove_suffix(1);
        if (!wiersz.empty() && !wiersz.starts_with('#'))
            funkcja(wiersz, nr);
    }
    if (wejscie.bad())
        throw BladDanych(plik + ": cannot be read");
}

// The whole text as a number; false when it is none.
template <class T, class... P> bool Liczba(std::string_view tekst, T& liczba, P... podstawa) {
    const char* koniec = tekst.data() + tekst.size();
    const auto [dokad, blad] = std::from_chars(tekst.data(), koniec, liczba, podstawa...);
    return blad == std::errc() && dokad == koniec;
}

// "7", "-1/2".
bool LiczbaLubUlamek(std::string_view tekst, double& liczba) {
    const std::size_t kreska = tekst.find('/');
    double mianownik = 1;
    if (!Liczba(tekst.substr(0, kreska), liczba) ||
        (kreska != std::string_view::npos && (!Liczba(tekst.substr(kreska + 1), mianownik) || mianownik == 0)))
        return false;
    liczba /= mianownik;
    return true;
}

void WczytajBloki(const std::string& plik, TListaBlokow& bloki) {
    DlaWierszy(plik, [&](std::string_view wiersz, std::size_t nr) {
        const std::size_t kropki = wiersz.find("..");
        const std::size_t srednik = wiersz.find("; ");
        std::uint32_t pierwszy = 0;
        std::uint32_t ostatni = 0;
        if (kropki == std::string_view::npos || srednik == std::string_view::npos || srednik < kropki ||
            !Liczba(wiersz.substr(0, kropki), pierwszy, 16) ||
            !Liczba(wiersz.substr(kropki + 2, srednik - kropki - 2), ostatni, 16) || ostatni < pierwszy)
            Zglos(plik, nr, "not a block");
        if (!bloki.ListaPusta() && pierwszy <= bloki[bloki.IleObiektow() - 1]->GetOstatni())
            Zglos(plik, nr, "blocks are not in ascending order");
        TBlok& blok = bloki.Dopisz();
        blok.SetPierwszy(pierwszy);
        blok.SetOstatni(ostatni);
        blok.SetNazwa(ztok::Utf16ZUtf8(wiersz.substr(srednik + 2)));
    });
}

// Where in Blocks.txt a code belongs. Both files ascend, so the block is the one before or one of those behind it.
class TSzukanieBloku {
  public:
    explicit TSzukanieBloku(TListaBlokow& bloki) : bloki_(bloki), ileBlokow_(bloki.IleObiektow()) {}

    TBlok& BlokKodu(std::uint32_t kod) {
        if (ktory_ < ileBlokow_ && bloki_[ktory_]->GetPierwszy() > kod)
            ktory_ = 0;
        while (ktory_ < ileBlokow_ && bloki_[ktory_]->GetOstatni() < kod)
            ++ktory_;
        if (ktory_ < ileBlokow_ && bloki_[ktory_]->GetPierwszy() <= kod)
            return *bloki_[ktory_];
        if (bloki_.IleObiektow() == ileBlokow_)
            bloki_.Dopisz().SetNazwa(u"No_Block");
        return *bloki_[ileBlokow_];
    }

  private:
    TListaBlokow& bloki_;
    std::int32_t ileBlokow_;
    std::int32_t ktory_ = 0;
};

// Resolves what the records say of other characters, once all the records are there.
class TOdniesienia {
  public:
    using TUstaw = void (*)(TZnak& znak, TZnak& inny);

    explicit TOdniesienia(const std::string& plik) : plik_(plik) {}

    void DodajRekord(std::uint32_t kod, TZnak& znak) { rekordy_.emplace_back(kod, &znak); }
    void Odloz(TZnak& znak, std::size_t wiersz, std::string_view kod, TUstaw ustaw) {
        if (!kod.empty())
            odlozone_.push_back({&znak, wiersz, ustaw, std::string(kod)});
    }

    void Rozwiaz() {
        std::sort(rekordy_.begin(), rekordy_.end());
        for (const TOdlozone& o : odlozone_)
            o.ustaw(*o.znak, Rekord(o.kod, o.wiersz));
    }

  private:
    struct TOdlozone {
        TZnak* znak;
        std::size_t wiersz;
        TUstaw ustaw;
        std::string kod;
    };

    TZnak& Rekord(std::string_view tekst, std::size_t wiersz) const {
        std::uint32_t kod = 0;
        if (!Liczba(tekst, kod, 16))
            Zglos(plik_, wiersz, "bad code of another character");
        auto rekord = std::upper_bound(rekordy_.begin(), rekordy_.end(), kod,
                                       [](std::uint32_t k, const auto& para) { return k < para.first; });
        if (rekord == rekordy_.begin() ||
            ((--rekord)->first != kod && !rekord->second->GetNazwa().ends_with(u", First>")))
            Zglos(plik_, wiersz, "a character that has no record");
        return *rekord->second;
    }

    const std::string& plik_;
    std::vector<std::pair<std::uint32_t, TZnak*>> rekordy_;
    std::vector<TOdlozone> odlozone_;
};

} // namespace

std::size_t WczytajZnaki(const std::string& plikZnakow, const std::string& plikBlokow, TListaBlokow& bloki) {
    enum EKolumna : std::uint8_t {
        Kod,
        Nazwa,
        Kategoria,
        KlasaLaczenia,
        Rozklad = 5,
        Wartosc = 8,
        Lustrzany,
        StaraNazwa,
        Duza = 12,
        Mala,
        Tytulowa,
        Ile
    };

    WczytajBloki(plikBlokow, bloki);
    TSzukanieBloku szukanie(bloki);
    TOdniesienia odniesienia(plikZnakow);
    std::size_t rekordow = 0;
    DlaWierszy(plikZnakow, [&](std::string_view wiersz, std::size_t nr) {
        std::array<std::string_view, Ile> kolumny;
        for (std::size_t i = 0; i < Ile; ++i) {
            const std::size_t srednik = wiersz.find(';');
            if ((srednik == std::string_view::npos) != (i == Ile - 1))
                Zglos(plikZnakow, nr, "not 15 columns");
            kolumny[i] = wiersz.substr(0, srednik);
            wiersz.remove_prefix(srednik == std::string_view::npos ? wiersz.size() : srednik + 1);
        }
        std::uint32_t kod = 0;
        std::uint8_t klasaLaczenia = 0;
        double wartosc = 0;
        if (!Liczba(kolumny[Kod], kod, 16))
            Zglos(plikZnakow, nr, "bad code");
        if (!Liczba(kolumny[KlasaLaczenia], klasaLaczenia, 10))
            Zglos(plikZnakow, nr, "bad combining class");
        if (kolumny[Lustrzany] != "Y" && kolumny[Lustrzany] != "N")
            Zglos(plikZnakow, nr, "bad mirrored flag");
        if (!kolumny[Wartosc].empty() && !LiczbaLubUlamek(kolumny[Wartosc], wartosc))
            Zglos(plikZnakow, nr, "bad numeric value");

        TZnak& znak = szukanie.BlokKodu(kod).GetZnaki().Dopisz();
        znak.SetKod(kod);
        znak.SetNazwa(ztok::Utf16ZUtf8(kolumny[Nazwa]));
        znak.SetKategoria(ztok::Utf16ZUtf8(kolumny[Kategoria]));
        znak.SetKlasaLaczenia(klasaLaczenia);
        znak.SetLustrzany(kolumny[Lustrzany] == "Y");
        if (!kolumny[Wartosc].empty())
            znak.SetWartosc(wartosc);
        znak.SetStaraNazwa(ztok::Utf16ZUtf8(kolumny[StaraNazwa])); // an empty text takes no field

        odniesienia.DodajRekord(kod, znak);
        odniesienia.Odloz(znak, nr, kolumny[Duza], [](TZnak& z, TZnak& inny) { z.SetDuza(&inny); });
        odniesienia.Odloz(znak, nr, kolumny[Mala], [](TZnak& z, TZnak& inny) { z.SetMala(&inny); });
        odniesienia.Odloz(znak, nr, kolumny[Tytulowa], [](TZnak& z, TZnak& inny) { z.SetTytulowa(&inny); });
        std::string_view rozklad = kolumny[Rozklad];
        if (const std::size_t koniec = rozklad.find("> "); rozklad.starts_with('<') && koniec != rozklad.npos) {
            znak.SetRodzajRozkladu(ztok::Utf16ZUtf8(rozklad.substr(0, koniec + 1)));
            rozklad.remove_prefix(koniec + 2);
        }
        while (!rozklad.empty()) {
            const std::size_t spacja = std::min(rozklad.find(' '), rozklad.size());
            odniesienia.Odloz(znak, nr, rozklad.substr(0, spacja),
                              [](TZnak& z, TZnak& inny) { z.GetRozklad().DodajObiekt(&inny, ztok::MaxInt); });
            rozklad.remove_prefix(std::min(spacja + 1, rozklad.size()));
        }
        ++rekordow;
    });
    if (rekordow == 0)
        throw BladDanych(plikZnakow + ": no record");
    odniesienia.Rozwiaz();
    return rekordow;
}
