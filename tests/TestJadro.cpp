// Class kernel: descriptors, known classes, edit functions, interfaces, labels, unloading.
#include <gtest/gtest.h>

#include <array>
#include <map>

#include "tests/Bledy.h"
#include "tests/BrakPamieci.h"
#include "tests/Probki.h"
#include "tests/StrumienieTestowe.h"
#include "tests/TabeleTestow.h"
#include "ztok/platform/TObiektLiczony.h"

namespace {

using namespace ztok;
using testy::Blad;
using testy::TPowiadomienia;

class TLuki : public TObiekt {
    ZTOK_OBIEKT(TLuki, TObiekt, (0, Kod, String), (1, Ile, Integer), (5, Kwota, Double))
};
class TLukiPlus : public TLuki {
    ZTOK_OBIEKT(TLukiPlus, TLuki, (3, Uwagi, String), (7, Wazne, Boolean))
};
class TZmieniana : public TObiekt {
    ZTOK_OBIEKT(TZmieniana, TObiekt, (0, Kod, String))
};
class TLukiMinus : public TLuki {
    ZTOK_OBIEKT(TLukiMinus, TLuki)
};
class TPodwojona : public TLuki {
    ZTOK_OBIEKT(TPodwojona, TLuki, (6, Nowe, Integer), (1, Powtorka, Byte), (8, Dalsze, Integer))
};
class TWarunkowa : public TObiekt {
  public:
    [[nodiscard]] bool CzyZapis() const { return GetPoleBoolean(0); }
    ZTOK_OBIEKT(TWarunkowa, TObiekt, (0, Zapis, Boolean),
                (1, Cena, ZapisGdy<ztok::rodzaj::Integer, &TWarunkowa::CzyZapis>),
                (2, Obca, Obcy<ztok::rodzaj::Integer>), (-1, Ujemna, Integer), (-1, Minus, Integer),
                (3, Mala, Shortint), (4, Ostatnia, Int64))
};
// Properties that were foreign in the base become fields, under their numbers and names.
class TObceWBazie : public TObiekt {
    ZTOK_OBIEKT(TObceWBazie, TObiekt, (0, Zapis, Boolean), (1, Cel, Obcy<ztok::rodzaj::Wsk<TWarunkowa>>),
                (2, Cena, Obcy<ztok::rodzaj::Integer>), (3, Cialo, Obiekt<TLuki>))
};
class TObceWlasne : public TObceWBazie {
  public:
    [[nodiscard]] bool CzyZapis() const { return GetPoleBoolean(0); }
    ZTOK_OBIEKT(TObceWlasne, TObceWBazie, (1, Cel, Wsk<TLuki>),
                (2, Cena, ZapisGdy<ztok::rodzaj::Integer, &TObceWlasne::CzyZapis>))
};
// Every kind with every reader, one row each: the rows' numbers are their indices.
constexpr int kRodzajow = static_cast<int>(TRodzajWartosci::Inny) + 1;
constexpr int kDostepow = static_cast<int>(TDostep::PoleWskObiektu) + 1;
class TKazdyWiersz : public TObiekt {
    ZTOK_KLASA_MODELU(TKazdyWiersz, TObiekt)
    static std::span<const TWierszPola> PolaKlasy(std::type_identity<TKazdyWiersz> /*klasa*/) noexcept {
        static const auto wiersze = [] {
            static std::array<std::u16string, kRodzajow * kDostepow> nazwy;
            std::array<TWierszPola, kRodzajow * kDostepow> w{};
            for (int i = 0; i < kRodzajow * kDostepow; ++i) {
                const auto n = static_cast<std::size_t>(i);
                const auto dostep = static_cast<TDostep>(i % kDostepow);
                nazwy[n] = u"P" + std::u16string(1, static_cast<char16_t>(0x4E00 + i));
                w[n] = {i, nazwy[n], static_cast<TRodzajWartosci>(i / kDostepow), dostep, dostep, {}, {}, {}};
                if (w[n].rodzaj == TRodzajWartosci::Obiekt)
                    w[n].klasa = &KlasaTypu<TListaWskObiektow>;
            }
            return w;
        }();
        return wiersze;
    }
};

TEST(Opisy, PoleZadeklarowanePonownie) {
    TObceWlasne o;
    o.GetCialo().SetIle(1);
    o.SetCel(&o.GetCialo());
    o.SetCena(5);
    for (const bool zapis : {false, true}) {
        o.SetZapis(zapis);
        TZTMemoryStream strumien;
        o.ZapiszWStrumieniu(strumien);
        strumien.Seek(0, ESeek::Poczatek);
        TObceWlasne kopia;
        kopia.WczytajZeStrumienia(strumien);
        EXPECT_EQ(kopia.GetCel(), &kopia.GetCialo());
        EXPECT_EQ(kopia.GetCena(), zapis ? 5 : 0);
    }
}

TEST(Opisy, KlasaPolaWynikaZRodzajuICzytnika) {
    using R = TRodzajWartosci;
    using D = TDostep;
    const std::map<std::pair<R, D>, std::u16string> oczekiwane = {
        {{R::Byte, D::PoleByte}, u"TPoleByte"},
        {{R::Smallint, D::PoleSmallint}, u"TPoleSmallint"},
        {{R::Word, D::PoleWord}, u"TPoleWord"},
        {{R::Integer, D::PoleInteger}, u"TPoleInteger"},
        {{R::Cardinal, D::PoleCardinal}, u"TPoleCardinal"},
        {{R::Boolean, D::PoleBoolean}, u"TPoleBoolean"},
        {{R::Zmiennoprzecinkowa, D::PoleDouble}, u"TPoleDouble"},
        {{R::Zmiennoprzecinkowa, D::PoleDateTime}, u"TPoleDouble"}, // the declared type's name chooses, not the reader
        {{R::Zmiennoprzecinkowa, D::PoleDate}, u"TPoleDouble"},
        {{R::Zmiennoprzecinkowa, D::PoleTime}, u"TPoleDouble"},
        {{R::Int64, D::PoleInt64}, u"TPoleInt64"},
        {{R::AnsiString, D::PoleRawByteString}, u"TPoleRawByteString"},
        {{R::WideString, D::PoleWideString}, u"TPoleWideString"},
        {{R::String, D::PoleString}, u"TPoleString"},
        {{R::String, D::PoleCDATA}, u"TPoleString"},
        {{R::RefObiektu, D::PoleRefObiektu}, u"TPoleRefObiektu"},
        {{R::WskObiektu, D::PoleWskObiektu}, u"TPoleWskObiektu"},
    };
    const TKlasa* klasa = TKazdyWiersz::KlasaStatyczna();
    for (int i = 0; i < kRodzajow * kDostepow; ++i) {
        const auto rodzaj = static_cast<R>(i / kDostepow);
        const auto dostep = static_cast<D>(i % kDostepow);
        if (rodzaj == R::StrList || rodzaj == R::WideStrList)
            continue;
        std::u16string ma = rodzaj == R::Obiekt ? u"TListaWskObiektow" : u"";
        if (const auto wpis = oczekiwane.find({rodzaj, dostep}); wpis != oczekiwane.end())
            ma = wpis->second;
        const TKlasa* pole = JadroKlas()->TypPolaKlasy(klasa, i);
        EXPECT_EQ(pole == nullptr ? std::u16string() : std::u16string(pole->nazwa), ma)
            << "kind " << i / kDostepow << " reader " << i % kDostepow;
    }
}

TEST(Opisy, LukiPrzodkowieIPowtorzenia) {
    TJadroKlas& jadro = *JadroKlas();
    const auto nazwy = [&jadro](const TKlasa* klasa) {
        std::u16string wynik;
        const TListaWlasciwosci* lista = jadro.OpisKlasy(klasa)->GetListaWlasciwosci();
        for (std::int32_t i = 0; lista != nullptr && i < lista->IleObiektow(); ++i)
            wynik += (lista->GetWlasciwosc(i) == nullptr ? u"-" : lista->GetWlasciwosc(i)->GetNazwa()) + u" ";
        return wynik;
    };
    EXPECT_EQ(nazwy(TLuki::KlasaStatyczna()), u"Kod Ile - - - Kwota ");
    EXPECT_EQ(nazwy(TLukiPlus::KlasaStatyczna()), u"Kod Ile - Uwagi - Kwota - Wazne ");
    EXPECT_EQ(nazwy(TLukiMinus::KlasaStatyczna()), u"Kod Ile - - - Kwota ");
    EXPECT_EQ(nazwy(TWarunkowa::KlasaStatyczna()), u"Zapis Cena - - Ostatnia ");
    EXPECT_EQ(nazwy(TObiekt::KlasaStatyczna()), u"");
    for (int razy = 0; razy < 2; ++razy) // the failure leaves nothing behind, and happens again
        EXPECT_EQ(Blad<ZTException>([] { Utworz<TPodwojona>()->SetNowe(1); }),
                  u"Błąd generowania opisu klasy TPodwojona dla pola Powtorka: Błąd dodania właściwości");
    const TKlasa* znana = nullptr;
    EXPECT_FALSE(jadro.JestKlasaONazwie(u"TPodwojona", znana));

    const auto obiekt = Utworz<TLukiPlus>();
    std::u16string etykiety;
    for (const int nr : {-2, -1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 32767})
        etykiety += obiekt->NazwaPolaNr(nr) + u'/' + obiekt->NazwaEdycjiPolaNr(nr) + u' ';
    EXPECT_EQ(etykiety, u"/ LukiPlus/Luki plus Kod/Kod Ile/Ile / Uwagi/Uwagi / Kwota/Kwota / Wazne/Wazne / / ");
    EXPECT_EQ(obiekt->RozmPolaNr(-1), 8);
    EXPECT_EQ(obiekt->RozmPolaNr(0), 0);
}

TEST(Opisy, JedenNaKlaseWPorzadkuNazw) {
    TJadroKlas& jadro = *JadroKlas();
    const TKlasa* klasy[] = {TWarunkowa::KlasaStatyczna(), probki::TAdres::KlasaStatyczna(),
                             probki::TWszystko::KlasaStatyczna(), TLuki::KlasaStatyczna(),
                             TOpisKlasy::KlasaStatyczna()};
    std::map<const TKlasa*, TOpisKlasy*> opisy;
    for (int obrot = 0; obrot < 3; ++obrot)
        for (const TKlasa* klasa : klasy) {
            TOpisKlasy* opis = jadro.OpisKlasy(klasa);
            EXPECT_EQ(opis->GetNazwa(), klasa->nazwa);
            EXPECT_EQ(opisy.try_emplace(klasa, opis).first->second, opis);
            EXPECT_EQ(jadro.OpisKlasy(klasa), opis);
        }
    const auto& lista = static_cast<const TListaOpisowKlas&>(*jadro.Pole(0));
    EXPECT_EQ(lista.Rodzic(), &jadro);
    for (std::int32_t i = 0; i < lista.IleObiektow(); ++i) {
        if (i > 0) {
            EXPECT_LT(CompareTxtSgn(lista[i - 1]->GetNazwa(), lista[i]->GetNazwa()), 0);
        }
        std::int32_t gdzie = -1;
        EXPECT_TRUE(lista.JestOpisKlasy(lista[i]->GetNazwa(), gdzie));
        EXPECT_EQ(gdzie, i);
    }
    for (const TKlasa* klasa : klasy)
        EXPECT_EQ(jadro.OpisWgNazwy(klasa->nazwa), opisy[klasa]);
    EXPECT_EQ(jadro.OpisWgNazwy(u"tWARUNKOWA"), opisy[TWarunkowa::KlasaStatyczna()]);
    EXPECT_EQ(jadro.OpisWgNazwy(u"TNieznana"), nullptr);
    for (const int nr : {2, -1, 6})
        EXPECT_EQ(jadro.TypPolaKlasy(TLuki::KlasaStatyczna(), nr), nullptr) << nr;
    EXPECT_EQ(jadro.TypObiektowListy(probki::TListaAdresow::KlasaStatyczna()), probki::TAdres::KlasaStatyczna());
    for (const TKlasa* klasa : {static_cast<const TKlasa*>(nullptr), TObiekt::KlasaStatyczna(),
                                TKolekcjaObiektow::KlasaStatyczna(), TListaWskObiektow::KlasaStatyczna()})
        EXPECT_EQ(jadro.TypObiektowListy(klasa), nullptr);
}

// Descriptors of the classes are built in the middle of a read, by a kernel that has met none of them.
TEST(Opisy, BrakPamieciPrzyBudowieOpisow) {
    probki::Rejestruj();
    const auto wzor = Utworz<probki::TWszystko>();
    strumienie::ZTekstu(*wzor, "object TWszystko object Adres Numer=1 end object Adresy object end end "
                               "object Podrzedne object B=1 Referencja=2 end end end");
    const std::string bajty = strumienie::Zapisz(*wzor);
    std::int64_t i = 0;
    for (bool blad = true; blad; ++i) {
        blad = false;
        TWlasny<TJadroKlas> jadro = Utworz<TJadroKlas>();
        UserKernel = jadro.get();
        const auto o = Utworz<probki::TWszystko>();
        przydzialy::Zacznij();
        przydzialy::Psuj(i, false);
        try {
            probki::Rejestruj();
            strumienie::Wczytaj(*o, bajty);
        } catch (const std::bad_alloc&) {
            blad = true;
        }
        przydzialy::Zakoncz();
        probki::Rejestruj();
        strumienie::Wczytaj(*o, bajty);
        EXPECT_TRUE(strumienie::Zapisz(*o) == bajty) << i;
        o->ZerujDane();
        UserKernel = nullptr;
    }
    EXPECT_GT(i, 30);
}

TEST(Opisy, TabelaPol) {
    const auto lista = Utworz<TListaWlasciwosci>();
    TWlasciwosc* trzecia = lista->DodajWlasciwosc(3, nullptr);
    trzecia->SetNazwa(u"Trzy");
    EXPECT_EQ(trzecia->Rodzic(), lista.get());
    TWlasciwosc* pierwsza = lista->DodajWlasciwosc(1, Utworz<TWlasciwosc>().Oddaj());
    pierwsza->SetNazwa(u"trzy");
    EXPECT_EQ(lista->IleObiektow(), 4);
    EXPECT_EQ(lista->Pojemnosc(), 4);
    for (const int nr : {-1, -32768, 1, 3, 32768})
        EXPECT_EQ(Blad<ZTException>([&] { lista->DodajWlasciwosc(nr, nullptr); }), u"Błąd dodania właściwości") << nr;
    int nr = 77;
    EXPECT_TRUE(lista->JestPoleONazwie(u"TRZY", nr));
    EXPECT_EQ(nr, 1); // the first of equal names
    EXPECT_FALSE(lista->JestPoleONazwie(u"", nr));
    EXPECT_EQ(nr, -1);
    lista->ZerujDane();
    EXPECT_EQ(lista->IleObiektow(), 0);
    EXPECT_EQ(lista->Pojemnosc(), 0);
}

TEST(Jadro, ZnaneKlasy) {
    const auto jadro = Utworz<TJadroKlas>(nullptr);
    for (const TKlasa* klasa : {TWarunkowa::KlasaStatyczna(), TLuki::KlasaStatyczna(), probki::TAdres::KlasaStatyczna(),
                                TLuki::KlasaStatyczna()})
        jadro->RejestrujKlase(klasa);
    TListaNapisow lista;
    lista.Dodaj(u"smiec");
    jadro->DajListeZnanychKlas(lista);
    EXPECT_EQ(lista.JakoTekst(u" "), u"TAdres TLuki TWarunkowa");
    EXPECT_EQ(lista.Wartosc(1), reinterpret_cast<std::uintptr_t>(TLuki::KlasaStatyczna()));
    const TKlasa* klasa = TObiekt::KlasaStatyczna();
    EXPECT_FALSE(jadro->JestKlasaONazwie(u"TNieMa", klasa));
    EXPECT_EQ(klasa, TObiekt::KlasaStatyczna()); // untouched on purpose
    EXPECT_TRUE(jadro->JestKlasaONazwie(u"tLUKI", klasa));
    EXPECT_EQ(klasa, TLuki::KlasaStatyczna());
    // Another class of the name does not displace the first.
    TKlasa inna = *probki::TAdres::KlasaStatyczna();
    inna.nazwa = u"TLUKI";
    static TStanKlasy stanInnej; // the library remembers the class
    static const TKlasa innaStala = (inna.stan = &stanInnej, inna);
    jadro->RejestrujKlase(&innaStala);
    EXPECT_TRUE(jadro->JestKlasaONazwie(u"TLUKI", klasa));
    EXPECT_EQ(klasa, TLuki::KlasaStatyczna());
    jadro->WyrejestrujKlase(TLuki::KlasaStatyczna());
    EXPECT_FALSE(jadro->JestKlasaONazwie(u"TLuki", klasa));
    jadro->WyrejestrujKlase(TLuki::KlasaStatyczna());
    EXPECT_EQ(jadro->TypPolaNr(0), TListaOpisowKlas::KlasaStatyczna());
}

int wolaneEdycje = 0;
template <int N> bool Edycja(TPole& /*pole*/, TObiektBazowy* wlasciciel, bool flaga) {
    wolaneEdycje = 10 * wolaneEdycje + N;
    return flaga == (wlasciciel == nullptr);
}

TEST(Jadro, FunkcjeEdycji) {
    TJadroKlas& jadro = *JadroKlas();
    const TKlasa* plus = TLukiPlus::KlasaStatyczna();
    const TKlasa* luki = TLuki::KlasaStatyczna();
    const auto obiekt = Utworz<TLukiPlus>();
    const auto wolane = [&](const TKlasa* granica) {
        wolaneEdycje = 0;
        const bool wynik = obiekt->EdytujDaneWgKlasy(nullptr, true, granica);
        EXPECT_EQ(wynik, wolaneEdycje != 0);
        return wolaneEdycje;
    };
    TFunEdycji funkcja = &Edycja<9>;
    jadro.RejestrujFunEdycji(TLukiMinus::KlasaStatyczna(), nullptr);
    EXPECT_FALSE(jadro.JestFunEdycji(TLukiMinus::KlasaStatyczna(), funkcja));
    EXPECT_EQ(funkcja, nullptr);
    const TKlasa* znana = nullptr;
    EXPECT_TRUE(jadro.JestKlasaONazwie(u"TLukiMinus", znana)); // known by name all the same
    EXPECT_EQ(wolane(nullptr), 0);
    jadro.RejestrujFunEdycji(luki, &Edycja<1>);
    EXPECT_EQ(wolane(nullptr), 0); // the limit is the field's own class
    EXPECT_EQ(wolane(luki), 1);
    EXPECT_EQ(wolane(TObiektBazowy::KlasaStatyczna()), 1);
    EXPECT_EQ(wolane(probki::TAdres::KlasaStatyczna()), 0); // no ancestor: no class is asked
    jadro.RejestrujFunEdycji(plus, &Edycja<2>);
    EXPECT_EQ(wolane(luki), 2); // the nearest class, and only one
    jadro.RejestrujFunEdycji(plus, &Edycja<3>);
    EXPECT_EQ(wolane(nullptr), 3);
    DefFunEdycji = &Edycja<4>;
    EXPECT_EQ(wolane(probki::TAdres::KlasaStatyczna()), 4);
    EXPECT_EQ(wolane(luki), 3);
    jadro.RejestrujFunEdycji(plus, nullptr);
    EXPECT_EQ(wolane(luki), 1);
    jadro.RejestrujFunEdycji(luki, nullptr);
    EXPECT_EQ(wolane(luki), 4);
    DefFunEdycji = nullptr;
    EXPECT_EQ(wolane(luki), 0);
}

// Null is no class; the kernel in use and what it holds are not to be emptied or replaced; a change is seen everywhere.
TEST(Jadro, WUzyciu) {
    TJadroKlas& jadro = *JadroKlas();
    TListaOpisowKlas lista;
    for (const auto& bez :
         {+[](TJadroKlas& j) { j.RejestrujKlase(nullptr); }, +[](TJadroKlas& j) { j.WyrejestrujKlase(nullptr); },
          +[](TJadroKlas& j) { j.OpisKlasy(nullptr); },
          +[](TJadroKlas& j) { static_cast<void>(j.TypPolaKlasy(nullptr, 0)); },
          +[](TJadroKlas& j) { j.RejestrujFunEdycji(nullptr, &Edycja<5>); }})
        EXPECT_THROW(bez(jadro), ZTException);
    EXPECT_THROW(lista.GetOpisKlasy(nullptr), ZTException);

    const auto obiekt = Utworz<TZmieniana>();
    obiekt->SetKod(u"x");
    TOpisKlasy& opis = *jadro.OpisKlasy(TZmieniana::KlasaStatyczna());
    TListaWlasciwosci& tabela = *opis.GetListaWlasciwosci();
    TWlasciwosc& wlasciwosc = *tabela.GetWlasciwosc(0);
    auto& opisy = static_cast<TListaOpisowKlas&>(*opis.Rodzic());
    const std::int32_t ile = opisy.IleObiektow();
    for (TObiektBazowy* o :
         {static_cast<TObiektBazowy*>(&jadro), static_cast<TObiektBazowy*>(&opisy), static_cast<TObiektBazowy*>(&opis),
          static_cast<TObiektBazowy*>(&tabela), static_cast<TObiektBazowy*>(&wlasciwosc)}) {
        SCOPED_TRACE(Utf8ZUtf16(o->NazwaKlasy()));
        const auto pusty = o == &jadro ? TWlasny<TObiektBazowy>(Utworz<TJadroKlas>()) : o->TworzInstancje(nullptr);
        EXPECT_THROW(o->ZerujDane(), ZTException);
        EXPECT_THROW(o->UstawNiepuste(0, false), ZTException);
        EXPECT_THROW(o->UstawNiepuste(-1, false), ZTException);
        EXPECT_THROW(o->KopiujDane(*pusty), ZTException);
        EXPECT_THROW(strumienie::Wczytaj(*o, std::string(2, '\0')), ZTException);
        pusty->ZerujDane(); // free-standing ones do as they are told
    }
    EXPECT_THROW(tabela.UsunObiekt(0, true, false), ZTException);
    EXPECT_THROW(opisy.SkrocListe(0, false), ZTException);
    EXPECT_EQ(opisy.IleObiektow(), ile);

    EXPECT_EQ(obiekt->NrPolaONazwie(u"Dodane"), -1);
    TWlasciwosc& dodana = *tabela.DodajWlasciwosc(9, nullptr);
    dodana.SetNazwa(u"Dodane");
    dodana.SetTyp(TPoleInteger::KlasaStatyczna());
    EXPECT_EQ(obiekt->NrPolaONazwie(u"Dodane"), 9);
    obiekt->SetPoleInteger(9, 7);
    EXPECT_EQ(obiekt->GetPoleInteger(9), 7);
    EXPECT_EQ(Utworz<TZmieniana>()->TypPolaNr(9), TPoleInteger::KlasaStatyczna());
    dodana.SetTyp(TPoleDouble::KlasaStatyczna());
    EXPECT_EQ(obiekt->TypPolaNr(9), TPoleDouble::KlasaStatyczna());
}

// A host that goes from one kernel to another and back takes no memory for it.
TEST(Jadro, DwaNaPrzemian) {
    TWlasny<TJadroKlas> drugie = Utworz<TJadroKlas>();
    const auto tamIZPowrotem = [&] {
        for (TJadroKlas* jadro : {drugie.get(), static_cast<TJadroKlas*>(nullptr)}) {
            UserKernel = jadro;
            const auto obiekt = Utworz<TLukiPlus>();
            obiekt->SetKod(u"x");
            EXPECT_EQ(obiekt->NrPolaONazwie(u"Wazne"), 7);
        }
    };
    tamIZPowrotem();
    przydzialy::Zacznij();
    for (int i = 0; i < 20; ++i)
        tamIZPowrotem();
    EXPECT_EQ(przydzialy::Zakoncz().zostalo, 0);
}

// --- interfaces

struct IProba : IInterfejs {
    static constexpr TGUID IID = Guid("{0B1C2D3E-4F50-4162-8394-A5B6C7D8E9F0}");
    virtual int Numer() const = 0;
};
struct IInna : IInterfejs {
    static constexpr TGUID IID = Guid("{1B1C2D3E-4F50-4162-8394-A5B6C7D8E9F0}");
};
class TImplProba : public TImplementacja<TObiektLiczony, IProba> {
    ZTOK_KLASA_DEKL(TImplProba)
    int Numer() const override { return numer; }
    int numer = 0;
};
class TImplObie : public TImplementacja<TImplProba, IInna> {
    ZTOK_KLASA_DEKL(TImplObie)
    // Unregisters itself when it dies, as a careful object does.
    ~TImplObie() override {
        if (jadro != nullptr) {
            EXPECT_FALSE(jadro->WyrejestrujInterfejs(static_cast<IInna*>(this)));
        }
    }
    TJadroKlas* jadro = nullptr;
};
ZTOK_KLASA_DEF(TImplProba, TObiektLiczony)
ZTOK_KLASA_DEF(TImplObie, TImplProba)

template <class T, class I> TIntf<I> UtworzIntf(T*& obiekt) {
    obiekt = Utworz<T>().Oddaj();
    return TIntf<I>(static_cast<I*>(obiekt));
}

TEST(Jadro, RejestrInterfejsow) {
    TWlasny<TJadroKlas> jadro = Utworz<TJadroKlas>(nullptr);
    TImplProba* a = nullptr;
    TImplObie* b = nullptr;
    TIntf<IProba> ia = UtworzIntf<TImplProba, IProba>(a);
    TIntf<IProba> ib = UtworzIntf<TImplObie, IProba>(b);
    a->numer = 1;
    b->numer = 2;
    TIntf<IProba> wynik = ia;
    EXPECT_FALSE(jadro->DajInterfejs(wynik));
    EXPECT_FALSE(wynik);
    const auto odmowa = [&](auto... komunikat) {
        return Blad<ZTException>([&] { jadro->DajInterfejsLubBlad(wynik, komunikat...); });
    };
    EXPECT_EQ(odmowa(), u"brak interfejsu {0B1C2D3E-4F50-4162-8394-A5B6C7D8E9F0}");
    EXPECT_EQ(odmowa(u"Nie ma próby"), u"Nie ma próby {0B1C2D3E-4F50-4162-8394-A5B6C7D8E9F0}");
    EXPECT_EQ(odmowa(u"(%s) - brak"), u"({0B1C2D3E-4F50-4162-8394-A5B6C7D8E9F0}) - brak");
    jadro->RejestrujInterfejs(nullptr);
    EXPECT_FALSE(jadro->WyrejestrujInterfejs(nullptr));
    for (int i = 0; i < 3; ++i) // once only, with one reference
        jadro->RejestrujInterfejs(ia.get());
    EXPECT_EQ(a->LiczbaReferencji(), 2);
    jadro->RejestrujInterfejs(ib.get());
    ASSERT_TRUE(jadro->DajInterfejs(wynik));
    EXPECT_EQ(wynik->Numer(), 2); // the newest
    EXPECT_EQ(b->LiczbaReferencji(), 3);
    wynik = ia;
    EXPECT_TRUE(jadro->DajInterfejsGdyBrak(wynik));
    EXPECT_EQ(wynik->Numer(), 1); // there already
    wynik = nullptr;
    EXPECT_TRUE(jadro->DajInterfejsGdyBrak(wynik));
    EXPECT_EQ(wynik->Numer(), 2);
    EXPECT_TRUE(jadro->WyrejestrujInterfejs(ib.get()));
    EXPECT_FALSE(jadro->WyrejestrujInterfejs(ib.get()));
    jadro->DajInterfejsLubBlad(wynik);
    EXPECT_EQ(wynik->Numer(), 1);
    jadro->RejestrujInterfejs(ib.get());
    EXPECT_EQ(jadro->NazwyInterfejsow(), u"TImplProba\r\nTImplObie\r\n");

    const TWierszInterfejsu* wpis = nullptr;
    TGUID iid;
    EXPECT_TRUE(jadro->GetInterfaceEntry(ib.get(), wpis));
    EXPECT_EQ(*wpis->iid, IProba::IID); // declared by the ancestor
    EXPECT_TRUE(jadro->DajGUIDInterfejsu(static_cast<IInna*>(b), iid));
    EXPECT_EQ(iid, IInna::IID);
    EXPECT_FALSE(jadro->GetInterfaceEntry(nullptr, wpis));
    EXPECT_EQ(jadro->DajObiektImplInterfejs(static_cast<IInna*>(b)), b);
    EXPECT_EQ(jadro->DajObiektImplInterfejs(nullptr), nullptr);

    // The kernel's end gives up the last reference to an object that then unregisters itself.
    EXPECT_TRUE(jadro->WyrejestrujInterfejs(ib.get()));
    jadro->RejestrujInterfejs(static_cast<IInna*>(b));
    b->jadro = jadro.get();
    wynik = nullptr;
    ib = nullptr;
    jadro.Ustaw();
    EXPECT_EQ(a->LiczbaReferencji(), 1);
}

TEST(Jadro, EtykietyPol) {
    for (const auto& wiersz : testy::WczytajTabele("etykiety.tsv"))
        EXPECT_EQ(JadroKlas()->NazwaPolaNaEkran(wiersz.Tekst(0)), wiersz.Tekst(1)) << wiersz.numer;
}

TEST(Jadro, FormatWracaDoDomyslnego) {
    const auto jadro = Utworz<TJadroKlas>(nullptr);
    EXPECT_EQ(jadro->Format(), UstawieniaPolskie());
    jadro->Format().separatorDziesietny = u'x';
    jadro->Format().krotkieNazwyDni[5] = u"Pią";
    jadro->UstawDefFormatDatyICzasu();
    EXPECT_EQ(jadro->Format().separatorDziesietny, u'.');
    EXPECT_EQ(jadro->Format().krotkieNazwyDni[5], u"Pt");
}

TEST(Jadro, OperacjeUprzywilejowane) {
    using probki::TAdres;
    using probki::TWszystko;
    TJadroKlas& jadro = *JadroKlas();
    const auto obcy = Utworz<TAdres>();
    const auto wskazujacy = Utworz<TWszystko>();
    const auto drzewo = Utworz<TWszystko>();
    TWszystko& element = drzewo->GetPodrzedne().Dopisz();
    auto& wKolekcji = static_cast<TWszystko&>(*drzewo->GetRozne().Dodaj(Utworz<TWszystko>()));
    auto& wTablicy = static_cast<TWszystko&>(*drzewo->GetTablica().DodajObiekt(Utworz<TWszystko>()));
    TWszystko* const wszystkie[] = {drzewo.get(), &element, &wKolekcji, &wTablicy};
    for (TWszystko* o : wszystkie) {
        o->SetReferencja(obcy.get());
        o->SetWskaznik(drzewo.get());
        o->GetPowiazane().DodajObiekt(obcy.get(), MaxInt);
        o->GetWskazywane().DodajObiekt(obcy.get(), MaxInt);
        o->SetNazwa(u"zostaje");
    }
    wskazujacy->GetPowiazane().DodajObiekt(drzewo.get(), MaxInt);
    jadro.ZwolnijLinki(*drzewo);
    EXPECT_TRUE(wskazujacy->GetPowiazane().ListaPusta());
    EXPECT_FALSE(drzewo->MaJakiesRef());
    EXPECT_FALSE(obcy->MaJakiesRef());
    for (TWszystko* o : wszystkie) {
        EXPECT_EQ(o->GetReferencja(), nullptr);
        EXPECT_EQ(o->GetWskaznik(), nullptr);
        EXPECT_FALSE(o->PoleNiepuste(TWszystko::nrWskaznik));
        EXPECT_TRUE(o->GetPowiazane().ListaPusta());
        EXPECT_TRUE(o->GetWskazywane().ListaPusta());
        EXPECT_EQ(o->GetNazwa(), u"zostaje");
    }
    const auto wskazniki = Utworz<TListaRefObiektow>();
    wskazniki->DodajObiekt(obcy.get(), 0);
    jadro.ZwolnijLinki(*wskazniki);
    EXPECT_TRUE(wskazniki->ListaPusta());
    EXPECT_EQ(wskazniki->Pojemnosc(), 4);
    EXPECT_FALSE(obcy->MaJakiesRef());

    jadro.NilujElemListy(drzewo->GetPodrzedne(), 0);
    EXPECT_EQ(drzewo->GetPodrzedne()[0], nullptr);
    EXPECT_EQ(drzewo->GetPodrzedne().IleObiektow(), 1);
    TWszystko* nowy = Utworz<TWszystko>().Oddaj();
    jadro.UstawElemListy(drzewo->GetPodrzedne(), 0, nowy);
    EXPECT_EQ(drzewo->GetPodrzedne()[0], nowy);
    EXPECT_EQ(nowy->Rodzic(), nullptr);

    // Parents that go round: walks up end.
    TWszystko czesc(drzewo.get());
    jadro.UstawRodzica(*drzewo, &czesc);
    EXPECT_NE(drzewo->DajKorzen(), nullptr);
    EXPECT_EQ(drzewo->DajRodzica(TAdres::KlasaStatyczna()), nullptr);
    static_cast<void>(drzewo->DajSciezkeDoSiebie());
    jadro.UstawRodzica(*drzewo, nullptr);
}

// --- end of the library

// The library's own kernel dies in the tests below; the classes known before are known after it again.
class Wyladowanie : public testing::Test {
  protected:
    void SetUp() override { JadroKlas()->DajListeZnanychKlas(znane_); }
    void TearDown() override {
        g_ZTOKQuiet = false;
        for (const auto& [nazwa, klasa] : znane_)
            JadroKlas()->RejestrujKlase(reinterpret_cast<const TKlasa*>(klasa));
    }
    TImplProba* obiekt_ = nullptr;
    const TIntf<IProba> interfejs_ = UtworzIntf<TImplProba, IProba>(obiekt_);
    const std::uint64_t numer_ = JadroKlas()->Numer();
    TPowiadomienia powiadomienia_;
    TListaNapisow znane_{true};
};

TEST_F(Wyladowanie, InterfejsyPowiadomienieICisza) {
    JadroKlas()->RejestrujInterfejs(interfejs_.get());
    g_ZTOKQuiet = true;
    ZamknijBiblioteke();
    EXPECT_TRUE(TPowiadomienia::Tresci().empty());
    EXPECT_EQ(JadroKlas()->Numer(), numer_); // deliberately left alive
    EXPECT_EQ(obiekt_->LiczbaReferencji(), 2);
    JadroKlas()->WyrejestrujInterfejs(interfejs_.get());
}

TEST_F(Wyladowanie, OstrzezenieIZwolnienieJadra) {
    const auto obiekt = Utworz<TLuki>();
    obiekt->SetKod(u"przed");
    JadroKlas()->RejestrujInterfejs(interfejs_.get());
    ZamknijBiblioteke();
    ASSERT_EQ(TPowiadomienia::Tresci().size(), 1U);
    EXPECT_EQ(TPowiadomienia::Tresci()[0], u"UWAGA!\rNiewyrejestrowane interfejsy z jądra:\rTImplProba\r\n");
    EXPECT_EQ(obiekt_->LiczbaReferencji(), 1);
    // An object that outlives the kernel finds its fields through the next one.
    EXPECT_EQ(obiekt->NazwaPolaNr(5), u"Kwota");
    EXPECT_NE(JadroKlas()->Numer(), numer_);
    EXPECT_EQ(obiekt->GetKod(), u"przed");
}

TEST_F(Wyladowanie, WyjatekPrzyZwalnianiu) {
    class TZly : public TObiekt {
        ZTOK_OBIEKT(TZly, TObiekt)

      protected:
        void WykonajDestrukcje() override {
            TObiekt::WykonajDestrukcje();
            ZTError(u"nie chcę");
        }
    };
    JadroKlas()->UstawPole(1, Utworz<TZly>().Oddaj(), true);
    ZamknijBiblioteke();
    ASSERT_EQ(TPowiadomienia::Tresci().size(), 1U);
    EXPECT_EQ(TPowiadomienia::Tresci()[0],
              u"UWAGA!\rWyjątek przy zwalnianiu jądra:\rWyjątek w ZerujDane w TJadroKlas.Destroy (): nie chcę");
    EXPECT_NE(JadroKlas()->Numer(), numer_);
}

TEST_F(Wyladowanie, JadroProgramu) {
    TJadroKlas* wlasne = JadroKlas();
    const auto uzytkownika = Utworz<TJadroKlas>(nullptr);
    const auto obiekt = Utworz<TLuki>();
    EXPECT_EQ(obiekt->RozmPolaNr(-1), 6);
    TOpisKlasy* opis = wlasne->OpisKlasy(TLuki::KlasaStatyczna());
    UserKernel = uzytkownika.get();
    EXPECT_EQ(JadroKlas(), uzytkownika.get());
    const TKlasa* klasa = nullptr;
    EXPECT_FALSE(JadroKlas()->JestKlasaONazwie(u"TLuki", klasa));
    EXPECT_EQ(obiekt->RozmPolaNr(-1), 6); // described anew by the kernel in charge
    EXPECT_TRUE(JadroKlas()->JestKlasaONazwie(u"TLuki", klasa));
    EXPECT_NE(JadroKlas()->OpisKlasy(klasa), opis);
    uzytkownika->RejestrujInterfejs(interfejs_.get());
    ZamknijBiblioteke(); // ends the library's own kernel only
    EXPECT_TRUE(TPowiadomienia::Tresci().empty());
    EXPECT_EQ(JadroKlas(), uzytkownika.get());
    EXPECT_EQ(obiekt_->LiczbaReferencji(), 2);
    EXPECT_EQ(obiekt->NazwaPolaNr(1), u"Ile");
    UserKernel = nullptr;
}

} // namespace
