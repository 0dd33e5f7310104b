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

TEST(AdapterDetails, The_first_ethernet_adapter_becomes_the_monitored_one_but_not_the_stored_one) {
    WriteStringSetting(L"Adapter", L"{wifi}", 6);  // without its terminator
    wcscpy(itemState.adapterName, L"{wifi}");
    scripted::system.adapters = {{.name = "{tun}", .type = 1},
                                 {.name = "{eth}", .description = "", .index = 2, .dnsServers = {"9.9.9.9"}},
                                 {.name = "{wifi}"}};
    AdapterDetails details;
    ReadAdapterDetails(true, details);
    wchar_t stored[16] = {};
    ReadStringSetting(L"Adapter", stored);
    EXPECT_EQ(Joined({details.title, itemState.adapterName, stored, details.dns, details.wins}),
              L"Adapter - {eth}|{eth}|{wifi}|9.9.9.9|N/A");
}

TEST(AdapterDetails, An_adapter_without_a_hardware_address_repeats_the_text_before_it) {
    scripted::system.adapters = {{.description = "", .hardwareAddress = {}, .speed = 0xFFFFFFFF}};
    AdapterDetails details;
    ReadAdapterDetails(false, details);
    EXPECT_EQ(Joined({details.hardwareAddress, details.speed}), L"192.168.7.33|4294 Mbps");
    AdapterProperty properties[kMostAdapterProperties];
    ASSERT_EQ(ReadAdapterProperties(properties), 5) << "none of the description";
    EXPECT_STREQ(properties[4].value, L"192.168.7.33") << "neither a hardware address nor a server";
}

TEST(DhcpInfo, The_last_adapter_run_by_dhcp_wins_whatever_its_type_and_has_no_times_without_an_address) {
    scripted::Adapter last = {.name = "{b}", .index = 2, .type = 71, .dhcpEnabled = true, .dhcpServer = "10.0.0.1"};
    last.leaseObtained = 1142409909;
    last.leaseExpires = 0xFFFFFFFF;
    for (const auto& [address, times] :
         {std::pair("0.0.0.0", L"|"), {"", L"Wed. Mar 15, 2006 08:05:09|Sun. Feb 7, 2106 06:28:15"}}) {
        last.address = address;
        scripted::system.adapters = {{.name = "{a}", .dhcpEnabled = true}, last, {.name = "{c}", .index = 3}};
        DhcpInfo info = {};
        EXPECT_EQ(ReadDhcpInfo(info), DhcpState::Ready);
        EXPECT_EQ(Joined({info.server, itemState.adapterName}), L"10.0.0.1|{b}");
        EXPECT_EQ(Joined({info.obtained, info.expires}), times) << address;
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

TEST(PublicIp, Is_digits_and_points_up_to_the_end_or_a_line_end) {
    using namespace std::string_literals;
    const auto parsed = [](const std::string& body) {
        wchar_t address[kPublicIpUnits] = L"before";
        const bool found = ParseEchoBody(body, address);
        return (found ? L"yes " : L"no ") + std::wstring(address);
    };
    // 20 characters are the most, also where the address comes first.
    EXPECT_EQ(Each(parsed, {"203.0.113.7\nxyz"s, "203.0.113.7 "s, "\r\n"s, "\0garbage of any length"s, "1\xFF"s, ""s,
                            "12345678901234567890"s, "203.0.113.7\r\n        "s}),
              L"yes 203.0.113.7|no 203.0.113.7 |yes |yes |no 1\u00FF|no before|yes 12345678901234567890|no before");
}

}  // namespace
