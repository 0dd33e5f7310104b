// The charts as a person uses them at every screen size, and as pixels: the live graph and the signal, which a timer
// keeps up to date, the usage and its export.

#include "item/tick.h"
#include "tests/support/traffic_logs.h"
#include "tests/ui/ui_test.h"
#include "trafficlog/export.h"

namespace ui {
namespace {

using Charts = UiTest;
INSTANTIATE_TEST_SUITE_P(Screen, Charts, kEveryScreen);

// The pure colours (R, G, B) and others (.) so many logical pixels above a point.
std::string ColorsAbove(HWND window, int x, int y, std::initializer_list<int> heights) {
    const Picture picture = TakePicture(window);
    std::string colors;
    for (const int height : heights) {
        const COLORREF color = picture.At(x, y - height * ScreenScale());
        colors += color == RGB(255, 0, 0) ? 'R' : color == RGB(0, 0, 255) ? 'B' : color == RGB(0, 255, 0) ? 'G' : '.';
    }
    return colors;
}

// As a person does: the value and its notification.
void PickDate(HWND dialog, int picker, WORD year, WORD month, WORD day) {
    const NMHDR header = {GetDlgItem(dialog, picker), static_cast<UINT_PTR>(picker),
                          static_cast<UINT>(DTN_DATETIMECHANGE)};
    NMDATETIMECHANGE change = {header, GDT_VALID, {year, month, 0, day, 0, 0, 0, 0}};
    SendDlgItemMessageW(dialog, picker, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&change.st));
    SendMessageW(dialog, WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&change));
}

TEST_P(Charts, Live_graph_shows_the_last_ticks_and_follows_its_timer) {
    const auto add = [](uint32_t transmitted, uint32_t received) {
        AdvanceRings();
        itemState.outDeltas[itemState.ringIndex] = transmitted;
        itemState.inDeltas[itemState.ringIndex] = received;
    };
    RunTool(kLiveGraphTool, {}, [&](HWND dialog) {
        const int scale = ScreenScale();
        ExpectReadable(dialog, "live-empty", L"Traffic|OK|");
        itemState.sampleCount = 0;
        add(800, 200);
        add(0, 512);  // of 1,024
        WaitUntil([&] { return ColorsAbove(dialog, 172 * scale, 130 * scale - 1, {0, 50, 51}) == "BB."; });
        EXPECT_EQ(ColorsAbove(dialog, 165 * scale, 130 * scale - 1, {0, 19, 20, 78, 79}), "BBRR.");
        for (uint32_t i = 0; i < 25; ++i) {
            add(500 * i, i % 3 == 0 ? 500 * i : 12000 - 500 * i);
        }
        InvalidateRect(dialog, nullptr, FALSE);
        SaveScreen("live-full");
    });
}

TEST_P(Charts, Signal_draws_every_reading_by_its_height_and_follows_its_timer) {
    RunTool(kSignalTool, {}, [&](HWND dialog) {
        const auto tick = [&] { SendMessageW(dialog, WM_TIMER, 13, 0); };
        tick();
        ExpectReadable(dialog, "signal-none", L"Signal|Current|Signal Strength:|-200dBm|Signal Status:|No Signal|OK|");
        for (const auto& [place, reading, height] : {std::tuple(0, -89, 2), {18, 20, 64}, {39, -66, 48}}) {
            const int x = (58 + 3 * place) * ScreenScale();
            itemState.SignalHistory[place] = reading;
            tick();
            EXPECT_EQ(ColorsAbove(dialog, x, 156 * ScreenScale(), {0, height, height + 1}), "GG.");
        }
        std::ranges::generate(itemState.SignalHistory, [i = 0]() mutable { return -88 + (i += 7) % 29; });
        itemState.SignalDbm = -56;
        tick();
        SaveScreen("signal-full");
        itemState.SignalDbm = -81;
        WaitUntil([&] { return TextsOf(dialog, {IDC_SIGNAL_STRENGTH, IDC_SIGNAL_STATUS}) == L"-81dBm|Very Low|"; });
    });
}

TEST_P(Charts, Usage_has_every_view_with_bars_of_exact_heights) {
    Bytes patchy;  // hours of any size up to eight megabytes, with gaps
    for (uint32_t hour = 0, bits = 1; hour < 28 * 24; ++hour, bits *= 48271) {
        patchy =
            bits % 3 == 0 ? patchy : patchy + LogRecord(1 + hour / 24, hour % 24, bits >> 9, bits >> (9 + bits % 20));
    }
    WriteLog(2007, 2, patchy);
    WriteLog(2007, 3, FullMonth(2007, 3, 44739242, 22369621));  // 1024.00MB a day: the widest counts
    itemState.amPmFormat = true;
    RunTool(kUsageTool, {}, [&](HWND dialog) {
        const int scale = ScreenScale();
        const auto bar = [&](int x, int lower, int upper) {
            return ColorsAbove(dialog, x * scale, scale == 1 ? 193 : 388, {0, lower - 1, lower, upper - 1, upper});
        };
        const auto tap = [&](int x) { Tap(dialog, x * scale, 43 * scale); };
        // By a key, with the list dropped down.
        const auto choose = [combo = GetDlgItem(dialog, IDC_USAGE_MODE)](WPARAM key) {
            SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
            SendMessageW(combo, WM_KEYDOWN, key, 0);
            SendMessageW(combo, CB_SHOWDROPDOWN, FALSE, 0);
        };
        PickDate(dialog, IDC_USAGE_DATE, 2007, 2, 8);
        SaveScreen("usage-daily");
        choose(VK_DOWN);
        // A square screen is narrower than what is painted.
        itemState.screenWidth == itemState.screenHeight
            ? SaveScreen("usage-hourly")
            : ExpectReadable(dialog, "usage-hourly", L"Hourly Traffic for Feb 8, 2007||Hourly|OK|");
        tap(31);  // table
        SaveScreen("usage-hourly-table");
        PickDate(dialog, IDC_USAGE_DATE, 2007, 3, 8);
        tap(73);  // chart
        EXPECT_EQ(bar(37, 43, 87) + bar(198, 43, 87), "RRBB.RRBB.");
        choose(VK_UP);
        EXPECT_EQ(bar(35, 26, 52) + bar(185, 26, 52), "RRBB.RRBB.");
        tap(31);
        SaveScreen("usage-daily-table");
    });
}

TEST_P(Charts, Export_writes_a_range_that_does_not_end_before_it_begins) {
    const auto open = [&] { OpenExport(frame); };
    const Texts told = RunDialog(open, {IDOK}, [&](HWND dialog) {
        EXPECT_TRUE(TextsOf(dialog, {IDC_EXPORT_FILE}).ends_with(L"\\export.csv|"));
        SetDlgItemTextW(dialog, IDC_EXPORT_FILE, L"\\export.csv");
        ExpectReadable(dialog, "export", L"Export to csv file|From||To||Output File:|\\export.csv|Keyboard|Cancel|OK|");
        SetDlgItemTextW(dialog, IDC_EXPORT_FILE, DataPath(L"out.csv").c_str());
        PickDate(dialog, IDC_EXPORT_FROM, 2007, 1, 1);
        PickDate(dialog, IDC_EXPORT_TO, 2006, 12, 31);
        Press(dialog, IDOK);
        EXPECT_FALSE(FileExists(L"out.csv"));
        PickDate(dialog, IDC_EXPORT_FROM, 2006, 12, 31);
        PickDate(dialog, IDC_EXPORT_TO, 2007, 1, 2);
    });
    EXPECT_EQ(told, Texts{L"Error|Invalid date range!|30"});
    EXPECT_EQ(std::ranges::count(ReadWholeFile(L"out.csv"), '\n'), 3) << "a heading and two sums";
}

}  // namespace
}  // namespace ui
