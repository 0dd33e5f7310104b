// The usage dialog as a person uses it, at every screen size.

#include "tests/ui/usage_screens.h"

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

void ShowDate(HWND dialog, const CalendarDate& date) {
    PickDate(dialog, IDC_USAGE_DATE, date);
    UpdateWindow(dialog);
}

void ShowTable(HWND dialog) {
    TapScaled(dialog, 31, 43);
}

void TapNextPage(HWND dialog) {
    ::IsLandscape() ? TapScaled(dialog, 208, 107) : TapScaled(dialog, 150, 206);
}

void TapPreviousPage(HWND dialog) {
    ::IsLandscape() ? TapScaled(dialog, 231, 107) : TapScaled(dialog, 176, 206);
}

// The colours of a bar at some heights, in percent; blank where there is none. x is logical.
std::string BarAt(const Pixels& pixels, int x, std::initializer_list<int> heights) {
    const int scale = ScreenScale();
    const int foot = scale == 1 ? 193 : 388;
    std::string colors;
    for (const int height : heights) {
        const COLORREF color = pixels.At(x * scale, foot - height * scale);
        colors += color == kRed ? 'R' : color == kBlue ? 'B' : ' ';
    }
    return colors;
}

// How many of the eight rows of a table page have text.
int FilledRows(HWND dialog) {
    const Pixels pixels(dialog);
    int rows = 0;
    for (int row = 0; row < 8; ++row) {
        rows += pixels.HasInk({10, 89 + 14 * row, 38, 101 + 14 * row});
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
    ForEachScreen([](TodayFrame& frame, SIZE screen) {
        RunTool(frame, kUsageTool, {}, [&](HWND dialog) {
            RECT area = {};
            GetClientRect(dialog, &area);
            EXPECT_EQ(area.right > area.bottom, IsLandscape(screen)) << "the wrong template";
            ShowDate(dialog, {2006, 12, 5});
            EXPECT_EQ(BarAt(Pixels(dialog), 35, {0, 39, 41, 79, 81}), "BBRR ");
            EXPECT_EQ(BarAt(Pixels(dialog), 40, {0, 39, 41, 79, 81}), "RRBB ");
            EXPECT_EQ(BarAt(Pixels(dialog), 45, {0}), " ");
            for (int column = 0; column < 6; ++column) {
                const COLORREF color =
                    Pixels(dialog).At((30 + 31 * 5) * ScreenScale() - 1 + column, 180 * ScreenScale());
                EXPECT_EQ(color == kRed, column >= 1 && column <= 3) << "three device pixels wide";
            }
            EXPECT_EQ(TextOf(dialog, IDC_USAGE_TITLE), L"Daily Traffic for Dec 2006");
            ShowDate(dialog, {2007, 2, 8});
            SaveScreen(frame, "usage-daily");
            ChooseMode(dialog, kHourly);
            SaveScreen(frame, "usage-hourly");
            ShowTable(dialog);
            SaveScreen(frame, "usage-hourly-table");
            if (screen.cx != screen.cy) {  // a square screen is narrower than what is painted
                ExpectReadable(dialog, frame.window);
            }
            ShowDate(dialog, {2007, 3, 8});
            TapScaled(dialog, 73, 43);
            for (const int hour : {1, 24}) {
                EXPECT_EQ(BarAt(Pixels(dialog), 30 + hour * 7, {0, 42, 44, 86, 88}), "RRBB ") << hour;
            }
            EXPECT_EQ(TextOf(dialog, IDC_USAGE_TITLE), L"Hourly Traffic for Mar 8, 2007");
            ChooseMode(dialog, kDaily);
            ShowTable(dialog);
            SaveScreen(frame, "usage-daily-table");
        });
    });
}

TEST(UsageDialog, Controls_keep_their_places_beside_the_doubled_drawing) {
    std::vector<LONG> normal;
    for (const SIZE screen : {SIZE{240, 320}, SIZE{480, 640}}) {
        const TodayFrame frame(screen);
        std::vector<LONG> places;
        RunTool(frame, kUsageTool, {}, [&](HWND dialog) {
            for (const int id : {IDC_USAGE_TITLE, IDC_USAGE_DATE, IDC_USAGE_MODE, IDOK}) {
                RECT area = {};
                GetWindowRect(GetDlgItem(dialog, id), &area);
                MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&area), 2);
                places.insert(places.end(), {area.left, area.top, area.right});
            }
        });
        normal = normal.empty() ? places : normal;
        for (size_t i = 0; i < places.size(); ++i) {
            EXPECT_NEAR(places[i], ScreenScale() * normal[i], 3) << i;
        }
    }
}

TEST(UsageDialog, Pages_turn_and_go_back_as_the_view_changes) {
    Bytes log = LogRecord(5, 0, 9, 9);  // an hour that counts without being listed
    for (int hour = 1; hour <= 17; ++hour) {
        log = std::move(log) + LogRecord(5, hour, 1024, 1024) + LogRecord(hour + 5, 0, 1024, 1024);
    }
    WriteLog(2006, 12, log);
    ForEachScreen([](TodayFrame& frame, SIZE) {
        RunTool(frame, kUsageTool, {}, [](HWND dialog) {
            ShowDate(dialog, {2006, 12, 5});
            ShowTable(dialog);
            TapPreviousPage(dialog);
            EXPECT_EQ(FilledRows(dialog), 8);
            TapNextPage(dialog);
            TapNextPage(dialog);
            TapNextPage(dialog);
            EXPECT_EQ(FilledRows(dialog), 2) << "18 days";
            ChooseMode(dialog, kHourly);
            EXPECT_EQ(FilledRows(dialog), 8) << "the first page again";
            TapNextPage(dialog);
            TapNextPage(dialog);
            EXPECT_EQ(FilledRows(dialog), 1) << "17 hours";
            ChooseMode(dialog, kDaily);
            EXPECT_EQ(FilledRows(dialog), 2) << "days keep the page";
            ShowDate(dialog, {2004, 1, 6});
            EXPECT_EQ(FilledRows(dialog), 0);
            TapScaled(dialog, 73, 43);
            EXPECT_FALSE(Pixels(dialog).HasInk({31, 73, 195, 83})) << "the chart again";
            SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        });
    });
}

TEST(UsageDialog, Every_month_can_be_read_in_the_picker) {
    ForEachScreen([](TodayFrame& frame, SIZE) {
        RunTool(frame, kUsageTool, {}, [](HWND dialog) {
            HWND picker = GetDlgItem(dialog, IDC_USAGE_DATE);
            for (int month = 1; month <= 12; ++month) {
                ShowDate(dialog, {2006, month, 28});
                EXPECT_TRUE(ShowsText(picker, MonthAbbrev(month))) << month;
                EXPECT_TRUE(ShowsText(picker, L"2006"));
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

}  // namespace
}  // namespace ui
