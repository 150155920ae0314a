// Children that no list and no field holds.
#pragma once

namespace ztok {

class TObiektBazowy;

// A child made with an owner that does not hold it is known here until somebody holds it, so that its parent, when it
// dies first, can make it an orphan. Any thread.
class TLuzneDzieci {
  public:
    // std::bad_alloc: nothing has changed.
    static void Dopisz(TObiektBazowy& dziecko, TObiektBazowy& rodzic);
    static void Wypisz(TObiektBazowy& dziecko, const TObiektBazowy& rodzic) noexcept;
    // The children of a parent that dies have none.
    static void Osieroc(TObiektBazowy& rodzic) noexcept;
    // The end of the library.
    static void Zwolnij() noexcept;
};

} // namespace ztok
