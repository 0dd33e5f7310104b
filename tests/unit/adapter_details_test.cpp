// What the adapter dialog says of adapters of every kind.

#include "adapters/adapter_details.h"

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "item/settings.h"
#include "tests/fakes/scripted_platform.h"

namespace {

AdapterDetails DetailsOf(const scripted::Adapter& adapter, bool landscape = false) {
    scripted::system.adapters = {adapter};
    AdapterDetails details;
    ReadAdapterDetails(landscape, details);
    return details;
}

scripted::Adapter FullAdapter() {
    return {.name = "{eth}",
            .description = "Fast Ethernet & more",
            .hardwareAddress = {0x00, 0x0A, 0x1B, 0x2C, 0x3D, 0x4E},
            .dnsServers = {"192.168.7.1", "10.0.0.53"},
            .haveWins = true,
            .primaryWins = "192.168.7.2",
            .secondaryWins = "192.168.7.3"};
}

TEST(AdapterDetails, Servers_stand_apart_on_portrait_and_joined_on_landscape) {
    struct Row {
        std::vector<std::string> dns;
        const char *primaryWins, *secondaryWins;
        bool landscape;
        const wchar_t *dnsText, *secondDns, *winsText, *secondWins;
    };
    const Row rows[] = {
        {{}, "1.1.1.1", "", false, L"", L"", L"1.1.1.1", L""},
        {{"9.9.9.9"}, "1.1.1.1", "2.2.2.2", false, L"9.9.9.9", L"", L"1.1.1.1", L"2.2.2.2"},
        {{"9.9.9.9"}, "1.1.1.1", "2.2.2.2", true, L"9.9.9.9", L"", L"1.1.1.1, 2.2.2.2", L""},
        {{"9.9.9.9", "8.8.8.8", "7.7.7.7"}, "", "", false, L"9.9.9.9", L"8.8.8.8", L"", L""},
        {{"255.255.255.255", "255.255.255.254"}, "", "", true, L"255.255.255.255, 255.255.255.254", L"", L"", L""},
    };
    for (const Row& row : rows) {
        scripted::Adapter adapter = FullAdapter();
        adapter.dnsServers = row.dns;
        adapter.primaryWins = row.primaryWins;
        adapter.secondaryWins = row.secondaryWins;
        const AdapterDetails details = DetailsOf(adapter, row.landscape);
        EXPECT_STREQ(details.dns, row.dnsText);
        EXPECT_STREQ(details.secondDns, row.secondDns);
        EXPECT_STREQ(details.wins, row.winsText);
        EXPECT_STREQ(details.secondWins, row.secondWins);
    }
}

TEST(AdapterDetails, Hardware_addresses_of_any_length_and_speeds_whose_unit_changes_at_a_million) {
    const std::tuple<std::vector<uint8_t>, const wchar_t*, uint32_t, const wchar_t*> rows[] = {
        {{}, L"192.168.7.33", 0, L"0 bps"},  // repeats the address
        {{0x7F}, L"7F", 999999, L"999999 bps"},
        {{0, 0xA}, L"00:0A", 1000000, L"1 Mbps"},
        {{0, 0xA}, L"00:0A", 1999999, L"1 Mbps"},
        {{1, 2, 3, 4, 5, 6, 7, 0xFF}, L"01:02:03:04:05:06:07:FF", 0xFFFFFFFF, L"4294 Mbps"},
    };
    for (const auto& [bytes, address, speed, text] : rows) {
        const AdapterDetails details = DetailsOf({.hardwareAddress = bytes, .speed = speed});
        EXPECT_STREQ(details.hardwareAddress, address);
        EXPECT_STREQ(details.speed, text);
    }
}

TEST(AdapterDetails, Interface_types_by_their_number) {
    const std::pair<uint32_t, const wchar_t*> rows[] = {
        {0, L""},     {1, L"other"},     {6, L"ethernet"}, {9, L"token ring"}, {15, L"fddi"},
        {23, L"ppp"}, {24, L"loopback"}, {28, L"slip"},    {71, L""},          {0xFFFFFFFF, L""},
    };
    for (const auto& [type, text] : rows) {
        EXPECT_STREQ(InterfaceTypeName(type), text);
    }
}

TEST(AdapterDetails, The_first_ethernet_adapter_becomes_the_monitored_one) {
    WriteStringSetting(L"Adapter", L"{wifi}", 6);
    wcscpy(itemState.adapterName, L"{wifi}");
    scripted::Adapter first = FullAdapter();
    first.index = 2;
    first.description = "";
    scripted::system.adapters = {{.name = "{tun}", .type = 1}, first, {.name = "{wifi}", .index = 3}};
    AdapterDetails details;
    ReadAdapterDetails(false, details);
    EXPECT_STREQ(details.title, L"Adapter - {eth}");  // without a description
    EXPECT_STREQ(itemState.adapterName, L"{eth}");
    wchar_t stored[16] = {};
    EXPECT_TRUE(ReadStringSetting(L"Adapter", stored));
    EXPECT_STREQ(stored, L"{wifi}");
}

TEST(AdapterDetails, Without_an_ethernet_adapter_only_an_unchosen_name_is_worth_a_message) {
    const scripted::Adapter tunnel = {.name = "{tun}", .type = 1};
    EXPECT_STREQ(DetailsOf(tunnel).title, L"No adapter is available.");
    wcscpy(itemState.adapterName, L"{gone}");
    const AdapterDetails details = DetailsOf(tunnel);
    EXPECT_STREQ(details.title, L"");
    EXPECT_STREQ(details.wins, L"");
    EXPECT_STREQ(itemState.adapterName, L"{gone}");
}

TEST(FindInterfaceIndex, Matches_the_whole_name_and_moves_the_monitored_interface) {
    scripted::system.adapters = {{.name = "{eth0}", .index = 6}, {.name = "{eth1}", .index = 7}};
    itemState.interfaceIndex = 5;
    for (const wchar_t* other : {L"{ETH1}", L"{eth", L"{eth11}"}) {
        EXPECT_EQ(FindInterfaceIndex(other), kUnknownInterface);
        EXPECT_EQ(itemState.interfaceIndex, 5U);
    }
    EXPECT_EQ(FindInterfaceIndex(L"{eth1}"), 7U);
    EXPECT_EQ(itemState.interfaceIndex, 7U);
}

}  // namespace
