// Threads: what may be shared, under load; the thread sanitizer watches.
#include "tests/Testy.h"

#include <atomic>

#include "LosoweDrzewo.h"
#include "Watki.h"
#include "ztok/platform/Pula.h"

using namespace ztok;
using namespace probki;
using strumienie::Wczytaj;
using strumienie::Zapisz;

namespace {

class TWspolny : public TObiektTS {
    ZTOK_OBIEKT(TWspolny, TObiektTS, (0, Licznik, Integer), (1, Tekst, String), (2, Adres, Obiekt<TAdres>),
                (3, Cel, Ref<TAdres>), (4, Kwota, Double), (5, Duzy, Int64))
};
class TZalezny : public TObiektITS {
    ZTOK_OBIEKT(TZalezny, TObiektITS, (0, Licznik, Integer), (1, Tekst, String))
};
class TWlasciciel : public TObiektTS {
    ZTOK_OBIEKT(TWlasciciel, TObiektTS, (0, A, Obiekt<TZalezny>), (1, B, Obiekt<TZalezny>))
};

constexpr int IleWatkow = 8;

class Watki : public testing::Test {
  protected:
    // The first call of the kernel belongs before the threads.
    void SetUp() override { Rejestruj(); }
};

// The registry is read, and written, while every thread reads, copies and compares a tree of its own. The kernel is
// new: descriptors are built by whoever comes first.
TEST_F(Watki, RejestrIOsobneDrzewa) {
    std::vector<std::string> strumienie;
    for (std::uint32_t ziarno = 0; ziarno < 6; ++ziarno) {
        const TWlasny<TWszystko> o = Utworz<TWszystko>();
        TLosoweDrzewo(ziarno).Wypelnij(*o, 2);
        strumienie.push_back(Zapisz(*o));
    }
    TWlasny<TJadroKlas> jadro = Utworz<TJadroKlas>();
    UserKernel = jadro.get();
    Rejestruj();
    std::atomic<int> bledy{0};
    testy::WWatkach(IleWatkow, [&](int w) {
        for (int i = 0; i < 40; ++i) {
            const std::string& bajty = strumienie[static_cast<std::size_t>(i + w) % strumienie.size()];
            const TWlasny<TWszystko> o = Utworz<TWszystko>();
            Wczytaj(*o, bajty);
            const TWlasny<TObiektBazowy> kopia = o->KlonujObiekt(false);
            const TKlasa* klasa = nullptr;
            if (w == 0 && i % 8 == 0)
                JadroKlas()->RejestrujKlase(TWspolny::KlasaStatyczna());
            if (w == 1 && i % 8 == 0)
                JadroKlas()->WyrejestrujKlase(TWspolny::KlasaStatyczna());
            const bool dobrze = Zapisz(*kopia) == bajty && o->Porownaj(*kopia) == 0 &&
                                JadroKlas()->JestKlasaONazwie(u"TAdres", klasa) && klasa == TAdres::KlasaStatyczna() &&
                                o->NrPolaONazwie(u"Powiazane") == TWszystko::nrPowiazane &&
                                JadroKlas()->OpisKlasy(klasa)->GetNazwa() == u"TAdres";
            if (!dobrze)
                ++bledy;
        }
    });
    EXPECT_EQ(bledy, 0);
    UserKernel = nullptr;
}

// One object for all threads: every accessor holds its lock, and code that needs two steps holds it over both.
TEST_F(Watki, JedenObiektZWlasnaBlokada) {
    const TWlasny<TWspolny> o = Utworz<TWspolny>();
    TAdres cele[2];
    std::atomic<int> bledy{0};
    constexpr int Razy = 500;
    testy::WWatkach(IleWatkow, [&](int w) {
        for (int i = 0; i < Razy; ++i) {
            {
                const TBlokadaObiektu blokada(*o);
                o->SetLicznik(o->GetLicznik() + 1);
            }
            o->SetTekst(std::u16string(static_cast<std::size_t>(1 + i % 40), static_cast<char16_t>(u'a' + w)));
            const std::u16string tekst = o->GetTekst();
            if (!tekst.empty() && tekst.find_first_not_of(tekst[0]) != std::u16string::npos)
                ++bledy;
            o->SetCel(&cele[i % 2]); // within its lock the object alone touches the targets' sets
            o->SetKwota(i * 1.5);
            o->SetDuzy(o->GetDuzy() + 1);
            if (i % 50 == w) {
                TWspolny odczytany;
                Wczytaj(odczytany, Zapisz(*o));
                if (odczytany.GetTekst().empty() || odczytany.GetLicznik() < 1)
                    ++bledy;
                o->SetMaWartosc(TWspolny::nrKwota, false);
                static_cast<void>(o->DajWyroznikObiektu());
                static_cast<void>(odczytany.Porownaj(*Utworz<TWspolny>()));
            }
        }
    });
    EXPECT_EQ(bledy, 0);
    EXPECT_EQ(o->GetLicznik(), IleWatkow * Razy);
    EXPECT_EQ(cele[0].MaJakiesRef() + cele[1].MaJakiesRef(), 1);
}

// Objects without a lock of their own take their parent's: what holds it holds both.
TEST_F(Watki, BlokadaRodzicaJestWspolna) {
    const TWlasny<TWlasciciel> o = Utworz<TWlasciciel>();
    TZalezny& a = o->GetA();
    TZalezny& b = o->GetB();
    std::atomic<int> bledy{0};
    constexpr int Razy = 1000;
    testy::WWatkach(IleWatkow, [&](int w) {
        for (int i = 0; i < Razy; ++i) {
            const TBlokadaObiektu blokada(w % 2 == 0 ? static_cast<TObiekt&>(a) : *o);
            b.SetLicznik(b.GetLicznik() + 1);
            a.SetLicznik(b.GetLicznik());
            b.SetTekst(i % 2 == 0 ? u"" : u"x");
            if (a.GetLicznik() != b.GetLicznik())
                ++bledy;
        }
    });
    EXPECT_EQ(bledy, 0);
    EXPECT_EQ(a.GetLicznik(), IleWatkow * Razy);
}

// Trees built by one thread and destroyed by another: the pool takes blocks back from any thread.
TEST_F(Watki, DrzewaZmieniajaWatek) {
    std::vector<TWlasny<TWszystko>> drzewa(IleWatkow * 10);
    const std::int64_t zajete = PulaZajete();
    for (int tura = 0; tura < 4; ++tura)
        testy::WWatkach(IleWatkow, [&](int w) {
            for (std::size_t i = 0; i < 10; ++i) {
                const std::size_t nr = (static_cast<std::size_t>(w + tura) % IleWatkow) * 10 + i;
                drzewa[nr] = Utworz<TWszystko>();
                TLosoweDrzewo(static_cast<std::uint32_t>(nr)).Wypelnij(*drzewa[nr], 1);
            }
        });
    drzewa.clear();
    OddajPamiecPuli();
    EXPECT_EQ(PulaZajete(), zajete);
}

} // namespace
