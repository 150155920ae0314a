// The controller itself: TKontroler.
#pragma once

#include "ztok/repository/Kontroler.h"
