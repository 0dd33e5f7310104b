// What the Today screen's messages make of the item.

#include "item/tick.h"
#include "tests/ui/item_on_screen.h"

namespace ui {
namespace {

// Ending it is the only way to learn of it.
bool HasTickTimer(HWND item) {
    return KillTimer(item, kTickTimerId) != FALSE;
}

TEST(ItemLife, A_disabled_item_gets_no_window) {
    const TodayFrame frame(kScreenSizes[0]);
    RegisterItemWindowClass();
    TODAYLISTITEM record = {};
    EXPECT_EQ(InitializeCustomItem(&record, frame.window), nullptr);
    UnregisterItemWindowClass();
}

TEST(ItemLife, The_first_refresh_sets_the_height_and_the_second_starts_the_timer_once) {
    ForEachScreen([](TodayFrame& frame, SIZE screen) {
        ItemOnScreen item(frame);
        EXPECT_TRUE(item.QueryRefresh());
        EXPECT_EQ(item.record.cyp, IsHiRes(screen) ? 40U : 24U);
        EXPECT_FALSE(itemState.gdiReady || HasTickTimer(item.window));
        EXPECT_FALSE(item.QueryRefresh());
        EXPECT_TRUE(itemState.gdiReady && HasTickTimer(item.window));
        EXPECT_FALSE(item.QueryRefresh());
        EXPECT_FALSE(HasTickTimer(item.window)) << "a timer was set again";
    });
}

TEST(ItemLife, Clearing_the_cache_frees_everything_and_a_refresh_brings_it_back) {
    const TodayFrame frame(kScreenSizes[0]);
    ItemOnScreen item(frame);
    item.ClearCache();
    EXPECT_NE(GetObjectType(itemState.redPen), 0U) << "nothing was there to be freed";
    item.LayOut(kScreenSizes[0]);
    for (int round = 0; round < 2; ++round) {
        const HGDIOBJ owned[] = {itemState.redPen,         itemState.bluePen,       itemState.silverPen,
                                 itemState.surfaceContext, itemState.surfaceBitmap, itemState.taskbarBackground};
        for (HGDIOBJ object : owned) {
            EXPECT_NE(GetObjectType(object), 0U);
        }
        item.ClearCache();
        for (HGDIOBJ object : owned) {
            EXPECT_EQ(GetObjectType(object), 0U) << "still alive";
        }
        EXPECT_FALSE(itemState.gdiReady || itemState.timerRunning || HasTickTimer(item.window));
        EXPECT_FALSE(item.QueryRefresh());
        EXPECT_TRUE(itemState.gdiReady && itemState.timerRunning);
    }
}

TEST(ItemLife, The_background_is_asked_of_the_host_and_only_timer_11_ticks) {
    const TodayFrame frame(kScreenSizes[0]);
    ItemOnScreen item(frame);
    item.LayOut(kScreenSizes[0]);
    HDC context = GetDC(item.window);
    EXPECT_EQ(SendMessageW(item.window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(context), 0), 1);
    ReleaseDC(item.window, context);
    EXPECT_EQ(frame.watermark.hdc, context);
    EXPECT_EQ(frame.watermark.hwnd, item.window);
    const RECT client = {0, 0, 240, 24};
    EXPECT_TRUE(EqualRect(&frame.watermark.rc, &client));
    SendMessageW(item.window, WM_TIMER, kTickTimerId + 1, 0);
    EXPECT_EQ(itemState.sampleCount, -1);
    item.Tick();
    EXPECT_EQ(itemState.sampleCount, 0);
}

}  // namespace
}  // namespace ui
