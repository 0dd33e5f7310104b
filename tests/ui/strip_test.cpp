// The strip's pixels on every screen.

#include <gtest/gtest.h>

#include <algorithm>

#include "item/item_state.h"
#include "platform/icons.h"
#include "tests/ui/item_on_screen.h"

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);
constexpr COLORREF kSilver = RGB(192, 192, 192);

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
        ui::ItemOnScreen item(frame);
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
        ui::ItemOnScreen item(frame);
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

TEST(StripPixels, A_pen_that_could_not_be_made_leaves_its_lines_out) {
    const ui::TodayFrame frame(ui::kScreenSizes[0]);
    ui::ItemOnScreen item(frame);
    item.LayOut(ui::kScreenSizes[0]);
    const Picture empty = item.Repaint();
    itemState.sampleCount = kSampleSlots;
    std::fill_n(itemState.inDeltas, kSampleSlots, kFullScale);
    for (HPEN* pen : {&itemState.bluePen, &itemState.redPen, &itemState.silverPen}) {
        DeleteObject(std::exchange(*pen, nullptr));
    }
    const Picture strip = item.Repaint();
    int changed = 0;
    for (int y = 0; y < strip.height; ++y) {
        for (int x = 0; x < strip.width; ++x) {
            changed += strip.At(x, y) != empty.At(x, y);
        }
    }
    EXPECT_EQ(changed, 0);
}

TEST(StripPixels, Full_scale_traffic_fills_the_top_row_and_sent_covers_received) {
    ui::ForEachScreen([](ui::TodayFrame& frame, SIZE screen) {
        const Graph graph(screen);
        ui::ItemOnScreen item(frame);
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
        ui::ItemOnScreen item(frame);
        item.LayOut(screen);
        itemState.SignalDbm = -50;
        item.Repaint();
        // A refresh copies the graph again, with the block that is larger than a normal screen's surface.
        EXPECT_FALSE(item.QueryRefresh());
        const Picture strip = TakePicture(item.window);
        for (const Place& place : places) {
            ui::ExpectIcon(strip, place.x * scale, 4, 16 * scale, hiRes ? place.hiRes : place.normal, ui::kWatermark);
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
        ui::ItemOnScreen item(frame);
        item.LayOut(ui::kScreenSizes[0]);
        itemState.SignalDbm = row.before;
        item.Repaint();
        const RECT icon = {50, 4, 66, 20};
        ui::FillWindow(item.window, icon, ui::kMarker);
        itemState.SignalDbm = row.now;
        EXPECT_FALSE(item.QueryRefresh());
        const Picture strip = TakePicture(item.window);
        bool drawn = false;
        for (int x = icon.left; x < icon.right; ++x) {
            drawn |= strip.At(x, 19) != ui::kMarker;
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

}  // namespace
