// diagnostics/own_address.h - the device's own address, around which the detector scans.
#pragma once

#include "diagnostics/mac_address.h"

inline constexpr size_t kAddressTextBytes = 16;

// Dotted current address and hardware address of the first Ethernet adapter. On any failure the text is empty and the
// hardware address zero.
void GetCurrentAdapterAddress(char (&ipText)[kAddressTextBytes], MacAddress& mac);
