// The query layer, the reading of every tick, the card's values, and lists of access points, hostile ones included.
#include <gtest/gtest.h>

#include "item/item_state.h"
#include "tests/support/access_point_list.h"
#include "tests/support/texts.h"
#include "tests/support/wireless_values.h"
#include "wireless/access_point_texts.h"
#include "wireless/access_points.h"
#include "wireless/card_details.h"
#include "wireless/channel.h"
#include "wireless/signal.h"
#include "wireless/signal_graph.h"

namespace {

using List = AccessPointListBuilder;

TEST(AccessPoints, Lists_end_where_they_stop_making_sense_and_names_at_their_room) {
    const std::string longest(32, 's');
    const List two = List().Add("a", 1, -60).Add("b", 2, -60);
    std::vector<uint8_t> cut = two.Value();
    cut.pop_back();
    const auto named = [](const std::string& bytes, uint32_t length) {
        return List().Add(bytes, 1, -60).WithSsidLength(length).Value();
    };
    const std::tuple<const char*, std::vector<uint8_t>, std::string> rows[] = {
        {"entry cut", cut, "a,"},
        {"count too large", List(two).WithCount(4000000000U).Value(), "a,b,"},
        {"count too small", List(two).WithCount(1).Value(), "a,"},
        {"length 0", List(two).WithLength(0, 0).Value(), ""},
        {"length past the end", List(two).WithLength(0, 4000000000U).Value(), "a,"},
        {"renamed", List().Add("a", 1, -60).Add("b", 1, -60).Value(), "a,"},
        {"too long a name", named(longest, 4000000000U), longest + ","},
        {"zero within", named(std::string("a\0b", 3), 3), "a,"},
    };
    for (const auto& [what, value, expected] : rows) {
        AccessPointTable table;
        ResetAccessPoints(table);
        MergeAccessPoints(table, value);
        std::string names;
        for (int i = 0; i < table.count; ++i) {
            names += std::string(table.entries[i].ssid) + ",";
        }
        EXPECT_EQ(names, expected) << what;
    }
}

TEST(AccessPoints, Have_their_rates_and_numbers_in_words) {
    AccessPoint entry = {};
    AccessPointTexts texts;
    const std::pair<std::vector<uint8_t>, const wchar_t*> rates[] = {
        {{}, L""},
        {{0x80, 0x01, 0xFF}, L"0,0.5,63.5 Mbps"},
        {{0x82, 0x84, 0x8B, 0x96, 0x0C, 0x12, 0x18, 0x24}, L"1,2,5.5,11,6,9,12,18 Mbps"}};
    for (const auto& [bytes, text] : rates) {
        std::copy(bytes.begin(), bytes.end(), entry.rates);
        DescribeAccessPoint(entry, texts);
        EXPECT_STREQ(texts.rates, text);
    }
    entry.channel = -1;
    entry.mode = 2;
    entry.networkType = 4;
    entry.bssid[1] = 0x0A;
    DescribeAccessPoint(entry, texts);
    EXPECT_EQ(Joined({texts.bssid, texts.channel, texts.mode, texts.type}), L"00:0A:00:00:00:00|-1|automatic|");
}

TEST(Signal, Changes_its_words_at_their_boundaries) {
    const auto levels = {-200, -90, -89, -81, -80, -71, -70, -67, -66};
    EXPECT_EQ(Each(SignalStatus, levels), L"No Signal|No Signal|Very Low|Very Low|Low|Low|Good|Good|Very Good");
    const auto selected = [](int32_t dbm) {
        AccessPoint entry = {};
        entry.rssi = dbm;
        AccessPointTexts texts;
        DescribeSelectedAccessPoint(entry, texts);
        return Joined({texts.signal, texts.wep});
    };
    EXPECT_EQ(Each(selected, {-200, -89, -71, -67, -66}),
              L"no signal (-200dBm)|Disabled|very low (-89dBm)|Disabled|low (-71dBm)|Disabled|good (-67dBm)|Disabled|"
              L"very good (-66dBm)|Disabled");
    std::fill_n(itemState.SignalHistory, kSignalReadings, -90);
    itemState.SignalHistory[39] = 0x7FFFFFFF;  // a driver may report any number
    SignalLine lines[kSignalReadings];
    EXPECT_EQ(ArrangeSignalGraph(itemState.SignalHistory, lines), 1U);
    EXPECT_EQ(std::tuple(lines[0].x, lines[0].bottom, lines[0].top), std::tuple(162, 68, 4));
}

TEST(Signal, Is_asked_in_order_and_the_adapters_presence_remembered_until_it_is_lost) {
    UseWireless();
    auto& wireless = scripted::system.wireless;
    wireless.values = {{OID_802_11_RSSI, NdisFields({static_cast<uint32_t>(-61)})}, {OID_802_11_BSSID, {1, 2, 3}}};
    EXPECT_EQ((std::pair{QuerySignal(), itemState.SignalDbm}), std::pair(1, -61));
    EXPECT_EQ(wireless.requests, (std::vector<uint32_t>{OID_802_11_RSSI, OID_802_11_BSSID}));
    const uint32_t since = itemState.WirelessSinceTick;
    EXPECT_TRUE(itemState.WirelessSeen);
    EXPECT_EQ(itemState.WirelessLostValue, 0xFFFFFFFFU);
    wireless.present = false;
    for (int i = 1; i < kSignalReadings; ++i) {
        EXPECT_EQ((std::pair{QuerySignal(), itemState.SignalDbm}), std::pair(0, kNoSignal));
    }
    EXPECT_EQ(std::pair(itemState.SignalHistory[0], itemState.SignalHistory[1]), std::pair(-61, kNoSignal));
    EXPECT_FALSE(itemState.WirelessSeen);
    EXPECT_LE(since - itemState.WirelessLostValue - since, 60000U);
}

TEST(Card, Has_names_by_the_low_byte_or_nothing) {
    UseWireless();
    scripted::system.wireless.values = {{OID_802_11_AUTHENTICATION_MODE, NdisFields({5})},
                                        {OID_802_11_INFRASTRUCTURE_MODE, NdisFields({0xFF01})},
                                        {OID_802_11_NETWORK_TYPE_IN_USE, NdisFields({2})},
                                        {OID_802_11_WEP_STATUS, NdisFields({4})}};
    CardDetails details;
    EXPECT_TRUE(ReadCardDetails(details));
    EXPECT_EQ(Joined({details.authentication, details.mode, details.networkType, details.wep, details.beacon}),
              L"WPANone|infrastructure mode|||");
}

TEST(Channel, Is_known_on_both_scales_at_its_centre_alone) {
    for (uint32_t step = 0; step < 14; ++step) {
        EXPECT_EQ(ChannelFromFrequency(2412000 + step * 5000), step + 1);
        EXPECT_EQ(ChannelFromFrequency(24120 + step * 50), step + 1);
        EXPECT_EQ(ChannelFromFrequency(2412001 + step * 5000), -1);
    }
    for (const uint32_t other : {0U, 2407000U, 2482000U, 24820U, 24070U, 2437U, 5180000U, 0xFFFFFFFFU}) {
        EXPECT_EQ(ChannelFromFrequency(other), -1) << other;
    }
}

}  // namespace
