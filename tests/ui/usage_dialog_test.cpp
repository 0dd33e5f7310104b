// The usage dialog as a person uses it, at every screen size.

#include "tests/ui/layout.h"
#include "tests/ui/usage_screens.h"

namespace ui {
namespace {

constexpr int kDaily = 0;
constexpr int kHourly = 1;

void ChooseMode(HWND dialog, int mode) {
    ChooseFromList(GetDlgItem(dialog, IDC_USAGE_MODE), mode);
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

// Reads a dialog's pixels at once; asking one by one would repaint for each.
struct Pixels {
    HWND dialog;
    HDC context;

    explicit Pixels(HWND of) : dialog(of) {
        RedrawWindow(dialog, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        context = GetDCEx(dialog, nullptr, DCX_CACHE);
    }
    Pixels(const Pixels&) = delete;
    Pixels& operator=(const Pixels&) = delete;
    ~Pixels() { ReleaseDC(dialog, context); }

    COLORREF At(int x, int y) const { return GetPixel(context, x, y); }
    bool HasInk(const RECT& area) const {
        for (LONG y = area.top; y < area.bottom; ++y) {
            for (LONG x = area.left; x < area.right; ++x) {
                if (At(x, y) == RGB(0, 0, 0)) {
                    return true;
                }
            }
        }
        return false;
    }
};

// "R60" or "B40 R60": the colours from the foot of the bar upwards with the percentages that they reach; "" without a
// bar. x is logical.
std::string BarAt(const Pixels& pixels, int x) {
    const int scale = ScreenScale();
    const int foot = (scale == 1 ? 193 : 194) * scale;
    std::string bar;
    int y = foot;
    while (true) {
        const COLORREF color = pixels.At(x * scale, y);
        if (color != kRed && color != kBlue) {
            break;
        }
        while (pixels.At(x * scale, y) == color) {
            for (const int column : {1, 2}) {
                EXPECT_EQ(pixels.At(x * scale + column, y), color) << "the bar is three pixels wide";
            }
            EXPECT_NE(pixels.At(x * scale + 3, y), color);
            EXPECT_NE(pixels.At(x * scale - 1, y), color);
            --y;
        }
        EXPECT_EQ((foot - y) % scale, 0);
        bar += bar.empty() ? "" : " ";
        bar += color == kRed ? 'R' : 'B';
        bar += std::to_string((foot - y) / scale);
    }
    return bar;
}

// How many of the eight rows of a table page have text.
int FilledRows(HWND dialog) {
    const Pixels pixels(dialog);
    const int scale = ScreenScale();
    int rows = 0;
    for (int row = 0; row < 8; ++row) {
        rows += pixels.HasInk({10 * scale, (89 + 14 * row) * scale, 38 * scale, (101 + 14 * row) * scale});
    }
    return rows;
}

TEST(UsageDialog, Bars_stand_on_the_grid_with_exact_heights) {
    // Maximum 1,000: the scale is 1,024. 10 bytes are 0 %, 11 bytes 1 %.
    WriteLog(2006, 12,
             LogRecord(1, 0, 0, 1000) + LogRecord(2, 0, 1000, 0) + LogRecord(3, 0, 410, 820) +
                 LogRecord(4, 0, 820, 410) + LogRecord(5, 0, 512, 512) + LogRecord(6, 0, 10, 11) +
                 LogRecord(7, 0, 10, 10) + LogRecord(31, 23, 0, 513));
    // One byte more and the scale is 10,240.
    WriteLog(2007, 1, LogRecord(1, 0, 0, 1024) + LogRecord(2, 0, 102, 103) + LogRecord(3, 0, 1023, 1024));
    WriteLog(2007, 2, LogRecord(8, 0, 900, 0) + LogRecord(8, 23, 0, 450));
    WriteLog(2007, 3, FullMonth(2007, 3, 0xFFFFFFFF, 1000000000));
    ForEachScreen([](TodayFrame& frame, SIZE) {
        RunDialogScript([&] { OpenUsage(frame); },
                        {[](HWND dialog) {
                             PickDate(dialog, IDC_USAGE_DATE, {2006, 12, 5});
                         },
                         [](HWND dialog) {
                             const Pixels pixels(dialog);
                             const char* bars[] = {"R97", "B97", "B40 R80", "R40 B80", "R50", "R1", "", ""};
                             for (int day = 1; day <= 8; ++day) {
                                 EXPECT_EQ(BarAt(pixels, 30 + day * 5), bars[day - 1]) << day;
                             }
                             EXPECT_EQ(BarAt(pixels, 30 + 31 * 5), "R50");
                         },
                         [](HWND dialog) {
                             PickDate(dialog, IDC_USAGE_DATE, {2007, 1, 5});
                         },
                         [](HWND dialog) {
                             const Pixels pixels(dialog);
                             EXPECT_EQ(BarAt(pixels, 35), "R10");
                             EXPECT_EQ(BarAt(pixels, 40), "R1");
                             EXPECT_EQ(BarAt(pixels, 45), "B9 R10");
                             EXPECT_EQ(TextOf(dialog, IDC_USAGE_TITLE), L"Daily Traffic for Jan 2007");
                         },
                         [](HWND dialog) {
                             ChooseMode(dialog, kHourly);
                             PickDate(dialog, IDC_USAGE_DATE, {2007, 2, 8});
                         },
                         [](HWND dialog) {
                             const Pixels pixels(dialog);
                             EXPECT_EQ(BarAt(pixels, 37), "B87");
                             EXPECT_EQ(BarAt(pixels, 30 + 24 * 7), "R43");
                             EXPECT_EQ(TextOf(dialog, IDC_USAGE_TITLE), L"Hourly Traffic for Feb 8, 2007");
                         },
                         [](HWND dialog) {
                             PickDate(dialog, IDC_USAGE_DATE, {2007, 3, 8});
                         },
                         [](HWND dialog) {
                             EXPECT_EQ(BarAt(Pixels(dialog), 37), "R48 B100");
                             Press(dialog, IDOK);
                         }});
    });
}

TEST(UsageDialog, Every_view_at_every_size) {
    WriteYearsOfLogs();
    WriteLog(2005, 11, FullMonth(2005, 11, 44739242, 44739242));  // 1024.00MB a day: the widest counts
    itemState.amPmFormat = true;
    ForEachScreen([](TodayFrame& frame, SIZE screen) {
        const auto shot = [&](const char* view) { SaveScreen(frame, "usage-" + std::string(view) + NameOf(screen)); };
        RunDialogScript([&] { OpenUsage(frame); }, {[&](HWND dialog) {
                                                        shot("empty-");
                                                        RECT area = {};
                                                        GetClientRect(dialog, &area);
                                                        EXPECT_EQ(area.right > area.bottom, IsLandscape(screen))
                                                            << "the wrong template";
                                                        EXPECT_EQ(TextOf(dialog, IDC_USAGE_MODE), L"Daily");
                                                        PickDate(dialog, IDC_USAGE_DATE, {2006, 9, 28});
                                                    },
                                                    [&](HWND dialog) {
                                                        shot("daily-");
                                                        ChooseMode(dialog, kHourly);
                                                    },
                                                    [&](HWND dialog) {
                                                        shot("hourly-");
                                                        // The landscape dialog is wider than a square screen and hangs
                                                        // out on both sides.
                                                        if (screen.cx != screen.cy) {
                                                            ExpectReadable(dialog, frame.window);
                                                        }
                                                        ShowTable(dialog);
                                                    },
                                                    [&](HWND) { shot("hourly-table-"); },
                                                    [&](HWND dialog) {
                                                        ChooseMode(dialog, kDaily);
                                                        PickDate(dialog, IDC_USAGE_DATE, {2005, 11, 28});
                                                    },
                                                    [&](HWND dialog) {
                                                        shot("daily-table-");
                                                        Press(dialog, IDOK);
                                                    }});
    });
}

// Places of the dialog's window and controls, in client pixels.
std::vector<LONG> PlacesOn(SIZE screen) {
    std::vector<LONG> places;
    TodayFrame frame(screen);
    RunDialogScript([&] { OpenUsage(frame); }, {[&](HWND dialog) {
                        for (const int id : {0, IDC_USAGE_TITLE, IDC_USAGE_DATE, IDC_USAGE_MODE, IDOK}) {
                            RECT area = {};
                            GetWindowRect(id == 0 ? dialog : GetDlgItem(dialog, id), &area);
                            MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&area), 2);
                            places.insert(places.end(), {area.left, area.top, area.right, area.bottom});
                        }
                        Press(dialog, IDOK);
                    }});
    return places;
}

TEST(UsageDialog, Controls_keep_their_places_beside_the_doubled_drawing) {
    const std::vector<LONG> normal = PlacesOn({240, 320});
    const std::vector<LONG> doubled = PlacesOn({480, 640});
    ASSERT_EQ(normal.size(), doubled.size());
    for (size_t i = 0; i < normal.size(); ++i) {
        const bool listHeight = i == 3 * 4 + 3;  // the system's own: a line of text
        EXPECT_LE(listHeight ? 0 : std::abs(doubled[i] - 2 * normal[i]), 3) << i;
    }
}

TEST(UsageDialog, Pages_turn_and_go_back_as_the_view_changes) {
    Bytes log = LogRecord(5, 0, 9, 9);  // an hour that counts without being listed
    for (int hour = 1; hour <= 17; ++hour) {
        log = std::move(log) + LogRecord(5, hour, 1024, 1024) + LogRecord(hour + 5, 0, 1024, 1024);
    }
    WriteLog(2006, 12, log);
    ForEachScreen([](TodayFrame& frame, SIZE) {
        RunDialogScript([&] { OpenUsage(frame); }, {[](HWND dialog) {
                                                        PickDate(dialog, IDC_USAGE_DATE, {2006, 12, 5});
                                                    },
                                                    [](HWND dialog) { ShowTable(dialog); },
                                                    [](HWND dialog) {
                                                        EXPECT_EQ(FilledRows(dialog), 8);
                                                        TapPreviousPage(dialog);
                                                        EXPECT_EQ(FilledRows(dialog), 8);
                                                        TapNextPage(dialog);
                                                        TapNextPage(dialog);
                                                        EXPECT_EQ(FilledRows(dialog), 2) << "18 days";
                                                        TapNextPage(dialog);
                                                        EXPECT_EQ(FilledRows(dialog), 2);
                                                        ChooseMode(dialog, kHourly);
                                                        EXPECT_EQ(FilledRows(dialog), 8) << "the first page again";
                                                        TapNextPage(dialog);
                                                        TapNextPage(dialog);
                                                        EXPECT_EQ(FilledRows(dialog), 1) << "17 hours";
                                                        ChooseMode(dialog, kDaily);
                                                        EXPECT_EQ(FilledRows(dialog), 2) << "days keep the page";
                                                        PickDate(dialog, IDC_USAGE_DATE, {2006, 12, 6});
                                                        EXPECT_EQ(FilledRows(dialog), 8) << "a new date starts over";
                                                        PickDate(dialog, IDC_USAGE_DATE, {2004, 1, 6});
                                                        EXPECT_EQ(FilledRows(dialog), 0);
                                                        TapScaled(dialog, 73, 43);
                                                        EXPECT_FALSE(Pixels(dialog).HasInk({62, 146, 390, 166}));
                                                        SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
                                                    }});
    });
}

TEST(UsageDialog, A_mode_counts_only_while_the_list_is_down) {
    TodayFrame frame({240, 320});
    RunDialogScript([&] { OpenUsage(frame); }, {[](HWND dialog) {
                        PickDate(dialog, IDC_USAGE_DATE, {2006, 12, 5});
                        ChooseEntry(dialog, IDC_USAGE_MODE, kHourly);
                        UpdateWindow(dialog);
                        EXPECT_EQ(TextOf(dialog, IDC_USAGE_TITLE), L"Daily Traffic for Dec 2006");
                        Press(dialog, IDOK);
                    }});
}

TEST(UsageDialog, Traffic_logged_meanwhile_shows_at_the_next_repaint) {
    TodayFrame frame({240, 320});
    RunDialogScript([&] { OpenUsage(frame); }, {[](HWND dialog) {
                        PickDate(dialog, IDC_USAGE_DATE, {2006, 12, 5});
                        EXPECT_EQ(BarAt(Pixels(dialog), 55), "");
                        WriteLog(2006, 12, LogRecord(5, 0, 1000, 0));
                        InvalidateRect(dialog, nullptr, TRUE);
                        EXPECT_EQ(BarAt(Pixels(dialog), 55), "B97");
                        Press(dialog, IDOK);
                    }});
}

TEST(UsageDialog, Every_month_can_be_read_in_the_picker) {
    ForEachScreen([](TodayFrame& frame, SIZE) {
        RunDialogScript([&] { OpenUsage(frame); }, {[](HWND dialog) {
                            HWND picker = GetDlgItem(dialog, IDC_USAGE_DATE);
                            for (int month = 1; month <= 12; ++month) {
                                PickDate(dialog, IDC_USAGE_DATE, {2006, month, 28});
                                EXPECT_TRUE(ShowsText(picker, MonthAbbrev(month))) << month;
                                EXPECT_TRUE(ShowsText(picker, L"2006"));
                            }
                            ChooseMode(dialog, kHourly);
                            EXPECT_TRUE(ShowsText(picker, L"Dec"));
                            EXPECT_TRUE(ShowsText(picker, L"28"));
                            SetFocus(picker);
                            SendMessageW(picker, WM_KEYDOWN, VK_RIGHT, 0);  // chooses the month
                            EXPECT_FALSE(ShowsText(picker, L"Dec")) << "it is highlighted";
                            EXPECT_TRUE(ShowsText(picker, L"28,2006"));
                            SendMessageW(picker, WM_KEYDOWN, VK_UP, 0);
                            UpdateWindow(dialog);
                            EXPECT_EQ(TextOf(dialog, IDC_USAGE_TITLE), L"Hourly Traffic for Jan 28, 2006");
                            Press(dialog, IDOK);
                        }});
    });
}

}  // namespace
}  // namespace ui
