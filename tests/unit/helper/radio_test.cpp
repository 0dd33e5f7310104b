// From the kernel's wireless answers to NDIS values.

#include <gtest/gtest.h>
#include <linux/genetlink.h>
#include <linux/nl80211.h>

#include <algorithm>
#include <string>

#include "netlink_builder.h"
#include "platform/helper_protocol.h"
#include "platform/linux/ndis_records.h"
#include "platform/linux/nl80211.h"
#include "platform/linux/nl80211_answers.h"
#include "platform/linux/radio.h"

using namespace helper;

namespace {

const Bytes kRates = {0x82, 0x84, 0x8B, 0x96, 0x0C, 0x12, 0x18, 0x24};
const Bytes kWpa2Psk = {1, 0, 0, 0x0F, 0xAC, 4, 1, 0, 0, 0x0F, 0xAC, 4, 1, 0, 0, 0x0F, 0xAC, 2, 0, 0};
const Bytes kAddress = {2, 0, 0, 0, 0, 1};

// One message of a scan dump: an access point on channel 6 that this machine uses.
Bytes ScanMessage(const Bytes& elements, uint16_t capability = 0x11, uint32_t megahertz = 2437) {
    return Number<uint32_t>(NL80211_ATTR_GENERATION, 5) + Number<uint32_t>(NL80211_ATTR_IFINDEX, 3) +
           Attribute(NL80211_ATTR_BSS,
                     Attribute(NL80211_BSS_BSSID, kAddress) + Number(NL80211_BSS_FREQUENCY, megahertz) +
                         Number<uint16_t>(NL80211_BSS_BEACON_INTERVAL, 100) +
                         Number(NL80211_BSS_CAPABILITY, capability) + Number<int32_t>(NL80211_BSS_SIGNAL_MBM, -6650) +
                         Number<uint32_t>(NL80211_BSS_STATUS, NL80211_BSS_STATUS_ASSOCIATED) +
                         Attribute(NL80211_BSS_INFORMATION_ELEMENTS, elements));
}

AccessPoint Parsed(const Bytes& message) {
    AccessPoint accessPoint;
    EXPECT_TRUE(ParseAccessPoint(message, accessPoint));
    return accessPoint;
}

uint32_t FieldAt(const NdisValue& value, size_t offset) {
    uint32_t number = 0;
    memcpy(&number, value.data() + offset, sizeof(number));
    return number;
}

}  // namespace

TEST(Nl80211Answers, An_access_point_becomes_an_NDIS_entry_at_the_known_offsets) {
    const AccessPoint accessPoint = Parsed(
        ScanMessage(Element(0, Text("home")) + Element(1, kRates) + Element(48, kWpa2Psk) + Element(50, {0x30, 0xFF})));
    EXPECT_TRUE(accessPoint.isInUse);
    const NdisValue list = BssidListValue(std::span(&accessPoint, 1), 1008);
    ASSERT_EQ(4 + kBssidEntryBytes, list.size());
    EXPECT_EQ(1u, FieldAt(list, 0));
    const std::pair<size_t, uint32_t> fields[] = {{0, 104},      {12, 4},  {48, 1},   {52, static_cast<uint32_t>(-66)},
                                                  {56, 3},       {60, 32}, {64, 100}, {68, 0},
                                                  {72, 2437000}, {76, 0},  {88, 0},   {92, 1}};
    for (const auto& [offset, number] : fields) {
        EXPECT_EQ(number, FieldAt(list, 4 + offset)) << offset;
    }
    EXPECT_TRUE(std::equal(kAddress.begin(), kAddress.end(), list.begin() + 8));
    EXPECT_EQ(0, memcmp(list.data() + 4 + 16, "home\0", 5));
    EXPECT_TRUE(std::equal(kRates.begin(), kRates.end(), list.begin() + 4 + 96));
}

TEST(Nl80211Answers, Security_is_told_from_the_elements) {
    const Bytes wpaBody = {0, 0x50, 0xF2, 1, 1, 0, 0, 0x50, 0xF2, 2, 1, 0, 0, 0x50, 0xF2, 2, 1, 0, 0, 0x50, 0xF2, 2};
    Bytes wpaServer = wpaBody;
    wpaServer.back() = 1;
    Bytes wpa2Server = kWpa2Psk;
    wpa2Server[17] = 1;
    Bytes sae = kWpa2Psk;
    sae[17] = 8;
    const std::tuple<const char*, uint16_t, Bytes, uint32_t, uint32_t> rows[] = {
        {"open", 0x01, {}, 0, 1},
        {"WEP", 0x11, {}, 0, 0},
        {"WPA-PSK with TKIP", 0x11, Element(221, wpaBody), 4, 4},
        {"WPA", 0x11, Element(221, wpaServer), 3, 4},
        {"WPA2-PSK", 0x11, Element(48, kWpa2Psk), 7, 6},
        {"WPA2", 0x11, Element(48, wpa2Server), 6, 6},
        {"WPA3 is told as WPA2-PSK", 0x11, Element(48, sae), 7, 6},
        {"both: the better", 0x11, Element(48, kWpa2Psk) + Element(221, wpaBody), 7, 6},
        {"another vendor's element", 0x01, Element(221, {0, 0x50, 0xF2, 4, 1, 0}), 0, 1},
        {"a suite count beyond the end", 0x11, Element(48, {1, 0, 0, 0x0F, 0xAC, 4, 0xFF, 0xFF, 0, 0x0F}), 7, 4},
        {"an empty RSN element", 0x11, Element(48, {}), 7, 4},
    };
    for (const auto& [what, capability, elements, authentication, wep] : rows) {
        const AccessPoint accessPoint = Parsed(ScanMessage(elements, capability));
        EXPECT_EQ(std::pair(authentication, wep),
                  std::pair(AuthenticationMode(accessPoint.security), WepStatus(accessPoint)))
            << what;
    }
}

TEST(Nl80211Answers, The_network_type_follows_frequency_and_rates_the_mode_the_capability) {
    const std::tuple<uint32_t, Bytes, uint32_t> rows[] = {
        {2412, {0x82, 0x84, 0x0B, 0x16}, 1},
        {2412, {0x82, 0x84, 0x0B, 0x16, 0x0C}, 3},
        {2412, {0x82, 0x84, 0x8B, 0x96, 0xFF, 0xFA}, 1},  // membership selectors are no rates
        {2484, {0x82}, 1},
        {5180, {0x8C, 0x12, 0x98}, 2},
        {5955, {0x8C}, 2},
    };
    for (const auto& [megahertz, rates, type] : rows) {
        EXPECT_EQ(type, NetworkType(Parsed(ScanMessage(Element(1, rates), 1, megahertz)))) << megahertz;
    }
    const AccessPoint adHoc = Parsed(ScanMessage(Element(6, {0x2C, 0x01}), 0x02));
    EXPECT_EQ(0u, InfrastructureMode(adHoc));
    EXPECT_EQ(300u, FieldAt(ConfigurationValue(adHoc), 8));  // ATIM window
}

TEST(Nl80211Answers, Names_may_be_hidden_long_and_of_any_bytes) {
    const std::string thirtyTwo(32, 'x');
    const std::pair<Bytes, std::string> rows[] = {
        {Element(0, {}), ""},
        {Element(0, Bytes(7, 0)), ""},
        {Element(0, Text(thirtyTwo)), thirtyTwo},
        {Element(0, Text(thirtyTwo + "y")), ""},
        {Element(0, {0xC3, 0xA9, 0, 1}), std::string("\xC3\xA9\0\1", 4)},
        {{0, 9, 'c', 'u', 't'}, ""},
        {{0}, ""},
    };
    for (const auto& [elements, ssid] : rows) {
        EXPECT_EQ(ssid, Parsed(ScanMessage(elements)).ssid);
    }
    EXPECT_EQ(36u, SsidValue(std::string(40, 'x')).size());
    EXPECT_EQ(32u, FieldAt(SsidValue(std::string(40, 'x')), 0));
}

TEST(Nl80211Answers, A_signal_without_unit_is_scaled_and_a_missing_one_is_none) {
    const Bytes bssid = Attribute(NL80211_BSS_BSSID, kAddress);
    const auto signalOf = [&](const Bytes& signal) {
        return Parsed(Attribute(NL80211_ATTR_BSS, bssid + signal)).signalDbm;
    };
    EXPECT_EQ(-200, signalOf({}));
    EXPECT_EQ(-200, signalOf(Number<uint16_t>(NL80211_BSS_SIGNAL_MBM, 1)));
    EXPECT_EQ(-100, signalOf(Number<uint8_t>(NL80211_BSS_SIGNAL_UNSPEC, 0)));
    EXPECT_EQ(-50, signalOf(Number<uint8_t>(NL80211_BSS_SIGNAL_UNSPEC, 255)));
}

TEST(Nl80211Answers, Interfaces_and_stations_need_their_number) {
    WirelessInterface interface;
    const Bytes name = Attribute(NL80211_ATTR_IFNAME, Text("wlan0") + Bytes{0});
    const Bytes type = Number<uint32_t>(NL80211_ATTR_IFTYPE, NL80211_IFTYPE_STATION);
    EXPECT_FALSE(ParseInterface(name + type, interface));
    ASSERT_TRUE(ParseInterface(Number<uint32_t>(NL80211_ATTR_IFINDEX, 3) + name + type, interface));
    EXPECT_TRUE(interface.name == "wlan0" && interface.isStation && !interface.isAdHoc);
    Station station;
    const Bytes info = Attribute(NL80211_ATTR_STA_INFO | NLA_F_NESTED, Number<int8_t>(NL80211_STA_INFO_SIGNAL, -71));
    EXPECT_FALSE(ParseStation(info, station));
    ASSERT_TRUE(ParseStation(info + Attribute(NL80211_ATTR_MAC, kAddress), station));
    EXPECT_EQ(-71, station.signalDbm);
}

TEST(BssidList, A_list_that_does_not_fit_keeps_the_strongest_in_their_order) {
    std::vector<AccessPoint> all;
    for (const int signal : {-90, -40, -60, -40, -85, -30, -60}) {
        AccessPoint& accessPoint = all.emplace_back();
        accessPoint.bssid[5] = static_cast<uint8_t>(all.size() - 1);
        accessPoint.signalDbm = signal;
    }
    const std::pair<size_t, Bytes> rows[] = {
        {4 + 103, {}}, {4 + 104, {5}}, {4 + 4 * 104, {1, 2, 3, 5}}, {60000, {0, 1, 2, 3, 4, 5, 6}}};
    for (const auto& [capacity, kept] : rows) {
        const NdisValue list = BssidListValue(all, capacity);
        ASSERT_EQ(kept.size(), FieldAt(list, 0));
        Bytes listed;
        for (size_t entry = 4; entry < list.size(); entry += kBssidEntryBytes) {
            listed.push_back(list[entry + 4 + 5]);
        }
        EXPECT_EQ(kept, listed);
    }
    EXPECT_TRUE(BssidListValue(all, 3).empty());
}

TEST(GenericNetlink, A_dump_brings_every_message_of_a_family_that_exists) {
    NetlinkMessages messages;
    ASSERT_EQ(0, DumpGenericNetlink("nlctrl", CTRL_CMD_GETFAMILY, 0, messages));
    const Bytes name = Attribute(CTRL_ATTR_FAMILY_NAME, Text("nlctrl") + Bytes{0});
    EXPECT_TRUE(std::any_of(messages.begin(), messages.end(), [&](const Bytes& message) {
        return std::search(message.begin(), message.end(), name.begin(), name.end()) != message.end();
    }));
    EXPECT_EQ(ENOENT, DumpGenericNetlink("no-such-family", 1, 0, messages));
}

TEST(Radio, What_is_no_wireless_interface_has_no_values) {
    std::vector<uint8_t> value{1};
    EXPECT_EQ(helper_protocol::kResultGeneralFailure, QueryRadio("lo", 0x0D010206, 1008, value));
    EXPECT_EQ(helper_protocol::kResultNotSupported, QueryRadio("lo", 0x00010101, 1008, value));
    EXPECT_EQ(helper_protocol::kResultGeneralFailure, SetRadio("lo", 0x0D01011A, {}));
    EXPECT_EQ(1u, value.size());
}
