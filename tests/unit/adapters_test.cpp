// What the tools say of adapters of every kind, of DHCP leases, and of the public address.
#include <gtest/gtest.h>

#include "adapters/adapter_details.h"
#include "adapters/dhcp_info.h"
#include "adapters/public_ip.h"
#include "item/item_state.h"
#include "item/settings.h"
#include "options/adapter_properties.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/texts.h"

namespace {

AdapterDetails DetailsOf(const scripted::Adapter& adapter, bool landscape = false) {
    scripted::system.adapters = {adapter};
    AdapterDetails details;
    ReadAdapterDetails(landscape, details);
    return details;
}

std::wstring Properties() {
    AdapterProperty properties[kMostAdapterProperties];
    std::wstring texts;
    for (int i = 0; i < ReadAdapterProperties(properties); ++i) {
        texts += properties[i].item + std::wstring(L"=") + properties[i].value + L";";
    }
    return texts;
}

TEST(AdapterDetails, Servers_stand_apart_on_portrait_and_joined_on_landscape) {
    const std::tuple<std::vector<std::string>, std::string, bool, const wchar_t*> rows[] = {
        {{}, "", false, L"||1.1.1.1|"},
        {{"9.9.9.9"}, "2.2.2.2", true, L"9.9.9.9||1.1.1.1, 2.2.2.2|"},
        {{"9.9.9.9", "8.8.8.8", "7.7.7.7"}, "2.2.2.2", false, L"9.9.9.9|8.8.8.8|1.1.1.1|2.2.2.2"},
    };
    for (const auto& [dns, secondWins, landscape, texts] : rows) {
        const AdapterDetails details = DetailsOf(
            {.dnsServers = dns, .haveWins = true, .primaryWins = "1.1.1.1", .secondaryWins = secondWins}, landscape);
        EXPECT_EQ(Joined({details.dns, details.secondDns, details.wins, details.secondWins}), texts);
    }
}

TEST(AdapterDetails, Hardware_addresses_of_any_length_speeds_and_properties_that_repeat_the_row_before) {
    const std::tuple<scripted::Adapter, const wchar_t*, const wchar_t*> rows[] = {
        {{.description = "", .hardwareAddress = {}, .speed = 999999},
         L"Adapter - {00000001-0000-0000-0000-000000000001}|192.168.7.33|999999 bps",
         L"Type=ethernet;Speed=999999 bps;IP Address=192.168.7.33;MAC Address=192.168.7.33;DHCP Server=192.168.7.33;"},
        {{.hardwareAddress = {0x7F}, .speed = 1000000},
         L"Adapter - Test adapter|7F|1 Mbps",
         L"Adapter=Test adapter;Type=ethernet;Speed=1 Mbps;IP Address=192.168.7.33;MAC Address=7F;DHCP Server=7F;"},
        {{.hardwareAddress = {1, 2, 3, 4, 5, 6, 7, 0xFF}, .dhcpEnabled = true, .dhcpServer = "10.0.0.1", .speed = ~0U},
         L"Adapter - Test adapter|01:02:03:04:05:06:07:FF|4294 Mbps",
         L"Adapter=Test adapter;Type=ethernet;Speed=4294 Mbps;IP Address=192.168.7.33;"
         L"MAC Address=01:02:03:04:05:06:07:FF;DHCP Server=10.0.0.1;"},
        {{.type = 71}, L"||", L""},
    };
    for (const auto& [adapter, texts, properties] : rows) {
        wcscpy(itemState.adapterName, L"monitored");
        const AdapterDetails details = DetailsOf(adapter);
        EXPECT_EQ(Joined({details.title, details.hardwareAddress, details.speed}), texts);
        EXPECT_EQ(Properties(), properties);
    }
    const std::pair<uint32_t, const wchar_t*> types[] = {{0, L""},           {1, L"other"}, {6, L"ethernet"},
                                                         {9, L"token ring"}, {15, L"fddi"}, {23, L"ppp"},
                                                         {24, L"loopback"},  {28, L"slip"}, {71, L""}};
    for (const auto& [type, text] : types) {
        EXPECT_STREQ(InterfaceTypeName(type), text);
    }
}

TEST(AdapterDetails, The_first_ethernet_adapter_becomes_the_monitored_one_but_not_the_stored_one) {
    WriteStringSetting(L"Adapter", L"{wifi}", 7);
    wcscpy(itemState.adapterName, L"{wifi}");
    scripted::system.adapters = {{.name = "{tun}", .type = 1}, {.name = "{eth}", .index = 2}, {.name = "{wifi}"}};
    AdapterDetails details;
    ReadAdapterDetails(false, details);
    wchar_t stored[16] = {};
    ReadStringSetting(L"Adapter", stored);
    EXPECT_EQ(Joined({itemState.adapterName, stored}), L"{eth}|{wifi}");
    itemState.adapterName[0] = 0;
    EXPECT_STREQ(DetailsOf({.type = 1}).title, L"No adapter is available.");
}

TEST(DhcpInfo, The_last_adapter_run_by_dhcp_wins_whatever_its_type_and_has_no_times_without_an_address) {
    const scripted::Adapter fixed = {.name = "{c}", .index = 3};
    scripted::system.adapters = {fixed};
    DhcpInfo info = {.address = L"kept", .server = {}, .obtained = {}, .expires = {}};
    EXPECT_EQ(ReadDhcpInfo(info), DhcpState::Disabled);
    EXPECT_EQ(Joined({info.address, itemState.adapterName}), L"kept|");
    for (const auto& [address, hasTimes] : {std::pair("0.0.0.0", false), {"00.0.0.0", true}, {"", true}}) {
        scripted::system.adapters = {
            {.name = "{a}", .dhcpEnabled = true, .dhcpServer = "192.168.7.1"},
            {.name = "{b}", .index = 2, .type = 71, .address = address, .dhcpEnabled = true, .dhcpServer = "10.0.0.1"},
            fixed};
        EXPECT_EQ(ReadDhcpInfo(info), DhcpState::Ready);
        EXPECT_EQ(Joined({info.server, itemState.adapterName}), L"10.0.0.1|{b}");
        EXPECT_EQ(std::pair(info.obtained[0] != 0, info.expires[0] != 0), std::pair(hasTimes, hasTimes)) << address;
    }
}

TEST(ChangeLease, Asks_for_the_monitored_adapter_whose_whole_name_matches) {
    scripted::system.adapters = {{.name = "{eth0}", .index = 6}, {.name = "{eth1}", .index = 7}};
    for (const wchar_t* name : {L"{ETH1}", L"{eth", L"{eth11}", L"{eth1}"}) {
        wcscpy(itemState.adapterName, name);
        ChangeLease(LeaseAction::Release);
        ChangeLease(LeaseAction::Renew);
    }
    using Calls = std::vector<std::pair<std::string, uint32_t>>;
    EXPECT_EQ(scripted::system.dhcpCalls, (Calls{{"release", 7}, {"renew", 7}}));
    EXPECT_EQ(itemState.interfaceIndex, 7U);
}

TEST(LeaseTime, Names_the_days_with_and_the_months_without_a_full_stop) {
    std::wstring names;
    for (WORD i = 0; i < 12; ++i) {
        wchar_t text[kLeaseTimeUnits];
        FormatLeaseTime({2006, static_cast<WORD>(i + 1), static_cast<WORD>(i % 7), 1, 0, 0, 0, 0}, text);
        names += std::wstring(text, 8);
    }
    EXPECT_EQ(names,
              L"Sun. JanMon. FebTue. MarWed. AprThu. MayFri. JunSat. JulSun. AugMon. SepTue. OctWed. NovThu. Dec");
}

TEST(PublicIp, Is_digits_and_points_up_to_the_end_or_a_line_end) {
    using namespace std::string_literals;
    const std::tuple<std::string, bool, const wchar_t*> rows[] = {
        {"203.0.113.7\nxyz", true, L"203.0.113.7"},
        {"203.0.113.7 ", false, L"203.0.113.7 "},
        {"....", true, L"...."},
        {"\r\n", true, L""},
        {"12345678901234567890", true, L"12345678901234567890"},
        {"123456789012345678901", false, L"before"},
        {"203.0.113.7\r\n         ", false, L"before"},  // 22 characters, though the address comes first
        {"", false, L"before"},
        {"\0garbage of any length follows here"s, true, L""},
        {"1\xFF", false, L"1\u00FF"},
    };
    for (const auto& [body, found, expected] : rows) {
        wchar_t address[kPublicIpUnits] = L"before";
        EXPECT_EQ(ParseEchoBody(body, address), found) << body;
        EXPECT_STREQ(address, expected);
    }
}

TEST(PublicIp, Is_asked_past_every_cache_directly_or_through_a_proxy_and_of_the_fallback_when_the_first_gave_nothing) {
    auto& internet = scripted::system.internet;
    auto& manager = scripted::system.connectionManager;
    manager.proxy = u"http=10.0.0.8:3128";
    for (const auto& [proxyResult, way] :
         {std::pair(E_NOINTERFACE, L"1, no proxy"), {S_OK, L"3, http=10.0.0.8:3128"}}) {
        manager.proxyResult = proxyResult;
        internet.answers[L"ip1.quorvane.net"] = {{std::string(10001, '1')}};
        internet.answers[L"ip2.quorvane.net"] = {{"203.", "0.113.7" + std::string(1, '\0'), std::string(30000, 'x')}};
        wchar_t address[kPublicIpUnits] = {};
        EXPECT_TRUE(DetectPublicIpFromAny(address));
        EXPECT_EQ(Joined({address, internet.hosts.back()}), L"203.0.113.7|ip2.quorvane.net");
        EXPECT_EQ(internet.asked,
                  L"Microsoft Internet Explorer, access " + std::wstring(way) + L", port 80, ip/ip.php, 80000000, 1");
        EXPECT_EQ(manager.releasedWith, 1);
    }
}

}  // namespace
