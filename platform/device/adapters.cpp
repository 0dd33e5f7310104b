// The IP helper is the handheld's own, and so are its answers: what the header asks of a desktop is so here, save that
// a driver may leave out the current address.

#include "platform/adapters.h"

namespace platform {

DWORD GetNumberOfInterfaces(DWORD* count) {
    return ::GetNumberOfInterfaces(count);
}

DWORD GetAdaptersInfo(IP_ADAPTER_INFO* list, ULONG* bytes) {
    const DWORD result = ::GetAdaptersInfo(list, bytes);
    for (IP_ADAPTER_INFO* adapter = result == NO_ERROR ? list : nullptr; adapter != nullptr; adapter = adapter->Next) {
        if (adapter->CurrentIpAddress == nullptr) {
            adapter->CurrentIpAddress = &adapter->IpAddressList;
        }
    }
    return result;
}

DWORD GetInterfaceInfo(IP_INTERFACE_INFO* table, ULONG* bytes) {
    return ::GetInterfaceInfo(table, bytes);
}

DWORD GetIfEntry(MIB_IFROW* row) {
    return ::GetIfEntry(row);
}

DWORD GetPerAdapterInfo(ULONG interfaceIndex, IP_PER_ADAPTER_INFO* info, ULONG* bytes) {
    return ::GetPerAdapterInfo(interfaceIndex, info, bytes);
}

DWORD GetIpNetTable(MIB_IPNETTABLE* table, ULONG* bytes, BOOL sorted) {
    return ::GetIpNetTable(table, bytes, sorted);
}

DWORD IpReleaseAddress(IP_ADAPTER_INDEX_MAP* adapter) {
    return ::IpReleaseAddress(adapter);
}

DWORD IpRenewAddress(IP_ADAPTER_INDEX_MAP* adapter) {
    return ::IpRenewAddress(adapter);
}

}  // namespace platform
