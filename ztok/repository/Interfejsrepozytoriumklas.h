// The repository's interface and the access to it: IRepozytoriumKlas, RepozytoriumKlas, RKDajUchwyt.
#pragma once

#include "ztok/repository/Repozytorium.h"
