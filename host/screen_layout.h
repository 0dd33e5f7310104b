// host/screen_layout.h - where the parts of the Today screen stand, in pixels of the frame's client area.
#pragma once

#include "platform/system.h"

struct ScreenLayout {
    int scale;  // 2 on a high-resolution screen, else 1
    RECT taskbar;
    RECT date;
    RECT strip;
    RECT bar;  // the soft keys at the bottom
    RECT leftKey;
    RECT rightKey;
    RECT keyboard;  // lies above the bar while it is up
};

ScreenLayout ArrangeScreen(SIZE screen, int stripHeight);
