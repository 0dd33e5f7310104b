// The signal view: words, the graph's pixels, and what is left of them between two ticks.

#include "tests/ui/ui_test.h"

namespace ui {
namespace {

constexpr COLORREF kGreen = RGB(0, 255, 0);
constexpr POINT kGraph = {13, 89};  // logical pixels

void Tick(HWND dialog) {
    SendMessageW(dialog, WM_TIMER, 13, 0);
}

bool IsGreen(HWND dialog, int x, int y) {
    return PixelAt(dialog, (kGraph.x + x) * ScreenScale(), (kGraph.y + y) * ScreenScale()) == kGreen;
}

TEST(SignalDialog, Draws_every_reading_to_the_pixel_on_every_screen) {
    struct Row {
        int place;
        int32_t reading;
        int top;  // 0: no line
    };
    const Row rows[] = {{0, -89, 66}, {3, -90, 0}, {9, -88, 64}, {15, -59, 6},
                        {18, -58, 4}, {24, 20, 4}, {39, -66, 20}};
    ForEachScreen([&](TodayFrame& frame, SIZE) {
        std::fill_n(itemState.SignalHistory, kSignalReadings, kNoSignal);
        itemState.SignalDbm = kNoSignal;
        RunTool(frame, kSignalTool, {}, [&](HWND dialog) {
            EXPECT_EQ(TextsOf(dialog, {IDC_SIGNAL_STRENGTH, IDC_SIGNAL_STATUS}), (Texts{L"-200dBm", L"No Signal"}));
            ExpectReadable(dialog, frame.window);
            Tick(dialog);
            SaveScreen(frame, "signal-none");
            for (const Row& row : rows) {
                itemState.SignalHistory[row.place] = row.reading;
            }
            Tick(dialog);
            for (const Row& row : rows) {
                SCOPED_TRACE(row.reading);
                const int x = 45 + 3 * row.place;
                for (const int column : {-2, -1, 0, 1, 2}) {
                    const bool drawn = row.top != 0 && abs(column) < 2;
                    EXPECT_EQ(IsGreen(dialog, x + column, 67), drawn);
                    EXPECT_EQ(IsGreen(dialog, x + column, row.top), drawn);
                }
                EXPECT_FALSE(IsGreen(dialog, x, row.top - 2));
            }
            for (int i = 0; i < kSignalReadings; ++i) {
                itemState.SignalHistory[i] = -88 + 28 * i / 39 + i % 5;
            }
            itemState.SignalDbm = -56;
            Tick(dialog);
            SaveScreen(frame, "signal-full");
        });
    });
}

TEST(SignalDialog, Its_timer_brings_the_present_reading_and_draws_what_was_erased) {
    const TodayFrame frame(kScreenSizes[0]);
    std::fill_n(itemState.SignalHistory, kSignalReadings, -60);
    itemState.SignalDbm = -66;
    RunTool(frame, kSignalTool, {}, [](HWND dialog) {
        Tick(dialog);
        RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
        EXPECT_FALSE(IsGreen(dialog, 60, 50));
        itemState.SignalDbm = -81;
        SendMessageW(dialog, WM_TIMER, 99, 0);
        EXPECT_EQ(TextOf(dialog, IDC_SIGNAL_STRENGTH), L"-66dBm") << "another timer's message";
        WaitUntil([dialog] { return IsGreen(dialog, 60, 50); });
        EXPECT_EQ(TextsOf(dialog, {IDC_SIGNAL_STRENGTH, IDC_SIGNAL_STATUS}), (Texts{L"-81dBm", L"Very Low"}));
        SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
}

}  // namespace
}  // namespace ui
