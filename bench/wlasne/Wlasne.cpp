// ztok and plain C++ as libraries of the data sets.
#include "pomiary/Biblioteka.h"
#include "pomiary/Tabela.h"
#include "wlasne/Kodek.h"
#include "wlasne/Struktury.h"
#include "wlasne/Ztok.h"

namespace pomiary {

namespace {

// The two forms of our own.
struct TBinarnie {
    static void Zapisz(const ztok::TObiektBazowy& obiekt, ztok::TStrumien& strumien) {
        obiekt.ZapiszWStrumieniu(strumien);
    }
    static void Wczytaj(ztok::TObiektBazowy& obiekt, ztok::TStrumien& strumien) {
        obiekt.WczytajZeStrumienia(strumien);
    }
};
struct TTekstowo {
    static void Zapisz(const ztok::TObiektBazowy& obiekt, ztok::TStrumien& strumien) {
        obiekt.ZapiszTekstowo(strumien, std::u16string_view());
    }
    static void Wczytaj(ztok::TObiektBazowy& obiekt, ztok::TStrumien& strumien) {
        obiekt.WczytajTekstowo(strumien, std::u16string_view());
    }
};

template <class TForma, class TDane> class TSeriaZtok final : public ISeria<TDane> {
  public:
    TSeriaZtok(const TDane& dane, TUzycie uzycie) : uzycie_(uzycie), drzewo_(JakoObiekty(dane)) {}

    std::string_view Zapisz() override {
        if (uzycie_ == TUzycie::Zwykle)
            bajty_.SetSize(0); // gives the memory back
        bajty_.Seek(0, ztok::ESeek::Poczatek);
        TForma::Zapisz(*drzewo_, bajty_);
        return {reinterpret_cast<const char*>(bajty_.Zawartosc().data()),
                static_cast<std::size_t>(bajty_.GetPosition())};
    }
    void Wczytaj() override {
        bajty_.Seek(0, ztok::ESeek::Poczatek);
        wczytane_ = ztok::Utworz<TKorzen>();
        TForma::Wczytaj(*wczytane_, bajty_);
    }
    void Zniszcz() override { ztok::Zwolnij(wczytane_.Oddaj()); }
    [[nodiscard]] TDane Odtworz() override { return JakoStruktury(static_cast<const TKorzen&>(*wczytane_)); }

  private:
    using TKorzen = typename TModel<TDane>::Typ;

    TUzycie uzycie_;
    ztok::TWlasny<TKorzen> drzewo_;
    ztok::TWlasny<TKorzen> wczytane_;
    ztok::TZTMemoryStream bajty_;
};

// The structs with the codec written by hand.
template <class TTekst, class TDane> class TSeriaKodeka final : public ISeria<TDane> {
  public:
    TSeriaKodeka(const TDane& dane, TUzycie uzycie) : uzycie_(uzycie), dane_(ZTekstami<TTekst>(dane)) {
        Rozwiaz(dane_);
    }
    std::string_view Zapisz() override {
        if (uzycie_ == TUzycie::Zwykle)
            std::string().swap(bajty_);
        return zapisane_ = kodek::Zapisz(dane_, bajty_);
    }
    void Wczytaj() override { kodek::Wczytaj(wczytane_, zapisane_); }
    void Zniszcz() override { wczytane_ = {}; }
    [[nodiscard]] TDane Odtworz() override {
        UstawNumeryWgCelow(wczytane_);
        return ZTekstami<std::string>(wczytane_);
    }

  private:
    using TStruktury = decltype(ZTekstami<TTekst>(std::declval<TDane>()));

    TUzycie uzycie_;
    TStruktury dane_;
    TStruktury wczytane_;
    std::string bajty_;
    std::string_view zapisane_;
};

template <class TDane> std::vector<TBiblioteka<TDane>> Binarne() {
    return {{kZtok, &Utworz<TSeriaZtok<TBinarnie, TDane>, TDane>},
            {kCpp, &Utworz<TSeriaKodeka<std::u16string, TDane>, TDane>},
            {kCppUtf8, &Utworz<TSeriaKodeka<std::string, TDane>, TDane>}};
}

} // namespace

void DodajWlasne(TBibliotekiBazy& binarne, TBibliotekiZnakow& binarneZnakow, TBibliotekiBazy& tekstowe) {
    binarne = Binarne<dane::TBaza>();
    binarneZnakow = Binarne<dane::TZnaki>();
    tekstowe = {{kZtok, &Utworz<TSeriaZtok<TTekstowo, dane::TBaza>, dane::TBaza>}};
}

} // namespace pomiary
