#include <istream>
#include <ostream>

#include <cereal/archives/binary.hpp>
#include <cereal/types/string.hpp>
#include <cereal/types/vector.hpp>

#include "biblioteki/SeriaStruktur.h"

namespace pomiary {

namespace dane {

template <class A> void serialize(A& a, TPozycja& p) { a(p.nazwaUtf8, p.jednostkaUtf8, p.ilosc, p.cena, p.vat); }
template <class A> void serialize(A& a, TFaktura& f) {
    a(f.numerUtf8, f.data, f.klient, f.zaplacona, f.uwagiUtf8, f.pozycje);
}
template <class A> void serialize(A& a, TKlient& k) { a(k.nazwaUtf8, k.nipUtf8, k.ulicaUtf8, k.miastoUtf8, k.kodUtf8); }
template <class A> void serialize(A& a, TBaza& b) { a(b.faktury, b.klienci); }
template <class A> void serialize(A& a, TZnak& z) {
    a(z.kod, z.nazwaUtf8, z.kategoriaUtf8, z.kierunekUtf8, z.rozkladUtf8, z.klasaLaczenia, z.duza, z.mala);
}
template <class A> void serialize(A& a, TZnaki& z) { a(z.znaki); }

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

std::unique_ptr<ISeria<dane::TBaza>> SeriaCereal(const dane::TBaza& dane, TUzycie uzycie) {
    return std::make_unique<TSeriaStruktur<TArchiwumCereal, dane::TBaza>>(dane, uzycie);
}
std::unique_ptr<ISeria<dane::TZnaki>> SeriaCereal(const dane::TZnaki& dane, TUzycie uzycie) {
    return std::make_unique<TSeriaStruktur<TArchiwumCereal, dane::TZnaki>>(dane, uzycie);
}

} // namespace pomiary
