// What a desktop's system gives as texts and records of its own: neighbours, proxies, networks heard.

// Before the header of Native Wifi, which makes macros of the same names.
#include "platform/ndis.h"

#include "platform/desktop/arp_text.h"
#include "platform/desktop/native_wifi_records.h"
#include "platform/desktop/proxy_list.h"

#include <gtest/gtest.h>

#include "tests/support/texts.h"
#include "wireless/access_points.h"

namespace {

// Address, first and last byte of the hardware address of every row.
std::string Neighbours(const std::string& text, size_t room = 8) {
    std::array<MIB_IPNETROW, 8> rows;
    std::string found;
    const size_t count = platform::ParseArpText(text.c_str(), std::span(rows).first(room));
    for (const MIB_IPNETROW& row : std::span(rows).first(count)) {
        in_addr address = {};
        address.s_addr = row.dwAddr;
        found += inet_ntoa(address) + ("/" + std::to_string(row.bPhysAddr[0])) + "-" +
                 std::to_string(row.bPhysAddr[row.dwPhysAddrLen - 1]) + " ";
    }
    return found;
}

TEST(ArpText, Finished_neighbours_are_listed_once_in_the_order_of_their_addresses) {
    const std::string heading = "IP address       HW type     Flags       HW address            Mask     Device\n";
    const auto line = [](const char* address, const char* hardware, const char* flags = "0x2") {
        return std::string(address) + "      0x1         " + flags + "         " + hardware + "     *        eth0\n";
    };
    const std::string low = line("10.0.0.9", "02:00:00:00:00:09"), high = line("10.0.0.10", "aa:bb:cc:dd:ee:ff");
    const std::tuple<const char*, std::string, const char*> rows[] = {
        {"two readings", heading + high + heading + low + high, "10.0.0.9/2-9 10.0.0.10/170-255 "},
        {"unfinished", heading + line("10.0.0.9", "00:00:00:00:00:00", "0x0") + high, "10.0.0.10/170-255 "},
        {"permanent", line("10.0.0.9", "02:00:00:00:00:09", "0x6"), "10.0.0.9/2-9 "},
        {"cut within the hardware address", heading + high + low.substr(0, 40), "10.0.0.10/170-255 "},
        {"no digits in the flags", line("10.0.0.9", "02:00:00:00:00:09", "0x*") + high, "10.0.0.10/170-255 "},
        {"no digits", line("10.0.0.9", "02:00:00:00:00:0g") + line("x.y.z.1", "02:00:00:00:00:09"), ""},
        {"too long an address", line("100.100.100.1000", "02:00:00:00:00:09"), ""},
        {"another kind of hardware", line("10.0.0.9", "02:00:00:00:00:09:0a:0b"), ""},
    };
    for (const auto& [what, text, neighbours] : rows) {
        EXPECT_EQ(Neighbours(text), neighbours) << what;
    }
    EXPECT_EQ(Neighbours(low + high, 1), "10.0.0.9/2-9 ");
}

TEST(ProxyList, The_http_proxy_is_found_or_there_is_none) {
    const auto proxy = [](const std::wstring& list) {
        wchar_t host[platform::kProxyHostUnits] = {};
        WORD port = 0;
        return platform::FindHttpProxy(list.c_str(), host, &port) ? host + (L":" + std::to_wstring(port)) : L"none";
    };
    const std::initializer_list<std::wstring> found = {L"http://proxy:3128", L"http=proxy:65535;https=other:1",
                                                       L"https=other:1;http=http://10.0.0.1", L"ftp=other:1 second:2",
                                                       L"bad:65536; good:1"};
    EXPECT_EQ(Each(proxy, found), L"proxy:3128|proxy:65535|10.0.0.1:80|second:2|good:1");
    const std::wstring longest(platform::kProxyHostUnits - 1, L'p');
    EXPECT_EQ(Each(proxy, {longest, longest + L"p"}), longest + L":80|none");
    const auto none = {L"",       L" ; ",     L"https=other:1", L":80",
                       L"proxy:", L"proxy:0", L"proxy:8o8o",    L"proxy:99999999999"};
    EXPECT_EQ(Each(proxy, none), L"none|none|none|none|none|none|none|none");
}

WLAN_BSS_ENTRY Heard(const std::string& ssid, uint8_t bssid, LONG rssi) {
    WLAN_BSS_ENTRY entry = {};
    entry.dot11Ssid.uSSIDLength = static_cast<ULONG>(ssid.size());
    memcpy(entry.dot11Ssid.ucSSID, ssid.data(), ssid.size());
    entry.dot11Bssid[5] = bssid;
    entry.dot11BssType = dot11_BSS_type_infrastructure;
    entry.dot11BssPhyType = dot11_phy_type_ht;
    entry.lRssi = rssi;
    entry.usBeaconPeriod = 100;
    entry.ulChCenterFrequency = 2437000;
    return entry;
}

// What the scanner makes of the entries; `value` is as long as the request's own.
AccessPointTable Scan(const std::vector<WLAN_BSS_ENTRY>& entries) {
    std::vector<uint8_t> value(sizeof(NdisOidRequest::data));
    AccessPointTable table;
    ResetAccessPoints(table);
    MergeAccessPoints(table, std::span(value).first(platform::WriteNdisBssidList(entries, value)));
    return table;
}

TEST(NativeWifi, An_access_point_arrives_whole_and_what_its_fields_cannot_hold_is_cut) {
    WLAN_BSS_ENTRY entry = Heard(std::string(32, 's'), 7, -61);
    entry.dot11Ssid.uSSIDLength = 4000000000u;
    entry.usCapabilityInformation = 0x0431;
    entry.wlanRateSet.uRateSetLength = 4000000000u;
    const USHORT rates[] = {0x8002, 0x8004, 0x800B, 0x8016, 0x000C, 0x0012, 0x0018, 0x0024, 0x0030, 0x0060};
    std::copy(std::begin(rates), std::end(rates), entry.wlanRateSet.usRateSet);
    const AccessPointTable table = Scan({entry, Heard("", 2, -51)});
    ASSERT_EQ(table.count, 2);
    const auto& [found, other] = std::tie(table.entries[0], table.entries[1]);
    EXPECT_EQ(found.ssid, std::string(32, 's'));
    EXPECT_EQ(std::tuple(found.bssid[5], found.privacy, found.rssi, found.channel, found.networkType, found.mode),
              std::tuple(7, 1u, -61, 6, 3u, 1u));
    EXPECT_EQ(memcmp(found.rates, "\x82\x84\x8B\x96\x0C\x12\x18\x24", 8), 0);
    EXPECT_EQ(std::tuple(other.ssid[0], other.privacy, other.rates[0]), std::tuple(0, 0u, 0));
}

TEST(NativeWifi, Of_too_many_access_points_the_strongest_are_listed_in_their_order) {
    std::vector<WLAN_BSS_ENTRY> entries;
    for (int i = 0; i < 200; ++i) {
        entries.push_back(Heard("street", static_cast<uint8_t>(i), i % 25 == 0 ? -40 - i / 25 : -80));
    }
    // Nine fit: the eight strong ones and the first of those that are equally weak.
    const AccessPointTable table = Scan(entries);
    std::string listed;
    for (int i = 0; i < table.count; ++i) {
        listed += std::to_string(table.entries[i].bssid[5]) + " ";
    }
    EXPECT_EQ(listed, "0 1 25 50 75 100 125 150 175 ");
}

TEST(NativeWifi, Networks_modes_ciphers_and_own_values_become_ndis_numbers) {
    using namespace platform;
    const auto type = [](DOT11_PHY_TYPE heard) { return NdisNetworkType(heard, 2412000); };
    EXPECT_EQ(Each(type, {dot11_phy_type_fhss, dot11_phy_type_dsss, dot11_phy_type_hrdsss, dot11_phy_type_erp}),
              L"0|1|1|3");
    const auto typeAt = [](ULONG frequency) { return NdisNetworkType(dot11_phy_type_ht, frequency); };
    EXPECT_EQ(Each(typeAt, {2412000U, 5180000U}), L"3|2");
    EXPECT_EQ(
        Each(NdisInfrastructureMode, {dot11_BSS_type_independent, dot11_BSS_type_infrastructure, dot11_BSS_type_any}),
        L"0|1|2");
    EXPECT_EQ(
        Each(NdisAuthenticationMode, {DOT11_AUTH_ALGO_80211_OPEN, DOT11_AUTH_ALGO_80211_SHARED_KEY, DOT11_AUTH_ALGO_WPA,
                                      DOT11_AUTH_ALGO_WPA_PSK, DOT11_AUTH_ALGO_WPA_NONE, DOT11_AUTH_ALGO_RSNA_PSK}),
        L"0|1|3|4|5|7");
    constexpr auto kGcmp256 = static_cast<DOT11_CIPHER_ALGORITHM>(9);
    EXPECT_EQ(Each(NdisWepStatus, {DOT11_CIPHER_ALGO_WEP104, DOT11_CIPHER_ALGO_WEP, DOT11_CIPHER_ALGO_NONE,
                                   DOT11_CIPHER_ALGO_TKIP, DOT11_CIPHER_ALGO_CCMP, kGcmp256}),
              L"0|0|1|4|6|6");
    std::vector<uint8_t> value(64, 0xA5);
    EXPECT_EQ(WriteNdisSsid(Heard("home", 1, -50).dot11Ssid, value), 36u);
    EXPECT_EQ(memcmp(&value[0], "\4\0\0\0home\0", 9), 0);
    EXPECT_EQ(WriteNdisConfiguration(Heard("home", 1, -50), value), 32u);
    EXPECT_EQ(std::pair(ReadNdisField(&value[4]), ReadNdisField(&value[12])), std::pair(100u, 2437000u));
    EXPECT_EQ(value[36], 0xA5);
}

}  // namespace
