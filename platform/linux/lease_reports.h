// platform/linux/lease_reports.h - what dhcpcd, systemd-networkd and NetworkManager tell of a lease. Pure functions
// over text; false when the text tells of no lease.

#pragma once

#include <string>
#include <string_view>

#include "platform/helper_protocol.h"

namespace helper {

// `dhcpcd -U IFACE`: shell assignments, values perhaps in single quotes. `obtained` is the lease file's time, since the
// report names none.
bool ParseDhcpcdReport(std::string_view text, uint32_t obtained, helper_protocol::LeaseState& state);

// A file of /run/systemd/netif/leases: assignments without quotes. `obtained` is the file's time: it is written anew
// whenever the lease is.
bool ParseNetworkdLease(std::string_view text, uint32_t obtained, helper_protocol::LeaseState& state);

// `nmcli -t -f DHCP4 device show IFACE`: lines DHCP4.OPTION[n]:name = value, a colon within a value written "\:".
bool ParseNetworkManagerReport(std::string_view text, helper_protocol::LeaseState& state);

}  // namespace helper
