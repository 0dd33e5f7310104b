// Reads the routing table itself, because GetBestRoute heeds no metrics under Wine: of two default routes, wire and
// wireless, it may name the one that is not used.

#include "platform/desktop/default_route.h"

namespace platform {

MIB_IPFORWARDTABLE* ReadRoutes() {
    constexpr ULONG kRoomForNewcomers = 64 * sizeof(MIB_IPFORWARDROW);
    ULONG bytes = 0;
    if (GetIpForwardTable(nullptr, &bytes, FALSE) != ERROR_INSUFFICIENT_BUFFER) {
        return nullptr;
    }
    bytes += kRoomForNewcomers;
    auto* routes = static_cast<MIB_IPFORWARDTABLE*>(LocalAlloc(LPTR, bytes));
    if (routes != nullptr && GetIpForwardTable(routes, &bytes, FALSE) != NO_ERROR) {
        LocalFree(routes);
        routes = nullptr;
    }
    return routes;
}

bool FindDefaultRoute(const MIB_IPFORWARDTABLE& routes, DWORD interfaceIndex, DWORD* metric) {
    bool found = false;
    for (DWORD i = 0; i < routes.dwNumEntries; ++i) {
        const MIB_IPFORWARDROW& row = routes.table[i];
        const bool isDefault = row.dwForwardDest == INADDR_ANY && row.dwForwardMask == INADDR_ANY;
        if (isDefault && row.dwForwardIfIndex == interfaceIndex && (!found || row.dwForwardMetric1 < *metric)) {
            *metric = row.dwForwardMetric1;
            found = true;
        }
    }
    return found;
}

}  // namespace platform
