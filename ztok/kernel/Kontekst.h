// Adds context to an exception that passes by.
#pragma once

#include <exception>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "ztok/platform/Kodowania.h"
#include "ztok/platform/Wyjatki.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {

// Runs `dzialanie`. An exception of the library gets the message that `kontekst` makes of its own, unless it has
// context already, and is raised again; a foreign one is wrapped, nested, in a ZTException. Out of memory passes as it
// is.
template <class F, class K> void ZKontekstem(F&& dzialanie, K&& kontekst) {
    try {
        std::forward<F>(dzialanie)();
    } catch (EWyjatek& e) {
        if (!e.MaKontekst()) {
            try {
                e.DodajKontekst(kontekst(e.Komunikat()));
            } catch (const std::bad_alloc&) { // NOLINT(bugprone-empty-catch): the error is told without its context
            }
        }
        throw;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& e) {
        ZTException opakowany(u"");
        opakowany.DodajKontekst(kontekst(Utf16ZUtf8(e.what())));
        std::throw_with_nested(opakowany);
    }
}

} // namespace ztok
