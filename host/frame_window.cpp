// Receives what happens to the Today screen: its timers, taps on the soft keys, and the requests of item and library.

#include "host/frame_window.h"

#include "host/frame_paint.h"
#include "host/keyboard_window.h"
#include "host/taskbar_window.h"
#include "host/today_screen.h"
#include "platform/desktop/today_frame.h"

namespace {

constexpr int kProgramIcon = 1;
constexpr DWORD kFrameStyle = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_CLIPCHILDREN;
constexpr UINT kRefreshPeriodMs = 2000;
constexpr UINT kOpenOptionsMessage = WM_APP + 2;

enum TimerId : UINT_PTR { kRefreshTimer = 1, kEndTimer, kPictureTimer };
enum MenuId : UINT { kMenuOptions = 1, kMenuShowItem, kMenuClose };

void OpenOptions() {
    if (today.item.record.fEnabled && today.item.record.fOptions) {
        RunItemOptions(today.item, today.frame);
    }
}

void OpenMenu() {
    const bool enabled = today.item.record.fEnabled != FALSE;
    HMENU menu = CreatePopupMenu();
    AppendMenuW(menu, MF_STRING | (enabled ? 0u : MF_GRAYED), kMenuOptions, L"&Options...");
    AppendMenuW(menu, MF_STRING | (enabled ? MF_CHECKED : 0u), kMenuShowItem, L"&Show Quorvane");
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(menu, MF_STRING, kMenuClose, L"E&xit");
    const RECT key = CurrentLayout().rightKey;
    POINT corner = {key.right, key.top};
    ClientToScreen(today.frame, &corner);
    const int chosen = TrackPopupMenu(menu, TPM_RIGHTALIGN | TPM_BOTTOMALIGN | TPM_RETURNCMD | TPM_NONOTIFY, corner.x,
                                      corner.y, 0, today.frame, nullptr);
    DestroyMenu(menu);
    if (chosen == kMenuOptions) {
        OpenOptions();
    } else if (chosen == kMenuShowItem) {
        SwitchItem(!enabled);
    } else if (chosen == kMenuClose) {
        EndRun();
    }
}

void OnTap(LPARAM place) {
    const POINT point = {static_cast<short>(LOWORD(place)), static_cast<short>(HIWORD(place))};
    const ScreenLayout layout = CurrentLayout();
    if (PtInRect(&layout.leftKey, point)) {
        OpenOptions();
    } else if (PtInRect(&layout.rightKey, point)) {
        OpenMenu();
    }
}

void OnTimer(WPARAM timer) {
    if (timer == kRefreshTimer) {
        UpdateClock(today.taskbar);
        RefreshItem();
        return;
    }
    KillTimer(today.frame, timer);
    if (timer == kPictureTimer) {
        TakeDuePicture();
    } else if (timer == kEndTimer) {
        EndRun();
    }
}

void OnKeyboardRequest(bool raise, HWND window) {
    if (!raise) {
        LowerKeyboard();
        return;
    }
    const ScreenLayout layout = CurrentLayout();
    RECT place = layout.keyboard;
    MapWindowPoints(today.frame, nullptr, reinterpret_cast<POINT*>(&place), 2);
    RaiseKeyboard(window, place, layout.scale);
}

LRESULT CALLBACK FrameProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_ERASEBKGND:
            return TRUE;
        case WM_PAINT:
            PaintFrame(window);
            return 0;
        case WM_LBUTTONUP:
            OnTap(lParam);
            return 0;
        case WM_TIMER:
            OnTimer(wParam);
            return 0;
        case TODAYM_DRAWWATERMARK:
            DrawWatermark(*reinterpret_cast<const TODAYDRAWWATERMARKINFO*>(lParam));
            return TRUE;
        case platform::kFrameKeyboardMessage:
            OnKeyboardRequest(wParam != 0, reinterpret_cast<HWND>(lParam));
            return 0;
        case kOpenOptionsMessage:
            OpenOptions();
            return 0;
        case WM_GETMINMAXINFO:  // a screen larger than the monitor keeps its size
            reinterpret_cast<MINMAXINFO*>(lParam)->ptMaxTrackSize = {SHRT_MAX, SHRT_MAX};
            return 0;
        case WM_CLOSE:
            EndRun();
            return 0;
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

void RegisterFrameClass() {
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = FrameProc;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hIcon = LoadIconW(windowClass.hInstance, MAKEINTRESOURCEW(kProgramIcon));
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = platform::kFrameClass;
    RegisterClassW(&windowClass);
}

// Centred, but with its top left corner on the monitor.
POINT FramePlace(int width, int height) {
    RECT work = {};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    const LONG left = (work.left + work.right - width) / 2;
    const LONG top = (work.top + work.bottom - height) / 2;
    return {left < work.left ? work.left : left, top < work.top ? work.top : top};
}

}  // namespace

HWND CreateFrame(SIZE screen) {
    RegisterFrameClass();
    RECT frame = {0, 0, screen.cx, screen.cy};
    AdjustWindowRectEx(&frame, kFrameStyle, FALSE, 0);
    const int width = frame.right - frame.left;
    const int height = frame.bottom - frame.top;
    const POINT place = FramePlace(width, height);
    const wchar_t* title = today.options.demo ? L"Today - Demo" : L"Today";
    return CreateWindowExW(0, platform::kFrameClass, title, kFrameStyle, place.x, place.y, width, height, nullptr,
                           nullptr, GetModuleHandleW(nullptr), nullptr);
}

void StartFrame() {
    constexpr UINT kMsPerSecond = 1000;
    const HostOptions& options = today.options;
    SetTimer(today.frame, kRefreshTimer, kRefreshPeriodMs, nullptr);
    if (options.seconds) {
        SetTimer(today.frame, kEndTimer, static_cast<UINT>(*options.seconds) * kMsPerSecond, nullptr);
    }
    if (options.screenshotAfter) {
        SetTimer(today.frame, kPictureTimer, static_cast<UINT>(*options.screenshotAfter) * kMsPerSecond, nullptr);
    }
    if (options.tap) {
        const LPARAM place = MAKELPARAM(options.tap->x, options.tap->y);
        PostMessageW(today.item.record.hwndCustom, WM_LBUTTONDOWN, MK_LBUTTON, place);
        PostMessageW(today.item.record.hwndCustom, WM_LBUTTONUP, 0, place);
    }
    if (options.openOptions) {
        PostMessageW(today.frame, kOpenOptionsMessage, 0, 0);
    }
}
