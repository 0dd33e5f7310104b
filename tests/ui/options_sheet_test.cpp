// The options sheet through the dialog that the host opens.

#include "options/options_sheet.h"

#include "item/settings.h"
#include "item/taskbar_icon.h"
#include "platform/dialogs.h"
#include "tests/ui/ui_test.h"

namespace ui {
namespace {

enum Page { kAdapterPage, kOptionsPage, kAboutPage };

HWND ShowPage(HWND sheet, Page page) {
    SendMessageW(sheet, PSM_SETCURSEL, static_cast<WPARAM>(page), 0);
    return reinterpret_cast<HWND>(SendMessageW(sheet, PSM_GETCURRENTPAGEHWND, 0, 0));
}

using OptionsSheet = UiTest;
INSTANTIATE_TEST_SUITE_P(Screen, OptionsSheet, kEveryScreen);

Texts RunOptions(HWND frame, const std::vector<int>& answers, const std::vector<Step>& steps) {
    const auto open = [&] {
        EXPECT_EQ(platform::RunDialog(itemState.instance, IDD_TODAY_OPTIONS, frame, CustomItemOptionsDlgProc), 1);
    };
    return RunDialogScript(open, steps, answers);
}

// What the registry holds; -1 for nothing.
int Stored(const wchar_t* name) {
    uint32_t value = 0;
    return ReadNumberSetting(name, &value) ? static_cast<int>(value) : -1;
}

TEST_P(OptionsSheet, Fills_the_screen_and_shows_three_pages) {
    scripted::system.adapters = {{.description = "Realtek PCIe GbE"}};
    WriteWholeFile(L"200611.log", {});
    WriteWholeFile(L"200612.log", {});
    itemState.xLocation = 639;
    RunOptions(frame, {}, {[&](HWND sheet) {
                   RECT area = {};
                   GetWindowRect(sheet, &area);
                   EXPECT_EQ(area.right - area.left, itemState.screenWidth);
                   EXPECT_EQ(area.bottom - area.top, itemState.screenHeight - FrameTaskbarHeight());
                   EXPECT_FALSE(IsWindowVisible(GetDlgItem(sheet, IDCANCEL)));
                   HWND page = ShowPage(sheet, kAdapterPage);
                   EXPECT_EQ(TextOf(page, {IDC_PAGE_HEADER, IDC_ADAPTER_PAGE_ADAPTER}),
                             L"Today: Quorvane|" + std::wstring(itemState.adapterName));
                   EXPECT_EQ(RowsOf(page, IDC_ADAPTER_PAGE_LIST)[0], L"0|Adapter|Realtek PCIe GbE");
                   ExpectReadable(page, IDC_PAGE_HEADER);
                   SaveScreen("options-adapter");
                   page = ShowPage(sheet, kOptionsPage);
                   EXPECT_EQ(TextOf(page, {IDC_OPTIONS_X_LOCATION}), L"639");
                   ExpectReadable(page, IDC_PAGE_HEADER);
                   SaveScreen("options-options");
                   page = ShowPage(sheet, kAboutPage);
                   EXPECT_EQ(TakePicture(page).At(2, 24 * ScreenScale()) == kBlack, !::IsLandscape());
                   SaveScreen("options-about");
               }});
}

TEST_P(OptionsSheet, Every_way_of_closing_saves_what_has_changed_and_closes_both_windows) {
    const int side = TaskbarIconSide();
    const RECT icon = {75, TaskbarIconTop(), 75 + side, TaskbarIconTop() + side};
    CaptureTaskbarBackground();
    itemState.iconBackground = itemState.taskbarBackground;
    RunOptions(frame, {}, {[](HWND sheet) { ShowPage(sheet, kOptionsPage); }});
    for (const wchar_t* name : {L"XLocation", L"TIcon", L"TFormat"}) {
        EXPECT_EQ(Stored(name), -1) << "nothing has changed";
    }
    const Step ways[] = {[](HWND sheet) { PostMessageW(sheet, WM_CLOSE, 0, 0); },
                         [](HWND sheet) { Press(sheet, IDOK); },
                         [](HWND sheet) { PostMessageW(ShowPage(sheet, kOptionsPage), WM_KEYDOWN, VK_RETURN, 0); },
                         [](HWND sheet) { PostMessageW(sheet, WM_SYSCOMMAND, SC_CLOSE, 0); },
                         [](HWND sheet) { PostMessageW(sheet, WM_COMMAND, IDCANCEL, 0); },
                         [](HWND sheet) { PostMessageW(ShowPage(sheet, kOptionsPage), WM_KEYDOWN, VK_ESCAPE, 0); }};
    for (const Step& close : ways) {
        itemState.xLocation = 75;
        itemState.showTaskbarIcon = false;
        itemState.amPmFormat = true;
        WriteNumberSetting(L"XLocation", 75);
        WriteNumberSetting(L"TIcon", 0);
        WriteNumberSetting(L"TFormat", 1);
        FillWindow(frame, icon, kBlack);
        const auto change = [](HWND sheet) {
            HWND page = ShowPage(sheet, kOptionsPage);
            EXPECT_EQ(IsDlgButtonChecked(page, IDC_OPTIONS_AM_PM), 1U);
            TapPixel(GetDlgItem(page, IDC_OPTIONS_SPIN), 2, 2);  // the up arrow
            Press(page, IDC_OPTIONS_SHOW_ICON);
            Press(page, IDC_OPTIONS_MILITARY);
        };
        RunOptions(frame, {}, {change, close});
        EXPECT_TRUE(itemState.xLocation == 74 && itemState.showTaskbarIcon && !itemState.amPmFormat);
        EXPECT_TRUE(Stored(L"XLocation") == 74 && Stored(L"TIcon") == 1 && Stored(L"TFormat") == 0);
        EXPECT_TRUE(IsAt(TakePicture(frame), icon.left, icon.top, Drawn({side, side}, kTaskbar, [](HDC) {})))
            << "the icon at its old place is erased";
        EXPECT_TRUE(IsWindowEnabled(frame));
    }
    DeleteObject(itemState.taskbarBackground);
}

TEST_P(OptionsSheet, Logs_are_listed_and_deleted_after_a_question_and_the_last_keeps_its_row) {
    for (const wchar_t* name : {L"200701.log", L"200611.log", L"200611-copy.log", L"export.log", L"200612.txt"}) {
        WriteWholeFile(name, {1});
    }
    // Every row is selected by itself.
    const auto press = [](HWND sheet, int row, int button) {
        HWND page = ShowPage(sheet, kOptionsPage);
        ListView_SetItemState(GetDlgItem(page, IDC_OPTIONS_LOGS), row, LVIS_SELECTED, LVIS_SELECTED);
        Press(page, button);
        return RowsOf(page, IDC_OPTIONS_LOGS);
    };
    const auto deleteLogs = [&](HWND sheet) {
        const Texts all = {L"0|2006|11", L"0|2006|11", L"0|2007|01"};
        Press(ShowPage(sheet, kOptionsPage), IDC_OPTIONS_DELETE);  // nothing is selected: no question
        EXPECT_EQ(press(sheet, 2, IDC_OPTIONS_DELETE), all);       // Cancel
        EXPECT_EQ(press(sheet, 2, IDC_OPTIONS_DELETE), Texts(2, all[0]));
        EXPECT_FALSE(FileExists(L"200701.log"));
        EXPECT_EQ(press(sheet, 0, IDC_OPTIONS_DELETE_ALL), Texts(2, all[0]));  // Cancel
        EXPECT_TRUE(FileExists(L"200611.log"));
        EXPECT_EQ(press(sheet, 0, IDC_OPTIONS_DELETE_ALL), Texts{});
        EXPECT_FALSE(FileExists(L"200611.log") || FileExists(L"export.log"));
        EXPECT_TRUE(FileExists(L"200612.txt"));
    };
    const wchar_t* one = L"Question|Are you sure you want to delete 2007/01 log data?|21";
    const wchar_t* every = L"Question|Are you sure you want to delete ALL log data?|21";
    EXPECT_EQ(RunOptions(frame, {IDCANCEL, IDOK, IDCANCEL, IDOK}, {deleteLogs}), (Texts{one, one, every, every}));
    WriteWholeFile(L"200611.log", {1});
    RunOptions(frame, {IDOK}, {[&](HWND sheet) {
                   EXPECT_EQ(press(sheet, 0, IDC_OPTIONS_DELETE), Texts{L"0|2006|11"});
                   EXPECT_FALSE(FileExists(L"200611.log"));
               }});
}

}  // namespace
}  // namespace ui
