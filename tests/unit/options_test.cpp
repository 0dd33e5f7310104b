// What the options pages decide: the icon's place, names of logs, the adapter's properties.

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "options/adapter_properties.h"
#include "options/general_settings.h"
#include "options/log_months.h"
#include "tests/fakes/scripted_platform.h"

namespace {

TEST(GeneralSettings, A_typed_place_is_limited_and_compared_as_typed) {
    struct Row {
        const wchar_t* typed;
        uint32_t place;
        bool differs;
    };
    itemState.xLocation = 639;
    for (const Row& row : {Row{L"0", 0, true}, Row{L"639", 639, false}, Row{L"700", 639, true}, Row{L"-1", 0, true},
                           Row{L"", 0, true}, Row{L"abc", 0, true}}) {
        const XLocationChoice choice = ReadXLocation(row.typed);
        EXPECT_EQ(choice.place, row.place) << row.typed;
        EXPECT_EQ(choice.differs, row.differs) << row.typed;
    }
}

TEST(LogMonths, A_log_begins_with_six_digits) {
    LogMonth month = {};
    for (const wchar_t* name : {L"2006.log", L"export.log", L"20061.log", L"2006-1.log", L""}) {
        EXPECT_FALSE(ParseLogName(name, month)) << name;
    }
    for (const wchar_t* name : {L"200611.log", L"200611-copy.log"}) {
        EXPECT_TRUE(ParseLogName(name, month)) << name;
        EXPECT_STREQ(month.year, L"2006");
        EXPECT_STREQ(month.month, L"11");
        EXPECT_EQ(month.Number(), 200611);
    }
}

TEST(AdapterProperties, Rows_and_what_they_carry_over) {
    struct Row {
        scripted::Adapter adapter;
        std::wstring rows;
    };
    const std::wstring address = L"192.168.7.33;";
    const std::wstring mac = L"02:00:00:00:00:01;";
    const Row rows[] = {{{.description = "Card", .dhcpEnabled = true, .dhcpServer = "10.0.0.1", .speed = 11000000},
                         L"Adapter=Card;Type=ethernet;Speed=11 Mbps;IP Address=" + address + L"MAC Address=" + mac +
                             L"DHCP Server=10.0.0.1;"},
                        {{.description = "Card", .hardwareAddress = {}, .speed = 999999},
                         L"Adapter=Card;Type=ethernet;Speed=999999 bps;IP Address=" + address + L"MAC Address=" +
                             address + L"DHCP Server=" + address},
                        {{.description = "", .countersReadable = false},
                         L"IP Address=" + address + L"MAC Address=" + mac + L"DHCP Server=" + mac},
                        {{.type = 71}, L""}};
    for (const Row& row : rows) {
        scripted::system.adapters = {{.name = "ppp", .index = 9, .type = 23}, row.adapter};
        AdapterProperty properties[kMostAdapterProperties];
        std::wstring texts;
        for (int i = 0; i < ReadAdapterProperties(properties); ++i) {
            texts += properties[i].item + std::wstring(L"=") + properties[i].value + L";";
        }
        EXPECT_EQ(texts, row.rows);
    }
}

}  // namespace
