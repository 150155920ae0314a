// Object with numbered fields: what application classes derive from.
#pragma once

#include "ztok/fields/TPoleBoolean.h"
#include "ztok/kernel/TObiektBazowy.h"
#include "ztok/kernel/TWierszPola.h"
#include "ztok/platform/ZatrutaPamiec.h"

namespace ztok {

class TOpisKlasy;
class TPoleStrList;
class TPoleWideStrList;

// Data stand in field objects, one a field number, made on first write and owned by the object. Field numbers are 0 to
// 32767; -1 means the whole object. Readers give the kind's empty value for a field that was never written and create
// nothing. A typed accessor raises EBladRzutowania when the field is of another class. Every typed accessor holds the
// object's lock.
class ZTOK_API TObiekt : public TObiektBazowy {
    ZTOK_KLASA_DEKL(TObiekt)
    static constexpr std::uint32_t CechyKlasy = ckPole | ckObiektBazowy | ckObiekt;

    explicit TObiekt(TObiektBazowy* wlasciciel = nullptr) : TObiektBazowy(wlasciciel) {}
    ~TObiekt() override;

    // Metadata, from the class's descriptor.
    [[nodiscard]] virtual const TKlasa* TypPolaNr(int nrPola) const;    // null: not declared
    [[nodiscard]] virtual int RozmPolaNr(int nrPola) const;             // -1: field count; else 0 = no size limit
    [[nodiscard]] virtual std::u16string NazwaPolaNr(int nrPola) const; // -1: class name without its first character
    // A declared name as 8-bit text; empty when the text form cannot hold it, or the class names its fields itself.
    // Valid until a module is unloaded.
    [[nodiscard]] std::string_view Nazwa8PolaNr(int nrPola) const;
    [[nodiscard]] virtual int NrPolaONazwie(std::u16string_view nazwa) const; // -1: none; letter case is ignored
    [[nodiscard]] virtual std::u16string AliasXMLPolaNr(int nrPola) const;
    // Whether the class wants the field stored at all; a field that it refuses is transient.
    [[nodiscard]] virtual bool PoleZapisywane(int nrPola) const;
    [[nodiscard]] virtual bool PoleByloTekstowe(int nrPola) const;
    // Hooks: after a field object was created; after every typed write.
    virtual void UtworzonoPole(int nrPola);
    virtual void SetBylyZmiany(int nrPola);
    [[nodiscard]] std::u16string NazwaEdycjiPolaNr(int nrPola) const override;

    // The highest position of the field array; -1 when it is empty.
    [[nodiscard]] int OstUzywanePole() const noexcept { return ilePol_ - 1; }
    // How many field numbers this class shares with the other; -1 when they have no common ancestor with fields.
    [[nodiscard]] int OstPoleWspolPrzodka(const TKlasa* inna) const;

    // Whether the field exists. With `tworz` a missing one is made, of the class given or else of the declared one;
    // false for a number that is negative or that the class does not declare.
    bool JestPole(int nrPola, const TKlasa* klasa, bool tworz);
    [[nodiscard]] bool JestPole(int nrPola) const noexcept { return Pole(nrPola) != nullptr; }
    // The field object, made if missing; null for a number that is negative or that the class does not declare.
    TPole* DajPole(int nrPola);
    // The field object, made if missing, under the object's lock. ZTException for a number that is not declared,
    // EBladRzutowania for a field of another class.
    TPole& DajPoleKlasy(int nrPola, const TKlasa* klasa);
    // The field object, or null.
    [[nodiscard]] TPole* Pole(int nrPola) const noexcept {
        return nrPola >= 0 && nrPola < ilePol_ ? FPola[nrPola] : nullptr;
    }
    void ZrobMiejsceDlaPola(int nrPola);
    // Installs a field object under a number; the object owns it from then on, also when the call raises. Refused and
    // left alone (ZTException) is only what cannot be this object's: an object that this one is a part of, that has an
    // owner or cannot have one (it is on the stack, or counted), or that dies, and a field object that is one of this
    // object's under another number. The former field is freed first, or is the caller's and has no parent any more; a
    // former one that is dying just now stays (ZTException).
    void UstawPole(int nrPola, TPole* pole, bool zwolnijPoprzednie);
    [[nodiscard]] bool PoleNiepuste(int nrPola) const override;
    [[nodiscard]] bool PoleDoZapisu(int nrPola) const override;
    void UstawNiepuste(int nrPola, bool niepuste) override;
    [[nodiscard]] bool MaDefWartosc(int nrPola) const;
    using TPole::MaDefWartosc;

    [[nodiscard]] std::uint8_t GetPoleByte(int nrPola) const;
    [[nodiscard]] std::int16_t GetPoleSmallint(int nrPola) const;
    [[nodiscard]] std::uint16_t GetPoleWord(int nrPola) const;
    [[nodiscard]] std::int32_t GetPoleInteger(int nrPola) const;
    [[nodiscard]] std::uint32_t GetPoleCardinal(int nrPola) const;
    [[nodiscard]] std::int64_t GetPoleInt64(int nrPola) const;
    [[nodiscard]] double GetPoleDouble(int nrPola) const;
    [[nodiscard]] double GetPoleDateTime(int nrPola) const;
    [[nodiscard]] double GetPoleDate(int nrPola) const;
    [[nodiscard]] double GetPoleTime(int nrPola) const;
    [[nodiscard]] bool GetPoleBoolean(int nrPola) const;
    [[nodiscard]] std::u16string GetPoleString(int nrPola) const;
    [[nodiscard]] std::u16string GetPoleCDATA(int nrPola) const;
    [[nodiscard]] std::string GetPoleRawByteString(int nrPola) const;
    [[nodiscard]] std::u16string GetPoleWideString(int nrPola) const;
    // The field itself, or null when it was never written.
    [[nodiscard]] TPoleStrList* GetPoleStrList(int nrPola) const;
    [[nodiscard]] TPoleWideStrList* GetPoleWideStrList(int nrPola) const;
    [[nodiscard]] TObiektBazowy* GetPoleRefObiektu(int nrPola) const;
    [[nodiscard]] TObiektBazowy* GetPoleWskObiektu(int nrPola) const;
    void SetPoleByte(int nrPola, std::uint8_t wartosc);
    void SetPoleSmallint(int nrPola, std::int16_t wartosc);
    void SetPoleWord(int nrPola, std::uint16_t wartosc);
    void SetPoleInteger(int nrPola, std::int32_t wartosc);
    void SetPoleCardinal(int nrPola, std::uint32_t wartosc);
    void SetPoleInt64(int nrPola, std::int64_t wartosc);
    void SetPoleDouble(int nrPola, double wartosc);
    void SetPoleDateTime(int nrPola, double wartosc);
    void SetPoleDate(int nrPola, double wartosc);
    void SetPoleTime(int nrPola, double wartosc);
    // ZTException for a byte other than 0 and 1, before anything is locked.
    void SetPoleBoolean(int nrPola, TBajtLogiczny wartosc);
    // An empty text clears the field and creates none.
    void SetPoleString(int nrPola, std::u16string_view wartosc);
    void SetPoleCDATA(int nrPola, std::u16string_view wartosc);
    void SetPoleRawByteString(int nrPola, std::string_view wartosc);
    void SetPoleWideString(int nrPola, std::u16string_view wartosc);
    // Copy the values.
    void SetPoleStrList(int nrPola, const TPoleStrList& wartosc);
    void SetPoleWideStrList(int nrPola, const TPoleWideStrList& wartosc);
    void SetPoleRefObiektu(int nrPola, TObiektBazowy* wartosc);
    void SetPoleWskObiektu(int nrPola, TObiektBazowy* wartosc);
    // Any field as a variant; empty for a field that was never written.
    [[nodiscard]] TWariant GetVariantowo(int nrPola) const;
    void SetVariantowo(int nrPola, const TWariant& wartosc);

    // Writes values into the fields that the selectors name, by number or by path; both arrays are of one length. Stops
    // at the first pair that fails (ZTException); the pairs before it stay written.
    void WpiszDane(TArgumenty pola, TArgumenty wartosci);
    // Frees every field object, then writes.
    void Inicjuj(TArgumenty pola, TArgumenty wartosci);
    void ZerujDane() override;
    void ZerujDaneOprocz(TArgumenty pola) override;
    // Cuts text fields to the sizes that RozmPolaNr gives (0: any), on request without blanks at their ends.
    void PrzytnijPolaWgRozm(bool trymuj) override;
    void TrymujPolaTekstowe(bool podobiektyTez) override;
    // Whether a text does not fit Windows-1250.
    [[nodiscard]] bool SaDaneUnicode(int nrPola) const override;
    [[nodiscard]] std::u16string OpisTekstowy() const override;
    // Copy the listed fields, all but them, or those of the given field classes. A path copies a part of a nested
    // object.
    void KopiujDanePol(const TObiekt& zrodlo, TArgumenty pola, bool zerujPozostale = false,
                       TKopierDanych* kopier = nullptr);
    void KopiujDaneOprocz(const TObiekt& zrodlo, TArgumenty pola, TKopierDanych* kopier = nullptr);
    void KopiujDaneKlas(const TObiekt& zrodlo, TCiag<const TKlasa*> klasy, TKopierDanych* kopier = nullptr);
    // Copies the value of the source's field (-1: the whole source) into a field of this object.
    void PrzepiszDane(const TObiektBazowy& zrodlo, int nrZrodla, int nrPola);

    [[nodiscard]] std::int32_t PorPoleNrZCecha(int nrPola, const TArgument& cecha, TRozmiarLiter rozmLiter,
                                               std::uint32_t localeID) const override;
    [[nodiscard]] std::int32_t WykonajPorownOproczPol(const TObiektBazowy& inny, TArgumenty pola,
                                                      TPorownywaczDanych& porownywacz) const override;
    bool ObiektIPole(std::u16string_view sciezka, bool tworz, TObiektBazowy*& obiekt, int& nrPola) override;
    [[nodiscard]] bool MoznaCzytacDaneTypu(std::u16string_view nazwaTypu) const override;
    [[nodiscard]] std::int32_t WykonajPorownanie(const TPole& inne, TPorownywaczDanych& porownywacz) const override;
    void WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier) override;
    void DajObiektyDoZapisu(TZapisywaczDanych& zapisywacz) const override;
    void WykonajZapis(TStrumien& strumien, TZapisywaczDanych& zapisywacz) const override;
    void WykonajOdczyt(TStrumien& strumien, TOdczytywaczDanych& odczytywacz) override;
    void WykonajZapisTekstowy(TZapisywaczTekstu& zapisywacz) const override;
    void WykonajOdczytTekstowy(TOdczytywaczTekstu& odczytywacz) override;

    // Compares one field of this object with the same field of the other: a missing one counts as its default value.
    [[nodiscard]] std::int32_t PorownajPole(int nrPola, const TObiekt& inny, TPorownywaczDanych& porownywacz) const;
    // For a walk that compares values itself: false when the object decides about its fields, or the field is not
    // exactly of a plain class of the library's; else the field object, null when it holds no value, and its EKodPola.
    [[nodiscard]] bool DajPoleWprost(int nrPola, const TPole*& pole, unsigned& kod) const noexcept;

  private:
    // These fill the base's last bytes.
    std::uint8_t miejsca_ = 0;       // places for field objects in the block of the field array
    std::uint8_t zajete_ = 0;        // how many of them were used
    bool wyniesione_ : 1 = false;    // a field in one of them has left the object
    bool jestPoprzedni_ : 1 = false; // the first of them tells of an older block, whose field objects are alive

  protected:
    // The field objects; then, in the same block, one byte of state a field, and places for plain field objects.
    TPole** FPola = nullptr;

  private:
    friend class TJadroKlas;
    friend class TObiektBazowy; // ends its life
    friend class TPorownywaczDanych;

    // State of one field number: whether it holds a value, and what is known of the field object.
    enum TStanPola : std::uint8_t {
        spWartosc = 0x01,    // value flag
        spObiekt = 0x02,     // the field object is an object of the model; its state is its own
        spDestrukcja = 0x04, // its end of life is more than the C++ destructor
        spDokladna = 0x08,   // it is exactly of the library's class that the code names
        spKod = 0xF0,        // EKodPola in the high bits
    };

    [[nodiscard]] std::uint8_t* Stany() const noexcept { return reinterpret_cast<std::uint8_t*>(FPola + pojPol_); }
    [[nodiscard]] static std::uint8_t StanKlasy(const TKlasa& klasa) noexcept;
    // Whether a field in that state may stand in the object's block: the library's own class of a plain value.
    [[nodiscard]] static bool MoznaWBloku(std::uint8_t stan) noexcept;
    [[nodiscard]] bool JestWBloku(const TPole* pole) const noexcept;
    // The block's place of that number; takes the next so many, which are there; gives the last of them back.
    [[nodiscard]] void* MiejsceNr(int nr) const noexcept;
    [[nodiscard]] void* ZajmijMiejsca(int ile) noexcept;
    void OddajMiejsca(int ile) noexcept;
    [[nodiscard]] TPole* UtworzWBloku(unsigned kod) noexcept;
    // Makes room for so many field numbers, and for so many plain field objects if the object has no block yet.
    void Zarezerwuj(int ile, int miejsca);
    void OddajBlok() noexcept;
    void UsunPole(TPole* pole, std::uint8_t stan) noexcept;
    // Whether a field could hold objects in turn.
    [[nodiscard]] bool MaCzesciWPolach() const noexcept;
    void OddajPole(int nrPola);
    void ZwolnijPole(int nrPola, TPierwszyBlad& blad);
    void SprawdzPolaPrzedZapisem(TZapisywaczDanych& zapisywacz) const;
    friend void SprawdzPrzedZapisem(const TObiektBazowy& obiekt, TZapisywaczDanych& zapisywacz);
    void SprawdzPoCzesci(std::uint64_t bity) const;
    void ZapiszWprost(std::uint64_t bity, TStrumien& strumien, TZapisywaczDanych& zapisywacz) const;
    void WczytajWprost(std::uint64_t bity, const TMigawkaOpisu& migawka, TStrumien& strumien,
                       TOdczytywaczDanych& odczytywacz);
    void WczytajPoleNr(int nr, const TMigawkaOpisu& migawka, TStrumien& strumien, TOdczytywaczDanych& odczytywacz);
    // The message of an error that came up while the field was read.
    [[nodiscard]] std::u16string KontekstOdczytu(int nrPola, std::u16string_view komunikat) const;
    [[nodiscard]] const TMigawkaOpisu& Migawka() const;
    [[nodiscard]] static const TMigawkaOpisu& Migawka(const TKlasa* klasa);
    TPole& UtworzPole(int nrPola, const TKlasa* klasa);
    void ZwolnijPola(bool zachowajTablice);
    [[noreturn]] void ZglosZlyTyp(int nrPola, const TPole& pole, const TKlasa* spodziewana) const;
    template <class P> [[nodiscard]] P* PoleKlasy(int nrPola) const;
    template <class P> P& PoleDoZapisuKlasy(int nrPola);
    template <class P> [[nodiscard]] auto Czytaj(int nrPola) const;
    template <class P, class W> void Pisz(int nrPola, W wartosc);
    template <class P> [[nodiscard]] P* CzytajListe(int nrPola) const;
    template <class P> void PiszListe(int nrPola, const P& wartosc);
    void WpiszPare(const TArgument& pole, const TArgument& wartosc);
    void WpiszWartosc(int nrPola, const TArgument& wartosc, std::u16string_view klasaKomunikatu);
    void KopiujPole(int nrPola, const TObiekt& zrodlo, TKopierDanych& kopier);
    template <class F> bool KopiujCzesc(int nr, const TObiekt& zrodlo, const F& kopiuj);
    [[nodiscard]] int ZarezerwujNaKopie(int ile, const TObiekt& zrodlo, const TMigawkaOpisu& migawka);
    // Makes a copy of a plain field in the block; false when it has no place there.
    bool KopiujDoMiejsca(int nr, const TPole& zrodlo, std::uint8_t stan, const TMigawkaOpisu& migawka, int& naTeksty);
    // Copies a field that is exactly of the library's class that its state names; false when this object's field is
    // not.
    bool KopiujWprost(int nrPola, const TPole& zrodlo, std::uint8_t stan, const TMigawkaOpisu& migawka);
    // Whether both objects hold the field; if not, `wynik` is the sign of the comparison.
    bool ObaPola(int nrPola, const TObiekt& inny, const TPole*& tu, const TPole*& tam, std::int32_t& wynik) const;
    [[nodiscard]] int PoleZTekstu(TOdczytywaczTekstu& odczytywacz, int po) const;
    [[nodiscard]] const TObiektBazowy* ObiektDoZapisu(int nrPola, const TZapisywaczDanych& zapisywacz) const;
    [[nodiscard]] bool PoleWZapisie(int nrPola, bool pytajKlase, std::uint32_t cechy,
                                    TZapisywaczDanych& zapisywacz) const;

    // A plain field object's place; the places follow the array and the states.
    static constexpr std::size_t kMiejsce = 16;
    static constexpr int kNajwiekszyNumer = 32767; // a field number is a signed 16-bit one
    static constexpr std::size_t BajtyBloku(int pola, int miejsca) noexcept {
        return (static_cast<std::size_t>(pola) * (sizeof(TPole*) + 1) + kMiejsce - 1) / kMiejsce * kMiejsce +
               static_cast<std::size_t>(miejsca) * kMiejsce;
    }

    std::int32_t ilePol_ = 0;
    std::int32_t pojPol_ = 0;
};

static_assert(sizeof(void*) == 4 || sizeof(TObiekt) <= 48, "one step more of the pool for every object");

inline void* TObiekt::MiejsceNr(int nr) const noexcept {
    return reinterpret_cast<char*>(FPola) + BajtyBloku(pojPol_, nr);
}

inline void* TObiekt::ZajmijMiejsca(int ile) noexcept {
    void* const miejsce = MiejsceNr(zajete_);
    zajete_ = static_cast<std::uint8_t>(zajete_ + ile);
    Odtruj(miejsce, static_cast<std::size_t>(ile) * kMiejsce);
    return miejsce;
}

inline void TObiekt::OddajMiejsca(int ile) noexcept {
    zajete_ = static_cast<std::uint8_t>(zajete_ - ile);
    Zatruj(MiejsceNr(zajete_), static_cast<std::size_t>(ile) * kMiejsce);
}

// Makes an object as Utworz does, and writes values into its fields as WpiszDane does. When that raises, the object is
// freed.
template <class T>
requires std::is_base_of_v<TObiekt, T>
[[nodiscard]] TWlasny<T> Utworz(TArgumenty pola, TArgumenty wartosci, TObiektBazowy* wlasciciel = nullptr) {
    TWlasny<T> obiekt = Utworz<T>(wlasciciel);
    obiekt->WpiszDane(pola, wartosci);
    return obiekt;
}

// Refuses (ZTException) a tree that could not be read again: one that nests deeper than the writer allows, or with a
// part of another class than its field or list declares, whose class the forms do not tell.
void SprawdzPrzedZapisem(const TObiektBazowy& obiekt, TZapisywaczDanych& zapisywacz);

} // namespace ztok
