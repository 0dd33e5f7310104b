// The handheld's display is the item's screen.

#include "platform/screen.h"

namespace platform {

SIZE ScreenSize() {
    return {GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
}

HDC GetScreenContext() {
    return GetDC(nullptr);
}

void ReleaseScreenContext(HDC context) {
    ReleaseDC(nullptr, context);
}

HWND FindTaskbar() {
    return FindWindowW(L"HHTaskBar", nullptr);
}

void MoveDialog(HWND dialog, int x, int y, int width, int height) {
    MoveWindow(dialog, x, y, width, height, FALSE);
}

}  // namespace platform
