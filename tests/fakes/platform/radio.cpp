// The NDIS user-mode I/O device from the scripted wireless adapter.

#include "platform/radio.h"

#include <algorithm>

#include "platform/ndis.h"
#include "tests/fakes/faults.h"
#include "tests/fakes/scripted_platform.h"

namespace platform {

using scripted::system;

namespace {

// The name behind a record, unless the script gives other bytes.
bool AnswerBinding(void* buffer, DWORD outputBytes, DWORD* returned) {
    std::vector<uint8_t> answer = system.wireless.bindingAnswer;
    if (answer.empty()) {
        const std::u16string name(system.wireless.bindingName.begin(), system.wireless.bindingName.end());
        NdisBindingRequest record = {};
        record.deviceNameOffset = sizeof(record);
        record.deviceNameLength = static_cast<uint32_t>(name.size() * sizeof(char16_t));
        answer.resize(sizeof(record) + record.deviceNameLength);
        memcpy(answer.data(), &record, sizeof(record));
        memcpy(answer.data() + sizeof(record), name.data(), record.deviceNameLength);
    }
    *returned = static_cast<DWORD>(std::min<size_t>(answer.size(), outputBytes));
    memcpy(buffer, answer.data(), *returned);
    return true;
}

}  // namespace

HANDLE OpenRadio() {
    if (fakes::Fails("OpenRadio") || !system.wireless.present) {
        return INVALID_HANDLE_VALUE;
    }
    fakes::CountResource(1);
    return &system.wireless;
}

void CloseRadio(HANDLE) {
    fakes::CountResource(-1);
}

bool RadioIoControl(HANDLE, DWORD controlCode, void* buffer, DWORD, DWORD outputBytes, DWORD* returned) {
    scripted::Wireless& wireless = system.wireless;
    if (fakes::Fails("RadioIoControl")) {
        return false;
    }
    if (controlCode == IOCTL_NDISUIO_QUERY_BINDING) {
        return AnswerBinding(buffer, outputBytes, returned);
    }
    auto* request = static_cast<NdisOidRequest*>(buffer);
    wireless.requests.push_back(request->oid);
    const auto value = wireless.values.find(request->oid);
    if (value == wireless.values.end() || value->second.size() > sizeof(request->data)) {
        return false;
    }
    std::ranges::copy(value->second, request->data);
    *returned = static_cast<DWORD>(sizeof(*request));
    return true;
}

}  // namespace platform
