// What the helper makes of Linux: of DHCP clients' leases and command lines, and of the kernel's wireless answers.
#include <gtest/gtest.h>

#include "platform/linux/dhclient_leases.h"
#include "platform/linux/dhcp_clients.h"
#include "platform/linux/information_elements.h"
#include "platform/linux/lease_reports.h"
#include "platform/linux/lease_text.h"
#include "platform/linux/ndis_records.h"
#include "platform/linux/nl80211.h"
#include "tests/unit/helper/samples.h"

using namespace helper;
using namespace helper_protocol;
using Words = std::vector<std::string>;

namespace {

// Server 0 means that the parser found nothing.
LeaseState Parsed(const std::string& text, const std::string& interfaceName = "eth0") {
    LeaseState state;
    ParseDhclientLeases(text, interfaceName, state);
    return state;
}

TEST(DhclientLeases, The_last_whole_lease_of_the_interface_counts_whatever_stands_around_it) {
    const std::string leases = "default-duid \"\\000;}\\\"{\";\n# lease { interface \"eth0\"; }\n" +
                               Lease("eth0", "10.0.0.1") + Lease("eth1", "10.0.0.4") + Lease("eth10", "10.0.0.5") +
                               "lease6 {\n interface \"eth0\";\n ia-na 1 { iaaddr ::1 { starts 1; } } \n}\n";
    EXPECT_EQ(0x0A000004u, Parsed(leases, "eth1").server);
    EXPECT_EQ((Words{"eth0", "eth1", "eth10"}), ListDhclientInterfaces(leases));
    const std::string last = Lease("eth0", "10.0.0.2");
    for (size_t length = 0; length < last.size(); ++length) {
        const bool isWhole = length == last.size() - 1;  // only the line end behind "}" is missing
        EXPECT_EQ(isWhole ? 0x0A000002u : 0x0A000001u, Parsed(leases + last.substr(0, length)).server) << length;
    }
    // One given back leaves DHCP without a lease.
    const std::string back = Lease("eth0", "10.0.0.1", "renew 6 2026/11/21 07:32:04; expire 6 2026/11/21 07:32:04;");
    EXPECT_TRUE(Parsed(last + back).dhcp && Parsed(last + back).server == 0);
    EXPECT_EQ(0u, Parsed("lease { interface \"eth0\"; inner { interface \"eth1\"; expire never; } }").expires);
}

TEST(DhclientLeases, A_lease_ends_at_a_date_at_an_epoch_or_never) {
    const std::tuple<const char*, uint32_t, uint32_t> rows[] = {
        {"expire epoch 1795246441; # Sat Nov 21 07:34:01 2026\n", kExpiry - 120, kExpiry},
        {"expire never;", 0, kNeverExpires},
        {"expire 4 1970/01/01 00:01:00;", 0, 60},  // before its own start: the start is unknown
        {"expire 6 2026/02/30 07:34:01;", 0, 0},
        {"expire epoch 99999999999999;", 0xFFFFFFFF - 120, 0xFFFFFFFF},
    };
    for (const auto& [times, obtained, expires] : rows) {
        const LeaseState state = Parsed(Lease("eth0", "10.0.0.1", times));
        EXPECT_EQ(std::pair(obtained, expires), std::pair(state.obtained, state.expires)) << times;
    }
}

TEST(LeaseReports, Each_clients_report_gives_the_same_lease_and_one_without_an_address_none) {
    LeaseState state, states[4] = {Parsed(Lease("eth0", "10.0.0.1"))};
    EXPECT_TRUE(ParseDhcpcdReport(kDhcpcdReport, kExpiry - 120, states[1]));
    EXPECT_TRUE(ParseNetworkManagerReport(kNetworkManagerReport, states[2]));
    EXPECT_TRUE(ParseNetworkdLease(kNetworkdLease, kExpiry - 120, states[3]));
    states[3].winsPrimary = 0x0A000007;  // which it does not tell
    states[3].winsSecondary = 0x0A000008;
    for (const LeaseState& s : states) {
        EXPECT_EQ(std::tuple(true, 0x0A000001u, kExpiry - 120, kExpiry, 0x0A000007u, 0x0A000008u),
                  std::tie(s.dhcp, s.server, s.obtained, s.expires, s.winsPrimary, s.winsSecondary));
    }
    EXPECT_FALSE(ParseDhcpcdReport("reason=STOP\ninterface=eth0\n", 1, state));
    EXPECT_FALSE(ParseNetworkManagerReport("ip_address = 10.0.0.5\n", state));
    EXPECT_TRUE(ParseDhcpcdReport(kDhcpcdReport, 0, state) && state.expires == 0) << "its start is not known";
    EXPECT_TRUE(ParseNetworkdLease("ADDRESS=10.0.0.5\nLIFETIME=4294967295", 1000, state));
    EXPECT_EQ(std::pair(kNeverExpires, kNeverExpires), std::pair(state.expires, LeaseEnd(0xFFFFFF00, 0x200)));
    for (const char* text : {"", "1.2.3", "1.2.3.4.5", "1.2.3.256", "1.2.3.", "1..3.4", "-1.2.3.4"}) {
        EXPECT_EQ(0u, ParseAddress(text)) << text;
    }
}

TEST(DhcpClients, An_interfaces_client_is_found_among_the_processes_the_likeliest_first) {
    const std::vector<DhcpClient> clients =
        FindDhcpClients("eth0", {{0, {"dhclient", "-6", "eth0"}},
                                 {0, {"dhclient", "-lf", "/nowhere"}},  // no lease says that it runs this interface
                                 {0, {"udhcpc", "--interface", "eth1"}},
                                 {0, {"dhcpcd: [BPF ARP] eth0 10.0.0.5"}},
                                 {0, {"vi", "dhclient", "eth0"}},
                                 {4, {"dhcpcd: [privileged proxy] eth0 [ip4]"}},
                                 {3, {"/lib/systemd/systemd-networkd"}},
                                 {2, {"/bin/busybox", "udhcpc", "-ieth0"}},
                                 {1, {"dhclient", "-lf", "/nowhere", "eth0"}}});
    ASSERT_EQ(4u, clients.size());
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(i + 1, clients[i].process.id);
    }
}

TEST(Nl80211Answers, An_access_point_becomes_an_NDIS_entry_at_the_known_offsets) {
    AccessPoint point;
    ASSERT_TRUE(ParseAccessPoint(kScanMessage, point) && point.isInUse);
    const Bytes entry = Bytes{1, 0, 0, 0, 104, 0, 0, 0, 2, 0, 0, 0, 0, 1, 0, 0, 4, 0, 0, 0, 'h', 'o', 'm', 'e'} +
                        Bytes(28) + Bytes{1, 0, 0, 0, 0xBE, 0xFF, 0xFF, 0xFF, 3, 0, 0, 0} +              // signal, type
                        Bytes{32, 0, 0, 0, 100, 0, 0, 0, 0, 0, 0, 0, 0x88, 0x2F, 0x25, 0} + Bytes(16) +  // kHz
                        Bytes{1, 0, 0, 0, 0x82, 0x84, 0x8B, 0x96, 0x0C, 0x12, 0x18, 0x24};
    EXPECT_EQ(entry, BssidListValue({&point, 1}, 1008));
    // Signals, which begin at byte 48: none, too short, the least and more than the most without unit.
    const std::pair<Bytes, int> signals[] = {
        {{8, 0, 99}, -200}, {{6, 0, 7}, -200}, {{5, 0, 8, 0, 0}, -100}, {{5, 0, 8, 0, 255}, -50}};
    for (const auto& [bytes, dbm] : signals) {
        Bytes message = kScanMessage;
        std::ranges::copy(bytes, message.begin() + 48);
        EXPECT_TRUE(ParseAccessPoint(message, point) && point.signalDbm == dbm);
    }
    Station station;
    EXPECT_TRUE(ParseStation(kStationMessage, station) && station.signalDbm == -71);
}

TEST(InformationElements, They_tell_the_security_the_name_and_by_the_rates_the_network_type) {
    const auto withElements = [](const Bytes& elements, bool hasPrivacy = true, uint32_t megahertz = 2484) {
        AccessPoint point;
        point.frequencyMhz = megahertz;
        point.hasPrivacy = hasPrivacy;
        ApplyInformationElements(elements, point);
        return point;
    };
    const std::tuple<const char*, bool, Bytes, uint32_t, uint32_t> protections[] = {
        {"open", false, {221, 6, 0, 0x50, 0xF2, 4, 1, 0}, 0, 1},  // with another vendor's element
        {"WEP", true, {}, 0, 0},
        {"WPA-PSK with TKIP", true, kWpaPsk, 4, 4},
        {"WPA", true, WithByte(kWpaPsk, 23, 1), 3, 4},
        {"WPA2", true, WithByte(kWpa2Psk, 19, 1), 6, 6},
        {"WPA3 is told as WPA2-PSK", true, WithByte(kWpa2Psk, 19, 8), 7, 6},
        {"both: the better", true, kWpa2Psk + kWpaPsk, 7, 6},
        {"a suite count beyond the end", true, {48, 10, 1, 0, 0, 0x0F, 0xAC, 4, 0xFF, 0xFF, 0, 0x0F}, 7, 4},
    };
    for (const auto& [what, hasPrivacy, elements, authentication, wep] : protections) {
        const AccessPoint point = withElements(elements, hasPrivacy);
        EXPECT_TRUE(AuthenticationMode(point.security) == authentication && WepStatus(point) == wep) << what;
    }
    // Hidden, with a cut one behind; the longest; too long.
    EXPECT_EQ("", withElements(Bytes{0, 7} + Bytes(7) + Bytes{0, 9, 'c', 'u', 't'}).ssid);
    EXPECT_EQ(std::string(32, 'x'), withElements(Bytes{0, 32} + Bytes(32, 'x')).ssid);
    EXPECT_EQ("", withElements(Bytes{0, 33} + Bytes(33, 'x')).ssid);
    EXPECT_EQ(1u, NetworkType(withElements({1, 4, 0x82, 0x84, 0x0B, 0x16})));
    EXPECT_EQ(3u, NetworkType(withElements({1, 4, 0x82, 0x84, 0x0B, 0x0C})));
    EXPECT_EQ(1u, NetworkType(withElements({1, 3, 0x96, 0xFF, 0xFA})));  // membership selectors are no rates
    EXPECT_EQ(2u, NetworkType(withElements({1, 1, 0x8C}, true, 5180)));
}

TEST(BssidList, A_list_that_does_not_fit_keeps_the_strongest_in_their_order) {
    std::vector<AccessPoint> all;
    for (const int signal : {-90, -40, -60, -40, -85, -30, -60}) {
        all.emplace_back().signalDbm = signal;
        all.back().bssid[0] = static_cast<uint8_t>(all.size() - 1);
    }
    EXPECT_TRUE(BssidListValue(all, 3).empty() && BssidListValue(all, 4 + 103) == Bytes(4));
    const NdisValue list = BssidListValue(all, 4 + 5 * 104 - 1);
    ASSERT_EQ(4u + 4 * 104, list.size());
    EXPECT_EQ(Bytes({4, 1, 2, 3, 5}), Bytes({list[0], list[8], list[8 + 104], list[8 + 2 * 104], list[8 + 3 * 104]}));
}

TEST(GenericNetlink, The_kernel_tells_of_a_family_that_exists) {
    NetlinkMessages messages;
    EXPECT_TRUE(DumpGenericNetlink("nlctrl", 3, 0, messages) == 0 && messages.size() > 1);
    EXPECT_EQ(ENOENT, DumpGenericNetlink("no-such-family", 1, 0, messages));
}

}  // namespace
