// The NDIS user-mode I/O driver itself. Without access rights the device opens even while the system's own wireless
// service holds it.

#include "platform/radio.h"

namespace platform {

HANDLE OpenRadio() {
    return CreateFileW(L"UIO1:", 0, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
}

void CloseRadio(HANDLE radio) {
    CloseHandle(radio);
}

bool RadioIoControl(HANDLE radio, DWORD controlCode, void* buffer, DWORD inputBytes, DWORD outputBytes,
                    DWORD* returned) {
    DWORD bytes = 0;
    if (!DeviceIoControl(radio, controlCode, buffer, inputBytes, buffer, outputBytes, &bytes, nullptr)) {
        return false;
    }
    *returned = bytes;
    return true;
}

}  // namespace platform
