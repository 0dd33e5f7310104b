// What the Today screen's messages make of the item, its strip's pixels, and the icon that it paints over the taskbar.

#include "item/item_window.h"
#include "item/settings.h"
#include "item/taskbar_icon.h"
#include "item/tick.h"
#include "tests/ui/ui_test.h"

namespace ui {
namespace {

using Strip = UiTest;
INSTANTIATE_TEST_SUITE_P(Screen, Strip, kEveryScreen);

constexpr COLORREF kMarker = RGB(1, 200, 3);  // nothing in the product has this colour

// The item as the module's attach and the host make it: window, height, place, and a refresh after which the drawing
// resources are there. Its settings come from the registry as the test left it.
struct ItemOnScreen {
    TODAYLISTITEM record = {};
    HWND window = nullptr;

    explicit ItemOnScreen(HWND frame) {
        RegisterItemWindowClass();
        InitializeItem();
        UseEmptyDataFolder();
        EXPECT_EQ(InitializeCustomItem(&record, frame), nullptr) << "disabled";
        record.fEnabled = TRUE;
        window = InitializeCustomItem(&record, frame);
        EXPECT_TRUE(Send(WM_TODAYCUSTOM_QUERYREFRESHCACHE));
        EXPECT_EQ(record.cyp, IsHiResScreen() ? 40U : 24U);
        MoveWindow(window, 0, 100, itemState.screenWidth, static_cast<int>(record.cyp), TRUE);
        EXPECT_FALSE(Send(WM_TODAYCUSTOM_QUERYREFRESHCACHE));
    }
    ItemOnScreen(const ItemOnScreen&) = delete;
    ItemOnScreen& operator=(const ItemOnScreen&) = delete;
    ~ItemOnScreen() {
        Send(WM_TODAYCUSTOM_CLEARCACHE);
        DestroyWindow(window);
        UnregisterItemWindowClass();
    }

    LRESULT Send(UINT message) { return SendMessageW(window, message, 0, reinterpret_cast<LPARAM>(&record)); }
    void Tick() { SendMessageW(window, WM_TIMER, kTickTimerId, 0); }
    Picture Repaint() {
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
        return TakePicture(window);
    }
};

// The icon on a plain ground.
Picture IconOn(COLORREF ground, int icon) {
    const int side = TaskbarIconSide();
    return Drawn({side, side}, ground, [&](HDC context) {
        HANDLE loaded = LoadImageW(itemState.instance, MAKEINTRESOURCEW(icon), IMAGE_ICON, side, side, LR_SHARED);
        EXPECT_TRUE(DrawIconEx(context, 0, 0, static_cast<HICON>(loaded), side, side, 0, nullptr, DI_NORMAL)) << icon;
    });
}

TEST_P(Strip, Graph_has_its_lines_to_the_pixel_and_none_whose_pen_is_missing) {
    ItemOnScreen item(frame);
    const Picture empty = item.Repaint();
    const bool hiRes = IsHiResScreen();
    const int right = hiRes ? 88 : 44;  // of the newest sample
    const int base = hiRes ? 34 : 21;
    const int tallest = hiRes ? 27 : 18;
    itemState.sampleCount = 1;
    itemState.ringIndex = itemState.ringStart = 0;
    itemState.inDeltas[0] = 10000;
    itemState.outDeltas[0] = 800000;
    Picture expected = empty;
    const auto set = [&](int x, int y, uint32_t color) {
        expected.pixels[static_cast<size_t>(y * expected.width + x)] = color;
    };
    for (int x = 4; x <= right; ++x) {
        set(x, base, 0xC0C0C0);
    }
    set(right, base - (hiRes ? 10 : 7), 0x0000FF);
    set(right, base - tallest, 0xFF0000);
    EXPECT_EQ(item.Repaint().pixels, expected.pixels);
    itemState.sampleCount = kSampleSlots;
    std::ranges::fill(itemState.inDeltas, 800000);
    std::ranges::fill(itemState.outDeltas, 0xFFFFFFFF);
    itemState.outDeltas[1] = itemState.outDeltas[2] = 0;
    const Picture strip = item.Repaint();
    EXPECT_EQ(strip.At(right - 36, base - tallest), kBlue);
    EXPECT_EQ(strip.At(right - 2, base - tallest), kRed) << "sent covers received";
    SaveScreen("strip-ring");
    for (HPEN* pen : {&itemState.bluePen, &itemState.redPen, &itemState.silverPen}) {
        DeleteObject(std::exchange(*pen, nullptr));
    }
    EXPECT_EQ(item.Repaint().pixels, empty.pixels);
}

TEST_P(Strip, Icons_stand_at_their_places_and_the_graph_leaves_the_rest_alone) {
    const std::array<int, 3> places[] = {{50, 163, 200},  {69, 103, 192},  {88, 101, 189},  {107, 104, 193},
                                         {126, 102, 191}, {145, 125, 201}, {164, 126, 202}, {183, 188, 190},
                                         {202, 106, 195}, {221, 105, 194}};
    const int scale = ScreenScale();
    ItemOnScreen item(frame);
    itemState.SignalDbm = -75;
    FillWindow(item.window, {0, 0, itemState.screenWidth, 40}, kMarker);  // the host's background replaces it
    item.Repaint();
    FillWindow(item.window, {50 * scale, 4, 66 * scale, 4 + 16 * scale}, kWatermark);
    itemState.SignalDbm = -50;
    // A refresh draws the changed signal and copies the graph again, with the block that is larger than a normal
    // screen's surface.
    EXPECT_FALSE(item.Send(WM_TODAYCUSTOM_QUERYREFRESHCACHE));
    const Picture strip = TakePicture(item.window);
    for (const auto& [x, normal, hiRes] : places) {
        EXPECT_TRUE(IsAt(strip, x * scale, 4, IconOn(kWatermark, scale == 2 ? hiRes : normal))) << normal;
    }
    const RECT graph = IsHiResScreen() ? RECT{3, 3, 91, 36} : RECT{3, 1, 47, 23};
    EXPECT_NE(strip.At(graph.left, graph.top), kWatermark) << "which the host painted";
    EXPECT_EQ(strip.At(graph.left - 1, graph.top), kWatermark);
    EXPECT_EQ(strip.At(graph.right, graph.top), kWatermark);
    EXPECT_EQ(strip.At(graph.left, graph.bottom), kWatermark);
    SaveScreen("strip-icons");
}

TEST_P(Strip, Taskbar_icon_comes_with_the_second_tick_replaces_the_one_before_it_and_goes_with_the_cache) {
    const int side = TaskbarIconSide();
    const RECT square = {75, 5 * ScreenScale(), 75 + side, 5 * ScreenScale() + side};
    const auto shows = [&](const Picture& part) { return IsAt(TakePicture(frame), 75, square.top, part); };
    const auto icon = [](COLORREF ground, int normal, int hiRes) {
        return IconOn(ground, IsHiResScreen() ? hiRes : normal);
    };
    const Picture taskbar = Drawn({side, side}, kTaskbar, [](HDC) {});
    scripted::system.adapters = {{}};
    {
        ItemOnScreen item(frame);
        item.Tick();
        EXPECT_TRUE(shows(taskbar));
        scripted::system.adapters[0].received = 100;
        scripted::system.adapters[0].transmitted = 200;
        item.Tick();
        EXPECT_TRUE(shows(icon(kTaskbar, 233, 212)));
        SaveScreen("taskbar-icon");
        FillWindow(frame, square, kMarker);
        item.Tick();  // what the shell draws under it becomes the background
        EXPECT_TRUE(shows(icon(kMarker, 238, 218)));
    }
    EXPECT_TRUE(shows(taskbar)) << "as it was at the first refresh";
    WriteNumberSetting(L"TIcon", 0);
    {
        ItemOnScreen item(frame);
        item.Tick();
        item.Tick();
        EXPECT_TRUE(shows(taskbar)) << "switched off";
        FillWindow(frame, square, kMarker);
    }
    EXPECT_EQ(TakePicture(frame).At(square.left, square.top), kMarker);
}

}  // namespace
}  // namespace ui
