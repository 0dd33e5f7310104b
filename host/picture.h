// host/picture.h - what the screen shows, as pixels: the frame's client area with the dialogs that lie over it.
#pragma once

#include "platform/system.h"

#include <vector>

struct Picture {
    int width = 0;
    int height = 0;
    std::vector<uint32_t> pixels;  // 0x00RRGGBB, rows from the top

    COLORREF At(int x, int y) const;  // CLR_INVALID outside
};

// The client area of one window with its children; empty on failure. Pending paints are done first.
Picture TakePicture(HWND window);

// The client area of the frame and, at their places, every other visible window of its thread, lowest first. Grows
// beyond the frame where a dialog hangs out of it at the right or at the bottom.
Picture TakeScreenPicture(HWND frame);

// Writes an uncompressed 32-bit bitmap file.
bool SavePicture(const Picture& picture, const wchar_t* file);
