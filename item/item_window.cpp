// The item window's life: the host asks it to refresh (which creates what it draws with and starts the timer) and to
// clear its cache (which undoes that). The window itself lives on between the two.

#include "item/item_window.h"

#include "item/item_state.h"
#include "item/settings.h"
#include "item/strip.h"
#include "item/strip_paint.h"
#include "item/tap_dispatch.h"
#include "item/taskbar_icon.h"
#include "item/tick.h"
#include "platform/controls.h"
#include "platform/scoped_gdi.h"

namespace {

void DeleteBitmap(HBITMAP& bitmap) {
    if (bitmap != nullptr) {
        DeleteObject(bitmap);
        bitmap = nullptr;
    }
}

// TRUE asks the host to lay the Today screen out again, as the height has changed.
LRESULT OnQueryRefreshCache(HWND window, TODAYLISTITEM* item) {
    const auto height = static_cast<DWORD>(StripHeight());
    if (item == nullptr) {
        return FALSE;
    }
    if (item->cyp != height) {
        item->cyp = height;
        return TRUE;
    }
    CreateDrawingResources(window);
    if (itemState.taskbarBackground == nullptr) {
        CaptureTaskbarBackground();
    }
    const platform::ScopedWindowContext context(window);
    DrawStatusStrip(context.context, false);
    if (!itemState.timerRunning) {
        itemState.timerRunning = SetTimer(window, kTickTimerId, kTickPeriodMs, nullptr) != 0;
    }
    return FALSE;
}

LRESULT OnClearCache(HWND window) {
    if (itemState.timerRunning) {
        KillTimer(window, kTickTimerId);
        itemState.timerRunning = false;
    }
    if (itemState.showTaskbarIcon) {
        RestoreUnderIcon(itemState.taskbarBackground);
    }
    DeleteBitmap(itemState.taskbarBackground);
    DeleteBitmap(itemState.iconBackground);
    // The pens stay when the surface never came to be: the refresh query makes only what is missing.
    DeleteDrawingResources();
    return 0;
}

LRESULT OnEraseBackground(HWND window, HDC context) {
    TODAYDRAWWATERMARKINFO watermark = {};
    watermark.hdc = context;
    GetClientRect(window, &watermark.rc);
    watermark.hwnd = window;
    SendMessageW(GetParent(window), TODAYM_DRAWWATERMARK, 0, reinterpret_cast<LPARAM>(&watermark));
    return 1;
}

LRESULT OnPaint(HWND window) {
    const platform::ScopedWindowContext context(window);
    PAINTSTRUCT paint;
    BeginPaint(window, &paint);
    SetBkMode(context.context, TRANSPARENT);
    DrawItem(context.context, true);
    EndPaint(window, &paint);
    return 1;
}

LRESULT CALLBACK ItemWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_TODAYCUSTOM_QUERYREFRESHCACHE:
            return OnQueryRefreshCache(window, reinterpret_cast<TODAYLISTITEM*>(lParam));
        case WM_TODAYCUSTOM_CLEARCACHE:
            return OnClearCache(window);
        case WM_ERASEBKGND:
            return OnEraseBackground(window, reinterpret_cast<HDC>(wParam));
        case WM_PAINT:
            return OnPaint(window);
        case WM_LBUTTONUP:
            DispatchTap(window, LOWORD(lParam), HIWORD(lParam));
            return 0;
        case WM_TIMER:
            if (wParam == kTickTimerId) {
                RunTick(window);
            }
            return 0;
        case WM_NCCREATE:  // neither this nor the hit test reaches a window on a handheld; on a desktop 0 would refuse
                           // both
            return TRUE;
        case WM_NCHITTEST:
            return HTCLIENT;
        default:
            return 0;
    }
}

}  // namespace

bool RegisterItemWindowClass() {
    WNDCLASSW windowClass = {};
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.lpfnWndProc = ItemWindowProc;
    windowClass.hInstance = itemState.instance;
    windowClass.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
    windowClass.lpszClassName = kItemWindowClass;
    UnregisterItemWindowClass();
    return RegisterClassW(&windowClass) != 0;
}

void UnregisterItemWindowClass() {
    UnregisterClassW(kItemWindowClass, itemState.instance);
}

void InitializeItem() {
    ResetItemState();
    RefreshScreenSize();
    LoadFolderSettings();
    CreatePens();
    LoadDisplaySettings();
    CaptureTaskbarBackground();
}

extern "C" HWND InitializeCustomItem(TODAYLISTITEM* item, HWND parent) {
    if (!item->fEnabled) {
        return nullptr;
    }
    constexpr int kWidth = 240;
    return CreateWindowExW(0, kItemWindowClass, L"Quorvane", WS_CHILD | WS_VISIBLE, 0, 0, kWidth, 0, parent, nullptr,
                           itemState.instance, nullptr);
}
