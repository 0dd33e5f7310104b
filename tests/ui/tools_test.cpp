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

void UseWidestNetwork() {
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
    scripted::system.internet.answers[L"ip1.quorvane.net"] = {{"203.113.113.200\r\n"}};
    scripted::system.arp = {{inet_addr("222.222.222.222"), {0xDC, 0xDC, 0xDC, 0xDC, 0xDC, 0xDC}}};
    scripted::system.echo = [](uint32_t address, DWORD) {
        platform::EchoReply reply = {};
        reply.address = address;
        reply.roundTripTime = 4999;
        return std::optional(reply);
    };
}

void UseWidestRadio() {
    UseWireless();
    AccessPointListBuilder list;
    list.Add("Workshop", 1, -66, 1).Add("Workshop", 2, -70).Add("", 3, -80, 1).Add(std::string(32, 'W'), 4, -81, 1);
    list.Add("Cafe", 5, -200, 0, 2484000).Add("Harbour", 6, -67, 1).Add("Guest", 7, -65).Add("x", 8, -90, 1);
    scripted::system.wireless.values = {{OID_802_11_CONFIGURATION, NdisFields({32, 65535, 65535, 2484000})},
                                        {OID_802_11_AUTHENTICATION_MODE, NdisFields({2})},
                                        {OID_802_11_INFRASTRUCTURE_MODE, NdisFields({1})},
                                        {OID_802_11_NETWORK_TYPE_IN_USE, NdisFields({1})},
                                        {OID_802_11_WEP_STATUS, NdisFields({3})},
                                        {OID_802_11_SSID, SsidValue("Office & Workshop, second floor", 31)},
                                        {OID_802_11_BSSID, {0xDC, 0xDC, 0xDC, 0xDC, 0xDC, 0xDC}},
                                        {OID_802_11_BSSID_LIST, list.Value()}};
    constexpr uint8_t kMostRates[] = {0x8C, 0x12, 0x98, 0x24, 0xB0, 0x48, 0x60, 0x6C};
    std::ranges::copy(kMostRates, scripted::system.wireless.values[OID_802_11_BSSID_LIST].begin() + 4 + 104 + 96);
}

TEST_P(Tools, Show_the_widest_texts_whole) {
    UseWidestNetwork();
    UseWidestRadio();
    const auto show = [&](uint32_t tool, const char* picture, const Use& use, int cutControl,
                          const std::wstring& texts) {
        RunTool(tool, {}, [&](HWND dialog) {
            use(dialog);
            ExpectReadable(dialog, texts, cutControl);
            SaveScreen(picture);
        });
    };
    const auto ping = [](HWND dialog) {
        SetDlgItemTextW(dialog, IDC_PING_HOST, L"222.222.222.222");
        Press(dialog, IDC_PING_PING);
        WaitUntil([&] { return IsWindowEnabled(GetDlgItem(dialog, IDC_PING_PING)); });
    };
    const bool wide = ::IsLandscape();
    const std::wstring servers =
        wide ? L"DNS Server:|255.255.255.255, 254.255.255.255|WINS Server:|253.255.255.255, 252.255.255.255|"
             : L"DNS Server 1:|255.255.255.255|DNS Server 2:|254.255.255.255|WINS Server 1:|253.255.255.255|"
               L"WINS Server 2:|252.255.255.255|";
    const std::wstring selected = wide ? L"Mode:|infrastructure|BSSID:|02:00:00:00:00:02|Type:|FDM24|Channel:|6|"
                                       : L"BSSID:|02:00:00:00:00:02|Channel:|6|Mode:|infrastructure|Type:|FDM24|";
    show(
        kAdapterTool, "adapter-details", [](HWND) {}, IDC_ADAPTER_TITLE,
        L"Adapter - Wireless & wired adapter of the fifth generation, 5 GHz|Adapter Details|MAC Address:|"
        L"DC:DC:DC:DC:DC:DC:DC:DC|Type:|ethernet|Speed:|100 Mbps|IP Address:|255.255.255.255|Subnet Mask:|"
        L"255.255.255.254|Gateway:|255.255.255.253|" +
            servers + L"OK|");
    show(
        kDhcpTool, "dhcp", [](HWND dialog) { Press(dialog, IDC_DHCP_DETECT); }, 0,
        L"DHCP Information|IP Address:|255.255.255.255|Real IP:|203.113.113.200|Detect|DHCP Details|Server:|"
        L"192.168.200.254|Lease Obtained:|Wed. Mar 15, 2006 08:05:09|Lease Expires:|Tue. Mar 21, 2006 08:05:09|"
        L"Release|Renew|OK|");
    show(kPingTool, "ping", ping, IDC_PING_HOST,
         L"Ping|Delete|Keyboard|Ping|Select/enter a hostname/IP address:|222.222.222.222|"
         L"Host (222.222.222.222) is alive|Round Trip Time: 4999 ms|MAC Address: DC:DC:DC:DC:DC:DC|OK|");
    show(
        kScannerTool, "scanner", [](HWND dialog) { TapRow(dialog, IDC_SCANNER_LIST, 1); }, IDC_SCANNER_SSID,
        L"802.11 Scanner|Associated SSID:|Office & Workshop, second floor|Associated BSSID:|DC:DC:DC:DC:DC:DC|"
        L"Access Point List|9||Workshop;6||Workshop;5||;3||WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW;0||Cafe;7||Harbour;"
        L"8||Guest;1||x;|Signal:|-70dBm|WEP:|disabled|" +
            selected + L"Supported Rates:|6,9,12,18,24,36,48,54 Mbps|OK|");
    show(
        kCardTool, "wireless-details", [](HWND) {}, 0,
        L"Wireless Card Details|Details|Beacon:|65535 Kusec|ATIM window:|65535 Kusec|Frequency:|2484000 kHz|"
        L"(unknown channel)|Authentication:|auto-switch|Network Type:|DSSS|Mode:|infrastructure mode|WEP:|"
        L"key is not supported|OK|");
}

TEST_P(Tools, Ping_remembers_its_hosts_until_they_are_deleted) {
    const auto listed = [](HWND dialog) { return SendDlgItemMessageW(dialog, IDC_PING_HOST, CB_GETCOUNT, 0, 0); };
    const Texts told = RunTool(kPingTool, {IDOK}, [&](HWND dialog) {
        Press(dialog, IDC_PING_PING);
        SetDlgItemTextW(dialog, IDC_PING_HOST, L"no.such.host");
        Press(dialog, IDC_PING_PING);
        WaitUntil([&] { return TextsOf(dialog, {IDC_PING_STATUS}) == L"Unknown host: no.such.host|"; });
    });
    EXPECT_EQ(told, Texts{L"Error|Host name is empty|0"});
    keyboard.clear();
    const Texts asked = RunTool(kPingTool, {IDNO, IDYES}, [&](HWND dialog) {
        EXPECT_EQ(listed(dialog), 1);
        EXPECT_EQ(TextsOf(dialog, {IDC_PING_HOST}), L"no.such.host|");
        Press(dialog, IDC_PING_KEYBOARD);
        Press(dialog, IDC_PING_DELETE);
        EXPECT_EQ(listed(dialog), 1);
        EXPECT_EQ(TextsOf(dialog, {IDC_PING_HOST}), L"|") << "No: only the field is cleared";
        SetDlgItemTextW(dialog, IDC_PING_HOST, L"no.such.host");
        Press(dialog, IDC_PING_DELETE);
        EXPECT_EQ(listed(dialog), 0);
    });
    EXPECT_EQ(keyboard, "-++-") << "by the button and by the focus it gives";
    EXPECT_EQ(asked, Texts(2, L"Question|Are you sure you want to delete this host?|24"));
}

TEST_P(Tools, Scanner_keeps_rows_selection_and_details_until_the_device_vanishes) {
    UseWireless();
    auto& wireless = scripted::system.wireless;
    const auto both = AccessPointListBuilder().Add("home", 1, -60).Add("home", 2, -85, 1);
    wireless.values = {{OID_802_11_BSSID_LIST, both.Value()}};
    RunTool(kScannerTool, {}, [&](HWND dialog) {
        const auto cycle = [&](const AccessPointListBuilder& list) {
            wireless.values[OID_802_11_BSSID_LIST] = list.Value();
            SendMessageW(dialog, WM_TIMER, 7, 0);
            return TextsOf(dialog, {IDC_SCANNER_LIST, IDC_SCANNER_SIGNAL, IDC_SCANNER_WEP});
        };
        TapRow(dialog, IDC_SCANNER_LIST, 0);
        // The first one begins to encrypt, the second vanishes, a third comes.
        EXPECT_EQ(cycle(AccessPointListBuilder().Add("new", 3, -69).Add("home", 1, -75, 1)),
                  L"5||home;1||home;6||new;|-75dBm|enabled|");
        EXPECT_EQ(cycle(both), L"8||home;3||home;0||new;|-60dBm|disabled|");
        wireless.present = false;
        EXPECT_EQ(cycle({}), L"8||home;3||home;0||new;|-60dBm|disabled|");
    });
}

// The intruder detector with real worker threads over scripted echoes: hosts 2 (safe), 33 (the device), 77 (a stranger)
// and 200 (unknown to the ARP table) answer; the echo to host 250 brings nothing, but waits while it is held.
TEST_P(Tools, Detector_orders_hosts_at_the_end_while_one_of_them_is_tapped) {
    std::atomic<bool> lastEchoHeld = true;
    scripted::system.adapters = {{.hardwareAddress = {2, 0, 0, 0, 0, 0x33}, .address = "127.0.0.33"}};
    scripted::system.arp = {{inet_addr("127.0.0.2"), {2, 0, 0, 0, 0, 2}},
                            {inet_addr("127.0.0.77"), {2, 0, 0, 0, 0, 0x77}}};
    scripted::system.echo = [&](uint32_t address, DWORD) -> std::optional<platform::EchoReply> {
        const uint32_t number = ntohl(address) & 0xFF;
        while (number == 250 && lastEchoHeld) {
            Sleep(10);
        }
        platform::EchoReply reply = {};
        reply.address = address;
        return number == 2 || number == 33 || number == 77 || number == 200 ? std::optional(reply) : std::nullopt;
    };
    SafeListAdd({{2, 0, 0, 0, 0, 2}});
    const std::wstring sorted =
        L"1||127.0.0.2|02:00:00:00:00:02;1||127.0.0.33|02:00:00:00:00:33;"
        L"0||127.0.0.77|02:00:00:00:00:77;0||127.0.0.200|;|";
    std::wstring marked = sorted;
    marked[sorted.find(L"0||127.0.0.77")] = L'1';
    const Texts asked = RunTool(kDetectorTool, {IDYES, IDYES, IDNO}, [&](HWND dialog) {
        const auto rows = [&] { return TextsOf(dialog, {IDC_DETECTOR_HOSTS}); };
        ExpectReadable(dialog, L"Intruder Detector|||Export|Detect|OK|");
        Press(dialog, IDC_DETECTOR_DETECT);
        // Hosts that speak no NetBIOS take 5 s.
        WaitUntil([&] { return std::ranges::count(rows(), L';') == 4; });
        EXPECT_TRUE(rows().starts_with(L"0||127.0.0.200|;0||127.0.0.77|")) << "as they are found";
        SaveScreen("detector-during");
        // The scan ends while the question is coming up.
        duringMessageBox = [&] {
            lastEchoHeld = false;
            WaitUntil([] { return scanState.table == nullptr; });
            duringMessageBox = [] {};
        };
        TapRow(dialog, IDC_DETECTOR_HOSTS, 1);  // host 77, which becomes row 2
        EXPECT_EQ(rows(), marked);
        EXPECT_TRUE(SafeListContains({{2, 0, 0, 0, 0, 0x77}}));
        SaveScreen("detector-after");
        // Yes, No; nothing is asked about the device itself or a host without hardware address.
        for (const int row : {2, 2, 1, 3}) {
            TapRow(dialog, IDC_DETECTOR_HOSTS, row);
            EXPECT_EQ(rows(), sorted);
            EXPECT_FALSE(SafeListContains({{2, 0, 0, 0, 0, 0x77}}));
        }
    });
    EXPECT_EQ(asked[1], L"Question|Delete 127.0.0.77 from safe list?|124");
    EXPECT_EQ(asked[2], L"Question|Add 127.0.0.77 to safe list?|124");
}

}  // namespace
}  // namespace ui
