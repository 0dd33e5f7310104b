// The scanner over access points that come, change, vanish and return; and the card's details without a card.

#include "tests/support/access_point_list.h"
#include "tests/support/wireless_values.h"
#include "tests/ui/ui_test.h"

namespace ui {
namespace {

constexpr UINT_PTR kTimer = 7;
using Images = std::vector<int>;

Images Levels(HWND dialog) {
    return ImagesOf(GetDlgItem(dialog, IDC_SCANNER_LIST));
}

void Select(HWND dialog, int row) {
    ListView_SetItemState(GetDlgItem(dialog, IDC_SCANNER_LIST), row, LVIS_SELECTED, LVIS_SELECTED);
}

void NextCycle(HWND dialog, const AccessPointListBuilder& list) {
    scripted::system.wireless.values[OID_802_11_BSSID_LIST] = list.Value();
    SendMessageW(dialog, WM_TIMER, kTimer, 0);
}

void Associate(const AccessPointListBuilder& list) {
    UseWireless();
    scripted::system.wireless.values[OID_802_11_BSSID_LIST] = list.Value();
    scripted::system.wireless.values[OID_802_11_SSID] = SsidValue("home", 4);
    scripted::system.wireless.values[OID_802_11_BSSID] = {0xDC, 0xDC, 0xDC, 0xDC, 0xDC, 0xDC};
}

TEST(ScannerDialog, Keeps_rows_selection_and_details_through_the_cycles) {
    const TodayFrame frame;
    const auto both = AccessPointListBuilder().Add("home", 1, -60).Add("home", 2, -85, 1);
    Associate(both);
    RunTool(frame, kScannerTool, {}, [&](HWND dialog) {
        const auto signal = [&] { return TextsOf(dialog, {IDC_SCANNER_SIGNAL, IDC_SCANNER_WEP}); };
        Select(dialog, 0);
        // The first one begins to encrypt, the second vanishes, a third comes.
        NextCycle(dialog, AccessPointListBuilder().Add("new", 3, -69).Add("home", 1, -75, 1));
        EXPECT_EQ(Levels(dialog), (Images{5, 1, 6}));
        EXPECT_EQ(signal(), (Texts{L"-75dBm", L"enabled"}));
        NextCycle(dialog, AccessPointListBuilder());
        EXPECT_EQ(Levels(dialog), (Images{1, 1, 0}));
        EXPECT_EQ(signal()[0], L"-200dBm");
        scripted::system.wireless.values.erase(OID_802_11_BSSID);
        NextCycle(dialog, both);
        EXPECT_EQ(Levels(dialog), (Images{8, 3, 0}));
        EXPECT_EQ(signal()[0], L"-60dBm");
        EXPECT_EQ(TextsOf(dialog, {IDC_SCANNER_SSID, IDC_SCANNER_BSSID}), (Texts{L"", L"DC:DC:DC:DC:DC:DC"}))
            << "the association has ended";
        SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
}

TEST(ScannerDialog, A_device_that_vanishes_stops_the_timer_for_good_and_leaves_the_content) {
    const TodayFrame frame;
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
            EXPECT_EQ(Levels(dialog), Images{8});
            EXPECT_EQ(TextOf(dialog, IDC_SCANNER_BSSID), L"DC:DC:DC:DC:DC:DC");
        });
    }
}

TEST(WirelessDetailsDialog, Stays_empty_without_an_adapter_and_closes_by_ok_alone) {
    const TodayFrame frame;
    const Step cancel = [](HWND dialog) { SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0); };
    RunTool(frame, kCardTool, {}, cancel, [](HWND dialog) { EXPECT_EQ(TextOf(dialog, IDC_WIRELESS_BEACON), L""); });
}

}  // namespace
}  // namespace ui
