// What the options pages decide: the icon's place, names of logs, the adapter's properties.
#include <gtest/gtest.h>

#include "item/item_state.h"
#include "options/adapter_properties.h"
#include "options/general_settings.h"
#include "options/log_months.h"
#include "tests/fakes/scripted_platform.h"

namespace {

TEST(GeneralSettings, A_typed_place_is_limited_and_compared_as_typed) {
    itemState.xLocation = 639;
    const std::tuple<const wchar_t*, uint32_t, bool> rows[] = {{L"0", 0, true},     {L"639", 639, false},
                                                               {L"700", 639, true}, {L"-1", 0, true},
                                                               {L"", 0, true},      {L"abc", 0, true}};
    for (const auto& [typed, place, differs] : rows) {
        const XLocationChoice choice = ReadXLocation(typed);
        EXPECT_EQ(std::pair(choice.place, choice.differs), std::pair(place, differs)) << typed;
    }
}

TEST(LogMonths, A_log_begins_with_six_digits) {
    LogMonth month = {};
    for (const wchar_t* name : {L"2006.log", L"export.log", L"20061.log", L"2006-1.log", L""}) {
        EXPECT_FALSE(ParseLogName(name, month)) << name;
    }
    EXPECT_TRUE(ParseLogName(L"200611-copy.log", month));
    EXPECT_STREQ(month.year, L"2006");
    EXPECT_STREQ(month.month, L"11");
}

TEST(AdapterProperties, Rows_and_what_they_carry_over) {
    const std::wstring address = L"192.168.7.33;";
    const std::pair<scripted::Adapter, std::wstring> rows[] = {
        {{.description = "Card", .dhcpEnabled = true, .dhcpServer = "10.0.0.1", .speed = 11000000},
         L"Adapter=Card;Type=ethernet;Speed=11 Mbps;IP Address=" + address +
             L"MAC Address=02:00:00:00:00:01;DHCP Server=10.0.0.1;"},
        {{.description = "", .hardwareAddress = {}, .speed = 999999},
         L"Type=ethernet;Speed=999999 bps;IP Address=" + address + L"MAC Address=" + address + L"DHCP Server=" +
             address},
        {{.type = 71}, L""}};
    for (const auto& [adapter, expected] : rows) {
        scripted::system.adapters = {{.name = "ppp", .index = 9, .type = 23}, adapter};
        AdapterProperty properties[kMostAdapterProperties];
        std::wstring texts;
        for (int i = 0; i < ReadAdapterProperties(properties); ++i) {
            texts += properties[i].item + std::wstring(L"=") + properties[i].value + L";";
        }
        EXPECT_EQ(texts, expected);
    }
}

}  // namespace
