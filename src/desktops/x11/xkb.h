#pragma once

// The header of the X keyboard extension names a field with a word that C++ reserves.
#define explicit explicitComponents
#include <xcb/xkb.h>
#undef explicit
