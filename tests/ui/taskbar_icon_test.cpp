// The status icon that the tick paints over the taskbar.

#include "item/taskbar_icon.h"

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "item/settings.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/ui/item_on_screen.h"

namespace {

struct TaskbarIcon : testing::TestWithParam<SIZE> {
    int Scale() const { return ui::IsHiRes(GetParam()) ? 2 : 1; }
    int Side() const { return 16 * Scale(); }
    int Top() const { return 5 * Scale(); }

    bool IsBare(const Picture& screen, int x) const {
        for (int row = 0; row < Side(); ++row) {
            for (int column = 0; column < Side(); ++column) {
                if (screen.At(x + column, Top() + row) != ui::kTaskbar) {
                    return false;
                }
            }
        }
        return true;
    }
    static void Move(uint32_t received, uint32_t transmitted) {
        scripted::system.adapters[0].received += received;
        scripted::system.adapters[0].transmitted += transmitted;
    }
};

INSTANTIATE_TEST_SUITE_P(Screens, TaskbarIcon, testing::ValuesIn(ui::kScreenSizes),
                         [](const auto& screen) { return ui::NameOf(screen.param); });

TEST_P(TaskbarIcon, Comes_with_the_second_tick_and_goes_with_the_cache) {
    const ui::TodayFrame frame(GetParam());
    scripted::system.adapters.emplace_back();
    ui::ItemOnScreen item(frame);
    item.LayOut(GetParam());
    item.Tick();
    EXPECT_TRUE(IsBare(TakePicture(frame.window), 75));
    Move(100, 200);
    item.Tick();
    ui::ExpectIcon(TakePicture(frame.window), 75, Top(), Side(), Scale() == 2 ? 212 : 233, ui::kTaskbar);
    ui::SaveScreen(frame, "taskbar-icon-" + ui::NameOf(GetParam()));
    item.ClearCache();
    EXPECT_TRUE(IsBare(TakePicture(frame.window), 75));
}

TEST_P(TaskbarIcon, Hides_the_one_before_it) {
    const ui::TodayFrame frame(GetParam());
    scripted::system.adapters.emplace_back();
    ui::ItemOnScreen item(frame);
    item.LayOut(GetParam());
    item.Tick();
    Move(100, 200);
    item.Tick();
    item.Tick();
    const Picture idle = TakePicture(frame.window);
    int left = 0;
    for (int row = 0; row < Side(); ++row) {
        for (int column = 0; column < Side(); ++column) {
            const COLORREF color = idle.At(75 + column, Top() + row);
            left += GetRValue(color) > GetGValue(color) + 60 || GetBValue(color) > GetGValue(color) + 60;
        }
    }
    EXPECT_EQ(left, 0) << "coloured pixels of an arrow are left";
}

TEST_P(TaskbarIcon, Switched_off_leaves_the_screen_alone) {
    const ui::TodayFrame frame(GetParam());
    WriteNumberSetting(L"TIcon", 0);
    WriteNumberSetting(L"XLocation", 10);
    scripted::system.adapters.emplace_back();
    ui::ItemOnScreen item(frame);
    item.LayOut(GetParam());
    item.Tick();
    item.Tick();
    EXPECT_TRUE(IsBare(TakePicture(frame.window), 10));
    ui::FillWindow(frame.window, {10, Top(), 10 + Side(), Top() + Side()}, ui::kMarker);
    item.ClearCache();
    EXPECT_EQ(TakePicture(frame.window).At(10, Top()), ui::kMarker);
    EXPECT_EQ(TakePicture(frame.window).At(10 + Side() - 1, Top() + Side() - 1), ui::kMarker);
}

TEST_P(TaskbarIcon, What_the_shell_draws_under_it_becomes_the_background) {
    const ui::TodayFrame frame(GetParam());
    scripted::system.adapters.emplace_back();
    ui::ItemOnScreen item(frame);
    item.LayOut(GetParam());
    item.Tick();
    item.Tick();
    ui::FillWindow(frame.window, {75, Top(), 75 + Side(), Top() + Side()}, ui::kMarker);
    item.Tick();
    ui::ExpectIcon(TakePicture(frame.window), 75, Top(), Side(), Scale() == 2 ? 218 : 238, ui::kMarker);
    HDC memory = CreateCompatibleDC(nullptr);
    HGDIOBJ previous = SelectObject(memory, itemState.iconBackground);
    EXPECT_EQ(GetPixel(memory, 0, 0), ui::kMarker);
    EXPECT_EQ(GetPixel(memory, Side() - 1, Side() - 1), ui::kMarker);
    SelectObject(memory, previous);
    DeleteDC(memory);
}

}  // namespace
