// platform/device/sdk/winuser.h - stands before the desktop's header: a handheld marks the indexes of system colours,
// by which it tells an index from a brush.
#pragma once

#include_next <winuser.h>

#undef COLOR_WINDOW
#define COLOR_WINDOW (5 | 0x40000000)
