// Root object of the model: parent, incoming references, lock, comparison, copy and persistence.
#pragma once

#include <atomic>

#include "ztok/fields/TPole.h"
#include "ztok/kernel/TOdwolania.h"
#include "ztok/platform/Kontrolowane.h"

namespace ztok {

class TBlokadaObiektu;
class TListaBazowa;
class TObiekt;
class TPozycjeWListach;
struct TOpcjeOdczytu;

// An object is a field too, so it can stand in a field of another object or in a list. The order of the virtual
// operations is part of the interface.
//
// Life: Utworz makes an object and Zwolnij ends it; an object on the stack ends itself, and has no owner. At the end of
// life every field that refers to the object is cleared, then its content, then its lock, while the object still has
// its full type. Meanwhile it stands where it stood: its path tells of it, and whoever wants to free it or to move it
// is refused.
// Nesting of objects and lists beyond TLimity::zaglebienie is refused by reading, writing, comparing and copying.
class ZTOK_API TObiektBazowy : public TPole {
    ZTOK_KLASA_DEKL(TObiektBazowy)
    static constexpr std::uint32_t CechyKlasy = ckPole | ckObiektBazowy;

    // The owner becomes the parent; it does not hold the object, and when it dies first, the object has none. May be
    // null.
    explicit TObiektBazowy(TObiektBazowy* wlasciciel = nullptr);
    ~TObiektBazowy() override;

    // Creates and destroys the object's lock; empty here. TworzSekcjeKrytyczna runs once the object has its full type:
    // at the end of Utworz; for an object on the stack when TBlokadaObiektu first locks it.
    virtual void TworzSekcjeKrytyczna();
    virtual void UsunSekcjeKrytyczna();
    // Forgets one incoming reference, if it is recorded.
    virtual void ZwolnijRefOd(TPole* pole);
    // Values by path.
    [[nodiscard]] virtual TWariant GetVariantowoWgSciezki(std::u16string_view sciezka) const;
    virtual void SetVariantowoWgSciezki(std::u16string_view sciezka, const TWariant& wartosc);
    // Whether a field has the feature's value, and where the feature lies (its sign minus the field's value). "[?]" in
    // the path means any element of the list before it.
    [[nodiscard]] virtual bool PoleNrMaCeche(int nrPola, const TArgument& cecha, TRozmiarLiter rozmLiter) const;
    [[nodiscard]] virtual bool PoleMaCeche(std::u16string_view sciezka, const TArgument& cecha,
                                           TRozmiarLiter rozmLiter) const;
    [[nodiscard]] virtual std::int32_t PorPoleNrZCecha(int nrPola, const TArgument& cecha, TRozmiarLiter rozmLiter,
                                                       std::uint32_t localeID) const;
    [[nodiscard]] virtual std::int32_t PorPoleONazwieZCecha(std::u16string_view sciezka, const TArgument& cecha,
                                                            TRozmiarLiter rozmLiter, std::uint32_t localeID) const;
    virtual void ZerujPole(std::u16string_view sciezka);
    // Whether field N holds a value; -1: whether the object does.
    [[nodiscard]] virtual bool PoleNiepuste(int nrPola) const;
    // Whether field N is to be written.
    [[nodiscard]] virtual bool PoleDoZapisu(int nrPola) const;
    // Marks field N as holding a value, or clears it.
    virtual void UstawNiepuste(int nrPola, bool niepuste);
    virtual void WczytajZPlikuXMLWewn(TOdczytywaczXML& odczytywacz);
    [[nodiscard]] virtual std::int32_t WykonajPorownWgPol(const TObiektBazowy& inny, TArgumenty pola,
                                                          TPorownywaczDanych& porownywacz) const;
    [[nodiscard]] virtual std::int32_t WykonajPorownOproczPol(const TObiektBazowy& inny, TArgumenty pola,
                                                              TPorownywaczDanych& porownywacz) const;
    // Takes and releases the object's lock; empty here. Use TBlokadaObiektu.
    virtual void ZablokujObiekt() const;
    virtual void OdblokujObiekt() const;
    virtual void ZerujDanePol(TArgumenty pola);
    virtual void ZerujDaneOprocz(TArgumenty pola);
    // Resolves a path to an object and a field number (-1: the whole object), on request creating what is missing.
    // False for a path that leads nowhere. Never raises for a path.
    virtual bool ObiektIPole(std::u16string_view sciezka, bool tworz, TObiektBazowy*& obiekt, int& nrPola);
    // The same on classes alone: this object's, or one given, without an instance.
    virtual bool KlasaIPole(std::u16string_view sciezka, const TKlasa*& klasa, int& nrPola) const;
    static bool KlasaIPole(const TKlasa* od, std::u16string_view sciezka, const TKlasa*& klasa, int& nrPola);
    [[nodiscard]] virtual bool SciezkaIstnieje(std::u16string_view sciezka) const;
    // The field object at a path, or null.
    [[nodiscard]] virtual TPole* PoleONazwie(std::u16string_view sciezka);
    virtual void PrzytnijPolaWgRozm(bool trymuj);
    virtual void TrymujPolaTekstowe(bool podobiektyTez);
    // Whether the named fields equal the values, and the first non-zero sign of the values minus the fields. A field is
    // named by number or by name; a field without an object has the value zero.
    [[nodiscard]] virtual bool MaCechy(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter) const;
    [[nodiscard]] virtual std::int32_t PorownajCechy(TArgumenty pola, TArgumenty wartosci, TRozmiarLiter rozmLiter,
                                                     std::uint32_t localeID) const;
    // Copies the fields up to the nearest common ancestor class; takes no lock.
    virtual void KopiujDanePrzodkow(const TObiektBazowy& zrodlo, TKopierDanych* kopier = nullptr);
    // A copy of the object, with the same parent when asked; the parent does not hold it.
    [[nodiscard]] virtual TWlasny<TObiektBazowy> KlonujObiekt(bool zachowajRodzica) const;
    // An empty object of exactly this object's class.
    [[nodiscard]] virtual TWlasny<TObiektBazowy> TworzInstancje(TObiektBazowy* wlasciciel) const;
    // Whether data stored under the type name may be read into this object.
    [[nodiscard]] virtual bool MoznaCzytacDaneTypu(std::u16string_view nazwaTypu) const;
    // The class's own part of comparing, copying, writing and reading, called by the operations below.
    [[nodiscard]] virtual std::int32_t WykonajPorownanie(const TPole& inne, TPorownywaczDanych& porownywacz) const;
    virtual void WykonajKopiowanie(const TPole& zrodlo, TKopierDanych& kopier);
    // Hands the writer every object that takes part in the write with this one, in pre-order; here the object itself.
    virtual void DajObiektyDoZapisu(TZapisywaczDanych& zapisywacz) const;
    virtual void WykonajZapis(TStrumien& strumien, TZapisywaczDanych& zapisywacz) const;
    virtual void WykonajOdczyt(TStrumien& strumien, TOdczytywaczDanych& odczytywacz);
    virtual void WykonajZapisTekstowy(TZapisywaczTekstu& zapisywacz) const;
    virtual void WykonajOdczytTekstowy(TOdczytywaczTekstu& odczytywacz);
    virtual void WykonajZapisXML(TZapisywaczXML& zapisywacz) const;
    virtual void WykonajOdczytXML(TOdczytywaczXML& odczytywacz);
    // One line that describes the object; "?" here.
    [[nodiscard]] virtual std::u16string OpisTekstowy() const;
    [[nodiscard]] virtual std::u16string OpisTekstowyWide() const;
    [[nodiscard]] virtual bool SaDaneUnicode(int nrPola) const;
    // Display label of field N.
    [[nodiscard]] virtual std::u16string NazwaEdycjiPolaNr(int nrPola) const;
    virtual void WczytajZPlikuXML(std::u16string_view plik);
    virtual void WczytajStalaRES(std::u16string_view nazwa);

    [[nodiscard]] TObiektBazowy* Rodzic() const noexcept { return FRodzic; }
    // Whether the parent holds the object, in a list or a field, and frees it.
    [[nodiscard]] bool JestTrzymany() const noexcept { return trzymany_; }
    // Whether the end of life has begun.
    [[nodiscard]] bool Ginie() const noexcept { return (zycie_ & zyKonczony) != 0; }
    // The topmost object: this one when it has no parent.
    [[nodiscard]] TObiektBazowy* DajKorzen() noexcept;
    [[nodiscard]] const TObiektBazowy* DajKorzen() const noexcept;
    // The nearest ancestor of the class, not the object itself; null when there is none.
    [[nodiscard]] TObiektBazowy* DajRodzica(const TKlasa* klasa) const noexcept;

    // Incoming references: the fields and lists that point here, a set in address order.
    // Whether it was recorded now: null and a field that is recorded change nothing.
    bool DodajRefOd(TPole* pole);
    [[nodiscard]] bool MaRefOd(const TPole* pole) const noexcept;
    // Whether the field is recorded; the position, or the one to insert at.
    [[nodiscard]] bool JestRefOd(const TPole* pole, int& gdzie) const noexcept;
    [[nodiscard]] bool MaJakiesRef() const noexcept { return !odwolania_.Puste(); }
    // Clears every field that refers to this object, from the highest address to the lowest. All of them, even when one
    // raises; the first error is raised at the end.
    void ZwolnijReferencje();

    // PoleNiepuste, UstawNiepuste and PoleDoZapisu under the object's lock.
    [[nodiscard]] bool GetMaWartosc(int nrPola) const;
    void SetMaWartosc(int nrPola, bool maWartosc);
    [[nodiscard]] bool SaJakiesDane(int nrPola) const;

    // Fingerprint of the content: equal binary content, equal fingerprint. With a pattern, pointers are numbered by the
    // pattern's objects.
    [[nodiscard]] std::uint32_t DajWyroznikObiektu(const TObiektBazowy* wzor = nullptr) const;

    // Path from the root (or from the given ancestor) to this object: a field name or [index] a level. Never raises.
    [[nodiscard]] std::u16string DajSciezkeDoSiebie(const TObiektBazowy* korzen = nullptr) const noexcept;
    // The field object of one path, or null.
    [[nodiscard]] TPole* DajPoleONazwie(std::u16string_view sciezka) { return PoleONazwie(sciezka); }

    // A readable dump of the object's tree, for diagnostics.
    [[nodiscard]] std::u16string DrzewoObiektu() const;
    // Values by path, as text.
    [[nodiscard]] std::u16string GetTekstowoWgSciezki(std::u16string_view sciezka) const;
    void SetTekstowoWgSciezki(std::u16string_view sciezka, std::u16string_view tekst);
    [[nodiscard]] std::u16string DajTrescWgSciezki(std::u16string_view sciezka) const;
    // XML form as text, and whole files.
    [[nodiscard]] std::string ZapiszWStringuXML() const;
    void WczytajZeStringuXML(std::string_view tekst);
    void ZapiszWPlikuXML(std::u16string_view plik) const;
    void ZapiszWPliku(std::u16string_view plik) const;
    void WczytajZPliku(std::u16string_view plik);

    // Copies everything from an object that fits; the root of the copy locks itself and the source.
    void KopiujDane(const TPole& zrodlo, TKopierDanych* kopier = nullptr) override;
    // Full comparison; without a comparer letter case does not matter.
    [[nodiscard]] std::int32_t Porownaj(const TPole& inne, TPorownywaczDanych* porownywacz = nullptr) const override;
    // Full comparison with a letter case of the caller's choice.
    [[nodiscard]] std::int32_t PorownajZObiektem(const TObiektBazowy& inny, TRozmiarLiter rozmLiter,
                                                 std::uint32_t localeID = LocaleWin1250) const;
    // Compares the listed fields (or all but them).
    [[nodiscard]] std::int32_t PorownajWgPol(const TObiektBazowy& inny, TArgumenty pola, TRozmiarLiter rozmLiter,
                                             std::uint32_t localeID = LocaleWin1250,
                                             TPorownywaczDanych* porownywacz = nullptr) const;
    [[nodiscard]] std::int32_t PorownajOproczPol(const TObiektBazowy& inny, TArgumenty pola, TRozmiarLiter rozmLiter,
                                                 std::uint32_t localeID = LocaleWin1250,
                                                 TPorownywaczDanych* porownywacz = nullptr) const;

    // Binary form. Without a writer this is the root of the write: it locks itself, numbers the objects of the tree and
    // writes; nothing is written when the tree nests too deep. EBladZapisu when the stream takes too few bytes.
    void ZapiszWStrumieniu(TStrumien& strumien, TZapisywaczDanych* zapisywacz = nullptr) const override;
    // Without a reader this is the root of the read: the old content is cleared, and after an error every pointer is
    // resolved or null. The stream then stands behind the record.
    void WczytajZeStrumienia(TStrumien& strumien, TOdczytywaczDanych* odczytywacz) override;
    void WczytajZeStrumienia(TStrumien& strumien) { WczytajZeStrumienia(strumien, false); }
    // The flag says that strings were written in Windows-1250.
    void WczytajZeStrumienia(TStrumien& strumien, bool odczytANSI);
    // The same with limits and choices of the caller's.
    void WczytajZeStrumienia(TStrumien& strumien, const TOpcjeOdczytu& opcje);

    // Text form, a whole document when there is no writer: `object`, the class name (or the header instead of both),
    // the fields, `end`. Locks and numbers as the binary form does.
    void ZapiszTekstowo(TStrumien& strumien, TZapisywaczTekstu* zapisywacz) const override;
    void ZapiszTekstowo(TStrumien& strumien, std::u16string_view naglowek = {}) const;
    // Reads a document, whose class must fit the object (EZTObcyTypError), or whose header must be the one given. A
    // fault in the text raises EZTParserError; the object then keeps what was read before it, and a fault in the header
    // changes nothing. A stream that can tell its position stands behind the `end` afterwards.
    void WczytajTekstowo(TStrumien& strumien, TOdczytywaczTekstu* odczytywacz) override;
    void WczytajTekstowo(TStrumien& strumien) { WczytajTekstowo(strumien, std::u16string_view()); }
    void WczytajTekstowo(TStrumien& strumien, std::u16string_view naglowek);
    void WczytajTekstowo(TStrumien& strumien, const TOpcjeOdczytu& opcje, std::u16string_view naglowek = {});

    void ZerujRefDo(TObiektBazowy* cel) override;
    // The mask is a path: as DajTrescWgSciezki. Empty: the object's own description.
    [[nodiscard]] std::u16string WartWgMaski(std::u16string_view maska,
                                             const TUstawieniaFormatu* ustawienia = nullptr) const override;

  protected:
    void WykonajDestrukcje() override;
    // What a path leads to, for reading: false when a good path leads through objects that do not exist. ZTException
    // with the operation's name for a bad path.
    bool CelSciezki(std::u16string_view operacja, std::u16string_view sciezka, TObiektBazowy*& obiekt,
                    int& nrPola) const;
    // The object with the field that a path leads to, for writing: what is missing is made.
    TObiekt& CelZapisu(std::u16string_view operacja, std::u16string_view sciezka, int& nrPola);
    // Whether any element ("[?]") stands in the path: the list before the first one, null when there is none yet, and
    // the path from there on. ZTException with the operation's name when what comes before leads to no list.
    bool ZDowolnym(std::u16string_view operacja, std::u16string_view sciezka, TListaBazowa*& lista,
                   std::u16string_view& odDowolnego) const;
    // Whether a walk over texts goes on into the object: not into a pointer list, whose elements live elsewhere and may
    // lead back.
    [[nodiscard]] static bool JestDoObejscia(const TObiektBazowy* obiekt) noexcept {
        return obiekt != nullptr && !obiekt->Klasa()->Ma(ckListaWsk);
    }
    // Whether the first is the second or, up the parents, a part of it.
    [[nodiscard]] static bool JestCzescia(const TObiektBazowy& czesc, const TObiektBazowy& calosc) noexcept;
    // Whether one of the two is a part of the other: a copy would then free, or go on growing, what it still reads.
    [[nodiscard]] static bool JednoWDrugim(const TObiektBazowy& a, const TObiektBazowy& b) noexcept;
    [[nodiscard]] bool MoznaZwolnic(EZwalniajacy kto, TPierwszyBlad& blad) const noexcept override;
    [[nodiscard]] bool Zakoncz(EZwalniajacy kto, TPierwszyBlad& blad) noexcept override;
    // Runs the end of life once, at the level of the class whose destructor calls it first; errors go to the user
    // notice. For destructors of derived classes (the declaring macros write them).
    void DokonczZycie() noexcept {
        if ((zycie_ & zyCzyszczony) == 0)
            DokonczZycieCicho();
    }

    // Refuses (ZTException) to put an object into itself or into one of its own parts, at any depth. The object stays
    // with the caller then: it owns the one that refuses.
    static void SprawdzCykl(const TObiektBazowy& rodzic, const TObiektBazowy& nowy);
    // The same, and refuses an object that cannot have an owner (on the stack, in another object, counted), that has
    // one, or that dies, and an owner that dies.
    static void SprawdzPrzyjecie(const TObiektBazowy& rodzic, const TObiektBazowy& nowy) {
        SprawdzCykl(rodzic, nowy);
        if (nowy.trzymany_ || !nowy.utworzony_ || nowy.liczony_ || nowy.Ginie() || rodzic.Ginie()) [[unlikely]]
            SprawdzWlasciciela(rodzic, nowy);
    }
    // Refuses (ZTException) to make or take a part when the object is being emptied at its end, or to give away what
    // dies.
    void SprawdzZycie() const {
        if ((zycie_ & zyCzyszczony) != 0) [[unlikely]]
            BladGinie();
    }
    static void SprawdzOddanie(const TObiektBazowy& obiekt) {
        if (obiekt.Ginie()) [[unlikely]]
            obiekt.BladGinie();
    }
    // Told by an owner: the object is held by it from now on, or no longer and has no parent.
    static void PoPrzyjeciu(TObiektBazowy& obiekt, TObiektBazowy& rodzic) noexcept {
        if (obiekt.luzny_) [[unlikely]]
            obiekt.PrzestanBycLuzny();
        obiekt.FRodzic = &rodzic;
        obiekt.trzymany_ = true;
    }
    static void PoOddaniu(TObiektBazowy& obiekt) noexcept {
        obiekt.FRodzic = nullptr;
        obiekt.trzymany_ = false;
    }
    // While an owner makes an object that it will hold: such a child needs no entry among those that nobody holds.
    class TTworzenieCzesci {
      public:
        explicit TTworzenieCzesci(TObiektBazowy& wlasciciel) noexcept : wlasciciel_(wlasciciel) {
            wlasciciel_.tworzyCzesc_ = true;
        }
        TTworzenieCzesci(const TTworzenieCzesci&) = delete;
        TTworzenieCzesci& operator=(const TTworzenieCzesci&) = delete;
        ~TTworzenieCzesci() { wlasciciel_.tworzyCzesc_ = false; }

      private:
        TObiektBazowy& wlasciciel_;
    };

    TObiektBazowy* FRodzic = nullptr;

  private:
    friend class TBlokadaObiektu;
    friend class TJadroKlas;
    friend class TKontroler;
    friend class TLuzneDzieci;
    friend class TObiekt;
    friend class TObiektITS;
    friend class TOdczytywaczDanych;
    friend class TPorownywaczDanych;
    friend struct TPrzydzial;

    // One step of a copy: the copier is told, and the class does its part one level deeper.
    void KopiujZ(const TPole& zrodlo, TKopierDanych& kopier);
    // Told once by Utworz and the virtual constructors, with the class's ECechyKlasy.
    void PoUtworzeniu(std::uint32_t cechy);
    // The parent of an object that nobody holds, or its place in a list that the caller fills.
    void UstawRodzica(TObiektBazowy* rodzic);
    void PrzestanBycLuzny() noexcept;
    static void SprawdzWlasciciela(const TObiektBazowy& rodzic, const TObiektBazowy& nowy);
    [[nodiscard]] bool MaCzesci() const;
    static bool TrzymaUzywany(const TObiektOgolny& wUzyciu, bool najglebiej, const TObiektOgolny& obiekt) noexcept;
    [[noreturn]] void BladGinie() const;
    void DokonczZycieCicho() noexcept;
    void Odlacz() noexcept override;
    // The path of DajSciezkeDoSiebie, for a walk that asks for many.
    [[nodiscard]] std::u16string Sciezka(const TObiektBazowy* korzen, TPozycjeWListach* pozycje) const noexcept;
    [[nodiscard]] bool NazwaWRodzicu(std::u16string& nazwa, TPozycjeWListach* pozycje = nullptr) const;
    // The lock, of an object on the stack too, whose lock is made by the first that wants it.
    void Zablokuj() const;
    void PrzygotujNaStosie() const;

    // Life of the object, as bits.
    enum EZycie : std::uint8_t {
        zyPrzygotowany = 0x01,   // TworzSekcjeKrytyczna has run
        zyPrzygotowywany = 0x02, // it runs, for an object on the stack
        zyKonczony = 0x04,       // the end of life has begun
        zyCzyszczony = 0x08,     // it has come to this class's steps
    };

    TOdwolania odwolania_;
    // Threads that are about to lock the object read these bits, which nobody changes once it is made; so the bits that
    // change have bytes of their own.
    bool bezBlokady_ : 1 = false;   // known to lock nothing: no virtual call
    bool zwyklyKoniec_ : 1 = false; // an object with fields whose class adds nothing to its making, clearing and end
    bool utworzony_ : 1 = false;    // made by Utworz; else it is on the stack or in another object
    bool liczony_ : 1 = false;      // freed by the last reference
    std::uint8_t zycie_ = 0;
    bool trzymany_ : 1 = false;    // its parent holds it; asked before it is given away
    bool odczytany_ : 1 = false;   // a reader has numbered it
    bool luzny_ : 1 = false;       // stands among the children that nobody holds
    bool tworzyCzesc_ : 1 = false; // an object is being made that this one will hold
    TZnakKontroli kontrola_;
    std::atomic<bool> maLuzne_{false}; // has such children
};

// Holds an object's lock for a scope, in which the object may die: the lock then goes with it.
class ZTOK_API TBlokadaObiektu {
  public:
    explicit TBlokadaObiektu(const TObiektBazowy& obiekt) : obiekt_(obiekt.bezBlokady_ ? nullptr : &obiekt) {
        if (obiekt_ != nullptr)
            Zablokuj();
    }
    TBlokadaObiektu(const TBlokadaObiektu&) = delete;
    TBlokadaObiektu& operator=(const TBlokadaObiektu&) = delete;
    ~TBlokadaObiektu() {
        if (obiekt_ != nullptr)
            Odblokuj();
    }

  private:
    friend class TObiektBazowy;

    void Zablokuj();
    void Odblokuj() noexcept;
    // The thread gives up its locks of an object that dies.
    static void Porzuc(const TObiektBazowy& obiekt) noexcept;

    const TObiektBazowy* obiekt_;
    TBlokadaObiektu* poprzednia_ = nullptr; // of this thread
};

} // namespace ztok
