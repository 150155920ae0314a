// Conversions of text by ICU and iconv.
#include <memory>

#include <iconv.h>
#include <unicode/ucnv.h>
#include <unicode/ustring.h>

#include "pomiary/Grupy.h"
#include "ztok/platform/Kodowania.h"

namespace pomiary {

namespace {

void DodajIcu(TPomiary& pomiary, std::string_view rodzaj, TTekstKodowany& t) {
    const auto pojemnosc = static_cast<std::int32_t>(t.wynik.size());
    const auto bajtow = static_cast<std::int32_t>(t.bajty.size());
    const auto znakow = static_cast<std::int32_t>(t.tekst.size());
    if (t.strona == ztok::StronaUtf8) { // its functions for UTF-8 alone, the faster ones
        DodajKodowanie(
            pomiary, rodzaj, kIcu, t,
            [&t, pojemnosc, znakow] {
                UErrorCode blad = U_ZERO_ERROR;
                std::int32_t ile = 0;
                u_strToUTF8(t.WynikBajty(), 2 * pojemnosc, &ile, t.tekst.data(), znakow, &blad);
                return static_cast<std::size_t>(ile);
            },
            [&t, pojemnosc, bajtow] {
                UErrorCode blad = U_ZERO_ERROR;
                std::int32_t ile = 0;
                u_strFromUTF8(t.wynik.data(), pojemnosc, &ile, t.bajty.data(), bajtow, &blad);
                return static_cast<std::size_t>(ile);
            });
        return;
    }
    UErrorCode blad = U_ZERO_ERROR;
    const std::shared_ptr<UConverter> konwerter(ucnv_open("windows-1250", &blad), &ucnv_close);
    DodajKodowanie(
        pomiary, rodzaj, kIcu, t,
        [&t, konwerter, pojemnosc, znakow] {
            UErrorCode b = U_ZERO_ERROR;
            return static_cast<std::size_t>(
                ucnv_fromUChars(konwerter.get(), t.WynikBajty(), 2 * pojemnosc, t.tekst.data(), znakow, &b));
        },
        [&t, konwerter, pojemnosc, bajtow] {
            UErrorCode b = U_ZERO_ERROR;
            return static_cast<std::size_t>(
                ucnv_toUChars(konwerter.get(), t.wynik.data(), pojemnosc, t.bajty.data(), bajtow, &b));
        });
}

// Bytes that iconv writes into the result.
std::size_t Iconv(iconv_t konwerter, const void* od, std::size_t bajtow, std::u16string& wynik) {
    char* skad = static_cast<char*>(const_cast<void*>(od));
    char* dokad = reinterpret_cast<char*>(wynik.data());
    std::size_t wolne = 2 * wynik.size();
    iconv(konwerter, nullptr, nullptr, nullptr, nullptr);
    iconv(konwerter, &skad, &bajtow, &dokad, &wolne);
    return 2 * wynik.size() - wolne;
}

void DodajIconv(TPomiary& pomiary, std::string_view rodzaj, TTekstKodowany& t) {
    const char* const strona = t.strona == ztok::StronaUtf8 ? "UTF-8" : "CP1250";
    const std::shared_ptr<void> naBajty(iconv_open(strona, "UTF-16LE"), &iconv_close);
    const std::shared_ptr<void> zBajtow(iconv_open("UTF-16LE", strona), &iconv_close);
    DodajKodowanie(
        pomiary, rodzaj, kIconv, t,
        [&t, naBajty] { return Iconv(naBajty.get(), t.tekst.data(), 2 * t.tekst.size(), t.wynik); },
        [&t, zBajtow] { return Iconv(zBajtow.get(), t.bajty.data(), t.bajty.size(), t.wynik) / 2; });
}

} // namespace

void DodajObceKodowania(TPomiary& pomiary, std::string_view rodzaj, TTekstKodowany& tekst) {
    DodajIcu(pomiary, rodzaj, tekst);
    DodajIconv(pomiary, rodzaj, tekst);
}

} // namespace pomiary
