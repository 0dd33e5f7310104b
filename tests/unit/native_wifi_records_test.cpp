// Native Wifi's records as the NDIS values that the wireless tools read.

// Before the header of Native Wifi, which makes macros of the same names.
#include "platform/ndis.h"

#include "platform/desktop/native_wifi_records.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "wireless/access_points.h"

namespace {

constexpr uint8_t kUntouched = 0xA5;

WLAN_BSS_ENTRY Heard(const std::string& ssid, uint8_t bssid, LONG rssi) {
    WLAN_BSS_ENTRY entry = {};
    entry.dot11Ssid.uSSIDLength = static_cast<ULONG>(ssid.size());
    memcpy(entry.dot11Ssid.ucSSID, ssid.data(), ssid.size());
    entry.dot11Bssid[0] = 2;
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
    std::vector<uint8_t> value(sizeof(NdisOidRequest::data), kUntouched);
    const size_t bytes = platform::WriteNdisBssidList(entries, value);
    EXPECT_LE(bytes, value.size());
    for (size_t i = bytes; i < value.size(); ++i) {
        EXPECT_EQ(value[i], kUntouched);
    }
    AccessPointTable table;
    ResetAccessPoints(table);
    MergeAccessPoints(table, std::span(value).first(bytes));
    return table;
}

TEST(NativeWifiRecords, An_access_point_arrives_whole) {
    WLAN_BSS_ENTRY entry = Heard("caf\xE9", 7, -61);
    entry.usCapabilityInformation = 0x0431;
    entry.wlanRateSet.uRateSetLength = 10 * sizeof(USHORT);
    const USHORT rates[] = {0x8002, 0x8004, 0x800B, 0x8016, 0x000C, 0x0012, 0x0018, 0x0024, 0x0030, 0x0060};
    std::copy(std::begin(rates), std::end(rates), entry.wlanRateSet.usRateSet);
    const AccessPointTable table = Scan({entry});
    ASSERT_EQ(table.count, 1);
    const AccessPoint& found = table.entries[0];
    EXPECT_STREQ(found.ssid, "caf\xE9");
    EXPECT_EQ(found.bssid[5], 7);
    EXPECT_EQ(found.privacy, 1u);
    EXPECT_EQ(found.rssi, -61);
    EXPECT_EQ(found.channel, 6);
    EXPECT_EQ(found.networkType, 3u);
    EXPECT_EQ(found.mode, 1u);
    const uint8_t expected[] = {0x82, 0x84, 0x8B, 0x96, 0x0C, 0x12, 0x18, 0x24};
    EXPECT_EQ(memcmp(found.rates, expected, sizeof(expected)), 0);
}

TEST(NativeWifiRecords, Lengths_beyond_their_fields_are_cut) {
    WLAN_BSS_ENTRY entry = Heard(std::string(32, 's'), 1, -50);
    entry.dot11Ssid.uSSIDLength = 4000000000u;
    entry.wlanRateSet.uRateSetLength = 4000000000u;
    const AccessPointTable table = Scan({entry, Heard("", 2, -51)});
    ASSERT_EQ(table.count, 2);
    EXPECT_EQ(table.entries[0].ssid, std::string(32, 's'));
    EXPECT_STREQ(table.entries[1].ssid, "");
    EXPECT_EQ(table.entries[1].privacy, 0u);
    EXPECT_EQ(table.entries[1].rates[0], 0);
}

TEST(NativeWifiRecords, Of_too_many_access_points_the_strongest_are_listed_in_their_order) {
    std::vector<WLAN_BSS_ENTRY> entries;
    for (int i = 0; i < 200; ++i) {
        entries.push_back(Heard("street", static_cast<uint8_t>(i), i % 25 == 0 ? -40 - i / 25 : -80));
    }
    // Nine fit: the eight strong ones and the first of those that are equally weak.
    const AccessPointTable table = Scan(entries);
    const uint8_t expected[] = {0, 1, 25, 50, 75, 100, 125, 150, 175};
    ASSERT_EQ(table.count, 9);
    for (int i = 0; i < table.count; ++i) {
        EXPECT_EQ(table.entries[i].bssid[5], expected[i]);
    }
    EXPECT_EQ(Scan({}).count, 0);
}

TEST(NativeWifiRecords, Networks_modes_ciphers_and_own_values_become_ndis_numbers) {
    using namespace platform;
    const struct {
        DOT11_PHY_TYPE type;
        ULONG frequency;
        uint32_t expected;
    } types[] = {{dot11_phy_type_fhss, 2412000, 0},   {dot11_phy_type_dsss, 2412000, 1},
                 {dot11_phy_type_hrdsss, 2412000, 1}, {dot11_phy_type_ofdm, 5180000, 2},
                 {dot11_phy_type_erp, 2437000, 3},    {dot11_phy_type_ht, 5180000, 2}};
    for (const auto& row : types) {
        EXPECT_EQ(NdisNetworkType(row.type, row.frequency), row.expected) << row.type;
    }
    EXPECT_EQ(NdisInfrastructureMode(dot11_BSS_type_independent), 0u);
    EXPECT_EQ(NdisInfrastructureMode(dot11_BSS_type_infrastructure), 1u);
    EXPECT_EQ(NdisInfrastructureMode(dot11_BSS_type_any), 2u);
    const std::pair<DOT11_AUTH_ALGORITHM, uint32_t> modes[] = {
        {DOT11_AUTH_ALGO_80211_OPEN, 0}, {DOT11_AUTH_ALGO_80211_SHARED_KEY, 1}, {DOT11_AUTH_ALGO_WPA, 3},
        {DOT11_AUTH_ALGO_WPA_PSK, 4},    {DOT11_AUTH_ALGO_WPA_NONE, 5},         {DOT11_AUTH_ALGO_RSNA_PSK, 7}};
    for (const auto& [algorithm, number] : modes) {
        EXPECT_EQ(NdisAuthenticationMode(algorithm), number) << algorithm;
    }
    EXPECT_EQ(NdisWepStatus(DOT11_CIPHER_ALGO_WEP104), 0u);
    EXPECT_EQ(NdisWepStatus(DOT11_CIPHER_ALGO_NONE), 1u);
    EXPECT_GT(NdisWepStatus(DOT11_CIPHER_ALGO_CCMP), 3u) << "none of the WEP states";
    std::vector<uint8_t> value(64, kUntouched);
    EXPECT_EQ(WriteNdisNumber(static_cast<uint32_t>(-72), value), 4u);
    EXPECT_EQ(ReadNdisField(&value[0]), static_cast<uint32_t>(-72));
    EXPECT_EQ(WriteNdisSsid(Heard("home", 1, -50).dot11Ssid, value), 36u);
    EXPECT_EQ(memcmp(&value[0], "\4\0\0\0home\0", 9), 0);
    EXPECT_EQ(WriteNdisConfiguration(Heard("home", 1, -50), value), 32u);
    EXPECT_TRUE(ReadNdisField(&value[4]) == 100 && ReadNdisField(&value[12]) == 2437000);
    EXPECT_EQ(value[36], kUntouched);
}

}  // namespace
