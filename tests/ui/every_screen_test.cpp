// The tools that show texts, with the longest that their fields can get, at every screen size.

#include "tests/support/access_point_list.h"
#include "tests/support/wireless_values.h"
#include "tests/ui/ui_test.h"

namespace ui {
namespace {

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
    scripted::system.echo = [](uint32_t, DWORD) {
        platform::EchoReply reply = {};
        reply.address = inet_addr("222.222.222.222");
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

void Ping(HWND dialog) {
    TypeInto(dialog, IDC_PING_HOST, L"222.222.222.222");
    Press(dialog, IDC_PING_PING);
    WaitUntil([&] { return IsEnabled(dialog, IDC_PING_PING); });
}

void TapSecondAccessPoint(HWND dialog) {
    HWND list = GetDlgItem(dialog, IDC_SCANNER_LIST);
    EXPECT_EQ(GetWindowLongW(list, GWL_STYLE) & WS_HSCROLL, 0) << "the columns fit";
    RECT area = {};
    ListView_GetItemRect(list, 1, &area, LVIR_BOUNDS);
    TapPixel(list, area.left + 45 * ScreenScale(), (area.top + area.bottom) / 2);
}

struct Row {
    uint32_t tool;
    const char* picture;
    Step use;
    std::wstring texts;           // of all controls, each behind its id if it has one
    std::wstring landscape = {};  // where that is another template
    int cutControl = 0;
};

const Row kRows[] = {
    {kAdapterTool, "adapter-details", [](HWND) {},
     L"1014=Adapter - Wireless & wired adapter of the fifth generation, 5 GHz|Adapter Details|"
     L"MAC Address:|1015=DC:DC:DC:DC:DC:DC:DC:DC|Type:|1016=ethernet|Speed:|1017=100 Mbps|"
     L"IP Address:|1018=255.255.255.255|Subnet Mask:|1019=255.255.255.254|Gateway:|1020=255.255.255.253|"
     L"DNS Server 1:|1021=255.255.255.255|DNS Server 2:|1036=254.255.255.255|"
     L"WINS Server 1:|1022=253.255.255.255|WINS Server 2:|1035=252.255.255.255|1=OK|",
     L"1014=Adapter - Wireless & wired adapter of the fifth generation, 5 GHz|Adapter Details|"
     L"MAC Address:|1015=DC:DC:DC:DC:DC:DC:DC:DC|Type:|1016=ethernet|Speed:|1017=100 Mbps|"
     L"IP Address:|1018=255.255.255.255|Subnet Mask:|1019=255.255.255.254|Gateway:|1020=255.255.255.253|"
     L"DNS Server:|1021=255.255.255.255, 254.255.255.255|WINS Server:|1022=253.255.255.255, 252.255.255.255|1=OK|",
     IDC_ADAPTER_TITLE},
    {kDhcpTool, "dhcp", [](HWND dialog) { Press(dialog, IDC_DHCP_DETECT); },
     L"1001=DHCP Information|IP Address:|1023=255.255.255.255|Real IP:|1083=203.113.113.200|1084=Detect|DHCP Details|"
     L"Server:|1002=192.168.200.254|Lease Obtained:|1003=Wed. Mar 15, 2006 08:05:09|"
     L"Lease Expires:|1004=Tue. Mar 21, 2006 08:05:09|1005=Release|1006=Renew|1=OK|"},
    {kPingTool, "ping", Ping,
     L"1024=Ping|1027=Delete|1028=Keyboard|Ping|Select/enter a hostname/IP address:|1007=222.222.222.222|"
     L"1025=Host (222.222.222.222) is alive|1026=Round Trip Time: 4999 ms|1038=MAC Address: DC:DC:DC:DC:DC:DC|1=OK|",
     L"", IDC_PING_HOST},
    {kScannerTool, "scanner", TapSecondAccessPoint,
     L"802.11 Scanner|Associated SSID:|1039=Office & Workshop, second floor|Associated BSSID:|1040=DC:DC:DC:DC:DC:DC|"
     L"Access Point List|1059=9||Workshop;6||Workshop;5||;3||WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW;0||Cafe;7||Harbour;"
     L"8||Guest;1||x;|Signal:|1045=-70dBm|WEP:|1044=disabled|BSSID:|1042=02:00:00:00:00:02|Channel:|1043=6|"
     L"Mode:|1046=infrastructure|Type:|1047=FDM24|Supported Rates:|1048=6,9,12,18,24,36,48,54 Mbps|1=OK|",
     L"802.11 Scanner|Associated SSID:|1039=Office & Workshop, second floor|Associated BSSID:|1040=DC:DC:DC:DC:DC:DC|"
     L"Access Point List|1059=9||Workshop;6||Workshop;5||;3||WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW;0||Cafe;7||Harbour;"
     L"8||Guest;1||x;|Signal:|1045=-70dBm|WEP:|1044=disabled|Mode:|1046=infrastructure|BSSID:|1042=02:00:00:00:00:02|"
     L"Type:|1047=FDM24|Channel:|1043=6|Supported Rates:|1048=6,9,12,18,24,36,48,54 Mbps|1=OK|",
     IDC_SCANNER_SSID},
    {kCardTool, "wireless-details", [](HWND) {},
     L"Wireless Card Details|Details|Beacon:|1049=65535 Kusec|ATIM window:|1050=65535 Kusec|"
     L"Frequency:|1051=2484000 kHz|1057=(unknown channel)|Authentication:|1052=auto-switch|Network Type:|1053=DSSS|"
     L"Mode:|1055=infrastructure mode|WEP:|1056=key is not supported|1=OK|"}};

std::wstring AllTexts(HWND dialog) {
    std::wstring texts;
    for (HWND child : ChildrenOf(dialog)) {
        const int id = GetDlgCtrlID(child);
        texts += (id == 0xFFFF ? L"" : std::to_wstring(id) + L"=") + TextOf(child);
        for (const std::wstring& row : IsOfClass(child, WC_LISTVIEWW) ? RowsOf(dialog, id) : Texts{}) {
            texts += row + L";";
        }
        texts += L"|";
    }
    return texts;
}

using EveryScreen = UiTest;
INSTANTIATE_TEST_SUITE_P(Screen, EveryScreen, kEveryScreen);

TEST_P(EveryScreen, Shows_the_widest_texts_whole) {
    UseWidestNetwork();
    UseWidestRadio();
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.picture);
        RunTool(row.tool, {}, row.use, [&](HWND dialog) {
            EXPECT_EQ(AllTexts(dialog), ::IsLandscape() && !row.landscape.empty() ? row.landscape : row.texts);
            ExpectReadable(dialog, row.cutControl);
            SaveScreen(row.picture);
        });
    }
}

}  // namespace
}  // namespace ui
