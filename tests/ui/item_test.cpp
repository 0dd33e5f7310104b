// The item's strip, pixel by pixel, and the icon that it paints over the taskbar.

#include "item/item_window.h"
#include "item/tick.h"
#include "platform/scoped_gdi.h"
#include "platform/today.h"
#include "tests/ui/ui_test.h"

namespace ui {
namespace {

constexpr COLORREF kMarker = RGB(1, 200, 3);  // nothing in the product has this colour

// Over whatever the window and its children show there: a colour, and on it an icon that fills the area.
void Paint(HWND window, const RECT& area, COLORREF color, int icon = 0) {
    UpdateWindow(window);
    HDC context = GetDCEx(window, nullptr, DCX_CACHE);
    const platform::ScopedObject brush(CreateSolidBrush(color));
    FillRect(context, &area, static_cast<HBRUSH>(brush.object));
    const int side = area.right - area.left;
    HANDLE loaded = LoadImageW(itemState.instance, MAKEINTRESOURCEW(icon), IMAGE_ICON, side, side, LR_SHARED);
    DrawIconEx(context, area.left, area.top, static_cast<HICON>(loaded), side, side, 0, nullptr, DI_NORMAL);
    ReleaseDC(window, context);
}

// The item as the module's attach and the host make it: window, height, place, and a refresh after which the drawing
// resources are there.
class Item : public UiTest {
  protected:
    TODAYLISTITEM record = {};
    HWND strip = nullptr;

    LRESULT Send(UINT message) { return SendMessageW(strip, message, 0, reinterpret_cast<LPARAM>(&record)); }

    void SetUp() override {
        UiTest::SetUp();
        RegisterItemWindowClass();
        InitializeItem();
        UseEmptyDataFolder();
        record.fEnabled = TRUE;
        strip = InitializeCustomItem(&record, frame);
        EXPECT_TRUE(Send(WM_TODAYCUSTOM_QUERYREFRESHCACHE));
        MoveWindow(strip, 0, 100, itemState.screenWidth, IsHiResScreen() ? 40 : 24, TRUE);
        EXPECT_FALSE(Send(WM_TODAYCUSTOM_QUERYREFRESHCACHE));
    }
};
INSTANTIATE_TEST_SUITE_P(Screen, Item, kEveryScreen);

TEST_P(Item, Graph_has_its_lines_to_the_pixel) {
    const bool hiRes = IsHiResScreen();
    const int right = hiRes ? 88 : 44;  // of the newest sample
    const int base = hiRes ? 34 : 21;
    const int top = base - (hiRes ? 27 : 18);
    const int small = base - (hiRes ? 10 : 7);
    itemState.sampleCount = 1;
    itemState.ringIndex = itemState.ringStart = 0;
    itemState.inDeltas[0] = 10000;
    itemState.outDeltas[0] = 800000;
    InvalidateRect(strip, nullptr, TRUE);
    const Picture sample = TakePicture(strip);
    itemState.sampleCount = 0;
    InvalidateRect(strip, nullptr, TRUE);
    Paint(strip, {4, base, right + 1, base + 1}, RGB(192, 192, 192));
    Paint(strip, {right, top, right + 1, top + 1}, kRed);
    Paint(strip, {right, small, right + 1, small + 1}, kBlue);
    EXPECT_EQ(TakePicture(strip).pixels, sample.pixels);
    itemState.sampleCount = kSampleSlots;
    std::ranges::fill(itemState.inDeltas, 800000);
    std::ranges::fill(itemState.outDeltas, 0xFFFFFFFF);
    itemState.outDeltas[1] = itemState.outDeltas[2] = 0;
    InvalidateRect(strip, nullptr, TRUE);
    EXPECT_EQ(TakePicture(strip).At(right - 36, top), kBlue);
    EXPECT_EQ(TakePicture(strip).At(right - 2, top), kRed) << "sent covers received";
    SaveScreen("strip-ring");
}

TEST_P(Item, Icons_stand_at_their_places_and_the_graph_leaves_the_rest_alone) {
    const std::array<int, 3> icons[] = {{50, 163, 200},  {69, 103, 192},  {88, 101, 189},  {107, 104, 193},
                                        {126, 102, 191}, {145, 125, 201}, {164, 126, 202}, {183, 188, 190},
                                        {202, 106, 195}, {221, 105, 194}};
    const int scale = ScreenScale();
    const auto square = [&](int x) { return RECT{x * scale, 4, (x + 16) * scale, 4 + 16 * scale}; };
    const RECT graph = scale == 2 ? RECT{3, 3, 91, 36} : RECT{3, 1, 47, 23};
    itemState.SignalDbm = -75;
    Paint(strip, {0, 0, 640, 40}, kMarker);
    InvalidateRect(strip, nullptr, TRUE);  // the host's background replaces it
    Paint(strip, square(50), kWatermark);
    itemState.SignalDbm = -50;
    // Draws the changed signal and copies the graph again, with the block that is larger than a normal screen's
    // surface.
    EXPECT_FALSE(Send(WM_TODAYCUSTOM_QUERYREFRESHCACHE));
    SaveScreen("strip-icons");
    const Picture shown = TakePicture(strip);
    EXPECT_NE(shown.At(graph.left, graph.top), kWatermark);
    EXPECT_NE(shown.At(graph.right - 1, graph.bottom - 1), kWatermark);
    for (const RECT& beside :
         {RECT{0, 0, graph.left, 40}, {0, 0, 640, graph.top}, {0, graph.bottom, 640, 40}, {graph.right, 0, 640, 40}}) {
        Paint(strip, beside, kWatermark);
    }
    for (const auto& [x, normal, hiRes] : icons) {
        Paint(strip, square(x), kWatermark, scale == 2 ? hiRes : normal);
    }
    EXPECT_EQ(TakePicture(strip).pixels, shown.pixels);
}

TEST_P(Item, Taskbar_icon_comes_with_the_second_tick_replaces_the_one_before_it_and_goes_with_the_cache) {
    const int scale = ScreenScale();
    const RECT square = {75, 5 * scale, 75 + 16 * scale, 21 * scale};
    const auto expect = [&](COLORREF ground, int icon) {
        const Picture shown = TakePicture(frame);
        Paint(frame, square, ground, icon);
        EXPECT_EQ(TakePicture(frame).pixels, shown.pixels) << icon;
    };
    const auto tick = [&](uint32_t octets) {
        scripted::system.adapters = {{.received = octets, .transmitted = octets}};
        SendMessageW(strip, WM_TIMER, kTickTimerId, 0);
    };
    tick(100);
    expect(kTaskbar, 0);
    tick(200);
    SaveScreen("taskbar-icon");
    expect(kTaskbar, scale == 2 ? 212 : 233);
    Paint(frame, square, kMarker);  // what the shell draws under it becomes the background
    tick(200);
    expect(kMarker, scale == 2 ? 218 : 238);
    itemState.showTaskbarIcon = false;
    Paint(frame, square, kMarker);
    tick(300);
    expect(kMarker, 0);
    itemState.showTaskbarIcon = true;
    Send(WM_TODAYCUSTOM_CLEARCACHE);
    expect(kTaskbar, 0);  // as it was at the first refresh
}

}  // namespace
}  // namespace ui
