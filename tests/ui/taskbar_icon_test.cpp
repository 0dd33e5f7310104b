// The status icon that the tick paints over the taskbar.

#include "item/taskbar_icon.h"

#include "item/settings.h"
#include "tests/ui/item_on_screen.h"

namespace ui {
namespace {

constexpr int kLeft = 75;

// Whether a pixel of the icon's place is of that kind.
template <class Kind>
bool HasPixel(const TodayFrame& frame, Kind kind) {
    const Picture screen = TakePicture(frame.window);
    const int side = 16 * ScreenScale();
    for (int i = 0; i < side * side; ++i) {
        if (kind(screen.At(kLeft + i % side, 5 * ScreenScale() + i / side))) {
            return true;
        }
    }
    return false;
}

bool IsPlain(const TodayFrame& frame, COLORREF ground) {
    return !HasPixel(frame, [ground](COLORREF color) { return color != ground; });
}

// The arrows are red and blue; the bars are not.
bool ShowsArrow(const TodayFrame& frame) {
    return HasPixel(frame, [](COLORREF color) {
        return GetRValue(color) > GetGValue(color) + 60 || GetBValue(color) > GetGValue(color) + 60;
    });
}

void ExpectTaskbarIcon(const TodayFrame& frame, int normal, int hiRes, COLORREF ground) {
    const int scale = ScreenScale();
    ExpectIcon(TakePicture(frame.window), kLeft, 5 * scale, 16 * scale, scale == 2 ? hiRes : normal, ground);
}

void MarkIconPlace(const TodayFrame& frame) {
    const LONG scale = ScreenScale();
    FillWindow(frame.window, {kLeft, 5 * scale, kLeft + 16 * scale, 21 * scale}, kMarker);
}

TEST(TaskbarIcon, Comes_with_the_second_tick_replaces_the_one_before_it_and_goes_with_the_cache) {
    ForEachScreen([](TodayFrame& frame, SIZE screen) {
        scripted::system.adapters = {{}};
        ItemOnScreen item(frame);
        item.LayOut(screen);
        item.Tick();
        EXPECT_TRUE(IsPlain(frame, kTaskbar));
        scripted::system.adapters[0].received = 100;
        scripted::system.adapters[0].transmitted = 200;
        item.Tick();
        ExpectTaskbarIcon(frame, 233, 212, kTaskbar);
        SaveScreen(frame, "taskbar-icon");
        EXPECT_TRUE(ShowsArrow(frame));
        item.Tick();
        EXPECT_FALSE(ShowsArrow(frame));
        MarkIconPlace(frame);
        item.Tick();
        ExpectTaskbarIcon(frame, 238, 218, kMarker);  // what the shell draws under it becomes the background
        item.ClearCache();
        EXPECT_TRUE(IsPlain(frame, kTaskbar)) << "as it was at the first refresh";
    });
}

TEST(TaskbarIcon, Switched_off_leaves_the_screen_alone) {
    const TodayFrame frame(kScreenSizes[0]);
    WriteNumberSetting(L"TIcon", 0);
    scripted::system.adapters = {{}};
    ItemOnScreen item(frame);
    item.LayOut(kScreenSizes[0]);
    item.Tick();
    item.Tick();
    EXPECT_TRUE(IsPlain(frame, kTaskbar));
    MarkIconPlace(frame);
    item.ClearCache();
    EXPECT_TRUE(IsPlain(frame, kMarker));
}

}  // namespace
}  // namespace ui
