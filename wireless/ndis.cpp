// Opens the device anew for every query, as the driver is shared with the system's own wireless service.

#include "wireless/ndis.h"

#include "platform/radio.h"
#include "platform/scoped.h"

#include <algorithm>

namespace {

// Copies the name out of a binding answer. Offset and length come from the driver: nothing outside the buffer is read,
// and what does not fit the name is cut.
void CopyBindingName(const uint8_t* buffer, wchar_t (&name)[kBindingNameUnits]) {
    NdisBindingRequest answer;
    memcpy(&answer, buffer, sizeof(answer));
    const size_t offset = std::min<size_t>(answer.deviceNameOffset, kNdisBufferBytes);
    const size_t bytes = std::min<size_t>(answer.deviceNameLength, kNdisBufferBytes - offset);
    const size_t units = std::min<size_t>(bytes / sizeof(uint16_t), kBindingNameUnits - 1);
    for (size_t i = 0; i < units; ++i) {
        uint16_t unit = 0;
        memcpy(&unit, buffer + offset + i * sizeof(unit), sizeof(unit));
        name[i] = static_cast<wchar_t>(unit);
    }
    name[units] = 0;
}

void QueryBindingName(WirelessDevice& device) {
    DWORD returned = 0;
    if (platform::RadioIoControl(device.handle, IOCTL_NDISUIO_QUERY_BINDING, device.buffer, sizeof(NdisBindingRequest),
                                 kNdisBufferBytes, &returned)) {
        CopyBindingName(static_cast<const uint8_t*>(device.buffer), device.name);
    }
}

bool RequestOid(WirelessDevice& device, DWORD controlCode, uint32_t oid) {
    auto* request = static_cast<NdisOidRequest*>(device.buffer);
    *request = {};
    request->oid = oid;
    request->deviceName = device.name;
    DWORD returned = 0;
    return platform::RadioIoControl(device.handle, controlCode, request, kNdisBufferBytes, kNdisBufferBytes, &returned);
}

}  // namespace

WirelessDevice::~WirelessDevice() {
    if (buffer != nullptr) {
        LocalFree(buffer);
    }
    if (platform::IsOpen(handle)) {
        platform::CloseRadio(handle);
    }
}

WirelessOpening OpenWirelessDevice(WirelessDevice& device) {
    device.handle = platform::OpenRadio();
    if (!platform::IsOpen(device.handle)) {
        return WirelessOpening::NoDevice;
    }
    device.buffer = LocalAlloc(LPTR, kNdisBufferBytes);
    if (device.buffer == nullptr) {
        return WirelessOpening::NoMemory;
    }
    QueryBindingName(device);
    return WirelessOpening::Open;
}

bool QueryOid(WirelessDevice& device, uint32_t oid) {
    return RequestOid(device, IOCTL_NDISUIO_QUERY_OID_VALUE, oid);
}

bool SetOid(WirelessDevice& device, uint32_t oid) {
    return RequestOid(device, IOCTL_NDISUIO_SET_OID_VALUE, oid);
}
