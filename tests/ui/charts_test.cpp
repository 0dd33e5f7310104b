// The charts as a person uses them at every screen size, and as pixels: the live graph and the signal, which a timer
// keeps up to date, the usage and the export that it opens.

#include "item/tick.h"
#include "tests/support/traffic_logs.h"
#include "tests/ui/ui_test.h"

namespace ui {
namespace {

using Charts = UiTest;
INSTANTIATE_TEST_SUITE_P(Screen, Charts, kEveryScreen);

// Nine device pixels, of which the fifth is the logical place.
std::string Across(HWND dialog, int x, int y) {
    return Colors(TakePicture(dialog), x * ScreenScale() - 4, y * ScreenScale(), 1, 0, 9);
}

void AddSample(uint32_t transmitted, uint32_t received) {
    AdvanceRings();
    itemState.outDeltas[itemState.ringIndex] = transmitted;
    itemState.inDeltas[itemState.ringIndex] = received;
}

TEST_P(Charts, Live_graph_shows_the_last_ticks_and_follows_its_timer) {
    constexpr int kNewest = 172;  // the column of the newest sample
    constexpr int kSecond = 165;
    constexpr int kBase = 130;
    RunTool(kLiveGraphTool, {}, [&](HWND dialog) {
        SaveScreen("live-empty");
        ExpectReadable(dialog);
        const auto empty = TakePicture(dialog).pixels;
        itemState.sampleCount = 0;
        AddSample(800, 200);
        AddSample(0, 512);
        WaitUntil([&] { return TakePicture(dialog).pixels != empty; });
        EXPECT_EQ(Across(dialog, kNewest, kBase - 40), "...BBB...");
        EXPECT_EQ(Across(dialog, kNewest, kBase - 52), ".........") << "512 of 1,024";
        EXPECT_EQ(Across(dialog, kSecond, kBase - 10), "...BBB...") << "the smaller one stands in front";
        EXPECT_EQ(Across(dialog, kSecond, kBase - 70), "...RRR...");
        for (uint32_t i = 0; i < 25; ++i) {
            AddSample(500 * i, i % 3 == 0 ? 500 * i : 12000 - 500 * i);
        }
        InvalidateRect(dialog, nullptr, FALSE);
        SaveScreen("live-full");
        SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
}

TEST_P(Charts, Signal_draws_every_reading_to_the_pixel) {
    // Place, reading, length of the line with its pen's end.
    const std::tuple<int, int32_t, size_t> rows[] = {{0, -89, 3}, {3, -90, 0}, {18, 20, 65}, {39, -66, 49}};
    constexpr POINT kFoot = {58, 156};
    RunTool(kSignalTool, {}, [&](HWND dialog) {
        const int scale = ScreenScale();
        const auto tick = [&] { SendMessageW(dialog, WM_TIMER, 13, 0); };
        const auto texts = [&] { return TextOf(dialog, {IDC_SIGNAL_STRENGTH, IDC_SIGNAL_STATUS}); };
        EXPECT_EQ(texts(), L"-200dBm|No Signal");
        ExpectReadable(dialog);
        tick();
        SaveScreen("signal-none");
        for (const auto& [place, reading, length] : rows) {
            itemState.SignalHistory[place] = reading;
        }
        tick();
        for (const auto& [place, reading, length] : rows) {
            const int x = kFoot.x + 3 * place;
            EXPECT_EQ(Colors(TakePicture(dialog), x * scale, kFoot.y * scale, 0, -scale, 68),
                      std::string(length, 'G') + std::string(68 - length, '.'));
            EXPECT_EQ(Across(dialog, x, kFoot.y), length == 0 ? "........." : scale == 1 ? "...GGG..." : "..GGGGGG.");
        }
        for (int i = 0; i < kSignalReadings; ++i) {
            itemState.SignalHistory[i] = -88 + 28 * i / 39 + i % 5;
        }
        itemState.SignalDbm = -56;
        tick();
        SaveScreen("signal-full");
        itemState.SignalDbm = -81;
        WaitUntil([&] { return texts() == L"-81dBm|Very Low"; });
        SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
}

constexpr int kDaily = 0;
constexpr int kHourly = 1;

// Drops the list down and clicks an entry.
void ChooseMode(HWND dialog, int mode) {
    HWND combo = GetDlgItem(dialog, IDC_USAGE_MODE);
    COMBOBOXINFO info = {};
    info.cbSize = sizeof(info);
    GetComboBoxInfo(combo, &info);
    SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
    RECT entry = {};
    SendMessageW(info.hwndList, LB_GETITEMRECT, static_cast<WPARAM>(mode), reinterpret_cast<LPARAM>(&entry));
    TapPixel(info.hwndList, entry.left + 5, (entry.top + entry.bottom) / 2);
    SendMessageW(combo, CB_SHOWDROPDOWN, FALSE, 0);
}

// The colours of a bar from its foot up to 89 percent, percent by percent.
std::string BarAt(HWND dialog, int x) {
    const int scale = ScreenScale();
    return Colors(TakePicture(dialog), x * scale, scale == 1 ? 193 : 388, 0, -scale, 90);
}

// So many percent of one colour and then, from the foot on, of another.
std::string Bar(size_t lower, char color, size_t whole, char above) {
    return std::string(lower, color) + std::string(whole - lower, above) + std::string(90 - whole, '.');
}

// Whether the control shows the text in black on white in its own font, uncut.
bool ShowsText(HWND control, const std::wstring& text) {
    constexpr COLORREF kWhite = RGB(255, 255, 255);
    RECT size = {};
    UINT format = DT_CALCRECT;
    const auto draw = [&](HDC context) {
        SelectObject(context, reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)));
        DrawTextW(context, text.c_str(), -1, &size, format);
    };
    Drawn({1, 1}, kWhite, draw);
    format = 0;
    const Picture wanted = Drawn({size.right, size.bottom}, kWhite, draw);
    const Picture shown = TakePicture(control);
    const int places = shown.width * shown.height;
    int place = 0;
    while (place < places && !IsAt(shown, place % shown.width, place / shown.width, wanted)) {
        ++place;
    }
    return place < places;
}

TEST_P(Charts, Usage_has_every_view_with_bars_of_exact_heights) {
    // Maximum 1,000: the scale is 1,024.
    WriteLog(2006, 12, LogRecord(1, 0, 410, 820) + LogRecord(2, 0, 820, 410) + LogRecord(31, 23, 0, 1000));
    RandomNumbers random;
    WriteLog(2007, 2, PatchyMonth(2007, 2, random));
    WriteLog(2007, 3, FullMonth(2007, 3, 44739242, 22369621));  // 1024.00MB a day: the widest counts
    itemState.amPmFormat = true;
    RunTool(kUsageTool, {}, [&](HWND dialog) {
        const int scale = ScreenScale();
        const auto title = [&] { return TextOf(dialog, {IDC_USAGE_TITLE}); };
        RECT date = {};
        GetWindowRect(GetDlgItem(dialog, IDC_USAGE_DATE), &date);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&date), 2);
        EXPECT_NEAR(date.left, 26 * scale, 4) << "beside the doubled drawing";
        EXPECT_NEAR(date.top, 21 * scale, 4);
        // Every month can be read in the picker.
        HWND picker = GetDlgItem(dialog, IDC_USAGE_DATE);
        for (WORD month = 1; month <= 12; ++month) {
            PickDate(dialog, IDC_USAGE_DATE, 2006, month, 28);
            EXPECT_TRUE(ShowsText(picker, MonthAbbrev(month)) && ShowsText(picker, L"2006")) << month;
        }
        ChooseMode(dialog, kHourly);
        EXPECT_TRUE(ShowsText(picker, L"Dec") && ShowsText(picker, L"28"));
        SetFocus(picker);
        SendMessageW(picker, WM_KEYDOWN, VK_RIGHT, 0);  // chooses the month
        EXPECT_FALSE(ShowsText(picker, L"Dec")) << "it is highlighted";
        EXPECT_TRUE(ShowsText(picker, L"28,2006"));
        ChooseMode(dialog, kDaily);
        PickDate(dialog, IDC_USAGE_DATE, 2006, 12, 5);
        EXPECT_EQ(BarAt(dialog, 35), Bar(40, 'B', 80, 'R'));
        EXPECT_EQ(BarAt(dialog, 40), Bar(40, 'R', 80, 'B'));
        EXPECT_EQ(Colors(TakePicture(dialog), 185 * scale - 1, 180 * scale, 1, 0, 6), ".RRR..");
        EXPECT_EQ(title(), L"Daily Traffic for Dec 2006");
        PickDate(dialog, IDC_USAGE_DATE, 2007, 2, 8);
        SaveScreen("usage-daily");
        ChooseMode(dialog, kHourly);
        SaveScreen("usage-hourly");
        Tap(dialog, 31, 43);  // table
        SaveScreen("usage-hourly-table");
        if (itemState.screenWidth != itemState.screenHeight) {  // a square one is narrower than what is painted
            ExpectReadable(dialog);
        }
        PickDate(dialog, IDC_USAGE_DATE, 2007, 3, 8);
        Tap(dialog, 73, 43);  // chart
        EXPECT_EQ(BarAt(dialog, 37), Bar(43, 'R', 87, 'B'));
        EXPECT_EQ(BarAt(dialog, 198), Bar(43, 'R', 87, 'B'));
        EXPECT_EQ(title(), L"Hourly Traffic for Mar 8, 2007");
        Tap(dialog, 31, 43);  // table
        ChooseMode(dialog, kDaily);
        SaveScreen("usage-daily-table");
        SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
}

TEST_P(Charts, Export_starts_with_today_and_writes_a_range_that_does_not_end_before_it_begins) {
    const auto open = [](HWND dialog) { Tap(dialog, 157, 43); };
    const auto start = [&](HWND dialog) {
        SaveScreen("export");
        ExpectReadable(dialog);
        SYSTEMTIME today = {};
        GetLocalTime(&today);
        EXPECT_TRUE(ShowsText(GetDlgItem(dialog, IDC_EXPORT_TO), MonthAbbrev(today.wMonth)));
        EXPECT_TRUE(TextOf(dialog, {IDC_EXPORT_FILE}).ends_with(L"\\export.csv"));
        TypeInto(dialog, IDC_EXPORT_FILE, DataPath(L"out.csv"));
        PickDate(dialog, IDC_EXPORT_FROM, 2007, 1, 1);
        PickDate(dialog, IDC_EXPORT_TO, 2006, 12, 31);
        Press(dialog, IDOK);
    };
    const auto correct = [&](HWND dialog) {
        EXPECT_FALSE(FileExists(L"out.csv"));
        for (const char* requests : {"-+", "-+-", "-+-+"}) {
            Press(dialog, IDC_EXPORT_KEYBOARD);
            EXPECT_EQ(keyboard, requests);
            EXPECT_EQ(GetFocus() == nullptr, keyboard.back() == '+');
        }
        PickDate(dialog, IDC_EXPORT_FROM, 2006, 12, 31);
        PickDate(dialog, IDC_EXPORT_TO, 2007, 1, 2);
        Press(dialog, IDOK);
    };
    EXPECT_EQ(RunTool(kUsageTool, {IDOK}, open, start, correct), Texts{L"Error|Invalid date range!|30"});
    EXPECT_EQ(keyboard, "-+-+-");
    EXPECT_EQ(std::ranges::count(ReadWholeFile(L"out.csv"), '\n'), 3) << "a heading and two sums";
}

}  // namespace
}  // namespace ui
