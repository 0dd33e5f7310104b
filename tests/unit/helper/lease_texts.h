// tests/unit/helper/lease_texts.h - one lease as each DHCP client reports it: of 120 s, until 2026-11-21 07:34:01 UTC.
#pragma once

#include <cstdint>
#include <string>

inline constexpr uint32_t kExpiry = 1795246441;

inline constexpr const char* kTimes = "renew 6 2026/11/21 07:32:53;\n  expire 6 2026/11/21 07:34:01;\n";

// A block of dhclient's lease file.
inline std::string Lease(const std::string& interfaceName, const std::string& server,
                         const std::string& times = kTimes) {
    return "lease {\n  interface \"" + interfaceName + "\";\n  fixed-address 10.77.0.60;\n  option domain-name " +
           "\"a;}\\\"b { lease\";\n  option dhcp-lease-time 120;\n  option dhcp-server-identifier " + server +
           ";\n  option netbios-name-servers 10.0.0.7,10.0.0.8;\n  " + times + "}\n";
}

inline constexpr const char* kDhcpcdReport =
    "reason=BOUND\nip_address='10.0.0.5'\ndhcp_server_identifier='10.0.0.1'\ndhcp_lease_time='120'\n"
    "netbios_name_servers='10.0.0.7 10.0.0.8'\n";

inline constexpr const char* kNetworkManagerReport =
    "DHCP4.OPTION[1]:dhcp_lease_time = 120\nDHCP4.OPTION[2]:dhcp_server_identifier = 10.0.0.1\n"
    "DHCP4.OPTION[3]:expiry = 1795246441\nDHCP4.OPTION[4]:ip_address = 10.0.0.5\n"
    "DHCP4.OPTION[5]:dhcp_client_identifier = 01\\:02\\:03\nDHCP4.OPTION[16]:netbios_name_servers = 10.0.0.7 "
    "10.0.0.8\n";

inline constexpr const char* kNetworkdLease =
    "# This is private data. Do not parse.\nADDRESS=10.0.0.5\nSERVER_ADDRESS=10.0.0.1\nLIFETIME=120\n"
    "DNS=10.0.0.1 10.0.0.2";
