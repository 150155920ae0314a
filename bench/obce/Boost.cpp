#include <boost/archive/binary_iarchive.hpp>
#include <boost/archive/binary_oarchive.hpp>
#include <boost/serialization/level.hpp>
#include <boost/serialization/string.hpp>
#include <boost/serialization/tracking.hpp>
#include <boost/serialization/vector.hpp>

#include "obce/Obce.h"
#include "obce/SeriaStruktur.h"

namespace boost::serialization {

template <class A, class S>
requires requires { S::Pola(); }
void serialize(A& archiwum, S& struktura, unsigned /*wersja*/) {
    pomiary::dane::KazdePole(struktura, [&](std::string_view, auto& pole) {
        if constexpr (pomiary::dane::kOdniesienie<std::remove_reference_t<decltype(pole)>>)
            archiwum& pole.numer;
        else
            archiwum& pole;
    });
}

} // namespace boost::serialization

// Neither class versions nor object tracking: the fastest form that the library has.
#define POMIARY_BEZ_NARZUTU(T)                                                                                         \
    BOOST_CLASS_IMPLEMENTATION(T, boost::serialization::object_serializable)                                           \
    BOOST_CLASS_TRACKING(T, boost::serialization::track_never)
POMIARY_BEZ_NARZUTU(pomiary::dane::TPozycja)
POMIARY_BEZ_NARZUTU(pomiary::dane::TFaktura)
POMIARY_BEZ_NARZUTU(pomiary::dane::TKlient)
POMIARY_BEZ_NARZUTU(pomiary::dane::TWaluta)
POMIARY_BEZ_NARZUTU(pomiary::dane::TBaza)
POMIARY_BEZ_NARZUTU(pomiary::dane::TZnak)
POMIARY_BEZ_NARZUTU(pomiary::dane::TZnaki)
POMIARY_BEZ_NARZUTU(std::vector<pomiary::dane::TPozycja>)
POMIARY_BEZ_NARZUTU(std::vector<pomiary::dane::TFaktura>)
POMIARY_BEZ_NARZUTU(std::vector<pomiary::dane::TKlient>)
POMIARY_BEZ_NARZUTU(std::vector<pomiary::dane::TWaluta>)
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

void DodajBoost(TBibliotekiBazy& bazy, TBibliotekiZnakow& znaki) {
    bazy.push_back({kBoost, &Utworz<TSeriaStruktur<TArchiwumBoost, dane::TBaza>, dane::TBaza>});
    znaki.push_back({kBoost, &Utworz<TSeriaStruktur<TArchiwumBoost, dane::TZnaki>, dane::TZnaki>});
}

} // namespace pomiary
