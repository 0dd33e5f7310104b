// Which adapter the DHCP dialog shows, what release and renew ask the system for, and lease times as text.
#include "adapters/dhcp_info.h"

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/texts.h"

namespace {

TEST(DhcpInfo, The_last_adapter_run_by_dhcp_wins_whatever_its_type) {
    const scripted::Adapter fixed = {.name = "{c}", .index = 3};
    scripted::system.adapters = {fixed};
    DhcpInfo info = {.address = L"kept", .server = {}, .obtained = {}, .expires = {}};
    EXPECT_EQ(ReadDhcpInfo(info), DhcpState::Disabled);
    EXPECT_EQ(Joined({info.address, itemState.adapterName}), L"kept|");
    scripted::system.adapters = {
        {.name = "{a}", .dhcpEnabled = true, .dhcpServer = "192.168.7.1"},
        {.name = "{b}", .index = 2, .type = 71, .address = "10.0.0.9", .dhcpEnabled = true, .dhcpServer = "10.0.0.1"},
        fixed};
    EXPECT_EQ(ReadDhcpInfo(info), DhcpState::Ready);
    EXPECT_EQ(Joined({info.address, info.server, itemState.adapterName}), L"10.0.0.9|10.0.0.1|{b}");
}

TEST(DhcpInfo, An_adapter_without_an_address_has_no_lease_times) {
    for (const auto& [address, hasTimes] : {std::pair("0.0.0.0", false), {"00.0.0.0", true}, {"", true}}) {
        scripted::system.adapters = {{.address = address, .dhcpEnabled = true, .dhcpServer = "192.168.7.1"}};
        DhcpInfo info;
        EXPECT_EQ(ReadDhcpInfo(info), DhcpState::Ready);
        EXPECT_EQ(std::pair(info.obtained[0] != 0, info.expires[0] != 0), std::pair(hasTimes, hasTimes)) << address;
        EXPECT_STREQ(info.server, L"192.168.7.1");
    }
}

TEST(ChangeLease, Asks_for_the_monitored_adapter_by_its_index) {
    scripted::system.adapters = {{.name = "{a}"}, {.name = "{b}", .index = 9}};
    wcscpy(itemState.adapterName, L"{gone}");
    EXPECT_EQ(ChangeLease(LeaseAction::Renew), LeaseResult::NoInterface);
    wcscpy(itemState.adapterName, L"{b}");
    EXPECT_EQ(ChangeLease(LeaseAction::Release), LeaseResult::Done);
    EXPECT_EQ(ChangeLease(LeaseAction::Renew), LeaseResult::Done);
    using Call = std::pair<std::string, uint32_t>;
    EXPECT_EQ(scripted::system.dhcpCalls, (std::vector<Call>{{"release", 9}, {"renew", 9}}));
    EXPECT_EQ(itemState.interfaceIndex, 9U);
}

TEST(LeaseTime, Unix_seconds_as_calendar_text) {
    const std::pair<uint32_t, const wchar_t*> rows[] = {
        {0, L"Thu. Jan 1, 1970 00:00:00"},           {1142409909, L"Wed. Mar 15, 2006 08:05:09"},
        {951782400, L"Tue. Feb 29, 2000 00:00:00"},  {1167523199, L"Sat. Dec 30, 2006 23:59:59"},
        {1214697600, L"Sun. Jun 29, 2008 00:00:00"}, {0x7FFFFFFF, L"Tue. Jan 19, 2038 03:14:07"},
        {0x80000000, L"Tue. Jan 19, 2038 03:14:08"}, {0xFFFFFFFF, L"Sun. Feb 7, 2106 06:28:15"},
    };
    for (const auto& [seconds, text] : rows) {
        const FILETIME fileTime = UnixTimeToFileTime(seconds);
        SYSTEMTIME time = {};
        ASSERT_TRUE(FileTimeToSystemTime(&fileTime, &time));
        wchar_t out[kLeaseTimeUnits];
        FormatLeaseTime(time, out);
        EXPECT_STREQ(out, text);
    }
}

}  // namespace
