// tests/ui/item_on_screen.h - the real item window in a test's frame, and what its pixels are compared with.
#pragma once

#include "item/item_window.h"
#include "item/tick.h"
#include "platform/scoped_gdi.h"
#include "tests/ui/ui_test.h"

namespace ui {

// The item as the module's attach and the host make it. Its settings come from the registry as the test left it.
struct ItemOnScreen {
    TODAYLISTITEM record = {};
    HWND window = nullptr;

    explicit ItemOnScreen(const TodayFrame& frame, BOOL enabled = TRUE) {
        RegisterItemWindowClass();
        InitializeItem();
        UseEmptyDataFolder();
        record.fEnabled = enabled;
        window = InitializeCustomItem(&record, frame.window);
    }
    ItemOnScreen(const ItemOnScreen&) = delete;
    ItemOnScreen& operator=(const ItemOnScreen&) = delete;
    ~ItemOnScreen() {
        ClearCache();
        DestroyWindow(window);
        UnregisterItemWindowClass();
    }

    bool QueryRefresh() { return Send(WM_TODAYCUSTOM_QUERYREFRESHCACHE, reinterpret_cast<LPARAM>(&record)) != FALSE; }
    void ClearCache() { Send(WM_TODAYCUSTOM_CLEARCACHE, reinterpret_cast<LPARAM>(&record)); }
    void Tick(UINT_PTR timer = kTickTimerId) { SendMessageW(window, WM_TIMER, timer, 0); }
    // As the host: height, place, and a refresh after which the drawing resources are there.
    void LayOut() {
        EXPECT_TRUE(QueryRefresh());
        MoveWindow(window, 0, 100, itemState.screenWidth, static_cast<int>(record.cyp), TRUE);
        EXPECT_FALSE(QueryRefresh());
    }
    Picture Repaint() {
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
        return TakePicture(window);
    }

  private:
    LRESULT Send(UINT message, LPARAM lParam) { return SendMessageW(window, message, 0, lParam); }
};

// Paints over whatever the window and its children show there.
inline void FillWindow(HWND window, const RECT& area, COLORREF color) {
    HDC context = GetDCEx(window, nullptr, DCX_CACHE);
    const platform::ScopedObject brush(CreateSolidBrush(color));
    FillRect(context, &area, static_cast<HBRUSH>(brush.object));
    ReleaseDC(window, context);
}

// Every pixel at (x, y) equals the icon, 16 logical pixels wide, on a plain ground.
inline void ExpectIcon(const Picture& picture, int x, int y, int icon, COLORREF ground) {
    const int side = 16 * ScreenScale();
    HWND canvas = CreateWindowExW(0, L"Static", nullptr, WS_POPUP | WS_VISIBLE, 0, 0, side, side, nullptr, nullptr,
                                  nullptr, nullptr);
    UpdateWindow(canvas);
    FillWindow(canvas, {0, 0, side, side}, ground);
    auto loaded =
        static_cast<HICON>(LoadImageW(itemState.instance, MAKEINTRESOURCEW(icon), IMAGE_ICON, side, side, LR_SHARED));
    HDC context = GetDC(canvas);
    EXPECT_TRUE(DrawIconEx(context, 0, 0, loaded, side, side, 0, nullptr, DI_NORMAL)) << icon;
    ReleaseDC(canvas, context);
    const Picture expected = TakePicture(canvas);
    DestroyWindow(canvas);
    int different = 0;
    for (int i = 0; i < side * side; ++i) {
        different += picture.At(x + i % side, y + i / side) != expected.At(i % side, i / side);
    }
    EXPECT_EQ(different, 0) << "icon " << icon;
}

}  // namespace ui
