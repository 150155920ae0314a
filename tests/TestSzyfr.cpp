// The cipher: its core against published vectors and another library, then what the library builds on it.
#include "tests/Testy.h"

#include <atomic>

#if ZTOK_TEST_OPENSSL
#define OPENSSL_SUPPRESS_DEPRECATED
#include <openssl/blowfish.h>
#endif

#include "LosoweDrzewo.h"
#include "Watki.h"
#include "platforma/Przydzialy.h"
#include "platforma/SystemTestowy.h"
#include "ztok/util/Blowfish.h"
#include "ztok/util/Procesor.h"

using namespace ztok;

namespace {

const std::u16string nieudane = u"nie udało się odszyfrować danych.";

using strumienie::Bajty; // of hexadecimal digits
using strumienie::LosoweBajty;
using strumienie::Zawartosc;

// Each half of every block with its bytes reversed: vectors are published for big-endian words.
std::string Odwrocone(std::string bajty) {
    for (auto i = bajty.begin(); bajty.end() - i >= 4; i += 4)
        std::reverse(i, i + 4);
    return bajty;
}

TZTMemoryStream& Napelnij(TZTMemoryStream& strumien, std::string_view bajty) {
    strumien.WriteBuffer(bajty.data(), bajty.size());
    return strumien;
}

std::string Szyfr(std::string_view bajty, std::string_view klucz) {
    TZTMemoryStream strumien;
    SzyfrujStrumien(Napelnij(strumien, bajty), klucz);
    EXPECT_EQ(strumien.GetPosition(), 0);
    return Zawartosc(strumien);
}

// Blocks as they are, without padding.
std::string Bloki(const TSzyfrator& szyfrator, bool szyfruj, std::string bajty) {
    (szyfrator.*(szyfruj ? &TSzyfrator::SzyfrujBloki : &TSzyfrator::DeszyfrujBloki))(bajty.data(), bajty.size() / 8);
    return bajty;
}

// Enciphers with many other keys while it is read.
class TGadatliwy : public TZTMemoryStream {
  public:
    std::int64_t Read(void* bufor, std::int64_t ile) override {
        for (int i = 0; i < 100; ++i)
            static_cast<void>(Szyfr("x", "inny" + std::to_string(i)));
        ZwolnijSzyfratory();
        return TZTMemoryStream::Read(bufor, ile);
    }
};

// Stands first: the memory for keys still grows.
TEST(Szyfr, PamiecKluczy) {
    // No key is left in memory that goes: short ones, and a long one that is weak.
    przydzialy::Zacznij();
    przydzialy::Szukaj("lucz"); // a text that is moved from may lose its first letter
    static_cast<void>(Szyfr("x", "klucz-dluzszy-niz-krotki-tekst-6312"));
    for (int i = 0; i < 100; ++i)
        static_cast<void>(Szyfr("x", "klucz" + std::to_string(i)));
    ZwolnijSzyfratory();
    EXPECT_FALSE(przydzialy::Zakoncz().znaleziony);
    for (int i = 0; i < 300; ++i) {
        static_cast<void>(Szyfr("x", "klucz" + std::to_string(i * 7919 % 300)));
        ASSERT_LE(IleSzyfratorow(), 65U);
        ASSERT_GE(IleSzyfratorow(), 1U);
    }
    TGadatliwy gadatliwy;
    TZTMemoryStream cel;
    SzyfrujStrumien(Napelnij(gadatliwy, "tajne"), cel, "uzywany");
    EXPECT_EQ(IleSzyfratorow(), 1U);
    EXPECT_EQ(Zawartosc(cel), Szyfr("tajne", "uzywany"));
    ZwolnijSzyfratory();
    EXPECT_EQ(IleSzyfratorow(), 0U);
}

// Published by the cipher's author: key, plain text, ciphertext.
TEST(Szyfr, OgloszoneWektory) {
    for (const auto& w : testy::WczytajTabele("szyfr.tsv"))
        for (const unsigned dozwolone : {0U, unsigned{rzWszystkie}}) {
            UzywajRozszerzen(dozwolone);
            const TSzyfrator szyfrator(Bajty(w[0]));
            EXPECT_EQ(Bloki(szyfrator, true, Odwrocone(Bajty(w[1]))), Odwrocone(Bajty(w[2]))) << w.numer;
            EXPECT_EQ(Bloki(szyfrator, false, Odwrocone(Bajty(w[2]))), Odwrocone(Bajty(w[1]))) << w.numer;
        }
}

#if ZTOK_TEST_OPENSSL
TEST(Szyfr, ZgodnyZInnaBiblioteka) {
    std::mt19937 los(20261121);
    for (int proba = 0; proba < 400; ++proba) {
        const std::string klucz = LosoweBajty(los, 1 + los() % TSzyfrator::kNajdluzszyKlucz);
        const std::string jawne = LosoweBajty(los, 8 * (los() % 40));
        BF_KEY obcy;
        BF_set_key(&obcy, static_cast<int>(klucz.size()), reinterpret_cast<const unsigned char*>(klucz.data()));
        std::string oczekiwane = Odwrocone(jawne);
        for (std::size_t i = 0; i < oczekiwane.size(); i += 8) {
            auto* blok = reinterpret_cast<unsigned char*>(oczekiwane.data() + i);
            BF_ecb_encrypt(blok, blok, &obcy, BF_ENCRYPT);
        }
        const TSzyfrator szyfrator(klucz);
        ASSERT_TRUE(szyfrator.SilnyKlucz()); // with this seed
        const std::string nasze = Bloki(szyfrator, true, jawne);
        ASSERT_EQ(nasze, Odwrocone(oczekiwane)) << proba;
        ASSERT_EQ(Bloki(szyfrator, false, nasze), jawne) << proba;
    }
}
#endif

TEST(Szyfr, KazdaDlugoscWracaWszystkimiDrogami) {
    std::mt19937 los(1);
    for (std::size_t n = 0; n < 70; ++n) {
        const std::string jawne = LosoweBajty(los, n);
        const std::string klucz = LosoweBajty(los, 1 + n);
        const std::string szyfr = Szyfr(jawne, klucz);
        // The blocks hold the text, P bytes of 1, and P.
        const std::size_t p = 8 - (n + 1) % 8;
        ASSERT_EQ(Bloki(TSzyfrator(klucz), false, szyfr),
                  n == 0 ? "" : jawne + std::string(p, '\1') + static_cast<char>(p));

        // From a stream that stands at its end, to one that holds something already.
        TZTReadOnlyRawByteStream zrodlo(jawne);
        zrodlo.Seek(0, ESeek::Koniec);
        TZTMemoryStream cel;
        SzyfrujStrumien(zrodlo, Napelnij(cel, "abc"), klucz);
        ASSERT_EQ(Zawartosc(cel), "abc" + szyfr);
        TZTMemoryStream odszyfrowane;
        TZTReadOnlyRawByteStream zrodloSzyfru(szyfr);
        OdszyfrujStrumien(zrodloSzyfru, Napelnij(odszyfrowane, "abc"), klucz);
        ASSERT_EQ(Zawartosc(odszyfrowane), "abc" + jawne);
        TZTMemoryStream wMiejscu;
        OdszyfrujStrumien(Napelnij(wMiejscu, szyfr), klucz);
        ASSERT_EQ(Zawartosc(wMiejscu), jawne);
        ASSERT_EQ(wMiejscu.GetPosition(), 0);
        ASSERT_EQ(DeszyfrujTekstAnsi(SzyfrujTekstAnsi(jawne, klucz), klucz), jawne);
    }
    const std::string dwaRowne = Szyfr("abcdefghabcdefgh", "k");
    EXPECT_EQ(dwaRowne.substr(0, 8), dwaRowne.substr(8, 8));
}

// Computed by another program from another library's blocks.
TEST(Szyfr, Teksty) {
    const std::u16string tekst = u"Zażółć gęślą jaźń";
    const std::u16string szyfr = u"7D3ED396323E95FB404E6ACF384620193DA84B64C510220B390196C934D21B0D243FBC7152E8538F";
    EXPECT_EQ(SzyfrujTekst(tekst, "klucz"), szyfr);
    EXPECT_EQ(DeszyfrujTekst(szyfr, "klucz"), tekst);
    EXPECT_EQ(SzyfrujTekstAnsi("\xAF\xF3\xB3w", "klucz"), "D01F02891FEEA02F");
    EXPECT_EQ(DeszyfrujTekstAnsi("d01f02891feea02f", "klucz"), "\xAF\xF3\xB3w");
    const std::u16string polowki = u"\xD800 \xDC00\0"; // half surrogates and a zero are units like all others
    EXPECT_EQ(DeszyfrujTekst(SzyfrujTekst(polowki, ""), ""), polowki);
    EXPECT_EQ(SzyfrujTekst(u"", "k"), u"");
    EXPECT_EQ(DeszyfrujTekst(u"", "k"), u"");

    const std::u16string nieparzysty(SzyfrujTekst(u"a", "klucz"));
    const struct {
        std::u16string szyfr, blad;
    } zle[] = {
        {nieparzysty.substr(1), u"DeszyfrujTekst : Odd"},
        {u"0", u"DeszyfrujTekst : Odd"},
        {nieparzysty + u"0G", u"DeszyfrujTekst: znak 47 nie jest cyfrą szesnastkową"},
        {u"0\u0130", u"DeszyfrujTekst: znak 130 nie jest cyfrą szesnastkową"},
        {u"00", u"DeszyfrujTekst: " + nieudane},
        {u"0123456789ABCDEF", u"DeszyfrujTekst: " + nieudane},
        {szyfr.substr(0, 32), u"DeszyfrujTekst: " + nieudane},
        {u"FEAC70AEAE37F7D5", u"DeszyfrujTekst: " + nieudane}, // three bytes: no UTF-16
    };
    for (const auto& z : zle)
        EXPECT_EQ(testy::Blad<ZTException>([&] { static_cast<void>(DeszyfrujTekst(z.szyfr, "klucz")); }), z.blad);
}

// Every last byte, with everything before it as it should be, or one byte of that different.
TEST(Szyfr, ObceDaneDajaBladINiczegoNieZmieniaja) {
    const TSzyfrator szyfrator("klucz");
    for (const std::size_t ile : {8U, 16U, 24U})
        for (unsigned p = 0; p < 256; ++p)
            for (std::size_t zepsuty = 1; zepsuty <= 10 && zepsuty < ile; ++zepsuty) {
                std::string bajty(ile, '\1');
                bajty[ile - 1 - zepsuty] = '\2';
                bajty.back() = static_cast<char>(p);
                const bool dobre = p >= 1 && p <= 8 && p < ile && zepsuty > p;
                const std::string szyfr = Bloki(szyfrator, true, bajty);
                TZTMemoryStream strumien;
                const std::u16string wynik =
                    testy::Blad<ZTException>([&] { szyfrator.OdszyfrujStrumien(Napelnij(strumien, szyfr)); });
                ASSERT_EQ(wynik, dobre ? u"(no error)" : u"OdszyfrujStrumien: " + nieudane) << ile << ' ' << p;
                ASSERT_EQ(Zawartosc(strumien), dobre ? bajty.substr(0, ile - p - 1) : szyfr);
                TZTReadOnlyRawByteStream zrodlo(szyfr);
                TZTMemoryStream cel;
                ASSERT_EQ(testy::Blad<ZTException>([&] { szyfrator.OdszyfrujStrumien(zrodlo, cel); }), wynik);
                ASSERT_EQ(cel.GetSize(), dobre ? static_cast<std::int64_t>(ile - p - 1) : 0);
            }
}

// A million times a wrong key, which makes random bytes of any ciphertext: an error nearly always. What passes, and
// every fourth of the rest, is read as an object: an error or a value.
TEST(Szyfr, ZlyKlucz) {
    const int prob = ZTOK_SANITIZER ? 50000 : 1000000;
    probki::Rejestruj();
    const TSzyfrator szyfrator("zły klucz");
    const TWlasny<probki::TAdres> obiekt = Utworz<probki::TAdres>();
    std::mt19937 los(2);
    int przeszlo = 0;
    int odczytane = 0;
    for (int proba = 0; proba < prob; ++proba) {
        std::uint32_t bajty[6];
        for (std::uint32_t& slowo : bajty)
            slowo = static_cast<std::uint32_t>(los());
        TZTMemoryStream strumien;
        strumien.SetPointer(bajty, proba % 25);
        if (testy::Zglasza<ZTException>([&] { szyfrator.OdszyfrujStrumien(strumien); })) {
            if (proba % 4 != 0)
                continue;
            szyfrator.DeszyfrujBloki(bajty, static_cast<std::size_t>(proba % 25) / 8);
        } else {
            ++przeszlo;
        }
        odczytane += testy::Zglasza<EWyjatek>([&] { obiekt->WczytajZeStrumienia(strumien); }) ? 0 : 1;
    }
    EXPECT_LT(przeszlo, prob / 25 + 30); // the empty ones, and some 2^-16 of the rest
    EXPECT_GT(odczytane, 0);
}

TEST(Szyfr, StrumieniaDoOdczytuIObcejPamieciNieZmienia) {
    const std::string szyfr = Szyfr("tajne", "k");
    TZTReadOnlyRawByteStream doOdczytu(szyfr);
    EXPECT_THROW(SzyfrujStrumien(doOdczytu, "k"), ZTException);
    EXPECT_THROW(OdszyfrujStrumien(doOdczytu, "k"), ZTException);
    EXPECT_EQ(szyfr, Szyfr("tajne", "k"));
    std::string pamiec = szyfr;
    TZTMemoryStream obca;
    obca.SetPointer(pamiec.data(), 8);
    EXPECT_THROW(SzyfrujStrumien(obca, "k"), EBladZapisu);
    EXPECT_EQ(pamiec, szyfr);
    OdszyfrujStrumien(obca, "k");
    EXPECT_EQ(Zawartosc(obca), "tajne");
    SzyfrujStrumien(obca, "k"); // back into the same eight bytes
    EXPECT_EQ(pamiec, szyfr);
    strumienie::TOporny bezSeek;
    EXPECT_THROW(SzyfrujStrumien(bezSeek, obca, "k"), EWyjatek);
}

TEST(Szyfr, Klucze) {
    // Found by search, weak: the letter A makes it strong. 72 bytes leave no place for a letter.
    const TSzyfrator slaby("klucz18981");
    EXPECT_FALSE(slaby.SilnyKlucz());
    EXPECT_TRUE(TSzyfrator("klucz18981A").SilnyKlucz());
    EXPECT_EQ(Szyfr("abc", "klucz18981"), Bajty("0FA7827054B778AF"));
    const std::string bezMiejsca = "10376" + std::string(67, 'x');
    const auto blad = [](std::string_view klucz) { return testy::Blad<ZTException>([&] { TSzyfrator{klucz}; }); };
    EXPECT_EQ(blad(bezMiejsca), u"Błędny klucz szyfrowania.");
    EXPECT_EQ(blad(bezMiejsca + "y"), u"Błędny klucz szyfrowania.");
    EXPECT_EQ(blad(""), u"Błędny klucz szyfrowania.");
    const std::size_t przed = IleSzyfratorow();
    EXPECT_THROW(static_cast<void>(Szyfr("abc", bezMiejsca)), ZTException);
    EXPECT_EQ(IleSzyfratorow(), przed);
    EXPECT_EQ(Szyfr("abc", std::string(72, 'k')), Szyfr("abc", std::string(90, 'k')));
    // All of these are different keys, and the empty one has a cipher too.
    const std::string_view rozne[] = {"", "k", "K", {"k\0", 2}, {"\0k", 2}, "k1"};
    for (const std::string_view a : rozne)
        for (const std::string_view b : rozne)
            EXPECT_EQ(a == b, Szyfr("abcdefgh", a) == Szyfr("abcdefgh", b)) << a << ' ' << b;
}

TEST(SzyfrWatki, KluczeWspolneDlaWatkow) {
    std::atomic<int> bledy{0};
    testy::WWatkach(8, [&bledy](int w) {
        for (int i = 0; i < 600; ++i) {
            const std::string klucz = (i + w) % 5 == 0 ? "" : std::to_string((i * (w + 1)) % 90);
            const std::u16string tekst(static_cast<std::size_t>(i % 30), u'a');
            bledy += DeszyfrujTekst(SzyfrujTekst(tekst, klucz), klucz) != tekst;
            if (i % 100 == w)
                ZwolnijSzyfratory();
        }
    });
    EXPECT_EQ(bledy, 0);
    EXPECT_LE(IleSzyfratorow(), 65U);
    ZwolnijSzyfratory();
}

} // namespace
