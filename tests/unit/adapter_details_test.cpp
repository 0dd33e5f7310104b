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

TEST(AdapterDetails, Every_field_of_a_full_adapter) {
    const AdapterDetails details = DetailsOf(FullAdapter());
    EXPECT_STREQ(details.title, L"Adapter - Fast Ethernet & more");
    EXPECT_STREQ(details.hardwareAddress, L"00:0A:1B:2C:3D:4E");
    EXPECT_STREQ(details.type, L"ethernet");
    EXPECT_STREQ(details.speed, L"100 Mbps");
    EXPECT_STREQ(details.address, L"192.168.7.33");
    EXPECT_STREQ(details.mask, L"255.255.255.0");
    EXPECT_STREQ(details.gateway, L"192.168.7.1");
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
        {{}, "1.1.1.1", "", true, L"", L"", L"1.1.1.1", L""},
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

TEST(AdapterDetails, Without_wins_the_first_line_alone_says_so) {
    for (const bool landscape : {false, true}) {
        scripted::Adapter adapter = FullAdapter();
        adapter.haveWins = false;
        const AdapterDetails details = DetailsOf(adapter, landscape);
        EXPECT_STREQ(details.wins, L"N/A");
        EXPECT_STREQ(details.secondWins, L"");
    }
}

TEST(AdapterDetails, Hardware_addresses_of_any_length) {
    const std::pair<std::vector<uint8_t>, const wchar_t*> rows[] = {
        {{}, L"192.168.7.33"},  // repeats the address
        {{0x7F}, L"7F"},
        {{1, 2, 3, 4, 5, 6, 7, 0xFF}, L"01:02:03:04:05:06:07:FF"},
    };
    for (const auto& [bytes, text] : rows) {
        scripted::Adapter adapter = FullAdapter();
        adapter.hardwareAddress = bytes;
        EXPECT_STREQ(DetailsOf(adapter).hardwareAddress, text);
    }
}

TEST(AdapterDetails, Speeds_change_their_unit_at_a_million) {
    const std::pair<uint32_t, const wchar_t*> rows[] = {
        {0, L"0 bps"},          {999999, L"999999 bps"}, {1000000, L"1 Mbps"},       {1999999, L"1 Mbps"},
        {11000000, L"11 Mbps"}, {54000000, L"54 Mbps"},  {0xFFFFFFFF, L"4294 Mbps"},
    };
    for (const auto& [speed, text] : rows) {
        scripted::Adapter adapter = FullAdapter();
        adapter.speed = speed;
        EXPECT_STREQ(DetailsOf(adapter).speed, text);
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

TEST(AdapterDetails, A_failing_call_ends_the_reading_there) {
    struct Row {
        const char* call;
        const wchar_t *title, *address, *dns, *wins;
    };
    const Row rows[] = {
        {"GetAdaptersInfo size", L"", L"", L"", L""},
        {"GetAdaptersInfo", L"", L"", L"", L""},
        {"GetPerAdapterInfo size", L"Adapter - Fast Ethernet & more", L"192.168.7.33", L"", L"192.168.7.2"},
        {"GetPerAdapterInfo", L"Adapter - Fast Ethernet & more", L"192.168.7.33", L"", L"192.168.7.2"},
    };
    wcscpy(itemState.adapterName, L"{eth}");
    for (const Row& row : rows) {
        scripted::system.results = {{row.call, ERROR_GEN_FAILURE}};
        const AdapterDetails details = DetailsOf(FullAdapter());
        EXPECT_STREQ(details.title, row.title) << row.call;
        EXPECT_STREQ(details.address, row.address) << row.call;
        EXPECT_STREQ(details.dns, row.dns) << row.call;
        EXPECT_STREQ(details.wins, row.wins) << row.call;
    }
    scripted::system.results.clear();
    scripted::system.interfaceCount = 0;
    EXPECT_STREQ(DetailsOf(FullAdapter()).title, L"");
}

TEST(AdapterDetails, An_unreadable_interface_row_counts_as_zeros) {
    scripted::Adapter adapter = FullAdapter();
    adapter.countersReadable = false;
    const AdapterDetails details = DetailsOf(adapter);
    EXPECT_STREQ(details.type, L"");
    EXPECT_STREQ(details.speed, L"0 bps");
    EXPECT_STREQ(details.address, L"192.168.7.33");
}

TEST(FindInterfaceIndex, Matches_the_whole_name_and_moves_the_monitored_interface) {
    struct Row {
        const wchar_t* name;
        const char* failing;
        uint32_t index, monitored;
    };
    const Row rows[] = {
        {L"{eth1}", "", 7, 7},
        {L"{ETH1}", "", kUnknownInterface, 5},
        {L"{eth", "", kUnknownInterface, 5},
        {L"{eth1}", "GetInterfaceInfo size", kUnknownInterface, 5},
        {L"{eth1}", "GetInterfaceInfo", kUnknownInterface, 5},
    };
    for (const Row& row : rows) {
        scripted::system.adapters = {{.name = "{eth0}", .index = 6}, {.name = "{eth1}", .index = 7}};
        scripted::system.results.clear();
        if (row.failing[0] != 0) {
            scripted::system.results[row.failing] = ERROR_GEN_FAILURE;
        }
        itemState.interfaceIndex = 5;
        EXPECT_EQ(FindInterfaceIndex(row.name), row.index) << row.failing;
        EXPECT_EQ(itemState.interfaceIndex, row.monitored) << row.failing;
    }
    scripted::system.adapters.clear();
    EXPECT_EQ(FindInterfaceIndex(L"{eth1}"), kUnknownInterface);
}

}  // namespace
