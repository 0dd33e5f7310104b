// platform/desktop/native_wifi.h - the wireless adapter of a Windows desktop, through the Native Wifi API.
//
// The API's library is loaded at run time; a system without it, with its service off or without an interface has no
// wireless. Current Windows answers scans and lists only with the location permission: then those fail.
#pragma once

#include "platform/system.h"

#include <span>

namespace platform {

// A client session for the first wireless interface, or null. The caller closes it.
HANDLE OpenNativeWifi();
void CloseNativeWifi(HANDLE session);

// The interface's GUID as text.
void NativeWifiName(HANDLE session, std::span<wchar_t> name);

// The value of an OID in NDIS layout, written to the start of `value`; `bytes` is its length. False when the interface
// does not know.
bool QueryNativeWifi(HANDLE session, uint32_t oid, std::span<uint8_t> value, size_t& bytes);
bool SetNativeWifi(HANDLE session, uint32_t oid);

}  // namespace platform
