// platform/desktop/default_route.h - over which interfaces packets to the internet go.
#pragma once

#include "platform/system.h"

namespace platform {

// A reading of the system's routing table, or null. The caller frees it with LocalFree.
MIB_IPFORWARDTABLE* ReadRoutes();

// The lowest metric of the default routes over an interface. False when there is none; `metric` is left alone then.
bool FindDefaultRoute(const MIB_IPFORWARDTABLE& routes, DWORD interfaceIndex, DWORD* metric);

}  // namespace platform
