// host/frame_window.h - the window whose client area is the handheld's screen.
#pragma once

#include "platform/system.h"

// A frame, not yet shown, with a client area of exactly that size. Null on failure.
HWND CreateFrame(SIZE screen);

// Starts the refresh cycle and the timers that the options ask for, and does what they want done at the start.
void StartFrame();
