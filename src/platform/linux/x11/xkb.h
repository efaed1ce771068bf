#pragma once

// xcb's header of the XKB extension has a member named `explicit`, so C++ cannot read it as it stands.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
