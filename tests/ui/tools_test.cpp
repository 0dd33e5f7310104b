// What the network's and the radio's tools do beyond showing texts.

#include <atomic>

#include "diagnostics/safe_list.h"
#include "diagnostics/scan.h"
#include "tests/support/access_point_list.h"
#include "tests/support/host_records.h"
#include "tests/support/wireless_values.h"
#include "tests/ui/ui_test.h"

namespace ui {
namespace {

using Tools = UiTest;
using Detector = UiTest;
INSTANTIATE_TEST_SUITE_P(Screen, Tools, testing::Values("240x320"));
INSTANTIATE_TEST_SUITE_P(Screen, Detector, kEveryScreen);

void Cancel(HWND dialog) {
    SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
}

TEST_P(Tools, A_refused_lease_changes_nothing) {
    scripted::system.adapters = {{.dhcpEnabled = true, .dhcpServer = "10.0.0.1"}};
    auto& results = scripted::system.results;
    results = {{"IpReleaseAddress", ERROR_ACCESS_DENIED}, {"IpRenewAddress", ERROR_ACCESS_DENIED}};
    const Texts boxes = RunTool(kDhcpTool, {IDOK, IDOK}, [&](HWND dialog) {
        Press(dialog, IDC_DHCP_RELEASE);
        Press(dialog, IDC_DHCP_RENEW);
        results["GetInterfaceInfo size"] = ERROR_NO_DATA;  // without an interface of that name nothing is even told
        Press(dialog, IDC_DHCP_RELEASE);
        Press(dialog, IDC_DHCP_RENEW);
        EXPECT_EQ(TextOf(dialog, {IDC_DHCP_ADDRESS, IDC_DHCP_SERVER}), L"192.168.7.33|10.0.0.1");
    });
    EXPECT_EQ(boxes, (Texts{L"Error|Release DHCP Address Error!|0", L"Error|Renew DHCP Address Error!|0"}));
}

TEST_P(Tools, Ping_remembers_its_hosts_and_raises_the_keyboard_for_the_field) {
    const std::wstring longest(99, L'x');
    const auto listed = [](HWND dialog) {
        EXPECT_EQ(SendDlgItemMessageW(dialog, IDC_PING_HOST, CB_GETCOUNT, 0, 0), std::ssize(ListedHosts()));
        return ListedHosts();
    };
    const Texts told = RunTool(kPingTool, {IDOK}, [&](HWND dialog) {
        Press(dialog, IDC_PING_PING);
        EXPECT_EQ(TextOf(dialog, {IDC_PING_STATUS}), L"") << "there is nothing to ping";
        TypeInto(dialog, IDC_PING_HOST, longest + L"more than the field takes");
        Press(dialog, IDC_PING_PING);
        EXPECT_EQ(TextOf(dialog, {IDC_PING_STATUS, IDC_PING_ROUND_TRIP, IDC_PING_MAC}), L"Pinging...||");
        EXPECT_FALSE(IsEnabled(dialog, IDC_PING_PING));
        WaitUntil([&] { return IsEnabled(dialog, IDC_PING_PING); });
        EXPECT_EQ(TextOf(dialog, {IDC_PING_STATUS}), L"Unknown host: " + longest);
    });
    EXPECT_EQ(told, Texts{L"Error|Host name is empty|0"});
    keyboard.clear();
    const Texts asked = RunTool(kPingTool, {IDNO, IDYES}, [&](HWND dialog) {
        EXPECT_EQ(keyboard, "-") << "down when the dialog opens";
        Press(dialog, IDC_PING_KEYBOARD);
        EXPECT_EQ(keyboard, "-++") << "by the button and by the focus it gives";
        EXPECT_EQ(GetParent(GetFocus()), GetDlgItem(dialog, IDC_PING_HOST));
        Press(dialog, IDC_PING_KEYBOARD);
        SetFocus(GetDlgItem(dialog, IDC_PING_PING));
        SetFocus(GetDlgItem(dialog, IDC_PING_HOST));
        EXPECT_EQ(keyboard, "-++-+");
        EXPECT_EQ(TextOf(dialog, {IDC_PING_HOST}), longest);
        Press(dialog, IDC_PING_DELETE);  // No: only the field is cleared
        EXPECT_EQ(TextOf(dialog, {IDC_PING_HOST}), L"");
        EXPECT_EQ(listed(dialog), Texts{longest});
        TypeInto(dialog, IDC_PING_HOST, longest);
        Press(dialog, IDC_PING_DELETE);
        EXPECT_EQ(listed(dialog), Texts{});
        Cancel(dialog);
    });
    EXPECT_EQ(keyboard, "-++-++-");
    EXPECT_EQ(asked, Texts(2, L"Question|Are you sure you want to delete this host?|24"));
    RunTool(kPingTool, {});
    EXPECT_EQ(keyboard, "-++-++--") << "nothing was raised, nothing is lowered at the end";
}

TEST_P(Tools, Scanner_keeps_rows_selection_and_details_until_the_device_vanishes) {
    UseWireless();
    auto& wireless = scripted::system.wireless;
    const auto both = AccessPointListBuilder().Add("home", 1, -60).Add("home", 2, -85, 1);
    wireless.values = {{OID_802_11_BSSID_LIST, both.Value()},
                       {OID_802_11_SSID, SsidValue("home", 4)},
                       {OID_802_11_BSSID, {0xDC, 0xDC, 0xDC, 0xDC, 0xDC, 0xDC}}};
    RunTool(kScannerTool, {}, [&](HWND dialog) {
        constexpr UINT_PTR kTimer = 7;
        const auto cycle = [&](const AccessPointListBuilder& list) {
            wireless.values[OID_802_11_BSSID_LIST] = list.Value();
            SendMessageW(dialog, WM_TIMER, kTimer, 0);
            return RowsOf(dialog, IDC_SCANNER_LIST);
        };
        const auto selected = [&] { return TextOf(dialog, {IDC_SCANNER_SIGNAL, IDC_SCANNER_WEP}); };
        ListView_SetItemState(GetDlgItem(dialog, IDC_SCANNER_LIST), 0, LVIS_SELECTED, LVIS_SELECTED);
        // The first one begins to encrypt, the second vanishes, a third comes.
        EXPECT_EQ(cycle(AccessPointListBuilder().Add("new", 3, -69).Add("home", 1, -75, 1)),
                  (Texts{L"5||home", L"1||home", L"6||new"}));
        EXPECT_EQ(selected(), L"-75dBm|enabled");
        wireless.values.erase(OID_802_11_BSSID);
        const Texts rows = {L"8||home", L"3||home", L"0||new"};
        EXPECT_EQ(cycle(both), rows);
        EXPECT_TRUE(selected().starts_with(L"-60dBm"));
        EXPECT_EQ(TextOf(dialog, {IDC_SCANNER_SSID, IDC_SCANNER_BSSID}), L"|DC:DC:DC:DC:DC:DC")
            << "the association has ended";
        EXPECT_TRUE(KillTimer(dialog, kTimer)) << "the timer runs";
        wireless.present = false;
        EXPECT_EQ(cycle({}), rows);
        EXPECT_FALSE(KillTimer(dialog, kTimer)) << "it was stopped for good";
        Cancel(dialog);
    });
}

TEST_P(Tools, Card_closes_by_ok_alone) {
    RunTool(kCardTool, {}, Cancel, [](HWND dialog) { EXPECT_TRUE(IsWindowVisible(dialog)); });
}

// The intruder detector with real worker threads over scripted echoes.

// Hosts 2 (safe), 33 (the device), 77 (a stranger) and 200 (unknown to the ARP table) answer; the echo to host 250
// brings nothing, but waits while it is held.
std::atomic<bool> lastEchoHeld;

void UseNetwork() {
    lastEchoHeld = true;
    scripted::system.adapters = {{.hardwareAddress = {2, 0, 0, 0, 0, 0x33}, .address = "127.0.0.33"}};
    scripted::system.arp = {{inet_addr("127.0.0.2"), {2, 0, 0, 0, 0, 0x02}},
                            {inet_addr("127.0.0.77"), {2, 0, 0, 0, 0, 0x77}}};
    scripted::system.echo = [](uint32_t address, DWORD) -> std::optional<platform::EchoReply> {
        const uint32_t number = ntohl(address) & 0xFF;
        while (number == 250 && lastEchoHeld) {
            Sleep(10);
        }
        platform::EchoReply reply = {};
        reply.address = address;
        return number == 2 || number == 33 || number == 77 || number == 200 ? std::optional(reply) : std::nullopt;
    };
}

const Texts kSorted = {L"1||127.0.0.2|02:00:00:00:00:02", L"1||127.0.0.33|02:00:00:00:00:33",
                       L"0||127.0.0.77|02:00:00:00:00:77", L"0||127.0.0.200|"};
const Texts kDiscovered(kSorted.rbegin(), kSorted.rend());

Texts Hosts(HWND dialog) {
    return RowsOf(dialog, IDC_DETECTOR_HOSTS);
}

LRESULT Progress(HWND dialog) {
    return SendDlgItemMessageW(dialog, IDC_DETECTOR_PROGRESS, PBM_GETPOS, 0, 0);
}

// Hosts that speak no NetBIOS take 5 s.
void DetectHosts(HWND dialog) {
    Press(dialog, IDC_DETECTOR_DETECT);
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_WAIT));
    EXPECT_EQ(Hosts(dialog), Texts{});
    EXPECT_FALSE(IsEnabled(dialog, IDC_DETECTOR_EXPORT));
    EXPECT_EQ(Progress(dialog), 0);
    WaitUntil([&] { return Hosts(dialog) == kDiscovered; });
    EXPECT_TRUE(IsEnabled(dialog, IDC_DETECTOR_EXPORT) && IsEnabled(dialog, IDC_DETECTOR_DETECT));
    EXPECT_EQ(Progress(dialog), 99);
}

void TapRow(HWND dialog, int row) {
    HWND list = GetDlgItem(dialog, IDC_DETECTOR_HOSTS);
    RECT area = {};
    ListView_GetSubItemRect(list, row, row % 2, LVIR_BOUNDS, &area);
    TapPixel(list, area.left + 20, (area.top + area.bottom) / 2);
}

TEST_P(Detector, Orders_hosts_at_the_end_while_one_of_them_is_tapped) {
    UseNetwork();
    SafeListAdd({{2, 0, 0, 0, 0, 0x02}});
    const Texts boxes = RunTool(kDetectorTool, {IDYES, IDYES, IDNO, IDOK, IDOK}, [&](HWND dialog) {
        ExpectReadable(dialog);
        EXPECT_FALSE(IsEnabled(dialog, IDC_DETECTOR_EXPORT));
        DetectHosts(dialog);
        DetectHosts(dialog);  // before the first scan has ended
        SaveScreen("detector-during");
        // The scan ends while the question is coming up.
        duringMessageBox = [&] {
            lastEchoHeld = false;
            WaitUntil([] { return scanState.table == nullptr; });
            duringMessageBox = nullptr;
        };
        TapRow(dialog, 1);  // host 77, which becomes row 2
        SaveScreen("detector-after");
        Texts marked = kSorted;
        marked[2][0] = L'1';
        EXPECT_EQ(Hosts(dialog), marked);
        EXPECT_TRUE(SafeListContains({{2, 0, 0, 0, 0, 0x77}}));
        EXPECT_EQ(Progress(dialog), 100);
        EXPECT_EQ(GetCursor(), nullptr);
        // Yes, No; nothing is asked about the device itself or a host without hardware address.
        for (const int row : {2, 2, 1, 3}) {
            TapRow(dialog, row);
            EXPECT_EQ(Hosts(dialog), kSorted);
            EXPECT_FALSE(SafeListContains({{2, 0, 0, 0, 0, 0x77}}));
        }
        Press(dialog, IDC_DETECTOR_EXPORT);
        scripted::system.adapters.clear();
        Press(dialog, IDC_DETECTOR_DETECT);
        EXPECT_EQ(Hosts(dialog), kSorted) << "without an address the rows stay";
        EXPECT_FALSE(IsEnabled(dialog, IDC_DETECTOR_EXPORT));
        Cancel(dialog);
    });
    EXPECT_EQ(boxes[1], L"Question|Delete 127.0.0.77 from safe list?|124");
    EXPECT_EQ(boxes[2], L"Question|Add 127.0.0.77 to safe list?|124");
    const std::wstring told = L"Infomation|Data output to: ";
    ASSERT_TRUE(boxes[3].starts_with(told));
    const std::wstring path = boxes[3].substr(told.size(), boxes[3].size() - told.size() - 2);
    EXPECT_EQ(boxes[4], L"Error|Cannot get current IP address!|0");
    EXPECT_EQ(std::ranges::count(ReadWholePath(path), '\n'), 5) << "a heading and four hosts";
    DeleteFileW(path.c_str());
}

}  // namespace
}  // namespace ui
