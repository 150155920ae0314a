// What an action raises, as a value to compare.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "ztok/platform/Powiadomienie.h"
#include "ztok/platform/Wyjatki.h"

namespace testy {

// The message of the exception of class E that the action raises; a note when it raises none or another one.
template <class E = ztok::EWyjatek, class F> std::u16string Blad(F&& dzialanie) {
    try {
        std::forward<F>(dzialanie)();
    } catch (const ztok::EWyjatek& e) {
        const bool tejKlasy = dynamic_cast<const E*>(&e) != nullptr;
        return (tejKlasy ? u"" : u"(another class) ") + std::u16string(e.Komunikat());
    }
    return u"(no error)";
}

// Whether the action raises exactly E or a class derived from it.
template <class E, class F> bool Zglasza(F&& dzialanie) {
    try {
        std::forward<F>(dzialanie)();
    } catch (const ztok::EWyjatek& e) {
        return dynamic_cast<const E*>(&e) != nullptr;
    }
    return false;
}

// Collects the user notices of a scope.
class TPowiadomienia {
  public:
    TPowiadomienia() : poprzednia_(ztok::UstawPowiadomienie(&Przyjmij)) { Tresci().clear(); }
    TPowiadomienia(const TPowiadomienia&) = delete;
    TPowiadomienia& operator=(const TPowiadomienia&) = delete;
    ~TPowiadomienia() { ztok::UstawPowiadomienie(poprzednia_); }
    static std::vector<std::u16string>& Tresci() {
        static std::vector<std::u16string> tresci;
        return tresci;
    }

  private:
    static void Przyjmij(std::u16string_view tresc, std::u16string_view /*naglowek*/) noexcept {
        Tresci().emplace_back(tresc);
    }
    ztok::TFunPowiadomienia poprzednia_;
};

} // namespace testy
