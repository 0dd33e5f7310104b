// platform/adapters.h - the IP helper service as the handheld has it.
//
// Signatures and results are those of the IP helper functions of the same names. What a handheld's service does by
// itself, a desktop's backend guarantees: the list holds only adapters that are up, those with a default route first
// (the lower its metric, the earlier); interface names equal adapter names letter for letter; a wireless adapter's type
// is Ethernet; the ARP table may be read from many threads at once, all else is for the user interface's thread. On
// every system `CurrentIpAddress` is never null, and a size query may answer more than the data need.
#pragma once

#include "platform/system.h"

namespace platform {

DWORD GetNumberOfInterfaces(DWORD* count);
DWORD GetAdaptersInfo(IP_ADAPTER_INFO* list, ULONG* bytes);
DWORD GetInterfaceInfo(IP_INTERFACE_INFO* table, ULONG* bytes);
DWORD GetIfEntry(MIB_IFROW* row);
DWORD GetPerAdapterInfo(ULONG interfaceIndex, IP_PER_ADAPTER_INFO* info, ULONG* bytes);

// The rows known after the call began: a host that answered before the call is in the table if the system knows its
// hardware address. Rows without one (all zero) are left out on a desktop; a handheld's table is taken as it is.
DWORD GetIpNetTable(MIB_IPNETTABLE* table, ULONG* bytes, BOOL sorted);

// DHCP release and renew of one interface; 0 or an error code. They block for as long as the DHCP client takes.
DWORD IpReleaseAddress(IP_ADAPTER_INDEX_MAP* adapter);
DWORD IpRenewAddress(IP_ADAPTER_INDEX_MAP* adapter);

}  // namespace platform
