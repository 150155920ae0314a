// The controller's interface and the access to it: IKontroler, IKontrolowany, Kontroler.
#pragma once

#include "ztok/repository/Kontroler.h"
