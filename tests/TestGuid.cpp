#include "tests/Testy.h"
#include "ztok/platform/Pula.h"
#include "ztok/platform/TKomponent.h"

namespace ztok {
namespace {

// The table is sorted here as texts and as identifiers.
TEST(Guid, TablicaOczekiwanych) {
    std::vector<std::pair<std::u16string, TGUID>> wgTekstu;
    for (const testy::TWierszTabeli& w : testy::WczytajTabele("guid.tsv")) {
        TBajtyGuid bajty{};
        std::memcpy(bajty.data(), strumienie::Bajty(w[1]).data(), bajty.size());
        const TGUID guid = GuidZBajtow(bajty);
        const std::u16string tekst = Utf16ZUtf8(w[2]);
        EXPECT_EQ(GUIDToString(guid), tekst);
        EXPECT_EQ(BajtyGuid(guid), bajty);
        std::u16string male = tekst;
        for (char16_t& c : male)
            c = static_cast<char16_t>(c >= u'A' && c <= u'F' ? c + 32 : c);
        for (const std::u16string& t : {tekst, male})
            EXPECT_EQ(GuidZTekstu(t), guid);
        wgTekstu.emplace_back(tekst, guid);
    }
    ASSERT_GT(wgTekstu.size(), 10U);
    std::sort(wgTekstu.begin(), wgTekstu.end());
    EXPECT_TRUE(std::is_sorted(wgTekstu.begin(), wgTekstu.end(),
                               [](const auto& a, const auto& b) { return a.second < b.second; }));
    constexpr TGUID staly = Guid("{12345678-9abc-DEF0-0123-456789ABCDEF}");
    static_assert(staly.d1 == 0x12345678 && staly.d2 == 0x9ABC && staly.d3 == 0xDEF0 && staly.d4[7] == 0xEF);
}

// Every character replaced by one that cannot stand there, and every wrong length.
TEST(Guid, ZlyTekst) {
    const std::u16string dobry = u"{12345678-9ABC-DEF0-0123-456789ABCDEF}";
    const TGUID poprzedni = GuidZTekstu(dobry);
    for (std::size_t i = 0; i < dobry.size(); ++i)
        for (const char16_t znak : {u'g', u'@', u'`', u'/', u':', u'\0', u'\u0131'}) {
            std::u16string zly = dobry;
            zly[i] = znak;
            for (const std::u16string& tekst : {zly, dobry.substr(0, i), dobry + znak}) {
                TGUID guid = poprzedni;
                EXPECT_FALSE(TryGuidZTekstu(tekst, guid)) << i;
                EXPECT_EQ(guid, poprzedni);
                EXPECT_THROW(static_cast<void>(GuidZTekstu(tekst)), EBladKonwersji) << i;
            }
        }
}

// ---- interfaces

template <std::uint32_t Nr> struct IProbny : IInterfejs {
    static constexpr TGUID IID{Nr, 0, 0, {}};
    virtual std::size_t Liczba() = 0;
};
using ILicznik = IProbny<1>;
using INazwa = IProbny<2>;
using IDodatek = IProbny<3>;
using IObcy = IProbny<4>;

int zywych = 0;
int kroki = 0;

class TDwa : public TImplementacja<TObiektLiczony, ILicznik, INazwa> {
    ZTOK_KLASA_DEKL(TDwa)

    TDwa() { ++zywych; }
    ~TDwa() override { --zywych; }
    std::size_t Liczba() override { return NazwaKlasy().size(); }

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
    std::size_t Liczba() override { return 3; }
};

// Its end does what the test asks.
class TPadajacy : public TKomponent {
    ZTOK_KLASA_DEKL(TPadajacy)
    using TKomponent::TKomponent;
    std::function<void()> koniec;

  protected:
    void WykonajDestrukcje() override {
        TKomponent::WykonajDestrukcje();
        koniec();
    }
};

ZTOK_KLASA_DEF(TPadajacy, TKomponent)
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
        EXPECT_EQ(licznik.As<INazwa>()->Liczba(), 3U);
        EXPECT_EQ(licznik.As<IDodatek>(), dodatek);
        // One identity, whichever interface is asked; the object itself is given uncounted.
        EXPECT_EQ(licznik.As<IInterfejs>(), dodatek.As<IInterfejs>());
        EXPECT_EQ(ObiektZaInterfejsem(licznik.get()), obiekt);
        EXPECT_EQ(ObiektZaInterfejsem(nullptr), nullptr);
        void* nic = obiekt;
        EXPECT_EQ(dodatek.get()->QueryInterface(IObcy::IID, &nic), kIntfBrak);
        EXPECT_EQ(nic, nullptr);
        EXPECT_FALSE(dodatek.As<IObcy>() || TIntf<ILicznik>().As<INazwa>());
        EXPECT_EQ(obiekt->LiczbaReferencji(), 2);

        TIntf<IInterfejs> ogolny = licznik; // to a base, by copy and by move
        EXPECT_EQ(obiekt->LiczbaReferencji(), 3);
        ogolny = std::move(licznik);
        EXPECT_FALSE(licznik);
        TIntf<IInterfejs>& ten = ogolny;
        ogolny = ten;
        ogolny = std::move(ten);
        const TIntf<IInterfejs> oddany = TIntf<IInterfejs>::Przejmij(ogolny.Oddaj());
        EXPECT_EQ(obiekt->LiczbaReferencji(), 2);
        EXPECT_EQ(zywych, 1);
    }
    EXPECT_EQ(zywych, 0);
    EXPECT_EQ(kroki, 1);
}

// An error at the end of an object is the caller's, or a notice, and the object is gone in either case.
TEST(Interfejsy, BladKoncaNieZostawiaObiektu) {
    const std::int64_t zajete = PulaZajete();
    const testy::TPowiadomienia powiadomienia;
    const auto nowy = [](TKomponent* wlasciciel, std::u16string blad) {
        auto* obiekt = UtworzSurowy<TPadajacy>(wlasciciel);
        obiekt->koniec = [blad] {
            if (blad.empty())
                throw 7;
            throw EBladAsercji(blad);
        };
        return obiekt;
    };
    EXPECT_EQ(testy::Blad<EBladAsercji>([&] { Zwolnij(nowy(nullptr, u"sam")); }), u"sam");
    EXPECT_THROW(Zwolnij(nowy(nullptr, u"")), int);
    ZwolnijCicho(nowy(nullptr, u"cicho"));
    ZwolnijCicho(nowy(nullptr, u""));
    ZwolnijCicho(nullptr);
    EXPECT_EQ(testy::TPowiadomienia::Tresci(), (std::vector<std::u16string>{u"cicho", u"?"}));
    {
        TKomponent naStosie; // its parts go with it, the last one first
        nowy(nowy(&naStosie, u"pierwszy"), u"wnuk");
        nowy(&naStosie, u"drugi");
        EXPECT_EQ(naStosie.IleSkladnikow(), 2U);
        EXPECT_EQ(naStosie._AddRef() + naStosie._Release(), -2);
    }
    EXPECT_EQ(testy::TPowiadomienia::Tresci(), (std::vector<std::u16string>{u"cicho", u"?", u"drugi", u"wnuk"}));
    EXPECT_EQ(PulaZajete(), zajete);
}

} // namespace
} // namespace ztok
