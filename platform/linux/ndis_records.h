// platform/linux/ndis_records.h - wireless facts in the values of NDIS 802.11 object identifiers. Pure functions.
//
// Numbers are 32-bit little-endian; enumerations are NDIS's own (NDIS_802_11_NETWORK_TYPE and its neighbours).

#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "platform/linux/nl80211_answers.h"

namespace helper {

// NDIS_WLAN_BSSID: the fixed part, which is all of an entry here.
inline constexpr size_t kBssidEntryBytes = 104;

using NdisValue = std::vector<uint8_t>;

NdisValue NumberValue(uint32_t number);
NdisValue BssidValue(const MacAddress& address);
NdisValue SsidValue(std::string_view ssid);                    // length, then 32 bytes
NdisValue ConfigurationValue(const AccessPoint& accessPoint);  // 32 bytes, the frequency in kHz

uint32_t NetworkType(const AccessPoint& accessPoint);         // 1 DSSS, 2 OFDM at 5 GHz and above, 3 OFDM at 2.4 GHz
uint32_t InfrastructureMode(const AccessPoint& accessPoint);  // 0 ad hoc, 1 infrastructure
uint32_t AuthenticationMode(Security security);               // 0 open, 3 WPA, 4 WPA-PSK, 6 WPA2, 7 WPA2-PSK
uint32_t WepStatus(const AccessPoint& accessPoint);           // 0 WEP, 1 none, 4 TKIP, 6 AES

// The count and the entries. Where not all entries fit into `capacity` bytes, those with the strongest signal, in the
// order they had; of two alike the earlier. Empty when not even the count fits.
NdisValue BssidListValue(std::span<const AccessPoint> accessPoints, size_t capacity);

}  // namespace helper
