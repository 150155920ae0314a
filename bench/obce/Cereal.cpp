#include <istream>
#include <ostream>

#include <cereal/archives/binary.hpp>
#include <cereal/types/string.hpp>
#include <cereal/types/vector.hpp>

#include "obce/Obce.h"
#include "obce/SeriaStruktur.h"

namespace pomiary {

namespace dane {

template <class A, class S>
requires requires { S::Pola(); }
void serialize(A& archiwum, S& struktura) {
    KazdePole(struktura, [&](std::string_view, auto& pole) {
        if constexpr (kOdniesienie<std::remove_reference_t<decltype(pole)>>)
            archiwum(pole.numer);
        else
            archiwum(pole);
    });
}

} // namespace dane

namespace {

struct TArchiwumCereal {
    template <class TDane> static void Zapisz(std::ostream& strumien, const TDane& dane) {
        cereal::BinaryOutputArchive archiwum(strumien);
        archiwum(dane);
    }
    template <class TDane> static void Wczytaj(std::istream& strumien, TDane& dane) {
        cereal::BinaryInputArchive archiwum(strumien);
        archiwum(dane);
    }
};

} // namespace

void DodajCereal(TBibliotekiBazy& bazy, TBibliotekiZnakow& znaki) {
    bazy.push_back({kCereal, &Utworz<TSeriaStruktur<TArchiwumCereal, dane::TBaza>, dane::TBaza>});
    znaki.push_back({kCereal, &Utworz<TSeriaStruktur<TArchiwumCereal, dane::TZnaki>, dane::TZnaki>});
}

} // namespace pomiary
