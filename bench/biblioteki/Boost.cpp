#include <boost/archive/binary_iarchive.hpp>
#include <boost/archive/binary_oarchive.hpp>
#include <boost/serialization/level.hpp>
#include <boost/serialization/string.hpp>
#include <boost/serialization/tracking.hpp>
#include <boost/serialization/vector.hpp>

#include "biblioteki/SeriaStruktur.h"

namespace boost::serialization {

using namespace pomiary::dane;

template <class A> void serialize(A& a, TPozycja& p, unsigned /*wersja*/) {
    a& p.nazwaUtf8& p.jednostkaUtf8& p.ilosc& p.cena& p.vat;
}
template <class A> void serialize(A& a, TFaktura& f, unsigned /*wersja*/) {
    a& f.numerUtf8& f.data& f.klient& f.zaplacona& f.uwagiUtf8& f.pozycje;
}
template <class A> void serialize(A& a, TKlient& k, unsigned /*wersja*/) {
    a& k.nazwaUtf8& k.nipUtf8& k.ulicaUtf8& k.miastoUtf8& k.kodUtf8;
}
template <class A> void serialize(A& a, TBaza& b, unsigned /*wersja*/) { a& b.faktury& b.klienci; }
template <class A> void serialize(A& a, TZnak& z, unsigned /*wersja*/) {
    a& z.kod& z.nazwaUtf8& z.kategoriaUtf8& z.kierunekUtf8& z.rozkladUtf8& z.klasaLaczenia& z.duza& z.mala;
}
template <class A> void serialize(A& a, TZnaki& z, unsigned /*wersja*/) { a& z.znaki; }

} // namespace boost::serialization

// Neither class versions nor object tracking: the fastest form that the library has.
#define POMIARY_BEZ_NARZUTU(T)                                                                                         \
    BOOST_CLASS_IMPLEMENTATION(T, boost::serialization::object_serializable)                                           \
    BOOST_CLASS_TRACKING(T, boost::serialization::track_never)
POMIARY_BEZ_NARZUTU(pomiary::dane::TPozycja)
POMIARY_BEZ_NARZUTU(pomiary::dane::TFaktura)
POMIARY_BEZ_NARZUTU(pomiary::dane::TKlient)
POMIARY_BEZ_NARZUTU(pomiary::dane::TBaza)
POMIARY_BEZ_NARZUTU(pomiary::dane::TZnak)
POMIARY_BEZ_NARZUTU(pomiary::dane::TZnaki)
POMIARY_BEZ_NARZUTU(std::vector<pomiary::dane::TPozycja>)
POMIARY_BEZ_NARZUTU(std::vector<pomiary::dane::TFaktura>)
POMIARY_BEZ_NARZUTU(std::vector<pomiary::dane::TKlient>)
POMIARY_BEZ_NARZUTU(std::vector<pomiary::dane::TZnak>)

namespace pomiary {

namespace {

struct TArchiwumBoost {
    static constexpr unsigned kFlagi =
        boost::archive::no_header | boost::archive::no_codecvt | boost::archive::no_tracking;
    template <class TDane> static void Zapisz(std::ostream& strumien, const TDane& dane) {
        boost::archive::binary_oarchive archiwum(strumien, kFlagi);
        archiwum << dane;
    }
    template <class TDane> static void Wczytaj(std::istream& strumien, TDane& dane) {
        boost::archive::binary_iarchive archiwum(strumien, kFlagi);
        archiwum >> dane;
    }
};

} // namespace

std::unique_ptr<ISeria<dane::TBaza>> SeriaBoost(const dane::TBaza& dane, TUzycie uzycie) {
    return std::make_unique<TSeriaStruktur<TArchiwumBoost, dane::TBaza>>(dane, uzycie);
}
std::unique_ptr<ISeria<dane::TZnaki>> SeriaBoost(const dane::TZnaki& dane, TUzycie uzycie) {
    return std::make_unique<TSeriaStruktur<TArchiwumBoost, dane::TZnaki>>(dane, uzycie);
}

} // namespace pomiary
