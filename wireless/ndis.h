// wireless/ndis.h - requests to the first wireless adapter bound to the NDIS user-mode I/O device.
#pragma once

#include "platform/ndis.h"

inline constexpr size_t kBindingNameUnits = 128;

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
