// The live graph's dialog: rings as pixels, and the timer.

#include "item/tick.h"
#include "tests/ui/usage_screens.h"

namespace ui {
namespace {

void AddSample(uint32_t transmitted, uint32_t received) {
    itemState.sampleCount = std::max(itemState.sampleCount, 0);
    AdvanceRings();
    itemState.outDeltas[itemState.ringIndex] = transmitted;
    itemState.inDeltas[itemState.ringIndex] = received;
}

// The picture's origin in the dialog, in logical pixels; the base line; the columns of the newest and the one before.
constexpr POINT kOrigin = {4, 16};
constexpr int kBase = 114;
constexpr int kNewest = 168;
constexpr int kSecond = 161;

// `beside` counts in device pixels.
COLORREF GraphPixel(HWND dialog, int x, int y, int beside = 0) {
    return PixelAt(dialog, (x + kOrigin.x) * ScreenScale() + beside, (y + kOrigin.y) * ScreenScale());
}

TEST(LiveGraphDialog, Shows_the_last_ticks_at_every_size) {
    ForEachScreen([](TodayFrame& frame, SIZE) {
        itemState.sampleCount = -1;
        const RECT labels = {kOrigin.x, kOrigin.y, kOrigin.x + 30, kOrigin.y + 120};
        const auto empty = [&](HWND dialog) {
            SaveScreen(frame, "live-empty");
            ExpectReadable(dialog, frame.window);
            EXPECT_FALSE(Pixels(dialog).HasInk(labels)) << "labels without samples";
            AddSample(800, 200);
            AddSample(0, 512);
            InvalidateRect(dialog, nullptr, FALSE);
        };
        const auto few = [&](HWND dialog) {
            EXPECT_TRUE(Pixels(dialog).HasInk(labels));
            for (const int column : {-2, -1, 0, 1, 2}) {
                EXPECT_EQ(GraphPixel(dialog, kNewest, kBase - 40, column) == kBlue, abs(column) < 2);
            }
            EXPECT_NE(GraphPixel(dialog, kNewest, kBase - 52), kBlue) << "512 of 1,024";
            EXPECT_EQ(GraphPixel(dialog, kSecond, kBase - 10), kBlue) << "the smaller one stands in front";
            EXPECT_EQ(GraphPixel(dialog, kSecond, kBase - 70), kRed);
            for (uint32_t i = 0; i < 25; ++i) {
                AddSample(500 * i, i % 3 == 0 ? 500 * i : 12000 - 500 * i);
            }
            InvalidateRect(dialog, nullptr, FALSE);
        };
        const auto full = [&](HWND) { SaveScreen(frame, "live-full"); };
        RunTool(frame, kLiveGraphTool, {}, empty, few, full);
    });
}

TEST(LiveGraphDialog, The_timer_brings_new_samples_to_the_screen) {
    const TodayFrame frame(kScreenSizes[0]);
    AddSample(1000, 0);
    RunTool(frame, kLiveGraphTool, {}, [](HWND dialog) {
        EXPECT_EQ(GraphPixel(dialog, kNewest, kBase - 90), kRed);
        AddSample(0, 500);
        SendMessageW(dialog, WM_TIMER, 99, 0);
        EXPECT_EQ(GraphPixel(dialog, kNewest, kBase - 90), kRed) << "another timer's message repaints nothing";
        WaitUntil([dialog] { return GraphPixel(dialog, kNewest, kBase - 40) == kBlue; });
        EXPECT_EQ(GraphPixel(dialog, kSecond, kBase - 90), kRed);
        SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
}

}  // namespace
}  // namespace ui
