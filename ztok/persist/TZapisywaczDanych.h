// Binary writer: options of one write and the numbers of the objects that take part in it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ztok/lists/TListaWskObiektow.h"
#include "ztok/util/Zagniezdzenie.h"

namespace ztok {

class TObiekt;
class TStrumien;

// Per-field filter of a caller: whether the field of the object is to be written. When set it alone decides.
struct TFunCzyZapisac {
    bool (*funkcja)(void* dane, const TObiekt& obiekt, int nrPola) = nullptr;
    void* dane = nullptr;
    explicit operator bool() const noexcept { return funkcja != nullptr; }
    bool operator()(const TObiekt& obiekt, int nrPola) const { return funkcja(dane, obiekt, nrPola); }
};

// Bits of OpcjeZapisu. Bit 8: strings in Windows-1250 instead of UTF-8.
inline constexpr std::int16_t ozWin1250 = 256;

// One writer serves one write, on one thread.
class ZTOK_API TZapisywaczDanych {
  public:
    TZapisywaczDanych();
    TZapisywaczDanych(const TZapisywaczDanych&) = delete;
    TZapisywaczDanych& operator=(const TZapisywaczDanych&) = delete;
    virtual ~TZapisywaczDanych();

    // Prepares the write of a tree: checks that it can be read again (ZTException). The objects are collected at the
    // first lookup; with a per-field filter, which could change the tree, at once.
    void PrzygotujKorzen(const TObiektBazowy& korzen);
    // Told by every object that is written: the topmost is checked in the same way, unless it was.
    void ZapisywanoObiekt(const TObiektBazowy& obiekt) {
        if (Zagniezdzenie.NaSzczycie())
            SprawdzSzczyt(obiekt);
    }
    // Appends an object to those that take part; its number in the stream is its position plus one.
    void DodajObiekt(const TObiektBazowy& obiekt);
    // Takes a number for an object that nothing points at.
    void DodajPusty();
    // Orders the objects by address, for JestObiekt; done by itself at the first lookup.
    void SortujListe();
    // The position of the object among those that take part; false and -1 when it does not. Null never does.
    bool JestObiekt(const TObiektBazowy* obiekt, std::int32_t& gdzie);

    // Counts and texts as the format has them. ZTException for a value that the form cannot hold.
    static void ZapiszLicznik15(TStrumien& strumien, std::uint32_t licznik);
    static void ZapiszLicznik30(TStrumien& strumien, std::uint32_t licznik);
    static void ZapiszLicznik31(TStrumien& strumien, std::uint32_t licznik);
    // Length, then the bytes.
    static void ZapiszAnsiString(TStrumien& strumien, std::string_view bajty);
    // Text as UTF-8, or as the writer's options say (null: UTF-8).
    static void ZapiszWideString(TStrumien& strumien, std::u16string_view tekst, const TZapisywaczDanych* zapisywacz);
    // Puts a text of fewer than kKrotszyTekst units as UTF-8, behind its length, where 3 bytes a unit and 4 more have
    // room; returns where it ends.
    static std::uint8_t* UlozTekst(std::uint8_t* cel, std::u16string_view tekst) noexcept;
    static constexpr std::size_t kKrotszyTekst = 0x1000;

    TListaWskObiektow ZapObiekty;    // in collection order
    bool ZapisWszystkichPol = false; // every field that holds a value, whatever the class says
    std::int16_t OpcjeZapisu = 0;
    TFunCzyZapisac CzyZapisacPole;
    bool DaneDlaD2007 = false; // Unicode elements of tagged-value arrays as 8-bit text
    TLicznikZagniezdzenia Zagniezdzenie{true};

  private:
    void ZbierzObiekty();
    void SprawdzSzczyt(const TObiektBazowy& obiekt);

    struct TPozycja {
        const TObiektBazowy* obiekt;
        std::int32_t pozycja;
    };
    std::vector<TPozycja> Posortowane;        // the same objects by address
    const TObiektBazowy* OstObiekt = nullptr; // the last lookup
    std::int32_t OstGdzie = -1;
    bool posortowane_ = false;
    const TObiektBazowy* nieZebrany_ = nullptr; // root of a tree whose objects are still to be collected
    const TObiektBazowy* sprawdzony_ = nullptr; // root of a tree that can be read again
};

} // namespace ztok
