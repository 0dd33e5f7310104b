// Foreign text as every client's lease report.

#include <cstdlib>

#include "platform/linux/dhclient_leases.h"
#include "platform/linux/lease_reports.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    helper_protocol::LeaseState state;
    const bool hasLease = helper::ParseDhclientLeases(text, "eth0", state);
    if (hasLease && (!state.dhcp || (state.obtained > state.expires))) {
        abort();
    }
    helper::ListDhclientInterfaces(text);
    helper::ParseDhcpcdReport(text, 1, state);
    helper::ParseNetworkdLease(text, 1, state);
    helper::ParseNetworkManagerReport(text, state);
    return 0;
}
