// Goes the module's way: class, state, window; then the host's messages.

#include "tests/ui/item_on_screen.h"

#include "item/tick.h"

namespace ui {

ItemOnScreen::ItemOnScreen(const TodayFrame& frame) {
    RegisterItemWindowClass();
    InitializeItem();
    UseEmptyDataFolder();
    record.fEnabled = TRUE;
    window = InitializeCustomItem(&record, frame.window);
}

ItemOnScreen::~ItemOnScreen() {
    ClearCache();
    DestroyWindow(window);
    UnregisterItemWindowClass();
}

bool ItemOnScreen::QueryRefresh() {
    return SendMessageW(window, WM_TODAYCUSTOM_QUERYREFRESHCACHE, 0, reinterpret_cast<LPARAM>(&record)) != FALSE;
}

void ItemOnScreen::ClearCache() {
    SendMessageW(window, WM_TODAYCUSTOM_CLEARCACHE, 0, reinterpret_cast<LPARAM>(&record));
}

void ItemOnScreen::Tick() {
    SendMessageW(window, WM_TIMER, kTickTimerId, 0);
}

void ItemOnScreen::LayOut(SIZE screen) {
    EXPECT_TRUE(QueryRefresh());
    MoveWindow(window, 0, 100, screen.cx, static_cast<int>(record.cyp), TRUE);
    EXPECT_FALSE(QueryRefresh());
}

Picture ItemOnScreen::Repaint() {
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    return TakePicture(window);
}

void FillWindow(HWND window, const RECT& area, COLORREF color) {
    HDC context = GetDCEx(window, nullptr, DCX_CACHE);
    HBRUSH brush = CreateSolidBrush(color);
    FillRect(context, &area, brush);
    DeleteObject(brush);
    ReleaseDC(window, context);
}

void ExpectIcon(const Picture& picture, int x, int y, int side, int icon, COLORREF ground) {
    HWND canvas = CreateWindowExW(0, L"Static", nullptr, WS_POPUP | WS_VISIBLE, 0, 0, side, side, nullptr, nullptr,
                                  nullptr, nullptr);
    UpdateWindow(canvas);
    FillWindow(canvas, {0, 0, side, side}, ground);
    auto loaded = static_cast<HICON>(LoadImageW(itemState.instance, MAKEINTRESOURCEW(icon), IMAGE_ICON, side, side, 0));
    HDC context = GetDC(canvas);
    EXPECT_TRUE(DrawIconEx(context, 0, 0, loaded, side, side, 0, nullptr, DI_NORMAL)) << icon;
    ReleaseDC(canvas, context);
    DestroyIcon(loaded);
    const Picture expected = TakePicture(canvas);
    DestroyWindow(canvas);
    int different = 0;
    for (int i = 0; i < side * side; ++i) {
        different += picture.At(x + i % side, y + i / side) != expected.At(i % side, i / side);
    }
    EXPECT_EQ(different, 0) << "icon " << icon;
}

}  // namespace ui
