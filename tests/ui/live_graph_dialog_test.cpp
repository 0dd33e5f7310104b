// The live graph's dialog: rings as pixels, the timer, the end.

#include "item/tick.h"
#include "tests/ui/layout.h"
#include "tests/ui/usage_screens.h"

namespace ui {
namespace {

void OpenLiveGraph(const TodayFrame& frame) {
    DispatchTap(frame.window, 10, 10);
}

void AddSample(uint32_t transmitted, uint32_t received) {
    if (itemState.sampleCount < 0) {
        itemState.sampleCount = 0;
    }
    AdvanceRings();
    itemState.outDeltas[itemState.ringIndex] = transmitted;
    itemState.inDeltas[itemState.ringIndex] = received;
}

// A pixel of the picture, logical coordinates of the graph.
COLORREF GraphPixel(HWND dialog, int x, int y) {
    return PixelAt(dialog, (x + 4) * ScreenScale(), (y + 16) * ScreenScale());
}

// Percentage that the line of that colour shows which stands on the base line at column x. The pen's round end reaches
// one device pixel further.
int LineHeight(HWND dialog, int x, COLORREF color) {
    const int scale = ScreenScale();
    const int foot = (114 + 16) * scale - 1;
    int height = 0;
    while (PixelAt(dialog, (x + 4) * scale, foot - height) == color) {
        ++height;
    }
    return height == 0 ? 0 : (height - 1) / scale;
}

bool HasInk(HWND dialog, int left, int top, int right, int bottom) {
    for (int y = top; y < bottom; ++y) {
        for (int x = left; x < right; ++x) {
            if (GraphPixel(dialog, x, y) == RGB(0, 0, 0)) {
                return true;
            }
        }
    }
    return false;
}

TEST(LiveGraphDialog, Shows_the_last_ticks_at_every_size) {
    ForEachScreen([](TodayFrame& frame, SIZE screen) {
        itemState.sampleCount = -1;
        RunDialogScript([&] { OpenLiveGraph(frame); },
                        {[&](HWND dialog) {
                             SaveScreen(frame, "live-empty-" + NameOf(screen));
                             EXPECT_FALSE(HasInk(dialog, 0, 0, 30, 120)) << "labels without samples";
                             EXPECT_EQ(GraphPixel(dialog, 5, 5), RGB(255, 255, 255));
                             AddSample(0, 512);
                             InvalidateRect(dialog, nullptr, FALSE);
                         },
                         [&](HWND dialog) {
                             EXPECT_TRUE(HasInk(dialog, 0, 0, 30, 120));
                             EXPECT_EQ(LineHeight(dialog, 168, kBlue), 50);
                             EXPECT_EQ(LineHeight(dialog, 161, kBlue), 0);
                             for (uint32_t i = 0; i < 25; ++i) {
                                 AddSample(500 * i, i % 3 == 0 ? 500 * i : 12000 - 500 * i);
                             }
                             InvalidateRect(dialog, nullptr, FALSE);
                         },
                         [&](HWND dialog) {
                             SaveScreen(frame, "live-full-" + NameOf(screen));
                             // The newest value, 12,000 of 102,400, is received in front of the same transmitted.
                             EXPECT_EQ(LineHeight(dialog, 168, kBlue), 11);
                             EXPECT_EQ(LineHeight(dialog, 161, kRed), 11);
                             EXPECT_EQ(LineHeight(dialog, 35, kRed), 2) << "six samples were pushed out";
                             AddSample(12000000, 42949673);
                             InvalidateRect(dialog, nullptr, FALSE);
                         },
                         [&](HWND dialog) {
                             SaveScreen(frame, "live-beyond-" + NameOf(screen));
                             ExpectReadable(dialog, frame.window);
                             EXPECT_EQ(LineHeight(dialog, 168, kRed), 1);
                             Press(dialog, IDOK);
                         }});
    });
}

TEST(LiveGraphDialog, The_timer_brings_new_samples_to_the_screen) {
    TodayFrame frame({240, 320});
    AddSample(1000, 0);
    RunDialogScript([&] { OpenLiveGraph(frame); }, {[](HWND dialog) {
                        EXPECT_EQ(LineHeight(dialog, 168, kRed), 97);
                        AddSample(0, 500);
                        SendMessageW(dialog, WM_TIMER, 99, 0);
                        EXPECT_EQ(LineHeight(dialog, 168, kRed), 97) << "another timer's message repaints nothing";
                        WaitUntil([dialog] { return GraphPixel(dialog, 168, 113) == kBlue; });
                        EXPECT_EQ(LineHeight(dialog, 161, kRed), 97);
                        Press(dialog, IDOK);
                    }});
}

TEST(LiveGraphDialog, The_smaller_value_stands_in_front) {
    TodayFrame frame({240, 320});
    AddSample(200, 800);
    AddSample(800, 200);
    AddSample(600, 600);
    RunDialogScript([&] { OpenLiveGraph(frame); }, {[](HWND dialog) {
                        const auto colors = [dialog](int x, int low, int high) {
                            return std::pair(GraphPixel(dialog, x, 114 - low), GraphPixel(dialog, x, 114 - high));
                        };
                        EXPECT_EQ(colors(154, 10, 70), std::pair(kRed, kBlue));
                        EXPECT_EQ(colors(161, 10, 70), std::pair(kBlue, kRed));
                        EXPECT_EQ(colors(168, 10, 50), std::pair(kBlue, kBlue));
                        for (const int x : {167, 168, 169}) {
                            EXPECT_EQ(GraphPixel(dialog, x, 100), kBlue) << "the pen is three pixels wide";
                        }
                        EXPECT_NE(GraphPixel(dialog, 166, 100), kBlue);
                        EXPECT_NE(GraphPixel(dialog, 170, 100), kBlue);
                        SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
                    }});
}

}  // namespace
}  // namespace ui
