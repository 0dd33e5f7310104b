// The NDIS user-mode I/O device from the scripted wireless adapter.

#include "platform/radio.h"

#include <algorithm>

#include "platform/ndis.h"
#include "tests/fakes/faults.h"
#include "tests/fakes/scripted_platform.h"

namespace platform {

using scripted::system;

HANDLE OpenRadio() {
    const bool fails = fakes::Fails("OpenRadio") || !system.wireless.present;
    fakes::openResources += fails ? 0 : 1;
    return fails ? INVALID_HANDLE_VALUE : &system.wireless;
}

void CloseRadio(HANDLE) {
    --fakes::openResources;
}

bool RadioIoControl(HANDLE, DWORD controlCode, void* buffer, DWORD, DWORD outputBytes, DWORD* returned) {
    scripted::Wireless& wireless = system.wireless;
    if (fakes::Fails("RadioIoControl")) {
        return false;
    }
    if (controlCode == IOCTL_NDISUIO_QUERY_BINDING) {
        *returned = static_cast<DWORD>(std::min<size_t>(wireless.bindingAnswer.size(), outputBytes));
        std::copy_n(wireless.bindingAnswer.begin(), *returned, static_cast<uint8_t*>(buffer));
        return true;
    }
    auto* request = static_cast<NdisOidRequest*>(buffer);
    const auto value = wireless.values.find(request->oid);
    if (value == wireless.values.end() || value->second.size() > sizeof(request->data)) {
        return false;
    }
    std::ranges::copy(value->second, request->data);
    *returned = static_cast<DWORD>(sizeof(*request));
    return true;
}

}  // namespace platform
