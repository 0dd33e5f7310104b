// From the kernel's wireless answers to NDIS values.
#include <gtest/gtest.h>
#include <linux/genetlink.h>

#include <algorithm>

#include "platform/linux/ndis_records.h"
#include "platform/linux/nl80211.h"
#include "platform/linux/nl80211_answers.h"
#include "platform/linux/radio.h"
#include "tests/unit/helper/netlink_builder.h"

using namespace helper;

namespace {

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
    const AccessPoint accessPoint = Parsed(ScanMessage(kHome));
    EXPECT_TRUE(accessPoint.isInUse);
    Bytes expected = {1, 0, 0, 0, 104, 0, 0, 0, 2, 0, 0, 0, 0, 1, 0, 0, 4, 0, 0, 0, 'h', 'o', 'm', 'e'};
    expected.resize(4 + 104);
    const std::pair<size_t, uint32_t> fields[] = {
        {48, 1}, {52, static_cast<uint32_t>(-66)}, {56, 3}, {60, 32}, {64, 100}, {72, 2437000}, {92, 1}};
    for (const auto& [offset, number] : fields) {
        memcpy(&expected[4 + offset], &number, sizeof(number));
    }
    std::ranges::copy(kRates, expected.begin() + 4 + 96);
    EXPECT_EQ(expected, BssidListValue(std::span(&accessPoint, 1), 1008));
}

TEST(Nl80211Answers, Security_is_told_from_the_elements) {
    const auto keyManagement = [](Bytes element, size_t at, uint8_t suite) {
        element[at] = suite;
        return element;
    };
    const std::tuple<const char*, uint16_t, Bytes, uint32_t, uint32_t> rows[] = {
        {"open", 0x01, {}, 0, 1},
        {"WEP", 0x11, {}, 0, 0},
        {"WPA-PSK with TKIP", 0x11, Element(221, kWpaPsk), 4, 4},
        {"WPA", 0x11, Element(221, keyManagement(kWpaPsk, 21, 1)), 3, 4},
        {"WPA2-PSK", 0x11, Element(48, kWpa2Psk), 7, 6},
        {"WPA2", 0x11, Element(48, keyManagement(kWpa2Psk, 17, 1)), 6, 6},
        {"WPA3 is told as WPA2-PSK", 0x11, Element(48, keyManagement(kWpa2Psk, 17, 8)), 7, 6},
        {"both: the better", 0x11, Element(48, kWpa2Psk) + Element(221, kWpaPsk), 7, 6},
        {"another vendor's element", 0x01, Element(221, {0, 0x50, 0xF2, 4, 1, 0}), 0, 1},
        {"a suite count beyond the end", 0x11, Element(48, {1, 0, 0, 0x0F, 0xAC, 4, 0xFF, 0xFF, 0, 0x0F}), 7, 4},
        {"an empty RSN element", 0x11, Element(48, {}), 7, 4},
    };
    for (const auto& [what, capability, elements, authentication, wep] : rows) {
        const AccessPoint accessPoint = Parsed(ScanMessage(elements, capability));
        EXPECT_EQ(authentication, AuthenticationMode(accessPoint.security)) << what;
        EXPECT_EQ(wep, WepStatus(accessPoint)) << what;
    }
}

TEST(Nl80211Answers, The_network_type_follows_frequency_and_rates_the_mode_the_capability) {
    const std::tuple<uint32_t, Bytes, uint32_t> rows[] = {
        {2412, {0x82, 0x84, 0x0B, 0x16}, 1},
        {2412, {0x82, 0x84, 0x0B, 0x16, 0x0C}, 3},
        {2412, {0x82, 0x84, 0x8B, 0x96, 0xFF, 0xFA}, 1},  // membership selectors are no rates
        {2484, {0x82}, 1},
        {5180, {0x8C, 0x12, 0x98}, 2},
    };
    for (const auto& [megahertz, rates, type] : rows) {
        EXPECT_EQ(type, NetworkType(Parsed(ScanMessage(Element(1, rates), 1, megahertz)))) << megahertz;
    }
    const AccessPoint adHoc = Parsed(ScanMessage(Element(6, {0x2C, 0x01}), 0x02));
    EXPECT_EQ(0u, InfrastructureMode(adHoc));
    EXPECT_EQ(300u, FieldAt(ConfigurationValue(adHoc), 8));  // ATIM window
}

TEST(Nl80211Answers, Names_may_be_hidden_long_and_of_any_bytes_and_signals_without_unit) {
    const std::string thirtyTwo(32, 'x');
    const std::pair<Bytes, std::string> names[] = {
        {Element(0, {}), ""},
        {Element(0, Bytes(7, 0)), ""},
        {Element(0, Text(thirtyTwo)), thirtyTwo},
        {Element(0, Text(thirtyTwo + "y")), ""},
        {Element(0, {0xC3, 0xA9, 0, 1}), std::string("\xC3\xA9\0\1", 4)},
        {{0, 9, 'c', 'u', 't'}, ""},
        {{0}, ""},
    };
    for (const auto& [elements, ssid] : names) {
        EXPECT_EQ(ssid, Parsed(ScanMessage(elements)).ssid);
    }
    EXPECT_EQ(SsidValue(thirtyTwo), SsidValue(thirtyTwo + "y"));
    const std::pair<Bytes, int> signals[] = {{{}, -200},
                                             {Number<uint16_t>(NL80211_BSS_SIGNAL_MBM, 1), -200},
                                             {Number<uint8_t>(NL80211_BSS_SIGNAL_UNSPEC, 0), -100},
                                             {Number<uint8_t>(NL80211_BSS_SIGNAL_UNSPEC, 255), -50}};
    for (const auto& [signal, dbm] : signals) {
        EXPECT_EQ(dbm, Parsed(ScanMessage({}, 0, 0, signal)).signalDbm);
    }
}

TEST(Nl80211Answers, Interfaces_and_stations_need_their_number) {
    WirelessInterface interface;
    EXPECT_FALSE(ParseInterface(InterfaceMessage(0), interface));
    ASSERT_TRUE(ParseInterface(InterfaceMessage(), interface));
    EXPECT_TRUE(interface.name == "wlan0" && interface.isStation && !interface.isAdHoc);
    Station station;
    EXPECT_FALSE(ParseStation(InterfaceMessage(), station));
    ASSERT_TRUE(ParseStation(StationMessage(), station));
    EXPECT_EQ(-71, station.signalDbm);
}

TEST(BssidList, A_list_that_does_not_fit_keeps_the_strongest_in_their_order) {
    std::vector<AccessPoint> all;
    for (const int signal : {-90, -40, -60, -40, -85, -30, -60}) {
        all.emplace_back().signalDbm = signal;
        all.back().bssid[0] = static_cast<uint8_t>(all.size() - 1);
    }
    const std::pair<size_t, Bytes> rows[] = {
        {4 + 103, {}}, {4 + 104, {5}}, {4 + 4 * 104, {1, 2, 3, 5}}, {60000, {0, 1, 2, 3, 4, 5, 6}}};
    for (const auto& [capacity, kept] : rows) {
        const NdisValue list = BssidListValue(all, capacity);
        EXPECT_EQ(kept.size(), FieldAt(list, 0));
        Bytes listed;
        for (size_t entry = 4; entry < list.size(); entry += kBssidEntryBytes) {
            listed.push_back(list[entry + 4]);
        }
        EXPECT_EQ(kept, listed);
    }
    EXPECT_TRUE(BssidListValue(all, 3).empty());
}

TEST(GenericNetlink, A_dump_brings_every_message_of_a_family_that_exists_and_no_radio_has_no_values) {
    NetlinkMessages messages;
    ASSERT_EQ(0, DumpGenericNetlink("nlctrl", CTRL_CMD_GETFAMILY, 0, messages));
    const Bytes name = Attribute(CTRL_ATTR_FAMILY_NAME, Text("nlctrl") + Bytes{0});
    EXPECT_TRUE(std::ranges::any_of(messages,
                                    [&](const Bytes& message) { return !std::ranges::search(message, name).empty(); }));
    EXPECT_EQ(ENOENT, DumpGenericNetlink("no-such-family", 1, 0, messages));
    std::vector<uint8_t> value{1};
    EXPECT_EQ(helper_protocol::kResultGeneralFailure, QueryRadio("lo", 0x0D010206, 1008, value));
    EXPECT_EQ(helper_protocol::kResultNotSupported, QueryRadio("lo", 0x00010101, 1008, value));
    EXPECT_EQ(helper_protocol::kResultGeneralFailure, SetRadio("lo", 0x0D01011A, {}));
    EXPECT_EQ(1u, value.size());
}
