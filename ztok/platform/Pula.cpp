#include "ztok/platform/Pula.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <string_view>
#include <utility>

#include "ztok/platform/PulaWnetrze.h"

namespace ztok {

namespace pula {

// Head of a slab; the blocks follow, all of one size.
struct alignas(64) TPlyta {
    TPlyta* nastepna;         // of all slabs
    TPlyta* czesciowa;        // of the slabs with blocks never given out that no thread cuts from
    std::uint8_t* gora;       // first block never given out; stale while a thread cuts from the slab
    std::uint32_t bajtyBloku; // size of a block
    std::uint32_t wolne;      // free blocks, counted when memory is given back
    bool krojona;             // a thread cuts from it
    bool oddawana;            // holds no block in use

    [[nodiscard]] std::uint8_t* Poczatek() noexcept { return reinterpret_cast<std::uint8_t*>(this + 1); }
    [[nodiscard]] std::uint8_t* Koniec() noexcept {
        return Poczatek() + (RozmiarPlyty - sizeof(TPlyta)) / bajtyBloku * bajtyBloku;
    }
    [[nodiscard]] std::uint32_t Wydane(const std::uint8_t* doGory) noexcept {
        return static_cast<std::uint32_t>(doGory - Poczatek()) / bajtyBloku;
    }
};

namespace {

// Everything that threads share. Nothing here has a destructor: objects may be freed until the very end.
constinit TPulaWatku* watki = nullptr;
constinit TPlyta* plyty = nullptr;
constinit TPlyta* czesciowe[IleRozmiarow] = {};
constinit TWolny* paczki[IleRozmiarow] = {};
constinit std::atomic<std::int64_t> pozaPula{0}; // blocks from malloc

class TBlokadaPuli {
  public:
    TBlokadaPuli() noexcept { Zablokuj(); }
    TBlokadaPuli(const TBlokadaPuli&) = delete;
    TBlokadaPuli& operator=(const TBlokadaPuli&) = delete;
    ~TBlokadaPuli() { Odblokuj(); }
};

// Bytes of a full magazine: about half a slab.
constexpr std::size_t BajtyMagazynka = RozmiarPlyty / 2;

constexpr std::uint32_t PojemnoscMagazynka(std::size_t nr) noexcept {
    return static_cast<std::uint32_t>(BajtyMagazynka / ((nr + 1) * Ziarno));
}

TPlyta* PlytaBloku(TWolny* blok) noexcept {
    return reinterpret_cast<TPlyta*>(reinterpret_cast<std::uintptr_t>(blok) & ~(std::uintptr_t{RozmiarPlyty} - 1));
}

void* ZMalloc(std::size_t rozmiar) {
    void* blok = std::malloc(rozmiar);
    if (blok == nullptr)
        throw std::bad_alloc();
    pozaPula.fetch_add(1, std::memory_order_relaxed);
    return blok;
}

// --- the common store; each of these under the lock ---

void UstawIleWPaczce(std::size_t nr, TWolny* paczka, std::uint32_t ile) noexcept {
    if (TWolny* drugi = paczka->Nastepny(); drugi != nullptr)
        drugi->UstawPaczke(nr, reinterpret_cast<TWolny*>(std::uintptr_t{ile}));
}

std::uint32_t IleWPaczce(std::size_t nr, const TWolny* paczka) noexcept {
    TWolny* const drugi = paczka->Nastepny();
    return drugi == nullptr ? 1U : static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(drugi->Paczka(nr)));
}

void OdlozPaczke(std::size_t nr, TWolny* paczka, std::uint32_t ile) noexcept {
    if (paczka == nullptr)
        return;
    UstawIleWPaczce(nr, paczka, ile);
    paczka->UstawPaczke(nr, paczki[nr]);
    paczki[nr] = paczka;
}

// Takes the slab from the thread that cuts from it.
void OdlozPlyte(std::size_t nr, TRozmiar& r) noexcept {
    if (TPlyta* plyta = r.plyta; plyta != nullptr) {
        plyta->gora = r.gora.load(std::memory_order_relaxed);
        plyta->krojona = false;
        if (plyta->gora != r.koniec) {
            plyta->czesciowa = czesciowe[nr];
            czesciowe[nr] = plyta;
        }
    }
    r.plyta = nullptr;
    r.gora.store(nullptr, std::memory_order_relaxed);
    r.koniec = nullptr;
}

void OdlozWszystko(TPulaWatku& pula) noexcept {
    for (std::size_t nr = 0; nr < IleRozmiarow; ++nr) {
        TRozmiar& r = pula.rozmiary[nr];
        OdlozPaczke(nr, r.zapas.load(std::memory_order_relaxed), r.magazynek);
        OdlozPaczke(nr, r.wolne, r.ile.load(std::memory_order_relaxed));
        r.zapas.store(nullptr, std::memory_order_relaxed);
        r.wolne = nullptr;
        r.ile.store(0, std::memory_order_relaxed);
        OdlozPlyte(nr, r);
    }
}

void Wypisz(TPulaWatku* pula) noexcept {
    (pula->poprzednia != nullptr ? pula->poprzednia->nastepna : watki) = pula->nastepna;
    if (pula->nastepna != nullptr)
        pula->nastepna->poprzednia = pula->poprzednia;
}

TPulaWatku* NowaPulaWatku() noexcept {
    void* pamiec = std::malloc(sizeof(TPulaWatku));
    if (pamiec == nullptr)
        return nullptr;
    auto* pula = ::new (pamiec) TPulaWatku{};
    for (std::size_t nr = 0; nr < IleRozmiarow; ++nr)
        pula->rozmiary[nr].magazynek = PojemnoscMagazynka(nr);
    if (!UstawPuleWatku(pula)) {
        std::free(pamiec);
        return nullptr;
    }
    pula->nastepna = watki;
    if (watki != nullptr)
        watki->poprzednia = pula;
    watki = pula;
    return pula;
}

// Gives the thread a magazine or a slab with room; false when there is no memory.
bool Uzupelnij(std::size_t nr, TRozmiar& r) noexcept {
    if (TWolny* paczka = paczki[nr]; paczka != nullptr) {
        paczki[nr] = paczka->Paczka(nr);
        r.ile.store(IleWPaczce(nr, paczka), std::memory_order_relaxed);
        r.wolne = paczka;
        return true;
    }
    OdlozPlyte(nr, r);
    TPlyta* plyta = czesciowe[nr];
    if (plyta != nullptr) {
        czesciowe[nr] = plyta->czesciowa;
    } else {
        void* pamiec = PrzydzielPlyte();
        if (pamiec == nullptr)
            return false;
        PrzeszukujWyciek(pamiec, RozmiarPlyty, true);
        plyta = ::new (pamiec) TPlyta{};
        plyta->bajtyBloku = static_cast<std::uint32_t>((nr + 1) * Ziarno);
        plyta->gora = plyta->Poczatek();
        Zatruj(plyta->gora, RozmiarPlyty - sizeof(TPlyta));
        plyta->nastepna = plyty;
        plyty = plyta;
    }
    plyta->krojona = true;
    r.plyta = plyta;
    r.koniec = plyta->Koniec();
    r.gora.store(plyta->gora, std::memory_order_relaxed);
    return true;
}

// Takes the blocks of slabs that are given back out of the store of one size, in one walk that keeps the order.
void PrzesiejPaczki(std::size_t nr) noexcept {
    TWolny* paczka = std::exchange(paczki[nr], nullptr);
    TWolny* poprzednia = nullptr;
    TWolny* pierwszy = nullptr;
    TWolny* ostatni = nullptr;
    std::uint32_t ile = 0;
    const auto zamknij = [&] {
        if (pierwszy == nullptr)
            return;
        ostatni->UstawNastepny(nullptr);
        UstawIleWPaczce(nr, pierwszy, ile);
        pierwszy->UstawPaczke(nr, nullptr);
        if (poprzednia == nullptr)
            paczki[nr] = pierwszy;
        else
            poprzednia->UstawPaczke(nr, pierwszy);
        poprzednia = std::exchange(pierwszy, nullptr);
        ile = 0;
    };
    while (paczka != nullptr) {
        TWolny* const nastepnaPaczka = paczka->Paczka(nr);
        for (TWolny *blok = paczka, *nastepny = nullptr; blok != nullptr; blok = nastepny) {
            nastepny = blok->Nastepny();
            if (PlytaBloku(blok)->oddawana)
                continue;
            if (pierwszy == nullptr)
                pierwszy = blok;
            else
                ostatni->UstawNastepny(blok);
            ostatni = blok;
            if (++ile == PojemnoscMagazynka(nr))
                zamknij();
        }
        paczka = nastepnaPaczka;
    }
    zamknij();
}

void OddajWolnePlyty() noexcept {
    for (TPlyta* plyta = plyty; plyta != nullptr; plyta = plyta->nastepna)
        plyta->wolne = 0;
    for (std::size_t nr = 0; nr < IleRozmiarow; ++nr)
        for (TWolny* paczka = paczki[nr]; paczka != nullptr; paczka = paczka->Paczka(nr))
            for (TWolny* blok = paczka; blok != nullptr; blok = blok->Nastepny())
                ++PlytaBloku(blok)->wolne;
    bool oddawane[IleRozmiarow] = {};
    for (TPlyta* plyta = plyty; plyta != nullptr; plyta = plyta->nastepna) {
        plyta->oddawana = !plyta->krojona && plyta->wolne == plyta->Wydane(plyta->gora);
        if (plyta->oddawana)
            oddawane[plyta->bajtyBloku / Ziarno - 1] = true;
    }
    for (std::size_t nr = 0; nr < IleRozmiarow; ++nr) {
        if (!oddawane[nr])
            continue;
        PrzesiejPaczki(nr);
        for (TPlyta** miejsce = &czesciowe[nr]; *miejsce != nullptr;) {
            if ((*miejsce)->oddawana)
                *miejsce = (*miejsce)->czesciowa;
            else
                miejsce = &(*miejsce)->czesciowa;
        }
    }
    for (TPlyta** miejsce = &plyty; *miejsce != nullptr;) {
        TPlyta* const plyta = *miejsce;
        if (plyta->oddawana) {
            *miejsce = plyta->nastepna;
            Odtruj(plyta, RozmiarPlyty); // its addresses may become anything
            PrzeszukujWyciek(plyta, RozmiarPlyty, false);
            ZwolnijPlyte(plyta);
        } else {
            miejsce = &plyta->nastepna;
        }
    }
}

} // namespace

void* PrzydzielInaczej(TPulaWatku* pula, std::size_t rozmiar) {
    const std::size_t nr = (rozmiar - 1) / Ziarno;
    if (nr >= IleRozmiarow || BezPuli())
        return ZMalloc(rozmiar);
    if (pula != nullptr) {
        if (pula->nadzor != nullptr) {
            if (!pula->nadzor->przydziel(rozmiar))
                throw std::bad_alloc();
            return Przydziel(pula->zaplecze, rozmiar);
        }
        TRozmiar& r = pula->rozmiary[nr];
        if (TWolny* zapas = r.zapas.load(std::memory_order_relaxed); zapas != nullptr) {
            r.zapas.store(nullptr, std::memory_order_relaxed);
            r.ile.store(r.magazynek, std::memory_order_relaxed);
            r.wolne = zapas;
            return Przydziel(pula, rozmiar);
        }
    }
    {
        const TBlokadaPuli blokada;
        if (pula == nullptr)
            pula = NowaPulaWatku();
        if (pula == nullptr || !Uzupelnij(nr, pula->rozmiary[nr]))
            throw std::bad_alloc();
    }
    return Przydziel(pula, rozmiar);
}

void ZwolnijInaczej(TPulaWatku* pula, void* blok, std::size_t rozmiar) noexcept {
    const std::size_t nr = (rozmiar - 1) / Ziarno;
    if (nr >= IleRozmiarow || BezPuli()) {
        std::free(blok);
        pozaPula.fetch_sub(1, std::memory_order_relaxed);
        return;
    }
    auto* wolny = static_cast<TWolny*>(blok);
    if (pula != nullptr && pula->nadzor != nullptr) {
        pula->nadzor->zwolnij(rozmiar);
        return Zwolnij(pula->zaplecze, blok, rozmiar);
    }
    if (pula == nullptr) {
        const TBlokadaPuli blokada;
        // A thread that has no pool of its own frees its first block, or frees after its end.
        pula = NowaPulaWatku();
        if (pula == nullptr) {
            wolny->UstawNastepny(nullptr);
            OdlozPaczke(nr, wolny, 1);
            Zatruj(blok, (nr + 1) * Ziarno);
            return;
        }
    }
    TRozmiar& r = pula->rozmiary[nr];
    if (r.ile.load(std::memory_order_relaxed) == r.magazynek) {
        if (TWolny* zapas = r.zapas.load(std::memory_order_relaxed); zapas != nullptr || r.plyta != nullptr) {
            const TBlokadaPuli blokada;
            OdlozPaczke(nr, zapas, r.magazynek);
            // The slab goes too: blocks in the cache come before fresh ones, and now there are enough.
            OdlozPlyte(nr, r);
        }
        r.zapas.store(r.wolne, std::memory_order_relaxed);
        r.wolne = nullptr;
        r.ile.store(0, std::memory_order_relaxed);
    }
    Zwolnij(pula, wolny, rozmiar);
}

void* ZmienRozmiarDuzego(void* blok, std::size_t rozmiar) {
    void* nowy = std::realloc(blok, rozmiar);
    if (nowy == nullptr)
        throw std::bad_alloc();
    return nowy;
}

void NadzorujPule(const TNadzorPuli* nadzor) {
    if (BezPuli())
        return;
    const TBlokadaPuli blokada;
    TPulaWatku* pula = PulaTegoWatku();
    if (pula != nullptr && pula->nadzor != nullptr) {
        if (nadzor != nullptr) {
            pula->nadzor = nadzor;
        } else if (UstawPuleWatku(pula->zaplecze)) {
            std::free(pula);
        }
        return;
    }
    if (nadzor == nullptr)
        return;
    if (pula == nullptr)
        pula = NowaPulaWatku();
    void* pamiec = pula == nullptr ? nullptr : std::malloc(sizeof(TPulaWatku));
    if (pamiec == nullptr)
        throw std::bad_alloc();
    auto* front = ::new (pamiec) TPulaWatku{};
    front->nadzor = nadzor;
    front->zaplecze = pula;
    if (!UstawPuleWatku(front)) {
        std::free(front);
        throw std::bad_alloc();
    }
}

bool BezPuli() noexcept {
    if constexpr (!kPamiecZatruta)
        return false;
    static const bool bez = [] {
        // NOLINTNEXTLINE(concurrency-mt-unsafe): read once, and the library changes no environment
        const char* pula = std::getenv("ZTOK_PULA");
        return pula != nullptr && std::string_view(pula) == "malloc";
    }();
    return bez;
}

void ZakonczWatek(TPulaWatku* pula) noexcept {
    const TBlokadaPuli blokada;
    OdlozWszystko(*pula);
    Wypisz(pula);
    std::free(pula);
}

} // namespace pula

void* PulaPrzydziel(std::size_t rozmiar) { return pula::Przydziel(rozmiar); }

void PulaZwolnij(void* blok, std::size_t rozmiar) noexcept { pula::Zwolnij(blok, rozmiar); }

void OddajPamiecPuli() noexcept {
    const pula::TBlokadaPuli blokada;
    if (pula::TPulaWatku* wlasna = pula::PulaTegoWatku(); wlasna != nullptr)
        pula::OdlozWszystko(wlasna->nadzor != nullptr ? *wlasna->zaplecze : *wlasna);
    pula::OddajWolnePlyty();
}

std::int64_t PulaZajete() noexcept {
    using namespace pula;
    const TBlokadaPuli blokada;
    std::int64_t zajete = pozaPula.load(std::memory_order_relaxed);
    for (TPlyta* plyta = plyty; plyta != nullptr; plyta = plyta->nastepna)
        zajete += plyta->Wydane(plyta->gora);
    for (std::size_t nr = 0; nr < IleRozmiarow; ++nr)
        for (TWolny* paczka = paczki[nr]; paczka != nullptr; paczka = paczka->Paczka(nr))
            zajete -= IleWPaczce(nr, paczka);
    for (const TPulaWatku* watek = watki; watek != nullptr; watek = watek->nastepna) {
        for (const TRozmiar& r : watek->rozmiary) {
            if (r.plyta != nullptr)
                zajete += r.plyta->Wydane(r.gora.load(std::memory_order_relaxed)) - r.plyta->Wydane(r.plyta->gora);
            zajete -= r.ile.load(std::memory_order_relaxed);
            if (r.zapas.load(std::memory_order_relaxed) != nullptr)
                zajete -= r.magazynek;
        }
    }
    return zajete;
}

ZTOK_BEZ_ASAN void DlaBlokowPuli(void (*dzialanie)(void* kontekst, const void* pierwszeSlowo) noexcept,
                                 void* kontekst) noexcept {
    using namespace pula;
    const TBlokadaPuli blokada;
    for (TPlyta* plyta = plyty; plyta != nullptr; plyta = plyta->nastepna) {
        if (plyta->bajtyBloku == Ziarno)
            continue;
        const std::uint8_t* doGory = plyta->gora;
        for (const TPulaWatku* watek = watki; watek != nullptr && plyta->krojona; watek = watek->nastepna)
            if (const TRozmiar& r = watek->rozmiary[plyta->bajtyBloku / Ziarno - 1]; r.plyta == plyta)
                doGory = r.gora.load(std::memory_order_relaxed);
        for (const std::uint8_t* blok = plyta->Poczatek(); blok < doGory; blok += plyta->bajtyBloku)
            dzialanie(kontekst, *reinterpret_cast<const void* const*>(blok));
    }
}

void ZamknijPule() noexcept {
    using namespace pula;
    // At the end of a Windows process the other threads are gone, one of them perhaps with the lock: nothing needs to
    // be freed then.
    if (!SprobujZablokowac())
        return;
    ZwolnijMiejscaWatkow();
    while (watki != nullptr) {
        TPulaWatku* const pula = watki;
        OdlozWszystko(*pula);
        Wypisz(pula);
        std::free(pula);
    }
    OddajWolnePlyty();
    Odblokuj();
}

} // namespace ztok
