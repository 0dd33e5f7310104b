// wireless/ndis.h - requests to the first wireless adapter bound to the NDIS user-mode I/O device.
//
// Control codes are those of the NDIS user-mode I/O driver, object identifiers and records those of NDIS 802.11.
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
inline constexpr size_t kBindingNameUnits = 128;
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

// The device for the time of one query, with its zero-filled buffer and the adapter's name.
struct WirelessDevice {
    HANDLE handle = nullptr;
    void* buffer = nullptr;
    wchar_t name[kBindingNameUnits] = {};

    WirelessDevice() = default;
    WirelessDevice(const WirelessDevice&) = delete;
    WirelessDevice& operator=(const WirelessDevice&) = delete;
    ~WirelessDevice();

    bool HasAdapter() const { return name[0] != 0; }
    // The last answered value. Little-endian fields, read by copying.
    const uint8_t* Value() const { return static_cast<NdisOidRequest*>(buffer)->data; }
    static constexpr size_t kValueBytes = sizeof(NdisOidRequest::data);
};

enum class WirelessOpening { NoDevice, NoMemory, Open };

// Opens the device, takes the buffer and asks for the binding (its name may stay empty).
WirelessOpening OpenWirelessDevice(WirelessDevice& device);

// One request each; true when the driver answered. After a query the value is in device.Value().
bool QueryOid(WirelessDevice& device, uint32_t oid);
bool SetOid(WirelessDevice& device, uint32_t oid);

// A little-endian 32-bit field of a value.
inline uint32_t ReadNdisField(const uint8_t* field) {
    uint32_t value = 0;
    memcpy(&value, field, sizeof(value));
    return value;
}
