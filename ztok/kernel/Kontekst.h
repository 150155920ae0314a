// Adds context to an exception that passes by.
#pragma once

#include <exception>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "ztok/platform/Kodowania.h"
#include "ztok/platform/Wyjatki.h"
#include "ztok/util/ZTBledy.h"

namespace ztok {

// The message that `kontekst` makes of the exception, or of its message.
template <class K> std::u16string KomunikatZKontekstem(K&& kontekst, const EWyjatek& e) {
    if constexpr (std::is_invocable_v<K, const EWyjatek&>)
        return std::forward<K>(kontekst)(e);
    else
        return std::forward<K>(kontekst)(e.Komunikat());
}

// Runs `dzialanie`. An exception of the library gets the message that `kontekst` makes of its own, unless it has
// context already or that message is empty, and is raised again; a foreign one is wrapped, nested, in a ZTException.
// Out of memory passes as it is.
template <class F, class K> void ZKontekstem(F&& dzialanie, K&& kontekst) {
    try {
        std::forward<F>(dzialanie)();
    } catch (EWyjatek& e) {
        if (!e.MaKontekst()) {
            try {
                if (const std::u16string komunikat = KomunikatZKontekstem(kontekst, e); !komunikat.empty())
                    e.DodajKontekst(komunikat);
            } catch (const std::bad_alloc&) { // NOLINT(bugprone-empty-catch): the error is told without its context
            }
        }
        throw;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& e) {
        ZTException opakowany(Utf16ZUtf8(e.what()));
        if (const std::u16string komunikat = KomunikatZKontekstem(kontekst, opakowany); !komunikat.empty())
            opakowany.DodajKontekst(komunikat);
        std::throw_with_nested(opakowany);
    }
}

} // namespace ztok
