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
    EXPECT_EQ(std::count(value.begin() + static_cast<ptrdiff_t>(bytes), value.end(), kUntouched),
              static_cast<ptrdiff_t>(value.size() - bytes));
    AccessPointTable table;
    ResetAccessPoints(table);
    MergeAccessPoints(table, std::span(value).first(bytes));
    return table;
}

TEST(NativeWifiRecords, An_access_point_arrives_whole_and_what_its_fields_cannot_hold_is_cut) {
    WLAN_BSS_ENTRY entry = Heard(std::string(32, 's'), 7, -61);
    entry.dot11Ssid.uSSIDLength = 4000000000u;
    entry.usCapabilityInformation = 0x0431;
    entry.wlanRateSet.uRateSetLength = 4000000000u;
    const USHORT rates[] = {0x8002, 0x8004, 0x800B, 0x8016, 0x000C, 0x0012, 0x0018, 0x0024, 0x0030, 0x0060};
    std::copy(std::begin(rates), std::end(rates), entry.wlanRateSet.usRateSet);
    const AccessPointTable table = Scan({entry, Heard("", 2, -51)});
    ASSERT_EQ(table.count, 2);
    const AccessPoint& found = table.entries[0];
    EXPECT_EQ(found.ssid, std::string(32, 's'));
    EXPECT_EQ(std::tuple(found.bssid[5], found.privacy, found.rssi, found.channel, found.networkType, found.mode),
              std::tuple(7, 1u, -61, 6, 3u, 1u));
    EXPECT_EQ(memcmp(found.rates, "\x82\x84\x8B\x96\x0C\x12\x18\x24", 8), 0);
    EXPECT_EQ(std::tuple(table.entries[1].ssid[0], table.entries[1].privacy, table.entries[1].rates[0]),
              std::tuple(0, 0u, 0));
}

TEST(NativeWifiRecords, Of_too_many_access_points_the_strongest_are_listed_in_their_order) {
    std::vector<WLAN_BSS_ENTRY> entries;
    for (int i = 0; i < 200; ++i) {
        entries.push_back(Heard("street", static_cast<uint8_t>(i), i % 25 == 0 ? -40 - i / 25 : -80));
    }
    // Nine fit: the eight strong ones and the first of those that are equally weak.
    const AccessPointTable table = Scan(entries);
    std::vector<int> listed;
    for (int i = 0; i < table.count; ++i) {
        listed.push_back(table.entries[i].bssid[5]);
    }
    EXPECT_EQ(listed, (std::vector{0, 1, 25, 50, 75, 100, 125, 150, 175}));
}

TEST(NativeWifiRecords, Networks_modes_ciphers_and_own_values_become_ndis_numbers) {
    using namespace platform;
    const std::tuple<DOT11_PHY_TYPE, ULONG, uint32_t> types[] = {
        {dot11_phy_type_fhss, 2412000, 0}, {dot11_phy_type_dsss, 2412000, 1}, {dot11_phy_type_hrdsss, 2412000, 1},
        {dot11_phy_type_ofdm, 5180000, 2}, {dot11_phy_type_erp, 2437000, 3},  {dot11_phy_type_ht, 5180000, 2}};
    for (const auto& [type, frequency, number] : types) {
        EXPECT_EQ(NdisNetworkType(type, frequency), number) << type;
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
    constexpr auto kGcmp256 = static_cast<DOT11_CIPHER_ALGORITHM>(9);
    const std::pair<DOT11_CIPHER_ALGORITHM, uint32_t> ciphers[] = {
        {DOT11_CIPHER_ALGO_WEP104, 0}, {DOT11_CIPHER_ALGO_WEP, 0},  {DOT11_CIPHER_ALGO_NONE, 1},
        {DOT11_CIPHER_ALGO_TKIP, 4},   {DOT11_CIPHER_ALGO_CCMP, 6}, {kGcmp256, 6}};
    for (const auto& [cipher, status] : ciphers) {
        EXPECT_EQ(NdisWepStatus(cipher), status) << cipher;
    }
    std::vector<uint8_t> value(64, kUntouched);
    EXPECT_EQ(WriteNdisNumber(static_cast<uint32_t>(-72), value), 4u);
    EXPECT_EQ(ReadNdisField(&value[0]), static_cast<uint32_t>(-72));
    EXPECT_EQ(WriteNdisSsid(Heard("home", 1, -50).dot11Ssid, value), 36u);
    EXPECT_EQ(memcmp(&value[0], "\4\0\0\0home\0", 9), 0);
    EXPECT_EQ(WriteNdisConfiguration(Heard("home", 1, -50), value), 32u);
    EXPECT_EQ(std::pair(ReadNdisField(&value[4]), ReadNdisField(&value[12])), std::pair(100u, 2437000u));
    EXPECT_EQ(value[36], kUntouched);
}

}  // namespace
