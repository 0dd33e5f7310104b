// The signal view: words, the graph's pixels, and what is left of them between two ticks.

#include "wireless/signal_dialog.h"

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "item/tap_dispatch.h"
#include "resources/resource_ids.h"
#include "tests/ui/layout.h"
#include "tests/ui/today_frame.h"

namespace {

constexpr COLORREF kGreen = RGB(0, 255, 0);
constexpr RECT kGraph = {13, 89, 13 + 168, 89 + 72};

void OpenByTap(const ui::TodayFrame& frame, const std::vector<ui::Step>& steps) {
    const auto scale = static_cast<uint32_t>(ScreenScale());
    ui::RunDialogScript([&] { DispatchTap(frame.window, 55 * scale, 10 * scale); }, steps);
}

void Tick(HWND dialog) {
    SendMessageW(dialog, WM_TIMER, 13, 0);
}

// A pixel of the graph, logical coordinates.
COLORREF GraphPixel(HWND dialog, int x, int y) {
    const int scale = ScreenScale();
    return ui::PixelAt(dialog, (kGraph.left + x) * scale, (kGraph.top + y) * scale);
}

void ForgetReadings() {
    std::fill_n(itemState.SignalHistory, kSignalReadings, kNoSignal);
}

void ExpectGraphIsClear(HWND dialog) {
    const auto covers = [](HWND control, LPARAM) -> BOOL {
        RECT area = {};
        GetWindowRect(control, &area);
        MapWindowPoints(nullptr, GetParent(control), reinterpret_cast<POINT*>(&area), 2);
        const LONG scale = ScreenScale();
        const RECT graph = {kGraph.left * scale, kGraph.top * scale, kGraph.right * scale, kGraph.bottom * scale};
        RECT common = {};
        EXPECT_FALSE(IntersectRect(&common, &area, &graph)) << "control " << GetDlgCtrlID(control);
        return TRUE;
    };
    EnumChildWindows(dialog, covers, 0);
}

TEST(SignalDialog, Draws_every_reading_to_the_pixel_on_every_screen) {
    ui::ForEachScreen([](ui::TodayFrame& frame, SIZE screen) {
        ForgetReadings();
        itemState.SignalDbm = kNoSignal;
        OpenByTap(frame, {[&](HWND dialog) {
                              EXPECT_EQ(ui::TextOf(dialog, IDC_SIGNAL_STRENGTH), L"-200dBm");
                              EXPECT_EQ(ui::TextOf(dialog, IDC_SIGNAL_STATUS), L"No Signal");
                              Tick(dialog);
                              ui::SaveScreen(frame, "signal-none-" + ui::NameOf(screen));
                              for (int x = 44; x < 165; ++x) {
                                  ASSERT_NE(GraphPixel(dialog, x, 67), kGreen) << x;
                              }
                              ui::ExpectReadable(dialog, frame.window);
                              ExpectGraphIsClear(dialog);
                          },
                          [&](HWND dialog) {
                              struct Row {
                                  int place;
                                  int32_t reading;
                                  int top;  // 0: no line
                              };
                              const Row rows[] = {{0, -89, 66},  {3, -90, 0},  {6, -91, 0},  {9, -88, 64},
                                                  {12, -74, 36}, {15, -59, 6}, {18, -58, 4}, {21, -57, 4},
                                                  {24, 20, 4},   {39, -66, 20}};
                              for (const Row& row : rows) {
                                  itemState.SignalHistory[row.place] = row.reading;
                              }
                              Tick(dialog);
                              for (const Row& row : rows) {
                                  const int x = 45 + 3 * row.place;
                                  SCOPED_TRACE(row.reading);
                                  for (int beside = x - 1; beside <= x + 1; ++beside) {
                                      EXPECT_EQ(GraphPixel(dialog, beside, 67) == kGreen, row.top != 0);
                                      EXPECT_EQ(GraphPixel(dialog, beside, row.top) == kGreen, row.top != 0);
                                  }
                                  EXPECT_NE(GraphPixel(dialog, x, row.top - 2), kGreen);
                                  EXPECT_NE(GraphPixel(dialog, x - 2, 67), kGreen);
                                  EXPECT_NE(GraphPixel(dialog, x + 2, 67), kGreen);
                              }
                              for (int i = 0; i < kSignalReadings; ++i) {
                                  itemState.SignalHistory[i] = -88 + 28 * i / 39 + i % 5;
                              }
                              itemState.SignalDbm = -56;
                              Tick(dialog);
                              ui::SaveScreen(frame, "signal-full-" + ui::NameOf(screen));
                              ui::Press(dialog, IDOK);
                          }});
    });
}

TEST(SignalDialog, Its_timer_brings_the_present_reading_and_its_word) {
    ui::TodayFrame frame({240, 320});
    itemState.SignalDbm = -66;
    OpenByTap(frame, {[](HWND dialog) {
                  EXPECT_EQ(ui::TextOf(dialog, IDC_SIGNAL_STATUS), L"Very Good");
                  itemState.SignalDbm = -81;
                  SendMessageW(dialog, WM_TIMER, 99, 0);
                  EXPECT_EQ(ui::TextOf(dialog, IDC_SIGNAL_STRENGTH), L"-66dBm") << "another timer's message";
                  ui::WaitUntil([dialog] { return ui::TextOf(dialog, IDC_SIGNAL_STRENGTH) == L"-81dBm"; });
                  EXPECT_EQ(ui::TextOf(dialog, IDC_SIGNAL_STATUS), L"Very Low");
                  SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
              }});
}

TEST(SignalDialog, What_erases_the_graph_leaves_it_erased_until_the_next_tick) {
    ui::TodayFrame frame({240, 320});
    std::fill_n(itemState.SignalHistory, kSignalReadings, -60);
    OpenByTap(frame, {[](HWND dialog) {
                  Tick(dialog);
                  EXPECT_EQ(GraphPixel(dialog, 60, 50), kGreen);
                  RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
                  EXPECT_EQ(GraphPixel(dialog, 60, 50), GetSysColor(COLOR_3DFACE));
                  Tick(dialog);
                  EXPECT_EQ(GraphPixel(dialog, 60, 50), kGreen);
                  ui::Press(dialog, IDOK);
              }});
}

}  // namespace
