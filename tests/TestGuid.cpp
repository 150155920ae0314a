#include "ztok/platform/Guid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/TabeleTestow.h"
#include "ztok/platform/Interfejsy.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/TObiektLiczony.h"
#include "ztok/platform/Wyjatki.h"

namespace ztok {
namespace {

TEST(Guid, TablicaOczekiwanych) {
    std::vector<TGUID> guidy;
    std::vector<std::u16string> teksty;
    for (const testy::TWierszTabeli& w : testy::WczytajTabele("guid.tsv")) {
        ASSERT_EQ(w[1].size(), 32U);
        TBajtyGuid bajty{};
        for (std::size_t i = 0; i < bajty.size(); ++i)
            bajty[i] = static_cast<std::uint8_t>(std::stoul(w[1].substr(2 * i, 2), nullptr, 16));
        const TGUID guid = GuidZBajtow(bajty);
        EXPECT_EQ(Utf8ZUtf16(TekstGuid(guid)), w[2]);
        EXPECT_EQ(BajtyGuid(guid), bajty);
        EXPECT_EQ(GuidZTekstu(Utf16ZUtf8(w[2])), guid);
        std::string male = w[2];
        for (char& c : male)
            c = static_cast<char>(c >= 'A' && c <= 'F' ? c + 32 : c);
        EXPECT_EQ(GuidZTekstu(Utf16ZUtf8(male)), guid);
        guidy.push_back(guid);
        teksty.push_back(TekstGuid(guid));
    }
    // Identifiers sort as their texts do.
    std::sort(guidy.begin(), guidy.end());
    std::sort(teksty.begin(), teksty.end());
    for (std::size_t i = 0; i < guidy.size(); ++i)
        EXPECT_EQ(TekstGuid(guidy[i]), teksty[i]);
    constexpr TGUID staly = Guid("{12345678-9abc-DEF0-0123-456789ABCDEF}");
    static_assert(staly.d1 == 0x12345678 && staly.d2 == 0x9ABC && staly.d3 == 0xDEF0 && staly.d4[7] == 0xEF);
}

TEST(Guid, ZlyTekst) {
    const std::u16string dobry = u"{12345678-9ABC-DEF0-0123-456789ABCDEF}";
    const TGUID poprzedni = GuidZTekstu(dobry);
    // Every character replaced by one that cannot stand there, and every wrong length.
    for (std::size_t i = 0; i < dobry.size(); ++i) {
        for (char16_t znak : {u'g', u'@', u'`', u'/', u':', u'\0', u'\u0131'}) {
            std::u16string zly = dobry;
            zly[i] = znak;
            TGUID guid = poprzedni;
            EXPECT_FALSE(TryGuidZTekstu(zly, guid)) << i;
            EXPECT_EQ(guid, poprzedni);
        }
        EXPECT_THROW(static_cast<void>(GuidZTekstu(dobry.substr(0, i))), EBladKonwersji) << i;
    }
    EXPECT_THROW(static_cast<void>(GuidZTekstu(dobry + u"}")), EBladKonwersji);
}

// ---- interfaces

struct ILicznik : IInterfejs {
    static constexpr TGUID IID = Guid("{11111111-0000-0000-0000-000000000001}");
    virtual int Liczba() = 0;
};
struct INazwa : IInterfejs {
    static constexpr TGUID IID = Guid("{11111111-0000-0000-0000-000000000002}");
    virtual int DlugoscNazwy() = 0;
};
struct IDodatek : IInterfejs {
    static constexpr TGUID IID = Guid("{11111111-0000-0000-0000-000000000003}");
    virtual int Dodatek() = 0;
};
struct IObcy : IInterfejs {
    static constexpr TGUID IID = Guid("{11111111-0000-0000-0000-000000000004}");
};

int zywych = 0;
int kroki = 0;

class TDwa : public TImplementacja<TObiektLiczony, ILicznik, INazwa> {
    ZTOK_KLASA_DEKL(TDwa)

    TDwa() { ++zywych; }
    ~TDwa() override { --zywych; }
    int Liczba() override { return 2; }
    int DlugoscNazwy() override { return static_cast<int>(NazwaKlasy().size()); }

  protected:
    void WykonajDestrukcje() override {
        // Taking and dropping an interface of a dying object must not free it again.
        ++kroki;
        const TIntf<INazwa> ja(static_cast<INazwa*>(this));
        EXPECT_EQ(TIntf<INazwa>(ja).As<ILicznik>()->Liczba(), Liczba());
    }
};

// Adds an interface to those that it inherits and overrides an operation of those.
class TTrzy : public TImplementacja<TDwa, IDodatek> {
    ZTOK_KLASA_DEKL(TTrzy)

    int Liczba() override { return 3; }
    int Dodatek() override { return 30; }
};

ZTOK_KLASA_DEF(TDwa, TObiektLiczony)
ZTOK_KLASA_DEF(TTrzy, TDwa)

TEST(Interfejsy, LiczenieIWyszukiwanie) {
    kroki = 0;
    TTrzy* const obiekt = TPrzydzial::Nowy<TTrzy>();
    {
        const TIntf<IDodatek> dodatek(obiekt);
        EXPECT_EQ(obiekt->LiczbaReferencji(), 1);
        TIntf<ILicznik> licznik = dodatek.As<ILicznik>(); // from the ancestor's table
        ASSERT_TRUE(licznik);
        EXPECT_EQ(licznik->Liczba(), 3);
        EXPECT_EQ(licznik.As<INazwa>()->DlugoscNazwy(), 5);
        EXPECT_EQ(licznik.As<IDodatek>(), dodatek);
        EXPECT_EQ(obiekt->LiczbaReferencji(), 2);
        // One identity, whichever interface is asked; the object itself is given uncounted.
        EXPECT_EQ(licznik.As<IInterfejs>(), dodatek.As<IInterfejs>());
        EXPECT_EQ(ObiektZaInterfejsem(licznik.get()), obiekt);
        EXPECT_EQ(ObiektZaInterfejsem(nullptr), nullptr);
        void* nic = obiekt;
        EXPECT_EQ(dodatek.get()->QueryInterface(IObcy::IID, &nic), kIntfBrak);
        EXPECT_EQ(nic, nullptr);
        EXPECT_FALSE(dodatek.As<IObcy>());
        EXPECT_FALSE(TIntf<ILicznik>().As<INazwa>());
        EXPECT_EQ(obiekt->LiczbaReferencji(), 2);

        TIntf<IInterfejs> ogolny = licznik; // to a base, by copy and by move
        EXPECT_EQ(obiekt->LiczbaReferencji(), 3);
        ogolny = std::move(licznik);
        EXPECT_FALSE(licznik);
        TIntf<IInterfejs>& ten = ogolny;
        ogolny = ten;
        ogolny = std::move(ten);
        EXPECT_EQ(obiekt->LiczbaReferencji(), 2);
        TIntf<IInterfejs> oddany = TIntf<IInterfejs>::Przejmij(ogolny.Oddaj());
        EXPECT_EQ(obiekt->LiczbaReferencji(), 2);
        EXPECT_EQ(zywych, 1);
    }
    EXPECT_EQ(zywych, 0);
    EXPECT_EQ(kroki, 1);
}

} // namespace
} // namespace ztok
