// A module with classes of its own, loaded and unloaded by the tests.
#include "KlasyModulu.h"
#include "ztok/platform/TKomponent.h"
#include "ztok/repository/Kontroler.h"
#include "ztok/repository/Repozytorium.h"

#if defined(_WIN32)
#define MODUL_API extern "C" __declspec(dllexport)
#else
#define MODUL_API extern "C" __attribute__((visibility("default")))
#endif

namespace modul {

class TListaZModulu;

// Known to the program by its name alone.
class TZModulu : public ztok::TObiekt {
  public:
    [[nodiscard]] bool Jest() const { return true; }
    ZTOK_OBIEKT(TZModulu, ztok::TObiekt, (0, Nazwa, String), (1, Liczba, Integer), (2, Dalsze, Obiekt<TListaZModulu>),
                (3, Wspolna, Ref<probki::TWspolna>), (4, Kwota, ZapisGdy<ztok::rodzaj::Double, &TZModulu::Jest>))
};
class TListaZModulu : public ztok::TListaTypu<TZModulu> {
    ZTOK_LISTA(TListaZModulu, TZModulu)
};

} // namespace modul

MODUL_API void ModulRejestruj() { ztok::RejestrujKlasy<modul::TZModulu, modul::TListaZModulu, probki::TWspolna>(); }

// An object of the shared class, of this module's making; the caller frees it.
MODUL_API ztok::TObiektBazowy* ModulUtworzWspolna() {
    ztok::TWlasny<probki::TWspolna> o = ztok::Utworz<probki::TWspolna>();
    o->SetNazwa(u"z modułu");
    return o.Oddaj();
}

// Whether the module takes an object for one of its shared class.
MODUL_API bool ModulPoznaje(const ztok::TObiektBazowy* obiekt) {
    return obiekt->JestKlasy(probki::TWspolna::KlasaStatyczna());
}

template <class E> [[noreturn]] void Rzuc() { throw E(u"z modułu"); }
MODUL_API void ModulRzuc(int ktory) {
    using namespace ztok;
    void (*const rzuty[])() = {Rzuc<EBladKonwersji>,  Rzuc<EBladWariantu>,     Rzuc<EBladOdczytu>, Rzuc<EBladZapisu>,
                               Rzuc<EBladRzutowania>, Rzuc<EBladAbstrakcyjny>, Rzuc<EBladSystemu>, Rzuc<EBladAsercji>,
                               Rzuc<EBladFormatu>,    Rzuc<ZTException>,       Rzuc<TZTFileError>};
    rzuty[ktory]();
}

// Calls back; what the callback raises passes through the module.
MODUL_API void ModulWywolaj(void (*funkcja)()) {
    const ztok::TWlasny<modul::TZModulu> swiadek = ztok::Utworz<modul::TZModulu>();
    swiadek->SetLiczba(1);
    funkcja();
}

// The library raises: a reference of another class stands in the field.
MODUL_API int ModulZlyTyp(ztok::TObiekt* obiekt) { return obiekt->GetPoleInteger(0); }

// --- repository and controller

namespace modul {

int ileOperacji = 0;

// Found by the program under an identifier of its own; also a listener, as a counted object.
class TUslugaModulu : public ztok::TImplementacja<ztok::TObiektLiczony, probki::IUsluga, ztok::IKontrolowany> {
    ZTOK_KLASA_DEKL(TUslugaModulu)
    std::u16string Nazwij() override { return u"z modułu"; }
    void WykonajOperacje(std::u16string_view p_Identyfikator) override { ileOperacji += p_Identyfikator == u"test"; }
};
ZTOK_KLASA_DEF(TUslugaModulu, ztok::TObiektLiczony)

class TSluchacz : public ztok::TImplementacja<ztok::TKomponent, ztok::IKontrolowany> {
    ZTOK_KLASA_DEKL(TSluchacz)
    void WykonajOperacje(std::u16string_view p_Identyfikator) override { ileOperacji += p_Identyfikator == u"test"; }
};
ZTOK_KLASA_DEF(TSluchacz, ztok::TKomponent)

// Goes with the memory of the module, unless ModulZRepozytorium ends it.
alignas(TSluchacz) unsigned char sluchacz[sizeof(TSluchacz)];

} // namespace modul

MODUL_API void ModulWRepozytorium(ztok::IRepozytoriumKlas* r) {
    modul::ileOperacji = 0;
    auto* gotowa = ztok::UtworzSurowy<modul::TUslugaModulu>();
    r->RejestrujObiekt(probki::IUsluga::IID, modul::TUslugaModulu::KlasaStatyczna(), nullptr, u"klasa");
    r->RejestrujObiekt(probki::IUsluga::IID, static_cast<probki::IUsluga*>(gotowa), u"gotowa");
    r->RejestrujObiekt(
        probki::IUsluga::IID,
        [](ztok::TObiektOgolny*, ztok::TObiektOgolny*, ztok::TArgumenty) -> ztok::TObiektOgolny* {
            return ztok::UtworzSurowy<modul::TUslugaModulu>();
        },
        u"fabryka");
    ztok::Kontroler()->Rejestruj(::new (modul::sluchacz) modul::TSluchacz);
    ztok::Kontroler()->Rejestruj(gotowa);
}

MODUL_API int ModulIleOperacji() { return modul::ileOperacji; }

// The listeners just die.
MODUL_API void ModulZRepozytorium(ztok::IRepozytoriumKlas* r) {
    for (const char16_t* id : {u"klasa", u"gotowa", u"fabryka"})
        r->WyrejestrujObiekt(probki::IUsluga::IID, id);
    reinterpret_cast<modul::TSluchacz*>(modul::sluchacz)->~TSluchacz();
}
