#include "ztok/kernel/TObiektTS.h"

namespace ztok {

ZTOK_KLASA_DEF(TObiektTS, TObiekt)
ZTOK_KLASA_DEF(TObiektITS, TObiekt)

TObiektTS::TObiektTS(TObiektBazowy* wlasciciel) : TObiekt(wlasciciel) {}

// The content goes here, while the section still lives.
TObiektTS::~TObiektTS() { DokonczZycie(); }

void TObiektTS::TworzSekcjeKrytyczna() {}
void TObiektTS::UsunSekcjeKrytyczna() {}
void TObiektTS::ZablokujObiekt() const { sekcja_.Wejdz(); }
void TObiektTS::OdblokujObiekt() const { sekcja_.Wyjdz(); }

TObiektITS::~TObiektITS() { DokonczZycie(); }

void TObiektITS::ZablokujObiekt() const {
    if (FRodzic != nullptr)
        FRodzic->Zablokuj();
}

void TObiektITS::OdblokujObiekt() const {
    if (FRodzic != nullptr)
        FRodzic->OdblokujObiekt();
}

} // namespace ztok
