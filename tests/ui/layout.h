// tests/ui/layout.h - whether a dialog is laid out so that a person can read and reach all of it.
#pragma once

#include "platform/controls.h"

namespace ui {

// Fails unless the dialog lies on the frame's screen and below its taskbar, every control lies within the dialog, no
// two controls overlap (but group frames, which go around others, and up-down arrows), and every label and button shows
// its whole text. `cutControl` is one that may be cut at its right or lower edge.
void ExpectReadable(HWND dialog, HWND frame, int cutControl = 0);

}  // namespace ui
