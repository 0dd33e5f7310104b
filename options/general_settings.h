// options/general_settings.h - taskbar icon, its place, and the hour format, taken from the page into state and
// registry.
#pragma once

#include "platform/system.h"

// Number of the text by wcstol, limited to 0..639. `differs` tells whether the number as typed is not the place in
// force.
struct XLocationChoice {
    uint32_t place;
    bool differs;
};
XLocationChoice ReadXLocation(const wchar_t* text);

// Take effect at once and are written only when they differ from what is in force.
void SaveXLocation(uint32_t place);
void SaveShowTaskbarIcon(bool show);
void SaveHourFormat(bool amPm);
