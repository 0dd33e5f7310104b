// The usage dialog and the export that it opens, as a person uses them at every screen size.

#include "tests/support/traffic_logs.h"
#include "tests/ui/ui_test.h"

namespace ui {
namespace {

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
    Tap(info.hwndList, entry.left + 5, (entry.top + entry.bottom) / 2);
    SendMessageW(combo, CB_SHOWDROPDOWN, FALSE, 0);
}

void ShowDate(HWND dialog, WORD year, WORD month, WORD day) {
    PickDate(dialog, IDC_USAGE_DATE, {year, month, 0, day, 0, 0, 0, 0});
}

// The places to tap.
void ShowChart(HWND dialog) {
    TapScaled(dialog, 73, 43);
}
void ShowTable(HWND dialog) {
    TapScaled(dialog, 31, 43);
}
void OpenExport(HWND dialog) {
    TapScaled(dialog, 157, 43);
}
void TapNextPage(HWND dialog) {
    ::IsLandscape() ? TapScaled(dialog, 208, 107) : TapScaled(dialog, 150, 206);
}

// The colours of a bar at some heights, in percent; blank where there is none. x is logical.
std::string BarAt(HWND dialog, int x, std::initializer_list<int> heights) {
    const Picture picture = TakePicture(dialog);
    const int scale = ScreenScale();
    const int foot = scale == 1 ? 193 : 388;
    std::string colors;
    for (const int height : heights) {
        const COLORREF color = picture.At(x * scale, foot - height * scale);
        colors += color == kRed ? 'R' : color == kBlue ? 'B' : ' ';
    }
    return colors;
}

// How many of the eight rows of a table page have text.
int FilledRows(HWND dialog) {
    const Picture picture = TakePicture(dialog);
    const int scale = ScreenScale();
    int rows = 0;
    for (int row = 0; row < 8; ++row) {
        const RECT area = {10 * scale, (89 + 14 * row) * scale, 38 * scale, (101 + 14 * row) * scale};
        rows += HasColor(picture, area, RGB(0, 0, 0));
    }
    return rows;
}

TEST(UsageDialog, Every_view_at_every_size_with_bars_of_exact_heights) {
    // Maximum 1,000: the scale is 1,024.
    WriteLog(2006, 12, LogRecord(1, 0, 410, 820) + LogRecord(2, 0, 820, 410) + LogRecord(31, 23, 0, 1000));
    RandomNumbers random;
    WriteLog(2007, 2, PatchyMonth(2007, 2, random));
    WriteLog(2007, 3, FullMonth(2007, 3, 44739242, 22369621));  // 1024.00MB a day: the widest counts
    itemState.amPmFormat = true;
    ForEachScreen([](TodayFrame& frame) {
        RunTool(frame, kUsageTool, {}, [&](HWND dialog) {
            RECT date = {};
            GetWindowRect(GetDlgItem(dialog, IDC_USAGE_DATE), &date);
            MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&date), 2);
            EXPECT_NEAR(date.left, 26 * ScreenScale(), 4) << "beside the doubled drawing";
            EXPECT_NEAR(date.top, 21 * ScreenScale(), 4);
            ShowDate(dialog, 2006, 12, 5);
            EXPECT_EQ(BarAt(dialog, 35, {0, 39, 41, 79, 81}), "BBRR ");
            EXPECT_EQ(BarAt(dialog, 40, {0, 39, 41, 79, 81}), "RRBB ");
            EXPECT_EQ(BarAt(dialog, 45, {0}), " ");
            const Picture chart = TakePicture(dialog);
            for (int column = 0; column < 6; ++column) {
                const COLORREF color = chart.At(185 * ScreenScale() - 1 + column, 180 * ScreenScale());
                EXPECT_EQ(color == kRed, column >= 1 && column <= 3) << "three device pixels wide";
            }
            EXPECT_EQ(TextOf(dialog, IDC_USAGE_TITLE), L"Daily Traffic for Dec 2006");
            ShowDate(dialog, 2007, 2, 8);
            SaveScreen(frame, "usage-daily");
            ChooseMode(dialog, kHourly);
            SaveScreen(frame, "usage-hourly");
            ShowTable(dialog);
            SaveScreen(frame, "usage-hourly-table");
            if (itemState.screenWidth != itemState.screenHeight) {  // a square one is narrower than what is painted
                ExpectReadable(dialog, frame);
            }
            ShowDate(dialog, 2007, 3, 8);
            ShowChart(dialog);
            for (const int hour : {1, 24}) {
                EXPECT_EQ(BarAt(dialog, 30 + hour * 7, {0, 42, 44, 86, 88}), "RRBB ") << hour;
            }
            EXPECT_EQ(TextOf(dialog, IDC_USAGE_TITLE), L"Hourly Traffic for Mar 8, 2007");
            ShowTable(dialog);
            TapNextPage(dialog);
            EXPECT_EQ(FilledRows(dialog), 8);
            TapNextPage(dialog);
            EXPECT_EQ(FilledRows(dialog), 7) << "23 hours";
            ChooseMode(dialog, kDaily);
            SaveScreen(frame, "usage-daily-table");
            ShowChart(dialog);
            EXPECT_EQ(BarAt(dialog, 35, {0}), "R") << "the chart again";
            SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        });
    });
}

TEST(UsageDialog, Every_month_can_be_read_in_the_picker_and_chosen_by_keys) {
    ForEachScreen([](TodayFrame& frame) {
        RunTool(frame, kUsageTool, {}, [](HWND dialog) {
            HWND picker = GetDlgItem(dialog, IDC_USAGE_DATE);
            for (WORD month = 1; month <= 12; ++month) {
                ShowDate(dialog, 2006, month, 28);
                EXPECT_TRUE(ShowsText(picker, MonthAbbrev(month)) && ShowsText(picker, L"2006")) << month;
            }
            ChooseMode(dialog, kHourly);
            EXPECT_TRUE(ShowsText(picker, L"Dec") && ShowsText(picker, L"28"));
            SetFocus(picker);
            SendMessageW(picker, WM_KEYDOWN, VK_RIGHT, 0);  // chooses the month
            EXPECT_FALSE(ShowsText(picker, L"Dec")) << "it is highlighted";
            EXPECT_TRUE(ShowsText(picker, L"28,2006"));
            SendMessageW(picker, WM_KEYDOWN, VK_UP, 0);
            UpdateWindow(dialog);
            EXPECT_EQ(TextOf(dialog, IDC_USAGE_TITLE), L"Hourly Traffic for Jan 28, 2006");
        });
    });
}

TEST(ExportDialog, Starts_with_today_and_writes_a_range_that_does_not_end_before_it_begins) {
    WriteLog(2006, 12, LogRecord(30, 0, 0, 1536) + LogRecord(31, 5, 1024, 0));
    WriteLog(2007, 1, LogRecord(1, 0, 1024, 1024) + LogRecord(3, 0, 1024, 1024));
    ForEachScreen([](TodayFrame& frame) {
        const auto start = [&](HWND dialog) {
            SaveScreen(frame, "export");
            ExpectReadable(dialog, frame);
            SYSTEMTIME today = {};
            GetLocalTime(&today);
            for (const int picker : {IDC_EXPORT_FROM, IDC_EXPORT_TO}) {
                SYSTEMTIME shown = {};
                SendDlgItemMessageW(dialog, picker, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&shown));
                EXPECT_EQ(std::tie(shown.wYear, shown.wMonth, shown.wDay),
                          std::tie(today.wYear, today.wMonth, today.wDay));
                EXPECT_TRUE(ShowsText(GetDlgItem(dialog, picker), MonthAbbrev(today.wMonth)));
            }
            EXPECT_NE(TextOf(dialog, IDC_EXPORT_FILE).find(L"\\export.csv"), std::wstring::npos);
            TypeInto(dialog, IDC_EXPORT_FILE, DataPath(L"out.csv"));
            PickDate(dialog, IDC_EXPORT_FROM, {2007, 1, 0, 1, 0, 0, 0, 0});
            PickDate(dialog, IDC_EXPORT_TO, {2006, 12, 0, 31, 0, 0, 0, 0});
            Press(dialog, IDOK);
        };
        const auto correct = [&](HWND dialog) {
            EXPECT_FALSE(FileExists(L"out.csv"));
            PickDate(dialog, IDC_EXPORT_FROM, {2006, 12, 0, 31, 0, 0, 0, 0});
            PickDate(dialog, IDC_EXPORT_FROM, {9000, 1, 0, 1, 0, 0, 0, 0}, GDT_NONE);
            PickDate(dialog, IDC_EXPORT_TO, {2007, 1, 0, 2, 0, 0, 0, 0});
            Press(dialog, IDOK);
        };
        EXPECT_EQ(RunTool(frame, kUsageTool, {IDOK}, OpenExport, start, correct),
                  Texts{L"Error: Invalid date range! !"});
        EXPECT_EQ(std::ranges::count(ReadWholeFile(L"out.csv"), '\n'), 5) << "a heading, two days and two sums";
        DeleteFileW(DataPath(L"out.csv").c_str());
    });
}

TEST(ExportDialog, The_keyboard_goes_up_down_and_down_at_the_end_even_when_no_file_can_be_made) {
    const TodayFrame frame(kScreenSizes[1]);
    RunTool(frame, kUsageTool, {}, OpenExport, [&](HWND dialog) {
        Press(dialog, IDC_EXPORT_KEYBOARD);
        EXPECT_EQ(GetFocus(), nullptr);
        Press(dialog, IDC_EXPORT_KEYBOARD);
        Press(dialog, IDC_EXPORT_KEYBOARD);
        EXPECT_EQ(frame.keyboard, "-+-+");
        TypeInto(dialog, IDC_EXPORT_FILE, DataPath(L"no-folder\\out.csv"));
        Press(dialog, IDOK);
    });
    EXPECT_EQ(frame.keyboard, "-+-+-");
}

}  // namespace
}  // namespace ui
