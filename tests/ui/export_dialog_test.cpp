// The export dialog, opened from the usage dialog.

#include "tests/ui/usage_screens.h"

namespace ui {
namespace {

void OpenExport(HWND usage) {
    TapScaled(usage, 157, 43);
}

TEST(ExportDialog, Starts_with_today_and_writes_a_range_that_does_not_end_before_it_begins) {
    WriteLog(2006, 12, LogRecord(30, 0, 0, 1536) + LogRecord(31, 5, 1024, 0));
    WriteLog(2007, 1, LogRecord(1, 0, 1024, 1024) + LogRecord(3, 0, 1024, 1024));
    ForEachScreen([](TodayFrame& frame, SIZE screen) {
        const std::wstring name = std::to_wstring(screen.cx) + L".csv";
        const auto start = [&](HWND dialog) {
            SaveScreen(frame, "export");
            ExpectReadable(dialog, frame.window);
            const CalendarDate today = Today();
            for (const int picker : {IDC_EXPORT_FROM, IDC_EXPORT_TO}) {
                SYSTEMTIME shown = {};
                SendDlgItemMessageW(dialog, picker, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&shown));
                EXPECT_EQ((CalendarDate{shown.wYear, shown.wMonth, shown.wDay}), today);
                EXPECT_TRUE(ShowsText(GetDlgItem(dialog, picker), MonthAbbrev(today.month)));
            }
            EXPECT_NE(TextOf(dialog, IDC_EXPORT_FILE).find(L"\\export.csv"), std::wstring::npos);
            TypeInto(dialog, IDC_EXPORT_FILE, DataPath(name));
            PickDate(dialog, IDC_EXPORT_FROM, {2007, 1, 1});
            PickDate(dialog, IDC_EXPORT_TO, {2006, 12, 31});
            Press(dialog, IDOK);
        };
        const auto correct = [&](HWND dialog) {
            EXPECT_FALSE(FileExists(name));
            PickDate(dialog, IDC_EXPORT_FROM, {2006, 12, 31});
            PickDate(dialog, IDC_EXPORT_FROM, {9000, 1, 1}, GDT_NONE);
            PickDate(dialog, IDC_EXPORT_TO, {2007, 1, 2});
            Press(dialog, IDOK);
        };
        EXPECT_EQ(RunTool(frame, kUsageTool, {IDOK}, OpenExport, start, correct),
                  (Boxes{{L"Invalid date range!", L"Error", MB_OK | MB_ICONEXCLAMATION}}));
        const Bytes written = ReadWholeFile(name);
        EXPECT_EQ(std::string(written.begin(), written.end()),
                  "\"Date\",\"Xmit\",\"Rcv\",\"Total\"\n"
                  "\"Dec 31, 2006\",\"0\",\"1.00KB\",\"1.00KB\"\n"
                  "\"Total for Dec 2006\",\"0\",\"1.00KB\",\"1.00KB\"\n"
                  "\"Jan 01, 2007\",\"1.00KB\",\"1.00KB\",\"2.00KB\"\n"
                  "\"Total for Jan 2007\",\"1.00KB\",\"1.00KB\",\"2.00KB\"\n");
        DeleteFileW(DataPath(name).c_str());
    });
}

TEST(ExportDialog, The_keyboard_goes_up_down_and_down_at_the_end_even_when_no_file_can_be_made) {
    TodayFrame frame(kScreenSizes[1]);
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
