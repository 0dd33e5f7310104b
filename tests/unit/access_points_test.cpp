// The scanner's table against lists as drivers give them, hostile ones included.
#include "wireless/access_points.h"

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "tests/support/access_point_list.h"
#include "tests/support/texts.h"
#include "tests/support/wireless_values.h"
#include "wireless/access_point_texts.h"

namespace {

using List = AccessPointListBuilder;

TEST(AccessPoints, Appear_change_vanish_and_return_in_their_row) {
    UseWireless();
    AccessPointTable table;
    ResetAccessPoints(table);
    auto& values = scripted::system.wireless.values;
    // Name and image of each row.
    const auto scan = [&](const List& list) {
        values[OID_802_11_BSSID_LIST] = list.Value();
        EXPECT_TRUE(ScanAccessPoints(table).usable);
        std::string rows;
        for (int i = 0; i < table.count; ++i) {
            rows += table.entries[i].ssid + std::to_string(SignalImage(table.entries[i])) + " ";
        }
        return rows;
    };
    EXPECT_EQ(scan(List().Add("one", 1, -60).Add("two", 2, -85)), "one8 two2 ");
    EXPECT_EQ(scan(List().Add("renamed", 2, -70, 1, 24120)), "one0 two7 ");
    EXPECT_EQ(table.entries[1].channel, 1);
    EXPECT_EQ(table.entries[0].rssi, kNoSignal);
    EXPECT_EQ(scan(List().Add("one", 1, -80)), "one4 two1 ");
}

TEST(AccessPoints, Lists_end_where_they_stop_making_sense_and_names_at_their_room) {
    const std::string longest(32, 's');
    const List two = List().Add("a", 1, -60).Add("b", 2, -60);
    std::vector<uint8_t> cut = two.Value();
    cut.pop_back();
    const auto named = [](const std::string& bytes, uint32_t length) {
        return List().Add(bytes, 1, -60).WithSsidLength(length).Value();
    };
    const std::tuple<const char*, std::vector<uint8_t>, std::string> rows[] = {
        {"empty", {}, ""},
        {"count only", {1, 0, 0, 0}, ""},
        {"entry cut", cut, "a,"},
        {"count too large", List(two).WithCount(4000000000U).Value(), "a,b,"},
        {"count too small", List(two).WithCount(1).Value(), "a,"},
        {"length 0", List(two).WithLength(0, 0).Value(), ""},
        {"length past the end", List(two).WithLength(0, 4000000000U).Value(), "a,"},
        {"no name", named("", 0), ","},
        {"longest name", named(longest, 32), longest + ","},
        {"too long a name", named(longest, 4000000000U), longest + ","},
        {"Latin-1", named("caf\xE9", 4), "caf\xE9,"},
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

TEST(AccessPointTexts, Rates_levels_and_numbers) {
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
    entry.privacy = 5;
    entry.mode = 2;
    entry.networkType = 4;
    entry.bssid[1] = 0x0A;
    entry.bssid[5] = 0xFF;
    const std::pair<int32_t, const wchar_t*> levels[] = {{-200, L"no signal (-200dBm)"},
                                                         {-89, L"very low (-89dBm)"},
                                                         {-71, L"low (-71dBm)"},
                                                         {-67, L"good (-67dBm)"},
                                                         {-66, L"very good (-66dBm)"}};
    for (const auto& [rssi, word] : levels) {
        entry.rssi = rssi;
        DescribeSelectedAccessPoint(entry, texts);
        EXPECT_EQ(Joined({texts.signal, texts.wep}), Joined({word, L"Enabled"}));
    }
    DescribeAccessPoint(entry, texts);
    EXPECT_EQ(Joined({texts.signal, texts.wep, texts.bssid, texts.channel, texts.mode, texts.type}),
              L"-66dBm|enabled|00:0A:00:00:00:FF|-1|automatic|");
}

}  // namespace
