// Everything here keeps clear of the status icon's usual place: 16 pixels from x 75, 32 on a high-resolution screen.

#include "host/taskbar_window.h"

#include "host/theme_paint.h"
#include "host/today_screen.h"
#include "platform/desktop/today_frame.h"

namespace {

constexpr int kProgramIcon = 1;
constexpr int kNormalStartLeft = 24;
constexpr int kHiResStartLeft = 116;
constexpr int kClockWidth = 70;
constexpr int kTextHeight = 11;

struct Taskbar {
    int scale;
    WORD minuteDrawn;
};
Taskbar taskbarState;

void DrawStart(HDC context, const RECT& area) {
    const int scale = taskbarState.scale;
    const int side = 16 * scale;
    const int top = (area.bottom - side) / 2;
    if (HANDLE icon =
            LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(kProgramIcon), IMAGE_ICON, side, side, LR_SHARED)) {
        DrawIconEx(context, 4 * scale, top, static_cast<HICON>(icon), side, side, 0, nullptr, DI_NORMAL);
    }
    RECT text = area;
    text.left = scale == 1 ? kNormalStartLeft : kHiResStartLeft;
    DrawLabel(context, today.options.demo ? L"Demo" : L"Start", text, kTextHeight * scale, DT_LEFT | DT_VCENTER);
}

RECT ClockArea(const RECT& area) {
    RECT clock = area;
    clock.left = area.right - kClockWidth * taskbarState.scale;
    return clock;
}

void DrawClock(HDC context, const RECT& area) {
    wchar_t text[40] = {};
    SYSTEMTIME now;
    GetLocalTime(&now);
    taskbarState.minuteDrawn = now.wMinute;
    GetTimeFormatW(LOCALE_USER_DEFAULT, TIME_NOSECONDS, &now, nullptr, text, 40);
    RECT clock = ClockArea(area);
    clock.right -= 6 * taskbarState.scale;
    DrawLabel(context, text, clock, kTextHeight * taskbarState.scale, DT_RIGHT | DT_VCENTER);
}

void PaintTaskbar(HWND window) {
    PAINTSTRUCT paint;
    HDC context = BeginPaint(window, &paint);
    RECT area;
    GetClientRect(window, &area);
    DrawBar(context, area);
    DrawStart(context, area);
    DrawClock(context, area);
    EndPaint(window, &paint);
}

LRESULT CALLBACK TaskbarProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ERASEBKGND) {
        return TRUE;
    }
    if (message == WM_PAINT) {
        PaintTaskbar(window);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace

HWND CreateTaskbar(HWND frame, const RECT& place, int scale) {
    taskbarState = {scale, 0};
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = TaskbarProc;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = platform::kTaskbarClass;
    RegisterClassW(&windowClass);
    return CreateWindowExW(0, platform::kTaskbarClass, nullptr, WS_CHILD | WS_VISIBLE, place.left, place.top,
                           place.right - place.left, place.bottom - place.top, frame, nullptr, windowClass.hInstance,
                           nullptr);
}

void UpdateClock(HWND taskbar) {
    SYSTEMTIME now;
    GetLocalTime(&now);
    if (now.wMinute == taskbarState.minuteDrawn) {
        return;
    }
    RECT area;
    GetClientRect(taskbar, &area);
    const RECT clock = ClockArea(area);
    InvalidateRect(taskbar, &clock, FALSE);
}
