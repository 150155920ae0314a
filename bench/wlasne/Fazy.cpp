#include <memory>

#include "pomiary/Grupy.h"
#include "wlasne/Ztok.h"
#include "ztok/persist/TZTParser.h"
#include "ztok/util/Zttypybazowe.h"

namespace pomiary {

namespace {

std::size_t IleTokenow(const std::string& dokument) {
    ztok::TZTReadOnlyRawByteStream strumien(dokument);
    std::size_t ile = 0;
    for (ztok::TZTParser parser(strumien); parser.Token() != ztok::TZTParser::Koniec; parser.NextToken())
        ++ile;
    return ile;
}

} // namespace

void MierzFazy(TPomiary& pomiary, const dane::TBaza& baza) {
    const std::size_t ile = dane::IleObiektow(baza);
    const auto wlasciciel = JakoObiekty(baza);
    const TBaza* const drzewo = wlasciciel.get();
    ztok::TZTMemoryStream strumien;
    drzewo->ZapiszWStrumieniu(strumien);
    const auto naPoczatek = [&strumien] { strumien.Seek(0, ztok::ESeek::Poczatek); };
    const auto zebrane = [drzewo] {
        auto z = std::make_unique<ztok::TZapisywaczDanych>();
        drzewo->DajObiektyDoZapisu(*z);
        return z;
    };
    pomiary.PoPrzygotowaniu(
        "phase: collecting objects", kZtok, ile, [] { return std::make_unique<ztok::TZapisywaczDanych>(); },
        [drzewo](auto& z) { drzewo->DajObiektyDoZapisu(*z); });
    pomiary.PoPrzygotowaniu("phase: sorting addresses", kZtok, ile, zebrane, [](auto& z) { z->SortujListe(); });
    pomiary.Dodaj("phase: whole write", kZtok, ile, [drzewo, naPoczatek, &strumien] {
        naPoczatek();
        drzewo->ZapiszWStrumieniu(strumien);
    });
    pomiary.PoPrzygotowaniu(
        "phase: read", kZtok, ile,
        [naPoczatek] {
            naPoczatek();
            return ztok::Utworz<TBaza>();
        },
        [&strumien](auto& nowe) { nowe->WczytajZeStrumienia(strumien); });
    pomiary.PoPrzygotowaniu(
        "phase: destroy", kZtok, ile,
        [naPoczatek, &strumien] {
            naPoczatek();
            auto nowe = ztok::Utworz<TBaza>();
            nowe->WczytajZeStrumienia(strumien);
            return nowe;
        },
        [](auto& nowe) { ztok::Zwolnij(nowe.Oddaj()); });

    ztok::TZTMemoryStream tekst;
    drzewo->ZapiszTekstowo(tekst, std::u16string_view());
    const std::string dokument(reinterpret_cast<const char*>(tekst.Zawartosc().data()), tekst.Zawartosc().size());
    const auto kroj = [&dokument] { Zuzyj(IleTokenow(dokument)); };
    pomiary.Dodaj("text: tokens alone, a kilobyte", kZtok, dokument.size() / 1000, kroj);
    pomiary.Dodaj("text: tokens alone, a token", kZtok, IleTokenow(dokument), kroj);
    pomiary.Wykonaj();
}

} // namespace pomiary
