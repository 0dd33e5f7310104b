// tests/ui/item_on_screen.h - the real item window in a test's frame, and what its pixels are compared with.
#pragma once

#include "item/item_window.h"
#include "tests/ui/ui_test.h"

namespace ui {

inline constexpr COLORREF kMarker = RGB(1, 200, 3);  // nothing in the product has this colour

// The item as the module's attach and the host make it. Its settings come from the registry as the test left it.
struct ItemOnScreen {
    TODAYLISTITEM record = {};
    HWND window = nullptr;

    explicit ItemOnScreen(const TodayFrame& frame);
    ItemOnScreen(const ItemOnScreen&) = delete;
    ItemOnScreen& operator=(const ItemOnScreen&) = delete;
    ~ItemOnScreen();

    bool QueryRefresh();
    void ClearCache();
    void Tick();
    // As the host: height, place, and a refresh after which the drawing resources are there.
    void LayOut(SIZE screen);
    Picture Repaint();
};

// Paints over whatever the window and its children show there.
void FillWindow(HWND window, const RECT& area, COLORREF color);

// Every pixel of the side x side square at (x, y) equals the icon in its own size on a plain ground.
void ExpectIcon(const Picture& picture, int x, int y, int side, int icon, COLORREF ground);

}  // namespace ui
