// The strip's pixels on every screen.

#include "tests/ui/item_on_screen.h"

namespace ui {
namespace {

constexpr uint32_t kFullScale = 800000;

// The mini graph's measures on the strip.
struct Graph {
    int left, top, baseline, right, width, height, tallest;

    COLORREF At(const Picture& strip, int x, int heightAboveBaseline) const {
        return strip.At(left + x, top + baseline - heightAboveBaseline);
    }
};

Graph GraphOn(SIZE screen) {
    return IsHiRes(screen) ? Graph{3, 3, 31, 85, 88, 33, 27} : Graph{3, 1, 20, 41, 44, 22, 18};
}

int Differences(const Picture& one, const Picture& other) {
    int count = 0;
    for (size_t i = 0; i < one.pixels.size(); ++i) {
        count += one.pixels[i] != other.pixels[i];
    }
    return count;
}

TEST(StripPixels, The_graph_has_its_lines_to_the_pixel_and_none_whose_pen_is_missing) {
    ForEachScreen([](TodayFrame& frame, SIZE screen) {
        const Graph graph = GraphOn(screen);
        ItemOnScreen item(frame);
        item.LayOut(screen);
        const Picture empty = item.Repaint();
        itemState.sampleCount = 1;
        itemState.ringIndex = itemState.ringStart = 0;
        itemState.inDeltas[0] = 10000;
        itemState.outDeltas[0] = kFullScale;
        Picture strip = item.Repaint();
        EXPECT_EQ(Differences(strip, empty), 2 + graph.right) << "two pixels, and the base line";
        EXPECT_EQ(graph.At(strip, 1, 0), RGB(192, 192, 192));
        EXPECT_EQ(graph.At(strip, graph.right, IsHiRes(screen) ? 10 : 7), kBlue);
        EXPECT_EQ(graph.At(strip, graph.right, graph.tallest), kRed);
        itemState.sampleCount = kSampleSlots;
        itemState.ringStart = 7;
        itemState.ringIndex = 6;
        // The two oldest, received alone, and the two newest, both ways.
        for (const int entry : {7, 8, 5, 6}) {
            itemState.inDeltas[entry] = kFullScale;
            itemState.outDeltas[entry] = entry >= 7 ? 0 : 0xFFFFFFFF;
        }
        strip = item.Repaint();
        EXPECT_EQ(graph.At(strip, graph.right - 38, graph.tallest), kBlue);
        EXPECT_EQ(graph.At(strip, graph.right - 2, graph.tallest), kRed) << "sent covers received";
        SaveScreen(frame, "strip-ring");
        for (HPEN* pen : {&itemState.bluePen, &itemState.redPen, &itemState.silverPen}) {
            DeleteObject(std::exchange(*pen, nullptr));
        }
        EXPECT_EQ(Differences(item.Repaint(), empty), 0);
    });
}

TEST(StripPixels, Icons_stand_at_their_places_and_the_graph_leaves_the_rest_alone) {
    struct Place {
        int x, normal, hiRes;
    };
    const Place places[] = {{50, 163, 200},  {69, 103, 192},  {88, 101, 189},  {107, 104, 193}, {126, 102, 191},
                            {145, 125, 201}, {164, 126, 202}, {183, 188, 190}, {202, 106, 195}, {221, 105, 194}};
    ForEachScreen([&](TodayFrame& frame, SIZE screen) {
        const Graph graph = GraphOn(screen);
        const int scale = ScreenScale();
        ItemOnScreen item(frame);
        item.LayOut(screen);
        itemState.SignalDbm = -75;
        item.Repaint();
        FillWindow(item.window, {50 * scale, 4, 66 * scale, 4 + 16 * scale}, kWatermark);
        itemState.SignalDbm = -50;
        // A refresh draws the changed signal and copies the graph again, with the block that is larger than a normal
        // screen's surface.
        EXPECT_FALSE(item.QueryRefresh());
        const Picture strip = TakePicture(item.window);
        for (const Place& place : places) {
            ExpectIcon(strip, place.x * scale, 4, 16 * scale, scale == 2 ? place.hiRes : place.normal, kWatermark);
        }
        EXPECT_NE(strip.At(graph.left, graph.top), kWatermark);
        for (int y = 0; y < strip.height; ++y) {
            EXPECT_EQ(strip.At(graph.left - 1, y), kWatermark) << y;
            EXPECT_EQ(strip.At(graph.left + graph.width, y), kWatermark) << y;
        }
        EXPECT_EQ(strip.At(graph.left, graph.top + graph.height), kWatermark);
        SaveScreen(frame, "strip-icons");
    });
}

}  // namespace
}  // namespace ui
