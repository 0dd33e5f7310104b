// host/taskbar_window.h - the bar along the top: "Start" and the clock. The item paints its status icon over it.
#pragma once

#include "platform/system.h"

// Null on failure; a child of the frame.
HWND CreateTaskbar(HWND frame, const RECT& place, int scale);

// Redraws the clock if the minute has changed since it was drawn. The rest of the bar stays, and with it whatever was
// painted over it.
void UpdateClock(HWND taskbar);
