// Class kernel: known classes, their descriptors, edit functions, registered interfaces, default formats.
#pragma once

#include "ztok/kernel/TObiektTS.h"
#include "ztok/platform/Guid.h"
#include "ztok/platform/Interfejsy.h"
#include "ztok/platform/TListaNapisow.h"
#include "ztok/platform/TUstawieniaFormatu.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {

class TListaBazowa;
class TListaOpisowKlas;
class TListaZObiektami;
class TOpisKlasy;
struct TMigawkaOpisu;

// One kernel serves the whole process. Its own lock guards the classes, descriptors and edit functions; the interfaces
// have a lock of their own, and neither is taken under the other. The kernel in use and the descriptors that it holds
// refuse (ZTException) to be emptied, copied onto or read into; a descriptor may be added to. Null is no class:
// ZTException.
class ZTOK_API TJadroKlas : public TObiektTS {
    ZTOK_KLASA_DEKL(TJadroKlas)

    explicit TJadroKlas(TObiektBazowy* wlasciciel = nullptr);
    ~TJadroKlas() override;

    // Known classes. A name that is registered already keeps its class.
    void RejestrujKlase(const TKlasa* klasa);
    void WyrejestrujKlase(const TKlasa* klasa);
    // By name, letter case ignored. On failure `klasa` keeps what it had, on purpose.
    bool JestKlasaONazwie(std::u16string_view nazwa, const TKlasa*& klasa) const;
    // All names with their classes (as the values), sorted.
    void DajListeZnanychKlas(TListaNapisow& lista) const;

    // Descriptors. The one of a class is built on first use and lives as long as the kernel.
    TOpisKlasy* OpisKlasy(const TKlasa* klasa);
    TOpisKlasy* OpisWgNazwy(std::u16string_view nazwa);
    [[nodiscard]] const TKlasa* TypPolaKlasy(const TKlasa* klasa, int nrPola);
    // The item class of a class of lists; null for other classes.
    [[nodiscard]] const TKlasa* TypObiektowListy(const TKlasa* klasa) const;

    // Edit functions, one a class. Null takes the class's function away.
    void RejestrujFunEdycji(const TKlasa* klasa, TFunEdycji funkcja);
    bool JestFunEdycji(const TKlasa* klasa, TFunEdycji& funkcja) const;

    // Registered interfaces: each is held by one counted reference; the newest that answers to an identifier wins.
    void RejestrujInterfejs(IInterfejs* interfejs);
    bool WyrejestrujInterfejs(IInterfejs* interfejs);
    // Gives a counted reference to the interface, or false and null.
    bool DajInterfejs(const TGUID& iid, void** wynik) const;
    template <class T> bool DajInterfejs(TIntf<T>& wynik) const {
        void* interfejs = nullptr;
        const bool jest = DajInterfejs(T::IID, &interfejs);
        wynik = TIntf<T>::Przejmij(static_cast<T*>(interfejs));
        return jest;
    }
    // As DajInterfejs, unless the reference is there already.
    template <class T> bool DajInterfejsGdyBrak(TIntf<T>& wynik) const { return wynik || DajInterfejs(wynik); }
    // As DajInterfejs; ZTException when there is none. The description is the message, its "%s" the identifier.
    template <class T> void DajInterfejsLubBlad(TIntf<T>& wynik, std::u16string_view opis = {}) const {
        if (!DajInterfejs(wynik))
            BrakInterfejsu(T::IID, opis);
    }
    // The entry of the interface table through which the implementing object gives the interface.
    bool GetInterfaceEntry(IInterfejs* interfejs, const TWierszInterfejsu*& wpis) const noexcept;
    // The object that implements the interface; null when it does not tell.
    [[nodiscard]] TObiektOgolny* DajObiektImplInterfejs(IInterfejs* interfejs) const noexcept;
    bool DajGUIDInterfejsu(IInterfejs* interfejs, TGUID& iid) const noexcept;

    // "NazwaPola" to "Nazwa pola". A capital is a character whose low byte is A to Z, so some letters beyond ASCII
    // count.
    [[nodiscard]] std::u16string NazwaPolaNaEkran(std::u16string_view nazwa) const;

    void UstawDefFormatDatyICzasu();
    [[nodiscard]] const TUstawieniaFormatu& Format() const noexcept { return format_; }
    [[nodiscard]] TUstawieniaFormatu& Format() noexcept { return format_; }

    // Privileged operations, by which lists, fields and serialisers set each other's inner state.
    void DodajLinkOd(TObiektBazowy& obiekt, TPole* pole) { obiekt.DodajRefOd(pole); }
    void ZwolnijLinkOd(TObiektBazowy& obiekt, TPole* pole) { obiekt.ZwolnijRefOd(pole); }
    // Detaches every link at the object itself, and empties every pointer field and list in its tree.
    void ZwolnijLinki(TObiektBazowy& obiekt);
    void UstawRodzica(TObiektBazowy& obiekt, TObiektBazowy* rodzic) { obiekt.UstawRodzica(rodzic); }
    // Stores into a list's slot: nothing is freed, counted or checked.
    void UstawElemListy(TListaBazowa& lista, std::int32_t indeks, TObiektBazowy* obiekt) noexcept;
    void NilujElemListy(TListaZObiektami& lista, std::int32_t indeks);
    void UstawPole(TObiekt& obiekt, int nrPola, TPole* pole, bool zwolnijPoprzednie);
    using TObiekt::UstawPole;

    [[nodiscard]] const TKlasa* TypPolaNr(int nrPola) const override;
    void ZerujDane() override;
    void UstawNiepuste(int nrPola, bool niepuste) override;
    void WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) override;

    // Number of this kernel, never used twice in the process.
    [[nodiscard]] std::uint64_t Numer() const noexcept { return numer_; }
    // The class's snapshot, built when needed.
    [[nodiscard]] const TMigawkaOpisu& UtworzMigawke(const TKlasa* klasa);
    // A class left with its module: `zastepcza` is the same class in another module, or null.
    void ZapomnijKlase(const TKlasa* klasa, const TKlasa* zastepcza);
    // Class names of the objects behind the registered interfaces, one a line; empty when there is none.
    [[nodiscard]] std::u16string NazwyInterfejsow() const;
    // Whether no other thread holds one of the kernel's locks just now.
    [[nodiscard]] bool NiktNieTrzyma() const noexcept;

  protected:
    void WykonajDestrukcje() override;

  private:
    static const TKlasa* KlasaPodana(std::u16string_view operacja, const TKlasa* klasa);
    [[nodiscard]] TListaOpisowKlas& Opisy();

    const std::uint64_t numer_;
    TListaNapisow klasy_;     // class name -> const TKlasa*
    TListaNapisow funEdycji_; // upper-cased class name -> TFunEdycji
    mutable TSekcjaKrytyczna sekcjaInterfejsow_;
    std::vector<IInterfejs*> interfejsy_;       // each holds one counted reference
    std::vector<std::u16string> implementacje_; // class name of the implementing object, position for position
    TUstawieniaFormatu format_;
};

// A kernel that the host installed; never freed by the library.
extern ZTOK_API TJadroKlas* UserKernel;

// The kernel: the host's, else the library's own, made on the first call. The first call takes no lock: it belongs
// before threads start.
[[nodiscard]] ZTOK_API TJadroKlas* JadroKlas();

// Makes classes known to the kernel by name.
template <class... T> void RejestrujKlasy() { (JadroKlas()->RejestrujKlase(KlasaTypu<T>()), ...); }

// Ends the library: warns of interfaces still registered and frees the library's own kernel, once. A host calls it
// before it unloads the library; otherwise unloading does, without waiting for a lock. With g_ZTOKQuiet nothing is
// shown and the kernel stays.
ZTOK_API void ZamknijBiblioteke() noexcept;

} // namespace ztok
