// Foreign text as every client's lease report.

#include "platform/linux/dhclient_leases.h"
#include "platform/linux/lease_reports.h"
#include "tests/fuzz/fuzzer.h"

#include <algorithm>
#include <string>

namespace {

using helper_protocol::LeaseState;

void ParseLeases(std::span<const uint8_t> input) {
    const std::string_view text = TextOf(input);
    LeaseState state;
    const bool hasLease = helper::ParseDhclientLeases(text, "eth0", state);
    Demand(!hasLease || (state.dhcp && state.obtained <= state.expires));
    const std::vector<std::string> names = helper::ListDhclientInterfaces(text);
    for (const std::string& name : names) {
        Demand(std::count(names.begin(), names.end(), name) == 1);
        Demand(helper::ParseDhclientLeases(text, name, state));
    }
    for (const auto parse : {helper::ParseDhcpcdReport, helper::ParseNetworkdLease}) {
        Demand(!parse(text, 1, state) || (state.dhcp && state.obtained == 1));
    }
    Demand(!helper::ParseNetworkManagerReport(text, state) || (state.dhcp && state.obtained <= state.expires));
}

std::vector<Bytes> Texts() {
    return {BytesOf("default-duid \"\\000\\001;}\\\"{\";\nlease {\n  interface \"eth0\";\n  fixed-address 10.77.0.60;\n"
                    "  option dhcp-lease-time 120;\n  option dhcp-server-identifier 10.77.0.1;\n"
                    "  option netbios-name-servers 10.77.0.1,10.77.0.9;\n  renew 6 2026/11/21 07:32:53;\n"
                    "  expire epoch 1795246441; # Sat Nov 21 07:34:01 2026\n}\nlease {\n  interface \"eth0\";\n"
                    "  option dhcp-server-identifier 10.77.0.2;\n  expire never;\n"),
            BytesOf("lease { interface \"eth0\"; renew 6 2026/11/21 07:32:04; expire 6 2026/11/21 07:32:04; }\n"
                    "lease { interface \"eth1\"; expire 4 1970/01/01 00:03:00; }\n"),
            BytesOf("reason=BOUND\nip_address='10.0.0.5'\ndhcp_server_identifier='10.0.0.1'\ndhcp_lease_time='3600'\n"
                    "netbios_name_servers='10.0.0.7 10.0.0.8'\n"),
            BytesOf("# private\nADDRESS=10.0.0.5\nSERVER_ADDRESS=10.0.0.1\nLIFETIME=4294967295\n"),
            BytesOf("DHCP4.OPTION[1]:dhcp_lease_time = 3600\nDHCP4.OPTION[3]:expiry = 4600\n"
                    "DHCP4.OPTION[4]:ip_address = 10.0.0.5\nDHCP4.OPTION[5]:dhcp_client_identifier = 01\\:02\n")};
}

const RegisteredFuzzer kFuzzer({"helper_lease",
                                {"platform/linux/dhclient_leases.cpp", "platform/linux/lease_reports.cpp",
                                 "platform/linux/lease_text.cpp"},
                                ParseLeases,
                                Texts});

}  // namespace
