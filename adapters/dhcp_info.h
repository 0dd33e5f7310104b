// adapters/dhcp_info.h - the DHCP lease of the device's adapter: reading, releasing and renewing it.
#pragma once

#include "adapters/lease_time.h"
#include "platform/system.h"

enum class DhcpState {
    Ready,       // every text is set
    Unreadable,  // the adapter list cannot be read: nothing is known, the adapter may well have a lease
    Disabled,    // no adapter is run by DHCP
    None,        // there is no interface, or no memory for the list
};

struct DhcpInfo {
    wchar_t address[16];
    wchar_t server[16];
    wchar_t obtained[kLeaseTimeUnits];  // local standard time; empty without an address
    wchar_t expires[kLeaseTimeUnits];
};

// Reads the last adapter in list order that DHCP runs, which becomes the monitored adapter. The texts are set in the
// Ready state only.
DhcpState ReadDhcpInfo(DhcpInfo& info);

enum class LeaseAction { Release, Renew };
enum class LeaseResult { Done, Failed, NoInterface };

// Releases or renews the monitored adapter's lease; blocks for as long as the DHCP client takes.
LeaseResult ChangeLease(LeaseAction action);
