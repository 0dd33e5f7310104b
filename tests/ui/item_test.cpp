// The item's strip, pixel by pixel, the icon that it paints over the taskbar, and its options.

#include "item/item_window.h"
#include "item/settings.h"
#include "item/tick.h"
#include "platform/scoped_gdi.h"
#include "platform/today.h"
#include "tests/ui/ui_test.h"

namespace ui {
namespace {

constexpr COLORREF kMarker = RGB(1, 200, 3);  // nothing in the product has this colour

// Over whatever the window and its children show there: a colour, and on it an icon that fills the area.
void Paint(HWND window, const RECT& area, COLORREF color, int icon = 0) {
    HDC context = GetDCEx(window, nullptr, DCX_CACHE);
    const platform::ScopedObject brush(CreateSolidBrush(color));
    FillRect(context, &area, static_cast<HBRUSH>(brush.object));
    const int side = area.right - area.left;
    HANDLE loaded = LoadImageW(itemState.instance, MAKEINTRESOURCEW(icon), IMAGE_ICON, side, side, LR_SHARED);
    EXPECT_TRUE(icon == 0 || DrawIconEx(context, area.left, area.top, static_cast<HICON>(loaded), side, side, 0,
                                        nullptr, DI_NORMAL));
    ReleaseDC(window, context);
}

// The item as the module's attach and the host make it: window, height, place, and a refresh after which the drawing
// resources are there.
class Item : public UiTest {
  protected:
    TODAYLISTITEM record = {};
    HWND strip = nullptr;

    // Draws the signal, if it changed, and the graph.
    LRESULT Refresh() {
        return SendMessageW(strip, WM_TODAYCUSTOM_QUERYREFRESHCACHE, 0, reinterpret_cast<LPARAM>(&record));
    }
    void SetUp() override {
        UiTest::SetUp();
        RegisterItemWindowClass();
        InitializeItem();
        UseEmptyDataFolder();
        record.fEnabled = TRUE;
        strip = InitializeCustomItem(&record, frame);
        EXPECT_TRUE(Refresh());
        MoveWindow(strip, 0, 100, itemState.screenWidth, IsHiResScreen() ? 40 : 24, TRUE);
        EXPECT_FALSE(Refresh());
    }
};
INSTANTIATE_TEST_SUITE_P(Screen, Item, kEveryScreen);

TEST_P(Item, Strip_has_its_icons_and_lines_to_the_pixel) {
    const std::array<int, 3> icons[] = {{50, 163, 200},  {69, 103, 192},  {88, 101, 189},  {107, 104, 193},
                                        {126, 102, 191}, {145, 125, 201}, {164, 126, 202}, {183, 188, 190},
                                        {202, 106, 195}, {221, 105, 194}};
    const int scale = ScreenScale();
    const auto square = [&](int x) { return RECT{x * scale, 4, (x + 16) * scale, 4 + 16 * scale}; };
    const RECT graph = scale == 2 ? RECT{3, 3, 91, 36} : RECT{3, 1, 47, 23};
    itemState.SignalDbm = -75;
    Paint(strip, {0, 0, 640, 40}, kMarker);
    RedrawWindow(strip, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);  // on the host's background
    Paint(strip, square(50), kWatermark);
    itemState.SignalDbm = -50;
    Refresh();
    SaveScreen("strip-icons");
    const Picture shown = TakePicture(strip);
    EXPECT_TRUE(shown.At(3, graph.top) != kWatermark && shown.At(graph.right - 1, graph.bottom - 1) != kWatermark);
    for (const RECT& beside : {RECT{0, 0, 3, 40}, RECT{0, 0, 640, graph.top}, RECT{0, graph.bottom, 640, 40},
                               RECT{graph.right, 0, 640, 40}}) {
        Paint(strip, beside, kWatermark);
    }
    for (const auto& [x, normal, hiRes] : icons) {
        Paint(strip, square(x), kWatermark, scale == 2 ? hiRes : normal);
    }
    EXPECT_EQ(TakePicture(strip).pixels, shown.pixels);
    const LONG left = 4, right = graph.right - 2, base = graph.bottom - 2;
    const LONG top = base - (scale == 2 ? 27 : 18), middle = base - (scale == 2 ? 10 : 7);
    itemState.sampleCount = kSampleSlots;
    itemState.ringStart = 0;
    std::ranges::fill(itemState.inDeltas, 10000);
    std::ranges::fill(itemState.outDeltas, 800000);
    Refresh();
    SaveScreen("strip-ring");
    const Picture ring = TakePicture(strip);
    itemState.sampleCount = 0;
    Refresh();
    Paint(strip, {left, base, right, base + 1}, RGB(192, 192, 192));
    Paint(strip, {right - 39, top, right - 1, top + 1}, RGB(255, 0, 0));
    Paint(strip, {right - 39, middle, right - 1, middle + 1}, RGB(0, 0, 255));
    EXPECT_EQ(TakePicture(strip).pixels, ring.pixels);
}

TEST_P(Item, Taskbar_icon_comes_with_the_second_tick_replaces_the_one_before_it_and_goes_with_the_cache) {
    const int scale = ScreenScale();
    const RECT square = {75, 5 * scale, 75 + 16 * scale, 21 * scale};
    const auto expect = [&](COLORREF ground, int icon) {
        const Picture shown = TakePicture(frame);
        Paint(frame, square, ground, icon);
        EXPECT_EQ(TakePicture(frame).pixels, shown.pixels) << icon;
    };
    const auto tick = [&](uint32_t octets) {
        scripted::system.adapters = {{.received = octets, .transmitted = octets}};
        SendMessageW(strip, WM_TIMER, kTickTimerId, 0);
    };
    tick(100);
    expect(kTaskbar, 0);
    tick(200);
    SaveScreen("taskbar-icon");
    expect(kTaskbar, scale == 2 ? 212 : 233);
    Paint(frame, square, kMarker);  // what the shell draws under it becomes the background
    tick(200);
    expect(kMarker, scale == 2 ? 218 : 238);
    SendMessageW(strip, WM_TODAYCUSTOM_CLEARCACHE, 0, 0);
    expect(kTaskbar, 0);  // as it was at the first refresh
}

using Options = UiTest;
INSTANTIATE_TEST_SUITE_P(Screen, Options, kEveryScreen);

HWND ShowPage(HWND sheet, int page) {
    SendMessageW(sheet, PSM_SETCURSEL, static_cast<WPARAM>(page), 0);
    return reinterpret_cast<HWND>(SendMessageW(sheet, PSM_GETCURRENTPAGEHWND, 0, 0));
}

TEST_P(Options, Sheet_fills_the_screen_and_shows_three_pages) {
    scripted::system.adapters = {{.description = "Realtek PCIe GbE"}};
    WriteWholeFile(L"200611.log", {});
    itemState.xLocation = 639;
    RunTool(kOptions, {}, [&](HWND sheet) {
        EXPECT_EQ(TakePicture(sheet).height, itemState.screenHeight - 26 * ScreenScale());
        const auto show = [&](int number, const char* name, const wchar_t* texts) {
            HWND page = ShowPage(sheet, number);
            ExpectReadable(page, name, texts, IDC_PAGE_HEADER);
            EXPECT_EQ(TakePicture(page).At(2, 24 * ScreenScale()) == RGB(0, 0, 0), !::IsLandscape()) << "a line";
        };
        show(0, "options-adapter",
             L"Today: Quorvane|Select a network card to monitor:|{00000001-0000-0000-0000-000000000001}|"
             L"0|Adapter|Realtek PCIe GbE;0|Type|ethernet;0|Speed|100 Mbps;0|IP Address|192.168.7.33;"
             L"0|MAC Address|02:00:00:00:00:01;0|DHCP Server|02:00:00:00:00:01;|");
        show(1, "options-options",
             L"Today: Quorvane|Show Taskbar Icon|639|Spin1|x location|Time Display|AM/PM Format|Military Format|"
             L"Traffic Log|0|2006|11;|Delete All|Delete|");
        show(2, "options-about", L"Today: Quorvane|Quorvane v2.0|");
    });
}

TEST_P(Options, Closing_by_OK_and_otherwise_saves_what_has_changed) {
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
        LoadDisplaySettings();
        EXPECT_EQ(itemState.xLocation, byOk ? 74U : 73U);
        EXPECT_TRUE(itemState.showTaskbarIcon == byOk && itemState.amPmFormat != byOk);
    }
}

TEST_P(Options, Logs_are_listed_and_deleted_after_a_question_and_the_last_keeps_its_row) {
    for (const wchar_t* name : {L"200701.log", L"200611.log", L"200612.txt"}) {
        WriteWholeFile(name, {1});
    }
    const Texts asked = RunTool(kOptions, {IDCANCEL, IDOK, IDOK, IDOK}, [&](HWND sheet) {
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
        EXPECT_EQ(press(IDC_OPTIONS_DELETE_ALL, 0), L"|");
        EXPECT_TRUE(!FileExists(L"export.log") && FileExists(L"200612.txt"));
    });
    EXPECT_EQ(asked[1], L"Question|Are you sure you want to delete 2007/01 log data?|21");
    EXPECT_EQ(asked[3], L"Question|Are you sure you want to delete ALL log data?|21");
}

}  // namespace
}  // namespace ui
