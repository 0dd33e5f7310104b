// What DHCP clients write of their leases, and the command lines they run with.
#include <gtest/gtest.h>

#include "platform/linux/dhclient_invocation.h"
#include "platform/linux/dhclient_leases.h"
#include "platform/linux/dhcp_clients.h"
#include "platform/linux/lease_reports.h"
#include "platform/linux/lease_text.h"
#include "tests/unit/helper/lease_texts.h"

using namespace helper;
using helper_protocol::kNeverExpires;
using helper_protocol::LeaseState;

namespace {

// Server 0 means that the parser found nothing.
LeaseState Parsed(const std::string& text, const std::string& interfaceName = "eth0") {
    LeaseState state;
    ParseDhclientLeases(text, interfaceName, state);
    return state;
}

TEST(DhclientLeases, The_last_whole_lease_of_the_interface_counts) {
    const std::string leases = Lease("eth0", "10.0.0.1") + Lease("eth1", "10.0.0.4") + Lease("eth10", "10.0.0.5");
    EXPECT_EQ(0x0A000004u, Parsed(leases, "eth1").server);
    EXPECT_FALSE(Parsed(leases, "eth").dhcp);
    EXPECT_EQ((std::vector<std::string>{"eth0", "eth1", "eth10"}), ListDhclientInterfaces(leases));
    const std::string last = Lease("eth0", "10.0.0.2");
    for (size_t length = 0; length < last.size(); ++length) {
        const bool isWhole = length == last.size() - 1;  // only the line end behind "}" is missing
        EXPECT_EQ(isWhole ? 0x0A000002u : 0x0A000001u, Parsed(leases + last.substr(0, length)).server) << length;
    }
    // One given back leaves DHCP without a lease.
    const std::string back = Lease("eth0", "10.0.0.1", "renew 6 2026/11/21 07:32:04; expire 6 2026/11/21 07:32:04;");
    const LeaseState state = Parsed(last + back);
    EXPECT_EQ(std::tuple(true, 0u, 0u), std::tie(state.dhcp, state.server, state.expires));
    EXPECT_TRUE(ListDhclientInterfaces(last + back).empty());
}

TEST(DhclientLeases, A_lease_ends_at_a_date_at_an_epoch_or_never) {
    const std::tuple<const char*, uint32_t, uint32_t> rows[] = {
        {"expire epoch 1795246441; # Sat Nov 21 07:34:01 2026\n", kExpiry - 120, kExpiry},
        {"expire never;", 0, kNeverExpires},
        {"expire 4 1970/01/01 00:03:00;", 60, 180},
        {"expire 4 1970/01/01 00:01:00;", 0, 60},  // before its own start: the start is unknown
        {"expire 0 2106/02/07 06:28:15;", 0, 0},
        {"expire 6 2026/13/21 07:34:01;", 0, 0},
        {"expire 6 2026/02/30 07:34:01;", 0, 0},
        {"expire 6 2026/11/21 24:00:00;", 0, 0},
        {"expire 6 2026/11/21;", 0, 0},
        {"expire epoch 99999999999999;", 0xFFFFFFFF - 120, 0xFFFFFFFF},
        {"expire epoch -5;", 0, 0},
        {"expire;", 0, 0},
    };
    for (const auto& [times, obtained, expires] : rows) {
        const LeaseState state = Parsed(Lease("eth0", "10.0.0.1", times));
        EXPECT_EQ(std::pair(obtained, expires), std::pair(state.obtained, state.expires)) << times;
    }
}

TEST(DhclientLeases, Quotes_comments_and_other_blocks_do_not_confuse) {
    const std::string odd = "default-duid \"\\000\\001;}\\\"{\";\n# lease { interface \"eth0\"; }\n" +
                            Lease("eth0", "10.0.0.1") +
                            "lease6 {\n interface \"eth0\";\n ia-na 1 { iaaddr ::1 { starts 1; } } \n}\n";
    EXPECT_EQ(0x0A000001u, Parsed(odd).server);
    const LeaseState nested = Parsed("lease { interface \"eth0\"; inner { interface \"eth1\"; expire never; } }");
    EXPECT_EQ(std::pair(true, 0u), std::pair(nested.dhcp, nested.expires));
    EXPECT_FALSE(Parsed("} } lease \"{\" interface \"eth0\"; }").dhcp);
}

TEST(LeaseReports, Each_clients_report_gives_the_same_lease) {
    LeaseState states[4] = {Parsed(Lease("eth0", "10.0.0.1"))};
    ASSERT_TRUE(ParseDhcpcdReport(kDhcpcdReport, kExpiry - 120, states[1]));
    ASSERT_TRUE(ParseNetworkManagerReport(kNetworkManagerReport, states[2]));
    ASSERT_TRUE(ParseNetworkdLease(kNetworkdLease, kExpiry - 120, states[3]));
    for (const LeaseState& state : states) {
        const bool hasWins = &state != &states[3];
        EXPECT_EQ(std::tuple(true, 0x0A000001u, kExpiry - 120, kExpiry),
                  std::tie(state.dhcp, state.server, state.obtained, state.expires));
        EXPECT_EQ(hasWins ? std::pair(0x0A000007u, 0x0A000008u) : std::pair(0u, 0u),
                  std::pair(state.winsPrimary, state.winsSecondary));
    }
}

TEST(LeaseReports, One_without_an_address_is_no_lease_and_one_without_end_never_expires) {
    LeaseState state;
    EXPECT_FALSE(ParseDhcpcdReport("reason=STOP\ninterface=eth0\n", 1, state));
    ASSERT_TRUE(ParseDhcpcdReport(kDhcpcdReport, 0, state));
    EXPECT_EQ(0u, state.expires) << "its start is not known";
    EXPECT_FALSE(ParseNetworkdLease("ADDRESS=10.0.0\nLIFETIME=3600", 1, state));
    EXPECT_FALSE(ParseNetworkManagerReport("ip_address = 10.0.0.5\n", state));
    ASSERT_TRUE(ParseNetworkdLease("ADDRESS=10.0.0.5\nLIFETIME=4294967295", 1000, state));
    EXPECT_EQ(kNeverExpires, state.expires);
    EXPECT_EQ(kNeverExpires, LeaseEnd(0xFFFFFF00, 0x200));
    EXPECT_EQ(0xFFFFFFFFu, LeaseEnd(0xFFFFFF00, 0xFF));
}

TEST(LeaseText, Only_four_octets_make_an_address) {
    EXPECT_EQ(0xFFFFFFFFu, ParseAddress("255.255.255.255"));
    for (const char* text : {"", "1.2.3", "1.2.3.4.5", "1.2.3.256", "1.2.3.", "1..3.4", "1.2.3.4 ", "-1.2.3.4"}) {
        EXPECT_EQ(0u, ParseAddress(text)) << text;
    }
    EXPECT_EQ(std::pair(0x01020304u, 0u), ParseAddressPair(" 1.2.3.4 "));
    EXPECT_EQ(std::pair(0x01020304u, 0x05060708u), ParseAddressPair("1.2.3.4, 5.6.7.8 9.9.9.9"));
}

TEST(DhcpClients, An_interfaces_client_is_found_among_the_processes) {
    using enum DhcpClientKind;
    using Kinds = std::vector<DhcpClientKind>;
    const std::pair<std::vector<std::string>, Kinds> rows[] = {
        {{"dhclient", "-lf", "/nowhere", "eth0"}, {kDhclient}},
        {{"dhclient", "-6", "eth0"}, {}},
        {{"dhclient", "eth1"}, {}},
        {{"dhclient", "-lf", "/nowhere"}, {}},  // it may run all interfaces, but no lease says that it runs this one
        {{"udhcpc", "-i", "eth0", "-b"}, {kUdhcpc}},
        {{"/bin/busybox", "udhcpc", "-ieth0"}, {kUdhcpc}},
        {{"busybox", "udhcpc"}, {kUdhcpc}},
        {{"udhcpc", "--interface", "eth1"}, {}},
        {{"busybox", "ash", "eth0"}, {}},
        {{"dhcpcd: eth0 [ip4] [ip6]", "", ""}, {kDhcpcd}},
        {{"dhcpcd: eth01 [ip4]"}, {}},
        {{"dhcpcd: [manager] [ip4] [ip6]"}, {kDhcpcd}},
        {{"dhcpcd: [privileged proxy] eth0 [ip4]"}, {kDhcpcd}},
        {{"dhcpcd: [privileged proxy] eth1 [ip4]"}, {}},
        {{"dhcpcd: [BPF ARP] eth0 10.0.0.5"}, {}},
        {{"/lib/systemd/systemd-networkd"}, {kNetworkd}},
        {{"/usr/sbin/NetworkManager", "--no-daemon"}, {kNetworkManager}},
        {{"vi", "dhclient", "eth0"}, {}},
    };
    const auto kindsOf = [](const std::vector<Process>& processes) {
        Kinds kinds;
        for (const DhcpClient& client : FindDhcpClients("eth0", processes)) {
            kinds.push_back(client.kind);
        }
        return kinds;
    };
    std::vector<Process> all;
    for (const auto& [words, kinds] : rows) {
        EXPECT_EQ(kinds, kindsOf({{1, words}})) << words[0];
        all.insert(all.begin(), {1, words});
    }
    // One of each kind, those that run the interface for certain first.
    EXPECT_EQ((Kinds{kDhclient, kUdhcpc, kNetworkd, kDhcpcd, kNetworkManager}), kindsOf(all));
}

TEST(DhclientInvocation, A_running_client_can_be_run_again_with_its_files) {
    DhclientInvocation invocation;
    ASSERT_TRUE(ParseDhclientInvocation({"/sbin/dhclient", "-4", "-1", "-v", "-i", "-pf", "/run/x.pid", "-lf",
                                         "/x.leases", "-I", "-df", "/x6.leases", "-d", "eth0"},
                                        invocation));
    EXPECT_EQ("/x.leases", invocation.leaseFile);
    EXPECT_EQ((std::vector<std::string>{"/sbin/dhclient", "-4", "-i", "-pf", "/run/x.pid", "-lf", "/x.leases", "-I",
                                        "-df", "/x6.leases", "-x", "eth0"}),
              DhclientCommand(invocation, "-x"));
    ASSERT_TRUE(ParseDhclientInvocation({"dhclient", "-sf", "/usr/libexec/nm-dhcp-helper", "-lf"}, invocation));
    EXPECT_TRUE(invocation.forNetworkManager && invocation.interfaces.empty());
    EXPECT_FALSE(ParseDhclientInvocation({"dhclient-script", "eth0"}, invocation));
}

}  // namespace
