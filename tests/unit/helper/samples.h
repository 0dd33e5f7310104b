// tests/unit/helper/samples.h - what the helper reads of Linux: one lease as each DHCP client reports it, of 120 s and
// until 2026-11-21 07:34:01 UTC; the kernel's wireless messages (linux/nl80211.h), which are attributes of length,
// type, value and padding.
#pragma once

#include "tests/unit/helper/messages.h"

#include <string>

inline constexpr uint32_t kExpiry = 1795246441;

// A block of dhclient's lease file.
inline std::string Lease(const std::string& interfaceName, const std::string& server,
                         const std::string& times = "renew 6 2026/11/21 07:32:53;\n  expire 6 2026/11/21 07:34:01;\n") {
    return "lease {\n  interface \"" + interfaceName + "\";\n  option domain-name \"a;}\\\"b { lease\";\n  " +
           "option dhcp-lease-time 120;\n  option dhcp-server-identifier " + server +
           ";\n  option netbios-name-servers 10.0.0.7,10.0.0.8;\n  " + times + "}\n";
}

inline constexpr const char* kDhcpcdReport =
    "reason=BOUND\nip_address='10.0.0.5'\ndhcp_server_identifier='10.0.0.1'\ndhcp_lease_time='120'\n"
    "netbios_name_servers='10.0.0.7 10.0.0.8'\n";
inline constexpr const char* kNetworkManagerReport =
    "DHCP4.OPTION[1]:dhcp_lease_time = 120\nDHCP4.OPTION[2]:dhcp_server_identifier = 10.0.0.1\n"
    "DHCP4.OPTION[3]:expiry = 1795246441\nDHCP4.OPTION[4]:ip_address = 10.0.0.5\n"
    "DHCP4.OPTION[16]:netbios_name_servers = 10.0.0.7 10.0.0.8\n";
inline constexpr const char* kNetworkdLease =
    "# This is private data. Do not parse.\nADDRESS=10.0.0.5\nSERVER_ADDRESS=10.0.0.1\nLIFETIME=120\n";

// Elements of beacons; the number of their key management is the last but two, and the last.
inline const Bytes kWpa2Psk = {48, 20, 1, 0, 0, 0x0F, 0xAC, 4, 1, 0, 0, 0x0F, 0xAC, 4, 1, 0, 0, 0x0F, 0xAC, 2, 0, 0};
inline const Bytes kWpaPsk = {221, 22, 0, 0x50, 0xF2, 1, 1, 0, 0, 0x50, 0xF2, 2,
                              1,   0,  0, 0x50, 0xF2, 2, 1, 0, 0, 0x50, 0xF2, 2};

// The access point in use, of a scan dump: its address, frequency, beacon interval, capability, signal (-66.5 dBm),
// status, beacons without a name, and a probe response with one, eight rates, the protection and a ninth rate.
inline const Bytes kScanMessage =
    Bytes{8, 0, 46,  0,   5,    0,   0,  0, 116,  0,    47,   0,    10,   0,    1,    0,    2,   0, 0, 0,
          0, 1, 0,   0,   8,    0,   2,  0, 0x85, 0x09, 0,    0,    6,    0,    4,    0,    100, 0, 0, 0,
          6, 0, 5,   0,   0x11, 0,   0,  0, 8,    0,    7,    0,    0x06, 0xE6, 0xFF, 0xFF, 8,   0, 9, 0,
          1, 0, 0,   0,   9,    0,   11, 0, 0,    3,    0,    0,    0,    0,    0,    0,    45,  0, 6, 0,
          0, 4, 'h', 'o', 'm',  'e', 1,  8, 0x82, 0x84, 0x8B, 0x96, 0x0C, 0x12, 0x18, 0x24} +
    kWpa2Psk + Bytes{50, 1, 0x30, 0, 0, 0};

// The signal stands in attributes that are marked as nested.
inline const Bytes kStationMessage = {10, 0, 6, 0, 2, 0, 0, 0, 0, 1, 0, 0, 12, 0, 21, 0x80, 5, 0, 7, 0, 0xB9, 0, 0, 0};
