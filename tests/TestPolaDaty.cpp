// Date and time fields: what each keeps, whatever the way in.
#include <cmath>

#include <gtest/gtest.h>

#include "Bledy.h"
#include "ztok/fields/KonwersjeWartosci.h"
#include "ztok/fields/TPolaDaty.h"
#include "ztok/kernel/Typypolbazowe.h"
#include "ztok/platform/DatyTekst.h"
#include "ztok/platform/Kodowania.h"

using namespace ztok;

namespace {

class TChwile : public TObiekt {
    ZTOK_OBIEKT(TChwile, TObiekt, (0, Data, Date), (1, Godzina, Time), (2, Chwila, DateTime), (3, Liczba, Double))
};

template <class P> double PrzezStrumien(double wartosc) {
    TZTMemoryStream strumien;
    strumien.WriteBuffer(&wartosc, sizeof wartosc);
    strumien.Seek(0, ESeek::Poczatek);
    P pole;
    pole.WczytajZeStrumienia(strumien, nullptr);
    return pole.Wartosc();
}

} // namespace

TEST(PolaDaty, CzescZachowanaPrzezKazdeWejscie) {
    for (const double wartosc : {42006.75, 0.25, -5.25, -0.5, 0.0, 2958465.5}) {
        const double data = std::trunc(wartosc);
        const double czas = wartosc - data;
        TPoleDate poleDaty;
        TPoleTime poleCzasu;
        TPoleDateTime poleObu;
        poleDaty.UstawWartosc(wartosc);
        poleCzasu.UstawWartosc(wartosc);
        poleObu.UstawWartosc(wartosc);
        EXPECT_EQ(poleDaty.Wartosc(), data);
        EXPECT_EQ(poleCzasu.Wartosc(), czas);
        EXPECT_EQ(poleObu.Wartosc(), wartosc);
        EXPECT_EQ(PrzezStrumien<TPoleDate>(wartosc), data);
        EXPECT_EQ(PrzezStrumien<TPoleTime>(wartosc), czas);
        EXPECT_EQ(PrzezStrumien<TPoleDateTime>(wartosc), wartosc);
        poleDaty.SetJakoVariant(TWariant(TDataCzas{wartosc}));
        EXPECT_EQ(poleDaty.Wartosc(), data);
        poleCzasu.SetJakoVariant(TWariant(wartosc));
        EXPECT_EQ(poleCzasu.Wartosc(), czas);
        EXPECT_EQ(poleObu.GetJakoVariant().Typ(), TTypWariantu::Date);
    }
    TPoleDate pole;
    pole.SetJakoVariant(TWariant(u"2015-01-02 18:00:00"));
    EXPECT_EQ(pole.Wartosc(), 42006); // cut, not rounded
}

TEST(PolaDaty, TekstyIMaski) {
    const struct {
        double wartosc;
        std::u16string_view data, czas, oba;
    } przypadki[] = {
        {42006, u"2015-01-02", u"00:00:00", u"2015-01-02"},
        {42006.75, u"2015-01-02", u"18:00:00", u"2015-01-02 18:00:00"},
        {0.25, u"1899-12-30", u"06:00:00", u"06:00:00"},
        {0, u"1899-12-30", u"00:00:00", u"1899-12-30"},
        {-5.25, u"1899-12-25", u"06:00:00", u"1899-12-25 06:00:00"},
    };
    for (const auto& p : przypadki) {
        TPoleDate data;
        TPoleTime czas;
        TPoleDateTime oba;
        data.UstawWartosc(p.wartosc);
        czas.UstawWartosc(p.wartosc);
        oba.UstawWartosc(p.wartosc);
        EXPECT_EQ(data.GetJakoString(), p.data);
        EXPECT_EQ(czas.GetJakoString(), p.czas);
        EXPECT_EQ(oba.GetJakoString(), p.oba);
        TPoleDateTime zTekstu;
        zTekstu.SetJakoString(p.oba);
        EXPECT_EQ(zTekstu.Wartosc(), p.wartosc);
    }
    TPoleDateTime pole;
    pole.UstawWartosc(42006.75);
    EXPECT_EQ(pole.WartWgMaski(u"d.mm.yy hh:nn"), u"2.01.15 18:00");
    EXPECT_EQ(pole.WartWgMaski(u""), pole.GetJakoString());
    TUstawieniaFormatu inne = UstawieniaPolskie();
    inne.separatorDaty = u'.';
    EXPECT_EQ(pole.WartWgMaski(u"yyyy/mm/dd", &inne), u"2015.01.02");
    EXPECT_THROW(pole.SetJakoString(u"wczoraj"), EBladKonwersji);
    EXPECT_EQ(pole.Wartosc(), 42006.75); // kept after the error
}

TEST(PolaDaty, PoleWObiekcie) {
    auto o = Utworz<TChwile>();
    o->SetData(42006.75);
    o->SetGodzina(42006.75);
    o->SetChwila(42006.75);
    o->SetLiczba(42006.75);
    EXPECT_THROW((void)o->GetPoleDouble(0), EBladRzutowania);
    const TWlasny<TObiektBazowy> kopia = o->KlonujObiekt(false);
    const auto& p = static_cast<const TChwile&>(*kopia);
    EXPECT_EQ(p.GetData(), 42006);
    EXPECT_EQ(p.GetGodzina(), 0.75);
    EXPECT_EQ(p.GetChwila(), 42006.75);
    EXPECT_EQ(p.GetLiczba(), 42006.75);
    TPoleDateTime chwila;
    EXPECT_THROW(chwila.KopiujDane(*o->Pole(3)), EBladRzutowania);
    chwila.UstawWartosc(1);
    EXPECT_EQ(chwila.Porownaj(*o->Pole(2)), -1);
    EXPECT_EQ(chwila.PorownajZCecha(TArgument(2), rlRozmLiterWazny, 0), 1);
}

TEST(PolaDaty, FormaXML) {
    constexpr double Czas = (10 * 3600 + 20 * 60 + 30) / 86400.0;
    constexpr double Cwierc = 0.25 / 86400;
    const double zle = std::nan("");
    const struct {
        std::u16string_view tekst;
        double data, czas, oba; // a NaN: an error
    } przypadki[] = {
        {u"2015-01-02", 42006, zle, 42006},
        {u"2015-01-02T", 42006, zle, 42006},
        {u"2015-01-02 ", 42006, zle, 42006},
        {u"2015-01-02T10:20:30", 42006, Czas, 42006 + Czas},
        {u"2015-01-02 10:20:30", 42006, Czas, 42006 + Czas},
        {u"02.01.2015 10:20:30.25", 42006, Czas + Cwierc, 42006 + Czas + Cwierc},
        {u"1899-12-25T10:20:30.25", -5, Czas + Cwierc, -5 - Czas - Cwierc},
        {u"2015-01-02T10:20:30.25+01:00", 42006, Czas + Cwierc, 42006 + Czas + Cwierc},
        {u"2015-01-02T10:20:30+01:00", 42006, zle, 42006 + Czas},
        {u"2015-01-02T10:20:30.25Z", 42006, zle, 42006 + Czas + Cwierc},
        {u"2015-01-02T10:20:30Z", 42006, zle, 42006 + Czas},
        {u"2015-01-02Z", zle, zle, 42006},
        {u"2015-01-02T10:20:30.25-01:00", 42006, zle, zle}, // the "-" belongs to dates
        {u"10:20:30", zle, Czas, zle},
        {u"10:20", zle, Czas - 30 / 86400.0, zle},
        {u"2015-01-02Tx", zle, zle, zle},
        {u"T10:20:30", zle, Czas, zle},
        {u"", zle, zle, zle},
    };
    const auto sprawdz = [](double (*funkcja)(std::u16string_view), std::u16string_view tekst, double wzor) {
        if (std::isnan(wzor))
            EXPECT_THROW((void)funkcja(tekst), EBladKonwersji);
        else
            EXPECT_NEAR(funkcja(tekst), wzor, 1e-10);
    };
    for (const auto& p : przypadki) {
        SCOPED_TRACE(testing::Message() << "row " << &p - przypadki);
        sprawdz(ZTOKXMLToDate, p.tekst, p.data);
        sprawdz(ZTOKXMLToTime, p.tekst, p.czas);
        sprawdz(ZTOKXMLToDateTime, p.tekst, p.oba);
    }
    EXPECT_EQ(testy::Blad<EBladKonwersji>([] { (void)ZTOKXMLToTime(u"10:20:30.x+1"); }),
              u"'0.x' nie jest poprawną liczbą zmiennoprzecinkową");
    EXPECT_EQ(ZTOKDateTimeToXML(42006), u"2015-01-02");
    EXPECT_EQ(ZTOKDateTimeToXML(42006, true), u"2015-01-02T00:00:00");
    EXPECT_EQ(ZTOKDateTimeToXML(42006.75), u"2015-01-02T18:00:00");
    for (const double wartosc : {42006.0, 42006.75, 0.25, -5.25, 0.0, 2958465.5})
        EXPECT_EQ(ZTOKXMLToDateTime(ZTOKDateTimeToXML(wartosc)), wartosc);
}

// The kernel's own formats read back, also when a format's separator is not the one that the settings name.
TEST(PolaDaty, FormatJadraWraca) {
    TUstawieniaFormatu& format = JadroKlas()->Format();
    for (const char16_t* data : {u"yyyy-MM-dd", u"yyyy/MM/dd", u"dd.MM.yyyy", u"M/d/yyyy", u"d/M/yy"})
        for (const char16_t separator : {u'-', u'.', u'/'}) {
            format.krotkiFormatDaty = data;
            format.separatorDaty = separator;
            const std::u16string tekst = ZTOKDateTimeToStr(42006.75);
            EXPECT_EQ(ZTOKStrToDateTime(tekst), 42006.75) << Utf8ZUtf16(tekst);
            EXPECT_EQ(ZTOKXMLToDateTime(ZTOKDateTimeToXML(42006.75)), 42006.75) << Utf8ZUtf16(tekst);
        }
    JadroKlas()->UstawDefFormatDatyICzasu();
}
