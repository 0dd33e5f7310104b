// platform/desktop/native_wifi_records.h - what the Native Wifi API says, in the values of NDIS 802.11 identifiers.
//
// Pure functions over its records. Every value is little-endian; enumerations are NDIS's own.
#pragma once

#include "platform/system.h"

#include <wlanapi.h>

#include <span>

namespace platform {

// Entries of an access-point list are NDIS_WLAN_BSSID records without information elements.
inline constexpr size_t kBssidEntryBytes = 104;
inline constexpr size_t kConfigurationBytes = 32;

uint32_t NdisNetworkType(DOT11_PHY_TYPE type, ULONG frequencyKhz);
uint32_t NdisInfrastructureMode(DOT11_BSS_TYPE type);
uint32_t NdisAuthenticationMode(DOT11_AUTH_ALGORITHM algorithm);
uint32_t NdisWepStatus(DOT11_CIPHER_ALGORITHM cipher);

// Each writes its value to the start of `value`, which is large enough, and returns its length.
size_t WriteNdisNumber(uint32_t number, std::span<uint8_t> value);
size_t WriteNdisSsid(const DOT11_SSID& ssid, std::span<uint8_t> value);
size_t WriteNdisConfiguration(const WLAN_BSS_ENTRY& entry, std::span<uint8_t> value);

// The count and the entries, in list order. Where not all fit into `value`, the strongest do.
size_t WriteNdisBssidList(std::span<const WLAN_BSS_ENTRY> entries, std::span<uint8_t> value);

}  // namespace platform
