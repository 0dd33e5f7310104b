// The two graphs that a timer keeps up to date, the live graph and the signal, as pixels.

#include "item/tick.h"
#include "tests/ui/ui_test.h"

namespace ui {
namespace {

// A pixel of the dialog in logical coordinates; `beside` counts in device pixels.
COLORREF GraphPixel(HWND dialog, int x, int y, int beside = 0) {
    return PixelAt(dialog, x * ScreenScale() + beside, y * ScreenScale());
}

// How many device pixels around a logical place have that colour.
int WidthAt(HWND dialog, int x, int y, COLORREF color) {
    const Picture picture = TakePicture(dialog);
    int width = 0;
    for (int beside = -4; beside <= 4; ++beside) {
        width += picture.At(x * ScreenScale() + beside, y * ScreenScale()) == color;
    }
    return width;
}

void AddSample(uint32_t transmitted, uint32_t received) {
    itemState.sampleCount = std::max(itemState.sampleCount, 0);
    AdvanceRings();
    itemState.outDeltas[itemState.ringIndex] = transmitted;
    itemState.inDeltas[itemState.ringIndex] = received;
}

// The columns of the newest sample and the one before, and the base line.
constexpr int kNewest = 172;
constexpr int kSecond = 165;
constexpr int kBase = 130;

TEST(LiveGraphDialog, Shows_the_last_ticks_at_every_size_and_follows_its_timer) {
    ForEachScreen([](TodayFrame& frame) {
        itemState.sampleCount = -1;
        const int scale = ScreenScale();
        const RECT labels = {4 * scale, 16 * scale, 34 * scale, 136 * scale};
        const auto empty = [&](HWND dialog) {
            SaveScreen(frame, "live-empty");
            ExpectReadable(dialog, frame);
            EXPECT_FALSE(HasColor(TakePicture(dialog), labels, 0)) << "labels without samples";
            AddSample(800, 200);
            AddSample(0, 512);
            SendMessageW(dialog, WM_TIMER, 99, 0);
            EXPECT_FALSE(HasColor(TakePicture(dialog), labels, 0)) << "another timer's message repaints nothing";
            WaitUntil([&] { return HasColor(TakePicture(dialog), labels, 0); });
            EXPECT_EQ(WidthAt(dialog, kNewest, kBase - 40, kBlue), 3);
            EXPECT_NE(GraphPixel(dialog, kNewest, kBase - 52), kBlue) << "512 of 1,024";
            EXPECT_EQ(GraphPixel(dialog, kSecond, kBase - 10), kBlue) << "the smaller one stands in front";
            EXPECT_EQ(GraphPixel(dialog, kSecond, kBase - 70), kRed);
            for (uint32_t i = 0; i < 25; ++i) {
                AddSample(500 * i, i % 3 == 0 ? 500 * i : 12000 - 500 * i);
            }
            InvalidateRect(dialog, nullptr, FALSE);
        };
        const auto full = [&](HWND dialog) {
            SaveScreen(frame, "live-full");
            SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        };
        RunTool(frame, kLiveGraphTool, {}, empty, full);
    });
}

constexpr COLORREF kGreen = RGB(0, 255, 0);
constexpr POINT kSignalGraph = {13, 89};

void Tick(HWND dialog) {
    SendMessageW(dialog, WM_TIMER, 13, 0);
}

TEST(SignalDialog, Draws_every_reading_to_the_pixel_on_every_screen) {
    struct Row {
        int place;
        int32_t reading;
        int top;  // 0: no line
    };
    const Row rows[] = {{0, -89, 66}, {3, -90, 0}, {9, -88, 64}, {15, -59, 6},
                        {18, -58, 4}, {24, 20, 4}, {39, -66, 20}};
    ForEachScreen([&](TodayFrame& frame) {
        std::fill_n(itemState.SignalHistory, kSignalReadings, kNoSignal);
        itemState.SignalDbm = kNoSignal;
        RunTool(frame, kSignalTool, {}, [&](HWND dialog) {
            EXPECT_EQ(TextsOf(dialog, {IDC_SIGNAL_STRENGTH, IDC_SIGNAL_STATUS}), (Texts{L"-200dBm", L"No Signal"}));
            ExpectReadable(dialog, frame);
            Tick(dialog);
            SaveScreen(frame, "signal-none");
            for (const Row& row : rows) {
                itemState.SignalHistory[row.place] = row.reading;
            }
            Tick(dialog);
            for (const Row& row : rows) {
                SCOPED_TRACE(row.reading);
                const int x = kSignalGraph.x + 45 + 3 * row.place;
                EXPECT_EQ(WidthAt(dialog, x, kSignalGraph.y + 67, kGreen), row.top != 0 ? 3 * ScreenScale() : 0);
                EXPECT_EQ(GraphPixel(dialog, x, kSignalGraph.y + row.top) == kGreen, row.top != 0);
                EXPECT_NE(GraphPixel(dialog, x, kSignalGraph.y + row.top - 2), kGreen);
            }
            for (int i = 0; i < kSignalReadings; ++i) {
                itemState.SignalHistory[i] = -88 + 28 * i / 39 + i % 5;
            }
            itemState.SignalDbm = -56;
            Tick(dialog);
            SaveScreen(frame, "signal-full");
            RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
            itemState.SignalDbm = -81;
            SendMessageW(dialog, WM_TIMER, 99, 0);
            EXPECT_EQ(TextOf(dialog, IDC_SIGNAL_STRENGTH), L"-56dBm") << "another timer's message";
            WaitUntil([&] { return WidthAt(dialog, kSignalGraph.x + 162, kSignalGraph.y + 67, kGreen) != 0; });
            EXPECT_EQ(TextsOf(dialog, {IDC_SIGNAL_STRENGTH, IDC_SIGNAL_STATUS}), (Texts{L"-81dBm", L"Very Low"}));
            SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        });
    });
}

}  // namespace
}  // namespace ui
