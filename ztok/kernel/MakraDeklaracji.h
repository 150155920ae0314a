// The macros that declare a class of the model; DeklaracjaObiektu.h shows their use.
//
// Compilers take this header for one of the system's, so that a mistake in a row is reported where the row stands, and
// not once more for every macro on the way. Hence nothing but macros is here. No macro calls itself: rows are taken in
// groups of 32 side by side, which is quick for the many classes that have few.
#pragma once
#pragma GCC system_header

// --- each row of a class

// makro(numer, nazwa, rodzaj) for each row, of which there may be 544. What is not one row within its parentheses goes
// to `zly`, the first row that is too many to zly_NADMIAR. When the first row has no parentheses none is looked at.
#define ZTOK_DLA_WIERSZY(makro, zly, ...)                                                                              \
    __VA_OPT__(ZTOK_SPOSOB(ZTOK_PRZECINEK __VA_ARGS__)(makro, zly, __VA_ARGS__ ZTOK_PUSTA_GRUPA))
#define ZTOK_PRZECINEK(...) ,
#define ZTOK_SPOSOB(...) ZTOK_SPOSOB_WG(__VA_ARGS__, )
#define ZTOK_SPOSOB_WG(przed, ...) ZTOK_SPOSOB_DLA(przed)
#define ZTOK_SPOSOB_DLA(...) ZTOK_WIERSZE_##__VA_OPT__(BEZ_NAWIASOW)
#define ZTOK_WIERSZE_BEZ_NAWIASOW(makro, zly, pierwszy, ...) zly(pierwszy)
#define ZTOK_WIERSZE_(makro, zly, ...)                                                                                 \
    ZTOK_GRUPA(makro, zly, __VA_ARGS__) ZTOK_DALSZE(makro, zly, ZTOK_ZA_GRUPA(__VA_ARGS__))
#define ZTOK_PUSTA_GRUPA , , , , , , , , , , , , , , , , , , , , , , , , , , , , , , , ,

#define ZTOK_GRUPA(...) ZTOK_GRUPA_WIERSZY(__VA_ARGS__)
// clang-format off
#define ZTOK_GRUPA_WIERSZY(makro, zly,                                                                                 \
    w01, w02, w03, w04, w05, w06, w07, w08, w09, w10, w11, w12, w13, w14, w15, w16, w17, w18, w19, w20, w21, w22,      \
    w23, w24, w25, w26, w27, w28, w29, w30, w31, w32, ...)                                                             \
    ZTOK_WIERSZ(makro, zly, w01) ZTOK_WIERSZ(makro, zly, w02) ZTOK_WIERSZ(makro, zly, w03)                             \
    ZTOK_WIERSZ(makro, zly, w04) ZTOK_WIERSZ(makro, zly, w05) ZTOK_WIERSZ(makro, zly, w06)                             \
    ZTOK_WIERSZ(makro, zly, w07) ZTOK_WIERSZ(makro, zly, w08) ZTOK_WIERSZ(makro, zly, w09)                             \
    ZTOK_WIERSZ(makro, zly, w10) ZTOK_WIERSZ(makro, zly, w11) ZTOK_WIERSZ(makro, zly, w12)                             \
    ZTOK_WIERSZ(makro, zly, w13) ZTOK_WIERSZ(makro, zly, w14) ZTOK_WIERSZ(makro, zly, w15)                             \
    ZTOK_WIERSZ(makro, zly, w16) ZTOK_WIERSZ(makro, zly, w17) ZTOK_WIERSZ(makro, zly, w18)                             \
    ZTOK_WIERSZ(makro, zly, w19) ZTOK_WIERSZ(makro, zly, w20) ZTOK_WIERSZ(makro, zly, w21)                             \
    ZTOK_WIERSZ(makro, zly, w22) ZTOK_WIERSZ(makro, zly, w23) ZTOK_WIERSZ(makro, zly, w24)                             \
    ZTOK_WIERSZ(makro, zly, w25) ZTOK_WIERSZ(makro, zly, w26) ZTOK_WIERSZ(makro, zly, w27)                             \
    ZTOK_WIERSZ(makro, zly, w28) ZTOK_WIERSZ(makro, zly, w29) ZTOK_WIERSZ(makro, zly, w30)                             \
    ZTOK_WIERSZ(makro, zly, w31) ZTOK_WIERSZ(makro, zly, w32)
// clang-format on
#define ZTOK_ZA_GRUPA(...) ZTOK_ZA_GRUPA_WIERSZY(__VA_ARGS__)
#define ZTOK_ZA_GRUPA_WIERSZY(w01, w02, w03, w04, w05, w06, w07, w08, w09, w10, w11, w12, w13, w14, w15, w16, w17,     \
                              w18, w19, w20, w21, w22, w23, w24, w25, w26, w27, w28, w29, w30, w31, w32, ...)          \
    __VA_ARGS__

// Sixteen groups behind the first one, if a row is there.
#define ZTOK_DALSZE(...) ZTOK_DALSZE_WIERSZE(__VA_ARGS__)
#define ZTOK_DALSZE_WIERSZE(makro, zly, pierwszy, ...) ZTOK_CZY_DALSZE(pierwszy)(makro, zly, pierwszy, __VA_ARGS__)
#define ZTOK_CZY_DALSZE(...) ZTOK_DALSZE_##__VA_OPT__(SA)
#define ZTOK_DALSZE_(...)
#define ZTOK_NIC(...)
#define ZTOK_NIC_NADMIAR(...)
#define ZTOK_DALSZE_SA(makro, zly, ...)                                                                                \
    ZTOK_SZESNASCIE_GRUP(makro, zly, __VA_ARGS__ ZTOK_OSIEM(ZTOK_PUSTA_GRUPA) ZTOK_OSIEM(ZTOK_PUSTA_GRUPA))
#define ZTOK_OSIEM(...) __VA_ARGS__ __VA_ARGS__ __VA_ARGS__ __VA_ARGS__ __VA_ARGS__ __VA_ARGS__ __VA_ARGS__ __VA_ARGS__
#define ZTOK_DWIE_GRUPY(makro, zly, ...)                                                                               \
    ZTOK_GRUPA(makro, zly, __VA_ARGS__) ZTOK_GRUPA(makro, zly, ZTOK_ZA_GRUPA(__VA_ARGS__))
#define ZTOK_CZTERY_GRUPY(makro, zly, ...)                                                                             \
    ZTOK_DWIE_GRUPY(makro, zly, __VA_ARGS__) ZTOK_DWIE_GRUPY(makro, zly, ZTOK_ZA_DWIEMA(__VA_ARGS__))
#define ZTOK_OSIEM_GRUP(makro, zly, ...)                                                                               \
    ZTOK_CZTERY_GRUPY(makro, zly, __VA_ARGS__) ZTOK_CZTERY_GRUPY(makro, zly, ZTOK_ZA_CZTEREMA(__VA_ARGS__))
#define ZTOK_SZESNASCIE_GRUP(makro, zly, ...)                                                                          \
    ZTOK_OSIEM_GRUP(makro, zly, __VA_ARGS__)                                                                           \
    ZTOK_OSIEM_GRUP(makro, zly, ZTOK_ZA_OSMIOMA(__VA_ARGS__))                                                          \
    ZTOK_NADMIAR(makro, zly, ZTOK_ZA_OSMIOMA(ZTOK_ZA_OSMIOMA(__VA_ARGS__)))
#define ZTOK_ZA_DWIEMA(...) ZTOK_ZA_GRUPA(ZTOK_ZA_GRUPA(__VA_ARGS__))
#define ZTOK_ZA_CZTEREMA(...) ZTOK_ZA_DWIEMA(ZTOK_ZA_DWIEMA(__VA_ARGS__))
#define ZTOK_ZA_OSMIOMA(...) ZTOK_ZA_CZTEREMA(ZTOK_ZA_CZTEREMA(__VA_ARGS__))
#define ZTOK_NADMIAR(...) ZTOK_NADMIAR_WIERSZY(__VA_ARGS__)
#define ZTOK_NADMIAR_WIERSZY(makro, zly, pierwszy, ...) zly##_NADMIAR(pierwszy)

// One row, or nothing. Of a good one ZTOK_KSZTALT leaves nothing.
#define ZTOK_WIERSZ(makro, zly, ...) __VA_OPT__(ZTOK_WIERSZ_JAKI(makro, zly, __VA_ARGS__, ZTOK_KSZTALT __VA_ARGS__))
#define ZTOK_WIERSZ_JAKI(makro, zly, wiersz, ...) ZTOK_WIERSZ_##__VA_OPT__(ZLY)(makro, zly, wiersz)
#define ZTOK_WIERSZ_(makro, zly, wiersz) makro wiersz
#define ZTOK_WIERSZ_ZLY(makro, zly, wiersz) zly(wiersz)
#define ZTOK_KSZTALT(...) ZTOK_KSZTALT_WIERSZA(__VA_ARGS__, , , )
#define ZTOK_KSZTALT_WIERSZA(numer, nazwa, rodzaj, ...) ZTOK_BRAK(numer) ZTOK_BRAK(nazwa) ZTOK_BRAK(rodzaj)
#define ZTOK_BRAK(...) ZTOK_BRAK_##__VA_OPT__(NIE)
#define ZTOK_BRAK_ brak
#define ZTOK_BRAK_NIE

// TYP for a kind whose first word is a word of C++, where no name of the library's can stand; nothing for others.
#define ZTOK_JAKI_RODZAJ(...) ZTOK_PIERWSZE_SLOWO(ZTOK_TYP_##__VA_ARGS__)
#define ZTOK_PIERWSZE_SLOWO(...) ZTOK_SLOWO(__VA_ARGS__, )
#define ZTOK_SLOWO(slowo, ...) ZTOK_DRUGI(ZTOK_CZY_##slowo)
#define ZTOK_CZY_TYP , TYP
#define ZTOK_DRUGI(...) ZTOK_DRUGI_Z(__VA_ARGS__, , )
#define ZTOK_DRUGI_Z(pierwszy, drugi, ...) drugi
#define ZTOK_TYP_bool TYP,
#define ZTOK_TYP_char TYP,
#define ZTOK_TYP_char8_t TYP,
#define ZTOK_TYP_char16_t TYP,
#define ZTOK_TYP_char32_t TYP,
#define ZTOK_TYP_wchar_t TYP,
#define ZTOK_TYP_short TYP,
#define ZTOK_TYP_int TYP,
#define ZTOK_TYP_long TYP,
#define ZTOK_TYP_signed TYP,
#define ZTOK_TYP_unsigned TYP,
#define ZTOK_TYP_float TYP,
#define ZTOK_TYP_double TYP,
#define ZTOK_TYP_const TYP,
#define ZTOK_TYP_std TYP,

// --- what a row becomes

// Its number as a constant; its kind, as a class of its own, so that a mistake in it is told once and what uses the
// kind finds one that lacks everything; its accessors, which are templates so that the class of a nested field may be
// declared later.
#define ZTOK_POLE(numer, nazwa, ...) ZTOK_POLE_Z(ZTOK_JAKI_RODZAJ(__VA_ARGS__), numer, nazwa, __VA_ARGS__)
#define ZTOK_POLE_Z(...) ZTOK_POLE_JAKIE(__VA_ARGS__)
#define ZTOK_POLE_JAKIE(jaki, numer, nazwa, ...)                                                                       \
    [[maybe_unused]] static constexpr int nr##nazwa = numer;                                                           \
    ZTOK_RODZAJ_POLA_##jaki(nazwa, __VA_ARGS__) static_assert(                                                         \
        !::ztok::szczegoly::MaCzlonek<Bazowa>([]<class ZTOK_B>(std::type_identity<ZTOK_B>) requires(                   \
            requires { &ZTOK_B::Get##nazwa; } || requires { &ZTOK_B::Set##nazwa; }){}),                                \
        "the accessors of the field " #nazwa " would hide a member of the library: give it another name");             \
    template <ZTOK_NUMER_POLA(numer), class ZTOK_K = ZTOK_RODZAJ_POLA(nazwa)> decltype(auto) Get##nazwa() {            \
        return ZTOK_K::Daj(*this, numer);                                                                              \
    }                                                                                                                  \
    template <ZTOK_NUMER_POLA(numer), class ZTOK_K = ZTOK_RODZAJ_POLA(nazwa)> decltype(auto) Get##nazwa() const {      \
        return ZTOK_K::Daj(*this, numer);                                                                              \
    }                                                                                                                  \
    template <ZTOK_NUMER_POLA(numer), class ZTOK_K = ZTOK_RODZAJ_POLA(nazwa)>                                          \
    void Set##nazwa(typename ZTOK_K::TZapis wartosc) {                                                                 \
        ZTOK_K::Ustaw(*this, numer, wartosc);                                                                          \
    }
#define ZTOK_ZLY_WIERSZ(...)                                                                                           \
    static_assert(false, "a row is (number, name, kind), and a comma stands between two rows; not: " #__VA_ARGS__);
#define ZTOK_ZLY_WIERSZ_NADMIAR(...)                                                                                   \
    __VA_OPT__(static_assert(false, "more than 544 rows in one class, from " #__VA_ARGS__);)

#define ZTOK_NUMER_POLA(numer) ::ztok::szczegoly::TNumer<numer> = ::ztok::szczegoly::TNumer<numer>()
#define ZTOK_RODZAJ_POLA(nazwa) ::ztok::szczegoly::TRodzaj<ztokRodzaj##nazwa>
#define ZTOK_RODZAJ_POLA_(nazwa, ...)                                                                                  \
    struct ztokRodzaj##nazwa : ::ztok::rodzaj::__VA_ARGS__ {};
#define ZTOK_RODZAJ_POLA_TYP(nazwa, ...)                                                                               \
    struct ztokRodzaj##nazwa {};                                                                                       \
    static_assert(false, "the kind of the field " #nazwa " is a type of C++, " #__VA_ARGS__                            \
                         "; a row names a kind of namespace ztok::rodzaj: String, Integer, Boolean...");

// The row of the class's field table, and what the table as a whole tells of the row.
#define ZTOK_TABELA(numer, nazwa, ...) ZTOK_RODZAJ_POLA(nazwa)::Wiersz(numer, u## #nazwa),
#define ZTOK_NUMER(numer, nazwa, ...)                                                                                  \
    static_assert(numer < 0 || numer != powtorzony || ::ztok::szczegoly::JestPierwszy(wiersze, numer, u## #nazwa),     \
                  "the number of the field " #nazwa " stands twice in its class");                                     \
    static_assert(numer <= ::ztok::szczegoly::OstatniNumer, "the number of the field " #nazwa " is over 32767");

// --- classes

// Body of every class of the model: its class reference, the constructors of its base, and an end of life that runs at
// the level of the whole class also for objects on the stack. Code of a class's own for the end of life goes into
// WykonajDestrukcje, which calls Bazowa::WykonajDestrukcje last.
#define ZTOK_KLASA_MODELU(T, Baza)                                                                                     \
  public:                                                                                                              \
    using Bazowa = Baza;                                                                                               \
    using Bazowa::Bazowa;                                                                                              \
    ~T() override { this->DokonczZycie(); }                                                                            \
    static const ::ztok::TKlasa* KlasaStatyczna() noexcept { ZTOK_DANE_KLASY(T, Bazowa, u## #T); }                     \
    [[nodiscard]] const ::ztok::TKlasa* Klasa() const noexcept override { return T::KlasaStatyczna(); }                \
                                                                                                                       \
  private:                                                                                                             \
    friend class ::ztok::TObiektOgolny;                                                                                \
                                                                                                                       \
  public:

// Makes the object with its owner and then writes values into fields, which only the class itself can: the constructor
// of its base has no fields yet. One constructor takes the implicit default one away, so it is here too; as templates
// they give way to those that the class declares, and ask nothing of a class that does not use them. A class without
// rows has those of its base: it may be local to a function, where no templates are.
#define ZTOK_KONSTRUKTORY(T)                                                                                           \
    template <class ZTOK_B = Bazowa> T() {}                                                                            \
    template <class ZTOK_B = Bazowa>                                                                                   \
    T(::ztok::TArgumenty pola, ::ztok::TArgumenty wartosci, ::ztok::TObiektBazowy* wlasciciel = nullptr)               \
    requires ::ztok::szczegoly::CWpisywalny<ZTOK_B> : T(wlasciciel) {                                                  \
        this->WpiszDane(pola, wartosci);                                                                               \
    }

// An object with fields (or a collection); the rows may be none.
#define ZTOK_OBIEKT(T, Baza, ...)                                                                                      \
    ZTOK_KLASA_MODELU(T, Baza)                                                                                         \
    __VA_OPT__(ZTOK_KONSTRUKTORY(T))                                                                                   \
    ZTOK_DLA_WIERSZY(ZTOK_POLE, ZTOK_ZLY_WIERSZ, __VA_ARGS__)                                                          \
    static std::span<const ::ztok::TWierszPola> PolaKlasy(std::type_identity<T> /*klasa*/) noexcept {                  \
        static constexpr ::ztok::TWierszPola wiersze[] = {ZTOK_DLA_WIERSZY(ZTOK_TABELA, ZTOK_NIC, __VA_ARGS__){}};     \
        [[maybe_unused]] static constexpr int powtorzony = ::ztok::szczegoly::PowtorzonyNumer(wiersze);                \
        ZTOK_DLA_WIERSZY(ZTOK_NUMER, ZTOK_NIC, __VA_ARGS__)                                                            \
        return std::span<const ::ztok::TWierszPola>(wiersze, std::size(wiersze) - 1);                                  \
    }

// A list that derives from ztok::TListaTypu<Element>.
#define ZTOK_LISTA(T, Element) ZTOK_KLASA_MODELU(T, ::ztok::TListaTypu<Element>)
