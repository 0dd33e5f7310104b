// The NDIS user-mode I/O device from the scripted wireless adapter.

#include "platform/radio.h"

#include <algorithm>

#include "platform/ndis.h"
#include "tests/fakes/faults.h"
#include "tests/fakes/scripted_platform.h"

namespace platform {

namespace {

bool AnswerBinding(uint8_t* buffer, DWORD outputBytes, DWORD* returned) {
    const std::vector<uint8_t>& given = scripted::system.wireless.bindingAnswer;
    if (!given.empty()) {
        std::copy_n(given.begin(), std::min<size_t>(given.size(), outputBytes), buffer);
        return true;
    }
    const std::wstring& name = scripted::system.wireless.bindingName;
    NdisBindingRequest answer = {};
    answer.deviceNameOffset = sizeof(answer);
    answer.deviceNameLength = static_cast<uint32_t>(name.size() * sizeof(uint16_t));
    *returned = answer.deviceNameOffset + answer.deviceNameLength;
    if (*returned > outputBytes) {
        return false;
    }
    memcpy(buffer, &answer, sizeof(answer));
    for (size_t i = 0; i < name.size(); ++i) {
        const auto unit = static_cast<uint16_t>(name[i]);
        memcpy(buffer + answer.deviceNameOffset + i * sizeof(unit), &unit, sizeof(unit));
    }
    return true;
}

}  // namespace

HANDLE OpenRadio() {
    if (fakes::Fails("OpenRadio") || !scripted::system.wireless.present) {
        return INVALID_HANDLE_VALUE;
    }
    fakes::CountResource(1);
    return &scripted::system.wireless;
}

void CloseRadio(HANDLE) {
    fakes::CountResource(-1);
}

bool RadioIoControl(HANDLE, DWORD controlCode, void* buffer, DWORD, DWORD outputBytes, DWORD* returned) {
    scripted::Wireless& wireless = scripted::system.wireless;
    if (fakes::Fails("RadioIoControl")) {
        return false;
    }
    if (controlCode == IOCTL_NDISUIO_QUERY_BINDING) {
        return AnswerBinding(static_cast<uint8_t*>(buffer), outputBytes, returned);
    }
    auto* request = static_cast<NdisOidRequest*>(buffer);
    wireless.requests.push_back(request->oid);
    const auto value = wireless.values.find(request->oid);
    if (value == wireless.values.end() || value->second.size() > sizeof(request->data)) {
        return false;
    }
    std::copy(value->second.begin(), value->second.end(), request->data);
    *returned = static_cast<DWORD>(sizeof(*request));
    return true;
}

}  // namespace platform
