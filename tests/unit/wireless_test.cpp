// The reading of every tick, its words and places, and lists of access points, hostile ones included.
#include <gtest/gtest.h>

#include "item/item_state.h"
#include "tests/support/access_point_list.h"
#include "tests/support/texts.h"
#include "tests/support/wireless_values.h"
#include "wireless/access_point_texts.h"
#include "wireless/access_points.h"
#include "wireless/channel.h"
#include "wireless/signal.h"
#include "wireless/signal_graph.h"

namespace {

using List = AccessPointListBuilder;

TEST(AccessPoints, Lists_end_where_they_stop_making_sense_and_names_at_their_room) {
    const auto names = [](const std::vector<uint8_t>& value) {
        AccessPointTable table;
        ResetAccessPoints(table);
        MergeAccessPoints(table, value);
        std::wstring all;
        for (const AccessPoint& entry : std::span(table.entries).first(static_cast<size_t>(table.count))) {
            all += std::wstring(entry.ssid, entry.ssid + strlen(entry.ssid)) + L",";
        }
        return all;
    };
    const List two = List().Add("a", 1, -60).Add("b", 2, -60);
    std::vector<uint8_t> cut = two.Value();
    cut.pop_back();
    EXPECT_EQ(Each(names, {cut, List(two).WithCount(4000000000U).Value(), List(two).WithCount(1).Value()}),
              L"a,|a,b,|a,");
    EXPECT_EQ(Each(names, {List(two).WithLength(0, 0).Value(), List(two).WithLength(0, 4000000000U).Value()}), L"|a,");
    EXPECT_EQ(names(List().Add("a", 1, -60).Add("renamed", 1, -60).Value()), L"a,");
    EXPECT_EQ(names(List().Add(std::string("a\0b", 3), 1, -60).Value()), L"a,");
    EXPECT_EQ(names(List().Add(std::string(32, 's'), 1, -60).WithSsidLength(4000000000U).Value()),
              std::wstring(32, L's') + L",");
}

TEST(AccessPoints, Have_whole_and_half_rates_and_a_signal_in_words) {
    AccessPointTexts texts;
    AccessPoint entry = {};
    memcpy(entry.rates, "\x82\x84\x8B\x96\x0C\x80\x01\xFF", kRateBytes);
    const auto signal = [&](int32_t dbm) {
        entry.rssi = dbm;
        DescribeSelectedAccessPoint(entry, texts);
        return texts.signal;
    };
    EXPECT_EQ(Each(signal, {-200, -89, -71, -67, -66}),
              L"no signal (-200dBm)|very low (-89dBm)|low (-71dBm)|good (-67dBm)|very good (-66dBm)");
    EXPECT_STREQ(texts.rates, L"1,2,5.5,11,6,0,0.5,63.5 Mbps");
}

TEST(Signal, Changes_its_words_at_their_boundaries_and_its_line_ends_at_the_top) {
    const auto levels = {-200, -90, -89, -81, -80, -71, -70, -67, -66};
    EXPECT_EQ(Each(SignalStatus, levels), L"No Signal|No Signal|Very Low|Very Low|Low|Low|Good|Good|Very Good");
    std::fill_n(itemState.SignalHistory, kSignalReadings, -90);
    itemState.SignalHistory[39] = 0x7FFFFFFF;  // a driver may report any number
    SignalLine lines[kSignalReadings];
    EXPECT_EQ(ArrangeSignalGraph(itemState.SignalHistory, lines), 1U);
    EXPECT_EQ(std::tuple(lines[0].x, lines[0].bottom, lines[0].top), std::tuple(162, 68, 4));
}

TEST(Signal, Counts_while_associated_and_is_pushed_through_the_history) {
    UseWireless();
    scripted::system.wireless.values = {{OID_802_11_RSSI, NdisFields({0xFFFFFFC3})}, {OID_802_11_BSSID, {1, 2, 3}}};
    EXPECT_EQ((std::pair{QuerySignal(), itemState.SignalDbm}), std::pair(1, -61));
    scripted::system.wireless.present = false;
    EXPECT_EQ((std::pair{QuerySignal(), itemState.SignalDbm}), std::pair(0, kNoSignal));
    EXPECT_EQ(std::pair(itemState.SignalHistory[38], itemState.SignalHistory[39]), std::pair(-61, kNoSignal));
}

TEST(Channel, Is_known_on_both_scales_at_its_centre_alone) {
    for (uint32_t step = 0; step < 14; ++step) {
        EXPECT_EQ(ChannelFromFrequency(2412000 + step * 5000), step + 1);
        EXPECT_EQ(ChannelFromFrequency(24120 + step * 50), step + 1);
        EXPECT_EQ(ChannelFromFrequency(2412001 + step * 5000), -1);
    }
    EXPECT_EQ(Each(ChannelFromFrequency, {0U, 2407000U, 2482000U, 24820U, 24070U}), L"-1|-1|-1|-1|-1");
}

}  // namespace
