// What a registration of the repository is made of: handle, functions that make objects, list of registrations.
#pragma once

#include "ztok/repository/Repozytorium.h"
