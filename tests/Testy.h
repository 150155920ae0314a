// What nearly every test of values, fields and streams uses.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/Bledy.h"
#include "tests/StrumienieTestowe.h"
#include "tests/TabeleTestow.h"
#include "tests/Wartosci.h"
#include "ztok/kernel/Typypolbazowe.h"
#include "ztok/platform/FormatKomunikatu.h"
#include "ztok/platform/Kodowania.h"
#include "ztok/platform/LiczbyTekst.h"
#include "ztok/platform/TObiektLiczony.h"
#include "ztok/platform/TUstawieniaFormatu.h"
#include "ztok/util/ZTBledy.h"
