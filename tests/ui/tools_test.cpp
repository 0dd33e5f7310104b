// The network's and the radio's tools: with the longest texts that their fields can get, and what else they do.

#include <atomic>

#include "diagnostics/safe_list.h"
#include "diagnostics/scan.h"
#include "tests/support/access_point_list.h"
#include "tests/support/wireless_values.h"
#include "tests/ui/ui_test.h"

namespace ui {
namespace {

using Tools = UiTest;
INSTANTIATE_TEST_SUITE_P(Screen, Tools, kEveryScreen);

void TapRow(HWND dialog, int list, int row) {
    RECT area = {};
    ListView_GetItemRect(GetDlgItem(dialog, list), row, &area, LVIR_BOUNDS);
    Tap(GetDlgItem(dialog, list), area.left + 45 * ScreenScale(), (area.top + area.bottom) / 2);
}

TEST_P(Tools, Adapter_and_lease_are_shown_whole) {
    scripted::system.adapters = {{.description = "Wireless & wired adapter of the fifth generation, 5 GHz",
                                  .hardwareAddress = {0xDC, 0xDC, 0xDC, 0xDC, 0xDC, 0xDC, 0xDC, 0xDC},
                                  .address = "255.255.255.255",
                                  .mask = "255.255.255.254",
                                  .gateway = "255.255.255.253",
                                  .dnsServers = {"255.255.255.255", "254.255.255.255"},
                                  .dhcpEnabled = true,
                                  .dhcpServer = "192.168.200.254",
                                  .leaseObtained = 1142409909,
                                  .leaseExpires = 1142928309,
                                  .haveWins = true,
                                  .primaryWins = "253.255.255.255",
                                  .secondaryWins = "252.255.255.255"}};
    scripted::system.internet.answers[L"ip1.quorvane.net"] = {"203.113.113.200\r\n"};
    const std::wstring servers =
        ::IsLandscape()
            ? L"DNS Server:|255.255.255.255, 254.255.255.255|WINS Server:|253.255.255.255, 252.255.255.255|OK|"
            : L"DNS Server 1:|255.255.255.255|DNS Server 2:|254.255.255.255|WINS Server 1:|253.255.255.255|"
              L"WINS Server 2:|252.255.255.255|OK|";
    RunTool(kAdapterTool, {}, [&](HWND dialog) {
        const std::wstring adapter =
            L"Adapter - Wireless & wired adapter of the fifth generation, 5 GHz|Adapter Details|MAC Address:|"
            L"DC:DC:DC:DC:DC:DC:DC:DC|Type:|ethernet|Speed:|100 Mbps|IP Address:|255.255.255.255|Subnet Mask:|"
            L"255.255.255.254|Gateway:|255.255.255.253|";
        ExpectReadable(dialog, "adapter-details", adapter + servers, IDC_ADAPTER_TITLE);
    });
    RunTool(kDhcpTool, {}, [&](HWND dialog) {
        Press(dialog, IDC_DHCP_DETECT);
        ExpectReadable(dialog, "dhcp",
                       L"DHCP Information|IP Address:|255.255.255.255|Real IP:|203.113.113.200|Detect|DHCP Details|"
                       L"Server:|192.168.200.254|Lease Obtained:|Wed. Mar 15, 2006 08:05:09|Lease Expires:|"
                       L"Tue. Mar 21, 2006 08:05:09|Release|Renew|OK|");
    });
}

TEST_P(Tools, Ping_remembers_its_hosts_until_they_are_deleted) {
    scripted::system.arp = {{inet_addr("222.222.222.222"), {0xDC, 0xDC, 0xDC, 0xDC, 0xDC, 0xDC}}};
    scripted::system.echo = [](uint32_t address, DWORD) {
        platform::EchoReply reply = {};
        reply.address = address;
        reply.roundTripTime = 4999;
        return std::optional(reply);
    };
    RunTool(kPingTool, {}, [&](HWND dialog) {
        SetDlgItemTextW(dialog, IDC_PING_HOST, L"222.222.222.222");
        Press(dialog, IDC_PING_PING);
        WaitUntil([&] { return IsWindowEnabled(GetDlgItem(dialog, IDC_PING_PING)); });
        ExpectReadable(dialog, "ping",
                       L"Ping|Delete|Keyboard|Ping|Select/enter a hostname/IP address:|222.222.222.222|"
                       L"Host (222.222.222.222) is alive|Round Trip Time: 4999 ms|MAC Address: DC:DC:DC:DC:DC:DC|OK|",
                       IDC_PING_HOST);
        Press(dialog, IDC_PING_KEYBOARD);
    });
    EXPECT_TRUE(keyboard.ends_with("--++-")) << keyboard << ": up by the button and by the focus it gives";
    const Texts asked = RunTool(kPingTool, {IDNO, IDYES}, [](HWND dialog) {
        const auto host = [&] {
            const LRESULT listed = SendDlgItemMessageW(dialog, IDC_PING_HOST, CB_GETCOUNT, 0, 0);
            return TextsOf(dialog, {IDC_PING_HOST}) + std::to_wstring(listed);
        };
        EXPECT_EQ(host(), L"222.222.222.222|1");
        Press(dialog, IDC_PING_DELETE);
        EXPECT_EQ(host(), L"|1") << "No: only the field is cleared";
        SetDlgItemTextW(dialog, IDC_PING_HOST, L"222.222.222.222");
        Press(dialog, IDC_PING_DELETE);
        EXPECT_EQ(host(), L"|0");
    });
    EXPECT_EQ(asked, Texts(2, L"Question|Are you sure you want to delete this host?|24"));
}

TEST_P(Tools, Card_is_shown_whole_and_the_scanner_keeps_rows_selection_and_details) {
    UseWireless();
    AccessPointListBuilder list;
    list.Add("Workshop", 1, -66, 1).Add("Workshop", 2, -70).Add("", 3, -80, 1).Add(std::string(32, 'W'), 4, -81, 1);
    list.Add("Cafe", 5, -200, 0, 2484000).Add("Harbour", 6, -67, 1).Add("Guest", 7, -65).Add("x", 8, -90, 1);
    auto& values = scripted::system.wireless.values;
    values = {{OID_802_11_CONFIGURATION, NdisFields({32, 65535, 65535, 2484000})},
              {OID_802_11_AUTHENTICATION_MODE, NdisFields({2})},
              {OID_802_11_INFRASTRUCTURE_MODE, NdisFields({1})},
              {OID_802_11_NETWORK_TYPE_IN_USE, NdisFields({1})},
              {OID_802_11_WEP_STATUS, NdisFields({3})},
              {OID_802_11_SSID, SsidValue("Office & Workshop, second floor", 31)},
              {OID_802_11_BSSID, {0xDC, 0xDC, 0xDC, 0xDC, 0xDC, 0xDC}},
              {OID_802_11_BSSID_LIST, list.Value()}};
    constexpr uint8_t kMostRates[] = {0x8C, 0x12, 0x98, 0x24, 0xB0, 0x48, 0x60, 0x6C};
    std::ranges::copy(kMostRates, values[OID_802_11_BSSID_LIST].begin() + 4 + 104 + 96);
    RunTool(kCardTool, {}, [&](HWND dialog) {
        ExpectReadable(dialog, "wireless-details",
                       L"Wireless Card Details|Details|Beacon:|65535 Kusec|ATIM window:|65535 Kusec|Frequency:|"
                       L"2484000 kHz|(unknown channel)|Authentication:|auto-switch|Network Type:|DSSS|Mode:|"
                       L"infrastructure mode|WEP:|key is not supported|OK|");
    });
    RunTool(kScannerTool, {}, [&](HWND dialog) {
        TapRow(dialog, IDC_SCANNER_LIST, 1);
        const std::wstring rows =
            L"9||Workshop;6||Workshop;5||;3||WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW;0||Cafe;7||Harbour;8||Guest;1||x;";
        const std::wstring network =
            L"802.11 Scanner|Associated SSID:|Office & Workshop, second floor|Associated BSSID:|DC:DC:DC:DC:DC:DC|"
            L"Access Point List|" +
            rows + L"|Signal:|-70dBm|WEP:|disabled|";
        const wchar_t* details = ::IsLandscape()
                                     ? L"Mode:|infrastructure|BSSID:|02:00:00:00:00:02|Type:|FDM24|Channel:|6|"
                                     : L"BSSID:|02:00:00:00:00:02|Channel:|6|Mode:|infrastructure|Type:|FDM24|";
        ExpectReadable(dialog, "scanner", network + details + L"Supported Rates:|6,9,12,18,24,36,48,54 Mbps|OK|",
                       IDC_SCANNER_SSID);
        const auto cycle = [&](const AccessPointListBuilder& found) {
            values[OID_802_11_BSSID_LIST] = found.Value();
            SendMessageW(dialog, WM_TIMER, 7, 0);
            return TextsOf(dialog, {IDC_SCANNER_LIST, IDC_SCANNER_SIGNAL, IDC_SCANNER_WEP});
        };
        // The selected one begins to encrypt, the others vanish, a new one comes; then all are back.
        EXPECT_EQ(cycle(AccessPointListBuilder().Add("new", 9, -69).Add("Workshop", 2, -75, 1)),
                  L"1||Workshop;5||Workshop;1||;1||WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW;0||Cafe;1||Harbour;0||Guest;1||x;"
                  L"6||new;|-75dBm|enabled|");
        EXPECT_EQ(cycle(list), rows + L"0||new;|-70dBm|disabled|");
    });
}

// The intruder detector with real worker threads over scripted echoes: hosts 2 (safe), 33 (the device), 77 (a stranger)
// and 200 (unknown to the ARP table) answer; the echo to host 250 brings nothing, but waits while it is held.
TEST_P(Tools, Detector_orders_hosts_at_the_end_while_one_of_them_is_tapped) {
    static std::atomic<bool> lastEchoHeld;
    lastEchoHeld = true;
    scripted::system.adapters = {{.hardwareAddress = {2, 0, 0, 0, 0, 0x33}, .address = "127.0.0.33"}};
    scripted::system.arp = {{inet_addr("127.0.0.2"), {2, 0, 0, 0, 0, 2}},
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
    SafeListAdd({{2, 0, 0, 0, 0, 2}});
    const Texts asked = RunTool(kDetectorTool, {IDYES, IDYES, IDNO}, [&](HWND dialog) {
        const auto rows = [&] { return TextsOf(dialog, {IDC_DETECTOR_HOSTS}); };
        Press(dialog, IDC_DETECTOR_DETECT);
        // Hosts that speak no NetBIOS take 5 s.
        WaitUntil([&] { return std::ranges::count(rows(), L';') == 4; });
        ExpectReadable(dialog, "detector-during",
                       L"Intruder Detector|0||127.0.0.200|;0||127.0.0.77|02:00:00:00:00:77;"
                       L"1||127.0.0.33|02:00:00:00:00:33;1||127.0.0.2|02:00:00:00:00:02;||Export|Detect|OK|");
        // The scan ends while the question is coming up.
        duringMessageBox = [&] {
            lastEchoHeld = false;
            WaitUntil([] { return scanState.table == nullptr; });
            duringMessageBox = [] {};
        };
        TapRow(dialog, IDC_DETECTOR_HOSTS, 1);  // host 77, which becomes row 2
        const std::wstring own = L"1||127.0.0.2|02:00:00:00:00:02;1||127.0.0.33|02:00:00:00:00:33;";
        EXPECT_EQ(rows(), own + L"1||127.0.0.77|02:00:00:00:00:77;0||127.0.0.200|;|");
        EXPECT_TRUE(SafeListContains({{2, 0, 0, 0, 0, 0x77}}));
        SaveScreen("detector-after");
        EXPECT_TRUE(IsWindowEnabled(GetDlgItem(dialog, IDC_DETECTOR_EXPORT)));
        // Yes, No; nothing is asked about the device itself or a host without hardware address.
        for (const int row : {2, 2, 1, 3}) {
            TapRow(dialog, IDC_DETECTOR_HOSTS, row);
            EXPECT_EQ(rows(), own + L"0||127.0.0.77|02:00:00:00:00:77;0||127.0.0.200|;|");
        }
    });
    EXPECT_EQ(asked[1], L"Question|Delete 127.0.0.77 from safe list?|124");
    EXPECT_EQ(asked[2], L"Question|Add 127.0.0.77 to safe list?|124");
}

}  // namespace
}  // namespace ui
