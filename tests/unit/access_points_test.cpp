// The scanner's table against lists as drivers give them, hostile ones included.

#include "wireless/access_points.h"

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "tests/support/access_point_list.h"
#include "tests/support/wireless_values.h"
#include "wireless/access_point_texts.h"

namespace {

AccessPointTable EmptyTable() {
    AccessPointTable table;
    ResetAccessPoints(table);
    return table;
}

ScanOutcome ScanList(AccessPointTable& table, const AccessPointListBuilder& list) {
    scripted::system.wireless.values[OID_802_11_BSSID_LIST] = list.Value();
    return ScanAccessPoints(table);
}

TEST(AccessPoints, Appear_change_vanish_and_return_in_their_row) {
    UseWireless();
    AccessPointTable table = EmptyTable();
    EXPECT_TRUE(ScanList(table, AccessPointListBuilder().Add("home", 1, -60).Add("home", 2, -85)).usable);
    ASSERT_EQ(table.count, 2);
    EXPECT_EQ(SignalImage(table.entries[0]), 8);
    EXPECT_EQ(SignalImage(table.entries[1]), 2);

    AccessPointListBuilder changed;
    changed.Add("renamed", 2, -70, 1, 24120);
    ScanList(table, changed);
    ASSERT_EQ(table.count, 2);
    EXPECT_STREQ(table.entries[1].ssid, "home");
    EXPECT_EQ(SignalImage(table.entries[1]), 7);
    EXPECT_EQ(table.entries[1].channel, 1);
    EXPECT_EQ(table.entries[0].rssi, kNoSignal);
    EXPECT_EQ(SignalImage(table.entries[0]), 0);

    scripted::system.wireless.values.erase(OID_802_11_BSSID_LIST);
    ScanAccessPoints(table);
    EXPECT_EQ(SignalImage(table.entries[1]), 1);
    ScanList(table, AccessPointListBuilder().Add("home", 1, -80));
    EXPECT_EQ(SignalImage(table.entries[0]), 4);
}

TEST(AccessPoints, Ssid_lengths_and_bytes_as_they_come) {
    const std::string longest(32, 's');
    const std::tuple<std::string, uint32_t, std::string> rows[] = {{"", 0, ""},
                                                                   {longest, 32, longest},
                                                                   {longest, 33, longest},
                                                                   {longest, 4000000000U, longest},
                                                                   {"caf\xE9", 4, "caf\xE9"},
                                                                   {std::string("a\0b", 3), 3, "a"}};
    for (const auto& [bytes, length, shown] : rows) {
        AccessPointTable table = EmptyTable();
        MergeAccessPoints(table, AccessPointListBuilder().Add(bytes, 1, -60).WithSsidLength(length).Value());
        ASSERT_EQ(table.count, 1);
        EXPECT_EQ(table.entries[0].ssid, shown);
    }
}

TEST(AccessPoints, Hostile_lists_end_where_they_stop_making_sense) {
    struct Row {
        const char* what;
        std::vector<uint8_t> value;
        int taken;
    };
    AccessPointListBuilder two;
    two.Add("a", 1, -60).Add("b", 2, -60);
    std::vector<uint8_t> cut = two.Value();
    cut.resize(cut.size() - 1);
    const Row rows[] = {
        {"empty", {}, 0},
        {"count only", {1, 0, 0, 0}, 0},
        {"entry cut", cut, 1},
        {"count too large", AccessPointListBuilder(two).WithCount(4000000000U).Value(), 2},
        {"count too small", AccessPointListBuilder(two).WithCount(1).Value(), 1},
        {"length 0", AccessPointListBuilder(two).WithLength(0, 0).Value(), 0},
        {"length past the end", AccessPointListBuilder(two).WithLength(0, 4000000000U).Value(), 1},
        {"length inside the entry", AccessPointListBuilder(two).WithLength(0, 1).WithCount(1).Value(), 1},
    };
    for (const Row& row : rows) {
        AccessPointTable table = EmptyTable();
        MergeAccessPoints(table, row.value);
        EXPECT_EQ(table.count, row.taken) << row.what;
    }
}

TEST(AccessPoints, Those_beyond_the_capacity_are_ignored) {
    AccessPointTable table = EmptyTable();
    AccessPointListBuilder list;
    for (int i = 0; i < 200; ++i) {
        list.Add("n", static_cast<uint8_t>(i), -60);
    }
    MergeAccessPoints(table, list.Value());
    EXPECT_EQ(table.count, kMostAccessPoints);
    MergeAccessPoints(table, AccessPointListBuilder().Add("n", 0, -50).Value());
    EXPECT_EQ(table.entries[0].rssi, -50);
}

TEST(AccessPointTexts, Rate_lists) {
    struct Row {
        std::vector<uint8_t> rates;
        const wchar_t* text;
    };
    const Row rows[] = {{{}, L""},
                        {{0x02, 0x04, 0x0B, 0x16}, L"1,2,5.5,11 Mbps"},
                        {{0x96, 0x0B}, L"11,5.5 Mbps"},
                        {{0x80, 0x01, 0xFF}, L"0,0.5,63.5 Mbps"},
                        {{0x82, 0x84, 0x8B, 0x96, 0x0C, 0x12, 0x18, 0x24}, L"1,2,5.5,11,6,9,12,18 Mbps"}};
    for (const Row& row : rows) {
        AccessPoint entry = {};
        std::copy(row.rates.begin(), row.rates.end(), entry.rates);
        AccessPointTexts texts;
        DescribeAccessPoint(entry, texts);
        EXPECT_STREQ(texts.rates, row.text);
    }
}

TEST(AccessPointTexts, Names_levels_and_numbers) {
    AccessPoint entry = {};
    entry.channel = -1;
    entry.privacy = 5;
    entry.mode = 2;
    entry.networkType = 4;
    entry.bssid[1] = 0x0A;
    entry.bssid[5] = 0xFF;
    AccessPointTexts texts;
    const std::pair<int32_t, const wchar_t*> levels[] = {{-200, L"no signal (-200dBm)"},
                                                         {-89, L"very low (-89dBm)"},
                                                         {-71, L"low (-71dBm)"},
                                                         {-67, L"good (-67dBm)"},
                                                         {-66, L"very good (-66dBm)"}};
    for (const auto& [rssi, word] : levels) {
        entry.rssi = rssi;
        DescribeSelectedAccessPoint(entry, texts);
        EXPECT_STREQ(texts.signal, word);
        EXPECT_STREQ(texts.wep, L"Enabled");
    }
    DescribeAccessPoint(entry, texts);
    const wchar_t* const shown[] = {texts.signal, texts.wep, texts.bssid, texts.channel, texts.mode, texts.type};
    const wchar_t* const expected[] = {L"-66dBm", L"enabled", L"00:0A:00:00:00:FF", L"-1", L"automatic", L""};
    for (size_t i = 0; i < std::size(shown); ++i) {
        EXPECT_STREQ(shown[i], expected[i]);
    }
}

}  // namespace
