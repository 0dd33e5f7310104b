// platform/screen.h - the screen that the item lives on: the handheld's display, or the Today host's frame on a
// desktop.
#pragma once

#include "platform/system.h"

namespace platform {

// Width and height in pixels.
SIZE ScreenSize();

// A device context that draws over everything on the screen, taskbar included; (0, 0) is the screen's top left corner.
// Null on failure.
HDC GetScreenContext();
void ReleaseScreenContext(HDC context);

// The taskbar (window class "HHTaskBar"), or null when there is none.
HWND FindTaskbar();

// MoveWindow without repainting, in coordinates of the screen.
void MoveDialog(HWND dialog, int x, int y, int width, int height);

}  // namespace platform
