// What the adapter dialog says of adapters of every kind.
#include "adapters/adapter_details.h"

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "item/settings.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/texts.h"

namespace {

AdapterDetails DetailsOf(const scripted::Adapter& adapter, bool landscape = false) {
    scripted::system.adapters = {adapter};
    AdapterDetails details;
    ReadAdapterDetails(landscape, details);
    return details;
}

TEST(AdapterDetails, Servers_stand_apart_on_portrait_and_joined_on_landscape) {
    const std::string longest = "255.255.255.255";
    const std::tuple<std::vector<std::string>, std::string, bool, const wchar_t*> rows[] = {
        {{}, "", false, L"||1.1.1.1|"},
        {{"9.9.9.9"}, "2.2.2.2", false, L"9.9.9.9||1.1.1.1|2.2.2.2"},
        {{"9.9.9.9"}, "2.2.2.2", true, L"9.9.9.9||1.1.1.1, 2.2.2.2|"},
        {{"9.9.9.9", "8.8.8.8", "7.7.7.7"}, "", false, L"9.9.9.9|8.8.8.8|1.1.1.1|"},
        {{longest, longest}, "", true, L"255.255.255.255, 255.255.255.255||1.1.1.1|"},
    };
    for (const auto& [dns, secondWins, landscape, texts] : rows) {
        const AdapterDetails details = DetailsOf(
            {.dnsServers = dns, .haveWins = true, .primaryWins = "1.1.1.1", .secondaryWins = secondWins}, landscape);
        EXPECT_EQ(Joined({details.dns, details.secondDns, details.wins, details.secondWins}), texts);
    }
}

TEST(AdapterDetails, Hardware_addresses_of_any_length_and_speeds_whose_unit_changes_at_a_million) {
    const std::tuple<std::vector<uint8_t>, uint32_t, const wchar_t*> rows[] = {
        {{}, 0, L"192.168.7.33|0 bps"},  // repeats the address
        {{0x7F}, 999999, L"7F|999999 bps"},
        {{0, 0xA}, 1000000, L"00:0A|1 Mbps"},
        {{1, 2, 3, 4, 5, 6, 7, 0xFF}, 0xFFFFFFFF, L"01:02:03:04:05:06:07:FF|4294 Mbps"},
    };
    for (const auto& [bytes, speed, texts] : rows) {
        const AdapterDetails details = DetailsOf({.hardwareAddress = bytes, .speed = speed});
        EXPECT_EQ(Joined({details.hardwareAddress, details.speed}), texts);
    }
}

TEST(AdapterDetails, Interface_types_by_their_number) {
    const std::pair<uint32_t, const wchar_t*> rows[] = {{0, L""},           {1, L"other"}, {6, L"ethernet"},
                                                        {9, L"token ring"}, {15, L"fddi"}, {23, L"ppp"},
                                                        {24, L"loopback"},  {28, L"slip"}, {71, L""}};
    for (const auto& [type, text] : rows) {
        EXPECT_STREQ(InterfaceTypeName(type), text);
    }
}

TEST(AdapterDetails, The_first_ethernet_adapter_becomes_the_monitored_one) {
    WriteStringSetting(L"Adapter", L"{wifi}", 6);
    wcscpy(itemState.adapterName, L"{wifi}");
    const scripted::Adapter tunnel = {.name = "{tun}", .type = 1};
    EXPECT_EQ(DetailsOf(tunnel).title[0], 0);
    EXPECT_STREQ(itemState.adapterName, L"{wifi}");
    scripted::system.adapters = {tunnel, {.name = "{eth}", .description = "", .index = 2}, {.name = "{wifi}"}};
    AdapterDetails details;
    ReadAdapterDetails(false, details);
    EXPECT_STREQ(details.title, L"Adapter - {eth}");  // without a description
    EXPECT_STREQ(itemState.adapterName, L"{eth}");
    wchar_t stored[16] = {};
    ReadStringSetting(L"Adapter", stored);
    EXPECT_STREQ(stored, L"{wifi}");
    itemState.adapterName[0] = 0;
    EXPECT_STREQ(DetailsOf(tunnel).title, L"No adapter is available.");
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
