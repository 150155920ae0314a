// Binary reader: the objects and pointers met during one read.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ztok/kernel/TPrzejscie.h"
#include "ztok/persist/TLimityOdczytu.h"
#include "ztok/platform/Eksport.h"
#include "ztok/util/Zagniezdzenie.h"

namespace ztok {

class TListaWskObiektow;
class TObiektBazowy;
class TObiektOgolny;
struct TKlasa;
class TPole;
class TPoleWskObiektu;
class TStrumien;
class TTekstPola;

// Object number N is the Nth object whose reading began. Pointer fields and lists stay null or empty while the reader
// runs; their numbers stand here until KorygujReferencje resolves them. A field or object that dies meanwhile takes its
// entry along. One reader serves one read, on one thread.
class ZTOK_API TOdczytywaczDanych : private TPrzejscie {
  public:
    explicit TOdczytywaczDanych(bool odczytANSI = false, const TLimityOdczytu& limity = {});
    TOdczytywaczDanych(const TOdczytywaczDanych&) = delete;
    TOdczytywaczDanych& operator=(const TOdczytywaczDanych&) = delete;
    ~TOdczytywaczDanych() override;

    // Every field reports itself here before it is read. A reader that only numbers objects need not hear of scalars:
    // see ChceKazdePole.
    virtual void OdczytywanoPole(TPole& pole);
    // Turns numbers into pointers, at the end of a read.
    virtual void KorygujReferencje();
    // Clears every pointer that has not been resolved, after a read that failed.
    void ZerujReferencje() noexcept;

    // The number read for a pointer field, and for the next element of a pointer list.
    void NumerPola(TPoleWskObiektu& pole, std::uint32_t numer);
    void NumerElementu(TListaWskObiektow& lista, std::uint32_t numer);
    // The class that the target of the pointer read last must have; a target of another class becomes null.
    void OgraniczOstatni(const TKlasa* klasa) noexcept {
        if (!OdczRef.empty())
            OdczRef.back().klasa = klasa;
    }

    // Whether OdczytywanoPole is to be called for every field, scalars included: so for every derived reader.
    [[nodiscard]] bool ChceKazdePole() const noexcept { return kazdePole_; }

    // Counts and texts as the format has them; EBladOdczytu for a stream that ends too early, ZTException for a count
    // or length that the data left cannot hold, or that is above the reader's limits (null: the default ones).
    static std::uint32_t WczytajLicznik15(TStrumien& strumien);
    static std::uint32_t WczytajLicznik30(TStrumien& strumien);
    static std::uint32_t WczytajLicznik31(TStrumien& strumien);
    static void WczytajAnsiString(TStrumien& strumien, std::string& bajty, TOdczytywaczDanych* odczytywacz);
    // UTF-8, or Windows-1250 when the reader says so.
    static void WczytajWideString(TStrumien& strumien, std::u16string& tekst, TOdczytywaczDanych* odczytywacz);
    static void WczytajWideString(TStrumien& strumien, TTekstPola& tekst, TOdczytywaczDanych* odczytywacz);
    // UTF-8 always.
    static void WczytajUtf8(TStrumien& strumien, std::u16string& tekst, TOdczytywaczDanych* odczytywacz);
    static void WczytajUtf8(TStrumien& strumien, TTekstPola& tekst, TOdczytywaczDanych* odczytywacz);

    // Reads the count of elements of which each takes at least `bajtowNaElement` bytes of the stream, and checks it
    // against the bytes left when the stream can tell. ZTException for a count that cannot be true.
    std::uint32_t WczytajIleElementow(TStrumien& strumien, std::uint32_t bajtowNaElement);
    // Checks the length of a text about to be read against the limits.
    void SprawdzTekst(std::uint32_t dlugosc);
    // Counts memory that the read takes, roughly. ZTException above the limit.
    void ZuzyjPamiec(std::int64_t bajty) {
        zuzyte_ += bajty;
        if (zuzyte_ > limity_.pamiec)
            BladLimitu(u"pamięć w bajtach", limity_.pamiec);
    }

    [[nodiscard]] const TLimityOdczytu& Limity() const noexcept { return limity_; }
    [[nodiscard]] std::size_t IleObiektow() const noexcept { return OdczObiekty.size(); }

    bool FOdczytANSI;
    bool BladNieznanejKlasy = false; // an unknown class name in a collection is an error; else the entry is passed over
    TLicznikZagniezdzenia Zagniezdzenie{true};

  protected:
    [[noreturn]] static void BladLimitu(std::u16string_view limit, std::int64_t wartosc);

    std::vector<TObiektBazowy*> OdczObiekty;
    struct TWpisRef {
        TPole* pole; // null: it died
        bool lista;
        const TKlasa* klasa; // declared class of the target; null: any
        std::size_t od;      // its numbers, in Numery
        std::size_t ile;
    };
    std::vector<TWpisRef> OdczRef;
    std::vector<std::uint32_t> Numery;

  private:
    friend class TObiektBazowy;

    void ZgubPole(const TPole& pole) noexcept override;
    [[nodiscard]] TObiektBazowy* ObiektONumerze(std::uint32_t numer) const noexcept;

    TLimityOdczytu limity_;
    std::int64_t zuzyte_ = 0;
    bool kazdePole_ = true;
    std::size_t ostatniObiekt_ = 0; // places of those that died last
    std::size_t ostatniRef_ = 0;
};

} // namespace ztok
