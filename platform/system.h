// platform/system.h - the system by its own names: files, registry, time, memory, windows, Winsock, IP helper.
//
// Product code includes this header and never a system header. In the native build the same includes find the small
// subset in tests/fakes/include, which stands on a temporary folder, a scripted clock and an in-memory registry.
#pragma once

#include <winsock2.h>  // must precede windows.h

#include <windows.h>

#include <icmpapi.h>
#include <iphlpapi.h>
#include <shlobj.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <cwchar>
