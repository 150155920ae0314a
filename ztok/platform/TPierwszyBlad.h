// Keeps the first of several errors: for work that must go on to its end whatever fails on the way.
#pragma once

#include <exception>
#include <utility>

namespace ztok {

class TPierwszyBlad {
  public:
    // Runs the step; an exception is kept if it is the first, else dropped.
    template <class F> void Wykonaj(F&& krok) noexcept {
        try {
            std::forward<F>(krok)();
        } catch (...) {
            if (!blad_)
                blad_ = std::current_exception();
        }
    }
    // Raises the error kept, if any.
    void Rzuc() {
        if (blad_)
            std::rethrow_exception(std::exchange(blad_, nullptr));
    }

  private:
    std::exception_ptr blad_;
};

} // namespace ztok
