// What the Today screen's messages make of the item, its strip's pixels, and the icon that it paints over the taskbar.

#include "item/item_window.h"
#include "item/settings.h"
#include "item/tick.h"
#include "platform/scoped_gdi.h"
#include "tests/ui/ui_test.h"

namespace ui {
namespace {

constexpr COLORREF kMarker = RGB(1, 200, 3);  // nothing in the product has this colour
constexpr uint32_t kFullScale = 800000;

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
void FillWindow(HWND window, const RECT& area, COLORREF color) {
    HDC context = GetDCEx(window, nullptr, DCX_CACHE);
    const platform::ScopedObject brush(CreateSolidBrush(color));
    FillRect(context, &area, static_cast<HBRUSH>(brush.object));
    ReleaseDC(window, context);
}

// Every pixel at (x, y) equals the icon, 16 logical pixels wide, on a plain ground.
void ExpectIcon(const Picture& picture, int x, int y, int icon, COLORREF ground) {
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

// Ending it is the only way to learn of it.
bool HasTickTimer(HWND item) {
    return KillTimer(item, kTickTimerId) != FALSE;
}

TEST(ItemLife, The_first_refresh_sets_the_height_and_the_second_starts_the_timer_once) {
    ForEachScreen([](TodayFrame& frame) {
        EXPECT_EQ(ItemOnScreen(frame, FALSE).window, nullptr) << "disabled";
        ItemOnScreen item(frame);
        EXPECT_TRUE(item.QueryRefresh());
        EXPECT_EQ(item.record.cyp, IsHiResScreen() ? 40U : 24U);
        EXPECT_FALSE(itemState.gdiReady || HasTickTimer(item.window));
        EXPECT_FALSE(item.QueryRefresh());
        EXPECT_TRUE(itemState.gdiReady && HasTickTimer(item.window));
        EXPECT_FALSE(item.QueryRefresh());
        EXPECT_FALSE(HasTickTimer(item.window)) << "a timer was set again";
    });
}

TEST(ItemLife, Clearing_the_cache_frees_everything_and_a_refresh_brings_it_back) {
    const TodayFrame frame;
    ItemOnScreen item(frame);
    item.ClearCache();
    EXPECT_NE(GetObjectType(itemState.redPen), 0U) << "nothing was there to be freed";
    item.LayOut();
    for (int round = 0; round < 2; ++round) {
        const HGDIOBJ owned[] = {itemState.redPen,         itemState.bluePen,       itemState.silverPen,
                                 itemState.surfaceContext, itemState.surfaceBitmap, itemState.taskbarBackground};
        const auto alive = [&] {
            return std::ranges::count_if(owned, [](HGDIOBJ o) { return GetObjectType(o) != 0; });
        };
        EXPECT_EQ(alive(), 6);
        item.ClearCache();
        EXPECT_EQ(alive(), 0);
        EXPECT_FALSE(itemState.gdiReady || itemState.timerRunning || HasTickTimer(item.window));
        EXPECT_FALSE(item.QueryRefresh());
        EXPECT_TRUE(itemState.gdiReady && itemState.timerRunning);
    }
}

TEST(ItemLife, The_background_is_asked_of_the_host_and_only_timer_11_ticks) {
    const TodayFrame frame;
    ItemOnScreen item(frame);
    item.LayOut();
    HDC context = GetDC(item.window);
    EXPECT_EQ(SendMessageW(item.window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(context), 0), 1);
    ReleaseDC(item.window, context);
    EXPECT_EQ(frame.watermark.hdc, context);
    EXPECT_EQ(frame.watermark.hwnd, item.window);
    const RECT client = {0, 0, 240, 24};
    EXPECT_TRUE(EqualRect(&frame.watermark.rc, &client));
    item.Tick(kTickTimerId + 1);
    EXPECT_EQ(itemState.sampleCount, -1);
    item.Tick();
    EXPECT_EQ(itemState.sampleCount, 0);
}

// The mini graph's measures on the strip.
struct Graph {
    int left, top, baseline, right, width, height, tallest;

    COLORREF At(const Picture& strip, int x, int heightAboveBaseline) const {
        return strip.At(left + x, top + baseline - heightAboveBaseline);
    }
};

Graph GraphOnScreen() {
    return IsHiResScreen() ? Graph{3, 3, 31, 85, 88, 33, 27} : Graph{3, 1, 20, 41, 44, 22, 18};
}

int Differences(const Picture& one, const Picture& other) {
    int count = 0;
    for (size_t i = 0; i < one.pixels.size(); ++i) {
        count += one.pixels[i] != other.pixels[i];
    }
    return count;
}

TEST(Strip, The_graph_has_its_lines_to_the_pixel_and_none_whose_pen_is_missing) {
    ForEachScreen([](TodayFrame& frame) {
        const Graph graph = GraphOnScreen();
        ItemOnScreen item(frame);
        item.LayOut();
        const Picture empty = item.Repaint();
        itemState.sampleCount = 1;
        itemState.ringIndex = itemState.ringStart = 0;
        itemState.inDeltas[0] = 10000;
        itemState.outDeltas[0] = kFullScale;
        Picture strip = item.Repaint();
        EXPECT_EQ(Differences(strip, empty), 2 + graph.right) << "two pixels, and the base line";
        EXPECT_EQ(graph.At(strip, 1, 0), RGB(192, 192, 192));
        EXPECT_EQ(graph.At(strip, graph.right, IsHiResScreen() ? 10 : 7), kBlue);
        EXPECT_EQ(graph.At(strip, graph.right, graph.tallest), kRed);
        itemState.sampleCount = kSampleSlots;
        std::ranges::fill(itemState.inDeltas, kFullScale);
        std::ranges::fill(itemState.outDeltas, 0xFFFFFFFF);
        itemState.outDeltas[1] = itemState.outDeltas[2] = 0;
        strip = item.Repaint();
        EXPECT_EQ(graph.At(strip, graph.right - 36, graph.tallest), kBlue);
        EXPECT_EQ(graph.At(strip, graph.right - 2, graph.tallest), kRed) << "sent covers received";
        SaveScreen(frame, "strip-ring");
        for (HPEN* pen : {&itemState.bluePen, &itemState.redPen, &itemState.silverPen}) {
            DeleteObject(std::exchange(*pen, nullptr));
        }
        EXPECT_EQ(Differences(item.Repaint(), empty), 0);
    });
}

TEST(Strip, Icons_stand_at_their_places_and_the_graph_leaves_the_rest_alone) {
    struct Place {
        int x, normal, hiRes;
    };
    const Place places[] = {{50, 163, 200},  {69, 103, 192},  {88, 101, 189},  {107, 104, 193}, {126, 102, 191},
                            {145, 125, 201}, {164, 126, 202}, {183, 188, 190}, {202, 106, 195}, {221, 105, 194}};
    ForEachScreen([&](TodayFrame& frame) {
        const Graph graph = GraphOnScreen();
        const int scale = ScreenScale();
        ItemOnScreen item(frame);
        item.LayOut();
        itemState.SignalDbm = -75;
        item.Repaint();
        FillWindow(item.window, {50 * scale, 4, 66 * scale, 4 + 16 * scale}, kWatermark);
        itemState.SignalDbm = -50;
        // A refresh draws the changed signal and copies the graph again, with the block that is larger than a normal
        // screen's surface.
        EXPECT_FALSE(item.QueryRefresh());
        const Picture strip = TakePicture(item.window);
        for (const Place& place : places) {
            ExpectIcon(strip, place.x * scale, 4, scale == 2 ? place.hiRes : place.normal, kWatermark);
        }
        EXPECT_NE(strip.At(graph.left, graph.top), kWatermark);
        EXPECT_EQ(strip.At(graph.left - 1, graph.top), kWatermark);
        EXPECT_EQ(strip.At(graph.left + graph.width, graph.top), kWatermark);
        EXPECT_EQ(strip.At(graph.left, graph.top + graph.height), kWatermark);
        SaveScreen(frame, "strip-icons");
    });
}

constexpr int kIconLeft = 75;

void MarkIconPlace(const TodayFrame& frame) {
    const int scale = ScreenScale();
    FillWindow(frame.window, {kIconLeft, 5 * scale, kIconLeft + 16 * scale, 21 * scale}, kMarker);
}

int DifferentTaskbarPixels(const TodayFrame& frame, COLORREF ground) {
    const Picture screen = TakePicture(frame.window);
    const int side = 16 * ScreenScale();
    int different = 0;
    for (int i = 0; i < side * side; ++i) {
        different += screen.At(kIconLeft + i % side, 5 * ScreenScale() + i / side) != ground;
    }
    return different;
}

void ExpectTaskbarIcon(const TodayFrame& frame, int normal, int hiRes, COLORREF ground) {
    ExpectIcon(TakePicture(frame.window), kIconLeft, 5 * ScreenScale(), IsHiResScreen() ? hiRes : normal, ground);
}

TEST(TaskbarIcon, Comes_with_the_second_tick_replaces_the_one_before_it_and_goes_with_the_cache) {
    ForEachScreen([](TodayFrame& frame) {
        scripted::system.adapters = {{}};
        ItemOnScreen item(frame);
        item.LayOut();
        item.Tick();
        EXPECT_EQ(DifferentTaskbarPixels(frame, kTaskbar), 0);
        scripted::system.adapters[0].received = 100;
        scripted::system.adapters[0].transmitted = 200;
        item.Tick();
        ExpectTaskbarIcon(frame, 233, 212, kTaskbar);
        SaveScreen(frame, "taskbar-icon");
        MarkIconPlace(frame);
        item.Tick();
        ExpectTaskbarIcon(frame, 238, 218, kMarker);  // what the shell draws under it becomes the background
        item.ClearCache();
        EXPECT_EQ(DifferentTaskbarPixels(frame, kTaskbar), 0) << "as it was at the first refresh";
    });
}

TEST(TaskbarIcon, Switched_off_leaves_the_screen_alone) {
    const TodayFrame frame;
    WriteNumberSetting(L"TIcon", 0);
    scripted::system.adapters = {{}};
    ItemOnScreen item(frame);
    item.LayOut();
    item.Tick();
    item.Tick();
    EXPECT_EQ(DifferentTaskbarPixels(frame, kTaskbar), 0);
    MarkIconPlace(frame);
    item.ClearCache();
    EXPECT_EQ(DifferentTaskbarPixels(frame, kMarker), 0);
}

}  // namespace
}  // namespace ui
