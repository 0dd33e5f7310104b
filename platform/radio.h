// platform/radio.h - the NDIS user-mode I/O device "UIO1:": the wireless adapter's binding and its 802.11 OIDs.
#pragma once

#include "platform/system.h"

namespace platform {

// Opens the device with no access rights, unshared. Null or INVALID_HANDLE_VALUE: there is no wireless support.
HANDLE OpenRadio();
void CloseRadio(HANDLE radio);

// DeviceIoControl on the open device with one buffer for both directions. False when the driver refuses; `returned`
// then stays untouched.
bool RadioIoControl(HANDLE radio, DWORD controlCode, void* buffer, DWORD inputBytes, DWORD outputBytes,
                    DWORD* returned);

}  // namespace platform
