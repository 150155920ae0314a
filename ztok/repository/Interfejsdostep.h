// The way to an object's owner: IDostep, DajInterfejsWlasciciela.
#pragma once

#include "ztok/repository/Kontroler.h"
