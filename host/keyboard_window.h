// host/keyboard_window.h - the on-screen keyboard that the "Keyboard" buttons ask for.
#pragma once

#include "platform/system.h"

// Shows the keyboard at `place` (screen coordinates of the monitor) for the dialog that `window` belongs to. Its keys
// go to whatever has the focus there; it never takes the focus itself, and it goes with the dialog.
void RaiseKeyboard(HWND window, const RECT& place, int scale);
void LowerKeyboard();
