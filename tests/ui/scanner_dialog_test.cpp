// The scanner over access points that come, change, vanish and return.

#include "tests/support/access_point_list.h"
#include "tests/support/wireless_values.h"
#include "tests/ui/ui_test.h"

namespace ui {
namespace {

constexpr UINT_PTR kTimer = 7;
using Images = std::vector<int>;

HWND List(HWND dialog) {
    return GetDlgItem(dialog, IDC_SCANNER_LIST);
}

// On the name: the whole row takes taps.
void TapRow(HWND dialog, int row) {
    RECT area = {};
    ListView_GetItemRect(List(dialog), row, &area, LVIR_BOUNDS);
    Tap(List(dialog), area.left + 45 * ScreenScale(), (area.top + area.bottom) / 2);
}

void NextCycle(HWND dialog, const AccessPointListBuilder& list) {
    scripted::system.wireless.values[OID_802_11_BSSID_LIST] = list.Value();
    SendMessageW(dialog, WM_TIMER, kTimer, 0);
}

void Associate(const AccessPointListBuilder& list) {
    UseWireless();
    scripted::system.wireless.values[OID_802_11_BSSID_LIST] = list.Value();
    scripted::system.wireless.values[OID_802_11_SSID] = SsidValue("Office & Workshop, second floor", 31);
    scripted::system.wireless.values[OID_802_11_BSSID] = {0xDC, 0xDC, 0xDC, 0xDC, 0xDC, 0xDC};
}

TEST(ScannerDialog, Shows_levels_names_and_the_tapped_rows_details_on_every_screen) {
    const std::string longest(32, 'W');
    AccessPointListBuilder list;
    list.Add("Workshop", 1, -66, 1).Add("Workshop", 2, -70).Add("", 3, -80, 1).Add(longest, 4, -81, 1);
    list.Add("Cafe", 5, -200, 0, 2484000).Add("Harbour", 6, -67, 1).Add("Guest", 7, -65).Add("x", 8, -90, 1);
    ForEachScreen([&](TodayFrame& frame, SIZE) {
        Associate(list);
        constexpr uint8_t kMostRates[] = {0x8C, 0x12, 0x98, 0x24, 0xB0, 0x48, 0x60, 0x6C};
        std::copy(std::begin(kMostRates), std::end(kMostRates),
                  scripted::system.wireless.values[OID_802_11_BSSID_LIST].begin() + 4 + 104 + 96);
        const auto opened = [&](HWND dialog) {
            EXPECT_EQ(ImagesOf(List(dialog)), (Images{9, 6, 5, 3, 0, 7, 8, 1}));
            EXPECT_EQ(RowsOf(List(dialog), 2), (Texts{L"=Workshop", L"=Workshop", L"=", L"=" + std::wstring(32, L'W'),
                                                      L"=Cafe", L"=Harbour", L"=Guest", L"=x"}));
            EXPECT_EQ(TextsOf(dialog, {IDC_SCANNER_SSID, IDC_SCANNER_BSSID, IDC_SCANNER_SIGNAL}),
                      (Texts{L"Office & Workshop, second floor", L"DC:DC:DC:DC:DC:DC", L""}));
            TapRow(dialog, 1);
        };
        const auto tapped = [&](HWND dialog) {
            EXPECT_EQ(TextsOf(dialog, {IDC_SCANNER_SIGNAL, IDC_SCANNER_WEP, IDC_SCANNER_ENTRY_BSSID,
                                       IDC_SCANNER_CHANNEL, IDC_SCANNER_MODE, IDC_SCANNER_TYPE, IDC_SCANNER_RATES}),
                      (Texts{L"-70dBm", L"disabled", L"02:00:00:00:00:02", L"6", L"infrastructure", L"FDM24",
                             L"6,9,12,18,24,36,48,54 Mbps"}));
            EXPECT_EQ(GetWindowLongW(List(dialog), GWL_STYLE) & WS_HSCROLL, 0) << "the columns fit";
            ExpectReadable(dialog, frame.window, IDC_SCANNER_SSID);
            SaveScreen(frame, "scanner");
        };
        RunTool(frame, kScannerTool, {}, opened, tapped);
    });
}

TEST(ScannerDialog, Keeps_rows_selection_and_details_through_the_cycles) {
    const TodayFrame frame(kScreenSizes[0]);
    const auto both = AccessPointListBuilder().Add("home", 1, -60).Add("home", 2, -85, 1);
    Associate(both);
    const auto signal = [](HWND dialog) { return TextOf(dialog, IDC_SCANNER_SIGNAL); };
    const auto cycles = [&](HWND dialog) {
        EXPECT_EQ(signal(dialog), L"-60dBm");
        // The first one begins to encrypt, the second vanishes, a third comes.
        NextCycle(dialog, AccessPointListBuilder().Add("new", 3, -69).Add("home", 1, -75, 1));
        EXPECT_EQ(ImagesOf(List(dialog)), (Images{5, 1, 6}));
        EXPECT_EQ(TextsOf(dialog, {IDC_SCANNER_SIGNAL, IDC_SCANNER_WEP}), (Texts{L"-75dBm", L"enabled"}));
        NextCycle(dialog, AccessPointListBuilder());
        EXPECT_EQ(ImagesOf(List(dialog)), (Images{1, 1, 0}));
        EXPECT_EQ(signal(dialog), L"-200dBm");
        scripted::system.wireless.values.erase(OID_802_11_BSSID);
        NextCycle(dialog, both);
        EXPECT_EQ(ImagesOf(List(dialog)), (Images{8, 3, 0}));
        EXPECT_EQ(signal(dialog), L"-60dBm");
        EXPECT_EQ(TextsOf(dialog, {IDC_SCANNER_SSID, IDC_SCANNER_BSSID}), (Texts{L"", L"DC:DC:DC:DC:DC:DC"}))
            << "the association has ended";
        TapRow(dialog, 2);
    };
    const auto tapped = [](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, IDC_SCANNER_ENTRY_BSSID), L"02:00:00:00:00:03");
        SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    };
    RunTool(
        frame, kScannerTool, {}, [](HWND dialog) { TapRow(dialog, 0); }, cycles, tapped);
}

TEST(ScannerDialog, A_device_that_vanishes_stops_the_timer_for_good_and_leaves_the_content) {
    const TodayFrame frame(kScreenSizes[0]);
    for (const bool opens : {false, true}) {
        Associate(AccessPointListBuilder().Add("home", 1, -60));
        RunTool(frame, kScannerTool, {}, [&](HWND dialog) {
            scripted::system.wireless.requests.clear();
            SendMessageW(dialog, WM_TIMER, kTimer + 1, 0);
            EXPECT_TRUE(scripted::system.wireless.requests.empty()) << "another timer's message";
            EXPECT_TRUE(KillTimer(dialog, kTimer)) << "the timer runs";
            scripted::system.wireless.present = opens;
            scripted::system.wireless.bindingName = L"";
            SendMessageW(dialog, WM_TIMER, kTimer, 0);
            EXPECT_FALSE(KillTimer(dialog, kTimer));
            EXPECT_EQ(ImagesOf(List(dialog)), Images{8});
            EXPECT_EQ(TextOf(dialog, IDC_SCANNER_BSSID), L"DC:DC:DC:DC:DC:DC");
        });
    }
}

}  // namespace
}  // namespace ui
