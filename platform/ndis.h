// platform/ndis.h - the records of the NDIS user-mode I/O driver and the 802.11 object identifiers that are used.
//
// Control codes are the driver's (NDISUIO), object identifiers and values those of NDIS 802.11.
#pragma once

#include "platform/system.h"

inline constexpr DWORD IOCTL_NDISUIO_QUERY_OID_VALUE = 0x00120804;
inline constexpr DWORD IOCTL_NDISUIO_QUERY_BINDING = 0x0012080C;
inline constexpr DWORD IOCTL_NDISUIO_SET_OID_VALUE = 0x00120814;

inline constexpr uint32_t OID_802_11_BSSID = 0x0D010101;
inline constexpr uint32_t OID_802_11_SSID = 0x0D010102;
inline constexpr uint32_t OID_802_11_INFRASTRUCTURE_MODE = 0x0D010108;
inline constexpr uint32_t OID_802_11_AUTHENTICATION_MODE = 0x0D010118;
inline constexpr uint32_t OID_802_11_BSSID_LIST_SCAN = 0x0D01011A;
inline constexpr uint32_t OID_802_11_WEP_STATUS = 0x0D01011B;
inline constexpr uint32_t OID_802_11_NETWORK_TYPE_IN_USE = 0x0D010204;
inline constexpr uint32_t OID_802_11_RSSI = 0x0D010206;
inline constexpr uint32_t OID_802_11_CONFIGURATION = 0x0D010211;
inline constexpr uint32_t OID_802_11_BSSID_LIST = 0x0D010217;

inline constexpr size_t kNdisBufferBytes = 1024;  // every request's buffer, for input and output
inline constexpr size_t kMacBytes = 6;

// NDISUIO_QUERY_BINDING; offsets from the start of the record, lengths in bytes of UTF-16 text.
struct NdisBindingRequest {
    uint32_t bindingIndex;
    uint32_t deviceNameOffset;
    uint32_t deviceNameLength;
    uint32_t deviceDescriptionOffset;
    uint32_t deviceDescriptionLength;
};
static_assert(sizeof(NdisBindingRequest) == 20);

// NDISUIO_QUERY_OID and NDISUIO_SET_OID; the value follows the pointer and fills the rest of the buffer.
struct NdisOidRequest {
    uint32_t oid;
    const wchar_t* deviceName;
    uint8_t data[kNdisBufferBytes - 2 * sizeof(void*)];
};
static_assert(sizeof(NdisOidRequest) == kNdisBufferBytes);
