// The item in its frame: what the Today screen's messages make of it, and the pixels of strip and taskbar icon.

#include "item/item_window.h"

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "item/settings.h"
#include "item/tick.h"
#include "platform/icons.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/data_folder.h"
#include "tests/ui/today_frame.h"

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);
constexpr COLORREF kSilver = RGB(192, 192, 192);
constexpr COLORREF kMarker = RGB(1, 200, 3);

// The item as the module's attach and the host make it, laid out at its place.
struct ItemOnScreen {
    TODAYLISTITEM record = {};
    HWND window = nullptr;

    explicit ItemOnScreen(const ui::TodayFrame& frame) {
        RegisterItemWindowClass();
        InitializeItem();
        UseEmptyDataFolder();
        record.fEnabled = TRUE;
        window = InitializeCustomItem(&record, frame.window);
    }
    ItemOnScreen(const ItemOnScreen&) = delete;
    ItemOnScreen& operator=(const ItemOnScreen&) = delete;
    ~ItemOnScreen() {
        SendMessageW(window, WM_TODAYCUSTOM_CLEARCACHE, 0, reinterpret_cast<LPARAM>(&record));
        DestroyWindow(window);
        UnregisterItemWindowClass();
    }

    bool QueryRefresh() {
        return SendMessageW(window, WM_TODAYCUSTOM_QUERYREFRESHCACHE, 0, reinterpret_cast<LPARAM>(&record)) != FALSE;
    }
    void ClearCache() { SendMessageW(window, WM_TODAYCUSTOM_CLEARCACHE, 0, reinterpret_cast<LPARAM>(&record)); }
    void Tick() { SendMessageW(window, WM_TIMER, kTickTimerId, 0); }

    // As the host: height, place, and a refresh with the drawing resources there.
    void LayOut(SIZE screen) {
        EXPECT_TRUE(QueryRefresh());
        MoveWindow(window, 0, 100, screen.cx, static_cast<int>(record.cyp), TRUE);
        EXPECT_FALSE(QueryRefresh());
    }
    Picture Repaint() {
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
        return TakePicture(window);
    }
};

bool HasTickTimer(HWND item) {
    // Ending it is the only way to learn of it.
    return KillTimer(item, kTickTimerId) != FALSE;
}

void Fill(HWND window, RECT area, COLORREF color) {
    HDC context = GetDCEx(window, nullptr, DCX_CACHE);
    HBRUSH brush = CreateSolidBrush(color);
    FillRect(context, &area, brush);
    DeleteObject(brush);
    ReleaseDC(window, context);
}

// Every pixel of a side x side square at (x, y) equals the icon in its own size on a plain ground.
void ExpectIcon(const Picture& picture, int x, int y, int side, int icon, COLORREF ground) {
    HWND canvas = CreateWindowExW(0, L"Static", nullptr, WS_POPUP | WS_VISIBLE, 0, 0, side, side, nullptr, nullptr,
                                  nullptr, nullptr);
    UpdateWindow(canvas);
    Fill(canvas, {0, 0, side, side}, ground);
    auto loaded =
        static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(icon), IMAGE_ICON, side, side, 0));
    EXPECT_NE(loaded, nullptr) << icon;
    HDC context = GetDC(canvas);
    DrawIconEx(context, 0, 0, loaded, side, side, 0, nullptr, DI_NORMAL);
    ReleaseDC(canvas, context);
    DestroyIcon(loaded);
    const Picture expected = TakePicture(canvas);
    DestroyWindow(canvas);
    int different = 0;
    int drawn = 0;
    for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column) {
            different += picture.At(x + column, y + row) != expected.At(column, row);
            drawn += expected.At(column, row) != ground;
        }
    }
    EXPECT_EQ(different, 0) << "icon " << icon;
    EXPECT_GT(drawn, side) << "icon " << icon << " is hardly there";
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
        ItemOnScreen item(frame);
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
    ItemOnScreen item(frame);
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
    ItemOnScreen item(frame);
    item.ClearCache();
    EXPECT_NE(GetObjectType(itemState.redPen), 0U);
    EXPECT_EQ(itemState.taskbarBackground, nullptr);
    item.LayOut(ui::kScreenSizes[0]);
    EXPECT_NE(itemState.taskbarBackground, nullptr);
}

TEST(ItemLife, The_background_is_asked_of_the_host) {
    ui::TodayFrame frame(ui::kScreenSizes[0]);
    ItemOnScreen item(frame);
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
    ItemOnScreen item(frame);
    SendMessageW(item.window, WM_TIMER, kTickTimerId + 1, 0);
    EXPECT_EQ(itemState.sampleCount, -1);
    item.Tick();
    EXPECT_EQ(itemState.sampleCount, 0);
}

// The mini graph's measures on the strip.
struct Graph {
    int left, top, baseline, right, width, height, tallest;

    explicit Graph(SIZE screen) : left(3), top(1), baseline(20), right(41), width(44), height(22), tallest(18) {
        if (ui::IsHiRes(screen)) {
            *this = Graph(3, 3, 31, 85, 88, 33, 27);
        }
    }
    Graph(int l, int t, int b, int r, int w, int h, int most)
        : left(l), top(t), baseline(b), right(r), width(w), height(h), tallest(most) {}

    COLORREF At(const Picture& strip, int x, int heightAboveBaseline) const {
        return strip.At(left + x, top + baseline - heightAboveBaseline);
    }
    // Columns of the surface that have the colour at that height.
    std::vector<int> Columns(const Picture& strip, int heightAboveBaseline, COLORREF color) const {
        std::vector<int> columns;
        for (int x = 0; x < width; ++x) {
            if (At(strip, x, heightAboveBaseline) == color) {
                columns.push_back(x);
            }
        }
        return columns;
    }
};

constexpr uint32_t kFullScale = 800000;

TEST(StripPixels, One_sample_is_two_single_pixels_over_the_baseline) {
    ui::ForEachScreen([](ui::TodayFrame& frame, SIZE screen) {
        const Graph graph(screen);
        ItemOnScreen item(frame);
        item.LayOut(screen);
        const Picture empty = item.Repaint();
        itemState.sampleCount = 1;
        itemState.ringIndex = itemState.ringStart = 0;
        itemState.inDeltas[0] = 10000;
        itemState.outDeltas[0] = kFullScale;
        const Picture strip = item.Repaint();
        int changed = 0;
        for (int y = 0; y < strip.height; ++y) {
            for (int x = 0; x < strip.width; ++x) {
                const bool onBaseline =
                    y == graph.top + graph.baseline && x > graph.left && x <= graph.left + graph.right;
                changed += !onBaseline && strip.At(x, y) != empty.At(x, y);
                EXPECT_TRUE(!onBaseline || strip.At(x, y) == kSilver) << x;
            }
        }
        EXPECT_EQ(changed, 2);
        EXPECT_EQ(graph.At(strip, graph.right, ui::IsHiRes(screen) ? 10 : 7), kBlue);
        EXPECT_EQ(graph.At(strip, graph.right, graph.tallest), kRed);
    });
}

TEST(StripPixels, Samples_stand_two_pixels_apart_and_the_ring_is_walked_from_its_oldest) {
    ui::ForEachScreen([](ui::TodayFrame& frame, SIZE screen) {
        const Graph graph(screen);
        ItemOnScreen item(frame);
        item.LayOut(screen);
        itemState.sampleCount = kSampleSlots;
        itemState.ringStart = 7;
        itemState.ringIndex = 6;
        // Places 0 (the oldest), 12 and 13 (either side of the array's end) and 18; a line's last pixel stays undrawn,
        // so the peak itself shows where the next line begins.
        for (const int entry : {7, 19, 0, 5}) {
            itemState.outDeltas[entry] = kFullScale;
        }
        const int first = graph.right - 38;
        const std::vector<int> peaks = {first, first + 24, first + 25, first + 26, first + 36};
        const Picture strip = item.Repaint();
        std::vector<int> seen = graph.Columns(strip, graph.tallest, kRed);
        // Steep lines may touch the top row in the column before or after their end.
        std::erase_if(seen, [&](int x) {
            return std::none_of(peaks.begin(), peaks.end(), [x](int peak) { return x == peak; }) &&
                   std::any_of(peaks.begin(), peaks.end(), [x](int peak) { return std::abs(x - peak) == 1; });
        });
        EXPECT_EQ(seen, peaks);
        ui::SaveScreen(frame, "strip-ring-" + ui::NameOf(screen));
    });
}

TEST(StripPixels, Full_scale_traffic_fills_the_top_row_and_sent_covers_received) {
    ui::ForEachScreen([](ui::TodayFrame& frame, SIZE screen) {
        const Graph graph(screen);
        ItemOnScreen item(frame);
        item.LayOut(screen);
        itemState.sampleCount = 5;
        itemState.ringIndex = 4;
        itemState.ringStart = 0;
        for (int i = 0; i < 5; ++i) {
            itemState.inDeltas[i] = i < 3 ? kFullScale : 0;
            itemState.outDeltas[i] = i > 1 ? 0xFFFFFFFF : 0;
        }
        const Picture strip = item.Repaint();
        const int newest = graph.right;
        EXPECT_EQ(graph.At(strip, newest - 8, graph.tallest), kBlue);
        EXPECT_EQ(graph.At(strip, newest - 6, graph.tallest), kBlue);
        for (int x = newest - 4; x < newest; ++x) {
            EXPECT_EQ(graph.At(strip, x, graph.tallest), kRed) << x;
        }
        EXPECT_TRUE(graph.Columns(strip, graph.tallest + 1, kRed).empty());
        EXPECT_NE(graph.At(strip, newest + 1, graph.tallest), kRed);
    });
}

TEST(StripPixels, Icons_stand_at_their_places_and_the_graph_leaves_the_rest_alone) {
    struct Place {
        int x, normal, hiRes;
    };
    const Place places[] = {{50, 163, 200},  {69, 103, 192},  {88, 101, 189},  {107, 104, 193}, {126, 102, 191},
                            {145, 125, 201}, {164, 126, 202}, {183, 188, 190}, {202, 106, 195}, {221, 105, 194}};
    ui::ForEachScreen([&](ui::TodayFrame& frame, SIZE screen) {
        const Graph graph(screen);
        const bool hiRes = ui::IsHiRes(screen);
        const int scale = hiRes ? 2 : 1;
        ItemOnScreen item(frame);
        item.LayOut(screen);
        itemState.SignalDbm = -50;
        item.Repaint();
        // A refresh copies the graph again, with the block that is larger than a normal screen's surface.
        EXPECT_FALSE(item.QueryRefresh());
        const Picture strip = TakePicture(item.window);
        for (const Place& place : places) {
            ExpectIcon(strip, place.x * scale, 4, 16 * scale, hiRes ? place.hiRes : place.normal, ui::kWatermark);
        }
        EXPECT_NE(strip.At(graph.left, graph.top), ui::kWatermark);
        for (int y = 0; y < strip.height; ++y) {
            EXPECT_EQ(strip.At(graph.left - 1, y), ui::kWatermark) << y;
            EXPECT_EQ(strip.At(graph.left + graph.width, y), ui::kWatermark) << y;
        }
        EXPECT_EQ(strip.At(graph.left, graph.top + graph.height), ui::kWatermark);
        ui::SaveScreen(frame, "strip-icons-" + ui::NameOf(screen));
    });
}

TEST(StripPixels, A_refresh_draws_the_signal_only_when_it_changed_or_is_the_lowest) {
    struct Row {
        int32_t before, now;
        bool drawn;
    };
    for (const Row& row : {Row{-50, -50, false}, Row{-50, -75, true}, Row{-200, -200, true}, Row{-90, -90, true},
                           Row{-89, -89, false}}) {
        const ui::TodayFrame frame(ui::kScreenSizes[0]);
        ItemOnScreen item(frame);
        item.LayOut(ui::kScreenSizes[0]);
        itemState.SignalDbm = row.before;
        item.Repaint();
        const RECT icon = {50, 4, 66, 20};
        Fill(item.window, icon, kMarker);
        itemState.SignalDbm = row.now;
        EXPECT_FALSE(item.QueryRefresh());
        const Picture strip = TakePicture(item.window);
        bool drawn = false;
        for (int x = icon.left; x < icon.right; ++x) {
            drawn |= strip.At(x, 19) != kMarker;
        }
        EXPECT_EQ(drawn, row.drawn) << row.before << " then " << row.now;
    }
}

TEST(ModuleIcons, Load_in_their_own_size) {
    struct Row {
        int icon;
        LONG width, height;
    };
    for (const Row& row : {Row{103, 16, 16}, Row{192, 32, 32}, Row{146, 32, 16}, Row{120, 26, 26}}) {
        HICON icon = platform::LoadModuleIcon(itemState.instance, row.icon);
        ICONINFO info = {};
        ASSERT_TRUE(GetIconInfo(icon, &info)) << row.icon;
        BITMAP color = {};
        GetObjectW(info.hbmColor, sizeof(color), &color);
        EXPECT_EQ(color.bmWidth, row.width) << row.icon;
        EXPECT_EQ(color.bmHeight, row.height) << row.icon;
        DeleteObject(info.hbmColor);
        DeleteObject(info.hbmMask);
        DestroyIcon(icon);
    }
    EXPECT_EQ(platform::LoadModuleIcon(itemState.instance, 215), nullptr);
}

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
    ItemOnScreen item(frame);
    item.LayOut(GetParam());
    item.Tick();
    EXPECT_TRUE(IsBare(TakePicture(frame.window), 75));
    Move(100, 200);
    item.Tick();
    ExpectIcon(TakePicture(frame.window), 75, Top(), Side(), Scale() == 2 ? 212 : 233, ui::kTaskbar);
    ui::SaveScreen(frame, "taskbar-icon-" + ui::NameOf(GetParam()));
    item.ClearCache();
    EXPECT_TRUE(IsBare(TakePicture(frame.window), 75));
}

TEST_P(TaskbarIcon, Hides_the_one_before_it) {
    const ui::TodayFrame frame(GetParam());
    scripted::system.adapters.emplace_back();
    ItemOnScreen item(frame);
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
    ItemOnScreen item(frame);
    item.LayOut(GetParam());
    item.Tick();
    item.Tick();
    EXPECT_TRUE(IsBare(TakePicture(frame.window), 10));
    Fill(frame.window, {10, Top(), 10 + Side(), Top() + Side()}, kMarker);
    item.ClearCache();
    EXPECT_EQ(TakePicture(frame.window).At(10, Top()), kMarker);
    EXPECT_EQ(TakePicture(frame.window).At(10 + Side() - 1, Top() + Side() - 1), kMarker);
}

TEST_P(TaskbarIcon, What_the_shell_draws_under_it_becomes_the_background) {
    const ui::TodayFrame frame(GetParam());
    scripted::system.adapters.emplace_back();
    ItemOnScreen item(frame);
    item.LayOut(GetParam());
    item.Tick();
    item.Tick();
    Fill(frame.window, {75, Top(), 75 + Side(), Top() + Side()}, kMarker);
    item.Tick();
    ExpectIcon(TakePicture(frame.window), 75, Top(), Side(), Scale() == 2 ? 218 : 238, kMarker);
    HDC memory = CreateCompatibleDC(nullptr);
    HGDIOBJ previous = SelectObject(memory, itemState.iconBackground);
    EXPECT_EQ(GetPixel(memory, 0, 0), kMarker);
    EXPECT_EQ(GetPixel(memory, Side() - 1, Side() - 1), kMarker);
    SelectObject(memory, previous);
    DeleteDC(memory);
}

}  // namespace
