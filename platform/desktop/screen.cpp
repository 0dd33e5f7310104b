// The desktop's screen is the client area of the Today host's frame, whatever the monitor is. Without a frame (the
// library loaded by something else) it is the monitor.

#include "platform/screen.h"

#include "platform/desktop/today_frame.h"

namespace platform {
namespace {

POINT FrameOrigin() {
    POINT origin = {};
    if (HWND frame = FindTodayFrame()) {
        ClientToScreen(frame, &origin);
    }
    return origin;
}

}  // namespace

HWND FindTodayFrame() {
    HWND frame = nullptr;
    while ((frame = FindWindowExW(nullptr, frame, kFrameClass, nullptr)) != nullptr) {
        DWORD process = 0;
        GetWindowThreadProcessId(frame, &process);
        if (process == GetCurrentProcessId()) {
            return frame;
        }
    }
    return nullptr;
}

SIZE ScreenSize() {
    if (HWND frame = FindTodayFrame()) {
        RECT area = {};
        GetClientRect(frame, &area);
        return {area.right, area.bottom};
    }
    return {GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
}

HDC GetScreenContext() {
    HWND frame = FindTodayFrame();
    // Without the clipping styles of the frame's own context, so that drawing reaches its children.
    return frame != nullptr ? GetDCEx(frame, nullptr, DCX_CACHE) : GetDC(nullptr);
}

void ReleaseScreenContext(HDC context) {
    ReleaseDC(WindowFromDC(context), context);
}

HWND FindTaskbar() {
    HWND frame = FindTodayFrame();
    return frame != nullptr ? FindWindowExW(frame, nullptr, kTaskbarClass, nullptr) : nullptr;
}

void MoveDialog(HWND dialog, int x, int y, int width, int height) {
    const POINT origin = FrameOrigin();
    MoveWindow(dialog, origin.x + x, origin.y + y, width, height, FALSE);
}

}  // namespace platform
