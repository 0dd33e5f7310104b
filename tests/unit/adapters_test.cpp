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

TEST(AdapterDetails, Servers_stand_apart_on_portrait_and_joined_on_landscape) {
    const std::tuple<std::vector<std::string>, std::string, bool, const wchar_t*> rows[] = {
        {{}, "", false, L"||1.1.1.1|"},
        {{"9.9.9.9"}, "", true, L"9.9.9.9||1.1.1.1|"},
        {{"9.9.9.9", "8.8.8.8", "7.7.7.7"}, "2.2.2.2", false, L"9.9.9.9|8.8.8.8|1.1.1.1|2.2.2.2"},
    };
    for (const auto& [dns, secondWins, landscape, texts] : rows) {
        const AdapterDetails details = DetailsOf(
            {.dnsServers = dns, .haveWins = true, .primaryWins = "1.1.1.1", .secondaryWins = secondWins}, landscape);
        EXPECT_EQ(Joined({details.dns, details.secondDns, details.wins, details.secondWins}), texts);
    }
}

TEST(AdapterDetails, Hardware_addresses_of_any_length_speeds_and_types) {
    const std::tuple<std::vector<uint8_t>, uint32_t, const wchar_t*> rows[] = {
        {{}, 999999, L"192.168.7.33|999999 bps"},  // repeats the address
        {{0, 0xA}, 1000000, L"00:0A|1 Mbps"},
        {{1, 2, 3, 4, 5, 6, 7, 0xFF}, 0xFFFFFFFF, L"01:02:03:04:05:06:07:FF|4294 Mbps"}};
    for (const auto& [bytes, speed, texts] : rows) {
        const AdapterDetails details = DetailsOf({.hardwareAddress = bytes, .speed = speed});
        EXPECT_EQ(Joined({details.hardwareAddress, details.speed}), texts);
    }
    EXPECT_EQ(Each(InterfaceTypeName, {0U, 1U, 6U, 9U, 15U, 23U, 24U, 28U, 71U}),
              L"|other|ethernet|token ring|fddi|ppp|loopback|slip|");
}

TEST(AdapterDetails, The_first_ethernet_adapter_becomes_the_monitored_one_but_not_the_stored_one) {
    WriteStringSetting(L"Adapter", L"{wifi}", 7);
    wcscpy(itemState.adapterName, L"{wifi}");
    scripted::system.adapters = {
        {.name = "{tun}", .type = 1}, {.name = "{eth}", .description = "", .index = 2}, {.name = "{wifi}"}};
    AdapterDetails details;
    ReadAdapterDetails(false, details);
    wchar_t stored[16] = {};
    ReadStringSetting(L"Adapter", stored);
    EXPECT_EQ(Joined({details.title, itemState.adapterName, stored}), L"Adapter - {eth}|{eth}|{wifi}");
    itemState.adapterName[0] = 0;
    EXPECT_STREQ(DetailsOf({.type = 1}).title, L"No adapter is available.");
}

TEST(AdapterProperties, Repeat_the_row_before_where_there_is_nothing_to_say) {
    scripted::system.adapters = {{.description = "", .hardwareAddress = {}, .speed = 999999}};
    AdapterProperty rows[kMostAdapterProperties];
    std::wstring texts;
    for (const AdapterProperty& row : std::span(rows).first(static_cast<size_t>(ReadAdapterProperties(rows)))) {
        texts += Joined({row.item, row.value}) + L" ";
    }
    EXPECT_EQ(texts,
              L"Type|ethernet Speed|999999 bps IP Address|192.168.7.33 MAC Address|192.168.7.33 "
              L"DHCP Server|192.168.7.33 ");
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
    const auto names = [](int number) {
        wchar_t text[kLeaseTimeUnits];
        FormatLeaseTime({2006, static_cast<WORD>(number), static_cast<WORD>(number % 7), 1, 0, 0, 0, 0}, text);
        return std::wstring(text, 8);
    };
    EXPECT_EQ(
        Each(names, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}),
        L"Mon. Jan|Tue. Feb|Wed. Mar|Thu. Apr|Fri. May|Sat. Jun|Sun. Jul|Mon. Aug|Tue. Sep|Wed. Oct|Thu. Nov|Fri. Dec");
}

TEST(PublicIp, Is_digits_and_points_up_to_the_end_or_a_line_end) {
    using namespace std::string_literals;
    const auto parsed = [](const std::string& body) {
        wchar_t address[kPublicIpUnits] = L"before";
        const bool found = ParseEchoBody(body, address);
        return (found ? L"yes " : L"no ") + std::wstring(address);
    };
    EXPECT_EQ(
        Each(parsed, {"203.0.113.7\nxyz"s, "203.0.113.7 "s, "...."s, "\r\n"s, "\0garbage of any length"s, "1\xFF"s}),
        L"yes 203.0.113.7|no 203.0.113.7 |yes ....|yes |yes |no 1\u00FF");
    // 20 characters are the most, also where the address comes first.
    EXPECT_EQ(Each(parsed, {""s, "12345678901234567890"s, "123456789012345678901"s, "203.0.113.7\r\n         "s}),
              L"no before|yes 12345678901234567890|no before|no before");
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
