// Class descriptors: the field table of each class, built once and kept by the kernel.
#pragma once

#include "ztok/kernel/TObiekt.h"
#include "ztok/lists/TListaObiektow.h"

namespace ztok {

class TJadroKlas;

// One declared field: its name (field 0) and the number of its field class (field 1).
class ZTOK_API TWlasciwosc : public TObiekt {
    ZTOK_KLASA_DEKL(TWlasciwosc)
    static std::span<const TWierszPola> PolaKlasy(std::type_identity<TWlasciwosc> klasa) noexcept;

    explicit TWlasciwosc(TObiektBazowy* wlasciciel = nullptr) : TObiekt(wlasciciel) {}
    ~TWlasciwosc() override;

    [[nodiscard]] std::u16string GetNazwa() const { return GetPoleString(0); }
    void SetNazwa(std::u16string_view nazwa) { SetPoleString(0, nazwa); }
    // The field class; null when no class of that name is loaded.
    [[nodiscard]] const TKlasa* GetTyp() const;
    void SetTyp(const TKlasa* typ);
    // Whether the class wants the field stored for the instance. The row is looked up in the instance's class.
    [[nodiscard]] bool Zapisywane(const TObiekt& instancja) const;
    [[nodiscard]] const TKlasa* TypPolaNr(int nrPola) const override;
    void ZerujDane() override;
    void UstawNiepuste(int nrPola, bool niepuste) override;
    void SetBylyZmiany(int nrPola) override;
    void WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) override;
};

// The field table: the entry of field N at position N, null where no field is declared.
class ZTOK_API TListaWlasciwosci : public TListaTypu<TWlasciwosc> {
    ZTOK_KLASA_DEKL(TListaWlasciwosci)

    explicit TListaWlasciwosci(TObiektBazowy* wlasciciel = nullptr) : TListaTypu(wlasciciel) {}
    ~TListaWlasciwosci() override;

    // Puts the entry (null: a fresh one) under the number. ZTException for a number below 0 or taken already; the entry
    // then stays with the caller.
    TWlasciwosc* DodajWlasciwosc(int nr, TWlasciwosc* wlasciwosc);
    [[nodiscard]] TWlasciwosc* GetWlasciwosc(int nr) const noexcept { return (*this)[nr]; }
    // The first field of that name, letter case ignored; -1 and false when there is none.
    bool JestPoleONazwie(std::u16string_view nazwa, int& nr) const;
    void ZerujDane() override;
    TObiektBazowy* UsunObiekt(std::int32_t nrObiektu, bool zwolnij, bool zachowajPojemnosc) override;
    void SkrocListe(std::int32_t nowyRozm, bool zachowajPojemnosc) override;
    void WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) override;
};

// Descriptor of one class: its name (field 0) and its field table (field 1).
class ZTOK_API TOpisKlasy : public TObiekt {
    ZTOK_KLASA_DEKL(TOpisKlasy)
    static std::span<const TWierszPola> PolaKlasy(std::type_identity<TOpisKlasy> klasa) noexcept;

    explicit TOpisKlasy(TObiektBazowy* wlasciciel = nullptr) : TObiekt(wlasciciel) {}
    ~TOpisKlasy() override;

    [[nodiscard]] std::u16string GetNazwa() const { return GetPoleString(0); }
    // The field table in the given field; null when that field does not exist.
    [[nodiscard]] TListaWlasciwosci* GetListaWlasciwosci(int nrPola = 1) const;
    [[nodiscard]] const TKlasa* TypPolaNr(int nrPola) const override;
    void ZerujDane() override;
    void UstawNiepuste(int nrPola, bool niepuste) override;
    void WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) override;
};

// All descriptors, sorted by class name without regard to case. The kernel's lock guards it.
class ZTOK_API TListaOpisowKlas : public TListaTypu<TOpisKlasy> {
    ZTOK_KLASA_DEKL(TListaOpisowKlas)

    explicit TListaOpisowKlas(TObiektBazowy* wlasciciel = nullptr) : TListaTypu(wlasciciel) {}
    ~TListaOpisowKlas() override;

    // The descriptor of the class, built on the first request.
    TOpisKlasy* GetOpisKlasy(const TKlasa* klasa);
    [[nodiscard]] TOpisKlasy* GetOpisWgNru(std::int32_t nr) const noexcept { return (*this)[nr]; }
    // By the name of a registered class; null for a name that is not registered.
    TOpisKlasy* GetOpisWgNazwy(std::u16string_view nazwa);
    // Whether there is a descriptor of that name; its position, or the one to insert at.
    bool JestOpisKlasy(std::u16string_view nazwa, std::int32_t& gdzie) const;
    void DodajOpisKlasy(TWlasny<TOpisKlasy> opis, std::int32_t gdzie);
    [[nodiscard]] TWlasny<TOpisKlasy> GenerujOpisKlasy(const TKlasa* klasa);
    // The class is gone with its module.
    void UsunOpisKlasy(std::int32_t nr);
    void ZerujDane() override;
    TObiektBazowy* UsunObiekt(std::int32_t nrObiektu, bool zwolnij, bool zachowajPojemnosc) override;
    void SkrocListe(std::int32_t nowyRozm, bool zachowajPojemnosc) override;
    void WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) override;

  private:
    std::int32_t ostatni_ = -1; // index of the descriptor found last
};

// Refuses (ZTException) to empty or replace the kernel in use or a descriptor that it holds; one that dies is emptied.
void SprawdzUzycie(const TObiektBazowy& opis);

// The field class that a row of a field table declares; null when the row declares no field of the model, as one whose
// reader is foreign. A class may declare such a property anew as a field.
[[nodiscard]] const TKlasa* KlasaPolaWiersza(const TWierszPola& w);

// What the inner loops need of a descriptor: immutable, found without a lock. Valid for the kernel of that number only.
struct TMigawkaOpisu {
    // Objects of at most so many fields have them as bits of a word too.
    static constexpr int kPolaMaski = 64;

    struct TPozycja {
        const TKlasa* klasa;       // null: no field of that number
        const TWierszPola* wiersz; // the declaration
        std::string_view nazwa8;   // the name as 8-bit text; empty when it cannot stand in the text form
        std::uint8_t stan;         // what the object keeps of the class of a field under this number
        std::uint8_t kodProsty;    // code of a class whose field may stand in the object's block; else kpInne
    };
    std::uint64_t numerJadra;
    TOpisKlasy* opis;
    std::int32_t ilePol;         // length of the field table
    bool saPredykaty;            // some field has a "stored" predicate
    bool saObiekty;              // some field is an object of the model
    std::uint64_t maskaPol;      // the fields declared, of the first kPolaMaski
    std::uint64_t maskaProstych; // those of them that may stand in the object's block
    const TPozycja* pola;
    const char* nazwy; // what the names view
};

} // namespace ztok
