// One owner, and what events may do while objects die. Random steps stand in fuzz/wywolania.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "tests/Bledy.h"
#include "tests/StrumienieTestowe.h"
#include "ztok/kernel/Typypolbazowe.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/Pula.h"
#include "ztok/util/ZTBledy.h"

namespace {

using namespace ztok;

class TListaWezlow;
class TWezel : public TObiekt {
    ZTOK_OBIEKT(TWezel, TObiekt, (0, Id, Integer), (1, Ref, Ref<TWezel>), (2, Refy, Obiekt<TListaRefObiektow>),
                (3, Dzieci, Obiekt<TListaWezlow>), (4, Rozne, Obiekt<TKolekcjaObiektow>), (5, Jeden, Obiekt<TWezel>))
};
class TListaWezlow : public TListaTypu<TWezel> {
    ZTOK_LISTA(TListaWezlow, TWezel)
};

// Every way to hand over an object that another owner holds is refused, and nothing changes. A parent that only made
// the object does not hold it; what an owner gave back is free.
TEST(Odniesienia, JedenWlasciciel) {
    std::int64_t zajete = 0;
    for (int razy = 0; razy < 2; ++razy) { // the kernel's descriptors come with the first time
        zajete = PulaZajete();
        const TWlasny<TWezel> korzen = Utworz<TWezel>();
        const TWlasny<TWezel> drugi = Utworz<TWezel>();
        TWezel& wPolu = korzen->GetJeden();
        TWezel& wLiscie = korzen->GetDzieci().Dopisz();
        auto& wKolekcji = static_cast<TWezel&>(*korzen->GetRozne().Dodaj(Utworz<TWezel>()));
        const std::string przed = strumienie::Zapisz(*korzen);
        for (TWezel* o : {&wPolu, &wLiscie, &wKolekcji})
            for (TWezel* dokad : {drugi.get(), korzen.get()})
                for (int jak = 0; jak < 5; ++jak) {
                    const std::u16string blad = testy::Blad<ZTException>([&] {
                        TListaZObiektami& lista = jak < 2 ? static_cast<TListaZObiektami&>(dokad->GetDzieci())
                                                          : static_cast<TListaZObiektami&>(dokad->GetRozne());
                        if (jak == 4)
                            dokad->UstawPole(TWezel::nrId, o, false);
                        else if (jak % 2 == 0)
                            lista.DodajObiekt(o, MaxInt);
                        else
                            lista.PrzypnijObiekt(o);
                    });
                    EXPECT_NE(blad.find(u": obiekt klasy TWezel ma już właściciela : " + o->DajSciezkeDoSiebie()),
                              std::u16string::npos)
                        << Utf8ZUtf16(blad);
                }
        EXPECT_EQ(strumienie::Zapisz(*korzen), przed);
        korzen->UstawPole(TWezel::nrJeden, &wPolu, true); // where it is
        korzen->UstawPole(TWezel::nrJeden, nullptr, false);
        drugi->GetDzieci().DodajObiekt(&wPolu, 0);
        drugi->GetRozne().Dodaj(korzen->GetDzieci().Wyjmij(0));
        drugi->UstawPole(TWezel::nrJeden, korzen->GetRozne().UsunObiekt(0, false, false), true);
        drugi->GetDzieci().DodajObiekt(Utworz<TWezel>(&drugi->GetDzieci()).Oddaj(), 0);
        korzen->GetDzieci().Dodaj(Utworz<TWezel>(drugi.get()));
        korzen->GetDzieci().PrzeniesDane(drugi->GetDzieci());
        EXPECT_EQ(wPolu.DajSciezkeDoSiebie(), u"Dzieci[2]");
    }
    EXPECT_EQ(PulaZajete(), zajete);
}

// An event tells that a target dies; what it does then reaches the field itself, its neighbours, and the list that is
// being walked.
struct TZdarzenia {
    TListaWezlow lista;
    std::vector<TWlasny<TPoleRefZeZdarz>> pola;
    int byloZdarzen = 0;
    void (*skutek)(TZdarzenia&, TPole&) = nullptr;

    explicit TZdarzenia(void (*coRobic)(TZdarzenia&, TPole&)) : skutek(coRobic) {
        for (int i = 0; i < 40; ++i)
            lista.Dopisz().SetId(i % 4);
        for (int i = 0; i < 12; ++i) {
            pola.push_back(Utworz<TPoleRefZeZdarz>());
            pola.back()->OnZerujRefDo = {[](void* dane, TPole& nadawca) {
                                             auto& z = *static_cast<TZdarzenia*>(dane);
                                             ++z.byloZdarzen;
                                             z.skutek(z, nadawca);
                                         },
                                         this};
            pola.back()->UstawObiekt(lista[30 + i / 6]);
        }
    }
    void Zwolnij(const TPole& pole) {
        std::erase_if(pola, [&pole](const auto& p) { return p.get() == &pole; });
    }
};

TEST(Odniesienia, ZdarzenieMozeWszystko) {
    using TSkutek = void (*)(TZdarzenia&, TPole&);
    const TSkutek nic = [](TZdarzenia&, TPole&) {};
    const TSkutek skutki[] = {
        nic,
        [](TZdarzenia& z, TPole& nadawca) { z.Zwolnij(nadawca); },
        [](TZdarzenia& z, TPole& nadawca) { std::erase_if(z.pola, [&](auto& p) { return p.get() != &nadawca; }); },
        [](TZdarzenia& z, TPole&) { z.pola.clear(); },
        [](TZdarzenia& z, TPole& nadawca) { static_cast<TPoleRefZeZdarz&>(nadawca).UstawObiekt(z.lista.Obiekty(0)); },
        [](TZdarzenia& z, TPole&) { z.lista.ZerujDane(); },
        [](TZdarzenia& z, TPole&) { z.lista.SkrocListe(3, false); },
        [](TZdarzenia& z, TPole&) {
            for (int i = 0; i < 50; ++i)
                z.lista.Dopisz().SetId(9);
        },
        [](TZdarzenia&, TPole&) { ZTErrorFmt(u"zdarzenie", {}); }, // from here on they raise
        [](TZdarzenia& z, TPole& nadawca) {
            z.Zwolnij(nadawca);
            ZTErrorFmt(u"zdarzenie", {});
        }};
    const TArgument pole[] = {TWezel::nrId};
    const TArgument dwa[] = {2};
    const std::function<void(TListaWezlow&)> usuwania[] = {
        [](TListaWezlow& l) { l.UsunObiekt(30, true, false); },
        [&](TListaWezlow& l) { l.UsunObiekty(pole, dwa, rlRozmLiterWazny); },
        [&](TListaWezlow& l) { l.UsunObiektyOprocz(pole, dwa, rlRozmLiterWazny); },
        [&](TListaWezlow& l) { l.UsunDuplikaty(pole, rlRozmLiterWazny); },
        [](TListaWezlow& l) {
            TListaWskObiektow te;
            te.DopiszDane(&l);
            te.SkrocListe(33, false);
            l.UsunTeObiekty(te, false);
        },
        [](TListaWezlow& l) { l.SkrocListe(2, false); },
        [](TListaWezlow& l) { l.ZerujDane(); }};
    const std::int64_t zajete = PulaZajete();
    for (std::size_t i = 0; i < std::size(skutki); ++i)
        for (const auto& usuwanie : usuwania) {
            SCOPED_TRACE(testing::Message() << i << ' ' << &usuwanie - usuwania);
            TZdarzenia z(skutki[i]);
            const std::u16string blad = testy::Blad([&] { usuwanie(z.lista); });
            EXPECT_EQ(blad.find(u"zdarzenie") != std::u16string::npos, i >= 8) << Utf8ZUtf16(blad);
            EXPECT_GT(z.byloZdarzen, 0);
            for (const auto& p : z.pola) {
                const TObiektBazowy* cel = p->Obiekt(); // alive, and it knows
                EXPECT_TRUE(cel == nullptr || (z.lista.ZnajdzObiekt(cel) >= 0 && cel->MaRefOd(p.get())));
            }
            z.skutek = nic;
        }
    EXPECT_EQ(PulaZajete(), zajete);
}

// What points at an object that is already dying is cleared when it is gone; what nobody ends leaves no trace.
TEST(Odniesienia, NicNieZostajePoObiekcie) {
    struct TUklad {
        TWezel* ginacy = nullptr;
        TPoleRefObiektu pozne;
        TListaRefObiektow poznaLista;
    } u;
    const TZdarzeniePola naGinacy = {[](void* dane, TPole& /*nadawca*/) {
                                         auto& uklad = *static_cast<TUklad*>(dane);
                                         uklad.pozne.UstawObiekt(uklad.ginacy);
                                         uklad.poznaLista.DodajObiekt(uklad.ginacy, 0);
                                     },
                                     &u};
    class TWezelSlad : public TWezel { // not of the plain end of life
        ZTOK_OBIEKT(TWezelSlad, TWezel)
        void ZerujDane() override { TWezel::ZerujDane(); }
    };
    for (const bool zwykly : {true, false}) {
        auto rodzic = zwykly ? Utworz<TWezel>() : TWlasny<TWezel>(Utworz<TWezelSlad>());
        u.ginacy = rodzic.get();
        TPoleRefZeZdarz naDziecko; // of the part, which dies within its owner's end
        naDziecko.OnZerujRefDo = naGinacy;
        naDziecko.UstawObiekt(&rodzic->GetDzieci().Dopisz());
        Zwolnij(rodzic.Oddaj());
        EXPECT_EQ(u.pozne.Obiekt(), nullptr);
        EXPECT_TRUE(u.poznaLista.ListaPusta());
    }
    { // two events that point each other's field at it again and again
        auto ginacy = Utworz<TWezel>();
        TPoleRefZeZdarz pola[2];
        for (int i = 0; i < 2; ++i) {
            pola[i].OnZerujRefDo = {[](void* drugie, TPole& nadawca) {
                                        static_cast<TPoleRefZeZdarz*>(drugie)->UstawObiekt(
                                            static_cast<TPoleRefZeZdarz&>(nadawca).Obiekt());
                                    },
                                    &pola[1 - i]};
            pola[i].UstawObiekt(ginacy.get());
        }
        Zwolnij(ginacy.Oddaj());
        EXPECT_EQ(pola[0].Obiekt(), nullptr);
        EXPECT_EQ(pola[1].Obiekt(), nullptr);
    }
    TWezel cel;
    {
        TPoleRefObiektu naStosie;
        naStosie.UstawObiekt(&cel);
        EXPECT_TRUE(cel.MaJakiesRef());
    }
    EXPECT_FALSE(cel.MaJakiesRef());
    TWezel inny;
    TPoleRefObiektu surowe;
    surowe.UstawObiekt(&cel);
    surowe.SetJakoVariant(surowe.GetJakoVariant()); // the same address changes nothing
    EXPECT_TRUE(cel.MaRefOd(&surowe));
    TPoleRefObiektu wzor;
    wzor.UstawObiekt(&inny);
    surowe.SetJakoString(wzor.GetJakoString()); // points, unregistered, and leaves no registration behind
    EXPECT_EQ(surowe.Obiekt(), &inny);
    EXPECT_FALSE(cel.MaJakiesRef() || inny.MaRefOd(&surowe));
}

} // namespace
