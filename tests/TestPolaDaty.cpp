// Date and time fields: what each keeps, whatever the way in. Their forms are in the table of all fields.
#include "tests/Testy.h"

using namespace ztok;

namespace {

class TChwile : public TObiekt {
    ZTOK_OBIEKT(TChwile, TObiekt, (0, Data, Date), (1, Godzina, Time), (2, Chwila, DateTime), (3, Liczba, Double))
};

} // namespace

TEST(PolaDaty, CzescZachowanaPrzezKazdeWejscie) {
    for (const double wartosc : {42006.75, 0.25, -5.25, -0.5, 0.0, 2958465.5}) {
        const double data = std::trunc(wartosc);
        const TWlasny<TChwile> o = Utworz<TChwile>();
        o->SetData(wartosc);
        o->SetGodzina(wartosc);
        o->SetChwila(wartosc);
        o->SetLiczba(wartosc);
        std::string bajty("\x01\x0F", 2);
        for (const double czesc : {data, wartosc - data, wartosc, wartosc})
            bajty.append(reinterpret_cast<const char*>(&czesc), sizeof czesc);
        EXPECT_EQ(strumienie::Szesnastkowo(strumienie::Zapisz(*o)), strumienie::Szesnastkowo(bajty));
        std::string zrodlo("\x01\x0F", 2); // the whole value in every field
        for (int i = 0; i < 4; ++i)
            zrodlo.append(reinterpret_cast<const char*>(&wartosc), sizeof wartosc);
        const TWlasny<TChwile> odczytany = Utworz<TChwile>();
        strumienie::Wczytaj(*odczytany, zrodlo);
        EXPECT_EQ(strumienie::Zapisz(*odczytany), bajty);
        EXPECT_EQ(strumienie::Zapisz(*o->KlonujObiekt(false)), bajty);
        EXPECT_THROW((void)o->GetPoleDouble(0), EBladRzutowania);
        TPoleDateTime chwila;
        EXPECT_THROW(chwila.KopiujDane(*o->Pole(3)), EBladRzutowania);
        EXPECT_THROW(chwila.KopiujDane(*o->Pole(0)), EBladRzutowania);
    }
    TPoleTime czas;
    czas.UstawWartosc(INFINITY);
    EXPECT_EQ(czas.Wartosc(), 0);
    TPoleDate data;
    data.UstawWartosc(7);
    EXPECT_THROW(data.SetJakoString(u"wczoraj"), EBladKonwersji);
    EXPECT_EQ(data.Wartosc(), 7); // kept after the error
}
