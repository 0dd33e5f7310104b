// What the Today screen's messages make of the item.

#include "item/item_window.h"

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "item/tick.h"
#include "tests/ui/item_on_screen.h"

namespace {

bool HasTickTimer(HWND item) {
    // Ending it is the only way to learn of it.
    return KillTimer(item, kTickTimerId) != FALSE;
}

TEST(ItemLife, A_disabled_item_gets_no_window) {
    const ui::TodayFrame frame(ui::kScreenSizes[0]);
    RegisterItemWindowClass();
    TODAYLISTITEM record = {};
    EXPECT_EQ(InitializeCustomItem(&record, frame.window), nullptr);
    UnregisterItemWindowClass();
}

TEST(ItemLife, The_first_refresh_sets_the_height_and_the_second_starts_the_timer_once) {
    ui::ForEachScreen([](ui::TodayFrame& frame, SIZE screen) {
        ui::ItemOnScreen item(frame);
        EXPECT_TRUE(item.QueryRefresh());
        EXPECT_EQ(item.record.cyp, ui::IsHiRes(screen) ? 40U : 24U);
        EXPECT_FALSE(itemState.gdiReady);
        EXPECT_FALSE(HasTickTimer(item.window));
        EXPECT_FALSE(item.QueryRefresh());
        EXPECT_TRUE(itemState.gdiReady);
        EXPECT_TRUE(HasTickTimer(item.window));
        EXPECT_FALSE(item.QueryRefresh());
        EXPECT_FALSE(HasTickTimer(item.window)) << "a timer was set again";
    });
}

TEST(ItemLife, Clearing_the_cache_frees_everything_and_a_refresh_brings_it_back) {
    const ui::TodayFrame frame(ui::kScreenSizes[0]);
    ui::ItemOnScreen item(frame);
    item.LayOut(ui::kScreenSizes[0]);
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
        EXPECT_TRUE(IsWindow(item.window));
        EXPECT_FALSE(item.QueryRefresh());
        EXPECT_TRUE(itemState.gdiReady && itemState.timerRunning);
    }
}

TEST(ItemLife, Clearing_before_the_first_refresh_keeps_the_pens) {
    const ui::TodayFrame frame(ui::kScreenSizes[0]);
    ui::ItemOnScreen item(frame);
    item.ClearCache();
    EXPECT_NE(GetObjectType(itemState.redPen), 0U);
    EXPECT_EQ(itemState.taskbarBackground, nullptr);
    item.LayOut(ui::kScreenSizes[0]);
    EXPECT_NE(itemState.taskbarBackground, nullptr);
}

TEST(ItemLife, The_background_is_asked_of_the_host) {
    ui::TodayFrame frame(ui::kScreenSizes[0]);
    ui::ItemOnScreen item(frame);
    item.LayOut(ui::kScreenSizes[0]);
    frame.watermarks.clear();
    HDC context = GetDC(item.window);
    EXPECT_EQ(SendMessageW(item.window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(context), 0), 1);
    ReleaseDC(item.window, context);
    ASSERT_EQ(frame.watermarks.size(), 1U);
    EXPECT_EQ(frame.watermarks[0].hdc, context);
    EXPECT_EQ(frame.watermarks[0].hwnd, item.window);
    const RECT client = {0, 0, 240, 24};
    EXPECT_TRUE(EqualRect(&frame.watermarks[0].rc, &client));
}

TEST(ItemLife, Only_timer_11_ticks) {
    const ui::TodayFrame frame(ui::kScreenSizes[0]);
    ui::ItemOnScreen item(frame);
    SendMessageW(item.window, WM_TIMER, kTickTimerId + 1, 0);
    EXPECT_EQ(itemState.sampleCount, -1);
    item.Tick();
    EXPECT_EQ(itemState.sampleCount, 0);
}

}  // namespace
