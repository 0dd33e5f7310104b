// Opening, running and closing the Today screen.

#include "host/today_screen.h"

#include "host/frame_window.h"
#include "host/picture.h"
#include "host/taskbar_window.h"
#include "host/theme_paint.h"

TodayScreen today;

namespace {

void PlaceStrip() {
    const RECT strip = CurrentLayout().strip;
    MoveWindow(today.item.record.hwndCustom, strip.left, strip.top, strip.right - strip.left, strip.bottom - strip.top,
               TRUE);
    InvalidateRect(today.frame, nullptr, FALSE);
}

bool OpenFrame() {
    today.theme = CreateTheme(today.options.screen);
    today.frame = CreateFrame(today.options.screen);
    if (today.frame == nullptr) {
        return false;
    }
    const ScreenLayout layout = CurrentLayout();
    today.taskbar = CreateTaskbar(today.frame, layout.taskbar, layout.scale);
    // Not by ShowWindow, whose first call obeys whoever started the program: the item would find a minimised screen
    // empty.
    SetWindowPos(today.frame, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW);
    // The item takes a copy of the screen as soon as it is loaded.
    RedrawWindow(today.frame, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    return true;
}

}  // namespace

ScreenLayout CurrentLayout() {
    return ArrangeScreen(today.options.screen, static_cast<int>(today.item.record.cyp));
}

bool OpenTodayScreen(const HostOptions& options, std::wstring& error) {
    today = {};
    today.options = options;
    today.pictureDue = !options.screenshot.empty();
    if (!OpenFrame()) {
        error = L"no window can be opened: is there a display?";
        CloseTodayScreen();
        return false;
    }
    if (!LoadItem(today.item, options.library, error)) {
        CloseTodayScreen();
        return false;
    }
    if (!CreateItemWindow(today.item, today.frame)) {
        error = options.library + L" gives no window";
        CloseTodayScreen();
        return false;
    }
    PlaceStrip();
    RefreshItem();
    return true;
}

bool CloseTodayScreen() {
    const bool unloaded = UnloadItem(today.item);
    if (today.frame != nullptr) {
        DestroyWindow(today.frame);
        today.frame = nullptr;
    }
    if (today.theme != nullptr) {
        DeleteObject(today.theme);
        today.theme = nullptr;
    }
    return unloaded;
}

void RunMessageLoop() {
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

void EndRun() {
    TakeDuePicture();
    // A menu's loop would keep the message to quit for itself.
    EndMenu();
    PostQuitMessage(0);
}

void TakeDuePicture() {
    if (today.pictureDue) {
        today.pictureFailed = !SavePicture(TakeScreenPicture(today.frame), today.options.screenshot.c_str());
        today.pictureDue = false;
    }
}

void RefreshItem() {
    constexpr int kMostLayouts = 3;
    if (!today.item.record.fEnabled) {
        return;
    }
    for (int layouts = 0; layouts < kMostLayouts && QueryRefresh(today.item); ++layouts) {
        PlaceStrip();
    }
}

void SwitchItem(bool enabled) {
    EnableItem(today.item, enabled);
    InvalidateRect(today.frame, nullptr, FALSE);
    RefreshItem();
}
