// The export dialog, opened from the usage dialog.

#include "tests/ui/layout.h"
#include "tests/ui/usage_screens.h"

namespace ui {
namespace {

void OpenExport(HWND usage) {
    TapScaled(usage, 157, 43);
}

std::string FileText(const std::wstring& name) {
    const Bytes bytes = ReadWholeFile(name);
    return {bytes.begin(), bytes.end()};
}

const Step kCloseUsage = [](HWND usage) { Press(usage, IDOK); };

TEST(ExportDialog, Starts_with_today_and_a_file_among_the_documents) {
    ForEachScreen([](TodayFrame& frame, SIZE screen) {
        frame.keyboard.clear();
        RunDialogScript([&] { OpenUsage(frame); },
                        {OpenExport,
                         [&](HWND dialog) {
                             SaveScreen(frame, "export-" + NameOf(screen));
                             ExpectReadable(dialog, frame.window);
                             const CalendarDate today = Today();
                             for (const int picker : {IDC_EXPORT_FROM, IDC_EXPORT_TO}) {
                                 SYSTEMTIME shown = {};
                                 SendDlgItemMessageW(dialog, picker, DTM_GETSYSTEMTIME, 0,
                                                     reinterpret_cast<LPARAM>(&shown));
                                 EXPECT_EQ((CalendarDate{shown.wYear, shown.wMonth, shown.wDay}), today);
                                 EXPECT_TRUE(ShowsText(GetDlgItem(dialog, picker), MonthAbbrev(today.month)));
                             }
                             const std::wstring file = TextOf(dialog, IDC_EXPORT_FILE);
                             EXPECT_EQ(file.substr(file.size() - 11), L"\\export.csv");
                             EXPECT_EQ(SendDlgItemMessageW(dialog, IDC_EXPORT_FILE, EM_GETLIMITTEXT, 0, 0), 254);
                             EXPECT_EQ(frame.keyboard.size(), 1U);
                             EXPECT_FALSE(frame.keyboard[0].raise);
                             Press(dialog, IDCANCEL);
                         },
                         kCloseUsage});
        EXPECT_EQ(frame.keyboard.size(), 1U) << "a keyboard that is down stays as it is";
    });
}

TEST(ExportDialog, A_range_is_refused_then_written) {
    WriteLog(2006, 12, LogRecord(30, 0, 0, 1536) + LogRecord(31, 5, 1024, 0));
    WriteLog(2007, 1, LogRecord(1, 0, 1024, 1024) + LogRecord(3, 0, 1024, 1024));
    ForEachScreen([](TodayFrame& frame, SIZE screen) {
        const std::string size = NameOf(screen);
        const std::wstring name(size.begin(), size.end());
        const auto boxes = RunDialogScript([&] { OpenUsage(frame); },
                                           {OpenExport,
                                            [&](HWND dialog) {
                                                TypeInto(dialog, IDC_EXPORT_FILE, DataPath(name));
                                                PickDate(dialog, IDC_EXPORT_FROM, {2007, 1, 1});
                                                PickDate(dialog, IDC_EXPORT_TO, {2006, 12, 31});
                                                Press(dialog, IDOK);
                                            },
                                            [&](HWND dialog) {
                                                EXPECT_FALSE(FileExists(name));
                                                PickDate(dialog, IDC_EXPORT_FROM, {2006, 12, 31});
                                                PickDate(dialog, IDC_EXPORT_TO, {2007, 1, 2});
                                                Press(dialog, IDOK);
                                            },
                                            kCloseUsage},
                                           {IDOK});
        ASSERT_EQ(boxes.size(), 1U);
        EXPECT_EQ(boxes[0].text, L"Invalid date range!");
        EXPECT_EQ(boxes[0].caption, L"Error");
        EXPECT_EQ(boxes[0].flags, MB_OK | MB_ICONEXCLAMATION);
        EXPECT_EQ(FileText(name),
                  "\"Date\",\"Xmit\",\"Rcv\",\"Total\"\n"
                  "\"Dec 31, 2006\",\"0\",\"1.00KB\",\"1.00KB\"\n"
                  "\"Total for Dec 2006\",\"0\",\"1.00KB\",\"1.00KB\"\n"
                  "\"Jan 01, 2007\",\"1.00KB\",\"1.00KB\",\"2.00KB\"\n"
                  "\"Total for Jan 2007\",\"1.00KB\",\"1.00KB\",\"2.00KB\"\n");
    });
}

TEST(ExportDialog, A_date_without_validity_is_ignored) {
    TodayFrame frame({240, 320});
    RunDialogScript([&] { OpenUsage(frame); },
                    {OpenExport,
                     [&](HWND dialog) {
                         TypeInto(dialog, IDC_EXPORT_FILE, DataPath(L"out.csv"));
                         NMDATETIMECHANGE change = {};
                         change.nmhdr = {GetDlgItem(dialog, IDC_EXPORT_FROM), IDC_EXPORT_FROM,
                                         static_cast<UINT>(DTN_DATETIMECHANGE)};
                         change.dwFlags = GDT_NONE;
                         change.st.wYear = 9000;
                         SendMessageW(dialog, WM_NOTIFY, IDC_EXPORT_FROM, reinterpret_cast<LPARAM>(&change));
                         Press(dialog, IDOK);
                     },
                     kCloseUsage});
    EXPECT_NE(FileText(L"out.csv").find("Total for"), std::string::npos);
}

TEST(ExportDialog, A_file_that_cannot_be_made_closes_the_dialog_silently) {
    TodayFrame frame({320, 240});
    RunDialogScript([&] { OpenUsage(frame); }, {OpenExport,
                                                [](HWND dialog) {
                                                    TypeInto(dialog, IDC_EXPORT_FILE, DataPath(L"no-folder\\out.csv"));
                                                    Press(dialog, IDOK);
                                                },
                                                kCloseUsage});
}

TEST(ExportDialog, The_keyboard_goes_up_down_and_down_at_the_end) {
    TodayFrame frame({240, 320});
    const auto raises = [&] {
        std::string raised;
        for (const KeyboardRequest& request : frame.keyboard) {
            raised += request.raise ? '+' : '-';
        }
        return raised;
    };
    RunDialogScript([&] { OpenUsage(frame); }, {OpenExport,
                                                [&](HWND dialog) {
                                                    Press(dialog, IDC_EXPORT_KEYBOARD);
                                                    EXPECT_EQ(raises(), "-+");
                                                    EXPECT_EQ(GetFocus(), nullptr);
                                                    Press(dialog, IDC_EXPORT_KEYBOARD);
                                                    EXPECT_EQ(raises(), "-+-");
                                                    Press(dialog, IDC_EXPORT_KEYBOARD);
                                                    Press(dialog, IDCANCEL);
                                                },
                                                OpenExport,
                                                [&](HWND dialog) {
                                                    EXPECT_EQ(raises(), "-+-+--")
                                                        << "lowered at the end, and at the next opening";
                                                    Press(dialog, IDC_EXPORT_KEYBOARD);
                                                    TypeInto(dialog, IDC_EXPORT_FILE, DataPath(L"out.csv"));
                                                    Press(dialog, IDOK);
                                                },
                                                kCloseUsage});
    EXPECT_EQ(raises(), "-+-+--+-");
}

}  // namespace
}  // namespace ui
