// The options sheet through the dialog that the host opens.

#include "options/options_sheet.h"

#include "item/settings.h"
#include "item/taskbar_icon.h"
#include "platform/dialogs.h"
#include "platform/screen.h"
#include "tests/ui/ui_test.h"

namespace ui {
namespace {

enum Page { kAdapterPage, kOptionsPage, kAboutPage };

HWND ShowPage(HWND sheet, Page page) {
    SendMessageW(sheet, PSM_SETCURSEL, static_cast<WPARAM>(page), 0);
    return reinterpret_cast<HWND>(SendMessageW(sheet, PSM_GETCURRENTPAGEHWND, 0, 0));
}

template <class... Steps>
Texts RunOptions(const TodayFrame& frame, const std::vector<int>& answers, const Steps&... steps) {
    const auto open = [&] {
        EXPECT_EQ(platform::RunDialog(itemState.instance, IDD_TODAY_OPTIONS, frame.window, CustomItemOptionsDlgProc),
                  1);
    };
    return RunDialogScript(open, {steps...}, answers);
}

std::optional<uint32_t> StoredNumber(const wchar_t* name) {
    uint32_t value = 0;
    return ReadNumberSetting(name, &value) ? std::optional(value) : std::nullopt;
}

TEST(OptionsSheet, Fills_the_screen_and_shows_three_pages) {
    ForEachScreen([](TodayFrame& frame) {
        scripted::system.adapters = {{.description = "Realtek PCIe GbE"}};
        UseEmptyDataFolder();
        WriteWholeFile(L"200611.log", {});
        WriteWholeFile(L"200612.log", {});
        itemState.xLocation = 639;
        const auto adapter = [&](HWND sheet) {
            RECT area = {};
            GetWindowRect(sheet, &area);
            EXPECT_EQ(area.right - area.left, itemState.screenWidth);
            EXPECT_EQ(area.bottom - area.top, itemState.screenHeight - FrameTaskbarHeight());
            EXPECT_FALSE(IsWindowVisible(GetDlgItem(sheet, IDCANCEL)));
            HWND page = ShowPage(sheet, kAdapterPage);
            EXPECT_EQ(TextOf(page, IDC_PAGE_HEADER), L"Today: Quorvane");
            EXPECT_EQ(RowsOf(GetDlgItem(page, IDC_ADAPTER_PAGE_LIST), 2)[0], L"Adapter=Realtek PCIe GbE");
            EXPECT_EQ(TextOf(page, IDC_ADAPTER_PAGE_ADAPTER), itemState.adapterName);
            ExpectReadable(page, frame, IDC_PAGE_HEADER);
            SaveScreen(frame, "options-adapter");
            ShowPage(sheet, kOptionsPage);
        };
        const auto options = [&](HWND sheet) {
            HWND page = ShowPage(sheet, kOptionsPage);
            EXPECT_EQ(TextOf(page, IDC_OPTIONS_X_LOCATION), L"639");
            ExpectReadable(page, frame, IDC_PAGE_HEADER);
            SaveScreen(frame, "options-options");
            ShowPage(sheet, kAboutPage);
        };
        const auto about = [&](HWND sheet) {
            HWND page = ShowPage(sheet, kAboutPage);
            EXPECT_EQ(PixelAt(page, 2, 24 * ScreenScale()) == RGB(0, 0, 0), !::IsLandscape());
            SaveScreen(frame, "options-about");
        };
        RunOptions(frame, {}, adapter, options, about);
    });
}

TEST(OptionsSheet, A_new_place_is_stored_when_the_page_is_left_and_the_old_one_is_erased) {
    ForEachScreen([](TodayFrame& frame) {
        ResetSystemForTest();
        itemState.xLocation = 75;
        CaptureTaskbarBackground();
        itemState.iconBackground = itemState.taskbarBackground;
        HDC context = platform::GetScreenContext();
        const RECT square = {75, TaskbarIconTop(), 75 + TaskbarIconSide(), TaskbarIconTop() + TaskbarIconSide()};
        FillRect(context, &square, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
        platform::ReleaseScreenContext(context);
        RunOptions(frame, {}, [](HWND sheet) { ShowPage(sheet, kOptionsPage); });
        EXPECT_FALSE(StoredNumber(L"XLocation") || StoredNumber(L"TIcon") || StoredNumber(L"TFormat"));
        EXPECT_NE(PixelAt(frame.window, 75, TaskbarIconTop()), kTaskbar) << "nothing has changed";
        const auto tapUpArrow = [](HWND sheet) {
            Tap(GetDlgItem(ShowPage(sheet, kOptionsPage), IDC_OPTIONS_SPIN), 2, 2);
        };
        RunOptions(frame, {}, tapUpArrow);
        EXPECT_EQ(itemState.xLocation, 74U);
        EXPECT_EQ(StoredNumber(L"XLocation"), 74U);
        EXPECT_FALSE(HasColor(TakePicture(frame.window), square, RGB(0, 0, 0)));
        DeleteObject(itemState.taskbarBackground);
        itemState.taskbarBackground = itemState.iconBackground = nullptr;
    });
}

TEST(OptionsSheet, Every_way_of_closing_saves_and_closes_both_windows) {
    const Step ways[] = {[](HWND sheet) { PostMessageW(sheet, WM_CLOSE, 0, 0); },
                         [](HWND sheet) { Press(sheet, IDOK); },
                         [](HWND sheet) { PostMessageW(ShowPage(sheet, kOptionsPage), WM_KEYDOWN, VK_RETURN, 0); },
                         [](HWND sheet) { PostMessageW(sheet, WM_SYSCOMMAND, SC_CLOSE, 0); },
                         [](HWND sheet) { PostMessageW(sheet, WM_COMMAND, IDCANCEL, 0); },
                         [](HWND sheet) { PostMessageW(ShowPage(sheet, kOptionsPage), WM_KEYDOWN, VK_ESCAPE, 0); }};
    const TodayFrame frame;
    for (const Step& close : ways) {
        itemState.showTaskbarIcon = false;
        itemState.amPmFormat = true;
        const auto change = [](HWND sheet) {
            HWND page = ShowPage(sheet, kOptionsPage);
            EXPECT_EQ(IsDlgButtonChecked(page, IDC_OPTIONS_AM_PM), 1U);
            Press(page, IDC_OPTIONS_SHOW_ICON);
            Press(page, IDC_OPTIONS_MILITARY);
        };
        RunOptions(frame, {}, change, close);
        EXPECT_TRUE(itemState.showTaskbarIcon && !itemState.amPmFormat);
        EXPECT_EQ(StoredNumber(L"TIcon"), 1U);
        EXPECT_EQ(StoredNumber(L"TFormat"), 0U);
        EXPECT_TRUE(IsWindowEnabled(frame.window));
    }
}

TEST(OptionsSheet, Logs_are_listed_and_deleted_after_a_question_and_the_last_keeps_its_row) {
    const TodayFrame frame;
    for (const wchar_t* name : {L"200701.log", L"200611.log", L"200611-copy.log", L"export.log", L"200612.txt"}) {
        WriteWholeFile(name, {1});
    }
    const auto deleteLogs = [&](HWND sheet) {
        HWND page = ShowPage(sheet, kOptionsPage);
        // Every row is selected by itself.
        const auto press = [&](int row, int button) {
            ListView_SetItemState(GetDlgItem(page, IDC_OPTIONS_LOGS), row, LVIS_SELECTED, LVIS_SELECTED);
            Press(page, button);
            return RowsOf(GetDlgItem(page, IDC_OPTIONS_LOGS), 2);
        };
        const Texts all = {L"2006=11", L"2006=11", L"2007=01"};
        Press(page, IDC_OPTIONS_DELETE);               // nothing is selected: no question
        EXPECT_EQ(press(2, IDC_OPTIONS_DELETE), all);  // Cancel
        EXPECT_EQ(press(2, IDC_OPTIONS_DELETE), Texts(2, L"2006=11"));
        EXPECT_FALSE(FileExists(L"200701.log"));
        EXPECT_EQ(press(0, IDC_OPTIONS_DELETE_ALL), Texts(2, L"2006=11"));  // Cancel
        EXPECT_TRUE(FileExists(L"200611.log"));
        EXPECT_EQ(press(0, IDC_OPTIONS_DELETE_ALL), Texts{});
        EXPECT_FALSE(FileExists(L"200611.log") || FileExists(L"export.log"));
        EXPECT_TRUE(FileExists(L"200612.txt"));
    };
    const wchar_t* one = L"Question: Are you sure you want to delete 2007/01 log data? ? OK/Cancel";
    const wchar_t* every = L"Question: Are you sure you want to delete ALL log data? ? OK/Cancel";
    EXPECT_EQ(RunOptions(frame, {IDCANCEL, IDOK, IDCANCEL, IDOK}, deleteLogs), (Texts{one, one, every, every}));
    WriteWholeFile(L"200611.log", {1});
    RunOptions(frame, {IDOK}, [&](HWND sheet) {
        HWND page = ShowPage(sheet, kOptionsPage);
        ListView_SetItemState(GetDlgItem(page, IDC_OPTIONS_LOGS), 0, LVIS_SELECTED, LVIS_SELECTED);
        Press(page, IDC_OPTIONS_DELETE);
        EXPECT_EQ(RowsOf(GetDlgItem(page, IDC_OPTIONS_LOGS), 2), Texts{L"2006=11"});
        EXPECT_FALSE(FileExists(L"200611.log"));
    });
}

}  // namespace
}  // namespace ui
