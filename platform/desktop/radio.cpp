// No wireless adapter is known on this build.

#include "platform/radio.h"

namespace platform {

HANDLE OpenRadio() {
    return nullptr;
}

void CloseRadio(HANDLE) {}

bool RadioIoControl(HANDLE, DWORD, void*, DWORD, DWORD, DWORD*) {
    return false;
}

}  // namespace platform
