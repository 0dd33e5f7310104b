// The options sheet through the dialog that the host opens.

#include "item/settings.h"
#include "tests/ui/ui_test.h"

namespace ui {
namespace {

using Options = UiTest;
INSTANTIATE_TEST_SUITE_P(Screen, Options, kEveryScreen);

HWND ShowPage(HWND sheet, int page) {
    SendMessageW(sheet, PSM_SETCURSEL, static_cast<WPARAM>(page), 0);
    return reinterpret_cast<HWND>(SendMessageW(sheet, PSM_GETCURRENTPAGEHWND, 0, 0));
}

TEST_P(Options, Sheet_fills_the_screen_and_shows_three_pages) {
    scripted::system.adapters = {{.description = "Realtek PCIe GbE"}};
    WriteWholeFile(L"200611.log", {});
    WriteWholeFile(L"200612.log", {});
    itemState.xLocation = 639;
    RunTool(kOptions, {}, [&](HWND sheet) {
        EXPECT_EQ(TakePicture(sheet).width, itemState.screenWidth);
        EXPECT_EQ(TakePicture(sheet).height, itemState.screenHeight - 26 * ScreenScale());
        const auto show = [&](int number, const char* name, const wchar_t* texts) {
            HWND page = ShowPage(sheet, number);
            ExpectReadable(page, texts, IDC_PAGE_HEADER);
            EXPECT_EQ(TakePicture(page).At(2, 24 * ScreenScale()) == RGB(0, 0, 0), !::IsLandscape()) << "a line";
            SaveScreen(name);
        };
        show(0, "options-adapter",
             L"Today: Quorvane|Select a network card to monitor:|{00000001-0000-0000-0000-000000000001}|"
             L"0|Adapter|Realtek PCIe GbE;0|Type|ethernet;0|Speed|100 Mbps;0|IP Address|192.168.7.33;"
             L"0|MAC Address|02:00:00:00:00:01;0|DHCP Server|02:00:00:00:00:01;|");
        show(1, "options-options",
             L"Today: Quorvane|Show Taskbar Icon|639|Spin1|x location|Time Display|AM/PM Format|Military Format|"
             L"Traffic Log|0|2006|11;0|2006|12;|Delete All|Delete|");
        show(2, "options-about", L"Today: Quorvane|Quorvane v2.0|");
    });
}

TEST_P(Options, Closing_by_OK_and_otherwise_saves_what_has_changed) {
    const auto settings = [] {
        return std::tuple(itemState.xLocation, itemState.showTaskbarIcon, itemState.amPmFormat);
    };
    itemState.xLocation = 75;
    itemState.amPmFormat = true;
    for (const bool byOk : {true, false}) {
        RunTool(kOptions, {}, [&](HWND sheet) {
            HWND page = ShowPage(sheet, 1);
            Tap(GetDlgItem(page, IDC_OPTIONS_SPIN), 2, 2);  // the up arrow
            Press(page, IDC_OPTIONS_SHOW_ICON);
            Press(page, byOk ? IDC_OPTIONS_MILITARY : IDC_OPTIONS_AM_PM);
            PostMessageW(sheet, byOk ? WM_NULL : WM_CLOSE, 0, 0);
        });
        EXPECT_EQ(settings(), std::tuple(byOk ? 74 : 73, byOk, !byOk));
        LoadDisplaySettings();
        EXPECT_EQ(settings(), std::tuple(byOk ? 74 : 73, byOk, !byOk)) << "stored";
    }
}

TEST_P(Options, Logs_are_listed_and_deleted_after_a_question_and_the_last_keeps_its_row) {
    for (const wchar_t* name : {L"200701.log", L"200611.log", L"200612.txt"}) {
        WriteWholeFile(name, {1});
    }
    const Texts asked = RunTool(kOptions, {IDCANCEL, IDOK, IDOK, IDCANCEL, IDOK}, [&](HWND sheet) {
        HWND page = ShowPage(sheet, 1);
        const auto press = [&](int button, int row) {
            ListView_SetItemState(GetDlgItem(page, IDC_OPTIONS_LOGS), row, LVIS_SELECTED, LVIS_SELECTED);
            Press(page, button);
            return TextsOf(page, {IDC_OPTIONS_LOGS});
        };
        EXPECT_EQ(press(IDC_OPTIONS_DELETE, 1), L"0|2006|11;0|2007|01;|");
        EXPECT_TRUE(FileExists(L"200701.log"));
        EXPECT_EQ(press(IDC_OPTIONS_DELETE, 1), L"0|2006|11;|");
        EXPECT_FALSE(FileExists(L"200701.log"));
        EXPECT_EQ(press(IDC_OPTIONS_DELETE, 0), L"0|2006|11;|");
        EXPECT_FALSE(FileExists(L"200611.log"));
        WriteWholeFile(L"export.log", {1});
        EXPECT_EQ(press(IDC_OPTIONS_DELETE_ALL, 0), L"0|2006|11;|");
        EXPECT_TRUE(FileExists(L"export.log"));
        EXPECT_EQ(press(IDC_OPTIONS_DELETE_ALL, 0), L"|");
        EXPECT_TRUE(!FileExists(L"export.log") && FileExists(L"200612.txt"));
    });
    EXPECT_EQ(asked[1], L"Question|Are you sure you want to delete 2007/01 log data?|21");
    EXPECT_EQ(asked[3], L"Question|Are you sure you want to delete ALL log data?|21");
}

}  // namespace
}  // namespace ui
