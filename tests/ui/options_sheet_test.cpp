// The options sheet through the dialog that the host opens, at every screen size.

#include "options/options_sheet.h"

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "item/settings.h"
#include "item/taskbar_icon.h"
#include "platform/controls.h"
#include "platform/dialogs.h"
#include "platform/screen.h"
#include "resources/resource_ids.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/data_folder.h"
#include "tests/ui/layout.h"
#include "tests/ui/usage_screens.h"

namespace {

using ui::ForEachScreen;
using ui::TodayFrame;

enum Page { kAdapterPage, kOptionsPage, kAboutPage };

void ShowPage(HWND sheet, Page page) {
    SendMessageW(sheet, PSM_SETCURSEL, static_cast<WPARAM>(page), 0);
}

HWND CurrentPage(HWND sheet) {
    return reinterpret_cast<HWND>(SendMessageW(sheet, PSM_GETCURRENTPAGEHWND, 0, 0));
}

void CloseSheet(HWND sheet) {
    PostMessageW(sheet, WM_CLOSE, 0, 0);
}

// Opens the options as the host does and drives the sheet.
std::vector<ui::MessageBoxShown> RunOptions(TodayFrame& frame, std::vector<ui::Step> steps,
                                            const std::vector<int>& answers = {}) {
    const auto open = [&] {
        EXPECT_EQ(platform::RunDialog(itemState.instance, IDD_TODAY_OPTIONS, frame.window, CustomItemOptionsDlgProc),
                  1);
    };
    return ui::RunDialogScript(open, steps, answers);
}

ui::Step OnOptionsPage(const std::function<void(HWND page)>& act) {
    return [act](HWND sheet) {
        ShowPage(sheet, kOptionsPage);
        act(CurrentPage(sheet));
    };
}

std::optional<uint32_t> StoredNumber(const wchar_t* name) {
    uint32_t value = 0;
    return ReadNumberSetting(name, &value) ? std::optional(value) : std::nullopt;
}

std::wstring RowsOf(HWND list) {
    std::wstring rows;
    const auto count = static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    for (int row = 0; row < count; ++row) {
        rows += ui::CellText(list, row, 0) + L"=" + ui::CellText(list, row, 1) + L";";
    }
    return rows;
}

TEST(OptionsSheet, Fills_the_screen_and_shows_three_pages) {
    ForEachScreen([](TodayFrame& frame, SIZE screen) {
        scripted::system.adapters = {{.description = "Realtek PCIe GbE"}};
        UseEmptyDataFolder();
        WriteWholeFile(L"200611.log", {});
        WriteWholeFile(L"200612.log", {});
        itemState.xLocation = 639;
        const auto picture = [&](const char* page) {
            ui::SaveScreen(frame, "options-" + std::string(page) + ui::NameOf(screen));
        };
        RunOptions(frame, {[&](HWND sheet) {
                               RECT area = {};
                               GetWindowRect(sheet, &area);
                               EXPECT_EQ(area.right - area.left, screen.cx);
                               EXPECT_EQ(area.bottom - area.top, screen.cy - ui::TaskbarHeightOf(screen));
                               EXPECT_EQ(ui::TextOf(CurrentPage(sheet), IDC_PAGE_HEADER), L"Today: Quorvane");
                               EXPECT_FALSE(ui::IsShown(sheet, IDCANCEL));
                               ui::ExpectReadable(CurrentPage(sheet), frame.window, IDC_PAGE_HEADER);
                               picture("adapter-");
                           },
                           [](HWND sheet) { ShowPage(sheet, kOptionsPage); },
                           [&](HWND sheet) {
                               EXPECT_EQ(ui::TextOf(CurrentPage(sheet), IDC_OPTIONS_X_LOCATION), L"639");
                               ui::ExpectReadable(CurrentPage(sheet), frame.window, IDC_PAGE_HEADER);
                               picture("options-");
                               ShowPage(sheet, kAboutPage);
                           },
                           [&](HWND sheet) {
                               const int lineTop = 24 * ScreenScale();
                               EXPECT_EQ(ui::PixelAt(CurrentPage(sheet), 2, lineTop) == RGB(0, 0, 0),
                                         !ui::IsLandscape(screen));
                               picture("about-");
                               CloseSheet(sheet);
                           }});
    });
}

// Types a place, leaves by `close`, and tells what is in force afterwards.
TEST(OptionsSheet, The_place_of_the_icon_is_limited_and_stored_when_the_page_is_left) {
    struct Row {
        const wchar_t* typed;
        uint32_t place;
        bool written;
    };
    const Row rows[] = {{L"0", 0, true}, {L"639", 639, true}, {L"700", 639, true},
                        {L"", 0, true},  {L"abc", 0, true},   {L"75", 75, false}};
    for (const SIZE screen : {SIZE{240, 320}, SIZE{640, 480}}) {
        TodayFrame frame(screen);
        for (const Row& row : rows) {
            ResetSystemForTest();
            itemState.xLocation = 75;
            itemState.showTaskbarIcon = true;
            itemState.amPmFormat = true;
            RunOptions(frame,
                       {OnOptionsPage([&](HWND page) { SetDlgItemTextW(page, IDC_OPTIONS_X_LOCATION, row.typed); }),
                        CloseSheet});
            EXPECT_EQ(itemState.xLocation, row.place) << row.typed;
            EXPECT_EQ(StoredNumber(L"XLocation").has_value(), row.written) << row.typed;
            EXPECT_FALSE(StoredNumber(L"TIcon") || StoredNumber(L"TFormat"));
        }
    }
}

TEST(OptionsSheet, The_up_arrow_lowers_the_place) {
    TodayFrame frame({240, 320});
    itemState.xLocation = 75;
    RunOptions(frame, {OnOptionsPage([](HWND page) {
                           EXPECT_EQ(SendDlgItemMessageW(page, IDC_OPTIONS_SPIN, UDM_GETRANGE, 0, 0), MAKELONG(0, 639));
                           HWND spin = GetDlgItem(page, IDC_OPTIONS_SPIN);
                           ui::Tap(spin, 2, 2);
                       }),
                       [](HWND sheet) {
                           EXPECT_EQ(ui::TextOf(CurrentPage(sheet), IDC_OPTIONS_X_LOCATION), L"74");
                           CloseSheet(sheet);
                       }});
    EXPECT_EQ(StoredNumber(L"XLocation"), 74U);
}

TEST(OptionsSheet, Every_way_of_closing_saves_and_closes_both_windows) {
    const ui::Step ways[] = {CloseSheet,
                             [](HWND sheet) { ui::Press(sheet, IDOK); },
                             [](HWND sheet) { PostMessageW(CurrentPage(sheet), WM_KEYDOWN, VK_RETURN, 0); },
                             [](HWND sheet) { PostMessageW(sheet, WM_SYSCOMMAND, SC_CLOSE, 0); },
                             [](HWND sheet) { PostMessageW(sheet, WM_COMMAND, IDCANCEL, 0); },
                             [](HWND sheet) { PostMessageW(sheet, WM_COMMAND, IDOK, 0); },
                             [](HWND sheet) { PostMessageW(CurrentPage(sheet), WM_KEYDOWN, VK_ESCAPE, 0); },
                             [](HWND sheet) { PostMessageW(sheet, PSM_PRESSBUTTON, PSBTN_OK, 0); }};
    TodayFrame frame({240, 320});
    for (const ui::Step& close : ways) {
        itemState.showTaskbarIcon = true;
        itemState.amPmFormat = true;
        RunOptions(frame, {OnOptionsPage([](HWND page) {
                               ui::Press(page, IDC_OPTIONS_SHOW_ICON);
                               ui::Press(page, IDC_OPTIONS_MILITARY);
                           }),
                           close});
        EXPECT_FALSE(itemState.showTaskbarIcon);
        EXPECT_FALSE(itemState.amPmFormat);
        EXPECT_EQ(StoredNumber(L"TIcon"), 0U);
        EXPECT_EQ(StoredNumber(L"TFormat"), 0U);
        EXPECT_TRUE(IsWindowEnabled(frame.window));
    }
}

TEST(OptionsSheet, Odd_stored_values_show_as_they_count_and_stay_while_unchanged) {
    TodayFrame frame({240, 320});
    WriteNumberSetting(L"TFormat", 7);
    WriteNumberSetting(L"TIcon", 0);
    LoadDisplaySettings();
    WriteStringSetting(L"XLocation", L"text", 5);
    RunOptions(frame, {OnOptionsPage([](HWND page) {
                           EXPECT_TRUE(ui::IsChecked(page, IDC_OPTIONS_AM_PM));
                           EXPECT_FALSE(ui::IsChecked(page, IDC_OPTIONS_MILITARY));
                           EXPECT_FALSE(ui::IsChecked(page, IDC_OPTIONS_SHOW_ICON));
                           EXPECT_EQ(ui::TextOf(page, IDC_OPTIONS_X_LOCATION), L"75");
                       }),
                       CloseSheet});
    EXPECT_EQ(StoredNumber(L"TFormat"), 7U);
    EXPECT_FALSE(StoredNumber(L"XLocation"));
}

TEST(OptionsSheet, The_hour_format_shows_in_the_usage_table_at_once) {
    TodayFrame frame({240, 320});
    LoadDisplaySettings();
    WriteLog(2006, 9, LogRecord(28, 15, 1000, 1000));
    const auto table = [&] {
        Picture picture;
        ui::RunDialogScript([&] { ui::OpenUsage(frame); }, {[](HWND dialog) {
                                                                ui::PickDate(dialog, IDC_USAGE_DATE, {2006, 9, 28});
                                                                ui::ChooseFromList(GetDlgItem(dialog, IDC_USAGE_MODE),
                                                                                   1);
                                                                ui::TapScaled(dialog, 31, 43);
                                                            },
                                                            [&](HWND dialog) {
                                                                picture = TakePicture(dialog);
                                                                ui::Press(dialog, IDOK);
                                                            }});
        return picture.pixels;
    };
    const auto amPm = table();
    EXPECT_TRUE(table() == amPm);
    RunOptions(frame, {OnOptionsPage([](HWND page) { ui::Press(page, IDC_OPTIONS_MILITARY); }), CloseSheet});
    EXPECT_FALSE(table() == amPm);
}

TEST(OptionsSheet, The_icon_is_erased_from_its_old_place_when_it_moves) {
    for (const SIZE screen : {SIZE{240, 320}, SIZE{480, 640}}) {
        TodayFrame frame(screen);
        itemState.instance = GetModuleHandleW(nullptr);
        itemState.xLocation = 75;
        const COLORREF clean = ui::PixelAt(frame.window, 75, 5 * ScreenScale());
        const int side = TaskbarIconSide();
        CaptureTaskbarBackground();
        itemState.iconBackground = itemState.taskbarBackground;
        HDC context = platform::GetScreenContext();
        const RECT square = {75, TaskbarIconTop(), 75 + side, TaskbarIconTop() + side};
        FillRect(context, &square, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
        platform::ReleaseScreenContext(context);
        EXPECT_NE(ui::PixelAt(frame.window, 75, TaskbarIconTop()), clean);
        RunOptions(frame, {OnOptionsPage([](HWND page) { SetDlgItemTextW(page, IDC_OPTIONS_X_LOCATION, L"90"); }),
                           CloseSheet});
        EXPECT_EQ(ui::PixelAt(frame.window, 75, TaskbarIconTop()), clean);
        EXPECT_EQ(itemState.xLocation, 90U);
        DeleteObject(itemState.taskbarBackground);
        itemState.taskbarBackground = itemState.iconBackground = nullptr;
    }
}

TEST(OptionsSheet, Logs_are_listed_by_their_names) {
    TodayFrame frame({240, 320});
    for (const wchar_t* name : {L"200701.log", L"2006.log", L"200611.log", L"200611-copy.log", L"export.log",
                                L"20061.log", L"200612.txt", L"199912.logx"}) {
        WriteWholeFile(name, {1});
    }
    CreateDirectoryW(DataPath(L"200501.log").c_str(), nullptr);
    RunOptions(frame, {OnOptionsPage([](HWND page) {
                           const std::wstring rows = RowsOf(GetDlgItem(page, IDC_OPTIONS_LOGS));
                           EXPECT_EQ(rows, L"2006=11;2006=11;2007=01;");
                       }),
                       CloseSheet});
}

TEST(OptionsSheet, One_log_is_deleted_after_a_question_and_the_last_keeps_its_row) {
    TodayFrame frame({480, 480});
    WriteWholeFile(L"200611.log", {1});
    WriteWholeFile(L"200612.log", {1});
    const auto select = [](HWND page, int row) {
        LVITEMW item = {};
        item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        SendDlgItemMessageW(page, IDC_OPTIONS_LOGS, LVM_SETITEMSTATE, static_cast<WPARAM>(row),
                            reinterpret_cast<LPARAM>(&item));
    };
    const auto rows = [](HWND page) { return RowsOf(GetDlgItem(page, IDC_OPTIONS_LOGS)); };
    const auto messages = RunOptions(frame,
                                     {OnOptionsPage([&](HWND page) {
                                          ui::Press(page, IDC_OPTIONS_DELETE);  // nothing selected: no question
                                          select(page, 0);
                                          ui::Press(page, IDC_OPTIONS_DELETE);  // Cancel
                                          EXPECT_EQ(rows(page), L"2006=11;2006=12;");
                                          ui::Press(page, IDC_OPTIONS_DELETE);
                                          EXPECT_EQ(rows(page), L"2006=12;");
                                          select(page, 0);
                                          ui::Press(page, IDC_OPTIONS_DELETE);
                                          EXPECT_EQ(rows(page), L"2006=12;");
                                      }),
                                      CloseSheet},
                                     {IDCANCEL, IDOK, IDOK});
    ASSERT_EQ(messages.size(), 3U);
    EXPECT_EQ(messages[0].text, L"Are you sure you want to delete 2006/11 log data?");
    EXPECT_EQ(messages[0].caption, L"Question");
    EXPECT_EQ(messages[0].flags, static_cast<UINT>(MB_OKCANCEL | MB_ICONQUESTION));
    EXPECT_FALSE(FileExists(L"200611.log") || FileExists(L"200612.log"));
}

TEST(OptionsSheet, All_logs_are_deleted_whatever_their_names_say) {
    TodayFrame frame({240, 320});
    for (const wchar_t* name : {L"200611.log", L"other.log", L"keep.txt", L"200612.logx"}) {
        WriteWholeFile(name, {1});
    }
    const auto messages = RunOptions(frame,
                                     {OnOptionsPage([](HWND page) {
                                          ui::Press(page, IDC_OPTIONS_DELETE_ALL);
                                          EXPECT_EQ(RowsOf(GetDlgItem(page, IDC_OPTIONS_LOGS)), L"2006=11;");
                                          ui::Press(page, IDC_OPTIONS_DELETE_ALL);
                                          EXPECT_EQ(RowsOf(GetDlgItem(page, IDC_OPTIONS_LOGS)), L"");
                                      }),
                                      CloseSheet},
                                     {IDCANCEL, IDOK});
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_EQ(messages[0].text, L"Are you sure you want to delete ALL log data?");
    EXPECT_FALSE(FileExists(L"200611.log") || FileExists(L"other.log"));
    EXPECT_TRUE(FileExists(L"keep.txt") && FileExists(L"200612.logx"));
}

TEST(AdapterPage, Properties_and_what_they_carry_over) {
    struct Row {
        const char* what;
        scripted::Adapter adapter;
        std::wstring rows;
    };
    const std::wstring mac = L"02:00:00:00:00:01";
    const Row rows[] = {{"plain",
                         {.description = "Card", .dhcpEnabled = true, .dhcpServer = "10.0.0.1", .speed = 11000000},
                         L"Adapter=Card;Type=ethernet;Speed=11 Mbps;IP Address=192.168.7.33;MAC Address=" + mac +
                             L";DHCP Server=10.0.0.1;"},
                        {"no DHCP",
                         {.description = "Card", .speed = 999999},
                         L"Adapter=Card;Type=ethernet;Speed=999999 bps;IP Address=192.168.7.33;MAC Address=" + mac +
                             L";DHCP Server=" + mac + L";"},
                        {"no hardware address",
                         {.description = "Card", .hardwareAddress = {}, .speed = 1000000},
                         L"Adapter=Card;Type=ethernet;Speed=1 Mbps;IP Address=192.168.7.33;MAC "
                         L"Address=192.168.7.33;DHCP Server=192.168.7.33;"},
                        {"no interface row",
                         {.description = "", .countersReadable = false},
                         L"IP Address=192.168.7.33;MAC Address=" + mac + L";DHCP Server=" + mac + L";"}};
    TodayFrame frame({320, 240});
    for (const Row& row : rows) {
        scripted::system.adapters = {{.name = "ppp", .index = 9, .type = 23}, row.adapter};
        RunOptions(frame, {[&](HWND sheet) {
                       HWND page = CurrentPage(sheet);
                       EXPECT_EQ(RowsOf(GetDlgItem(page, IDC_ADAPTER_PAGE_LIST)), row.rows) << row.what;
                       EXPECT_EQ(ui::TextOf(page, IDC_ADAPTER_PAGE_ADAPTER), std::wstring(itemState.adapterName));
                       CloseSheet(sheet);
                   }});
    }
    scripted::system.adapters = {{.type = 71}};
    RunOptions(frame, {[&](HWND sheet) {
                   EXPECT_EQ(RowsOf(GetDlgItem(CurrentPage(sheet), IDC_ADAPTER_PAGE_LIST)), L"");
                   EXPECT_EQ(ui::TextOf(CurrentPage(sheet), IDC_ADAPTER_PAGE_ADAPTER), L"");
                   CloseSheet(sheet);
               }});
}

}  // namespace
