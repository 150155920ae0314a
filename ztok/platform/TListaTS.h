// List with a lock of its own.
#pragma once

#include <utility>
#include <vector>

#include "ztok/platform/TSekcjaKrytyczna.h"

namespace ztok {

// The elements are reached through the lock only:
//     auto elementy = lista.LockList();
//     elementy->push_back(x);
// and the lock is given back when what LockList returned goes out of scope. A thread may lock a list again while it
// holds it, but should not change it through both.
template <class T> class TListaTS {
  public:
    class TDostep {
      public:
        explicit TDostep(TListaTS& lista) noexcept : lista_(lista), blokada_(lista.sekcja_) {}
        std::vector<T>* operator->() const noexcept { return &lista_.elementy_; }
        std::vector<T>& operator*() const noexcept { return lista_.elementy_; }

      private:
        TListaTS& lista_;
        TBlokada blokada_;
    };

    [[nodiscard]] TDostep LockList() noexcept { return TDostep(*this); }

    // Appends an element.
    void Add(T element) { LockList()->push_back(std::move(element)); }

    // Removes the first element equal to the given one; whether there was one.
    bool Remove(const T& element) {
        const TDostep elementy = LockList();
        for (auto i = elementy->begin(); i != elementy->end(); ++i) {
            if (*i == element) {
                elementy->erase(i);
                return true;
            }
        }
        return false;
    }

    // The elements as they are now, for work that must not hold the lock.
    [[nodiscard]] std::vector<T> Kopia() { return *LockList(); }

  private:
    TSekcjaKrytyczna sekcja_;
    std::vector<T> elementy_;
};

} // namespace ztok
