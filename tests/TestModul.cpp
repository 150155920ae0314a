// A second module: its classes work by name while it is loaded, and are gone with it.
#include "tests/Testy.h"

#include "modul/KlasyModulu.h"
#include "platforma/SystemTestowy.h"
#include "ztok/platform/PulaWnetrze.h"

using namespace ztok;
using probki::TWspolna;
using strumienie::Wczytaj;
using strumienie::Zapisz;
using systemTestowy::TZaladowany;

ZTOK_WYJATEK(EBladProgramu, ZTException);
ZTOK_WYJATEK_DEF(EBladProgramu);

namespace {

const std::string sciezka = ZTOK_SCIEZKA_MODULU;

std::size_t IleZnanychKlas() {
    TListaNapisow lista;
    JadroKlas()->DajListeZnanychKlas(lista);
    return lista.Ile();
}

// Each of the classes, in the module's order, is caught as itself.
template <class... E> void SprawdzKlasy(void (*rzuc)(int)) {
    int ktory = 0;
    const auto zlapany = [&](auto* klasa) {
        using T = std::remove_pointer_t<decltype(klasa)>;
        try {
            rzuc(ktory++);
        } catch (const T& e) {
            return e.Komunikat() == u"z modułu" && std::string(e.what()) == "z modułu" && typeid(e) == typeid(T);
        } catch (...) { // NOLINT(bugprone-empty-catch): the answer tells
        }
        return false;
    };
    EXPECT_TRUE((zlapany(static_cast<E*>(nullptr)) && ...)) << ktory;
}

void RzucZProgramu() { throw EBladAsercji(u"z programu"); }
void RzucWlasny() { throw EBladProgramu(u"z programu"); }

void SprawdzWyjatki(const TZaladowany& modul) {
    const auto rzuc = modul.Funkcja<void (*)(int)>("ModulRzuc");
    SprawdzKlasy<EBladKonwersji, EBladWariantu, EBladOdczytu, EBladZapisu, EBladRzutowania, EBladAbstrakcyjny,
                 EBladSystemu, EBladAsercji, EBladFormatu, ZTException, TZTFileError>(rzuc);
    EXPECT_THROW(rzuc(1), EWyjatek);
    EXPECT_THROW(modul.Funkcja<void (*)(void (*)())>("ModulWywolaj")(&RzucZProgramu), EBladAsercji);
    EXPECT_THROW(modul.Funkcja<void (*)(void (*)())>("ModulWywolaj")(&RzucWlasny), EBladProgramu);
    TWspolna wspolna;
    wspolna.SetNazwa(u"x");
    EXPECT_THROW(modul.Funkcja<int (*)(TObiekt*)>("ModulZlyTyp")(&wspolna), EBladRzutowania);
}

// One load: everything that a host does with a module's classes. Returns the stream that it saved, and leaves one of
// the classes in the array.
std::string JednoZaladowanie(TArrayOfConst& klasy) {
    const TZaladowany modul(sciezka);
    EXPECT_TRUE(modul.Jest());
    if (!modul.Jest())
        return {};
    EXPECT_TRUE(TZaladowany::WPamieci(sciezka));
    modul.Funkcja<void (*)()>("ModulRejestruj")();

    const TKlasa* klasa = nullptr;
    EXPECT_TRUE(JadroKlas()->JestKlasaONazwie(u"tzmodulu", klasa));
    klasy.Dodaj(klasa);
    EXPECT_EQ(Zapisz(klasy), "\x01\x08\x08TZModulu");
    TWlasny<TObiektBazowy> nowy(static_cast<TObiektBazowy*>(klasa->utworz(nullptr)));
    auto& obiekt = static_cast<TObiekt&>(*nowy);
    EXPECT_TRUE(obiekt.JestKlasy(TObiekt::KlasaStatyczna()));
    EXPECT_EQ(obiekt.NrPolaONazwie(u"Dalsze"), 2);
    TKolekcjaObiektow kolekcja;
    auto& wspolna = static_cast<TWspolna&>(*kolekcja.Dodaj(Utworz<TWspolna>()));
    wspolna.SetNazwa(u"z programu");
    obiekt.WpiszDane({0, 1, 3, 4}, {u"Żółw", 7, &wspolna, 0.5});
    kolekcja.Dodaj(std::move(nowy));

    // The shared class, made by either side, is one class for both, whatever module its code lies in.
    const auto poznaje = modul.Funkcja<bool (*)(const TObiektBazowy*)>("ModulPoznaje");
    TWlasny<TObiektBazowy> obca(modul.Funkcja<TObiektBazowy* (*)()>("ModulUtworzWspolna")());
    EXPECT_TRUE(obca->JestKlasy(TWspolna::KlasaStatyczna()));
    EXPECT_TRUE(poznaje(obca.get()));
    EXPECT_TRUE(poznaje(&wspolna));
    EXPECT_FALSE(poznaje(&kolekcja));
    EXPECT_EQ(obca->Porownaj(wspolna), -1);
    wspolna.SetInna(static_cast<TWspolna*>(obca.get()));
    EXPECT_EQ(wspolna.GetInna()->GetNazwa(), u"z modułu");
    kolekcja.Dodaj(std::move(obca));

    const std::string bajty = Zapisz(kolekcja);
    TKolekcjaObiektow odczytana;
    Wczytaj(odczytana, bajty);
    EXPECT_EQ(odczytana.Porownaj(kolekcja), 0);
    EXPECT_TRUE(Zapisz(odczytana) == bajty);
    EXPECT_EQ(odczytana.Obiekty(1)->NazwaKlasy(), u"TZModulu");
    EXPECT_EQ(static_cast<TObiekt&>(*odczytana.Obiekty(1)).GetPoleRefObiektu(3), odczytana.Obiekty(0));
    EXPECT_EQ(static_cast<TWspolna&>(*odczytana.Obiekty(0)).GetInna(), odczytana.Obiekty(2));
    SprawdzWyjatki(modul);
    return bajty;
}

TEST(Modul, StoRazyZaladowanyIZnikniety) {
    TWspolna swoja;
    swoja.SetNazwa(u"a"); // the library knows the program's class, though not by name
    std::int64_t zajete = 0;
    std::size_t znanych = 0;
    for (int razy = 0; razy < 100; ++razy) {
        ASSERT_FALSE(TZaladowany::WPamieci(sciezka)) << razy;
        TArrayOfConst klasy;
        const std::string bajty = JednoZaladowanie(klasy);
        ASSERT_FALSE(TZaladowany::WPamieci(sciezka)) << razy;
        // A class that is gone is only a number to an array that holds it.
        klasy.DodajWszystkie(klasy.Elementy());
        EXPECT_EQ(klasy.KlonujObiekt(false)->Porownaj(klasy), 0);
        EXPECT_EQ(strumienie::Tekst(klasy), "object TArrayOfConst\r\nClass=0\r\nClass=0\r\nend");
        EXPECT_EQ(Zapisz(klasy), std::string("\x02\x08\0\x08\0", 5));
        EXPECT_EQ(klasy.GetJakoString(), u"; ");
        const TKlasa* klasa = nullptr;
        EXPECT_FALSE(JadroKlas()->JestKlasaONazwie(u"TZModulu", klasa));
        EXPECT_FALSE(JadroKlas()->JestKlasaONazwie(u"TListaZModulu", klasa));
        EXPECT_EQ(klasa, nullptr);
        // The module's shared class gave its name to the program's.
        EXPECT_TRUE(JadroKlas()->JestKlasaONazwie(u"TWspolna", klasa));
        EXPECT_EQ(klasa, TWspolna::KlasaStatyczna());
        JadroKlas()->WyrejestrujKlase(klasa);
        // What the module's class saved is unknown now.
        TKolekcjaObiektow odczytana;
        TZTReadOnlyRawByteStream strumien(bajty);
        TOdczytywaczDanych odczytywacz;
        odczytywacz.BladNieznanejKlasy = true;
        EXPECT_THROW(odczytana.WczytajZeStrumienia(strumien, &odczytywacz), ZTException);
        odczytana.ZerujDane();
        if (razy == 1) {
            zajete = PulaZajete();
            znanych = IleZnanychKlas();
        } else if (razy > 1) {
            ASSERT_EQ(PulaZajete(), zajete) << razy;
            ASSERT_EQ(IleZnanychKlas(), znanych) << razy;
        }
    }
}

// Objects of a module's classes that outlive its code: the host is told how many, and nobody else.
TEST(Modul, ZyjaceObiektyGdyOdchodzi) {
    if (pula::BezPuli())
        GTEST_SKIP() << "they are looked for in the pool";
    std::vector<std::pair<void*, std::size_t>> zostaja;
    for (const bool slucha : {true, false}) {
        const TFunPowiadomienia poprzednia = slucha ? nullptr : UstawPowiadomienie(nullptr);
        std::optional<testy::TPowiadomienia> powiadomienia;
        if (slucha)
            powiadomienia.emplace();
        {
            const TZaladowany modul(sciezka);
            ASSERT_TRUE(modul.Jest());
            modul.Funkcja<void (*)()>("ModulRejestruj")();
            const TKlasa* klasa = nullptr;
            ASSERT_TRUE(JadroKlas()->JestKlasaONazwie(u"TZModulu", klasa));
            for (int i = 0; i < 3; ++i)
                zostaja.emplace_back(klasa->utworz(nullptr), klasa->rozmiar);
            Zwolnij(static_cast<TObiektOgolny*>(zostaja.back().first));
            zostaja.pop_back();
        }
        if (slucha)
            EXPECT_EQ(
                testy::TPowiadomienia::Tresci(),
                (std::vector<std::u16string>{u"UWAGA!\rModuł kończy się, a żyją jego obiekty:\rTZModulu: 2\r\n"}));
        else
            UstawPowiadomienie(poprzednia);
    }
    for (const auto& [obiekt, rozmiar] : zostaja) // nobody can end them any more
        PulaZwolnij(obiekt, rozmiar);
}

} // namespace
