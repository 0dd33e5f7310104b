// Which adapter the DHCP dialog shows, and what release and renew ask the system for.

#include "adapters/dhcp_info.h"

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "tests/fakes/scripted_platform.h"

namespace {

scripted::Adapter Leased(const char* name, uint32_t index) {
    return {.name = name, .index = index, .dhcpEnabled = true, .dhcpServer = "192.168.7.1"};
}

TEST(DhcpInfo, The_last_adapter_run_by_dhcp_wins_whatever_its_type) {
    scripted::Adapter second = Leased("{b}", 2);
    second.type = 71;
    second.address = "10.0.0.9";
    second.dhcpServer = "10.0.0.1";
    scripted::system.adapters = {Leased("{a}", 1), second, {.name = "{c}", .index = 3}};
    DhcpInfo info;
    EXPECT_EQ(ReadDhcpInfo(info), DhcpState::Ready);
    EXPECT_STREQ(info.address, L"10.0.0.9");
    EXPECT_STREQ(info.server, L"10.0.0.1");
    EXPECT_STREQ(itemState.adapterName, L"{b}");
}

TEST(DhcpInfo, An_adapter_without_an_address_has_no_lease_times) {
    scripted::system.adapters = {Leased("{a}", 1)};
    const std::pair<const char*, bool> rows[] = {{"0.0.0.0", false}, {"00.0.0.0", true}, {"", true}};
    for (const auto& [address, hasTimes] : rows) {
        scripted::system.adapters[0].address = address;
        DhcpInfo info;
        EXPECT_EQ(ReadDhcpInfo(info), DhcpState::Ready);
        EXPECT_EQ(info.obtained[0] != 0, hasTimes) << address;
        EXPECT_EQ(info.expires[0] != 0, hasTimes) << address;
        EXPECT_STREQ(info.server, L"192.168.7.1");
    }
}

TEST(DhcpInfo, Without_an_adapter_run_by_dhcp_texts_and_adapter_stay) {
    scripted::system.adapters = {{.name = "{a}"}};
    DhcpInfo info = {.address = L"kept", .server = {}, .obtained = {}, .expires = {}};
    EXPECT_EQ(ReadDhcpInfo(info), DhcpState::Disabled);
    EXPECT_STREQ(info.address, L"kept");
    EXPECT_STREQ(itemState.adapterName, L"");
}

TEST(ChangeLease, Asks_for_the_monitored_adapter_by_its_index) {
    scripted::system.adapters = {Leased("{a}", 1), Leased("{b}", 9)};
    wcscpy(itemState.adapterName, L"{b}");
    EXPECT_EQ(ChangeLease(LeaseAction::Release), LeaseResult::Done);
    EXPECT_EQ(ChangeLease(LeaseAction::Renew), LeaseResult::Done);
    using Call = std::pair<std::string, uint32_t>;
    EXPECT_EQ(scripted::system.dhcpCalls, (std::vector<Call>{{"release", 9}, {"renew", 9}}));
    EXPECT_EQ(itemState.interfaceIndex, 9U);

    scripted::system.dhcpCalls.clear();
    wcscpy(itemState.adapterName, L"{gone}");
    EXPECT_EQ(ChangeLease(LeaseAction::Renew), LeaseResult::NoInterface);
    EXPECT_TRUE(scripted::system.dhcpCalls.empty());
}

}  // namespace
